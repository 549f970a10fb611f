// The polygon and the polyline element: 2 to 16 points. The code is document/QELDocPointList.cpp;
// tests/PolygonViewTests.cpp and tests/PolylineViewTests.cpp look at the drawing.
#include "tests/support/DocSupport.h"

namespace {

// Points 1,2 3,4 5,6 and so on, as coordinates and as the words of the record.
std::string Points(int nCount, const char* pszBetween = " ")
{
    std::string text;
    for (int n = 1; n <= 2 * nCount; ++n) text += (n > 1 ? pszBetween : "") + std::to_string(n);
    return text;
}

std::string PointWords(int nCount)
{
    return std::to_string(nCount) + " " + Points(nCount);
}

std::vector<int32_t> Repeated(int32_t nCount, int32_t nValue)
{
    std::vector<int32_t> words(QEL_SHAPE_WORDS, nValue);
    words[0] = nCount;
    return words;
}

struct Row {
    int32_t nType;
    const char* pszTag;
};

void PrintTo(const Row& row, std::ostream* pStream)
{
    *pStream << row.pszTag;
}

class PointsElement : public testing::TestWithParam<Row> {
protected:
    static int32_t Type() { return GetParam().nType; }
    // The element with what follows its name, as a drawing has it.
    static std::string Text(const std::string& attributes)
    {
        return std::string("<") + GetParam().pszTag + attributes + "/>\r\n";
    }
};

TEST_P(PointsElement, BeginsAsTheDiagonalOfASquareOfTen)
{
    CTestShape shape(Type());
    EXPECT_EQ("2 0 0 10 10", GeometryOf(*shape, 5));
    EXPECT_EQ(Text(" crd=\"0 0 10 10\""), SavedBody(Text("")));
}

TEST_P(PointsElement, ReadsTwoToSixteenPointsAndIgnoresTheRest)
{
    for (int nCount = 2; nCount <= 20; ++nCount) {
        SCOPED_TRACE(nCount);
        const int nKept = nCount > 16 ? 16 : nCount;
        for (const char* pszBetween : {" ", "\t", "   ", "\t\t", " \t ", "\t "}) {
            CTestShape shape(Type());
            EXPECT_EQ(1, shape->ParseCrd(Points(nCount, pszBetween).c_str()));
            EXPECT_EQ(PointWords(nKept), GeometryOf(*shape, 1 + 2 * nKept));
        }
        EXPECT_EQ(Text(" crd=\"" + Points(nKept) + "\""),
                  SavedBody(Text(" crd=\"" + Points(nCount, "\t") + "\"")));
    }
    CTestShape shape(Type());
    EXPECT_EQ(1, shape->ParseCrd((Points(16) + " what follows").c_str()));
    EXPECT_EQ(PointWords(16), GeometryOf(*shape));
}

TEST_P(PointsElement, KeepsItsPointsWhenFewerThanTwoCanBeRead)
{
    const CrdRow rows[] = {
        {"", nullptr},          {" \t", nullptr},        {"1", nullptr},       {"1 2", nullptr},
        {"1 2 3", nullptr},     {"1 2 x 4", nullptr},    {"x 1 2 3", nullptr}, {"1,2,3,4", nullptr},
        {"1 2 3.5 4", nullptr}, {"1\n2\n3\n4", nullptr}, // a line feed is not stepped over
    };
    ExpectCrdRows(Type(), "9 8 7 6 5 4", 7, rows);
    EXPECT_EQ(Text(" crd=\"0 0 10 10\""), SavedBody(Text(" crd=\"30 40\"")));
}

TEST_P(PointsElement, StopsAtTheFirstPairThatIsNone)
{
    const CrdRow rows[] = {
        {"1 2 3 4 5", "2 1 2 3 4"},
        {"1 2 3 4 x 6 7 8", "2 1 2 3 4"},
        {"1 2 3 4 ", "2 1 2 3 4"},
        {"1 2 3 4 5 6\t", "3 1 2 3 4 5 6"},
        {"1 2 3 4 5 6.5 7 8", "4 1 2 3 4 5 6 7 8"}, // the .5 belongs to what is stepped over
    };
    for (const CrdRow& row : rows) {
        SCOPED_TRACE(row.pszCrd);
        CTestShape shape(Type());
        EXPECT_EQ(1, shape->ParseCrd(row.pszCrd));
        const int nCount = ShapeAttr(*shape).nGeometry[0];
        ASSERT_TRUE(nCount >= 0 && nCount <= QEL_MAX_POINTS);
        EXPECT_EQ(row.pszWords, GeometryOf(*shape, 1 + 2 * nCount));
    }
}

TEST_P(PointsElement, StepsOverNumbersByBlanksAndByTabsOnlyWhereNoBlankFollows)
{
    const CrdRow rows[] = {
        // To the blank after 2, then to the one after 4: the pair 3 4 is passed over.
        {"1\t2 3\t4 5 6", "2 1 2 5 6"},
        // After the first pair: blank after 1, blank after 3. "4" is no pair.
        {"1 2\t3 4", nullptr},
        // As long as a blank follows anywhere, the tabs before it do not count.
        {"1\t2\t3\t4 5 6", nullptr}, // behind 4, then behind 5: "6" is no pair
        {"1 2 3\t4", "2 1 2 3 4"},
        // From 3: behind it by the blank, and behind 4, where no blank is left, by the tab.
        {"1 2 3 4\t5\t6", "3 1 2 3 4 5 6"},
        // Leading blanks are themselves the first run that is stepped over.
        {" 1 2 3 4", "2 1 2 2 3"},
        {"\t1\t2\t3\t4", "2 1 2 2 3"},
        // A sign parts two numbers for the reading, and not for the stepping.
        {"1-2 3-4 5-6 7-8", "2 1 -2 5 -6"},
    };
    for (const CrdRow& row : rows) {
        SCOPED_TRACE(row.pszCrd);
        CTestShape shape(Type());
        EXPECT_EQ(row.pszWords ? 1 : 0, shape->ParseCrd(row.pszCrd));
        const int nCount = ShapeAttr(*shape).nGeometry[0];
        ASSERT_TRUE(nCount >= 0 && nCount <= QEL_MAX_POINTS);
        EXPECT_EQ(row.pszWords ? row.pszWords : "2 0 0 10 10", GeometryOf(*shape, 1 + 2 * nCount));
    }
}

TEST_P(PointsElement, SixteenPointsOfAnySizeAreWrittenWhole)
{
    std::string widest = "-2147483648";
    for (int n = 1; n < 32; ++n) widest += " -2147483648"; // 383 characters
    CTestShape shape(Type());
    SetGeometry(shape.Get(), Repeated(16, LONG_LEAST));
    EXPECT_EQ(widest, shape.Crd());
    EXPECT_EQ(Text(" crd=\"" + widest + "\""), SavedBody(Text(" crd='" + widest + "'")));

    std::string beyond = "9999999999";
    std::string saturated = "2147483647";
    for (int n = 1; n < 32; ++n) beyond += " 9999999999";
    for (int n = 1; n < 32; ++n) saturated += " 2147483647";
    EXPECT_EQ(Text(" crd=\"" + saturated + "\""), SavedBody(Text(" crd='" + beyond + "'")));
}

TEST_P(PointsElement, ACountOutsideTwoToSixteenFailsAllThatUsesThePoints)
{
    for (const int32_t nCount : {0, 1, 17, 33, -1, 2147483647, static_cast<int32_t>(LONG_LEAST)}) {
        SCOPED_TRACE(nCount);
        CTestShape shape(Type());
        SetGeometry(shape.Get(), Repeated(nCount, 4)); // a record may hold any count
        const std::string before = GeometryOf(*shape);
        EXPECT_EQ("refused", shape.Crd());
        EXPECT_EQ("none", RectOf(*shape));
        EXPECT_EQ(0, shape->MapRect({0, 0, 10, 10}, {5, 5, 15, 15}));
        EXPECT_EQ(0, shape->SetRect({5, 5, 15, 15}));
        EXPECT_EQ(before, GeometryOf(*shape));
        EXPECT_EQ(1, shape->ParseCrd("1 2 3 4")); // and good points mend it
        EXPECT_EQ("1 2 3 4", RectOf(*shape));
    }
}

TEST_P(PointsElement, WithAWrongCountIsSavedWithoutCoordinates)
{
    CTestDocument document(DrawingText(Text(" id=\"p\"")));
    ASSERT_EQ(1, document.Loaded());
    SetGeometry(document.First(), {17});
    EXPECT_EQ(Text(" id=\"p\""), document.SavedBody());
}

TEST_P(PointsElement, IsBoundedByTheLeastAndTheGreatestOfItsPoints)
{
    CTestShape shape(Type());
    ASSERT_EQ(1, shape->ParseCrd("5 -7 -3 20 8 1"));
    EXPECT_EQ("-3 -7 8 20", RectOf(*shape));
    ASSERT_EQ(1, shape->ParseCrd("10 10 0 0"));
    EXPECT_EQ("0 0 10 10", RectOf(*shape));
    ASSERT_EQ(1, shape->ParseCrd("4 6 4 9")); // upright: no width
    EXPECT_EQ("4 6 4 9", RectOf(*shape));
    // Only the points of the count: the words behind them are not looked at.
    SetGeometry(shape.Get(), {3, 1, 1, 2, 5, 4, 3, -99, 99});
    EXPECT_EQ("1 1 4 5", RectOf(*shape));
    // The sixteenth is looked at.
    std::vector<int32_t> words = Repeated(16, 3);
    words[31] = -40;
    words[32] = 50;
    SetGeometry(shape.Get(), words);
    EXPECT_EQ("-40 3 3 50", RectOf(*shape));
}

TEST_P(PointsElement, AResizeShiftsEveryPointAndNeverFlattens)
{
    ExpectResized(Type(), "nxyxyxy", {3, 1, 2, 31, 22, 15, -8});
    std::string layout = "n";
    for (int n = 0; n < 16; ++n) layout += "xy";
    std::vector<int32_t> words = {16};
    for (int n = 0; n < 32; ++n) words.push_back(7 * n - 50);
    ExpectResized(Type(), layout, words);
}

TEST_P(PointsElement, APlaceIsMeasuredFromTheBoxAroundItsPoints)
{
    CTestShape shape(Type());
    ASSERT_EQ(1, shape->ParseCrd("20 10 40 30 30 20"));
    // 0 - 20 + (30 - 20) * 30 / 20 is -5; 0 - 10 + (10 - 20) * 10 / 20 is -15.
    ASSERT_EQ(1, shape->SetRect({0, 0, 30, 10}));
    EXPECT_EQ("3 15 -5 35 15 25 5", GeometryOf(*shape, 7));
}

INSTANTIATE_TEST_SUITE_P(Of, PointsElement,
                         testing::Values(Row{QEL_TYPE_POLYGON, "polygon"},
                                         Row{QEL_TYPE_POLYLINE, "polyline"}),
                         testing::PrintToStringParamName());

} // namespace
