// The tables of live handles: buckets of entries that are chained through the objects themselves,
// so that making a handle needs no memory of its own. One lock guards them and the numbers; the
// handles that every call looks up are found without it, in fixed places that no memory goes with.
#include "base/Handles.h"

#include "base/Lock.h"

#include <atomic>
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

// Places that are read without a lock, by the low bits of the number. A handle whose place is taken
// has none and is found in the table. What is written here is written under the lock.
class CHandlePlaces {
public:
    void Put(uintptr_t nNumber, HandleKind nKind, void* pObject)
    {
        Place& place = PlaceOf(nNumber);
        if (place.nNumber.load(std::memory_order_relaxed)) return;
        place.nObject.store(reinterpret_cast<uintptr_t>(pObject) | static_cast<uintptr_t>(nKind),
                            std::memory_order_release);
        place.nNumber.store(nNumber, std::memory_order_release);
    }

    void Remove(uintptr_t nNumber)
    {
        Place& place = PlaceOf(nNumber);
        if (place.nNumber.load(std::memory_order_relaxed) == nNumber)
            place.nNumber.store(0, std::memory_order_release);
    }

    // Whether the handle has a place; then *ppObject is its object, null for one of another kind.
    // The object is that of the number when the number still stands there after the object was
    // read.
    bool Find(HandleKind nKind, uintptr_t nNumber, void** ppObject)
    {
        Place& place = PlaceOf(nNumber);
        if (place.nNumber.load(std::memory_order_acquire) != nNumber) return false;
        const uintptr_t nObject = place.nObject.load(std::memory_order_acquire);
        if (place.nNumber.load(std::memory_order_acquire) != nNumber) return false;
        const bool bIsOfKind = (nObject & KIND_BITS) == static_cast<uintptr_t>(nKind);
        *ppObject = bIsOfKind ? ToHandle<void*>(nObject & ~KIND_BITS) : nullptr;
        return true;
    }

private:
    static constexpr std::size_t PLACES = 256;
    static constexpr uintptr_t KIND_BITS = 3; // objects are aligned to four bytes at least

    struct Place {
        std::atomic<uintptr_t> nNumber; // 0: nobody's
        std::atomic<uintptr_t> nObject; // with its kind
    };
    Place& PlaceOf(uintptr_t nNumber) { return m_places[nNumber % PLACES]; }

    Place m_places[PLACES] = {};
};

namespace {

// Ready before any constructor of the host runs.
constinit CLock g_lock;
constinit CHandleTable g_handles;
constinit CHandleTable g_elements;
constinit CHandleNumbers g_numbers;
constinit CHandlePlaces g_places;

} // namespace

CHandleEntry::~CHandleEntry()
{
    if (!nNumber) return;
    const CLockScope lock(g_lock);
    g_places.Remove(nNumber);
    g_handles.Remove(this);
    if (m_bPrivate) g_numbers.KeepSpare(nNumber);
}

uintptr_t CHandleEntry::Value()
{
    m_bPrivate = false;
    const CLockScope lock(g_lock);
    if (!nNumber) Link(g_numbers.New());
    return nNumber;
}

uintptr_t CHandleEntry::PrivateValue()
{
    if (nNumber) return nNumber;
    const CLockScope lock(g_lock);
    Link(g_numbers.Spare());
    m_bPrivate = nNumber != 0;
    return nNumber;
}

// Under the lock.
void CHandleEntry::Link(uintptr_t nValue)
{
    nNumber = nValue;
    if (!nValue) return;
    g_handles.Insert(this);
    g_places.Put(nValue, m_nKind, m_pObject);
}

void* CHandleEntry::Find(HandleKind nKind, uintptr_t nValue)
{
    void* pObject = nullptr;
    if (!nValue || g_places.Find(nKind, nValue, &pObject)) return pObject;
    const CSharedLockScope lock(g_lock);
    const auto* pEntry = static_cast<CHandleEntry*>(g_handles.Find(nValue));
    return pEntry && pEntry->m_nKind == nKind ? pEntry->m_pObject : nullptr;
}

CElementHandle::~CElementHandle()
{
    if (!nNumber) return;
    const CLockScope lock(g_lock);
    g_elements.Remove(this);
}

uintptr_t CElementHandle::HandleValue()
{
    if (nNumber) return nNumber;
    const CLockScope lock(g_lock);
    nNumber = g_numbers.New();
    if (nNumber) g_elements.Insert(this);
    return nNumber;
}

// The owner is asked under the lock: of an element of another engine its thread may be about to
// delete it.
CElementHandle* CElementHandle::FindHandle(uintptr_t nValue, Owns pfnOwns, const void* pOwner)
{
    if (!nValue) return nullptr;
    const CSharedLockScope lock(g_lock);
    auto* pHandle = static_cast<CElementHandle*>(g_elements.Find(nValue));
    return pHandle && pfnOwns && !pfnOwns(pHandle, pOwner) ? nullptr : pHandle;
}
