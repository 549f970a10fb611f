// The view of an ellipse. The document side is document/QELDocEllipse.h.
#pragma once

#include "render/QELViewBox.h"

class CQELViewEllipse final : public CQELViewBox {
public:
    CQELViewEllipse(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept
        : CQELViewBox(nRefW, nRefH, QEL_TYPE_ELLIPSE, pPool)
    {
    }

    int NewInstance(CQELViewElm** ppOut) const override;
    [[nodiscard]] HRGN MakeRegion(const RECT& rcQel) const override;

protected:
    [[nodiscard]] bool IsCurved() const override { return true; }
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const RECT& rcQel) const override;
};
