// The document side of QELViewRoundRect; see the header.
#include "document/QELDocRoundRect.h"

namespace {

constexpr CrdForm g_form = {
    "xyxywh", true, "0 0 10 10 0 0",
    "left top right bottom, then width and height of the corner ellipse in pixels"};

} // namespace

CQELDocRoundRect::CQELDocRoundRect(XmlContext** ppXml) noexcept
    : CQELDocShape(ppXml, QEL_TYPE_ROUNDRECT)
{
    TakeDefaultCrd();
}

int CQELDocRoundRect::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}

const CrdForm& CQELDocRoundRect::GetCrdForm() const
{
    return g_form;
}
