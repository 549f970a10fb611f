// The bar between two panes; see the header.
#include "tools/studio/Splitter.h"

namespace studio {

int CSplitter::Create(HWND hParent, UINT nId, bool bUpright, std::function<void(int)> moved)
{
    m_bUpright = bUpright;
    m_moved = std::move(moved);
    Looks looks{bUpright ? L"QELStudioSplitterUpright" : L"QELStudioSplitterLevel"};
    looks.hGround = ::GetSysColorBrush(COLOR_3DFACE);
    looks.pszCursor = bUpright ? IDC_SIZEWE : IDC_SIZENS;
    return Make(looks, hParent, nId);
}

int CSplitter::Along(LPARAM lParam) const
{
    const POINT pt = PointOf(lParam);
    return m_bUpright ? pt.x : pt.y;
}

LRESULT CSplitter::OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    switch (nMessage) {
    case WM_LBUTTONDOWN:
        m_nGrip = Along(lParam);
        ::SetCapture(Handle());
        return 0;
    case WM_MOUSEMOVE: // the window itself moves along
        if (::GetCapture() == Handle() && Along(lParam) != m_nGrip)
            m_moved(Along(lParam) - m_nGrip);
        return 0;
    case WM_LBUTTONUP:
        if (::GetCapture() == Handle()) ::ReleaseCapture();
        return 0;
    default:
        return CWindow::OnMessage(nMessage, wParam, lParam);
    }
}

} // namespace studio
