// Numbers as options and tables write them.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace qel {

// A value as the host passes it: a whole number of 32 bits, or a real one.
struct LiveNumber {
    bool bReal = false;
    int64_t nWhole = 0; // -2147483648 to 4294967295: a negative one goes as its two's complement
    double fReal = 0;

    [[nodiscard]] double AsReal() const { return bReal ? fReal : static_cast<double>(nWhole); }
};

std::string QuotedWord(const std::string& word);

// Whether a text is made of these characters, and is no empty one.
bool IsAll(const std::string& text, const char* pszOf);

// A whole number of 32 bits, with or without sign. False: it is none, or does not fit.
bool ReadWhole(const std::string& text, int64_t* pnValue);

// "#RRGGBB"; false: it is none.
bool ReadColor(const std::string& text, COLORREF* pClr);

// The following throw CTrouble, with the option first, for what is no such number.
LiveNumber ReadLiveNumber(const std::string& option, const std::string& text);
LiveNumber ReadWholeNumber(const std::string& option, const std::string& text); // without a point
uint32_t ReadId(const std::string& option, const std::string& text);

// The value that goes from one number in the first frame to the other in the last.
LiveNumber Between(const LiveNumber& first, const LiveNumber& last, int nFrame, int nFrames);

} // namespace qel
