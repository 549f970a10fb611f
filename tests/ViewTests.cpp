// The view: making, finding and deleting elements, full and partial redraws, the host parameters,
// and the operations on the whole tree. The code is render/QELView.*.
#include "engine/ElementTypes.h"
#include "render/QELView.h"

#include "dynamic/MeterTypes.h"
#include "dynamic/QELViewContainers.h"
#include "render/QELViewBox.h"
#include "render/QELViewGroup.h"
#include "tests/support/ViewSupport.h"

namespace {

constexpr RECT QEL{0, 0, 100, 100};

// A view with a root of 100 by 100 units.
class Scene {
public:
    Scene() : m_view(g_elementTypes, {100, 100}) { EXPECT_EQ(1, m_view.NewTree()); }
    CQELView* operator->() { return &m_view; }
    CQELViewElm* Make(int nType, CQELViewElm* pParent = nullptr, CQELViewElm* pAfter = nullptr)
    {
        CQELViewElm* pElm = nullptr;
        EXPECT_EQ(1, m_view.CreateElement(pParent ? pParent : m_view.Root(), pAfter, nType, &pElm));
        return pElm;
    }
    CQELViewElm* MakeRect(int nLeft, CQELViewElm* pParent = nullptr, uint32_t nFlags = 0)
    {
        QELSHAPEATTR attr = FilledAttr({nLeft, 10, nLeft + 10, 20});
        attr.nFlags = nFlags;
        CQELViewElm* pElm = Make(QEL_TYPE_RECT, pParent);
        EXPECT_EQ(1, pElm->SetAttrBlock(&attr));
        return pElm;
    }
    Lines Drawn(CQELViewElm* pElm, uint32_t nFlags, int nResult = 1)
    {
        CRecording recording;
        EXPECT_EQ(nResult, m_view.Draw(pElm, recording.Dc(), QEL, nFlags));
        return recording.Only({"Rectangle"});
    }

private:
    CQELView m_view;
};

QELSHAPEATTR AttrOf(const CQELViewElm* pElm)
{
    QELSHAPEATTR attr{};
    EXPECT_EQ(1, pElm->GetAttrBlock(&attr));
    return attr;
}

std::vector<const CQELViewElm*> ChildrenOf(const CQELViewElm* pParent)
{
    std::vector<const CQELViewElm*> found;
    for (const CQELViewElm* p = pParent->FirstChild(); p; p = p->NextSibling()) found.push_back(p);
    return found;
}
using Chain = std::vector<const CQELViewElm*>;

TEST(View, BeginsEmptyWith50By50)
{
    CQELView view(g_elementTypes);
    SIZE size{};
    EXPECT_EQ(1, view.GetRefSize(&size));
    EXPECT_EQ(50, size.cx);
    EXPECT_EQ(50, size.cy);
    EXPECT_EQ(nullptr, view.Root());
    uint32_t nValue = 7;
    const uint32_t defaults[] = {0xFFFFFF, 0, 0xFFFFFF, 0};
    for (int n = 0; n < 4; ++n) {
        EXPECT_EQ(1, view.GetParam(n, &nValue));
        EXPECT_EQ(defaults[n], nValue) << n;
    }
}

TEST(View, WithoutARootThereIsNothingToDrawTurnOrMove)
{
    CQELView view(g_elementTypes);
    CRecording recording;
    EXPECT_EQ(0, view.Draw(nullptr, recording.Dc(), QEL, QEL_DRAW_FULL));
    EXPECT_EQ(0, view.Draw(nullptr, recording.Dc(), QEL, 0));
    EXPECT_EQ(Lines{}, recording.Calls());
    EXPECT_EQ(0, view.Rotate(nullptr, {0, 0}, 90));
    EXPECT_EQ(0, view.MoveX(nullptr, 1));
    EXPECT_EQ(0, view.MoveY(nullptr, 1));
    EXPECT_EQ(1, view.SetBlink(nullptr, 1)); // that one succeeds without effect
    EXPECT_EQ(nullptr, view.Root());
}

TEST(View, ANewTreeIsARootOfTheReferenceSize)
{
    CQELView view(g_elementTypes, {30, 40});
    ASSERT_EQ(1, view.NewTree());
    ASSERT_NE(nullptr, view.Root());
    EXPECT_EQ(QEL_TYPE_ROOT, view.Root()->Type());
    EXPECT_EQ(30, view.Root()->RefW());
    EXPECT_EQ(40, view.Root()->RefH());
    CQELViewElm* pElm = nullptr;
    ASSERT_EQ(1, view.CreateElement(view.Root(), nullptr, QEL_TYPE_LINE, &pElm));
    ASSERT_EQ(1, view.NewTree()); // what was there is gone
    EXPECT_EQ(nullptr, view.Root()->FirstChild());
    view.Clear();
    EXPECT_EQ(nullptr, view.Root());
}

TEST(View, ReferenceSizeReachesTheTreeAndAnySizeIsTaken)
{
    Scene scene;
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    CQELViewElm* pInner = scene.Make(QEL_TYPE_PIE, pGroup);
    for (const SIZE size : {SIZE{640, 480}, SIZE{0, 0}, SIZE{-5, 7}}) {
        EXPECT_EQ(1, scene->SetRefSize(size));
        SIZE got{};
        EXPECT_EQ(1, scene->GetRefSize(&got));
        EXPECT_EQ(size.cx, got.cx);
        EXPECT_EQ(size.cy, got.cy);
        EXPECT_EQ(size.cx, scene->Root()->RefW());
        EXPECT_EQ(size.cx, pInner->RefW());
        EXPECT_EQ(size.cy, pInner->RefH());
    }
    // With a size that is not positive every mapping is empty: nothing is seen.
    scene.MakeRect(10);
    CTestBitmap drawn(100, 100);
    EXPECT_EQ(1, scene->Draw(nullptr, drawn.Dc(), QEL, QEL_DRAW_FULL));
    EXPECT_TRUE(IsBlank(drawn));
}

TEST(View, MakesEveryShapeAndGroupWithItsReferenceSizeAsTheLastChild)
{
    Scene scene;
    scene->SetRefSize({77, 88});
    Chain made;
    for (const int nType : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 15}) {
        CQELViewElm* pElm = scene.Make(nType);
        ASSERT_NE(nullptr, pElm) << nType;
        EXPECT_EQ(nType, pElm->Type());
        EXPECT_EQ(77, pElm->RefW());
        EXPECT_EQ(88, pElm->RefH());
        EXPECT_EQ(scene->Root(), pElm->Parent());
        made.push_back(pElm);
        CQELViewElm* pInstance = nullptr;
        ASSERT_EQ(1, pElm->NewInstance(&pInstance));
        EXPECT_EQ(nType, pInstance->Type());
        EXPECT_EQ(88, pInstance->RefH());
        EXPECT_EQ(nullptr, pInstance->Parent());
        delete pInstance;
    }
    EXPECT_EQ(made, ChildrenOf(scene->Root()));
}

