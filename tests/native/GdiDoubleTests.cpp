// The stand-in for GDI is as strict as it says: each misuse is caught, once and with its name, and
// what is no misuse is not reported. Without these a clean run of the other tests would prove
// nothing.
#include "tests/native/GdiDouble.h"

#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Recording.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <string>
#include <vector>

namespace {

std::vector<std::string> g_misuses;

// The misuses that an act is reported for.
template <class Act>
std::vector<std::string> MisusesOf(Act act)
{
    g_misuses.clear();
    const gdi::MisuseHandler pfnPrev =
        gdi::SetMisuseHandler([](const std::string& what) { g_misuses.push_back(what); });
    act();
    gdi::SetMisuseHandler(pfnPrev);
    return g_misuses;
}

testing::AssertionResult IsOneMisuse(const std::vector<std::string>& misuses, const char* pszPart)
{
    if (misuses.size() == 1 && misuses[0].find(pszPart) != std::string::npos)
        return testing::AssertionSuccess();
    std::string all;
    for (const std::string& misuse : misuses) all += "\n  " + misuse;
    return testing::AssertionFailure()
           << "expected one misuse with \"" << pszPart << "\", got " << misuses.size() << all;
}

class CTestDc {
public:
    CTestDc() : m_hdc(::CreateCompatibleDC(nullptr)) {}
    ~CTestDc() { ::DeleteDC(m_hdc); }
    CTestDc(const CTestDc&) = delete;
    CTestDc& operator=(const CTestDc&) = delete;
    operator HDC() const { return m_hdc; }

private:
    HDC m_hdc;
};

} // namespace

TEST(GdiDouble, RightUseIsNotReported)
{
    EXPECT_TRUE(MisusesOf([] {
                    const gdi::CLeakCheck leaks;
                    const CTestDc dc;
                    const gdi::CStateCheck state(dc);
                    const HPEN hPen = ::CreatePen(PS_SOLID, 2, 0xFF);
                    const HGDIOBJ hPrev = ::SelectObject(dc, hPen);
                    const int nSaved = ::SaveDC(dc);
                    ::IntersectClipRect(dc, 0, 0, 1, 1);
                    ::RestoreDC(dc, nSaved);
                    ::Rectangle(dc, 0, 0, 5, 5);
                    ::SelectObject(dc, hPrev);
                    ::DeleteObject(hPen);
                }).empty());
}

TEST(GdiDouble, ReportsADoubleDelete)
{
    EXPECT_TRUE(IsOneMisuse(MisusesOf([] {
                                const HPEN hPen = ::CreatePen(PS_SOLID, 1, 0);
                                EXPECT_TRUE(::DeleteObject(hPen));
                                EXPECT_FALSE(::DeleteObject(hPen));
                            }),
                            "which was deleted"));
}

TEST(GdiDouble, ReportsTheDeleteOfASelectedObjectAndKeepsIt)
{
    EXPECT_TRUE(IsOneMisuse(MisusesOf([] {
                                const CTestDc dc;
                                const HBRUSH hBrush = ::CreateSolidBrush(1);
                                const HGDIOBJ hPrev = ::SelectObject(dc, hBrush);
                                EXPECT_FALSE(::DeleteObject(hBrush));
                                EXPECT_EQ(hBrush, ::SelectObject(dc, hPrev));
                                EXPECT_TRUE(::DeleteObject(hBrush));
                            }),
                            "which is selected"));
}

TEST(GdiDouble, ReportsTheDeleteOfAnObjectThatASavedStateHolds)
{
    EXPECT_TRUE(IsOneMisuse(MisusesOf([] {
                                const CTestDc dc;
                                const HPEN hPen = ::CreatePen(PS_SOLID, 1, 0);
                                const HGDIOBJ hPrev = ::SelectObject(dc, hPen);
                                ::SaveDC(dc);
                                ::SelectObject(dc, hPrev);
                                EXPECT_FALSE(::DeleteObject(hPen));
                                ::RestoreDC(dc, -1);
                                ::SelectObject(dc, hPrev);
                                EXPECT_TRUE(::DeleteObject(hPen));
                            }),
                            "which is selected"));
}

