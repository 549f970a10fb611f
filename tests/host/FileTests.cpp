// Drawings as files: new, open, save and close through the exported functions, and what a failure
// of each leaves behind.
#include "include/QELEngine.h"
#include "tests/support/Files.h"
#include "tests/support/Wide.h"

#include <gtest/gtest.h>

#include <string>

namespace {

const std::string DECLARATION = "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n";
const std::string END(1, '\0'); // a saved file ends with the text's own zero
const std::string SAVED = DECLARATION +
                          "<qel id=\"pump\" type=\"1\" width=\"120\" height=\"90\">\r\n" +
                          "<rect id=\"r\" crd=\"1 2 30 40\"/>\r\n</qel>\r\n" + END;

class Files : public ::testing::Test {
protected:
    Files() : m_hEngine(CreateQELEngine()) {}
    ~Files() override { EXPECT_EQ(1, DestroyQELEngine(m_hEngine)); }

    std::string Write(const std::string& name, const std::string& bytes)
    {
        const std::string path = m_folder.Path(name);
        EXPECT_TRUE(WriteBytes(path, bytes)) << path;
        return path;
    }
    int Open(const std::string& path) { return QELOpenFile(m_hEngine, path.c_str()); }
    int Save(const std::string& path) { return QELSaveFile(m_hEngine, path.c_str()); }

    void ExpectSize(long nWidth, long nHeight) const
    {
        SIZE size{-1, -1};
        EXPECT_EQ(1, QELGetRefSize(m_hEngine, &size));
        EXPECT_EQ(nWidth, size.cx);
        EXPECT_EQ(nHeight, size.cy);
    }
    void ExpectQelRect(const RECT& expected) const
    {
        RECT rc{-1, -1, -1, -1};
        EXPECT_EQ(1, QELGetQELRect(m_hEngine, &rc));
        EXPECT_TRUE(::EqualRect(&expected, &rc))
            << rc.left << "," << rc.top << "," << rc.right << "," << rc.bottom;
    }
    void ExpectNoDrawing() const
    {
        EXPECT_EQ(3, QELGetType(m_hEngine));
        EXPECT_EQ(nullptr, QELGetRootElem(m_hEngine));
        EXPECT_EQ(nullptr, QELGetName(m_hEngine));
    }

    CTestFolder m_folder;
    HQELENGINE m_hEngine;
};

// The folder's path blown up by parts that lead nowhere to a full path of that many bytes.
std::string PathOfLength(const CTestFolder& folder, const std::string& name, std::size_t nLength)
{
    std::string path = folder.Path("");
    const std::size_t nRest = nLength - name.size();
    while (path.size() + 2 <= nRest) path += ".\\";
    if (path.size() < nRest) path += "\\"; // a doubled separator is one
    return path + name;
}

} // namespace

TEST_F(Files, NewDrawingIsFiftyByFiftyWithAnEmptyRoot)
{
    ExpectNoDrawing();
    ASSERT_EQ(1, QELNewFile(m_hEngine));
    ExpectSize(50, 50);
    ExpectQelRect({0, 0, 50, 50});
    EXPECT_EQ(0, QELGetType(m_hEngine));
    EXPECT_STREQ("", QELGetName(m_hEngine));
    EXPECT_EQ(QEL_TYPE_ROOT, QELGetElemType(m_hEngine, QELGetRootElem(m_hEngine)));
    EXPECT_EQ(nullptr, QELGetFirstChild(m_hEngine, QELGetRootElem(m_hEngine)));
}

TEST_F(Files, NewDrawingIsSavedAsTheDeclarationAndAnEmptyRoot)
{
    ASSERT_EQ(1, QELNewFile(m_hEngine));
    ASSERT_EQ(1, Save(m_folder.Path("new.qel")));
    EXPECT_EQ(DECLARATION + "<qel/>\r\n" + END, ReadBytes(m_folder.Path("new.qel")));
    EXPECT_EQ(1, m_folder.CountFiles());
}

TEST_F(Files, NullPathStartsANewDrawing)
{
    ASSERT_EQ(1, Open(Write("a.qel", SAVED)));
    ASSERT_EQ(1, QELOpenFile(m_hEngine, nullptr));
    ExpectSize(50, 50);
    EXPECT_EQ(0, QELGetType(m_hEngine));
    EXPECT_EQ(nullptr, QELGetFirstChild(m_hEngine, QELGetRootElem(m_hEngine)));
}

