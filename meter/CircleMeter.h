// The meter type "round": the plain dial with a blade as needle.
#pragma once

#include "meter/ArcMeter.h"

class CCircleMeter final : public CArcMeter {
public:
    CCircleMeter(int32_t nRadius, bool bFullCircle, double fOffset) noexcept
        : CArcMeter(nRadius, DialStart(bFullCircle), DialEnd(bFullCircle), fOffset)
    {
    }

protected:
    int PaintNeedle(HDC hdc, float fAngle, bool bErase) const override;
};
