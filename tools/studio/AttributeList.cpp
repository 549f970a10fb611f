// The attributes of an element; see the header.
#include "tools/studio/AttributeList.h"

#include "tools/studio/Resource.h"
#include "tools/studio/Strings.h"

namespace studio {

int CAttributeList::Create(HWND hParent, UINT nId)
{
    return MakeReport(hParent, nId,
                      {{IDS_ATTR_NAME, 72}, {IDS_ATTR_VALUE, 0}, {IDS_ATTR_LINE, 48, true}});
}

void CAttributeList::Show(const SourceElement* pElement)
{
    Send(WM_SETREDRAW, FALSE);
    Clear();
    if (pElement) {
        for (const SourceAttr& attr : pElement->attrs)
            AddRow({attr.name, attr.value, std::to_wstring(attr.nLine)});
        if (!pElement->text.empty())
            AddRow({Text(IDS_TEXT_ROW), pElement->text, std::to_wstring(pElement->nTextLine)});
    }
    Send(WM_SETREDRAW, TRUE);
    ::InvalidateRect(Handle(), nullptr, TRUE);
    FitColumns();
}

} // namespace studio
