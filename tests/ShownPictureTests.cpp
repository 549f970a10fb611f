// What is made and drawn for the clip box alone, as only the system itself can tell: with origins
// of the figures and of the brush wherever they are, and how many calls are made and how large. The
// rest is in tests/ShownTests.cpp, the named drawings in tests/host/HeldUpTests.cpp.
#include "brush/ShownDraft.h"
#include "render/Border3D.h"
#include "tests/support/CountedCalls.h"
#include "tests/support/ShownSupport.h"

#include <climits>

namespace {

using namespace showntest;

// Whether a line of a ring meets the box, by looking at each point of each line.
bool RingMeets(const RECT& rc, int nRing, const RECT& rcShown)
{
    RECT r = rc;
    ::InflateRect(&r, -nRing, -nRing);
    const auto meets = [&](LONG x1, LONG y1, LONG x2, LONG y2) {
        return std::max(x1, x2) >= rcShown.left && std::min(x1, x2) < rcShown.right &&
               std::max(y1, y2) >= rcShown.top && std::min(y1, y2) < rcShown.bottom;
    };
    return meets(r.left, r.bottom - 1, r.left, r.top) || meets(r.left, r.top, r.right, r.top) ||
           meets(r.right - 1, r.top, r.right - 1, r.bottom - 1) ||
           meets(r.right - 1, r.bottom - 1, r.left - 1, r.bottom - 1);
}

} // namespace

TEST(ShownRings, HaveThePixelsOfAllRingsUnderEveryClip)
{
    CRandom random(1);
    int nPainted = 0;
    for (int n = 0; n < 400; ++n) {
        CTestBitmap expected(SIDE, SIDE), drawn(SIDE, SIDE);
        const RECT rc = random.Box(-150, 240);
        const RECT rcClip = random.Box(0, SIDE);
        const int nWidth = static_cast<int>(random.Between(1, 400));
        const POINT ptOrigin{random.Between(-40, 40), random.Between(-40, 40)};
        SCOPED_TRACE(RectText(rc) + " x" + std::to_string(nWidth) + " in " + RectText(rcClip));
        for (const CTestBitmap* p : {&expected, &drawn}) {
            ClipTo(p->Dc(), rcClip);
            ::SetViewportOrgEx(p->Dc(), ptOrigin.x, ptOrigin.y, nullptr);
        }
        StrokeAll(expected.Dc(), rc, nWidth);
        ASSERT_EQ(1, DrawBorder3D(drawn.Dc(), rc, LIGHT, DARK, EVERYWHERE, nWidth));
        nPainted += !IsBlank(drawn);
        ASSERT_EQ("", FirstDifference(expected, drawn));
    }
    EXPECT_LT(200, nPainted);
}

TEST(ShownRings, AreTheOnesOfWhichALineMeetsTheClipBox)
{
    CRandom random(2);
    const CCountedCalls calls(::GetModuleHandleA(nullptr));
    for (int n = 0; n < 300; ++n) {
        CTestBitmap drawn(SIDE, SIDE);
        const RECT rc = random.Box(-3000, 3000);
        const RECT rcClip = random.Box(0, SIDE);
        ClipTo(drawn.Dc(), rcClip);
        std::size_t nExpected = 0;
        for (int nRing = 0; nRing < 10000; ++nRing) nExpected += RingMeets(rc, nRing, rcClip);
        CCountedCalls::Restart();
        ASSERT_EQ(1, DrawBorder3D(drawn.Dc(), rc, LIGHT, DARK, EVERYWHERE, 10000));
        EXPECT_EQ(4 * nExpected, CCountedCalls::Seen().nLines)
            << RectText(rc) << " in " << RectText(rcClip);
    }
}

