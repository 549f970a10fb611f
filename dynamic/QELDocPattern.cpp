// The document side of QELViewPattern; see the header.
#include "dynamic/QELDocPattern.h"

#include "include/QELEngine.h"

CQELDocPattern::CQELDocPattern(XmlContext** ppXml) noexcept
    : CQELDocContainer(ppXml, QEL_TYPE_PATTERN)
{
}

int CQELDocPattern::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}
