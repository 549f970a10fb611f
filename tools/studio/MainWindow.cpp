// The main window; see the header. Its commands stand in MainCommands.cpp.
#include "tools/studio/MainWindow.h"

#include "tools/studio/Dpi.h"
#include "tools/studio/Icons.h"
#include "tools/studio/Resource.h"
#include "tools/studio/Strings.h"
#include "tools/studio/SystemLook.h"
#include "tools/studio/model/Convert.h"

#include <algorithm>
#include <cmath>
#include <cwctype>

namespace studio {

namespace {

constexpr UINT_PTR TIMER = 1;
constexpr UINT TIMER_MS = 33;       // thirty updates a second
constexpr ULONGLONG WATCH_MS = 150; // two looks see a changed file well within half a second
constexpr DWORD LONGEST_STEP = 500; // of the time of a drawing: the machine may have slept
constexpr SIZE LEAST_SIZE{560, 400};
constexpr SIZE FIRST_SIZE{1200, 760};

// A place that is on no monitor any more would hide the window.
bool IsOnScreen(const Settings& settings)
{
    const RECT rc{settings.nX, settings.nY, settings.nX + settings.nWidth,
                  settings.nY + settings.nHeight};
    return settings.nWidth >= 200 && settings.nHeight >= 150 &&
           ::MonitorFromRect(&rc, MONITOR_DEFAULTTONULL) != nullptr;
}

BOOL CALLBACK TellColors(HWND hWnd, LPARAM)
{
    ::SendMessageW(hWnd, WM_SYSCOLORCHANGE, 0, 0);
    ::InvalidateRect(hWnd, nullptr, TRUE);
    return TRUE;
}

std::wstring FaultOf(const CDrawingFile& file)
{
    const OpenFault& fault = file.Fault();
    const DWORD nKind = ::GetFileAttributesW(file.Path().c_str());
    if (nKind != INVALID_FILE_ATTRIBUTES && (nKind & FILE_ATTRIBUTE_DIRECTORY))
        return Text(IDS_IS_FOLDER, {file.Name()}); // of which the system says that it is denied
    const std::wstring text =
        fault.nLine ? Text(IDS_CANNOT_OPEN_AT, {file.Name(), std::to_wstring(fault.nLine),
                                                std::to_wstring(fault.nColumn), fault.sentence})
                    : Text(IDS_CANNOT_OPEN, {file.Name(), fault.sentence});
    return file.Engine() ? text + Text(IDS_LAST_GOOD) : text;
}

// Whether a key is one of those that an editor of texts has a meaning for, and goes to one.
bool IsForEditor(const MSG& message)
{
    constexpr std::size_t SIZE_OF_NAME = 8;
    wchar_t szClass[SIZE_OF_NAME] = L"";
    if (message.message != WM_KEYDOWN || ::GetKeyState(VK_CONTROL) >= 0) return false;
    if (message.wParam != 'C' && message.wParam != 'X' && message.wParam != 'V') return false;
    ::GetClassNameW(message.hwnd, szClass, SIZE_OF_NAME);
    return ::lstrcmpiW(szClass, L"Edit") == 0;
}

} // namespace

CMainWindow::CMainWindow(Settings settings)
    : m_settings(std::move(settings)), m_panes(&m_settings),
      m_hKeys(::LoadAcceleratorsW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_MAIN)))
{
}

