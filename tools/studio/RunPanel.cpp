// The panel at the right; see the header. Its signals stand in RunSignals.cpp.
#include "tools/studio/RunPanel.h"

#include "tools/studio/Dpi.h"
#include "tools/studio/Resource.h"
#include "tools/studio/Strings.h"
#include "tools/studio/SystemLook.h"
#include "tools/studio/model/Convert.h"
#include "tools/studio/model/DrawingFile.h"
#include "tools/studio/model/Play.h"
#include "tools/studio/model/RowFilter.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <windowsx.h>

namespace studio {

namespace {

constexpr int GAP = 8; // at 96 dots an inch, as all here
constexpr int BUTTON = 24;
constexpr int COMBO_FRAME = 6; // above and below what a combo box shows
constexpr int FAULT_LINES = 3; // of the message at the bottom
constexpr int ROWS_PART = 50;  // of what is left for the two lists, in percent
constexpr int SHOWN_SPEEDS = 8;
constexpr std::size_t FILTERED_FROM = 20; // rows: so many are found without help

// Above what the system sends for Enter and Escape.
enum Control : UINT {
    ID_PLAY = 11,
    ID_SPEED,
    ID_TURN,
    ID_BLINK,
    ID_KEEP,
    ID_ROWS,
    ID_PROPERTIES,
    ID_MESSAGE,
    ID_FILTER
};

struct ControlRow {
    UINT nId;
    const wchar_t* pszClass;
    DWORD nStyle;
    unsigned nText; // 0: it has none
    int nLeft;
    int nTop;
    int nWidth;
};
constexpr ControlRow g_controls[] = {
    {ID_PLAY, L"BUTTON", BS_PUSHBUTTON, IDS_RUN_PLAY, 0, 0, 88},
    {ID_SPEED, L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL, 0, 96, 0, 72},
    {ID_TURN, L"BUTTON", BS_PUSHBUTTON, IDS_RUN_TURN, 176, 0, 88},
    {ID_KEEP, L"BUTTON", BS_PUSHBUTTON, IDS_RUN_KEEP, 0, BUTTON + GAP, 168},
    {ID_BLINK, L"BUTTON", BS_AUTOCHECKBOX, IDS_RUN_BLINK, 176, BUTTON + GAP, 88}};

constexpr double g_speeds[] = {0.25, 0.5, 1, 2, 4, 8};
constexpr const wchar_t* g_speedTexts[] = {L"0.25 \x00D7", L"0.5 \x00D7", L"1 \x00D7",
                                           L"2 \x00D7",    L"4 \x00D7",   L"8 \x00D7"};
constexpr unsigned g_qualities[] = {IDS_QUALITY_GOOD, IDS_QUALITY_STALE, IDS_QUALITY_BAD};

Property::Kind KindOf(LiveProperty::Kind kind)
{
    switch (kind) {
    case LiveProperty::Kind::Switch:
        return Property::Kind::Switch;
    case LiveProperty::Kind::Color:
        return Property::Kind::Color;
    case LiveProperty::Kind::Choice:
        return Property::Kind::Choice;
    default:
        return Property::Kind::Text;
    }
}

template <std::size_t N>
std::vector<std::wstring> Texts(const unsigned (&ids)[N])
{
    std::vector<std::wstring> texts;
    for (const unsigned nId : ids) texts.push_back(Text(nId));
    return texts;
}

double NumberOf(const std::string& text)
{
    const double fValue = std::strtod(text.c_str(), nullptr);
    return std::isfinite(fValue) ? fValue : 0;
}

} // namespace

bool CRunPanel::Create(HWND hParent, UINT nId)
{
    Looks looks{L"QELStudioRunPanel"};
    looks.hGround = ClassBrush(COLOR_3DFACE);
    looks.nExtra = WS_EX_CONTROLPARENT;
    return Make(looks, hParent, nId) && MakeControls();
}

int CRunPanel::MakeControls()
{
    for (const ControlRow& row : g_controls) {
        auto* const hId = Passed<HMENU>(static_cast<UINT_PTR>(row.nId));
        const std::wstring text = row.nText ? Text(row.nText) : std::wstring();
        if (!::CreateWindowExW(0, row.pszClass, text.c_str(),
                               row.nStyle | WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS, 0,
                               0, 0, 0, Handle(), hId, ::GetModuleHandleW(nullptr), nullptr))
            return 0;
    }
    auto* const hMessage = Passed<HMENU>(static_cast<UINT_PTR>(ID_MESSAGE));
    ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_NOPREFIX | SS_EDITCONTROL, 0, 0,
                      0, 0, Handle(), hMessage, ::GetModuleHandleW(nullptr), nullptr);
    auto* const hFilter = Passed<HMENU>(static_cast<UINT_PTR>(ID_FILTER));
    ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL, 0, 0, 0,
                      0, Handle(), hFilter, ::GetModuleHandleW(nullptr), nullptr);
    ::SendDlgItemMessageW(Handle(), ID_FILTER, EM_SETCUEBANNER, TRUE,
                          Param(Text(IDS_RUN_FILTER).c_str()));
    const HWND hSpeed = ::GetDlgItem(Handle(), ID_SPEED);
    for (const wchar_t* pszSpeed : g_speedTexts) ComboBox_AddString(hSpeed, pszSpeed);
    CRowList::Events events;
    events.select = [this](int) { MakeProperties(); };
    events.slide = [this](int nRow, double fAt) { Slide(nRow, fAt); };
    events.open = [this](int) { m_properties.Edit(0); };
    return m_list.Create(Handle(), ID_ROWS, std::move(events)) &&
           m_properties.Create(
               Handle(), ID_PROPERTIES, IDS_RUN_PROPERTY, IDS_ATTR_VALUE,
               [this](std::size_t nItem, const std::wstring& text) { Change(nItem, text); });
}