TEST(View, MakesNothingOfATypeWithoutAView)
{
    Scene scene;
    const Chain before = {scene.Make(QEL_TYPE_RECT)};
    for (const int nType : {12, 13, 14, 22, 23, 100, -1, 0x7FFFFFFF}) {
        CQELViewElm* pElm = nullptr;
        EXPECT_EQ(0, scene->CreateElement(scene->Root(), nullptr, nType, &pElm)) << nType;
        EXPECT_EQ(nullptr, pElm);
        EXPECT_EQ(before, ChildrenOf(scene->Root()));
    }
}

TEST(View, MakesNothingButARootWithoutAParent)
{
    Scene scene;
    const CQELViewElm* pRoot = scene->Root();
    for (int nType = 1; nType <= 22; ++nType) {
        CQELViewElm* pElm = scene->Root();
        EXPECT_EQ(0, scene->CreateElement(nullptr, nullptr, nType, &pElm)) << nType;
        EXPECT_EQ(nullptr, pElm);
    }
    EXPECT_EQ(pRoot, scene->Root());
    EXPECT_EQ(Chain{}, ChildrenOf(pRoot));
}

TEST(View, ANewElementStandsAfterTheSiblingThatIsGiven)
{
    Scene scene;
    CQELViewElm* a = scene.Make(QEL_TYPE_RECT);
    CQELViewElm* b = scene.Make(QEL_TYPE_RECT);
    CQELViewElm* c = scene.Make(QEL_TYPE_LINE, nullptr, a);
    EXPECT_EQ((Chain{a, c, b}), ChildrenOf(scene->Root()));
    CQELViewElm* d = scene.Make(QEL_TYPE_LINE, nullptr, b);
    EXPECT_EQ((Chain{a, c, b, d}), ChildrenOf(scene->Root()));
}

