// The two pie meters: the sector that follows the value and is painted over when it shrinks, and
// the ticks, numbers and outline of the upgraded one. The code is
// meter/PieMeter.*.
#include "meter/PieMeter.h"

#include "base/DegTrig.h"
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Figures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Painter = std::function<void(HDC)>;

constexpr POINT C{120, 115};
constexpr RECT BOX{0, 0, 240, 240};
constexpr int R = 100, FILL = R - 19;
constexpr COLORREF FACE = 0x102030, SCALE = 0x405060, LABEL = 0x00BB11;
constexpr COLORREF SECTOR = 0x00DD00, ERASE = 0x303030;

POINT Polar(int r, float a)
{
    return {C.x - static_cast<int>(r * DegSin(a)), C.y + static_cast<int>(r * DegCos(a))};
}

// The call for a sector of radius r between two angles, in one of GDI's two shapes.
std::string Sector(float fStart, float fEnd, int r = FILL, const char* pszCall = "Pie ")
{
    return pszCall + Text({C.x - r, C.y - r}) + "," + Text({C.x + r, C.y + r}) + " start " +
           Text(Polar(r, fEnd)) + " end " + Text(Polar(r, fStart));
}

void RawSector(HDC hdc, COLORREF clr, float fStart, float fEnd, int r = FILL)
{
    CTestSelect pen(hdc, ::GetStockObject(NULL_PEN), false);
    CTestSelect brush(hdc, ::CreateSolidBrush(clr), true);
    const POINT p1 = Polar(r, fEnd), p0 = Polar(r, fStart);
    ::Pie(hdc, C.x - r, C.y - r, C.x + r, C.y + r, p1.x, p1.y, p0.x, p0.y);
}

// 0 to 100 over 30 to 330 degrees unless asked otherwise: three degrees a unit.
template <class Meter>
class CPie {
public:
    explicit CPie(int r = R, float fStart = 30, float fEnd = 330) : m(r, fStart, fEnd)
    {
        m.SetCentre(C);
        m.SetMeterRect(BOX);
        m.SetMax(100);
        m.SetScaleEnd(100);
        m.SetHighLimit(80);
        m.SetFaceColor(FACE);
        m.SetScaleColor(SCALE);
        m.SetLabelColor(LABEL);
        m.SetSectorColor(SECTOR);
        m.SetEraseColor(ERASE);
        m.SetShowFill(1);
    }
    Meter* operator->() { return &m; }
    CPie& ShowAll()
    {
        for (auto pfn : {&CMeter::SetShowPin, &CMeter::SetShowScale, &CMeter::SetShowAxis,
                         &CMeter::SetShowLabels, &CMeter::SetShowAlarm, &CMeter::SetShowFrame,
                         &CMeter::SetShowValue})
            (m.*pfn)(1);
        return *this;
    }

    Lines Calls(const Painter& draw, const Lines& words = {"Pie"})
    {
        CRecording recording;
        draw(recording.Dc());
        return recording.Only(words);
    }
    template <class Value>
    Lines Sectors(Value value, uint32_t nFlags)
    {
        return Calls([&](HDC hdc) { m_nResult = m.DrawFill(hdc, value, nFlags); });
    }
    int Result() const { return m_nResult; }

private:
    Meter m;
    int m_nResult = -1;
};

template <class Meter>
class PieMeters : public testing::Test {
};
using BothPies = testing::Types<CPieMeter, CPieUpgradeMeter>;
TYPED_TEST_SUITE(PieMeters, BothPies);

// ---- the sector of both ----

TYPED_TEST(PieMeters, BeginWithAWhiteSolidSector)
{
    TypeParam m(77, 20, 340);
    EXPECT_EQ(0xFFFFFFU, m.SectorColor());
    EXPECT_EQ(0, m.SectorStyle());
    EXPECT_EQ(77, m.Radius());
    EXPECT_EQ(20.0F, m.StartAngle());
    EXPECT_EQ(340.0F, m.EndAngle());
    EXPECT_EQ(0.0, m.AngleOffset());
    m.SetSectorColor(1);
    m.SetEraseColor(2);
    m.SetSectorStyle(INT_MIN);
    EXPECT_EQ(1U, m.SectorColor());
    EXPECT_EQ(2U, m.EraseColor());
    EXPECT_EQ(INT_MIN, m.SectorStyle());
}

