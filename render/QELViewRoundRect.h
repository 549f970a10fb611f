// The view of a rectangle with round corners. The corners keep their size in pixels at every scale.
// The document side is document/QELDocRoundRect.h.
#pragma once

#include "render/QELViewBox.h"

class CQELViewRoundRect final : public CQELViewBox {
public:
    CQELViewRoundRect(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept
        : CQELViewBox(nRefW, nRefH, QEL_TYPE_ROUNDRECT, pPool)
    {
    }

    int NewInstance(CQELViewElm** ppOut) const override;
    [[nodiscard]] HRGN MakeRegion(const RECT& rcQel) const override;

protected:
    [[nodiscard]] bool IsCurved() const override { return true; }
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const RECT& rcQel) const override;

private:
    [[nodiscard]] SIZE Corner() const; // of the corner ellipse; 0 for an empty rectangle
};
