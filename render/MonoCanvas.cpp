#include "render/MonoCanvas.h"

#include "base/Block.h"
#include "base/Refusals.h"

#include <algorithm>

namespace {

constexpr unsigned char ALL_WHITE = 0xFF;
constexpr unsigned char ALL_BLACK = 0;

// Where the run of one colour ends that goes on at x. Bytes of it alone are passed as a whole.
LONG RunEnd(const unsigned char* pBits, LONG x, LONG nWidth, bool bBlack)
{
    const unsigned char byWhole = bBlack ? ALL_BLACK : ALL_WHITE;
    while (x < nWidth) {
        if (x % 8 == 0 && pBits[x / 8] == byWhole) {
            x += 8;
            continue;
        }
        if (!(pBits[x / 8] & (0x80 >> x % 8)) != bBlack) return x;
        ++x;
    }
    return nWidth;
}

// The black runs of all rows, counted, and written where pOut is given.
DWORD FindRuns(const unsigned char* pBits, LONG nStride, SIZE size, RECT* pOut)
{
    DWORD nCount = 0;
    for (LONG y = 0; y < size.cy; ++y, pBits += nStride)
        for (LONG x = 0; (x = RunEnd(pBits, x, size.cx, false)) < size.cx;) {
            const LONG nStart = x;
            x = RunEnd(pBits, x, size.cx, true);
            if (pOut) pOut[nCount] = {nStart, y, x, y + 1};
            ++nCount;
        }
    return nCount;
}

} // namespace

CMonoCanvas::CMonoCanvas(const RECT& rc) noexcept
    : m_rc(rc), m_hdc(Made(::CreateCompatibleDC(nullptr))),
      m_hBitmap(Made(::CreateBitmap(rc.right - rc.left, rc.bottom - rc.top, 1, 1, nullptr)))
{
    if (m_hdc && m_hBitmap) m_hPrev = ::SelectObject(m_hdc, m_hBitmap);
    if (m_hPrev) ::PatBlt(m_hdc, 0, 0, Size().cx, Size().cy, WHITENESS);
}

CMonoCanvas::~CMonoCanvas()
{
    if (m_hPrev) ::SelectObject(m_hdc, m_hPrev);
    if (m_hBitmap) ::DeleteObject(m_hBitmap);
    if (m_hdc) ::DeleteDC(m_hdc);
}

bool CMonoCanvas::GetBits(void* pBits) const
{
    const LONG nSize = Stride() * Size().cy;
    return pBits && ::GetBitmapBits(m_hBitmap, nSize, pBits) == nSize;
}

HRGN CMonoCanvas::BlackRegion() const
{
    const SIZE size = Size();
    const CBlock bits(static_cast<uint64_t>(Stride()) * static_cast<uint64_t>(size.cy));
    if (!GetBits(bits.As<void>())) return nullptr;
    const DWORD nRuns = FindRuns(bits.As<unsigned char>(), Stride(), size, nullptr);
    const auto nBytes = static_cast<DWORD>(sizeof(RGNDATAHEADER) + nRuns * sizeof(RECT));
    const CBlock block(nBytes);
    if (!block.As<void>()) return nullptr;
    auto* pData = block.As<RGNDATA>();
    pData->rdh = {sizeof(RGNDATAHEADER),
                  RDH_RECTANGLES,
                  nRuns,
                  static_cast<DWORD>(nRuns * sizeof(RECT)),
                  {0, 0, size.cx, size.cy}};
    FindRuns(bits.As<unsigned char>(), Stride(), size, reinterpret_cast<RECT*>(pData->Buffer));
    const HRGN hRegion = ::ExtCreateRegion(nullptr, nBytes, pData);
    if (hRegion) ::OffsetRgn(hRegion, m_rc.left, m_rc.top);
    return hRegion;
}

bool CMonoCanvas::FindBlackBox(RECT* prcOut) const
{
    const SIZE size = Size();
    const CBlock bits(static_cast<uint64_t>(Stride()) * static_cast<uint64_t>(size.cy));
    if (!GetBits(bits.As<void>())) return false;
    RECT rc{size.cx, size.cy, 0, 0};
    const unsigned char* pBits = bits.As<unsigned char>();
    for (LONG y = 0; y < size.cy; ++y, pBits += Stride())
        for (LONG x = 0; (x = RunEnd(pBits, x, size.cx, false)) < size.cx;) {
            const LONG nStart = x;
            x = RunEnd(pBits, x, size.cx, true);
            rc = {std::min(rc.left, nStart), std::min(rc.top, y), std::max(rc.right, x), y + 1};
        }
    ::SetRectEmpty(prcOut);
    if (rc.left < rc.right)
        *prcOut = {rc.left + m_rc.left, rc.top + m_rc.top, rc.right + m_rc.left,
                   rc.bottom + m_rc.top};
    return true;
}
