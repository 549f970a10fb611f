// The bar at the bottom; see the header.
#include "tools/studio/StatusBar.h"

#include "tools/studio/Dpi.h"

#include <commctrl.h>

#include <algorithm>

namespace studio {

namespace {

// At 96 dots an inch; the first one takes what is left.
constexpr int g_widths[CStatusBar::PARTS] = {0, 120, 136, 80, 136};

} // namespace

int CStatusBar::Create(HWND hParent, UINT nId)
{
    return Make(STATUSCLASSNAMEW, WS_VISIBLE | SBARS_SIZEGRIP, hParent, nId);
}

void CStatusBar::SetText(Part part, const std::wstring& text)
{
    if (!Handle() || m_texts[part] == text) return; // the panes are made one after the other
    m_texts[part] = text;
    Send(SB_SETTEXTW, static_cast<WPARAM>(part), Param(text.c_str()));
}

void CStatusBar::Resize() const
{
    Send(WM_SIZE);
    RECT rc{};
    ::GetClientRect(Handle(), &rc);
    const int nDpi = static_cast<int>(DpiOf(Handle()));
    std::array<int, PARTS> rights{};
    int nRight = rc.right;
    for (int n = PARTS - 1; n >= 0; --n) {
        rights[static_cast<std::size_t>(n)] = std::max(nRight, 0);
        nRight -= ::MulDiv(g_widths[n], nDpi, PLAIN_DPI);
    }
    rights[PARTS - 1] = -1; // to the end
    Send(SB_SETPARTS, PARTS, Param(rights.data()));
}

int CStatusBar::Height() const
{
    RECT rc{};
    ::GetWindowRect(Handle(), &rc);
    return rc.bottom - rc.top;
}

} // namespace studio
