#include "dynamic/QELViewFrame.h"

int CQELViewFrame::NewInstance(CQELViewElm** ppOut) const
{
    return NewInstanceAs(*this, ppOut);
}

int CQELViewFrame::Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut)
{
    if (!CQELViewElm::Duplicate(pTargetParent, ppOut)) return 0;
    static_cast<CQELViewFrame*>(*ppOut)->m_clr = m_clr;
    return 1;
}

int CQELViewFrame::GetAttrBlockSize(int* pnSize) const
{
    *pnSize = sizeof(QELWORDATTR);
    return 1;
}

int CQELViewFrame::GetAttrBlock(void* pBlock) const
{
    return GetEmptyBlock(pBlock);
}

int CQELViewFrame::SetAttrBlock(const void* pBlock)
{
    return SetEmptyBlock(pBlock);
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
