// The meter types "pie" and "pieUpgrade", the dials whose value is a filled sector, and what they
// draw with: the sector and the ticks.
#pragma once

#include "brush/ShownDraft.h"
#include "meter/ArcMeter.h"

#include <windows.h>

#include <cstdint>

// The sector: a hatch or gradient over a part of a disc.
class CArcFill {
public:
    CArcFill(int32_t nStyle, COLORREF clrBack, COLORREF clrFore, CPixelScale px = {}) noexcept
        : m_draft(nStyle, px), m_clrBack(clrBack), m_clrFore(clrFore), m_px(px)
    {
    }
    virtual ~CArcFill() = default;
    CArcFill(const CArcFill&) = delete;
    CArcFill& operator=(const CArcFill&) = delete;

    // From fStart over fSweep degrees. 1 without drawing for less than a degree; 0 for a sector
    // that GDI would paint as a full disc, and without a brush.
    int Draw(HDC hdc, int32_t nRadius, POINT ptCentre, float fStart, float fSweep);

private:
    CShownDraft m_draft;
    COLORREF m_clrBack;
    COLORREF m_clrFore;
    CPixelScale m_px;
};

// The ticks of "pieUpgrade", in the ring between the sector and the numbers: lines, and upright
// squares for the major ones.
class CPieMeterScale {
public:
    enum class Kind { Major, Minor };

    CPieMeterScale(Kind kind, COLORREF clr, CPixelScale px = {}) noexcept
        : m_kind(kind), m_clr(clr), m_px(px)
    {
    }
    virtual ~CPieMeterScale() = default;
    CPieMeterScale(const CPieMeterScale&) = delete;
    CPieMeterScale& operator=(const CPieMeterScale&) = delete;

    // Axis style 0: major squares, minor lines. 1: squares for both, the major ones larger. 2:
    // lines for both. 3: major squares alone. Another style counts as 0.
    int Draw(HDC hdc, POINT ptCentre, int32_t nRadius, float fAngle, int32_t nAxisStyle) const;

private:
    Kind m_kind;
    COLORREF m_clr;
    CPixelScale m_px;
};

class CPieMeter : public CArcMeter {
public:
    CPieMeter(int32_t nRadius, float fStart, float fEnd) noexcept
        : CArcMeter(nRadius, fStart, fEnd, 0)
    {
    }

    int DrawFill(HDC hdc, float fValue, uint32_t nFlags) override;
    int DrawFill(HDC hdc, int32_t nValue, uint32_t nFlags) override;
    int DrawAlarmZones(HDC hdc) override; // nothing

    void SetSectorColor(COLORREF clr) { m_clrSector = clr; }
    void SetEraseColor(COLORREF clr) { m_clrErase = clr; }
    void SetSectorStyle(int32_t nStyle) { m_nSectorStyle = nStyle; }
    [[nodiscard]] COLORREF SectorColor() const { return m_clrSector; }
    [[nodiscard]] COLORREF EraseColor() const { return m_clrErase; }
    [[nodiscard]] int32_t SectorStyle() const { return m_nSectorStyle; }

private:
    int FillTo(HDC hdc, double fValue, uint32_t nFlags) const;

    COLORREF m_clrSector = 0xFFFFFF;
    COLORREF m_clrErase = 0;
    int32_t m_nSectorStyle = 0;
};

// Squares and lines as ticks, larger numbers and an outline of the whole span.
class CPieUpgradeMeter final : public CPieMeter {
public:
    using CPieMeter::CPieMeter;

    int DrawScale(HDC hdc) override;
    int DrawLabels(HDC hdc) override;
    int DrawFrame(HDC hdc) override;
};
