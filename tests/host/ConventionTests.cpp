// Where a call differs from what holds for the others: failures that change something, results that
// tell little, and who of several takes what the host sets.
#include "tests/support/Host.h"

#include <cstdint>
#include <cstring>

namespace {

constexpr COLORREF RED = RGB(255, 0, 0);
constexpr COLORREF GREEN = RGB(0, 255, 0);
constexpr COLORREF BLUE = RGB(0, 0, 255);
constexpr COLORREF WHITE = RGB(255, 255, 255);

// A block in colour A.
std::string Block(const char* pszColor, const char* pszCrd, const char* pszMore = "")
{
    return std::string("<rect style='0x1' dr='1' lnwid='0' fg='") + pszColor + "' crd='" + pszCrd +
           "' " + pszMore + "/>";
}

std::string RectOf(HQELENGINE h, HQELELEM hElem)
{
    RECT rc{-1, -1, -1, -1};
    if (!QELGetElemRect(h, hElem, &rc)) return "none";
    return std::to_string(rc.left) + " " + std::to_string(rc.top) + " " + std::to_string(rc.right) +
           " " + std::to_string(rc.bottom);
}

int SetRect(HQELENGINE h, HQELELEM hElem, const RECT& rc)
{
    return QELSetElemRect(h, hElem, &rc);
}

DWORD Param(HQELENGINE h, int nIndex)
{
    DWORD nValue = 0xDEAD;
    EXPECT_EQ(1, QELGetParam(h, nIndex, &nValue));
    return nValue;
}

} // namespace

// ---- failures that change something

TEST(Conventions, ASetOfAParameterThatAnswersZeroChangesThePicture)
{
    const CTextHost host(Block("0xff", "0 0 20 20", "flag='0x81'"), 50);
    EXPECT_EQ(RED, host.Pixel(5, 5));
    EXPECT_EQ(0, QELSetParam(host, QEL_PARAM_COLOR, GREEN));
    EXPECT_EQ(GREEN, host.Pixel(5, 5));
    EXPECT_EQ(0, QELSetParam(host, QEL_PARAM_DRAFT_FORE, BLUE));
    EXPECT_EQ(BLUE, host.Pixel(5, 5));
    EXPECT_EQ(0, QELSetParam(host, QEL_PARAM_DRAFT_BACK, RED));
    EXPECT_EQ(0, QELSetParam(host, QEL_PARAM_DRAFT, 0)); // all in colour B
    EXPECT_EQ(RED, host.Pixel(5, 5));
}

TEST(Conventions, APathThatCannotBeConvertedLeavesTheDrawingAndOneThatCannotBeOpenedDoesNot)
{
    const CTextHost host(Block("0xff", "0 0 20 20"), 50);
    EXPECT_EQ(0, QELOpenFileU(host, nullptr));
    EXPECT_EQ(0, QELOpenFileU(host, std::vector<wchar_t>(301, L'n').data())); // too long
    EXPECT_EQ(RED, host.Pixel(5, 5));
    EXPECT_EQ(0, QELOpenFile(host, host.Folder().Path("missing.qel").c_str()));
    EXPECT_EQ(nullptr, QELGetRootElem(host));
    EXPECT_EQ(3, QELGetType(host));
}

TEST(Conventions, PlacingAGroupStopsAtAnEmptyGroupInsideOfIt)
{
    const CTextHost host("<g>" + Block("0xff", "0 0 10 10") + "<g/>" +
                             Block("0xff00", "10 10 20 20") + "</g><g>" +
                             Block("0xff0000", "0 20 10 30") + "<g/></g>",
                         50);
    const HQELELEM hGroup = host.Child(0);
    EXPECT_EQ("0 0 20 20", RectOf(host, hGroup));
    EXPECT_EQ(0, SetRect(host, hGroup, {20, 0, 40, 20}));
    EXPECT_EQ("20 0 30 10", RectOf(host, QELGetFirstChild(host, hGroup))); // moved
    EXPECT_EQ("10 10 20 20", RectOf(host, QELGetLastChild(host, hGroup))); // not any more
    EXPECT_EQ(RED, host.Pixel(25, 5));
    EXPECT_EQ(GREEN, host.Pixel(15, 15));
    EXPECT_EQ(0, SetRect(host, host.Child(1), {30, 20, 40, 30})); // the last one fails as well
    EXPECT_EQ(BLUE, host.Pixel(35, 25));
}

