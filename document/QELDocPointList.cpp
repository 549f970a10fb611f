#include "document/QELDocPointList.h"

#include "base/Rects.h"
#include "document/TextNumbers.h"

namespace {

constexpr int MIN_POINTS = 2;

// Passes over one number: to behind the run of blanks and tabs that follows the next blank or, when
// no blank is left at all, the next tab. Null when there is neither.
const char* SkipNumber(const char* p)
{
    const char* pTab = nullptr;
    for (; *p && *p != ' '; ++p)
        if (*p == '\t' && !pTab) pTab = p;
    if (!*p) p = pTab;
    while (p && (*p == ' ' || *p == '\t')) ++p;
    return p;
}

} // namespace

bool CQELDocPointList::HasPoints() const
{
    return Words()[0] >= MIN_POINTS && Words()[0] <= QEL_MAX_POINTS;
}

int CQELDocPointList::ParseCrd(const char* pszText)
{
    int32_t nRead[QEL_SHAPE_WORDS] = {};
    int32_t nCount = 0;
    while (pszText && nCount < QEL_MAX_POINTS) {
        const char* p = pszText;
        int32_t* pPoint = &nRead[1 + 2 * nCount];
        if (!ScanDecimal(&p, &pPoint[0]) || !ScanDecimal(&p, &pPoint[1])) break;
        ++nCount;
        pszText = SkipNumber(pszText);
        if (pszText) pszText = SkipNumber(pszText);
    }
    if (nCount < MIN_POINTS) return 0;
    nRead[0] = nCount;
    return TakeWords(nRead, 1 + 2 * nCount); // without a half-read point
}

std::size_t CQELDocPointList::FormatCrd(char* pszOut) const
{
    if (!HasPoints()) return 0;
    std::size_t nLen = 0;
    for (int32_t n = 0; n < 2 * Words()[0]; ++n) {
        if (n) pszOut[nLen++] = ' ';
        nLen += FormatDecimal(Words()[1 + n], pszOut + nLen, CRD_TEXT_SIZE - nLen);
    }
    return nLen;
}

int CQELDocPointList::GetRect(RECT* prc) const
{
    if (!HasPoints()) return 0;
    const int32_t* pPoint = Words() + 1;
    RECT rc{pPoint[0], pPoint[1], pPoint[0], pPoint[1]};
    for (int32_t n = 1; n < Words()[0]; ++n) {
        pPoint += 2;
        if (pPoint[0] < rc.left) rc.left = pPoint[0];
        if (pPoint[0] > rc.right) rc.right = pPoint[0];
        if (pPoint[1] < rc.top) rc.top = pPoint[1];
        if (pPoint[1] > rc.bottom) rc.bottom = pPoint[1];
    }
    *prc = NormalizedRect(rc);
    return 1;
}

int CQELDocPointList::MapRect(const RECT& rcOld, const RECT& rcNew)
{
    if (!HasPoints()) return 0;
    const CrdShifts shifts = ShiftsBetween(rcOld, rcNew);
    for (int32_t n = 0; n < Words()[0]; ++n) {
        int32_t* pPoint = Words() + 1 + 2 * n;
        pPoint[0] = WrapAdd(pPoint[0], shifts.nX);
        pPoint[1] = WrapAdd(pPoint[1], shifts.nY);
    }
    return 1;
}
