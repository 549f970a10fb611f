// Turning the whole drawing: quarter turns of a drawing without symmetry, the reference size that
// turns along, and the way back.
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"
#include "tests/support/Recording.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

// Solid blocks without outlines: their pixels turn exactly.
std::string Block(const char* pszColor, const std::string& crd)
{
    return std::string("<rect style=\"0x1\" lnwid=\"0\" bg=\"") + pszColor + "\" crd=\"" + crd +
           "\"/>";
}

std::string Asymmetric(int nWidth, int nHeight)
{
    return "<qel width=\"" + std::to_string(nWidth) + "\" height=\"" + std::to_string(nHeight) +
           "\">" + Block("0xff", "0 0 7 3") + "<g>" + Block("0xff00", "5 10 6 30") +
           Block("0xff0000", "12 4 31 9") + "</g>" +
           Block("0xffff", std::to_string(nWidth - 2) + " " + std::to_string(nHeight - 5) + " " +
                               std::to_string(nWidth) + " " + std::to_string(nHeight)) +
           "</qel>";
}

class Rotation : public ::testing::Test {
protected:
    Rotation() : m_h(CreateQELEngine()) {}
    ~Rotation() override { EXPECT_EQ(1, DestroyQELEngine(m_h)); }

    void Open(const std::string& text)
    {
        const std::string path = m_folder.Path("a.qel");
        ASSERT_TRUE(WriteBytes(path, text));
        ASSERT_EQ(1, QELOpenFile(m_h, path.c_str()));
    }
    SIZE RefSize() const
    {
        SIZE size{};
        EXPECT_EQ(1, QELGetRefSize(m_h, &size));
        return size;
    }
    // The picture at one pixel a unit.
    std::unique_ptr<CTestBitmap> Picture() const
    {
        const SIZE size = RefSize();
        auto pBitmap = std::make_unique<CTestBitmap>(size.cx, size.cy);
        const RECT rc = pBitmap->Box();
        EXPECT_EQ(1, QELSetQELRect(m_h, &rc));
        EXPECT_EQ(1, QELDraw(m_h, pBitmap->Dc(), &rc, QEL_DRAW_FULL));
        return pBitmap;
    }
    // The calls of a draw at one device unit a drawing unit.
    std::vector<std::string> Calls(const std::vector<std::string>& words) const
    {
        const SIZE size = RefSize();
        const RECT rc{0, 0, size.cx, size.cy};
        EXPECT_EQ(1, QELSetQELRect(m_h, &rc));
        CRecording recording;
        EXPECT_EQ(1, QELDraw(m_h, recording.Dc(), &rc, QEL_DRAW_FULL));
        return recording.Only(words);
    }

    CTestFolder m_folder;
    HQELENGINE m_h;
};

void SetPixels(const CTestBitmap& target, int nX, int nY, COLORREF clr)
{
    ::SetPixelV(target.Dc(), nX, nY, clr);
}

// A picture turned counter-clockwise by quarter turns: what was on the right is on top after one.
std::unique_ptr<CTestBitmap> Turned(const CTestBitmap& source, int nQuarters)
{
    const int w = source.Width(), h = source.Height();
    auto pTurned =
        nQuarters % 2 ? std::make_unique<CTestBitmap>(h, w) : std::make_unique<CTestBitmap>(w, h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const COLORREF clr = source.At(x, y);
            switch (nQuarters) {
            case 0:
                SetPixels(*pTurned, x, y, clr);
                break;
            case 1:
                SetPixels(*pTurned, y, w - 1 - x, clr);
                break;
            case 2:
                SetPixels(*pTurned, w - 1 - x, h - 1 - y, clr);
                break;
            default:
                SetPixels(*pTurned, h - 1 - y, x, clr);
                break;
            }
        }
    return pTurned;
}

struct AngleRow {
    int nAngle;
    int nQuarters; // counter-clockwise
};

