// Live values by identifier as a host has them: whom they reach, what is shown, what they leave
// alone, and how they end. Reference pictures are drawn by the calls that go by numbers, or of a
// drawing that says in its file what the other one is told.
#include "tests/support/Host.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace {

constexpr int SIDE = 140;
constexpr const char* g_types[] = {"vert", "vert3d", "horz",         "horz3d",     "round", "Arc",
                                   "pie",  "clock",  "roundUpgrade", "pieUpgrade", "sector"};
enum { CLOCK = 7, ROUND_UPGRADE = 8, SECTOR = 10, TYPES = 11 };

std::string Rect(const std::string& attributes, const char* pszCrd)
{
    return "<rect style='0x1' lnwid='0' " + attributes + " crd='" + pszCrd + "'/>";
}

std::string Meter(int nType, const std::string& attributes)
{
    const bool bBar = nType < 4;
    const bool bArc = nType == 5 || nType == 6 || nType == 9;
    return std::string("<meter mtype='") + g_types[nType] + "' upin='1' " + attributes + " crd='" +
           (bBar   ? nType < 2 ? "20 10 70 130" : "10 20 130 70"
            : bArc ? "70 70 60 5 5 135 135 45 315"
                   : "70 70 60 5 5 135 135") +
           "'>" +
           (bBar ? Rect("bg='0xC0D0E0'", nType < 2 ? "75 10 130 130" : "10 15 130 40")
                 : Rect("bg='0xC0D0E0'", "5 5 135 135")) +
           "</meter>";
}

std::string Difference(const CTextHost& expected, const CTextHost& actual,
                       DWORD nFlags = QEL_DRAW_FULL)
{
    CTestBitmap first(SIDE, SIDE), second(SIDE, SIDE);
    expected.Draw(first.Dc(), nFlags);
    actual.Draw(second.Dc(), nFlags);
    return FirstDifference(first, second);
}

double Value(HQELENGINE h, const char* pszId)
{
    double f = -777;
    EXPECT_EQ(1, QELGetValue(h, pszId, &f)) << pszId;
    return f;
}

std::string TextShown(const CTextHost& host)
{
    for (const std::string& line : host.Calls({"Text"})) return line.substr(line.find('"'));
    return "";
}

} // namespace

// ---- values ----

TEST(LiveIds, AMeterShowsTheRealValueWhateverItsNumber)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        if (nType == CLOCK || nType == SECTOR) continue;
        const CTextHost expected(Meter(nType, ""), SIDE);
        EXPECT_EQ(1, QELSetScaleStatusf(expected, 0, 6.75f));
        const CTextHost actual(Meter(nType, "mtid='77' id='a'"), SIDE);
        EXPECT_NE("", Difference(expected, actual)) << g_types[nType];
        EXPECT_EQ(1, QELSetValue(actual, "a", 6.75));
        EXPECT_EQ("", Difference(expected, actual)) << g_types[nType];
    }
}

TEST(LiveIds, AShareChartHasItsPins)
{
    const CTextHost expected(Meter(SECTOR, ""), SIDE);
    const CTextHost actual(Meter(SECTOR, "mtid='77' id='a'"), SIDE);
    expected.Set(QEL_SEL_SECTOR_COUNT, 3);
    EXPECT_EQ(1, QELSetSelector(actual, "a", QEL_SEL_SECTOR_COUNT, 3.9)); // truncated
    for (int nPin = 1; nPin <= 3; ++nPin) {
        EXPECT_EQ(1, QELSetScaleStatusf(expected, static_cast<DWORD>(nPin), 2.5f * nPin));
        EXPECT_EQ(1, QELSetPin(actual, "a", nPin, 2.5 * nPin));
    }
    EXPECT_EQ("", Difference(expected, actual));
    double f = 0;
    EXPECT_EQ(1, QELGetPin(actual, "a", 3, &f));
    EXPECT_EQ(7.5, f);
    for (const int nPin : {0, 33, -1}) {
        EXPECT_EQ(0, QELSetPin(actual, "a", nPin, 1));
        EXPECT_EQ(0, QELGetPin(actual, "a", nPin, &f));
    }
    const CTextHost dial(Meter(4, "id='a'"), SIDE);
    EXPECT_EQ(0, QELSetPin(dial, "a", 1, 1));
}

TEST(LiveIds, WhatIsNoShareChartHasNoPins)
{
    const CTextHost host("<rect id='box' crd='0 0 9 9'/><text id='word' crd='0 0 9 9'>#</text>"
                         "<status id='lamp' stx='1'/><scale id='row' crd='0 0 50 9'/>"
                         "<meter id='dial' mtype='round' crd='30 70 20 10 50 50 90'/>",
                         100);
    for (const char* pszId : {"box", "word", "lamp", "row", "dial"}) {
        double fValue = 7.5;
        EXPECT_EQ(0, QELSetPin(host, pszId, 1, 3)) << pszId;
        EXPECT_EQ(0, QELGetPin(host, pszId, 1, &fValue)) << pszId;
        EXPECT_EQ(7.5, fValue) << pszId;
    }
}

TEST(LiveIds, TheValueOfAPinIsOneWhoeverSetItLast)
{
    const CTextHost host(Meter(SECTOR, "mtid='0' id='a'"), SIDE);
    double f = 0;
    EXPECT_EQ(1, QELSetQuality(host, "a", 1)); // it has a state, and no pins in it yet
    EXPECT_EQ(1, QELSetScaleStatusf(host, 2, 4.5F));
    EXPECT_EQ(1, QELGetPin(host, "a", 2, &f));
    EXPECT_EQ(4.5, f);
    EXPECT_EQ(1, QELSetPin(host, "a", 3, 7.25));
    EXPECT_EQ(1, QELSetScaleStatusf(host, 3, 8.5F));
    EXPECT_EQ(1, QELGetPin(host, "a", 3, &f));
    EXPECT_EQ(8.5, f);
    EXPECT_EQ(1, QELSetScaleStatus(host, 3, 9));
    EXPECT_EQ(1, QELGetPin(host, "a", 3, &f));
    EXPECT_EQ(9, f);
    EXPECT_EQ(1, QELGetPin(host, "a", 2, &f)); // the others are as they were
    EXPECT_EQ(4.5, f);
}

TEST(LiveIds, AScaleShowsTheRealValue)
{
    for (const char* pszType : {"vrtleft", "horizup", "round", "Arc"}) {
        const std::string scale =
            std::string("<scale sctype='") + pszType + "' style='0x1' pin='1' %s crd='" +
            (*pszType == 'r' || *pszType == 'A' ? "70 70 60 50 10 0 270'/>" : "10 10 130 130'/>");
        const auto with = [&](const char* psz) {
            return std::string(scale).replace(scale.find("%s"), 2, psz);
        };
        const CTextHost expected(with("scid='3'"), SIDE);
        EXPECT_EQ(1, QELSetScaleStatusf(expected, 3, 6.75f));
        const CTextHost actual(with("id='a'"), SIDE);
        EXPECT_NE("", Difference(expected, actual)) << pszType;
        EXPECT_EQ(1, QELSetValue(actual, "a", 6.75));
        EXPECT_EQ("", Difference(expected, actual)) << pszType;
    }
}

