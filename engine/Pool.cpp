// Blocks by size; see the header.
#include "engine/Pool.h"

#include <cstring>

void* CPool::Take(std::size_t nSize)
{
    if (m_bHeap || nSize > LARGEST) return std::malloc(nSize);
    const std::size_t nUnits = (nSize + UNIT - 1) / UNIT;
    Free* pFree = m_pFree[nUnits];
    if (!pFree) return m_arena.TakeUnits(nUnits * UNIT);
    m_pFree[nUnits] = pFree->pNext;
    return pFree;
}

void CPool::Give(void* p, std::size_t nSize)
{
    if (m_bHeap || nSize > LARGEST) {
        std::free(p);
        return;
    }
    const std::size_t nUnits = (nSize + UNIT - 1) / UNIT;
    m_pFree[nUnits] = new (p) Free{m_pFree[nUnits]};
}

void CPool::Clear()
{
    for (Free*& pFree : m_pFree) pFree = nullptr;
    m_arena.Clear();
}

char* TakePoolText(CPool* pPool, const char* pText, std::size_t nLen)
{
    if (!nLen) return nullptr;
    auto* pszCopy = static_cast<char*>(TakeBlock(pPool, nLen + 1));
    if (!pszCopy) return nullptr;
    std::memcpy(pszCopy, pText, nLen);
    pszCopy[nLen] = 0;
    return pszCopy;
}

void GivePoolText(CPool* pPool, char* pszText)
{
    if (pszText) GiveBlock(pPool, pszText, std::strlen(pszText) + 1);
}
