// Each GDI object that a draw asks for is refused in turn. The draw goes on without it, nothing
// leaks, the device context is as before, and the next draw is whole.
#include "base/PixelPen.h"
#include "base/Refusals.h"
#include "meter/ArcMeter.h"
#include "meter/BarMeter3D.h"
#include "meter/DialComponents.h"
#include "meter/DialScopes.h"
#include "render/QELViewRadial.h"
#include "tests/native/GdiDouble.h"
#include "tests/native/KernelDouble.h"
#include "tests/native/Life.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int MOST_CREATIONS = 20000;

// Values that move every meter and scale, so that a partial redraw has something to erase.
void MoveValues(HQELENGINE hEngine, DWORD nValue)
{
    QELSetScaleStatus(hEngine, 1, nValue);
    for (DWORD nId = 41; nId <= 46; ++nId) QELSetScaleStatus(hEngine, nId, nValue % 20);
}

void ShowAll(HQELENGINE hEngine)
{
    for (const DWORD nId : {0U, 51U, 52U, 53U, 54U, 55U, 56U, 57U, 58U, 59U, 60U})
        for (const DWORD nSelector :
             {QEL_SEL_SHOW_SCALE, QEL_SEL_SHOW_PIN, QEL_SEL_SHOW_LABELS, QEL_SEL_SHOW_ALARM,
              QEL_SEL_SHOW_FRAME, QEL_SEL_SHOW_VALUE, QEL_SEL_MAJOR_EVERY})
            QELSetScaleParam(hEngine, nId, nSelector, 1);
    QELSetStatus(hEngine, 0xFFFFFFFF);
}

struct Case {
    const char* pszName;
    DWORD nFlags;
    std::function<void(HQELENGINE)> prepare;
    int nFewest; // objects that the draw asks for at least
};

const Case g_cases[] = {
    {"first draw", QEL_DRAW_FULL, [](HQELENGINE) {}, 100},
    {"everything shown", QEL_DRAW_FULL, ShowAll, 150},
    {"pressed", QEL_DRAW_FULL | QEL_DRAW_PRESSED, [](HQELENGINE) {}, 100},
    {"turned", QEL_DRAW_FULL, [](HQELENGINE h) { QELRotate(h, 90); }, 100},
    {"partial redraw", 0,
     [](HQELENGINE h) {
         Painted(h);
         MoveValues(h, 12);
     },
     20},
    {"texts as Unicode", QEL_DRAW_FULL,
     [](HQELENGINE h) {
         ShowAll(h);
         QELSetTextCodePage(h, 65001);
     },
     150},
    {"cylinders and other pins", QEL_DRAW_FULL,
     [](HQELENGINE h) {
         ShowAll(h);
         for (DWORD nId = 51; nId <= 60; ++nId) {
             QELSetScaleParam(h, nId, QEL_SEL_FRAME_OPTION, 1);
             QELSetScaleParam(h, nId, QEL_SEL_PIN_STYLE, nId % 5);
             QELSetScaleParam(h, nId, QEL_SEL_AXIS_STYLE, nId % 4);
             QELSetScaleParam(h, nId, QEL_SEL_FILL_ONLY, nId % 2);
         }
     },
     150},
};

void FixTheTime()
{
    const SYSTEMTIME time{2024, 2, 4, 29, 10, 9, 36, 0};
    kernel::SetTime(&time, &time);
}

// What is seen in the end when nothing fails.
std::string Undisturbed(const Case& c)
{
    CTestEngine engine;
    EXPECT_TRUE(engine.Open());
    c.prepare(engine);
    Painted(engine, c.nFlags);
    return Everything(engine);
}

class GdiFault : public testing::TestWithParam<Case> {};

} // namespace

TEST_P(GdiFault, ADrawWithoutOneObjectGoesOn)
{
    FixTheTime();
    const Case& c = GetParam();
    const std::string expected = Undisturbed(c);
    int n = 1;
    for (; n < MOST_CREATIONS && !HasFailure(); ++n) {
        SCOPED_TRACE("object " + std::to_string(n));
        const gdi::CLeakCheck leaks; // outside of the engine: its views may keep regions
        CTestEngine engine;
        ASSERT_TRUE(engine.Open());
        c.prepare(engine);
        const RECT rc = DEVICE_RECT;
        const CPaper paper;
        bool bReached = false;
        {
            const gdi::CStateCheck state(paper, gdi::MAY_CHANGE_COLORS);
            gdi::FailCreation(n);
            EXPECT_EQ(1, QELDraw(engine, paper, &rc, c.nFlags));
            bReached = gdi::Creations() >= n;
            gdi::FailCreation(0);
        }
        EXPECT_EQ(expected, Everything(engine)) << "the draw after that";
        if (!bReached) break;
    }
    EXPECT_GT(n, c.nFewest);
    EXPECT_LT(n, MOST_CREATIONS);
}

