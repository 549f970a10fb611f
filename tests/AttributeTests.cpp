// The vocabulary as data: the tables of tags and of attribute names, and every attribute row of
// every class, set through a file, written and read back. The code is document/Tags.cpp and
// document/Attributes.cpp.
#include "document/Attributes.h"
#include "dynamic/QELDocDrawRgn.h"
#include "dynamic/QELDocMeter.h"
#include "dynamic/QELDocScale.h"
#include "dynamic/QELDocStatus.h"
#include "engine/ElementTypes.h"
#include "tests/support/DocSupport.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <set>

namespace {

// ---- tables ----

TEST(Tags, AreTheNumbersAndNamesOfTheFormat)
{
    const char* const names[] = {"qel",   "text",    "rect",    "chord", "pie",      "rndrect",
                                 "arc",   "ellipse", "circle",  "line",  "polyline", "polygon",
                                 "path",  "defs",    "use",     "g",     "status",   "frame",
                                 "scale", "pattern", "drawrgn", "meter"};
    int nCount = 0;
    for (const ElementType* p = g_elementTypes.Rows(); p->nId != -1; ++p, ++nCount) {
        ASSERT_LT(nCount, 22);
        EXPECT_EQ(nCount, p->nId);
        EXPECT_STREQ(names[nCount], p->pszName);
        EXPECT_EQ(nCount, LookupKeyword(g_elementTypes.Rows(), names[nCount]));
        EXPECT_STREQ(names[nCount], NameOf(g_elementTypes.Rows(), nCount));
    }
    EXPECT_EQ(22, nCount);
}

TEST(Tags, AreFoundByTheirExactNameOnly)
{
    for (const char* pszName : {"", "Rect", "RECT", "rec", "rects", " rect", "group", "svg"})
        EXPECT_EQ(-1, LookupKeyword(g_elementTypes.Rows(), pszName)) << pszName;
    EXPECT_EQ(-1, LookupKeyword(g_elementTypes.Rows(), nullptr));
    for (const int nId : {-2, -1, 22, 1000})
        EXPECT_EQ(nullptr, NameOf(g_elementTypes.Rows(), nId)) << nId;
}

TEST(Tags, MakeAnElementOfTheirTypeOrNone)
{
    DocContext context{nullptr, &g_elementTypes};
    for (int nType = -2; nType <= 23; ++nType) {
        SCOPED_TRACE(nType);
        const std::unique_ptr<CQELDocElm> elm(g_elementTypes.MakeDoc(nType, &context));
        const bool bStatic = (nType >= 0 && nType <= 11) || nType == QEL_TYPE_GROUP;
        const bool bNever = nType < 0 || (nType >= 12 && nType <= 14) || nType > 21;
        if (bStatic) {
            ASSERT_NE(nullptr, elm);
        }
        if (bNever) {
            EXPECT_EQ(nullptr, elm);
        }
        if (!elm) continue;
        EXPECT_EQ(nType, elm->Type());
        EXPECT_EQ(&context, elm->Context());
        EXPECT_STREQ("", elm->Id());
        EXPECT_EQ(nullptr, elm->Parent());
    }
}

TEST(AttributeNames, AreTheNumbersAndNamesOfTheFormat)
{
    const char* const names[] = {
        "id",    "type", "width", "height", "lst_rotate", "style", "clr",    "lnstyle", "lnwid",
        "dr",    "fg",   "bg",    "crd",    "flag",       "d",     "ref",    "roll",    "xmove",
        "ymove", "stx",  "scid",  "hidesc", "min",        "max",   "sctype", "pin",     "mtid",
        "usc",   "upin", "mtype", "imin",   "imax",       "set",   "value"};
    int nCount = 0;
    for (const KeywordRow* p = g_attrNames; p->nId != -1; ++p, ++nCount) {
        ASSERT_LT(nCount, 34);
        EXPECT_EQ(nCount, p->nId);
        EXPECT_STREQ(names[nCount], p->pszName);
        EXPECT_STREQ(names[nCount], AttrName(static_cast<AttrId>(nCount)));
        EXPECT_EQ(nCount, LookupKeyword(g_attrNames, names[nCount]));
        EXPECT_STREQ(names[nCount], NameOf(g_attrNames, nCount));
    }
    EXPECT_EQ(34, nCount);
    EXPECT_EQ(-1, LookupKeyword(g_attrNames, "ID"));
    EXPECT_EQ(-1, LookupKeyword(g_attrNames, ""));
    EXPECT_EQ(nullptr, NameOf(g_attrNames, 34));
    EXPECT_EQ(nullptr, NameOf(g_attrNames, -1));
}

// ---- rows ----

// A value that an author may mean and that is not the default.
int32_t ValueFor(const AttrInfo& info)
{
    if (info.pForm == &g_formColor) return static_cast<int32_t>(0x80123456);
    return info.nDefault < info.nMax ? info.nDefault + 1 : info.nMax - 1;
}

std::string Spelled(const AttrInfo& info, int32_t nValue)
{
    // The keywords that stand next to the default.
    if (info.pForm == &g_formScaleType && nValue == 2) return "horizup";
    if (info.pForm == &g_formMeterType && nValue == 1) return "vert3d";
    char szText[ATTR_TEXT_SIZE];
    const auto nBits = static_cast<unsigned>(nValue);
    if (info.pForm == &g_formColor)
        std::snprintf(szText, sizeof szText, "0x%x%s", nBits & 0x7FFFFFFF,
                      nBits & 0x80000000 ? " glt" : "");
    else if (info.pForm == &g_formHex)
        std::snprintf(szText, sizeof szText, "0x%x", nBits);
    else if (info.pForm == &g_formCount)
        std::snprintf(szText, sizeof szText, "%u", nBits);
    else
        std::snprintf(szText, sizeof szText, "%d", static_cast<int>(nValue));
    return szText;
}

template <class T>
int32_t FieldOf(const T& elm, const AttrRow<T>& row)
{
    return elm.*row.pField;
}

int32_t FieldOf(const CQELDocShape& shape, const ShapeRow& row)
{
    return shape.Data().pStyle->*row.pField;
}

// One attribute set, the others with their defaults: that one attribute alone is written, in its
// place, and reading it back gives the value. Two rows on one field would write two.
template <class T>
void ExpectRowsAlone(const char* pszTag, const char* pszCrd)
{
    for (const auto& row : T::Attrs()) {
        if (!row.pField) continue; // coordinates and text have tests of their own
        SCOPED_TRACE(AttrName(row.nId));
        const int32_t nValue = ValueFor(row);
        ASSERT_NE(row.nDefault, nValue);
        const std::string name = AttrName(row.nId);
        const std::string attr = " " + name + "=\"" + Spelled(row, nValue) + "\"";

        std::string expected = std::string("<") + pszTag;
        for (const auto& place : T::Attrs()) {
            if (place.nId == row.nId) expected += attr;
            if (place.nId == ATTR_CRD) expected += std::string(" crd=\"") + pszCrd + "\"";
        }
        expected += "/>\r\n";

        const bool bRoot = std::string(pszTag) == "qel";
        const std::string element = std::string("<") + pszTag + attr + "/>";
        CTestDocument document(bRoot ? element : DrawingText(element));
        ASSERT_EQ(1, document.Loaded());
        EXPECT_EQ(bRoot ? FILE_HEAD + expected : DrawingText(expected), document.Saved());

        CTestDocument again(document.Saved());
        const auto* pElm =
            static_cast<const T*>(bRoot ? static_cast<CQELDocElm*>(again.Root()) : again.First());
        for (const auto& other : T::Attrs()) {
            if (!other.pField) continue;
            EXPECT_EQ(other.nId == row.nId ? nValue : other.nDefault, FieldOf(*pElm, other))
                << AttrName(other.nId);
        }
    }
}

// Names of 256 bytes more look like short ones to all that is not their whole text.
TEST(AttributeNames, OfAnyLengthAreToldFromThoseOfTheFormat)
{
    for (const char* pszName : {"d", "fg", "clr", "style"}) {
        const std::string name = pszName;
        std::string longName =
            name.substr(0, 1) + std::string(255 + name.size(), name[name.size() / 2]);
        longName.back() = name.back();
        EXPECT_EQ(XmlNameKey(name.data(), name.size()),
                  XmlNameKey(longName.data(), longName.size()));
        CTestDocument document(DrawingText("<rect " + longName + "=\"0x5\"/>"));
        ASSERT_EQ(1, document.Loaded());
        EXPECT_EQ("<rect crd=\"0 0 10 10\"/>\r\n", document.SavedBody()) << name;
    }
}

TEST(AttributeRows, OfAShapeAreEachWrittenAloneAndReadBack)
{
    ExpectRowsAlone<CQELDocShape>("rect", "0 0 10 10");
    ExpectRowsAlone<CQELDocShape>("circle", "5 5 5");
}

TEST(AttributeRows, OfTheRootAreEachWrittenAloneAndReadBack)
{
    ExpectRowsAlone<CQELDocQEL>("qel", "");
}

TEST(AttributeRows, OfAShapeAreTheTenInTheOrderOfWriting)
{
    std::string names;
    for (const auto& row : CQELDocShape::Attrs()) names += std::string(" ") + AttrName(row.nId);
    EXPECT_EQ(" style dr fg bg clr lnstyle lnwid crd (text) flag", names);
    names.clear();
    for (const auto& row : CQELDocQEL::Attrs()) names += std::string(" ") + AttrName(row.nId);
    EXPECT_EQ(" type width height lst_rotate", names);
}

struct Visited {
    std::vector<AttrInfo> infos;
};

void Collect(const AttrInfo& info, void* pUser)
{
    static_cast<Visited*>(pUser)->infos.push_back(info);
}

// Whoever asks a tag for its attributes sees the rows of its class, in their order.
template <class T>
void ExpectVisited(int nType)
{
    const ElementType* pTag = FindRow(g_elementTypes.Rows(), nType);
    ASSERT_NE(nullptr, pTag);
    Visited visited;
    pTag->pfnVisitAttrs(Collect, &visited);
    ASSERT_EQ(T::Attrs().size(), visited.infos.size());
    for (std::size_t n = 0; n < visited.infos.size(); ++n) {
        EXPECT_EQ(T::Attrs()[n].nId, visited.infos[n].nId);
        EXPECT_EQ(T::Attrs()[n].pForm, visited.infos[n].pForm);
        EXPECT_EQ(T::Attrs()[n].nDefault, visited.infos[n].nDefault);
        EXPECT_STREQ(T::Attrs()[n].pszMeaning, visited.infos[n].pszMeaning);
    }
}

TEST(AttributeRows, AreThoseThatATagShows)
{
    ExpectVisited<CQELDocQEL>(QEL_TYPE_ROOT);
    ExpectVisited<CQELDocShape>(QEL_TYPE_RECT);
    ExpectVisited<CQELDocStatus>(QEL_TYPE_STATUS);
    ExpectVisited<CQELDocScale>(QEL_TYPE_SCALE);
    ExpectVisited<CQELDocDrawRgn>(QEL_TYPE_DRAWRGN);
    ExpectVisited<CQELDocMeter>(QEL_TYPE_METER);
}

// Where an attribute's value stands in a saved line, or nothing when it is not written.
std::string WithoutAttr(const std::string& line, const std::string& name)
{
    const std::size_t nFrom = line.find(" " + name + "=\"");
    if (nFrom == std::string::npos) return line;
    const std::size_t nEnd = line.find('"', nFrom + name.size() + 3);
    return line.substr(0, nFrom) + line.substr(nEnd + 1);
}

// The rows of every class that has any, whoever adds the next one: an attribute in the file is
// written back with its value, and no other attribute changes.
TEST(AttributeRows, OfEveryClassSurviveASaveAndAreDescribed)
{
    int nClasses = 0;
    for (const ElementType* pTag = g_elementTypes.Rows(); pTag->nId != -1; ++pTag) {
        if (!pTag->pfnMakeDoc || !pTag->pfnVisitAttrs || pTag->nId == QEL_TYPE_ROOT) continue;
        ++nClasses;
        SCOPED_TRACE(pTag->pszName);
        const std::string tag = pTag->pszName;
        const std::string plain = SavedBody("<" + tag + "/>");
        Visited visited;
        pTag->pfnVisitAttrs(Collect, &visited);
        std::set<int> ids;
        for (const AttrInfo& info : visited.infos) {
            const std::string name = AttrName(info.nId);
            SCOPED_TRACE(name);
            EXPECT_TRUE(ids.insert(info.nId).second); // no row twice
            ASSERT_NE(nullptr, info.pForm);
            EXPECT_STRNE("", info.pszMeaning);
            if (info.pForm == &g_formCrd || info.pForm == &g_formText) continue;
            const std::string value = Spelled(info, ValueFor(info));
            const std::string saved = SavedBody("<" + tag + " " + name + "=\"" + value + "\"/>");
            EXPECT_NE(std::string::npos, saved.find(" " + name + "=\"" + value + "\"")) << saved;
            EXPECT_EQ(WithoutAttr(plain, name), WithoutAttr(saved, name));
            EXPECT_EQ(saved, SavedBody(saved));
        }
    }
    EXPECT_GE(nClasses, 15); // the shapes, status, draw region, scale and meter
}

// ---- forms ----

TEST(AttributeForms, WriteWhatTheyReadForValuesAtTheirEnds)
{
    const AttrForm* const forms[] = {&g_formDecimal, &g_formHex, &g_formColor, &g_formScan,
                                     &g_formCount};
    const int32_t values[] = {0, 1, -1, 37, 0xFFFFFF, 2147483647, static_cast<int32_t>(LONG_LEAST)};
    for (const AttrForm* pForm : forms) {
        for (const int32_t nValue : values) {
            SCOPED_TRACE(std::string(pForm->pszName) + " " + std::to_string(nValue));
            char szText[ATTR_TEXT_SIZE] = "untouched";
            const std::size_t nLength = pForm->pfnFormat(nValue, szText, sizeof szText);
            EXPECT_EQ(std::strlen(szText), nLength);
            int32_t nRead = 77;
            EXPECT_EQ(1, pForm->pfnParse(szText, &nRead));
            EXPECT_EQ(nValue, nRead);
        }
    }
}

TEST(AttributeForms, LeaveTheValueWhenTheTextIsRefused)
{
    const struct {
        const AttrForm* pForm;
        const char* pszText;
    } rows[] = {{&g_formHex, "12"},    {&g_formHex, "0x"},  {&g_formColor, "red"},
                {&g_formColor, "255"}, {&g_formScan, "x1"}, {&g_formCount, "-"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.pForm->pszName) + " " + row.pszText);
        int32_t nValue = 77;
        EXPECT_EQ(0, row.pForm->pfnParse(row.pszText, &nValue));
        EXPECT_EQ(77, nValue);
    }
}

