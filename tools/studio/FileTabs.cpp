// The tabs; see the header.
#include "tools/studio/FileTabs.h"

namespace studio {

int CFileTabs::Create(HWND hParent, UINT nId)
{
    return Make(WC_TABCONTROLW, WS_VISIBLE | WS_TABSTOP | TCS_FOCUSNEVER | TCS_TOOLTIPS, hParent,
                nId);
}

void CFileTabs::Add(const std::wstring& name) const
{
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = const_cast<wchar_t*>(name.c_str()); // the control only reads it
    Send(TCM_INSERTITEMW, static_cast<WPARAM>(Send(TCM_GETITEMCOUNT)), Param(&item));
}

void CFileTabs::Remove(int nTab) const
{
    Send(TCM_DELETEITEM, static_cast<WPARAM>(nTab));
}

void CFileTabs::Rename(int nTab, const std::wstring& name) const
{
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = const_cast<wchar_t*>(name.c_str());
    Send(TCM_SETITEMW, static_cast<WPARAM>(nTab), Param(&item));
}

void CFileTabs::Choose(int nTab) const
{
    Send(TCM_SETCURSEL, static_cast<WPARAM>(nTab));
}

int CFileTabs::Chosen() const
{
    return static_cast<int>(Send(TCM_GETCURSEL));
}

int CFileTabs::At(POINT ptScreen) const
{
    TCHITTESTINFO hit{ptScreen, 0};
    ::ScreenToClient(Handle(), &hit.pt);
    return static_cast<int>(Send(TCM_HITTEST, 0, Param(&hit)));
}

int CFileTabs::Height() const
{
    RECT rc{0, 0, 400, 0};
    Send(TCM_ADJUSTRECT, TRUE, Param(&rc)); // of the control whose inside has no height
    RECT rcTab{};
    if (Send(TCM_GETITEMRECT, 0, Param(&rcTab))) return rcTab.bottom + 2;
    return rc.bottom - rc.top;
}

} // namespace studio
