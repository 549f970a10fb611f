// The view of a line. It is turned and moved freely, not kept inside the drawing. The document side
// is document/QELDocLine.h.
#pragma once

#include "render/QELViewPoints.h"

class CQELViewLine final : public CQELViewPoints {
public:
    CQELViewLine(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept
        : CQELViewPoints(nRefW, nRefH, QEL_TYPE_LINE, pPool)
    {
    }

    int NewInstance(CQELViewElm** ppOut) const override;
    int Rotate(POINT ptCentre, int32_t nAngle) override;
    int MoveX(int32_t nDx) override;
    int MoveY(int32_t nDy) override;

protected:
    int MapFigure(const RECT& rcQel, uint32_t nFlags, DeviceFigure* pOut) const override;
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const RECT& rcQel) const override;
    [[nodiscard]] bool IsOutlineOnly() const override { return true; }
};
