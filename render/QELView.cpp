#include "render/QELView.h"

#include "document/ElementTypes.h"
#include "render/ClippedDraw.h"

namespace {

using ParamSetter = int (CQELViewElm::*)(uint32_t);

constexpr ParamSetter g_paramSetters[QEL_PARAM_COUNT] = {
    &CQELViewElm::SetColorParam, &CQELViewElm::SetDraftParam, &CQELViewElm::SetDraftForeParam,
    &CQELViewElm::SetDraftBackParam};

} // namespace

CQELView::~CQELView()
{
    Clear();
}

int CQELView::SetRefSize(SIZE size)
{
    m_refSize = size;
    if (m_pRoot) m_pRoot->SetRefSize(size.cx, size.cy);
    return 1;
}

int CQELView::GetRefSize(SIZE* pSize) const
{
    *pSize = m_refSize;
    return 1;
}

void CQELView::SetTextPage(uint32_t nPage)
{
    m_nTextPage = nPage;
    if (!m_pRoot || m_pRoot->TextPage() == nPage) return;
    m_pRoot->SetTextPage(nPage);
    m_pRoot->PlaceChanged(); // a line under a letter stands elsewhere
}

int CQELView::NewTree()
{
    Clear();
    CQELViewElm* pRoot = nullptr;
    return CreateElement(nullptr, nullptr, QEL_TYPE_ROOT, &pRoot) ? SetRefSize(m_refSize) : 0;
}

void CQELView::Clear()
{
    DeleteAll();
    m_pool.Clear();
}

void CQELView::BeginLoad(CArena& spare)
{
    m_pool.TakeOver(spare);
    m_bLoads = true;
}

void CQELView::EndLoad()
{
    m_bLoads = false;
    m_pool.FreeSpare();
}

void CQELView::DeleteAll()
{
    m_live.Clear();
    m_dirty.Clear();
    m_dirty.AddAll();
    m_scales.Clear();
    m_statuses.Clear();
    m_meters.Clear();
    m_pFrame = nullptr;
    m_pPattern = nullptr;
    m_pDrawRgn = nullptr;
    m_detached.DeleteAll();
    delete m_pRoot;
    m_pRoot = nullptr;
}

CQELViewElm* CQELView::MakeElement(int32_t nType)
{
    return m_types.MakeView(nType, m_bLoads ? &m_pool : nullptr, m_refSize.cx, m_refSize.cy);
}

int CQELView::CreateElement(CQELViewElm* pParent, CQELViewElm* pAfter, int32_t nType,
                            CQELViewElm** ppOut)
{
    *ppOut = nullptr;
    if (nType != QEL_TYPE_ROOT && !pParent) return 0;
    CQELViewElm* pElm = MakeElement(nType);
    if (!pElm) return 0;
    if (nType == QEL_TYPE_ROOT) {
        DeleteAll(); // the new root lies in the pool already
        m_pRoot = static_cast<CQELViewQEL*>(pElm);
        m_pRoot->SetLiveLayer(&m_live);
        m_pRoot->SetDirtyArea(&m_dirty);
        m_pRoot->SetTextPage(m_nTextPage);
    } else {
        pParent->AppendChild(pElm);
        if (pAfter) pElm->Move(pParent, pAfter);
    }
    *ppOut = pElm;
    return 1;
}

int CQELView::DeleteElement(CQELViewElm* pElm)
{
    DropLive(pElm);
    if (pElm == m_pRoot) m_pRoot = nullptr;
    m_detached.Unlink(pElm);
    delete pElm;
    return 1;
}

// Before the elements go: others may come to stand where they stood.
void CQELView::DropLive(CQELViewElm* pTop)
{
    if (!m_dirty.IsAll()) m_dirty.Resolve(m_pRoot);
    if (!m_live.IsUsed()) return;
    for (CQELViewElm* pElm = pTop; pElm; pElm = pElm->NextInTree(pTop)) m_live.Drop(pElm);
}

bool CQELView::IsInPicture(const CQELViewElm* pElm) const
{
    while (pElm && pElm != m_pRoot) pElm = pElm->Parent();
    return pElm != nullptr;
}