TEST_F(Files, OpenTakesSizeKindAndNameAndKeepsTheOriginOfTheQelRect)
{
    const RECT rc{11, -7, 900, 900};
    ASSERT_EQ(1, QELSetQELRect(m_hEngine, &rc));
    ASSERT_EQ(1, Open(Write("a.qel", SAVED)));
    ExpectSize(120, 90);
    ExpectQelRect({11, -7, 131, 83});
    EXPECT_EQ(1, QELGetType(m_hEngine));
    EXPECT_STREQ("pump", QELGetName(m_hEngine));
}

TEST_F(Files, SavedDrawingIsTheOneThatWasOpened)
{
    ASSERT_EQ(1, Open(Write("a.qel", SAVED)));
    ASSERT_EQ(1, Save(m_folder.Path("b.qel")));
    EXPECT_EQ(SAVED, ReadBytes(m_folder.Path("b.qel")));
    EXPECT_EQ(SAVED, ReadBytes(m_folder.Path("a.qel")));
    ASSERT_EQ(1, Open(m_folder.Path("b.qel")));
    ExpectSize(120, 90);
}

TEST_F(Files, OpenKeepsNoHoldOfTheFile)
{
    const std::string path = Write("a.qel", SAVED);
    ASSERT_EQ(1, Open(path));
    EXPECT_TRUE(::DeleteFileA(path.c_str()));
    EXPECT_EQ(1, Save(path)); // and the drawing is all here
    EXPECT_EQ(SAVED, ReadBytes(path));
}

TEST_F(Files, SaveReplacesALongerFileWhole)
{
    ASSERT_EQ(1, QELNewFile(m_hEngine));
    const std::string path = Write("a.qel", std::string(100000, 'x'));
    ASSERT_EQ(1, Save(path));
    EXPECT_EQ(DECLARATION + "<qel/>\r\n" + END, ReadBytes(path));
    EXPECT_EQ(1, m_folder.CountFiles());
}

TEST_F(Files, WhatCannotBeOpenedLeavesTheEngineWithoutADrawing)
{
    struct Row {
        const char* pszName;
        std::string bytes;
    };
    const Row rows[] = {
        {"empty.qel", ""},
        {"blank.qel", "   \r\n"},
        {"text.qel", "this is no drawing"},
        {"open.qel", "<qel><rect crd=\"1 2 3 4\"/>"},
        {"crossed.qel", "<qel><g></qel></g>"},
        {"root.qel", "<rect crd=\"1 2 3 4\"/>"},
        {"case.qel", "<QEL/>"},
        {"unknown.qel", "<drawing/>"},
        {"quote.qel", "<qel width=\"10/>"},
        {"comment.qel", "<qel><!-- without end"},
        {"zero.qel", std::string("\0<qel/>", 7)},
    };
    const std::string good = Write("good.qel", SAVED);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszName);
        ASSERT_EQ(1, Open(good));
        const HQELELEM hRoot = QELGetRootElem(m_hEngine);
        EXPECT_EQ(0, Open(Write(row.pszName, row.bytes)));
        ExpectNoDrawing();
        EXPECT_EQ(QEL_TYPE_NONE, QELGetElemType(m_hEngine, hRoot));
        EXPECT_EQ(0, Save(m_folder.Path("never.qel")));
        EXPECT_FALSE(Exists(m_folder.Path("never.qel")));
    }
    ASSERT_EQ(1, Open(good));
    EXPECT_EQ(0, Open(m_folder.Path("missing.qel")));
    ExpectNoDrawing();
    EXPECT_EQ(0, Open(m_folder.Path("."))); // a folder
    EXPECT_EQ(0, Open(""));
    EXPECT_EQ(1, Open(good));
    ExpectSize(120, 90);
}

TEST_F(Files, CloseKillsTheElementsAndLeavesTheQelRect)
{
    ASSERT_EQ(1, Open(Write("a.qel", SAVED)));
    const RECT rc{1, 2, 300, 400};
    ASSERT_EQ(1, QELSetQELRect(m_hEngine, &rc));
    const HQELELEM hRoot = QELGetRootElem(m_hEngine);
    const HQELELEM hRect = QELGetFirstChild(m_hEngine, hRoot);
    EXPECT_EQ(1, QELCloseFile(m_hEngine));
    ExpectNoDrawing();
    ExpectQelRect(rc);
    EXPECT_EQ(QEL_TYPE_NONE, QELGetElemType(m_hEngine, hRoot));
    EXPECT_EQ(QEL_TYPE_NONE, QELGetElemType(m_hEngine, hRect));
    EXPECT_EQ(1, Open(m_folder.Path("a.qel")));
    EXPECT_NE(hRoot, QELGetRootElem(m_hEngine));
}

