// Drawings of wide paths and in memory: opened and saved as files are, and what is modified.
#include "include/QELEngine.h"
#include "tests/support/Files.h"
#include "tests/support/Wide.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const std::string DRAWING =
    "<qel id=\"pump\" width=\"120\" height=\"90\"><rect id=\"r\" crd=\"1 2 30 40\"/></qel>";

class Memory : public ::testing::Test {
protected:
    Memory() : m_h(CreateQELEngine()) {}
    ~Memory() override { EXPECT_EQ(1, DestroyQELEngine(m_h)); }

    int OpenText(const std::string& text) const
    {
        return QELOpenMemory(m_h, text.data(), static_cast<DWORD>(text.size()));
    }
    std::string Saved() const
    {
        DWORD nSize = 0;
        EXPECT_EQ(1, QELSaveMemory(m_h, nullptr, &nSize));
        std::string bytes(nSize, 'x');
        EXPECT_EQ(1, QELSaveMemory(m_h, bytes.data(), &nSize));
        EXPECT_EQ(bytes.size(), nSize);
        return bytes;
    }
    std::string Name() const
    {
        const char* psz = QELGetName(m_h);
        return psz ? psz : "none";
    }

    CTestFolder m_folder;
    HQELENGINE m_h;
};

// A path with more than MAX_PATH characters, whose folders are made: they stay until the test ends.
class CLongFolder {
public:
    explicit CLongFolder(const CTestFolder& folder)
    {
        std::vector<wchar_t> path = Wide("\\\\?\\" + folder.Path("deep"));
        path.pop_back();
        for (int n = 0; n < 4; ++n) {
            m_paths.push_back(path);
            m_paths.back().push_back(0);
            EXPECT_TRUE(::CreateDirectoryW(m_paths.back().data(), nullptr));
            path.push_back('\\');
            path.insert(path.end(), 80, static_cast<wchar_t>('a' + n));
        }
    }
    ~CLongFolder()
    {
        while (!m_paths.empty()) {
            ::RemoveDirectoryW(m_paths.back().data());
            m_paths.pop_back();
        }
    }
    CLongFolder(const CLongFolder&) = delete;
    CLongFolder& operator=(const CLongFolder&) = delete;

    // Without the prefix, as a host has it.
    [[nodiscard]] std::vector<wchar_t> Path(const std::string& name) const
    {
        std::vector<wchar_t> path(m_paths.back().begin() + 4, m_paths.back().end());
        path.back() = '\\';
        const std::vector<wchar_t> wide = Wide(name);
        path.insert(path.end(), wide.begin(), wide.end());
        return path;
    }
    void Delete(const std::string& name) const
    {
        std::vector<wchar_t> path = Wide("\\\\?\\");
        path.pop_back();
        const std::vector<wchar_t> rest = Path(name);
        path.insert(path.end(), rest.begin(), rest.end());
        EXPECT_TRUE(::DeleteFileW(path.data()));
    }

private:
    std::vector<std::vector<wchar_t>> m_paths;
};

} // namespace

TEST_F(Memory, OpensWhatAFileWouldHold)
{
    ASSERT_EQ(1, OpenText(DRAWING));
    EXPECT_EQ("pump", Name());
    SIZE size{};
    RECT rc{};
    EXPECT_EQ(1, QELGetRefSize(m_h, &size));
    EXPECT_EQ(120, size.cx);
    EXPECT_EQ(1, QELGetQELRect(m_h, &rc));
    EXPECT_EQ(90, rc.bottom);
    EXPECT_STREQ("r", QELGetElemId(m_h, QELGetFirstChild(m_h, QELGetRootElem(m_h))));
}

TEST_F(Memory, IsCopiedAndMayChangeAfterTheCall)
{
    std::string text = DRAWING;
    const std::string before = text;
    ASSERT_EQ(1, OpenText(text));
    EXPECT_EQ(before, text); // the parser writes into a text of its own
    text.assign(text.size(), '<');
    EXPECT_EQ("pump", Name());
}

TEST_F(Memory, EndsAtItsSizeOrAtAZero)
{
    EXPECT_EQ(0, QELOpenMemory(m_h, DRAWING.data(), static_cast<DWORD>(DRAWING.size() - 1)));
    EXPECT_EQ("none", Name());
    ASSERT_EQ(1, OpenText(DRAWING + std::string(1, '\0') + "<broken"));
    EXPECT_EQ("pump", Name());
    EXPECT_EQ(0, QELOpenMemory(m_h, DRAWING.data(), 0));
    EXPECT_EQ("none", Name()); // as an empty file
}

