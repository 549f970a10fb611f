// The commands of the main window; see MainWindow.h.
#include "tools/studio/Export.h"
#include "tools/studio/FileDialogs.h"
#include "tools/studio/MainWindow.h"
#include "tools/studio/Resource.h"
#include "tools/studio/Strings.h"
#include "tools/studio/model/Convert.h"

#include <commdlg.h>

namespace studio {

namespace {

constexpr double KEY_ZOOM = 1.25;
constexpr std::size_t NAMES_SIZE = 32768; // of the names that the dialog gives back

constexpr UINT g_buttons[] = {IDM_RELOAD,        IDM_FIT,         IDM_FILL,         IDM_ACTUAL,
                              IDM_ZOOM_OUT,      IDM_ZOOM_IN,     IDM_SMOOTH,       IDM_UPDATES,
                              IDM_GROUND_LIGHT,  IDM_GROUND_DARK, IDM_GROUND_CHESS, IDM_SHOW_TREE,
                              IDM_SHOW_FINDINGS, IDM_SHOW_RUN};

// One name, or a folder and the names in it, each ended by a zero and all by another.
std::vector<std::wstring> NamesOf(const wchar_t* pszNames)
{
    std::vector<std::wstring> names;
    for (const wchar_t* p = pszNames; *p; p += names.back().size() + 1) names.emplace_back(p);
    if (names.size() < 2) return names;
    const std::wstring folder = names[0] + (names[0].ends_with(L'\\') ? L"" : L"\\");
    names.erase(names.begin());
    for (std::wstring& name : names) name.insert(0, folder);
    return names;
}

std::wstring VersionText(DWORD nVersion)
{
    return std::to_wstring(nVersion >> 16) + L"." + std::to_wstring(nVersion >> 8 & 0xFF) + L"." +
           std::to_wstring(nVersion & 0xFF);
}

} // namespace

void CMainWindow::OnCommand(UINT nCommand)
{
    if (!IsEnabled(nCommand)) return; // a key may ask for what there is nothing for
    if (OnFileCommand(nCommand) || OnViewCommand(nCommand) || OnPaneCommand(nCommand) ||
        OnSelectCommand(nCommand) || OnRunCommand(nCommand))
        UpdateCommands();
}

bool CMainWindow::OnFileCommand(UINT nCommand)
{
    if (nCommand >= IDM_RECENT_FIRST && nCommand <= IDM_RECENT_LAST) {
        const std::wstring path = m_settings.recent[nCommand - IDM_RECENT_FIRST];
        Open({path});
        return true;
    }
    switch (nCommand) {
    case IDM_OPEN:
        AskForFiles();
        return true;
    case IDM_RELOAD:
        Reload(Current());
        return true;
    case IDM_CLOSE:
        Close(m_nCurrent);
        return true;
    case IDM_EXPORT:
        ExportPicture(Handle(), Current()->file.Engine(), Current()->play, Current()->file.Path());
        return true;
    case IDM_PRINT:
        Print();
        return true;
    case IDM_COPY:
    case IDM_COPY_META:
        Copy(nCommand == IDM_COPY_META);
        return true;
    case IDM_EXIT:
        ::SendMessageW(Handle(), WM_CLOSE, 0, 0);
        return false; // the window is gone
    case IDM_ABOUT:
        ShowAbout();
        return true;
    default:
        return false;
    }
}

bool CMainWindow::OnViewCommand(UINT nCommand)
{
    if (!Current()) return false;
    CViewport& view = Current()->view;
    switch (nCommand) {
    case IDM_FIT:
        view.Fit();
        break;
    case IDM_FILL:
        view.Fill();
        break;
    case IDM_ACTUAL:
        view.ShowActual();
        break;
    case IDM_ZOOM_IN:
        view.ZoomMiddle(KEY_ZOOM);
        break;
    case IDM_ZOOM_OUT:
        view.ZoomMiddle(1 / KEY_ZOOM);
        break;
    default:
        return false;
    }
    m_panes.canvas.ViewChanged();
    ShowView();
    return true;
}

bool CMainWindow::OnPaneCommand(UINT nCommand)
{
    switch (nCommand) {
    case IDM_SMOOTH:
        m_settings.bSmooth = !m_settings.bSmooth;
        m_panes.canvas.SetSmooth(m_settings.bSmooth);
        return true;
    case IDM_UPDATES:
        m_settings.bUpdates = !m_settings.bUpdates;
        m_panes.canvas.SetUpdates(m_settings.bUpdates);
        return true;
    case IDM_GROUND_LIGHT:
    case IDM_GROUND_DARK:
    case IDM_GROUND_CHESS:
        m_settings.ground = static_cast<Ground>(nCommand - IDM_GROUND_LIGHT);
        m_panes.canvas.SetGround(m_settings.ground);
        return true;
    case IDM_SHOW_TREE:
        m_settings.bTree = !m_settings.bTree;
        break;
    case IDM_SHOW_RUN:
        m_settings.bRun = !m_settings.bRun;
        break;
    case IDM_SHOW_FINDINGS:
        m_settings.bFindings = !m_settings.bFindings;
        break;
    default:
        return false;
    }
    m_panes.Layout();
    if (!::IsWindowVisible(::GetFocus())) ::SetFocus(m_panes.canvas.Handle());
    return true;
}

bool CMainWindow::OnSelectCommand(UINT nCommand)
{
    switch (nCommand) {
    case IDM_TAB_NEXT:
        StepTab(1);
        return true;
    case IDM_TAB_BACK:
        StepTab(-1);
        return true;
    case IDM_NEXT_PANE:
        m_panes.FocusNext(1);
        return true;
    case IDM_BACK_PANE:
        m_panes.FocusNext(-1);
        return true;
    case IDM_RESIZE:
        m_panes.Resize();
        return true;
    case IDM_SELECT_NONE:
        Select(nullptr);
        return true;
    case IDM_SELECT_PARENT:
        Select(QELGetParentElem(Current()->file.Engine(), m_hSelected));
        return true;
    case IDM_FINDING_NEXT:
        m_panes.findings.Next();
        return true;
    default:
        return false;
    }
}

bool CMainWindow::OnRunCommand(UINT nCommand)
{
    switch (nCommand) {
    case IDM_PLAY:
        m_panes.run.TogglePlay();
        return true;
    case IDM_SIGNALS_ALL:
        m_panes.run.DriveAll();
        return true;
    case IDM_SIGNALS_NONE:
        m_panes.run.DriveNone();
        return true;
    case IDM_FILTER:
        m_panes.run.FocusFilter();
        return true;
    default:
        return false;
    }
}

bool CMainWindow::IsEnabled(UINT nCommand) const
{
    const Tab* pTab = Current();
    if (nCommand >= IDM_RECENT_FIRST && nCommand <= IDM_RECENT_LAST)
        return nCommand - IDM_RECENT_FIRST < m_settings.recent.size();
    switch (nCommand) {
    case IDM_RELOAD:
    case IDM_CLOSE:
        return pTab != nullptr;
    case IDM_EXPORT:
    case IDM_PRINT:
    case IDM_COPY:
    case IDM_COPY_META:
    case IDM_FIT:
    case IDM_FILL:
    case IDM_ACTUAL:
    case IDM_ZOOM_IN:
    case IDM_ZOOM_OUT:
    case IDM_PLAY:
    case IDM_SIGNALS_ALL:
    case IDM_FILTER:
        return pTab && pTab->file.Engine();
    case IDM_SIGNALS_NONE:
        return pTab && !pTab->play.Signals().IsEmpty();
    case IDM_TAB_NEXT:
    case IDM_TAB_BACK:
        return m_tabs.size() > 1;
    case IDM_SELECT_NONE:
        return m_hSelected != nullptr;
    case IDM_SELECT_PARENT:
        return pTab && m_hSelected && QELGetParentElem(pTab->file.Engine(), m_hSelected);
    case IDM_FINDING_NEXT:
        return pTab && !pTab->file.Findings().empty();
    case IDM_RECENT_NONE:
        return false;
    default:
        return true;
    }
}

bool CMainWindow::IsChecked(UINT nCommand) const
{
    const Tab* pTab = Current();
    const bool bShown = pTab && pTab->file.Engine();
    switch (nCommand) {
    case IDM_FIT:
        return bShown && pTab->view.Now() == CViewport::Mode::Fit;
    case IDM_FILL:
        return bShown && pTab->view.Now() == CViewport::Mode::Fill;
    case IDM_ACTUAL:
        return bShown && pTab->view.Now() == CViewport::Mode::Free && pTab->view.Zoom() == 1;
    case IDM_PLAY:
        return bShown && pTab->play.Signals().IsPlaying();
    case IDM_SMOOTH:
        return m_settings.bSmooth;
    case IDM_UPDATES:
        return m_settings.bUpdates;
    case IDM_GROUND_LIGHT:
    case IDM_GROUND_DARK:
    case IDM_GROUND_CHESS:
        return m_settings.ground == static_cast<Ground>(nCommand - IDM_GROUND_LIGHT);
    case IDM_SHOW_TREE:
        return m_settings.bTree;
    case IDM_SHOW_RUN:
        return m_settings.bRun;
    case IDM_SHOW_FINDINGS:
        return m_settings.bFindings;
    default:
        return false;
    }
}

void CMainWindow::UpdateCommands() const
{
    for (const UINT nCommand : g_buttons) {
        m_panes.toolbar.Enable(nCommand, IsEnabled(nCommand));
        m_panes.toolbar.Check(nCommand, IsChecked(nCommand));
    }
}

void CMainWindow::OnMenu(HMENU hMenu)
{
    const UINT nFirst = ::GetMenuItemID(hMenu, 0);
    if (nFirst == IDM_RECENT_NONE || nFirst == IDM_RECENT_FIRST) FillRecent(hMenu);
    for (int n = 0; n < ::GetMenuItemCount(hMenu); ++n) {
        const UINT nCommand = ::GetMenuItemID(hMenu, n);
        if (!nCommand || nCommand == static_cast<UINT>(-1)) continue; // a line, or another menu
        ::EnableMenuItem(hMenu, nCommand, IsEnabled(nCommand) ? MF_ENABLED : MF_GRAYED);
        ::CheckMenuItem(hMenu, nCommand, IsChecked(nCommand) ? MF_CHECKED : MF_UNCHECKED);
    }
}

void CMainWindow::FillRecent(HMENU hMenu) const
{
    while (::DeleteMenu(hMenu, 0, MF_BYPOSITION)) {
    }
    if (m_settings.recent.empty())
        ::AppendMenuW(hMenu, MF_STRING, IDM_RECENT_NONE, Text(IDS_RECENT_NONE).c_str());
    for (std::size_t n = 0; n < m_settings.recent.size(); ++n) {
        std::wstring label = L"&" + std::to_wstring((n + 1) % 10) + L"  ";
        for (const wchar_t c : m_settings.recent[n])
            label += c == L'&' ? std::wstring(L"&&") : std::wstring(1, c);
        ::AppendMenuW(hMenu, MF_STRING, IDM_RECENT_FIRST + n, label.c_str());
    }
}

// The paper lies as the drawing does, until the user turns it.
void CMainWindow::Print()
{
    const CPagePainter painter(Current()->file.Engine(), Current()->play);
    const SIZE size = painter.RefSize();
    if (m_page.paper.cx <= 0) m_print.TakeDefaults(&m_page);
    TurnPaper(&m_page, size.cx > size.cy);
    m_print.TakeOrientation(m_page);
    CPreviewWindow(painter, &m_page, &m_print, Current()->file.Path()).Show(Handle());
}

// In the size that it is shown in.
void CMainWindow::Copy(bool bMetafile)
{
    const RECT rc = Current()->view.Rect();
    CopyPicture(Handle(), Current()->file.Engine(), Current()->play,
                {rc.right - rc.left, rc.bottom - rc.top}, bMetafile);
}

void CMainWindow::AskForFiles()
{
    constexpr FileKind KINDS[] = {{IDS_FILTER_DRAWINGS, L"*.qel"}, {IDS_FILTER_ALL, L"*.*"}};
    const std::wstring filter = FilterOf(KINDS);
    std::wstring names(NAMES_SIZE, L'\0');
    const std::wstring title = Text(IDS_OPEN_TITLE);
    std::wstring folder;
    if (const Tab* pTab = Current())
        folder = pTab->file.Path().substr(0, pTab->file.Path().find_last_of(L'\\'));
    OPENFILENAMEW open{};
    open.lStructSize = sizeof open;
    open.hwndOwner = Handle();
    open.lpstrFilter = filter.c_str();
    open.lpstrFile = names.data();
    open.nMaxFile = static_cast<DWORD>(names.size());
    open.lpstrTitle = title.c_str();
    open.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
    open.Flags = OFN_EXPLORER | OFN_ALLOWMULTISELECT | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY |
                 OFN_NOCHANGEDIR;
    if (::GetOpenFileNameW(&open)) Open(NamesOf(names.c_str()));
}

void CMainWindow::ShowAbout() const
{
    const std::wstring title = Text(IDS_TITLE);
    const std::wstring text =
        Text(IDS_ABOUT_TEXT, {FromUtf8(QEL_VERSION), VersionText(QELGetVersion())});
    ::MessageBoxW(Handle(), text.c_str(), title.c_str(), MB_OK | MB_ICONINFORMATION);
}

} // namespace studio
