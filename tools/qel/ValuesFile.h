// Files of values: one flat JSON object, a name and a number, text, true or false each. What the
// names are: tools/qel/NamedValue.h.
#pragma once

#include "tools/qel/NamedValue.h"

#include <string>
#include <vector>

namespace qel {

// In the order of the file. CTrouble, with line and column where there is a place, for what is no
// such object.
std::vector<NamedValue> ReadValues(const std::string& file, const std::string& bytes);
std::vector<NamedValue> ReadValuesFile(const std::wstring& path);

// A name a line. What reads as a number is written as one, unless it is a text.
std::string WriteValues(const std::vector<NamedValue>& values);
// CTrouble when it cannot be written; an older file stays then.
void WriteValuesFile(const std::wstring& path, const std::vector<NamedValue>& values);

} // namespace qel
