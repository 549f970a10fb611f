// The plain dial: every layer against figures worked out here from radius, angles and range, the
// clip around them, and the needle that is erased and drawn again. The code is meter/ArcMeter.*.
#include "meter/ArcMeter.h"

#include "base/DegTrig.h"
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Figures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cstdio>
#include <functional>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Painter = std::function<void(HDC)>;

constexpr POINT C{120, 115};
constexpr RECT BOX{0, 0, 240, 240};
constexpr int R = 100;
constexpr COLORREF FACE = 0x102030, SCALE = 0x405060, PIN = 0x0000AA, LABEL = 0x00BB11;
constexpr COLORREF LOW = 0xCC0000, HIGH = 0x00CCCC;

// ---- what should be drawn ----

std::string Square(int r)
{
    return Text({C.x - r, C.y - r}) + "," + Text({C.x + r, C.y + r});
}

POINT Polar(int r, float a)
{
    return {C.x - static_cast<int>(r * DegSin(a)), C.y + static_cast<int>(r * DegCos(a))};
}

std::string Line(int nWidth, COLORREF clr, int r1, int r2, float a)
{
    return "Line " + std::to_string(nWidth) + " " + Hex(clr) + " " + Text(Polar(r1, a)) + " " +
           Text(Polar(r2, a));
}

std::string Arc(int nWidth, COLORREF clr, int r, float fStart, float fEnd)
{
    return "Arc " + std::to_string(nWidth) + " " + Hex(clr) + " " + Square(r) + " start " +
           Text(Polar(r, fEnd)) + " end " + Text(Polar(r, fStart));
}

Lines Needle(int r, float a)
{
    return {"Ellipse 3 " + Hex(PIN) + " " + Hex(FACE) + " " + Square(3),
            Line(3, PIN, 5, r - 21, a)};
}

HFONT LabelFont()
{
    return ::CreateFontA(8, 8, 0, 0, 0, 0, 0, 0, 255, 0, 0, 0, 0, nullptr);
}

int WidthOf(const std::string& text)
{
    const CTestBitmap bitmap(1, 1);
    CTestSelect font(bitmap.Dc(), LabelFont(), true);
    SIZE size{};
    ::GetTextExtentPoint32A(bitmap.Dc(), text.data(), static_cast<int>(text.size()), &size);
    return size.cx;
}

// Where the label of a tick at an angle stands, by the rule of its quadrant.
POINT LabelPlace(int r, float fAngle, const std::string& text, const RECT& rc = BOX)
{
    const int a = (static_cast<int>(fAngle) % 360 + 360) % 360;
    const int w = WidthOf(text);
    const auto s = [](int n) { return DegSin(static_cast<float>(n)); };
    const auto c = [](int n) { return DegCos(static_cast<float>(n)); };
    double x = 0, y = 0;
    if (a <= 90)
        x = (s(a) + 1) * w / 2, y = s(a) * 8 / 2;
    else if (a <= 180)
        x = (c(a - 90) + 1) * w / 2, y = (s(a - 90) + 1) * 8 / 2;
    else if (a <= 270)
        x = c(a - 180) * w / 2, y = (c(a - 180) + 1) * 8 / 2;
    else
        x = s(a - 270) * w / 2, y = c(a - 270) * 8 / 2;
    POINT pt = Polar(r - 10, static_cast<float>(a));
    pt.x = std::max<LONG>(pt.x - static_cast<int>(x), rc.left);
    pt.y = std::max<LONG>(pt.y - static_cast<int>(y), rc.top);
    if (pt.x + w > rc.right) pt.x = rc.right - w;
    if (pt.y + 8 > rc.bottom) pt.y = rc.bottom - 8;
    return pt;
}

std::string Label(float fAngle, const std::string& text, const RECT& rc = BOX)
{
    return "Text 8x8/255 " + Hex(LABEL) + " " + Text(LabelPlace(R, fAngle, text, rc)) + " \"" +
           text + "\"";
}

// ---- the dial on trial ----

