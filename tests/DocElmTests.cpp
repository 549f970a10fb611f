// The base class of the document elements: what an element without a class of its own does, the
// identifier, the links, and the rectangles of elements that gather children. The code is
// document/QELDocElm.cpp; whole drawings are in DocumentTests.cpp.
#include "engine/ElementTypes.h"
#include "tests/support/DocSupport.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>
#include <vector>

namespace {

class CXml { // an XML tree with an element on the cursor
public:
    explicit CXml(std::string text) : m_pXml(XmlCreate())
    {
        EXPECT_EQ(text.empty() ? 1 : 0, XmlParseText(m_pXml, text.data()));
        if (!text.empty()) {
            EXPECT_EQ(0, XmlGoRoot(m_pXml));
        }
    }
    ~CXml() { XmlDestroy(m_pXml); }
    CXml(const CXml&) = delete;
    CXml& operator=(const CXml&) = delete;

    DocContext* Slot() { return &m_context; }
    XmlContext* Get() { return m_pXml; }

private:
    XmlContext* m_pXml;
    DocContext m_context{m_pXml, &g_elementTypes};
};

// ---- an element without a class ----

TEST(DocElement, BeginsUnlinkedWithoutIdentifierAndView)
{
    DocContext context{nullptr, &g_elementTypes};
    CQELDocElm elm(&context, QEL_TYPE_NONE);
    EXPECT_EQ(22, elm.Type());
    EXPECT_STREQ("", elm.Id());
    EXPECT_EQ(nullptr, elm.View());
    EXPECT_EQ(&context, elm.Context());
    EXPECT_EQ(nullptr, elm.Parent());
    EXPECT_EQ(nullptr, elm.FirstChild());
    EXPECT_EQ(nullptr, elm.LastChild());
    EXPECT_EQ(nullptr, elm.NextSibling());
    EXPECT_EQ(nullptr, elm.PrevSibling());
}

TEST(DocElement, HasNoRecord)
{
    DocContext context{nullptr, &g_elementTypes};
    const CQELDocElm elm(&context, QEL_TYPE_NONE);
    int nSize = 77;
    EXPECT_EQ(0, elm.GetAttrSize(&nSize));
}

TEST(DocElement, ClonesItsTypeAndItsPlaceInTheDocumentOnly)
{
    DocContext context{nullptr, &g_elementTypes};
    CQELDocElm parent(&context, QEL_TYPE_GROUP);
    auto* pElm = new CQELDocElm(&context, QEL_TYPE_PATH);
    parent.AppendChild(pElm);
    ASSERT_EQ(1, pElm->SetId("a"));
    CQELDocElm* pClone = nullptr;
    ASSERT_EQ(1, pElm->Clone(&pClone));
    const std::unique_ptr<CQELDocElm> clone(pClone);
    ASSERT_NE(nullptr, clone);
    EXPECT_NE(pElm, pClone);
    EXPECT_EQ(12, clone->Type());
    EXPECT_EQ(&context, clone->Context());
    EXPECT_EQ(nullptr, clone->Parent());
    EXPECT_STREQ("", clone->Id());
    EXPECT_EQ("a", TreeOf(parent)); // not linked
}

TEST(DocElement, WithoutChildrenItCannotBePlaced)
{
    DocContext context{nullptr, &g_elementTypes};
    CQELDocElm elm(&context, QEL_TYPE_GROUP);
    EXPECT_EQ("0 0 0 0", RectOf(elm));
    EXPECT_EQ(0, elm.SetRect({1, 2, 30, 40}));
    EXPECT_EQ(0, elm.MapRect({0, 0, 10, 10}, {1, 2, 30, 40}));
    EXPECT_EQ("0 0 0 0", RectOf(elm));
}

TEST(DocElement, GivesAndTakesNoRecord)
{
    DocContext context{nullptr, &g_elementTypes};
    CQELDocElm elm(&context, QEL_TYPE_PATH);
    unsigned char block[QEL_MAX_ATTR_SIZE];
    std::memset(block, 0xCC, sizeof block);
    EXPECT_EQ(0, elm.GetAttr(block));
    EXPECT_EQ(static_cast<std::ptrdiff_t>(sizeof block),
              std::count(std::begin(block), std::end(block), 0xCC));
    EXPECT_EQ(0, elm.SetAttr(block));
    EXPECT_EQ(QEL_TYPE_PATH, elm.Type());
}

// ---- every class ----

// The record of an element whose class has one; empty for the others.
std::vector<unsigned char> RecordBytes(const CQELDocElm& elm)
{
    int nSize = 0;
    if (!elm.GetAttrSize(&nSize)) return {};
    std::vector<unsigned char> bytes(static_cast<std::size_t>(nSize));
    EXPECT_EQ(1, elm.GetAttr(bytes.data()));
    return bytes;
}

template <class Visit>
void ForEachClass(DocContext* pContext, const Visit& visit)
{
    int nClasses = 0;
    for (const ElementType* pTag = g_elementTypes.Rows(); pTag->nId != KEYWORD_NONE; ++pTag) {
        if (!pTag->pfnMakeDoc) continue;
        SCOPED_TRACE(pTag->pszName);
        const std::unique_ptr<CQELDocElm> elm(pTag->pfnMakeDoc(pContext, nullptr));
        ASSERT_NE(nullptr, elm);
        visit(*elm);
        ++nClasses;
    }
    EXPECT_EQ(19, nClasses); // all tags but three
}

TEST(DocElement, OfNoClassReadsAnythingFromAnUnknownTag)
{
    CXml xml("<blob id='a' type='2' width='77' style='0x12' flag='0x34' crd='1 2 3 4 5 6 7 8 9' "
             "stx='5' scid='6' mtid='7' min='8' max='9' imin='8' imax='9'>words</blob>");
    ForEachClass(xml.Slot(), [](CQELDocElm& elm) {
        const std::vector<unsigned char> before = RecordBytes(elm);
        const int nType = elm.Type();
        EXPECT_EQ(0, elm.Load());
        EXPECT_EQ(nType, elm.Type());
        EXPECT_STREQ("", elm.Id());
        EXPECT_EQ(before, RecordBytes(elm));
    });
}

TEST(DocElement, OfEveryClassRefusesANullRecord)
{
    DocContext context{nullptr, &g_elementTypes};
    ForEachClass(&context, [](CQELDocElm& elm) {
        const std::vector<unsigned char> before = RecordBytes(elm);
        EXPECT_EQ(0, elm.GetAttr(nullptr));
        EXPECT_EQ(0, elm.SetAttr(nullptr));
        EXPECT_EQ(before, RecordBytes(elm));
    });
}

// ---- reading ----

TEST(DocElement, ReadsItsTypeFromTheTag)
{
    const struct {
        const char* pszTag;
        int nType;
    } rows[] = {{"qel", 0},   {"text", 1}, {"polygon", 11}, {"path", 12},
                {"defs", 13}, {"use", 14}, {"g", 15},       {"meter", 21}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszTag);
        CXml xml(std::string("<") + row.pszTag + "/>");
        CQELDocElm elm(xml.Slot(), QEL_TYPE_NONE);
        EXPECT_EQ(1, elm.Load());
        EXPECT_EQ(row.nType, elm.Type());
        EXPECT_STREQ("", elm.Id());
    }
}

