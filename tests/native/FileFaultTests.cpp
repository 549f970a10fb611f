// Files that fail. Whatever happens to the disk while a drawing is saved, the old or the new one is
// whole in its place; whatever happens while one is opened, the file stays as it is and the engine
// can be used.
#include "tests/native/AllocationFaults.h"
#include "tests/native/GdiDouble.h"
#include "tests/native/KernelDouble.h"
#include "tests/native/Life.h"
#include "tests/support/Wide.h"
#include "xml/WidePath.h"
#include "xml/XmlTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr int MOST_OPERATIONS = 1000;

std::string Bytes(const std::string& path)
{
    std::string bytes = "no file";
    kernel::GetFile(path, &bytes);
    return bytes;
}

// An engine that holds a drawing which differs from the saved one, and what it saves.
class CChangedDrawing {
public:
    CChangedDrawing()
    {
        EXPECT_TRUE(m_engine.Open());
        EXPECT_EQ(1, QELSetElemId(m_engine, ElementById(m_engine, "r1"), "changed"));
        EXPECT_NE(nullptr, QELCreateElem(m_engine, QEL_TYPE_METER, nullptr, nullptr));
        m_new = SavedBytes(m_engine);
        EXPECT_FALSE(m_new.empty());
        EXPECT_NE(m_new, Old());
    }
    operator HQELENGINE() const { return m_engine; }
    [[nodiscard]] const std::string& New() const { return m_new; }
    static std::string Old() { return EveryElement(); }

private:
    CTestEngine m_engine;
    std::string m_new;
};

// A save that failed left everything as it was, and the next one is done.
void ExpectUntouched(const CChangedDrawing& drawing)
{
    EXPECT_EQ(CChangedDrawing::Old(), Bytes(DRAWING_PATH));
    EXPECT_EQ(1U, kernel::FileNames().size()) << "a file was left beside the target";
    EXPECT_EQ(0, kernel::OpenHandles());
    kernel::SetFaults({});
    EXPECT_EQ(1, QELSaveFile(drawing, DRAWING_PATH)) << "a later try";
    EXPECT_EQ(drawing.New(), Bytes(DRAWING_PATH));
    EXPECT_EQ(1U, kernel::FileNames().size());
}

} // namespace

// ---- saving ----

TEST(FileFaults, ThePowerFailsAtAnyMomentOfASaveAndOneDrawingIsWhole)
{
    for (const bool bLoseUnflushed : {false, true})
        for (const DWORD nMostWritten : {0U, 500U}) {
            int nOld = 0;
            int nNew = 0;
            int k = 1;
            for (; k < MOST_OPERATIONS; ++k) {
                SCOPED_TRACE("operation " + std::to_string(k) + (bLoseUnflushed ? ", lost" : ""));
                kernel::FormatDisk();
                const CChangedDrawing drawing;
                kernel::Faults faults;
                faults.nStopAt = k;
                faults.nMostWritten = nMostWritten;
                kernel::SetFaults(faults);
                const int nResult = QELSaveFile(drawing, DRAWING_PATH);
                const bool bStopped = kernel::HasPowerFailed();
                EXPECT_EQ(bStopped ? 0 : 1, nResult);
                kernel::Restart(bLoseUnflushed);
                const std::string bytes = Bytes(DRAWING_PATH);
                EXPECT_TRUE(bytes == CChangedDrawing::Old() || bytes == drawing.New())
                    << bytes.size() << " bytes are neither";
                ++(bytes == drawing.New() ? nNew : nOld);
                CTestEngine reader; // and it opens
                EXPECT_EQ(1, QELOpenFile(reader, DRAWING_PATH));
                EXPECT_EQ(1, QELSaveFile(drawing, DRAWING_PATH)) << "after the restart";
                EXPECT_EQ(drawing.New(), Bytes(DRAWING_PATH));
                if (!bStopped) break;
            }
            EXPECT_LT(k, MOST_OPERATIONS);
            EXPECT_GT(nOld, 4); // the checks, the new file, its bytes, the flush
            EXPECT_GE(nNew, 1);
        }
}

