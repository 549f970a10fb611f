// The meter as a document element: its attributes in the file and when they are written, the three
// forms of its coordinates, its record, and its rectangle. The code is dynamic/QELDocMeter.cpp; the
// view is tested in MeterViewTests.cpp.
#include "dynamic/QELDocMeter.h"
#include "engine/ElementTypes.h"

#include "tests/support/DocSupport.h"

#include <cstddef>
#include <cstring>
#include <memory>

namespace {

// The keywords in the order of their numbers, and the form of the coordinates.
enum class Form { Rectangle, Circle, Arc };
constexpr struct {
    const char* pszKeyword;
    Form form;
} g_types[] = {
    {"vert", Form::Rectangle},   {"vert3d", Form::Rectangle}, {"horz", Form::Rectangle},
    {"horz3d", Form::Rectangle}, {"round", Form::Circle},     {"Arc", Form::Arc},
    {"pie", Form::Arc},          {"clock", Form::Circle},     {"roundUpgrade", Form::Circle},
    {"pieUpgrade", Form::Arc},   {"sector", Form::Circle}};
constexpr int TYPES = 11;

int WordsOf(Form form)
{
    return form == Form::Rectangle ? 4 : form == Form::Circle ? 7 : 9;
}

QELMETERATTR Record(const CQELDocElm& elm)
{
    QELMETERATTR attr{};
    EXPECT_EQ(1, elm.GetAttr(&attr));
    return attr;
}

// The record of a meter that a file holds with these attributes.
QELMETERATTR RecordOf(const std::string& attrs)
{
    CTestDocument document(DrawingText("<meter " + attrs + "/>"));
    EXPECT_EQ(1, document.Loaded());
    return Record(*document.First());
}

std::string Words(const QELMETERATTR& attr)
{
    std::string text;
    for (const LONG n : attr.nGeometry) text += (text.empty() ? "" : " ") + std::to_string(n);
    return text;
}

// What is saved of a meter with these attributes.
std::string Saved(const std::string& attrs)
{
    return SavedBody("<meter " + attrs + "/>");
}

// A meter in a drawing of its own, as the host makes one.
class CTestMeter {
public:
    CTestMeter()
    {
        EXPECT_EQ(1, m_document.New());
        m_pMeter = m_document.CreateElement(m_document.GetRoot(), nullptr, QEL_TYPE_METER);
        EXPECT_NE(nullptr, m_pMeter);
    }
    CTestMeter(const CTestMeter&) = delete;
    CTestMeter& operator=(const CTestMeter&) = delete;
    CQELDocElm* operator->() { return m_pMeter; }
    CQELDocElm& operator*() { return *m_pMeter; }