void CRunPanel::SetFont(HFONT hFont)
{
    m_hFont = hFont;
    for (const ControlRow& row : g_controls)
        SetWindowFont(::GetDlgItem(Handle(), static_cast<int>(row.nId)), hFont, TRUE);
    m_nLine = LineHeight(Handle(), hFont);
    SetWindowFont(::GetDlgItem(Handle(), ID_MESSAGE), hFont, TRUE);
    SetWindowFont(::GetDlgItem(Handle(), ID_FILTER), hFont, TRUE);
    m_list.SetFont(hFont);
    m_properties.SetFont(hFont);
    Layout();
}

void CRunPanel::Layout()
{
    const RECT rc = Client();
    const int nGap = Scaled(GAP);
    for (const ControlRow& row : g_controls) {
        const int nHeight = row.nId == ID_SPEED ? BUTTON * SHOWN_SPEEDS : BUTTON;
        ::MoveWindow(::GetDlgItem(Handle(), static_cast<int>(row.nId)), nGap + Scaled(row.nLeft),
                     nGap + Scaled(row.nTop), Scaled(row.nWidth), Scaled(nHeight), TRUE);
    }
    // The box itself; what it drops down goes by its font.
    ::SendDlgItemMessageW(Handle(), ID_SPEED, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1),
                          Scaled(BUTTON - COMBO_FRAME));
    const bool bFilter = IsFiltered();
    const HWND hFilter = ::GetDlgItem(Handle(), ID_FILTER);
    ::MoveWindow(hFilter, nGap, Scaled(2 * (BUTTON + GAP) + GAP), rc.right - 2 * nGap,
                 Scaled(BUTTON), TRUE);
    ::ShowWindow(hFilter, bFilter ? SW_SHOW : SW_HIDE);
    const int nTop = Scaled((bFilter ? 3 : 2) * (BUTTON + GAP) + GAP);
    const int nBottom = rc.bottom - FAULT_LINES * m_nLine - 2 * nGap;
    const int nRoom = std::max(nBottom - nTop - nGap, 0);
    const int nRows = nRoom * ROWS_PART / 100;
    const bool bRows = !m_rows.Rows().empty();
    const RECT rcNone{0, 0, 0, 0};
    const RECT rcRows{nGap, nTop, rc.right - nGap, nTop + nRows};
    const RECT rcProperties{nGap, nTop + nRows + nGap, rc.right - nGap, nBottom};
    m_list.Place(bRows ? rcRows : rcNone);
    m_properties.Place(bRows ? rcProperties : rcNone);
    m_properties.FitColumns();
    ::MoveWindow(::GetDlgItem(Handle(), ID_MESSAGE), nGap, nBottom + nGap, rc.right - 2 * nGap,
                 FAULT_LINES * m_nLine, TRUE);
    ::InvalidateRect(Handle(), nullptr, TRUE);
}

