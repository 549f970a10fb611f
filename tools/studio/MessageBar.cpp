// The bar above the picture; see the header. It has the system's colours of hints, so that it is
// read in high contrast, too.
#include "tools/studio/MessageBar.h"

#include "tools/studio/SystemLook.h"

namespace studio {

namespace {

constexpr int MARGIN = 8; // at 96 dots an inch
constexpr int STRIPE = 4; // at the left edge

} // namespace

int CMessageBar::Create(HWND hParent, UINT nId)
{
    Looks looks{L"QELStudioMessage"};
    looks.nStyle &= ~static_cast<DWORD>(WS_VISIBLE);
    looks.hGround = ClassBrush(COLOR_INFOBK);
    return Make(looks, hParent, nId);
}

void CMessageBar::SetText(const std::wstring& text)
{
    m_text = text;
    ::SetWindowTextW(Handle(), text.c_str());
    ::InvalidateRect(Handle(), nullptr, TRUE);
}

RECT CMessageBar::TextRect(int nWidth) const
{
    // Some systems draw a line a little longer than they tell: it ends in the margin then.
    RECT rc{Scaled(MARGIN + STRIPE), Scaled(MARGIN), nWidth - Scaled(2 * MARGIN), Scaled(MARGIN)};
    const HDC hdc = ::GetDC(Handle());
    const HGDIOBJ hPrev = ::SelectObject(hdc, m_hFont);
    RECT rcText = rc;
    ::DrawTextW(hdc, m_text.c_str(), -1, &rcText, DT_WORDBREAK | DT_NOPREFIX | DT_CALCRECT);
    ::SelectObject(hdc, hPrev);
    ::ReleaseDC(Handle(), hdc);
    rc.bottom = rcText.bottom;
    return rc;
}

int CMessageBar::HeightAt(int nWidth) const
{
    return m_text.empty() ? 0 : TextRect(nWidth).bottom + Scaled(MARGIN);
}

void CMessageBar::Paint()
{
    PAINTSTRUCT paint{};
    const HDC hdc = ::BeginPaint(Handle(), &paint);
    RECT rcStripe = Client();
    RECT rcText = TextRect(rcStripe.right);
    rcStripe.right = Scaled(STRIPE);
    HBRUSH hBrush = ::CreateSolidBrush(PlainOr(RGB(0xC4, 0x2B, 0x1C), COLOR_HIGHLIGHT));
    ::FillRect(hdc, &rcStripe, hBrush);
    ::DeleteObject(hBrush);
    const HGDIOBJ hPrev = ::SelectObject(hdc, m_hFont);
    ::SetBkMode(hdc, TRANSPARENT);
    ::SetTextColor(hdc, ::GetSysColor(COLOR_INFOTEXT));
    ::DrawTextW(hdc, m_text.c_str(), -1, &rcText, DT_WORDBREAK | DT_NOPREFIX | DT_NOCLIP);
    ::SelectObject(hdc, hPrev);
    ::EndPaint(Handle(), &paint);
}

LRESULT CMessageBar::OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    if (nMessage != WM_PAINT) return CWindow::OnMessage(nMessage, wParam, lParam);
    Paint();
    return 0;
}

} // namespace studio
