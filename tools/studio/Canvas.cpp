// The drawing in its window; see the header.
#include "tools/studio/Canvas.h"

#include "tools/studio/Dpi.h"
#include "tools/studio/Resource.h"
#include "tools/studio/Strings.h"
#include "tools/studio/SystemLook.h"

#include <cmath>
#include <cwchar>
#include <windowsx.h>

namespace studio {

namespace {

constexpr int SQUARE = 8;                  // of the chessboard, at 96 dots an inch
constexpr int KEY_STEP = 32;               // by which an arrow key moves the drawing
constexpr double WHEEL_ZOOM = 1.189207115; // four notches double it

class CRegion {
public:
    CRegion() : m_hRegion(::CreateRectRgn(0, 0, 0, 0)) {}
    ~CRegion() { ::DeleteObject(m_hRegion); }
    CRegion(const CRegion&) = delete;
    CRegion& operator=(const CRegion&) = delete;
    [[nodiscard]] HRGN Handle() const { return m_hRegion; }

private:
    HRGN m_hRegion;
};

double Milliseconds(const LARGE_INTEGER& from, const LARGE_INTEGER& to)
{
    LARGE_INTEGER frequency{};
    ::QueryPerformanceFrequency(&frequency);
    return static_cast<double>(to.QuadPart - from.QuadPart) * 1000 /
           static_cast<double>(frequency.QuadPart);
}

void Frame(HDC hdc, RECT rc, int nWidth, COLORREF clr)
{
    HBRUSH hBrush = ::CreateSolidBrush(clr);
    for (int n = 0; n < nWidth && rc.left < rc.right && rc.top < rc.bottom; ++n) {
        ::FrameRect(hdc, &rc, hBrush);
        ::InflateRect(&rc, -1, -1);
    }
    ::DeleteObject(hBrush);
}

} // namespace

int CCanvas::Create(HWND hParent, UINT nId, Events events)
{
    m_events = std::move(events);
    Looks looks{L"QELStudioCanvas"};
    looks.nStyle |= WS_TABSTOP;
    if (!Make(looks, hParent, nId)) return 0;
    ApplyGround();
    return 1;
}

void CCanvas::Show(HQELENGINE hEngine, CViewport* pView)
{
    EndMove();
    m_hEngine = hEngine;
    m_pView = hEngine ? pView : nullptr;
    m_hHovered = nullptr;
    m_hSelected = nullptr;
    m_marks.Clear();
    m_backing.SetEngine(m_hEngine);
    if (m_pView) PlaceDrawing();
    Refresh();
    Redraw();
}

void CCanvas::PlaceDrawing()
{
    const RECT rc = Client();
    SIZE size{};
    QELGetRefSize(m_hEngine, &size);
    m_pView->SetDpi(DpiOf(Handle()));
    m_pView->SetDrawing(size);
    m_pView->SetClient({rc.right, rc.bottom});
    m_backing.SetView(*m_pView, {rc.right, rc.bottom}, m_bSmooth);
}

void CCanvas::Refresh(DWORD nPassed)
{
    const CRegion changed;
    const CRegion painted;
    if (m_bUpdates) m_marks.Fade(nPassed, changed.Handle());
    if (m_pView) {
        const RECT rcWas = m_pView->Rect();
        PlaceDrawing(); // a turn changes the size
        const RECT rcIs = m_pView->Rect();
        if (!::EqualRect(&rcWas, &rcIs)) Redraw();
        LARGE_INTEGER from{};
        LARGE_INTEGER to{};
        ::QueryPerformanceCounter(&from);
        const bool bPainted = m_backing.Update(painted.Handle());
        ::QueryPerformanceCounter(&to);
        if (bPainted) {
            m_marks.Note(painted.Handle(), Milliseconds(from, to));
            RECT rcText = m_marks.TextRect();
            rcText.right += rcText.right - rcText.left; // the new text may be longer
            if (m_bUpdates) ::InvalidateRect(Handle(), &rcText, FALSE);
        }
    }
    ::InvalidateRgn(Handle(), painted.Handle(), FALSE);
    ::InvalidateRgn(Handle(), changed.Handle(), FALSE);
}

void CCanvas::SetSmooth(bool bSmooth)
{
    m_bSmooth = bSmooth;
    ViewChanged();
}

void CCanvas::SetGround(Ground ground)
{
    m_ground = ground;
    ApplyGround();
}

void CCanvas::ApplyGround()
{
    m_surround.Set(m_ground, Scaled(SQUARE));
    m_backing.SetGround(m_surround.Brush());
    Refresh();
    Redraw();
}

void CCanvas::SetUpdates(bool bShown)
{
    m_bUpdates = bShown;
    m_marks.Clear();
    Redraw();
}

void CCanvas::SetHint(std::wstring text)
{
    m_hint = std::move(text);
    Redraw();
}

void CCanvas::Select(HQELELEM hElem)
{
    RedrawElement(m_hSelected);
    m_hSelected = hElem;
    RedrawElement(m_hSelected);
}

// Moves the drawing as little as needed, and not at all when part of the element shows.
void CCanvas::BringIntoView(HQELELEM hElem)
{
    const RECT rc = OutlineOf(hElem);
    const RECT rcClient = Client();
    RECT rcSeen{};
    if (!m_pView || ::IsRectEmpty(&rc) || ::IntersectRect(&rcSeen, &rc, &rcClient)) return;
    m_pView->MoveBy((rcClient.right - rc.left - rc.right) / 2,
                    (rcClient.bottom - rc.top - rc.bottom) / 2);
    ViewChanged();
}

void CCanvas::ViewChanged()
{
    Refresh();
    Redraw();
}

void CCanvas::ShowFocus()
{
    m_bFocusShown = true;
    Redraw();
}

bool CCanvas::HasPointer(POINT* ptUnits) const
{
    if (!m_bPointer || !m_pView || m_pView->IsEmpty()) return false;
    const RECT rc = m_pView->Rect();
    SIZE size{};
    QELGetRefSize(m_hEngine, &size);
    const auto unit = [](LONG nAt, LONG nFrom, LONG nTo, LONG nUnits) {
        return static_cast<LONG>(
            std::floor(static_cast<double>(nAt - nFrom) * nUnits / (nTo - nFrom)));
    };
    *ptUnits = {unit(m_ptPointer.x, rc.left, rc.right, size.cx),
                unit(m_ptPointer.y, rc.top, rc.bottom, size.cy)};
    return true;
}

LRESULT CCanvas::OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    switch (nMessage) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        return 1; // all of it is painted
    case WM_SIZE:
        ViewChanged();
        if (m_events.view) m_events.view();
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        m_bSpace = m_bFocusShown = false;
        Redraw();
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS;
    default:
        break;
    }
    if (OnMouse(nMessage, wParam, lParam) || OnKey(nMessage, wParam)) return 0;
    return CWindow::OnMessage(nMessage, wParam, lParam);
}

