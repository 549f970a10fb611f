// The chord element: a bounding rectangle, a start point and an end point. The code is
// document/QELDocChord.cpp; tests/ChordViewTests.cpp looks at the drawing.
#include "tests/support/DocSupport.h"

namespace {

TEST(ChordElement, ReadsEightNumbersAndRefusesFewer)
{
    ExpectFixedCrd(QEL_TYPE_CHORD, 8);
}

TEST(ChordElement, BeginsAsTheUpperRightQuarterOfACircle)
{
    CTestShape shape(QEL_TYPE_CHORD);
    EXPECT_EQ("0 0 10 10 10 5 5 0", GeometryOf(*shape, 8)); // from the right to the top
    EXPECT_EQ("0 0 10 10 10 5 5 0", shape.Crd());
}

TEST(ChordElement, WritesItsCoordinatesWithSingleBlanks)
{
    EXPECT_EQ("<chord crd=\"1 2 30 40 -5 6 7 -8\"/>\r\n",
              SavedBody("<chord crd=\"1  2\t30 40 -5 6 7 -8 \"/>\r\n"));
    EXPECT_EQ("<chord crd=\"0 0 10 10 10 5 5 0\"/>\r\n",
              SavedBody("<chord crd=\"1 2 3 4 5 6 7\"/>\r\n"));
    std::string widest = "-2147483648";
    for (int n = 1; n < 8; ++n) widest += " -2147483648";
    EXPECT_EQ("<chord crd=\"" + widest + "\"/>\r\n",
              SavedBody("<chord crd='" + widest + "'/>\r\n"));
}

TEST(ChordElement, IsBoundedByItsRectangleWhereverThePointsAre)
{
    CTestShape shape(QEL_TYPE_CHORD);
    SetGeometry(shape.Get(), {30, 40, 10, 20, -100, 500, 600, -700});
    EXPECT_EQ("10 20 30 40", RectOf(*shape));
}

TEST(ChordElement, AResizeShiftsRectangleAndPointsAndFlattensTheRectangleAlone)
{
    ExpectResized(QEL_TYPE_CHORD, "LTRBxyxy", {1, 2, 31, 22, 31, 12, 16, 2});
    CTestShape shape(QEL_TYPE_CHORD);
    // From 0 0 10 10: no width, by 7; 8 + (20 - 10) * 20 / 10.
    ASSERT_EQ(1, shape->SetRect({7, 8, 7, 28}));
    EXPECT_EQ("7 28 7 38 17 33 12 28", GeometryOf(*shape, 8));
}

TEST(ChordElement, APlaceIsMeasuredFromItsRectangleAndNotFromItsPoints)
{
    CTestShape shape(QEL_TYPE_CHORD);
    SetGeometry(shape.Get(), {10, 20, 30, 40, -50, -60, 70, 80});
    ASSERT_EQ(1, shape->SetRect({13, 16, 33, 36})); // as large: by 3 and -4
    EXPECT_EQ("13 16 33 36 -47 -64 73 76", GeometryOf(*shape, 8));
}

} // namespace
