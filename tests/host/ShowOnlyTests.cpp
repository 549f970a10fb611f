// Show-only mode: handles that open the same path share one drawing, and nothing can be edited.
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"
#include "tests/support/Wide.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// A red block of 10 by 10 units in a drawing of 50 by 50, of kind 1.
const std::string DRAWING = "<qel id=\"shared\" type=\"1\"><rect style=\"0x1\" bg=\"0xff\" "
                            "lnwid=\"0\" crd=\"10 10 20 20\"/></qel>";
const std::string LARGER = "<qel id=\"larger\" type=\"2\" width=\"80\" height=\"70\"/>";

class ShowOnly : public ::testing::Test {
protected:
    ShowOnly() { EXPECT_EQ(1, QELShowOnly(1)); }
    ~ShowOnly() override
    {
        for (const HQELENGINE h : m_handles) DestroyQELEngine(h); // some are gone already
        EXPECT_EQ(1, QELShowOnly(0));
    }

    HQELENGINE Handle()
    {
        m_handles.push_back(CreateQELEngine());
        EXPECT_NE(nullptr, m_handles.back());
        return m_handles.back();
    }
    std::string Write(const std::string& name, const std::string& bytes = DRAWING)
    {
        const std::string path = m_folder.Path(name);
        EXPECT_TRUE(WriteBytes(path, bytes)) << path;
        return path;
    }
    static int RedPixels(HQELENGINE h)
    {
        CTestBitmap drawn(50, 50);
        const RECT rc = drawn.Box();
        if (!QELDraw(h, drawn.Dc(), &rc, QEL_DRAW_FULL)) return -1;
        return CountPixels(drawn, RGB(255, 0, 0));
    }

    CTestFolder m_folder;
    std::vector<HQELENGINE> m_handles;
};

} // namespace

TEST_F(ShowOnly, HandleWithoutADrawingAnswersNothing)
{
    const HQELENGINE h = Handle();
    EXPECT_EQ(-1, QELGetType(h));
    EXPECT_EQ(nullptr, QELGetName(h));
    EXPECT_EQ(nullptr, QELGetRootElem(h));
    SIZE size{};
    RECT rc{0, 0, 9, 9};
    DWORD nValue = 0;
    EXPECT_EQ(0, QELGetRefSize(h, &size));
    EXPECT_EQ(0, QELGetQELRect(h, &rc));
    EXPECT_EQ(0, QELSetQELRect(h, &rc));
    EXPECT_EQ(0, QELGetParam(h, 0, &nValue));
    EXPECT_EQ(0, QELSetBlinkState(h, 1));
    EXPECT_EQ(0, QELRotate(h, 90));
    EXPECT_EQ(0u, QELParamsSupported(h));
    EXPECT_EQ(-1, RedPixels(h));
}

TEST_F(ShowOnly, SharesOneDrawingThatIsReadOnce)
{
    const HQELENGINE h1 = Handle(), h2 = Handle();
    const std::string path = Write("pump.qel");
    ASSERT_EQ(1, QELOpenFile(h1, path.c_str()));
    ASSERT_TRUE(::DeleteFileA(path.c_str())); // a second read would fail
    ASSERT_EQ(1, QELOpenFile(h2, path.c_str()));
    const RECT rc{3, 4, 53, 54};
    ASSERT_EQ(1, QELSetQELRect(h1, &rc));
    RECT rcRead{};
    ASSERT_EQ(1, QELGetQELRect(h2, &rcRead));
    EXPECT_TRUE(::EqualRect(&rc, &rcRead));
    QELSetParam(h2, 2, 0x123456);
    DWORD nValue = 0;
    EXPECT_EQ(1, QELGetParam(h1, 2, &nValue));
    EXPECT_EQ(0x123456u, nValue);
    EXPECT_EQ(QELGetName(h1), QELGetName(h2)); // the very same text
}

