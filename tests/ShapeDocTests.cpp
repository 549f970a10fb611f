// What all shape elements share: the style in the file and its defaults, the record field by field,
// clones. The code is document/QELDocShape.cpp; coordinates are tested class by class, in
// LineTests.cpp and its like, and the rows of attributes in AttributeTests.cpp.
#include "tests/support/DocSupport.h"

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

// What is saved of a rectangle with these attributes, without its coordinates.
std::string SavedAttrs(const std::string& attrs)
{
    const std::string body = SavedBody("<rect " + attrs + "/>\r\n");
    const std::string head = "<rect";
    const std::string crd = " crd=\"0 0 10 10\"";
    const std::size_t nCrd = body.find(crd);
    if (!body.starts_with(head) || nCrd == std::string::npos) return body;
    const std::string rest = body.substr(nCrd + crd.size());
    if (!rest.ends_with("/>\r\n")) return body;
    const std::string before = body.substr(head.size(), nCrd - head.size());
    return before + rest.substr(0, rest.size() - 4);
}

QELSHAPEATTR AttrOf(const std::string& attrs)
{
    CTestDocument document(DrawingText("<rect " + attrs + "/>"));
    EXPECT_EQ(1, document.Loaded());
    return ShapeAttr(*document.First());
}

// ---- defaults ----

TEST(Shape, DefaultsAreAWhitePenOfOnePixelAndNoFill)
{
    const QELSHAPEATTR attr = AttrOf("");
    EXPECT_EQ(0u, attr.nStyle);
    EXPECT_EQ(0, attr.nDraft);
    EXPECT_EQ(0xFFFFFFu, attr.clrA);
    EXPECT_EQ(0u, attr.clrB);
    EXPECT_EQ(0xFFFFFFu, attr.clrPen);
    EXPECT_EQ(0, attr.nPenStyle);
    EXPECT_EQ(1, attr.nPenWidth);
    EXPECT_STREQ("", attr.szText);
    EXPECT_EQ(0u, attr.nFlags);
}

TEST(Shape, WithDefaultsIsSavedWithItsCoordinatesAndIdentifierOnly)
{
    EXPECT_EQ("<rect crd=\"0 0 10 10\"/>\r\n", SavedBody("<rect/>"));
    EXPECT_EQ("<rect id=\"a\" crd=\"0 0 10 10\"/>\r\n", SavedBody("<rect id='a'/>"));
    EXPECT_EQ("<rect id=\"a\" crd=\"0 0 10 10\"/>\r\n",
              SavedBody("<rect flag='0x0' lnwid='1' lnstyle='0' clr='0xffffff' bg='0x0' "
                        "fg='0xFFFFFF' dr='0' style='0x0' id='a'> </rect>"));
}

TEST(Shape, AttributesAreWrittenInOneOrderWhateverTheFileHad)
{
    EXPECT_EQ(
        "<pie id=\"i\" style=\"0x1\" dr=\"2\" fg=\"0x3\" bg=\"0x4\" clr=\"0x5\" lnstyle=\"6\" "
        "lnwid=\"7\" crd=\"1 2 3 4 5 6 7 8\" flag=\"0x9\">t</pie>\r\n",
        SavedBody("<pie flag='0x9' crd='1 2 3 4 5 6 7 8' lnwid='7' lnstyle='6' clr='0x5' "
                  "bg='0x4' fg='0x3' dr='2' style='0x1' id='i'>t</pie>"));
}

TEST(Shape, EveryClassReadsAndWritesTheWholeStyle)
{
    for (const char* pszTag : {"text", "rect", "chord", "pie", "rndrect", "arc", "ellipse",
                               "circle", "line", "polyline", "polygon"}) {
        SCOPED_TRACE(pszTag);
        const std::string tag = pszTag;
        const std::string style =
            " style=\"0x50003\" dr=\"37\" fg=\"0x123456 glt\" bg=\"0xabcdef\" "
            "clr=\"0x0 glt\" lnstyle=\"2\" lnwid=\"0\"";
        CTestDocument defaults(DrawingText("<" + tag + "/>"));
        std::string line = defaults.SavedBody(); // <tag crd="..."/>
        const std::string crd = line.substr(tag.size() + 1, line.size() - tag.size() - 5);
        EXPECT_TRUE(crd.starts_with(" crd=\"") && crd.ends_with("\"")) << crd;
        line = "<" + tag + style + crd + " flag=\"0x4081\">words</" + tag + ">\r\n";
        EXPECT_EQ(line, SavedBody(line));
    }
}

