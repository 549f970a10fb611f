// The exported functions: thin gates. Each resolves its handles, honours show-only mode and
// forwards to the engine object. The gradient and curve functions stand in brush/.
#include "engine/Gates.h"
#include "include/QELEngine.h"

#include <cstring>
#include <new>

namespace {

constexpr int NO_DRAWING_KIND = 3;
constexpr int NO_KIND = -1;
constexpr std::size_t MAX_PATH_BYTES = 260;

template <CQELDocElm* (*pfnRelated)(const CQELDocElm*)>
HQELELEM Related(HQELENGINE hEngine, HQELELEM hElem)
{
    const CQELDocElm* pElm = ElementOf(EngineOf(hEngine), hElem);
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

} // namespace

// ---- engine and file

HQELENGINE QELAPI CreateQELEngine()
{
    uintptr_t nValue = 0;
    if (CShowOnlyRecord::IsOn()) {
        auto* pRecord = new (std::nothrow) CShowOnlyRecord;
        if (pRecord) nValue = pRecord->Handle().Value();
        if (!nValue) delete pRecord;
    } else {
        auto* pEngine = new (std::nothrow) CQELEngine(false);
        if (pEngine) nValue = pEngine->Handle().Value();
        if (!nValue) delete pEngine;
    }
    return ToHandle<HQELENGINE>(nValue);
}

int QELAPI DestroyQELEngine(HQELENGINE hEngine)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    CShowOnlyRecord* pRecord = RecordOf(hEngine);
    delete pEngine;
    delete pRecord;
    return pEngine || pRecord ? 1 : 0;
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
    CQELEngine* pEngine = EditableEngine(hEngine);
    return pEngine ? pEngine->New() : 0;
}

int QELAPI QELOpenFile(HQELENGINE hEngine, const char* pszPath)
{
    if (CQELEngine* pEngine = EditableEngine(hEngine)) return pEngine->Open(pszPath);
    CShowOnlyRecord* pRecord = RecordOf(hEngine);
    return pRecord ? pRecord->Open(pszPath) : 0;
}

int QELAPI QELOpenFileU(HQELENGINE hEngine, const wchar_t* pszPath)
{
    char szPath[MAX_PATH_BYTES];
    return ToAnsiPath(pszPath, szPath) ? QELOpenFile(hEngine, szPath) : 0;
}

int QELAPI QELSaveFile(HQELENGINE hEngine, const char* pszPath)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    return pEngine && pszPath ? pEngine->Save(pszPath) : 0;
}

int QELAPI QELCloseFile(HQELENGINE hEngine)
{
    if (CQELEngine* pEngine = EditableEngine(hEngine)) return pEngine->Close();
    CShowOnlyRecord* pRecord = RecordOf(hEngine);
    return pRecord ? pRecord->Close() : 0;
}

const char* QELAPI QELGetName(HQELENGINE hEngine)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    const CQELViewQEL* pRoot = pEngine ? pEngine->View().Root() : nullptr;
    return pRoot ? pRoot->Name() : nullptr;
}

int QELAPI QELGetType(HQELENGINE hEngine)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    if (!pEngine) return NO_KIND;
    const CQELViewQEL* pRoot = pEngine->View().Root();
    return pRoot ? pRoot->Kind() : NO_DRAWING_KIND;
}

// ---- element tree

HQELELEM QELAPI QELGetRootElem(HQELENGINE hEngine)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine ? HandleOf(pEngine->Document().GetRoot()) : nullptr;
}

HQELELEM QELAPI QELCreateElem(HQELENGINE hEngine, int nType, HQELELEM hParent, HQELELEM hAfter)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    CQELDocElm* pParent = nullptr;
    CQELDocElm* pAfter = nullptr;
    if (!pEngine || !OptionalElement(pEngine, hParent, &pParent) ||
        !OptionalElement(pEngine, hAfter, &pAfter))
        return nullptr;
    return HandleOf(pEngine->CreateElem(nType, pParent, pAfter));
}

int QELAPI QELDeleteElem(HQELENGINE hEngine, HQELELEM hElem)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    CQELDocElm* pElm = ElementOf(pEngine, hElem);
    return pElm ? pEngine->DeleteElem(pElm) : 0;
}

int QELAPI QELMoveElem(HQELENGINE hEngine, HQELELEM hElem, HQELELEM hParent, HQELELEM hAfter)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    CQELDocElm* pElm = ElementOf(pEngine, hElem);
    CQELDocElm* pParent = nullptr;
    CQELDocElm* pAfter = nullptr;
    if (!pElm || !OptionalElement(pEngine, hParent, &pParent) ||
        !OptionalElement(pEngine, hAfter, &pAfter))
        return 0;
    return pEngine->MoveElem(pElm, pParent, pAfter);
}

HQELELEM QELAPI QELCopyElem(HQELENGINE hEngine, HQELELEM hElem)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    CQELDocElm* pElm = ElementOf(pEngine, hElem);
    return pElm ? HandleOf(pEngine->CopyElem(pElm)) : nullptr;
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
    const CQELDocElm* pElm = ElementOf(EngineOf(hEngine), hElem);
    return pElm ? CQELDocument::GetElementType(pElm) : QEL_TYPE_NONE;
}

const char* QELAPI QELGetElemId(HQELENGINE hEngine, HQELELEM hElem)
{
    const CQELDocElm* pElm = ElementOf(EngineOf(hEngine), hElem);
    return pElm ? CQELDocument::GetElementId(pElm) : nullptr;
}