TEST(LiveIds, EveryBearerIsReachedAndCounted)
{
    const CTextHost host(Meter(0, "id='a'") + "<g>" + Meter(4, "id='a'") + "</g>" +
                             "<scale id='a'/><rect id='a' crd='0 0 9 9'/>" + Meter(4, "id='A'"),
                         SIDE);
    EXPECT_EQ(3, QELSetValue(host, "a", 5));
    EXPECT_EQ(1, QELSetValue(host, "A", 5)); // byte by byte
    EXPECT_EQ(4, QELSetVisible(host, "a", 0));
    EXPECT_EQ(0, QELSetValue(host, "b", 5));
    EXPECT_EQ(0, QELSetValue(host, "", 5));
    EXPECT_EQ(0, QELSetValue(host, nullptr, 5));
    EXPECT_EQ(0, QELSetValue(nullptr, "a", 5));
}

TEST(LiveIds, AGetGivesBackTheDoubleThatWasSet)
{
    const CTextHost host(Meter(0, "id='meter'") + "<scale id='scale'/><status id='status'/>" +
                             "<text id='text' crd='0 0 60 20'>##</text>",
                         SIDE);
    EXPECT_EQ(0, Value(host, "meter"));
    EXPECT_EQ(0, Value(host, "scale"));
    double f = 4;
    EXPECT_EQ(0, QELGetValue(host, "status", &f)); // it has none yet
    EXPECT_EQ(0, QELGetValue(host, "text", &f));
    EXPECT_EQ(0, QELGetValue(host, "none", &f));
    EXPECT_EQ(0, QELGetValue(host, "meter", nullptr));
    EXPECT_EQ(4, f);
    for (const double fSet : {0.1, -1e300, 4294967296.5, 0.0})
        for (const char* pszId : {"meter", "scale", "status", "text"}) {
            EXPECT_EQ(1, QELSetValue(host, pszId, fSet));
            EXPECT_EQ(fSet, Value(host, pszId));
        }
    DWORD nWhole = 0;
    EXPECT_EQ(1, QELSetValue(host, "scale", -1e300));
    EXPECT_EQ(1, QELGetScaleStatus(host, 0, &nWhole)); // truncated, saturated
    EXPECT_EQ(0x80000000, nWhole);
}

TEST(LiveIds, TheValueOfAMeterIsOneWhoeverSetItLast)
{
    const CTextHost host(Meter(4, "id='a'"), SIDE);
    EXPECT_EQ(1, QELSetValue(host, "a", 0.1));
    EXPECT_EQ(1, QELSetScaleStatus(host, 0, 7));
    EXPECT_EQ(7, Value(host, "a"));
    EXPECT_EQ(1, QELSetScaleStatusf(host, 0, 2.5f));
    EXPECT_EQ(2.5, Value(host, "a"));
    EXPECT_EQ(1, QELSetValue(host, "a", 9.1));
    float f = 0;
    EXPECT_EQ(1, QELGetScaleStatusf(host, 0, &f));
    EXPECT_EQ(9.1f, f);
}

TEST(LiveIds, AClockStaysAClock)
{
    const CTextHost host(Meter(CLOCK, "id='a'"), SIDE);
    for (int nTry = 0;; ++nTry) { // within one second
        const std::vector<std::string> before = host.Calls();
        EXPECT_EQ(1, QELSetValue(host, "a", 5));
        const std::vector<std::string> after = host.Calls();
        if (before == after) break;
        ASSERT_LT(nTry, 3);
        QELResetLive(host, "a");
    }
    EXPECT_EQ(5, Value(host, "a"));
}

TEST(LiveIds, WhatIsNoNumberKeepsThePictureOfTheValueBefore)
{
    for (const double fNone : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        const CTextHost host(Meter(4, "id='a'"), SIDE);
        const CTextHost expected(Meter(4, ""), SIDE);
        EXPECT_EQ(1, QELSetScaleStatusf(expected, 0, 6));
        EXPECT_EQ(1, QELSetValue(host, "a", 6));
        EXPECT_EQ(1, QELSetValue(host, "a", fNone));
        EXPECT_TRUE(std::isnan(Value(host, "a")));
        float f = 0;
        EXPECT_EQ(1, QELGetScaleStatusf(host, 0, &f));
        EXPECT_EQ(6, f);
        EXPECT_EQ(1, QELSetValue(host, "a", 6));
        EXPECT_EQ("", Difference(expected, host));
    }
}

// A value may wait for its element until somebody asks for it: what asks gets the last one.
TEST(LiveIds, OfManyValuesInARowEveryOtherCallKnowsTheLast)
{
    const auto setThree = [](HQELENGINE h) {
        for (const double f : {3.0, 8.0, 5.5}) EXPECT_EQ(1, QELSetValue(h, "a", f));
    };
    for (int nType = 0; nType < TYPES; ++nType) {
        if (nType == CLOCK || nType == SECTOR) continue;
        const CTextHost expected(Meter(nType, ""), SIDE);
        EXPECT_EQ(1, QELSetScaleStatusf(expected, 0, 5.5f));
        const CTextHost drawn(Meter(nType, "id='a'"), SIDE);
        setThree(drawn);
        EXPECT_EQ("", Difference(expected, drawn)) << g_types[nType];
    }
    const CTextHost host(Meter(4, "id='a'"), SIDE);
    float f = 0;
    setThree(host);
    EXPECT_EQ(5.5, Value(host, "a"));
    setThree(host);
    EXPECT_EQ(1, QELGetScaleStatusf(host, 0, &f));
    EXPECT_EQ(5.5f, f);
    setThree(host);
    EXPECT_EQ(1, QELSetScaleStatusf(host, 0, 2)); // the later call counts
    EXPECT_EQ(2, Value(host, "a"));
    setThree(host);
    EXPECT_EQ(1, QELSetValue(host, "a", std::nan("")));
    EXPECT_EQ(1, QELGetScaleStatusf(host, 0, &f));
    EXPECT_EQ(5.5f, f);
    EXPECT_EQ(1, QELSetValue(host, "a", 1));
    setThree(host);
    EXPECT_EQ(1, QELResetLive(host, "a"));
    EXPECT_EQ(0, Value(host, "a"));
}

TEST(LiveIds, AWayBeginsAtTheLastOfManyValuesInARow)
{
    const CTextHost host(Meter(4, "id='a'"), SIDE);
    const CTextHost expected(Meter(4, ""), SIDE);
    for (const double f : {1.0, 8.0, 2.0}) EXPECT_EQ(1, QELSetValue(host, "a", f));
    EXPECT_EQ(1, QELSetEasing(host, "a", 400));
    EXPECT_EQ(1, QELSetValue(host, "a", 9));
    EXPECT_EQ(1, QELAdvance(host, 0));
    EXPECT_EQ(1, QELSetScaleStatus(expected, 0, 2));
    EXPECT_EQ("", Difference(expected, host));
}

TEST(LiveIds, AValueThatWaitsGoesWithItsElement)
{
    const CTextHost host(Meter(4, "id='a'") + Meter(0, "id='b' mtid='40'"), SIDE);
    const CTextHost expected(Meter(0, "id='b' mtid='40'"), SIDE);
    for (const double f : {3.0, 8.0}) {
        EXPECT_EQ(1, QELSetValue(host, "a", f));
        EXPECT_EQ(1, QELSetValue(host, "b", f));
    }
    EXPECT_EQ(1, QELDeleteElem(host, host.Child(0)));
    EXPECT_EQ(0, QELSetValue(host, "a", 4));
    EXPECT_EQ(1, QELSetValue(expected, "b", 8));
    EXPECT_EQ("", Difference(expected, host));
    for (const double f : {3.0, 6.0}) EXPECT_EQ(1, QELSetValue(host, "b", f));
    EXPECT_EQ(1, QELCloseFile(host));
    EXPECT_EQ(0, QELSetValue(host, "b", 7));
    EXPECT_EQ(1, QELOpenFile(host, host.Folder().Path("in.qel").c_str()));
    EXPECT_EQ(0, Value(host, "b"));
}

