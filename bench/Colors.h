// What the measurements of starts look for on the screen.
#pragma once

#include <windows.h>

constexpr COLORREF EMPTY_COLOR = RGB(200, 30, 60);
