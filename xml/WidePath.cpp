#include "xml/WidePath.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr wchar_t LONG_PREFIX[] = L"\\\\?\\";
constexpr wchar_t SHARE_PREFIX[] = L"\\\\?\\UNC"; // in place of the first backslash of a share
constexpr std::size_t MOST_PREFIX = 8;

template <std::size_t N>
wchar_t* Append(wchar_t* p, const wchar_t (&szText)[N])
{
    std::memcpy(p, szText, (N - 1) * sizeof(wchar_t));
    return p + N - 1;
}

// Paths of devices, and those that have the prefix already.
bool IsVerbatim(const wchar_t* psz)
{
    return psz[0] == '\\' && psz[1] == '\\' && (psz[2] == '?' || psz[2] == '.') && psz[3] == '\\';
}

bool IsShare(const wchar_t* psz)
{
    return psz[0] == '\\' && psz[1] == '\\';
}

} // namespace

// The full path is written behind the room of the longest prefix, which is then put before it.
CWidePath::CWidePath(const wchar_t* pszPath) noexcept : m_pszPath(pszPath)
{
    if (IsVerbatim(pszPath)) return;
    const DWORD nSize = ::GetFullPathNameW(pszPath, 0, nullptr, nullptr); // with its zero
    if (nSize + MAX_ENDING <= MAX_PATH) return;
    m_pMade = static_cast<wchar_t*>(std::malloc((MOST_PREFIX + nSize) * sizeof(wchar_t)));
    m_pszPath = m_pMade;
    if (!m_pMade) return;
    wchar_t* pFull = m_pMade + MOST_PREFIX;
    const DWORD nLen = ::GetFullPathNameW(pszPath, nSize, pFull, nullptr);
    if (nLen == 0 || nLen >= nSize || IsVerbatim(pFull)) {
        m_pszPath = nLen && nLen < nSize ? pFull : pszPath; // the system says what is wrong with it
        return;
    }
    const wchar_t* pRest = IsShare(pFull) ? pFull + 1 : pFull;
    wchar_t* pEnd = IsShare(pFull) ? Append(m_pMade, SHARE_PREFIX) : Append(m_pMade, LONG_PREFIX);
    std::memmove(pEnd, pRest,
                 (nLen + 1 - static_cast<std::size_t>(pRest - pFull)) * sizeof(wchar_t));
}

CWidePath::~CWidePath()
{
    std::free(m_pMade);
}
