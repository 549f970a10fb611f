// The exported functions: thin gates. Each resolves its handles, honours show-only mode and
// forwards to the engine object, and leaves the reason at the handle when it fails. Files in
// memory and of wide paths are in FileExports.cpp, the gradient and curve functions in brush/.
#include "engine/Errors.h"
#include "engine/Gates.h"
#include "engine/Reasons.h"

#include <cstring>
#include <memory>
#include <new>

namespace {

constexpr int NO_DRAWING_KIND = 3;
constexpr int NO_KIND = -1;
constexpr std::size_t MAX_PATH_BYTES = 260;

// The two elements that a new place is made of.
bool FindPlace(HQELENGINE hEngine, HQELELEM hParent, HQELELEM hAfter, CQELDocElm** ppParent,
               CQELDocElm** ppAfter)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    if (OptionalElement(pEngine, hParent, ppParent) && OptionalElement(pEngine, hAfter, ppAfter))
        return true;
    Fail(hEngine, QEL_ERROR_ELEMENT);
    return false;
}

// A result, with the reason left when it is that of a failure.
template <class T>
T OrFail(HQELENGINE hEngine, T result, uint32_t nCode)
{
    if (!result) Fail(hEngine, nCode);
    return result;
}

int NotTaken(HQELENGINE hEngine, CQELEngine* pEngine, DWORD nId, DWORD nSelector)
{
    return Fail(hEngine, WhyValueNotTaken(*pEngine, nId, nSelector));
}

template <CQELDocElm* (*pfnRelated)(const CQELDocElm*)>
HQELELEM Related(HQELENGINE hEngine, HQELELEM hElem)
{
    const CQELDocElm* pElm = FindElement(hEngine, hElem);
    return pElm ? HandleOf(pfnRelated(pElm)) : nullptr;
}

// The ANSI bytes of a wide path, in the calling thread's code page. A character that the code page
// lacks fails the conversion: a replaced one would name another file.
bool ToAnsiPath(const wchar_t* pszWide, char (&szOut)[MAX_PATH_BYTES])
{
    if (!pszWide) return false;
    std::size_t nLen = 0;
    while (nLen < MAX_PATH_BYTES && pszWide[nLen]) ++nLen;
    if (nLen >= MAX_PATH_BYTES) return false; // a wide character is never less than a byte
    const int nWide = static_cast<int>(nLen) + 1;
    char szAnsi[2 * MAX_PATH_BYTES];
    BOOL bReplaced = FALSE;
    int nBytes = ::WideCharToMultiByte(CP_THREAD_ACP, WC_NO_BEST_FIT_CHARS, pszWide, nWide, szAnsi,
                                       sizeof szAnsi, nullptr, &bReplaced);
    if (nBytes == 0 &&
        ::GetLastError() != ERROR_INSUFFICIENT_BUFFER) // UTF-8 takes neither of the two
        nBytes = ::WideCharToMultiByte(CP_THREAD_ACP, 0, pszWide, nWide, szAnsi, sizeof szAnsi,
                                       nullptr, nullptr);
    if (nBytes <= 0 || bReplaced || static_cast<std::size_t>(nBytes) > MAX_PATH_BYTES) return false;
    std::memcpy(szOut, szAnsi, static_cast<std::size_t>(nBytes));
    return true;
}

// The value of its handle, which has it from here on. 0 without memory and without a handle.
template <class T>
uintptr_t HandOut(std::unique_ptr<T> made)
{
    const uintptr_t nValue = made ? made->Handle().Value() : 0;
    if (nValue) static_cast<void>(made.release());
    return nValue;
}

} // namespace

// ---- engine and file

HQELENGINE QELAPI CreateQELEngine()
{
    uintptr_t nValue = 0;
    if (CShowOnlyRecord::IsOn()) {
        nValue = HandOut(std::unique_ptr<CShowOnlyRecord>(new (std::nothrow) CShowOnlyRecord));
    } else {
        nValue = HandOut(std::unique_ptr<CQELEngine>(new (std::nothrow) CQELEngine(false)));
    }
    return OrFail(nullptr, ToHandle<HQELENGINE>(nValue), QEL_ERROR_MEMORY);
}

int QELAPI DestroyQELEngine(HQELENGINE hEngine)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    CShowOnlyRecord* pRecord = RecordOf(hEngine);
    if (!pEngine && !pRecord) return Fail(hEngine, QEL_ERROR_HANDLE);
    delete pEngine;
    delete pRecord;
    return 1;
}

DWORD QELAPI QELGetVersion()
{
    return QEL_VERSION_MAJOR << 16 | QEL_VERSION_MINOR << 8 | QEL_VERSION_PATCH;
}

int QELAPI QELShowOnly(int bShowOnly)
{
    CShowOnlyRecord::Switch(bShowOnly != 0);
    return 1;
}

