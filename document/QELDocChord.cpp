// The document side of QELViewChord; see the header.
#include "document/QELDocChord.h"

namespace {

constexpr CrdForm g_form = {
    "xyxyxyxy", true, "0 0 10 10 10 5 5 0",
    "left top right bottom of the ellipse, then the start and the end point (x y each)"};

} // namespace

CQELDocChord::CQELDocChord(XmlContext** ppXml) noexcept : CQELDocShape(ppXml, QEL_TYPE_CHORD)
{
    TakeDefaultCrd();
}

int CQELDocChord::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}

const CrdForm& CQELDocChord::GetCrdForm() const
{
    return g_form;
}
