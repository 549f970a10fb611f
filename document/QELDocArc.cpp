// The document side of QELViewArc; see the header.
#include "document/QELDocArc.h"

namespace {

constexpr CrdForm g_form = {
    "xyxyxyxy", true, "0 0 10 10 10 5 5 0",
    "left top right bottom of the ellipse, then the start and the end point (x y each)"};

} // namespace

CQELDocArc::CQELDocArc(XmlContext** ppXml) noexcept : CQELDocShape(ppXml, QEL_TYPE_ARC)
{
    TakeDefaultCrd();
}

int CQELDocArc::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}

const CrdForm& CQELDocArc::GetCrdForm() const
{
    return g_form;
}
