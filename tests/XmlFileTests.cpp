// Loading and saving files, with files and folders that refuse, reads and writes that stall, and
// memory that fails at each step in turn. The code is xml/XmlParser.cpp, xml/XmlWriter.cpp and
// xml/XmlFile.cpp.
#include "tests/support/Files.h"
#include "tests/support/XmlDump.h"
#include "tools/ImportTable.h"
#include "xml/XmlFile.h"
#include "xml/XmlTree.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

class CXml { // a context that goes with the test
public:
    CXml() : m_pXml(XmlCreate()) {}
    explicit CXml(std::string text) : CXml() { EXPECT_EQ(0, XmlParseText(m_pXml, text.data())); }
    ~CXml() { XmlDestroy(m_pXml); }
    CXml(const CXml&) = delete;
    CXml& operator=(const CXml&) = delete;
    operator XmlContext*() const { return m_pXml; }
    XmlContext* operator->() const { return m_pXml; }
    [[nodiscard]] std::string Tree() const { return Dump(m_pXml->pRoot); }

private:
    XmlContext* m_pXml;
};

class COpenFile {
public:
    COpenFile(const std::string& path, DWORD nAccess, DWORD nShare)
        : m_h(::CreateFileA(path.c_str(), nAccess, nShare, nullptr, OPEN_EXISTING, 0, nullptr))
    {
    }
    ~COpenFile()
    {
        if (IsOpen()) ::CloseHandle(m_h);
    }
    COpenFile(const COpenFile&) = delete;
    COpenFile& operator=(const COpenFile&) = delete;
    [[nodiscard]] bool IsOpen() const { return m_h != INVALID_HANDLE_VALUE; }

private:
    HANDLE m_h;
};

// Puts another function in the place of one that this program imports, until it goes out of scope.
class CImportHook {
public:
    CImportHook(const char* pszName, void* pNew)
        : m_pEntry(FindImport(::GetModuleHandleA(nullptr), pszName))
    {
        if (!m_pEntry) return;
        m_nOld = *m_pEntry;
        SetImport(m_pEntry, reinterpret_cast<ULONG_PTR>(pNew));
    }
    ~CImportHook()
    {
        if (m_pEntry) SetImport(m_pEntry, m_nOld);
    }
    CImportHook(const CImportHook&) = delete;
    CImportHook& operator=(const CImportHook&) = delete;
    [[nodiscard]] bool IsSet() const { return m_pEntry != nullptr; }
    template <class Fn>
    Fn* Original() const
    {
        return reinterpret_cast<Fn*>(m_nOld);
    }

private:
    ULONG_PTR* m_pEntry;
    ULONG_PTR m_nOld = 0;
};

// What the disk does while it is slow: each call that moves bytes comes after some that move none.
struct SlowDisk {
    using ReadFn = BOOL WINAPI(HANDLE, LPVOID, DWORD, LPDWORD, LPOVERLAPPED);
    using WriteFn = BOOL WINAPI(HANDLE, LPCVOID, DWORD, LPDWORD, LPOVERLAPPED);
    inline static ReadFn* s_pfnRead;
    inline static WriteFn* s_pfnWrite;
    inline static int s_nStalls;     // before each call that moves bytes; less than 0: for ever
    inline static DWORD s_nMost;     // bytes moved by such a call
    inline static BOOL s_bStallCode; // what a stalled call answers
    inline static int s_nStalled;    // so far, in a row
    inline static int s_nCalls;

    static bool Stall(DWORD* pnMoved)
    {
        ++s_nCalls;
        if (s_nStalls >= 0 && s_nStalled == s_nStalls) {
            s_nStalled = 0;
            return false;
        }
        ++s_nStalled;
        if (pnMoved) *pnMoved = 0;
        return true;
    }
    static BOOL WINAPI Read(HANDLE h, LPVOID p, DWORD n, LPDWORD pnMoved, LPOVERLAPPED pOver)
    {
        return Stall(pnMoved) ? s_bStallCode
                              : s_pfnRead(h, p, n < s_nMost ? n : s_nMost, pnMoved, pOver);
    }
    static BOOL WINAPI Write(HANDLE h, LPCVOID p, DWORD n, LPDWORD pnMoved, LPOVERLAPPED pOver)
    {
        return Stall(pnMoved) ? s_bStallCode
                              : s_pfnWrite(h, p, n < s_nMost ? n : s_nMost, pnMoved, pOver);
    }
};

