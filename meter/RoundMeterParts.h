// What the "roundUpgrade" gauge draws with: ticks, bands, numbers and needles.
#pragma once

#include "meter/Meter.h"

#include <windows.h>

#include <cstdint>

// The ticks: strokes or wedges that hang from the band of the axis.
class CRoundMeterScale {
public:
    static constexpr int32_t MAJOR = 1;
    static constexpr int32_t MINOR = 2;

    CRoundMeterScale(int32_t nKind, COLORREF clr, CPixelScale px = {}) noexcept
        : m_nKind(nKind), m_clr(clr), m_px(px)
    {
    }
    virtual ~CRoundMeterScale() = default;
    CRoundMeterScale(const CRoundMeterScale&) = delete;
    CRoundMeterScale& operator=(const CRoundMeterScale&) = delete;

    // Axis style 0: strokes from the single band inwards. 1: wedges there. 2: strokes from the
    // outer band across the inner one. 3: wedges there. Another style, which has no band: as 0.
    int Draw(HDC hdc, POINT ptCentre, int32_t nRadius, float fAngle, int32_t nAxisStyle) const;

private:
    int32_t m_nKind;
    COLORREF m_clr;
    CPixelScale m_px;
};

// A band along the scale: the axis and the alarm zones.
class CRoundMeterArcAxis {
public:
    // The ends of the band are cut straight: a round end would lap over the next zone.
    CRoundMeterArcAxis(int32_t nBandWidth, COLORREF clr, CPixelScale px = {}) noexcept;
    virtual ~CRoundMeterArcAxis();
    CRoundMeterArcAxis(const CRoundMeterArcAxis&) = delete;
    CRoundMeterArcAxis& operator=(const CRoundMeterArcAxis&) = delete;

    // The band's middle lies at nRadius. 0 without a pen, for a radius of 0, and for
    // a band too short to have two ends.
    int Draw(HDC hdc, int32_t nRadius, POINT ptCentre, float fStart, float fSweep) const;

private:
    CPixelScale m_px;
    int32_t m_nPixels;
    HPEN m_hPen;
};

// The numbers, each centred on its anchor.
class CRoundMeterMark {
public:
    // The meter tells the character cell, by its font size code.
    CRoundMeterMark(const CMeter& meter, int32_t nRadius, COLORREF clr) noexcept;
    virtual ~CRoundMeterMark() = default;
    CRoundMeterMark(const CRoundMeterMark&) = delete;
    CRoundMeterMark& operator=(const CRoundMeterMark&) = delete;

    int Draw(HDC hdc, POINT ptAnchor, const char* pszText) const; // 0 without text or font

private:
    FontCell m_cell{};
    COLORREF m_clr;
    CPixelScale m_px;
};

// The needle, in five styles.
constexpr int32_t ROUND_PIN_STYLES = 5;

class CRoundMeterPin {
public:
    // The second colour is kept for those who derive from this; the needles do not use it.
    CRoundMeterPin(int32_t nRadius, COLORREF clrNeedle, COLORREF clrSecond,
                   CPixelScale px = {}) noexcept
        : m_nRadius(nRadius), m_clrNeedle(clrNeedle), m_clrSecond(clrSecond), m_px(px)
    {
    }
    virtual ~CRoundMeterPin() = default;
    CRoundMeterPin(const CRoundMeterPin&) = delete;
    CRoundMeterPin& operator=(const CRoundMeterPin&) = delete;

    // 0 for a style out of 0 to 4.
    int Draw(HDC hdc, POINT ptCentre, float fAngle, int32_t nStyle) const;
    [[nodiscard]] COLORREF SecondColor() const { return m_clrSecond; }

private:
    int32_t m_nRadius;
    COLORREF m_clrNeedle;
    COLORREF m_clrSecond;
    CPixelScale m_px;
};
