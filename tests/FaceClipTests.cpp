// The clip of a bar's body: it holds whatever is painted within the face, on every kind of surface,
// and puts the host's own clip back as it was. The code is meter/FaceClip.cpp; what bars paint
// under it is in BarMeter3DTests.cpp and host/BarFaceTests.cpp.
#include "meter/FaceClip.h"

#include "tests/support/Bitmap.h"
#include "tests/support/Recording.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

constexpr RECT COLUMN{20, 10, 60, 90};
constexpr int SIDE = 200;

class CFace { // a region that a test owns
public:
    explicit CFace(HRGN hRegion) : m_h(hRegion) {}
    ~CFace() { ::DeleteObject(m_h); }
    CFace(const CFace&) = delete;
    CFace& operator=(const CFace&) = delete;
    operator HRGN() const { return m_h; }

private:
    HRGN m_h;
};

HRGN TwoRects()
{
    const HRGN hRegion = ::CreateRectRgn(20, 10, 40, 30);
    const CFace more(::CreateRectRgn(30, 50, 60, 80));
    ::CombineRgn(hRegion, hRegion, more, RGN_OR);
    return hRegion;
}

struct FaceRow {
    const char* pszName;
    HRGN (*pfnMake)();
};
const FaceRow g_faces[] = {
    {"rectangle", [] { return ::CreateRectRgn(21, 11, 59, 89); }},
    {"ellipse", [] { return ::CreateEllipticRgn(20, 10, 60, 90); }},
    {"two rectangles", TwoRects},
    {"round corners", [] { return ::CreateRoundRectRgn(10, 0, 70, 100, 60, 60); }},
};

struct SurfaceRow {
    const char* pszName;
    void (*pfnSetUp)(HDC);
};
const SurfaceRow g_surfaces[] = {
    {"plain", [](HDC) {}},
    {"moved", [](HDC hdc) { ::SetViewportOrgEx(hdc, 37, -4, nullptr); }},
    {"enlarged",
     [](HDC hdc) {
         ::SetMapMode(hdc, MM_ANISOTROPIC);
         ::SetWindowExtEx(hdc, 2, 1, nullptr);
         ::SetViewportExtEx(hdc, 3, 2, nullptr);
     }},
    {"upside down",
     [](HDC hdc) {
         ::SetMapMode(hdc, MM_ANISOTROPIC);
         ::SetWindowExtEx(hdc, 1, 1, nullptr);
         ::SetViewportExtEx(hdc, 1, -1, nullptr);
         ::SetViewportOrgEx(hdc, 0, 150, nullptr);
     }},
};

// All of the surface under the clip.
void PaintAll(HDC hdc, HRGN hFace)
{
    const CFaceClip clip(hdc, hFace, COLUMN);
    EXPECT_TRUE(clip.MayPaint());
    ::PatBlt(hdc, -SIDE, -SIDE, 4 * SIDE, 4 * SIDE, BLACKNESS);
}

void ForEach(const std::function<void(const SurfaceRow&, HRGN)>& check)
{
    for (const SurfaceRow& surface : g_surfaces)
        for (const FaceRow& row : g_faces) {
            SCOPED_TRACE(testing::Message() << row.pszName << ", " << surface.pszName);
            const CFace face(row.pfnMake()), before(row.pfnMake());
            check(surface, face);
            EXPECT_TRUE(::EqualRgn(before, face)); // borrowed
        }
}

