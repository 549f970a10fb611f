// The view of the ellipse: one Ellipse call on the mapped rectangle. The code is
// render/QELViewBox.*.
#include "render/QELViewBox.h"

#include "base/DrawLimits.h"
#include "tests/support/ViewSupport.h"

namespace {

using View = CTestView<CQELViewEllipse>;
constexpr SIZE REF{100, 100};
constexpr int WORDS = 4;

TEST(EllipseShape, IsOneCallOnTheMappedRectangle)
{
    for (const QELSHAPEATTR& attr : {OutlineAttr({10, 20, 60, 70}), FilledAttr({10, 20, 60, 70})}) {
        EXPECT_EQ("Ellipse 30,60,130,160", View(attr).Call("Ellipse", SHAPE_QEL));
    }
    EXPECT_EQ("Ellipse 10,20,130,160",
              View(OutlineAttr({-30, -5, 60, 70})).Call("Ellipse", SHAPE_QEL)); // clipped
    EXPECT_EQ("none", View(OutlineAttr({60, 20, 10, 70})).Call("Ellipse", SHAPE_QEL));
    QELSHAPEATTR kept = OutlineAttr({10, 20, 60, 70});
    kept.nFlags = QEL_KEEP_ALL;
    EXPECT_EQ("Ellipse 20,40,170,190", View(kept).Call("Ellipse", SHAPE_QEL));
}

TEST(EllipseShape, PixelsAreThoseOfTheRawCallInEveryStyle)
{
    ExpectStyles<CQELViewEllipse>({5, 4, 35, 26}, {4, 3, 84, 63}, {40, 30}, {14, 11, 74, 55},
                                  [](HDC hdc) { ::Ellipse(hdc, 14, 11, 74, 55); });
}

TEST(EllipseShape, WithoutAnOutlineItIsStillTheOneCall)
{
    QELSHAPEATTR attr = FilledAttr({5, 4, 35, 26});
    attr.nPenWidth = 0;
    View view(attr, 40, 30);
    ExpectPixels(view, {4, 3, 84, 63}, [&](HDC hdc) {
        PaintRaw(hdc, attr, {14, 11, 74, 55},
                 [](HDC hdcRaw) { ::Ellipse(hdcRaw, 14, 11, 74, 55); });
    });
    EXPECT_EQ("none", view.Call("PatBlt", {4, 3, 84, 63}));
}

// Some systems end over a curve that such a pen leaves no room. A metafile keeps the width.
TEST(EllipseShape, APenInsideOfItsFrameLeavesOnePixelOfItOnASurface)
{
    QELSHAPEATTR attr = OutlineAttr({10, 10, 20, 40});
    attr.nPenStyle = PS_INSIDEFRAME;
    attr.nPenWidth = 30;
    QELSHAPEATTR narrow = attr;
    narrow.nPenWidth = 20 - 10 - 2;
    View view(attr);
    ExpectPixels(view, {0, 0, 100, 100}, [&](HDC hdc) {
        PaintRaw(hdc, narrow, {10, 10, 20, 40},
                 [](HDC hdcRaw) { ::Ellipse(hdcRaw, 10, 10, 20, 40); });
    });
    EXPECT_EQ("CreatePen style 6 width 30 color 0000ff", view.Call("CreatePen", {0, 0, 100, 100}));
    EXPECT_EQ(7, FramePenWidth(7, {0, 0, 9, 20})); // as wide as it may be
    EXPECT_EQ(7, FramePenWidth(8, {0, 0, 20, 9}));
    for (const LONG nSide : {0, 1, 2, 3}) EXPECT_EQ(1, FramePenWidth(5, {0, 0, nSide, 20}));
}

TEST(EllipseShape, A3DStyleFillsItAndDrawsNoBorder)
{
    for (const DWORD nStyle : {3UL, 5UL, 3UL | 6 << 16}) {
        QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
        const Lines flat = View(attr).Calls(SHAPE_QEL);
        attr.nStyle = nStyle;
        EXPECT_EQ(flat, View(attr).Calls(SHAPE_QEL)); // with its outline, too
    }
}

TEST(EllipseShape, PressedMovesItAsARectangle)
{
    const uint32_t nPressed = QEL_DRAW_FULL | QEL_DRAW_PRESSED;
    View inside(PressedAttr(OutlineAttr({10, 20, 60, 70})));
    EXPECT_EQ("Ellipse 32,62,132,162", inside.Call("Ellipse", SHAPE_QEL, nPressed));
    EXPECT_EQ("Ellipse 30,60,130,160", inside.Call("Ellipse", SHAPE_QEL));
    View atEdge(PressedAttr(OutlineAttr({10, 20, 100, 99})));
    EXPECT_EQ("Ellipse 32,62,210,220", atEdge.Call("Ellipse", SHAPE_QEL, nPressed));
}

TEST(EllipseShape, LeavesTheDeviceContextAsItWasButForTheFillColors)
{
    for (const int nDraft : {0, 3, 11}) {
        QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
        attr.nDraft = nDraft;
        View view(attr);
        ExpectStateKept(view, SHAPE_QEL, RGB(0, 255, 0), RGB(0, 0, 255));
    }
    View outline(OutlineAttr({10, 20, 60, 70}));
    ExpectStateKept(outline, SHAPE_QEL, BACK_BEFORE, TEXT_BEFORE);
}

TEST(EllipseShape, RegionIsElliptic)
{
    for (const int nPenWidth : {0, 1}) {
        QELSHAPEATTR attr = PressedAttr(FilledAttr({10, 20, 60, 70}));
        attr.nPenWidth = nPenWidth;
        View view(attr);
        // Near the filled figure; a null pen leaves out its last row and column.
        EXPECT_EQ(0, FarFromFilled(view->MakeRegion(SHAPE_QEL),
                                   [](HDC hdc) { ::Ellipse(hdc, 30, 60, 130, 160); }));
    }
    View plain(FilledAttr({10, 20, 60, 70}));
    ExpectSameRegion(::CreateEllipticRgn(30, 60, 130, 160), plain->MakeRegion(SHAPE_QEL));
    View flat(FilledAttr({0, 50, 100, 53}));
    ExpectSameRegion(::CreateEllipticRgn(10, 120, 210, 126), flat->MakeRegion(SHAPE_QEL));
    View empty(FilledAttr({10, 20, 10, 70}));
    EXPECT_EQ(nullptr, empty->MakeRegion(SHAPE_QEL));
}

TEST(EllipseShape, TurnsAndMovesAsARectangle)
{
    ExpectTurns<CQELViewEllipse>(OutlineAttr({10, 20, 60, 40}), WORDS, {50, 50}, BoxTurn(REF));
    ExpectTurns<CQELViewEllipse>(OutlineAttr({0, 0, 30, 10}), WORDS, {20, 20}, BoxTurn(REF));
    ExpectTurns<CQELViewEllipse>(OutlineAttr({-10, 20, 160, 70}), WORDS, {50, 50}, BoxTurn(REF));
    ExpectMoves<CQELViewEllipse>(OutlineAttr({10, 20, 60, 40}), WORDS, BoxMove(REF));
}

} // namespace