TEST(Conventions, PlacingAGroupStopsAtAPolygonWithoutPointsInsideOfIt)
{
    const CTextHost host("<g><rect crd='0 0 10 10'/><polygon crd='1 1 9 9'/><rect/></g>", 50);
    const HQELELEM hRect = QELGetFirstChild(host, host.Child(0));
    const HQELELEM hPolygon = QELGetNextElem(host, hRect);
    QELSHAPEATTR attr{};
    ASSERT_EQ(1, QELGetElemAttr(host, hPolygon, &attr, nullptr));
    attr.nGeometry[0] = 1;
    ASSERT_EQ(1, QELSetElemAttr(host, hPolygon, &attr, sizeof attr));
    EXPECT_EQ(0, SetRect(host, hPolygon, {5, 5, 20, 20}));
    EXPECT_EQ("none", RectOf(host, hPolygon));
    EXPECT_EQ(0, SetRect(host, host.Child(0), {20, 0, 30, 10}));
    EXPECT_EQ("20 0 30 10", RectOf(host, hRect));
    EXPECT_EQ("0 0 10 10", RectOf(host, QELGetLastChild(host, host.Child(0))));
}

TEST(Conventions, PlacingMovesByTheGrowthTooAndDoesNotPlaceIntoTheRectangle)
{
    const CTextHost host("<rect crd='0 0 10 10'/><line crd='0 0 10 10'/><rect crd='0 0 10 10'/>",
                         100);
    // The move of 5 and (20 - 10) * 20 / 10 more; the size stays.
    EXPECT_EQ(1, SetRect(host, host.Child(0), {5, 5, 25, 25}));
    EXPECT_EQ("25 25 35 35", RectOf(host, host.Child(0)));
    EXPECT_EQ(1, SetRect(host, host.Child(1), {5, 5, 25, 25}));
    EXPECT_EQ("25 25 35 35", RectOf(host, host.Child(1)));
    // Without a width in the new rectangle a rectangle loses its own.
    EXPECT_EQ(1, SetRect(host, host.Child(2), {5, 5, 5, 15}));
    EXPECT_EQ("5 5 5 15", RectOf(host, host.Child(2)));
}

TEST(Conventions, ARectangleOfAMeterIsThatOfItsScaleAndLeavesTheFaceAlone)
{
    const CTextHost host("<meter crd='5 10 15 40'>" + Block("0xff", "20 10 30 40") + "</meter>",
                         50);
    EXPECT_EQ(1, host.Set(QEL_SEL_FACE_COLOR, RED)); // the empty part of the bar too
    EXPECT_EQ(1, host.Set(QEL_SEL_SHOW_LABELS, 0));
    EXPECT_EQ("5 10 15 40", RectOf(host, host.Child(0)));
    EXPECT_EQ(RED, host.Pixel(25, 25)); // the bar stands where the face is
    EXPECT_EQ(1, SetRect(host, host.Child(0), {35, 10, 45, 40}));
    EXPECT_EQ("35 10 45 40", RectOf(host, host.Child(0)));
    EXPECT_EQ("20 10 30 40", RectOf(host, QELGetFirstChild(host, host.Child(0))));
    EXPECT_EQ(RED, host.Pixel(25, 25));
}

TEST(Conventions, WithoutADrawingTheReferenceSizeIsReadButOnlySetToWhatItIs)
{
    const HQELENGINE h = CreateQELEngine();
    const SIZE same{50, 50}, other{60, 60};
    SIZE size{};
    EXPECT_EQ(1, QELGetRefSize(h, &size));
    EXPECT_EQ(50, size.cx);
    EXPECT_EQ(50, size.cy);
    EXPECT_EQ(1, QELSetRefSize(h, &same));
    EXPECT_EQ(0, QELSetRefSize(h, &other));
    EXPECT_EQ(1, QELGetRefSize(h, &size));
    EXPECT_EQ(50, size.cx);
    EXPECT_EQ(1, DestroyQELEngine(h));
}

TEST(Conventions, ATurnToZeroPushesInsideWhatStandsOutside)
{
    const CTextHost host(Block("0xff", "40 -5 60 15"), 50);
    EXPECT_EQ(RED, host.Pixel(49, 0));
    EXPECT_EQ(WHITE, host.Pixel(35, 12));
    EXPECT_EQ(1, QELRotate(host, 0));
    EXPECT_EQ(RED, host.Pixel(30, 0)); // 20 by 20 units in the corner
    EXPECT_EQ(RED, host.Pixel(49, 19));
    EXPECT_EQ("40 -5 60 15", RectOf(host, host.Child(0))); // and is saved as it was
    EXPECT_EQ(1, QELRotate(host, 90));
    EXPECT_EQ(1, QELRotate(host, 0));
    EXPECT_EQ(RED, host.Pixel(30, 0)); // no turn pushes it back
}

