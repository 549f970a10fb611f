// The views of the chord and the pie: one Chord or Pie call, counter-clockwise, on a stretched box
// and two points; the region is the filled figure. The code is render/QELViewRadial.*.
#include "render/QELViewRadial.h"

#include "tests/support/ViewSupport.h"

namespace {

constexpr SIZE REF{100, 100};
const Words g_figure = {10, 20, 60, 70, 60, 20, 10, 60};

QELSHAPEATTR FigureAttr(const Words& words)
{
    QELSHAPEATTR attr = FilledAttr({});
    std::copy(words.begin(), words.end(), attr.nGeometry);
    return attr;
}

// What differs between the two.
struct Chord {
    using Class = CQELViewChord;
    static constexpr const char* NAME = "Chord";
    static constexpr auto CALL = ::Chord;
};
struct Pie {
    using Class = CQELViewPie;
    static constexpr const char* NAME = "Pie";
    static constexpr auto CALL = ::Pie;
};

// Directions from the middle of a box of 100 by 100: on the axes, between them, near and far.
constexpr POINT g_directions[] = {{40, 0},    {30, 10}, {25, 25}, {3, 37},   {0, -60}, {-20, 33},
                                  {-45, -45}, {-90, 0}, {-50, 1}, {12, -31}, {60, -8}, {1, 1}};

template <class Figure>
class ChordOrPieShape : public testing::Test {
protected:
    using Class = typename Figure::Class;
    using View = CTestView<Class>;

