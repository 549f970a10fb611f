// Writing a tree as text: layout, quotes, escaping and references, byte by byte, and that what is
// written reads back as the same tree. The code is xml/XmlWriter.cpp; files are in
// XmlFileTests.cpp.
#include "xml/XmlTree.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

class XmlWriter : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_pXml = XmlCreate();
        ASSERT_NE(nullptr, m_pXml);
        ASSERT_EQ(0, XmlSetNameZ(m_pXml, "r"));
    }
    void TearDown() override { XmlDestroy(m_pXml); }

    XmlContext* m_pXml{};
};

// The document as it is written; a byte more or less than was measured fails.
std::string Written(XmlContext* pXml)
{
    const std::size_t nLength = XmlSerialize(pXml, nullptr);
    std::vector<char> room(nLength + 9, '#');
    EXPECT_EQ(nLength, XmlSerialize(pXml, room.data()));
    EXPECT_EQ('\0', room[nLength]);
    for (std::size_t i = nLength + 1; i < room.size(); ++i) EXPECT_EQ('#', room[i]);
    EXPECT_EQ(nLength, std::strlen(room.data()));
    return room.data();
}

std::string AfterDeclaration(XmlContext* pXml)
{
    static const std::string DECLARATION = "<?xml ?>\r\n";
    const std::string text = Written(pXml);
    EXPECT_EQ(DECLARATION, text.substr(0, DECLARATION.size()));
    return text.size() < DECLARATION.size() ? text : text.substr(DECLARATION.size());
}

bool IsEqual(const XmlNode* p, const XmlNode* q)
{
    if (std::strcmp(p->pszName, q->pszName) != 0) return false;
    if (std::string(p->pszText ? p->pszText : "") != (q->pszText ? q->pszText : "")) return false;
    const XmlAttr* a = p->pAttrs ? p->pAttrs->pHead : nullptr;
    const XmlAttr* b = q->pAttrs ? q->pAttrs->pHead : nullptr;
    for (; a && b; a = a->pNext, b = b->pNext)
        if (std::strcmp(a->pszName, b->pszName) != 0 || std::strcmp(a->pszValue, b->pszValue) != 0)
            return false;
    if (a || b) return false;
    const XmlNode* c = p->pFirstChild;
    const XmlNode* d = q->pFirstChild;
    for (; c && d; c = c->pNext, d = d->pNext)
        if (!IsEqual(c, d)) return false;
    return !c && !d;
}

// Names, texts and values of all that the format can hold, escapes and half-made references most.
class CRandomTree {
public:
    explicit CRandomTree(unsigned nSeed) : m_random(nSeed) {}

    void Grow(XmlContext* pXml, int nLevels)
    {
        for (auto n = Below(4); n; --n) XmlSetAttrZ(pXml, Name().c_str(), Bytes(false).c_str());
        if (Below(2)) XmlSetTextZ(pXml, Bytes(true).c_str());
        if (!nLevels) return;
        for (auto n = Below(5); n; --n) {
            ASSERT_EQ(0, XmlAddChildZ(pXml, Name().c_str(), nullptr));
            ASSERT_EQ(0, XmlGoLastChild(pXml));
            Grow(pXml, static_cast<int>(Below(static_cast<unsigned>(nLevels))));
            ASSERT_EQ(0, XmlGoParent(pXml));
        }
    }

    std::string Name()
    {
        static const char LETTERS[] = "aZ_\x80\xFF\xB9-.:09";
        std::string name(1, LETTERS[Below(6)]); // the first six may begin a name
        for (auto n = Below(6); n; --n) name += LETTERS[Below(sizeof LETTERS - 1)];
        return name;
    }

private:
    unsigned Below(unsigned n) { return static_cast<unsigned>(m_random()) % n; }

