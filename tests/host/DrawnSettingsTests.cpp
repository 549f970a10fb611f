// What a drawing itself sets of its meters and scales, with the attributes "set" and "value", as a
// host sees it: the picture is that of the same settings by calls, what the host sets lies above,
// and a reset gives back what the drawing says.
#include "tests/support/Host.h"

#include <utility>

namespace {

constexpr int SIDE = 140;
constexpr const char* g_types[] = {"vert", "vert3d", "horz",         "horz3d",     "round", "Arc",
                                   "pie",  "clock",  "roundUpgrade", "pieUpgrade", "sector"};
enum { BAR = 0, ROUND = 4, CLOCK = 7, SECTOR = 10, TYPES = 11 };

std::string Meter(int nType, const std::string& attributes)
{
    const bool bBar = nType < 4;
    const bool bArc = nType == 5 || nType == 6 || nType == 9;
    return std::string("<meter id='a' mtype='") + g_types[nType] + "' upin='1' " + attributes +
           " crd='" +
           (bBar   ? nType < 2 ? "20 10 70 130" : "10 20 130 70"
            : bArc ? "70 70 60 5 5 135 135 45 315"
                   : "70 70 60 5 5 135 135") +
           "'><rect style='0x1' lnwid='0' bg='0xC0D0E0' crd='" +
           (bBar ? nType < 2 ? "75 10 130 130" : "10 15 130 40" : "5 5 135 135") + "'/></meter>";
}

std::string Scale(const char* pszType, const std::string& attributes)
{
    const bool bRound = *pszType == 'r' || *pszType == 'A';
    return std::string("<scale id='a' sctype='") + pszType + "' pin='1' " + attributes + " crd='" +
           (bRound ? "70 70 60 50 10 0 270'/>" : "10 10 130 130'/>");
}

// Settings that show in one type or another, with the numbers that they mean.
const std::string SETTINGS = "max=100 min=-20 scale-start=-20 scale-end=100 ticks=20 major-every=4 "
                             "pin-color=0x2020c8 scale-color=0x303030 label-color=2105376 alarm=1 "
                             "low-limit=20 high-limit=80 low-color=0x00b4f0 high-color=0x2828D8 "
                             "face-color=0xe6f1f4 reverse=1 use-base=1 base=12.5 decimals=1 "
                             "read-out=1 frame=1 frame-option=1 axis-style=1 pin-style=2 sectors=3 "
                             "font=2 angle=30";
const std::pair<DWORD, double> NUMBERS[] = {{QEL_SEL_MAX, 100},
                                            {QEL_SEL_MIN, -20},
                                            {QEL_SEL_SCALE_START, -20},
                                            {QEL_SEL_SCALE_END, 100},
                                            {QEL_SEL_TICKS, 20},
                                            {QEL_SEL_MAJOR_EVERY, 4},
                                            {QEL_SEL_PIN_COLOR, 0x2020C8},
                                            {QEL_SEL_SCALE_COLOR, 0x303030},
                                            {QEL_SEL_LABEL_COLOR, 0x202020},
                                            {QEL_SEL_SHOW_ALARM, 1},
                                            {QEL_SEL_LOW_LIMIT, 20},
                                            {QEL_SEL_HIGH_LIMIT, 80},
                                            {QEL_SEL_LOW_COLOR, 0x00B4F0},
                                            {QEL_SEL_HIGH_COLOR, 0x2828D8},
                                            {QEL_SEL_FACE_COLOR, 0xE6F1F4},
                                            {QEL_SEL_REVERSE, 1},
                                            {QEL_SEL_USE_BASE, 1},
                                            {QEL_SEL_BASE_VALUE, 12.5},
                                            {QEL_SEL_DECIMAL_SHIFT, 1},
                                            {QEL_SEL_SHOW_VALUE, 1},
                                            {QEL_SEL_SHOW_FRAME, 1},
                                            {QEL_SEL_FRAME_OPTION, 1},
                                            {QEL_SEL_AXIS_STYLE, 1},
                                            {QEL_SEL_PIN_STYLE, 2},
                                            {QEL_SEL_SECTOR_COUNT, 3},
                                            {QEL_SEL_FONT_SIZE, 2},
                                            {QEL_SEL_ANGLE_OFFSET, 30}};

double Selector(HQELENGINE h, DWORD nSelector)
{
    double f = -777;
    EXPECT_EQ(1, QELGetSelector(h, "a", nSelector, &f)) << nSelector;
    return f;
}

double Value(HQELENGINE h)
{
    double f = -777;
    EXPECT_EQ(1, QELGetValue(h, "a", &f));
    return f;
}

std::string Difference(const CTextHost& expected, const CTextHost& actual)
{
    CTestBitmap first(SIDE, SIDE), second(SIDE, SIDE);
    expected.Draw(first.Dc());
    actual.Draw(second.Dc());
    return FirstDifference(first, second);
}

// The record of the first element is taken and set, changed or not.
template <class Record, class Change>
void SetRecord(const CTextHost& host, Change change)
{
    Record record{};
    int nSize = sizeof record;
    ASSERT_EQ(1, QELGetElemAttr(host, host.Child(0), &record, &nSize));
    change(&record);
    ASSERT_EQ(1, QELSetElemAttr(host, host.Child(0), &record, nSize));
}

} // namespace

