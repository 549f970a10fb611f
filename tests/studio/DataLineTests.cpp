// Lines of live data: how they are taken apart, and what is counted.
#include "tools/studio/model/DataLine.h"

#include "tests/studio/StudioSupport.h"
#include "tools/studio/model/Values.h"

#include <cmath>

using studio::CDataLine;
using studio::CValues;
using studio::DataLine;
using studio::LineKind;
using studio::ReadDataLine;

namespace {

DataLine Read(const std::string& line)
{
    return ReadDataLine(line, [](const std::string& name) { return name == "a=b" || name == "a"; });
}

// "NAME|TEXT", or why not.
std::string Parts(const std::string& line)
{
    const DataLine read = Read(line);
    return read.kind == LineKind::Value ? read.name + "|" + read.text : read.why;
}

} // namespace

TEST(DataLine, DividesAtTheEqualsSign)
{
    EXPECT_EQ("a|1", Parts("a=1"));
    EXPECT_EQ("pump.speed.max|-2.5e3", Parts("pump.speed.max=-2.5e3"));
    EXPECT_EQ("#0x7|5", Parts("#0x7=5"));
    EXPECT_EQ("a|", Parts("a="));
}

TEST(DataLine, DropsSpacesAroundTheNameAlone)
{
    EXPECT_EQ("a| 1 ", Parts(" \ta = 1 "));
}

TEST(DataLine, TakesOffTheCarriageReturnAndTheMark)
{
    EXPECT_EQ("a|1", Parts("\xEF\xBB\xBF"
                           "a=1\r"));
    EXPECT_EQ("a|1\r", Parts("a=1\r\r")) << "one of them";
    EXPECT_EQ(LineKind::Blank, Read("\xEF\xBB\xBF").kind);
}

TEST(DataLine, DividesAtTheFirstKnownName)
{
    const auto isBoth = [](const std::string& name) { return name == "x=y" || name == "x=y=z"; };
    EXPECT_EQ("x=y", ReadDataLine("x=y=z=1", isBoth).name);
    EXPECT_EQ("z=1", ReadDataLine("x=y=z=1", isBoth).text);
    EXPECT_EQ("a|b=1", Parts("a=b=1")) << "a is known, and comes first";
    EXPECT_EQ("c|d=1", Parts("c=d=1")) << "none is known";
}

TEST(DataLine, OfSpacesIsBlank)
{
    for (const char* pszLine : {"", " ", "\t", "\r", "  \r"})
        EXPECT_EQ(LineKind::Blank, Read(pszLine).kind);
}

TEST(DataLine, WithoutNameOrSignIsBad)
{
    EXPECT_EQ("'hello' has no '='; wanted is NAME=VALUE", Parts("hello"));
    EXPECT_EQ("'=5' has no name; wanted is NAME=VALUE", Parts("=5"));
    EXPECT_EQ("' =5' has no name; wanted is NAME=VALUE", Parts(" =5"));
    EXPECT_EQ("'" + std::string(60, 'x') + "...' has no '='; wanted is NAME=VALUE",
              Parts(std::string(2000, 'x')));
}

TEST(DataLines, SetValuesAndCount)
{
    const COpenDrawing drawing(ScaleText("level") + ScaleText("a=b", 8) +
                               "<text id=\"t\" crd=\"0 0 90 9\">off</text>");
    CValues values;
    CDataLine lines;
    for (const char* pszLine : {"level=5.5", "a=b=3", "a=b.max=30", "t.text= x = y ",
                                "level.quality=1", "#7.ticks=4", ""})
        lines.Take(drawing, &values, pszLine);
    EXPECT_EQ(6U, lines.Good());
    EXPECT_EQ(0U, lines.Bad()) << lines.LastFault();
    EXPECT_EQ(5.5, drawing.Value("level"));
    EXPECT_EQ(3, drawing.Value("a=b"));
    EXPECT_EQ(30, drawing.Selector("a=b", QEL_SEL_MAX));
    EXPECT_EQ(4, drawing.Selector("level", QEL_SEL_TICKS));
    EXPECT_EQ(" x = y ", *values.Find("t.text"));
}

