// The windows within the main one; see the header.
#include "tools/studio/Panes.h"

#include "tools/studio/Dpi.h"
#include "tools/studio/Resource.h"

#include <algorithm>
#include <iterator>

namespace studio {

namespace {

constexpr RECT NOWHERE{0, 0, 0, 0};
constexpr int LEAST = 64;  // of a pane, at 96 dots an inch
constexpr int INDENT = 18; // of a level of the tree
constexpr int MARGIN = 4;  // around the toolbar's buttons

// Takes a strip from an edge of a rectangle.
RECT TakeTop(RECT* prc, int nHeight)
{
    RECT rc = *prc;
    rc.bottom = prc->top = std::min(prc->top + nHeight, prc->bottom);
    return rc;
}

RECT TakeBottom(RECT* prc, int nHeight)
{
    RECT rc = *prc;
    rc.top = prc->bottom = std::max(prc->bottom - nHeight, prc->top);
    return rc;
}

RECT TakeLeft(RECT* prc, int nWidth)
{
    RECT rc = *prc;
    rc.right = prc->left = std::min(prc->left + nWidth, prc->right);
    return rc;
}

RECT TakeRight(RECT* prc, int nWidth)
{
    RECT rc = *prc;
    rc.left = prc->right = std::max(prc->right - nWidth, prc->left);
    return rc;
}

} // namespace

CPanes::~CPanes()
{
    if (m_hFont) ::DeleteObject(m_hFont);
}

int CPanes::Create(HWND hParent, Events events)
{
    m_hParent = hParent;
    const bool bMade = toolbar.Create(hParent, IDW_TOOLBAR) && tabs.Create(hParent, IDW_TABS) &&
                       tree.Create(hParent, IDW_TREE, std::move(events.treeSelect)) &&
                       attributes.Create(hParent, IDW_ATTRIBUTES) &&
                       message.Create(hParent, IDW_MESSAGE) &&
                       canvas.Create(hParent, IDW_CANVAS, std::move(events.canvas)) &&
                       findings.Create(hParent, IDW_FINDINGS, std::move(events.finding)) &&
                       run.Create(hParent, IDW_RUN) && CreateSplitters(hParent) &&
                       status.Create(hParent, IDW_STATUS);
    if (bMade) SetFonts();
    return bMade;
}

int CPanes::CreateSplitters(HWND hParent)
{
    for (Split& split : m_splits) {
        CSplitter::Events events;
        events.moved = [this, &split](int n) { MoveSplit(split, n); };
        events.key = [this, &split](CSplitter::Key key) { OnSplitKey(split, key); };
        if (!split.bar.Create(hParent, split.nId, split.bUpright, std::move(events))) return 0;
    }
    return 1;
}

void CPanes::SetFonts()
{
    HFONT hOld = m_hFont;
    m_hFont = MakeMessageFont(DpiOf(m_hParent));
    tabs.SetLook(m_hFont);
    tree.SetFont(m_hFont);
    tree.Send(TVM_SETINDENT, static_cast<WPARAM>(Scaled(INDENT)));
    attributes.SetFont(m_hFont);
    findings.SetFont(m_hFont);
    status.SetFont(m_hFont);
    message.SetFont(m_hFont);
    canvas.SetFont(m_hFont);
    run.SetFont(m_hFont);
    if (hOld) ::DeleteObject(hOld);
}

void CPanes::ChangeLook()
{
    SetFonts();
    toolbar.DrawIcons();
    canvas.SetGround(m_pSettings->ground);
    Layout();
}

int CPanes::Scaled(int nAt96) const
{
    return ::MulDiv(nAt96, static_cast<int>(DpiOf(m_hParent)), PLAIN_DPI);
}

void CPanes::MoveSplit(const Split& split, int nPixels)
{
    const int nNow = Scaled(m_pSettings->*split.pSize);
    const int nMoved = split.bBefore ? nNow + nPixels : nNow - nPixels;
    m_pSettings->*split.pSize =
        std::max(::MulDiv(nMoved, PLAIN_DPI, static_cast<int>(DpiOf(m_hParent))), LEAST);
    Layout();
    ::UpdateWindow(m_hParent);
}

bool CPanes::IsResizing() const
{
    return std::any_of(m_splits.begin(), m_splits.end(),
                       [](const Split& split) { return split.bar.Handle() == ::GetFocus(); });
}

// The first bar that shows behind a place in their order gets the focus.
void CPanes::FocusSplit(std::size_t nFrom)
{
    for (std::size_t n = 0; n < m_splits.size(); ++n) {
        Split& split = m_splits[(nFrom + n) % m_splits.size()];
        if (!::IsWindowVisible(split.bar.Handle())) continue;
        split.nWas = m_pSettings->*split.pSize;
        ::SetFocus(split.bar.Handle());
        return;
    }
}

void CPanes::Resize()
{
    if (!IsResizing()) m_hBefore = ::GetFocus();
    std::size_t nFrom = 0;
    for (std::size_t n = 0; n < m_splits.size(); ++n)
        if (m_splits[n].bar.Handle() == ::GetFocus()) nFrom = n + 1;
    FocusSplit(nFrom);
}

void CPanes::OnSplitKey(const Split& split, CSplitter::Key key)
{
    if (key == CSplitter::Key::Next) return Resize();
    if (key == CSplitter::Key::Back) {
        m_pSettings->*split.pSize = split.nWas;
        Layout();
    }
    ::SetFocus(m_hBefore && ::IsWindowVisible(m_hBefore) ? m_hBefore : canvas.Handle());
}

// What a pane gets, so that as much is left for others.
int CPanes::Limited(int nAt96, int nRoom) const
{
    return std::clamp(Scaled(nAt96), 0, std::max(nRoom - Scaled(2 * LEAST), 0));
}

void CPanes::Layout()
{
    RECT rc{};
    ::GetClientRect(m_hParent, &rc);
    if (::IsRectEmpty(&rc)) return;
    status.Resize();
    TakeBottom(&rc, status.Height());
    RECT rcBar = TakeTop(&rc, toolbar.Height() + Scaled(MARGIN));
    rcBar.left += Scaled(MARGIN);
    rcBar.top += Scaled(MARGIN) / 2;
    toolbar.Place(rcBar);
    const bool bTabs = tabs.Send(TCM_GETITEMCOUNT) > 0;
    tabs.Place(bTabs ? TakeTop(&rc, tabs.Height()) : NOWHERE);
    LayoutLeft(&rc);
    LayoutRight(&rc);
    LayoutMiddle(rc);
    tree.Send(TVM_ENSUREVISIBLE, 0, tree.Send(TVM_GETNEXTITEM, TVGN_CARET));
    attributes.FitColumns();
    findings.FitColumns();
}

void CPanes::LayoutLeft(RECT* prcRest)
{
    RECT rc = NOWHERE;
    if (m_pSettings->bTree)
        rc = TakeLeft(prcRest, Limited(m_pSettings->nLeft, prcRest->right - prcRest->left));
    m_splits[LEFT].bar.Place(m_pSettings->bTree ? TakeLeft(prcRest, Scaled(CSplitter::WIDTH))
                                                : NOWHERE);
    attributes.Place(TakeBottom(&rc, Limited(m_pSettings->nAttributes, rc.bottom - rc.top)));
    m_splits[TREE].bar.Place(TakeBottom(&rc, Scaled(CSplitter::WIDTH)));
    tree.Place(rc);
}

void CPanes::LayoutRight(RECT* prcRest)
{
    RECT rc = NOWHERE;
    if (m_pSettings->bRun)
        rc = TakeRight(prcRest, Limited(m_pSettings->nRight, prcRest->right - prcRest->left));
    m_splits[RIGHT].bar.Place(m_pSettings->bRun ? TakeRight(prcRest, Scaled(CSplitter::WIDTH))
                                                : NOWHERE);
    run.Place(rc);
}

void CPanes::LayoutMiddle(RECT rc)
{
    message.Place(TakeTop(&rc, message.HeightAt(rc.right - rc.left)));
    const bool bFindings = m_pSettings->bFindings && findings.CountRows() > 0;
    findings.Place(bFindings ? TakeBottom(&rc, Limited(m_pSettings->nFindings, rc.bottom - rc.top))
                             : NOWHERE);
    m_splits[FINDINGS].bar.Place(bFindings ? TakeBottom(&rc, Scaled(CSplitter::WIDTH)) : NOWHERE);
    canvas.Place(rc);
}

void CPanes::FocusNext(int nStep)
{
    const HWND panes[] = {canvas.Handle(), findings.Handle(), run.Handle(), tree.Handle(),
                          attributes.Handle()};
    constexpr int COUNT = static_cast<int>(std::size(panes));
    const HWND hFocus = ::GetFocus();
    int nAt = 0;
    for (int n = 0; n < COUNT; ++n)
        if (panes[n] == hFocus || ::IsChild(panes[n], hFocus)) nAt = n;
    for (int n = 1; n <= COUNT; ++n) {
        const HWND hPane = panes[(nAt + n * nStep + n * COUNT) % COUNT];
        if (!::IsWindowVisible(hPane)) continue;
        ::SetFocus(hPane);
        if (hPane == canvas.Handle()) canvas.ShowFocus();
        return;
    }
}

void CPanes::OnNotify(NMHDR* pHeader)
{
    if (pHeader->hwndFrom == tree.Handle()) tree.OnNotify(*pHeader);
    if (pHeader->hwndFrom == findings.Handle()) findings.OnNotify(*pHeader);
    CToolbar::OnNotify(pHeader);
}

} // namespace studio
