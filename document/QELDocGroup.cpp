// The document side of QELViewGroup; see the header.
#include "document/QELDocGroup.h"

#include "include/QELEngine.h"

CQELDocGroup::CQELDocGroup(XmlContext** ppXml) noexcept : CQELDocElm(ppXml, QEL_TYPE_GROUP) {}

int CQELDocGroup::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}

int CQELDocGroup::GetAttrSize(int* pnSize) const
{
    *pnSize = sizeof(QELWORDATTR);
    return 1;
}

int CQELDocGroup::GetAttr(void* pBlock) const
{
    if (!pBlock) return 0;
    std::memset(pBlock, 0, sizeof(QELWORDATTR));
    return 1;
}

int CQELDocGroup::SetAttr(const void* pBlock)
{
    return pBlock ? 1 : 0;
}
