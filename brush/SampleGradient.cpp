#include "brush/SampleGradient.h"

#include "base/QelRect.h"
#include "base/Rects.h"
#include "base/Refusals.h"
#include "base/Shown.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr uint32_t COLOR_BYTES = 0x00FFFFFF;
constexpr int32_t SAMPLE_BITS = 32;
constexpr int32_t SLACK = 2; // pixels beyond a figure's box, for the rounding of curves
// Colours next to one of the gradient's: one of them is most likely nowhere.
constexpr uint32_t NEIGHBORS[] = {0x000001, 0x000100, 0x010000, 0x010101, 0x020000, 0x000203};

uint32_t SampleOf(COLORREF clr)
{
    return static_cast<uint32_t>(GetRValue(clr)) << 16 |
           static_cast<uint32_t>(GetGValue(clr)) << 8 | GetBValue(clr);
}

int32_t FloorOf(int32_t n, int32_t nBy)
{
    return n / nBy - (n % nBy < 0 ? 1 : 0);
}

// All of them are looked at, so that several are at once.
bool HasSample(const uint32_t* pRow, int32_t nCount, uint32_t nSample)
{
    uint32_t nFound = 0;
    for (int32_t x = 0; x < nCount; ++x) nFound |= (pRow[x] & COLOR_BYTES) == nSample;
    return nFound != 0;
}

// Without a branch, so that several are exchanged at once.
void Exchange(uint32_t* pRow, const uint32_t* pBy, int32_t nCount, uint32_t nSample)
{
    for (int32_t x = 0; x < nCount; ++x) {
        const uint32_t nAll = 0 - static_cast<uint32_t>((pRow[x] & COLOR_BYTES) == nSample);
        pRow[x] = (pRow[x] & ~nAll) | (pBy[x] & nAll);
    }
}

void Repeat(const uint32_t* pPixels, int32_t nCount, int32_t nSamples, uint32_t* pOut)
{
    for (int32_t x = 0; x < nCount; ++x, pOut += nSamples) std::fill_n(pOut, nSamples, pPixels[x]);
}

} // namespace

CSampleGradient::~CSampleGradient()
{
    if (m_hKey) ::DeleteObject(m_hKey);
}

HBRUSH CSampleGradient::Begin(HDC hdc, int32_t nStyle, CPixelScale px, const RECT& rcGradient,
                              const RECT& rcFilled, COLORREF clr1, COLORREF clr2, COLORREF clrPen)
{
    if (px.Samples() == 1 || nStyle < DRAFT_GRADIENT || nStyle >= DRAFT_COUNT) return nullptr;
    m_nGradient = (nStyle - DRAFT_GRADIENT) / 2;
    m_rcWhole = PixelsOf(rcGradient, px);
    const SIZE size = GradientSize(m_rcWhole, m_nGradient);
    if (::IsRectEmpty(&rcGradient) || size.cx < 2 || size.cy < 2 ||
        uint64_t(size.cx) * uint64_t(size.cy) > MAX_GRADIENT_PIXELS)
        return nullptr;
    const bool bExchanged = (nStyle - DRAFT_GRADIENT) % 2 != 0;
    m_clr1 = bExchanged ? clr2 : clr1;
    m_clr2 = bExchanged ? clr1 : clr2;
    if (::GetROP2(hdc) != R2_COPYPEN || !FindSamples(hdc, px, rcFilled) ||
        !ChooseKey(m_clr1, clrPen))
        return nullptr;
    m_hKey = Made(::CreateSolidBrush(RGB(m_nKey >> 16 & 0xFF, m_nKey >> 8 & 0xFF, m_nKey & 0xFF)));
    return m_hKey;
}

// The whole pixels of what shows of the figure, in the memory that the context paints on: a tile,
// whose rows begin at the top, and which begins with a whole pixel.
bool CSampleGradient::FindSamples(HDC hdc, CPixelScale px, const RECT& rcFilled)
{
    BITMAP bitmap{};
    RECT rcShown{};
    POINT ptDevice{0, 0};
    POINT ptBrush{0, 0};
    HGDIOBJ hBitmap = ::GetCurrentObject(hdc, OBJ_BITMAP);
    if (!hBitmap || ::GetObjectA(hBitmap, sizeof bitmap, &bitmap) != sizeof bitmap) return false;
    if (!bitmap.bmBits || bitmap.bmBitsPixel != SAMPLE_BITS) return false;
    if (!FindShown(hdc, &rcShown) || !::LPtoDP(hdc, &ptDevice, 1) ||
        !::GetBrushOrgEx(hdc, &ptBrush))
        return false;
    m_nSamples = px.Samples();
    const RECT rcReach = GrownRect(rcFilled, SLACK * m_nSamples);
    RECT rc{};
    if (ptBrush.x % m_nSamples || ptBrush.y % m_nSamples || !IsWithinReach(rcShown) ||
        !::IntersectRect(&rc, &rcReach, &rcShown))
        return false;
    ::OffsetRect(&rc, ptDevice.x - ptBrush.x, ptDevice.y - ptBrush.y);
    const RECT rcPixels{FloorOf(rc.left, m_nSamples), FloorOf(rc.top, m_nSamples),
                        -FloorOf(-rc.right, m_nSamples), -FloorOf(-rc.bottom, m_nSamples)};
    m_across = {rcPixels.left, WidthOf(rcPixels)};
    m_down = {rcPixels.top, HeightOf(rcPixels)};
    const POINT pt{rcPixels.left * m_nSamples + ptBrush.x, rcPixels.top * m_nSamples + ptBrush.y};
    m_nStride = bitmap.bmWidthBytes / static_cast<int32_t>(sizeof(uint32_t));
    if (pt.x < 0 || pt.y < 0 || pt.x + m_across.nCount * m_nSamples > bitmap.bmWidth ||
        pt.y + m_down.nCount * m_nSamples > bitmap.bmHeight)
        return false;
    m_pFirst = static_cast<uint32_t*>(bitmap.bmBits) + pt.y * m_nStride + pt.x;
    return true;
}

bool CSampleGradient::ChooseKey(COLORREF clrNear, COLORREF clrPen)
{
    ::GdiFlush();
    return std::any_of(std::begin(NEIGHBORS), std::end(NEIGHBORS), [&](uint32_t nNeighbor) {
        m_nKey = SampleOf(clrNear) ^ nNeighbor;
        return m_nKey != SampleOf(clrPen) && !HasKey();
    });
}

bool CSampleGradient::HasKey() const
{
    bool bFound = false;
    for (int32_t y = 0; y < m_down.nCount * m_nSamples && !bFound; ++y)
        bFound = HasSample(SampleRow(y), m_across.nCount * m_nSamples, m_nKey);
    return bFound;
}

void CSampleGradient::End()
{
    if (!m_hKey) return;
    ::GdiFlush();
    const int32_t nWidth = m_across.nCount * m_nSamples;
    const CGradientRows rows(m_rcWhole, m_nGradient, m_clr1, m_clr2, m_across, m_down);
    const CBlock samples(static_cast<uint64_t>(nWidth) * sizeof(uint32_t));
    auto* const pSamples = samples.As<uint32_t>();
    if (!pSamples || !rows.AreThere()) {
        NoteRefusal();
        return;
    }
    for (int32_t y = 0; y < m_down.nCount; ++y) {
        Repeat(rows.At(y), m_across.nCount, m_nSamples, pSamples);
        for (int32_t n = 0; n < m_nSamples; ++n)
            Exchange(SampleRow(y * m_nSamples + n), pSamples, nWidth, m_nKey);
    }
}
