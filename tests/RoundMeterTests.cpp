// The gauge with broad bands: every layer against figures worked out here from radius, angles and
// range. The code is meter/RoundMeter*.*.
#include "meter/RoundMeter.h"

#include "base/DegTrig.h"
#include "include/QELEngine.h"
#include "meter/RoundMeterParts.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Figures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr POINT C{200, 190};
constexpr COLORREF FACE = 0x102030, SCALE = 0x405060, PIN = 0x0000AA, LABEL = 0x00BB11;
constexpr COLORREF LOW = 0xCC0000, HIGH = 0x00CCCC, GREEN = 0x00FF00, RED = 0x0000FF, BLACK = 0;

// ---- what should be drawn ----

std::string Square(int r)
{
    return Text({C.x - r, C.y - r}) + "," + Text({C.x + r, C.y + r});
}

POINT Polar(int r, float a)
{
    if (r < 0 || r > 3000) r = 10;
    return {C.x - static_cast<int>(r * DegSin(a)), C.y + static_cast<int>(r * DegCos(a))};
}

std::string Band(int nWidth, COLORREF clr, int r, float fStart, float fEnd)
{
    return "Arc " + std::to_string(nWidth) + " " + Hex(clr) + " " + Square(r) + " start " +
           Text(Polar(r, fEnd)) + " end " + Text(Polar(r, fStart));
}

std::string Filled(const char* pszKind, int nPen, COLORREF clr, const std::string& where)
{
    return std::string(pszKind) + " " + std::to_string(nPen) + " " + Hex(clr) + " " + Hex(clr) +
           " " + where;
}

// A needle in one of its five styles.
Lines Needle(int r, float a, int nStyle, COLORREF clr)
{
    const std::string tip = Text(Polar(r * 92 / 100, a));
    const auto behind = Text(Polar(r / 3, a + 175)) + " " + Text(Polar(r / 3, a + 185));
    const auto beside = Text(Polar(r / 15, a + 90)) + " " + Text(Polar(r / 15, a - 90));
    const auto dart =
        tip + " " + Text(Polar(r / 3, a - 10)) + " " + Text(C) + " " + Text(Polar(r / 3, a + 10));
    switch (nStyle) {
    case 0:
        return {Filled("Polygon", 2, clr, behind + " " + tip),
                Filled("Ellipse", 1, BLACK, Square(r / 15))};
    case 1:
        return {Filled("Polygon", 2, clr, behind + " " + tip),
                Filled("Ellipse", 2, clr, Square(r / 15))};
    case 2:
        return {Filled("Polygon", 1, clr, beside + " " + tip),
                Filled("Ellipse", 1, clr, Square(r / 8))};
    case 3:
        return {Filled("Polygon", 1, clr, beside + " " + tip),
                Filled("Ellipse", 1, BLACK, Square(r / 8))};
    case 4:
        return {Filled("Polygon", 1, clr, dart), Filled("Ellipse", 1, BLACK, Square(r / 10))};
    default:
        return {};
    }
}

// A gauge of 0 to 100, open at the bottom unless it is asked to be closed, in the test's colours.
class CGauge {
public:
    explicit CGauge(int r, bool bFull = false, double fOffset = 0) : m(r, bFull, fOffset)
    {
        m.SetCentre(C);
        m.SetMeterRect({0, 0, 400, 400});
        m.SetMax(100);
        m.SetScaleEnd(100);
        m.SetHighLimit(100);
        m.SetFaceColor(FACE);
        m.SetScaleColor(SCALE);
        m.SetPinColor(PIN);
        m.SetLabelColor(LABEL);
        m.SetLowColor(LOW);
        m.SetHighColor(HIGH);
    }
    CRoundMeter* operator->() { return &m; }
    CRoundMeter& operator*() { return m; }

private:
    CRoundMeter m;
};

Lines Scale(CGauge& g)
{
    return Drawn([&](HDC hdc) { EXPECT_EQ(1, g->DrawScale(hdc)); });
}

// The numbers in a figure: "10,12" is two of them.
std::vector<int> Numbers(const std::string& points)
{
    std::vector<int> numbers;
    std::string text = points;
    for (char& c : text)
        if (c == ',') c = ' ';
    std::istringstream in(text);
    for (int n; in >> n;) numbers.push_back(n);
    return numbers;
}

// One tick: its points, and how far a stroke reaches over them.
struct Tick {
    std::string kind;
    std::vector<POINT> points;
    double fHalfPen;
    std::string colors;
};

Tick ParseTick(const std::string& figure)
{
    const Lines w = Split(figure);
    Tick tick{w[0], {}, std::stoi(w[1]) / 2.0, w[2]};
    std::size_t n = 3;
    if (w[0] != "Line") tick.colors += " " + w[n++];
    for (; n < w.size(); ++n) {
        const std::vector<int> xy = Numbers(w[n]);
        tick.points.push_back({xy[0], xy[1]});
    }
    return tick;
}

double Distance(POINT pt)
{
    return std::hypot(pt.x - C.x, pt.y - C.y);
}

// The tick's corners in an order of their own, as they are or mirrored at the dial's upright.
std::vector<std::pair<long, long>> Corners(const Tick& tick, bool bMirrored)
{
    std::vector<std::pair<long, long>> corners;
    for (const POINT& pt : tick.points)
        corners.emplace_back(bMirrored ? 2 * C.x - pt.x : pt.x, pt.y);
    std::sort(corners.begin(), corners.end());
    return corners;
}