bool CCanvas::OnMouse(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    switch (nMessage) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        OnButton(PointOf(lParam));
        return true;
    case WM_MBUTTONDOWN:
        BeginMove(PointOf(lParam));
        return true;
    case WM_LBUTTONUP:
    case WM_MBUTTONUP:
        EndMove();
        return true;
    case WM_CAPTURECHANGED:
        m_bMoving = false;
        SetPressed(false);
        return true;
    case WM_MOUSEMOVE:
        OnMove(PointOf(lParam));
        return true;
    case WM_MOUSELEAVE:
        OnLeave();
        return true;
    case WM_MOUSEWHEEL:
        OnWheel(GET_WHEEL_DELTA_WPARAM(wParam), PointOf(lParam));
        return true;
    case WM_SETCURSOR:
        if (LOWORD(lParam) != HTCLIENT) return false;
        SetCursorShape();
        return true;
    default:
        return false;
    }
}

bool CCanvas::OnKey(UINT nMessage, WPARAM wParam)
{
    if ((nMessage == WM_KEYDOWN || nMessage == WM_KEYUP) && wParam == VK_SPACE) {
        m_bSpace = nMessage == WM_KEYDOWN;
        SetCursorShape();
        return true;
    }
    if (nMessage != WM_KEYDOWN) return false;
    const int nStep = Scaled(KEY_STEP);
    switch (wParam) {
    case VK_LEFT:
        MoveByKeys(nStep, 0);
        return true;
    case VK_RIGHT:
        MoveByKeys(-nStep, 0);
        return true;
    case VK_UP:
        MoveByKeys(0, nStep);
        return true;
    case VK_DOWN:
        MoveByKeys(0, -nStep);
        return true;
    default:
        return false;
    }
}

