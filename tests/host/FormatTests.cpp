// What docs/format.md tells of pictures that a reader would not expect: texts, outlines, dials and
// scales, and which of the host's colours is the first one.
#include "tests/support/Host.h"

#include <cmath>
#include <cstdio>

namespace {

constexpr COLORREF RED = RGB(255, 0, 0);
constexpr COLORREF GREEN = RGB(0, 255, 0);
constexpr COLORREF BLACK = 0;
constexpr COLORREF WHITE = RGB(255, 255, 255);
constexpr int SIDE = 140;

using Lines = std::vector<std::string>;

struct DialLine { // a straight line, as its distances from a centre
    double fFrom;
    double fTo;
};

double Distance(const std::string& call, POINT ptCentre)
{
    int nX = 0;
    int nY = 0;
    std::sscanf(call.c_str() + call.find(' '), "%d,%d", &nX, &nY);
    return std::hypot(nX - ptCentre.x, nY - ptCentre.y);
}

// The first line of a recording whose pen has that colour.
DialLine LineInColor(const Lines& calls, const std::string& clr, POINT ptCentre)
{
    bool bPen = false;
    DialLine line{-1, -1};
    for (const std::string& call : calls) {
        if (call.starts_with("CreatePen")) bPen = call.ends_with("color " + clr);
        if (bPen && call.starts_with("MoveTo")) line.fFrom = Distance(call, ptCentre);
        if (bPen && call.starts_with("LineTo")) {
            line.fTo = Distance(call, ptCentre);
            return line;
        }
    }
    return line;
}

std::string Dial(const char* pszType, const char* pszCrd)
{
    return std::string("<meter upin='1' mtype='") + pszType + "' crd='" + pszCrd + "'/>";
}

bool Has(const Lines& calls, const std::string& part)
{
    for (const std::string& call : calls)
        if (call.find(part) != std::string::npos) return true;
    return false;
}

// How many pixels that are not the background lie outside of the first nX by nY.
int PaintedBeyond(const CTestBitmap& drawn, int nX, int nY, COLORREF clrBackground = WHITE)
{
    int nCount = 0;
    for (int y = 0; y < drawn.Height(); ++y)
        for (int x = 0; x < drawn.Width(); ++x)
            nCount += drawn.At(x, y) != clrBackground && (x >= nX || y >= nY);
    return nCount;
}

// How many pixels of a full draw on white are of a colour.
int Count(const CTextHost& host, COLORREF clr, int nSide = SIDE)
{
    CTestBitmap drawn(nSide, nSide);
    host.Draw(drawn.Dc());
    return CountPixels(drawn, clr);
}

} // namespace

// ---- values

TEST(Format, KeywordsOfFillStylesAndKeepModesAreNoValuesOfAFile)
{
    const CTextHost host("<rect style='Fill No3D' flag='Keep left'/><meter mtype='round'/>", 50);
    QELSHAPEATTR shape{};
    ASSERT_EQ(1, QELGetElemAttr(host, host.Child(0), &shape, nullptr));
    EXPECT_EQ(0u, shape.nStyle);
    EXPECT_EQ(0u, shape.nFlags);
    QELMETERATTR meter{}; // those of types are
    ASSERT_EQ(1, QELGetElemAttr(host, host.Child(1), &meter, nullptr));
    EXPECT_EQ(4, meter.nType);
}

TEST(Format, TheRangeAttributesOfAMeterChangeNothingWhileTheyAreValid)
{
    const auto calls = [](const std::string& range) {
        const CTextHost host(
            "<meter mtype='round' upin='1' crd='70 70 60 5 5 135 135' " + range + "/>", SIDE);
        EXPECT_EQ(1, host.Set(QEL_SEL_VALUE, 7));
        return host.Calls();
    };
    const Lines plain = calls("");
    EXPECT_LT(20u, plain.size());
    EXPECT_EQ(plain, calls("imin='3' imax='5'"));
    EXPECT_EQ(plain, calls("imin='1000' imax='1000000'"));
    EXPECT_NE(plain, calls("imin='5' imax='3'")); // not valid: a meter of the default type
}

// ---- texts

