// A list of properties; see the header.
#include "tools/studio/PropertyList.h"

#include "tools/studio/Dpi.h"
#include "tools/studio/Strings.h"

#include <algorithm>
#include <commdlg.h>
#include <cwchar>
#include <windowsx.h>

namespace studio {

namespace {

constexpr int NAME_PART = 45; // of the width, in percent
constexpr int ROW = 20;       // the least height of one, at 96 dots an inch
constexpr int BOX = 13;       // a check box, at 96 dots an inch
constexpr int SWATCH = 24;
constexpr int EDIT_FRAME = 4; // above and below a text that is edited
constexpr int PAD = 6;
constexpr int SHOWN_CHOICES = 12;
constexpr UINT EDITOR_ID = 1;

int ScaledAt(HWND hWnd, int nAt96)
{
    return ::MulDiv(nAt96, static_cast<int>(DpiOf(hWnd)), PLAIN_DPI);
}

std::wstring TextOfWindow(HWND hWnd)
{
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(hWnd)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        ::GetWindowTextW(hWnd, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::wstring ColorText(COLORREF clr)
{
    wchar_t szText[8];
    std::swprintf(szText, 8, L"#%02X%02X%02X", GetRValue(clr), GetGValue(clr), GetBValue(clr));
    return szText;
}

} // namespace

int ParseColor(const std::wstring& text, COLORREF* pClr)
{
    constexpr std::size_t LENGTH = 7;
    constexpr wchar_t DIGITS[] = L"0123456789abcdefABCDEF";
    if (text.size() < LENGTH || text[0] != L'#') return 0;
    if (text.substr(1, LENGTH - 1).find_first_not_of(DIGITS) != std::wstring::npos) return 0;
    const unsigned long nValue = std::wcstoul(text.substr(1, LENGTH - 1).c_str(), nullptr, 16);
    *pClr = RGB(nValue >> 16 & 0xFF, nValue >> 8 & 0xFF, nValue & 0xFF);
    return 1;
}

CPropertyList::~CPropertyList()
{
    m_nEdited = -1; // the editor goes with its parent
    if (m_hHeight) ::ImageList_Destroy(m_hHeight);
}

int CPropertyList::Create(HWND hParent, UINT nId, unsigned nNameTitle, unsigned nValueTitle,
                          Change change)
{
    m_change = std::move(change);
    if (!Make(WC_LISTVIEWW,
              WS_VISIBLE | WS_TABSTOP | WS_BORDER | WS_CLIPCHILDREN | LVS_REPORT | LVS_SINGLESEL |
                  LVS_SHOWSELALWAYS | LVS_NOSORTHEADER,
              hParent, nId))
        return 0;
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
         LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    ::SetWindowSubclass(Handle(), ListProcedure, 0, reinterpret_cast<DWORD_PTR>(this));
    const unsigned titles[] = {nNameTitle, nValueTitle};
    for (int n = 0; n < 2; ++n) {
        std::wstring title = Text(titles[n]);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.cx = 64;
        column.pszText = title.data();
        Send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(n), Param(&column));
    }
    return 1;
}

void CPropertyList::SetFont(HFONT hFont)
{
    m_hFont = hFont;
    CControl::SetFont(hFont);
    m_nLine = LineHeight(Handle(), hFont);
    HIMAGELIST hOld = m_hHeight;
    m_hHeight = ::ImageList_Create(1, ScaledAt(Handle(), ROW), ILC_COLOR, 1, 0);
    Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(m_hHeight));
    if (hOld) ::ImageList_Destroy(hOld);
    FitColumns();
}

void CPropertyList::FitColumns() const
{
    RECT rc{};
    ::GetClientRect(Handle(), &rc);
    const int nName = rc.right * NAME_PART / 100;
    Send(LVM_SETCOLUMNWIDTH, 0, MAKELPARAM(nName, 0));
    Send(LVM_SETCOLUMNWIDTH, 1, MAKELPARAM(rc.right - nName, 0));
}

std::wstring CPropertyList::Shown(const Property& property) const
{
    for (std::size_t n = 0; n < property.choices.size() && n < property.names.size(); ++n)
        if (property.choices[n] == property.text) return property.names[n];
    return property.text;
}

void CPropertyList::SetProperties(std::vector<Property> properties)
{
    EndEdit(false);
    const int nSelected = Selected();
    m_properties = std::move(properties);
    Send(WM_SETREDRAW, FALSE);
    Send(LVM_DELETEALLITEMS);
    for (std::size_t n = 0; n < m_properties.size(); ++n) {
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = static_cast<int>(n);
        item.pszText = m_properties[n].label.data();
        Send(LVM_INSERTITEMW, 0, Param(&item));
        std::wstring shown = Shown(m_properties[n]);
        item.iSubItem = 1;
        item.pszText = shown.data();
        Send(LVM_SETITEMTEXTW, n, Param(&item));
    }
    if (nSelected >= 0 && nSelected < static_cast<int>(m_properties.size()))
        ListView_SetItemState(Handle(), nSelected, LVIS_SELECTED | LVIS_FOCUSED,
                              LVIS_SELECTED | LVIS_FOCUSED);
    Send(WM_SETREDRAW, TRUE);
    ::InvalidateRect(Handle(), nullptr, TRUE);
    FitColumns();
}

void CPropertyList::SetText(std::size_t nProperty, const std::wstring& text)
{
    if (nProperty >= m_properties.size() || m_properties[nProperty].text == text) return;
    m_properties[nProperty].text = text;
    std::wstring shown = Shown(m_properties[nProperty]);
    LVITEMW item{};
    item.iSubItem = 1;
    item.pszText = shown.data();
    Send(LVM_SETITEMTEXTW, nProperty, Param(&item));
}

int CPropertyList::Selected() const
{
    return static_cast<int>(
        Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), MAKELPARAM(LVNI_SELECTED, 0)));
}