void CCanvas::OnButton(POINT pt)
{
    ::SetFocus(Handle());
    if (m_bFocusShown) Redraw();
    m_bFocusShown = false;
    if (!m_hEngine) return;
    if (m_bSpace) return BeginMove(pt);
    const POINT ptEngine = m_backing.ToEngine(pt);
    if (m_events.select) m_events.select(QELElemFromPoint(m_hEngine, &ptEngine));
    ::SetCapture(Handle());
    SetPressed(true);
}

void CCanvas::BeginMove(POINT pt)
{
    if (!m_pView) return;
    m_ptPointer = pt;
    ::SetCapture(Handle());
    m_bMoving = true;
    SetCursorShape();
}

void CCanvas::EndMove()
{
    if (::GetCapture() == Handle()) ::ReleaseCapture();
    m_bMoving = false;
}

void CCanvas::SetPressed(bool bPressed)
{
    if (bPressed == m_bPressed) return;
    m_bPressed = bPressed;
    m_backing.SetPressed(bPressed);
    Refresh();
}

void CCanvas::SetCursorShape() const
{
    ::SetCursor(::LoadCursorW(nullptr, m_bMoving || m_bSpace ? IDC_SIZEALL : IDC_ARROW));
}

void CCanvas::OnMove(POINT pt)
{
    if (!m_bPointer) {
        TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, Handle(), 0};
        ::TrackMouseEvent(&track);
    }
    const POINT ptWas = m_ptPointer;
    m_ptPointer = pt;
    m_bPointer = true;
    if (m_bMoving && m_pView) {
        m_pView->MoveBy(pt.x - ptWas.x, pt.y - ptWas.y);
        Moved();
    }
    const POINT ptEngine = m_backing.ToEngine(pt);
    Hover(m_hEngine && !m_bMoving ? QELElemFromPoint(m_hEngine, &ptEngine) : nullptr);
    if (m_events.pointer) m_events.pointer();
}

void CCanvas::OnLeave()
{
    m_bPointer = false;
    Hover(nullptr);
    if (m_events.pointer) m_events.pointer();
}

void CCanvas::OnWheel(int nDelta, POINT ptScreen)
{
    if (!m_pView) return;
    POINT pt = ptScreen;
    ::ScreenToClient(Handle(), &pt);
    m_pView->ZoomAt(pt, std::pow(WHEEL_ZOOM, static_cast<double>(nDelta) / WHEEL_DELTA));
    Moved();
}

void CCanvas::MoveByKeys(int nX, int nY)
{
    if (!m_pView) return;
    m_pView->MoveBy(nX, nY);
    Moved();
}

void CCanvas::Moved()
{
    ViewChanged();
    ::UpdateWindow(Handle());
    if (m_events.view) m_events.view();
}

void CCanvas::Hover(HQELELEM hElem)
{
    if (hElem == m_hHovered) return;
    RedrawElement(m_hHovered);
    m_hHovered = hElem;
    RedrawElement(m_hHovered);
}

void CCanvas::Redraw() const
{
    ::InvalidateRect(Handle(), nullptr, FALSE);
}

