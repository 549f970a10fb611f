// The document side of QELViewRect; see the header.
#include "document/QELDocRect.h"

namespace {

constexpr CrdForm g_form = {"xyxy", true, "0 0 10 10", "left top right bottom"};

} // namespace

CQELDocRect::CQELDocRect(XmlContext** ppXml) noexcept : CQELDocShape(ppXml, QEL_TYPE_RECT)
{
    TakeDefaultCrd();
}

int CQELDocRect::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}

const CrdForm& CQELDocRect::GetCrdForm() const
{
    return g_form;
}
