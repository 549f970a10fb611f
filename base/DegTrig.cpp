// The degree table and the functions on it. Dials are painted with these and never with the
// library's trigonometry, so that every machine gives the same pixels.
#include "base/DegTrig.h"

#include "base/WrapMath.h"

#include <array>
#include <cmath>

namespace {

// A fixed number of decimals, written out once and rounded the way the numbers are printed.
consteval double Rounded(double f, double fScale)
{
    const double fScaled = f * fScale;
    const auto nWhole = static_cast<int64_t>(fScaled + (fScaled < 0 ? -0.5 : 0.5));
    return static_cast<double>(nWhole) / fScale;
}

// Taylor series: exact to the last bit that matters over 0 to 90 degrees, and usable by the
// compiler.
consteval double CosOfDegree(int nDegree)
{
    if (nDegree == 90) return 0.0;
    const double fX = nDegree * (3.14159265358979323846 / 180.0);
    double fTerm = 1.0;
    double fSum = 1.0;
    for (int n = 1; n < 20; ++n) {
        fTerm *= -fX * fX / ((2.0 * n - 1.0) * (2.0 * n));
        fSum += fTerm;
    }
    return fSum;
}

// Seven significant digits: the steps run from 0.00015 to 0.017, so the scale follows their size.
consteval double RoundedStep(double f)
{
    double fScale = 1e7;
    double fSize = f < 0 ? -f : f;
    while (fSize < 0.1) {
        fSize *= 10.0;
        fScale *= 10.0;
    }
    return Rounded(f, fScale);
}

consteval std::array<DegEntry, 91> MakeTable()
{
    std::array<DegEntry, 91> table{};
    for (int n = 0; n < 90; ++n)
        table[static_cast<std::size_t>(n)] = {Rounded(CosOfDegree(n), 1e6),
                                              RoundedStep(CosOfDegree(n + 1) - CosOfDegree(n))};
    table[90] = {0.0, table[89].fStep};
    return table;
}

constexpr std::array<DegEntry, 91> g_table = MakeTable();

// The whole degrees of an angle, as a 16-bit number.
int WholeDegrees(float fAngle)
{
    return static_cast<int16_t>(static_cast<uint16_t>(TruncToInt(fAngle)));
}

// The cosine of nDegrees (0 or more) plus fPart of a degree.
double Quadrant(int nDegrees, double fPart)
{
    const int nQuarter = nDegrees / 90;
    const int nRest = nDegrees - 90 * nQuarter;
    const DegEntry& up = DegTableAt(nRest);
    switch (nQuarter % 4) {
    case 0:
        return up.fCos + fPart * up.fStep;
    case 1:
        return fPart * DegTableAt(89 - nRest).fStep - DegTableAt(90 - nRest).fCos;
    case 2:
        return -(up.fCos + fPart * up.fStep);
    default:
        return DegTableAt(90 - nRest).fCos - fPart * DegTableAt(89 - nRest).fStep;
    }
}

// Where a line that is not parallel to an axis passes a given x (or, with the axes exchanged, y).
// The base point is the second one when the other line's first point shares its first coordinate.
int32_t AlongLine(int32_t a1, int32_t b1, int32_t a2, int32_t b2, int32_t a3)
{
    if (a3 == a1) return WrapAdd(WrapMulDiv(WrapSub(b1, b2), WrapSub(a3, a2), WrapSub(a1, a2)), b2);
    return WrapAdd(WrapMulDiv(WrapSub(b2, b1), WrapSub(a3, a1), WrapSub(a2, a1)), b1);
}

int IntersectOblique(DegVector* pOut, DegVector p1, DegVector p2, DegVector p3, DegVector p4)
{
    const double fSlope1 = (static_cast<double>(p2.y) - p1.y) / (static_cast<double>(p2.x) - p1.x);
    const double fSlope2 = (static_cast<double>(p4.y) - p3.y) / (static_cast<double>(p4.x) - p3.x);
    if (std::fabs(fSlope1 - fSlope2) < 0.1) return 0; // counts as parallel

    const int64_t dx1 = static_cast<int64_t>(p2.x) - p1.x;
    const int64_t dy1 = static_cast<int64_t>(p2.y) - p1.y;
    const int64_t dx2 = static_cast<int64_t>(p4.x) - p3.x;
    const int64_t dy2 = static_cast<int64_t>(p4.y) - p3.y;
    const int64_t nDifference = static_cast<int64_t>(p1.y) - p3.y; // this way round
    const int64_t nAbove = WrapAdd64(
        WrapSub64(WrapMul64(WrapMul64(dy1, dx2), p1.x), WrapMul64(WrapMul64(dy2, dx1), p3.x)),
        WrapMul64(WrapMul64(dx1, dx2), nDifference));
    const int64_t nBelow = WrapSub64(WrapMul64(dy1, dx2), WrapMul64(dy2, dx1));
    const int64_t nX = SafeDiv64(nAbove, nBelow);
    const int64_t nY =
        SafeDiv64(WrapAdd64(WrapMul64(WrapSub64(nX, p1.x), dy1), WrapMul64(p1.y, dx1)), dx1);
    pOut->x = static_cast<int32_t>(static_cast<uint32_t>(nX));
    pOut->y = static_cast<int32_t>(static_cast<uint32_t>(nY));
    return 1;
}

} // namespace

