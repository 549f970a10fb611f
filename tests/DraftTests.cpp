// The exported hatch-brush class: ten hatches, 28 gradient styles, what it keeps and what it
// refuses. The code is brush/QELDraft.cpp.
#include "brush/Hatch.h"
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>

namespace {

constexpr COLORREF CLR_TEXT = RGB(200, 30, 0);
constexpr COLORREF CLR_BACK = RGB(0, 60, 220);

struct HatchRow {
    int nStyle;
    const char* pszLines[8]; // 1: background colour, 0: text colour
};

constexpr HatchRow g_hatches[] = {
    {0,
     {"00000000", "00000000", "00000000", "00000000", "00000000", "00000000", "00000000",
      "00000000"}},
    {1,
     {"11111111", "11111111", "11111111", "11111111", "11111111", "11111111", "11111111",
      "11111111"}},
    {2,
     {"10101010", "11111111", "10101010", "11111111", "10101010", "11111111", "10101010",
      "11111111"}},
    {3,
     {"10101010", "01010101", "10101010", "01010101", "10101010", "01010101", "10101010",
      "01010101"}},
    {4,
     {"01010101", "01010101", "01010101", "01010101", "01010101", "01010101", "01010101",
      "01010101"}},
    {5,
     {"11111111", "00000000", "11111111", "00000000", "11111111", "00000000", "11111111",
      "00000000"}},
    {6,
     {"10001000", "01000100", "00100010", "00010001", "10001000", "01000100", "00100010",
      "00010001"}},
    {7,
     {"00010001", "00100010", "01000100", "10001000", "00010001", "00100010", "01000100",
      "10001000"}},
    {8,
     {"11001100", "11001100", "00110011", "00110011", "11001100", "11001100", "00110011",
      "00110011"}},
    {9,
     {"11110000", "11110000", "11110000", "11110000", "00001111", "00001111", "00001111",
      "00001111"}},
};

tagDRAFTSTYLE Style(int nStyle)
{
    return static_cast<tagDRAFTSTYLE>(nStyle);
}

void Paint(const CTestBitmap& bitmap, HBRUSH hBrush)
{
    ::SetTextColor(bitmap.Dc(), CLR_TEXT);
    ::SetBkColor(bitmap.Dc(), CLR_BACK);
    CTestSelect brush(bitmap.Dc(), hBrush, false);
    ::PatBlt(bitmap.Dc(), 0, 0, bitmap.Width(), bitmap.Height(), PATCOPY);
}

// A gradient of its own, painted; the white picture when there is none.
void PaintGradient(const CTestBitmap& bitmap, const RECT& rc, int nKind, COLORREF clr1,
                   COLORREF clr2)
{
    const HQELGRADIENT hGradient = QELCreateGradientDescriptor(&rc, nKind, clr1, clr2);
    if (hGradient) Paint(bitmap, QELGetGradientBrush(hGradient));
    QELCloseGradientDescriptor(hGradient);
}

// The change of style is private, and exported for hosts that were built with it.
int SetStyle(CQELDraft& draft, tagDRAFTSTYLE nStyle);
template <int (CQELDraft::*pfnSet)(tagDRAFTSTYLE)>
struct StyleSetter { // an explicit instantiation may name what is private
    friend int SetStyle(CQELDraft& draft, tagDRAFTSTYLE nStyle) { return (draft.*pfnSet)(nStyle); }
};
template struct StyleSetter<&CQELDraft::SetDraft>;

HBRUSH Junk()
{
    return reinterpret_cast<HBRUSH>(static_cast<uintptr_t>(0x5A5A));
}

} // namespace

TEST(Draft, HatchesHaveTheirPixelsSetInTheBackgroundColor)
{
    for (const HatchRow& row : g_hatches) {
        SCOPED_TRACE(row.nStyle);
        CQELDraft draft(Style(row.nStyle));
        HBRUSH hBrush = Junk();
        ASSERT_NE(0, draft.GetDraftBrush(hBrush, nullptr, 0, 0)); // rectangle and colours not used
        CTestBitmap drawn(19, 17);
        Paint(drawn, hBrush);
        for (int y = 0; y < drawn.Height(); ++y)
            for (int x = 0; x < drawn.Width(); ++x)
                ASSERT_EQ(row.pszLines[y % 8][x % 8] == '1' ? CLR_BACK : CLR_TEXT, drawn.At(x, y))
                    << x << "," << y;
    }
}