RECT CPropertyList::ValueRect(int nProperty) const
{
    RECT rc{LVIR_BOUNDS, 1, 0, 0};
    Send(LVM_GETSUBITEMRECT, static_cast<WPARAM>(nProperty), Param(&rc));
    return rc;
}

void CPropertyList::Tell(int nProperty, const std::wstring& text)
{
    if (m_change) m_change(static_cast<std::size_t>(nProperty), text);
}

void CPropertyList::Edit(int nProperty)
{
    if (nProperty < 0 || nProperty >= static_cast<int>(m_properties.size())) return;
    EndEdit(true);
    Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(nProperty), FALSE);
    const Property& property = m_properties[static_cast<std::size_t>(nProperty)];
    switch (property.kind) {
    case Property::Kind::Switch:
        return Tell(nProperty, property.text == L"0" ? L"1" : L"0");
    case Property::Kind::Color:
        return AskColor(nProperty);
    case Property::Kind::Choice:
        return EditChoice(nProperty);
    default:
        return EditText(nProperty);
    }
}

void CPropertyList::BeginEdit(const wchar_t* pszClass, DWORD nStyle, int nProperty, int nHeight)
{
    const RECT rc = ValueRect(nProperty);
    const int nTop = rc.top + std::max<int>(rc.bottom - rc.top - nHeight, 0) / 2;
    auto* const hId = Passed<HMENU>(static_cast<UINT_PTR>(EDITOR_ID));
    m_hEditor =
        ::CreateWindowExW(0, pszClass, L"", nStyle | WS_CHILD, rc.left, nTop, rc.right - rc.left,
                          nHeight, Handle(), hId, ::GetModuleHandleW(nullptr), nullptr);
    if (!m_hEditor) return;
    m_nEdited = nProperty;
    ::SendMessageW(m_hEditor, WM_SETFONT, reinterpret_cast<WPARAM>(m_hFont), FALSE);
}

void CPropertyList::EditText(int nProperty)
{
    BeginEdit(WC_EDITW, WS_BORDER | ES_AUTOHSCROLL, nProperty,
              m_nLine + ScaledAt(Handle(), EDIT_FRAME));
    if (!m_hEditor) return;
    ::SetWindowTextW(m_hEditor, m_properties[static_cast<std::size_t>(nProperty)].text.c_str());
    ::SendMessageW(m_hEditor, EM_SETSEL, 0, -1);
    ::ShowWindow(m_hEditor, SW_SHOW);
    ::SetFocus(m_hEditor);
}

