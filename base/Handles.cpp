// The table of live handles: buckets of entries that are chained through the objects themselves, so
// that making a handle needs no memory of its own.
#include "base/Handles.h"

#include <cstddef>
#include <cstdlib>

namespace {

constexpr std::size_t FIRST_BUCKETS = 64;
constexpr std::size_t MAX_SPARE = 64;
constexpr uintptr_t FIRST_VALUE = 0x10000; // clear of the small numbers that hosts pass by mistake

} // namespace

class CHandleTable {
public:
    void Insert(HandleLink* pLink)
    {
        if (m_nCount >= m_nBuckets) Grow();
        HandleLink** ppBucket = Bucket(pLink->nNumber);
        pLink->pNext = *ppBucket;
        *ppBucket = pLink;
        ++m_nCount;
    }

    void Remove(HandleLink* pLink)
    {
        HandleLink** ppLink = Bucket(pLink->nNumber);
        while (*ppLink != pLink) ppLink = &(*ppLink)->pNext;
        *ppLink = pLink->pNext;
        if (--m_nCount == 0) DropBuckets();
    }

    HandleLink* Find(uintptr_t nValue)
    {
        HandleLink* pLink = *Bucket(nValue);
        while (pLink && pLink->nNumber != nValue) pLink = pLink->pNext;
        return pLink;
    }

private:
    HandleLink** Bucket(uintptr_t nValue) { return &m_ppBuckets[nValue & (m_nBuckets - 1)]; }

    // Numbers follow each other, so their low bits spread them evenly. Without memory to grow, the
    // chains only get longer.
    void Grow()
    {
        const std::size_t nBuckets = m_nBuckets * 2;
        auto** ppNew = static_cast<HandleLink**>(std::calloc(nBuckets, sizeof(HandleLink*)));
        if (!ppNew) return;
        for (std::size_t i = 0; i < m_nBuckets; ++i) {
            for (HandleLink* pLink = m_ppBuckets[i]; pLink;) {
                HandleLink* pNext = pLink->pNext;
                HandleLink** ppBucket = &ppNew[pLink->nNumber & (nBuckets - 1)];
                pLink->pNext = *ppBucket;
                *ppBucket = pLink;
                pLink = pNext;
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

    HandleLink* m_first[FIRST_BUCKETS] = {};
    HandleLink** m_ppBuckets = m_first;
    std::size_t m_nBuckets = FIRST_BUCKETS;
    std::size_t m_nCount = 0;
};

// The numbers that are given out, to handles of all tables.
class CHandleNumbers {
public:
    uintptr_t New() { return m_nNext ? m_nNext++ : 0; } // wraps to 0 when all are used up
    uintptr_t Spare() { return m_nSpare ? m_spare[--m_nSpare] : New(); }
    void KeepSpare(uintptr_t nNumber)
    {
        if (m_nSpare < MAX_SPARE) m_spare[m_nSpare++] = nNumber;
    }

private:
    std::size_t m_nSpare = 0;
    uintptr_t m_spare[MAX_SPARE] = {};
    uintptr_t m_nNext = FIRST_VALUE;
};

namespace {

// Ready before any constructor of the host runs.
constinit CHandleTable g_handles;
constinit CHandleTable g_elements;
constinit CHandleNumbers g_numbers;

} // namespace

CHandleEntry::~CHandleEntry()
{
    if (!nNumber) return;
    g_handles.Remove(this);
    if (m_bPrivate) g_numbers.KeepSpare(nNumber);
}

uintptr_t CHandleEntry::Value()
{
    m_bPrivate = false;
    if (!nNumber) Link(g_numbers.New());
    return nNumber;
}

uintptr_t CHandleEntry::PrivateValue()
{
    if (nNumber) return nNumber;
    Link(g_numbers.Spare());
    m_bPrivate = nNumber != 0;
    return nNumber;
}

void CHandleEntry::Link(uintptr_t nValue)
{
    nNumber = nValue;
    if (nValue) g_handles.Insert(this);
}

void* CHandleEntry::Find(HandleKind nKind, uintptr_t nValue)
{
    const auto* pEntry = nValue ? static_cast<CHandleEntry*>(g_handles.Find(nValue)) : nullptr;
    return pEntry && pEntry->m_nKind == nKind ? pEntry->m_pObject : nullptr;
}

CElementHandle::~CElementHandle()
{
    if (nNumber) g_elements.Remove(this);
}

uintptr_t CElementHandle::HandleValue()
{
    if (nNumber) return nNumber;
    nNumber = g_numbers.New();
    if (nNumber) g_elements.Insert(this);
    return nNumber;
}

CElementHandle* CElementHandle::FindHandle(uintptr_t nValue)
{
    return nValue ? static_cast<CElementHandle*>(g_elements.Find(nValue)) : nullptr;
}
