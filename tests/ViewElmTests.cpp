// The tree of view elements: links, copies, reference size and blink phase through a subtree, and
// the blocks of root and group. The code is render/QELViewElm.*, QELViewQEL.* and QELViewGroup.*.
#include "render/QELView.h"
#include "render/QELViewBox.h"
#include "render/QELViewGroup.h"
#include "render/QELViewPoints.h"
#include "render/QELViewQEL.h"
#include "render/QELViewText.h"
#include "tests/support/ViewSupport.h"

#include <memory>

namespace {

using ElmPtr = std::unique_ptr<CQELViewElm>;

CQELViewGroup* NewGroup()
{
    return new CQELViewGroup(50, 50);
}

CQELViewRect* NewRect(int nLeft, uint32_t nFlags = 0)
{
    auto* pRect = new CQELViewRect(100, 100);
    QELSHAPEATTR attr = OutlineAttr({nLeft, 10, nLeft + 10, 20});
    attr.nFlags = nFlags;
    EXPECT_EQ(1, pRect->SetAttrBlock(&attr));
    return pRect;
}

// The children by their next links, and back by their previous links.
std::vector<const CQELViewElm*> Forward(const CQELViewElm& elm)
{
    std::vector<const CQELViewElm*> found;
    for (const CQELViewElm* p = elm.FirstChild(); p; p = p->NextSibling()) found.push_back(p);
    return found;
}
std::vector<const CQELViewElm*> Backward(const CQELViewElm* pLast)
{
    std::vector<const CQELViewElm*> found;
    for (; pLast; pLast = pLast->PrevSibling()) found.insert(found.begin(), pLast);
    return found;
}
using Chain = std::vector<const CQELViewElm*>;

void ExpectChain(const CQELViewElm& parent, const Chain& expected)
{
    EXPECT_EQ(expected, Forward(parent));
    EXPECT_EQ(expected, Backward(expected.empty() ? nullptr : expected.back()));
    for (const CQELViewElm* p : expected) EXPECT_EQ(&parent, p->Parent());
}

int LeftOf(const CQELViewElm& elm)
{
    QELSHAPEATTR attr{};
    EXPECT_EQ(1, elm.GetAttrBlock(&attr));
    return attr.nGeometry[0];
}

struct Family { // a group with three groups in it
    CQELViewGroup parent{50, 50};
    CQELViewGroup* a = NewGroup();
    CQELViewGroup* b = NewGroup();
    CQELViewGroup* c = NewGroup();
    Family()
    {
        parent.AppendChild(a);
        parent.AppendChild(b);
        parent.AppendChild(c);
    }
};

TEST(ViewElement, BeginsAloneAndInTheLightPhase)
{
    const CQELViewGroup group(7, 9);
    EXPECT_EQ(nullptr, group.Parent());
    EXPECT_EQ(nullptr, group.FirstChild());
    EXPECT_EQ(nullptr, group.NextSibling());
    EXPECT_EQ(nullptr, group.PrevSibling());
    EXPECT_EQ(QEL_TYPE_GROUP, group.Type());
    EXPECT_EQ(7, group.RefW());
    EXPECT_EQ(9, group.RefH());
    EXPECT_EQ(0, group.BlinkPhase());
    EXPECT_EQ(0U, group.GetParamMask());
}

TEST(ViewElement, AppendsBehindTheLastChild)
{
    Family f;
    ExpectChain(f.parent, {f.a, f.b, f.c});
}

TEST(ViewElement, IsLinkedAfterAndBeforeASibling)
{
    Family f;
    CQELViewGroup* d = NewGroup();
    d->InsertAfter(f.a);
    ExpectChain(f.parent, {f.a, d, f.b, f.c});
    CQELViewGroup* e = NewGroup();
    e->InsertAfter(f.c);
    ExpectChain(f.parent, {f.a, d, f.b, f.c, e});
    CQELViewGroup* g = NewGroup();
    g->InsertBefore(f.b);
    ExpectChain(f.parent, {f.a, d, g, f.b, f.c, e});
    CQELViewGroup* h = NewGroup();
    f.parent.AppendChild(h); // the end is still known
    ExpectChain(f.parent, {f.a, d, g, f.b, f.c, e, h});
}

TEST(ViewElement, MovesBehindASiblingOrToTheFront)
{
    Family f;
    f.a->Move(&f.parent, f.b);
    ExpectChain(f.parent, {f.b, f.a, f.c});
    f.c->Move(&f.parent, nullptr);
    ExpectChain(f.parent, {f.c, f.b, f.a});
    f.c->Move(&f.parent, f.a);
    ExpectChain(f.parent, {f.b, f.a, f.c});
    CQELViewGroup* d = NewGroup();
    f.parent.AppendChild(d);
    ExpectChain(f.parent, {f.b, f.a, f.c, d});
}

TEST(ViewElement, MovesWithAllThatIsInItAndLeavesTheOldChainClosed)
{
    Family f;
    CQELViewGroup* inner = NewGroup();
    f.b->AppendChild(inner);
    CQELViewGroup* x = NewGroup();
    f.c->AppendChild(x);
    f.b->Move(f.c, x);
    ExpectChain(f.parent, {f.a, f.c});
    ExpectChain(*f.c, {x, f.b});
    ExpectChain(*f.b, {inner});
}

TEST(ViewElement, MoveToNoParentTakesItOutOfTheTree)
{
    Family f;
    const ElmPtr b(f.b);
    f.b->Move(nullptr, f.c);
    ExpectChain(f.parent, {f.a, f.c});
    EXPECT_EQ(nullptr, b->Parent());
    EXPECT_EQ(nullptr, b->PrevSibling());
    EXPECT_EQ(nullptr, b->NextSibling());
}

TEST(ViewElement, MoveIntoAnEmptyParentMakesItTheOnlyChildWhateverAfterSays)
{
    Family f;
    f.a->Move(f.c, f.b); // b is no child of c
    ExpectChain(f.parent, {f.b, f.c});
    ExpectChain(*f.c, {f.a});
    EXPECT_EQ(nullptr, f.a->NextSibling());
    EXPECT_EQ(nullptr, f.a->PrevSibling());
}

TEST(ViewElement, DetachDestroysTheChildrenAndClosesTheChain)
{
    Family f;
    f.a->AppendChild(NewGroup());
    f.a->FirstChild()->AppendChild(NewRect(1));
    f.a->Detach(); // the first child: the next one takes its place
    const ElmPtr a(f.a);
    ExpectChain(f.parent, {f.b, f.c});
    EXPECT_EQ(nullptr, a->FirstChild());
    EXPECT_EQ(nullptr, a->Parent());
    EXPECT_EQ(nullptr, a->NextSibling());
    EXPECT_EQ(nullptr, a->PrevSibling());
    f.c->Detach();
    const ElmPtr c(f.c);
    ExpectChain(f.parent, {f.b});
    f.b->Detach();
    const ElmPtr b(f.b);
    ExpectChain(f.parent, {});
}

TEST(ViewElement, ReferenceSizeReachesEveryDescendantHoweverDeep)
{
    CQELViewQEL root(50, 50);
    CQELViewElm* pElm = &root;
    for (int n = 0; n < 512; ++n) {
        CQELViewGroup* pNext = NewGroup();
        pElm->AppendChild(NewRect(n));
        pElm->AppendChild(pNext);
        pElm = pNext;
    }
    root.SetRefSize(300, -4);
    root.SetBlink(5);
    int nSeen = 0;
    for (const CQELViewElm* p = &root; p; p = p->NextInTree(&root), ++nSeen) {
        ASSERT_EQ(300, p->RefW());
        ASSERT_EQ(-4, p->RefH());
        ASSERT_EQ(1, p->BlinkPhase()); // for any phase but 0
    }
    EXPECT_EQ(1 + 2 * 512, nSeen);
}

TEST(ViewElement, ReferenceSizeAndBlinkStayBelowTheElement)
{
    Family f;
    CQELViewGroup* inner = NewGroup();
    f.b->AppendChild(inner);
    f.b->SetRefSize(8, 9);
    f.b->SetBlink(1);
    EXPECT_EQ(8, inner->RefW());
    EXPECT_EQ(1, inner->BlinkPhase());
    for (const CQELViewElm* p : {static_cast<CQELViewElm*>(&f.parent),
                                 static_cast<CQELViewElm*>(f.a), static_cast<CQELViewElm*>(f.c)}) {
        EXPECT_EQ(50, p->RefW());
        EXPECT_EQ(0, p->BlinkPhase());
    }
    f.parent.SetBlink(0);
    EXPECT_EQ(0, inner->BlinkPhase());
}

TEST(ViewElement, BlinkColorsAreBlackInTheDarkPhaseOnly)
{
    CQELViewGroup group(50, 50);
    EXPECT_EQ(0x123456U, group.BlinkColor(0x123456));
    EXPECT_EQ(0x123456U, group.BlinkColor(0x80123456));
    EXPECT_EQ(0x7F123456U, group.BlinkColor(0xFF123456)); // only bit 31 goes
    for (const int nPhase : {1, -1, 0x100}) {
        group.SetBlink(nPhase);
        EXPECT_EQ(0x123456U, group.BlinkColor(0x123456));
        EXPECT_EQ(0U, group.BlinkColor(0x80123456));
    }
}

TEST(ViewElement, DrawsItsChildrenInOrderParentsFirst)
{
    CQELViewGroup group(100, 100);
    auto* pInner = new CQELViewGroup(100, 100);
    group.AppendChild(NewRect(1));
    group.AppendChild(pInner);
    pInner->AppendChild(NewRect(2));
    pInner->AppendChild(NewRect(3));
    group.AppendChild(NewRect(4));
    CRecording recording;
    EXPECT_EQ(1, group.Draw(recording.Dc(), {0, 0, 100, 100}, QEL_DRAW_FULL));
    EXPECT_EQ((Lines{"Rectangle 1,10,11,20", "Rectangle 2,10,12,20", "Rectangle 3,10,13,20",
                     "Rectangle 4,10,14,20"}),
              recording.Only({"Rectangle"}));
}

TEST(ViewElement, PassesTurnsAndMovesToEveryChildAndSucceedsWhateverTheyAnswer)
{
    CQELViewGroup group(100, 100);
    auto* pInner = new CQELViewGroup(100, 100);
    group.AppendChild(pInner);
    CQELViewRect* pRect = NewRect(30);
    auto* pLine = new CQELViewLine(100, 100);
    QELSHAPEATTR attr = OutlineAttr({1, 2, 3, 4});
    ASSERT_EQ(1, pLine->SetAttrBlock(&attr));
    pInner->AppendChild(pRect);
    group.AppendChild(pLine);
    EXPECT_EQ(1, group.MoveX(5));
    EXPECT_EQ(35, LeftOf(*pRect));
    EXPECT_EQ(6, LeftOf(*pLine));
    EXPECT_EQ(1, group.MoveY(7));
    ASSERT_EQ(1, pLine->GetAttrBlock(&attr));
    EXPECT_EQ(9, attr.nGeometry[1]);
    EXPECT_EQ(1, group.Rotate({50, 50}, 90));
    // x' = y, y' = 100 - x: the rectangle 35,17..45,27 and the line from 6,9.
    EXPECT_EQ(17, LeftOf(*pRect));
    EXPECT_EQ(9, LeftOf(*pLine));
    // No child takes the parameters: their failures are not the group's.
    EXPECT_EQ(0, pRect->SetColorParam(1));
    EXPECT_EQ(1, group.SetColorParam(1));
    EXPECT_EQ(1, group.SetDraftParam(1));
    EXPECT_EQ(1, group.SetDraftForeParam(1));
    EXPECT_EQ(1, group.SetDraftBackParam(1));
}

TEST(ViewElement, PassesParametersDownAndJoinsTheMasks)
{
    CQELViewGroup group(100, 100);
    auto* pInner = new CQELViewGroup(100, 100);
    group.AppendChild(pInner);
    CQELViewRect* pColor = NewRect(1, QEL_FLAG_COLOR_PARAM);
    auto* pDraft = new CQELViewEllipse(100, 100);
    QELSHAPEATTR attr = FilledAttr({0, 0, 5, 5});
    attr.nFlags = QEL_FLAG_DRAFT_PARAM | QEL_KEEP_TOP;
    ASSERT_EQ(1, pDraft->SetAttrBlock(&attr));
    EXPECT_EQ(0U, group.GetParamMask());
    pInner->AppendChild(pColor);
    EXPECT_EQ(static_cast<uint32_t>(QEL_MASK_COLOR), group.GetParamMask());
    group.AppendChild(pDraft);
    group.AppendChild(new CQELViewText(100, 100));
    EXPECT_EQ(
        static_cast<uint32_t>(QEL_MASK_COLOR | QEL_MASK_DRAFT | QEL_MASK_KEEP | QEL_MASK_TEXT),
        group.GetParamMask());
    EXPECT_EQ(1, group.SetColorParam(0x111111));
    EXPECT_EQ(1, group.SetDraftParam(12));
    EXPECT_EQ(1, group.SetDraftForeParam(0x222222));
    EXPECT_EQ(1, group.SetDraftBackParam(0x333333));
    ASSERT_EQ(1, pColor->GetAttrBlock(&attr));
    EXPECT_EQ(0x111111U, attr.clrPen);
    EXPECT_EQ(0, attr.nDraft);
    ASSERT_EQ(1, pDraft->GetAttrBlock(&attr));
    EXPECT_EQ(0x0000FFU, attr.clrPen);
    EXPECT_EQ(12, attr.nDraft);
    EXPECT_EQ(0x222222U, attr.clrA);
    EXPECT_EQ(0x333333U, attr.clrB);
}

// ---- places ----

TEST(ViewElement, ThatPaintsNothingItselfIsNotHit)
{
    Family f;
    f.b->AppendChild(NewRect(1));
    for (const LONG n : {0, 1, 2, 25}) EXPECT_FALSE(f.b->IsHit({0, 0, 50, 50}, {n, n})) << n;
}

// ---- copies ----

TEST(ViewDuplicate, IntoAnotherParentStandsLast)
{
    Family f;
    CQELViewGroup other(50, 50);
    CQELViewGroup* x = NewGroup();
    other.AppendChild(x);
    CQELViewElm* pCopy = nullptr;
    ASSERT_EQ(1, f.b->Duplicate(&other, &pCopy));
    ExpectChain(other, {x, pCopy});
    ExpectChain(f.parent, {f.a, f.b, f.c}); // the source stays where it is
}

TEST(ViewDuplicate, CopiesTheWholeSubtreeInOrderWithItsAttributes)
{
    CQELViewGroup source(60, 70);
    auto* pInner = new CQELViewGroup(60, 70);
    source.AppendChild(NewRect(1, QEL_FLAG_PRESS));
    source.AppendChild(pInner);
    pInner->AppendChild(NewRect(2));
    pInner->AppendChild(NewRect(3));
    CQELViewGroup target(50, 50);
    CQELViewElm* pCopy = nullptr;
    ASSERT_EQ(1, source.Duplicate(&target, &pCopy));
    EXPECT_EQ(QEL_TYPE_GROUP, pCopy->Type());
    EXPECT_EQ(60, pCopy->RefW()); // its own reference size, not the target's
    EXPECT_EQ(70, pCopy->RefH());
    ASSERT_EQ(2U, Forward(*pCopy).size());
    const CQELViewElm* pFirst = pCopy->FirstChild();
    EXPECT_EQ(QEL_TYPE_RECT, pFirst->Type());
    EXPECT_EQ(1, LeftOf(*pFirst));
    EXPECT_EQ(static_cast<uint32_t>(QEL_MASK_PRESS), pFirst->GetParamMask());
    ASSERT_EQ(2U, Forward(*pFirst->NextSibling()).size());
    EXPECT_EQ(2, LeftOf(*pFirst->NextSibling()->FirstChild()));
    EXPECT_EQ(3, LeftOf(*pFirst->NextSibling()->FirstChild()->NextSibling()));
    // The copy is its own: the source does not follow it.
    EXPECT_EQ(1, pCopy->MoveX(20));
    EXPECT_EQ(21, LeftOf(*pFirst));
    EXPECT_EQ(1, LeftOf(*source.FirstChild()));
}

// The copy is linked to the source alone. So the siblings behind the source drop out of the chain,
// and the source loses its link back.
TEST(ViewDuplicate, WithinItsOwnParentCutsTheChainBehindTheSource)
{
    Family f;
    const ElmPtr c(f.c); // falls out of the tree below: the test frees it
    CQELViewElm* pCopy = nullptr;
    ASSERT_EQ(1, f.b->Duplicate(&f.parent, &pCopy));
    EXPECT_EQ(&f.parent, pCopy->Parent());
    EXPECT_EQ((Chain{f.a, f.b, pCopy}), Forward(f.parent));
    EXPECT_EQ(f.b, pCopy->PrevSibling());
    EXPECT_EQ(nullptr, pCopy->NextSibling());
    EXPECT_EQ(nullptr, f.b->PrevSibling());
    // A walk to the last child now ends at the copy, and there the next one is linked.
    CQELViewGroup* d = NewGroup();
    f.parent.AppendChild(d);
    EXPECT_EQ((Chain{f.a, f.b, pCopy, d}), Forward(f.parent));
    EXPECT_EQ(pCopy, d->PrevSibling());
    delete d; // before c, whose end cuts the chain that these two hang in
    delete pCopy;
}

TEST(ViewDuplicate, OfAnElementWithoutAParentIsNotLinked)
{
    CQELViewGroup source(50, 50);
    source.AppendChild(NewRect(4));
    CQELViewElm* pCopy = nullptr;
    ASSERT_EQ(1, source.Duplicate(nullptr, &pCopy));
    const ElmPtr copy(pCopy);
    EXPECT_EQ(nullptr, copy->Parent());
    EXPECT_EQ(nullptr, copy->PrevSibling());
    EXPECT_EQ(nullptr, source.NextSibling());
    ASSERT_NE(nullptr, copy->FirstChild());
    EXPECT_EQ(4, LeftOf(*copy->FirstChild()));
}

// ---- root and group ----

TEST(ViewRoot, TakesKindAndReferenceSizeForItsSubtree)
{
    CQELViewQEL root(50, 50);
    CQELViewGroup* pGroup = NewGroup();
    CQELViewRect* pRect = NewRect(1);
    root.AppendChild(pGroup);
    pGroup->AppendChild(pRect);
    QELROOTATTR attr{sizeof attr, 0x10000, 2, 640, 480, 90};
    ASSERT_EQ(1, root.SetAttrBlock(&attr));
    EXPECT_EQ(2, root.Kind());
    EXPECT_EQ(QEL_TYPE_ROOT, root.Type());
    for (const CQELViewElm* p :
         {static_cast<CQELViewElm*>(&root), static_cast<CQELViewElm*>(pGroup),
          static_cast<CQELViewElm*>(pRect)}) {
        EXPECT_EQ(640, p->RefW());
        EXPECT_EQ(480, p->RefH());
    }
    EXPECT_EQ(1, LeftOf(*pRect)); // the rotation word is not applied
}

TEST(ViewRoot, RefusesABlockOfAnotherSizeAndStaysAsItIs)
{
    CQELViewQEL root(50, 51);
    for (const DWORD nSize : {0, 20, 23, 25, 28, 424}) {
        QELROOTATTR attr{nSize, 0x10000, 1, 640, 480, 0};
        EXPECT_EQ(0, root.SetAttrBlock(&attr)) << nSize;
        EXPECT_EQ(0, root.SetAttrBlock(nullptr));
        EXPECT_EQ(0, root.Kind());
        EXPECT_EQ(50, root.RefW());
        EXPECT_EQ(51, root.RefH());
    }
}

TEST(ViewRoot, GivesItsBlockSizeButNoBlock)
{
    const CQELViewQEL root(50, 50);
    int nSize = 0;
    EXPECT_EQ(1, root.GetAttrBlockSize(&nSize));
    EXPECT_EQ(24, nSize);
    QELROOTATTR attr{24, 1, 2, 3, 4, 5};
    EXPECT_EQ(0, root.GetAttrBlock(&attr));
    EXPECT_EQ(3, attr.nWidth);
}

TEST(ViewRoot, CopiesItsKindAndMakesInstancesOfItsOwnSize)
{
    CQELViewQEL root(30, 40);
    QELROOTATTR attr{sizeof attr, 0x10000, 1, 64, 48, 0};
    ASSERT_EQ(1, root.SetAttrBlock(&attr));
    CQELViewElm* pElm = nullptr;
    ASSERT_EQ(1, root.Duplicate(nullptr, &pElm));
    const ElmPtr copy(pElm);
    EXPECT_EQ(QEL_TYPE_ROOT, copy->Type());
    EXPECT_EQ(1, static_cast<CQELViewQEL*>(copy.get())->Kind());
    EXPECT_EQ(64, copy->RefW());
    ASSERT_EQ(1, root.NewInstance(&pElm));
    const ElmPtr made(pElm);
    EXPECT_EQ(0, static_cast<CQELViewQEL*>(made.get())->Kind());
    EXPECT_EQ(48, made->RefH());
}

TEST(ViewRoot, KeepsANameOf255Bytes)
{
    CQELViewQEL root(50, 50);
    EXPECT_STREQ("", root.Name());
    root.SetName("tank farm");
    EXPECT_STREQ("tank farm", root.Name());
    root.SetName(std::string(300, 'x').c_str());
    EXPECT_EQ(std::string(255, 'x'), root.Name());
}

TEST(ViewGroup, TakesAnyBlockAndReadsAsOneZeroWord)
{
    CQELViewGroup group(50, 60);
    int nSize = 0;
    EXPECT_EQ(1, group.GetAttrBlockSize(&nSize));
    EXPECT_EQ(4, nSize);
    const QELROOTATTR anything{99, 1, 2, 640, 480, 0};
    EXPECT_EQ(1, group.SetAttrBlock(&anything));
    EXPECT_EQ(0, group.SetAttrBlock(nullptr));
    EXPECT_EQ(50, group.RefW());
    LONG words[2] = {77, 88};
    EXPECT_EQ(1, group.GetAttrBlock(words));
    EXPECT_EQ(0, words[0]);
    EXPECT_EQ(88, words[1]); // one word only
    EXPECT_EQ(0, group.GetAttrBlock(nullptr));
}

TEST(ViewGroup, MakesAnEmptyGroupOfItsOwnReferenceSize)
{
    CQELViewGroup group(50, 60);
    group.AppendChild(NewRect(1));
    CQELViewElm* pElm = nullptr;
    ASSERT_EQ(1, group.NewInstance(&pElm));
    const ElmPtr made(pElm);
    EXPECT_EQ(QEL_TYPE_GROUP, made->Type());
    EXPECT_EQ(60, made->RefH());
    EXPECT_EQ(nullptr, made->FirstChild());
    EXPECT_EQ(nullptr, made->Parent());
}

} // namespace