// A state that is given back may serve another element: each keeps to its own.
TEST(LiveIds, AfterAResetOfManyEachKeepsItsOwnValue)
{
    std::string body;
    for (int n = 0; n < 40; ++n)
        body += Meter(4, "id='m" + std::to_string(n) + "' mtid='" + std::to_string(100 + n) + "'");
    const CTextHost host(body, SIDE);
    const auto id = [](int n) { return "m" + std::to_string(n); };
    for (int n = 0; n < 40; ++n) EXPECT_EQ(1, QELSetValue(host, id(n).c_str(), n));
    for (int n = 0; n < 40; n += 3) EXPECT_EQ(1, QELResetLive(host, id(n).c_str()));
    for (int n = 39; n >= 0; --n) EXPECT_EQ(1, QELSetValue(host, id(n).c_str(), 100 + n));
    for (int n = 0; n < 40; ++n) EXPECT_EQ(100 + n, Value(host, id(n).c_str()));
    EXPECT_EQ(40, QELResetLive(host, nullptr));
    for (int n = 0; n < 40; ++n) EXPECT_EQ(0, Value(host, id(n).c_str()));
}

TEST(LiveIds, TheSameValueAgainMakesNothingDirty)
{
    for (const std::string& body :
         {Meter(4, "id='a'"), std::string("<text id='a' crd='0 0 90 20'>##.#</text>")}) {
        const CTextHost host(body, SIDE);
        CTestBitmap screen(SIDE, SIDE);
        RECT rc{};
        EXPECT_EQ(1, QELSetValue(host, "a", 0));
        EXPECT_EQ(1, QELUpdate(host, screen.Dc(), nullptr));
        EXPECT_EQ(1, QELSetValue(host, "a", 0));
        EXPECT_EQ(0, QELGetDirtyRect(host, &rc)) << body;
        EXPECT_EQ(1, QELSetValue(host, "a", -0.0)); // another double
        EXPECT_TRUE(std::signbit(Value(host, "a")));
        EXPECT_EQ(1, QELSetValue(host, "a", 7));
        EXPECT_EQ(1, QELGetDirtyRect(host, &rc)) << body;
    }
}

TEST(LiveIds, ACallThatCannotBeMadeLeavesItsReason)
{
    const CTextHost host(Meter(0, "id='a'"), SIDE);
    QELERROR error{};
    error.nSize = sizeof error;
    double f = 0;
    EXPECT_EQ(0, QELGetValue(host, "none", &f));
    EXPECT_EQ(0, QELGetError(host, &error)); // nobody bears it: an answer
    EXPECT_EQ(0, QELGetPin(host, "a", 1, nullptr));
    EXPECT_EQ(1, QELGetError(host, &error));
    EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_ARGUMENT), error.nCode);
    const std::function<int(HQELENGINE)> calls[] = {
        [](HQELENGINE h) { return QELSetValue(h, "a", 1); },
        [](HQELENGINE h) { return QELResetLive(h, nullptr); },
        [](HQELENGINE h) { return QELUpdate(h, nullptr, nullptr); }};
    QELShowOnly(1);
    for (const auto& call : calls) {
        const HQELENGINE hEmpty = CreateQELEngine(); // with nothing open
        EXPECT_EQ(0, QELGetError(hEmpty, &error));
        EXPECT_EQ(0, call(hEmpty));
        EXPECT_EQ(1, QELGetError(hEmpty, &error));
        EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_NO_DRAWING), error.nCode);
        EXPECT_EQ(1, DestroyQELEngine(hEmpty));
    }
    QELShowOnly(0);
}

// ---- settings ----

TEST(LiveIds, SettingsAreThoseOfTheNumberedCalls)
{
    const CTextHost host(Meter(ROUND_UPGRADE, "id='a'"), SIDE);
    const CTextHost numbered(Meter(ROUND_UPGRADE, ""), SIDE);
    for (DWORD nSelector = 0; nSelector < QEL_SEL_COUNT + 2; ++nSelector) {
        if (nSelector == QEL_SEL_VALUE || nSelector == QEL_SEL_BASE_VALUE) continue;
        for (const DWORD nValue : {0UL, 1UL, 42UL, 0x112233UL}) {
            EXPECT_EQ(numbered.Set(nSelector, nValue),
                      QELSetSelector(host, "a", nSelector, static_cast<double>(nValue) + 0.75))
                << nSelector << " " << nValue;
            DWORD n = 7;
            double f = 7;
            EXPECT_EQ(QELGetScaleParam(numbered, 0, nSelector, &n),
                      QELGetSelector(host, "a", nSelector, &f));
            EXPECT_EQ(n, f) << nSelector;
        }
    }
    EXPECT_EQ("", Difference(numbered, host));
}

TEST(LiveIds, ValueAndBaseAreRealAndNumbersKeepTheirSign)
{
    const CTextHost host(Meter(0, "id='a'"), SIDE);
    double f = 0;
    EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_VALUE, 0.1));
    EXPECT_EQ(1, QELGetSelector(host, "a", QEL_SEL_VALUE, &f));
    EXPECT_EQ(0.1, f);
    EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_BASE_VALUE, 2.5));
    EXPECT_EQ(1, QELGetSelector(host, "a", QEL_SEL_BASE_VALUE, &f));
    EXPECT_EQ(2.5, f);
    EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_MIN, -20.9));
    EXPECT_EQ(1, QELGetSelector(host, "a", QEL_SEL_MIN, &f));
    EXPECT_EQ(-20, f);
    EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_LABEL_COLOR, 0x80FF0000));
    EXPECT_EQ(1, QELGetSelector(host, "a", QEL_SEL_LABEL_COLOR, &f));
    EXPECT_EQ(0x80FF0000, f);
}

TEST(LiveIds, SettingsOutOfRangeAreRefused)
{
    const CTextHost host(Meter(0, "id='a'") + "<text id='t' crd='0 0 9 9'/>", SIDE);
    for (const double fBad : {std::nan(""), HUGE_VAL, 4294967296.0, -2147483649.0})
        EXPECT_EQ(0, QELSetSelector(host, "a", QEL_SEL_MAX, fBad)) << fBad;
    EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_MAX, 4294967295.5));
    EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_MAX, -2147483648.5));
    EXPECT_EQ(0, QELSetSelector(host, "a", QEL_SEL_TICKS, 0));
    EXPECT_EQ(0, QELSetSelector(host, "t", QEL_SEL_MAX, 1));
    EXPECT_EQ(0, QELGetSelector(host, "a", QEL_SEL_MAX, nullptr));
}

// ---- status elements ----

TEST(LiveIds, AStatusElementFollowsItsValueInsteadOfTheDrawings)
{
    const CTextHost host(
        "<status id='a' stx='3'>" + Rect("bg='0x112233'", "0 0 140 140") + "</status>", SIDE);
    const auto shown = [&] { return host.Pixel(70, 70) == 0x112233; };
    EXPECT_FALSE(shown());
    const struct {
        double fValue;
        bool bShown;
    } rows[] = {{3, true},  {3.9, true}, {2.9, false},
                {4, false}, {-3, false}, {4294967295.0, false}};
    for (const auto& row : rows) {
        EXPECT_EQ(1, QELSetValue(host, "a", row.fValue));
        EXPECT_EQ(row.bShown, shown()) << row.fValue;
        EXPECT_EQ(1, QELSetStatus(host, row.bShown ? 9 : 3)); // lies beneath
        EXPECT_EQ(row.bShown, shown()) << row.fValue;
    }
    DWORD nStatus = 0;
    EXPECT_EQ(1, QELGetStatus(host, &nStatus));
    EXPECT_EQ(3U, nStatus);
    EXPECT_EQ(1, QELResetLive(host, "a"));
    EXPECT_TRUE(shown());
}

