// The numbers of the bars: positions, ticks, the cut into segments, and the measures of the 3D
// bodies. The code is meter/BarGeometry.*.
#include "meter/BarGeometry.h"

#include "meter/BarMeter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr double INF = std::numeric_limits<double>::infinity();

std::string Text(const RECT& rc)
{
    return std::to_string(rc.left) + "," + std::to_string(rc.top) + "," + std::to_string(rc.right) +
           "," + std::to_string(rc.bottom);
}

// ---- positions ----

TEST(BarPosition, VerticalRunsFromTheBottomEdgeToTheTopEdge)
{
    struct Row {
        int nMin, nMax;
        LONG nTop, nBottom;
        double fValue;
        int nExpected;
    };
    const Row rows[] = {
        {0, 10, 0, 100, 5, 50},       {0, 10, 0, 100, 0, 100}, {0, 10, 0, 100, 10, 0},
        {0, 10, 0, 100, -3, 100},     {0, 10, 0, 100, 12, 0},  {0, 10, 0, 100, 2.5, 75},
        {0, 3, 0, 100, 1, 66},        {0, 3, 0, 100, 2, 33},   {-50, 50, 20, 221, 0, 120},
        {-50, 50, 20, 221, -49, 218}, {0, 7, -100, 0, 3, -42}, {0, 7, -100, -10, 1, -22},
        {0, 100, 5, 6, 50, 5},        {0, 100, 5, 6, 0, 6},    {5, 6, 0, 10, 5.05, 9},
    };
    for (const Row& row : rows) {
        const BarScale scale{row.nMin, row.nMax, {0, row.nTop, 30, row.nBottom}};
        EXPECT_EQ(row.nExpected, VerticalPosition(scale, row.fValue))
            << row.fValue << " of " << row.nMin << ".." << row.nMax;
    }
}

TEST(BarPosition, HorizontalEndsOnePixelInsideItsRightEdge)
{
    struct Row {
        int nMin, nMax;
        LONG nLeft, nRight;
        double fValue;
        int nExpected;
    };
    const Row rows[] = {
        {0, 100, 0, 101, 100, 100}, {0, 100, 0, 101, 0, 0},    {0, 100, 0, 101, 250, 100},
        {0, 100, 0, 101, -1, 0},    {0, 100, 0, 101, 37, 37},  {0, 10, 0, 100, 5, 49},
        {0, 10, 0, 100, 10, 99},    {0, 3, 10, 111, 1, 43},    {0, 3, 10, 111, 2, 76},
        {-50, 50, 20, 221, 0, 120}, {0, 8, -100, 1, 3.5, -56}, {0, 10, 5, 6, 5, 5},
    };
    for (const Row& row : rows) {
        const BarScale scale{row.nMin, row.nMax, {row.nLeft, 0, row.nRight, 30}};
        EXPECT_EQ(row.nExpected, HorizontalPosition(scale, row.fValue))
            << row.fValue << " of " << row.nMin << ".." << row.nMax;
    }
}

// In whole numbers, which have no rounding of their own: left + floor(value * length / range) and,
// from the other end, bottom - ceil(value * length / range).
TEST(BarPosition, IsExactWhereAValueBelongsOnAWholePixel)
{
    for (const int nLength : {50, 100, 150, 200, 333})
        for (const int nRange : {10, 50, 100, 150, 200, 1000})
            for (int nValue = 1; nValue < nRange; ++nValue) {
                const BarScale across{0, nRange, {0, 0, nLength + 1, 30}};
                ASSERT_EQ(nValue * nLength / nRange, HorizontalPosition(across, nValue))
                    << nValue << " of " << nRange << " along " << nLength;
                const BarScale up{0, nRange, {0, 0, 30, nLength}};
                ASSERT_EQ(nLength - (nValue * nLength + nRange - 1) / nRange,
                          VerticalPosition(up, nValue))
                    << nValue << " of " << nRange << " along " << nLength;
            }
}

