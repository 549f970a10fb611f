#include "document/Geometry.h"

int CGeometry::SetMore(CPool* pPool, const int32_t* pnWords, int32_t nCount, int32_t nLeast)
{
    int32_t nHeld = nCount > nLeast ? nCount : nLeast;
    if (nHeld < HERE) nHeld = HERE;
    if (nHeld != m_nCount) {
        int32_t* pnMore = nullptr;
        if (nHeld > HERE) {
            pnMore = static_cast<int32_t*>(
                TakeBlock(pPool, static_cast<std::size_t>(nHeld) * sizeof(int32_t)));
            if (!pnMore) return 0;
        }
        Drop(pPool);
        if (pnMore) std::memcpy(m_nHere, &pnMore, sizeof pnMore);
        m_nCount = static_cast<uint8_t>(nHeld);
    }
    int32_t* pnOwn = Words();
    for (int32_t n = 0; n < nHeld; ++n) pnOwn[n] = n < nCount ? pnWords[n] : 0;
    return 1;
}

void CGeometry::Drop(CPool* pPool)
{
    if (m_nCount > HERE) GiveBlock(pPool, More(), m_nCount * sizeof(int32_t));
    m_nCount = HERE;
    for (int32_t& n : m_nHere) n = 0;
}

int32_t UsedWords(const int32_t (&nWords)[QEL_SHAPE_WORDS], int32_t nType)
{
    const int32_t nLeast = ShapeWordsOf(nType, nWords[0]);
    int32_t nUsed = QEL_SHAPE_WORDS;
    while (nUsed > nLeast && !nWords[nUsed - 1]) --nUsed;
    return nUsed;
}