TEST(Format, AnAmpersandInATextUnderlinesTheNextLetterAndTwoShowOne)
{
    const CTextHost plain("<text crd='0 0 60 24'>AB</text>", 60);
    const CTextHost one("<text crd='0 0 60 24'>A&amp;B</text>", 60);
    const CTextHost two("<text crd='0 0 60 24'>A&amp;&amp;B</text>", 60);
    EXPECT_TRUE(Has(plain.Calls(), "\"AB\""));
    EXPECT_TRUE(Has(one.Calls(), "\"AB\""));
    EXPECT_FALSE(Has(one.Calls(), "&"));
    EXPECT_TRUE(Has(two.Calls(), "\"A&B\""));
    EXPECT_FALSE(Has(two.Calls(), "&&"));
    // The line under the letter: text of the same cell with and without it.
    CTestBitmap with(60, 24, BLACK), without(60, 24, BLACK);
    one.Draw(with.Dc());
    const CTextHost three("<text crd='0 0 60 24'>AB </text>", 60);
    three.Draw(without.Dc());
    EXPECT_LT(CountPixels(without, WHITE), CountPixels(with, WHITE));
    // The ampersand counts for the size: 60 pixels for three bytes are cells of 18.
    EXPECT_TRUE(Has(one.Calls(), "CreateFont width 18 height 24"));
    EXPECT_TRUE(Has(plain.Calls(), "CreateFont width 30 height 24"));
}

TEST(Format, ATextBeginsAtTheTopLeftAndBreaksOnlyWhereItHasALineBreak)
{
    const CTextHost host("<text crd='20 10 140 34'>AB\nCD long</text>", SIDE);
    CTestBitmap drawn(SIDE, SIDE, BLACK);
    host.Draw(drawn.Dc());
    const Lines texts = host.Calls({"Text"});
    ASSERT_EQ(2u, texts.size());
    EXPECT_EQ("Text 20,10 \"AB\"", texts[0]);
    EXPECT_TRUE(texts[1].starts_with("Text 20,")) << texts[1];
    EXPECT_TRUE(texts[1].ends_with("\"CD long\"")) << texts[1];
}

TEST(Format, ASecondLineShowsNoMoreThanTheRectangleHasLeftBelowTheFirst)
{
    const CTextHost host("<text style='0x1' bg='0xff' crd='20 20 60 50'>AB\nCD</text>", SIDE);
    EXPECT_TRUE(Has(host.Calls(), "CreateFont width 6 height 24")); // 40 by 5 bytes, 30 down
    CTestBitmap drawn(SIDE, SIDE, GREEN);
    host.Draw(drawn.Dc());
    EXPECT_EQ(0, PaintedBeyond(drawn, 60, 50, GREEN)); // the second would end at 68
    EXPECT_NE(GREEN, drawn.At(22, 46));
}

TEST(Format, ATextHasCellsOfSixByTwelveAtLeastAndIsCutAtItsRectangle)
{
    const CTextHost host("<text style='0x1' bg='0xff' crd='20 20 24 25'>WWWW</text>", SIDE);
    EXPECT_TRUE(Has(host.Calls(), "CreateFont width 6 height 12"));
    CTestBitmap drawn(SIDE, SIDE, GREEN);
    host.Draw(drawn.Dc());
    EXPECT_EQ(SIDE * SIDE - 4 * 5, CountPixels(drawn, GREEN)); // nothing beyond 4 by 5 pixels
    EXPECT_NE(GREEN, drawn.At(22, 22));
}

// ---- outlines

TEST(Format, AnOutlineKeepsItsWidthAtEverySizeOfThePicture)
{
    CTextHost host("<rect lnwid='3' crd='10 10 40 40'/>", 50);
    CTextHost border("<rect style='0x50003' crd='10 10 40 40'/>", 50);
    for (const LONG nSide : {50, 100, 1000}) {
        host.Place({0, 0, nSide, nSide});
        EXPECT_EQ(1u, host.Calls({"CreatePen style 0 width 3 "}).size()) << nSide;
        border.Place({0, 0, nSide, nSide});
        EXPECT_EQ(5u * 4u, border.Calls({"LineTo"}).size()) << nSide; // five rings
    }
}

// ---- dials