// 0 to 100 over 30 to 330 degrees unless asked otherwise, in the test's colours.
class CDial {
public:
    explicit CDial(int r = R, float fStart = 30, float fEnd = 330, double fOffset = 0)
        : m(r, fStart, fEnd, fOffset)
    {
        m.SetCentre(C);
        m.SetMeterRect(BOX);
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
    CArcMeter* operator->() { return &m; }
    CArcMeter& operator*() { return m; }
    CDial& ShowAll()
    {
        for (auto pfn : {&CMeter::SetShowPin, &CMeter::SetShowScale, &CMeter::SetShowAxis,
                         &CMeter::SetShowLabels, &CMeter::SetShowFill, &CMeter::SetShowAlarm,
                         &CMeter::SetShowFrame, &CMeter::SetShowValue})
            (m.*pfn)(1);
        return *this;
    }

private:
    CArcMeter m;
};

Lines AlarmArcs(CDial& dial)
{
    return Drawn([&](HDC hdc) { EXPECT_EQ(1, dial->DrawAlarmZones(hdc)); });
}

Lines Scale(CDial& dial)
{
    return Drawn([&](HDC hdc) { EXPECT_EQ(1, dial->DrawScale(hdc)); });
}

Lines Labels(CDial& dial)
{
    return Drawn([&](HDC hdc) { EXPECT_EQ(1, dial->DrawLabels(hdc)); });
}

// ---- fields and angles ----

TEST(ArcMeter, BeginsEmptyWithGreyPartsOnABlackFace)
{
    const CArcMeter m(77, 20, 340, 0);
    EXPECT_TRUE(::IsRectEmpty(&m.MeterRect()));
    EXPECT_EQ("0,0", Text(m.Centre()));
    EXPECT_EQ(0x000000U, m.FaceColor());
    EXPECT_EQ(0xAAAAAAU, m.ScaleColor());
    EXPECT_EQ(0xAAAAAAU, m.PinColor());
    EXPECT_EQ(0xAAAAAAU, m.LabelColor());
    EXPECT_EQ(0x000000U, m.LowColor());
    EXPECT_EQ(0x000000U, m.HighColor());
    EXPECT_EQ(77, m.Radius());
    EXPECT_EQ(20.0F, m.StartAngle());
    EXPECT_EQ(340.0F, m.EndAngle());
    EXPECT_EQ(0.0, m.AngleOffset());
    EXPECT_EQ(0, m.PinStyle());
    EXPECT_EQ(0, m.AxisStyle());
}

TEST(ArcMeter, SettersStoreWhatTheyAreGiven)
{
    CDial dial;
    EXPECT_EQ(FACE, dial->FaceColor());
    EXPECT_EQ(SCALE, dial->ScaleColor());
    EXPECT_EQ(PIN, dial->PinColor());
    EXPECT_EQ(LABEL, dial->LabelColor());
    EXPECT_EQ(LOW, dial->LowColor());
    EXPECT_EQ(HIGH, dial->HighColor());
    EXPECT_EQ(Text(C), Text(dial->Centre()));
    EXPECT_TRUE(::EqualRect(&BOX, &dial->MeterRect()));
    for (const int n : {3, -1, INT_MIN, INT_MAX}) {
        dial->SetPinStyle(n);
        dial->SetAxisStyle(n / 2);
        EXPECT_EQ(n, dial->PinStyle());
        EXPECT_EQ(n / 2, dial->AxisStyle());
    }
}

TEST(ArcMeter, MapsValuesToAnglesAndTurnsByItsOffset)
{
    CDial dial(R, 30, 330);
    dial->SetMax(10);
    EXPECT_EQ(180.0F, dial->AngleOf(5));
    EXPECT_EQ(30.0F, dial->AngleOf(-3));
    EXPECT_EQ(330.0F, dial->AngleOf(12));
    EXPECT_EQ(195.0F, dial->AngleOf(5.5));
    CDial turned(R, 30, 330, -45.5);
    turned->SetMax(10);
    EXPECT_EQ(-15.5F, turned->StartAngle());
    EXPECT_EQ(284.5F, turned->EndAngle());
    EXPECT_EQ(-45.5, turned->AngleOffset());
    EXPECT_EQ(134.5F, turned->AngleOf(5));
    EXPECT_EQ(14.5F, turned->TickAngle(1));
}

// ---- ticks and axis ----

TEST(ArcMeter, TicksRunFromTheAxisOutwardAndMajorOnesAreTwoPixelsWide)
{
    for (const unsigned nTicks : {1U, 7U, 10U, 60U})
        for (const unsigned nEvery : {0U, 1U, 3U, 5U, 1000U, 0xFFFFFFFFU}) {
            CDial dial;
            dial->SetTickCount(nTicks);
            dial->SetMajorEvery(nEvery);
            Lines expected;
            for (unsigned i = 0; i <= nTicks; ++i) {
                const bool bMajor = nEvery != 0 && i % nEvery == 0;
                const auto a = static_cast<float>(30 + i * 300.0 / nTicks);
                expected.push_back(Line(bMajor ? 2 : 1, SCALE, R - 18, R - 14, a));
            }
            EXPECT_EQ(expected, Scale(dial)) << nTicks << " ticks, major every " << nEvery;
        }
}

TEST(ArcMeter, AboveTenThousandTicksDrawsTenThousand)
{
    CDial dial(90);
    dial->SetTickCount(10000);
    dial->SetMajorEvery(2500);
    const Lines expected = Scale(dial);
    ASSERT_EQ(10001U, expected.size());
    EXPECT_EQ(Line(2, SCALE, 72, 76, 180), expected[5000]);
    EXPECT_EQ(Line(1, SCALE, 72, 76, 30 + 300 * 0.3F), expected[3000]);
    for (const unsigned nTicks : {10001U, 0xFFFFFFFFU}) {
        dial->SetTickCount(nTicks);
        EXPECT_TRUE(expected == Scale(dial)) << nTicks;
        EXPECT_EQ(nTicks, dial->GetTickCount());
    }
}

TEST(ArcMeter, AxisIsAnArcOverTheWholeSpanUnderTheTicks)
{
    for (const int r : {25, 60, R, 400}) {
        CDial dial(r, 40, 300);
        EXPECT_EQ((Lines{Arc(1, SCALE, r - 18, 40, 300)}),
                  Drawn([&](HDC hdc) { EXPECT_EQ(1, dial->DrawAxis(hdc)); }));
    }
    CDial none(18); // the axis' radius is 0
    EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) { EXPECT_EQ(0, none->DrawAxis(hdc)); }));
}