// How much a tick paints, roughly: a stroke's length by its width, a polygon's area.
double Weight(const Tick& tick)
{
    const auto& p = tick.points;
    if (tick.kind == "Line")
        return std::hypot(p[0].x - p[1].x, p[0].y - p[1].y) * 2 * tick.fHalfPen;
    double fArea = 0;
    for (std::size_t i = 0; i < p.size(); ++i) {
        const POINT q = p[(i + 1) % p.size()];
        fArea += static_cast<double>(p[i].x) * q.y - static_cast<double>(q.x) * p[i].y;
    }
    return std::fabs(fArea) / 2;
}

// ---- angles ----

TEST(RoundGauge, IsOpenAtTheBottomOrAFullCircleAndTurnsByItsOffset)
{
    struct Row {
        bool bFull;
        double fOffset;
        float fStart, fEnd;
    };
    for (const Row& row : {Row{false, 0, 30, 330}, Row{true, 0, 0, 360}, Row{false, 45, 75, 375},
                           Row{true, -90, -90, 270}}) {
        CGauge g(100, row.bFull, row.fOffset);
        EXPECT_EQ(row.fStart, g->StartAngle());
        EXPECT_EQ(row.fEnd, g->EndAngle());
        EXPECT_EQ(row.fStart, g->AngleOf(-7));
        EXPECT_EQ((row.fStart + row.fEnd) / 2, g->AngleOf(50));
        EXPECT_EQ(row.fEnd, g->AngleOf(2000));
    }
}

// ---- axis and ticks ----

TEST(RoundGauge, AxisIsOneBroadBandOrTwoNarrowOnes)
{
    for (const int r : {60, 100, 399}) {
        CGauge g(r, false, 15);
        const Lines one{Band(r / 20, SCALE, r, 45, 345)};
        const Lines two{Band(r / 30, SCALE, r, 45, 345), Band(r / 30, SCALE, r * 9 / 10, 45, 345)};
        const std::vector<std::pair<int, Lines>> styles = {
            {0, one}, {1, one}, {2, two}, {3, two}, {4, {}}, {-1, {}}, {INT_MAX, {}}};
        for (const auto& [nStyle, expected] : styles) {
            g->SetAxisStyle(nStyle);
            EXPECT_EQ(expected, Drawn([&](HDC hdc) { EXPECT_EQ(1, g->DrawAxis(hdc)); }))
                << "style " << nStyle << " radius " << r;
        }
    }
}

TEST(RoundGauge, HasOneTickAtEachIntervalOnItsAngleInScaleColor)
{
    for (int nStyle = -1; nStyle <= 4; ++nStyle) {
        CGauge g(150);
        g->SetAxisStyle(nStyle);
        g->SetTickCount(12);
        const Lines figures = Scale(g);
        ASSERT_EQ(13U, figures.size()) << "style " << nStyle;
        for (int i = 0; i <= 12; ++i) {
            const Tick tick = ParseTick(figures[i]);
            EXPECT_TRUE(tick.kind == "Line" || tick.kind == "Polygon") << figures[i];
            EXPECT_EQ(tick.kind == "Line" ? Hex(SCALE) : Hex(SCALE) + " " + Hex(SCALE),
                      tick.colors);
            // The tick's middle lies on its ray: 25 degrees a tick from 30. Points are whole
            // pixels, so it may be off by one.
            double x = 0, y = 0;
            for (const POINT& pt : tick.points) x += pt.x, y += pt.y;
            x = x / tick.points.size() - C.x, y = y / tick.points.size() - C.y;
            const double fRay = (30 + 25.0 * i) * std::acos(-1.0) / 180;
            EXPECT_LE(std::fabs(x * std::cos(fRay) + y * std::sin(fRay)), 1.01) << figures[i];
            EXPECT_GT(-x * std::sin(fRay) + y * std::cos(fRay), 75) << figures[i];
        }
    }
}

TEST(RoundGauge, TicksStayInsideTheRadiusAtEverySizeAndAreMirrored)
{
    for (const int r : {30, 47, 80, 200, 400})
        for (int nStyle = 0; nStyle <= 3; ++nStyle) {
            CGauge g(r);
            g->SetAxisStyle(nStyle);
            g->SetTickCount(20);
            const Lines figures = Scale(g);
            ASSERT_EQ(21U, figures.size());
            for (int i = 0; i <= 20; ++i) {
                const Tick tick = ParseTick(figures[i]);
                const Tick mirror = ParseTick(figures[20 - i]);
                for (const POINT& pt : tick.points) // corners are whole pixels: half may be lost
                    EXPECT_LE(Distance(pt), r + 0.5) << figures[i] << " radius " << r;
                EXPECT_EQ(tick.fHalfPen, mirror.fHalfPen);
                EXPECT_EQ(Corners(tick, true), Corners(mirror, false)) << figures[i];
            }
        }
}

