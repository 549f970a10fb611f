// A window with a live drawing, without flicker: a meter swings between the ends of its scale.
//
//     window DRAWING [METER-ID [FRAMES]]
//
// With FRAMES it stands still after so many steps. Built with MinGW, in this folder:
//     i686-w64-mingw32-g++ -std=c++17 window.cpp -I../../../include -L../../../build/i686/lib -lQELEngine -lgdi32 -mwindows -static -o window.exe
#include "QELEngine.h"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int MAX_VALUE = 100;
constexpr int STEP = 2;         // of the value from frame to frame
constexpr UINT FRAME_TIME = 40; // milliseconds
constexpr int USUAL_DPI = 96;
constexpr UINT MSG_DPI_CHANGED = 0x02E0; // WM_DPICHANGED, which older headers do not have

// A bitmap in memory that keeps what was drawn last. The window shows nothing but copies of it, so
// nobody ever sees a half-drawn picture, and the engine can draw its moving parts over it.
class CPicture {
public:
    CPicture() : m_hdc(::CreateCompatibleDC(nullptr))
    {
        LOGFONTA font{};
        font.lfHeight = 16; // texts take the face only
        font.lfCharSet = DEFAULT_CHARSET;
        font.lfQuality = CLEARTYPE_QUALITY; // two colours lose strokes in small sizes
        std::snprintf(font.lfFaceName, sizeof font.lfFaceName, "%s", "Courier New");
        m_hFont = ::CreateFontIndirectA(&font);
        m_hPrevFont = ::SelectObject(m_hdc, m_hFont);
    }
    ~CPicture()
    {
        ::SelectObject(m_hdc, m_hPrevFont);
        ::DeleteObject(m_hFont);
        if (m_hBitmap) ::DeleteObject(::SelectObject(m_hdc, m_hPrevBitmap));
        ::DeleteDC(m_hdc);
    }
    CPicture(const CPicture&) = delete;
    CPicture& operator=(const CPicture&) = delete;

    // A new bitmap that fits the window. It has to be drawn fully before it is shown.
    void Resize(HWND hwnd, SIZE size)
    {
        const HDC hdcWindow = ::GetDC(hwnd);
        const HBITMAP hBitmap = ::CreateCompatibleBitmap(hdcWindow, size.cx, size.cy);
        ::ReleaseDC(hwnd, hdcWindow);
        const HGDIOBJ hPrev = ::SelectObject(m_hdc, hBitmap);
        if (m_hBitmap)
            ::DeleteObject(hPrev);
        else
            m_hPrevBitmap = hPrev;
        m_hBitmap = hBitmap;
        m_rc = {0, 0, size.cx, size.cy};
    }

    void DrawWhole(HQELENGINE hEngine)
    {
        QELSetQELRect(hEngine, &m_rc);
        ::FillRect(m_hdc, &m_rc, ::GetSysColorBrush(COLOR_BTNFACE));
        QELDraw(hEngine, m_hdc, &m_rc, QEL_DRAW_FULL);
    }
    void DrawMoving(HQELENGINE hEngine) { QELDraw(hEngine, m_hdc, &m_rc, 0); }
    void CopyTo(HDC hdc) const
    {
        ::BitBlt(hdc, 0, 0, m_rc.right, m_rc.bottom, m_hdc, 0, 0, SRCCOPY);
    }

private:
    HDC m_hdc;
    HFONT m_hFont = nullptr;
    HBITMAP m_hBitmap = nullptr;
    HGDIOBJ m_hPrevFont = nullptr;
    HGDIOBJ m_hPrevBitmap = nullptr;
    RECT m_rc{};
};

HQELENGINE g_hEngine = nullptr;
CPicture* g_pPicture = nullptr;
DWORD g_nMeter = 0;
int g_nFrames = -1; // still to be shown; negative: for ever
int g_nValue = 0;
int g_nStep = STEP;

void NextFrame(HWND hwnd)
{
    if (g_nValue + g_nStep < 0 || g_nValue + g_nStep > MAX_VALUE) g_nStep = -g_nStep;
    g_nValue += g_nStep;
    QELSetScaleStatus(g_hEngine, g_nMeter, static_cast<DWORD>(g_nValue));
    g_pPicture->DrawMoving(g_hEngine);
    ::InvalidateRect(hwnd, nullptr, FALSE); // FALSE: nothing is erased
    if (g_nFrames > 0 && --g_nFrames == 0) ::KillTimer(hwnd, 1);
}