void CPropertyList::EditChoice(int nProperty)
{
    const Property& property = m_properties[static_cast<std::size_t>(nProperty)];
    const RECT rc = ValueRect(nProperty);
    BeginEdit(WC_COMBOBOXW, CBS_DROPDOWNLIST | WS_VSCROLL, nProperty,
              (rc.bottom - rc.top) * (SHOWN_CHOICES + 1));
    if (!m_hEditor) return;
    ::SendMessageW(m_hEditor, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1),
                   rc.bottom - rc.top - ScaledAt(Handle(), PAD));
    for (std::size_t n = 0; n < property.choices.size(); ++n) {
        const std::wstring& shown =
            n < property.names.size() ? property.names[n] : property.choices[n];
        ::SendMessageW(m_hEditor, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(shown.c_str()));
        if (property.choices[n] == property.text) ::SendMessageW(m_hEditor, CB_SETCURSEL, n, 0);
    }
    ::ShowWindow(m_hEditor, SW_SHOW);
    ::SetFocus(m_hEditor);
    ::SendMessageW(m_hEditor, CB_SHOWDROPDOWN, TRUE, 0);
}

void CPropertyList::AskColor(int nProperty)
{
    const Property& property = m_properties[static_cast<std::size_t>(nProperty)];
    CHOOSECOLORW choose{};
    choose.lStructSize = sizeof choose;
    choose.hwndOwner = ::GetAncestor(Handle(), GA_ROOT);
    choose.lpCustColors = m_custom;
    choose.Flags = CC_FULLOPEN | CC_RGBINIT;
    ParseColor(property.text, &choose.rgbResult);
    const std::wstring blink = property.text.size() > 7 ? property.text.substr(7) : L"";
    if (::ChooseColorW(&choose)) Tell(nProperty, ColorText(choose.rgbResult) + blink);
}

// Ending it takes the focus from it, which would end it again.
void CPropertyList::EndEdit(bool bKeep)
{
    if (m_nEdited < 0 || m_bEnding) return;
    m_bEnding = true;
    const int nProperty = m_nEdited;
    const Property& property = m_properties[static_cast<std::size_t>(nProperty)];
    std::wstring text = TextOfWindow(m_hEditor);
    if (property.kind == Property::Kind::Choice) {
        const LRESULT nChosen = ::SendMessageW(m_hEditor, CB_GETCURSEL, 0, 0);
        text = nChosen >= 0 ? property.choices[static_cast<std::size_t>(nChosen)] : property.text;
    }
    const bool bChanged = text != property.text;
    const bool bFocus = ::GetFocus() == m_hEditor;
    m_nEdited = -1;
    ::DestroyWindow(m_hEditor);
    m_hEditor = nullptr;
    if (bFocus) ::SetFocus(Handle());
    m_bEnding = false;
    if (bKeep && bChanged) Tell(nProperty, text);
}

void CPropertyList::OnEditor(UINT nWhat)
{
    if (m_nEdited < 0) return;
    const bool bChoice =
        m_properties[static_cast<std::size_t>(m_nEdited)].kind == Property::Kind::Choice;
    if (bChoice ? nWhat == CBN_SELENDOK || nWhat == CBN_KILLFOCUS : nWhat == EN_KILLFOCUS)
        EndEdit(true);
    else if (bChoice && nWhat == CBN_SELENDCANCEL)
        EndEdit(false);
}

LRESULT CALLBACK CPropertyList::ListProcedure(HWND hWnd, UINT nMessage, WPARAM wParam,
                                              LPARAM lParam, UINT_PTR, DWORD_PTR nThis)
{
    auto* pThis = Passed<CPropertyList*>(nThis);
    auto* const hFrom = Passed<HWND>(lParam);
    if (nMessage == WM_COMMAND && hFrom && hFrom == pThis->m_hEditor)
        pThis->OnEditor(HIWORD(wParam));
    return ::DefSubclassProc(hWnd, nMessage, wParam, lParam);
}

