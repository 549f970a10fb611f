// The two curve functions: their recorded calls, worked out here. The code is brush/Curve.cpp.
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Recording.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

std::string Line(const char* pszCall, long nX, long nY)
{
    return std::string(pszCall) + " " + std::to_string(nX) + "," + std::to_string(nY);
}

// One coordinate of a step of a segment from a to b, between the neighbours q0 and q3.
double Coordinate(int nStep, double q0, double a, double b, double q3)
{
    const float t = static_cast<float>(nStep) * 0.1F;
    const auto t2 = static_cast<double>(t) * t;
    const auto t3 = t2 * t;
    const auto h00 = static_cast<float>(2 * t3 - 3 * t2 + 1);
    const auto h10 = static_cast<float>(t3 - 2 * t2 + t);
    const auto h01 = static_cast<float>(-2 * t3 + 3 * t2);
    const auto h11 = static_cast<float>(t3 - t2);
    const auto fFrom = static_cast<float>((b - q0) * 1.0 / 2);
    const auto fTo = static_cast<float>((q3 - a) * 1.0 / 2);
    return a * h00 + static_cast<double>(fFrom) * h10 + b * h01 + static_cast<double>(fTo) * h11;
}

// Whether truncation could go either way from rounding alone: such points do not belong in a table.
// Whole numbers are exact: they come up in the middle of a segment, where every factor is an
// eighth.
bool IsNearInteger(double f)
{
    return f != std::round(f) && std::fabs(f - std::round(f)) < 1e-3;
}

std::vector<std::string> ExpectedCurve(const std::vector<POINT>& points, POINT ptBefore)
{
    std::vector<std::string> calls{Line("MoveTo", ptBefore.x, ptBefore.y),
                                   Line("MoveTo", points[0].x, points[0].y)};
    const std::size_t nCount = points.size();
    for (std::size_t i = 0; i + 1 < nCount; ++i) {
        const POINT q0 = points[i ? i - 1 : 0];
        const POINT a = points[i];
        const POINT b = points[i + 1];
        const POINT q3 = points[i + 2 < nCount ? i + 2 : i + 1];
        for (int k = 1; k <= 9; ++k) {
            const double x = Coordinate(k, q0.x, a.x, b.x, q3.x);
            const double y = Coordinate(k, q0.y, a.y, b.y, q3.y);
            EXPECT_FALSE(IsNearInteger(x) || IsNearInteger(y)) << x << "," << y;
            calls.push_back(Line("LineTo", static_cast<long>(x), static_cast<long>(y)));
        }
        calls.push_back(Line("LineTo", b.x, b.y));
    }
    calls.push_back(Line("MoveTo", ptBefore.x, ptBefore.y));
    return calls;
}

std::vector<std::string> Record(const std::vector<POINT>& points, POINT ptBefore)
{
    CRecording recording;
    ::MoveToEx(recording.Dc(), ptBefore.x, ptBefore.y, nullptr);
    EXPECT_EQ(0, QELDrawCurve(recording.Dc(), points.data(), static_cast<DWORD>(points.size())));
    return recording.Calls();
}

std::vector<POINT> PointsOf(const std::vector<std::string>& calls)
{
    std::vector<POINT> points;
    for (const std::string& call : calls) {
        int x = 0, y = 0;
        if (std::sscanf(call.c_str(), "LineTo %d,%d", &x, &y) == 2) points.push_back({x, y});
    }
    return points;
}

} // namespace

TEST(Curve, RunsThroughEveryPointInTenPiecesASegmentAndPutsThePositionBack)
{
    const std::vector<POINT> curves[] = {
        {{-1034, -758}, {-1578, 954}},
        {{-378, -39}, {-1366, -1631}, {-1728, -1919}},
        {{-356, 250}, {1759, -815}, {1278, 1134}, {-1759, -1091}},
        {{131, 198}, {-525, -867}, {1193, -1293}, {1386, -1566}, {-928, -1122}, {1862, 1798}},
    };
    for (const auto& points : curves) {
        SCOPED_TRACE(points.size());
        EXPECT_EQ(ExpectedCurve(points, {41, 43}), Record(points, {41, 43}));
    }
}

TEST(Curve, ThroughTwoPointsIsStraight)
{
    const auto points = PointsOf(Record({{0, 0}, {1000, 500}}, {0, 0}));
    ASSERT_EQ(10u, points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        // Truncation toward zero takes up to one unit from either coordinate.
        EXPECT_LE(std::labs(points[i].x - 2 * points[i].y), 2) << i;
        if (i) {
            EXPECT_GT(points[i].x, points[i - 1].x);
        }
    }
    EXPECT_EQ(1000, points[9].x);
    EXPECT_EQ(500, points[9].y);
}

TEST(Curve, ThroughThreePointsInLineIsStraightThroughAllThree)
{
    const auto points = PointsOf(Record({{100, 40}, {300, 40}, {500, 40}}, {0, 0}));
    ASSERT_EQ(20u, points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_TRUE(points[i].y == 40 || points[i].y == 39) << i; // 39: rounding, then truncation
        if (i) {
            EXPECT_GT(points[i].x, points[i - 1].x);
        }
    }
    EXPECT_EQ(300, points[9].x);
    EXPECT_EQ(40, points[9].y);
    EXPECT_EQ(500, points[19].x);
    EXPECT_EQ(40, points[19].y);
}

