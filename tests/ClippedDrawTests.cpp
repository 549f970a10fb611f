// A draw under a clip: what is left out and what never is, the state that it leaves, and the bounds
// of groups, which have to follow every change. What it does to pixels is held by
// tests/ClippedPictureTests.cpp. The code is render/ClippedDraw.* and render/QELViewGroup.*.
#include "render/ClippedDraw.h"

#include "dynamic/QELViewMeter.h"
#include "render/LiveElement.h"
#include "render/QELView.h"
#include "render/QELViewBox.h"
#include "render/QELViewGroup.h"
#include "render/QELViewText.h"
#include "tests/support/ViewSupport.h"

#include <climits>
#include <functional>
#include <utility>

namespace {

constexpr int SIDE = 200;
constexpr RECT QEL{0, 0, SIDE, SIDE}; // of 100 by 100 units
constexpr RECT CLIP{0, 0, 60, 60};    // of 30 by 30 units
constexpr RECT INSIDE{5, 5, 20, 20};  // units
constexpr RECT OUTSIDE{70, 70, 90, 90};
constexpr COLORREF FIRST = 0x112233;
constexpr COLORREF SECOND = 0x445566;

// A filled rectangle that notes how often it was painted. It paints nothing.
class CNotingShape final : public CQELViewBox {
public:
    CNotingShape(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr)
        : CQELViewBox(nRefW, nRefH, QEL_TYPE_RECT, pPool)
    {
    }
    int NewInstance(CQELViewElm** ppOut) const override { return NewInstanceAs(*this, ppOut); }
    int TakePaints() { return std::exchange(m_nPaints, 0); }

protected:
    void Paint(HDC, const DeviceFigure&, HBRUSH, const QelRect&) const override { ++m_nPaints; }

private:
    mutable int m_nPaints = 0;
};

// An element of any type that notes its draws and the colours that it finds.
class CNotingElm final : public CQELViewElm {
public:
    explicit CNotingElm(int32_t nType) : CQELViewElm(100, 100) { SetType(nType); }
    int NewInstance(CQELViewElm**) const override { return 0; }
    int GetAttrBlockSize(int*) const override { return 0; }
    int GetAttrBlock(void*) const override { return 0; }
    int SetAttrBlock(const void*) override { return 0; }
    int Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags) override
    {
        ++m_nDraws;
        m_clrBack = ::GetBkColor(hdc);
        m_clrText = ::GetTextColor(hdc);
        m_rcQel = rcQel;
        m_nFlags = nFlags;
        return 0;
    }

    int m_nDraws = 0;
    COLORREF m_clrBack = 0;
    COLORREF m_clrText = 0;
    RECT m_rcQel{};
    uint32_t m_nFlags = 0;
};

// A white picture with a clip. bWhole: no draw leaves anything out, since bounds are summed up.
class CPaper {
public:
    explicit CPaper(const RECT& rcClip = CLIP, bool bWhole = false) : m_bitmap(SIDE, SIDE)
    {
        ::IntersectClipRect(Dc(), rcClip.left, rcClip.top, rcClip.right, rcClip.bottom);
        if (bWhole) ::SetBoundsRect(Dc(), nullptr, DCB_ENABLE);
    }
    HDC Dc() const { return m_bitmap.Dc(); }
    const CTestBitmap& Bitmap() const { return m_bitmap; }
    std::string State() const
    {
        POINT pt{};
        ::GetCurrentPositionEx(Dc(), &pt);
        std::string text;
        for (const UINT nType : {OBJ_PEN, OBJ_BRUSH, OBJ_FONT})
            text += Text(reinterpret_cast<uintptr_t>(::GetCurrentObject(Dc(), nType)));
        for (const uint32_t n :
             {static_cast<uint32_t>(::GetBkColor(Dc())),
              static_cast<uint32_t>(::GetTextColor(Dc())), static_cast<uint32_t>(::GetBkMode(Dc())),
              static_cast<uint32_t>(::GetROP2(Dc())),
              static_cast<uint32_t>(::GetPolyFillMode(Dc())),
              static_cast<uint32_t>(::GetArcDirection(Dc())),
              static_cast<uint32_t>(::GetTextAlign(Dc())), static_cast<uint32_t>(pt.x),
              static_cast<uint32_t>(pt.y)})
            text += Text(n);
        return text;
    }

private:
    static std::string Text(uintptr_t n) { return std::to_string(n) + " "; }

    CTestBitmap m_bitmap;
};

QELSHAPEATTR Filled(const RECT& rc, COLORREF clrA = FIRST)
{
    QELSHAPEATTR attr = FilledAttr({rc.left, rc.top, rc.right, rc.bottom});
    attr.clrA = clrA;
    attr.clrB = clrA + 1;
    return attr;
}

QELSHAPEATTR Outlined(const RECT& rc)
{
    return OutlineAttr({rc.left, rc.top, rc.right, rc.bottom});
}

