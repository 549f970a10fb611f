#include "render/SmoothBands.h"

#include "base/GdiScopes.h"
#include "base/Rects.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int32_t MAX_TILE_BYTES = 8 << 20; // of samples
constexpr int32_t LEAST_SIDE = 64; // what a narrow picture paints beside itself takes few tiles
constexpr uint32_t EVERY_OTHER_BYTE = 0x00FF00FF;
constexpr uint32_t COLOR_BYTES = 0x00FFFFFF;
constexpr uint32_t BLACK = 0;
constexpr uint32_t WHITE = COLOR_BYTES;

// What drawing calls go by, apart from places.
void CopyDrawingState(HDC hdcFrom, HDC hdcTo)
{
    for (const UINT nKind : {OBJ_FONT, OBJ_PEN, OBJ_BRUSH})
        if (HGDIOBJ hObject = ::GetCurrentObject(hdcFrom, nKind)) ::SelectObject(hdcTo, hObject);
    ::SetTextColor(hdcTo, ::GetTextColor(hdcFrom));
    ::SetBkColor(hdcTo, ::GetBkColor(hdcFrom));
    ::SetBkMode(hdcTo, ::GetBkMode(hdcFrom));
    ::SetROP2(hdcTo, ::GetROP2(hdcFrom));
    ::SetPolyFillMode(hdcTo, ::GetPolyFillMode(hdcFrom));
    ::SetTextAlign(hdcTo, ::GetTextAlign(hdcFrom));
    ::SetTextCharacterExtra(hdcTo, ::GetTextCharacterExtra(hdcFrom));
    ::SetArcDirection(hdcTo, ::GetArcDirection(hdcFrom));
}

// Where the patterns of a surface begin, in the units of its figures.
POINT PatternOrigin(HDC hdc)
{
    POINT ptBrush{0, 0};
    POINT ptDevice{0, 0};
    if (!::GetBrushOrgEx(hdc, &ptBrush) || !::LPtoDP(hdc, &ptDevice, 1)) return {0, 0};
    return {WrapSub(ptBrush.x, ptDevice.x), WrapSub(ptBrush.y, ptDevice.y)};
}

// The state of a tile's device context for one paint of it.
class CTileScope {
public:
    CTileScope(HDC hdc, const RECT& rcTile, POINT ptPattern, int32_t nSamples) noexcept
        : m_hdc(hdc), m_nSaved(::SaveDC(hdc))
    {
        ::SetViewportOrgEx(hdc, -rcTile.left * nSamples, -rcTile.top * nSamples, nullptr);
        ::SetBrushOrgEx(hdc, WrapMul(WrapSub(ptPattern.x, rcTile.left), nSamples),
                        WrapMul(WrapSub(ptPattern.y, rcTile.top), nSamples), nullptr);
        ::IntersectClipRect(hdc, rcTile.left * nSamples, rcTile.top * nSamples,
                            rcTile.right * nSamples, rcTile.bottom * nSamples);
    }
    ~CTileScope()
    {
        if (m_nSaved) ::RestoreDC(m_hdc, m_nSaved);
    }
    CTileScope(const CTileScope&) = delete;
    CTileScope& operator=(const CTileScope&) = delete;

private:
    HDC m_hdc;
    int m_nSaved;
};

// The tiles of a rectangle, from the top left.
class CTiles {
public:
    CTiles(const RECT& rc, SIZE tile) noexcept : m_rc(rc), m_tile(tile), m_rcNow(First()) {}

    [[nodiscard]] const RECT& Now() const { return m_rcNow; }
    [[nodiscard]] bool IsThere() const { return m_rcNow.top < m_rc.bottom; }
    [[nodiscard]] bool IsLast() const
    {
        return m_rcNow.right == m_rc.right && m_rcNow.bottom == m_rc.bottom;
    }
    void Next()
    {
        if (m_rcNow.right < m_rc.right)
            m_rcNow = At({m_rcNow.right, m_rcNow.top});
        else
            m_rcNow = At({m_rc.left, m_rcNow.bottom});
    }

private:
    [[nodiscard]] RECT First() const
    {
        if (::IsRectEmpty(&m_rc)) return {0, m_rc.bottom, 0, m_rc.bottom};
        return At({m_rc.left, m_rc.top});
    }
    [[nodiscard]] RECT At(POINT pt) const
    {
        return {pt.x, pt.y, std::min(pt.x + m_tile.cx, m_rc.right),
                std::min(pt.y + m_tile.cy, m_rc.bottom)};
    }