int CMainWindow::Create(int nShow)
{
    Looks looks{L"QELStudioMain"};
    const std::wstring title = Text(IDS_TITLE);
    looks.pszTitle = title.c_str();
    looks.nStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    looks.nExtra = WS_EX_ACCEPTFILES;
    looks.hGround = ClassBrush(COLOR_3DFACE);
    looks.rc = {CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT + FIRST_SIZE.cx,
                CW_USEDEFAULT + FIRST_SIZE.cy};
    const bool bKnown = IsOnScreen(m_settings);
    if (bKnown)
        looks.rc = {m_settings.nX, m_settings.nY, m_settings.nX + m_settings.nWidth,
                    m_settings.nY + m_settings.nHeight};
    if (!Make(looks, nullptr) || !MakePanes()) return 0;
    ::SetMenu(Handle(), ::LoadMenuW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_MAIN)));
    if (!bKnown)
        ::SetWindowPos(Handle(), nullptr, 0, 0, Scaled(FIRST_SIZE.cx), Scaled(FIRST_SIZE.cy),
                       SWP_NOMOVE | SWP_NOZORDER);
    SetIcons();
    ShowCurrent();
    ::ShowWindow(Handle(), m_settings.bMaximized ? SW_SHOWMAXIMIZED : nShow);
    ::SetTimer(Handle(), TIMER, TIMER_MS, nullptr);
    m_nTick = ::GetTickCount64();
    return 1;
}

int CMainWindow::MakePanes()
{
    CPanes::Events events;
    events.canvas.select = [this](HQELELEM hElem) { Select(hElem); };
    events.canvas.pointer = [this] { ShowStatus(); };
    events.canvas.view = [this] { ShowView(); };
    events.treeSelect = [this](HQELELEM hElem) {
        Select(hElem);
        m_panes.canvas.BringIntoView(hElem);
    };
    events.finding = [this](std::size_t n) { SelectFinding(n); };
    if (!m_panes.Create(Handle(), std::move(events))) return 0;
    m_panes.canvas.SetHint(Text(IDS_EMPTY_HINT));
    m_panes.canvas.SetSmooth(m_settings.bSmooth);
    m_panes.canvas.SetUpdates(m_settings.bUpdates);
    m_panes.canvas.SetGround(m_settings.ground);
    return 1;
}

void CMainWindow::SetIcons()
{
    constexpr int SIDES[] = {16, 32};
    for (int n = 0; n < 2; ++n) {
        HICON hNew = MakeIcon(L"ICON_STUDIO", Scaled(SIDES[n]));
        ::SendMessageW(Handle(), WM_SETICON, static_cast<WPARAM>(n ? ICON_BIG : ICON_SMALL),
                       reinterpret_cast<LPARAM>(hNew));
        if (m_hIcons[n]) ::DestroyIcon(m_hIcons[n]);
        m_hIcons[n] = hNew;
    }
}

bool CMainWindow::Translate(MSG* pMessage)
{
    if (pMessage->message == WM_MOUSEWHEEL) { // for the pane that the pointer is over
        const HWND hUnder = ::WindowFromPoint(PointOf(pMessage->lParam));
        if (hUnder && (hUnder == Handle() || ::IsChild(Handle(), hUnder))) pMessage->hwnd = hUnder;
    }
    if (m_panes.run.Translate(*pMessage)) return true;
    const bool bOfSplitter = m_panes.IsResizing() && pMessage->message == WM_KEYDOWN &&
                             (pMessage->wParam == VK_ESCAPE || pMessage->wParam == VK_UP);
    if (!bOfSplitter && !IsForEditor(*pMessage) &&
        ::TranslateAcceleratorW(Handle(), m_hKeys, pMessage))
        return true;
    return ::IsChild(m_panes.run.Handle(), pMessage->hwnd) &&
           ::IsDialogMessageW(m_panes.run.Handle(), pMessage);
}

LRESULT CMainWindow::OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    switch (nMessage) {
    case WM_COMMAND:
        if (HIWORD(wParam) <= 1) OnCommand(LOWORD(wParam)); // of the menu, a key or the toolbar
        return 0;
    case WM_NOTIFY:
        OnNotify(Passed<NMHDR*>(lParam));
        return 0;
    case WM_TIMER:
        OnTimer();
        return 0;
    case WM_DROPFILES:
        OnDrop(Passed<HDROP>(wParam));
        return 0;
    case WM_INITMENUPOPUP:
        OnMenu(Passed<HMENU>(wParam));
        return 0;
    case WM_DESTROY:
        OnDestroy();
        return 0;
    default:
        break;
    }
    if (OnSystem(nMessage, wParam, lParam)) return 0;
    return CWindow::OnMessage(nMessage, wParam, lParam);
}

