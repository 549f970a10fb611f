// The numbers of a dial: radii of the layers, points on circles, angles of values and ticks, and
// the place of a label. Plain functions, so that the layers have nothing left but painting.
// Angles are degrees from straight down, growing clockwise: 90 is left, 180 up, 270 right.
#pragma once

#include "base/PixelScale.h"
#include "base/WrapMath.h"

#include <windows.h>

#include <cstdint>

constexpr int32_t MAX_DIAL_RADIUS = 3000;

// The radii that the parts of a gauge or clock are drawn with. GDI is not asked for larger ones: it
// would spend itself on pixels that nobody sees.
constexpr int32_t MAX_DRAWN_RADIUS = 32767;
constexpr bool IsDrawableRadius(int32_t n, CPixelScale px = {})
{
    return n > 0 && n <= px(MAX_DRAWN_RADIUS);
}

// A radius after a step of subtraction: what is out of 0 to 3000 counts as 1.
constexpr int32_t ClampRadius(int32_t n, CPixelScale px = {})
{
    return static_cast<uint32_t>(n) <= static_cast<uint32_t>(px(MAX_DIAL_RADIUS)) ? n : px(1);
}

// The radii of the layers for a dial of radius r, told for the plain scale.
constexpr int32_t RimRadius(int32_t r, CPixelScale px = {})
{
    return ClampRadius(ClampRadius(WrapSub(r, px(2)), px) - px(12), px);
}
constexpr int32_t TickOuterRadius(int32_t r, CPixelScale px = {}) // r - 14
{
    return RimRadius(r, px);
}
constexpr int32_t AxisRadius(int32_t r, CPixelScale px = {}) // r - 18, where the ticks begin
{
    return ClampRadius(RimRadius(r, px) - px(4), px);
}
constexpr int32_t LabelRadius(int32_t r, CPixelScale px = {}) // r - 10
{
    return ClampRadius(ClampRadius(WrapSub(r, px(2)), px) - px(8), px);
}
constexpr int32_t NeedleLength(int32_t r, CPixelScale px = {}) // r - 21
{
    return ClampRadius(RimRadius(r, px) - px(7), px);
}
constexpr int32_t AlarmRadius(int32_t r, CPixelScale px = {}) // r - 25
{
    return ClampRadius(ClampRadius(RimRadius(r, px) - px(5), px) - px(6), px);
}
constexpr int32_t PieRadius(int32_t r, CPixelScale px = {}) // r - 19
{
    return ClampRadius(RimRadius(r, px) - px(5), px);
}
constexpr int32_t BladeLength(int32_t r, CPixelScale px = {}) // r - 17
{
    return ClampRadius(RimRadius(r, px) - px(3), px);
}

// From so many degrees on, two ends on one point are a whole disc or ring. Of a smaller sweep they
// are next to nothing, which GDI cannot tell from a whole turn.
constexpr float FULL_SWEEP = 355.0F;

// The point of a circle. A radius out of 0 to 3000 is replaced by 10.
POINT PolarPoint(POINT ptCentre, int32_t nRadius, float fAngle, CPixelScale px = {});

// The square around a circle.
RECT SquareAround(POINT ptCentre, int32_t nRadius);

// A span of values on a span of angles.
struct DialSpan {
    float fStart;
    float fEnd;
    int32_t nMin;
    int32_t nMax;
};
// The angle of a value; values outside have the angle of the nearer end.
float ValueToAngle(const DialSpan& span, double fValue);
// The same without ends: alarm limits may lie outside of the scale.
float UnclampedAngle(const DialSpan& span, double fValue);
// The angle of tick nTick of nCount.
float TickToAngle(const DialSpan& span, uint32_t nTick, uint32_t nCount);

// An angle as whole degrees, 0 to 359.
int32_t WholeAngle(float fAngle);

// Where a label's text begins: shifted from its anchor by quadrant, so that it stands clear of the
// ticks, and kept inside the rectangle.
POINT PlaceLabel(POINT ptAnchor, int32_t nAngle, SIZE text, const RECT& rcBounds);

// Whether GDI could not tell the sector between two points of a circle from a full disc. Only
// slopes are compared, so points on opposite sides of the centre count as well.
bool IsDegenerateSector(POINT ptCentre, POINT pt1, POINT pt0);