TYPED_TEST(PieMeters, TheSectorRunsFromTheStartToTheValue)
{
    for (const int r : {60, R, 333})
        for (const int v : {1, 10, 33, 75, 99, 100, 500}) {
            CPie<TypeParam> pie(r);
            const Lines expected{Sector(30, 30.0F + 3 * std::min(v, 100), r - 19)};
            EXPECT_EQ(expected, pie.Sectors(v, QEL_DRAW_FULL)) << v;
            EXPECT_EQ(1, pie.Result());
            EXPECT_EQ(expected, pie.Sectors(static_cast<float>(v), 0)) << v;
            EXPECT_EQ(1, pie.Result());
        }
    CPie<TypeParam> pie;
    EXPECT_EQ((Lines{Sector(30, 106.5F)}), pie.Sectors(25.5F, 0));
}

TYPED_TEST(PieMeters, AShrinkingSectorIsFirstPaintedOver)
{
    struct Row {
        int nOld;
        float fNew;
        uint32_t nFlags;
        Lines sectors;
    };
    const Row rows[] = {
        {80, 20, 0, {Sector(30, 270), Sector(30, 90)}},
        {80, 20, 2, {Sector(30, 270), Sector(30, 90)}},
        {80, 20, QEL_DRAW_FULL, {Sector(30, 90)}},
        {80, 20, 0xFFFFFFFF, {Sector(30, 90)}},
        {80, 80, 0, {Sector(30, 270)}},
        {20, 80, 0, {Sector(30, 270)}},
        {80, 0, 0, {Sector(30, 270)}}, // gone
        {80, 0, QEL_DRAW_FULL, {}},
        {0, 0, 0, {}},
        {200, 80, 0, {Sector(30, 330), Sector(30, 270)}}, // the old one was at the end
        // In real numbers, a tenth of a degree is enough.
        {80, 79.98F, 0, {Sector(30, 269.94F)}},
        {80, 79.9F, 0, {Sector(30, 270), Sector(30, 269.7F)}},
    };
    for (const Row& row : rows) {
        CPie<TypeParam> pie;
        pie->SetLastValue(row.nOld);
        EXPECT_EQ(row.sectors, pie.Sectors(row.fNew, row.nFlags))
            << row.nOld << " to " << row.fNew << ", flags " << row.nFlags;
        const auto nNew = static_cast<int32_t>(row.fNew);
        if (static_cast<float>(nNew) == row.fNew) {
            EXPECT_EQ(row.sectors, pie.Sectors(nNew, row.nFlags));
        }
    }
}

TYPED_TEST(PieMeters, TheOldSectorIsTheMirroredOneWhenReversed)
{
    CPie<TypeParam> pie;
    pie->SetReverse(1);
    const auto drawn = [&](int v, uint32_t nFlags) {
        return pie.Calls([&](HDC hdc) { EXPECT_EQ(1, pie->Draw(hdc, v, nFlags)); });
    };
    EXPECT_EQ((Lines{Sector(30, 240)}), drawn(30, QEL_DRAW_FULL)); // shown as 70
    EXPECT_EQ((Lines{Sector(30, 240), Sector(30, 105)}), drawn(75, 0));
    EXPECT_EQ((Lines{Sector(30, 300)}), drawn(10, 0));
    EXPECT_EQ((Lines{Sector(30, 300)}), drawn(100, 0)); // shown as 0: the old one goes
}

TYPED_TEST(PieMeters, ZeroPaintsNoSectorWhateverTheRange)
{
    CPie<TypeParam> pie;
    pie->SetMin(-100);
    pie->SetLastValue(-100);
    EXPECT_EQ((Lines{Sector(30, 105)}), pie.Sectors(-50, 0));
    EXPECT_EQ((Lines{Sector(30, 181.5F)}), pie.Sectors(1, 0));
    EXPECT_EQ(Lines{}, pie.Sectors(0, 0));
    EXPECT_EQ(Lines{}, pie.Sectors(0.0F, 0));
    EXPECT_EQ(Lines{}, pie.Sectors(0, QEL_DRAW_FULL));
}

TYPED_TEST(PieMeters, ARadiusOfNineteenHasNoRoom)
{
    CPie<TypeParam> pie(19);
    pie->SetLastValue(90);
    for (const uint32_t nFlags : {0U, 1U}) {
        EXPECT_EQ(Lines{}, pie.Sectors(50, nFlags));
        EXPECT_EQ(0, pie.Result());
        EXPECT_EQ(Lines{}, pie.Sectors(50.0F, nFlags));
        EXPECT_EQ(0, pie.Result());
    }
}

