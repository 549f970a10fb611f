// The document side of QELViewPolyline; see the header.
#include "document/QELDocPolyline.h"

CQELDocPolyline::CQELDocPolyline(XmlContext** ppXml) noexcept
    : CQELDocPointList(ppXml, QEL_TYPE_POLYLINE)
{
    TakeDefaultCrd();
}

int CQELDocPolyline::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}