    void Give(int nType, const std::vector<LONG>& geometry)
    {
        QELMETERATTR attr = Record(*m_pMeter);
        attr.nType = nType;
        std::copy(geometry.begin(), geometry.end(), attr.nGeometry);
        ASSERT_EQ(1, m_pMeter->SetAttr(&attr));
    }

private:
    CQELDocument m_document{g_elementTypes};
    CQELDocElm* m_pMeter = nullptr;
};

// ---- defaults and order ----

void ExpectDefaults(const QELMETERATTR& attr)
{
    EXPECT_EQ(68u, attr.nSize);
    EXPECT_EQ(0u, attr.nId);
    EXPECT_EQ(1, attr.bUseScale);
    EXPECT_EQ(0, attr.bUsePin);
    EXPECT_EQ(0, attr.nType);
    EXPECT_EQ(100, attr.nMax);
    EXPECT_EQ(1, attr.nMin);
    EXPECT_EQ("0 0 10 10 0 0 0 0 0", Words(attr));
    EXPECT_EQ(0u, attr.nFlags);
}

TEST(MeterElement, DefaultsAreAVerticalBarFromOneToAHundred)
{
    ExpectDefaults(RecordOf(""));
    CTestMeter created;
    ExpectDefaults(Record(*created));
}

TEST(MeterElement, WithDefaultsWritesItsTypeItsRangeAndItsCoordinates)
{
    EXPECT_EQ("<meter mtype=\"vert\" imin=\"1\" imax=\"100\" crd=\"0 0 10 10\"/>\r\n", Saved(""));
    EXPECT_EQ("<meter id=\"m\" mtype=\"vert\" imin=\"1\" imax=\"100\" crd=\"0 0 10 10\"/>\r\n",
              Saved("usc='1' upin='0' mtid='0' flag='0x0' id='m'"));
}

TEST(MeterElement, AttributesAreWrittenInOneOrderWhateverTheFileHad)
{
    EXPECT_EQ("<meter id=\"m\" mtid=\"7\" usc=\"0\" upin=\"1\" mtype=\"Arc\" imin=\"2\" imax=\"9\" "
              "crd=\"1 2 3 4 5 6 7 8 9\" flag=\"0x1001000\"/>\r\n",
              Saved("flag='0x1001000' crd='1 2 3 4 5 6 7 8 9' imax='9' imin='2' mtype='Arc' "
                    "upin='1' usc='0' mtid='7' id='m'"));
}

TEST(MeterElement, AFileOfEveryTypeReadsBackToItsOwnBytes)
{
    for (const auto& type : g_types) {
        std::string crd;
        for (int n = 1; n <= WordsOf(type.form); ++n)
            crd += (n > 1 ? " " : "") + std::to_string(n * 11);
        const std::string line = std::string("<meter id=\"a\" mtid=\"40\" usc=\"0\" upin=\"1\" ") +
                                 "mtype=\"" + type.pszKeyword +
                                 "\" imin=\"3\" imax=\"400\" crd=\"" + crd +
                                 "\" flag=\"0x48000\"/>\r\n";
        EXPECT_EQ(line, SavedBody(line));
    }
}

TEST(MeterElement, KeepsTheShapesOfItsFaceAsChildren)
{
    const std::string body =
        "<meter mtype=\"round\" imin=\"1\" imax=\"100\" crd=\"5 5 5 0 0 10 10\">\r\n"
        "<circle crd=\"5 5 5\"/>\r\n</meter>\r\n";
    EXPECT_EQ(body, SavedBody(body));
}

// ---- each attribute ----

TEST(MeterElement, SwitchesAreWrittenOnlyWhenTheyDifferFromTheirDefault)
{
    const struct {
        const char* pszAttrs;
        int nScale;
        int nPin;
        const char* pszWritten;
    } rows[] = {
        {"usc='1'", 1, 0, ""},
        {"usc='0'", 0, 0, " usc=\"0\""},
        {"usc='5'", 5, 0, ""}, // only a 0 is ever written
        {"usc='-1'", -1, 0, ""},
        {"usc='x'", 1, 0, ""},
        {"upin='0'", 1, 0, ""},
        {"upin='1'", 1, 1, " upin=\"1\""},
        {"upin='7'", 1, 7, " upin=\"7\""},
        {"upin='-2'", 1, -2, " upin=\"-2\""},
        {"upin='x'", 1, 0, ""},
        {"upin=' 1 pin'", 1, 1, " upin=\"1\""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszAttrs);
        EXPECT_EQ(row.nScale, RecordOf(row.pszAttrs).bUseScale);
        EXPECT_EQ(row.nPin, RecordOf(row.pszAttrs).bUsePin);
        EXPECT_EQ(std::string("<meter") + row.pszWritten +
                      " mtype=\"vert\" imin=\"1\" imax=\"100\" crd=\"0 0 10 10\"/>\r\n",
                  Saved(row.pszAttrs));
    }
}

TEST(MeterElement, HostIdAndFlagsAreWrittenUnlessZero)
{
    const struct {
        const char* pszAttrs;
        DWORD nId;
        DWORD nFlags;
        const char* pszBefore;
        const char* pszAfter;
    } rows[] = {
        {"mtid='0'", 0, 0, "", ""},
        {"mtid='33'", 33, 0, " mtid=\"33\"", ""},
        {"mtid='4294967295'", 0xFFFFFFFF, 0, " mtid=\"4294967295\"", ""},
        {"mtid='x'", 0, 0, "", ""},
        {"flag='0x1000000'", 0, 0x1000000, "", " flag=\"0x1000000\""},
        {"flag='0xAB'", 0, 0xAB, "", " flag=\"0xab\""},
        {"flag='12'", 0, 0, "", ""}, // the prefix is part of the form
        {"mtid='3' flag='0x1000'", 3, 0x1000, " mtid=\"3\"", " flag=\"0x1000\""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszAttrs);
        EXPECT_EQ(row.nId, RecordOf(row.pszAttrs).nId);
        EXPECT_EQ(row.nFlags, RecordOf(row.pszAttrs).nFlags);
        EXPECT_EQ(std::string("<meter") + row.pszBefore +
                      " mtype=\"vert\" imin=\"1\" imax=\"100\" crd=\"0 0 10 10\"" + row.pszAfter +
                      "/>\r\n",
                  Saved(row.pszAttrs));
    }
}

TEST(MeterElement, EachEndOfTheRangeIsWrittenByItsOwnRule)
{
    const struct {
        const char* pszMin;
        const char* pszMax;
        bool bMin; // 1 <= imin <= imax
        bool bMax; // imax >= 1 and imin <= imax
    } rows[] = {
        {"1", "100", true, true},
        {"5", "5", true, true},
        {"0", "50", false, true},
        {"-3", "1", false, true},
        {"1", "0", false, false},
        {"9", "8", false, false},
        {"0", "0", false, false},
        {"-5", "-4", false, false},
        {"2147483647", "2147483647", true, true},
        {"-2147483648", "2147483647", false, true},
    };
    for (const auto& row : rows) {
        const std::string attrs =
            std::string("imin='") + row.pszMin + "' imax='" + row.pszMax + "'";
        SCOPED_TRACE(attrs);
        const QELMETERATTR attr = RecordOf(attrs); // reading takes any number
        EXPECT_EQ(std::stol(row.pszMin), attr.nMin);
        EXPECT_EQ(std::stol(row.pszMax), attr.nMax);
        std::string expected = "<meter mtype=\"vert\"";
        if (row.bMin) expected += std::string(" imin=\"") + row.pszMin + "\"";
        if (row.bMax) expected += std::string(" imax=\"") + row.pszMax + "\"";
        EXPECT_EQ(expected + " crd=\"0 0 10 10\"/>\r\n", Saved(attrs));
    }
}

TEST(MeterElement, ARangeThatWasLeftOutReadsBackAsTheDefaults)
{
    CTestDocument again(DrawingText(Saved("imin='9' imax='8'")));
    EXPECT_EQ(1, Record(*again.First()).nMin);
    EXPECT_EQ(100, Record(*again.First()).nMax);
}

TEST(MeterElement, TypeIsOneOfElevenKeywords)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        const std::string attrs = std::string("mtype='") + g_types[nType].pszKeyword + "'";
        EXPECT_EQ(nType, RecordOf(attrs).nType) << attrs;
        EXPECT_TRUE(Saved(attrs).starts_with(std::string("<meter mtype=\"") +
                                             g_types[nType].pszKeyword + "\" imin"))
            << Saved(attrs);
    }
}

