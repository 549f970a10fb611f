#include "engine/Reasons.h"

#include "engine/ElementTypes.h"

#include <cstring>

namespace {

bool HasClass(int32_t nType)
{
    const ElementType* pRow = g_elementTypes.Row(nType);
    return pRow && pRow->pfnMakeDoc;
}

} // namespace

uint32_t WhyNotCreated(CQELEngine& engine, int32_t nType, const CQELDocElm* pParent,
                       const CQELDocElm* pAfter)
{
    if (!HasClass(nType)) return QEL_ERROR_TYPE;
    if (nType == QEL_TYPE_ROOT) return pParent || pAfter ? QEL_ERROR_PLACE : QEL_ERROR_MEMORY;
    if (!pParent) pParent = engine.Document().GetRoot();
    if (!pParent) return QEL_ERROR_NO_DRAWING;
    const bool bRefused =
        pParent->Depth() >= XML_MAX_DEPTH || (pAfter && pAfter->Parent() != pParent);
    return bRefused ? QEL_ERROR_PLACE : QEL_ERROR_MEMORY;
}

uint32_t WhyNotMoved(CQELEngine& engine, const CQELDocElm* pElm, const CQELDocElm* pParent,
                     const CQELDocElm* pAfter)
{
    return engine.Document().MayMove(pElm, pParent, pAfter) ? QEL_ERROR_MEMORY : QEL_ERROR_PLACE;
}

uint32_t WhyNotCopied(const CQELDocElm* pElm)
{
    return pElm->Parent() ? QEL_ERROR_MEMORY : QEL_ERROR_PLACE;
}

// Every record that is ever refused begins with its size. Of a shape all numbers are taken, so that
// only memory is left.
uint32_t WhyRecordNotSet(const CQELDocElm* pElm, const void* pRecord, int nSize)
{
    int nOwnSize = 0;
    pElm->GetAttrSize(&nOwnSize);
    if (nSize < nOwnSize) return QEL_ERROR_RECORD_SIZE;
    DWORD nGiven = 0;
    std::memcpy(&nGiven, pRecord, sizeof nGiven);
    const auto nWanted = static_cast<DWORD>(nOwnSize);
    const bool bMayBeLarger = pElm->Type() == QEL_TYPE_METER;
    if (nGiven < nWanted || (nGiven > nWanted && !bMayBeLarger)) return QEL_ERROR_RECORD_SIZE;
    const bool bShape = pElm->Type() >= QEL_TYPE_TEXT && pElm->Type() <= QEL_TYPE_POLYGON;
    return bShape ? QEL_ERROR_MEMORY : QEL_ERROR_VALUE;
}

uint32_t WhyValueNotTaken(CQELEngine& engine, uint32_t nId, uint32_t nSelector)
{
    if (!engine.View().Root()) return QEL_ERROR_NO_DRAWING;
    if (nSelector >= QEL_SEL_COUNT) return QEL_ERROR_VALUE;
    return engine.View().HasHostId(nId) ? QEL_ERROR_VALUE : QEL_ERROR_NONE;
}

uint32_t WhyNotUpdated(CQELEngine& engine, HDC hdc)
{
    RECT rc{};
    if (!engine.HasDrawing()) return QEL_ERROR_NO_DRAWING;
    if (!engine.GetDirtyRect(&rc)) return QEL_ERROR_NONE;
    if (::GetClipBox(hdc, &rc) == ERROR) return QEL_ERROR_GDI;
    return engine.View().Dirty().HasMissed() ? QEL_ERROR_MEMORY : QEL_ERROR_NONE;
}
