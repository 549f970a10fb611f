// Pictures as files: a bitmap to draw on and its encoders, and the recording of drawing calls.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace qel {

// What ends a picture's making.
constexpr char NOT_DRAWN[] = "the engine does not draw this drawing";
constexpr char NO_MEMORY_FOR_PICTURE[] = "there is no memory for a picture of this size";

enum class PictureKind { Png, Bmp, Jpeg, Emf };

// Whether a name has that extension (".png") and something before it, in any letter case.
bool HasExtension(const std::wstring& path, const wchar_t* pszExtension);

// By the extension of the name; CTrouble for an unknown one.
PictureKind KindOf(const std::wstring& path);

using Painter = std::function<bool(HDC)>;          // false: it could not draw
using Renderer = std::function<bool(BYTE* pBits)>; // likewise, rows of colours times alpha

// Calls paint with a device context of that size and writes what it draws. The file appears under
// its name only when it is complete; CTrouble when it cannot be drawn or written.
void WritePicture(const std::wstring& path, SIZE size, const Painter& paint);

// The same of what has transparent places, as only a PNG can.
void WriteTransparent(const std::wstring& path, SIZE size, const Renderer& render);

} // namespace qel
