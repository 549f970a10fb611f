// The element tree as a host edits it: creating, walking, moving, copying and deleting,
// identifiers, records and rectangles, and every kind of handle that is to be refused.
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <set>
#include <string>
#include <vector>

namespace {

class Elements : public ::testing::Test {
protected:
    Elements() : m_h(CreateQELEngine())
    {
        EXPECT_EQ(1, QELNewFile(m_h));
        m_hRoot = QELGetRootElem(m_h);
    }
    ~Elements() override { EXPECT_EQ(1, DestroyQELEngine(m_h)); }

    HQELELEM Make(int nType, HQELELEM hParent = nullptr, HQELELEM hAfter = nullptr)
    {
        const HQELELEM hElem = QELCreateElem(m_h, nType, hParent, hAfter);
        EXPECT_NE(nullptr, hElem) << nType;
        return hElem;
    }
    HQELELEM MakeNamed(const char* pszId, int nType = QEL_TYPE_GROUP, HQELELEM hParent = nullptr)
    {
        const HQELELEM hElem = Make(nType, hParent);
        EXPECT_EQ(1, QELSetElemId(m_h, hElem, pszId));
        return hElem;
    }
    // "a(b c)d": the identifiers below an element, and the links back checked on the way.
    std::string Tree(HQELELEM hParent) const
    {
        std::string text;
        HQELELEM hPrev = nullptr;
        for (HQELELEM h = QELGetFirstChild(m_h, hParent); h; h = QELGetNextElem(m_h, h)) {
            EXPECT_EQ(hPrev, QELGetPrevElem(m_h, h));
            EXPECT_EQ(hParent, QELGetParentElem(m_h, h));
            if (hPrev) text += " ";
            text += QELGetElemId(m_h, h);
            const std::string inside = Tree(h);
            if (!inside.empty()) text += "(" + inside + ")";
            hPrev = h;
        }
        EXPECT_EQ(hPrev, QELGetLastChild(m_h, hParent));
        return text;
    }
    std::string Tree() const { return Tree(m_hRoot); }
    std::string Saved() const
    {
        const std::string path = m_folder.Path("saved.qel");
        EXPECT_EQ(1, QELSaveFile(m_h, path.c_str()));
        const std::string text = ReadBytes(path);
        return text.substr(text.find("<qel"), text.size() - 1 - text.find("<qel"));
    }
    // A block of solid red from 0,0 to 10,10 drawing units, as a record.
    static QELSHAPEATTR RedBlock(int nX = 0, int nY = 0)
    {
        QELSHAPEATTR attr{};
        attr.nSize = sizeof attr;
        attr.nStyle = QEL_STYLE_FILL;
        attr.clrB = RGB(255, 0, 0);
        attr.nGeometry[0] = nX;
        attr.nGeometry[1] = nY;
        attr.nGeometry[2] = nX + 10;
        attr.nGeometry[3] = nY + 10;
        return attr;
    }
    int RedPixels() const
    {
        CTestBitmap drawn(50, 50);
        const RECT rc = drawn.Box();
        EXPECT_EQ(1, QELDraw(m_h, drawn.Dc(), &rc, QEL_DRAW_FULL));
        return CountPixels(drawn, RGB(255, 0, 0));
    }

    CTestFolder m_folder;
    HQELENGINE m_h;
    HQELELEM m_hRoot = nullptr;
};

HQELELEM Number(uintptr_t n)
{
    return reinterpret_cast<HQELELEM>(n);
}

} // namespace

TEST_F(Elements, AreAppendedOrStandAfterTheGivenSibling)
{
    const HQELELEM a = MakeNamed("a");
    MakeNamed("b");
    const HQELELEM c = Make(QEL_TYPE_RECT, m_hRoot, a);
    ASSERT_EQ(1, QELSetElemId(m_h, c, "c"));
    MakeNamed("d", QEL_TYPE_LINE, a);
    EXPECT_EQ("a(d) c b", Tree());
    EXPECT_EQ(nullptr, QELGetParentElem(m_h, m_hRoot));
    EXPECT_EQ(nullptr, QELGetNextElem(m_h, m_hRoot));
    EXPECT_EQ(nullptr, QELGetPrevElem(m_h, m_hRoot));
    EXPECT_EQ(nullptr, QELGetFirstChild(m_h, c));
    EXPECT_EQ(nullptr, QELGetLastChild(m_h, c));
}

TEST_F(Elements, OfEveryTypeAreMadeAndAnswerTheirType)
{
    for (const int nType : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 15})
        EXPECT_EQ(nType, QELGetElemType(m_h, Make(nType)));
    for (const int nType : {12, 13, 14, 22, 23, 100, -1, INT_MIN, INT_MAX})
        EXPECT_EQ(nullptr, QELCreateElem(m_h, nType, nullptr, nullptr)) << nType;
    int nCount = 0;
    for (HQELELEM h = QELGetFirstChild(m_h, m_hRoot); h; h = QELGetNextElem(m_h, h)) ++nCount;
    EXPECT_EQ(12, nCount);
}

