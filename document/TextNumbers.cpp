// Numbers as drawings spell them; see the header.
#include "document/TextNumbers.h"

#include <cstring>

namespace {

int DigitOf(char c)
{
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return 16;
}

struct Scanned {
    bool bNegative;
    uint64_t nSize; // saturated well above 32 bits
};

// Blanks, a sign and digits of the base. False: no digit, and *ppText stays.
bool ScanDigits(const char** ppText, int nBase, Scanned* pOut)
{
    const char* p = *ppText;
    SkipTextSpace(&p);
    pOut->bNegative = *p == '-';
    if (*p == '-' || *p == '+') ++p;
    if (nBase == 16 && p[0] == '0' && (p[1] == 'x' || p[1] == 'X')) p += 2;
    if (DigitOf(*p) >= nBase) return false;
    pOut->nSize = 0;
    for (int nDigit = DigitOf(*p); nDigit < nBase; nDigit = DigitOf(*++p)) {
        pOut->nSize = pOut->nSize * static_cast<unsigned>(nBase) + static_cast<unsigned>(nDigit);
        if (pOut->nSize > 0xFFFFFFFFFFULL) pOut->nSize = 0xFFFFFFFFFFULL;
    }
    *ppText = p;
    return true;
}

uint32_t ToUnsigned(const Scanned& scanned)
{
    if (scanned.nSize > UINT32_MAX) return UINT32_MAX;
    const auto nValue = static_cast<uint32_t>(scanned.nSize);
    return scanned.bNegative ? 0U - nValue : nValue;
}

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

bool IsTextSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

void SkipTextSpace(const char** ppText)
{
    while (IsTextSpace(**ppText)) ++*ppText;
}

int ScanDecimal(const char** ppText, int32_t* pnValue)
{
    Scanned scanned{};
    if (!ScanDigits(ppText, 10, &scanned)) return 0;
    const uint64_t nLimit = scanned.bNegative ? 0x80000000U : 0x7FFFFFFFU;
    const uint64_t nSize = scanned.nSize < nLimit ? scanned.nSize : nLimit;
    *pnValue = static_cast<int32_t>(scanned.bNegative ? -static_cast<int64_t>(nSize)
                                                      : static_cast<int64_t>(nSize));
    return 1;
}

int ScanUnsigned(const char** ppText, uint32_t* pnValue)
{
    Scanned scanned{};
    if (!ScanDigits(ppText, 10, &scanned)) return 0;
    *pnValue = ToUnsigned(scanned);
    return 1;
}

int ScanPrefixedHex(const char** ppText, uint32_t* pnValue)
{
    const char* p = *ppText;
    if (p[0] != '0' || p[1] != 'x') return 0;
    p += 2;
    Scanned scanned{};
    if (!ScanDigits(&p, 16, &scanned)) return 0;
    *pnValue = ToUnsigned(scanned);
    *ppText = p;
    return 1;
}

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