TEST(LiveIds, AStatusElementWithTheLeastNumberShowsFractionsBelowOne)
{
    const CTextHost host(
        "<status id='a' stx='0'>" + Rect("bg='0x112233'", "0 0 140 140") + "</status>", SIDE);
    EXPECT_EQ(1, QELSetValue(host, "a", -0.5)); // truncated toward zero
    EXPECT_EQ(0x112233U, host.Pixel(70, 70));
    EXPECT_EQ(1, QELSetValue(host, "a", -1));
    EXPECT_EQ(0xFFFFFFU, host.Pixel(70, 70));
}

// ---- texts ----

TEST(LiveIds, ANumberStandsInTheFirstRunOfATextRightAligned)
{
    const struct {
        const char* pszText;
        double fValue;
        const char* pszShown;
    } rows[] = {
        {"T = ###.# C", 21.26, "T =  21.3 C"},
        {"###", 7, "  7"},
        {"###", -12.5, "-12"}, // a tie goes to the even digit
        {"###", -123, "###"},  // no room
        {"##.##", 0.125, " 0.12"},
        {"##.##", -0.001, " 0.00"},
        {"#.", 4.6, "5."}, // a point without a run behind it is no part of it
        {"## ##", 12, "12 ##"},
        {".##", 12, ".12"},
        {"none", 12, "none"},
        {"##", std::nan(""), "##"},
        {"##", HUGE_VAL, "##"},
        {"####.#", 99.96, " 100.0"},
    };
    for (const auto& row : rows) {
        const CTextHost host(
            "<text id='a' crd='0 0 120 20'>" + std::string(row.pszText) + "</text>", SIDE);
        EXPECT_EQ(1, QELSetValue(host, "a", row.fValue));
        EXPECT_EQ("\"" + std::string(row.pszShown) + "\"", TextShown(host)) << row.pszText;
    }
}

TEST(LiveIds, AShownTextReplacesTheOwnAndItsRunTakesTheValue)
{
    const CTextHost host("<text id='a' fg='0x0' crd='0 0 120 20'>own ##</text>", SIDE);
    EXPECT_EQ(1, QELSetValue(host, "a", 5));
    EXPECT_EQ("\"own  5\"", TextShown(host));
    EXPECT_EQ(1, QELSetText(host, "a", "p: ##.#"));
    EXPECT_EQ("\"p:  5.0\"", TextShown(host));
    const CTextHost expected("<text fg='0x0' crd='0 0 120 20'>p:  5.0</text>", SIDE);
    EXPECT_EQ("", Difference(expected, host));
    EXPECT_EQ(1, QELResetLive(host, "a"));
    EXPECT_EQ("\"own ##\"", TextShown(host));
    EXPECT_EQ(1, QELSetText(host, "a", std::string(255, 'x').c_str()));
    EXPECT_EQ(0, QELSetText(host, "a", std::string(256, 'x').c_str()));
    EXPECT_EQ(0, QELSetText(host, "a", nullptr));
    EXPECT_EQ("\"" + std::string(255, 'x') + "\"", TextShown(host));
}

// ---- what is hidden ----

TEST(LiveIds, WhatIsHiddenIsNotDrawnNorIsWhatIsInIt)
{
    const std::string seen = Rect("bg='0x445566'", "0 0 140 20");
    const std::string inside = "<g>" + Rect("bg='0x112233'", "0 40 140 60") + "</g>" +
                               Meter(0, "") + "<status stx='0'>" +
                               Rect("bg='0x778899'", "0 80 140 90") + "</status>";
    const CTextHost expected(seen, SIDE);
    const CTextHost host(seen + "<g id='a'>" + inside + "</g>", SIDE);
    const CTextHost whole(seen + "<g>" + inside + "</g>", SIDE);
    EXPECT_EQ(1, QELSetVisible(host, "a", 0));
    EXPECT_EQ("", Difference(expected, host));
    EXPECT_EQ("", Difference(expected, host, 0)); // its meter is not drawn by itself either
    EXPECT_EQ(1, QELSetVisible(host, "a", 5));
    EXPECT_EQ("", Difference(whole, host));
    EXPECT_NE("", Difference(whole, expected, 0));
    EXPECT_EQ("", Difference(whole, host, 0));
}

TEST(LiveIds, AHiddenFaceKeepsItsRegion)
{
    const std::string bar = "<meter id='m' mtype='vert' crd='20 10 70 130'>"
                            "<rect id='face' style='0x1' lnwid='0' crd='75 10 130 130'/></meter>";
    const CTextHost host(bar, SIDE);
    EXPECT_EQ(1, QELSetSelector(host, "m", QEL_SEL_FACE_COLOR, 0x112233));
    EXPECT_EQ(1, QELSetSelector(host, "m", QEL_SEL_FILL_ONLY, 0));
    const COLORREF clrBefore = host.Pixel(100, 120);
    EXPECT_EQ(1, QELSetValue(host, "m", 10)); // the bar fills the face
    const COLORREF clrBar = host.Pixel(100, 120);
    EXPECT_NE(clrBefore, clrBar);
    EXPECT_EQ(1, QELSetVisible(host, "face", 0));
    EXPECT_EQ(clrBar, host.Pixel(100, 120));
    EXPECT_EQ(clrBar, host.Pixel(100, 15));
}

TEST(LiveIds, UnderAClipAHiddenShapeLeavesNoColors)
{
    const std::string first = "<rect style='0x1' lnwid='0' bg='0x112233' crd='0 0 40 40'/>";
    const std::string second = "<g><rect id='a' style='0x1' lnwid='0' bg='0x445566' fg='0x778899'"
                               " crd='60 60 90 90'/></g>";
    const CTextHost host(first + second, SIDE);
    EXPECT_EQ(1, QELSetVisible(host, "a", 0));
    const CTextHost expected(first, SIDE);
    for (const auto* pHost : {&host, &expected}) {
        CTestBitmap bitmap(SIDE, SIDE);
        ::IntersectClipRect(bitmap.Dc(), 0, 0, 50, 50);
        pHost->Draw(bitmap.Dc());
        EXPECT_EQ(0x112233U, ::GetTextColor(bitmap.Dc()));
    }
}

// ---- colours ----

TEST(LiveIds, AShapeHasThreeColors)
{
    const auto shape = [](const char* psz) {
        return std::string("<rect style='0x1' dr='2' lnwid='5' ") + psz + " crd='20 20 120 120'/>";
    };
    const CTextHost expected(shape("clr='0xFF' fg='0xFF00' bg='0xFF0000'"), SIDE);
    const CTextHost host(shape("id='a'"), SIDE);
    EXPECT_EQ(1, QELSetColor(host, "a", 0, 0x0000FF));
    EXPECT_EQ(1, QELSetColor(host, "a", 1, 0x00FF00));
    EXPECT_EQ(1, QELSetColor(host, "a", 2, 0xFF0000));
    EXPECT_EQ("", Difference(expected, host));
    EXPECT_EQ(0, QELSetColor(host, "a", 3, 0));
    EXPECT_EQ(0, QELSetColor(host, "a", -1, 0));
}

