// The raised or sunken border of rectangles and draw regions.
#pragma once

#include "base/QelRect.h"

#include <windows.h>

#include <cstdint>

constexpr COLORREF BORDER_LIGHT = 0xFFFFFF; // fixed: a border does not follow the element's colours
constexpr COLORREF BORDER_DARK = 0;

// The width in pixels that a style word asks for: its high 16 bits, 0 meaning 2.
int32_t BorderWidthOf(uint32_t nStyle);

// What a border of so many device units paints on. The rings of one that is wider than its
// rectangle pass each other in the middle and come out beyond it.
RECT BorderBox(const RECT& rc, int32_t nWidth);

// Draws nWidth rings of one pixel, at the scale of rcQel, from the edge of rc inwards, left and top
// in clrLight, right and bottom in clrDark. 0, and nothing is drawn, when rc is empty or does not
// meet rcQel.
int DrawBorder3D(HDC hdc, const RECT& rc, COLORREF clrLight, COLORREF clrDark, const QelRect& rcQel,
                 int32_t nWidth);

// The border that a style word asks for, if any.
void DrawStyledBorder(HDC hdc, const RECT& rc, uint32_t nStyle, const QelRect& rcQel);
