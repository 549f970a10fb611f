// Blocks by size; see the header.
#include "engine/Pool.h"

#include <cstring>

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