TEST(View, ANewRootTakesThePlaceOfTheOldOne)
{
    Scene scene;
    scene.MakeRect(1);
    CQELViewElm* pElm = nullptr;
    ASSERT_EQ(1, scene->CreateElement(nullptr, nullptr, QEL_TYPE_ROOT, &pElm));
    EXPECT_EQ(scene->Root(), pElm);
    EXPECT_EQ(nullptr, pElm->FirstChild());
    EXPECT_EQ(nullptr, pElm->Parent());
    EXPECT_EQ(Lines{}, scene.Drawn(nullptr, QEL_DRAW_FULL));
}

TEST(View, DeletesAnElementWithItsSubtreeAndTheRootWithAll)
{
    Scene scene;
    CQELViewElm* a = scene.MakeRect(1);
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    CQELViewElm* c = scene.MakeRect(3);
    scene.MakeRect(2, pGroup);
    EXPECT_EQ(3U, scene.Drawn(nullptr, QEL_DRAW_FULL).size());
    EXPECT_EQ(1, scene->DeleteElement(pGroup));
    EXPECT_EQ((Chain{a, c}), ChildrenOf(scene->Root()));
    EXPECT_EQ(a, c->PrevSibling());
    EXPECT_EQ((Lines{"Rectangle 1,10,11,20", "Rectangle 3,10,13,20"}),
              scene.Drawn(nullptr, QEL_DRAW_FULL));
    EXPECT_EQ(1, scene->DeleteElement(scene->Root()));
    EXPECT_EQ(nullptr, scene->Root());
}

TEST(View, MovesElementsWithinTheTree)
{
    Scene scene;
    CQELViewElm* a = scene.MakeRect(1);
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    CQELViewElm* c = scene.MakeRect(3);
    EXPECT_EQ(1, scene->MoveElement(a, pGroup, nullptr));
    EXPECT_EQ((Chain{pGroup, c}), ChildrenOf(scene->Root()));
    EXPECT_EQ((Chain{a}), ChildrenOf(pGroup));
    EXPECT_EQ(1, scene->MoveElement(c, pGroup, a));
    EXPECT_EQ((Chain{a, c}), ChildrenOf(pGroup));
    EXPECT_EQ(1, scene->MoveElement(c, scene->Root(), nullptr)); // the first child
    EXPECT_EQ((Chain{c, pGroup}), ChildrenOf(scene->Root()));
}

TEST(View, AnElementOutOfThePictureMayComeBack)
{
    Scene scene;
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    CQELViewElm* pRect = scene.MakeRect(2, pGroup);
    CQELViewElm* pOther = scene.MakeRect(5);
    EXPECT_EQ(1, scene->MoveElement(pGroup, nullptr, nullptr));
    EXPECT_EQ(nullptr, pGroup->Parent());
    EXPECT_EQ((Chain{pOther}), ChildrenOf(scene->Root()));
    EXPECT_EQ((Lines{"Rectangle 5,10,15,20"}), scene.Drawn(nullptr, QEL_DRAW_FULL));
    EXPECT_EQ((Chain{pRect}), ChildrenOf(pGroup)); // with all that is in it
    EXPECT_EQ(1, scene->MoveElement(pOther, nullptr, nullptr));
    EXPECT_EQ(1, scene->MoveElement(pGroup, scene->Root(), nullptr));
    EXPECT_EQ((Lines{"Rectangle 2,10,12,20"}), scene.Drawn(nullptr, QEL_DRAW_FULL));
    EXPECT_EQ((Chain{pGroup}), ChildrenOf(scene->Root()));
    EXPECT_EQ(1, scene->DeleteElement(pOther)); // and one that is out may be deleted
    EXPECT_EQ((Chain{pGroup}), ChildrenOf(scene->Root()));
    EXPECT_EQ(1, scene->MoveElement(pGroup, nullptr, nullptr)); // the view frees this one
}