TEST(DrawnSettings, AMeterIsDrawnAsIfTheHostHadSetThem)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        if (nType == CLOCK) continue; // it shows the time of its draw
        SCOPED_TRACE(g_types[nType]);
        const std::string drawn = Meter(nType, "set='" + SETTINGS + "' value='62.5'");
        EXPECT_NE("", Difference(CTextHost(Meter(nType, ""), SIDE), CTextHost(drawn, SIDE)));
        const CTextHost actual(drawn, SIDE);
        const CTextHost expected(Meter(nType, ""), SIDE);
        for (const auto& [nSelector, fNumber] : NUMBERS)
            EXPECT_EQ(1, QELSetSelector(expected, "a", nSelector, fNumber)) << nSelector;
        EXPECT_EQ(1, QELSetValue(expected, "a", 62.5));
        EXPECT_EQ("", Difference(expected, actual));
        for (DWORD n = 0; n < QEL_SEL_COUNT; ++n) {
            if (n == QEL_SEL_START_CODE) continue; // of scales alone
            EXPECT_EQ(Selector(expected, n), Selector(actual, n)) << n;
        }
    }
}

TEST(DrawnSettings, AScaleIsDrawnAsIfTheHostHadSetThem)
{
    for (const char* pszType : {"vrtleft", "vrtright", "horizup", "horizdn", "round", "Arc"}) {
        SCOPED_TRACE(pszType);
        const CTextHost actual(Scale(pszType, "set='max=80 min=10 ticks=7 pin-color=0xff "
                                              "scale-color=0x8000 start-code=1' value='33.25'"),
                               SIDE);
        const CTextHost expected(Scale(pszType, ""), SIDE);
        EXPECT_NE("", Difference(expected, actual));
        const std::pair<DWORD, double> numbers[] = {{QEL_SEL_MAX, 80},
                                                    {QEL_SEL_MIN, 10},
                                                    {QEL_SEL_TICKS, 7},
                                                    {QEL_SEL_PIN_COLOR, 0xFF},
                                                    {QEL_SEL_SCALE_COLOR, 0x8000},
                                                    {QEL_SEL_START_CODE, 1}};
        for (const auto& [nSelector, fNumber] : numbers)
            EXPECT_EQ(1, QELSetSelector(expected, "a", nSelector, fNumber));
        EXPECT_EQ(1, QELSetValue(expected, "a", 33.25));
        EXPECT_EQ("", Difference(expected, actual));
    }
}

TEST(DrawnSettings, AClockTakesThemAndStaysAClock)
{
    const CTextHost expected(Meter(CLOCK, "set='pin-style=2'"), SIDE);
    const CTextHost actual(Meter(CLOCK, "set='pin-style=2' value='5'"), SIDE);
    EXPECT_EQ(2, Selector(actual, QEL_SEL_PIN_STYLE));
    EXPECT_EQ(5, Value(actual));
    for (int nTry = 0; expected.Calls() != actual.Calls(); ++nTry) // within one second
        ASSERT_LT(nTry, 3);
}

