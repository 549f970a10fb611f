// What the tests of meters and scales share: the figures of a recording with what they were drawn
// in, and the texts that expectations are put together from.
#pragma once

#include "tests/support/Recording.h"

#include <functional>
#include <string>
#include <vector>

namespace figures {

using Lines = std::vector<std::string>;

Lines Split(const std::string& line);       // the words
std::string After(const std::string& line); // what stands behind the first word
std::string Hex(COLORREF clr);              // as recordings write a colour
std::string Text(POINT pt);                 // "x,y"

// The figures of a recording, one a line: "Line WIDTH COLOUR x,y x,y", "Arc WIDTH COLOUR box start
// end", "Polygon WIDTH COLOUR FILL points" and so on, "Text CELL COLOUR x,y "text"". Text on an
// opaque background says so.
Lines Figures(CRecording& recording);
Lines Drawn(const std::function<void(HDC)>& draw); // of what a call draws

} // namespace figures

using namespace figures;