TEST(RoundGauge, MajorTicksAreHeavierAndEveryIsTheirSpacing)
{
    for (const int r : {40, 100, 400})
        for (int nStyle = 0; nStyle <= 3; ++nStyle)
            for (const unsigned nEvery : {0U, 1U, 4U, 100U}) {
                CGauge g(r, true);
                g->SetAxisStyle(nStyle);
                g->SetTickCount(8);
                // Quarter turns alone, so that all ticks of one kind paint alike.
                g->SetMajorEvery(0);
                const double fMinor = Weight(ParseTick(Scale(g)[4]));
                g->SetMajorEvery(nEvery);
                const Lines figures = Scale(g);
                for (unsigned i = 0; i <= 8; i += 2) {
                    const bool bMajor = nEvery != 0 && i % nEvery == 0;
                    const double fWeight = Weight(ParseTick(figures[i]));
                    EXPECT_TRUE(bMajor ? fWeight > fMinor * 1.2
                                       : std::fabs(fMinor - fWeight) < fMinor / 8 + 1)
                        << figures[i] << " radius " << r;
                }
            }
}

TEST(RoundGauge, PaintsNeitherTicksNorNumbersNorNeedleWithoutAScale)
{
    const std::vector<std::function<void(CRoundMeter&)>> spoilers = {
        [](CRoundMeter& m) { m.SetTickCount(0); }, [](CRoundMeter& m) { m.SetMax(0); },
        [](CRoundMeter& m) { m.SetMin(101); }};
    for (std::size_t n = 0; n < spoilers.size(); ++n) {
        CGauge g(100);
        spoilers[n](*g);
        EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) {
                      EXPECT_EQ(0, g->DrawScale(hdc));
                      EXPECT_EQ(0, g->DrawLabels(hdc));
                      EXPECT_EQ(0, g->DrawPin(hdc, 3, QEL_DRAW_FULL));
                      EXPECT_EQ(0, g->DrawPin(hdc, 3.0F, QEL_DRAW_FULL));
                  }))
            << "spoiler " << n;
    }
}

TEST(RoundGauge, HasNeitherFillNorFrame)
{
    CGauge g(100);
    EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) {
                  EXPECT_EQ(0, g->DrawFill(hdc, 50, 0));
                  EXPECT_EQ(0, g->DrawFill(hdc, 50.0F, 0));
                  EXPECT_EQ(0, g->DrawFrame(hdc));
              }));
}

// ---- numbers ----

std::string Label(int r, int nWidth, int nHeight, float fAngle, const std::string& text,
                  COLORREF clr = LABEL)
{
    const POINT pt = Polar(r * 73 / 100, fAngle);
    const int nLength = static_cast<int>(text.size());
    return "Text " + std::to_string(nWidth) + "x" + std::to_string(nHeight) + "/255 " + Hex(clr) +
           " " + Text({pt.x - nLength * nWidth / 2, pt.y - nHeight / 2}) + " \"" + text + "\"";
}

Lines Labels(CGauge& g)
{
    return Drawn([&](HDC hdc) { EXPECT_EQ(1, g->DrawLabels(hdc)); });
}

TEST(RoundGauge, NumbersStandCentredInsideTheTicks)
{
    CGauge g(100); // the hint is 14: cells of 12 by 24
    g->SetTickCount(4);
    g->SetMajorEvery(1);
    EXPECT_EQ((Lines{Label(100, 12, 24, 30, "0"), Label(100, 12, 24, 105, "25"),
                     Label(100, 12, 24, 180, "50"), Label(100, 12, 24, 255, "75"),
                     Label(100, 12, 24, 330, "100")}),
              Labels(g));
}

TEST(RoundGauge, NumbersUseTheWholeDegreesOfTheTickAngle)
{
    CGauge g(160);
    g->SetTickCount(7); // 30 + 300 / 7 * i: 30, 72.857, 115.71, 158.57, 201.4, 244.2, 287.1, 330
    g->SetMajorEvery(1);
    g->SetScaleEnd(7);
    const int nAngles[] = {30, 72, 115, 158, 201, 244, 287, 330};
    Lines expected; // the hint is 22: cells of 16 by 32
    for (int i = 0; i <= 7; ++i)
        expected.push_back(Label(160, 16, 32, static_cast<float>(nAngles[i]), std::to_string(i)));
    EXPECT_EQ(expected, Labels(g));
}

TEST(RoundGauge, LabelsTheEndsAndTheMajorTicks)
{
    struct Row {
        bool bFull;
        unsigned nTicks, nEvery;
        std::vector<int> labelled;
    };
    const Row rows[] = {{true, 12, 3, {0, 3, 6, 9}},   {false, 10, 0, {0, 10}},
                        {false, 10, 5, {0, 5, 10}},    {true, 10, 0, {0}},
                        {false, 10, 4, {0, 4, 8, 10}}, {true, 10, 5, {0, 5}}};
    for (const Row& row : rows) {
        CGauge g(100, row.bFull);
        g->SetTickCount(row.nTicks);
        g->SetMajorEvery(row.nEvery);
        g->SetScaleEnd(static_cast<int>(row.nTicks));
        Lines texts, expected;
        for (const std::string& figure : Labels(g))
            texts.push_back(figure.substr(figure.find('"')));
        for (const int n : row.labelled) expected.push_back('"' + std::to_string(n) + '"');
        EXPECT_EQ(expected, texts) << row.nTicks << " ticks, every " << row.nEvery;
    }
}