TEST(ShownRings, AreAllOfThemOnAMetafileAndWhereMoreThanTheClipBoxMayCount)
{
    const RECT rc{10, 10, 40, 30};
    CRecording recording;
    EXPECT_EQ(1, DrawBorder3D(recording.Dc(), rc, LIGHT, DARK, EVERYWHERE, 3000));
    EXPECT_EQ(4u * 3000, recording.Only({"LineTo"}).size());

    const CCountedCalls calls(::GetModuleHandleA(nullptr));
    const auto count = [&](void (*pfnPrepare)(HDC)) {
        CTestBitmap drawn(SIDE, SIDE);
        pfnPrepare(drawn.Dc());
        CCountedCalls::Restart();
        EXPECT_EQ(1, DrawBorder3D(drawn.Dc(), rc, LIGHT, DARK, EVERYWHERE, 3000));
        return CCountedCalls::Seen().nLines;
    };
    EXPECT_GT(4u * 100, count([](HDC) {}));
    EXPECT_EQ(4u * 3000, count([](HDC hdc) { ::SetBoundsRect(hdc, nullptr, DCB_ENABLE); }));
    EXPECT_EQ(4u * 3000, count([](HDC hdc) { ::SetGraphicsMode(hdc, GM_ADVANCED); }));
    EXPECT_EQ(4u * 3000, count([](HDC hdc) { ::SetMapMode(hdc, MM_LOMETRIC); }));
}

TEST(ShownRings, AreNoneWhereNothingShows)
{
    const CCountedCalls calls(::GetModuleHandleA(nullptr));
    CTestBitmap drawn(SIDE, SIDE);
    ClipTo(drawn.Dc(), {5, 5, 5, 5});
    EXPECT_EQ(1, DrawBorder3D(drawn.Dc(), {0, 0, SIDE, SIDE}, LIGHT, DARK, EVERYWHERE, 65535));
    EXPECT_EQ(0u, CCountedCalls::Seen().nLines);
}

TEST(ShownRings, WhoseNumbersWrapAroundAreAllStroked)
{
    const CCountedCalls calls(::GetModuleHandleA(nullptr));
    CTestBitmap drawn(SIDE, SIDE);
    const RECT rc{INT_MAX - 50, INT_MAX - 50, INT_MAX, INT_MAX};
    EXPECT_EQ(1, DrawBorder3D(drawn.Dc(), rc, LIGHT, DARK, rc, 100));
    EXPECT_EQ(4u * 100, CCountedCalls::Seen().nLines);
}

TEST(ShownGradient, HasThePixelsOfTheWholeUnderEveryClipAndOrigin)
{
    CRandom random(3);
    for (int nStyle = 10; nStyle < 38; ++nStyle)
        for (int n = 0; n < 12; ++n) {
            CTestBitmap expected(SIDE, SIDE), drawn(SIDE, SIDE);
            RECT rc = random.Box(-200, 300);
            const RECT rcClip = random.Box(0, SIDE);
            const POINT ptOrigin{random.Between(-40, 40), random.Between(-40, 40)};
            const POINT ptBrush{random.Between(-500, 500), random.Between(-500, 500)};
            SCOPED_TRACE(RectText(rc) + " in " + RectText(rcClip) + " style " +
                         std::to_string(nStyle));
            for (const CTestBitmap* p : {&expected, &drawn}) {
                ClipTo(p->Dc(), rcClip);
                ::SetViewportOrgEx(p->Dc(), ptOrigin.x, ptOrigin.y, nullptr);
                ::SetBrushOrgEx(p->Dc(), ptBrush.x, ptBrush.y, nullptr);
            }
            CQELDraft whole(static_cast<tagDRAFTSTYLE>(nStyle));
            HBRUSH hWhole = nullptr;
            ASSERT_EQ(1, whole.GetDraftBrush(hWhole, &rc, LIGHT, DARK));
            ::FillRect(expected.Dc(), &rc, hWhole);
            CShownDraft shown(nStyle);
            const HBRUSH hShown = shown.Brush(drawn.Dc(), rc, rc, LIGHT, DARK);
            ASSERT_NE(nullptr, hShown);
            ::FillRect(drawn.Dc(), &rc, hShown);
            ASSERT_EQ("", FirstDifference(expected, drawn));
        }
}