TEST(Conventions, ATurnToZeroLeavesLinesArcsAndCirclesOutside)
{
    const CTextHost host("<line crd='-5 10 60 20'/><arc crd='-5 -5 5 5 5 0 0 5'/>"
                         "<circle crd='50 50 10'/>",
                         50);
    const std::vector<std::string> words = {"MoveTo", "LineTo", "Arc", "Ellipse"};
    const auto before = host.Calls(words);
    EXPECT_LE(4u, before.size());
    EXPECT_EQ(1, QELRotate(host, 0));
    EXPECT_EQ(before, host.Calls(words));
}

TEST(Conventions, ACurveAnswersZeroWhenItIsDrawn)
{
    const CTestBitmap drawn(20, 20);
    const POINT points[] = {{2, 10}, {18, 10}};
    EXPECT_EQ(0, QELDrawCurve(drawn.Dc(), points, 2));
    EXPECT_EQ(0, static_cast<int>(drawn.At(10, 10))); // the black pen of the context
    EXPECT_EQ(0, QELDrawCurve(drawn.Dc(), points, 1));
}

// ---- what is taken and cannot be saved

TEST(Conventions, RecordsThatNoFileCanHoldAreTakenAndSavedWithoutWhatCannotBeSpelled)
{
    const CTextHost host(
        "<polygon crd='1 1 20 5 9 30'/><meter mtype='round' crd='9 9 8 0 0 20 20'/>", 50);
    QELSHAPEATTR shape{};
    ASSERT_EQ(1, QELGetElemAttr(host, host.Child(0), &shape, nullptr));
    shape.nGeometry[0] = 17;
    EXPECT_EQ(1, QELSetElemAttr(host, host.Child(0), &shape, sizeof shape));
    QELMETERATTR meter{};
    ASSERT_EQ(1, QELGetElemAttr(host, host.Child(1), &meter, nullptr));
    meter.nType = 11;
    EXPECT_EQ(1, QELSetElemAttr(host, host.Child(1), &meter, sizeof meter));
    const std::string saved = host.Saved();
    EXPECT_NE(std::string::npos, saved.find("<polygon/>")) << saved;
    EXPECT_NE(std::string::npos, saved.find("<meter imin=\"1\" imax=\"100\" crd=")) << saved;
    // So they are others when they are opened again.
    ASSERT_EQ(1, QELOpenFile(host, host.Folder().Path("out.qel").c_str()));
    EXPECT_EQ("0 0 10 10", RectOf(host, host.Child(0)));
    ASSERT_EQ(1, QELGetElemAttr(host, host.Child(1), &meter, nullptr));
    EXPECT_EQ(0, meter.nType);
}

// ---- who takes the host's values

TEST(Conventions, TheLastPatternToBeRegisteredTakesTheHostsValues)
{
    const CTextHost host("<pattern>" + Block("0xff", "0 0 10 10") + "</pattern><pattern>" +
                             Block("0xff", "20 0 30 10") + "</pattern>",
                         50);
    EXPECT_EQ(1, QELSetParam(host, QEL_PARAM_DRAFT_FORE, GREEN));
    EXPECT_EQ(RED, host.Pixel(5, 5));
    EXPECT_EQ(GREEN, host.Pixel(25, 5)); // the later one of the file
    // A record that is set registers its element anew.
    QELWORDATTR attr{};
    EXPECT_EQ(1, QELSetElemAttr(host, host.Child(0), &attr, sizeof attr));
    EXPECT_EQ(1, QELSetParam(host, QEL_PARAM_DRAFT_FORE, BLUE));
    EXPECT_EQ(BLUE, host.Pixel(5, 5));
    EXPECT_EQ(GREEN, host.Pixel(25, 5));
    // A copy is the latest of all.
    EXPECT_NE(nullptr, QELCopyElem(host, host.Child(1)));
    EXPECT_EQ(1, QELSetParam(host, QEL_PARAM_DRAFT_FORE, RED));
    EXPECT_EQ(RED, host.Pixel(25, 5)); // the copy stands over its source
    EXPECT_EQ(BLUE, host.Pixel(5, 5));
    // One that comes back into the picture is later still; a move inside of it counts for nothing.
    const HQELELEM hFirst = host.Child(0);
    EXPECT_EQ(1, QELMoveElem(host, hFirst, nullptr, nullptr));
    EXPECT_EQ(1, QELMoveElem(host, hFirst, QELGetRootElem(host), nullptr));
    EXPECT_EQ(1, QELMoveElem(host, host.Child(1), QELGetRootElem(host), host.Child(2)));
    EXPECT_EQ(1, QELSetParam(host, QEL_PARAM_DRAFT_FORE, GREEN));
    EXPECT_EQ(GREEN, host.Pixel(5, 5));
}

