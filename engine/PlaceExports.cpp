// The exported functions that tell where things are, gates like those in engine/Exports.cpp. What
// is not there is an answer, and no failure.
#include "engine/Errors.h"
#include "engine/Gates.h"

#include <cstring>

namespace {

// The engine of a call that names all it needs; else the reason is left, and the result null.
CQELEngine* FindEngine(HQELENGINE hEngine, bool bHasArguments)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    if (!pEngine) Fail(hEngine, WhyNotEngine(hEngine));
    if (pEngine && !bHasArguments) Fail(hEngine, QEL_ERROR_ARGUMENT);
    return bHasArguments ? pEngine : nullptr;
}

// The same of a call that takes or gives elements.
CQELEngine* FindEditable(HQELENGINE hEngine, bool bHasArguments)
{
    if (EditableEngine(hEngine)) return FindEngine(hEngine, bHasArguments);
    Fail(hEngine, WhyNotEditable(hEngine));
    return nullptr;
}

CQELDocElm* FindElement(HQELENGINE hEngine, HQELELEM hElem, bool bHasArguments)
{
    CQELEngine* pEngine = FindEditable(hEngine, bHasArguments);
    CQELDocElm* pElm = ElementOf(pEngine, hElem);
    if (pEngine && !pElm) Fail(hEngine, QEL_ERROR_ELEMENT);
    return pElm;
}

// Without an index nothing is found, which is no answer.
bool HasIndex(HQELENGINE hEngine, const CQELEngine& engine, bool bMade)
{
    if (!bMade) Fail(hEngine, engine.HasDrawing() ? QEL_ERROR_MEMORY : QEL_ERROR_NO_DRAWING);
    return bMade;
}

} // namespace

int QELAPI QELGetElemDrawRect(HQELENGINE hEngine, HQELELEM hElem, RECT* prc)
{
    if (prc) ::SetRectEmpty(prc);
    const CQELDocElm* pElm = FindElement(hEngine, hElem, prc);
    return pElm ? EngineOf(hEngine)->GetElemDrawRect(pElm, prc) : 0;
}

int QELAPI QELGetIdDrawRect(HQELENGINE hEngine, const char* pszId, RECT* prc)
{
    if (prc) ::SetRectEmpty(prc);
    CQELEngine* pEngine = FindEngine(hEngine, pszId && prc);
    if (!pEngine || !HasIndex(hEngine, *pEngine, pEngine->Identifiers())) return 0;
    return pEngine->GetIdDrawRect(pszId, prc);
}

HQELELEM QELAPI QELElemFromPoint(HQELENGINE hEngine, const POINT* ppt)
{
    CQELEngine* pEngine = FindEditable(hEngine, ppt);
    if (!pEngine || !HasIndex(hEngine, *pEngine, pEngine->Places())) return nullptr;
    return HandleOf(pEngine->ElemFromPoint(*ppt));
}

int QELAPI QELIdFromPoint(HQELENGINE hEngine, const POINT* ppt, char* pszBuffer, int nSize)
{
    CQELEngine* pEngine = FindEngine(hEngine, ppt && pszBuffer && nSize > 0);
    if (!pEngine || !HasIndex(hEngine, *pEngine, pEngine->Identifiers() && pEngine->Places()))
        return 0;
    const char* pszId = pEngine->IdFromPoint(*ppt);
    if (!pszId) return 0;
    const std::size_t nNeeded = std::strlen(pszId) + 1;
    if (nNeeded > static_cast<std::size_t>(nSize)) return Fail(hEngine, QEL_ERROR_BUFFER);
    std::memcpy(pszBuffer, pszId, nNeeded);
    return 1;
}

HQELELEM QELAPI QELFindElem(HQELENGINE hEngine, const char* pszId)
{
    CQELEngine* pEngine = FindEditable(hEngine, pszId);
    if (!pEngine || !HasIndex(hEngine, *pEngine, pEngine->Identifiers())) return nullptr;
    return HandleOf(pEngine->FindElem(pszId));
}

int QELAPI QELElemToDevice(HQELENGINE hEngine, HQELELEM hElem, POINT* ppt)
{
    const CQELDocElm* pElm = FindElement(hEngine, hElem, ppt);
    return pElm ? EngineOf(hEngine)->ElemToDevice(pElm, ppt) : 0;
}

int QELAPI QELDeviceToElem(HQELENGINE hEngine, HQELELEM hElem, POINT* ppt)
{
    const CQELDocElm* pElm = FindElement(hEngine, hElem, ppt);
    return pElm ? EngineOf(hEngine)->DeviceToElem(pElm, ppt) : 0;
}
