// Texts from one form into another; see the header.
#include "tools/studio/model/Convert.h"

#include <windows.h>

namespace studio {

std::wstring FromPage(const std::string& text, unsigned nPage)
{
    const int nBytes = static_cast<int>(text.size());
    const int nLength = ::MultiByteToWideChar(nPage, 0, text.data(), nBytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(nLength), L'\0');
    ::MultiByteToWideChar(nPage, 0, text.data(), nBytes, wide.data(), nLength);
    return wide;
}

std::wstring FromUtf8(const std::string& text)
{
    return FromPage(text, CP_UTF8);
}

std::string ToUtf8(const std::wstring& text)
{
    const int nWide = static_cast<int>(text.size());
    const int nLength =
        ::WideCharToMultiByte(CP_UTF8, 0, text.data(), nWide, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(nLength), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text.data(), nWide, utf8.data(), nLength, nullptr, nullptr);
    return utf8;
}

} // namespace studio
