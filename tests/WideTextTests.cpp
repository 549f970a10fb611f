// Texts as Unicode: the names of code pages, the columns of characters, the conversion in both
// directions, and the character set by which a face is found. The code is base/TextPages.* and
// base/WideText.*.
#include "base/WideText.h"

#include "base/WideCharacters.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string Wide(uint32_t nPage, const std::string& bytes) // as numbers: "0041 4e2d"
{
    const CWideText text(nPage, bytes.c_str());
    EXPECT_EQ(0, text.Text()[text.Length()]);
    std::string numbers;
    for (int n = 0; n < text.Length(); ++n) {
        char sz[8];
        std::snprintf(sz, sizeof sz, n ? " %04x" : "%04x", static_cast<unsigned>(text.Text()[n]));
        numbers += sz;
    }
    return numbers;
}

// The bytes of a text in a page, "refused" when it has none there.
std::string Bytes(uint32_t nPage, const wchar_t* psz)
{
    char sz[TEXT_BYTES] = "as before";
    if (ToPageText(nPage, psz, sz)) return sz;
    EXPECT_STREQ("as before", sz);
    return "refused";
}

std::vector<wchar_t> Many(std::size_t nCount, wchar_t c)
{
    std::vector<wchar_t> text(nCount, c);
    text.push_back(0);
    return text;
}

int Columns(const wchar_t* psz)
{
    int nLength = 0;
    while (psz[nLength]) ++nLength;
    return TextColumns(psz, nLength);
}

TEST(TextPages, NamesAreFoundInLettersOfEitherCase)
{
    for (const char* psz : {"gb2312", "GB2312", "Gb2312", "GBK"}) EXPECT_EQ(936U, PageOfName(psz));
    for (const char* psz : {"utf-8", "UTF-8", "utf8"}) EXPECT_EQ(65001U, PageOfName(psz));
    EXPECT_EQ(28597U, PageOfName("ISO-8859-7"));
    EXPECT_EQ(1251U, PageOfName("windows-1251"));
    EXPECT_EQ(950U, PageOfName("Big5"));
    EXPECT_EQ(932U, PageOfName("Shift_JIS"));
    EXPECT_EQ(949U, PageOfName("EUC-KR"));
    EXPECT_EQ(20866U, PageOfName("koi8-r"));
    EXPECT_EQ(20127U, PageOfName("us-ascii"));
}

TEST(TextPages, WhatIsNoNameHasNoPage)
{
    for (const char* psz : {"", "g", "gb231", "gb23122", "utf-8 ", " utf-8", "utf_8", "936"})
        EXPECT_EQ(0U, PageOfName(psz)) << psz;
}

TEST(TextPages, TheFirstNameOfAPageIsTheOneThatIsDeclared)
{
    EXPECT_STREQ("gb2312", NameOfPage(936));
    EXPECT_STREQ("utf-8", NameOfPage(65001));
    EXPECT_STREQ("shift_jis", NameOfPage(932));
    EXPECT_STREQ("windows-1252", NameOfPage(1252));
    EXPECT_EQ(nullptr, NameOfPage(0));
    EXPECT_EQ(nullptr, NameOfPage(37));
    for (const TextPageName& row : TextPageNames()) {
        EXPECT_EQ(row.nPage, PageOfName(row.pszName)) << row.pszName;
        EXPECT_EQ(row.nPage, PageOfName(NameOfPage(row.nPage))) << row.pszName;
    }
}

TEST(TextPages, NumbersThatStandForSettingsOfTheSystemAreNoPages)
{
    for (const uint32_t n :
         {0U, 1U, 2U, 3U, 42U, 1200U, 1201U, 12345U, 0x10000U + 936U, UINT32_MAX})
        EXPECT_FALSE(IsKnownPage(n)) << n;
    for (const uint32_t n : {936U, 932U, 1252U, 65001U}) EXPECT_TRUE(IsKnownPage(n)) << n;
}