TYPED_TEST(PieMeters, WithoutRangeOrSpanThereIsNoSector)
{
    CPie<TypeParam> noSpan(R, 330, 30), noRange, inverted;
    noRange->SetMax(0);
    inverted->SetMin(200);
    for (CPie<TypeParam>* p : {&noSpan, &noRange, &inverted}) {
        (*p)->SetLastValue(90);
        EXPECT_EQ(Lines{}, p->Sectors(50, 0));
        EXPECT_EQ(0, p->Result());
        EXPECT_EQ(Lines{}, p->Sectors(50.0F, QEL_DRAW_FULL));
        EXPECT_EQ(0, p->Result());
    }
}

TYPED_TEST(PieMeters, HalvesAreDrawnOnlyWhenTheyStandUpright)
{
    CPie<TypeParam> oblique; // from 30 to 210: both ends have one slope
    EXPECT_EQ(Lines{}, oblique.Sectors(60, QEL_DRAW_FULL));
    CPie<TypeParam> closed(R, 0, 360);
    EXPECT_EQ((Lines{Sector(0, 180)}), closed.Sectors(50, QEL_DRAW_FULL));
    EXPECT_EQ((Lines{Sector(0, 360)}), closed.Sectors(100, QEL_DRAW_FULL)); // the whole disc
}

TYPED_TEST(PieMeters, PaintsSectorAndEraseWithoutOutline)
{
    CTestBitmap expected(240, 240, FACE), drawn(240, 240, FACE);
    CPie<TypeParam> pie;
    RawSector(expected.Dc(), SECTOR, 30, 270);
    EXPECT_EQ(1, pie->Draw(drawn.Dc(), 80, QEL_DRAW_FULL));
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ("", FirstDifference(expected, drawn));
    RawSector(expected.Dc(), ERASE, 30, 270);
    RawSector(expected.Dc(), SECTOR, 30, 90);
    EXPECT_EQ(1, pie->Draw(drawn.Dc(), 20, 0));
    EXPECT_EQ("", FirstDifference(expected, drawn));
    RawSector(expected.Dc(), SECTOR, 30, 150);
    EXPECT_EQ(1, pie->Draw(drawn.Dc(), 40.0F, 0));
    EXPECT_EQ("", FirstDifference(expected, drawn));
    RawSector(expected.Dc(), ERASE, 30, 150);
    EXPECT_EQ(1, pie->Draw(drawn.Dc(), 0, 0));
    EXPECT_EQ("", FirstDifference(expected, drawn));
    EXPECT_EQ(0, CountPixels(drawn, SECTOR));
}

TYPED_TEST(PieMeters, AHatchedSectorHasBothColorsAndTheEraseIsSolid)
{
    static constexpr WORD CHECKER[8] = {0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55};
    CTestBitmap expected(240, 240, FACE), drawn(240, 240, FACE);
    CPie<TypeParam> pie;
    pie->SetSectorStyle(3);
    pie->SetLastValue(80);
    EXPECT_EQ(1, pie->Draw(drawn.Dc(), 20, 0));
    RawSector(expected.Dc(), ERASE, 30, 270);
    const HBITMAP hBits = ::CreateBitmap(8, 8, 1, 1, CHECKER);
    {
        CTestSelect brush(expected.Dc(), ::CreatePatternBrush(hBits), true);
        CTestSelect pen(expected.Dc(), ::GetStockObject(NULL_PEN), false);
        ::SetTextColor(expected.Dc(), SECTOR);
        ::SetBkColor(expected.Dc(), ERASE);
        const POINT p1 = Polar(FILL, 90), p0 = Polar(FILL, 30);
        ::Pie(expected.Dc(), C.x - FILL, C.y - FILL, C.x + FILL, C.y + FILL, p1.x, p1.y, p0.x,
              p0.y);
    }
    ::DeleteObject(hBits);
    EXPECT_EQ("", FirstDifference(expected, drawn));
    EXPECT_GT(CountPixels(drawn, SECTOR), 100);
}