TEST_F(Memory, ANullPointerLeavesTheDrawing)
{
    ASSERT_EQ(1, OpenText(DRAWING));
    EXPECT_EQ(0, QELOpenMemory(m_h, nullptr, 10));
    EXPECT_EQ(0, QELOpenFileW(m_h, nullptr));
    EXPECT_EQ("pump", Name());
}

TEST_F(Memory, SavesTheBytesOfAFile)
{
    ASSERT_EQ(1, OpenText(DRAWING));
    const std::string path = m_folder.Path("file.qel");
    ASSERT_EQ(1, QELSaveFile(m_h, path.c_str()));
    EXPECT_EQ(ReadBytes(path), Saved());
    const std::string wide = m_folder.Path("wide.qel");
    ASSERT_EQ(1, QELSaveFileW(m_h, Wide(wide).data()));
    EXPECT_EQ(ReadBytes(path), ReadBytes(wide));
    EXPECT_EQ(2, m_folder.CountFiles());
}

TEST_F(Memory, OfADrawingLargerThanAnyBufferInsideIsTheSame)
{
    ASSERT_EQ(1, OpenText(DRAWING));
    const HQELELEM hFirst = QELGetFirstChild(m_h, QELGetRootElem(m_h));
    for (int n = 0; n < 4000; ++n) ASSERT_NE(nullptr, QELCopyElem(m_h, hFirst));
    const std::string path = m_folder.Path("file.qel");
    ASSERT_EQ(1, QELSaveFile(m_h, path.c_str()));
    const std::string saved = Saved();
    EXPECT_LT(0x10000u, saved.size());
    EXPECT_TRUE(ReadBytes(path) == saved);
}

TEST_F(Memory, ABufferThatIsTooSmallIsNotWrittenToAndLearnsTheSize)
{
    ASSERT_EQ(1, OpenText(DRAWING));
    const std::string whole = Saved();
    for (const std::size_t nRoom : {std::size_t{0}, std::size_t{1}, whole.size() - 1}) {
        std::string buffer(whole.size(), 'x');
        auto nSize = static_cast<DWORD>(nRoom);
        EXPECT_EQ(0, QELSaveMemory(m_h, buffer.data(), &nSize));
        EXPECT_EQ(whole.size(), nSize);
        EXPECT_EQ(std::string(whole.size(), 'x'), buffer);
    }
    std::string buffer(whole.size() + 5, 'x');
    auto nSize = static_cast<DWORD>(buffer.size());
    EXPECT_EQ(1, QELSaveMemory(m_h, buffer.data(), &nSize));
    EXPECT_EQ(whole.size(), nSize);
    EXPECT_EQ(whole + "xxxxx", buffer);
}

TEST_F(Memory, InShowOnlyModeIsNobodyElses)
{
    QELShowOnly(1);
    const HQELENGINE hA = CreateQELEngine();
    const HQELENGINE hB = CreateQELEngine();
    QELShowOnly(0);
    const auto nSize = static_cast<DWORD>(DRAWING.size());
    ASSERT_EQ(1, QELOpenMemory(hA, DRAWING.data(), nSize));
    ASSERT_EQ(1, QELOpenMemory(hB, DRAWING.data(), nSize));
    const RECT rc{0, 0, 7, 7};
    RECT rcOther{};
    EXPECT_EQ(1, QELSetQELRect(hA, &rc));
    EXPECT_EQ(1, QELGetQELRect(hB, &rcOther));
    EXPECT_EQ(120, rcOther.right);
    DWORD n = 0;
    EXPECT_EQ(0, QELSaveMemory(hA, nullptr, &n));
    EXPECT_EQ(0, QELIsModified(hA));
    EXPECT_EQ(1, DestroyQELEngine(hA));
    EXPECT_EQ(1, DestroyQELEngine(hB));
}

