// The sixty marks of the clock: rectangles, discs and lines in a ring at its rim.
#pragma once

#include <windows.h>

#include <cstdint>

class CClockScale {
public:
    explicit CClockScale(COLORREF clr) noexcept : m_clr(clr) {}
    virtual ~CClockScale() = default;
    CClockScale(const CClockScale&) = delete;
    CClockScale& operator=(const CClockScale&) = delete;

    // Axis style 0: rectangles at the quarters, discs at the other hours, lines at the minutes. 1:
    // lines alone, longer and broader at the hours. 2: discs alone, larger at the hours. 3:
    // rectangles at the quarters, lines elsewhere, short ones at the minutes. Another style counts
    // as 0.
    int Draw(HDC hdc, POINT ptCentre, int32_t nRadius, int32_t nAxisStyle) const;

private:
    COLORREF m_clr;
};