TEST(RoundGauge, NumbersRunBackwardsWhenReversedAndCarryTheirDecimals)
{
    CGauge g(100);
    g->SetTickCount(2);
    g->SetMajorEvery(1);
    g->SetScaleStart(10);
    g->SetScaleEnd(25); // 10, 17.5, 25
    const auto texts = [&] {
        std::string all;
        for (const std::string& figure : Labels(g)) all += figure.substr(figure.find('"'));
        return all;
    };
    EXPECT_EQ("\"10\"\"17.5\"\"25\"", texts());
    g->SetReverse(1);
    EXPECT_EQ("\"25\"\"17.5\"\"10\"", texts());
    g->SetDecimalShift(1); // 17.5 has a decimal of its own: two now
    EXPECT_EQ("\"2.5\"\"1.75\"\"1.0\"", texts());
}

TEST(RoundGauge, NumberSizeFollowsTheRadiusOrTheFontCode)
{
    struct Row {
        int r;
        unsigned nCode;
        int nWidth, nHeight;
    };
    // Code 0 by a seventh of the radius: below 8, 12 and 16, and above.
    const Row rows[] = {{55, 0, 6, 12},   {56, 0, 8, 16},         {83, 0, 8, 16},
                        {84, 0, 12, 24},  {111, 0, 12, 24},       {112, 0, 16, 32},
                        {300, 0, 16, 32}, {300, 1, 6, 12},        {60, 2, 8, 16},
                        {60, 3, 12, 12},  {60, 7, 24, 16},        {60, 10, 32, 32},
                        {60, 11, 6, 12},  {60, 0xFFFFFFFF, 6, 12}};
    for (const Row& row : rows) {
        CGauge g(row.r);
        g->SetFontSize(row.nCode);
        g->SetTickCount(2);
        g->SetMajorEvery(0);
        EXPECT_EQ((Lines{Label(row.r, row.nWidth, row.nHeight, 30, "0"),
                         Label(row.r, row.nWidth, row.nHeight, 330, "100")}),
                  Labels(g))
            << "radius " << row.r << " code " << row.nCode;
    }
}

TEST(RoundGaugeMark, DrawsNothingWithoutAText)
{
    CGauge g(100);
    EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) {
                  EXPECT_EQ(0, CRoundMeterMark(*g, 100, LABEL).Draw(hdc, C, nullptr));
              }));
}

// ---- needle ----

TEST(RoundGauge, NeedlePointsAtTheValueInFiveStyles)
{
    for (const int r : {30, 59, 100, 200})
        for (int nStyle = 0; nStyle < 5; ++nStyle)
            for (const int nValue : {-3, 0, 25, 50, 77, 100, 140}) {
                CGauge g(r);
                g->SetPinStyle(nStyle);
                const int nOnScale = nValue < 0 ? 0 : nValue > 100 ? 100 : nValue;
                const auto a = static_cast<float>(30 + 3.0 * nOnScale);
                EXPECT_EQ(Needle(r, a, nStyle, PIN), Drawn([&](HDC hdc) {
                              EXPECT_EQ(1, g->DrawPin(hdc, nValue, QEL_DRAW_FULL));
                          }))
                    << "style " << nStyle << " value " << nValue << " radius " << r;
            }
}

TEST(RoundGauge, NeedleOfARealValueStandsBetweenWholeOnes)
{
    CGauge g(120, true, 30);
    g->SetMax(10);
    for (const float fValue : {7.25F, 0.5F, -0.25F, 10.5F}) {
        const float fOnScale = fValue < 0 ? 0 : fValue > 10 ? 10 : fValue;
        const auto a = static_cast<float>(30 + fOnScale * 360.0 / 10);
        EXPECT_EQ(Needle(120, a, 0, PIN),
                  Drawn([&](HDC hdc) { EXPECT_EQ(1, g->DrawPin(hdc, fValue, QEL_DRAW_FULL)); }))
            << fValue;
    }
}

TEST(RoundGauge, NeedlePixelsAreThoseOfARawTriangleAndDisc)
{
    CTestBitmap expected(400, 400, FACE), drawn(400, 400, FACE);
    {
        const HDC hdc = expected.Dc();
        const POINT tip = Polar(92, 105), b1 = Polar(33, 280), b2 = Polar(33, 290);
        const POINT blade[] = {b1, b2, tip};
        {
            CTestSelect pen(hdc, ::CreatePen(PS_SOLID, 2, PIN), true);
            CTestSelect brush(hdc, ::CreateSolidBrush(PIN), true);
            ::Polygon(hdc, blade, 3);
        }
        CTestSelect pen(hdc, ::GetStockObject(BLACK_PEN), false);
        CTestSelect brush(hdc, ::GetStockObject(BLACK_BRUSH), false);
        ::Ellipse(hdc, C.x - 6, C.y - 6, C.x + 6, C.y + 6);
    }
    CGauge g(100);
    EXPECT_EQ(1, g->DrawPin(drawn.Dc(), 25, QEL_DRAW_FULL)); // 30 + 25 * 3 = 105
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ("", FirstDifference(expected, drawn));
}

TEST(RoundGaugePin, RefusesStylesThatItDoesNotHave)
{
    for (const int nStyle : {5, 6, 1000, INT_MAX, -1, INT_MIN})
        EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) {
                      EXPECT_EQ(0, CRoundMeterPin(100, PIN, FACE).Draw(hdc, C, 90, nStyle));
                  }))
            << nStyle;
}

