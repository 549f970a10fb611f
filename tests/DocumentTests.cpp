// The document: loading and saving drawings, the operations on the tree, and who owns what. The
// code is document/QELDocument.cpp; elements by themselves are in DocElmTests.cpp.
#include "engine/ElementTypes.h"
#include "tests/support/DocSupport.h"

#include <cstring>
#include <map>

namespace {

const std::string EMPTY_FILE = FILE_HEAD + std::string("<qel/>\r\n");

// Groups in one another, as many as asked for, the innermost with the given text in it.
std::string Nested(int nGroups, const std::string& inside)
{
    std::string text;
    for (int n = 0; n < nGroups; ++n) text += "<g>";
    text += inside;
    for (int n = 0; n < nGroups; ++n) text += "</g>";
    return text;
}

// ---- loading ----

TEST(Document, BeginsWithoutADrawing)
{
    CQELDocument document(g_elementTypes);
    EXPECT_EQ(nullptr, document.GetRoot());
    EXPECT_EQ(1, document.Close());
    EXPECT_EQ(nullptr, document.GetRoot());
}

TEST(Document, NewDrawingIsAnEmptyRootOfFiftyByFifty)
{
    CQELDocument document(g_elementTypes);
    ASSERT_EQ(1, document.New());
    CQELDocQEL* pRoot = document.GetRoot();
    ASSERT_NE(nullptr, pRoot);
    EXPECT_EQ(0, CQELDocument::HasChildren(pRoot));
    EXPECT_EQ(nullptr, CQELDocument::GetFirstChild(pRoot));
    EXPECT_EQ(nullptr, CQELDocument::GetLastChild(pRoot));
    EXPECT_EQ(nullptr, CQELDocument::GetParent(pRoot));
    EXPECT_EQ(nullptr, CQELDocument::GetNextSibling(pRoot));
    EXPECT_EQ(nullptr, CQELDocument::GetPrevSibling(pRoot));
    EXPECT_EQ(0, CQELDocument::GetElementType(pRoot));
    EXPECT_STREQ("", CQELDocument::GetElementId(pRoot));
    EXPECT_EQ(nullptr, CQELDocument::GetViewElement(pRoot));
    EXPECT_EQ(50, pRoot->RefSize().cx);
    EXPECT_EQ(50, pRoot->RefSize().cy);
}

TEST(Document, LoadsElementsInTheOrderOfTheFile)
{
    CTestDocument document(DrawingText("<rect id=\"a\"/><g id=\"b\"><line id=\"c\"/><g id=\"d\">"
                                       "<pie id=\"e\"/></g></g><text id=\"f\">x</text>"));
    ASSERT_EQ(1, document.Loaded());
    EXPECT_EQ("a b(c d(e)) f", TreeOf(*document.Root()));
    EXPECT_EQ("", BrokenLink(*document.Root()));
    EXPECT_EQ(1, CQELDocument::HasChildren(document.Root()));
    EXPECT_STREQ("f", CQELDocument::GetLastChild(document.Root())->Id());
}

TEST(Document, LoadsEveryStaticElementByItsTag)
{
    const char* const tags[] = {"text",    "rect",   "chord", "pie",      "rndrect", "arc",
                                "ellipse", "circle", "line",  "polyline", "polygon"};
    std::string body;
    std::string types;
    for (int n = 0; n < 11; ++n) {
        body += std::string("<") + tags[n] + "/>";
        types += (n ? " " : "") + std::to_string(n + 1);
    }
    CTestDocument document(DrawingText(body + "<g/>"));
    ASSERT_EQ(1, document.Loaded());
    EXPECT_EQ(types + " 15", TreeOf(*document.Root()));
}

TEST(Document, SkipsWhatHasNoClassWithAllThatIsInIt)
{
    const struct {
        const char* pszBody;
        const char* pszTree;
    } rows[] = {
        {"<path d='x'><rect/></path><rect/>", "2"},
        {"<defs><g><rect/></g></defs><use ref='a'/><line/>", "9"},
        {"<line/><blob><rect/><blob><rect/></blob></blob>", "9"},
        {"<Rect/><RECT/><rect/><rects/><rec/>", "2"}, // names are matched exactly
        {"<g><path><rect/></path></g>", "15"},
        {"<qel><rect/><qel/></qel><rect/>", "2"}, // a drawing in the drawing, likewise
        {"<g><qel width='9'><rect/></qel><line/></g>", "15(9)"},
        {"<!-- <rect/> --><!DOCTYPE rect><line/>", "9"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszBody);
        CTestDocument document(DrawingText(row.pszBody));
        ASSERT_EQ(1, document.Loaded());
        EXPECT_EQ(row.pszTree, TreeOf(*document.Root()));
        EXPECT_EQ("", BrokenLink(*document.Root()));
        EXPECT_EQ(50, document.Root()->RefSize().cx); // the outer root stayed
    }
}

TEST(Document, ASecondElementAfterTheRootIsTheRootsLastChild)
{
    CTestDocument document("<qel><line/></qel><rect/>");
    ASSERT_EQ(1, document.Loaded());
    EXPECT_EQ("9 2", TreeOf(*document.Root()));
}

TEST(Document, DoesNotLoadWhatIsNoDrawing)
{
    const char* const texts[] = {
        "<rect/>",   "<g><qel/></g>",     "<path/>", "<QEL/>",           "<blob><qel/></blob>",
        "no markup", "<qel><rect></qel>", "<qel",    "<qel><rect/></g>", "",
    };
    for (const char* pszText : texts) {
        SCOPED_TRACE(pszText);
        CTestDocument document(pszText);
        EXPECT_EQ(0, document.Loaded());
        EXPECT_EQ(nullptr, document.Root());
        EXPECT_EQ(1, document->New()); // and it can be used again
        EXPECT_EQ(EMPTY_FILE, document.Saved());
    }
}

TEST(Document, AFailedLoadLeavesNoDrawingOfBefore)
{
    CTestDocument document(DrawingText("<rect/>"));
    ASSERT_EQ(1, document.Loaded());
    const uintptr_t nRect = NumberOf(document.First());
    ASSERT_TRUE(IsLive(nRect));
    EXPECT_EQ(0, document->Load(document.Folder().Path("missing.qel").c_str()));
    EXPECT_EQ(nullptr, document.Root());
    EXPECT_FALSE(IsLive(nRect));

    ASSERT_EQ(1, document.LoadText(DrawingText("<rect/>")));
    EXPECT_EQ(0, document.LoadText("<qel><rect>"));
    EXPECT_EQ(nullptr, document.Root());
}

TEST(Document, AnotherRootDoesNotLoadOverAnOpenDrawingEither)
{
    for (const char* pszText : {"<rect/>", "<blob><qel/></blob>", "<path/>"}) {
        SCOPED_TRACE(pszText);
        CTestDocument document(DrawingText("<line/>"));
        ASSERT_EQ(1, document.Loaded());
        EXPECT_EQ(0, document.LoadText(pszText)); // the root of before is not the file's
        EXPECT_EQ(nullptr, document.Root());
    }
}

TEST(Document, ALoadReplacesTheDrawingOfBefore)
{
    CTestDocument document(DrawingText("<rect/><rect/>"));
    const uintptr_t nRoot = NumberOf(document.Root());
    const uintptr_t nRect = NumberOf(document.First());
    ASSERT_EQ(1, document.LoadText(DrawingText("<line/>")));
    EXPECT_EQ("9", TreeOf(*document.Root()));
    EXPECT_FALSE(IsLive(nRoot));
    EXPECT_FALSE(IsLive(nRect));
    ASSERT_EQ(1, document->Load(nullptr));
    EXPECT_EQ("", TreeOf(*document.Root()));
}

TEST(Document, KeepsNoXmlTreeAfterALoadOrASave)
{
    CTestDocument document(DrawingText("<rect/>"));
    ASSERT_EQ(1, document.Loaded());
    EXPECT_EQ(nullptr, document.Root()->Context()->pXml);
    EXPECT_EQ(document.Root()->Context()->pXml, document.First()->Context()->pXml);
    EXPECT_EQ(DrawingText("<rect crd=\"0 0 10 10\"/>\r\n"), document.Saved());
    EXPECT_EQ(nullptr, document.Root()->Context()->pXml);
}

TEST(Document, ElementsNest512LevelsInAFileAndNoDeeper)
{
    CTestDocument deepest(DrawingText(Nested(511, "<rect/>")));
    ASSERT_EQ(1, deepest.Loaded());
    CQELDocElm* p = deepest.Root();
    int nDepth = 0;
    for (; p->FirstChild(); p = p->FirstChild()) ++nDepth;
    EXPECT_EQ(512, nDepth);
    EXPECT_EQ(2, p->Type());
    EXPECT_EQ(512, p->Depth());
    EXPECT_EQ(512, deepest.Root()->Height());
    CTestDocument again(deepest.Saved()); // what can be loaded can be saved and loaded again
    EXPECT_EQ(1, again.Loaded());

    CTestDocument deeper(DrawingText(Nested(512, "<rect/>")));
    EXPECT_EQ(0, deeper.Loaded());
    EXPECT_EQ(nullptr, deeper.Root());
}

// ---- saving ----

TEST(Document, NewDrawingIsSavedAsDeclarationAndEmptyRoot)
{
    CTestFolder folder;
    CQELDocument document(g_elementTypes);
    ASSERT_EQ(1, document.New());
    ASSERT_EQ(1, document.Save(folder.Path("new.qel").c_str()));
    EXPECT_EQ(EMPTY_FILE + '\0', ReadBytes(folder.Path("new.qel"))); // the file ends with a zero
}

TEST(Document, SavesEveryElementOnALineOfItsOwn)
{
    const std::string body = "<rect id=\"a\" crd=\"1 2 3 4\"/>\r\n"
                             "<g id=\"b\">\r\n"
                             "<line crd=\"0 0 10 10\"/>\r\n"
                             "<g/>\r\n"
                             "<g>\r\n"
                             "<circle crd=\"1 2 3\"/>\r\n"
                             "</g>\r\n"
                             "</g>\r\n"
                             "<text crd=\"0 0 10 10\">two words</text>\r\n";
    CTestDocument document(DrawingText(body));
    ASSERT_EQ(1, document.Loaded());
    EXPECT_EQ(DrawingText(body), document.Saved());
    EXPECT_EQ(DrawingText(body), document.Saved()); // a save changes nothing
}

TEST(Document, SavesItsOwnDeclarationAndOnlyWhatItKnows)
{
    CTestDocument document("<?xml version=\"1.1\" encoding=\"utf-8\" standalone=\"yes\"?>"
                           "<!-- a note --><qel colour='red'>words<path/><rect mine='1'/></qel>");
    ASSERT_EQ(1, document.Loaded());
    EXPECT_EQ(DrawingText("<rect crd=\"0 0 10 10\"/>\r\n"), document.Saved());
}

TEST(Document, ShapesSaveTheirChildrenToo)
{
    const std::string body = "<rect crd=\"0 0 10 10\">\r\n<line crd=\"1 2 3 4\"/>\r\n</rect>\r\n";
    EXPECT_EQ(body, SavedBody(body));
}

TEST(Document, ASaveReplacesTheFileAndLeavesNoOther)
{
    CTestDocument document(DrawingText("<rect/>"));
    const std::string path = document.Folder().Path("in.qel");
    ASSERT_TRUE(WriteBytes(path, std::string(5000, 'x')));
    ASSERT_EQ(1, document->Save(path.c_str()));
    EXPECT_EQ(DrawingText("<rect crd=\"0 0 10 10\"/>\r\n") + '\0', ReadBytes(path));
    EXPECT_EQ(1, document.Folder().CountFiles());
}

TEST(Document, ASaveFailsWithoutADrawingOrAPlace)
{
    CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    CQELDocument document(g_elementTypes);
    EXPECT_EQ(0, document.Save(path.c_str()));
    EXPECT_FALSE(Exists(path));
    ASSERT_EQ(1, document.New());
    EXPECT_EQ(0, document.Save(nullptr));
    EXPECT_EQ(0, document.Save((folder.Path("no folder") + "\\a.qel").c_str()));
    ASSERT_EQ(1, document.Close());
    EXPECT_EQ(0, document.Save(path.c_str()));
    EXPECT_EQ(0, folder.CountFiles());
    ASSERT_EQ(1, document.New());
    EXPECT_EQ(1, document.Save(path.c_str())); // the failures left nothing behind
    EXPECT_EQ(EMPTY_FILE + '\0', ReadBytes(path));
}

TEST(Document, AnElementThatCannotBeWrittenFailsTheSaveAndLeavesTheFile)
{
    CTestDocument document(DrawingText("<rect/><g><line/></g>"));
    const std::string path = document.Folder().Path("out.qel");
    ASSERT_TRUE(WriteBytes(path, "as it was"));
    auto* pNameless = new CQELDocElm(document.Root()->Context(), QEL_TYPE_NONE);
    document.First()->NextSibling()->AppendChild(pNameless);
    EXPECT_EQ(0, document->Save(path.c_str()));
    EXPECT_EQ("as it was", ReadBytes(path));
    EXPECT_EQ(2, document.Folder().CountFiles()); // this one and the one it was loaded from

    EXPECT_EQ(1, document->DeleteElement(pNameless));
    EXPECT_EQ(DrawingText("<rect crd=\"0 0 10 10\"/>\r\n<g>\r\n<line crd=\"0 0 10 10\"/>\r\n"
                          "</g>\r\n"),
              document.Saved());
}

// ---- closing ----

TEST(Document, CloseAndDestructionDeleteEveryElement)
{
    uintptr_t numbers[4];
    {
        CTestDocument document(DrawingText("<g><rect/></g>"));
        numbers[0] = NumberOf(document.Root());
        numbers[1] = NumberOf(document.First());
        numbers[2] = NumberOf(document.First()->FirstChild());
        for (int n = 0; n < 3; ++n) EXPECT_TRUE(IsLive(numbers[n])) << n;
        EXPECT_EQ(1, document->Close());
        EXPECT_EQ(nullptr, document.Root());
        for (int n = 0; n < 3; ++n) EXPECT_FALSE(IsLive(numbers[n])) << n;
        EXPECT_EQ(1, document->Close());
        ASSERT_EQ(1, document->New()); // usable after a close
        numbers[3] = NumberOf(document.Root());
        EXPECT_TRUE(IsLive(numbers[3]));
    }
    EXPECT_FALSE(IsLive(numbers[3]));
}

// ---- creating ----

class Tree : public ::testing::Test { // the drawing "a b(c d(e)) f" to work on
protected:
    Tree()
        : m_document(DrawingText("<rect id=\"a\"/><g id=\"b\"><line id=\"c\"/><g id=\"d\">"
                                 "<pie id=\"e\"/></g></g><text id=\"f\"/>"))
    {
        EXPECT_EQ("a b(c d(e)) f", Text());
    }
    ~Tree() override
    {
        if (Root()) {
            EXPECT_EQ("", BrokenLink(*Root()));
        }
    }
    CQELDocument& Document() { return *m_document.operator->(); }
    CQELDocQEL* Root() { return m_document.Root(); }
    CQELDocElm* At(const char* pszId) { return FindById(Root(), pszId); }
    std::string Text() { return TreeOf(*Root()); }

