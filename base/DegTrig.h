// Trigonometry and geometry of dials: cosine and sine in degrees from a table of whole degrees, the
// vector of a clock hand, and the intersection of two lines.
#pragma once

#include <cstdint>

struct DegVector {
    int32_t x;
    int32_t y;
};

// Entry n of the table: the cosine of n degrees (0 to 90), and what to add for the next degree.
struct DegEntry {
    double fCos;
    double fStep;
};
const DegEntry& DegTableAt(int nDegree);

double DegCos(float fAngle);
double DegSin(float fAngle);

// The hand of a clock for a part of a full turn: 0 points straight up, growing fractions clockwise.
DegVector ClockVector(DegVector radii, double fFraction);

// Where the line through points 1 and 2 meets the line through points 3 and 4. Result: 1 with the
// point written, 0 with it untouched when there is none.
int IntersectLines(DegVector* pOut, int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t x3,
                   int32_t y3, int32_t x4, int32_t y4);
