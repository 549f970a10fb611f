// The group view; see the header.
#include "render/QELViewGroup.h"

#include <cstring>

CQELViewGroup::CQELViewGroup(int32_t nRefW, int32_t nRefH) noexcept : CQELViewElm(nRefW, nRefH)
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