void MoveTo(HWND hwnd, const RECT& rc)
{
    ::SetWindowPos(hwnd, nullptr, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top,
                   SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT CALLBACK WindowProc(HWND hwnd, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    switch (nMessage) {
    case WM_CREATE:
        ::SetTimer(hwnd, 1, FRAME_TIME, nullptr);
        return 0;
    case WM_SIZE:
        if (wParam == SIZE_MINIMIZED) return 0; // there is nothing to draw
        g_pPicture->Resize(hwnd, {LOWORD(lParam), HIWORD(lParam)});
        g_pPicture->DrawWhole(g_hEngine);
        ::InvalidateRect(hwnd, nullptr, FALSE);
        return 0;
    case MSG_DPI_CHANGED: // another screen, or the same one set anew: the system says what fits
        MoveTo(hwnd, *reinterpret_cast<const RECT*>(lParam));
        return 0;
    case WM_TIMER:
        NextFrame(hwnd);
        return 0;
    case WM_ERASEBKGND:
        return 1; // erasing first is what flickers
    case WM_PAINT: {
        PAINTSTRUCT paint;
        g_pPicture->CopyTo(::BeginPaint(hwnd, &paint));
        ::EndPaint(hwnd, &paint);
        return 0;
    }
    case WM_DESTROY:
        ::PostQuitMessage(0);
        return 0;
    default:
        return ::DefWindowProcA(hwnd, nMessage, wParam, lParam);
    }
}

// A window whose inside has the drawing's reference size, in the units of the screen.
HWND OpenWindow(const char* pszTitle)
{
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = WindowProc;
    windowClass.hInstance = ::GetModuleHandleA(nullptr);
    windowClass.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    windowClass.lpszClassName = "LiveDrawing";
    ::RegisterClassA(&windowClass);

    SIZE size{};
    QELGetRefSize(g_hEngine, &size);
    const HDC hdcScreen = ::GetDC(nullptr);
    const int nDpi = ::GetDeviceCaps(hdcScreen, LOGPIXELSX); // of the main screen
    ::ReleaseDC(nullptr, hdcScreen);
    RECT rc{0, 0, ::MulDiv(size.cx, nDpi, USUAL_DPI), ::MulDiv(size.cy, nDpi, USUAL_DPI)};
    ::AdjustWindowRect(&rc, WS_OVERLAPPEDWINDOW, FALSE);
    return ::CreateWindowA("LiveDrawing", pszTitle, WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                           CW_USEDEFAULT, rc.right - rc.left, rc.bottom - rc.top, nullptr, nullptr,
                           windowClass.hInstance, nullptr);
}

// The drawing is lines: it wants the real pixels of every screen, not a stretched picture. Systems
// older than Windows 10 know one resolution for all screens, and not the newer function.
void AskForRealPixels()
{
    using SETCONTEXT = BOOL(WINAPI*)(HANDLE);
    const auto nPerMonitorV2 = static_cast<LONG_PTR>(-4); // and -3 the form before it
    const auto pfnSet = reinterpret_cast<SETCONTEXT>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleA("user32.dll"), "SetProcessDpiAwarenessContext")));
    for (LONG_PTR nContext = nPerMonitorV2; pfnSet && nContext <= nPerMonitorV2 + 1; ++nContext)
        if (pfnSet(reinterpret_cast<HANDLE>(nContext))) return;
    ::SetProcessDPIAware();
}

// The engine closes in main, after the window: the window draws as long as it lives.
int Show(const char* pszPath)
{
    if (!QELOpenFile(g_hEngine, pszPath)) {
        std::fprintf(stderr, "window: %s cannot be opened\n", pszPath);
        return 1;
    }
    QELSetScaleParam(g_hEngine, g_nMeter, QEL_SEL_MAX, MAX_VALUE);
    QELSetScaleParam(g_hEngine, g_nMeter, QEL_SEL_SCALE_END, MAX_VALUE);
    QELSetScaleStatus(g_hEngine, g_nMeter, 0);

    CPicture picture;
    g_pPicture = &picture;
    const HWND hwnd = OpenWindow(pszPath);
    if (!hwnd) return 1;
    ::ShowWindow(hwnd, SW_SHOWNORMAL);
    MSG message;
    while (::GetMessageA(&message, nullptr, 0, 0) > 0) {
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fprintf(stderr, "window DRAWING [METER-ID [FRAMES]]\n");
        return 2;
    }
    if (argc > 2) g_nMeter = std::strtoul(argv[2], nullptr, 10);
    if (argc > 3) g_nFrames = std::atoi(argv[3]);
    AskForRealPixels();
    g_hEngine = CreateQELEngine();
    const int nResult = Show(argv[1]);
    DestroyQELEngine(g_hEngine);
    return nResult;
}