// By a wide path, and by one so long that it has the prefix.
TEST(FileFaults, ThePowerFailsAtAnyMomentOfASaveByAWidePath)
{
    for (const wchar_t* pszPath : {L"C:\\temp\\drawing.qel", L"\\\\?\\C:\\temp\\drawing.qel"}) {
        int k = 1;
        for (; k < MOST_OPERATIONS; ++k) {
            SCOPED_TRACE("operation " + std::to_string(k));
            kernel::FormatDisk();
            const CChangedDrawing drawing; // what it saves was looked at, which is a save
            EXPECT_EQ(1, QELSetElemId(drawing, ElementById(drawing, "changed"), "changed"));
            kernel::Faults faults;
            faults.nStopAt = k;
            kernel::SetFaults(faults);
            const int nResult = QELSaveFileW(drawing, pszPath);
            const bool bStopped = kernel::HasPowerFailed();
            EXPECT_EQ(bStopped ? 0 : 1, nResult);
            EXPECT_EQ(bStopped ? 1 : 0, QELIsModified(drawing));
            kernel::Restart(true);
            const std::string bytes = Bytes(DRAWING_PATH);
            EXPECT_TRUE(bytes == CChangedDrawing::Old() || bytes == drawing.New());
            EXPECT_EQ(1, QELSaveFileW(drawing, pszPath)) << "after the restart";
            EXPECT_EQ(drawing.New(), Bytes(DRAWING_PATH));
            EXPECT_EQ(1U, kernel::FileNames().size()) << "what was left is removed";
            if (!bStopped) break;
        }
        EXPECT_GT(k, 4);
    }
}

TEST(FileFaults, AReadThatFailsIsToldWithTheSystemsNumber)
{
    ASSERT_TRUE(kernel::PutFile(DRAWING_PATH, EveryElement()));
    const CTestEngine engine;
    kernel::Faults faults;
    faults.nMostRead = 100;
    faults.nFailRead = 2;
    faults.nShrinkTo = 150; // what is left is not all
    kernel::SetFaults(faults);
    EXPECT_EQ(0, QELOpenFileW(engine, L"C:\\temp\\drawing.qel"));
    kernel::SetFaults({});
    QELERROR error{};
    error.nSize = sizeof error;
    EXPECT_EQ(1, QELGetError(engine, &error));
    EXPECT_EQ(QEL_ERROR_READ, error.nCode);
    EXPECT_EQ(DWORD{ERROR_CRC}, error.nSystem);
}

TEST(FileFaults, AFullDiskIsToldWithTheSystemsNumber)
{
    const CChangedDrawing drawing;
    EXPECT_EQ(1, QELSetElemId(drawing, ElementById(drawing, "changed"), "changed"));
    kernel::Faults faults;
    faults.nSpace = 10;
    kernel::SetFaults(faults);
    EXPECT_EQ(0, QELSaveFile(drawing, DRAWING_PATH));
    QELERROR error{};
    error.nSize = sizeof error;
    EXPECT_EQ(1, QELGetError(drawing, &error));
    EXPECT_EQ(QEL_ERROR_WRITE, error.nCode);
    EXPECT_EQ(DWORD{ERROR_DISK_FULL}, error.nSystem);
    EXPECT_EQ(1, QELIsModified(drawing));
    ExpectUntouched(drawing);
}

TEST(FileFaults, ThePowerFailsAtAnyMomentOfTheFirstSave)
{
    for (const bool bLoseUnflushed : {false, true})
        for (int k = 1; k < MOST_OPERATIONS; ++k) {
            SCOPED_TRACE("operation " + std::to_string(k));
            kernel::FormatDisk();
            const CChangedDrawing drawing;
            kernel::Faults faults;
            faults.nStopAt = k;
            kernel::SetFaults(faults);
            QELSaveFile(drawing, OTHER_PATH);
            const bool bStopped = kernel::HasPowerFailed();
            kernel::Restart(bLoseUnflushed);
            const std::string bytes = Bytes(OTHER_PATH);
            EXPECT_TRUE(bytes == "no file" || bytes == drawing.New()) << bytes.size() << " bytes";
            EXPECT_EQ(CChangedDrawing::Old(), Bytes(DRAWING_PATH));
            if (!bStopped) break;
        }
}

