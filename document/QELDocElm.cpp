// The classes that derive from it add their fields.
#include "document/QELDocElm.h"

#include "document/ElementTypes.h"

#include <cstdlib>

namespace {

// "_1" is appended whether or not another element has that identifier already.
constexpr char COPY_SUFFIX[] = "_1";

} // namespace

CQELDocElm::CQELDocElm(const DocMaking& making, int32_t nType) noexcept
    : CPooled(making.pPool), m_pContext(making.pContext), m_nType(static_cast<int16_t>(nType))
{
}

CQELDocElm::~CQELDocElm()
{
    Remove();
    GivePoolText(Pool(), m_pszId);
}

int CQELDocElm::Clone(CQELDocElm** ppOut) const
{
    *ppOut = new (std::nothrow) CQELDocElm(m_pContext, m_nType);
    return *ppOut ? 1 : 0;
}

int CQELDocElm::CopyTo(CQELDocElm* pParent, CQELDocElm** ppOut)
{
    *ppOut = nullptr;
    CQELDocElm* pCopy = nullptr;
    if (!Clone(&pCopy)) return 0;
    bool bDone = !*Id() || pCopy->TakeCopyId(Id());
    if (pParent && pParent == m_pParent)
        pCopy->InsertAfter(this);
    else if (pParent)
        pParent->AppendChild(pCopy);
    // The copy of a child belongs to pCopy, which the analyzer does not see.
    for (CQELDocElm* pChild = m_pFirstChild; pChild && bDone; pChild = pChild->m_pNext) {
        CQELDocElm* pChildCopy = nullptr;
        // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
        bDone = pChild->CopyTo(pCopy, &pChildCopy) != 0;
    }
    if (!bDone) {
        delete pCopy;
        return 0;
    }
    *ppOut = pCopy;
    return 1;
}

int CQELDocElm::GetAttrSize(int*) const
{
    return 0;
}

int CQELDocElm::GetAttr(void*) const
{
    return 0;
}

int CQELDocElm::SetAttr(const void*)
{
    return 0;
}

int CQELDocElm::GetRect(RECT* prc) const
{
    ::SetRectEmpty(prc);
    for (const CQELDocElm* pChild = m_pFirstChild; pChild; pChild = pChild->m_pNext) {
        RECT rcChild{};
        if (!pChild->GetRect(&rcChild)) continue;
        const RECT rcSoFar = *prc;
        ::UnionRect(prc, &rcSoFar, &rcChild);
    }
    return 1;
}

int CQELDocElm::SetRect(const RECT& rc)
{
    RECT rcOld{};
    if (!GetRect(&rcOld)) return 0;
    return m_pFirstChild ? MapRect(rcOld, rc) : 0;
}

int CQELDocElm::MapRect(const RECT& rcOld, const RECT& rcNew)
{
    int nResult = 0;
    for (CQELDocElm* pChild = m_pFirstChild; pChild; pChild = pChild->m_pNext) {
        nResult = pChild->MapRect(rcOld, rcNew);
        if (!nResult) break;
    }
    return nResult;
}

int CQELDocElm::Load()
{
    if (!XmlGetName(Xml())) return 0;
    const ElementType* pRow = Types().Of(Xml()->pCursor);
    if (!pRow) return 0;
    m_nType = static_cast<int16_t>(pRow->nId);
    const XmlAttr* pId = FindXmlAttr(Xml(), ATTR_ID);
    if (pId && !SetId(pId->pszValue)) m_bLostId = true;
    return 1;
}

int CQELDocElm::Save()
{
    if (Types().Name(m_nType).empty()) return 0;
    BeginSave();
    return 1;
}

void CQELDocElm::BeginSave()
{
    const std::string_view tag = Types().Name(m_nType);
    Writer().Start(tag.data(), tag.size());
    if (m_pszId) WriteAttrText(Writer(), ATTR_ID, m_pszId, std::strlen(m_pszId));
}

void CQELDocElm::EndSave()
{
    const std::string_view tag = Types().Name(m_nType);
    Writer().End(tag.data(), tag.size());
}

void CQELDocElm::Remove()
{
    DeleteChildren();
    Unlink();
}

bool CQELDocElm::IsInside(const CQELDocElm* pTop) const
{
    const CQELDocElm* pElm = this;
    while (pElm && pElm != pTop) pElm = pElm->m_pParent;
    return pElm != nullptr;
}

int32_t CQELDocElm::Depth() const
{
    int32_t nDepth = 0;
    for (const CQELDocElm* pElm = m_pParent; pElm; pElm = pElm->m_pParent) ++nDepth;
    return nDepth;
}

int32_t CQELDocElm::Height() const
{
    int32_t nHeight = 0;
    const int32_t nOwn = Depth();
    for (const CQELDocElm* pElm = NextInTree(this); pElm; pElm = pElm->NextInTree(this)) {
        const int32_t nBelow = pElm->Depth() - nOwn;
        if (nBelow > nHeight) nHeight = nBelow;
    }
    return nHeight;
}

int CQELDocElm::SetId(const char* pszId)
{
    if (!pszId) return 0;
    std::size_t nLen = 0;
    while (nLen + 1 < ID_TEXT_SIZE && pszId[nLen]) ++nLen;
    return ReplacePoolText(Pool(), &m_pszId, pszId, nLen);
}

// What does not fit is cut.
int CQELDocElm::TakeCopyId(const char* pszSource)
{
    char szId[ID_TEXT_SIZE];
    std::size_t nLen = 0;
    for (const char* p = pszSource; *p; ++p) szId[nLen++] = *p;
    for (const char* p = COPY_SUFFIX; nLen + 1 < ID_TEXT_SIZE && *p; ++p) szId[nLen++] = *p;
    return ReplacePoolText(Pool(), &m_pszId, szId, nLen);
}
