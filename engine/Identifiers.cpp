#include "engine/Identifiers.h"

#include "document/QELDocElm.h"
#include "render/QELViewElm.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

constexpr uint32_t SPREAD = 2654435761U; // spreads numbers that follow each other over all cells
constexpr uint32_t HASH_SEED = 2166136261U;
constexpr uint32_t HASH_STEP = 16777619U;
constexpr uint32_t FIRST_BITS = 3;
constexpr uint32_t MOST_BEARERS = 1U << 28; // more than any address space holds

uint32_t HashOf(const char* pszId)
{
    uint32_t nHash = HASH_SEED;
    for (; *pszId; ++pszId) nHash = (nHash ^ static_cast<unsigned char>(*pszId)) * HASH_STEP;
    return nHash * SPREAD;
}

uint32_t HashOf(const CQELViewElm* pView)
{
    const auto nAddress = reinterpret_cast<uintptr_t>(pView) / sizeof(void*);
    return static_cast<uint32_t>(nAddress) * SPREAD;
}

struct Total {
    uint32_t nBearers;
    std::size_t nBytes;
};

bool IsBearer(const CQELDocElm& elm)
{
    return *elm.Id() != 0;
}

Total CountBearersIn(const CQELDocElm* pRoot)
{
    Total total{0, 0};
    for (const CQELDocElm* pElm = pRoot; pElm; pElm = pElm->NextInTree(pRoot)) {
        if (!IsBearer(*pElm)) continue;
        ++total.nBearers;
        total.nBytes += std::strlen(pElm->Id()) + 1;
    }
    return total;
}

// At least one cell in four stays free.
uint32_t BitsFor(uint32_t nBearers)
{
    uint32_t nBits = FIRST_BITS;
    while ((1U << nBits) / 4 * 3 < nBearers) ++nBits;
    return nBits;
}

// Only what is longer than the beginning is looked for elsewhere.
bool Bears(const IdBearer& bearer, const char* pszId)
{
    for (const char c : bearer.szBegin) {
        if (c != *pszId++) return false;
        if (!c) return true;
    }
    return std::strcmp(bearer.pszId + sizeof bearer.szBegin, pszId) == 0;
}

} // namespace

int CIdentifiers::Keep(CQELDocElm* pRoot)
{
    Clear();
    const Total total = CountBearersIn(pRoot);
    if (total.nBearers == 0) return 1;
    m_ppKept = static_cast<CQELViewElm**>(
        std::malloc(total.nBearers * sizeof(CQELViewElm*) + total.nBytes));
    if (!m_ppKept) return 0;
    char* pText = reinterpret_cast<char*>(m_ppKept + total.nBearers);
    for (CQELDocElm* pElm = pRoot; pElm; pElm = pElm->NextInTree(pRoot)) {
        if (!IsBearer(*pElm)) continue;
        const std::size_t nSize = std::strlen(pElm->Id()) + 1;
        std::memcpy(pText, pElm->Id(), nSize);
        pText += nSize;
        m_ppKept[m_nKept++] = pElm->View();
    }
    return 1;
}

void CIdentifiers::Forget()
{
    std::free(m_pBlock);
    m_pBlock = nullptr;
    m_pBearers = nullptr;
    m_nBearers = 0;
    m_nIds = 0;
}

void CIdentifiers::Clear()
{
    Forget();
    std::free(m_ppKept);
    m_ppKept = nullptr;
    m_nKept = 0;
}

int CIdentifiers::Make(CQELDocElm* pRoot)
{
    const uint32_t nBearers = pRoot ? CountBearersIn(pRoot).nBearers : m_nKept;
    if (!TakeBlock(nBearers)) return 0;
    if (pRoot)
        FillFromDocument(pRoot);
    else
        FillFromKept();
    Link();
    return 1;
}

