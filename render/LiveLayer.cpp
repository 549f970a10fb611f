#include "render/LiveLayer.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

constexpr uint32_t FIRST_BITS = 4;
constexpr uint32_t MOST_BITS = 28;
constexpr uint64_t SPREAD = 0x9E3779B97F4A7C15ULL; // neighbours in memory get cells far apart
constexpr uint32_t SPREAD_BITS = 64;

void Free(LiveState* pState)
{
    std::free(pState->pszText);
    std::free(pState->pfPins);
    delete pState;
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
    if (!IsMoving()) return fValue;
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

// Twice the cells. Without memory only the chains grow longer, but the first cells must be there.
int CLiveLayer::Grow()
{
    const uint32_t nBits = m_ppCells ? m_nBits + 1 : FIRST_BITS;
    if (nBits > MOST_BITS) return 1;
    auto** ppCells = new (std::nothrow) LiveState* [std::size_t{1} << nBits] {};
    if (!ppCells) return m_ppCells ? 1 : 0;
    delete[] m_ppCells;
    m_ppCells = ppCells;
    m_nBits = nBits;
    for (LiveState* pState = m_pFirst; pState; pState = pState->pNext) {
        LiveState** ppCell = CellOf(pState->pElm);
        pState->pNextInCell = *ppCell;
        *ppCell = pState;
    }
    return 1;
}

LiveState* CLiveLayer::Make(CQELViewElm* pElm)
{
    if (LiveState* pFound = Find(pElm)) return pFound;
    if ((!m_ppCells || m_nCount >= 1U << m_nBits) && !Grow()) return nullptr;
    auto* pState = new (std::nothrow) LiveState{};
    if (!pState) return nullptr;
    pState->pElm = pElm;
    pState->pNext = m_pFirst;
    if (m_pFirst) m_pFirst->pPrev = pState;
    m_pFirst = pState;
    LiveState** ppCell = CellOf(pElm);
    pState->pNextInCell = *ppCell;
    *ppCell = pState;
    ++m_nCount;
    return pState;
}

void CLiveLayer::Drop(CQELViewElm* pElm)
{
    LiveState* pState = Find(pElm);
    if (!pState) return;
    LiveState** ppPlace = CellOf(pElm);
    while (*ppPlace != pState) ppPlace = &(*ppPlace)->pNextInCell;
    *ppPlace = pState->pNextInCell;
    (pState->pPrev ? pState->pPrev->pNext : m_pFirst) = pState->pNext;
    if (pState->pNext) pState->pNext->pPrev = pState->pPrev;
    --m_nCount;
    Free(pState);
}

void CLiveLayer::Clear()
{
    while (m_pFirst) {
        LiveState* pState = m_pFirst;
        m_pFirst = pState->pNext;
        Free(pState);
    }
    delete[] m_ppCells;
    m_ppCells = nullptr;
    m_nBits = 0;
    m_nCount = 0;
}

int CLiveLayer::SetText(LiveState* pState, const char* pszText)
{
    char* pszCopy = nullptr;
    if (pszText) {
        const std::size_t nSize = std::strlen(pszText) + 1;
        pszCopy = static_cast<char*>(std::malloc(nSize));
        if (!pszCopy) return 0;
        std::memcpy(pszCopy, pszText, nSize);
    }
    std::free(pState->pszText);
    pState->pszText = pszCopy;
    return 1;
}