// ---- forms ----

TEST(Shape, StyleAndFlagNeedTheirPrefix)
{
    const struct {
        const char* pszValue;
        uint32_t nValue;
    } rows[] = {
        {"0x12", 0x12},
        {"0xAbCdEf", 0xABCDEF},
        {"0xffffffff", 0xFFFFFFFF},
        {"0x0012", 0x12},
        {"0x12 more", 0x12},
        {"0x12zz", 0x12},
        {"0x1ffffffff", 0xFFFFFFFF}, // no more than 32 bits
        {"12", 0},
        {"x12", 0},
        {"0X12", 0},
        {"0x", 0},
        {"0xg", 0},
        {" 0x12", 0},
        {"#12", 0},
        {"-0x12", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszValue);
        const std::string value = std::string("'") + row.pszValue + "'";
        EXPECT_EQ(row.nValue, AttrOf("style=" + value).nStyle);
        EXPECT_EQ(row.nValue, AttrOf("flag=" + value).nFlags);
        char szWritten[32] = "";
        if (row.nValue) std::snprintf(szWritten, sizeof szWritten, "=\"0x%x\"", row.nValue);
        const std::string written = szWritten;
        EXPECT_EQ(row.nValue ? " style" + written : "", SavedAttrs("style=" + value));
        EXPECT_EQ(row.nValue ? " flag" + written : "", SavedAttrs("flag=" + value));
    }
}

TEST(Shape, ColorsAreHexadecimalWithAWordForBlinking)
{
    const struct {
        const char* pszValue;
        uint32_t nValue; // of a colour that is read
        const char* pszWritten;
    } rows[] = {
        {"0xff", 0xFF, "0xff"},
        {"0xff glt", 0x800000FF, "0xff glt"},
        {"0xff  \tglt", 0x800000FF, "0xff glt"},
        {"0xff glt more", 0x800000FF, "0xff glt"},
        {"0xff GLT", 0xFF, "0xff"},
        {"0xff gl", 0xFF, "0xff"},
        {"0xff gltx", 0xFF, "0xff"},
        {"0xff red", 0xFF, "0xff"},
        {"0x800000ff", 0x800000FF, "0xff glt"}, // the bit itself
        {"0xffffff glt", 0x80FFFFFF, "0xffffff glt"},
        {"0x0 glt", 0x80000000, "0x0 glt"},
        {"0x7f123456", 0x7F123456, "0x7f123456"}, // every bit below the mark is kept
        {"0xfffffffff", 0xFFFFFFFF, "0x7fffffff glt"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszValue);
        const std::string value = std::string("'") + row.pszValue + "'";
        EXPECT_EQ(row.nValue, AttrOf("fg=" + value).clrA);
        EXPECT_EQ(row.nValue, AttrOf("bg=" + value).clrB);
        EXPECT_EQ(row.nValue, AttrOf("clr=" + value).clrPen);
        for (const char* pszName : {"fg", "bg", "clr"})
            EXPECT_EQ(std::string(" ") + pszName + "=\"" + row.pszWritten + "\"",
                      SavedAttrs(pszName + ("=" + value)));
    }
}

TEST(Shape, AColorThatCannotBeReadKeepsItsDefault)
{
    for (const char* pszValue : {"255", "red", "0x", "glt", "0xzz glt", "0XFF", " 0xff", "ff"}) {
        const QELSHAPEATTR attr = AttrOf(std::string("fg='") + pszValue + "' bg='" + pszValue +
                                         "' clr='" + pszValue + "'");
        EXPECT_EQ(0xFFFFFFu, attr.clrA) << pszValue;
        EXPECT_EQ(0u, attr.clrB) << pszValue;
        EXPECT_EQ(0xFFFFFFu, attr.clrPen) << pszValue;
    }
}

TEST(Shape, AColorIsWrittenUnlessItIsTheDefaultOfItsOwnAttribute)
{
    EXPECT_EQ("", SavedAttrs("fg='0xffffff'"));
    EXPECT_EQ("", SavedAttrs("clr='0xffffff'"));
    EXPECT_EQ("", SavedAttrs("bg='0x0'"));
    EXPECT_EQ(" fg=\"0x0\"", SavedAttrs("fg='0x0'"));
    EXPECT_EQ(" clr=\"0x0\"", SavedAttrs("clr='0x0'"));
    EXPECT_EQ(" bg=\"0xffffff\"", SavedAttrs("bg='0xffffff'"));
}