TEST_P(GdiFault, ADrawWithoutAnyObjectFromOneOnGoesOn)
{
    FixTheTime();
    const Case& c = GetParam();
    const std::string expected = Undisturbed(c);
    for (int n = 1; n < 200 && !HasFailure(); n += n < 10 ? 1 : 17) {
        SCOPED_TRACE("from object " + std::to_string(n));
        const gdi::CLeakCheck leaks;
        CTestEngine engine;
        ASSERT_TRUE(engine.Open());
        c.prepare(engine);
        const RECT rc = DEVICE_RECT;
        const CPaper paper;
        {
            const gdi::CStateCheck state(paper, gdi::MAY_CHANGE_COLORS);
            gdi::FailCreationsFrom(n);
            EXPECT_EQ(1, QELDraw(engine, paper, &rc, c.nFlags));
            gdi::FailCreation(0);
        }
        EXPECT_EQ(expected, Everything(engine)) << "the draw after that";
    }
}

INSTANTIATE_TEST_SUITE_P(Draws, GdiFault, testing::ValuesIn(g_cases), [](const auto& draw) {
    std::string name;
    for (const char c : std::string(draw.param.pszName))
        if (c != ' ') name += c;
    return name;
});

// Dials and bars alone, in every style that they have.
TEST(GdiFaults, AMeterOfAnyTypeAndStyleGoesOnWithoutOneObject)
{
    FixTheTime();
    static constexpr const char* types[] = {"vert",         "vert3d",     "horz",  "horz3d",
                                            "round",        "Arc",        "pie",   "clock",
                                            "roundUpgrade", "pieUpgrade", "sector"};
    int nType = 0;
    for (const char* pszType : types) {
        const bool bBar = nType < 4;
        const bool bArc = nType == 5 || nType == 6 || nType == 9;
        ++nType;
        const std::string text =
            std::string("<qel width=\"200\" height=\"150\"><meter upin=\"1\" mtype=\"") + pszType +
            "\" crd=\"" + (bBar ? "20 10 100 140" : "100 75 60 20 5 180 145") +
            (bArc ? " 45 315" : "") + "\"><rect style=\"0x1\" crd=\"20 5 180 145\"/></meter></qel>";
        for (DWORD nStyle = 0; nStyle < 5; ++nStyle) {
            SCOPED_TRACE(std::string(pszType) + " " + std::to_string(nStyle));
            const auto prepare = [&](CTestEngine& engine) {
                EXPECT_TRUE(engine.Open(text));
                for (const DWORD nSelector :
                     {QEL_SEL_SHOW_SCALE, QEL_SEL_SHOW_PIN, QEL_SEL_SHOW_LABELS, QEL_SEL_SHOW_ALARM,
                      QEL_SEL_SHOW_FRAME, QEL_SEL_SHOW_VALUE, QEL_SEL_MAJOR_EVERY})
                    QELSetScaleParam(engine, 0, nSelector, 1);
                QELSetScaleParam(engine, 0, QEL_SEL_SECTOR_COUNT, 3);
                QELSetScaleParam(engine, 0, QEL_SEL_PIN_STYLE, nStyle);
                QELSetScaleParam(engine, 0, QEL_SEL_AXIS_STYLE, nStyle);
                QELSetScaleParam(engine, 0, QEL_SEL_FRAME_OPTION, nStyle % 2);
                for (const DWORD nPin : {1U, 2U, 3U}) QELSetScaleStatus(engine, nPin, 10 * nPin);
                EXPECT_EQ(1, QELSetScaleStatus(engine, 0, 7));
            };
            CTestEngine undisturbed;
            prepare(undisturbed);
            Painted(undisturbed); // a read-out has the colour of the value before
            const std::vector<std::string> expected = Painted(undisturbed);
            EXPECT_LT(3U, expected.size());
            int n = 1;
            for (; n < MOST_CREATIONS && !HasFailure(); ++n) {
                const gdi::CLeakCheck leaks;
                CTestEngine engine;
                prepare(engine);
                const RECT rc = DEVICE_RECT;
                const CPaper paper;
                const gdi::CStateCheck state(paper, gdi::MAY_CHANGE_COLORS);
                gdi::FailCreation(n);
                EXPECT_EQ(1, QELDraw(engine, paper, &rc, QEL_DRAW_FULL));
                const bool bReached = gdi::Creations() >= n;
                gdi::FailCreation(0);
                EXPECT_EQ(expected, Painted(engine)) << "the draw after object " << n;
                if (!bReached) break;
            }
            EXPECT_GT(n, 4);
        }
    }
}