TEST(Conventions, WithOneOfSeveralPatternsOrRegionsDeletedNoneTakesValues)
{
    for (const char* pszTag : {"pattern", "drawrgn"}) {
        SCOPED_TRACE(pszTag);
        const std::string tag = pszTag;
        const CTextHost host("<" + tag + "/><" + tag + "/>", 50);
        EXPECT_EQ(1, QELSetParam(host, QEL_PARAM_DRAFT_FORE, GREEN));
        ASSERT_EQ(1, QELDeleteElem(host, host.Child(0))); // not the one that took it
        EXPECT_EQ(0, QELSetParam(host, QEL_PARAM_DRAFT_FORE, BLUE));
        EXPECT_EQ(static_cast<DWORD>(BLUE), Param(host, QEL_PARAM_DRAFT_FORE)); // the engine's own
    }
}

TEST(Conventions, TheLastDrawRegionAnswersForItsPlace)
{
    const CTextHost host("<drawrgn crd='0 0 10 10'/><drawrgn crd='20 20 40 40'/>", 50);
    RECT rc{};
    ASSERT_EQ(1, QELGetDrawGraphRect(host, &rc));
    EXPECT_EQ(20, rc.left);
    EXPECT_EQ(1, SetRect(host, host.Child(0), {1, 1, 11, 11})); // which registers it anew
    ASSERT_EQ(1, QELGetDrawGraphRect(host, &rc));
    EXPECT_EQ(1, rc.left);
}

// ---- which spellings of a path share

class SharedPath : public ::testing::Test {
protected:
    SharedPath()
    {
        EXPECT_EQ(1, QELShowOnly(1));
        m_h1 = CreateQELEngine();
        m_h2 = CreateQELEngine();
        EXPECT_EQ(1, QELShowOnly(0));
    }
    ~SharedPath() override
    {
        EXPECT_EQ(1, DestroyQELEngine(m_h1));
        EXPECT_EQ(1, DestroyQELEngine(m_h2));
    }
    bool IsShared(const std::string& path, const std::string& other) const
    {
        EXPECT_EQ(1, QELOpenFile(m_h1, path.c_str())) << path;
        EXPECT_EQ(1, QELOpenFile(m_h2, other.c_str())) << other;
        const bool bShared = QELGetName(m_h1) == QELGetName(m_h2); // the very same text
        QELCloseFile(m_h1);
        QELCloseFile(m_h2);
        return bShared;
    }

    CTestFolder m_folder;
    HQELENGINE m_h1 = nullptr;
    HQELENGINE m_h2 = nullptr;
};

TEST_F(SharedPath, IsTheSameTextLetterCaseAside)
{
    const std::string path = m_folder.Path("pump.qel");
    ASSERT_TRUE(WriteBytes(path, "<qel id='pump'/>"));
    EXPECT_TRUE(IsShared(path, path));
    EXPECT_TRUE(IsShared(path, m_folder.Path("PUMP.QEL")));
    // The same file, but spelled in another way.
    EXPECT_FALSE(IsShared(path, m_folder.Path(".\\pump.qel")));
    EXPECT_FALSE(IsShared(path, m_folder.Path("\\pump.qel")));
    std::string slashes = path;
    for (char& c : slashes)
        if (c == '\\') c = '/';
    EXPECT_FALSE(IsShared(path, slashes));
    char szBefore[MAX_PATH];
    ::GetCurrentDirectoryA(sizeof szBefore, szBefore);
    ASSERT_TRUE(::SetCurrentDirectoryA(m_folder.Path(".").c_str()));
    EXPECT_FALSE(IsShared(path, "pump.qel"));
    ::SetCurrentDirectoryA(szBefore);
}