TEST(LiveIds, APinWithoutANumberKeepsThePictureOfTheOneBefore)
{
    const CTextHost host(Meter(SECTOR, "id='a'") + "<text id='b' crd='0 0 9 9'>#</text>", SIDE);
    EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_SECTOR_COUNT, 3));
    for (int nPin = 1; nPin <= 3; ++nPin) EXPECT_EQ(1, QELSetPin(host, "a", nPin, 5));
    const std::vector<std::string> before = host.Calls({"Pie", "PatBlt", "Line"});
    EXPECT_EQ(1, QELSetPin(host, "a", 2, std::nan("")));
    double f = 0;
    EXPECT_EQ(1, QELGetPin(host, "a", 2, &f));
    EXPECT_TRUE(std::isnan(f));
    const std::vector<std::string> marked = host.Calls({"Pie", "PatBlt", "Line"});
    ASSERT_LT(before.size(), marked.size()); // the mark of what cannot be trusted comes on top
    EXPECT_TRUE(std::equal(before.begin(), before.end(), marked.begin()));
    EXPECT_EQ(1, QELSetPin(host, "a", 2, 5));
    EXPECT_EQ(before, host.Calls({"Pie", "PatBlt", "Line"}));
    EXPECT_EQ(0, QELGetPin(host, "b", 1, &f));
    EXPECT_EQ(0, QELGetSelector(host, "b", QEL_SEL_MAX, &f));
}

TEST(LiveIds, AWayThatLeavesTheFullCircleIsGoneStraight)
{
    const auto prepare = [](const CTextHost& host, const char* pszId) {
        EXPECT_EQ(1, QELSetSelector(host, pszId, QEL_SEL_MAX, 100));
        EXPECT_EQ(1, QELSetSelector(host, pszId, QEL_SEL_FULL_CIRCLE, 1));
    };
    const CTextHost host(Meter(4, "id='a'"), SIDE), expected(Meter(4, "id='b'"), SIDE);
    prepare(host, "a");
    prepare(expected, "b");
    for (const auto& [fFrom, fTo] : {std::pair(-40.0, 90.0), std::pair(10.0, 130.0)}) {
        EXPECT_EQ(1, QELSetEasing(host, "a", 0));
        EXPECT_EQ(1, QELSetValue(host, "a", fFrom));
        EXPECT_EQ(1, QELSetEasing(host, "a", 100));
        EXPECT_EQ(1, QELSetValue(host, "a", fTo));
        EXPECT_EQ(1, QELAdvance(host, 50));
        EXPECT_EQ(1, QELSetValue(expected, "b", fFrom + (fTo - fFrom) * (1 - 0.125)));
        EXPECT_EQ("", Difference(expected, host)) << fFrom;
        EXPECT_EQ(0, QELAdvance(host, 50));
        EXPECT_EQ(1, QELSetValue(host, "a", fTo)); // it is there
        EXPECT_EQ(0, QELAdvance(host, 50));
    }
}

TEST(LiveIds, AColorIsForShapesAndWhatHoldsThem)
{
    const CTextHost host(Meter(4, "id='dial'") + "<scale id='scale' crd='0 0 9 9'/>" +
                             "<drawrgn id='trend' crd='0 0 9 9'/><g id='empty'/>" +
                             "<frame id='frame'>" + Rect("", "0 0 9 9") + "</frame>",
                         SIDE);
    for (const char* pszId : {"dial", "scale", "trend", "empty"})
        EXPECT_EQ(0, QELSetColor(host, pszId, 2, 0xFF)) << pszId;
    EXPECT_EQ(1, QELSetColor(host, "frame", 2, 0xFF));
    for (const int nPlace : {-1, 3}) EXPECT_EQ(0, QELSetColor(host, "frame", nPlace, 0xFF));
}

TEST(LiveIds, AColorBlinksAsAnyOther)
{
    const CTextHost host("<rect id='a' style='0x1' lnwid='0' crd='0 0 140 140'/>", SIDE);
    EXPECT_EQ(1, QELSetColor(host, "a", 2, QEL_COLOR_BLINK | 0x112233));
    EXPECT_EQ(0x112233U, host.Pixel(70, 70));
    EXPECT_EQ(1, QELSetBlinkState(host, 1));
    EXPECT_EQ(0U, host.Pixel(70, 70));
}

TEST(LiveIds, AColorOfAGroupReachesEveryShapeInsideAndTheLaterOneWins)
{
    const CTextHost host("<g id='g'><g>"
                         "<rect id='a' style='0x1' lnwid='0' bg='0x1' crd='0 0 40 40'/></g>"
                         "<status stx='0'><rect style='0x1' lnwid='0' bg='0x2'"
                         " crd='50 0 90 40'/></status></g>"
                         "<rect style='0x1' lnwid='0' bg='0x3' crd='100 0 140 40'/><g id='e'/>",
                         SIDE);
    const auto seen = [&] {
        return std::vector<COLORREF>{host.Pixel(20, 20), host.Pixel(70, 20), host.Pixel(120, 20)};
    };
    using Colors = std::vector<COLORREF>;
    EXPECT_EQ((Colors{1, 2, 3}), seen());
    EXPECT_EQ(1, QELSetColor(host, "g", 2, 0xAA));
    EXPECT_EQ((Colors{0xAA, 0xAA, 3}), seen());
    EXPECT_EQ(1, QELSetColor(host, "a", 2, 0xBB));
    EXPECT_EQ((Colors{0xBB, 0xAA, 3}), seen());
    EXPECT_EQ(1, QELSetColor(host, "g", 2, 0xCC));
    EXPECT_EQ((Colors{0xCC, 0xCC, 3}), seen());
    EXPECT_EQ(1, QELResetLive(host, "g"));
    EXPECT_EQ((Colors{0xBB, 2, 3}), seen());
    EXPECT_EQ(0, QELSetColor(host, "e", 2, 0xCC)); // nothing in it
}

TEST(LiveIds, AColorWinsOverFramesPatternsAndParameters)
{
    const CTextHost host("<frame><rect id='a' style='0x1' lnwid='0' fg='0x5' bg='0x6'"
                         " dr='1' crd='0 0 40 40'/></frame>"
                         "<pattern><rect id='b' style='0x1' lnwid='0' crd='50 0 90 40'/></pattern>",
                         SIDE);
    EXPECT_EQ(1, QELSetColor(host, "a", 1, 0x112233));
    EXPECT_EQ(1, QELSetColor(host, "b", 2, 0x445566));
    QELSetParam(host, QEL_PARAM_COLOR, 0xFF);
    QELSetParam(host, QEL_PARAM_DRAFT, 0);
    QELSetParam(host, QEL_PARAM_DRAFT_BACK, 0xFF00);
    EXPECT_EQ(0x112233U, host.Pixel(20, 20));
    EXPECT_EQ(0x445566U, host.Pixel(70, 20));
    EXPECT_EQ(2, QELResetLive(host, nullptr)); // what lies beneath shows again
    EXPECT_EQ(0xFFU, host.Pixel(20, 20));
    EXPECT_EQ(0xFF00U, host.Pixel(70, 20));
}

TEST(LiveIds, TheFillOfAFaceStaysTheMeters)
{
    const CTextHost host("<meter id='m' mtype='round' crd='70 70 60 5 5 135 135'>"
                         "<rect id='face' style='0x1' lnwid='9' crd='0 0 140 140'/></meter>",
                         SIDE);
    EXPECT_EQ(1, QELSetSelector(host, "m", QEL_SEL_FACE_COLOR, 0x112233));
    EXPECT_EQ(1, QELSetColor(host, "face", 2, 0xFF));
    EXPECT_EQ(1, QELSetColor(host, "face", 0, 0xFF00));
    EXPECT_EQ(0x112233U, host.Pixel(20, 20));
    EXPECT_EQ(0xFF00U, host.Pixel(1, 1));
}

