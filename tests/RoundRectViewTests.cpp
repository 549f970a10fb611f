// The view of the rounded rectangle: one RoundRect call with corners that are not scaled. The code
// is render/QELViewBox.*.
#include "render/QELViewBox.h"

#include "tests/support/ViewSupport.h"

namespace {

using View = CTestView<CQELViewRoundRect>;
constexpr SIZE REF{100, 100};
constexpr int WORDS = 6;

TEST(RoundRectShape, IsOneCallWithTheCornersInPixels)
{
    for (const QELSHAPEATTR& attr :
         {OutlineAttr({10, 20, 60, 70, 12, 16}), FilledAttr({10, 20, 60, 70, 12, 16})}) {
        EXPECT_EQ("RoundRect 30,60,130,160 12,16", View(attr).Call("RoundRect", SHAPE_QEL));
    }
}

TEST(RoundRectShape, CornersKeepTheirSizeAtEveryScale)
{
    View view(OutlineAttr({10, 20, 60, 70, 12, 16}));
    EXPECT_EQ("RoundRect 5,10,30,35 12,16", view.Call("RoundRect", {0, 0, 50, 50}));
    EXPECT_EQ("RoundRect 10,20,60,70 12,16", view.Call("RoundRect", {0, 0, 100, 100}));
    EXPECT_EQ("RoundRect 100,60,600,210 12,16", view.Call("RoundRect", {0, 0, 1000, 300}));
}

TEST(RoundRectShape, WithoutCornersItIsARectangle)
{
    View view(FilledAttr({10, 20, 60, 70, 0, 0}));
    CTestBitmap drawn(220, 230);
    EXPECT_EQ(1, view->Draw(drawn.Dc(), SHAPE_QEL, QEL_DRAW_FULL));
    EXPECT_EQ(RGB(255, 0, 0), drawn.At(30, 60)); // the corner itself
    EXPECT_EQ(98 * 98, CountPixels(drawn, RGB(0, 255, 0)));
}

TEST(RoundRectShape, AnEmptyRectangleDrawsNothing)
{
    for (const QELSHAPEATTR& attr :
         {FilledAttr({10, 20, 10, 70, 12, 16}), FilledAttr({60, 20, 10, 70, 12, 16})}) {
        View view(attr);
        CTestBitmap drawn(220, 230);
        EXPECT_EQ(1, view->Draw(drawn.Dc(), SHAPE_QEL, QEL_DRAW_FULL));
        EXPECT_TRUE(IsBlank(drawn));
        EXPECT_EQ(nullptr, view->MakeRegion(SHAPE_QEL));
    }
}

TEST(RoundRectShape, PixelsAreThoseOfTheRawCallInEveryStyle)
{
    ExpectStyles<CQELViewRoundRect>({5, 4, 35, 26, 14, 18}, {4, 3, 84, 63}, {40, 30},
                                    {14, 11, 74, 55},
                                    [](HDC hdc) { ::RoundRect(hdc, 14, 11, 74, 55, 14, 18); });
}

TEST(RoundRectShape, A3DStyleFillsItAndDrawsNoBorder)
{
    QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70, 12, 16});
    const Lines flat = View(attr).Calls(SHAPE_QEL);
    attr.nStyle = 5 | 6 << 16;
    EXPECT_EQ(flat, View(attr).Calls(SHAPE_QEL));
}

TEST(RoundRectShape, PressedMovesItAsARectangle)
{
    const uint32_t nPressed = QEL_DRAW_FULL | QEL_DRAW_PRESSED;
    View inside(PressedAttr(OutlineAttr({10, 20, 60, 70, 12, 16})));
    EXPECT_EQ("RoundRect 32,62,132,162 12,16", inside.Call("RoundRect", SHAPE_QEL, nPressed));
    EXPECT_EQ("RoundRect 30,60,130,160 12,16", inside.Call("RoundRect", SHAPE_QEL));
    View atEdge(PressedAttr(OutlineAttr({10, 20, 100, 70, 12, 16})));
    EXPECT_EQ("RoundRect 32,62,210,162 12,16", atEdge.Call("RoundRect", SHAPE_QEL, nPressed));
}

TEST(RoundRectShape, FollowsItsKeepModeAndTheClip)
{
    QELSHAPEATTR attr = OutlineAttr({10, 20, 60, 70, 12, 16});
    attr.nFlags = QEL_KEEP_ALL;
    EXPECT_EQ("RoundRect 20,40,170,190 12,16", View(attr).Call("RoundRect", SHAPE_QEL));
    EXPECT_EQ("RoundRect 10,20,130,160 12,16",
              View(OutlineAttr({-10, -5, 60, 70, 12, 16})).Call("RoundRect", SHAPE_QEL));
}

TEST(RoundRectShape, LeavesTheDeviceContextAsItWasButForTheFillColors)
{
    View filled(FilledAttr({10, 20, 60, 70, 12, 16}));
    ExpectStateKept(filled, SHAPE_QEL, RGB(0, 255, 0), RGB(0, 0, 255));
    View outline(OutlineAttr({10, 20, 60, 70, 12, 16}));
    ExpectStateKept(outline, SHAPE_QEL, BACK_BEFORE, TEXT_BEFORE);
}

TEST(RoundRectShape, RegionIsThatOfTheMappedRectangle)
{
    View view(PressedAttr(FilledAttr({10, 20, 60, 70, 12, 16})));
    ExpectSameRegion(::CreateRoundRectRgn(30, 60, 130, 160, 12, 16), view->MakeRegion(SHAPE_QEL));
    EXPECT_EQ(0, FarFromFilled(view->MakeRegion(SHAPE_QEL),
                               [](HDC hdc) { ::RoundRect(hdc, 30, 60, 130, 160, 12, 16); }));
}

TEST(RoundRectShape, TurnsAndMovesAsARectangleWithItsCornersAsTheyAre)
{
    const QELSHAPEATTR attr = OutlineAttr({10, 20, 60, 40, 12, 16});
    ExpectTurns<CQELViewRoundRect>(attr, WORDS, {50, 50}, BoxTurn(REF));
    ExpectTurns<CQELViewRoundRect>(attr, WORDS, {15, 15}, BoxTurn(REF));
    ExpectMoves<CQELViewRoundRect>(attr, WORDS, BoxMove(REF));
}

} // namespace
