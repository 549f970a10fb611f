// Records of any thread stand in one list, which a lock guards with the counts of who shares an
// engine. The engines themselves are used by one thread at a time.
#include "engine/ShowOnly.h"

#include "base/Lock.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace {

constinit std::atomic<bool> g_bShowOnly = false;
constinit CLock g_lock; // of the list, its links and the counts
CShowOnlyRecord* g_pFirst = nullptr;

constexpr wchar_t BYTE_PAGE = 0xE000; // characters without letter case that no file name has

// Of a path that has no wide form the bytes decide: each as a character of its own.
wchar_t* WideBytes(const char* pszText)
{
    const std::size_t nLen = std::strlen(pszText);
    auto* pText = static_cast<wchar_t*>(std::calloc(nLen + 1, sizeof(wchar_t)));
    for (std::size_t n = 0; pText && n < nLen; ++n)
        pText[n] = static_cast<wchar_t>(BYTE_PAGE | static_cast<unsigned char>(pszText[n]));
    return pText;
}

// A text of the ANSI code page as wide characters, and a copy of a wide one; null without memory.
wchar_t* WideCopy(const char* pszText)
{
    const int nLen = ::MultiByteToWideChar(CP_ACP, 0, pszText, -1, nullptr, 0);
    if (nLen <= 0) return WideBytes(pszText);
    auto* pText =
        static_cast<wchar_t*>(std::calloc(static_cast<std::size_t>(nLen), sizeof(wchar_t)));
    if (pText) ::MultiByteToWideChar(CP_ACP, 0, pszText, -1, pText, nLen);
    return pText;
}

wchar_t* WideCopy(const wchar_t* pszText)
{
    std::size_t nLen = 0;
    while (pszText[nLen]) ++nLen;
    auto* pText = static_cast<wchar_t*>(std::malloc((nLen + 1) * sizeof(wchar_t)));
    if (pText) std::memcpy(pText, pszText, (nLen + 1) * sizeof(wchar_t));
    return pText;
}

// Paths without regard to letter case, the way file names are compared: bytes will not do, since
// the second byte of a Chinese character may look like a letter.
bool IsSamePath(const wchar_t* pszA, const wchar_t* pszB)
{
    return ::CompareStringOrdinal(pszA, -1, pszB, -1, TRUE) == CSTR_EQUAL;
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

int CShowOnlyRecord::Fail(const Failure& failure)
{
    m_failure = failure;
    return 0;
}

int CShowOnlyRecord::Open(const char* pszPath)
{
    XmlSource source;
    source.pszPath = pszPath;
    return Open(source);
}

int CShowOnlyRecord::Open(const XmlSource& source)
{
    Close();
    if (source.IsNone()) return Fail({QEL_ERROR_ARGUMENT});
    if (source.pBytes) return OpenOwn(source);
    m_pszPath = source.pszPath ? WideCopy(source.pszPath) : WideCopy(source.pszWidePath);
    if (!m_pszPath) return Fail({QEL_ERROR_MEMORY});
    return JoinSharedOr(nullptr) ? OpenOwn(source) : 1;
}

// Joins the drawing that is shared already, else the one given. Whether it was that.
bool CShowOnlyRecord::JoinSharedOr(CQELEngine* pOwn)
{
    const CLockScope lock(g_lock);
    CQELEngine* pShared = FindShared();
    CQELEngine* pEngine = pShared ? pShared : pOwn;
    if (pEngine) Join(pEngine);
    return !pShared;
}

// The drawing that another record has of the same path.
CQELEngine* CShowOnlyRecord::FindShared() const
{
    if (!m_pszPath) return nullptr;
    for (const CShowOnlyRecord* pRecord = g_pFirst; pRecord; pRecord = pRecord->m_pNext)
        if (pRecord->m_pszPath && IsSamePath(pRecord->m_pszPath, m_pszPath))
            return pRecord->m_pEngine;
    return nullptr;
}

// Read without the lock, so that others are not held up. Another thread may have opened the same
// path meanwhile; its drawing is shared then, as if it had been first.
int CShowOnlyRecord::OpenOwn(const XmlSource& source)
{
    std::unique_ptr<CQELEngine> own(new (std::nothrow) CQELEngine(true));
    if (!own) return Fail({QEL_ERROR_MEMORY});
    own->SetTextPage(m_nTextPage);
    if (!own->Open(source)) return Fail(own->LastFailure());
    if (JoinSharedOr(own.get())) static_cast<void>(own.release()); // the records have it now
    return 1;
}

void CShowOnlyRecord::Join(CQELEngine* pEngine)
{
    m_pEngine = pEngine;
    pEngine->AddRef();
    m_pPrev = nullptr;
    m_pNext = g_pFirst;
    if (g_pFirst) g_pFirst->m_pPrev = this;
    g_pFirst = this;
}

int CShowOnlyRecord::Close()
{
    delete Leave();
    std::free(m_pszPath);
    m_pszPath = nullptr;
    return 1;
}

// The engine when nobody is left who shares it.
CQELEngine* CShowOnlyRecord::Leave()
{
    if (!m_pEngine) return nullptr;
    const CLockScope lock(g_lock);
    (m_pPrev ? m_pPrev->m_pNext : g_pFirst) = m_pNext;
    if (m_pNext) m_pNext->m_pPrev = m_pPrev;
    m_pNext = m_pPrev = nullptr;
    CQELEngine* pLeft = std::exchange(m_pEngine, nullptr);
    pLeft->DropRef();
    return pLeft->RefCount() == 0 ? pLeft : nullptr;
}