int QELAPI QELNewFile(HQELENGINE hEngine)
{
    CQELEngine* pEngine = FindEditable(hEngine);
    return pEngine ? pEngine->New() : 0;
}

int QELAPI QELOpenFile(HQELENGINE hEngine, const char* pszPath)
{
    if (CQELEngine* pEngine = EditableEngine(hEngine)) return pEngine->Open(pszPath);
    CShowOnlyRecord* pRecord = RecordOf(hEngine);
    return pRecord ? pRecord->Open(pszPath) : Fail(hEngine, QEL_ERROR_HANDLE);
}

int QELAPI QELOpenFileU(HQELENGINE hEngine, const wchar_t* pszPath)
{
    char szPath[MAX_PATH_BYTES];
    if (ToAnsiPath(pszPath, szPath)) return QELOpenFile(hEngine, szPath);
    return Fail(hEngine, pszPath ? QEL_ERROR_PATH : QEL_ERROR_ARGUMENT);
}

int QELAPI QELSaveFile(HQELENGINE hEngine, const char* pszPath)
{
    CQELEngine* pEngine = FindEditable(hEngine);
    if (!pEngine) return 0;
    return pszPath ? pEngine->Save(pszPath) : Fail(hEngine, QEL_ERROR_ARGUMENT);
}

int QELAPI QELCloseFile(HQELENGINE hEngine)
{
    if (CQELEngine* pEngine = EditableEngine(hEngine)) return pEngine->Close();
    CShowOnlyRecord* pRecord = RecordOf(hEngine);
    return pRecord ? pRecord->Close() : Fail(hEngine, QEL_ERROR_HANDLE);
}

const char* QELAPI QELGetName(HQELENGINE hEngine)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return nullptr;
    const CQELViewQEL* pRoot = pEngine->View().Root();
    return OrFail(hEngine, pRoot ? pRoot->Name() : nullptr, QEL_ERROR_NO_DRAWING);
}

int QELAPI QELGetType(HQELENGINE hEngine)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return NO_KIND;
    const CQELViewQEL* pRoot = pEngine->View().Root();
    return pRoot ? pRoot->Kind() : NO_DRAWING_KIND;
}

// ---- element tree

HQELELEM QELAPI QELGetRootElem(HQELENGINE hEngine)
{
    CQELEngine* pEngine = FindEditable(hEngine);
    if (!pEngine) return nullptr;
    CQELDocElm* pRoot = pEngine->Document().GetRoot();
    return OrFail(hEngine, HandleOf(pRoot), pRoot ? QEL_ERROR_MEMORY : QEL_ERROR_NO_DRAWING);
}

HQELELEM QELAPI QELCreateElem(HQELENGINE hEngine, int nType, HQELELEM hParent, HQELELEM hAfter)
{
    CQELEngine* pEngine = FindEditable(hEngine);
    CQELDocElm* pParent = nullptr;
    CQELDocElm* pAfter = nullptr;
    if (!pEngine || !FindPlace(hEngine, hParent, hAfter, &pParent, &pAfter)) return nullptr;
    CQELDocElm* pElm = pEngine->CreateElem(nType, pParent, pAfter);
    if (!pElm) Fail(hEngine, WhyNotCreated(*pEngine, nType, pParent, pAfter));
    return HandleOf(pElm);
}

int QELAPI QELDeleteElem(HQELENGINE hEngine, HQELELEM hElem)
{
    CQELDocElm* pElm = FindElement(hEngine, hElem);
    return pElm ? EditableEngine(hEngine)->DeleteElem(pElm) : 0;
}

int QELAPI QELMoveElem(HQELENGINE hEngine, HQELELEM hElem, HQELELEM hParent, HQELELEM hAfter)
{
    CQELDocElm* pElm = FindElement(hEngine, hElem);
    CQELDocElm* pParent = nullptr;
    CQELDocElm* pAfter = nullptr;
    if (!pElm || !FindPlace(hEngine, hParent, hAfter, &pParent, &pAfter)) return 0;
    CQELEngine* pEngine = EditableEngine(hEngine);
    if (pEngine->MoveElem(pElm, pParent, pAfter)) return 1;
    return Fail(hEngine, WhyNotMoved(*pEngine, pElm, pParent, pAfter));
}

HQELELEM QELAPI QELCopyElem(HQELENGINE hEngine, HQELELEM hElem)
{
    CQELDocElm* pElm = FindElement(hEngine, hElem);
    if (!pElm) return nullptr;
    return OrFail(hEngine, HandleOf(EditableEngine(hEngine)->CopyElem(pElm)), WhyNotCopied(pElm));
}

HQELELEM QELAPI QELGetParentElem(HQELENGINE hEngine, HQELELEM hElem)
{
    return Related<CQELDocument::GetParent>(hEngine, hElem);
}

