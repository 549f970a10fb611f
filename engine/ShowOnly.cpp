// The switch and the list are unguarded globals: the host makes all calls from one thread.
#include "engine/ShowOnly.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace {

bool g_bShowOnly = false;
CShowOnlyRecord* g_pFirst = nullptr;

class CWideText { // a text of the ANSI code page as wide characters, for as long as its scope lasts
public:
    explicit CWideText(const char* pszText) noexcept
    {
        const int nLen = ::MultiByteToWideChar(CP_ACP, 0, pszText, -1, nullptr, 0);
        if (nLen <= 0) return;
        m_pText =
            static_cast<wchar_t*>(std::calloc(static_cast<std::size_t>(nLen), sizeof(wchar_t)));
        if (m_pText) ::MultiByteToWideChar(CP_ACP, 0, pszText, -1, m_pText, nLen);
    }
    ~CWideText() { std::free(m_pText); }
    CWideText(const CWideText&) = delete;
    CWideText& operator=(const CWideText&) = delete;
    [[nodiscard]] const wchar_t* Get() const { return m_pText; }

private:
    wchar_t* m_pText = nullptr;
};

// Paths without regard to letter case, the way file names are compared: bytes will not do, since
// the second byte of a Chinese character may look like a letter.
bool IsSamePath(const char* pszA, const char* pszB)
{
    if (std::strcmp(pszA, pszB) == 0) return true;
    const CWideText a(pszA);
    const CWideText b(pszB);
    return a.Get() && b.Get() &&
           ::CompareStringOrdinal(a.Get(), -1, b.Get(), -1, TRUE) == CSTR_EQUAL;
}

} // namespace

bool CShowOnlyRecord::IsOn()
{
    return g_bShowOnly;
}

void CShowOnlyRecord::Switch(bool bOn)
{
    g_bShowOnly = bOn;
}

int CShowOnlyRecord::Open(const char* pszPath)
{
    Close();
    if (!pszPath) return 0;
    for (CShowOnlyRecord* pRecord = g_pFirst; pRecord; pRecord = pRecord->m_pNext) {
        if (!pRecord->m_pszPath || !IsSamePath(pRecord->m_pszPath, pszPath)) continue;
        Join(pRecord->m_pEngine, pszPath);
        return 1;
    }
    auto* pEngine = new (std::nothrow) CQELEngine(true);
    if (!pEngine) return 0;
    if (!pEngine->Open(pszPath)) {
        delete pEngine;
        return 0;
    }
    Join(pEngine, pszPath);
    return 1;
}

void CShowOnlyRecord::Join(CQELEngine* pEngine, const char* pszPath)
{
    m_pEngine = pEngine;
    pEngine->AddRef();
    const std::size_t nSize = std::strlen(pszPath) + 1;
    m_pszPath = static_cast<char*>(std::malloc(nSize));
    if (m_pszPath) std::memcpy(m_pszPath, pszPath, nSize);
    m_pPrev = nullptr;
    m_pNext = g_pFirst;
    if (g_pFirst) g_pFirst->m_pPrev = this;
    g_pFirst = this;
}

int CShowOnlyRecord::Close()
{
    if (m_pEngine) {
        (m_pPrev ? m_pPrev->m_pNext : g_pFirst) = m_pNext;
        if (m_pNext) m_pNext->m_pPrev = m_pPrev;
        m_pNext = m_pPrev = nullptr;
        m_pEngine->DropRef();
        if (m_pEngine->RefCount() == 0) delete m_pEngine;
        m_pEngine = nullptr;
    }
    std::free(m_pszPath);
    m_pszPath = nullptr;
    return 1;
}
