// The XML tree and its cursor: each operation with its success, each of its error codes, and what a
// failure must leave alone. The code is xml/XmlTree.cpp; failing memory is in XmlFileTests.cpp.
#include "xml/XmlTree.h"

#include "tests/support/XmlDump.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace {

std::string Numbered(const char* pszName, int n)
{
    return std::string(pszName).append(std::to_string(n));
}

// Whether every link has its counterpart: what a dump, which only walks forward, cannot see.
bool IsLinked(const XmlNode* pNode)
{
    const XmlNode* pPrev = nullptr;
    for (const XmlNode* p = pNode->pFirstChild; p; pPrev = p, p = p->pNext)
        if (p->pParent != pNode || p->pPrev != pPrev || !IsLinked(p)) return false;
    return pNode->pLastChild == pPrev;
}

constexpr int32_t STALE = 99; // stands in the error code before a call, to see whether it is reset

class XmlTree : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_pXml = XmlCreate();
        ASSERT_NE(nullptr, m_pXml);
        ASSERT_EQ(0, XmlSetNameZ(m_pXml, "root"));
    }
    void TearDown() override
    {
        if (m_pXml->pRoot) {
            EXPECT_TRUE(IsLinked(m_pXml->pRoot));
        }
        EXPECT_EQ(0, XmlDestroy(m_pXml));
    }

    // root(one{first} two Two(leaf) one): two of a name, and two names that differ in letter case.
    void Plant()
    {
        XmlAddChildZ(m_pXml, "one", "first");
        XmlAddChildZ(m_pXml, "two", nullptr);
        XmlAddChildZ(m_pXml, "Two", nullptr);
        XmlAddChildZ(m_pXml, "one", nullptr);
        XmlGoChildNamed(m_pXml, "Two");
        XmlAddChildZ(m_pXml, "leaf", nullptr);
        XmlGoRoot(m_pXml);
        ASSERT_EQ("root(one{first} two Two(leaf) one)", Dump(m_pXml->pRoot));
    }
    void GoTo(int nChild)
    {
        ASSERT_EQ(0, XmlGoRoot(m_pXml));
        ASSERT_EQ(0, XmlGoFirstChild(m_pXml));
        while (nChild--) ASSERT_EQ(0, XmlGoNextSibling(m_pXml));
    }
    [[nodiscard]] std::string Tree() const { return Dump(m_pXml->pRoot); }
    [[nodiscard]] std::string Here() const { return Dump(m_pXml->pCursor); }

    XmlContext* m_pXml{};
};

struct Call {
    const char* pszWhat;
    std::function<int(XmlContext*)> run; // 1: it failed
    int32_t nCode;
};

template <class T>
int IsNull(T* p)
{
    return p == nullptr;
}

} // namespace

TEST(XmlContextLife, ANewContextHoldsAnUnnamedRootUnderTheCursor)
{
    XmlContext* pXml = XmlCreate();
    ASSERT_NE(nullptr, pXml);
    ASSERT_NE(nullptr, pXml->pRoot);
    EXPECT_EQ(pXml->pRoot, pXml->pCursor);
    EXPECT_EQ("?", Dump(pXml->pRoot));
    EXPECT_EQ(nullptr, pXml->pRoot->pParent);
    EXPECT_EQ(0, pXml->nDepth);
    EXPECT_EQ(0, pXml->nLastError);
    EXPECT_FALSE(pXml->bDeclSeen);
    EXPECT_FALSE(pXml->bRootSeen);
    EXPECT_EQ(nullptr, pXml->pszVersion);
    EXPECT_EQ(nullptr, pXml->pszEncoding);
    EXPECT_EQ(nullptr, pXml->pszStandalone);
    EXPECT_EQ(1, XmlIsAtRoot(pXml));
    EXPECT_EQ(-1, XmlAttrCount(pXml));
    EXPECT_EQ(0, XmlDestroy(pXml));
}

TEST(XmlContextLife, NothingToDestroyIsAFailure)
{
    EXPECT_EQ(1, XmlDestroy(nullptr));
    EXPECT_EQ(1, XmlReset(nullptr));
    XmlContext* pNone = nullptr;
    EXPECT_EQ(1, XmlReset(&pNone));
    EXPECT_EQ(nullptr, pNone);
}

TEST(XmlContextLife, ResetLeavesAFreshContextInTheHandle)
{
    XmlContext* pXml = XmlCreate();
    char szText[] = "<?xml version='1.0' encoding='gb2312'?><a x='1'><b/></a>";
    ASSERT_EQ(0, XmlParseText(pXml, szText));
    ASSERT_EQ("a[x=1](b)", Dump(pXml->pRoot));
    ASSERT_EQ(0, XmlReset(&pXml));
    ASSERT_NE(nullptr, pXml);
    EXPECT_EQ("?", Dump(pXml->pRoot));
    EXPECT_EQ(pXml->pRoot, pXml->pCursor);
    EXPECT_EQ(nullptr, pXml->pszVersion);
    EXPECT_FALSE(pXml->bRootSeen);
    XmlDestroy(pXml);
}

