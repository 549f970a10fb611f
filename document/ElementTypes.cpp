#include "document/ElementTypes.h"

#include "document/QELDocElm.h"

const ElementType* CElementTypes::Of(XmlNode* pNode) const
{
    if (pNode->pKnown) return static_cast<const ElementType*>(pNode->pKnown);
    const std::size_t nRow = m_index.Find(
        pNode->nKey, [&](std::size_t n) { return IsSameText(m_pRows[n].pszName, pNode->pszName); });
    if (nRow == NO_ROW) return nullptr;
    pNode->pKnown = &m_pRows[nRow];
    return &m_pRows[nRow];
}

CQELDocElm* CElementTypes::MakeDoc(int32_t nType, DocContext* pContext, CPool* pPool) const
{
    const ElementType* pRow = Row(nType);
    return pRow && pRow->pfnMakeDoc ? pRow->pfnMakeDoc(pContext, pPool) : nullptr;
}

CQELViewElm* CElementTypes::MakeView(int32_t nType, CPool* pPool, int32_t nRefW,
                                     int32_t nRefH) const
{
    const ElementType* pRow = Row(nType);
    return pRow && pRow->pfnMakeView ? pRow->pfnMakeView(pPool, nRefW, nRefH) : nullptr;
}
