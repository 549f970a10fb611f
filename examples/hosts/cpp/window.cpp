// A window with a live drawing, without flicker: its values swing between the ends of their scales.
// A click shows in the title what was hit.
//
//     window DRAWING [ID [FRAMES]]
//
// With ID only what bears this identifier swings, with FRAMES it stands still after so many frames.
// Built with MinGW, in this folder:
//     i686-w64-mingw32-g++ -std=c++17 window.cpp -I../../../include -L../../../build/i686/lib -lQELEngine -lgdi32 -mwindows -static -o window.exe
#include "QELEngine.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr UINT FRAME_TIME = 40;     // milliseconds
constexpr DWORD EASING_TIME = 300;  // in which a needle moves to a new value
constexpr int FRAMES_A_VALUE = 10;  // from one new value to the next
constexpr double STEP = 0.25;       // of the way through the scale from value to value
constexpr double TEXT_RANGE = 99.0; // a text alone has no scale
constexpr int USUAL_DPI = 96;
constexpr UINT MSG_DPI_CHANGED = 0x02E0; // WM_DPICHANGED, which older headers do not have

// A bitmap in memory that keeps what was drawn last. The window shows nothing but copies of it, so
// nobody ever sees a half-drawn picture.
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

    // A new bitmap that fits the window. It is empty, which the engine cannot know.
    void Resize(HWND hwnd, HQELENGINE hEngine, SIZE size)
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
        const RECT rc{0, 0, size.cx, size.cy};
        QELSetQELRect(hEngine, &rc);
        QELInvalidate(hEngine, nullptr);
    }

    // Paints what is not right any more, and nothing else.
    void Update(HQELENGINE hEngine)
    {
        QELUpdate(hEngine, m_hdc, ::GetSysColorBrush(COLOR_BTNFACE));
    }
    void CopyTo(HDC hdc, const RECT& rc) const
    {
        ::BitBlt(hdc, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top, m_hdc, rc.left,
                 rc.top, SRCCOPY);
    }

private:
    HDC m_hdc;
    HFONT m_hFont = nullptr;
    HBITMAP m_hBitmap = nullptr;
    HGDIOBJ m_hPrevFont = nullptr;
    HGDIOBJ m_hPrevBitmap = nullptr;
};

// What swings, by its identifier.
struct LiveValue {
    std::string id;
    double fMin = 0.0;
    double fMax = 1.5; // of a lamp, whose number is truncated: off, and on near the end
};

HQELENGINE g_hEngine = nullptr;
CPicture* g_pPicture = nullptr;
std::vector<LiveValue> g_values;
int g_nFrames = -1; // still to be shown; negative: for ever
int g_nFrame = 0;
double g_fPlace = 0.0; // from 0 to 1
double g_fStep = STEP;

// A meter or scale tells the ends of its scale.
LiveValue MakeValue(const char* pszId, int nType)
{
    LiveValue value{pszId};
    if (nType == QEL_TYPE_TEXT) value.fMax = TEXT_RANGE;
    if (QELGetSelector(g_hEngine, pszId, QEL_SEL_MAX, &value.fMax))
        QELGetSelector(g_hEngine, pszId, QEL_SEL_MIN, &value.fMin);
    return value;
}

// All identifiers of the drawing that take a value, or the one that is asked for.
void FindValues(const char* pszOnly)
{
    char szId[QEL_TEXT_SIZE];
    int nType = QEL_TYPE_NONE;
    for (DWORD n = 0; QELGetLiveId(g_hEngine, n, szId, sizeof szId, &nType); ++n) {
        if (pszOnly && std::string(pszOnly) != szId) continue;
        const LiveValue value = MakeValue(szId, nType);
        if (!QELSetValue(g_hEngine, szId, value.fMin)) continue;
        QELSetEasing(g_hEngine, szId, EASING_TIME);
        g_values.push_back(value);
    }
}

void SetValues()
{
    if (g_fPlace + g_fStep < 0.0 || g_fPlace + g_fStep > 1.0) g_fStep = -g_fStep;
    g_fPlace += g_fStep;
    for (const LiveValue& value : g_values)
        QELSetValue(g_hEngine, value.id.c_str(), value.fMin + (value.fMax - value.fMin) * g_fPlace);
}

// Tells the window system what has changed, place by place.
void InvalidateDirty(HWND hwnd)
{
    const HRGN hRegion = ::CreateRectRgn(0, 0, 0, 0);
    if (QELGetDirtyRegion(g_hEngine, hRegion))
        ::InvalidateRgn(hwnd, hRegion, FALSE); // FALSE: nothing is erased
    ::DeleteObject(hRegion);
}

void NextFrame(HWND hwnd)
{
    if (g_nFrames != 0 && ++g_nFrame % FRAMES_A_VALUE == 0) SetValues();
    const int nMoving = QELAdvance(g_hEngine, FRAME_TIME);
    InvalidateDirty(hwnd);
    if (g_nFrames > 0) --g_nFrames;
    if (g_nFrames == 0 && nMoving == 0) ::KillTimer(hwnd, 1);
}

// The title tells what was hit, by its identifier.
void ShowId(HWND hwnd, POINT pt)
{
    char szId[QEL_TEXT_SIZE];
    if (QELIdFromPoint(g_hEngine, &pt, szId, sizeof szId)) ::SetWindowTextA(hwnd, szId);
}

// Lines, borders and hatches are to be as wide on every screen as on a usual one.
void SetResolution(int nDpi)
{
    QELSetPixelScale(g_hEngine, static_cast<DWORD>(::MulDiv(100, nDpi, USUAL_DPI)));
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
        g_pPicture->Resize(hwnd, g_hEngine, {LOWORD(lParam), HIWORD(lParam)});
        ::InvalidateRect(hwnd, nullptr, FALSE);
        return 0;
    case MSG_DPI_CHANGED: // another screen, or the same one set anew: the system says what fits
        SetResolution(LOWORD(wParam));
        MoveTo(hwnd, *reinterpret_cast<const RECT*>(lParam));
        InvalidateDirty(hwnd);
        return 0;
    case WM_TIMER:
        NextFrame(hwnd);
        return 0;
    case WM_LBUTTONDOWN:
        ShowId(hwnd, {LOWORD(lParam), HIWORD(lParam)}); // never negative without a capture
        return 0;
    case WM_ERASEBKGND:
        return 1; // erasing first is what flickers
    case WM_PAINT: {
        PAINTSTRUCT paint;
        const HDC hdc = ::BeginPaint(hwnd, &paint);
        g_pPicture->Update(g_hEngine);
        g_pPicture->CopyTo(hdc, paint.rcPaint);
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
    SetResolution(nDpi);
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
int Show(const char* pszPath, const char* pszId)
{
    if (!QELOpenFile(g_hEngine, pszPath)) {
        std::fprintf(stderr, "window: %s cannot be opened\n", pszPath);
        return 1;
    }
    FindValues(pszId);

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
        std::fprintf(stderr, "window DRAWING [ID [FRAMES]]\n");
        return 2;
    }
    if (argc > 3) g_nFrames = std::atoi(argv[3]);
    AskForRealPixels();
    g_hEngine = CreateQELEngine();
    const int nResult = Show(argv[1], argc > 2 ? argv[2] : nullptr);
    DestroyQELEngine(g_hEngine);
    return nResult;
}