TEST(View, CopiesAnElementIntoItsOwnParentRightBehindIt)
{
    Scene scene;
    CQELViewElm* a = scene.MakeRect(1);
    CQELViewElm* b = scene.MakeRect(2);
    CQELViewElm* pCopy = nullptr;
    ASSERT_EQ(1, CQELView::DuplicateElement(b, &pCopy));
    EXPECT_EQ((Chain{a, b, pCopy}), ChildrenOf(scene->Root()));
    EXPECT_EQ(2, AttrOf(pCopy).nGeometry[0]);
}

// ---- drawing ----

TEST(ViewDraw, FullDrawWalksTheTreeInOrder)
{
    Scene scene;
    scene.MakeRect(1);
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    scene.MakeRect(4);
    scene.MakeRect(2, pGroup);
    scene.MakeRect(3, pGroup);
    const Lines all = {"Rectangle 1,10,11,20", "Rectangle 2,10,12,20", "Rectangle 3,10,13,20",
                       "Rectangle 4,10,14,20"};
    EXPECT_EQ(all, scene.Drawn(nullptr, QEL_DRAW_FULL));
    EXPECT_EQ(all, scene.Drawn(scene->Root(), QEL_DRAW_FULL));
}

TEST(ViewDraw, LaterSiblingsPaintOverEarlierOnes)
{
    Scene scene;
    for (const uint32_t clr : {0x0000FFU, 0xFF0000U}) {
        CQELViewElm* pRect = scene.MakeRect(10);
        QELSHAPEATTR attr = AttrOf(pRect);
        attr.clrA = clr;
        ASSERT_EQ(1, pRect->SetAttrBlock(&attr));
    }
    CTestBitmap drawn(100, 100);
    EXPECT_EQ(1, scene->Draw(nullptr, drawn.Dc(), QEL, QEL_DRAW_FULL));
    EXPECT_EQ(0xFF0000U, drawn.At(15, 15));
}

TEST(ViewDraw, APartialRedrawLeavesEveryStaticShapeUndrawn)
{
    Scene scene;
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    scene.MakeRect(2, pGroup, QEL_FLAG_PRESS);
    scene.MakeRect(3);
    for (const uint32_t nFlags : {0x0U, 0x2U, 0xFFFFFFFEU}) {
        CRecording recording;
        EXPECT_EQ(1, scene->Draw(nullptr, recording.Dc(), QEL, nFlags));
        EXPECT_EQ(Lines{}, recording.Calls());
        CTestBitmap drawn(100, 100);
        EXPECT_EQ(1, scene->Draw(scene->Root(), drawn.Dc(), QEL, nFlags));
        EXPECT_TRUE(IsBlank(drawn));
    }
}

TEST(ViewDraw, AnElementOtherThanTheRootIsAlwaysDrawnInFull)
{
    Scene scene;
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    CQELViewElm* pRect = scene.MakeRect(2, pGroup);
    scene.MakeRect(3);
    EXPECT_EQ((Lines{"Rectangle 2,10,12,20"}), scene.Drawn(pGroup, 0));
    EXPECT_EQ((Lines{"Rectangle 2,10,12,20"}), scene.Drawn(pRect, 0));
}

TEST(ViewDraw, ThePressedFlagReachesTheShapes)
{
    Scene scene;
    scene.MakeRect(2, nullptr, QEL_FLAG_PRESS);
    scene.MakeRect(3);
    EXPECT_EQ((Lines{"Rectangle 4,12,14,22", "Rectangle 3,10,13,20"}),
              scene.Drawn(nullptr, QEL_DRAW_FULL | QEL_DRAW_PRESSED));
}

