// Numbers as drawings spell them: the readers against the C library's scanning of the same pattern,
// saturation beyond 32 bits, and the writers' room. The code is document/TextNumbers.cpp.
#include "document/TextNumbers.h"

#include <gtest/gtest.h>

#include <cctype>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>

namespace {

constexpr int32_t UNTOUCHED = 77; // in the output before the call

template <class T>
struct Taken {
    int nResult;
    T nValue;
    std::string rest; // only of a number that was read
};

template <class T>
Taken<T> Take(int (*pfnScan)(const char**, T*), const char* pszText)
{
    const char* pEnd = pszText;
    T nValue = UNTOUCHED;
    const int nResult = pfnScan(&pEnd, &nValue);
    return {nResult, nValue, nResult ? pEnd : ""};
}

template <class T>
struct Row {
    const char* pszText;
    T nValue;
    const char* pszRest; // null: no number there
};

template <class T, std::size_t N>
void ExpectRows(int (*pfnScan)(const char**, T*), const Row<T> (&rows)[N])
{
    for (const Row<T>& row : rows) {
        SCOPED_TRACE(row.pszText);
        const Taken<T> taken = Take(pfnScan, row.pszText);
        EXPECT_EQ(row.pszRest ? 1 : 0, taken.nResult);
        EXPECT_EQ(row.nValue, taken.nValue);
        EXPECT_EQ(row.pszRest ? row.pszRest : "", taken.rest);
    }
}

// What the C library takes of it; its answer for numbers in range is the rule.
template <class T>
Taken<T> TakeByLibrary(const char* pszPattern, const char* pszText)
{
    const std::string pattern = std::string(pszPattern) + "%n";
    T nValue = UNTOUCHED;
    int nEnd = 0;
    const int nResult = std::sscanf(pszText, pattern.c_str(), &nValue, &nEnd) == 1 ? 1 : 0;
    return {nResult, nValue, nResult ? pszText + nEnd : ""};
}

// Short strings of what numbers are made of, so that each trap of the patterns comes up often.
std::string RandomSpelling(std::mt19937& random, const char* pszPrefix)
{
    static const char LETTERS[] = "00123456789  \t\n+-xXafFg,.";
    std::string out = random() % 4 ? pszPrefix : "";
    for (auto n = random() % 8; n; --n) out += LETTERS[random() % (sizeof LETTERS - 1)];
    return out;
}

// "0x" without a digit behind it: libraries disagree on whether that is the number 0.
bool IsBarePrefix(const std::string& text)
{
    for (std::size_t i = 2; i + 1 < text.size(); ++i)
        if (text[i] == '0' && (text[i + 1] == 'x' || text[i + 1] == 'X') &&
            (i + 2 == text.size() || !std::isxdigit(static_cast<unsigned char>(text[i + 2]))))
            return true;
    return false;
}

template <class T>
void ExpectLikeLibrary(int (*pfnScan)(const char**, T*), const char* pszPattern,
                       const char* pszPrefix)
{
    std::mt19937 random(20240607);
    int nTaken = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::string text = RandomSpelling(random, pszPrefix);
        if (*pszPrefix && IsBarePrefix(text)) continue;
        const Taken<T> expected = TakeByLibrary<T>(pszPattern, text.c_str());
        const Taken<T> taken = Take(pfnScan, text.c_str());
        ASSERT_EQ(expected.nResult, taken.nResult) << "\"" << text << "\"";
        ASSERT_EQ(expected.nValue, taken.nValue) << "\"" << text << "\"";
        ASSERT_EQ(expected.rest, taken.rest) << "\"" << text << "\"";
        nTaken += taken.nResult;
    }
    EXPECT_GT(nTaken, 2000); // both answers came up
    EXPECT_LT(nTaken, 18000);
}

} // namespace

TEST(TextNumbers, DecimalTakesBlanksOneSignAndDigits)
{
    const Row<int32_t> rows[] = {
        {"0", 0, ""},
        {"12", 12, ""},
        {"12 34", 12, " 34"},
        {"12abc", 12, "abc"},
        {" \t\r\n\v\f7,", 7, ","},
        {"+5", 5, ""},
        {"-5", -5, ""},
        {"-0", 0, ""},
        {"0012", 12, ""},
        {"0x10", 0, "x10"}, // a decimal number ends before the x
        {"1.9", 1, ".9"},
        {"", UNTOUCHED, nullptr},
        {"   ", UNTOUCHED, nullptr},
        {"-", UNTOUCHED, nullptr},
        {"- 5", UNTOUCHED, nullptr},
        {"+-5", UNTOUCHED, nullptr},
        {"a1", UNTOUCHED, nullptr},
        {",1", UNTOUCHED, nullptr},
        {"\xA1\xA1"
         "1",
         UNTOUCHED, nullptr}, // a wide blank of the code page is no blank
    };
    ExpectRows(ScanDecimal, rows);
}

