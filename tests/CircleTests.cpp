// The circle element: its centre and an unsigned radius. They are a row of document/ShapeForms.h;
// tests/CircleViewTests.cpp looks at the drawing.
#include "tests/support/DocSupport.h"

namespace {

TEST(CircleElement, ReadsCentreAndRadiusAndRefusesFewer)
{
    const CrdRow rows[] = {
        {"30 40 7", "30 40 7"},
        {"\t-30  40\t \t7 99", "-30 40 7"},
        {"1-2+3", "1 -2 3"},
        {"1 2 3mm", "1 2 3"},
        {"-9999999999 9999999999 1", "-2147483648 2147483647 1"},
        {"", nullptr},
        {" \t", nullptr},
        {"30 40", nullptr},
        {"30 40 x", nullptr},
        {"30,40,7", nullptr},
        {"x 30 40 7", nullptr},
    };
    ExpectCrdRows(QEL_TYPE_CIRCLE, "11 12 13", 3, rows);
}

TEST(CircleElement, RadiusHasNoSign)
{
    // In a record of signed words a large radius is negative; the bits are the same.
    const CrdRow rows[] = {
        {"1 2 2147483648", "1 2 -2147483648"},
        {"1 2 4294967295", "1 2 -1"},
        {"1 2 99999999999", "1 2 -1"}, // no more than 4294967295
        {"1 2 -3", "1 2 -3"},          // wraps
    };
    ExpectCrdRows(QEL_TYPE_CIRCLE, "11 12 13", 3, rows);
    EXPECT_EQ("<circle crd=\"1 -2 4294967295\"/>\r\n",
              SavedBody("<circle crd=\"1 -2 4294967295\"/>\r\n"));
    EXPECT_EQ("<circle crd=\"1 -2 4294967293\"/>\r\n", SavedBody("<circle crd=\"1 -2 -3\"/>\r\n"));
}

TEST(CircleElement, BeginsInASquareOfTen)
{
    CTestShape shape(QEL_TYPE_CIRCLE);
    EXPECT_EQ("5 5 5", GeometryOf(*shape, 3));
    EXPECT_EQ("0 0 10 10", RectOf(*shape));
    EXPECT_EQ("<circle crd=\"5 5 5\"/>\r\n", SavedBody("<circle crd=\"1 2\"/>\r\n"));
}

TEST(CircleElement, IsBoundedByItsCentreLessAndPlusTheRadius)
{
    CTestShape shape(QEL_TYPE_CIRCLE);
    SetGeometry(shape.Get(), {30, -40, 7});
    EXPECT_EQ("23 -47 37 -33", RectOf(*shape));
    SetGeometry(shape.Get(), {30, -40, 0});
    EXPECT_EQ("30 -40 30 -40", RectOf(*shape));
    // As far as it goes: 2147483647 - 1 is the largest centre for a radius of 1.
    SetGeometry(shape.Get(), {2147483646, -2147483647, 1});
    EXPECT_EQ("2147483645 -2147483648 2147483647 -2147483646", RectOf(*shape));
}

TEST(CircleElement, AResizeShiftsTheCentreAndKeepsTheRadius)
{
    ExpectResized(QEL_TYPE_CIRCLE, "xyr", {15, 12, 6});
    CTestShape shape(QEL_TYPE_CIRCLE);
    ASSERT_EQ(1, shape->SetRect({5, 5, 5, 25})); // no width: 5; 5 + (20 - 10) * 20 / 10
    EXPECT_EQ("10 30 5", GeometryOf(*shape, 3));
}

} // namespace
