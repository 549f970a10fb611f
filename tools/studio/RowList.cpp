// The rows of the run panel; see the header.
#include "tools/studio/RowList.h"

#include "tools/studio/Dpi.h"
#include "tools/studio/Picture.h"
#include "tools/studio/SystemLook.h"

#include <algorithm>
#include <windowsx.h>

namespace studio {

namespace {

constexpr int MARGIN = 8; // at 96 dots an inch, as all here
constexpr int GAP = 4;    // between the two lines of a row
constexpr int VALUE_WIDTH = 72;
constexpr int KNOB = 10;
constexpr int TRACK = 4;
constexpr double KEY_STEP = 0.01; // of the range
constexpr double PAGE_STEP = 0.1;

void Fill(HDC hdc, const RECT& rc, COLORREF clr)
{
    HBRUSH hBrush = ::CreateSolidBrush(clr);
    ::FillRect(hdc, &rc, hBrush);
    ::DeleteObject(hBrush);
}

void Write(HDC hdc, const std::wstring& text, RECT rc, COLORREF clr, UINT nFormat)
{
    ::SetTextColor(hdc, clr);
    ::DrawTextW(hdc, text.c_str(), -1, &rc,
                nFormat | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS | DT_NOCLIP);
}

SIZE Extent(HDC hdc, const std::wstring& text)
{
    SIZE size{};
    ::GetTextExtentPoint32W(hdc, text.c_str(), static_cast<int>(text.size()), &size);
    return size;
}

} // namespace

int CRowList::Create(HWND hParent, UINT nId, Events events)
{
    m_events = std::move(events);
    Looks looks{L"QELStudioRows"};
    looks.nStyle |= WS_TABSTOP | WS_VSCROLL | WS_BORDER;
    return Make(looks, hParent, nId);
}

void CRowList::SetFont(HFONT hFont)
{
    m_hFont = hFont;
    m_nLine = LineHeight(Handle(), hFont);
    ScrollTo(m_nTop);
}

void CRowList::SetRows(std::vector<Row> rows)
{
    m_rows = std::move(rows);
    m_nSelected = std::min(std::max(m_nSelected, 0), Count() - 1);
    m_bSliding = false;
    ScrollTo(m_nTop);
}

void CRowList::SetRow(int nRow, const Row& row)
{
    Row& old = m_rows[static_cast<std::size_t>(nRow)];
    const bool bTitle = old.kind != row.kind;
    if (old.text == row.text && old.fAt == row.fAt && !bTitle && old.clr == row.clr) return;
    old = row;
    RECT rc = RowRect(nRow);
    if (!bTitle) rc.top = SliderRect(nRow).top; // the line of the value alone
    ::InvalidateRect(Handle(), &rc, FALSE);
}

void CRowList::Select(int nRow)
{
    m_nSelected = std::clamp(nRow, -1, Count() - 1);
    const RECT rc = RowRect(m_nSelected);
    const RECT rcClient = Client();
    const bool bRoom = m_nSelected >= 0 && rcClient.bottom > 0;
    if (bRoom && rc.bottom > rcClient.bottom) ScrollTo(m_nTop + rc.bottom - rcClient.bottom);
    if (bRoom && RowRect(m_nSelected).top < 0) ScrollTo(m_nSelected * RowHeight());
    ::InvalidateRect(Handle(), nullptr, FALSE);
}

int CRowList::RowHeight() const
{
    return 2 * m_nLine + Scaled(GAP) + Scaled(MARGIN);
}

int CRowList::FirstShown() const
{
    return std::clamp(m_nTop / RowHeight(), 0, Count());
}

int CRowList::EndShown() const
{
    return std::clamp((m_nTop + static_cast<int>(Client().bottom)) / RowHeight() + 1, 0, Count());
}

RECT CRowList::RowRect(int nRow) const
{
    const int nTop = nRow * RowHeight() - m_nTop;
    return {0, nTop, Client().right, nTop + RowHeight()};
}

RECT CRowList::SliderRect(int nRow) const
{
    const RECT rc = RowRect(nRow);
    const int nTop = rc.top + Scaled(MARGIN) / 2 + m_nLine + Scaled(GAP);
    return {rc.left + Scaled(MARGIN), nTop, rc.right - Scaled(MARGIN + VALUE_WIDTH),
            nTop + m_nLine};
}

int CRowList::RowAt(POINT pt) const
{
    const int nRow = (pt.y + m_nTop) / RowHeight();
    return nRow >= 0 && nRow < Count() ? nRow : -1;
}

LRESULT CRowList::OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    switch (nMessage) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        return 1; // all of it is painted
    case WM_SIZE:
        ScrollTo(m_nTop);
        return 0;
    case WM_VSCROLL:
        OnScroll(LOWORD(wParam));
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS;
    case WM_KEYDOWN:
        if (OnKey(wParam)) return 0;
        break;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_SYSCOLORCHANGE:
        ::InvalidateRect(Handle(), nullptr, FALSE);
        return 0;
    default:
        if (OnMouse(nMessage, wParam, lParam)) return 0;
        break;
    }
    return CWindow::OnMessage(nMessage, wParam, lParam);
}