class CScene : public CTestPicture {
public:
    CScene() : CTestPicture({100, 100}) {}
    CQELViewShape* MakeShape(int nType, const QELSHAPEATTR& attr, CQELViewElm* pParent = nullptr)
    {
        CQELViewElm* pElm = Make(nType, pParent);
        EXPECT_EQ(1, pElm->SetAttrBlock(&attr));
        return static_cast<CQELViewShape*>(pElm);
    }
    template <class T>
    T* Add(T* pElm, CQELViewElm* pParent = nullptr) // the scene owns it from here
    {
        (pParent ? pParent : m_view.Root())->AppendChild(pElm);
        return pElm;
    }
    CNotingShape* AddNoting(const QELSHAPEATTR& attr, CQELViewElm* pParent = nullptr)
    {
        auto* pShape = Add(new CNotingShape(100, 100), pParent);
        EXPECT_EQ(1, pShape->SetAttrBlock(&attr));
        return pShape;
    }
    int Draw(const CPaper& paper, const RECT& rcQel = QEL, uint32_t nFlags = QEL_DRAW_FULL)
    {
        return m_view.Draw(nullptr, paper.Dc(), rcQel, nFlags);
    }
    // Draws with and without leaving anything out: picture and state have to agree. The state.
    std::string ExpectSame(const RECT& rcQel = QEL, uint32_t nFlags = QEL_DRAW_FULL)
    {
        const CPaper paper;
        const CPaper whole(CLIP, true);
        EXPECT_EQ(1, Draw(paper, rcQel, nFlags));
        EXPECT_EQ(1, Draw(whole, rcQel, nFlags));
        EXPECT_EQ("", FirstDifference(whole.Bitmap(), paper.Bitmap()));
        EXPECT_EQ(whole.State(), paper.State());
        m_bBlank = IsBlank(paper.Bitmap());
        return paper.State();
    }
    bool WasBlank() const { return m_bBlank; }

private:
    bool m_bBlank = false;
};

// ---- what is left out

// Changes are counted by the root of a picture; without one there is nothing to go by.
TEST(ClippedDraw, OfAGroupInNoPictureLooksAtAllInItEachTime)
{
    CQELViewGroup group(100, 100);
    auto* pInner = new CQELViewGroup(100, 100);
    group.AppendChild(pInner);
    auto* pShape = new CNotingShape(100, 100);
    pInner->AppendChild(pShape);
    const CPaper paper;
    for (const RECT& rc : {OUTSIDE, INSIDE, OUTSIDE}) {
        const QELSHAPEATTR attr = Filled(rc);
        EXPECT_EQ(1, pShape->SetAttrBlock(&attr));
        EXPECT_EQ(1, CClippedDraw(paper.Dc(), QEL, QEL_DRAW_FULL).Draw(&group));
        EXPECT_EQ(rc.left == INSIDE.left ? 1 : 0, pShape->TakePaints());
    }
}

TEST(ClippedDraw, LeavesOutTheShapesThatPaintOutsideOfTheClip)
{
    CScene scene;
    std::vector<CNotingShape*> shapes;
    for (int y = 0; y < 100; y += 20)
        for (int x = 0; x < 100; x += 20)
            shapes.push_back(scene.AddNoting(Outlined({x, y, x + 8, y + 8})));
    // Units 41 to 65 across and 21 to 25 down: the squares 2 and 3 of the row 1.
    EXPECT_EQ(1, scene.Draw(CPaper({82, 42, 130, 50})));
    std::string painted;
    for (CNotingShape* pShape : shapes) painted += std::to_string(pShape->TakePaints());
    EXPECT_EQ("0000000110000000000000000", painted);
    EXPECT_EQ(1, scene.Draw(CPaper({16 + 5, 0, 40 - 5, SIDE}))); // between two columns
    for (CNotingShape* pShape : shapes) EXPECT_EQ(0, pShape->TakePaints());
    EXPECT_EQ(1, scene.Draw(CPaper(QEL)));
    for (CNotingShape* pShape : shapes) EXPECT_EQ(1, pShape->TakePaints());
}

TEST(ClippedDraw, UnderAnEmptyClipNoShapeIsPainted)
{
    CScene scene;
    CNotingShape* pShape = scene.AddNoting(Filled(OUTSIDE));
    const CPaper paper({10, 10, 10, 10});
    EXPECT_EQ(1, scene.Draw(paper));
    EXPECT_EQ(0, pShape->TakePaints());
    EXPECT_EQ(FIRST, ::GetBkColor(paper.Dc()));
}

TEST(ClippedDraw, AWideOutlineReachesIntoTheClip)
{
    CScene scene;
    QELSHAPEATTR attr = Outlined(OUTSIDE); // 140 on the device, 80 from the clip
    CNotingShape* pShape = scene.AddNoting(attr);
    for (const int nWidth : {1, 40, 161, 1000, -1, -161, INT_MAX, INT_MIN}) {
        attr.nPenWidth = nWidth;
        EXPECT_EQ(1, pShape->SetAttrBlock(&attr));
        EXPECT_EQ(1, scene.Draw(CPaper()));
        // What a width below 0 means is the system's affair.
        EXPECT_EQ(nWidth != 1 && nWidth != 40, pShape->TakePaints() == 1) << nWidth;
    }
}

