#include "engine/Gates.h"

CShowOnlyRecord* RecordOf(HQELENGINE hEngine)
{
    return static_cast<CShowOnlyRecord*>(CHandleEntry::Find(HandleKind::Record, ToNumber(hEngine)));
}

CQELEngine* EditableEngine(HQELENGINE hEngine)
{
    return static_cast<CQELEngine*>(CHandleEntry::Find(HandleKind::Engine, ToNumber(hEngine)));
}

CQELEngine* EngineOf(HQELENGINE hEngine)
{
    if (CQELEngine* pEngine = EditableEngine(hEngine)) return pEngine;
    const CShowOnlyRecord* pRecord = RecordOf(hEngine);
    return pRecord ? pRecord->Engine() : nullptr;
}

CQELDocElm* ElementOf(CQELEngine* pEngine, HQELELEM hElem)
{
    if (!pEngine) return nullptr;
    CQELDocElm* pElm = CQELDocElm::OfHandle(ToNumber(hElem));
    return pElm && pEngine->Document().Owns(pElm) ? pElm : nullptr;
}

bool OptionalElement(CQELEngine* pEngine, HQELELEM hElem, CQELDocElm** ppOut)
{
    *ppOut = ElementOf(pEngine, hElem);
    return *ppOut || !hElem;
}

HQELELEM HandleOf(CQELDocElm* pElm)
{
    return pElm ? ToHandle<HQELELEM>(pElm->HandleValue()) : nullptr;
}
