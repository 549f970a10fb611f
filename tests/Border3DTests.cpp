// The raised and sunken border: rings of light and dark lines from the edge inwards. The code is
// render/Border3D.*.
#include "render/Border3D.h"

#include "base/Rects.h"
#include "tests/support/ViewSupport.h"

#include <climits>

namespace {

constexpr COLORREF LIGHT = RGB(255, 0, 0);
constexpr COLORREF DARK = RGB(0, 0, 255);
constexpr COLORREF GROUND = RGB(255, 255, 255);
constexpr RECT QEL{0, 0, 60, 50};

void SetPixels(const CTestBitmap& bitmap, int x1, int y1, int x2, int y2, COLORREF clr)
{
    // From one end of a line to the other, the last pixel left out, as LineTo does.
    const int dx = (x2 > x1) - (x2 < x1);
    const int dy = (y2 > y1) - (y2 < y1);
    for (; x1 != x2 || y1 != y2; x1 += dx, y1 += dy) ::SetPixel(bitmap.Dc(), x1, y1, clr);
}

void PaintRings(const CTestBitmap& bitmap, RECT r, int nWidth)
{
    for (int n = 0; n < nWidth; ++n) {
        SetPixels(bitmap, r.left, r.bottom - 1, r.left, r.top, LIGHT);
        SetPixels(bitmap, r.left, r.top, r.right, r.top, LIGHT);
        SetPixels(bitmap, r.right - 1, r.top, r.right - 1, r.bottom - 1, DARK);
        SetPixels(bitmap, r.right - 1, r.bottom - 1, r.left - 1, r.bottom - 1, DARK);
        ++r.left, ++r.top, --r.right, --r.bottom;
    }
}

TEST(Border, RingsGoInwardsFromTheEdge)
{
    for (const int nWidth : {1, 2, 3, 7}) {
        CTestBitmap expected(60, 50), drawn(60, 50);
        const RECT rc{5, 6, 45, 36};
        PaintRings(expected, rc, nWidth);
        EXPECT_EQ(1, DrawBorder3D(drawn.Dc(), rc, LIGHT, DARK, QEL, nWidth));
        EXPECT_FALSE(IsBlank(drawn));
        EXPECT_EQ("", FirstDifference(expected, drawn)) << nWidth;
    }
}

TEST(Border, DarkHoldsTheCornersWhereTheLinesMeet)
{
    CTestBitmap drawn(60, 50);
    ASSERT_EQ(1, DrawBorder3D(drawn.Dc(), {5, 6, 45, 36}, LIGHT, DARK, QEL, 1));
    EXPECT_EQ(LIGHT, drawn.At(5, 6));
    EXPECT_EQ(LIGHT, drawn.At(43, 6));
    EXPECT_EQ(DARK, drawn.At(44, 6)); // the dark pen comes second
    EXPECT_EQ(LIGHT, drawn.At(5, 34));
    EXPECT_EQ(DARK, drawn.At(5, 35));
    EXPECT_EQ(DARK, drawn.At(44, 35));
    EXPECT_EQ(GROUND, drawn.At(6, 7)); // one ring only
    EXPECT_EQ(GROUND, drawn.At(45, 20));
    EXPECT_EQ(GROUND, drawn.At(4, 20));
    // Light: 29 up the left edge to the corner at the top (the one at the bottom is dark), 38 more
    // along the top. Dark: 29 down the right edge to the corner at the bottom, 40 along the bottom.
    EXPECT_EQ(29 + 38, CountPixels(drawn, LIGHT));
    EXPECT_EQ(29 + 40, CountPixels(drawn, DARK));
}

TEST(Border, LinesAreDrawnInTheSameOrderForEveryRing)
{
    CRecording recording;
    ASSERT_EQ(1, DrawBorder3D(recording.Dc(), {5, 6, 45, 36}, LIGHT, DARK, QEL, 2));
    const Lines lines = recording.Only({"LineTo"});
    EXPECT_EQ((Lines{"LineTo 5,6", "LineTo 45,6", "LineTo 44,35", "LineTo 4,35", //
                     "LineTo 6,7", "LineTo 44,7", "LineTo 43,34", "LineTo 5,34"}),
              lines);
    // The starts of the lines; what else moves the position saves and restores it.
    Lines moves = recording.Only({"MoveTo"});
    const Lines starts = {"MoveTo 5,35", "MoveTo 44,6", "MoveTo 6,34", "MoveTo 43,7"};
    EXPECT_NE(moves.end(), std::search(moves.begin(), moves.end(), starts.begin(), starts.end()));
    EXPECT_EQ("MoveTo 0,0", moves.back());
    // Two solid pens of one pixel, and both are deleted.
    EXPECT_EQ(
        (Lines{"CreatePen style 0 width 1 color 0000ff", "CreatePen style 0 width 1 color ff0000"}),
        recording.Only({"CreatePen"}));
    EXPECT_EQ(2U, recording.Only({"DeleteObject"}).size());
    EXPECT_EQ("SelectStock BLACK_PEN", recording.Only({"Select"}).back());
}

TEST(Border, NothingIsDrawnForAnEmptyRectangleOrOneThatMissesTheQelRect)
{
    const RECT misses[] = {{5, 6, 5, 36},   {5, 6, 45, 6},   {45, 6, 5, 36},  {60, 6, 70, 36},
                           {5, 50, 45, 60}, {-20, 6, 0, 36}, {5, -20, 45, 0}, {0, 0, 0, 0}};
    for (const RECT& rc : misses) {
        CTestBitmap drawn(60, 50);
        EXPECT_EQ(0, DrawBorder3D(drawn.Dc(), rc, LIGHT, DARK, QEL, 2)) << RectText(rc);
        EXPECT_TRUE(IsBlank(drawn));
        CRecording recording;
        DrawBorder3D(recording.Dc(), rc, LIGHT, DARK, QEL, 2);
        EXPECT_EQ(Lines{}, recording.Calls());
    }
}

TEST(Border, WhatReachesOverTheQelRectIsDrawnWhole)
{
    CTestBitmap expected(60, 50), drawn(60, 50);
    PaintRings(expected, {5, 6, 45, 36}, 2);
    // The QEL rect only decides whether to draw: it is no clip.
    EXPECT_EQ(1, DrawBorder3D(drawn.Dc(), {5, 6, 45, 36}, LIGHT, DARK, {0, 0, 20, 20}, 2));
    EXPECT_EQ("", FirstDifference(expected, drawn));
}

TEST(Border, WiderThanHalfTheRectangleDrawsRingsPastEachOther)
{
    for (const int nWidth : {4, 5, 6, 8}) { // 10 by 10: five rings meet in the middle
        CTestBitmap expected(60, 50), drawn(60, 50);
        const RECT rc{20, 20, 30, 30};
        PaintRings(expected, rc, nWidth);
        EXPECT_EQ(1, DrawBorder3D(drawn.Dc(), rc, LIGHT, DARK, QEL, nWidth));
        EXPECT_EQ("", FirstDifference(expected, drawn)) << nWidth;
    }
}

// The sides that are far away show nowhere, so that they may as well be near.
TEST(Border, OneThatReachesFarAwayShowsTheSidesThatAreNear)
{
    constexpr LONG FAR_SIDE = 0x7FF80000;
    const struct {
        RECT rcFar;
        RECT rcNear;
    } rows[] = {{{-FAR_SIDE, 6, 45, 36}, {-300, 6, 45, 36}},
                {{5, -FAR_SIDE, 45, 36}, {5, -300, 45, 36}},
                {{5, 6, FAR_SIDE, 36}, {5, 6, 300, 36}},
                {{5, 6, 45, FAR_SIDE}, {5, 6, 45, 300}}};
    for (const auto& row : rows) {
        CTestBitmap expected(60, 50), drawn(60, 50);
        EXPECT_EQ(1, DrawBorder3D(expected.Dc(), row.rcNear, LIGHT, DARK, QEL, 9));
        EXPECT_EQ(1, DrawBorder3D(drawn.Dc(), row.rcFar, LIGHT, DARK, QEL, 9));
        EXPECT_FALSE(IsBlank(drawn));
        EXPECT_EQ("", FirstDifference(expected, drawn)) << RectText(row.rcFar);
    }
}

TEST(Border, AtAScaleBelowOneRingsThatTakeNoPixelAreLeftOut)
{
    // Four rings at half the size: as many pixels as two rings.
    CTestBitmap expected(60, 50), drawn(60, 50);
    const QelRect rcHalf(QEL, CPixelScale(50));
    const int32_t nPixels = rcHalf.px(4);
    EXPECT_EQ(2, nPixels);
    PaintRings(expected, {5, 6, 45, 36}, nPixels);
    EXPECT_EQ(1, DrawBorder3D(drawn.Dc(), {5, 6, 45, 36}, LIGHT, DARK, rcHalf, 4));
    EXPECT_EQ("", FirstDifference(expected, drawn));
}

TEST(Border, TheBoxHoldsRingsThatHavePassedEachOther)
{
    const RECT box = BorderBox({10, 20, 13, 60}, 8); // wider than the rectangle
    EXPECT_EQ("5,20,18,60", RectText(box));
    // Without numbers for where that is, it is anywhere.
    for (const RECT& rc : {BorderBox({10, 20, INT_MAX, 60}, 8), BorderBox({10, 20, 13, 60}, -1),
                           BorderBox({10, 20, 13, 60}, REACH + 1)})
        EXPECT_EQ(RectText(ALL_IN_REACH), RectText(rc));
}

TEST(Border, AWidthOf0DrawsNoRing)
{
    CTestBitmap drawn(60, 50);
    EXPECT_EQ(1, DrawBorder3D(drawn.Dc(), {5, 6, 45, 36}, LIGHT, DARK, QEL, 0));
    EXPECT_TRUE(IsBlank(drawn));
}

TEST(Border, PositionAndPenAreAsBefore)
{
    CTestBitmap drawn(60, 50);
    CTestSelect pen(drawn.Dc(), ::CreatePen(PS_DOT, 1, RGB(1, 2, 3)), true);
    ::MoveToEx(drawn.Dc(), 17, 18, nullptr);
    const std::string before = DcState(drawn.Dc());
    EXPECT_EQ(1, DrawBorder3D(drawn.Dc(), {5, 6, 45, 36}, LIGHT, DARK, QEL, 3));
    EXPECT_EQ(before, DcState(drawn.Dc()));
    EXPECT_EQ(0, DrawBorder3D(drawn.Dc(), {5, 6, 5, 6}, LIGHT, DARK, QEL, 3));
    EXPECT_EQ(before, DcState(drawn.Dc()));
}

TEST(Border, WidthIsTheHighHalfOfTheStyleAnd0MeansTwo)
{
    EXPECT_EQ(2, BorderWidthOf(0x00000003));
    EXPECT_EQ(1, BorderWidthOf(0x00010003));
    EXPECT_EQ(7, BorderWidthOf(0x00070005));
    EXPECT_EQ(0xFFFF, BorderWidthOf(0xFFFF0001));
    EXPECT_EQ(2, BorderWidthOf(0x0000FFFF));
}

} // namespace
