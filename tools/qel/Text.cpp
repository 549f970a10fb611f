// Texts of the command-line program; see the header.
#include "tools/qel/Text.h"

#include "tools/qel/Encoding.h"

#include <windows.h>

#include <cstdio>

namespace qel {

std::string ToUtf8(const std::wstring& text)
{
    const int nWide = static_cast<int>(text.size());
    const int nLen =
        ::WideCharToMultiByte(CP_UTF8, 0, text.data(), nWide, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(nLen), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text.data(), nWide, utf8.data(), nLen, nullptr, nullptr);
    return utf8;
}

std::wstring FromUtf8(const std::string& text)
{
    const int nBytes = static_cast<int>(text.size());
    const int nLen = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), nBytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(nLen), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, text.data(), nBytes, wide.data(), nLen);
    return wide;
}

std::string DrawingToUtf8(const std::string& text)
{
    const int nBytes = static_cast<int>(text.size());
    const int nLen = ::MultiByteToWideChar(DrawingPage(), 0, text.data(), nBytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(nLen), L'\0');
    ::MultiByteToWideChar(DrawingPage(), 0, text.data(), nBytes, wide.data(), nLen);
    return ToUtf8(wide);
}

bool Utf8ToDrawing(const std::string& utf8, std::string* pText)
{
    const std::wstring wide = FromUtf8(utf8);
    const int nWide = static_cast<int>(wide.size());
    const int nLen =
        ::WideCharToMultiByte(DrawingPage(), 0, wide.data(), nWide, nullptr, 0, nullptr, nullptr);
    pText->resize(static_cast<std::size_t>(nLen));
    ::WideCharToMultiByte(DrawingPage(), 0, wide.data(), nWide, pText->data(), nLen, nullptr,
                          nullptr);
    return DrawingToUtf8(*pText) == utf8;
}

void Print(const std::string& text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
}

bool FinishOutput()
{
    // A part that failed earlier leaves its mark only in the stream's state.
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

void Complain(const std::string& text)
{
    std::fflush(stdout);
    std::fprintf(stderr, "qel: %s\n", text.c_str());
}

} // namespace qel