// ---- easing ----

namespace {

double Eased(double fFrom, double fTo, double fTime) // fTime: of the whole, 0 to 1
{
    return fFrom + (fTo - fFrom) * (1 - std::pow(1 - fTime, 3));
}

} // namespace

TEST(LiveIds, ANewValueIsReachedInItsTime)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        if (nType == CLOCK || nType == SECTOR) continue;
        const CTextHost host(Meter(nType, "id='a'"), SIDE);
        const CTextHost expected(Meter(nType, ""), SIDE);
        EXPECT_EQ(1, QELSetValue(host, "a", 2));
        EXPECT_EQ(1, QELSetEasing(host, "a", 400));
        EXPECT_EQ(1, QELSetValue(host, "a", 9));
        EXPECT_EQ(9, Value(host, "a"));
        for (int nGone = 0; nGone <= 400; nGone += 100) {
            EXPECT_EQ(nGone < 400 ? 1 : 0, QELAdvance(host, nGone ? 100 : 0));
            const auto fShown = static_cast<float>(Eased(2, 9, nGone / 400.0));
            EXPECT_EQ(1, QELSetScaleStatusf(expected, 0, fShown));
            EXPECT_EQ("", Difference(expected, host)) << g_types[nType] << " " << nGone;
        }
    }
}

TEST(LiveIds, OnTheWayADialStaysWithinItsLayout)
{
    for (const char* pszType : {"round", "Arc", "pie", "roundUpgrade", "pieUpgrade"}) {
        const std::string dial = std::string("<meter id='a' upin='1' mtype='") + pszType +
                                 "' crd='70 70 60 40 40 100 100 45 315'/>";
        const CTextHost host(dial, SIDE), expected(dial, SIDE);
        EXPECT_EQ(1, QELSetEasing(host, "a", 100));
        EXPECT_EQ(1, QELSetValue(host, "a", 9));
        EXPECT_EQ(1, QELAdvance(host, 50));
        EXPECT_EQ(1, QELSetValue(expected, "a", Eased(0, 9, 0.5)));
        EXPECT_EQ("", Difference(expected, host)) << pszType;
    }
}

TEST(LiveIds, AValueOnTheWayStartsAnewFromWhatIsShown)
{
    const CTextHost host("<scale id='a' sctype='horizup' crd='0 0 140 140'/>", SIDE);
    const CTextHost expected("<scale scid='1' sctype='horizup' crd='0 0 140 140'/>", SIDE);
    EXPECT_EQ(1, QELSetEasing(host, "a", 100));
    EXPECT_EQ(1, QELSetValue(host, "a", 8));
    EXPECT_EQ(1, QELAdvance(host, 50));
    const double fThere = Eased(0, 8, 0.5);
    EXPECT_EQ(1, QELSetValue(host, "a", 1));
    EXPECT_EQ(1, QELSetScaleStatusf(expected, 1, static_cast<float>(fThere)));
    EXPECT_EQ("", Difference(expected, host));
    EXPECT_EQ(1, QELAdvance(host, 25));
    EXPECT_EQ(1, QELSetScaleStatusf(expected, 1, static_cast<float>(Eased(fThere, 1, 0.25))));
    EXPECT_EQ("", Difference(expected, host));
    EXPECT_EQ(0, QELAdvance(host, 0xFFFFFFFF));
    EXPECT_EQ(1, QELSetScaleStatusf(expected, 1, 1));
    EXPECT_EQ("", Difference(expected, host));
}

TEST(LiveIds, OnAFullCircleTheShorterWayIsTaken)
{
    const auto prepare = [](const CTextHost& host, const char* pszId) {
        EXPECT_EQ(1, QELSetSelector(host, pszId, QEL_SEL_MAX, 360));
        EXPECT_EQ(1, QELSetSelector(host, pszId, QEL_SEL_FULL_CIRCLE, 1));
    };
    const CTextHost host(Meter(4, "id='a'"), SIDE), expected(Meter(4, "id='b'"), SIDE);
    prepare(host, "a");
    prepare(expected, "b");
    EXPECT_EQ(1, QELSetValue(host, "a", 350));
    EXPECT_EQ(1, QELSetEasing(host, "a", 1000));
    EXPECT_EQ(1, QELSetValue(host, "a", 30));
    for (int nGone = 100; nGone < 1000; nGone += 100) {
        EXPECT_EQ(1, QELAdvance(host, 100));
        const double fShown = std::fmod(Eased(350, 390, nGone / 1000.0), 360);
        EXPECT_EQ(1, QELSetValue(expected, "b", fShown));
        EXPECT_EQ("", Difference(expected, host)) << nGone;
    }
}

TEST(LiveIds, OnARoundScaleTheShorterWayIsTakenEitherWayRound)
{
    const std::string scale = "sctype='round' crd='70 70 60 50 10 0 360'/>";
    const CTextHost host("<scale id='a' " + scale, SIDE);
    const CTextHost expected("<scale id='b' " + scale, SIDE);
    for (const auto& [pHost, pszId] : {std::pair(&host, "a"), std::pair(&expected, "b")})
        EXPECT_EQ(1, QELSetSelector(*pHost, pszId, QEL_SEL_MAX, 100));
    for (const bool bUp : {true, false}) {
        EXPECT_EQ(1, QELSetEasing(host, "a", 0));
        EXPECT_EQ(1, QELSetValue(host, "a", bUp ? 90 : 20));
        EXPECT_EQ(1, QELSetEasing(host, "a", 100));
        EXPECT_EQ(1, QELSetValue(host, "a", bUp ? 20 : 90));
        for (int nGone = 20; nGone < 100; nGone += 20) {
            EXPECT_EQ(1, QELAdvance(host, 20));
            const double fShown =
                bUp ? Eased(90, 120, nGone / 100.0) : Eased(120, 90, nGone / 100.0);
            EXPECT_EQ(1, QELSetValue(expected, "b", std::fmod(fShown, 100)));
            EXPECT_EQ("", Difference(expected, host)) << bUp << " " << nGone;
        }
    }
}

TEST(LiveIds, TheReadOutDoesNotWait)
{
    const auto readOut = [](const CTextHost& host) {
        std::string last;
        for (const std::string& line : host.Calls({"Text"})) last = line;
        return last.substr(last.find('"'));
    };
    const auto prepare = [](const CTextHost& host) {
        EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_SHOW_VALUE, 1));
        EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_SHOW_LABELS, 0));
    };
    const CTextHost host(Meter(ROUND_UPGRADE, "id='a'"), SIDE);
    prepare(host);
    EXPECT_EQ(1, QELSetEasing(host, "a", 1000));
    EXPECT_EQ(1, QELSetValue(host, "a", 7));
    EXPECT_EQ(1, QELAdvance(host, 10));
    EXPECT_EQ("\"7.0\"", readOut(host));
}

TEST(LiveIds, OnlyWhatMovesTakesATime)
{
    const CTextHost host(Meter(CLOCK, "id='clock'") + Meter(SECTOR, "id='share'") +
                             "<text id='text' crd='0 0 9 9'>#</text><status id='status'/>",
                         SIDE);
    for (const char* pszId : {"clock", "share", "text", "status"})
        EXPECT_EQ(0, QELSetEasing(host, pszId, 100)) << pszId;
    EXPECT_EQ(0, QELAdvance(host, 100));
}