// ---- what the host has set, where there is nothing to keep it ----

TEST(ViewElement, OutsideOfADrawingNothingIsKeptOfWhatAHostSets)
{
    const ElmPtr pGroup(NewGroup());
    EXPECT_EQ(nullptr, pGroup->MakeLive());
    EXPECT_FALSE(pGroup->IsLive());
    pGroup->SetLive(true); // as one is that has left its drawing
    EXPECT_EQ(nullptr, pGroup->Live());
    EXPECT_FALSE(pGroup->IsHiddenItself());
    EXPECT_FALSE(pGroup->IsMarked());
    pGroup->Touch();
    pGroup->TouchPlace();
    EXPECT_FALSE(pGroup->IsTouched());
}

TEST(ViewElement, ARootThatKeepsNoDirtyAreaLeavesItsElementsUntouched)
{
    CQELViewQEL root(100, 100);
    CQELViewRect* pRect = NewRect(10);
    root.AppendChild(pRect);
    pRect->Touch();
    pRect->TouchPlace();
    EXPECT_FALSE(pRect->IsTouched());
    EXPECT_EQ(nullptr, pRect->MakeLive());
}

TEST(DirtyArea, TakesNoPlacesOfWhatIsInNoDrawing)
{
    CDirtyArea dirty; // begins with all of it
    dirty.SetPlace({0, 0, 100, 100});
    dirty.Clear();
    const ElmPtr pRect(NewRect(10));
    dirty.AddPlaceOf(pRect.get(), nullptr);
    EXPECT_EQ(0, dirty.Count());
    EXPECT_FALSE(dirty.IsAll());
}
