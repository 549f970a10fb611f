// The view; see the header.
#include "render/QELView.h"

#include "dynamic/QELViewDrawRgn.h"
#include "dynamic/QELViewFrame.h"
#include "dynamic/QELViewPattern.h"
#include "dynamic/QELViewStatus.h"
#include "render/QELViewArc.h"
#include "render/QELViewChord.h"
#include "render/QELViewCircle.h"
#include "render/QELViewEllipse.h"
#include "render/QELViewGroup.h"
#include "render/QELViewLine.h"
#include "render/QELViewPie.h"
#include "render/QELViewPolygon.h"
#include "render/QELViewPolyline.h"
#include "render/QELViewRect.h"
#include "render/QELViewRoundRect.h"
#include "render/QELViewText.h"

namespace {

template <class T>
CQELViewElm* Make(int32_t nRefW, int32_t nRefH)
{
    return new (std::nothrow) T(nRefW, nRefH);
}

struct MakerRow {
    int32_t nType;
    CQELViewElm* (*pfnMake)(int32_t nRefW, int32_t nRefH);
};

constexpr MakerRow g_makers[] = {
    {QEL_TYPE_ROOT, Make<CQELViewQEL>},          {QEL_TYPE_TEXT, Make<CQELViewText>},
    {QEL_TYPE_RECT, Make<CQELViewRect>},         {QEL_TYPE_CHORD, Make<CQELViewChord>},
    {QEL_TYPE_PIE, Make<CQELViewPie>},           {QEL_TYPE_ROUNDRECT, Make<CQELViewRoundRect>},
    {QEL_TYPE_ARC, Make<CQELViewArc>},           {QEL_TYPE_ELLIPSE, Make<CQELViewEllipse>},
    {QEL_TYPE_CIRCLE, Make<CQELViewCircle>},     {QEL_TYPE_LINE, Make<CQELViewLine>},
    {QEL_TYPE_POLYLINE, Make<CQELViewPolyline>}, {QEL_TYPE_POLYGON, Make<CQELViewPolygon>},
    {QEL_TYPE_GROUP, Make<CQELViewGroup>},       {QEL_TYPE_STATUS, Make<CQELViewStatus>},
    {QEL_TYPE_FRAME, Make<CQELViewFrame>},       {QEL_TYPE_PATTERN, Make<CQELViewPattern>},
    {QEL_TYPE_DRAWRGN, Make<CQELViewDrawRgn>},
};

using ParamSetter = int (CQELViewElm::*)(uint32_t);

constexpr ParamSetter g_paramSetters[QEL_PARAM_COUNT] = {
    &CQELViewElm::SetColorParam, &CQELViewElm::SetDraftParam, &CQELViewElm::SetDraftForeParam,
    &CQELViewElm::SetDraftBackParam};

} // namespace

int CQELViewList::Append(ViewListNode** ppPlace, CQELViewElm* pElm)
{
    if (*ppPlace) return 0;
    auto* pNode = new (std::nothrow) ViewListNode{nullptr, m_pLast, pElm};
    if (!pNode) return 0;
    (m_pLast ? m_pLast->pNext : m_pFirst) = pNode;
    m_pLast = pNode;
    *ppPlace = pNode;
    return 1;
}

int CQELViewList::Remove(ViewListNode** ppPlace)
{
    ViewListNode* pNode = *ppPlace;
    if (!pNode) return 0;
    (pNode->pPrev ? pNode->pPrev->pNext : m_pFirst) = pNode->pNext;
    (pNode->pNext ? pNode->pNext->pPrev : m_pLast) = pNode->pPrev;
    delete pNode;
    *ppPlace = nullptr;
    return 1;
}

void CQELViewList::Draw(HDC hdc, const RECT& rcQel, uint32_t nFlags) const
{
    for (const ViewListNode* pNode = m_pFirst; pNode; pNode = pNode->pNext)
        pNode->pElm->Draw(hdc, rcQel, nFlags);
}

void CQELViewList::Clear()
{
    while (m_pFirst) {
        ViewListNode* pNode = m_pFirst;
        m_pFirst = pNode->pNext;
        delete pNode;
    }
    m_pLast = nullptr;
}

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

int CQELView::NewTree()
{
    Clear();
    CQELViewElm* pRoot = nullptr;
    return CreateElement(nullptr, nullptr, QEL_TYPE_ROOT, &pRoot) ? SetRefSize(m_refSize) : 0;
}

