// The windows within the main one, and where they stand: tree left, drawing in the middle, panel
// right.
#pragma once

#include "tools/studio/AttributeList.h"
#include "tools/studio/Canvas.h"
#include "tools/studio/ElementTree.h"
#include "tools/studio/FileTabs.h"
#include "tools/studio/FindingList.h"
#include "tools/studio/MessageBar.h"
#include "tools/studio/Resource.h"
#include "tools/studio/RunPanel.h"
#include "tools/studio/Splitter.h"
#include "tools/studio/StatusBar.h"
#include "tools/studio/Toolbar.h"

#include <array>

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
    void ChangeLook();         // to the monitor that it is on, and the system's colours and fonts
    void FocusNext(int nStep); // the next pane that shows, or with -1 the one before
    void Resize();             // the arrow keys move a bar between panes, or the next one
    [[nodiscard]] bool IsResizing() const;
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
    struct Split {
        UINT nId;
        bool bUpright;
        int Settings::*pSize; // of the pane beside it
        bool bBefore;         // which is left of it, and else right or below
        CSplitter bar{};
        int nWas = 0; // that size, when the bar got the focus
    };
    enum SplitNumber { LEFT, RIGHT, TREE, FINDINGS, SPLITS };
    void MoveSplit(const Split& split, int nPixels);
    void FocusSplit(std::size_t nFrom);
    void OnSplitKey(const Split& split, CSplitter::Key key);
    void LayoutLeft(RECT* prcRest);
    void LayoutRight(RECT* prcRest);
    void LayoutMiddle(RECT rc);
    [[nodiscard]] int Scaled(int nAt96) const;
    [[nodiscard]] int Limited(int nAt96, int nRoom) const;

    Settings* m_pSettings;
    HWND m_hParent = nullptr;
    HFONT m_hFont = nullptr;
    HWND m_hBefore = nullptr; // what had the focus before a bar had it
    std::array<Split, SPLITS> m_splits{{{IDW_SPLIT_LEFT, true, &Settings::nLeft, true},
                                        {IDW_SPLIT_RIGHT, true, &Settings::nRight, false},
                                        {IDW_SPLIT_TREE, false, &Settings::nAttributes, false},
                                        {IDW_SPLIT_FINDINGS, false, &Settings::nFindings, false}}};
};

} // namespace studio
