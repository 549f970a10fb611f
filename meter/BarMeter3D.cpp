#include "meter/BarMeter3D.h"

#include "base/WrapMath.h"

RECT CLongBarMeter3D::Column() const
{
    RECT rc{};
    if (!Region() || ::GetRgnBox(Region(), &rc) == ERROR || ::IsRectEmpty(&rc)) return RECT{};
    return {BarRect().left, rc.top, WrapSub(BarRect().right, 1), rc.bottom}; // as the values do
}

RECT CLongBarMeter3D::ColumnIn(const RECT& rcFace) const
{
    return {BarRect().left, rcFace.top, BarRect().right, rcFace.bottom};
}
