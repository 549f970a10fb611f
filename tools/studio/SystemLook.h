// What the system says of its colours, for what is painted here and not by a control of its own.
#pragma once

#include <windows.h>

namespace studio {

// Its colours are to be told apart by who sees little. Then all that is painted here takes them.
bool IsHighContrast();

// Pictures made for a light ground are not seen on that of buttons.
bool IsFaceDark();

// The brush of a class of windows: of whichever colour the system has at that place.
HBRUSH ClassBrush(int nColor);

// A colour of our own, or in high contrast one of the system's.
COLORREF PlainOr(COLORREF clrPlain, int nContrast);

} // namespace studio
