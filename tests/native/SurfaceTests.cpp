// Surfaces that are no plain bitmaps, which a stand-in alone gives exactly: windows that others
// cover, units that are no pixels, and device contexts that convert nothing. The code on trial is
// render/UpdateClip.cpp and meter/FaceClip.cpp; tests/host/UpdateTests.cpp has updates of bitmaps.
#include "meter/FaceClip.h"
#include "tests/native/AllocationFaults.h"
#include "tests/native/GdiDouble.h"
#include "tests/native/Life.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr RECT WHOLE{0, 0, 403, 305}; // what a CPaper has room for

std::string Text(const RECT& rc)
{
    return std::to_string(rc.left) + "," + std::to_string(rc.top) + "," + std::to_string(rc.right) +
           "," + std::to_string(rc.bottom);
}

class CRgn { // a region that a test owns
public:
    explicit CRgn(const RECT& rc) : m_h(::CreateRectRgnIndirect(&rc)) {}
    ~CRgn() { ::DeleteObject(m_h); }
    CRgn(const CRgn&) = delete;
    CRgn& operator=(const CRgn&) = delete;
    operator HRGN() const { return m_h; }
    void Add(const RECT& rc)
    {
        const CRgn part(rc);
        ::CombineRgn(m_h, m_h, part, RGN_OR);
    }

private:
    HRGN m_h;
};

// A drawing of which one rectangle alone is dirty.
class CDirtyDrawing {
public:
    explicit CDirtyDrawing(const RECT& rcDirty)
    {
        EXPECT_TRUE(m_engine.Open("<qel width='400' height='300'>"
                                  "<rect style='0x1' lnwid='0' crd='0 0 400 300'/></qel>"));
        SetDirty(rcDirty);
    }
    void SetDirty(const RECT& rc)
    {
        EXPECT_EQ(1, QELValidate(m_engine));
        EXPECT_EQ(1, QELInvalidate(m_engine, &rc));
    }
    int Update(HDC hdc)
    {
        const gdi::CStateCheck state(hdc);
        const gdi::CLeakCheck leaks;
        return QELUpdate(m_engine, hdc, nullptr);
    }
    std::string Dirty()
    {
        RECT rc{};
        return QELGetDirtyRect(m_engine, &rc) ? Text(rc) : "none";
    }

private:
    CTestEngine m_engine;
};

std::string ClipText(HDC hdc)
{
    const CRgn clip({0, 0, 0, 0});
    return ::GetClipRgn(hdc, clip) == 1 ? gdi::RegionText(clip) : "none";
}

} // namespace

// ---- updates ----

TEST(UpdateInAWindow, LeavesDirtyWhatOthersCover)
{
    CDirtyDrawing drawing({20, 20, 100, 60});
    const CPaper paper;
    const RECT rcClient{100, 50, 503, 355};
    gdi::ShowInWindow(paper, {{100, 50}, rcClient, {60, 0, 403, 305}});
    EXPECT_EQ(1, drawing.Update(paper));
    EXPECT_EQ("60,20,100,60", drawing.Dirty());
    EXPECT_EQ(0, drawing.Update(paper)); // all that is dirty is covered
    gdi::ShowInWindow(paper, {{100, 50}, rcClient, {0, 0, 0, 0}});
    EXPECT_EQ(1, drawing.Update(paper));
    EXPECT_EQ("none", drawing.Dirty());
}

TEST(UpdateInAWindow, HasNothingToPaintBeyondTheClientArea)
{
    CDirtyDrawing drawing({20, 20, 100, 60});
    const CPaper paper;
    gdi::ShowInWindow(paper, {{100, 50}, {100, 50, 180, 150}, {80, 0, 403, 305}});
    EXPECT_EQ(1, drawing.Update(paper));
    EXPECT_EQ("none", drawing.Dirty());
}

// A context of a whole window begins at its frame; where its surface ends is not known then.
TEST(UpdateInAWindow, LeavesDirtyAllThatIsNotShownWhereTheContextBeginsElsewhere)
{
    for (const POINT ptOrigin : {POINT{96, 50}, POINT{100, 30}}) {
        CDirtyDrawing drawing({20, 20, 100, 60});
        const CPaper paper;
        gdi::ShowInWindow(paper, {ptOrigin, {100, 50, 180, 150}, {80, 0, 403, 305}});
        EXPECT_EQ(1, drawing.Update(paper));
        EXPECT_EQ("80,20,100,60", drawing.Dirty());
    }
}

// Two units more at each side, so that no rounding leaves a pixel out.
TEST(UpdateInOtherUnits, PaintsSomewhatMoreAndLeavesDirtyWhatIsClipped)
{
    CDirtyDrawing drawing({20, 20, 60, 60});
    const CPaper paper;
    gdi::SetPixelsPerUnit(paper, 2);
    const CRgn left({0, 0, 80, 305}); // pixels
    ::SelectClipRgn(paper, left);
    EXPECT_EQ(1, drawing.Update(paper));
    EXPECT_EQ("40,18,62,62", drawing.Dirty());
    ::SelectClipRgn(paper, nullptr);
    EXPECT_EQ(1, drawing.Update(paper));
    EXPECT_EQ("none", drawing.Dirty());
}

