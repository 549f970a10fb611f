// Texts in the language of the system, from the string tables.
#pragma once

#include <string>

namespace studio {

std::wstring Text(unsigned nId);

// With %1, %2 ... replaced.
std::wstring Text(unsigned nId, std::initializer_list<std::wstring> words);

} // namespace studio
