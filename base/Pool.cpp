#include "base/Pool.h"

#include <cstring>

void CPool::Clear()
{
    for (Free*& pFree : m_pFree) pFree = nullptr;
    m_arena.Clear();
}

namespace {

// Of the block of a text, by the size of the text with its zero.
std::size_t TextBlock(std::size_t nSize)
{
    constexpr std::size_t STEP = 32;
    return nSize <= STEP / 2 ? nSize : (nSize + STEP - 1) / STEP * STEP;
}

} // namespace

char* TakePoolText(CPool* pPool, const char* pText, std::size_t nLen)
{
    if (!nLen) return nullptr;
    auto* pszCopy = static_cast<char*>(TakeBlock(pPool, TextBlock(nLen + 1)));
    if (!pszCopy) return nullptr;
    std::memcpy(pszCopy, pText, nLen);
    pszCopy[nLen] = 0;
    return pszCopy;
}

void GivePoolText(CPool* pPool, char* pszText)
{
    if (pszText) GiveBlock(pPool, pszText, TextBlock(std::strlen(pszText) + 1));
}

int ReplacePoolText(CPool* pPool, char** ppszText, const char* pText, std::size_t nLen)
{
    char* pszNew = TakePoolText(pPool, pText, nLen);
    if (nLen && !pszNew) return 0;
    GivePoolText(pPool, *ppszText);
    *ppszText = pszNew;
    return 1;
}
