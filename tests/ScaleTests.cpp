// The scale as a document element: its attributes in the file and when they are written, its
// coordinates by type, its record, and its rectangle. The code is dynamic/QELDocScale.cpp; the view
// is tested in ScaleViewTests.cpp.
#include "dynamic/QELDocScale.h"
#include "engine/ElementTypes.h"

#include "tests/support/DocSupport.h"

#include <cstring>
#include <memory>

namespace {

constexpr const char* g_types[] = {"vrtleft", "vrtright", "horizup", "horizdn", "round", "Arc"};
constexpr const char* g_defaults[] = {"0 0 10 10", "0 0 10 10", "0 0 10 10",
                                      "0 0 10 10", "5 5 5 3 2", "5 5 5 3 2 0 90"};
constexpr int TYPES = 6;

int WordsOf(int nType)
{
    return nType < 4 ? 4 : nType == 4 ? 5 : 7;
}

QELSCALEATTR Record(const CQELDocElm& elm)
{
    QELSCALEATTR attr{};
    EXPECT_EQ(1, elm.GetAttr(&attr));
    return attr;
}

QELSCALEATTR RecordOf(const std::string& attrs)
{
    CTestDocument document(DrawingText("<scale " + attrs + "/>"));
    EXPECT_EQ(1, document.Loaded());
    return Record(*document.First());
}

// The geometry words that the type has.
std::string Words(const QELSCALEATTR& attr)
{
    std::string text;
    for (int n = 0; n < WordsOf(attr.nType); ++n)
        text += (n ? " " : "") + std::to_string(attr.nGeometry[n]);
    return text;
}

std::string Saved(const std::string& attrs)
{
    return SavedBody("<scale " + attrs + "/>");
}

class CTestScale { // as the host makes one
public:
    CTestScale()
    {
        EXPECT_EQ(1, m_document.New());
        m_pScale = m_document.CreateElement(m_document.GetRoot(), nullptr, QEL_TYPE_SCALE);
        EXPECT_NE(nullptr, m_pScale);
    }
    CTestScale(const CTestScale&) = delete;
    CTestScale& operator=(const CTestScale&) = delete;
    CQELDocElm* operator->() { return m_pScale; }
    CQELDocElm& operator*() { return *m_pScale; }

    void Give(int nType, const std::vector<LONG>& geometry)
    {
        QELSCALEATTR attr = Record(*m_pScale);
        attr.nType = nType;
        std::copy(geometry.begin(), geometry.end(), attr.nGeometry);
        ASSERT_EQ(1, m_pScale->SetAttr(&attr));
    }

private:
    CQELDocument m_document{g_elementTypes};
    CQELDocElm* m_pScale = nullptr;
};

// ---- defaults and order ----

void ExpectDefaults(const QELSCALEATTR& attr)
{
    EXPECT_EQ(60u, attr.nSize);
    EXPECT_EQ(0u, attr.nId);
    EXPECT_EQ(0, attr.bHide);
    EXPECT_EQ(1, attr.nType);
    EXPECT_EQ(1u, attr.nStyle);
    EXPECT_EQ(1, attr.nMin);
    EXPECT_EQ(100, attr.nMax);
    EXPECT_EQ(0, attr.bPin);
    EXPECT_EQ("0 0 10 10", Words(attr));
}

TEST(ScaleElement, DefaultsAreAVerticalScaleWithTicksToTheRight)
{
    ExpectDefaults(RecordOf(""));
    CTestScale created;
    ExpectDefaults(Record(*created));
}

TEST(ScaleElement, WithDefaultsWritesItsCoordinatesOnly)
{
    EXPECT_EQ("<scale crd=\"0 0 10 10\"/>\r\n", Saved(""));
    EXPECT_EQ("<scale id=\"s\" crd=\"0 0 10 10\"/>\r\n",
              Saved("pin='0' max='100' min='1' style='0x1' sctype='vrtright' hidesc='0' scid='0' "
                    "id='s'"));
}

TEST(ScaleElement, AttributesAreWrittenInOneOrderWhateverTheFileHad)
{
    EXPECT_EQ("<scale id=\"s\" scid=\"9\" hidesc=\"1\" sctype=\"Arc\" style=\"0x30001\" min=\"2\" "
              "max=\"50\" pin=\"1\" crd=\"1 2 3 4 5 6 7\"/>\r\n",
              Saved("crd='1 2 3 4 5 6 7' pin='1' max='50' min='2' style='0x30001' sctype='Arc' "
                    "hidesc='1' scid='9' id='s'"));
}

TEST(ScaleElement, AFileOfEveryTypeReadsBackToItsOwnBytes)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        std::string crd;
        for (int n = 1; n <= WordsOf(nType); ++n)
            crd += (n > 1 ? " " : "") + std::to_string(n * 11 - 40);
        const std::string type =
            nType == 1 ? "" : std::string(" sctype=\"") + g_types[nType] + "\"";
        const std::string line = "<scale id=\"a\" scid=\"4294967295\" hidesc=\"-1\"" + type +
                                 " style=\"0x0\" min=\"-5\" max=\"7\" pin=\"2\" crd=\"" + crd +
                                 "\"/>\r\n";
        EXPECT_EQ(line, SavedBody(line));
    }
}

