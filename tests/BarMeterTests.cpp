// The flat bars: fills, axis, ticks and numbers against raw GDI calls worked out here. The code is
// meter/BarMeter.* and meter/BarFill.*.
#include "meter/BarMeter.h"

#include "base/Rects.h"
#include "include/QELEngine.h"
#include "meter/BarFill.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Figures.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr COLORREF BACK = 0x00FFFF, BAR = 0x0000CC, EMPTY = 0x554433, SCALE = 0xAA1122;
constexpr COLORREF LABEL = 0x22BB00, NOTHING = RGB(255, 255, 255);
constexpr RECT UP{20, 30, 80, 230};   // 60 by 200
constexpr RECT WIDE{20, 30, 221, 90}; // the span of the values is 200

class CRegion {
public:
    explicit CRegion(HRGN h) : m_h(h) {}
    explicit CRegion(const RECT& rc) : m_h(::CreateRectRgnIndirect(&rc)) {}
    ~CRegion()
    {
        if (m_h) ::DeleteObject(m_h);
    }
    CRegion(const CRegion&) = delete;
    CRegion& operator=(const CRegion&) = delete;
    operator HRGN() const { return m_h; }

private:
    HRGN m_h;
};

// A bar in the test's colours, 0 to 10, of solid colours.
std::unique_ptr<CBarMeter> MakeBar(bool bUp, HRGN hRegion, const RECT& rc)
{
    std::unique_ptr<CBarMeter> p;
    if (bUp)
        p.reset(new CUpBarMeter(hRegion, rc));
    else
        p.reset(new CLongBarMeter(hRegion, rc));
    p->SetBackColor(BACK);
    p->SetBarColor(BAR);
    p->SetEmptyColor(EMPTY);
    p->SetScaleColor(SCALE);
    p->SetLabelColor(LABEL);
    p->SetFontSize(3); // 12 by 12
    return p;
}

struct Part {
    RECT rc;
    bool bFilled;
};

RECT UpPart(int nTop, int nBottom)
{
    return {UP.left, nTop, UP.right, nBottom};
}

RECT WidePart(int nLeft, int nRight)
{
    return {nLeft, WIDE.top, nRight, WIDE.bottom};
}

// What fills the parts, drawn raw: hatch brushes through the region as clip.
void PaintRaw(HDC hdc, HRGN hRegion, const std::vector<Part>& parts, int nStyle)
{
    for (Part part : parts) {
        CQELDraft draft(static_cast<tagDRAFTSTYLE>(part.bFilled ? nStyle : 0));
        HBRUSH hBrush = nullptr;
        const COLORREF clrFore = part.bFilled ? BAR : EMPTY;
        ASSERT_NE(0, draft.GetDraftBrush(hBrush, &part.rc, clrFore, BACK));
        const int nSaved = ::SaveDC(hdc);
        ::SelectClipRgn(hdc, hRegion);
        ::SetTextColor(hdc, clrFore);
        ::SetBkColor(hdc, BACK);
        ::FillRect(hdc, &part.rc, hBrush);
        ::RestoreDC(hdc, nSaved);
    }
}

struct FillRow {
    const char* pszWhat;
    std::function<void(CBarMeter&)> set;
    double fValue;
    std::vector<Part> parts;
};

void ExpectRows(bool bUp, const std::vector<FillRow>& rows)
{
    for (const FillRow& row : rows) {
        const CRegion region(bUp ? UP : WIDE);
        const auto bar = MakeBar(bUp, region, bUp ? UP : WIDE);
        row.set(*bar);
        CTestBitmap expected(260, 260), drawn(260, 260), drawnReal(260, 260);
        PaintRaw(expected.Dc(), region, row.parts, 0);
        EXPECT_EQ(row.parts.empty(), IsBlank(expected));
        bar->DrawFill(drawnReal.Dc(), static_cast<float>(row.fValue), 0);
        EXPECT_EQ("", FirstDifference(expected, drawnReal)) << row.pszWhat << ", real";
        if (row.fValue != static_cast<int>(row.fValue)) continue;
        EXPECT_EQ(1, bar->DrawFill(drawn.Dc(), static_cast<int32_t>(row.fValue), 0));
        EXPECT_EQ("", FirstDifference(expected, drawn)) << row.pszWhat;
    }
}

