// The view of a chord. The document side is
// document/QELDocChord.h.
#pragma once

#include "render/QELViewRadial.h"

class CQELViewChord final : public CQELViewRadial {
public:
    CQELViewChord(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept
        : CQELViewRadial(nRefW, nRefH, QEL_TYPE_CHORD, pPool)
    {
    }

    int NewInstance(CQELViewElm** ppOut) const override;
    [[nodiscard]] HRGN MakeRegion(const RECT& rcQel) const override;

protected:
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const RECT& rcQel) const override;
};