TEST(ClippedDraw, APenOfNoKnownStyleMayPaintAnywhere)
{
    CScene scene;
    QELSHAPEATTR attr = Outlined(OUTSIDE);
    CNotingShape* pShape = scene.AddNoting(attr);
    for (int nStyle = -1; nStyle <= PS_INSIDEFRAME + 1; ++nStyle) {
        attr.nPenStyle = nStyle;
        EXPECT_EQ(1, pShape->SetAttrBlock(&attr));
        EXPECT_EQ(1, scene.Draw(CPaper()));
        EXPECT_EQ(nStyle < PS_SOLID || nStyle > PS_INSIDEFRAME, pShape->TakePaints() == 1);
    }
    attr.nPenWidth = 0; // then no pen is made
    EXPECT_EQ(1, pShape->SetAttrBlock(&attr));
    EXPECT_EQ(1, scene.Draw(CPaper()));
    EXPECT_EQ(0, pShape->TakePaints());
}

// There the system's own sums may come round.
TEST(ClippedDraw, WhatReachesVeryFarIsAlwaysDrawn)
{
    CScene scene;
    QELSHAPEATTR attr = Outlined({90, 10, 100, 20});
    attr.nFlags = QEL_KEEP_ALL; // from 90 to the right edge of the drawing
    CNotingShape* pShape = scene.AddNoting(attr);
    EXPECT_EQ(1, scene.Draw(CPaper(), {0, 0, REACH / 2, SIDE}));
    EXPECT_EQ(0, pShape->TakePaints());
    EXPECT_EQ(1, scene.Draw(CPaper(), {0, 0, REACH * 2, SIDE}));
    EXPECT_EQ(1, pShape->TakePaints());
    for (const RECT& rc : {RECT{INT_MIN, INT_MIN, INT_MAX, INT_MAX},
                           RECT{INT_MAX - 9, 0, INT_MIN, 9}, RECT{0, INT_MIN, 10, -5}}) {
        CScene hostile;
        for (int nType = QEL_TYPE_TEXT; nType <= QEL_TYPE_POLYGON; ++nType) {
            QELSHAPEATTR shape = Filled(rc);
            if (nType == QEL_TYPE_POLYLINE || nType == QEL_TYPE_POLYGON) shape.nGeometry[0] = 2;
            hostile.MakeShape(nType, shape, hostile.Make(QEL_TYPE_GROUP));
        }
        hostile.ExpectSame();
    }
}

TEST(ClippedDraw, AShapeThatCannotBeMappedLeavesNoTrace)
{
    CScene scene;
    QELSHAPEATTR attr = Filled(OUTSIDE);
    attr.nGeometry[0] = 1; // too few points
    scene.MakeShape(QEL_TYPE_POLYGON, attr, scene.Make(QEL_TYPE_GROUP));
    scene.MakeShape(QEL_TYPE_POLYGON, attr);
    const CPaper untouched;
    EXPECT_EQ(untouched.State(), scene.ExpectSame());
}

TEST(ClippedDraw, OfATextWithAnAmpersandNothingIsKnown)
{
    QELSHAPEATTR attr = Filled(OUTSIDE);
    RECT rc{};
    std::strcpy(attr.szText, "ab");
    EXPECT_EQ(Reach::Known, CTestView<CQELViewText>(attr)->PaintedArea(QEL, QEL_DRAW_FULL, &rc));
    EXPECT_EQ("138,138,182,182", RectText(rc)); // two pixels more on each side
    std::strcpy(attr.szText, "a&b");
    EXPECT_EQ(Reach::Unknown, CTestView<CQELViewText>(attr)->PaintedArea(QEL, QEL_DRAW_FULL, &rc));
}

// ---- when nothing is left out

// A shape far outside of the clip, alone and in a group, drawn after a preparation of the device
// context: how often it is painted of two times.
int PaintsAfter(const std::function<void(HDC)>& prepare)
{
    CScene scene;
    CNotingShape* pAlone = scene.AddNoting(Filled(OUTSIDE));
    CNotingShape* pInGroup = scene.AddNoting(Filled(OUTSIDE), scene.Make(QEL_TYPE_GROUP));
    const CPaper paper;
    ::SaveDC(paper.Dc());
    prepare(paper.Dc());
    EXPECT_EQ(1, scene.Draw(paper));
    ::RestoreDC(paper.Dc(), -1);
    return pAlone->TakePaints() + pInGroup->TakePaints();
}

TEST(ClippedDraw, TakesPlaceInAPlainStateOfTheDeviceContextAlone)
{
    EXPECT_EQ(0, PaintsAfter([](HDC) {}));
    EXPECT_EQ(0, PaintsAfter([](HDC hdc) { ::SetTextAlign(hdc, TA_CENTER | TA_BOTTOM); }));
    EXPECT_EQ(0, PaintsAfter([](HDC hdc) { ::SetROP2(hdc, R2_NOTXORPEN); }));
    EXPECT_EQ(2, PaintsAfter([](HDC hdc) { ::SetTextAlign(hdc, TA_UPDATECP); }));
    EXPECT_EQ(2, PaintsAfter([](HDC hdc) { ::SetMapMode(hdc, MM_ANISOTROPIC); }));
    EXPECT_EQ(2, PaintsAfter([](HDC hdc) { ::SetGraphicsMode(hdc, GM_ADVANCED); }));
    EXPECT_EQ(2, PaintsAfter([](HDC hdc) { // the layout may change the map mode as well
                  ::SetLayout(hdc, LAYOUT_RTL);
                  ::SetMapMode(hdc, MM_TEXT);
              }));
    EXPECT_EQ(2, PaintsAfter([](HDC hdc) { ::SetBoundsRect(hdc, nullptr, DCB_ENABLE); }));
}

