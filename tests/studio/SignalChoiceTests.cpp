// Which signals fit what can be set, what each begins with, and that all values of a drawing get
// one at once.
#include "tools/studio/model/SignalChoice.h"

#include "tests/studio/StudioSupport.h"
#include "tools/studio/model/Play.h"

using studio::CLiveRows;
using studio::CPlay;
using studio::LiveProperty;
using studio::LiveRow;
using studio::SignalKind;
using studio::SignalSetting;

namespace {

using Kind = LiveProperty::Kind;

const std::string BODY =
    ScaleText("a") + ScaleText("b") +
    "<rect id=\"box\" style=\"0x1\" dr=\"1\" lnwid=\"0\" fg=\"0xff\" crd=\"0 0 20 20\"/>"
    "<status stx=\"1\"><rect style=\"0x1\" dr=\"1\" lnwid=\"0\" crd=\"20 20 40 40\"/></status>";

const LiveProperty& PropertyOf(const LiveRow& row, const std::string& label)
{
    for (const LiveProperty* pEach : studio::AllOf(row))
        if (pEach->label == label) return *pEach;
    ADD_FAILURE() << label;
    return row.properties.at(0);
}

} // namespace

TEST(SignalChoice, NumbersTakeAllSwitchesASquareAndTextsATable)
{
    EXPECT_EQ(6U, studio::SignalsFor(Kind::Number).size());
    EXPECT_EQ(studio::SignalsFor(Kind::Number), studio::SignalsFor(Kind::Whole));
    EXPECT_EQ(studio::SignalsFor(Kind::Number), studio::SignalsFor(Kind::Choice));
    EXPECT_EQ((std::vector<SignalKind>{SignalKind::Square, SignalKind::Column}),
              studio::SignalsFor(Kind::Switch));
    EXPECT_EQ(std::vector<SignalKind>{SignalKind::Column}, studio::SignalsFor(Kind::Text));
    EXPECT_EQ(std::vector<SignalKind>{SignalKind::Column}, studio::SignalsFor(Kind::Color));
}

TEST(SignalChoice, ARangeIsThatOfWhatIsDriven)
{
    const COpenDrawing drawing(BODY);
    const CLiveRows rows(drawing);
    CPlay play;
    std::string why;
    const LiveRow& row = *rows.Find("a");
    const auto range = [&](const std::string& label) {
        return studio::RangeFor(row, PropertyOf(row, label), play.Values());
    };
    const double fMax = range("value").fMax;
    EXPECT_EQ(row.fMax, fMax);
    play.Values().Set(drawing, "a.max", "50", &why);
    EXPECT_EQ(50, range("value").fMax) << why;
    EXPECT_EQ(50, range("max").fMax) << "to what it is now";
    EXPECT_EQ(1, range("visible").fMax);
    EXPECT_EQ(2, range("quality").fMax) << "the last of its choices";
    for (const char* pszLabel : {"value", "max", "visible", "quality"})
        EXPECT_EQ(0, range(pszLabel).fMin) << pszLabel;
}

TEST(SignalChoice, WhatIsNotAnyNumberIsDrivenByWholeOnes)
{
    const COpenDrawing drawing(BODY);
    const CLiveRows rows(drawing);
    const LiveRow& row = *rows.Find("a");
    const auto isWhole = [&row](const std::string& label) {
        return studio::FirstSetting(SignalKind::Ramp, PropertyOf(row, label), {0, 2}).bWhole;
    };
    EXPECT_FALSE(isWhole("value"));
    EXPECT_TRUE(isWhole("visible"));
    EXPECT_TRUE(isWhole("quality"));
}

TEST(SignalChoice, SettingsColoursAndTextsFollowTheirSignals)
{
    const COpenDrawing drawing(BODY);
    const CLiveRows rows(drawing);
    CPlay play;
    SignalSetting square =
        studio::FirstSetting(SignalKind::Square, PropertyOf(*rows.Find("box"), "visible"), {0, 1});
    square.fPeriod = 2;
    SignalSetting column =
        studio::FirstSetting(SignalKind::Column, PropertyOf(*rows.Find("box"), "fg"), {0, 1});
    column.cells = {"#00FF00", "#0000FF"};
    EXPECT_EQ(1, column.fPeriod);
    play.Signals().Set("box.visible", square);
    play.Signals().Set("box.fg", column);
    play.Signals().Play(true);
    const auto text = [&play](const char* pszName) {
        const std::string* pText = play.Values().Find(pszName);
        return pText ? *pText : "none";
    };
    play.Tick(drawing, 500);
    EXPECT_EQ("0", text("box.visible"));
    EXPECT_EQ("#00FF00", text("box.fg"));
    play.Tick(drawing, 1000);
    EXPECT_EQ("1", text("box.visible"));
    EXPECT_EQ("#0000FF", text("box.fg"));
    EXPECT_EQ("", play.SignalFault());
}

TEST(SignalChoice, AllValuesThatSlideGetOneAndOthersStay)
{
    const COpenDrawing drawing(BODY);
    const CLiveRows rows(drawing);
    CPlay play;
    SignalSetting own;
    own.kind = SignalKind::Walk;
    play.Signals().Set("a", own);
    EXPECT_EQ(2, studio::DriveValues(rows, play.Values(), &play.Signals()));
    EXPECT_EQ(SignalKind::Walk, play.Signals().Find("a")->kind);
    EXPECT_EQ(SignalKind::Sine, play.Signals().Find("b")->kind);
    EXPECT_EQ(rows.Find("b")->fMax, play.Signals().Find("b")->fHigh);
    EXPECT_EQ(SignalKind::Ramp, play.Signals().Find("#status")->kind);
    EXPECT_TRUE(play.Signals().Find("#status")->bWhole);
    EXPECT_EQ(nullptr, play.Signals().Find("box"));
    EXPECT_NE(play.Signals().Find("b")->fPeriod, play.Signals().Find("#status")->fPeriod);
    EXPECT_EQ(0, studio::DriveValues(rows, play.Values(), &play.Signals()));
}
