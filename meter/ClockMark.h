// The numerals of the clock, each centred on its place inside of the ring of marks.
#pragma once

#include "meter/Meter.h"

class CClockMark {
public:
    // The size goes by the radius, unless the meter has a font size code.
    CClockMark(const CMeter& meter, int32_t nRadius, COLORREF clr) noexcept;
    virtual ~CClockMark();
    CClockMark(const CClockMark&) = delete;
    CClockMark& operator=(const CClockMark&) = delete;

    // All twelve, 12 at the top.
    int Draw(HDC hdc, POINT ptCentre) const;

    [[nodiscard]] FontCell Cell() const { return m_cell; }

private:
    void DrawNumeral(HDC hdc, POINT ptCentre, int32_t nHour) const;

    int32_t m_nRadius;
    FontCell m_cell{};
    HFONT m_hFont;
    COLORREF m_clr;
};
