// The tabs; see the header.
#include "tools/studio/FileTabs.h"

#include "tools/studio/Dpi.h"

namespace studio {

namespace {

constexpr int BESIDE = 8; // of the room around a name, at 96 dots an inch
constexpr int ABOVE = 4;
constexpr int SELECTED_RISES = 2; // so many pixels above the others

} // namespace

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

// The height of tabs is set, since that of the system's own is known only when they show.
void CFileTabs::SetLook(HFONT hFont)
{
    SetFont(hFont);
    const int nDpi = static_cast<int>(DpiOf(Handle()));
    const int nBeside = ::MulDiv(BESIDE, nDpi, PLAIN_DPI);
    const int nAbove = ::MulDiv(ABOVE, nDpi, PLAIN_DPI);
    TEXTMETRICW metric{};
    const HDC hdc = ::GetDC(Handle());
    const HGDIOBJ hPrev = ::SelectObject(hdc, hFont);
    ::GetTextMetricsW(hdc, &metric);
    ::SelectObject(hdc, hPrev);
    ::ReleaseDC(Handle(), hdc);
    m_nHeight = metric.tmHeight + 2 * nAbove;
    Send(TCM_SETPADDING, 0, MAKELPARAM(nBeside, nAbove));
    Send(TCM_SETITEMSIZE, 0, MAKELPARAM(0, m_nHeight));
}

// Of the tabs alone: what the system paints under them for a page is left out.
int CFileTabs::Height() const
{
    return m_nHeight + SELECTED_RISES;
}

} // namespace studio
