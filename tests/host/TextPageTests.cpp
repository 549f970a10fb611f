// The code page of texts as hosts set it: what is drawn, what is saved, and what is refused.
#include "tests/support/Figures.h"
#include "tests/support/Host.h"
#include "tests/support/Wide.h"

#include <algorithm>
#include <string>

namespace {

constexpr DWORD DECLARED = 1;
constexpr DWORD GB2312 = 936;
constexpr DWORD UTF8 = 65001;
const std::string MARK = "\xEF\xBB\xBF";

// The same words: "pump", Greek alpha beta, Russian zhe, in both pages.
const std::string IN_UTF8 = "\xE6\xB3\xB5 \xCE\xB1\xCE\xB2 \xD0\xB6 1";
const std::string IN_GB2312 = "\xB1\xC3 \xA6\xC1\xA6\xC2 \xA7\xD8 1";
constexpr int WORDS_COLUMNS = 2 + 1 + 2 + 1 + 1 + 2;

std::string Head(const std::string& encoding)
{
    return "<?xml version=\"1.0\" encoding=\"" + encoding + "\" ?>\r\n";
}

// Wide characters as numbers: "6cf5 0020", up to the zero.
std::string Told(const wchar_t* psz)
{
    std::string numbers;
    for (; *psz; ++psz) {
        char sz[8];
        std::snprintf(sz, sizeof sz, numbers.empty() ? "%04x" : " %04x",
                      static_cast<unsigned>(*psz));
        numbers += sz;
    }
    return numbers;
}

// As a save writes it.
std::string Drawing(const std::string& encoding, const std::string& text)
{
    return Head(encoding) +
           "<qel width=\"200\" height=\"60\">\r\n"
           "<text id=\"t\" crd=\"0 0 200 60\">" +
           text + "</text>\r\n</qel>\r\n" + '\0';
}

class TextPage : public ::testing::Test {
protected:
    TextPage() : m_h(CreateQELEngine()) {}
    ~TextPage() override { EXPECT_EQ(1, DestroyQELEngine(m_h)); }

    int Open(const std::string& bytes) const
    {
        return QELOpenMemory(m_h, bytes.data(), static_cast<DWORD>(bytes.size()));
    }
    std::string Saved() const
    {
        DWORD nSize = 0;
        EXPECT_EQ(1, QELSaveMemory(m_h, nullptr, &nSize));
        std::string bytes(nSize, 'x');
        EXPECT_EQ(1, QELSaveMemory(m_h, bytes.data(), &nSize));
        return bytes;
    }
    // What a save of the file has as it is read with this setting.
    std::string SavedAgain(DWORD nPage, const std::string& bytes) const
    {
        EXPECT_EQ(1, QELSetTextCodePage(m_h, nPage));
        EXPECT_EQ(1, Open(bytes));
        return Saved();
    }
    std::vector<std::string> Calls(const std::vector<std::string>& words) const
    {
        CRecording recording;
        const RECT rc{0, 0, 200, 60};
        EXPECT_EQ(1, QELSetQELRect(m_h, &rc));
        EXPECT_EQ(1, QELDraw(m_h, recording.Dc(), &rc, QEL_DRAW_FULL));
        return recording.Only(words);
    }
    int FontWidth() const
    {
        int nWidth = -1;
        const std::vector<std::string> calls = Calls({"CreateFont"});
        EXPECT_EQ(1U, calls.size());
        std::sscanf(calls[0].c_str(), "CreateFont width %d", &nWidth);
        return nWidth;
    }
    DWORD Setting() const
    {
        DWORD nPage = 12345;
        EXPECT_EQ(1, QELGetTextCodePage(m_h, &nPage));
        return nPage;
    }
    DWORD Reason() const
    {
        QELERROR error{};
        error.nSize = sizeof error;
        QELGetError(m_h, &error);
        return error.nCode;
    }
    HQELELEM Text() const { return QELFindElem(m_h, "t"); }
    // The bytes of the text in the document.
    std::string TextBytes() const
    {
        QELSHAPEATTR attr{};
        EXPECT_EQ(1, QELGetElemAttr(m_h, Text(), &attr, nullptr));
        return attr.szText;
    }
    bool IsDirty() const
    {
        RECT rc{};
        return QELGetDirtyRect(m_h, &rc) != 0;
    }

