// The exported functions that tell where things are, gates like those in engine/Exports.cpp. What
// is not there is an answer, and no failure.
#include "engine/Errors.h"
#include "engine/Gates.h"

#include <cstring>

namespace {

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
    const CQELDocElm* pElm = FindElement(hEngine, hElem);
    if (!pElm) return 0;
    if (!prc) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    return EditableEngine(hEngine)->GetElemDrawRect(pElm, prc);
}

int QELAPI QELGetIdDrawRect(HQELENGINE hEngine, const char* pszId, RECT* prc)
{
    if (prc) ::SetRectEmpty(prc);
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (!pszId || !prc) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    if (!HasIndex(hEngine, *pEngine, pEngine->Identifiers())) return 0;
    return pEngine->GetIdDrawRect(pszId, prc);
}

HQELELEM QELAPI QELElemFromPoint(HQELENGINE hEngine, const POINT* ppt)
{
    CQELEngine* pEngine = FindEditable(hEngine);
    if (pEngine && !ppt) Fail(hEngine, QEL_ERROR_ARGUMENT);
    if (!pEngine || !ppt || !HasIndex(hEngine, *pEngine, pEngine->Places())) return nullptr;
    return HandleOf(pEngine->ElemFromPoint(*ppt));
}

int QELAPI QELIdFromPoint(HQELENGINE hEngine, const POINT* ppt, char* pszBuffer, int nSize)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (!ppt || !pszBuffer || nSize < 1) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    if (!HasIndex(hEngine, *pEngine, pEngine->Identifiers() && pEngine->Places())) return 0;
    const char* pszId = pEngine->IdFromPoint(*ppt);
    if (!pszId) return 0;
    const std::size_t nNeeded = std::strlen(pszId) + 1;
    if (nNeeded > static_cast<std::size_t>(nSize)) return Fail(hEngine, QEL_ERROR_BUFFER);
    std::memcpy(pszBuffer, pszId, nNeeded);
    return 1;
}

HQELELEM QELAPI QELFindElem(HQELENGINE hEngine, const char* pszId)
{
    CQELEngine* pEngine = FindEditable(hEngine);
    if (pEngine && !pszId) Fail(hEngine, QEL_ERROR_ARGUMENT);
    if (!pEngine || !pszId || !HasIndex(hEngine, *pEngine, pEngine->Identifiers())) return nullptr;
    return HandleOf(pEngine->FindElem(pszId));
}

int QELAPI QELElemToDevice(HQELENGINE hEngine, HQELELEM hElem, POINT* ppt)
{
    const CQELDocElm* pElm = FindElement(hEngine, hElem);
    if (!pElm) return 0;
    return ppt ? EditableEngine(hEngine)->ElemToDevice(pElm, ppt)
               : Fail(hEngine, QEL_ERROR_ARGUMENT);
}

int QELAPI QELDeviceToElem(HQELENGINE hEngine, HQELELEM hElem, POINT* ppt)
{
    const CQELDocElm* pElm = FindElement(hEngine, hElem);
    if (!pElm) return 0;
    return ppt ? EditableEngine(hEngine)->DeviceToElem(pElm, ppt)
               : Fail(hEngine, QEL_ERROR_ARGUMENT);
}
