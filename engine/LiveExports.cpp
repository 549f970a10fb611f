// The exported functions that reach elements by their identifier.
#include "engine/Errors.h"
#include "engine/Gates.h"
#include "engine/LiveValues.h"
#include "engine/Reasons.h"

#include <cstring>
#include <tuple>

namespace {

constexpr uint32_t NOTHING_THERE = QEL_ERROR_NONE; // an answer

// pEngine: null when the gate has left the reason.
template <class... Given, class... Taken>
int SetOf(CQELEngine* pEngine, HQELENGINE hEngine, const char* pszId,
          int (CLiveElement::*pfnSet)(Given...), Taken... values)
{
    if (!pEngine) return 0;
    CLiveValues live(*pEngine);
    const int nReached = live.Set(pszId, pfnSet, values...);
    return nReached ? nReached : Fail(hEngine, live.WhyNot(pszId, QEL_ERROR_VALUE));
}

template <class... Given, class... Taken>
int Set(HQELENGINE hEngine, const char* pszId, int (CLiveElement::*pfnSet)(Given...),
        Taken... values)
{
    return SetOf(FindEngine(hEngine), hEngine, pszId, pfnSet, values...);
}

// The last of what a get is handed is where its answer goes.
template <class... Taken>
bool IsGiven(Taken... values)
{
    return std::get<sizeof...(values) - 1>(std::tuple<Taken...>(values...)) != nullptr;
}

// nCode: why those that bear the identifier do not have it.
template <class... Given, class... Taken>
int Get(HQELENGINE hEngine, const char* pszId, uint32_t nCode,
        int (CLiveElement::*pfnGet)(Given...) const, Taken... values)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (!IsGiven(values...)) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    CLiveValues live(*pEngine);
    return live.Get(pszId, pfnGet, values...) ? 1 : Fail(hEngine, live.WhyNot(pszId, nCode));
}

} // namespace

int QELAPI QELSetValue(HQELENGINE hEngine, const char* pszId, double fValue)
{
    return SetOf(FindEngineForValues(hEngine), hEngine, pszId, &CLiveElement::SetValue, fValue);
}

int QELAPI QELGetValue(HQELENGINE hEngine, const char* pszId, double* pfValue)
{
    return Get(hEngine, pszId, NOTHING_THERE, &CLiveElement::GetValue, pfValue);
}

int QELAPI QELSetPin(HQELENGINE hEngine, const char* pszId, int nPin, double fValue)
{
    return Set(hEngine, pszId, &CLiveElement::SetPin, nPin, fValue);
}

int QELAPI QELGetPin(HQELENGINE hEngine, const char* pszId, int nPin, double* pfValue)
{
    return Get(hEngine, pszId, QEL_ERROR_VALUE, &CLiveElement::GetPin, nPin, pfValue);
}

int QELAPI QELSetSelector(HQELENGINE hEngine, const char* pszId, DWORD nSelector, double fValue)
{
    return Set(hEngine, pszId, &CLiveElement::SetSelector, nSelector, fValue);
}

int QELAPI QELGetSelector(HQELENGINE hEngine, const char* pszId, DWORD nSelector, double* pfValue)
{
    return Get(hEngine, pszId, QEL_ERROR_VALUE, &CLiveElement::GetSelector, nSelector, pfValue);
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
    if (!pEngine) return 0;
    CLiveValues live(*pEngine);
    const int nReached = live.ResetAll();
    return nReached ? nReached : Fail(hEngine, live.WhyNot("", QEL_ERROR_NONE));
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
    if (!pEngine) return 0;
    return OrFailWithoutDrawing(hEngine, pEngine, CLiveValues(*pEngine).Advance(nTime));
}

int QELAPI QELGetLiveId(HQELENGINE hEngine, DWORD nIndex, char* pszBuffer, int nSize, int* pnType)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (!pszBuffer || nSize < 1) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    const CLiveValues live(*pEngine);
    const IdBearer* pBearer = live.IdAt(nIndex);
    if (!pBearer) return Fail(hEngine, live.WhyNot("", QEL_ERROR_NONE));
    const std::size_t nNeeded = std::strlen(pBearer->pszId) + 1;
    if (nNeeded > static_cast<std::size_t>(nSize)) return Fail(hEngine, QEL_ERROR_BUFFER);
    std::memcpy(pszBuffer, pBearer->pszId, nNeeded);
    if (pnType) *pnType = pBearer->pView->Type();
    return 1;
}

int QELAPI QELGetDirtyRect(HQELENGINE hEngine, RECT* prc)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (!prc) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    return OrFailWithoutDrawing(hEngine, pEngine, pEngine->GetDirtyRect(prc));
}

int QELAPI QELGetDirtyRegion(HQELENGINE hEngine, HRGN hRegion)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (::GetObjectType(hRegion) != OBJ_REGION) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    return OrFailWithoutDrawing(hEngine, pEngine, pEngine->GetDirtyRegion(hRegion));
}

int QELAPI QELInvalidate(HQELENGINE hEngine, const RECT* prc)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    return pEngine ? OrFailWithoutDrawing(hEngine, pEngine, pEngine->Invalidate(prc)) : 0;
}

int QELAPI QELValidate(HQELENGINE hEngine)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    return pEngine ? OrFailWithoutDrawing(hEngine, pEngine, pEngine->Validate()) : 0;
}

int QELAPI QELUpdate(HQELENGINE hEngine, HDC hdc, HBRUSH hBackground)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (pEngine->Update(hdc, hBackground)) return 1;
    return Fail(hEngine, WhyNotUpdated(*pEngine, hdc));
}
