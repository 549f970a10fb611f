// The view of the rectangle: one Rectangle call, or FillRect without an outline, and the 3D border.
// The code is render/QELViewBox.*.
#include "render/QELViewBox.h"

#include "render/Border3D.h"
#include "tests/support/ViewSupport.h"

namespace {

using View = CTestView<CQELViewRect>;
constexpr SIZE REF{100, 100};
constexpr int WORDS = 4;
constexpr RECT MAPPED{AtX(10), AtY(20), AtX(60), AtY(70)}; // of 10,20..60,70

TEST(RectShape, IsOneCallOnTheMappedRectangle)
{
    EXPECT_EQ("Rectangle 30,60,130,160",
              View(OutlineAttr({10, 20, 60, 70})).Call("Rectangle", SHAPE_QEL));
    EXPECT_EQ("Rectangle 30,60,130,160",
              View(FilledAttr({10, 20, 60, 70})).Call("Rectangle", SHAPE_QEL));
    // Clipped to the QEL rect.
    EXPECT_EQ("Rectangle 10,20,130,160",
              View(OutlineAttr({-30, -5, 60, 70})).Call("Rectangle", SHAPE_QEL));
    EXPECT_EQ("none", View(OutlineAttr({120, 20, 160, 70})).Call("Rectangle", SHAPE_QEL));
}

TEST(RectShape, FollowsItsKeepMode)
{
    const struct {
        uint32_t nKeep;
        const char* pszCall;
    } rows[] = {
        {QEL_KEEP_ALL, "Rectangle 20,40,170,190"}, // 10, 20, 40 and 30 pixels from the borders
        {QEL_KEEP_LEFT | QEL_ALONG_KEEP_LENGTH | QEL_AWAY_KEEP_LENGTH, "Rectangle 20,60,70,110"},
        {QEL_KEEP_RIGHT | QEL_ALONG_AS_QEL | QEL_AWAY_AS_GRAPH, "Rectangle 70,60,170,160"},
        {QEL_KEEP_TOP | QEL_AWAY_KEEP_LENGTH, "Rectangle 20,40,170,90"},
        {QEL_KEEP_BOTTOM | QEL_ALONG_KEEP_LENGTH, "Rectangle 30,90,80,190"},
    };
    for (const auto& row : rows) {
        QELSHAPEATTR attr = OutlineAttr({10, 20, 60, 70});
        attr.nFlags = row.nKeep;
        EXPECT_EQ(row.pszCall, View(attr).Call("Rectangle", SHAPE_QEL)) << std::hex << row.nKeep;
    }
}

TEST(RectShape, PixelsAreThoseOfTheRawCallInEveryStyle)
{
    ExpectStyles<CQELViewRect>({5, 4, 35, 26}, {4, 3, 84, 63}, {40, 30}, {14, 11, 74, 55},
                               [](HDC hdc) { ::Rectangle(hdc, 14, 11, 74, 55); });
}

TEST(RectShape, WithoutAnOutlineItIsFilledToItsEdges)
{
    for (int nDraft = 0; nDraft < DRAFT_COUNT; ++nDraft) {
        SCOPED_TRACE(nDraft);
        QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
        attr.nDraft = nDraft;
        attr.nPenWidth = 0;
        View view(attr);
        ExpectPixels(view, SHAPE_QEL, [&](HDC hdc) {
            PaintRaw(hdc, attr, MAPPED, [](HDC hdcRaw) {
                ::FillRect(hdcRaw, &MAPPED,
                           static_cast<HBRUSH>(::GetCurrentObject(hdcRaw, OBJ_BRUSH)));
            });
        });
    }
    QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
    attr.nPenWidth = 0;
    View view(attr);
    EXPECT_EQ("PatBlt 30,60,130,160", view.Call("PatBlt", SHAPE_QEL));
    EXPECT_EQ("none", view.Call("Rectangle", SHAPE_QEL));
    CTestBitmap drawn(220, 230);
    view->Draw(drawn.Dc(), SHAPE_QEL, QEL_DRAW_FULL);
    EXPECT_EQ(100 * 100, CountPixels(drawn, RGB(0, 255, 0))); // exactly the mapped rectangle
    EXPECT_EQ(RGB(0, 255, 0), drawn.At(129, 159));
}

TEST(RectShape, WithAnOutlineBothStandInsideTheSameRectangle)
{
    View view(FilledAttr({10, 20, 60, 70}));
    CTestBitmap drawn(220, 230);
    view->Draw(drawn.Dc(), SHAPE_QEL, QEL_DRAW_FULL);
    EXPECT_EQ(RGB(255, 0, 0), drawn.At(30, 60));
    EXPECT_EQ(RGB(255, 0, 0), drawn.At(129, 159));
    EXPECT_EQ(98 * 98, CountPixels(drawn, RGB(0, 255, 0)));
    EXPECT_EQ(100 * 100 - 98 * 98, CountPixels(drawn, RGB(255, 0, 0)));
}

TEST(RectShape, ABrushThatCannotBeMadeFillsWithTheOneOfTheDeviceContext)
{
    QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
    attr.nDraft = 38;
    attr.nPenWidth = 0;
    View view(attr);
    CTestBitmap drawn(220, 230);
    CTestSelect brush(drawn.Dc(), ::CreateSolidBrush(RGB(9, 8, 7)), true);
    EXPECT_EQ(1, view->Draw(drawn.Dc(), SHAPE_QEL, QEL_DRAW_FULL));
    EXPECT_EQ(100 * 100, CountPixels(drawn, RGB(9, 8, 7)));
}

TEST(RectShape, A3DBorderHidesTheOutline)
{
    for (const DWORD nFill : {3UL, 5UL, 7UL, 2UL, 4UL}) { // raised wins in 7
        for (const DWORD nWidth : {0UL, 1UL, 4UL}) {
            for (const int nPenWidth : {0, 1, 6}) {
                SCOPED_TRACE(testing::Message() << nFill << " " << nWidth << " " << nPenWidth);
                QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
                attr.nStyle = nFill | nWidth << 16;
                attr.nPenWidth = nPenWidth;
                View view(attr);
                const bool bRaised = nFill & 2;
                ExpectPixels(view, SHAPE_QEL, [&](HDC hdc) {
                    QELSHAPEATTR noPen = attr;
                    noPen.nPenWidth = 0;
                    PaintRaw(hdc, noPen, MAPPED, [&](HDC hdcRaw) {
                        if (nPenWidth)
                            ::Rectangle(hdcRaw, MAPPED.left, MAPPED.top, MAPPED.right,
                                        MAPPED.bottom);
                        else
                            ::FillRect(hdcRaw, &MAPPED,
                                       static_cast<HBRUSH>(::GetCurrentObject(hdcRaw, OBJ_BRUSH)));
                    });
                    DrawBorder3D(hdc, MAPPED, bRaised ? 0xFFFFFF : 0, bRaised ? 0 : 0xFFFFFF,
                                 SHAPE_QEL, nWidth ? static_cast<int>(nWidth) : 2);
                });
                EXPECT_EQ("SelectStock NULL_PEN", view.Call("Select", SHAPE_QEL));
            }
        }
    }
}

TEST(RectShape, A3DBorderIsWhiteAndBlackWhateverTheColorsBlinkOrNot)
{
    QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
    attr.nStyle = 3 | 3 << 16;
    View view(attr);
    view->SetBlink(1);
    CTestBitmap drawn(220, 230, RGB(50, 60, 70));
    view->Draw(drawn.Dc(), SHAPE_QEL, QEL_DRAW_FULL);
    for (int n = 0; n < 3; ++n) {
        EXPECT_EQ(RGB(255, 255, 255), drawn.At(30 + n, 100));
        EXPECT_EQ(RGB(255, 255, 255), drawn.At(100, 60 + n));
        EXPECT_EQ(RGB(0, 0, 0), drawn.At(129 - n, 100));
        EXPECT_EQ(RGB(0, 0, 0), drawn.At(100, 159 - n));
    }
    EXPECT_EQ(RGB(0, 255, 0), drawn.At(33, 100));
    EXPECT_EQ(RGB(0, 255, 0), drawn.At(126, 100));
}

TEST(RectShape, PressedMovesLeftAndTopAlways)
{
    const uint32_t nPressed = QEL_DRAW_FULL | QEL_DRAW_PRESSED;
    View inside(PressedAttr(OutlineAttr({10, 20, 60, 70})));
    EXPECT_EQ("Rectangle 32,62,132,162", inside.Call("Rectangle", SHAPE_QEL, nPressed));
    EXPECT_EQ("Rectangle 30,60,130,160", inside.Call("Rectangle", SHAPE_QEL));
    View atEdge(PressedAttr(OutlineAttr({10, 20, 100, 100})));
    EXPECT_EQ("Rectangle 32,62,210,220", atEdge.Call("Rectangle", SHAPE_QEL, nPressed));
    View nearEdge(PressedAttr(OutlineAttr({10, 20, 99, 70}))); // to the edge and no farther
    EXPECT_EQ("Rectangle 32,62,210,162", nearEdge.Call("Rectangle", SHAPE_QEL, nPressed));
    View unflagged(OutlineAttr({10, 20, 60, 70}));
    EXPECT_EQ("Rectangle 30,60,130,160", unflagged.Call("Rectangle", SHAPE_QEL, nPressed));
}

TEST(RectShape, LeavesTheDeviceContextAsItWasButForTheFillColors)
{
    for (const DWORD nStyle : {0UL, 1UL, 3UL, 5UL}) {
        for (const int nPenWidth : {0, 1, 3}) {
            SCOPED_TRACE(testing::Message() << nStyle << " " << nPenWidth);
            QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
            attr.nStyle = nStyle;
            attr.nPenWidth = nPenWidth;
            View view(attr);
            ExpectStateKept(view, SHAPE_QEL, nStyle ? RGB(0, 255, 0) : BACK_BEFORE,
                            nStyle ? RGB(0, 0, 255) : TEXT_BEFORE);
        }
    }
}

TEST(RectShape, RegionLeavesOutTheOutlineOrTheBorder)
{
    const struct {
        DWORD nStyle;
        int nPenWidth;
        int nShrink;
    } rows[] = {{0, 0, 0}, {0, 1, 1},           {1, 2, 1},           {1, 3, 2}, {1, 8, 4},
                {3, 9, 2}, {5 | 7 << 16, 1, 7}, {3 | 1 << 16, 0, 1}, {4, 0, 2}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.nStyle << " " << row.nPenWidth);
        QELSHAPEATTR attr = PressedAttr(FilledAttr({10, 20, 60, 70})); // regions do not shift
        attr.nStyle = row.nStyle;
        attr.nPenWidth = row.nPenWidth;
        View view(attr);
        ExpectSameRegion(::CreateRectRgn(MAPPED.left + row.nShrink, MAPPED.top + row.nShrink,
                                         MAPPED.right - row.nShrink, MAPPED.bottom - row.nShrink),
                         view->MakeRegion(SHAPE_QEL));
    }
    View empty(FilledAttr({10, 20, 10, 70}));
    EXPECT_EQ(nullptr, empty->MakeRegion(SHAPE_QEL));
    View noQel(FilledAttr({10, 20, 60, 70}));
    EXPECT_EQ(nullptr, noQel->MakeRegion({10, 20, 10, 20}));
}

