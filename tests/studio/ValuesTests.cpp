// What is set by name is remembered, set anew in a drawing that was read again, and kept in a file.
#include "tools/studio/model/Values.h"

#include "tests/studio/StudioSupport.h"
#include "tests/support/Files.h"

#include <cmath>

using studio::CValues;

namespace {

std::wstring Wide(const std::string& ascii)
{
    return {ascii.begin(), ascii.end()};
}

// The reason of a refusal; empty when there is none.
std::string WhyNot(const COpenDrawing& drawing, const std::string& name, const std::string& text)
{
    CValues values;
    std::string why;
    const int nSet = values.Set(drawing, name, text, &why);
    EXPECT_EQ(nSet ? 1U : 0U, values.All().size());
    return nSet ? "" : why;
}

} // namespace

TEST(Values, ReachTheDrawingAndAreRemembered)
{
    const COpenDrawing drawing(ScaleText("tank.level"));
    CValues values;
    std::string why;
    EXPECT_FALSE(values.IsModified());
    ASSERT_EQ(1, values.Set(drawing, "tank.level", "2.5", &why));
    ASSERT_EQ(1, values.Set(drawing, "tank.level.max", "40", &why));
    EXPECT_EQ(2.5, drawing.Value("tank.level"));
    EXPECT_EQ(40, drawing.Selector("tank.level", QEL_SEL_MAX));
    EXPECT_EQ("2.5", *values.Find("tank.level"));
    EXPECT_EQ(nullptr, values.Find("tank"));
    EXPECT_TRUE(values.IsModified());
}

TEST(Values, KeepTheirPlaceWhenTheyAreSetAgain)
{
    const COpenDrawing drawing(ScaleText("a") + ScaleText("b", 8));
    CValues values;
    std::string why;
    values.Set(drawing, "a", "1", &why);
    values.Set(drawing, "b", "2", &why);
    values.Set(drawing, "a", "3", &why);
    ASSERT_EQ(2U, values.All().size());
    EXPECT_EQ("a", values.All()[0].name);
    EXPECT_EQ("3", values.All()[0].text);
}

TEST(Values, KeepTheOldOneWhenANewOneIsRefused)
{
    const COpenDrawing drawing(ScaleText("a"));
    CValues values;
    std::string why;
    values.Set(drawing, "a", "1", &why);
    EXPECT_EQ(0, values.Set(drawing, "a", "much", &why));
    EXPECT_EQ("a: 'much' is no number", why);
    EXPECT_EQ("1", *values.Find("a"));
    EXPECT_EQ(1, drawing.Value("a"));
}

TEST(Values, AreSetAnewInADrawingThatWasReadAgain)
{
    CValues values;
    std::string why;
    {
        const COpenDrawing before(ScaleText("a") + ScaleText("b", 8));
        values.Set(before, "a", "4", &why);
        values.Set(before, "b", "5", &why);
    }
    const COpenDrawing without(ScaleText("b"));
    EXPECT_EQ(1, values.Apply(without));
    EXPECT_EQ(5, without.Value("b"));
    const COpenDrawing again(ScaleText("a") + ScaleText("b", 8));
    EXPECT_EQ(2, values.Apply(again)) << "the one that was gone for a while is remembered";
    EXPECT_EQ(4, again.Value("a"));
}

TEST(Values, KnowTheIdentifiersOfAnotherDrawing)
{
    CValues values;
    const COpenDrawing first(ScaleText("a"));
    const COpenDrawing second(ScaleText("b"));
    EXPECT_TRUE(values.Knows(first, "a"));
    EXPECT_FALSE(values.Knows(second, "a"));
    EXPECT_TRUE(values.Knows(second, "b"));
}

TEST(Values, FindIdentifiersInTheEncodingOfTheDrawing)
{
    const char szGb[] = "\xCB\xAE\xCE\xBB";           // in gb2312
    const char szUtf8[] = "\xE6\xB0\xB4\xE4\xBD\x8D"; // the same in UTF-8
    const COpenDrawing old(ScaleText(szGb), "gb2312");
    const COpenDrawing modern(ScaleText(szUtf8));
    EXPECT_EQ("", WhyNot(old, szUtf8, "5"));
    EXPECT_EQ("", WhyNot(modern, szUtf8, "6"));
    EXPECT_EQ(5, old.Value(szGb));
    EXPECT_EQ(6, modern.Value(szUtf8));
}

TEST(Values, TakeAnIdentifierAsAWholeBeforeTheyDivideIt)
{
    const COpenDrawing drawing(ScaleText("tank") + ScaleText("tank.max", 8));
    EXPECT_EQ("", WhyNot(drawing, "tank.max", "5"));
    EXPECT_EQ(5, drawing.Value("tank.max"));
    EXPECT_EQ(10, drawing.Selector("tank", QEL_SEL_MAX)) << "as without a setting";
    EXPECT_EQ("", WhyNot(drawing, "tank.max.max", "50"));
    EXPECT_EQ(50, drawing.Selector("tank.max", QEL_SEL_MAX));
}

TEST(Values, OfNoNumberMakeTheQualityBadAndStay)
{
    for (const char* pszText : {"nan", "NaN", "inf", "-INF"}) {
        const COpenDrawing drawing(ScaleText("a"));
        EXPECT_EQ("", WhyNot(drawing, "a", pszText));
        EXPECT_TRUE(std::isnan(drawing.Value("a"))) << pszText;
    }
}