TEST(ClippedDraw, DoesNotTurnTheSummingUpOfBoundsOnOrOff)
{
    for (const UINT nState : {DCB_DISABLE, DCB_ENABLE}) {
        CScene scene;
        scene.MakeShape(QEL_TYPE_RECT, Filled(OUTSIDE));
        const CPaper paper;
        ::SetBoundsRect(paper.Dc(), nullptr, nState);
        EXPECT_EQ(1, scene.Draw(paper));
        EXPECT_EQ(nState, ::SetBoundsRect(paper.Dc(), nullptr, 0) & (DCB_ENABLE | DCB_DISABLE));
    }
}

TEST(ClippedDraw, TakesPlaceWithAPlainFontAlone)
{
    const auto paintsWith = [](void (*pfnChange)(LOGFONTA*)) {
        LOGFONTA font{};
        font.lfHeight = 12;
        std::strcpy(font.lfFaceName, "Arial");
        pfnChange(&font);
        const HFONT hFont = ::CreateFontIndirectA(&font);
        const int nPaints = PaintsAfter([&](HDC hdc) { ::SelectObject(hdc, hFont); });
        ::DeleteObject(hFont);
        return nPaints;
    };
    EXPECT_EQ(0, paintsWith([](LOGFONTA*) {}));
    EXPECT_EQ(0, paintsWith([](LOGFONTA* p) { p->lfItalic = TRUE; }));
    EXPECT_EQ(2, paintsWith([](LOGFONTA* p) { p->lfUnderline = TRUE; }));
    EXPECT_EQ(2, paintsWith([](LOGFONTA* p) { p->lfStrikeOut = TRUE; }));
    EXPECT_EQ(2, paintsWith([](LOGFONTA* p) { p->lfEscapement = 450; }));
    EXPECT_EQ(2, paintsWith([](LOGFONTA* p) { p->lfOrientation = 450; }));
}

TEST(ClippedDraw, AMetafileHoldsTheWholePicture)
{
    CScene scene;
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    for (const RECT& rc : {INSIDE, OUTSIDE}) {
        scene.MakeShape(QEL_TYPE_RECT, Filled(rc), pGroup);
        scene.MakeShape(QEL_TYPE_ELLIPSE, Outlined(rc));
    }
    const auto record = [&](bool bClip) {
        CRecording recording;
        if (bClip) ::IntersectClipRect(recording.Dc(), 0, 0, 60, 60);
        EXPECT_EQ(1, scene->Draw(nullptr, recording.Dc(), QEL, QEL_DRAW_FULL));
        Lines calls = recording.Calls();
        EXPECT_EQ(bClip ? 1U : 0U, std::erase(calls, "Record 30")); // the clip itself
        return calls;
    };
    EXPECT_LT(20U, record(false).size());
    EXPECT_EQ(record(false), record(true));
}

TEST(ClippedDraw, AnEmptyRectangleAndNoDeviceContextAreBorne)
{
    CScene scene;
    CNotingShape* pShape = scene.AddNoting(Filled(INSIDE));
    const CPaper paper;
    for (const RECT& rc : {RECT{0, 0, 0, 0}, RECT{50, 50, 10, 10}, RECT{0, 0, -5, 100}})
        EXPECT_EQ(1, scene.Draw(paper, rc));
    CScene empty;
    EXPECT_EQ(1, empty->Draw(nullptr, nullptr, QEL, QEL_DRAW_FULL));
    EXPECT_EQ(FIRST, ::GetBkColor(paper.Dc())); // drawn as nothing, with its colours
    EXPECT_LE(pShape->TakePaints(), 3);
}

// ---- elements that are no shapes

TEST(ClippedDraw, EveryOtherElementIsAlwaysDrawnAndFindsTheColorsOfAWholeDraw)
{
    CScene scene;
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    std::vector<CNotingElm*> notes;
    for (const int nType : {QEL_TYPE_STATUS, QEL_TYPE_FRAME, QEL_TYPE_PATTERN, QEL_TYPE_DRAWRGN,
                            QEL_TYPE_SCALE, QEL_TYPE_METER}) {
        const auto n = static_cast<COLORREF>(nType);
        scene.MakeShape(QEL_TYPE_RECT, Filled(OUTSIDE, 0x10 * n), pGroup);
        QELSHAPEATTR line = Outlined(OUTSIDE); // the background colour alone
        line.nStyle = QEL_STYLE_FILL_3DUP;
        line.clrB = 0x1000 * n;
        if (nType % 2) scene.MakeShape(QEL_TYPE_LINE, line, pGroup);
        notes.push_back(scene.Add(new CNotingElm(nType), pGroup));
    }
    const CPaper paper;
    EXPECT_EQ(1, scene.Draw(paper, QEL, QEL_DRAW_FULL | QEL_DRAW_PRESSED));
    for (const CNotingElm* pNote : notes) {
        const auto n = static_cast<COLORREF>(pNote->Type());
        SCOPED_TRACE(n);
        EXPECT_EQ(1, pNote->m_nDraws);
        EXPECT_EQ(n % 2 ? 0x1000 * n : 0x10 * n, pNote->m_clrBack);
        EXPECT_EQ(0x10 * n + 1, pNote->m_clrText);
        EXPECT_EQ(RectText(QEL), RectText(pNote->m_rcQel));
        EXPECT_EQ(static_cast<uint32_t>(QEL_DRAW_FULL | QEL_DRAW_PRESSED), pNote->m_nFlags);
    }
}

