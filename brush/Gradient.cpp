// A kind is a row of a table: what runs across, what runs down, and how the two are joined. The
// terms are worked out once for every column and every row.
#include "brush/Gradient.h"

#include "base/GdiScopes.h"
#include "base/Rects.h"
#include "base/Refusals.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

namespace {

constexpr int CHANNELS = 3;

enum class Term : uint8_t {
    None,             // this direction does not matter: the bitmap has one column or row
    Ramp,             // from the first to the second colour
    RampBack,         // the same with the colours exchanged
    ThereAndBack,     // first, second in the middle, first
    ThereAndBackBack, // the same with the colours exchanged
};

enum class Join : uint8_t {
    Across,  // the value of the column
    Down,    // the value of the row
    Average, // the mean of both
    Reflect, // the steps of both added, and turned back where they pass the second colour
    Nearer   // the one of both that is nearer to the first colour
};

struct KindRow {
    Term nAcross;
    Term nDown;
    Join nJoin;
};

constexpr KindRow g_kinds[GRADIENT_KINDS] = {
    {Term::Ramp, Term::None, Join::Across},                      // 0: across
    {Term::None, Term::Ramp, Join::Down},                        // 1: down
    {Term::Ramp, Term::Ramp, Join::Average},                     // 2: both, averaged
    {Term::RampBack, Term::Ramp, Join::Average},                 // 3: from the other corner
    {Term::ThereAndBack, Term::None, Join::Across},              // 4: across, there and back
    {Term::None, Term::ThereAndBack, Join::Down},                // 5: down, there and back
    {Term::Ramp, Term::Ramp, Join::Reflect},                     // 6: diagonal
    {Term::RampBack, Term::Ramp, Join::Reflect},                 // 7
    {Term::ThereAndBack, Term::Ramp, Join::Reflect},             // 8
    {Term::Ramp, Term::ThereAndBack, Join::Reflect},             // 9
    {Term::ThereAndBack, Term::ThereAndBack, Join::Reflect},     // 10
    {Term::ThereAndBackBack, Term::ThereAndBack, Join::Reflect}, // 11
    {Term::ThereAndBack, Term::ThereAndBack, Join::Average},     // 12
    {Term::ThereAndBack, Term::ThereAndBack, Join::Nearer},      // 13
};

struct Color { // channels in the order of a pixel's bytes: blue, green, red
    int32_t nChannel[CHANNELS];
};

Color ToChannels(COLORREF clr)
{
    return {{GetBValue(clr), GetGValue(clr), GetRValue(clr)}};
}

int32_t TermAt(Term nTerm, int32_t p, int32_t nOrigin, int32_t nLength, int32_t a, int32_t b)
{
    switch (nTerm) {
    case Term::Ramp:
        return GradientRamp(p, nOrigin, nLength, a, b);
    case Term::RampBack:
        return GradientRamp(p, nOrigin, nLength, b, a);
    case Term::ThereAndBack:
        return GradientThereAndBack(p, nOrigin, nLength, a, b);
    case Term::ThereAndBackBack:
        return GradientThereAndBack(p, nOrigin, nLength, b, a);
    case Term::None:
    default:
        return a;
    }
}

int32_t JoinTerms(Join nJoin, int32_t nAcross, int32_t nDown, int32_t a, int32_t b)
{
    switch (nJoin) {
    case Join::Across:
        return nAcross;
    case Join::Down:
        return nDown;
    case Join::Average:
        return (nDown + nAcross) >> 1;
    case Join::Reflect: {
        const int32_t nValue = a + (nAcross - a) + (nDown - a);
        const bool bPassed = a <= b ? nValue > b : nValue < b;
        return bPassed ? 2 * b - nValue : nValue;
    }
    case Join::Nearer:
    default:
        return std::abs(nAcross - a) <= std::abs(nDown - a) ? nAcross : nDown;
    }
}

// One direction of a gradient: the whole period, and what of it a bitmap holds.
struct Direction {
    Term nTerm;
    int32_t nOrigin;
    int32_t nLength;
    GradientPart part;
};

int32_t Remainder(int64_t n, int32_t nBy) // never negative
{
    const auto nRest = static_cast<int32_t>(n % nBy);
    return nRest < 0 ? nRest + nBy : nRest;
}

// The terms of one direction: a triple for each pixel of the part, of which the first comes at nAt,
// and what is behind the last one from the beginning on.
void FillTerms(uint8_t* pOut, const Direction& direction, const Color& first, const Color& second,
               int32_t nAt)
{
    const int32_t nCount = direction.part.nCount;
    int32_t p = Remainder(direction.part.nFirst, direction.nLength);
    for (int32_t i = 0; i < nCount; ++i) {
        for (int n = 0; n < CHANNELS; ++n)
            pOut[static_cast<std::size_t>(nAt) * CHANNELS + static_cast<std::size_t>(n)] =
                static_cast<uint8_t>(TermAt(direction.nTerm, p, direction.nOrigin,
                                            direction.nLength, first.nChannel[n],
                                            second.nChannel[n]));
        if (++nAt == nCount) nAt = 0;
        if (++p == direction.nLength) p = 0;
    }
}

// One row of the bitmap. A function for each join, so that none is chosen anew for each pixel.
template <Join JOIN>
void FillRow(uint8_t* pPixel, int32_t nCount, const uint8_t* pAcross, const uint8_t* pDown,
             const Color& first, const Color& second)
{
    for (int32_t p = 0; p < nCount; ++p, pPixel += 4, pAcross += CHANNELS) {
        for (int n = 0; n < CHANNELS; ++n)
            pPixel[n] = static_cast<uint8_t>(
                JoinTerms(JOIN, pAcross[n], pDown[n], first.nChannel[n], second.nChannel[n]));
        pPixel[CHANNELS] = 0;
    }
}

using RowFiller = void (*)(uint8_t*, int32_t, const uint8_t*, const uint8_t*, const Color&,
                           const Color&);
constexpr RowFiller g_fillers[] = {FillRow<Join::Across>, FillRow<Join::Down>,
                                   FillRow<Join::Average>, FillRow<Join::Reflect>,
                                   FillRow<Join::Nearer>}; // in the order of the joins

// Each pixel of a row n times, from its last one back, and the row n times.
void Repeat(uint8_t* pRow, int32_t nWidth, int32_t n)
{
    auto* const pPixels = reinterpret_cast<uint32_t*>(pRow);
    for (int32_t x = nWidth * n - 1; x >= 0; --x) pPixels[x] = pPixels[x / n];
    const auto nBytes = static_cast<std::size_t>(nWidth * n) * sizeof(uint32_t);
    for (int32_t y = 1; y < n; ++y)
        std::memcpy(pRow + static_cast<std::size_t>(y) * nBytes, pRow, nBytes);
}

// nSamples: how many device pixels each way a pixel of it is.
HBRUSH MakeBrush(const Direction& across, const Direction& down, Join nJoin, const Color& first,
                 const Color& second, int32_t nSamples)
{
    const int32_t nWidth = across.part.nCount;
    const int32_t nHeight = down.part.nCount;
    const uint64_t nPixels = static_cast<uint64_t>(nWidth) * static_cast<uint64_t>(nHeight) *
                             static_cast<uint64_t>(nSamples) * static_cast<uint64_t>(nSamples);
    const CBlock bitmap(nPixels * 4 + sizeof(BITMAPINFOHEADER));
    const CBlock acrossTerms(static_cast<uint64_t>(nWidth) * CHANNELS);
    const CBlock downTerms(static_cast<uint64_t>(nHeight) * CHANNELS);
    if (!bitmap.As<uint8_t>() || !acrossTerms.As<uint8_t>() || !downTerms.As<uint8_t>())
        return nullptr;

    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = nWidth * nSamples;
    header.biHeight = -nHeight * nSamples; // rows from the top
    header.biPlanes = 1;
    header.biBitCount = 32;
    header.biCompression = BI_RGB;
    std::memcpy(bitmap.As<uint8_t>(), &header, sizeof header);

    // The system lays bitmap and period from the same origin.
    FillTerms(acrossTerms.As<uint8_t>(), across, first, second,
              Remainder(across.part.nFirst, nWidth));
    FillTerms(downTerms.As<uint8_t>(), down, first, second, Remainder(down.part.nFirst, nHeight));
    const RowFiller pfnFill = g_fillers[static_cast<int>(nJoin)];
    uint8_t* pPixel = bitmap.As<uint8_t>() + sizeof header;
    const uint8_t* pDown = downTerms.As<uint8_t>();
    for (int32_t q = 0; q < nHeight; ++q, pDown += CHANNELS) {
        pfnFill(pPixel, nWidth, acrossTerms.As<uint8_t>(), pDown, first, second);
        if (nSamples > 1) Repeat(pPixel, nWidth, nSamples);
        pPixel +=
            static_cast<std::size_t>(nWidth * nSamples) * static_cast<std::size_t>(nSamples) * 4;
    }
    return Made(::CreateDIBPatternBrushPt(bitmap.As<uint8_t>(), DIB_RGB_COLORS));
}

} // namespace