TEST(XmlContextLife, EveryOperationRefusesANullContext)
{
    const Call calls[] = {
        {"GoRoot", XmlGoRoot, 0},
        {"IsAtRoot", [](XmlContext* p) { return !XmlIsAtRoot(p); }, 0},
        {"HasChildren", [](XmlContext* p) { return !XmlHasChildren(p); }, 0},
        {"GoFirstChild", XmlGoFirstChild, 0},
        {"GoLastChild", XmlGoLastChild, 0},
        {"GoChildNamed", [](XmlContext* p) { return XmlGoChildNamed(p, "a"); }, 0},
        {"GoNextSibling", XmlGoNextSibling, 0},
        {"GoPrevSibling", XmlGoPrevSibling, 0},
        {"GoLastSibling", XmlGoLastSibling, 0},
        {"GoNextNamed", [](XmlContext* p) { return XmlGoNextNamed(p, "a"); }, 0},
        {"GoPrevNamed", [](XmlContext* p) { return XmlGoPrevNamed(p, "a"); }, 0},
        {"GoParent", XmlGoParent, 0},
        {"AddChild", [](XmlContext* p) { return XmlAddChildZ(p, "a", "t"); }, 0},
        {"SetText", [](XmlContext* p) { return XmlSetTextZ(p, "a"); }, 0},
        {"SetName", [](XmlContext* p) { return XmlSetNameZ(p, "a"); }, 0},
        {"GetName", [](XmlContext* p) { return IsNull(XmlGetName(p)); }, 0},
        {"GetText", [](XmlContext* p) { return IsNull(XmlGetText(p)); }, 0},
        {"DeleteNode", XmlDeleteNode, 0},
        {"SetAttr", [](XmlContext* p) { return XmlSetAttrZ(p, "a", "v"); }, 0},
        {"AttrCount", [](XmlContext* p) { return XmlAttrCount(p) < 0 ? 1 : 0; }, 0},
        {"GetAttr", [](XmlContext* p) { return IsNull(XmlGetAttr(p, "a")); }, 0},
        {"AttrNameAt", [](XmlContext* p) { return IsNull(XmlAttrNameAt(p, 0)); }, 0},
        {"AttrValueAt", [](XmlContext* p) { return IsNull(XmlAttrValueAt(p, 0)); }, 0},
        {"DeleteAttr", [](XmlContext* p) { return XmlDeleteAttr(p, "a"); }, 0},
    };
    for (const Call& call : calls) EXPECT_EQ(1, call.run(nullptr)) << call.pszWhat;
}

TEST(XmlContextLife, ATreeNestedFarBeyondAFilesDepthByCallsIsWrittenAndFreed)
{
    constexpr std::size_t LEVELS = 300000; // a call for each level would need more than the stack
    XmlContext* pXml = XmlCreate();
    ASSERT_EQ(0, XmlSetNameZ(pXml, "a"));
    for (std::size_t i = 1; i < LEVELS; ++i) {
        ASSERT_EQ(0, XmlAddChildZ(pXml, "a", nullptr));
        ASSERT_EQ(0, XmlGoFirstChild(pXml));
    }
    EXPECT_EQ(static_cast<int32_t>(LEVELS) - 1, pXml->nDepth);
    // "<?xml ?>", then "<a>" and "</a>" for each level but the last, which is "<a/>".
    EXPECT_EQ(10 + (LEVELS - 1) * (5 + 6) + 6, XmlSerialize(pXml, nullptr));
    ASSERT_EQ(0, XmlGoFirstChild(pXml));
    ASSERT_EQ(0, XmlDeleteNode(pXml));
    EXPECT_EQ("a", Dump(pXml->pRoot));
    EXPECT_EQ(0, XmlDestroy(pXml));
}

TEST_F(XmlTree, ChildrenAreAppendedInOrderAndTheCursorStays)
{
    ASSERT_EQ(0, XmlAddChildZ(m_pXml, "a", nullptr));
    ASSERT_EQ(0, XmlAddChildZ(m_pXml, "b", "text"));
    ASSERT_EQ(0, XmlAddChild(m_pXml, "cut here", 3, "text too long", 8));
    EXPECT_EQ("root(a b{text} cut{text too})", Tree());
    EXPECT_EQ(m_pXml->pRoot, m_pXml->pCursor);
    EXPECT_EQ(0, m_pXml->nDepth);
    EXPECT_EQ(0, m_pXml->nLastError);
}

TEST_F(XmlTree, AChildHasTextOnlyWhenPointerAndLengthAreBothGiven)
{
    ASSERT_EQ(0, XmlAddChild(m_pXml, "a", 1, nullptr, 7));
    ASSERT_EQ(0, XmlAddChild(m_pXml, "b", 1, "text", 0));
    ASSERT_EQ(0, XmlAddChildZ(m_pXml, "c", ""));
    EXPECT_EQ("root(a b c)", Tree());
}

