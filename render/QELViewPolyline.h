// The view of a polyline. The document side is document/QELDocPolyline.h.
#pragma once

#include "render/QELViewPoints.h"

class CQELViewPolyline final : public CQELViewPoints {
public:
    CQELViewPolyline(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept
        : CQELViewPoints(nRefW, nRefH, QEL_TYPE_POLYLINE, pPool)
    {
    }

    int NewInstance(CQELViewElm** ppOut) const override;

protected:
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const RECT& rcQel) const override;
    [[nodiscard]] bool IsOutlineOnly() const override { return true; }
};
