/*
 * A window with a live drawing in as little code as it takes: the engine paints onto the window
 * itself, and only what is not right any more. A click shows in the title what was hit.
 *
 *     window DRAWING ID MAX
 *
 * What bears the identifier ID swings between 0 and MAX. Built with MinGW, in this folder:
 *     i686-w64-mingw32-gcc window.c -I../../../include -L../../../build/i686/lib -lQELEngine -lgdi32 -mwindows -o window.exe
 */
#include "QELEngine.h"

#include <stdio.h>
#include <stdlib.h>

#define FRAME_TIME 40   /* milliseconds */
#define EASING_TIME 300 /* in which a needle moves to a new value */
#define VALUE_TIME 400  /* from one new value to the next */
#define STEPS 4         /* values from end to end */
#define USUAL_DPI 96

/* What older headers do not have: WM_DPICHANGED. */
#define MSG_DPI_CHANGED 0x02E0

static HQELENGINE g_hEngine;
static HFONT g_hFont;
static const char* g_pszId;
static double g_fMax;
static int g_nTime;
static int g_nStep;

/* Tells the window system what has changed, place by place. */
static void InvalidateDirty(HWND hwnd)
{
    HRGN hRegion = CreateRectRgn(0, 0, 0, 0);
    if (QELGetDirtyRegion(g_hEngine, hRegion)) InvalidateRgn(hwnd, hRegion, FALSE);
    DeleteObject(hRegion);
}

static void NextFrame(HWND hwnd)
{
    g_nTime += FRAME_TIME;
    if (g_nTime % VALUE_TIME == 0) {
        g_nStep = (g_nStep + 1) % (2 * STEPS);
        QELSetValue(g_hEngine, g_pszId, g_fMax * (STEPS - abs(STEPS - g_nStep)) / STEPS);
    }
    QELAdvance(g_hEngine, FRAME_TIME);
    InvalidateDirty(hwnd);
}

/* What the window system wants painted and the engine has not changed was uncovered: the picture is
 * lost there. To be asked before BeginPaint, which takes the wish back. */
static void InvalidateUncovered(HWND hwnd)
{
    HRGN hWanted = CreateRectRgn(0, 0, 0, 0);
    HRGN hDirty = CreateRectRgn(0, 0, 0, 0);
    RECT rc;
    GetUpdateRgn(hwnd, hWanted, FALSE);
    QELGetDirtyRegion(g_hEngine, hDirty);
    CombineRgn(hWanted, hWanted, hDirty, RGN_DIFF);
    if (GetRgnBox(hWanted, &rc) > NULLREGION) QELInvalidate(g_hEngine, &rc);
    DeleteObject(hDirty);
    DeleteObject(hWanted);
}

static void Paint(HWND hwnd)
{
    PAINTSTRUCT paint;
    HDC hdc;
    HGDIOBJ hPrev;
    InvalidateUncovered(hwnd);
    hdc = BeginPaint(hwnd, &paint);
    hPrev = SelectObject(hdc, g_hFont);
    QELUpdate(g_hEngine, hdc, GetSysColorBrush(COLOR_BTNFACE));
    SelectObject(hdc, hPrev);
    EndPaint(hwnd, &paint);
}

/* Lines, borders and hatches are to be as wide on every screen as on a usual one. */
static void SetResolution(int nDpi)
{
    QELSetPixelScale(g_hEngine, (DWORD)MulDiv(100, nDpi, USUAL_DPI));
}