TEST(TextNumbers, DecimalSaturatesBeyond32Bits)
{
    const Row<int32_t> rows[] = {
        {"2147483647", INT32_MAX, ""},
        {"2147483648", INT32_MAX, ""},
        {"4294967296", INT32_MAX, ""}, // would wrap to 0
        {"4294967301 6", INT32_MAX, " 6"},
        {"18446744073709551617", INT32_MAX, ""}, // would wrap to 1 in 64 bits
        {"99999999999999999999999999999999999999;", INT32_MAX, ";"},
        {"-2147483648", INT32_MIN, ""},
        {"-2147483649", INT32_MIN, ""},
        {"-99999999999999999999999", INT32_MIN, ""},
        {"000000000000000000000000000000012", 12, ""},
    };
    ExpectRows(ScanDecimal, rows);
}

TEST(TextNumbers, UnsignedWrapsANegativeNumber)
{
    const Row<uint32_t> rows[] = {
        {"0", 0, ""},
        {" 4294967295,", 4294967295U, ","},
        {"-1", 4294967295U, ""},
        {"-5", 4294967291U, ""},
        {"-4294967295", 1, ""},
        {"+9", 9, ""},
        {"4294967296", 4294967295U, ""},
        {"18446744073709551617", 4294967295U, ""},
        {"0x5", 0, "x5"},
        {"", UNTOUCHED, nullptr},
        {"-", UNTOUCHED, nullptr},
        {"x", UNTOUCHED, nullptr},
    };
    ExpectRows(ScanUnsigned, rows);
}

TEST(TextNumbers, HexNeedsItsPrefixAtTheVeryStart)
{
    const Row<uint32_t> rows[] = {
        {"0x0", 0, ""},
        {"0x1F", 0x1F, ""},
        {"0xDeadBeef glt", 0xDEADBEEFU, " glt"},
        {"0x0000000000000001", 1, ""},
        {"0x12g", 0x12, "g"},
        {"0xffffffff", 0xFFFFFFFFU, ""},
        {" 0x1", UNTOUCHED, nullptr}, // nothing before it, not even a blank
        {"0X1", UNTOUCHED, nullptr},  // the x of the pattern is a small one
        {"1F", UNTOUCHED, nullptr},
        {"x1", UNTOUCHED, nullptr},
        {"0", UNTOUCHED, nullptr},
        {"0x", UNTOUCHED, nullptr},
        {"0xg", UNTOUCHED, nullptr},
        {"", UNTOUCHED, nullptr},
    };
    ExpectRows(ScanPrefixedHex, rows);
}

TEST(TextNumbers, HexTakesWhatTheConversionTakesAfterThePrefix)
{
    // The conversion skips blanks, takes a sign, and takes a prefix of its own with either x.
    const Row<uint32_t> rows[] = {
        {"0x 1F", 0x1F, ""},       {"0x\n\t2", 2, ""},
        {"0x-1", 0xFFFFFFFFU, ""}, {"0x+a", 10, ""},
        {"0x0x1f", 0x1F, ""},      {"0x -0xfz", 0xFFFFFFF1U, "z"},
        {"0x0X1f", 0x1F, ""},      {"0x- 1", UNTOUCHED, nullptr},
    };
    ExpectRows(ScanPrefixedHex, rows);
}

TEST(TextNumbers, HexSaturatesBeyond32Bits)
{
    const Row<uint32_t> rows[] = {
        {"0x100000000", 0xFFFFFFFFU, ""},
        {"0x123456789abcdef01 z", 0xFFFFFFFFU, " z"},
        {"0x10000000000000000", 0xFFFFFFFFU, ""}, // would wrap to 0 in 64 bits
    };
    ExpectRows(ScanPrefixedHex, rows);
}

TEST(TextNumbers, DecimalIsReadAsTheLibraryReadsIt)
{
    ExpectLikeLibrary<int32_t>(ScanDecimal, "%d", "");
}

