// The stand-in for kernel32: code pages, times and the version.
#include "tests/native/KernelDouble.h"

#include <iconv.h>
#include <sys/mman.h>
#include <time.h>
#include <unistd.h>

#include <cstring>
#include <map>
#include <optional>
#include <string>

namespace kernel {
namespace {

constexpr std::size_t PAGE = 4096;

UINT g_nCodePage = 936;
std::optional<SYSTEMTIME> g_local;
std::optional<SYSTEMTIME> g_universal;

const char* CharsetOf(UINT nCodePage)
{
    if (nCodePage == CP_ACP || nCodePage == CP_THREAD_ACP) nCodePage = g_nCodePage;
    switch (nCodePage) {
    case 37:
        return "CP037";
    case 936:
        return "CP936";
    case 932:
        return "CP932";
    case 949:
        return "CP949";
    case 950:
        return "CP950";
    case 1251:
        return "CP1251";
    case 1252:
        return "CP1252";
    case 20127:
        return "US-ASCII";
    case 28597:
        return "ISO-8859-7";
    case CP_UTF8:
        return "UTF-8";
    default:
        return nullptr;
    }
}

// One conversion, character by character, so that one that is not known becomes a substitute.
struct Converted {
    std::string bytes;
    bool bReplaced = false;
};

class CConverter {
public:
    CConverter(const char* pszTo, const char* pszFrom) : m_cd(::iconv_open(pszTo, pszFrom)) {}
    ~CConverter()
    {
        if (IsOpen()) ::iconv_close(m_cd);
    }
    CConverter(const CConverter&) = delete;
    CConverter& operator=(const CConverter&) = delete;

    [[nodiscard]] bool IsOpen() const { return m_cd != reinterpret_cast<iconv_t>(-1); }

    Converted Convert(const char* pIn, std::size_t nIn, std::size_t nUnit, const std::string& other)
    {
        Converted out;
        auto* p = const_cast<char*>(pIn);
        while (nIn) {
            char buffer[256];
            char* pOut = buffer;
            std::size_t nOut = sizeof buffer;
            const std::size_t n = ::iconv(m_cd, &p, &nIn, &pOut, &nOut);
            out.bytes.append(buffer, static_cast<std::size_t>(pOut - buffer));
            if (n != static_cast<std::size_t>(-1) || errno == E2BIG) continue;
            out.bytes += other;
            out.bReplaced = true;
            const std::size_t nSkip = nUnit < nIn ? nUnit : nIn;
            p += nSkip;
            nIn -= nSkip;
        }
        return out;
    }

private:
    iconv_t m_cd;
};

wchar_t Upper(wchar_t c)
{
    const auto isIn = [c](int nFrom, int nTo) { return c >= nFrom && c <= nTo; };
    if (isIn('a', 'z') || (isIn(0xE0, 0xFE) && c != 0xF7) || isIn(0x3B1, 0x3C9) ||
        isIn(0x430, 0x44F) || isIn(0xFF41, 0xFF5A))
        return static_cast<wchar_t>(c - 32);
    return c;
}

SYSTEMTIME FromTm(const tm& parts, long nNanoseconds)
{
    return {static_cast<WORD>(parts.tm_year + 1900), static_cast<WORD>(parts.tm_mon + 1),
            static_cast<WORD>(parts.tm_wday),        static_cast<WORD>(parts.tm_mday),
            static_cast<WORD>(parts.tm_hour),        static_cast<WORD>(parts.tm_min),
            static_cast<WORD>(parts.tm_sec),         static_cast<WORD>(nNanoseconds / 1000000)};
}

std::size_t Length(const wchar_t* psz)
{
    std::size_t n = 0;
    while (psz[n]) ++n;
    return n;
}

} // namespace

void SetTime(const SYSTEMTIME* pLocal, const SYSTEMTIME* pUniversal)
{
    g_local = pLocal ? std::optional(*pLocal) : std::nullopt;
    g_universal = pUniversal ? std::optional(*pUniversal) : std::nullopt;
}

void SetCodePage(UINT nCodePage)
{
    g_nCodePage = nCodePage;
}

} // namespace kernel

using namespace kernel;

// ---- code pages ----