bool CMainWindow::OnSystem(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    switch (nMessage) {
    case WM_SIZE:
        if (wParam != SIZE_MINIMIZED && m_panes.status.Handle()) m_panes.Layout();
        return true;
    case WM_DPICHANGED:
        OnDpi(*Passed<const RECT*>(lParam));
        return true;
    case WM_GETMINMAXINFO:
        Passed<MINMAXINFO*>(lParam)->ptMinTrackSize = {Scaled(LEAST_SIZE.cx),
                                                       Scaled(LEAST_SIZE.cy)};
        return true;
    case WM_PARENTNOTIFY:
        if (LOWORD(wParam) == WM_MBUTTONDOWN) OnMiddleButton(PointOf(lParam));
        return true;
    case WM_SYSCOLORCHANGE: // the system tells the main window alone
        ::EnumChildWindows(Handle(), TellColors, 0);
        m_panes.ChangeLook();
        return true;
    case WM_THEMECHANGED:
    case WM_SETTINGCHANGE: // also of fonts
        m_panes.ChangeLook();
        return false;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE) m_hFocus = ::GetFocus();
        return false;
    case WM_SETFOCUS:
        ::SetFocus(m_hFocus && ::IsChild(Handle(), m_hFocus) ? m_hFocus : m_panes.canvas.Handle());
        return true;
    default:
        return false;
    }
}

void CMainWindow::OnNotify(NMHDR* pHeader)
{
    m_panes.OnNotify(pHeader);
    if (pHeader->hwndFrom != m_panes.tabs.Handle()) return;
    if (pHeader->code == TCN_SELCHANGE) ChooseTab(m_panes.tabs.Chosen());
}

void CMainWindow::OnTimer()
{
    const ULONGLONG nNow = ::GetTickCount64();
    const auto nPassed = static_cast<DWORD>(std::min<ULONGLONG>(nNow - m_nTick, LONGEST_STEP));
    m_nTick = nNow;
    if (nNow - m_nWatched >= WATCH_MS) {
        m_nWatched = nNow;
        Watch();
    }
    TakeLines();
    for (const auto& pTab : m_tabs)
        if (pTab.get() != Current()) pTab->nAway += nPassed;
    m_panes.run.Tick(nPassed);
    if (Current() && Current()->file.Engine()) QELAdvance(Current()->file.Engine(), nPassed);
    m_panes.canvas.Refresh(nPassed);
}

// On a tab it closes the drawing.
void CMainWindow::OnMiddleButton(POINT pt)
{
    ::ClientToScreen(Handle(), &pt);
    if (::WindowFromPoint(pt) == m_panes.tabs.Handle()) Close(m_panes.tabs.At(pt));
}

void CMainWindow::OnDrop(HDROP hDrop)
{
    std::vector<std::wstring> paths;
    const UINT nFiles = ::DragQueryFileW(hDrop, 0xFFFFFFFF, nullptr, 0);
    for (UINT n = 0; n < nFiles; ++n) {
        std::wstring path(::DragQueryFileW(hDrop, n, nullptr, 0), L'\0');
        ::DragQueryFileW(hDrop, n, path.data(), static_cast<UINT>(path.size()) + 1);
        paths.push_back(std::move(path));
    }
    ::DragFinish(hDrop);
    Open(paths);
}

void CMainWindow::OnDpi(const RECT& rc)
{
    ::SetWindowPos(Handle(), nullptr, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top,
                   SWP_NOZORDER | SWP_NOACTIVATE);
    SetIcons();
    m_panes.ChangeLook();
}