TEST(MeterElement, AnUnknownTypeIsAVerticalBarAndLetterCaseMatters)
{
    for (const char* pszType :
         {"ARC", "arc", "Round", "VERT", "Vert", "Pie", "Clock", "roundupgrade", "RoundUpgrade",
          "Sector", "", " vert", "Arc ", "5", "dial"}) {
        EXPECT_EQ(0, RecordOf(std::string("mtype='") + pszType + "'").nType) << pszType;
        EXPECT_TRUE(
            Saved(std::string("mtype='") + pszType + "'").starts_with("<meter mtype=\"vert\""))
            << pszType;
    }
}

// ---- coordinates ----

TEST(MeterElement, CoordinatesAreReadInTheFormOfTheType)
{
    const char* const DEFAULT = "0 0 10 10 0 0 0 0 0";
    const struct {
        const char* pszType;
        const char* pszCrd;
        const char* pszWords;
    } rows[] = {
        {"vert", "1 2 3 4", "1 2 3 4 0 0 0 0 0"},
        {"horz3d", "-1 -2 -3 -4", "-1 -2 -3 -4 0 0 0 0 0"},
        {"vert3d", "\t1\t 2  3 4 ", "1 2 3 4 0 0 0 0 0"},
        {"horz", "1 2 3", DEFAULT},
        {"vert", "", DEFAULT},
        {"vert", "1 2 x 4", DEFAULT},
        {"round", "50 60 40 1 2 99 98", "50 60 40 1 2 99 98 0 0"},
        {"clock", "-50 -60 40 -1 -2 99 98", "-50 -60 40 -1 -2 99 98 0 0"},
        {"roundUpgrade", "1 2 4294967295 3 4 5 6", "1 2 -1 3 4 5 6 0 0"}, // the radius has no sign
        {"sector", "1 2 3 4 5 6 7", "1 2 3 4 5 6 7 0 0"},
        {"round", "1 2 3 4 5 6", DEFAULT},
        {"sector", "1 2 3 4", DEFAULT},
        {"Arc", "1 2 3 4 5 6 7 45 315", "1 2 3 4 5 6 7 45 315"},
        {"pie", "1 2 3 4 5 6 7 -90 400", "1 2 3 4 5 6 7 -90 400"},
        {"pieUpgrade", "1 2 3 4 5 6 7", "1 2 3 4 5 6 7 0 360"},
        {"Arc", "1 2 3 4 5 6 7", "1 2 3 4 5 6 7 0 360"},
        {"Arc", "1 2 3 4 5 6", DEFAULT},
        {"pie", "1 2 3 4 5 x", DEFAULT},
    };
    for (const auto& row : rows) {
        const std::string type = std::string("mtype='") + row.pszType + "'";
        const std::string crd = std::string("crd='") + row.pszCrd + "'";
        SCOPED_TRACE(type + " " + crd);
        EXPECT_EQ(row.pszWords, Words(RecordOf(type + " " + crd)));
        // The form follows the type, wherever the two stand in the file.
        EXPECT_EQ(row.pszWords, Words(RecordOf(crd + " " + type)));
    }
}