// ---- fills ----

TEST(UpBar, FillsFromTheBaseUpToTheValueAndEmptiesTheRest)
{
    const auto plain = [](CBarMeter&) {};
    const auto base5 = [](CBarMeter& m) { m.SetUseBaseValue(1), m.SetBaseValue(5); };
    ExpectRows(
        true, {
                  {"half", plain, 5, {{UpPart(130, 230), true}, {UpPart(30, 130), false}}},
                  {"none", plain, 0, {{UpPart(30, 230), false}}},
                  {"below", plain, -7, {{UpPart(30, 230), false}}},
                  {"full", plain, 10, {{UpPart(30, 230), true}}},
                  {"above", plain, 99, {{UpPart(30, 230), true}}},
                  {"real", plain, 7.25, {{UpPart(85, 230), true}, {UpPart(30, 85), false}}},
                  {"base",
                   base5,
                   8,
                   {{UpPart(130, 230), false}, {UpPart(70, 130), true}, {UpPart(30, 70), false}}},
                  {"below the base",
                   base5,
                   3,
                   {{UpPart(190, 230), false}, {UpPart(170, 190), true}, {UpPart(30, 170), false}}},
              });
}

TEST(LongBar, FillsFromTheBaseToTheRightAndNeverItsLastColumn)
{
    const auto plain = [](CBarMeter&) {};
    const auto base5 = [](CBarMeter& m) { m.SetUseBaseValue(1), m.SetBaseValue(5); };
    ExpectRows(
        false,
        {
            {"half", plain, 5, {{WidePart(20, 120), true}, {WidePart(120, 220), false}}},
            {"none", plain, 0, {{WidePart(20, 220), false}}},
            {"full", plain, 10, {{WidePart(20, 220), true}}},
            {"above", plain, 99, {{WidePart(20, 220), true}}},
            {"real", plain, 7.25, {{WidePart(20, 165), true}, {WidePart(165, 220), false}}},
            {"base",
             base5,
             8,
             {{WidePart(20, 120), false}, {WidePart(120, 180), true}, {WidePart(180, 220), false}}},
            {"below the base",
             base5,
             3,
             {{WidePart(20, 60), false}, {WidePart(60, 80), true}, {WidePart(80, 220), false}}},
        });
}

TEST(Bar, ReversedItGrowsFromTheFarEnd)
{
    const auto reverse = [](CBarMeter& m) { m.SetReverse(1); };
    const auto base3 = [](CBarMeter& m) {
        m.SetReverse(1), m.SetUseBaseValue(1), m.SetBaseValue(3);
    };
    // The layer gets the mirrored value.
    ExpectRows(true,
               {{"60", reverse, 6, {{UpPart(30, 110), true}, {UpPart(110, 230), false}}},
                {"end", reverse, 10, {{UpPart(30, 230), false}}},
                {"base",
                 base3,
                 2,
                 {{UpPart(30, 90), false}, {UpPart(90, 190), true}, {UpPart(190, 230), false}}}});
    ExpectRows(false, {{"60", reverse, 6, {{WidePart(140, 220), true}, {WidePart(20, 140), false}}},
                       {"start", reverse, 0, {{WidePart(20, 220), true}}}});
    // Through the whole meter the value is mirrored first.
    const CRegion region(UP);
    const auto bar = MakeBar(true, region, UP);
    bar->SetReverse(1);
    bar->SetShowFill(1);
    CTestBitmap expected(260, 260), drawn(260, 260);
    PaintRaw(expected.Dc(), region, {{UpPart(30, 110), true}, {UpPart(110, 230), false}}, 0);
    EXPECT_EQ(1, bar->Draw(drawn.Dc(), 4, 0));
    EXPECT_EQ("", FirstDifference(expected, drawn));
    EXPECT_EQ(4, bar->GetLastValue());
}

