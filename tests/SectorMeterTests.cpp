// The share chart: sectors against raw Pie calls worked out here from the values, and the values
// printed in them. The code is meter/SectorMeter.*.
#include "meter/SectorMeter.h"

#include "base/DegTrig.h"
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Figures.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

namespace {

using Values = std::vector<double>;

constexpr POINT C{150, 140};
constexpr RECT CHART{30, 20, 270, 260}; // a radius of 120
constexpr COLORREF LABEL = 0x00BB11;

constexpr COLORREF PALETTE[32] = {
    0x66FFFF, 0xFF33FF, 0x33CCFF, 0x009900, 0x6633CC, 0x669933, 0x000099, 0x999900,
    0x6600CC, 0xFF0000, 0xCCFFFF, 0x009966, 0xFFFF00, 0x0000FF, 0x339999, 0x6633FF,
    0xFF3333, 0x66CC66, 0x33FF33, 0x663300, 0x3300FF, 0xCCCCFF, 0x9966CC, 0x999999,
    0x6699CC, 0x996633, 0xFFCC00, 0x663399, 0xFF0033, 0xFF00CC, 0x663366, 0x666699};

POINT Polar(int r, double fAngle)
{
    const auto a = static_cast<float>(fAngle);
    return {C.x - static_cast<int>(r * DegSin(a)), C.y + static_cast<int>(r * DegCos(a))};
}

// One sector as it has to come out.
struct Sector {
    int nIndex;
    POINT ptEnd, ptStart;
    double fMiddle; // degrees
};

std::vector<Sector> Sectors(const Values& values, int r)
{
    const double fTotal = std::accumulate(values.begin(), values.end(), 0.0);
    std::vector<Sector> sectors;
    double c = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double fShare = fTotal == 0 ? 1.0 / values.size() : values[i] / fTotal;
        const POINT ptStart = Polar(r, c * 360), ptEnd = Polar(r, (c + fShare) * 360);
        const bool bOnePoint = ptStart.x == ptEnd.x && ptStart.y == ptEnd.y;
        if (!(bOnePoint && fTotal != 0 && 1 - fShare > 0.000001))
            sectors.push_back({static_cast<int>(i), ptEnd, ptStart, (c + fShare / 2) * 360});
        c += fShare;
    }
    return sectors;
}

// What a chart has to record: brush and Pie of each sector.
Lines PieLines(const Values& values, int r)
{
    Lines lines;
    for (const Sector& s : Sectors(values, r)) {
        lines.push_back("CreateBrush style 0 color " + Hex(PALETTE[s.nIndex]));
        lines.push_back("Pie " + Text({C.x - r, C.y - r}) + "," + Text({C.x + r, C.y + r}) +
                        " start " + Text(s.ptEnd) + " end " + Text(s.ptStart));
    }
    return lines;
}

class CChart {
public:
    explicit CChart(const Values& values, const RECT& rc = CHART) : m(120, true)
    {
        m.SetCentre(C);
        m.SetMeterRect({0, 0, 300, 280});
        m.SetSectorRect(rc);
        m.SetLabelColor(LABEL);
        m.SetShowFill(1);
        m.SetSectorCount(static_cast<uint32_t>(values.size()));
        int32_t nValues[MAX_SECTORS] = {};
        float fValues[MAX_SECTORS] = {};
        for (std::size_t i = 0; i < values.size() && i < MAX_SECTORS; ++i) {
            nValues[i] = static_cast<int32_t>(values[i]);
            fValues[i] = static_cast<float>(values[i]);
        }
        m.SetSectorValues(nValues);
        m.SetSectorValues(fValues);
    }
    CSectorMeter* operator->() { return &m; }

private:
    CSectorMeter m;
};

Lines Recorded(const std::function<void(HDC)>& draw, const Lines& words)
{
    CRecording recording;
    draw(recording.Dc());
    return recording.Only(words);
}

const Lines FILL_WORDS{"CreateBrush", "Pie", "Ellipse", "Polygon", "Arc", "LineTo", "Text"};

Lines Fill(CChart& chart)
{
    return Recorded([&](HDC hdc) { EXPECT_EQ(1, chart->DrawFill(hdc, 0, 0)); }, FILL_WORDS);
}

Lines RealFill(CChart& chart)
{
    return Recorded([&](HDC hdc) { EXPECT_EQ(1, chart->DrawFill(hdc, 0.0F, 0)); }, FILL_WORDS);
}

