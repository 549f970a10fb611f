// Files as the system keeps them: names that no code page has, attributes, second names and
// devices.
#include "tests/support/Host.h"
#include "tests/support/Wide.h"

namespace {

constexpr COLORREF RED = RGB(255, 0, 0);

} // namespace

TEST(FileSystem, AWideOpenTakesNoCharacterThatTheCodePageLacks)
{
    ASSERT_EQ(936u, ::GetACP()) << "run with LC_ALL=zh_CN.UTF-8";
    // U+0E01 is a Thai letter. The file is there, and the system opens it.
    const CTextHost host("<rect style='0x1' bg='0xff' crd='0 0 20 20'/>", 50);
    std::vector<wchar_t> path = Wide(host.Folder().Path("?.qel"));
    for (wchar_t& c : path)
        if (c == L'?') c = L'\x0E01';
    const HANDLE hFile = ::CreateFileW(path.data(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                       FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, hFile);
    DWORD nWritten = 0;
    EXPECT_TRUE(::WriteFile(hFile, "<qel/>", 6, &nWritten, nullptr));
    ::CloseHandle(hFile);
    EXPECT_EQ(0, QELOpenFileU(host, path.data()));
    EXPECT_EQ(RED, host.Pixel(5, 5)); // and the drawing is still there
    EXPECT_TRUE(::DeleteFileW(path.data()));
}

TEST(FileSystem, ASaveReplacesTheFileAndNotItsOtherNames)
{
    const CTextHost host("", 50);
    const std::string path = host.Folder().Path("one.qel");
    const std::string other = host.Folder().Path("other.qel");
    ASSERT_TRUE(WriteBytes(path, "old"));
    ASSERT_TRUE(::CreateHardLinkA(other.c_str(), path.c_str(), nullptr));
    ASSERT_TRUE(WriteBytes(path, "older")); // one file with two names
    ASSERT_EQ("older", ReadBytes(other));
    EXPECT_EQ(1, QELSaveFile(host, path.c_str()));
    EXPECT_NE("older", ReadBytes(path));
    EXPECT_EQ("older", ReadBytes(other));
}

TEST(FileSystem, ASaveOntoAHiddenFileSucceedsAndTheFileIsHiddenNoLonger)
{
    const CTextHost host("", 50);
    const std::string path = host.Folder().Path("hidden.qel");
    ASSERT_TRUE(WriteBytes(path, "old"));
    // There are disks that keep no such attribute; what follows holds on them as well.
    ASSERT_TRUE(::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_HIDDEN));
    EXPECT_EQ(1, QELSaveFile(host, path.c_str()));
    EXPECT_NE("old", ReadBytes(path));
    EXPECT_EQ(0u, ::GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_HIDDEN);
}

TEST(FileSystem, TheNameOfADeviceIsNoFileInAnyFolder)
{
    const CTextHost host("", 50);
    for (const char* pszName : {"NUL", "nul", "CON", "PRN", "COM1", "LPT1", "NUL.qel"}) {
        SCOPED_TRACE(pszName);
        const int nFiles = host.Folder().CountFiles();
        EXPECT_EQ(0, QELSaveFile(host, pszName));
        EXPECT_EQ(0, QELSaveFile(host, host.Folder().Path(pszName).c_str()));
        EXPECT_EQ(nFiles, host.Folder().CountFiles());
    }
}