TEST(TextColumns, WideCharactersTakeTwoAndAllOthersOne)
{
    EXPECT_EQ(0, Columns(L""));
    EXPECT_EQ(5, Columns(L"400 V"));
    EXPECT_EQ(3, Columns(L"\x00E9\x03B1\x0416"));       // Latin, Greek, Cyrillic
    EXPECT_EQ(8, Columns(L"\x6CF5\x3042\xAC00\xFF21")); // Chinese, kana, hangul, a full-width A
    EXPECT_EQ(2, Columns(L"\xFF71\x303F"));             // half-width ones
    EXPECT_EQ(2, Columns(L"\xD83D\xDE00"));             // U+1F600, an emoji
    EXPECT_EQ(2, Columns(L"\xD840\xDC00"));             // U+20000, the first of an extension
    EXPECT_EQ(1, Columns(L"\xD83C\xDDE6"));             // U+1F1E6, a letter for flags
    EXPECT_EQ(4, Columns(L"\x6CF5 1"));
    EXPECT_EQ(6, Columns(L"a\xD83D\xDE00\x6CF5\x0416"));
}

TEST(TextColumns, HalvesOfAPairThatStandAloneAreOneEach)
{
    EXPECT_EQ(1, Columns(L"\xD83D"));
    EXPECT_EQ(1, Columns(L"\xDE00"));
    EXPECT_EQ(2, Columns(L"\xDE00\xD83D"));
    EXPECT_EQ(2, Columns(L"\xD83D"
                         L"a"));
    EXPECT_EQ(2, Columns(L"\xD83D\xE000"));        // behind the last one that ends a pair
    EXPECT_EQ(1, TextColumns(L"\xD83D\xDE00", 1)); // the other half is not of the text
}

TEST(TextColumns, TheRangesHaveTheirEnds)
{
    EXPECT_EQ(1, Columns(L"\x10FF"));
    EXPECT_EQ(2, Columns(L"\x1100"));
    EXPECT_EQ(2, Columns(L"\x115F"));
    EXPECT_EQ(1, Columns(L"\x1160"));
    EXPECT_EQ(2, Columns(L"\xFF60"));
    EXPECT_EQ(1, Columns(L"\xFF61"));
    EXPECT_EQ(1, Columns(L"\xDB40\xDD00")); // U+E0100, behind all of them
    uint32_t nAfter = 0;
    for (const WideRange& range : g_wideRanges) {
        EXPECT_LT(nAfter, range.nFirst) << "in order, and apart";
        EXPECT_LE(range.nFirst, range.nLast);
        nAfter = range.nLast + 1;
    }
    EXPECT_EQ(0x3FFFEU,
              nAfter); // the last plane that has any, but for its two that are no characters
}

TEST(WideText, HasTheCharactersOfThePage)
{
    EXPECT_EQ("", Wide(65001, ""));
    EXPECT_EQ("0041 4e2d", Wide(936, "A\xD6\xD0"));
    EXPECT_EQ("0041 4e2d", Wide(65001, "A\xE4\xB8\xAD"));
    EXPECT_EQ("0041 00d6 00d0", Wide(1252, "A\xD6\xD0"));
    EXPECT_EQ("d83d de00", Wide(65001, "\xF0\x9F\x98\x80"));
}

TEST(WideText, BytesThatAreNoTextBecomeOtherCharacters)
{
    for (const char* psz : {"\xFF", "\xE4\xB8", "\xE4", "\x80\x80\x80", "\xED\xA0\xBD", "\xC0\x80"})
        for (const uint32_t nPage : {65001U, 936U, 932U}) {
            const CWideText text(nPage, psz);
            EXPECT_LT(0, text.Length()) << nPage;
            EXPECT_LE(text.Length(), 3) << nPage;
        }
    EXPECT_EQ("0061 ", Wide(65001, "a\xFF"
                                   "b")
                           .substr(0, 5));
}

TEST(WideText, TakesAtMost255Bytes)
{
    const CWideText text(1252, std::string(300, 'x').c_str());
    EXPECT_EQ(255, text.Length());
    EXPECT_EQ(255, text.Columns());
    const CWideText bad(65001, std::string(300, '\xFF').c_str());
    EXPECT_EQ(255, bad.Length());
}

