// The document side of QELViewLine; see the header.
#include "document/QELDocLine.h"

namespace {

constexpr CrdForm g_form = {"xyxy", false, "0 0 10 10", "start x y, end x y"};

} // namespace

CQELDocLine::CQELDocLine(XmlContext** ppXml) noexcept : CQELDocShape(ppXml, QEL_TYPE_LINE)
{
    TakeDefaultCrd();
}

int CQELDocLine::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}

const CrdForm& CQELDocLine::GetCrdForm() const
{
    return g_form;
}