constexpr AngleRow g_angles[] = {{0, 0},    {90, 1},   {180, 2},  {270, 3},  {-90, 3}, {-180, 2},
                                 {-270, 1}, {360, 0},  {450, 1},  {-100, 3}, {89, 0},  {91, 1},
                                 {179, 1},  {-89, 0},  {-450, 3}, {720, 0},  {100, 1}, {359, 3},
                                 {-359, 1}, {-719, 1}, {3690, 1}, {1, 0},    {-1, 0},  {269, 2}};

} // namespace

TEST_F(Rotation, TurnsEveryPixelCounterClockwiseByWholeQuarters)
{
    for (const auto& [nWidth, nHeight] : {std::pair{60, 40}, {40, 60}, {50, 50}}) {
        for (const AngleRow& row : g_angles) {
            SCOPED_TRACE(std::to_string(nWidth) + " wide, angle " + std::to_string(row.nAngle));
            Open(Asymmetric(nWidth, nHeight));
            const auto pBefore = Picture();
            ASSERT_FALSE(IsBlank(*pBefore));
            ASSERT_EQ(1, QELRotate(m_h, row.nAngle));
            const SIZE size = RefSize();
            EXPECT_EQ(row.nQuarters % 2 ? nHeight : nWidth, size.cx);
            EXPECT_EQ(row.nQuarters % 2 ? nWidth : nHeight, size.cy);
            EXPECT_EQ("", FirstDifference(*Turned(*pBefore, row.nQuarters), *Picture()));
        }
    }
}

TEST_F(Rotation, GoesFromEveryAngleToEveryOther)
{
    // The angle counts from the drawing as opened, not from where it stands.
    for (const auto& [nWidth, nHeight] : {std::pair{60, 40}, {40, 60}})
        for (const int nFrom : {0, 90, 180, 270, -90, -180, -270})
            for (const int nTo : {0, 90, 180, 270, -90, -180, -270}) {
                const int nDifference = nTo - nFrom;
                if (nDifference % 360 && std::abs(nDifference) > 270) continue; // see below
                SCOPED_TRACE(std::to_string(nFrom) + " to " + std::to_string(nTo));
                Open(Asymmetric(nWidth, nHeight));
                const auto pBefore = Picture();
                ASSERT_EQ(1, QELRotate(m_h, nFrom));
                ASSERT_EQ(1, QELRotate(m_h, nTo));
                const auto pDrawn = Picture();
                ASSERT_EQ("",
                          FirstDifference(*Turned(*pBefore, ((nTo + 360) % 360) / 90), *pDrawn));
            }
}

TEST_F(Rotation, ByMoreThanThreeQuartersFromWhereItStandsIsTurnedButNotMoved)
{
    // From -270 to 180 is a difference of 450. Only up to 270 a move follows that brings the
    // drawing to its new corner. (x, y) goes to (60 - x, 60 - y).
    Open("<qel width=\"60\" height=\"40\">" + Block("0xff", "12 25 31 35") + "</qel>");
    ASSERT_EQ(1, QELRotate(m_h, -270));
    ASSERT_EQ(1, QELRotate(m_h, 180));
    EXPECT_EQ(60, RefSize().cx);
    EXPECT_EQ(40, RefSize().cy);
    const auto pDrawn = Picture();
    EXPECT_EQ(190, CountPixels(*pDrawn, RGB(255, 0, 0)));
    EXPECT_EQ(RGB(255, 0, 0), pDrawn->At(29, 25));
    EXPECT_EQ(RGB(255, 0, 0), pDrawn->At(47, 34));
}

TEST_F(Rotation, SameAngleAgainChangesNothing)
{
    Open(Asymmetric(60, 40));
    ASSERT_EQ(1, QELRotate(m_h, 90));
    const auto pOnce = Picture();
    ASSERT_EQ(1, QELRotate(m_h, 90));
    EXPECT_EQ(40, RefSize().cx);
    EXPECT_EQ("", FirstDifference(*pOnce, *Picture()));
    ASSERT_EQ(1, QELRotate(m_h, 450));
    EXPECT_EQ("", FirstDifference(*pOnce, *Picture()));
}