HQELELEM QELAPI QELGetFirstChild(HQELENGINE hEngine, HQELELEM hElem)
{
    return Related<CQELDocument::GetFirstChild>(hEngine, hElem);
}

HQELELEM QELAPI QELGetLastChild(HQELENGINE hEngine, HQELELEM hElem)
{
    return Related<CQELDocument::GetLastChild>(hEngine, hElem);
}

HQELELEM QELAPI QELGetNextElem(HQELENGINE hEngine, HQELELEM hElem)
{
    return Related<CQELDocument::GetNextSibling>(hEngine, hElem);
}

HQELELEM QELAPI QELGetPrevElem(HQELENGINE hEngine, HQELELEM hElem)
{
    return Related<CQELDocument::GetPrevSibling>(hEngine, hElem);
}

int QELAPI QELGetElemType(HQELENGINE hEngine, HQELELEM hElem)
{
    const CQELDocElm* pElm = FindElement(hEngine, hElem);
    return pElm ? CQELDocument::GetElementType(pElm) : QEL_TYPE_NONE;
}

const char* QELAPI QELGetElemId(HQELENGINE hEngine, HQELELEM hElem)
{
    const CQELDocElm* pElm = FindElement(hEngine, hElem);
    return pElm ? CQELDocument::GetElementId(pElm) : nullptr;
}

int QELAPI QELSetElemId(HQELENGINE hEngine, HQELELEM hElem, const char* pszId)
{
    CQELDocElm* pElm = FindElement(hEngine, hElem);
    if (!pElm) return 0;
    return OrFail(hEngine, EditableEngine(hEngine)->SetElemId(pElm, pszId),
                  pszId ? QEL_ERROR_MEMORY : QEL_ERROR_ARGUMENT);
}

// ---- attributes and geometry

int QELAPI QELGetElemAttr(HQELENGINE hEngine, HQELELEM hElem, void* pBuffer, int* pnSize)
{
    const CQELDocElm* pElm = FindElement(hEngine, hElem);
    if (!pElm) return 0;
    return OrFail(hEngine, CQELEngine::GetElemAttr(pElm, pBuffer, pnSize), QEL_ERROR_ARGUMENT);
}

int QELAPI QELSetElemAttr(HQELENGINE hEngine, HQELELEM hElem, const void* pBuffer, int nSize)
{
    CQELDocElm* pElm = FindElement(hEngine, hElem);
    if (!pElm) return 0;
    if (!pBuffer) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    if (EditableEngine(hEngine)->SetElemAttr(pElm, pBuffer, nSize)) return 1;
    return Fail(hEngine, WhyRecordNotSet(pElm, pBuffer, nSize));
}

int QELAPI QELGetElemRect(HQELENGINE hEngine, HQELELEM hElem, RECT* prc)
{
    const CQELDocElm* pElm = FindElement(hEngine, hElem);
    if (!pElm) return 0;
    if (!prc) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    return OrFail(hEngine, pElm->GetRect(prc), QEL_ERROR_NO_RECT);
}

int QELAPI QELSetElemRect(HQELENGINE hEngine, HQELELEM hElem, const RECT* prc)
{
    CQELDocElm* pElm = FindElement(hEngine, hElem);
    if (!pElm) return 0;
    if (!prc) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    return OrFail(hEngine, EditableEngine(hEngine)->SetElemRect(pElm, *prc), QEL_ERROR_NO_RECT);
}

int QELAPI QELGetRefSize(HQELENGINE hEngine, SIZE* pSize)
{
    const CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    return pSize ? pEngine->GetRefSize(pSize) : Fail(hEngine, QEL_ERROR_ARGUMENT);
}

int QELAPI QELSetRefSize(HQELENGINE hEngine, const SIZE* pSize)
{
    CQELEngine* pEngine = FindEditable(hEngine);
    if (!pEngine) return 0;
    if (!pSize) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    return OrFail(hEngine, pEngine->SetRefSize(*pSize), QEL_ERROR_NO_DRAWING);
}

int QELAPI QELGetQELRect(HQELENGINE hEngine, RECT* prc)
{
    const CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    return prc ? pEngine->GetDrawRect(prc) : Fail(hEngine, QEL_ERROR_ARGUMENT);
}

int QELAPI QELSetQELRect(HQELENGINE hEngine, const RECT* prc)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    return prc ? pEngine->SetDrawRect(*prc) : Fail(hEngine, QEL_ERROR_ARGUMENT);
}

int QELAPI QELGetDrawGraphRect(HQELENGINE hEngine, RECT* prc)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (!prc) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    return OrFailWithoutDrawing(hEngine, pEngine, pEngine->GetDrawGraphRect(prc));
}

// ---- drawing

