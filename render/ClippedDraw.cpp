#include "render/ClippedDraw.h"

#include "base/Shown.h"
#include "render/QELViewGroup.h"

namespace {

// Texts that do not follow the current position.
bool HasPlainTexts(HDC hdc)
{
    return !(::GetTextAlign(hdc) & TA_UPDATECP);
}

// Lines under and through letters are not cut off at the text's rectangle, as letters are.
bool HasPlainFont(HDC hdc)
{
    LOGFONTA font{};
    if (!::GetObjectA(::GetCurrentObject(hdc, OBJ_FONT), sizeof font, &font)) return false;
    return !font.lfUnderline && !font.lfStrikeOut && !font.lfEscapement && !font.lfOrientation;
}

} // namespace

// The order of the questions keeps a draw without a clip at two of them.
bool CClippedDraw::HidesSomething()
{
    if (!IsSurface(m_hdc) || ::GetClipBox(m_hdc, &m_rcClip) == ERROR) return false;
    if (Covers(m_rcClip, m_rcQel.OnDevice()) || !IsWithinReach(m_rcClip)) return false;
    return HasPlainState(m_hdc) && HasPlainTexts(m_hdc) && HasPlainFont(m_hdc);
}

bool CClippedDraw::IsHidden(const RECT& rcPainted) const
{
    return rcPainted.left >= m_rcClip.right || rcPainted.right <= m_rcClip.left ||
           rcPainted.top >= m_rcClip.bottom || rcPainted.bottom <= m_rcClip.top;
}

int CClippedDraw::Draw(CQELViewElm* pTop)
{
    const bool bWalks = pTop->Type() == QEL_TYPE_ROOT || pTop->Type() == QEL_TYPE_GROUP;
    if (!bWalks || pTop->IsLive() || !HidesSomething()) return pTop->Show(m_hdc, m_rcQel, m_nFlags);
    DrawChildren(pTop);
    m_owed.Settle(m_hdc);
    return 1;
}

void CClippedDraw::DrawChildren(const CQELViewElm* pParent)
{
    for (CQELViewElm* pElm = pParent->FirstChild(); pElm; pElm = pElm->NextSibling())
        if (pElm->IsHiddenItself())
            continue;
        else if (pElm->IsMarked())
            DrawNow(pElm); // over all that it may paint at most, which is more than it does
        else if (pElm->IsShape())
            DrawShape(static_cast<CQELViewShape*>(pElm));
        else if (pElm->Type() == QEL_TYPE_GROUP)
            DrawGroup(static_cast<CQELViewGroup*>(pElm));
        else
            DrawNow(pElm);
}

void CClippedDraw::DrawShape(CQELViewShape* pShape)
{
    RECT rc;
    const Reach nReach = pShape->PaintedArea(m_rcQel, m_nFlags, &rc);
    if (nReach == Reach::Unknown || (nReach == Reach::Known && !IsHidden(rc)))
        DrawNow(pShape);
    else if (nReach == Reach::Known)
        pShape->LeaveColors(&m_owed);
}

void CClippedDraw::DrawGroup(CQELViewGroup* pGroup)
{
    const PaintedBounds& bounds = pGroup->Bounds(m_rcQel.InPicture(), m_nFlags);
    if (bounds.bKnown && IsHidden(QelRect(bounds.rc, m_rcQel.px).OnDevice()))
        m_owed.Add(bounds.colors);
    else
        DrawChildren(pGroup);
}

void CClippedDraw::DrawNow(CQELViewElm* pElm)
{
    m_owed.Settle(m_hdc);
    pElm->Show(m_hdc, m_rcQel, m_nFlags);
}