TEST(RectShape, RegionFollowsTheKeepMode)
{
    QELSHAPEATTR attr = FilledAttr({10, 20, 60, 70});
    attr.nFlags = QEL_KEEP_ALL;
    attr.nPenWidth = 0;
    View view(attr);
    ExpectSameRegion(::CreateRectRgn(20, 40, 170, 190), view->MakeRegion(SHAPE_QEL));
}

TEST(RectShape, TurnsAboutTheCentreAndStaysInside)
{
    ExpectTurns<CQELViewRect>(OutlineAttr({10, 20, 60, 70}), WORDS, {50, 50}, BoxTurn(REF));
    ExpectTurns<CQELViewRect>(OutlineAttr({0, 0, 30, 10}), WORDS, {20, 20}, BoxTurn(REF));
    ExpectTurns<CQELViewRect>(OutlineAttr({-10, 20, 160, 70}), WORDS, {50, 50}, BoxTurn(REF));
    ExpectTurns<CQELViewRect>(OutlineAttr({60, 70, 10, 20}), WORDS, {45, 30}, BoxTurn(REF));
    ExpectTurns<CQELViewRect>(OutlineAttr({10, 20, 60, 70}), WORDS, {80, 80}, BoxTurn({160, 120}),
                              {160, 120});
}

TEST(RectShape, MovesAndStaysInside)
{
    ExpectMoves<CQELViewRect>(OutlineAttr({10, 20, 60, 70}), WORDS, BoxMove(REF));
    ExpectMoves<CQELViewRect>(OutlineAttr({-10, 20, 160, 70}), WORDS, BoxMove(REF));
    ExpectMoves<CQELViewRect>(OutlineAttr({10, 20, 60, 70}), WORDS, BoxMove({300, 71}), {300, 71});
}

} // namespace
