// What all shapes share: the attribute record, the host parameters, the masks, and the sequence in
// which pen and brush are selected and released around the one drawing call. The code is
// render/QELViewShape.*.
//
// A metafile holds no record of making a brush or pen that is never selected, nor of reading state;
// all setters make one, also when they set what is set already.
#include "render/QELViewShape.h"

#include "base/GdiScopes.h"
#include "render/OutlineProbe.h"
#include "render/QELViewBox.h"
#include "render/QELViewCircle.h"
#include "render/QELViewGroup.h"
#include "render/QELViewPoints.h"
#include "render/QELViewRadial.h"
#include "render/QELViewText.h"
#include "tests/support/ViewSupport.h"

#include <climits>
#include <cmath>
#include <memory>

namespace {

constexpr RECT QEL{0, 0, 200, 200}; // twice the reference size of 100 by 100

// A record whose every word differs.
QELSHAPEATTR FullAttr()
{
    QELSHAPEATTR attr{};
    attr.nSize = 424;
    attr.nStyle = 0x00070003;
    attr.nDraft = 12;
    attr.clrA = 0x80112233;
    attr.clrB = 0x445566;
    attr.clrPen = 0x778899;
    attr.nPenStyle = 4;
    attr.nPenWidth = 9;
    for (int n = 0; n < QEL_SHAPE_WORDS; ++n) attr.nGeometry[n] = 1000 - 77 * n;
    for (int n = 0; n < QEL_TEXT_SIZE - 1; ++n) attr.szText[n] = static_cast<char>('A' + n % 26);
    attr.nFlags = 0xABCD4081;
    return attr;
}

QELSHAPEATTR AttrOf(const CQELViewElm& elm)
{
    QELSHAPEATTR attr;
    std::memset(&attr, 0x5A, sizeof attr);
    EXPECT_EQ(1, elm.GetAttrBlock(&attr));
    return attr;
}

bool SameBytes(const QELSHAPEATTR& a, const QELSHAPEATTR& b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

uint32_t WordAt(const QELSHAPEATTR& attr, std::size_t nOffset)
{
    uint32_t n = 0;
    std::memcpy(&n, reinterpret_cast<const char*>(&attr) + nOffset, sizeof n);
    return n;
}

// ---- the record ----

TEST(ShapeRecord, ComesBackAsItWasSet)
{
    const QELSHAPEATTR attr = FullAttr();
    CQELViewRect view(100, 100);
    ASSERT_EQ(1, view.SetAttrBlock(&attr));
    EXPECT_TRUE(SameBytes(attr, AttrOf(view)));
    int nSize = 0;
    EXPECT_EQ(1, view.GetAttrBlockSize(&nSize));
    EXPECT_EQ(424, nSize);
}

TEST(ShapeRecord, HasItsWordsInOrderWithThePenStyleBeforeTheWidth)
{
    CQELViewRect view(100, 100);
    const QELSHAPEATTR full = FullAttr();
    ASSERT_EQ(1, view.SetAttrBlock(&full));
    const QELSHAPEATTR attr = AttrOf(view);
    const struct {
        std::size_t nOffset;
        uint32_t nValue;
    } words[] = {{0, 424},       {4, 0x00070003}, {8, 12}, {12, 0x80112233}, {16, 0x445566},
                 {20, 0x778899}, {24, 4},         {28, 9}, {32, 1000},       {420, 0xABCD4081}};
    for (const auto& word : words) EXPECT_EQ(word.nValue, WordAt(attr, word.nOffset));
    EXPECT_EQ(1000 - 77 * 32, static_cast<int32_t>(WordAt(attr, 32 + 32 * 4)));
    EXPECT_EQ('A', reinterpret_cast<const char*>(&attr)[164]);
}

TEST(ShapeRecord, OfANewShapeHoldsTheDefaults)
{
    QELSHAPEATTR expected{};
    expected.nSize = 424;
    expected.clrA = 0xFFFFFF;
    expected.clrPen = 0xFFFFFF;
    expected.nPenWidth = 1;
    EXPECT_TRUE(SameBytes(expected, AttrOf(CQELViewRect(50, 50))));
    EXPECT_TRUE(SameBytes(expected, AttrOf(CQELViewPolygon(50, 50))));
    EXPECT_TRUE(SameBytes(expected, AttrOf(CQELViewText(50, 50))));
}

TEST(ShapeRecord, OfAnotherSizeIsRefused)
{
    CQELViewRect view(100, 100);
    const QELSHAPEATTR before = FullAttr();
    ASSERT_EQ(1, view.SetAttrBlock(&before));
    for (const DWORD nSize : {0UL, 4UL, 24UL, 423UL, 425UL, 848UL, 0xFFFFFFFFUL}) {
        QELSHAPEATTR attr{};
        attr.nSize = nSize;
        EXPECT_EQ(0, view.SetAttrBlock(&attr)) << nSize;
        EXPECT_TRUE(SameBytes(before, AttrOf(view)));
    }
    EXPECT_EQ(0, view.SetAttrBlock(nullptr));
    EXPECT_EQ(0, view.GetAttrBlock(nullptr));
    EXPECT_TRUE(SameBytes(before, AttrOf(view)));
}

TEST(ShapeRecord, SetLeavesTheRotationAndTheBlinkPhaseAlone)
{
    const QELSHAPEATTR attr = OutlineAttr({10, 20, 60, 70});
    CTestView<CQELViewRect> view(attr);
    view->SetBlink(1);
    ASSERT_EQ(1, view->Rotate({50, 50}, 90));
    EXPECT_EQ("20 40 70 90", view.Geometry(4)); // x' = y, y' = 100 - x
    ASSERT_EQ(1, view->SetAttrBlock(&attr));    // literal, though the shape stands at 90
    EXPECT_EQ("10 20 60 70", view.Geometry(4));
    ASSERT_EQ(1, view->Rotate({50, 50}, 90)); // where it stands already
    EXPECT_EQ("10 20 60 70", view.Geometry(4));
    ASSERT_EQ(1, view->Rotate({50, 50}, 0)); // a quarter back: x' = 100 - y, y' = x
    EXPECT_EQ("30 10 80 60", view.Geometry(4));
    EXPECT_EQ(1, view->BlinkPhase());
}

TEST(ShapeRecord, IsCopiedWithTheElementButTheRotationIsNot)
{
    CQELViewGroup target(50, 50);
    QELSHAPEATTR attr = FullAttr();
    attr.nGeometry[0] = 10;
    attr.nGeometry[1] = 20;
    attr.nGeometry[2] = 60;
    attr.nGeometry[3] = 70;
    CTestView<CQELViewRect> view(attr);
    ASSERT_EQ(1, view->Rotate({50, 50}, 90));
    CQELViewElm* pCopy = nullptr;
    ASSERT_EQ(1, view->Duplicate(&target, &pCopy));
    EXPECT_EQ(QEL_TYPE_RECT, pCopy->Type());
    EXPECT_EQ(100, pCopy->RefW());
    EXPECT_TRUE(SameBytes(AttrOf(*view), AttrOf(*pCopy)));
    // The copy counts its turns from the geometry that it was given.
    ASSERT_EQ(1, view->Rotate({50, 50}, 90));
    ASSERT_EQ(1, pCopy->Rotate({50, 50}, 90));
    EXPECT_EQ("20 40 70 90", view.Geometry(4));
    EXPECT_EQ("40 30 90 80", WordsText(WordsOf(AttrOf(*pCopy), 4)));
}

// ---- host parameters ----

TEST(ShapeParameters, ColorGoesToTheFillOrElseThePen)
{
    const struct {
        uint32_t nFlags;
        uint32_t nStyle;
        int nResult;
        bool bFill;
    } rows[] = {
        {QEL_FLAG_COLOR_PARAM, 0, 1, false},
        {QEL_FLAG_COLOR_PARAM, 0x00050000, 1, false}, // a border width is no fill style
        {QEL_FLAG_COLOR_PARAM, 1, 1, true},
        {QEL_FLAG_COLOR_PARAM, 3, 1, true},
        {QEL_FLAG_COLOR_PARAM, 5, 1, true},
        {0, 0, 0, false},
        {0, 1, 0, false},
        {QEL_FLAG_DRAFT_PARAM | 0x4000, 1, 0, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.nFlags << " " << row.nStyle);
        QELSHAPEATTR expected = FullAttr();
        expected.nFlags = row.nFlags;
        expected.nStyle = row.nStyle;
        CTestView<CQELViewEllipse> view(expected);
        EXPECT_EQ(row.nResult, view->SetColorParam(0x123456));
        if (row.nResult) (row.bFill ? expected.clrA : expected.clrPen) = 0x123456;
        EXPECT_TRUE(SameBytes(expected, AttrOf(*view)));
    }
}

TEST(ShapeParameters, ColorOfATextIsAlwaysItsTextColor)
{
    for (const uint32_t nStyle : {0U, 1U, 3U}) {
        QELSHAPEATTR expected = FullAttr();
        expected.nFlags = QEL_FLAG_COLOR_PARAM;
        expected.nStyle = nStyle;
        CTestView<CQELViewText> view(expected);
        EXPECT_EQ(1, view->SetColorParam(0x123456));
        expected.clrA = 0x123456;
        EXPECT_TRUE(SameBytes(expected, AttrOf(*view)));
    }
}

TEST(ShapeParameters, HatchAndItsColorsOnlyReachFlaggedFilledShapes)
{
    const struct {
        uint32_t nFlags;
        uint32_t nStyle;
        int nResult;
    } rows[] = {{QEL_FLAG_DRAFT_PARAM, 1, 1},
                {QEL_FLAG_DRAFT_PARAM, 3, 1},
                {QEL_FLAG_DRAFT_PARAM, 5, 1},
                {QEL_FLAG_DRAFT_PARAM, 0, 0},          // not filled
                {QEL_FLAG_DRAFT_PARAM, 0x00020000, 0}, // nor by a border width
                {QEL_FLAG_COLOR_PARAM | 0x4000, 1, 0}, // not flagged
                {0, 0, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.nFlags << " " << row.nStyle);
        QELSHAPEATTR expected = FullAttr();
        expected.nFlags = row.nFlags;
        expected.nStyle = row.nStyle;
        CTestView<CQELViewEllipse> view(expected);
        EXPECT_EQ(row.nResult, view->SetDraftParam(33));
        if (row.nResult) expected.nDraft = 33;
        EXPECT_TRUE(SameBytes(expected, AttrOf(*view)));
        EXPECT_EQ(row.nResult, view->SetDraftForeParam(0x80123456));
        if (row.nResult) expected.clrA = 0x80123456;
        EXPECT_TRUE(SameBytes(expected, AttrOf(*view)));
        EXPECT_EQ(row.nResult, view->SetDraftBackParam(0x654321));
        if (row.nResult) expected.clrB = 0x654321;
        EXPECT_TRUE(SameBytes(expected, AttrOf(*view)));
    }
}

TEST(ShapeParameters, MaskTellsWhatTheFlagsAskFor)
{
    const struct {
        uint32_t nFlags;
        uint32_t nMask;
    } rows[] = {{0, 0},
                {0x1, 0x1},
                {0x80, 0x80},
                {0x4000, 0x4000},
                {0x1000, 0x1000},
                {0x8000, 0x1000},
                {0x10000, 0x1000},
                {0x40000, 0x1000},
                {0x80000, 0x1000},
                {0xD9000, 0x1000},
                {0xF20000, 0}, // placement and extent alone are no keep mode
                {0xFFF22F7E, 0},
                {0xFFFFFFFF, 0x5081},
                {0x8081, 0x1081}};
    for (const auto& row : rows) {
        QELSHAPEATTR attr = OutlineAttr({0, 0, 10, 10});
        attr.nFlags = row.nFlags;
        CTestView<CQELViewRect> rect(attr);
        EXPECT_EQ(row.nMask, rect->GetParamMask()) << std::hex << row.nFlags;
        CTestView<CQELViewText> text(attr);
        EXPECT_EQ(row.nMask | 0x2000, text->GetParamMask()) << std::hex << row.nFlags;
    }
}

// ---- the sequence of calls ----

TEST(ShapeSequence, OfAFilledShape)
{
    CTestView<CQELViewEllipse> view(FilledAttr({10, 20, 60, 70}));
    EXPECT_EQ((Lines{"CreatePen style 0 width 1 color 0000ff", "SelectPen #1", //
                     "SetBkMode 1",                                            //
                     "SetBkColor 00ff00", "SetTextColor ff0000",               //
                     "CreatePatternBrush", "SelectBrush #2",                   //
                     "Ellipse 20,40,120,140",                                  //
                     "SelectStock WHITE_BRUSH", "SelectStock BLACK_PEN", "DeleteObject #1",
                     "SetBkMode 2",       // the two colours stay
                     "DeleteObject #2"}), // the hatch owns its brush to the end of the call
              view.Calls(QEL));
    EXPECT_EQ(1, view.Result());
}

TEST(ShapeSequence, OfAnUnfilledShape)
{
    CTestView<CQELViewEllipse> view(OutlineAttr({10, 20, 60, 70}));
    EXPECT_EQ((Lines{"CreatePen style 0 width 1 color 0000ff", "SelectPen #1", "SetBkMode 1",
                     "SelectStock NULL_BRUSH", "Ellipse 20,40,120,140", "SelectStock WHITE_BRUSH",
                     "SelectStock BLACK_PEN", "DeleteObject #1", "SetBkMode 2"}),
              view.Calls(QEL));
}

TEST(ShapeSequence, OfAShapeWithoutAnOutlineSelectsTheStockPen)
{
    QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
    attr.nPenWidth = 0;
    CTestView<CQELViewEllipse> view(attr);
    EXPECT_EQ((Lines{"SelectStock NULL_PEN", "SetBkMode 1", "SetBkColor 00ff00",
                     "SetTextColor ff0000", "CreatePatternBrush", "SelectBrush #1",
                     "Ellipse 20,40,120,140", "SelectStock WHITE_BRUSH", "SelectStock BLACK_PEN",
                     "SetBkMode 2", "DeleteObject #1"}),
              view.Calls(QEL));
}

TEST(ShapeSequence, OfARectanglePutsThePenBackFirst)
{
    CTestView<CQELViewRect> view(FilledAttr({10, 20, 60, 70}));
    EXPECT_EQ(
        (Lines{"CreatePen style 0 width 1 color 0000ff", "SelectPen #1", "SetBkMode 1",
               "SetBkColor 00ff00", "SetTextColor ff0000", "CreatePatternBrush", "SelectBrush #2",
               "Rectangle 20,40,120,140", "SelectStock BLACK_PEN", "DeleteObject #1",
               "SelectStock WHITE_BRUSH", "SetBkMode 2", "DeleteObject #2"}),
        view.Calls(QEL));
}

class CShapeWithoutFigure final : public CQELViewShape { // it tells neither figure nor region
public:
    CShapeWithoutFigure(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr)
        : CQELViewShape(nRefW, nRefH, QEL_TYPE_RECT, pPool)
    {
    }
    int NewInstance(CQELViewElm** ppOut) const override { return NewInstanceAs(*this, ppOut); }
};

TEST(ShapeSequence, OfAClassWithoutAFigurePaintsNothing)
{
    CTestView<CShapeWithoutFigure> view(FilledAttr({10, 20, 60, 70}));
    CTestView<CQELViewEllipse> ellipse(FilledAttr({10, 20, 60, 70}));
    Lines expected = ellipse.Calls(QEL);
    ASSERT_EQ(1, std::erase(expected, "Ellipse 20,40,120,140"));
    EXPECT_EQ(expected, view.Calls(QEL));
    EXPECT_EQ(1, view.Result());
    EXPECT_EQ(nullptr, view->MakeRegion(QEL));
    CTestBitmap drawn(205, 205);
    EXPECT_EQ(1, view->Draw(drawn.Dc(), QEL, QEL_DRAW_FULL));
    EXPECT_TRUE(IsBlank(drawn));
}

TEST(ShapeSequence, OfALineSetsNoBrush)
{
    CTestView<CQELViewLine> view(OutlineAttr({10, 20, 60, 70}));
    EXPECT_EQ((Lines{"CreatePen style 0 width 1 color 0000ff", "SelectPen #1", "SetBkMode 1",
                     "MoveTo 20,40", "LineTo 120,140", "MoveTo 0,0", "SelectStock BLACK_PEN",
                     "DeleteObject #1", "SetBkMode 2"}),
              view.Calls(QEL));
}

// Fill styles 3 and 5 leave the background colour set, and what hosts paint next is seen on it.
TEST(ShapeSequence, OfAFilledLineFillsTheGapsAndRestoresTheColorForFillStyle1Only)
{
    for (const DWORD nStyle : {1UL, 3UL, 5UL, 0x00040001UL, 0x00040003UL}) {
        QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
        attr.nStyle = nStyle;
        attr.nPenStyle = PS_DASH;
        CTestView<CQELViewLine> view(attr);
        Lines colors;
        for (const std::string& line : view.Calls(QEL))
            if (line.rfind("SetBk", 0) == 0 || line.rfind("LineTo", 0) == 0 ||
                line.rfind("SetTextColor", 0) == 0 || line.find("Brush") != std::string::npos)
                colors.push_back(line);
        std::sort(colors.begin(), colors.begin() + 2); // mode and colour in either order
        ASSERT_GE(colors.size(), 3U);
        EXPECT_EQ((Lines{"SetBkColor ff0000", "SetBkMode 2", "LineTo 120,140"}),
                  Lines(colors.begin(), colors.begin() + 3));
        const bool bBack = (nStyle & 0xFFFF) == 1;
        EXPECT_EQ(bBack, std::count(colors.begin() + 3, colors.end(), "SetBkColor ffffff") == 1);
        EXPECT_EQ(1, std::count(colors.begin() + 3, colors.end(), "SetBkMode 2"));
        EXPECT_EQ(bBack ? 5U : 4U, colors.size());
        ExpectStateKept(view, QEL, bBack ? BACK_BEFORE : RGB(0, 0, 255), TEXT_BEFORE);
    }
}

TEST(ShapeSequence, APartialRedrawCallsNothingAndSucceeds)
{
    for (const uint32_t nFlags : {0U, 2U, 0xFFFFFFFEU}) {
        CTestView<CQELViewRect> rect(FilledAttr({10, 20, 60, 70}));
        EXPECT_EQ(Lines{}, rect.Calls(QEL, nFlags));
        EXPECT_EQ(1, rect.Result());
        CTestView<CQELViewLine> line(FilledAttr({10, 20, 60, 70}));
        EXPECT_EQ(Lines{}, line.Calls(QEL, nFlags));
        EXPECT_EQ(1, line.Result());
        CTestView<CQELViewText> text(FilledAttr({10, 20, 60, 70}));
        EXPECT_EQ(Lines{}, text.Calls(QEL, nFlags));
        EXPECT_EQ(1, text.Result());
    }
}

// ---- what is left changed in the device context ----

TEST(ShapeState, AFillLeavesItsTwoColorsAndNothingElse)
{
    CTestView<CQELViewEllipse> filled(FilledAttr({10, 20, 60, 70}));
    ExpectStateKept(filled, QEL, RGB(0, 255, 0), RGB(0, 0, 255));
    CTestView<CQELViewEllipse> outline(OutlineAttr({10, 20, 60, 70}));
    ExpectStateKept(outline, QEL, BACK_BEFORE, TEXT_BEFORE);
}

TEST(ShapeState, BlinkReachesPenAndBothFillColors)
{
    QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
    attr.clrPen |= QEL_COLOR_BLINK;
    attr.clrA |= QEL_COLOR_BLINK;
    attr.clrB |= QEL_COLOR_BLINK;
    CTestView<CQELViewEllipse> view(attr);
    EXPECT_EQ("CreatePen style 0 width 1 color 0000ff", view.Call("CreatePen", QEL));
    EXPECT_EQ("SetBkColor 00ff00", view.Call("SetBkColor", QEL));
    EXPECT_EQ("SetTextColor ff0000", view.Call("SetTextColor", QEL));
    view->SetBlink(1);
    EXPECT_EQ("CreatePen style 0 width 1 color 000000", view.Call("CreatePen", QEL));
    EXPECT_EQ("SetBkColor 000000", view.Call("SetBkColor", QEL));
    EXPECT_EQ("SetTextColor 000000", view.Call("SetTextColor", QEL));
    attr.nStyle = QEL_STYLE_FILL_3DUP;
    CTestView<CQELViewLine> line(attr);
    line->SetBlink(1);
    EXPECT_EQ("CreatePen style 0 width 1 color 000000", line.Call("CreatePen", QEL));
    EXPECT_EQ("SetBkColor 000000", line.Call("SetBkColor", QEL));
}

TEST(ShapeState, BlinkReachesBothEndsOfAGradient)
{
    QELSHAPEATTR attr = FilledAttr({0, 0, 100, 100});
    attr.nDraft = DRAFT_GRADIENT;
    attr.nPenWidth = 0;
    attr.clrB |= QEL_COLOR_BLINK;
    CTestView<CQELViewRect> view(attr);
    view->SetBlink(1);
    QELSHAPEATTR dark = attr;
    dark.clrB = 0;
    ExpectPixels(view, QEL, [&](HDC hdc) {
        PaintRaw(hdc, dark, QEL, [](HDC hdcRaw) {
            ::FillRect(hdcRaw, &QEL, static_cast<HBRUSH>(::GetCurrentObject(hdcRaw, OBJ_BRUSH)));
        });
    });
}

TEST(ShapeState, WithNeitherFillNorOutlineNothingIsSeen)
{
    QELSHAPEATTR attr = OutlineAttr({10, 20, 60, 70});
    attr.nPenWidth = 0;
    const auto expectBlank = [](auto&& view) {
        CTestBitmap drawn(200, 200);
        EXPECT_EQ(1, view->Draw(drawn.Dc(), QEL, QEL_DRAW_FULL));
        EXPECT_TRUE(IsBlank(drawn));
    };
    expectBlank(CTestView<CQELViewRect>(attr));
    expectBlank(CTestView<CQELViewEllipse>(attr));
    expectBlank(CTestView<CQELViewLine>(attr));
    QELSHAPEATTR points = OutlineAttr({3, 10, 10, 60, 20, 30, 70});
    points.nPenWidth = 0;
    expectBlank(CTestView<CQELViewPolygon>(points));
    expectBlank(CTestView<CQELViewPolyline>(points));
}

// ---- tools that cannot be made ----

// Takes all GDI objects that the process may have, so that no pen, brush or bitmap can be made.
class CNoObjectsLeft {
public:
    CNoObjectsLeft()
    {
        while (const HPEN hPen = ::CreatePen(PS_SOLID, 1, 0)) m_pens.push_back(hPen);
    }
    ~CNoObjectsLeft()
    {
        for (const HPEN hPen : m_pens) ::DeleteObject(hPen);
    }
    CNoObjectsLeft(const CNoObjectsLeft&) = delete;
    CNoObjectsLeft& operator=(const CNoObjectsLeft&) = delete;

private:
    std::vector<HPEN> m_pens;
};

TEST(ShapeTools, PenAndBrushThatCannotBeMadeLeaveThoseOfTheDeviceContext)
{
    CTestBitmap drawn(200, 200), expected(200, 200), line(200, 200), expectedLine(200, 200);
    for (const CTestBitmap* p : {&drawn, &expected, &line, &expectedLine}) {
        ::SelectObject(p->Dc(), ::GetStockObject(WHITE_PEN)); // stock objects need no place
        ::SelectObject(p->Dc(), ::GetStockObject(GRAY_BRUSH));
    }
    line.Fill(RGB(1, 2, 3));
    expectedLine.Fill(RGB(1, 2, 3));
    QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
    CTestView<CQELViewRect> rectView(attr);
    CTestView<CQELViewLine> lineView(OutlineAttr({10, 20, 60, 70}));
    {
        const CNoObjectsLeft full;
        ASSERT_EQ(nullptr, ::CreatePen(PS_SOLID, 1, 0)); // what the shapes run into
        const std::string before = DcState(line.Dc());
        EXPECT_EQ(1, rectView->Draw(drawn.Dc(), QEL, QEL_DRAW_FULL));
        EXPECT_EQ(1, lineView->Draw(line.Dc(), QEL, QEL_DRAW_FULL));
        EXPECT_EQ(before, DcState(line.Dc()));
        EXPECT_EQ(::GetStockObject(WHITE_PEN), ::GetCurrentObject(drawn.Dc(), OBJ_PEN));
        EXPECT_EQ(::GetStockObject(GRAY_BRUSH), ::GetCurrentObject(drawn.Dc(), OBJ_BRUSH));
        // An ellipse would not do: GDI itself needs a region for it.
        ::Rectangle(expected.Dc(), 20, 40, 120, 140);
        ::MoveToEx(expectedLine.Dc(), 20, 40, nullptr);
        ::LineTo(expectedLine.Dc(), 120, 140);
    }
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ("", FirstDifference(expected, drawn));
    EXPECT_FALSE(IsBlank(line));
    EXPECT_EQ("", FirstDifference(expectedLine, line));
}

TEST(ShapeTools, ABrushThatCannotBeMadeLeavesTheOneOfTheDeviceContext)
{
    for (const int nDraft : {38, -1, 1000000}) {
        QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
        attr.nDraft = nDraft;
        CTestView<CQELViewEllipse> view(attr);
        CTestBitmap drawn(200, 200), expected(200, 200);
        CTestSelect brush(drawn.Dc(), ::CreateSolidBrush(RGB(9, 8, 7)), true);
        EXPECT_EQ(1, view->Draw(drawn.Dc(), QEL, QEL_DRAW_FULL));
        {
            CTestSelect pen(expected.Dc(), ::CreatePen(PS_SOLID, 1, attr.clrPen), true);
            CTestSelect same(expected.Dc(), ::CreateSolidBrush(RGB(9, 8, 7)), true);
            ::Ellipse(expected.Dc(), 20, 40, 120, 140);
        }
        EXPECT_EQ("", FirstDifference(expected, drawn)) << nDraft;
        EXPECT_EQ(RGB(9, 8, 7), drawn.At(70, 90));
        EXPECT_EQ(RGB(0, 255, 0), ::GetBkColor(drawn.Dc())); // the colours are set all the same
    }
}

TEST(ShapeTools, DrawingManyTimesLeavesNoObjectsBehind)
{
    QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
    attr.nDraft = DRAFT_GRADIENT;
    CTestView<CQELViewRect> rect(attr);
    CTestView<CQELViewLine> line(attr);
    CTestBitmap drawn(20, 20);
    // The process may hold some 65,000 objects: a leak of one a draw would show.
    for (int n = 0; n < 35000; ++n) {
        ASSERT_EQ(1, rect->Draw(drawn.Dc(), {0, 0, 20, 20}, QEL_DRAW_FULL));
        ASSERT_EQ(1, line->Draw(drawn.Dc(), {0, 0, 20, 20}, QEL_DRAW_FULL));
    }
    const HPEN hPen = ::CreatePen(PS_SOLID, 1, 0);
    EXPECT_NE(nullptr, hPen);
    ::DeleteObject(hPen);
    EXPECT_FALSE(IsBlank(drawn));
}

// ---- limits ----

TEST(ShapeLimits, PensAreDrawnTenThousandPixelsWideAtMost)
{
    const struct {
        int nWidth, nDrawn;
    } rows[] = {{9999, 9999},  {10000, 10000},  {10001, 10000},  {INT_MAX, 10000},
                {-9999, 9999}, {-10001, 10000}, {INT_MIN, 10000}}; // recorded without sign
    for (const auto& row : rows) {
        SCOPED_TRACE(row.nWidth);
        QELSHAPEATTR attr = FilledAttr({10, 10, 20, 20});
        attr.nPenWidth = row.nWidth;
        CTestView<CQELViewLine> line(attr);
        CTestView<CQELViewRect> rect(attr);
        const std::string expected =
            "CreatePen style 0 width " + std::to_string(row.nDrawn) + " color 0000ff";
        EXPECT_EQ(expected, line.Call("CreatePen", QEL));
        EXPECT_EQ(expected, rect.Call("CreatePen", QEL));
        EXPECT_EQ(row.nWidth, AttrOf(*rect).nPenWidth); // as it was set
    }
}

// The lines of a draw that begin with the word of a call, of a shape in a drawing of one unit.
template <class T>
std::size_t CurvesDrawn(const QELSHAPEATTR& attr, int nWidth, int nHeight)
{
    CTestView<T> view(attr, 1, 1);
    CRecording recording;
    EXPECT_EQ(1, view->Draw(recording.Dc(), {0, 0, nWidth, nHeight}, QEL_DRAW_FULL));
    return recording.Only({"Arc", "Pie", "Chord", "Ellipse", "RoundRect"}).size();
}

TEST(ShapeLimits, CurvesLargerThanAnyPictureAreLeftOut)
{
    constexpr int MOST = 131072;
    const struct {
        int nWidth, nHeight;
        std::size_t nCurves;
    } rows[] = {{MOST, MOST, 1}, {MOST + 1, 100, 0}, {100, MOST + 1, 0}, {1 << 30, 1 << 30, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.nWidth << " by " << row.nHeight);
        // The box over the whole drawing, also turned round, and the points at two corners.
        for (const QELSHAPEATTR& attr :
             {FilledAttr({0, 0, 1, 1, 0, 0, 1, 1}), FilledAttr({1, 1, 0, 0, 0, 0, 1, 1})}) {
            EXPECT_EQ(row.nCurves, CurvesDrawn<CQELViewArc>(attr, row.nWidth, row.nHeight));
            EXPECT_EQ(row.nCurves, CurvesDrawn<CQELViewPie>(attr, row.nWidth, row.nHeight));
            EXPECT_EQ(row.nCurves, CurvesDrawn<CQELViewChord>(attr, row.nWidth, row.nHeight));
        }
        const QELSHAPEATTR attr = FilledAttr({0, 0, 1, 1});
        EXPECT_EQ(row.nCurves, CurvesDrawn<CQELViewEllipse>(attr, row.nWidth, row.nHeight));
        EXPECT_EQ(row.nCurves, CurvesDrawn<CQELViewRoundRect>(attr, row.nWidth, row.nHeight));
        const RECT rcQel{0, 0, row.nWidth, row.nHeight};
        for (const bool bRound : {false, true}) { // a region takes no longer, nor is it there
            CTestView<CQELViewEllipse> ellipse(attr, 1, 1);
            CTestView<CQELViewRoundRect> rounded(attr, 1, 1);
            const CRegion region(bRound ? rounded->MakeRegion(rcQel) : ellipse->MakeRegion(rcQel));
            EXPECT_EQ(row.nCurves != 0, region.Get() != nullptr);
        }
    }
    // A circle lies in the square of the smaller side.
    const QELSHAPEATTR circle = FilledAttr({50, 50, 50});
    for (const int nSide : {MOST, MOST + 2}) {
        CTestView<CQELViewCircle> view(circle);
        EXPECT_EQ(nSide == MOST, view.Call("Ellipse", {0, 0, nSide, 2 * MOST}) != "none");
        const CRegion region(view->MakeRegion({0, 0, nSide, 2 * MOST}));
        EXPECT_EQ(nSide == MOST, region.Get() != nullptr);
    }
    // What has no curve has no limit.
    CTestView<CQELViewRect> rect(FilledAttr({0, 0, 1, 1}), 1, 1);
    EXPECT_EQ("Rectangle 0,0,1000000,1000000", rect.Call("Rectangle", {0, 0, 1000000, 1000000}));
}

TEST(ShapeRegion, IsNullForAShapeWithoutAnInterior)
{
    CTestView<CQELViewLine> line(FilledAttr({10, 20, 60, 70}));
    EXPECT_EQ(nullptr, line->MakeRegion(QEL));
    CTestView<CQELViewText> text(FilledAttr({10, 20, 60, 70}));
    EXPECT_EQ(nullptr, text->MakeRegion(QEL));
    CTestView<CQELViewArc> arc(FilledAttr({10, 20, 60, 70, 60, 20, 10, 70}));
    EXPECT_EQ(nullptr, arc->MakeRegion(QEL));
    CTestView<CQELViewPolyline> polyline(FilledAttr({3, 10, 10, 60, 20, 30, 70}));
    EXPECT_EQ(nullptr, polyline->MakeRegion(QEL));
}

} // namespace

// ---- what is on an outline ----

TEST(OutlineProbe, IsInsideOfAWholeTurnAndAsFarFromItAsItsRadius)
{
    COutlineProbe probe({50, 50});
    probe.Arc({50, 50, 20, 20}, 0, 6.283185307179586);
    EXPECT_TRUE(probe.IsInside());
    EXPECT_TRUE(probe.IsWithin(20.5));
    EXPECT_FALSE(probe.IsWithin(19));
}

TEST(OutlineProbe, GoesAlongNoArcWithoutAngles)
{
    for (const double fTo : {1e9, HUGE_VAL, std::nan("")}) {
        COutlineProbe probe({50, 50});
        probe.Arc({50, 50, 20, 20}, 0, fTo);
        EXPECT_FALSE(probe.IsInside()) << fTo;
        EXPECT_FALSE(probe.IsWithin(1000)) << fTo;
    }
}