int CQELView::MoveElement(CQELViewElm* pElm, CQELViewElm* pParent, CQELViewElm* pAfter)
{
    const bool bWasInPicture = IsInPicture(pElm);
    m_detached.Unlink(pElm);
    if (!pParent) {
        m_detached.Keep(pElm);
        return 1;
    }
    pElm->Move(pParent, pAfter);
    // An element that was out of the picture has missed what the drawing went through meanwhile.
    // The phase is the drawing's: a group that was made in the dark phase is bright itself.
    pElm->SetRefSize(pParent->RefW(), pParent->RefH());
    if (!bWasInPicture && IsInPicture(pElm)) pElm->SetBlink(m_pRoot->BlinkPhase());
    return 1;
}

int CQELView::DuplicateElement(CQELViewElm* pElm, CQELViewElm** ppOut)
{
    return pElm->Duplicate(pElm->Parent(), ppOut);
}

// Puts an element into the slot of its type (the last one wins), or empties the slot, whichever
// element is in it.
int CQELView::SetSlot(CQELViewElm* pElm, bool bOn)
{
    switch (pElm->Type()) {
    case QEL_TYPE_FRAME:
        m_pFrame = bOn ? pElm->HostSide() : nullptr;
        break;
    case QEL_TYPE_PATTERN:
        m_pPattern = bOn ? pElm->HostSide() : nullptr;
        break;
    case QEL_TYPE_DRAWRGN:
        m_pDrawRgn = bOn ? pElm->HostSide() : nullptr;
        break;
    default:
        break;
    }
    return 1;
}

CQELViewList* CQELView::ListOf(int32_t nType)
{
    switch (nType) {
    case QEL_TYPE_STATUS:
        return &m_statuses;
    case QEL_TYPE_SCALE:
        return &m_scales;
    case QEL_TYPE_METER:
        return &m_meters;
    default:
        return nullptr;
    }
}

// An element that is registered already may have got another id.
int CQELView::Register(CQELViewElm* pElm)
{
    CQELViewList* pList = ListOf(pElm->Type());
    if (!pList) return SetSlot(pElm, true);
    const uint32_t nId = pElm->HostSide()->HostId();
    if (!pElm->m_pListNode) return pList->Append(&pElm->m_pListNode, pElm, nId);
    pList->SetKey(pElm->m_pListNode, nId);
    return 0;
}

int CQELView::ReservePlaces(CQELViewElm* pTop)
{
    for (CQELViewElm* pElm = pTop; pElm; pElm = pElm->NextInTree(pTop)) {
        if (!ListOf(pElm->Type()) || Register(pElm) || pElm->m_pListNode) continue;
        GiveUpPlaces(pTop);
        return 0;
    }
    return 1;
}

void CQELView::GiveUpPlaces(CQELViewElm* pTop)
{
    for (CQELViewElm* pElm = pTop; pElm; pElm = pElm->NextInTree(pTop))
        if (ListOf(pElm->Type())) Unregister(pElm);
}

int CQELView::Unregister(CQELViewElm* pElm)
{
    CQELViewList* pList = ListOf(pElm->Type());
    return pList ? pList->Remove(&pElm->m_pListNode) : SetSlot(pElm, false);
}

int CQELView::SetElementParam(int32_t nIndex, uint32_t nValue)
{
    if (nIndex == QEL_PARAM_COLOR) return m_pFrame ? m_pFrame->SetHostParam(nIndex, nValue) : 0;
    int nResult = m_pPattern ? m_pPattern->SetHostParam(nIndex, nValue) : 0;
    if (m_pDrawRgn) nResult = m_pDrawRgn->SetHostParam(nIndex, nValue);
    return nResult;
}

// A hatch style that there is not still reaches the pattern and the draw region.
int CQELView::SetParam(int32_t nIndex, uint32_t nValue)
{
    if (nIndex < 0 || nIndex >= QEL_PARAM_COUNT) return 0;
    const int nResult = SetElementParam(nIndex, nValue);
    if (nIndex == QEL_PARAM_DRAFT && nValue >= DRAFT_COUNT) return nResult;
    m_nParams[nIndex] = nValue;
    if (m_pRoot) (m_pRoot->*g_paramSetters[nIndex])(nValue);
    return nResult;
}