TEST(ClippedDraw, WhatIsInAStatusFrameOrPatternIsDrawn)
{
    CScene scene;
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    std::vector<CNotingShape*> shapes;
    for (const int nType : {QEL_TYPE_STATUS, QEL_TYPE_FRAME, QEL_TYPE_PATTERN}) {
        CQELViewElm* pElm = scene.Make(nType, pGroup);
        const QELWORDATTR attr{0};
        EXPECT_EQ(1, pElm->SetAttrBlock(&attr));
        shapes.push_back(scene.AddNoting(Filled(OUTSIDE), pElm));
    }
    EXPECT_EQ(1, scene.Draw(CPaper()));
    for (CNotingShape* pShape : shapes) EXPECT_EQ(1, pShape->TakePaints());
}

TEST(ClippedDraw, WhatIsHiddenIsNotDrawnAndWhatHasAMarkAlwaysIs)
{
    CScene scene;
    for (CQELViewElm* pParent :
         {scene.Make(QEL_TYPE_GROUP)->Parent(), scene->Root()->FirstChild()}) {
        CNotingShape* pHidden = scene.AddNoting(Filled(INSIDE), pParent);
        CNotingShape* pMarked = scene.AddNoting(Filled(OUTSIDE), pParent);
        EXPECT_EQ(1, CLiveElement(scene->Live(), *pHidden).SetVisible(false));
        EXPECT_EQ(1, scene.Draw(CPaper()));
        EXPECT_EQ(0, pHidden->TakePaints());
        EXPECT_EQ(0, pMarked->TakePaints());
        EXPECT_EQ(1, CLiveElement(scene->Live(), *pMarked).SetQuality(QUALITY_STALE));
        EXPECT_EQ(1, scene.Draw(CPaper())); // its mark stands over all that it may paint
        EXPECT_EQ(0, pHidden->TakePaints());
        EXPECT_EQ(1, pMarked->TakePaints());
    }
}

TEST(ClippedDraw, AMeterOutsideOfTheClipStillMakesItsDial)
{
    CScene scene;
    CQELViewElm* pElm = scene.Make(QEL_TYPE_METER, scene.Make(QEL_TYPE_GROUP));
    QELMETERATTR attr{};
    EXPECT_EQ(1, pElm->GetAttrBlock(&attr));
    const LONG geometry[] = {80, 80, 10, 70, 70, 90, 90};
    std::copy(std::begin(geometry), std::end(geometry), attr.nGeometry);
    attr.nType = 6;
    EXPECT_EQ(1, pElm->SetAttrBlock(&attr));
    const auto* pMeter = static_cast<const CQELViewMeter*>(pElm);
    EXPECT_EQ(nullptr, pMeter->Renderer());
    EXPECT_EQ(1, scene.Draw(CPaper()));
    EXPECT_NE(nullptr, pMeter->Renderer());
}

TEST(ClippedDraw, AShapeThatIsAskedForItselfIsDrawn)
{
    CScene scene;
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    CNotingShape* pShape = scene.AddNoting(Filled(OUTSIDE), pGroup);
    const CPaper paper;
    EXPECT_EQ(1, scene->Draw(pShape, paper.Dc(), QEL, QEL_DRAW_FULL));
    EXPECT_EQ(1, pShape->TakePaints());
    ::SetBkColor(paper.Dc(), 0);
    EXPECT_EQ(1, scene->Draw(pGroup, paper.Dc(), QEL, QEL_DRAW_FULL));
    EXPECT_EQ(0, pShape->TakePaints());
    EXPECT_EQ(FIRST, ::GetBkColor(paper.Dc()));
}

// ---- the state that is left

TEST(ClippedDraw, LeavesTheColorsOfTheLastShapesThatLeaveAny)
{
    // By the class and the fill style: the background colour in A or B, the text colour in B.
    const COLORREF none = 0xFFFFFFFF;
    const struct {
        int nType;
        DWORD nStyle;
        COLORREF clrBack;
        COLORREF clrText;
    } rows[] = {
        {QEL_TYPE_RECT, QEL_STYLE_STROKE, none, none},
        {QEL_TYPE_RECT, QEL_STYLE_FILL, FIRST, FIRST + 1},
        {QEL_TYPE_ELLIPSE, QEL_STYLE_FILL_3DDOWN, FIRST, FIRST + 1},
        {QEL_TYPE_POLYGON, 0x2, FIRST, FIRST + 1},
        {QEL_TYPE_LINE, QEL_STYLE_STROKE, none, none},
        {QEL_TYPE_LINE, QEL_STYLE_FILL, none, none}, // put back
        {QEL_TYPE_LINE, QEL_STYLE_FILL_3DUP, FIRST + 1, none},
        {QEL_TYPE_ARC, QEL_STYLE_FILL_3DDOWN, FIRST + 1, none},
        {QEL_TYPE_POLYLINE, QEL_STYLE_FILL_3DUP, FIRST + 1, none},
        {QEL_TYPE_TEXT, QEL_STYLE_FILL, none, none},
        {QEL_TYPE_TEXT, QEL_STYLE_FILL_3DUP, none, none},
    };
    for (const auto& row : rows) {
        for (const bool bInGroup : {false, true}) {
            SCOPED_TRACE(testing::Message() << row.nType << " style " << row.nStyle << bInGroup);
            CScene scene;
            CQELViewElm* pParent = bInGroup ? scene.Make(QEL_TYPE_GROUP) : nullptr;
            scene.MakeShape(QEL_TYPE_RECT, Filled(OUTSIDE, SECOND), pParent);
            QELSHAPEATTR attr = Filled(OUTSIDE);
            attr.nStyle = row.nStyle;
            const int points[] = {2, 70, 70, 80, 90};
            if (row.nType == QEL_TYPE_POLYGON || row.nType == QEL_TYPE_POLYLINE)
                std::copy(std::begin(points), std::end(points), attr.nGeometry);
            scene.MakeShape(row.nType, attr, pParent);
            scene.ExpectSame();
            const CPaper paper;
            EXPECT_EQ(1, scene.Draw(paper));
            EXPECT_EQ(row.clrBack == none ? SECOND : row.clrBack, ::GetBkColor(paper.Dc()));
            EXPECT_EQ(row.clrText == none ? SECOND + 1 : row.clrText, ::GetTextColor(paper.Dc()));
        }
    }
}