INT WINAPI MultiByteToWideChar(UINT nCodePage, DWORD, const char* psz, INT nBytes, wchar_t* pOut,
                               INT nRoom)
{
    const char* pszCharset = CharsetOf(nCodePage);
    if (!psz || !pszCharset) {
        ::SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const std::size_t nIn = nBytes < 0 ? std::strlen(psz) + 1 : static_cast<std::size_t>(nBytes);
    CConverter converter("UTF-16LE", pszCharset);
    if (!converter.IsOpen()) return 0;
    const Converted wide = converter.Convert(psz, nIn, 1, std::string("?\0", 2));
    const auto nWide = static_cast<INT>(wide.bytes.size() / sizeof(wchar_t));
    if (!nRoom) return nWide;
    if (nRoom < nWide) {
        ::SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    std::memcpy(pOut, wide.bytes.data(), wide.bytes.size());
    return nWide;
}

INT WINAPI WideCharToMultiByte(UINT nCodePage, DWORD nFlags, const wchar_t* psz, INT nWide,
                               char* pOut, INT nRoom, const char* pszDefault, BOOL* pbReplaced)
{
    const char* pszCharset = CharsetOf(nCodePage);
    const bool bUtf8 = pszCharset && std::strcmp(pszCharset, "UTF-8") == 0;
    if (!psz || !pszCharset || (bUtf8 && (pszDefault || pbReplaced || nFlags))) {
        ::SetLastError(bUtf8 && nFlags ? ERROR_INVALID_FLAGS : ERROR_INVALID_PARAMETER);
        return 0;
    }
    const std::size_t nIn = nWide < 0 ? Length(psz) + 1 : static_cast<std::size_t>(nWide);
    CConverter converter(pszCharset, "UTF-16LE");
    if (!converter.IsOpen()) return 0;
    const Converted ansi = converter.Convert(reinterpret_cast<const char*>(psz),
                                             nIn * sizeof(wchar_t), sizeof(wchar_t), "?");
    if (pbReplaced) *pbReplaced = ansi.bReplaced;
    const auto nBytes = static_cast<INT>(ansi.bytes.size());
    if (!nRoom) return nBytes;
    if (nRoom < nBytes) {
        ::SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    std::memcpy(pOut, ansi.bytes.data(), ansi.bytes.size());
    return nBytes;
}

INT WINAPI CompareStringOrdinal(const wchar_t* pA, INT nA, const wchar_t* pB, INT nB,
                                BOOL bIgnoreCase)
{
    const std::size_t nLenA = nA < 0 ? Length(pA) : static_cast<std::size_t>(nA);
    const std::size_t nLenB = nB < 0 ? Length(pB) : static_cast<std::size_t>(nB);
    for (std::size_t n = 0; n < nLenA && n < nLenB; ++n) {
        const wchar_t a = bIgnoreCase ? Upper(pA[n]) : pA[n];
        const wchar_t b = bIgnoreCase ? Upper(pB[n]) : pB[n];
        if (a != b) return a < b ? CSTR_LESS_THAN : CSTR_GREATER_THAN;
    }
    return nLenA == nLenB ? CSTR_EQUAL : nLenA < nLenB ? CSTR_LESS_THAN : CSTR_GREATER_THAN;
}

BOOL WINAPI IsDBCSLeadByteEx(UINT nCodePage, BYTE c)
{
    const char* pszCharset = CharsetOf(nCodePage);
    return pszCharset && std::strcmp(pszCharset, "CP936") == 0 && c >= 0x81 && c < 0xFF;
}

BOOL WINAPI IsValidCodePage(UINT nCodePage)
{
    return nCodePage > CP_SYMBOL && CharsetOf(nCodePage) != nullptr;
}

UINT WINAPI GetACP()
{
    return g_nCodePage;
}

// ---- times, the version, the process ----

void WINAPI GetSystemTime(SYSTEMTIME* pOut)
{
    timespec now{};
    tm parts{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    ::gmtime_r(&now.tv_sec, &parts);
    *pOut = g_universal ? *g_universal : FromTm(parts, now.tv_nsec);
}

void WINAPI GetLocalTime(SYSTEMTIME* pOut)
{
    timespec now{};
    tm parts{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    ::localtime_r(&now.tv_sec, &parts);
    *pOut = g_local ? *g_local : FromTm(parts, now.tv_nsec);
}

BOOL WINAPI SystemTimeToFileTime(const SYSTEMTIME* pTime, FILETIME* pOut)
{
    constexpr uint64_t EPOCH = 11644473600ULL; // seconds from 1601 to 1970
    tm parts{};
    parts.tm_year = pTime->wYear - 1900;
    parts.tm_mon = pTime->wMonth - 1;
    parts.tm_mday = pTime->wDay;
    parts.tm_hour = pTime->wHour;
    parts.tm_min = pTime->wMinute;
    parts.tm_sec = pTime->wSecond;
    const uint64_t n = (static_cast<uint64_t>(::timegm(&parts)) + EPOCH) * 10000000 +
                       pTime->wMilliseconds * 10000ULL;
    *pOut = {static_cast<DWORD>(n), static_cast<DWORD>(n >> 32)};
    return TRUE;
}

DWORD WINAPI GetVersion()
{
    return 0x1DB10106; // 6.1
}

ULONGLONG WINAPI GetTickCount64()
{
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<ULONGLONG>(now.tv_sec) * 1000 +
           static_cast<ULONGLONG>(now.tv_nsec) / 1000000;
}

void WINAPI Sleep(DWORD nMilliseconds)
{
    ::usleep(nMilliseconds * 1000);
}

DWORD WINAPI GetCurrentProcessId()
{
    return static_cast<DWORD>(::getpid());
}

// ---- pages that may not be touched ----

static std::map<void*, std::size_t> g_blocks;

void* WINAPI VirtualAlloc(void*, SIZE_T nSize, DWORD, DWORD)
{
    void* p = ::mmap(nullptr, nSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (p == MAP_FAILED) return nullptr;
    g_blocks[p] = nSize;
    return p;
}

BOOL WINAPI VirtualFree(void* p, SIZE_T, DWORD)
{
    const auto it = g_blocks.find(p);
    if (it == g_blocks.end()) return FALSE;
    ::munmap(p, it->second);
    g_blocks.erase(it);
    return TRUE;
}

BOOL WINAPI VirtualProtect(void* p, SIZE_T nSize, DWORD nProtection, DWORD* pnOld)
{
    if (pnOld) *pnOld = PAGE_READWRITE;
    const int n = nProtection == PAGE_NOACCESS ? PROT_NONE : PROT_READ | PROT_WRITE;
    return ::mprotect(p, (nSize + PAGE - 1) / PAGE * PAGE, n) == 0;
}
