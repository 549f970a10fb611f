// Where shapes paint and are hit at the ends of the rules: without an extent, under wide pens and
// borders, with pens of frames that have no room. What else they paint and where they are hit is
// held against pixels in PaintedRectTests.cpp; the code is render/QELViewShape.*,
// render/QELViewBox.* and render/UnitMap.*.
#include "render/QELViewBox.h"
#include "render/QELViewText.h"
#include "render/UnitMap.h"
#include "tests/support/ViewSupport.h"

#include <climits>

namespace {

using namespace viewtest;

constexpr RECT QEL{0, 0, 100, 100}; // a pixel a unit
constexpr int LAST = 89;            // the last pixel of the box
const std::initializer_list<int> g_box = {10, 10, LAST + 1, LAST + 1};

QELSHAPEATTR Penned(QELSHAPEATTR attr, int32_t nWidth, int32_t nPenStyle = PS_SOLID)
{
    attr.nPenWidth = nWidth;
    attr.nPenStyle = nPenStyle;
    return attr;
}

QELSHAPEATTR Bordered(QELSHAPEATTR attr, int32_t nWidth)
{
    attr.nStyle = static_cast<int32_t>(static_cast<uint32_t>(attr.nStyle) | QEL_STYLE_UP_BIT |
                                       static_cast<uint32_t>(nWidth) << 16);
    return attr;
}

template <class View>
bool HitRightOf(const QELSHAPEATTR& attr, int nBeyond) // its last pixel
{
    CTestView<View> view(attr);
    EXPECT_TRUE(view->IsHit(QEL, {50, 50}));
    return view->IsHit(QEL, {LAST + nBeyond, 50});
}

} // namespace

// ---- hits ----

TEST(ShapeHit, ABoxThatComesToNoPixelIsNowhere)
{
    // A unit is a tenth of a pixel across or down.
    CTestView<CQELViewEllipse> narrow(FilledAttr({20, 10, 21, 40}));
    CTestView<CQELViewEllipse> flat(FilledAttr({10, 20, 40, 21}));
    EXPECT_FALSE(narrow->IsHit({0, 0, 10, 100}, {2, 20}));
    EXPECT_FALSE(flat->IsHit({0, 0, 100, 10}, {20, 2}));
    EXPECT_TRUE(narrow->IsHit({0, 0, 1000, 100}, {205, 20}));
    EXPECT_TRUE(flat->IsHit({0, 0, 100, 1000}, {20, 205}));
}

TEST(ShapeHit, OfAWidePenIsHalfOfItAndItsCorners)
{
    const QELSHAPEATTR wide = Penned(FilledAttr(g_box), 4); // two pixels, and one and a half more
    EXPECT_TRUE(HitRightOf<CQELViewEllipse>(wide, 3));
    EXPECT_FALSE(HitRightOf<CQELViewEllipse>(wide, 5));
    EXPECT_TRUE(HitRightOf<CQELViewRect>(wide, 3));
    EXPECT_FALSE(HitRightOf<CQELViewRect>(wide, 5));
    const QELSHAPEATTR thin = Penned(FilledAttr(g_box), 1);
    EXPECT_TRUE(HitRightOf<CQELViewEllipse>(thin, 1));
    EXPECT_FALSE(HitRightOf<CQELViewEllipse>(thin, 3));
    EXPECT_FALSE(HitRightOf<CQELViewRect>(thin, 2)); // nothing of it is round
}

TEST(ShapeHit, BehindABorderThePenCountsForNothing)
{
    const QELSHAPEATTR bordered = Bordered(Penned(FilledAttr(g_box), 9), 2);
    EXPECT_TRUE(HitRightOf<CQELViewRect>(bordered, 0));
    EXPECT_FALSE(HitRightOf<CQELViewRect>(bordered, 1));
}

TEST(ShapeHit, ABorderWiderThanItsRectangleIsHitOnAllOfIt)
{
    // The rings have passed each other: the eighth ends eight pixels from the other side.
    CTestView<CQELViewRect> view(Bordered(FilledAttr({40, 20, 43, 60}), 8));
    EXPECT_TRUE(view->IsHit(QEL, {43 - 8, 40}));
    EXPECT_TRUE(view->IsHit(QEL, {40 + 8 - 1, 40}));
    EXPECT_FALSE(view->IsHit(QEL, {43 - 8 - 1, 40}));
    EXPECT_FALSE(view->IsHit(QEL, {40 + 8, 40}));
    CTestView<CQELViewRect> none(Bordered(FilledAttr({40, 20, 40, 60}), 8)); // has no border
    EXPECT_FALSE(none->IsHit(QEL, {40, 40}));
    EXPECT_FALSE(none->IsHit(QEL, {0, 0}));
}