TEST_F(XmlTree, MovesKeepTheDepth)
{
    Plant();
    ASSERT_EQ(0, XmlGoFirstChild(m_pXml));
    EXPECT_EQ("one{first}", Here());
    EXPECT_EQ(1, m_pXml->nDepth);
    EXPECT_EQ(0, XmlIsAtRoot(m_pXml));
    ASSERT_EQ(0, XmlGoNextSibling(m_pXml));
    EXPECT_EQ("two", Here());
    ASSERT_EQ(0, XmlGoNextSibling(m_pXml));
    EXPECT_EQ("Two(leaf)", Here());
    EXPECT_EQ(1, m_pXml->nDepth);
    ASSERT_EQ(0, XmlGoLastChild(m_pXml));
    EXPECT_EQ("leaf", Here());
    EXPECT_EQ(2, m_pXml->nDepth);
    ASSERT_EQ(0, XmlGoParent(m_pXml));
    EXPECT_EQ("Two(leaf)", Here());
    EXPECT_EQ(1, m_pXml->nDepth);
    ASSERT_EQ(0, XmlGoPrevSibling(m_pXml));
    EXPECT_EQ("two", Here());
    EXPECT_EQ(1, m_pXml->nDepth);
    ASSERT_EQ(0, XmlGoRoot(m_pXml));
    EXPECT_EQ(m_pXml->pRoot, m_pXml->pCursor);
    EXPECT_EQ(0, m_pXml->nDepth);
    EXPECT_EQ(1, XmlIsAtRoot(m_pXml));
    ASSERT_EQ(0, XmlGoLastChild(m_pXml));
    EXPECT_EQ("one", Here());
    EXPECT_EQ(1, m_pXml->nDepth);
}

TEST_F(XmlTree, GoRootFromBelowClearsTheDepth)
{
    Plant();
    ASSERT_EQ(0, XmlGoChildNamed(m_pXml, "Two"));
    ASSERT_EQ(0, XmlGoFirstChild(m_pXml));
    ASSERT_EQ(2, m_pXml->nDepth);
    ASSERT_EQ(0, XmlGoRoot(m_pXml));
    EXPECT_EQ("root", std::string(XmlGetName(m_pXml)));
    EXPECT_EQ(0, m_pXml->nDepth);
}

TEST_F(XmlTree, GoParentOnTheRootSucceedsAndLeavesTheDepth)
{
    m_pXml->nDepth = 3; // no move may touch it
    EXPECT_EQ(0, XmlGoParent(m_pXml));
    EXPECT_EQ(0, m_pXml->nLastError);
    EXPECT_EQ(m_pXml->pRoot, m_pXml->pCursor);
    EXPECT_EQ(3, m_pXml->nDepth);
}

TEST_F(XmlTree, GoParentThatEndsOnNothingIsError11)
{
    XmlNode lost{}; // neither the root nor anybody's child
    m_pXml->pCursor = &lost;
    EXPECT_EQ(1, XmlGoParent(m_pXml));
    EXPECT_EQ(XML_ERR_NO_PARENT, m_pXml->nLastError);
    XmlGoRoot(m_pXml);
}

TEST_F(XmlTree, GoLastSiblingWalksToTheEndAndStaysThere)
{
    Plant();
    GoTo(1);
    ASSERT_EQ(0, XmlGoLastSibling(m_pXml));
    const XmlNode* pLast = m_pXml->pCursor;
    EXPECT_EQ(m_pXml->pRoot->pLastChild, pLast);
    EXPECT_EQ(0, XmlGoLastSibling(m_pXml)); // on the last child: no move, no failure
    EXPECT_EQ(pLast, m_pXml->pCursor);
    EXPECT_EQ(1, m_pXml->nDepth);
    EXPECT_EQ(0, m_pXml->nLastError);
}

TEST_F(XmlTree, ANamedChildIsTheFirstOfExactlyThatName)
{
    Plant();
    ASSERT_EQ(0, XmlGoChildNamed(m_pXml, "one"));
    EXPECT_EQ("one{first}", Here());
    EXPECT_EQ(1, m_pXml->nDepth);
    GoTo(0);
    ASSERT_EQ(0, XmlGoParent(m_pXml));
    ASSERT_EQ(0, XmlGoChildNamed(m_pXml, "Two"));
    EXPECT_EQ("Two(leaf)", Here());
}

TEST_F(XmlTree, NamedSiblingsAreSearchedFromTheNextOneOnward)
{
    Plant();
    GoTo(0);
    ASSERT_EQ(0, XmlGoNextNamed(m_pXml, "one")); // not the one it stands on
    EXPECT_EQ("one", Here());
    EXPECT_EQ(m_pXml->pRoot->pLastChild, m_pXml->pCursor);
    ASSERT_EQ(0, XmlGoPrevNamed(m_pXml, "two"));
    EXPECT_EQ("two", Here());
    ASSERT_EQ(0, XmlGoNextNamed(m_pXml, "one"));
    ASSERT_EQ(0, XmlGoPrevNamed(m_pXml, "one"));
    EXPECT_EQ("one{first}", Here());
    EXPECT_EQ(1, m_pXml->nDepth);
}

TEST_F(XmlTree, TextAndNameAreReplaced)
{
    EXPECT_EQ(nullptr, XmlGetText(m_pXml));
    ASSERT_EQ(0, XmlSetTextZ(m_pXml, "a text"));
    EXPECT_STREQ("a text", XmlGetText(m_pXml));
    ASSERT_EQ(0, XmlSetText(m_pXml, "another one", 7));
    EXPECT_STREQ("another", XmlGetText(m_pXml));
    ASSERT_EQ(0, XmlSetName(m_pXml, "trunk and more", 5));
    EXPECT_STREQ("trunk", XmlGetName(m_pXml));
    ASSERT_EQ(0, XmlSetNameZ(m_pXml, "stem"));
    EXPECT_EQ("stem{another}", Tree());
}

