// The shapes in a rectangle; see the header.
#include "render/QELViewBox.h"

#include "render/Mapping.h"
#include "render/QELRotate.h"

RECT CQELViewBox::Box() const
{
    return {Words()[0], Words()[1], Words()[2], Words()[3]};
}

void CQELViewBox::SetBoxInside(const RECT& rc)
{
    RECT rcInside = rc;
    KeepRectInside(&rcInside, RefW(), RefH());
    Words()[0] = rcInside.left;
    Words()[1] = rcInside.top;
    Words()[2] = rcInside.right;
    Words()[3] = rcInside.bottom;
}

int CQELViewBox::Rotate(POINT ptCentre, int32_t nAngle)
{
    const int32_t nTurn = QuarterTurn(nAngle);
    RECT rc = Box();
    if (!CQELRotate(ptCentre, WrapSub(nTurn, Rotation())).RotateRect(&rc)) return 0;
    SetBoxInside(rc);
    SetRotation(nTurn);
    return 1;
}

int CQELViewBox::MoveX(int32_t nDx)
{
    RECT rc = Box();
    rc.left = WrapAdd(rc.left, nDx);
    rc.right = WrapAdd(rc.right, nDx);
    SetBoxInside(rc);
    return 1;
}

int CQELViewBox::MoveY(int32_t nDy)
{
    RECT rc = Box();
    rc.top = WrapAdd(rc.top, nDy);
    rc.bottom = WrapAdd(rc.bottom, nDy);
    SetBoxInside(rc);
    return 1;
}
