// From drawing units to device pixels: the anchored mapping with its keep modes, plain stretching,
// the pressed shift, and keeping figures inside the drawing.
#pragma once

#include "base/Keywords.h"
#include "base/QelRect.h"
#include "base/Rects.h"
#include "base/WrapMath.h"
#include "include/QELEngine.h"

constexpr int32_t PRESSED_SHIFT = 2; // pixels right and down

// The keep keywords, by the group of flag bits that they belong to.
extern const KeywordRow g_keepAnchors[];
extern const KeywordRow g_keepAlong[];
extern const KeywordRow g_keepAway[];

// The anchor of a flags word: one of the five anchor bits, or 0 for stretching when there is none
// or more than one.
uint32_t AnchorOf(uint32_t nFlags);

// Maps a rectangle of the drawing (rcElem, reference size nRefW by nRefH) into the QEL rect by the
// keep modes in nKeep, and clips it to the QEL rect. Result: 0 with an empty rectangle when the QEL
// rect, the reference size or rcElem is empty; else 1, also for what lies outside and comes out
// empty.
int MapRect(const QelRect& rcQel, int32_t nRefW, int32_t nRefH, const RECT& rcElem, RECT* prcOut,
            uint32_t nKeep);

// The same before it is clipped, and without samples.
int PlaceRect(const QelRect& rcQel, int32_t nRefW, int32_t nRefH, const RECT& rcElem, RECT* prcOut,
              uint32_t nKeep);

// Moves a mapped rectangle for a pressed element: left and top always, right and bottom only where
// they stay inside the QEL rect.
void ShiftPressed(RECT* prc, const QelRect& rcQel);

// One coordinate stretched: nPos * nExtent / nRef + nOrigin.
constexpr int32_t Stretch(int32_t nPos, int32_t nExtent, int32_t nRef, int32_t nOrigin)
{
    return WrapAdd(WrapMulDiv(nPos, nExtent, nRef), nOrigin);
}

// How far a span slides to lie inside 0..nRef: first up to 0, then back from nRef. What is longer
// than nRef has its low end at 0.
int32_t SlideInside(int32_t nLow, int32_t nHigh, int32_t nRef);

// Slides a rectangle inside the drawing. Its size stays, unless it is larger than the drawing.
void KeepRectInside(RECT* prc, int32_t nRefW, int32_t nRefH);