    HQELENGINE m_h;
};

// The width of a text's font: its share of 200, in steps of 6.
int CellOf(int nCells)
{
    return std::max(200 / nCells / 6 * 6, 6);
}

TEST_F(TextPage, IsTheSystemsOwnUntilItIsSet)
{
    EXPECT_EQ(0U, Setting());
    ASSERT_EQ(1, Open(Drawing("utf-8", IN_UTF8)));
    EXPECT_EQ(CellOf(static_cast<int>(IN_UTF8.size())), FontWidth()); // by bytes
    EXPECT_EQ(0U, Setting());
}

TEST_F(TextPage, DividesTheRectangleByColumns)
{
    ASSERT_NE(CellOf(WORDS_COLUMNS), CellOf(static_cast<int>(IN_UTF8.size())));
    for (const auto& [name, text, nPage] :
         {std::tuple("utf-8", IN_UTF8, UTF8), std::tuple("gb2312", IN_GB2312, GB2312)})
        for (const DWORD nSet : {DECLARED, nPage}) {
            ASSERT_EQ(1, QELSetTextCodePage(m_h, nSet));
            ASSERT_EQ(1, Open(Drawing(name, text)));
            EXPECT_EQ(CellOf(WORDS_COLUMNS), FontWidth()) << name << nSet;
        }
}

TEST_F(TextPage, TheSameWordsGiveTheSameCallsInEveryPage)
{
    ASSERT_EQ(1, QELSetTextCodePage(m_h, DECLARED));
    ASSERT_EQ(1, Open(Drawing("utf-8", IN_UTF8)));
    const std::vector<std::string> calls = Calls({"CreateFont", "Text"});
    ASSERT_EQ(2U, calls.size());
    ASSERT_EQ(1, Open(Drawing("GBK", IN_GB2312)));
    EXPECT_EQ(calls, Calls({"CreateFont", "Text"}));
    ASSERT_EQ(1, Open(Drawing("windows-1252", IN_GB2312)));
    EXPECT_NE(calls, Calls({"CreateFont", "Text"}));
}

TEST_F(TextPage, ANumberCountsWhateverTheDrawingDeclares)
{
    ASSERT_EQ(1, QELSetTextCodePage(m_h, DECLARED));
    ASSERT_EQ(1, Open(Drawing("utf-8", IN_UTF8)));
    const std::vector<std::string> calls = Calls({"CreateFont", "Text"});
    ASSERT_EQ(1, QELSetTextCodePage(m_h, UTF8));
    ASSERT_EQ(1, Open(Drawing("gb2312", IN_UTF8)));
    EXPECT_EQ(calls, Calls({"CreateFont", "Text"}));
}

TEST_F(TextPage, ADrawingThatDeclaresNothingCountsAsGb2312)
{
    ASSERT_EQ(1, QELSetTextCodePage(m_h, DECLARED));
    ASSERT_EQ(1, Open(Drawing("gb2312", IN_GB2312)));
    const std::vector<std::string> calls = Calls({"CreateFont", "Text"});
    const std::string body = Drawing("", IN_GB2312).substr(Head("").size());
    for (const std::string& head :
         {std::string(), std::string("<?xml version='1.0'?>"), Head("klingon"), Head("utf-8 or so"),
          Head(std::string(100, 'x'))}) {
        ASSERT_EQ(1, Open(head + body));
        EXPECT_EQ(calls, Calls({"CreateFont", "Text"})) << head;
    }
}

TEST_F(TextPage, WhatTheSystemDoesNotKnowIsRefusedAndChangesNothing)
{
    ASSERT_EQ(1, QELSetTextCodePage(m_h, UTF8));
    ASSERT_EQ(1, Open(Drawing("utf-8", IN_UTF8)));
    ASSERT_EQ(1, QELValidate(m_h));
    for (const DWORD nPage : {2U, 3U, 42U, 1200U, 12345U, 0x10000U + 936U, 0xFFFFFFFFU}) {
        EXPECT_EQ(0, QELSetTextCodePage(m_h, nPage)) << nPage;
        EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_VALUE), Reason());
        EXPECT_EQ(UTF8, Setting());
        EXPECT_FALSE(IsDirty());
    }
    EXPECT_EQ(0, QELGetTextCodePage(m_h, nullptr));
    EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_ARGUMENT), Reason());
    DWORD nPage = 77;
    EXPECT_EQ(0, QELSetTextCodePage(nullptr, 1));
    EXPECT_EQ(0, QELGetTextCodePage(nullptr, &nPage));
    EXPECT_EQ(77U, nPage);
}

