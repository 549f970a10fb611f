// Small blocks of memory for what is read from a file, which is made and lost together: a block
// costs no bookkeeping of its own, and one that is given back serves the next request of its size,
// but the memory goes back only when the pool is cleared. What edits make comes and goes, and is on
// the heap.
#pragma once

#include "base/Arena.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

class CPool {
public:
    // With the size 0 every block is one of the heap, so that a checker of memory sees its life.
    explicit CPool(std::size_t nFirstChunk = ARENA_CHUNK) noexcept
        : m_arena(nFirstChunk), m_bHeap(nFirstChunk == 0)
    {
    }
    CPool(const CPool&) = delete;
    CPool& operator=(const CPool&) = delete;

    void* Take(std::size_t nSize); // null when memory fails; not zeroed
    void Give(void* p, std::size_t nSize);
    void Clear(); // when all blocks were given back
    // An arena's memory for blocks to come, until FreeSpare gives back what is left of it.
    void TakeOver(CArena& other) { m_arena.TakeOver(other); }
    void FreeSpare() { m_arena.FreeSpare(); }

private:
    struct Free {
        Free* pNext;
    };

    static constexpr std::size_t UNIT = sizeof(void*);
    static constexpr std::size_t LARGEST = 64 * UNIT; // what is larger is a block of the heap

    CArena m_arena;
    bool m_bHeap;
    Free* m_pFree[LARGEST / UNIT + 1] = {};
};

inline void* CPool::Take(std::size_t nSize)
{
    if (m_bHeap || nSize > LARGEST) return std::malloc(nSize);
    const std::size_t nUnits = (nSize + UNIT - 1) / UNIT;
    Free* pFree = m_pFree[nUnits];
    if (!pFree) return m_arena.TakeUnits(nUnits * UNIT);
    m_pFree[nUnits] = pFree->pNext;
    return pFree;
}

inline void CPool::Give(void* p, std::size_t nSize)
{
    if (m_bHeap || nSize > LARGEST) {
        std::free(p);
        return;
    }
    const std::size_t nUnits = (nSize + UNIT - 1) / UNIT;
    m_pFree[nUnits] = new (p) Free{m_pFree[nUnits]};
}

// A block of a pool or, without one, of the heap.
inline void* TakeBlock(CPool* pPool, std::size_t nSize)
{
    return pPool ? pPool->Take(nSize) : std::malloc(nSize);
}

inline void GiveBlock(CPool* pPool, void* p, std::size_t nSize)
{
    if (pPool && p)
        pPool->Give(p, nSize);
    else
        std::free(p);
}

// A text in a block of its own, of one of few sizes: a text that changes all the time finds a block
// that one of another length has left. Null when it is empty or memory fails.
char* TakePoolText(CPool* pPool, const char* pText, std::size_t nLen);
void GivePoolText(CPool* pPool, char* pszText);
// A copy of a text takes the place of the one that stood there, of which it may be a part. 0
// without memory: the old one stays.
int ReplacePoolText(CPool* pPool, char** ppszText, const char* pText, std::size_t nLen);

// The base of classes whose objects lie in a pool: new (pPool) T(…, pPool), and delete as always.
// Objects on the stack or of a plain new have none. T is the class at the top, whose destructor is
// virtual.
template <class T>
class CPooled {
public:
    // NOLINTBEGIN(cert-dcl54-cpp,misc-new-delete-overloads): the class at the top has the delete
    static void* operator new(std::size_t nSize, CPool* pPool) noexcept
    {
        return TakeBlock(pPool, nSize);
    }
    static void* operator new(std::size_t nSize) noexcept { return std::malloc(nSize); }
    static void* operator new(std::size_t nSize, const std::nothrow_t&) noexcept
    {
        return std::malloc(nSize);
    }
    // NOLINTEND(cert-dcl54-cpp,misc-new-delete-overloads)
    [[nodiscard]] CPool* Pool() const { return m_pPool; }

protected:
    // What deletes an object of nSize bytes: the object is gone when its block is given back.
    static void DeletePooled(T* p, std::size_t nSize)
    {
        CPool* pPool = p->m_pPool;
        p->~T();
        GiveBlock(pPool, p, nSize);
    }

    // pPool: the one that the object was made in, null for the heap and for the stack.
    explicit CPooled(CPool* pPool) noexcept : m_pPool(pPool) {}
    ~CPooled() = default;

private:
    CPool* m_pPool;
};
