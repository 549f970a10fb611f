// The view of the circle: one Ellipse call on a square in the middle of the mapped box. The code is
// render/QELViewCircle.*.
#include "render/QELViewCircle.h"

#include "tests/support/ViewSupport.h"

namespace {

using View = CTestView<CQELViewCircle>;
constexpr int WORDS = 3; // centre x, centre y, radius

// The square in a mapped box: its side the smaller of width and height, by half on each side of the
// box's middle.
RECT Square(const RECT& box)
{
    const int nSide = std::min(box.right - box.left, box.bottom - box.top);
    const int nRadius = nSide / 2;
    const int x = (box.left + box.right) / 2;
    const int y = (box.top + box.bottom) / 2;
    return {x - nRadius, y - nRadius, x + nRadius, y + nRadius};
}

std::string EllipseIn(const RECT& box)
{
    return "Ellipse " + RectText(Square(box));
}

Words Turn(const Words& w, POINT c, int nQuarters)
{
    const RECT box = TurnedRect({w[0] - w[2], w[1] - w[2], w[0] + w[2], w[1] + w[2]}, c, nQuarters);
    return {(box.left + box.right) / 2, (box.top + box.bottom) / 2,
            std::min(box.right - box.left, box.bottom - box.top) / 2};
}

TEST(CircleShape, IsOneCallOnItsBox)
{
    // 40,50 with 30: 10,20..70,80.
    for (const QELSHAPEATTR& attr : {OutlineAttr({40, 50, 30}), FilledAttr({40, 50, 30})})
        EXPECT_EQ("Ellipse 30,60,150,180", View(attr).Call("Ellipse", SHAPE_QEL));
}

TEST(CircleShape, StaysRoundInTheMiddleOfAWideOrHighBox)
{
    View view(OutlineAttr({40, 50, 30}));
    // 400 by 100: the box is 40,20..280,80, so the diameter is 60, about 160,50.
    EXPECT_EQ("Ellipse 130,20,190,80", view.Call("Ellipse", {0, 0, 400, 100}));
    EXPECT_EQ(EllipseIn({40, 20, 280, 80}), view.Call("Ellipse", {0, 0, 400, 100}));
    EXPECT_EQ("Ellipse 10,210,70,270", view.Call("Ellipse", {0, 0, 100, 480}));
    CTestBitmap drawn(400, 100);
    View filled(FilledAttr({40, 50, 30}));
    EXPECT_EQ(1, filled->Draw(drawn.Dc(), {0, 0, 400, 100}, QEL_DRAW_FULL));
    EXPECT_EQ(RGB(255, 255, 255), drawn.At(128, 50));
    EXPECT_EQ(RGB(255, 0, 0), drawn.At(130, 50));
    EXPECT_EQ(RGB(0, 255, 0), drawn.At(160, 50));
    EXPECT_EQ(RGB(255, 0, 0), drawn.At(189, 50));
}

TEST(CircleShape, OddSidesLoseAPixel)
{
    View view(OutlineAttr({40, 50, 30}));
    for (const RECT& q :
         {RECT{0, 0, 151, 151}, RECT{3, 5, 134, 86}, RECT{0, 0, 77, 333}, RECT{-7, -9, 100, 100}}) {
        const int W = q.right - q.left, H = q.bottom - q.top;
        const RECT box{10 * W / 100 + q.left, 20 * H / 100 + q.top, 70 * W / 100 + q.left,
                       80 * H / 100 + q.top};
        EXPECT_EQ(EllipseIn(box), view.Call("Ellipse", q)) << RectText(q);
    }
}

TEST(CircleShape, FollowsItsKeepModeAndTheClip)
{
    QELSHAPEATTR attr = OutlineAttr({40, 50, 30});
    attr.nFlags = QEL_KEEP_ALL;
    // The box 10,20..70,80 keeps 30 and 20 from the far borders: 20,40..180,200.
    EXPECT_EQ(EllipseIn({20, 40, 180, 200}), View(attr).Call("Ellipse", SHAPE_QEL));
    // Over the left edge: the box is cut to 10,60..110,180 before the square is taken.
    EXPECT_EQ("Ellipse 10,70,110,170", View(OutlineAttr({20, 50, 30})).Call("Ellipse", SHAPE_QEL));
}

TEST(CircleShape, PressedMovesTheBoxBeforeTheSquareIsTaken)
{
    const uint32_t nPressed = QEL_DRAW_FULL | QEL_DRAW_PRESSED;
    View inside(PressedAttr(OutlineAttr({40, 50, 30})));
    EXPECT_EQ("Ellipse 32,62,152,182", inside.Call("Ellipse", SHAPE_QEL, nPressed));
    EXPECT_EQ("Ellipse 30,60,150,180", inside.Call("Ellipse", SHAPE_QEL));
    // At the right edge the box 90,60..210,180 becomes 92,62..210,182: 118 wide, the middle at
    // 151,122.
    View atEdge(PressedAttr(OutlineAttr({70, 50, 30})));
    EXPECT_EQ("Ellipse 92,63,210,181", atEdge.Call("Ellipse", SHAPE_QEL, nPressed));
}

TEST(CircleShape, PixelsAreThoseOfTheRawCallInEveryStyle)
{
    // 18,14 with 11: 7,3..29,25, on the device 18,9..62,53. A gradient runs over the square.
    ExpectStyles<CQELViewCircle>({18, 14, 11}, {4, 3, 84, 63}, {40, 30}, {18, 9, 62, 53},
                                 [](HDC hdc) { ::Ellipse(hdc, 18, 9, 62, 53); });
}

TEST(CircleShape, AGradientRunsOverTheSquareAndNotTheBox)
{
    QELSHAPEATTR attr = FilledAttr({20, 15, 12});
    for (const int nDraft : {10, 12, 18, 25, 36}) {
        attr.nDraft = nDraft;
        View view(attr, 40, 30);
        // 160 by 60: the box 32,6..128,54, so 48 about 80,30.
        ExpectPixels(view, {0, 0, 160, 60}, [&](HDC hdc) {
            PaintRaw(hdc, attr, {56, 6, 104, 54},
                     [](HDC hdcRaw) { ::Ellipse(hdcRaw, 56, 6, 104, 54); });
        });
    }
}

TEST(CircleShape, WithoutARadiusNothingIsSeen)
{
    for (const int nRadius : {0, -5}) {
        View view(FilledAttr({40, 50, nRadius}));
        CTestBitmap drawn(220, 230);
        EXPECT_EQ(1, view->Draw(drawn.Dc(), SHAPE_QEL, QEL_DRAW_FULL));
        EXPECT_TRUE(IsBlank(drawn));
        EXPECT_EQ(nullptr, view->MakeRegion(SHAPE_QEL));
    }
}

TEST(CircleShape, LeavesTheDeviceContextAsItWasButForTheFillColors)
{
    View filled(FilledAttr({40, 50, 30}));
    ExpectStateKept(filled, SHAPE_QEL, RGB(0, 255, 0), RGB(0, 0, 255));
    View outline(OutlineAttr({40, 50, 30}));
    ExpectStateKept(outline, SHAPE_QEL, BACK_BEFORE, TEXT_BEFORE);
}

TEST(CircleShape, RegionIsThatOfTheSquare)
{
    View view(PressedAttr(FilledAttr({40, 50, 30})));
    ExpectSameRegion(::CreateEllipticRgn(30, 60, 150, 180), view->MakeRegion(SHAPE_QEL));
    ExpectSameRegion(::CreateEllipticRgn(130, 20, 190, 80), view->MakeRegion({0, 0, 400, 100}));
    EXPECT_EQ(0, FarFromFilled(view->MakeRegion(SHAPE_QEL),
                               [](HDC hdc) { ::Ellipse(hdc, 30, 60, 150, 180); }));
}

TEST(CircleShape, TurnsWithItsBoxAndIsNotKeptInside)
{
    ExpectTurns<CQELViewCircle>(OutlineAttr({40, 50, 30}), WORDS, {50, 50}, Turn);
    ExpectTurns<CQELViewCircle>(OutlineAttr({10, 15, 30}), WORDS, {50, 50}, Turn);
    ExpectTurns<CQELViewCircle>(OutlineAttr({90, 80, 7}), WORDS, {20, 20}, Turn);
    // Out of the drawing, and it stays there.
    View view(OutlineAttr({90, 80, 7}));
    ASSERT_EQ(1, view->Rotate({20, 20}, 90)); // x' = y, y' = 40 - x
    EXPECT_EQ("80 -50 7", view.Geometry(WORDS));
}

TEST(CircleShape, MovesFreely)
{
    ExpectMoves<CQELViewCircle>(OutlineAttr({40, 50, 30}), WORDS, [](Words w, int dx, int dy) {
        return Words{w[0] + dx, w[1] + dy, w[2]};
    });
}

} // namespace