void CRunPanel::Enable() const
{
    for (const ControlRow& row : g_controls)
        ::EnableWindow(::GetDlgItem(Handle(), static_cast<int>(row.nId)), m_pPlay != nullptr);
    if (!m_pPlay) return;
    const CSignals& signals = m_pPlay->Signals();
    ::SetWindowTextW(::GetDlgItem(Handle(), ID_PLAY),
                     Text(signals.IsPlaying() ? IDS_RUN_PAUSE : IDS_RUN_PLAY).c_str());
    Button_SetCheck(::GetDlgItem(Handle(), ID_BLINK),
                    m_pPlay->Blinks() ? BST_CHECKED : BST_UNCHECKED);
    const auto* pSpeed = std::find(std::begin(g_speeds), std::end(g_speeds), signals.Speed());
    ComboBox_SetCurSel(::GetDlgItem(Handle(), ID_SPEED),
                       static_cast<int>(pSpeed - std::begin(g_speeds)));
}

void CRunPanel::Show(CDrawingFile* pFile, CPlay* pPlay)
{
    const bool bOther = pFile != m_pFile;
    m_properties.EndEdit(false);
    m_pFile = pFile;
    m_pPlay = pFile && pFile->Engine() ? pPlay : nullptr;
    if (bOther) Fault("");
    Enable();
    MakeRows();
    Layout();
    m_list.Select(m_list.Selected()); // which has room only now
}

void CRunPanel::MakeRows()
{
    m_items.clear(); // they point into the rows
    m_rows = m_pPlay ? CLiveRows(m_pFile->Engine()) : CLiveRows();
    FilterRows();
}

bool CRunPanel::IsFiltered() const
{
    return m_rows.Rows().size() >= FILTERED_FROM;
}

// Those whose name or kind has the words of the filter, in any order.
void CRunPanel::FilterRows()
{
    const std::string selected = m_selected;
    const CRowFilter filter(IsFiltered() ? ToUtf8(m_filter) : "");
    std::vector<CRowList::Row> rows;
    int nSelected = 0;
    m_shown.clear();
    for (std::size_t n = 0; n < m_rows.Rows().size(); ++n) {
        const LiveRow& row = m_rows.Rows()[n];
        if (!filter.Takes(row)) continue;
        if (row.name == selected) nSelected = static_cast<int>(rows.size());
        rows.push_back(RowOf(row));
        m_shown.push_back(n);
    }
    m_list.SetRows(std::move(rows));
    m_list.Select(nSelected);
    MakeProperties();
}

CRowList::Row CRunPanel::RowOf(const LiveRow& row) const
{
    CRowList::Row shown;
    shown.name = FromUtf8(row.name);
    shown.kind = FromUtf8(row.kind);
    if (const std::wstring signal = SignalOf(row); !signal.empty())
        shown.kind += L" \x00B7 " + signal;
    if (!row.value) return shown;
    const std::string& text = TextOf(*row.value, m_pPlay->Values());
    const LiveRange range = RangeOf(row, m_pPlay->Values());
    shown.text = FromUtf8(text);
    shown.bSlider = row.HasSlider();
    shown.fAt = std::clamp((NumberOf(text) - range.fMin) / (range.fMax - range.fMin), 0.0, 1.0);
    shown.bColor =
        row.value->kind == LiveProperty::Kind::Color && ParseColor(shown.text, &shown.clr);
    return shown;
}