TEST(DocElement, DoesNotReadAnUnknownTagOrANamelessNode)
{
    CXml unknown("<blob id='a'/>");
    CQELDocElm elm(unknown.Slot(), QEL_TYPE_NONE);
    EXPECT_EQ(0, elm.Load());
    EXPECT_STREQ("", elm.Id());
    CXml nameless("");
    CQELDocElm other(nameless.Slot(), QEL_TYPE_NONE);
    EXPECT_EQ(0, other.Load());
    EXPECT_EQ(22, other.Type());
}

TEST(DocElement, ReadsItsIdentifierUpTo255Bytes)
{
    for (const int nLength : {1, 254, 255, 256, 257, 4000}) {
        SCOPED_TRACE(nLength);
        std::string id;
        for (int n = 0; n < nLength; ++n) id += static_cast<char>('A' + n % 23);
        CXml xml("<rect id=\"" + id + "\"/>");
        CQELDocElm elm(xml.Slot(), QEL_TYPE_NONE);
        ASSERT_EQ(1, elm.Load());
        EXPECT_EQ(id.substr(0, 255), elm.Id());
    }
}

// ---- writing ----

class CText final : public CXmlSink {
public:
    std::string m_text;

private:
    void PutMore(const char* pText, std::size_t nLen) override { m_text.append(pText, nLen); }
};

// Where elements are saved as text.
class CSaving {
public:
    CSaving() { m_xml.pWriter = &m_writer; }
    DocContext* Slot() { return &m_context; }
    const std::string& Text() const { return m_sink.m_text; }

private:
    CText m_sink;
    CXmlWriter m_writer{m_sink};
    XmlContext m_xml;
    DocContext m_context{&m_xml, &g_elementTypes};
};