TEST(Bar, FillOnlyPaintsTheValueAloneAndErasesNothing)
{
    const auto fillOnly = [](CBarMeter& m) { m.SetFillOnly(1); };
    ExpectRows(true, {{"half", fillOnly, 5, {{UpPart(130, 230), true}}},
                      {"none", fillOnly, 0, {}},
                      {"below", fillOnly, -5, {}}});
    ExpectRows(false,
               {{"half", fillOnly, 5, {{WidePart(20, 120), true}}}, {"none", fillOnly, 0, {}}});
    const CRegion region(UP);
    const auto bar = MakeBar(true, region, UP);
    bar->SetFillOnly(1);
    CTestBitmap bitmap(260, 260);
    bar->DrawFill(bitmap.Dc(), 9, 0);
    bar->DrawFill(bitmap.Dc(), 2, 0);
    EXPECT_EQ(BAR, bitmap.At(50, 60)); // the top of the higher bar still stands
    EXPECT_EQ(0, CountPixels(bitmap, EMPTY));
}

TEST(Bar, ValuePartsHaveTheBarsHatchOrGradientAndEmptyOnesAreSolid)
{
    for (const int nStyle : {0, 1, 2, 6, 9, 10, 11, 13, 22, 37})
        for (const bool bUp : {true, false}) {
            const CRegion region(bUp ? UP : WIDE);
            const auto bar = MakeBar(bUp, region, bUp ? UP : WIDE);
            bar->SetBarStyle(nStyle);
            CTestBitmap expected(260, 260), drawn(260, 260);
            const std::vector<Part> up{{UpPart(150, 230), true}, {UpPart(30, 150), false}};
            const std::vector<Part> wide{{WidePart(20, 100), true}, {WidePart(100, 220), false}};
            PaintRaw(expected.Dc(), region, bUp ? up : wide, nStyle);
            EXPECT_EQ(1, bar->DrawFill(drawn.Dc(), 4, 0));
            EXPECT_FALSE(IsBlank(drawn));
            EXPECT_EQ("", FirstDifference(expected, drawn)) << "style " << nStyle;
        }
}

TEST(Bar, IsClippedToItsRegion)
{
    for (const bool bUp : {true, false}) {
        const CRegion region(::CreateEllipticRgn(40, 50, 140, 200));
        const RECT rcBar = bUp ? UP : WIDE;
        const auto bar = MakeBar(bUp, region, rcBar);
        CTestBitmap expected(260, 260), drawn(260, 260);
        const RECT rc = bar->Column();
        const std::vector<Part> up{{{rc.left, 110, rc.right, 230}, true},
                                   {{rc.left, 30, rc.right, 110}, false}};
        const std::vector<Part> wide{{WidePart(20, 140), true}, {WidePart(140, 220), false}};
        PaintRaw(expected.Dc(), region, bUp ? up : wide, 0);
        EXPECT_FALSE(IsBlank(expected));
        EXPECT_EQ(1, bar->DrawFill(drawn.Dc(), 6, 0));
        EXPECT_EQ("", FirstDifference(expected, drawn));
        EXPECT_LT(0, CountPixels(drawn, BAR));
        for (int y = 0; y < 260; ++y)
            for (int x = 0; x < 260; ++x)
                ASSERT_TRUE(drawn.At(x, y) == NOTHING || ::PtInRegion(region, x, y));
    }
}

TEST(Bar, WithoutRegionOrColumnNothingIsFilled)
{
    const CRegion none(nullptr), empty(RECT{40, 50, 40, 200});
    for (const HRGN hRegion : {static_cast<HRGN>(none), static_cast<HRGN>(empty)})
        for (const bool bUp : {true, false}) {
            const auto bar = MakeBar(bUp, hRegion, bUp ? UP : WIDE);
            bar->SetShowFill(1);
            CTestBitmap drawn(260, 260);
            bar->DrawFill(drawn.Dc(), 6, 0);
            bar->DrawFill(drawn.Dc(), 6.5F, 0);
            EXPECT_EQ(1, bar->Draw(drawn.Dc(), 6, 0)); // the rest goes on
            EXPECT_TRUE(IsBlank(drawn)) << "up " << bUp;
        }
    EXPECT_EQ(0, MakeBar(true, none, UP)->DrawFill(CTestBitmap(9, 9).Dc(), 6, 0));
    EXPECT_EQ(0, MakeBar(true, empty, UP)->DrawFill(CTestBitmap(9, 9).Dc(), 6, 0));
    EXPECT_EQ(0, MakeBar(false, none, WIDE)->DrawFill(CTestBitmap(9, 9).Dc(), 6, 0));
}

// ---- the scale ----