TEST_F(TextPage, AChangeMakesAllOfThePictureDirtyAndTheSameAgainNothing)
{
    const RECT rcPlace{10, 20, 210, 80};
    ASSERT_EQ(1, Open(Drawing("utf-8", IN_UTF8)));
    ASSERT_EQ(1, QELSetQELRect(m_h, &rcPlace));
    DWORD nBefore = 0;
    for (const DWORD nPage : {DECLARED, UTF8, GB2312, DWORD{0}, DWORD{0}, DECLARED}) {
        ASSERT_EQ(1, QELValidate(m_h));
        ASSERT_EQ(1, QELSetTextCodePage(m_h, nPage));
        RECT rc{};
        EXPECT_EQ(nPage != nBefore, QELGetDirtyRect(m_h, &rc) != 0) << nPage;
        if (nPage != nBefore) {
            EXPECT_TRUE(rc.left <= 10 && rc.top <= 20 && rc.right >= 210 && rc.bottom >= 80);
        }
        nBefore = nPage;
    }
}

TEST_F(TextPage, AnUpdateAfterAChangeIsAFullDraw)
{
    const RECT rc{0, 0, 200, 60};
    ASSERT_EQ(1, Open(Drawing("utf-8", "a&amp;\xE6\xB3\xB5 " + IN_UTF8)));
    ASSERT_EQ(1, QELSetQELRect(m_h, &rc));
    CTestBitmap updated(200, 60);
    const HBRUSH hWhite = static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
    ASSERT_EQ(1, QELUpdate(m_h, updated.Dc(), hWhite));
    ASSERT_EQ(1, QELSetTextCodePage(m_h, DECLARED));
    ASSERT_EQ(1, QELUpdate(m_h, updated.Dc(), hWhite));
    CTestBitmap drawn(200, 60);
    drawn.Fill(RGB(255, 255, 255));
    ASSERT_EQ(1, QELDraw(m_h, drawn.Dc(), &rc, QEL_DRAW_FULL));
    EXPECT_EQ("", FirstDifference(drawn, updated));
}

TEST_F(TextPage, OutlivesTheDrawing)
{
    ASSERT_EQ(1, QELSetTextCodePage(m_h, DECLARED));
    ASSERT_EQ(1, Open(Drawing("utf-8", IN_UTF8)));
    ASSERT_EQ(1, QELCloseFile(m_h));
    EXPECT_EQ(DECLARED, Setting());
    ASSERT_EQ(1, Open(Drawing("gb2312", IN_GB2312)));
    EXPECT_EQ(CellOf(WORDS_COLUMNS), FontWidth());
    ASSERT_EQ(1, QELNewFile(m_h));
    EXPECT_EQ(DECLARED, Setting());
}

