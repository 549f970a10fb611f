// Status, frame, pattern and draw-region elements as a host drives them.
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"
#include "tests/support/Recording.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr RECT QEL{0, 0, 100, 100}; // two pixels a unit of the default drawing

class CHost { // an engine with a drawing opened from a text
public:
    explicit CHost(const std::string& body) : m_hEngine(CreateQELEngine())
    {
        const std::string path = m_folder.Path("in.qel");
        WriteBytes(path, "<qel>" + body + "</qel>");
        EXPECT_EQ(1, QELOpenFile(m_hEngine, path.c_str()));
        EXPECT_EQ(1, QELSetQELRect(m_hEngine, &QEL));
    }
    ~CHost() { DestroyQELEngine(m_hEngine); }
    CHost(const CHost&) = delete;
    CHost& operator=(const CHost&) = delete;
    operator HQELENGINE() const { return m_hEngine; }

    HQELELEM Child(int nIndex) const // of the root
    {
        HQELELEM h = QELGetFirstChild(m_hEngine, QELGetRootElem(m_hEngine));
        while (nIndex-- > 0) h = QELGetNextElem(m_hEngine, h);
        return h;
    }
    COLORREF Pixel(int nX, int nY, DWORD nFlags = QEL_DRAW_FULL) const
    {
        CTestBitmap bitmap(100, 100);
        QELDraw(m_hEngine, bitmap.Dc(), &QEL, nFlags);
        return bitmap.At(nX, nY);
    }
    std::string Saved()
    {
        const std::string path = m_folder.Path("out.qel");
        EXPECT_EQ(1, QELSaveFile(m_hEngine, path.c_str()));
        return ReadBytes(path);
    }

private:
    CTestFolder m_folder;
    HQELENGINE m_hEngine;
};

std::string Fill(const char* pszColor, const char* pszCrd, const char* pszMore = "")
{
    return std::string("<rect style='0x1' dr='1' lnwid='0' fg='") + pszColor + "' crd='" + pszCrd +
           "' " + pszMore + "/>";
}

bool Contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

constexpr COLORREF WHITE = RGB(255, 255, 255);
constexpr COLORREF RED = RGB(255, 0, 0);
constexpr COLORREF GREEN = RGB(0, 255, 0);

// ---- status

std::string TwoStates()
{
    return "<status>" + Fill("0xff", "0 0 50 25") + "</status><status stx='2'>" +
           Fill("0xff00", "0 25 50 50") + "</status>";
}

TEST(Status, ShowsTheElementsOfItsNumberAndAllAtMinusOne)
{
    const CHost host(TwoStates());
    EXPECT_EQ(RED, host.Pixel(10, 10)); // 0 at first
    EXPECT_EQ(WHITE, host.Pixel(10, 60));
    ASSERT_EQ(1, QELSetStatus(host, 2));
    EXPECT_EQ(WHITE, host.Pixel(10, 10));
    EXPECT_EQ(GREEN, host.Pixel(10, 60));
    ASSERT_EQ(1, QELSetStatus(host, 0xFFFFFFFF));
    EXPECT_EQ(RED, host.Pixel(10, 10));
    EXPECT_EQ(GREEN, host.Pixel(10, 60));
    ASSERT_EQ(1, QELSetStatus(host, 7));
    EXPECT_EQ(WHITE, host.Pixel(10, 10));
    DWORD nStatus = 0;
    ASSERT_EQ(1, QELGetStatus(host, &nStatus));
    EXPECT_EQ(7U, nStatus);
}

TEST(Status, WithoutAnElementThereIsNoStatus)
{
    const CHost host(Fill("0xff", "0 0 50 50"));
    DWORD nStatus = 99;
    EXPECT_EQ(0, QELSetStatus(host, 2));
    EXPECT_EQ(0, QELGetStatus(host, &nStatus));
    EXPECT_EQ(99U, nStatus);
}