TEST(ViewDraw, SetsNoClipAndClearsNoBackground)
{
    Scene scene;
    CTestBitmap drawn(100, 100, RGB(9, 9, 9));
    const std::string before = DcState(drawn.Dc());
    EXPECT_EQ(1, scene->Draw(nullptr, drawn.Dc(), {20, 20, 60, 60}, QEL_DRAW_FULL));
    EXPECT_EQ(before, DcState(drawn.Dc()));
    EXPECT_EQ(100 * 100, CountPixels(drawn, RGB(9, 9, 9)));
    scene.Make(QEL_TYPE_LINE);
    QELSHAPEATTR attr = OutlineAttr({0, 0, 150, 0}); // lines go on behind the QEL rect
    ASSERT_EQ(1, scene->Root()->FirstChild()->SetAttrBlock(&attr));
    EXPECT_EQ(1, scene->Draw(nullptr, drawn.Dc(), {20, 20, 60, 60}, QEL_DRAW_FULL));
    EXPECT_EQ(60, CountPixels(drawn, RGB(255, 0, 0))); // 150 * 40 / 100
}

// ---- blink, turns, moves ----

TEST(ViewOperations, BlinkTurnAndMoveTheWholeTreeOrOneElement)
{
    Scene scene;
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    CQELViewElm* a = scene.MakeRect(20, pGroup);
    CQELViewElm* b = scene.MakeRect(30);
    EXPECT_EQ(1, scene->SetBlink(pGroup, 3));
    EXPECT_EQ(1, a->BlinkPhase()); // for any phase but 0
    EXPECT_EQ(0, b->BlinkPhase());
    EXPECT_EQ(1, scene->SetBlink(nullptr, 1));
    EXPECT_EQ(1, b->BlinkPhase());
    EXPECT_EQ(1, scene->MoveX(nullptr, 5));
    EXPECT_EQ(1, scene->MoveY(pGroup, 7));
    EXPECT_EQ((Lines{"Rectangle 25,17,35,27", "Rectangle 35,10,45,20"}),
              scene.Drawn(nullptr, QEL_DRAW_FULL));
    EXPECT_EQ(1, scene->Rotate(b, {50, 50}, 90)); // x' = y, y' = 100 - x
    EXPECT_EQ((Lines{"Rectangle 25,17,35,27", "Rectangle 10,55,20,65"}),
              scene.Drawn(nullptr, QEL_DRAW_FULL));
    EXPECT_EQ(1, scene->Rotate(nullptr, {50, 50}, 450)); // as 90: b stands there already
    EXPECT_EQ((Lines{"Rectangle 17,65,27,75", "Rectangle 10,55,20,65"}),
              scene.Drawn(nullptr, QEL_DRAW_FULL));
    EXPECT_EQ(1, scene->MoveX(b, 3));
    EXPECT_EQ(1, scene->MoveY(nullptr, -5));
    EXPECT_EQ((Lines{"Rectangle 17,60,27,70", "Rectangle 13,50,23,60"}),
              scene.Drawn(nullptr, QEL_DRAW_FULL));
}

TEST(ViewOperations, WhatMovesInsideOfThePictureKeepsItsPhase)
{
    for (const int nPhase : {1, 0}) {
        Scene scene;
        CQELViewElm* pOther = scene.Make(QEL_TYPE_GROUP);
        CQELViewElm* pOuter = scene.Make(QEL_TYPE_GROUP);
        CQELViewElm* pRect = scene.MakeRect(20, pOuter);
        scene->SetBlink(nullptr, nPhase);
        scene->SetBlink(pOther, !nPhase); // as a group that was made since then has it
        EXPECT_EQ(1, scene->MoveElement(pOuter, pOther, nullptr));
        EXPECT_EQ(nPhase, pOuter->BlinkPhase());
        EXPECT_EQ(nPhase, pRect->BlinkPhase());
        EXPECT_EQ(1, scene->MoveElement(pRect, pOther, pOuter));
        EXPECT_EQ(nPhase, pRect->BlinkPhase());
        scene->SetBlink(pRect, !nPhase);
        EXPECT_EQ(1, scene->MoveElement(pRect, scene->Root(), nullptr));
        EXPECT_EQ(!nPhase, pRect->BlinkPhase());
    }
}

