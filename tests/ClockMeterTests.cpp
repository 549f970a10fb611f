// The clock: hands from given times against vectors worked out here, the erase, marks and numerals.
// The code is meter/Clock*.*.
#include "meter/ClockMeter.h"

#include "base/DegTrig.h"
#include "include/QELEngine.h"
#include "meter/ClockPin.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Figures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr POINT C{210, 205};
constexpr COLORREF FACE = 0x102030, SCALE = 0x405060, HAND = 0x0000AA, LABEL = 0x00BB11;
constexpr COLORREF GREEN = 0x00FF00, WHITE = 0xFFFFFF, BLACK = 0;

// ---- what should be drawn ----

// The point at so many percent of a hand of a length that points at a part of the full turn; a
// negative number lies behind the centre.
POINT At(int nLength, double fTurn, int nPercent)
{
    const auto fAngle = static_cast<float>(fTurn * 360);
    const int dx = static_cast<int>(DegSin(fAngle) * nLength);
    const int dy = static_cast<int>(-DegCos(fAngle) * nLength);
    return {C.x + dx * nPercent / 100, C.y + dy * nPercent / 100};
}

std::string Line(int nWidth, COLORREF clr, POINT pt1, POINT pt2)
{
    return "Line " + std::to_string(nWidth) + " " + Hex(clr) + " " + Text(pt1) + " " + Text(pt2);
}

std::string Polygon(int nWidth, COLORREF clr, COLORREF clrFill, const std::vector<POINT>& points)
{
    std::string text = "Polygon " + std::to_string(nWidth) + " " + Hex(clr) + " " + Hex(clrFill);
    for (const POINT& pt : points) text += " " + Text(pt);
    return text;
}

std::string Disc(int nWidth, COLORREF clr, COLORREF clrFill)
{
    return "Ellipse " + std::to_string(nWidth) + " " + Hex(clr) + " " + Hex(clrFill) + " " +
           Text({C.x - 5, C.y - 5}) + "," + Text({C.x + 5, C.y + 5});
}

struct Colors {
    COLORREF clrHand = HAND, clrGreen = GREEN, clrWhite = WHITE, clrBlack = BLACK;
};
constexpr Colors ERASED{FACE, FACE, FACE, FACE};

Lines BroadHand(int r, double f, int nStyle, int nBehind, int nStripe, int nTip, const Colors& c)
{
    const POINT tip = At(r, f, nTip);
    switch (nStyle) {
    case 0:
        return {Line(6, c.clrHand, At(r, f, -nBehind), tip),
                Line(2, c.clrGreen, At(r, f, nStripe), tip)};
    case 1:
        return {Line(6, c.clrHand, At(r, f, -nBehind), tip)};
    case 3:
        return {
            Polygon(3, c.clrHand, c.clrWhite, {tip, At(r, f + 0.03, 20), C, At(r, f - 0.03, 20)})};
    default: // 2 and 4
        return {Line(6, c.clrHand, C, tip)};
    }
}

Lines SecondHand(int nDialRadius, double f, int nStyle, const Colors& c)
{
    const int r = nDialRadius * 9 / 10;
    const double fMark = 1.0 / 60;
    const COLORREF clrFill = nStyle == 1 ? c.clrHand : c.clrGreen;
    const std::string weight = Polygon(
        3, c.clrHand, clrFill, {C, At(r, f + fMark, -40), At(r, f, -40), At(r, f - fMark, -40)});
    const std::string line = Line(3, c.clrHand, C, At(r, f, 100));
    switch (nStyle) {
    case 0:
    case 1:
        return {weight, line, Disc(3, c.clrHand, clrFill)};
    case 2:
        return {line, Disc(3, c.clrHand, clrFill)};
    case 3:
        return {Polygon(2, c.clrHand, c.clrHand,
                        {At(r, f, 70), At(r, f + fMark, 30), At(r, f - fMark, 30)}),
                Disc(1, c.clrBlack, c.clrBlack)};
    default:
        return {Disc(1, c.clrHand, c.clrHand)};
    }
}