TEST(Curve, CoordinatesAreCutTowardZeroOnBothSides)
{
    const std::vector<POINT> curve{{7, 3}, {1031, 523}, {641, 1279}};
    std::vector<POINT> mirrored = curve;
    for (POINT& pt : mirrored) pt = {-pt.x, -pt.y};
    const auto points = PointsOf(Record(curve, {0, 0}));
    const auto opposite = PointsOf(Record(mirrored, {0, 0}));
    ASSERT_EQ(20u, points.size());
    ASSERT_EQ(20u, opposite.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(points[i].x, -opposite[i].x) << i;
        EXPECT_EQ(points[i].y, -opposite[i].y) << i;
    }
}

TEST(Curve, DrawsNothingForOnePointOrNoneOrANullPointer)
{
    const POINT points[] = {{5, 5}, {20, 20}};
    CRecording recording;
    EXPECT_EQ(0, QELDrawCurve(recording.Dc(), points, 1));
    EXPECT_EQ(0, QELDrawCurve(recording.Dc(), points, 0));
    EXPECT_EQ(0, QELDrawCurve(recording.Dc(), nullptr, 2));
    EXPECT_EQ(0, QELDrawCurve(nullptr, points, 2));
    EXPECT_EQ(std::vector<std::string>{}, recording.Calls());
}

TEST(Curve, LeavesTheDeviceContextAsItWasAndUsesItsPen)
{
    const POINT points[] = {{2, 2}, {20, 12}, {37, 3}};
    CTestBitmap expected(40, 20), drawn(40, 20);
    const COLORREF clr = RGB(0, 128, 0);
    CTestSelect penExpected(expected.Dc(), ::CreatePen(PS_SOLID, 1, clr), true);
    CTestSelect pen(drawn.Dc(), ::CreatePen(PS_SOLID, 1, clr), true);
    ::MoveToEx(drawn.Dc(), 31, 17, nullptr);
    const std::string before = DcState(drawn.Dc());
    EXPECT_EQ(0, QELDrawCurve(drawn.Dc(), points, 3));
    EXPECT_EQ(before, DcState(drawn.Dc()));

    ::MoveToEx(expected.Dc(), 2, 2, nullptr);
    for (const POINT& pt : PointsOf(Record({points, points + 3}, {0, 0})))
        ::LineTo(expected.Dc(), pt.x, pt.y);
    EXPECT_LT(30, CountPixels(drawn, clr));
    EXPECT_EQ("", FirstDifference(expected, drawn));
}

TEST(Curve, TakesCoordinatesOfAnySizeWithoutTrapping)
{
    const POINT points[] = {
        {INT_MIN, INT_MAX}, {INT_MAX, INT_MIN}, {INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}};
    CRecording recording;
    EXPECT_EQ(0, QELDrawCurve(recording.Dc(), points, 4));
    const auto lines = PointsOf(recording.Calls());
    ASSERT_EQ(30u, lines.size());
    for (const int nEnd : {9, 19, 29}) { // every point is met exactly
        EXPECT_EQ(points[nEnd / 10 + 1].x, lines[nEnd].x);
        EXPECT_EQ(points[nEnd / 10 + 1].y, lines[nEnd].y);
    }
}

TEST(Bezier, HandsItsPointsToOneGdiCall)
{
    const POINT points[] = {{1, 2}, {10, 20}, {30, 5}, {40, 40}, {50, 60}, {70, 30}, {80, 10}};
    CRecording recording;
    EXPECT_EQ(TRUE, QELDrawBezier(recording.Dc(), points, 7));
    EXPECT_EQ((std::vector<std::string>{"PolyBezier 1,2 10,20 30,5 40,40 50,60 70,30 80,10"}),
              recording.Calls());
}

TEST(Bezier, GivesBackWhatGdiAnswers)
{
    const POINT points[] = {{1, 2}, {10, 20}, {30, 5}, {40, 40}, {50, 60}};
    CTestBitmap drawn(60, 60);
    for (const DWORD nCount : {0U, 1U, 2U, 3U, 5U}) {
        const BOOL bGdi = ::PolyBezier(drawn.Dc(), points, nCount);
        EXPECT_EQ(bGdi, QELDrawBezier(drawn.Dc(), points, nCount)) << nCount;
    }
    EXPECT_EQ(FALSE, QELDrawBezier(nullptr, points, 4));
    EXPECT_TRUE(IsBlank(drawn));
    EXPECT_EQ(TRUE, QELDrawBezier(drawn.Dc(), points, 4));
    EXPECT_FALSE(IsBlank(drawn));
}

TEST(Bezier, RefusesANullPointList)
{
    CRecording recording;
    EXPECT_EQ(FALSE, QELDrawBezier(recording.Dc(), nullptr, 4));
    EXPECT_EQ(std::vector<std::string>{}, recording.Calls());
}
