// Gradients that are put into samples, where the pixels of fills are known: those of the brush, and
// what is left when memory, an object or a call is refused. The code is brush/SampleGradient.*;
// tests/SampleGradientTests.cpp has curves.
#include "brush/SampleGradient.h"
#include "brush/ShownDraft.h"
#include "tests/native/AllocationFaults.h"
#include "tests/native/GdiDouble.h"
#include "tests/support/Bitmap.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

constexpr int SAMPLES = 4;
constexpr int SIDE = 160; // samples
constexpr int BOTH = DRAFT_GRADIENT + 4;
constexpr COLORREF CLR_1 = RGB(200, 30, 0);
constexpr COLORREF CLR_2 = RGB(0, 60, 220);
constexpr COLORREF CLR_PEN = RGB(10, 200, 10);
constexpr CPixelScale PX(100, SAMPLES);
constexpr RECT FIGURE{20, 30, 131, 109};

class CTile { // a surface whose memory can be read
public:
    CTile()
    {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = SIDE;
        info.bmiHeader.biHeight = -SIDE;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* pBits = nullptr;
        m_hdc = ::CreateCompatibleDC(nullptr);
        m_hBitmap = ::CreateDIBSection(m_hdc, &info, DIB_RGB_COLORS, &pBits, nullptr, 0);
        m_hPrev = ::SelectObject(m_hdc, m_hBitmap);
        m_pSamples = static_cast<uint32_t*>(pBits);
    }
    ~CTile()
    {
        ::SelectObject(m_hdc, m_hPrev);
        ::DeleteObject(m_hBitmap);
        ::DeleteDC(m_hdc);
    }
    CTile(const CTile&) = delete;
    CTile& operator=(const CTile&) = delete;

    HDC Dc() const { return m_hdc; }
    uint32_t& At(int x, int y) { return m_pSamples[y * SIDE + x]; }

private:
    HDC m_hdc;
    HBITMAP m_hBitmap;
    HGDIOBJ m_hPrev;
    uint32_t* m_pSamples;
};

HBRUSH Begin(CSampleGradient* pSamples, HDC hdc, int nStyle = BOTH, CPixelScale px = PX)
{
    return pSamples->Begin(hdc, nStyle, px, FIGURE, FIGURE, CLR_1, CLR_2, CLR_PEN);
}

bool Takes(const CTile& tile, int nStyle = BOTH, CPixelScale px = PX)
{
    CSampleGradient samples;
    return Begin(&samples, tile.Dc(), nStyle, px) != nullptr;
}

void Fill(HDC hdc, HBRUSH hBrush)
{
    const CTestSelect pen(hdc, ::GetStockObject(NULL_PEN), false);
    const CTestSelect brush(hdc, hBrush, false);
    ::Rectangle(hdc, FIGURE.left, FIGURE.top, FIGURE.right + 1, FIGURE.bottom + 1);
}

// What the brush has at each place of the figure, row by row.
std::vector<uint32_t> BrushSamples(int nStyle)
{
    const CTestBitmap surface(SIDE, SIDE);
    CShownDraft draft(nStyle, PX);
    gdi::LogPaintings(surface.Dc());
    Fill(surface.Dc(), draft.Brush(surface.Dc(), FIGURE, FIGURE, CLR_1, CLR_2));
    const gdi::Layer& layer = gdi::Layers(surface.Dc()).back();
    std::vector<uint32_t> samples;
    for (int y = FIGURE.top; y < FIGURE.bottom; ++y)
        for (int x = FIGURE.left; x < FIGURE.right; ++x) {
            const COLORREF clr = layer.pTile ? layer.pTile->At(x, y) : CLR_INVALID;
            samples.push_back(static_cast<uint32_t>(GetRValue(clr)) << 16 |
                              static_cast<uint32_t>(GetGValue(clr)) << 8 | GetBValue(clr));
        }
    return samples;
}

} // namespace

TEST(SampleGradientFaults, SamplesAreThoseOfTheBrushAndNothingElseChanges)
{
    int nTried = 0;
    for (int nStyle = BOTH; nStyle < DRAFT_COUNT; nStyle += 3) {
        CTile tile;
        for (int n = 0; n < SIDE; ++n) tile.At(n, n) = 0x123456;
        CSampleGradient samples;
        const HBRUSH hBrush = Begin(&samples, tile.Dc(), nStyle);
        if (!hBrush) continue; // of one direction
        ++nTried;
        Fill(tile.Dc(), hBrush);
        samples.End();
        const std::vector<uint32_t> expected = BrushSamples(nStyle);
        std::size_t nAt = 0;
        int nOff = 0;
        for (int y = FIGURE.top; y < FIGURE.bottom; ++y)
            for (int x = FIGURE.left; x < FIGURE.right; ++x)
                nOff += (tile.At(x, y) & 0xFFFFFF) != expected[nAt++];
        EXPECT_EQ(0, nOff) << nStyle;
        EXPECT_EQ(0x123456U, tile.At(FIGURE.left - 1, FIGURE.left - 1));
        EXPECT_EQ(0x123456U, tile.At(FIGURE.right, FIGURE.right));
        EXPECT_EQ(0U, tile.At(FIGURE.right, FIGURE.top));
    }
    EXPECT_GT(nTried, 4);
}