TEST(MeterElement, CoordinatesAreWrittenInTheFormOfTheTypeWithAllNumbers)
{
    const struct {
        const char* pszType;
        const char* pszCrd;
        const char* pszWritten;
    } rows[] = {
        {"horz", "1 2 3 4", "1 2 3 4"},
        {"vert", "bad", "0 0 10 10"},
        {"clock", "1 2 3 4 5 6 7", "1 2 3 4 5 6 7"},
        {"clock", "bad", "0 0 10 10 0 0 0"},
        {"round", "1 2 4294967295 4 5 6 7", "1 2 4294967295 4 5 6 7"},
        {"pie", "1 2 3 4 5 6 7", "1 2 3 4 5 6 7 0 360"},
        {"Arc", "1 2 3 4 5 6 7 -8 -9", "1 2 3 4 5 6 7 -8 -9"},
    };
    for (const auto& row : rows) {
        const std::string type = row.pszType;
        EXPECT_EQ("<meter mtype=\"" + type + "\" imin=\"1\" imax=\"100\" crd=\"" + row.pszWritten +
                      "\"/>\r\n",
                  Saved("mtype='" + type + "' crd='" + row.pszCrd + "'"));
    }
}

// ---- record ----

TEST(MeterElement, RecordHasTheMaximumBeforeTheMinimum)
{
    const QELMETERATTR attr =
        RecordOf("mtid='258' usc='0' upin='3' mtype='pieUpgrade' imin='5' imax='6' "
                 "crd='11 12 13 14 15 16 17 18 19' flag='0x40000001'");
    const int32_t expected[17] = {68, 258, 0,  3,  9,  6,  5,  11,        12,
                                  13, 14,  15, 16, 17, 18, 19, 0x40000001};
    int32_t words[17] = {};
    static_assert(sizeof words == sizeof attr);
    std::memcpy(words, &attr, sizeof words);
    for (int n = 0; n < 17; ++n) EXPECT_EQ(expected[n], words[n]) << "offset " << n * 4;

    CTestMeter meter;
    int nSize = 0;
    EXPECT_EQ(1, meter->GetAttrSize(&nSize));
    EXPECT_EQ(68, nSize);
    ASSERT_EQ(1, meter->SetAttr(words));
    const QELMETERATTR taken = Record(*meter);
    EXPECT_EQ(0, std::memcmp(words, &taken, sizeof words));
}

TEST(MeterElement, ARecordIsTakenOnlyWithItsSizeAndARangeFromOneOn)
{
    const struct {
        DWORD nSize;
        LONG nMin;
        LONG nMax;
        int nResult;
    } rows[] = {
        {68, 1, 1, 1},   {68, 1, 2147483647, 1}, {68, 7, 7, 1},   {69, 1, 100, 1}, {1000, 1, 5, 1},
        {67, 1, 100, 0}, {0, 1, 100, 0},         {68, 0, 100, 0}, {68, -1, 9, 0},  {68, 1, 0, 0},
        {68, 8, 7, 0},   {68, 0, 0, 0},          {68, -5, -5, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.nSize << ": " << row.nMin << ".." << row.nMax);
        CTestMeter meter;
        meter.Give(5, {1, 2, 3, 4, 5, 6, 7, 8, 9});
        const QELMETERATTR before = Record(*meter);
        QELMETERATTR attr{row.nSize, 77, 0, 1, 4, row.nMax, row.nMin, {9, 8, 7, 6, 5, 4, 3, 2, 1},
                          2};
        EXPECT_EQ(row.nResult, meter->SetAttr(&attr));
        const QELMETERATTR after = Record(*meter);
        EXPECT_EQ(68u, after.nSize); // its own size, whatever was given
        if (row.nResult) {
            EXPECT_EQ(77u, after.nId);
            EXPECT_EQ(row.nMin, after.nMin);
            EXPECT_EQ(row.nMax, after.nMax);
            EXPECT_EQ("9 8 7 6 5 4 3 2 1", Words(after));
        } else {
            EXPECT_EQ(0, std::memcmp(&before, &after, sizeof after));
        }
    }
}