TEST(GdiDouble, ReportsTheUseOfADeletedObject)
{
    const CTestDc dc;
    const RECT rc{0, 0, 4, 4};
    const HBRUSH hBrush = ::CreateSolidBrush(1);
    const HRGN hRegion = ::CreateRectRgn(0, 0, 3, 3);
    const HPEN hPen = ::CreatePen(PS_SOLID, 1, 0);
    for (const HGDIOBJ h : {HGDIOBJ(hBrush), HGDIOBJ(hRegion), HGDIOBJ(hPen)}) ::DeleteObject(h);
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::FillRect(dc, &rc, hBrush); }), "which was deleted"));
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::SelectObject(dc, hPen); }), "which was deleted"));
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::OffsetRgn(hRegion, 1, 1); }), "which was deleted"));
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::SelectClipRgn(dc, hRegion); }), "which was deleted"));
}

TEST(GdiDouble, GivesNoHandleOutTwice)
{
    const HPEN hFirst = ::CreatePen(PS_SOLID, 1, 0);
    ::DeleteObject(hFirst);
    const HPEN hSecond = ::CreatePen(PS_SOLID, 1, 0);
    EXPECT_NE(hFirst, hSecond);
    EXPECT_EQ(0U, ::GetObjectType(hFirst));
    EXPECT_EQ(static_cast<DWORD>(OBJ_PEN), ::GetObjectType(hSecond));
    ::DeleteObject(hSecond);
}

TEST(GdiDouble, ReportsADeviceContextThatIsNullDeletedOrNone)
{
    const HDC hdc = ::CreateCompatibleDC(nullptr);
    ::DeleteDC(hdc);
    const HPEN hPen = ::CreatePen(PS_SOLID, 1, 0);
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::LineTo(hdc, 1, 1); }), "which was deleted"));
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::LineTo(nullptr, 1, 1); }), "a null handle"));
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::Ellipse(reinterpret_cast<HDC>(hPen), 0, 0, 9, 9); }),
                            "no device context"));
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::DeleteDC(hdc); }), "which was deleted"));
    ::DeleteObject(hPen);
}

TEST(GdiDouble, ReportsAHandleOfTheWrongKind)
{
    const CTestDc dc;
    const RECT rc{0, 0, 4, 4};
    const HPEN hPen = ::CreatePen(PS_SOLID, 1, 0);
    const HRGN hRegion = ::CreateRectRgn(0, 0, 3, 3);
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::FillRect(dc, &rc, reinterpret_cast<HBRUSH>(hPen)); }),
                            "no brush"));
    EXPECT_TRUE(IsOneMisuse(
        MisusesOf([&] { ::CombineRgn(hRegion, hRegion, reinterpret_cast<HRGN>(hPen), RGN_OR); }),
        "no region"));
    EXPECT_TRUE(IsOneMisuse(
        MisusesOf([&] { ::CreatePatternBrush(reinterpret_cast<HBITMAP>(hPen)); }), "no bitmap"));
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::DeleteObject(static_cast<HDC>(dc)); }), "dc #"));
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::DeleteObject(reinterpret_cast<HGDIOBJ>(0x77)); }),
                            "no handle"));
    ::DeleteObject(hPen);
    ::DeleteObject(hRegion);
}

TEST(GdiDouble, ReportsSelectingNothing)
{
    const CTestDc dc;
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::SelectObject(dc, nullptr); }),
                            "SelectObject of a null handle"));
}

TEST(GdiDouble, ReportsStockObjectsThatAreDeletedOrUnknown)
{
    EXPECT_TRUE(
        IsOneMisuse(MisusesOf([] { ::DeleteObject(::GetStockObject(NULL_PEN)); }), "stock object"));
    EXPECT_TRUE(IsOneMisuse(MisusesOf([] { ::GetStockObject(99); }), "GetStockObject of 99"));
    EXPECT_TRUE(IsOneMisuse(MisusesOf([] { ::GetStockObject(-1); }), "GetStockObject of -1"));
}