TEST_F(Elements, HaveTheGeometryOfTheirKindWhenMade)
{
    struct Row {
        int nType;
        const char* pszTag;
        const char* pszCrd;
    };
    const Row rows[] = {{1, "text", "0 0 10 10"},           {2, "rect", "0 0 10 10"},
                        {3, "chord", "0 0 10 10 10 5 5 0"}, {4, "pie", "0 0 10 10 10 5 5 0"},
                        {5, "rndrect", "0 0 10 10 0 0"},    {6, "arc", "0 0 10 10 10 5 5 0"},
                        {7, "ellipse", "0 0 10 10"},        {8, "circle", "5 5 5"},
                        {9, "line", "0 0 10 10"},           {10, "polyline", "0 0 10 10"},
                        {11, "polygon", "0 0 10 10"}};
    std::string expected = "<qel>\r\n";
    for (const Row& row : rows) {
        Make(row.nType);
        expected += std::string("<") + row.pszTag + " crd=\"" + row.pszCrd + "\"/>\r\n";
    }
    EXPECT_EQ(expected + "</qel>\r\n", Saved());
}

TEST_F(Elements, AreRefusedUnderWhatIsNoParentAndAfterWhatIsNoSibling)
{
    const HQELELEM a = MakeNamed("a");
    const HQELELEM b = MakeNamed("b", QEL_TYPE_RECT, a);
    const HQELELEM gone = Make(QEL_TYPE_RECT);
    ASSERT_EQ(1, QELDeleteElem(m_h, gone));
    EXPECT_EQ(nullptr, QELCreateElem(m_h, QEL_TYPE_RECT, m_hRoot, b)); // a child of another
    EXPECT_EQ(nullptr, QELCreateElem(m_h, QEL_TYPE_RECT, nullptr, b));
    EXPECT_EQ(nullptr, QELCreateElem(m_h, QEL_TYPE_RECT, a, a));
    EXPECT_EQ(nullptr, QELCreateElem(m_h, QEL_TYPE_RECT, m_hRoot, m_hRoot));
    EXPECT_EQ(nullptr, QELCreateElem(m_h, QEL_TYPE_RECT, gone, nullptr));
    EXPECT_EQ(nullptr, QELCreateElem(m_h, QEL_TYPE_RECT, m_hRoot, gone));
    EXPECT_EQ("a(b)", Tree());
}

TEST_F(Elements, NestAtMost512LevelsBelowTheRoot)
{
    HQELELEM h = m_hRoot;
    for (int i = 0; i < 512; ++i) {
        h = QELCreateElem(m_h, QEL_TYPE_GROUP, h, nullptr);
        ASSERT_NE(nullptr, h) << i;
    }
    EXPECT_EQ(nullptr, QELCreateElem(m_h, QEL_TYPE_RECT, h, nullptr));
    // What was built can be saved and opened again.
    ASSERT_EQ(1, QELSaveFile(m_h, m_folder.Path("deep.qel").c_str()));
    EXPECT_EQ(1, QELOpenFile(m_h, m_folder.Path("deep.qel").c_str()));
}

TEST_F(Elements, NewRootReplacesTheDrawingAndKillsItsHandles)
{
    const HQELELEM a = MakeNamed("a", QEL_TYPE_RECT);
    EXPECT_EQ(nullptr, QELCreateElem(m_h, QEL_TYPE_ROOT, m_hRoot, nullptr));
    EXPECT_EQ(nullptr, QELCreateElem(m_h, QEL_TYPE_ROOT, nullptr, a));
    EXPECT_EQ("a", Tree());
    const HQELELEM hNew = QELCreateElem(m_h, QEL_TYPE_ROOT, nullptr, nullptr);
    ASSERT_NE(nullptr, hNew);
    EXPECT_EQ(hNew, QELGetRootElem(m_h));
    EXPECT_EQ(QEL_TYPE_NONE, QELGetElemType(m_h, m_hRoot));
    EXPECT_EQ(QEL_TYPE_NONE, QELGetElemType(m_h, a));
    EXPECT_EQ(nullptr, QELGetFirstChild(m_h, hNew));
    EXPECT_EQ("<qel/>\r\n", Saved());
    const QELSHAPEATTR attr = RedBlock();
    const HQELELEM hRect = Make(QEL_TYPE_RECT, hNew);
    ASSERT_EQ(1, QELSetElemAttr(m_h, hRect, &attr, sizeof attr));
    EXPECT_LT(50, RedPixels()); // and it is the one that is drawn
}

TEST_F(Elements, AreDeletedWithAllThatIsInThem)
{
    const HQELELEM a = MakeNamed("a");
    const HQELELEM b = MakeNamed("b", QEL_TYPE_GROUP, a);
    const HQELELEM c = MakeNamed("c", QEL_TYPE_RECT, b);
    MakeNamed("d");
    const QELSHAPEATTR attr = RedBlock();
    ASSERT_EQ(1, QELSetElemAttr(m_h, c, &attr, sizeof attr));
    EXPECT_LT(0, RedPixels());
    EXPECT_EQ(1, QELDeleteElem(m_h, a));
    EXPECT_EQ("d", Tree());
    EXPECT_EQ(0, RedPixels());
    for (const HQELELEM h : {a, b, c}) {
        EXPECT_EQ(QEL_TYPE_NONE, QELGetElemType(m_h, h));
        EXPECT_EQ(0, QELDeleteElem(m_h, h));
    }
}

