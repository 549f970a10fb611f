// What a partial redraw does not show: the changes for which docs/live-values.md asks for a full
// draw.
#include "tests/support/Host.h"

namespace {

constexpr COLORREF RED = RGB(255, 0, 0);
constexpr COLORREF BLUE = RGB(0, 0, 255);
constexpr COLORREF WHITE = RGB(255, 255, 255);
constexpr int SIDE = 140;

std::string Block(const char* pszColor, const char* pszCrd)
{
    return std::string("<rect style='0x1' dr='1' lnwid='0' fg='") + pszColor + "' crd='" + pszCrd +
           "'/>";
}

// A dial on a blue face; the face is meant to stay.
std::string Dial(const char* pszType = "round")
{
    return std::string("<meter upin='1' mtype='") + pszType +
           "' crd='70 70 60 0 0 140 140 30 330'><rect style='0x1' lnwid='0' crd='0 0 140 140'/>"
           "</meter>";
}

// A red needle and nothing else on the face.
void ShowNeedleAlone(const CTextHost& host)
{
    EXPECT_EQ(1, host.Set(QEL_SEL_FACE_COLOR, BLUE));
    EXPECT_EQ(1, host.Set(QEL_SEL_PIN_COLOR, RED));
    EXPECT_EQ(1, host.Set(QEL_SEL_SHOW_SCALE, 0));
    EXPECT_EQ(1, host.Set(QEL_SEL_SHOW_LABELS, 0));
}

bool IsAsDrawnFully(const CTextHost& host, const CTestBitmap& drawn)
{
    CTestBitmap full(drawn.Width(), drawn.Height());
    host.Draw(full.Dc());
    return FirstDifference(full, drawn).empty();
}

} // namespace

TEST(Redraw, AStatusThatHidesIsSeenUntilAFullDraw)
{
    const CTextHost host("<status stx='1'>" + Block("0xff", "0 0 40 40") + "</status>", SIDE);
    CTestBitmap drawn(SIDE, SIDE);
    EXPECT_EQ(1, QELSetStatus(host, 1));
    host.Draw(drawn.Dc(), 0);
    EXPECT_EQ(1600, CountPixels(drawn, RED)); // one that is shown is painted at once
    EXPECT_EQ(1, QELSetStatus(host, 2));
    host.Draw(drawn.Dc(), 0);
    EXPECT_EQ(1600, CountPixels(drawn, RED));
    drawn.Fill(WHITE); // the background is the host's
    host.Draw(drawn.Dc());
    EXPECT_TRUE(IsBlank(drawn));
}

TEST(Redraw, AMeterInAHiddenStatusIsPaintedByAPartialRedraw)
{
    const CTextHost host("<status stx='1'>" + Dial() + "</status>", SIDE);
    ShowNeedleAlone(host);
    CTestBitmap drawn(SIDE, SIDE);
    host.Draw(drawn.Dc());
    EXPECT_TRUE(IsBlank(drawn));
    host.Draw(drawn.Dc(), 0);
    EXPECT_LT(20, CountPixels(drawn, RED)); // the needle without its face
    EXPECT_EQ(0, CountPixels(drawn, BLUE));
}

TEST(Redraw, ABlinkPhaseShowsInStaticShapesAtTheNextFullDraw)
{
    const CTextHost host("<rect style='0x1' dr='1' lnwid='0' fg='0xff glt' crd='0 0 40 40'/>",
                         SIDE);
    CTestBitmap drawn(SIDE, SIDE);
    host.Draw(drawn.Dc());
    EXPECT_EQ(1, QELSetBlinkState(host, 1));
    host.Draw(drawn.Dc(), 0);
    EXPECT_EQ(1600, CountPixels(drawn, RED));
    host.Draw(drawn.Dc());
    EXPECT_EQ(0, CountPixels(drawn, RED));
}

TEST(Redraw, AChangedColorOfADialsFaceShowsAtTheNextFullDraw)
{
    const CTextHost host(Dial(), SIDE);
    ShowNeedleAlone(host);
    CTestBitmap drawn(SIDE, SIDE);
    host.Draw(drawn.Dc());
    EXPECT_EQ(1, host.Set(QEL_SEL_FACE_COLOR, 0x00FF00));
    host.Draw(drawn.Dc(), 0);
    EXPECT_LT(10000, CountPixels(drawn, BLUE));
    EXPECT_FALSE(IsAsDrawnFully(host, drawn));
}