TEST(FileFaults, TheDiskIsFullAfterAnyNumberOfBytes)
{
    std::size_t nSize = 0;
    {
        const CChangedDrawing drawing;
        nSize = drawing.New().size();
    }
    for (std::size_t n = 0; n < nSize; n += n < 20 || n + 20 > nSize ? 1 : 97) {
        SCOPED_TRACE("after " + std::to_string(n));
        kernel::FormatDisk();
        const CChangedDrawing drawing;
        kernel::Faults faults;
        faults.nSpace = static_cast<int64_t>(n);
        kernel::SetFaults(faults);
        EXPECT_EQ(0, QELSaveFile(drawing, DRAWING_PATH));
        ExpectUntouched(drawing);
    }
}

TEST(FileFaults, WritesThatTakeLessAreContinued)
{
    for (const DWORD nMost : {1U, 7U, 1000U}) {
        SCOPED_TRACE(nMost);
        kernel::FormatDisk();
        const CChangedDrawing drawing;
        kernel::Faults faults;
        faults.nMostWritten = nMost;
        kernel::SetFaults(faults);
        EXPECT_EQ(1, QELSaveFile(drawing, DRAWING_PATH));
        EXPECT_EQ(drawing.New(), Bytes(DRAWING_PATH));
    }
}

TEST(FileFaults, AReadOnlyTargetStays)
{
    const CChangedDrawing drawing;
    ::SetFileAttributesA(DRAWING_PATH, FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(0, QELSaveFile(drawing, DRAWING_PATH));
    ::SetFileAttributesA(DRAWING_PATH, FILE_ATTRIBUTE_NORMAL);
    ExpectUntouched(drawing);
}

TEST(FileFaults, ATargetThatAnotherProcessHasOpenStays)
{
    const CChangedDrawing drawing;
    kernel::Lock(DRAWING_PATH, true);
    EXPECT_EQ(0, QELSaveFile(drawing, DRAWING_PATH));
    kernel::Lock(DRAWING_PATH, false);
    const HANDLE hReader =
        ::CreateFileA(DRAWING_PATH, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                      OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(0, QELSaveFile(drawing, DRAWING_PATH));
    ::CloseHandle(hReader);
    ExpectUntouched(drawing);
}

TEST(FileFaults, AMissingFolderAndAFolderAsTargetAreRefused)
{
    const CChangedDrawing drawing;
    for (const char* pszPath :
         {"C:\\none\\a.qel", "C:\\temp", "D:\\a.qel", "C:\\temp\\a*.qel", "", "C:\\temp\\"}) {
        SCOPED_TRACE(pszPath);
        EXPECT_EQ(0, QELSaveFile(drawing, pszPath));
    }
    ExpectUntouched(drawing);
}

// The name beside a drawing by that number.
std::string Beside(int n)
{
    const std::string digits = std::to_string(n);
    return DRAWING_PATH + ("." + std::string(digits.size() < 2 ? "0" : "") + digits + "~");
}

TEST(FileFaults, NamesBesideTheTargetThatAProcessHoldsAreKept)
{
    const CChangedDrawing drawing;
    for (int n = 0; n < 2; ++n) {
        kernel::PutFile(Beside(n), "somebody's");
        kernel::Lock(Beside(n), true);
    }
    EXPECT_EQ(1, QELSaveFile(drawing, DRAWING_PATH));
    EXPECT_EQ(drawing.New(), Bytes(DRAWING_PATH));
    EXPECT_EQ("somebody's", Bytes(Beside(0)));
    EXPECT_EQ("somebody's", Bytes(Beside(1)));
    EXPECT_EQ(3U, kernel::FileNames().size());
}

TEST(FileFaults, ANameIsFoundHoweverManyAreHeld)
{
    for (const int nHeld : {99, 100, 101, 250}) {
        SCOPED_TRACE(nHeld);
        kernel::FormatDisk();
        const CChangedDrawing drawing;
        for (int n = 0; n < nHeld; ++n) {
            kernel::PutFile(Beside(n), "somebody's");
            kernel::Lock(Beside(n), true);
        }
        EXPECT_EQ(1, QELSaveFile(drawing, DRAWING_PATH));
        EXPECT_EQ(drawing.New(), Bytes(DRAWING_PATH));
        EXPECT_EQ(nHeld + 1U, kernel::FileNames().size());
        EXPECT_EQ("somebody's", Bytes(Beside(nHeld - 1)));
        EXPECT_EQ(0, kernel::OpenHandles());
    }
}

TEST(FileFaults, WhatKilledSavesLeftIsRemovedAndNothingElse)
{
    const CChangedDrawing drawing;
    for (const int n : {0, 1, 7, 42, 99, 100, 6771, 999999}) kernel::PutFile(Beside(n), "<?xml ");
    kernel::PutFile(Beside(3), "read-only");
    ::SetFileAttributesA(Beside(3).c_str(), FILE_ATTRIBUTE_READONLY);
    const std::string path = DRAWING_PATH;
    const std::vector<std::string> others = {
        path + ".5~",          path + ".007~", path + ".1000000~", path + ".10000000~",
        path + ".bak~",        path + ".00",   path + "~",         path + ".old.00~",
        "C:\\temp\\.00~",      path + ".~",    path + ".-1~",      "C:\\temp\\drawing.00~",
        "C:\\temp\\a.qel.00~", path + ".00x~"};
    for (const std::string& name : others) ASSERT_TRUE(kernel::PutFile(name, name));
    EXPECT_EQ(1, QELSaveFile(drawing, DRAWING_PATH));
    EXPECT_EQ(drawing.New(), Bytes(DRAWING_PATH));
    for (const std::string& name : others) EXPECT_EQ(name, Bytes(name));
    EXPECT_EQ("read-only", Bytes(Beside(3)));
    EXPECT_EQ(others.size() + 2, kernel::FileNames().size());
    EXPECT_EQ(0, kernel::OpenHandles());
}

TEST(FileFaults, ASaveRemovesSoManyLeftoversAsCostItASecond)
{
    constexpr int MOST = 10000;
    const CChangedDrawing drawing;
    for (int n = 0; n < MOST + 5; ++n) kernel::PutFile(Beside(n), "");
    EXPECT_EQ(1, QELSaveFile(drawing, DRAWING_PATH));
    EXPECT_EQ(drawing.New(), Bytes(DRAWING_PATH));
    EXPECT_EQ(1U + 5, kernel::FileNames().size());
    EXPECT_EQ(1, QELSaveFile(drawing, DRAWING_PATH));
    EXPECT_EQ(1U, kernel::FileNames().size());
}

// Another process may save the same drawing at any moment of a save: after every operation of one
// it finds the file of the other held, and leaves it alone.
TEST(FileFaults, TheFileOfASaveIsHeldUntilItHasTakenTheTargetsPlace)
{
    const CChangedDrawing drawing;
    int nSeen = 0;
    kernel::SetWatcher([&nSeen] {
        std::string bytes;
        if (!kernel::GetFile(Beside(0), &bytes)) return;
        ++nSeen;
        const HANDLE hFile = ::CreateFileA(Beside(0).c_str(), DELETE, 0, nullptr, OPEN_EXISTING,
                                           FILE_FLAG_DELETE_ON_CLOSE, nullptr);
        EXPECT_EQ(INVALID_HANDLE_VALUE, hFile);
        EXPECT_EQ(DWORD{ERROR_SHARING_VIOLATION}, ::GetLastError());
    });
    EXPECT_EQ(1, QELSaveFile(drawing, DRAWING_PATH));
    kernel::SetWatcher(nullptr);
    EXPECT_GE(nSeen, 3); // the bytes, the flush, the move
    EXPECT_EQ(drawing.New(), Bytes(DRAWING_PATH));
    EXPECT_EQ(1U, kernel::FileNames().size());
}

TEST(FileFaults, KilledSavesLeaveNothingThatTheNextOneDoesNotRemove)
{
    for (int k = 1; k < MOST_OPERATIONS; ++k) {
        kernel::FormatDisk();
        const CChangedDrawing drawing;
        kernel::Faults faults;
        faults.nStopAt = k;
        kernel::SetFaults(faults);
        QELSaveFile(drawing, DRAWING_PATH);
        const bool bStopped = kernel::HasPowerFailed();
        kernel::Restart(false);
        EXPECT_EQ(1, QELSaveFile(drawing, DRAWING_PATH)) << k;
        EXPECT_EQ(1U, kernel::FileNames().size()) << k;
        if (!bStopped) break;
    }
}

// The file that is written before it takes the target's place, as a power failure leaves it.
std::string NameBeside(const CChangedDrawing& drawing, const std::string& target)
{
    std::string name = "none";
    const std::vector<std::string> before = kernel::FileNames();
    kernel::Faults faults;
    for (faults.nStopAt = 1; faults.nStopAt < MOST_OPERATIONS && name == "none"; ++faults.nStopAt) {
        kernel::SetFaults(faults);
        if (QELSaveFile(drawing, target.c_str()) == 1) break;
        kernel::Restart(false);
        for (const std::string& file : kernel::FileNames())
            if (std::find(before.begin(), before.end(), file) == before.end()) name = file;
    }
    if (name != "none") {
        EXPECT_TRUE(::DeleteFileA(name.c_str()));
    }
    return name;
}

TEST(FileFaults, PathsAreSavedToUpToTheLengthThatTheSystemTakes)
{
    const std::string folder = "C:\\temp\\";
    for (std::size_t n = 250; n <= MAX_PATH + 3; ++n) {
        SCOPED_TRACE(n);
        kernel::FormatDisk();
        const CChangedDrawing drawing;
        const std::string path = folder + std::string(n - folder.size(), 'x');
        const bool bTaken = n < MAX_PATH;
        if (bTaken) { // beside it, and under a name that the system takes as well
            ASSERT_TRUE(kernel::PutFile(path, "old"));
            EXPECT_EQ(n + 4 < MAX_PATH ? path + ".00~" : folder + ".00~",
                      NameBeside(drawing, path));
        }
        EXPECT_EQ(bTaken ? 1 : 0, QELSaveFile(drawing, path.c_str()));
        EXPECT_EQ(bTaken ? drawing.New() : "no file", Bytes(path));
        EXPECT_EQ(bTaken ? 2U : 1U, kernel::FileNames().size());
    }
}

TEST(FileFaults, LeftoversAndHeldNamesAreNoMatterAtTheLimitOfPathsEither)
{
    const std::string folder = "C:\\temp\\";
    for (std::size_t n = 250; n < MAX_PATH; ++n) {
        SCOPED_TRACE(n);
        kernel::FormatDisk();
        const CChangedDrawing drawing;
        const std::string path = folder + std::string(n - folder.size(), 'x');
        const std::string base = n + 4 < MAX_PATH ? path : folder;
        ASSERT_TRUE(kernel::PutFile(base + ".08~", ""));
        ASSERT_TRUE(kernel::PutFile(base + ".80~", ""));
        EXPECT_EQ(1, QELSaveFile(drawing, path.c_str()));
        EXPECT_EQ(drawing.New(), Bytes(path));
        EXPECT_EQ(2U, kernel::FileNames().size()); // the drawing that was opened is the other one
        for (int i = 0; i < 100; ++i) {
            const std::string name = base + "." + (i < 10 ? "0" : "") + std::to_string(i) + "~";
            ASSERT_TRUE(kernel::PutFile(name, "held"));
            kernel::Lock(name, true);
        }
        ASSERT_TRUE(kernel::PutFile(path, "old"));
        EXPECT_EQ(1, QELSaveFile(drawing, path.c_str()));
        EXPECT_EQ(drawing.New(), Bytes(path));
        EXPECT_EQ(102U, kernel::FileNames().size());
    }
}

TEST(FileFaults, TheFolderOfALongPathEndsAtItsLastSeparator)
{
    const struct {
        const char* pszFolder;
        const char* pszName; // with room filled behind it
    } rows[] = {
        {"C:\\temp\\", "a"},        {"C:/temp/", "a"},
        {"C:\\temp\\", "a\x81\\b"}, // one character, whose second byte looks like a separator
        {"C:\\temp\\", "\x81/b"},   {"C:\\temp\\", "\x81:b"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.pszFolder) + row.pszName);
        for (const char* pszEnd : {"y", "\x81"}) { // or half a character
            kernel::FormatDisk();
            const CChangedDrawing drawing;
            std::string path = std::string(row.pszFolder) + row.pszName;
            path.append(MAX_PATH - 2 - path.size(), 'x').append(pszEnd);
            ASSERT_TRUE(kernel::PutFile(path, "old"));
            EXPECT_EQ("C:\\temp\\.00~", NameBeside(drawing, path));
            EXPECT_EQ(1, QELSaveFile(drawing, path.c_str()));
            EXPECT_EQ(drawing.New(), Bytes(path));
            EXPECT_EQ(2U, kernel::FileNames().size());
        }
    }
}

// ---- paths ----

TEST(WidePaths, AreTakenInTheThreadsCodePageWhateverItIs)
{
    const struct {
        UINT nCodePage;
        const char* pszPath; // of the one Chinese character
    } rows[] = {{936, "C:\\temp\\\xD6\xD0.qel"}, {CP_UTF8, "C:\\temp\\\xE4\xB8\xAD.qel"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.nCodePage);
        kernel::FormatDisk();
        kernel::SetCodePage(row.nCodePage);
        ASSERT_TRUE(kernel::PutFile(row.pszPath, EveryElement()));
        CTestEngine engine;
        EXPECT_EQ(1, QELOpenFileU(engine, L"C:\\temp\\\u4e2d.qel"));
        EXPECT_EQ(0, QELGetType(engine));
        EXPECT_EQ(0, QELOpenFileU(engine, L"C:\\temp\\\u4e2e.qel")); // which is not there
        kernel::SetCodePage(936);
    }
}

TEST(WidePaths, AreRefusedWithACharacterThatTheCodePageLacksAndBeyondTheLengthOfPaths)
{
    kernel::FormatDisk();
    ASSERT_TRUE(kernel::PutFile("C:\\temp\\?.qel", EveryElement()) == false); // no such name
    CTestEngine engine;
    EXPECT_EQ(0, QELOpenFileU(engine, L"C:\\temp\\\u0e01.qel"));
    // 259 characters and the zero at the end: in bytes as many, or three times as many.
    for (const UINT nCodePage : {UINT{936}, UINT{CP_UTF8}})
        for (const wchar_t c : {L'x', L'\u4e2d'}) {
            SCOPED_TRACE(testing::Message() << nCodePage << " " << static_cast<int>(c));
            kernel::FormatDisk();
            kernel::SetCodePage(nCodePage);
            std::vector<wchar_t> wide;
            for (const char cAscii : std::string("C:\\temp\\")) wide.push_back(cAscii);
            const std::size_t nFolder = wide.size();
            wide.resize(MAX_PATH - 1, c);
            wide.push_back(0);
            const bool bFits = c == L'x';
            if (bFits) {
                const std::string path = "C:\\temp\\" + std::string(MAX_PATH - 1 - nFolder, 'x');
                ASSERT_TRUE(kernel::PutFile(path, EveryElement()));
            }
            EXPECT_EQ(bFits ? 1 : 0, QELOpenFileU(engine, wide.data()));
            wide.insert(wide.end() - 1, c);
            EXPECT_EQ(0, QELOpenFileU(engine, wide.data()));
            kernel::SetCodePage(936);
        }
}

TEST(WidePaths, ThatAreLongHaveThePrefixThatLiftsTheLimit)
{
    const std::string tail(300, 'x');
    const struct {
        std::string path;
        std::string expected;
    } rows[] = {
        {"C:\\temp\\" + tail, "\\\\?\\C:\\temp\\" + tail},
        {"C:/temp/" + tail, "\\\\?\\C:\\temp\\" + tail},
        {"\\temp\\" + tail, "\\\\?\\C:\\temp\\" + tail}, // of the current drive
        {"\\\\server\\share\\" + tail, "\\\\?\\UNC\\server\\share\\" + tail},
        {"\\\\?\\C:\\" + tail, "\\\\?\\C:\\" + tail}, // it has one
        {"//?/C:/" + tail, "\\\\?\\C:\\" + tail},
        {"\\\\.\\" + tail, "\\\\.\\" + tail},                     // a device takes none
        {"\\\\?server\\" + tail, "\\\\?\\UNC\\?server\\" + tail}, // none of the two
        {"C:\\temp\\short", "C:\\temp\\short"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        const std::vector<wchar_t> given = Wide(row.path);
        const CWidePath path(given.data());
        std::string text;
        for (const wchar_t* p = path.Get(); *p; ++p) text += static_cast<char>(*p);
        EXPECT_EQ(row.expected, text);
    }
}

TEST(WidePaths, ThatAreLongAreOpenedAndSavedToOrLackMemory)
{
    kernel::FormatDisk();
    const std::vector<wchar_t> path = Wide("C:\\temp\\" + std::string(245, 'x') + ".qel");
    const std::string text = "<qel><rect crd='1 2 3 4'/></qel>";
    for (const bool bSaves : {true, false}) { // what is opened was saved before
        int nFailed = 0;
        bool bReached = true;
        for (int n = 1; bReached; ++n) {
            SCOPED_TRACE(testing::Message() << bSaves << " " << n);
            CTestEngine engine;
            ASSERT_TRUE(engine.Open(text));
            alloc::Fail(n);
            const int nResult =
                bSaves ? QELSaveFileW(engine, path.data()) : QELOpenFileW(engine, path.data());
            bReached = alloc::Count() >= n;
            alloc::Off();
            QELERROR error{};
            error.nSize = sizeof error;
            EXPECT_EQ(nResult ? 0 : 1, QELGetError(engine, &error));
            EXPECT_EQ(nResult ? QEL_ERROR_NONE : QEL_ERROR_MEMORY, error.nCode);
            EXPECT_EQ(0, kernel::OpenHandles());
            nFailed += nResult ? 0 : 1;
        }
        EXPECT_LT(0, nFailed);
    }
}

// Letter case is compared in wide characters; where a path has none, its bytes decide.
TEST(ShowOnlyPaths, WithoutAWideFormAreTheSameByTheirBytesOnly)
{
    constexpr UINT UNKNOWN_CODE_PAGE = 1;
    for (const UINT nCodePage : {UINT{936}, UNKNOWN_CODE_PAGE}) {
        SCOPED_TRACE(nCodePage);
        kernel::FormatDisk();
        ASSERT_TRUE(kernel::PutFile(DRAWING_PATH, EveryElement()));
        kernel::SetCodePage(nCodePage);
        QELShowOnly(1);
        {
            CTestEngine first, same, otherCase;
            EXPECT_EQ(1, QELOpenFile(first, DRAWING_PATH));
            EXPECT_EQ(1, QELOpenFile(same, DRAWING_PATH));
            EXPECT_EQ(1, QELOpenFile(otherCase, "C:\\TEMP\\Drawing.QEL"));
            ASSERT_NE(nullptr, QELGetName(first));
            EXPECT_EQ(QELGetName(first), QELGetName(same)); // the very same text: one drawing
            EXPECT_EQ(nCodePage == 936, QELGetName(first) == QELGetName(otherCase));
            EXPECT_STREQ(QELGetName(first), QELGetName(otherCase));
        }
        QELShowOnly(0);
        kernel::SetCodePage(936);
    }
}

// ---- opening ----

TEST(FileFaults, ReadsThatGiveLessAreContinued)
{
    CTestEngine whole;
    ASSERT_TRUE(whole.Open());
    const std::string expected = SavedBytes(whole);
    for (const DWORD nMost : {1U, 7U, 1000U}) {
        SCOPED_TRACE(nMost);
        CTestEngine engine;
        kernel::Faults faults;
        faults.nMostRead = nMost;
        kernel::SetFaults(faults);
        EXPECT_EQ(1, QELOpenFile(engine, DRAWING_PATH));
        EXPECT_EQ(expected, SavedBytes(engine));
        kernel::SetFaults({});
    }
}

TEST(FileFaults, ReadsThatFailOnceAreTriedAgain)
{
    kernel::PutFile(DRAWING_PATH, EveryElement());
    for (int n = 1; n <= 5; ++n) {
        CTestEngine engine;
        kernel::Faults faults;
        faults.nMostRead = 3000;
        faults.nFailRead = n;
        kernel::SetFaults(faults);
        EXPECT_EQ(1, QELOpenFile(engine, DRAWING_PATH)) << n;
        kernel::SetFaults({});
    }
}

TEST(FileFaults, ADiskThatGivesNothingEndsTheOpen)
{
    kernel::PutFile(DRAWING_PATH, EveryElement());
    CTestEngine engine;
    kernel::Faults faults;
    faults.bReadsNothing = true;
    kernel::SetFaults(faults);
    EXPECT_EQ(0, QELOpenFile(engine, DRAWING_PATH));
    EXPECT_EQ(3, QELGetType(engine));
    EXPECT_LT(kernel::Operations(), 100);
    kernel::SetFaults({});
    EXPECT_EQ(1, QELOpenFile(engine, DRAWING_PATH));
}

TEST(FileFaults, AFileThatShrinksWhileItIsReadDoesNotOpen)
{
    const std::string text = EveryElement();
    for (std::size_t n = 0; n < text.size(); n += n < 10 || n + 10 > text.size() ? 1 : 89) {
        SCOPED_TRACE("to " + std::to_string(n));
        kernel::PutFile(DRAWING_PATH, text);
        CTestEngine engine;
        kernel::Faults faults;
        faults.nMostRead = 5;
        faults.nShrinkTo = static_cast<int64_t>(n);
        kernel::SetFaults(faults);
        EXPECT_EQ(0, QELOpenFile(engine, DRAWING_PATH));
        EXPECT_EQ(3, QELGetType(engine));
        EXPECT_EQ(0, kernel::OpenHandles());
        kernel::SetFaults({});
        kernel::PutFile(DRAWING_PATH, text);
        EXPECT_EQ(1, QELOpenFile(engine, DRAWING_PATH)) << "a later try";
    }
}

TEST(FileFaults, AFileThatIsMissingLockedOrAFolderDoesNotOpen)
{
    CTestEngine engine;
    ASSERT_TRUE(engine.Open());
    kernel::Lock(DRAWING_PATH, true);
    for (const char* pszPath :
         {DRAWING_PATH, "C:\\temp\\none.qel", "C:\\temp", "C:\\none\\none.qel", ""}) {
        SCOPED_TRACE(pszPath);
        EXPECT_EQ(0, QELOpenFile(engine, pszPath));
        EXPECT_EQ(3, QELGetType(engine));
    }
    kernel::Lock(DRAWING_PATH, false);
    EXPECT_EQ(1, QELOpenFile(engine, DRAWING_PATH));
}

TEST(FileFaults, ThePowerFailsWhileADrawingIsOpened)
{
    const std::string text = EveryElement();
    int k = 1;
    for (; k < MOST_OPERATIONS; ++k) {
        SCOPED_TRACE("operation " + std::to_string(k));
        kernel::FormatDisk();
        kernel::PutFile(DRAWING_PATH, text);
        CTestEngine engine;
        kernel::Faults faults;
        faults.nMostRead = 2000;
        faults.nStopAt = k;
        kernel::SetFaults(faults);
        QELOpenFile(engine, DRAWING_PATH);
        const bool bStopped = kernel::HasPowerFailed();
        kernel::Restart(true);
        EXPECT_EQ(text, Bytes(DRAWING_PATH));
        EXPECT_EQ(1, QELOpenFile(engine, DRAWING_PATH));
        if (!bStopped) break;
    }
    EXPECT_GT(k, 5);
}

TEST(FileFaults, ThePowerFailsAtAnyMomentOfTheSaveOfATreeAndOneFileIsWhole)
{
    const std::string old = "the old file";
    std::string whole;
    bool bDone = false;
    int nFailed = 0;
    for (int nStop = 0; nStop < MOST_OPERATIONS && (!bDone || nStop == 1); ++nStop) {
        SCOPED_TRACE(nStop); // 0: the power does not fail
        kernel::FormatDisk();
        ASSERT_TRUE(kernel::PutFile(DRAWING_PATH, old));
        XmlContext* pXml = XmlCreate();
        ASSERT_EQ(0, XmlSetNameZ(pXml, "root"));
        kernel::Faults faults;
        faults.nStopAt = nStop;
        kernel::SetFaults(faults);
        bDone = XmlSaveFile(pXml, DRAWING_PATH) == 0;
        EXPECT_EQ(bDone ? XML_OK : XML_ERR_CREATE, pXml->nLastError);
        nFailed += bDone ? 0 : 1;
        if (kernel::HasPowerFailed()) kernel::Restart(true);
        kernel::SetFaults({});
        const std::string bytes = Bytes(DRAWING_PATH);
        if (!nStop) whole = bytes;
        EXPECT_TRUE(bytes == whole || (!bDone && bytes == old));
        EXPECT_EQ(0, XmlDestroy(pXml));
    }
    EXPECT_NE(old, whole);
    EXPECT_TRUE(bDone);
    EXPECT_LT(2, nFailed); // it is made, written, flushed and renamed
    kernel::FormatDisk();
}