TEST(ArcMeter, SmallRadiiCountAsOneStepByStep)
{
    CDial dial(10); // 8, then -4 counts as 1, then -3 as 1
    dial->SetTickCount(1);
    dial->SetMajorEvery(0);
    EXPECT_EQ((Lines{Line(1, SCALE, 1, 1, 30), Line(1, SCALE, 1, 1, 330)}), Scale(dial));
    // Its axis would have both ends on the centre; a closed one is a ring all the same.
    EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) { EXPECT_EQ(0, dial->DrawAxis(hdc)); }));
    CDial closed(10, 0, 360);
    EXPECT_EQ((Lines{Arc(1, SCALE, 1, 0, 360)}),
              Drawn([&](HDC hdc) { EXPECT_EQ(1, closed->DrawAxis(hdc)); }));
}

// ---- numbers ----

TEST(ArcMeter, NumbersStandAtMajorTicksAndBothEnds)
{
    struct Row {
        float fStart, fEnd;
        unsigned nTicks, nEvery;
        std::vector<unsigned> labelled;
    };
    const Row rows[] = {
        {30, 330, 10, 5, {0, 5, 10}},
        {30, 330, 10, 0, {0, 10}},
        {30, 330, 10, 4, {0, 4, 8, 10}},
        {30, 330, 10, 100, {0, 10}},
        {30, 330, 3, 1, {0, 1, 2, 3}},
        {0, 360, 12, 3, {0, 3, 6, 9}}, // the last would stand on the first
        {0, 360, 12, 5, {0, 5, 10}},
        {0, 360, 4, 0, {0}},
        {20.2F, 380.9F, 4, 2, {0, 2}}, // 20 and 380, whole degrees
        {20.9F, 381, 4, 2, {0, 2, 4}}, // 20 and 381
        {90, 450, 4, 4, {0}},
        {-90, 270, 4, 4, {0}}, // a full circle from below zero
    };
    for (const Row& row : rows) {
        CDial dial(R, row.fStart, row.fEnd);
        dial->SetTickCount(row.nTicks);
        dial->SetMajorEvery(row.nEvery);
        dial->SetScaleEnd(static_cast<int>(row.nTicks) * 2); // whole numbers
        Lines expected;
        for (const unsigned i : row.labelled)
            expected.push_back(Label(dial->TickAngle(i), std::to_string(i * 2)));
        EXPECT_EQ(expected, Labels(dial)) << row.fStart << ".." << row.fEnd << ", " << row.nTicks;
        for (unsigned i = 0; i <= row.nTicks; ++i)
            EXPECT_EQ(std::count(row.labelled.begin(), row.labelled.end(), i) > 0,
                      dial->HasLabel(i));
    }
}

TEST(ArcMeter, NumbersDivideTheScaleAndFollowReverseAndShift)
{
    CDial dial;
    dial->SetTickCount(4);
    dial->SetMajorEvery(1);
    dial->SetScaleStart(-10);
    dial->SetScaleEnd(40); // whatever the range: 12.5 a tick
    EXPECT_EQ((Lines{Label(30, "-10"), Label(105, "2.5"), Label(180, "15"), Label(255, "27.5"),
                     Label(330, "40")}),
              Labels(dial));
    dial->SetReverse(1);
    EXPECT_EQ((Lines{Label(30, "40"), Label(105, "27.5"), Label(180, "15"), Label(255, "2.5"),
                     Label(330, "-10")}),
              Labels(dial));
    dial->SetDecimalShift(1);
    EXPECT_EQ((Lines{Label(30, "4.0"), Label(105, "2.75"), Label(180, "1.5"), Label(255, "0.25"),
                     Label(330, "-1.0")}),
              Labels(dial));
}

TEST(ArcMeter, NumbersAreDividedInRealNumbers)
{
    CDial dial;
    dial->SetTickCount(3);
    dial->SetMajorEvery(1);
    dial->SetScaleEnd(10); // 10 / 3 = 3.3, 20 / 3 = 6.7
    EXPECT_EQ((Lines{Label(30, "0"), Label(130, "3.3"), Label(230, "6.7"), Label(330, "10")}),
              Labels(dial));
}

TEST(ArcMeter, NumbersAreKeptInsideTheMeterRectangle)
{
    const RECT rc{60, 40, 190, 150}; // smaller than the dial on all sides
    CDial dial;
    dial->SetMeterRect(rc);
    dial->SetTickCount(8);
    dial->SetMajorEvery(1);
    dial->SetScaleEnd(8000);
    Lines expected;
    for (unsigned i = 0; i <= 8; ++i) {
        const std::string text = std::to_string(i * 1000);
        const POINT pt = LabelPlace(R, dial->TickAngle(i), text, rc);
        EXPECT_TRUE(pt.x >= 60 && pt.y >= 40 && pt.x + WidthOf(text) <= 190 && pt.y + 8 <= 150);
        expected.push_back(Label(dial->TickAngle(i), text, rc));
    }
    EXPECT_EQ(expected, Labels(dial));
}

// ---- needle ----