TEST_F(TextPage, ASaveKeepsEveryByte)
{
    const std::string bad = "\xFF\x80 \xE6\xB3"; // no text in any page
    for (const std::string& text : {IN_UTF8, IN_GB2312, bad})
        for (const char* psz : {"utf-8", "UTF-8", "gb2312", "GBK", "gb18030", "windows-1251",
                                "ISO-8859-7", "klingon"})
            for (const DWORD nPage : {DECLARED, UTF8, GB2312}) {
                const std::string bytes = Drawing(psz, text);
                EXPECT_EQ(bytes, SavedAgain(nPage, bytes)) << psz << nPage;
                EXPECT_EQ(MARK + bytes, SavedAgain(nPage, MARK + bytes)) << psz << nPage;
            }
}

TEST_F(TextPage, WithoutASettingASaveDeclaresGb2312AsEver)
{
    EXPECT_EQ(Drawing("gb2312", IN_UTF8), SavedAgain(0, Drawing("utf-8", IN_UTF8)));
    ASSERT_EQ(1, QELSetTextCodePage(m_h, DECLARED)); // after the open it is too late
    EXPECT_EQ(Drawing("gb2312", IN_UTF8), Saved());
}

TEST_F(TextPage, ASettingThatIsTakenBackAfterTheOpenStillCountsForTheSave)
{
    EXPECT_EQ(Drawing("utf-8", IN_UTF8), SavedAgain(DECLARED, Drawing("utf-8", IN_UTF8)));
    ASSERT_EQ(1, QELSetTextCodePage(m_h, 0));
    EXPECT_EQ(Drawing("utf-8", IN_UTF8), Saved());
}

TEST_F(TextPage, WhatDeclaresNothingIsSavedWithTheNameOfItsPage)
{
    const std::string body = Drawing("", IN_UTF8).substr(Head("").size());
    EXPECT_EQ(Drawing("gb2312", IN_UTF8), SavedAgain(DECLARED, body));
    EXPECT_EQ(Drawing("utf-8", IN_UTF8), SavedAgain(UTF8, body));
    EXPECT_EQ(MARK + Drawing("utf-8", IN_UTF8), SavedAgain(DECLARED, MARK + body));
    EXPECT_EQ(Drawing("windows-1252", IN_UTF8), SavedAgain(1252, body));
    // A name that would break the line that it stands in is none.
    EXPECT_EQ(Drawing("gb2312", IN_UTF8),
              SavedAgain(DECLARED, "<?xml version='1.0' encoding='a\"b'?>" + body));
}

TEST_F(TextPage, AByteOrderMarkIsOfUtf8AndTakenWithASettingAlone)
{
    EXPECT_EQ(0, Open(MARK + Drawing("utf-8", IN_UTF8)));
    EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_NOT_QEL), Reason());
    ASSERT_EQ(1, QELSetTextCodePage(m_h, DECLARED));
    ASSERT_EQ(1, Open(MARK + Drawing("gb2312", IN_UTF8)));
    EXPECT_EQ(CellOf(WORDS_COLUMNS), FontWidth());
    EXPECT_EQ(0, Open(MARK));
    EXPECT_EQ(0, Open(MARK + MARK + Drawing("utf-8", IN_UTF8)));
    EXPECT_EQ(0, Open("\xEF\xBB" + Drawing("utf-8", IN_UTF8)));
    // The next drawing has none.
    ASSERT_EQ(1, Open(Drawing("utf-8", IN_UTF8)));
    EXPECT_EQ(Drawing("utf-8", IN_UTF8), Saved());
}

TEST_F(TextPage, ErrorsBehindAMarkHaveTheirPlaceInTheBytes)
{
    ASSERT_EQ(1, QELSetTextCodePage(m_h, DECLARED));
    EXPECT_EQ(0, Open(MARK + "<qel>\r\n<rect crd='1"));
    QELERROR error{};
    error.nSize = sizeof error;
    ASSERT_EQ(1, QELGetError(m_h, &error));
    EXPECT_EQ(2U, error.nLine);
    EXPECT_EQ(7U, error.nColumn);
}

