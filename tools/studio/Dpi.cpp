// The resolution; see the header.
#include "tools/studio/Dpi.h"

namespace studio {

namespace {

template <typename F>
F UserFunction(const char* pszName)
{
    return reinterpret_cast<F>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"user32.dll"), pszName)));
}

UINT SystemDpi()
{
    const HDC hdc = ::GetDC(nullptr);
    const int nDpi = ::GetDeviceCaps(hdc, LOGPIXELSX);
    ::ReleaseDC(nullptr, hdc);
    return nDpi > 0 ? static_cast<UINT>(nDpi) : UINT{PLAIN_DPI};
}

} // namespace

UINT DpiOf(HWND hWnd)
{
    static const auto s_pfnGet = UserFunction<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
    const UINT nDpi = s_pfnGet ? s_pfnGet(hWnd) : 0;
    return nDpi ? nDpi : SystemDpi();
}

HFONT MakeMessageFont(UINT nDpi)
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    LOGFONTW& font = metrics.lfMessageFont;
    font.lfHeight = ::MulDiv(font.lfHeight, static_cast<int>(nDpi), static_cast<int>(SystemDpi()));
    return ::CreateFontIndirectW(&font);
}

int LineHeight(HWND hWnd, HFONT hFont)
{
    const HDC hdc = ::GetDC(hWnd);
    const HGDIOBJ hPrev = ::SelectObject(hdc, hFont);
    TEXTMETRICW metric{};
    ::GetTextMetricsW(hdc, &metric);
    ::SelectObject(hdc, hPrev);
    ::ReleaseDC(hWnd, hdc);
    return metric.tmHeight;
}

} // namespace studio
