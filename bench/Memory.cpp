// Memory by the system's own records; see the header.
#include "bench/Memory.h"

#include <cstring>

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

// Replaces an imported function of a module by another one and tells the first.
void* Patch(HMODULE hModule, const char* pszName, void* pNew)
{
    auto* pBase = reinterpret_cast<unsigned char*>(hModule);
    const auto* pDos = reinterpret_cast<const IMAGE_DOS_HEADER*>(pBase);
    const auto* pNt = reinterpret_cast<const IMAGE_NT_HEADERS*>(pBase + pDos->e_lfanew);
    const auto& directory = pNt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* pImport =
             reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(pBase + directory.VirtualAddress);
         pImport->Name; ++pImport) {
        auto* pName = reinterpret_cast<IMAGE_THUNK_DATA*>(pBase + pImport->OriginalFirstThunk);
        auto* pCall = reinterpret_cast<IMAGE_THUNK_DATA*>(pBase + pImport->FirstThunk);
        for (; pName->u1.AddressOfData; ++pName, ++pCall) {
            if (IMAGE_SNAP_BY_ORDINAL(pName->u1.Ordinal)) continue;
            const auto* pBy =
                reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(pBase + pName->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(pBy->Name), pszName) != 0) continue;
            DWORD nOld = 0;
            ::VirtualProtect(pCall, sizeof *pCall, PAGE_READWRITE, &nOld);
            auto* pOld = reinterpret_cast<void*>(pCall->u1.Function);
            pCall->u1.Function = reinterpret_cast<ULONG_PTR>(pNew);
            ::VirtualProtect(pCall, sizeof *pCall, nOld, &nOld);
            ++g_nPatched;
            return pOld;
        }
    }
    return nullptr;
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
