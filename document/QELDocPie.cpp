// The document side of QELViewPie; see the header.
#include "document/QELDocPie.h"

namespace {

constexpr CrdForm g_form = {
    "xyxyxyxy", true, "0 0 10 10 10 5 5 0",
    "left top right bottom of the ellipse, then the start and the end point (x y each)"};

} // namespace

CQELDocPie::CQELDocPie(XmlContext** ppXml) noexcept : CQELDocShape(ppXml, QEL_TYPE_PIE)
{
    TakeDefaultCrd();
}

int CQELDocPie::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}

const CrdForm& CQELDocPie::GetCrdForm() const
{
    return g_form;
}
