// Outlines along curves at another pixel scale: as large as the pen says, between its rays, and the
// system's own where figures would not do. The code is base/BandStroke.*.
#include "base/PixelPen.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Recording.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr COLORREF PEN = RGB(0x33, 0x66, 0xCC);
constexpr COLORREF FILL = RGB(0x22, 0x88, 0x44);
constexpr COLORREF GROUND = RGB(255, 255, 255);
constexpr CPixelScale TWICE(200);
constexpr RECT BOX{20, 16, 101, 76};
constexpr double TURN = 6.283185307179586;

enum class Brush { None, Solid, Pattern, Hatch };

HGDIOBJ MakeBrush(Brush nBrush)
{
    constexpr WORD WHITE[8] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    switch (nBrush) {
    case Brush::None:
        return ::GetStockObject(NULL_BRUSH);
    case Brush::Solid:
        return ::CreateSolidBrush(FILL);
    case Brush::Hatch:
        return ::CreateHatchBrush(HS_CROSS, FILL);
    default:
        break;
    }
    const HBITMAP hBitmap = ::CreateBitmap(8, 8, 1, 1, WHITE); // in the background colour
    const HBRUSH hBrush = ::CreatePatternBrush(hBitmap);
    ::DeleteObject(hBitmap);
    return hBrush;
}

// What is drawn with a pen of that width in units, a flat one like a pixel's or a round one.
class CDrawn {
public:
    CDrawn(int nWidth, bool bRound, Brush nBrush, const std::function<void(HDC)>& draw)
        : m_picture(240, 200, GROUND)
    {
        HDC hdc = m_picture.Dc();
        const LOGBRUSH color{BS_SOLID, PEN, 0};
        const HPEN hPen = bRound ? ::CreatePen(PS_SOLID, nWidth, PEN)
                                 : ::ExtCreatePen(PS_GEOMETRIC | PS_ENDCAP_FLAT | PS_JOIN_MITER,
                                                  static_cast<DWORD>(nWidth), &color, 0, nullptr);
        const CTestSelect pen(hdc, hPen, true);
        const CTestSelect brush(hdc, MakeBrush(nBrush), nBrush != Brush::None);
        ::SetBkColor(hdc, FILL);
        ::SetBkMode(hdc, TRANSPARENT);
        draw(hdc);
        ::GdiFlush();
    }
    const CTestBitmap& Picture() const { return m_picture; }
    int Count(COLORREF clr) const { return CountPixels(m_picture, clr); }

private:
    CTestBitmap m_picture;
};

double AreaOfBand(const RECT& rc, int nWidth)
{
    const double fWide = (rc.right - 1 - rc.left) / 2.0;
    const double fHigh = (rc.bottom - 1 - rc.top) / 2.0;
    const double fHalf = nWidth / 2.0;
    return TURN / 2 * ((fWide + fHalf) * (fHigh + fHalf) - (fWide - fHalf) * (fHigh - fHalf));
}

// Of a place from the middle of BOX, the way that angles grow on paper.
double AngleOf(double x, double y)
{
    return std::atan2((BOX.top + BOX.bottom) / 2.0 - y, x - (BOX.left + BOX.right) / 2.0);
}

double Between(double fAngle, double fFrom) // how far on, up to a turn
{
    const double f = std::fmod(fAngle - fFrom, TURN);
    return f < 0 ? f + TURN : f;
}

// How many pixels a place is beyond the rays; negative inside.
double BeyondRays(double x, double y, POINT ptStart, POINT ptEnd)
{
    const double fFrom = AngleOf(ptStart.x, ptStart.y);
    const double fSpan = Between(AngleOf(ptEnd.x, ptEnd.y), fFrom);
    const double fOn = Between(AngleOf(x, y), fFrom);
    const double fAway =
        std::hypot(x - (BOX.left + BOX.right) / 2.0, y - (BOX.top + BOX.bottom) / 2.0);
    const double fOff =
        fOn <= fSpan ? -std::min(fOn, fSpan - fOn) : std::min(fOn - fSpan, TURN - fOn);
    return fOff * fAway;
}

// On the middle of the outline.
POINT OnEllipse(double fAngle)
{
    const double fX =
        (BOX.left + BOX.right - 1) / 2.0 + (BOX.right - 1 - BOX.left) / 2.0 * std::cos(fAngle);
    const double fY =
        (BOX.top + BOX.bottom - 1) / 2.0 - (BOX.bottom - 1 - BOX.top) / 2.0 * std::sin(fAngle);
    return {std::lround(fX), std::lround(fY)};
}

