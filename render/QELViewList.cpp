#include "render/QELViewList.h"

#include <cstdlib>

namespace {

constexpr uint32_t FIRST_BITS = 3;
constexpr uint32_t MOST_BITS = 24;
constexpr uint32_t SPREAD = 2654435761U; // spreads ids that follow each other over all cells

} // namespace

CQELViewList::Cell& CQELViewList::CellOf(uint32_t nKey) const
{
    return m_pCells[(nKey * SPREAD) >> (32 - m_nBits)];
}

CQELViewElm* CQELViewList::Find(uint32_t nKey) const
{
    if (!m_pCells) return nullptr;
    const Cell& cell = CellOf(nKey);
    if (!cell.pFirst || cell.nFirstKey == nKey) return cell.pFirstElm;
    const ViewListNode* pNode = cell.pFirst->pNextInCell;
    while (pNode && pNode->nKey != nKey) pNode = pNode->pNextInCell;
    return pNode ? pNode->pElm : nullptr;
}

// Twice the cells. Without memory the cells stay as they are, and only the chains grow longer; a
// list without cells cannot do without.
int CQELViewList::Grow()
{
    const uint32_t nBits = m_pCells ? m_nBits + 1 : FIRST_BITS;
    if (nBits > MOST_BITS) return 1;
    auto* pCells = static_cast<Cell*>(std::calloc(std::size_t{1} << nBits, sizeof(Cell)));
    if (!pCells) return m_pCells ? 1 : 0;
    std::free(m_pCells);
    m_pCells = pCells;
    m_nBits = nBits;
    for (ViewListNode* pNode = m_pFirst; pNode; pNode = pNode->pNext) LinkInCell(pNode);
    return 1;
}

// Among its equals a node stands by the order of registration. A new one is the last, so the search
// goes from the end.
void CQELViewList::LinkInCell(ViewListNode* pNode)
{
    Cell& cell = CellOf(pNode->nKey);
    ViewListNode* pBefore = cell.pLast;
    while (pBefore && pBefore->nOrder > pNode->nOrder) pBefore = pBefore->pPrevInCell;
    pNode->pPrevInCell = pBefore;
    pNode->pNextInCell = pBefore ? pBefore->pNextInCell : cell.pFirst;
    if (pBefore)
        pBefore->pNextInCell = pNode;
    else
        cell.SetFirst(pNode);
    (pNode->pNextInCell ? pNode->pNextInCell->pPrevInCell : cell.pLast) = pNode;
}

void CQELViewList::UnlinkFromCell(ViewListNode* pNode)
{
    Cell& cell = CellOf(pNode->nKey);
    if (pNode->pPrevInCell)
        pNode->pPrevInCell->pNextInCell = pNode->pNextInCell;
    else
        cell.SetFirst(pNode->pNextInCell);
    (pNode->pNextInCell ? pNode->pNextInCell->pPrevInCell : cell.pLast) = pNode->pPrevInCell;
}

int CQELViewList::Append(ViewListNode** ppPlace, CQELViewElm* pElm, uint32_t nKey)
{
    if (*ppPlace) return 0;
    if ((!m_pCells || m_nCount >= 1U << m_nBits) && !Grow()) return 0;
    auto* pNode = new (std::nothrow)
        ViewListNode{pElm, nKey, m_nNextOrder++, nullptr, m_pLast, nullptr, nullptr};
    if (!pNode) return 0;
    (m_pLast ? m_pLast->pNext : m_pFirst) = pNode;
    m_pLast = pNode;
    LinkInCell(pNode);
    ++m_nCount;
    *ppPlace = pNode;
    return 1;
}

int CQELViewList::Remove(ViewListNode** ppPlace)
{
    ViewListNode* pNode = *ppPlace;
    if (!pNode) return 0;
    UnlinkFromCell(pNode);
    (pNode->pPrev ? pNode->pPrev->pNext : m_pFirst) = pNode->pNext;
    (pNode->pNext ? pNode->pNext->pPrev : m_pLast) = pNode->pPrev;
    --m_nCount;
    delete pNode;
    *ppPlace = nullptr;
    return 1;
}

void CQELViewList::SetKey(ViewListNode* pNode, uint32_t nKey)
{
    if (pNode->nKey == nKey) return;
    UnlinkFromCell(pNode);
    pNode->nKey = nKey;
    LinkInCell(pNode);
}

void CQELViewList::Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags) const
{
    for (const ViewListNode* pNode = m_pFirst; pNode; pNode = pNode->pNext)
        if (!pNode->pElm->IsHidden()) pNode->pElm->Show(hdc, rcQel, nFlags);
}

void CQELViewList::Clear()
{
    while (m_pFirst) {
        ViewListNode* pNode = m_pFirst;
        m_pFirst = pNode->pNext;
        delete pNode;
    }
    m_pLast = nullptr;
    std::free(m_pCells);
    m_pCells = nullptr;
    m_nCount = 0;
}
