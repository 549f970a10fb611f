#include "document/QELDocContainer.h"

#include "include/QELEngine.h"

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
