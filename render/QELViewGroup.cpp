#include "render/QELViewGroup.h"

#include <algorithm>
#include <cstring>

CQELViewGroup::CQELViewGroup(int32_t nRefW, int32_t nRefH, CPool* pPool) noexcept
    : CQELViewElm(nRefW, nRefH, pPool)
{
    SetType(QEL_TYPE_GROUP);
}

int CQELViewGroup::NewInstance(CQELViewElm** ppOut) const
{
    return NewInstanceAs(*this, ppOut);
}

int CQELViewGroup::GetAttrBlockSize(int* pnSize) const
{
    *pnSize = sizeof(QELWORDATTR);
    return 1;
}

int CQELViewGroup::GetAttrBlock(void* pBlock) const
{
    if (!pBlock) return 0;
    std::memset(pBlock, 0, sizeof(QELWORDATTR));
    return 1;
}

int CQELViewGroup::SetAttrBlock(const void* pBlock)
{
    return pBlock ? 1 : 0;
}

const PaintedBounds& CQELViewGroup::Bounds(const QelRect& rcQel, uint32_t nFlags)
{
    const ChangeStamp changes = Changes();
    if (!changes.IsNone() && m_boundsChanges == changes && m_nBoundsFlags == nFlags &&
        ::EqualRect(&m_rcBoundsQel, &rcQel))
        return m_bounds;
    m_boundsChanges = changes;
    m_nBoundsFlags = nFlags;
    m_rcBoundsQel = rcQel;
    FindBounds(rcQel);
    return m_bounds;
}

void CQELViewGroup::FindBounds(const QelRect& rcQel)
{
    m_bounds = {{INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN}, {}, true};
    for (CQELViewElm* pElm = FirstChild(); pElm && m_bounds.bKnown; pElm = pElm->NextSibling())
        if (pElm->IsHiddenItself())
            continue;
        else if (pElm->IsMarked())
            m_bounds.bKnown = false;
        else if (pElm->IsShape())
            m_bounds.bKnown = AddShape(*static_cast<const CQELViewShape*>(pElm), rcQel);
        else
            m_bounds.bKnown = pElm->Type() == QEL_TYPE_GROUP &&
                              AddGroup(static_cast<CQELViewGroup*>(pElm), rcQel);
}

bool CQELViewGroup::AddShape(const CQELViewShape& shape, const QelRect& rcQel)
{
    RECT rc;
    const Reach nReach = shape.PaintedArea(rcQel, m_nBoundsFlags, &rc);
    if (nReach == Reach::Known) {
        AddArea(rc);
        shape.LeaveColors(&m_bounds.colors);
    }
    return nReach != Reach::Unknown;
}

bool CQELViewGroup::AddGroup(CQELViewGroup* pGroup, const QelRect& rcQel)
{
    const PaintedBounds& inner = pGroup->Bounds(rcQel, m_nBoundsFlags);
    AddArea(inner.rc);
    m_bounds.colors.Add(inner.colors);
    return inner.bKnown;
}

void CQELViewGroup::AddArea(const RECT& rc)
{
    RECT& all = m_bounds.rc;
    all = {std::min(all.left, rc.left), std::min(all.top, rc.top), std::max(all.right, rc.right),
           std::max(all.bottom, rc.bottom)};
}