TEST(ArcMeter, NeedleIsADiscAndALineAtTheValue)
{
    CDial dial;
    for (const uint32_t nFlags : {0U, 1U})
        for (const int v : {-5, 0, 1, 33, 50, 99, 100, 1000}) {
            const float a = static_cast<float>(30 + 3 * std::min(std::max(v, 0), 100));
            const auto fValue = static_cast<float>(v);
            EXPECT_EQ(Needle(R, a),
                      Drawn([&](HDC hdc) { EXPECT_EQ(1, dial->DrawPin(hdc, v, nFlags)); }));
            EXPECT_EQ(Needle(R, a),
                      Drawn([&](HDC hdc) { EXPECT_EQ(1, dial->DrawPin(hdc, fValue, nFlags)); }));
        }
    EXPECT_EQ(Needle(R, 181.5F),
              Drawn([&](HDC hdc) { EXPECT_EQ(1, dial->DrawPin(hdc, 50.5F, 0)); }));
}

TEST(ArcMeter, ANeedleBelowFourPixelsIsNotDrawn)
{
    for (const int r : {-3, 0, 20, 24}) { // 24: the needle would be 3 long
        CDial dial(r);
        EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) {
                      EXPECT_EQ(0, dial->DrawPin(hdc, 50, 0));
                      EXPECT_EQ(0, dial->DrawPin(hdc, 50.0F, 0));
                      EXPECT_EQ(0, dial->ErasePin(hdc, 50, 0));
                      EXPECT_EQ(0, dial->ErasePin(hdc, 50.0F, 1));
                  }))
            << r;
    }
    CDial dial(25);
    EXPECT_EQ(Needle(25, 180), Drawn([&](HDC hdc) { EXPECT_EQ(1, dial->DrawPin(hdc, 50, 0)); }));
}

TEST(ArcMeter, ErasesTheLineAtTheStoredWholeValueAndNotTheDisc)
{
    CDial dial;
    dial->SetLastValue(20);
    const Lines expected{Line(3, FACE, 5, R - 21, 90)};
    EXPECT_EQ(expected, Drawn([&](HDC hdc) { EXPECT_EQ(1, dial->ErasePin(hdc, 77, 0)); }));
    EXPECT_EQ(expected, Drawn([&](HDC hdc) { EXPECT_EQ(1, dial->ErasePin(hdc, 77.5F, 2)); }));
    dial->SetReverse(1);
    EXPECT_EQ((Lines{Line(3, FACE, 5, R - 21, 270)}),
              Drawn([&](HDC hdc) { EXPECT_EQ(1, dial->ErasePin(hdc, 77, 0)); }));
}

TEST(ArcMeter, AFullDrawErasesNothing)
{
    CDial dial;
    dial->SetLastValue(20);
    for (const uint32_t nFlags : {1U, 3U, 0xFFFFFFFFU})
        EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) {
                      EXPECT_EQ(1, dial->ErasePin(hdc, 77, nFlags));
                      EXPECT_EQ(1, dial->ErasePin(hdc, 77.0F, nFlags));
                  }));
    dial.ShowAll();
    for (const std::string& figure :
         Drawn([&](HDC hdc) { EXPECT_EQ(1, dial->Draw(hdc, 40, QEL_DRAW_FULL)); }))
        EXPECT_NE(0U, figure.find("Line 3 " + Hex(FACE))) << figure;
}

TEST(ArcMeter, AfterARealValueErasesAtItsWholePart)
{
    CDial dial;
    dial->SetMax(10);
    dial->SetShowPin(1);
    Drawn([&](HDC hdc) { dial->Draw(hdc, 7.9F, QEL_DRAW_FULL); });
    Lines expected{Line(3, FACE, 5, R - 21, 30 + 7 * 30)};
    for (const std::string& line : Needle(R, 90)) expected.push_back(line);
    EXPECT_EQ(expected, Drawn([&](HDC hdc) { dial->Draw(hdc, 2.0F, 0); }));
}

// ---- alarm zones ----

TEST(ArcMeter, AlarmArcsLieBelowBetweenAndAboveTheLimits)
{
    struct Row {
        int nLow, nHigh;
        Lines arcs;
    };
    const int z = R - 25;
    const Row rows[] = {
        {20, 80, {Arc(2, LOW, z, 30, 90), Arc(2, SCALE, z, 90, 270), Arc(2, HIGH, z, 270, 330)}},
        {0, 80, {Arc(2, SCALE, z, 30, 270), Arc(2, HIGH, z, 270, 330)}},
        {20, 100, {Arc(2, LOW, z, 30, 90), Arc(2, SCALE, z, 90, 330)}},
        {0, 100, {Arc(2, SCALE, z, 30, 330)}},
        {50, 50, {Arc(2, LOW, z, 30, 180), Arc(2, HIGH, z, 180, 330)}},
        // Limits outside of the range are not clamped.
        {-20, 80, {Arc(2, SCALE, z, -30, 270), Arc(2, HIGH, z, 270, 330)}},
        {20, 110, {Arc(2, LOW, z, 30, 90), Arc(2, SCALE, z, 90, 360)}},
        {120, 130, {Arc(2, LOW, z, 30, 390), Arc(2, SCALE, z, 390, 420)}},
        // Limits in the wrong order: three arcs that overlap.
        {80, 20, {Arc(2, LOW, z, 30, 270), Arc(2, SCALE, z, 270, 90), Arc(2, HIGH, z, 90, 330)}},
    };
    for (const Row& row : rows) {
        CDial dial;
        dial->SetLowLimit(row.nLow);
        dial->SetHighLimit(row.nHigh);
        EXPECT_EQ(row.arcs, AlarmArcs(dial)) << row.nLow << ".." << row.nHigh;
    }
}