TEST_F(Elements, RootCanBeDeletedAndMadeAgain)
{
    MakeNamed("a");
    ASSERT_EQ(1, QELDeleteElem(m_h, m_hRoot));
    EXPECT_EQ(nullptr, QELGetRootElem(m_h));
    EXPECT_EQ(3, QELGetType(m_h));
    EXPECT_EQ(0, QELSaveFile(m_h, m_folder.Path("a.qel").c_str()));
    EXPECT_EQ(0, m_folder.CountFiles());
    EXPECT_EQ(nullptr, QELCreateElem(m_h, QEL_TYPE_RECT, nullptr, nullptr));
    const HQELELEM hNew = QELCreateElem(m_h, QEL_TYPE_ROOT, nullptr, nullptr);
    ASSERT_NE(nullptr, hNew);
    EXPECT_EQ(0, QELGetType(m_h));
    EXPECT_NE(nullptr, QELCreateElem(m_h, QEL_TYPE_RECT, nullptr, nullptr));
}

TEST_F(Elements, MoveToTheFrontOrAfterASibling)
{
    const HQELELEM a = MakeNamed("a");
    const HQELELEM b = MakeNamed("b");
    const HQELELEM c = MakeNamed("c");
    // To the front, while a new element is appended.
    EXPECT_EQ(1, QELMoveElem(m_h, c, m_hRoot, nullptr));
    EXPECT_EQ("c a b", Tree());
    EXPECT_EQ(1, QELMoveElem(m_h, c, m_hRoot, a));
    EXPECT_EQ("a c b", Tree());
    EXPECT_EQ(1, QELMoveElem(m_h, a, m_hRoot, b));
    EXPECT_EQ("c b a", Tree());
    EXPECT_EQ(1, QELMoveElem(m_h, c, b, nullptr));
    EXPECT_EQ("b(c) a", Tree());
    EXPECT_EQ(1, QELMoveElem(m_h, a, b, c));
    EXPECT_EQ("b(c a)", Tree());
    EXPECT_EQ(1, QELMoveElem(m_h, a, b, c)); // where it stands
    EXPECT_EQ("b(c a)", Tree());
    EXPECT_EQ("<qel>\r\n<g id=\"b\">\r\n<g id=\"c\"/>\r\n<g id=\"a\"/>\r\n</g>\r\n</qel>\r\n",
              Saved());
}

TEST_F(Elements, MoveChangesTheOrderOfDrawing)
{
    QELSHAPEATTR attr = RedBlock();
    const HQELELEM hRed = Make(QEL_TYPE_RECT);
    ASSERT_EQ(1, QELSetElemAttr(m_h, hRed, &attr, sizeof attr));
    attr.clrB = RGB(0, 0, 255);
    const HQELELEM hBlue = Make(QEL_TYPE_RECT);
    ASSERT_EQ(1, QELSetElemAttr(m_h, hBlue, &attr, sizeof attr));
    EXPECT_EQ(0, RedPixels()); // the later one is painted over it
    ASSERT_EQ(1, QELMoveElem(m_h, hRed, m_hRoot, hBlue));
    EXPECT_EQ(100, RedPixels());
    ASSERT_EQ(1, QELMoveElem(m_h, hRed, m_hRoot, nullptr));
    EXPECT_EQ(0, RedPixels());
}

TEST_F(Elements, MoveIsRefusedWhereItMakesNoSense)
{
    const HQELELEM a = MakeNamed("a");
    const HQELELEM b = MakeNamed("b", QEL_TYPE_GROUP, a);
    const HQELELEM c = MakeNamed("c", QEL_TYPE_GROUP, b);
    const HQELELEM d = MakeNamed("d");
    const HQELELEM gone = Make(QEL_TYPE_RECT);
    ASSERT_EQ(1, QELDeleteElem(m_h, gone));
    struct Row {
        const char* pszWhat;
        HQELELEM hElem, hParent, hAfter;
    };
    const Row rows[] = {{"the root", m_hRoot, a, nullptr},
                        {"the root out of the picture", m_hRoot, nullptr, nullptr},
                        {"into itself", a, a, nullptr},
                        {"into its child", a, b, nullptr},
                        {"into its grandchild", a, c, nullptr},
                        {"after no child of the parent", d, m_hRoot, b},
                        {"after an element in an empty parent", d, c, a},
                        {"after itself", d, m_hRoot, d},
                        {"after the parent", d, a, a},
                        {"a dead element", gone, a, nullptr},
                        {"into a dead element", d, gone, nullptr},
                        {"after a dead element", d, a, gone},
                        {"nothing", nullptr, a, nullptr}};
    for (const Row& row : rows) {
        EXPECT_EQ(0, QELMoveElem(m_h, row.hElem, row.hParent, row.hAfter)) << row.pszWhat;
        EXPECT_EQ("a(b(c)) d", Tree()) << row.pszWhat;
    }
}

TEST_F(Elements, TakenOutOfThePictureStayAliveAndCanComeBack)
{
    const HQELELEM a = MakeNamed("a");
    const HQELELEM b = MakeNamed("b", QEL_TYPE_RECT, a);
    MakeNamed("c");
    const QELSHAPEATTR attr = RedBlock();
    ASSERT_EQ(1, QELSetElemAttr(m_h, b, &attr, sizeof attr));
    const int nBefore = RedPixels();
    ASSERT_LT(0, nBefore);
    ASSERT_EQ(1, QELMoveElem(m_h, a, nullptr, nullptr));
    EXPECT_EQ("c", Tree());
    EXPECT_EQ(0, RedPixels());
    EXPECT_EQ("<qel>\r\n<g id=\"c\"/>\r\n</qel>\r\n", Saved());
    EXPECT_EQ(QEL_TYPE_GROUP, QELGetElemType(m_h, a));
    EXPECT_EQ(nullptr, QELGetParentElem(m_h, a));
    EXPECT_EQ(nullptr, QELGetNextElem(m_h, a));
    EXPECT_EQ(nullptr, QELGetPrevElem(m_h, a));
    EXPECT_EQ(b, QELGetFirstChild(m_h, a));
    ASSERT_EQ(1, QELMoveElem(m_h, a, m_hRoot, nullptr));
    EXPECT_EQ("a(b) c", Tree());
    EXPECT_EQ(nBefore, RedPixels());
}