TEST(Shape, HatchIndexIsKeptOutsideItsRangeToo)
{
    const struct {
        const char* pszValue;
        int nValue;
    } rows[] = {{"1", 1},   {"37", 37}, {"38", 38},
                {"40", 40}, {"-1", -1}, {" 12", 12},
                {"5x", 5},  {"0", 0},   {"99999999999", 2147483647}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszValue);
        const std::string attrs = std::string("dr='") + row.pszValue + "'";
        EXPECT_EQ(row.nValue, AttrOf(attrs).nDraft);
        EXPECT_EQ(row.nValue ? " dr=\"" + std::to_string(row.nValue) + "\"" : "",
                  SavedAttrs(attrs));
    }
    // What stands behind a refused index is read all the same.
    EXPECT_EQ(" dr=\"40\" fg=\"0x1\" flag=\"0x2\"", SavedAttrs("dr='40' fg='0x1' flag='0x2'"));
}

TEST(Shape, LineStyleAndWidthThatAreNoNumbersReadAsZero)
{
    const struct {
        const char* pszValue;
        int nValue;
    } rows[] = {{"2", 2},
                {"0", 0},
                {"-3", -3},
                {"+4", 4},
                {" \t7", 7},
                {"3px", 3},
                {"x", 0},
                {"0x5", 0},
                {"1.9", 1},
                {"1", 1},
                {"99999999999", 2147483647},
                {"-99999999999", -2147483647 - 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszValue);
        const std::string value = std::string("='") + row.pszValue + "'";
        EXPECT_EQ(row.nValue, AttrOf("lnstyle" + value).nPenStyle);
        EXPECT_EQ(row.nValue, AttrOf("lnwid" + value).nPenWidth);
        const std::string written = "=\"" + std::to_string(row.nValue) + "\"";
        EXPECT_EQ(row.nValue == 0 ? "" : " lnstyle" + written, SavedAttrs("lnstyle" + value));
        EXPECT_EQ(row.nValue == 1 ? "" : " lnwid" + written, SavedAttrs("lnwid" + value));
    }
}

TEST(Shape, DropsWhatIsNoAttributeOfAShape)
{
    EXPECT_EQ(" lnwid=\"2\"", SavedAttrs("width='9' Style='0x1' lnwid='2' colour='red' type='1'"));
}

// ---- record ----

struct Field {
    const char* pszName;
    std::size_t nOffset;
};
constexpr Field g_fields[] = {
    {"style", 4}, {"draft", 8},      {"colour A", 12},  {"colour B", 16},
    {"pen", 20},  {"pen style", 24}, {"pen width", 28}, {"flags", 420},
};
constexpr std::size_t GEOMETRY_OFFSET = 32;
constexpr std::size_t TEXT_OFFSET = 164;
constexpr std::size_t RECORD_SIZE = 424;

void PutWord(std::vector<unsigned char>* pBytes, std::size_t nOffset, uint32_t nValue)
{
    std::memcpy(pBytes->data() + nOffset, &nValue, sizeof nValue);
}

uint32_t WordAt(const std::vector<unsigned char>& bytes, std::size_t nOffset)
{
    uint32_t nValue = 0;
    std::memcpy(&nValue, bytes.data() + nOffset, sizeof nValue);
    return nValue;
}

// A record with a value of its own in every word.
std::vector<unsigned char> FullRecord()
{
    std::vector<unsigned char> bytes(RECORD_SIZE);
    PutWord(&bytes, 0, RECORD_SIZE);
    uint32_t nValue = 0xA1000001;
    for (const Field& field : g_fields) PutWord(&bytes, field.nOffset, nValue += 0x01010101);
    for (std::size_t n = 0; n < 33; ++n)
        PutWord(&bytes, GEOMETRY_OFFSET + 4 * n, nValue += 0x00010003);
    std::memcpy(bytes.data() + TEXT_OFFSET, "words of a text", 16);
    return bytes;
}