TEST(WideText, TheWayBackGivesTheBytesOfThePage)
{
    EXPECT_EQ("", Bytes(65001, L""));
    EXPECT_EQ("A\xD6\xD0", Bytes(936, L"A\x4E2D"));
    EXPECT_EQ("A\xE4\xB8\xAD", Bytes(65001, L"A\x4E2D"));
    EXPECT_EQ("\xF0\x9F\x98\x80", Bytes(65001, L"\xD83D\xDE00"));
    EXPECT_EQ("\xD6", Bytes(1252, L"\x00D6"));
}

TEST(WideText, WhatAPageCannotExpressIsRefused)
{
    EXPECT_EQ("refused", Bytes(936, L"\x0E01")); // Thai
    EXPECT_EQ("refused", Bytes(1252, L"A\x4E2D"));
    EXPECT_EQ("refused", Bytes(1252, L"\x0101")); // not as the letter without its bar
    EXPECT_EQ("refused", Bytes(936, L"\xD83D\xDE00"));
    EXPECT_EQ("refused", Bytes(65001, L"a\xD83D")); // half of a pair
    EXPECT_EQ("refused", Bytes(12345, L"a"));       // no page
}

TEST(WideText, WhatTakesMoreThan255BytesIsRefused)
{
    EXPECT_EQ(std::string(255, 'x'), Bytes(65001, Many(255, L'x').data()));
    EXPECT_EQ("refused", Bytes(65001, Many(256, L'x').data()));
    EXPECT_EQ("refused", Bytes(65001, Many(100000, L'x').data()));
    EXPECT_EQ(255U, Bytes(65001, Many(85, L'\x4E2D').data()).size()); // three bytes each
    EXPECT_EQ("refused", Bytes(65001, Many(86, L'\x4E2D').data()));
    EXPECT_EQ(254U, Bytes(936, Many(127, L'\x4E2D').data()).size()); // two
    EXPECT_EQ("refused", Bytes(936, Many(128, L'\x4E2D').data()));
}

TEST(WideText, TheCharacterSetFollowsFromTheLetters)
{
    const struct {
        const char* pszUtf8;
        int nCharset;
    } rows[] = {
        {"", ANSI_CHARSET},
        {"400 V", ANSI_CHARSET},
        {"\xC3\xA9", ANSI_CHARSET},       // e with an accent
        {"\xC5\x99", EASTEUROPE_CHARSET}, // r with a hook
        {"\xCE\xB1", GREEK_CHARSET},
        {"\xD0\x96", RUSSIAN_CHARSET},
        {"\xE6\xB3\xB5", GB2312_CHARSET},
        {"\xE3\x81\x82", SHIFTJIS_CHARSET},
        {"\xEA\xB0\x80", HANGUL_CHARSET},
        {"\xE6\xB3\xB5 \xCE\xB1 \xD0\x96", GB2312_CHARSET}, // faces of Chinese have the others
        {"\xD0\x96 \xCE\xB1 \xE6\xB3\xB5", GB2312_CHARSET},
        {"\xE6\xB3\xB5\xE3\x81\x82", SHIFTJIS_CHARSET},
        {"\xF0\x9F\x98\x80", ANSI_CHARSET},
    };
    for (const auto& row : rows) EXPECT_EQ(row.nCharset, CWideText(65001, row.pszUtf8).Charset());
    // The same letters of other pages.
    EXPECT_EQ(GREEK_CHARSET, CWideText(936, "\xA6\xC1").Charset());
    EXPECT_EQ(GB2312_CHARSET, CWideText(936, "\xB1\xC3").Charset());
    EXPECT_EQ(SHIFTJIS_CHARSET, CWideText(932, "\x92\x86").Charset());
    EXPECT_EQ(HANGUL_CHARSET, CWideText(949, "\xF1\xE9").Charset());
    EXPECT_EQ(CHINESEBIG5_CHARSET, CWideText(950, "\xA4\xA4").Charset());
}

} // namespace