int QELAPI QELSetElemId(HQELENGINE hEngine, HQELELEM hElem, const char* pszId)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    CQELDocElm* pElm = ElementOf(pEngine, hElem);
    return pElm ? pEngine->SetElemId(pElm, pszId) : 0;
}

// ---- attributes and geometry

int QELAPI QELGetElemAttr(HQELENGINE hEngine, HQELELEM hElem, void* pBuffer, int* pnSize)
{
    const CQELDocElm* pElm = ElementOf(EngineOf(hEngine), hElem);
    return pElm ? CQELEngine::GetElemAttr(pElm, pBuffer, pnSize) : 0;
}

int QELAPI QELSetElemAttr(HQELENGINE hEngine, HQELELEM hElem, const void* pBuffer, int nSize)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    CQELDocElm* pElm = ElementOf(pEngine, hElem);
    return pElm && pBuffer ? pEngine->SetElemAttr(pElm, pBuffer, nSize) : 0;
}

int QELAPI QELGetElemRect(HQELENGINE hEngine, HQELELEM hElem, RECT* prc)
{
    const CQELDocElm* pElm = ElementOf(EngineOf(hEngine), hElem);
    return pElm && prc ? pElm->GetRect(prc) : 0;
}

int QELAPI QELSetElemRect(HQELENGINE hEngine, HQELELEM hElem, const RECT* prc)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    CQELDocElm* pElm = ElementOf(pEngine, hElem);
    return pElm && prc ? pEngine->SetElemRect(pElm, *prc) : 0;
}

int QELAPI QELGetRefSize(HQELENGINE hEngine, SIZE* pSize)
{
    const CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine && pSize ? pEngine->GetRefSize(pSize) : 0;
}

int QELAPI QELSetRefSize(HQELENGINE hEngine, const SIZE* pSize)
{
    CQELEngine* pEngine = EditableEngine(hEngine);
    return pEngine && pSize ? pEngine->SetRefSize(*pSize) : 0;
}

int QELAPI QELGetQELRect(HQELENGINE hEngine, RECT* prc)
{
    const CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine && prc ? pEngine->GetDrawRect(prc) : 0;
}

int QELAPI QELSetQELRect(HQELENGINE hEngine, const RECT* prc)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine && prc ? pEngine->SetDrawRect(*prc) : 0;
}

int QELAPI QELGetDrawGraphRect(HQELENGINE hEngine, RECT* prc)
{
    const CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine && prc ? pEngine->GetDrawGraphRect(prc) : 0;
}

// ---- drawing

int QELAPI QELDraw(HQELENGINE hEngine, HDC hdc, const RECT* prcUpdate, DWORD nFlags)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine && prcUpdate ? pEngine->Draw(hdc, *prcUpdate, nFlags) : 0;
}

int QELAPI QELRotate(HQELENGINE hEngine, int nAngle)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine ? pEngine->Rotate(nAngle) : 0;
}

int QELAPI QELSetBlinkState(HQELENGINE hEngine, int nState)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine ? pEngine->SetBlinkState(nState) : 0;
}

// ---- live values

int QELAPI QELGetStatus(HQELENGINE hEngine, DWORD* pnStatus)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    uint32_t nStatus = 0;
    if (!pEngine || !pnStatus || !pEngine->View().GetStatus(&nStatus)) return 0;
    *pnStatus = nStatus;
    return 1;
}

int QELAPI QELSetStatus(HQELENGINE hEngine, DWORD nStatus)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine ? pEngine->View().SetStatus(nStatus) : 0;
}

int QELAPI QELGetParam(HQELENGINE hEngine, int nIndex, DWORD* pnValue)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    uint32_t nValue = 0;
    if (!pEngine || !pnValue || !pEngine->View().GetParam(nIndex, &nValue)) return 0;
    *pnValue = nValue;
    return 1;
}

int QELAPI QELSetParam(HQELENGINE hEngine, int nIndex, DWORD nValue)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine ? pEngine->View().SetParam(nIndex, nValue) : 0;
}

DWORD QELAPI QELParamsSupported(HQELENGINE hEngine)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    const CQELViewQEL* pRoot = pEngine ? pEngine->View().Root() : nullptr;
    return pRoot ? pRoot->GetParamMask() : 0;
}

int QELAPI QELGetScaleParam(HQELENGINE hEngine, DWORD nId, DWORD nSelector, DWORD* pnValue)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    uint32_t nValue = 0;
    if (!pEngine || !pnValue || !pEngine->View().GetScaleParam(nId, nSelector, &nValue)) return 0;
    *pnValue = nValue;
    return 1;
}

int QELAPI QELSetScaleParam(HQELENGINE hEngine, DWORD nId, DWORD nSelector, DWORD nValue)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine ? pEngine->View().SetScaleParam(nId, nSelector, static_cast<uint32_t>(nValue))
                   : 0;
}

int QELAPI QELGetScaleParamf(HQELENGINE hEngine, DWORD nId, DWORD nSelector, float* pfValue)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine && pfValue ? pEngine->View().GetScaleParam(nId, nSelector, pfValue) : 0;
}

int QELAPI QELSetScaleParamf(HQELENGINE hEngine, DWORD nId, DWORD nSelector, float fValue)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    return pEngine ? pEngine->View().SetScaleParam(nId, nSelector, fValue) : 0;
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
