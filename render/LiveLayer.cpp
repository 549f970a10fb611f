#include "render/LiveLayer.h"

#include "render/HostDriven.h"
#include "render/QELViewElm.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace {

constexpr uint32_t FIRST_BITS = 4;
constexpr uint32_t MOST_BITS = 28;
constexpr uint64_t SPREAD = 0x9E3779B97F4A7C15ULL; // neighbours in memory get cells far apart
constexpr uint32_t SPREAD_BITS = 64;
constexpr uint32_t MOST_NEW_PLACES = 256; // of one block

void FreeWhatItHolds(LiveState* pState)
{
    std::free(pState->pszText);
    std::free(pState->pfPins);
    delete pState->pPicture;
}

// A value beyond the end of a full circle stands at its beginning.
double Wrapped(double fValue, const LiveMove& move)
{
    if (move.fTurn <= 0) return fValue;
    const double fAlong = std::fmod(fValue - move.fLow, move.fTurn);
    return move.fLow + (fAlong < 0 ? fAlong + move.fTurn : fAlong);
}

} // namespace

// Quick at first and slow at the end. On a full circle it goes the shorter way round.
double LiveState::ShownValue() const
{
    double fWay = fValue - move.fFrom;
    if (move.fTurn > 0 && fWay > move.fTurn / 2) fWay -= move.fTurn;
    if (move.fTurn > 0 && fWay < -move.fTurn / 2) fWay += move.fTurn;
    const double fLeft = 1 - static_cast<double>(move.nGone) / move.nTime;
    return Wrapped(move.fFrom + fWay * (1 - fLeft * fLeft * fLeft), move);
}

int LiveState::Advance(uint32_t nTime)
{
    const uint32_t nLeft = move.nTime - move.nGone;
    move.nGone += nTime < nLeft ? nTime : nLeft;
    return IsMoving() ? 1 : 0;
}

LiveQuality LiveState::ShownQuality() const
{
    if (bHasValue && !bIsNumber) return QUALITY_BAD;
    const bool bNoPin =
        pfPins && std::any_of(pfPins, pfPins + LIVE_PINS, [](double f) { return std::isnan(f); });
    return bNoPin ? QUALITY_BAD : nQuality;
}

LiveState** CLiveLayer::CellOf(const CQELViewElm* pElm) const
{
    const uint64_t nSpread = reinterpret_cast<uintptr_t>(pElm) * SPREAD;
    return m_ppCells + (nSpread >> (SPREAD_BITS - m_nBits));
}

LiveState* CLiveLayer::Find(const CQELViewElm* pElm) const
{
    if (!m_ppCells) return nullptr;
    LiveState* pState = *CellOf(pElm);
    while (pState && pState->pElm != pElm) pState = pState->pNextInCell;
    return pState;
}

void CLiveLayer::LinkInCell(LiveState* pState) const
{
    LiveState** ppCell = CellOf(pState->pElm);
    pState->pNextInCell = *ppCell;
    *ppCell = pState;
}

// Twice the cells. Without memory only the chains grow longer, but the first cells must be there.
int CLiveLayer::Grow()
{
    const uint32_t nBits = m_ppCells ? m_nBits + 1 : FIRST_BITS;
    if (nBits > MOST_BITS) return 1;
    auto** ppCells =
        static_cast<LiveState**>(std::calloc(std::size_t{1} << nBits, sizeof(LiveState*)));
    if (!ppCells) return m_ppCells ? 1 : 0;
    std::free(m_ppCells);
    m_ppCells = ppCells;
    m_nBits = nBits;
    ForEach([&](LiveState& state) { LinkInCell(&state); });
    return 1;
}

LiveState* CLiveLayer::TakePlace()
{
    if (!m_pFree && !AddPlaces()) return nullptr;
    LiveState* pState = m_pFree;
    m_pFree = pState->pNext;
    pState->pNext = nullptr;
    return pState;
}

void CLiveLayer::PutFree(LiveState* pState)
{
    *pState = LiveState{};
    pState->pNext = m_pFree;
    m_pFree = pState;
}

// Each block has twice as many as the one before, up to a bound.
int CLiveLayer::AddPlaces()
{
    const std::size_t nSize = m_nMorePlaces * sizeof(LiveState);
    std::size_t nRoom = nSize + sizeof(LiveState);
    auto* pBlock = static_cast<Places*>(std::malloc(sizeof(Places) + nRoom));
    if (!pBlock) return 0;
    pBlock->pNext = m_pPlaces;
    m_pPlaces = pBlock;
    void* pAt = pBlock + 1;
    pBlock->pFirst = static_cast<LiveState*>(std::align(alignof(LiveState), nSize, pAt, nRoom));
    pBlock->pEnd = pBlock->pFirst + m_nMorePlaces;
    for (LiveState* p = pBlock->pEnd; p != pBlock->pFirst;) PutFree(--p);
    m_nMorePlaces = std::min(2 * m_nMorePlaces, MOST_NEW_PLACES);
    return 1;
}

LiveState* CLiveLayer::Make(CQELViewElm* pElm)
{
    if (LiveState* pFound = Find(pElm)) return pFound;
    if ((!m_ppCells || m_nCount >= 1U << m_nBits) && !Grow()) return nullptr;
    LiveState* pState = TakePlace();
    if (!pState) return nullptr;
    pState->pElm = pElm;
    LinkInCell(pState);
    ++m_nCount;
    return pState;
}

void CLiveLayer::Drop(CQELViewElm* pElm)
{
    HandOver();
    LiveState* pState = Find(pElm);
    if (!pState) return;
    LiveState** ppPlace = CellOf(pElm);
    while (*ppPlace != pState) ppPlace = &(*ppPlace)->pNextInCell;
    *ppPlace = pState->pNextInCell;
    --m_nCount;
    FreeWhatItHolds(pState);
    PutFree(pState);
}

// Each element takes what it was made for with the last of its numbers.
void CLiveLayer::HandOverAll()
{
    while (LiveState* pState = m_pWaiting) {
        m_pWaiting = pState->pNext;
        pState->bWaits = false;
        if (CHostDriven* pHost = pState->pElm->HostSide()) pHost->ShowNumber(pState->fValue);
        pState->pElm->Touch();
    }
}

void CLiveLayer::Clear()
{
    ForEach([](LiveState& state) { FreeWhatItHolds(&state); });
    m_pWaiting = nullptr;
    m_pFree = nullptr;
    while (m_pPlaces) std::free(std::exchange(m_pPlaces, m_pPlaces->pNext));
    m_nMorePlaces = FIRST_PLACES;
    std::free(m_ppCells);
    m_ppCells = nullptr;
    m_nBits = 0;
    m_nCount = 0;
}

int CLiveLayer::SetText(LiveState* pState, const char* pszText)
{
    const std::size_t nSize = std::strlen(pszText) + 1;
    auto* pszCopy = static_cast<char*>(std::malloc(nSize));
    if (!pszCopy) return 0;
    std::memcpy(pszCopy, pszText, nSize);
    std::free(pState->pszText);
    pState->pszText = pszCopy;
    return 1;
}