TEST(UpdateInOtherUnits, TakesThemForPixelsWhereNothingCanBeConverted)
{
    CDirtyDrawing drawing({20, 20, 60, 60});
    const CPaper paper;
    gdi::SetPixelsPerUnit(paper, 0);
    const CRgn left({0, 0, 40, 305});
    ::SelectClipRgn(paper, left);
    EXPECT_EQ(1, drawing.Update(paper));
    EXPECT_EQ("40,18,62,62", drawing.Dirty());
    ::SelectClipRgn(paper, nullptr);
}

TEST(UpdateUnderAClip, LeavesDirtyTheBoxOfAllThatManyPartsHide)
{
    CDirtyDrawing drawing({0, 0, 403, 10});
    const CPaper paper;
    CRgn comb({0, 0, 1, 10}); // of each four columns the first
    for (LONG x = 4; x < 403; x += 4) comb.Add({x, 0, x + 1, 10});
    ::SelectClipRgn(paper, comb);
    EXPECT_EQ(1, drawing.Update(paper));
    EXPECT_EQ("1,0,403,10", drawing.Dirty()); // the last column is one of the comb's gaps
    ::SelectClipRgn(paper, nullptr);
}

// What it takes is a region for the area, for what is closed, for the clip and its parts.
TEST(UpdateUnderAClip, GoesOnWithoutOneObjectOrLeavesItsAreaDirty)
{
    const CRgn left({0, 0, 60, 305});
    int nFailed = 0;
    bool bReached = true;
    for (int n = 1; bReached; ++n) {
        SCOPED_TRACE(n);
        CDirtyDrawing drawing({20, 20, 100, 60});
        const CPaper paper;
        ::SelectClipRgn(paper, left);
        gdi::FailCreation(n);
        const int nResult = drawing.Update(paper);
        bReached = gdi::Creations() >= n;
        gdi::FailCreation(0);
        nFailed += nResult ? 0 : 1;
        EXPECT_EQ(nResult ? "60,20,100,60" : "20,20,100,60", drawing.Dirty());
        EXPECT_EQ(nResult ? 0 : 1, drawing.Update(paper)) << "a later try";
        EXPECT_EQ("60,20,100,60", drawing.Dirty());
        ::SelectClipRgn(paper, nullptr);
    }
    EXPECT_LT(5, nFailed);
}

// What cannot be found out is taken to be shown, and what cannot be set leaves the area dirty.
TEST(UpdateUnderAClip, GoesOnWithoutOneCallOrLeavesItsAreaDirty)
{
    const CRgn left({0, 0, 60, 305});
    for (const bool bWindow : {false, true}) {
        int nFailed = 0;
        bool bReached = true;
        for (int n = 1; bReached; ++n) {
            SCOPED_TRACE(n);
            CDirtyDrawing drawing({20, 20, 100, 60});
            const CPaper paper;
            if (bWindow) gdi::ShowInWindow(paper, {{7, 8}, {7, 8, 410, 313}, {0, 0, 0, 0}});
            ::SelectClipRgn(paper, left);
            // Where a unit may be no pixel, two more are painted.
            const char* const pszRest = n == 1 ? "60,18,102,62" : "60,20,100,60";
            gdi::FailCall(n); // the first one asks for that
            const int nResult = drawing.Update(paper);
            bReached = gdi::Calls() >= n;
            gdi::FailCall(0);
            nFailed += nResult ? 0 : 1;
            EXPECT_EQ(nResult ? pszRest : "20,20,100,60", drawing.Dirty());
            EXPECT_EQ(nResult ? 0 : 1, drawing.Update(paper)) << "a later try";
            EXPECT_EQ(pszRest, drawing.Dirty());
            ::SelectClipRgn(paper, nullptr);
        }
        EXPECT_LT(5, nFailed);
    }
}

TEST(DirtyRegion, IsTheBoxOfAllWithoutTheObjectOfAPart)
{
    CTestEngine engine;
    ASSERT_TRUE(engine.Open());
    EXPECT_EQ(1, QELValidate(engine));
    for (const RECT& rc : {RECT{10, 10, 20, 20}, RECT{50, 60, 70, 80}})
        EXPECT_EQ(1, QELInvalidate(engine, &rc));
    const CRgn region(WHOLE);
    for (const int nFailed : {1, 2}) {
        gdi::FailCreation(nFailed);
        EXPECT_EQ(1, QELGetDirtyRegion(engine, region));
        gdi::FailCreation(0);
        EXPECT_EQ("10,10,70,80", gdi::RegionText(region));
    }
    gdi::FailCall(1); // the region cannot even be emptied
    EXPECT_EQ(0, QELGetDirtyRegion(engine, region));
    gdi::FailCall(2); // the first part is not taken in
    EXPECT_EQ(1, QELGetDirtyRegion(engine, region));
    EXPECT_EQ("10,10,70,80", gdi::RegionText(region));
    gdi::FailCall(0);
    EXPECT_EQ(1, QELGetDirtyRegion(engine, region));
    EXPECT_FALSE(::PtInRegion(region, 30, 30));
    EXPECT_TRUE(::PtInRegion(region, 10, 10));
    EXPECT_TRUE(::PtInRegion(region, 69, 79));
}

