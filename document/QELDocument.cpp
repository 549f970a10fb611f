#include "document/QELDocument.h"

#include "document/ElementTypes.h"
#include "document/QELDocShape.h"
#include "include/QELEngine.h"
#include "xml/XmlFile.h"
#include "xml/XmlMemory.h"
#include "xml/XmlWriter.h"

namespace {

constexpr char g_template[] = "<qel />"; // an empty drawing

constexpr const char* XML_VERSION = "1.0"; // of every file that is saved

// Why the system does not open a file.
uint32_t CodeOfOpen(uint32_t nSystem)
{
    switch (nSystem) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
        return QEL_ERROR_NO_FILE;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return QEL_ERROR_IN_USE;
    case ERROR_NOT_ENOUGH_MEMORY:
        return QEL_ERROR_MEMORY;
    default:
        return QEL_ERROR_OPEN;
    }
}

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

int CQELDocument::Load(const char* pszPath, CArena* pSpare)
{
    XmlSource source;
    source.pszPath = pszPath;
    return Load(source, pSpare);
}

// The element tree is made while the text is read: each element before its children, and loaded
// when all of it is known.
int CQELDocument::Load(const XmlSource& source, CArena* pSpare, uint32_t nSetPage)
{
    m_context.pXml = XmlCreate();
    m_encoding = {};
    SetRoot(nullptr); // an earlier drawing does not stand in for one that fails to load
    if (!m_context.pXml) return Fail({QEL_ERROR_MEMORY});
    Reading reading{this};
    const XmlConsumer consumer{OnOpened, OnClosed, &reading};
    m_context.pXml->pConsumer = &consumer;
    m_context.pXml->bTakesMark = nSetPage != PAGE_ANSI;
    int nResult = source.IsNone() ? ParseTemplate() : !XmlLoad(m_context.pXml, source);
    nResult = nResult && m_pRoot;
    if (nResult && !source.IsNone()) m_encoding = EncodingOfFile(*m_context.pXml, nSetPage);
    const bool bMany = reading.nMade * sizeof(CQELDocShape) > m_context.pXml->nTextSize;
    if (nResult && pSpare && bMany) pSpare->TakeOver(m_context.pXml->arena);
    if (!nResult) Fail(WhyNotRead());
    XmlDestroy(m_context.pXml);
    m_context.pXml = nullptr;
    if (!nResult) {
        delete m_pRoot;
        m_pRoot = nullptr;
        m_pool.Clear();
    }
    return nResult;
}

int CQELDocument::Fail(const Failure& failure)
{
    m_failure = failure;
    return 0;
}

// What the reader met, as hosts are told it.
Failure CQELDocument::WhyNotRead() const
{
    const XmlContext& xml = *m_context.pXml;
    if (xml.nLastError == XML_ERR_OPEN)
        return {xml.bOpened ? uint32_t{QEL_ERROR_READ} : CodeOfOpen(xml.nSystemError), 0, 0,
                xml.nSystemError};
    if (xml.nLastError == XML_ERR_MEMORY && !xml.bTooDeep) return {QEL_ERROR_MEMORY};
    if (xml.nLastError == XML_OK) return {xml.nTextSize ? QEL_ERROR_NOT_QEL : QEL_ERROR_XML_EMPTY};
    const auto nError = static_cast<uint32_t>(xml.nLastError);
    return {QEL_ERROR_XML + nError, xml.nErrorLine, xml.nErrorColumn};
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

template <class TChar>
int CQELDocument::SaveFile(const TChar* pszPath)
{
    if (!m_pRoot || !pszPath) return Fail({m_pRoot ? QEL_ERROR_ARGUMENT : QEL_ERROR_NO_DRAWING});
    CXmlFile file;
    if (file.Open(pszPath) != XML_OK) return Fail(file.Why());
    if (!SaveTo(file)) return 0;
    return file.Commit() ? 1 : Fail(file.Why());
}

int CQELDocument::Save(const char* pszPath)
{
    return SaveFile(pszPath);
}

int CQELDocument::SaveWide(const wchar_t* pszPath)
{
    return SaveFile(pszPath);
}

uint64_t CQELDocument::Measure()
{
    if (!m_pRoot) return Fail({QEL_ERROR_NO_DRAWING}) != 0;
    CXmlMemory counter(nullptr, 0);
    return SaveTo(counter) ? counter.Size() : 0;
}

int CQELDocument::Save(char* pBuffer, std::size_t nSize)
{
    if (!m_pRoot) return Fail({QEL_ERROR_NO_DRAWING});
    CXmlMemory memory(pBuffer, nSize);
    return SaveTo(memory);
}

// All bytes of a file.
int CQELDocument::SaveTo(CXmlSink& sink)
{
    XmlContext xml; // where the elements find the writer
    CXmlWriter writer(sink);
    xml.pWriter = &writer;
    m_context.pXml = &xml;
    if (m_encoding.bMark) sink.Put(XML_MARK);
    writer.Declaration(XML_VERSION, m_encoding.szName, nullptr);
    const int nResult = SaveTree();
    m_context.pXml = nullptr;
    sink.Put('\0'); // part of the file: readers stop there
    return nResult ? 1 : Fail({QEL_ERROR_MEMORY});
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

bool CQELDocument::MayMove(const CQELDocElm* pElm, const CQELDocElm* pNewParent,
                           const CQELDocElm* pAfter) const
{
    if (pElm == m_pRoot) return false;
    if (!pNewParent) return !pAfter;
    if (pNewParent->IsInside(pElm) || pAfter == pElm) return false;
    if (pAfter && pAfter->Parent() != pNewParent) return false;
    return pNewParent->Depth() + 1 + pElm->Height() <= XML_MAX_DEPTH;
}

int CQELDocument::MoveElement(CQELDocElm* pElm, CQELDocElm* pNewParent, CQELDocElm* pAfter)
{
    if (!MayMove(pElm, pNewParent, pAfter)) return 0;
    m_detached.Unlink(pElm);
    if (!pNewParent)
        m_detached.Keep(pElm);
    else if (pAfter)
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