TEST(Draft, IsOfTheStyleThatWasSetBeforeItsFirstUse)
{
    const RECT rc{0, 0, 19, 17};
    for (int nStyle = 0; nStyle < DRAFT_COUNT; ++nStyle) {
        SCOPED_TRACE(nStyle);
        for (const int nBefore : {0, 6, static_cast<int>(DRAFT_GRADIENT)}) {
            CQELDraft draft(Style(nBefore)), expected(Style(nStyle));
            EXPECT_EQ(1, SetStyle(draft, Style(nStyle)));
            CTestBitmap drawn(19, 17), wanted(19, 17);
            HBRUSH hBrush = Junk(), hExpected = Junk();
            RECT rcDraft = rc, rcExpected = rc;
            ASSERT_NE(0, draft.GetDraftBrush(hBrush, &rcDraft, CLR_TEXT, CLR_BACK));
            ASSERT_NE(0, expected.GetDraftBrush(hExpected, &rcExpected, CLR_TEXT, CLR_BACK));
            Paint(drawn, hBrush);
            Paint(wanted, hExpected);
            EXPECT_EQ("", FirstDifference(wanted, drawn));
        }
    }
}

TEST(Draft, ExportsTheHatchesAsWordsWithThePatternInTheLowByte)
{
    for (const HatchRow& row : g_hatches)
        for (int nLine = 0; nLine < 8; ++nLine)
            EXPECT_EQ(std::stoi(row.pszLines[nLine], nullptr, 2),
                      CQELDraft::m_byColorsBits[row.nStyle][nLine])
                << row.nStyle << " line " << nLine;
    EXPECT_EQ(0, CQELDraft::m_nDefDraft);
}

TEST(Draft, IsOfTheDefaultStyleWhenMadeWithoutOne)
{
    CQELDraft draft;
    HBRUSH hBrush = nullptr;
    ASSERT_NE(0, draft.GetDraftBrush(hBrush, nullptr, 0xFFFFFF, 0xFFFFFF));
    CTestBitmap drawn(16, 16);
    Paint(drawn, hBrush);
    EXPECT_EQ(16 * 16, CountPixels(drawn, CLR_TEXT));
}

TEST(Draft, StylesFromTenAreGradientsInBothOrdersOfTheColors)
{
    const COLORREF clr1 = RGB(255, 0, 10), clr2 = RGB(5, 250, 90);
    RECT rc{5, 3, 37, 31};
    for (int nStyle = 10; nStyle < 38; ++nStyle) {
        SCOPED_TRACE(nStyle);
        const int k = nStyle - 10;
        CTestBitmap expected(40, 36), drawn(40, 36);
        PaintGradient(expected, rc, k / 2, k % 2 ? clr2 : clr1, k % 2 ? clr1 : clr2);
        CQELDraft draft(Style(nStyle));
        HBRUSH hBrush = nullptr;
        ASSERT_NE(0, draft.GetDraftBrush(hBrush, &rc, clr1, clr2));
        Paint(drawn, hBrush);
        EXPECT_FALSE(IsBlank(drawn));
        EXPECT_EQ("", FirstDifference(expected, drawn));
    }
}

TEST(Draft, EvenGradientStyleBeginsWithTheFirstColorAndTheOddOneWithTheSecond)
{
    const COLORREF clr1 = RGB(255, 0, 0), clr2 = RGB(0, 0, 255);
    for (const int nStyle : {10, 11}) {
        RECT rc{8, 0, 40, 4};
        CQELDraft draft(Style(nStyle));
        HBRUSH hBrush = nullptr;
        ASSERT_NE(0, draft.GetDraftBrush(hBrush, &rc, clr1, clr2));
        CTestBitmap drawn(40, 4);
        Paint(drawn, hBrush);
        EXPECT_EQ(nStyle == 10 ? clr1 : clr2, drawn.At(8, 0)) << nStyle;
    }
}

TEST(Draft, RefusesStylesAboveThirtySevenAndNegativeOnes)
{
    for (const int nStyle : {38, 39, 100, INT_MAX, -1, -2, -1000000, INT_MIN}) {
        SCOPED_TRACE(nStyle);
        CQELDraft draft(Style(nStyle));
        RECT rc{0, 0, 10, 10};
        HBRUSH hBrush = Junk();
        EXPECT_EQ(0, draft.GetDraftBrush(hBrush, &rc, 1, 2));
        EXPECT_EQ(nullptr, hBrush);
    }
}