TEST_F(Elements, SeveralOutOfThePictureAreNotSiblingsOfOneAnother)
{
    const HQELELEM a = MakeNamed("a");
    const HQELELEM b = MakeNamed("b");
    const HQELELEM c = MakeNamed("c");
    for (const HQELELEM h : {a, b, c}) ASSERT_EQ(1, QELMoveElem(m_h, h, nullptr, nullptr));
    for (const HQELELEM h : {a, b, c}) {
        EXPECT_EQ(nullptr, QELGetNextElem(m_h, h));
        EXPECT_EQ(nullptr, QELGetPrevElem(m_h, h));
        EXPECT_EQ(nullptr, QELGetParentElem(m_h, h));
    }
    EXPECT_EQ(1, QELMoveElem(m_h, b, nullptr, nullptr)); // once more
    ASSERT_EQ(1, QELDeleteElem(m_h, b));
    ASSERT_EQ(1, QELMoveElem(m_h, c, a, nullptr)); // into one that is out itself
    ASSERT_EQ(1, QELMoveElem(m_h, a, m_hRoot, nullptr));
    EXPECT_EQ("a(c)", Tree());
}

TEST_F(Elements, OutOfThePictureDieWithTheDrawing)
{
    const HQELELEM a = MakeNamed("a");
    const HQELELEM b = MakeNamed("b", QEL_TYPE_RECT, a);
    ASSERT_EQ(1, QELMoveElem(m_h, a, nullptr, nullptr));
    ASSERT_EQ(1, QELCloseFile(m_h));
    EXPECT_EQ(QEL_TYPE_NONE, QELGetElemType(m_h, a));
    EXPECT_EQ(QEL_TYPE_NONE, QELGetElemType(m_h, b));
}

TEST_F(Elements, CopyStandsRightAfterTheSourceWithAllThatIsInIt)
{
    const HQELELEM a = MakeNamed("a");
    const HQELELEM b = MakeNamed("b", QEL_TYPE_RECT, a);
    MakeNamed("c", QEL_TYPE_GROUP, a);
    Make(QEL_TYPE_GROUP, a); // without an identifier: none is made up for its copy
    MakeNamed("z");
    QELSHAPEATTR attr = RedBlock();
    ASSERT_EQ(1, QELSetElemAttr(m_h, b, &attr, sizeof attr));
    const HQELELEM hCopy = QELCopyElem(m_h, a);
    ASSERT_NE(nullptr, hCopy);
    EXPECT_EQ("a(b c ) a_1(b_1 c_1 ) z", Tree());
    QELSHAPEATTR copied{};
    const HQELELEM hRect = QELGetFirstChild(m_h, hCopy);
    ASSERT_EQ(1, QELGetElemAttr(m_h, hRect, &copied, nullptr));
    EXPECT_EQ(0, std::memcmp(&attr, &copied, sizeof attr));
    // The copy is drawn, and stands on its own.
    attr = RedBlock(20, 20);
    const int nOne = RedPixels();
    ASSERT_EQ(1, QELSetElemAttr(m_h, hRect, &attr, sizeof attr));
    EXPECT_EQ(2 * nOne, RedPixels());
    // Copied again, the source gives the same identifier again; the copy gets another end.
    ASSERT_NE(nullptr, QELCopyElem(m_h, a));
    ASSERT_NE(nullptr, QELCopyElem(m_h, hCopy));
    EXPECT_EQ("a(b c ) a_1(b_1 c_1 ) a_1(b_1 c_1 ) a_1_1(b_1_1 c_1_1 ) z", Tree());
}

TEST_F(Elements, CopyIsRefusedForTheRootAndForWhatIsNoElement)
{
    MakeNamed("a");
    EXPECT_EQ(nullptr, QELCopyElem(m_h, m_hRoot));
    EXPECT_EQ(nullptr, QELCopyElem(m_h, nullptr));
    EXPECT_EQ(nullptr, QELCopyElem(m_h, Number(0x1000)));
    EXPECT_EQ("a", Tree());
}

TEST_F(Elements, IdentifiersAreCutAt255BytesAndEmptyWhenUnset)
{
    const HQELELEM a = Make(QEL_TYPE_RECT);
    EXPECT_STREQ("", QELGetElemId(m_h, a));
    EXPECT_EQ(1, QELSetElemId(m_h, a, std::string(255, 'x').c_str()));
    EXPECT_EQ(std::string(255, 'x'), QELGetElemId(m_h, a));
    EXPECT_EQ(1, QELSetElemId(m_h, a, std::string(1000, 'y').c_str()));
    EXPECT_EQ(std::string(255, 'y'), QELGetElemId(m_h, a));
    EXPECT_EQ(0, QELSetElemId(m_h, a, nullptr));
    EXPECT_EQ(std::string(255, 'y'), QELGetElemId(m_h, a));
    const HQELELEM hCopy = QELCopyElem(m_h, a); // no room for "_1"
    EXPECT_EQ(std::string(255, 'y'), QELGetElemId(m_h, hCopy));
    EXPECT_EQ(1, QELSetElemId(m_h, a, ""));
    EXPECT_EQ(1, QELDeleteElem(m_h, hCopy));
    EXPECT_EQ("<qel>\r\n<rect crd=\"0 0 10 10\"/>\r\n</qel>\r\n", Saved());
}