// The bearers, the cells of both kinds and the numbers of the identifiers, in zeros. 0 without
// memory.
int CIdentifiers::TakeBlock(uint32_t nBearers)
{
    if (nBearers > MOST_BEARERS) return 0;
    m_nBits = BitsFor(nBearers);
    const uint32_t nCells = 1U << m_nBits;
    const uint64_t nSize = uint64_t{nBearers} * (sizeof(IdBearer) + sizeof(uint32_t)) +
                           uint64_t{nCells} * (sizeof(Cell) + sizeof(uint32_t));
    if (nSize >= SIZE_MAX / 2) return 0;
    m_pBlock = std::calloc(1, static_cast<std::size_t>(nSize) + sizeof(IdBearer));
    if (!m_pBlock) return 0;
    void* pLine = m_pBlock;
    std::size_t nRoom = static_cast<std::size_t>(nSize) + sizeof(IdBearer);
    m_pBearers = static_cast<IdBearer*>(
        std::align(alignof(IdBearer), static_cast<std::size_t>(nSize), pLine, nRoom));
    m_pCells = reinterpret_cast<Cell*>(m_pBearers + nBearers);
    m_pnIds = reinterpret_cast<uint32_t*>(m_pCells + nCells);
    m_pnViewCells = m_pnIds + nBearers;
    return 1;
}

void CIdentifiers::Add(CQELViewElm* pView, CQELDocElm* pDoc, const char* pszId)
{
    IdBearer& bearer = m_pBearers[m_nBearers++];
    bearer.pView = pView;
    bearer.pHost = pView->HostSide();
    bearer.pDoc = pDoc;
    bearer.pszId = pszId;
    const std::size_t nSize = std::strlen(pszId) + 1;
    std::memcpy(bearer.szBegin, pszId, std::min(nSize, sizeof bearer.szBegin));
}

void CIdentifiers::FillFromDocument(CQELDocElm* pRoot)
{
    for (CQELDocElm* pElm = pRoot; pElm; pElm = pElm->NextInTree(pRoot))
        if (IsBearer(*pElm)) Add(pElm->View(), pElm, pElm->Id());
}

void CIdentifiers::FillFromKept()
{
    const char* pszId = reinterpret_cast<const char*>(m_ppKept + m_nKept);
    for (uint32_t n = 0; n < m_nKept; ++n) {
        Add(m_ppKept[n], nullptr, pszId);
        pszId += std::strlen(pszId) + 1;
    }
}

// From the last to the first, so that each finds behind it the next one of its identifier.
void CIdentifiers::Link()
{
    for (uint32_t n = m_nBearers; n > 0; --n) {
        IdBearer& bearer = m_pBearers[n - 1];
        Cell* pCell = CellOf(bearer.pszId);
        bearer.nNext = pCell->nBearer;
        *pCell = {HashOf(bearer.pszId), n};
        *CellOf(bearer.pView) = n;
    }
    NumberIds();
}

// First bearers are those that come next to none.
void CIdentifiers::NumberIds()
{
    for (uint32_t n = 0; n < m_nBearers; ++n)
        if (m_pBearers[n].nNext) m_pnIds[m_pBearers[n].nNext - 1] = 1;
    for (uint32_t n = 0; n < m_nBearers; ++n)
        if (!m_pnIds[n]) m_pnIds[m_nIds++] = n;
}

// The cell of an identifier, a free one when it has none.
CIdentifiers::Cell* CIdentifiers::CellOf(const char* pszId) const
{
    const uint32_t nMask = (1U << m_nBits) - 1;
    const uint32_t nHash = HashOf(pszId);
    uint32_t n = nHash >> (32 - m_nBits);
    while (m_pCells[n].nBearer &&
           (m_pCells[n].nHash != nHash || !Bears(m_pBearers[m_pCells[n].nBearer - 1], pszId)))
        n = (n + 1) & nMask;
    return &m_pCells[n];
}

uint32_t* CIdentifiers::CellOf(const CQELViewElm* pView) const
{
    const uint32_t nMask = (1U << m_nBits) - 1;
    uint32_t n = HashOf(pView) >> (32 - m_nBits);
    while (m_pnViewCells[n] && m_pBearers[m_pnViewCells[n] - 1].pView != pView) n = (n + 1) & nMask;
    return &m_pnViewCells[n];
}

const IdBearer* CIdentifiers::Find(const char* pszId) const
{
    if (!pszId || !*pszId) return nullptr;
    const uint32_t nFound = CellOf(pszId)->nBearer;
    return nFound ? &m_pBearers[nFound - 1] : nullptr;
}

const IdBearer* CIdentifiers::BearerOf(const CQELViewElm* pView) const
{
    const uint32_t nFound = *CellOf(pView);
    return nFound ? &m_pBearers[nFound - 1] : nullptr;
}
