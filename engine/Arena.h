// Memory that is taken piece by piece and given back all at once, for what is made and lost
// together: a piece costs a few instructions and no bookkeeping of its own.
#pragma once

#include <cstddef>

// The size of an arena's first chunk; each is twice as large as the one before, up to a megabyte.
// With 0 every piece is a chunk of its own, so that a checker of memory sees the ends of each.
#ifdef QEL_SEPARATE_BLOCKS
constexpr std::size_t ARENA_CHUNK = 0;
#else
constexpr std::size_t ARENA_CHUNK = 4096;
#endif

class CArena {
public:
    explicit CArena(std::size_t nFirstChunk = ARENA_CHUNK) noexcept : m_nNextChunk(nFirstChunk) {}
    ~CArena() { Clear(); }
    CArena(const CArena&) = delete;
    CArena& operator=(const CArena&) = delete;

    // Zeroed memory, aligned for pointers and numbers; null when memory fails.
    void* Take(std::size_t nSize);
    template <class T>
    T* Take()
    {
        return static_cast<T*>(Take(sizeof(T)));
    }
    // A copy of a text with a zero at its end; null when memory fails.
    char* TakeText(const char* pText, std::size_t nLen);
    // Memory that is neither zeroed nor aligned; null when memory fails.
    char* TakeBytes(std::size_t nSize) { return TakeAligned(nSize, 1); }

    void Clear(); // gives all pieces back

private:
    struct Chunk {
        Chunk* pNext;
    };

    char* TakeAligned(std::size_t nSize, std::size_t nAlign);
    char* NewChunk(std::size_t nSize);

    Chunk* m_pChunks = nullptr;
    char* m_pFree = nullptr; // what is left of the chunk in use
    std::size_t m_nFree = 0;
    std::size_t m_nNextChunk;
};
