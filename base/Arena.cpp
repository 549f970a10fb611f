#include "base/Arena.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr std::size_t ALIGNMENT = alignof(void*) < 8 ? 4 : 8;
constexpr std::size_t HEAD = 2 * ALIGNMENT; // a chunk's own record
constexpr std::size_t LAST_CHUNK = std::size_t{1} << 16;

} // namespace

char* CArena::TakeText(const char* pText, std::size_t nLen)
{
    if (nLen == SIZE_MAX) return nullptr;
    char* pszCopy = TakeBytes(nLen + 1);
    if (!pszCopy) return nullptr;
    std::memcpy(pszCopy, pText, nLen);
    pszCopy[nLen] = 0;
    return pszCopy;
}

// A piece that is large beside the chunks gets its own, and what is left of the last one stays in
// use.
char* CArena::NewChunk(std::size_t nSize)
{
    if (nSize > SIZE_MAX / 2) return nullptr;
    const bool bOwn = nSize > m_nNextChunk / 4;
    Chunk* pChunk = nullptr;
    if (!bOwn && m_pSpare && m_pSpare->nSize >= nSize) {
        pChunk = m_pSpare;
        m_pSpare = pChunk->pNext;
    } else {
        const std::size_t nChunk = bOwn ? nSize : m_nNextChunk;
        pChunk = static_cast<Chunk*>(std::malloc(HEAD + nChunk));
        if (!pChunk) return nullptr;
        pChunk->nSize = nChunk;
        if (!bOwn) m_nNextChunk = std::min(2 * m_nNextChunk, LAST_CHUNK);
    }
    pChunk->pNext = m_pChunks;
    m_pChunks = pChunk;
    char* p = reinterpret_cast<char*>(pChunk) + HEAD;
    if (bOwn) return p;
    m_pFree = p + nSize;
    m_nFree = pChunk->nSize - nSize;
    return p;
}

void CArena::Clear()
{
    FreeAll(&m_pChunks);
    FreeSpare();
    m_pFree = nullptr;
    m_nFree = 0;
    m_nNextChunk = m_nFirstChunk;
}

void CArena::TakeOver(CArena& other)
{
    TakeChunks(&other.m_pChunks);
    TakeChunks(&other.m_pSpare);
    other.Clear();
}

void CArena::TakeChunks(Chunk** ppChunks)
{
    while (Chunk* pChunk = *ppChunks) {
        *ppChunks = pChunk->pNext;
        pChunk->pNext = m_pSpare;
        m_pSpare = pChunk;
    }
}

void CArena::FreeSpare()
{
    FreeAll(&m_pSpare);
}

void CArena::FreeAll(Chunk** ppChunks)
{
    while (Chunk* pChunk = *ppChunks) {
        *ppChunks = pChunk->pNext;
        std::free(pChunk);
    }
}
