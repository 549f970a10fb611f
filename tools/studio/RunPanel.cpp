// The panel at the right; see the header.
#include "tools/studio/RunPanel.h"

#include "tools/studio/Resource.h"
#include "tools/studio/Strings.h"

namespace studio {

bool CRunPanel::Create(HWND hParent, UINT nId)
{
    Looks looks{L"QELStudioRunPanel"};
    looks.hGround = ::GetSysColorBrush(COLOR_WINDOW);
    return Make(looks, hParent, nId) != 0;
}

void CRunPanel::Show(CDrawingFile* pFile)
{
    m_pFile = pFile;
}

void CRunPanel::Tick(DWORD /*nPassed*/) {}

void CRunPanel::SetFont(HFONT hFont)
{
    m_hFont = hFont;
}

LRESULT CRunPanel::OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    if (nMessage != WM_PAINT) return CWindow::OnMessage(nMessage, wParam, lParam);
    PAINTSTRUCT paint{};
    const HDC hdc = ::BeginPaint(Handle(), &paint);
    RECT rc = Client();
    ::InflateRect(&rc, -Scaled(8), -Scaled(8));
    const HGDIOBJ hPrev = ::SelectObject(hdc, m_hFont);
    ::SetBkMode(hdc, TRANSPARENT);
    ::SetTextColor(hdc, ::GetSysColor(COLOR_GRAYTEXT));
    ::DrawTextW(hdc, Text(IDS_RUN_EMPTY).c_str(), -1, &rc, DT_WORDBREAK | DT_NOPREFIX);
    ::SelectObject(hdc, hPrev);
    ::EndPaint(Handle(), &paint);
    return 0;
}

} // namespace studio
