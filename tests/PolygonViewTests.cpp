// The view of the polygon: one Polygon call on 2 to 16 stretched points. The code is
// render/QELViewPoints.*.
#include "render/QELViewPoints.h"

#include "render/UnitMap.h"
#include "tests/support/ViewSupport.h"

namespace {

using View = CTestView<CQELViewPolygon>;
constexpr SIZE REF{100, 100};

QELSHAPEATTR PointsAttr(const std::vector<POINT>& points)
{
    QELSHAPEATTR attr = FilledAttr({static_cast<int>(points.size())});
    int n = 1;
    for (const POINT& pt : points) {
        attr.nGeometry[n++] = pt.x;
        attr.nGeometry[n++] = pt.y;
    }
    return attr;
}

const std::vector<POINT> g_house = {{10, 40}, {50, 5}, {90, 40}, {80, 95}, {20, 95}};
// Its lines cross, and the middle is inside twice.
const std::vector<POINT> g_star = {{50, 5}, {78, 92}, {4, 38}, {96, 38}, {22, 92}};

std::vector<POINT> Stretched(std::vector<POINT> points)
{
    for (POINT& pt : points) pt = {AtX(pt.x), AtY(pt.y)};
    return points;
}

TEST(PolygonShape, IsOneCallWithItsPoints)
{
    View view(PointsAttr({{10, 20}, {60, 70}, {5, 95}}));
    EXPECT_EQ("Polygon 30,60 130,160 20,210", view.Call("Polygon", SHAPE_QEL));
    View two(PointsAttr({{10, 20}, {60, 70}}));
    EXPECT_EQ("Polygon 30,60 130,160", two.Call("Polygon", SHAPE_QEL));
}

TEST(PolygonShape, Has2To16Points)
{
    for (int nCount = -1; nCount <= 40; ++nCount) {
        QELSHAPEATTR attr = FilledAttr({nCount});
        for (int n = 1; n < QEL_SHAPE_WORDS; ++n) attr.nGeometry[n] = n;
        View view(attr);
        const std::string call = view.Call("Polygon", SHAPE_QEL);
        const auto nPoints = std::count(call.begin(), call.end(), ',');
        const bool bValid = nCount >= 2 && nCount <= 16;
        EXPECT_EQ(bValid ? 1 : 0, view.Result()) << nCount;
        EXPECT_EQ(bValid ? nCount : 0, nPoints);
        if (bValid) continue;
        EXPECT_EQ(Lines{}, view.Calls(SHAPE_QEL)); // no tool is selected, no colour set
        const std::string before = view.Geometry(QEL_SHAPE_WORDS);
        EXPECT_EQ(0, view->Rotate({50, 50}, 90));
        EXPECT_EQ(before, view.Geometry(QEL_SHAPE_WORDS));
        EXPECT_EQ(nullptr, view->MakeRegion(SHAPE_QEL));
        UnitMap map{};
        EXPECT_FALSE(view->MapUnits(SHAPE_QEL, &map));
        EXPECT_FALSE(view->IsHit(SHAPE_QEL, {AtX(1), AtY(2)}));
        const UnitTurn turn = view->TurnFrom(
            std::vector<int32_t>(attr.nGeometry, attr.nGeometry + QEL_SHAPE_WORDS).data());
        EXPECT_EQ("0,0,0,0", RectText(turn.rcBefore));
        EXPECT_EQ("0,0,0,0", RectText(turn.rcSince));
    }
}

TEST(PolygonShape, IsStretchedWithoutKeepModesAndWithoutAClip)
{
    for (const uint32_t nKeep : {0x0U, 0x1000U, 0x508000U}) {
        QELSHAPEATTR attr = PointsAttr({{-10, 20}, {130, 170}, {0, 0}});
        attr.nFlags = nKeep;
        View view(attr);
        EXPECT_EQ("Polygon -10,60 270,360 10,20", view.Call("Polygon", SHAPE_QEL));
    }
    View noWidth(PointsAttr({{10, 20}, {60, 70}, {5, 95}}), 0, 100);
    EXPECT_EQ("Polygon 0,60 0,160 0,210", noWidth.Call("Polygon", SHAPE_QEL));
}

TEST(PolygonShape, PixelsAreThoseOfTheRawCallInEveryStyle)
{
    // A gradient runs from the device origin to the farthest points.
    const POINT points[] = {{14, 11}, {74, 35}, {44, 55}, {8, 47}};
    ExpectStyles<CQELViewPolygon>({4, 5, 4, 35, 16, 20, 26, 2, 22}, {4, 3, 84, 63}, {40, 30},
                                  {0, 0, 74, 55}, [&](HDC hdc) { ::Polygon(hdc, points, 4); });
}

TEST(PolygonShape, AGradientBeginsAtTheDeviceOriginAndReachesNegativePoints)
{
    const struct {
        std::vector<POINT> points;
        RECT rcBrush; // the box around the mapped points and the origin
    } rows[] = {{{{60, 60}, {90, 70}, {70, 90}}, {0, 0, AtX(90), AtY(90)}},
                {{{-40, 10}, {60, 20}, {20, 80}}, {AtX(-40), 0, AtX(60), AtY(80)}},
                {{{10, -30}, {60, 20}, {20, 80}}, {0, AtY(-30), AtX(60), AtY(80)}}};
    for (const auto& row : rows) {
        for (const int nDraft : {10, 13, 18, 22, 34}) {
            SCOPED_TRACE(nDraft);
            QELSHAPEATTR attr = PointsAttr(row.points);
            attr.nDraft = nDraft;
            View view(attr);
            ExpectPixels(view, SHAPE_QEL, [&](HDC hdc) {
                PaintRaw(hdc, attr, row.rcBrush, [&](HDC hdcRaw) {
                    const std::vector<POINT> points = Stretched(row.points);
                    ::Polygon(hdcRaw, points.data(), static_cast<int>(points.size()));
                });
            });
        }
    }
}

TEST(PolygonShape, APressedPointMovesOnlyWhereItStaysInsideTheQelRect)
{
    View view(PressedAttr(PointsAttr({{10, 20}, {100, 70}, {60, 100}, {99, 99}})));
    EXPECT_EQ("Polygon 32,62 210,162 132,220 210,220",
              view.Call("Polygon", SHAPE_QEL, QEL_DRAW_FULL | QEL_DRAW_PRESSED));
    EXPECT_EQ("Polygon 30,60 210,160 130,220 208,218", view.Call("Polygon", SHAPE_QEL));
}

TEST(PolygonShape, A3DStyleFillsItAndDrawsNoBorder)
{
    QELSHAPEATTR attr = PointsAttr(g_house);
    const Lines flat = View(attr).Calls(SHAPE_QEL);
    attr.nStyle = 3 | 6 << 16;
    EXPECT_EQ(flat, View(attr).Calls(SHAPE_QEL));
}

TEST(PolygonShape, LeavesTheDeviceContextAsItWasButForTheFillColors)
{
    View filled(PointsAttr(g_star));
    ExpectStateKept(filled, SHAPE_QEL, RGB(0, 255, 0), RGB(0, 0, 255));
    QELSHAPEATTR attr = PointsAttr(g_star);
    attr.nStyle = 0;
    View outline(attr);
    ExpectStateKept(outline, SHAPE_QEL, BACK_BEFORE, TEXT_BEFORE);
    attr.nGeometry[0] = 17; // one that fails changes nothing at all
    attr.nStyle = 1;
    View failing(attr);
    ExpectStateKept(failing, SHAPE_QEL, BACK_BEFORE, TEXT_BEFORE);
}

TEST(PolygonShape, RegionIsTheFilledFigure)
{
    const std::vector<POINT> triangle = {{10, 10}, {90, 30}, {40, 90}};
    for (const std::vector<POINT>& points : {triangle, g_house, g_star}) {
        View view(PressedAttr(PointsAttr(points)));
        const std::vector<POINT> stretched = Stretched(points);
        const auto nCount = static_cast<int>(points.size());
        // The fill mode of a new device context is the alternate one.
        ExpectSameRegion(::CreatePolygonRgn(stretched.data(), nCount, ALTERNATE),
                         view->MakeRegion(SHAPE_QEL));
        EXPECT_EQ(0, FarFromFilled(view->MakeRegion(SHAPE_QEL),
                                   [&](HDC hdc) { ::Polygon(hdc, stretched.data(), nCount); }));
    }
}

TEST(PolygonShape, TurnsAndMovesAsAWholeInsideTheDrawing)
{
    const TurnRule turn = [](const Words& w, POINT c, int nQuarters) {
        return KeptPoints(TurnedPoints(w, 1, c, nQuarters), 1, REF);
    };
    const MoveRule move = [](const Words& w, int dx, int dy) {
        return KeptPoints(MovedPoints(w, 1, dx, dy), 1, REF);
    };
    for (const std::vector<POINT>& points : {g_house, g_star}) {
        ExpectTurns<CQELViewPolygon>(PointsAttr(points), 11, {50, 50}, turn);
        ExpectTurns<CQELViewPolygon>(PointsAttr(points), 11, {20, 20}, turn);
        ExpectMoves<CQELViewPolygon>(PointsAttr(points), 11, move);
    }
    const QELSHAPEATTR large = PointsAttr({{-30, 20}, {140, 70}, {5, 195}});
    ExpectTurns<CQELViewPolygon>(large, 7, {50, 50}, turn);
    ExpectMoves<CQELViewPolygon>(large, 7, move);
}

} // namespace