int32_t GradientRamp(int32_t p, int32_t nOrigin, int32_t nLength, int32_t a, int32_t b)
{
    if (nLength < 1 || a == b) return a;
    const int64_t d = b - a;
    // Left of the origin the steps count from the end. 64 bits, so that no rectangle is too far
    // out.
    const int64_t nFrom = static_cast<int64_t>(p) - nOrigin;
    const int64_t nValue = nFrom < 0 ? b - ((-nFrom - 1) % nLength * d) / nLength
                                     : a + (nFrom % nLength * d) / nLength;
    return static_cast<int32_t>(nValue & 0xFF);
}

int32_t GradientThereAndBack(int32_t p, int32_t nOrigin, int32_t nLength, int32_t a, int32_t b)
{
    if (nLength < 2 || a == b) return a;
    const int64_t d = b - a;
    const int64_t nHalf = nLength / 2;
    const int64_t nFrom = static_cast<int64_t>(p) - nOrigin;
    const int64_t o = (nFrom < 0 ? -nFrom - 1 : nFrom) % nLength;
    const int64_t nValue = o >= nHalf ? b - ((o - nHalf) * d) / nHalf : a + (o * d) / nHalf;
    return static_cast<int32_t>(nValue);
}

SIZE GradientSize(const RECT& rc, int nKind)
{
    return {g_kinds[nKind].nAcross == Term::None ? 1 : WidthOf(rc),
            g_kinds[nKind].nDown == Term::None ? 1 : HeightOf(rc)};
}

