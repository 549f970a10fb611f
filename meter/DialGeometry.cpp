#include "meter/DialGeometry.h"

#include "base/DegTrig.h"
#include "base/WrapMath.h"

#include <cmath>

namespace {

constexpr int32_t STRAY_RADIUS = 10;
constexpr double SAME_SLOPE = 0.01;
constexpr float DEGREE_LIMIT = 32767.0F;

int32_t Trunc(double f)
{
    return TruncToInt(f);
}

// The degree functions hold whole degrees in 16 bits; beyond, an angle is brought back to within
// one turn. What is no angle points down.
float WithinReach(float fAngle)
{
    if (std::fabs(fAngle) < DEGREE_LIMIT) return fAngle;
    const float fRest = std::fmod(fAngle, 360.0F);
    return fRest == fRest ? fRest : 0.0F;
}

bool SameSide(int32_t a, int32_t b)
{
    return (a < 0 && b < 0) || (a > 0 && b > 0);
}

} // namespace

POINT PolarPoint(POINT ptCentre, int32_t nRadius, float fAngle, CPixelScale px)
{
    if (nRadius < 0 || nRadius > px(MAX_DIAL_RADIUS)) nRadius = px(STRAY_RADIUS);
    fAngle = WithinReach(fAngle);
    return {WrapSub(ptCentre.x, Trunc(nRadius * DegSin(fAngle))),
            WrapAdd(ptCentre.y, Trunc(nRadius * DegCos(fAngle)))};
}

RECT SquareAround(POINT ptCentre, int32_t nRadius)
{
    return {WrapSub(ptCentre.x, nRadius), WrapSub(ptCentre.y, nRadius),
            WrapAdd(ptCentre.x, nRadius), WrapAdd(ptCentre.y, nRadius)};
}

float UnclampedAngle(const DialSpan& span, double fValue)
{
    const double fSweep = static_cast<double>(span.fEnd) - span.fStart;
    return static_cast<float>(span.fStart + (fValue - span.nMin) * fSweep /
                                                (static_cast<double>(span.nMax) - span.nMin));
}

float ValueToAngle(const DialSpan& span, double fValue)
{
    if (fValue > span.nMin && fValue < span.nMax) return UnclampedAngle(span, fValue);
    return fValue <= span.nMin ? span.fStart : span.fEnd;
}

float TickToAngle(const DialSpan& span, uint32_t nTick, uint32_t nCount)
{
    if (nTick == 0) return span.fStart;
    if (nTick >= nCount) return span.fEnd;
    const double fSweep = static_cast<double>(span.fEnd) - span.fStart;
    return static_cast<float>(span.fStart + nTick * fSweep / nCount);
}

int32_t WholeAngle(float fAngle)
{
    const int32_t nAngle = TruncToInt(fAngle) % 360;
    return nAngle < 0 ? nAngle + 360 : nAngle;
}

POINT PlaceLabel(POINT ptAnchor, int32_t nAngle, SIZE text, const RECT& rcBounds)
{
    const double fHalfW = text.cx / 2.0;
    const double fHalfH = text.cy / 2.0;
    double fX = 0;
    double fY = 0;
    if (nAngle <= 90) {
        const double fSin = DegSin(static_cast<float>(nAngle));
        fX = (fSin + 1) * fHalfW;
        fY = fSin * fHalfH;
    } else if (nAngle <= 180) {
        const auto fRest = static_cast<float>(nAngle - 90);
        fX = (DegCos(fRest) + 1) * fHalfW;
        fY = (DegSin(fRest) + 1) * fHalfH;
    } else if (nAngle <= 270) {
        const double fCos = DegCos(static_cast<float>(nAngle - 180));
        fX = fCos * fHalfW;
        fY = (fCos + 1) * fHalfH;
    } else {
        const auto fRest = static_cast<float>(nAngle - 270);
        fX = DegSin(fRest) * fHalfW;
        fY = DegCos(fRest) * fHalfH;
    }
    POINT pt{WrapSub(ptAnchor.x, Trunc(fX)), WrapSub(ptAnchor.y, Trunc(fY))};
    if (pt.x < rcBounds.left) pt.x = rcBounds.left;
    if (pt.y < rcBounds.top) pt.y = rcBounds.top;
    if (WrapAdd(pt.x, text.cx) > rcBounds.right) pt.x = WrapSub(rcBounds.right, text.cx);
    if (WrapAdd(pt.y, text.cy) > rcBounds.bottom) pt.y = WrapSub(rcBounds.bottom, text.cy);
    return pt;
}

bool IsDegenerateSector(POINT ptCentre, POINT pt1, POINT pt0)
{
    const int32_t dx1 = WrapSub(pt1.x, ptCentre.x);
    const int32_t dy1 = WrapSub(pt1.y, ptCentre.y);
    const int32_t dx0 = WrapSub(pt0.x, ptCentre.x);
    const int32_t dy0 = WrapSub(pt0.y, ptCentre.y);
    if (dx1 == 0 && dx0 == 0 && SameSide(dy1, dy0)) return true;
    if (dy1 == 0 && dy0 == 0 && SameSide(dx1, dx0)) return true;
    if ((dx1 == 0 && dy1 == 0) || (dx0 == 0 && dy0 == 0)) return true;
    if (dx1 == dx0 && dy1 == dy0) return true;
    if (dx1 == 0 || dx0 == 0) return false; // one of them, or both on opposite sides
    const double fSlope1 = static_cast<double>(dy1) / dx1;
    const double fSlope0 = static_cast<double>(dy0) / dx0;
    return std::fabs(fSlope1 - fSlope0) < SAME_SLOPE;
}
