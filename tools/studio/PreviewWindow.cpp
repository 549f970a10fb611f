// The preview of a printed page; see the header.
#include "tools/studio/PreviewWindow.h"

#include "tools/studio/Dpi.h"
#include "tools/studio/FileDialogs.h"
#include "tools/studio/Resource.h"
#include "tools/studio/Strings.h"
#include "tools/studio/SystemLook.h"
#include "tools/studio/model/Convert.h"

#include <algorithm>
#include <cmath>
#include <windowsx.h>

namespace studio {

namespace {

constexpr int GAP = 8; // at 96 dots an inch, as all here
constexpr int BUTTON = 24;
constexpr int PAGE_GAP = 16; // around the paper
constexpr double LENGTHS = 2540;
constexpr int MILLIMETRE = 100;
constexpr int CLOSE_WIDTH = 96;
constexpr SIZE FIRST_SIZE{880, 640};
constexpr SIZE LEAST_SIZE{880, 320}; // all buttons show

struct ControlRow {
    UINT nId;
    DWORD nStyle;
    unsigned nText;
    int nWidth;
};
constexpr ControlRow g_controls[] = {
    {IDOK, BS_DEFPUSHBUTTON, IDS_PRINT_PRINT, 96},
    {IDW_PREVIEW_SETUP, BS_PUSHBUTTON, IDS_PRINT_SETUP, 120},
    {IDW_PREVIEW_METAFILE, BS_PUSHBUTTON, IDS_PRINT_METAFILE, 160},
    {IDW_PREVIEW_LANDSCAPE, BS_AUTOCHECKBOX, IDS_PRINT_LANDSCAPE, 112},
    {IDW_PREVIEW_FIT, BS_AUTOCHECKBOX, IDS_PRINT_FIT, 160},
    {IDCANCEL, BS_PUSHBUTTON, IDS_PRINT_CLOSE, CLOSE_WIDTH}};

constexpr FileKind g_kinds[] = {{IDS_EXPORT_EMF, L"*.emf"}};

std::wstring NameOf(const std::wstring& path)
{
    return path.substr(path.find_last_of(L"\\/") + 1);
}

} // namespace

CPreviewWindow::CPreviewWindow(const CPagePainter& painter, PageSetup* pSetup,
                               CPrintDialogs* pDialogs, std::wstring path)
    : m_painter(painter), m_pSetup(pSetup), m_pDialogs(pDialogs), m_path(std::move(path))
{
}

CPreviewWindow::~CPreviewWindow()
{
    if (m_hFont) ::DeleteObject(m_hFont);
}

void CPreviewWindow::Show(HWND hOwner)
{
    const std::wstring title = Text(IDS_PRINT_TITLE, {NameOf(m_path)});
    RECT rc{};
    m_hOwner = hOwner;
    ::GetWindowRect(hOwner, &rc);
    Looks looks{L"QELStudioPreview"};
    looks.pszTitle = title.c_str();
    looks.nStyle = WS_POPUP | WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    looks.hGround = ClassBrush(COLOR_3DFACE);
    looks.rc = rc;
    if (!Make(looks, hOwner) || !MakeControls()) return;
    ::SendMessageW(Handle(), WM_SETICON, ICON_SMALL,
                   ::SendMessageW(hOwner, WM_GETICON, ICON_SMALL, 0));
    // As large as it may be, but within what it belongs to.
    const int nWidth =
        std::max<int>(Scaled(FIRST_SIZE.cx), rc.right - rc.left - Scaled(2 * BUTTON));
    const int nHeight =
        std::max<int>(Scaled(FIRST_SIZE.cy), rc.bottom - rc.top - Scaled(2 * BUTTON));
    ::SetWindowPos(Handle(), nullptr, std::max<int>(rc.left + Scaled(BUTTON), 0),
                   std::max<int>(rc.top + Scaled(BUTTON), 0), nWidth, nHeight, SWP_NOZORDER);
    SetFont();
    Renew();
    ::EnableWindow(hOwner, FALSE);
    ::ShowWindow(Handle(), SW_SHOW);
    ::SetFocus(Control(IDOK));
    Wait();
}

// Messages of all windows go on, so that live values are taken and signals play meanwhile.
void CPreviewWindow::Wait()
{
    MSG message{};
    m_bOpen = true;
    while (m_bOpen) {
        const BOOL bGot = ::GetMessageW(&message, nullptr, 0, 0);
        if (bGot <= 0) { // the program ends
            ::PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        const bool bKey =
            message.message == WM_KEYDOWN && message.wParam == 'P' && ::GetKeyState(VK_CONTROL) < 0;
        if (bKey) ::PostMessageW(Handle(), WM_COMMAND, IDOK, 0);
        if (bKey || ::IsDialogMessageW(Handle(), &message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

int CPreviewWindow::MakeControls()
{
    for (const ControlRow& row : g_controls)
        if (!::CreateWindowExW(0, L"BUTTON", Text(row.nText).c_str(),
                               row.nStyle | WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 0, 0,
                               Handle(), Passed<HMENU>(static_cast<UINT_PTR>(row.nId)),
                               ::GetModuleHandleW(nullptr), nullptr))
            return 0;
    return ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_NOPREFIX, 0, 0, 0, 0,
                             Handle(), Passed<HMENU>(static_cast<UINT_PTR>(IDW_PREVIEW_INFO)),
                             ::GetModuleHandleW(nullptr), nullptr) != nullptr;
}

HWND CPreviewWindow::Control(UINT nId) const
{
    return ::GetDlgItem(Handle(), static_cast<int>(nId));
}

void CPreviewWindow::SetFont()
{
    HFONT hOld = m_hFont;
    m_hFont = MakeMessageFont(DpiOf(Handle()));
    for (const ControlRow& row : g_controls) SetWindowFont(Control(row.nId), m_hFont, TRUE);
    SetWindowFont(Control(IDW_PREVIEW_INFO), m_hFont, TRUE);
    if (hOld) ::DeleteObject(hOld);
    Layout();
}

void CPreviewWindow::Layout()
{
    const int nGap = Scaled(GAP);
    const RECT rc = Client();
    int nLeft = nGap;
    for (const ControlRow& row : g_controls) {
        ::MoveWindow(Control(row.nId), nLeft, nGap, Scaled(row.nWidth), Scaled(BUTTON), TRUE);
        nLeft += Scaled(row.nWidth) + nGap;
        if (row.nId == IDW_PREVIEW_FIT) // what closes it stands at the right
            nLeft = std::max(nLeft, static_cast<int>(rc.right) - Scaled(CLOSE_WIDTH) - nGap);
    }
    const int nLine = LineHeight(Handle(), m_hFont);
    ::MoveWindow(Control(IDW_PREVIEW_INFO), nGap, rc.bottom - nGap - nLine, rc.right - 2 * nGap,
                 nLine, TRUE);
    m_bStale = true;
    ::InvalidateRect(Handle(), nullptr, TRUE);
}

RECT CPreviewWindow::PageArea() const
{
    const RECT rc = Client();
    const int nTop = Scaled(BUTTON + 2 * GAP);
    const int nBottom = rc.bottom - LineHeight(Handle(), m_hFont) - Scaled(2 * GAP);
    return {0, nTop, rc.right, std::max(nTop, nBottom)};
}

// In the pixels of the area.
PageDevice CPreviewWindow::Device() const
{
    const RECT rc = PageArea();
    const SIZE room{rc.right - rc.left - Scaled(2 * PAGE_GAP),
                    rc.bottom - rc.top - Scaled(2 * PAGE_GAP)};
    const double fWidth = m_pSetup->paper.cx / LENGTHS;
    const double fHeight = m_pSetup->paper.cy / LENGTHS;
    PageDevice device;
    device.fDotsX = std::max(std::min(room.cx / fWidth, room.cy / fHeight), 1.0);
    device.fDotsY = device.fDotsX;
    device.ptPaper = {(rc.right - rc.left - std::lround(fWidth * device.fDotsX)) / 2,
                      (rc.bottom - rc.top - std::lround(fHeight * device.fDotsY)) / 2};
    return device;
}

LRESULT CPreviewWindow::OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    switch (nMessage) {
    case WM_COMMAND:
        if (HIWORD(wParam) <= 1) OnCommand(LOWORD(wParam));
        return 0;
    case WM_PAINT:
        Paint();
        return 0;
    case WM_SIZE:
        if (m_hFont) Layout();
        return 0;
    case WM_DPICHANGED:
        OnDpi(*Passed<const RECT*>(lParam));
        return 0;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
        m_bStale = true;
        ::InvalidateRect(Handle(), nullptr, TRUE);
        return 0;
    case WM_GETMINMAXINFO:
        Passed<MINMAXINFO*>(lParam)->ptMinTrackSize = {Scaled(LEAST_SIZE.cx),
                                                       Scaled(LEAST_SIZE.cy)};
        return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE)
            m_hFocus = ::GetFocus();
        else if (m_hFocus)
            ::SetFocus(m_hFocus);
        return 0;
    case WM_CLOSE:
        OnCommand(IDCANCEL);
        return 0;
    default:
        return CWindow::OnMessage(nMessage, wParam, lParam);
    }
}

void CPreviewWindow::OnDpi(const RECT& rc)
{
    ::SetWindowPos(Handle(), nullptr, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top,
                   SWP_NOZORDER | SWP_NOACTIVATE);
    SetFont();
}

void CPreviewWindow::OnCommand(UINT nId)
{
    switch (nId) {
    case IDOK:
        m_pDialogs->Print(Handle(), m_painter, m_pSetup, NameOf(m_path));
        return Renew();
    case IDW_PREVIEW_SETUP:
        m_pDialogs->AskPage(Handle(), m_pSetup);
        return Renew();
    case IDW_PREVIEW_METAFILE:
        return PrintMetafile();
    case IDW_PREVIEW_LANDSCAPE:
        TurnPaper(m_pSetup, Button_GetCheck(Control(nId)) == BST_CHECKED);
        m_pDialogs->TakeOrientation(*m_pSetup);
        return Renew();
    case IDW_PREVIEW_FIT:
        m_pSetup->bFit = Button_GetCheck(Control(nId)) == BST_CHECKED;
        return Renew();
    case IDCANCEL: // the owner is active again before this is gone, else another program's is
        m_bOpen = false;
        ::EnableWindow(m_hOwner, TRUE);
        ::DestroyWindow(Handle());
        return;
    default:
        return;
    }
}

void CPreviewWindow::Renew()
{
    Button_SetCheck(Control(IDW_PREVIEW_LANDSCAPE), IsLandscape(*m_pSetup));
    Button_SetCheck(Control(IDW_PREVIEW_FIT), m_pSetup->bFit);
    m_bStale = true;
    ShowInfo();
    const RECT rc = PageArea();
    ::InvalidateRect(Handle(), &rc, FALSE);
}

void CPreviewWindow::ShowInfo() const
{
    const PrintPage page = LayOut(*m_pSetup, m_painter.RefSize(), PageDevice());
    const std::wstring printer = m_pDialogs->Printer();
    const auto millimetres = [](LONG n) {
        return std::to_wstring((n + MILLIMETRE / 2) / MILLIMETRE);
    };
    std::wstring text =
        Text(IDS_PRINT_INFO,
             {printer.empty() ? Text(IDS_PRINT_NONE) : printer, millimetres(m_pSetup->paper.cx),
              millimetres(m_pSetup->paper.cy), std::to_wstring(std::lround(page.fZoom * 100))});
    if (page.IsCut()) text += Text(IDS_PRINT_CUT);
    ::SetWindowTextW(Control(IDW_PREVIEW_INFO), text.c_str());
}

void CPreviewWindow::PrintMetafile()
{
    const std::wstring path =
        AskToSave(Handle(), g_kinds, m_path.substr(0, m_path.rfind(L'.')) + L".emf", L"emf");
    std::string why;
    if (!path.empty() && !m_painter.WriteMetafile(path, *m_pSetup, &why))
        TellTrouble(Handle(), FromUtf8(why));
}

void CPreviewWindow::Paint()
{
    PAINTSTRUCT paint{};
    const HDC hdc = ::BeginPaint(Handle(), &paint);
    const RECT rc = PageArea();
    const SIZE size{rc.right - rc.left, rc.bottom - rc.top};
    if (m_frame.SetSize(size)) {
        if (m_bStale) PaintPage(m_frame.Dc());
        m_bStale = false;
        ::GdiFlush();
        ::BitBlt(hdc, rc.left, rc.top, size.cx, size.cy, m_frame.Dc(), 0, 0, SRCCOPY);
    }
    ::EndPaint(Handle(), &paint);
}

void CPreviewWindow::PaintPage(HDC hdc)
{
    const SIZE size = m_frame.Size();
    const RECT rc{0, 0, size.cx, size.cy};
    const PageDevice device = Device();
    ::FillRect(hdc, &rc, ::GetSysColorBrush(COLOR_APPWORKSPACE));
    PaintPaper(hdc, device);
    if (!m_painter.Paint(hdc, *m_pSetup, device)) ::OutputDebugStringW(L"QEL Studio: no page\n");
}

// White in any colours of the system, as what it is printed on is.
void CPreviewWindow::PaintPaper(HDC hdc, const PageDevice& device)
{
    RECT rc = LayOut(*m_pSetup, m_painter.RefSize(), device).rcPaper;
    ::FillRect(hdc, &rc, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    ::InflateRect(&rc, 1, 1);
    ::FrameRect(hdc, &rc, ::GetSysColorBrush(COLOR_WINDOWFRAME));
}

} // namespace studio