// All three: the hour of the local time, minute and second of the universal one.
Lines Hands(int r, int nStyle, const ClockTimes& t, const Colors& c = {})
{
    Lines all = BroadHand(r, t.local.wHour / 12.0 + t.local.wMinute / 720.0, nStyle, 18, 30, 60, c);
    for (const std::string& line : BroadHand(
             r, t.universal.wMinute / 60.0 + t.universal.wSecond / 3600.0, nStyle, 24, 40, 80, c))
        all.push_back(line);
    for (const std::string& line : SecondHand(r, t.universal.wSecond / 60.0, nStyle, c))
        all.push_back(line);
    return all;
}

SYSTEMTIME Time(int nHour, int nMinute, int nSecond)
{
    SYSTEMTIME time{};
    time.wHour = static_cast<WORD>(nHour);
    time.wMinute = static_cast<WORD>(nMinute);
    time.wSecond = static_cast<WORD>(nSecond);
    return time;
}

ClockTimes Both(int nHour, int nMinute, int nSecond)
{
    return {Time(nHour, nMinute, nSecond), Time(nHour, nMinute, nSecond)};
}

Lines DrawHands(int r, int nStyle, const ClockTimes& times)
{
    return Drawn(
        [&](HDC hdc) { EXPECT_EQ(1, CClockPin(r, HAND, FACE).Draw(hdc, C, nStyle, times)); });
}

// ---- hands ----

TEST(ClockHands, StandAtTheGivenTimeInEveryStyle)
{
    for (const int r : {30, 77, 200})
        for (int nStyle = 0; nStyle < 5; ++nStyle)
            for (const ClockTimes& t : {Both(0, 0, 0), Both(3, 0, 15), Both(6, 30, 30),
                                        Both(9, 45, 45), Both(10, 8, 36), Both(23, 59, 59)})
                EXPECT_EQ(Hands(r, nStyle, t), DrawHands(r, nStyle, t))
                    << "radius " << r << " style " << nStyle << " at " << t.local.wHour << ":"
                    << t.local.wMinute << ":" << t.local.wSecond;
}

TEST(ClockHands, HourFollowsLocalTimeMinuteAndSecondUniversalTime)
{
    // A place five and a half hours ahead: the minute hand stands at the universal minute.
    const ClockTimes t{Time(15, 30, 7), Time(10, 0, 42)};
    for (int nStyle = 0; nStyle < 5; ++nStyle) {
        EXPECT_EQ(Hands(150, nStyle, t), DrawHands(150, nStyle, t)) << "style " << nStyle;
        EXPECT_NE(DrawHands(150, nStyle, Both(15, 30, 7)), DrawHands(150, nStyle, t));
        EXPECT_NE(DrawHands(150, nStyle, Both(10, 0, 42)), DrawHands(150, nStyle, t));
    }
}

TEST(ClockHands, HalfPastThreeIs105DegreesFromTheTop)
{
    // 15 / 12 + 30 / 720 is more than a turn: sine and cosine take the turn off.
    const Lines figures = DrawHands(200, 2, Both(15, 30, 0));
    const int dx = static_cast<int>(200 * DegSin(105)), dy = static_cast<int>(-200 * DegCos(105));
    EXPECT_EQ(193, dx);
    EXPECT_EQ(51, dy);
    const std::string tip = Text({C.x + 193 * 60 / 100, C.y + 51 * 60 / 100});
    EXPECT_EQ("Line 6 0000aa 210,205 " + tip, figures.at(0));
    EXPECT_EQ(DrawHands(200, 2, Both(3, 30, 0)), figures);
}

TEST(ClockHands, CreepWithTheSmallerUnit)
{
    const auto hour = [](int h, int m) { return DrawHands(400, 1, Both(h, m, 0)).at(0); };
    const auto minute = [](int m, int s) { return DrawHands(400, 1, Both(0, m, s)).at(1); };
    EXPECT_NE(hour(4, 0), hour(4, 20));
    EXPECT_NE(minute(20, 0), minute(20, 40));
    // The second alone does not move the hour hand.
    EXPECT_EQ(DrawHands(400, 1, Both(4, 20, 0)).at(0), DrawHands(400, 1, Both(4, 20, 59)).at(0));
}