TEST(TextNumbers, UnsignedIsReadAsTheLibraryReadsIt)
{
    ExpectLikeLibrary<uint32_t>(ScanUnsigned, "%u", "");
}

TEST(TextNumbers, HexIsReadAsTheLibraryReadsIt)
{
    ExpectLikeLibrary<uint32_t>(ScanPrefixedHex, "0x%x", "0x");
}

TEST(TextNumbers, NumbersAreReadOneAfterTheOther)
{
    const char* pText = " 1 -2\t+3x";
    int32_t nValue = 0;
    std::string read;
    while (ScanDecimal(&pText, &nValue)) read += std::to_string(nValue) + ";";
    EXPECT_EQ("1;-2;3;", read);
    EXPECT_STREQ("x", pText);
}

TEST(TextNumbers, BlanksAreTheSixOfTheCLibrary)
{
    for (int i = CHAR_MIN; i <= CHAR_MAX; ++i) {
        const char c = static_cast<char>(i);
        EXPECT_EQ(c != '\0' && std::strchr(" \t\v\f\r\n", c) != nullptr, IsTextSpace(c)) << i;
    }
    const char* pText = " \t\v\f\r\n\xA0 x";
    SkipTextSpace(&pText);
    EXPECT_STREQ("\xA0 x", pText);
    SkipTextSpace(&pText);
    EXPECT_STREQ("\xA0 x", pText);
    pText = "  ";
    SkipTextSpace(&pText);
    EXPECT_STREQ("", pText);
}

namespace {

// Formats into each room up to one too many: all of it or nothing, and never a byte beyond.
template <class T>
void ExpectText(std::size_t (*pfnFormat)(T, char*, std::size_t), T nValue, const std::string& text)
{
    SCOPED_TRACE(text);
    for (std::size_t nSize = 0; nSize <= text.size() + 2; ++nSize) {
        SCOPED_TRACE(nSize);
        char room[40];
        std::memset(room, '#', sizeof room);
        const std::size_t nLength = pfnFormat(nValue, room, nSize);
        const bool bFits = nSize > text.size(); // the ending zero needs its place
        EXPECT_EQ(bFits ? text.size() : 0, nLength);
        if (bFits) {
            EXPECT_STREQ(text.c_str(), room);
        }
        for (std::size_t i = nSize; i < sizeof room; ++i) ASSERT_EQ('#', room[i]) << i;
    }
}

} // namespace

TEST(TextNumbers, NumbersAreWrittenWholeOrNotAtAll)
{
    ExpectText<int32_t>(FormatDecimal, 0, "0");
    ExpectText<int32_t>(FormatDecimal, 7, "7");
    ExpectText<int32_t>(FormatDecimal, -10, "-10");
    ExpectText<int32_t>(FormatDecimal, INT32_MAX, "2147483647");
    ExpectText<int32_t>(FormatDecimal, INT32_MIN, "-2147483648");
    ExpectText<uint32_t>(FormatUnsigned, 0, "0");
    ExpectText<uint32_t>(FormatUnsigned, 4294967295U, "4294967295");
    ExpectText<uint32_t>(FormatUnsigned, 2147483648U, "2147483648");
    ExpectText<uint32_t>(FormatPrefixedHex, 0, "0x0");
    ExpectText<uint32_t>(FormatPrefixedHex, 0xDEADBEEFU, "0xdeadbeef");
    ExpectText<uint32_t>(FormatPrefixedHex, 0x10, "0x10");
    ExpectText<uint32_t>(FormatPrefixedHex, 0xFFFFFFFFU, "0xffffffff");
}

TEST(TextNumbers, WhatIsWrittenIsReadBack)
{
    std::mt19937 random(7);
    for (int i = 0; i < 2000; ++i) {
        const auto nValue = static_cast<uint32_t>(random()) >> (random() % 32);
        char szText[16];
        ASSERT_NE(0U, FormatDecimal(static_cast<int32_t>(nValue), szText, sizeof szText));
        EXPECT_EQ(static_cast<int32_t>(nValue), Take(ScanDecimal, szText).nValue);
        ASSERT_NE(0U, FormatUnsigned(nValue, szText, sizeof szText));
        EXPECT_EQ(nValue, Take(ScanUnsigned, szText).nValue);
        ASSERT_NE(0U, FormatPrefixedHex(nValue, szText, sizeof szText));
        EXPECT_EQ(nValue, Take(ScanPrefixedHex, szText).nValue);
    }
}
