// The round dial: the plain dial with fixed angles and a blade as needle. The code is
// meter/CircleMeter.*.
#include "meter/CircleMeter.h"

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
#include <string>
#include <vector>

namespace {

using Painter = std::function<void(HDC)>;

constexpr POINT C{120, 115};
constexpr RECT BOX{0, 0, 240, 240};
constexpr int R = 100;
constexpr COLORREF FACE = 0x102030, SCALE = 0x405060, PIN = 0x0000AA, LABEL = 0x00BB11;
constexpr COLORREF LOW = 0xCC0000, HIGH = 0x00CCCC;

template <class Meter>
Meter& Prepared(Meter& m)
{
    m.SetCentre(C);
    m.SetMeterRect(BOX);
    m.SetMax(100);
    m.SetScaleEnd(100);
    m.SetLowLimit(20);
    m.SetHighLimit(80);
    m.SetFaceColor(FACE);
    m.SetScaleColor(SCALE);
    m.SetPinColor(PIN);
    m.SetLabelColor(LABEL);
    m.SetLowColor(LOW);
    m.SetHighColor(HIGH);
    return m;
}

void ShowAll(CMeter& m)
{
    for (auto pfn : {&CMeter::SetShowPin, &CMeter::SetShowScale, &CMeter::SetShowAxis,
                     &CMeter::SetShowLabels, &CMeter::SetShowFill, &CMeter::SetShowAlarm,
                     &CMeter::SetShowFrame, &CMeter::SetShowValue})
        (m.*pfn)(1);
}

POINT Polar(int r, float a)
{
    return {C.x - static_cast<int>(r * DegSin(a)), C.y + static_cast<int>(r * DegCos(a))};
}

using Shapes = std::vector<std::vector<POINT>>;

// Tail and blade for a dial of radius r: inner radius (r - 17) / 5, tip at r - 17.
Shapes Blade(int r, float a)
{
    const int nInner = (r - 17) / 5, nTip = r - 17;
    return {{Polar(nInner, a + 135), Polar(nInner / 4, a), Polar(nInner, a + 225)},
            {Polar(nInner, a - 45), Polar(nTip, a), Polar(nInner, a + 45), Polar(nInner / 4, a)}};
}

Lines Polygons(const Shapes& shapes)
{
    Lines lines;
    for (const auto& shape : shapes) {
        lines.emplace_back("Polygon");
        for (const POINT& pt : shape)
            lines.back() += " " + std::to_string(pt.x) + "," + std::to_string(pt.y);
    }
    return lines;
}

void RawBlade(HDC hdc, int r, float a, COLORREF clr)
{
    CTestSelect pen(hdc, ::CreatePen(PS_SOLID, 1, clr), true);
    CTestSelect brush(hdc, ::CreateSolidBrush(clr), true);
    for (const auto& shape : Blade(r, a))
        ::Polygon(hdc, shape.data(), static_cast<int>(shape.size()));
}

Lines Calls(const Painter& draw)
{
    CRecording recording;
    draw(recording.Dc());
    return recording.Calls();
}

TEST(CircleMeter, IsOpenAtTheBottomOrAFullCircleAndTurnsByItsOffset)
{
    struct Row {
        bool bFull;
        double fOffset;
        float fStart, fEnd, fMiddle;
    };
    for (const Row& row : {Row{false, 0, 30, 330, 180}, Row{true, 0, 0, 360, 180},
                           Row{false, 45, 75, 375, 225}, Row{true, -90.5, -90.5F, 269.5F, 89.5F}}) {
        CCircleMeter m(77, row.bFull, row.fOffset);
        EXPECT_EQ(77, m.Radius());
        EXPECT_EQ(row.fStart, m.StartAngle());
        EXPECT_EQ(row.fEnd, m.EndAngle());
        EXPECT_EQ(row.fOffset, m.AngleOffset());
        EXPECT_EQ(row.fStart, m.AngleOf(-1));
        EXPECT_EQ(row.fMiddle, m.AngleOf(5));
        EXPECT_EQ(row.fEnd, m.AngleOf(11));
    }
}

TEST(CircleMeter, SharesAllLayersButTheNeedleWithThePlainDial)
{
    for (const bool bFull : {false, true})
        for (const int nReverse : {0, 1})
            for (const int r : {30, R, 250}) {
                CCircleMeter round(r, bFull, 15);
                CArcMeter plain(r, bFull ? 0 : 30, bFull ? 360 : 330, 15);
                for (CArcMeter* p : {static_cast<CArcMeter*>(&round), &plain}) {
                    Prepared(*p);
                    ShowAll(*p);
                    p->SetShowPin(0);
                    p->SetReverse(nReverse);
                    p->SetTickCount(12);
                    p->SetMajorEvery(3);
                }
                const Lines expected = Calls([&](HDC hdc) { plain.Draw(hdc, 30, 0); });
                EXPECT_GT(expected.size(), 50U);
                EXPECT_EQ(expected, Calls([&](HDC hdc) { EXPECT_EQ(1, round.Draw(hdc, 30, 0)); }));
                EXPECT_EQ(expected,
                          Calls([&](HDC hdc) { EXPECT_EQ(1, round.Draw(hdc, 30.0F, 0)); }));
            }
}

TEST(CircleMeter, NeedleIsATailAndABladeInPinColorOnTheFace)
{
    for (const int r : {25, 60, R, 333}) {
        CCircleMeter m(r, false, 0);
        Prepared(m);
        for (const int v : {-9, 0, 17, 50, 88, 100, 900}) {
            const float a = 30.0F + 3 * std::min(std::max(v, 0), 100);
            for (const bool bReal : {false, true}) {
                CRecording recording;
                EXPECT_EQ(1, bReal ? m.DrawPin(recording.Dc(), static_cast<float>(v), 0)
                                   : m.DrawPin(recording.Dc(), v, QEL_DRAW_FULL));
                EXPECT_EQ(Polygons(Blade(r, a)),
                          recording.Only({"Polygon", "LineTo", "Ellipse", "Arc"}));
                EXPECT_EQ((Lines{"CreatePen style 0 width 1 color " + Hex(PIN)}),
                          recording.Only({"CreatePen"}));
                EXPECT_EQ((Lines{"CreateBrush style 0 color " + Hex(PIN)}),
                          recording.Only({"CreateBrush"}));
                EXPECT_EQ("SetBkColor " + Hex(FACE), recording.Only({"SetBkColor"}).at(0));
            }
        }
    }
}

TEST(CircleMeter, ARealValueTurnsTheNeedleByPartsOfADegree)
{
    CCircleMeter m(R, false, 0);
    Prepared(m);
    CRecording recording;
    EXPECT_EQ(1, m.DrawPin(recording.Dc(), 40.25F, 0));
    EXPECT_EQ(Polygons(Blade(R, 150.75F)), recording.Only({"Polygon"}));
}

TEST(CircleMeter, ErasesTheSameBladeInFaceColorAtTheStoredValue)
{
    for (const int nReverse : {0, 1}) {
        CCircleMeter m(R, false, 0);
        Prepared(m);
        m.SetReverse(nReverse);
        m.SetLastValue(20);
        for (const bool bReal : {false, true}) {
            CRecording recording;
            EXPECT_EQ(1, bReal ? m.ErasePin(recording.Dc(), 70.5F, 0)
                               : m.ErasePin(recording.Dc(), 70, 2));
            EXPECT_EQ(Polygons(Blade(R, nReverse ? 270 : 90)),
                      recording.Only({"Polygon", "LineTo", "Ellipse"}));
            EXPECT_EQ((Lines{"CreatePen style 0 width 1 color " + Hex(FACE)}),
                      recording.Only({"CreatePen"}));
            EXPECT_EQ((Lines{"CreateBrush style 0 color " + Hex(FACE)}),
                      recording.Only({"CreateBrush"}));
        }
        EXPECT_EQ(Lines{}, Calls([&](HDC hdc) { // a full draw has nothing to erase
                      EXPECT_EQ(1, m.ErasePin(hdc, 70, QEL_DRAW_FULL));
                      EXPECT_EQ(1, m.ErasePin(hdc, 70.0F, 0xFFFFFFFF));
                  }));
    }
}

TEST(CircleMeter, DrawsNoNeedleWithoutScaleOrRoom)
{
    struct Row {
        const char* pszCase;
        int r;
        std::function<void(CCircleMeter&)> spoil;
    };
    const Row rows[] = {
        {"no ticks", R, [](CCircleMeter& m) { m.SetTickCount(0); }},
        {"empty range", R, [](CCircleMeter& m) { m.SetMax(0); }},
        {"inverted range", R, [](CCircleMeter& m) { m.SetMin(101); }},
        {"radius 20", 20, [](CCircleMeter&) {}}, // 3 pixels at most
        {"radius 3", 3, [](CCircleMeter&) {}},
        {"no radius", 0, [](CCircleMeter&) {}},
        {"a negative radius", -50, [](CCircleMeter&) {}},
    };
    for (const Row& row : rows) {
        CCircleMeter m(row.r, false, 0);
        row.spoil(Prepared(m));
        EXPECT_EQ(Lines{}, Calls([&](HDC hdc) {
                      EXPECT_EQ(0, m.DrawPin(hdc, 50, 0));
                      EXPECT_EQ(0, m.DrawPin(hdc, 50.0F, 0));
                      EXPECT_EQ(0, m.ErasePin(hdc, 50, 0));
                      EXPECT_EQ(0, m.ErasePin(hdc, 50.0F, 0));
                  }))
            << row.pszCase;
    }
}

TEST(CircleMeter, PixelsOfADrawAndAnUpdateAreThoseOfTheRawCalls)
{
    CTestBitmap expected(240, 240, FACE), drawn(240, 240, FACE);
    CCircleMeter m(R, false, 0);
    Prepared(m).SetShowPin(1);
    RawBlade(expected.Dc(), R, 30 + 3 * 65, PIN);
    EXPECT_EQ(1, m.Draw(drawn.Dc(), 65, QEL_DRAW_FULL));
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ("", FirstDifference(expected, drawn));

    RawBlade(expected.Dc(), R, 30 + 3 * 65, FACE);
    EXPECT_TRUE(IsBlank(expected)); // the erase takes away what was drawn, to the last pixel
    RawBlade(expected.Dc(), R, 30 + 3 * 12.5F, PIN);
    EXPECT_EQ(1, m.Draw(drawn.Dc(), 12.5F, 0));
    EXPECT_EQ("", FirstDifference(expected, drawn));
    EXPECT_EQ(12, m.GetLastValue());
}

TEST(CircleMeter, UpdatesEndInThePictureOfAFullDraw)
{
    // But for the numbers: their smoothed edges darken each time they are painted over.
    for (const int nReverse : {0, 1}) {
        CTestBitmap updated(240, 240, FACE), fresh(240, 240, FACE);
        CCircleMeter m(R, true, 30), other(R, true, 30);
        for (CCircleMeter* p : {&m, &other}) {
            ShowAll(Prepared(*p));
            p->SetShowLabels(0);
            p->SetReverse(nReverse);
        }
        m.Draw(updated.Dc(), 0, QEL_DRAW_FULL);
        for (const int v : {-10, 5, 21, 22, 77, 100, 150, 63, 64, 3, 42})
            EXPECT_EQ(1, m.Draw(updated.Dc(), v, 0));
        EXPECT_EQ(1, other.Draw(fresh.Dc(), 42, QEL_DRAW_FULL));
        EXPECT_FALSE(IsBlank(fresh));
        EXPECT_EQ("", FirstDifference(fresh, updated));
    }
}

TEST(CircleMeter, LeavesTheDeviceContextAsItWasAndGivesItsObjectsBack)
{
    CTestBitmap bitmap(240, 240);
    const HDC hdc = bitmap.Dc();
    CTestSelect pen(hdc, ::CreatePen(PS_DOT, 1, 0x123456), true);
    CTestSelect brush(hdc, ::CreateSolidBrush(0x654321), true);
    MarkState(hdc);
    ::SetPolyFillMode(hdc, WINDING);
    CCircleMeter m(R, false, 0);
    ShowAll(Prepared(m));
    m.Draw(hdc, 5, QEL_DRAW_FULL);
    const std::string before = DcState(hdc);
    const std::size_t nSpare = SpareObjects();
    for (int v = 0; v <= 100; v += 5) {
        EXPECT_EQ(1, m.Draw(hdc, v, 0));
        EXPECT_EQ(1, m.Draw(hdc, v + 0.5F, QEL_DRAW_FULL));
        m.DrawPin(hdc, v, 0); // without the clip around it
        m.ErasePin(hdc, v, 0);
    }
    EXPECT_EQ(before, DcState(hdc));
    EXPECT_EQ(nSpare, SpareObjects());
}

TEST(CircleMeter, DrawsAnyValueRangeAndRadius)
{
    const CTestBitmap bitmap(60, 60);
    const int ends[] = {INT_MIN, -1, 0, 100, INT_MAX};
    for (const int r : {INT_MIN, -1, 17, 24, 3002, INT_MAX})
        for (const int nMin : ends)
            for (const int nMax : ends) {
                CCircleMeter m(r, r & 1, 0);
                ShowAll(Prepared(m));
                m.SetMin(nMin);
                m.SetMax(nMax);
                m.SetReverse(r & 1);
                for (const int v : ends) EXPECT_EQ(1, m.Draw(bitmap.Dc(), v, 0));
                for (const float f : {-FLT_MAX, FLT_MAX, std::numeric_limits<float>::quiet_NaN()})
                    EXPECT_EQ(1, m.Draw(bitmap.Dc(), f, 0));
                EXPECT_EQ(1, m.Draw(bitmap.Dc(), 77, 0));
                EXPECT_EQ(77, m.GetLastValue());
            }
}

TEST(CircleMeter, DrawsWithAnyAngleOffsetInAMomentsTime)
{
    // A host may set any offset. Points that come out thousands of millions of pixels away would
    // make a filled blade take seconds to minutes.
    const CTestBitmap bitmap(240, 240);
    for (const int r : {R, 400})
        for (const double fOffset :
             {-360.0, 32768.0, 40000.0, 1e6, 1e8, 542514491.0, 2147483647.0, 4294967295.0}) {
            CCircleMeter m(r, false, fOffset);
            ShowAll(Prepared(m));
            const DWORD nBegin = ::GetTickCount();
            EXPECT_EQ(1, m.Draw(bitmap.Dc(), 50, QEL_DRAW_FULL));
            EXPECT_EQ(1, m.Draw(bitmap.Dc(), 60, 0));
            EXPECT_LT(::GetTickCount() - nBegin, 60000U) << "offset " << fOffset << " radius " << r;
            if (HasFailure()) return; // larger ones take longer still
        }
}

} // namespace