TEST(BarPosition, IsMonotonousAndOnTheScaleForEveryRange)
{
    const std::pair<int, int> ranges[] = {{INT_MIN, INT_MAX},     {INT_MIN, 0},
                                          {0, INT_MAX},           {-1, 0},
                                          {INT_MAX - 1, INT_MAX}, {INT_MIN, INT_MIN + 1}};
    for (const auto& [nMin, nMax] : ranges) {
        const BarScale scale{nMin, nMax, {7, 11, 207, 311}};
        int nPrevY = 311, nPrevX = 7;
        for (int i = -2; i <= 12; ++i) {
            const double fValue = nMin + (static_cast<double>(nMax) - nMin) * i / 10;
            const int y = VerticalPosition(scale, fValue), x = HorizontalPosition(scale, fValue);
            EXPECT_LE(y, nPrevY);
            EXPECT_GE(y, 11);
            EXPECT_GE(x, nPrevX);
            EXPECT_LE(x, 206);
            nPrevY = y, nPrevX = x;
        }
        EXPECT_EQ(11, nPrevY);
        EXPECT_EQ(206, nPrevX);
        EXPECT_EQ(311, VerticalPosition(scale, -INF));
        EXPECT_EQ(11, VerticalPosition(scale, INF));
        EXPECT_EQ(7, HorizontalPosition(scale, -INF));
        EXPECT_EQ(206, HorizontalPosition(scale, INF));
    }
}

TEST(BarTick, StandsAtItsPartOfTheLengthWithBothEndsExact)
{
    const RECT rc{10, 20, 113, 127}; // 103 wide, 107 high
    for (const unsigned nCount : {1U, 3U, 7U, 10U, 100U, 10000U})
        for (unsigned i = 0; i <= nCount + 1; ++i) {
            const int y = i == 0        ? 127
                          : i >= nCount ? 20
                                        : 127 - static_cast<int>(107 * i / nCount);
            const int x = i == 0 ? 10 : i >= nCount ? 112 : 10 + static_cast<int>(102 * i / nCount);
            ASSERT_EQ(y, VerticalTick(rc, i, nCount)) << i << " of " << nCount;
            ASSERT_EQ(x, HorizontalTick(rc, i, nCount)) << i << " of " << nCount;
        }
}

