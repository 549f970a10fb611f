// Printed pages: where a drawing stands on the paper, and that what is painted there is what the
// engine draws of the same values.
#include "tools/studio/model/PrintPage.h"

#include "tests/studio/StudioSupport.h"
#include "tests/support/Files.h"
#include "tools/qel/Canvas.h"
#include "tools/qel/TextFont.h"

#include <cstring>
#include <vector>

using studio::CPagePainter;
using studio::CPlay;
using studio::LayOut;
using studio::PageDevice;
using studio::PageSetup;
using studio::PrintPage;

namespace {

constexpr LONG INCH = 2540; // hundredths of a millimetre
// Without curves, whose edges are recorded as lines and so may differ by a pixel.
constexpr char BODY[] =
    "<rect id=\"box\" style=\"0x1\" dr=\"1\" lnwid=\"3\" clr=\"0x808000\" "
    "fg=\"0xff\" crd=\"10 20 60 90\"/>"
    "<polygon style=\"0x1\" bg=\"0x30d030\" lnwid=\"1\" crd=\"70 50 95 60 80 95\"/>"
    "<line clr=\"0xff0000\" lnwid=\"2\" crd=\"0 0 100 100\"/>"
    "<text id=\"said\" fg=\"0x604020\" crd=\"5 2 95 18\">##.#</text>";

// A paper of whole inches with margins of half an inch.
PageSetup Inches(LONG nWidth, LONG nHeight, bool bFit)
{
    PageSetup setup;
    setup.paper = {nWidth * INCH, nHeight * INCH};
    setup.margins = {INCH / 2, INCH / 2, INCH / 2, INCH / 2};
    setup.bFit = bFit;
    return setup;
}

void ExpectRect(const RECT& rcExpected, const RECT& rc)
{
    EXPECT_EQ(rcExpected.left, rc.left);
    EXPECT_EQ(rcExpected.top, rc.top);
    EXPECT_EQ(rcExpected.right, rc.right);
    EXPECT_EQ(rcExpected.bottom, rc.bottom);
}

// A white page in memory.
class CPage {
public:
    explicit CPage(SIZE size) : m_size(size), m_canvas(size)
    {
        std::memset(m_canvas.Bits(), 0xFF, Bytes());
    }
    [[nodiscard]] HDC Dc() const { return m_canvas.Dc(); }
    [[nodiscard]] uint32_t At(LONG x, LONG y) const
    {
        ::GdiFlush();
        return reinterpret_cast<const uint32_t*>(m_canvas.Bits())[y * m_size.cx + x] & 0xFFFFFF;
    }
    // How many pixels differ.
    [[nodiscard]] int Compare(const CPage& other) const
    {
        ::GdiFlush();
        int nOther = 0;
        const auto* p = reinterpret_cast<const uint32_t*>(m_canvas.Bits());
        const auto* pOther = reinterpret_cast<const uint32_t*>(other.m_canvas.Bits());
        for (std::size_t n = 0; n < Bytes() / 4; ++n)
            nOther += ((p[n] ^ pOther[n]) & 0xFFFFFF) != 0;
        return nOther;
    }

private:
    [[nodiscard]] std::size_t Bytes() const
    {
        return static_cast<std::size_t>(m_size.cx) * static_cast<std::size_t>(m_size.cy) * 4;
    }
    SIZE m_size;
    qel::CCanvas m_canvas;
};

// What a host draws: the drawing at a place, in a scale, with the values that it has.
void DrawAsHost(HQELENGINE hEngine, const CPage& page, const RECT& rc, DWORD nScale, int nSmooth)
{
    const std::wstring face = qel::DefaultTextFace();
    const LOGFONTW font = qel::TextFont(face);
    HFONT hFont = ::CreateFontIndirectW(&font);
    const HGDIOBJ hPrev = ::SelectObject(page.Dc(), hFont);
    ::IntersectClipRect(page.Dc(), rc.left, rc.top, rc.right, rc.bottom);
    QELSetFontFace(hEngine, face.c_str());
    QELSetPixelScale(hEngine, nScale);
    QELSetSmooth(hEngine, nSmooth);
    QELSetQELRect(hEngine, &rc);
    EXPECT_EQ(1, QELDraw(hEngine, page.Dc(), &rc, QEL_DRAW_FULL));
    ::SelectObject(page.Dc(), hPrev);
    ::DeleteObject(hFont);
}

void PlayOnto(const CPage& page, const std::string& path, SIZE size)
{
    HENHMETAFILE hFile = ::GetEnhMetaFileA(path.c_str());
    const RECT rc{0, 0, size.cx, size.cy};
    EXPECT_TRUE(hFile && ::PlayEnhMetaFile(page.Dc(), hFile, &rc));
    ::DeleteEnhMetaFile(hFile);
}

} // namespace