TEST_F(TextPage, ANewDrawingDeclaresThePageThatItIsGiven)
{
    const std::string body = "<qel width=\"50\" height=\"50\"/>\r\n";
    const struct {
        DWORD nPage;
        const char* pszName;
    } rows[] = {{0, "gb2312"}, {936, "gb2312"}, {65001, "utf-8"}, {1251, "windows-1251"}};
    for (const DWORD nSet : {DWORD{0}, DECLARED})
        for (const auto& row : rows) {
            ASSERT_EQ(1, QELSetTextCodePage(m_h, nSet));
            ASSERT_EQ(1, QELNewFileEx(m_h, row.nPage)) << row.nPage;
            const std::string saved = Saved();
            EXPECT_EQ(Head(row.pszName), saved.substr(0, saved.find("<qel"))) << row.nPage;
            EXPECT_EQ(0, QELIsModified(m_h));
        }
    ASSERT_EQ(1, QELNewFileEx(m_h, UTF8));
    ASSERT_EQ(1, QELNewFile(m_h)); // the page was that drawing's alone
    const std::string saved = Saved();
    EXPECT_EQ(Head("gb2312"), saved.substr(0, saved.find("<qel")));
}

TEST_F(TextPage, ANewDrawingOfAPageWithoutANameIsRefusedAndTheOldOneStays)
{
    ASSERT_EQ(1, Open(Drawing("gb2312", IN_GB2312)));
    for (const DWORD nPage : {1U, 3U, 37U, 42U, 65000U, 1200U, 12345U, 0x10000U + 936U}) {
        EXPECT_EQ(0, QELNewFileEx(m_h, nPage)) << nPage;
        EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_VALUE), Reason());
        EXPECT_EQ(IN_GB2312, TextBytes());
    }
    EXPECT_EQ(0, QELNewFileEx(nullptr, 0));
}

TEST_F(TextPage, TextsAreSetAndReadAsUnicodeInThePageInForce)
{
    const struct {
        DWORD nSet;
        const char* pszDeclared;
        std::string bytes; // of "pump" and a one
    } rows[] = {{DECLARED, "utf-8", "\xE6\xB3\xB5 1"},
                {DECLARED, "gb2312", "\xB1\xC3 1"},
                {UTF8, "gb2312", "\xE6\xB3\xB5 1"},
                {GB2312, "utf-8", "\xB1\xC3 1"}};
    for (const auto& row : rows) {
        ASSERT_EQ(1, QELSetTextCodePage(m_h, row.nSet));
        ASSERT_EQ(1, Open(Drawing(row.pszDeclared, "old")));
        ASSERT_EQ(1, QELValidate(m_h));
        EXPECT_EQ(1, QELSetElemTextW(m_h, Text(), L"\x6CF5 1"));
        EXPECT_EQ(row.bytes, TextBytes());
        EXPECT_EQ(1, QELIsModified(m_h));
        EXPECT_TRUE(IsDirty());
        wchar_t sz[8] = L"";
        EXPECT_EQ(1, QELGetElemTextW(m_h, Text(), sz, 8));
        EXPECT_EQ(Told(L"\x6CF5 1"), Told(sz));
        EXPECT_EQ(CellOf(4), FontWidth());
        EXPECT_EQ(Drawing(row.pszDeclared, row.bytes), Saved());
    }
}

TEST_F(TextPage, WithoutASettingWideTextsAreOfTheSystemsPage)
{
    ASSERT_EQ(1, Open(Drawing("utf-8", "old")));
    EXPECT_EQ(1, QELSetElemTextW(m_h, Text(), L"new"));
    EXPECT_EQ("new", TextBytes());
    char sz[8] = "";
    if (::WideCharToMultiByte(CP_ACP, 0, L"\x00E9", -1, sz, 8, nullptr, nullptr) && sz[0] != '?' &&
        sz[0] != 'e') {
        EXPECT_EQ(1, QELSetElemTextW(m_h, Text(), L"\x00E9"));
        EXPECT_EQ(sz, TextBytes());
    }
}

