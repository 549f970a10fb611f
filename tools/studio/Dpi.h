// The resolution of the monitor that a window is on, and what of the system goes by it.
#pragma once

#include <windows.h>

namespace studio {

constexpr int PLAIN_DPI = 96; // at which a pixel of a drawing is one of the screen

// Systems before Windows 10 have one resolution for all monitors.
UINT DpiOf(HWND hWnd);

// The system's message font at a resolution; the caller deletes it.
HFONT MakeMessageFont(UINT nDpi);

// How tall a line of a font is.
int LineHeight(HWND hWnd, HFONT hFont);

} // namespace studio
