// Between the texts of drawings, UTF-8 and the wide texts of the system.
#pragma once

#include <string>

namespace studio {

std::wstring FromUtf8(const std::string& text);
std::string ToUtf8(const std::wstring& text);
std::wstring FromPage(const std::string& text, unsigned nPage);

} // namespace studio
