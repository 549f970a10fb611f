// The exported functions that tell where things are, gates like those in engine/Exports.cpp.
#include "engine/Gates.h"

#include <cstring>

int QELAPI QELGetElemDrawRect(HQELENGINE hEngine, HQELELEM hElem, RECT* prc)
{
    if (!prc) return 0;
    ::SetRectEmpty(prc);
    CQELEngine* pEngine = EngineOf(hEngine);
    const CQELDocElm* pElm = ElementOf(pEngine, hElem);
    return pElm ? pEngine->GetElemDrawRect(pElm, prc) : 0;
}

int QELAPI QELGetIdDrawRect(HQELENGINE hEngine, const char* pszId, RECT* prc)
{
    if (!prc) return 0;
    ::SetRectEmpty(prc);
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine && pszId ? pEngine->GetIdDrawRect(pszId, prc) : 0;
}

HQELELEM QELAPI QELElemFromPoint(HQELENGINE hEngine, const POINT* ppt)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    return pEngine && ppt ? HandleOf(pEngine->ElemFromPoint(*ppt)) : nullptr;
}

int QELAPI QELIdFromPoint(HQELENGINE hEngine, const POINT* ppt, char* pszBuffer, int nSize)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    if (!pEngine || !ppt || !pszBuffer || nSize < 1) return 0;
    const char* pszId = pEngine->IdFromPoint(*ppt);
    const std::size_t nNeeded = pszId ? std::strlen(pszId) + 1 : 0;
    if (!pszId || nNeeded > static_cast<std::size_t>(nSize)) return 0;
    std::memcpy(pszBuffer, pszId, nNeeded);
    return 1;
}

HQELELEM QELAPI QELFindElem(HQELENGINE hEngine, const char* pszId)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    return pEngine && pszId ? HandleOf(pEngine->FindElem(pszId)) : nullptr;
}

int QELAPI QELElemToDevice(HQELENGINE hEngine, HQELELEM hElem, POINT* ppt)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    const CQELDocElm* pElm = ElementOf(pEngine, hElem);
    return pElm && ppt ? pEngine->ElemToDevice(pElm, ppt) : 0;
}

int QELAPI QELDeviceToElem(HQELENGINE hEngine, HQELELEM hElem, POINT* ppt)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    const CQELDocElm* pElm = ElementOf(pEngine, hElem);
    return pElm && ppt ? pEngine->DeviceToElem(pElm, ppt) : 0;
}
