// Pictures in the host's memory: over any ground they are what a draw onto that ground makes.
#include "tests/support/Host.h"

#include <cstring>

namespace {

constexpr int WIDTH = 70;
constexpr int HEIGHT = 50;
constexpr int STRIDE = WIDTH * 4 + 12;
constexpr unsigned char UNTOUCHED = 0xA5;

// GDI reckons the edges of letters by its own rule for each ground, where there are no samples.
const char* const g_pszShapes =
    "<circle crd='20 20 15' lnwid='2' style='0x1' fg='0xff' bg='0xcc8844'/>"
    "<rect crd='30 10 60 40' lnwid='0' style='0x1' dr='2' fg='0x00aa00' bg='0x0000aa'/>"
    "<line crd='2 2 66 47' lnwid='3' clr='0x123456'/>";
const char* const g_pszBody =
    "<circle crd='20 20 15' lnwid='2' style='0x1' fg='0xff' bg='0xcc8844'/>"
    "<rect crd='30 10 60 40' lnwid='0' style='0x1' dr='2' fg='0x00aa00' bg='0x0000aa'/>"
    "<line crd='2 2 66 47' lnwid='3' clr='0x123456'/>"
    "<text crd='5 30 65 48' fg='0x202020'>Wave 8</text>";

struct Pixels {
    std::vector<unsigned char> bytes = std::vector<unsigned char>(STRIDE * HEIGHT, UNTOUCHED);
    const unsigned char* At(int nX, int nY) const { return bytes.data() + nY * STRIDE + nX * 4; }
};

int Render(HQELENGINE h, Pixels* pPixels, DWORD nFlags = 0)
{
    return QELRenderBitmap(h, pPixels->bytes.data(), WIDTH, HEIGHT, STRIDE, nFlags);
}

COLORREF Ground(int nKind, int nX, int nY)
{
    if (nKind == 0) return RGB(0, 0, 0);
    if (nKind == 1) return RGB(255, 255, 255);
    return RGB(nX * 3, nY * 5, (nX * nY) & 0xFF); // as a photograph
}

int Over(int nColor, int nAlpha, int nGround)
{
    return nColor + (nGround * (255 - nAlpha) + 127) / 255;
}

// The largest difference of a channel between the picture over a ground and a draw onto it.
int Difference(HQELENGINE h, const Pixels& pixels, int nKind)
{
    CTestBitmap drawn(WIDTH, HEIGHT);
    for (int y = 0; y < HEIGHT; ++y)
        for (int x = 0; x < WIDTH; ++x) ::SetPixelV(drawn.Dc(), x, y, Ground(nKind, x, y));
    LOGFONTW font{};
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    font = metrics.lfMessageFont;
    font.lfQuality = ANTIALIASED_QUALITY;
    const CTestSelect select(drawn.Dc(), ::CreateFontIndirectW(&font), true);
    const RECT rc{0, 0, WIDTH, HEIGHT};
    EXPECT_EQ(1, QELSetQELRect(h, &rc));
    EXPECT_EQ(1, QELDraw(h, drawn.Dc(), &rc, QEL_DRAW_FULL));
    int nLargest = 0;
    for (int y = 0; y < HEIGHT; ++y)
        for (int x = 0; x < WIDTH; ++x) {
            const unsigned char* p = pixels.At(x, y);
            const COLORREF clr = drawn.At(x, y);
            const COLORREF ground = Ground(nKind, x, y);
            const int differences[] = {Over(p[0], p[3], GetBValue(ground)) - GetBValue(clr),
                                       Over(p[1], p[3], GetGValue(ground)) - GetGValue(clr),
                                       Over(p[2], p[3], GetRValue(ground)) - GetRValue(clr)};
            for (const int n : differences) nLargest = std::max(nLargest, n < 0 ? -n : n);
        }
    return nLargest;
}

} // namespace

TEST(RenderBitmap, OverAnyGroundItIsADrawOntoThat)
{
    for (const int nSmooth : {0, 2, 4}) {
        const CTextHost host(nSmooth ? g_pszBody : g_pszShapes, WIDTH);
        const SIZE size{WIDTH, HEIGHT};
        EXPECT_EQ(1, QELSetRefSize(host, &size));
        EXPECT_EQ(1, QELSetSmooth(host, nSmooth));
        Pixels pixels;
        EXPECT_EQ(1, Render(host, &pixels));
        for (int nKind = 0; nKind < 3; ++nKind)
            EXPECT_LE(Difference(host, pixels, nKind), 1) << nSmooth << " " << nKind;
    }
}

TEST(RenderBitmap, WhatIsNotPaintedIsTransparentAndWhatIsPaintedIsNot)
{
    const CTextHost host("<rect crd='10 10 30 30' lnwid='0' style='0x1' bg='0x0000ff'/>", WIDTH);
    Pixels pixels;
    EXPECT_EQ(1, QELRenderBitmap(host, pixels.bytes.data(), WIDTH, HEIGHT, STRIDE, 0));
    const unsigned char none[4] = {0, 0, 0, 0};
    EXPECT_EQ(0, std::memcmp(none, pixels.At(0, 0), 4));
    EXPECT_EQ(0xFF, pixels.At(15, 15)[3]);
}