// A region that is not to be had, a clip that cannot be told: under a clip, since most is asked
// there. A meter over a large pie asks for what shows of its region. Meters keep what they were
// made with, so that only the drawing opened anew has to be whole.
TEST(GdiFaults, ADrawUnderAClipGoesOnWithoutOneCall)
{
    FixTheTime();
    const std::string faces =
        "<qel width='400' height='300'>"
        "<meter mtype='vert' crd='20 10 300 290'><pie style='0x1' crd='0 0 400 300 400 150 200 0'/>"
        "</meter><meter mtype='vert3d' crd='20 10 300 290'><rect style='0x1' crd='9 9 90 290'/>"
        "</meter><rndrect style='0x60003' lnwid='9' crd='5 5 300 200 20 20'/></qel>";
    for (const std::string& text : {EveryElement(), faces}) {
        std::vector<std::string> expected;
        bool bReached = true;
        for (int n = 0; bReached && n < MOST_CREATIONS && !HasFailure(); ++n) {
            SCOPED_TRACE("call " + std::to_string(n));
            const gdi::CLeakCheck leaks;
            CTestEngine engine;
            ASSERT_TRUE(engine.Open(text));
            const RECT rc = DEVICE_RECT;
            const CPaper paper;
            ::IntersectClipRect(paper, 40, 30, 220, 260);
            gdi::FailCall(n);
            EXPECT_EQ(1, QELDraw(engine, paper, &rc, QEL_DRAW_FULL));
            bReached = n == 0 || gdi::Calls() >= n;
            gdi::FailCall(0);
            ASSERT_TRUE(engine.Open(text));
            const std::vector<std::string> painted = Painted(engine);
            if (n == 0) expected = painted;
            const auto [it, itPainted] =
                std::mismatch(expected.begin(), expected.end(), painted.begin(), painted.end());
            EXPECT_EQ(it == expected.end() ? "" : *it, itPainted == painted.end() ? "" : *itPainted)
                << "the drawing opened anew";
        }
        EXPECT_LT(5U, expected.size());
    }
}

// Of a pie that takes a large canvas the part that shows is made alone; without what it takes for
// that the whole is made, or there is none.
TEST(GdiFaults, WhatShowsOfALargePieIsRightOrThereIsNoRegion)
{
    const RECT rcQel{0, 0, 2200, 2200};
    const RECT rcShown{1000, 900, 1300, 1150};
    CQELViewPie pie(100, 100);
    QELSHAPEATTR attr{};
    ASSERT_EQ(1, pie.GetAttrBlock(&attr));
    const LONG geometry[] = {0, 0, 100, 100, 100, 50, 50, 0}; // the quarter at the top right
    std::copy(std::begin(geometry), std::end(geometry), attr.nGeometry);
    attr.nStyle = QEL_STYLE_FILL;
    ASSERT_EQ(1, pie.SetAttrBlock(&attr));
    std::string expected;
    for (void (*pfnFail)(int) : {&gdi::FailCall, &gdi::FailCreation}) {
        int nWithout = 0;
        for (int n = 0; n < 40; ++n) {
            SCOPED_TRACE(n);
            const gdi::CLeakCheck leaks;
            bool bPart = false;
            pfnFail(n);
            const HRGN hRegion = pie.MakeShownRegion(rcQel, rcShown, &bPart);
            pfnFail(0);
            if (!hRegion) {
                EXPECT_LT(0, n);
                ++nWithout;
                continue;
            }
            const HRGN hShown = ::CreateRectRgnIndirect(&rcShown);
            ::CombineRgn(hShown, hShown, hRegion, RGN_AND);
            if (n == 0) expected = gdi::RegionText(hShown);
            EXPECT_EQ(expected, gdi::RegionText(hShown));
            EXPECT_TRUE(::PtInRegion(hShown, 1200, 1000)); // within the quarter
            ::DeleteObject(hShown);
            ::DeleteObject(hRegion);
        }
        EXPECT_LT(0, nWithout);
        EXPECT_LT(nWithout, 40);
    }
}