    CTestDocument m_document;
};

TEST_F(Tree, CreatedElementIsTheLastChildOrStandsAfterItsSibling)
{
    CQELDocElm* pLast = Document().CreateElement(At("b"), nullptr, QEL_TYPE_ARC);
    ASSERT_NE(nullptr, pLast);
    EXPECT_EQ("a b(c d(e) 6) f", Text());
    ASSERT_NE(nullptr, Document().CreateElement(At("b"), At("c"), QEL_TYPE_CHORD));
    EXPECT_EQ("a b(c 3 d(e) 6) f", Text());
    ASSERT_NE(nullptr, Document().CreateElement(At("b"), pLast, QEL_TYPE_CIRCLE));
    EXPECT_EQ("a b(c 3 d(e) 6 8) f", Text());
    ASSERT_NE(nullptr, Document().CreateElement(At("a"), nullptr, QEL_TYPE_GROUP));
    EXPECT_EQ("a(15) b(c 3 d(e) 6 8) f", Text());
}

TEST_F(Tree, CreatedElementHasNoIdentifierAndNoViewAndIsSavedWithItsDefaults)
{
    CQELDocElm* pNew = Document().CreateElement(Root(), At("f"), QEL_TYPE_CIRCLE);
    ASSERT_NE(nullptr, pNew);
    EXPECT_STREQ("", CQELDocument::GetElementId(pNew));
    EXPECT_EQ(nullptr, CQELDocument::GetViewElement(pNew));
    EXPECT_EQ(QEL_TYPE_CIRCLE, CQELDocument::GetElementType(pNew));
    EXPECT_TRUE(m_document.SavedBody().ends_with("<text id=\"f\" crd=\"0 0 10 10\"/>\r\n"
                                                 "<circle crd=\"5 5 5\"/>\r\n"));
}

TEST_F(Tree, EveryTypeWithAClassCanBeCreatedAndNoOther)
{
    const std::string before = Text();
    for (const int nType : {12, 13, 14, 22, 23, -1, 1000, -2147483647}) {
        EXPECT_EQ(nullptr, Document().CreateElement(Root(), nullptr, nType)) << nType;
        EXPECT_EQ(before, Text());
    }
    std::string types;
    for (const int nType : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 15}) {
        ASSERT_NE(nullptr, Document().CreateElement(Root(), nullptr, nType)) << nType;
        types += " " + std::to_string(nType);
    }
    EXPECT_EQ(before + types, Text());
}