const Values TABLE[] = {
    {1, 1, 1, 1},
    {1, 2, 3, 4},
    {50, 30, 20},
    {1},
    {0, 7, 0},
    {7, 0, 0},
    {1000000, 1},
    {1, 1000000, 1},
    {5, 0, 5, 0, 5},
    {0, 0, 0},
    {0},
    {0, 0},
    {3, 3, 3, 3, 3, 3},
    {2147483647, 1, 2, 3},
    {17, 4, 99, 3, 28, 51, 6},
};

// ---- shares ----

TEST(SectorMeter, GivesEachValueItsShareOfTheDisc)
{
    for (const Values& values : TABLE) {
        CChart chart(values);
        const Lines expected = PieLines(values, 120);
        ASSERT_FALSE(expected.empty());
        EXPECT_EQ(expected, Fill(chart));
        EXPECT_EQ(expected, RealFill(chart));
        const double fTotal = std::accumulate(values.begin(), values.end(), 0.0);
        for (std::size_t i = 0; i < values.size(); ++i)
            EXPECT_NEAR(fTotal == 0 ? 1.0 / values.size() : values[i] / fTotal,
                        chart->Share(static_cast<uint32_t>(i)), 1e-7);
    }
}

TEST(SectorMeter, StartsAtTheBottomAndGoesClockwise)
{
    CTestBitmap bitmap(300, 280);
    CChart chart({1, 1, 1, 1});
    EXPECT_EQ(1, chart->DrawFill(bitmap.Dc(), 0, QEL_DRAW_FULL));
    EXPECT_EQ(PALETTE[0], bitmap.At(C.x - 50, C.y + 50)); // bottom left
    EXPECT_EQ(PALETTE[1], bitmap.At(C.x - 50, C.y - 50));
    EXPECT_EQ(PALETTE[2], bitmap.At(C.x + 50, C.y - 50));
    EXPECT_EQ(PALETTE[3], bitmap.At(C.x + 50, C.y + 50));
    EXPECT_EQ(RGB(255, 255, 255), bitmap.At(C.x - 100, C.y + 100));
}

TEST(SectorMeter, RealSharesFollowTheRealValues)
{
    const float fValues[MAX_SECTORS] = {0.25F, 0.5F, 0.125F};
    CChart chart({1, 1, 1});
    chart->SetSectorValues(fValues);
    EXPECT_EQ(PieLines({0.25, 0.5, 0.125}, 120), RealFill(chart));
    EXPECT_NEAR(2.0 / 7, chart->Share(0), 1e-9);
    EXPECT_NEAR(4.0 / 7, chart->Share(1), 1e-9);
    EXPECT_EQ(PieLines({1, 1, 1}, 120), Fill(chart)); // the whole values stay by themselves
}

TEST(SectorMeter, WithATotalOfZeroAllSectorsAreAlike)
{
    for (const int n : {1, 2, 5, 32}) {
        CChart chart(Values(static_cast<std::size_t>(n), 0));
        EXPECT_EQ(2U * n, Fill(chart).size());
        for (int i = 0; i < n; ++i) EXPECT_DOUBLE_EQ(1.0 / n, chart->Share(i));
    }
    CChart cancelled({5, -5}); // the sum counts, not the values
    EXPECT_EQ(PieLines({0, 0}, 120), Fill(cancelled));
}

TEST(SectorMeter, SkipsASectorWithoutWidthButDrawsAWholeDisc)
{
    CTestBitmap bitmap(300, 280);
    CChart chart({0, 9, 0});
    EXPECT_EQ(1, chart->DrawFill(bitmap.Dc(), 0, 0));
    for (const POINT& pt : {POINT{C.x - 60, C.y + 60}, POINT{C.x + 60, C.y + 60},
                            POINT{C.x, C.y - 100}, POINT{C.x + 100, C.y}})
        EXPECT_EQ(PALETTE[1], bitmap.At(pt.x, pt.y));
    EXPECT_EQ(0, CountPixels(bitmap, PALETTE[0]));
    EXPECT_EQ(0, CountPixels(bitmap, PALETTE[2]));
    EXPECT_EQ(2U, Fill(chart).size());

    // One of ten thousand, at 108 degrees, is within a pixel at this radius. It is left out.
    CChart tiny({3000, 1, 6999});
    EXPECT_EQ(2U, Sectors({3000, 1, 6999}, 120).size());
    EXPECT_EQ(PieLines({3000, 1, 6999}, 120), Fill(tiny));
    EXPECT_EQ(PieLines({3000, 1, 6999}, 120), RealFill(tiny));
}