// 0.3 degrees, of which both ends are one pixel here: GDI would draw the whole ring.
TEST(ArcMeter, AlarmArcsTooShortForTwoEndsAreLeftOut)
{
    const int z = R - 25;
    ASSERT_EQ(Text(Polar(z, 30)), Text(Polar(z, 30.3F)));
    ASSERT_EQ(Text(Polar(z, 329.7F)), Text(Polar(z, 330)));
    struct Row {
        int nLow, nHigh;
        Lines arcs;
    };
    const Row rows[] = {
        {0, 999, {Arc(2, SCALE, z, 30, 329.7F)}},
        {1, 1000, {Arc(2, SCALE, z, 30.3F, 330)}},
        {0, 1, {Arc(2, HIGH, z, 30.3F, 330)}},
        {999, 1000, {Arc(2, LOW, z, 30, 329.7F)}},
        {0, 900, {Arc(2, SCALE, z, 30, 300), Arc(2, HIGH, z, 300, 330)}},
    };
    for (const Row& row : rows) {
        CDial dial;
        dial->SetMax(1000);
        dial->SetLowLimit(row.nLow);
        dial->SetHighLimit(row.nHigh);
        EXPECT_EQ(row.arcs, AlarmArcs(dial)) << row.nLow << ".." << row.nHigh;
    }
}

TEST(ArcMeter, AnAlarmArcTooShortForTwoEndsLeavesNoPixel)
{
    CDial dial;
    dial->SetMax(1000);
    dial->SetHighLimit(999);
    CTestBitmap drawn(240, 240);
    EXPECT_EQ(1, dial->DrawAlarmZones(drawn.Dc()));
    EXPECT_EQ(0, CountPixels(drawn, HIGH));
    EXPECT_GT(CountPixels(drawn, SCALE), 300);
}

TEST(ArcMeter, ReversedAlarmZonesAreMirroredAndExchangeTheirColors)
{
    CDial dial;
    dial->SetReverse(1);
    dial->SetLowLimit(10);
    dial->SetHighLimit(70);
    const int z = R - 25;
    // From the start over 0.3 of the span, and from 0.9 of it to the end.
    EXPECT_EQ(
        (Lines{Arc(2, HIGH, z, 30, 120), Arc(2, SCALE, z, 120, 300), Arc(2, LOW, z, 300, 330)}),
        AlarmArcs(dial));
    const CArcMeter::AlarmZones zones = dial->GetAlarmZones();
    EXPECT_EQ(120.0F, zones.fLow);
    EXPECT_EQ(300.0F, zones.fHigh);
    EXPECT_EQ(HIGH, zones.clrAtStart);
    EXPECT_EQ(LOW, zones.clrAtEnd);
}

TEST(ArcMeter, WithoutARangeTheMiddleArcSpansTheScale)
{
    for (const int nMax : {0, -5}) {
        CDial dial;
        dial->SetMax(nMax);
        dial->SetLowLimit(3);
        EXPECT_EQ((Lines{Arc(2, SCALE, R - 25, 30, 330)}), AlarmArcs(dial));
    }
}

// ---- what keeps layers away ----

TEST(ArcMeter, HasNeitherFillNorFrameNorReadOut)
{
    CDial dial;
    EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) {
                  EXPECT_EQ(0, dial->DrawFill(hdc, 50, 0));
                  EXPECT_EQ(0, dial->DrawFill(hdc, 50.0F, 0));
                  EXPECT_EQ(0, dial->DrawFrame(hdc));
                  EXPECT_EQ(0, dial->DrawValueText(hdc, 50));
                  EXPECT_EQ(0, dial->DrawValueText(hdc, 50.0F));
              }));
}

void ExpectNoScale(CDial& dial, const char* pszCase)
{
    SCOPED_TRACE(pszCase);
    EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) {
                  EXPECT_EQ(0, dial->DrawScale(hdc));
                  EXPECT_EQ(0, dial->DrawLabels(hdc));
                  EXPECT_EQ(0, dial->DrawPin(hdc, 3, 0));
                  EXPECT_EQ(0, dial->DrawPin(hdc, 3.0F, 0));
                  EXPECT_EQ(0, dial->ErasePin(hdc, 3, 1));
                  EXPECT_EQ(0, dial->ErasePin(hdc, 3.0F, 0));
              }));
}

TEST(ArcMeter, WithoutRangeOrTicksThereIsAnAxisAndNoScale)
{
    const std::pair<const char*, std::function<void(CArcMeter&)>> spoilers[] = {
        {"no ticks", [](CArcMeter& m) { m.SetTickCount(0); }},
        {"empty range", [](CArcMeter& m) { m.SetMax(0); }},
        {"inverted range", [](CArcMeter& m) { m.SetMin(INT_MAX); }}};
    for (const auto& [pszCase, spoil] : spoilers) {
        CDial dial;
        spoil(*dial);
        ExpectNoScale(dial, pszCase);
        EXPECT_EQ((Lines{Arc(1, SCALE, R - 18, 30, 330)}),
                  Drawn([&](HDC hdc) { EXPECT_EQ(1, dial->DrawAxis(hdc)); }));
    }
}