TEST(ClockHands, AreNoneInAnUnknownStyle)
{
    for (const int nStyle : {5, 6, 4711, INT_MAX, -1, INT_MIN}) {
        EXPECT_EQ(Lines{}, DrawHands(100, nStyle, Both(3, 15, 40))) << nStyle;
        CTestBitmap bitmap(400, 400);
        EXPECT_EQ(1, CClockPin(100, HAND, FACE).Erase(bitmap.Dc(), C, nStyle, Both(3, 15, 40)));
        EXPECT_TRUE(IsBlank(bitmap));
    }
}

TEST(ClockHands, CounterweightIsFilledByAlternation)
{
    CRecording recording;
    EXPECT_EQ(1, CClockPin(100, HAND, FACE).Draw(recording.Dc(), C, 0, Both(1, 2, 3)));
    // Whatever mode the host had: it is back afterwards.
    CTestBitmap bitmap(400, 400);
    ::SetPolyFillMode(bitmap.Dc(), WINDING);
    for (int nStyle = 0; nStyle < 5; ++nStyle) {
        EXPECT_EQ(1, CClockPin(100, HAND, FACE).Draw(bitmap.Dc(), C, nStyle, Both(1, 2, 3)));
        EXPECT_EQ(WINDING, ::GetPolyFillMode(bitmap.Dc()));
    }
    // And the pixels do not depend on it.
    CTestBitmap winding(400, 400), alternate(400, 400);
    ::SetPolyFillMode(winding.Dc(), WINDING);
    ::SetPolyFillMode(alternate.Dc(), ALTERNATE);
    CClockPin(100, HAND, FACE).Draw(winding.Dc(), C, 0, Both(1, 2, 3));
    CClockPin(100, HAND, FACE).Draw(alternate.Dc(), C, 0, Both(1, 2, 3));
    EXPECT_FALSE(IsBlank(winding));
    EXPECT_EQ("", FirstDifference(alternate, winding));
}

TEST(ClockHands, PixelsAreThoseOfRawLines)
{
    CTestBitmap expected(420, 420, FACE), drawn(420, 420, FACE);
    const auto line = [&](int nWidth, COLORREF clr, POINT pt1, POINT pt2) {
        CTestSelect pen(expected.Dc(), ::CreatePen(PS_SOLID, nWidth, clr), true);
        ::MoveToEx(expected.Dc(), pt1.x, pt1.y, nullptr);
        ::LineTo(expected.Dc(), pt2.x, pt2.y);
    };
    line(6, HAND, C, At(160, 4 / 12.0 + 10 / 720.0, 60));
    line(6, HAND, C, At(160, 10 / 60.0 + 20 / 3600.0, 80));
    line(3, HAND, C, At(144, 20 / 60.0, 100));
    {
        CTestSelect pen(expected.Dc(), ::CreatePen(PS_SOLID, 3, HAND), true);
        CTestSelect brush(expected.Dc(), ::CreateSolidBrush(GREEN), true);
        ::Ellipse(expected.Dc(), C.x - 5, C.y - 5, C.x + 5, C.y + 5);
    }
    EXPECT_EQ(1, CClockPin(160, HAND, FACE).Draw(drawn.Dc(), C, 2, Both(4, 10, 20)));
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ("", FirstDifference(expected, drawn));
}

TEST(ClockHands, AreErasedWhollyInTheFaceColor)
{
    const ClockTimes t{Time(15, 37, 7), Time(10, 7, 42)};
    for (int nStyle = 0; nStyle < 5; ++nStyle) {
        EXPECT_EQ(Hands(150, nStyle, t, ERASED), Drawn([&](HDC hdc) {
                      EXPECT_EQ(1, CClockPin(150, HAND, FACE).Erase(hdc, C, nStyle, t));
                  }))
            << "style " << nStyle;
        CTestBitmap bitmap(420, 420, FACE);
        CClockPin(150, HAND, FACE).Draw(bitmap.Dc(), C, nStyle, t);
        EXPECT_FALSE(IsBlank(bitmap));
        CClockPin(150, HAND, FACE).Erase(bitmap.Dc(), C, nStyle, t);
        EXPECT_EQ(420 * 420, CountPixels(bitmap, FACE)) << "style " << nStyle;
    }
}

// ---- the meter's hands ----