TEST(Redraw, ADialThatFillsOnlyLeavesANeedleInTheColorOfItsFace)
{
    const CTextHost host(Dial("Arc"), SIDE);
    ShowNeedleAlone(host);
    EXPECT_EQ(1, host.Set(QEL_SEL_FILL_ONLY, 1));
    CTestBitmap drawn(SIDE, SIDE);
    host.Draw(drawn.Dc());
    EXPECT_GT(300, CountPixels(drawn, BLUE)); // no face, but inside of the centre disc
    const int nBefore = CountPixels(drawn, BLUE);
    EXPECT_EQ(1, host.Set(QEL_SEL_VALUE, 7));
    host.Draw(drawn.Dc(), 0);
    EXPECT_LT(nBefore + 40, CountPixels(drawn, BLUE)); // where the needle stood
    EXPECT_FALSE(IsAsDrawnFully(host, drawn));
}

TEST(Redraw, ADrawOntoAnotherDeviceContextSpoilsTheNextPartialRedrawOfTheFirst)
{
    const CTextHost host(Dial(), SIDE);
    ShowNeedleAlone(host);
    CTestBitmap window(SIDE, SIDE), print(SIDE, SIDE);
    EXPECT_EQ(1, host.Set(QEL_SEL_VALUE, 2));
    host.Draw(window.Dc());
    EXPECT_EQ(1, host.Set(QEL_SEL_VALUE, 5));
    host.Draw(window.Dc(), 0);
    EXPECT_TRUE(IsAsDrawnFully(host, window)); // which is the draw onto another one, at 5
    EXPECT_EQ(1, host.Set(QEL_SEL_VALUE, 8));
    host.Draw(print.Dc()); // at 8, before the window is
    host.Draw(window.Dc(), 0);
    EXPECT_FALSE(IsAsDrawnFully(host, window)); // the needle of 5 is still there
    EXPECT_LT(CountPixels(print, RED) + 20, CountPixels(window, RED));
    host.Draw(window.Dc());
    EXPECT_TRUE(IsAsDrawnFully(host, window));
}

TEST(Redraw, ADrawOfTheSameValueOntoAnotherDeviceContextDoesNot)
{
    const CTextHost host(Dial(), SIDE);
    ShowNeedleAlone(host);
    CTestBitmap window(SIDE, SIDE), print(SIDE, SIDE);
    EXPECT_EQ(1, host.Set(QEL_SEL_VALUE, 2));
    host.Draw(window.Dc());
    host.Draw(print.Dc());
    EXPECT_EQ(1, host.Set(QEL_SEL_VALUE, 8));
    host.Draw(window.Dc(), 0);
    EXPECT_TRUE(IsAsDrawnFully(host, window));
}

TEST(Redraw, TheDigitsOfAReadOutLieOverThoseOfBefore)
{
    const CTextHost host(Dial("roundUpgrade"), SIDE);
    ShowNeedleAlone(host);
    EXPECT_EQ(1, host.Set(QEL_SEL_SHOW_VALUE, 1));
    EXPECT_EQ(1, host.Set(QEL_SEL_SHOW_PIN, 0));
    CTestBitmap drawn(SIDE, SIDE);
    EXPECT_EQ(1, host.Set(QEL_SEL_VALUE, 1));
    host.Draw(drawn.Dc());
    CTestBitmap before(SIDE, SIDE);
    host.Draw(before.Dc());
    EXPECT_EQ(1, host.Set(QEL_SEL_VALUE, 8));
    host.Draw(drawn.Dc(), 0);
    EXPECT_FALSE(IsAsDrawnFully(host, drawn));
    int nGone = 0; // of what stood there, nothing goes
    for (int y = 0; y < SIDE; ++y)
        for (int x = 0; x < SIDE; ++x) nGone += before.At(x, y) != BLUE && drawn.At(x, y) == BLUE;
    EXPECT_EQ(0, nGone);
}
