// What the shapes in a rectangle share (rectangle, rounded rectangle, ellipse, text): the turn and
// the move of the rectangle, kept inside the drawing.
#pragma once

#include "render/QELViewShape.h"

class CQELViewBox : public CQELViewShape {
public:
    CQELViewBox(int32_t nRefW, int32_t nRefH, int32_t nType, CPool* pPool = nullptr) noexcept
        : CQELViewShape(nRefW, nRefH, nType, pPool)
    {
    }

    int Rotate(POINT ptCentre, int32_t nAngle) override;
    int MoveX(int32_t nDx) override;
    int MoveY(int32_t nDy) override;

protected:
    [[nodiscard]] RECT Box() const;

private:
    void SetBoxInside(const RECT& rc);
};
