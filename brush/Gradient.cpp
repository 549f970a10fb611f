// Gradient descriptors; see the header. A kind is a row of a table: what runs across, what runs
// down, and how the two are joined. The terms are worked out once for every column and every row.
#include "brush/Gradient.h"

#include "base/Block.h"
#include "base/GdiScopes.h"
#include "base/Rects.h"

#include <cstdlib>
#include <cstring>
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

struct Colour { // channels in the order of a pixel's bytes: blue, green, red
    int32_t nChannel[CHANNELS];
};

Colour ToChannels(COLORREF clr)
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
        break;
    }
    return a;
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
        break;
    }
    return std::abs(nAcross - a) <= std::abs(nDown - a) ? nAcross : nDown;
}

// The terms of one direction: nLength triples.
void FillTerms(uint8_t* pOut, Term nTerm, int32_t nOrigin, int32_t nLength, const Colour& first,
               const Colour& second)
{
    for (int32_t p = 0; p < nLength; ++p)
        for (int n = 0; n < CHANNELS; ++n)
            *pOut++ = static_cast<uint8_t>(
                TermAt(nTerm, p, nOrigin, nLength, first.nChannel[n], second.nChannel[n]));
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

CGradient::CGradient(const RECT& rc, int nKind, COLORREF clr1, COLORREF clr2) noexcept
    : m_nX(rc.left), m_nY(rc.top), m_nWidth(WidthOf(rc)), m_nHeight(HeightOf(rc)), m_nKind(nKind),
      m_clr1(clr1), m_clr2(clr2)
{
    if (g_kinds[nKind].nAcross == Term::None) m_nWidth = 1;
    if (g_kinds[nKind].nDown == Term::None) m_nHeight = 1;
}

CGradient::~CGradient()
{
    if (m_hBrush) ::DeleteObject(m_hBrush);
}

CGradient* CGradient::Create(const RECT* prc, int nKind, COLORREF clr1, COLORREF clr2)
{
    if (!prc || nKind < 0 || nKind >= GRADIENT_KINDS || ::IsRectEmpty(prc)) return nullptr;
    auto* pGradient = new (std::nothrow) CGradient(*prc, nKind, clr1, clr2);
    if (pGradient) pGradient->m_hBrush = pGradient->MakeBrush();
    return pGradient;
}

HBRUSH CGradient::MakeBrush() const
{
    if (m_nWidth < 1 || m_nHeight < 1) return nullptr; // wider than 31 bits can say
    const uint64_t nPixels = static_cast<uint64_t>(m_nWidth) * static_cast<uint64_t>(m_nHeight);
    if (nPixels > MAX_GRADIENT_PIXELS) return nullptr;
    const CBlock bitmap(nPixels * 4 + sizeof(BITMAPINFOHEADER));
    const CBlock across(static_cast<uint64_t>(m_nWidth) * CHANNELS);
    const CBlock down(static_cast<uint64_t>(m_nHeight) * CHANNELS);
    if (!bitmap.As<uint8_t>() || !across.As<uint8_t>() || !down.As<uint8_t>()) return nullptr;

    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = m_nWidth;
    header.biHeight = -m_nHeight; // rows from the top
    header.biPlanes = 1;
    header.biBitCount = 32;
    header.biCompression = BI_RGB;
    std::memcpy(bitmap.As<uint8_t>(), &header, sizeof header);

    const KindRow& kind = g_kinds[m_nKind];
    const Colour first = ToChannels(m_clr1);
    const Colour second = ToChannels(m_clr2);
    FillTerms(across.As<uint8_t>(), kind.nAcross, m_nX, m_nWidth, first, second);
    FillTerms(down.As<uint8_t>(), kind.nDown, m_nY, m_nHeight, first, second);
    uint8_t* pPixel = bitmap.As<uint8_t>() + sizeof header;
    for (int32_t q = 0; q < m_nHeight; ++q) {
        const uint8_t* pDown = down.As<uint8_t>() + static_cast<std::size_t>(q) * CHANNELS;
        const uint8_t* pAcross = across.As<uint8_t>();
        for (int32_t p = 0; p < m_nWidth; ++p, pPixel += 4, pAcross += CHANNELS) {
            for (int n = 0; n < CHANNELS; ++n)
                pPixel[n] = static_cast<uint8_t>(JoinTerms(kind.nJoin, pAcross[n], pDown[n],
                                                           first.nChannel[n], second.nChannel[n]));
            pPixel[CHANNELS] = 0;
        }
    }
    return ::CreateDIBPatternBrushPt(bitmap.As<uint8_t>(), DIB_RGB_COLORS);
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

HQELGRADIENT CreatePrivateGradient(const RECT* prc, int nKind, COLORREF clr1, COLORREF clr2)
{
    CGradient* pGradient = CGradient::Create(prc, nKind, clr1, clr2);
    if (!pGradient) return nullptr;
    const uintptr_t nValue = pGradient->Handle().PrivateValue();
    if (!nValue) delete pGradient;
    return ToHandle<HQELGRADIENT>(nValue);
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
    CGradient* pGradient = CGradient::Create(prc, nKind, clr1, clr2);
    if (!pGradient) return nullptr;
    const uintptr_t nValue = pGradient->Handle().Value();
    if (!nValue) delete pGradient;
    return ToHandle<HQELGRADIENT>(nValue);
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