TEST(ShapeHit, ATextIsHitOnItsRectangleAlone)
{
    CTestView<CQELViewText> view(FilledAttr({40, 20, 60, 30}));
    EXPECT_TRUE(view->IsHit(QEL, {40, 20}));
    EXPECT_FALSE(view->IsHit(QEL, {60, 20}));
    CTestView<CQELViewText> none(FilledAttr({40, 20, 40, 30}));
    EXPECT_FALSE(none->IsHit(QEL, {40, 20}));
    EXPECT_FALSE(none->IsHit(QEL, {0, 0}));
}

// ---- painted places ----

TEST(ShapePaint, APenOfAFrameThatHasNoRoomStandsOutOnAllSides)
{
    constexpr int PEN = 20;
    RECT rc{};
    CTestView<CQELViewEllipse> small(Penned(FilledAttr({48, 48, 52, 52}), PEN, PS_INSIDEFRAME));
    ASSERT_TRUE(small->PaintedRect(QEL, &rc));
    EXPECT_LE(rc.left, 48 - PEN);
    EXPECT_LE(rc.top, 48 - PEN);
    EXPECT_GE(rc.right, 52 + PEN);
    EXPECT_GE(rc.bottom, 52 + PEN);
    CTestView<CQELViewEllipse> large(Penned(FilledAttr(g_box), PEN, PS_INSIDEFRAME));
    ASSERT_TRUE(large->PaintedRect(QEL, &rc));
    EXPECT_GT(rc.left, 10 - PEN);
    EXPECT_LT(rc.right, LAST + 1 + PEN);
}

TEST(ShapePaint, AFramesPenLiesWithinTheRectangleAtEveryScale)
{
    CTestView<CQELViewRect> view(Penned(FilledAttr({10, 20, 40, 60}), 5, PS_INSIDEFRAME));
    for (const uint32_t nPercent : {100U, 200U}) {
        CRecording recording;
        const QelRect rcQel(SHAPE_QEL, CPixelScale(nPercent));
        EXPECT_EQ(1, view->Draw(recording.Dc(), rcQel, QEL_DRAW_FULL));
        EXPECT_EQ(Lines{"Rectangle 30,60,90,140"}, recording.Only({"Rectangle"})) << nPercent;
    }
}

// ---- units ----

TEST(UnitMaps, WhatIsWiderThanNumbersSayHasNone)
{
    constexpr LONG FAR_SIDE = INT_MAX - 1;
    const RECT whole{0, 0, 10, 10};
    UnitMap map{};
    for (const uint32_t nKeep : {uint32_t{QEL_KEEP_NONE}, uint32_t{QEL_KEEP_ALL}}) {
        EXPECT_TRUE(MakeUnitMap(QEL, 10, 10, whole, nKeep, &map));
        EXPECT_FALSE(MakeUnitMap({-FAR_SIDE, 0, FAR_SIDE, 100}, 10, 10, whole, nKeep, &map));
        EXPECT_FALSE(MakeUnitMap({0, -FAR_SIDE, 100, FAR_SIDE}, 10, 10, whole, nKeep, &map));
    }
}

TEST(UnitMaps, APointBeyondAllImagesIsThatOfTheOutermostUnit)
{
    UnitMap map{};
    ASSERT_TRUE(MakeUnitMap(QEL, 100, 100, {0, 0, 100, 100}, QEL_KEEP_NONE, &map));
    // A unit times 100 pixels is to be a number.
    constexpr LONG LAST_UNIT = INT_MAX / 100;
    POINT pt = DeviceToUnit(map, {}, {INT_MIN, INT_MAX});
    EXPECT_EQ(-LAST_UNIT, pt.x);
    EXPECT_EQ(LAST_UNIT, pt.y);
    pt = DeviceToUnit(map, {}, {37, -12});
    EXPECT_EQ(37, pt.x);
    EXPECT_EQ(-12, pt.y);
}