TEST_F(Elements, NameOfTheDrawingFollowsTheRootsIdentifier)
{
    EXPECT_STREQ("", QELGetName(m_h));
    ASSERT_EQ(1, QELSetElemId(m_h, m_hRoot, "tank farm"));
    EXPECT_STREQ("tank farm", QELGetName(m_h));
    EXPECT_EQ("<qel id=\"tank farm\"/>\r\n", Saved());
    ASSERT_EQ(1, QELOpenFile(m_h, m_folder.Path("saved.qel").c_str()));
    EXPECT_STREQ("tank farm", QELGetName(m_h));
    ASSERT_EQ(1, QELSetElemId(m_h, QELGetRootElem(m_h), std::string(300, 'n').c_str()));
    EXPECT_EQ(std::string(255, 'n'), QELGetName(m_h));
}

TEST_F(Elements, OfAnotherEngineAreRefused)
{
    const HQELENGINE hOther = CreateQELEngine();
    ASSERT_EQ(1, QELNewFile(hOther));
    const HQELELEM hForeign = QELCreateElem(hOther, QEL_TYPE_GROUP, nullptr, nullptr);
    const HQELELEM hForeignRoot = QELGetRootElem(hOther);
    const HQELELEM a = MakeNamed("a");
    QELSHAPEATTR attr = RedBlock();
    int nSize = -7;
    RECT rc{};
    for (const HQELELEM h : {hForeign, hForeignRoot}) {
        EXPECT_EQ(nullptr, QELCreateElem(m_h, QEL_TYPE_RECT, h, nullptr));
        EXPECT_EQ(nullptr, QELCreateElem(m_h, QEL_TYPE_RECT, nullptr, h));
        EXPECT_EQ(0, QELDeleteElem(m_h, h));
        EXPECT_EQ(0, QELMoveElem(m_h, h, m_hRoot, nullptr));
        EXPECT_EQ(0, QELMoveElem(m_h, a, h, nullptr));
        EXPECT_EQ(0, QELMoveElem(m_h, a, m_hRoot, h));
        EXPECT_EQ(nullptr, QELCopyElem(m_h, h));
        EXPECT_EQ(nullptr, QELGetParentElem(m_h, h));
        EXPECT_EQ(nullptr, QELGetFirstChild(m_h, h));
        EXPECT_EQ(QEL_TYPE_NONE, QELGetElemType(m_h, h));
        EXPECT_EQ(nullptr, QELGetElemId(m_h, h));
        EXPECT_EQ(0, QELSetElemId(m_h, h, "x"));
        EXPECT_EQ(0, QELGetElemAttr(m_h, h, nullptr, &nSize));
        EXPECT_EQ(0, QELSetElemAttr(m_h, h, &attr, sizeof attr));
        EXPECT_EQ(0, QELGetElemRect(m_h, h, &rc));
        EXPECT_EQ(0, QELSetElemRect(m_h, h, &rc));
    }
    EXPECT_EQ(-7, nSize);
    EXPECT_EQ(QEL_TYPE_GROUP, QELGetElemType(hOther, hForeign));
    EXPECT_STREQ("", QELGetElemId(hOther, hForeign));
    EXPECT_EQ("a", Tree());
    EXPECT_EQ(1, DestroyQELEngine(hOther));
}

TEST_F(Elements, NumbersAreNeverHandedOutAgain)
{
    std::set<HQELELEM> seen{m_hRoot};
    for (int i = 0; i < 3000; ++i) {
        const HQELELEM h = Make(QEL_TYPE_RECT);
        ASSERT_TRUE(seen.insert(h).second) << i;
        ASSERT_EQ(1, QELDeleteElem(m_h, h));
    }
    for (int i = 0; i < 50; ++i) { // also not through new drawings and engines
        ASSERT_EQ(1, QELNewFile(m_h));
        ASSERT_TRUE(seen.insert(QELGetRootElem(m_h)).second) << i;
        const HQELENGINE hEngine = CreateQELEngine();
        ASSERT_TRUE(seen.insert(reinterpret_cast<HQELELEM>(hEngine)).second) << i;
        ASSERT_EQ(1, DestroyQELEngine(hEngine));
    }
    int nLive = 0;
    for (const HQELELEM h : seen) nLive += QELGetElemType(m_h, h) != QEL_TYPE_NONE;
    EXPECT_EQ(1, nLive); // the root of the last drawing
}

