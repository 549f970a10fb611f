#include "meter/CircleMeter.h"

#include "meter/AnglePin.h"

int CCircleMeter::PaintNeedle(HDC hdc, float fAngle, bool bErase) const
{
    const int32_t nTip = BladeLength(Radius());
    return CAnglePin(1, nTip / 5, nTip, bErase ? FaceColor() : PinColor(), FaceColor())
        .Draw(hdc, Centre(), fAngle);
}