class CClock { // a clock in the test's colours
public:
    explicit CClock(int r, bool bFull = true) : m(r, bFull)
    {
        m.SetCentre(C);
        m.SetMeterRect({0, 0, 420, 420});
        m.SetFaceColor(FACE);
        m.SetScaleColor(SCALE);
        m.SetPinColor(HAND);
        m.SetLabelColor(LABEL);
    }
    CClockMeter* operator->() { return &m; }
    CClockMeter& operator*() { return m; }

private:
    CClockMeter m;
};

uint64_t Ticks(const SYSTEMTIME& time)
{
    FILETIME file{};
    EXPECT_TRUE(::SystemTimeToFileTime(&time, &file));
    return static_cast<uint64_t>(file.dwHighDateTime) << 32 | file.dwLowDateTime;
}

TEST(Clock, ReadsTheLocalAndTheUniversalTimeOfTheSystem)
{
    SYSTEMTIME local{}, universal{}, localAfter{}, universalAfter{};
    ::GetLocalTime(&local);
    ::GetSystemTime(&universal);
    const ClockTimes now = CClockPin::Now();
    ::GetLocalTime(&localAfter);
    ::GetSystemTime(&universalAfter);
    EXPECT_LE(Ticks(local), Ticks(now.local));
    EXPECT_LE(Ticks(now.local), Ticks(localAfter));
    EXPECT_LE(Ticks(universal), Ticks(now.universal));
    EXPECT_LE(Ticks(now.universal), Ticks(universalAfter));
}

TEST(Clock, ShowsTheTimeOfDayWhateverItsValueSays)
{
    for (const int nValue : {0, 7, INT_MAX}) {
        CClock clock(120);
        clock->SetPinStyle(1);
        // The second may change while it draws: then the hands are of the time before or after.
        const ClockTimes before = CClockPin::Now();
        const Lines figures =
            Drawn([&](HDC hdc) { EXPECT_EQ(1, clock->DrawPin(hdc, nValue, QEL_DRAW_FULL)); });
        const ClockTimes after = CClockPin::Now();
        EXPECT_TRUE(figures == Hands(120, 1, before) || figures == Hands(120, 1, after));
    }
}

TEST(Clock, ErasesTheHandsOfTheTimeThatItLastDrew)
{
    std::vector<CClock*> clocks;
    std::vector<CTestBitmap*> bitmaps;
    for (int nStyle = 0; nStyle < 5; ++nStyle) {
        clocks.push_back(new CClock(150));
        bitmaps.push_back(new CTestBitmap(420, 420, FACE));
        (*clocks.back())->SetPinStyle(nStyle);
        EXPECT_EQ(1, (*clocks.back())->DrawPin(bitmaps.back()->Dc(), 0, QEL_DRAW_FULL));
        EXPECT_FALSE(IsBlank(*bitmaps.back()));
    }
    ::Sleep(1100); // the second hand has moved on
    for (int nStyle = 0; nStyle < 5; ++nStyle) {
        CClock& clock = *clocks[nStyle];
        const CTestBitmap& bitmap = *bitmaps[nStyle];
        // After a full repaint there is nothing to take away.
        EXPECT_EQ(Lines{},
                  Drawn([&](HDC hdc) { EXPECT_EQ(1, clock->ErasePin(hdc, 0, QEL_DRAW_FULL)); }));
        EXPECT_FALSE(IsBlank(bitmap));
        EXPECT_EQ(1, clock->ErasePin(bitmap.Dc(), 0, 0));
        EXPECT_EQ(420 * 420, CountPixels(bitmap, FACE)) << "style " << nStyle;
        delete clocks[nStyle];
        delete bitmaps[nStyle];
    }
}

TEST(Clock, HasNoHandsInStyleFiveAndSaysThatItDrew)
{
    CClock clock(120);
    clock->SetPinStyle(5);
    EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) {
                  EXPECT_EQ(1, clock->DrawPin(hdc, 3, QEL_DRAW_FULL));
                  clock->ErasePin(hdc, 3, 0);
              }));
}