int Slowly(int nStalls, DWORD nMost, BOOL bStallCode, const std::function<int()>& run)
{
    const CImportHook read("ReadFile", reinterpret_cast<void*>(&SlowDisk::Read));
    const CImportHook write("WriteFile", reinterpret_cast<void*>(&SlowDisk::Write));
    EXPECT_TRUE(read.IsSet() && write.IsSet());
    SlowDisk::s_pfnRead = read.Original<SlowDisk::ReadFn>();
    SlowDisk::s_pfnWrite = write.Original<SlowDisk::WriteFn>();
    SlowDisk::s_nStalls = nStalls;
    SlowDisk::s_nMost = nMost;
    SlowDisk::s_bStallCode = bStallCode;
    SlowDisk::s_nStalled = 0;
    SlowDisk::s_nCalls = 0;
    return run();
}

// Whether a file that is to be renamed is open to somebody who wants it for himself.
struct MoveWatch {
    using MoveFn = BOOL WINAPI(LPCSTR, LPCSTR, DWORD);
    inline static MoveFn* s_pfnMove;
    inline static int s_nSeen;

    static BOOL WINAPI Move(LPCSTR pszFrom, LPCSTR pszTo, DWORD nFlags)
    {
        ++s_nSeen;
        const COpenFile other(pszFrom, DELETE, 0);
        EXPECT_FALSE(other.IsOpen());
        EXPECT_EQ(DWORD{ERROR_SHARING_VIOLATION}, ::GetLastError());
        return s_pfnMove(pszFrom, pszTo, nFlags);
    }
};

// Memory that fails at the n-th request, and the count of what was not given back.
struct FailingMemory {
    inline static void* (*s_pfnMalloc)(std::size_t);
    inline static void* (*s_pfnCalloc)(std::size_t, std::size_t);
    inline static void* (*s_pfnRealloc)(void*, std::size_t);
    inline static void (*s_pfnFree)(void*);
    inline static int s_nUntilFailure;
    inline static bool s_bFailed;
    inline static int s_nHeld;

    static bool Fail()
    {
        const bool bNow = --s_nUntilFailure == 0;
        s_bFailed = s_bFailed || bNow;
        return bNow;
    }
    static void* Malloc(std::size_t n)
    {
        void* p = Fail() ? nullptr : s_pfnMalloc(n);
        s_nHeld += p != nullptr;
        return p;
    }
    static void* Calloc(std::size_t n, std::size_t nSize)
    {
        void* p = Fail() ? nullptr : s_pfnCalloc(n, nSize);
        s_nHeld += p != nullptr;
        return p;
    }
    static void* Realloc(void* pOld, std::size_t n)
    {
        if (Fail()) return nullptr;
        void* p = s_pfnRealloc(pOld, n);
        s_nHeld += !pOld && p;
        return p;
    }
    static void Free(void* p)
    {
        s_nHeld -= p != nullptr;
        s_pfnFree(p);
    }

    // Runs with the n-th request failing; false when there was none so late.
    template <class Run>
    static bool At(int nRequest, Run run)
    {
        const CImportHook mallocHook("malloc", reinterpret_cast<void*>(&Malloc));
        const CImportHook callocHook("calloc", reinterpret_cast<void*>(&Calloc));
        const CImportHook reallocHook("realloc", reinterpret_cast<void*>(&Realloc));
        const CImportHook freeHook("free", reinterpret_cast<void*>(&Free));
        s_pfnMalloc = mallocHook.Original<void*(std::size_t)>();
        s_pfnCalloc = callocHook.Original<void*(std::size_t, std::size_t)>();
        s_pfnRealloc = reallocHook.Original<void*(void*, std::size_t)>();
        s_pfnFree = freeHook.Original<void(void*)>();
        s_nUntilFailure = nRequest;
        s_bFailed = false;
        s_nHeld = 0;
        run();
        return s_bFailed;
    }
};

const char OLD[] = "what stood there before, longer than the new drawing";
const char NEW[] = "<?xml ?>\r\n<a x=\"1\">t</a>\r\n"; // sizeof counts its ending zero, as files do
const std::string g_saved(NEW, sizeof NEW);

} // namespace

