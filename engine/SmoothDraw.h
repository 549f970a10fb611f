// Where a picture can be made smooth.
#pragma once

#include <windows.h>

// Whether what is painted in rc can be taken from the surface and put back to the pixel; the part
// of it that shows. Metafiles and printers have their own resolution.
bool CanBeSmooth(HDC hdc, const RECT& rc, RECT* prcShown);
