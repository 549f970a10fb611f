// Trigonometry of dials: the table, cosine and sine by its whole degrees, the hand of a clock, the
// intersection of lines, and the wrapping arithmetic beneath. The code is base/DegTrig.cpp.
#include "base/DegTrig.h"
#include "base/WrapMath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace {

double c(int nDegree)
{
    return DegTableAt(nDegree).fCos;
}

double d(int nDegree)
{
    return DegTableAt(nDegree).fStep;
}

double TrueCos(double fDegrees)
{
    return std::cos(fDegrees * std::acos(-1.0) / 180);
}

void ExpectHand(DegVector radii, double fFraction, int32_t x, int32_t y)
{
    const DegVector hand = ClockVector(radii, fFraction);
    EXPECT_EQ(x, hand.x) << radii.x << "," << radii.y << " at " << fFraction;
    EXPECT_EQ(y, hand.y) << radii.x << "," << radii.y << " at " << fFraction;
}

struct LinesRow {
    int32_t line1[4];
    int32_t line2[4];
    int nResult;
    DegVector at;
};

constexpr DegVector UNTOUCHED{-123456, 654321};

template <std::size_t N>
void ExpectMeetings(const LinesRow (&rows)[N])
{
    for (const LinesRow& row : rows) {
        SCOPED_TRACE(&row - rows);
        const int32_t* a = row.line1;
        const int32_t* b = row.line2;
        DegVector at = UNTOUCHED;
        EXPECT_EQ(row.nResult, IntersectLines(&at, a[0], a[1], a[2], a[3], b[0], b[1], b[2], b[3]));
        EXPECT_EQ(row.nResult ? row.at.x : UNTOUCHED.x, at.x);
        EXPECT_EQ(row.nResult ? row.at.y : UNTOUCHED.y, at.y);
    }
}

} // namespace

TEST(DegTable, CosinesAreRoundedToSixDecimals)
{
    for (int n = 0; n <= 90; ++n) EXPECT_NEAR(std::round(TrueCos(n) * 1e6) / 1e6, c(n), 1e-12) << n;
    EXPECT_DOUBLE_EQ(1.0, c(0));
    EXPECT_DOUBLE_EQ(0.999848, c(1));
    EXPECT_DOUBLE_EQ(0.999391, c(2));
    EXPECT_DOUBLE_EQ(0.707107, c(45));
    EXPECT_DOUBLE_EQ(0.017452, c(89));
    EXPECT_EQ(0.0, c(90));
}

TEST(DegTable, StepsAreThoseOfTheTrueCosine)
{
    for (int n = 0; n < 90; ++n) {
        const double fStep = TrueCos(n + 1) - TrueCos(n); // not that of the rounded ones
        const double fSeventhDigit = std::pow(10, std::floor(std::log10(-fStep)) - 6);
        EXPECT_NEAR(fStep, d(n), 0.5001 * fSeventhDigit) << n; // -0.01745241 has seven digits
    }
    EXPECT_NEAR(-0.0001523048, d(0), 5e-11);
    EXPECT_NEAR(-0.0004568681, d(1), 5e-11);
    EXPECT_NEAR(-0.01745241, d(89), 5e-9);
    EXPECT_EQ(d(89), d(90)); // the last step stands there twice
}

TEST(DegCosine, WholeQuartersAreExact)
{
    EXPECT_EQ(1.0, DegCos(0.0F));
    EXPECT_EQ(0.0, DegCos(90.0F));
    EXPECT_EQ(-1.0, DegCos(180.0F));
    EXPECT_EQ(0.0, DegCos(270.0F));
    EXPECT_EQ(1.0, DegCos(360.0F));
    EXPECT_EQ(-1.0, DegCos(-180.0F));
    EXPECT_EQ(1.0, DegCos(32400.0F)); // 90 turns
}