TEST(ClippedDraw, LeavesColorsAsTheyAreNowWithoutFindingBoundsAnew)
{
    CScene scene;
    QELSHAPEATTR attr = Filled(OUTSIDE, FIRST | QEL_COLOR_BLINK);
    attr.nFlags = QEL_FLAG_COLOR_PARAM;
    scene.MakeShape(QEL_TYPE_RECT, attr, scene.Make(QEL_TYPE_GROUP));
    const CQELViewElm::ChangeStamp changes = scene->Root()->Changes();
    const auto back = [&] {
        scene.ExpectSame();
        const CPaper paper;
        EXPECT_EQ(1, scene.Draw(paper));
        return ::GetBkColor(paper.Dc());
    };
    EXPECT_EQ(FIRST, back());
    scene->SetBlink(nullptr, 1);
    EXPECT_EQ(0U, back());
    scene->SetParam(QEL_PARAM_COLOR, SECOND);
    EXPECT_EQ(SECOND, back());
    EXPECT_FALSE(changes.IsNone());
    EXPECT_TRUE(changes == scene->Root()->Changes());
}

TEST(ClippedDraw, AChangeInOneDrawingOutdatesNothingOfAnother)
{
    CScene scene;
    CScene other;
    scene.MakeShape(QEL_TYPE_RECT, Filled(OUTSIDE), scene.Make(QEL_TYPE_GROUP));
    const CQELViewElm::ChangeStamp changes = scene->Root()->Changes();
    const CQELViewElm::ChangeStamp others = other->Root()->Changes();
    other.MakeShape(QEL_TYPE_RECT, Filled(OUTSIDE), other.Make(QEL_TYPE_GROUP));
    other->SetRefSize({70, 70});
    EXPECT_TRUE(changes == scene->Root()->Changes());
    EXPECT_FALSE(others == other->Root()->Changes());
}

// ---- the bounds of groups

TEST(ClippedDraw, AGroupOutsideOfTheClipIsLeftOutAndOneWithinIsNot)
{
    CScene scene;
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    CNotingShape* pFar = scene.AddNoting(Filled(OUTSIDE), pGroup);
    CQELViewElm* pInner = scene.Make(QEL_TYPE_GROUP, pGroup);
    CNotingShape* pFarther = scene.AddNoting(Filled(OUTSIDE, SECOND), pInner);
    scene.Make(QEL_TYPE_GROUP, scene.Make(QEL_TYPE_GROUP)); // with nothing in it
    for (int n = 0; n < 2; ++n) {                           // found and kept
        const CPaper paper;
        EXPECT_EQ(1, scene.Draw(paper));
        EXPECT_EQ(0, pFar->TakePaints() + pFarther->TakePaints());
        EXPECT_EQ(SECOND, ::GetBkColor(paper.Dc()));
    }
    CNotingShape* pNear = scene.AddNoting(Filled(INSIDE), pInner);
    EXPECT_EQ(1, scene.Draw(CPaper()));
    EXPECT_EQ(0, pFar->TakePaints() + pFarther->TakePaints()); // still tested one by one
    EXPECT_EQ(1, pNear->TakePaints());
}

TEST(ClippedDraw, InAGroupWithOtherElementsTheShapesAreTestedOneByOne)
{
    CScene scene;
    CQELViewElm* pOuter = scene.Make(QEL_TYPE_GROUP);
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP, pOuter);
    CNotingShape* pFar = scene.AddNoting(Filled(OUTSIDE), pGroup);
    auto* pOther = scene.Add(new CNotingElm(QEL_TYPE_STATUS), pGroup);
    CNotingShape* pNear = scene.AddNoting(Filled(INSIDE), pGroup);
    EXPECT_EQ(1, scene.Draw(CPaper()));
    EXPECT_EQ(0, pFar->TakePaints());
    EXPECT_EQ(1, pOther->m_nDraws);
    EXPECT_EQ(1, pNear->TakePaints());
    QELSHAPEATTR unknown = Outlined(OUTSIDE); // nor is a group hidden in which a shape may be
    unknown.nPenStyle = 77;                   // anywhere
    CNotingShape* pAnywhere = scene.AddNoting(unknown, scene.Make(QEL_TYPE_GROUP));
    EXPECT_EQ(1, scene.Draw(CPaper()));
    EXPECT_EQ(1, pAnywhere->TakePaints());
}