TEST(PrintPage, FitsADrawingIntoTheMarginsInProportionAndInTheMiddle)
{
    // 3 by 4 inches within the margins; a drawing of 2 to 1 is 3 inches wide and 1.5 tall.
    const PrintPage page = LayOut(Inches(4, 5, true), {200, 100}, {100, 100, {0, 0}});
    ExpectRect({0, 0, 400, 500}, page.rcPaper);
    ExpectRect({50, 50, 350, 450}, page.rcMargins);
    ExpectRect({50, 175, 350, 325}, page.rcPicture);
    EXPECT_DOUBLE_EQ(3 * 96 / 200.0, page.fZoom);
    EXPECT_DOUBLE_EQ(300 / 200.0, page.fScale) << "pixels of the page that one of the drawing is";
    EXPECT_FALSE(page.IsCut());
}

TEST(PrintPage, ActualSizeIs96UnitsAnInch)
{
    const PrintPage page = LayOut(Inches(4, 5, false), {192, 96}, {300, 600, {0, 0}});
    ExpectRect({300, 1200, 900, 1800}, page.rcPicture);
    EXPECT_EQ(1, page.fZoom);
    EXPECT_DOUBLE_EQ(300 / 96.0, page.fScale) << "the coarser resolution counts";
}

TEST(PrintPage, WhatIsLargerThanTheMarginsBeginsAtTheirCorner)
{
    const PrintPage page = LayOut(Inches(4, 5, false), {960, 96}, {100, 100, {0, 0}});
    ExpectRect({50, 200, 1050, 300}, page.rcPicture);
    EXPECT_TRUE(page.IsCut());
}

TEST(PrintPage, TheFirstDotOfAPrinterIsWithinThePaper)
{
    const PrintPage page = LayOut(Inches(4, 5, true), {200, 100}, {100, 100, {-20, -10}});
    ExpectRect({-20, -10, 380, 490}, page.rcPaper);
    ExpectRect({30, 165, 330, 315}, page.rcPicture);
}

TEST(PrintPage, PaperIsTurnedOnlyWhereItStandsTheOtherWay)
{
    PageSetup setup = Inches(4, 5, true);
    studio::TurnPaper(&setup, true);
    EXPECT_TRUE(studio::IsLandscape(setup));
    EXPECT_EQ(5 * INCH, setup.paper.cx);
    studio::TurnPaper(&setup, true);
    EXPECT_EQ(5 * INCH, setup.paper.cx);
    studio::TurnPaper(&setup, false);
    EXPECT_EQ(4 * INCH, setup.paper.cx);
}

TEST(PrintPage, MarginsThatMeetLeaveNoRoomAndNoTrouble)
{
    PageSetup setup = Inches(4, 5, true);
    setup.margins = {4 * INCH, 0, 4 * INCH, 0};
    const PrintPage page = LayOut(setup, {200, 100}, {100, 100, {0, 0}});
    EXPECT_GE(1, page.rcMargins.right - page.rcMargins.left);
    EXPECT_GE(1, page.rcPicture.right - page.rcPicture.left);
}