// The lines and texts of a recording: "color x,y x,y", "cell color x,y "text"".
Lines Strokes(const std::function<void(HDC)>& draw)
{
    CRecording recording;
    draw(recording.Dc());
    Lines strokes;
    std::string pen, font, color, at;
    for (const std::string& call : recording.Calls()) {
        char sz[64] = {};
        int n = 0, nWidth = 0, nHeight = 0;
        if (std::sscanf(call.c_str(), "CreatePen style 0 width %d color %6s", &n, sz) == 2)
            pen = std::to_string(n) + " " + sz;
        if (std::sscanf(call.c_str(), "CreateFont width %d height %d", &nWidth, &nHeight) == 2)
            font = std::to_string(nWidth) + "x" + std::to_string(nHeight);
        if (call.rfind("SetTextColor ", 0) == 0) color = call.substr(13);
        if (call.rfind("LineTo ", 0) == 0) strokes.push_back(pen + " " + at + " " + call.substr(7));
        if (call.rfind("LineTo ", 0) == 0 || call.rfind("MoveTo ", 0) == 0) at = call.substr(7);
        if (call.rfind("Text ", 0) == 0) strokes.push_back(font + " " + color + call.substr(4));
    }
    return strokes;
}

std::string Point(int x, int y)
{
    return std::to_string(x) + "," + std::to_string(y);
}

Lines ScaleOf(CBarMeter& bar, int nResult = 1)
{
    return Strokes([&](HDC hdc) { EXPECT_EQ(nResult, bar.DrawScale(hdc)); });
}

Lines LabelsOf(CBarMeter& bar, int nResult = 1)
{
    return Strokes([&](HDC hdc) { EXPECT_EQ(nResult, bar.DrawLabels(hdc)); });
}

Lines AxisOf(CBarMeter& bar, int nResult = 1)
{
    return Strokes([&](HDC hdc) { EXPECT_EQ(nResult, bar.DrawAxis(hdc)); });
}

TEST(Bar, AxisIsOneLineSevenPixelsFromTheSide)
{
    const CRegion region(UP);
    EXPECT_EQ((Lines{"1 " + Hex(SCALE) + " 73,30 73,230"}), AxisOf(*MakeBar(true, region, UP)));
    EXPECT_EQ((Lines{"1 " + Hex(SCALE) + " 20,83 221,83"}), AxisOf(*MakeBar(false, region, WIDE)));
    CTestBitmap expected(260, 260), drawn(260, 260);
    {
        CTestSelect pen(expected.Dc(), ::CreatePen(PS_SOLID, 1, SCALE), true);
        ::MoveToEx(expected.Dc(), 73, 30, nullptr);
        ::LineTo(expected.Dc(), 73, 230);
    }
    EXPECT_EQ(1, MakeBar(true, region, UP)->DrawAxis(drawn.Dc()));
    EXPECT_EQ(200, CountPixels(drawn, SCALE));
    EXPECT_EQ("", FirstDifference(expected, drawn));
}

TEST(Bar, TicksAreSixLongWhenMajorAndFourElse)
{
    const CRegion region(UP);
    for (const unsigned nTicks : {1U, 7U, 10U, 13U})
        for (const unsigned nEvery : {0U, 1U, 2U, 5U, 50U}) {
            const auto up = MakeBar(true, region, UP), wide = MakeBar(false, region, WIDE);
            for (CBarMeter* p : {up.get(), wide.get()}) {
                p->SetTickCount(nTicks);
                p->SetMajorEvery(nEvery);
            }
            Lines upLines, wideLines;
            for (unsigned i = 0; i <= nTicks; ++i) {
                const int nLength = nEvery != 0 && i % nEvery == 0 ? 6 : 4;
                const int y = i == 0        ? 230
                              : i == nTicks ? 30
                                            : 230 - static_cast<int>(200 * i / nTicks);
                const int x = i == 0        ? 20
                              : i == nTicks ? 220
                                            : 20 + static_cast<int>(200 * i / nTicks);
                const std::string pen = "1 " + Hex(SCALE) + " ";
                upLines.push_back(pen + Point(74, y) + " " + Point(74 + nLength, y));
                wideLines.push_back(pen + Point(x, 84) + " " + Point(x, 84 + nLength));
            }
            EXPECT_EQ(upLines, ScaleOf(*up)) << nTicks << " every " << nEvery;
            EXPECT_EQ(wideLines, ScaleOf(*wide)) << nTicks << " every " << nEvery;
        }
}

