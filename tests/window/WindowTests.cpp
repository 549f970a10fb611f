// Updates onto a real window, with the context that BeginPaint gives: what it lets through leaves
// the dirty area, and the picture on the screen is that of a full draw.
#include "tests/support/Host.h"
#include "tests/support/Screen.h"

namespace {

constexpr int SIDE = 160;
constexpr int LEFT = 40;
constexpr int TOP = 30;

const char* const g_pszPanel =
    "<rect style='0x1' dr='14' fg='0x404448' bg='0xf0f4f8' lnwid='0' crd='0 0 160 160'/>"
    "<status id='lamp' stx='1'><rect style='0x1' lnwid='0' bg='0xFF00' crd='20 20 60 60'/></status>"
    "<meter id='dial' upin='1' mtype='roundUpgrade' crd='110 100 40 64 54 156 146'>"
    "<circle style='0x1' lnwid='0' crd='110 100 44'/></meter>"
    "<line clr='0x202020' lnwid='2' crd='0 150 160 4'/>";

std::string Text(const RECT& rc)
{
    return std::to_string(rc.left) + "," + std::to_string(rc.top) + "," + std::to_string(rc.right) +
           "," + std::to_string(rc.bottom);
}

// Deals with all that waits, so that the window system is where it says it is.
void Pump()
{
    MSG msg{};
    for (int n = 0; n < 10; ++n) {
        while (::PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageA(&msg);
        ::Sleep(10);
    }
}

class CWindow {
public:
    CWindow(DWORD nStyle, const RECT& rc, HWND hParent = nullptr)
    {
        static const ATOM s_nClass = [] {
            WNDCLASSA wc{};
            wc.lpfnWndProc = WindowProc;
            wc.hInstance = ::GetModuleHandleA(nullptr);
            wc.lpszClassName = "UpdatedWindow";
            return ::RegisterClassA(&wc);
        }();
        EXPECT_NE(0, s_nClass);
        m_hWnd = ::CreateWindowExA(0, "UpdatedWindow", "", nStyle, rc.left, rc.top,
                                   rc.right - rc.left, rc.bottom - rc.top, hParent, nullptr,
                                   ::GetModuleHandleA(nullptr), this);
        EXPECT_NE(nullptr, m_hWnd);
    }
    virtual ~CWindow() { ::DestroyWindow(m_hWnd); }
    CWindow(const CWindow&) = delete;
    CWindow& operator=(const CWindow&) = delete;
    HWND Handle() const { return m_hWnd; }

private:
    virtual void Paint(HDC) {}
    static LRESULT CALLBACK WindowProc(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam)
    {
        if (nMessage == WM_NCCREATE)
            ::SetWindowLongPtrA(
                hWnd, GWLP_USERDATA,
                reinterpret_cast<LONG_PTR>(
                    reinterpret_cast<const CREATESTRUCTA*>(lParam)->lpCreateParams));
        auto* pThis = reinterpret_cast<CWindow*>(::GetWindowLongPtrA(hWnd, GWLP_USERDATA));
        if (nMessage != WM_PAINT || !pThis) return ::DefWindowProcA(hWnd, nMessage, wParam, lParam);
        PAINTSTRUCT paint{};
        pThis->Paint(::BeginPaint(hWnd, &paint));
        ::EndPaint(hWnd, &paint);
        return 0;
    }

    HWND m_hWnd;
};

class CPanel final : public CWindow {
public:
    explicit CPanel(DWORD nMore = 0, const RECT& rc = {LEFT, TOP, LEFT + SIDE, TOP + SIDE})
        : CWindow(WS_POPUP | nMore, rc), m_host(g_pszPanel, SIDE), m_ground(SCREEN_GROUND),
          m_full(SIDE, SIDE, SCREEN_GROUND)
    {
        ::ShowWindow(Handle(), SW_SHOWNOACTIVATE);
        ::InvalidateRect(Handle(), nullptr, FALSE);
        Pump();
    }
    operator HQELENGINE() const { return m_host; }
    int Updates() const { return m_nUpdates; }
    // Tells the window system, and lets it ask for what is to be painted.
    void InvalidateDirty() const
    {
        const CTestRegion dirty;
        if (QELGetDirtyRegion(m_host, dirty)) ::InvalidateRgn(Handle(), dirty, FALSE);
        ::UpdateWindow(Handle());
    }
    void InvalidatePart(const RECT& rc) const
    {
        ::InvalidateRect(Handle(), &rc, FALSE);
        ::UpdateWindow(Handle());
    }
    RECT Dirty() const
    {
        RECT rc{-1, -1, -1, -1};
        QELGetDirtyRect(m_host, &rc);
        return rc;
    }
    // "" when what stands in the window, within nSide, is a full draw.
    std::string Wrong(int nSide = SIDE)
    {
        const CTestBitmap shown(nSide, nSide, SCREEN_GROUND);
        const CTestBitmap full(nSide, nSide, SCREEN_GROUND);
        const HDC hdc = ::GetDC(Handle());
        EXPECT_TRUE(::BitBlt(shown.Dc(), 0, 0, nSide, nSide, hdc, 0, 0, SRCCOPY));
        ::ReleaseDC(Handle(), hdc);
        for (int n = 0; n < 2; ++n) { // a read-out's colour comes one draw later
            m_full.Fill(SCREEN_GROUND);
            m_host.Draw(m_full.Dc());
        }
        ::BitBlt(full.Dc(), 0, 0, nSide, nSide, m_full.Dc(), 0, 0, SRCCOPY);
        EXPECT_FALSE(IsBlank(full));
        return FirstDifference(full, shown);
    }

private:
    void Paint(HDC hdc) override { m_nUpdates += QELUpdate(m_host, hdc, m_ground); }

    CTextHost m_host;
    CTestBrush m_ground;
    CTestBitmap m_full;
    int m_nUpdates = 0;
};

} // namespace

TEST(Window, TheFirstPaintShowsAllOfTheDrawing)
{
    CPanel panel;
    EXPECT_EQ(1, panel.Updates());
    EXPECT_EQ("0,0,0,0", Text(panel.Dirty()));
    EXPECT_EQ("", panel.Wrong());
}

TEST(Window, WhatHasChangedIsPaintedAndLeavesTheArea)
{
    CPanel panel;
    EXPECT_EQ(1, QELSetValue(panel, "lamp", 1));
    EXPECT_EQ(1, QELSetValue(panel, "dial", 7));
    EXPECT_NE("", panel.Wrong());
    panel.InvalidateDirty();
    EXPECT_EQ(2, panel.Updates());
    EXPECT_EQ("0,0,0,0", Text(panel.Dirty()));
    EXPECT_EQ("", panel.Wrong());
}

TEST(Window, OnlyThePartThatTheSystemWantsLeavesTheArea)
{
    CPanel panel;
    EXPECT_EQ(1, QELSetValue(panel, "lamp", 1));
    panel.InvalidatePart({0, 0, 35, SIDE});
    EXPECT_EQ("35,20,60,60", Text(panel.Dirty()));
    EXPECT_NE("", panel.Wrong());
    panel.InvalidateDirty();
    EXPECT_EQ("0,0,0,0", Text(panel.Dirty()));
    EXPECT_EQ("", panel.Wrong());
}

TEST(Window, WhatAChildCoversStaysDirtyUntilItIsShown)
{
    CPanel panel(WS_CLIPCHILDREN);
    {
        const CWindow child(WS_CHILD | WS_VISIBLE, {0, 0, 35, SIDE}, panel.Handle());
        Pump();
        EXPECT_EQ(1, QELSetValue(panel, "lamp", 1));
        panel.InvalidateDirty();
        EXPECT_EQ("20,20,35,60", Text(panel.Dirty()));
    }
    // What the child leaves behind is of no picture: the host adds what was uncovered.
    const RECT rc{0, 0, 35, SIDE};
    EXPECT_EQ(1, QELInvalidate(panel, &rc));
    panel.InvalidateDirty();
    EXPECT_EQ("0,0,0,0", Text(panel.Dirty()));
    EXPECT_EQ("", panel.Wrong());
}

TEST(Window, WhatIsBeyondTheWindowIsNobodysToPaint)
{
    CPanel panel(0, {LEFT, TOP, LEFT + 40, TOP + 40});
    EXPECT_EQ("0,0,0,0", Text(panel.Dirty()));
    EXPECT_EQ("", panel.Wrong(40));
    EXPECT_EQ(1, QELSetValue(panel, "lamp", 1));
    panel.InvalidateDirty();
    EXPECT_EQ("0,0,0,0", Text(panel.Dirty()));
    EXPECT_EQ("", panel.Wrong(40));
}

TEST(Window, ADrawingMovesWithItsRectangleInTheWindow)
{
    CPanel panel;
    const RECT rcSmall{10, 20, 110, 120}, rcWhole{0, 0, SIDE, SIDE};
    EXPECT_EQ(1, QELSetValue(panel, "dial", 5));
    EXPECT_EQ(1, QELSetQELRect(panel, &rcSmall));
    panel.InvalidateDirty();
    EXPECT_EQ("0,0,0,0", Text(panel.Dirty()));
    EXPECT_EQ("", panel.Wrong());
    EXPECT_EQ(1, QELSetQELRect(panel, &rcWhole));
    panel.InvalidateDirty();
    EXPECT_EQ("", panel.Wrong());
}