TEST(XmlLoad, ReadsAFileAndLetsItGo)
{
    const CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    ASSERT_TRUE(WriteBytes(path, "<?xml version='1.0'?><a x='1'><b>t</b></a>"));
    const CXml xml;
    EXPECT_EQ(0, XmlLoadFile(xml, path.c_str()));
    EXPECT_EQ("a[x=1](b{t})", xml.Tree());
    EXPECT_EQ(0, xml->nLastError);
    EXPECT_TRUE(COpenFile(path, GENERIC_READ | GENERIC_WRITE, 0).IsOpen()); // nobody holds it
}

TEST(XmlLoad, AMissingFileIsError3)
{
    const CTestFolder folder;
    for (const std::string& path :
         {folder.Path("none.qel"), folder.Path("none\\a.qel"), folder.Path("."), std::string("")}) {
        const CXml xml;
        EXPECT_EQ(1, XmlLoadFile(xml, path.c_str())) << path;
        EXPECT_EQ(XML_ERR_OPEN, xml->nLastError) << path;
        EXPECT_EQ("?", xml.Tree());
    }
}

TEST(XmlLoad, AFileThatSomebodyHasOpenIsError3)
{
    const CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    ASSERT_TRUE(WriteBytes(path, "<a/>"));
    const COpenFile held(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    ASSERT_TRUE(held.IsOpen());
    const CXml xml; // the file is opened without sharing, so even a reader is in the way
    EXPECT_EQ(1, XmlLoadFile(xml, path.c_str()));
    EXPECT_EQ(XML_ERR_OPEN, xml->nLastError);
}

TEST(XmlLoad, RefusesNoContextAndNoPath)
{
    const CTestFolder folder;
    EXPECT_EQ(1, XmlLoadFile(nullptr, folder.Path("a.qel").c_str()));
    const CXml xml;
    EXPECT_EQ(1, XmlLoadFile(xml, nullptr));
    EXPECT_NE(0, xml->nLastError);
    EXPECT_EQ("?", xml.Tree());
}

TEST(XmlLoad, AnEmptyFileFailsWithoutACode)
{
    const CTestFolder folder;
    ASSERT_TRUE(WriteBytes(folder.Path("a.qel"), ""));
    const CXml xml;
    EXPECT_EQ(1, XmlLoadFile(xml, folder.Path("a.qel").c_str()));
    EXPECT_EQ(0, xml->nLastError);
    EXPECT_EQ("?", xml.Tree());
    EXPECT_TRUE(COpenFile(folder.Path("a.qel"), GENERIC_WRITE, 0).IsOpen());
}

TEST(XmlLoad, ReadingStopsAtTheFirstZero)
{
    const CTestFolder folder;
    const struct {
        std::string bytes;
        const char* pszTree;
        int nCode;
    } rows[] = {
        {std::string("<a/>\0", 5), "a", 0},
        {std::string("<a/>\0<b/>", 9), "a", 0},
        {std::string("<a>\0</a>", 8), "a", XML_ERR_END_CONTENT},
        {std::string("\0<a/>", 5), "?", XML_ERR_EMPTY},
        {std::string("\0", 1), "?", XML_ERR_EMPTY},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(WriteBytes(folder.Path("a.qel"), row.bytes));
        const CXml xml;
        EXPECT_EQ(row.nCode != 0, XmlLoadFile(xml, folder.Path("a.qel").c_str()));
        EXPECT_EQ(row.nCode, xml->nLastError);
        EXPECT_EQ(row.pszTree, xml.Tree());
    }
}

TEST(XmlLoad, AFileCutAtAnyByteFailsUntilItsRootIsClosed)
{
    const CTestFolder folder;
    const std::string whole = "<a x='1'>t&lt;<b/></a>"; // no zero at its end, like other editors
    for (std::size_t n = 2; n <= whole.size(); ++n) {
        ASSERT_TRUE(WriteBytes(folder.Path("a.qel"), whole.substr(0, n)));
        const CXml xml;
        EXPECT_EQ(n < whole.size(), XmlLoadFile(xml, folder.Path("a.qel").c_str())) << n;
        EXPECT_EQ(n < whole.size(), xml->nLastError != 0) << n;
    }
}

TEST(XmlLoad, ShortReadsAreContinued)
{
    const CTestFolder folder;
    ASSERT_TRUE(WriteBytes(folder.Path("a.qel"), "<a x='1'><b>t</b></a>"));
    for (const BOOL bStallCode : {TRUE, FALSE}) {
        const CXml xml; // three bytes at a time, after 15 calls each that move none
        EXPECT_EQ(0, Slowly(15, 3, bStallCode,
                            [&] { return XmlLoadFile(xml, folder.Path("a.qel").c_str()); }));
        EXPECT_EQ("a[x=1](b{t})", xml.Tree());
        EXPECT_EQ(7 * 16, SlowDisk::s_nCalls); // 21 bytes
    }
}

TEST(XmlLoad, AReadThatStallsIsGivenUpAfter16Tries)
{
    const CTestFolder folder;
    ASSERT_TRUE(WriteBytes(folder.Path("a.qel"), "<a/>"));
    for (const BOOL bStallCode : {TRUE, FALSE}) {
        const CXml xml;
        EXPECT_EQ(1, Slowly(-1, 3, bStallCode,
                            [&] { return XmlLoadFile(xml, folder.Path("a.qel").c_str()); }));
        EXPECT_EQ(16, SlowDisk::s_nCalls);
        EXPECT_EQ("?", xml.Tree());
        EXPECT_TRUE(COpenFile(folder.Path("a.qel"), GENERIC_WRITE, 0).IsOpen()); // let go
    }
}

TEST(XmlSave, WritesTheDocumentAndItsEndingZero)
{
    const CTestFolder folder;
    const CXml xml("<a x='1'>t</a>");
    EXPECT_EQ(0, XmlSaveFile(xml, folder.Path("a.qel").c_str()));
    EXPECT_EQ(0, xml->nLastError);
    EXPECT_EQ(g_saved, ReadBytes(folder.Path("a.qel")));
    EXPECT_EQ('\0', ReadBytes(folder.Path("a.qel")).back());
    EXPECT_EQ(1, folder.CountFiles());
    EXPECT_TRUE(COpenFile(folder.Path("a.qel"), GENERIC_WRITE, 0).IsOpen());
    const CXml back;
    EXPECT_EQ(0, XmlLoadFile(back, folder.Path("a.qel").c_str()));
    EXPECT_EQ("a[x=1]{t}", back.Tree());
}

TEST(XmlSave, RefusesNoContextAndNoPath)
{
    const CTestFolder folder;
    EXPECT_EQ(1, XmlSaveFile(nullptr, folder.Path("a.qel").c_str()));
    const CXml xml("<a/>");
    EXPECT_EQ(1, XmlSaveFile(xml, nullptr));
    EXPECT_EQ(0, folder.CountFiles());
}

TEST(XmlSave, AnOlderFileIsReplacedWhole)
{
    const CTestFolder folder;
    ASSERT_TRUE(WriteBytes(folder.Path("a.qel"), OLD));
    const CXml xml("<a x='1'>t</a>");
    EXPECT_EQ(0, XmlSaveFile(xml, folder.Path("a.qel").c_str()));
    EXPECT_EQ(g_saved, ReadBytes(folder.Path("a.qel"))); // no tail of the longer one
    EXPECT_EQ(0, XmlSaveFile(xml, folder.Path("a.qel").c_str()));
    EXPECT_EQ(g_saved, ReadBytes(folder.Path("a.qel")));
    EXPECT_EQ(1, folder.CountFiles());
}

TEST(XmlSave, TheFileThatWasLoadedCanBeSavedOver)
{
    const CTestFolder folder;
    ASSERT_TRUE(WriteBytes(folder.Path("a.qel"), "<a x='1'>t</a>"));
    const CXml xml;
    ASSERT_EQ(0, XmlLoadFile(xml, folder.Path("a.qel").c_str()));
    EXPECT_EQ(0, XmlSaveFile(xml, folder.Path("a.qel").c_str()));
    EXPECT_EQ(g_saved, ReadBytes(folder.Path("a.qel")));
}

TEST(XmlSave, OtherFilesInTheFolderAreLeftAlone)
{
    const CTestFolder folder;
    const char* const NAMES[] = {"a.tmp",  "a.qel.tmp", "a.qel.bak", "a.bak",
                                 "a.qel~", "~a.qel",    "a.qel.new", "a.qe"};
    for (const char* pszName : NAMES) ASSERT_TRUE(WriteBytes(folder.Path(pszName), pszName));
    const CXml xml("<a x='1'>t</a>");
    EXPECT_EQ(0, XmlSaveFile(xml, folder.Path("a.qel").c_str()));
    for (const char* pszName : NAMES) EXPECT_EQ(pszName, ReadBytes(folder.Path(pszName)));
    EXPECT_EQ(g_saved, ReadBytes(folder.Path("a.qel")));
    EXPECT_EQ(static_cast<int>(std::size(NAMES)) + 1, folder.CountFiles());
}

TEST(XmlSave, ANameBesideTheTargetThatSomebodyHoldsIsNotOverwritten)
{
    const CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    const CXml xml("<a x='1'>t</a>");
    const struct {
        const char* pszName;
        DWORD nAccess;
        DWORD nShare;
    } rows[] = {
        {"a.qel.00~", GENERIC_WRITE, 0},
        {"a.qel.01~", GENERIC_WRITE, FILE_SHARE_DELETE}, // as a save of now holds its own
        {"a.qel.02~", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE}};
    std::vector<std::unique_ptr<COpenFile>> held;
    for (const auto& row : rows) {
        ASSERT_TRUE(WriteBytes(folder.Path(row.pszName), OLD));
        held.push_back(
            std::make_unique<COpenFile>(folder.Path(row.pszName), row.nAccess, row.nShare));
        ASSERT_TRUE(held.back()->IsOpen()) << row.pszName;
    }
    ASSERT_TRUE(WriteBytes(path, OLD));
    EXPECT_EQ(0, XmlSaveFile(xml, path.c_str()));
    held.clear();
    EXPECT_EQ(g_saved, ReadBytes(path));
    for (const auto& row : rows) EXPECT_EQ(OLD, ReadBytes(folder.Path(row.pszName)));
    EXPECT_EQ(4, folder.CountFiles());
    EXPECT_EQ(0, XmlSaveFile(xml, path.c_str())); // now nobody holds them
    EXPECT_EQ(1, folder.CountFiles());
}

TEST(XmlSave, ANameIsFoundAndLeftoversAreRemovedHoweverManyThereAre)
{
    const CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    const CXml xml("<a x='1'>t</a>");
    for (int n = 0; n < 150; ++n)
        ASSERT_TRUE(WriteBytes(
            folder.Path("a.qel." + std::string(n < 10 ? "0" : "") + std::to_string(n) + "~"),
            "<?xml"));
    EXPECT_EQ(0, XmlSaveFile(xml, path.c_str()));
    EXPECT_EQ(g_saved, ReadBytes(path));
    EXPECT_EQ(1, folder.CountFiles());
}

TEST(XmlSave, LeftoversAreRemovedWithinTheLimitOfPathLengths)
{
    const CTestFolder folder;
    const CXml xml("<a x='1'>t</a>");
    for (std::size_t n = 250; n < MAX_PATH; ++n) {
        const std::size_t nFolder = folder.Path("").size();
        const std::string name(n - nFolder, 'x');
        const bool bFits = n + 4 < MAX_PATH;
        const std::string leftover = folder.Path((bFits ? name : "") + ".17~");
        ASSERT_TRUE(WriteBytes(leftover, OLD)) << n;
        EXPECT_EQ(0, XmlSaveFile(xml, folder.Path(name).c_str())) << n;
        EXPECT_EQ(g_saved, ReadBytes(folder.Path(name))) << n;
        EXPECT_EQ(1, folder.CountFiles()) << n;
        ASSERT_TRUE(::DeleteFileA(folder.Path(name).c_str()));
    }
}

// Another process may look for leftovers at any moment of a save.
TEST(XmlSave, ItsFileIsHeldFromItsCreationUntilItHasItsName)
{
    const CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    const CXml xml("<a x='1'>t</a>");
    MoveWatch::s_nSeen = 0;
    const CImportHook hook("MoveFileExA", reinterpret_cast<void*>(&MoveWatch::Move));
    ASSERT_TRUE(hook.IsSet());
    MoveWatch::s_pfnMove = hook.Original<MoveWatch::MoveFn>();
    EXPECT_EQ(0, XmlSaveFile(xml, path.c_str()));
    EXPECT_EQ(1, MoveWatch::s_nSeen);
    EXPECT_EQ(g_saved, ReadBytes(path));
    EXPECT_EQ(1, folder.CountFiles());
}

TEST(XmlSave, TakesBareDottedAndSlashedPaths)
{
    const CTestFolder folder;
    const CXml xml("<a x='1'>t</a>");
    char szBefore[MAX_PATH];
    ASSERT_NE(0U, ::GetCurrentDirectoryA(MAX_PATH, szBefore));
    ASSERT_TRUE(::SetCurrentDirectoryA(folder.Path("").c_str()));
    const int nBare = XmlSaveFile(xml, "bare.qel"); // no folder in the name: beside is here
    const int nDot = XmlSaveFile(xml, ".\\dot.qel");
    const int nNone = XmlSaveFile(xml, "no extension");
    ::SetCurrentDirectoryA(szBefore);
    EXPECT_EQ(0, nBare);
    EXPECT_EQ(0, nDot);
    EXPECT_EQ(0, nNone);
    std::string slashes = folder.Path("slash.qel");
    for (char& c : slashes)
        if (c == '\\') c = '/';
    EXPECT_EQ(0, XmlSaveFile(xml, slashes.c_str()));
    for (const char* pszName : {"bare.qel", "dot.qel", "no extension", "slash.qel"})
        EXPECT_EQ(g_saved, ReadBytes(folder.Path(pszName))) << pszName;
    EXPECT_EQ(4, folder.CountFiles());
}

TEST(XmlSave, AMissingFolderIsError25)
{
    const CTestFolder folder;
    const CXml xml("<a/>");
    EXPECT_EQ(1, XmlSaveFile(xml, folder.Path("none\\a.qel").c_str()));
    EXPECT_EQ(XML_ERR_CREATE, xml->nLastError);
    EXPECT_EQ(1, XmlSaveFile(xml, ""));
    EXPECT_EQ(XML_ERR_CREATE, xml->nLastError);
    EXPECT_EQ(0, folder.CountFiles());
}

TEST(XmlSave, AFolderInThePlaceOfTheFileIsError25)
{
    const CTestFolder folder;
    ASSERT_TRUE(::CreateDirectoryA(folder.Path("a.qel").c_str(), nullptr));
    const CXml xml("<a/>");
    EXPECT_EQ(1, XmlSaveFile(xml, folder.Path("a.qel").c_str()));
    EXPECT_EQ(XML_ERR_CREATE, xml->nLastError);
    // Only an empty folder can be removed: so nothing was put into it, and it stands yet.
    EXPECT_TRUE(::RemoveDirectoryA(folder.Path("a.qel").c_str()));
    EXPECT_EQ(0, folder.CountFiles());
}

TEST(XmlSave, AReadOnlyFileIsError25AndStays)
{
    const CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    ASSERT_TRUE(WriteBytes(path, OLD));
    ASSERT_TRUE(::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    const CXml xml("<a x='1'>t</a>");
    EXPECT_EQ(1, XmlSaveFile(xml, path.c_str()));
    EXPECT_EQ(XML_ERR_CREATE, xml->nLastError);
    EXPECT_EQ(OLD, ReadBytes(path));
    EXPECT_NE(0U, ::GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(1, folder.CountFiles());
    ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(XmlSave, AFileThatSomebodyHasOpenIsError25AndStays)
{
    const CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    const CXml xml("<a x='1'>t</a>");
    ASSERT_TRUE(WriteBytes(path, OLD));
    const struct {
        DWORD nAccess;
        DWORD nShare;
    } rows[] = {{GENERIC_READ, 0},
                {GENERIC_READ, FILE_SHARE_READ},
                {GENERIC_READ | GENERIC_WRITE, 0},
                {GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE}};
    for (const auto& row : rows) {
        {
            const COpenFile held(path, row.nAccess, row.nShare);
            ASSERT_TRUE(held.IsOpen());
            EXPECT_EQ(1, XmlSaveFile(xml, path.c_str())) << row.nShare;
            EXPECT_EQ(XML_ERR_CREATE, xml->nLastError) << row.nShare;
        }
        EXPECT_EQ(OLD, ReadBytes(path)) << row.nShare;
        EXPECT_EQ(1, folder.CountFiles()) << row.nShare;
    }
    EXPECT_EQ(0, XmlSaveFile(xml, path.c_str())); // and when it is let go
    EXPECT_EQ(g_saved, ReadBytes(path));
}

TEST(XmlSave, ShortWritesAreContinued)
{
    const CTestFolder folder;
    const CXml xml("<a x='1'>t</a>");
    for (const BOOL bStallCode : {TRUE, FALSE}) {
        ASSERT_TRUE(WriteBytes(folder.Path("a.qel"), OLD));
        EXPECT_EQ(0, Slowly(15, 4, bStallCode,
                            [&] { return XmlSaveFile(xml, folder.Path("a.qel").c_str()); }));
        EXPECT_EQ(g_saved, ReadBytes(folder.Path("a.qel")));
    }
}

TEST(XmlSave, AWriteThatStallsIsGivenUpAfter16TriesAndTheOldFileStays)
{
    const CTestFolder folder;
    const CXml xml("<a x='1'>t</a>");
    for (const BOOL bStallCode : {TRUE, FALSE}) {
        ASSERT_TRUE(WriteBytes(folder.Path("a.qel"), OLD));
        EXPECT_EQ(1, Slowly(-1, 4, bStallCode,
                            [&] { return XmlSaveFile(xml, folder.Path("a.qel").c_str()); }));
        EXPECT_EQ(XML_ERR_CREATE, xml->nLastError);
        EXPECT_EQ(16, SlowDisk::s_nCalls);
        EXPECT_EQ(OLD, ReadBytes(folder.Path("a.qel")));
        EXPECT_EQ(1, folder.CountFiles());
        EXPECT_EQ(1, Slowly(-1, 4, bStallCode,
                            [&] { return XmlSaveFile(xml, folder.Path("new.qel").c_str()); }));
        EXPECT_FALSE(Exists(folder.Path("new.qel")));
        EXPECT_EQ(1, folder.CountFiles());
    }
}

// A file's text is searched some bytes at a time, another text byte by byte.
TEST(XmlFile, ItsTextIsReadAsAnyOtherTextIs)
{
    const CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    std::mt19937 random(7);
    const auto below = [&](unsigned n) { return random() % n; };
    const char* pieces[] = {" ",  " ",  "1",  "ab", "&amp;",   "&#x41;",
                            "\n", "\r", "\t", "'",  "\x88\x89"};
    for (int nRound = 0; nRound < 2000; ++nRound) {
        std::string text = "<a>";
        for (unsigned n = below(4); n; --n) {
            text += "<b x=\"";
            for (unsigned nLeft = below(40); nLeft; --nLeft)
                text += below(3) ? "0" : pieces[below(std::size(pieces))];
            text += "\" yy='" + std::string(below(20), ' ') + "\"'/>";
        }
        text += "</a>";
        if (below(4) == 0) text.resize(below(static_cast<unsigned>(text.size())) + 1); // cut off
        ASSERT_TRUE(WriteBytes(path, text));
        const CXml file;
        const CXml other;
        EXPECT_EQ(XmlLoadFile(file, path.c_str()), XmlParseText(other, text.data())) << nRound;
        EXPECT_EQ(other->nLastError, file->nLastError) << nRound;
        EXPECT_EQ(other->nLine, file->nLine) << nRound;
        EXPECT_EQ(other->nColumn, file->nColumn) << nRound;
        EXPECT_EQ(other.Tree(), file.Tree()) << nRound;
    }
}

TEST(XmlFile, WithoutCommitTheOldFileStaysAlone)
{
    const CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    ASSERT_TRUE(WriteBytes(path, OLD));
    {
        CXmlFile file;
        ASSERT_EQ(XML_OK, file.Open(path.c_str()));
        file.Put("new");
        EXPECT_EQ(2, folder.CountFiles());
    }
    EXPECT_EQ(OLD, ReadBytes(path));
    EXPECT_EQ(1, folder.CountFiles());
}

TEST(XmlFile, PiecesOfAnySizeAreWrittenInTheirOrder)
{
    const CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    CXmlFile file;
    ASSERT_EQ(XML_OK, file.Open(path.c_str()));
    std::string expected;
    std::size_t nSize = 0;
    for (const std::size_t n : {0,  1,  2,    3,     4,     5,     6,     7,      8, 9,     15,
                                16, 17, 1000, 65535, 65536, 65537, 70000, 200000, 3, 65530, 13}) {
        std::string piece(n, static_cast<char>('a' + nSize++ % 26));
        for (std::size_t i = 0; i < n; i += 7) piece[i] = static_cast<char>('0' + i % 10);
        file.Put(piece.data(), n);
        expected += piece;
    }
    EXPECT_TRUE(file.Commit());
    EXPECT_EQ(expected, ReadBytes(path));
    EXPECT_EQ(1, folder.CountFiles());
}

TEST(XmlMemory, LoadingFailsCleanlyAtEachRequest)
{
    // Large enough for several chunks of the arena.
    std::string tree = "<a x=\"1\">t";
    for (int n = 0; n < 500; ++n) tree += "<b y=\"2\" z=\"" + std::to_string(n) + "\"/>\r\n";
    tree += "</a>\r\n";
    const CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    ASSERT_TRUE(WriteBytes(path, "<?xml version='1.0' encoding='e'?>" + tree));
    std::vector<char> text(tree.size() + 100);
    int nRequests = 0;
    for (bool bFailed = true; bFailed && nRequests < 1000;) {
        ++nRequests;
        int nResult = -1;
        int nCode = -1;
        bool bMade = false;
        bFailed = FailingMemory::At(nRequests, [&] {
            XmlContext* pXml = XmlCreate();
            bMade = pXml != nullptr;
            if (!bMade) return;
            nResult = XmlLoadFile(pXml, path.c_str());
            nCode = pXml->nLastError;
            if (nCode == 0) XmlSerialize(pXml, text.data()); // into no memory of its own
            XmlDestroy(pXml);
        });
        EXPECT_EQ(0, FailingMemory::s_nHeld) << "request " << nRequests; // all was given back
        if (!bMade) continue;
        EXPECT_TRUE(nCode == 0 || nCode == 1 || nCode == 2 || nCode == 16) << nCode;
        EXPECT_EQ(nCode != 0, nResult == 1) << "request " << nRequests;
        if (nCode == 0) { // a load that tells of no failure has lost nothing
            EXPECT_EQ("<?xml version=\"1.0\" encoding=\"e\" ?>\r\n" + tree, text.data())
                << "request " << nRequests;
        }
        EXPECT_TRUE(COpenFile(path, GENERIC_WRITE, 0).IsOpen()) << "request " << nRequests;
    }
    EXPECT_GT(nRequests, 5); // the context, the file and some chunks
}

TEST(XmlMemory, TheFilesOwnBufferIsError2)
{
    const CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    ASSERT_TRUE(WriteBytes(path, "<a/>" + std::string(10000, ' '))); // more than is at hand
    const CXml xml;
    int nResult = 0;
    ASSERT_TRUE(FailingMemory::At(1, [&] { nResult = XmlLoadFile(xml, path.c_str()); }));
    EXPECT_EQ(1, nResult);
    EXPECT_EQ(XML_ERR_MEMORY, xml->nLastError);
    EXPECT_EQ("?", xml.Tree());
}

TEST(XmlMemory, SavingFailsCleanlyAtEachRequest)
{
    const CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    const CXml xml("<a x='1'>t</a>");
    int nRequests = 0;
    for (bool bFailed = true; bFailed && nRequests < 100;) {
        ASSERT_TRUE(WriteBytes(path, OLD));
        int nResult = -1;
        bFailed = FailingMemory::At(++nRequests, [&] { nResult = XmlSaveFile(xml, path.c_str()); });
        EXPECT_EQ(bFailed ? 1 : 0, nResult) << "request " << nRequests;
        EXPECT_EQ(bFailed ? std::string(OLD) : g_saved, ReadBytes(path));
        EXPECT_EQ(1, folder.CountFiles());
        EXPECT_EQ(0, FailingMemory::s_nHeld) << "request " << nRequests;
    }
    EXPECT_GT(nRequests, 1);
}

TEST(XmlLoad, ATextLargerThanAnyMemoryIsNotLookedAt)
{
    CXml xml;
    XmlSource source;
    source.pBytes = "<QEL/>";
    source.nSize = SIZE_MAX;
    EXPECT_NE(0, XmlLoad(xml, source));
    EXPECT_EQ(XML_ERR_MEMORY, xml->nLastError);
}