TEST(DrawnSettings, TheValueIsThatOfTheFileToTheLastBit)
{
    const std::pair<const char*, double> values[] = {
        {"62", 62},   {"62.1", 62.1},  {"-0.7", -0.7},
        {" 5 ", 5},   {"+8.25", 8.25}, {".5", 0.5},
        {"12.", 12},  {"0x10", 16},    {"123456.789", 123456.789},
        {"abc", 0},   {"1e3", 0},      {"5 6", 0},
        {"-0x10", 0}, {".", 0},        {"0x100000000", 0}};
    for (const auto& [pszText, fExpected] : values)
        for (const std::string& element : {Meter(ROUND, std::string("value='") + pszText + "'"),
                                           Scale("round", std::string("value='") + pszText + "'")})
            EXPECT_EQ(fExpected, Value(CTextHost(element, SIDE))) << element;
}

TEST(DrawnSettings, AValueHasBothForms)
{
    const CTextHost host(Meter(BAR, "value='-6.75'"), SIDE);
    DWORD nWhole = 0;
    float fReal = 0;
    EXPECT_EQ(1, QELGetScaleStatus(host, 0, &nWhole));
    EXPECT_EQ(1, QELGetScaleStatusf(host, 0, &fReal));
    EXPECT_EQ(-6, static_cast<LONG>(nWhole));
    EXPECT_EQ(-6.75f, fReal);
}

TEST(DrawnSettings, WordsThatAreNoneAreSkipped)
{
    const CTextHost host(
        Meter(BAR, "usc='0' set='foo=3 max=100\tmax=50 \r\n ticks=0 ticks=7 value=9 alarm alarm=1 "
                   "=4 min=x min=2 decimals=4294967296 low-limit=-20.9 high-limit=0xFFFFFFFF "
                   "start-code=2 scale=0 pin=0 full-circle=2 Reverse=1 base=-1.5 labels= font= "
                   "7 sectors==3 major-every=4'"),
        SIDE);
    EXPECT_EQ(100, Selector(host, QEL_SEL_MAX));  // the first of two
    EXPECT_EQ(10, Selector(host, QEL_SEL_TICKS)); // also when it is refused
    EXPECT_EQ(0, Selector(host, QEL_SEL_VALUE));  // which is no setting
    EXPECT_EQ(0, Selector(host, QEL_SEL_SHOW_ALARM));
    EXPECT_EQ(0, Selector(host, QEL_SEL_MIN));
    EXPECT_EQ(0, Selector(host, QEL_SEL_DECIMAL_SHIFT)); // more than 32 bits
    EXPECT_EQ(-20, Selector(host, QEL_SEL_LOW_LIMIT));   // truncated
    EXPECT_EQ(-1, Selector(host, QEL_SEL_HIGH_LIMIT));
    EXPECT_EQ(1, Selector(host, QEL_SEL_SHOW_SCALE)); // refused without a scale
    EXPECT_EQ(0, Selector(host, QEL_SEL_SHOW_PIN));
    EXPECT_EQ(0, Selector(host, QEL_SEL_FULL_CIRCLE));
    EXPECT_EQ(0, Selector(host, QEL_SEL_REVERSE)); // letters count
    EXPECT_EQ(-1.5, Selector(host, QEL_SEL_BASE_VALUE));
    EXPECT_EQ(1, Selector(host, QEL_SEL_SHOW_LABELS));
    EXPECT_EQ(0, Selector(host, QEL_SEL_FONT_SIZE));
    EXPECT_EQ(0, Selector(host, QEL_SEL_SECTOR_COUNT));
    EXPECT_EQ(4, Selector(host, QEL_SEL_MAJOR_EVERY)); // what follows is read all the same
}

TEST(DrawnSettings, WhatTheHostHasSetKeepsItsNumberWhenTheRecordIsSetAnew)
{
    const CTextHost host(Meter(ROUND,
                               "set='max=100 min=5 ticks=20 base=2 full-circle=1 label-color=0x11' "
                               "value='62'"),
                         SIDE);
    EXPECT_EQ(1, QELSetScaleParam(host, 0, QEL_SEL_MAX, 70));
    EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_MIN, 7));
    EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_BASE_VALUE, 3.5));
    EXPECT_EQ(1, QELSetScaleParam(host, 0, QEL_SEL_FULL_CIRCLE, 0));
    EXPECT_EQ(1, QELSetScaleStatus(host, 0, 44));
    SetRecord<QELMETERATTR>(host, [](QELMETERATTR*) {});
    EXPECT_EQ(70, Selector(host, QEL_SEL_MAX));
    EXPECT_EQ(7, Selector(host, QEL_SEL_MIN));
    EXPECT_EQ(3.5, Selector(host, QEL_SEL_BASE_VALUE));
    EXPECT_EQ(0, Selector(host, QEL_SEL_FULL_CIRCLE));
    EXPECT_EQ(44, Value(host));
    EXPECT_EQ(20, Selector(host, QEL_SEL_TICKS));
    EXPECT_EQ(0x11, Selector(host, QEL_SEL_LABEL_COLOR));
}

