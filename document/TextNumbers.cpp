// Numbers as drawings spell them; see the header.
#include "document/TextNumbers.h"

#include <array>
#include <cstring>

namespace {

constexpr int NO_DIGIT = 16;

// What a byte counts as a digit.
constexpr std::array<uint8_t, 256> g_digits = [] {
    std::array<uint8_t, 256> digits{};
    for (uint8_t& n : digits) n = NO_DIGIT;
    for (std::size_t n = 0; n < 10; ++n) digits['0' + n] = static_cast<uint8_t>(n);
    for (std::size_t n = 0; n < 6; ++n)
        digits['a' + n] = digits['A' + n] = static_cast<uint8_t>(10 + n);
    return digits;
}();

unsigned DigitOf(char c)
{
    return g_digits[static_cast<unsigned char>(c)];
}

struct Scanned {
    bool bNegative;
    uint32_t nSize;
    bool bTooLarge; // more than 32 bits; nSize is not the number then
};

// Blanks, a sign and digits of the base. False: no digit, and *ppText stays.
template <unsigned BASE>
bool ScanDigits(const char** ppText, Scanned* pOut)
{
    const char* p = *ppText;
    SkipTextSpace(&p);
    pOut->bNegative = *p == '-';
    if (*p == '-' || *p == '+') ++p;
    if (BASE == 16 && p[0] == '0' && (p[1] == 'x' || p[1] == 'X')) p += 2;
    unsigned nDigit = DigitOf(*p);
    if (nDigit >= BASE) return false;
    constexpr int SURE = BASE == 10 ? 9 : 8;     // so many digits always fit
    constexpr uint32_t MOST = UINT32_MAX / BASE; // what can take another digit, or just cannot
    uint32_t nSize = nDigit;
    nDigit = DigitOf(*++p);
    for (int n = 1; n < SURE && nDigit < BASE; ++n) {
        nSize = nSize * BASE + nDigit;
        nDigit = DigitOf(*++p);
    }
    bool bTooLarge = false;
    while (nDigit < BASE) {
        bTooLarge |= nSize > MOST || nSize * BASE > UINT32_MAX - nDigit;
        nSize = nSize * BASE + nDigit;
        nDigit = DigitOf(*++p);
    }
    pOut->nSize = nSize;
    pOut->bTooLarge = bTooLarge;
    *ppText = p;
    return true;
}

uint32_t ToUnsigned(const Scanned& scanned)
{
    if (scanned.bTooLarge) return UINT32_MAX;
    return scanned.bNegative ? 0U - scanned.nSize : scanned.nSize;
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

int ScanDecimal(const char** ppText, int32_t* pnValue)
{
    Scanned scanned{};
    if (!ScanDigits<10>(ppText, &scanned)) return 0;
    const uint32_t nLimit = scanned.bNegative ? 0x80000000U : 0x7FFFFFFFU;
    const uint32_t nSize = scanned.bTooLarge || scanned.nSize > nLimit ? nLimit : scanned.nSize;
    *pnValue = static_cast<int32_t>(scanned.bNegative ? 0U - nSize : nSize);
    return 1;
}

int ScanUnsigned(const char** ppText, uint32_t* pnValue)
{
    Scanned scanned{};
    if (!ScanDigits<10>(ppText, &scanned)) return 0;
    *pnValue = ToUnsigned(scanned);
    return 1;
}

int ScanPrefixedHex(const char** ppText, uint32_t* pnValue)
{
    const char* p = *ppText;
    if (p[0] != '0' || p[1] != 'x') return 0;
    p += 2;
    Scanned scanned{};
    if (!ScanDigits<16>(&p, &scanned)) return 0;
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
