// Pictures painted finer than they are shown: each pixel is the mean of its samples. The code is
// render/SmoothBands.*; figures in such pictures are tried in host/SmoothTests.cpp.
#include "render/SmoothBands.h"

#include "tests/support/Bitmap.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr SIZE PICTURE{7, 5};
constexpr uint32_t NOT_PAINTED = 0xABCDEF01;

struct Patch { // of samples, in one colour
    RECT rc;
    COLORREF clr;
};

class CPatchPainter final : public CTilePainter {
public:
    explicit CPatchPainter(const std::vector<Patch>& patches) : m_patches(patches) {}

    void Paint(HDC hdc, const RECT&, bool) override
    {
        for (const Patch& patch : m_patches) {
            const HBRUSH hBrush = ::CreateSolidBrush(patch.clr);
            ::FillRect(hdc, &patch.rc, hBrush);
            ::DeleteObject(hBrush);
        }
    }

private:
    const std::vector<Patch>& m_patches;
};

std::vector<uint32_t> Rendered(const std::vector<Patch>& patches, int32_t nSamples)
{
    std::vector<uint32_t> pixels(static_cast<std::size_t>(PICTURE.cx * PICTURE.cy), NOT_PAINTED);
    CSmoothBands bands;
    CPatchPainter painter(patches);
    EXPECT_EQ(1, bands.Render(pixels.data(), PICTURE, PICTURE.cx * 4, nSamples, nullptr, &painter));
    return pixels;
}

// The last patch that covers a sample, or null.
const Patch* PatchAt(const std::vector<Patch>& patches, LONG x, LONG y)
{
    const Patch* pFound = nullptr;
    for (const Patch& patch : patches)
        if (::PtInRect(&patch.rc, {x, y})) pFound = &patch;
    return pFound;
}

// One byte of a pixel: of each sample so much, by the mean, and halves go up.
uint32_t MeanByte(const std::vector<Patch>& patches, LONG nX, LONG nY, LONG nSamples,
                  const auto& byteOf)
{
    double fSum = 0;
    for (LONG y = nY * nSamples; y < (nY + 1) * nSamples; ++y)
        for (LONG x = nX * nSamples; x < (nX + 1) * nSamples; ++x)
            if (const Patch* pPatch = PatchAt(patches, x, y)) fSum += byteOf(*pPatch);
    return static_cast<uint32_t>(fSum / static_cast<double>(nSamples * nSamples) + 0.5);
}

// How much of a pixel is painted, seen by the colour that shows least of the ground.
uint32_t AlphaByte(const std::vector<Patch>& patches, LONG nX, LONG nY, LONG nSamples)
{
    LONG nPainted = 0;
    for (LONG y = nY * nSamples; y < (nY + 1) * nSamples; ++y)
        for (LONG x = nX * nSamples; x < (nX + 1) * nSamples; ++x)
            nPainted += PatchAt(patches, x, y) ? 1 : 0;
    return static_cast<uint32_t>(255.0 * nPainted / static_cast<double>(nSamples * nSamples) + 0.5);
}

int Far(uint32_t a, uint32_t b)
{
    const int n = static_cast<int>(a) - static_cast<int>(b);
    return n < 0 ? -n : n;
}

// Rectangles that end in the middle of pixels, one over the other, and one beyond the picture.
const std::vector<Patch> g_patches{{{1, 1, 10, 9}, RGB(200, 31, 7)},
                                   {{3, 2, 11, 5}, RGB(0, 255, 1)},
                                   {{5, 4, 6, 20}, RGB(255, 255, 254)},
                                   {{13, 3, 40, 6}, RGB(0, 0, 0)}};

} // namespace

TEST(SmoothBands, APixelIsTheMeanOfItsSamplesInEachColor)
{
    for (const int32_t nSamples : {1, 2, 3, 4}) {
        const std::vector<uint32_t> pixels = Rendered(g_patches, nSamples);
        int nMixed = 0;
        for (LONG y = 0; y < PICTURE.cy; ++y)
            for (LONG x = 0; x < PICTURE.cx; ++x) {
                SCOPED_TRACE(testing::Message() << nSamples << " samples, " << x << "," << y);
                const uint32_t nPixel = pixels[static_cast<std::size_t>(y * PICTURE.cx + x)];
                const auto mean = [&](const auto& byteOf) {
                    return MeanByte(g_patches, x, y, nSamples, byteOf);
                };
                EXPECT_EQ(mean([](const Patch& p) { return GetRValue(p.clr); }),
                          nPixel >> 16 & 0xFF);
                EXPECT_EQ(mean([](const Patch& p) { return GetGValue(p.clr); }),
                          nPixel >> 8 & 0xFF);
                EXPECT_EQ(mean([](const Patch& p) { return GetBValue(p.clr); }), nPixel & 0xFF);
                // Over black and over white the mean is rounded, each by half at most.
                const uint32_t nAlpha = AlphaByte(g_patches, x, y, nSamples);
                EXPECT_GE(1, Far(nAlpha, nPixel >> 24));
                nMixed += nAlpha != 0 && nAlpha != 0xFF;
            }
        EXPECT_EQ(nSamples > 1, nMixed > 0) << nSamples; // else there was no edge to be seen
    }
}

TEST(SmoothBands, WhatNobodyPaintsIsTransparentBlack)
{
    for (const int32_t nSamples : {1, 2, 3, 4})
        EXPECT_EQ(std::vector<uint32_t>(static_cast<std::size_t>(PICTURE.cx * PICTURE.cy), 0),
                  Rendered({}, nSamples));
}

// Rows of the host may be longer than the picture: what is behind is left alone.
TEST(SmoothBands, BytesBehindARowAreLeftAlone)
{
    constexpr int32_t STRIDE = PICTURE.cx * 4 + 6;
    std::vector<unsigned char> bytes(static_cast<std::size_t>(STRIDE * PICTURE.cy), 0x5A);
    CSmoothBands bands;
    const std::vector<Patch> all{{{0, 0, 100, 100}, RGB(1, 2, 3)}};
    CPatchPainter painter(all);
    ASSERT_EQ(1, bands.Render(bytes.data(), PICTURE, STRIDE, 2, nullptr, &painter));
    for (int32_t y = 0; y < PICTURE.cy; ++y) {
        const unsigned char* const pRow = bytes.data() + y * STRIDE;
        EXPECT_EQ((std::vector<unsigned char>{3, 2, 1, 0xFF}),
                  std::vector<unsigned char>(pRow + (PICTURE.cx - 1) * 4, pRow + PICTURE.cx * 4));
        for (int32_t n = PICTURE.cx * 4; n < STRIDE; ++n) EXPECT_EQ(0x5A, pRow[n]) << y << " " << n;
    }
}
