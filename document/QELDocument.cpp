#include "document/QELDocument.h"

#include "document/ElementTypes.h"
#include "document/QELDocShape.h"
#include "xml/XmlFile.h"
#include "xml/XmlWriter.h"

namespace {

constexpr char g_template[] = "<qel />"; // an empty drawing

// What every file that is saved says of itself.
constexpr const char* XML_VERSION = "1.0";
constexpr const char* XML_ENCODING = "gb2312";

} // namespace

CQELDocument::~CQELDocument()
{
    Close();
}

int CQELDocument::Close()
{
    SetRoot(nullptr);
    m_pool.Clear();
    XmlDestroy(m_context.pXml);
    m_context.pXml = nullptr;
    return 1;
}

int CQELDocument::ParseTemplate() const
{
    char szText[sizeof g_template]; // the parser writes into its text
    std::memcpy(szText, g_template, sizeof g_template);
    return XmlParseText(m_context.pXml, szText) ? 0 : 1;
}

// The element tree is made while the file is read: each element before its children, and loaded
// when all of it is known.
int CQELDocument::Load(const char* pszPath, CArena* pSpare)
{
    if (!m_context.pXml) m_context.pXml = XmlCreate();
    SetRoot(nullptr); // an earlier drawing does not stand in for one that fails to load
    int nResult = 0;
    if (m_context.pXml) {
        Reading reading{this};
        const XmlConsumer consumer{OnOpened, OnClosed, &reading};
        m_context.pXml->pConsumer = &consumer;
        nResult = pszPath ? !XmlLoadFile(m_context.pXml, pszPath) : ParseTemplate();
        nResult = nResult && m_pRoot;
        const bool bMany = reading.nMade * sizeof(CQELDocShape) > m_context.pXml->nTextSize;
        if (nResult && pSpare && bMany) pSpare->TakeOver(m_context.pXml->arena);
    }
    XmlDestroy(m_context.pXml);
    m_context.pXml = nullptr;
    if (!nResult) {
        delete m_pRoot;
        m_pRoot = nullptr;
        m_pool.Clear();
    }
    return nResult;
}

// An element without a class is skipped with all that is in it.
bool CQELDocument::OnOpened(void* pUser)
{
    auto* pReading = static_cast<Reading*>(pUser);
    CQELDocument* pDocument = pReading->pDocument;
    // What follows the root's end comes into the root as well.
    CQELDocElm* pParent = pReading->pOpen ? pReading->pOpen : pDocument->m_pRoot;
    const ElementType* pRow = pReading->nSkipped ? nullptr : pDocument->RowToRead(pParent);
    if (!pRow) {
        ++pReading->nSkipped;
        return true;
    }
    CQELDocElm* pElm = pRow->pfnMakeDoc(&pDocument->m_context, &pDocument->m_pool);
    if (!pElm) return false;
    if (pParent)
        pParent->AppendChild(pElm);
    else
        pDocument->SetRoot(static_cast<CQELDocQEL*>(pElm));
    pReading->pOpen = pElm;
    ++pReading->nMade;
    return true;
}

// The class of the element under the cursor, null for one that is skipped.
const ElementType* CQELDocument::RowToRead(const CQELDocElm* pParent) const
{
    XmlNode* pNode = m_context.pXml->pCursor;
    const ElementType* pRow = m_context.pTypes->Of(pNode);
    if (!pRow || !pRow->pfnMakeDoc) return nullptr;
    if (pRow->nId != QEL_TYPE_ROOT) return pParent ? pRow : nullptr; // not in a drawing
    return pNode == m_context.pXml->pRoot ? pRow : nullptr; // a drawing inside of a drawing
}

bool CQELDocument::OnClosed(void* pUser)
{
    auto* pReading = static_cast<Reading*>(pUser);
    if (pReading->nSkipped) {
        --pReading->nSkipped;
        return true;
    }
    CQELDocElm* pElm = pReading->pOpen;
    pReading->pOpen = pElm->Parent();
    pElm->Load();                                      // what it cannot read keeps its default
    return !pElm->HasLostId() && !pElm->LacksMemory(); // a drawing without it would be saved so
}

int CQELDocument::Save(const char* pszPath)
{
    if (!m_pRoot || !pszPath) return 0;
    CXmlFile file;
    XmlContext xml; // where the elements find the writer
    if (file.Open(pszPath) != XML_OK) return 0;
    CXmlWriter writer(file);
    xml.pWriter = &writer;
    m_context.pXml = &xml;
    writer.Declaration(XML_VERSION, XML_ENCODING, nullptr);
    const int nResult = SaveTree();
    m_context.pXml = nullptr;
    file.Put('\0'); // part of the file: readers stop there
    return nResult && file.Commit() ? 1 : 0;
}

int CQELDocument::SaveTree()
{
    for (CQELDocElm* pElm = m_pRoot;;) {
        if (!pElm->Save()) return 0;
        if (pElm->FirstChild()) {
            pElm = pElm->FirstChild();
            continue;
        }
        pElm->EndSave();
        while (pElm != m_pRoot && !pElm->NextSibling()) {
            pElm = pElm->Parent();
            pElm->EndSave();
        }
        if (pElm == m_pRoot) return 1;
        pElm = pElm->NextSibling();
    }
}

CQELDocElm* CQELDocument::CreateElement(CQELDocElm* pParent, CQELDocElm* pAfter, int32_t nType)
{
    CQELDocElm* pElm = m_context.pTypes->MakeDoc(nType, &m_context);
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
    return new (std::nothrow) CQELDocQEL(&m_context);
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