TEST(GdiDouble, ReportsFillsWithoutABrush)
{
    const CTestDc dc;
    const RECT rc{0, 0, 4, 4};
    const HRGN hRegion = ::CreateRectRgn(0, 0, 3, 3);
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::FillRect(dc, &rc, nullptr); }), "null handle"));
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::FillRgn(dc, hRegion, nullptr); }), "null handle"));
    const CTestSelect brush(dc, ::GetStockObject(NULL_BRUSH), false);
    EXPECT_TRUE(
        IsOneMisuse(MisusesOf([&] { ::PatBlt(dc, 0, 0, 4, 4, PATCOPY); }), "with the null brush"));
    EXPECT_TRUE(MisusesOf([&] { ::PatBlt(dc, 0, 0, 4, 4, WHITENESS); }).empty());
    ::DeleteObject(hRegion);
}

TEST(GdiDouble, ReportsWhatOutlivesItsScope)
{
    HPEN hPen = nullptr;
    HDC hdc = nullptr;
    const std::vector<std::string> misuses = MisusesOf([&] {
        const gdi::CLeakCheck leaks;
        hPen = ::CreatePen(PS_SOLID, 1, 0);
        hdc = ::CreateCompatibleDC(nullptr);
        ::DeleteObject(::CreateSolidBrush(0));
    });
    ASSERT_EQ(2U, misuses.size());
    EXPECT_NE(std::string::npos, misuses[0].find("pen #"));
    EXPECT_NE(std::string::npos, misuses[1].find("dc #"));
    ::DeleteObject(hPen);
    ::DeleteDC(hdc);
}

TEST(GdiDouble, ReportsEveryKindOfStateThatIsLeftChanged)
{
    const CTestDc dc;
    const HFONT hFont = ::CreateFontA(12, 6, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "a");
    const HPEN hPen = ::CreatePen(PS_SOLID, 1, 0);
    const HBRUSH hBrush = ::CreateSolidBrush(0);
    void (*const changes[])(HDC) = {
        [](HDC h) { ::SetBkMode(h, TRANSPARENT); },
        [](HDC h) { ::SetBkColor(h, 7); },
        [](HDC h) { ::SetTextColor(h, 7); },
        [](HDC h) { ::SetArcDirection(h, AD_CLOCKWISE); },
        [](HDC h) { ::SetPolyFillMode(h, WINDING); },
        [](HDC h) { ::SetROP2(h, R2_XORPEN); },
        [](HDC h) { ::SetTextAlign(h, TA_CENTER); },
        [](HDC h) { ::SetMapMode(h, MM_ISOTROPIC); },
        [](HDC h) { ::SetGraphicsMode(h, GM_ADVANCED); },
        [](HDC h) { ::SetLayout(h, LAYOUT_RTL); },
        [](HDC h) { ::SetBoundsRect(h, nullptr, DCB_ENABLE); },
        [](HDC h) { ::MoveToEx(h, 1, 2, nullptr); },
        [](HDC h) { ::LineTo(h, 3, 2); },
        [](HDC h) { ::IntersectClipRect(h, 0, 0, 1, 1); },
        [](HDC h) { ::SaveDC(h); },
        [](HDC h) { ::SelectObject(h, ::GetStockObject(NULL_PEN)); },
        [](HDC h) { ::SelectObject(h, ::GetStockObject(NULL_BRUSH)); },
    };
    int n = 0;
    for (const auto change : changes) {
        SCOPED_TRACE(n++);
        EXPECT_TRUE(IsOneMisuse(MisusesOf([&] {
                                    const gdi::CStateCheck state(dc);
                                    change(dc);
                                }),
                                "left changed"));
    }
    for (const HGDIOBJ h : {HGDIOBJ(hFont), HGDIOBJ(hPen), HGDIOBJ(hBrush)}) {
        const HGDIOBJ hPrev = ::GetCurrentObject(dc, ::GetObjectType(h));
        EXPECT_TRUE(IsOneMisuse(MisusesOf([&] {
                                    const gdi::CStateCheck state(dc);
                                    ::SelectObject(dc, h);
                                }),
                                "left changed"));
        ::SelectObject(dc, hPrev);
        ::DeleteObject(h);
    }
    ::RestoreDC(dc, -1);
}