std::vector<unsigned char> RecordOf(const CQELDocElm& elm)
{
    std::vector<unsigned char> bytes(RECORD_SIZE + 16, 0xCC);
    EXPECT_EQ(1, elm.GetAttr(bytes.data()));
    for (std::size_t n = RECORD_SIZE; n < bytes.size(); ++n)
        EXPECT_EQ(0xCC, bytes[n]) << "written behind the record, byte " << n;
    bytes.resize(RECORD_SIZE);
    return bytes;
}

TEST(ShapeRecord, Has424BytesForEveryClass)
{
    for (int nType = QEL_TYPE_TEXT; nType <= QEL_TYPE_POLYGON; ++nType) {
        SCOPED_TRACE(nType);
        CTestShape shape(nType);
        int nSize = 0;
        ASSERT_EQ(1, shape->GetAttrSize(&nSize));
        EXPECT_EQ(424, nSize);
        EXPECT_EQ(424u, WordAt(RecordOf(*shape), 0));
    }
}

TEST(ShapeRecord, FieldsOfTheFileStandAtTheirOffsets)
{
    CTestDocument document(
        DrawingText("<pie style='0x50003' dr='11' fg='0x22 glt' bg='0x33' clr='0x44' "
                    "lnstyle='5' lnwid='6' crd='1 2 3 4 5 6 7 -8' flag='0x99'>"
                    "words</pie>"));
    const std::vector<unsigned char> bytes = RecordOf(*document.First());
    const uint32_t expected[] = {0x50003, 11, 0x80000022, 0x33, 0x44, 5, 6, 0x99};
    for (std::size_t n = 0; n < std::size(g_fields); ++n)
        EXPECT_EQ(expected[n], WordAt(bytes, g_fields[n].nOffset)) << g_fields[n].pszName;
    const int32_t crd[] = {1, 2, 3, 4, 5, 6, 7, -8, 0};
    for (std::size_t n = 0; n < std::size(crd); ++n)
        EXPECT_EQ(static_cast<uint32_t>(crd[n]), WordAt(bytes, GEOMETRY_OFFSET + 4 * n)) << n;
    EXPECT_EQ(0, std::memcmp("words", bytes.data() + TEXT_OFFSET, 6));
}

TEST(ShapeRecord, APointListPutsItsCountFirst)
{
    CTestDocument document(DrawingText("<polyline crd='1 2 3 4 5 6'/>"));
    const std::vector<unsigned char> bytes = RecordOf(*document.First());
    const uint32_t expected[] = {3, 1, 2, 3, 4, 5, 6};
    for (std::size_t n = 0; n < std::size(expected); ++n)
        EXPECT_EQ(expected[n], WordAt(bytes, GEOMETRY_OFFSET + 4 * n)) << n;
}

TEST(ShapeRecord, ComesBackAsItWasSetForEveryClass)
{
    for (int nType = QEL_TYPE_TEXT; nType <= QEL_TYPE_POLYGON; ++nType) {
        SCOPED_TRACE(nType);
        CTestShape shape(nType);
        const std::vector<unsigned char> bytes = FullRecord();
        ASSERT_EQ(1, shape->SetAttr(bytes.data()));
        const std::vector<unsigned char> got = RecordOf(*shape);
        for (std::size_t n = 0; n < RECORD_SIZE; n += 4) // all 33 words of coordinates, used or not
            if (n < TEXT_OFFSET || n >= 420) {
                EXPECT_EQ(WordAt(bytes, n), WordAt(got, n)) << "at " << n;
            }
        EXPECT_STREQ("words of a text", reinterpret_cast<const char*>(got.data()) + TEXT_OFFSET);
    }
}

TEST(ShapeRecord, ASetOfOneFieldChangesThatFieldAlone)
{
    for (const Field& field : g_fields) {
        SCOPED_TRACE(field.pszName);
        CTestShape shape(QEL_TYPE_RECT);
        std::vector<unsigned char> bytes = RecordOf(*shape);
        PutWord(&bytes, field.nOffset, 0x12345678);
        ASSERT_EQ(1, shape->SetAttr(bytes.data()));
        EXPECT_EQ(bytes, RecordOf(*shape));
    }
}

