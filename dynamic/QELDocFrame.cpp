// The document side of QELViewFrame; see the header.
#include "dynamic/QELDocFrame.h"

#include "include/QELEngine.h"

CQELDocFrame::CQELDocFrame(XmlContext** ppXml) noexcept : CQELDocContainer(ppXml, QEL_TYPE_FRAME) {}

int CQELDocFrame::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}