TEST(PrintPage, IsPaintedAsAHostDrawsTheSameValues)
{
    const COpenDrawing drawing(BODY);
    CPlay play;
    std::string why;
    ASSERT_EQ(1, play.Values().Set(drawing, "box.fg", "#0000FF", &why)) << why;
    ASSERT_EQ(1, play.Values().Set(drawing, "said", "47.5", &why)) << why;
    const CPagePainter painter(drawing, play);
    const PageSetup setup = Inches(3, 3, true); // 2 inches of drawing: 100 units are 400 dots
    const CPage page({600, 600});
    ASSERT_EQ(1, painter.Paint(page.Dc(), setup, {200, 200, {0, 0}}));
    const CPage expected({600, 600});
    DrawAsHost(drawing, expected, {100, 100, 500, 500}, 400, 4);
    EXPECT_EQ(0, page.Compare(expected));
    EXPECT_EQ(0x0000FFU, page.At(100 + 4 * 30, 100 + 4 * 70)) << "the value of the box";
}

TEST(PrintPage, PaintsNothingBeyondTheMargins)
{
    const COpenDrawing drawing(
        "<rect style=\"0x1\" dr=\"1\" lnwid=\"0\" fg=\"0xff\" crd=\"-500 -500 900 900\"/>");
    const CPagePainter painter(drawing, CPlay());
    const CPage page({200, 200});
    PageSetup setup = Inches(2, 2, false); // an inch of room, and a little more of drawing
    ASSERT_EQ(1, painter.Paint(page.Dc(), setup, {100, 100, {0, 0}}));
    EXPECT_EQ(0xFF0000U, page.At(50, 50));
    EXPECT_EQ(0xFF0000U, page.At(149, 149));
    EXPECT_EQ(0xFFFFFFU, page.At(49, 100));
    EXPECT_EQ(0xFFFFFFU, page.At(150, 100));
    EXPECT_EQ(0xFFFFFFU, page.At(100, 49));
    EXPECT_EQ(0xFFFFFFU, page.At(100, 150));
}

TEST(PrintPage, LeavesWhatShowsTheDrawingAndTheDeviceAsTheyAre)
{
    const COpenDrawing drawing(BODY);
    const RECT rc{3, 4, 33, 44};
    QELSetQELRect(drawing, &rc);
    QELValidate(drawing);
    const CPagePainter painter(drawing, CPlay());
    const CPage page({200, 200});
    const HGDIOBJ hFont = ::GetCurrentObject(page.Dc(), OBJ_FONT);
    RECT rcClip{};
    ASSERT_EQ(1, painter.Paint(page.Dc(), Inches(2, 2, true), {100, 100, {0, 0}}));
    RECT rcNow{};
    RECT rcDirty{};
    QELGetQELRect(drawing, &rcNow);
    ExpectRect(rc, rcNow);
    EXPECT_EQ(0, QELGetDirtyRect(drawing, &rcDirty));
    EXPECT_EQ(0, QELIsModified(drawing));
    EXPECT_EQ(hFont, ::GetCurrentObject(page.Dc(), OBJ_FONT));
    ::GetClipBox(page.Dc(), &rcClip);
    ExpectRect({0, 0, 200, 200}, rcClip);
}

TEST(PrintPage, AMetafilePlaysWhatAHostDrawsPlainly)
{
    const COpenDrawing drawing(BODY);
    CPlay play;
    std::string why;
    ASSERT_EQ(1, play.Values().Set(drawing, "said", "47.5", &why)) << why;
    const CPagePainter painter(drawing, play);
    const CTestFolder folder;
    const std::string path = folder.Path("page.emf");
    PageSetup setup = Inches(2, 3, true);
    setup.margins = {INCH / 2, 0, INCH / 2, 2 * INCH};
    ASSERT_EQ(1, painter.WriteMetafile({path.begin(), path.end()}, setup, &why)) << why;
    // 16 pixels for each of the drawing, whose 100 units are an inch.
    const CPage page({3200, 4800});
    PlayOnto(page, path, {3200, 4800});
    const CPage expected({3200, 4800});
    DrawAsHost(drawing, expected, {800, 0, 2400, 1600}, 1600, 0);
    EXPECT_EQ(0, page.Compare(expected));
}

