// The view of a polygon. The document side is document/QELDocPolygon.h.
#pragma once

#include "render/QELViewPoints.h"

class CQELViewPolygon final : public CQELViewPoints {
public:
    CQELViewPolygon(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept
        : CQELViewPoints(nRefW, nRefH, QEL_TYPE_POLYGON, pPool)
    {
    }

    int NewInstance(CQELViewElm** ppOut) const override;
    [[nodiscard]] HRGN MakeRegion(const RECT& rcQel) const override;
    [[nodiscard]] HRGN MakeShownRegion(const RECT& rcQel, const RECT& rcShown,
                                       bool* pbPart) const override;

protected:
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const RECT& rcQel) const override;
};