TEST(Status, IsRepaintedInAPartialRedrawWithoutTheStaticShapes)
{
    const CHost host(Fill("0xff0000", "0 0 50 50") + TwoStates());
    EXPECT_EQ(RED, host.Pixel(10, 10, 0));
    EXPECT_EQ(WHITE, host.Pixel(10, 60, 0)); // neither the hidden element nor the blue ground
}

TEST(Status, ANegativeNumberReadsAsZeroAndIsNotWritten)
{
    CHost host("<status stx='-5'/><status stx='12x'/><status stx='x'/>");
    const std::string saved = host.Saved();
    EXPECT_TRUE(Contains(saved, "<status/>\r\n<status stx=\"12\"/>\r\n<status/>\r\n"));
    LONG nOwn = 99;
    int nSize = 0;
    ASSERT_EQ(1, QELGetElemAttr(host, host.Child(0), &nOwn, &nSize));
    EXPECT_EQ(4, nSize);
    EXPECT_EQ(0, nOwn);
    nOwn = -3;
    ASSERT_EQ(1, QELSetElemAttr(host, host.Child(1), &nOwn, 4));
    ASSERT_EQ(1, QELGetElemAttr(host, host.Child(1), &nOwn, nullptr));
    EXPECT_EQ(0, nOwn);
}

TEST(Status, AHiddenElementStillPassesTheFrameColorDown)
{
    const CHost host("<status stx='3'>" + Fill("0xff", "0 0 50 50", "flag='0x1'") + "</status>");
    QELSetParam(host, QEL_PARAM_COLOR, 0x00FF00);
    QELSetStatus(host, 3);
    EXPECT_EQ(GREEN, host.Pixel(10, 10));
}

TEST(Status, ACreatedElementHasNumber0AndFollowsTheStatusFromThenOn)
{
    const CHost host("");
    HQELELEM hStatus = QELCreateElem(host, QEL_TYPE_STATUS, nullptr, nullptr);
    HQELELEM hRect = QELCreateElem(host, QEL_TYPE_RECT, hStatus, nullptr);
    QELSHAPEATTR attr{};
    ASSERT_EQ(1, QELGetElemAttr(host, hRect, &attr, nullptr));
    attr.nStyle = QEL_STYLE_FILL;
    attr.clrB = 0x0000FF;
    ASSERT_EQ(1, QELSetElemAttr(host, hRect, &attr, sizeof attr));
    EXPECT_EQ(RED, host.Pixel(10, 10));
    EXPECT_EQ(1, QELSetStatus(host, 1));
    EXPECT_EQ(WHITE, host.Pixel(10, 10));
    EXPECT_EQ(1, QELDeleteElem(host, hStatus));
    EXPECT_EQ(0, QELSetStatus(host, 1)); // nobody is left
}

TEST(Status, AnElementOutOfThePictureIsNotInTheListUntilItIsBack)
{
    const CHost host(TwoStates());
    HQELELEM hFirst = host.Child(0);
    HQELELEM hSecond = host.Child(1);
    ASSERT_EQ(1, QELMoveElem(host, hFirst, nullptr, nullptr));
    ASSERT_EQ(1, QELMoveElem(host, hSecond, nullptr, nullptr));
    EXPECT_EQ(0, QELSetStatus(host, 2));
    ASSERT_EQ(1, QELMoveElem(host, hSecond, QELGetRootElem(host), nullptr));
    EXPECT_EQ(1, QELSetStatus(host, 2));
    EXPECT_EQ(GREEN, host.Pixel(10, 60));
}