TEST_F(Memory, WideAndAnsiPathsShareInShowOnlyModeWhenTheirTextsAreTheSame)
{
    const std::string path = m_folder.Path("Shared.qel");
    ASSERT_TRUE(WriteBytes(path, DRAWING));
    QELShowOnly(1);
    const HQELENGINE hA = CreateQELEngine();
    const HQELENGINE hB = CreateQELEngine();
    const HQELENGINE hC = CreateQELEngine();
    QELShowOnly(0);
    ASSERT_EQ(1, QELOpenFile(hA, path.c_str()));
    ASSERT_EQ(1, QELOpenFileW(hB, Wide(m_folder.Path("sHARED.qel")).data()));
    ASSERT_EQ(1, QELOpenFileW(hC, Wide(m_folder.Path(".\\Shared.qel")).data()));
    const RECT rc{0, 0, 7, 7};
    RECT rcB{};
    RECT rcC{};
    EXPECT_EQ(1, QELSetQELRect(hA, &rc));
    EXPECT_EQ(1, QELGetQELRect(hB, &rcB));
    EXPECT_EQ(1, QELGetQELRect(hC, &rcC));
    EXPECT_EQ(7, rcB.right);   // one drawing
    EXPECT_EQ(120, rcC.right); // another spelling is another one
    for (const HQELENGINE h : {hA, hB, hC}) EXPECT_EQ(1, DestroyQELEngine(h));
}

TEST_F(Memory, FilesOfLongPathsAreOpenedAndSavedOver)
{
    const CLongFolder folder(m_folder);
    const std::vector<wchar_t> path = folder.Path("pump.qel");
    ASSERT_LT(std::size_t{MAX_PATH}, path.size());
    ASSERT_EQ(1, OpenText(DRAWING));
    ASSERT_EQ(1, QELSaveFileW(m_h, path.data()));
    const HQELELEM hRoot = QELGetRootElem(m_h);
    ASSERT_EQ(1, QELSetElemId(m_h, hRoot, "again"));
    ASSERT_EQ(1, QELSaveFileW(m_h, path.data())); // in place of the first
    ASSERT_EQ(1, QELNewFile(m_h));
    ASSERT_EQ(1, QELOpenFileW(m_h, path.data()));
    EXPECT_EQ("again", Name());
    std::vector<wchar_t> odd = folder.Path("pump.qel");
    for (wchar_t& c : odd)
        if (c == '\\') c = '/'; // hosts write paths both ways
    EXPECT_EQ(1, QELOpenFileW(m_h, odd.data()));
    folder.Delete("pump.qel");
    EXPECT_EQ(0, QELOpenFileW(m_h, path.data()));
}

TEST_F(Memory, FilesWithTheLongestNamesAreSavedOver)
{
    const CLongFolder folder(m_folder);
    std::string name(251, 'n');
    name.append(".qel"); // 255: no ending fits behind it
    ASSERT_EQ(1, OpenText(DRAWING));
    for (int n = 0; n < 2; ++n) ASSERT_EQ(1, QELSaveFileW(m_h, folder.Path(name).data()));
    ASSERT_EQ(1, QELOpenFileW(m_h, folder.Path(name).data()));
    EXPECT_EQ("pump", Name());
    folder.Delete(name);
}

// None of these is in the code page.
TEST_F(Memory, FilesOfAnyCharactersAreOpenedAndSaved)
{
    std::vector<wchar_t> path = Wide(m_folder.Path(""));
    path.pop_back();
    for (const wchar_t c :
         {wchar_t{0x0E01}, wchar_t{0x05D0}, wchar_t{'.'}, wchar_t{'q'}, wchar_t{0}})
        path.push_back(c);
    ASSERT_EQ(1, OpenText(DRAWING));
    ASSERT_EQ(1, QELSaveFileW(m_h, path.data()));
    EXPECT_EQ(0, QELOpenFileU(m_h, path.data()));
    ASSERT_EQ(1, QELNewFile(m_h));
    ASSERT_EQ(1, QELOpenFileW(m_h, path.data()));
    EXPECT_EQ("pump", Name());
    EXPECT_TRUE(::DeleteFileW(path.data()));
}

TEST_F(Memory, AFailedWideSaveLeavesTheOldFileAndNothingBeside)
{
    const std::string path = m_folder.Path("kept.qel");
    ASSERT_TRUE(WriteBytes(path, "old"));
    ASSERT_EQ(1, OpenText(DRAWING));
    const HANDLE hHeld = ::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                       OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, hHeld);
    EXPECT_EQ(0, QELSaveFileW(m_h, Wide(path).data()));
    ::CloseHandle(hHeld);
    EXPECT_EQ("old", ReadBytes(path));
    EXPECT_EQ(1, m_folder.CountFiles());
}

// ---- what is modified