TEST(Clock, ShowsThePlainNeedleForRealValues)
{
    CClock clock(120, false);
    CArcMeter plain(120, 30, 330, 0);
    plain.SetCentre(C);
    plain.SetFaceColor(FACE);
    plain.SetPinColor(HAND);
    for (const float fValue : {0.0F, 2.5F, 9.75F, 12.0F}) {
        for (CArcMeter* pMeter : {static_cast<CArcMeter*>(&*clock), &plain})
            pMeter->SetLastValue(4);
        const auto both = [&](CArcMeter& m) {
            return Drawn([&](HDC hdc) {
                EXPECT_EQ(1, m.ErasePin(hdc, fValue, 0));
                EXPECT_EQ(1, m.DrawPin(hdc, fValue, 0));
            });
        };
        const Lines expected = both(plain);
        // Erase, disc and line: the erase at 4 of 10, 150 degrees, from 5 to 99.
        ASSERT_EQ(3U, expected.size());
        const auto polar = [](int r, float a) {
            return POINT{C.x - static_cast<int>(r * DegSin(a)),
                         C.y + static_cast<int>(r * DegCos(a))};
        };
        EXPECT_EQ(Line(3, FACE, polar(5, 150), polar(99, 150)), expected[0]);
        EXPECT_EQ(expected, both(*clock)) << fValue;
    }
}

TEST(Clock, HasNeitherAxisNorFill)
{
    CClock clock(120);
    EXPECT_EQ(Lines{}, Drawn([&](HDC hdc) {
                  EXPECT_EQ(0, clock->DrawAxis(hdc));
                  EXPECT_EQ(0, clock->DrawFill(hdc, 5, 0));
                  EXPECT_EQ(0, clock->DrawFill(hdc, 5.0F, 0));
              }));
}

// ---- marks ----

std::vector<int> Numbers(std::string text)
{
    std::replace(text.begin(), text.end(), ',', ' ');
    std::istringstream in(text);
    std::vector<int> numbers;
    for (int n; in >> n;) numbers.push_back(n);
    return numbers;
}

// A mark as pixels: where its middle is and how far out it reaches.
struct Mark {
    double x, y; // of the middle, from the dial's centre
    double fReach;
};

// Boxes end before their right and bottom; a pen stands on the pixel.
Mark MarkOf(const std::string& figure)
{
    const Lines w = Split(figure);
    const bool bLine = w[0] == "Line";
    const std::vector<int> n = Numbers(bLine ? w[3] + "," + w[4] : w[4]);
    const double fRight = bLine ? n[2] : n[2] - 1;
    const double fBottom = bLine ? n[3] : n[3] - 1;
    Mark mark{(n[0] + fRight) / 2 - C.x, (n[1] + fBottom) / 2 - C.y, 0};
    if (w[0] == "Ellipse") { // a disc
        mark.fReach = std::hypot(mark.x, mark.y) + (fRight - n[0]) / 2;
        return mark;
    }
    for (const double x : {static_cast<double>(n[0]), fRight})
        for (const double y : {static_cast<double>(n[1]), fBottom}) {
            if (bLine && (x == n[0]) != (y == n[1])) continue; // its two ends only
            mark.fReach = std::max(mark.fReach, std::hypot(x - C.x, y - C.y));
        }
    return mark;
}

Lines Marks(CClock& clock)
{
    return Drawn([&](HDC hdc) { EXPECT_EQ(1, clock->DrawScale(hdc)); });
}

TEST(ClockMarks, AreSixtyInsideTheRadiusOnePerMinute)
{
    for (const int r : {30, 60, 101, 200, 400})
        for (int nStyle = -1; nStyle <= 4; ++nStyle) {
            CClock clock(r);
            clock->SetAxisStyle(nStyle);
            const Lines figures = Marks(clock);
            EXPECT_EQ(60U, figures.size()) << "style " << nStyle << " radius " << r;
            std::set<int> minutes;
            for (const std::string& figure : figures) {
                const std::string kind = Split(figure)[0];
                EXPECT_TRUE(kind == "Line" || kind == "Ellipse" || kind == "Rectangle") << figure;
                EXPECT_EQ(Hex(SCALE), Split(figure)[2]) << figure;
                EXPECT_TRUE(kind == "Line" || Split(figure)[3] == Hex(SCALE)) << figure;
                const Mark mark = MarkOf(figure);
                EXPECT_LE(mark.fReach, r + 0.5) << figure << " radius " << r;
                EXPECT_GT(std::hypot(mark.x, mark.y), r / 2) << figure;
                // The middle lies on its minute: whole pixels, so within one of the ray.
                const double fMinute =
                    std::atan2(mark.x, -mark.y) / std::acos(-1.0) * 30; // clockwise from the top
                const int nMinute = static_cast<int>(std::lround(fMinute + 60)) % 60;
                const double fTurn = nMinute * std::acos(-1.0) / 30;
                EXPECT_LE(std::fabs(mark.x * std::cos(fTurn) + mark.y * std::sin(fTurn)), 1.01)
                    << figure;
                minutes.insert(nMinute);
            }
            EXPECT_EQ(60U, minutes.size()) << "style " << nStyle << " radius " << r;
        }
}

