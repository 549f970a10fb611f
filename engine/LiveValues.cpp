#include "engine/LiveValues.h"

#include "engine/QELEngine.h"
#include "render/QELViewElm.h"

#include <cstring>

CLiveValues::CLiveValues(CQELEngine& engine) noexcept
    : m_engine(engine), m_pIds(engine.View().Root() ? engine.Identifiers() : nullptr)
{
}

const IdBearer* CLiveValues::First(const char* pszId) const
{
    return m_pIds && pszId && *pszId ? m_pIds->Find(pszId) : nullptr;
}

CLiveElement CLiveValues::Element(const IdBearer* pBearer) const
{
    return {m_engine.View().Live(), *pBearer->pView, pBearer->pHost, &pBearer->pState};
}

// What is left belongs to elements that have another identifier by now, or none.
int CLiveValues::ResetAll()
{
    if (!m_pIds) return 0;
    CLiveLayer& layer = m_engine.View().Live();
    int nReached = 0;
    for (uint32_t n = 0; n < m_pIds->CountBearers(); ++n)
        nReached += Element(m_pIds->BearerAt(n)).Reset();
    layer.ForEach([&](LiveState& state) { CLiveElement(layer, *state.pElm).Reset(); });
    return nReached;
}

int CLiveValues::Advance(uint32_t nTime)
{
    int nMoving = 0;
    m_engine.View().SetClock(ClockTimes::Now());
    m_engine.View().Live().ForEach([&](LiveState& state) {
        if (!state.IsMoving()) return;
        state.pElm->Touch();
        nMoving += state.Advance(nTime);
    });
    return nMoving;
}

int CLiveValues::IdAt(uint32_t nIndex, char* pszOut, int nSize, int* pnType) const
{
    const IdBearer* pBearer = m_pIds ? m_pIds->FirstOf(nIndex) : nullptr;
    if (!pBearer || !pszOut || nSize <= 0) return 0;
    const std::size_t nNeeded = std::strlen(pBearer->pszId) + 1;
    if (nNeeded > static_cast<std::size_t>(nSize)) return 0;
    std::memcpy(pszOut, pBearer->pszId, nNeeded);
    if (pnType) *pnType = pBearer->pView->Type();
    return 1;
}
