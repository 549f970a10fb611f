// A list of dynamic elements in the order in which they were registered, with an index by the id
// that the host addresses them by: finding one costs the same among ten thousand as alone.
#pragma once

#include "render/QELViewElm.h"

// A place in a list. It stands in two chains: the list's own and that of its index cell, both in
// the order of registration.
struct ViewListNode {
    CQELViewElm* pElm;
    uint32_t nKey;
    uint64_t nOrder;
    ViewListNode* pNext;
    ViewListNode* pPrev;
    ViewListNode* pNextInCell;
    ViewListNode* pPrevInCell;
};

// It owns its nodes, not the elements.
class CQELViewList {
public:
    CQELViewList() = default;
    ~CQELViewList() { Clear(); }
    CQELViewList(const CQELViewList&) = delete;
    CQELViewList& operator=(const CQELViewList&) = delete;

    [[nodiscard]] const ViewListNode* First() const { return m_pFirst; }
    [[nodiscard]] CQELViewElm* Find(uint32_t nKey) const; // the first of that key, or null
    // 0 when the element has a place already, and without memory.
    int Append(ViewListNode** ppPlace, CQELViewElm* pElm, uint32_t nKey);
    int Remove(ViewListNode** ppPlace); // 0 when it has none
    void SetKey(ViewListNode* pNode, uint32_t nKey);
    void Clear();
    void Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags) const; // each, in list order

private:
    struct Cell {
        ViewListNode* pFirst;
        ViewListNode* pLast;
        CQELViewElm* pFirstElm; // those of the first, so that most searches end here
        uint32_t nFirstKey;

        void SetFirst(ViewListNode* pNode)
        {
            pFirst = pNode;
            pFirstElm = pNode ? pNode->pElm : nullptr;
            nFirstKey = pNode ? pNode->nKey : 0;
        }
    };
    [[nodiscard]] Cell& CellOf(uint32_t nKey) const;
    int Grow();
    void LinkInCell(ViewListNode* pNode);
    void UnlinkFromCell(ViewListNode* pNode);

    ViewListNode* m_pFirst = nullptr;
    ViewListNode* m_pLast = nullptr;
    Cell* m_pCells = nullptr; // 2 to the power m_nBits of them; null while the list is empty
    uint32_t m_nBits = 0;
    uint32_t m_nCount = 0;
    uint64_t m_nNextOrder = 0;
};