TEST(RoundGaugePin, IsNotDrawnAtARadiusThatNobodySees)
{
    for (int nStyle = 0; nStyle < ROUND_PIN_STYLES; ++nStyle)
        for (const int r : {INT_MIN, -1, 0, 32768, INT_MAX}) {
            const Lines none = Drawn([&](HDC hdc) {
                EXPECT_EQ(0, CRoundMeterPin(r, PIN, FACE).Draw(hdc, C, 45, nStyle));
            });
            EXPECT_EQ(Lines{}, none) << r;
        }
}

TEST(RoundGauge, WithoutASpanHasNeitherBandsNorAlarm)
{
    // Turned so far that a float holds no difference between start and end any more.
    for (const double fOffset : {1e12, -1e12}) {
        CGauge gauge(100, false, fOffset);
        ASSERT_EQ(gauge->StartAngle(), gauge->EndAngle());
        const Lines none = Drawn([&](HDC hdc) {
            EXPECT_EQ(0, gauge->DrawAxis(hdc));
            EXPECT_EQ(0, gauge->DrawAlarmZones(hdc));
        });
        EXPECT_EQ(Lines{}, none);
    }
}

TEST(RoundGauge, ErasesTheNeedleWhereItStoodButForBlackHubs)
{
    for (int nStyle = 0; nStyle < 5; ++nStyle) {
        CGauge g(100);
        g->SetPinStyle(nStyle);
        g->SetLastValue(30);
        EXPECT_EQ(Needle(100, 120, nStyle, FACE),
                  Drawn([&](HDC hdc) { EXPECT_EQ(1, g->ErasePin(hdc, 99, 0)); }));
        EXPECT_EQ(Needle(100, 120, nStyle, FACE),
                  Drawn([&](HDC hdc) { EXPECT_EQ(1, g->ErasePin(hdc, 99.5F, 0)); }));
        g->SetReverse(1); // painted at 70
        EXPECT_EQ(Needle(100, 240, nStyle, FACE),
                  Drawn([&](HDC hdc) { EXPECT_EQ(1, g->ErasePin(hdc, 99, 0)); }));
        EXPECT_EQ(Lines{},
                  Drawn([&](HDC hdc) { EXPECT_EQ(1, g->ErasePin(hdc, 99, QEL_DRAW_FULL)); }));
    }
}

// ---- alarm ----

TEST(RoundGauge, AlarmBandsLieOnAGreenOneAndAreMirroredWhenReversed)
{
    const int R = 190, W = 19; // 95 and 9.5 hundredths of 200
    const std::string base = Band(W, GREEN, R, 30, 330);
    struct Row {
        int nLow, nHigh;
        bool bReverse;
        Lines expected;
    };
    const Row rows[] = {
        {10, 70, false, {base, Band(W, LOW, R, 30, 60), Band(W, HIGH, R, 240, 330)}},
        {10, 70, true, {base, Band(W, HIGH, R, 30, 120), Band(W, LOW, R, 300, 330)}},
        {0, 100, false, {base}},
        {0, 100, true, {base}},
        {-20, 130, false, {base}}, // the limits lie outside of the scale
        {0, 60, false, {base, Band(W, HIGH, R, 210, 330)}},
        {25, 100, false, {base, Band(W, LOW, R, 30, 105)}},
        {25, 100, true, {base, Band(W, LOW, R, 255, 330)}},
        // Beyond the scale the bands follow the limit: they are not cut at the ends.
        {105, 200, false, {base, Band(W, LOW, R, 30, 345)}},
    };
    for (const Row& row : rows) {
        CGauge g(200);
        g->SetLowLimit(row.nLow);
        g->SetHighLimit(row.nHigh);
        g->SetReverse(row.bReverse);
        EXPECT_EQ(row.expected, Drawn([&](HDC hdc) { EXPECT_EQ(1, g->DrawAlarmZones(hdc)); }))
            << row.nLow << ".." << row.nHigh << " reverse " << row.bReverse;
    }
}

// A thousandth of the scale, 0.3 degrees, of which both ends are one pixel here.
TEST(RoundGauge, AlarmBandsTooShortForTwoEndsAreLeftOut)
{
    ASSERT_EQ(Text(Polar(95, 30)), Text(Polar(95, 30.3F)));
    ASSERT_EQ(Text(Polar(95, 329.7F)), Text(Polar(95, 330)));
    const std::string base = Band(9, GREEN, 95, 30, 330);
    for (const bool bReverse : {false, true}) {
        CGauge g(100);
        g->SetMax(10000);
        g->SetLowLimit(10);
        g->SetHighLimit(9990);
        g->SetReverse(bReverse);
        EXPECT_EQ(Lines{base}, Drawn([&](HDC hdc) { EXPECT_EQ(1, g->DrawAlarmZones(hdc)); }));
    }
}

TEST(RoundGauge, AnAlarmBandTooShortForTwoEndsLeavesNoPixel)
{
    CGauge g(100);
    g->SetMax(10000);
    g->SetLowLimit(10);
    g->SetHighLimit(9990);
    CTestBitmap drawn(400, 400, FACE);
    EXPECT_EQ(1, g->DrawAlarmZones(drawn.Dc()));
    EXPECT_EQ(0, CountPixels(drawn, LOW) + CountPixels(drawn, HIGH));
    EXPECT_GT(CountPixels(drawn, GREEN), 3000);
}