TEST(AttributeForms, OfAValueThatDoesNotFitNothingIsTold)
{
    const struct {
        const AttrForm* pForm;
        int32_t nValue;
        const char* pszText;
    } rows[] = {{&g_formDecimal, -123, "-123"},
                {&g_formHex, 0x1234, "0x1234"},
                {&g_formColor, 0x123456, "0x123456"},
                {&g_formColor, static_cast<int32_t>(0x80123456), "0x123456 glt"},
                {&g_formCount, -1, "4294967295"},
                {&g_formMeterType, 1, "vert3d"},
                {&g_formScaleType, 2, "horizup"}};
    for (const auto& row : rows) {
        const std::size_t nLength = std::strlen(row.pszText);
        for (std::size_t nSize = 0; nSize <= nLength + 1; ++nSize) {
            SCOPED_TRACE(std::string(row.pszText) + " in " + std::to_string(nSize));
            char szText[ATTR_TEXT_SIZE];
            std::memset(szText, '?', sizeof szText);
            const bool bFits = nSize > nLength; // with the zero at its end
            EXPECT_EQ(bFits ? nLength : 0, row.pForm->pfnFormat(row.nValue, szText, nSize));
            if (bFits) {
                EXPECT_STREQ(row.pszText, szText);
            }
            EXPECT_EQ('?', szText[nSize]); // nothing behind the room that there is
        }
    }
}

