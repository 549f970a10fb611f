// What is made and drawn for the clip box alone: rings of borders, brushes of gradients, regions of
// faces. The pixels are those of the whole, wherever the clip lies. Origins, and how much is left
// out, are held by tests/ShownPictureTests.cpp. The code is base/Shown.*, render/Border3D.cpp,
// brush/ShownDraft.* and render/QELViewShapeRegion.cpp.
#include "base/Shown.h"

#include "brush/Gradient.h"
#include "brush/ShownDraft.h"
#include "render/Border3D.h"
#include "render/QELViewBox.h"
#include "render/QELViewPoints.h"
#include "render/QELViewRadial.h"
#include "tests/support/ShownSupport.h"

#include <climits>
#include <utility>

namespace {

using namespace showntest;

constexpr RECT SIDE_BOX{0, 0, SIDE, SIDE};

} // namespace

TEST(Shown, IsTheClipBoxOfASurfaceAndNothingIsKnownOfAMetafile)
{
    CTestBitmap bitmap(SIDE, SIDE);
    RECT rc{};
    EXPECT_TRUE(FindShown(bitmap.Dc(), &rc));
    EXPECT_EQ(RectText(bitmap.Box()), RectText(rc));
    ClipTo(bitmap.Dc(), {10, 20, 30, 40});
    EXPECT_TRUE(FindShown(bitmap.Dc(), &rc));
    EXPECT_EQ("10,20,30,40", RectText(rc));
    CRecording recording;
    EXPECT_FALSE(FindShown(recording.Dc(), &rc));
    EXPECT_FALSE(FindShown(nullptr, &rc));
}

TEST(ShownBorder, HasThePixelsOfAllRings)
{
    CRandom random(7);
    for (int n = 0; n < 40; ++n) {
        CTestBitmap expected(SIDE, SIDE), drawn(SIDE, SIDE);
        const RECT rc = random.Box(-50, 140);
        const int nWidth = static_cast<int>(random.Between(9, 200));
        const RECT rcClip = random.Box(0, SIDE);
        for (const CTestBitmap* p : {&expected, &drawn}) ClipTo(p->Dc(), rcClip);
        StrokeAll(expected.Dc(), rc, nWidth);
        ASSERT_EQ(1, DrawBorder3D(drawn.Dc(), rc, LIGHT, DARK, EVERYWHERE, nWidth));
        ASSERT_EQ("", FirstDifference(expected, drawn)) << RectText(rc) << " x" << nWidth;
    }
}

TEST(ShownBrush, IsKeptWhileItsRectanglesAreTheSame)
{
    constexpr int32_t HATCH = 3;
    constexpr COLORREF FIRST = 0x0000FF, LAST = 0xFF0000;
    const CTestBitmap bitmap(SIDE, SIDE);
    const RECT rc{0, 0, SIDE, SIDE}, rcOther{0, 0, SIDE, SIDE - 1};
    CShownDraft hatch(HATCH, CPixelScale(200));
    const HBRUSH hHatch = hatch.Brush(bitmap.Dc(), rc, rc, FIRST, LAST);
    EXPECT_NE(nullptr, hHatch);
    EXPECT_EQ(hHatch, hatch.Brush(bitmap.Dc(), rcOther, rcOther, FIRST, LAST)); // runs over none
    for (int32_t nStyle = DRAFT_GRADIENT; nStyle < DRAFT_COUNT; ++nStyle) {
        CShownDraft gradient(nStyle);
        for (const auto& [rcGradient, rcFilled] :
             {std::pair{rc, rc}, std::pair{rc, rcOther}, std::pair{rcOther, rcOther}}) {
            const HBRUSH hBrush = gradient.Brush(bitmap.Dc(), rcGradient, rcFilled, FIRST, LAST);
            EXPECT_NE(nullptr, hBrush) << nStyle;
            EXPECT_EQ(hBrush, gradient.Brush(bitmap.Dc(), rcGradient, rcFilled, FIRST, LAST));
        }
    }
}

