// The document side of QELViewPolygon; see the header.
#include "document/QELDocPolygon.h"

CQELDocPolygon::CQELDocPolygon(XmlContext** ppXml) noexcept
    : CQELDocPointList(ppXml, QEL_TYPE_POLYGON)
{
    TakeDefaultCrd();
}

int CQELDocPolygon::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}
