// The group element: a record that says nothing, and the rectangle of what is in it, which is also
// that of the root. The code is document/QELDocLeaves.cpp.
#include "document/QELDocLeaves.h"
#include "engine/ElementTypes.h"
#include "tests/support/DocSupport.h"

#include <memory>

namespace {

// The rectangles of an element's children: "1 2 3 4, none, 5 6 7 8".
std::string RectsIn(const CQELDocElm& parent)
{
    std::string text;
    for (const CQELDocElm* p = parent.FirstChild(); p; p = p->NextSibling())
        text += (text.empty() ? "" : ", ") + RectOf(*p);
    return text;
}

// A polygon in that place gets a count of points that it refuses to work with.
void Spoil(CQELDocElm* pPolygon)
{
    ASSERT_EQ(QEL_TYPE_POLYGON, pPolygon->Type());
    SetGeometry(pPolygon, {0});
}

// ---- record, file, copies ----

TEST(GroupElement, RecordIsOneWordOfZero)
{
    CTestDocument document(DrawingText("<g id=\"g\"/>"));
    const CQELDocElm* pGroup = document.First();
    int nSize = 0;
    ASSERT_EQ(1, pGroup->GetAttrSize(&nSize));
    EXPECT_EQ(4, nSize);
    LONG words[2] = {77, 78};
    ASSERT_EQ(1, pGroup->GetAttr(words));
    EXPECT_EQ(0, words[0]);
    EXPECT_EQ(78, words[1]); // no more than the four bytes
    EXPECT_EQ(0, pGroup->GetAttr(nullptr));
}

TEST(GroupElement, TakesAnyRecordAndChangesNothing)
{
    CTestDocument document(DrawingText("<g id=\"g\"><rect/></g>"));
    const std::string saved = document.Saved();
    const LONG words[] = {12345, -1};
    EXPECT_EQ(1, document.First()->SetAttr(words));
    LONG nWord = 77;
    ASSERT_EQ(1, document.First()->GetAttr(&nWord));
    EXPECT_EQ(0, nWord);
    EXPECT_EQ(0, document.First()->SetAttr(nullptr));
    EXPECT_EQ(saved, document.Saved());
}

TEST(GroupElement, KeepsItsIdentifierAndNothingElseOfTheFile)
{
    EXPECT_EQ("<g id=\"a\"/>\r\n",
              SavedBody("<g style=\"0x1\" id=\"a\" crd=\"1 2 3 4\">words</g>"));
    EXPECT_EQ("<g/>\r\n", SavedBody("<g></g>"));
}

TEST(GroupElement, CloneIsAnEmptyGroupOfTheSameDocument)
{
    CTestDocument document(DrawingText("<g id=\"a\"><rect/></g>"));
    CQELDocElm* pClone = nullptr;
    ASSERT_EQ(1, document.First()->Clone(&pClone));
    const std::unique_ptr<CQELDocElm> clone(pClone);
    ASSERT_NE(nullptr, clone);
    EXPECT_EQ(QEL_TYPE_GROUP, clone->Type());
    EXPECT_EQ(document.First()->Context(), clone->Context());
    EXPECT_EQ(nullptr, clone->FirstChild());
    EXPECT_EQ(nullptr, clone->Parent());
    int nSize = 0;
    EXPECT_EQ(1, clone->GetAttrSize(&nSize)); // a group, not a plain element
    EXPECT_EQ(4, nSize);
    EXPECT_EQ("a(2)", TreeOf(*document.Root()));
}

// ---- the rectangle ----

TEST(GroupElement, WithoutChildrenItsRectangleIsEmpty)
{
    CTestDocument document(DrawingText("<g/>"));
    EXPECT_EQ("0 0 0 0", RectOf(*document.First()));
    CQELDocument empty(g_elementTypes);
    ASSERT_EQ(1, empty.New());
    EXPECT_EQ("0 0 0 0", RectOf(*empty.GetRoot()));
}

TEST(GroupElement, ItsRectangleIsThatOfItsChildrenWithoutTheOrigin)
{
    CTestDocument document(
        DrawingText("<g><rect crd=\"40 30 20 50\"/><circle crd=\"60 60 5\"/>"
                    "<g><line crd=\"-7 33 -3 31\"/></g><g/></g><rect crd=\"1 99 2 100\"/>"));
    // 20 30 40 50, then 55 55 65 65, then -7 31 -3 33; the empty group adds nothing.
    EXPECT_EQ("-7 30 65 65", RectOf(*document.First()));
    EXPECT_EQ("-7 30 65 100", RectOf(*document.Root()));
}

TEST(GroupElement, AChildWithoutARectangleDoesNotWidenIt)
{
    CTestDocument document(DrawingText("<g><polygon/><rect crd=\"20 30 40 50\"/><polygon/></g>"));
    EXPECT_EQ("0 0 40 50", RectOf(*document.First())); // polygons begin as 0 0 10 10
    Spoil(document.First()->FirstChild());
    Spoil(document.First()->LastChild());
    EXPECT_EQ("20 30 40 50", RectOf(*document.First()));
    ASSERT_EQ(1, document->DeleteElement(document.First()->FirstChild()->NextSibling()));
    EXPECT_EQ("0 0 0 0", RectOf(*document.First())); // none of them has one
}

// ---- placing ----

TEST(GroupElement, GivesItsOldAndItsNewRectangleToEveryChild)
{
    CTestDocument document(DrawingText("<g><rect crd=\"0 0 10 10\"/><g><circle crd=\"15 15 "
                                       "5\"/></g><line crd=\"20 0 0 20\"/></g>"));
    EXPECT_EQ("0 0 20 20", RectOf(*document.First()));
    // From 20 by 20: -10 + (30 - 20) * 30 / 20 is 5; 5 + (10 - 20) * 10 / 20 is 0. The same for
    // all, the ones in the inner group included.
    ASSERT_EQ(1, document.First()->SetRect({-10, 5, 20, 15}));
    EXPECT_EQ("5 0 15 10, 15 10 25 20, 5 0 25 20", RectsIn(*document.First()));
    ASSERT_EQ(1, document.First()->SetRect({105, 200, 125, 220})); // as large: only moved
    EXPECT_EQ("105 200 115 210, 115 210 125 220, 105 200 125 220", RectsIn(*document.First()));
}

TEST(GroupElement, StopsAtTheFirstChildThatCannotBeMapped)
{
    CTestDocument document(
        DrawingText("<g><rect crd=\"0 0 10 10\"/><polygon/><rect crd=\"10 10 20 20\"/></g>"));
    CQELDocElm* pGroup = document.First();
    Spoil(pGroup->FirstChild()->NextSibling());
    EXPECT_EQ(0, pGroup->MapRect({0, 0, 20, 20}, {1, 2, 21, 22}));
    EXPECT_EQ("1 2 11 12, none, 10 10 20 20", RectsIn(*pGroup));
    EXPECT_EQ(0, pGroup->SetRect({0, 0, 19, 18})); // from 1 2 20 20, which is 19 by 18
    EXPECT_EQ("0 0 10 10, none, 10 10 20 20", RectsIn(*pGroup));
}

TEST(GroupElement, AnEmptyGroupAmongTheChildrenStopsTheMappingToo)
{
    CTestDocument document(
        DrawingText("<g><rect crd=\"0 0 10 10\"/><g/><rect crd=\"10 10 20 20\"/></g>"));
    EXPECT_EQ(0, document.First()->MapRect({0, 0, 20, 20}, {1, 2, 21, 22}));
    EXPECT_EQ("1 2 11 12, 0 0 0 0, 10 10 20 20", RectsIn(*document.First()));
    CTestDocument last(DrawingText("<g><rect crd=\"0 0 10 10\"/><g/></g>"));
    EXPECT_EQ(0, last.First()->MapRect({0, 0, 20, 20}, {1, 2, 21, 22})); // the last call's answer
    EXPECT_EQ("1 2 11 12, 0 0 0 0", RectsIn(*last.First()));
}

TEST(GroupElement, WithoutChildrenItCannotBePlaced)
{
    CTestDocument document(DrawingText("<g/>"));
    EXPECT_EQ(0, document.First()->SetRect({1, 2, 3, 4}));
    EXPECT_EQ(0, document.First()->MapRect({0, 0, 1, 1}, {1, 2, 3, 4}));
    EXPECT_EQ("0 0 0 0", RectOf(*document.First()));
}

TEST(GroupElement, TheRootIsPlacedLikeAGroup)
{
    CTestDocument document(
        DrawingText("<rect crd=\"10 10 20 20\"/><g><rect crd=\"20 20 30 30\"/></g>"));
    ASSERT_EQ(1, document.Root()->SetRect({0, 5, 20, 25})); // as large: by -10 and -5
    EXPECT_EQ("0 5 10 15, 10 15 20 25", RectsIn(*document.Root()));
    EXPECT_EQ(50, document.Root()->RefSize().cx);
}

TEST(GroupElement, AShapeMapsItselfAndNotWhatIsInIt)
{
    CTestDocument document(
        DrawingText("<rect crd=\"0 0 10 10\"><rect crd=\"50 50 60 60\"/></rect>"));
    EXPECT_EQ("0 0 10 10", RectOf(*document.First()));
    ASSERT_EQ(1, document.First()->SetRect({1, 2, 11, 12}));
    EXPECT_EQ("1 2 11 12", RectOf(*document.First()));
    EXPECT_EQ("50 50 60 60", RectsIn(*document.First()));
}

} // namespace
