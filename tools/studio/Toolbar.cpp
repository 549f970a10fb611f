// The toolbar; see the header.
#include "tools/studio/Toolbar.h"

#include "tools/studio/Dpi.h"
#include "tools/studio/Icons.h"
#include "tools/studio/Resource.h"
#include "tools/studio/Strings.h"

#include <cwchar>

namespace studio {

namespace {

constexpr int ICON_SIDE = 20; // at 96 dots an inch
constexpr int MARGIN = 6;     // around it, in its button

struct ButtonRow {
    UINT nCommand; // 0: a line between groups
    bool bCheck;
};

// The icons stand in the same order, without the lines.
constexpr ButtonRow g_buttons[] = {{IDM_OPEN, false},
                                   {IDM_RELOAD, false},
                                   {0, false},
                                   {IDM_FIT, true},
                                   {IDM_FILL, true},
                                   {IDM_ACTUAL, true},
                                   {IDM_ZOOM_OUT, false},
                                   {IDM_ZOOM_IN, false},
                                   {0, false},
                                   {IDM_SMOOTH, true},
                                   {IDM_UPDATES, true},
                                   {0, false},
                                   {IDM_GROUND_LIGHT, true},
                                   {IDM_GROUND_DARK, true},
                                   {IDM_GROUND_CHESS, true},
                                   {0, false},
                                   {IDM_SHOW_TREE, true},
                                   {IDM_SHOW_FINDINGS, true},
                                   {IDM_SHOW_RUN, true}};

HIMAGELIST MakeButtonIcons(int nSide, int nMargin)
{
    return MakeIcons({L"ICON_OPEN", L"ICON_RELOAD", L"ICON_FIT", L"ICON_FILL", L"ICON_ACTUAL",
                      L"ICON_ZOOM_OUT", L"ICON_ZOOM_IN", L"ICON_SMOOTH", L"ICON_UPDATES",
                      L"ICON_LIGHT", L"ICON_DARK", L"ICON_CHESS", L"ICON_TREE", L"ICON_FINDINGS",
                      L"ICON_RUN"},
                     nSide, nMargin);
}

} // namespace

CToolbar::~CToolbar()
{
    if (m_hIcons) ImageList_Destroy(m_hIcons);
}

int CToolbar::Create(HWND hParent, UINT nId)
{
    if (!Make(TOOLBARCLASSNAMEW,
              WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_NODIVIDER | CCS_NORESIZE |
                  CCS_NOPARENTALIGN,
              hParent, nId))
        return 0;
    Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
    DrawIcons();
    int nIcon = 0;
    for (const ButtonRow& row : g_buttons) {
        TBBUTTON button{};
        button.idCommand = static_cast<int>(row.nCommand);
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = static_cast<BYTE>(row.bCheck ? BTNS_CHECK : BTNS_BUTTON);
        if (!row.nCommand) button.fsStyle = BTNS_SEP;
        button.iBitmap = row.nCommand ? nIcon++ : 0;
        Send(TB_ADDBUTTONSW, 1, Param(&button));
    }
    return 1;
}

void CToolbar::DrawIcons()
{
    const int nDpi = static_cast<int>(DpiOf(Handle()));
    const int nSide = ::MulDiv(ICON_SIDE, nDpi, PLAIN_DPI);
    const int nMargin = ::MulDiv(MARGIN, nDpi, PLAIN_DPI);
    const int nWhole = nSide + 2 * nMargin;
    HIMAGELIST hOld = m_hIcons;
    m_hIcons = MakeButtonIcons(nSide, nMargin);
    // The margin is part of the picture, since systems place a smaller one in different ways.
    Send(TB_SETPADDING, 0, MAKELPARAM(0, 0));
    Send(TB_SETBITMAPSIZE, 0, MAKELPARAM(nWhole, nWhole));
    Send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(m_hIcons));
    Send(TB_SETBUTTONSIZE, 0, MAKELPARAM(nWhole, nWhole));
    if (hOld) ImageList_Destroy(hOld);
}

void CToolbar::Enable(UINT nCommand, bool bEnabled) const
{
    Send(TB_ENABLEBUTTON, nCommand, MAKELPARAM(bEnabled, 0));
}

void CToolbar::Check(UINT nCommand, bool bChecked) const
{
    Send(TB_CHECKBUTTON, nCommand, MAKELPARAM(bChecked, 0));
}

int CToolbar::Height() const
{
    return HIWORD(Send(TB_GETBUTTONSIZE));
}

void CToolbar::OnNotify(NMHDR* pHeader)
{
    if (pHeader->code != TTN_GETDISPINFOW) return;
    auto* pInfo = reinterpret_cast<NMTTDISPINFOW*>(pHeader);
    const std::wstring hint = Text(static_cast<unsigned>(pHeader->idFrom));
    std::wcsncpy(pInfo->szText, hint.c_str(), 79);
    pInfo->szText[79] = 0;
}

} // namespace studio