TEST(ShownGradient, OfAFigureThatIsFilledElsewhereIsMadeForThatPlace)
{
    // As a polygon's, which runs from the device's origin.
    const RECT rc{0, 0, 4000, 4000};
    const RECT rcFilled{40, 30, 60, 70};
    CTestBitmap expected(SIDE, SIDE), drawn(SIDE, SIDE);
    CQELDraft whole(static_cast<tagDRAFTSTYLE>(14));
    HBRUSH hWhole = nullptr;
    RECT rcWhole = rc;
    ASSERT_EQ(1, whole.GetDraftBrush(hWhole, &rcWhole, LIGHT, DARK));
    ::FillRect(expected.Dc(), &rcFilled, hWhole);
    const CCountedCalls calls(::GetModuleHandleA(nullptr));
    CShownDraft shown(14);
    ::FillRect(drawn.Dc(), &rcFilled, shown.Brush(drawn.Dc(), rc, rcFilled, LIGHT, DARK));
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ("", FirstDifference(expected, drawn));
    EXPECT_GE(24u * 44 * 4, CCountedCalls::Seen().nPatternBytes); // two more at each side
}

TEST(ShownGradient, IsNeverLargerThanTheWholeAndIsTheWholeOnAMetafile)
{
    const CCountedCalls calls(::GetModuleHandleA(nullptr));
    const auto bytes = [&](HDC hdc, const RECT& rc, int nStyle) {
        CCountedCalls::Restart();
        CShownDraft draft(nStyle);
        EXPECT_NE(nullptr, draft.Brush(hdc, rc, rc, LIGHT, DARK));
        return CCountedCalls::Seen().nPatternBytes;
    };
    CTestBitmap drawn(SIDE, SIDE);
    constexpr std::size_t SHOWN = SIDE * SIDE * 4;
    EXPECT_EQ(80u * 70 * 4, bytes(drawn.Dc(), {5, 7, 85, 77}, 14));
    EXPECT_EQ(SHOWN, bytes(drawn.Dc(), {-5, -7, 95, 97}, 14));
    EXPECT_EQ(SHOWN, bytes(drawn.Dc(), {-4000, -4000, 4000, 4000}, 22));
    EXPECT_EQ(SIDE * 4u, bytes(drawn.Dc(), {-30000000, 0, 30000000, 10}, 10)); // one row
    EXPECT_EQ(4u, bytes(drawn.Dc(), {2000, 2000, 4000, 4000}, 14));            // nothing shows
    CRecording recording;
    EXPECT_EQ(2000u * 2000 * 4, bytes(recording.Dc(), {2000, 2000, 4000, 4000}, 14));
}

TEST(ShownGradient, HasNoBrushWhereTheWholeWouldHaveNone)
{
    CTestBitmap drawn(SIDE, SIDE);
    for (const RECT& rc : {RECT{0, 0, 8193, 8192}, RECT{5, 5, 5, 9000}, RECT{0, 9, 9000, 9}}) {
        RECT rcWhole = rc;
        for (const int nStyle : {10, 12, 14}) {
            HBRUSH hWhole = nullptr;
            CQELDraft whole(static_cast<tagDRAFTSTYLE>(nStyle));
            whole.GetDraftBrush(hWhole, &rcWhole, LIGHT, DARK);
            CShownDraft shown(nStyle);
            EXPECT_EQ(hWhole != nullptr, shown.Brush(drawn.Dc(), rc, rc, LIGHT, DARK) != nullptr)
                << RectText(rc) << " " << nStyle;
        }
    }
    for (const int nStyle : {INT_MIN, -1, 38, 1000, INT_MAX})
        EXPECT_EQ(nullptr, CShownDraft(nStyle).Brush(drawn.Dc(), EVERYWHERE, EVERYWHERE, 0, 1));
}

TEST(FaceRegion, OfALargeFaceCostsWhatShows)
{
    const CCountedCalls calls(::GetModuleHandleA(nullptr));
    CTestBitmap drawn(SCREEN_SIDE, SCREEN_SIDE);
    CFaced meter(0, QEL_TYPE_PIE, LargePie());
    meter.Draw(drawn.Dc());
    const std::size_t nFirst = CCountedCalls::Seen().nMonoBytes;
    EXPECT_LT(0u, nFirst);
    EXPECT_GT(4000u * 4000 / 8 / 10, nFirst); // a small part of the whole
    meter.Draw(drawn.Dc());
    EXPECT_GT(nFirst + 1000, CCountedCalls::Seen().nMonoBytes); // which is kept: hatches alone
}
