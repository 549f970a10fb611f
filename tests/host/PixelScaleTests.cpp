// At another pixel scale, and as many times the size, a picture is the plain one with larger
// pixels: upright edges, pens, borders and hatches to the pixel, other outlines nearly.
#include "tests/support/Scaled.h"

namespace {

constexpr int SIDE = 60;

std::string UnlikePlain(const std::string& body, Near nNear, DWORD nFlags = QEL_DRAW_FULL)
{
    return UnlikePlain(body, nNear, SIDE, {SIDE, SIDE}, nFlags);
}

std::string Pen(int nWidth, int nStyle, const std::string& fill)
{
    return " clr='0x3366cc' lnwid='" + std::to_string(nWidth) + "' lnstyle='" +
           std::to_string(nStyle) + "' style='" + fill + "' fg='0x99ccee' bg='0x228844' ";
}

} // namespace

TEST(PixelScale, IsPlainFromTheStartAndOutlivesTheDrawing)
{
    const CTextHost host("", SIDE);
    DWORD nPercent = 0;
    EXPECT_EQ(1, QELGetPixelScale(host, &nPercent));
    EXPECT_EQ(100U, nPercent);
    EXPECT_EQ(1, QELSetPixelScale(host, 150));
    EXPECT_EQ(1, QELNewFile(host));
    EXPECT_EQ(1, QELGetPixelScale(host, &nPercent));
    EXPECT_EQ(150U, nPercent);
}

TEST(PixelScale, KeepsItsRange)
{
    const CTextHost host("", SIDE);
    DWORD nPercent = 0;
    for (const DWORD n : {25U, 1600U}) EXPECT_EQ(1, QELSetPixelScale(host, n));
    for (const DWORD n : {0U, 24U, 1601U, 0xFFFFFFFFU}) {
        EXPECT_EQ(0, QELSetPixelScale(host, n));
        QELERROR error{};
        error.nSize = sizeof error;
        EXPECT_EQ(1, QELGetError(host, &error));
        EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_ARGUMENT), error.nCode);
    }
    EXPECT_EQ(1, QELGetPixelScale(host, &nPercent));
    EXPECT_EQ(1600U, nPercent);
    EXPECT_EQ(0, QELGetPixelScale(host, nullptr));
    EXPECT_EQ(0, QELSetPixelScale(nullptr, 100));
    EXPECT_EQ(0, QELGetPixelScale(nullptr, &nPercent));
}

TEST(PixelScale, AChangeMakesEverythingDirtyAndTheSameNothing)
{
    const CTextHost host("<rect crd='10 10 20 20' lnwid='8' clr='0'/>", SIDE);
    RECT rc{};
    EXPECT_EQ(1, QELValidate(host));
    EXPECT_EQ(1, QELSetPixelScale(host, 100));
    EXPECT_EQ(0, QELGetDirtyRect(host, &rc));
    EXPECT_EQ(1, QELSetPixelScale(host, 200));
    EXPECT_EQ(1, QELGetDirtyRect(host, &rc));
    EXPECT_LE(rc.left, 0);
    EXPECT_GE(rc.right, SIDE);
}

TEST(PixelScale, RectanglesAreThePlainOnesEnlarged)
{
    for (const int nWidth : {0, 1, 2, 3, 4, 5})
        for (const char* pszFill : {"0x0", "0x1"})
            for (const int nStyle : {PS_SOLID, PS_INSIDEFRAME}) {
                if (!nWidth && pszFill[2] == '0') continue;
                // Corners of pens that are wider than a pixel are round.
                const std::string body =
                    "<rect crd='10 12 40 47'" + Pen(nWidth, nStyle, pszFill) + "/>";
                EXPECT_EQ("", UnlikePlain(body, nWidth > 1 ? Near::Corners : Near::Blocks));
            }
}

TEST(PixelScale, BordersAreThePlainOnesEnlarged)
{
    for (const char* pszStyle : {"0x3", "0x5", "0x10003", "0x50005", "0x1e0003"})
        EXPECT_EQ("", UnlikePlain(std::string("<rect crd='10 12 40 47' lnwid='1' fg='0x99ccee' "
                                              "bg='0x228844' style='") +
                                      pszStyle + "'/>",
                                  Near::Blocks));
}

TEST(PixelScale, DrawRegionsAreThePlainOnesEnlarged)
{
    for (const char* pszStyle : {"0x1", "0x3", "0x30005"})
        EXPECT_EQ("",
                  UnlikePlain(std::string("<drawrgn crd='10 12 40 47' style='") + pszStyle + "'/>",
                              Near::Blocks));
}

