// Turning points: the exact quarter turns, the way through polar coordinates with its truncations,
// and rectangles. The code is render/QELRotate.cpp.
#include "render/QELRotate.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <ostream>

namespace {

struct Spot {
    long x;
    long y;
    bool operator==(const Spot&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Spot& spot)
{
    return out << spot.x << "," << spot.y;
}

Spot Turn(Spot point, Spot centre, int32_t nAngle)
{
    POINT pt{static_cast<LONG>(point.x), static_cast<LONG>(point.y)};
    const POINT ptCentre{static_cast<LONG>(centre.x), static_cast<LONG>(centre.y)};
    const CQELRotate rotate(ptCentre, nAngle);
    EXPECT_EQ(1, rotate.RotatePoint(&pt));
    return {pt.x, pt.y};
}

// The plain rotation, counter-clockwise where y points down, of a point relative to the centre.
struct Exact {
    double x;
    double y;
};
Exact TurnExactly(double x, double y, int nAngle)
{
    const double a = nAngle * std::acos(-1.0) / 180;
    return {x * std::cos(a) + y * std::sin(a), y * std::cos(a) - x * std::sin(a)};
}

} // namespace

TEST(Rotate, AQuarterTurnIsCounterClockwiseOnTheScreen)
{
    EXPECT_EQ((Spot{50, 40}), Turn({60, 50}, {50, 50}, 90));
    EXPECT_EQ((Spot{40, 50}), Turn({50, 40}, {50, 50}, 90));
    EXPECT_EQ((Spot{50, 60}), Turn({40, 50}, {50, 50}, 90));
    EXPECT_EQ((Spot{60, 50}), Turn({50, 60}, {50, 50}, 90));
    EXPECT_EQ((Spot{40, 50}), Turn({60, 50}, {50, 50}, 180));
    EXPECT_EQ((Spot{50, 60}), Turn({60, 50}, {50, 50}, 270));
}

TEST(Rotate, AnglesAreReducedToOneTurn)
{
    // The last two: 2147483647 is 5965232 turns and 127 degrees, -2147483648 as many back and -128.
    const struct {
        int nAngle;
        int nSame;
    } cases[] = {
        {-90, 270},  {-450, 270}, {450, 90}, {360, 0},   {-360, 0},        {720000, 0},
        {-180, 180}, {-270, 90},  {405, 45}, {-315, 45}, {INT32_MAX, 127}, {INT32_MIN, 232},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Turn({173, 60}, {50, 50}, c.nSame), Turn({173, 60}, {50, 50}, c.nAngle))
            << c.nAngle;
    EXPECT_EQ((Spot{60, -73}), Turn({173, 60}, {50, 50}, 450));
}

TEST(Rotate, AFullTurnOrNoneLeavesEveryPoint)
{
    for (const int nAngle : {0, 360, -360, 720})
        for (const Spot point : {Spot{0, 0}, Spot{60, 50}, Spot{-7, 12345}})
            EXPECT_EQ(point, Turn(point, {3, 99}, nAngle)) << nAngle;
}

TEST(Rotate, AQuarterTurnAboutAnUnevenCentreAlsoDisplaces)
{
    // x' = y + cy - cx and y' = cy - x + cx, each time from the result before.
    EXPECT_EQ((Spot{12, 29}), Turn({1, 2}, {10, 20}, 90));  // 2 + 20 - 10, 20 - 1 + 10
    EXPECT_EQ((Spot{39, 18}), Turn({1, 2}, {10, 20}, 180)); // 29 + 20 - 10, 20 - 12 + 10
    EXPECT_EQ((Spot{28, -9}), Turn({1, 2}, {10, 20}, 270)); // 18 + 20 - 10, 20 - 39 + 10
    EXPECT_EQ((Spot{28, -9}), Turn({1, 2}, {10, 20}, -90));
}

TEST(Rotate, APointOnTheCentreNeverMoves)
{
    for (int nAngle = 0; nAngle < 360; ++nAngle) {
        EXPECT_EQ((Spot{50, 50}), Turn({50, 50}, {50, 50}, nAngle)) << nAngle;
        EXPECT_EQ((Spot{-8, -8}), Turn({-8, -8}, {-8, -8}, nAngle)) << nAngle;
    }
    EXPECT_EQ((Spot{10, 20}), Turn({10, 20}, {10, 20}, 45)); // radius 0, uneven centre
}

TEST(Rotate, FortyFiveDegreesOfARadiusOfTen)
{
    EXPECT_EQ((Spot{7, -7}), Turn({10, 0}, {0, 0}, 45));
    EXPECT_EQ((Spot{-7, -7}), Turn({0, -10}, {0, 0}, 45));
    EXPECT_EQ((Spot{-7, 7}), Turn({-10, 0}, {0, 0}, 45));
    EXPECT_EQ((Spot{7, 7}), Turn({0, 10}, {0, 0}, 45));
}

TEST(Rotate, TheResultIsTruncatedTowardZeroWithTheCentreInIt)
{
    EXPECT_EQ((Spot{107, 92}), Turn({110, 100}, {100, 100}, 45));      // 107.07, 92.93
    EXPECT_EQ((Spot{-92, -107}), Turn({-90, -100}, {-100, -100}, 45)); // -92.93, -107.07
    EXPECT_EQ((Spot{2, -12}), Turn({5, -5}, {-5, -5}, 45));            // 2.07, -12.07
}

TEST(Rotate, TheRadiusIsTruncatedBeforeUse)
{
    // (1, 1) lies at 1.41: with radius 1 the arcs are those of straight down, and 45 degrees more
    // point to (0.707, 0.707).
    EXPECT_EQ((Spot{0, 0}), Turn({1, 1}, {0, 0}, 45));
    // (10, 10) lies at 14.14; with 14 the arcs are -0.796 and 0.775, of which the first counts:
    // 45 degrees more give (13.999, 0.14).
    EXPECT_EQ((Spot{13, 0}), Turn({10, 10}, {0, 0}, 45));
    // (10, -10): the larger arc, 0.796; 45 degrees more point to (-0.14, -13.999).
    EXPECT_EQ((Spot{0, -13}), Turn({10, -10}, {0, 0}, 45));
    // (3, 4) has the radius 5 exactly.
    EXPECT_EQ((Spot{4, 0}), Turn({3, 4}, {0, 0}, 60)); // 4.964, -0.598
}

TEST(Rotate, PointsOfWholeRadiusTurnAsGeometrySays)
{
    const int triples[][2] = {{3, 4}, {12, 5}, {8, 15}, {7, 24}, {20, 21}, {63, 16}, {300, 400}};
    for (const auto& t : triples)
        for (const int nSignX : {1, -1})
            for (const int nSignY : {1, -1})
                for (int nAngle = 1; nAngle < 360; ++nAngle) {
                    if (nAngle % 90 == 0) continue; // those are the integer rule's
                    const int x = t[0] * nSignX;
                    const int y = t[1] * nSignY;
                    const Exact at = TurnExactly(x, y, nAngle);
                    // No row may hang on the last bit of the cosine.
                    ASSERT_GT(std::fabs(at.x - std::round(at.x)), 1e-7) << x << "," << y;
                    ASSERT_GT(std::fabs(at.y - std::round(at.y)), 1e-7) << x << "," << y;
                    EXPECT_EQ((Spot{static_cast<long>(at.x), static_cast<long>(at.y)}),
                              Turn({x, y}, {0, 0}, nAngle))
                        << x << "," << y << " by " << nAngle;
                }
}

TEST(Rotate, JustBelowTheHorizontalCountsAsJustAbove)
{
    // 40 of 401 is an arc of 0.0999: inside the band, so the point is taken as its mirror image.
    EXPECT_EQ((Spot{253, -310}), Turn({399, -40}, {0, 0}, 45)); // 253.85, -310.4
    EXPECT_EQ((Spot{253, -310}), Turn({399, 40}, {0, 0}, 45));
    EXPECT_EQ((Spot{-310, 253}), Turn({-399, -40}, {0, 0}, 45));
    EXPECT_EQ((Spot{-310, 253}), Turn({-399, 40}, {0, 0}, 45));
    // 24 of 145 is 0.166: outside the band, and turned where it is.
    const Exact at = TurnExactly(143, 24, 45);
    EXPECT_EQ((Spot{static_cast<long>(at.x), static_cast<long>(at.y)}),
              Turn({143, 24}, {0, 0}, 45));
    // (100, 5) has the radius 100, for which the larger of the arcs is 0: it counts as on the line.
    EXPECT_EQ((Spot{70, -70}), Turn({100, 5}, {0, 0}, 45));
}

TEST(Rotate, TwoPointsAreTurnedByOneCall)
{
    POINT pt1{60, 50};
    POINT pt2{50, 40};
    const CQELRotate rotate(POINT{50, 50}, 90);
    EXPECT_EQ(1, rotate.RotateTwo(&pt1, &pt2));
    EXPECT_EQ((Spot{50, 40}), (Spot{pt1.x, pt1.y}));
    EXPECT_EQ((Spot{40, 50}), (Spot{pt2.x, pt2.y}));
}

TEST(Rotate, ARectangleComesBackNormalised)
{
    const struct {
        int nAngle;
        RECT rc;
    } cases[] = {{0, {60, 50, 80, 55}},   // as it was
                 {90, {50, 20, 55, 40}},  // corners (50, 40) and (55, 20)
                 {180, {20, 45, 40, 50}}, // (40, 50) and (20, 45)
                 {270, {45, 60, 50, 80}}, // (50, 60) and (45, 80)
                 // (57.07, 42.93); and of the second corner, whose radius of 30.4 counts as 30 and
                 // whose arc is -0.1674: 30 * cos(0.618) and sin give (74.45, 32.6).
                 {45, {57, 32, 74, 42}}};
    for (const auto& c : cases) {
        RECT rc{60, 50, 80, 55};
        const CQELRotate rotate(POINT{50, 50}, c.nAngle);
        EXPECT_EQ(1, rotate.RotateRect(&rc));
        EXPECT_EQ((Spot{c.rc.left, c.rc.top}), (Spot{rc.left, rc.top})) << c.nAngle;
        EXPECT_EQ((Spot{c.rc.right, c.rc.bottom}), (Spot{rc.right, rc.bottom})) << c.nAngle;
    }
}

TEST(Rotate, ARectangleGivenTurnedOverIsNormalisedToo)
{
    RECT rc{80, 55, 60, 50};
    const CQELRotate rotate(POINT{0, 0}, 0);
    EXPECT_EQ(1, rotate.RotateRect(&rc));
    EXPECT_EQ((Spot{60, 50}), (Spot{rc.left, rc.top}));
    EXPECT_EQ((Spot{80, 55}), (Spot{rc.right, rc.bottom}));
}

TEST(Rotate, QuarterTurnsOfExtremePointsWrap)
{
    // y + cy - cx = 2147483647 + 1 - 0 wraps to the lowest number; cy - x + cx = 1 - 5 + 0.
    EXPECT_EQ((Spot{INT32_MIN, -4}), Turn({5, INT32_MAX}, {0, 1}, 90));
    // cy - x + cx = 0 - (-2147483648) + 0 wraps to itself.
    EXPECT_EQ((Spot{0, INT32_MIN}), Turn({INT32_MIN, 0}, {0, 0}, 90));
}

TEST(Rotate, FreeTurnsOfFarPointsStayInRange)
{
    // A radius of 2,000,000,000 still turns as geometry says, to the truncation: 1414213562.37.
    EXPECT_EQ((Spot{1414213562, -1414213562}), Turn({2000000000, 0}, {0, 0}, 45));
    // From straight above the centre, 45 degrees clockwise: 2000000000 + 1414213562 is beyond 32
    // bits, so it saturates.
    EXPECT_EQ((Spot{INT32_MAX, -1414213562}),
              Turn({2000000000, -2000000000}, {2000000000, 0}, -45));
}

TEST(Rotate, QuarterTurnKeepsOnlyWholeQuarters)
{
    const struct {
        int nAngle;
        int nQuarters;
    } cases[] = {{0, 0},   {89, 0},   {90, 90}, {100, 90},  {179, 90},   {359, 270},
                 {360, 0}, {450, 90}, {-89, 0}, {-90, -90}, {-100, -90}, {-450, -90}};
    for (const auto& c : cases) EXPECT_EQ(c.nQuarters, QuarterTurn(c.nAngle)) << c.nAngle;
}