TEST_F(Tree, NothingButARootIsCreatedWithoutAParent)
{
    const std::string before = Text();
    EXPECT_EQ(nullptr, Document().CreateElement(nullptr, nullptr, QEL_TYPE_RECT));
    EXPECT_EQ(nullptr, Document().CreateElement(nullptr, At("a"), QEL_TYPE_GROUP));
    EXPECT_EQ(before, Text());
}

TEST_F(Tree, CreationAfterWhatIsNoChildOfTheParentIsRefused)
{
    const std::string before = Text();
    EXPECT_EQ(nullptr, Document().CreateElement(At("b"), At("a"), QEL_TYPE_RECT));
    EXPECT_EQ(nullptr, Document().CreateElement(At("b"), At("e"), QEL_TYPE_RECT));
    EXPECT_EQ(nullptr, Document().CreateElement(At("b"), At("b"), QEL_TYPE_RECT));
    EXPECT_EQ(nullptr, Document().CreateElement(Root(), Root(), QEL_TYPE_RECT));
    EXPECT_EQ(before, Text());
}

TEST_F(Tree, ANewRootTakesThePlaceOfEverything)
{
    std::map<std::string, uintptr_t> numbers;
    numbers["root"] = NumberOf(Root());
    for (const char* pszId : {"a", "b", "c", "d", "e", "f"}) numbers[pszId] = NumberOf(At(pszId));
    ASSERT_EQ(1, Document().MoveElement(At("f"), nullptr, nullptr)); // out of the picture, too
    CQELDocElm* pNew = Document().CreateElement(nullptr, nullptr, QEL_TYPE_ROOT);
    ASSERT_NE(nullptr, pNew);
    EXPECT_EQ(pNew, Root());
    EXPECT_EQ("", Text());
    for (const auto& [id, nNumber] : numbers) EXPECT_FALSE(IsLive(nNumber)) << id;
    EXPECT_EQ(EMPTY_FILE, m_document.Saved());
}