TEST(SampleGradientFaults, ItIsForSamplesAndGradientsOfBothDirectionsAlone)
{
    const CTile tile;
    EXPECT_TRUE(Takes(tile));
    EXPECT_FALSE(Takes(tile, BOTH, CPixelScale(100)));
    EXPECT_FALSE(Takes(tile, DRAFT_GRADIENT));
    EXPECT_FALSE(Takes(tile, DRAFT_GRADIENT - 1));
    EXPECT_FALSE(Takes(tile, DRAFT_COUNT));
    ::SetROP2(tile.Dc(), R2_XORPEN);
    EXPECT_FALSE(Takes(tile));
    ::SetROP2(tile.Dc(), R2_COPYPEN);
    for (const POINT pt : {POINT{1, 0}, POINT{0, 1}}) {
        ::SetBrushOrgEx(tile.Dc(), pt.x, pt.y, nullptr);
        EXPECT_FALSE(Takes(tile)) << "pixels begin within others";
    }
    ::SetBrushOrgEx(tile.Dc(), 0, 0, nullptr);
    ::IntersectClipRect(tile.Dc(), 0, 0, 4, 4);
    EXPECT_FALSE(Takes(tile)) << "nothing of it shows";
}

TEST(SampleGradientFaults, ASurfaceThatEndsWithinAPixelHasTheBrush)
{
    constexpr CPixelScale THREE(100, 3);
    static_assert(SIDE % 3 != 0);
    constexpr RECT INSIDE{99, 99, SIDE - 20, SIDE - 20};
    constexpr RECT TO_THE_END{99, 99, SIDE + 20, SIDE + 20};
    const CTile tile;
    for (const RECT& rc : {INSIDE, TO_THE_END}) {
        CSampleGradient samples;
        const HBRUSH hBrush = samples.Begin(tile.Dc(), BOTH, THREE, rc, rc, CLR_1, CLR_2, CLR_PEN);
        EXPECT_EQ(rc.right < SIDE, hBrush != nullptr) << rc.right;
    }
}

TEST(SampleGradientFaults, TheBrushIsTakenWhereEveryColourIsThereAlready)
{
    CTile tile;
    const uint32_t nSample =
        static_cast<uint32_t>(GetRValue(CLR_1)) << 16 | GetGValue(CLR_1) << 8 | GetBValue(CLR_1);
    for (uint32_t n = 0; n < 64; ++n) // all that differ by up to three in each colour
        for (int y = FIGURE.top; y < FIGURE.bottom; ++y)
            tile.At(FIGURE.left + static_cast<int>(n), y) =
                nSample ^ ((n & 3) | (n >> 2 & 3) << 8 | (n >> 4) << 16);
    EXPECT_FALSE(Takes(tile));
}

TEST(SampleGradientFaults, ItsColourIsOneThatNothingThereHas)
{
    CTile tile;
    COLORREF clrFirst = 0;
    {
        CSampleGradient samples;
        LOGBRUSH brush{};
        ::GetObjectA(Begin(&samples, tile.Dc()), sizeof brush, &brush);
        clrFirst = brush.lbColor;
    }
    tile.At(FIGURE.right - 1, FIGURE.bottom - 1) = static_cast<uint32_t>(
        GetRValue(clrFirst) << 16 | GetGValue(clrFirst) << 8 | GetBValue(clrFirst));
    CSampleGradient samples;
    LOGBRUSH brush{};
    ::GetObjectA(Begin(&samples, tile.Dc()), sizeof brush, &brush);
    EXPECT_NE(clrFirst, brush.lbColor);
}

TEST(SampleGradientFaults, WithoutMemoryTheRefusalIsCounted)
{
    for (int n = 1; n <= 4; ++n) { // terms across and down, a row, and its samples
        CTile tile;
        CSampleGradient samples;
        Fill(tile.Dc(), Begin(&samples, tile.Dc()));
        const uint32_t nBefore = CountRefusals();
        {
            const alloc::CFault fault(n);
            samples.End();
        }
        EXPECT_EQ(nBefore + 1, CountRefusals()) << n;
    }
}

TEST(SampleGradientFaults, WithoutAnObjectOrAnAnswerTheGradientHasItsOwnBrush)
{
    const CTile tile;
    {
        CSampleGradient samples;
        gdi::FailCreation(1);
        EXPECT_EQ(nullptr, Begin(&samples, tile.Dc()));
        gdi::FailCreation(0);
        samples.End(); // nothing
    }
    gdi::FailCall(0);
    {
        CSampleGradient samples;
        ASSERT_NE(nullptr, Begin(&samples, tile.Dc()));
    }
    const int nCalls = gdi::Calls();
    EXPECT_GT(nCalls, 1);
    for (int n = 1; n <= nCalls; ++n) {
        CSampleGradient samples;
        gdi::FailCall(n);
        EXPECT_EQ(nullptr, Begin(&samples, tile.Dc())) << n;
        gdi::FailCall(0);
    }
}

TEST(SampleGradientFaults, SurfacesWithoutMemoryOfSamplesHaveTheBrush)
{
    HDC hdc = ::CreateCompatibleDC(nullptr);
    HBITMAP hBitmap = ::CreateBitmap(SIDE, SIDE, 1, 1, nullptr);
    HGDIOBJ hPrev = ::SelectObject(hdc, hBitmap);
    CSampleGradient samples;
    EXPECT_EQ(nullptr, Begin(&samples, hdc));
    ::SelectObject(hdc, hPrev);
    ::DeleteObject(hBitmap);
    ::DeleteDC(hdc);
}