TEST(Status, AMoveInsideThePictureLeavesTheOrderOfTheList)
{
    const CHost host(TwoStates());
    HQELELEM hFirst = host.Child(0);
    HQELELEM hSecond = host.Child(1);
    ASSERT_EQ(1, QELSetStatus(host, 5));
    ASSERT_EQ(1, QELMoveElem(host, hFirst, QELGetRootElem(host), hSecond));
    ASSERT_EQ(1, QELSetStatus(host, 0xFFFFFFFF));
    CTestBitmap drawn(100, 100);
    ASSERT_EQ(1, QELDraw(host, drawn.Dc(), &QEL, 0)); // both are still in the list
    EXPECT_EQ(RED, drawn.At(10, 10));
    EXPECT_EQ(GREEN, drawn.At(10, 60));
}

// ---- frame

TEST(Frame, DeletingOneThatIsOutOfThePictureLeavesTheOtherItsColor)
{
    const CHost host("<frame>" + Fill("0xff", "0 0 50 25") + "</frame><frame>" +
                     Fill("0xff", "0 25 50 50") + "</frame>");
    HQELELEM hFirst = host.Child(0);
    HQELELEM hSecond = host.Child(1);
    ASSERT_EQ(1, QELMoveElem(host, hFirst, nullptr, nullptr));
    ASSERT_EQ(1, QELMoveElem(host, hSecond, nullptr, nullptr));
    ASSERT_EQ(1, QELMoveElem(host, hSecond, QELGetRootElem(host), nullptr));
    ASSERT_EQ(1, QELDeleteElem(host, hFirst));
    EXPECT_EQ(1, QELSetParam(host, QEL_PARAM_COLOR, 0x00FF00)); // 0 if nothing took it
    EXPECT_EQ(GREEN, host.Pixel(10, 60));
}

TEST(Frame, EveryShapeInsideTakesTheColorWhateverItsFlags)
{
    const CHost host("<frame><g>" + Fill("0xff", "0 0 50 25") + "</g></frame>" +
                     Fill("0xff", "0 25 50 50"));
    EXPECT_EQ(1, QELSetParam(host, QEL_PARAM_COLOR, 0x00FF00));
    EXPECT_EQ(GREEN, host.Pixel(10, 10));
    EXPECT_EQ(RED, host.Pixel(10, 60)); // outside, without the flag
    DWORD nColor = 0;
    ASSERT_EQ(1, QELGetParam(host, QEL_PARAM_COLOR, &nColor));
    EXPECT_EQ(0x00FF00U, nColor);
}

TEST(Frame, AnUnfilledShapeTakesItAsOutlineAndColorA)
{
    const CHost host("<frame><rect crd='0 0 50 50'/></frame>");
    QELSetParam(host, QEL_PARAM_COLOR, 0x00FF00);
    EXPECT_EQ(GREEN, host.Pixel(0, 50));
}

TEST(Frame, ItsOwnColorAnswersNotTheStoredOne)
{
    const CHost host("<frame/>");
    DWORD nColor = 99;
    ASSERT_EQ(1, QELGetParam(host, QEL_PARAM_COLOR, &nColor));
    EXPECT_EQ(0U, nColor); // the stored parameter is 0xFFFFFF
}

TEST(Frame, MaskIsItsOwnAloneAndItSavesAsItWas)
{
    CHost host("<frame id='f'>" + Fill("0xff", "0 0 50 50", "flag='0x4081'") + "</frame>");
    EXPECT_EQ(0x1U, QELParamsSupported(host));
    EXPECT_TRUE(Contains(host.Saved(), "<frame id=\"f\">\r\n<rect "));
}

TEST(Frame, TheLastOneReceivesTheColor)
{
    const CHost host("<frame>" + Fill("0xff", "0 0 50 25") + "</frame><frame>" +
                     Fill("0xff", "0 25 50 50") + "</frame>");
    QELSetParam(host, QEL_PARAM_COLOR, 0x00FF00);
    EXPECT_EQ(GREEN, host.Pixel(10, 60));
    // The broadcast through the tree reaches the first frame too, since it is the frame's own
    // operation.
    EXPECT_EQ(GREEN, host.Pixel(10, 10));
}

// ---- pattern

