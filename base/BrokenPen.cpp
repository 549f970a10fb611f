#include "base/BrokenPen.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>

bool FindBrokenPen(HDC hdc, BrokenPen* pOut)
{
    EXTLOGPEN pen{};
    HGDIOBJ hPen = ::GetCurrentObject(hdc, OBJ_PEN);
    if (!hPen || ::GetObjectType(hPen) != OBJ_EXTPEN) return false;
    const int nSize = ::GetObjectA(hPen, 0, nullptr);
    alignas(EXTLOGPEN) unsigned char room[sizeof(EXTLOGPEN) + sizeof pOut->nLengths] = {};
    if (nSize > static_cast<int>(sizeof room) || !::GetObjectA(hPen, nSize, room)) return false;
    std::memcpy(&pen, room, sizeof pen);
    if ((pen.elpPenStyle & PS_STYLE_MASK) != PS_USERSTYLE) return false;
    if (pen.elpNumEntries == 0) return false;
    pOut->clr = pen.elpColor;
    pOut->nCount = std::min<DWORD>(pen.elpNumEntries, BrokenPen::MOST_LENGTHS);
    std::memcpy(pOut->nLengths, room + offsetof(EXTLOGPEN, elpStyleEntry),
                pOut->nCount * sizeof(DWORD));
    for (DWORD& n : pOut->nLengths) n = std::max<DWORD>(n, 1); // so that each step goes on
    return true;
}

bool IsBrokenNow(HDC hdc)
{
    BrokenPen pen{};
    return FindBrokenPen(hdc, &pen);
}

namespace {

// The lines of a broken pen along upright ones that follow each other.
class CUprightDashes {
public:
    CUprightDashes(HDC hdc, const BrokenPen& pen, int32_t nPixel) noexcept
        : m_hdc(hdc), m_pen(pen), m_nPixel(nPixel), m_nLeft(static_cast<LONG>(pen.nLengths[0])),
          m_hBrush(::CreateSolidBrush(pen.clr))
    {
    }
    ~CUprightDashes()
    {
        if (m_hBrush) ::DeleteObject(m_hBrush);
    }
    CUprightDashes(const CUprightDashes&) = delete;
    CUprightDashes& operator=(const CUprightDashes&) = delete;

    void Along(POINT pt1, POINT pt2)
    {
        const LONG nLength =
            std::max(WrapAbs(WrapSub(pt2.x, pt1.x)), WrapAbs(WrapSub(pt2.y, pt1.y)));
        for (LONG nAt = 0; nAt < nLength;) {
            const LONG nRun = std::min(m_nLeft, nLength - nAt);
            if (m_nRun % 2 == 0) Paint(pt1, pt2, nAt, nAt + nRun);
            nAt += nRun;
            m_nLeft -= nRun;
            if (m_nLeft > 0) continue;
            m_nRun = (m_nRun + 1) % m_pen.nCount;
            m_nLeft = static_cast<LONG>(m_pen.nLengths[m_nRun]);
        }
    }

private:
    // From so many units after the first one up to so many.
    void Paint(POINT pt1, POINT pt2, LONG nFrom, LONG nTo) const
    {
        RECT rc{pt1.x, pt1.y, WrapAdd(pt1.x, m_nPixel), WrapAdd(pt1.y, m_nPixel)};
        if (pt2.x != pt1.x)
            Cut(&rc.left, &rc.right, pt2.x > pt1.x, nFrom, nTo);
        else
            Cut(&rc.top, &rc.bottom, pt2.y > pt1.y, nFrom, nTo);
        if (m_hBrush) ::FillRect(m_hdc, &rc, m_hBrush);
    }
    static void Cut(LONG* pnLow, LONG* pnHigh, bool bUp, LONG nFrom, LONG nTo)
    {
        const LONG nStart = bUp ? *pnLow : *pnHigh;
        *pnLow = bUp ? WrapAdd(nStart, nFrom) : WrapSub(nStart, nTo);
        *pnHigh = bUp ? WrapAdd(nStart, nTo) : WrapSub(nStart, nFrom);
    }

    HDC m_hdc;
    BrokenPen m_pen;
    int32_t m_nPixel;
    DWORD m_nRun = 0; // the index of its length
    LONG m_nLeft;     // of this run
    HBRUSH m_hBrush;
};

constexpr int64_t MOST_DASHED_UNITS = 1
                                      << 18; // of what goes far beyond any surface there is no end

bool AreUprightAndShort(const POINT* pPoints, int nCount)
{
    int64_t nUnits = 0;
    for (int n = 1; n < nCount; ++n) {
        const int64_t nX = int64_t{pPoints[n].x} - pPoints[n - 1].x;
        const int64_t nY = int64_t{pPoints[n].y} - pPoints[n - 1].y;
        if (nX != 0 && nY != 0) return false;
        nUnits += std::abs(nX + nY);
    }
    return nUnits <= MOST_DASHED_UNITS;
}

} // namespace

bool DrawUprightDashes(HDC hdc, const POINT* pPoints, int nCount, int32_t nPixel)
{
    BrokenPen pen{};
    if (!AreUprightAndShort(pPoints, nCount) || !FindBrokenPen(hdc, &pen)) return false;
    CUprightDashes dashes(hdc, pen, nPixel);
    for (int n = 1; n < nCount; ++n) dashes.Along(pPoints[n - 1], pPoints[n]);
    return true;
}