    static std::string Call(View& view, const RECT& rcQel, uint32_t nFlags = QEL_DRAW_FULL)
    {
        return view.Call(Figure::NAME, rcQel, nFlags);
    }
    // The line of a recording, from what follows the name of the call.
    static std::string Line(const std::string& rest)
    {
        return std::string(Figure::NAME) + " " + rest;
    }
    static void Paint(HDC hdc, const Words& w)
    {
        Figure::CALL(hdc, w[0], w[1], w[2], w[3], w[4], w[5], w[6], w[7]);
    }
    static int FarFromFigure(const Words& w)
    {
        View view(PressedAttr(FigureAttr(w))); // a region never shifts
        constexpr RECT q{10, 10, 110, 110};    // one pixel a unit
        Words moved = w;
        for (auto& n : moved) n += 10;
        HRGN hRegion = view->MakeRegion(q);
        if (!hRegion) hRegion = ::CreateRectRgn(0, 0, 0, 0); // no region: no pixels either
        return FarFromFilled(
            hRegion, [&](HDC hdc) { Paint(hdc, moved); }, 120);
    }
    // Flat ellipses lie: GDI here fills narrow upright ones with what it finds in memory.
    static void ExpectFlatRegions(int nHeight)
    {
        for (const POINT& a : g_directions) {
            for (const POINT& b : g_directions) {
                const Words w = {2,        50 - nHeight / 2, 98,       50 - nHeight / 2 + nHeight,
                                 50 + a.x, 50 + a.y,         50 + b.x, 50 + b.y};
                EXPECT_EQ(0, FarFromFigure(w)) << WordsText(w);
            }
        }
    }
};

struct Names {
    template <class Figure>
    static std::string GetName(int /*nIndex*/)
    {
        return Figure::NAME;
    }
};
using Figures = testing::Types<Chord, Pie>;
TYPED_TEST_SUITE(ChordOrPieShape, Figures, Names);

TYPED_TEST(ChordOrPieShape, IsOneCallWithItsBoxAndPointsStretched)
{
    typename TestFixture::View view(FigureAttr(g_figure));
    EXPECT_EQ(this->Line("30,60,130,160 start 130,60 end 30,140"), this->Call(view, SHAPE_QEL));
    // No keep modes and no clip.
    const Words outside = {-20, -30, 130, 150, 7, -90, 200, 33};
    for (const uint32_t nKeep : {0x0U, 0x1000U, 0x508000U}) {
        QELSHAPEATTR attr = FigureAttr(outside);
        attr.nFlags = nKeep;
        for (const RECT& q : {SHAPE_QEL, RECT{-7, 3, 94, 304}, RECT{0, 0, 1000, 50}}) {
            typename TestFixture::View kept(attr);
            EXPECT_EQ(RadialCall(TypeParam::NAME, outside, q, REF), this->Call(kept, q));
        }
    }
}

TYPED_TEST(ChordOrPieShape, IsDrawnCounterClockwiseWhateverTheDirectionWas)
{
    for (const int nDirection : {AD_COUNTERCLOCKWISE, AD_CLOCKWISE}) {
        QELSHAPEATTR attr = FigureAttr(g_figure);
        typename TestFixture::View view(attr);
        CRecording recording;
        ::SetArcDirection(recording.Dc(), nDirection);
        EXPECT_EQ(1, view->Draw(recording.Dc(), SHAPE_QEL, QEL_DRAW_FULL));
        const std::string before = "SetArcDirection " + std::to_string(nDirection);
        EXPECT_EQ((Lines{before, "SetArcDirection 1",
                         RadialCall(TypeParam::NAME, g_figure, SHAPE_QEL, REF), before}),
                  recording.Only({TypeParam::NAME, "SetArcDirection"}));
        CTestBitmap expected(220, 230), drawn(220, 230);
        ::SetArcDirection(drawn.Dc(), nDirection);
        view->Draw(drawn.Dc(), SHAPE_QEL, QEL_DRAW_FULL);
        EXPECT_EQ(nDirection, ::GetArcDirection(drawn.Dc()));
        ::SetArcDirection(expected.Dc(), AD_COUNTERCLOCKWISE);
        PaintRaw(expected.Dc(), attr, {30, 60, 130, 160}, [this](HDC hdc) {
            this->Paint(hdc, {30, 60, 130, 160, 130, 60, 30, 140});
        });
        EXPECT_EQ("", FirstDifference(expected, drawn));
        // From the upper right over the top to the left: the top is filled, the bottom is not.
        EXPECT_EQ(RGB(0, 255, 0), drawn.At(75, 70));
        EXPECT_EQ(RGB(255, 255, 255), drawn.At(90, 150));
    }
}

TYPED_TEST(ChordOrPieShape, PixelsAreThoseOfTheRawCallInEveryStyle)
{
    ExpectStyles<typename TypeParam::Class>({5, 4, 35, 26, 35, 15, 20, 30}, {4, 3, 84, 63},
                                            {40, 30}, {14, 11, 74, 55}, [this](HDC hdc) {
                                                this->Paint(hdc, {14, 11, 74, 55, 74, 33, 44, 63});
                                            });
}

TYPED_TEST(ChordOrPieShape, A3DStyleFillsItAndDrawsNoBorder)
{
    QELSHAPEATTR attr = FigureAttr(g_figure);
    const Lines flat = typename TestFixture::View(attr).Calls(SHAPE_QEL);
    attr.nStyle = 3 | 6 << 16;
    EXPECT_EQ(flat, typename TestFixture::View(attr).Calls(SHAPE_QEL));
}

TYPED_TEST(ChordOrPieShape, PressedMovesItsBoxAsARectangleAndItsPointsAlways)
{
    const uint32_t nPressed = QEL_DRAW_FULL | QEL_DRAW_PRESSED;
    typename TestFixture::View inside(PressedAttr(FigureAttr(g_figure)));
    EXPECT_EQ(this->Line("32,62,132,162 start 132,62 end 32,142"),
              this->Call(inside, SHAPE_QEL, nPressed));
    EXPECT_EQ(this->Line("30,60,130,160 start 130,60 end 30,140"), this->Call(inside, SHAPE_QEL));
    typename TestFixture::View atEdge(
        PressedAttr(FigureAttr({10, 20, 100, 100, 100, 60, 10, 100})));
    EXPECT_EQ(this->Line("32,62,210,220 start 212,142 end 32,222"),
              this->Call(atEdge, SHAPE_QEL, nPressed));
}

TYPED_TEST(ChordOrPieShape, LeavesTheDeviceContextAsItWasButForTheFillColors)
{
    typename TestFixture::View filled(FigureAttr(g_figure));
    ExpectStateKept(filled, SHAPE_QEL, RGB(0, 255, 0), RGB(0, 0, 255));
    QELSHAPEATTR attr = FigureAttr(g_figure);
    attr.nStyle = 0;
    typename TestFixture::View outline(attr);
    ExpectStateKept(outline, SHAPE_QEL, BACK_BEFORE, TEXT_BEFORE);
}

// ---- the region ----

TYPED_TEST(ChordOrPieShape, RegionIsTheFilledFigureForEveryStartAndEnd)
{
    const RECT boxes[] = {{10, 10, 90, 90}, {0, 20, 100, 75}, {35, 5, 70, 95}};
    for (const RECT& box : boxes) {
        const int x = (box.left + box.right) / 2;
        const int y = (box.top + box.bottom) / 2;
        for (const POINT& a : g_directions) {
            for (const POINT& b : g_directions) {
                const Words w = {box.left, box.top, box.right, box.bottom,
                                 x + a.x,  y + a.y, x + b.x,   y + b.y};
                EXPECT_EQ(0, this->FarFromFigure(w)) << WordsText(w);
            }
        }
    }
}

TYPED_TEST(ChordOrPieShape, RegionIsTheFilledFigureForFlatEllipses)
{
    for (const int nHeight : {12, 16, 20, 31}) this->ExpectFlatRegions(nHeight);
}

TYPED_TEST(ChordOrPieShape, RegionIsTheFilledFigureForVeryFlatEllipses)
{
    for (const int nHeight : {4, 7}) this->ExpectFlatRegions(nHeight);
}

TYPED_TEST(ChordOrPieShape, RegionIsTheFilledFigureAtALargeSize)
{
    const Words w = {10, 20, 100, 90, 95, 60, 30, 99};
    typename TestFixture::View view(FigureAttr(w));
    EXPECT_EQ(0, FarFromFilled(
                     view->MakeRegion({0, 0, 400, 300}),
                     [this](HDC hdc) {
                         this->Paint(hdc, {40, 60, 400, 270, 380, 180, 120, 297});
                     },
                     410));
    // Neither empty nor the whole ellipse.
    const HRGN hRegion = view->MakeRegion({0, 0, 400, 300});
    RECT rc{};
    EXPECT_EQ(COMPLEXREGION, ::GetRgnBox(hRegion, &rc));
    ::DeleteObject(hRegion);
}

TYPED_TEST(ChordOrPieShape, RegionOfAnEmptyBoxHoldsNoPixel)
{
    for (const Words& w :
         {Words{10, 20, 10, 70, 60, 20, 10, 60}, Words{10, 20, 60, 20, 60, 20, 10, 60}})
        EXPECT_EQ(0, this->FarFromFigure(w));
}

TYPED_TEST(ChordOrPieShape, TurnsAndMovesAsAWholeInsideTheDrawing)
{
    const TurnRule turn = [](const Words& w, POINT c, int nQuarters) {
        return KeptPoints(RadialTurned(w, c, nQuarters), 0, REF);
    };
    const MoveRule move = [](const Words& w, int dx, int dy) {
        return KeptPoints(MovedPoints(w, 0, dx, dy), 0, REF);
    };
    ExpectTurns<typename TypeParam::Class>(FigureAttr(g_figure), RADIAL_WORDS, {50, 50}, turn);
    ExpectTurns<typename TypeParam::Class>(FigureAttr(g_figure), RADIAL_WORDS, {15, 15}, turn);
    ExpectMoves<typename TypeParam::Class>(FigureAttr(g_figure), RADIAL_WORDS, move);
    // Points outside of the box count for the whole figure.
    const Words wide = {40, 40, 60, 60, 95, 50, 3, 20};
    ExpectTurns<typename TypeParam::Class>(FigureAttr(wide), RADIAL_WORDS, {60, 60}, turn);
    ExpectMoves<typename TypeParam::Class>(FigureAttr(wide), RADIAL_WORDS, move);
    // Larger than the drawing: it keeps its size, the left and top edge at 0.
    const Words large = {-30, 20, 140, 70, 200, 20, 10, -60};
    ExpectTurns<typename TypeParam::Class>(FigureAttr(large), RADIAL_WORDS, {50, 50}, turn);
    ExpectMoves<typename TypeParam::Class>(FigureAttr(large), RADIAL_WORDS, move);
}

// ---- in which they differ: without a width a pressed figure leaves a record elsewhere ----

TEST(ChordShape, AReferenceSizeBelow1PutsTheBoxAt0)
{
    for (const int nRef : {0, -5}) {
        CTestView<CQELViewChord> view(PressedAttr(FigureAttr(g_figure)), nRef, 100);
        CTestBitmap drawn(220, 230);
        EXPECT_EQ(1, view->Draw(drawn.Dc(), SHAPE_QEL, QEL_DRAW_FULL));
        EXPECT_TRUE(IsBlank(drawn)); // no width
        // A box without a width leaves no record. Pressed left of the device origin the left edge
        // moves to 2 while the right one stays, and shows where they were.
        EXPECT_EQ("Chord 0,62,2,162",
                  view.Call("Chord", {-210, 20, -10, 220}, QEL_DRAW_FULL | QEL_DRAW_PRESSED)
                      .substr(0, 16));
    }
}

TEST(PieShape, AReferenceSizeBelow1PutsEveryXOrYAtTheQelRectsEdge)
{
    for (const int nRef : {0, -5}) {
        CTestView<CQELViewPie> view(PressedAttr(FigureAttr(g_figure)), nRef, 100);
        CTestBitmap drawn(220, 230);
        EXPECT_EQ(1, view->Draw(drawn.Dc(), SHAPE_QEL, QEL_DRAW_FULL));
        EXPECT_TRUE(IsBlank(drawn)); // no width
        // A box without a width leaves no record. Pressed in a QEL rect of one pixel the left edge
        // moves while the right one stays, and shows where they were.
        EXPECT_EQ("Pie 10,62,12,162 start 12,62 end 12,142",
                  view.Call("Pie", {10, 20, 11, 220}, QEL_DRAW_FULL | QEL_DRAW_PRESSED));
        CTestView<CQELViewPie> flat(PressedAttr(FigureAttr(g_figure)), 100, nRef);
        EXPECT_EQ("Pie 32,20,132,22 start 132,22 end 32,22",
                  flat.Call("Pie", {10, 20, 210, 21}, QEL_DRAW_FULL | QEL_DRAW_PRESSED));
    }
}

} // namespace