void CQELView::Clear()
{
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

CQELViewElm* CQELView::MakeElement(int32_t nType) const
{
    for (const MakerRow& row : g_makers)
        if (row.nType == nType) return row.pfnMake(m_refSize.cx, m_refSize.cy);
    return nullptr;
}

int CQELView::CreateElement(CQELViewElm* pParent, CQELViewElm* pAfter, int32_t nType,
                            CQELViewElm** ppOut)
{
    *ppOut = nullptr;
    if (nType != QEL_TYPE_ROOT && !pParent) return 0;
    CQELViewElm* pElm = MakeElement(nType);
    if (!pElm) return 0;
    if (nType == QEL_TYPE_ROOT) {
        Clear();
        m_pRoot = static_cast<CQELViewQEL*>(pElm);
    } else {
        pParent->AppendChild(pElm);
        if (pAfter) pElm->Move(pParent, pAfter);
    }
    *ppOut = pElm;
    return 1;
}

int CQELView::DeleteElement(CQELViewElm* pElm)
{
    if (pElm == m_pRoot) m_pRoot = nullptr;
    m_detached.Unlink(pElm);
    delete pElm;
    return 1;
}

int CQELView::MoveElement(CQELViewElm* pElm, CQELViewElm* pParent, CQELViewElm* pAfter)
{
    m_detached.Unlink(pElm);
    if (pParent) {
        pElm->Move(pParent, pAfter);
        // An element that was out of the picture has missed what the drawing went through
        // meanwhile.
        pElm->SetRefSize(pParent->RefW(), pParent->RefH());
        pElm->SetBlink(pParent->BlinkPhase());
        return 1;
    }
    m_detached.Keep(pElm);
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
        m_pFrame = bOn ? static_cast<CQELViewFrame*>(pElm) : nullptr;
        break;
    case QEL_TYPE_PATTERN:
        m_pPattern = bOn ? static_cast<CQELViewPattern*>(pElm) : nullptr;
        break;
    case QEL_TYPE_DRAWRGN:
        m_pDrawRgn = bOn ? static_cast<CQELViewDrawRgn*>(pElm) : nullptr;
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

int CQELView::Register(CQELViewElm* pElm)
{
    CQELViewList* pList = ListOf(pElm->Type());
    return pList ? pList->Append(&pElm->m_pListNode, pElm) : SetSlot(pElm, true);
}

int CQELView::Unregister(CQELViewElm* pElm)
{
    CQELViewList* pList = ListOf(pElm->Type());
    return pList ? pList->Remove(&pElm->m_pListNode) : SetSlot(pElm, false);
}

int CQELView::SetElementParam(int32_t nIndex, uint32_t nValue)
{
    if (nIndex == QEL_PARAM_COLOR) return m_pFrame ? m_pFrame->SetColorParam(nValue) : 0;
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
        *pnValue = m_pFrame ? m_pFrame->Color() : m_nParams[nIndex];
        return 1;
    }
    if (m_pPattern) return m_pPattern->GetHostParam(nIndex, pnValue);
    if (m_pDrawRgn) return m_pDrawRgn->GetHostParam(nIndex, pnValue);
    *pnValue = m_nParams[nIndex];
    return 1;
}

int CQELView::SetStatus(uint32_t nStatus)
{
    for (const ViewListNode* pNode = m_statuses.First(); pNode; pNode = pNode->pNext)
        static_cast<CQELViewStatus*>(pNode->pElm)->SetStatus(nStatus);
    return m_statuses.First() ? 1 : 0;
}

int CQELView::GetStatus(uint32_t* pnStatus) const
{
    if (!m_statuses.First()) return 0;
    *pnStatus = static_cast<const CQELViewStatus*>(m_statuses.First()->pElm)->Status();
    return 1;
}

int CQELView::Draw(CQELViewElm* pElm, HDC hdc, const RECT& rcQel, uint32_t nFlags)
{
    if (!pElm) pElm = m_pRoot;
    if (!pElm) return 0;
    if (pElm == m_pRoot && !(nFlags & QEL_DRAW_FULL) && !m_scales.First()) {
        m_statuses.Draw(hdc, rcQel, nFlags);
        m_scales.Draw(hdc, rcQel, nFlags);
        m_meters.Draw(hdc, rcQel, nFlags);
        return 1;
    }
    return pElm->Draw(hdc, rcQel, nFlags | QEL_DRAW_FULL);
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

int CQELView::GetDrawGraphRect(const RECT& rcQel, RECT* prcOut) const
{
    return m_pDrawRgn ? m_pDrawRgn->GetGraphRect(rcQel, prcOut) : 0;
}
