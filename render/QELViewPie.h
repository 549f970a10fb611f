// The view of a pie. The document side is
// document/QELDocPie.h.
#pragma once

#include "render/QELViewRadial.h"

class CQELViewPie final : public CQELViewRadial {
public:
    CQELViewPie(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept
        : CQELViewRadial(nRefW, nRefH, QEL_TYPE_PIE, pPool)
    {
    }

    int NewInstance(CQELViewElm** ppOut) const override;
    [[nodiscard]] HRGN MakeRegion(const RECT& rcQel) const override;

protected:
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const RECT& rcQel) const override;
    [[nodiscard]] bool CollapsesToEdge() const override { return true; }
    [[nodiscard]] bool ReachesMiddle() const override { return true; }
};