/* Another screen, or the same one set anew: the system says what fits. */
static void MoveToScreen(HWND hwnd, int nDpi, const RECT* prc)
{
    SetResolution(nDpi);
    SetWindowPos(hwnd, NULL, prc->left, prc->top, prc->right - prc->left, prc->bottom - prc->top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    InvalidateDirty(hwnd);
}

/* The title tells what was hit, by its identifier. */
static void ShowId(HWND hwnd, int x, int y)
{
    char szId[QEL_TEXT_SIZE];
    POINT pt;
    pt.x = x;
    pt.y = y;
    if (QELIdFromPoint(g_hEngine, &pt, szId, sizeof szId)) SetWindowTextA(hwnd, szId);
}

static LRESULT CALLBACK WindowProc(HWND hwnd, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    RECT rc;
    switch (nMessage) {
    case WM_CREATE:
        SetTimer(hwnd, 1, FRAME_TIME, NULL);
        return 0;
    case WM_SIZE:
        GetClientRect(hwnd, &rc);
        QELSetQELRect(g_hEngine, &rc);
        InvalidateDirty(hwnd);
        return 0;
    case MSG_DPI_CHANGED:
        MoveToScreen(hwnd, LOWORD(wParam), (const RECT*)lParam);
        return 0;
    case WM_TIMER:
        NextFrame(hwnd);
        return 0;
    case WM_LBUTTONDOWN:
        ShowId(hwnd, LOWORD(lParam), HIWORD(lParam)); /* never negative without a capture */
        return 0;
    case WM_ERASEBKGND:
        return 1; /* QELUpdate fills the background where it paints */
    case WM_PAINT:
        Paint(hwnd);
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcA(hwnd, nMessage, wParam, lParam);
    }
}

/* The drawing is lines: it wants the real pixels of every screen, not a stretched picture. Systems
 * older than Windows 10 know one resolution for all screens, and not the newer function. */
static void AskForRealPixels(void)
{
    typedef BOOL(WINAPI * SETCONTEXT)(HANDLE);
    HMODULE hUser = GetModuleHandleA("user32.dll");
    SETCONTEXT pfnSet =
        (SETCONTEXT)(void (*)(void))GetProcAddress(hUser, "SetProcessDpiAwarenessContext");
    if (!pfnSet || !pfnSet((HANDLE)(LONG_PTR)-4)) /* each screen for itself */
        SetProcessDPIAware();
}

static int Dpi(void) /* of the main screen */
{
    HDC hdc = GetDC(NULL);
    int nDpi = GetDeviceCaps(hdc, LOGPIXELSX);
    ReleaseDC(NULL, hdc);
    return nDpi;
}

static int Show(const char* pszTitle)
{
    WNDCLASSA windowClass = {0};
    SIZE size = {0, 0};
    RECT rc = {0, 0, 0, 0};
    MSG message;
    windowClass.lpfnWndProc = WindowProc;
    windowClass.hInstance = GetModuleHandleA(NULL);
    windowClass.hCursor = LoadCursor(NULL, IDC_ARROW);
    windowClass.lpszClassName = "LiveDrawing";
    RegisterClassA(&windowClass);
    QELGetRefSize(g_hEngine, &size);
    rc.right = MulDiv(size.cx, Dpi(), USUAL_DPI);
    rc.bottom = MulDiv(size.cy, Dpi(), USUAL_DPI);
    SetResolution(Dpi());
    AdjustWindowRect(&rc, WS_OVERLAPPEDWINDOW, FALSE);
    if (!CreateWindowA("LiveDrawing", pszTitle, WS_OVERLAPPEDWINDOW | WS_VISIBLE, CW_USEDEFAULT,
                       CW_USEDEFAULT, rc.right - rc.left, rc.bottom - rc.top, NULL, NULL,
                       windowClass.hInstance, NULL))
        return 1;
    while (GetMessageA(&message, NULL, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return 0;
}

int main(int argc, char** argv)
{
    int nResult = 1;
    if (argc < 4) {
        fprintf(stderr, "window DRAWING ID MAX\n");
        return 2;
    }
    AskForRealPixels();
    g_pszId = argv[2];
    g_fMax = atof(argv[3]);
    g_hFont = CreateFontA(16, 0, 0, 0, 0, 0, 0, 0, DEFAULT_CHARSET, 0, 0, CLEARTYPE_QUALITY, 0,
                          "Courier New");
    g_hEngine = CreateQELEngine();
    if (!QELOpenFile(g_hEngine, argv[1]))
        fprintf(stderr, "window: %s cannot be opened\n", argv[1]);
    else if (!QELSetValue(g_hEngine, g_pszId, 0.0))
        fprintf(stderr, "window: nothing in the drawing takes a value for %s\n", g_pszId);
    else {
        QELSetEasing(g_hEngine, g_pszId, EASING_TIME);
        nResult = Show(argv[1]);
    }
    DestroyQELEngine(g_hEngine);
    DeleteObject(g_hFont);
    return nResult;
}