TEST_F(XmlTree, NoTextOrNoLengthTakesTheTextAway)
{
    const Call calls[] = {
        {"null", [](XmlContext* p) { return XmlSetText(p, nullptr, 5); }, 0},
        {"zero length", [](XmlContext* p) { return XmlSetText(p, "text", 0); }, 0},
        {"null Z", [](XmlContext* p) { return XmlSetTextZ(p, nullptr); }, 0},
        {"empty Z", [](XmlContext* p) { return XmlSetTextZ(p, ""); }, 0},
    };
    for (const Call& call : calls) {
        ASSERT_EQ(0, XmlSetTextZ(m_pXml, "old"));
        EXPECT_EQ(0, call.run(m_pXml)) << call.pszWhat;
        EXPECT_EQ(nullptr, XmlGetText(m_pXml)) << call.pszWhat;
        EXPECT_EQ("root", Tree()) << call.pszWhat;
    }
}

TEST_F(XmlTree, ARefusedNameDoesNotTouchTheErrorCode)
{
    const Call calls[] = {
        {"null", [](XmlContext* p) { return XmlSetName(p, nullptr, 3); }, 0},
        {"zero length", [](XmlContext* p) { return XmlSetName(p, "abc", 0); }, 0},
        {"null Z", [](XmlContext* p) { return XmlSetNameZ(p, nullptr); }, 0},
        {"empty Z", [](XmlContext* p) { return XmlSetNameZ(p, ""); }, 0},
    };
    for (const Call& call : calls) {
        m_pXml->nLastError = STALE;
        EXPECT_EQ(1, call.run(m_pXml)) << call.pszWhat;
        EXPECT_EQ(STALE, m_pXml->nLastError) << call.pszWhat;
        EXPECT_EQ("root", Tree()) << call.pszWhat;
    }
}

TEST_F(XmlTree, AttributesKeepTheOrderOfTheirFirstSetting)
{
    ASSERT_EQ(0, XmlSetAttrZ(m_pXml, "b", "1"));
    ASSERT_EQ(0, XmlSetAttr(m_pXml, "a and", 1, "two and", 3));
    ASSERT_EQ(0, XmlSetAttrZ(m_pXml, "B", "3"));
    EXPECT_EQ("root[b=1][a=two][B=3]", Tree());
    ASSERT_EQ(0, XmlSetAttrZ(m_pXml, "b", "new")); // keeps its place
    EXPECT_EQ("root[b=new][a=two][B=3]", Tree());
    EXPECT_EQ(3, XmlAttrCount(m_pXml));
    EXPECT_STREQ("new", XmlGetAttr(m_pXml, "b"));
    EXPECT_STREQ("3", XmlGetAttr(m_pXml, "B"));
    EXPECT_STREQ("b", XmlAttrNameAt(m_pXml, 0));
    EXPECT_STREQ("a", XmlAttrNameAt(m_pXml, 1));
    EXPECT_STREQ("B", XmlAttrNameAt(m_pXml, 2));
    EXPECT_STREQ("two", XmlAttrValueAt(m_pXml, 1));
}

TEST_F(XmlTree, DeletingAnAttributeClosesTheGap)
{
    for (const char* pszName : {"a", "b", "c", "d"}) XmlSetAttrZ(m_pXml, pszName, "v");
    ASSERT_EQ(0, XmlDeleteAttr(m_pXml, "b"));
    EXPECT_EQ("root[a=v][c=v][d=v]", Tree());
    ASSERT_EQ(0, XmlDeleteAttr(m_pXml, "d"));
    ASSERT_EQ(0, XmlSetAttrZ(m_pXml, "e", "w")); // behind the new last one
    EXPECT_EQ("root[a=v][c=v][e=w]", Tree());
    ASSERT_EQ(0, XmlDeleteAttr(m_pXml, "a"));
    EXPECT_EQ("root[c=v][e=w]", Tree());
    EXPECT_EQ(2, XmlAttrCount(m_pXml));
    EXPECT_EQ(nullptr, XmlGetAttr(m_pXml, "a"));
}

TEST_F(XmlTree, NeverHadAttributesCountsMinusOneAndAllDeletedCountsZero)
{
    EXPECT_EQ(-1, XmlAttrCount(m_pXml));
    ASSERT_EQ(0, XmlSetAttrZ(m_pXml, "a", "v"));
    EXPECT_EQ(1, XmlAttrCount(m_pXml));
    ASSERT_EQ(0, XmlDeleteAttr(m_pXml, "a"));
    EXPECT_EQ(0, XmlAttrCount(m_pXml));
    ASSERT_NE(nullptr, m_pXml->pRoot->pAttrs); // the list stays
    EXPECT_EQ(nullptr, m_pXml->pRoot->pAttrs->pHead);
    ASSERT_EQ(0, XmlSetAttrZ(m_pXml, "b", "w"));
    EXPECT_EQ("root[b=w]", Tree());
}

