// Reading the text of a drawing: each kind of markup, attributes, text, entities, each error code,
// the counters, and hostile input. The code is xml/XmlParser.cpp.
#include "xml/XmlTree.h"

#include "tests/support/XmlDump.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

// Text that ends with the last byte of its memory: a read beyond it is a crash.
class CFencedText {
public:
    explicit CFencedText(const std::string& text)
    {
        constexpr std::size_t PAGE = 4096;
        m_nPages = (text.size() + PAGE) / PAGE; // with room for the zero
        m_pBase = static_cast<char*>(::VirtualAlloc(nullptr, (m_nPages + 1) * PAGE,
                                                    MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
        DWORD nOld = 0;
        if (!m_pBase || !::VirtualProtect(m_pBase + m_nPages * PAGE, PAGE, PAGE_NOACCESS, &nOld))
            std::abort();
        m_pszText = m_pBase + m_nPages * PAGE - text.size() - 1;
        std::memcpy(m_pszText, text.c_str(), text.size() + 1);
    }
    ~CFencedText() { ::VirtualFree(m_pBase, 0, MEM_RELEASE); }
    CFencedText(const CFencedText&) = delete;
    CFencedText& operator=(const CFencedText&) = delete;
    char* Text() { return m_pszText; }

private:
    char* m_pBase{};
    char* m_pszText{};
    std::size_t m_nPages{};
};

class CParsed {
public:
    explicit CParsed(const std::string& text) : m_pXml(XmlCreate())
    {
        CFencedText fenced(text);
        m_nResult = XmlParseText(m_pXml, fenced.Text());
        // The text's memory ends here: whatever is looked at below was copied.
    }
    ~CParsed() { XmlDestroy(m_pXml); }
    CParsed(const CParsed&) = delete;
    CParsed& operator=(const CParsed&) = delete;
    XmlContext* operator->() const { return m_pXml; }
    [[nodiscard]] XmlContext* Context() const { return m_pXml; }
    [[nodiscard]] std::string Tree() const { return Dump(m_pXml->pRoot); }
    [[nodiscard]] int Code() const // -1: result and code do not agree
    {
        return m_nResult == (m_pXml->nLastError != 0) ? m_pXml->nLastError : -1;
    }

private:
    XmlContext* m_pXml;
    int m_nResult;
};

struct Row {
    const char* pszText;
    const char* pszTree; // "?" while no element was met
    int nCode = 0;
};

template <std::size_t N>
void ExpectRows(const Row (&rows)[N])
{
    for (const Row& row : rows) {
        const CParsed parsed(row.pszText);
        EXPECT_EQ(row.nCode, parsed.Code()) << row.pszText;
        EXPECT_EQ(row.pszTree, parsed.Tree()) << row.pszText;
    }
}

std::string Shown(const char* psz)
{
    return psz ? psz : "(none)";
}

bool IsNameStart(int c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c >= 0x80;
}

bool IsNamePart(int c)
{
    return IsNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.' || c == ':';
}

bool IsBlank(int c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

} // namespace

TEST(Parser, RefusesNoContextNoTextAndEmptyText)
{
    char szText[] = "<a/>";
    char szEmpty[] = "";
    EXPECT_EQ(1, XmlParseText(nullptr, szText));
    XmlContext* pXml = XmlCreate();
    EXPECT_EQ(1, XmlParseText(pXml, nullptr));
    EXPECT_EQ(XML_ERR_ARGUMENT, pXml->nLastError);
    EXPECT_EQ(1, XmlParseText(pXml, szEmpty));
    EXPECT_EQ(XML_ERR_EMPTY, pXml->nLastError);
    EXPECT_EQ("?", Dump(pXml->pRoot));
    XmlDestroy(pXml);
}

TEST(Parser, DocumentLevelTakesMarkupUntilSomethingElse)
{
    const Row rows[] = {
        {"<a/>", "a"},
        {" \t\r\n\v\f<a/> \r\n", "a"},
        {"  \r\n ", "?"},
        {"junk <a/>", "?"}, // text outside of an element ends the reading, without an error
        {"<a/>junk<b/>", "a"},
        {"<a/><b/>", "a(b)"}, // after the root, elements become its last children
        {"<a x='1'>t</a><b><c/></b> <a/>", "a[x=1]{t}(b(c) a)"},
        {"</b><a/>", "a"}, // a stray end tag is skipped
        {"<1><a/>", "a"},
        {"<><a/>", "a"},
        {"<!DOCTYPE a><a/>", "a"},
        {"<?XML version='1.0'?><a/>", "a"},      // not the declaration, skipped
        {"<!DOCTYPE a [<!ENTITY b>]><a/>", "?"}, // up to the next ">" whatever it belongs to
        {"<!DOCTYPE a", "?"},                    // not closed: the reading stops
        {"<a/><!x", "a"},
        {"<", "?"},
        {"<a/><", "a"},
        {"< ", "?"},
    };
    ExpectRows(rows);
    EXPECT_EQ(nullptr, CParsed("<?XML version='1.0'?><a/>")->pszVersion);
}

TEST(Parser, BlanksAfterTheOpeningBracketAreSkipped)
{
    const Row rows[] = {
        {"< rect/>", "rect"},
        {"< \t\r\n rect x='1'/>", "rect[x=1]"},
        {"<a>< b></b></a>", "a(b)"},
    };
    ExpectRows(rows);
}

TEST(Parser, TheDeclarationIsKept)
{
    const struct {
        const char* pszText;
        const char* pszVersion;
        const char* pszEncoding;
        const char* pszStandalone;
        int nCode = 0;
    } rows[] = {
        {"<?xml version=\"1.0\" encoding=\"gb2312\"?><a/>", "1.0", "gb2312", "(none)"},
        {"<?xml standalone='yes' encoding = 'e' version\n=\n'v' ?>", "v", "e", "yes"},
        {"<?xml?>", "(none)", "(none)", "(none)"},
        {"<?xml other version='2' more='x'?>", "2", "(none)", "(none)"},
        {"<?xml Version='1' ENCODING='e'?>", "(none)", "(none)", "(none)"},
        {"<?xml version=1 encoding='e'?>", "(none)", "e", "(none)"}, // without quotes: dropped
        {"<?xml version='&lt;1&gt;'?>", "<1>", "(none)", "(none)"},
        {"<?xml version='1'?><?xml version='2' encoding='e'?>", "1", "(none)", "(none)"},
        {"<?xml?><?xml version='2'?>", "(none)", "(none)", "(none)"}, // one was completed
        {"<?xml version='1' version='2'?>", "2", "(none)", "(none)"},
        {"<a><?xml version='3'?></a>", "3", "(none)", "(none)"}, // it may stand anywhere
        {"<?xml version='1.0' ", "1.0", "(none)", "(none)"},     // the end stops it silently
        {"<?xml", "(none)", "(none)", "(none)"},
        {"<?xml versio", "(none)", "(none)", "(none)"},
        {"<?xml version", "(none)", "(none)", "(none)", 14},
        {"<?xml version=", "(none)", "(none)", "(none)", 14},
        {"<?xml version= \n", "(none)", "(none)", "(none)", 14},
        {"<?xml version='1.0", "(none)", "(none)", "(none)", 14},
        {"<?xml version?>", "(none)", "(none)", "(none)", 14},
        {"<?xml version '1'?>", "(none)", "(none)", "(none)", 14},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszText);
        const CParsed parsed(row.pszText);
        EXPECT_EQ(row.nCode, parsed.Code());
        EXPECT_EQ(row.pszVersion, Shown(parsed->pszVersion));
        EXPECT_EQ(row.pszEncoding, Shown(parsed->pszEncoding));
        EXPECT_EQ(row.pszStandalone, Shown(parsed->pszStandalone));
    }
    EXPECT_TRUE(CParsed("<?xml?>")->bDeclSeen);
    EXPECT_FALSE(CParsed("<?xml version='1.0' ")->bDeclSeen); // set at its ">"
    EXPECT_FALSE(CParsed("<a/>")->bDeclSeen);
}

TEST(Parser, CommentsArePassedOver)
{
    const Row rows[] = {
        {"<!-- c --><a/>", "a"},
        {"<!----><a/>", "a"},
        {"<!-- -- > <b/> -- --><a/>", "a"}, // "--" inside is allowed
        {"<!--> <b/> --><a/>", "a"},        // the opening dashes are not the closing ones
        {"<!---> <b/> --><a/>", "a"},
        {"<!-- --&gt; <b/> --><a/>", "a"}, // a decoded end is none
        {"<a><!-- <b> --><c/></a>", "a(c)"},
        {"<a>x<!-- y --></a>", "a{x}"},
        {"<!- c --><a/>", "a"}, // no comment, but skipped like one
        {"<!-- c", "?"},        // not closed: the reading stops
        {"<a/><!-- c --", "a"},
        {"<!--", "?"},
    };
    ExpectRows(rows);
}

TEST(Parser, ElementsNestAndReturnToTheirParent)
{
    const Row rows[] = {
        {"<a></a>", "a"},
        {"<a ></a>", "a"},
        {"<a\r\n/>", "a"},
        {"<a><b/><c><d/></c><e></e></a>", "a(b c(d) e)"},
        {"<a><a><a/></a></a>", "a(a(a))"},
        {"<a><!DOCTYPE b><?pi?><1></a>", "a"}, // skipped inside too
        {"<_a.b-c:d9/>", "_a.b-c:d9"},
        {"<\xCE\xC4\xD7\xD6 \xC3\xFB='\xD6\xB5'>\xBA\xBA\xD7\xD6</\xCE\xC4\xD7\xD6>",
         "\xCE\xC4\xD7\xD6[\xC3\xFB=\xD6\xB5]{\xBA\xBA\xD7\xD6}"},
    };
    ExpectRows(rows);
    const CParsed parsed("<a><b><c/></b><d/></a><e/>");
    EXPECT_EQ(parsed->pRoot, parsed->pCursor);
    EXPECT_EQ(0, parsed->nDepth);
    EXPECT_TRUE(parsed->bRootSeen);
}

TEST(Parser, EveryByteCountsAsWhatItIsInANamesFirstPlace)
{
    for (int c = 1; c < 256; ++c) {
        const std::string letter(1, static_cast<char>(c));
        const CParsed parsed("<" + letter + "/>");
        EXPECT_EQ(0, parsed.Code()) << c; // what starts no name is skipped up to its ">"
        EXPECT_EQ(IsNameStart(c) ? letter : "?", parsed.Tree()) << c;
    }
}

TEST(Parser, EveryByteCountsAsWhatItIsInsideAName)
{
    for (int c = 1; c < 256; ++c) {
        const std::string letter(1, static_cast<char>(c));
        const CParsed parsed("<a" + letter + "/>");
        const int nCode = IsNamePart(c) || IsBlank(c) ? 0
                          : c == '/'                  ? 19
                          : c == '>'                  ? 21 // the rest is a text that never ends
                                                      : 16;                 // an attribute without a name
        EXPECT_EQ(nCode, parsed.Code()) << c;
        EXPECT_EQ(IsNamePart(c) ? "a" + letter : "a", parsed.Tree().substr(0, IsNamePart(c) + 1));
    }
}

TEST(Parser, AttributesTakeQuotedValuesOfAnyContent)
{
    const Row rows[] = {
        {"<a v='1'/>", "a[v=1]"},
        {"<a v = \"1\" w\n=\n'2' ></a>", "a[v=1][w=2]"},
        {"<a x='1'y=\"2\"/>", "a[x=1][y=2]"}, // no blank needed between
        {"<a v='\"' w=\"'\"/>", "a[v=\"][w=']"},
        {"<a v='<b/> > \r\n c'/>", "a[v=<b/> > \r\n c]"},
        {"<a v='  '/>", "a[v=  ]"},
        {"<a v='x=\"1\"/>'>t</a>", "a[v=x=\"1\"/>]{t}"},
        {"<a _x.y-z:1='v'/>", "a[_x.y-z:1=v]"},
        {"<a v='&lt;&#x7;&quot;'/>", "a[v=<\x07\"]"},
    };
    ExpectRows(rows);
}

TEST(Parser, UnquotedAndEmptyValuesAreDropped)
{
    const Row rows[] = {
        {"<a v=1/>", "a"},
        {"<a v=1></a>", "a"},
        {"<a v=1 w='2'/>", "a[w=2]"},
        {"<a v=1", "a", 18}, // passed over up to the end of the text
        {"<a v=&lt;\"x w='2'/>", "a[w=2]"},
        {"<a v=/>", "a"},
        {"<a v=>t</a>", "a{t}"},
        {"<a v=1/2/>", "a", 19}, // the value ends before the "/"
        {"<a v=''/>", "a"},
        {"<a v='' w=\"\" x='1'/>", "a[x=1]"},
    };
    ExpectRows(rows);
    EXPECT_EQ(-1, XmlAttrCount(CParsed("<a v=''/>").Context())); // not even a list
}

TEST(Parser, ARepeatedAttributeReplacesTheEarlierValue)
{
    const Row rows[] = {
        {"<a x='1' y='2' x='3'/>", "a[x=3][y=2]"},
        {"<a x='1' x=''/>", "a[x=1]"}, // refused, so the earlier one stays
        {"<a x='1' x=2/>", "a[x=1]"},
        {"<a x='1' X='2'/>", "a[x=1][X=2]"},
    };
    ExpectRows(rows);
}

TEST(Parser, OnlyTheLastRunOfTextIsKept)
{
    const Row rows[] = {
        {"<a>x<b/>y</a>", "a{y}(b)"},
        {"<a>text</a>", "a{text}"},
        {"<a> \r\n\t x y \n</a>", "a{x y \n}"}, // blanks before it go, blanks behind it stay
        {"<a>x<b/>  \r\n </a>", "a{x}(b)"},     // a blank run replaces nothing
        {"<a>x<!-- -->y<1>z</a>", "a{z}"},
        {"<a>x<b>y</b></a>", "a{x}(b{y})"},
        {"<a>1 > 0 \"q\" 'r' /></a>", "a{1 > 0 \"q\" 'r' />}"},
        {"<a>   </a>", "a"},
        {"<a>x</a><b>y</b>", "a{x}(b{y})"},
    };
    ExpectRows(rows);
}

TEST(Parser, EntitiesAreDecodedInTextAndValuesAlike)
{
    const struct {
        const char* pszRaw;
        const char* pszDecoded;
    } rows[] = {
        {"&amp;&lt;&gt;&quot;&apos;", "&<>\"'"},
        {"a&amp;b", "a&b"},
        {"&amp;lt;", "&lt;"}, // one pass: what was decoded is not read again
        {"&&amp;", "&&"},
        {"&#x7;", "\x07"},
        {"&#x41;", "\x01"}, // of two digits only the second counts
        {"&#xff;", "\x0F"},
        {"&#xa;&#xB;", "\x0A\x0B"},
        {"&#x9F;.", "\x0F."},
        {"&#x1;;", "\x01;"}, // one character is tried before two
        {"&#xz;", "#"},      // lower-case code 0x7A minus 0x57
        {"&#xZ;", "#"},
        {"&#x-;", "\xD6"}, // 0x2D minus 0x57, as a byte
        {"&#xqz;", "#"},
        {"&#65;", "&#65;"},
        {"&#x041;", "&#x041;"},
        {"&#x12345;", "&#x12345;"},
        {"&#x41", "&#x41"},
        {"&#X41;", "&#X41;"},
        {"&#x", "&#x"},
        {"&", "&"},
        {"&amp", "&amp"},
        {"&AMP;", "&AMP;"},
        {"&unknown;", "&unknown;"},
        {"& lt;", "& lt;"},
        {"&#x4&lt;", "&#x4<"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszRaw);
        const std::string raw = row.pszRaw;
        const CParsed inText("<a>" + raw + "</a>");
        EXPECT_EQ(0, inText.Code());
        EXPECT_STREQ(row.pszDecoded, inText->pRoot->pszText);
        for (const char* pszQuote : {"'", "\""}) {
            const CParsed inValue("<a v=" + (pszQuote + raw) + pszQuote + "/>");
            EXPECT_EQ(0, inValue.Code());
            EXPECT_STREQ(row.pszDecoded, XmlGetAttr(inValue.Context(), "v"));
        }
    }
}

TEST(Parser, AnEntityNeverReachesBeyondItsTextOrValue)
{
    const Row rows[] = {
        {"<a>&#x1<;></a>", "a{&#x1}"},
        {"<a>&#x<b/>;</a>", "a{;}(b)"},
        {"<a>&#x<;></a>", "a{&#x}"},
        {"<a v=\"&#x\"; />", "a[v=&#x]", 16},
        {"<a v=\"&#x1\"; />", "a[v=&#x1]", 16}, // the quote ends the value, not the entity
        {"<a v='&lt' w='1'/>", "a[v=&lt][w=1]"},
    };
    ExpectRows(rows);
}

TEST(Parser, AReferenceToByteZeroHarmsNothingAroundIt)
{
    const CParsed parsed("<a v='&#x0;' w='&#x10;\"x' y='1'>&#x0;x<b/></a>");
    EXPECT_EQ(0, parsed.Code());
    EXPECT_STREQ("1", XmlGetAttr(parsed.Context(), "y"));
    std::string text(XmlSerialize(parsed.Context(), nullptr), '#');
    EXPECT_EQ(text.size(), XmlSerialize(parsed.Context(), text.data()));
    EXPECT_EQ(text.size(), std::strlen(text.c_str())); // no zero byte got into what is written
    const CParsed again(text);
    EXPECT_EQ(0, again.Code()) << text;
    EXPECT_STREQ("1", XmlGetAttr(again.Context(), "y"));
    ASSERT_NE(nullptr, again->pRoot->pFirstChild);
    EXPECT_STREQ("b", again->pRoot->pFirstChild->pszName);
}

TEST(Parser, EachErrorHasItsCodeAndKeepsTheTreeBuiltSoFar)
{
    const Row rows[] = {
        {"<a", "a", 17},
        {"<a><b", "a(b)", 17},
        {"<a ", "a", 18},
        {"<a x='1'", "a[x=1]", 18},
        {"<a x='1' \n", "a[x=1]", 18},
        {"<a/", "a", 19},
        {"<a/ >", "a", 19},
        {"<a/b>", "a", 19},
        {"<a x='1' / y='2'>", "a[x=1]", 19},
        {"<a x>", "a", 16},
        {"<a x y='1'>", "a", 16},
        {"<a x", "a", 16},
        {"<a x=", "a", 16},
        {"<a x= ", "a", 16},
        {"<a x 'v'>", "a", 16},
        {"<a ='v'>", "a", 16},
        {"<a 1='v'>", "a", 16},
        {"<a <b/>", "a", 16},
        {"<a y='1' 'z'/>", "a[y=1]", 16},
        {"<a></b>", "a", 20},
        {"<a></A>", "a", 20},
        {"<a></ab>", "a", 20},
        {"<ab></a>", "ab", 20},
        {"<a></a >", "a", 20}, // exactly the end tag, not a blank more
        {"<a></ a>", "a", 20},
        {"<a></a", "a", 20},
        {"<a></", "a", 20},
        {"<a><b x='1'/><c></d></a>", "a(b[x=1] c)", 20},
        {"<a>", "a", 21},
        {"<a>text", "a{text}", 21},
        {"<a><b/>", "a(b)", 21},
        {"<a><b></b>", "a(b)", 21},
        {"<a><!-- x --", "a", 21},
        {"<a><!-- x", "a", 21},
        {"<a><!x", "a", 21},
        {"<a><?pi ", "a", 21},
        {"<a><?xml version='1'", "a", 21},
        {"<a><", "a", 21},
        {"<a><b><!x", "a(b)", 21},
    };
    ExpectRows(rows);
}

TEST(Parser, AnUnclosedValueStopsAtTheEndOfTheText)
{
    for (const char* pszText :
         {"<a v='x", "<a v='", "<a v='x\"/>", "<a u='1' v=\"&lt;", "<a v='&"}) {
        const CParsed parsed(pszText);
        // Reported as the attribute's own failure or as the start tag's.
        EXPECT_TRUE(parsed.Code() == XML_ERR_ATTR || parsed.Code() == XML_ERR_START_TAG) << pszText;
        EXPECT_EQ(nullptr, XmlGetAttr(parsed.Context(), "v")) << pszText;
    }
}

TEST(Parser, LinesAndColumnsAreCounted)
{
    const struct {
        const char* pszText;
        int nLine;
        int nColumn;
    } rows[] = {
        {"\n \n\t<a", 2, 4}, // a line feed leaves the column
        {"  \r\n <a", 1, 3}, // a carriage return clears it
        {"<abc", 0, 4},      {"<a b=", 0, 5},          {"<a b='", 0, 6},
        {"<a>", 0, 3},       {"\n\n<a>\n<b>\n", 4, 6},
    };
    for (const auto& row : rows) {
        const CParsed parsed(row.pszText);
        EXPECT_NE(0, parsed.Code()) << row.pszText; // it stops there
        EXPECT_EQ(row.nLine, parsed->nLine) << row.pszText;
        EXPECT_EQ(row.nColumn, parsed->nColumn) << row.pszText;
    }
}

TEST(Parser, TheCountersBeginAnewWithEachText)
{
    XmlContext* pXml = XmlCreate();
    char szFirst[] = "\n\n   <a";
    char szSecond[] = "\n <";
    EXPECT_EQ(1, XmlParseText(pXml, szFirst));
    EXPECT_EQ(2, pXml->nLine);
    EXPECT_EQ(5, pXml->nColumn);
    EXPECT_EQ(0, XmlParseText(pXml, szSecond));
    EXPECT_EQ(1, pXml->nLine);
    EXPECT_LE(pXml->nColumn, 2);
    XmlDestroy(pXml);
}

TEST(Parser, OffsetsTellWhereThingsStand)
{
    const CParsed parsed("<!-- -->\n<a xy='1'  z='2'>\n  text<b/></a>");
    //                    0         9  12      20    26  29
    EXPECT_EQ(9U, parsed->pRoot->nOffset);
    EXPECT_EQ(12U, parsed->pRoot->pAttrs->pHead->nNameOffset);
    EXPECT_EQ(20U, parsed->pRoot->pAttrs->pTail->nNameOffset);
    EXPECT_EQ(29U, parsed->pRoot->nTextOffset);
    EXPECT_EQ(33U, parsed->pRoot->pFirstChild->nOffset);
}

TEST(Parser, AListenerHearsWhatIsPassedOver)
{
    struct Heard {
        std::string all;
        static void Notice(void* pUser, XmlNotice nNotice, std::size_t, const char*)
        {
            static_cast<Heard*>(pUser)->all += std::to_string(nNotice) + ";";
        }
    };
    const struct {
        const char* pszText;
        int nNotice; // -1: nothing to hear of
    } rows[] = {
        {"<a x='1'>t<b/></a>", -1},
        {"<a x=1/>", XML_NOTICE_ATTR_UNQUOTED},
        {"<a x=''/>", XML_NOTICE_ATTR_EMPTY},
        {"<a x='1' x='2'/>", XML_NOTICE_ATTR_REPEATED},
        {"<a>x<b/>y</a>", XML_NOTICE_TEXT_REPLACED},
        {"<a/><b/>", XML_NOTICE_SECOND_ROOT},
        {"<a/>junk", XML_NOTICE_TRAILING_TEXT},
        {"<a/><!-- x", XML_NOTICE_UNCLOSED},
        {"<a/><!x", XML_NOTICE_UNCLOSED},
    };
    for (const auto& row : rows) {
        Heard heard;
        const XmlObserver observer{Heard::Notice, &heard};
        XmlContext* pXml = XmlCreate();
        pXml->pObserver = &observer;
        CFencedText text(row.pszText);
        EXPECT_EQ(0, XmlParseText(pXml, text.Text())) << row.pszText;
        EXPECT_EQ(row.nNotice < 0 ? "" : std::to_string(row.nNotice) + ";", heard.all)
            << row.pszText;
        XmlDestroy(pXml);
    }
}

TEST(Parser, ADocumentCutAtAnyByteEndsByTheRule)
{
    constexpr int IN_VALUE = -2; // the attribute's failure, or the start tag's
    const struct {
        const char* pszPiece;
        int nCode; // of a text that ends after any byte of the piece
    } pieces[] = {
        {"\r\n<?xml versio", 0},
        {"n = \"1.0", 14},
        {"\" encodin", 0},
        {"g='gb&amp;", 14},
        {"'?>\r\n<!-- c & d", 0},
        {" --><!DOCTYPE a>", 0},
        {"<", 0},
        {"root", 17},
        {" ", 18},
        {"x = ", 16},
        {"'v&#x4", IN_VALUE},
        {"1;>", IN_VALUE},
        {"' ", 18},
        {"u=", 16},
        {"12 ", 18},
        {"y=", 16},
        {"\"", IN_VALUE},
        {"\"", 18},
        {">", 21},
        {" text &lt; &am", 21},
        {"<!-- - c ---->", 21},
        {"<", 21},
        {"b:", 17},
        {" ", 18},
        {"/", 19},
        {">\n", 21},
        {"< ", 21},
        {"c", 17},
        {">t<", 21},
        {"/c", 20},
        {">", 21},
        {"<!pi>t", 21},
        {"<?xml ?>", 21},
        {"<", 21},
        {"/root", 20},
        {">\r\n", 0},
        {"<!-- end -->", 0},
        {"<", 0},
        {"second", 17},
        {"/", 19},
        {"> <", 0},
        {"/stray> junk", 0},
    };
    std::string text;
    for (const auto& piece : pieces)
        for (const char* p = piece.pszPiece; *p; ++p) {
            text += *p;
            const CParsed parsed(text);
            if (piece.nCode == IN_VALUE)
                EXPECT_TRUE(parsed.Code() == 14 || parsed.Code() == 16) << text;
            else
                EXPECT_EQ(piece.nCode, parsed.Code()) << text;
        }
    EXPECT_EQ("root[x=v\x01>]{t}(b: c{t} second)", CParsed(text).Tree());
}

TEST(Parser, TextsOfRandomMarkupNeverReadBeyondTheirEnd)
{
    static const char* const WORDS[] = {"<",    ">",    "/",    "</",      "/>", "<a",
                                        "<b>",  "</b>", "=",    "'",       "\"", " ",
                                        "\r\n", "<!--", "-->",  "<?xml",   "?>", "&#x4",
                                        "&lt;", ";",    "text", "version", "<!", "\xB0"};
    std::mt19937 random(4711);
    int nGood = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string text = random() % 2 ? "<a>" : "";
        for (auto n = random() % 14; n; --n) text += WORDS[random() % std::size(WORDS)];
        if (text.empty()) continue;
        const CParsed parsed(text);
        const int nCode = parsed.Code();
        ASSERT_TRUE(nCode == 0 || (nCode >= 14 && nCode <= 21)) << text << ": " << nCode;
        nGood += nCode == 0;
    }
    EXPECT_GT(nGood, 100); // both endings came up
    EXPECT_LT(nGood, 19000);
}

