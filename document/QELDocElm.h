// The base class of every document element: the tree links, the type, the identifier and the link
// to the view element, and the operations through which the document and the engine load, save,
// copy, measure and edit elements without knowing their class.
#pragma once

#include "base/Handles.h"
#include "base/Pool.h"
#include "base/TreeLinks.h"
#include "xml/XmlTree.h"

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <new>

class CElementTypes;
class CQELViewElm;

constexpr int ID_TEXT_SIZE = 256; // bytes of an identifier, the ending zero included

// What the elements of one document share.
struct DocContext {
    XmlContext* pXml = nullptr; // while a file is read or written
    const CElementTypes* pTypes;
};

// What a drawing sets of an element that the host drives, as the file spells it.
struct SetTexts {
    const char* pszSet = nullptr; // settings; null where there are none
    const char* pszValue = nullptr;

    [[nodiscard]] bool IsNone() const { return !pszSet && !pszValue; }
};

// What an element is made with. pPool: what it lies in, null for the heap and for the stack.
struct DocMaking {
    DocMaking(DocContext* pContextIn, CPool* pPoolIn = nullptr) noexcept
        : pContext(pContextIn), pPool(pPoolIn)
    {
    }
    DocContext* pContext;
    CPool* pPool;
};

class CQELDocElm : public CTreeLinks<CQELDocElm>,
                   public CPooled<CQELDocElm>,
                   public CElementHandle {
public:
    // The context also tells which document the element belongs to.
    CQELDocElm(const DocMaking& making, int32_t nType) noexcept;
    virtual ~CQELDocElm();
    // When a constructor throws. Without a size the block stays in the pool until that is cleared.
    static void operator delete(void* p) noexcept { std::free(p); }
    static void operator delete(void* p, CPool* pPool) noexcept
    {
        if (!pPool) std::free(p);
    }
    static void operator delete(CQELDocElm* p, std::destroying_delete_t, std::size_t nSize)
    {
        DeletePooled(p, nSize);
    }
    CQELDocElm(const CQELDocElm&) = delete;
    CQELDocElm& operator=(const CQELDocElm&) = delete;

    // A new element of the same class with the same data, not linked, without identifier and view.
    virtual int Clone(CQELDocElm** ppOut) const;
    // A deep copy right after this element under the same parent, or as the last child of another
    // one.
    virtual int CopyTo(CQELDocElm* pParent, CQELDocElm** ppOut);
    virtual int GetAttrSize(int* pnSize) const;
    virtual int GetAttr(void* pBlock) const;
    virtual int SetAttr(const void* pBlock);
    virtual int GetRect(RECT* prc) const;
    virtual int SetRect(const RECT& rc);
    virtual int MapRect(const RECT& rcOld, const RECT& rcNew);
    virtual int Load(); // from the XML element under the cursor
    // After a load: there was no memory for the identifier under the cursor.
    [[nodiscard]] bool HasLostId() const { return m_bLostId; }
    // Writes the element with its attributes and its text, to be followed by its children and
    // EndSave. 0: its type has no tag, and nothing is written.
    virtual int Save();
    void EndSave();

    void Remove(); // deletes all descendants, then unlinks
    [[nodiscard]] bool IsInside(const CQELDocElm* pTop) const; // pTop itself or a descendant
    [[nodiscard]] int32_t Depth() const;                       // levels below the topmost element
    [[nodiscard]] int32_t Height() const;                      // levels below this element

    [[nodiscard]] int32_t Type() const { return m_nType; }
    [[nodiscard]] const char* Id() const { return m_pszId ? m_pszId : ""; }
    int SetId(const char* pszId); // what is longer than 255 bytes is cut
    [[nodiscard]] CQELViewElm* View() const { return m_pView; }
    void SetView(CQELViewElm* pView) { m_pView = pView; }
    [[nodiscard]] DocContext* Context() const { return m_pContext; }
    // The element of a handle, null when there is none.
    static CQELDocElm* OfHandle(uintptr_t nValue)
    {
        return static_cast<CQELDocElm*>(FindHandle(nValue));
    }
    // The same among the elements of one document.
    static CQELDocElm* OfHandle(uintptr_t nValue, const DocContext* pContext)
    {
        return static_cast<CQELDocElm*>(FindHandle(nValue, IsOf, pContext));
    }
    // They are there as long as the element is, and do not change.
    [[nodiscard]] virtual SetTexts Set() const { return {}; }
    // Whether there was no memory for what a new element of its class has.
    [[nodiscard]] virtual bool LacksMemory() const { return false; }

protected:
    [[nodiscard]] XmlContext* Xml() const { return m_pContext->pXml; }
    [[nodiscard]] const CElementTypes& Types() const { return *m_pContext->pTypes; }
    [[nodiscard]] CXmlWriter& Writer() const { return *Xml()->pWriter; } // while it is saved
    void BeginSave(); // the tag, which every class of its own has, and the identifier

private:
    static bool IsOf(const CElementHandle* pHandle, const void* pContext)
    {
        return static_cast<const CQELDocElm&>(*pHandle).m_pContext == pContext;
    }
    int TakeCopyId(const char* pszSource);

    DocContext* m_pContext;
    CQELViewElm* m_pView = nullptr;
    char* m_pszId = nullptr;
    int16_t m_nType; // last: a derived class's small fields fill what is left of the word
    bool m_bLostId = false;
};

// For the leaf classes: a new element of class T that takes its fields from another one.
template <class T>
int CloneAs(const T& source, CQELDocElm** ppOut)
{
    auto* pCopy = new (std::nothrow) T(source.Context());
    if (pCopy && !pCopy->TakeFields(source)) {
        delete pCopy;
        pCopy = nullptr;
    }
    *ppOut = pCopy;
    return pCopy ? 1 : 0;
}