TEST_F(Tree, ARootOfOnesOwnTakesThePlaceOfEverything)
{
    const uintptr_t nRoot = NumberOf(Root());
    const uintptr_t nInner = NumberOf(At("e"));
    CQELDocQEL* pNew = Document().NewRoot();
    ASSERT_NE(nullptr, pNew);
    EXPECT_NE(pNew, Root()); // not taken yet
    pNew->SetRefSize({30, 20});
    ASSERT_EQ(1, Document().SetRoot(pNew));
    EXPECT_EQ(pNew, Root());
    EXPECT_FALSE(IsLive(nRoot));
    EXPECT_FALSE(IsLive(nInner));
    EXPECT_EQ(FILE_HEAD + std::string("<qel width=\"30\" height=\"20\"/>\r\n"), m_document.Saved());
}

TEST(Document, NoElementIsCreatedDeeperThan512Levels)
{
    CTestDocument document(DrawingText(Nested(510, "<g id=\"at511\"/>")));
    ASSERT_EQ(1, document.Loaded());
    CQELDocElm* pParent = FindById(document.Root(), "at511");
    CQELDocElm* pDeepest = document->CreateElement(pParent, nullptr, QEL_TYPE_GROUP);
    ASSERT_NE(nullptr, pDeepest);
    EXPECT_EQ(512, pDeepest->Depth());
    EXPECT_EQ(nullptr, document->CreateElement(pDeepest, nullptr, QEL_TYPE_RECT));
    EXPECT_EQ(nullptr, pDeepest->FirstChild());
    EXPECT_NE(nullptr, document->CreateElement(pParent, pDeepest, QEL_TYPE_RECT));
}

