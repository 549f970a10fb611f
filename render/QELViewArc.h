// The view of an arc. It is turned and moved freely, not kept inside the drawing. The document side
// is document/QELDocArc.h.
#pragma once

#include "render/QELViewRadial.h"

class CQELViewArc final : public CQELViewRadial {
public:
    CQELViewArc(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept
        : CQELViewRadial(nRefW, nRefH, QEL_TYPE_ARC, pPool)
    {
    }

    int NewInstance(CQELViewElm** ppOut) const override;

protected:
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const RECT& rcQel) const override;
    [[nodiscard]] bool IsOutlineOnly() const override { return true; }
    [[nodiscard]] bool StaysInside() const override { return false; }
};