TEST(SectorMeter, HasItsOwnColorForEachOf32Sectors)
{
    const Values values(32, 3);
    CChart chart(values);
    const Lines lines = Fill(chart);
    ASSERT_EQ(64U, lines.size());
    for (int i = 0; i < 32; ++i)
        EXPECT_EQ("CreateBrush style 0 color " + Hex(PALETTE[i]), lines[2 * i]);
    CTestBitmap bitmap(300, 280);
    EXPECT_EQ(1, chart->DrawFill(bitmap.Dc(), 0, 0));
    for (int i = 0; i < 32; ++i) {
        const POINT pt = Polar(80, (i + 0.5) * 360 / 32);
        EXPECT_EQ(PALETTE[i], bitmap.At(pt.x, pt.y)) << i;
    }
}

TEST(SectorMeter, CountsNoMoreThan32Sectors)
{
    for (const uint32_t n : {33U, 100U, 0x80000000U, 0xFFFFFFFFU}) {
        CChart chart(Values(32, 1));
        chart->SetSectorCount(n);
        EXPECT_EQ(32U, chart->SectorCount());
        EXPECT_EQ(PieLines(Values(32, 1), 120), Fill(chart));
    }
    CChart fewer({4, 3, 2, 1});
    fewer->SetSectorCount(2); // the rest of the values does not count
    EXPECT_EQ(PieLines({4, 3}, 120), Fill(fewer));
}

TEST(SectorMeter, WithoutSectorsNothingIsDrawn)
{
    CChart chart({});
    EXPECT_EQ(Lines{}, Recorded(
                           [&](HDC hdc) {
                               chart->DrawFill(hdc, 5, 0);
                               chart->DrawFill(hdc, 5.0F, 0);
                               chart->DrawValueText(hdc, 5);
                               chart->DrawValueText(hdc, 5.0F);
                           },
                           FILL_WORDS));
}

// ---- size ----

TEST(SectorMeter, RadiusIsHalfTheSmallerSideOfItsRectangle)
{
    struct Row {
        RECT rc;
        int r;
    };
    for (const Row& row : {Row{{0, 0, 100, 200}, 50}, Row{{10, 20, 211, 121}, 50},
                           Row{{0, 0, 77, 79}, 38}, Row{{-50, -60, 50, 0}, 30}}) {
        CChart chart({3, 2, 1}, row.rc);
        EXPECT_EQ(row.r, chart->ChartRadius());
        EXPECT_EQ(PieLines({3, 2, 1}, row.r), Fill(chart)); // around the dial's centre all the same
    }
}

// ---- painting ----

TEST(SectorMeter, IsOutlinedWithThePenThatTheContextHolds)
{
    struct Row {
        int nStyle, nWidth;
        COLORREF clr;
    };
    for (const Row& row :
         {Row{PS_SOLID, 1, RGB(255, 0, 0)}, Row{PS_SOLID, 3, RGB(0, 0, 0)}, Row{PS_NULL, 0, 0}}) {
        CTestBitmap expected(300, 280), drawn(300, 280);
        for (const CTestBitmap* p : {&expected, &drawn}) {
            CTestSelect pen(p->Dc(), ::CreatePen(row.nStyle, row.nWidth, row.clr), true);
            if (p == &drawn) {
                CChart chart({4, 3, 2, 1});
                EXPECT_EQ(1, chart->DrawFill(p->Dc(), 0, 0));
                continue;
            }
            for (const Sector& s : Sectors({4, 3, 2, 1}, 120)) {
                CTestSelect brush(p->Dc(), ::CreateSolidBrush(PALETTE[s.nIndex]), true);
                ::Pie(p->Dc(), C.x - 120, C.y - 120, C.x + 120, C.y + 120, s.ptEnd.x, s.ptEnd.y,
                      s.ptStart.x, s.ptStart.y);
            }
        }
        EXPECT_FALSE(IsBlank(drawn));
        EXPECT_EQ("", FirstDifference(expected, drawn));
    }
}

TEST(SectorMeter, EveryDrawPaintsTheWholeChartAnew)
{
    CTestBitmap twice(300, 280), once(300, 280);
    CChart chart({1, 2, 3}), fresh({3, 1, 2});
    EXPECT_EQ(1, chart->Draw(twice.Dc(), 0, QEL_DRAW_FULL));
    const int32_t nValues[MAX_SECTORS] = {3, 1, 2};
    chart->SetSectorValues(nValues);
    EXPECT_EQ(1, chart->Draw(twice.Dc(), 0, 0)); // an update onto the picture
    EXPECT_EQ(1, fresh->Draw(once.Dc(), 0, QEL_DRAW_FULL));
    EXPECT_FALSE(IsBlank(once));
    EXPECT_EQ("", FirstDifference(once, twice));
}