TEST_F(Elements, RecordsTellTheirSizeAndComeBackAsTheyWereSet)
{
    const HQELELEM a = Make(QEL_TYPE_POLYGON);
    QELSHAPEATTR attr{};
    attr.nSize = sizeof attr;
    attr.nStyle = 0x50003;
    attr.nDraft = 37;
    attr.clrA = 0x80123456;
    attr.clrB = 0x0000FF00;
    attr.clrPen = 0x00010203;
    attr.nPenStyle = PS_DOT;
    attr.nPenWidth = 3;
    attr.nGeometry[0] = 3;
    for (int i = 1; i <= 6; ++i) attr.nGeometry[i] = i * 7;
    std::strcpy(attr.szText, "\xB1\xC3 & <more>");
    attr.nFlags = QEL_FLAG_PRESS | QEL_KEEP_LEFT | QEL_AWAY_AS_GRAPH;
    ASSERT_EQ(1, QELSetElemAttr(m_h, a, &attr, sizeof attr));
    int nSize = 0;
    EXPECT_EQ(1, QELGetElemAttr(m_h, a, nullptr, &nSize));
    EXPECT_EQ(424, nSize);
    QELSHAPEATTR read;
    std::memset(&read, 0xCC, sizeof read);
    nSize = 1; // output only: a small one does not matter
    EXPECT_EQ(1, QELGetElemAttr(m_h, a, &read, &nSize));
    EXPECT_EQ(424, nSize);
    EXPECT_EQ(0, std::memcmp(&attr, &read, sizeof attr));
    EXPECT_EQ("<qel>\r\n<polygon style=\"0x50003\" dr=\"37\" fg=\"0x123456 glt\" bg=\"0xff00\" "
              "clr=\"0x10203\" lnstyle=\"2\" lnwid=\"3\" crd=\"7 14 21 28 35 42\" flag=\"0x2c000\">"
              "\xB1\xC3 &amp; &lt;more&gt;</polygon>\r\n</qel>\r\n",
              Saved());
}

TEST_F(Elements, RecordIsRefusedWhenItsSizeIsWrongOrNothingIsGiven)
{
    const HQELELEM a = Make(QEL_TYPE_RECT);
    QELSHAPEATTR attr = RedBlock();
    ASSERT_EQ(1, QELSetElemAttr(m_h, a, &attr, sizeof attr));
    QELSHAPEATTR other = RedBlock(30, 30);
    EXPECT_EQ(0, QELSetElemAttr(m_h, a, &other, 423));
    EXPECT_EQ(0, QELSetElemAttr(m_h, a, &other, 0));
    EXPECT_EQ(0, QELSetElemAttr(m_h, a, &other, -1));
    EXPECT_EQ(0, QELSetElemAttr(m_h, a, nullptr, 424));
    for (const DWORD nSize : {0U, 24U, 423U, 425U, 0xFFFFFFFFU}) {
        other.nSize = nSize;
        EXPECT_EQ(0, QELSetElemAttr(m_h, a, &other, sizeof other)) << nSize;
    }
    EXPECT_EQ(0, QELGetElemAttr(m_h, a, nullptr, nullptr));
    QELSHAPEATTR read{};
    ASSERT_EQ(1, QELGetElemAttr(m_h, a, &read, nullptr));
    EXPECT_EQ(0, std::memcmp(&attr, &read, sizeof attr));
    other.nSize = sizeof other;
    EXPECT_EQ(1, QELSetElemAttr(m_h, a, &other, 100000)); // at least the record's size
    EXPECT_EQ(100, RedPixels());
    RECT rc{};
    ASSERT_EQ(1, QELGetElemRect(m_h, a, &rc));
    EXPECT_EQ(30, rc.left);
}

TEST_F(Elements, RecordOfAGroupIsOneWordThatNothingChanges)
{
    const HQELELEM a = Make(QEL_TYPE_GROUP);
    int nSize = 0;
    QELWORDATTR attr{77};
    EXPECT_EQ(1, QELGetElemAttr(m_h, a, &attr, &nSize));
    EXPECT_EQ(4, nSize);
    EXPECT_EQ(0, attr.nValue);
    attr.nValue = 1234;
    EXPECT_EQ(1, QELSetElemAttr(m_h, a, &attr, sizeof attr));
    EXPECT_EQ(0, QELSetElemAttr(m_h, a, nullptr, sizeof attr));
    EXPECT_EQ(0, QELSetElemAttr(m_h, a, &attr, 3));
    EXPECT_EQ(1, QELGetElemAttr(m_h, a, &attr, nullptr));
    EXPECT_EQ(0, attr.nValue);
}

TEST_F(Elements, RecordOfTheRootCarriesTheReferenceSizeToAllThatKeepIt)
{
    QELROOTATTR attr{};
    int nSize = 0;
    ASSERT_EQ(1, QELGetElemAttr(m_h, m_hRoot, &attr, &nSize));
    EXPECT_EQ(24, nSize);
    EXPECT_EQ(24u, attr.nSize);
    EXPECT_EQ(0x10000u, attr.nFormat);
    EXPECT_EQ(0, attr.nType);
    EXPECT_EQ(50, attr.nWidth);
    EXPECT_EQ(50, attr.nHeight);
    EXPECT_EQ(0u, attr.nRotate);
    const QELSHAPEATTR red = RedBlock();
    ASSERT_EQ(1, QELSetElemAttr(m_h, Make(QEL_TYPE_RECT), &red, sizeof red));
    EXPECT_EQ(100, RedPixels());

    attr.nType = 2;
    attr.nWidth = 100;
    attr.nHeight = 25;
    attr.nRotate = 400;
    ASSERT_EQ(1, QELSetElemAttr(m_h, m_hRoot, &attr, sizeof attr));
    SIZE size{};
    ASSERT_EQ(1, QELGetRefSize(m_h, &size));
    EXPECT_EQ(100, size.cx);
    EXPECT_EQ(25, size.cy);
    EXPECT_EQ(2, QELGetType(m_h));
    EXPECT_EQ(5 * 20, RedPixels()); // 10 units are 5 pixels across and 20 down now
    ASSERT_EQ(1, QELGetElemAttr(m_h, m_hRoot, &attr, nullptr));
    EXPECT_EQ(1u, attr.nRotate); // above 360 the quotient by 360 is kept
    attr.nSize = 20;
    attr.nWidth = 7;
    EXPECT_EQ(0, QELSetElemAttr(m_h, m_hRoot, &attr, sizeof attr));
    ASSERT_EQ(1, QELGetRefSize(m_h, &size));
    EXPECT_EQ(100, size.cx);
}

