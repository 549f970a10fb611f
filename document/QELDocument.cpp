// The document; see the header.
#include "document/QELDocument.h"

#include "document/Tags.h"

namespace {

constexpr char g_template[] = "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n<qel />\r\n";

} // namespace

CQELDocument::~CQELDocument()
{
    Close();
}

int CQELDocument::Close()
{
    SetRoot(nullptr);
    m_pool.Clear();
    XmlDestroy(m_pXml);
    m_pXml = nullptr;
    return 1;
}

int CQELDocument::ParseTemplate()
{
    char szText[sizeof g_template]; // the parser writes into its text
    std::memcpy(szText, g_template, sizeof g_template);
    return XmlParseText(m_pXml, szText) ? 0 : 1;
}

int CQELDocument::Load(const char* pszPath)
{
    if (!m_pXml) m_pXml = XmlCreate();
    SetRoot(nullptr); // an earlier drawing does not stand in for one that fails to load
    int nResult = 0;
    if (m_pXml) {
        nResult = pszPath ? !XmlLoadFile(m_pXml, pszPath) : ParseTemplate();
        nResult = nResult && Build() && m_pRoot;
    }
    XmlDestroy(m_pXml);
    m_pXml = nullptr;
    if (!nResult) {
        delete m_pRoot;
        m_pRoot = nullptr;
        m_pool.Clear();
    }
    return nResult;
}

// Makes the element tree from the XML tree: a walk with the cursor, each element made before its
// children. An element without a class is skipped with all that is in it.
int CQELDocument::Build()
{
    if (XmlGoRoot(m_pXml)) return 0;
    CQELDocElm* pParent = nullptr;
    int32_t nDepth = 0;
    for (;;) {
        bool bFailed = false;
        CQELDocElm* pElm = BuildOne(pParent, &bFailed);
        if (bFailed) return 0;
        if (pElm && XmlGoFirstChild(m_pXml) == 0) {
            pParent = pElm;
            ++nDepth;
            continue;
        }
        while (nDepth && XmlGoNextSibling(m_pXml)) {
            XmlGoParent(m_pXml);
            pParent = pParent->Parent();
            --nDepth;
        }
        if (!nDepth) return 1;
    }
}

CQELDocElm* CQELDocument::BuildOne(CQELDocElm* pParent, bool* pbFailed)
{
    const char* pszName = XmlGetName(m_pXml);
    const TagRow* pRow = pszName ? FindTag(pszName, m_pXml->pCursor->nKey) : nullptr;
    *pbFailed = !pszName;
    if (!pRow || !pRow->pfnMakeDoc) return nullptr;
    const bool bIsRoot = pRow->nId == QEL_TYPE_ROOT;
    if (bIsRoot && pParent) return nullptr;   // a drawing inside of a drawing is skipped
    if (!bIsRoot && !pParent) return nullptr; // no drawing: the load ends without a root

    CQELDocElm* pElm = pRow->pfnMakeDoc(&m_pXml, &m_pool);
    *pbFailed = !pElm;
    if (!pElm) return nullptr;
    if (bIsRoot) SetRoot(static_cast<CQELDocQEL*>(pElm));
    pElm->Load(); // what it cannot read keeps its default
    if (pParent) pParent->AppendChild(pElm);
    // A drawing without it would be saved without it.
    *pbFailed = pElm->HasLostId() || pElm->LacksMemory();
    return pElm;
}

int CQELDocument::Save(const char* pszPath)
{
    if (!m_pRoot || !pszPath) return 0;
    XmlDestroy(m_pXml);
    m_pXml = XmlCreate();
    const int nResult =
        m_pXml && ParseTemplate() && SaveTree() && XmlSaveFile(m_pXml, pszPath) == 0;
    XmlDestroy(m_pXml);
    m_pXml = nullptr;
    return nResult;
}

int CQELDocument::SaveTree()
{
    if (XmlGoRoot(m_pXml)) return 0;
    int32_t nDepth = 0; // of the XML element under the cursor, counted in elements of this tree
    for (CQELDocElm* pElm = m_pRoot; pElm;) {
        if (!pElm->Save()) return 0;
        if (pElm->FirstChild()) {
            pElm = pElm->FirstChild();
            ++nDepth;
            continue;
        }
        XmlGoParent(m_pXml);
        while (nDepth && !pElm->NextSibling()) {
            pElm = pElm->Parent();
            XmlGoParent(m_pXml);
            --nDepth;
        }
        pElm = nDepth ? pElm->NextSibling() : nullptr;
    }
    return 1;
}

CQELDocElm* CQELDocument::CreateElement(CQELDocElm* pParent, CQELDocElm* pAfter, int32_t nType)
{
    CQELDocElm* pElm = MakeDocElement(nType, &m_pXml, &m_pool);
    if (!pElm) return nullptr;
    if (nType == QEL_TYPE_ROOT) {
        SetRoot(static_cast<CQELDocQEL*>(pElm));
        return pElm;
    }
    if (!pParent || pParent->Depth() >= XML_MAX_DEPTH || (pAfter && pAfter->Parent() != pParent)) {
        delete pElm;
        return nullptr;
    }
    if (pAfter)
        pElm->InsertAfter(pAfter);
    else
        pParent->AppendChild(pElm);
    return pElm;
}

int CQELDocument::DeleteElement(CQELDocElm* pElm)
{
    if (pElm == m_pRoot) m_pRoot = nullptr;
    m_detached.Unlink(pElm);
    delete pElm;
    return 1;
}

int CQELDocument::MoveElement(CQELDocElm* pElm, CQELDocElm* pNewParent, CQELDocElm* pAfter)
{
    if (pElm == m_pRoot) return 0;
    if (!pNewParent) {
        if (pAfter) return 0;
        m_detached.Unlink(pElm);
        m_detached.Keep(pElm);
        return 1;
    }
    if (pNewParent->IsInside(pElm) || pAfter == pElm) return 0;
    if (pAfter && pAfter->Parent() != pNewParent) return 0;
    if (pNewParent->Depth() + 1 + pElm->Height() > XML_MAX_DEPTH) return 0;
    m_detached.Unlink(pElm);
    if (pAfter)
        pElm->InsertAfter(pAfter);
    else
        pNewParent->PrependChild(pElm);
    return 1;
}

CQELDocElm* CQELDocument::CopyElement(CQELDocElm* pElm)
{
    if (!pElm->Parent()) return nullptr; // the root, or one that is out of the picture
    CQELDocElm* pCopy = nullptr;
    return pElm->CopyTo(pElm->Parent(), &pCopy) ? pCopy : nullptr;
}

CQELDocQEL* CQELDocument::NewRoot()
{
    return new (&m_pool) CQELDocQEL(&m_pXml);
}

int CQELDocument::SetRoot(CQELDocQEL* pRoot)
{
    m_detached.DeleteAll();
    delete m_pRoot;
    m_pRoot = pRoot;
    return 1;
}

CQELDocElm* CQELDocument::GetNextSibling(const CQELDocElm* pElm)
{
    return pElm->Parent() ? pElm->NextSibling() : nullptr;
}

CQELDocElm* CQELDocument::GetPrevSibling(const CQELDocElm* pElm)
{
    return pElm->Parent() ? pElm->PrevSibling() : nullptr;
}