TYPED_TEST(PieMeters, HaveNoAlarmZonesAndNoReadOut)
{
    CPie<TypeParam> pie;
    CRecording recording;
    EXPECT_EQ(0, pie->DrawAlarmZones(recording.Dc()));
    EXPECT_EQ(0, pie->DrawValueText(recording.Dc(), 50));
    EXPECT_EQ(0, pie->DrawValueText(recording.Dc(), 50.0F));
    EXPECT_EQ(Lines{}, recording.Calls());
}

TYPED_TEST(PieMeters, AxisAndNeedleAreThoseOfThePlainDial)
{
    CPie<TypeParam> pie;
    CArcMeter plain(R, 30, 330, 0);
    plain.SetCentre(C);
    plain.SetMax(100);
    plain.SetFaceColor(FACE);
    plain.SetScaleColor(SCALE);
    const auto layers = [](CArcMeter& m) {
        CRecording recording;
        EXPECT_EQ(1, m.DrawAxis(recording.Dc()));
        EXPECT_EQ(1, m.DrawPin(recording.Dc(), 33, 0));
        EXPECT_EQ(1, m.DrawPin(recording.Dc(), 66.5F, 0));
        EXPECT_EQ(1, m.ErasePin(recording.Dc(), 33, 0));
        return recording.Calls();
    };
    EXPECT_EQ(layers(plain), layers(*pie.operator->()));
}

TYPED_TEST(PieMeters, UpdatesEndInThePictureOfAFullDraw)
{
    // But for the numbers, whose smoothed edges darken each time, and for an old half, which the
    // erase leaves out like any half that is not upright.
    for (const int nReverse : {0, 1}) {
        CTestBitmap updated(240, 240, ERASE), fresh(240, 240, ERASE);
        CPie<TypeParam> pie, other;
        for (CPie<TypeParam>* p : {&pie, &other}) {
            p->ShowAll();
            (*p)->SetShowPin(0);
            (*p)->SetShowLabels(0);
            (*p)->SetReverse(nReverse);
        }
        pie->Draw(updated.Dc(), 0, QEL_DRAW_FULL);
        for (const int v : {-10, 5, 21, 77, 100, 150, 63, 64, 3, 0, 90, 42})
            EXPECT_EQ(1, pie->Draw(updated.Dc(), v, 0));
        EXPECT_EQ(1, other->Draw(fresh.Dc(), 42, QEL_DRAW_FULL));
        EXPECT_GT(CountPixels(fresh, SECTOR), 100);
        EXPECT_EQ("", FirstDifference(fresh, updated));
    }
}

TYPED_TEST(PieMeters, LeaveTheDeviceContextAsItWasAndGiveTheirObjectsBack)
{
    CTestBitmap bitmap(240, 240);
    const HDC hdc = bitmap.Dc();
    CTestSelect pen(hdc, ::CreatePen(PS_DOT, 1, 0x123456), true);
    CTestSelect brush(hdc, ::CreateSolidBrush(0x654321), true);
    MarkState(hdc);
    for (const int nStyle : {0, 6, 12, 38}) {
        CPie<TypeParam> pie(60);
        pie.ShowAll()->SetSectorStyle(nStyle);
        pie->Draw(hdc, 5, QEL_DRAW_FULL);
        const std::string before = DcState(hdc);
        const std::size_t nSpare = SpareObjects();
        for (int v = 100; v >= 0; v -= 10) {
            EXPECT_EQ(1, pie->Draw(hdc, v, 0));
            EXPECT_EQ(1, pie->Draw(hdc, v + 0.5F, QEL_DRAW_FULL));
            pie->DrawFill(hdc, v / 2, 0); // each layer without the clip around it
            pie->DrawScale(hdc);
            pie->DrawLabels(hdc);
            pie->DrawFrame(hdc);
        }
        EXPECT_EQ(before, DcState(hdc)) << nStyle;
        EXPECT_EQ(nSpare, SpareObjects()) << nStyle;
    }
}