TEST(ViewOperations, WhatComesIntoThePictureTakesThePhaseOfTheDrawing)
{
    for (const int nPhase : {1, 0}) {
        Scene scene;
        CQELViewElm* pOuter = scene.Make(QEL_TYPE_GROUP);
        CQELViewElm* pRect = scene.MakeRect(20, pOuter);
        scene->SetBlink(nullptr, !nPhase);
        EXPECT_EQ(1, scene->MoveElement(pOuter, nullptr, nullptr));
        scene->SetBlink(nullptr, nPhase);
        CQELViewElm* pOther = scene.Make(QEL_TYPE_GROUP);
        scene->SetBlink(pOther, !nPhase);
        EXPECT_EQ(!nPhase, pRect->BlinkPhase()); // it is not reached where it is
        EXPECT_EQ(1, scene->MoveElement(pOuter, pOther, nullptr));
        EXPECT_EQ(nPhase, pOuter->BlinkPhase());
        EXPECT_EQ(nPhase, pRect->BlinkPhase()); // with all that is in it
    }
}

TEST(ViewOperations, WhatMovesOutsideOfThePictureTakesThePhaseWhenItComesIn)
{
    Scene scene;
    CQELViewElm* pOuter = scene.Make(QEL_TYPE_GROUP);
    CQELViewElm* pRect = scene.MakeRect(20);
    EXPECT_EQ(1, scene->MoveElement(pOuter, nullptr, nullptr));
    scene->SetBlink(nullptr, 1);
    EXPECT_EQ(1, scene->MoveElement(pRect, pOuter, nullptr)); // dark, and out of the picture
    scene->SetBlink(nullptr, 0);
    EXPECT_EQ(1, pRect->BlinkPhase());
    EXPECT_EQ(1, scene->MoveElement(pRect, scene->Root(), nullptr));
    EXPECT_EQ(0, pRect->BlinkPhase());
}

TEST(ViewOperations, BlinkingColorsAreDrawnBlackInTheDarkPhase)
{
    Scene scene;
    CQELViewElm* pRect = scene.MakeRect(10);
    QELSHAPEATTR attr = AttrOf(pRect);
    attr.clrA |= QEL_COLOR_BLINK;
    ASSERT_EQ(1, pRect->SetAttrBlock(&attr));
    for (const int nPhase : {0, 1, 0}) {
        EXPECT_EQ(1, scene->SetBlink(nullptr, nPhase));
        CTestBitmap drawn(100, 100);
        EXPECT_EQ(1, scene->Draw(nullptr, drawn.Dc(), QEL, QEL_DRAW_FULL));
        EXPECT_EQ(nPhase ? RGB(0, 0, 0) : RGB(0, 255, 0), drawn.At(15, 15));
        EXPECT_EQ(RGB(255, 0, 0), drawn.At(10, 10)); // the pen does not blink
    }
}

// ---- parameters and registry ----

TEST(ViewParameters, RecolorTheFlaggedShapesAndStillAnswer0WithoutAFrameOrPattern)
{
    Scene scene;
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    CQELViewElm* pBoth = scene.MakeRect(2, pGroup, QEL_FLAG_COLOR_PARAM | QEL_FLAG_DRAFT_PARAM);
    CQELViewElm* pNone = scene.MakeRect(3);
    const QELSHAPEATTR untouched = AttrOf(pNone);
    EXPECT_EQ(0, scene->SetParam(QEL_PARAM_COLOR, 0x112233));
    EXPECT_EQ(0x112233U, AttrOf(pBoth).clrA);
    EXPECT_EQ(0, scene->SetParam(QEL_PARAM_DRAFT, 37));
    EXPECT_EQ(37, AttrOf(pBoth).nDraft);
    EXPECT_EQ(0, scene->SetParam(QEL_PARAM_DRAFT_FORE, 0x445566));
    EXPECT_EQ(0x445566U, AttrOf(pBoth).clrA);
    EXPECT_EQ(0, scene->SetParam(QEL_PARAM_DRAFT_BACK, 0x778899));
    EXPECT_EQ(0x778899U, AttrOf(pBoth).clrB);
    const uint32_t stored[] = {0x112233, 37, 0x445566, 0x778899};
    for (int n = 0; n < 4; ++n) {
        uint32_t nValue = 0;
        EXPECT_EQ(1, scene->GetParam(n, &nValue));
        EXPECT_EQ(stored[n], nValue) << n;
    }
    const QELSHAPEATTR after = AttrOf(pNone);
    EXPECT_EQ(0, std::memcmp(&untouched, &after, sizeof after));
}

