// Live values on drawings of static shapes: the host parameters, the mask, blinking, and the values
// that only dynamic elements take.
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

constexpr COLORREF RED = RGB(255, 0, 0);
constexpr COLORREF BLUE = RGB(0, 0, 255);
constexpr COLORREF GREEN = RGB(0, 255, 0);
constexpr COLORREF WHITE = RGB(255, 255, 255);

class Values : public ::testing::Test {
protected:
    Values() : m_h(CreateQELEngine()) {}
    ~Values() override { EXPECT_EQ(1, DestroyQELEngine(m_h)); }

    void Open(const std::string& inside)
    {
        const std::string path = m_folder.Path("a.qel");
        ASSERT_TRUE(WriteBytes(path, "<qel>" + inside + "</qel>"));
        ASSERT_EQ(1, QELOpenFile(m_h, path.c_str()));
    }
    void Draw(CTestBitmap& drawn, DWORD nFlags = QEL_DRAW_FULL) const
    {
        drawn.Fill(WHITE);
        const RECT rc = drawn.Box();
        ASSERT_EQ(1, QELSetQELRect(m_h, &rc));
        ASSERT_EQ(1, QELDraw(m_h, drawn.Dc(), &rc, nFlags));
    }
    DWORD Param(int nIndex) const
    {
        DWORD nValue = 0xDEAD;
        EXPECT_EQ(1, QELGetParam(m_h, nIndex, &nValue));
        return nValue;
    }

    CTestFolder m_folder;
    HQELENGINE m_h;
};

// Blocks of 10 by 10 units; solid in colour B with hatch 0, in colour A with hatch 1.
std::string Block(const char* pszAttributes, const char* pszCrd)
{
    return std::string("<rect style=\"0x1\" lnwid=\"0\" ") + pszAttributes + " crd=\"" + pszCrd +
           "\"/>";
}

} // namespace

TEST_F(Values, ParametersBeginWithTheirDefaults)
{
    Open("");
    EXPECT_EQ(0xFFFFFFu, Param(0));
    EXPECT_EQ(0u, Param(1));
    EXPECT_EQ(0xFFFFFFu, Param(2));
    EXPECT_EQ(0u, Param(3));
}

TEST_F(Values, ParametersAreKeptThoughNoElementAnswersForThem)
{
    Open("");
    for (int nIndex = 0; nIndex < 4; ++nIndex) {
        // 0 tells that there is no frame, pattern or draw region to take it. The drawing keeps it.
        EXPECT_EQ(0, QELSetParam(m_h, nIndex, 20 + nIndex)) << nIndex;
        EXPECT_EQ(20u + nIndex, Param(nIndex));
    }
}

TEST_F(Values, ParametersOutsideTheFourAreRefused)
{
    Open("");
    for (const int nIndex : {-1, 4, 5, 1000, INT_MIN, INT_MAX}) {
        DWORD nValue = 77;
        EXPECT_EQ(0, QELSetParam(m_h, nIndex, 5)) << nIndex;
        EXPECT_EQ(0, QELGetParam(m_h, nIndex, &nValue)) << nIndex;
        EXPECT_EQ(77u, nValue);
    }
    EXPECT_EQ(0, QELGetParam(m_h, 0, nullptr));
    EXPECT_EQ(0xFFFFFFu, Param(0));
    EXPECT_EQ(0u, Param(1));
    EXPECT_EQ(0xFFFFFFu, Param(2));
    EXPECT_EQ(0u, Param(3));
}

