// What becomes of a text or an attribute value when it is written to a drawing and read again,
// worked out from docs/format.md without the engine. Most come back as they were. Not all: the
// format has no way to spell white space in front of a text, nor "&#x41;" itself.
#pragma once

#include <string>
#include <string_view>

std::string ReadBackText(std::string_view text);
std::string ReadBackValue(std::string_view value);
