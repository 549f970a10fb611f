// From the handles of a call to the objects behind them, for the files of exported functions. What
// a handle does not give is null; WhyNot... tell the code of the failure then.
#pragma once

#include "base/Failure.h"
#include "engine/QELEngine.h"
#include "engine/ShowOnly.h"
#include "include/QELEngine.h"

CShowOnlyRecord* RecordOf(HQELENGINE hEngine);

// Values that wait for their elements are handed over before an engine is given out, so that no
// call sees the elements without them.

// The engine of a handle that may edit: null in show-only mode.
CQELEngine* EditableEngine(HQELENGINE hEngine);

// The engine of a handle, in show-only mode the shared one: null for a record without a drawing.
CQELEngine* EngineOf(HQELENGINE hEngine);
// The same for a call that only adds to the values that wait.
CQELEngine* EngineForValues(HQELENGINE hEngine);

// The element of a handle, null unless it lives in that engine's drawing.
CQELDocElm* ElementOf(CQELEngine* pEngine, HQELELEM hElem);
// A handle that may be left out: null is fine, one that is not live is not.
bool OptionalElement(CQELEngine* pEngine, HQELELEM hElem, CQELDocElm** ppOut);
HQELELEM HandleOf(CQELDocElm* pElm);

// Why EngineOf, EditableEngine and ElementOf gave null.
uint32_t WhyNotEngine(HQELENGINE hEngine);
uint32_t WhyNotEditable(HQELENGINE hEngine);
uint32_t WhyNotElement(HQELENGINE hEngine);

// The same for a call that fails without: where it is nothing, the reason is left and the result
// null.
CQELEngine* FindEngine(HQELENGINE hEngine);
CQELEngine* FindEngineForValues(HQELENGINE hEngine);
CQELEngine* FindEditable(HQELENGINE hEngine);
CQELDocElm* FindElement(HQELENGINE hEngine, HQELELEM hElem);

// A result; of what is not there it is an answer, unless that is the drawing.
int OrFailWithoutDrawing(HQELENGINE hEngine, const CQELEngine* pEngine, int nResult);

// Where the handle keeps why its last failed call failed; null for one that is not live.
Failure* FailureOf(HQELENGINE hEngine);