TEST_F(Values, HatchStyleOutsideItsRangeIsNeitherKeptNorShown)
{
    Open(Block("flag=\"0x80\" fg=\"0xff0000\" bg=\"0xff\" dr=\"1\"", "0 0 50 50"));
    CTestBitmap drawn(50, 50);
    EXPECT_EQ(0, QELSetParam(m_h, 1, 37));
    EXPECT_EQ(37u, Param(1));
    EXPECT_EQ(0, QELSetParam(m_h, 1, 0));
    Draw(drawn);
    EXPECT_EQ(2500, CountPixels(drawn, RED));
    for (const DWORD nValue : {38U, 1000U, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(0, QELSetParam(m_h, 1, nValue));
        EXPECT_EQ(0u, Param(1)) << nValue;
        Draw(drawn);
        EXPECT_EQ(2500, CountPixels(drawn, RED)) << nValue;
    }
}

TEST_F(Values, ParametersOutliveCloseAndOpenButAreNotPushedIntoTheNewDrawing)
{
    const std::string block =
        Block("flag=\"0x80\" fg=\"0xff0000\" bg=\"0xff\" dr=\"0\"", "0 0 50 50");
    Open(block);
    CTestBitmap drawn(50, 50);
    QELSetParam(m_h, 0, 11);
    QELSetParam(m_h, 1, 1);
    QELSetParam(m_h, 3, GREEN);
    Draw(drawn);
    EXPECT_EQ(2500, CountPixels(drawn, BLUE)); // hatch 1: all in colour A
    ASSERT_EQ(1, QELCloseFile(m_h));
    Open(block);
    EXPECT_EQ(11u, Param(0));
    EXPECT_EQ(1u, Param(1));
    EXPECT_EQ(static_cast<DWORD>(GREEN), Param(3));
    Draw(drawn);
    EXPECT_EQ(2500, CountPixels(drawn, RED)); // as the file has it
}

TEST_F(Values, ColorParameterReachesShapesThatAskForIt)
{
    // Filled ones take it as colour A, outlines as pen colour, those without the flag not at all.
    Open(Block("flag=\"0x1\" fg=\"0xff0000\" dr=\"1\"", "0 0 10 10") +
         Block("fg=\"0xff0000\" dr=\"1\"", "20 0 30 10") +
         "<g><rect flag=\"0x1\" clr=\"0xff0000\" crd=\"0 20 10 30\"/></g>" +
         "<rect clr=\"0xff0000\" crd=\"20 20 30 30\"/>");
    CTestBitmap drawn(50, 50);
    Draw(drawn);
    EXPECT_EQ(100 + 100 + 36 + 36,
              CountPixels(drawn, BLUE)); // an outline of 10 by 10 has 36 pixels
    EXPECT_EQ(0, QELSetParam(m_h, 0, GREEN));
    Draw(drawn);
    EXPECT_EQ(100 + 36, CountPixels(drawn, GREEN));
    EXPECT_EQ(100 + 36, CountPixels(drawn, BLUE));
    EXPECT_EQ(GREEN, drawn.At(5, 5));
    EXPECT_EQ(GREEN, drawn.At(0, 25));
}

TEST_F(Values, HatchParametersReachFilledShapesThatAskForThem)
{
    Open(Block("flag=\"0x80\" fg=\"0xff0000\" bg=\"0xff\" dr=\"0\"", "0 0 10 10") +
         Block("fg=\"0xff0000\" bg=\"0xff\" dr=\"0\"", "20 0 30 10") +
         "<rect flag=\"0x80\" clr=\"0xff\" crd=\"0 20 10 30\"/>");
    CTestBitmap drawn(50, 50);
    Draw(drawn);
    EXPECT_EQ(100 + 100 + 36, CountPixels(drawn, RED));
    QELSetParam(m_h, 3, GREEN); // colour B
    Draw(drawn);
    EXPECT_EQ(100, CountPixels(drawn, GREEN));
    EXPECT_EQ(100 + 36, CountPixels(drawn, RED));
    QELSetParam(m_h, 1, 1); // all in colour A
    Draw(drawn);
    EXPECT_EQ(100, CountPixels(drawn, BLUE));
    QELSetParam(m_h, 2, GREEN); // colour A
    Draw(drawn);
    EXPECT_EQ(100, CountPixels(drawn, GREEN));
    EXPECT_EQ(0, CountPixels(drawn, BLUE));
}

TEST_F(Values, MaskTellsWhatTheDrawingFollows)
{
    struct Row {
        const char* pszInside;
        DWORD nMask;
    };
    const Row rows[] = {
        {"", 0},
        {"<g/>", 0},
        {"<rect/>", 0},
        {"<rect flag=\"0x1\"/>", QEL_MASK_COLOR},
        {"<circle flag=\"0x80\"/>", QEL_MASK_DRAFT},
        {"<line flag=\"0x4000\"/>", QEL_MASK_PRESS},
        {"<rect flag=\"0x1000\"/>", QEL_MASK_KEEP},
        {"<rect flag=\"0x8000\"/>", QEL_MASK_KEEP},
        {"<rect flag=\"0x10000\"/>", QEL_MASK_KEEP},
        {"<rect flag=\"0x40000\"/>", QEL_MASK_KEEP},
        {"<rect flag=\"0x80000\"/>", QEL_MASK_KEEP},
        {"<rect flag=\"0xf20000\"/>", 0}, // placement alone is no keep mode
        {"<text/>", QEL_MASK_TEXT},
        {"<text flag=\"0x1\"/>", QEL_MASK_TEXT | QEL_MASK_COLOR},
        {"<g><g><rect flag=\"0x1\"/></g><arc flag=\"0x80\"/></g><pie flag=\"0x8000\"/>",
         QEL_MASK_COLOR | QEL_MASK_DRAFT | QEL_MASK_KEEP},
        {"<rect flag=\"0xffffffff\"/>",
         QEL_MASK_COLOR | QEL_MASK_DRAFT | QEL_MASK_KEEP | QEL_MASK_PRESS},
    };
    EXPECT_EQ(0u, QELParamsSupported(m_h));
    for (const Row& row : rows) {
        Open(row.pszInside);
        EXPECT_EQ(row.nMask, QELParamsSupported(m_h)) << row.pszInside;
    }
    ASSERT_EQ(1, QELCloseFile(m_h));
    EXPECT_EQ(0u, QELParamsSupported(m_h));
    EXPECT_EQ(0u, QELParamsSupported(nullptr));
}

TEST_F(Values, StatusNeedsAStatusElement)
{
    Open("<g><rect/></g>");
    DWORD nStatus = 7;
    EXPECT_EQ(0, QELSetStatus(m_h, 3));
    EXPECT_EQ(0, QELGetStatus(m_h, &nStatus));
    EXPECT_EQ(7u, nStatus);
    EXPECT_EQ(0, QELGetStatus(m_h, nullptr));
}

TEST_F(Values, ScaleFunctionsNeedAScaleOrMeter)
{
    Open("<g><rect/></g>");
    for (const DWORD nId : {0U, 1U, 32U, 33U, 0xFFFFFFFFU})
        for (const DWORD nSelector : {0U, 3U, 6U, 24U, 33U, 34U, 0xFFFFFFFFU}) {
            DWORD nValue = 99;
            float fValue = 1.5F;
            EXPECT_EQ(0, QELSetScaleParam(m_h, nId, nSelector, 5));
            EXPECT_EQ(0, QELGetScaleParam(m_h, nId, nSelector, &nValue));
            EXPECT_EQ(0, QELSetScaleParamf(m_h, nId, nSelector, 5));
            EXPECT_EQ(0, QELGetScaleParamf(m_h, nId, nSelector, &fValue));
            EXPECT_EQ(99u, nValue);
            EXPECT_EQ(1.5F, fValue);
        }
    DWORD nValue = 99;
    float fValue = 1.5F;
    EXPECT_EQ(0, QELSetScaleStatus(m_h, 0, 5));
    EXPECT_EQ(0, QELGetScaleStatus(m_h, 0, &nValue));
    EXPECT_EQ(0, QELSetScaleStatusf(m_h, 0, 5));
    EXPECT_EQ(0, QELGetScaleStatusf(m_h, 0, &fValue));
    EXPECT_EQ(99u, nValue);
    EXPECT_EQ(1.5F, fValue);
    EXPECT_EQ(0, QELGetScaleParam(m_h, 0, 6, nullptr));
    EXPECT_EQ(0, QELGetScaleParamf(m_h, 0, 6, nullptr));
}

TEST_F(Values, DrawGraphRectNeedsADrawRegion)
{
    Open("<rect/>");
    RECT rc{1, 2, 3, 4};
    EXPECT_EQ(0, QELGetDrawGraphRect(m_h, &rc));
    EXPECT_EQ(1, rc.left);
    EXPECT_EQ(4, rc.bottom);
    EXPECT_EQ(0, QELGetDrawGraphRect(m_h, nullptr));
}

TEST_F(Values, BlinkingColorsAreBlackInTheDarkPhase)
{
    Open(Block("bg=\"0xff glt\"", "0 0 10 10") + Block("bg=\"0xff\"", "20 0 30 10") +
         "<g><g><rect clr=\"0xff glt\" crd=\"0 20 10 30\"/></g></g>");
    CTestBitmap drawn(50, 50);
    Draw(drawn);
    EXPECT_EQ(100 + 100 + 36, CountPixels(drawn, RED));
    for (const int nState : {1, -1, 256, INT_MIN}) {
        EXPECT_EQ(1, QELSetBlinkState(m_h, nState));
        Draw(drawn);
        EXPECT_EQ(100, CountPixels(drawn, RED)) << nState;
        EXPECT_EQ(100 + 36, CountPixels(drawn, 0)) << nState;
    }
    EXPECT_EQ(1, QELSetBlinkState(m_h, 0));
    Draw(drawn);
    EXPECT_EQ(100 + 100 + 36, CountPixels(drawn, RED));
}

TEST_F(Values, BlinkPhaseStaysWhenAnElementsRecordIsSet)
{
    Open(Block("bg=\"0xff glt\"", "0 0 10 10"));
    ASSERT_EQ(1, QELSetBlinkState(m_h, 1));
    const HQELELEM hElem = QELGetFirstChild(m_h, QELGetRootElem(m_h));
    QELSHAPEATTR attr{};
    ASSERT_EQ(1, QELGetElemAttr(m_h, hElem, &attr, nullptr));
    attr.nGeometry[2] = 20;
    ASSERT_EQ(1, QELSetElemAttr(m_h, hElem, &attr, sizeof attr));
    CTestBitmap drawn(50, 50);
    Draw(drawn);
    EXPECT_EQ(200, CountPixels(drawn, 0));
    // An open makes the elements anew, in the bright phase.
    Open(Block("bg=\"0xff glt\"", "0 0 10 10"));
    Draw(drawn);
    EXPECT_EQ(100, CountPixels(drawn, RED));
}

TEST_F(Values, ANewElementIsBrightUntilThePhaseIsSet)
{
    Open(Block("bg=\"0xff glt\"", "0 0 10 10"));
    ASSERT_EQ(1, QELSetBlinkState(m_h, 1));
    const HQELELEM hRoot = QELGetRootElem(m_h);
    ASSERT_NE(nullptr, QELCopyElem(m_h, QELGetFirstChild(m_h, hRoot)));
    const HQELELEM hElem = QELCreateElem(m_h, QEL_TYPE_RECT, hRoot, nullptr);
    QELSHAPEATTR attr{};
    ASSERT_EQ(1, QELGetElemAttr(m_h, QELGetFirstChild(m_h, hRoot), &attr, nullptr));
    attr.nGeometry[0] = 20;
    attr.nGeometry[2] = 30;
    ASSERT_EQ(1, QELSetElemAttr(m_h, hElem, &attr, sizeof attr));
    CTestBitmap drawn(50, 50);
    Draw(drawn);
    EXPECT_EQ(100 + 100,
              CountPixels(drawn, RED)); // the copy, over its dark source, and the new one
    ASSERT_EQ(1, QELSetBlinkState(m_h, 1));
    Draw(drawn);
    EXPECT_EQ(0, CountPixels(drawn, RED));
}

TEST_F(Values, AnElementIsAsDarkInAGroupThatIsNewAsItWasBefore)
{
    Open(Block("bg=\"0xff glt\"", "0 0 10 10") + Block("bg=\"0xff00 glt\"", "20 0 30 10"));
    const HQELELEM hRoot = QELGetRootElem(m_h);
    const HQELELEM hMoved = QELGetFirstChild(m_h, hRoot);
    const HQELELEM hBack = QELGetNextElem(m_h, hMoved);
    ASSERT_EQ(1, QELMoveElem(m_h, hBack, nullptr, nullptr)); // bright, out of the picture
    ASSERT_EQ(1, QELSetBlinkState(m_h, 1));
    const HQELELEM hGroup = QELCreateElem(m_h, QEL_TYPE_GROUP, hRoot, nullptr);
    ASSERT_EQ(1, QELMoveElem(m_h, hMoved, hGroup, nullptr));
    ASSERT_EQ(1, QELMoveElem(m_h, hBack, hGroup, hMoved));
    CTestBitmap drawn(50, 50);
    Draw(drawn);
    EXPECT_EQ(200, CountPixels(drawn, 0)); // both are as dark as the drawing
    ASSERT_EQ(1, QELSetBlinkState(m_h, 0));
    Draw(drawn);
    EXPECT_EQ(100, CountPixels(drawn, RED));
    EXPECT_EQ(100, CountPixels(drawn, GREEN));
}

TEST_F(Values, ANewElementStaysBrightWhereverItMovesUntilThePhaseIsSet)
{
    Open("<g>" + Block("bg=\"0xff glt\"", "0 0 10 10") + "</g>");
    ASSERT_EQ(1, QELSetBlinkState(m_h, 1));
    const HQELELEM hRoot = QELGetRootElem(m_h);
    const HQELELEM hGroup = QELGetFirstChild(m_h, hRoot);
    const HQELELEM hCopy = QELCopyElem(m_h, QELGetFirstChild(m_h, hGroup));
    ASSERT_EQ(1, QELMoveElem(m_h, hCopy, hRoot, hGroup)); // over its dark source
    CTestBitmap drawn(50, 50);
    Draw(drawn);
    EXPECT_EQ(100, CountPixels(drawn, RED));
    ASSERT_EQ(1, QELMoveElem(m_h, hCopy, nullptr, nullptr));
    ASSERT_EQ(1, QELMoveElem(m_h, hCopy, hRoot, hGroup)); // it comes in
    Draw(drawn);
    EXPECT_EQ(100, CountPixels(drawn, 0));
}

TEST_F(Values, BlinkNeedsADrawing)
{
    EXPECT_EQ(0, QELSetBlinkState(m_h, 1));
    ASSERT_EQ(1, QELNewFile(m_h));
    EXPECT_EQ(1, QELSetBlinkState(m_h, 1));
}

TEST_F(Values, DrawIsGatedByTheUpdateRectangleAndNotCutByIt)
{
    Open(Block("bg=\"0xff\"", "0 0 50 50"));
    CTestBitmap drawn(100, 100);
    const RECT rcQel{20, 20, 70, 70};
    ASSERT_EQ(1, QELSetQELRect(m_h, &rcQel));
    for (const RECT& rc : {RECT{0, 0, 20, 100}, RECT{70, 20, 90, 90}, RECT{30, 30, 30, 40}}) {
        EXPECT_EQ(0, QELDraw(m_h, drawn.Dc(), &rc, QEL_DRAW_FULL));
        EXPECT_TRUE(IsBlank(drawn));
    }
    EXPECT_EQ(0, QELDraw(m_h, drawn.Dc(), nullptr, QEL_DRAW_FULL));
    const RECT rcCorner{69, 69, 70, 70};
    EXPECT_EQ(1, QELDraw(m_h, drawn.Dc(), &rcCorner, 0)); // nothing moves in this drawing
    EXPECT_TRUE(IsBlank(drawn));
    EXPECT_EQ(1, QELDraw(m_h, drawn.Dc(), &rcCorner, QEL_DRAW_FULL));
    EXPECT_EQ(2500, CountPixels(drawn, RED));
}

TEST_F(Values, PressedShiftIsBit0x4000AndDrawFlag2)
{
    Open(Block("bg=\"0xff\" flag=\"0x4000\"", "0 0 10 10") + Block("bg=\"0xff\"", "20 0 30 10"));
    CTestBitmap drawn(50, 50);
    Draw(drawn, QEL_DRAW_FULL | QEL_DRAW_PRESSED);
    EXPECT_EQ(200, CountPixels(drawn, RED));
    EXPECT_EQ(WHITE, drawn.At(1, 1));
    EXPECT_EQ(RED, drawn.At(2, 2));
    EXPECT_EQ(RED, drawn.At(11, 11));
    EXPECT_EQ(RED, drawn.At(20, 0));
}