TEST(LiveIds, ANumberedValueArrivesAtOnce)
{
    const CTextHost host(Meter(4, "id='a'"), SIDE), expected(Meter(4, ""), SIDE);
    EXPECT_EQ(1, QELSetEasing(host, "a", 100));
    EXPECT_EQ(1, QELSetValue(host, "a", 9));
    EXPECT_EQ(1, QELAdvance(host, 10));
    EXPECT_EQ(1, QELSetScaleStatusf(host, 0, 4));
    EXPECT_EQ(1, QELSetScaleStatusf(expected, 0, 4));
    EXPECT_EQ("", Difference(expected, host));
    EXPECT_EQ(0, QELAdvance(host, 10));
}

// ---- how it ends ----

TEST(LiveIds, AResetGivesBackWhatWasThereAfterTheOpen)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        if (nType == CLOCK) continue;
        const CTextHost expected(Meter(nType, "mtid='0'"), SIDE);
        const CTextHost host(Meter(nType, "mtid='0' id='a'"), SIDE);
        for (DWORD nSelector = 0; nSelector < QEL_SEL_COUNT; ++nSelector) {
            QELSetSelector(host, "a", nSelector, 1);
            host.Set(nSelector, nSelector % 5 + 1); // whoever has set it
        }
        QELSetPin(host, "a", 1, 5);
        QELSetValue(host, "a", 7.5);
        EXPECT_NE("", Difference(expected, host)) << g_types[nType];
        EXPECT_EQ(1, QELResetLive(host, "a"));
        EXPECT_EQ("", Difference(expected, host)) << g_types[nType];
        for (DWORD nSelector = 0; nSelector < QEL_SEL_COUNT; ++nSelector) {
            DWORD n = 0, nExpected = 0;
            EXPECT_EQ(QELGetScaleParam(expected, 0, nSelector, &nExpected),
                      QELGetScaleParam(host, 0, nSelector, &n));
            EXPECT_EQ(nExpected, n) << nSelector;
        }
    }
}

TEST(LiveIds, AResetOfSomeOfManyLeavesTheOthers)
{
    constexpr int COUNT = 200;
    std::string body;
    const auto idOf = [](int n) { return "t" + std::to_string(n); };
    for (int n = 0; n < COUNT; ++n) body += "<text id='" + idOf(n) + "' crd='0 0 9 9'>#</text>";
    const CTextHost host(body, SIDE);
    for (int n = 0; n < COUNT; ++n) EXPECT_EQ(1, QELSetValue(host, idOf(n).c_str(), n + 0.5));
    std::vector<bool> reset(COUNT);
    for (const int nStep : {7, 3, 2}) {
        for (int n = nStep - 1; n < COUNT; n += nStep) {
            reset[static_cast<std::size_t>(n)] = true;
            EXPECT_EQ(1, QELResetLive(host, idOf(n).c_str()));
        }
        for (int n = 0; n < COUNT; ++n) {
            double f = -1;
            const bool bReset = reset[static_cast<std::size_t>(n)];
            EXPECT_EQ(bReset ? 0 : 1, QELGetValue(host, idOf(n).c_str(), &f)) << n;
            EXPECT_EQ(bReset ? -1 : n + 0.5, f) << n;
        }
    }
}

TEST(LiveIds, TheDocumentDoesNotKnowOfThem)
{
    const CTextHost host(Meter(0, "id='a'") + "<text id='t' crd='0 0 9 9'>##</text>", SIDE);
    const std::string before = host.Saved();
    EXPECT_EQ(1, QELSetValue(host, "a", 5));
    EXPECT_EQ(1, QELSetSelector(host, "a", QEL_SEL_MAX, 50));
    EXPECT_EQ(1, QELSetText(host, "t", "x"));
    EXPECT_EQ(1, QELSetVisible(host, "t", 0));
    EXPECT_EQ(1, QELSetColor(host, "t", 1, 0xFF));
    EXPECT_EQ(before, host.Saved());
}

TEST(LiveIds, TheyEndWithTheDrawing)
{
    const CTextHost host("<rect id='a' style='0x1' lnwid='0' bg='0x7' crd='0 0 140 140'/>", SIDE);
    EXPECT_EQ(1, QELSetColor(host, "a", 2, 0xFF));
    EXPECT_EQ(0xFFU, host.Pixel(9, 9));
    EXPECT_EQ(1, QELOpenFile(host, host.Folder().Path("in.qel").c_str()));
    EXPECT_EQ(7U, host.Pixel(9, 9));
    EXPECT_EQ(1, QELCloseFile(host));
    EXPECT_EQ(0, QELSetColor(host, "a", 2, 0xFF));
    EXPECT_EQ(0, QELResetLive(host, nullptr));
}

TEST(LiveIds, TheyGoWithTheElementAndNotToItsCopy)
{
    const CTextHost host("<rect id='a' style='0x1' lnwid='0' bg='0x7' crd='0 0 140 140'/>", SIDE);
    EXPECT_EQ(1, QELSetColor(host, "a", 2, 0xFF));
    const HQELELEM hElem = host.Child(0);
    EXPECT_NE(nullptr, QELCopyElem(host, hElem));
    EXPECT_EQ(7U, host.Pixel(9, 9)); // the copy lies above
    EXPECT_EQ(1, QELDeleteElem(host, hElem));
    for (int n = 0; n < 50; ++n) { // what comes to stand where the element stood has nothing
        const HQELELEM hNew = QELCreateElem(host, QEL_TYPE_RECT, nullptr, nullptr);
        QELSHAPEATTR attr{};
        int nSize = sizeof attr;
        EXPECT_EQ(1, QELGetElemAttr(host, hNew, &attr, &nSize));
        attr.nStyle = 1;
        attr.nPenWidth = 0;
        attr.clrB = 9;
        attr.nGeometry[2] = attr.nGeometry[3] = SIDE;
        attr.nGeometry[0] = attr.nGeometry[1] = 0;
        EXPECT_EQ(1, QELSetElemAttr(host, hNew, &attr, sizeof attr));
        EXPECT_EQ(9U, host.Pixel(9, 9));
    }
}

// ---- the list ----

TEST(LiveIds, AreListedOnceInDocumentOrderWithTheTypeOfTheFirst)
{
    const CTextHost host(Meter(0, "id='b'") + "<g id='a'><text id='b' crd='0 0 9 9'/></g>" +
                             "<scale id='c'/><rect crd='0 0 9 9'/>",
                         SIDE);
    std::string all;
    char sz[2];
    int nType = 0;
    for (DWORD n = 0; QELGetLiveId(host, n, sz, sizeof sz, &nType); ++n)
        all += sz + std::to_string(nType) + " ";
    EXPECT_EQ("b" + std::to_string(QEL_TYPE_METER) + " a" + std::to_string(QEL_TYPE_GROUP) + " c" +
                  std::to_string(QEL_TYPE_SCALE) + " ",
              all);
    EXPECT_EQ(1, QELGetLiveId(host, 0, sz, 2, nullptr));
    EXPECT_EQ(0, QELGetLiveId(host, 0, sz, 1, &nType));
    EXPECT_EQ(0, QELGetLiveId(host, 0, sz, -1, &nType));
    EXPECT_EQ(0, QELGetLiveId(host, 0, nullptr, 9, &nType));
    EXPECT_EQ(0, QELGetLiveId(host, 3, sz, 2, &nType));
}

// ---- show-only mode ----