TEST(Format, ADialsScaleStandsInsideOfItsRadius)
{
    const POINT pt{70, 70};
    for (const char* pszType : {"round", "Arc"}) {
        SCOPED_TRACE(pszType);
        const CTextHost host(Dial(pszType, "70 70 60 5 5 135 135 30 330"), SIDE);
        EXPECT_EQ(1, host.Set(QEL_SEL_SCALE_COLOR, 0x112233));
        EXPECT_EQ(1, host.Set(QEL_SEL_PIN_COLOR, 0x445566));
        const Lines calls = host.Calls();
        const DialLine tick = LineInColor(calls, "112233", pt);
        EXPECT_NEAR(60 - 18, tick.fFrom, 2); // points are whole numbers
        EXPECT_NEAR(60 - 14, tick.fTo, 2);
        if (*pszType != 'A') continue;
        const DialLine needle = LineInColor(calls, "445566", pt);
        EXPECT_NEAR(5, needle.fFrom, 2);
        EXPECT_NEAR(60 - 21, needle.fTo, 2);
    }
    // Upright, the blade of "round" has its tip 17 inside; and a pie its rim 19.
    const CTextHost round(Dial("round", "70 70 60 0 0 140 140"), SIDE);
    EXPECT_EQ(1, round.Set(QEL_SEL_VALUE, 5));
    EXPECT_TRUE(Has(round.Calls({"Polygon"}), " 70,27"));
    const CTextHost pie(Dial("pie", "70 70 60 0 0 140 140 30 330"), SIDE);
    EXPECT_EQ(1, pie.Set(QEL_SEL_VALUE, 5));
    EXPECT_TRUE(Has(pie.Calls({"Pie"}), "Pie 29,29,111,111 "));
}

TEST(Format, ADialsNumbersBeginTenInsideOfItsRadiusAndStandOutwards)
{
    const CTextHost host(Dial("round", "70 70 60 0 0 140 140"), SIDE);
    EXPECT_EQ(1, host.Set(QEL_SEL_FULL_CIRCLE, 1)); // 0 at the bottom, 5 at the top
    const Lines texts = host.Calls({"Text"});
    EXPECT_EQ(2u, texts.size());
    EXPECT_TRUE(Has(texts, ",120 \"0\"")); // from 50 below the centre downwards
    EXPECT_TRUE(Has(texts, ",12 \"5\""));  // to 50 above it, 8 high
}

TEST(Format, TheBandOfAGaugeLiesOnItsRadiusAndAChartFillsItsFace)
{
    const CTextHost gauge(Dial("roundUpgrade", "70 70 60 0 0 140 140"), SIDE);
    EXPECT_TRUE(Has(gauge.Calls({"Arc"}), "Arc 10,10,130,130 "));
    const CTextHost chart("<meter mtype='sector' crd='70 70 10 0 0 140 140'>"
                          "<rect crd='29 19 111 121' lnwid='0'/></meter>",
                          SIDE);
    EXPECT_EQ(1, chart.Set(QEL_SEL_SECTOR_COUNT, 3));
    // 82 by 102 pixels: half of the smaller side is 41.
    EXPECT_EQ(3u, chart.Calls({"Pie 29,29,111,111 "}).size());
}

TEST(Format, ADialWithoutAKeepModeKeepsItsDistancesFromTheBordersAndItsFaceIsStretched)
{
    struct {
        const char* pszFlag; // of the meter, then of the face
        const char* pszFaceFlag;
        int nRadius; // at twice the size
        const char* pszFace;
    } const rows[] = {{"", "", 130, "Ellipse 20,20,260,260"},
                      {"", "flag='0x1000'", 130, "Ellipse 10,10,270,270"},
                      {"flag='0x200000'", "", 120, "Ellipse 20,20,260,260"},
                      {"flag='0x1000000'", "", 120, "Ellipse 20,20,260,260"},
                      {"flag='0x1001000'", "", 130, "Ellipse 20,20,260,260"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.pszFlag) + row.pszFaceFlag);
        CTextHost host(std::string("<meter mtype='round' crd='70 70 60 0 0 140 140' ") +
                           row.pszFlag + "><circle crd='70 70 60' " + row.pszFaceFlag +
                           "/></meter>",
                       SIDE);
        host.Place({0, 0, 2 * SIDE, 2 * SIDE});
        EXPECT_EQ(1, host.Set(QEL_SEL_SCALE_COLOR, 0x112233));
        const DialLine tick = LineInColor(host.Calls(), "112233", {140, 140});
        EXPECT_NEAR(row.nRadius - 14, tick.fTo, 2);
        EXPECT_TRUE(Has(host.Calls({"Ellipse"}), row.pszFace));
    }
}