TEST(ShownBrush, OfAGradientWiderThanNumbersSayIsNotThere)
{
    constexpr LONG FAR_SIDE = INT_MAX - 1;
    const CTestBitmap bitmap(SIDE, SIDE);
    for (const RECT& rc : {RECT{-FAR_SIDE, 0, FAR_SIDE, SIDE}, RECT{0, -FAR_SIDE, SIDE, FAR_SIDE}})
        for (int32_t nStyle = DRAFT_GRADIENT; nStyle < DRAFT_COUNT; ++nStyle) {
            const HBRUSH hBrush =
                CShownDraft(nStyle).Brush(bitmap.Dc(), rc, rc, 0x0000FF, 0xFF0000);
            const SIZE size = GradientSize(rc, (nStyle - DRAFT_GRADIENT) / 2);
            EXPECT_EQ(size.cx > 0 && size.cy > 0, hBrush != nullptr) << nStyle;
        }
}

TEST(ShownBrush, HasThePixelsOfTheWhole)
{
    CRandom random(8);
    for (int nStyle = 10; nStyle < 38; ++nStyle) {
        CTestBitmap expected(SIDE, SIDE), drawn(SIDE, SIDE);
        RECT rc = random.Box(-200, 300);
        ::UnionRect(&rc, &rc, &SIDE_BOX);
        const RECT rcClip = random.Box(0, SIDE);
        for (const CTestBitmap* p : {&expected, &drawn}) ClipTo(p->Dc(), rcClip);
        CQELDraft whole(static_cast<tagDRAFTSTYLE>(nStyle));
        HBRUSH hWhole = nullptr;
        ASSERT_EQ(1, whole.GetDraftBrush(hWhole, &rc, LIGHT, DARK));
        ::FillRect(expected.Dc(), &rc, hWhole);
        CShownDraft shown(nStyle);
        const HBRUSH hShown = shown.Brush(drawn.Dc(), rc, rc, LIGHT, DARK);
        ::FillRect(drawn.Dc(), &rc, hShown);
        ASSERT_EQ("", FirstDifference(expected, drawn)) << RectText(rc) << " " << nStyle;
        EXPECT_EQ(hShown, shown.Brush(drawn.Dc(), rc, rc, LIGHT, DARK)); // it is kept
        EXPECT_NE(nullptr, shown.Brush(drawn.Dc(), SIDE_BOX, rc, LIGHT, DARK));
    }
}

// ---- regions

namespace {

std::string BoxText(HRGN hRegion)
{
    RECT rc{};
    ::GetRgnBox(hRegion, &rc);
    return RectText(rc);
}

// Compares the two regions' boxes, and their pixels in what shows. Whether it was a part.
template <class T>
bool ExpectShownRegion(T& view, const RECT& rcQel, const RECT& rcShown)
{
    SCOPED_TRACE(RectText(rcShown));
    bool bPart = false;
    const HRGN hWhole = view->MakeRegion(rcQel);
    const HRGN hShown = view->MakeShownRegion(rcQel, rcShown, &bPart);
    EXPECT_NE(nullptr, hWhole);
    EXPECT_NE(nullptr, hShown);
    EXPECT_EQ(BoxText(hWhole), BoxText(hShown));
    const HRGN hClip = ::CreateRectRgnIndirect(&rcShown);
    ::CombineRgn(hWhole, hWhole, hClip, RGN_AND);
    ::CombineRgn(hShown, hShown, hClip, RGN_AND);
    EXPECT_TRUE(::EqualRgn(hWhole, hShown));
    ::DeleteObject(hClip);
    ::DeleteObject(hWhole);
    ::DeleteObject(hShown);
    return bPart;
}

constexpr RECT LARGE_QEL{-1000, -700, 3000, 2300}; // 40 by 30 pixels a unit
constexpr RECT SCREEN{0, 0, 640, 480};

template <class T>
void ExpectRadialRegions(unsigned nSeed)
{
    CRandom random(nSeed);
    for (int n = 0; n < 20; ++n) {
        const auto at = [&] { return static_cast<int>(random.Between(-5, 105)); };
        const RECT rc = random.Box(0, 20);
        CTestView<T> view(FilledAttr({static_cast<int>(rc.left), static_cast<int>(rc.top),
                                      static_cast<int>(rc.right + 80),
                                      static_cast<int>(rc.bottom + 80), at(), at(), at(), at()}));
        EXPECT_TRUE(ExpectShownRegion(view, LARGE_QEL, SCREEN)) << view.Geometry(8);
        ExpectShownRegion(view, LARGE_QEL, random.Box(-1000, 3000));
    }
}

} // namespace

TEST(ShownRegion, OfAPieIsItsRegionWhereItShowsWithTheBoxOfTheWhole)
{
    ExpectRadialRegions<CQELViewPie>(4);
}