TEST_F(Rotation, BackToZeroGivesTheSamePixelsAlsoForOddSizes)
{
    for (const auto& [nWidth, nHeight] : {std::pair{61, 40}, {41, 61}, {60, 41}, {51, 51}})
        for (const int nAngle : {90, -90, 180, 270}) {
            Open(Asymmetric(nWidth, nHeight));
            const auto pBefore = Picture();
            ASSERT_EQ(1, QELRotate(m_h, nAngle));
            ASSERT_EQ(1, QELRotate(m_h, 0));
            EXPECT_EQ(nWidth, RefSize().cx);
            EXPECT_EQ(nHeight, RefSize().cy);
            const auto pAfter = Picture();
            // Not the block in the far corner: turning about half an odd size, rounded down, it
            // leaves the drawing by a unit and is pushed back inside.
            for (int y = 0; y < 34; ++y)
                for (int x = 0; x < 36; ++x)
                    ASSERT_EQ(pBefore->At(x, y), pAfter->At(x, y))
                        << nWidth << " wide, " << nAngle << ": " << x << "," << y;
        }
}

TEST_F(Rotation, TurnsAboutTheIntegerHalfOfAnOddSize)
{
    // D is 51 and the centre 25: (x, y) goes to (y, 50 - x). Height and D agree after the swap.
    Open("<qel width=\"51\" height=\"31\">" + Block("0xff", "10 5 20 8") + "</qel>");
    ASSERT_EQ(1, QELRotate(m_h, 90));
    EXPECT_EQ(31, RefSize().cx);
    EXPECT_EQ(51, RefSize().cy);
    const auto pDrawn = Picture();
    EXPECT_EQ(30, CountPixels(*pDrawn, RGB(255, 0, 0)));
    EXPECT_EQ(RGB(255, 0, 0), pDrawn->At(5, 30));
    EXPECT_EQ(RGB(255, 0, 0), pDrawn->At(7, 39));
}

TEST_F(Rotation, TurnsThePointsOfLinesAndPolygons)
{
    // 60 by 40, a quarter: (x, y) goes to (y, 60 - x).
    Open("<qel width=\"60\" height=\"40\"><line crd=\"3 5 50 20\"/>"
         "<polygon crd=\"10 10 20 12 15 30\"/><polyline crd=\"1 2 30 4 40 39\"/></qel>");
    ASSERT_EQ(1, QELRotate(m_h, 90));
    const auto calls = Calls(
        {"MoveTo 5,57", "LineTo 20,10", "Polygon", "MoveTo 2,59", "LineTo 4,30", "LineTo 39,20"});
    EXPECT_EQ((std::vector<std::string>{"MoveTo 5,57", "LineTo 20,10", "Polygon 10,50 12,40 30,45",
                                        "MoveTo 2,59", "LineTo 4,30", "LineTo 39,20"}),
              calls);
}

TEST_F(Rotation, TurnsBoxesOfTextAndRoundShapes)
{
    Open("<qel width=\"60\" height=\"40\"><ellipse crd=\"10 5 40 25\"/>"
         "<circle crd=\"20 12 6\"/><rndrect crd=\"2 3 22 13 4 6\"/></qel>");
    ASSERT_EQ(1, QELRotate(m_h, 270)); // (x, y) goes to (40 - y, x)
    EXPECT_EQ((std::vector<std::string>{"Ellipse 15,10,35,40", "Ellipse 22,14,34,26",
                                        "RoundRect 27,2,37,22 4,6"}),
              Calls({"Ellipse", "RoundRect"}));
}

TEST_F(Rotation, LeavesTheDocumentAsItIs)
{
    const std::string text = "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n"
                             "<qel width=\"60\" height=\"40\" lst_rotate=\"90\">\r\n"
                             "<rect crd=\"1 2 3 4\"/>\r\n</qel>\r\n";
    Open(text);
    EXPECT_EQ(60, RefSize().cx); // the stored rotation is not applied
    ASSERT_EQ(1, QELRotate(m_h, 90));
    EXPECT_EQ(40, RefSize().cx);
    QELROOTATTR attr{};
    ASSERT_EQ(1, QELGetElemAttr(m_h, QELGetRootElem(m_h), &attr, nullptr));
    EXPECT_EQ(60, attr.nWidth);
    EXPECT_EQ(40, attr.nHeight);
    RECT rc{};
    ASSERT_EQ(1, QELGetElemRect(m_h, QELGetFirstChild(m_h, QELGetRootElem(m_h)), &rc));
    EXPECT_EQ(1, rc.left);
    EXPECT_EQ(4, rc.bottom);
    ASSERT_EQ(1, QELSaveFile(m_h, m_folder.Path("b.qel").c_str()));
    EXPECT_EQ(text + '\0', ReadBytes(m_folder.Path("b.qel")));
}