TEST(DrawnSettings, EachWayToSetAValueLiesAboveThatOfTheDrawing)
{
    const auto set = [](HQELENGINE h, int nWay) {
        switch (nWay) {
        case 0:
            return QELSetValue(h, "a", 44);
        case 1:
            return QELSetScaleStatus(h, 0, 44);
        case 2:
            return QELSetScaleStatusf(h, 0, 44.0f);
        default:
            return QELSetScaleParam(h, 0, QEL_SEL_VALUE, 44);
        }
    };
    for (int nWay = 0; nWay < 4; ++nWay) {
        const CTextHost meter(Meter(ROUND, "value='62'"), SIDE);
        const CTextHost scale(Scale("round", "value='62'"), SIDE);
        EXPECT_EQ(1, set(meter, nWay));
        EXPECT_EQ(1, set(scale, nWay));
        SetRecord<QELMETERATTR>(meter, [](QELMETERATTR*) {});
        SetRecord<QELSCALEATTR>(scale, [](QELSCALEATTR*) {});
        EXPECT_EQ(44, Value(meter)) << nWay;
        EXPECT_EQ(44, Value(scale)) << nWay;
    }
}

TEST(DrawnSettings, ARecordDecidesAnewWhatIsRefusedOrHeld)
{
    const CTextHost meter(Meter(ROUND, "usc='0' set='scale=0'"), SIDE);
    EXPECT_EQ(1, Selector(meter, QEL_SEL_SHOW_SCALE));
    SetRecord<QELMETERATTR>(meter, [](QELMETERATTR* p) { p->bUseScale = 1; });
    EXPECT_EQ(0, Selector(meter, QEL_SEL_SHOW_SCALE));

    const CTextHost scale(Scale("vrtleft", "max='20' set='ticks=50'"), SIDE);
    EXPECT_EQ(20, Selector(scale, QEL_SEL_TICKS)); // held at the record's highest
    SetRecord<QELSCALEATTR>(scale, [](QELSCALEATTR* p) { p->nMax = 100; });
    EXPECT_EQ(50, Selector(scale, QEL_SEL_TICKS));
    EXPECT_EQ(1, QELSetScaleParam(scale, 0, QEL_SEL_TICKS, 8));
    SetRecord<QELSCALEATTR>(scale, [](QELSCALEATTR*) {});
    EXPECT_EQ(8, Selector(scale, QEL_SEL_TICKS));
}

TEST(DrawnSettings, AResetGivesThemBackWhoeverHadSetOthers)
{
    for (const bool bAll : {false, true}) {
        for (const std::string& element :
             {Meter(ROUND, "set='max=100 ticks=20 full-circle=1 base=2.5' value='62.1'"),
              Scale("round", "set='max=100 ticks=20' value='62.1'")}) {
            const CTextHost fresh(element, SIDE);
            const CTextHost host(element, SIDE);
            EXPECT_EQ(1, QELSetScaleParam(host, 0, QEL_SEL_MAX, 70));
            EXPECT_EQ(1, QELSetScaleParam(host, 0, QEL_SEL_PIN_COLOR, 0xFF)); // not the drawing's
            EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_TICKS, 5));
            QELSetSelector(host, "a", QEL_SEL_FULL_CIRCLE, 0);
            QELSetSelector(host, "a", QEL_SEL_BASE_VALUE, 1);
            EXPECT_EQ(1, QELSetValue(host, "a", 10));
            EXPECT_NE("", Difference(fresh, host));
            EXPECT_EQ(1, QELResetLive(host, bAll ? nullptr : "a"));
            EXPECT_EQ("", Difference(fresh, host));
            EXPECT_EQ(100, Selector(host, QEL_SEL_MAX));
            EXPECT_EQ(0xAAAAAA, Selector(host, QEL_SEL_PIN_COLOR));
            EXPECT_EQ(20, Selector(host, QEL_SEL_TICKS));
            EXPECT_EQ(62.1, Value(host));
        }
    }
}