    RECT m_rc;
    SIZE m_tile;
    RECT m_rcNow;
};

SIZE SizeOf(const RECT& rc)
{
    return {rc.right - rc.left, rc.bottom - rc.top};
}

// The mean of the samples of a pixel, each byte by itself, two bytes in one number.
template <uint32_t N>
uint32_t MeanOf(const uint32_t* pSamples, int32_t nStride)
{
    constexpr uint32_t COUNT = N * N;
    uint32_t nLow = 0;
    uint32_t nHigh = 0;
    for (uint32_t y = 0; y < N; ++y, pSamples += nStride)
        for (uint32_t x = 0; x < N; ++x) {
            nLow += pSamples[x] & EVERY_OTHER_BYTE;
            nHigh += pSamples[x] >> 8 & EVERY_OTHER_BYTE;
        }
    const auto mean = [](uint32_t nSum) { return (nSum + COUNT / 2) / COUNT; };
    return mean(nLow & 0xFFFF) | mean(nHigh & 0xFFFF) << 8 | mean(nLow >> 16) << 16;
}

// The inside of figures and what nothing covers has samples of one colour alone, which are told
// sooner than added up.
template <uint32_t N>
bool IsUniform(const uint32_t* pSamples, int32_t nStride)
{
    const uint32_t nFirst = *pSamples;
    for (uint32_t y = 0; y < N; ++y, pSamples += nStride) {
        uint32_t nOther = 0;
        for (uint32_t x = 0; x < N; ++x) nOther |= pSamples[x] ^ nFirst;
        if (nOther) return false;
    }
    return true;
}

// The host's memory begins where it likes, and so does each row of it.
uint32_t PixelAt(const void* pRow, int32_t x)
{
    uint32_t n = 0;
    std::memcpy(&n, static_cast<const unsigned char*>(pRow) + x * sizeof n, sizeof n);
    return n;
}

void SetPixelAt(void* pRow, int32_t x, uint32_t n)
{
    std::memcpy(static_cast<unsigned char*>(pRow) + x * sizeof n, &n, sizeof n);
}

// The number of samples is known to the compiler: what is divided by it are three colours of every
// pixel.
template <uint32_t N>
void AverageRow(const uint32_t* pFrom, int32_t nStride, void* pTo, int32_t nWidth)
{
    for (int32_t x = 0; x < nWidth; ++x, pFrom += N)
        SetPixelAt(pTo, x,
                   IsUniform<N>(pFrom, nStride) ? *pFrom & COLOR_BYTES : MeanOf<N>(pFrom, nStride));
}

using RowAverage = void (*)(const uint32_t* pFrom, int32_t nStride, void* pTo, int32_t nWidth);

RowAverage AverageFor(int32_t nSamples)
{
    constexpr RowAverage AVERAGES[] = {AverageRow<1>, AverageRow<2>, AverageRow<3>, AverageRow<4>};
    return AVERAGES[nSamples - 1];
}

template <uint32_t N>
void ExpandRow(const uint32_t* pFrom, uint32_t* pTo, int32_t nWidth)
{
    for (int32_t x = 0; x < nWidth; ++x, pTo += N) std::fill_n(pTo, N, pFrom[x]);
}

using RowExpansion = void (*)(const uint32_t* pFrom, uint32_t* pTo, int32_t nWidth);

RowExpansion ExpansionFor(int32_t nSamples)
{
    constexpr RowExpansion EXPANSIONS[] = {ExpandRow<1>, ExpandRow<2>, ExpandRow<3>, ExpandRow<4>};
    return EXPANSIONS[nSamples - 1];
}