TEST_F(Memory, IsModifiedByEveryEditThatSucceeds)
{
    const auto expectEdit = [&](const char* pszName, auto edit) {
        SCOPED_TRACE(pszName);
        ASSERT_EQ(1, OpenText("<qel><rect crd='1 2 3 4'/><g><rect crd='1 2 3 4'/></g></qel>"));
        EXPECT_EQ(0, QELIsModified(m_h));
        const HQELELEM hRect = QELGetFirstChild(m_h, QELGetRootElem(m_h));
        EXPECT_EQ(0, QELIsModified(m_h)); // reading changes nothing
        EXPECT_TRUE(edit(hRect));
        EXPECT_EQ(1, QELIsModified(m_h));
    };
    const RECT rc{5, 5, 9, 9};
    const SIZE size{7, 8};
    expectEdit("create", [&](HQELELEM) { return QELCreateElem(m_h, 2, nullptr, nullptr); });
    expectEdit("root", [&](HQELELEM) { return QELCreateElem(m_h, 0, nullptr, nullptr); });
    expectEdit("delete", [&](HQELELEM h) { return QELDeleteElem(m_h, h); });
    expectEdit("move",
               [&](HQELELEM h) { return QELMoveElem(m_h, h, QELGetNextElem(m_h, h), nullptr); });
    expectEdit("take out", [&](HQELELEM h) { return QELMoveElem(m_h, h, nullptr, nullptr); });
    expectEdit("copy", [&](HQELELEM h) { return QELCopyElem(m_h, h); });
    expectEdit("id", [&](HQELELEM h) { return QELSetElemId(m_h, h, "x"); });
    expectEdit("rect", [&](HQELELEM h) { return QELSetElemRect(m_h, h, &rc); });
    expectEdit("size", [&](HQELELEM) { return QELSetRefSize(m_h, &size); });
    expectEdit("record", [&](HQELELEM h) {
        QELSHAPEATTR attr{};
        return QELGetElemAttr(m_h, h, &attr, nullptr) && QELSetElemAttr(m_h, h, &attr, sizeof attr);
    });
}

TEST_F(Memory, IsNotModifiedByWhatIsNoEditOrFails)
{
    ASSERT_EQ(1,
              OpenText("<qel><rect crd='1 2 3 4'/><scale scid='1' crd='1 2 3 4'/><frame/></qel>"));
    const RECT rc{5, 5, 9, 9};
    EXPECT_EQ(1, QELSetScaleStatus(m_h, 1, 5));
    EXPECT_EQ(1, QELSetParam(m_h, QEL_PARAM_COLOR, 5));
    EXPECT_EQ(1, QELRotate(m_h, 90));
    EXPECT_EQ(1, QELSetBlinkState(m_h, 1));
    EXPECT_EQ(1, QELSetQELRect(m_h, &rc));
    EXPECT_EQ(nullptr, QELCreateElem(m_h, 12, nullptr, nullptr));
    EXPECT_EQ(0, QELDeleteElem(m_h, nullptr));
    EXPECT_EQ(0, QELMoveElem(m_h, QELGetRootElem(m_h), nullptr, nullptr));
    EXPECT_EQ(0, QELIsModified(m_h));
}

TEST_F(Memory, IsNotModifiedAfterASaveThatSucceeds)
{
    const auto modify = [&] {
        ASSERT_EQ(1, QELSetElemId(m_h, QELGetRootElem(m_h), "x"));
        ASSERT_EQ(1, QELIsModified(m_h));
    };
    ASSERT_EQ(1, OpenText(DRAWING));
    modify();
    EXPECT_EQ(0, QELSaveFile(m_h, m_folder.Path("none\\a.qel").c_str()));
    EXPECT_EQ(1, QELIsModified(m_h));
    DWORD nSize = 0;
    EXPECT_EQ(1, QELSaveMemory(m_h, nullptr, &nSize));
    EXPECT_EQ(1, QELIsModified(m_h)); // it only asked for the size
    Saved();
    EXPECT_EQ(0, QELIsModified(m_h));
    modify();
    EXPECT_EQ(1, QELSaveFile(m_h, m_folder.Path("a.qel").c_str()));
    EXPECT_EQ(0, QELIsModified(m_h));
    modify();
    EXPECT_EQ(1, QELSaveFileW(m_h, Wide(m_folder.Path("b.qel")).data()));
    EXPECT_EQ(0, QELIsModified(m_h));
    modify();
    EXPECT_EQ(1, QELNewFile(m_h));
    EXPECT_EQ(0, QELIsModified(m_h));
    modify();
    EXPECT_EQ(1, QELCloseFile(m_h));
    EXPECT_EQ(0, QELIsModified(m_h));
}
