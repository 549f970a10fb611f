#include "bench/Memory.h"

#include "tools/ImportTable.h"

namespace {

long g_nCount = 0;
int g_nPatched = 0;

using Malloc = void*(__cdecl*)(std::size_t);
using Calloc = void*(__cdecl*)(std::size_t, std::size_t);
using Realloc = void*(__cdecl*)(void*, std::size_t);
Malloc g_pfnMalloc = nullptr;
Calloc g_pfnCalloc = nullptr;
Realloc g_pfnRealloc = nullptr;

void* __cdecl CountedMalloc(std::size_t nSize)
{
    ++g_nCount;
    return g_pfnMalloc(nSize);
}

void* __cdecl CountedCalloc(std::size_t nCount, std::size_t nSize)
{
    ++g_nCount;
    return g_pfnCalloc(nCount, nSize);
}

void* __cdecl CountedRealloc(void* p, std::size_t nSize)
{
    ++g_nCount;
    return g_pfnRealloc(p, nSize);
}

// Replaces an imported function of a module by another one and tells the first; null when the
// module does not import it.
void* Patch(HMODULE hModule, const char* pszName, void* pNew)
{
    ULONG_PTR* pEntry = FindImport(hModule, pszName);
    if (!pEntry) return nullptr;
    auto* pOld = reinterpret_cast<void*>(*pEntry); // NOLINT(performance-no-int-to-ptr): an address
    if (!SetImport(pEntry, reinterpret_cast<ULONG_PTR>(pNew))) return nullptr;
    ++g_nPatched;
    return pOld;
}

} // namespace

std::size_t BytesHeld()
{
    HANDLE heaps[64];
    const DWORD nHeaps = ::GetProcessHeaps(64, heaps);
    std::size_t nBytes = 0;
    for (DWORD n = 0; n < nHeaps; ++n) {
        PROCESS_HEAP_ENTRY entry{};
        while (::HeapWalk(heaps[n], &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) nBytes += entry.cbData + entry.cbOverhead;
    }
    return nBytes;
}

CAllocationCount::CAllocationCount(const char* pszModule) : m_hModule(::GetModuleHandleA(pszModule))
{
    g_nCount = 0;
    g_nPatched = 0;
    g_pfnMalloc = reinterpret_cast<Malloc>(
        Patch(m_hModule, "malloc", reinterpret_cast<void*>(&CountedMalloc)));
    g_pfnCalloc = reinterpret_cast<Calloc>(
        Patch(m_hModule, "calloc", reinterpret_cast<void*>(&CountedCalloc)));
    g_pfnRealloc = reinterpret_cast<Realloc>(
        Patch(m_hModule, "realloc", reinterpret_cast<void*>(&CountedRealloc)));
}

CAllocationCount::~CAllocationCount()
{
    if (g_pfnMalloc) Patch(m_hModule, "malloc", reinterpret_cast<void*>(g_pfnMalloc));
    if (g_pfnCalloc) Patch(m_hModule, "calloc", reinterpret_cast<void*>(g_pfnCalloc));
    if (g_pfnRealloc) Patch(m_hModule, "realloc", reinterpret_cast<void*>(g_pfnRealloc));
}

long CAllocationCount::Count() const
{
    return g_nCount;
}

bool CAllocationCount::IsPatched()
{
    return g_nPatched == 3;
}