TEST(DegCosine, EachQuarterInterpolatesItsOwnWay)
{
    EXPECT_DOUBLE_EQ(c(30) + 0.5 * d(30), DegCos(30.5F));
    EXPECT_DOUBLE_EQ(0.5 * d(59) - c(60), DegCos(120.5F));
    EXPECT_DOUBLE_EQ(0.5 * d(89) - c(90), DegCos(90.5F));
    EXPECT_DOUBLE_EQ(0.25 * d(0) - c(1), DegCos(179.25F));
    EXPECT_DOUBLE_EQ(-(c(20) + 0.25 * d(20)), DegCos(200.25F));
    EXPECT_DOUBLE_EQ(c(60) - 0.75 * d(59), DegCos(300.75F));
    EXPECT_DOUBLE_EQ(c(90) - 0.5 * d(89), DegCos(270.5F));
    EXPECT_DOUBLE_EQ(c(10) + 0.5 * d(10), DegCos(370.5F));
    EXPECT_DOUBLE_EQ(0.5 * d(89) - c(90), DegCos(450.5F));
    EXPECT_DOUBLE_EQ(c(0) + 0.125 * d(0), DegCos(0.125F));
}

TEST(DegCosine, NegativeAnglesMirrorThePositive)
{
    EXPECT_EQ(DegCos(30.5F), DegCos(-30.5F));
    for (int n = 4; n < 4 * 800; ++n) {
        const float fAngle = static_cast<float>(n) / 4;
        EXPECT_DOUBLE_EQ(DegCos(fAngle), DegCos(-fAngle)) << fAngle;
    }
}

TEST(DegCosine, BetweenMinusOneAndZeroItExtrapolates)
{
    // Truncation gives whole degree 0, which is not negative, so the fraction is.
    EXPECT_DOUBLE_EQ(c(0) - 0.5 * d(0), DegCos(-0.5F));
    EXPECT_GT(DegCos(-0.5F), 1.0);
}

TEST(DegCosine, StaysNearTheTrueCosine)
{
    for (int n = 4; n < 4 * 1000; ++n) // half of a step's bend, and the rounding of the table
        EXPECT_NEAR(TrueCos(n / 4.0), DegCos(static_cast<float>(n) / 4), 4e-5) << n / 4.0;
}

TEST(DegSine, WholeQuartersAreExact)
{
    EXPECT_EQ(1.0, DegSin(90.0F));
    EXPECT_EQ(0.0, DegSin(0.0F));
    EXPECT_EQ(0.0, DegSin(180.0F));
    EXPECT_EQ(-1.0, DegSin(270.0F));
    EXPECT_EQ(-1.0, DegSin(-90.0F));
}

TEST(DegSine, BelowNinetyItExtrapolatesBackFromTheNextDegree)
{
    EXPECT_DOUBLE_EQ(c(60) - 0.5 * d(60), DegSin(30.5F));
    EXPECT_DOUBLE_EQ(c(1) - 0.25 * d(1), DegSin(89.25F));
    EXPECT_DOUBLE_EQ(-0.5 * d(89) - c(90), DegSin(0.5F)); // whole degree 90: the second quarter
}

TEST(DegSine, EachQuarterInterpolatesAsTheCosineDoes)
{
    EXPECT_DOUBLE_EQ(c(30) + 0.25 * d(30), DegSin(120.25F));
    EXPECT_DOUBLE_EQ(0.5 * d(69) - c(70), DegSin(200.5F));
    EXPECT_DOUBLE_EQ(-(c(30) + 0.5 * d(30)), DegSin(300.5F));
    EXPECT_DOUBLE_EQ(c(70) - 0.5 * d(69), DegSin(380.5F));
    EXPECT_DOUBLE_EQ(0.5 * d(59) - c(60), DegSin(-30.5F));
    EXPECT_DOUBLE_EQ(-(c(0) + 0.5 * d(0)), DegSin(-90.5F));
    EXPECT_DOUBLE_EQ(c(70) - 0.5 * d(69), DegSin(-200.5F));
}

TEST(DegSine, StaysNearTheTrueSine)
{
    for (int n = 4; n < 4 * 1000; ++n) // below 90 degrees the extrapolation bends twice as far
        EXPECT_NEAR(TrueCos(n / 4.0 - 90), DegSin(static_cast<float>(n) / 4), 4e-4) << n / 4.0;
}

