#include "render/QELViewElm.h"

#include "base/Rects.h"
#include "render/QELViewGroup.h"
#include "render/QELViewQEL.h"
#include "render/QualityMark.h"
#include "render/UnitMap.h"

CQELViewElm::~CQELViewElm()
{
    Detach();
}

CQELViewElm::ChangeStamp CQELViewElm::Changes() const
{
    const CQELViewElm* pTop = this;
    while (pTop->m_pParent) pTop = pTop->m_pParent;
    if (pTop->Type() != QEL_TYPE_ROOT) return {};
    return static_cast<const CQELViewQEL*>(pTop)->ChangeCount();
}

void CQELViewElm::NoteChange()
{
    CQELViewElm* pTop = this;
    while (pTop->m_pParent) pTop = pTop->m_pParent;
    if (pTop->Type() == QEL_TYPE_ROOT) static_cast<CQELViewQEL*>(pTop)->CountChange();
}

// Within the own parent the copy is linked with this element as the moving part, so that what
// followed this element is not reached through the chain any more and this element has no previous
// sibling. Editing makes its copies another way.
int CQELViewElm::Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut)
{
    *ppOut = nullptr;
    CQELViewElm* pCopy = nullptr;
    if (!NewInstance(&pCopy)) return 0;
    if (pTargetParent == m_pParent) {
        pCopy->m_pParent = m_pParent;
        if (m_pParent) {
            m_pPrev = pCopy->m_pPrev;
            m_pNext = pCopy;
            pCopy->m_pPrev = this;
            m_pParent->m_pLastChild = pCopy;
        }
        NoteChange();
    } else if (pTargetParent) {
        pTargetParent->AppendChild(pCopy);
    }
    for (CQELViewElm* pChild = m_pFirstChild; pChild; pChild = pChild->m_pNext) {
        CQELViewElm* pChildCopy = nullptr;
        if (!pChild->Duplicate(pCopy, &pChildCopy)) {
            delete pCopy;
            return 0;
        }
    }
    *ppOut = pCopy;
    return 1;
}

// What the children answer is ignored: one that cannot draw does not keep the others from it.
int CQELViewElm::Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags)
{
    for (CQELViewElm* pChild = m_pFirstChild; pChild; pChild = pChild->m_pNext)
        pChild->Show(hdc, rcQel, nFlags);
    return 1;
}

int CQELViewElm::ShowLive(HDC hdc, const QelRect& rcQel, uint32_t nFlags)
{
    const LiveState* pState = FindLive();
    if (!pState) return Draw(hdc, rcQel, nFlags);
    if (pState->bHidden) return 1;
    const int nResult = Draw(hdc, rcQel, nFlags);
    MarkQuality(hdc, rcQel, *pState);
    return nResult;
}

// Over all that it may paint, so that the mark does not move with the value.
void CQELViewElm::MarkQuality(HDC hdc, const QelRect& rcQel, const LiveState& state) const
{
    RECT rcPainted{};
    RECT rc{};
    if (state.ShownQuality() == QUALITY_GOOD || !PaintedRect(rcQel, &rcPainted)) return;
    const RECT rcWhole = rcQel.OnDevice();
    rcPainted = QelRect(PixelsOf(rcPainted, rcQel.px), rcQel.px).OnDevice(); // on whole pixels
    if (::IntersectRect(&rc, &rcPainted, &rcWhole))
        DrawQualityMark(hdc, rc, state.ShownQuality(), rcQel.px);
}

LiveState* CQELViewElm::FindLive() const
{
    const CLiveLayer* pLayer = LiveLayer();
    return pLayer ? pLayer->Find(this) : nullptr;
}

bool CQELViewElm::IsHidden(const CQELViewElm* pTop) const
{
    for (const CQELViewElm* pElm = this; pElm && pElm != pTop; pElm = pElm->m_pParent)
        if (pElm->IsHiddenItself()) return true;
    return false;
}

LiveState* CQELViewElm::MakeLive()
{
    CLiveLayer* pLayer = LiveLayer();
    LiveState* pState = pLayer ? pLayer->Make(this) : nullptr;
    if (pState) m_bLive = true;
    return pState;
}

void CQELViewElm::PaintChanged() const
{
    for (CQELViewElm* p = m_pParent; p; p = p->m_pParent)
        if (p->Type() == QEL_TYPE_GROUP) static_cast<CQELViewGroup*>(p)->DropBounds();
}

const CQELViewQEL* CQELViewElm::Drawing() const
{
    const CQELViewElm* pTop = this;
    while (pTop->m_pParent) pTop = pTop->m_pParent;
    return pTop->Type() == QEL_TYPE_ROOT ? static_cast<const CQELViewQEL*>(pTop) : nullptr;
}