void ExpectArcBetween(POINT ptStart, POINT ptEnd)
{
    constexpr double REACH = 2;
    constexpr int WIDTH = 6;
    const CDrawn drawn(WIDTH, false, Brush::None,
                       [&](HDC hdc) { DrawPixelArc(hdc, BOX, ptStart, ptEnd, TWICE); });
    const CTestBitmap& picture = drawn.Picture();
    int nBeyond = 0;
    for (int y = 0; y < picture.Height(); ++y)
        for (int x = 0; x < picture.Width(); ++x)
            if (picture.At(x, y) == PEN)
                nBeyond += BeyondRays(x + 0.5, y + 0.5, ptStart, ptEnd) >= REACH;
    int nGaps = 0;
    for (int n = 0; n < 360; ++n) {
        const POINT pt = OnEllipse(TURN * n / 360);
        if (BeyondRays(pt.x, pt.y, ptStart, ptEnd) < -REACH) nGaps += picture.At(pt.x, pt.y) != PEN;
    }
    const std::string rays = std::to_string(ptStart.x) + "," + std::to_string(ptStart.y) + " to " +
                             std::to_string(ptEnd.x) + "," + std::to_string(ptEnd.y);
    EXPECT_EQ(0, nBeyond) << rays;
    EXPECT_EQ(0, nGaps) << rays;
}

// What is drawn when something is set before, and what the system draws by itself then.
void ExpectTheSystemsOwn(const std::function<void(HDC)>& set)
{
    const CDrawn drawn(4, false, Brush::Solid, [&](HDC hdc) {
        set(hdc);
        DrawPixelEllipse(hdc, BOX, TWICE);
    });
    const CDrawn expected(4, false, Brush::Solid, [&](HDC hdc) {
        set(hdc);
        ::Ellipse(hdc, BOX.left, BOX.top, BOX.right, BOX.bottom);
    });
    EXPECT_FALSE(IsBlank(expected.Picture()));
    EXPECT_EQ("", FirstDifference(expected.Picture(), drawn.Picture()));
}

} // namespace

TEST(BandStroke, ARingHasTheAreaThatThePenCoversAroundEveryFill)
{
    for (const int nSide : {40, 61, 90, 140})
        for (const int nWidth : {2, 3, 4, 7, 12})
            for (const Brush nBrush : {Brush::None, Brush::Solid, Brush::Pattern}) {
                const RECT rc{20, 20, 20 + nSide, 20 + nSide * 3 / 4};
                const CDrawn drawn(nWidth, true, nBrush,
                                   [&](HDC hdc) { DrawPixelEllipse(hdc, rc, TWICE); });
                EXPECT_NEAR(1, drawn.Count(PEN) / AreaOfBand(rc, nWidth), 0.06)
                    << nSide << " " << nWidth << " " << static_cast<int>(nBrush);
                EXPECT_EQ(nBrush == Brush::None, drawn.Count(FILL) == 0);
            }
}

TEST(BandStroke, ARingIsAsWideOnAllFourSides)
{
    const int nX = (BOX.left + BOX.right - 1) / 2;
    const int nY = (BOX.top + BOX.bottom - 1) / 2;
    for (const Brush nBrush : {Brush::None, Brush::Solid, Brush::Pattern, Brush::Hatch})
        for (const int nWidth : {2, 3, 4, 6, 7}) {
            const CDrawn drawn(nWidth, true, nBrush,
                               [&](HDC hdc) { DrawPixelEllipse(hdc, BOX, TWICE); });
            std::string column, row; // along both axes
            for (int y = 0; y < 200; ++y) column += drawn.Picture().At(nX, y) == PEN ? '#' : '.';
            for (int x = 0; x < 240; ++x) row += drawn.Picture().At(x, nY) == PEN ? '#' : '.';
            const auto expected = [nWidth](int nFirst, int nLast, std::size_t nLength) {
                std::string line(nLength, '.');
                for (const int n : {nFirst, nLast})
                    line.replace(static_cast<std::size_t>(n - nWidth / 2),
                                 static_cast<std::size_t>(nWidth),
                                 std::string(static_cast<std::size_t>(nWidth), '#'));
                return line;
            };
            EXPECT_EQ(expected(BOX.top, BOX.bottom - 1, 200), column) << nWidth;
            EXPECT_EQ(expected(BOX.left, BOX.right - 1, 240), row) << nWidth;
        }
}

TEST(BandStroke, WhatAHatchLeavesOpenStaysAsItWas)
{
    const CDrawn drawn(4, false, Brush::Hatch, [](HDC hdc) { DrawPixelEllipse(hdc, BOX, TWICE); });
    const CDrawn whole(4, false, Brush::Solid, [](HDC hdc) { DrawPixelEllipse(hdc, BOX, TWICE); });
    EXPECT_GT(drawn.Count(FILL), 100);
    EXPECT_LT(drawn.Count(FILL), whole.Count(FILL) / 2);
    EXPECT_NEAR(drawn.Count(PEN), whole.Count(PEN), whole.Count(PEN) / 10);
}