TEST(ClippedDraw, BoundsHoldForOneRectangleOfTheDrawing)
{
    CScene scene;
    scene.MakeShape(QEL_TYPE_RECT, Filled(OUTSIDE), scene.Make(QEL_TYPE_GROUP));
    scene.ExpectSame();
    EXPECT_TRUE(scene.WasBlank());
    for (const RECT& rc : {RECT{0, 0, 70, 70}, RECT{-120, -120, 80, 80}, RECT{-150, 0, 60, 60}}) {
        scene.ExpectSame(rc);
        EXPECT_FALSE(scene.WasBlank()) << RectText(rc);
        scene.ExpectSame();
        EXPECT_TRUE(scene.WasBlank());
    }
}

TEST(ClippedDraw, BoundsHoldForOneStateOfThePressedShift)
{
    CScene scene;
    QELSHAPEATTR attr = Filled({20, 20, 30, 30});
    attr.nFlags = QEL_FLAG_PRESS;
    attr.nPenWidth = 0;
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP);
    auto* pBounds = static_cast<CQELViewGroup*>(pGroup);
    scene.MakeShape(QEL_TYPE_RECT, attr, pGroup);
    const RECT rc = pBounds->Bounds(QEL, QEL_DRAW_FULL).rc;
    const RECT rcPressed = pBounds->Bounds(QEL, QEL_DRAW_FULL | QEL_DRAW_PRESSED).rc;
    EXPECT_EQ("38,38,62,62", RectText(rc)); // two pixels more on each side
    EXPECT_EQ("40,40,64,64", RectText(rcPressed));
    EXPECT_EQ("38,38,62,62", RectText(pBounds->Bounds(QEL, QEL_DRAW_FULL).rc));
}

// A shape of each class in a box of units.
QELSHAPEATTR AttrOf(int nType, const RECT& rc)
{
    QELSHAPEATTR attr = Filled(rc);
    const LONG nMidX = (rc.left + rc.right) / 2;
    const LONG nMidY = (rc.top + rc.bottom) / 2;
    const auto put = [&](std::initializer_list<LONG> words) {
        std::copy(words.begin(), words.end(), attr.nGeometry);
    };
    if (nType == QEL_TYPE_CIRCLE) put({nMidX, nMidY, (rc.right - rc.left) / 2, 0});
    if (nType == QEL_TYPE_ROUNDRECT) put({rc.left, rc.top, rc.right, rc.bottom, 4, 4});
    if (nType == QEL_TYPE_ARC || nType == QEL_TYPE_PIE || nType == QEL_TYPE_CHORD)
        put({rc.left, rc.top, rc.right, rc.bottom, rc.right, nMidY, rc.left, nMidY});
    if (nType == QEL_TYPE_POLYLINE || nType == QEL_TYPE_POLYGON)
        put({3, rc.left, rc.top, rc.right, rc.top, nMidX, rc.bottom});
    if (nType == QEL_TYPE_TEXT) std::strcpy(attr.szText, "WWW");
    return attr;
}

struct Edit {
    const char* pszName;
    RECT rcBefore;
    std::function<void(CQELView*, CQELViewElm*)> act; // brings it into the clip
};

const Edit g_edits[] = {
    {"record", OUTSIDE,
     [](CQELView*, CQELViewElm* p) {
         const QELSHAPEATTR attr = AttrOf(p->Type(), INSIDE);
         EXPECT_EQ(1, p->SetAttrBlock(&attr));
     }},
    {"reference size", OUTSIDE,
     [](CQELView* p, CQELViewElm*) {
         p->SetRefSize({400, 400});
     }},
    {"turn", OUTSIDE,
     [](CQELView* p, CQELViewElm*) {
         p->Rotate(nullptr, {50, 50}, 180);
     }},
    {"move across", {70, 5, 90, 25}, [](CQELView* p, CQELViewElm*) { p->MoveX(nullptr, -65); }},
    {"move down", {5, 70, 25, 90}, [](CQELView* p, CQELViewElm*) { p->MoveY(nullptr, -65); }},
};

TEST(ClippedDraw, BoundsFollowEveryChangeOfAShapeOfEveryClass)
{
    for (int nType = QEL_TYPE_TEXT; nType <= QEL_TYPE_POLYGON; ++nType) {
        for (const Edit& edit : g_edits) {
            SCOPED_TRACE(testing::Message() << "type " << nType << ": " << edit.pszName);
            CScene scene;
            CQELViewElm* pInner = scene.Make(QEL_TYPE_GROUP, scene.Make(QEL_TYPE_GROUP));
            CQELViewElm* pElm = scene.MakeShape(nType, AttrOf(nType, edit.rcBefore), pInner);
            scene.ExpectSame();
            EXPECT_TRUE(scene.WasBlank());
            edit.act(scene.operator->(), pElm);
            scene.ExpectSame();
            EXPECT_FALSE(scene.WasBlank());
        }
    }
}

