// The exported functions for the code page of texts. Live texts are set in LiveExports.cpp.
#include "engine/Errors.h"
#include "engine/Gates.h"

#include <cstring>

namespace {

// The element of a handle, null with the reason left unless it is a text.
CQELDocElm* FindText(HQELENGINE hEngine, HQELELEM hElem)
{
    CQELDocElm* pElm = FindElement(hEngine, hElem);
    if (!pElm || pElm->Type() == QEL_TYPE_TEXT) return pElm;
    Fail(hEngine, QEL_ERROR_VALUE);
    return nullptr;
}

} // namespace

int QELAPI QELSetTextCodePage(HQELENGINE hEngine, DWORD nCodePage)
{
    CQELEngine* pEngine = EngineOf(hEngine);
    CShowOnlyRecord* pRecord = RecordOf(hEngine);
    if (!pEngine && !pRecord) return Fail(hEngine, QEL_ERROR_HANDLE);
    const auto nPage = static_cast<uint32_t>(nCodePage);
    if (!CQELEngine::IsTextPage(nPage)) return Fail(hEngine, QEL_ERROR_VALUE);
    if (pRecord) pRecord->SetTextPage(nPage);
    return pEngine ? pEngine->SetTextPage(nPage) : 1;
}

int QELAPI QELGetTextCodePage(HQELENGINE hEngine, DWORD* pnCodePage)
{
    const CQELEngine* pEngine = EngineOf(hEngine);
    const CShowOnlyRecord* pRecord = RecordOf(hEngine);
    if (!pEngine && !pRecord) return Fail(hEngine, QEL_ERROR_HANDLE);
    if (!pnCodePage) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    *pnCodePage = pEngine ? pEngine->TextPage() : pRecord->TextPage();
    return 1;
}

int QELAPI QELNewFileEx(HQELENGINE hEngine, DWORD nCodePage)
{
    CQELEngine* pEngine = FindEditable(hEngine);
    if (!pEngine) return 0;
    const auto nPage = static_cast<uint32_t>(nCodePage);
    if (nPage == PAGE_ANSI) return pEngine->New();
    if (!IsKnownPage(nPage) || !NameOfPage(nPage)) return Fail(hEngine, QEL_ERROR_VALUE);
    return pEngine->New(EncodingFor(nPage));
}

int QELAPI QELSetElemTextW(HQELENGINE hEngine, HQELELEM hElem, const wchar_t* pszText)
{
    CQELDocElm* pElm = FindText(hEngine, hElem);
    if (!pElm) return 0;
    if (!pszText) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    CQELEngine* pEngine = EditableEngine(hEngine);
    QELSHAPEATTR attr{};
    static_assert(sizeof attr.szText == TEXT_BYTES);
    pElm->GetAttr(&attr);
    if (!ToPageText(pEngine->PageInForce(), pszText, attr.szText))
        return Fail(hEngine, QEL_ERROR_VALUE);
    return pEngine->SetElemAttr(pElm, &attr, sizeof attr) ? 1 : Fail(hEngine, QEL_ERROR_MEMORY);
}

int QELAPI QELGetElemTextW(HQELENGINE hEngine, HQELELEM hElem, wchar_t* pszBuffer, int nCount)
{
    const CQELDocElm* pElm = FindText(hEngine, hElem);
    if (!pElm) return 0;
    if (!pszBuffer) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    QELSHAPEATTR attr{};
    pElm->GetAttr(&attr);
    const CWideText text(EditableEngine(hEngine)->PageInForce(), attr.szText);
    if (nCount <= text.Length()) return Fail(hEngine, QEL_ERROR_BUFFER);
    const auto nSize = static_cast<std::size_t>(text.Length()) + 1;
    std::memcpy(pszBuffer, text.Text(), nSize * sizeof *pszBuffer);
    return 1;
}
