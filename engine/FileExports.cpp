// The exported functions for files of wide paths, for drawings in memory, and for what failed. The
// others are in Exports.cpp.
#include "engine/Errors.h"
#include "engine/Gates.h"

#include <cstring>

int QELAPI QELGetError(HQELENGINE hEngine, QELERROR* pError)
{
    DWORD nSize = 0;
    if (pError) std::memcpy(&nSize, &pError->nSize, sizeof nSize);
    if (nSize != sizeof(QELERROR)) return 0;
    const Failure failure = LastFailure(hEngine);
    QELERROR error{};
    error.nSize = sizeof error;
    error.nCode = failure.nCode;
    error.nLine = failure.nLine;
    error.nColumn = failure.nColumn;
    error.nSystem = failure.nSystem;
    std::strcpy(error.szText, ErrorSentence(failure.nCode));
    *pError = error;
    return failure.nCode != QEL_ERROR_NONE ? 1 : 0;
}

int QELAPI QELOpenFileW(HQELENGINE hEngine, const wchar_t* pszPath)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    CShowOnlyRecord* pRecord = RecordOf(hEngine);
    if (!pEngine && !pRecord) return Fail(hEngine, QEL_ERROR_HANDLE);
    if (!pszPath) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    XmlSource source;
    source.pszWidePath = pszPath;
    return pEngine ? pEngine->Open(source) : pRecord->Open(source);
}

int QELAPI QELSaveFileW(HQELENGINE hEngine, const wchar_t* pszPath)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    if (!pEngine) return Fail(hEngine, WhyNotEditable(hEngine));
    return pszPath ? pEngine->SaveWide(pszPath) : Fail(hEngine, QEL_ERROR_ARGUMENT);
}

int QELAPI QELOpenMemory(HQELENGINE hEngine, const void* pBytes, DWORD nSize)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    CShowOnlyRecord* pRecord = RecordOf(hEngine);
    if (!pEngine && !pRecord) return Fail(hEngine, QEL_ERROR_HANDLE);
    if (!pBytes) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    XmlSource source;
    source.pBytes = pBytes;
    source.nSize = nSize;
    return pEngine ? pEngine->Open(source) : pRecord->Open(source);
}

int QELAPI QELSaveMemory(HQELENGINE hEngine, void* pBuffer, DWORD* pnSize)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    if (!pEngine) return Fail(hEngine, WhyNotEditable(hEngine));
    if (!pnSize) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    uint32_t nSize = *pnSize;
    const int nResult = pEngine->Save(pBuffer, &nSize);
    *pnSize = nSize;
    return nResult;
}

int QELAPI QELIsModified(HQELENGINE hEngine)
{
    if (const CQELEngine* pEngine = EditableEngine(hEngine)) return pEngine->IsModified() ? 1 : 0;
    return RecordOf(hEngine) ? 0 : Fail(hEngine, QEL_ERROR_HANDLE); // what is only shown stays
}
