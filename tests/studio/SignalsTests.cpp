// Signals: their values by time, which of them are told, and how they play.
#include "tools/studio/model/Signals.h"

#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>

using studio::CSignal;
using studio::CSignals;
using studio::SignalKind;
using studio::SignalSetting;

namespace {

constexpr double SECOND = 1000;

SignalSetting Setting(SignalKind kind, double fLow = 0, double fHigh = 100, double fPeriod = 8)
{
    SignalSetting setting;
    setting.kind = kind;
    setting.fLow = fLow;
    setting.fHigh = fHigh;
    setting.fPeriod = fPeriod;
    return setting;
}

// The texts at whole seconds from 0 on.
std::string Seconds(const SignalSetting& setting, int nSeconds)
{
    CSignal signal(setting);
    std::string texts = signal.Text();
    for (int n = 0; n < nSeconds; ++n) {
        signal.Advance(SECOND);
        texts += " " + signal.Text();
    }
    return texts;
}

} // namespace

TEST(Signals, AConstantStaysAtItsLowEnd)
{
    EXPECT_EQ("25.00 25.00 25.00", Seconds(Setting(SignalKind::Constant, 25), 2));
}

TEST(Signals, ARampRisesEvenlyAndBeginsAnew)
{
    EXPECT_EQ("0.0 12.5 25.0 37.5 50.0 62.5 75.0 87.5 0.0 12.5",
              Seconds(Setting(SignalKind::Ramp), 9));
    EXPECT_EQ("10.00 7.50 5.00 2.50 10.00", Seconds(Setting(SignalKind::Ramp, 10, 0, 4), 4));
}

// Half the range below and above its middle: an eighth of a wave is half the root of 2 of that.
TEST(Signals, ASineBeginsAtItsLowEnd)
{
    EXPECT_EQ("0.0 14.6 50.0 85.4 100.0 85.4 50.0 14.6 0.0", Seconds(Setting(SignalKind::Sine), 8));
}

TEST(Signals, ASquareIsLowForHalfAPeriodThenHigh)
{
    EXPECT_EQ("1.000 1.000 5.000 5.000 1.000", Seconds(Setting(SignalKind::Square, 1, 5, 4), 4));
}

TEST(Signals, AWalkStaysInItsRangeAndMoves)
{
    CSignal signal(Setting(SignalKind::Walk, -5, 5));
    std::set<std::string> texts;
    for (int n = 0; n < 2000; ++n) {
        const double fBefore = std::stod(signal.Text());
        signal.Advance(100);
        const double fAfter = std::stod(signal.Text());
        ASSERT_GE(fAfter, -5);
        ASSERT_LE(fAfter, 5);
        ASSERT_LE(std::fabs(fAfter - fBefore), 1.001) << "a tenth of the range, and its rounding";
        texts.insert(signal.Text());
    }
    EXPECT_GT(texts.size(), 500U);
}

TEST(Signals, AWalkGoesTheSameWayHoweverItsTimePasses)
{
    CSignal fine(Setting(SignalKind::Walk));
    CSignal coarse(Setting(SignalKind::Walk));
    for (int n = 0; n < 64; ++n) fine.Advance(125);
    for (int n = 0; n < 8; ++n) coarse.Advance(SECOND);
    EXPECT_EQ(coarse.Text(), fine.Text());
    coarse.Advance(1e12);
    EXPECT_LE(std::stod(coarse.Text()), 100) << "after years, too, at once";
}

TEST(Signals, AColumnHasARowAPeriodAndBeginsAnew)
{
    SignalSetting setting = Setting(SignalKind::Column, 0, 0, 1);
    setting.cells = {"", "5", "", "on"};
    EXPECT_EQ(" 5 5 on  5", Seconds(setting, 5));
    setting.cells = {};
    EXPECT_EQ("  ", Seconds(setting, 2));
}

TEST(Signals, RoundWhatTakesWholeNumbers)
{
    SignalSetting setting = Setting(SignalKind::Ramp, 0, 10, 4);
    setting.bWhole = true;
    EXPECT_EQ("0 2 5 8 0", Seconds(setting, 4)) << "2.5 is rounded to the even number";
}

TEST(Signals, HaveAPointInAllValuesOrInNone)
{
    for (const double fEnd : {0.001, 1.0, 99.0, 1e6, 1e300}) {
        CSignal signal(Setting(SignalKind::Ramp, 0, fEnd));
        for (int n = 0; n < 16; ++n, signal.Advance(SECOND))
            EXPECT_NE(std::string::npos, signal.Text().find('.')) << fEnd;
    }
}

TEST(Signals, NeverSayMinusZero)
{
    EXPECT_EQ("-1.0000 0.0000 -1.0000", Seconds(Setting(SignalKind::Square, -1, -0.00001, 2), 2));
}