bool CRowList::OnMouse(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    switch (nMessage) {
    case WM_LBUTTONDOWN:
        OnButton(PointOf(lParam));
        return true;
    case WM_LBUTTONDBLCLK:
        if (m_events.open && RowAt(PointOf(lParam)) == m_nSelected && m_nSelected >= 0)
            m_events.open(m_nSelected);
        return true;
    case WM_MOUSEMOVE:
        if (m_bSliding) SlideTo(GET_X_LPARAM(lParam));
        return true;
    case WM_LBUTTONUP:
        if (m_bSliding) ::ReleaseCapture();
        return true;
    case WM_CAPTURECHANGED:
        m_bSliding = false;
        return true;
    case WM_MOUSEWHEEL:
        ScrollTo(m_nTop - GET_WHEEL_DELTA_WPARAM(wParam) * RowHeight() / WHEEL_DELTA);
        return true;
    default:
        return false;
    }
}

void CRowList::OnButton(POINT pt)
{
    ::SetFocus(Handle());
    const int nRow = RowAt(pt);
    if (nRow < 0) return;
    Choose(nRow);
    RECT rc = SliderRect(nRow);
    ::InflateRect(&rc, Scaled(KNOB) / 2, 0);
    if (!m_rows[static_cast<std::size_t>(nRow)].bSlider || !::PtInRect(&rc, pt)) return;
    m_bSliding = true;
    ::SetCapture(Handle());
    SlideTo(pt.x);
}

void CRowList::Choose(int nRow)
{
    const bool bOther = nRow != m_nSelected;
    Select(nRow);
    if (bOther && m_events.select) m_events.select(m_nSelected);
}

void CRowList::SlideTo(int nX)
{
    const RECT rc = SliderRect(m_nSelected);
    const double fAt =
        rc.right > rc.left ? static_cast<double>(nX - rc.left) / (rc.right - rc.left) : 0;
    if (m_events.slide) m_events.slide(m_nSelected, std::clamp(fAt, 0.0, 1.0));
}

void CRowList::SlideBy(double fPart)
{
    if (m_nSelected < 0) return;
    const Row& row = m_rows[static_cast<std::size_t>(m_nSelected)];
    if (row.bSlider && m_events.slide)
        m_events.slide(m_nSelected, std::clamp(row.fAt + fPart, 0.0, 1.0));
}