void CMainWindow::OnDestroy()
{
    ::KillTimer(Handle(), TIMER);
    WINDOWPLACEMENT place{};
    place.length = sizeof place;
    ::GetWindowPlacement(Handle(), &place);
    const RECT& rc = place.rcNormalPosition;
    m_settings.nX = rc.left;
    m_settings.nY = rc.top;
    m_settings.nWidth = rc.right - rc.left;
    m_settings.nHeight = rc.bottom - rc.top;
    m_settings.bMaximized = place.showCmd == SW_SHOWMAXIMIZED;
    m_panes.canvas.Show(nullptr, nullptr);
    m_panes.tree.Show(nullptr); // it tells of selections while it is taken apart
    m_panes.run.Show(nullptr, nullptr);
    m_tabs.clear();
    m_nCurrent = -1;
    for (HICON hIcon : m_hIcons)
        if (hIcon) ::DestroyIcon(hIcon);
    ::PostQuitMessage(0);
}

CMainWindow::Tab::Tab(const std::wstring& path) : file(path)
{
    file.SetAfterOpen([this](HQELENGINE hEngine) { play.Opened(hEngine); });
}

CMainWindow::Tab* CMainWindow::Current() const
{
    return m_nCurrent >= 0 ? m_tabs[static_cast<std::size_t>(m_nCurrent)].get() : nullptr;
}

int CMainWindow::FindTab(const std::wstring& path) const
{
    const auto at = std::find_if(m_tabs.begin(), m_tabs.end(), [&path](const auto& pTab) {
        return ::CompareStringOrdinal(pTab->file.Path().c_str(), -1, path.c_str(), -1, TRUE) ==
               CSTR_EQUAL;
    });
    return at == m_tabs.end() ? -1 : static_cast<int>(at - m_tabs.begin());
}

void CMainWindow::Open(const std::vector<std::wstring>& paths)
{
    for (const std::wstring& path : paths) OpenOne(path);
    ShowCurrent();
}

void CMainWindow::OpenOne(const std::wstring& path)
{
    auto pTab = std::make_unique<Tab>(path);
    const int nOpen = FindTab(pTab->file.Path());
    if (nOpen >= 0) {
        m_nCurrent = nOpen;
        return;
    }
    std::string why; // told below the rows of the run panel
    if (!pTab->play.LoadBeside(pTab->file.Path(), &why)) m_panes.run.SetMessage(FromUtf8(why));
    if (pTab->file.Load()) NoteRecent(&m_settings, pTab->file.Path());
    m_panes.tabs.Add(pTab->file.Name());
    m_tabs.push_back(std::move(pTab));
    m_nCurrent = static_cast<int>(m_tabs.size()) - 1;
}

void CMainWindow::Close(int nTab)
{
    if (nTab < 0 || nTab >= static_cast<int>(m_tabs.size())) return;
    m_panes.canvas.Show(nullptr, nullptr);
    m_panes.run.Show(nullptr, nullptr);
    m_panes.tree.Show(nullptr);
    m_panes.tabs.Remove(nTab);
    m_tabs.erase(m_tabs.begin() + nTab);
    if (m_nCurrent > nTab || m_nCurrent >= static_cast<int>(m_tabs.size())) --m_nCurrent;
    ShowCurrent();
}

void CMainWindow::ChooseTab(int nTab)
{
    m_nCurrent = nTab;
    ShowCurrent();
}

void CMainWindow::StepTab(int nStep)
{
    const int nTabs = static_cast<int>(m_tabs.size());
    if (nTabs > 1) ChooseTab((m_nCurrent + nStep + nTabs) % nTabs);
}

void CMainWindow::Watch()
{
    for (const auto& pTab : m_tabs)
        if (pTab->file.HasChanged()) Reload(pTab.get());
}

void CMainWindow::TakeLiveData(const CommandLine& line)
{
    if (!line.bStandardInput && !line.nPort) return;
    std::string why;
    m_pSource = std::make_unique<CDataSource>();
    if (line.bStandardInput) m_pSource->Read(::GetStdHandle(STD_INPUT_HANDLE));
    if (line.nPort && !m_pSource->Listen(ToUtf8(line.host), line.nPort, &why))
        m_lines.NoteBad(std::move(why));
    ShowLive();
}

