// The links of a tree whose nodes own their children, for the document elements and the view
// elements alike. T derives from CTreeLinks<T>; its destructor deletes the children through
// DeleteChildren and unlinks itself.
#pragma once

template <class T>
class CDetachedList;

template <class T>
class CTreeLinks {
public:
    [[nodiscard]] T* Parent() const { return m_pParent; }
    [[nodiscard]] T* FirstChild() const { return m_pFirstChild; }
    [[nodiscard]] T* LastChild() const { return m_pLastChild; }
    [[nodiscard]] T* NextSibling() const { return m_pNext; }
    [[nodiscard]] T* PrevSibling() const { return m_pPrev; }

    void AppendChild(T* pChild)
    {
        pChild->m_pParent = Self();
        pChild->m_pPrev = m_pLastChild;
        pChild->m_pNext = nullptr;
        (m_pLastChild ? m_pLastChild->m_pNext : m_pFirstChild) = pChild;
        m_pLastChild = pChild;
        Self()->LinksChanged();
    }

    void PrependChild(T* pChild)
    {
        if (m_pFirstChild)
            pChild->InsertBefore(m_pFirstChild);
        else
            AppendChild(pChild);
    }

    void InsertAfter(T* pSibling) // links this node, which is not linked, after a sibling
    {
        m_pParent = pSibling->m_pParent;
        m_pPrev = pSibling;
        m_pNext = pSibling->m_pNext;
        if (m_pNext) m_pNext->m_pPrev = Self();
        pSibling->m_pNext = Self();
        if (m_pParent && m_pParent->m_pLastChild == pSibling) m_pParent->m_pLastChild = Self();
        Self()->LinksChanged();
    }

    void InsertBefore(T* pSibling) // likewise before one
    {
        m_pParent = pSibling->m_pParent;
        m_pNext = pSibling;
        m_pPrev = pSibling->m_pPrev;
        if (m_pPrev) m_pPrev->m_pNext = Self();
        pSibling->m_pPrev = Self();
        if (m_pParent && m_pParent->m_pFirstChild == pSibling) m_pParent->m_pFirstChild = Self();
        Self()->LinksChanged();
    }

    void Unlink()
    {
        Self()->LinksChanged(); // while it still knows what it is in
        if (m_pPrev) m_pPrev->m_pNext = m_pNext;
        if (m_pNext) m_pNext->m_pPrev = m_pPrev;
        if (m_pParent && m_pParent->m_pFirstChild == Self()) m_pParent->m_pFirstChild = m_pNext;
        if (m_pParent && m_pParent->m_pLastChild == Self()) m_pParent->m_pLastChild = m_pPrev;
        m_pParent = m_pNext = m_pPrev = nullptr;
    }

    void DeleteChildren()
    {
        // Unlinking moves the first-child link on, which the analyzer does not see.
        while (T* pChild = m_pFirstChild) {
            pChild->Unlink(); // NOLINT(clang-analyzer-cplusplus.NewDelete)
            delete pChild;
        }
    }

    // The node after this one in a walk of pTop's subtree, parents first; null at its end.
    [[nodiscard]] T* NextInTree(const T* pTop) const
    {
        if (m_pFirstChild) return m_pFirstChild;
        for (const T* p = static_cast<const T*>(this); p && p != pTop; p = p->m_pParent)
            if (p->m_pNext) return p->m_pNext;
        return nullptr;
    }

protected:
    void LinksChanged() {} // for a T that wants to know

    CTreeLinks() = default;
    ~CTreeLinks() = default;

    T* m_pParent = nullptr;
    T* m_pFirstChild = nullptr;
    T* m_pPrev = nullptr;
    T* m_pNext = nullptr;
    T* m_pLastChild = nullptr; // so that appending does not walk the children

private:
    friend T;
    friend class CDetachedList<T>;
    T* Self() { return static_cast<T*>(this); }
};

// The nodes that were taken out of a tree and may come back: they have no parent, and are deleted
// with the tree they came from.
template <class T>
class CDetachedList {
public:
    CDetachedList() = default;
    ~CDetachedList() { DeleteAll(); }
    CDetachedList(const CDetachedList&) = delete;
    CDetachedList& operator=(const CDetachedList&) = delete;

    void Keep(T* pNode) // a node that is not linked
    {
        Links(pNode).m_pNext = m_pFirst;
        if (m_pFirst) Links(m_pFirst).m_pPrev = pNode;
        m_pFirst = pNode;
    }

    void Unlink(T* pNode) // a node of this list or of a tree
    {
        if (m_pFirst == pNode) m_pFirst = Links(pNode).m_pNext;
        pNode->Unlink();
    }

    void DeleteAll()
    {
        while (T* pNode = m_pFirst) {
            Unlink(pNode);
            delete pNode;
        }
    }

private:
    static CTreeLinks<T>& Links(T* pNode) { return *pNode; }

    T* m_pFirst = nullptr;
};
