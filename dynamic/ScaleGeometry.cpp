#include "dynamic/ScaleGeometry.h"

#include "base/WrapMath.h"
#include "render/Mapping.h"

#include <cmath>

namespace {

constexpr int32_t FULL_TURN = 360;
constexpr double PI = 3.14159265358979323846;
constexpr uint32_t FIRST_COUNTER_CLOCKWISE = 4;

// By start code; a full turn instead of 0 where the scale counts down from it.
constexpr ScaleStart g_starts[] = {{90, true},  {270, true},  {180, true},  {360, true},
                                   {90, false}, {270, false}, {180, false}, {0, false}};
constexpr uint32_t START_COUNT = sizeof g_starts / sizeof g_starts[0];

// nLength * (value - low) / (high - low), truncated, for a value within the range.
template <class Number>
int32_t Proportion(int32_t nLength, Number value, Number low, Number high)
{
    return static_cast<int32_t>(static_cast<Number>(nLength) * (value - low) / (high - low));
}

} // namespace

ScaleValue RepairedRange(ScaleValue value, int32_t nDivisions)
{
    if (value.nHigh > value.nLow) return value;
    value.nLow = 0;
    value.nHigh = nDivisions > 0 ? static_cast<uint32_t>(nDivisions) : 0;
    return value;
}

int32_t ValueLength(const ScaleValue& value, int32_t nLength)
{
    if (value.nHigh <= value.nLow) return 0;
    if (value.bFloat) {
        const double fValue = value.fValue;
        if (fValue > value.nHigh) return nLength;
        if (!(fValue >= value.nLow)) return 0;
        return Proportion<double>(nLength, fValue, value.nLow, value.nHigh);
    }
    if (value.nValue > value.nHigh) return nLength;
    if (value.nValue < value.nLow) return 0;
    return Proportion<int64_t>(nLength, value.nValue, value.nLow, value.nHigh);
}

int32_t HeldDivisions(int32_t nDivisions, int32_t nLeast, int32_t nMost)
{
    if (nDivisions < nLeast) nDivisions = nLeast;
    return nDivisions < nMost ? nDivisions : nMost;
}

int32_t DrawnDivisions(int32_t nDivisions)
{
    return nDivisions < MAX_DRAWN_DIVISIONS ? nDivisions : MAX_DRAWN_DIVISIONS;
}

RoundScale MakeRoundScale(const LONG* pnGeometry, const RECT& rcMapped)
{
    const int32_t nWidth = WidthOf(rcMapped);
    const int32_t nHeight = HeightOf(rcMapped);
    const int32_t nTick = (nWidth < nHeight ? nWidth : nHeight) / 2;
    const auto inProportion = [&](int32_t n) {
        return static_cast<int32_t>(
            SafeDiv64(static_cast<int64_t>(n) * nTick, static_cast<int64_t>(pnGeometry[2])));
    };
    return {
        {WrapAdd(rcMapped.left, rcMapped.right) / 2, WrapAdd(rcMapped.top, rcMapped.bottom) / 2},
        nTick,
        inProportion(pnGeometry[3]),
        inProportion(pnGeometry[4])};
}

POINT ScalePoint(POINT ptCentre, int32_t nRadius, int32_t nAngle)
{
    const double fAngle = nAngle * PI / 180;
    return {WrapAdd(ptCentre.x, TruncToInt(std::cos(fAngle) * nRadius)),
            WrapSub(ptCentre.y, TruncToInt(std::sin(fAngle) * nRadius))};
}

ScaleStart StartOf(uint32_t nStartCode)
{
    return g_starts[nStartCode < START_COUNT ? nStartCode : 0];
}

ScaleSweep RoundSweep(const ScaleValue& value, uint32_t nStartCode, int32_t nOffset)
{
    const ScaleStart start = StartOf(nStartCode);
    const int32_t nSweep = ValueLength(value, FULL_TURN);
    return {start.nAngle + nOffset, start.nAngle + (start.bClockwise ? -nSweep : nSweep) + nOffset,
            start.bClockwise};
}

ScaleSweep ArcSweep(const ScaleValue& value, uint32_t nStartCode, int32_t nStart, int32_t nEnd)
{
    const int32_t nSweep = ValueLength(value, WrapSub(nEnd, nStart));
    const bool bDownwards = nEnd < nStart;
    if (nStartCode < FIRST_COUNTER_CLOCKWISE) return {nEnd, WrapSub(nEnd, nSweep), !bDownwards};
    return {nStart, WrapAdd(nStart, nSweep), bDownwards};
}