TEST_F(ShowOnly, FindsTheSharedDrawingWhateverTheCaseOfTheLetters)
{
    const HQELENGINE h1 = Handle(), h2 = Handle();
    const std::string path = Write("Pump.qel");
    ASSERT_EQ(1, QELOpenFile(h1, path.c_str()));
    ASSERT_TRUE(::DeleteFileA(path.c_str()));
    std::string upper = path;
    for (char& c : upper)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    ASSERT_NE(path, upper);
    EXPECT_EQ(1, QELOpenFile(h2, upper.c_str()));
    EXPECT_EQ(100, RedPixels(h2));
}

TEST_F(ShowOnly, SharesBetweenBothOpenFunctions)
{
    const HQELENGINE h1 = Handle(), h2 = Handle();
    const std::string path = Write("pump.qel");
    ASSERT_EQ(1, QELOpenFile(h1, path.c_str()));
    ASSERT_TRUE(::DeleteFileA(path.c_str()));
    EXPECT_EQ(1, QELOpenFileU(h2, Wide(path).data()));
    EXPECT_EQ(QELGetName(h1), QELGetName(h2));
}

TEST_F(ShowOnly, ChinesePathsThatDifferInOneByteAreDifferentPaths)
{
    ASSERT_EQ(936u, ::GetACP()) << "run with LC_ALL=zh_CN.UTF-8";
    // Folders that the path enters and leaves again need not be on the disk. The second byte of a
    // character may look like a letter; its case is no case then: 8141 and 8161 are two characters.
    const std::string one = m_folder.Path("\x81\x41\\..\\a.qel");
    const std::string other = m_folder.Path("\x81\x61\\..\\a.qel");
    const HQELENGINE h1 = Handle(), h2 = Handle();
    Write("a.qel");
    ASSERT_EQ(1, QELOpenFile(h1, one.c_str()));
    Write("a.qel", LARGER);
    ASSERT_EQ(1, QELOpenFile(h2, other.c_str())); // not shared, so it is read
    EXPECT_STREQ("shared", QELGetName(h1));
    EXPECT_STREQ("larger", QELGetName(h2));
}

TEST_F(ShowOnly, ChinesePathIsSharedWhateverTheCaseOfTheLettersInIt)
{
    ASSERT_EQ(936u, ::GetACP()) << "run with LC_ALL=zh_CN.UTF-8";
    const HQELENGINE h1 = Handle(), h2 = Handle(), h3 = Handle();
    const std::string path = Write("a.qel");
    ASSERT_EQ(1, QELOpenFile(h1, m_folder
                                     .Path("\xB1\xC3"
                                           "b\\..\\a.qel")
                                     .c_str()));
    ASSERT_TRUE(::DeleteFileA(path.c_str()));
    const std::string upper = m_folder.Path("\xB1\xC3"
                                            "B\\..\\A.QEL");
    EXPECT_EQ(1, QELOpenFile(h2, upper.c_str()));
    EXPECT_EQ(QELGetName(h1), QELGetName(h2));
    EXPECT_EQ(1, QELOpenFileU(h3, Wide(upper).data()));
    EXPECT_EQ(QELGetName(h1), QELGetName(h3));
}

