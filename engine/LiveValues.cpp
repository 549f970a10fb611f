#include "engine/LiveValues.h"

#include "engine/QELEngine.h"
#include "render/QELViewElm.h"

CLiveValues::CLiveValues(CQELEngine& engine) noexcept
    : m_engine(engine), m_pIds(engine.View().Root() ? engine.Identifiers() : nullptr),
      m_nLacks(engine.View().Live().Lacks())
{
}

uint32_t CLiveValues::WhyNot(const char* pszId, uint32_t nCode) const
{
    if (!m_engine.HasDrawing()) return QEL_ERROR_NO_DRAWING;
    if (!pszId) return QEL_ERROR_ARGUMENT;
    if (!m_pIds || m_engine.View().Live().Lacks() != m_nLacks) return QEL_ERROR_MEMORY;
    return First(pszId) ? nCode : uint32_t{QEL_ERROR_NONE};
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

const IdBearer* CLiveValues::IdAt(uint32_t nIndex) const
{
    return m_pIds ? m_pIds->FirstOf(nIndex) : nullptr;
}
