// What a device context shows of the figures that are drawn on it, for those who leave out what
// nobody would see.
#pragma once

#include <windows.h>

// A metafile is to hold the whole picture, whatever the clip.
bool IsSurface(HDC hdc);

// Whether a unit of the figures is a pixel, origins apart, and what is painted outside of the clip
// box is seen by nobody: no bounds are summed up.
bool HasPlainState(HDC hdc);

// Whether the device context only moves what lies in a rectangle, by how much. A 16-bit metafile
// does not tell.
bool IsMovedAlone(HDC hdc, const RECT& rc, POINT* pptOffset);

bool Covers(const RECT& rcOuter, const RECT& rc);

// The clip box, in the units of the figures. False where more than it may count: then all of every
// figure is to be drawn.
bool FindShown(HDC hdc, RECT* prcOut);
