// Keyword tables: the lookup both ways, where a table ends, and the check that a table is sound.
// The code is base/Keywords.h.
#include "base/Keywords.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr KeywordRow g_colors[] = {
    {3, "red"}, {0, "Red"}, {-7, "green blue"}, {12, "redder"}, {KEYWORD_NONE, nullptr}};
static_assert(IsSoundTable(g_colors));

// Ended by the null keyword: the row behind it is never seen.
constexpr KeywordRow g_endedByNull[] = {{1, "a"}, {2, nullptr}, {3, "b"}, {-1, nullptr}};
// Ended by the number, though a keyword stands beside it.
constexpr KeywordRow g_endedByNumber[] = {{1, "a"}, {-1, "b"}, {3, "c"}, {-1, nullptr}};

constexpr KeywordRow g_empty[] = {{-1, nullptr}};
static_assert(IsSoundTable(g_empty));

constexpr KeywordRow g_twiceTheNumber[] = {{1, "a"}, {1, "b"}, {-1, nullptr}};
constexpr KeywordRow g_twiceTheKeyword[] = {{1, "a"}, {2, "a"}, {-1, nullptr}};
constexpr KeywordRow g_noEnd[] = {{1, "a"}, {2, "b"}};
static_assert(!IsSoundTable(g_twiceTheNumber));
static_assert(!IsSoundTable(g_twiceTheKeyword));
static_assert(!IsSoundTable(g_noEnd));
static_assert(!IsSoundTable(g_endedByNull));

struct WiderRow { // a row may carry more than the two
    int32_t nId;
    const char* pszName;
    double fMore;
};
constexpr WiderRow g_wider[] = {{5, "five", 5.5}, {6, "six", 6.5}, {-1, nullptr, 0}};

} // namespace

TEST(Keywords, LookupGivesTheNumberOfTheEqualKeyword)
{
    EXPECT_EQ(3, LookupKeyword(g_colors, "red"));
    EXPECT_EQ(0, LookupKeyword(g_colors, "Red"));
    EXPECT_EQ(-7, LookupKeyword(g_colors, "green blue"));
    EXPECT_EQ(12, LookupKeyword(g_colors, "redder"));
    EXPECT_EQ(6, LookupKeyword(g_wider, "six"));
}

TEST(Keywords, LookupOfAnUnknownKeywordOrOtherLetterCaseIsMinusOne)
{
    for (const char* pszText : {"blue", "RED", "reD", "re", "redd", "red ", " red", "", "green"})
        EXPECT_EQ(-1, LookupKeyword(g_colors, pszText)) << "\"" << pszText << "\"";
    EXPECT_EQ(-1, LookupKeyword(g_colors, nullptr));
    EXPECT_EQ(-1, LookupKeyword(g_empty, "a"));
}

TEST(Keywords, BytesAreComparedThoughASecondPointerHoldsThem)
{
    const std::string copy = std::string("re") + "d";
    EXPECT_EQ(3, LookupKeyword(g_colors, copy.c_str()));
    constexpr KeywordRow gb2312[] = {{8, "\xBA\xEC"}, {-1, nullptr}};
    EXPECT_EQ(8, LookupKeyword(gb2312, "\xBA\xEC"));
    EXPECT_EQ(-1, LookupKeyword(gb2312, "\xBA\xED"));
}

TEST(Keywords, ATableEndsAtMinusOneOrAtANullKeyword)
{
    EXPECT_EQ(1, LookupKeyword(g_endedByNull, "a"));
    EXPECT_EQ(-1, LookupKeyword(g_endedByNull, "b"));
    EXPECT_EQ(1, LookupKeyword(g_endedByNumber, "a"));
    EXPECT_EQ(-1, LookupKeyword(g_endedByNumber, "b"));
    EXPECT_EQ(-1, LookupKeyword(g_endedByNumber, "c"));
}

TEST(Keywords, ANumberFindsItsRowAndKeyword)
{
    ASSERT_EQ(&g_colors[2], FindRow(g_colors, -7));
    EXPECT_EQ(nullptr, FindRow(g_colors, 4));
    EXPECT_EQ(nullptr, FindRow(g_colors, KEYWORD_NONE)); // the end mark is no row
    EXPECT_STREQ("Red", NameOf(g_colors, 0));
    EXPECT_STREQ("six", NameOf(g_wider, 6));
    EXPECT_EQ(nullptr, NameOf(g_colors, 99));
    EXPECT_EQ(nullptr, NameOf(g_empty, 0));
    EXPECT_EQ(nullptr, NameOf(g_endedByNumber, 3));
}

TEST(Keywords, AreCopiedWholeOrNotAtAll)
{
    for (std::size_t nSize = 0; nSize <= 6; ++nSize) {
        char szText[] = "??????";
        const bool bFits = nSize > 3; // "red" and the zero at its end
        EXPECT_EQ(bFits ? 3u : 0u, CopyKeyword(g_colors, 3, szText, nSize)) << nSize;
        EXPECT_STREQ(bFits ? "red" : "??????", szText) << nSize;
    }
}

TEST(Keywords, OfANumberWithoutAKeywordNothingIsCopied)
{
    char szText[] = "??????";
    for (const int nId : {4, -8, static_cast<int>(KEYWORD_NONE)})
        EXPECT_EQ(0u, CopyKeyword(g_colors, nId, szText, sizeof szText)) << nId;
    EXPECT_EQ(0u, CopyKeyword(g_endedByNull, 2, szText, sizeof szText)); // its keyword is null
    EXPECT_STREQ("??????", szText);
}

TEST(Keywords, OfTwoRowsWithOneNumberTheFirstNamesIt)
{
    EXPECT_STREQ("a", NameOf(g_twiceTheNumber, 1));
    EXPECT_EQ(1, LookupKeyword(g_twiceTheNumber, "b"));
    EXPECT_EQ(1, LookupKeyword(g_twiceTheKeyword, "a"));
}

TEST(Keywords, ASoundTableReadsBackWhatItNames)
{
    for (const KeywordRow& row : g_colors) {
        if (row.nId == KEYWORD_NONE) break;
        EXPECT_EQ(row.nId, LookupKeyword(g_colors, NameOf(g_colors, row.nId))) << row.pszName;
    }
}