TYPED_TEST(PieMeters, DrawAnyRangeRadiusAndStyle)
{
    const CTestBitmap bitmap(60, 60);
    const std::string before = DcState(bitmap.Dc());
    const int ends[] = {INT_MIN, -1, 0, 100, INT_MAX};
    for (const int r : {INT_MIN, -1, 18, 19, 20, 40, 3002, INT_MAX})
        for (const int nMin : ends)
            for (const int nMax : ends) {
                CPie<TypeParam> pie(r, static_cast<float>(r & 30), 330);
                pie.ShowAll();
                pie->SetMin(nMin);
                pie->SetMax(nMax);
                pie->SetReverse(r & 1);
                pie->SetSectorStyle(nMin / 2);
                pie->SetAxisStyle(nMax);
                pie->SetFontSize(static_cast<uint32_t>(nMin));
                for (const int v : ends) EXPECT_EQ(1, pie->Draw(bitmap.Dc(), v, 0));
                for (const float f : {-FLT_MAX, FLT_MAX, std::numeric_limits<float>::quiet_NaN()})
                    EXPECT_EQ(1, pie->Draw(bitmap.Dc(), f, 0));
                EXPECT_EQ(1, pie->Draw(bitmap.Dc(), 77, 0));
                EXPECT_EQ(77, pie->GetLastValue());
            }
    EXPECT_EQ(before, DcState(bitmap.Dc()));
}

TYPED_TEST(PieMeters, DrawAnyTickCountInAMomentsTime)
{
    const CTestBitmap bitmap(60, 60);
    const DWORD nBegin = ::GetTickCount();
    for (const unsigned nTicks : {10001U, 0x80000001U, 0xFFFFFFFFU})
        for (const unsigned nEvery : {0U, 1U, 0xFFFFFFFFU}) {
            CPie<TypeParam> pie;
            pie.ShowAll()->SetTickCount(nTicks);
            pie->SetMajorEvery(nEvery);
            EXPECT_EQ(1, pie->Draw(bitmap.Dc(), 50, 0));
            EXPECT_EQ(50, pie->GetLastValue());
        }
    EXPECT_LT(::GetTickCount() - nBegin, 60000U);
}

// ---- what the plain pie shares with the dial ----

TEST(PieMeter, TicksAndNumbersAreThoseOfThePlainDialAndThereIsNoFrame)
{
    CPie<CPieMeter> pie;
    CArcMeter plain(R, 30, 330, 0);
    plain.SetCentre(C);
    plain.SetMeterRect(BOX);
    plain.SetMax(100);
    plain.SetScaleEnd(100);
    plain.SetScaleColor(SCALE);
    plain.SetLabelColor(LABEL);
    const auto layers = [](CArcMeter& m) {
        CRecording recording;
        EXPECT_EQ(1, m.DrawScale(recording.Dc()));
        EXPECT_EQ(1, m.DrawLabels(recording.Dc()));
        EXPECT_EQ(0, m.DrawFrame(recording.Dc()));
        return recording.Calls();
    };
    const Lines expected = layers(plain);
    EXPECT_GT(expected.size(), 30U);
    EXPECT_EQ(expected, layers(*pie.operator->()));
}

// ---- the upgraded one ----

// A tick as it was recorded: its kind and the corners of its box.
struct Mark {
    bool bSquare;
    POINT p1, p2;
    double Reach() const // of its farthest point; a box's far edges lie outside of it
    {
        const POINT q{p2.x - bSquare, p2.y - bSquare};
        const double fEnds = std::max(Distance(p1), Distance(q));
        return bSquare ? std::max({fEnds, Distance({p1.x, q.y}), Distance({q.x, p1.y})}) : fEnds;
    }
    static double Distance(POINT pt) { return std::hypot(pt.x - C.x, pt.y - C.y); }
    LONG Side() const { return p2.x - p1.x; }
};

std::vector<LONG> Numbers(std::string text)
{
    for (char& c : text)
        if (c == ',') c = ' ';
    std::istringstream in(text);
    std::vector<LONG> numbers;
    for (LONG n; in >> n;) numbers.push_back(n);
    return numbers;
}

std::vector<Mark> MarksIn(const Lines& calls)
{
    std::vector<Mark> marks;
    POINT at{};
    for (const std::string& call : calls) {
        const std::string word = call.substr(0, call.find(' '));
        const std::vector<LONG> n = Numbers(call.substr(std::min(call.size(), word.size() + 1)));
        if (word == "MoveTo") at = {n[0], n[1]};
        if (word == "LineTo") marks.push_back({false, at, {n[0], n[1]}});
        if (word == "Rectangle" || word == "PatBlt")
            marks.push_back({true, {n[0], n[1]}, {n[2], n[3]}});
    }
    return marks;
}

std::vector<Mark> Sides(CRecording& recording)
{
    return MarksIn(recording.Only({"MoveTo", "LineTo"}));
}

