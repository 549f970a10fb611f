// The numbers of a scale element: where marks stand, where the value is, and the angles of the
// round and arc types. Plain functions, so that the view has nothing left but painting.
#pragma once

#include <windows.h>

#include <cstdint>

constexpr int32_t MAX_DRAWN_DIVISIONS = 10000; // more draw as this many

// The value and its range. Whole values compare without sign; real ones are kept apart.
struct ScaleValue {
    uint32_t nLow;
    uint32_t nHigh;
    uint32_t nValue;
    float fValue;
    bool bFloat;
};

// An empty range counts from 0 to the number of divisions.
ScaleValue RepairedRange(ScaleValue value, int32_t nDivisions);

// Which part of a length belongs to the value: 0 below the range, all of it above.
int32_t ValueLength(const ScaleValue& value, int32_t nLength);

// The number of divisions held between its least and its most, the most having the last word; and
// how many of them are drawn. Below 1: none.
int32_t HeldDivisions(int32_t nDivisions, int32_t nLeast, int32_t nMost);
int32_t DrawnDivisions(int32_t nDivisions);

// The centre and the radii of a round or arc scale in device units.
struct RoundScale {
    POINT ptCentre;
    int32_t nTick;
    int32_t nCircle;
    int32_t nHub;
};

// nGeometry: the element's own; rcMapped: what the square of its tick radius has become. The other
// radii keep their proportion to the tick radius.
RoundScale MakeRoundScale(const LONG* pnGeometry, const RECT& rcMapped);

// A point of a circle; angles in degrees, counter-clockwise from the right.
POINT ScalePoint(POINT ptCentre, int32_t nRadius, int32_t nAngle);

// From where a round scale counts, and which way.
struct ScaleStart {
    int32_t nAngle;
    bool bClockwise;
};
ScaleStart StartOf(uint32_t nStartCode); // above 7 counts as 0

// The two ends of the value's part of a scale.
struct ScaleSweep {
    int32_t nFrom;
    int32_t nTo;
    bool bClockwise;
    [[nodiscard]] bool IsFullTurn() const { return nTo - nFrom == 360 || nFrom - nTo == 360; }
};
ScaleSweep RoundSweep(const ScaleValue& value, uint32_t nStartCode, int32_t nOffset);
// An arc counts from its start, or back from its end with the start codes 0 to 3.
ScaleSweep ArcSweep(const ScaleValue& value, uint32_t nStartCode, int32_t nStart, int32_t nEnd);