TEST(BarTick, FarTicksStandAtTheFarEnd)
{
    const RECT rc{10, 20, 113, 127};
    for (const unsigned n : {10U, 11U, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(20, VerticalTick(rc, n, 10));
        EXPECT_EQ(112, HorizontalTick(rc, n, 10));
    }
}

// ---- segments ----

// A part of the bar as what is to be seen of it: cut to the range, lower value first.
struct Span {
    double fFrom, fTo;
    bool bFilled;
    bool operator==(const Span&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Span& span)
{
    return out << (span.bFilled ? "bar " : "empty ") << span.fFrom << ".." << span.fTo;
}

void AddSpan(std::vector<Span>* pSpans, const BarRule& rule, double a, double b, bool bFilled)
{
    const double fFrom = std::clamp(std::min(a, b), rule.fMin, rule.fMax);
    const double fTo = std::clamp(std::max(a, b), rule.fMin, rule.fMax);
    if (fFrom < fTo) pSpans->push_back({fFrom, fTo, bFilled});
}

std::vector<Span> Seen(const BarRule& rule, double fValue)
{
    const BarParts parts = SplitBar(rule, fValue);
    std::vector<Span> spans;
    if (parts.emptyAtBase.bThere)
        AddSpan(&spans, rule, parts.emptyAtBase.fFrom, parts.emptyAtBase.fTo, false);
    if (parts.filled.bThere) AddSpan(&spans, rule, parts.filled.fFrom, parts.filled.fTo, true);
    if (parts.emptyAtValue.bThere)
        AddSpan(&spans, rule, parts.emptyAtValue.fFrom, parts.emptyAtValue.fTo, false);
    return spans;
}

TEST(BarSegments, CutTheBarAtBaseAndValue)
{
    struct Row {
        const char* pszWhat;
        BarRule rule;
        double fValue;
        std::vector<Span> expected;
    };
    const Row rows[] = {
        {"from the minimum", {0, 10, 0, false, false, false}, 4, {{0, 4, true}, {4, 10, false}}},
        {"full", {0, 10, 0, false, false, false}, 10, {{0, 10, true}}},
        {"above", {0, 10, 0, false, false, false}, 13, {{0, 10, true}}},
        {"at the minimum", {0, 10, 0, false, false, false}, 0, {{0, 10, false}}},
        {"below", {0, 10, 0, false, false, false}, -5, {{0, 10, false}}},
        {"real", {0, 10, 0, false, false, false}, 2.5, {{0, 2.5, true}, {2.5, 10, false}}},
        {"unused base", {0, 10, 5, false, false, false}, 7, {{0, 7, true}, {7, 10, false}}},
        {"base", {0, 10, 5, true, false, false}, 7, {{0, 5, false}, {5, 7, true}, {7, 10, false}}},
        {"below the base",
         {0, 10, 5, true, false, false},
         3,
         {{0, 2, false}, {2, 3, true}, {3, 10, false}}},
        {"at the base",
         {0, 10, 5, true, false, false},
         5,
         {{0, 4, false}, {4, 5, true}, {5, 10, false}}},
        {"real below the base",
         {0, 10, 5, true, false, false},
         3.25,
         {{0, 2.25, false}, {2.25, 3.25, true}, {3.25, 10, false}}},
        {"fill only", {0, 10, 5, true, false, true}, 7, {{5, 7, true}}},
        {"fill only at nothing", {0, 10, 0, false, false, true}, 0, {}},
        {"base below the range",
         {0, 10, -20, true, false, false},
         4,
         {{0, 4, true}, {4, 10, false}}},
        // The value comes mirrored: 6 for 4.
        {"reversed", {0, 10, 0, false, true, false}, 6, {{6, 10, true}, {0, 6, false}}},
        {"reversed empty", {0, 10, 0, false, true, false}, 10, {{0, 10, false}}},
        {"reversed full", {0, 10, 0, false, true, false}, 0, {{0, 10, true}}},
        {"reversed base 3",
         {0, 10, 3, true, true, false},
         2,
         {{7, 10, false}, {2, 7, true}, {0, 2, false}}},
        {"reversed beyond the base",
         {0, 10, 3, true, true, false},
         8,
         {{9, 10, false}, {8, 9, true}, {0, 8, false}}},
        {"reversed fill only", {0, 10, 3, true, true, true}, 2, {{2, 7, true}}},
        {"reversed with a minimum",
         {-10, 30, 0, true, true, false},
         12,
         {{12, 30, true}, {-10, 12, false}}},
    };
    for (const Row& row : rows) EXPECT_EQ(row.expected, Seen(row.rule, row.fValue)) << row.pszWhat;
}

TEST(BarSegments, CoverTheWholeRangeOnceUnlessFillOnly)
{
    for (const bool bReverse : {false, true})
        for (const bool bBase : {false, true})
            for (const double fBase : {-7.0, 0.0, 3.0, 9.5, 20.0})
                for (double v = -12; v <= 25; v += 0.5) {
                    BarRule rule{-5, 15, fBase, bBase, bReverse, false};
                    std::vector<Span> spans = Seen(rule, v);
                    std::sort(spans.begin(), spans.end(),
                              [](const Span& a, const Span& b) { return a.fFrom < b.fFrom; });
                    double fAt = -5;
                    for (const Span& span : spans) {
                        EXPECT_EQ(fAt, span.fFrom) << v << " base " << fBase;
                        fAt = span.fTo;
                    }
                    EXPECT_EQ(15, fAt) << v << " base " << fBase;
                    // Without the empty parts the filled one stays as it is.
                    std::erase_if(spans, [](const Span& span) { return !span.bFilled; });
                    rule.bFillOnly = true;
                    EXPECT_EQ(spans, Seen(rule, v)) << v << " base " << fBase;
                }
}

TEST(BarSegments, AreRectanglesBetweenTwoPositions)
{
    const HRGN hRegion = ::CreateRectRgn(15, 0, 45, 300);
    CUpBarMeter up(hRegion, {5, 10, 60, 110});
    CLongBarMeter wide(hRegion, {5, 10, 106, 40});
    for (const auto& [a, b] : {std::pair{2.0, 6.0}, std::pair{6.0, 2.0}}) {
        EXPECT_EQ("15,50,45,90", Text(up.Segment(a, b)));
        EXPECT_EQ("25,10,65,40", Text(wide.Segment(a, b)));
    }
    EXPECT_EQ("15,10,45,110", Text(up.Segment(-3, 99)));
    EXPECT_EQ("5,10,105,40", Text(wide.Segment(-3, 99)));
    const RECT rcUp = up.Segment(-1, 0), rcWide = wide.Segment(10, 11);
    EXPECT_TRUE(::IsRectEmpty(&rcUp));
    EXPECT_TRUE(::IsRectEmpty(&rcWide));
    ::DeleteObject(hRegion);
}

TEST(BarSegments, VerticalColumnIsTheRegionAcrossAndTheBarAlong)
{
    const HRGN hRound = ::CreateEllipticRgn(20, 5, 51, 400);
    RECT box{};
    ::GetRgnBox(hRound, &box);
    EXPECT_EQ(std::to_string(box.left) + ",10," + std::to_string(box.right) + ",110",
              Text(CUpBarMeter(hRound, {5, 10, 60, 110}).Column()));
    EXPECT_EQ("5,10,60,110", Text(CLongBarMeter(hRound, {5, 10, 60, 110}).Column()));
    ::DeleteObject(hRound);
    const HRGN hEmpty = ::CreateRectRgn(20, 20, 20, 90);
    for (const HRGN hRegion : {hEmpty, static_cast<HRGN>(nullptr)}) {
        const RECT rc = CUpBarMeter(hRegion, {5, 10, 60, 110}).Column();
        EXPECT_TRUE(::IsRectEmpty(&rc));
    }
    ::DeleteObject(hEmpty);
}

// ---- columns ----

TEST(BarColumn, LaysAcrossAndAlongOutFromTheEndWhereValuesBegin)
{
    const RECT rc{10, 20, 40, 120};
    const CBarColumn up(rc, true), wide(rc, false);
    EXPECT_TRUE(up.IsVertical());
    EXPECT_FALSE(wide.IsVertical());
    EXPECT_EQ(30, up.Across());
    EXPECT_EQ(100, up.Along());
    EXPECT_EQ(100, wide.Across());
    EXPECT_EQ(30, wide.Along());
    EXPECT_EQ(Text(rc), Text(up.Box(0, 0, 30, 100)));
    EXPECT_EQ(Text(rc), Text(wide.Box(0, 0, 100, 30)));
    EXPECT_EQ("12,80,15,110", Text(up.Box(2, 10, 5, 40)));
    EXPECT_EQ("15,80,22,118", Text(wide.Box(2, 5, 40, 12)));
    EXPECT_EQ(30, up.AlongFrom({10, 50, 40, 90}));
    EXPECT_EQ(70, up.AlongTo({10, 50, 40, 90}));
    EXPECT_EQ(5, wide.AlongFrom({15, 20, 33, 120}));
    EXPECT_EQ(23, wide.AlongTo({15, 20, 33, 120}));
}

TEST(BarColumn, PixelsOfItsCornersAreInside)
{
    const RECT rc{10, 20, 40, 120};
    for (const bool bVertical : {true, false}) {
        const CBarColumn column(rc, bVertical);
        for (const int nAcross : {0, 1, column.Across() - 1, column.Across()})
            for (const int nAlong : {0, 1, column.Along() - 1, column.Along()}) {
                EXPECT_TRUE(::PtInRect(&rc, column.PixelAt(nAcross, nAlong)))
                    << nAcross << "," << nAlong;
                // No more than the last pixel is pulled in.
                const POINT pt = column.At(nAcross, nAlong), px = column.PixelAt(nAcross, nAlong);
                EXPECT_LE(std::abs(pt.x - px.x), 1);
                EXPECT_LE(std::abs(pt.y - px.y), 1);
            }
    }
}

// ---- bodies ----

struct Case {
    RECT rc;
    bool bVertical;
};

std::vector<Case> Columns()
{
    std::vector<Case> columns;
    for (const int nWidth : {1, 2, 3, 5, 12, 30, 55, 200})
        for (const int nLength : {1, 2, 7, 14, 15, 60, 151, 400}) {
            columns.push_back({{13, 17, 13 + nWidth, 17 + nLength}, true});
            columns.push_back({{13, 17, 13 + nLength, 17 + nWidth}, false});
        }
    return columns;
}

TEST(BarBox, HasAFrontOfFourFifthsAndASideOfAQuarterOfIt)
{
    for (const Case& c : Columns()) {
        const CBarColumn column(c.rc, c.bVertical);
        const int nAcross = column.Across(), nAlong = column.Along();
        const BarBox box = MakeBarBox(column, 0, nAlong / 2);
        EXPECT_EQ(nAcross * 4 / 5, box.nFront) << Text(c.rc);
        EXPECT_EQ(std::min(nAcross, box.nFront + box.nFront / 4), box.nBack) << Text(c.rc);
        EXPECT_EQ(0, box.nFrom);
        EXPECT_EQ(nAlong / 2, box.nTo);
    }
}

TEST(BarBox, IsSlantedByAFifteenthOfItsLengthWhereThereIsRoom)
{
    for (const int nLength : {15, 60, 151, 400}) {
        const CBarColumn up({0, 0, 50, nLength}, true), wide({0, 0, nLength, 50}, false);
        for (const CBarColumn* p : {&up, &wide}) {
            const BarBox box = MakeBarBox(*p, nLength / 5, nLength / 2);
            EXPECT_EQ(nLength / 15, box.nFromSlant) << nLength;
            EXPECT_EQ(nLength / 15, box.nToSlant) << nLength;
        }
    }
}

TEST(BarBox, StaysInsideTheColumnAtEveryValue)
{
    for (const Case& c : Columns()) {
        const CBarColumn column(c.rc, c.bVertical);
        const int nAlong = column.Along();
        for (int nFrom = 0; nFrom < nAlong; nFrom += 1 + nAlong / 9)
            for (int nTo = nFrom + 1; nTo <= nAlong; nTo += 1 + nAlong / 23) {
                const BarBox box = MakeBarBox(column, nFrom, nTo);
                EXPECT_EQ(nFrom, box.nFrom);
                EXPECT_LE(box.nFrom, box.nTo);
                EXPECT_GE(box.nFromSlant, 0);
                EXPECT_GE(box.nToSlant, 0);
                EXPECT_LE(box.nToSlant, nAlong / 15);
                EXPECT_LE(box.nFrom + box.nFromSlant, nAlong) << Text(c.rc);
                EXPECT_LE(box.nTo + box.nToSlant, nAlong) << Text(c.rc) << " to " << nTo;
                EXPECT_LE(box.nFront, box.nBack);
                EXPECT_LE(box.nBack, column.Across()) << Text(c.rc);
            }
    }
}

TEST(BarCylinder, HasCapsOfHalfTheColumnsWidth)
{
    for (const int nWidth : {10, 31, 60}) {
        const CBarColumn up({0, 0, nWidth, 300}, true), wide({0, 0, 300, nWidth}, false);
        for (const CBarColumn* p : {&up, &wide})
            EXPECT_EQ(nWidth / 2, MakeBarCylinder(*p, 100, 200).nCap);
    }
}

TEST(BarCylinder, StaysInsideTheColumnAtEveryValue)
{
    for (const Case& c : Columns()) {
        const CBarColumn column(c.rc, c.bVertical);
        const int nAlong = column.Along();
        for (int nFrom = 0; nFrom < nAlong; nFrom += 1 + nAlong / 9)
            for (int nTo = nFrom + 1; nTo <= nAlong; nTo += 1 + nAlong / 23) {
                const BarCylinder cylinder = MakeBarCylinder(column, nFrom, nTo);
                EXPECT_GE(cylinder.nLow, 0);
                EXPECT_LE(cylinder.nLow, cylinder.nHigh) << Text(c.rc);
                EXPECT_LE(cylinder.nHigh + cylinder.nCap, nAlong)
                    << Text(c.rc) << " " << nFrom << ".." << nTo;
                EXPECT_LE(cylinder.nCap, column.Across());
            }
    }
}

TEST(BarCylinder, GrowsWithItsValue)
{
    const CBarColumn column({0, 0, 40, 300}, true);
    int nPrev = -1;
    for (int nTo = 1; nTo <= 300; ++nTo) {
        const BarCylinder cylinder = MakeBarCylinder(column, 0, nTo);
        EXPECT_GE(cylinder.nHigh, nPrev) << nTo;
        nPrev = cylinder.nHigh;
    }
    EXPECT_EQ(300 - 20, nPrev); // the upper cap ends at the column's end
}

} // namespace
