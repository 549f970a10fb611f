// The main window: the open drawings, their panes, and the commands.
#pragma once

#include "tools/studio/Panes.h"
#include "tools/studio/PreviewWindow.h"
#include "tools/studio/model/CommandLine.h"
#include "tools/studio/model/DataLine.h"
#include "tools/studio/model/DataSource.h"
#include "tools/studio/model/Play.h"

#include <memory>
#include <shellapi.h>
#include <vector>

namespace studio {

class CMainWindow final : public CWindow {
public:
    explicit CMainWindow(Settings settings);
    int Create(int nShow);
    void Open(const std::vector<std::wstring>& paths); // shows the last of them
    void TakeLiveData(const CommandLine& line);        // from where the command line says
    // Whether a message was for a key of a command, and is dealt with.
    bool Translate(MSG* pMessage);
    [[nodiscard]] const Settings& Kept() const { return m_settings; }

private:
    // An open drawing, and what of the window belongs to it.
    struct Tab {
        explicit Tab(const std::wstring& path);
        CDrawingFile file;
        CPlay play;
        CViewport view;
        std::vector<int> selection; // the place of the element that is selected
        std::string selectionId;    // its identifier
        DWORD nAway = 0;            // milliseconds since it was shown last
    };

    LRESULT OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    bool OnSystem(UINT nMessage, WPARAM wParam, LPARAM lParam); // size, resolution, place
    void OnNotify(NMHDR* pHeader);
    void OnTimer();
    void OnDrop(HDROP hDrop);
    void OnMiddleButton(POINT pt);
    void OnMenu(HMENU hMenu);
    void OnDpi(const RECT& rc);
    void OnDestroy();
    int MakePanes();
    void SetIcons();

    // MainCommands.cpp
    void OnCommand(UINT nCommand);
    bool OnFileCommand(UINT nCommand);
    bool OnViewCommand(UINT nCommand);
    bool OnPaneCommand(UINT nCommand);
    bool OnSelectCommand(UINT nCommand);
    bool OnRunCommand(UINT nCommand);
    void AskForFiles();
    void Copy(bool bMetafile);
    void Print();
    void ShowAbout() const;
    void UpdateCommands() const;
    [[nodiscard]] bool IsEnabled(UINT nCommand) const;
    [[nodiscard]] bool IsChecked(UINT nCommand) const;
    void FillRecent(HMENU hMenu) const;

    [[nodiscard]] Tab* Current() const; // null: none is open
    int FindTab(const std::wstring& path) const;
    void OpenOne(const std::wstring& path);
    void Close(int nTab);
    void ChooseTab(int nTab);
    void StepTab(int nStep);
    void Reload(Tab* pTab);
    void Watch();
    void TakeLines(); // of live data that have come
    void ShowLive();
    void CatchUp();     // the time that passed while the drawing was not shown
    void ShowCurrent(); // all of the current drawing, in all panes
    void ShowFault();
    void ShowStatus();
    void ShowView(); // zoom and size
    void Select(HQELELEM hElem);
    void SelectFinding(std::size_t nFinding);
    void RecallSelection();
    [[nodiscard]] std::wstring Describe(HQELELEM hElem) const;

    Settings m_settings;
    CPanes m_panes;
    HACCEL m_hKeys = nullptr;
    std::vector<std::unique_ptr<Tab>> m_tabs;
    int m_nCurrent = -1;
    HQELELEM m_hSelected = nullptr;
    bool m_bSelecting = false;
    ULONGLONG m_nTick = 0;                  // of the last timer
    ULONGLONG m_nWatched = 0;               // of the last look at the files
    std::unique_ptr<CDataSource> m_pSource; // null: there is no live data
    CDataLine m_lines;
    HWND m_hFocus = nullptr; // where it was when the window was left
    HICON m_hIcons[2] = {nullptr, nullptr};
    CPrintDialogs m_print;
    PageSetup m_page{{0, 0}}; // without a paper so far
};

} // namespace studio