TEST(PrintPage, AMetafileIsAsLargeAsThePaper)
{
    const COpenDrawing drawing(BODY);
    const CPagePainter painter(drawing, CPlay());
    const CTestFolder folder;
    const std::string path = folder.Path("page.emf");
    std::string why;
    ASSERT_EQ(1, painter.WriteMetafile({path.begin(), path.end()}, Inches(2, 3, true), &why));
    const std::string bytes = ReadBytes(path);
    ENHMETAHEADER header{};
    ASSERT_LT(sizeof header, bytes.size());
    std::memcpy(&header, bytes.data(), sizeof header);
    EXPECT_EQ(2 * INCH, header.rclFrame.right - header.rclFrame.left);
    EXPECT_EQ(3 * INCH, header.rclFrame.bottom - header.rclFrame.top);
    // An inch of the paper, which the 100 units take, is 1600 pixels.
    EXPECT_EQ(1600 * header.szlMillimeters.cx * 10, header.szlDevice.cx * 254);
}

TEST(PrintPage, AMetafileThatCannotBeWrittenIsTold)
{
    const COpenDrawing drawing(BODY);
    const CPagePainter painter(drawing, CPlay());
    std::string why;
    EXPECT_EQ(0, painter.WriteMetafile(L"no such folder\\page.emf", Inches(2, 3, true), &why));
    EXPECT_FALSE(why.empty());
}

// 100 units on an inch of 2400 dots: a pixel of the drawing is 24, and the engine takes 16 at most.
TEST(PrintPage, AFinePrinterGetsLinesOfTheSameWidth)
{
    const COpenDrawing drawing("<line clr=\"0x010203\" lnwid=\"10\" crd=\"0 50 100 50\"/>");
    const CPagePainter painter(drawing, CPlay());
    PageSetup setup = Inches(1, 1, true);
    setup.margins = {0, 0, 0, 0};
    const CPage page({2400, 2400});
    ASSERT_EQ(1, painter.Paint(page.Dc(), setup, {2400, 2400, {0, 0}}));
    int nBlack = 0;
    for (LONG y = 0; y < 2400; ++y) nBlack += page.At(1200, y) == 0x030201;
    EXPECT_NEAR(240, nBlack, 4);
    EXPECT_EQ(0x030201U, page.At(1200, 1200));
    EXPECT_EQ(0xFFFFFFU, page.At(1200, 1000));
}

TEST(PrintPage, ADrawingThatIsTurnedIsPrintedTurned)
{
    const COpenDrawing drawing(
        "<rect style=\"0x1\" dr=\"1\" lnwid=\"0\" fg=\"0xff\" crd=\"0 0 50 10\"/>");
    CPlay play;
    play.Turn(drawing);
    const CPagePainter painter(drawing, play);
    PageSetup setup = Inches(1, 1, true);
    setup.margins = {0, 0, 0, 0};
    const CPage page({100, 100});
    ASSERT_EQ(1, painter.Paint(page.Dc(), setup, {100, 100, {0, 0}}));
    EXPECT_EQ(0xFF0000U, page.At(5, 95)) << "counter-clockwise: what was left is below";
    EXPECT_EQ(0xFFFFFFU, page.At(45, 5));
}

TEST(PrintPage, WithoutADrawingNothingIsPainted)
{
    HQELENGINE hEmpty = CreateQELEngine();
    const CPagePainter painter(hEmpty, CPlay());
    const CPage page({100, 100});
    std::string why;
    EXPECT_EQ(0, painter.Paint(page.Dc(), Inches(1, 1, true), {100, 100, {0, 0}}));
    EXPECT_EQ(0, painter.WriteMetafile(L"never.emf", Inches(1, 1, true), &why));
    EXPECT_FALSE(why.empty());
    DestroyQELEngine(hEmpty);
}