std::vector<Mark> MarksOf(CPie<CPieUpgradeMeter>& pie)
{
    CRecording recording;
    EXPECT_EQ(1, pie->DrawScale(recording.Dc()));
    EXPECT_EQ(Lines{}, recording.Only({"Ellipse", "Pie", "Arc", "Chord", "Text"}));
    return MarksIn(recording.Calls());
}

TEST(PieUpgradeMeter, HasOneMarkAtEachTickOnItsRay)
{
    for (const int r : {60, R, 300})
        for (const int nStyle : {-1, 0, 1, 2, 4}) {
            CPie<CPieUpgradeMeter> pie(r);
            pie->SetAxisStyle(nStyle);
            pie->SetTickCount(12);
            pie->SetMajorEvery(3);
            const std::vector<Mark> marks = MarksOf(pie);
            ASSERT_EQ(13U, marks.size()) << "style " << nStyle;
            for (int i = 0; i <= 12; ++i) {
                const double x = (marks[i].p1.x + marks[i].p2.x - marks[i].bSquare) / 2.0 - C.x;
                const double y = (marks[i].p1.y + marks[i].p2.y - marks[i].bSquare) / 2.0 - C.y;
                const double fRay = (30 + 25 * i) * std::acos(-1.0) / 180;
                EXPECT_LE(std::fabs(x * std::cos(fRay) + y * std::sin(fRay)), 1.5) << i;
                // Clear of the fill and inside the radius.
                EXPECT_GT(-x * std::sin(fRay) + y * std::cos(fRay), r - 20) << i;
                EXPECT_LE(marks[i].Reach(), r + 0.5) << i;
            }
        }
}

TEST(PieUpgradeMeter, AxisStyleChoosesSquaresAndLines)
{
    struct Row {
        int nStyle;
        bool bMajorSquare, bMinorSquare;
    };
    for (const Row& row : {Row{0, true, false}, Row{1, true, true}, Row{2, false, false},
                           Row{4, true, false}, Row{-7, true, false}, Row{INT_MAX, true, false}}) {
        CPie<CPieUpgradeMeter> pie;
        pie->SetAxisStyle(row.nStyle);
        pie->SetTickCount(8);
        pie->SetMajorEvery(2);
        const std::vector<Mark> marks = MarksOf(pie);
        ASSERT_EQ(9U, marks.size());
        for (int i = 0; i <= 8; ++i)
            EXPECT_EQ(i % 2 ? row.bMinorSquare : row.bMajorSquare, marks[i].bSquare)
                << "style " << row.nStyle << " tick " << i;
        if (row.nStyle == 1) {
            EXPECT_GT(marks[2].Side(), marks[3].Side());
        }
    }
    CPie<CPieUpgradeMeter> pie;
    pie->SetAxisStyle(3);
    pie->SetTickCount(8);
    pie->SetMajorEvery(2);
    EXPECT_EQ(5U, MarksOf(pie).size()); // the major squares alone
}

TEST(PieUpgradeMeter, MarksAreMirroredAtTheUpright)
{
    for (const int nStyle : {0, 1, 2, 3})
        for (const int r : {60, 101, 200}) {
            CPie<CPieUpgradeMeter> pie(r);
            pie->SetAxisStyle(nStyle);
            pie->SetTickCount(20);
            pie->SetMajorEvery(5);
            const std::vector<Mark> marks = MarksOf(pie);
            ASSERT_FALSE(marks.empty());
            for (std::size_t i = 0; i < marks.size(); ++i) {
                const Mark& a = marks[i];
                const Mark& b = marks[marks.size() - 1 - i];
                EXPECT_EQ(a.bSquare, b.bSquare);
                const LONG nLeft = a.bSquare ? b.p2.x - 1 : b.p1.x; // a box's far edge is outside
                EXPECT_LE(std::abs(2 * C.x - nLeft - a.p1.x), 1) << nStyle << " " << r << " " << i;
                EXPECT_EQ(a.p1.y, b.p1.y);
                EXPECT_EQ(a.p2.y, b.p2.y);
            }
        }
}