TEST(DrawnSettings, AfterAResetTheHostHasSetNothing)
{
    const CTextHost host(Scale("vrtleft", "set='ticks=50' value='6'"), SIDE);
    EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_TICKS, 5));
    EXPECT_EQ(1, QELResetLive(host, "a"));
    SetRecord<QELSCALEATTR>(host, [](QELSCALEATTR* p) { p->nMax = 30; });
    EXPECT_EQ(30, Selector(host, QEL_SEL_TICKS));
}

TEST(DrawnSettings, ASettingThatIsRefusedByNowIsResetAllTheSame)
{
    const CTextHost host(Meter(ROUND, "set='scale=0'"), SIDE);
    SetRecord<QELMETERATTR>(host, [](QELMETERATTR* p) { p->bUseScale = 0; });
    EXPECT_EQ(1, QELResetLive(host, "a"));
    EXPECT_EQ(1, Selector(host, QEL_SEL_SHOW_SCALE));
    SetRecord<QELMETERATTR>(host, [](QELMETERATTR* p) { p->bUseScale = 1; });
    EXPECT_EQ(0, Selector(host, QEL_SEL_SHOW_SCALE));
}

TEST(DrawnSettings, SharedDrawingsKnowThemToo)
{
    ASSERT_EQ(1, QELShowOnly(1));
    {
        const std::string element = Meter(ROUND, "set='max=100 ticks=20' value='62.1'");
        const CTextHost host(element, SIDE);
        EXPECT_EQ(62.1, Value(host));
        EXPECT_EQ(100, Selector(host, QEL_SEL_MAX));
        EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_MAX, 70));
        EXPECT_EQ(1, QELSetValue(host, "a", 10));
        EXPECT_EQ(1, QELResetLive(host, "a"));
        EXPECT_EQ(62.1, Value(host));
        EXPECT_EQ(100, Selector(host, QEL_SEL_MAX));
        EXPECT_EQ("", Difference(CTextHost(element, SIDE), host));
    }
    EXPECT_EQ(1, QELShowOnly(0));
}

TEST(DrawnSettings, EditsOfTheRecordAndLiveValuesLeaveTheFileAsItWas)
{
    const CTextHost host(Meter(BAR, "value=' 5.0' set='foo  max=100 max=7'"), SIDE);
    const std::string before = host.Saved();
    EXPECT_NE(std::string::npos, before.find(" set=\"foo  max=100 max=7\" value=\" 5.0\">"))
        << before;
    EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_MAX, 70));
    EXPECT_EQ(1, QELSetValue(host, "a", 10));
    SetRecord<QELMETERATTR>(host, [](QELMETERATTR*) {});
    EXPECT_EQ(before, host.Saved());
}

TEST(DrawnSettings, ACopyHasThoseOfTheDrawing)
{
    for (const std::string& element :
         {Meter(BAR, "set='max=100' value='62.1'"), Scale("round", "set='max=100' value='62.1'")}) {
        const CTextHost host(element, SIDE);
        EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_MAX, 70));
        EXPECT_EQ(1, QELSetValue(host, "a", 10));
        ASSERT_NE(nullptr, QELCopyElem(host, host.Child(0)));
        double f = 0;
        EXPECT_EQ(1, QELGetValue(host, "a_1", &f));
        EXPECT_EQ(62.1, f);
        EXPECT_EQ(1, QELGetSelector(host, "a_1", QEL_SEL_MAX, &f));
        EXPECT_EQ(100, f);
    }
}

TEST(DrawnSettings, AWayToANewValueBeginsAtTheDrawings)
{
    const CTextHost host(Meter(ROUND, "set='max=100' value='20'"), SIDE);
    const CTextHost expected(Meter(ROUND, "set='max=100' value='20'"), SIDE);
    EXPECT_EQ(1, QELSetEasing(host, "a", 1000));
    EXPECT_EQ(1, QELSetValue(host, "a", 80));
    EXPECT_EQ("", Difference(expected, host)); // nothing of the time is gone
    EXPECT_EQ(0, QELAdvance(host, 1000));
    EXPECT_EQ(1, QELSetValue(expected, "a", 80));
    EXPECT_EQ("", Difference(expected, host));
}