TEST(ViewParameters, AHatchOutOfRangeIsNeitherStoredNorPushedDown)
{
    Scene scene;
    CQELViewElm* pRect = scene.MakeRect(2, nullptr, QEL_FLAG_DRAFT_PARAM);
    EXPECT_EQ(0, scene->SetParam(QEL_PARAM_DRAFT, 5));
    for (const uint32_t nDraft : {38U, 1000U, 0x7FFFFFFFU, 0xFFFFFFFFU, 0x80000000U}) {
        EXPECT_EQ(0, scene->SetParam(QEL_PARAM_DRAFT, nDraft));
        uint32_t nValue = 0;
        EXPECT_EQ(1, scene->GetParam(QEL_PARAM_DRAFT, &nValue));
        EXPECT_EQ(5U, nValue);
        EXPECT_EQ(5, AttrOf(pRect).nDraft);
    }
}

TEST(ViewParameters, AreKeptWithoutADrawing)
{
    CQELView view(g_elementTypes);
    const uint32_t values[] = {0x112233, 7, 0x445566, 0x778899};
    for (int n = 0; n < 4; ++n) EXPECT_EQ(0, view.SetParam(n, values[n])); // nobody takes them
    for (int n = 0; n < 4; ++n) {
        uint32_t nValue = 0;
        EXPECT_EQ(1, view.GetParam(n, &nValue));
        EXPECT_EQ(values[n], nValue) << n;
    }
    EXPECT_EQ(nullptr, view.Root());
}

TEST(ViewParameters, AnIndexOutsideOfTheFourFails)
{
    Scene scene;
    CQELViewElm* pRect = scene.MakeRect(2, nullptr, QEL_FLAG_COLOR_PARAM | QEL_FLAG_DRAFT_PARAM);
    const QELSHAPEATTR before = AttrOf(pRect);
    for (const int nIndex : {4, 5, -1, 0x7FFFFFFF}) {
        uint32_t nValue = 77;
        EXPECT_EQ(0, scene->SetParam(nIndex, 1)) << nIndex;
        EXPECT_EQ(0, scene->GetParam(nIndex, &nValue)) << nIndex;
        EXPECT_EQ(77U, nValue);
    }
    const QELSHAPEATTR after = AttrOf(pRect);
    EXPECT_EQ(0, std::memcmp(&before, &after, sizeof after));
}

TEST(ViewParameters, ARegisteredFrameAnswersForParameter0)
{
    Scene scene;
    CQELViewElm* pFrame = scene.Make(QEL_TYPE_FRAME);
    EXPECT_EQ(1, scene->Register(pFrame));
    EXPECT_NE(0, scene->SetParam(QEL_PARAM_COLOR, 0x123456));
    EXPECT_EQ(0x123456U, static_cast<CQELViewFrame*>(pFrame)->Color());
    uint32_t nValue = 0;
    EXPECT_EQ(1, scene->GetParam(QEL_PARAM_COLOR, &nValue));
    EXPECT_EQ(0x123456U, nValue);
    EXPECT_EQ(1, scene->Unregister(pFrame)); // the slot is empty: the view answers itself
    EXPECT_EQ(0, scene->SetParam(QEL_PARAM_COLOR, 0x654321));
    EXPECT_EQ(1, scene->GetParam(QEL_PARAM_COLOR, &nValue));
    EXPECT_EQ(0x654321U, nValue);
}

TEST(ViewRegistry, TakesStaticElementsWithoutEffectAsOftenAsAsked)
{
    Scene scene;
    for (const int nType : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 15}) {
        CQELViewElm* pElm = scene.Make(nType);
        EXPECT_EQ(1, scene->Register(pElm)) << nType;
        EXPECT_EQ(1, scene->Register(pElm));
        EXPECT_EQ(1, scene->Unregister(pElm));
        EXPECT_EQ(1, scene->Unregister(pElm));
    }
    EXPECT_EQ(1, scene->Register(scene->Root()));
    EXPECT_EQ(0, scene->SetParam(QEL_PARAM_COLOR, 1)); // still nothing that takes it
    uint32_t nStatus = 0;
    EXPECT_EQ(0, scene->SetStatus(1));
    EXPECT_EQ(0, scene->GetStatus(&nStatus));
    RECT rc{};
    EXPECT_EQ(0, scene->GetDrawGraphRect(QEL, &rc));
}