void CMainWindow::TakeLines()
{
    if (!m_pSource) return;
    std::vector<DataTarget> targets;
    for (const auto& pTab : m_tabs)
        if (pTab->file.Engine()) targets.push_back({pTab->file.Engine(), &pTab->play.Values()});
    const std::vector<SourceLine> lines = m_pSource->Take();
    if (lines.empty()) return;
    for (const SourceLine& line : lines) {
        if (line.fault.empty())
            m_lines.Take(targets, line.text);
        else
            m_lines.NoteBad(line.fault);
    }
    m_panes.run.Refresh();
    ShowLive();
}

void CMainWindow::ShowLive()
{
    const std::wstring good = std::to_wstring(m_lines.Good());
    if (m_lines.Bad())
        m_panes.run.SetMessage(Text(
            IDS_LIVE_BAD, {good, std::to_wstring(m_lines.Bad()), FromUtf8(m_lines.LastFault())}));
    else if (m_lines.Good() || !m_pSource->Port())
        m_panes.run.SetMessage(Text(IDS_LIVE_COUNT, {good}));
    else
        m_panes.run.SetMessage(Text(IDS_LIVE_LISTENS, {std::to_wstring(m_pSource->Port())}));
}

// The panes let go of the old engine before it goes.
void CMainWindow::Reload(Tab* pTab)
{
    const bool bShown = pTab == Current();
    if (bShown) {
        m_panes.canvas.Show(nullptr, nullptr);
        m_panes.tree.Show(nullptr);
        m_panes.run.Show(nullptr, nullptr);
    }
    pTab->file.Load();
    if (bShown) ShowCurrent();
}

// Signals that play go on in drawings that are not shown, without being drawn.
void CMainWindow::CatchUp()
{
    Tab* pTab = Current();
    if (!pTab) return;
    if (pTab->nAway && pTab->file.Engine()) {
        pTab->play.Tick(pTab->file.Engine(), pTab->nAway);
        QELAdvance(pTab->file.Engine(), pTab->nAway);
    }
    pTab->nAway = 0;
}

void CMainWindow::ShowCurrent()
{
    Tab* pTab = Current();
    CatchUp();
    const CDrawingFile* pFile = pTab ? &pTab->file : nullptr;
    const std::wstring title = Text(IDS_TITLE);
    ::SetWindowTextW(Handle(),
                     pFile ? (pFile->Name() + L" \x2013 " + title).c_str() : title.c_str());
    m_panes.tabs.Choose(m_nCurrent);
    m_panes.tree.Show(pFile);
    m_panes.findings.Show(pFile ? pFile->Findings() : std::vector<SourceFinding>());
    ShowFault();
    m_panes.Layout();
    m_panes.run.Show(pTab ? &pTab->file : nullptr, pTab ? &pTab->play : nullptr);
    m_panes.canvas.Show(pFile ? pFile->Engine() : nullptr, pTab ? &pTab->view : nullptr);
    m_panes.canvas.SetHint(pTab ? std::wstring() : Text(IDS_EMPTY_HINT));
    RecallSelection();
    ShowView();
    UpdateCommands();
}

void CMainWindow::ShowFault()
{
    const Tab* pTab = Current();
    const bool bFault = pTab && pTab->file.Fault().nCode != QEL_ERROR_NONE;
    m_panes.message.SetText(bFault ? FaultOf(pTab->file) : std::wstring());
}