TEST(GdiDouble, TellsHowAContextMapsAndWhetherItSumsUpBounds)
{
    const CTestDc dc;
    const auto asked = [&] { return ::SetBoundsRect(dc, nullptr, 0) & (DCB_ENABLE | DCB_DISABLE); };
    EXPECT_EQ(MM_TEXT, ::GetMapMode(dc));
    EXPECT_EQ(GM_COMPATIBLE, ::GetGraphicsMode(dc));
    EXPECT_EQ(0U, ::GetLayout(dc));
    EXPECT_EQ(static_cast<UINT>(DCB_DISABLE), asked());
    EXPECT_EQ(MM_TEXT, ::SetMapMode(dc, MM_ANISOTROPIC));
    EXPECT_EQ(GM_COMPATIBLE, ::SetGraphicsMode(dc, GM_ADVANCED));
    EXPECT_EQ(0U, ::SetLayout(dc, LAYOUT_RTL));
    EXPECT_TRUE(::SetBoundsRect(dc, nullptr, DCB_ENABLE) & DCB_DISABLE); // as it was before
    EXPECT_EQ(MM_ANISOTROPIC, ::GetMapMode(dc));
    EXPECT_EQ(GM_ADVANCED, ::GetGraphicsMode(dc));
    EXPECT_EQ(static_cast<DWORD>(LAYOUT_RTL), ::GetLayout(dc));
    EXPECT_EQ(static_cast<UINT>(DCB_ENABLE), asked());
    ::SetBoundsRect(dc, nullptr, DCB_DISABLE);
    EXPECT_EQ(static_cast<UINT>(DCB_DISABLE), asked());

    const RECT rc{0, 0, 1, 1};
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::SetMapMode(dc, 0); }), "SetMapMode 0"));
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::SetGraphicsMode(dc, 9); }), "SetGraphicsMode 9"));
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::SetBoundsRect(dc, &rc, 0); }), "SetBoundsRect"));
    EXPECT_TRUE(
        IsOneMisuse(MisusesOf([&] { ::SetBoundsRect(dc, nullptr, DCB_ENABLE | DCB_DISABLE); }),
                    "SetBoundsRect"));
    for (const auto ask :
         {+[](HDC h) { ::GetMapMode(h); }, +[](HDC h) { ::GetGraphicsMode(h); },
          +[](HDC h) { ::GetLayout(h); }, +[](HDC h) { ::SetBoundsRect(h, nullptr, 0); }})
        EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ask(nullptr); }), "a null handle"));
}

TEST(GdiDouble, KnowsARecordingFromAPicture)
{
    const CTestDc dc;
    EXPECT_EQ(static_cast<DWORD>(OBJ_MEMDC), ::GetObjectType(static_cast<HDC>(dc)));
    const HDC hdc = gdi::CreateRecordingDc();
    EXPECT_EQ(static_cast<DWORD>(OBJ_ENHMETADC), ::GetObjectType(hdc));
    gdi::EndRecording(hdc);
    EXPECT_EQ(0U, ::GetObjectType(hdc));
}

TEST(GdiDouble, ConvertsPlacesByTheUnitsThatAreSet)
{
    const CTestDc dc;
    POINT pts[] = {{3, -4}, {50, 7}};
    EXPECT_TRUE(::LPtoDP(dc, pts, 2));
    EXPECT_EQ(50, pts[1].x);
    gdi::SetPixelsPerUnit(dc, 3);
    EXPECT_TRUE(::LPtoDP(dc, pts, 2));
    EXPECT_EQ(9, pts[0].x);
    EXPECT_EQ(-12, pts[0].y);
    EXPECT_EQ(150, pts[1].x);
    EXPECT_TRUE(::DPtoLP(dc, pts, 2));
    EXPECT_EQ(-4, pts[0].y);
    EXPECT_EQ(7, pts[1].y);
    ::IntersectClipRect(dc, 0, 0, 4, 2);
    ::ExcludeClipRect(dc, 0, 0, 1, 2);
    const HRGN hClip = ::CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(1, ::GetClipRgn(dc, hClip));
    EXPECT_EQ("3,0,12,6", gdi::RegionText(hClip));
    ::DeleteObject(hClip);
    gdi::SetPixelsPerUnit(dc, 0);
    EXPECT_FALSE(::LPtoDP(dc, pts, 2));
    EXPECT_FALSE(::DPtoLP(dc, pts, 2));
    EXPECT_EQ(-4, pts[0].y);
}

