// One drawing: a tree of document elements under a root, read from and written to a file through
// the XML library, whose context exists only while a file is read or written.
#pragma once

#include "document/QELDocElm.h"
#include "document/QELDocQEL.h"

#include <cstdint>

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
    int New() { return Load(nullptr); }
    int Save(const char* pszPath);
    int Close();

    // A new element as the last child of pParent or, with pAfter, after that sibling. Type 0 makes
    // a new root, and everything else is deleted.
    CQELDocElm* CreateElement(CQELDocElm* pParent, CQELDocElm* pAfter, int32_t nType);
    int DeleteElement(CQELDocElm* pElm);
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
    int SaveTree();
    [[nodiscard]] int ParseTemplate() const;

    CPool m_pool; // what the elements of the file lie in; those that are made later are on the heap
    DocContext m_context;
    CQELDocQEL* m_pRoot = nullptr;
    CDetachedList<CQELDocElm> m_detached;
};
