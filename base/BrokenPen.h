// Pens of lines and gaps that stand for those of one pixel at another scale.
#pragma once

#include "base/WrapMath.h"

#include <windows.h>

#include <cstdint>

// The selected pen, if it is such a one.
struct BrokenPen {
    static constexpr DWORD MOST_LENGTHS = 6;

    COLORREF clr;
    DWORD nCount; // of lengths, in units: a line, a gap and so on
    DWORD nLengths[MOST_LENGTHS];
};
bool FindBrokenPen(HDC hdc, BrokenPen* pOut);
bool IsBrokenNow(HDC hdc);

// Draws with it from point to point, from edge to edge of pixels that are nPixel units large: the
// system's own lines are up to a unit off behind a corner. False: not all of them are upright, or
// they go far beyond any surface.
bool DrawUprightDashes(HDC hdc, const POINT* pPoints, int nCount, int32_t nPixel);