    std::string Bytes(bool bText)
    {
        static const char* const PARTS[] = {"&",  "<",     ">",     "\"", "'",  "&#",
                                            "x4", ";",     "&amp;", "\r", "\n", " ",
                                            "\t", "&#65;", "=",     "/>", "]",  "-->"};
        std::string out;
        for (auto n = 1 + Below(10); n; --n)
            if (Below(2))
                out += PARTS[Below(std::size(PARTS))];
            else
                out += static_cast<char>(1 + Below(255));
        // A reference that is whole is kept on writing and decoded on reading: no way back to it.
        for (std::size_t at; (at = out.find("&#x")) != std::string::npos;) out.erase(at, 1);
        if (bText) out.erase(0, out.find_first_not_of(" \t\r\n\v\f")); // not kept by the reader
        return out;
    }

    std::mt19937 m_random;
};

} // namespace

TEST_F(XmlWriter, WithoutAContextNothingIsWritten)
{
    char room[8] = "#######";
    EXPECT_EQ(0U, XmlSerialize(nullptr, room));
    EXPECT_EQ('#', room[1]);
}

TEST_F(XmlWriter, TheDeclarationHoldsWhatIsKnownInItsOrder)
{
    const struct {
        const char* pszRead;
        const char* pszWritten;
    } rows[] = {
        {"<r/>", "<?xml ?>\r\n<r/>\r\n"},
        {"<?xml version='1.0' encoding='gb2312'?><r/>",
         "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n<r/>\r\n"},
        {"<?xml standalone='yes' encoding='e' version='v'?><r/>",
         "<?xml version=\"v\" encoding=\"e\" standalone=\"yes\" ?>\r\n<r/>\r\n"},
        {"<?xml standalone='no'?><r/>", "<?xml standalone=\"no\" ?>\r\n<r/>\r\n"},
    };
    for (const auto& row : rows) {
        ASSERT_EQ(0, XmlReset(&m_pXml));
        std::string text = row.pszRead;
        ASSERT_EQ(0, XmlParseText(m_pXml, text.data()));
        EXPECT_EQ(row.pszWritten, Written(m_pXml));
    }
}

TEST_F(XmlWriter, LinesEndAfterElementsAndNothingIsIndented)
{
    const struct {
        const char* pszRead;
        const char* pszWritten;
    } rows[] = {
        {"<r></r>", "<r/>\r\n"},
        {"<r a='1' b='2'/>", "<r a=\"1\" b=\"2\"/>\r\n"},
        {"<r>text</r>", "<r>text</r>\r\n"},
        {"<r><a/><b/></r>", "<r>\r\n<a/>\r\n<b/>\r\n</r>\r\n"},
        {"<r><a><b/></a></r>", "<r>\r\n<a>\r\n<b/>\r\n</a>\r\n</r>\r\n"},
        {"<r>t<a/></r>", "<r>t<a/>\r\n</r>\r\n"}, // the text and at once the first child
        {"<r x='1'>t<a>u</a><b y='2'/></r>", "<r x=\"1\">t<a>u</a>\r\n<b y=\"2\"/>\r\n</r>\r\n"},
        {"<r>two\r\nlines </r>", "<r>two\r\nlines </r>\r\n"},
    };
    for (const auto& row : rows) {
        ASSERT_EQ(0, XmlReset(&m_pXml));
        std::string text = row.pszRead;
        ASSERT_EQ(0, XmlParseText(m_pXml, text.data()));
        EXPECT_EQ(row.pszWritten, AfterDeclaration(m_pXml));
    }
}