const LiveRow* CRunPanel::Current() const
{
    const auto nRow = static_cast<std::size_t>(m_list.Selected());
    return nRow < m_shown.size() ? &RowAt(nRow) : nullptr;
}

void CRunPanel::AddItem(Item item, Property property, std::vector<Property>* pProperties)
{
    m_items.push_back(item);
    property.text = TextOfItem(item);
    pProperties->push_back(std::move(property));
}

void CRunPanel::MakeProperties()
{
    std::vector<Property> properties;
    m_items.clear();
    const LiveRow* pRow = m_pPlay ? Current() : nullptr;
    m_selected = pRow ? pRow->name : "";
    if (pRow && pRow->value) {
        Property value{Text(IDS_RUN_VALUE), KindOf(pRow->value->kind), L""};
        for (const std::string& choice : pRow->value->choices)
            value.choices.push_back(FromUtf8(choice));
        AddItem({Item::What::Value, &*pRow->value}, std::move(value), &properties);
    }
    AddSignal(&properties);
    for (std::size_t n = 0; pRow && n < pRow->properties.size(); ++n) {
        const LiveProperty& each = pRow->properties[n];
        Property property{FromUtf8(each.label), KindOf(each.kind), L""};
        for (const std::string& choice : each.choices) property.choices.push_back(FromUtf8(choice));
        if (each.label == "quality") property.names = Texts(g_qualities);
        AddItem({Item::What::Setting, &each}, std::move(property), &properties);
    }
    m_properties.SetProperties(std::move(properties));
}

std::wstring CRunPanel::TextOfItem(const Item& item) const
{
    return item.pProperty ? FromUtf8(TextOf(*item.pProperty, m_pPlay->Values()))
                          : TextOfSignal(item.what);
}

void CRunPanel::Refresh()
{
    if (!m_pPlay) return;
    for (int n = m_list.FirstShown(); n < m_list.EndShown(); ++n)
        m_list.SetRow(n, RowOf(RowAt(static_cast<std::size_t>(n))));
    for (std::size_t n = 0; n < m_items.size(); ++n)
        m_properties.SetText(n, TextOfItem(m_items[n]));
}

void CRunPanel::Tick(DWORD nPassed)
{
    if (!m_pPlay) return;
    if (m_pPlay->Tick(m_pFile->Engine(), nPassed)) Refresh();
    if (!m_pPlay->SignalFault().empty()) Fault(m_pPlay->SignalFault());
}

void CRunPanel::Fault(const std::string& why)
{
    const std::wstring fault = FromUtf8(why);
    if (fault == m_fault) return;
    m_fault = fault;
    ShowMessage();
}

void CRunPanel::ShowMessage() const
{
    const std::wstring& text = m_fault.empty() ? m_message : m_fault;
    ::SetWindowTextW(::GetDlgItem(Handle(), ID_MESSAGE), text.c_str());
}

void CRunPanel::SetMessage(const std::wstring& text)
{
    if (text == m_message) return;
    m_message = text;
    ShowMessage();
}

void CRunPanel::SetValue(const std::string& name, const std::string& text)
{
    std::string why;
    m_pPlay->Values().Set(m_pFile->Engine(), name, text, &why);
    Fault(why);
    Refresh();
}

void CRunPanel::Slide(int nRow, double fAt)
{
    if (!m_pPlay || nRow < 0) return;
    const LiveRow& row = RowAt(static_cast<std::size_t>(nRow));
    const LiveRange range = RangeOf(row, m_pPlay->Values());
    const bool bWhole = row.value->kind == LiveProperty::Kind::Whole;
    SetValue(row.name, RangeText(range.fMin + (range.fMax - range.fMin) * fAt, range.fMin,
                                 range.fMax, bWhole));
}

void CRunPanel::Change(std::size_t nItem, const std::wstring& text)
{
    if (!m_pPlay || nItem >= m_items.size()) return;
    const Item item = m_items[nItem];
    if (!item.pProperty) return ChangeSignal(item.what, text);
    const bool bCount = item.pProperty->label == "sectors";
    SetValue(item.pProperty->name, ToUtf8(text));
    if (bCount) MakeRows(); // it has other sectors to set
}

