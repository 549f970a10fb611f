// One drawing: a tree of document elements under a root, read from and written to a file through
// the XML library, whose context exists only while a file is read or written.
#pragma once

#include "base/Failure.h"
#include "document/QELDocElm.h"
#include "document/QELDocQEL.h"
#include "document/TextEncoding.h"

#include <cstdint>

class CXmlSink;
struct ElementType;

class CQELDocument {
public:
    explicit CQELDocument(const CElementTypes& types) noexcept : m_context{nullptr, &types} {}
    virtual ~CQELDocument();
    CQELDocument(const CQELDocument&) = delete;
    CQELDocument& operator=(const CQELDocument&) = delete;

    // Null: the built-in template, an empty drawing. pSpare gets the memory in which the file was
    // read, when there are elements enough to put it to use.
    int Load(const char* pszPath, CArena* pSpare = nullptr);
    // From where the source says; one that says nothing is the template.
    // nSetPage: what the host has set for texts; with any but PAGE_ANSI a save declares what the
    // file does, and a byte order mark is taken and kept.
    int Load(const XmlSource& source, CArena* pSpare = nullptr, uint32_t nSetPage = PAGE_ANSI);
    int New() { return Load(nullptr); }
    int Save(const char* pszPath);
    int SaveWide(const wchar_t* pszPath);
    // The bytes of such a file: how many they are, 0 on failure, and into a buffer of as many.
    uint64_t Measure();
    int Save(char* pBuffer, std::size_t nSize);
    int Close();
    // Of the drawing that was read last.
    [[nodiscard]] const TextEncoding& Encoding() const { return m_encoding; }
    void SetEncoding(const TextEncoding& encoding) { m_encoding = encoding; }
    // Why the last of these that failed did.
    [[nodiscard]] const Failure& LastFailure() const { return m_failure; }

    // A new element as the last child of pParent or, with pAfter, after that sibling. Type 0 makes
    // a new root, and everything else is deleted.
    CQELDocElm* CreateElement(CQELDocElm* pParent, CQELDocElm* pAfter, int32_t nType);
    int DeleteElement(CQELDocElm* pElm);
    [[nodiscard]] bool MayMove(const CQELDocElm* pElm, const CQELDocElm* pNewParent,
                               const CQELDocElm* pAfter) const;
    // Without pAfter the element becomes the first child; with a null parent it leaves the picture
    // and stays owned by the document.
    int MoveElement(CQELDocElm* pElm, CQELDocElm* pNewParent, CQELDocElm* pAfter);
    // A deep copy right after the source. Null on failure, and for the root.
    CQELDocElm* CopyElement(CQELDocElm* pElm);
    CQELDocQEL* NewRoot();          // not linked; null without memory
    int SetRoot(CQELDocQEL* pRoot); // everything else is deleted

    // Queries; null or 0 when what is asked for does not exist.
    [[nodiscard]] CQELDocQEL* GetRoot() const { return m_pRoot; }
    [[nodiscard]] bool Owns(const CQELDocElm* pElm) const { return pElm->Context() == &m_context; }
    [[nodiscard]] CQELDocElm* OfHandle(uintptr_t nValue) const
    {
        return CQELDocElm::OfHandle(nValue, &m_context);
    }
    static int HasChildren(const CQELDocElm* pElm) { return pElm->FirstChild() ? 1 : 0; }
    static CQELDocElm* GetFirstChild(const CQELDocElm* pElm) { return pElm->FirstChild(); }
    static CQELDocElm* GetLastChild(const CQELDocElm* pElm) { return pElm->LastChild(); }
    static CQELDocElm* GetParent(const CQELDocElm* pElm) { return pElm->Parent(); }
    static CQELDocElm* GetNextSibling(const CQELDocElm* pElm);
    static CQELDocElm* GetPrevSibling(const CQELDocElm* pElm);
    static int32_t GetElementType(const CQELDocElm* pElm) { return pElm->Type(); }
    static const char* GetElementId(const CQELDocElm* pElm) { return pElm->Id(); }
    static int SetElementId(CQELDocElm* pElm, const char* pszId) { return pElm->SetId(pszId); }
    static CQELViewElm* GetViewElement(const CQELDocElm* pElm) { return pElm->View(); }
    static void SetViewElement(CQELDocElm* pElm, CQELViewElm* pView) { pElm->SetView(pView); }

private:
    struct Reading {
        CQELDocument* pDocument;
        CQELDocElm* pOpen = nullptr; // whose end is still to come
        int32_t nSkipped = 0;        // elements that are open and skipped
        std::size_t nMade = 0;
    };
    static bool OnOpened(void* pUser);
    static bool OnClosed(void* pUser);
    [[nodiscard]] const ElementType* RowToRead(const CQELDocElm* pParent) const;
    template <class TChar>
    int SaveFile(const TChar* pszPath);
    int SaveTo(CXmlSink& sink);
    int SaveTree();
    [[nodiscard]] int ParseTemplate() const;
    int Fail(const Failure& failure);
    [[nodiscard]] Failure WhyNotRead() const;

    CPool m_pool; // what the elements of the file lie in; those that are made later are on the heap
    DocContext m_context;
    CQELDocQEL* m_pRoot = nullptr;
    CDetachedList<CQELDocElm> m_detached;
    TextEncoding m_encoding;
    Failure m_failure;
};
