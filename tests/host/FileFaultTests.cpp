// What can be wrong with real files: somebody else has them, they are no files, they cannot be
// written, or their path leads nowhere. A save that fails leaves everything on the disk as it was;
// an open that fails leaves an engine without a drawing that works on.
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

const std::string HEAD = "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n";
const std::string END(1, '\0');
const std::string OLD = HEAD + "<qel id=\"old\" width=\"70\">\r\n<line crd=\"1 2 3 4\"/>\r\n" +
                        "<text crd=\"0 0 9 9\">older and longer</text>\r\n</qel>\r\n" + END;
const std::string NEW = HEAD + "<qel id=\"new\">\r\n<rect style=\"0x1\" bg=\"0xff\" " +
                        "crd=\"1 2 30 40\"/>\r\n</qel>\r\n" + END;

// ---- files held open ----

constexpr const char* g_holdPath = "QEL_TEST_HOLD_PATH";
constexpr const char* g_holdAccess = "QEL_TEST_HOLD_ACCESS";
constexpr const char* g_holdShare = "QEL_TEST_HOLD_SHARE";
constexpr const char* g_holdEvents = "QEL_TEST_HOLD_EVENTS";
constexpr DWORD PATIENCE = 30000; // milliseconds

HANDLE OpenToHold(const std::string& path, DWORD nAccess, DWORD nShare)
{
    return ::CreateFileA(path.c_str(), nAccess, nShare, nullptr, OPEN_EXISTING,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::string ShortVariable(const char* pszName)
{
    char szValue[64]{};
    ::GetEnvironmentVariableA(pszName, szValue, sizeof szValue);
    return szValue;
}

// This program once more, started by CHeldElsewhere: before any test runs it holds the file until
// it is told to let go, and ends.
const struct CHolder {
    CHolder()
    {
        // Wide: Wine cuts the end off Chinese variables that are asked for in bytes.
        wchar_t szPath[1024]{};
        if (!::GetEnvironmentVariableW(L"QEL_TEST_HOLD_PATH", szPath, 1024)) return;
        const HANDLE hFile =
            ::CreateFileW(szPath, std::strtoul(ShortVariable(g_holdAccess).c_str(), nullptr, 10),
                          std::strtoul(ShortVariable(g_holdShare).c_str(), nullptr, 10), nullptr,
                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (hFile == INVALID_HANDLE_VALUE) ::ExitProcess(1);
        const std::string events = ShortVariable(g_holdEvents);
        const HANDLE hHeld = ::OpenEventA(EVENT_ALL_ACCESS, FALSE, (events + "held").c_str());
        const HANDLE hDone = ::OpenEventA(EVENT_ALL_ACCESS, FALSE, (events + "done").c_str());
        ::SetEvent(hHeld);
        ::WaitForSingleObject(hDone, PATIENCE);
        ::ExitProcess(0);
    }
} g_holder;

class CHeldHere { // a file that this process has open
public:
    CHeldHere(const std::string& path, DWORD nAccess, DWORD nShare)
        : m_hFile(OpenToHold(path, nAccess, nShare))
    {
        EXPECT_NE(INVALID_HANDLE_VALUE, m_hFile);
    }
    ~CHeldHere() { ::CloseHandle(m_hFile); }
    CHeldHere(const CHeldHere&) = delete;
    CHeldHere& operator=(const CHeldHere&) = delete;

private:
    HANDLE m_hFile;
};

class CHeldElsewhere { // a file that another process has open
public:
    CHeldElsewhere(const std::string& path, DWORD nAccess, DWORD nShare)
    {
        const std::string events = "qel-hold-" + std::to_string(::GetCurrentProcessId()) + "-";
        m_hHeld = ::CreateEventA(nullptr, TRUE, FALSE, (events + "held").c_str());
        m_hDone = ::CreateEventA(nullptr, TRUE, FALSE, (events + "done").c_str());
        ::SetEnvironmentVariableA(g_holdPath, path.c_str());
        ::SetEnvironmentVariableA(g_holdAccess, std::to_string(nAccess).c_str());
        ::SetEnvironmentVariableA(g_holdShare, std::to_string(nShare).c_str());
        ::SetEnvironmentVariableA(g_holdEvents, events.c_str());
        char szProgram[MAX_PATH];
        ::GetModuleFileNameA(nullptr, szProgram, sizeof szProgram);
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        EXPECT_TRUE(::CreateProcessA(szProgram, nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                                     nullptr, &startup, &m_process));
        ::SetEnvironmentVariableA(g_holdPath, nullptr);
        const HANDLE either[] = {m_hHeld, m_process.hProcess};
        EXPECT_EQ(WAIT_OBJECT_0, ::WaitForMultipleObjects(2, either, FALSE, PATIENCE))
            << "the other process does not hold the file";
    }
    ~CHeldElsewhere()
    {
        ::SetEvent(m_hDone);
        EXPECT_EQ(WAIT_OBJECT_0, ::WaitForSingleObject(m_process.hProcess, PATIENCE));
        for (const HANDLE h : {m_hHeld, m_hDone, m_process.hThread, m_process.hProcess})
            ::CloseHandle(h);
    }
    CHeldElsewhere(const CHeldElsewhere&) = delete;
    CHeldElsewhere& operator=(const CHeldElsewhere&) = delete;

private:
    HANDLE m_hHeld;
    HANDLE m_hDone;
    PROCESS_INFORMATION m_process{};
};

struct Holding {
    DWORD nAccess;
    DWORD nShare;
};

// ---- folders ----

// What stands in a folder and below: by path, attributes, size and bytes; of a file that cannot be
// read at the time, no bytes.
using Listing = std::map<std::string, std::string>;

void ListInto(const std::string& folder, Listing* pListing)
{
    WIN32_FIND_DATAA data{};
    const HANDLE hFind = ::FindFirstFileA((folder + "\\*").c_str(), &data);
    if (hFind == INVALID_HANDLE_VALUE) return;
    do {
        const std::string name = data.cFileName;
        if (name == "." || name == "..") continue;
        const std::string path = folder + "\\" + name;
        (*pListing)[path] = std::to_string(data.dwFileAttributes) + " " +
                            std::to_string(data.nFileSizeLow) + " " + ReadBytes(path);
        if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) ListInto(path, pListing);
    } while (::FindNextFileA(hFind, &data));
    ::FindClose(hFind);
}

Listing ListOf(const CTestFolder& folder)
{
    Listing listing;
    ListInto(folder.Path("."), &listing);
    return listing;
}

std::string ListingDifference(const Listing& before, const Listing& after)
{
    for (const auto& [path, content] : before) {
        const auto found = after.find(path);
        if (found == after.end()) return "gone: " + path;
        if (found->second != content) return "changed: " + path;
    }
    for (const auto& [path, content] : after)
        if (!before.count(path)) return "new: " + path;
    return "";
}

class CSubFolder { // a folder in the test's folder, which only deletes files
public:
    explicit CSubFolder(const std::string& path) : m_path(path)
    {
        EXPECT_TRUE(::CreateDirectoryA(path.c_str(), nullptr)) << path;
    }
    ~CSubFolder()
    {
        Listing listing;
        ListInto(m_path, &listing);
        for (const auto& [path, content] : listing) {
            ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            ::DeleteFileA(path.c_str());
        }
        EXPECT_TRUE(::RemoveDirectoryA(m_path.c_str())) << m_path;
    }
    CSubFolder(const CSubFolder&) = delete;
    CSubFolder& operator=(const CSubFolder&) = delete;
    [[nodiscard]] std::string Path(const std::string& name) const { return m_path + "\\" + name; }

private:
    std::string m_path;
};

// The number that the next kernel handle gets is the lowest that is free: a file that stays open
// takes one away.
uintptr_t NextHandle()
{
    const HANDLE hEvent = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
    ::CloseHandle(hEvent);
    return reinterpret_cast<uintptr_t>(hEvent);
}

// ---- the engine ----

class FileFaults : public ::testing::Test {
protected:
    FileFaults() : m_h(CreateQELEngine())
    {
        Write("new.qel", NEW);
        EXPECT_EQ(1, QELOpenFile(m_h, m_folder.Path("new.qel").c_str()));
    }
    ~FileFaults() override { EXPECT_EQ(1, DestroyQELEngine(m_h)); }

    std::string Write(const std::string& name, const std::string& bytes) const
    {
        const std::string path = m_folder.Path(name);
        EXPECT_TRUE(WriteBytes(path, bytes)) << path;
        return path;
    }
    int Save(const std::string& path) const { return QELSaveFile(m_h, path.c_str()); }
    int Open(const std::string& path) const { return QELOpenFile(m_h, path.c_str()); }

    // A save that must fail: nothing on the disk changes, and the drawing is still there, whole.
    void ExpectNotSaved(const std::string& path) const
    {
        const Listing before = ListOf(m_folder);
        EXPECT_EQ(0, Save(path)) << path;
        EXPECT_EQ("", ListingDifference(before, ListOf(m_folder))) << path;
        ExpectDrawing("new");
    }
    // A save that may succeed or not: the one or the other file is whole, and there is no third.
    void ExpectWhole(const std::string& path, const std::string& old) const
    {
        const int nFiles = m_folder.CountFiles();
        const int nResult = Save(path);
        EXPECT_EQ(nResult ? NEW : old, ReadBytes(path)) << path;
        EXPECT_EQ(nFiles, m_folder.CountFiles()) << path;
    }
    // The drawing was not harmed by what went before.
    void ExpectSaves() const
    {
        const std::string path = m_folder.Path("elsewhere.qel");
        EXPECT_EQ(1, Save(path));
        EXPECT_EQ(NEW, ReadBytes(path));
        EXPECT_TRUE(::DeleteFileA(path.c_str()));
    }
    void ExpectDrawing(const char* pszName) const
    {
        EXPECT_STREQ(pszName, QELGetName(m_h));
        EXPECT_NE(nullptr, QELGetFirstChild(m_h, QELGetRootElem(m_h)));
    }
    // An open that must fail, from a drawing that is open: nothing of it is left, nothing is drawn
    // or saved; and the engine opens and draws again.
    void ExpectNotOpened(const std::string& path) const
    {
        SCOPED_TRACE(path.substr(0, 300));
        ExpectDrawing("new");
        const HQELELEM hRoot = QELGetRootElem(m_h);
        const Listing before = ListOf(m_folder);
        EXPECT_EQ(0, Open(path));
        EXPECT_EQ(3, QELGetType(m_h));
        EXPECT_EQ(nullptr, QELGetRootElem(m_h));
        EXPECT_EQ(nullptr, QELGetName(m_h));
        EXPECT_EQ(QEL_TYPE_NONE, QELGetElemType(m_h, hRoot));
        EXPECT_EQ(0u, QELParamsSupported(m_h));
        EXPECT_EQ(nullptr, QELCreateElem(m_h, QEL_TYPE_RECT, nullptr, nullptr));
        EXPECT_EQ(0, Save(m_folder.Path("never.qel")));
        EXPECT_EQ("", ListingDifference(before, ListOf(m_folder)));
        EXPECT_EQ(1, QELNewFile(m_h));
        ExpectOpens();
    }
    void ExpectOpens() const
    {
        EXPECT_EQ(1, Open(m_folder.Path("new.qel")));
        ExpectDrawing("new");
        CTestBitmap drawn(50, 50);
        const RECT rc = drawn.Box();
        EXPECT_EQ(1, QELSetQELRect(m_h, &rc));
        EXPECT_EQ(1, QELDraw(m_h, drawn.Dc(), &rc, QEL_DRAW_FULL));
        EXPECT_EQ(RGB(255, 0, 0), drawn.At(10, 10));
    }

    CTestFolder m_folder;
    HQELENGINE m_h;
};

// What a handle may allow others at the most while a file cannot be replaced under it.
constexpr Holding g_notShared[] = {
    {GENERIC_READ, 0},
    {GENERIC_WRITE, 0},
    {GENERIC_READ | GENERIC_WRITE, 0},
    {GENERIC_READ, FILE_SHARE_READ},
    {GENERIC_WRITE, FILE_SHARE_READ},
    {GENERIC_READ, FILE_SHARE_WRITE},
    {GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE},
};
constexpr Holding g_shared[] = {
    {GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE},
    {GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE},
    {GENERIC_READ, FILE_SHARE_DELETE},
};

const char* const g_noFileNames[] = {
    "",    " ",  ".",      "..",     "a?b.qel", "*.qel",  "a<b.qel",
    "a|b", "\\", "a/\\/b", "NUL\\a", "\"q\"",   "a\tb\\", "none\\..\\none\\a"};

} // namespace

// ---- saving ----

TEST_F(FileFaults, SaveIntoAFolderThatIsMissingOrNoFolderFails)
{
    Write("file.qel", OLD);
    for (const char* pszName : {"none\\a.qel", "none\\deeper\\a.qel", "file.qel\\a.qel",
                                "none\\..\\none\\a.qel", "none/a.qel"})
        ExpectNotSaved(m_folder.Path(pszName));
    ExpectNotSaved("Q:\\a.qel");
    ExpectNotSaved("Q:\\none\\a.qel");
    ExpectSaves();
}

TEST_F(FileFaults, SaveOntoAFolderFailsAndTheFolderStays)
{
    const CSubFolder empty(m_folder.Path("empty"));
    const CSubFolder full(m_folder.Path("full.qel"));
    ASSERT_TRUE(WriteBytes(full.Path("inside.qel"), OLD));
    ExpectNotSaved(m_folder.Path("empty"));
    ExpectNotSaved(m_folder.Path("empty\\"));
    ExpectNotSaved(m_folder.Path("full.qel"));
    ExpectNotSaved(m_folder.Path("full.qel\\."));
    ExpectNotSaved(m_folder.Path("full.qel\\inside.qel\\.."));
    ExpectSaves();
}

TEST_F(FileFaults, SaveOntoAReadOnlyFileFailsUntilItIsNoLongerReadOnly)
{
    const std::string path = Write("old.qel", OLD);
    ASSERT_TRUE(::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    ExpectNotSaved(path);
    EXPECT_EQ(1, Open(path)); // it can be read
    ExpectDrawing("old");
    EXPECT_EQ(0, Save(path));
    EXPECT_EQ(1, Open(m_folder.Path("new.qel")));
    ExpectNotSaved(path);
    EXPECT_EQ(OLD, ReadBytes(path));
    ASSERT_TRUE(::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(1, Save(path));
    EXPECT_EQ(NEW, ReadBytes(path));
}

TEST_F(FileFaults, SaveOntoAFileThatThisProcessHoldsFailsUntilItIsLetGo)
{
    for (const Holding& holding : g_notShared) {
        SCOPED_TRACE("access " + std::to_string(holding.nAccess) + " share " +
                     std::to_string(holding.nShare));
        const std::string path = Write("old.qel", OLD);
        {
            const CHeldHere held(path, holding.nAccess, holding.nShare);
            ExpectNotSaved(path);
        }
        EXPECT_EQ(OLD, ReadBytes(path));
        EXPECT_EQ(1, Save(path));
        EXPECT_EQ(NEW, ReadBytes(path));
    }
}

TEST_F(FileFaults, SaveOntoAFileThatAnotherProcessHoldsFailsUntilItIsLetGo)
{
    for (const Holding& holding : g_notShared) {
        SCOPED_TRACE("access " + std::to_string(holding.nAccess) + " share " +
                     std::to_string(holding.nShare));
        const std::string path = Write("old.qel", OLD);
        {
            const CHeldElsewhere held(path, holding.nAccess, holding.nShare);
            ExpectNotSaved(path);
        }
        EXPECT_EQ(OLD, ReadBytes(path));
        EXPECT_EQ(1, Save(path));
        EXPECT_EQ(NEW, ReadBytes(path));
    }
}

TEST_F(FileFaults, SaveOntoAFileThatIsHeldButSharedIsWholeOrNotAtAll)
{
    for (const Holding& holding : g_shared) {
        SCOPED_TRACE("access " + std::to_string(holding.nAccess) + " share " +
                     std::to_string(holding.nShare));
        const std::string path = Write("old.qel", OLD);
        int nResult = 0;
        {
            const CHeldHere held(path, holding.nAccess, holding.nShare);
            nResult = Save(path);
        }
        EXPECT_EQ(nResult ? NEW : OLD, ReadBytes(path));
        EXPECT_EQ(2, m_folder.CountFiles());
        EXPECT_EQ(1, Save(path));
        EXPECT_EQ(NEW, ReadBytes(path));
    }
}

TEST_F(FileFaults, SaveOntoAFileThatIsMappedIsWholeOrNotAtAll)
{
    const std::string path = Write("old.qel", OLD);
    const HANDLE hFile = OpenToHold(path, GENERIC_READ, 0);
    const HANDLE hMapping = ::CreateFileMappingA(hFile, nullptr, PAGE_READONLY, 0, 0, nullptr);
    const void* pView = ::MapViewOfFile(hMapping, FILE_MAP_READ, 0, 0, 0);
    ASSERT_NE(nullptr, pView);
    ::CloseHandle(hMapping);
    ::CloseHandle(hFile); // the view alone keeps the file
    const int nResult = Save(path);
    EXPECT_EQ(nResult ? NEW : OLD, ReadBytes(path));
    EXPECT_EQ(0, std::memcmp(OLD.data(), pView, OLD.size())); // nobody wrote into the old file
    EXPECT_EQ(2, m_folder.CountFiles());
    ::UnmapViewOfFile(pView);
    EXPECT_EQ(1, Save(path));
    EXPECT_EQ(NEW, ReadBytes(path));
}

TEST_F(FileFaults, SaveToWhatIsNoFileNameFails)
{
    Write("old.qel", OLD);
    char szBefore[MAX_PATH];
    ::GetCurrentDirectoryA(sizeof szBefore, szBefore);
    ASSERT_TRUE(::SetCurrentDirectoryA(m_folder.Path(".").c_str()));
    for (const char* pszName : g_noFileNames) {
        SCOPED_TRACE(pszName);
        ExpectNotSaved(pszName);
        ExpectNotSaved(m_folder.Path(pszName));
    }
    for (const char* pszDevice : {"NUL", "CON", "nul", "\\\\.\\NUL", "COM9", "PRN"}) {
        SCOPED_TRACE(pszDevice);
        ExpectNotSaved(pszDevice);
    }
    ::SetCurrentDirectoryA(szBefore);
    ExpectSaves();
}

TEST_F(FileFaults, SaveToAPathThatIsTooLongFailsAndTheFilesBesideStay)
{
    Write("old.qel", OLD);
    for (const std::size_t nLength : {256U, 260U, 300U, 5000U, 40000U, 1000000U}) {
        ExpectNotSaved(m_folder.Path(std::string(nLength, 'n')));
        ExpectNotSaved(std::string(nLength, 'n') + "\\a.qel");
    }
    ExpectSaves();
}

TEST_F(FileFaults, SaveTakesEveryPathThatTheSystemTakes)
{
    // Up to 259 bytes, the most of a path in bytes; the wide open takes as many.
    const std::size_t nFolder = m_folder.Path("").size();
    for (std::size_t nLength = nFolder + 1; nLength < MAX_PATH; ++nLength) {
        const std::string path = m_folder.Path(std::string(nLength - nFolder, 'n'));
        ASSERT_TRUE(WriteBytes(path, OLD)) << nLength;
        EXPECT_EQ(1, Save(path)) << "a path of " << nLength << " bytes, which could be written";
        EXPECT_TRUE(NEW == ReadBytes(path)) << nLength;
        EXPECT_EQ(2, m_folder.CountFiles()) << nLength;
        EXPECT_TRUE(::DeleteFileA(path.c_str())) << nLength;
    }
}

TEST_F(FileFaults, SaveWorksAndFailsAlikeUnderChinesePaths)
{
    // "Pump station", "boiler"; the name of the second has a backslash as a second byte.
    const CSubFolder station(m_folder.Path("\xB1\xC3\xD5\xBE"));
    for (const char* pszName : {"\xB9\xF8\xC2\xAF.qel", "\x81\x5C.qel"}) {
        SCOPED_TRACE(pszName);
        const std::string path = station.Path(pszName);
        EXPECT_EQ(1, Save(path));
        EXPECT_EQ(NEW, ReadBytes(path));
        ASSERT_TRUE(WriteBytes(path, OLD));
        {
            const CHeldHere held(path, GENERIC_READ, FILE_SHARE_READ);
            ExpectNotSaved(path);
        }
        {
            const CHeldElsewhere held(path, GENERIC_READ, 0);
            ExpectNotSaved(path);
        }
        EXPECT_EQ(OLD, ReadBytes(path));
        ASSERT_TRUE(::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
        ExpectNotSaved(path);
        ExpectNotSaved(path + "\\" + pszName);
        ExpectNotSaved(m_folder.Path(std::string("\xC2\xAF\xB1\xC3\\") + pszName)); // no folder
        EXPECT_EQ(1, Open(path));
        ExpectDrawing("old");
        EXPECT_EQ(1, Open(m_folder.Path("new.qel")));
        ASSERT_TRUE(::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL));
        EXPECT_EQ(1, Save(path));
        EXPECT_EQ(NEW, ReadBytes(path));
        EXPECT_EQ(1, Open(path));
        ExpectDrawing("new");
        EXPECT_TRUE(::DeleteFileA(path.c_str()));
    }
    ExpectNotSaved(m_folder.Path("\xB1\xC3\xD5\xBE")); // the folder itself
}

TEST_F(FileFaults, SaveLeavesFilesBesideTheTargetAloneThatSomebodyHolds)
{
    // Names as a save gives to the file that it writes first.
    const std::string path = Write("old.qel", OLD);
    std::vector<std::unique_ptr<CHeldHere>> held;
    for (int n = 0; n <= 101; ++n) {
        char szName[32];
        std::snprintf(szName, sizeof szName, "old.qel.%02d~", n);
        const Listing before = ListOf(m_folder);
        EXPECT_EQ(1, Save(path)) << n << " names are taken";
        EXPECT_EQ(NEW, ReadBytes(path));
        Write("old.qel", OLD);
        EXPECT_EQ("", ListingDifference(before, ListOf(m_folder))) << n;
        const std::string name = Write(szName, "of somebody else " + std::to_string(n));
        held.push_back(std::make_unique<CHeldHere>(name, GENERIC_READ, FILE_SHARE_READ));
    }
}

TEST_F(FileFaults, SaveRemovesWhatAKilledOneLeftWhenItsProcessIsGone)
{
    const std::string path = Write("old.qel", OLD);
    const std::string other = Write("old.qel.bak~", OLD);
    const std::string beside = Write("old.qel.03~", HEAD);
    {
        const CHeldElsewhere held(beside, GENERIC_WRITE, FILE_SHARE_DELETE);
        EXPECT_EQ(1, Save(path));
        EXPECT_TRUE(Exists(beside));
    }
    EXPECT_EQ(1, Save(path));
    EXPECT_FALSE(Exists(beside));
    EXPECT_EQ(NEW, ReadBytes(path));
    EXPECT_EQ(OLD, ReadBytes(other));
    EXPECT_EQ(3, m_folder.CountFiles()); // the drawing that was opened is the third
}

TEST_F(FileFaults, ADrawingWhoseSaveFailedIsEditedFurtherAndSavedElsewhere)
{
    const std::string path = Write("old.qel", OLD);
    const CHeldHere held(path, GENERIC_READ, 0);
    for (int n = 0; n < 20; ++n) ExpectNotSaved(path);
    const HQELELEM hRect = QELGetFirstChild(m_h, QELGetRootElem(m_h));
    ASSERT_NE(nullptr, QELCopyElem(m_h, hRect));
    EXPECT_EQ(0, Save(path));
    ASSERT_EQ(1, QELSetElemId(m_h, hRect, "r"));
    ASSERT_EQ(1, Save(m_folder.Path("elsewhere.qel")));
    const std::string rect = " style=\"0x1\" bg=\"0xff\" crd=\"1 2 30 40\"/>\r\n";
    EXPECT_EQ(HEAD + "<qel id=\"new\">\r\n<rect id=\"r\"" + rect + "<rect" + rect + "</qel>\r\n" +
                  END,
              ReadBytes(m_folder.Path("elsewhere.qel")));
}

TEST_F(FileFaults, WhateverFailsLeavesNoFileOpen)
{
    const std::string path = Write("old.qel", OLD);
    const std::string empty = Write("empty.qel", "");
    const std::string bad = Write("bad.qel", "<qel>");
    const std::string readOnly = Write("readonly.qel", OLD);
    ASSERT_TRUE(::SetFileAttributesA(readOnly.c_str(), FILE_ATTRIBUTE_READONLY));
    uintptr_t nHandle = 0;
    for (int n = 0; n < 20; ++n) {
        EXPECT_EQ(1, Open(m_folder.Path("new.qel")));
        {
            const CHeldHere held(path, GENERIC_READ, FILE_SHARE_READ);
            EXPECT_EQ(0, Save(path));
            EXPECT_EQ(0, Save(readOnly));
            EXPECT_EQ(0, Save(m_folder.Path("none\\a.qel")));
            EXPECT_EQ(0, Save(m_folder.Path(".")));
            EXPECT_EQ(0, Save("NUL"));
            EXPECT_EQ(0, Open(path));
        }
        for (const std::string& name : {empty, bad, m_folder.Path("."), m_folder.Path("missing"),
                                        std::string("NUL"), std::string("Q:\\a")})
            EXPECT_EQ(0, Open(name));
        // The first time the system keeps a few things for itself.
        if (n == 0) nHandle = NextHandle();
        ASSERT_EQ(nHandle, NextHandle()) << n;
    }
}

// ---- opening ----

TEST_F(FileFaults, OpenOfWhatIsMissingEmptyOrNoFileFails)
{
    const CSubFolder folder(m_folder.Path("folder.qel"));
    Write("empty.qel", "");
    Write("blank.qel", " ");
    Write("zero.qel", END);
    for (const char* pszName :
         {"empty.qel", "blank.qel", "zero.qel", "missing.qel", "none\\new.qel", "folder.qel",
          "folder.qel\\", "new.qel\\new.qel", "new.qel\\"})
        ExpectNotOpened(m_folder.Path(pszName));
    for (const char* pszName : g_noFileNames) ExpectNotOpened(m_folder.Path(pszName));
    for (const char* pszName : {"", "NUL", "\\\\.\\NUL", "Q:\\a.qel"}) ExpectNotOpened(pszName);
}

TEST_F(FileFaults, OpenOfAPathThatIsTooLongFails)
{
    for (const std::size_t nLength : {256U, 300U, 5000U, 40000U, 1000000U}) {
        ExpectNotOpened(m_folder.Path(std::string(nLength, 'n')));
        ExpectNotOpened(std::string(nLength, 'n') + "\\new.qel");
    }
}

TEST_F(FileFaults, OpenWantsTheFileForItselfSoThatNobodyChangesItMeanwhile)
{
    const std::string path = Write("old.qel", OLD);
    std::vector<Holding> holdings(std::begin(g_notShared), std::end(g_notShared));
    holdings.insert(holdings.end(), std::begin(g_shared), std::end(g_shared));
    for (const Holding& holding : holdings) {
        SCOPED_TRACE("access " + std::to_string(holding.nAccess) + " share " +
                     std::to_string(holding.nShare));
        {
            const CHeldHere held(path, holding.nAccess, holding.nShare);
            ExpectNotOpened(path);
        }
        EXPECT_EQ(1, Open(path));
        ExpectDrawing("old");
        ExpectOpens();
    }
    EXPECT_EQ(OLD, ReadBytes(path));
}

TEST_F(FileFaults, OpenOfAFileThatAnotherProcessHoldsFailsUntilItIsLetGo)
{
    const std::string path = Write("old.qel", OLD);
    for (const Holding& holding :
         {Holding{GENERIC_READ, 0}, Holding{GENERIC_WRITE, FILE_SHARE_WRITE},
          Holding{GENERIC_WRITE, FILE_SHARE_READ}}) {
        {
            const CHeldElsewhere held(path, holding.nAccess, holding.nShare);
            ExpectNotOpened(path);
        }
        EXPECT_EQ(1, Open(path));
        ExpectDrawing("old");
        ExpectOpens();
    }
}

TEST_F(FileFaults, AnOpenThatFailedKeepsNoHoldOfTheFile)
{
    for (const char* pszText : {"", " ", "<qel>", "<qel", "no drawing", "<rect/>"}) {
        SCOPED_TRACE(pszText);
        const std::string path = Write("bad.qel", pszText);
        ExpectNotOpened(path);
        EXPECT_TRUE(::MoveFileA(path.c_str(), m_folder.Path("moved.qel").c_str()));
        EXPECT_TRUE(::DeleteFileA(m_folder.Path("moved.qel").c_str()));
    }
}

TEST_F(FileFaults, AFileThatIsTakenAwayOrReplacedAfterItWasOpenedIsNotMissed)
{
    const std::string path = m_folder.Path("new.qel");
    Write("new.qel", "something else");
    CTestBitmap drawn(50, 50);
    const RECT rc = drawn.Box();
    ASSERT_EQ(1, QELSetQELRect(m_h, &rc));
    EXPECT_EQ(1, QELDraw(m_h, drawn.Dc(), &rc, QEL_DRAW_FULL));
    EXPECT_EQ(RGB(255, 0, 0), drawn.At(10, 10));
    ASSERT_TRUE(::DeleteFileA(path.c_str()));
    EXPECT_EQ(1, Save(path));
    EXPECT_EQ(NEW, ReadBytes(path));
}

TEST_F(FileFaults, ShowOnlyHandlesShareWhatIsOpenEvenWhileTheFileIsHeldAndElseFail)
{
    const std::string path = Write("old.qel", OLD);
    QELShowOnly(1);
    const HQELENGINE hFirst = CreateQELEngine();
    const HQELENGINE hSecond = CreateQELEngine();
    QELShowOnly(0);
    {
        const CHeldElsewhere held(path, GENERIC_READ, 0);
        EXPECT_EQ(0, QELOpenFile(hFirst, path.c_str()));
        EXPECT_EQ(-1, QELGetType(hFirst)); // not even an engine
    }
    EXPECT_EQ(1, QELOpenFile(hFirst, path.c_str()));
    {
        const CHeldHere held(path, GENERIC_READ, 0);
        EXPECT_EQ(1, QELOpenFile(hSecond, path.c_str())); // it was read once for all
        EXPECT_STREQ("old", QELGetName(hSecond));
        EXPECT_EQ(0, QELSaveFile(hSecond, m_folder.Path("never.qel").c_str()));
        EXPECT_EQ(0, QELOpenFile(hSecond, m_folder.Path("missing.qel").c_str()));
        EXPECT_EQ(-1, QELGetType(hSecond));
        EXPECT_STREQ("old", QELGetName(hFirst)); // the other share is not touched
        EXPECT_EQ(1, QELCloseFile(hFirst));
        EXPECT_EQ(0, QELOpenFile(hFirst, path.c_str())); // nobody has it any more
    }
    EXPECT_EQ(1, QELOpenFile(hSecond, path.c_str()));
    EXPECT_EQ(1, DestroyQELEngine(hFirst));
    EXPECT_STREQ("old", QELGetName(hSecond));
    EXPECT_EQ(1, DestroyQELEngine(hSecond));
    EXPECT_EQ(2, m_folder.CountFiles());
}