TEST_F(SharedPath, IsNotThatOfTheCurrentFolder)
{
    // A relative path is shared as it is spelled, wherever it leads by now.
    const CTestFolder second;
    ASSERT_TRUE(WriteBytes(m_folder.Path("a.qel"), "<qel id='first'/>"));
    ASSERT_TRUE(WriteBytes(second.Path("a.qel"), "<qel id='second'/>"));
    char szBefore[MAX_PATH];
    ::GetCurrentDirectoryA(sizeof szBefore, szBefore);
    ASSERT_TRUE(::SetCurrentDirectoryA(m_folder.Path(".").c_str()));
    EXPECT_EQ(1, QELOpenFile(m_h1, "a.qel"));
    ASSERT_TRUE(::SetCurrentDirectoryA(second.Path(".").c_str()));
    EXPECT_EQ(1, QELOpenFile(m_h2, "a.qel"));
    EXPECT_STREQ("first", QELGetName(m_h2));
    ::SetCurrentDirectoryA(szBefore);
}

TEST_F(SharedPath, GivesUpItsShareForANullPathButNotForANullWidePath)
{
    const std::string path = m_folder.Path("a.qel");
    ASSERT_TRUE(WriteBytes(path, "<qel id='a'/>"));
    EXPECT_EQ(1, QELOpenFile(m_h1, path.c_str()));
    EXPECT_EQ(0, QELOpenFileU(m_h1, nullptr));
    EXPECT_STREQ("a", QELGetName(m_h1));
    EXPECT_EQ(0, QELOpenFile(m_h1, nullptr));
    EXPECT_EQ(nullptr, QELGetName(m_h1));
}

// ---- drawing

TEST(Conventions, EveryDrawMakesTheSameCalls)
{
    const std::string body = "<ellipse crd='3 2 8 47'/><text crd='0 0 40 12'>12.5</text>"
                             "<polygon style='0x1' dr='12' crd='5 5 40 9 20 45'/>"
                             "<meter mtype='round' upin='1' crd='25 25 20 0 0 50 50'/>";
    const CTextHost first(body, 50), second(body, 50);
    const auto calls = first.Calls();
    EXPECT_LT(10u, calls.size());
    EXPECT_EQ(calls, first.Calls());
    EXPECT_EQ(calls, second.Calls());
}

TEST(Conventions, AFaceThatIsNotInstalledIsReplacedByAnother)
{
    const CTextHost host("<text fg='0x0' crd='0 0 48 24'>WHAT</text>", 50);
    const HFONT hFont =
        ::CreateFontA(12, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "No such face anywhere");
    const CTestBitmap drawn(50, 50);
    {
        const CTestSelect select(drawn.Dc(), hFont, true);
        host.Draw(drawn.Dc());
    }
    EXPECT_FALSE(IsBlank(drawn));
}

TEST(Conventions, DrawingClearsTheAlphaOfABitmap)
{
    const CTextHost host(Block("0xff", "0 0 25 50"), 50);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), 50, -50, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* pBits = nullptr;
    const HDC hdc = ::CreateCompatibleDC(nullptr);
    const HBITMAP hBitmap = ::CreateDIBSection(hdc, &info, DIB_RGB_COLORS, &pBits, nullptr, 0);
    ASSERT_NE(nullptr, hBitmap);
    std::memset(pBits, 0xFF, 50 * 50 * 4);
    {
        const CTestSelect select(hdc, hBitmap, false);
        host.Draw(hdc);
        ::GdiFlush();
    }
    const auto* pPixels = static_cast<const uint32_t*>(pBits);
    EXPECT_EQ(0x00FF0000u, pPixels[25 * 50 + 10]); // red, and transparent now
    EXPECT_EQ(0xFFFFFFFFu, pPixels[25 * 50 + 40]); // not painted
    ::DeleteObject(hBitmap);
    ::DeleteDC(hdc);
}

TEST(Conventions, OutlinesAreAtMostTenThousandPixelsWideAndLargerCurvesAreLeftOut)
{
    CTextHost host("<rect lnwid='10001' crd='1 1 9 9'/><ellipse crd='0 0 50 50'/>", 50);
    EXPECT_EQ(1u, host.Calls({"CreatePen style 0 width 10000 "}).size());
    host.Place({0, 0, 131072, 20});
    EXPECT_EQ(1u, host.Calls({"Ellipse"}).size());
    host.Place({0, 0, 131073, 20});
    EXPECT_EQ(0u, host.Calls({"Ellipse"}).size());
    EXPECT_EQ(1u, host.Calls({"Rectangle"}).size());
}
