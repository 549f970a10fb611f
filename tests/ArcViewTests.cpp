// The view of the arc: one Arc call, counter-clockwise, on a stretched box and two points. The code
// is render/QELViewRadial.*.
#include "render/QELViewRadial.h"

#include "tests/support/ViewSupport.h"

namespace {

using View = CTestView<CQELViewArc>;
constexpr SIZE REF{100, 100};
const Words g_arc = {10, 20, 60, 70, 60, 20, 10, 60};

QELSHAPEATTR ArcAttr(const Words& words)
{
    QELSHAPEATTR attr = OutlineAttr({});
    std::copy(words.begin(), words.end(), attr.nGeometry);
    return attr;
}

TEST(ArcShape, IsOneCallWithItsBoxAndPointsStretched)
{
    EXPECT_EQ("Arc 30,60,130,160 start 130,60 end 30,140",
              View(ArcAttr(g_arc)).Call("Arc", SHAPE_QEL));
    // No keep modes and no clip.
    const Words outside = {-20, -30, 130, 150, 7, -90, 200, 33};
    for (const uint32_t nKeep : {0x0U, 0x1000U, 0x508000U}) {
        QELSHAPEATTR attr = ArcAttr(outside);
        attr.nFlags = nKeep;
        for (const RECT& q : {SHAPE_QEL, RECT{-7, 3, 94, 304}, RECT{0, 0, 1000, 50}})
            EXPECT_EQ(RadialCall("Arc", outside, q, REF), View(attr).Call("Arc", q));
    }
}

TEST(ArcShape, IsDrawnCounterClockwiseWhateverTheDirectionWas)
{
    for (const int nDirection : {AD_COUNTERCLOCKWISE, AD_CLOCKWISE}) {
        View view(ArcAttr(g_arc));
        CRecording recording;
        ::SetArcDirection(recording.Dc(), nDirection);
        EXPECT_EQ(1, view->Draw(recording.Dc(), SHAPE_QEL, QEL_DRAW_FULL));
        const std::string before = "SetArcDirection " + std::to_string(nDirection);
        EXPECT_EQ(
            (Lines{before, "SetArcDirection 1", RadialCall("Arc", g_arc, SHAPE_QEL, REF), before}),
            recording.Only({"Arc", "SetArcDirection"}));
        CTestBitmap expected(220, 230), drawn(220, 230);
        ::SetArcDirection(drawn.Dc(), nDirection);
        view->Draw(drawn.Dc(), SHAPE_QEL, QEL_DRAW_FULL);
        EXPECT_EQ(nDirection, ::GetArcDirection(drawn.Dc()));
        {
            CTestSelect pen(expected.Dc(), ::CreatePen(PS_SOLID, 1, RGB(255, 0, 0)), true);
            ::SetArcDirection(expected.Dc(), AD_COUNTERCLOCKWISE);
            ::Arc(expected.Dc(), 30, 60, 130, 160, 130, 60, 30, 140);
        }
        EXPECT_FALSE(IsBlank(drawn));
        EXPECT_EQ("", FirstDifference(expected, drawn));
        // From the upper right over the top to the left: the top is drawn, the bottom is not.
        EXPECT_EQ(RGB(255, 0, 0), drawn.At(80, 60));
        EXPECT_EQ(RGB(255, 255, 255), drawn.At(80, 159));
    }
}

TEST(ArcShape, SelectsNoBrush)
{
    for (const DWORD nStyle : {0UL, 1UL, 3UL}) {
        QELSHAPEATTR attr = ArcAttr(g_arc);
        attr.nStyle = nStyle;
        for (const std::string& line : View(attr).Calls(SHAPE_QEL))
            EXPECT_EQ(std::string::npos, line.find("BRUSH")) << line;
        EXPECT_EQ(nStyle ? "SetBkMode 2" : "SetBkMode 1", View(attr).Call("SetBkMode", SHAPE_QEL));
        EXPECT_EQ(nStyle ? "SetBkColor 000000" : "none", View(attr).Call("SetBkColor", SHAPE_QEL));
    }
}

TEST(ArcShape, PixelsAreThoseOfTheRawCallInEveryPenStyle)
{
    ExpectLineStyles<CQELViewArc>({5, 4, 35, 26, 35, 15, 20, 30}, {4, 3, 84, 63}, {40, 30},
                                  [](HDC hdc) { ::Arc(hdc, 14, 11, 74, 55, 74, 33, 44, 63); });
}

TEST(ArcShape, PressedMovesItsBoxAsARectangleAndItsPointsAlways)
{
    const uint32_t nPressed = QEL_DRAW_FULL | QEL_DRAW_PRESSED;
    View inside(PressedAttr(ArcAttr(g_arc)));
    EXPECT_EQ("Arc 32,62,132,162 start 132,62 end 32,142", inside.Call("Arc", SHAPE_QEL, nPressed));
    EXPECT_EQ("Arc 30,60,130,160 start 130,60 end 30,140", inside.Call("Arc", SHAPE_QEL));
    View atEdge(PressedAttr(ArcAttr({10, 20, 100, 100, 100, 60, 10, 100})));
    EXPECT_EQ("Arc 32,62,210,220 start 212,142 end 32,222",
              atEdge.Call("Arc", SHAPE_QEL, nPressed));
}

TEST(ArcShape, AReferenceSizeBelow1PutsTheBoxAt0)
{
    for (const int nRef : {0, -5}) {
        View view(PressedAttr(ArcAttr(g_arc)), nRef, 100);
        CTestBitmap drawn(220, 230);
        EXPECT_EQ(1, view->Draw(drawn.Dc(), SHAPE_QEL, QEL_DRAW_FULL));
        EXPECT_TRUE(IsBlank(drawn)); // no width
        // A box without a width leaves no record. Pressed left of the device origin the left edge
        // moves to 2 while the right one stays, and shows where they were.
        EXPECT_EQ(
            "Arc 0,62,2,162",
            view.Call("Arc", {-210, 20, -10, 220}, QEL_DRAW_FULL | QEL_DRAW_PRESSED).substr(0, 14));
    }
}

TEST(ArcShape, LeavesTheDeviceContextAsItWasButForTheBackgroundOf3DStyles)
{
    for (const DWORD nStyle : {0UL, 1UL, 3UL, 5UL}) {
        QELSHAPEATTR attr = ArcAttr(g_arc);
        attr.nStyle = nStyle;
        attr.clrB = RGB(0, 0, 255);
        View view(attr);
        ExpectStateKept(view, SHAPE_QEL, nStyle > 1 ? RGB(0, 0, 255) : BACK_BEFORE, TEXT_BEFORE);
    }
}

TEST(ArcShape, TurnsAndMovesFreely)
{
    ExpectTurns<CQELViewArc>(ArcAttr(g_arc), RADIAL_WORDS, {50, 50}, RadialTurned);
    ExpectTurns<CQELViewArc>(ArcAttr(g_arc), RADIAL_WORDS, {15, 15}, RadialTurned); // and out
    ExpectMoves<CQELViewArc>(ArcAttr(g_arc), RADIAL_WORDS, [](const Words& w, int dx, int dy) {
        return MovedPoints(w, 0, dx, dy);
    });
}

} // namespace