TEST(DegSine, AnglesBeyond16BitsStayInsideTheTable)
{
    for (const float fAngle : {32767.0F, 32768.0F, -32768.0F, -32769.0F, 65536.0F, 1e9F, -1e9F,
                               3e9F, 1e30F, -1e30F, std::numeric_limits<float>::max()}) {
        EXPECT_TRUE(std::isfinite(DegCos(fAngle))) << fAngle;
        EXPECT_TRUE(std::isfinite(DegSin(fAngle))) << fAngle;
    }
    // 32767 = 364 * 90 + 7: a whole number of turns and 7 degrees.
    EXPECT_DOUBLE_EQ(c(7), DegCos(32767.0F));
    EXPECT_DOUBLE_EQ(c(7), DegCos(-32767.0F));
    EXPECT_DOUBLE_EQ(c(83), DegSin(32767.0F)); // 32677 = 363 * 90 + 7, the fourth quarter: 90 - 7
}

TEST(ClockHand, QuartersOfATurn)
{
    ExpectHand({10, 10}, 0.0, 0, -10);
    ExpectHand({10, 10}, 0.25, 10, 0);
    ExpectHand({10, 10}, 0.5, 0, 10);
    ExpectHand({10, 10}, 0.75, -10, 0);
    ExpectHand({10, 10}, 1.0, 0, -10);
    ExpectHand({10, 10}, 1.25, 10, 0); // above 1 it goes on
    ExpectHand({10, 10}, 2.5, 0, 10);
}

TEST(ClockHand, EachAxisHasItsRadiusAndIsTruncatedTowardZero)
{
    ExpectHand({100, 50}, 0.125, 70, -35); // 70.7107, -35.35535
    ExpectHand({100, 50}, 0.375, 70, 35);  // clockwise: right and below
    ExpectHand({100, 50}, 0.625, -70, 35);
    ExpectHand({100, 50}, 0.875, -70, -35);
    ExpectHand({-100, 50}, 0.125, -70, -35);
    ExpectHand({0, 7}, 0.125, 0, -4); // -4.949749
}

TEST(ClockHand, TheAngleIsRoundedToSinglePrecision)
{
    // 0.7 * 360 in double precision is a little below 252. As a float it is 252, so the hand takes
    // the six decimals of that degree: cos 18 = 0.951057, where the degree before would interpolate
    // to 0.951056941.
    const DegVector hand = ClockVector({2000000000, 1}, 0.7);
    EXPECT_NEAR(-1902114000, hand.x, 2);
}