TEST(ViewRegistry, AListHoldsAnElementOnce)
{
    Scene scene;
    CQELViewElm* a = scene.Make(QEL_TYPE_STATUS);
    CQELViewElm* b = scene.Make(QEL_TYPE_STATUS);
    EXPECT_EQ(0, scene->Unregister(a)); // not there yet
    EXPECT_EQ(1, scene->Register(a));
    EXPECT_EQ(0, scene->Register(a));
    EXPECT_EQ(1, scene->Register(b));
    EXPECT_EQ(1, scene->SetStatus(7));
    EXPECT_EQ(1, scene->Unregister(a));
    EXPECT_EQ(0, scene->Unregister(a));
    EXPECT_EQ(1, scene->SetStatus(8)); // b is still there
    EXPECT_EQ(1, scene->Unregister(b));
    EXPECT_EQ(0, scene->SetStatus(9));
    EXPECT_EQ(1, scene->Register(a)); // and one that was taken out may come back
}

TEST(ViewRegistry, APlaceThatIsThereAlreadyIsReserved)
{
    Scene scene;
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    CQELViewElm* pIn = scene.Make(QEL_TYPE_STATUS, pGroup);
    CQELViewElm* pOut = scene.Make(QEL_TYPE_STATUS, pGroup);
    ASSERT_EQ(1, scene->Register(pIn));
    EXPECT_EQ(1, scene->ReservePlaces(pGroup));
    EXPECT_EQ(1, scene->ReservePlaces(pGroup));
    EXPECT_EQ(0, scene->Register(pOut)); // it has one now as well
    scene->GiveUpPlaces(pGroup);
    EXPECT_EQ(0, scene->Unregister(pIn));
    EXPECT_EQ(0, scene->Unregister(pOut));
}

TEST(ViewParameters, WithoutAPatternAreThoseOfTheDrawRegion)
{
    Scene scene;
    CQELViewElm* pRegion = scene.Make(QEL_TYPE_DRAWRGN);
    scene->Register(pRegion);
    EXPECT_EQ(1, scene->SetParam(QEL_PARAM_DRAFT, 7));
    EXPECT_EQ(1, pRegion->HostSide()->SetHostParam(QEL_PARAM_DRAFT, 12)); // of it alone
    uint32_t nValue = 0;
    EXPECT_EQ(1, scene->GetParam(QEL_PARAM_DRAFT, &nValue));
    EXPECT_EQ(12U, nValue);
}

// ---- the clock ----

TEST(ViewClock, ClocksAreDirtyWhenTheyWouldShowAnotherTime)
{
    Scene scene;
    CQELViewElm* pClock = scene.Make(QEL_TYPE_METER);
    const QELMETERATTR attr{
        sizeof attr, 0, 1, 1, METER_CLOCK, 100, 1, {50, 50, 40, 10, 10, 90, 90, 0, 0}, 0};
    ASSERT_EQ(1, pClock->SetAttrBlock(&attr));
    scene->Register(pClock);
    ClockTimes times{};
    times.universal = {2024, 2, 4, 29, 10, 9, 36, 0};
    times.local = {2024, 2, 4, 29, 12, 9, 36, 0};
    const auto isTouchedBy = [&](const ClockTimes& now) {
        scene->Dirty().Clear();
        scene->SetClock(now);
        return pClock->IsTouched();
    };
    EXPECT_TRUE(isTouchedBy(times));
    EXPECT_FALSE(isTouchedBy(times));
    ++times.universal.wMilliseconds; // shown by no hand
    EXPECT_FALSE(isTouchedBy(times));
    for (WORD* pnPart : {&times.universal.wSecond, &times.universal.wMinute, &times.local.wHour,
                         &times.local.wMinute}) { // the last two by another zone
        ++*pnPart;
        EXPECT_TRUE(isTouchedBy(times));
        EXPECT_FALSE(isTouchedBy(times));
    }
    scene->Dirty().Clear();
}

} // namespace