RECT CCanvas::OutlineOf(HQELELEM hElem) const
{
    RECT rc{0, 0, 0, 0};
    if (!hElem || !m_hEngine || !QELGetElemDrawRect(m_hEngine, hElem, &rc)) return {0, 0, 0, 0};
    rc = m_backing.ToWindow(rc);
    ::InflateRect(&rc, Scaled(2), Scaled(2));
    return rc;
}

void CCanvas::RedrawElement(HQELELEM hElem) const
{
    const RECT rc = OutlineOf(hElem);
    ::InvalidateRect(Handle(), &rc, FALSE);
}

void CCanvas::Paint()
{
    PAINTSTRUCT paint{};
    const HDC hdc = ::BeginPaint(Handle(), &paint);
    const RECT rc = Client();
    const RECT& rcPaint = paint.rcPaint;
    if (m_frame.SetSize({rc.right, rc.bottom})) {
        HRGN hClip = ::CreateRectRgnIndirect(&rcPaint);
        ::SelectClipRgn(m_frame.Dc(), hClip);
        ::DeleteObject(hClip);
        Compose(m_frame.Dc());
        ::BitBlt(hdc, rcPaint.left, rcPaint.top, rcPaint.right - rcPaint.left,
                 rcPaint.bottom - rcPaint.top, m_frame.Dc(), rcPaint.left, rcPaint.top, SRCCOPY);
    }
    ::EndPaint(Handle(), &paint);
}

void CCanvas::Compose(HDC hdc)
{
    const RECT rc = Client();
    const RECT rcDrawing = m_pView ? m_pView->Rect() : RECT{0, 0, 0, 0};
    ::SetBrushOrgEx(hdc, rcDrawing.left, rcDrawing.top, nullptr); // the chessboard goes on
    ::FillRect(hdc, &rc, m_surround.Brush());
    if (!m_pView) return DrawHint(hdc);
    RECT rcFrame = rcDrawing;
    ::InflateRect(&rcFrame, 1, 1);
    Frame(hdc, rcFrame, 1, m_surround.FrameColor());
    m_backing.Show(hdc);
    const COLORREF clr = ::GetSysColor(COLOR_HIGHLIGHT);
    DrawOutline(hdc, m_hSelected, clr, Scaled(2));
    if (m_hHovered != m_hSelected) DrawOutline(hdc, m_hHovered, clr, Scaled(1));
    if (m_bUpdates) {
        wchar_t szTime[32];
        std::swprintf(szTime, 32, L"%.2f", m_marks.Milliseconds());
        m_marks.Draw(hdc, Text(IDS_UPDATE_TIME, {std::to_wstring(m_marks.Frames()), szTime}),
                     m_hFont, {Scaled(8), Scaled(8)});
    }
    if (m_bFocusShown) DrawFocus(hdc);
}

// Light within dark, so that it shows on any drawing.
void CCanvas::DrawOutline(HDC hdc, HQELELEM hElem, COLORREF clr, int nWidth)
{
    RECT rc = OutlineOf(hElem);
    if (::IsRectEmpty(&rc)) return;
    Frame(hdc, rc, nWidth, clr);
    ::InflateRect(&rc, -nWidth, -nWidth);
    Frame(hdc, rc, Scaled(1), PlainOr(RGB(0xFF, 0xFF, 0xFF), COLOR_HIGHLIGHTTEXT));
}

void CCanvas::DrawFocus(HDC hdc)
{
    const RECT rc = Client();
    Frame(hdc, rc, Scaled(1), ::GetSysColor(COLOR_HIGHLIGHT));
}

void CCanvas::DrawHint(HDC hdc)
{
    RECT rc = Client();
    const HGDIOBJ hPrev = ::SelectObject(hdc, m_hFont);
    ::SetBkMode(hdc, TRANSPARENT);
    ::SetTextColor(hdc, m_surround.TextColor());
    ::DrawTextW(hdc, m_hint.c_str(), -1, &rc, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    ::SelectObject(hdc, hPrev);
}

} // namespace studio