// The rectangle that a host paints in, and the values that regions are made for.
TEST(GdiFaults, QueriesDoWithoutObjects)
{
    CTestEngine engine;
    ASSERT_TRUE(engine.Open());
    RECT before{};
    ASSERT_EQ(1, QELGetDrawGraphRect(engine, &before));
    gdi::FailCreationsFrom(1);
    RECT rc{};
    EXPECT_EQ(1, QELGetDrawGraphRect(engine, &rc));
    EXPECT_EQ(1, QELRotate(engine, 90));
    EXPECT_EQ(1, QELRotate(engine, 0));
    EXPECT_EQ(before.left, rc.left);
    EXPECT_EQ(before.bottom, rc.bottom);
    gdi::FailCreation(0);
}

TEST(GdiFaults, AFigureWithoutItsPenOrBrushSelectsNeither)
{
    const CPaper paper;
    const HGDIOBJ hPen = ::GetCurrentObject(paper, OBJ_PEN);
    const HGDIOBJ hBrush = ::GetCurrentObject(paper, OBJ_BRUSH);
    const gdi::CLeakCheck leaks;
    for (const int32_t nPenWidth : {0, 1, 3})
        for (int nFailed = 0; nFailed <= 3; ++nFailed) { // the pen when it has one, the brush
            SCOPED_TRACE(testing::Message() << "width " << nPenWidth << " object " << nFailed);
            gdi::FailCreation(nFailed);
            {
                const CFigureScope figure(paper, nPenWidth, 1, 2);
                const bool bReady = nFailed == 0 || nFailed > (nPenWidth ? 2 : 1);
                EXPECT_EQ(bReady, figure.IsReady());
                EXPECT_EQ(bReady, ::GetCurrentObject(paper, OBJ_PEN) != hPen);
                EXPECT_EQ(bReady, ::GetCurrentObject(paper, OBJ_BRUSH) != hBrush);
            }
            gdi::FailCreation(0);
            EXPECT_EQ(hPen, ::GetCurrentObject(paper, OBJ_PEN));
            EXPECT_EQ(hBrush, ::GetCurrentObject(paper, OBJ_BRUSH));
        }
}

// The column is asked for again: a bar is kept for as long as its face is.
TEST(GdiFaults, ABarWhoseFaceCouldNotBeMeasuredIsFilledByTheNextDraw)
{
    const CPaper paper;
    const HRGN hRegion = ::CreateRectRgn(10, 10, 90, 190);
    {
        const RECT rcBar{10, 10, 90, 190};
        const uint32_t nBefore = CountRefusals();
        gdi::FailCall(1);
        CUpBarMeter bar(hRegion, rcBar);
        EXPECT_EQ(nBefore + 1, CountRefusals()); // a picture of it is known not to be whole
        bar.SetMax(100);
        gdi::FailCall(1);
        EXPECT_EQ(0, bar.DrawFill(paper, 50, QEL_DRAW_FULL));
        gdi::FailCall(0);
        EXPECT_EQ(nBefore + 2, CountRefusals());
        const RECT rcColumn = bar.Column();
        EXPECT_TRUE(::EqualRect(&rcBar, &rcColumn));
        gdi::LogPaintings(paper);
        EXPECT_EQ(1, bar.DrawFill(paper, 50, QEL_DRAW_FULL));
        EXPECT_EQ(2U, gdi::Paintings(paper).size()); // the bar and what is empty of it
    }
    ::DeleteObject(hRegion);
}

namespace {

std::string ClipOf(HDC hdc)
{
    const HRGN hClip = ::CreateRectRgn(0, 0, 0, 0);
    const std::string text = ::GetClipRgn(hdc, hClip) == 1 ? gdi::RegionText(hClip) : "none";
    ::DeleteObject(hClip);
    return text;
}

} // namespace