TEST(ShapeRecord, OfAnotherSizeIsRefusedAndChangesNothing)
{
    CTestShape shape(QEL_TYPE_RECT);
    const std::vector<unsigned char> before = RecordOf(*shape);
    for (const uint32_t nSize : {0u, 4u, 24u, 423u, 425u, 520u, 0xFFFFFFFFu, 424u << 16}) {
        std::vector<unsigned char> bytes = FullRecord();
        PutWord(&bytes, 0, nSize);
        EXPECT_EQ(0, shape->SetAttr(bytes.data())) << nSize;
        EXPECT_EQ(before, RecordOf(*shape)) << nSize;
    }
    EXPECT_EQ(0, shape->SetAttr(nullptr));
    EXPECT_EQ(before, RecordOf(*shape));
}

TEST(ShapeRecord, ATextWithoutAnEndIsCutAt255Bytes)
{
    CTestShape shape(QEL_TYPE_TEXT);
    std::vector<unsigned char> bytes = FullRecord();
    std::memset(bytes.data() + TEXT_OFFSET, 'w', QEL_TEXT_SIZE);
    PutWord(&bytes, 420, 0x77777777); // "wwww": the text must not run on into the flags
    ASSERT_EQ(1, shape->SetAttr(bytes.data()));
    const QELSHAPEATTR attr = ShapeAttr(*shape);
    ASSERT_EQ(0, attr.szText[QEL_TEXT_SIZE - 1]);
    EXPECT_EQ(std::string(255, 'w'), attr.szText);
    EXPECT_EQ(0x77777777u, attr.nFlags);
}

TEST(ShapeRecord, WhatIsSetIsWhatIsSaved)
{
    CTestDocument document(DrawingText("<line id=\"l\"/>"));
    QELSHAPEATTR attr = ShapeAttr(*document.First());
    attr.nStyle = 0xFFFFFFFF;
    attr.nDraft = -5;
    attr.clrA = 0xFFFFFFFF;
    attr.clrB = 0x80000000;
    attr.clrPen = 0;
    attr.nPenStyle = -1;
    attr.nPenWidth = 0;
    attr.nGeometry[2] = -7;
    attr.nFlags = 0x80000000;
    ASSERT_EQ(1, document.First()->SetAttr(&attr));
    EXPECT_EQ("<line id=\"l\" style=\"0xffffffff\" dr=\"-5\" fg=\"0x7fffffff glt\" bg=\"0x0 glt\" "
              "clr=\"0x0\" lnstyle=\"-1\" lnwid=\"0\" crd=\"0 0 -7 10\" flag=\"0x80000000\"/>\r\n",
              document.SavedBody());
}

// ---- clones ----

TEST(Shape, CloneOfEveryClassHasAllDataAndNoLinks)
{
    for (int nType = QEL_TYPE_TEXT; nType <= QEL_TYPE_POLYGON; ++nType) {
        SCOPED_TRACE(nType);
        CTestShape shape(nType);
        ASSERT_EQ(1, shape->SetAttr(FullRecord().data()));
        ASSERT_EQ(1, shape->SetId("a"));
        CQELDocElm* pClone = nullptr;
        ASSERT_EQ(1, shape->Clone(&pClone));
        const std::unique_ptr<CQELDocElm> clone(pClone);
        ASSERT_NE(nullptr, clone);
        EXPECT_EQ(nType, clone->Type());
        EXPECT_EQ(RecordOf(*shape), RecordOf(*clone));
        EXPECT_EQ(shape->Context(), clone->Context());
        EXPECT_STREQ("", clone->Id());
        EXPECT_EQ(nullptr, clone->View());
        EXPECT_EQ(nullptr, clone->Parent());
        EXPECT_EQ(nullptr, shape->NextSibling());
        // The class is the same, not only the number: it reads coordinates in the same form.
        ASSERT_EQ(1, static_cast<CQELDocShape*>(pClone)->ParseCrd("1 2 3 4 5 6 7 8"));
        ASSERT_EQ(1, shape->ParseCrd("1 2 3 4 5 6 7 8"));
        EXPECT_EQ(GeometryOf(*shape), GeometryOf(*clone));
    }
}

TEST(ShapeForms, WhatIsNoShapeHasThatOfTheFirst)
{
    EXPECT_EQ(&ShapeFormOf(QEL_TYPE_TEXT), &ShapeFormOf(QEL_TYPE_GROUP));
    EXPECT_EQ(&ShapeFormOf(QEL_TYPE_TEXT), &ShapeFormOf(QEL_TYPE_NONE));
    EXPECT_NE(&ShapeFormOf(QEL_TYPE_TEXT), &ShapeFormOf(QEL_TYPE_LINE));
}

} // namespace
