// The document side of QELViewEllipse; see the header.
#include "document/QELDocEllipse.h"

namespace {

constexpr CrdForm g_form = {"xyxy", true, "0 0 10 10", "left top right bottom"};

} // namespace

CQELDocEllipse::CQELDocEllipse(XmlContext** ppXml) noexcept : CQELDocShape(ppXml, QEL_TYPE_ELLIPSE)
{
    TakeDefaultCrd();
}

int CQELDocEllipse::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}

const CrdForm& CQELDocEllipse::GetCrdForm() const
{
    return g_form;
}