TEST(Pattern, GivesHatchAndColorsToEveryShapeInside)
{
    const CHost host("<pattern>" + Fill("0xff", "0 0 50 50") + "</pattern>");
    EXPECT_EQ(1, QELSetParam(host, QEL_PARAM_DRAFT_FORE, 0x00FF00));
    EXPECT_EQ(GREEN, host.Pixel(10, 10));
    EXPECT_EQ(1, QELSetParam(host, QEL_PARAM_DRAFT_BACK, 0xFF0000));
    EXPECT_EQ(1, QELSetParam(host, QEL_PARAM_DRAFT, 0)); // all in colour B
    EXPECT_EQ(RGB(0, 0, 255), host.Pixel(10, 10));
    DWORD nValue = 99;
    ASSERT_EQ(1, QELGetParam(host, QEL_PARAM_DRAFT_BACK, &nValue));
    EXPECT_EQ(0xFF0000U, nValue);
}

TEST(Pattern, AHatchThatThereIsNotAppliesTheStoredOneAgain)
{
    const CHost host("<pattern>" + Fill("0xff", "0 0 50 50") + "</pattern>");
    ASSERT_EQ(1, QELSetParam(host, QEL_PARAM_DRAFT, 7));
    QELSHAPEATTR attr{};
    HQELELEM hRect = QELGetFirstChild(host, host.Child(0));
    ASSERT_EQ(1, QELGetElemAttr(host, hRect, &attr, nullptr));
    ASSERT_EQ(1, QELSetElemAttr(host, hRect, &attr,
                                sizeof attr)); // the view has hatch 1 of the file again
    EXPECT_EQ(RED, host.Pixel(11, 10));
    EXPECT_EQ(1, QELSetParam(host, QEL_PARAM_DRAFT, 40));
    DWORD nValue = 99;
    ASSERT_EQ(1, QELGetParam(host, QEL_PARAM_DRAFT, &nValue));
    EXPECT_EQ(7U, nValue);
    CTestBitmap drawn(100, 100);
    QELDraw(host, drawn.Dc(), &QEL, QEL_DRAW_FULL);
    EXPECT_EQ(100 * 100 / 4, CountPixels(drawn, RED)); // hatch 7 sets one pixel of four
}

TEST(Pattern, MaskIsItsOwnAlone)
{
    const CHost host("<pattern>" + Fill("0xff", "0 0 50 50", "flag='0x4001'") + "</pattern>");
    EXPECT_EQ(0x80U, QELParamsSupported(host));
}

// ---- draw region

TEST(DrawRegion, FillsWithTheHatchInSwappedColors)
{
    const CHost host("<drawrgn style='0x1' crd='10 10 40 40'/>");
    EXPECT_EQ(RGB(0, 0, 0), host.Pixel(50, 50)); // hatch 0 is all colour B
    EXPECT_EQ(WHITE, host.Pixel(19, 50));
    EXPECT_EQ(1, QELSetParam(host, QEL_PARAM_DRAFT_BACK, 0x0000FF));
    EXPECT_EQ(RED, host.Pixel(50, 50));
    EXPECT_EQ(1, QELSetParam(host, QEL_PARAM_DRAFT, 1));
    EXPECT_EQ(1, QELSetParam(host, QEL_PARAM_DRAFT_FORE, 0x00FF00));
    EXPECT_EQ(GREEN, host.Pixel(50, 50));
    EXPECT_EQ(0, QELSetParam(host, QEL_PARAM_DRAFT, 38));
    EXPECT_EQ(GREEN, host.Pixel(50, 50));
}

