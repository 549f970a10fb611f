// The rows of the run panel: what they are of, what each takes, and what it has.
#include "tools/studio/model/LiveRows.h"

#include "tests/studio/StudioSupport.h"
#include "tools/studio/model/Values.h"

using studio::CLiveRows;
using studio::CValues;
using studio::LiveProperty;
using studio::LiveRow;
using Kind = LiveProperty::Kind;

namespace {

std::string Names(const CLiveRows& rows)
{
    std::string names;
    for (const LiveRow& row : rows.Rows()) names += row.name + " ";
    return names;
}

const LiveProperty* Property(const LiveRow& row, const std::string& label)
{
    for (const LiveProperty& property : row.properties)
        if (property.label == label) return &property;
    return nullptr;
}

std::string Meter(const std::string& words, const std::string& type = "round")
{
    return "<meter " + words + " mtype=\"" + type + "\" upin=\"1\" crd=\"50 50 40 10 10 90 90\"/>";
}

} // namespace

TEST(LiveRows, AreOneForEachIdentifierThenOfNumbersThenStatusAndParameters)
{
    const COpenDrawing drawing(ScaleText("level") + "<text id=\"t\" crd=\"0 0 90 9\">##.#</text>" +
                               "<text id=\"t\" crd=\"0 0 90 9\">again</text>" +
                               Meter("mtid=\"0\"") +
                               "<scale scid=\"41\" sctype=\"round\" crd=\"50 50 20\"/>" +
                               "<status stx=\"3\"><rect crd=\"0 0 9 9\"/></status>" +
                               "<frame><rect id=\"r\" crd=\"0 0 9 9\"/></frame>");
    EXPECT_EQ("level t r #0 #41 #status #param.0 #param.1 #param.2 #param.3 ",
              Names(CLiveRows(drawing)));
}

TEST(LiveRows, AreNoneOfADrawingWithoutNames)
{
    EXPECT_EQ("", Names(CLiveRows(COpenDrawing("<rect crd=\"0 0 9 9\"/>"))));
}

TEST(LiveRows, HaveTheRangeOfTheScale)
{
    const COpenDrawing drawing(ScaleText("a"));
    CValues values;
    std::string why;
    const CLiveRows rows(drawing);
    const LiveRow& row = rows.Rows().at(0);
    EXPECT_EQ(0, RangeOf(row, values).fMin);
    EXPECT_EQ(10, RangeOf(row, values).fMax);
    values.Set(drawing, "a.max", "250", &why);
    values.Set(drawing, "a.min", "-50", &why);
    EXPECT_EQ(-50, RangeOf(row, values).fMin) << "also when it was set after the rows were made";
    EXPECT_EQ(250, RangeOf(row, values).fMax);
    values.Set(drawing, "a.max", "-50", &why);
    EXPECT_LT(RangeOf(row, values).fMin, RangeOf(row, values).fMax) << "one is always left";
}

TEST(LiveRows, HaveAllSelectorsOfAMeterByName)
{
    const COpenDrawing drawing(Meter("id=\"d\" mtid=\"0\"", "roundUpgrade"));
    const CLiveRows rows(drawing);
    ASSERT_EQ("d ", Names(rows));
    const LiveRow& row = rows.Rows()[0];
    EXPECT_EQ("meter roundUpgrade", row.kind);
    const struct {
        const char* pszLabel;
        Kind kind;
    } wanted[] = {{"pin-color", Kind::Color},  {"ticks", Kind::Whole}, {"alarm", Kind::Switch},
                  {"pin-style", Kind::Choice}, {"base", Kind::Number}, {"quality", Kind::Choice},
                  {"visible", Kind::Switch}};
    for (const auto& [pszLabel, kind] : wanted) {
        const LiveProperty* pProperty = Property(row, pszLabel);
        ASSERT_NE(nullptr, pProperty) << pszLabel;
        EXPECT_EQ(kind, pProperty->kind) << pszLabel;
        EXPECT_EQ("d." + std::string(pszLabel), pProperty->name);
    }
    EXPECT_EQ("#AAAAAA", Property(row, "pin-color")->text);
    EXPECT_EQ("10", Property(row, "ticks")->text);
    EXPECT_EQ(5U, Property(row, "pin-style")->choices.size()) << "0 to 4";
    EXPECT_EQ(nullptr, Property(row, "sectors")) << "which a share chart has";
    EXPECT_EQ(nullptr, Property(row, "value")) << "which the row itself has";
}

