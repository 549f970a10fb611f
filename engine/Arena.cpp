// Memory in chunks; see the header.
#include "engine/Arena.h"

#include <cstdlib>

namespace {

constexpr std::size_t ALIGNMENT = alignof(void*) < 8 ? 4 : 8;
constexpr std::size_t HEAD = 2 * ALIGNMENT; // a chunk's own record
constexpr std::size_t LAST_CHUNK = std::size_t{1} << 18;

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
    const std::size_t nChunk = bOwn ? nSize : m_nNextChunk;
    auto* pChunk = static_cast<Chunk*>(std::malloc(HEAD + nChunk));
    if (!pChunk) return nullptr;
    pChunk->pNext = m_pChunks;
    m_pChunks = pChunk;
    char* p = reinterpret_cast<char*>(pChunk) + HEAD;
    if (bOwn) return p;
    m_pFree = p + nSize;
    m_nFree = nChunk - nSize;
    if (m_nNextChunk < LAST_CHUNK) m_nNextChunk *= 2;
    return p;
}

void CArena::Clear()
{
    while (Chunk* pChunk = m_pChunks) {
        m_pChunks = pChunk->pNext;
        std::free(pChunk);
    }
    m_pFree = nullptr;
    m_nFree = 0;
    m_nNextChunk = m_nFirstChunk;
}