TEST_F(Elements, SetRefSizeChangesTheRootsRecordAndThePicture)
{
    const QELSHAPEATTR red = RedBlock();
    ASSERT_EQ(1, QELSetElemAttr(m_h, Make(QEL_TYPE_RECT), &red, sizeof red));
    const SIZE size{25, 50};
    ASSERT_EQ(1, QELSetRefSize(m_h, &size));
    EXPECT_EQ(200, RedPixels());
    QELROOTATTR attr{};
    ASSERT_EQ(1, QELGetElemAttr(m_h, m_hRoot, &attr, nullptr));
    EXPECT_EQ(25, attr.nWidth);
    EXPECT_EQ(50, attr.nHeight);
    const SIZE nothing{0, -3}; // taken, and nothing can be mapped then
    EXPECT_EQ(1, QELSetRefSize(m_h, &nothing));
    SIZE read{};
    EXPECT_EQ(1, QELGetRefSize(m_h, &read));
    EXPECT_EQ(0, read.cx);
    EXPECT_EQ(-3, read.cy);
    EXPECT_EQ(0, RedPixels());
}

TEST_F(Elements, RectanglesAreThoseOfTheirKindAndNormalised)
{
    struct Row {
        int nType;
        std::vector<LONG> geometry;
        RECT rc;
    };
    const Row rows[] = {
        {QEL_TYPE_TEXT, {30, 40, 10, 20}, {10, 20, 30, 40}},
        {QEL_TYPE_RECT, {10, 40, 30, 20}, {10, 20, 30, 40}},
        {QEL_TYPE_ELLIPSE, {-5, 5, -20, 1}, {-20, 1, -5, 5}},
        {QEL_TYPE_LINE, {9, 2, 3, 8}, {3, 2, 9, 8}},
        {QEL_TYPE_CIRCLE, {20, 30, 7}, {13, 23, 27, 37}},
        {QEL_TYPE_ARC, {30, 40, 10, 20, 99, 99, -99, -99}, {10, 20, 30, 40}},
        {QEL_TYPE_PIE, {30, 20, 10, 40, 99, 99, -99, -99}, {10, 20, 30, 40}},
        {QEL_TYPE_CHORD, {10, 40, 30, 20, 99, 99, -99, -99}, {10, 20, 30, 40}},
        {QEL_TYPE_ROUNDRECT, {30, 40, 10, 20, 99, 99}, {10, 20, 30, 40}},
        {QEL_TYPE_POLYGON, {3, 5, 9, 1, 2, 7, 4}, {1, 2, 7, 9}},
        {QEL_TYPE_POLYLINE, {2, 5, 9, 1, 20}, {1, 9, 5, 20}},
    };
    RECT rcAll{};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.nType);
        const HQELELEM h = Make(row.nType);
        QELSHAPEATTR attr = RedBlock();
        std::memset(attr.nGeometry, 0, sizeof attr.nGeometry);
        for (std::size_t i = 0; i < row.geometry.size(); ++i) attr.nGeometry[i] = row.geometry[i];
        ASSERT_EQ(1, QELSetElemAttr(m_h, h, &attr, sizeof attr));
        RECT rc{};
        ASSERT_EQ(1, QELGetElemRect(m_h, h, &rc));
        EXPECT_TRUE(::EqualRect(&row.rc, &rc))
            << rc.left << "," << rc.top << "," << rc.right << "," << rc.bottom;
        EXPECT_EQ(0, QELGetElemRect(m_h, h, nullptr));
        ::UnionRect(&rcAll, &rcAll, &rc);
        ASSERT_EQ(1, QELGetElemRect(m_h, m_hRoot, &rc)); // of the root: that of all its children
        EXPECT_TRUE(::EqualRect(&rcAll, &rc));
    }
}

TEST_F(Elements, PlacingMovesAndShiftsButDoesNotScale)
{
    const HQELELEM h = Make(QEL_TYPE_RECT); // 0 0 10 10
    const RECT rcMoved{5, 5, 15, 15};
    ASSERT_EQ(1, QELSetElemRect(m_h, h, &rcMoved));
    RECT rc{};
    ASSERT_EQ(1, QELGetElemRect(m_h, h, &rc));
    EXPECT_TRUE(::EqualRect(&rcMoved, &rc));
    // From 5 5 15 15 to twice the size at 0 0: -5, then (20 - 10) * 20 / 10 = 20 more.
    const RECT rcGrown{0, 0, 20, 20};
    ASSERT_EQ(1, QELSetElemRect(m_h, h, &rcGrown));
    ASSERT_EQ(1, QELGetElemRect(m_h, h, &rc));
    const RECT rcExpected{20, 20, 30, 30};
    EXPECT_TRUE(::EqualRect(&rcExpected, &rc)) << rc.left << "," << rc.right;
    EXPECT_EQ(0, QELSetElemRect(m_h, h, nullptr));
}