TEST(SectorMeter, DrawsNoScaleOverTheChart)
{
    CChart chart({1, 2, 3});
    chart->SetShowScale(1);
    chart->SetShowAxis(1);
    chart->SetShowLabels(1);
    EXPECT_EQ(
        PieLines({1, 2, 3}, 120),
        Recorded([&](HDC hdc) { EXPECT_EQ(1, chart->Draw(hdc, 0, QEL_DRAW_FULL)); }, FILL_WORDS));
}

TEST(SectorMeter, IsClippedToTheMeterRectangle)
{
    CTestBitmap bitmap(300, 280);
    CChart chart({1, 2, 3});
    chart->SetMeterRect({100, 90, 200, 190});
    EXPECT_EQ(1, chart->Draw(bitmap.Dc(), 0, QEL_DRAW_FULL));
    for (int y = 0; y < 280; ++y)
        for (int x = 0; x < 300; ++x) {
            const bool bInside = x >= 100 && x < 200 && y >= 90 && y < 190;
            ASSERT_EQ(bInside, bitmap.At(x, y) != RGB(255, 255, 255)) << x << "," << y;
        }
    chart->SetMeterRect({100, 90, 100, 190});
    bitmap.Fill(RGB(255, 255, 255));
    EXPECT_EQ(0, chart->Draw(bitmap.Dc(), 0, QEL_DRAW_FULL));
    EXPECT_TRUE(IsBlank(bitmap));
}

// ---- values ----

// What is printed: text, and the middle of its place.
struct Printed {
    std::string text, color;
    double x, y;
    int nCellHeight;
};

std::vector<Printed> Print(CChart& chart, bool bReal)
{
    CRecording recording;
    EXPECT_EQ(1, bReal ? chart->DrawValueText(recording.Dc(), 0.0F)
                       : chart->DrawValueText(recording.Dc(), 0));
    std::vector<Printed> printed;
    std::string color;
    int nWidth = 0, nHeight = 0;
    for (const std::string& line : recording.Only({"CreateFont", "SetTextColor", "Text"})) {
        char szText[64] = {};
        int x = 0, y = 0;
        // A font read in a text line's place would leave nothing behind.
        if (std::sscanf(line.c_str(), "CreateFont width %d height %d", &nWidth, &nHeight) == 2)
            continue;
        if (line.rfind("SetTextColor ", 0) == 0) color = line.substr(13);
        if (std::sscanf(line.c_str(), "Text %d,%d \"%60[^\"]\"", &x, &y, szText) == 3) {
            const std::string text = szText;
            printed.push_back({text, color, x + static_cast<double>(text.size()) * nWidth / 2,
                               y + nHeight / 2.0, nHeight});
        }
    }
    return printed;
}

TEST(SectorMeter, PrintsEachValueAtTwoThirdsOfTheRadiusInTheMiddleOfItsSector)
{
    for (const Values& values : {Values{4, 3, 2, 1}, Values{50, 30, 20}, Values{9}, Values{0, 0, 0},
                                 Values{123, 45, 200, 80, 300}}) {
        CChart chart(values);
        for (const bool bReal : {false, true}) {
            const std::vector<Printed> printed = Print(chart, bReal);
            const std::vector<Sector> sectors = Sectors(values, 120);
            ASSERT_EQ(sectors.size(), printed.size());
            for (std::size_t i = 0; i < printed.size(); ++i) {
                const POINT pt = Polar(80, sectors[i].fMiddle);
                EXPECT_EQ(std::to_string(static_cast<int>(values[i])), printed[i].text);
                // Halves of odd widths are cut.
                EXPECT_NEAR(pt.x, printed[i].x, 1) << printed[i].text;
                EXPECT_NEAR(pt.y, printed[i].y, 1) << printed[i].text;
                EXPECT_EQ(Hex(LABEL), printed[i].color);
            }
        }
    }
}

TEST(SectorMeter, PrintsValuesAsLabelsArePrinted)
{
    CChart chart({25, 75});
    chart->SetDecimalShift(1);
    std::vector<Printed> printed = Print(chart, false);
    ASSERT_EQ(2U, printed.size());
    EXPECT_EQ("2.5", printed[0].text);
    EXPECT_EQ("7.5", printed[1].text);
    chart->SetDecimalShift(0);
    const float fValues[MAX_SECTORS] = {12.5F, 40};
    chart->SetSectorValues(fValues);
    printed = Print(chart, true);
    ASSERT_EQ(2U, printed.size());
    EXPECT_EQ("12.5", printed[0].text);
    EXPECT_EQ("40", printed[1].text);
    chart->SetFontSize(10);
    EXPECT_EQ(32, Print(chart, true)[0].nCellHeight);
    chart->SetFontSize(1);
    EXPECT_EQ(12, Print(chart, true)[0].nCellHeight);
}