TEST(Parser, ElementsNest512LevelsBelowTheRootAndNoDeeper)
{
    for (const int nLevels : {512, 513, 100000}) {
        std::string text = "<r>";
        for (int i = 0; i < nLevels; ++i) text += "<a>";
        for (int i = 0; i < nLevels; ++i) text += "</a>";
        const CParsed parsed(text + "</r>");
        EXPECT_EQ(nLevels > 512 ? XML_ERR_MEMORY : 0, parsed.Code()) << nLevels;
        int nBelow = 0;
        for (const XmlNode* p = parsed->pRoot->pFirstChild; p; p = p->pFirstChild) ++nBelow;
        EXPECT_EQ(512, nBelow) << nLevels;
    }
}

TEST(Parser, DeepTopLevelElementsCountFromTheRoot)
{
    std::string text = "<r/>"; // the element after it is already one level below
    for (int i = 0; i < 513; ++i) text += "<a>";
    for (int i = 0; i < 513; ++i) text += "</a>";
    EXPECT_EQ(XML_ERR_MEMORY, CParsed(text).Code());
    text = text.substr(0, 4 + 512 * 3) + text.substr(4 + 513 * 3 + 4);
    EXPECT_EQ(0, CParsed(text).Code());
}

TEST(Parser, ManySiblingsAndAttributesAreAllKept)
{
    constexpr int MANY = 200000;
    std::string text = "<r";
    for (int i = 0; i < MANY; ++i)
        text += " a" + std::to_string(i) + "='" + std::to_string(i) + "'";
    text += ">";
    for (int i = 0; i < MANY; ++i) text += "<c/>";
    const CParsed parsed(text + "</r>");
    ASSERT_EQ(0, parsed.Code());
    XmlContext* pXml = parsed.Context();
    EXPECT_EQ(MANY, XmlAttrCount(pXml));
    EXPECT_STREQ("199999", XmlGetAttr(pXml, "a199999"));
    EXPECT_STREQ("77777", XmlGetAttr(pXml, "a77777"));
    EXPECT_STREQ("a0", parsed->pRoot->pAttrs->pHead->pszName);
    int nChildren = 0;
    for (const XmlNode* p = parsed->pRoot->pFirstChild; p; p = p->pNext) ++nChildren;
    EXPECT_EQ(MANY, nChildren);
}

TEST(Parser, ManyRunsOfTextCommentsAndEntitiesAreReadInOneGo)
{
    std::string text = "<r>";
    for (int i = 0; i < 100000; ++i) text += "x&lt;<!-- --><?p?>";
    const std::string entities(50000, '&');
    EXPECT_EQ("r{" + entities + "}", CParsed(text + entities + "</r>").Tree());
}
