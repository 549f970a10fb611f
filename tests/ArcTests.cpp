// The arc element: a bounding rectangle, a start point and an end point. The code is
// document/QELDocArc.cpp; tests/ArcViewTests.cpp looks at the drawing.
#include "tests/support/DocSupport.h"

namespace {

TEST(ArcElement, ReadsEightNumbersAndRefusesFewer)
{
    ExpectFixedCrd(QEL_TYPE_ARC, 8);
}

TEST(ArcElement, BeginsAsTheUpperRightQuarterOfACircle)
{
    CTestShape shape(QEL_TYPE_ARC);
    EXPECT_EQ("0 0 10 10 10 5 5 0", GeometryOf(*shape, 8)); // from the right to the top
    EXPECT_EQ("0 0 10 10 10 5 5 0", shape.Crd());
}

TEST(ArcElement, WritesItsCoordinatesWithSingleBlanks)
{
    EXPECT_EQ("<arc crd=\"1 2 30 40 -5 6 7 -8\"/>\r\n",
              SavedBody("<arc crd=\"1  2\t30 40 -5 6 7 -8 \"/>\r\n"));
    EXPECT_EQ("<arc crd=\"0 0 10 10 10 5 5 0\"/>\r\n",
              SavedBody("<arc crd=\"1 2 3 4 5 6 7\"/>\r\n"));
    std::string widest = "-2147483648";
    for (int n = 1; n < 8; ++n) widest += " -2147483648";
    EXPECT_EQ("<arc crd=\"" + widest + "\"/>\r\n", SavedBody("<arc crd='" + widest + "'/>\r\n"));
}

TEST(ArcElement, IsBoundedByItsRectangleWhereverThePointsAre)
{
    CTestShape shape(QEL_TYPE_ARC);
    SetGeometry(shape.Get(), {30, 40, 10, 20, -100, 500, 600, -700});
    EXPECT_EQ("10 20 30 40", RectOf(*shape));
}

TEST(ArcElement, AResizeShiftsRectangleAndPointsAndFlattensTheRectangleAlone)
{
    ExpectResized(QEL_TYPE_ARC, "LTRBxyxy", {1, 2, 31, 22, 31, 12, 16, 2});
    CTestShape shape(QEL_TYPE_ARC);
    // From 0 0 10 10: no width, by 7; 8 + (20 - 10) * 20 / 10.
    ASSERT_EQ(1, shape->SetRect({7, 8, 7, 28}));
    EXPECT_EQ("7 28 7 38 17 33 12 28", GeometryOf(*shape, 8));
}

TEST(ArcElement, APlaceIsMeasuredFromItsRectangleAndNotFromItsPoints)
{
    CTestShape shape(QEL_TYPE_ARC);
    SetGeometry(shape.Get(), {10, 20, 30, 40, -50, -60, 70, 80});
    ASSERT_EQ(1, shape->SetRect({13, 16, 33, 36})); // as large: by 3 and -4
    EXPECT_EQ("13 16 33 36 -47 -64 73 76", GeometryOf(*shape, 8));
}

} // namespace
