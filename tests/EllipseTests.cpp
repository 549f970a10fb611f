// The ellipse element: its bounding rectangle. It is a row of document/ShapeForms.h;
// tests/EllipseViewTests.cpp looks at the drawing.
#include "tests/support/DocSupport.h"

namespace {

TEST(EllipseElement, ReadsFourNumbersAndRefusesFewer)
{
    ExpectFixedCrd(QEL_TYPE_ELLIPSE, 4);
}

TEST(EllipseElement, BeginsInASquareOfTen)
{
    CTestShape shape(QEL_TYPE_ELLIPSE);
    EXPECT_EQ("0 0 10 10", GeometryOf(*shape, 4));
    EXPECT_EQ("0 0 10 10", RectOf(*shape));
}

TEST(EllipseElement, WritesItsCoordinatesWithSingleBlanks)
{
    EXPECT_EQ("<ellipse crd=\"1 -2 30 40\"/>\r\n",
              SavedBody("<ellipse crd=\"1 -2\t\t30 40 50\"/>\r\n"));
    EXPECT_EQ("<ellipse crd=\"0 0 10 10\"/>\r\n", SavedBody("<ellipse crd=\"a b c d\"/>\r\n"));
}

TEST(EllipseElement, IsBoundedByItsRectangleNormalised)
{
    CTestShape shape(QEL_TYPE_ELLIPSE);
    SetGeometry(shape.Get(), {-10, 45, -30, 5});
    EXPECT_EQ("-30 5 -10 45", RectOf(*shape));
}

TEST(EllipseElement, AResizeShiftsItAndAFlatOneMakesItFlat)
{
    ExpectResized(QEL_TYPE_ELLIPSE, "LTRB", {1, 2, 31, 22});
    CTestShape shape(QEL_TYPE_ELLIPSE);
    ASSERT_EQ(1, shape->SetRect({20, 3, 25, 3})); // 20 + (5 - 10) * 5 / 10, cut to 18; no height
    EXPECT_EQ("18 3 28 3", GeometryOf(*shape, 4));
}

} // namespace
