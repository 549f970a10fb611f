// The numbers of a dial: radii, points on circles, angles of values and ticks, places of labels and
// sectors that GDI would paint as discs. The code is meter/DialGeometry.*.
#include "meter/DialGeometry.h"

#include "base/DegTrig.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <string>

namespace {

constexpr float INF = std::numeric_limits<float>::infinity();
constexpr float NO_NUMBER = std::numeric_limits<float>::quiet_NaN();

std::string Text(POINT pt)
{
    return std::to_string(pt.x) + "," + std::to_string(pt.y);
}

// ---- radii ----

TEST(DialGeometry, ARadiusOutsideZeroToThreeThousandCountsAsOne)
{
    struct Row {
        int32_t n, nClamped;
    };
    for (const Row& row : {Row{0, 0}, Row{1, 1}, Row{2, 2}, Row{2999, 2999}, Row{3000, 3000},
                           Row{3001, 1}, Row{-1, 1}, Row{INT_MIN, 1}, Row{INT_MAX, 1}})
        EXPECT_EQ(row.nClamped, ClampRadius(row.n)) << row.n;
}

TEST(DialGeometry, AFigureHasARadiusOfOneTo32767)
{
    for (const int32_t n : {1, 2, 3000, 32766, 32767}) EXPECT_TRUE(IsDrawableRadius(n)) << n;
    for (const int32_t n : {INT_MIN, -1, 0, 32768, INT_MAX}) EXPECT_FALSE(IsDrawableRadius(n)) << n;
}

TEST(DialGeometry, LayersLieAtTheirDistancesInsideTheRadius)
{
    for (const int32_t r : {25, 26, 60, 100, 399, 800, 3002}) {
        EXPECT_EQ(r - 14, TickOuterRadius(r));
        EXPECT_EQ(r - 18, AxisRadius(r));
        EXPECT_EQ(r - 10, LabelRadius(r));
        EXPECT_EQ(r - 21, NeedleLength(r));
        EXPECT_EQ(r - 25, AlarmRadius(r));
        EXPECT_EQ(r - 19, PieRadius(r));
        EXPECT_EQ(r - 17, BladeLength(r));
    }
}

TEST(DialGeometry, EachStepOfSubtractionIsClampedForItself)
{
    struct Row {
        int32_t r, nTick, nAxis, nLabel, nNeedle, nAlarm;
    };
    const Row rows[] = {
        {24, 10, 6, 14, 3, 1}, // alarm: 22, 10, 5, -1
        {21, 7, 3, 11, 0, 1},  // alarm: 19, 7, 2, -4
        {20, 6, 2, 10, 1, 1},  // needle: 18, 6, -1; alarm: 18, 6, 1, -5
        {18, 4, 0, 8, 1, 1},   // needle: -3; alarm: -1 counts as 1, then -5
        {14, 0, 1, 4, 1, 1},   // tick: 12, 0; axis: -4
        {13, 1, 1, 3, 1, 1},   // tick: 11, -1; 1 - 4
        {10, 1, 1, 0, 1, 1},   // label: 8, 0
        {2, 1, 1, 1, 1, 1},    // 0, then below
        {1, 1, 1, 1, 1, 1},    // -1 counts as 1, then below
        {0, 1, 1, 1, 1, 1},
        {-5, 1, 1, 1, 1, 1},
        {INT_MIN, 1, 1, 1, 1, 1},
        {3002, 2988, 2984, 2992, 2981, 2977}, // 3000 is the last that holds
        {3003, 1, 1, 1, 1, 1},
        {INT_MAX, 1, 1, 1, 1, 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.r);
        EXPECT_EQ(row.nTick, TickOuterRadius(row.r));
        EXPECT_EQ(row.nAxis, AxisRadius(row.r));
        EXPECT_EQ(row.nLabel, LabelRadius(row.r));
        EXPECT_EQ(row.nNeedle, NeedleLength(row.r));
        EXPECT_EQ(row.nAlarm, AlarmRadius(row.r));
    }
    EXPECT_EQ(0, PieRadius(19));
}

// ---- points ----

TEST(DialGeometry, AnglesBeginStraightDownAndGrowClockwise)
{
    struct Row {
        float fAngle;
        POINT pt;
    };
    for (const Row& row :
         {Row{0, {100, 260}}, Row{90, {40, 200}}, Row{180, {100, 140}}, Row{270, {160, 200}},
          Row{360, {100, 260}}, Row{-90, {160, 200}}, Row{450, {40, 200}}, Row{30, {70, 251}},
          Row{-30, {130, 251}}, Row{330, {130, 251}}, Row{150, {70, 149}}, Row{210, {130, 149}}})
        EXPECT_EQ(Text(row.pt), Text(PolarPoint({100, 200}, 60, row.fAngle))) << row.fAngle;
}

TEST(DialGeometry, OffsetsFromTheCentreAreTruncatedTowardTheCentre)
{
    // 10 at 45 degrees: 7.07 both ways, on all four sides and around a negative centre.
    for (const POINT c : {POINT{100, 100}, POINT{0, 0}, POINT{-50, -3}}) {
        EXPECT_EQ(Text({c.x - 7, c.y + 7}), Text(PolarPoint(c, 10, 45)));
        EXPECT_EQ(Text({c.x - 7, c.y - 7}), Text(PolarPoint(c, 10, 135)));
        EXPECT_EQ(Text({c.x + 7, c.y - 7}), Text(PolarPoint(c, 10, 225)));
        EXPECT_EQ(Text({c.x + 7, c.y + 7}), Text(PolarPoint(c, 10, 315)));
        EXPECT_EQ(Text(c), Text(PolarPoint(c, 0, 77)));
        EXPECT_EQ(Text(c), Text(PolarPoint(c, 1, 45)));
    }
}

TEST(DialGeometry, PointsComeFromTheTableOfWholeDegrees)
{
    for (const int32_t r : {1, 57, 400, 3000})
        for (float a = -400; a < 800; a += 0.37F) {
            const POINT pt = PolarPoint({0, 0}, r, a);
            EXPECT_EQ(static_cast<int>(-r * DegSin(a)), pt.x) << r << " at " << a;
            EXPECT_EQ(static_cast<int>(r * DegCos(a)), pt.y) << r << " at " << a;
            // And so on the circle: within the truncation and the table's straight pieces.
            EXPECT_NEAR(r, std::hypot(pt.x, pt.y), 1.5 + r * 1e-3) << r << " at " << a;
        }
}

TEST(DialGeometry, ARadiusOutOfRangeIsReplacedByTen)
{
    for (const int32_t r : {-1, 3001, INT_MIN, INT_MAX}) {
        EXPECT_EQ("50,60", Text(PolarPoint({50, 50}, r, 0)));
        EXPECT_EQ("43,57", Text(PolarPoint({50, 50}, r, 45)));
    }
    EXPECT_EQ("50,3050", Text(PolarPoint({50, 50}, 3000, 0)));
}

TEST(DialGeometry, TakesAnyAngle)
{
    for (const float a : {32000.0F, -32000.0F, 12345.6F})
        EXPECT_NEAR(100, std::hypot(PolarPoint({0, 0}, 100, a).x, PolarPoint({0, 0}, 100, a).y), 2);
    // Beyond 16 bits the table's angle is no longer the angle; there is a point all the same.
    for (const float a : {FLT_MAX, -FLT_MAX, INF, -INF, NO_NUMBER, 1e9F, -1e9F, 40000.0F}) {
        EXPECT_EQ(Text(PolarPoint({7, 8}, 100, a)), Text(PolarPoint({7, 8}, 100, a)));
        EXPECT_EQ("7,8", Text(PolarPoint({7, 8}, 0, a))) << a;
    }
}

TEST(DialGeometry, TheSquareReachesTheRadiusOnAllSides)
{
    const RECT rc = SquareAround({30, -7}, 12);
    EXPECT_EQ("18,-19", Text({rc.left, rc.top}));
    EXPECT_EQ("42,5", Text({rc.right, rc.bottom}));
}

// ---- angles ----

TEST(DialGeometry, ValuesAreSpreadOverTheSpanAndKeptInside)
{
    struct Row {
        DialSpan span;
        double fValue;
        float fAngle;
    };
    const DialSpan open{30, 330, 0, 10};
    const DialSpan offset{75, 375, -50, 50};
    const DialSpan widest{0, 360, INT_MIN, INT_MAX};
    const Row rows[] = {
        {open, 5, 180},           {open, -3, 30},      {open, 12, 330},      {open, 0, 30},
        {open, 10, 330},          {open, 1, 60},       {open, 9, 300},       {open, 7.9, 267},
        {open, 0.01, 30.3F},      {open, -0.5, 30},    {open, 10.5, 330},    {open, 1e300, 330},
        {offset, 0, 225},         {offset, -25, 150},  {offset, 51, 375},    {offset, -50, 75},
        {widest, -0.5, 180},      {widest, 1e18, 360}, {widest, INT_MIN, 0}, {widest, INT_MAX, 360},
        {{0, 300, 0, 3}, 1, 100},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.fAngle, ValueToAngle(row.span, row.fValue)) << row.fValue;
}

TEST(DialGeometry, AnAngleIsComputedInDoubleAndStoredAsFloat)
{
    const DialSpan span{30, 330, 0, 7};
    for (int v = 1; v < 7; ++v)
        EXPECT_EQ(static_cast<float>(30.0 + v * 300.0 / 7.0), ValueToAngle(span, v)) << v;
}

TEST(DialGeometry, AlarmLimitsMayLieOutsideOfTheSpan)
{
    const DialSpan span{30, 330, 0, 100};
    EXPECT_EQ(180.0F, UnclampedAngle(span, 50));
    EXPECT_EQ(-120.0F, UnclampedAngle(span, -50));
    EXPECT_EQ(480.0F, UnclampedAngle(span, 150));
    EXPECT_EQ(30.0F, UnclampedAngle(span, 0));
    EXPECT_EQ(330.0F, UnclampedAngle(span, 100));
}

TEST(DialGeometry, TicksDivideTheSpanEvenly)
{
    const DialSpan span{30, 330, 0, 10};
    EXPECT_EQ(30.0F, TickToAngle(span, 0, 10));
    EXPECT_EQ(60.0F, TickToAngle(span, 1, 10));
    EXPECT_EQ(300.0F, TickToAngle(span, 9, 10));
    EXPECT_EQ(330.0F, TickToAngle(span, 10, 10));
    EXPECT_EQ(330.0F, TickToAngle(span, 11, 10));
    EXPECT_EQ(330.0F, TickToAngle(span, 0xFFFFFFFF, 10));
    EXPECT_EQ(130.0F, TickToAngle(span, 1, 3));
    EXPECT_EQ(30.0F, TickToAngle(span, 0, 0)); // no ticks: no division
    EXPECT_EQ(330.0F, TickToAngle(span, 1, 0));
    EXPECT_EQ(30.0F, TickToAngle(span, 0, 0xFFFFFFFF));
    EXPECT_FLOAT_EQ(180.0F, TickToAngle(span, 0x80000000, 0xFFFFFFFF));
    for (uint32_t i = 1; i < 7; ++i)
        EXPECT_FLOAT_EQ(static_cast<float>(30 + i * 300.0 / 7), TickToAngle(span, i, 7));
}

TEST(DialGeometry, WholeAnglesAreTruncatedAndBroughtIntoOneTurn)
{
    struct Row {
        float fAngle;
        int32_t nWhole;
    };
    for (const Row& row :
         {Row{0, 0}, Row{30.9F, 30}, Row{359.99F, 359}, Row{360, 0}, Row{375.5F, 15}, Row{720, 0},
          Row{-0.9F, 0}, Row{-1, 359}, Row{-90.5F, 270}, Row{-360, 0}, Row{-361, 359}})
        EXPECT_EQ(row.nWhole, WholeAngle(row.fAngle)) << row.fAngle;
    for (const float a : {FLT_MAX, -FLT_MAX, INF, -INF, NO_NUMBER}) {
        EXPECT_GE(WholeAngle(a), 0) << a;
        EXPECT_LT(WholeAngle(a), 360) << a;
    }
}

// ---- labels ----

constexpr RECT WIDE{-10000, -10000, 10000, 10000};

// The shift of a label by quadrant, written out as the rule has it; texts are taken as 8 high.
POINT ShiftedBy(int a, int w)
{
    const auto s = [](int n) { return DegSin(static_cast<float>(n)); };
    const auto c = [](int n) { return DegCos(static_cast<float>(n)); };
    double x = 0, y = 0;
    if (a <= 90)
        x = (s(a) + 1) * w / 2, y = s(a) * 8 / 2;
    else if (a <= 180)
        x = (c(a - 90) + 1) * w / 2, y = (s(a - 90) + 1) * 8 / 2;
    else if (a <= 270)
        x = c(a - 180) * w / 2, y = (c(a - 180) + 1) * 8 / 2;
    else
        x = s(a - 270) * w / 2, y = c(a - 270) * 8 / 2;
    return {static_cast<int>(x), static_cast<int>(y)};
}

TEST(DialGeometry, LabelsAreShiftedTowardTheirQuadrantsCorner)
{
    struct Row {
        int nAngle;
        POINT shift; // of a text 40 wide: what it moves left and up
    };
    const Row rows[] = {
        {0, {20, 0}},   // below: centred, hanging
        {30, {30, 2}},  // (.5 + 1) * 20, .5 * 4
        {90, {40, 4}},  // left: its end at the anchor, half its height above
        {150, {30, 7}}, // (cos 60 + 1) * 20, (sin 60 + 1) * 4 = 7.46
        {180, {20, 8}}, // above: centred, standing
        {240, {10, 6}}, // cos 60 * 20, (cos 60 + 1) * 4
        {270, {0, 4}},  // right: it begins at the anchor
        {300, {10, 3}}, // sin 30 * 20, cos 30 * 4 = 3.46
        {359, {19, 0}}, // sin 89 * 20 = 19.99, cos 89 * 4 = 0.07
    };
    for (const Row& row : rows)
        EXPECT_EQ(Text({500 - row.shift.x, 400 - row.shift.y}),
                  Text(PlaceLabel({500, 400}, row.nAngle, {40, 8}, WIDE)))
            << row.nAngle;
}

TEST(DialGeometry, LabelsOfEveryDegreeAndWidthFollowTheQuadrantRule)
{
    for (const int w : {0, 1, 8, 17, 40, 333})
        for (int a = 0; a < 360; ++a) {
            const POINT shift = ShiftedBy(a, w);
            EXPECT_EQ(Text({-20 - shift.x, 77 - shift.y}),
                      Text(PlaceLabel({-20, 77}, a, {w, 8}, WIDE)))
                << w << " at " << a;
        }
}

TEST(DialGeometry, LabelsAreKeptInsideTheRectangle)
{
    const RECT rc{100, 200, 300, 280};
    // At 270 degrees the box begins at the anchor, 4 above it.
    EXPECT_EQ("150,236", Text(PlaceLabel({150, 240}, 270, {40, 8}, rc)));
    EXPECT_EQ("100,236", Text(PlaceLabel({60, 240}, 270, {40, 8}, rc)));
    EXPECT_EQ("260,236", Text(PlaceLabel({280, 240}, 270, {40, 8}, rc)));
    EXPECT_EQ("260,236", Text(PlaceLabel({260, 240}, 270, {40, 8}, rc)));
    EXPECT_EQ("150,200", Text(PlaceLabel({150, 190}, 270, {40, 8}, rc)));
    EXPECT_EQ("150,272", Text(PlaceLabel({150, 290}, 270, {40, 8}, rc)));
    EXPECT_EQ("100,272", Text(PlaceLabel({-500, 900}, 270, {40, 8}, rc)));
    // Wider than the rectangle: the right edge is the last to be kept.
    EXPECT_EQ("50,236", Text(PlaceLabel({150, 240}, 270, {250, 8}, rc)));
    EXPECT_EQ("150,196", Text(PlaceLabel({150, 240}, 270, {40, 8}, {100, 200, 300, 204})));
}

// ---- sectors ----

TEST(DialGeometry, SectorsWithoutTwoDirectionsAreDegenerate)
{
    struct Row {
        const char* pszCase;
        POINT pt1, pt0;
        bool bDegenerate;
    };
    constexpr POINT c{100, 100};
    const Row rows[] = {
        {"both straight below", {100, 150}, {100, 150}, true},
        {"both straight below, unequal", {100, 150}, {100, 120}, true},
        {"both straight above", {100, 50}, {100, 60}, true},
        {"below and above", {100, 150}, {100, 50}, false},
        {"both left", {50, 100}, {60, 100}, true},
        {"both right", {150, 100}, {140, 100}, true},
        {"first at the centre", c, {100, 150}, true},
        {"second at the centre", {150, 130}, c, true},
        {"equal and oblique", {130, 140}, {130, 140}, true},
        {"one below", {100, 150}, {99, 150}, false},
        {"one above", {99, 50}, {100, 50}, false},
        {"a quarter", {50, 100}, {100, 150}, false},
        {"two oblique directions", {130, 140}, {140, 130}, false},
        {"opposite and oblique", {130, 140}, {70, 60}, true}, // by the slopes, not the sides
        {"slopes .50 and .52", {200, 150}, {200, 152}, false},
        {"slopes .250 and .255", {300, 150}, {300, 151}, true},
        {"mirrored at the upright", {130, 140}, {70, 140}, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.bDegenerate, IsDegenerateSector(c, row.pt1, row.pt0)) << row.pszCase;
        EXPECT_EQ(row.bDegenerate, IsDegenerateSector(c, row.pt0, row.pt1)) << row.pszCase;
    }
}

TEST(DialGeometry, LevelPointsOnBothSidesHaveOneSlopeAndCountAsDegenerate)
{
    // Upright points have no slope, and their sides are compared instead.
    EXPECT_TRUE(IsDegenerateSector({100, 100}, {50, 100}, {150, 100}));
    EXPECT_TRUE(IsDegenerateSector({100, 100}, {150, 100}, {50, 100}));
}

TEST(DialGeometry, DegenerateTestTakesAnyPoints)
{
    using Limits = std::numeric_limits<LONG>;
    const LONG values[] = {Limits::min(), -1, 0, 1, Limits::max()};
    for (const LONG x : values)
        for (const LONG y : values) {
            const POINT pt{x, y};
            EXPECT_TRUE(IsDegenerateSector({0, 0}, pt, pt));
            EXPECT_TRUE(IsDegenerateSector(pt, pt, {5, 6}));
        }
}

} // namespace
