#include "engine/Gates.h"

#include "engine/Errors.h"

CShowOnlyRecord* RecordOf(HQELENGINE hEngine)
{
    return static_cast<CShowOnlyRecord*>(CHandleEntry::Find(HandleKind::Record, ToNumber(hEngine)));
}

namespace {

CQELEngine* OwnEngine(HQELENGINE hEngine)
{
    return static_cast<CQELEngine*>(CHandleEntry::Find(HandleKind::Engine, ToNumber(hEngine)));
}

CQELEngine* WithAllValues(CQELEngine* pEngine)
{
    if (pEngine) pEngine->View().Live().HandOver();
    return pEngine;
}

CQELEngine* OrFail(HQELENGINE hEngine, CQELEngine* pEngine)
{
    if (!pEngine) Fail(hEngine, WhyNotEngine(hEngine));
    return pEngine;
}

} // namespace

CQELEngine* EditableEngine(HQELENGINE hEngine)
{
    return WithAllValues(OwnEngine(hEngine));
}

CQELEngine* EngineForValues(HQELENGINE hEngine)
{
    if (CQELEngine* pEngine = OwnEngine(hEngine)) return pEngine;
    const CShowOnlyRecord* pRecord = RecordOf(hEngine);
    return pRecord ? pRecord->Engine() : nullptr;
}

CQELEngine* EngineOf(HQELENGINE hEngine)
{
    return WithAllValues(EngineForValues(hEngine));
}

CQELDocElm* ElementOf(CQELEngine* pEngine, HQELELEM hElem)
{
    return pEngine ? pEngine->Document().OfHandle(ToNumber(hElem)) : nullptr;
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

uint32_t WhyNotEngine(HQELENGINE hEngine)
{
    return RecordOf(hEngine) ? QEL_ERROR_NO_DRAWING : QEL_ERROR_HANDLE;
}

uint32_t WhyNotEditable(HQELENGINE hEngine)
{
    return RecordOf(hEngine) ? QEL_ERROR_SHOW_ONLY : QEL_ERROR_HANDLE;
}

uint32_t WhyNotElement(HQELENGINE hEngine)
{
    if (EditableEngine(hEngine)) return QEL_ERROR_ELEMENT;
    return WhyNotEditable(hEngine);
}

Failure* FailureOf(HQELENGINE hEngine)
{
    if (CQELEngine* pEngine = EditableEngine(hEngine)) return &pEngine->LastFailure();
    CShowOnlyRecord* pRecord = RecordOf(hEngine);
    return pRecord ? &pRecord->LastFailure() : nullptr;
}

CQELEngine* FindEngine(HQELENGINE hEngine)
{
    return OrFail(hEngine, EngineOf(hEngine));
}

CQELEngine* FindEngineForValues(HQELENGINE hEngine)
{
    return OrFail(hEngine, EngineForValues(hEngine));
}

CQELEngine* FindEditable(HQELENGINE hEngine)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    if (!pEngine) Fail(hEngine, WhyNotEditable(hEngine));
    return pEngine;
}

CQELDocElm* FindElement(HQELENGINE hEngine, HQELELEM hElem)
{
    CQELDocElm* pElm = ElementOf(EditableEngine(hEngine), hElem);
    if (!pElm) Fail(hEngine, WhyNotElement(hEngine));
    return pElm;
}

int OrFailWithoutDrawing(HQELENGINE hEngine, const CQELEngine* pEngine, int nResult)
{
    if (!nResult && !pEngine->HasDrawing()) Fail(hEngine, QEL_ERROR_NO_DRAWING);
    return nResult;
}