TEST(LiveIds, AreTheSharedDrawingsInShowOnlyMode)
{
    const CTextHost whole(Meter(4, "id='a'"), SIDE);
    const std::string path = whole.Folder().Path("in.qel");
    EXPECT_EQ(1, QELShowOnly(1));
    HQELENGINE first = CreateQELEngine(), second = CreateQELEngine();
    EXPECT_EQ(1, QELShowOnly(0));
    for (HQELENGINE h : {first, second}) EXPECT_EQ(1, QELOpenFile(h, path.c_str()));
    EXPECT_EQ(1, QELSetValue(first, "a", 6.5));
    EXPECT_EQ(6.5, Value(second, "a"));
    EXPECT_EQ(1, QELSetValue(first, "a", 1));
    EXPECT_EQ(1, QELSetValue(second, "a", 2));
    EXPECT_EQ(1, QELSetValue(first, "a", 6.5));
    char sz[9];
    EXPECT_EQ(1, QELGetLiveId(second, 0, sz, sizeof sz, nullptr));
    EXPECT_STREQ("a", sz);
    EXPECT_EQ(1, QELSetValue(whole, "a", 6.5));
    CTestBitmap expected(SIDE, SIDE), actual(SIDE, SIDE);
    whole.Draw(expected.Dc());
    const RECT rc{0, 0, SIDE, SIDE};
    EXPECT_EQ(1, QELDraw(second, actual.Dc(), &rc, QEL_DRAW_FULL));
    EXPECT_EQ("", FirstDifference(expected, actual));
    for (HQELENGINE h : {first, second}) EXPECT_EQ(1, DestroyQELEngine(h));
}

// ---- settings that change nothing ----

TEST(LiveIds, AShareChartAnswersForItsPinsBeforeAnyIsSet)
{
    const CTextHost host(Meter(SECTOR, "id='a'"), SIDE);
    double f = -1;
    EXPECT_EQ(1, QELGetPin(host, "a", 3, &f));
    EXPECT_EQ(0, f);
    EXPECT_EQ(1, QELSetScaleStatusf(host, 3, 2.5f));
    EXPECT_EQ(1, QELGetPin(host, "a", 3, &f));
    EXPECT_EQ(2.5, f);
}

TEST(LiveIds, TheResetOfAShareChartThatIsDrawnTakesItsPinsBack)
{
    const CTextHost expected(Meter(SECTOR, "id='a'"), SIDE);
    const CTextHost actual(Meter(SECTOR, "id='a'"), SIDE);
    for (const CTextHost* pHost : {&expected, &actual}) pHost->Set(QEL_SEL_SECTOR_COUNT, 3);
    for (int nPin = 1; nPin <= 3; ++nPin) EXPECT_EQ(1, QELSetPin(actual, "a", nPin, 2.5 * nPin));
    EXPECT_NE("", Difference(expected, actual)); // drawn with them
    EXPECT_EQ(1, QELResetLive(actual, "a"));
    double f = -1;
    EXPECT_EQ(1, QELGetPin(actual, "a", 3, &f));
    EXPECT_EQ(0, f);
    EXPECT_EQ(1, QELResetLive(expected, "a"));
    EXPECT_EQ("", Difference(expected, actual));
}

TEST(LiveIds, WhatIsShownOrTrustedAlreadyMakesNothingDirty)
{
    const CTextHost host(Rect("id='a'", "10 10 30 30"), SIDE);
    const auto isDirtyAfter = [&](int nResult) {
        RECT rc{};
        EXPECT_EQ(1, nResult);
        const bool bDirty = QELGetDirtyRect(host, &rc) != 0;
        EXPECT_EQ(1, QELValidate(host));
        return bDirty;
    };
    EXPECT_TRUE(isDirtyAfter(1)); // all of it, after the open
    EXPECT_FALSE(isDirtyAfter(QELSetVisible(host, "a", 1)));
    EXPECT_TRUE(isDirtyAfter(QELSetVisible(host, "a", 0)));
    EXPECT_FALSE(isDirtyAfter(QELSetVisible(host, "a", 0)));
    EXPECT_TRUE(isDirtyAfter(QELSetVisible(host, "a", 1)));
    EXPECT_FALSE(isDirtyAfter(QELSetVisible(host, "a", 1)));
    EXPECT_TRUE(isDirtyAfter(QELSetQuality(host, "a", 1)));
    EXPECT_FALSE(isDirtyAfter(QELSetQuality(host, "a", 1)));
    for (const int nQuality : {-1, 3}) EXPECT_EQ(0, QELSetQuality(host, "a", nQuality));
}

TEST(LiveIds, AMeterThatIsMadeAShareChartMovesNoMore)
{
    const CTextHost host(Meter(4, "id='a'"), SIDE);
    EXPECT_EQ(1, QELSetEasing(host, "a", 100));
    EXPECT_EQ(1, QELSetValue(host, "a", 5));
    EXPECT_EQ(1, QELAdvance(host, 50));
    EXPECT_EQ(0, QELAdvance(host, 50));
    QELMETERATTR attr{};
    EXPECT_EQ(1, QELGetElemAttr(host, host.Child(0), &attr, nullptr));
    attr.nType = SECTOR;
    EXPECT_EQ(1, QELSetElemAttr(host, host.Child(0), &attr, sizeof attr));
    EXPECT_EQ(1, QELSetValue(host, "a", 8));
    EXPECT_EQ(0, QELAdvance(host, 0));
}

TEST(LiveIds, AScaleThatCannotBeTrustedTakesItsNumberAsWell)
{
    const CTextHost host("<scale id='a' scid='7' pin='1' crd='0 0 50 9'/>", SIDE);
    EXPECT_EQ(1, QELSetQuality(host, "a", 2));
    EXPECT_EQ(1, QELSetScaleStatus(host, 7, 6));
    double f = 0;
    EXPECT_EQ(1, QELGetValue(host, "a", &f));
    EXPECT_EQ(6, f);
}

TEST(LiveIds, AStatusElementWhoseValueIsNoNumberGoesByTheDrawingsStatus)
{
    const CTextHost host("<status id='a' stx='3'><text crd='0 0 50 20'>on</text></status>", SIDE);
    EXPECT_EQ(1, QELSetStatus(host, 3));
    EXPECT_EQ(1, QELSetValue(host, "a", 2));
    EXPECT_EQ("", TextShown(host));
    EXPECT_EQ(1, QELSetValue(host, "a", std::numeric_limits<double>::quiet_NaN()));
    EXPECT_NE("", TextShown(host));
    EXPECT_EQ(1, QELSetStatus(host, 4));
    EXPECT_EQ("", TextShown(host));
}

TEST(LiveIds, AMarkOverTheWholeDrawingComesAfterAllOfIt)
{
    const CTextHost host(Rect("", "10 10 30 30") + Rect("", "60 60 90 90"), SIDE);
    EXPECT_EQ(1, QELSetElemId(host, QELGetRootElem(host), "all"));
    const std::vector<std::string> plain = host.Calls();
    EXPECT_EQ(1, QELSetQuality(host, "all", 2));
    const std::vector<std::string> marked = host.Calls();
    ASSERT_LT(plain.size(), marked.size());
    EXPECT_TRUE(std::equal(plain.begin(), plain.end(), marked.begin()));
}

TEST(LiveIds, AHiddenPartOfAFaceIsNotDrawn)
{
    const CTextHost host("<meter mtype='round' crd='70 70 60 5 5 135 135'>"
                         "<rect id='a' style='0x1' crd='5 5 135 135'/>"
                         "<ellipse style='0x1' crd='20 20 120 120'/></meter>",
                         SIDE);
    EXPECT_EQ(1U, host.Calls({"Rectangle"}).size());
    const std::size_t nEllipses = host.Calls({"Ellipse"}).size();
    EXPECT_EQ(1, QELSetVisible(host, "a", 0));
    EXPECT_EQ(0U, host.Calls({"Rectangle"}).size());
    EXPECT_EQ(nEllipses, host.Calls({"Ellipse"}).size());
}