bool CRowList::OnKey(WPARAM nKey)
{
    const int nPage = std::max(1, static_cast<int>(Client().bottom) / RowHeight() - 1);
    const bool bControl = ::GetKeyState(VK_CONTROL) < 0;
    switch (nKey) {
    case VK_UP:
        Choose(std::max(m_nSelected - 1, 0));
        return true;
    case VK_DOWN:
        Choose(m_nSelected + 1);
        return true;
    case VK_PRIOR:
        Choose(std::max(m_nSelected - nPage, 0));
        return true;
    case VK_NEXT:
        Choose(m_nSelected + nPage);
        return true;
    case VK_HOME:
        Choose(0);
        return true;
    case VK_END:
        Choose(Count() - 1);
        return true;
    case VK_LEFT:
        SlideBy(bControl ? -PAGE_STEP : -KEY_STEP);
        return true;
    case VK_RIGHT:
        SlideBy(bControl ? PAGE_STEP : KEY_STEP);
        return true;
    default:
        return false;
    }
}

void CRowList::OnScroll(UINT nHow)
{
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    ::GetScrollInfo(Handle(), SB_VERT, &info);
    switch (nHow) {
    case SB_LINEUP:
        return ScrollTo(m_nTop - RowHeight() / 2);
    case SB_LINEDOWN:
        return ScrollTo(m_nTop + RowHeight() / 2);
    case SB_PAGEUP:
        return ScrollTo(m_nTop - static_cast<int>(info.nPage));
    case SB_PAGEDOWN:
        return ScrollTo(m_nTop + static_cast<int>(info.nPage));
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        return ScrollTo(info.nTrackPos);
    default:
        return;
    }
}

void CRowList::ScrollTo(int nTop)
{
    const int nMost = Count() * RowHeight() - static_cast<int>(Client().bottom);
    m_nTop = std::clamp(nTop, 0, std::max(nMost, 0));
    ShowScroll();
    ::InvalidateRect(Handle(), nullptr, FALSE);
}

void CRowList::ShowScroll() const
{
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = std::max(Count() * RowHeight() - 1, 0);
    info.nPage = static_cast<UINT>(Client().bottom);
    info.nPos = m_nTop;
    ::SetScrollInfo(Handle(), SB_VERT, &info, TRUE);
}

// What is not to be painted is left out: values change many times a second.
void CRowList::Paint()
{
    HRGN hRegion = ::CreateRectRgn(0, 0, 0, 0);
    ::GetUpdateRgn(Handle(), hRegion, FALSE);
    PAINTSTRUCT paint{};
    const HDC hdc = ::BeginPaint(Handle(), &paint);
    const RECT rc = Client();
    const RECT& rcPaint = paint.rcPaint;
    if (m_picture.SetSize({rc.right, rc.bottom})) {
        const HDC hdcPicture = m_picture.Dc();
        ::SelectClipRgn(hdcPicture, hRegion);
        Fill(hdcPicture, rcPaint, ::GetSysColor(COLOR_WINDOW));
        const HGDIOBJ hPrev = ::SelectObject(hdcPicture, m_hFont);
        ::SetBkMode(hdcPicture, TRANSPARENT);
        for (int n = FirstShown(); n < EndShown(); ++n) PaintRow(hdcPicture, n, hRegion);
        ::SelectObject(hdcPicture, hPrev);
        ::BitBlt(hdc, rcPaint.left, rcPaint.top, rcPaint.right - rcPaint.left,
                 rcPaint.bottom - rcPaint.top, hdcPicture, rcPaint.left, rcPaint.top, SRCCOPY);
    }
    ::EndPaint(Handle(), &paint);
    ::DeleteObject(hRegion);
}

void CRowList::PaintRow(HDC hdc, int nRow, HRGN hRegion) const
{
    const RECT rc = RowRect(nRow);
    const bool bSelected = nRow == m_nSelected;
    const bool bFocus = bSelected && ::GetFocus() == Handle();
    const RECT rcTitle{rc.left, rc.top, rc.right, SliderRect(nRow).top};
    const RECT rcValue{rc.left, rcTitle.bottom, rc.right, rc.bottom};
    if (bSelected) Fill(hdc, rc, ::GetSysColor(bFocus ? COLOR_HIGHLIGHT : COLOR_3DFACE));
    if (bSelected && !bFocus && IsHighContrast()) // where the two grounds may be the same
        ::FrameRect(hdc, &rc, ::GetSysColorBrush(COLOR_HIGHLIGHT));
    if (::RectInRegion(hRegion, &rcTitle)) PaintTitle(hdc, nRow, bFocus);
    if (::RectInRegion(hRegion, &rcValue)) PaintValue(hdc, nRow, bFocus);
}