HBRUSH MakeGradientBrush(const RECT& rc, int nKind, COLORREF clr1, COLORREF clr2,
                         const GradientPart& across, const GradientPart& down, int32_t nSamples)
{
    const SIZE size = GradientSize(rc, nKind);
    if (size.cx < 1 || size.cy < 1) return nullptr; // wider than 31 bits can say
    if (static_cast<uint64_t>(size.cx) * static_cast<uint64_t>(size.cy) > MAX_GRADIENT_PIXELS)
        return nullptr;
    const KindRow& kind = g_kinds[nKind];
    return MakeBrush({kind.nAcross, rc.left, size.cx, across}, {kind.nDown, rc.top, size.cy, down},
                     kind.nJoin, ToChannels(clr1), ToChannels(clr2), nSamples);
}

CGradientRows::CGradientRows(const RECT& rc, int nKind, COLORREF clr1, COLORREF clr2,
                             const GradientPart& across, const GradientPart& down) noexcept
    : m_nKind(nKind), m_clr1(clr1), m_clr2(clr2), m_nWidth(across.nCount),
      m_across(static_cast<uint64_t>(across.nCount) * CHANNELS),
      m_down(static_cast<uint64_t>(down.nCount) * CHANNELS),
      m_row(static_cast<uint64_t>(across.nCount) * sizeof(uint32_t))
{
    if (!AreThere()) return;
    const KindRow& kind = g_kinds[nKind];
    const SIZE size = GradientSize(rc, nKind);
    FillTerms(m_across.As<uint8_t>(), {kind.nAcross, rc.left, size.cx, across}, ToChannels(clr1),
              ToChannels(clr2), 0);
    FillTerms(m_down.As<uint8_t>(), {kind.nDown, rc.top, size.cy, down}, ToChannels(clr1),
              ToChannels(clr2), 0);
}

