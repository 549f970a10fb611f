// Windows and controls; see the header.
#include "tools/studio/Window.h"

#include "tools/studio/Dpi.h"

namespace studio {

namespace {

void PlaceWindow(HWND hWnd, const RECT& rc)
{
    const bool bShown = !::IsRectEmpty(&rc);
    ::SetWindowPos(hWnd, nullptr, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top,
                   SWP_NOZORDER | SWP_NOACTIVATE | (bShown ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
}

// Once a class; the second time the system refuses, and the class is there.
void Register(const wchar_t* pszClass, HBRUSH hGround, const wchar_t* pszCursor,
              WNDPROC pfnProcedure)
{
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    wc.style = CS_DBLCLKS;
    wc.lpfnWndProc = pfnProcedure;
    wc.hInstance = ::GetModuleHandleW(nullptr);
    wc.hCursor = ::LoadCursorW(nullptr, pszCursor ? pszCursor : IDC_ARROW);
    wc.hbrBackground = hGround;
    wc.lpszClassName = pszClass;
    ::RegisterClassExW(&wc);
}

} // namespace

CWindow::~CWindow()
{
    if (!m_hWnd) return;
    ::SetWindowLongPtrW(m_hWnd, GWLP_USERDATA, 0);
    ::DestroyWindow(m_hWnd);
}

int CWindow::Make(const Looks& looks, HWND hParent, UINT nId)
{
    Register(looks.pszClass, looks.hGround, looks.pszCursor, Procedure);
    const RECT& rc = looks.rc;
    auto* hId = Passed<HMENU>(static_cast<UINT_PTR>(nId));
    ::CreateWindowExW(looks.nExtra, looks.pszClass, looks.pszTitle, looks.nStyle, rc.left, rc.top,
                      rc.right - rc.left, rc.bottom - rc.top, hParent, hId,
                      ::GetModuleHandleW(nullptr), this);
    return m_hWnd != nullptr;
}

void CWindow::Place(const RECT& rc) const
{
    PlaceWindow(m_hWnd, rc);
}

RECT CWindow::Client() const
{
    RECT rc{};
    ::GetClientRect(m_hWnd, &rc);
    return rc;
}

int CWindow::Scaled(int nAt96) const
{
    return ::MulDiv(nAt96, static_cast<int>(DpiOf(m_hWnd)), PLAIN_DPI);
}

LRESULT CWindow::OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    return ::DefWindowProcW(m_hWnd, nMessage, wParam, lParam);
}

// No exception goes through the system, which calls this.
LRESULT CALLBACK CWindow::Procedure(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    if (nMessage == WM_NCCREATE) {
        const auto* pMade = Passed<const CREATESTRUCTW*>(lParam);
        auto* pNew = static_cast<CWindow*>(pMade->lpCreateParams);
        pNew->m_hWnd = hWnd;
        ::SetWindowLongPtrW(hWnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(pNew));
    }
    auto* pThis = Passed<CWindow*>(::GetWindowLongPtrW(hWnd, GWLP_USERDATA));
    if (!pThis) return ::DefWindowProcW(hWnd, nMessage, wParam, lParam);
    LRESULT nResult = 0;
    try {
        nResult = pThis->OnMessage(nMessage, wParam, lParam);
    } catch (...) { // for want of memory: the message is as if it had not come
        nResult = 0;
    }
    if (nMessage == WM_NCDESTROY) {
        ::SetWindowLongPtrW(hWnd, GWLP_USERDATA, 0);
        pThis->m_hWnd = nullptr;
    }
    return nResult;
}

int CControl::Make(const wchar_t* pszClass, DWORD nStyle, HWND hParent, UINT nId, DWORD nExtra)
{
    auto* hId = Passed<HMENU>(static_cast<UINT_PTR>(nId));
    m_hWnd = ::CreateWindowExW(nExtra, pszClass, L"", nStyle | WS_CHILD | WS_CLIPSIBLINGS, 0, 0, 0,
                               0, hParent, hId, ::GetModuleHandleW(nullptr), nullptr);
    return m_hWnd != nullptr;
}

void CControl::Place(const RECT& rc) const
{
    PlaceWindow(m_hWnd, rc);
}

void CControl::SetFont(HFONT hFont) const
{
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(hFont), TRUE);
}

} // namespace studio