TEST(Format, AnArcsFlagZeroIsTopAsGraphAlsoWithTheFlagForFullDraws)
{
    const auto calls = [](const std::string& flag) {
        CTextHost host("<meter mtype='Arc' " + flag + " crd='70 70 60 5 5 135 135 30 330'/>", SIDE);
        host.Place({0, 0, 2 * SIDE, 2 * SIDE + 50});
        return host.Calls();
    };
    EXPECT_LT(20u, calls("").size());
    EXPECT_EQ(calls(""), calls("flag='0x1030000'"));
    EXPECT_NE(calls(""), calls("flag='0x1000000'"));
}

TEST(Format, ADialWithBothEndsInOneColumnShowsItsNumbersInACornerAlone)
{
    // Both ends at the bottom, as without angles; and half dials.
    for (const char* pszAngles : {"", " 0 360", " 30 150", " 210 330"}) {
        for (const char* pszType : {"Arc", "pie", "pieUpgrade"}) {
            SCOPED_TRACE(std::string(pszType) + pszAngles);
            const std::string away = "70 70 60 5 5 135 135" + std::string(pszAngles);
            const CTextHost host(Dial(pszType, away.c_str()), SIDE);
            EXPECT_EQ(1, host.Set(QEL_SEL_VALUE, 8));
            CTestBitmap drawn(SIDE, SIDE);
            host.Draw(drawn.Dc());
            EXPECT_FALSE(IsBlank(drawn));
            EXPECT_EQ(0, PaintedBeyond(drawn, 30, 16)); // the rectangle's corner at the top left
            EXPECT_EQ(1, host.Set(QEL_SEL_SHOW_LABELS, 0));
            drawn.Fill(WHITE);
            host.Draw(drawn.Dc());
            EXPECT_TRUE(IsBlank(drawn));
            // A rectangle that covers the origin of the device lets a few pixels be seen there.
            const std::string over = "70 70 60 0 0 140 140" + std::string(pszAngles);
            const CTextHost atOrigin(Dial(pszType, over.c_str()), SIDE);
            EXPECT_EQ(1, atOrigin.Set(QEL_SEL_SHOW_LABELS, 0));
            atOrigin.Draw(drawn.Dc());
            EXPECT_FALSE(IsBlank(drawn));
            EXPECT_EQ(0, PaintedBeyond(drawn, 4, 4));
        }
    }
}

TEST(Format, ADialThatEndsWhereItBeginsOrBeforeShowsNothing)
{
    for (const char* pszAngles : {" 45 45", " 300 60"}) {
        for (const char* pszType : {"Arc", "pie", "pieUpgrade"}) {
            SCOPED_TRACE(std::string(pszType) + pszAngles);
            const std::string crd = "70 70 60 5 5 135 135" + std::string(pszAngles);
            const CTextHost host(Dial(pszType, crd.c_str()), SIDE);
            CTestBitmap drawn(SIDE, SIDE);
            host.Draw(drawn.Dc());
            EXPECT_TRUE(IsBlank(drawn));
        }
    }
}

// ---- scales

TEST(Format, AnArcScaleRunsFromItsFirstAngleToItsSecondCounterClockwiseFromTheRight)
{
    struct {
        const char* pszAngles;
        const char* pszFirst; // ticks: the first and the last
        const char* pszLast;
        const char* pszDirection;
    } const rows[] = {{"0 90", "MoveTo 120,70", "MoveTo 70,20", "SetArcDirection 1"},
                      {"90 0", "MoveTo 70,20", "MoveTo 120,70", "SetArcDirection 2"},
                      {"180 270", "MoveTo 20,70", "MoveTo 70,120", "SetArcDirection 1"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszAngles);
        const CTextHost host(
            std::string("<scale sctype='Arc' crd='70 70 60 50 10 ") + row.pszAngles + "'/>", SIDE);
        const Lines moves = host.Calls({"MoveTo"});
        EXPECT_TRUE(Has(host.Calls(), row.pszDirection));
        EXPECT_TRUE(Has(moves, row.pszFirst));
        EXPECT_TRUE(Has(moves, row.pszLast));
    }
}