TEST_F(XmlTree, AnAttributeNeverHoldsAnEmptyValue)
{
    EXPECT_EQ(1, XmlSetAttrZ(m_pXml, "a", ""));
    EXPECT_EQ(XML_ERR_ARGUMENT, m_pXml->nLastError);
    EXPECT_EQ(-1, XmlAttrCount(m_pXml)); // not even a list
    ASSERT_EQ(0, XmlSetAttrZ(m_pXml, "a", "kept"));
    EXPECT_EQ(1, XmlSetAttrZ(m_pXml, "a", ""));
    EXPECT_EQ("root[a=kept]", Tree());
}

TEST_F(XmlTree, ManyAttributesAreFoundReplacedAndDeletedLikeAFew)
{
    constexpr int COUNT = 3000; // far beyond what is searched one by one
    std::string expected = "root";
    for (int i = 0; i < COUNT; ++i)
        ASSERT_EQ(0, XmlSetAttrZ(m_pXml, (Numbered("n", i)).c_str(), "old"));
    for (int i = 0; i < COUNT; i += 3)
        ASSERT_EQ(0, XmlSetAttrZ(m_pXml, (Numbered("n", i)).c_str(), "new"));
    for (int i = 1; i < COUNT; i += 3)
        ASSERT_EQ(0, XmlDeleteAttr(m_pXml, (Numbered("n", i)).c_str()));
    for (int i = 0; i < COUNT; ++i) {
        const std::string name = Numbered("n", i);
        const char* pszValue = i % 3 == 0 ? "new" : i % 3 == 1 ? nullptr : "old";
        ASSERT_STREQ(pszValue, XmlGetAttr(m_pXml, name.c_str())) << name;
        if (pszValue) expected.append("[").append(name).append("=").append(pszValue).append("]");
    }
    EXPECT_EQ(COUNT - COUNT / 3, XmlAttrCount(m_pXml));
    EXPECT_EQ(expected, Tree());
}

// What is found by a number made of the name is told apart by the name: the two names of each pair
// have the same 32-bit number (FNV-1a).
TEST_F(XmlTree, AttributesThatFollowADeletionOfManyAreFoundToo)
{
    const auto name = [](int n) { return "n" + std::to_string(n); };
    for (int n = 0; n < 33; ++n) ASSERT_EQ(0, XmlSetAttrZ(m_pXml, name(n).c_str(), "1"));
    for (int n = 0; n < 5; ++n) ASSERT_EQ(0, XmlDeleteAttr(m_pXml, name(n).c_str()));
    ASSERT_EQ(0, XmlSetAttrZ(m_pXml, "zz", "1"));
    EXPECT_STREQ("1", XmlGetAttr(m_pXml, "zz"));
    ASSERT_EQ(0, XmlSetAttrZ(m_pXml, "zz", "2"));
    EXPECT_STREQ("2", XmlGetAttr(m_pXml, "zz"));
    EXPECT_EQ(29, XmlAttrCount(m_pXml));
    EXPECT_EQ(0, XmlDeleteAttr(m_pXml, "zz"));
    EXPECT_EQ(28, XmlAttrCount(m_pXml));
}

TEST_F(XmlTree, NamesOfOneHashNumberAreDifferentAttributes)
{
    const char* const pairs[][2] = {
        {"costarring", "liquid"}, {"declinate", "macallums"}, {"altarage", "zinke"}};
    const auto number = [](const std::string& name) {
        uint32_t n = 2166136261U;
        for (const char c : name) n = (n ^ static_cast<unsigned char>(c)) * 16777619U;
        return n;
    };
    for (int i = 0; i < 100; ++i)
        ASSERT_EQ(0, XmlSetAttrZ(m_pXml, (Numbered("n", i)).c_str(), "v"));
    for (const auto& pair : pairs) {
        SCOPED_TRACE(pair[0]);
        ASSERT_EQ(number(pair[0]), number(pair[1]));
        ASSERT_EQ(0, XmlSetAttrZ(m_pXml, pair[0], "first"));
        EXPECT_EQ(nullptr, XmlGetAttr(m_pXml, pair[1]));
        ASSERT_EQ(0, XmlSetAttrZ(m_pXml, pair[1], "second"));
        EXPECT_STREQ("first", XmlGetAttr(m_pXml, pair[0]));
        EXPECT_STREQ("second", XmlGetAttr(m_pXml, pair[1]));
        ASSERT_EQ(0, XmlDeleteAttr(m_pXml, pair[0]));
        EXPECT_EQ(nullptr, XmlGetAttr(m_pXml, pair[0]));
        EXPECT_STREQ("second", XmlGetAttr(m_pXml, pair[1]));
    }
    EXPECT_EQ(103, XmlAttrCount(m_pXml));
}

TEST_F(XmlTree, DeletingANodeRelinksItsNeighboursAndMovesTheCursorUp)
{
    const struct {
        int nChild;
        const char* pszLeft;
    } cases[] = {{0, "root(two Two(leaf) one)"},
                 {2, "root(one{first} two one)"}, // with all inside it
                 {3, "root(one{first} two Two(leaf))"}};
    for (const auto& c : cases) {
        ASSERT_EQ(0, XmlReset(&m_pXml));
        ASSERT_EQ(0, XmlSetNameZ(m_pXml, "root"));
        Plant();
        GoTo(c.nChild);
        ASSERT_EQ(0, XmlDeleteNode(m_pXml));
        EXPECT_EQ(c.pszLeft, Tree());
        EXPECT_TRUE(IsLinked(m_pXml->pRoot)) << c.nChild;
        EXPECT_EQ(m_pXml->pRoot, m_pXml->pCursor);
        ASSERT_EQ(0, XmlAddChildZ(m_pXml, "new", nullptr)); // the last child is known again
        EXPECT_EQ("new", Dump(m_pXml->pRoot->pLastChild));
    }
}