// By its place if an element of the same identifier is there, else by its identifier.
void CMainWindow::RecallSelection()
{
    Tab* pTab = Current();
    HQELELEM hElem = nullptr;
    if (pTab && pTab->file.Engine() && !pTab->selection.empty()) {
        HQELENGINE hEngine = pTab->file.Engine();
        hElem = pTab->file.ElementAt(pTab->selection);
        const char* pszId = hElem ? QELGetElemId(hEngine, hElem) : nullptr;
        if ((!pszId || pTab->selectionId != pszId) && !pTab->selectionId.empty())
            hElem = QELFindElem(hEngine, pTab->selectionId.c_str());
    }
    m_hSelected = nullptr;
    Select(hElem);
}

void CMainWindow::Select(HQELELEM hElem)
{
    if (m_bSelecting) return;
    m_bSelecting = true;
    Tab* pTab = Current();
    m_hSelected = hElem;
    if (pTab && pTab->file.Engine()) {
        const char* pszId = hElem ? QELGetElemId(pTab->file.Engine(), hElem) : nullptr;
        pTab->selection = hElem ? pTab->file.PathOf(hElem) : std::vector<int>();
        pTab->selectionId = pszId ? pszId : "";
    }
    m_panes.tree.Select(hElem);
    m_panes.canvas.Select(hElem);
    m_panes.attributes.Show(hElem && pTab ? pTab->file.SourceOf(hElem) : nullptr);
    m_bSelecting = false;
    ShowStatus();
}

void CMainWindow::SelectFinding(std::size_t nFinding)
{
    const Tab* pTab = Current();
    if (!pTab || nFinding >= pTab->file.Findings().size()) return;
    HQELELEM hElem = pTab->file.ElementOf(pTab->file.Findings()[nFinding]);
    if (!hElem) return;
    Select(hElem);
    m_panes.canvas.BringIntoView(hElem);
}

std::wstring CMainWindow::Describe(HQELELEM hElem) const
{
    const CDrawingFile& file = Current()->file;
    std::wstring text = KindName(QELGetElemType(file.Engine(), hElem));
    const SourceElement* pSource = file.SourceOf(hElem);
    if (!pSource) return text;
    for (const SourceAttr& attr : pSource->attrs)
        if (attr.name == L"id") text += L"  " + attr.value;
    return text + L"  (" + Text(IDS_ATTR_LINE) + L" " + std::to_wstring(pSource->nLine) + L")";
}

void CMainWindow::ShowStatus()
{
    HQELELEM hHovered = m_panes.canvas.Hovered();
    HQELELEM hShown = hHovered ? hHovered : m_hSelected;
    POINT pt{};
    const bool bPointer = m_panes.canvas.HasPointer(&pt);
    m_panes.status.SetText(CStatusBar::Element,
                           Current() && hShown ? Describe(hShown) : Text(IDS_STATUS_READY));
    m_panes.status.SetText(
        CStatusBar::Pointer,
        bPointer ? Text(IDS_STATUS_POINTER, {std::to_wstring(pt.x), std::to_wstring(pt.y)})
                 : std::wstring());
}

void CMainWindow::ShowView()
{
    const Tab* pTab = Current();
    std::wstring size;
    std::wstring zoom;
    std::wstring findings;
    SIZE ref{};
    if (pTab && pTab->file.Engine() && QELGetRefSize(pTab->file.Engine(), &ref)) {
        size = Text(IDS_STATUS_SIZE, {std::to_wstring(ref.cx), std::to_wstring(ref.cy)});
        zoom = Text(IDS_STATUS_ZOOM, {std::to_wstring(std::lround(pTab->view.Zoom() * 100))});
    }
    if (pTab) {
        const std::size_t nFound = pTab->file.Findings().size();
        findings = nFound > 1 ? Text(IDS_STATUS_FINDINGS, {std::to_wstring(nFound)})
                              : Text(nFound ? IDS_STATUS_ONE_FINDING : IDS_STATUS_CLEAN);
    }
    m_panes.status.SetText(CStatusBar::Size, size);
    m_panes.status.SetText(CStatusBar::Zoom, zoom);
    m_panes.status.SetText(CStatusBar::Findings, findings);
    ShowStatus();
    UpdateCommands();
}

} // namespace studio