// ---- faces ----

namespace {

constexpr RECT PAINTED{0, 0, 40, 40};

} // namespace

TEST(FaceInOtherUnits, IsCutOutOfTheClip)
{
    CRgn face({10, 10, 20, 20});
    face.Add({20, 20, 30, 30});
    const CPaper paper;
    gdi::SetPixelsPerUnit(paper, 2);
    {
        const CFaceClip clip(paper, face, PAINTED);
        EXPECT_TRUE(clip.MayPaint());
        CRgn expected({20, 20, 40, 40}); // pixels
        expected.Add({40, 40, 60, 60});
        EXPECT_EQ(gdi::RegionText(expected), ClipText(paper));
    }
    EXPECT_EQ("none", ClipText(paper));
}

TEST(FaceInOtherUnits, IsCutOutAsItIsWhereNothingCanBeConverted)
{
    CRgn face({10, 10, 20, 20});
    face.Add({20, 20, 30, 30});
    const CRgn box({10, 10, 30, 30});
    const CPaper paper;
    gdi::SetPixelsPerUnit(paper, 0);
    for (const CRgn* pFace : {static_cast<const CRgn*>(&face), &box}) {
        const CFaceClip clip(paper, *pFace, PAINTED);
        EXPECT_TRUE(clip.MayPaint());
        EXPECT_EQ(gdi::RegionText(*pFace), ClipText(paper));
    }
}

TEST(FaceInOtherUnits, LetsNothingBePaintedWithoutWhatItTakes)
{
    CRgn face({10, 10, 20, 20});
    face.Add({20, 20, 30, 30});
    const CPaper paper;
    gdi::SetPixelsPerUnit(paper, 2);
    {
        gdi::FailCreation(1);
        const CFaceClip clip(paper, face, PAINTED);
        gdi::FailCreation(0);
        EXPECT_FALSE(clip.MayPaint());
    }
    {
        const alloc::CFault fault(1);
        const CFaceClip clip(paper, face, PAINTED);
        EXPECT_FALSE(clip.MayPaint());
    }
    EXPECT_EQ("none", ClipText(paper));
}

// The whole face is the clip, or nothing is painted; the face stays where it is.
TEST(FaceClip, LetsNothingBePaintedThatItCannotClip)
{
    CRgn face({10, 10, 20, 20});
    face.Add({20, 20, 30, 30});
    CRgn doubled({20, 20, 40, 40});
    doubled.Add({40, 40, 60, 60});
    const CPaper paper;
    const std::string before = gdi::RegionText(face);
    for (const int nPixels : {1, 2}) {
        int nRefused = 0;
        bool bReached = true;
        gdi::SetPixelsPerUnit(paper, nPixels);
        for (int n = 1; bReached; ++n) {
            SCOPED_TRACE(testing::Message() << nPixels << " " << n);
            gdi::FailCall(n);
            const CFaceClip clip(paper, face, PAINTED);
            bReached = gdi::Calls() >= n;
            gdi::FailCall(0);
            if (clip.MayPaint()) {
                EXPECT_EQ(gdi::RegionText(nPixels == 1 ? face : doubled), ClipText(paper));
            }
            nRefused += clip.MayPaint() ? 0 : 1;
            EXPECT_EQ(before, gdi::RegionText(face));
        }
        EXPECT_LT(2, nRefused);
        EXPECT_EQ("none", ClipText(paper));
    }
}

// ---- faces of which a part was made for the clip alone

TEST(FaceRegions, OfOneDrawsClipAreMadeAnewForTheNext)
{
    const std::string text =
        "<qel width='400' height='300'><meter mtype='vert' crd='20 10 300 290'>"
        "<polygon style='0x1' crd='10 10 390 20 200 290'/></meter></qel>";
    const auto drawn = [](HQELENGINE h, const RECT& rcClip, bool bBounds) {
        const RECT rc = DEVICE_RECT;
        const CPaper paper;
        if (bBounds) ::SetBoundsRect(paper, nullptr, DCB_ENABLE); // all counts, shown or not
        ::IntersectClipRect(paper, rcClip.left, rcClip.top, rcClip.right, rcClip.bottom);
        gdi::LogPaintings(paper);
        EXPECT_EQ(1, QELDraw(h, paper, &rc, QEL_DRAW_FULL));
        return gdi::Paintings(paper);
    };
    const RECT rcFirst{40, 30, 120, 160}, rcNext{100, 100, 300, 280};
    for (const bool bBounds : {false, true}) {
        CTestEngine engine, fresh;
        ASSERT_TRUE(engine.Open(text));
        ASSERT_TRUE(fresh.Open(text));
        const std::vector<std::string> first = drawn(engine, rcFirst, false);
        const std::vector<std::string> expected = drawn(fresh, rcNext, bBounds);
        EXPECT_FALSE(expected.empty());
        EXPECT_NE(first, expected);
        EXPECT_EQ(expected, drawn(engine, rcNext, bBounds));
    }
}