TEST(BandStroke, AFilledBoxIsItsFourSidesAndItsInsideToThePixel)
{
    constexpr RECT RC{20, 30, 120, 80};
    for (const int nTimes : {2, 3, 4}) {
        const CDrawn drawn(nTimes, false, Brush::Solid, [&](HDC hdc) {
            DrawPixelRectangle(hdc, RC, 1, CPixelScale(static_cast<uint32_t>(100 * nTimes)));
        });
        const int nInside = (100 - 2 * nTimes) * (50 - 2 * nTimes);
        EXPECT_EQ(nInside, drawn.Count(FILL)) << nTimes;
        EXPECT_EQ(100 * 50 - nInside, drawn.Count(PEN)) << nTimes;
        EXPECT_EQ(FILL, drawn.Picture().At(20 + nTimes, 30 + nTimes));
        EXPECT_EQ(FILL, drawn.Picture().At(119 - nTimes, 79 - nTimes));
        EXPECT_EQ(PEN, drawn.Picture().At(20, 30));
        EXPECT_EQ(PEN, drawn.Picture().At(119, 79));
    }
}

TEST(BandStroke, AnArcLiesBetweenItsRays)
{
    const POINT pts[] = {{60, 0}, {120, 10}, {130, 46}, {110, 90}, {60, 120}, {0, 100}, {0, 46}};
    for (const POINT ptStart : pts)
        for (const POINT ptEnd : pts)
            if (ptStart.x != ptEnd.x || ptStart.y != ptEnd.y) ExpectArcBetween(ptStart, ptEnd);
}

TEST(BandStroke, RaysThatAreOneMakeAWholeTurn)
{
    const CDrawn arc(4, false, Brush::None, [](HDC hdc) {
        DrawPixelArc(hdc, BOX, {120, 10}, {120, 10}, TWICE);
    });
    const CDrawn ring(4, false, Brush::None, [](HDC hdc) { DrawPixelEllipse(hdc, BOX, TWICE); });
    EXPECT_NEAR(ring.Count(PEN), arc.Count(PEN), 8);
}

TEST(BandStroke, RoundPensEndArcsWithCaps)
{
    const auto draw = [](HDC hdc) { DrawPixelArc(hdc, BOX, {120, 46}, {0, 46}, TWICE); };
    const int nFlat = CDrawn(12, false, Brush::None, draw).Count(PEN);
    const int nRound = CDrawn(12, true, Brush::None, draw).Count(PEN);
    EXPECT_NEAR(TURN / 2 * 36, nRound - nFlat, 30); // half a disc at each end
}

TEST(BandStroke, ThePenIsTheSystemsWhereFiguresWouldNotDo)
{
    ExpectTheSystemsOwn([](HDC hdc) { ::SetROP2(hdc, R2_XORPEN); });
    ExpectTheSystemsOwn([](HDC hdc) { ::SetGraphicsMode(hdc, GM_ADVANCED); });
    ExpectTheSystemsOwn([](HDC hdc) {
        ::SetMapMode(hdc, MM_ANISOTROPIC);
        ::SetViewportExtEx(hdc, 3, 3, nullptr);
        ::SetWindowExtEx(hdc, 2, 2, nullptr);
    });
    ExpectTheSystemsOwn([](HDC hdc) { ::SetLayout(hdc, LAYOUT_RTL); });
}

TEST(BandStroke, SmallAndNarrowFiguresHaveTheSystemsPen)
{
    for (const RECT rc : {RECT{20, 20, 29, 29}, RECT{20, 20, 31, 120}, RECT{20, 20, 120, 31}}) {
        const CDrawn drawn(4, true, Brush::Solid,
                           [&](HDC hdc) { DrawPixelEllipse(hdc, rc, TWICE); });
        const CDrawn expected(4, true, Brush::Solid, [&](HDC hdc) {
            ::Ellipse(hdc, rc.left, rc.top, rc.right, rc.bottom);
        });
        EXPECT_EQ("", FirstDifference(expected.Picture(), drawn.Picture())) << rc.right;
    }
}

TEST(BandStroke, ARecordKeepsThePen)
{
    CRecording recording;
    {
        const CPixelPenScope pen(recording.Dc(), 1, PEN, TWICE);
        DrawPixelEllipse(recording.Dc(), BOX, TWICE);
    }
    EXPECT_EQ(1U, recording.Only({"Ellipse"}).size());
    EXPECT_EQ(0U, recording.Only({"CreateBrushIndirect"}).size());
}