uint32_t CQELViewElm::TextPage() const
{
    const CQELViewQEL* pDrawing = Drawing();
    return pDrawing ? pDrawing->TextPage() : PAGE_ANSI;
}

CLiveLayer* CQELViewElm::LiveLayer() const
{
    const CQELViewQEL* pDrawing = Drawing();
    return pDrawing ? pDrawing->DrawingLayer() : nullptr;
}

void CQELViewElm::TouchAnew()
{
    const CQELViewQEL* pDrawing = Drawing();
    if (pDrawing && pDrawing->Dirty()) pDrawing->Dirty()->Touch(this);
}

void CQELViewElm::TouchPlace() const
{
    const CQELViewQEL* pDrawing = Drawing();
    if (pDrawing && pDrawing->Dirty()) pDrawing->Dirty()->AddPlaceOf(this, pDrawing);
}

bool CQELViewElm::FindHidden() const
{
    const LiveState* pState = FindLive();
    return pState && pState->bHidden;
}

bool CQELViewElm::FindMark() const
{
    const LiveState* pState = FindLive();
    return pState && pState->ShownQuality() != QUALITY_GOOD;
}

bool CQELViewElm::PaintedRect(const QelRect& rcQel, RECT* prcOut) const
{
    CRectHull hull;
    for (const CQELViewElm* pChild = m_pFirstChild; pChild; pChild = pChild->m_pNext) {
        RECT rc{};
        if (pChild->PaintedRect(rcQel, &rc)) hull.Add(rc);
    }
    return hull.Get(prcOut);
}

// An element without a geometry of its own goes with the drawing.
bool CQELViewElm::MapUnits(const QelRect& rcQel, UnitMap* pOut) const
{
    return MakeUnitMap(rcQel, m_nRefW, m_nRefH, {}, 0, pOut);
}

int CQELViewElm::Rotate(POINT ptCentre, int32_t nAngle)
{
    for (CQELViewElm* pChild = m_pFirstChild; pChild; pChild = pChild->m_pNext)
        pChild->Rotate(ptCentre, nAngle);
    return 1;
}

int CQELViewElm::MoveX(int32_t nDx)
{
    for (CQELViewElm* pChild = m_pFirstChild; pChild; pChild = pChild->m_pNext) pChild->MoveX(nDx);
    return 1;
}

int CQELViewElm::MoveY(int32_t nDy)
{
    for (CQELViewElm* pChild = m_pFirstChild; pChild; pChild = pChild->m_pNext) pChild->MoveY(nDy);
    return 1;
}

int CQELViewElm::SetColorParam(uint32_t nValue)
{
    for (CQELViewElm* pChild = m_pFirstChild; pChild; pChild = pChild->m_pNext)
        pChild->SetColorParam(nValue);
    return 1;
}

int CQELViewElm::SetDraftParam(uint32_t nValue)
{
    for (CQELViewElm* pChild = m_pFirstChild; pChild; pChild = pChild->m_pNext)
        pChild->SetDraftParam(nValue);
    return 1;
}

int CQELViewElm::SetDraftForeParam(uint32_t nValue)
{
    for (CQELViewElm* pChild = m_pFirstChild; pChild; pChild = pChild->m_pNext)
        pChild->SetDraftForeParam(nValue);
    return 1;
}

int CQELViewElm::SetDraftBackParam(uint32_t nValue)
{
    for (CQELViewElm* pChild = m_pFirstChild; pChild; pChild = pChild->m_pNext)
        pChild->SetDraftBackParam(nValue);
    return 1;
}

uint32_t CQELViewElm::GetParamMask() const
{
    uint32_t nMask = 0;
    for (const CQELViewElm* pChild = m_pFirstChild; pChild; pChild = pChild->m_pNext)
        nMask |= pChild->GetParamMask();
    return nMask;
}

void CQELViewElm::Move(CQELViewElm* pParent, CQELViewElm* pAfter)
{
    Unlink();
    if (!pParent) return;
    if (pAfter && pParent->m_pFirstChild)
        InsertAfter(pAfter);
    else
        pParent->PrependChild(this);
}

void CQELViewElm::Detach()
{
    DeleteChildren();
    Unlink();
}

void CQELViewElm::SetRefSize(int32_t nRefW, int32_t nRefH)
{
    NoteChange();
    for (CQELViewElm* pElm = this; pElm; pElm = pElm->NextInTree(this)) {
        pElm->m_nRefW = nRefW;
        pElm->m_nRefH = nRefH;
    }
}

void CQELViewElm::SetBlink(int32_t nPhase)
{
    const bool bDark = nPhase != 0;
    for (CQELViewElm* pElm = this; pElm; pElm = pElm->NextInTree(this)) {
        if (pElm->m_bDark != bDark && pElm->Blinks()) pElm->Touch();
        pElm->m_bDark = bDark;
    }
}