TEST_F(ShowOnly, DrawingLivesUntilItsLastShareIsClosedInAnyOrder)
{
    const int orders[][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
    for (const auto& order : orders) {
        const std::string path = Write("pump.qel");
        HQELENGINE h[3];
        for (HQELENGINE& hOne : h) {
            hOne = Handle();
            ASSERT_EQ(1, QELOpenFile(hOne, path.c_str()));
        }
        ASSERT_TRUE(::DeleteFileA(path.c_str()));
        EXPECT_EQ(1, QELCloseFile(h[order[0]]));
        EXPECT_EQ(-1, QELGetType(h[order[0]]));
        EXPECT_EQ(100, RedPixels(h[order[1]]));
        EXPECT_EQ(1, QELOpenFile(h[order[0]], path.c_str())); // still in the list
        EXPECT_EQ(1, QELCloseFile(h[order[0]]));
        EXPECT_EQ(1, DestroyQELEngine(h[order[1]])); // closes as well
        EXPECT_EQ(100, RedPixels(h[order[2]]));
        EXPECT_EQ(1, QELCloseFile(h[order[2]]));
        EXPECT_EQ(0, QELOpenFile(h[order[0]], path.c_str())); // gone: it has to be read
        EXPECT_EQ(-1, QELGetType(h[order[0]]));
    }
}

TEST_F(ShowOnly, OpenClosesWhatTheHandleHeldBefore)
{
    const HQELENGINE h1 = Handle(), h2 = Handle();
    const std::string path = Write("a.qel");
    const std::string other = Write("b.qel", LARGER);
    ASSERT_EQ(1, QELOpenFile(h1, path.c_str()));
    ASSERT_EQ(1, QELOpenFile(h1, other.c_str()));
    EXPECT_EQ(2, QELGetType(h1));
    ASSERT_TRUE(::DeleteFileA(path.c_str()));
    EXPECT_EQ(0, QELOpenFile(h2, path.c_str()))
        << "the first drawing was closed with its one share";
    EXPECT_EQ(0, QELOpenFile(h1, path.c_str())); // a failure, too, has closed before
    EXPECT_EQ(-1, QELGetType(h1));
    ASSERT_TRUE(::DeleteFileA(other.c_str()));
    EXPECT_EQ(0, QELOpenFile(h2, other.c_str()));
}

TEST_F(ShowOnly, OpenOfTheSamePathAgainIsOneShareAndReadsTheFileAnew)
{
    const HQELENGINE h = Handle();
    const std::string path = Write("a.qel");
    ASSERT_EQ(1, QELOpenFile(h, path.c_str()));
    Write("a.qel", LARGER);
    ASSERT_EQ(1, QELOpenFile(h, path.c_str())); // closed first, and it was the only share
    EXPECT_STREQ("larger", QELGetName(h));
    EXPECT_EQ(1, QELCloseFile(h));
    ASSERT_TRUE(::DeleteFileA(path.c_str()));
    EXPECT_EQ(0, QELOpenFile(h, path.c_str()));
}

TEST_F(ShowOnly, NullPathAndFilesThatCannotBeReadGiveNothing)
{
    const HQELENGINE h = Handle();
    EXPECT_EQ(0, QELOpenFile(h, nullptr));
    EXPECT_EQ(0, QELOpenFileU(h, nullptr));
    EXPECT_EQ(0, QELOpenFile(h, m_folder.Path("missing.qel").c_str()));
    EXPECT_EQ(0, QELOpenFile(h, Write("bad.qel", "<qel>").c_str()));
    EXPECT_EQ(-1, QELGetType(h));
    // What failed is not in the list: once the file is good it is read.
    EXPECT_EQ(1, QELOpenFile(h, Write("bad.qel").c_str()));
    EXPECT_EQ(100, RedPixels(h));
}

TEST_F(ShowOnly, QueriesAnswerFromTheDrawingThoughItsElementsAreGone)
{
    const HQELENGINE h = Handle();
    ASSERT_EQ(1, QELOpenFile(h, Write("a.qel", LARGER).c_str()));
    EXPECT_EQ(2, QELGetType(h));
    EXPECT_STREQ("larger", QELGetName(h));
    EXPECT_EQ(nullptr, QELGetRootElem(h));
    SIZE size{};
    EXPECT_EQ(1, QELGetRefSize(h, &size));
    EXPECT_EQ(80, size.cx);
    EXPECT_EQ(70, size.cy);
    RECT rc{};
    EXPECT_EQ(1, QELGetQELRect(h, &rc));
    EXPECT_EQ(80, rc.right);
    EXPECT_EQ(70, rc.bottom);
    EXPECT_EQ(1, QELRotate(h, 90));
    EXPECT_EQ(1, QELGetRefSize(h, &size));
    EXPECT_EQ(70, size.cx);
    EXPECT_EQ(1, QELSetBlinkState(h, 1));
}

TEST_F(ShowOnly, EveryEditingFunctionIsRefusedAndChangesNothing)
{
    const HQELENGINE h = Handle();
    const std::string path = Write("a.qel");
    ASSERT_EQ(1, QELOpenFile(h, path.c_str()));
    QELSHAPEATTR attr{};
    attr.nSize = sizeof attr;
    const RECT rc{0, 0, 5, 5};
    const SIZE size{10, 10};
    const auto hElem = reinterpret_cast<HQELELEM>(h);
    EXPECT_EQ(nullptr, QELCreateElem(h, QEL_TYPE_RECT, nullptr, nullptr));
    EXPECT_EQ(nullptr, QELCreateElem(h, QEL_TYPE_ROOT, nullptr, nullptr));
    EXPECT_EQ(nullptr, QELCopyElem(h, hElem));
    EXPECT_EQ(0, QELDeleteElem(h, hElem));
    EXPECT_EQ(0, QELMoveElem(h, hElem, nullptr, nullptr));
    EXPECT_EQ(0, QELSetElemId(h, hElem, "x"));
    EXPECT_EQ(0, QELSetElemAttr(h, hElem, &attr, sizeof attr));
    EXPECT_EQ(0, QELSetElemRect(h, hElem, &rc));
    EXPECT_EQ(0, QELSetRefSize(h, &size));
    EXPECT_EQ(0, QELNewFile(h));
    EXPECT_EQ(0, QELSaveFile(h, m_folder.Path("b.qel").c_str()));
    EXPECT_EQ(0, QELSaveFile(h, path.c_str()));
    EXPECT_FALSE(Exists(m_folder.Path("b.qel")));
    EXPECT_EQ(DRAWING, ReadBytes(path));
    SIZE read{};
    EXPECT_EQ(1, QELGetRefSize(h, &read));
    EXPECT_EQ(50, read.cx);
    EXPECT_STREQ("shared", QELGetName(h));
    EXPECT_EQ(100, RedPixels(h));
}

TEST_F(ShowOnly, RecordsWithoutADrawingRefuseEditingAsWell)
{
    const HQELENGINE h = Handle();
    EXPECT_EQ(0, QELNewFile(h));
    EXPECT_EQ(nullptr, QELCreateElem(h, QEL_TYPE_ROOT, nullptr, nullptr));
    EXPECT_EQ(-1, QELGetType(h));
    EXPECT_EQ(1, QELCloseFile(h)); // nothing to close is no failure
}

TEST_F(ShowOnly, ADrawingInMemoryIsSharedWithNoPath)
{
    const HQELENGINE hMemory = Handle(), hPath = Handle(), hSame = Handle();
    const std::string bytes = DRAWING;
    ASSERT_EQ(1, QELOpenMemory(hMemory, bytes.data(), static_cast<DWORD>(bytes.size())));
    const std::string path = Write("a.qel");
    for (const HQELENGINE h : {hPath, hSame}) {
        ASSERT_EQ(1, QELOpenFile(h, path.c_str()));
        EXPECT_EQ(100, RedPixels(h));
    }
    EXPECT_EQ(1, QELCloseFile(hMemory));
    EXPECT_EQ(-1, RedPixels(hMemory));
    EXPECT_EQ(100, RedPixels(hPath));
}

TEST_F(ShowOnly, HandlesAreRefusedOnceDestroyed)
{
    const HQELENGINE h1 = Handle(), h2 = Handle();
    const std::string path = Write("a.qel");
    ASSERT_EQ(1, QELOpenFile(h1, path.c_str()));
    ASSERT_EQ(1, QELOpenFile(h2, path.c_str()));
    ASSERT_EQ(1, DestroyQELEngine(h1));
    EXPECT_EQ(0, DestroyQELEngine(h1)); // does not cost the other share
    EXPECT_EQ(0, QELCloseFile(h1));
    EXPECT_EQ(0, QELOpenFile(h1, path.c_str()));
    EXPECT_EQ(-1, QELGetType(h1));
    EXPECT_EQ(100, RedPixels(h2));
    EXPECT_NE(h1, Handle());
}

TEST(ShowOnlySwitch, AnswersOneAndLeavesNormalModeBehindWhenOff)
{
    EXPECT_EQ(1, QELShowOnly(5));
    EXPECT_EQ(1, QELShowOnly(0));
    const HQELENGINE h = CreateQELEngine();
    EXPECT_EQ(1, QELNewFile(h));
    EXPECT_NE(nullptr, QELGetRootElem(h));
    EXPECT_EQ(1, DestroyQELEngine(h));
}