TEST(Format, AnArcScaleCountsFromItsSecondAngleUnlessTheStartCodeIsFourOrMore)
{
    for (const DWORD nCode : {0U, 3U, 4U, 7U}) {
        SCOPED_TRACE(nCode);
        const CTextHost host("<scale scid='40' pin='1' hidesc='1' style='0x0' sctype='Arc' "
                             "crd='70 70 60 50 10 0 90'/>",
                             SIDE);
        EXPECT_EQ(1, QELSetScaleParam(host, 40, QEL_SEL_START_CODE, nCode));
        EXPECT_EQ(1, QELSetScaleParam(host, 40, QEL_SEL_MAX, 100));
        EXPECT_EQ(1, QELSetScaleStatus(host, 40, 0));
        EXPECT_TRUE(Has(host.Calls(), nCode < 4 ? "LineTo 70,20" : "LineTo 120,70"));
        EXPECT_EQ(1, QELSetScaleStatus(host, 40, 100));
        EXPECT_TRUE(Has(host.Calls(), nCode < 4 ? "LineTo 120,70" : "LineTo 70,20"));
    }
}

// ---- which of the host's colours is the first

TEST(Format, HatchZeroOfBarsPiesAndScalesIsParameterTwoAndOfAllOthersParameterThree)
{
    struct {
        const char* pszWhat;
        const char* pszBody;
        bool bTwoFirst;
    } const rows[] = {
        {"bar", "<meter crd='0 0 10 140'><rect crd='10 0 130 140'/></meter>", true},
        {"pie", "<meter mtype='pie' crd='70 70 60 0 0 140 140 30 330'/>", true},
        {"pieUpgrade", "<meter mtype='pieUpgrade' crd='70 70 60 0 0 140 140 30 330'/>", true},
        {"scale", "<scale scid='0' crd='10 0 130 140'/>", true},
        {"shape", "<rect style='0x1' flag='0x80' crd='10 0 130 140'/>", false},
        {"pattern", "<pattern><rect style='0x1' crd='10 0 130 140'/></pattern>", false},
        {"draw region", "<drawrgn style='0x1' crd='10 0 130 140'/>", false}};
    for (const auto& row : rows) {
        for (const DWORD nHatch : {0U, 1U}) {
            SCOPED_TRACE(std::string(row.pszWhat) + " " + std::to_string(nHatch));
            const CTextHost host(row.pszBody, SIDE);
            host.Set(QEL_SEL_VALUE, 10); // of bars, pies and the scale: all of it
            host.Set(QEL_SEL_MAX, 10);
            QELSetParam(host, QEL_PARAM_DRAFT, nHatch);
            QELSetParam(host, QEL_PARAM_DRAFT_FORE, RED);
            QELSetParam(host, QEL_PARAM_DRAFT_BACK, GREEN);
            const bool bRed = row.bTwoFirst == (nHatch == 0);
            EXPECT_LT(1000, Count(host, bRed ? RED : GREEN));
            EXPECT_EQ(0, Count(host, bRed ? GREEN : RED));
        }
    }
}

TEST(Format, GradientsOfBarsAndPiesRunFromParameterTwoAndOfShapesFromParameterThree)
{
    // Gradient 0 runs from the left to the right.
    for (const bool bBar : {true, false}) {
        SCOPED_TRACE(bBar);
        const CTextHost host(bBar ? "<meter crd='0 0 5 140'><rect crd='10 0 130 140'/></meter>"
                                  : "<rect style='0x1' flag='0x80' lnwid='0' crd='10 0 130 140'/>",
                             SIDE);
        host.Set(QEL_SEL_VALUE, 10);
        QELSetParam(host, QEL_PARAM_DRAFT, DRAFT_GRADIENT);
        QELSetParam(host, QEL_PARAM_DRAFT_FORE, RED);
        QELSetParam(host, QEL_PARAM_DRAFT_BACK, GREEN);
        CTestBitmap drawn(SIDE, SIDE);
        host.Draw(drawn.Dc());
        const COLORREF first = drawn.At(13, 70), last = drawn.At(126, 70);
        EXPECT_EQ(bBar, GetRValue(first) > GetGValue(first));
        EXPECT_EQ(bBar, GetGValue(last) > GetRValue(last));
    }
}