// ---- deleting ----

TEST_F(Tree, DeletedElementGoesWithAllThatIsInIt)
{
    const uintptr_t nGroup = NumberOf(At("b"));
    const uintptr_t nInner = NumberOf(At("e"));
    const uintptr_t nOther = NumberOf(At("a"));
    ASSERT_EQ(1, Document().DeleteElement(At("b")));
    EXPECT_EQ("a f", Text());
    EXPECT_FALSE(IsLive(nGroup));
    EXPECT_FALSE(IsLive(nInner));
    EXPECT_TRUE(IsLive(nOther));
    ASSERT_EQ(1, Document().DeleteElement(At("a"))); // the first
    EXPECT_EQ("f", Text());
    EXPECT_EQ("", BrokenLink(*Root()));
    ASSERT_EQ(1, Document().DeleteElement(At("f"))); // the only one
    EXPECT_EQ("", Text());
    EXPECT_EQ(EMPTY_FILE, m_document.Saved());
}

TEST_F(Tree, WithoutItsLastChildTheOneBeforeIsTheLast)
{
    ASSERT_EQ(1, Document().DeleteElement(At("f")));
    EXPECT_EQ(At("b"), Root()->LastChild());
    ASSERT_NE(nullptr, Document().CreateElement(Root(), nullptr, QEL_TYPE_RECT));
    EXPECT_EQ("a b(c d(e)) 2", Text());
}

TEST_F(Tree, ADeletedRootLeavesNoDrawing)
{
    const uintptr_t nInner = NumberOf(At("e"));
    ASSERT_EQ(1, Document().DeleteElement(Root()));
    EXPECT_EQ(nullptr, Root());
    EXPECT_FALSE(IsLive(nInner));
    EXPECT_EQ("not saved", m_document.Saved());
}

// ---- moving ----

