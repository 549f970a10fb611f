// The document side of QELViewText; see the header.
#include "document/QELDocText.h"

namespace {

constexpr CrdForm g_form = {"xyxy", true, "0 0 10 10", "left top right bottom"};

} // namespace

CQELDocText::CQELDocText(XmlContext** ppXml) noexcept : CQELDocShape(ppXml, QEL_TYPE_TEXT)
{
    TakeDefaultCrd();
}

int CQELDocText::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}

const CrdForm& CQELDocText::GetCrdForm() const
{
    return g_form;
}