TEST_F(TextPage, ATextThatThePageCannotExpressIsRefusedAndTheOldOneStays)
{
    ASSERT_EQ(1, QELSetTextCodePage(m_h, DECLARED));
    ASSERT_EQ(1, Open(Drawing("gb2312", "old")));
    ASSERT_EQ(1, QELValidate(m_h));
    std::vector<wchar_t> tooLong(129, L'\x4E2D'); // 256 bytes
    tooLong.back() = 0;
    const wchar_t* const pszTooLong = tooLong.data();
    for (const wchar_t* psz : {L"\x0E01", L"\xD83D\xDE00", pszTooLong}) {
        EXPECT_EQ(0, QELSetElemTextW(m_h, Text(), psz));
        EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_VALUE), Reason());
        EXPECT_EQ(0, QELSetTextW(m_h, "t", psz));
        EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_VALUE), Reason());
    }
    EXPECT_EQ(0, QELSetElemTextW(m_h, Text(), nullptr));
    EXPECT_EQ(0, QELSetTextW(m_h, "t", nullptr));
    EXPECT_EQ("old", TextBytes());
    EXPECT_EQ(0, QELIsModified(m_h));
    EXPECT_FALSE(IsDirty());
    EXPECT_EQ(1, QELSetElemTextW(m_h, Text(), tooLong.data() + 1));
    EXPECT_EQ(254U, TextBytes().size());
}

TEST_F(TextPage, WideTextsAreOfTextElementsAlone)
{
    ASSERT_EQ(1, Open("<qel width='9' height='9'><rect/><text>old</text></qel>"));
    const HQELELEM hRect = QELGetFirstChild(m_h, QELGetRootElem(m_h));
    wchar_t sz[300] = L"as before";
    for (const HQELELEM h : {hRect, QELGetRootElem(m_h)}) {
        EXPECT_EQ(0, QELSetElemTextW(m_h, h, L"new"));
        EXPECT_EQ(0, QELGetElemTextW(m_h, h, sz, 300));
        EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_VALUE), Reason());
    }
    EXPECT_EQ(0, QELSetElemTextW(m_h, nullptr, L"new"));
    EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_ELEMENT), Reason());
    EXPECT_EQ(0, QELGetElemTextW(m_h, nullptr, sz, 300));
    EXPECT_EQ(Told(L"as before"), Told(sz));
}

TEST_F(TextPage, ABufferThatIsTooSmallForATextIsNotWrittenTo)
{
    ASSERT_EQ(1, Open(Drawing("gb2312", "four")));
    wchar_t sz[8] = L"xxxxxxx";
    for (const int n : {-1, 0, 1, 4}) {
        EXPECT_EQ(0, QELGetElemTextW(m_h, Text(), sz, n)) << n;
        EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_BUFFER), Reason());
    }
    EXPECT_EQ(Told(L"xxxxxxx"), Told(sz));
    EXPECT_EQ(0, QELGetElemTextW(m_h, Text(), nullptr, 8));
    EXPECT_EQ(1, QELGetElemTextW(m_h, Text(), sz, 5));
    EXPECT_EQ(Told(L"four"), Told(sz));
}

TEST_F(TextPage, LiveTextsAreInThePageInForce)
{
    ASSERT_EQ(1, QELSetTextCodePage(m_h, DECLARED));
    ASSERT_EQ(1, Open(Drawing("utf-8", IN_UTF8)));
    const std::vector<std::string> calls = Calls({"CreateFont", "Text"});
    ASSERT_EQ(1, Open(Drawing("utf-8", "old")));
    EXPECT_EQ(1, QELSetText(m_h, "t", IN_UTF8.c_str()));
    EXPECT_EQ(calls, Calls({"CreateFont", "Text"}));
    EXPECT_EQ(1, QELResetLive(m_h, "t"));
    EXPECT_NE(calls, Calls({"CreateFont", "Text"}));
    EXPECT_EQ(1, QELSetTextW(m_h, "t", L"\x6CF5 \x03B1\x03B2 \x0436 1"));
    EXPECT_EQ(calls, Calls({"CreateFont", "Text"}));
    EXPECT_EQ(0, QELSetTextW(m_h, "nobody", L"x"));
    EXPECT_EQ("old", TextBytes()); // the document does not know of them
}