TEST(RoundGauge, AxisOfAClosedGaugeIsAWholeRing)
{
    for (const int nStyle : {0, 1, 2, 3}) {
        CGauge whole(100, true);
        whole->SetAxisStyle(nStyle);
        EXPECT_EQ(nStyle < 2 ? 1U : 2U,
                  Drawn([&](HDC hdc) { EXPECT_EQ(1, whole->DrawAxis(hdc)); }).size());
    }
}

TEST(RoundGauge, AlarmWithoutARangeIsTheGreenBandAlone)
{
    CGauge g(200);
    g->SetMax(0);
    g->SetLowLimit(50);
    EXPECT_EQ((Lines{Band(19, GREEN, 190, 30, 330)}),
              Drawn([&](HDC hdc) { EXPECT_EQ(1, g->DrawAlarmZones(hdc)); }));
}

// ---- read-out ----

std::string ReadOut(int r, int nWidth, int nHeight, const std::string& text, COLORREF clr)
{
    return "Text " + std::to_string(nWidth) + "x" + std::to_string(nHeight) + "/255 " + Hex(clr) +
           " " +
           Text({C.x - static_cast<int>(text.size()) * nWidth / 2, C.y + r / 2 - nHeight * 2 / 3}) +
           " \"" + text + "\"";
}

TEST(RoundGauge, ReadOutShowsTheScaleNumberWithADecimalMoreThanItsShift)
{
    struct Row {
        int nMax, nStart, nEnd, nValue;
        unsigned nShift;
        bool bReverse;
        const char* pszText;
    };
    const Row rows[] = {
        {10, 0, 10, 5, 0, false, "5.0"},   {10, 0, 100, 5, 0, false, "50.0"},
        {10, 0, 100, 5, 1, false, "5.00"}, {1234, 0, 1234, 1234, 2, false, "12.340"},
        {7, 0, 3, 2, 0, false, "0.9"},     {10, 0, 10, -5, 0, false, "-5.0"},
        {10, 40, 10, 5, 0, true, "20.0"},  {10, 0, 10, 15, 0, false, "15.0"},
        {8, 0, 1, 1, 3, false, "0.0001"},
    };
    for (const Row& row : rows) {
        CGauge g(90); // the hint is 15: cells of 12 by 24
        g->SetMax(row.nMax);
        g->SetScaleStart(row.nStart);
        g->SetScaleEnd(row.nEnd);
        g->SetDecimalShift(row.nShift);
        g->SetReverse(row.bReverse);
        EXPECT_EQ((Lines{ReadOut(90, 12, 24, row.pszText, BLACK)}),
                  Drawn([&](HDC hdc) { EXPECT_EQ(1, g->DrawValueText(hdc, row.nValue)); }));
        const auto fValue = static_cast<float>(row.nValue);
        EXPECT_EQ((Lines{ReadOut(90, 12, 24, row.pszText, BLACK)}),
                  Drawn([&](HDC hdc) { EXPECT_EQ(1, g->DrawValueText(hdc, fValue)); }));
    }
}

TEST(RoundGauge, ReadOutOfARealValueKeepsItsFraction)
{
    CGauge g(60); // 10: cells of 8 by 16
    EXPECT_EQ((Lines{ReadOut(60, 8, 16, "12.5", BLACK)}),
              Drawn([&](HDC hdc) { EXPECT_EQ(1, g->DrawValueText(hdc, 12.5F)); }));
    g->SetFontSize(6);
    EXPECT_EQ((Lines{ReadOut(60, 16, 32, "12.5", BLACK)}),
              Drawn([&](HDC hdc) { EXPECT_EQ(1, g->DrawValueText(hdc, 12.5F)); }));
}

TEST(RoundGauge, ReadOutNeedsTicksAndAMaximum)
{
    for (const bool bTicks : {true, false}) {
        CGauge g(90);
        bTicks ? g->SetTickCount(0) : g->SetMax(0);
        EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) {
                      EXPECT_EQ(0, g->DrawValueText(hdc, 5));
                      EXPECT_EQ(0, g->DrawValueText(hdc, 5.0F));
                  }));
    }
}

// The text that a whole draw ends with, without what it says.
std::string ReadOutColor(CGauge& g, const std::function<void(HDC)>& draw)
{
    g->SetShowValue(1);
    const Lines lines = Drawn(draw);
    const std::vector<std::string> words = lines.empty() ? Lines{} : Split(lines.back());
    return words.size() > 2 && words[0] == "Text" ? words[2] : "no text";
}

void SetZones(CGauge& g, bool bReverse)
{
    g->SetLowLimit(20);
    g->SetHighLimit(65);
    g->SetReverse(bReverse);
}

// The colour is that of the zone in which the value before is: the new one is stored last.
TEST(RoundGauge, ReadOutIsGreenWhenTheValueBeforeWasStrictlyBetweenTheLimitsAndRedElse)
{
    for (const bool bReverse : {false, true})
        for (int nValue = 0; nValue <= 100; nValue += 5) {
            // Reversed, value and limits are both mirrored: the zones stay with the value.
            const auto zone = [](int n) { return Hex(n > 20 && n < 65 ? GREEN : RED); };
            const int nNext = nValue > 20 && nValue < 65 ? 80 : 40;
            CGauge g(90);
            SetZones(g, bReverse);
            const auto draw = [&](int n, uint32_t nFlags) {
                return ReadOutColor(g, [&](HDC hdc) { EXPECT_EQ(1, g->Draw(hdc, n, nFlags)); });
            };
            EXPECT_EQ(Hex(BLACK), draw(nValue, QEL_DRAW_FULL));
            g->SetShowAlarm(1);
            for (const uint32_t nFlags : {static_cast<uint32_t>(QEL_DRAW_FULL), 0U}) {
                EXPECT_EQ(zone(nValue), draw(nNext, nFlags)) << nValue << " reverse " << bReverse;
                EXPECT_EQ(zone(nNext), draw(nNext, nFlags)) << "one draw later";
                EXPECT_EQ(zone(nNext), draw(nValue, nFlags));
            }
        }
}

