// Numbers as options and tables write them; see the header.
#include "tools/qel/LiveNumber.h"

#include "tools/qel/Command.h"

#include <cfloat>
#include <cmath>
#include <cstdlib>

namespace qel {

namespace {

constexpr char WHOLE_FORM[] = "a whole number, decimal or 0x hexadecimal";
constexpr std::size_t MAX_DIGITS = 40; // more than any number needs

// Digits with a point among or beside them.
bool ReadReal(const std::string& text, double* pfValue)
{
    std::string digits = text.substr(text.starts_with("-") ? 1 : 0);
    const std::size_t nPoint = digits.find('.');
    if (nPoint == std::string::npos || digits.size() > MAX_DIGITS) return false;
    digits.erase(nPoint, 1);
    if (!IsAll(digits, "0123456789")) return false;
    *pfValue = std::strtod(text.c_str(), nullptr);
    return std::fabs(*pfValue) <= FLT_MAX;
}

} // namespace

std::string QuotedWord(const std::string& word)
{
    return "'" + word + "'";
}

bool IsAll(const std::string& text, const char* pszOf)
{
    return !text.empty() && text.find_first_not_of(pszOf) == std::string::npos;
}

bool ReadWhole(const std::string& text, int64_t* pnValue)
{
    const bool bHex = text.starts_with("0x") || text.starts_with("0X");
    const bool bMinus = text.starts_with("-");
    const std::string digits = text.substr(bHex ? 2 : (bMinus ? 1 : 0));
    if (digits.size() > MAX_DIGITS ||
        !IsAll(digits, bHex ? "0123456789abcdefABCDEF" : "0123456789"))
        return false;
    const unsigned long long nDigits = std::strtoull(digits.c_str(), nullptr, bHex ? 16 : 10);
    if (nDigits > (bMinus ? 0x80000000ULL : 0xFFFFFFFFULL)) return false;
    *pnValue = bMinus ? -static_cast<int64_t>(nDigits) : static_cast<int64_t>(nDigits);
    return true;
}

bool ReadColor(const std::string& text, COLORREF* pClr)
{
    constexpr std::size_t LENGTH = 7;
    if (text.size() != LENGTH || text[0] != '#' || !IsAll(text.substr(1), "0123456789abcdefABCDEF"))
        return false;
    const unsigned long nValue = std::strtoul(text.c_str() + 1, nullptr, 16);
    *pClr = RGB((nValue >> 16) & 0xFF, (nValue >> 8) & 0xFF, nValue & 0xFF);
    return true;
}

LiveNumber ReadLiveNumber(const std::string& option, const std::string& text)
{
    LiveNumber number;
    if (ReadWhole(text, &number.nWhole)) return number;
    number.bReal = ReadReal(text, &number.fReal);
    if (number.bReal) return number;
    throw CTrouble(option + ": " + QuotedWord(text) + " is no number of 32 bits; wanted is " +
                   WHOLE_FORM + ", or one with a point");
}

LiveNumber ReadWholeNumber(const std::string& option, const std::string& text)
{
    LiveNumber number;
    if (ReadWhole(text, &number.nWhole)) return number;
    throw CTrouble(option + ": wanted is " + WHOLE_FORM + " of 32 bits, not " + QuotedWord(text));
}

uint32_t ReadId(const std::string& option, const std::string& text)
{
    int64_t nValue = 0;
    if (ReadWhole(text, &nValue) && nValue >= 0) return static_cast<uint32_t>(nValue);
    throw CTrouble(option + ": an id is " + WHOLE_FORM + " from 0 on, not " + QuotedWord(text));
}

LiveNumber Between(const LiveNumber& first, const LiveNumber& last, int nFrame, int nFrames)
{
    const int64_t nDone = nFrame;
    const int64_t nAll = nFrames > 1 ? nFrames - 1 : 1;
    LiveNumber number;
    number.bReal = first.bReal || last.bReal;
    if (number.bReal) {
        number.fReal = (first.AsReal() * static_cast<double>(nAll - nDone) +
                        last.AsReal() * static_cast<double>(nDone)) /
                       static_cast<double>(nAll);
        return number;
    }
    // Rounded to the nearest, a half away from zero.
    const int64_t nSum = first.nWhole * (nAll - nDone) + last.nWhole * nDone;
    number.nWhole = (2 * nSum + (nSum < 0 ? -nAll : nAll)) / (2 * nAll);
    return number;
}

} // namespace qel