TEST(ClockMarks, AreMirroredAtBothAxes)
{
    for (const int r : {30, 75, 200})
        for (int nStyle = 0; nStyle <= 3; ++nStyle) {
            CClock clock(r);
            clock->SetAxisStyle(nStyle);
            std::multiset<std::pair<double, double>> middles, left, below;
            for (const std::string& figure : Marks(clock)) {
                const Mark mark = MarkOf(figure);
                middles.insert({mark.x, mark.y});
                left.insert({-mark.x, mark.y});
                below.insert({mark.x, -mark.y});
            }
            ASSERT_FALSE(middles.empty());
            EXPECT_TRUE(middles == left) << "style " << nStyle << " radius " << r;
            EXPECT_TRUE(middles == below) << "style " << nStyle << " radius " << r;
        }
}

TEST(ClockMarks, HoursStandOutAmongTheMinutes)
{
    for (int nStyle = 0; nStyle <= 3; ++nStyle) {
        CTestBitmap bitmap(420, 420, FACE);
        CClock clock(200);
        clock->SetAxisStyle(nStyle);
        EXPECT_EQ(1, clock->DrawScale(bitmap.Dc()));
        // The pixels within two degrees of an hour against those of the minute beside it.
        const auto weight = [&](int nMinute) {
            int n = 0;
            for (int y = 0; y < 420; ++y)
                for (int x = 0; x < 420; ++x) {
                    const double fMinute = std::atan2(x - C.x, C.y - y) / std::acos(-1.0) * 30;
                    if (std::fabs(fMinute - nMinute) < 0.4) n += bitmap.At(x, y) == SCALE;
                }
            return n;
        };
        for (const int nHour : {5, 10, 15, 20, 25})
            EXPECT_GT(weight(nHour), weight(nHour + 1) * 3 / 2) << "style " << nStyle;
    }
}

using Change = void (*)(CClockMeter&);
constexpr Change IRRELEVANT[] = {
    [](CClockMeter& m) { m.SetTickCount(0); },
    [](CClockMeter& m) { m.SetTickCount(0xFFFFFFFF); },
    [](CClockMeter& m) { m.SetMajorEvery(0); },
    [](CClockMeter& m) { m.SetMajorEvery(7); },
    [](CClockMeter& m) { m.SetScaleStart(100), m.SetScaleEnd(-100); },
    [](CClockMeter& m) { m.SetMin(10), m.SetMax(10); },
    [](CClockMeter& m) { m.SetDecimalShift(2); },
    [](CClockMeter& m) { m.SetReverse(1); },
    [](CClockMeter& m) { m.SetLowLimit(3), m.SetHighLimit(4), m.SetShowAlarm(1); },
};

TEST(ClockFace, DoesNotDependOnTheScaleOfTheMeter)
{
    const auto face = [](CClock& clock) {
        return Drawn([&](HDC hdc) {
            EXPECT_EQ(1, clock->DrawScale(hdc));
            EXPECT_EQ(1, clock->DrawLabels(hdc));
        });
    };
    CClock whole(120);
    const Lines expected = face(whole);
    EXPECT_EQ(72U, expected.size());
    for (const bool bFull : {true, false})
        for (const Change change : IRRELEVANT) {
            CClock clock(120, bFull);
            change(*clock);
            EXPECT_EQ(expected, face(clock));
        }
}

// ---- numerals ----