TEST(SectorMeter, PrintsNothingWhereThereIsNoChart)
{
    for (const RECT& rc :
         {RECT{150, 140, 150, 140}, RECT{150, 140, 151, 300}, RECT{30, 140, 270, 141},
          RECT{270, 20, 30, 260}, RECT{0, 0, 0, 0}, RECT{0, 0, 80000, 80000}}) {
        CChart chart({4, 3, 2, 1}, rc);
        EXPECT_EQ(Lines{}, Recorded(
                               [&](HDC hdc) {
                                   EXPECT_EQ(0, chart->DrawFill(hdc, 0, 0));
                                   EXPECT_EQ(0, chart->DrawValueText(hdc, 0));
                                   EXPECT_EQ(0, chart->DrawValueText(hdc, 0.0F));
                               },
                               FILL_WORDS));
    }
    CChart smallest({4, 3, 2, 1}, {150, 140, 152, 142});
    EXPECT_EQ(1, smallest->ChartRadius());
    EXPECT_FALSE(Print(smallest, false).empty());
}

// ---- nothing is left behind, nothing does harm ----

TEST(SectorMeter, LeavesTheDeviceContextAsItWasAndNoObjectBehind)
{
    CChart chart({4, 3, 0, 1});
    chart->SetShowValue(1);
    CTestBitmap bitmap(300, 280);
    const HDC hdc = bitmap.Dc();
    MarkState(hdc);
    const std::string before = DcState(hdc);
    const auto draw = [&] {
        EXPECT_EQ(1, chart->Draw(hdc, 40, QEL_DRAW_FULL));
        EXPECT_EQ(1, chart->Draw(hdc, 40.5F, 0));
    };
    draw();
    EXPECT_FALSE(IsBlank(bitmap));
    EXPECT_EQ(before, DcState(hdc));
    const std::size_t nBefore = SpareObjects();
    ASSERT_GT(nBefore, 1000U);
    for (int i = 0; i < 20; ++i) draw();
    EXPECT_EQ(nBefore, SpareObjects());
}

TEST(SectorMeter, NoValueCrashesOrHangs)
{
    const float fInf = std::numeric_limits<float>::infinity();
    const float fNan = std::numeric_limits<float>::quiet_NaN();
    const int32_t nExtremes[][3] = {{INT_MIN, INT_MIN, INT_MIN},
                                    {INT_MAX, INT_MAX, INT_MAX},
                                    {INT_MIN, INT_MAX, 1},
                                    {-5, 10, -4},
                                    {-1, -2, -3},
                                    {1, -1, INT_MAX}};
    const float fExtremes[][3] = {{fInf, 1, 1},   {fInf, -fInf, 0}, {fNan, 1, 2},
                                  {3e38F, 3e38F}, {-3e38F, 3e38F},  {1e-45F, 1e-45F}};
    CTestBitmap bitmap(300, 280);
    const std::string before = DcState(bitmap.Dc());
    for (int i = 0; i < 6; ++i)
        for (const RECT& rc : {CHART, RECT{0, 0, 0, 0}, RECT{0, 0, 1, 1}, RECT{9, 9, 0, 0},
                               RECT{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, RECT{0, 0, 9000, 9000}}) {
            CChart chart({1, 2, 3}, rc);
            chart->SetShowValue(1);
            chart->SetDecimalShift(i % 2 ? 0xFFFFFFFF : 9);
            chart->SetMin(INT_MIN);
            chart->SetMax(INT_MAX);
            int32_t nValues[MAX_SECTORS] = {};
            float fValues[MAX_SECTORS] = {};
            for (int n = 0; n < 3; ++n) nValues[n] = nExtremes[i][n], fValues[n] = fExtremes[i][n];
            chart->SetSectorValues(nValues);
            chart->SetSectorValues(fValues);
            EXPECT_EQ(1, chart->Draw(bitmap.Dc(), 0, 0));
            EXPECT_EQ(1, chart->Draw(bitmap.Dc(), 0.0F, 0));
            EXPECT_EQ(before, DcState(bitmap.Dc()));
        }
}

} // namespace