int QELAPI QELDraw(HQELENGINE hEngine, HDC hdc, const RECT* prcUpdate, DWORD nFlags)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (!prcUpdate) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    return OrFailWithoutDrawing(hEngine, pEngine, pEngine->Draw(hdc, *prcUpdate, nFlags));
}

int QELAPI QELRotate(HQELENGINE hEngine, int nAngle)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    return pEngine ? OrFail(hEngine, pEngine->Rotate(nAngle), QEL_ERROR_NO_DRAWING) : 0;
}

int QELAPI QELSetBlinkState(HQELENGINE hEngine, int nState)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    return pEngine ? OrFail(hEngine, pEngine->SetBlinkState(nState), QEL_ERROR_NO_DRAWING) : 0;
}

// ---- live values

int QELAPI QELGetStatus(HQELENGINE hEngine, DWORD* pnStatus)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (!pnStatus) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    uint32_t nStatus = 0;
    if (!pEngine->View().GetStatus(&nStatus)) return OrFailWithoutDrawing(hEngine, pEngine, 0);
    *pnStatus = nStatus;
    return 1;
}

int QELAPI QELSetStatus(HQELENGINE hEngine, DWORD nStatus)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    return OrFailWithoutDrawing(hEngine, pEngine, pEngine->View().SetStatus(nStatus));
}

int QELAPI QELGetParam(HQELENGINE hEngine, int nIndex, DWORD* pnValue)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (!pnValue) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    uint32_t nValue = 0;
    if (!pEngine->View().GetParam(nIndex, &nValue)) return Fail(hEngine, QEL_ERROR_VALUE);
    *pnValue = nValue;
    return 1;
}

int QELAPI QELSetParam(HQELENGINE hEngine, int nIndex, DWORD nValue)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (pEngine->View().SetParam(nIndex, nValue)) return 1;
    const bool bIndex = nIndex >= 0 && nIndex < QEL_PARAM_COUNT;
    const bool bTaken = bIndex && (nIndex != QEL_PARAM_DRAFT || nValue < DRAFT_COUNT);
    return bTaken ? OrFailWithoutDrawing(hEngine, pEngine, 0) : Fail(hEngine, QEL_ERROR_VALUE);
}

DWORD QELAPI QELParamsSupported(HQELENGINE hEngine)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    const CQELViewQEL* pRoot = pEngine->View().Root();
    if (!pRoot) Fail(hEngine, QEL_ERROR_NO_DRAWING);
    return pRoot ? pRoot->GetParamMask() : 0;
}

int QELAPI QELGetScaleParam(HQELENGINE hEngine, DWORD nId, DWORD nSelector, DWORD* pnValue)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (!pnValue) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    uint32_t nValue = 0;
    if (!pEngine->View().GetScaleParam(nId, nSelector, &nValue))
        return NotTaken(hEngine, pEngine, nId, nSelector);
    *pnValue = nValue;
    return 1;
}

int QELAPI QELSetScaleParam(HQELENGINE hEngine, DWORD nId, DWORD nSelector, DWORD nValue)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    const int nResult =
        pEngine->View().SetScaleParam(nId, nSelector, static_cast<uint32_t>(nValue));
    return nResult ? nResult : NotTaken(hEngine, pEngine, nId, nSelector);
}

int QELAPI QELGetScaleParamf(HQELENGINE hEngine, DWORD nId, DWORD nSelector, float* pfValue)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (!pfValue) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    const int nResult = pEngine->View().GetScaleParam(nId, nSelector, pfValue);
    return nResult ? nResult : NotTaken(hEngine, pEngine, nId, nSelector);
}

int QELAPI QELSetScaleParamf(HQELENGINE hEngine, DWORD nId, DWORD nSelector, float fValue)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    const int nResult = pEngine->View().SetScaleParam(nId, nSelector, fValue);
    return nResult ? nResult : NotTaken(hEngine, pEngine, nId, nSelector);
}

int QELAPI QELGetScaleStatus(HQELENGINE hEngine, DWORD nId, DWORD* pnValue)
{
    return QELGetScaleParam(hEngine, nId, QEL_SEL_VALUE, pnValue);
}

int QELAPI QELSetScaleStatus(HQELENGINE hEngine, DWORD nId, DWORD nValue)
{
    return QELSetScaleParam(hEngine, nId, QEL_SEL_VALUE, nValue);
}

int QELAPI QELGetScaleStatusf(HQELENGINE hEngine, DWORD nId, float* pfValue)
{
    return QELGetScaleParamf(hEngine, nId, QEL_SEL_VALUE, pfValue);
}

int QELAPI QELSetScaleStatusf(HQELENGINE hEngine, DWORD nId, float fValue)
{
    return QELSetScaleParamf(hEngine, nId, QEL_SEL_VALUE, fValue);
}
