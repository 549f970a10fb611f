// The font that texts are drawn with: its face, and how its letters are smoothed.
#pragma once

#include <windows.h>

#include <string>

namespace qel {

// Texts come in any size, so a face of fixed bitmaps does not serve.
bool IsScalableFace(const std::wstring& face);

// The first one of the system that serves; empty: then the system chooses.
std::wstring DefaultTextFace();

LOGFONTW TextFont(const std::wstring& face);

} // namespace qel