bool CPropertyList::Translate(const MSG& message)
{
    if (message.message != WM_KEYDOWN) return false;
    const bool bEnter = message.wParam == VK_RETURN;
    if (IsEditing() && (message.hwnd == m_hEditor || ::IsChild(m_hEditor, message.hwnd))) {
        if (!bEnter && message.wParam != VK_ESCAPE) return false;
        EndEdit(bEnter);
        return true;
    }
    if (message.hwnd != Handle() || !bEnter) return false;
    Edit(Selected());
    return true;
}

int CPropertyList::OnNotify(NMHDR* pHeader, LRESULT* pResult)
{
    if (pHeader->hwndFrom != Handle()) return 0;
    *pResult = 0;
    switch (pHeader->code) {
    case NM_CLICK: {
        const auto* pItem = reinterpret_cast<const NMITEMACTIVATE*>(pHeader);
        if (pItem->iItem >= 0 && pItem->iSubItem == 1) Edit(pItem->iItem);
        break;
    }
    case LVN_KEYDOWN:
        OnKey(reinterpret_cast<const NMLVKEYDOWN*>(pHeader)->wVKey);
        break;
    case LVN_BEGINSCROLL:
        EndEdit(true);
        break;
    case NM_CUSTOMDRAW:
        *pResult = OnDraw(reinterpret_cast<NMLVCUSTOMDRAW*>(pHeader));
        break;
    default:
        return 0;
    }
    return 1;
}

void CPropertyList::OnKey(WORD nKey)
{
    const int nSelected = Selected();
    if (nKey == VK_F2 || nKey == VK_SPACE) Edit(nSelected);
}

LRESULT CPropertyList::OnDraw(NMLVCUSTOMDRAW* pDraw)
{
    switch (pDraw->nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
        return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT:
        return CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPOSTPAINT: {
        const int nProperty = static_cast<int>(pDraw->nmcd.dwItemSpec);
        if (nProperty < static_cast<int>(m_properties.size()))
            DrawValue(pDraw->nmcd.hdc, nProperty, ValueRect(nProperty));
        return CDRF_DODEFAULT;
    }
    default:
        return CDRF_DODEFAULT;
    }
}

// What a text does not show: a check box, a colour, and that there is a list. It covers the text.
void CPropertyList::DrawValue(HDC hdc, int nProperty, RECT rc) const
{
    const Property& property = m_properties[static_cast<std::size_t>(nProperty)];
    if (property.kind != Property::Kind::Switch && property.kind != Property::Kind::Color) return;
    const bool bSelected = Selected() == nProperty;
    const bool bFocus = bSelected && ::GetFocus() == Handle();
    const int nFill = bFocus ? COLOR_HIGHLIGHT : bSelected ? COLOR_3DFACE : COLOR_WINDOW;
    ::FillRect(hdc, &rc, ::GetSysColorBrush(nFill));
    const int nSide = ScaledAt(Handle(), BOX);
    const int nTop = (rc.top + rc.bottom - nSide) / 2;
    RECT rcBox{rc.left + ScaledAt(Handle(), PAD), nTop, rc.left + ScaledAt(Handle(), PAD) + nSide,
               nTop + nSide};
    if (property.kind == Property::Kind::Switch) {
        const bool bOn = !property.text.empty() && property.text != L"0";
        ::DrawFrameControl(hdc, &rcBox, DFC_BUTTON,
                           static_cast<UINT>(DFCS_BUTTONCHECK | (bOn ? DFCS_CHECKED : 0)));
        return;
    }
    COLORREF clr = 0;
    if (ParseColor(property.text, &clr)) {
        rcBox.right = rcBox.left + ScaledAt(Handle(), SWATCH);
        HBRUSH hBrush = ::CreateSolidBrush(clr);
        ::FillRect(hdc, &rcBox, hBrush);
        ::DeleteObject(hBrush);
        ::FrameRect(hdc, &rcBox, ::GetSysColorBrush(COLOR_GRAYTEXT));
        rcBox.left = rcBox.right;
    }
    RECT rcText = rc;
    rcText.left = rcBox.left + ScaledAt(Handle(), PAD);
    ::SetBkMode(hdc, TRANSPARENT);
    ::SetTextColor(hdc, ::GetSysColor(bFocus ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    ::DrawTextW(hdc, property.text.c_str(), -1, &rcText,
                DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

} // namespace studio