TEST_F(Tree, MovesToTheFrontOrBehindASibling)
{
    const struct {
        const char* pszElm;
        const char* pszParent; // "": the root
        const char* pszAfter;  // null: to the front
        const char* pszTree;
    } rows[] = {
        {"f", "", nullptr, "f a b(c d(e))"}, // in the same parent, to the front
        {"a", "", nullptr, "a f b(c d(e))"},
        {"a", "", "f", "f a b(c d(e))"},       // over its neighbour
        {"f", "", "b", "a b(c d(e)) f"},       // to the end
        {"f", "", "b", "a b(c d(e)) f"},       // to where it stands
        {"a", "", nullptr, "a b(c d(e)) f"},   // likewise, at the front
        {"e", "", "a", "a e b(c d) f"},        // out of a group
        {"e", "b", nullptr, "a b(e c d) f"},   // into one with children: the first
        {"e", "d", nullptr, "a b(c d(e)) f"},  // into an empty one: the only
        {"f", "b", "d", "a b(c d(e) f)"},      // behind the last
        {"a", "e", nullptr, "b(c d(e(a)) f)"}, // a shape may hold children
        {"d", "", "b", "b(c f) d(e(a))"},      // with all that is in it
        {"b", "d", "e", "d(e(a) b(c f))"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszTree);
        CQELDocElm* pParent = *row.pszParent ? At(row.pszParent) : Root();
        CQELDocElm* pAfter = row.pszAfter ? At(row.pszAfter) : nullptr;
        ASSERT_EQ(1, Document().MoveElement(At(row.pszElm), pParent, pAfter));
        EXPECT_EQ(row.pszTree, Text());
        EXPECT_EQ("", BrokenLink(*Root()));
    }
}

TEST_F(Tree, RefusesAMoveThatMakesNoSense)
{
    const std::string before = Text();
    const std::string saved = m_document.Saved();
    EXPECT_EQ(0, Document().MoveElement(Root(), At("b"), nullptr));
    EXPECT_EQ(0, Document().MoveElement(Root(), nullptr, nullptr));
    EXPECT_EQ(0, Document().MoveElement(At("b"), At("b"), nullptr)); // into itself
    EXPECT_EQ(0, Document().MoveElement(At("b"), At("d"), nullptr)); // into a child
    EXPECT_EQ(0, Document().MoveElement(At("b"), At("e"), nullptr)); // into a grandchild
    EXPECT_EQ(0, Document().MoveElement(At("b"), At("d"), At("e")));
    EXPECT_EQ(0, Document().MoveElement(At("a"), At("b"), At("f"))); // a child of another
    EXPECT_EQ(0, Document().MoveElement(At("a"), At("b"), At("e"))); // a grandchild
    EXPECT_EQ(0, Document().MoveElement(At("a"), At("b"), At("b"))); // the parent itself
    EXPECT_EQ(0, Document().MoveElement(At("a"), Root(), At("a")));  // the element itself
    EXPECT_EQ(before, Text());
    EXPECT_EQ("", BrokenLink(*Root()));
    EXPECT_EQ(saved, m_document.Saved());
}

TEST(Document, NoMoveNestsDeeperThan512Levels)
{
    CTestDocument document(DrawingText(Nested(509, "<g id=\"at510\"><g id=\"at511\"/></g>") +
                                       "<g id=\"two\"><rect id=\"r\"/></g>"));
    ASSERT_EQ(1, document.Loaded());
    CQELDocElm* pTwo = FindById(document.Root(), "two");
    CQELDocElm* p510 = FindById(document.Root(), "at510");
    CQELDocElm* p511 = FindById(document.Root(), "at511");
    EXPECT_EQ(510, p510->Depth());
    // At 511 its child is at 512; at 512 the child would be at 513.
    EXPECT_EQ(0, document->MoveElement(pTwo, p511, nullptr));
    EXPECT_EQ(document.Root(), pTwo->Parent());
    ASSERT_EQ(1, document->MoveElement(pTwo, p510, p511));
    EXPECT_EQ("at511 two(r)", TreeOf(*p510));
    EXPECT_EQ(512, pTwo->FirstChild()->Depth());
    ASSERT_EQ(1, document->MoveElement(FindById(pTwo, "r"), p511, nullptr)); // alone it fits
    EXPECT_EQ("at511(r) two", TreeOf(*p510));
}

// ---- out of the picture ----

TEST_F(Tree, MovedToNoParentItLeavesThePictureAndTheFileAndStaysAlive)
{
    CQELDocElm* pGroup = At("b");
    const uintptr_t nInner = NumberOf(At("e"));
    ASSERT_EQ(1, Document().MoveElement(pGroup, nullptr, nullptr));
    EXPECT_EQ("a f", Text());
    EXPECT_EQ("", BrokenLink(*Root()));
    EXPECT_EQ(nullptr, CQELDocument::GetParent(pGroup));
    EXPECT_EQ(nullptr, CQELDocument::GetNextSibling(pGroup));
    EXPECT_EQ(nullptr, CQELDocument::GetPrevSibling(pGroup));
    EXPECT_EQ("c d(e)", TreeOf(*pGroup));
    EXPECT_TRUE(IsLive(nInner));
    EXPECT_EQ("<rect id=\"a\" crd=\"0 0 10 10\"/>\r\n<text id=\"f\" crd=\"0 0 10 10\"/>\r\n",
              m_document.SavedBody());
}