// ---- the read-out of "roundUpgrade"

namespace {

// The read-out's text and colour at a value that was drawn before as well.
std::string ReadOut(const CTextHost& host, DWORD nValue)
{
    EXPECT_EQ(1, host.Set(QEL_SEL_VALUE, nValue));
    EXPECT_EQ(1, host.Set(QEL_SEL_SHOW_LABELS, 0));
    host.Draw(CRecording().Dc());
    std::string clr, text;
    for (const std::string& call : host.Calls()) {
        if (call.starts_with("SetTextColor")) clr = call.substr(13);
        if (call.starts_with("Text")) text = call.substr(call.find('"')) + " " + clr;
    }
    return text;
}

} // namespace

TEST(Format, TheReadOutHasItsOwnColorsAndADecimalAndGoesOnOutOfRange)
{
    const CTextHost host(Dial("roundUpgrade", "70 70 60 0 0 140 140"), SIDE);
    EXPECT_EQ(1, host.Set(QEL_SEL_SHOW_VALUE, 1));
    EXPECT_EQ(1, host.Set(QEL_SEL_MAX, 100));
    EXPECT_EQ(1, host.Set(QEL_SEL_SCALE_END, 100));
    EXPECT_EQ(1, host.Set(QEL_SEL_LABEL_COLOR, 0x123456)); // means nothing to it
    EXPECT_EQ("\"5.0\" 000000", ReadOut(host, 5));
    EXPECT_EQ("\"150.0\" 000000", ReadOut(host, 150));
    EXPECT_EQ(1, host.Set(QEL_SEL_SHOW_ALARM, 1));
    EXPECT_EQ(1, host.Set(QEL_SEL_LOW_LIMIT, 20));
    EXPECT_EQ(1, host.Set(QEL_SEL_HIGH_LIMIT, 80));
    EXPECT_EQ(1, host.Set(QEL_SEL_HIGH_COLOR, 0x777777));
    EXPECT_EQ("\"50.0\" 00ff00", ReadOut(host, 50));
    EXPECT_EQ("\"10.0\" 0000ff", ReadOut(host, 10));
    EXPECT_EQ("\"90.0\" 0000ff", ReadOut(host, 90));
    EXPECT_EQ(1, host.Set(QEL_SEL_DECIMAL_SHIFT, 2));
    EXPECT_EQ("\"0.500\" 00ff00", ReadOut(host, 50));
}

TEST(Format, OutOfRangeTheNeedleStaysAtTheEndOfTheScale)
{
    const CTextHost host(Dial("roundUpgrade", "70 70 60 0 0 140 140"), SIDE);
    EXPECT_EQ(1, host.Set(QEL_SEL_SHOW_LABELS, 0));
    EXPECT_EQ(1, host.Set(QEL_SEL_VALUE, 10)); // the maximum
    const Lines atEnd = host.Calls({"Polygon"});
    ASSERT_LT(0u, atEnd.size());
    EXPECT_EQ(1, host.Set(QEL_SEL_VALUE, 15));
    EXPECT_EQ(atEnd, host.Calls({"Polygon"}));
    EXPECT_EQ(1, host.Set(QEL_SEL_VALUE, 9));
    EXPECT_NE(atEnd, host.Calls({"Polygon"}));
}

TEST(Format, TheReadOutIsTheScalesEndTimesTheValueByTheMaximum)
{
    // 50 to 150 on the scale for values 0 to 10: the needle stands at 100, the read-out counts
    // from 0.
    const CTextHost host(Dial("roundUpgrade", "70 70 60 0 0 140 140"), SIDE);
    EXPECT_EQ(1, host.Set(QEL_SEL_SHOW_VALUE, 1));
    EXPECT_EQ(1, host.Set(QEL_SEL_SCALE_START, 50));
    EXPECT_EQ(1, host.Set(QEL_SEL_SCALE_END, 150));
    EXPECT_EQ("\"75.0\" 000000", ReadOut(host, 5));
}
