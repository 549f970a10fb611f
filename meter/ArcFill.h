// The filled sector of the pie meters: a hatch or gradient over a part of a disc.
#pragma once

#include "brush/ShownDraft.h"

#include <cstdint>

class CArcFill {
public:
    CArcFill(int32_t nStyle, COLORREF clrBack, COLORREF clrFore) noexcept
        : m_draft(nStyle), m_clrBack(clrBack), m_clrFore(clrFore)
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
};
