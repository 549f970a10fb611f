// What the layers of dials draw with: lines, arcs, discs, labels, filled sectors and the blade of
// the round dial. Each against the raw calls, with its results, and without a trace left behind.
// The code is meter/DialComponents.*, meter/PieMeter.* and meter/CircleMeter.*.
#include "meter/DialComponents.h"

#include "base/DegTrig.h"
#include "meter/CircleMeter.h"
#include "meter/PieMeter.h"
#include "meter/RoundMeterParts.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Figures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <functional>
#include <string>
#include <vector>

namespace {

using Painter = std::function<void(HDC)>;

constexpr POINT C{100, 90};
constexpr COLORREF RED = 0x0000FF, GREEN = 0x00FF00, BLUE = 0xFF0000;

POINT Polar(int r, float a)
{
    return {C.x - static_cast<int>(r * DegSin(a)), C.y + static_cast<int>(r * DegCos(a))};
}

RECT Square(int r)
{
    return {C.x - r, C.y - r, C.x + r, C.y + r};
}

using figures::Text; // beside this one:
std::string Text(const RECT& rc)
{
    return Text(POINT{rc.left, rc.top}) + "," + Text(POINT{rc.right, rc.bottom});
}

bool Contains(const Lines& lines, const std::string& line)
{
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

std::ptrdiff_t CountOf(const Lines& lines, const std::string& word)
{
    return std::count_if(lines.begin(), lines.end(),
                         [&](const std::string& line) { return line.rfind(word, 0) == 0; });
}

Lines Calls(const Painter& draw)
{
    CRecording recording;
    draw(recording.Dc());
    return recording.Calls();
}

void ExpectSamePixels(const Painter& raw, const Painter& draw)
{
    CTestBitmap expected(200, 180), drawn(200, 180);
    raw(expected.Dc());
    draw(drawn.Dc());
    EXPECT_FALSE(IsBlank(expected)); // two empty pictures would agree
    EXPECT_EQ("", FirstDifference(expected, drawn));
}

// A device context in which nothing is as a component wants it.
void Unsettle(HDC hdc)
{
    MarkState(hdc);
    ::SetPolyFillMode(hdc, WINDING);
}

void ExpectStateKept(const Painter& draw)
{
    CTestBitmap bitmap(200, 180);
    CTestSelect pen(bitmap.Dc(), ::CreatePen(PS_DOT, 1, 0x123456), true);
    CTestSelect brush(bitmap.Dc(), ::CreateSolidBrush(0x654321), true);
    Unsettle(bitmap.Dc());
    const std::string before = DcState(bitmap.Dc());
    draw(bitmap.Dc());
    EXPECT_EQ(before, DcState(bitmap.Dc()));
}

// ---- lines ----

TEST(ScaleLine, IsALineInItsPenAndKeepsThePosition)
{
    const Lines expected = {
        "MoveTo 7,8",
        "CreatePen style 0 width 3 color ff0000",
        "SelectPen #1",
        "MoveTo 10,20",
        "LineTo 50,60",
        "MoveTo 7,8",
        "SelectStock BLACK_PEN",
    };
    Lines calls = Calls([](HDC hdc) {
        ::MoveToEx(hdc, 7, 8, nullptr);
        EXPECT_EQ(1, CScaleLine(3, BLUE).Draw(hdc, {10, 20}, {50, 60}));
    });
    calls.resize(std::min(calls.size(), expected.size())); // the pen is deleted at the end
    EXPECT_EQ(expected, calls);
}

TEST(ScaleLine, PixelsAreThoseOfTheRawLine)
{
    for (const int nWidth : {1, 2, 3})
        ExpectSamePixels(
            [&](HDC hdc) {
                CTestSelect pen(hdc, ::CreatePen(PS_SOLID, nWidth, RED), true);
                for (int i = 0; i < 5; ++i) {
                    ::MoveToEx(hdc, 20, 30 + 20 * i, nullptr);
                    ::LineTo(hdc, 150, 20 + 30 * i);
                }
            },
            [&](HDC hdc) {
                const CScaleLine line(nWidth, RED); // one pen for many lines
                for (int i = 0; i < 5; ++i)
                    EXPECT_EQ(1, line.Draw(hdc, {20, 30 + 20 * i}, {150, 20 + 30 * i}));
            });
}

TEST(ScaleLine, OfNoWidthHasNoPenAndDrawsNothing)
{
    EXPECT_EQ(Lines{}, Calls([](HDC hdc) {
                  EXPECT_EQ(0, CScaleLine(0, RED).Draw(hdc, {1, 2}, {30, 40}));
              }));
}

// ---- arcs ----

TEST(ArcAxis, RunsFromTheSweepsEndBackToItsStart)
{
    struct Row {
        float fStart, fSweep;
    };
    for (const int r : {5, 42, 80})
        for (const Row& row : {Row{30, 300}, Row{0, 360}, Row{75, 20.5F}, Row{-45, 90},
                               Row{200, 250}, Row{90, -30}}) {
            CRecording recording;
            EXPECT_EQ(1, CArcAxis(2, RED).Draw(recording.Dc(), r, C, row.fStart, row.fSweep));
            EXPECT_EQ((Lines{"Arc " + Text(Square(r)) + " start " +
                             Text(Polar(r, row.fStart + row.fSweep)) + " end " +
                             Text(Polar(r, row.fStart))}),
                      recording.Only({"Arc"}));
            EXPECT_EQ((Lines{"CreatePen style 0 width 2 color 0000ff"}),
                      recording.Only({"CreatePen"}));
        }
}

TEST(ArcAxis, CoversTheAnglesOfItsSweep)
{
    CTestBitmap drawn(200, 180);
    EXPECT_EQ(1, CArcAxis(1, RED).Draw(drawn.Dc(), 60, C, 30, 300)); // open at the bottom
    const auto isPainted = [&](float a) {
        const POINT pt = Polar(60, a);
        for (int y = -2; y <= 2; ++y)
            for (int x = -2; x <= 2; ++x)
                if (drawn.At(pt.x + x, pt.y + y) == RED) return true;
        return false;
    };
    for (int a = 0; a < 360; ++a) {
        if (std::abs(a - 30) < 4 || std::abs(a - 330) < 4) continue; // the ends' own pixels
        EXPECT_EQ(a > 30 && a < 330, isPainted(static_cast<float>(a))) << a;
    }
}

TEST(ArcAxis, PixelsAreThoseOfTheRawArc)
{
    ExpectSamePixels(
        [](HDC hdc) {
            CTestSelect pen(hdc, ::CreatePen(PS_SOLID, 2, GREEN), true);
            const POINT p1 = Polar(70, 330), p0 = Polar(70, 30);
            ::Arc(hdc, 30, 20, 170, 160, p1.x, p1.y, p0.x, p0.y);
        },
        [](HDC hdc) { EXPECT_EQ(1, CArcAxis(2, GREEN).Draw(hdc, 70, C, 30, 300)); });
}

TEST(ArcAxis, WithoutRadiusOrPenDrawsNothing)
{
    EXPECT_EQ(Lines{}, Calls([](HDC hdc) {
                  EXPECT_EQ(0, CArcAxis(1, RED).Draw(hdc, 0, C, 30, 300));
                  EXPECT_EQ(0, CArcAxis(0, RED).Draw(hdc, 50, C, 30, 300));
              }));
}

// GDI draws the whole ring when both ends are one point.
TEST(ArcAxis, WithBothEndsOnOnePixelIsLeftOutUnlessItIsWhole)
{
    int nLeftOut = 0, nRings = 0;
    for (const int r : {1, 5, 42, 80})
        for (const float fStart : {0.0F, 30.0F, 44.5F, 327.0F})
            for (const float fSweep : {-2.0F, -0.25F, 0.25F, 0.5F, 2.0F, 20.0F, 180.0F, 354.0F,
                                       354.75F, 355.0F, 359.75F, 360.0F}) {
                const POINT p1 = Polar(r, fStart + fSweep), p0 = Polar(r, fStart);
                const bool bOnePoint = p1.x == p0.x && p1.y == p0.y;
                const int nDraws = !bOnePoint || fSweep >= 355;
                const auto draw = [&](HDC hdc) {
                    EXPECT_EQ(nDraws, CArcAxis(2, RED).Draw(hdc, r, C, fStart, fSweep));
                    EXPECT_EQ(nDraws, CRoundMeterArcAxis(5, RED).Draw(hdc, r, C, fStart, fSweep));
                };
                EXPECT_EQ(nDraws * 2, CountOf(Calls(draw), "Arc "))
                    << r << " from " << fStart << " over " << fSweep;
                nLeftOut += bOnePoint && fSweep < 355;
                nRings += bOnePoint && fSweep >= 355;
            }
    EXPECT_GT(nLeftOut, 20);
    EXPECT_GT(nRings, 20);
}

// ---- discs ----

TEST(ScaleCentre, IsADiscInItsTwoColors)
{
    CRecording recording;
    EXPECT_EQ(1, CScaleCentre(3, 2, RED, GREEN).Draw(recording.Dc(), C));
    EXPECT_EQ((Lines{"Ellipse 97,87,103,93"}), recording.Only({"Ellipse"}));
    EXPECT_TRUE(Contains(recording.Calls(), "CreatePen style 0 width 2 color 0000ff"));
    EXPECT_TRUE(Contains(recording.Calls(), "CreateBrush style 0 color 00ff00"));
    ExpectSamePixels(
        [](HDC hdc) {
            CTestSelect pen(hdc, ::CreatePen(PS_SOLID, 3, RED), true);
            CTestSelect brush(hdc, ::CreateSolidBrush(GREEN), true);
            ::Ellipse(hdc, C.x - 20, C.y - 20, C.x + 20, C.y + 20);
        },
        [](HDC hdc) { EXPECT_EQ(1, CScaleCentre(20, 3, RED, GREEN).Draw(hdc, C)); });
}

TEST(ScaleCentre, WithoutAWidthKeepsThePenOfTheDeviceContext)
{
    ExpectSamePixels(
        [](HDC hdc) {
            CTestSelect pen(hdc, ::CreatePen(PS_SOLID, 1, BLUE), true);
            CTestSelect brush(hdc, ::CreateSolidBrush(GREEN), true);
            ::Ellipse(hdc, C.x - 20, C.y - 20, C.x + 20, C.y + 20);
        },
        [](HDC hdc) {
            CTestSelect pen(hdc, ::CreatePen(PS_SOLID, 1, BLUE), true);
            EXPECT_EQ(1, CScaleCentre(20, 0, RED, GREEN).Draw(hdc, C));
        });
}

TEST(ScaleCentre, WithoutAPositiveRadiusDrawsNothing)
{
    for (const int r : {0, -1, INT_MIN})
        EXPECT_EQ(Lines{}, Calls([&](HDC hdc) {
                      EXPECT_EQ(0, CScaleCentre(r, 1, RED, GREEN).Draw(hdc, C));
                  }))
            << r;
}

// ---- labels ----

HFONT RawFont(int nWidth, int nHeight)
{
    return ::CreateFontA(nHeight, nWidth, 0, 0, 0, 0, 0, 0, 255, 0, 0, 0, 0, nullptr);
}

TEST(ScaleMark, IsATextInItsCellAndColorOnATransparentGround)
{
    CRecording recording;
    EXPECT_EQ(1, CScaleMark(8, 12, BLUE).Draw(recording.Dc(), 33, 44, "12.5"));
    const Lines& calls = recording.Calls();
    EXPECT_EQ((Lines{"Text 33,44 \"12.5\""}), recording.Only({"Text"}));
    for (const char* pszCall : {"SetTextColor ff0000", "SetBkMode 1", "SelectFont #1",
                                "CreateFont width 8 height 12 charset 255 face "}) {
        ASSERT_TRUE(Contains(calls, pszCall)) << pszCall;
        const auto at = std::find(calls.begin(), calls.end(), pszCall);
        EXPECT_LT(at, std::find(calls.begin(), calls.end(), "Text 33,44 \"12.5\"")) << pszCall;
    }
    ExpectSamePixels(
        [](HDC hdc) {
            CTestSelect font(hdc, RawFont(8, 16), true);
            ::SetTextColor(hdc, RED);
            ::SetBkMode(hdc, TRANSPARENT);
            ::TextOutA(hdc, 20, 30, "-1234567890.5", 13);
        },
        [](HDC hdc) {
            ::SetBkColor(hdc, GREEN);
            EXPECT_EQ(1, CScaleMark(8, 16, RED).Draw(hdc, 20, 30, "-1234567890.5"));
        });
}

TEST(ScaleMark, MeasuresInItsOwnFont)
{
    const CTestBitmap bitmap(10, 10);
    for (const int nWidth : {8, 16})
        for (const char* pszText : {"0", "12.5", "-1000000"}) {
            SIZE size{};
            {
                CTestSelect font(bitmap.Dc(), RawFont(nWidth, 8), true);
                ::GetTextExtentPoint32A(bitmap.Dc(), pszText, std::string(pszText).size(), &size);
            }
            EXPECT_GT(size.cx, 0);
            EXPECT_EQ(size.cx, CScaleMark(nWidth, 8, RED).WidthOf(bitmap.Dc(), pszText));
        }
}

TEST(ScaleMark, WithoutATextDrawsNothing)
{
    EXPECT_EQ(Lines{},
              Calls([](HDC hdc) { EXPECT_EQ(0, CScaleMark(8, 8, RED).Draw(hdc, 5, 5, nullptr)); }));
}

TEST(MeterText, IsOneTextAndNothingWithoutAFont)
{
    CRecording recording;
    const HFONT hFont = MakeMeterFont({12, 24}, FW_BOLD);
    EXPECT_EQ(1, DrawMeterText(recording.Dc(), {5, 6}, "7.5", hFont, GREEN));
    EXPECT_TRUE(::DeleteObject(hFont)); // it stays the caller's
    EXPECT_EQ((Lines{"SetTextColor 00ff00", "Text 5,6 \"7.5\""}),
              Lines(recording.Only({"SetTextColor 00ff00", "Text"})));
    EXPECT_TRUE(Contains(recording.Calls(), "SetBkMode 1"));
    EXPECT_EQ(Lines{}, Calls([](HDC hdc) {
                  EXPECT_EQ(0, DrawMeterText(hdc, {5, 6}, "7.5", nullptr, GREEN));
              }));
}

TEST(MeterText, StandsWhereItIsPutWhateverTheHostsTextsFollow)
{
    const auto draw = [](HDC hdc) {
        const CScaleMark mark(12, 24, GREEN);
        EXPECT_EQ(1, mark.Draw(hdc, 20, 30, "75"));
        EXPECT_EQ(1, mark.Draw(hdc, 90, 120, "-12"));
    };
    CTestBitmap expected(200, 180), drawn(200, 180);
    draw(expected.Dc());
    ::SetTextAlign(drawn.Dc(), TA_UPDATECP);
    ::MoveToEx(drawn.Dc(), 70, 80, nullptr);
    const std::string before = DcState(drawn.Dc());
    draw(drawn.Dc());
    EXPECT_FALSE(IsBlank(expected));
    EXPECT_EQ("", FirstDifference(expected, drawn));
    EXPECT_EQ(before, DcState(drawn.Dc()));
    // Without it nothing is asked of the device context but the text.
    CRecording plain;
    draw(plain.Dc());
    EXPECT_EQ(Lines{}, plain.Only({"Record 22", "MoveTo"})); // 22: the alignment
}

// ---- filled sectors ----

Lines Pies(int nResult, int r, float fStart, float fSweep, int nStyle = 0)
{
    CRecording recording;
    EXPECT_EQ(nResult, CArcFill(nStyle, GREEN, RED).Draw(recording.Dc(), r, C, fStart, fSweep))
        << r << " from " << fStart << " over " << fSweep;
    return recording.Only({"Pie", "Ellipse", "Chord", "Polygon"});
}

TEST(ArcFill, IsAPieFromTheSweepsEndBackToItsStart)
{
    struct Row {
        float fStart, fSweep;
    };
    for (const int r : {20, 81})
        for (const Row& row :
             {Row{30, 90}, Row{0, 270}, Row{30, 200.5F}, Row{60, 299}, Row{-20, 70}, Row{100, -40}})
            EXPECT_EQ((Lines{"Pie " + Text(Square(r)) + " start " +
                             Text(Polar(r, row.fStart + row.fSweep)) + " end " +
                             Text(Polar(r, row.fStart))}),
                      Pies(1, r, row.fStart, row.fSweep));
}

TEST(ArcFill, LessThanADegreeIsNotWorthDrawingAndNoFailure)
{
    for (const float fSweep : {0.0F, 0.5F, 0.98F, -0.5F, -0.98F})
        EXPECT_EQ(Lines{}, Calls([&](HDC hdc) {
                      EXPECT_EQ(1, CArcFill(0, GREEN, RED).Draw(hdc, 80, C, 40, fSweep));
                  }));
    EXPECT_EQ(1U, Pies(1, 400, 40, 1).size());
    EXPECT_EQ(1U, Pies(1, 400, 40, -1).size());
}

TEST(ArcFill, DegenerateSectorsAreLeftOutUnlessTheyAreWhole)
{
    EXPECT_EQ(Lines{}, Pies(0, 5, 30, 2));    // both ends on one pixel
    EXPECT_EQ(Lines{}, Pies(0, 80, 30, 180)); // opposite: the slopes agree
    EXPECT_EQ(Lines{}, Pies(0, 80, 135, 180));
    EXPECT_EQ(Lines{}, Pies(0, 0, 30, 90)); // no radius
    EXPECT_EQ(Lines{}, Pies(0, 5, 1, 354));
    EXPECT_EQ((Lines{"Pie " + Text(Square(80)) + " start 100,10 end 100,170"}),
              Pies(1, 80, 0, 180)); // upright
    const std::string whole = "Pie " + Text(Square(80)) + " start 100,170 end 100,170";
    EXPECT_EQ(Lines{whole}, Pies(1, 80, 0, 360));
    EXPECT_EQ(1U, Pies(1, 5, 1, 355).size());
}

TEST(ArcFill, AWholeSweepIsADisc)
{
    CTestBitmap drawn(200, 180);
    EXPECT_EQ(1, CArcFill(0, GREEN, RED).Draw(drawn.Dc(), 60, C, 0, 360));
    for (int a = 5; a < 360; a += 5) { // at 0 runs the seam between the two equal ends
        const POINT pt = Polar(50, static_cast<float>(a));
        EXPECT_EQ(RED, drawn.At(pt.x, pt.y)) << a;
    }
    EXPECT_EQ(RED, drawn.At(C.x, C.y));
}

TEST(ArcFill, PaintsAHatchWithoutOutlineInBothColors)
{
    struct Row {
        int nStyle;
        WORD lines[8];
    };
    const Row rows[] = {{0, {0, 0, 0, 0, 0, 0, 0, 0}},
                        {1, {255, 255, 255, 255, 255, 255, 255, 255}},
                        {3, {0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55}},
                        {9, {0xF0, 0xF0, 0xF0, 0xF0, 0x0F, 0x0F, 0x0F, 0x0F}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.nStyle);
        ExpectSamePixels(
            [&](HDC hdc) { // clear pixels come in the text colour, set ones in the background's
                const HBITMAP hBits = ::CreateBitmap(8, 8, 1, 1, row.lines);
                {
                    CTestSelect brush(hdc, ::CreatePatternBrush(hBits), true);
                    CTestSelect pen(hdc, ::GetStockObject(NULL_PEN), false);
                    ::SetTextColor(hdc, RED);
                    ::SetBkColor(hdc, GREEN);
                    const POINT p1 = Polar(70, 250), p0 = Polar(70, 30);
                    ::Pie(hdc, 30, 20, 170, 160, p1.x, p1.y, p0.x, p0.y);
                }
                ::DeleteObject(hBits);
            },
            [&](HDC hdc) {
                EXPECT_EQ(1, CArcFill(row.nStyle, GREEN, RED).Draw(hdc, 70, C, 30, 220));
            });
    }
}

TEST(ArcFill, AGradientRunsOverTheWholeSquareFromTheForeground)
{
    for (const int nStyle : {10, 11, 12, 25, 37}) {
        SCOPED_TRACE(nStyle);
        CQELDraft draft(static_cast<tagDRAFTSTYLE>(nStyle));
        ExpectSamePixels(
            [&](HDC hdc) {
                RECT rc = Square(70);
                HBRUSH hBrush = nullptr;
                ASSERT_NE(0, draft.GetDraftBrush(hBrush, &rc, RED, GREEN));
                CTestSelect brush(hdc, hBrush, false);
                CTestSelect pen(hdc, ::GetStockObject(NULL_PEN), false);
                const POINT p1 = Polar(70, 250), p0 = Polar(70, 30);
                ::Pie(hdc, 30, 20, 170, 160, p1.x, p1.y, p0.x, p0.y);
            },
            [&](HDC hdc) { EXPECT_EQ(1, CArcFill(nStyle, GREEN, RED).Draw(hdc, 70, C, 30, 220)); });
    }
}

TEST(ArcFill, WithoutABrushDrawsNothing)
{
    for (const int nStyle : {38, 1000, INT_MAX}) EXPECT_EQ(Lines{}, Pies(0, 80, 30, 90, nStyle));
    for (const int nStyle : {-1, INT_MIN}) EXPECT_EQ(Lines{}, Pies(0, 80, 30, 90, nStyle));
}

// ---- the blade ----

// Tail and blade of the needle at an angle.
std::vector<std::vector<POINT>> PinShapes(int nInner, int nTip, float a)
{
    return {{Polar(nInner, a + 135), Polar(nInner / 4, a), Polar(nInner, a + 225)},
            {Polar(nInner, a - 45), Polar(nTip, a), Polar(nInner, a + 45), Polar(nInner / 4, a)}};
}

TEST(AnglePin, IsATailAndABladeInOneColor)
{
    for (const int r : {40, 77, 200})
        for (const float a : {0.0F, 30.0F, 90.0F, 123.4F, 180.0F, 275.5F, 330.0F}) {
            const int nInner = (r - 17) / 5, nTip = r - 17;
            CRecording recording;
            EXPECT_EQ(1, CAnglePin(1, nInner, nTip, RED, BLUE).Draw(recording.Dc(), C, a));
            Lines expected;
            for (const auto& shape : PinShapes(nInner, nTip, a)) {
                expected.emplace_back("Polygon");
                for (const POINT& pt : shape) expected.back() += " " + Text(pt);
            }
            EXPECT_EQ(expected, recording.Only({"Polygon", "Ellipse", "LineTo", "Pie"})) << a;
            EXPECT_TRUE(Contains(recording.Calls(), "CreatePen style 0 width 1 color 0000ff"));
            EXPECT_TRUE(Contains(recording.Calls(), "CreateBrush style 0 color 0000ff"));
            EXPECT_TRUE(Contains(recording.Calls(), "SetBkColor ff0000"));
        }
}

TEST(AnglePin, PixelsAreThoseOfTheRawPolygons)
{
    for (const int nWidth : {1, 3})
        ExpectSamePixels(
            [&](HDC hdc) {
                CTestSelect pen(hdc, ::CreatePen(PS_SOLID, nWidth, GREEN), true);
                CTestSelect brush(hdc, ::CreateSolidBrush(GREEN), true);
                for (const auto& shape : PinShapes(16, 75, 200))
                    ::Polygon(hdc, shape.data(), static_cast<int>(shape.size()));
            },
            [&](HDC hdc) {
                EXPECT_EQ(1, CAnglePin(nWidth, 16, 75, GREEN, RED).Draw(hdc, C, 200));
            });
}

// ---- nothing stays behind ----

struct Component {
    const char* pszName;
    Painter draw;
};

std::vector<Component> Components()
{
    return {
        {"line",
         [](HDC hdc) {
             CScaleLine(2, RED).Draw(hdc, {5, 5}, {90, 70});
         }},
        {"no line",
         [](HDC hdc) {
             CScaleLine(0, RED).Draw(hdc, {5, 5}, {90, 70});
         }},
        {"arc", [](HDC hdc) { CArcAxis(1, RED).Draw(hdc, 60, C, 30, 300); }},
        {"no arc", [](HDC hdc) { CArcAxis(1, RED).Draw(hdc, 0, C, 30, 300); }},
        {"disc", [](HDC hdc) { CScaleCentre(9, 1, RED, GREEN).Draw(hdc, C); }},
        {"no disc", [](HDC hdc) { CScaleCentre(-9, 1, RED, GREEN).Draw(hdc, C); }},
        {"label",
         [](HDC hdc) {
             const CScaleMark mark(8, 8, RED);
             mark.Draw(hdc, 20, 20, "10");
             mark.WidthOf(hdc, "10");
         }},
        {"no label", [](HDC hdc) { CScaleMark(8, 8, RED).Draw(hdc, 20, 20, nullptr); }},
        {"text",
         [](HDC hdc) {
             const HFONT hFont = MakeMeterFont({8, 16}, FW_BOLD);
             DrawMeterText(hdc, {9, 9}, "5", hFont, RED);
             ::DeleteObject(hFont);
         }},
        {"hatched sector", [](HDC hdc) { CArcFill(6, GREEN, RED).Draw(hdc, 70, C, 30, 80); }},
        {"graded sector", [](HDC hdc) { CArcFill(12, GREEN, RED).Draw(hdc, 12, C, 30, 80); }},
        {"degenerate sector", [](HDC hdc) { CArcFill(6, GREEN, RED).Draw(hdc, 70, C, 30, 180); }},
        {"no brush", [](HDC hdc) { CArcFill(38, GREEN, RED).Draw(hdc, 70, C, 30, 80); }},
        {"blade", [](HDC hdc) { CAnglePin(1, 16, 75, RED, GREEN).Draw(hdc, C, 77); }},
    };
}

TEST(DialComponents, LeaveTheDeviceContextAsItWas)
{
    for (const Component& component : Components()) {
        SCOPED_TRACE(component.pszName);
        ExpectStateKept(component.draw);
    }
}

TEST(DialComponents, LeaveTheCurrentPositionWhenTextsFollowIt)
{
    for (const Component& component : Components()) {
        CTestBitmap bitmap(200, 180);
        ::SetTextAlign(bitmap.Dc(), TA_UPDATECP | TA_BOTTOM);
        Unsettle(bitmap.Dc());
        const std::string before = DcState(bitmap.Dc());
        component.draw(bitmap.Dc());
        EXPECT_EQ(before, DcState(bitmap.Dc())) << component.pszName;
    }
}

TEST(DialComponents, GiveBackEveryObjectTheyMake)
{
    const CTestBitmap bitmap(200, 180);
    for (const Component& component : Components()) component.draw(bitmap.Dc());
    for (const Component& component : Components()) {
        const std::size_t nBefore = SpareObjects();
        EXPECT_GT(nBefore, 1000U);
        for (int i = 0; i < 20; ++i) component.draw(bitmap.Dc());
        EXPECT_EQ(nBefore, SpareObjects()) << component.pszName;
    }
}

TEST(DialComponents, TakeEveryRadiusOfALayerAtAnyAngleAndPlace)
{
    const CTestBitmap bitmap(20, 20);
    const HDC hdc = bitmap.Dc();
    const int radii[] = {0, 1, 2, 97, 3000};
    const float angles[] = {0, -720.5F, 32000};
    for (const int r : radii)
        for (const float a : angles)
            for (const POINT c : {POINT{10, 10}, POINT{INT_MAX - 9000, INT_MIN + 9000}}) {
                CArcAxis(1, RED).Draw(hdc, r, c, a, 270);
                CArcFill(0, GREEN, RED).Draw(hdc, r, c, a, 270);
                CArcFill(0, GREEN, RED).Draw(hdc, r, c, 0, a);
                CAnglePin(1, r / 5, r, RED, GREEN).Draw(hdc, c, a);
                CScaleCentre(r, 1, RED, GREEN).Draw(hdc, c);
                CScaleLine(1, RED).Draw(hdc, c, {r, -r / 2});
            }
    // Still in working order.
    CTestBitmap drawn(200, 180);
    EXPECT_EQ(1, CScaleCentre(5, 1, RED, GREEN).Draw(drawn.Dc(), C));
    EXPECT_EQ(GREEN, drawn.At(C.x, C.y));
}

} // namespace