TEST(GdiDouble, ShowsADeviceContextInAWindow)
{
    const CTestDc dc;
    EXPECT_EQ(nullptr, ::WindowFromDC(dc));
    const HBITMAP hBitmap = ::CreateBitmap(40, 30, 1, 32, nullptr);
    const HGDIOBJ hPrev = ::SelectObject(dc, hBitmap);
    gdi::ShowInWindow(dc, {{100, 50}, {104, 70, 144, 100}, {30, 0, 40, 30}});
    EXPECT_EQ(static_cast<DWORD>(OBJ_DC), ::GetObjectType(static_cast<HDC>(dc)));
    const HWND hWnd = ::WindowFromDC(dc);
    ASSERT_NE(nullptr, hWnd);
    POINT pt{1, 2};
    EXPECT_TRUE(::ClientToScreen(hWnd, &pt));
    EXPECT_EQ(105, pt.x);
    EXPECT_EQ(72, pt.y);
    RECT rc{};
    EXPECT_TRUE(::GetClientRect(hWnd, &rc));
    EXPECT_EQ(40, rc.right);
    EXPECT_EQ(30, rc.bottom);
    EXPECT_TRUE(::GetDCOrgEx(dc, &pt));
    EXPECT_EQ(100, pt.x);
    EXPECT_EQ(50, pt.y);
    const HRGN hShown = ::CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(1, ::GetRandomRgn(dc, hShown, 4));
    EXPECT_EQ("100,50,130,80", gdi::RegionText(hShown));
    ::DeleteObject(hShown);
    ::SelectObject(dc, hPrev);
    ::DeleteObject(hBitmap);
}

TEST(GdiDouble, LetsTheColorsChangeWhereThatIsSaid)
{
    const CTestDc dc;
    EXPECT_TRUE(MisusesOf([&] {
                    const gdi::CStateCheck state(dc, gdi::MAY_CHANGE_COLORS);
                    ::SetBkColor(dc, 7);
                    ::SetTextColor(dc, 8);
                }).empty());
}

TEST(GdiDouble, ReportsSavedStatesThatAreNotPutBackOrNotThere)
{
    EXPECT_TRUE(IsOneMisuse(MisusesOf([] {
                                const CTestDc dc;
                                ::SaveDC(dc);
                            }),
                            "DeleteDC with a saved state"));
    const CTestDc dc;
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::RestoreDC(dc, -1); }), "RestoreDC -1"));
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] { ::RestoreDC(dc, 1); }), "RestoreDC 1"));
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] {
                                ::SaveDC(dc);
                                ::SaveDC(dc);
                                ::RestoreDC(dc, 1);
                            }),
                            "passes over"));
}

TEST(GdiDouble, ReportsTheEndOfADeviceContextThatHoldsAnObject)
{
    const HPEN hPen = ::CreatePen(PS_SOLID, 1, 0);
    EXPECT_TRUE(IsOneMisuse(MisusesOf([&] {
                                const CTestDc dc;
                                ::SelectObject(dc, hPen);
                            }),
                            "still selected"));
    EXPECT_TRUE(::DeleteObject(hPen)); // it is not held any more
}

TEST(GdiDouble, ReportsABitmapInTwoDeviceContexts)
{
    const HBITMAP hBitmap = ::CreateBitmap(4, 4, 1, 1, nullptr);
    {
        const CTestDc one;
        const CTestDc two;
        const CTestSelect selected(one, hBitmap, false);
        EXPECT_TRUE(
            IsOneMisuse(MisusesOf([&] { ::SelectObject(two, hBitmap); }), "another has selected"));
    }
    ::DeleteObject(hBitmap);
}

TEST(GdiDouble, RestoreDCBringsBackEverything)
{
    const CTestDc dc;
    const gdi::CStateCheck state(dc);
    const HPEN hPen = ::CreatePen(PS_SOLID, 3, 9);
    ::SaveDC(dc);
    ::SelectObject(dc, hPen);
    ::SetBkMode(dc, TRANSPARENT);
    ::SetBkColor(dc, 1);
    ::MoveToEx(dc, 5, 5, nullptr);
    ::IntersectClipRect(dc, 1, 1, 2, 2);
    ::RestoreDC(dc, -1);
    EXPECT_TRUE(::DeleteObject(hPen));
}

