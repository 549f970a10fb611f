// The exported functions that reach elements by their identifier.
#include "engine/Gates.h"
#include "engine/LiveValues.h"

namespace {

template <class... Given, class... Taken>
int Set(HQELENGINE hEngine, const char* pszId, int (CLiveElement::*pfnSet)(Given...),
        Taken... values)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine ? CLiveValues(*pEngine).Set(pszId, pfnSet, values...) : 0;
}

template <class... Given, class... Taken>
int Get(HQELENGINE hEngine, const char* pszId, int (CLiveElement::*pfnGet)(Given...) const,
        Taken... values)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine ? CLiveValues(*pEngine).Get(pszId, pfnGet, values...) : 0;
}

} // namespace

int QELAPI QELSetValue(HQELENGINE hEngine, const char* pszId, double fValue)
{
    return Set(hEngine, pszId, &CLiveElement::SetValue, fValue);
}

int QELAPI QELGetValue(HQELENGINE hEngine, const char* pszId, double* pfValue)
{
    return pfValue ? Get(hEngine, pszId, &CLiveElement::GetValue, pfValue) : 0;
}

int QELAPI QELSetPin(HQELENGINE hEngine, const char* pszId, int nPin, double fValue)
{
    return Set(hEngine, pszId, &CLiveElement::SetPin, nPin, fValue);
}

int QELAPI QELGetPin(HQELENGINE hEngine, const char* pszId, int nPin, double* pfValue)
{
    return pfValue ? Get(hEngine, pszId, &CLiveElement::GetPin, nPin, pfValue) : 0;
}

int QELAPI QELSetSelector(HQELENGINE hEngine, const char* pszId, DWORD nSelector, double fValue)
{
    return Set(hEngine, pszId, &CLiveElement::SetSelector, nSelector, fValue);
}

int QELAPI QELGetSelector(HQELENGINE hEngine, const char* pszId, DWORD nSelector, double* pfValue)
{
    return pfValue ? Get(hEngine, pszId, &CLiveElement::GetSelector, nSelector, pfValue) : 0;
}

int QELAPI QELSetText(HQELENGINE hEngine, const char* pszId, const char* pszText)
{
    return Set(hEngine, pszId, &CLiveElement::SetText, pszText);
}

int QELAPI QELSetVisible(HQELENGINE hEngine, const char* pszId, int bVisible)
{
    return Set(hEngine, pszId, &CLiveElement::SetVisible, bVisible != 0);
}

int QELAPI QELSetColor(HQELENGINE hEngine, const char* pszId, int nPlace, COLORREF clr)
{
    return Set(hEngine, pszId, &CLiveElement::SetColor, nPlace, clr);
}

int QELAPI QELResetLive(HQELENGINE hEngine, const char* pszId)
{
    if (pszId) return Set(hEngine, pszId, &CLiveElement::Reset);
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine ? CLiveValues(*pEngine).ResetAll() : 0;
}

int QELAPI QELSetQuality(HQELENGINE hEngine, const char* pszId, int nQuality)
{
    return Set(hEngine, pszId, &CLiveElement::SetQuality, nQuality);
}

int QELAPI QELSetEasing(HQELENGINE hEngine, const char* pszId, DWORD nTime)
{
    return Set(hEngine, pszId, &CLiveElement::SetEasing, nTime);
}

int QELAPI QELAdvance(HQELENGINE hEngine, DWORD nTime)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine ? CLiveValues(*pEngine).Advance(nTime) : 0;
}

int QELAPI QELGetLiveId(HQELENGINE hEngine, DWORD nIndex, char* pszBuffer, int nSize, int* pnType)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine ? CLiveValues(*pEngine).IdAt(nIndex, pszBuffer, nSize, pnType) : 0;
}