TEST_F(XmlTree, DeletingTheOnlyChildLeavesTheParentWithoutOne)
{
    XmlAddChildZ(m_pXml, "only", nullptr);
    ASSERT_EQ(0, XmlGoFirstChild(m_pXml));
    ASSERT_EQ(0, XmlDeleteNode(m_pXml));
    EXPECT_EQ(nullptr, m_pXml->pRoot->pFirstChild);
    EXPECT_EQ(0, XmlHasChildren(m_pXml));
    EXPECT_EQ(XML_ERR_NO_RELATIVE, m_pXml->nLastError);
}

TEST_F(XmlTree, WhatDeletionDoesToTheDepthNeverRefusesAChildLater)
{
    for (int i = 0; i < 2 * XML_MAX_DEPTH; ++i) {
        ASSERT_EQ(0, XmlAddChildZ(m_pXml, "a", nullptr)) << "after " << i << " deletions";
        ASSERT_EQ(0, XmlGoFirstChild(m_pXml));
        ASSERT_EQ(0, XmlDeleteNode(m_pXml));
    }
    EXPECT_EQ("root", Tree());
}

TEST_F(XmlTree, EachFailureHasItsCodeAndLeavesTreeAndCursorAlone)
{
    Plant();
    GoTo(0);
    XmlSetAttrZ(m_pXml, "a", "1");
    XmlSetAttrZ(m_pXml, "b", "2");
    const struct {
        int nChild; // where the cursor stands: -1 the root, else a child of it
        Call call;
    } cases[] = {
        {-1, {"no name", [](XmlContext* p) { return XmlAddChild(p, nullptr, 1, "t", 1); }, 1}},
        {-1, {"name length 0", [](XmlContext* p) { return XmlAddChild(p, "a", 0, "t", 1); }, 1}},
        {-1, {"null Z name", [](XmlContext* p) { return XmlAddChildZ(p, nullptr, "t"); }, 1}},
        {-1, {"empty Z name", [](XmlContext* p) { return XmlAddChildZ(p, "", "t"); }, 1}},
        {1, {"no children", [](XmlContext* p) { return !XmlHasChildren(p); }, 9}},
        {1, {"no first child", XmlGoFirstChild, 9}},
        {1, {"no last child", XmlGoLastChild, 9}},
        {-1, {"child null", [](XmlContext* p) { return XmlGoChildNamed(p, nullptr); }, 1}},
        {1, {"child of none", [](XmlContext* p) { return XmlGoChildNamed(p, "one"); }, 9}},
        {-1, {"child unknown", [](XmlContext* p) { return XmlGoChildNamed(p, "four"); }, 10}},
        {-1, {"child other case", [](XmlContext* p) { return XmlGoChildNamed(p, "TWO"); }, 10}},
        {-1, {"child's beginning", [](XmlContext* p) { return XmlGoChildNamed(p, "on"); }, 10}},
        {3, {"no next", XmlGoNextSibling, 9}},
        {-1, {"root has no next", XmlGoNextSibling, 9}},
        {0, {"no previous", XmlGoPrevSibling, 9}},
        {0, {"next null", [](XmlContext* p) { return XmlGoNextNamed(p, nullptr); }, 1}},
        {3, {"next of last", [](XmlContext* p) { return XmlGoNextNamed(p, "one"); }, 10}},
        {2, {"next only itself", [](XmlContext* p) { return XmlGoNextNamed(p, "Two"); }, 10}},
        {0, {"next other case", [](XmlContext* p) { return XmlGoNextNamed(p, "ONE"); }, 10}},
        {3, {"previous null", [](XmlContext* p) { return XmlGoPrevNamed(p, nullptr); }, 1}},
        {0, {"previous of first", [](XmlContext* p) { return XmlGoPrevNamed(p, "one"); }, 10}},
        {3, {"previous other case", [](XmlContext* p) { return XmlGoPrevNamed(p, "tWO"); }, 10}},
        {0, {"attr no name", [](XmlContext* p) { return XmlSetAttr(p, nullptr, 1, "v", 1); }, 1}},
        {0, {"attr name length 0", [](XmlContext* p) { return XmlSetAttr(p, "a", 0, "v", 1); }, 1}},
        {0, {"attr no value", [](XmlContext* p) { return XmlSetAttr(p, "a", 1, nullptr, 1); }, 1}},
        {0, {"value length 0", [](XmlContext* p) { return XmlSetAttr(p, "a", 1, "v", 0); }, 1}},
        {0, {"null Z attr", [](XmlContext* p) { return XmlSetAttrZ(p, nullptr, "v"); }, 1}},
        {0, {"null Z value", [](XmlContext* p) { return XmlSetAttrZ(p, "a", nullptr); }, 1}},
        {0, {"empty Z attr", [](XmlContext* p) { return XmlSetAttrZ(p, "", "v"); }, 1}},
        {1, {"get, no list", [](XmlContext* p) { return IsNull(XmlGetAttr(p, "a")); }, 1}},
        {0, {"get null", [](XmlContext* p) { return IsNull(XmlGetAttr(p, nullptr)); }, 1}},
        {0, {"get unknown", [](XmlContext* p) { return IsNull(XmlGetAttr(p, "A")); }, 12}},
        {1, {"name, no list", [](XmlContext* p) { return IsNull(XmlAttrNameAt(p, 0)); }, 1}},
        {0, {"name at count", [](XmlContext* p) { return IsNull(XmlAttrNameAt(p, 2)); }, 1}},
        {0, {"name past count", [](XmlContext* p) { return IsNull(XmlAttrNameAt(p, 3)); }, 1}},
        {0, {"name at -1", [](XmlContext* p) { return IsNull(XmlAttrNameAt(p, -1)); }, 1}},
        {1, {"value, no list", [](XmlContext* p) { return IsNull(XmlAttrValueAt(p, 0)); }, 1}},
        {0, {"value at count", [](XmlContext* p) { return IsNull(XmlAttrValueAt(p, 2)); }, 1}},
        {0, {"value past", [](XmlContext* p) { return IsNull(XmlAttrValueAt(p, INT32_MAX)); }, 1}},
        {0, {"value at -1", [](XmlContext* p) { return IsNull(XmlAttrValueAt(p, -1)); }, 1}},
        {1, {"delete, no list", [](XmlContext* p) { return XmlDeleteAttr(p, "a"); }, 1}},
        {0, {"delete null", [](XmlContext* p) { return XmlDeleteAttr(p, nullptr); }, 1}},
        {0, {"delete unknown", [](XmlContext* p) { return XmlDeleteAttr(p, "c"); }, 12}},
    };
    const std::string before = Tree();
    ASSERT_EQ("root(one[a=1][b=2]{first} two Two(leaf) one)", before);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.call.pszWhat);
        if (c.nChild < 0)
            XmlGoRoot(m_pXml);
        else
            GoTo(c.nChild);
        const XmlNode* pCursor = m_pXml->pCursor;
        const int32_t nDepth = m_pXml->nDepth;
        m_pXml->nLastError = STALE;
        EXPECT_EQ(1, c.call.run(m_pXml));
        EXPECT_EQ(c.call.nCode, m_pXml->nLastError);
        EXPECT_EQ(before, Tree());
        EXPECT_EQ(pCursor, m_pXml->pCursor);
        EXPECT_EQ(nDepth, m_pXml->nDepth);
    }
}