int CQELView::GetParam(int32_t nIndex, uint32_t* pnValue) const
{
    if (nIndex < 0 || nIndex >= QEL_PARAM_COUNT) return 0;
    if (nIndex == QEL_PARAM_COLOR) {
        if (m_pFrame) return m_pFrame->GetHostParam(nIndex, pnValue);
        *pnValue = m_nParams[nIndex];
        return 1;
    }
    if (m_pPattern) return m_pPattern->GetHostParam(nIndex, pnValue);
    if (m_pDrawRgn) return m_pDrawRgn->GetHostParam(nIndex, pnValue);
    *pnValue = m_nParams[nIndex];
    return 1;
}

void CQELView::SetStatusOf(CQELViewElm* pElm, uint32_t nStatus)
{
    const bool bWasShown = pElm->IsShown();
    pElm->HostSide()->SetStatus(nStatus);
    if (pElm->IsShown() != bWasShown) pElm->Touch();
}

int CQELView::SetStatus(uint32_t nStatus)
{
    for (const ViewListNode* pNode = m_statuses.First(); pNode; pNode = pNode->pNext)
        SetStatusOf(pNode->pElm, nStatus);
    return m_statuses.First() ? 1 : 0;
}

int CQELView::GetStatus(uint32_t* pnStatus) const
{
    if (!m_statuses.First()) return 0;
    *pnStatus = m_statuses.First()->pElm->HostSide()->Status();
    return 1;
}

namespace {

CHostDriven* Knowing(CQELViewElm* pElm, uint32_t nSelector)
{
    CHostDriven* pHost = pElm ? pElm->HostSide() : nullptr;
    return pHost && pHost->KnowsSelector(nSelector) ? pHost : nullptr;
}

} // namespace

// The element of an id that knows a selector, null when there is none.
CHostDriven* CQELView::FindScale(uint32_t nId, uint32_t nSelector) const
{
    return Knowing(m_scales.Find(nId), nSelector);
}

CHostDriven* CQELView::FindMeter(uint32_t nId, uint32_t nSelector) const
{
    return Knowing(m_meters.Find(MeterIdOf(nId)), nSelector);
}

bool CQELView::HasHostId(uint32_t nId) const
{
    return m_scales.Find(nId) || m_meters.Find(MeterIdOf(nId));
}

// An element that does not know the selector leaves the result to the other one.
int CQELView::SetScaleParam(uint32_t nId, uint32_t nSelector, uint32_t nValue)
{
    int nResult = 0;
    if (CHostDriven* pScale = FindScale(nId, nSelector))
        nResult = pScale->SetProperty(nSelector, nValue);
    CHostDriven* pMeter = FindMeter(nId, nSelector);
    if (!pMeter) return nResult;
    if (nSelector != QEL_SEL_VALUE) return pMeter->SetProperty(nSelector, nValue);
    return nId <= METER_PINS ? pMeter->SetValue(nId, nValue) : nResult;
}

int CQELView::GetScaleParam(uint32_t nId, uint32_t nSelector, uint32_t* pnValue) const
{
    const CHostDriven* pScale = FindScale(nId, nSelector);
    const CHostDriven* pMeter = FindMeter(nId, nSelector);
    if (nSelector == QEL_SEL_VALUE) {
        if (pMeter && nId >= 1 && nId <= METER_PINS) return pMeter->GetValue(nId, pnValue);
        if (pScale) return pScale->GetProperty(nSelector, pnValue);
        return pMeter && nId == 0 ? pMeter->GetValue(nId, pnValue) : 0;
    }
    const bool bMeterFirst = nSelector == QEL_SEL_PIN_COLOR || nSelector == QEL_SEL_SCALE_COLOR;
    if (pScale && !(pMeter && bMeterFirst)) return pScale->GetProperty(nSelector, pnValue);
    return pMeter ? pMeter->GetProperty(nSelector, pnValue) : 0;
}