TEST(Draft, RefusesAGradientWithoutARectangleOrWithAnEmptyOne)
{
    CQELDraft draft(Style(12));
    HBRUSH hBrush = Junk();
    EXPECT_EQ(0, draft.GetDraftBrush(hBrush, nullptr, 1, 2));
    EXPECT_EQ(nullptr, hBrush);
    RECT rcEmpty{0, 0, 0, 0};
    hBrush = Junk();
    EXPECT_EQ(0, draft.GetDraftBrush(hBrush, &rcEmpty, 1, 2));
    EXPECT_EQ(nullptr, hBrush);
    RECT rc{0, 0, 8, 8}; // and it is as good as new afterwards
    EXPECT_NE(0, draft.GetDraftBrush(hBrush, &rc, 1, 2));
    EXPECT_NE(nullptr, hBrush);
}

TEST(Draft, KeepsTheHatchBrushForItsLife)
{
    HBRUSH hFirst = nullptr;
    {
        CQELDraft draft(Style(6));
        RECT rc{0, 0, 5, 5};
        HBRUSH hSecond = nullptr;
        ASSERT_NE(0, draft.GetDraftBrush(hFirst, nullptr, 0, 0));
        ASSERT_NE(0, draft.GetDraftBrush(hSecond, &rc, 7, 8));
        EXPECT_EQ(hFirst, hSecond);
        EXPECT_EQ(static_cast<DWORD>(OBJ_BRUSH), ::GetObjectType(hFirst));
    }
    EXPECT_EQ(0u, ::GetObjectType(hFirst));
}

TEST(Draft, KeepsTheGradientBrushWhileTheRectangleIsTheSameWhateverTheColors)
{
    const COLORREF clr1 = RGB(255, 255, 0), clr2 = RGB(0, 0, 60);
    CQELDraft draft(Style(10));
    RECT rc{2, 2, 30, 20};
    HBRUSH hFirst = nullptr, hSecond = nullptr;
    ASSERT_NE(0, draft.GetDraftBrush(hFirst, &rc, clr1, clr2));
    RECT rcEqual = rc;
    ASSERT_NE(0, draft.GetDraftBrush(hSecond, &rcEqual, RGB(1, 2, 3), RGB(4, 5, 6)));
    EXPECT_EQ(hFirst, hSecond);
    // What is kept goes by the rectangle alone, and shows the colours of the first call.
    CTestBitmap expected(32, 24), drawn(32, 24);
    PaintGradient(expected, rc, 0, clr1, clr2);
    Paint(drawn, hSecond);
    EXPECT_EQ("", FirstDifference(expected, drawn));
}

TEST(Draft, MakesTheGradientAgainForAnotherRectangle)
{
    const COLORREF clr1 = RGB(255, 255, 0), clr2 = RGB(0, 0, 60);
    CQELDraft draft(Style(16));
    RECT rc{2, 2, 30, 20};
    HBRUSH hBrush = nullptr;
    ASSERT_NE(0, draft.GetDraftBrush(hBrush, &rc, clr1, clr2));
    RECT rcOther{3, 2, 30, 20};
    ASSERT_NE(0, draft.GetDraftBrush(hBrush, &rcOther, clr2, clr1));
    CTestBitmap expected(64, 48), drawn(64, 48);
    PaintGradient(expected, rcOther, 3, clr2, clr1);
    Paint(drawn, hBrush);
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ("", FirstDifference(expected, drawn));
    // A rectangle that makes none costs the old one as well; the next good one is served again.
    RECT rcEmpty{5, 5, 5, 9};
    EXPECT_EQ(0, draft.GetDraftBrush(hBrush, &rcEmpty, clr1, clr2));
    EXPECT_EQ(nullptr, hBrush);
    EXPECT_NE(0, draft.GetDraftBrush(hBrush, &rcOther, clr2, clr1));
    Paint(drawn, hBrush);
    EXPECT_EQ("", FirstDifference(expected, drawn));
}