TEST(Signals, TakeNoTimeThatIsNone)
{
    CSignal signal(Setting(SignalKind::Ramp));
    signal.Advance(SECOND);
    for (const double fTime : {-SECOND, std::nan(""), HUGE_VAL, 0.0}) signal.Advance(fTime);
    EXPECT_EQ("12.5", signal.Text());
}

TEST(Signals, TakeNoPeriodThatIsNone)
{
    for (const double fPeriod : {0.0, -1.0, std::nan(""), HUGE_VAL}) {
        CSignal signal(Setting(SignalKind::Ramp, 0, 100, fPeriod));
        signal.Advance(2.5); // milliseconds: a quarter of the shortest one
        EXPECT_EQ("25.0", signal.Text()) << fPeriod;
    }
}

TEST(Signals, TellWhatHasChangedAloneAndOnlyWhilePlaying)
{
    CSignals signals;
    signals.Set("a", Setting(SignalKind::Constant, 5));
    signals.Set("b", Setting(SignalKind::Square, 0, 1, 2));
    EXPECT_TRUE(signals.Advance(SECOND).empty()) << "it does not play yet";
    signals.Play(true);
    const auto first = signals.Advance(0);
    ASSERT_EQ(2U, first.size()) << "at first all are told";
    EXPECT_EQ("a", first[0].name);
    EXPECT_EQ("5.000", first[0].text);
    EXPECT_TRUE(signals.Advance(100).empty());
    const auto second = signals.Advance(SECOND);
    ASSERT_EQ(1U, second.size());
    EXPECT_EQ("b", second[0].name);
    EXPECT_EQ("1.000", second[0].text);
    signals.Play(false);
    EXPECT_TRUE(signals.Advance(SECOND).empty());
}

TEST(Signals, PlayAsFastAsTheySay)
{
    CSignals signals;
    signals.Set("a", Setting(SignalKind::Ramp));
    signals.Play(true);
    signals.SetSpeed(4);
    EXPECT_EQ("50.0", signals.Advance(SECOND).at(0).text);
    signals.SetSpeed(0.5);
    EXPECT_EQ("62.5", signals.Advance(2 * SECOND).at(0).text);
}

TEST(Signals, HoldTheSpeedWithinItsLimits)
{
    CSignals signals;
    for (const auto& [fSet, fKept] :
         {std::pair{0.0, 0.1}, {-4.0, 0.1}, {1000.0, 10.0}, {2.5, 2.5}}) {
        signals.SetSpeed(fSet);
        EXPECT_EQ(fKept, signals.Speed());
    }
    signals.SetSpeed(std::nan(""));
    EXPECT_EQ(0.1, signals.Speed());
}

TEST(Signals, AreReplacedRemovedAndRewound)
{
    CSignals signals;
    signals.Set("a", Setting(SignalKind::Ramp));
    signals.Play(true);
    signals.Advance(SECOND);
    signals.Rewind();
    EXPECT_EQ("0.0", signals.Advance(0).at(0).text);
    signals.Set("a", Setting(SignalKind::Constant, 7));
    ASSERT_NE(nullptr, signals.Find("a"));
    EXPECT_EQ(SignalKind::Constant, signals.Find("a")->kind);
    EXPECT_EQ("7.000", signals.Advance(0).at(0).text);
    signals.Remove("a");
    EXPECT_EQ(nullptr, signals.Find("a"));
    EXPECT_TRUE(signals.IsEmpty());
}

TEST(Signals, ReadTheColumnsOfATable)
{
    const CTestFolder folder;
    WriteBytes(folder.Path("t.csv"), "time,\"a,b\"\n1,5\n2,\n");
    WriteBytes(folder.Path("bad.csv"), "a,b\n1\n");
    WriteBytes(folder.Path("names.csv"), "a,b\n");
    const auto wide = [&](const char* pszName) {
        const std::string path = folder.Path(pszName);
        return std::wstring(path.begin(), path.end());
    };
    std::vector<studio::SignalColumn> columns;
    std::string why;
    ASSERT_EQ(1, ReadColumns(wide("t.csv"), &columns, &why)) << why;
    ASSERT_EQ(2U, columns.size());
    EXPECT_EQ("a,b", columns[1].name);
    EXPECT_EQ((std::vector<std::string>{"5", ""}), columns[1].cells);
    EXPECT_EQ(0, ReadColumns(wide("bad.csv"), &columns, &why));
    EXPECT_NE(std::string::npos, why.find("row 1 (line 2) has 1 cells")) << why;
    EXPECT_EQ(0, ReadColumns(wide("names.csv"), &columns, &why));
    EXPECT_EQ(0, ReadColumns(wide("none.csv"), &columns, &why));
    EXPECT_NE(std::string::npos, why.find("there is no such file")) << why;
    EXPECT_EQ(2U, columns.size()) << "a failure leaves them";
}