TEST_F(XmlTree, EachSuccessClearsTheErrorCode)
{
    Plant();
    const Call calls[] = {
        {"GoRoot", XmlGoRoot, 0},
        {"IsAtRoot", [](XmlContext* p) { return !XmlIsAtRoot(p); }, 0},
        {"HasChildren", [](XmlContext* p) { return !XmlHasChildren(p); }, 0},
        {"GoFirstChild", XmlGoFirstChild, 0},
        {"GoNextSibling", XmlGoNextSibling, 0},
        {"GoPrevSibling", XmlGoPrevSibling, 0},
        {"GoNextNamed", [](XmlContext* p) { return XmlGoNextNamed(p, "one"); }, 0},
        {"GoPrevNamed", [](XmlContext* p) { return XmlGoPrevNamed(p, "one"); }, 0},
        {"GoLastSibling", XmlGoLastSibling, 0},
        {"SetText", [](XmlContext* p) { return XmlSetTextZ(p, "t"); }, 0},
        {"GetText", [](XmlContext* p) { return IsNull(XmlGetText(p)); }, 0},
        {"SetName", [](XmlContext* p) { return XmlSetNameZ(p, "n"); }, 0},
        {"GetName", [](XmlContext* p) { return IsNull(XmlGetName(p)); }, 0},
        {"SetAttr", [](XmlContext* p) { return XmlSetAttrZ(p, "a", "v"); }, 0},
        {"AttrCount", [](XmlContext* p) { return XmlAttrCount(p) - 1; }, 0},
        {"GetAttr", [](XmlContext* p) { return IsNull(XmlGetAttr(p, "a")); }, 0},
        {"AttrNameAt", [](XmlContext* p) { return IsNull(XmlAttrNameAt(p, 0)); }, 0},
        {"AttrValueAt", [](XmlContext* p) { return IsNull(XmlAttrValueAt(p, 0)); }, 0},
        {"DeleteAttr", [](XmlContext* p) { return XmlDeleteAttr(p, "a"); }, 0},
        {"AddChild", [](XmlContext* p) { return XmlAddChildZ(p, "c", "t"); }, 0},
        {"GoLastChild", XmlGoLastChild, 0},
        {"DeleteNode", XmlDeleteNode, 0},
        {"GoParent", XmlGoParent, 0},
        {"GoChildNamed", [](XmlContext* p) { return XmlGoChildNamed(p, "two"); }, 0},
    };
    for (const Call& call : calls) {
        m_pXml->nLastError = STALE;
        EXPECT_EQ(0, call.run(m_pXml)) << call.pszWhat;
        EXPECT_EQ(0, m_pXml->nLastError) << call.pszWhat;
    }
    EXPECT_EQ("root(one{first} two Two(leaf) n{t})", Tree());
}

