// A fixed time of day; see the header. What is exchanged are the entries of the table in which the
// loaded DLL has the addresses of the functions that it imports.
#include "tools/qel/FixedTime.h"

#include "tools/qel/Command.h"
#include "tools/qel/Text.h"

#include <cstring>

namespace {

SYSTEMTIME g_time;

void WINAPI GiveFixedTime(SYSTEMTIME* pTime)
{
    *pTime = g_time;
}

using TimeFunction = void(WINAPI*)(SYSTEMTIME*);

struct Exchange {
    const char* pszName;
    ULONG_PTR* pEntry;
    ULONG_PTR nOriginal;
};

Exchange g_exchanges[] = {{"GetLocalTime", nullptr, 0}, {"GetSystemTime", nullptr, 0}};

// The parts of a loaded module, by their distance from its beginning.
class CModule {
public:
    explicit CModule(HMODULE hModule) : m_pBase(reinterpret_cast<BYTE*>(hModule)) {}

    template <class T>
    [[nodiscard]] T* At(ULONG_PTR nDistance) const
    {
        return reinterpret_cast<T*>(m_pBase + nDistance);
    }

    [[nodiscard]] const IMAGE_IMPORT_DESCRIPTOR* Imports() const
    {
        const auto* pHeaders = At<IMAGE_NT_HEADERS>(At<IMAGE_DOS_HEADER>(0)->e_lfanew);
        const DWORD nTable =
            pHeaders->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
        return nTable ? At<IMAGE_IMPORT_DESCRIPTOR>(nTable) : nullptr;
    }

    // The entry with the address of a function, null when it is not imported by name.
    ULONG_PTR* Entry(const IMAGE_IMPORT_DESCRIPTOR& imports, const char* pszName) const
    {
        const auto* pNames = At<IMAGE_THUNK_DATA>(imports.OriginalFirstThunk);
        auto* pEntries = At<IMAGE_THUNK_DATA>(imports.FirstThunk);
        for (; pNames->u1.AddressOfData; ++pNames, ++pEntries) {
            if (IMAGE_SNAP_BY_ORDINAL(pNames->u1.Ordinal)) continue;
            const auto* pImport = At<IMAGE_IMPORT_BY_NAME>(pNames->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(pImport->Name), pszName) == 0)
                return reinterpret_cast<ULONG_PTR*>(&pEntries->u1.Function);
        }
        return nullptr;
    }

private:
    BYTE* m_pBase;
};

ULONG_PTR* FindEntry(const CModule& module, const char* pszName)
{
    const IMAGE_IMPORT_DESCRIPTOR* pImports = module.Imports();
    for (; pImports && pImports->Name; ++pImports) {
        if (_stricmp(module.At<const char>(pImports->Name), "KERNEL32.dll") != 0) continue;
        if (ULONG_PTR* pEntry = module.Entry(*pImports, pszName)) return pEntry;
    }
    return nullptr;
}

// The table is not writable while the program runs.
bool Write(ULONG_PTR* pEntry, ULONG_PTR nAddress)
{
    DWORD nProtection = 0;
    if (!::VirtualProtect(pEntry, sizeof *pEntry, PAGE_READWRITE, &nProtection)) return false;
    *pEntry = nAddress;
    ::VirtualProtect(pEntry, sizeof *pEntry, nProtection, &nProtection);
    return true;
}

void Restore()
{
    for (Exchange& exchange : g_exchanges) {
        if (exchange.pEntry) Write(exchange.pEntry, exchange.nOriginal);
        exchange.pEntry = nullptr;
    }
}

bool Install(const CModule& module, Exchange* pExchange)
{
    ULONG_PTR* pEntry = FindEntry(module, pExchange->pszName);
    if (!pEntry) return false;
    const ULONG_PTR nOriginal = *pEntry;
    const TimeFunction pfnGive = GiveFixedTime;
    if (!Write(pEntry, reinterpret_cast<ULONG_PTR>(pfnGive))) return false;
    pExchange->pEntry = pEntry;
    pExchange->nOriginal = nOriginal;
    return true;
}

// Two digits at a place, below a limit; -1 for anything else.
int TwoDigits(const std::wstring& text, std::size_t nAt, int nLimit)
{
    const auto digit = [&text](std::size_t n) {
        return text[n] >= L'0' && text[n] <= L'9' ? text[n] - L'0' : -1;
    };
    const int nTens = digit(nAt);
    const int nOnes = digit(nAt + 1);
    const int nValue = nTens * 10 + nOnes;
    return nTens >= 0 && nOnes >= 0 && nValue < nLimit ? nValue : -1;
}

} // namespace

SYSTEMTIME ReadTime(const std::wstring& text)
{
    constexpr std::size_t TIME_LENGTH = 8;
    if (text.size() == TIME_LENGTH && text[2] == L':' && text[5] == L':') {
        const int nHour = TwoDigits(text, 0, 24);
        const int nMinute = TwoDigits(text, 3, 60);
        const int nSecond = TwoDigits(text, 6, 60);
        // The day is of no account, but is to be one.
        if (nHour >= 0 && nMinute >= 0 && nSecond >= 0)
            return {2000,
                    1,
                    6,
                    1,
                    static_cast<WORD>(nHour),
                    static_cast<WORD>(nMinute),
                    static_cast<WORD>(nSecond),
                    0};
    }
    throw CTrouble("--time wants HH:MM:SS, 00:00:00 to 23:59:59, not '" + ToUtf8(text) + "'");
}

CFixedTime::CFixedTime(const SYSTEMTIME* pTime)
{
    if (!pTime) return;
    g_time = *pTime;
    const HMODULE hModule = ::GetModuleHandleW(L"QELEngine.dll");
    for (Exchange& exchange : g_exchanges) {
        if (hModule && Install(CModule(hModule), &exchange)) continue;
        Restore();
        throw CTrouble("--time: this engine takes its time in another way; it cannot be fixed");
    }
}

CFixedTime::~CFixedTime()
{
    Restore();
}
