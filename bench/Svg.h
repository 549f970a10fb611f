// The scene of the measurements as SVG: the same figures, with the middle of a pen where GDI has
// it.
#pragma once

#include "bench/Scene.h"

// pszFace: what texts are written with.
std::string SvgText(const std::vector<Shape>& shapes, const char* pszFace);