TEST_F(XmlTree, WithTheRootDeletedThereIsNothingUnderTheCursor)
{
    Plant();
    ASSERT_EQ(0, XmlDeleteNode(m_pXml));
    EXPECT_EQ(nullptr, m_pXml->pCursor);
    EXPECT_EQ(nullptr, m_pXml->pRoot);
    const Call calls[] = {
        {"GoRoot", XmlGoRoot, 1},
        {"IsAtRoot", [](XmlContext* p) { return !XmlIsAtRoot(p); }, 1},
        {"HasChildren", [](XmlContext* p) { return !XmlHasChildren(p); }, 1},
        {"AddChild", [](XmlContext* p) { return XmlAddChildZ(p, "a", "t"); }, 1},
        {"GetName", [](XmlContext* p) { return IsNull(XmlGetName(p)); }, 1},
        {"SetName", [](XmlContext* p) { return XmlSetNameZ(p, "a"); }, 1},
        {"SetText", [](XmlContext* p) { return XmlSetTextZ(p, "a"); }, 1},
        {"SetAttr", [](XmlContext* p) { return XmlSetAttrZ(p, "a", "v"); }, 1},
        {"GetAttr", [](XmlContext* p) { return IsNull(XmlGetAttr(p, "a")); }, 1},
        {"AttrNameAt", [](XmlContext* p) { return IsNull(XmlAttrNameAt(p, 0)); }, 1},
        {"DeleteAttr", [](XmlContext* p) { return XmlDeleteAttr(p, "a"); }, 1},
        {"DeleteNode", XmlDeleteNode, 1},
    };
    for (const Call& call : calls) {
        m_pXml->nLastError = STALE;
        EXPECT_EQ(1, call.run(m_pXml)) << call.pszWhat;
        EXPECT_EQ(call.nCode, m_pXml->nLastError) << call.pszWhat;
    }
    EXPECT_EQ(nullptr, XmlGetText(m_pXml));
    EXPECT_EQ(-1, XmlAttrCount(m_pXml));
}

TEST_F(XmlTree, AStringThatCannotBeAllocatedIsError1)
{
    constexpr std::size_t HUGE_LENGTHS[] = {SIZE_MAX / 2, SIZE_MAX}; // SIZE_MAX + 1 would wrap to 0
    for (const std::size_t nHuge : HUGE_LENGTHS) {
        ASSERT_EQ(0, XmlReset(&m_pXml));
        ASSERT_EQ(0, XmlSetNameZ(m_pXml, "root"));
        ASSERT_EQ(0, XmlSetAttrZ(m_pXml, "a", "1"));
        const Call calls[] = {
            {"name", [=](XmlContext* p) { return XmlAddChild(p, "n", nHuge, nullptr, 0); }, 1},
            {"child's text", [=](XmlContext* p) { return XmlAddChild(p, "n", 1, "t", nHuge); }, 1},
            {"new name", [=](XmlContext* p) { return XmlSetName(p, "n", nHuge); }, 1},
            {"old attr", [=](XmlContext* p) { return XmlSetAttr(p, "a", 1, "v", nHuge); }, 1},
            {"new attr", [=](XmlContext* p) { return XmlSetAttr(p, "b", 1, "v", nHuge); }, 1},
        };
        for (const Call& call : calls) {
            m_pXml->nLastError = STALE;
            EXPECT_EQ(1, call.run(m_pXml)) << call.pszWhat;
            EXPECT_EQ(call.nCode, m_pXml->nLastError) << call.pszWhat;
            EXPECT_EQ("root[a=1]", Tree()) << call.pszWhat;
        }
        ASSERT_EQ(0, XmlSetTextZ(m_pXml, "old"));
        EXPECT_EQ(1, XmlSetText(m_pXml, "t", nHuge));
        EXPECT_EQ(XML_ERR_ARGUMENT, m_pXml->nLastError);
        EXPECT_EQ("root[a=1]", Tree()); // the old text goes before the new one is taken
    }
}

TEST_F(XmlTree, AChildThatIsDroppedLeavesTheOneBeforeItAsTheLast)
{
    ASSERT_EQ(0, XmlAddChildZ(m_pXml, "one", nullptr));
    ASSERT_EQ(0, XmlAddChildZ(m_pXml, "two", nullptr));
    for (const char* pszLeft : {"root(one)", "root"}) {
        m_pXml->pCursor = m_pXml->pRoot->pLastChild;
        ++m_pXml->nDepth; // as the parser has it there
        XmlDropNode(m_pXml);
        EXPECT_EQ(m_pXml->pRoot, m_pXml->pCursor);
        EXPECT_EQ(pszLeft, Dump(m_pXml->pRoot));
        EXPECT_TRUE(IsLinked(m_pXml->pRoot));
    }
}

TEST(XmlNameKeys, DifferByLengthAndLettersAndAreZeroForNone)
{
    EXPECT_EQ(0U, XmlNameKey("", 0));
    EXPECT_EQ(0U, XmlNameKey("crd", 0));
    EXPECT_NE(XmlNameKey("crd", 2), XmlNameKey("crd", 3));
    EXPECT_NE(XmlNameKey("a", 1), XmlNameKey("b", 1));
}