TEST(GdiDouble, FailsTheCreationThatIsAskedFor)
{
    gdi::FailCreation(2);
    const HPEN hFirst = ::CreatePen(PS_SOLID, 1, 0);
    const HBRUSH hSecond = ::CreateSolidBrush(0);
    const HRGN hThird = ::CreateRectRgn(0, 0, 1, 1);
    EXPECT_NE(nullptr, hFirst);
    EXPECT_EQ(nullptr, hSecond);
    EXPECT_NE(nullptr, hThird);
    EXPECT_EQ(3, gdi::Creations());
    gdi::FailCreationsFrom(1);
    EXPECT_EQ(nullptr, ::CreateCompatibleDC(nullptr));
    EXPECT_EQ(nullptr, ::CreateBitmap(1, 1, 1, 1, nullptr));
    EXPECT_EQ(nullptr, ::CreateFontA(12, 6, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, nullptr));
    {
        const gdi::CNoFaults noFaults;
        ::DeleteObject(::CreateSolidBrush(0));
    }
    EXPECT_EQ(3, gdi::Creations());
    gdi::FailCreation(0);
    ::DeleteObject(hFirst);
    ::DeleteObject(hThird);
}

// ---- what it answers ----

TEST(GdiDouble, RefusesTheCallThatIsAskedFor)
{
    const CTestDc dc;
    const HRGN hRegion = ::CreateRectRgn(0, 0, 9, 9);
    RECT rc{};
    const std::function<bool()> calls[] = {
        [&] { return ::GetRgnBox(hRegion, &rc) != ERROR; },
        [&] { return ::CombineRgn(hRegion, hRegion, hRegion, RGN_OR) != ERROR; },
        [&] { return ::GetClipBox(dc, &rc) != ERROR; },
        [&] { return ::ExtSelectClipRgn(dc, hRegion, RGN_AND) != ERROR; },
        [&] { return ::GetRegionData(hRegion, 0, nullptr) != 0; },
    };
    for (int nFailed = 0; nFailed <= 5; ++nFailed) {
        gdi::FailCall(nFailed);
        int n = 0;
        for (const auto& call : calls) EXPECT_EQ(++n != nFailed, call());
        EXPECT_EQ(5, gdi::Calls());
    }
    gdi::FailCall(0);
    ::SelectClipRgn(dc, nullptr);
    ::DeleteObject(hRegion);
}

TEST(GdiDouble, CombinesRegionsExactly)
{
    const HRGN hA = ::CreateRectRgn(0, 0, 10, 10);
    const HRGN hB = ::CreateRectRgn(5, 5, 15, 15);
    const HRGN hOut = ::CreateRectRgn(0, 0, 0, 0);
    RECT rc{};
    EXPECT_EQ(NULLREGION, ::GetRgnBox(hOut, &rc));
    EXPECT_EQ(SIMPLEREGION, ::CombineRgn(hOut, hA, hB, RGN_AND));
    EXPECT_EQ("5,5,10,10", gdi::RegionText(hOut));
    EXPECT_EQ(COMPLEXREGION, ::CombineRgn(hOut, hA, hB, RGN_OR));
    EXPECT_TRUE(::PtInRegion(hOut, 14, 14));
    EXPECT_FALSE(::PtInRegion(hOut, 14, 4));
    EXPECT_EQ(COMPLEXREGION, ::GetRgnBox(hOut, &rc));
    EXPECT_EQ(15, rc.right);
    EXPECT_EQ(COMPLEXREGION, ::CombineRgn(hOut, hOut, hB, RGN_DIFF));
    EXPECT_FALSE(::EqualRgn(hOut, hA));
    EXPECT_EQ(COMPLEXREGION, ::CombineRgn(hB, hA, hB, RGN_XOR));
    EXPECT_FALSE(::PtInRegion(hB, 7, 7));
    EXPECT_EQ(NULLREGION, ::CombineRgn(hOut, hA, hA, RGN_DIFF));
    EXPECT_EQ(SIMPLEREGION, ::CombineRgn(hOut, hA, nullptr, RGN_COPY));
    EXPECT_TRUE(::EqualRgn(hOut, hA));
    EXPECT_EQ(SIMPLEREGION, ::OffsetRgn(hOut, 3, -2));
    EXPECT_EQ("3,-2,13,8", gdi::RegionText(hOut));
    for (const HRGN h : {hA, hB, hOut}) ::DeleteObject(h);
}

