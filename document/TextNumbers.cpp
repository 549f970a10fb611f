#include "document/TextNumbers.h"

#include <string_view>

namespace {

template <unsigned BASE>
std::size_t FormatNumber(uint32_t nValue, std::string_view prefix, char* pszOut, std::size_t nSize)
{
    char digits[16];
    char* p = digits + sizeof digits;
    do {
        *--p = "0123456789abcdef"[nValue % BASE];
        nValue /= BASE;
    } while (nValue);
    const auto nDigits = static_cast<std::size_t>(digits + sizeof digits - p);
    if (prefix.size() + nDigits >= nSize) return 0;
    char* pOut = pszOut;
    for (const char c : prefix) *pOut++ = c;
    while (p < digits + sizeof digits) *pOut++ = *p++;
    *pOut = 0;
    return prefix.size() + nDigits;
}

} // namespace

std::size_t FormatDecimal(int32_t nValue, char* pszOut, std::size_t nSize)
{
    const auto nUnsigned = static_cast<uint32_t>(nValue);
    return FormatNumber<10>(nValue < 0 ? 0U - nUnsigned : nUnsigned, nValue < 0 ? "-" : "", pszOut,
                            nSize);
}

std::size_t FormatUnsigned(uint32_t nValue, char* pszOut, std::size_t nSize)
{
    return FormatNumber<10>(nValue, "", pszOut, nSize);
}

std::size_t FormatPrefixedHex(uint32_t nValue, char* pszOut, std::size_t nSize)
{
    return FormatNumber<16>(nValue, "0x", pszOut, nSize);
}
