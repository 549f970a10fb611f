// The table of live handles: buckets of entries that are chained through the objects themselves, so
// that making a handle needs no memory of its own.
#include "engine/Handles.h"

#include <cstddef>
#include <cstdlib>

namespace {

constexpr std::size_t FIRST_BUCKETS = 64;
constexpr std::size_t MAX_SPARE = 64;
constexpr uintptr_t FIRST_VALUE = 0x10000; // clear of the small numbers that hosts pass by mistake

} // namespace

class CHandleTable {
public:
    void Insert(CHandleEntry* pEntry)
    {
        if (m_nCount >= m_nBuckets) Grow();
        CHandleEntry** ppBucket = Bucket(pEntry->m_nValue);
        pEntry->m_pNext = *ppBucket;
        *ppBucket = pEntry;
        ++m_nCount;
    }

    void Remove(CHandleEntry* pEntry)
    {
        CHandleEntry** ppLink = Bucket(pEntry->m_nValue);
        while (*ppLink != pEntry) ppLink = &(*ppLink)->m_pNext;
        *ppLink = pEntry->m_pNext;
        if (--m_nCount == 0) DropBuckets();
        if (pEntry->m_bPrivate && m_nSpare < MAX_SPARE) m_spare[m_nSpare++] = pEntry->m_nValue;
    }

    CHandleEntry* Find(uintptr_t nValue)
    {
        CHandleEntry* pEntry = *Bucket(nValue);
        while (pEntry && pEntry->m_nValue != nValue) pEntry = pEntry->m_pNext;
        return pEntry;
    }

    uintptr_t NewValue() { return m_nNext ? m_nNext++ : 0; } // wraps to 0 when all are used up
    uintptr_t SpareValue() { return m_nSpare ? m_spare[--m_nSpare] : NewValue(); }

private:
    CHandleEntry** Bucket(uintptr_t nValue) { return &m_ppBuckets[nValue & (m_nBuckets - 1)]; }

    // Numbers follow each other, so their low bits spread them evenly. Without memory to grow, the
    // chains only get longer.
    void Grow()
    {
        const std::size_t nBuckets = m_nBuckets * 2;
        auto** ppNew = static_cast<CHandleEntry**>(std::calloc(nBuckets, sizeof(CHandleEntry*)));
        if (!ppNew) return;
        for (std::size_t i = 0; i < m_nBuckets; ++i) {
            for (CHandleEntry* pEntry = m_ppBuckets[i]; pEntry;) {
                CHandleEntry* pNext = pEntry->m_pNext;
                CHandleEntry** ppBucket = &ppNew[pEntry->m_nValue & (nBuckets - 1)];
                pEntry->m_pNext = *ppBucket;
                *ppBucket = pEntry;
                pEntry = pNext;
            }
            m_ppBuckets[i] = nullptr;
        }
        if (m_ppBuckets != m_first) std::free(m_ppBuckets);
        m_ppBuckets = ppNew;
        m_nBuckets = nBuckets;
    }

    // With the last handle gone nothing of the table is left on the heap.
    void DropBuckets()
    {
        if (m_ppBuckets == m_first) return;
        std::free(m_ppBuckets);
        m_ppBuckets = m_first;
        m_nBuckets = FIRST_BUCKETS;
    }

    CHandleEntry* m_first[FIRST_BUCKETS] = {};
    CHandleEntry** m_ppBuckets = m_first;
    std::size_t m_nBuckets = FIRST_BUCKETS;
    std::size_t m_nCount = 0;
    std::size_t m_nSpare = 0;
    uintptr_t m_spare[MAX_SPARE] = {};
    uintptr_t m_nNext = FIRST_VALUE;
};

namespace {

constinit CHandleTable g_handles; // ready before any constructor of the host runs

} // namespace

CHandleEntry::~CHandleEntry()
{
    if (m_nValue) g_handles.Remove(this);
}

uintptr_t CHandleEntry::Value()
{
    m_bPrivate = false;
    if (!m_nValue) Link(g_handles.NewValue());
    return m_nValue;
}

uintptr_t CHandleEntry::PrivateValue()
{
    if (m_nValue) return m_nValue;
    Link(g_handles.SpareValue());
    m_bPrivate = m_nValue != 0;
    return m_nValue;
}

void CHandleEntry::Link(uintptr_t nValue)
{
    m_nValue = nValue;
    if (nValue) g_handles.Insert(this);
}

void* CHandleEntry::Find(HandleKind nKind, uintptr_t nValue)
{
    const CHandleEntry* pEntry = nValue ? g_handles.Find(nValue) : nullptr;
    return pEntry && pEntry->m_nKind == nKind ? pEntry->m_pObject : nullptr;
}
