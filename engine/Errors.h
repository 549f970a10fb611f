// Why calls failed. A failed call leaves its reason at its handle, or with its thread where no live
// handle is there; QELGetError reads it. The rows are the one list of codes: the exported header,
// the pages, the texts that hosts get and those that qel prints are all held to it.
#pragma once

#include "base/Failure.h"
#include "include/QELEngine.h"

#include <span>

// Records why a call on that handle failed. Only on the way out of a failed call: a call that
// succeeds touches nothing of it, and neither does QEL_ERROR_NONE, the code of an answer that is no
// failure. Always 0, the result of a failed call.
int Fail(HQELENGINE hEngine, uint32_t nCode);
int Fail(HQELENGINE hEngine, const Failure& failure);

// Of the last failed call on that handle, or of this thread for one that is not live.
Failure LastFailure(HQELENGINE hEngine);

struct ErrorRow {
    uint32_t nCode;
    const char* pszName;     // its constant in the exported header
    const char* pszSentence; // what it means, and what can be done
};

std::span<const ErrorRow> ErrorRows();
// The sentence of a code; of one that there is not, that something failed.
const char* ErrorSentence(uint32_t nCode);
