// The view of a rectangle, the one shape with 3D borders. The document side is
// document/QELDocRect.h.
#pragma once

#include "render/QELViewBox.h"

class CQELViewRect final : public CQELViewBox {
public:
    CQELViewRect(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept
        : CQELViewBox(nRefW, nRefH, QEL_TYPE_RECT, pPool)
    {
    }

    int NewInstance(CQELViewElm** ppOut) const override;
    [[nodiscard]] HRGN MakeRegion(const RECT& rcQel) const override;

protected:
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const RECT& rcQel) const override;
    int PaintMargin(int32_t* pnOut) const override;
    [[nodiscard]] bool HidesOutline() const override; // behind a 3D border
    [[nodiscard]] bool RestoresPenFirst() const override { return true; }
};