TEST(DocElement, WritesItselfWithItsIdentifierAroundItsChildren)
{
    CSaving saving;
    CQELDocElm elm(saving.Slot(), QEL_TYPE_RECT);
    CQELDocElm inside(saving.Slot(), QEL_TYPE_PATH);
    ASSERT_EQ(1, elm.SetId("new"));
    ASSERT_EQ(1, elm.Save());
    ASSERT_EQ(1, inside.Save());
    inside.EndSave();
    elm.EndSave();
    EXPECT_EQ("<rect id=\"new\">\r\n<path/>\r\n</rect>\r\n", saving.Text());
}

TEST(DocElement, WithoutATagItIsNotWritten)
{
    for (const int nType : {22, -1, 100}) {
        CSaving saving;
        CQELDocElm elm(saving.Slot(), nType);
        EXPECT_EQ(0, elm.Save()) << nType;
        EXPECT_EQ("", saving.Text()) << nType;
    }
}

TEST(DocElement, AnIdentifierThatIsUnsetOrEmptyIsNotWritten)
{
    CSaving saving;
    CQELDocElm unset(saving.Slot(), QEL_TYPE_GROUP);
    EXPECT_STREQ("", unset.Id());
    ASSERT_EQ(1, unset.Save());
    unset.EndSave();
    CQELDocElm emptied(saving.Slot(), QEL_TYPE_GROUP);
    ASSERT_EQ(1, emptied.SetId("was"));
    ASSERT_EQ(1, emptied.SetId(""));
    ASSERT_EQ(1, emptied.Save());
    emptied.EndSave();
    EXPECT_EQ("<g/>\r\n<g/>\r\n", saving.Text());
}

// ---- identifiers of copies ----

TEST(DocElement, ACopysIdentifierIsCutAt255BytesToo)
{
    const struct {
        int nLength;
        const char* pszSuffix; // what is left of "_1"
    } rows[] = {{252, "_1"}, {253, "_1"}, {254, "_"}, {255, ""}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.nLength);
        const std::string id(static_cast<std::size_t>(row.nLength), 'k');
        CTestDocument document(DrawingText("<rect id=\"" + id + "\"/>"));
        const CQELDocElm* pCopy = document->CopyElement(document.First());
        ASSERT_NE(nullptr, pCopy);
        EXPECT_EQ(id + row.pszSuffix, pCopy->Id());
        EXPECT_EQ(id, document.First()->Id());
    }
}

TEST(DocElement, ACopyUnderAnotherParentIsItsLastChild)
{
    CTestDocument document(
        DrawingText("<g id=\"a\"><rect id=\"b\"/></g><g id=\"c\"><line id=\"d\"/></g>"));
    CQELDocElm* pCopy = nullptr;
    ASSERT_EQ(1, document.First()->CopyTo(FindById(document.Root(), "c"), &pCopy));
    EXPECT_STREQ("a_1", pCopy->Id());
    EXPECT_EQ("a(b) c(d a_1(b_1))", TreeOf(*document.Root()));
    EXPECT_EQ("", BrokenLink(*document.Root()));
}

TEST(DocElement, ACopyForNoParentIsNotLinked)
{
    CTestDocument document(DrawingText("<g id=\"a\"><rect id=\"b\"/></g><line id=\"c\"/>"));
    CQELDocElm* pCopy = nullptr;
    ASSERT_EQ(1, document.First()->CopyTo(nullptr, &pCopy));
    const std::unique_ptr<CQELDocElm> copy(pCopy);
    EXPECT_EQ(nullptr, copy->Parent());
    EXPECT_EQ(nullptr, copy->PrevSibling());
    EXPECT_EQ(nullptr, copy->NextSibling());
    EXPECT_EQ("b_1", TreeOf(*copy));
    EXPECT_EQ("a(b) c", TreeOf(*document.Root()));
}

// ---- links ----

TEST(DocElement, IsLinkedToSiblingsWithoutAParentToo)
{
    DocContext context{nullptr, &g_elementTypes};
    CQELDocElm middle(&context, QEL_TYPE_GROUP);
    CQELDocElm before(&context, QEL_TYPE_GROUP);
    CQELDocElm after(&context, QEL_TYPE_GROUP);
    before.InsertBefore(&middle);
    after.InsertAfter(&middle);
    EXPECT_EQ(&middle, before.NextSibling());
    EXPECT_EQ(&after, middle.NextSibling());
    EXPECT_EQ(&middle, after.PrevSibling());
    EXPECT_EQ(&before, middle.PrevSibling());
    for (const CQELDocElm* p : {&before, &middle, &after}) EXPECT_EQ(nullptr, p->Parent());
    middle.Unlink();
    EXPECT_EQ(&after, before.NextSibling());
    EXPECT_EQ(&before, after.PrevSibling());
}