// From a pixel over black and the same over white: what both have in common is painted.
uint32_t WithAlpha(uint32_t nOnBlack, uint32_t nOnWhite)
{
    uint32_t nLeast = 0xFF;
    for (int nShift = 0; nShift < 24; nShift += 8) {
        const uint32_t nBlack = nOnBlack >> nShift & 0xFF;
        const uint32_t nWhite = nOnWhite >> nShift & 0xFF;
        nLeast = std::min(nLeast, nWhite > nBlack ? nWhite - nBlack : 0);
    }
    return (nOnBlack & COLOR_BYTES) | (0xFF - nLeast) << 24;
}

void AddAlpha(void* pOnBlack, const uint32_t* pOnWhite, int32_t nWidth)
{
    for (int32_t x = 0; x < nWidth; ++x) {
        const uint32_t n = PixelAt(pOnBlack, x);
        SetPixelAt(pOnBlack, x, n == pOnWhite[x] ? n | ~COLOR_BYTES : WithAlpha(n, pOnWhite[x]));
    }
}

} // namespace

int CTileCanvas::Make(SIZE size)
{
    if (m_pBits && m_size.cx == size.cx && m_size.cy == size.cy) return 1;
    Drop();
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.cx;
    info.bmiHeader.biHeight = -size.cy;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* pBits = nullptr;
    m_hdc = ::CreateCompatibleDC(nullptr);
    m_hBitmap =
        m_hdc ? ::CreateDIBSection(m_hdc, &info, DIB_RGB_COLORS, &pBits, nullptr, 0) : nullptr;
    m_hPrev = m_hBitmap ? ::SelectObject(m_hdc, m_hBitmap) : nullptr;
    if (!m_hPrev) {
        Drop();
        return 0;
    }
    m_pBits = static_cast<uint32_t*>(pBits);
    m_size = size;
    return 1;
}

void CTileCanvas::Drop()
{
    if (m_hPrev) ::SelectObject(m_hdc, m_hPrev);
    if (m_hBitmap) ::DeleteObject(m_hBitmap);
    if (m_hdc) ::DeleteDC(m_hdc);
    m_hdc = nullptr;
    m_hBitmap = nullptr;
    m_hPrev = nullptr;
    m_pBits = nullptr;
    m_size = {0, 0};
}

void CSmoothBands::Drop()
{
    m_fine.Drop();
    m_plain.Drop();
    m_nSamples = 0;
}

int CSmoothBands::Prepare(SIZE picture, int32_t nSamples)
{
    const int32_t nPixels =
        MAX_TILE_BYTES / (nSamples * nSamples * static_cast<int32_t>(sizeof(uint32_t)));
    const auto nAcross = std::clamp<int32_t>(picture.cx, LEAST_SIDE, nPixels / LEAST_SIDE);
    m_tile = {nAcross, std::clamp<int32_t>(picture.cy, LEAST_SIDE, nPixels / nAcross)};
    m_nSamples = nSamples;
    if (m_fine.Make({m_tile.cx * nSamples, m_tile.cy * nSamples}) && m_plain.Make(m_tile)) return 1;
    Drop();
    return 0;
}

// The first row of samples of a row of pixels.
uint32_t* CSmoothBands::FineRow(int32_t y) const
{
    return m_fine.Bits() + y * m_nSamples * m_fine.Stride();
}

void CSmoothBands::TakeSurface(HDC hdc, const RECT& rcTile)
{
    const SIZE size = SizeOf(rcTile);
    ::BitBlt(m_plain.Dc(), 0, 0, size.cx, size.cy, hdc, rcTile.left, rcTile.top, SRCCOPY);
    ::GdiFlush();
    Expand(size);
}

// Each pixel as many times as it has samples.
void CSmoothBands::Expand(SIZE size)
{
    const RowExpansion pfnExpand = ExpansionFor(m_nSamples);
    const auto nBytes = static_cast<std::size_t>(size.cx * m_nSamples) * sizeof(uint32_t);
    for (int32_t y = 0; y < size.cy; ++y) {
        uint32_t* const pRow = FineRow(y);
        pfnExpand(m_plain.Bits() + y * m_plain.Stride(), pRow, size.cx);
        for (int32_t n = 1; n < m_nSamples; ++n)
            std::memcpy(pRow + n * m_fine.Stride(), pRow, nBytes);
    }
}