// The state cannot be saved, the region not made, or not told: the clip is put back or left alone.
TEST(GdiFaults, ADialThatCannotKeepTheClipLeavesItAsItWas)
{
    constexpr RECT DIAL{20, 20, 60, 60};
    const CPaper paper;
    for (const bool bHostClips : {false, true}) {
        if (bHostClips) ::IntersectClipRect(paper, 5, 5, 50, 300);
        const std::string before = ClipOf(paper);
        const uint32_t nBefore = CountRefusals();
        {
            gdi::FailCall(1); // the state
            const CDialClip clip(paper, DIAL, true);
            gdi::FailCall(0);
            EXPECT_TRUE(clip.IsVisible());
            EXPECT_NE(before, ClipOf(paper));
        }
        EXPECT_EQ(before, ClipOf(paper));
        EXPECT_EQ(nBefore, CountRefusals()); // nothing is missing
        for (void (*pfnFail)(int) : {&gdi::FailCall, &gdi::FailCreation}) {
            pfnFail(1); // the region's clip, or the region
            const CDialClip clip(paper, DIAL, false);
            pfnFail(0);
            EXPECT_FALSE(clip.IsVisible());
            EXPECT_EQ(before, ClipOf(paper)); // nobody would widen it again
        }
        EXPECT_EQ(before, ClipOf(paper));
        EXPECT_LE(nBefore + 2, CountRefusals());
    }
    ::SelectClipRgn(paper, nullptr);
}

// A number that might be cut off would be a wrong one.
TEST(GdiFaults, AReadOutThatCannotBeMeasuredIsLeftOut)
{
    const CPaper paper;
    const HRGN hRegion = ::CreateRectRgn(10, 10, 90, 190);
    {
        CUpBarMeter3D bar(hRegion, {10, 10, 90, 190});
        gdi::LogPaintings(paper);
        {
            const gdi::CNoTextExtents none;
            EXPECT_EQ(0, bar.DrawValueText(paper, 5));
            EXPECT_EQ(0, bar.DrawValueText(paper, 5.5F));
        }
        EXPECT_TRUE(gdi::Paintings(paper).empty());
        EXPECT_EQ(1, bar.DrawValueText(paper, 5));
        EXPECT_EQ(1U, gdi::Paintings(paper).size());
    }
    ::DeleteObject(hRegion);
}

TEST(GdiFaults, ANumberThatCannotBeMeasuredCountsAsOneWithoutAWidth)
{
    const CPaper paper;
    const CScaleMark mark(8, 16, 0);
    EXPECT_EQ(24, mark.WidthOf(paper, "100"));
    const gdi::CNoTextExtents none;
    EXPECT_EQ(0, mark.WidthOf(paper, "100"));
}

TEST(GdiFaults, GradientsComeWithoutABrushAndHatchesNotAtAll)
{
    const RECT rc{0, 0, 20, 10};
    gdi::FailCreation(1);
    const HQELGRADIENT h = QELCreateGradientDescriptor(&rc, 2, 1, 2);
    gdi::FailCreation(0);
    ASSERT_NE(nullptr, h);
    EXPECT_EQ(nullptr, QELGetGradientBrush(h));
    EXPECT_EQ(1, QELCloseGradientDescriptor(h));
    for (int n = 1; n <= 2; ++n) { // the bitmap, the brush
        SCOPED_TRACE(n);
        CQELDraft draft(DRAFT_DOTS);
        HBRUSH hBrush = nullptr;
        gdi::FailCreation(n);
        EXPECT_EQ(0, draft.GetDraftBrush(hBrush, nullptr, 1, 2));
        gdi::FailCreation(0);
        EXPECT_EQ(nullptr, hBrush);
        EXPECT_NE(0, draft.GetDraftBrush(hBrush, nullptr, 1, 2));
        EXPECT_NE(nullptr, hBrush);
    }
}

// ---- at a pixel scale, smooth, and into memory ----

