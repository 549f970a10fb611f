// Which elements of the picture bear an identifier: an index of them by it, in document order, made
// at the first call that needs one. While a drawing can be edited it is made from the document, and
// forgotten at every edit that changes the tree or an identifier; in show-only mode, where the
// document is dropped, it is made from the identifiers that were kept of it.
#pragma once

#include <cstddef>
#include <cstdint>

class CHostDriven;
class CQELDocElm;
class CQELViewElm;
struct LiveState;

// An element that bears an identifier, with all that a value on its way to the element asks for: a
// drawing may have ten thousand of them, and whatever stands elsewhere is another wait for memory.
struct alignas(64) IdBearer {
    CQELViewElm* pView;
    CHostDriven* pHost;        // what the host drives of it; null for nothing
    mutable LiveState* pState; // where its state was last; by now it may be another element's
    CQELDocElm* pDoc;          // null in show-only mode
    const char* pszId;         // never empty
    uint32_t nNext;            // the next one of the same identifier, counted from 1; 0 for none
    char szBegin[64 - 5 * sizeof(void*) - sizeof(uint32_t)]; // of the identifier; zeros behind it
};
static_assert(sizeof(IdBearer) == 64, "one fills a line of the cache");

class CIdentifiers {
public:
    CIdentifiers() noexcept = default;
    ~CIdentifiers() { Clear(); }
    CIdentifiers(const CIdentifiers&) = delete;
    CIdentifiers& operator=(const CIdentifiers&) = delete;

    // Keeps the identifiers of a document that is about to be dropped. 0 without memory.
    int Keep(CQELDocElm* pRoot);
    void Forget(); // the index; what was kept stays
    void Clear();  // all of it
    // Makes the index, which is not there yet, of the document or, where there is none, of what was
    // kept. 0 without memory. What is found in it holds until Forget.
    int Make(CQELDocElm* pRoot);
    [[nodiscard]] bool IsMade() const { return m_pBearers != nullptr; }

    // Of an index that is made: the first element that bears an identifier, and the next one of the
    // same; null for none.
    [[nodiscard]] const IdBearer* Find(const char* pszId) const;
    [[nodiscard]] const IdBearer* Next(const IdBearer* pBearer) const
    {
        return pBearer->nNext ? &m_pBearers[pBearer->nNext - 1] : nullptr;
    }

    // The different identifiers by number, as the first bearers of each stand in the document.
    [[nodiscard]] uint32_t CountIds() const { return m_nIds; }
    [[nodiscard]] const IdBearer* FirstOf(uint32_t nId) const
    {
        return nId < m_nIds ? &m_pBearers[m_pnIds[nId]] : nullptr;
    }

    // All bearers by number, in document order: what is kept of each elsewhere goes by it.
    [[nodiscard]] uint32_t CountBearers() const { return m_nBearers; }
    [[nodiscard]] uint32_t NumberOf(const IdBearer* pBearer) const
    {
        return static_cast<uint32_t>(pBearer - m_pBearers);
    }
    [[nodiscard]] const IdBearer* BearerAt(uint32_t nNumber) const { return &m_pBearers[nNumber]; }

    // What an element bears; null when that is nothing.
    [[nodiscard]] const IdBearer* BearerOf(const CQELViewElm* pView) const;

private:
    // A place in the index by identifier. The hash spares looking at bearers of others.
    struct Cell {
        uint32_t nHash;
        uint32_t nBearer; // the first one, counted from 1; 0: the cell is free
    };

    int TakeBlock(uint32_t nBearers);
    void FillFromDocument(CQELDocElm* pRoot);
    void FillFromKept();
    void Add(CQELViewElm* pView, CQELDocElm* pDoc, const char* pszId);
    void Link();
    void NumberIds();
    [[nodiscard]] Cell* CellOf(const char* pszId) const;
    [[nodiscard]] uint32_t* CellOf(const CQELViewElm* pView) const;

    // What was kept: the elements, and their identifiers one after another, each with its zero.
    CQELViewElm** m_ppKept = nullptr;
    uint32_t m_nKept = 0;

    // The index, all in one block. The bearers are the first in it that begins with a line.
    void* m_pBlock = nullptr;
    IdBearer* m_pBearers = nullptr;
    Cell* m_pCells = nullptr;
    uint32_t* m_pnIds = nullptr;       // the first bearer of each identifier
    uint32_t* m_pnViewCells = nullptr; // by element its number, counted from 1; 0: free
    uint32_t m_nBearers = 0;
    uint32_t m_nIds = 0;
    uint32_t m_nBits = 0; // 2 to this power are the cells of each kind
};
