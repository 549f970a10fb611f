// Texts of the command-line program: wide arguments, the bytes of drawings, UTF-8 on the way out.
#pragma once

#include <string>

namespace qel {

std::string ToUtf8(const std::wstring& text);
std::wstring FromUtf8(const std::string& text);
std::string DrawingToUtf8(const std::string& text); // of the drawing at hand, by its code page
// Into the bytes that it has; false when these lack one of the characters.
bool Utf8ToDrawing(const std::string& utf8, std::string* pText);

void Print(const std::string& text);    // UTF-8 to standard output
bool FinishOutput();                    // false: not all that was printed could be written
void Complain(const std::string& text); // "qel: TEXT" to standard error

} // namespace qel
