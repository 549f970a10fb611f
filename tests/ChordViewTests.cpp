// The view of the chord: one Chord call, counter-clockwise, on a stretched box and two points; its
// region is the filled figure. The code is render/QELViewChord.*.
#include "render/QELViewChord.h"

#include "tests/support/ViewSupport.h"

namespace {

using View = CTestView<CQELViewChord>;
constexpr SIZE REF{100, 100};
const Words g_chord = {10, 20, 60, 70, 60, 20, 10, 60};

QELSHAPEATTR ChordAttr(const Words& words)
{
    QELSHAPEATTR attr = FilledAttr({});
    std::copy(words.begin(), words.end(), attr.nGeometry);
    return attr;
}

TEST(ChordShape, IsOneCallWithItsBoxAndPointsStretched)
{
    EXPECT_EQ("Chord 30,60,130,160 start 130,60 end 30,140",
              View(ChordAttr(g_chord)).Call("Chord", SHAPE_QEL));
    // No keep modes and no clip.
    const Words outside = {-20, -30, 130, 150, 7, -90, 200, 33};
    for (const uint32_t nKeep : {0x0U, 0x1000U, 0x508000U}) {
        QELSHAPEATTR attr = ChordAttr(outside);
        attr.nFlags = nKeep;
        for (const RECT& q : {SHAPE_QEL, RECT{-7, 3, 94, 304}, RECT{0, 0, 1000, 50}})
            EXPECT_EQ(RadialCall("Chord", outside, q, REF), View(attr).Call("Chord", q));
    }
}

TEST(ChordShape, IsDrawnCounterClockwiseWhateverTheDirectionWas)
{
    for (const int nDirection : {AD_COUNTERCLOCKWISE, AD_CLOCKWISE}) {
        QELSHAPEATTR attr = ChordAttr(g_chord);
        View view(attr);
        CRecording recording;
        ::SetArcDirection(recording.Dc(), nDirection);
        EXPECT_EQ(1, view->Draw(recording.Dc(), SHAPE_QEL, QEL_DRAW_FULL));
        const std::string before = "SetArcDirection " + std::to_string(nDirection);
        EXPECT_EQ((Lines{before, "SetArcDirection 1", RadialCall("Chord", g_chord, SHAPE_QEL, REF),
                         before}),
                  recording.Only({"Chord", "SetArcDirection"}));
        CTestBitmap expected(220, 230), drawn(220, 230);
        ::SetArcDirection(drawn.Dc(), nDirection);
        view->Draw(drawn.Dc(), SHAPE_QEL, QEL_DRAW_FULL);
        EXPECT_EQ(nDirection, ::GetArcDirection(drawn.Dc()));
        ::SetArcDirection(expected.Dc(), AD_COUNTERCLOCKWISE);
        PaintRaw(expected.Dc(), attr, {30, 60, 130, 160},
                 [](HDC hdc) { ::Chord(hdc, 30, 60, 130, 160, 130, 60, 30, 140); });
        EXPECT_EQ("", FirstDifference(expected, drawn));
        // From the upper right over the top to the left: the top is filled, the bottom is not.
        EXPECT_EQ(RGB(0, 255, 0), drawn.At(75, 70));
        EXPECT_EQ(RGB(255, 255, 255), drawn.At(90, 150));
    }
}

TEST(ChordShape, PixelsAreThoseOfTheRawCallInEveryStyle)
{
    ExpectStyles<CQELViewChord>({5, 4, 35, 26, 35, 15, 20, 30}, {4, 3, 84, 63}, {40, 30},
                                {14, 11, 74, 55},
                                [](HDC hdc) { ::Chord(hdc, 14, 11, 74, 55, 74, 33, 44, 63); });
}

TEST(ChordShape, A3DStyleFillsItAndDrawsNoBorder)
{
    QELSHAPEATTR attr = ChordAttr(g_chord);
    const Lines flat = View(attr).Calls(SHAPE_QEL);
    attr.nStyle = 3 | 6 << 16;
    EXPECT_EQ(flat, View(attr).Calls(SHAPE_QEL));
}

TEST(ChordShape, PressedMovesItsBoxAsARectangleAndItsPointsAlways)
{
    const uint32_t nPressed = QEL_DRAW_FULL | QEL_DRAW_PRESSED;
    View inside(PressedAttr(ChordAttr(g_chord)));
    EXPECT_EQ("Chord 32,62,132,162 start 132,62 end 32,142",
              inside.Call("Chord", SHAPE_QEL, nPressed));
    EXPECT_EQ("Chord 30,60,130,160 start 130,60 end 30,140", inside.Call("Chord", SHAPE_QEL));
    View atEdge(PressedAttr(ChordAttr({10, 20, 100, 100, 100, 60, 10, 100})));
    EXPECT_EQ("Chord 32,62,210,220 start 212,142 end 32,222",
              atEdge.Call("Chord", SHAPE_QEL, nPressed));
}

TEST(ChordShape, AReferenceSizeBelow1PutsTheBoxAt0)
{
    for (const int nRef : {0, -5}) {
        View view(PressedAttr(ChordAttr(g_chord)), nRef, 100);
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

TEST(ChordShape, LeavesTheDeviceContextAsItWasButForTheFillColours)
{
    View filled(ChordAttr(g_chord));
    ExpectStateKept(filled, SHAPE_QEL, RGB(0, 255, 0), RGB(0, 0, 255));
    QELSHAPEATTR attr = ChordAttr(g_chord);
    attr.nStyle = 0;
    View outline(attr);
    ExpectStateKept(outline, SHAPE_QEL, BACK_BEFORE, TEXT_BEFORE);
}

// ---- the region ----

// Directions from the middle of a box of 100 by 100: on the axes, between them, near and far.
constexpr POINT g_directions[] = {{40, 0},    {30, 10}, {25, 25}, {3, 37},   {0, -60}, {-20, 33},
                                  {-45, -45}, {-90, 0}, {-50, 1}, {12, -31}, {60, -8}, {1, 1}};

int FarFromFigure(const Words& w, int nPenWidth = 1)
{
    QELSHAPEATTR attr = PressedAttr(ChordAttr(w)); // a region never shifts
    attr.nPenWidth = nPenWidth;
    View view(attr);
    constexpr RECT q{10, 10, 110, 110}; // one pixel a unit
    HRGN hRegion = view->MakeRegion(q);
    if (!hRegion) hRegion = ::CreateRectRgn(0, 0, 0, 0); // no region: no pixels either
    return FarFromFilled(
        hRegion,
        [&](HDC hdc) {
            ::Chord(hdc, w[0] + 10, w[1] + 10, w[2] + 10, w[3] + 10, w[4] + 10, w[5] + 10,
                    w[6] + 10, w[7] + 10);
        },
        120);
}

TEST(ChordShape, RegionIsTheFilledFigureForEveryStartAndEnd)
{
    const RECT boxes[] = {{10, 10, 90, 90}, {0, 20, 100, 75}, {35, 5, 70, 95}};
    for (const RECT& box : boxes) {
        const int x = (box.left + box.right) / 2;
        const int y = (box.top + box.bottom) / 2;
        for (const POINT& a : g_directions) {
            for (const POINT& b : g_directions) {
                const Words w = {box.left, box.top, box.right, box.bottom,
                                 x + a.x,  y + a.y, x + b.x,   y + b.y};
                EXPECT_EQ(0, FarFromFigure(w)) << WordsText(w);
            }
        }
    }
}

// Flat ellipses lie: GDI here fills narrow upright ones with what it finds in memory.
void ExpectFlatRegions(int nHeight)
{
    for (const POINT& a : g_directions) {
        for (const POINT& b : g_directions) {
            const Words w = {2,        50 - nHeight / 2, 98,       50 - nHeight / 2 + nHeight,
                             50 + a.x, 50 + a.y,         50 + b.x, 50 + b.y};
            EXPECT_EQ(0, FarFromFigure(w)) << WordsText(w);
        }
    }
}

TEST(ChordShape, RegionIsTheFilledFigureForFlatEllipses)
{
    for (const int nHeight : {12, 16, 20, 31}) ExpectFlatRegions(nHeight);
}

TEST(ChordShape, RegionIsTheFilledFigureForVeryFlatEllipses)
{
    for (const int nHeight : {4, 7}) ExpectFlatRegions(nHeight);
}

TEST(ChordShape, RegionIsTheFilledFigureAtALargeSize)
{
    const Words w = {10, 20, 100, 90, 95, 60, 30, 99};
    View view(ChordAttr(w));
    EXPECT_EQ(0, FarFromFilled(
                     view->MakeRegion({0, 0, 400, 300}),
                     [](HDC hdc) { ::Chord(hdc, 40, 60, 400, 270, 380, 180, 120, 297); }, 410));
    // Neither empty nor the whole ellipse.
    const HRGN hRegion = view->MakeRegion({0, 0, 400, 300});
    RECT rc{};
    EXPECT_EQ(COMPLEXREGION, ::GetRgnBox(hRegion, &rc));
    ::DeleteObject(hRegion);
}

TEST(ChordShape, RegionOfAnEmptyBoxHoldsNoPixel)
{
    for (const Words& w :
         {Words{10, 20, 10, 70, 60, 20, 10, 60}, Words{10, 20, 60, 20, 60, 20, 10, 60}})
        EXPECT_EQ(0, FarFromFigure(w));
}

TEST(ChordShape, TurnsAndMovesAsAWholeInsideTheDrawing)
{
    const TurnRule turn = [](const Words& w, POINT c, int nQuarters) {
        return KeptPoints(RadialTurned(w, c, nQuarters), 0, REF);
    };
    const MoveRule move = [](const Words& w, int dx, int dy) {
        return KeptPoints(MovedPoints(w, 0, dx, dy), 0, REF);
    };
    ExpectTurns<CQELViewChord>(ChordAttr(g_chord), RADIAL_WORDS, {50, 50}, turn);
    ExpectTurns<CQELViewChord>(ChordAttr(g_chord), RADIAL_WORDS, {15, 15}, turn);
    ExpectMoves<CQELViewChord>(ChordAttr(g_chord), RADIAL_WORDS, move);
    // Points outside of the box count for the whole figure.
    const Words wide = {40, 40, 60, 60, 95, 50, 3, 20};
    ExpectTurns<CQELViewChord>(ChordAttr(wide), RADIAL_WORDS, {60, 60}, turn);
    ExpectMoves<CQELViewChord>(ChordAttr(wide), RADIAL_WORDS, move);
    // Larger than the drawing: it keeps its size, the left and top edge at 0.
    const Words large = {-30, 20, 140, 70, 200, 20, 10, -60};
    ExpectTurns<CQELViewChord>(ChordAttr(large), RADIAL_WORDS, {50, 50}, turn);
    ExpectMoves<CQELViewChord>(ChordAttr(large), RADIAL_WORDS, move);
}

} // namespace