TEST(GdiDouble, HugeFiguresTakeNoTime)
{
    const POINT points[] = {{INT_MIN, INT_MIN}, {INT_MAX, 0}, {0, INT_MAX}, {5, INT_MIN}};
    const HRGN hA = ::CreateEllipticRgn(INT_MIN, INT_MIN, INT_MAX, INT_MAX);
    const HRGN hB = ::CreatePolygonRgn(points, 4, WINDING);
    const HRGN hC = ::CreateRoundRectRgn(INT_MIN, 0, INT_MAX, INT_MAX, INT_MIN, INT_MAX);
    for (int n = 0; n < 20; ++n) {
        EXPECT_NE(ERROR, ::CombineRgn(hA, hA, hB, n % 2 ? RGN_OR : RGN_XOR));
        EXPECT_NE(ERROR, ::OffsetRgn(hA, INT_MAX, INT_MIN));
        EXPECT_NE(ERROR, ::CombineRgn(hC, hA, hC, RGN_DIFF));
    }
    for (const HRGN h : {hA, hB, hC}) ::DeleteObject(h);
}

TEST(GdiDouble, AMonochromeBitmapIsWhiteButForWhatIsPainted)
{
    const CTestDc dc;
    const HBITMAP hBitmap = ::CreateBitmap(20, 3, 1, 1, nullptr);
    const HGDIOBJ hPrev = ::SelectObject(dc, hBitmap);
    const CTestSelect brush(dc, ::GetStockObject(BLACK_BRUSH), false);
    ::PatBlt(dc, 0, 0, 20, 3, WHITENESS);
    ::Rectangle(dc, 3, 1, 13, 2);
    uint8_t bits[12];
    EXPECT_EQ(12, ::GetBitmapBits(hBitmap, 100, bits));
    const uint8_t expected[12] = {0xFF, 0xFF, 0xFF, 0xFF, 0xE0, 0x07,
                                  0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    for (int n = 0; n < 12; ++n) EXPECT_EQ(expected[n], bits[n]) << n;
    ::SelectObject(dc, hPrev);
    ::DeleteObject(hBitmap);
}

TEST(GdiDouble, PicturesAreEqualWhenTheSameIsPaintedInTheSameState)
{
    const auto paint = [](HDC hdc, COLORREF clr, int nArc) {
        const CTestSelect pen(hdc, ::CreatePen(PS_SOLID, 1, clr), true);
        ::SetArcDirection(hdc, nArc);
        ::Arc(hdc, 0, 0, 9, 9, 1, 2, 3, 4);
    };
    CTestBitmap a(10, 10), b(10, 10), other(10, 10), turned(10, 10);
    EXPECT_TRUE(IsBlank(a));
    paint(a.Dc(), 0xFF, AD_CLOCKWISE);
    EXPECT_FALSE(IsBlank(a));
    EXPECT_NE("", FirstDifference(a, b));
    paint(b.Dc(), 0xFF, AD_CLOCKWISE);
    EXPECT_EQ("", FirstDifference(a, b));
    paint(other.Dc(), 0xFE, AD_CLOCKWISE);
    EXPECT_NE("", FirstDifference(a, other));
    paint(turned.Dc(), 0xFF, AD_COUNTERCLOCKWISE);
    EXPECT_NE("", FirstDifference(a, turned));
}

TEST(GdiDouble, NothingIsPaintedWithNeitherPenNorBrush)
{
    CTestBitmap bitmap(10, 10);
    const CTestSelect pen(bitmap.Dc(), ::GetStockObject(NULL_PEN), false);
    const CTestSelect brush(bitmap.Dc(), ::GetStockObject(NULL_BRUSH), false);
    ::Ellipse(bitmap.Dc(), 1, 1, 8, 8);
    EXPECT_TRUE(IsBlank(bitmap));
}

TEST(Picture, KnowsThePixelsOfFillsWhateverTheyWereMadeOf)
{
    CTestBitmap lines(10, 10), fills(10, 10);
    {
        CTestSelect pen(lines.Dc(), ::CreatePen(PS_SOLID, 1, 0x0000FF), true);
        CTestSelect brush(lines.Dc(), ::CreateSolidBrush(0x00FF00), true);
        ::Rectangle(lines.Dc(), 2, 2, 8, 8);
    }
    const HBRUSH hRed = ::CreateSolidBrush(0x0000FF), hGreen = ::CreateSolidBrush(0x00FF00);
    const RECT rcAll{2, 2, 8, 8}, rcInside{3, 3, 7, 7};
    ::FillRect(fills.Dc(), &rcAll, hRed);
    EXPECT_NE("", FirstDifference(lines, fills));
    ::FillRect(fills.Dc(), &rcInside, hGreen);
    EXPECT_EQ("", FirstDifference(lines, fills));
    EXPECT_EQ(0x0000FFU, lines.At(2, 2));
    EXPECT_EQ(0x0000FFU, lines.At(7, 7));
    EXPECT_EQ(0x00FF00U, lines.At(3, 3));
    EXPECT_EQ(0xFFFFFFU, lines.At(8, 8));
    EXPECT_EQ(20, CountPixels(lines, 0x0000FF));
    EXPECT_EQ(16, CountPixels(lines, 0x00FF00));
    ::FillRect(fills.Dc(), &rcAll, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    EXPECT_TRUE(IsBlank(fills));
    ::DeleteObject(hRed);
    ::DeleteObject(hGreen);
}

TEST(Picture, HairlinesLeaveOutTheirLastPixel)
{
    const struct {
        POINT from, to;
        RECT rcPainted;
    } rows[] = {{{2, 3}, {6, 3}, {2, 3, 6, 4}},
                {{6, 3}, {2, 3}, {3, 3, 7, 4}},
                {{3, 2}, {3, 6}, {3, 2, 4, 6}},
                {{3, 6}, {3, 2}, {3, 3, 4, 7}}};
    for (const auto& row : rows) {
        CTestBitmap drawn(10, 10);
        ::MoveToEx(drawn.Dc(), row.from.x, row.from.y, nullptr);
        ::LineTo(drawn.Dc(), row.to.x, row.to.y);
        for (int y = 0; y < 10; ++y)
            for (int x = 0; x < 10; ++x)
                EXPECT_EQ(::PtInRect(&row.rcPainted, {x, y}) ? 0U : 0xFFFFFFU, drawn.At(x, y));
    }
}

TEST(Picture, PatternsHaveTheirPixelsInTheColorsOfTheDeviceContext)
{
    const uint16_t bits[] = {0x80, 0}; // the first of eight pixels by two
    const HBITMAP hBitmap = ::CreateBitmap(8, 2, 1, 1, bits);
    const HBRUSH hBrush = ::CreatePatternBrush(hBitmap);
    CTestBitmap drawn(16, 4);
    ::SetTextColor(drawn.Dc(), 0x112233);
    ::SetBkColor(drawn.Dc(), 0x445566);
    const RECT rc = drawn.Box();
    ::FillRect(drawn.Dc(), &rc, hBrush);
    EXPECT_EQ(0x445566U, drawn.At(0, 0));
    EXPECT_EQ(0x445566U, drawn.At(8, 2));
    EXPECT_EQ(0x112233U, drawn.At(8, 1));
    EXPECT_EQ(4, CountPixels(drawn, 0x445566));
    EXPECT_EQ(60, CountPixels(drawn, 0x112233));
    EXPECT_FALSE(IsBlank(drawn));
    ::DeleteObject(hBrush);
    ::DeleteObject(hBitmap);
}

TEST(Picture, AFigureThatIsPaintedAgainCountsOnce)
{
    CTestBitmap once(20, 20), twice(20, 20), other(20, 20);
    ::Ellipse(once.Dc(), 2, 2, 18, 12);
    for (int n = 0; n < 2; ++n) ::Ellipse(twice.Dc(), 2, 2, 18, 12);
    ::Ellipse(other.Dc(), 2, 2, 18, 12);
    ::Ellipse(other.Dc(), 2, 2, 18, 13);
    EXPECT_EQ("", FirstDifference(once, twice));
    EXPECT_NE("", FirstDifference(once, other));
    EXPECT_EQ(0xFFFFFFU, once.At(2, 19)); // far from it
}