TEST(PieUpgradeMeter, PaintsMarksInScaleColorInsideTheRadiusAlone)
{
    for (const int r : {45, 60, R})
        for (const int nStyle : {0, 1, 2, 3}) {
            CTestBitmap drawn(240, 240, FACE);
            CPie<CPieUpgradeMeter> pie(r);
            pie->SetAxisStyle(nStyle);
            EXPECT_EQ(1, pie->DrawScale(drawn.Dc()));
            EXPECT_GT(CountPixels(drawn, SCALE), 10);
            EXPECT_EQ(240 * 240, CountPixels(drawn, SCALE) + CountPixels(drawn, FACE));
            for (int y = 0; y < 240; ++y)
                for (int x = 0; x < 240; ++x)
                    if (drawn.At(x, y) == SCALE) {
                        EXPECT_LE(std::hypot(x - C.x, y - C.y), r + 0.5) << x << "," << y;
                    }
        }
}

TEST(PieUpgradeMeter, WithoutAScaleThereAreNeitherMarksNorNumbers)
{
    const std::function<void(CMeter&)> spoilers[] = {[](CMeter& m) { m.SetTickCount(0); },
                                                     [](CMeter& m) { m.SetMax(0); },
                                                     [](CMeter& m) { m.SetMin(500); }};
    for (const auto& spoil : spoilers) {
        CPie<CPieUpgradeMeter> pie;
        spoil(*pie.operator->());
        CRecording recording;
        EXPECT_EQ(0, pie->DrawScale(recording.Dc()));
        EXPECT_EQ(0, pie->DrawLabels(recording.Dc()));
        EXPECT_EQ(Lines{}, recording.Calls());
    }
}

TEST(PieUpgradeMeter, NumbersHaveTheCellOfTheFontSizeOrOfASixthOfTheRadius)
{
    struct Row {
        int r;
        unsigned nCode;
        int nWidth, nHeight;
    };
    for (const Row& row : {Row{47, 0, 6, 12}, Row{48, 0, 8, 16}, Row{71, 0, 8, 16},
                           Row{72, 0, 12, 24}, Row{95, 0, 12, 24}, Row{96, 0, 16, 32},
                           Row{R, 1, 6, 12}, Row{R, 4, 16, 16}, Row{R, 11, 6, 12}}) {
        CPie<CPieUpgradeMeter> pie(row.r);
        pie->SetFontSize(row.nCode);
        pie->SetTickCount(4);
        pie->SetMajorEvery(2);
        CRecording recording;
        EXPECT_EQ(1, pie->DrawLabels(recording.Dc()));
        const std::string font = "CreateFont width " + std::to_string(row.nWidth) + " height " +
                                 std::to_string(row.nHeight) + " charset 255 face ";
        EXPECT_EQ(Lines{font}, recording.Only({"CreateFont"})) << row.r;
        Lines texts;
        for (const std::string& call : recording.Only({"Text"})) {
            texts.push_back(call.substr(call.find('"')));
            const std::vector<LONG> at = Numbers(call.substr(5, call.find('"') - 5));
            EXPECT_GE(at[0], BOX.left);
            EXPECT_GE(at[1], BOX.top);
            EXPECT_LE(at[1] + row.nHeight, BOX.bottom);
        }
        EXPECT_EQ((Lines{"\"0\"", "\"50\"", "\"100\""}), texts);
        EXPECT_EQ("SetTextColor " + Hex(LABEL), recording.Only({"SetTextColor"}).at(0));
    }
}

TEST(PieUpgradeMeter, FrameIsAOnePixelOutlineOfTheSpanInScaleColor)
{
    for (const int r : {60, R, 250}) {
        CPie<CPieUpgradeMeter> pie(r, 40, 300);
        pie->SetShowAxis(1);
        CRecording recording;
        EXPECT_EQ(1, pie->DrawFrame(recording.Dc()));
        EXPECT_EQ((Lines{Sector(40, 300, r - 19, "Arc ")}),
                  recording.Only({"Arc", "Pie", "Chord", "Polygon", "Ellipse", "Rectangle"}));
        Lines ends; // the sides run between the centre and the span's corners
        for (const Mark& side : Sides(recording)) {
            const bool bFromCentre = Text(side.p1) == Text(C);
            EXPECT_TRUE(bFromCentre || Text(side.p2) == Text(C));
            ends.push_back(Text(bFromCentre ? side.p2 : side.p1));
        }
        Lines corners{Text(Polar(r - 19, 40)), Text(Polar(r - 19, 300))};
        std::sort(ends.begin(), ends.end());
        std::sort(corners.begin(), corners.end());
        EXPECT_EQ(corners, ends);
        const Lines pens = recording.Only({"CreatePen"});
        EXPECT_FALSE(pens.empty());
        for (const std::string& pen : pens)
            EXPECT_EQ("CreatePen style 0 width 1 color " + Hex(SCALE), pen);
    }
}