TEST(DataLines, ThatAreBadAreCountedWithTheReasonOfTheLast)
{
    const COpenDrawing drawing(ScaleText("level"));
    CValues values;
    CDataLine lines;
    const struct {
        std::string line;
        std::string why;
    } bad[] = {
        {"hello", "'hello' has no '='; wanted is NAME=VALUE"},
        {"=5", "'=5' has no name; wanted is NAME=VALUE"},
        {"level=", "level: '' is no number"},
        {"level=five", "level: 'five' is no number"},
        {"level=1e999", "level: '1e999' is no number"},
        {"level=0x", "level: '0x' is no number"},
        {"level=1 2", "level: '1 2' is no number"},
        {"level=--1", "level: '--1' is no number"},
        {"level.max=nan", "level.max: 'nan' is no number"},
        {"level.max=1.5", "level.max: it takes whole numbers of 32 bits only"},
        {"level.quality=3", "level.quality: a quality is 0 (good), 1 (stale) or 2 (bad)"},
        {"level.pin=1", "level.pin: a scale does not know the selector 'pin'"},
        {"level.text=on", "level.text: no text has this identifier"},
        {"levl=5", "levl: no element of the drawing has the identifier 'levl'; did you mean "
                   "'level'?"},
        {"level.tikcs=5", "level.tikcs: there is no 'tikcs' of 'level'; did you mean 'ticks'?"},
        {"level=\xFF", "the bytes are no text in UTF-8"},
        {"lev\x80l=5", "the bytes are no text in UTF-8"},
        {"#9=5", "#9: no scale or meter of the drawing has this id; scales: 7"},
        {"#7=1e39", "#7: the number is too large for a value by number"},
        {"#7=inf", "#7: 'inf' is no number"},
        {"#x=5", "#x: an id is a whole number, decimal or 0x hexadecimal from 0 on, not 'x'"},
        {"#status=1", "#status: the drawing has no status element"},
        {"#param.9=1", "#param.9: there is no such parameter; they are 0 to 3"},
        {"#param.1=38", "#param.1: a hatch style is 0 to 37"},
    };
    uint64_t nBad = 0;
    for (const auto& [line, why] : bad) {
        EXPECT_EQ(0, lines.Take(drawing, &values, line)) << line;
        EXPECT_EQ(++nBad, lines.Bad()) << line;
        EXPECT_EQ(why, lines.LastFault()) << line;
    }
    EXPECT_EQ(0U, lines.Good());
    EXPECT_TRUE(values.All().empty());
    EXPECT_EQ(1, lines.Take(drawing, &values, "level=5")) << "the next good one is taken";
}

TEST(DataLines, AreBadForADrawingThatNeverOpened)
{
    CValues values;
    CDataLine lines;
    EXPECT_EQ(0, lines.Take(nullptr, &values, "level=5"));
    EXPECT_EQ(1U, lines.Bad());
}

TEST(DataLines, GoToAllDrawingsAndOneIsEnough)
{
    const COpenDrawing first(ScaleText("a") + ScaleText("both", 8));
    const COpenDrawing second(ScaleText("b") + ScaleText("both", 8));
    CValues ofFirst;
    CValues ofSecond;
    CDataLine lines;
    const std::vector<studio::DataTarget> targets{{first, &ofFirst}, {second, &ofSecond}};
    EXPECT_EQ(1, lines.Take(targets, "b=5"));
    EXPECT_EQ(1, lines.Take(targets, "both=6"));
    EXPECT_EQ(5, second.Value("b"));
    EXPECT_EQ(6, first.Value("both"));
    EXPECT_EQ(6, second.Value("both"));
    EXPECT_EQ(2U, lines.Good());
    EXPECT_EQ(0U, lines.Bad());
    EXPECT_EQ(0, lines.Take(targets, "c=5"));
    EXPECT_EQ(1U, lines.Bad());
    EXPECT_EQ(0, lines.Take(std::vector<studio::DataTarget>(), "a=5"));
    EXPECT_EQ("no drawing is open", lines.LastFault());
}
