// The document side of QELViewGroup; see the header.
#include "document/QELDocGroup.h"

#include "include/QELEngine.h"

CQELDocGroup::CQELDocGroup(XmlContext** ppXml) noexcept : CQELDocContainer(ppXml, QEL_TYPE_GROUP) {}

int CQELDocGroup::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}
