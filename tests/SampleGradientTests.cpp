// Gradients that are put into samples: they are the pixels that the brush of the gradient paints,
// and where they cannot be there is no brush for them.
#include "brush/SampleGradient.h"
#include "brush/ShownDraft.h"
#include "tests/support/Bitmap.h"

#include <gtest/gtest.h>

namespace {

constexpr int SAMPLES = 4;
constexpr int SIDE = 40; // pixels
constexpr COLORREF CLR_1 = RGB(200, 30, 0);
constexpr COLORREF CLR_2 = RGB(0, 60, 220);
constexpr COLORREF CLR_PEN = RGB(10, 200, 10);
constexpr CPixelScale PX(100, SAMPLES);
constexpr RECT FIGURE{20, 30, 131, 109}; // samples; no whole pixels

enum class With { Brush, Samples };

// A figure with an outline, under a clip, on a tile that begins at another place than the picture.
void PaintFigure(const CTestBitmap& tile, int nStyle, With with)
{
    const HDC hdc = tile.Dc();
    const int nSaved = ::SaveDC(hdc);
    ::SetViewportOrgEx(hdc, -2 * SAMPLES, -3 * SAMPLES, nullptr);
    ::SetBrushOrgEx(hdc, -7 * SAMPLES, 5 * SAMPLES, nullptr);
    ::IntersectClipRect(hdc, 0, 0, 125, SIDE * SAMPLES);
    ::SelectObject(hdc, ::GetStockObject(BLACK_PEN));
    CTestSelect pen(hdc, ::CreatePen(PS_SOLID, 5, CLR_PEN), true);
    CShownDraft draft(nStyle, PX);
    CSampleGradient samples;
    HBRUSH hBrush = with == With::Brush
                        ? draft.Brush(hdc, FIGURE, FIGURE, CLR_1, CLR_2)
                        : samples.Begin(hdc, nStyle, PX, FIGURE, FIGURE, CLR_1, CLR_2, CLR_PEN);
    ASSERT_NE(nullptr, hBrush) << nStyle;
    {
        const CTestSelect brush(hdc, hBrush, false);
        ::Ellipse(hdc, FIGURE.left, FIGURE.top, FIGURE.right, FIGURE.bottom);
        samples.End();
    }
    ::RestoreDC(hdc, nSaved);
}

HBRUSH BrushOn(HDC hdc, int nStyle, CPixelScale px = PX)
{
    CSampleGradient samples;
    return samples.Begin(hdc, nStyle, px, FIGURE, FIGURE, CLR_1, CLR_2, CLR_PEN);
}

// Whether a gradient runs in both directions.
bool IsOfBoth(int nStyle)
{
    const SIZE size = GradientSize(FIGURE, (nStyle - DRAFT_GRADIENT) / 2);
    return size.cx > 1 && size.cy > 1;
}

} // namespace

TEST(SampleGradient, PaintsWhatTheBrushPaints)
{
    int nTried = 0;
    for (int nStyle = DRAFT_GRADIENT; nStyle < DRAFT_COUNT; ++nStyle) {
        if (!IsOfBoth(nStyle)) continue;
        ++nTried;
        const CTestBitmap expected(SIDE * SAMPLES, SIDE * SAMPLES);
        const CTestBitmap actual(SIDE * SAMPLES, SIDE * SAMPLES);
        PaintFigure(expected, nStyle, With::Brush);
        PaintFigure(actual, nStyle, With::Samples);
        EXPECT_EQ("", FirstDifference(expected, actual)) << nStyle;
        EXPECT_GT(CountPixels(expected, CLR_PEN), 0);
    }
    EXPECT_EQ(20, nTried) << "ten kinds, each both ways";
}

TEST(SampleGradient, LeavesWhatHasItsColourAlready)
{
    const CTestBitmap expected(SIDE * SAMPLES, SIDE * SAMPLES);
    const CTestBitmap actual(SIDE * SAMPLES, SIDE * SAMPLES);
    for (const CTestBitmap* pTile : {&expected, &actual})
        for (int n = 0; n < 8; ++n) // next to the first colour, and next to the second one
            for (int x = 0; x < SIDE * SAMPLES; ++x) {
                ::SetPixelV(pTile->Dc(), x, 10 * n, CLR_1 ^ static_cast<COLORREF>(n << 16));
                ::SetPixelV(pTile->Dc(), x, 10 * n + 1, CLR_2 ^ static_cast<COLORREF>(n << 16));
            }
    PaintFigure(expected, DRAFT_GRADIENT + 4, With::Brush);
    PaintFigure(actual, DRAFT_GRADIENT + 4, With::Samples);
    EXPECT_EQ("", FirstDifference(expected, actual));
}

TEST(SampleGradient, IsForSamplesAndGradientsOfBothDirectionsAlone)
{
    const CTestBitmap tile(SIDE * SAMPLES, SIDE * SAMPLES);
    constexpr int BOTH = DRAFT_GRADIENT + 4;
    ASSERT_TRUE(IsOfBoth(BOTH));
    ASSERT_FALSE(IsOfBoth(DRAFT_GRADIENT));
    EXPECT_NE(nullptr, BrushOn(tile.Dc(), BOTH));
    EXPECT_EQ(nullptr, BrushOn(tile.Dc(), BOTH, CPixelScale(100)));
    EXPECT_EQ(nullptr, BrushOn(tile.Dc(), DRAFT_GRADIENT));
    EXPECT_EQ(nullptr, BrushOn(tile.Dc(), DRAFT_GRADIENT - 1));
    EXPECT_EQ(nullptr, BrushOn(tile.Dc(), DRAFT_COUNT));
    EXPECT_EQ(nullptr, BrushOn(tile.Dc(), -1));
    ::SetROP2(tile.Dc(), R2_XORPEN);
    EXPECT_EQ(nullptr, BrushOn(tile.Dc(), BOTH));
    ::SetROP2(tile.Dc(), R2_COPYPEN);
    ::SetBrushOrgEx(tile.Dc(), 1, 0, nullptr);
    EXPECT_EQ(nullptr, BrushOn(tile.Dc(), BOTH)) << "pixels begin within others";
    ::SetBrushOrgEx(tile.Dc(), 0, 0, nullptr);
    ::IntersectClipRect(tile.Dc(), 0, 0, 4, 4);
    EXPECT_EQ(nullptr, BrushOn(tile.Dc(), BOTH)) << "nothing of it shows";
}

TEST(SampleGradient, TakesTheBrushWhereEveryColourIsThereAlready)
{
    const CTestBitmap tile(SIDE * SAMPLES, SIDE * SAMPLES);
    for (int y = 0; y < SIDE * SAMPLES; ++y) // all that differ by up to three in each colour
        for (int x = 0; x < 64; ++x)
            ::SetPixelV(tile.Dc(), 40 + x, y,
                        CLR_1 ^
                            static_cast<COLORREF>((x & 3) | (x >> 2 & 3) << 8 | (x >> 4) << 16));
    EXPECT_EQ(nullptr, BrushOn(tile.Dc(), DRAFT_GRADIENT + 4));
}