TEST(LiveRows, EachPropertyIsTakenAsItStands)
{
    const COpenDrawing drawing(
        ScaleText("level") + Meter("id=\"d\" mtid=\"0\"", "roundUpgrade") +
        "<text id=\"t\" crd=\"0 0 90 9\">##.#</text><rect id=\"r\" crd=\"0 0 9 9\"/>" +
        Meter("mtid=\"40\"") + "<scale scid=\"41\" sctype=\"round\" crd=\"50 50 20\"/>" +
        "<status stx=\"3\"><frame><rect crd=\"0 0 9 9\"/></frame></status>");
    CValues values;
    std::string why;
    int nTaken = 0;
    const CLiveRows rows(drawing);
    for (const LiveRow& row : rows.Rows()) {
        std::vector<LiveProperty> all = row.properties;
        if (row.value) all.push_back(*row.value);
        for (const LiveProperty& property : all) {
            if (property.text.empty()) continue; // it has none yet
            EXPECT_EQ(1, values.Set(drawing, property.name, property.text, &why)) << why;
            ++nTaken;
        }
    }
    EXPECT_GT(nTaken, 2 * QEL_SEL_COUNT) << "three that have selectors, and others";
}

TEST(LiveRows, OfASettingThatWasMadeHaveIt)
{
    const COpenDrawing drawing(ScaleText("a"));
    CValues values;
    std::string why;
    const CLiveRows before(drawing);
    values.Set(drawing, "a", "5", &why);
    EXPECT_EQ("0", before.Rows()[0].value->text);
    EXPECT_EQ("5", TextOf(*before.Rows()[0].value, values));
    EXPECT_EQ("5", CLiveRows(drawing).Rows()[0].value->text);
}

TEST(LiveRows, OfAShareChartHaveAsManySectorsAsItHas)
{
    const COpenDrawing drawing(Meter("id=\"s\" mtid=\"0\"", "sector"));
    CValues values;
    std::string why;
    EXPECT_EQ(nullptr, Property(CLiveRows(drawing).Rows()[0], "sector-1"));
    values.Set(drawing, "s.sectors", "2", &why);
    values.Set(drawing, "s.sector-2", "7.5", &why);
    const CLiveRows rows(drawing);
    ASSERT_NE(nullptr, Property(rows.Rows()[0], "sector-2"));
    EXPECT_EQ("7.5", Property(rows.Rows()[0], "sector-2")->text);
    EXPECT_EQ(nullptr, Property(rows.Rows()[0], "sector-3"));
}

TEST(LiveRows, OfTextsHaveTheirTextAndTheNumbersThatFit)
{
    const COpenDrawing drawing("<text id=\"t\" crd=\"0 0 90 9\">at ###.# C</text>"
                               "<text id=\"plain\" crd=\"0 0 90 9\">on</text>");
    const CLiveRows rows(drawing);
    const LiveRow& run = *rows.Find("t");
    EXPECT_EQ("at ###.# C", Property(run, "text")->text);
    ASSERT_TRUE(run.HasSlider());
    EXPECT_EQ(1000, run.fMax) << "three places before the point";
    EXPECT_FALSE(rows.Find("plain")->HasSlider());
    EXPECT_EQ(nullptr, rows.Find("none"));
}

TEST(LiveRows, OfShapesHaveTheirColours)
{
    const COpenDrawing drawing(
        "<rect id=\"r\" clr=\"0x112233\" fg=\"0x445566\" bg=\"0x778899\" crd=\"0 0 9 9\"/>");
    const CLiveRows rows(drawing);
    const LiveRow& row = rows.Rows().at(0);
    EXPECT_EQ("rect", row.kind);
    EXPECT_FALSE(row.HasSlider());
    EXPECT_EQ("#332211", Property(row, "clr")->text) << "red stands last in a file";
    EXPECT_EQ("#665544", Property(row, "fg")->text);
    EXPECT_EQ("#998877", Property(row, "bg")->text);
}

TEST(LiveRows, OfAClockHaveNoValue)
{
    const COpenDrawing drawing(Meter("id=\"c\" mtid=\"0\"", "clock"));
    EXPECT_FALSE(CLiveRows(drawing).Rows().at(0).value.has_value());
}

TEST(LiveRows, OfTheStatusGoFromAllToOneBeyondTheLast)
{
    const COpenDrawing drawing("<status stx=\"3\"><rect crd=\"0 0 9 9\"/></status>");
    CValues values;
    const CLiveRows rows(drawing);
    const LiveRow& row = rows.Rows().at(0);
    EXPECT_EQ("#status", row.name);
    EXPECT_EQ(Kind::Whole, row.value->kind);
    EXPECT_EQ(-1, RangeOf(row, values).fMin);
    EXPECT_EQ(4, RangeOf(row, values).fMax);
}