TEST(RoundGauge, ReadOutOfARealValueTakesItsColorFromTheWholePartOfTheOneBefore)
{
    for (const bool bReverse : {false, true}) {
        CGauge g(90);
        SetZones(g, bReverse);
        g->SetShowAlarm(1);
        const auto draw = [&](float f) {
            return ReadOutColor(g, [&](HDC hdc) { EXPECT_EQ(1, g->Draw(hdc, f, 0)); });
        };
        EXPECT_EQ(Hex(RED), draw(20.75F)); // the angle of 0 before the first one
        EXPECT_EQ(Hex(RED), draw(64.5F));  // 20, which is a limit
        EXPECT_EQ(Hex(GREEN), draw(65.5F));
        EXPECT_EQ(Hex(RED), draw(30)); // 65
        EXPECT_EQ(Hex(GREEN), draw(0));
    }
}

TEST(RoundGauge, ReadOutOfTheFirstDrawHasTheColorOfZero)
{
    for (const bool bReverse : {false, true})
        for (const int nLow : {-50, 5}) {
            CGauge g(90);
            g->SetMin(-100);
            SetZones(g, bReverse);
            g->SetLowLimit(nLow);
            g->SetShowAlarm(1);
            EXPECT_EQ(Hex(nLow < 0 ? GREEN : RED), ReadOutColor(g, [&](HDC hdc) {
                          EXPECT_EQ(1, g->Draw(hdc, 90, QEL_DRAW_FULL));
                      }));
        }
}

int CALLBACK CollectWeight(HDC, HANDLETABLE*, const ENHMETARECORD* pRecord, int, LPARAM lParam)
{
    if (pRecord->iType == EMR_EXTCREATEFONTINDIRECTW)
        reinterpret_cast<std::vector<long>*>(lParam)->push_back(
            reinterpret_cast<const EMREXTCREATEFONTINDIRECTW*>(pRecord)->elfw.elfLogFont.lfWeight);
    return 1;
}

std::vector<long> FontWeights(const std::function<void(HDC)>& draw)
{
    const HDC hdc = ::CreateEnhMetaFileA(nullptr, nullptr, nullptr, nullptr);
    draw(hdc);
    const HENHMETAFILE hFile = ::CloseEnhMetaFile(hdc);
    std::vector<long> weights;
    const RECT rc{0, 0, 1, 1};
    ::EnumEnhMetaFile(nullptr, hFile, CollectWeight, &weights, &rc);
    ::DeleteEnhMetaFile(hFile);
    return weights;
}

TEST(RoundGauge, ReadOutIsBoldAndNumbersAreNot)
{
    CGauge g(90);
    EXPECT_EQ(std::vector<long>{FW_BOLD}, FontWeights([&](HDC hdc) { g->DrawValueText(hdc, 5); }));
    const std::vector<long> labels = FontWeights([&](HDC hdc) { g->DrawLabels(hdc); });
    ASSERT_FALSE(labels.empty());
    for (const long nWeight : labels) EXPECT_LE(nWeight, FW_NORMAL);
}

// ---- the whole gauge ----

void ShowAll(CRoundMeter& m)
{
    m.SetShowPin(1);
    m.SetShowScale(1);
    m.SetShowAxis(1);
    m.SetShowLabels(1);
    m.SetShowFill(1);
    m.SetShowAlarm(1);
    m.SetShowFrame(1);
    m.SetShowValue(1);
    m.SetLowLimit(10);
    m.SetHighLimit(80);
}

TEST(RoundGauge, PaintsItsLayersFromTheEraseToTheNeedle)
{
    CGauge g(150);
    ShowAll(*g);
    for (const uint32_t nFlags : {0U, static_cast<uint32_t>(QEL_DRAW_FULL)}) {
        g->SetLastValue(20);
        Lines expected = Drawn([&](HDC hdc) {
            g->ErasePin(hdc, 40, nFlags);
            g->DrawAlarmZones(hdc);
            g->DrawAxis(hdc);
            g->DrawValueText(hdc, 40);
            g->DrawScale(hdc);
            g->DrawLabels(hdc);
            g->DrawPin(hdc, 40, nFlags);
        });
        EXPECT_EQ(nFlags ? 0 : 1,
                  std::count(expected.begin(), expected.end(), Needle(150, 90, 0, FACE)[0]));
        EXPECT_EQ(expected, Drawn([&](HDC hdc) { EXPECT_EQ(1, g->Draw(hdc, 40, nFlags)); }));
        EXPECT_EQ(40, g->GetLastValue());
    }
}

