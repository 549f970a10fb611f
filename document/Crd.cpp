#include "document/Crd.h"

#include "base/Rects.h"
#include "document/TextNumbers.h"

#include <cstring>

namespace {

constexpr std::size_t MAX_NUMBERS = 16; // of a class with a fixed number of them

// The shift of one axis of a resize. It is the same for every value: figures move, they are not
// scaled.
int32_t SizeShift(int32_t nOld, int32_t nNew)
{
    return nOld && nNew ? WrapMulDiv(WrapSub(nNew, nOld), nNew, nOld) : 0;
}

} // namespace

int ParseCrdNumbers(const char* pszText, const char* pszLayout, int32_t* pnWords)
{
    int32_t nRead[MAX_NUMBERS] = {};
    std::size_t n = 0;
    for (; pszLayout[n]; ++n) {
        if (pszLayout[n] == 'r') {
            uint32_t nUnsigned = 0;
            if (!ScanUnsigned(&pszText, &nUnsigned)) return 0;
            nRead[n] = static_cast<int32_t>(nUnsigned);
        } else if (!ScanDecimal(&pszText, &nRead[n])) {
            return 0;
        }
    }
    // Only now: all or nothing. Most have four, which need no call to be copied.
    if (n == 4)
        std::memcpy(pnWords, nRead, 4 * sizeof nRead[0]);
    else
        std::memcpy(pnWords, nRead, n * sizeof nRead[0]);
    return 1;
}

std::size_t FormatCrdNumbers(const int32_t* pnWords, const char* pszLayout, char* pszOut)
{
    std::size_t nLen = 0;
    pszOut[0] = 0;
    for (std::size_t n = 0; pszLayout[n]; ++n) {
        if (n) pszOut[nLen++] = ' ';
        nLen += pszLayout[n] == 'r'
                    ? FormatUnsigned(static_cast<uint32_t>(pnWords[n]), pszOut + nLen,
                                     CRD_TEXT_SIZE - nLen)
                    : FormatDecimal(pnWords[n], pszOut + nLen, CRD_TEXT_SIZE - nLen);
    }
    return nLen;
}

CrdShifts ShiftsBetween(const RECT& rcOld, const RECT& rcNew)
{
    const int32_t nOldW = WrapAbs(WidthOf(rcOld));
    const int32_t nOldH = WrapAbs(HeightOf(rcOld));
    const int32_t nNewW = WrapAbs(WidthOf(rcNew));
    const int32_t nNewH = WrapAbs(HeightOf(rcNew));
    return {WrapAdd(WrapSub(rcNew.left, rcOld.left), SizeShift(nOldW, nNewW)),
            WrapAdd(WrapSub(rcNew.top, rcOld.top), SizeShift(nOldH, nNewH)), !nOldW || !nNewW,
            !nOldH || !nNewH};
}

void ShiftCrdNumbers(int32_t* pnWords, const char* pszLayout, bool bBox, const CrdShifts& shifts)
{
    for (std::size_t n = 0; pszLayout[n]; ++n) {
        if (pszLayout[n] == 'x') pnWords[n] = WrapAdd(pnWords[n], shifts.nX);
        if (pszLayout[n] == 'y') pnWords[n] = WrapAdd(pnWords[n], shifts.nY);
    }
    if (bBox && shifts.bFlatX) pnWords[2] = pnWords[0];
    if (bBox && shifts.bFlatY) pnWords[3] = pnWords[1];
}