void CRunPanel::SetSpeed()
{
    const int nSpeed = ComboBox_GetCurSel(::GetDlgItem(Handle(), ID_SPEED));
    if (nSpeed >= 0) m_pPlay->Signals().SetSpeed(g_speeds[nSpeed]);
}

void CRunPanel::TakeFilter()
{
    const HWND hFilter = ::GetDlgItem(Handle(), ID_FILTER);
    m_filter.resize(static_cast<std::size_t>(::GetWindowTextLengthW(hFilter)));
    ::GetWindowTextW(hFilter, m_filter.data(), static_cast<int>(m_filter.size()) + 1);
    m_properties.EndEdit(false);
    FilterRows();
}

void CRunPanel::FocusFilter() const
{
    const HWND hFilter = ::GetDlgItem(Handle(), ID_FILTER);
    if (::IsWindowVisible(hFilter)) ::SetFocus(hFilter);
    Edit_SetSel(hFilter, 0, -1);
}

void CRunPanel::Keep()
{
    std::string why;
    const std::wstring path = ValuesPath(m_pFile->Path());
    m_pPlay->Values().Save(path, &why);
    Fault(why);
    if (why.empty()) SetMessage(Text(IDS_RUN_KEPT, {path.substr(path.find_last_of(L"\\/") + 1)}));
}

void CRunPanel::OnCommand(UINT nId, UINT nWhat)
{
    if (!m_pPlay) return;
    const bool bClicked = nWhat == BN_CLICKED;
    if (nId == IDOK && ::GetFocus() == m_list.Handle()) m_properties.Edit(0);
    if (nId == IDOK && ::GetFocus() == ::GetDlgItem(Handle(), ID_FILTER))
        ::SetFocus(m_list.Handle());
    if (nId == ID_FILTER && nWhat == EN_CHANGE) TakeFilter();
    if (nId == ID_PLAY && bClicked) TogglePlay();
    if (nId == ID_SPEED && nWhat == CBN_SELCHANGE) SetSpeed();
    if (nId == ID_TURN && bClicked) m_pPlay->Turn(m_pFile->Engine());
    if (nId == ID_BLINK && bClicked) m_pPlay->SetBlink(m_pFile->Engine(), !m_pPlay->Blinks());
    if (nId == ID_KEEP && bClicked) Keep();
}

LRESULT CRunPanel::OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    LRESULT nResult = 0;
    switch (nMessage) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_SIZE:
        if (m_properties.Handle()) Layout();
        return 0;
    case WM_SETFOCUS:
        ::SetFocus(m_list.Handle());
        return 0;
    case WM_COMMAND:
        OnCommand(LOWORD(wParam), HIWORD(wParam));
        return 0;
    case WM_NOTIFY:
        if (m_properties.OnNotify(Passed<NMHDR*>(lParam), &nResult)) return nResult;
        break;
    default:
        break;
    }
    return CWindow::OnMessage(nMessage, wParam, lParam);
}

void CRunPanel::Paint()
{
    PAINTSTRUCT paint{};
    const HDC hdc = ::BeginPaint(Handle(), &paint);
    RECT rc = Client();
    ::InflateRect(&rc, -Scaled(GAP), -Scaled(GAP));
    const HGDIOBJ hPrev = ::SelectObject(hdc, m_hFont);
    ::SetBkMode(hdc, TRANSPARENT);
    ::SetTextColor(hdc, ::GetSysColor(COLOR_GRAYTEXT));
    rc.top += Scaled(2 * (BUTTON + GAP));
    if (m_rows.Rows().empty())
        ::DrawTextW(hdc, Text(IDS_RUN_EMPTY).c_str(), -1, &rc, DT_WORDBREAK | DT_NOPREFIX);
    ::SelectObject(hdc, hPrev);
    ::EndPaint(Handle(), &paint);
}

} // namespace studio