// The first line: name and kind.
void CRowList::PaintTitle(HDC hdc, int nRow, bool bFocus) const
{
    const Row& row = m_rows[static_cast<std::size_t>(nRow)];
    const RECT rc = RowRect(nRow);
    RECT rcLine{rc.left + Scaled(MARGIN), rc.top + Scaled(MARGIN) / 2, rc.right - Scaled(MARGIN),
                rc.top + Scaled(MARGIN) / 2 + m_nLine};
    Write(hdc, row.name, rcLine, ::GetSysColor(bFocus ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT),
          DT_LEFT);
    rcLine.left = std::min(rcLine.left + Extent(hdc, row.name).cx + Scaled(MARGIN), rcLine.right);
    Write(hdc, row.kind, rcLine, ::GetSysColor(bFocus ? COLOR_HIGHLIGHTTEXT : COLOR_GRAYTEXT),
          DT_RIGHT);
}

// The second one: slider or colour, and value.
void CRowList::PaintValue(HDC hdc, int nRow, bool bFocus) const
{
    const Row& row = m_rows[static_cast<std::size_t>(nRow)];
    const RECT rcSlider = SliderRect(nRow);
    if (row.bSlider) PaintSlider(hdc, row, rcSlider, bFocus);
    RECT rcValue{row.bSlider ? rcSlider.right + Scaled(MARGIN) : rcSlider.left, rcSlider.top,
                 RowRect(nRow).right - Scaled(MARGIN), rcSlider.bottom};
    if (row.bColor) {
        const RECT rcColor{rcSlider.left, rcSlider.top + 1, rcSlider.left + Scaled(32),
                           rcSlider.bottom - 1};
        Fill(hdc, rcColor, row.clr);
        ::FrameRect(hdc, &rcColor, ::GetSysColorBrush(COLOR_GRAYTEXT));
        rcValue.left = rcColor.right + Scaled(MARGIN);
    }
    Write(hdc, row.text, rcValue, ::GetSysColor(bFocus ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT),
          row.bSlider ? DT_RIGHT : DT_LEFT);
}

void CRowList::PaintSlider(HDC hdc, const Row& row, const RECT& rc, bool bSelected) const
{
    const int nMiddle = (rc.top + rc.bottom) / 2;
    const int nHalf = Scaled(TRACK) / 2;
    const int nAt = rc.left + static_cast<int>((rc.right - rc.left) * row.fAt);
    const RECT rcTrack{rc.left, nMiddle - nHalf, rc.right, nMiddle + nHalf};
    const RECT rcDone{rc.left, nMiddle - nHalf, nAt, nMiddle + nHalf};
    const COLORREF clr = ::GetSysColor(bSelected ? COLOR_HIGHLIGHTTEXT : COLOR_HIGHLIGHT);
    Fill(hdc, rcTrack, ::GetSysColor(COLOR_3DSHADOW));
    Fill(hdc, rcDone, clr);
    const int nKnob = Scaled(KNOB) / 2;
    const HGDIOBJ hBrush = ::SelectObject(hdc, ::GetSysColorBrush(COLOR_3DFACE));
    HPEN hPen =
        ::CreatePen(PS_SOLID, Scaled(1), PlainOr(::GetSysColor(COLOR_3DDKSHADOW), COLOR_BTNTEXT));
    const HGDIOBJ hPrev = ::SelectObject(hdc, hPen);
    ::Rectangle(hdc, nAt - nKnob / 2, nMiddle - nKnob - 1, nAt + (nKnob + 1) / 2,
                nMiddle + nKnob + 1);
    ::SelectObject(hdc, hPrev);
    ::SelectObject(hdc, hBrush);
    ::DeleteObject(hPen);
}

} // namespace studio
