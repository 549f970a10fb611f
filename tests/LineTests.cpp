// The line element: its start and its end. They are a row of document/ShapeForms.h;
// tests/LineViewTests.cpp looks at the drawing.
#include "tests/support/DocSupport.h"

namespace {

TEST(LineElement, ReadsFourNumbersAndRefusesFewer)
{
    ExpectFixedCrd(QEL_TYPE_LINE, 4);
}

TEST(LineElement, BeginsAsTheDiagonalOfASquareOfTen)
{
    CTestShape line(QEL_TYPE_LINE);
    EXPECT_EQ("0 0 10 10", GeometryOf(*line, 4));
    EXPECT_EQ("0 0 10 10", line.Crd());
}

TEST(LineElement, WritesStartThenEndAsTheyAre)
{
    EXPECT_EQ("<line crd=\"30 40 10 -20\"/>\r\n", SavedBody("<line crd=\"30\t40 10 -20\"/>\r\n"));
    EXPECT_EQ("<line crd=\"0 0 10 10\"/>\r\n", SavedBody("<line crd=\"30 40 10\"/>\r\n"));
}

TEST(LineElement, IsBoundedByItsEndsNormalised)
{
    const struct {
        std::vector<int32_t> words;
        const char* pszRect;
    } rows[] = {
        {{1, 2, 3, 4}, "1 2 3 4"},
        {{30, 2, 10, 4}, "10 2 30 4"},
        {{1, 40, 3, 20}, "1 20 3 40"},
        {{30, 40, 10, 20}, "10 20 30 40"},
        {{5, 7, 50, 7}, "5 7 50 7"},
        {{LONG_LEAST, 2147483647, 2147483647, LONG_LEAST},
         "-2147483648 -2147483648 2147483647 2147483647"},
    };
    for (const auto& row : rows) {
        CTestShape line(QEL_TYPE_LINE);
        SetGeometry(line.Get(), row.words);
        EXPECT_EQ(row.pszRect, RectOf(*line));
    }
}

TEST(LineElement, AResizeShiftsBothEndsAndNeverFlattens)
{
    ExpectResized(QEL_TYPE_LINE, "xyxy", {31, 2, 1, 22});
}

TEST(LineElement, ALevelLineMovesUpAndDownAndIsShiftedSideways)
{
    CTestShape line(QEL_TYPE_LINE);
    SetGeometry(line.Get(), {0, 5, 10, 5});
    // 20 + (20 - 10) * 20 / 10; it has no height, so 30 - 5 alone.
    ASSERT_EQ(1, line->SetRect({20, 30, 40, 50}));
    EXPECT_EQ("40 30 50 30", GeometryOf(*line, 4));
}

} // namespace