TEST(DrawRegion, TellsWhatIsLeftInsideOfItsBorder)
{
    struct {
        const char* pszStyle;
        LONG nInset;
    } const cases[] = {{"0x30002", 3}, {"0x4", 2}, {"0x0", 0}, {"0x50001", 0}, {"0x10006", 1}};
    for (const auto& c : cases) {
        const CHost host(std::string("<drawrgn style='") + c.pszStyle + "' crd='10 10 40 40'/>");
        RECT rc{};
        ASSERT_EQ(1, QELGetDrawGraphRect(host, &rc));
        EXPECT_EQ(20 + c.nInset, rc.left) << c.pszStyle;
        EXPECT_EQ(20 + c.nInset, rc.top) << c.pszStyle;
        EXPECT_EQ(80 - c.nInset, rc.right) << c.pszStyle;
        EXPECT_EQ(80 - c.nInset, rc.bottom) << c.pszStyle;
    }
    const CHost none("");
    RECT rc{1, 2, 3, 4};
    EXPECT_EQ(0, QELGetDrawGraphRect(none, &rc));
    EXPECT_EQ(1, rc.left);
}

TEST(DrawRegion, BordersAreRaisedOrSunken)
{
    const CHost up("<drawrgn style='0x30007' crd='10 10 40 40'/>"); // the raised one wins
    EXPECT_EQ(WHITE, up.Pixel(22, 50));
    EXPECT_EQ(RGB(0, 0, 0), up.Pixel(77, 50));
    const CHost down("<drawrgn style='0x30005' crd='10 10 40 40'/>");
    EXPECT_EQ(RGB(0, 0, 0), down.Pixel(22, 50));
    EXPECT_EQ(WHITE, down.Pixel(77, 50));
}

TEST(DrawRegion, RecordAndFileKeepItsRules)
{
    CHost host("<drawrgn style='0x30002' crd='1 2 3 4' flag='0x8000'/><drawrgn style='0xffffffff' "
               "crd='1 2 3'/>");
    EXPECT_TRUE(Contains(host.Saved(),
                         "<drawrgn style=\"0x30002\" crd=\"1 2 3 4\" flag=\"0x8000\"/>\r\n"
                         "<drawrgn crd=\"0 0 10 10\"/>\r\n"));
    QELDRAWRGNATTR attr{};
    int nSize = 0;
    ASSERT_EQ(1, QELGetElemAttr(host, host.Child(0), &attr, &nSize));
    EXPECT_EQ(28, nSize);
    EXPECT_EQ(28U, attr.nSize);
    EXPECT_EQ(0x30002, attr.nStyle);
    EXPECT_EQ(3, attr.rc.right);
    EXPECT_EQ(0x8000U, attr.nFlags);
    attr.nStyle = -1;
    EXPECT_EQ(0, QELSetElemAttr(host, host.Child(0), &attr, sizeof attr));
    attr.nStyle = 1;
    attr.nSize = 32;
    EXPECT_EQ(0, QELSetElemAttr(host, host.Child(0), &attr, 32));
    attr.nSize = 28;
    EXPECT_EQ(1, QELSetElemAttr(host, host.Child(0), &attr, sizeof attr));
    RECT rc{};
    ASSERT_EQ(1, QELGetElemRect(host, host.Child(0), &rc));
    EXPECT_EQ(1, rc.left);
    EXPECT_EQ(4, rc.bottom);
}

TEST(DrawRegion, MaskTellsFillAndKeepModes)
{
    EXPECT_EQ(0x100U, QELParamsSupported(CHost("<drawrgn crd='1 2 3 4'/>")));
    EXPECT_EQ(0x1180U,
              QELParamsSupported(CHost("<drawrgn style='0x2' crd='1 2 3 4' flag='0x40000'/>")));
}

TEST(DrawRegion, LeavesTheDeviceContextAsItWas)
{
    const CHost host("<drawrgn style='0x30003' crd='10 10 40 40'/>");
    CTestBitmap drawn(100, 100);
    ::MoveToEx(drawn.Dc(), 3, 4, nullptr);
    const std::string before = DcState(drawn.Dc());
    QELDraw(host, drawn.Dc(), &QEL, QEL_DRAW_FULL);
    EXPECT_EQ(before, DcState(drawn.Dc()));
}

} // namespace