TEST_F(Files, SaveFailsWithoutADrawingAndWithANullPath)
{
    EXPECT_EQ(0, Save(m_folder.Path("a.qel")));
    ASSERT_EQ(1, QELNewFile(m_hEngine));
    EXPECT_EQ(0, QELSaveFile(m_hEngine, nullptr));
    ASSERT_EQ(1, QELCloseFile(m_hEngine));
    const std::string path = Write("old.qel", SAVED);
    EXPECT_EQ(0, Save(path));
    EXPECT_EQ(SAVED, ReadBytes(path));
    EXPECT_EQ(1, m_folder.CountFiles());
}

TEST_F(Files, SaveThatCannotReplaceTheTargetLeavesItAndNoStrayFile)
{
    ASSERT_EQ(1, QELNewFile(m_hEngine));
    // Held by someone who shares nothing.
    const std::string held = Write("held.qel", SAVED);
    const HANDLE hFile = ::CreateFileA(held.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                       FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, hFile);
    EXPECT_EQ(0, Save(held));
    EXPECT_EQ(1, m_folder.CountFiles());
    ::CloseHandle(hFile);
    EXPECT_EQ(SAVED, ReadBytes(held));

    EXPECT_EQ(1, Save(held)); // the drawing was not harmed
    EXPECT_EQ(DECLARATION + "<qel/>\r\n" + END, ReadBytes(held));
    EXPECT_EQ(1, m_folder.CountFiles());
}