TEST(Bar, NumbersStandBesideTheirTicks)
{
    const CRegion region(UP);
    const auto up = MakeBar(true, region, UP), wide = MakeBar(false, region, WIDE);
    for (CBarMeter* p : {up.get(), wide.get()}) {
        p->SetTickCount(4);
        p->SetMajorEvery(2);
        p->SetScaleEnd(100);
    }
    const std::string cell = "12x12 " + Hex(LABEL) + " ";
    // Right-aligned before the axis, in the middle of the tick: x = 80 - 8 - n * 12, y - 6.
    EXPECT_EQ((Lines{cell + "60,224 \"0\"", cell + "48,124 \"50\"", cell + "36,24 \"100\""}),
              LabelsOf(*up));
    // Centred under the tick: x - n * 12 / 2, y = 90 - 8 - 12.
    EXPECT_EQ((Lines{cell + "14,70 \"0\"", cell + "108,70 \"50\"", cell + "202,70 \"100\""}),
              LabelsOf(*wide));
}

TEST(Bar, BothEndsAlwaysHaveTheirNumber)
{
    struct Row {
        unsigned nTicks, nEvery;
        const char* pszTexts;
    };
    const CRegion region(UP);
    for (const Row& row : {Row{10, 0, "0 10 "}, Row{10, 5, "0 5 10 "}, Row{10, 4, "0 4 8 10 "},
                           Row{3, 1, "0 3.3 6.7 10 "}, Row{1, 50, "0 10 "}})
        for (const bool bUp : {true, false}) {
            const auto bar = MakeBar(bUp, region, bUp ? UP : WIDE);
            bar->SetTickCount(row.nTicks);
            bar->SetMajorEvery(row.nEvery);
            std::string texts;
            for (const std::string& line : LabelsOf(*bar)) {
                const std::size_t n = line.find('"') + 1;
                texts += line.substr(n, line.size() - n - 1) + " ";
            }
            EXPECT_EQ(row.pszTexts, texts) << row.nTicks << " every " << row.nEvery;
        }
}

TEST(Bar, NumbersFollowReversalAndDecimalShift)
{
    const CRegion region(UP);
    const auto bar = MakeBar(true, region, UP);
    bar->SetTickCount(1);
    bar->SetScaleStart(20);
    bar->SetScaleEnd(95);
    const std::string cell = "12x12 " + Hex(LABEL) + " ";
    EXPECT_EQ((Lines{cell + "48,224 \"20\"", cell + "48,24 \"95\""}), LabelsOf(*bar));
    bar->SetReverse(1);
    EXPECT_EQ((Lines{cell + "48,224 \"95\"", cell + "48,24 \"20\""}), LabelsOf(*bar));
    bar->SetDecimalShift(1);
    EXPECT_EQ((Lines{cell + "36,224 \"9.5\"", cell + "36,24 \"2.0\""}), LabelsOf(*bar));
}

TEST(Bar, NumberSizeOfAVerticalBarGoesByAQuarterOfItsWidth)
{
    struct Row {
        int nWidth;
        const char* pszCell;
    };
    for (const Row& row : {Row{31, "6x12 "}, Row{32, "8x16 "}, Row{47, "8x16 "}, Row{48, "12x24 "},
                           Row{63, "12x24 "}, Row{64, "16x32 "}, Row{200, "16x32 "}}) {
        const RECT rc{10, 20, 10 + row.nWidth, 200};
        const CRegion region(rc);
        const auto bar = MakeBar(true, region, rc);
        bar->SetFontSize(0);
        const Lines labels = LabelsOf(*bar);
        ASSERT_EQ(3U, labels.size());
        for (const std::string& label : labels)
            EXPECT_EQ(0U, label.find(row.pszCell)) << label << " width " << row.nWidth;
    }
}

