// The meter type "clock": it shows the time of day, whatever its value. Only with real values does
// it show the plain dial's needle instead of the hands.
#pragma once

#include "meter/ArcMeter.h"
#include "meter/ClockPin.h"

class CClockMeter final : public CArcMeter {
public:
    CClockMeter(int32_t nRadius, bool bFullCircle) noexcept
        : CArcMeter(nRadius, DialStart(bFullCircle), DialEnd(bFullCircle), 0)
    {
    }

    using CArcMeter::DrawPin;
    using CArcMeter::ErasePin;
    int DrawScale(HDC hdc) override;
    int DrawAxis(HDC hdc) override; // nothing
    int DrawLabels(HDC hdc) override;
    int DrawPin(HDC hdc, int32_t nValue, uint32_t nFlags) override;
    int ErasePin(HDC hdc, int32_t nValue, uint32_t nFlags) override; // at the time last drawn

private:
    ClockTimes m_drawn{};
    bool m_bDrawn = false; // there are hands to erase
};