TEST(ArcMeter, WithoutASpanPaintsNothingAtAll)
{
    for (const float fEnd : {30.0F, 29.0F, -300.0F}) {
        CDial dial(R, 30, fEnd);
        dial->SetLowLimit(20);
        ExpectNoScale(dial, "no span");
        EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) {
                      EXPECT_EQ(0, dial->DrawAxis(hdc));
                      EXPECT_EQ(0, dial->DrawAlarmZones(hdc));
                  }));
        dial.ShowAll();
        EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) { EXPECT_EQ(1, dial->Draw(hdc, 40, 0)); }));
        EXPECT_EQ(40, dial->GetLastValue());
    }
}

// ---- the whole dial ----

TEST(ArcMeter, PaintsFromTheAlarmZonesToTheNeedle)
{
    CDial dial;
    dial.ShowAll();
    dial->SetTickCount(2);
    dial->SetMajorEvery(2);
    dial->SetLowLimit(20);
    dial->SetReverse(1); // the value as 70, the scale from 100 to 0
    dial->SetLastValue(40);
    const int z = R - 25;
    Lines expected{Line(3, FACE, 5, R - 21, 210), // 40 was shown as 60
                   Arc(2, SCALE, z, 30, 270),
                   Arc(2, LOW, z, 270, 330),
                   Arc(1, SCALE, R - 18, 30, 330),
                   Line(2, SCALE, R - 18, R - 14, 30),
                   Line(1, SCALE, R - 18, R - 14, 180),
                   Line(2, SCALE, R - 18, R - 14, 330),
                   Label(30, "100"),
                   Label(330, "0")};
    for (const std::string& line : Needle(R, 240)) expected.push_back(line);
    EXPECT_EQ(expected, Drawn([&](HDC hdc) { EXPECT_EQ(1, dial->Draw(hdc, 30, 0)); }));
    EXPECT_EQ(30, dial->GetLastValue());
}

// Raw calls for a dial with all layers, 0 to 100 with limits 20 and 80.
void RawLine(HDC hdc, int nWidth, COLORREF clr, int r1, int r2, float a)
{
    CTestSelect pen(hdc, ::CreatePen(PS_SOLID, nWidth, clr), true);
    const POINT p1 = Polar(r1, a), p2 = Polar(r2, a);
    ::MoveToEx(hdc, p1.x, p1.y, nullptr);
    ::LineTo(hdc, p2.x, p2.y);
}

void RawArc(HDC hdc, int nWidth, COLORREF clr, int r, float fStart, float fEnd)
{
    CTestSelect pen(hdc, ::CreatePen(PS_SOLID, nWidth, clr), true);
    const POINT p1 = Polar(r, fEnd), p0 = Polar(r, fStart);
    ::Arc(hdc, C.x - r, C.y - r, C.x + r, C.y + r, p1.x, p1.y, p0.x, p0.y);
}

void RawDial(HDC hdc, int nValue)
{
    RawArc(hdc, 2, LOW, R - 25, 30, 90);
    RawArc(hdc, 2, SCALE, R - 25, 90, 270);
    RawArc(hdc, 2, HIGH, R - 25, 270, 330);
    RawArc(hdc, 1, SCALE, R - 18, 30, 330);
    for (int i = 0; i <= 10; ++i)
        RawLine(hdc, i % 5 ? 1 : 2, SCALE, R - 18, R - 14, 30.0F + 30 * i);
    {
        CTestSelect font(hdc, LabelFont(), true);
        ::SetTextColor(hdc, LABEL);
        ::SetBkMode(hdc, TRANSPARENT);
        for (const int n : {0, 50, 100}) {
            const std::string text = std::to_string(n);
            const POINT pt = LabelPlace(R, 30.0F + 3 * n, text);
            ::TextOutA(hdc, pt.x, pt.y, text.data(), static_cast<int>(text.size()));
        }
    }
    {
        CTestSelect pen(hdc, ::CreatePen(PS_SOLID, 3, PIN), true);
        CTestSelect brush(hdc, ::CreateSolidBrush(FACE), true);
        ::Ellipse(hdc, C.x - 3, C.y - 3, C.x + 3, C.y + 3);
    }
    RawLine(hdc, 3, PIN, 5, R - 21, 30.0F + 3 * nValue);
}

CDial& Prepared(CDial& dial)
{
    dial->SetLowLimit(20);
    dial->SetHighLimit(80);
    return dial.ShowAll();
}

TEST(ArcMeter, PixelsAreThoseOfTheRawCalls)
{
    for (const bool bReal : {false, true}) {
        CTestBitmap expected(240, 240, FACE), drawn(240, 240, FACE);
        RawDial(expected.Dc(), 65);
        CDial dial;
        Prepared(dial);
        EXPECT_EQ(1, bReal ? dial->Draw(drawn.Dc(), 65.0F, QEL_DRAW_FULL)
                           : dial->Draw(drawn.Dc(), 65, QEL_DRAW_FULL));
        EXPECT_EQ("", FirstDifference(expected, drawn));
        RawLine(expected.Dc(), 3, FACE, 5, R - 21, 225);
        RawDial(expected.Dc(), 10);
        EXPECT_EQ(1, bReal ? dial->Draw(drawn.Dc(), 10.0F, 0) : dial->Draw(drawn.Dc(), 10, 0));
        EXPECT_EQ("", FirstDifference(expected, drawn));
    }
}