TEST(Bar, ScalesNeedAPlaceAndLayersSayWhatTheyLack)
{
    struct Row {
        int nBreadth; // of the bar, across
        int nAxis, nTicks, nLabels;
    };
    for (const Row& row :
         {Row{0, 0, 0, 0}, Row{1, 0, 0, 1}, Row{3, 0, 0, 1}, Row{4, 0, 1, 1}, Row{5, 1, 1, 1}})
        for (const bool bUp : {true, false}) {
            const RECT rc =
                bUp ? RECT{20, 30, 20 + row.nBreadth, 230} : RECT{20, 30, 221, 30 + row.nBreadth};
            const CRegion region(UP);
            const auto bar = MakeBar(bUp, region, rc);
            EXPECT_EQ(row.nAxis ? 1U : 0U, AxisOf(*bar, row.nAxis).size()) << row.nBreadth;
            EXPECT_EQ(row.nTicks ? 11U : 0U, ScaleOf(*bar, row.nTicks).size()) << row.nBreadth;
            EXPECT_EQ(row.nLabels ? 3U : 0U, LabelsOf(*bar, row.nLabels).size()) << row.nBreadth;
        }
}

TEST(Bar, WithoutRangeTicksOrRectangleEveryLayerIsEmpty)
{
    const std::vector<std::function<void(CBarMeter&)>> spoilers = {
        [](CBarMeter& m) { m.SetMax(0); }, [](CBarMeter& m) { m.SetMin(11); },
        [](CBarMeter& m) { m.SetTickCount(0); }};
    for (const bool bUp : {true, false})
        for (std::size_t n = 0; n <= spoilers.size(); ++n) {
            const RECT rcGood = bUp ? UP : WIDE;
            const CRegion region(rcGood);
            const auto bar =
                MakeBar(bUp, region, n < spoilers.size() ? rcGood : RECT{50, 50, 50, 9});
            if (n < spoilers.size()) spoilers[n](*bar);
            CTestBitmap drawn(260, 260);
            EXPECT_EQ(0, bar->DrawFill(drawn.Dc(), 5, 0)) << n;
            EXPECT_EQ(0, bar->DrawFill(drawn.Dc(), 5.0F, 0)) << n;
            EXPECT_EQ(0, bar->DrawScale(drawn.Dc())) << n;
            EXPECT_EQ(0, bar->DrawAxis(drawn.Dc())) << n;
            EXPECT_EQ(0, bar->DrawLabels(drawn.Dc())) << n;
            EXPECT_TRUE(IsBlank(drawn)) << n;
        }
}

TEST(Bar, HasNoPointerNoAlarmNoFrameAndNoReadOut)
{
    for (const bool bUp : {true, false}) {
        const CRegion region(bUp ? UP : WIDE);
        const auto bar = MakeBar(bUp, region, bUp ? UP : WIDE);
        CTestBitmap drawn(260, 260);
        const HDC hdc = drawn.Dc();
        EXPECT_EQ(0, bar->DrawPin(hdc, 5, 0));
        EXPECT_EQ(0, bar->DrawPin(hdc, 5.0F, 0));
        EXPECT_EQ(0, bar->ErasePin(hdc, 5, 0));
        EXPECT_EQ(0, bar->ErasePin(hdc, 5.0F, 0));
        EXPECT_EQ(0, bar->DrawAlarmZones(hdc));
        EXPECT_EQ(0, bar->DrawFrame(hdc));
        EXPECT_EQ(0, bar->DrawValueText(hdc, 5));
        EXPECT_EQ(0, bar->DrawValueText(hdc, 5.0F));
        EXPECT_TRUE(IsBlank(drawn));
    }
}

// ---- the fill component ----

TEST(BarFill, FillsWhatSegmentAndRegionShare)
{
    const CRegion region(::CreateEllipticRgn(10, 10, 120, 100));
    for (const int nStyle : {0, 1, 3, 7, 10, 25}) {
        CTestBitmap expected(150, 150), drawn(150, 150);
        PaintRaw(expected.Dc(), region, {{{40, 0, 140, 60}, true}}, nStyle);
        CBarFill fill({40, 0, 140, 60}, nStyle, BACK, BAR);
        EXPECT_EQ(1, fill.Draw(drawn.Dc(), region));
        EXPECT_FALSE(IsBlank(drawn));
        EXPECT_EQ("", FirstDifference(expected, drawn)) << nStyle;
        EXPECT_EQ(1, fill.Draw(drawn.Dc(), region)); // as often as wanted
        EXPECT_EQ("", FirstDifference(expected, drawn)) << nStyle;
    }
}

