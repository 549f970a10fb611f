// Files that fail. Whatever happens to the disk while a drawing is saved, the old or the new one is
// whole in its place; whatever happens while one is opened, the file stays as it is and the engine
// can be used.
#include "tests/native/GdiDouble.h"
#include "tests/native/KernelDouble.h"
#include "tests/native/Life.h"

#include <gtest/gtest.h>

#include <string>

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

TEST(FileFaults, NamesBesideTheTargetThatAreTakenAreKept)
{
    const CChangedDrawing drawing;
    for (const char* pszName : {"C:\\temp\\drawing.qel.00~", "C:\\temp\\drawing.qel.01~"})
        kernel::PutFile(pszName, "somebody's");
    EXPECT_EQ(1, QELSaveFile(drawing, DRAWING_PATH));
    EXPECT_EQ(drawing.New(), Bytes(DRAWING_PATH));
    EXPECT_EQ("somebody's", Bytes("C:\\temp\\drawing.qel.00~"));
    EXPECT_EQ("somebody's", Bytes("C:\\temp\\drawing.qel.01~"));
    EXPECT_EQ(3U, kernel::FileNames().size());
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
