// The three hands of the clock, in five styles. The hour hand follows local time, the other two
// the system's universal time; where the local offset is not a whole number of hours
// the minute hand shows the universal minute.
#pragma once

#include "base/ClockTimes.h"
#include "base/PixelScale.h"

#include <windows.h>

#include <cstdint>

class CClockPin {
public:
    CClockPin(int32_t nRadius, COLORREF clrHand, COLORREF clrFace, CPixelScale px = {}) noexcept
        : m_nRadius(nRadius), m_clrHand(clrHand), m_clrFace(clrFace), m_px(px)
    {
    }
    virtual ~CClockPin() = default;
    CClockPin(const CClockPin&) = delete;
    CClockPin& operator=(const CClockPin&) = delete;

    static ClockTimes Now() { return ClockTimes::Now(); }

    // Hour, minute and second hand, in this order. A style out of 0 to 4 draws none of them, and
    // the result is 1 all the same.
    int Draw(HDC hdc, POINT ptCentre, int32_t nStyle, const ClockTimes& times) const;
    // The same hands wholly in the face colour, which takes them away.
    int Erase(HDC hdc, POINT ptCentre, int32_t nStyle, const ClockTimes& times) const;

private:
    int32_t m_nRadius;
    COLORREF m_clrHand;
    COLORREF m_clrFace;
    CPixelScale m_px;
};