TEST(RoundGauge, ARealValueIsErasedAtItsWholePart)
{
    CGauge g(100);
    g->SetShowPin(1);
    CRecording first;
    EXPECT_EQ(1, g->Draw(first.Dc(), 7.9F, QEL_DRAW_FULL));
    EXPECT_EQ(Needle(100, static_cast<float>(30 + 7.9F * 3.0), 0, PIN), Figures(first));
    EXPECT_EQ(7, g->GetLastValue());
    EXPECT_EQ(Needle(100, 51, 0, FACE),
              Drawn([&](HDC hdc) { EXPECT_EQ(1, g->ErasePin(hdc, 50, 0)); }));
}

TEST(RoundGauge, LeavesTheDeviceContextAsItWas)
{
    for (int nStyle = 0; nStyle < 6; ++nStyle) {
        CGauge g(150);
        ShowAll(*g);
        g->SetPinStyle(nStyle);
        g->SetAxisStyle(nStyle);
        CTestBitmap bitmap(400, 400);
        const HDC hdc = bitmap.Dc();
        MarkState(hdc);
        const std::string before = DcState(hdc);
        EXPECT_EQ(1, g->Draw(hdc, 40, QEL_DRAW_FULL));
        EXPECT_EQ(1, g->Draw(hdc, 60.5F, 0));
        EXPECT_FALSE(IsBlank(bitmap));
        EXPECT_EQ(before, DcState(hdc));
    }
}

TEST(RoundGauge, LeavesNoGdiObjectBehind)
{
    CTestBitmap bitmap(400, 400);
    CGauge g(150);
    ShowAll(*g);
    const auto drawAll = [&] {
        for (int nStyle = -1; nStyle < 6; ++nStyle) {
            g->SetPinStyle(nStyle);
            g->SetAxisStyle(nStyle);
            g->Draw(bitmap.Dc(), 40, 0);
            g->Draw(bitmap.Dc(), 40.5F, 0);
        }
    };
    drawAll(); // the system's own caches fill once
    const std::size_t nBefore = SpareObjects();
    ASSERT_GT(nBefore, 1000U);
    for (int i = 0; i < 5; ++i) drawAll();
    EXPECT_EQ(nBefore, SpareObjects());
}

TEST(RoundGauge, NoValueOfAnyFieldCrashesOrHangs)
{
    constexpr int EXTREMES[] = {INT_MIN, INT_MIN + 1, -1, 0, 1, 3000, INT_MAX};
    using Setter = void (*)(CRoundMeter&, int);
    constexpr Setter SETTERS[] = {
        [](CRoundMeter& m, int n) { m.SetMin(n); },
        [](CRoundMeter& m, int n) { m.SetMax(n); },
        [](CRoundMeter& m, int n) { m.SetScaleStart(n); },
        [](CRoundMeter& m, int n) { m.SetScaleEnd(n); },
        [](CRoundMeter& m, int n) { m.SetLowLimit(n), m.SetHighLimit(-1 - n); },
        [](CRoundMeter& m, int n) { m.SetTickCount(static_cast<uint32_t>(n)); },
        [](CRoundMeter& m, int n) { m.SetMajorEvery(static_cast<uint32_t>(n)); },
        [](CRoundMeter& m, int n) { m.SetDecimalShift(static_cast<uint32_t>(n)); },
        [](CRoundMeter& m, int n) { m.SetFontSize(static_cast<uint32_t>(n)); },
        [](CRoundMeter& m, int n) { m.SetPinStyle(n), m.SetAxisStyle(n); },
        [](CRoundMeter& m, int n) { m.SetLastValue(n), m.SetReverse(1); },
        [](CRoundMeter& m, int n) { m.SetMin(INT_MIN), m.SetMax(n); },
    };
    CTestBitmap bitmap(400, 400);
    const ULONGLONG nStart = ::GetTickCount64();
    for (const Setter set : SETTERS)
        for (const int n : EXTREMES) {
            CGauge g(120);
            ShowAll(*g);
            set(*g, n);
            const std::string before = DcState(bitmap.Dc());
            for (const int nValue : {INT_MIN, 0, 50, INT_MAX})
                EXPECT_EQ(1, g->Draw(bitmap.Dc(), nValue, 0));
            for (const float fValue : {std::numeric_limits<float>::infinity(), -1e38F,
                                       std::numeric_limits<float>::quiet_NaN()})
                EXPECT_EQ(1, g->Draw(bitmap.Dc(), fValue, 0));
            EXPECT_EQ(before, DcState(bitmap.Dc()));
        }
    EXPECT_LT(::GetTickCount64() - nStart, 60000U);
}

TEST(RoundGauge, ManyTicksAreDrawnAsTenThousand)
{
    for (const uint32_t nTicks : {10000U, 10001U, 0xFFFFFFFFU}) {
        CGauge g(100);
        g->SetTickCount(nTicks);
        EXPECT_EQ(10001U, Scale(g).size()) << nTicks;
    }
}

TEST(RoundGauge, DrawsAtEveryRadiusWithoutHarm)
{
    CTestBitmap bitmap(400, 400);
    for (const int r : {-300, -1, 0, 1, 2, 3, 7, 14, 29, 3000, 3300}) {
        CGauge g(r);
        ShowAll(*g);
        for (int nStyle = 0; nStyle < 5; ++nStyle) {
            g->SetPinStyle(nStyle);
            g->SetAxisStyle(nStyle);
            const std::string before = DcState(bitmap.Dc());
            EXPECT_EQ(1, g->Draw(bitmap.Dc(), 40, 0)) << r;
            EXPECT_EQ(before, DcState(bitmap.Dc())) << r;
        }
    }
}

} // namespace