// ---- each attribute ----

TEST(ScaleElement, EachAttributeIsReadAndWrittenUnlessItHoldsItsDefault)
{
    const struct {
        const char* pszAttr;
        LONG QELSCALEATTR::*pField;
        LONG nValue;
        const char* pszWritten;
    } rows[] = {
        {"hidesc='0'", &QELSCALEATTR::bHide, 0, ""},
        {"hidesc='1'", &QELSCALEATTR::bHide, 1, " hidesc=\"1\""},
        {"hidesc='-7'", &QELSCALEATTR::bHide, -7, " hidesc=\"-7\""},
        {"hidesc='x'", &QELSCALEATTR::bHide, 0, ""},
        {"min='1'", &QELSCALEATTR::nMin, 1, ""},
        {"min='0'", &QELSCALEATTR::nMin, 0, " min=\"0\""},
        {"min='-20'", &QELSCALEATTR::nMin, -20, " min=\"-20\""},
        {"min='x'", &QELSCALEATTR::nMin, 1, ""},
        {"max='100'", &QELSCALEATTR::nMax, 100, ""},
        {"max='1'", &QELSCALEATTR::nMax, 1, " max=\"1\""},
        {"max='2147483647'", &QELSCALEATTR::nMax, 2147483647, " max=\"2147483647\""},
        {"max='x'", &QELSCALEATTR::nMax, 100, ""},
        {"pin='0'", &QELSCALEATTR::bPin, 0, ""},
        {"pin='1'", &QELSCALEATTR::bPin, 1, " pin=\"1\""},
        {"pin='x'", &QELSCALEATTR::bPin, 0, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszAttr);
        EXPECT_EQ(row.nValue, RecordOf(row.pszAttr).*row.pField);
        EXPECT_EQ(std::string("<scale") + row.pszWritten + " crd=\"0 0 10 10\"/>\r\n",
                  Saved(row.pszAttr));
    }
}

TEST(ScaleElement, IdAndStyleHaveNoSign)
{
    const struct {
        const char* pszAttr;
        DWORD QELSCALEATTR::*pField;
        DWORD nValue;
        const char* pszWritten;
    } rows[] = {
        {"scid='0'", &QELSCALEATTR::nId, 0, ""},
        {"scid='12'", &QELSCALEATTR::nId, 12, " scid=\"12\""},
        {"scid='4294967295'", &QELSCALEATTR::nId, 0xFFFFFFFF, " scid=\"4294967295\""},
        {"scid='x'", &QELSCALEATTR::nId, 0, ""},
        {"style='0x1'", &QELSCALEATTR::nStyle, 1, ""},
        {"style='0x0'", &QELSCALEATTR::nStyle, 0, " style=\"0x0\""},
        {"style='0xFFFFFFFF'", &QELSCALEATTR::nStyle, 0xFFFFFFFF, " style=\"0xffffffff\""},
        {"style='5'", &QELSCALEATTR::nStyle, 1, ""}, // the prefix is part of the form
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszAttr);
        EXPECT_EQ(row.nValue, RecordOf(row.pszAttr).*row.pField);
        EXPECT_EQ(std::string("<scale") + row.pszWritten + " crd=\"0 0 10 10\"/>\r\n",
                  Saved(row.pszAttr));
    }
}

