// The bar between two panes; see the header.
#include "tools/studio/Splitter.h"

#include "tools/studio/SystemLook.h"

namespace studio {

namespace {

constexpr int KEY_STEP = 8; // at 96 dots an inch; with Ctrl a single pixel

} // namespace

int CSplitter::Create(HWND hParent, UINT nId, bool bUpright, Events events)
{
    m_bUpright = bUpright;
    m_events = std::move(events);
    Looks looks{bUpright ? L"QELStudioSplitterUpright" : L"QELStudioSplitterLevel"};
    looks.hGround = ClassBrush(COLOR_3DFACE);
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
            m_events.moved(Along(lParam) - m_nGrip);
        return 0;
    case WM_LBUTTONUP:
        if (::GetCapture() == Handle()) ::ReleaseCapture();
        return 0;
    case WM_KEYDOWN:
        if (OnKey(wParam)) return 0;
        break;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        ::InvalidateRect(Handle(), nullptr, TRUE);
        return 0;
    case WM_PAINT:
        Paint();
        return 0;
    default:
        break;
    }
    return CWindow::OnMessage(nMessage, wParam, lParam);
}

bool CSplitter::OnKey(WPARAM nKey)
{
    const int nStep = ::GetKeyState(VK_CONTROL) < 0 ? 1 : Scaled(KEY_STEP);
    switch (nKey) {
    case VK_LEFT:
    case VK_RIGHT:
        if (m_bUpright) m_events.moved(nKey == VK_LEFT ? -nStep : nStep);
        return true;
    case VK_UP:
    case VK_DOWN:
        if (!m_bUpright) m_events.moved(nKey == VK_UP ? -nStep : nStep);
        return true;
    case VK_TAB:
        m_events.key(Key::Next);
        return true;
    case VK_RETURN:
        m_events.key(Key::Keep);
        return true;
    case VK_ESCAPE:
        m_events.key(Key::Back);
        return true;
    default:
        return false;
    }
}

// With the focus it is seen; in high contrast at all times, since its ground may be that of the
// panes.
void CSplitter::Paint()
{
    PAINTSTRUCT paint{};
    const HDC hdc = ::BeginPaint(Handle(), &paint);
    RECT rc = Client();
    if (::GetFocus() == Handle()) {
        ::FillRect(hdc, &rc, ::GetSysColorBrush(COLOR_HIGHLIGHT));
    } else if (IsHighContrast()) {
        const int nHalf = (m_bUpright ? rc.right : rc.bottom) / 2;
        ::InflateRect(&rc, m_bUpright ? -nHalf : 0, m_bUpright ? 0 : -nHalf);
        (m_bUpright ? rc.right : rc.bottom) = nHalf + Scaled(1);
        ::FillRect(hdc, &rc, ::GetSysColorBrush(COLOR_BTNTEXT));
    }
    ::EndPaint(Handle(), &paint);
}

} // namespace studio
