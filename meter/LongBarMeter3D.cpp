// The meter type "horz3d"; see the header.
#include "meter/LongBarMeter3D.h"

RECT CLongBarMeter3D::Column() const
{
    RECT rc{};
    if (!Region() || ::GetRgnBox(Region(), &rc) == ERROR || ::IsRectEmpty(&rc)) return RECT{};
    return {BarRect().left, rc.top, BarRect().right, rc.bottom};
}
