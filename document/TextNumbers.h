// Numbers as drawings spell them. The readers take what the C library's scanning of the same
// pattern takes, written out by hand because the library's own is many times slower; a number
// beyond 32 bits saturates. The writers end their text with a zero and tell its length, 0 when it
// does not fit.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

inline bool IsTextSpace(char c) // the C library's space set
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}
inline void SkipTextSpace(const char** ppText)
{
    while (IsTextSpace(**ppText)) ++*ppText;
}

namespace text_numbers {

constexpr int NO_DIGIT = 16;

// What a byte counts as a digit.
inline constexpr std::array<uint8_t, 256> g_digits = [] {
    std::array<uint8_t, 256> digits{};
    for (uint8_t& n : digits) n = NO_DIGIT;
    for (std::size_t n = 0; n < 10; ++n) digits['0' + n] = static_cast<uint8_t>(n);
    for (std::size_t n = 0; n < 6; ++n)
        digits['a' + n] = digits['A' + n] = static_cast<uint8_t>(10 + n);
    return digits;
}();

inline unsigned DigitOf(char c)
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

inline uint32_t ToUnsigned(const Scanned& scanned)
{
    if (scanned.bTooLarge) return UINT32_MAX;
    return scanned.bNegative ? 0U - scanned.nSize : scanned.nSize;
}

} // namespace text_numbers

// Each reads one number at *ppText after blanks and moves *ppText behind it. 0: there is none.

// "%d"
inline int ScanDecimal(const char** ppText, int32_t* pnValue)
{
    text_numbers::Scanned scanned{};
    if (!text_numbers::ScanDigits<10>(ppText, &scanned)) return 0;
    const uint32_t nLimit = scanned.bNegative ? 0x80000000U : 0x7FFFFFFFU;
    const uint32_t nSize = scanned.bTooLarge || scanned.nSize > nLimit ? nLimit : scanned.nSize;
    *pnValue = static_cast<int32_t>(scanned.bNegative ? 0U - nSize : nSize);
    return 1;
}

// "%u": a negative number wraps
inline int ScanUnsigned(const char** ppText, uint32_t* pnValue)
{
    text_numbers::Scanned scanned{};
    if (!text_numbers::ScanDigits<10>(ppText, &scanned)) return 0;
    *pnValue = text_numbers::ToUnsigned(scanned);
    return 1;
}

// "0x%x", with nothing before the "0x"
inline int ScanPrefixedHex(const char** ppText, uint32_t* pnValue)
{
    const char* p = *ppText;
    if (p[0] != '0' || p[1] != 'x') return 0;
    p += 2;
    text_numbers::Scanned scanned{};
    if (!text_numbers::ScanDigits<16>(&p, &scanned)) return 0;
    *pnValue = text_numbers::ToUnsigned(scanned);
    *ppText = p;
    return 1;
}

std::size_t FormatDecimal(int32_t nValue, char* pszOut, std::size_t nSize);
std::size_t FormatUnsigned(uint32_t nValue, char* pszOut, std::size_t nSize);
std::size_t FormatPrefixedHex(uint32_t nValue, char* pszOut, std::size_t nSize);