void CSmoothBands::Average(SIZE size)
{
    ::GdiFlush();
    const RowAverage pfnAverage = AverageFor(m_nSamples);
    for (int32_t y = 0; y < size.cy; ++y)
        pfnAverage(FineRow(y), m_fine.Stride(), m_plain.Bits() + y * m_plain.Stride(), size.cx);
}

void CSmoothBands::FillGround(SIZE size, uint32_t nPixel)
{
    ::GdiFlush();
    for (int32_t y = 0; y < size.cy * m_nSamples; ++y)
        std::fill_n(m_fine.Bits() + y * m_fine.Stride(), size.cx * m_nSamples, nPixel);
}

// The colours that the last tile leaves set are those that the surface would have now.
int CSmoothBands::Paint(HDC hdc, const RECT& rc, SIZE picture, int32_t nSamples,
                        CTilePainter* pPainter)
{
    if (!Prepare(picture, nSamples)) return 0;
    const POINT ptPattern = PatternOrigin(hdc);
    COLORREF clrText = ::GetTextColor(hdc);
    COLORREF clrBack = ::GetBkColor(hdc);
    for (CTiles tiles(rc, m_tile); tiles.IsThere(); tiles.Next()) {
        const RECT& rcTile = tiles.Now();
        const SIZE size = SizeOf(rcTile);
        TakeSurface(hdc, rcTile);
        {
            const CTileScope scope(m_fine.Dc(), rcTile, ptPattern, nSamples);
            CopyDrawingState(hdc, m_fine.Dc());
            pPainter->Paint(m_fine.Dc(), rcTile, tiles.IsLast());
            clrText = ::GetTextColor(m_fine.Dc());
            clrBack = ::GetBkColor(m_fine.Dc());
        }
        Average(size);
        ::BitBlt(hdc, rcTile.left, rcTile.top, size.cx, size.cy, m_plain.Dc(), 0, 0, SRCCOPY);
    }
    ::SetTextColor(hdc, clrText);
    ::SetBkColor(hdc, clrBack);
    return 1;
}

// What is painted of a tile on that ground, as the pixels of the tile.
void CSmoothBands::PaintOnGround(const RECT& rcTile, uint32_t nGround, HFONT hFont, bool bLast,
                                 CTilePainter* pPainter)
{
    FillGround(SizeOf(rcTile), nGround);
    {
        const CTileScope scope(m_fine.Dc(), rcTile, {0, 0}, m_nSamples);
        const CSelectScope font(m_fine.Dc(), hFont);
        pPainter->Paint(m_fine.Dc(), rcTile, bLast);
    }
    ::GdiFlush();
}

// What is painted on black waits in the host's memory for the same on white.
int CSmoothBands::Render(void* pBits, SIZE size, int32_t nStride, int32_t nSamples, HFONT hFont,
                         CTilePainter* pPainter)
{
    if (!Prepare(size, nSamples)) return 0;
    const RowAverage pfnAverage = AverageFor(nSamples);
    for (CTiles tiles({0, 0, size.cx, size.cy}, m_tile); tiles.IsThere(); tiles.Next()) {
        const RECT& rcTile = tiles.Now();
        const SIZE tile = SizeOf(rcTile);
        const auto rowAt = [&](int32_t y) {
            return static_cast<unsigned char*>(pBits) +
                   static_cast<std::ptrdiff_t>(rcTile.top + y) * nStride +
                   rcTile.left * static_cast<std::ptrdiff_t>(sizeof(uint32_t));
        };
        PaintOnGround(rcTile, BLACK, hFont, false, pPainter);
        for (int32_t y = 0; y < tile.cy; ++y)
            pfnAverage(FineRow(y), m_fine.Stride(), rowAt(y), tile.cx);
        PaintOnGround(rcTile, WHITE, hFont, tiles.IsLast(), pPainter);
        for (int32_t y = 0; y < tile.cy; ++y) {
            pfnAverage(FineRow(y), m_fine.Stride(), m_plain.Bits(), tile.cx);
            AddAlpha(rowAt(y), m_plain.Bits(), tile.cx);
        }
    }
    return 1;
}