TEST_F(XmlWriter, ADoubleQuoteBehindTheFirstCharacterTurnsTheQuotes)
{
    const struct {
        const char* pszValue;
        const char* pszWritten;
    } rows[] = {
        {"plain", "\"plain\""},    {"a\"b", "'a&quot;b'"},     {"ab\"", "'ab&quot;'"},
        {"\"ab", "\"&quot;ab\""}, // looked for from the second character on
        {"\"", "\"&quot;\""},      {"\"\"", "'&quot;&quot;'"}, {"it's", "\"it&apos;s\""},
        {"'\"", "'&apos;&quot;'"},
    };
    for (const auto& row : rows) {
        ASSERT_EQ(0, XmlSetAttrZ(m_pXml, "a", row.pszValue));
        EXPECT_EQ("<r a=" + std::string(row.pszWritten) + "/>\r\n", AfterDeclaration(m_pXml));
    }
}

TEST_F(XmlWriter, ValuesAndTextsAreEscapedAlike)
{
    const struct {
        const char* pszRaw;
        const char* pszWritten;
    } rows[] = {
        {"a<b", "a&lt;b"},
        {"x & y", "x &amp; y"},
        {"<>&'", "&lt;&gt;&amp;&apos;"},
        {"&amp;", "&amp;amp;"},
        {"&lt", "&amp;lt"},
        {"&#65;", "&amp;#65;"},
        {"&#X41;", "&amp;#X41;"},
        {"&", "&amp;"},
        {"&#", "&amp;#"},
        {"&#x", "&amp;#x"},
        {"&#x41;", "&#x41;"}, // a reference stays
        {"&#x7;", "&#x7;"},
        {"1&#x41;&2", "1&#x41;&amp;2"},
        {"&#x12345;<", "&#x12345;&lt;"},
        {"&#x4 & 1;&", "&#x4 & 1;&amp;"}, // all up to its semicolon
        {"&#x41", "&amp;#x41"},           // but without one it is no reference
        {"&#x41&#x42;", "&#x41&#x42;"},
        {"&#x41;&#x42", "&#x41;&amp;#x42"},
        {"\x80\xFF\xD6\xD0\t\r\n\x01", "\x80\xFF\xD6\xD0\t\r\n\x01"},
    };
    for (const auto& row : rows) {
        const std::string written = row.pszWritten;
        ASSERT_EQ(0, XmlReset(&m_pXml));
        ASSERT_EQ(0, XmlSetNameZ(m_pXml, "r"));
        ASSERT_EQ(0, XmlSetAttrZ(m_pXml, "a", row.pszRaw));
        EXPECT_EQ("<r a=\"" + written + "\"/>\r\n", AfterDeclaration(m_pXml));
        ASSERT_EQ(0, XmlDeleteAttr(m_pXml, "a"));
        ASSERT_EQ(0, XmlSetTextZ(m_pXml, row.pszRaw));
        EXPECT_EQ("<r>" + written + "</r>\r\n", AfterDeclaration(m_pXml));
    }
    ASSERT_EQ(0, XmlSetTextZ(m_pXml, "\"q\""));
    EXPECT_EQ("<r>&quot;q&quot;</r>\r\n", AfterDeclaration(m_pXml));
}

TEST_F(XmlWriter, TheCursorEndsOnTheRoot)
{
    XmlAddChildZ(m_pXml, "a", nullptr);
    for (const bool bMeasure : {true, false}) {
        ASSERT_EQ(0, XmlGoFirstChild(m_pXml));
        char room[64];
        // "<?xml ?>" + "<r>" + "<a/>" + "</r>", each with its line end
        EXPECT_EQ(27U, XmlSerialize(m_pXml, bMeasure ? nullptr : room));
        EXPECT_EQ(m_pXml->pRoot, m_pXml->pCursor);
        EXPECT_EQ(0, m_pXml->nDepth);
    }
}

TEST_F(XmlWriter, WithoutARootOnlyTheDeclarationIsWritten)
{
    ASSERT_EQ(0, XmlDeleteNode(m_pXml));
    EXPECT_EQ("<?xml ?>\r\n", Written(m_pXml));
}

TEST_F(XmlWriter, AnUnnamedRootIsMeasuredAsItIsWritten)
{
    ASSERT_EQ(0, XmlReset(&m_pXml));
    EXPECT_EQ("<?xml ?>\r\n", Written(m_pXml).substr(0, 10));
}