TEST(ArcMeter, UpdatesEndInThePictureOfAFullDraw)
{
    // But for the numbers: their smoothed edges darken each time they are painted over.
    for (const int nReverse : {0, 1}) {
        CTestBitmap updated(240, 240, FACE), fresh(240, 240, FACE);
        CDial dial, other;
        Prepared(dial)->SetReverse(nReverse);
        Prepared(other)->SetReverse(nReverse);
        dial->SetShowLabels(0);
        other->SetShowLabels(0);
        dial->Draw(updated.Dc(), 0, QEL_DRAW_FULL);
        for (const int v : {-10, 5, 21, 22, 77, 100, 150, 63, 64, 3, 42})
            EXPECT_EQ(1, dial->Draw(updated.Dc(), v, 0));
        EXPECT_EQ(1, other->Draw(fresh.Dc(), 42, QEL_DRAW_FULL));
        EXPECT_FALSE(IsBlank(fresh));
        EXPECT_EQ("", FirstDifference(fresh, updated));
    }
}

// ---- clipping ----

TEST(ArcMeter, PaintsInsideItsRectangleAndTheHostsClipAlone)
{
    const RECT rc{50, 30, 200, 140};
    CTestBitmap expected(240, 240, FACE), drawn(240, 240, FACE);
    for (const CTestBitmap* pBitmap : {&expected, &drawn}) {
        ::IntersectClipRect(pBitmap->Dc(), 0, 0, 180, 240);
        ::ExcludeClipRect(pBitmap->Dc(), 100, 60, 130, 70);
    }
    ::SaveDC(expected.Dc());
    ::IntersectClipRect(expected.Dc(), rc.left, rc.top, rc.right, rc.bottom);
    RawArc(expected.Dc(), 1, SCALE, R - 18, 30, 330);
    RawLine(expected.Dc(), 3, PIN, 5, R - 21, 180);
    {
        CTestSelect pen(expected.Dc(), ::CreatePen(PS_SOLID, 3, PIN), true);
        CTestSelect brush(expected.Dc(), ::CreateSolidBrush(FACE), true);
        ::Ellipse(expected.Dc(), C.x - 3, C.y - 3, C.x + 3, C.y + 3);
    }
    RawLine(expected.Dc(), 3, PIN, 5, R - 21, 180);
    ::RestoreDC(expected.Dc(), -1);
    CDial dial;
    dial->SetMeterRect(rc);
    dial->SetShowAxis(1);
    dial->SetShowPin(1);
    EXPECT_EQ(1, dial->Draw(drawn.Dc(), 50, QEL_DRAW_FULL));
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ("", FirstDifference(expected, drawn));
}

TEST(ArcMeter, AnEmptyRectangleDrawsNothingAndKeepsNoValue)
{
    for (const RECT& rc : {RECT{0, 0, 0, 0}, RECT{10, 10, 10, 90}, RECT{10, 90, 80, 90},
                           RECT{80, 10, 10, 90}, RECT{10, 90, 80, 10}}) {
        CDial dial;
        dial.ShowAll();
        dial->SetMeterRect(rc);
        EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) {
                      EXPECT_EQ(0, dial->Draw(hdc, 40, 0));
                      EXPECT_EQ(0, dial->Draw(hdc, 41.0F, QEL_DRAW_FULL));
                  }));
        EXPECT_EQ(0, dial->GetLastValue());
    }
}

TEST(ArcMeter, OutsideOfTheHostsClipNoLayerIsPaintedAndDrawSucceeds)
{
    CTestBitmap drawn(240, 240, FACE);
    ::IntersectClipRect(drawn.Dc(), 0, 0, 20, 20);
    CDial dial;
    dial.ShowAll();
    dial->SetMeterRect({20, 20, 240, 240});
    const std::string before = DcState(drawn.Dc());
    EXPECT_EQ(1, dial->Draw(drawn.Dc(), 40, QEL_DRAW_FULL));
    EXPECT_EQ(1, dial->Draw(drawn.Dc(), 40.0F, 0));
    EXPECT_EQ(before, DcState(drawn.Dc()));
    EXPECT_EQ(0, dial->GetLastValue()); // the layers and their order were never entered
    ::SelectClipRgn(drawn.Dc(), nullptr);
    EXPECT_TRUE(IsBlank(drawn));
}

bool SameClip(HDC hdc, HRGN hExpected) // null: no clip at all
{
    const HRGN hClip = ::CreateRectRgn(0, 0, 0, 0);
    const int nHas = ::GetClipRgn(hdc, hClip);
    const bool bSame = hExpected ? nHas == 1 && ::EqualRgn(hClip, hExpected) : nHas == 0;
    ::DeleteObject(hClip);
    return bSame;
}