TEST(ClippedDraw, BoundsFollowAnElementThatComesIntoTheGroup)
{
    CScene scene;
    CQELViewElm* pGroup = scene.Make(QEL_TYPE_GROUP, scene.Make(QEL_TYPE_GROUP));
    CQELViewElm* pFar = scene.MakeShape(QEL_TYPE_RECT, Filled(OUTSIDE), pGroup);
    CQELViewElm* pAside = scene.Make(QEL_TYPE_STATUS); // never shown
    CQELViewElm* pNear = scene.MakeShape(QEL_TYPE_RECT, Filled(INSIDE), pAside);
    CQELViewElm* pNearer = scene.Make(QEL_TYPE_GROUP, pAside);
    scene.MakeShape(QEL_TYPE_RECT, Filled(INSIDE), pNearer);
    const std::vector<std::function<void()>> steps = {
        [&] { scene->MoveElement(pNear, pGroup, nullptr); }, // as the first child
        [&] { scene->MoveElement(pNear, nullptr, nullptr); },
        [&] { scene->MoveElement(pNear, pGroup, pFar); }, // after a sibling
        [&] { pNear->Move(nullptr, nullptr); },
        [&] { pGroup->AppendChild(pNear); },
        [&] { pNear->Unlink(); },
        [&] { pNear->InsertAfter(pFar); },
        [&] { pNear->Unlink(); },
        [&] { pNear->InsertBefore(pFar); },
        [&] { scene->DeleteElement(pNear); },
        [&] { scene->MoveElement(pNearer, pGroup, nullptr); },
        [&] { pNearer->Detach(); },
    };
    bool bBlank = true;
    scene.ExpectSame();
    for (const auto& step : steps) {
        EXPECT_EQ(bBlank, scene.WasBlank());
        step();
        bBlank = !bBlank;
        scene.ExpectSame();
    }
    EXPECT_TRUE(scene.WasBlank());
    delete pNearer;
}

// Two filled shapes in a hidden group: which of them leaves its colours follows each change.
class LeftColors : public testing::Test {
protected:
    LeftColors()
        : m_pGroup(m_scene.Make(QEL_TYPE_GROUP)),
          m_pFirst(m_scene.MakeShape(QEL_TYPE_RECT, Filled(OUTSIDE, FIRST), m_pGroup)),
          m_pSecond(m_scene.MakeShape(QEL_TYPE_RECT, Filled(OUTSIDE, SECOND), m_pGroup))
    {
        EXPECT_EQ(SECOND, Back());
    }
    COLORREF Back()
    {
        m_scene.ExpectSame();
        const CPaper paper;
        EXPECT_EQ(1, m_scene.Draw(paper));
        return ::GetBkColor(paper.Dc());
    }

    CScene m_scene;
    CQELViewElm* m_pGroup;
    CQELViewShape* m_pFirst;
    CQELViewShape* m_pSecond;
};

TEST_F(LeftColors, FollowTheStyle)
{
    QELSHAPEATTR attr = Outlined(OUTSIDE);
    EXPECT_EQ(1, m_pSecond->SetAttrBlock(&attr));
    EXPECT_EQ(FIRST, Back());
    m_pFirst->SetHollow(true);
    EXPECT_EQ(0xFFFFFFU, Back()); // as it was before
    m_pFirst->SetHollow(false);
    EXPECT_EQ(FIRST, Back());
}

TEST_F(LeftColors, FollowTheOrder)
{
    m_pSecond->Move(m_pGroup, nullptr);
    EXPECT_EQ(FIRST, Back());
    m_pFirst->Move(m_pGroup, nullptr);
    EXPECT_EQ(SECOND, Back());
    m_pFirst->Move(m_pGroup, m_pSecond);
    EXPECT_EQ(FIRST, Back());
}

TEST_F(LeftColors, AreNotThoseOfADeletedShape)
{
    EXPECT_EQ(1, m_scene->DeleteElement(m_pSecond));
    EXPECT_EQ(FIRST, Back());
    m_pGroup->DeleteChildren();
    EXPECT_EQ(0xFFFFFFU, Back());
}

TEST_F(LeftColors, FollowACopy)
{
    CQELViewElm* pCopy = nullptr;
    CQELViewElm* pInner = m_scene.Make(QEL_TYPE_GROUP, m_pGroup);
    EXPECT_EQ(SECOND, Back());
    EXPECT_EQ(1, m_pFirst->Duplicate(pInner, &pCopy));
    EXPECT_EQ(FIRST, Back());
    EXPECT_EQ(1, pInner->Duplicate(m_scene->Root(), &pCopy)); // behind all of the group
    m_pFirst->SetBlink(0);
    EXPECT_EQ(FIRST, Back());
}

// Within its own parent an empty group's copy cuts off what followed the group.
TEST_F(LeftColors, FollowACopyBesideTheElement)
{
    CQELViewElm* pEmpty = m_scene.Make(QEL_TYPE_GROUP, m_pGroup);
    pEmpty->Move(m_pGroup, m_pFirst);
    EXPECT_EQ(SECOND, Back());
    CQELViewElm* pCopy = nullptr;
    EXPECT_EQ(1, pEmpty->Duplicate(m_pGroup, &pCopy));
    EXPECT_EQ(FIRST, Back());
    m_pSecond->Unlink(); // so that all are found and deleted again
    pCopy->Unlink();
    delete pCopy;
    delete m_pSecond;
}

} // namespace