namespace {

// Few elements, so that each call can fail in every way of drawing.
constexpr const char* FEW =
    "<qel width='40' height='30'><rect crd='2 3 20 25' lnwid='1' style='0x1' dr='7' fg='0xff'"
    " bg='0xff00'/><polygon crd='9 9 30 9 20 28' lnwid='1' lnstyle='1'/><polyline lnwid='1'"
    " crd='1 1 30 1 30 20 35 28'/><text id='t' crd='3 3 39 29'>#</text></qel>";
constexpr SIZE PICTURE{40, 30};

struct Way {
    DWORD nPercent;
    int nSamples;
};
constexpr Way g_ways[] = {{100, 0}, {200, 0}, {100, 4}, {200, 4}};

void Prepare(CTestEngine* pEngine, const Way& way)
{
    ASSERT_TRUE(pEngine->Open(FEW));
    EXPECT_EQ(1, QELSetPixelScale(*pEngine, way.nPercent));
    EXPECT_EQ(1, QELSetSmooth(*pEngine, way.nSamples));
    QELSetValue(*pEngine, "t", std::nan("")); // with a mark over it
}

std::vector<uint32_t> Rendered(HQELENGINE hEngine, int* pnResult)
{
    std::vector<uint32_t> pixels(static_cast<std::size_t>(PICTURE.cx * PICTURE.cy), 0xA5A5A5A5);
    *pnResult = QELRenderBitmap(hEngine, pixels.data(), PICTURE.cx, PICTURE.cy, PICTURE.cx * 4, 0);
    return pixels;
}

DWORD ErrorOf(HQELENGINE hEngine)
{
    QELERROR error{};
    error.nSize = sizeof error;
    EXPECT_EQ(1, QELGetError(hEngine, &error));
    return error.nCode;
}

struct Fault {
    void (*pfnFail)(int nNth);
    int (*pfnCount)();
};
const Fault g_faults[] = {{gdi::FailCreation, gdi::Creations},
                          {gdi::FailCreationsFrom, gdi::Creations},
                          {gdi::FailCall, gdi::Calls}};

// Calls an operation with each object and each call refused, until there are no more. The engine
// that it had is handed to a look at what it does then.
void FailEach(const Way& way, const std::function<void(HQELENGINE, HDC)>& operation,
              const std::function<void(HQELENGINE)>& look)
{
    int nFaults = 0;
    for (const Fault& fault : g_faults) {
        bool bReached = true;
        for (int n = 1; bReached && n < MOST_CREATIONS && !testing::Test::HasFailure(); ++n) {
            SCOPED_TRACE(std::to_string(way.nPercent) + " " + std::to_string(way.nSamples) +
                         ", fault " + std::to_string(&fault - g_faults) + " " + std::to_string(n));
            const gdi::CLeakCheck leaks;
            CTestEngine engine;
            Prepare(&engine, way);
            const CPaper paper;
            fault.pfnFail(n);
            operation(engine, paper);
            bReached = fault.pfnCount() >= n;
            fault.pfnFail(0);
            look(engine);
            ++nFaults;
        }
    }
    EXPECT_LT(10, nFaults);
}

} // namespace

TEST(GdiFaults, APictureInMemoryIsMadeOrRefusedForLackOfMemory)
{
    for (const Way& way : g_ways) {
        CTestEngine undisturbed;
        Prepare(&undisturbed, way);
        int nResult = 0;
        const std::vector<uint32_t> expected = Rendered(undisturbed, &nResult);
        ASSERT_EQ(1, nResult);
        int nRefused = 0;
        FailEach(
            way,
            [&](HQELENGINE h, HDC) {
                Rendered(h, &nResult);
                nRefused += 1 - nResult;
                if (!nResult) {
                    EXPECT_EQ(DWORD{QEL_ERROR_MEMORY}, ErrorOf(h));
                }
            },
            [&](HQELENGINE h) {
                EXPECT_EQ(expected, Rendered(h, &nResult)) << "the picture after that";
                EXPECT_EQ(1, nResult);
            });
        EXPECT_LT(0, nRefused);
    }
}

TEST(GdiFaults, ADrawAtAScaleOrSmoothGoesOnWithoutOneObjectOrCall)
{
    for (const Way& way : g_ways) {
        CTestEngine undisturbed;
        Prepare(&undisturbed, way);
        int nResult = 0;
        const std::vector<uint32_t> expected = Rendered(undisturbed, &nResult);
        FailEach(
            way,
            [](HQELENGINE h, HDC hdc) {
                const RECT rc = DEVICE_RECT;
                EXPECT_EQ(1, QELDraw(h, hdc, &rc, QEL_DRAW_FULL));
            },
            [&](HQELENGINE h) {
                EXPECT_EQ(expected, Rendered(h, &nResult)) << "the picture after that";
                EXPECT_EQ(1, nResult);
            });
    }
}

// A style that there is not may be refused by right.
TEST(GdiFaults, APenOfAnUnknownStyleThatIsNotMadeIsNoLack)
{
    for (const auto& [nStyle, nLacks] : {std::pair{int{PS_DOT}, 1U}, std::pair{77, 0U}}) {
        const uint32_t nBefore = CountRefusals();
        gdi::FailCreation(1);
        EXPECT_EQ(nullptr, MakePixelPen(nStyle, 1, 1, RGB(255, 0, 0)));
        gdi::FailCreation(0);
        EXPECT_EQ(nBefore + nLacks, CountRefusals()) << nStyle;
    }
}