TEST(BarFill, DrawsNothingWithoutSegmentBrushOrRegion)
{
    const CRegion region(UP);
    CTestBitmap drawn(260, 260);
    for (const RECT& rc : {RECT{30, 40, 30, 90}, RECT{30, 90, 60, 40}, RECT{0, 0, 0, 0}})
        EXPECT_EQ(0, CBarFill(rc, 0, BACK, BAR).Draw(drawn.Dc(), region));
    for (const int nStyle : {38, 100, INT_MAX}) // no such gradient
        EXPECT_EQ(0, CBarFill(UP, nStyle, BACK, BAR).Draw(drawn.Dc(), region)) << nStyle;
    CBarFill(UP, 0, BACK, BAR).Draw(drawn.Dc(), nullptr);
    EXPECT_TRUE(IsBlank(drawn));
}

TEST(BarFill3D, CapIsAnEllipseInBrushAndColors)
{
    for (const int nStyle : {0, 1, 2}) {
        CTestBitmap drawn(100, 100);
        C3DBarFill fill({20, 20, 80, 80}, nStyle, BACK, BAR);
        EXPECT_EQ(1, fill.DrawCap(drawn.Dc(), {20, 30, 80, 60}));
        int nInside = 0;
        for (int y = 0; y < 100; ++y)
            for (int x = 0; x < 100; ++x) {
                const COLORREF clr = drawn.At(x, y);
                const double dx = x + 0.5 - 50, dy = y + 0.5 - 45;
                const auto isIn = [&](double rx, double ry) {
                    return dx * dx / (rx * rx) + dy * dy / (ry * ry) < 1;
                };
                const bool bPainted = clr == BAR || clr == BACK;
                const RECT rcBox{20, 30, 80, 60};
                ASSERT_TRUE(::PtInRect(&rcBox, {x, y}) || clr == NOTHING) << x << "," << y;
                // A pixel and a half on both sides of the curve is left to GDI.
                ASSERT_TRUE(isIn(31.5, 16.5) || clr == NOTHING) << x << "," << y;
                ASSERT_TRUE(!isIn(28.5, 13.5) || bPainted) << x << "," << y;
                nInside += bPainted;
            }
        EXPECT_NEAR(3.1416 * 30 * 15, nInside, 100);
        EXPECT_EQ(nStyle != 1, CountPixels(drawn, BAR) > 0); // hatch 1 is all background
        EXPECT_EQ(nStyle != 0, CountPixels(drawn, BACK) > 0);
    }
    CTestBitmap drawn(100, 100);
    EXPECT_EQ(0, C3DBarFill({20, 20, 80, 80}, 38, BACK, BAR).DrawCap(drawn.Dc(), {20, 30, 80, 60}));
    EXPECT_TRUE(IsBlank(drawn));
}

// ---- nothing is left behind, nothing does harm ----

void ShowAll(CBarMeter& m)
{
    for (const auto set : {&CMeter::SetShowPin, &CMeter::SetShowScale, &CMeter::SetShowAxis,
                           &CMeter::SetShowLabels, &CMeter::SetShowFill, &CMeter::SetShowAlarm,
                           &CMeter::SetShowFrame, &CMeter::SetShowValue})
        (m.*set)(1);
}

TEST(Bar, LeavesTheDeviceContextAsItWasAndNoObjectBehind)
{
    for (const bool bUp : {true, false})
        for (const int nStyle : {0, 5, 13, 38}) {
            const CRegion region(bUp ? UP : WIDE);
            const auto bar = MakeBar(bUp, region, bUp ? UP : WIDE);
            ShowAll(*bar);
            bar->SetBarStyle(nStyle);
            CTestBitmap bitmap(260, 260);
            const HDC hdc = bitmap.Dc();
            MarkState(hdc);
            const std::string before = DcState(hdc);
            const auto draw = [&] {
                EXPECT_EQ(1, bar->Draw(hdc, 4, QEL_DRAW_FULL));
                EXPECT_EQ(1, bar->Draw(hdc, 6.5F, 0));
            };
            draw();
            EXPECT_FALSE(IsBlank(bitmap));
            EXPECT_EQ(before, DcState(hdc)) << "style " << nStyle;
            const std::size_t nBefore = SpareObjects();
            ASSERT_GT(nBefore, 1000U);
            for (int i = 0; i < 10; ++i) draw();
            EXPECT_EQ(nBefore, SpareObjects()) << "style " << nStyle;
        }
}

