// The rectangle with rounded corners: a rectangle and the size of the corner ellipse. They are a
// row of document/ShapeForms.h; tests/RoundRectViewTests.cpp looks at the drawing.
#include "tests/support/DocSupport.h"

namespace {

TEST(RoundRectElement, ReadsSixNumbersAndRefusesFewer)
{
    ExpectFixedCrd(QEL_TYPE_ROUNDRECT, 6);
}

TEST(RoundRectElement, BeginsAsASquareOfTenWithSharpCorners)
{
    CTestShape shape(QEL_TYPE_ROUNDRECT);
    EXPECT_EQ("0 0 10 10 0 0", GeometryOf(*shape, 6));
    EXPECT_EQ("0 0 10 10 0 0", shape.Crd());
}

TEST(RoundRectElement, WritesItsCoordinatesWithSingleBlanks)
{
    EXPECT_EQ("<rndrect crd=\"1 2 30 40 8 -6\"/>\r\n",
              SavedBody("<rndrect crd=\"1\t2 \t30 40 8 -6\"/>\r\n"));
    EXPECT_EQ("<rndrect crd=\"0 0 10 10 0 0\"/>\r\n", SavedBody("<rndrect crd=\"1 2 30 40 8\"/>"));
}

TEST(RoundRectElement, IsBoundedByItsRectangleWhateverTheCorners)
{
    CTestShape shape(QEL_TYPE_ROUNDRECT);
    SetGeometry(shape.Get(), {30, 5, 10, 45, 900, -900});
    EXPECT_EQ("10 5 30 45", RectOf(*shape));
}

TEST(RoundRectElement, AResizeShiftsTheRectangleAndLeavesTheCornersAlone)
{
    ExpectResized(QEL_TYPE_ROUNDRECT, "LTRBwh", {1, 2, 31, 22, 6, 8});
    CTestShape shape(QEL_TYPE_ROUNDRECT);
    SetGeometry(shape.Get(), {0, 0, 10, 10, 4, 3});
    ASSERT_EQ(1, shape->SetRect({5, 5, 25, 25})); // by 5 + (20 - 10) * 20 / 10
    EXPECT_EQ("25 25 35 35 4 3", GeometryOf(*shape, 6));
}

} // namespace
