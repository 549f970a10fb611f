// The windows within the main one, and where they stand: tree left, drawing in the middle, panel
// right.
#pragma once

#include "tools/studio/AttributeList.h"
#include "tools/studio/Canvas.h"
#include "tools/studio/ElementTree.h"
#include "tools/studio/FileTabs.h"
#include "tools/studio/FindingList.h"
#include "tools/studio/MessageBar.h"
#include "tools/studio/RunPanel.h"
#include "tools/studio/Splitter.h"
#include "tools/studio/StatusBar.h"
#include "tools/studio/Toolbar.h"

namespace studio {

class CPanes {
public:
    explicit CPanes(Settings* pSettings) : m_pSettings(pSettings) {}
    ~CPanes();
    CPanes(const CPanes&) = delete;
    CPanes& operator=(const CPanes&) = delete;

    struct Events {
        CCanvas::Events canvas;
        std::function<void(HQELELEM)> treeSelect;
        std::function<void(std::size_t)> finding;
    };
    int Create(HWND hParent, Events events);
    void Layout();             // to the size that the main window has now
    void ChangeDpi();          // to the monitor that it is on now
    void FocusNext(int nStep); // the next pane that shows, or with -1 the one before
    void OnNotify(NMHDR* pHeader);

    CToolbar toolbar;
    CFileTabs tabs;
    CMessageBar message;
    CElementTree tree;
    CAttributeList attributes;
    CCanvas canvas;
    CFindingList findings;
    CRunPanel run;
    CStatusBar status;

private:
    int CreateSplitters(HWND hParent);
    void SetFonts();
    void MoveSplit(int Settings::*pSize, int nPixels);
    void LayoutLeft(RECT* prcRest);
    void LayoutRight(RECT* prcRest);
    void LayoutMiddle(RECT rc);
    [[nodiscard]] int Scaled(int nAt96) const;
    [[nodiscard]] int Limited(int nAt96, int nRoom) const;

    Settings* m_pSettings;
    HWND m_hParent = nullptr;
    HFONT m_hFont = nullptr;
    CSplitter m_splitLeft;
    CSplitter m_splitRight;
    CSplitter m_splitTree;
    CSplitter m_splitFindings;
};

} // namespace studio
