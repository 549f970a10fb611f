// Memory that is taken piece by piece and given back all at once, for what is made and lost
// together: a piece costs a few instructions and no bookkeeping of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>

// The size of an arena's first chunk; each is twice as large as the one before, up to 64 KB.
// With 0 every piece is a chunk of its own, so that a checker of memory sees the ends of each.
#ifdef QEL_SEPARATE_BLOCKS
constexpr std::size_t ARENA_CHUNK = 0;
#else
constexpr std::size_t ARENA_CHUNK = 4096;
#endif

class CArena {
public:
    explicit CArena(std::size_t nFirstChunk = ARENA_CHUNK) noexcept
        : m_nFirstChunk(nFirstChunk), m_nNextChunk(nFirstChunk)
    {
    }
    ~CArena() { Clear(); }
    CArena(const CArena&) = delete;
    CArena& operator=(const CArena&) = delete;

    // Zeroed memory, aligned for pointers and numbers; null when memory fails.
    void* Take(std::size_t nSize)
    {
        char* p = TakeUnits(nSize);
        if (p) std::memset(p, 0, nSize);
        return p;
    }
    template <class T>
    T* Take() // a plain record of zeros
    {
        static_assert(alignof(T) <= alignof(void*));
        char* p = TakeUnits(sizeof(T));
        return p ? new (p) T{} : nullptr;
    }
    // A copy of a text with a zero at its end; null when memory fails.
    char* TakeText(const char* pText, std::size_t nLen);
    // Memory that is not zeroed, without alignment and with that of a pointer; null when memory
    // fails.
    char* TakeBytes(std::size_t nSize) { return TakeAligned(nSize, 1); }
    char* TakeUnits(std::size_t nSize) { return TakeAligned(nSize, alignof(void*)); }

    void Clear(); // gives all pieces back
    // Takes over the memory of another arena, whose pieces are lost, for pieces to come: memory
    // that was in use is had for less than new memory. FreeSpare gives back what was not used.
    void TakeOver(CArena& other);
    void FreeSpare();

private:
    struct Chunk {
        Chunk* pNext;
        std::size_t nSize; // what it holds
    };

    char* TakeAligned(std::size_t nSize, std::size_t nAlign)
    {
        const std::size_t nPad = (0 - reinterpret_cast<uintptr_t>(m_pFree)) & (nAlign - 1);
        if (nSize > m_nFree || nPad > m_nFree - nSize) return NewChunk(nSize);
        char* p = m_pFree + nPad;
        m_pFree = p + nSize;
        m_nFree -= nPad + nSize;
        return p;
    }
    char* NewChunk(std::size_t nSize);
    void TakeChunks(Chunk** ppChunks);
    static void FreeAll(Chunk** ppChunks);

    Chunk* m_pChunks = nullptr;
    Chunk* m_pSpare = nullptr; // taken over and not in use yet
    char* m_pFree = nullptr;   // what is left of the chunk in use
    std::size_t m_nFree = 0;
    std::size_t m_nFirstChunk;
    std::size_t m_nNextChunk;
};

// Records of one kind in an arena; one that is given back is the next to be taken.
template <class T>
class CRecords {
public:
    T* Take(CArena& arena) // of zeros; null when memory fails
    {
        if (!m_pFree) return arena.Take<T>();
        void* p = m_pFree;
        m_pFree = m_pFree->pNext;
        return new (p) T{};
    }
    void Give(T* p) { m_pFree = new (static_cast<void*>(p)) Free{m_pFree}; }

private:
    struct Free {
        Free* pNext;
    };
    static_assert(sizeof(T) >= sizeof(Free));

    Free* m_pFree = nullptr;
};
