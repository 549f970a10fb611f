// The table in which a loaded module has the addresses of the functions that it imports, for what
// puts others in their place: a fixed time for clocks, failing calls in tests, counted ones in
// measurements.
#pragma once

#include <windows.h>

#include <cstring>

// The entry of a function that the module imports by name, null when it does not.
inline ULONG_PTR* FindImport(HMODULE hModule, const char* pszName)
{
    auto* const pBase = reinterpret_cast<BYTE*>(hModule);
    const auto* pDos = reinterpret_cast<const IMAGE_DOS_HEADER*>(pBase);
    const auto* pNt = reinterpret_cast<const IMAGE_NT_HEADERS*>(pBase + pDos->e_lfanew);
    const DWORD nTable =
        pNt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    if (!nTable) return nullptr;
    const auto* pDll = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(pBase + nTable);
    for (; pDll->Name; ++pDll) {
        const auto* pNames = reinterpret_cast<IMAGE_THUNK_DATA*>(pBase + pDll->OriginalFirstThunk);
        auto* pEntries = reinterpret_cast<IMAGE_THUNK_DATA*>(pBase + pDll->FirstThunk);
        for (; pNames->u1.AddressOfData; ++pNames, ++pEntries) {
            if (IMAGE_SNAP_BY_ORDINAL(pNames->u1.Ordinal)) continue;
            const auto* pImport =
                reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(pBase + pNames->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(pImport->Name), pszName) == 0)
                return reinterpret_cast<ULONG_PTR*>(&pEntries->u1.Function);
        }
    }
    return nullptr;
}

// Writes an address into an entry, which is not writable while the program runs. False: it stays.
inline bool SetImport(ULONG_PTR* pEntry, ULONG_PTR nAddress)
{
    DWORD nProtection = 0;
    if (!::VirtualProtect(pEntry, sizeof *pEntry, PAGE_READWRITE, &nProtection)) return false;
    *pEntry = nAddress;
    ::VirtualProtect(pEntry, sizeof *pEntry, nProtection, &nProtection);
    return true;
}
