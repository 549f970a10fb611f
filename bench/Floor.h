// The floor of a full draw: the GDI calls that a scene's picture needs, made straight from a plain
// array. Recorded into a metafile they are the same bytes as the engine's, but for texts: the
// system leaves some bytes of a font's record unset.
#pragma once

#include "bench/Scene.h"

void DrawFloor(HDC hdc, const std::vector<Shape>& shapes);
