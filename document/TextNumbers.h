// Numbers as drawings spell them. The readers take what the C library's scanning of the same
// pattern takes, written out by hand because the library's own is many times slower; a number
// beyond 32 bits saturates. The writers end their text with a zero and tell its length, 0 when it
// does not fit.
#pragma once

#include <cstddef>
#include <cstdint>

// Each reads one number at *ppText after blanks and moves *ppText behind it. 0: there is none.
int ScanDecimal(const char** ppText, int32_t* pnValue);      // "%d"
int ScanUnsigned(const char** ppText, uint32_t* pnValue);    // "%u": a negative number wraps
int ScanPrefixedHex(const char** ppText, uint32_t* pnValue); // "0x%x", with nothing before the "0x"

inline bool IsTextSpace(char c) // the C library's space set
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}
inline void SkipTextSpace(const char** ppText)
{
    while (IsTextSpace(**ppText)) ++*ppText;
}

std::size_t FormatDecimal(int32_t nValue, char* pszOut, std::size_t nSize);
std::size_t FormatUnsigned(uint32_t nValue, char* pszOut, std::size_t nSize);
std::size_t FormatPrefixedHex(uint32_t nValue, char* pszOut, std::size_t nSize);
