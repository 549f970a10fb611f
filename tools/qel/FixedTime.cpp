// A fixed time of day; see the header. What is exchanged are the entries of the table in which the
// loaded DLL has the addresses of the functions that it imports.
#include "tools/qel/FixedTime.h"

#include "tools/ImportTable.h"
#include "tools/qel/Command.h"
#include "tools/qel/Text.h"

namespace qel {

namespace {

constexpr int MINUTES = 60; // of an hour, and the seconds of a minute
constexpr int DAY = 24 * MINUTES * MINUTES;

SYSTEMTIME g_local;
SYSTEMTIME g_universal;

void WINAPI GiveLocalTime(SYSTEMTIME* pTime)
{
    *pTime = g_local;
}

void WINAPI GiveUniversalTime(SYSTEMTIME* pTime)
{
    *pTime = g_universal;
}

using TimeFunction = void(WINAPI*)(SYSTEMTIME*);

struct Exchange {
    const char* pszName;
    TimeFunction pfnGive;
    ULONG_PTR* pEntry;
    ULONG_PTR nOriginal;
};

Exchange g_exchanges[] = {{"GetLocalTime", GiveLocalTime, nullptr, 0},
                          {"GetSystemTime", GiveUniversalTime, nullptr, 0}};

void Restore()
{
    for (Exchange& exchange : g_exchanges) {
        if (exchange.pEntry) SetImport(exchange.pEntry, exchange.nOriginal);
        exchange.pEntry = nullptr;
    }
}

bool Install(HMODULE hModule, Exchange* pExchange)
{
    ULONG_PTR* pEntry = FindImport(hModule, pExchange->pszName);
    if (!pEntry) return false;
    const ULONG_PTR nOriginal = *pEntry;
    if (!SetImport(pEntry, reinterpret_cast<ULONG_PTR>(pExchange->pfnGive))) return false;
    pExchange->pEntry = pEntry;
    pExchange->nOriginal = nOriginal;
    return true;
}

int SecondOfDay(const SYSTEMTIME& time)
{
    return (time.wHour * MINUTES + time.wMinute) * MINUTES + time.wSecond;
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

SYSTEMTIME LaterTime(const SYSTEMTIME& time, int nSeconds)
{
    const int nSecond = (SecondOfDay(time) + nSeconds) % DAY;
    SYSTEMTIME later = time;
    later.wHour = static_cast<WORD>(nSecond / (MINUTES * MINUTES));
    later.wMinute = static_cast<WORD>(nSecond / MINUTES % MINUTES);
    later.wSecond = static_cast<WORD>(nSecond % MINUTES);
    return later;
}

int SecondsBetween(const SYSTEMTIME& first, const SYSTEMTIME& last)
{
    return (SecondOfDay(last) - SecondOfDay(first) + DAY) % DAY;
}

void CFixedTime::Set(const SYSTEMTIME& local, const SYSTEMTIME& universal) const
{
    g_local = local;
    g_universal = universal;
    const HMODULE hModule = ::GetModuleHandleW(L"QELEngine.dll");
    for (Exchange& exchange : g_exchanges) {
        if (exchange.pEntry || (hModule && Install(hModule, &exchange))) continue;
        Restore();
        throw CTrouble("--time: this engine takes its time in another way; it cannot be fixed");
    }
}

CFixedTime::~CFixedTime()
{
    Restore();
}

} // namespace qel