TEST_F(Tree, SeveralOutOfThePictureAreNoSiblingsAndComeBackInAnyOrder)
{
    CQELDocElm* pA = At("a");
    CQELDocElm* pB = At("b");
    CQELDocElm* pF = At("f");
    for (CQELDocElm* p : {pA, pB, pF}) ASSERT_EQ(1, Document().MoveElement(p, nullptr, nullptr));
    EXPECT_EQ("", Text());
    for (CQELDocElm* p : {pA, pB, pF}) {
        EXPECT_EQ(nullptr, CQELDocument::GetNextSibling(p)) << p->Id();
        EXPECT_EQ(nullptr, CQELDocument::GetPrevSibling(p)) << p->Id();
    }
    ASSERT_EQ(1, Document().MoveElement(pB, nullptr, nullptr)); // out once more
    ASSERT_EQ(1, Document().MoveElement(pB, Root(), nullptr));
    ASSERT_EQ(1, Document().MoveElement(pF, Root(), nullptr));
    ASSERT_EQ(1, Document().MoveElement(pA, Root(), pB));
    EXPECT_EQ("f b(c d(e)) a", Text());
    EXPECT_EQ(nullptr, CQELDocument::GetNextSibling(pA));
    EXPECT_EQ(pB, CQELDocument::GetPrevSibling(pA));
}

TEST_F(Tree, OutOfThePictureItCanBeWorkedOnAndDeleted)
{
    CQELDocElm* pGroup = At("b");
    CQELDocElm* pText = At("f");
    CQELDocElm* pRect = At("a");
    ASSERT_EQ(1, Document().MoveElement(pRect, nullptr, nullptr));
    ASSERT_EQ(1, Document().MoveElement(pGroup, nullptr, nullptr));
    ASSERT_EQ(1, Document().MoveElement(pText, pGroup, nullptr)); // into one that is out, too
    ASSERT_NE(nullptr, Document().CreateElement(pGroup, pText, QEL_TYPE_RECT));
    EXPECT_EQ("f 2 c d(e)", TreeOf(*pGroup));
    EXPECT_EQ(
        0, Document().MoveElement(pGroup, FindById(pGroup, "d"), nullptr)); // still not into itself
    const uintptr_t nRect = NumberOf(pRect);
    ASSERT_EQ(1, Document().DeleteElement(pRect));
    EXPECT_FALSE(IsLive(nRect));
    ASSERT_EQ(1, Document().MoveElement(pGroup, Root(), nullptr));
    EXPECT_EQ("b(f 2 c d(e))", Text());
}

TEST_F(Tree, WhatIsOutOfThePictureGoesWithTheDrawing)
{
    uintptr_t nInner = NumberOf(At("e"));
    ASSERT_EQ(1, Document().MoveElement(At("b"), nullptr, nullptr));
    EXPECT_TRUE(IsLive(nInner));
    ASSERT_EQ(1, Document().Close());
    EXPECT_FALSE(IsLive(nInner));

    auto* pDocument = new CQELDocument(g_elementTypes);
    ASSERT_EQ(1, pDocument->New());
    CQELDocElm* pElm = pDocument->CreateElement(pDocument->GetRoot(), nullptr, QEL_TYPE_RECT);
    nInner = NumberOf(pElm);
    ASSERT_EQ(1, pDocument->MoveElement(pElm, nullptr, nullptr));
    EXPECT_TRUE(IsLive(nInner));
    delete pDocument;
    EXPECT_FALSE(IsLive(nInner));
}

// ---- copying ----

TEST(Document, ACopyStandsRightAfterItsSourceAndASecondOneBetweenThem)
{
    CTestDocument document(DrawingText("<rect id=\"a\"/><line id=\"z\"/>"));
    CQELDocElm* pFirst = document->CopyElement(document.First());
    ASSERT_NE(nullptr, pFirst);
    EXPECT_EQ("a a_1 z", TreeOf(*document.Root()));
    CQELDocElm* pSecond = document->CopyElement(document.First());
    ASSERT_NE(nullptr, pSecond);
    // The suffix goes by the source alone, so that both copies have the same identifier.
    EXPECT_EQ("a a_1 a_1 z", TreeOf(*document.Root()));
    EXPECT_EQ(pSecond, document.First()->NextSibling());
    EXPECT_EQ(pFirst, pSecond->NextSibling());
    ASSERT_NE(nullptr, document->CopyElement(pSecond));
    EXPECT_EQ("a a_1 a_1_1 a_1 z", TreeOf(*document.Root()));
    ASSERT_NE(nullptr, document->CopyElement(document.Root()->LastChild()));
    EXPECT_EQ("a a_1 a_1_1 a_1 z z_1", TreeOf(*document.Root()));
    EXPECT_EQ("", BrokenLink(*document.Root()));
}