TEST(DocElement, AWalkEndsWithTheSubtreeOrElseWithTheTree)
{
    CTestDocument document(
        DrawingText("<g id=\"a\"><rect id=\"b\"/><line id=\"c\"/></g><line id=\"d\"/>"));
    const auto walk = [&](const CQELDocElm* pTop) {
        std::string ids;
        for (const CQELDocElm* p = document.First(); p; p = p->NextInTree(pTop)) ids += p->Id();
        return ids;
    };
    EXPECT_EQ("abc", walk(document.First()));
    EXPECT_EQ("abcd", walk(document.Root()));
    EXPECT_EQ("abcd", walk(nullptr));
}

TEST(DocElement, IsLinkedBeforeAndAfterSiblingsAndUnlinked)
{
    DocContext context{nullptr, &g_elementTypes};
    CQELDocElm parent(&context, QEL_TYPE_GROUP);
    const auto make = [&](const char* pszId) {
        auto* pElm = new CQELDocElm(&context, QEL_TYPE_GROUP);
        EXPECT_EQ(1, pElm->SetId(pszId));
        return pElm;
    };
    CQELDocElm* pB = make("b");
    parent.AppendChild(pB);
    EXPECT_EQ(&parent, pB->Parent());
    make("a")->InsertBefore(pB);
    CQELDocElm* pD = make("d");
    pD->InsertAfter(pB);
    make("c")->InsertBefore(pD);
    parent.AppendChild(make("e"));
    make("f")->InsertAfter(parent.LastChild());
    parent.PrependChild(make("0"));
    EXPECT_EQ("0 a b c d e f", TreeOf(parent));
    EXPECT_EQ("", BrokenLink(parent));

    pB->Unlink();
    EXPECT_EQ("0 a c d e f", TreeOf(parent));
    EXPECT_EQ("", BrokenLink(parent));
    EXPECT_EQ(nullptr, pB->Parent());
    EXPECT_EQ(nullptr, pB->PrevSibling());
    EXPECT_EQ(nullptr, pB->NextSibling());
    parent.AppendChild(pB);
    EXPECT_EQ("0 a c d e f b", TreeOf(parent));
    EXPECT_EQ("", BrokenLink(parent));
}

TEST(DocElement, RemoveDeletesWhatIsInItAndClearsItsLinks)
{
    CTestDocument document(
        DrawingText("<g id=\"a\"><g id=\"b\"><rect id=\"c\"/></g></g><line id=\"d\"/>"));
    CQELDocElm* pFirst = document.First();
    const uintptr_t nB = NumberOf(FindById(document.Root(), "b"));
    const uintptr_t nC = NumberOf(FindById(document.Root(), "c"));
    pFirst->Remove();
    EXPECT_EQ("d", TreeOf(*document.Root())); // the first-child link moved on
    EXPECT_EQ("", BrokenLink(*document.Root()));
    EXPECT_FALSE(IsLive(nB));
    EXPECT_FALSE(IsLive(nC));
    EXPECT_STREQ("a", pFirst->Id()); // itself it lives
    EXPECT_EQ(nullptr, pFirst->FirstChild());
    EXPECT_EQ(nullptr, pFirst->Parent());
    EXPECT_EQ(nullptr, pFirst->NextSibling());
    delete pFirst;
}

TEST(DocElement, KnowsItsDepthItsHeightAndWhatItIsIn)
{
    CTestDocument document(DrawingText(
        "<g id=\"a\"><rect id=\"b\"/><g id=\"c\"><line id=\"d\"/></g></g><g id=\"e\"/>"));
    CQELDocElm* pRoot = document.Root();
    const struct {
        const char* pszId;
        int nDepth;
        int nHeight;
        bool bInA;
    } rows[] = {{"a", 1, 2, true},
                {"b", 2, 0, true},
                {"c", 2, 1, true},
                {"d", 3, 0, true},
                {"e", 1, 0, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszId);
        const CQELDocElm* pElm = FindById(pRoot, row.pszId);
        EXPECT_EQ(row.nDepth, pElm->Depth());
        EXPECT_EQ(row.nHeight, pElm->Height());
        EXPECT_EQ(row.bInA, pElm->IsInside(FindById(pRoot, "a")));
        EXPECT_TRUE(pElm->IsInside(pRoot));
    }
    EXPECT_EQ(0, pRoot->Depth());
    EXPECT_EQ(3, pRoot->Height());
}

} // namespace