TEST_F(XmlWriter, TheDeepestTreeIsWrittenWhole)
{
    for (int i = 0; i < XML_MAX_DEPTH; ++i) {
        ASSERT_EQ(0, XmlAddChildZ(m_pXml, "a", nullptr));
        ASSERT_EQ(0, XmlGoFirstChild(m_pXml));
    }
    std::string expected = "<r>\r\n";
    for (int i = 1; i < XML_MAX_DEPTH; ++i) expected += "<a>\r\n";
    expected += "<a/>\r\n";
    for (int i = 1; i < XML_MAX_DEPTH; ++i) expected += "</a>\r\n";
    EXPECT_EQ(expected + "</r>\r\n", AfterDeclaration(m_pXml));
}

TEST_F(XmlWriter, ManyBrokenReferencesAreWrittenInOneGo)
{
    std::string text; // each looks for its semicolon, and there is none
    std::string expected;
    for (int i = 0; i < 100000; ++i) {
        text += "&#x4";
        expected += "&amp;#x4";
    }
    ASSERT_EQ(0, XmlSetTextZ(m_pXml, text.c_str()));
    EXPECT_EQ("<r>" + expected + "</r>\r\n", AfterDeclaration(m_pXml));
}

TEST_F(XmlWriter, ManyReferencesThatWouldCloseTheirTextAreWrittenInOneGo)
{
    std::string text; // one semicolon, far behind all of them
    std::string expected;
    for (int i = 0; i < 50000; ++i) {
        text += "&#x4<";
        expected += "&amp;#x4&lt;";
    }
    ASSERT_EQ(0, XmlSetTextZ(m_pXml, (text + ";").c_str()));
    EXPECT_EQ("<r>" + expected + ";</r>\r\n", AfterDeclaration(m_pXml));
}

TEST_F(XmlWriter, ManySiblingsAreWrittenInOneGo)
{
    std::string expected = "<r>\r\n";
    for (int i = 0; i < 200000; ++i) {
        ASSERT_EQ(0, XmlAddChildZ(m_pXml, "c", nullptr));
        expected += "<c/>\r\n";
    }
    EXPECT_EQ(expected + "</r>\r\n", AfterDeclaration(m_pXml));
}

TEST_F(XmlWriter, ATextWithAnAmpersandReadsBackTheSame)
{
    ASSERT_EQ(0, XmlSetTextZ(m_pXml, "x & y"));
    std::string text = Written(m_pXml);
    EXPECT_EQ("<?xml ?>\r\n<r>x &amp; y</r>\r\n", text);
    ASSERT_EQ(0, XmlReset(&m_pXml));
    ASSERT_EQ(0, XmlParseText(m_pXml, text.data()));
    EXPECT_STREQ("x & y", XmlGetText(m_pXml));
}

TEST(XmlRoundTrip, RandomTreesReadBackAsTheyWereWritten)
{
    CRandomTree random(20011);
    std::size_t nBytes = 0;
    for (int i = 0; i < 300; ++i) {
        XmlContext* pXml = XmlCreate();
        ASSERT_EQ(0, XmlSetNameZ(pXml, random.Name().c_str()));
        random.Grow(pXml, 5);
        const std::string text = Written(pXml);
        XmlContext* pBack = XmlCreate();
        std::string copy = text;
        ASSERT_EQ(0, XmlParseText(pBack, copy.data())) << text << " code " << pBack->nLastError;
        ASSERT_TRUE(IsEqual(pXml->pRoot, pBack->pRoot)) << text << "\nread as\n" << Written(pBack);
        ASSERT_EQ(text, Written(pBack));
        nBytes += text.size();
        XmlDestroy(pXml);
        XmlDestroy(pBack);
    }
    EXPECT_GT(nBytes, 100000U); // trees worth the name
}
