// Texts; see the header.
#include "tools/studio/Strings.h"

#include <windows.h>

namespace studio {

std::wstring Text(unsigned nId)
{
    const wchar_t* pszText = nullptr; // with a size of 0 the system gives its own copy
    const int nLength =
        ::LoadStringW(::GetModuleHandleW(nullptr), nId, reinterpret_cast<wchar_t*>(&pszText), 0);
    return nLength > 0 ? std::wstring(pszText, static_cast<std::size_t>(nLength)) : std::wstring();
}

std::wstring Text(unsigned nId, std::initializer_list<std::wstring> words)
{
    const std::wstring form = Text(nId);
    std::wstring text;
    for (std::size_t n = 0; n < form.size(); ++n) {
        const std::size_t nWord = form[n] == L'%' && n + 1 < form.size()
                                      ? static_cast<std::size_t>(form[n + 1] - L'1')
                                      : 9;
        if (nWord < words.size()) {
            text += words.begin()[nWord];
            ++n;
        } else {
            text += form[n];
        }
    }
    return text;
}

} // namespace studio
