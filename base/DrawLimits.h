// How far the system is asked to draw. It works through a curve pixel by pixel, and through the
// whole of a wide pen for each: numbers that no picture needs, but that a damaged file may hold,
// would keep the host for minutes, or end it.
#pragma once

#include <windows.h>

#include <cstdint>

constexpr int32_t MAX_CURVE_SIDE = 131072; // pixels; larger ellipses and parts are left out
constexpr int32_t MAX_PEN_WIDTH = 10000;   // pixels; wider pens are drawn as wide as this

constexpr bool IsDrawableCurve(const RECT& rc)
{
    const int64_t nWidth = int64_t{rc.right} - rc.left;
    const int64_t nHeight = int64_t{rc.bottom} - rc.top;
    return nWidth <= MAX_CURVE_SIDE && nWidth >= -MAX_CURVE_SIDE && nHeight <= MAX_CURVE_SIDE &&
           nHeight >= -MAX_CURVE_SIDE;
}

constexpr int32_t DrawnPenWidth(int32_t nWidth)
{
    if (nWidth > MAX_PEN_WIDTH) return MAX_PEN_WIDTH;
    return nWidth < -MAX_PEN_WIDTH ? -MAX_PEN_WIDTH : nWidth;
}