TEST(AttributeForms, AreCleanWhenTheWholeTextIsWhatTheFormAsksFor)
{
    const struct {
        const AttrForm* pForm;
        std::vector<const char*> clean;
        std::vector<const char*> unclean;
    } rows[] = {
        {&g_formDecimal,
         {"0", "-7", "+7", " 12", "12 \t\r\n"},
         {"", " ", "x", "12x", "1 2", "1.5"}},
        {&g_formScan, {"0", "-7", " 12 "}, {"", "x", "12x"}},
        {&g_formCount, {"0", "7", " 12 "}, {"", "x", "12x"}},
        {&g_formStatus, {"0", "7", " 12 "}, {"", "x", "12x"}},
        {&g_formKind, {"0", "1", "2"}, {"", "x", "12x"}},
        {&g_formHex, {"0x0", "0xFFFFFFFF", "0xab "}, {"", "12", "0x", "0x1g", "0x1 2"}},
        {&g_formColor,
         {"0x0", "0xFFFFFF", "0xFF ", "0xFF glt", "0xFF\tglt "},
         {"", "255", "red", "0x1000000", "0xFF blink", "0xFF glt glt", "0xFF gltx"}},
        {&g_formMeterType, {"vert", "Arc", "sector"}, {"", "arc", "vert ", "dial"}},
        {&g_formScaleType, {"horizup"}, {"", "HORIZUP", "horizup ", "line"}},
    };
    for (const auto& row : rows) {
        for (const char* pszText : row.clean)
            EXPECT_TRUE(row.pForm->pfnIsClean(pszText)) << row.pForm->pszName << ": " << pszText;
        for (const char* pszText : row.unclean)
            EXPECT_FALSE(row.pForm->pfnIsClean(pszText)) << row.pForm->pszName << ": " << pszText;
    }
}

} // namespace
