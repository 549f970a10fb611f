// The arc, the chord and the pie element: a bounding rectangle, a start point and an end point.
// Their coordinates are rows of document/ShapeForms.h; tests/ArcViewTests.cpp and
// tests/ChordPieViewTests.cpp look at the drawing.
#include "tests/support/DocSupport.h"

namespace {

struct Row {
    int32_t nType;
    const char* pszTag;
};

void PrintTo(const Row& row, std::ostream* pStream)
{
    *pStream << row.pszTag;
}

class RadialElement : public testing::TestWithParam<Row> {
protected:
    static int32_t Type() { return GetParam().nType; }
    // The element with its coordinates, as a drawing has it.
    static std::string Text(const std::string& crd, char cQuote = '"')
    {
        return std::string("<") + GetParam().pszTag + " crd=" + cQuote + crd + cQuote + "/>\r\n";
    }
};

TEST_P(RadialElement, ReadsEightNumbersAndRefusesFewer)
{
    ExpectFixedCrd(Type(), 8);
}

TEST_P(RadialElement, BeginsAsTheUpperRightQuarterOfACircle)
{
    CTestShape shape(Type());
    EXPECT_EQ("0 0 10 10 10 5 5 0", GeometryOf(*shape, 8)); // from the right to the top
    EXPECT_EQ("0 0 10 10 10 5 5 0", shape.Crd());
}

TEST_P(RadialElement, WritesItsCoordinatesWithSingleBlanks)
{
    EXPECT_EQ(Text("1 2 30 40 -5 6 7 -8"), SavedBody(Text("1  2\t30 40 -5 6 7 -8 ")));
    EXPECT_EQ(Text("0 0 10 10 10 5 5 0"), SavedBody(Text("1 2 3 4 5 6 7")));
    std::string widest = "-2147483648";
    for (int n = 1; n < 8; ++n) widest += " -2147483648";
    EXPECT_EQ(Text(widest), SavedBody(Text(widest, '\'')));
}

TEST_P(RadialElement, IsBoundedByItsRectangleWhereverThePointsAre)
{
    CTestShape shape(Type());
    SetGeometry(shape.Get(), {30, 40, 10, 20, -100, 500, 600, -700});
    EXPECT_EQ("10 20 30 40", RectOf(*shape));
}

TEST_P(RadialElement, AResizeShiftsRectangleAndPointsAndFlattensTheRectangleAlone)
{
    ExpectResized(Type(), "LTRBxyxy", {1, 2, 31, 22, 31, 12, 16, 2});
    CTestShape shape(Type());
    // From 0 0 10 10: no width, by 7; 8 + (20 - 10) * 20 / 10.
    ASSERT_EQ(1, shape->SetRect({7, 8, 7, 28}));
    EXPECT_EQ("7 28 7 38 17 33 12 28", GeometryOf(*shape, 8));
}

TEST_P(RadialElement, APlaceIsMeasuredFromItsRectangleAndNotFromItsPoints)
{
    CTestShape shape(Type());
    SetGeometry(shape.Get(), {10, 20, 30, 40, -50, -60, 70, 80});
    ASSERT_EQ(1, shape->SetRect({13, 16, 33, 36})); // as large: by 3 and -4
    EXPECT_EQ("13 16 33 36 -47 -64 73 76", GeometryOf(*shape, 8));
}

INSTANTIATE_TEST_SUITE_P(Of, RadialElement,
                         testing::Values(Row{QEL_TYPE_ARC, "arc"}, Row{QEL_TYPE_CHORD, "chord"},
                                         Row{QEL_TYPE_PIE, "pie"}),
                         testing::PrintToStringParamName());

} // namespace