TEST(ScaleElement, TypeIsOneOfSixKeywords)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        const std::string attr = std::string("sctype='") + g_types[nType] + "'";
        EXPECT_EQ(nType, RecordOf(attr).nType);
        const std::string written =
            nType == 1 ? "" : std::string(" sctype=\"") + g_types[nType] + "\"";
        EXPECT_EQ("<scale" + written + " crd=\"" + g_defaults[nType] + "\"/>\r\n", Saved(attr));
    }
}

TEST(ScaleElement, AMissingTypeHasItsTicksToTheRightAndAnUnknownOneToTheLeft)
{
    EXPECT_EQ(1, RecordOf("scid='1'").nType);
    EXPECT_EQ(1, RecordOf("sctype=''").nType); // what is empty is not there
    EXPECT_EQ("<scale scid=\"1\" crd=\"0 0 10 10\"/>\r\n", Saved("scid='1'"));
    for (const char* pszType : {"arc", "ARC", "Round", "vertright", "VrtRight", "1", " round"}) {
        const std::string attr = std::string("sctype='") + pszType + "'";
        EXPECT_EQ(0, RecordOf(attr).nType) << attr;
        EXPECT_EQ("<scale sctype=\"vrtleft\" crd=\"0 0 10 10\"/>\r\n", Saved(attr)) << attr;
    }
}

// ---- coordinates ----

TEST(ScaleElement, CoordinatesThatCannotBeReadAreTheDefaultsOfTheType)
{
    const struct {
        int nType;
        const char* pszCrd;
        const char* pszWords;
    } rows[] = {
        {0, "1 2 3 4", "1 2 3 4"},
        {1, "-1\t-2  3 4", "-1 -2 3 4"},
        {2, "1 2 3", "0 0 10 10"},
        {3, "1 2 3 x", "0 0 10 10"},
        {3, "", "0 0 10 10"},
        {4, "50 60 40 30 20", "50 60 40 30 20"},
        {4, "-5 -6 -4 -3 -2", "-5 -6 -4 -3 -2"},
        {4, "1 2 3 4", "5 5 5 3 2"},
        {4, "x", "5 5 5 3 2"},
        {4, "1 2 x 4 5", "5 5 5 3 2"},
        {5, "50 60 40 30 20 -45 225", "50 60 40 30 20 -45 225"},
        {5, "1 2 3 4 5 6", "5 5 5 3 2 0 90"},
        {5, "1 2 3 4 5", "5 5 5 3 2 0 90"},
        {5, "", "5 5 5 3 2 0 90"},
    };
    for (const auto& row : rows) {
        const std::string type = std::string("sctype='") + g_types[row.nType] + "' ";
        const std::string crd = std::string("crd='") + row.pszCrd + "' ";
        SCOPED_TRACE(type + crd);
        EXPECT_EQ(row.pszWords, Words(RecordOf(type + crd)));
        EXPECT_EQ(row.pszWords, Words(RecordOf(crd + type))); // in any order
    }
    for (int nType = 0; nType < TYPES; ++nType) // and without any
        EXPECT_EQ(g_defaults[nType],
                  Words(RecordOf(std::string("sctype='") + g_types[nType] + "'")));
}

// ---- record ----

TEST(ScaleElement, RecordIsFifteenWordsInTheOrderOfTheAttributes)
{
    const QELSCALEATTR attr = RecordOf("scid='258' hidesc='3' sctype='Arc' style='0x40001' min='5' "
                                       "max='6' pin='7' crd='11 12 13 14 15 16 17'");
    const int32_t expected[15] = {60, 258, 3, 5, 0x40001, 5, 6, 7, 11, 12, 13, 14, 15, 16, 17};
    int32_t words[15] = {};
    static_assert(sizeof words == sizeof attr);
    std::memcpy(words, &attr, sizeof words);
    for (int n = 0; n < 15; ++n) EXPECT_EQ(expected[n], words[n]) << "word " << n;

    CTestScale scale;
    int nSize = 0;
    EXPECT_EQ(1, scale->GetAttrSize(&nSize));
    EXPECT_EQ(60, nSize);
    ASSERT_EQ(1, scale->SetAttr(words));
    const QELSCALEATTR taken = Record(*scale);
    EXPECT_EQ(0, std::memcmp(words, &taken, sizeof words));
}