TEST_F(TextPage, NumbersInTextsKeepTheirPlace)
{
    ASSERT_EQ(1, QELSetTextCodePage(m_h, DECLARED));
    ASSERT_EQ(1, Open(Drawing("utf-8", "\xE6\xB3\xB5 12.5 \xE2\x84\x83"))); // a degree sign with C
    const std::vector<std::string> calls = Calls({"CreateFont", "Text"});
    ASSERT_EQ(1, Open(Drawing("utf-8", "\xE6\xB3\xB5 ##.# \xE2\x84\x83")));
    EXPECT_EQ(CellOf(9), FontWidth());
    EXPECT_EQ(1, QELSetValue(m_h, "t", 12.5));
    EXPECT_EQ(calls, Calls({"CreateFont", "Text"}));
}

TEST_F(TextPage, BytesThatAreNoTextAreDrawnAllTheSame)
{
    ASSERT_EQ(1, QELSetTextCodePage(m_h, DECLARED));
    for (const std::string& text :
         {std::string("\xFF\xFE"), std::string("ab\xE6\xB3"), std::string("\xF0\x9F\x98\x80"),
          std::string("\xED\xA0\xBD"), std::string(255, '\x80'), std::string("a&amp;\xFF")})
        for (const char* psz : {"utf-8", "gb2312", "shift_jis", "us-ascii", "big5"}) {
            ASSERT_EQ(1, Open(Drawing(psz, text)));
            EXPECT_EQ(1U, Calls({"CreateFont"}).size()) << psz;
            RECT rc{};
            EXPECT_EQ(1, QELGetElemDrawRect(m_h, Text(), &rc));
        }
}

TEST_F(TextPage, TheNumbersOfMetersHaveTheCharacterSetOfDigits)
{
    const std::string meters =
        "<qel width='200' height='200'>"
        "<meter mtype='horz' imin='1' crd='0 0 100 20'><rect style='0x1' crd='0 0 100 20'/></meter>"
        "<meter mtype='round' imin='1' crd='45 65 45 0 20 90 110'/>"
        "<meter mtype='roundUpgrade' imin='1' crd='135 65 45 90 20 180 110'/>"
        "<meter mtype='clock' imin='1' crd='45 155 45 0 110 90 200'/>"
        "<meter mtype='pieUpgrade' imin='1' crd='135 155 45 90 110 180 200'/>"
        "</qel>";
    ASSERT_EQ(1, Open(meters));
    const RECT rc{0, 0, 800, 800};
    ASSERT_EQ(1, QELSetQELRect(m_h, &rc));
    const auto calls = [&] {
        CRecording recording;
        EXPECT_EQ(1, QELDraw(m_h, recording.Dc(), &rc, QEL_DRAW_FULL));
        return recording.Calls();
    };
    std::vector<std::string> bytes = calls();
    ASSERT_EQ(1, QELSetTextCodePage(m_h, DECLARED));
    const std::vector<std::string> wide = calls();
    int nFonts = 0;
    for (std::string& line : bytes) { // nothing else changes
        const std::size_t nAt = line.find("charset 255");
        if (nAt == std::string::npos) continue;
        line.replace(nAt, 11, "charset 0");
        ++nFonts;
    }
    EXPECT_LT(0, nFonts);
    EXPECT_EQ(bytes, wide);
    ASSERT_EQ(1, QELSetTextCodePage(m_h, 0));
    EXPECT_NE(wide, calls());
}

