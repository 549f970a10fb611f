#include "dynamic/QELViewDrawRgn.h"

#include "base/GdiScopes.h"
#include "brush/ShownDraft.h"
#include "render/Border3D.h"
#include "render/Mapping.h"
#include "render/UnitMap.h"

#include <cstring>

namespace {

constexpr uint32_t MASK_DRAW_REGION = 0x100; // in the mask of supported parameters

} // namespace

int CQELViewDrawRgn::Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut)
{
    if (!CQELViewElm::Duplicate(pTargetParent, ppOut)) return 0;
    auto* pCopy = static_cast<CQELViewDrawRgn*>(*ppOut);
    pCopy->m_rc = m_rc;
    pCopy->m_nStyle = m_nStyle;
    pCopy->m_nDraft = m_nDraft;
    pCopy->m_clrA = m_clrA;
    pCopy->m_clrB = m_clrB;
    pCopy->m_nFlags = m_nFlags;
    return 1;
}

bool CQELViewDrawRgn::HasBorder() const
{
    return (m_nStyle & (QEL_STYLE_UP_BIT | QEL_STYLE_DOWN_BIT)) != 0;
}

int CQELViewDrawRgn::Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags)
{
    if (!(nFlags & QEL_DRAW_FULL)) return 1;
    RECT rc{};
    MapRect(rcQel, RefW(), RefH(), m_rc, &rc, m_nFlags);
    Fill(hdc, rc, rcQel.px);
    DrawStyledBorder(hdc, rc, m_nStyle, rcQel);
    return 1;
}

void CQELViewDrawRgn::Fill(HDC hdc, const RECT& rc, CPixelScale px) const
{
    auto* const hHollow = static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH));
    if (!(m_nStyle & QEL_STYLE_FILL_MASK)) {
        ::FillRect(hdc, &rc, hHollow);
        return;
    }
    const CBkColorScope back(hdc, BlinkColor(m_clrA));
    const CTextColorScope text(hdc, BlinkColor(m_clrB));
    CShownDraft draft(m_nDraft, px);
    const HBRUSH hBrush = draft.Brush(hdc, rc, rc, BlinkColor(m_clrB), BlinkColor(m_clrA));
    ::FillRect(hdc, &rc, hBrush ? hBrush : hHollow);
}

int CQELViewDrawRgn::GetGraphRect(const QelRect& rcQel, RECT* prcOut) const
{
    RECT rc{};
    if (!MapRect(rcQel, RefW(), RefH(), m_rc, &rc, m_nFlags)) return 0;
    const int32_t nWidth = HasBorder() ? rcQel.px(BorderWidthOf(m_nStyle)) : 0;
    ::InflateRect(&rc, -nWidth, -nWidth);
    *prcOut = rc;
    return 1;
}

// All of the rectangle, where the host paints as well.
bool CQELViewDrawRgn::PaintedRect(const QelRect& rcQel, RECT* prcOut) const
{
    RECT rc{};
    if (!MapRect(rcQel, RefW(), RefH(), m_rc, &rc, m_nFlags) || ::IsRectEmpty(&rc)) return false;
    *prcOut = HasBorder() ? BorderBox(rc, rcQel.px(BorderWidthOf(m_nStyle))) : rc;
    return true;
}

bool CQELViewDrawRgn::IsHit(const QelRect& rcQel, POINT pt) const
{
    RECT rc{};
    MapRect(rcQel, RefW(), RefH(), m_rc, &rc, m_nFlags); // what cannot be mapped is empty
    return ::PtInRect(&rc, pt);
}

bool CQELViewDrawRgn::MapUnits(const QelRect& rcQel, UnitMap* pOut) const
{
    return !::IsRectEmpty(&m_rc) && MakeUnitMap(rcQel, RefW(), RefH(), m_rc, m_nFlags, pOut);
}

int CQELViewDrawRgn::GetAttrBlockSize(int* pnSize) const
{
    *pnSize = sizeof(QELDRAWRGNATTR);
    return 1;
}

int CQELViewDrawRgn::GetAttrBlock(void* pBlock) const
{
    if (!pBlock) return 0;
    const QELDRAWRGNATTR block = {sizeof block, static_cast<LONG>(m_nStyle), m_rc, m_nFlags};
    std::memcpy(pBlock, &block, sizeof block);
    return 1;
}

int CQELViewDrawRgn::SetAttrBlock(const void* pBlock)
{
    if (!pBlock) return 0;
    QELDRAWRGNATTR block;
    std::memcpy(&block.nSize, pBlock, sizeof block.nSize);
    if (block.nSize != sizeof block) return 0;
    std::memcpy(&block, pBlock, sizeof block);
    if (block.nStyle < 0) return 0;
    m_nStyle = static_cast<uint32_t>(block.nStyle);
    m_rc = block.rc;
    m_nFlags = block.nFlags;
    NoteChange();
    return 1;
}

bool CQELViewDrawRgn::Blinks() const
{
    return ((m_clrA | m_clrB) & QEL_COLOR_BLINK) != 0;
}

int CQELViewDrawRgn::SetHostParam(int32_t nIndex, uint32_t nValue)
{
    Touch();
    if (nIndex == QEL_PARAM_DRAFT) {
        if (nValue >= DRAFT_COUNT) return 0;
        m_nDraft = static_cast<int32_t>(nValue);
        return 1;
    }
    (nIndex == QEL_PARAM_DRAFT_FORE ? m_clrA : m_clrB) = nValue;
    return 1;
}

int CQELViewDrawRgn::GetHostParam(int32_t nIndex, uint32_t* pnValue) const
{
    if (nIndex == QEL_PARAM_DRAFT)
        *pnValue = static_cast<uint32_t>(m_nDraft);
    else
        *pnValue = nIndex == QEL_PARAM_DRAFT_FORE ? m_clrA : m_clrB;
    return 1;
}

uint32_t CQELViewDrawRgn::GetParamMask() const
{
    uint32_t nMask = MASK_DRAW_REGION;
    if (m_nStyle & QEL_STYLE_FILL_MASK) nMask |= QEL_MASK_DRAFT;
    if (m_nFlags & QEL_KEEP_ANCHOR_MASK) nMask |= QEL_MASK_KEEP;
    return nMask;
}
