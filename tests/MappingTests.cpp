// From drawing units to device pixels: every keep mode with every placement and extent, clipping,
// the pressed shift, and keeping figures inside the drawing. The code is render/Mapping.*.
#include "render/Mapping.h"
#include "render/UnitMap.h"
#include "tests/support/ViewSupport.h"

#include <climits>
#include <set>

namespace {

struct Scene { // a QEL rect, a reference size and an element's rectangle
    RECT q;
    int refW;
    int refH;
    RECT e;
};

constexpr Scene g_scenes[] = {
    {{0, 0, 200, 200}, 100, 100, {10, 20, 60, 70}},       // twice the size
    {{10, 20, 410, 170}, 100, 100, {10, 20, 60, 70}},     // wider than high, off the origin
    {{-50, -70, 250, 530}, 300, 150, {17, 31, 203, 119}}, // left of and above the origin
    {{3, 5, 80, 64}, 100, 90, {7, 9, 96, 83}},            // smaller than the drawing
    {{0, 0, 1000, 700}, 7, 11, {1, 2, 6, 9}},             // every division leaves a rest
    {{0, 0, 120, 90}, 100, 100, {-20, -10, 130, 140}},    // over all edges
    {{0, 0, 50, 40}, 100, 100, {30, 30, 60, 55}},         // turns inside out with fixed borders
    {{100, 100, 300, 300}, 50, 50, {0, 0, 50, 50}},       // the whole drawing
};

RECT Clipped(RECT o, const RECT& q)
{
    const bool bMeets = o.left < o.right && o.top < o.bottom && o.left < q.right &&
                        o.top < q.bottom && q.left < o.right && q.top < o.bottom;
    if (!bMeets) return {0, 0, 0, 0};
    return {std::max(o.left, q.left), std::max(o.top, q.top), std::min(o.right, q.right),
            std::min(o.bottom, q.bottom)};
}

// The rules written out, anchor by anchor.
RECT ByTheRules(const Scene& s, uint32_t k)
{
    const RECT &q = s.q, &e = s.e;
    const int W = q.right - q.left, H = q.bottom - q.top;
    const int w = e.right - e.left, h = e.bottom - e.top;
    const int stretchedLeft = e.left * W / s.refW + q.left;
    const int stretchedTop = e.top * H / s.refH + q.top;
    const int stretchedRight = e.right * W / s.refW + q.left;
    const int stretchedBottom = e.bottom * H / s.refH + q.top;
    const int fixedLeft = q.left + e.left, fixedTop = q.top + e.top;
    const int fixedRight = q.right - (s.refW - e.right);
    const int fixedBottom = q.bottom - (s.refH - e.bottom);
    const uint32_t nAlong = k & 0x300000, nAway = k & 0xC20000;
    RECT o{};
    switch (k & 0xD9000) {
    case 0x1000:
        return {fixedLeft, fixedTop, fixedRight, fixedBottom};
    case 0x8000:
    case 0x40000:
        if (nAlong == 0x100000) {
            o.top = stretchedTop;
            o.bottom = o.top + h;
        } else if (nAlong == 0x200000) {
            o.top = stretchedTop;
            o.bottom = stretchedBottom;
        } else {
            o.top = fixedTop;
            o.bottom = fixedBottom;
        }
        if ((k & 0xD9000) == 0x8000) {
            o.left = fixedLeft;
            if (nAway == 0x20000)
                o.right = (o.bottom - o.top) * w / h + o.left;
            else if (nAway == 0x400000)
                o.right = o.left + w;
            else if (nAway == 0x800000)
                o.right = fixedRight;
            else
                o.right = w * W / s.refW + o.left;
        } else {
            o.right = fixedRight;
            if (nAway == 0x20000)
                o.left = o.right - (o.bottom - o.top) * w / h;
            else if (nAway == 0x400000)
                o.left = o.right - w;
            else if (nAway == 0x800000)
                o.left = fixedLeft;
            else
                o.left = o.right - w * W / s.refW;
        }
        return o;
    case 0x10000:
    case 0x80000:
        if (nAlong == 0x100000) {
            o.left = stretchedLeft;
            o.right = o.left + w;
        } else if (nAlong == 0x200000) {
            o.left = stretchedLeft;
            o.right = stretchedRight;
        } else {
            o.left = fixedLeft;
            o.right = fixedRight;
        }
        if ((k & 0xD9000) == 0x10000) {
            o.top = fixedTop;
            if (nAway == 0x20000)
                o.bottom = (o.right - o.left) * h / w + o.top;
            else if (nAway == 0x400000)
                o.bottom = o.top + h;
            else if (nAway == 0x800000)
                o.bottom = fixedBottom;
            else
                o.bottom = h * H / s.refH + o.top;
        } else {
            o.bottom = fixedBottom;
            if (nAway == 0x20000)
                o.top = o.bottom - (o.right - o.left) * h / w;
            else if (nAway == 0x400000)
                o.top = o.bottom - h;
            else if (nAway == 0x800000)
                o.top = fixedTop;
            else
                o.top = o.bottom - h * H / s.refH;
        }
        return o;
    default:
        return {stretchedLeft, stretchedTop, stretchedRight, stretchedBottom};
    }
}

std::string Mapped(const Scene& s, uint32_t nKeep)
{
    RECT rc{-1, -2, -3, -4};
    EXPECT_EQ(1, MapRect(s.q, s.refW, s.refH, s.e, &rc, nKeep));
    return RectText(rc);
}

// No anchor, the five anchors, and two that are no single anchor and so stretch.
constexpr uint32_t g_anchors[] = {0x0, 0x1000, 0x8000, 0x10000, 0x40000, 0x80000, 0x9000, 0xC8000};
// A value of two bits is none of the named ones.
constexpr uint32_t g_along[] = {0x0, 0x100000, 0x200000, 0x300000};
constexpr uint32_t g_away[] = {0x0, 0x20000, 0x400000, 0x800000, 0x420000, 0xC00000};

TEST(KeepModes, EveryAnchorPlacementAndExtentFollowsItsRule)
{
    std::set<std::string> seen;
    for (const Scene& s : g_scenes) {
        for (const uint32_t nAnchor : g_anchors) {
            for (const uint32_t nAlong : g_along) {
                for (const uint32_t nAway : g_away) {
                    const uint32_t k = nAnchor | nAlong | nAway;
                    SCOPED_TRACE(testing::Message()
                                 << "scene " << (&s - g_scenes) << std::hex << " keep " << k);
                    EXPECT_EQ(RectText(Clipped(ByTheRules(s, k), s.q)), Mapped(s, k));
                    // Bits of no keep group change nothing.
                    EXPECT_EQ(Mapped(s, k), Mapped(s, k | 0x4081));
                    if (&s == &g_scenes[1]) seen.insert(Mapped(s, k));
                }
            }
        }
    }
    EXPECT_GT(seen.size(), 35U); // the modes do not all map to the same place
}

// One scene by hand: 100 by 100 units on 400 by 150 pixels at 10,20; the element 10,20..60,70 is 50
// by 50, 40 from the right edge and 30 from the bottom.
TEST(KeepModes, OneSceneWorkedOutByHand)
{
    const struct {
        uint32_t nKeep;
        const char* pszRect;
    } rows[] = {
        {0, "50,50,250,125"}, // 10*4+10, 20*1.5+20, 60*4+10, 70*1.5+20
        {0x1000, "20,40,370,140"},
        {0x8000, "20,40,220,140"},           // as wide as the drawing makes it: 50*4
        {0x8000 | 0x20000, "20,40,120,140"}, // 100 high, so 100 wide
        {0x8000 | 0x400000, "20,40,70,140"},
        {0x8000 | 0x800000, "20,40,370,140"},
        {0x8000 | 0x100000 | 0x20000, "20,50,70,100"},
        {0x8000 | 0x200000 | 0x20000, "20,50,95,125"}, // 75 high
        {0x40000, "170,40,370,140"},
        {0x40000 | 0x20000, "270,40,370,140"},
        {0x40000 | 0x400000, "320,40,370,140"},
        {0x40000 | 0x800000, "20,40,370,140"},
        {0x40000 | 0x100000 | 0x400000, "320,50,370,100"},
        {0x10000, "20,40,370,115"}, // 50*1.5 high
        {0x10000 | 0x400000, "20,40,370,90"},
        {0x10000 | 0x800000, "20,40,370,140"},
        {0x10000 | 0x100000 | 0x20000, "50,40,100,90"},
        {0x10000 | 0x100000, "50,40,100,115"},
        {0x10000 | 0x200000 | 0x400000, "50,40,250,90"},
        {0x10000 | 0x200000 | 0x20000, "50,40,250,170"}, // 200 high: down to the edge
        {0x80000, "20,65,370,140"},
        {0x80000 | 0x400000, "20,90,370,140"},
        {0x80000 | 0x800000, "20,40,370,140"},
        {0x80000 | 0x100000 | 0x20000, "50,90,100,140"},
        {0x80000 | 0x200000 | 0x20000, "50,20,250,140"}, // 200 high: up to the edge
        {0x8000 | 0x40000, "50,50,250,125"},             // two anchors: stretched
        {0xD9000, "50,50,250,125"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.pszRect, Mapped(g_scenes[1], row.nKeep)) << std::hex << row.nKeep;
}

TEST(KeepModes, AnAnchorIsOneBitOfFive)
{
    for (uint32_t k = 0; k < 0x100000; k += 0x1000) {
        const uint32_t nBits = k & 0xD9000;
        const bool bOne = nBits && !(nBits & (nBits - 1));
        EXPECT_EQ(bOne ? nBits : 0, AnchorOf(k | 0x304081)) << std::hex << k;
    }
}

TEST(MapRectangle, DivisionsTruncateTowardZero)
{
    // 1 * 10 / 3 is 3, 2 * 10 / 3 is 6.
    EXPECT_EQ("103,203,106,206", Mapped({{100, 200, 110, 210}, 3, 3, {1, 1, 2, 2}}, 0));
    // -1 * 10 / 3 is -3 and not -4: just outside, while -10 / 3 * 2 shows no more of it.
    EXPECT_EQ("100,200,103,203", Mapped({{100, 200, 110, 210}, 3, 3, {-1, -1, 1, 1}}, 0));
    // The product comes first: 1 / 3 * 10 would be 0.
    EXPECT_EQ("3,3,10,10", Mapped({{0, 0, 10, 10}, 3, 3, {1, 1, 3, 3}}, 0));
    // What truncates to no width is empty, and that is success.
    EXPECT_EQ("0,0,0,0", Mapped({{0, 0, 10, 10}, 100, 100, {11, 11, 19, 19}}, 0));
}

TEST(MapRectangle, WhatHasNoAreaFailsAndGivesAnEmptyRectangle)
{
    const Scene scenes[] = {
        {{0, 0, 0, 100}, 100, 100, {10, 10, 20, 20}},   // QEL rect without a width
        {{0, 0, 100, 0}, 100, 100, {10, 10, 20, 20}},   // or a height
        {{100, 100, 0, 0}, 100, 100, {10, 10, 20, 20}}, // inside out
        {{0, 0, 100, 100}, 0, 100, {10, 10, 20, 20}},   // reference sizes below 1
        {{0, 0, 100, 100}, 100, 0, {10, 10, 20, 20}},
        {{0, 0, 100, 100}, -100, 100, {10, 10, 20, 20}},
        {{0, 0, 100, 100}, 100, INT_MIN, {10, 10, 20, 20}},
        {{0, 0, 100, 100},
         100,
         100,
         {10, 10, 10, 20}}, // no width: nothing for a ratio to divide by
        {{0, 0, 100, 100}, 100, 100, {10, 10, 20, 10}},
        {{0, 0, 100, 100}, 100, 100, {20, 10, 10, 20}}, // inside out
    };
    for (const Scene& s : scenes) {
        for (const uint32_t nAnchor : g_anchors) {
            for (const uint32_t nAway : g_away) {
                SCOPED_TRACE(testing::Message() << "scene " << (&s - scenes) << std::hex << " keep "
                                                << (nAnchor | nAway));
                RECT rc{1, 2, 3, 4};
                EXPECT_EQ(0, MapRect(s.q, s.refW, s.refH, s.e, &rc, nAnchor | nAway));
                EXPECT_TRUE(::IsRectEmpty(&rc)) << RectText(rc);
            }
        }
    }
}

TEST(MapRectangle, IsPulledInsideTheQelRect)
{
    const RECT q{100, 100, 200, 200}; // the drawing at its own size
    const struct {
        RECT e;
        const char* pszRect;
    } rows[] = {
        {{0, 0, 100, 100}, "100,100,200,200"},     // exactly the edges
        {{-10, 20, 30, 40}, "100,120,130,140"},    // over the left edge
        {{20, -10, 40, 30}, "120,100,140,130"},    // top
        {{90, 20, 130, 40}, "190,120,200,140"},    // right
        {{20, 90, 40, 130}, "120,190,140,200"},    // bottom
        {{-50, -60, 150, 170}, "100,100,200,200"}, // all of them
        {{99, 99, 150, 150}, "199,199,200,200"},   // one pixel of it
        {{100, 20, 120, 40}, "0,0,0,0"},           // beside the right edge: empty
        {{-20, 20, 0, 40}, "0,0,0,0"},             // beside the left edge
        {{20, 100, 40, 120}, "0,0,0,0"},
        {{20, -20, 40, 0}, "0,0,0,0"},
        {{500, 500, 600, 600}, "0,0,0,0"},
    };
    for (const auto& row : rows) EXPECT_EQ(row.pszRect, Mapped({q, 100, 100, row.e}, 0));
}

TEST(MapRectangle, FixedBordersInASmallQelRectTurnInsideOutAndComeOutEmpty)
{
    // 30 from the left and 40 from the right of 60 pixels.
    EXPECT_EQ("0,0,0,0", Mapped({{0, 0, 60, 60}, 100, 100, {30, 30, 60, 60}}, QEL_KEEP_ALL));
    EXPECT_EQ("30,30,31,31", Mapped({{0, 0, 71, 71}, 100, 100, {30, 30, 60, 60}}, QEL_KEEP_ALL));
    EXPECT_EQ("0,0,0,0", Mapped({{0, 0, 70, 70}, 100, 100, {30, 30, 60, 60}}, QEL_KEEP_ALL));
}

TEST(MapRectangle, ProductsWrapInto32Bits)
{
    // 65536 * 65536 is 0 in 32 bits, 65537 * 65536 is 65536.
    EXPECT_EQ("0,0,655,655",
              Mapped({{0, 0, 65536, 65536}, 100, 100, {65536, 65536, 65537, 65537}}, 0));
    RECT rc{};
    for (const LONG n : {INT_MIN, INT_MAX, -1, 1}) // nothing traps
        for (const uint32_t nAnchor : g_anchors)
            for (const uint32_t nAway : g_away) {
                MapRect({INT_MIN, -1, INT_MAX, n}, 1, INT_MAX, {INT_MIN, n, INT_MAX, INT_MAX}, &rc,
                        nAnchor | nAway);
                EXPECT_LE(rc.left, rc.right);
                EXPECT_LE(rc.top, rc.bottom);
            }
}

TEST(PressedShift, MovesLeftAndTopAlwaysAndTheFarEdgesOnlyInsideTheQelRect)
{
    const RECT q{0, 0, 100, 50};
    const struct {
        RECT before;
        const char* pszAfter;
    } rows[] = {
        {{10, 10, 20, 20}, "12,12,22,22"},    {{10, 10, 98, 48}, "12,12,100,50"},
        {{10, 10, 99, 49}, "12,12,99,49"},    {{10, 10, 100, 50}, "12,12,100,50"},
        {{10, 10, 100, 20}, "12,12,100,22"},  {{10, 10, 20, 50}, "12,12,22,50"},
        {{98, 10, 100, 20}, "100,12,100,22"},
    };
    for (const auto& row : rows) {
        RECT rc = row.before;
        ShiftPressed(&rc, q);
        EXPECT_EQ(row.pszAfter, RectText(rc));
    }
}

TEST(KeepInside, SlidesARectangleBackAndCutsOnlyWhatIsLarger)
{
    const struct {
        RECT before;
        const char* pszAfter;
    } rows[] = {
        {{10, 10, 20, 20}, "10,10,20,20"},   {{0, 0, 100, 50}, "0,0,100,50"},
        {{-5, 10, 5, 20}, "0,10,10,20"},     {{10, -7, 20, 3}, "10,0,20,10"},
        {{95, 10, 115, 20}, "80,10,100,20"}, {{10, 45, 20, 55}, "10,40,20,50"},
        {{-30, -30, -10, -10}, "0,0,20,20"}, {{500, 500, 510, 520}, "90,30,100,50"},
        {{-5, 10, 145, 20}, "0,10,100,20"},  {{20, 10, 30, 90}, "20,0,30,50"},
        {{50, 10, 160, 20}, "0,10,100,20"},  {{-200, -200, 300, 300}, "0,0,100,50"},
    };
    for (const auto& row : rows) {
        RECT rc = row.before;
        KeepRectInside(&rc, 100, 50);
        EXPECT_EQ(row.pszAfter, RectText(rc)) << RectText(row.before);
    }
}

TEST(KeepInside, SlidesAFigureByOneOffset)
{
    EXPECT_EQ(0, SlideInside(0, 100, 100));
    EXPECT_EQ(0, SlideInside(5, 5, 100));
    EXPECT_EQ(5, SlideInside(-5, 60, 100));
    EXPECT_EQ(-20, SlideInside(60, 120, 100));
    // Larger than the drawing: the low end stands at 0, wherever it was.
    EXPECT_EQ(10, SlideInside(-10, 130, 100));
    EXPECT_EQ(-10, SlideInside(10, 130, 100));
    EXPECT_EQ(300, SlideInside(-300, -190, 100));
}

TEST(KeepInside, NormalisingSwapsEdgesThatStandTheWrongWay)
{
    EXPECT_EQ("1,2,3,4", RectText(NormalizedRect({1, 2, 3, 4})));
    EXPECT_EQ("1,2,3,4", RectText(NormalizedRect({3, 2, 1, 4})));
    EXPECT_EQ("1,2,3,4", RectText(NormalizedRect({1, 4, 3, 2})));
    EXPECT_EQ("-3,-4,-1,-2", RectText(NormalizedRect({-1, -2, -3, -4})));
}

TEST(KeepKeywords, AreThoseOfTheFormatInTheirThreeGroups)
{
    struct Row {
        const char* pszName;
        int nValue;
    };
    const std::vector<Row> anchors = {{"Not Keep", 0},         {"Keep All", 0x1000},
                                      {"Keep left", 0x8000},   {"Keep top", 0x10000},
                                      {"Keep right", 0x40000}, {"Keep bottom", 0x80000}};
    const std::vector<Row> along = {
        {"Keep borders", 0}, {"Keep length", 0x100000}, {"As QEL", 0x200000}};
    const std::vector<Row> away = {
        {"As QEL", 0}, {"As graph", 0x20000}, {"Keep length", 0x400000}, {"Keep border", 0x800000}};
    const auto expectTable = [](const std::vector<Row>& expected, const KeywordRow* pRows) {
        for (const Row& row : expected) {
            EXPECT_EQ(row.nValue, LookupKeyword(pRows, row.pszName)) << row.pszName;
            EXPECT_STREQ(row.pszName, NameOf(pRows, row.nValue));
        }
        std::size_t nRows = 0;
        while (pRows[nRows].nId != -1) ++nRows;
        EXPECT_EQ(expected.size(), nRows); // and no others
    };
    expectTable(anchors, g_keepAnchors);
    expectTable(along, g_keepAlong);
    expectTable(away, g_keepAway);
    EXPECT_EQ(-1, LookupKeyword(g_keepAnchors, "Keep Left")); // letter for letter
    EXPECT_EQ(-1, LookupKeyword(g_keepAlong, "Keep border"));
    EXPECT_EQ(-1, LookupKeyword(g_keepAway, "Keep borders"));
}

} // namespace

// ---- single points, and rectangles that grow ----

TEST(UnitMap, NeedsAPlaceAndADrawingWithAnExtent)
{
    const RECT rcElem{10, 20, 60, 70};
    UnitMap map{};
    for (const uint32_t nKeep : {uint32_t{QEL_KEEP_NONE}, uint32_t{QEL_KEEP_ALL}}) {
        EXPECT_TRUE(MakeUnitMap({0, 0, 200, 300}, 100, 100, rcElem, nKeep, &map)) << nKeep;
        EXPECT_FALSE(MakeUnitMap({5, 0, 5, 300}, 100, 100, rcElem, nKeep, &map)) << nKeep;
        EXPECT_FALSE(MakeUnitMap({0, 7, 200, 7}, 100, 100, rcElem, nKeep, &map)) << nKeep;
        EXPECT_FALSE(MakeUnitMap({0, 0, 200, 300}, 0, 100, rcElem, nKeep, &map)) << nKeep;
        EXPECT_FALSE(MakeUnitMap({0, 0, 200, 300}, 100, 0, rcElem, nKeep, &map)) << nKeep;
    }
}

TEST(UnitMap, IsNoneWhereAnExtentWrapsAround)
{
    const RECT rcElem{10, 20, 60, 70};
    UnitMap map{};
    EXPECT_FALSE(MakeUnitMap({INT_MIN, 0, INT_MAX, 9}, 9, 9, rcElem, QEL_KEEP_NONE, &map));
    EXPECT_FALSE(MakeUnitMap({0, INT_MIN, 9, INT_MAX}, 9, 9, rcElem, QEL_KEEP_NONE, &map));
}

// With all four borders kept the place of an element does not go by its own extent, which may be
// nothing.
TEST(UnitMap, WithItsBordersKeptAnElementNeedsAnExtentOfItsOwn)
{
    UnitMap map{};
    EXPECT_FALSE(MakeUnitMap({0, 0, 200, 300}, 100, 100, {30, 20, 30, 70}, QEL_KEEP_ALL, &map));
    EXPECT_FALSE(MakeUnitMap({0, 0, 200, 300}, 100, 100, {10, 40, 60, 40}, QEL_KEEP_ALL, &map));
}

TEST(GrownRect, GoesOutByAsManyPixelsAtEachSide)
{
    const RECT rc = GrownRect({10, 20, 30, 40}, 3);
    const RECT rcExpected{7, 17, 33, 43};
    EXPECT_TRUE(::EqualRect(&rcExpected, &rc));
}

TEST(GrownRect, IsAllWithinReachWhereItCannotBeReckoned)
{
    for (const int32_t n : {-1, REACH + 1, INT_MAX}) {
        const RECT rc = GrownRect({10, 20, 30, 40}, n);
        EXPECT_TRUE(::EqualRect(&ALL_IN_REACH, &rc)) << n;
    }
    for (const RECT& rcFar : {RECT{-REACH - 1, 0, 9, 9}, RECT{0, -REACH - 1, 9, 9},
                              RECT{0, 0, REACH + 1, 9}, RECT{0, 0, 9, REACH + 1}}) {
        const RECT rc = GrownRect(rcFar, 1);
        EXPECT_TRUE(::EqualRect(&ALL_IN_REACH, &rc));
    }
}
