// The exported functions that reach elements by their identifier.
#include "engine/Errors.h"
#include "engine/Gates.h"
#include "engine/LiveValues.h"

#include <tuple>

namespace {

template <class... Given, class... Taken>
int Set(HQELENGINE hEngine, const char* pszId, int (CLiveElement::*pfnSet)(Given...),
        Taken... values)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    return pEngine ? CLiveValues(*pEngine).Set(pszId, pfnSet, values...) : 0;
}

// The last of what a get is handed is where its answer goes.
template <class... Taken>
bool IsGiven(Taken... values)
{
    return std::get<sizeof...(values) - 1>(std::tuple<Taken...>(values...)) != nullptr;
}

template <class... Given, class... Taken>
int Get(HQELENGINE hEngine, const char* pszId, int (CLiveElement::*pfnGet)(Given...) const,
        Taken... values)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (!IsGiven(values...)) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    return CLiveValues(*pEngine).Get(pszId, pfnGet, values...);
}

} // namespace

int QELAPI QELSetValue(HQELENGINE hEngine, const char* pszId, double fValue)
{
    return Set(hEngine, pszId, &CLiveElement::SetValue, fValue);
}

int QELAPI QELGetValue(HQELENGINE hEngine, const char* pszId, double* pfValue)
{
    return Get(hEngine, pszId, &CLiveElement::GetValue, pfValue);
}

int QELAPI QELSetPin(HQELENGINE hEngine, const char* pszId, int nPin, double fValue)
{
    return Set(hEngine, pszId, &CLiveElement::SetPin, nPin, fValue);
}

int QELAPI QELGetPin(HQELENGINE hEngine, const char* pszId, int nPin, double* pfValue)
{
    return Get(hEngine, pszId, &CLiveElement::GetPin, nPin, pfValue);
}

int QELAPI QELSetSelector(HQELENGINE hEngine, const char* pszId, DWORD nSelector, double fValue)
{
    return Set(hEngine, pszId, &CLiveElement::SetSelector, nSelector, fValue);
}

int QELAPI QELGetSelector(HQELENGINE hEngine, const char* pszId, DWORD nSelector, double* pfValue)
{
    return Get(hEngine, pszId, &CLiveElement::GetSelector, nSelector, pfValue);
}

int QELAPI QELSetText(HQELENGINE hEngine, const char* pszId, const char* pszText)
{
    return Set(hEngine, pszId, &CLiveElement::SetText, pszText);
}

int QELAPI QELSetTextW(HQELENGINE hEngine, const char* pszId, const wchar_t* pszText)
{
    const CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (!pszText) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    char szText[TEXT_BYTES];
    if (!ToPageText(pEngine->PageInForce(), pszText, szText)) return Fail(hEngine, QEL_ERROR_VALUE);
    return QELSetText(hEngine, pszId, szText);
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
    CQELEngine* pEngine = FindEngine(hEngine);
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
    CQELEngine* pEngine = FindEngine(hEngine);
    return pEngine ? CLiveValues(*pEngine).Advance(nTime) : 0;
}

int QELAPI QELGetLiveId(HQELENGINE hEngine, DWORD nIndex, char* pszBuffer, int nSize, int* pnType)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    return pEngine ? CLiveValues(*pEngine).IdAt(nIndex, pszBuffer, nSize, pnType) : 0;
}

int QELAPI QELGetDirtyRect(HQELENGINE hEngine, RECT* prc)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    return prc ? pEngine->GetDirtyRect(prc) : Fail(hEngine, QEL_ERROR_ARGUMENT);
}

int QELAPI QELGetDirtyRegion(HQELENGINE hEngine, HRGN hRegion)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    return pEngine ? pEngine->GetDirtyRegion(hRegion) : 0;
}

int QELAPI QELInvalidate(HQELENGINE hEngine, const RECT* prc)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    return pEngine ? pEngine->Invalidate(prc) : 0;
}

int QELAPI QELValidate(HQELENGINE hEngine)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    return pEngine ? pEngine->Validate() : 0;
}

int QELAPI QELUpdate(HQELENGINE hEngine, HDC hdc, HBRUSH hBackground)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    return pEngine ? pEngine->Update(hdc, hBackground) : 0;
}
