// The pen that a device context holds, where it draws without gaps.
#pragma once

#include <windows.h>

#include <cstdint>

struct SolidPen {
    int32_t nWidth;
    COLORREF clr;
    bool bRound; // its ends and corners; else lines end at their points
};

bool FindSolidPen(HDC hdc, SolidPen* pOut);