class SharedTextPage : public TextPage {
protected:
    SharedTextPage()
    {
        EXPECT_EQ(1, QELShowOnly(1));
        EXPECT_EQ(1, DestroyQELEngine(m_h));
        m_h = CreateQELEngine();
    }
    ~SharedTextPage() override { EXPECT_EQ(1, QELShowOnly(0)); }

    CTestFolder m_folder;
};

TEST_F(SharedTextPage, IsThatOfTheSharedDrawing)
{
    const std::string path = m_folder.Path("a.qel");
    WriteBytes(path, Drawing("utf-8", IN_UTF8));
    const HQELENGINE hOther = CreateQELEngine();
    ASSERT_EQ(1, QELOpenFile(m_h, path.c_str()));
    ASSERT_EQ(1, QELOpenFile(hOther, path.c_str()));
    EXPECT_EQ(1, QELSetTextCodePage(hOther, DECLARED));
    EXPECT_EQ(DECLARED, Setting());
    EXPECT_EQ(CellOf(WORDS_COLUMNS), FontWidth());
    EXPECT_EQ(0, QELSetTextCodePage(m_h, 12345));
    EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_VALUE), Reason());
    EXPECT_EQ(DECLARED, Setting());
    EXPECT_EQ(1, QELSetTextW(m_h, "t", L"\x6CF5"));
    EXPECT_EQ(0, QELNewFileEx(m_h, UTF8));
    EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_SHOW_ONLY), Reason());
    EXPECT_EQ(1, DestroyQELEngine(hOther));
    EXPECT_EQ(DECLARED, Setting());
}

TEST_F(SharedTextPage, MayBeSetBeforeTheOpen)
{
    const std::string path = m_folder.Path("a.qel");
    WriteBytes(path, MARK + Drawing("utf-8", IN_UTF8));
    EXPECT_EQ(0, QELOpenFile(m_h, path.c_str()));
    EXPECT_EQ(0U, Setting());
    EXPECT_EQ(1, QELSetTextCodePage(m_h, DECLARED));
    EXPECT_EQ(DECLARED, Setting());
    ASSERT_EQ(1, QELOpenFile(m_h, path.c_str()));
    EXPECT_EQ(CellOf(WORDS_COLUMNS), FontWidth());
    // One that joins has the setting that is there.
    const HQELENGINE hOther = CreateQELEngine();
    EXPECT_EQ(1, QELSetTextCodePage(hOther, GB2312));
    ASSERT_EQ(1, QELOpenFile(hOther, path.c_str()));
    DWORD nPage = 0;
    EXPECT_EQ(1, QELGetTextCodePage(hOther, &nPage));
    EXPECT_EQ(DECLARED, nPage);
    EXPECT_EQ(1, DestroyQELEngine(hOther));
}

TEST_F(TextPage, ADeclaredNameHasLettersDigitsAndFewSigns)
{
    const std::string body = Drawing("", IN_UTF8).substr(Head("").size());
    for (const char* psz : {"azAZ09-_.:()", "z"})
        EXPECT_EQ(Drawing(psz, IN_UTF8), SavedAgain(DECLARED, "<?xml version='1.0' encoding='" +
                                                                  std::string(psz) + "'?>" + body))
            << psz;
    for (const char* psz :
         {"a`", "a{", "a@", "a[", "a/", "a;", "a b", "a\x80"}) // beside the ranges
        EXPECT_EQ(Drawing("gb2312", IN_UTF8),
                  SavedAgain(DECLARED,
                             "<?xml version='1.0' encoding='" + std::string(psz) + "'?>" + body))
            << psz;
    // As long as there is room for it with its end, which is 47 letters.
    const std::string longest(47, 'a');
    EXPECT_EQ(Drawing(longest, IN_UTF8),
              SavedAgain(DECLARED, "<?xml version='1.0' encoding='" + longest + "'?>" + body));
    EXPECT_EQ(Drawing("gb2312", IN_UTF8),
              SavedAgain(DECLARED, "<?xml version='1.0' encoding='" + longest + "a'?>" + body));
}

} // namespace
