// The floor of the Studio's start: a program that shows an empty window as large, in one colour.
#include "bench/Colors.h"

#include <windows.h>

namespace {

LRESULT CALLBACK OnMessage(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    if (nMessage == WM_DESTROY) ::PostQuitMessage(0);
    return ::DefWindowProcW(hWnd, nMessage, wParam, lParam);
}

} // namespace

int WINAPI wWinMain(HINSTANCE hInstance, HINSTANCE, LPWSTR, int)
{
    WNDCLASSW wc{};
    wc.lpfnWndProc = OnMessage;
    wc.hInstance = hInstance;
    wc.hbrBackground = ::CreateSolidBrush(EMPTY_COLOR);
    wc.lpszClassName = L"QELBenchEmpty";
    ::RegisterClassW(&wc);
    ::CreateWindowExW(0, wc.lpszClassName, L"empty", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                      CW_USEDEFAULT, CW_USEDEFAULT, 1200, 760, nullptr, nullptr, hInstance,
                      nullptr);
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);
    return 0;
}