// The pixels of the face, as the system itself fills a region.
void PaintExpected(const CTestBitmap& bitmap, const SurfaceRow& surface, HRGN hFace)
{
    const int nSaved = ::SaveDC(bitmap.Dc());
    surface.pfnSetUp(bitmap.Dc());
    ::FillRgn(bitmap.Dc(), hFace, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
    ::RestoreDC(bitmap.Dc(), nSaved);
    EXPECT_FALSE(IsBlank(bitmap));
}

TEST(FaceClip, LeavesThePixelsOfTheFaceAloneOnEverySurface)
{
    ForEach([](const SurfaceRow& surface, HRGN hFace) {
        CTestBitmap expected(SIDE, SIDE), drawn(SIDE, SIDE);
        PaintExpected(expected, surface, hFace);
        surface.pfnSetUp(drawn.Dc());
        PaintAll(drawn.Dc(), hFace);
        EXPECT_EQ("", FirstDifference(expected, drawn));
    });
}

TEST(FaceClip, KeepsToTheHostsClipAndPutsItBackExactly)
{
    ForEach([](const SurfaceRow& surface, HRGN hFace) {
        CTestBitmap expected(SIDE, SIDE), drawn(SIDE, SIDE);
        const CFace host(::CreateEllipticRgn(15, 25, 150, 140));
        for (const CTestBitmap* p : {&expected, &drawn}) ::SelectClipRgn(p->Dc(), host);
        PaintExpected(expected, surface, hFace);
        surface.pfnSetUp(drawn.Dc());
        ::MoveToEx(drawn.Dc(), 5, 6, nullptr);
        const CFace clip(::CreateRectRgn(0, 0, 0, 0)), after(::CreateRectRgn(0, 0, 0, 0));
        ASSERT_EQ(1, ::GetClipRgn(drawn.Dc(), clip));
        const std::string state = DcState(drawn.Dc());
        PaintAll(drawn.Dc(), hFace);
        EXPECT_EQ(state, DcState(drawn.Dc()));
        ASSERT_EQ(1, ::GetClipRgn(drawn.Dc(), after));
        EXPECT_TRUE(::EqualRgn(clip, after));
        EXPECT_EQ("", FirstDifference(expected, drawn));
        // And none where there was none.
        CTestBitmap bare(SIDE, SIDE);
        surface.pfnSetUp(bare.Dc());
        PaintAll(bare.Dc(), hFace);
        EXPECT_EQ(0, ::GetClipRgn(bare.Dc(), after));
    });
}

// A metafile of the old kind answers no questions about units, so that this one is played.
TEST(FaceClip, HoldsOnASixteenBitMetafileToo)
{
    for (const FaceRow& row : g_faces) {
        SCOPED_TRACE(row.pszName);
        const CFace face(row.pfnMake());
        CTestBitmap expected(SIDE, SIDE), drawn(SIDE, SIDE);
        PaintExpected(expected, g_surfaces[0], face);
        const HDC hdc = ::CreateMetaFileA(nullptr);
        PaintAll(hdc, face);
        const HMETAFILE hFile = ::CloseMetaFile(hdc);
        EXPECT_TRUE(::PlayMetaFile(drawn.Dc(), hFile));
        ::DeleteMetaFile(hFile);
        EXPECT_EQ("", FirstDifference(expected, drawn));
    }
}

TEST(FaceClip, AFaceThatCoversWhatIsPaintedCostsNoCall)
{
    for (const RECT& rc : {COLUMN, RECT{0, 0, 100, 100}, RECT{20, 10, 61, 90}}) {
        const CFace face(::CreateRectRgnIndirect(&rc));
        CRecording recording;
        {
            const CFaceClip clip(recording.Dc(), face, COLUMN);
            EXPECT_TRUE(clip.MayPaint());
        }
        EXPECT_EQ(std::vector<std::string>{}, recording.Calls());
    }
    // One pixel less on any side is another matter.
    for (const RECT& rc :
         {RECT{21, 10, 60, 90}, RECT{20, 11, 60, 90}, RECT{20, 10, 59, 90}, RECT{20, 10, 60, 89}}) {
        const CFace face(::CreateRectRgnIndirect(&rc));
        CRecording recording;
        {
            const CFaceClip clip(recording.Dc(), face, COLUMN);
            EXPECT_TRUE(clip.MayPaint());
        }
        EXPECT_EQ((std::vector<std::string>{"Record 33", "Record 30", "Record 34"}),
                  recording.Calls()); // save, intersect with a rectangle, restore
    }
}

TEST(FaceClip, AFaceOfAnyOtherFormIsOneCallWhereTheSurfaceOnlyMoves)
{
    const CFace face(::CreateEllipticRgn(20, 10, 60, 90));
    CRecording recording;
    ::SetViewportOrgEx(recording.Dc(), 5, 6, nullptr);
    {
        const CFaceClip clip(recording.Dc(), face, COLUMN);
        EXPECT_TRUE(clip.MayPaint());
    }
    EXPECT_EQ((std::vector<std::string>{"Record 12", "Record 33", "Record 75", "Record 34"}),
              recording.Calls());
}

TEST(FaceClip, AnEmptyFaceOrNoneLetsNothingBePainted)
{
    const CFace empty(::CreateRectRgn(0, 0, 0, 0));
    for (const HRGN hFace : {HRGN(empty), HRGN{nullptr}}) {
        CRecording recording;
        {
            const CFaceClip clip(recording.Dc(), hFace, COLUMN);
            EXPECT_FALSE(clip.MayPaint());
        }
        EXPECT_EQ(std::vector<std::string>{}, recording.Calls());
    }
}

TEST(FaceClip, LeavesNoObjectBehind)
{
    ForEach([](const SurfaceRow& surface, HRGN hFace) {
        const CTestBitmap bitmap(SIDE, SIDE);
        surface.pfnSetUp(bitmap.Dc());
        const std::size_t nSpare = SpareObjects(20000);
        for (int i = 0; i < 3; ++i) PaintAll(bitmap.Dc(), hFace);
        EXPECT_EQ(nSpare, SpareObjects(20000));
    });
}

} // namespace