TEST(PieUpgradeMeter, FrameLeavesTheFillToBeSeen)
{
    CTestBitmap drawn(240, 240, FACE);
    CPie<CPieUpgradeMeter> pie;
    pie->SetShowFrame(1);
    pie->SetShowAxis(1);
    EXPECT_EQ(1, pie->Draw(drawn.Dc(), 50, QEL_DRAW_FULL)); // 30 to 180 of 330
    for (const int r : {20, 50, 75}) {
        for (const float a : {50.0F, 90.0F, 165.0F})
            EXPECT_EQ(SECTOR, drawn.At(Polar(r, a).x, Polar(r, a).y)) << r << " at " << a;
        for (const float a : {0.0F, 200.0F, 270.0F, 310.0F})
            EXPECT_EQ(FACE, drawn.At(Polar(r, a).x, Polar(r, a).y)) << r << " at " << a;
    }
    EXPECT_EQ(SCALE, drawn.At(C.x, C.y - FILL)); // the outline above the upright
}

TEST(PieUpgradeMeter, FrameWithoutAFillHasTheEraseColorAsItsGround)
{
    CPie<CPieUpgradeMeter> pie(R, 40, 300);
    pie->SetShowAxis(1);
    pie->SetShowFill(0);
    CRecording recording;
    EXPECT_EQ(1, pie->DrawFrame(recording.Dc()));
    EXPECT_EQ((Lines{Sector(40, 300), Sector(40, 300, FILL, "Arc ")}), // the ground lies below
              recording.Only({"Arc", "Pie", "Chord", "Polygon", "Ellipse", "Rectangle"}));
    const Lines colors = recording.Only({"SetTextColor"});
    ASSERT_FALSE(colors.empty());
    EXPECT_EQ("SetTextColor " + Hex(ERASE), colors.front()); // hatch 0 is all text colour
}

TEST(PieUpgradeMeter, FrameOfAWholeCircleHasNoSides)
{
    for (const float fEnd : {359.0F, 360.0F, 400.0F}) {
        CPie<CPieUpgradeMeter> pie(R, 0, fEnd);
        CRecording recording;
        EXPECT_EQ(1, pie->DrawFrame(recording.Dc()));
        EXPECT_EQ(1u, recording.Only({"Arc"}).size());
        EXPECT_EQ(fEnd < 360 ? 2u : 0u, Sides(recording).size()) << fEnd;
    }
}

TEST(PieUpgradeMeter, FrameNeedsASpanAndAxisOrFill)
{
    CPie<CPieUpgradeMeter> noSpan(R, 330, 30), noRoom(19), neither;
    noSpan->SetShowAxis(1);
    noRoom->SetShowAxis(1);
    neither->SetShowFill(0);
    for (CPie<CPieUpgradeMeter>* p : {&noSpan, &noRoom, &neither}) {
        CRecording recording;
        EXPECT_EQ(0, (*p)->DrawFrame(recording.Dc()));
        EXPECT_EQ(Lines{}, recording.Calls());
    }
}

TEST(PieMeterScale, TakesAnyRadiusAngleAndStyle)
{
    const CTestBitmap bitmap(60, 60, FACE);
    const std::string before = DcState(bitmap.Dc());
    for (const auto kind : {CPieMeterScale::Kind::Major, CPieMeterScale::Kind::Minor})
        for (const int r : {INT_MIN, -1, 0, 1, 14, 3000, 3001, INT_MAX})
            for (const float a : {0.0F, -721.5F, 32000.0F, 4e9F})
                for (const int nStyle : {INT_MIN, 0, 1, 2, 3, INT_MAX})
                    CPieMeterScale(kind, SCALE).Draw(bitmap.Dc(), {30, 30}, r, a, nStyle);
    EXPECT_EQ(before, DcState(bitmap.Dc()));
    const CTestBitmap drawn(240, 240, FACE); // and still in working order
    EXPECT_EQ(1, CPieMeterScale(CPieMeterScale::Kind::Major, SCALE).Draw(drawn.Dc(), C, R, 90, 0));
    EXPECT_GT(CountPixels(drawn, SCALE), 0);
}

} // namespace