TEST_F(Elements, PlacingAGroupRefreshesThePictureOfAllInside)
{
    const HQELELEM a = MakeNamed("a");
    const HQELELEM b = MakeNamed("b", QEL_TYPE_GROUP, a);
    QELSHAPEATTR attr = RedBlock(0, 0);
    ASSERT_EQ(1, QELSetElemAttr(m_h, Make(QEL_TYPE_RECT, b), &attr, sizeof attr));
    attr = RedBlock(10, 10);
    ASSERT_EQ(1, QELSetElemAttr(m_h, Make(QEL_TYPE_RECT, b), &attr, sizeof attr));
    const RECT rcNew{25, 20, 45, 40}; // as large as before: a move by 25, 20
    ASSERT_EQ(1, QELSetElemRect(m_h, a, &rcNew));
    CTestBitmap drawn(50, 50);
    const RECT rc = drawn.Box();
    ASSERT_EQ(1, QELDraw(m_h, drawn.Dc(), &rc, QEL_DRAW_FULL));
    EXPECT_EQ(200, CountPixels(drawn, RGB(255, 0, 0)));
    EXPECT_EQ(RGB(255, 0, 0), drawn.At(25, 20));
    EXPECT_EQ(RGB(255, 0, 0), drawn.At(44, 39));
    EXPECT_EQ(RGB(255, 255, 255), drawn.At(35, 29));
}

TEST_F(Elements, PlacingAnEmptyGroupFails)
{
    const HQELELEM a = MakeNamed("a");
    RECT rc{-1, -1, -1, -1};
    EXPECT_EQ(1, QELGetElemRect(m_h, a, &rc));
    EXPECT_TRUE(::IsRectEmpty(&rc));
    const RECT rcNew{1, 2, 3, 4};
    EXPECT_EQ(0, QELSetElemRect(m_h, a, &rcNew));
}

TEST_F(Elements, QueriesWithoutAnswerAreNullAndLeaveOutputsAlone)
{
    const HQELELEM gone = Make(QEL_TYPE_RECT);
    ASSERT_EQ(1, QELDeleteElem(m_h, gone));
    for (const HQELELEM h : {HQELELEM{}, gone, Number(1), Number(~uintptr_t{0}),
                             reinterpret_cast<HQELELEM>(m_h), reinterpret_cast<HQELELEM>(this)}) {
        EXPECT_EQ(QEL_TYPE_NONE, QELGetElemType(m_h, h));
        EXPECT_EQ(QEL_TYPE_NONE, QELGetElemType(nullptr, h));
        EXPECT_EQ(nullptr, QELGetElemId(m_h, h));
        EXPECT_EQ(nullptr, QELGetParentElem(m_h, h));
        EXPECT_EQ(nullptr, QELGetFirstChild(m_h, h));
        EXPECT_EQ(nullptr, QELGetLastChild(m_h, h));
        EXPECT_EQ(nullptr, QELGetNextElem(m_h, h));
        EXPECT_EQ(nullptr, QELGetPrevElem(m_h, h));
        int nSize = -3;
        RECT rc{1, 2, 3, 4};
        EXPECT_EQ(0, QELGetElemAttr(m_h, h, nullptr, &nSize));
        EXPECT_EQ(0, QELGetElemRect(m_h, h, &rc));
        EXPECT_EQ(-3, nSize);
        EXPECT_EQ(4, rc.bottom);
    }
}

TEST_F(Elements, WhatIsMadeOutsideOfThePictureFollowsTheHostOnceItIsInIt)
{
    const HQELELEM group = Make(QEL_TYPE_GROUP);
    ASSERT_EQ(1, QELMoveElem(m_h, group, nullptr, nullptr));
    const HQELELEM scale = QELCreateElem(m_h, QEL_TYPE_SCALE, group, nullptr);
    ASSERT_NE(nullptr, scale);
    QELSCALEATTR attr{};
    ASSERT_EQ(1, QELGetElemAttr(m_h, scale, &attr, nullptr));
    EXPECT_EQ(0, QELSetScaleStatus(m_h, attr.nId, 5));
    ASSERT_EQ(1, QELMoveElem(m_h, group, QELGetRootElem(m_h), nullptr));
    EXPECT_EQ(1, QELSetScaleStatus(m_h, attr.nId, 5));
}

TEST_F(Elements, ARefusedMoveIntoThePictureLeavesAllOutside)
{
    const HQELELEM scale = Make(QEL_TYPE_SCALE);
    const HQELELEM group = Make(QEL_TYPE_GROUP);
    QELSCALEATTR attr{};
    ASSERT_EQ(1, QELGetElemAttr(m_h, scale, &attr, nullptr));
    ASSERT_EQ(1, QELMoveElem(m_h, scale, nullptr, nullptr));
    EXPECT_EQ(0, QELMoveElem(m_h, scale, QELGetRootElem(m_h), scale)); // after itself
    EXPECT_EQ(0, QELMoveElem(m_h, scale, group, group));               // after what is not in it
    EXPECT_EQ(0, QELSetScaleStatus(m_h, attr.nId, 5));
    EXPECT_EQ(nullptr, QELGetParentElem(m_h, scale));
    EXPECT_EQ(1, QELMoveElem(m_h, scale, group, nullptr));
    EXPECT_EQ(1, QELSetScaleStatus(m_h, attr.nId, 5));
}
