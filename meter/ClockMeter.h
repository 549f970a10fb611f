// The meter type "clock", with the marks and the numerals of its face; its hands are
// meter/ClockPin.h.
#pragma once

#include "meter/ArcMeter.h"
#include "meter/ClockPin.h"

#include <windows.h>

#include <cstdint>

// The sixty marks: rectangles, discs and lines in a ring at the rim.
class CClockScale {
public:
    explicit CClockScale(COLORREF clr, CPixelScale px = {}) noexcept : m_clr(clr), m_px(px) {}
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
    CPixelScale m_px;
};

// The numerals, each centred on its place inside of the ring of marks.
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
    CPixelScale m_px;
    FontCell m_cell{};
    HFONT m_hFont;
    COLORREF m_clr;
};

// It shows the time of day, whatever its value. Only with real values does it show the plain dial's
// needle instead of the hands.
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
    void SetClock(const ClockTimes* pClock) override { m_pClock = pClock; }

private:
    const ClockTimes* m_pClock = nullptr; // null: the present time
    ClockTimes m_drawn{};
    bool m_bDrawn = false; // there are hands to erase
};