TEST_F(Tree, ACopyKeepsTheOrderInItAndSuffixesEveryIdentifier)
{
    ASSERT_NE(nullptr, Document().CreateElement(At("b"), At("c"), QEL_TYPE_ARC)); // without one
    CQELDocElm* pCopy = Document().CopyElement(At("b"));
    ASSERT_NE(nullptr, pCopy);
    EXPECT_EQ("a b(c 6 d(e)) b_1(c_1 6 d_1(e_1)) f", Text());
    EXPECT_EQ(pCopy, At("b")->NextSibling());
    EXPECT_EQ("", BrokenLink(*Root()));
}

TEST_F(Tree, ACopyHasTheDataOfItsSourceAndALifeOfItsOwn)
{
    ASSERT_EQ(1, m_document.LoadText(DrawingText(
                     "<text style=\"0x30003\" dr=\"5\" fg=\"0x1\" bg=\"0x2 glt\" clr=\"0x3\" "
                     "lnstyle=\"1\" lnwid=\"4\" crd=\"1 2 3 4\" flag=\"0x5\">words</text>")));
    CQELDocElm* pCopy = Document().CopyElement(m_document.First());
    ASSERT_NE(nullptr, pCopy);
    const QELSHAPEATTR attr = ShapeAttr(*m_document.First());
    const QELSHAPEATTR copied = ShapeAttr(*pCopy);
    EXPECT_EQ(0, std::memcmp(&attr, &copied, sizeof attr));
    EXPECT_EQ(nullptr, pCopy->View());
    EXPECT_STREQ("", pCopy->Id());                  // none in the source, so none here
    ASSERT_EQ(1, pCopy->SetRect({11, 12, 13, 14})); // as large: only moved
    EXPECT_EQ("1 2 3 4", RectOf(*m_document.First()));
    ASSERT_EQ(1, Document().DeleteElement(m_document.First()));
    EXPECT_EQ("11 12 13 14", RectOf(*m_document.First()));
}

TEST_F(Tree, TheRootCannotBeCopied)
{
    EXPECT_EQ(nullptr, Document().CopyElement(Root()));
    EXPECT_EQ("a b(c d(e)) f", Text());
}

TEST(Document, CopiesManySiblingsInOrder)
{
    std::string body;
    std::string tree;
    std::string copied;
    for (int n = 0; n < 200; ++n) {
        const std::string id = "n" + std::to_string(n);
        body += "<rect id=\"" + id + "\"/>";
        tree += (n ? " " : "") + id;
        copied += (n ? " " : "") + id + "_1";
    }
    CTestDocument document(DrawingText("<g id=\"g\">" + body + "</g>"));
    ASSERT_NE(nullptr, document->CopyElement(document.First()));
    EXPECT_EQ("g(" + tree + ") g_1(" + copied + ")", TreeOf(*document.Root()));
}

// ---- identifiers and view links ----

TEST_F(Tree, AnIdentifierIsSetCutAndTakenAway)
{
    CQELDocElm* pElm = At("a");
    char szId[] = "pump";
    ASSERT_EQ(1, CQELDocument::SetElementId(pElm, szId));
    szId[0] = 'j'; // it was copied
    EXPECT_STREQ("pump", CQELDocument::GetElementId(pElm));
    EXPECT_EQ(0, CQELDocument::SetElementId(pElm, nullptr));
    EXPECT_STREQ("pump", CQELDocument::GetElementId(pElm));
    ASSERT_EQ(1, CQELDocument::SetElementId(pElm, std::string(300, 'i').c_str()));
    EXPECT_EQ(std::string(255, 'i'), CQELDocument::GetElementId(pElm));
    ASSERT_EQ(1, CQELDocument::SetElementId(pElm, ""));
    EXPECT_STREQ("", CQELDocument::GetElementId(pElm));
    EXPECT_TRUE(m_document.SavedBody().starts_with("<rect crd=\"0 0 10 10\"/>\r\n"));
}

TEST_F(Tree, AnElementKnowsItsViewElementAndItsDocument)
{
    int nPlace = 0; // stands for a view element, which the document never looks into
    auto* pView = reinterpret_cast<CQELViewElm*>(&nPlace);
    CQELDocument::SetViewElement(At("a"), pView);
    EXPECT_EQ(pView, CQELDocument::GetViewElement(At("a")));
    EXPECT_EQ(nullptr, CQELDocument::GetViewElement(At("b")));
    CQELDocument other(g_elementTypes);
    ASSERT_EQ(1, other.New());
    EXPECT_TRUE(Document().Owns(At("e")));
    EXPECT_FALSE(Document().Owns(other.GetRoot()));
    EXPECT_FALSE(other.Owns(At("e")));
    CQELDocument::SetViewElement(At("a"), nullptr);
}

} // namespace
