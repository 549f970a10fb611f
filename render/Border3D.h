// The raised or sunken border of rectangles and draw regions.
#pragma once

#include <windows.h>

#include <cstdint>

constexpr COLORREF BORDER_LIGHT = 0xFFFFFF; // fixed: a border does not follow the element's colours
constexpr COLORREF BORDER_DARK = 0;

// The width in pixels that a style word asks for: its high 16 bits, 0 meaning 2.
int32_t BorderWidthOf(uint32_t nStyle);

// How far the rings of a border that is wider than its rectangle come out beyond it: they pass each
// other in the middle.
constexpr int32_t BorderReach(const RECT& rc, int32_t nWidth)
{
    const int64_t nAcross = int64_t{rc.right} - rc.left;
    const int64_t nDown = int64_t{rc.bottom} - rc.top;
    const int64_t nOut = nWidth - (nAcross < nDown ? nAcross : nDown);
    return nOut > 0 ? static_cast<int32_t>(nOut < INT32_MAX ? nOut : INT32_MAX) : 0;
}

// Draws nWidth rings of one pixel from the edge of rc inwards, left and top in clrLight, right and
// bottom in clrDark. 0, and nothing is drawn, when rc is empty or does not meet rcQel.
int DrawBorder3D(HDC hdc, const RECT& rc, COLORREF clrLight, COLORREF clrDark, const RECT& rcQel,
                 int32_t nWidth);