TEST(ClockHand, AHandBeyond32BitsSaturates)
{
    ExpectHand({INT32_MAX, INT32_MAX}, 0.25, INT32_MAX, 0);
    ExpectHand({1, INT32_MIN}, 0.0, 0, INT32_MAX); // 2147483648
    const DegVector hand = ClockVector({5, 5}, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(0, hand.x);
    EXPECT_EQ(0, hand.y);
}

TEST(Lines, WithoutAPointTheOutputIsUntouched)
{
    const LinesRow rows[] = {
        {{3, 3, 3, 3}, {0, 0, 10, 5}, 0, {}},        // the first is one point
        {{0, 0, 10, 5}, {3, 3, 3, 3}, 0, {}},        // the second
        {{0, 0, 10, 5}, {0, 0, 10, 5}, 0, {}},       // the same four numbers
        {{5, 0, 5, 9}, {7, 0, 7, 9}, 0, {}},         // both vertical
        {{5, 0, 5, 9}, {5, 20, 5, 30}, 0, {}},       // even on one line
        {{0, 5, 9, 5}, {0, 7, 9, 7}, 0, {}},         // both horizontal
        {{0, 0, 10, 10}, {0, 1, 10, 11}, 0, {}},     // parallel
        {{0, 0, 100, 100}, {0, 0, 100, 91}, 0, {}},  // slopes 1 and 0.91: less than 0.1 apart
        {{0, 0, 100, 100}, {0, 0, 100, 109}, 0, {}}, // and above
        {{0, 0, 10, 5}, {10, 5, 0, 0}, 0, {}},       // one line, told backward
    };
    ExpectMeetings(rows);
}

TEST(Lines, VerticalAndHorizontalLinesMeetWhereTheyCross)
{
    const LinesRow rows[] = {
        {{0, 0, 10, 0}, {5, -5, 5, 5}, 1, {5, 0}},
        {{5, -5, 5, 5}, {0, 3, 10, 3}, 1, {5, 3}},
        {{5, 0, 5, 1}, {100, 30, 110, 30}, 1, {5, 30}}, // lines, not segments
        {{0, -8, 1, -8}, {-40, 7, -40, 9}, 1, {-40, -8}},
    };
    ExpectMeetings(rows);
}

TEST(Lines, AVerticalOrHorizontalFirstLineMeetsAnObliqueOne)
{
    const LinesRow rows[] = {
        {{4, 0, 4, 9}, {0, 0, 10, 7}, 1, {4, 2}},   // 7 * 4 / 10 = 2.8
        {{4, 0, 4, 9}, {0, 0, 10, -7}, 1, {4, -2}}, // toward zero, not down
        {{4, 0, 4, 9}, {10, 20, 3, 5}, 1, {4, 8}},  // -15 * -6 / -7 + 20 = -12 + 20
        {{0, 3, 9, 3}, {0, 0, 7, 10}, 1, {2, 3}},   // 7 * 3 / 10 = 2.1
        {{0, 3, 9, 3}, {0, 0, -7, 10}, 1, {-2, 3}}, // -2.1
        {{0, 4, 9, 4}, {20, 10, 5, 3}, 1, {8, 4}},  // -15 * -6 / -7 + 20
    };
    ExpectMeetings(rows);
}

TEST(Lines, AnObliqueFirstLineMeetsAVerticalOrHorizontalOne)
{
    const LinesRow rows[] = {
        {{0, 0, 10, 7}, {4, 0, 4, 9}, 1, {4, 2}},
        {{10, 20, 3, 5}, {8, 0, 8, 9}, 1, {8, 16}},    // -15 * -2 / -7 + 20 = -4 + 20
        {{10, 20, 3, 5}, {10, 0, 10, 9}, 1, {10, 20}}, // at its own first point
        {{10, 20, 3, 5}, {3, 0, 3, 9}, 1, {3, 5}},     // and its second
        {{0, 0, 7, 10}, {0, 3, 9, 3}, 1, {2, 3}},
        {{20, 10, 5, 3}, {0, 8, 9, 8}, 1, {16, 8}}, // -15 * -2 / -7 + 20
        {{20, 10, 5, 3}, {0, 10, 9, 10}, 1, {20, 10}},
        {{20, 10, 5, 3}, {0, 3, 9, 3}, 1, {5, 3}},
    };
    ExpectMeetings(rows);
}

TEST(Lines, TwoObliqueLinesWithFirstPointsAtOneHeightMeetWhereTheyCross)
{
    const LinesRow rows[] = {
        // (10 * -10 * 0 - 10 * 10 * 10 + 0) / (10 * -10 - 10 * 10) = 5
        {{0, 0, 10, 10}, {10, 0, 0, 10}, 1, {5, 5}},
        // Products of 10^15, which 32 bits do not hold.
        {{0, 0, 100000, 100000}, {100000, 0, 0, 100000}, 1, {50000, 50000}},
        // dx1 3, dy1 2, dx2 4, dy2 -5: (2*4*1 - -5*3*2) / (2*4 - -5*3) = 38 / 23 = 1;
        // ((1 - 1) * 2 + 7 * 3) / 3 = 7.
        {{1, 7, 4, 9}, {2, 7, 6, 2}, 1, {1, 7}},
        // Slopes 1 and 0.89 are no longer parallel.
        {{0, 0, 100, 100}, {0, 0, 100, 89}, 1, {0, 0}},
    };
    ExpectMeetings(rows);
}

TEST(Lines, TheHeightTermIsTheFirstHeightLessTheSecond)
{
    // Lines that really meet would have it the other way round; figures are built on this sign.
    const LinesRow rows[] = {
        // 10 * 10 * (0 - 10) / (10 * 10 - -10 * 10) = -1000 / 200: mirrored from the true 5.
        {{0, 0, 10, 10}, {0, 10, 10, 0}, 1, {-5, -5}},
        // dx1 7, dy1 3, dx2 2, dy2 9: (3*2*1 - 9*7*4 + 7*2*(2 - 5)) / (3*2 - 9*7)
        // = (6 - 252 - 42) / -57 = 288 / 57 = 5; ((5 - 1) * 3 + 2 * 7) / 7 = 26 / 7 = 3.
        {{1, 2, 8, 5}, {4, 5, 6, 14}, 1, {5, 3}},
    };
    ExpectMeetings(rows);
}

TEST(Lines, NoNumbersTrap)
{
    constexpr int32_t V[] = {INT32_MIN, -1, 0, 1, INT32_MAX};
    int nMeetings = 0;
    for (int n = 0; n < 5 * 5 * 5 * 5 * 5 * 5 * 5 * 5; ++n) {
        int32_t a[8];
        for (int i = 0, nLeft = n; i < 8; ++i, nLeft /= 5) a[i] = V[nLeft % 5];
        const bool bNone = (a[0] == a[2] && a[1] == a[3]) || (a[4] == a[6] && a[5] == a[7]) ||
                           (a[0] == a[2] && a[4] == a[6]) || (a[1] == a[3] && a[5] == a[7]);
        DegVector at = UNTOUCHED;
        const int nResult = IntersectLines(&at, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7]);
        const bool bUntouched = at.x == UNTOUCHED.x && at.y == UNTOUCHED.y;
        ASSERT_EQ(nResult == 0, bUntouched) << n;
        ASSERT_TRUE(nResult == 0 || (nResult == 1 && !bNone)) << n;
        nMeetings += nResult;
    }
    EXPECT_GT(nMeetings, 1000);
}

