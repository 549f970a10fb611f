// How far the system is asked to draw. It works through a curve pixel by pixel, and through the
// whole of a wide pen for each: numbers that no picture needs, but that a damaged file may hold,
// would keep the host for minutes, or end it.
#pragma once

#include "base/PixelScale.h"

#include <windows.h>

#include <cstdint>

constexpr int32_t MAX_CURVE_SIDE = 131072; // pixels; larger ellipses and parts are left out
constexpr int32_t MAX_PEN_WIDTH = 10000;   // pixels; wider pens are drawn as wide as this
// Of a pen with dashes or dots, which the system puts together from pieces, each with its own ends.
constexpr int32_t MAX_BROKEN_PEN_WIDTH = 100;
// Pixels, of a character; larger ones are left out. A system without limits works for minutes on a
// single letter.
constexpr int32_t MAX_FONT_CELL = 8192;

constexpr bool IsDrawableCurve(const RECT& rc, CPixelScale px = {})
{
    const int64_t nMost = px(MAX_CURVE_SIDE);
    const int64_t nWidth = int64_t{rc.right} - rc.left;
    const int64_t nHeight = int64_t{rc.bottom} - rc.top;
    return nWidth <= nMost && nWidth >= -nMost && nHeight <= nMost && nHeight >= -nMost;
}

// What a pen may be wide follows from what it costs.
constexpr int32_t DrawnPenWidth(int32_t nStyle, int32_t nWidth)
{
    const bool bBroken = nStyle >= PS_DASH && nStyle <= PS_DASHDOTDOT;
    const int32_t nMost = bBroken ? MAX_BROKEN_PEN_WIDTH : MAX_PEN_WIDTH;
    if (nWidth > nMost) return nMost;
    return nWidth < -nMost ? -nMost : nWidth;
}

// Of a pen that stays inside of a curve's box, which has to leave one pixel of it.
constexpr int32_t FramePenWidth(int32_t nWidth, const RECT& rc, CPixelScale px = {})
{
    const int64_t nAcross = int64_t{rc.right} - rc.left;
    const int64_t nDown = int64_t{rc.bottom} - rc.top;
    const int64_t nMost = (nAcross < nDown ? nAcross : nDown) - px(2);
    if (nWidth <= nMost) return nWidth;
    return nMost < 1 ? 1 : static_cast<int32_t>(nMost);
}

constexpr bool IsDrawableCell(int32_t nWidth, int32_t nHeight, CPixelScale px = {})
{
    return nWidth <= px(MAX_FONT_CELL) && nHeight <= px(MAX_FONT_CELL);
}