// Where a numeral stands: its text box, measured in its own font, from the dial's centre.
struct Numeral {
    std::string text;
    double l, t, r, b;
};

Numeral NumeralOf(const std::string& figure)
{
    const Lines w = Split(figure); // Text 5x12/255 colour x,y "12"
    int nWidth = 0, nHeight = 0;
    EXPECT_EQ(2, std::sscanf(w[1].c_str(), "%dx%d", &nWidth, &nHeight));
    const std::string text = w[4].substr(1, w[4].size() - 2);
    CTestBitmap bitmap(10, 10);
    CTestSelect font(bitmap.Dc(),
                     ::CreateFontA(nHeight, nWidth, 0, 0, FW_BOLD, 0, 0, 0, 255, 0, 0, 0, 0, ""),
                     true);
    SIZE size{};
    ::GetTextExtentPoint32A(bitmap.Dc(), text.c_str(), static_cast<int>(text.size()), &size);
    const std::vector<int> xy = Numbers(w[3]);
    const double x = xy[0] - C.x, y = xy[1] - C.y;
    return {text, x, y, x + size.cx, y + size.cy};
}

TEST(ClockNumerals, AreTwelveInLabelColorWithTwelveAtTheTop)
{
    for (const int r : {30, 45, 80, 150, 250, 400}) {
        CClock clock(r);
        const Lines figures = Drawn([&](HDC hdc) { EXPECT_EQ(1, clock->DrawLabels(hdc)); });
        ASSERT_EQ(12U, figures.size()) << "radius " << r;
        std::set<std::string> texts;
        std::vector<Numeral> numerals;
        for (const std::string& figure : figures) {
            EXPECT_EQ("Text", Split(figure)[0]);
            EXPECT_EQ(Hex(LABEL), Split(figure)[2]);
            EXPECT_EQ(std::string::npos, figure.find("opaque")) << figure;
            const Numeral n = NumeralOf(figure);
            texts.insert(n.text);
            // Centred on the ray of its hour: pixels and half sizes are cut, so two off at most.
            const double fTurn = std::stoi(n.text) * std::acos(-1.0) / 6;
            const double x = (n.l + n.r) / 2, y = (n.t + n.b) / 2;
            EXPECT_LE(std::fabs(x * std::cos(fTurn) + y * std::sin(fTurn)), 2) << figure;
            EXPECT_GT(x * std::sin(fTurn) - y * std::cos(fTurn), r / 2) << figure;
            for (const double cx : {n.l, n.r})
                for (const double cy : {n.t, n.b}) EXPECT_LE(std::hypot(cx, cy), r) << figure;
            for (const Numeral& other : numerals)
                EXPECT_TRUE(n.r <= other.l || other.r <= n.l || n.b <= other.t || other.b <= n.t)
                    << n.text << " over " << other.text << " radius " << r;
            numerals.push_back(n);
        }
        EXPECT_EQ(
            (std::set<std::string>{"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12"}),
            texts);
        for (const Numeral& n : numerals)
            for (const Numeral& other : numerals)
                EXPECT_TRUE(n.text != "12" || n.t <= other.t) << other.text << " is higher";
    }
}

TEST(ClockNumerals, AreNotDrawnAtARadiusThatNobodySees)
{
    CClockMeter clock(100, true);
    for (const int r : {INT_MIN, -1, 0, 32768, INT_MAX}) {
        CRecording recording;
        EXPECT_EQ(0, CClockMark(clock, r, LABEL).Draw(recording.Dc(), C)) << r;
        EXPECT_EQ(Lines{}, recording.Only({"Text", "SetTextColor"})) << r;
    }
}

TEST(ClockNumerals, StandClearOfTheMarks)
{
    for (const int r : {60, 120, 300}) {
        // Both in one picture are both alone put together: nothing of either is covered.
        CTestBitmap marks(420 + r, 420 + r, WHITE), numerals(420 + r, 420 + r, WHITE);
        CClock clock(r);
        clock->SetCentre({r + 5, r + 5});
        EXPECT_EQ(1, clock->DrawScale(marks.Dc()));
        EXPECT_EQ(1, clock->DrawLabels(numerals.Dc()));
        int nBoth = 0, nInk = 0;
        for (int y = 0; y < 2 * r + 10 && y < numerals.Height(); ++y)
            for (int x = 0; x < 2 * r + 10 && x < numerals.Width(); ++x) {
                nInk += numerals.At(x, y) != WHITE;
                nBoth += numerals.At(x, y) != WHITE && marks.At(x, y) != WHITE;
            }
        EXPECT_GT(nInk, 12) << r;
        EXPECT_EQ(0, nBoth) << r;
    }
}