TEST(MeterElement, ATypeNumberOutsideTheKeywordsIsNotWritten)
{
    for (const LONG nType : {-1L, 11L, 1000L}) {
        CTestDocument document(DrawingText("<meter/>"));
        QELMETERATTR attr = Record(*document.First());
        attr.nType = nType;
        ASSERT_EQ(1, document.First()->SetAttr(&attr)) << nType;
        EXPECT_TRUE(document.SavedBody().starts_with("<meter imin=\"1\" imax=\"100\" "))
            << document.SavedBody();
    }
}

TEST(MeterElement, CloneHasEveryField)
{
    CTestDocument document(
        DrawingText("<meter id='m' mtid='258' usc='0' upin='3' mtype='Arc' imin='5' imax='6' "
                    "crd='11 12 13 14 15 16 17 18 19' flag='0x8000'/>"));
    CQELDocElm* pCopy = nullptr;
    ASSERT_EQ(1, document.First()->Clone(&pCopy));
    const std::unique_ptr<CQELDocElm> owner(pCopy);
    const QELMETERATTR original = Record(*document.First());
    const QELMETERATTR copy = Record(*pCopy);
    EXPECT_EQ(0, std::memcmp(&original, &copy, sizeof copy));
    EXPECT_EQ(QEL_TYPE_METER, pCopy->Type());
    EXPECT_STREQ("", pCopy->Id());
    EXPECT_EQ(nullptr, pCopy->Parent());
}

// ---- rectangle ----

TEST(MeterElement, RectangleIsTheBarOrTheLayoutOfTheDial)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        CTestMeter meter;
        meter.Give(nType, {10, 20, 30, 40, 50, 60, 70, 80, 90});
        EXPECT_EQ(nType < 4 ? "10 20 30 40" : "40 50 60 70", RectOf(*meter)) << nType;
    }
}

// dx = 5, dy = 7; (25 - 5 - 10) * 20 / 10 = 20 across, (17 - 7 - 10) = 0 down.
constexpr RECT RC_OLD{0, 0, 10, 10};
constexpr RECT RC_NEW{5, 7, 25, 17};

TEST(MeterElement, AResizeMovesTheBarsRectangle)
{
    for (int nType = 0; nType < 4; ++nType) {
        CTestMeter meter;
        meter.Give(nType, {10, 20, 30, 40, 50, 60, 70, 80, 90});
        EXPECT_EQ(1, meter->MapRect(RC_OLD, RC_NEW));
        EXPECT_EQ("35 27 55 47 50 60 70 80 90", Words(Record(*meter))) << nType;
    }
}

TEST(MeterElement, AResizeMovesCentreAndLayoutAndLeavesRadiusAndAngles)
{
    for (int nType = 4; nType < TYPES; ++nType) {
        CTestMeter meter;
        meter.Give(nType, {10, 20, 30, 40, 50, 60, 70, 80, 90});
        EXPECT_EQ(1, meter->MapRect(RC_OLD, RC_NEW));
        EXPECT_EQ("35 27 30 65 57 85 77 80 90", Words(Record(*meter))) << nType;
    }
}

TEST(MeterElement, ABarLosesTheSideThatTheResizeDoesNotHave)
{
    CTestMeter meter;
    meter.Give(0, {10, 20, 30, 40, 0, 0, 0, 0, 0});
    EXPECT_EQ(1, meter->MapRect({0, 0, 10, 10}, {5, 7, 5, 17}));
    EXPECT_EQ("15 27 15 47", RectOf(*meter));
}

TEST(MeterElement, IsPlacedByItsOwnRectangle)
{
    CTestMeter bar;
    bar.Give(2, {10, 20, 30, 40, 0, 0, 0, 0, 0});
    EXPECT_EQ(1, bar->SetRect({15, 26, 35, 46}));
    EXPECT_EQ("15 26 35 46", RectOf(*bar));
    CTestMeter dial;
    dial.Give(4, {20, 30, 9, 10, 20, 30, 40, 0, 0});
    EXPECT_EQ(1, dial->SetRect({7, 25, 27, 45})); // the same size: 3 to the left, 5 down
    EXPECT_EQ("17 35 9 7 25 27 45 0 0", Words(Record(*dial)));
    // Twice as wide: 20 wide to 40, so all x move by (40 - 20) * 40 / 20 = 40.
    EXPECT_EQ(1, dial->SetRect({7, 25, 47, 45}));
    EXPECT_EQ("57 35 9 47 25 67 45 0 0", Words(Record(*dial)));
}

} // namespace
