// Wide strings for the tests. Not std::wstring: in the native build the standard library was
// compiled with characters of another size.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

// The text of the process's code page as wide characters, with the zero at its end.
inline std::vector<wchar_t> Wide(const std::string& text)
{
    std::vector<wchar_t> wide(text.size() + 1);
    if (!text.empty())
        ::MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                              static_cast<int>(text.size()));
    return wide;
}
