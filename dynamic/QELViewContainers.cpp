#include "dynamic/QELViewContainers.h"

#include <cstring>

int CQELViewContainer::GetAttrBlockSize(int* pnSize) const
{
    *pnSize = sizeof(QELWORDATTR);
    return 1;
}

int CQELViewContainer::GetAttrBlock(void* pBlock) const
{
    if (!pBlock) return 0;
    std::memset(pBlock, 0, sizeof(QELWORDATTR));
    return 1;
}

int CQELViewContainer::SetAttrBlock(const void* pBlock)
{
    return pBlock ? 1 : 0;
}

int CQELViewFrame::Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut)
{
    if (!CQELViewElm::Duplicate(pTargetParent, ppOut)) return 0;
    static_cast<CQELViewFrame*>(*ppOut)->m_clr = m_clr;
    return 1;
}

int CQELViewFrame::SetColorParam(uint32_t nValue)
{
    m_clr = nValue;
    for (CQELViewShape* p = FirstShapeBelow(this); p; p = NextShapeBelow(p, this))
        p->TakeColor(nValue);
    return 1;
}

uint32_t CQELViewFrame::GetParamMask() const
{
    return QEL_MASK_COLOR; // without asking the children
}

int CQELViewFrame::SetHostParam(int32_t nIndex, uint32_t nValue)
{
    return nIndex == QEL_PARAM_COLOR ? SetColorParam(nValue) : 0;
}

int CQELViewFrame::GetHostParam(int32_t nIndex, uint32_t* pnValue) const
{
    if (nIndex != QEL_PARAM_COLOR) return 0;
    *pnValue = m_clr;
    return 1;
}

int CQELViewPattern::Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut)
{
    if (!CQELViewElm::Duplicate(pTargetParent, ppOut)) return 0;
    auto* pCopy = static_cast<CQELViewPattern*>(*ppOut);
    pCopy->m_nDraft = m_nDraft;
    pCopy->m_clrFore = m_clrFore;
    pCopy->m_clrBack = m_clrBack;
    return 1;
}

int CQELViewPattern::SetHostParam(int32_t nIndex, uint32_t nValue)
{
    if (nIndex == QEL_PARAM_DRAFT && nValue < DRAFT_COUNT) m_nDraft = static_cast<int32_t>(nValue);
    if (nIndex == QEL_PARAM_DRAFT_FORE) m_clrFore = nValue;
    if (nIndex == QEL_PARAM_DRAFT_BACK) m_clrBack = nValue;
    for (CQELViewShape* p = FirstShapeBelow(this); p; p = NextShapeBelow(p, this)) {
        if (nIndex == QEL_PARAM_DRAFT) p->TakeDraft(m_nDraft);
        if (nIndex == QEL_PARAM_DRAFT_FORE) p->TakeColor(nValue);
        if (nIndex == QEL_PARAM_DRAFT_BACK) p->TakeBackColor(nValue);
    }
    return 1;
}

int CQELViewPattern::GetHostParam(int32_t nIndex, uint32_t* pnValue) const
{
    switch (nIndex) {
    case QEL_PARAM_DRAFT:
        *pnValue = static_cast<uint32_t>(m_nDraft);
        return 1;
    case QEL_PARAM_DRAFT_FORE:
        *pnValue = m_clrFore;
        return 1;
    default:
        *pnValue = m_clrBack;
        return 1;
    }
}

uint32_t CQELViewPattern::GetParamMask() const
{
    return QEL_MASK_DRAFT; // without asking the children
}