const DegEntry& DegTableAt(int nDegree)
{
    return g_table[static_cast<std::size_t>(nDegree)];
}

double DegCos(float fAngle)
{
    const int nWhole = WholeDegrees(fAngle);
    if (nWhole < 0) return Quadrant(-nWhole, static_cast<double>(nWhole) - fAngle);
    return Quadrant(nWhole, static_cast<double>(fAngle) - nWhole);
}

// The cosine of the angle less 90. Between 0 and 90 degrees it reaches back from the next whole
// degree.
double DegSin(float fAngle)
{
    const int nWhole = WholeDegrees(fAngle);
    const int nShifted = static_cast<int16_t>(nWhole - 90);
    if (nShifted < 0) return Quadrant(-nShifted, static_cast<double>(nWhole) - fAngle);
    return Quadrant(nShifted, static_cast<double>(fAngle) - nWhole);
}

DegVector ClockVector(DegVector radii, double fFraction)
{
    const auto fAngle = static_cast<float>(fFraction * 360.0);
    return {TruncToInt(DegSin(fAngle) * radii.x), TruncToInt(-DegCos(fAngle) * radii.y)};
}

int IntersectLines(DegVector* pOut, int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t x3,
                   int32_t y3, int32_t x4, int32_t y4)
{
    const bool bVertical1 = x1 == x2;
    const bool bVertical2 = x3 == x4;
    const bool bLevel1 = y1 == y2;
    const bool bLevel2 = y3 == y4;
    if ((bVertical1 && bLevel1) || (bVertical2 && bLevel2)) return 0; // a point is no line
    if (x1 == x3 && y1 == y3 && x2 == x4 && y2 == y4) return 0;
    if ((bVertical1 && bVertical2) || (bLevel1 && bLevel2)) return 0;

    if (bVertical1) {
        const int32_t nY =
            bLevel2 ? y3
                    : WrapAdd(WrapMulDiv(WrapSub(y4, y3), WrapSub(x1, x3), WrapSub(x4, x3)), y3);
        *pOut = {x1, nY};
        return 1;
    }
    if (bLevel1) {
        const int32_t nX =
            bVertical2 ? x3
                       : WrapAdd(WrapMulDiv(WrapSub(x4, x3), WrapSub(y1, y3), WrapSub(y4, y3)), x3);
        *pOut = {nX, y1};
        return 1;
    }
    if (bVertical2) {
        *pOut = {x3, AlongLine(x1, y1, x2, y2, x3)};
        return 1;
    }
    if (bLevel2) {
        *pOut = {AlongLine(y1, x1, y2, x2, y3), y3};
        return 1;
    }
    return IntersectOblique(pOut, {x1, y1}, {x2, y2}, {x3, y3}, {x4, y4});
}