int CQELView::SetScaleParam(uint32_t nId, uint32_t nSelector, float fValue)
{
    CHostDriven* pMeter = FindMeter(nId, nSelector);
    if (nSelector == QEL_SEL_BASE_VALUE) return pMeter ? pMeter->SetBase(fValue) : 0;
    if (nSelector != QEL_SEL_VALUE) return 0;
    CHostDriven* pScale = FindScale(nId, nSelector);
    const int nResult = pScale ? pScale->SetValue(0, fValue) : 0;
    return pMeter && nId <= METER_PINS ? pMeter->SetValue(nId, fValue) : nResult;
}

int CQELView::GetScaleParam(uint32_t nId, uint32_t nSelector, float* pfValue) const
{
    const CHostDriven* pMeter = FindMeter(nId, nSelector);
    if (nSelector == QEL_SEL_BASE_VALUE) return pMeter ? pMeter->GetBase(pfValue) : 0;
    if (nSelector != QEL_SEL_VALUE) return 0;
    if (pMeter && nId >= 1 && nId <= METER_PINS) return pMeter->GetValue(nId, pfValue);
    if (const CHostDriven* pScale = FindScale(nId, nSelector)) return pScale->GetValue(0, pfValue);
    return pMeter && nId == 0 ? pMeter->GetValue(nId, pfValue) : 0;
}

bool CQELView::WantsFullRedraw() const
{
    for (const ViewListNode* pNode = m_meters.First(); pNode; pNode = pNode->pNext)
        if (pNode->pElm->HostSide()->WantsFullRedraw()) return true;
    return false;
}

bool CQELView::DrawsFully(uint32_t nFlags) const
{
    return (nFlags & QEL_DRAW_FULL) || m_scales.First() || WantsFullRedraw();
}

int CQELView::Draw(CQELViewElm* pElm, HDC hdc, const QelRect& rcQel, uint32_t nFlags)
{
    if (!pElm) pElm = m_pRoot;
    if (!pElm) return 0;
    if (pElm == m_pRoot && !DrawsFully(nFlags)) {
        m_statuses.Draw(hdc, rcQel, nFlags);
        m_scales.Draw(hdc, rcQel, nFlags);
        m_meters.Draw(hdc, rcQel, nFlags);
        return 1;
    }
    return CClippedDraw(hdc, rcQel, nFlags | QEL_DRAW_FULL).Draw(pElm);
}

int CQELView::SetBlink(CQELViewElm* pElm, int32_t nPhase)
{
    if (!pElm) pElm = m_pRoot;
    if (pElm) pElm->SetBlink(nPhase);
    return 1;
}

int CQELView::Rotate(CQELViewElm* pElm, POINT ptCentre, int32_t nAngle)
{
    if (!pElm) pElm = m_pRoot;
    return pElm ? pElm->Rotate(ptCentre, nAngle) : 0;
}

int CQELView::MoveX(CQELViewElm* pElm, int32_t nDx)
{
    if (!pElm) pElm = m_pRoot;
    return pElm ? pElm->MoveX(nDx) : 0;
}

int CQELView::MoveY(CQELViewElm* pElm, int32_t nDy)
{
    if (!pElm) pElm = m_pRoot;
    return pElm ? pElm->MoveY(nDy) : 0;
}

void CQELView::SetClock(const ClockTimes& times)
{
    ClockTimes& shown = m_live.Clock();
    const bool bSame = shown.universal.wSecond == times.universal.wSecond &&
                       shown.universal.wMinute == times.universal.wMinute &&
                       shown.local.wHour == times.local.wHour &&
                       shown.local.wMinute == times.local.wMinute;
    shown = times;
    if (bSame) return;
    for (const ViewListNode* pNode = m_meters.First(); pNode; pNode = pNode->pNext)
        if (pNode->pElm->HostSide()->ShowsTime()) pNode->pElm->Touch();
}

int CQELView::GetDrawGraphRect(const QelRect& rcQel, RECT* prcOut) const
{
    return m_pDrawRgn ? m_pDrawRgn->GetGraphRect(rcQel, prcOut) : 0;
}
