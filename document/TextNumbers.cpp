// Numbers as drawings spell them; see the header.
#include "document/TextNumbers.h"

#include <cstring>

namespace {

std::size_t FormatNumber(uint32_t nValue, unsigned nBase, const char* pszPrefix, char* pszOut,
                         std::size_t nSize)
{
    char digits[16];
    std::size_t nDigits = 0;
    do {
        digits[nDigits++] = "0123456789abcdef"[nValue % nBase];
        nValue /= nBase;
    } while (nValue);
    const std::size_t nPrefix = std::strlen(pszPrefix);
    if (nPrefix + nDigits >= nSize) return 0;
    std::memcpy(pszOut, pszPrefix, nPrefix);
    for (std::size_t n = 0; n < nDigits; ++n) pszOut[nPrefix + n] = digits[nDigits - 1 - n];
    pszOut[nPrefix + nDigits] = 0;
    return nPrefix + nDigits;
}

} // namespace

std::size_t FormatDecimal(int32_t nValue, char* pszOut, std::size_t nSize)
{
    const auto nUnsigned = static_cast<uint32_t>(nValue);
    return FormatNumber(nValue < 0 ? 0U - nUnsigned : nUnsigned, 10, nValue < 0 ? "-" : "", pszOut,
                        nSize);
}

std::size_t FormatUnsigned(uint32_t nValue, char* pszOut, std::size_t nSize)
{
    return FormatNumber(nValue, 10, "", pszOut, nSize);
}

std::size_t FormatPrefixedHex(uint32_t nValue, char* pszOut, std::size_t nSize)
{
    return FormatNumber(nValue, 16, "0x", pszOut, nSize);
}
