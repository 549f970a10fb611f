// The rectangle element. Its coordinates are a row of document/ShapeForms.h;
// tests/RectViewTests.cpp looks at the drawing.
#include "tests/support/DocSupport.h"

namespace {

TEST(RectElement, ReadsFourNumbersAndRefusesFewer)
{
    ExpectFixedCrd(QEL_TYPE_RECT, 4);
}

TEST(RectElement, ReadsNumbersAsTheyAreSpelled)
{
    const CrdRow rows[] = {
        {"1-2-3-4", "1 -2 -3 -4"}, {"007 +8 -0 9", "7 8 0 9"}, {"\v1\f2\r3\n4", "1 2 3 4"},
        {"1 2 3 4.5", "1 2 3 4"},  {"0x1 2 3 4", nullptr},     {"1 - 2 3 4", nullptr},
        {"1 2 --3 4", nullptr},    {"1;2;3;4", nullptr},
    };
    ExpectCrdRows(QEL_TYPE_RECT, "9 8 7 6", 4, rows);
}

TEST(RectElement, BeginsAsASquareOfTen)
{
    CTestShape rect(QEL_TYPE_RECT);
    EXPECT_EQ("0 0 10 10", GeometryOf(*rect, 4));
    EXPECT_EQ("0 0 10 10", RectOf(*rect));
}

TEST(RectElement, WritesItsCoordinatesWithSingleBlanks)
{
    EXPECT_EQ("<rect crd=\"0 0 10 10\"/>\r\n", SavedBody("<rect/>\r\n"));
    EXPECT_EQ("<rect crd=\"-5 6 7 -8\"/>\r\n", SavedBody("<rect crd='-5\t6 7  -8 9'/>\r\n"));
    EXPECT_EQ("<rect crd=\"-2147483648 2147483647 0 -1\"/>\r\n",
              SavedBody("<rect crd=\"-9999999999 9999999999 0 -1\"/>\r\n"));
}

TEST(RectElement, KeepsItsDefaultsWhereTheFileCannotBeRead)
{
    EXPECT_EQ("<rect lnwid=\"3\" crd=\"0 0 10 10\" flag=\"0x1\"/>\r\n",
              SavedBody("<rect lnwid=\"3\" crd=\"1 2 3\" flag=\"0x1\"/>\r\n"));
}

TEST(RectElement, IsBoundedByItsRectangleNormalised)
{
    CTestShape rect(QEL_TYPE_RECT);
    SetGeometry(rect.Get(), {30, 40, 10, 20});
    EXPECT_EQ("10 20 30 40", RectOf(*rect));
    EXPECT_EQ("30 40 10 20", GeometryOf(*rect, 4)); // only the answer is normalised
}

TEST(RectElement, AMoveKeepsItsSizeAndAResizeShiftsIt)
{
    CTestShape rect(QEL_TYPE_RECT);
    ASSERT_EQ(1, rect->MapRect({0, 0, 10, 10}, {5, 5, 15, 15}));
    EXPECT_EQ("5 5 15 15", RectOf(*rect));
    CTestShape shifted(QEL_TYPE_RECT);
    ASSERT_EQ(1, shifted->MapRect({0, 0, 10, 10}, {5, 5, 25, 25}));
    EXPECT_EQ("25 25 35 35", RectOf(*shifted)); // by 5, and by (20 - 10) * 20 / 10; not scaled
    ExpectResized(QEL_TYPE_RECT, "LTRB", {1, 2, 31, 22});
    ExpectResized(QEL_TYPE_RECT, "LTRB", {31, 22, 1, 2});
}

TEST(RectElement, APlaceIsMeasuredFromItsOwnRectangle)
{
    CTestShape rect(QEL_TYPE_RECT);
    SetGeometry(rect.Get(), {20, 30, 40, 70});
    // 10 - 20 + (30 - 20) * 30 / 20 is 5; 10 - 30 + (20 - 40) * 20 / 40 is -30.
    ASSERT_EQ(1, rect->SetRect({10, 10, 40, 30}));
    EXPECT_EQ("25 0 45 40", GeometryOf(*rect, 4));
    ASSERT_EQ(1, rect->SetRect({3, 4, 3, 44})); // no width: moved and flat, as high as before
    EXPECT_EQ("3 4 3 44", GeometryOf(*rect, 4));
    ASSERT_EQ(1, rect->SetRect({13, 14, 33, 54})); // it had no width: only moved, and it stays flat
    EXPECT_EQ("13 14 13 54", GeometryOf(*rect, 4));
}

} // namespace
