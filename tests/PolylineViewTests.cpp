// The view of the polyline: MoveToEx and LineTo through 2 to 16 stretched points. The code is
// render/QELViewPoints.*.
#include "render/QELViewPoints.h"

#include "tests/support/ViewSupport.h"

namespace {

using View = CTestView<CQELViewPolyline>;
constexpr SIZE REF{100, 100};

Lines PathOf(View& view, const RECT& rcQel, uint32_t nFlags = QEL_DRAW_FULL)
{
    Lines path;
    for (const std::string& line : view.Calls(rcQel, nFlags))
        if (line.rfind("MoveTo", 0) == 0 || line.rfind("LineTo", 0) == 0) path.push_back(line);
    return path;
}

QELSHAPEATTR PointsAttr(const std::vector<POINT>& points)
{
    QELSHAPEATTR attr = OutlineAttr({static_cast<int>(points.size())});
    int n = 1;
    for (const POINT& pt : points) {
        attr.nGeometry[n++] = pt.x;
        attr.nGeometry[n++] = pt.y;
    }
    return attr;
}

TEST(PolylineShape, GoesThroughItsPointsInOrderAndBackToWhereThePositionWas)
{
    View view(PointsAttr({{10, 20}, {60, 70}, {5, 95}, {60, 20}}));
    EXPECT_EQ(
        (Lines{"MoveTo 30,60", "LineTo 130,160", "LineTo 20,210", "LineTo 130,60", "MoveTo 0,0"}),
        PathOf(view, SHAPE_QEL));
    EXPECT_EQ(1, view.Result());
}

TEST(PolylineShape, Has2To16Points)
{
    for (int nCount = -1; nCount <= 40; ++nCount) {
        QELSHAPEATTR attr = OutlineAttr({nCount});
        for (int n = 1; n < QEL_SHAPE_WORDS; ++n) attr.nGeometry[n] = 2 * n;
        View view(attr);
        const Lines path = PathOf(view, SHAPE_QEL);
        if (nCount >= 2 && nCount <= 16) {
            EXPECT_EQ(1, view.Result()) << nCount;
            EXPECT_EQ(static_cast<std::size_t>(nCount) + 1, path.size()); // and the way back
            EXPECT_EQ("LineTo " + std::to_string(AtX(4 * nCount - 2)) + "," +
                          std::to_string(AtY(4 * nCount)),
                      path[static_cast<std::size_t>(nCount) - 1]);
        } else {
            EXPECT_EQ(0, view.Result()) << nCount;
            EXPECT_EQ(Lines{}, view.Calls(SHAPE_QEL));
            const std::string before = view.Geometry(QEL_SHAPE_WORDS);
            EXPECT_EQ(0, view->Rotate({50, 50}, 90)) << nCount;
            EXPECT_EQ(before, view.Geometry(QEL_SHAPE_WORDS));
        }
    }
}

TEST(PolylineShape, ARefusedTurnIsNotCounted)
{
    View view(PointsAttr({{10, 20}}));
    EXPECT_EQ(0, view->Rotate({50, 50}, 90));
    const QELSHAPEATTR good = PointsAttr({{10, 20}, {60, 70}});
    ASSERT_EQ(1, view->SetAttrBlock(&good));
    EXPECT_EQ(1, view->Rotate({50, 50}, 90)); // x' = y, y' = 100 - x: a whole quarter
    EXPECT_EQ("2 20 90 70 40", view.Geometry(5));
}

TEST(PolylineShape, IsStretchedWithoutKeepModesAndWithoutAClip)
{
    for (const uint32_t nKeep : {0x0U, 0x1000U, 0x508000U}) {
        QELSHAPEATTR attr = PointsAttr({{-10, 20}, {130, 170}});
        attr.nFlags = nKeep;
        View view(attr);
        EXPECT_EQ((Lines{"MoveTo -10,60", "LineTo 270,360", "MoveTo 0,0"}),
                  PathOf(view, SHAPE_QEL));
    }
    View noWidth(PointsAttr({{10, 20}, {60, 70}}), 0, 100);
    EXPECT_EQ((Lines{"MoveTo 0,60", "LineTo 0,160", "MoveTo 0,0"}), PathOf(noWidth, SHAPE_QEL));
}

TEST(PolylineShape, PixelsAreThoseOfTheRawCallsInEveryPenStyle)
{
    ExpectLineStyles<CQELViewPolyline>({4, 5, 4, 35, 26, 20, 2, 3, 28}, {4, 3, 84, 63}, {40, 30},
                                       [](HDC hdc) {
                                           ::MoveToEx(hdc, 14, 11, nullptr);
                                           ::LineTo(hdc, 74, 55);
                                           ::LineTo(hdc, 44, 7);
                                           ::LineTo(hdc, 10, 59);
                                       });
}

TEST(PolylineShape, APressedPointMovesOnlyWhereItStaysInsideTheQelRect)
{
    View view(PressedAttr(PointsAttr({{10, 20}, {100, 70}, {60, 100}, {99, 99}, {120, 130}})));
    EXPECT_EQ((Lines{"MoveTo 32,62", "LineTo 210,162", "LineTo 132,220", "LineTo 210,220",
                     "LineTo 250,280", "MoveTo 0,0"}),
              PathOf(view, SHAPE_QEL, QEL_DRAW_FULL | QEL_DRAW_PRESSED));
    EXPECT_EQ("MoveTo 30,60", PathOf(view, SHAPE_QEL).front());
}

TEST(PolylineShape, LeavesTheDeviceContextAsItWasButForTheBackgroundOf3DStyles)
{
    for (const DWORD nStyle : {0UL, 1UL, 3UL, 5UL}) {
        QELSHAPEATTR attr = FilledAttr({3, 10, 20, 60, 70, 5, 95});
        attr.nStyle = nStyle;
        View view(attr);
        ExpectStateKept(view, SHAPE_QEL, nStyle > 1 ? RGB(0, 0, 255) : BACK_BEFORE, TEXT_BEFORE);
    }
}

TEST(PolylineShape, TurnsAndMovesAsAWholeInsideTheDrawing)
{
    const auto turnIn = [](SIZE ref) -> TurnRule {
        return [ref](const Words& w, POINT c, int nQuarters) {
            return KeptPoints(TurnedPoints(w, 1, c, nQuarters), 1, ref);
        };
    };
    const auto moveIn = [](SIZE ref) -> MoveRule {
        return [ref](const Words& w, int dx, int dy) {
            return KeptPoints(MovedPoints(w, 1, dx, dy), 1, ref);
        };
    };
    const QELSHAPEATTR attr = PointsAttr({{10, 20}, {60, 70}, {5, 95}, {60, 20}});
    ExpectTurns<CQELViewPolyline>(attr, 9, {50, 50}, turnIn(REF));
    ExpectTurns<CQELViewPolyline>(attr, 9, {15, 15}, turnIn(REF));
    ExpectTurns<CQELViewPolyline>(attr, 9, {80, 80}, turnIn({160, 120}), {160, 120});
    ExpectMoves<CQELViewPolyline>(attr, 9, moveIn(REF));
    // Larger than the drawing: it keeps its size, the left and top edge at 0.
    const QELSHAPEATTR large = PointsAttr({{-30, 20}, {140, 70}, {5, 195}});
    ExpectTurns<CQELViewPolyline>(large, 7, {50, 50}, turnIn(REF));
    ExpectMoves<CQELViewPolyline>(large, 7, moveIn(REF));
    View view(large);
    ASSERT_EQ(1, view->MoveX(0));
    ASSERT_EQ(1, view->MoveY(0));
    EXPECT_EQ("3 0 0 170 50 35 175", view.Geometry(7));
}

TEST(PolylineShape, AllOf16PointsAreTurnedAndNothingBehindTheCount)
{
    QELSHAPEATTR attr = OutlineAttr({16});
    for (int n = 1; n < QEL_SHAPE_WORDS; ++n) attr.nGeometry[n] = 3 * n;
    View all(attr);
    ASSERT_EQ(1, all->Rotate({50, 50}, 90));
    Words expected = TurnedPoints(WordsOf(attr, QEL_SHAPE_WORDS), 1, {50, 50}, 1);
    EXPECT_EQ(WordsText(KeptPoints(expected, 1, REF)), all.Geometry(QEL_SHAPE_WORDS));
    attr.nGeometry[0] = 2;
    View two(attr);
    ASSERT_EQ(1, two->Rotate({50, 50}, 90));
    expected = TurnedPoints(WordsOf(attr, 5), 1, {50, 50}, 1);
    const Words rest = WordsOf(attr, QEL_SHAPE_WORDS);
    expected.insert(expected.end(), rest.begin() + 5, rest.end());
    EXPECT_EQ(WordsText(expected), two.Geometry(QEL_SHAPE_WORDS));
}

} // namespace
