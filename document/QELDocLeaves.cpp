#include "document/QELDocLeaves.h"

#include <cstring>

int CQELDocContainer::GetAttrSize(int* pnSize) const
{
    *pnSize = sizeof(QELWORDATTR);
    return 1;
}

int CQELDocContainer::GetAttr(void* pBlock) const
{
    if (!pBlock) return 0;
    std::memset(pBlock, 0, sizeof(QELWORDATTR));
    return 1;
}

int CQELDocContainer::SetAttr(const void* pBlock)
{
    return pBlock ? 1 : 0;
}