TEST_F(Files, SaveOntoAWriteProtectedFileIsWholeOrNotAtAll)
{
    // Windows refuses to replace such a file; an administrator's Wine does not protect it.
    ASSERT_EQ(1, QELNewFile(m_hEngine));
    const std::string path = Write("locked.qel", SAVED);
    ASSERT_TRUE(::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    const int nResult = Save(path);
    EXPECT_EQ(nResult ? DECLARATION + "<qel/>\r\n" + END : SAVED, ReadBytes(path));
    EXPECT_EQ(1, m_folder.CountFiles());
}

TEST_F(Files, SaveFailsWhereNoFileCanStand)
{
    ASSERT_EQ(1, QELNewFile(m_hEngine));
    const std::string folder = m_folder.Path("sub");
    ASSERT_TRUE(::CreateDirectoryA(folder.c_str(), nullptr));
    EXPECT_EQ(0, Save(folder)); // a folder has the name
    EXPECT_NE(0u, ::GetFileAttributesA(folder.c_str()) & FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(0, Save(m_folder.Path("none\\a.qel")));
    EXPECT_EQ(0, Save(""));
    EXPECT_EQ(0, Save(m_folder.Path(std::string(400, 'n'))));
    EXPECT_EQ(0, Save(m_folder.Path("a?b.qel")));
    EXPECT_EQ(0, m_folder.CountFiles());
    ::RemoveDirectoryA(folder.c_str());
}

TEST_F(Files, SaveIntoTheCurrentFolderNeedsNoFolderName)
{
    char szBefore[MAX_PATH];
    ::GetCurrentDirectoryA(sizeof szBefore, szBefore);
    ASSERT_EQ(1, QELNewFile(m_hEngine));
    ASSERT_TRUE(::SetCurrentDirectoryA(m_folder.Path(".").c_str()));
    EXPECT_EQ(1, Save("here.qel"));
    EXPECT_EQ(1, Open("here.qel"));
    ::SetCurrentDirectoryA(szBefore);
    EXPECT_EQ(DECLARATION + "<qel/>\r\n" + END, ReadBytes(m_folder.Path("here.qel")));
    EXPECT_EQ(1, m_folder.CountFiles());
}

TEST_F(Files, ChinesePathsWorkInBothOpenFunctionsAndInSave)
{
    ASSERT_EQ(936u, ::GetACP()) << "run with LC_ALL=zh_CN.UTF-8";
    // Folders that the path enters and leaves again: they need not be on the disk, which may know
    // no Chinese. The second character's second byte is a backslash.
    const std::string chinese = m_folder.Path("\xB1\xC3\xD5\xBE\\..\\\x81\x5C\\..\\");
    Write("a.qel", SAVED);
    EXPECT_EQ(1, Open(chinese + "a.qel"));
    ExpectSize(120, 90);
    EXPECT_EQ(1, Save(chinese + "b.qel"));
    EXPECT_EQ(SAVED, ReadBytes(m_folder.Path("b.qel")));
    EXPECT_EQ(2, m_folder.CountFiles());
    ASSERT_EQ(1, QELCloseFile(m_hEngine));
    EXPECT_EQ(1, QELOpenFileU(m_hEngine, Wide(chinese + "b.qel").data()));
    ExpectSize(120, 90);
}

TEST_F(Files, WidePathFailsWhenNullMissingOrWithoutACounterpart)
{
    const std::string path = Write("a.qel", SAVED);
    EXPECT_EQ(0, QELOpenFileU(m_hEngine, nullptr));
    ExpectNoDrawing();
    EXPECT_EQ(0, QELOpenFileU(m_hEngine, Wide(m_folder.Path("missing.qel")).data()));
    EXPECT_EQ(0, QELOpenFileU(m_hEngine, L""));
    ExpectNoDrawing();
    EXPECT_EQ(1, QELOpenFileU(m_hEngine, Wide(path).data()));
    ExpectSize(120, 90);
}

TEST_F(Files, WidePathMayHaveUpTo259Bytes)
{
    Write("a.qel", SAVED);
    const std::string longest = PathOfLength(m_folder, "a.qel", 259);
    ASSERT_EQ(259u, longest.size());
    EXPECT_EQ(1, QELOpenFileU(m_hEngine, Wide(longest).data())) << longest;
    ExpectSize(120, 90);
    for (const std::size_t nLength : {260U, 261U, 300U, 5000U, 200000U}) {
        EXPECT_EQ(0, QELOpenFileU(m_hEngine, Wide(PathOfLength(m_folder, "a.qel", nLength)).data()))
            << nLength;
    }
    // Bytes count, not characters: 130 Chinese characters are 260 bytes.
    std::vector<wchar_t> chinese(130, L'\x6CF5');
    chinese.push_back(L'\0');
    EXPECT_EQ(0, QELOpenFileU(m_hEngine, chinese.data()));
}

TEST_F(Files, OpensADrawingOf512LevelsAndRefusesOneMore)
{
    const auto nested = [](int nLevels) {
        std::string text = "<qel>";
        for (int i = 0; i < nLevels; ++i) text += "<g>";
        for (int i = 0; i < nLevels; ++i) text += "</g>";
        return text + "</qel>";
    };
    ASSERT_EQ(1, Open(Write("deep.qel", nested(512))));
    int nDepth = 0;
    HQELELEM hElem = QELGetRootElem(m_hEngine);
    while ((hElem = QELGetFirstChild(m_hEngine, hElem)) != nullptr) ++nDepth;
    EXPECT_EQ(512, nDepth);
    EXPECT_EQ(0, Open(Write("deeper.qel", nested(513))));
    ExpectNoDrawing();
}

TEST_F(Files, DestroyClosesAndTheEngineIsRefusedAfterwards)
{
    const HQELENGINE hEngine = CreateQELEngine();
    ASSERT_EQ(1, QELNewFile(hEngine));
    const HQELELEM hRoot = QELGetRootElem(hEngine);
    ASSERT_EQ(1, DestroyQELEngine(hEngine));
    EXPECT_EQ(0, DestroyQELEngine(hEngine));
    EXPECT_EQ(-1, QELGetType(hEngine));
    EXPECT_EQ(0, QELNewFile(hEngine));
    EXPECT_EQ(0, QELSaveFile(hEngine, m_folder.Path("a.qel").c_str()));
    EXPECT_EQ(nullptr, QELGetRootElem(hEngine));
    EXPECT_EQ(QEL_TYPE_NONE, QELGetElemType(m_hEngine, hRoot));
    EXPECT_EQ(0, m_folder.CountFiles());
}

TEST_F(Files, CloseOfNothingSucceedsAsOftenAsOneLikes)
{
    EXPECT_EQ(1, QELCloseFile(m_hEngine));
    EXPECT_EQ(1, QELCloseFile(m_hEngine));
    ExpectNoDrawing();
    ASSERT_EQ(1, QELNewFile(m_hEngine));
    EXPECT_EQ(0, QELGetType(m_hEngine));
}