bool CGradientRows::AreThere() const
{
    return m_across.As<uint8_t>() && m_down.As<uint8_t>() && m_row.As<uint8_t>();
}

const uint32_t* CGradientRows::At(int32_t nRow) const
{
    const RowFiller pfnFill = g_fillers[static_cast<int>(g_kinds[m_nKind].nJoin)];
    pfnFill(m_row.As<uint8_t>(), m_nWidth, m_across.As<uint8_t>(),
            m_down.As<uint8_t>() + static_cast<std::ptrdiff_t>(nRow) * CHANNELS, ToChannels(m_clr1),
            ToChannels(m_clr2));
    return m_row.As<uint32_t>();
}

CGradient::~CGradient()
{
    if (m_hBrush) ::DeleteObject(m_hBrush);
}

CGradient* CGradient::Create(const RECT* prc, int nKind, COLORREF clr1, COLORREF clr2)
{
    if (!prc || nKind < 0 || nKind >= GRADIENT_KINDS || ::IsRectEmpty(prc)) return nullptr;
    const SIZE size = GradientSize(*prc, nKind);
    auto* pGradient = new (std::nothrow) CGradient;
    if (pGradient)
        pGradient->m_hBrush =
            MakeGradientBrush(*prc, nKind, clr1, clr2, {0, size.cx}, {0, size.cy});
    return pGradient;
}

int CGradient::Fill(HDC hdc, int32_t nX, int32_t nY, int32_t nWidth, int32_t nHeight) const
{
    if (nWidth < 1 || nHeight <= 0) return 1;
    if (!m_hBrush) return 0;
    const CSelectScope brush(hdc, m_hBrush);
    const CSelectScope pen(hdc, ::GetStockObject(NULL_PEN));
    ::Rectangle(hdc, nX, nY, WrapAdd(nX, nWidth), WrapAdd(nY, nHeight));
    return 1;
}

namespace {

// Without a handle nobody could close it.
HQELGRADIENT HandOut(std::unique_ptr<CGradient>* pGradient, uintptr_t nValue)
{
    if (nValue) static_cast<void>(pGradient->release()); // its handle has it from here on
    return ToHandle<HQELGRADIENT>(nValue);
}

} // namespace

HQELGRADIENT CreatePrivateGradient(const RECT* prc, int nKind, COLORREF clr1, COLORREF clr2)
{
    std::unique_ptr<CGradient> gradient(CGradient::Create(prc, nKind, clr1, clr2));
    if (!gradient) return nullptr;
    return HandOut(&gradient, gradient->Handle().PrivateValue());
}

void ShareGradient(HQELGRADIENT hGradient)
{
    auto* pGradient =
        static_cast<CGradient*>(CHandleEntry::Find(HandleKind::Gradient, ToNumber(hGradient)));
    if (pGradient) pGradient->Handle().Share();
}

HQELGRADIENT QELAPI QELCreateGradientDescriptor(const RECT* prc, int nKind, COLORREF clr1,
                                                COLORREF clr2)
{
    std::unique_ptr<CGradient> gradient(CGradient::Create(prc, nKind, clr1, clr2));
    if (!gradient) return nullptr;
    return HandOut(&gradient, gradient->Handle().Value());
}

int QELAPI QELCloseGradientDescriptor(HQELGRADIENT hGradient)
{
    auto* pGradient =
        static_cast<CGradient*>(CHandleEntry::Find(HandleKind::Gradient, ToNumber(hGradient)));
    if (!pGradient) return 0;
    delete pGradient;
    return 1;
}

HBRUSH QELAPI QELGetGradientBrush(HQELGRADIENT hGradient)
{
    const auto* pGradient =
        static_cast<CGradient*>(CHandleEntry::Find(HandleKind::Gradient, ToNumber(hGradient)));
    return pGradient ? pGradient->Brush() : nullptr;
}