TEST(ScaleElement, ARecordIsTakenOnlyWithItsSizeAndAKnownType)
{
    const struct {
        DWORD nSize;
        LONG nType;
        int nResult;
    } rows[] = {{60, 0, 1}, {60, 5, 1}, {60, 6, 0}, {60, -1, 0},        {59, 1, 0},
                {61, 1, 0}, {68, 1, 0}, {0, 1, 0},  {60, 2147483647, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.nSize << " type " << row.nType);
        CTestScale scale;
        scale.Give(4, {1, 2, 3, 4, 5, 6, 7});
        const QELSCALEATTR before = Record(*scale);
        const QELSCALEATTR attr{row.nSize, 77, 1, row.nType, 0, 0, -4, 1, {9, 8, 7, 6, 5, 4, 3}};
        EXPECT_EQ(row.nResult, scale->SetAttr(&attr));
        const QELSCALEATTR after = Record(*scale);
        const QELSCALEATTR& expected = row.nResult ? attr : before;
        EXPECT_EQ(0, std::memcmp(&expected, &after, sizeof after));
    }
}

TEST(ScaleElement, CloneHasEveryField)
{
    CTestDocument document(
        DrawingText("<scale id='s' scid='258' hidesc='3' sctype='Arc' style='0x40001' min='5' "
                    "max='6' pin='7' crd='11 12 13 14 15 16 17'/>"));
    CQELDocElm* pCopy = nullptr;
    ASSERT_EQ(1, document.First()->Clone(&pCopy));
    const std::unique_ptr<CQELDocElm> owner(pCopy);
    const QELSCALEATTR original = Record(*document.First());
    const QELSCALEATTR copy = Record(*pCopy);
    EXPECT_EQ(0, std::memcmp(&original, &copy, sizeof copy));
    EXPECT_EQ(QEL_TYPE_SCALE, pCopy->Type());
    EXPECT_STREQ("", pCopy->Id());
}

// ---- rectangle ----

TEST(ScaleElement, RectangleIsItsOwnOrTheSquareOfTheTickRadius)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        CTestScale scale;
        scale.Give(nType, {50, 60, 80, 90, 20, 0, 90});
        // 50 - 80, 60 - 80, 50 + 80, 60 + 80
        EXPECT_EQ(nType < 4 ? "50 60 80 90" : "-30 -20 130 140", RectOf(*scale)) << nType;
    }
}

TEST(ScaleElement, AResizeMovesARectangleOrTheCentre)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        CTestScale scale;
        scale.Give(nType, {10, 20, 30, 40, 50, 60, 70});
        // By 5 and then (20 - 10) * 20 / 10 across; by 7 down.
        EXPECT_EQ(1, scale->MapRect({0, 0, 10, 10}, {5, 7, 25, 17}));
        const char* const expected[] = {"35 27 55 47", "35 27 30 40 50", "35 27 30 40 50 60 70"};
        EXPECT_EQ(expected[nType < 4 ? 0 : nType - 3], Words(Record(*scale))) << nType;
    }
}

TEST(ScaleElement, IsPlacedByItsOwnRectangle)
{
    CTestScale straight;
    straight.Give(3, {10, 20, 30, 40, 0, 0, 0});
    EXPECT_EQ(1, straight->SetRect({15, 26, 35, 46}));
    EXPECT_EQ("15 26 35 46", RectOf(*straight));
    CTestScale round;
    round.Give(4, {50, 60, 10, 8, 3, 0, 0}); // 40 50 60 70
    EXPECT_EQ(1, round->SetRect({43, 45, 63, 65}));
    EXPECT_EQ("53 55 10 8 3", Words(Record(*round)));
}

TEST(ScaleElement, ARectangleLosesTheSideThatTheResizeDoesNotHave)
{
    CTestScale scale;
    scale.Give(0, {10, 20, 30, 40, 0, 0, 0});
    EXPECT_EQ(1, scale->MapRect({0, 0, 10, 10}, {5, 7, 15, 7}));
    EXPECT_EQ("15 27 35 27", RectOf(*scale));
}

} // namespace