TEST(Bar, NoValueOfAnyFieldCrashesOrHangs)
{
    using Setter = void (*)(CBarMeter&, int);
    constexpr Setter SETTERS[] = {
        [](CBarMeter& m, int n) { m.SetMin(n); },
        [](CBarMeter& m, int n) { m.SetMax(n); },
        [](CBarMeter& m, int n) { m.SetMin(INT_MIN), m.SetMax(n); },
        [](CBarMeter& m, int n) { m.SetScaleStart(n), m.SetScaleEnd(-1 - n); },
        [](CBarMeter& m, int n) { m.SetTickCount(static_cast<uint32_t>(n)); },
        [](CBarMeter& m, int n) { m.SetMajorEvery(static_cast<uint32_t>(n)); },
        [](CBarMeter& m, int n) { m.SetDecimalShift(static_cast<uint32_t>(n)); },
        [](CBarMeter& m, int n) { m.SetFontSize(static_cast<uint32_t>(n)); },
        [](CBarMeter& m, int n) { m.SetUseBaseValue(1), m.SetBaseValue(n); },
        [](CBarMeter& m, int n) { m.SetUseBaseValue(1), m.SetBaseValue(n), m.SetReverse(1); },
        [](CBarMeter& m, int n) { m.SetBarStyle(n < 0 ? 38 : n); }, // elements take no negative one
        [](CBarMeter& m, int n) { m.SetFrameOption(n), m.SetLastValue(n); },
    };
    CTestBitmap bitmap(260, 260);
    const std::string before = DcState(bitmap.Dc());
    for (const bool bUp : {true, false})
        for (const Setter set : SETTERS)
            for (const int n : {INT_MIN, INT_MIN + 1, -1, 0, 1, 10, 37, INT_MAX}) {
                const CRegion region(bUp ? UP : WIDE);
                const auto bar = MakeBar(bUp, region, bUp ? UP : WIDE);
                ShowAll(*bar);
                set(*bar, n);
                for (const int nValue : {INT_MIN, 0, 5, INT_MAX})
                    EXPECT_EQ(1, bar->Draw(bitmap.Dc(), nValue, 0));
                for (const float fValue : {std::numeric_limits<float>::infinity(), -1e38F,
                                           std::numeric_limits<float>::quiet_NaN()})
                    EXPECT_EQ(1, bar->Draw(bitmap.Dc(), fValue, 0));
                EXPECT_EQ(before, DcState(bitmap.Dc()));
            }
}

TEST(Bar, ManyTicksAreDrawnAsTenThousand)
{
    const CRegion region(UP);
    for (const bool bUp : {true, false})
        for (const uint32_t nTicks : {10000U, 10001U, 0xFFFFFFFFU}) {
            const auto bar = MakeBar(bUp, region, bUp ? UP : WIDE);
            bar->SetTickCount(nTicks);
            EXPECT_EQ(10001U, ScaleOf(*bar).size()) << nTicks;
        }
}

TEST(BarPlaces, HoldTheAxisWithoutMarksAndAreAnywhereForABarFarAway)
{
    const RECT rcNone{0, 0, 0, 0};
    CUpBarMeter bar(nullptr, UP);
    bar.SetShowScale(0);
    bar.SetShowAxis(0);
    bar.SetShowLabels(0);
    const RECT rcBare = bar.PaintedRect(rcNone);
    bar.SetShowAxis(1);
    const RECT rcAxis = bar.PaintedRect(rcNone);
    bar.SetShowScale(1);
    const RECT rcBoth = bar.PaintedRect(rcNone);
    EXPECT_TRUE(::EqualRect(&rcAxis, &rcBoth)); // the axis and its marks have one place
    RECT rcWhole{};
    ::UnionRect(&rcWhole, &rcBare, &rcAxis);
    EXPECT_TRUE(::EqualRect(&rcWhole, &rcAxis));
    const RECT rcAnywhere =
        CUpBarMeter(nullptr, {INT_MAX - 60, 30, INT_MAX, 230}).PaintedRect(rcNone);
    EXPECT_TRUE(::EqualRect(&ALL_IN_REACH, &rcAnywhere));
}

} // namespace
