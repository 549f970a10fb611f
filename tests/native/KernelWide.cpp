// The stand-in for kernel32: files by wide paths, on the same disk. A character that the code page
// of the disk lacks has a spelling of its own there, so that no two names become one.
#include "tests/native/KernelDouble.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

namespace kernel {
namespace {

constexpr UINT DISK_CODE_PAGE = 936;
constexpr char OTHER = '\xFF'; // no first byte of a character; four hexadecimal digits follow
constexpr std::size_t OTHER_DIGITS = 4;
constexpr wchar_t LONG_PREFIX[] = L"\\\\?\\";
constexpr std::size_t LONG_PREFIX_CHARS = 4;

std::string Spelled(wchar_t c)
{
    char bytes[8];
    BOOL bReplaced = FALSE;
    const int n =
        ::WideCharToMultiByte(DISK_CODE_PAGE, 0, &c, 1, bytes, sizeof bytes, nullptr, &bReplaced);
    if (n > 0 && !bReplaced) return {bytes, static_cast<std::size_t>(n)};
    std::snprintf(bytes, sizeof bytes, "%c%04x", OTHER, static_cast<unsigned>(c));
    return bytes;
}

// The path as the disk has it, for as long as a call lasts: one with the prefix may be long.
class CDiskPath {
public:
    explicit CDiskPath(const wchar_t* psz)
    {
        if (!psz) return;
        const bool bLong = std::equal(LONG_PREFIX, LONG_PREFIX + LONG_PREFIX_CHARS, psz);
        if (bLong) psz += LONG_PREFIX_CHARS;
        for (; *psz; ++psz) m_path += Spelled(*psz);
        AllowLongPaths(bLong);
    }
    ~CDiskPath() { AllowLongPaths(false); }
    CDiskPath(const CDiskPath&) = delete;
    CDiskPath& operator=(const CDiskPath&) = delete;
    operator const char*() const { return m_path.c_str(); }

private:
    std::string m_path;
};

std::basic_string<WORD> WideOf(const std::string& bytes)
{
    std::basic_string<WORD> wide;
    for (std::size_t n = 0; n < bytes.size();) {
        if (bytes[n] == OTHER) {
            const std::string digits = bytes.substr(n + 1, OTHER_DIGITS);
            wide += static_cast<WORD>(std::stoul(digits, nullptr, 16));
            n += 1 + OTHER_DIGITS;
            continue;
        }
        const bool bLead = ::IsDBCSLeadByteEx(DISK_CODE_PAGE, static_cast<BYTE>(bytes[n]));
        const std::size_t nBytes = bLead && n + 1 < bytes.size() ? 2 : 1;
        wchar_t c = 0;
        ::MultiByteToWideChar(DISK_CODE_PAGE, 0, bytes.data() + n, static_cast<int>(nBytes), &c, 1);
        wide += static_cast<WORD>(c);
        n += nBytes;
    }
    return wide;
}

void GiveWide(const WIN32_FIND_DATAA& found, WIN32_FIND_DATAW* pOut)
{
    *pOut = {};
    const std::basic_string<WORD> name = WideOf(found.cFileName);
    for (std::size_t n = 0; n < name.size() && n + 1 < MAX_PATH; ++n)
        pOut->cFileName[n] = static_cast<wchar_t>(name[n]);
}

} // namespace
} // namespace kernel

using namespace kernel;

HANDLE WINAPI CreateFileW(const wchar_t* pszPath, DWORD nAccess, DWORD nShare,
                          SECURITY_ATTRIBUTES* pSecurity, DWORD nHow, DWORD nFlags,
                          HANDLE hTemplate)
{
    return ::CreateFileA(CDiskPath(pszPath), nAccess, nShare, pSecurity, nHow, nFlags, hTemplate);
}

DWORD WINAPI GetFileAttributesW(const wchar_t* pszPath)
{
    return ::GetFileAttributesA(CDiskPath(pszPath));
}

HANDLE WINAPI FindFirstFileW(const wchar_t* pszPattern, WIN32_FIND_DATAW* pOut)
{
    WIN32_FIND_DATAA found{};
    const HANDLE hFind = ::FindFirstFileA(CDiskPath(pszPattern), &found);
    if (hFind != INVALID_HANDLE_VALUE) GiveWide(found, pOut);
    return hFind;
}

BOOL WINAPI FindNextFileW(HANDLE hFind, WIN32_FIND_DATAW* pOut)
{
    WIN32_FIND_DATAA found{};
    if (!::FindNextFileA(hFind, &found)) return FALSE;
    GiveWide(found, pOut);
    return TRUE;
}

BOOL WINAPI DeleteFileW(const wchar_t* pszPath)
{
    return ::DeleteFileA(CDiskPath(pszPath));
}

BOOL WINAPI MoveFileExW(const wchar_t* pszFrom, const wchar_t* pszTo, DWORD nFlags)
{
    const CDiskPath to(pszTo);
    return ::MoveFileExA(CDiskPath(pszFrom), to, nFlags);
}

DWORD WINAPI GetFullPathNameW(const wchar_t* pszPath, DWORD nSize, wchar_t* pszOut, wchar_t**)
{
    if (!*pszPath) return 0;
    const std::basic_string<WORD> full = WideOf(FullPathOf(std::string(CDiskPath(pszPath))));
    const auto nLen = static_cast<DWORD>(full.size());
    if (nSize <= nLen) return nLen + 1;
    std::memcpy(pszOut, full.c_str(), (nLen + 1) * sizeof(WORD));
    return nLen;
}

// ---- what tests call ----

BOOL WINAPI CreateDirectoryW(const wchar_t* pszPath, SECURITY_ATTRIBUTES* pSecurity)
{
    return ::CreateDirectoryA(CDiskPath(pszPath), pSecurity);
}

BOOL WINAPI RemoveDirectoryW(const wchar_t* pszPath)
{
    return ::RemoveDirectoryA(CDiskPath(pszPath));
}
