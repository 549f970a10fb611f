// The ticks of the "pieUpgrade" meter, in the ring between the sector and the numbers: lines, and
// upright squares for the major ones.
#pragma once

#include <windows.h>

#include <cstdint>

class CPieMeterScale {
public:
    enum class Kind { Major, Minor };

    CPieMeterScale(Kind kind, COLORREF clr) noexcept : m_kind(kind), m_clr(clr) {}
    virtual ~CPieMeterScale() = default;
    CPieMeterScale(const CPieMeterScale&) = delete;
    CPieMeterScale& operator=(const CPieMeterScale&) = delete;

    // Axis style 0: major squares, minor lines. 1: squares for both, the major ones larger. 2:
    // lines for both. 3: major squares alone. Another style counts as 0.
    int Draw(HDC hdc, POINT ptCentre, int32_t nRadius, float fAngle, int32_t nAxisStyle) const;

private:
    Kind m_kind;
    COLORREF m_clr;
};
