// The operations of a life on how the picture is made: what is refused changes nothing, and a
// picture in memory keeps to its rows.
#include "fuzz/LargeBlocks.h"
#include "fuzz/Life.h"

#include <algorithm>
#include <vector>

namespace {

constexpr unsigned char UNTOUCHED = 0xA5;

struct Picture {
    int nWidth;
    int nHeight;
    int nStride;
    DWORD nFlags;
    std::vector<unsigned char> bytes = std::vector<unsigned char>(ByteCount(), UNTOUCHED);

    // A stride that is refused needs no memory of its own.
    [[nodiscard]] std::size_t ByteCount() const
    {
        return static_cast<std::size_t>(std::max(nStride, 4 * nWidth)) * nHeight + 1;
    }
    [[nodiscard]] bool IsAsked() const
    {
        return nWidth > 0 && nHeight > 0 && nStride >= 4 * nWidth && !(nFlags & ~QEL_DRAW_PRESSED);
    }
};

bool IsUntouched(const unsigned char* pBegin, const unsigned char* pEnd)
{
    return std::all_of(pBegin, pEnd, [](unsigned char n) { return n == UNTOUCHED; });
}

// No colour is more than its alpha, and nothing is written behind the pixels of a row.
void CheckRow(const unsigned char* pRow, const Picture& picture, bool bDrawn)
{
    const unsigned char* const pEnd = pRow + 4 * picture.nWidth;
    for (const unsigned char* p = pRow; bDrawn && p != pEnd; p += 4)
        FUZZ_CHECK(p[0] <= p[3] && p[1] <= p[3] && p[2] <= p[3]);
    FUZZ_CHECK(IsUntouched(pEnd, pRow + picture.nStride));
}

void CheckPicture(const Picture& picture, bool bDrawn)
{
    const unsigned char* const pBytes = picture.bytes.data();
    const std::size_t nCount = picture.bytes.size();
    FUZZ_CHECK(pBytes[nCount - 1] == UNTOUCHED);
    if (!picture.IsAsked()) FUZZ_CHECK(!bDrawn && IsUntouched(pBytes, pBytes + nCount));
    for (int y = 0; picture.IsAsked() && y < picture.nHeight; ++y)
        CheckRow(pBytes + static_cast<std::size_t>(y) * picture.nStride, picture, bDrawn);
}

DWORD PixelScaleOf(HQELENGINE h)
{
    DWORD nPercent = 0;
    FUZZ_CHECK(QELGetPixelScale(h, &nPercent) && !QELGetPixelScale(h, nullptr));
    return nPercent;
}

std::vector<wchar_t> FaceOf(const std::string& bytes)
{
    std::vector<wchar_t> face(bytes.begin(), bytes.end());
    face.push_back(0);
    return face;
}

} // namespace

void CLife::SetCrispness()
{
    const DWORD nScale = m_input.Word() % 2000;
    const DWORD nScaleBefore = PixelScaleOf(m_hEngine);
    const bool bScale = nScale >= 25 && nScale <= 1600;
    FUZZ_CHECK(QELSetPixelScale(m_hEngine, nScale) == bScale);
    FUZZ_CHECK(PixelScaleOf(m_hEngine) == (bScale ? nScale : nScaleBefore));
    const int nSamples = m_input.Number() % 6;
    const int nSamplesBefore = QELGetSmooth(m_hEngine);
    const bool bSmooth = nSamples == 0 || (nSamples >= 2 && nSamples <= 4);
    FUZZ_CHECK(QELSetSmooth(m_hEngine, nSamples) == bSmooth);
    FUZZ_CHECK(QELGetSmooth(m_hEngine) == (bSmooth ? nSamples : nSamplesBefore));
    RenderPicture();
}

// Neither the QEL rect nor the dirty area takes part in it.
void CLife::RenderPicture()
{
    constexpr std::size_t FACE_SIZE = 32;
    const std::vector<wchar_t> face = FaceOf(m_input.Text());
    const auto nLength =
        static_cast<std::size_t>(std::find(face.begin(), face.end(), 0) - face.begin());
    FUZZ_CHECK(QELSetFontFace(m_hEngine, face.data()) == (nLength < FACE_SIZE));
    const int nWidth = static_cast<int>(m_input.Below(64));
    Picture picture{nWidth, static_cast<int>(m_input.Below(48)),
                    4 * nWidth + static_cast<int>(m_input.Below(12)) - 4, m_input.Below(4)};
    if (m_nDrawn + m_nCost > MAX_DRAW_WORK) return;
    m_nDrawn += m_nCost;
    RECT rcQel[2]{};
    RECT rcDirty[2]{};
    QELGetQELRect(m_hEngine, &rcQel[0]);
    const int nDirty = QELGetDirtyRect(m_hEngine, &rcDirty[0]);
    const CLittleMemory little;
    const int nDrawn = QELRenderBitmap(m_hEngine, picture.bytes.data(), picture.nWidth,
                                       picture.nHeight, picture.nStride, picture.nFlags);
    CheckPicture(picture, nDrawn == 1);
    QELGetQELRect(m_hEngine, &rcQel[1]);
    FUZZ_CHECK(QELGetDirtyRect(m_hEngine, &rcDirty[1]) == nDirty);
    FUZZ_CHECK(::EqualRect(&rcQel[0], &rcQel[1]) && ::EqualRect(&rcDirty[0], &rcDirty[1]));
}
