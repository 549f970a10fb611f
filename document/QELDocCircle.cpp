// The document side of QELViewCircle; see the header.
#include "document/QELDocCircle.h"

namespace {

constexpr CrdForm g_form = {"xyr", false, "5 5 5", "centre x y, radius"};

} // namespace

CQELDocCircle::CQELDocCircle(XmlContext** ppXml) noexcept : CQELDocShape(ppXml, QEL_TYPE_CIRCLE)
{
    TakeDefaultCrd();
}

int CQELDocCircle::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}

const CrdForm& CQELDocCircle::GetCrdForm() const
{
    return g_form;
}