TEST(ShownRegion, OfAChordIsItsRegionWhereItShowsWithTheBoxOfTheWhole)
{
    ExpectRadialRegions<CQELViewChord>(5);
}

TEST(ShownRegion, OfThinSectorsAndFlatEllipsesAsWell)
{
    for (const int nY : {0, 1, 49, 50, 51, 99, 100})
        for (const int nX : {0, 100}) {
            CTestView<CQELViewPie> thin(FilledAttr({0, 0, 100, 100, nX, nY, nX, nY ? nY - 1 : 1}));
            ExpectShownRegion(thin, LARGE_QEL, SCREEN);
            CTestView<CQELViewPie> flat(FilledAttr({0, 40, 100, 50, nX, nY, 100 - nX, 48}));
            ExpectShownRegion(flat, {0, 0, 16000, 3000}, SCREEN);
        }
    CTestView<CQELViewPie> whole(FilledAttr({0, 0, 100, 100, 100, 50, 100, 50}));
    ExpectShownRegion(whole, LARGE_QEL, SCREEN);
}

TEST(ShownRegion, OfAPolygonIsItsRegionWhereItShowsWithTheBoxOfTheWhole)
{
    CRandom random(6);
    for (int n = 0; n < 20; ++n) {
        const auto at = [&] { return static_cast<int>(random.Between(0, 100)); };
        CTestView<CQELViewPolygon> view(
            FilledAttr({6, 0, at(), at(), 0, 100, at(), at(), 100, at(), at(), 20, 20}));
        EXPECT_TRUE(ExpectShownRegion(view, {-3000, -20000, 6000, 21000}, SCREEN));
    }
    CTestView<CQELViewPolygon> box(FilledAttr({4, 0, 0, 100, 0, 100, 100, 0, 100}));
    EXPECT_TRUE(ExpectShownRegion(box, {-100, -200000, 300, 200000}, SCREEN));
}

TEST(ShownRegion, OfSmallFiguresIsTheWholeWhateverShows)
{
    CTestView<CQELViewPie> pie(FilledAttr({0, 0, 100, 100, 100, 20, 30, 0}));
    EXPECT_FALSE(ExpectShownRegion(pie, {0, 0, 500, 400}, {10, 10, 20, 20}));
    CTestView<CQELViewEllipse> ellipse(FilledAttr({0, 0, 100, 100}));
    EXPECT_FALSE(ExpectShownRegion(ellipse, {0, 0, 5000, 4000}, {10, 10, 20, 20}));
}

TEST(FaceRegion, OfOneDrawsClipIsNotThatOfTheNext)
{
    for (const int nMeterType : {0, 1, 2, 3, 10}) {
        SCOPED_TRACE(nMeterType);
        CTestBitmap expected(SCREEN_SIDE, SCREEN_SIDE), drawn(SCREEN_SIDE, SCREEN_SIDE);
        CFaced(nMeterType, QEL_TYPE_PIE, LargePie()).Draw(expected.Dc());
        EXPECT_FALSE(IsBlank(expected));
        CFaced meter(nMeterType, QEL_TYPE_PIE, LargePie());
        for (const RECT& rc : {RECT{100, 100, 120, 110}, RECT{0, 0, 5, 5}, RECT{0, 0, 0, 0},
                               RECT{40, 0, 200, 300}, RECT{0, 0, SCREEN_SIDE, SCREEN_SIDE}}) {
            ClipTo(drawn.Dc(), rc);
            meter.Draw(drawn.Dc());
        }
        EXPECT_EQ("", FirstDifference(expected, drawn));
        ClipTo(drawn.Dc(), {50, 50, 60, 60}); // less again: nothing changes
        meter.Draw(drawn.Dc(), 0);
        EXPECT_EQ("", FirstDifference(expected, drawn));
    }
}

TEST(FaceRegion, IsWholeOnAMetafileEvenAfterADrawOfAPart)
{
    const auto record = [](CFaced& meter) {
        CRecording recording;
        meter.Draw(recording.Dc());
        return recording.Calls();
    };
    CFaced never(0, QEL_TYPE_PIE, LargePie());
    CFaced before(0, QEL_TYPE_PIE, LargePie());
    CTestBitmap drawn(SCREEN_SIDE, SCREEN_SIDE);
    before.Draw(drawn.Dc());
    const Lines expected = record(never);
    EXPECT_LT(5u, expected.size());
    EXPECT_EQ(expected, record(before));
}