TEST(PixelScale, UprightLinesOfOnePixelAreThePlainOnesEnlarged)
{
    for (const char* pszCrd : {"5 7 50 7", "50 7 5 7", "9 5 9 50", "9 50 9 5"})
        for (const int nStyle :
             {PS_SOLID, PS_DASH, PS_DOT, PS_DASHDOT, PS_DASHDOTDOT, PS_INSIDEFRAME})
            for (const char* pszFill : {"0x0", "0x1"})
                EXPECT_EQ("", UnlikePlain(std::string("<line crd='") + pszCrd + "'" +
                                              Pen(1, nStyle, pszFill) + "/>",
                                          Near::Blocks));
    EXPECT_EQ("",
              UnlikePlain("<polyline crd='5 5 40 5 40 30 12 30 12 50'" + Pen(1, 0, "0x0") + "/>",
                          Near::Blocks));
    EXPECT_EQ(
        "", UnlikePlain("<polygon crd='5 5 40 5 40 30 22 30 22 50 5 50'" + Pen(1, 0, "0x1") + "/>",
                        Near::Blocks));
}

TEST(PixelScale, HatchesAreThePlainOnesEnlarged)
{
    for (int nDraft = 0; nDraft < DRAFT_GRADIENT; ++nDraft)
        EXPECT_EQ("", UnlikePlain("<rect crd='10 12 40 47' lnwid='0' style='0x1' fg='0x99ccee' "
                                  "bg='0x228844' dr='" +
                                      std::to_string(nDraft) + "'/>",
                                  Near::Blocks));
}

TEST(PixelScale, OutlinesAreNearThePlainOnesEnlarged)
{
    for (const int nWidth : {0, 1, 2, 3, 6})
        for (const char* pszShape :
             {"<ellipse crd='10 12 50 37'", "<circle crd='30 30 20'",
              "<rndrect crd='10 12 50 47 12 16'", "<polygon crd='5 5 50 20 30 50'",
              "<chord crd='10 12 50 47 60 10 0 20'", "<pie crd='10 12 50 47 60 10 0 20'",
              "<arc crd='10 12 50 47 60 10 0 20'", "<line crd='5 7 50 33'",
              "<polyline crd='5 5 40 15 30 50'"})
            for (const char* pszFill : {"0x0", "0x1"}) {
                const bool bLines = pszShape[1] == 'l' || pszShape[5] == 'l' || pszShape[1] == 'a';
                if (nWidth == 0 && (pszFill[2] == '0' || bLines)) continue;
                // GDI goes for the rays of a small ellipse in whole pixels, which moves the points
                // of a part that wide pens leave.
                const Near nNear = pszShape[2] == 'h' ? Near::Pointed : Near::Reckoned;
                EXPECT_EQ("", UnlikePlain(pszShape + Pen(nWidth, 0, pszFill) + "/>", nNear));
            }
}

TEST(PixelScale, KeptDistancesAndThePressedShiftAreEnlarged)
{
    for (const char* pszFlag : {"0x1000", "0x8000", "0x10000", "0x20000", "0x40000", "0x4000"})
        for (const DWORD nFlags : {DWORD{QEL_DRAW_FULL}, DWORD{QEL_DRAW_FULL | QEL_DRAW_PRESSED}})
            EXPECT_EQ("", UnlikePlain(std::string("<rect crd='10 12 40 47' lnwid='1' style='0x1' "
                                                  "fg='0' bg='0x228844' flag='") +
                                          pszFlag + "'/>",
                                      Near::Blocks, nFlags));
}

TEST(PixelScale, StraightScalesAreThePlainOnesEnlarged)
{
    for (const char* pszType : {"vrtleft", "vrtright", "horizup", "horizdn"})
        EXPECT_EQ("", UnlikePlain(std::string("<scale scid='0' sctype='") + pszType +
                                      "' crd='8 10 48 50' pin='1' set='max=4 ticks=4' value='2'/>",
                                  Near::Blocks));
}

TEST(PixelScale, BarsAreThePlainOnesEnlarged)
{
    for (const char* pszType : {"vert", "horz"})
        EXPECT_EQ("", UnlikePlain(std::string("<meter mtid='0' usc='1' mtype='") + pszType +
                                      "' crd='6 10 47 50' set='labels=0 max=10 ticks=5' value='4'>"
                                      "<rect crd='6 10 47 50' lnwid='0' style='0x1'/></meter>",
                                  Near::Blocks));
}