TEST(Values, MayBeAsLargeAsARealNumber)
{
    const COpenDrawing drawing(ScaleText("a"));
    EXPECT_EQ("", WhyNot(drawing, "a", "1.5e308"));
    EXPECT_EQ(1.5e308, drawing.Value("a"));
    EXPECT_EQ("", WhyNot(drawing, "a", "99999999999999999999"));
    EXPECT_EQ(1e20, drawing.Value("a"));
    EXPECT_EQ("a: '1e999' is no number", WhyNot(drawing, "a", "1e999"));
}

TEST(Values, AreRefusedWithTheReason)
{
    const COpenDrawing drawing(ScaleText("a") + "<rect id=\"box\" crd=\"0 0 9 9\"/>");
    EXPECT_EQ("a\xFF: the bytes are no text in UTF-8", "a\xFF: " + WhyNot(drawing, "a\xFF", "1"));
    EXPECT_EQ("the bytes are no text in UTF-8", WhyNot(drawing, "a", "\xFF"));
    EXPECT_EQ("box: no meter, scale, status element or text has this identifier",
              WhyNot(drawing, "box", "1"));
    EXPECT_EQ("c: no element of the drawing has the identifier 'c'", WhyNot(drawing, "c", "1"));
    EXPECT_EQ("a.ticks: 'ticks' takes 1 or more", WhyNot(drawing, "a.ticks", "0"));
    EXPECT_EQ("a: '' is no number", WhyNot(drawing, "a", " "));
    EXPECT_EQ("a: '1,5' is no number", WhyNot(drawing, "a", "1,5"));
    EXPECT_EQ("a: '1-2' is no number", WhyNot(drawing, "a", "1-2"));
    EXPECT_EQ("box.fg: '#12345' is no number", WhyNot(drawing, "box.fg", "#12345"));
}

TEST(Values, AreForgottenByAReset)
{
    const COpenDrawing drawing(ScaleText("a"));
    CValues values;
    std::string why;
    values.Set(drawing, "a", "5", &why);
    values.Reset(drawing);
    EXPECT_TRUE(values.All().empty());
    EXPECT_EQ(nullptr, values.Find("a"));
    EXPECT_EQ(0, drawing.Value("a"));
}

TEST(Values, ComeBackFromTheirFile)
{
    const CTestFolder folder;
    const std::wstring path = Wide(folder.Path("a.values.json"));
    const COpenDrawing drawing(ScaleText("a") + "<text id=\"t\" crd=\"0 0 90 9\">off</text>" +
                               "<rect id=\"box\" crd=\"0 0 9 9\"/>");
    CValues values;
    std::string why;
    ASSERT_EQ(1, values.Set(drawing, "a", "2.50", &why));
    ASSERT_EQ(1, values.Set(drawing, "a.max", "0x20", &why));
    ASSERT_EQ(1, values.Set(drawing, "t.text", " 1 = \"one\" ", &why));
    ASSERT_EQ(1, values.Set(drawing, "box.fg", "#FF8000 glt", &why));
    ASSERT_EQ(1, values.Set(drawing, "a.quality", "1", &why));
    ASSERT_EQ(1, values.Save(path, &why)) << why;
    EXPECT_FALSE(values.IsModified());
    EXPECT_EQ("{\n  \"a\": 2.5,\n  \"a.max\": \"0x20\",\n  \"t.text\": \" 1 = \\\"one\\\" \",\n"
              "  \"box.fg\": \"#FF8000 glt\",\n  \"a.quality\": 1\n}\n",
              ReadBytes(folder.Path("a.values.json")));

    CValues loaded;
    ASSERT_EQ(1, loaded.Load(path, &why)) << why;
    EXPECT_FALSE(loaded.IsModified());
    const COpenDrawing again(ScaleText("a") + "<text id=\"t\" crd=\"0 0 90 9\">off</text>" +
                             "<rect id=\"box\" crd=\"0 0 9 9\"/>");
    EXPECT_EQ(5, loaded.Apply(again));
    EXPECT_EQ(2.5, again.Value("a"));
    EXPECT_EQ(32, again.Selector("a", QEL_SEL_MAX));
}

TEST(Values, LeaveWhatIsThereWhenAFileIsNone)
{
    const CTestFolder folder;
    WriteBytes(folder.Path("bad.json"), "[1]");
    const COpenDrawing drawing(ScaleText("a"));
    CValues values;
    std::string why;
    values.Set(drawing, "a", "5", &why);
    EXPECT_EQ(0, values.Load(Wide(folder.Path("bad.json")), &why));
    EXPECT_NE(std::string::npos, why.find("it is no JSON object of names and values"));
    EXPECT_EQ(0, values.Load(Wide(folder.Path("none.json")), &why));
    EXPECT_NE(std::string::npos, why.find("there is no such file"));
    EXPECT_EQ("5", *values.Find("a"));
    EXPECT_EQ(0, values.Save(Wide(folder.Path("no/such/folder.json")), &why));
    EXPECT_TRUE(values.IsModified());
}

TEST(Values, StandBesideTheDrawing)
{
    EXPECT_EQ(L"C:\\a.b\\pump.values.json", studio::ValuesPath(L"C:\\a.b\\pump.qel"));
    EXPECT_EQ(L"C:\\a.b\\pump.values.json", studio::ValuesPath(L"C:\\a.b\\pump"));
    EXPECT_EQ(L"pump.values.json", studio::ValuesPath(L"pump.qel"));
}