TEST(DialClip, NarrowsTheClipAndPutsItBackWithEitherWayOfSavingIt)
{
    for (const bool bWhole : {false, true}) {
        SCOPED_TRACE(bWhole ? "whole context" : "clip alone");
        const CTestBitmap bitmap(100, 100);
        const HDC hdc = bitmap.Dc();
        {
            const CDialClip clip(hdc, {10, 20, 60, 70}, bWhole);
            EXPECT_TRUE(clip.IsVisible());
            ::PatBlt(hdc, 0, 0, 100, 100, BLACKNESS);
        }
        EXPECT_TRUE(SameClip(hdc, nullptr));
        EXPECT_EQ(50 * 50, CountPixels(bitmap, 0));
        EXPECT_EQ(0U, bitmap.At(10, 20));
        EXPECT_EQ(0U, bitmap.At(59, 69));

        const HRGN hHost = ::CreateEllipticRgn(5, 5, 90, 80); // any shape comes back
        ::SelectClipRgn(hdc, hHost);
        {
            const CDialClip clip(hdc, {40, 40, 100, 100}, bWhole);
            EXPECT_TRUE(clip.IsVisible());
            EXPECT_FALSE(::PtVisible(hdc, 20, 40));
            EXPECT_TRUE(::PtVisible(hdc, 50, 50));
            const CDialClip inner(hdc, {0, 0, 30, 30}, bWhole); // one in another
            EXPECT_FALSE(inner.IsVisible());
        }
        EXPECT_TRUE(SameClip(hdc, hHost));
        {
            const CDialClip clip(hdc, {92, 2, 99, 9}, bWhole);
            EXPECT_FALSE(clip.IsVisible());
        }
        EXPECT_TRUE(SameClip(hdc, hHost));
        ::DeleteObject(hHost);
    }
}

// ---- nothing stays behind, nothing breaks ----

TEST(DialClip, GivesItsRegionBack)
{
    const CTestBitmap bitmap(100, 100);
    for (const bool bWhole : {false, true}) {
        const std::size_t nSpare = SpareObjects();
        for (int i = 0; i < 20; ++i) const CDialClip clip(bitmap.Dc(), {10, 20, 60, 70}, bWhole);
        EXPECT_EQ(nSpare, SpareObjects()) << bWhole;
    }
}

TEST(ArcMeter, LeavesTheDeviceContextAsItWasAndGivesItsObjectsBack)
{
    CTestBitmap bitmap(240, 240);
    const HDC hdc = bitmap.Dc();
    CTestSelect pen(hdc, ::CreatePen(PS_DOT, 1, 0x123456), true);
    MarkState(hdc);
    CDial dial;
    Prepared(dial);
    dial->Draw(hdc, 5, QEL_DRAW_FULL);
    const std::string before = DcState(hdc);
    const std::size_t nSpare = SpareObjects();
    for (int v = 0; v <= 100; v += 5) {
        EXPECT_EQ(1, dial->Draw(hdc, v, 0));
        EXPECT_EQ(1, dial->Draw(hdc, v + 0.5F, QEL_DRAW_FULL));
        dial->DrawScale(hdc); // each layer for itself as well
        dial->DrawLabels(hdc);
        dial->DrawAlarmZones(hdc);
        dial->DrawPin(hdc, v, 0);
        dial->ErasePin(hdc, v, 0);
    }
    EXPECT_EQ(before, DcState(hdc));
    EXPECT_EQ(nSpare, SpareObjects());
}

TEST(ArcMeter, DrawsAnyRangeLimitAndRadius)
{
    const CTestBitmap bitmap(60, 60);
    const std::string before = DcState(bitmap.Dc());
    const int ends[] = {INT_MIN, -1, 0, 100, INT_MAX};
    for (const int r : {INT_MIN, -1, 0, 24, 40, 3002, INT_MAX})
        for (const int nMin : ends)
            for (const int nMax : ends) {
                CDial dial(r);
                dial.ShowAll();
                dial->SetMin(nMin);
                dial->SetMax(nMax);
                dial->SetScaleStart(nMax);
                dial->SetScaleEnd(nMin);
                dial->SetLowLimit(nMax);
                dial->SetHighLimit(nMin / 3);
                dial->SetReverse(r & 1);
                dial->SetDecimalShift(static_cast<uint32_t>(nMin));
                dial->SetFontSize(static_cast<uint32_t>(nMax));
                for (const int v : ends) EXPECT_EQ(1, dial->Draw(bitmap.Dc(), v, 0));
                for (const float f :
                     {-FLT_MAX, 0.5F, FLT_MAX, std::numeric_limits<float>::quiet_NaN()})
                    EXPECT_EQ(1, dial->Draw(bitmap.Dc(), f, 0));
                EXPECT_EQ(1, dial->Draw(bitmap.Dc(), 77, 0));
                EXPECT_EQ(77, dial->GetLastValue());
            }
    EXPECT_EQ(before, DcState(bitmap.Dc()));
}

TEST(ArcMeter, DrawsAnyTickCountInAMomentsTime)
{
    const CTestBitmap bitmap(60, 60);
    const DWORD nBegin = ::GetTickCount();
    for (const unsigned nTicks : {10001U, 0x7FFFFFFFU, 0x80000001U, 0xFFFFFFFFU})
        for (const unsigned nEvery : {0U, 1U, 0xFFFFFFFFU}) {
            CDial dial;
            dial.ShowAll();
            dial->SetScaleEnd(INT_MAX);
            dial->SetScaleStart(INT_MIN);
            dial->SetTickCount(nTicks);
            dial->SetMajorEvery(nEvery);
            EXPECT_EQ(1, dial->Draw(bitmap.Dc(), 50, 0));
            EXPECT_EQ(50, dial->GetLastValue());
        }
    // Twelve dials of ten thousand ticks each; four thousand million would take hours.
    EXPECT_LT(::GetTickCount() - nBegin, 60000U);
}

} // namespace