// ---- the whole clock ----

void ShowAll(CClockMeter& m)
{
    for (const auto set : {&CMeter::SetShowPin, &CMeter::SetShowScale, &CMeter::SetShowAxis,
                           &CMeter::SetShowLabels, &CMeter::SetShowFill, &CMeter::SetShowAlarm,
                           &CMeter::SetShowFrame, &CMeter::SetShowValue})
        (m.*set)(1);
}

TEST(Clock, LeavesTheDeviceContextAsItWas)
{
    for (int nStyle = -1; nStyle < 6; ++nStyle) {
        CClock clock(150);
        ShowAll(*clock);
        clock->SetPinStyle(nStyle);
        clock->SetAxisStyle(nStyle);
        CTestBitmap bitmap(420, 420);
        const HDC hdc = bitmap.Dc();
        MarkState(hdc);
        ::SetPolyFillMode(hdc, WINDING);
        const std::string before = DcState(hdc);
        EXPECT_EQ(1, clock->Draw(hdc, 40, QEL_DRAW_FULL));
        EXPECT_EQ(1, clock->Draw(hdc, 41, 0));
        EXPECT_EQ(1, clock->Draw(hdc, 60.5F, 0));
        EXPECT_FALSE(IsBlank(bitmap));
        EXPECT_EQ(before, DcState(hdc));
    }
}

TEST(Clock, LeavesNoGdiObjectBehind)
{
    CTestBitmap bitmap(420, 420);
    CClock clock(150);
    ShowAll(*clock);
    const auto drawAll = [&] {
        for (int nStyle = -1; nStyle < 6; ++nStyle) {
            clock->SetPinStyle(nStyle);
            clock->SetAxisStyle(nStyle);
            clock->Draw(bitmap.Dc(), 40, 0);
            clock->Draw(bitmap.Dc(), 40.5F, 0);
        }
    };
    drawAll(); // the system's own caches fill once
    const std::size_t nBefore = SpareObjects();
    ASSERT_GT(nBefore, 1000U);
    for (int i = 0; i < 5; ++i) drawAll();
    EXPECT_EQ(nBefore, SpareObjects());
}

TEST(Clock, NoValueOfAnyFieldCrashesOrHangs)
{
    using Setter = void (*)(CClockMeter&, int);
    constexpr Setter SETTERS[] = {
        [](CClockMeter& m, int n) { m.SetMin(n), m.SetMax(-1 - n); },
        [](CClockMeter& m, int n) { m.SetTickCount(static_cast<uint32_t>(n)); },
        [](CClockMeter& m, int n) { m.SetFontSize(static_cast<uint32_t>(n)); },
        [](CClockMeter& m, int n) { m.SetPinStyle(n), m.SetAxisStyle(n); },
        [](CClockMeter& m, int n) { m.SetLastValue(n), m.SetReverse(n); },
        [](CClockMeter& m, int n) { m.SetScaleStart(n), m.SetDecimalShift(0xFFFFFFFF); },
    };
    CTestBitmap bitmap(420, 420);
    for (const Setter set : SETTERS)
        for (const int n : {INT_MIN, -1, 0, 1, 3000, INT_MAX})
            for (const int r : {-1, 0, 1, 9, 120, 3001}) {
                CClock clock(r);
                ShowAll(*clock);
                set(*clock, n);
                const std::string before = DcState(bitmap.Dc());
                for (const int nValue : {INT_MIN, 0, INT_MAX})
                    EXPECT_EQ(1, clock->Draw(bitmap.Dc(), nValue, 0));
                EXPECT_EQ(1, clock->Draw(bitmap.Dc(), std::numeric_limits<float>::quiet_NaN(), 0));
                EXPECT_EQ(before, DcState(bitmap.Dc()));
            }
}

} // namespace