TEST(Draft, GivesACopyTheSameBrushAndBothCanBeDestroyed)
{
    for (const int nStyle : {3, 20}) {
        SCOPED_TRACE(nStyle);
        RECT rc{0, 0, 16, 16};
        auto pFirst = std::make_unique<CQELDraft>(Style(nStyle));
        HBRUSH hFirst = nullptr, hCopy = nullptr, hAssigned = nullptr;
        ASSERT_NE(0, pFirst->GetDraftBrush(hFirst, &rc, 1, 0xFFFFFF));
        auto pCopy = std::make_unique<CQELDraft>(*pFirst);
        CQELDraft assigned(Style(1));
        assigned = *pFirst;
        ASSERT_NE(0, pCopy->GetDraftBrush(hCopy, &rc, 1, 0xFFFFFF));
        ASSERT_NE(0, assigned.GetDraftBrush(hAssigned, &rc, 1, 0xFFFFFF));
        EXPECT_EQ(hFirst, hCopy);
        EXPECT_EQ(hFirst, hAssigned);
        pFirst.reset();
        // A copy is one of the members, as hosts make it: both hold the same brush.
        EXPECT_EQ(0u, ::GetObjectType(hFirst));
        pCopy.reset();
    }
}

TEST(Draft, DestroyedCopiesDoNotCloseGradientsOfOthers)
{
    // The second destructor closes a descriptor that is gone; it must not meet one made since.
    RECT rc{0, 0, 16, 16};
    auto pFirst = std::make_unique<CQELDraft>(Style(20));
    HBRUSH hBrush = nullptr;
    ASSERT_NE(0, pFirst->GetDraftBrush(hBrush, &rc, 1, 2));
    auto pCopy = std::make_unique<CQELDraft>(*pFirst);
    pFirst.reset();
    HQELGRADIENT hOthers[50];
    for (HQELGRADIENT& h : hOthers) h = QELCreateGradientDescriptor(&rc, 3, 0, 0xFFFFFF);
    CQELDraft bystanders[50] = {};
    for (CQELDraft& draft : bystanders) {
        draft = CQELDraft(Style(14));
        ASSERT_NE(0, draft.GetDraftBrush(hBrush, &rc, 0, 0xFFFFFF));
    }
    pCopy.reset();
    for (const HQELGRADIENT h : hOthers) {
        EXPECT_EQ(static_cast<DWORD>(OBJ_BRUSH), ::GetObjectType(QELGetGradientBrush(h)));
        EXPECT_EQ(1, QELCloseGradientDescriptor(h));
    }
    for (CQELDraft& draft : bystanders) {
        ASSERT_NE(0, draft.GetDraftBrush(hBrush, &rc, 0, 0xFFFFFF));
        EXPECT_EQ(static_cast<DWORD>(OBJ_BRUSH), ::GetObjectType(hBrush));
    }
}

TEST(Draft, CopiesTheStyleAndAssignsToItselfWithoutHarm)
{
    CQELDraft source(Style(1));
    CQELDraft copy(source);
    CQELDraft& self = copy;
    copy = self;
    HBRUSH hBrush = nullptr;
    ASSERT_NE(0, copy.GetDraftBrush(hBrush, nullptr, 0, 0));
    CTestBitmap drawn(8, 8);
    Paint(drawn, hBrush);
    EXPECT_EQ(64, CountPixels(drawn, CLR_BACK));
}

TEST(Draft, IsDestroyedThroughAPointerToIt)
{
    class CCounted : public CQELDraft {
    public:
        explicit CCounted(int* pnCount) : CQELDraft(Style(4)), m_pnCount(pnCount) {}
        ~CCounted() override { ++*m_pnCount; }

    private:
        int* m_pnCount;
    };
    int nCount = 0;
    CQELDraft* pDraft = new CCounted(&nCount);
    HBRUSH hBrush = nullptr;
    ASSERT_NE(0, pDraft->GetDraftBrush(hBrush, nullptr, 0, 0));
    delete pDraft;
    EXPECT_EQ(1, nCount);
    EXPECT_EQ(0u, ::GetObjectType(hBrush));
}

TEST(Hatch, ACellIsNoLargerThanItsBound)
{
    const unsigned short rows[HATCH_SIDE] = {0xAA, 0xFF, 0xAA, 0xFF, 0xAA, 0xFF, 0xAA, 0xFF};
    for (const int32_t nCell : {MAX_HATCH_CELL, MAX_HATCH_CELL + 1, 100 * MAX_HATCH_CELL}) {
        HBITMAP hBitmap = MakeHatchBitmap(rows, nCell);
        BITMAP bitmap{};
        EXPECT_NE(0, ::GetObjectA(hBitmap, sizeof bitmap, &bitmap));
        EXPECT_EQ(HATCH_SIDE * MAX_HATCH_CELL, bitmap.bmWidth) << nCell;
        EXPECT_EQ(HATCH_SIDE * MAX_HATCH_CELL, bitmap.bmHeight) << nCell;
        ::DeleteObject(hBitmap);
    }
}
