// The mark over an element whose value cannot be trusted.
#pragma once

#include "base/PixelScale.h"
#include "render/LiveLayer.h"

// Stale: every other pixel of the rectangle turns grey. Bad: a red cross over that as well. No
// other quality has one. Painted twice it looks as painted once. All but the pixels is as before.
void DrawQualityMark(HDC hdc, const RECT& rc, LiveQuality nQuality, CPixelScale px);