TEST(RenderBitmap, RowsAreAsFarApartAsTheHostSaysAndNothingElseIsWritten)
{
    const CTextHost host(g_pszBody, WIDTH);
    Pixels pixels;
    EXPECT_EQ(1, Render(host, &pixels));
    for (int y = 0; y < HEIGHT; ++y)
        for (int n = WIDTH * 4; n < STRIDE; ++n)
            ASSERT_EQ(UNTOUCHED, pixels.bytes[static_cast<std::size_t>(y * STRIDE + n)]);
}

TEST(RenderBitmap, LeavesTheScreenAlone)
{
    const CTextHost host(g_pszBody, WIDTH);
    const RECT rcPlace{3, 4, 50, 60};
    EXPECT_EQ(1, QELSetQELRect(host, &rcPlace));
    EXPECT_EQ(1, QELValidate(host));
    Pixels pixels;
    EXPECT_EQ(1, Render(host, &pixels));
    RECT rc{};
    EXPECT_EQ(0, QELGetDirtyRect(host, &rc));
    EXPECT_EQ(1, QELGetQELRect(host, &rc));
    EXPECT_TRUE(::EqualRect(&rcPlace, &rc));
}

TEST(RenderBitmap, RefusesWhatItCannotDraw)
{
    const CTextHost host(g_pszBody, WIDTH);
    Pixels pixels;
    void* const p = pixels.bytes.data();
    EXPECT_EQ(0, QELRenderBitmap(host, nullptr, WIDTH, HEIGHT, STRIDE, 0));
    EXPECT_EQ(0, QELRenderBitmap(host, p, WIDTH, HEIGHT, WIDTH * 4 - 1, 0));
    EXPECT_EQ(0, QELRenderBitmap(host, p, 0, HEIGHT, STRIDE, 0));
    EXPECT_EQ(0, QELRenderBitmap(host, p, WIDTH, -1, STRIDE, 0));
    EXPECT_EQ(0, QELRenderBitmap(host, p, WIDTH, HEIGHT, STRIDE, QEL_DRAW_FULL));
    EXPECT_EQ(0, QELRenderBitmap(host, p, 0x40000000, 1, 0x7FFFFFFF, 0));
    EXPECT_EQ(0, QELRenderBitmap(nullptr, p, WIDTH, HEIGHT, STRIDE, 0));
    EXPECT_EQ(UNTOUCHED, pixels.bytes[0]);
    EXPECT_EQ(1, QELCloseFile(host));
    EXPECT_EQ(0, Render(host, &pixels));
}

TEST(RenderBitmap, TakesTheFaceThatTheHostNames)
{
    const CTextHost host("<text crd='0 0 70 50' fg='0x0'>Wgi</text>", WIDTH);
    Pixels own;
    Pixels named;
    EXPECT_EQ(1, Render(host, &own));
    EXPECT_EQ(1, QELSetFontFace(host, L"WenQuanYi Zen Hei Sharp"));
    EXPECT_EQ(1, Render(host, &named));
    EXPECT_NE(own.bytes, named.bytes);
    EXPECT_EQ(1, QELSetFontFace(host, nullptr));
    Pixels again;
    EXPECT_EQ(1, Render(host, &again));
    EXPECT_EQ(own.bytes, again.bytes);
    EXPECT_EQ(0, QELSetFontFace(host, L"a name that is longer than any face may have"));
    EXPECT_EQ(0, QELSetFontFace(nullptr, L""));
}

TEST(RenderBitmap, TheNameOfAFaceHasThirtyOneCharactersAtMost)
{
    const CTextHost host(g_pszShapes, WIDTH);
    std::vector<wchar_t> name(32, L'x');
    name.push_back(0);
    EXPECT_EQ(0, QELSetFontFace(host, name.data()));
    EXPECT_EQ(1, QELSetFontFace(host, name.data() + 1));
    Pixels pixels;
    EXPECT_EQ(1, Render(host, &pixels)); // with another face where there is none of that name
    EXPECT_EQ(1, QELSetFontFace(host, nullptr));
    EXPECT_EQ(0, QELSetFontFace(nullptr, L""));
}

TEST(RenderBitmap, TakesNoFlagButThatOfPressed)
{
    const CTextHost host(g_pszBody, WIDTH);
    for (const DWORD nFlags : {DWORD{QEL_DRAW_FULL}, DWORD{0x40000000}, ~DWORD{0}}) {
        Pixels pixels;
        EXPECT_EQ(0, Render(host, &pixels, nFlags)) << nFlags;
        EXPECT_EQ(UNTOUCHED, pixels.bytes[0]);
    }
    Pixels pixels;
    EXPECT_EQ(1, Render(host, &pixels, QEL_DRAW_PRESSED));
}