TEST_F(Rotation, BeginsAtZeroWithEveryOpen)
{
    Open(Asymmetric(60, 40));
    const auto pBefore = Picture();
    ASSERT_EQ(1, QELRotate(m_h, 90));
    Open(Asymmetric(60, 40));
    EXPECT_EQ(60, RefSize().cx);
    EXPECT_EQ("", FirstDifference(*pBefore, *Picture()));
    ASSERT_EQ(1, QELRotate(m_h, 90)); // and a quarter is a quarter again
    EXPECT_EQ("", FirstDifference(*Turned(*pBefore, 1), *Picture()));
    ASSERT_EQ(1, QELNewFile(m_h));
    ASSERT_EQ(1, QELRotate(m_h, 0));
    EXPECT_EQ(50, RefSize().cx);
}

TEST_F(Rotation, KeepsTheQelRect)
{
    Open(Asymmetric(60, 40));
    const RECT rc{5, 6, 205, 106};
    ASSERT_EQ(1, QELSetQELRect(m_h, &rc));
    ASSERT_EQ(1, QELRotate(m_h, 90));
    RECT rcRead{};
    ASSERT_EQ(1, QELGetQELRect(m_h, &rcRead));
    EXPECT_TRUE(::EqualRect(&rc, &rcRead));
}

TEST_F(Rotation, RecordSetOnATurnedDrawingIsLiteral)
{
    Open("<qel width=\"60\" height=\"40\">" + Block("0xff", "0 0 10 10") + "</qel>");
    const HQELELEM hElem = QELGetFirstChild(m_h, QELGetRootElem(m_h));
    ASSERT_EQ(1, QELRotate(m_h, 90));
    QELSHAPEATTR attr{};
    ASSERT_EQ(1, QELGetElemAttr(m_h, hElem, &attr, nullptr));
    const LONG geometry[] = {3, 4, 8, 14};
    std::copy(geometry, geometry + 4, attr.nGeometry);
    ASSERT_EQ(1, QELSetElemAttr(m_h, hElem, &attr, sizeof attr));
    const auto pDrawn = Picture();
    EXPECT_EQ(50, CountPixels(*pDrawn, RGB(255, 0, 0)));
    EXPECT_EQ(RGB(255, 0, 0), pDrawn->At(3, 4));
    EXPECT_EQ(RGB(255, 0, 0), pDrawn->At(7, 13));
    // The element still counts as turned by a quarter, so the way to 0 turns it back by one:
    // (x, y) goes to (60 - y, x).
    ASSERT_EQ(1, QELRotate(m_h, 0));
    const auto pBack = Picture();
    EXPECT_EQ(50, CountPixels(*pBack, RGB(255, 0, 0)));
    EXPECT_EQ(RGB(255, 0, 0), pBack->At(46, 3));
    EXPECT_EQ(RGB(255, 0, 0), pBack->At(55, 7));
}

TEST_F(Rotation, FailsWithoutADrawing)
{
    EXPECT_EQ(0, QELRotate(m_h, 90));
    EXPECT_EQ(0, QELRotate(nullptr, 90));
    Open(Asymmetric(60, 40));
    for (const int nAngle : {INT_MAX, INT_MIN}) {
        // INT_MAX is 127 past whole turns, INT_MIN 128 before: a quarter either way.
        ASSERT_EQ(1, QELRotate(m_h, nAngle));
        EXPECT_EQ(40, RefSize().cx);
        EXPECT_EQ(60, RefSize().cy);
    }
}
