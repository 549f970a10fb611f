// The view of the line: MoveToEx and LineTo between two stretched points. The code is
// render/QELViewPoints.*.
#include "render/QELViewPoints.h"

#include "tests/support/ViewSupport.h"

namespace {

using View = CTestView<CQELViewLine>;
constexpr int WORDS = 4;

Lines PathOf(View& view, const RECT& rcQel, uint32_t nFlags = QEL_DRAW_FULL)
{
    Lines path;
    for (const std::string& line : view.Calls(rcQel, nFlags))
        if (line.rfind("MoveTo", 0) == 0 || line.rfind("LineTo", 0) == 0) path.push_back(line);
    return path;
}

Lines Path(int x1, int y1, int x2, int y2)
{
    const auto at = [](int x, int y) { return std::to_string(x) + "," + std::to_string(y); };
    return {"MoveTo " + at(x1, y1), "LineTo " + at(x2, y2), "MoveTo 0,0"}; // and back
}

TEST(LineShape, GoesFromTheFirstPointToTheSecondAndBackToWhereThePositionWas)
{
    View view(OutlineAttr({10, 20, 60, 70}));
    EXPECT_EQ(Path(30, 60, 130, 160), PathOf(view, SHAPE_QEL));
    View back(OutlineAttr({60, 70, 10, 20}));
    EXPECT_EQ(Path(130, 160, 30, 60), PathOf(back, SHAPE_QEL));
}

TEST(LineShape, IsStretchedWithoutKeepModesAndWithoutAClip)
{
    for (const uint32_t nKeep : {0x0U, 0x1000U, 0x508000U, 0x840000U, 0x30000U}) {
        QELSHAPEATTR attr = OutlineAttr({-10, 20, 130, 170});
        attr.nFlags = nKeep;
        View view(attr);
        EXPECT_EQ(Path(-10, 60, 270, 360), PathOf(view, SHAPE_QEL));
    }
    // Also what is flat, upright or a point is no empty rectangle here.
    View flat(OutlineAttr({10, 20, 60, 20}));
    EXPECT_EQ(Path(30, 60, 130, 60), PathOf(flat, SHAPE_QEL));
}

TEST(LineShape, DivisionsTruncateTowardZero)
{
    View view(OutlineAttr({1, -1, 2, 5}), 3, 7);
    // 1*10/3 = 3, -1*20/7 = -2, 2*10/3 = 6, 5*20/7 = 14; the origin comes after.
    EXPECT_EQ(Path(103, 198, 106, 214), PathOf(view, {100, 200, 110, 220}));
}

TEST(LineShape, AReferenceSizeOf0GivesCoordinate0)
{
    View narrow(OutlineAttr({10, 20, 60, 70}), 0, 100);
    EXPECT_EQ(Path(0, 60, 0, 160), PathOf(narrow, SHAPE_QEL)); // not the QEL rect's edge
    EXPECT_EQ(1, narrow.Result());
    View flat(OutlineAttr({10, 20, 60, 70}), 100, 0);
    EXPECT_EQ(Path(30, 0, 130, 0), PathOf(flat, SHAPE_QEL));
    // Only exactly 0: a negative size divides as it stands.
    View negative(OutlineAttr({10, 20, 60, 70}), -100, 100);
    EXPECT_EQ(Path(-20 + 10, 60, -120 + 10, 160), PathOf(negative, SHAPE_QEL));
}

TEST(LineShape, PixelsAreThoseOfTheRawCallsInEveryPenStyle)
{
    ExpectLineStyles<CQELViewLine>({5, 4, 35, 26}, {4, 3, 84, 63}, {40, 30}, [](HDC hdc) {
        ::MoveToEx(hdc, 14, 11, nullptr);
        ::LineTo(hdc, 74, 55);
    });
    QELSHAPEATTR attr = OutlineAttr({5, 4, 35, 26});
    attr.nPenWidth = 5;
    View wide(attr, 40, 30);
    ExpectPixels(wide, {4, 3, 84, 63}, [&](HDC hdc) {
        CTestSelect pen(hdc, ::CreatePen(PS_SOLID, 5, attr.clrPen), true);
        ::MoveToEx(hdc, 14, 11, nullptr);
        ::LineTo(hdc, 74, 55);
    });
}

TEST(LineShape, AFillStylePaintsTheGapsInColorB)
{
    QELSHAPEATTR attr = FilledAttr({0, 10, 40, 10});
    attr.nPenStyle = PS_DASH;
    for (const DWORD nStyle : {0UL, 1UL, 3UL, 5UL}) {
        attr.nStyle = nStyle;
        View view(attr, 40, 30);
        CTestBitmap drawn(90, 70);
        EXPECT_EQ(1, view->Draw(drawn.Dc(), {0, 0, 80, 60}, QEL_DRAW_FULL));
        const int nPen = CountPixels(drawn, RGB(255, 0, 0));
        const int nGaps = CountPixels(drawn, RGB(0, 0, 255));
        EXPECT_GT(nPen, 0);
        EXPECT_EQ(nStyle ? 80 - nPen : 0, nGaps);
    }
}

TEST(LineShape, APressedPointMovesOnlyWhereItStaysInsideTheQelRect)
{
    const uint32_t nPressed = QEL_DRAW_FULL | QEL_DRAW_PRESSED;
    View inside(PressedAttr(OutlineAttr({10, 20, 60, 70})));
    EXPECT_EQ(Path(32, 62, 132, 162), PathOf(inside, SHAPE_QEL, nPressed));
    EXPECT_EQ(Path(30, 60, 130, 160), PathOf(inside, SHAPE_QEL));
    // At the right and bottom edge already: each coordinate by itself.
    View atEdge(PressedAttr(OutlineAttr({100, 20, 60, 100})));
    EXPECT_EQ(Path(210, 62, 132, 220), PathOf(atEdge, SHAPE_QEL, nPressed));
    // To the edge itself it still goes; past it nothing moves.
    View nearEdge(PressedAttr(OutlineAttr({99, 99, 120, 130})));
    EXPECT_EQ(Path(210, 220, 250, 280), PathOf(nearEdge, SHAPE_QEL, nPressed));
    View unflagged(OutlineAttr({10, 20, 60, 70}));
    EXPECT_EQ(Path(30, 60, 130, 160), PathOf(unflagged, SHAPE_QEL, nPressed));
}

TEST(LineShape, LeavesTheDeviceContextAsItWasButForTheBackgroundOf3DStyles)
{
    for (const DWORD nStyle : {0UL, 1UL, 3UL, 5UL}) {
        QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
        attr.nStyle = nStyle;
        View view(attr);
        ExpectStateKept(view, SHAPE_QEL, nStyle > 1 ? RGB(0, 0, 255) : BACK_BEFORE, TEXT_BEFORE);
    }
}

TEST(LineShape, TurnsAndMovesFreely)
{
    const TurnRule turn = [](const Words& w, POINT c, int nQuarters) {
        return TurnedPoints(w, 0, c, nQuarters);
    };
    const MoveRule move = [](const Words& w, int dx, int dy) { return MovedPoints(w, 0, dx, dy); };
    ExpectTurns<CQELViewLine>(OutlineAttr({10, 20, 60, 70}), WORDS, {50, 50}, turn);
    ExpectTurns<CQELViewLine>(OutlineAttr({60, 20, 10, 90}), WORDS, {50, 50}, turn);
    ExpectTurns<CQELViewLine>(OutlineAttr({-10, 20, 160, 70}), WORDS, {15, 15}, turn); // and out
    ExpectMoves<CQELViewLine>(OutlineAttr({10, 20, 60, 70}), WORDS, move);
}

} // namespace