TEST(WrapMath, SumsAndProductsWrapAndDivisionsNeverTrap)
{
    EXPECT_EQ(INT32_MIN, WrapAdd(INT32_MAX, 1));
    EXPECT_EQ(INT32_MAX, WrapSub(INT32_MIN, 1));
    EXPECT_EQ(0, WrapMul(65536, 65536));
    EXPECT_EQ(-2, WrapMul(INT32_MAX, 2));
    EXPECT_EQ(7, WrapAbs(-7));
    EXPECT_EQ(INT32_MIN, WrapAbs(INT32_MIN));
    EXPECT_EQ(-3, SafeDiv(-7, 2));
    EXPECT_EQ(0, SafeDiv(7, 0));
    EXPECT_EQ(0, SafeDiv(INT32_MIN, -1));
    EXPECT_EQ(-1, SafeMod(-7, 2));
    EXPECT_EQ(0, SafeMod(7, 0));
    EXPECT_EQ(0, SafeMod(INT32_MIN, -1));
    EXPECT_EQ(3, WrapMulDiv(7, 2, 4));
    EXPECT_EQ(0, WrapMulDiv(65536, 65536, 2)); // the product has wrapped before the division
    EXPECT_EQ(0, WrapMulDiv(7, 2, 0));
    EXPECT_EQ(INT64_MIN, WrapAdd64(INT64_MAX, 1));
    EXPECT_EQ(INT64_MAX, WrapSub64(INT64_MIN, 1));
    EXPECT_EQ(-2, WrapMul64(INT64_MAX, 2));
    EXPECT_EQ(0, SafeDiv64(INT64_MIN, -1));
    EXPECT_EQ(0, SafeDiv64(1, 0));
    EXPECT_EQ(-3, SafeDiv64(-7, 2));
}

TEST(WrapMath, RealNumbersAreTruncatedTowardZeroAndSaturate)
{
    EXPECT_EQ(2, TruncToInt(2.9));
    EXPECT_EQ(-2, TruncToInt(-2.9));
    EXPECT_EQ(INT32_MAX, TruncToInt(2147483646.5) + 1);
    EXPECT_EQ(INT32_MAX, TruncToInt(2147483648.0));
    EXPECT_EQ(INT32_MIN, TruncToInt(-2147483649.0));
    EXPECT_EQ(INT32_MAX, TruncToInt(1e300));
    EXPECT_EQ(INT32_MIN, TruncToInt(-1e300));
    EXPECT_EQ(INT32_MAX, TruncToInt(std::numeric_limits<double>::infinity()));
    EXPECT_EQ(0, TruncToInt(std::numeric_limits<double>::quiet_NaN()));
}
