// Why a call failed, as hosts are told it: each kind of failure leaves its code at its handle.
#include "include/QELEngine.h"
#include "tests/support/Files.h"
#include "tests/support/Wide.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace {

QELERROR ErrorOf(HQELENGINE hEngine)
{
    QELERROR error;
    std::memset(&error, 0xCC, sizeof error);
    error.nSize = sizeof error;
    const int nResult = QELGetError(hEngine, &error);
    EXPECT_EQ(error.nCode != QEL_ERROR_NONE ? 1 : 0, nResult);
    EXPECT_EQ(sizeof error, error.nSize);
    EXPECT_NE(nullptr, std::memchr(error.szText, 0, sizeof error.szText));
    return error;
}

DWORD CodeOf(HQELENGINE hEngine)
{
    return ErrorOf(hEngine).nCode;
}

class Errors : public ::testing::Test {
protected:
    Errors() : m_h(CreateQELEngine()) {}
    ~Errors() override { EXPECT_EQ(1, DestroyQELEngine(m_h)); }

    // Leaves another code at the handle than any that the tests expect.
    void Clear() const
    {
        DWORD nSize = 0;
        char cByte = 0;
        if (QELSaveMemory(m_h, nullptr, &nSize)) {
            nSize = 1;
            EXPECT_EQ(0, QELSaveMemory(m_h, &cByte, &nSize));
            EXPECT_EQ(QEL_ERROR_BUFFER, CodeOf(m_h));
        }
    }
    void OpenText(const std::string& text) const
    {
        ASSERT_EQ(1, QELOpenMemory(m_h, text.data(), static_cast<DWORD>(text.size())));
    }
    QELERROR WhyNotOpened(const std::string& text) const
    {
        EXPECT_EQ(0, QELOpenMemory(m_h, text.data(), static_cast<DWORD>(text.size()))) << text;
        return ErrorOf(m_h);
    }

    CTestFolder m_folder;
    HQELENGINE m_h;
};

// Where a text has the mark "^", and the text without it.
struct Marked {
    explicit Marked(const std::string& marked)
    {
        for (const char c : marked) {
            if (c == '^') {
                nAtLine = nLine;
                nAtColumn = nColumn;
                continue;
            }
            text += c;
            ++nColumn;
            if (c == '\n') {
                ++nLine;
                nColumn = 1;
            }
        }
    }
    std::string text;
    DWORD nLine = 1;
    DWORD nColumn = 1;
    DWORD nAtLine = 0;
    DWORD nAtColumn = 0;
};

} // namespace

TEST_F(Errors, NothingHasFailedOnANewHandle)
{
    const QELERROR error = ErrorOf(m_h);
    EXPECT_EQ(0u, error.nCode);
    EXPECT_EQ(0u, error.nLine + error.nColumn + error.nSystem);
    EXPECT_STREQ("No call has failed.", error.szText);
}

TEST_F(Errors, AreToldInARecordOfTheRightSizeAlone)
{
    EXPECT_EQ(0, QELGetError(m_h, nullptr));
    QELERROR error{};
    for (const DWORD nSize : {0u, 275u, 277u, ~0u}) {
        error.nSize = nSize;
        error.nCode = 77;
        EXPECT_EQ(0, QELGetError(m_h, &error));
        EXPECT_EQ(77u, error.nCode);
    }
    EXPECT_EQ(0u, CodeOf(m_h)); // asking is no failed call
}

TEST_F(Errors, OfCallsWithoutADrawing)
{
    SIZE size{1, 2};
    RECT rc{0, 0, 9, 9};
    DWORD n = 0;
    const std::vector<std::pair<const char*, bool>> calls = {
        {"QELGetRootElem", QELGetRootElem(m_h) != nullptr},
        {"QELGetName", QELGetName(m_h) != nullptr},
        {"QELSetRefSize", QELSetRefSize(m_h, &size) != 0},
        {"QELSetStatus", QELSetStatus(m_h, 1) != 0},
    };
    for (const auto& [pszName, bDone] : calls) EXPECT_FALSE(bDone) << pszName;
    const auto expectNoDrawing = [&](int nResult, const char* pszName) {
        EXPECT_EQ(0, nResult) << pszName;
        EXPECT_EQ(QEL_ERROR_NO_DRAWING, CodeOf(m_h)) << pszName;
        EXPECT_EQ(0, QELSetElemId(m_h, nullptr, "x")); // another code
        EXPECT_EQ(QEL_ERROR_ELEMENT, CodeOf(m_h));
    };
    expectNoDrawing(QELGetName(m_h) != nullptr, "QELGetName");
    expectNoDrawing(QELGetRootElem(m_h) != nullptr, "QELGetRootElem");
    expectNoDrawing(QELCreateElem(m_h, QEL_TYPE_RECT, nullptr, nullptr) != nullptr, "create");
    expectNoDrawing(QELSetRefSize(m_h, &size), "QELSetRefSize");
    expectNoDrawing(QELGetDrawGraphRect(m_h, &rc), "QELGetDrawGraphRect");
    expectNoDrawing(QELDraw(m_h, nullptr, &rc, QEL_DRAW_FULL), "QELDraw");
    expectNoDrawing(QELRotate(m_h, 90), "QELRotate");
    expectNoDrawing(QELSetBlinkState(m_h, 1), "QELSetBlinkState");
    expectNoDrawing(QELSetStatus(m_h, 1), "QELSetStatus");
    expectNoDrawing(QELGetStatus(m_h, &n), "QELGetStatus");
    expectNoDrawing(static_cast<int>(QELParamsSupported(m_h)), "QELParamsSupported");
    expectNoDrawing(QELSetScaleStatus(m_h, 1, 1), "QELSetScaleStatus");
    expectNoDrawing(QELSetValue(m_h, "a", 1), "QELSetValue");
    expectNoDrawing(QELResetLive(m_h, nullptr), "QELResetLive");
    expectNoDrawing(QELAdvance(m_h, 1), "QELAdvance");
    expectNoDrawing(QELGetDirtyRect(m_h, &rc), "QELGetDirtyRect");
    expectNoDrawing(QELInvalidate(m_h, nullptr), "QELInvalidate");
    expectNoDrawing(QELValidate(m_h), "QELValidate");
    expectNoDrawing(QELUpdate(m_h, nullptr, nullptr), "QELUpdate");
    expectNoDrawing(QELSaveFile(m_h, m_folder.Path("a.qel").c_str()), "QELSaveFile");
    expectNoDrawing(QELSaveFileW(m_h, L"a.qel"), "QELSaveFileW");
    expectNoDrawing(QELSaveMemory(m_h, nullptr, &n), "QELSaveMemory");
}

TEST_F(Errors, OfNullPointers)
{
    OpenText("<qel><rect id='r' crd='1 2 3 4'/></qel>");
    const HQELELEM hRect = QELGetFirstChild(m_h, QELGetRootElem(m_h));
    const auto expectArgument = [&](int nResult) {
        EXPECT_EQ(0, nResult);
        EXPECT_EQ(QEL_ERROR_ARGUMENT, CodeOf(m_h));
        Clear();
    };
    expectArgument(QELSetElemId(m_h, hRect, nullptr));
    expectArgument(QELGetElemAttr(m_h, hRect, nullptr, nullptr));
    expectArgument(QELSetElemAttr(m_h, hRect, nullptr, 424));
    expectArgument(QELGetElemRect(m_h, hRect, nullptr));
    expectArgument(QELSetElemRect(m_h, hRect, nullptr));
    expectArgument(QELGetRefSize(m_h, nullptr));
    expectArgument(QELSetRefSize(m_h, nullptr));
    expectArgument(QELGetQELRect(m_h, nullptr));
    expectArgument(QELSetQELRect(m_h, nullptr));
    expectArgument(QELGetDrawGraphRect(m_h, nullptr));
    expectArgument(QELDraw(m_h, nullptr, nullptr, 0));
    expectArgument(QELGetStatus(m_h, nullptr));
    expectArgument(QELGetParam(m_h, 0, nullptr));
    expectArgument(QELGetScaleParam(m_h, 0, 0, nullptr));
    expectArgument(QELGetScaleParamf(m_h, 0, 0, nullptr));
    expectArgument(QELGetScaleStatus(m_h, 0, nullptr));
    expectArgument(QELOpenFileU(m_h, nullptr));
    expectArgument(QELOpenFileW(m_h, nullptr));
    expectArgument(QELOpenMemory(m_h, nullptr, 5));
    expectArgument(QELSaveFile(m_h, nullptr));
    expectArgument(QELSaveFileW(m_h, nullptr));
    expectArgument(QELSaveMemory(m_h, nullptr, nullptr));
    EXPECT_NE(nullptr, QELGetRootElem(m_h)); // the drawing is still open
}

TEST_F(Errors, OfElementsThatAreNotOfThisDrawing)
{
    OpenText("<qel><rect id='r' crd='1 2 3 4'/></qel>");
    const HQELENGINE hOther = CreateQELEngine();
    ASSERT_EQ(1, QELNewFile(hOther));
    const HQELELEM hForeign = QELGetRootElem(hOther);
    const HQELELEM hDead = QELGetFirstChild(m_h, QELGetRootElem(m_h));
    ASSERT_EQ(1, QELDeleteElem(m_h, hDead));
    RECT rc{};
    for (const HQELELEM h : {hForeign, hDead, HQELELEM{nullptr}}) {
        const auto expectElement = [&](bool bDone) {
            EXPECT_FALSE(bDone);
            EXPECT_EQ(QEL_ERROR_ELEMENT, CodeOf(m_h));
            Clear();
        };
        expectElement(QELGetParentElem(m_h, h));
        expectElement(QELGetNextElem(m_h, h));
        expectElement(QELGetElemType(m_h, h) != QEL_TYPE_NONE);
        expectElement(QELGetElemId(m_h, h));
        expectElement(QELGetElemRect(m_h, h, &rc));
        expectElement(QELDeleteElem(m_h, h));
        expectElement(QELMoveElem(m_h, h, nullptr, nullptr));
        expectElement(QELCopyElem(m_h, h));
        if (h) expectElement(QELCreateElem(m_h, QEL_TYPE_RECT, h, nullptr));
    }
    EXPECT_EQ(0u, CodeOf(hOther));
    EXPECT_EQ(1, DestroyQELEngine(hOther));
}

TEST_F(Errors, OfEditsThatAreRefused)
{
    OpenText("<qel><g id='g'><rect id='r' crd='1 2 3 4'/></g><scale crd='1 2 3 4'/><g/></qel>");
    const HQELELEM hRoot = QELGetRootElem(m_h);
    const HQELELEM hGroup = QELGetFirstChild(m_h, hRoot);
    const HQELELEM hRect = QELGetFirstChild(m_h, hGroup);
    const HQELELEM hScale = QELGetNextElem(m_h, hGroup);
    const HQELELEM hEmpty = QELGetLastChild(m_h, hRoot);
    const auto expect = [&](DWORD nCode, bool bDone) {
        EXPECT_FALSE(bDone);
        EXPECT_EQ(nCode, CodeOf(m_h));
        Clear();
    };
    for (const int nType : {-1, 12, 13, 14, 22, 1000})
        expect(QEL_ERROR_TYPE, QELCreateElem(m_h, nType, nullptr, nullptr));
    expect(QEL_ERROR_PLACE, QELCreateElem(m_h, QEL_TYPE_ROOT, hRoot, nullptr));
    expect(QEL_ERROR_PLACE, QELCreateElem(m_h, QEL_TYPE_RECT, hRoot, hRect));
    expect(QEL_ERROR_PLACE, QELMoveElem(m_h, hRoot, hGroup, nullptr));
    expect(QEL_ERROR_PLACE, QELMoveElem(m_h, hGroup, hRect, nullptr)); // into itself
    expect(QEL_ERROR_PLACE, QELMoveElem(m_h, hRect, hRoot, hRect));
    expect(QEL_ERROR_PLACE, QELCopyElem(m_h, hRoot));
    RECT rc{0, 0, 5, 5};
    expect(QEL_ERROR_NO_RECT, QELSetElemRect(m_h, hEmpty, &rc));

    QELSHAPEATTR shape{};
    ASSERT_EQ(1, QELGetElemAttr(m_h, hRect, &shape, nullptr));
    expect(QEL_ERROR_RECORD_SIZE, QELSetElemAttr(m_h, hRect, &shape, sizeof shape - 1));
    shape.nSize = 425;
    expect(QEL_ERROR_RECORD_SIZE, QELSetElemAttr(m_h, hRect, &shape, sizeof shape));
    QELSCALEATTR scale{};
    ASSERT_EQ(1, QELGetElemAttr(m_h, hScale, &scale, nullptr));
    scale.nType = 6;
    expect(QEL_ERROR_VALUE, QELSetElemAttr(m_h, hScale, &scale, sizeof scale));
}

TEST_F(Errors, OfValuesAndNumbersOutOfRange)
{
    OpenText("<qel><scale scid='7' crd='1 2 3 4'/></qel>");
    DWORD n = 0;
    const auto expectValue = [&](int nResult) {
        EXPECT_EQ(0, nResult);
        EXPECT_EQ(QEL_ERROR_VALUE, CodeOf(m_h));
        Clear();
    };
    expectValue(QELGetParam(m_h, 4, &n));
    expectValue(QELSetParam(m_h, -1, 0));
    expectValue(QELSetParam(m_h, QEL_PARAM_DRAFT, 38));
    expectValue(QELSetScaleParam(m_h, 7, QEL_SEL_TICKS, 0)); // it has no 0 intervals
    expectValue(QELSetScaleParam(m_h, 7, 34, 1));
    expectValue(QELGetScaleParam(m_h, 7, QEL_SEL_FONT_SIZE, &n));
    expectValue(QELSetScaleParamf(m_h, 7, QEL_SEL_MAX, 1.0F));
}

TEST_F(Errors, OfValuesByIdentifierThatAreRefused)
{
    OpenText("<qel width='50' height='50'><meter id='dial' mtype='round' crd='9 9 8 0 0 18 18'/>"
             "<text id='text' crd='1 2 30 40'>#</text><rect id='rect' crd='1 2 3 4'/>"
             "<scale id='scale' crd='1 2 3 4'/></qel>");
    double f = 0;
    const auto expectValue = [&](int nResult) {
        EXPECT_EQ(0, nResult);
        EXPECT_EQ(QEL_ERROR_VALUE, CodeOf(m_h));
        Clear();
    };
    expectValue(QELSetValue(m_h, "rect", 1));
    expectValue(QELSetPin(m_h, "dial", 1, 1)); // it is no share chart
    expectValue(QELGetPin(m_h, "dial", 33, &f));
    expectValue(QELSetSelector(m_h, "dial", 99, 1));
    expectValue(QELSetSelector(m_h, "dial", QEL_SEL_TICKS, 0)); // it has no 0 intervals
    expectValue(QELSetSelector(m_h, "dial", QEL_SEL_MAX, 1e10));
    expectValue(QELGetSelector(m_h, "text", QEL_SEL_MAX, &f));
    expectValue(QELGetSelector(m_h, "scale", QEL_SEL_FONT_SIZE, &f));
    expectValue(QELSetText(m_h, "rect", "a"));
    expectValue(QELSetText(m_h, "text", nullptr));
    expectValue(QELSetText(m_h, "text", std::string(256, 'a').c_str()));
    expectValue(QELSetColor(m_h, "rect", 3, 0));
    expectValue(QELSetColor(m_h, "dial", 0, 0));
    expectValue(QELSetQuality(m_h, "dial", 3));
    expectValue(QELSetEasing(m_h, "rect", 100));
}

TEST_F(Errors, OfCallsByIdentifierWithoutOne)
{
    OpenText("<qel width='50' height='50'><rect id='rect' crd='1 2 3 4'/></qel>");
    char szId[9];
    double f = 0;
    const auto expectArgument = [&](int nResult) {
        EXPECT_EQ(0, nResult);
        EXPECT_EQ(QEL_ERROR_ARGUMENT, CodeOf(m_h));
        Clear();
    };
    expectArgument(QELSetValue(m_h, nullptr, 1));
    expectArgument(QELGetValue(m_h, nullptr, &f));
    expectArgument(QELSetPin(m_h, nullptr, 1, 1));
    expectArgument(QELSetSelector(m_h, nullptr, QEL_SEL_MAX, 1));
    expectArgument(QELSetText(m_h, nullptr, "a"));
    expectArgument(QELSetVisible(m_h, nullptr, 1));
    expectArgument(QELSetColor(m_h, nullptr, 0, 0));
    expectArgument(QELSetQuality(m_h, nullptr, 0));
    expectArgument(QELSetEasing(m_h, nullptr, 0));
    expectArgument(QELGetLiveId(m_h, 0, nullptr, 9, nullptr));
    expectArgument(QELGetLiveId(m_h, 0, szId, 0, nullptr));
    expectArgument(QELGetDirtyRegion(m_h, nullptr));
    EXPECT_EQ(0, QELGetLiveId(m_h, 0, szId, 4, nullptr)); // without its zero
    EXPECT_EQ(QEL_ERROR_BUFFER, CodeOf(m_h));
}

TEST_F(Errors, OfUpdatesOntoNoContext)
{
    OpenText("<qel width='50' height='50'><rect crd='1 2 3 4'/></qel>");
    EXPECT_EQ(0, QELUpdate(m_h, nullptr, nullptr));
    EXPECT_EQ(QEL_ERROR_GDI, CodeOf(m_h));
    Clear();
    EXPECT_EQ(1, QELValidate(m_h));
    EXPECT_EQ(0, QELUpdate(m_h, nullptr, nullptr)); // nothing is dirty
    EXPECT_EQ(QEL_ERROR_BUFFER, CodeOf(m_h));       // what stood there
}

TEST_F(Errors, AnswersAreNoFailures)
{
    OpenText("<qel width='50' height='50'><rect crd='1 2 3 4'/>"
             "<text id='text' crd='1 2 3 4'>#</text></qel>");
    char szId[9];
    double f = 0;
    EXPECT_EQ(0, QELSetValue(m_h, "nobody", 1));
    EXPECT_EQ(0, QELSetValue(m_h, "", 1));
    EXPECT_EQ(0, QELGetValue(m_h, "text", &f)); // it has none yet
    EXPECT_EQ(0, QELGetLiveId(m_h, 1, szId, sizeof szId, nullptr));
    EXPECT_EQ(0, QELAdvance(m_h, 1));
    EXPECT_EQ(1, QELValidate(m_h));
    EXPECT_EQ(0, QELUpdate(m_h, nullptr, nullptr));
    const HQELELEM hRoot = QELGetRootElem(m_h);
    RECT rc{100, 100, 110, 110};
    DWORD n = 0;
    EXPECT_EQ(nullptr, QELGetParentElem(m_h, hRoot));
    EXPECT_EQ(nullptr, QELGetNextElem(m_h, QELGetLastChild(m_h, hRoot)));
    EXPECT_EQ(0, QELGetDrawGraphRect(m_h, &rc));
    EXPECT_EQ(0, QELGetStatus(m_h, &n));
    EXPECT_EQ(0, QELSetStatus(m_h, 1));
    EXPECT_EQ(0, QELSetParam(m_h, QEL_PARAM_COLOR, 1));
    EXPECT_EQ(0, QELSetScaleStatus(m_h, 99, 1));
    EXPECT_EQ(0, QELDraw(m_h, nullptr, &rc, QEL_DRAW_FULL));
    EXPECT_EQ(0, QELIsModified(m_h));
    EXPECT_EQ(0u, CodeOf(m_h));
}

TEST_F(Errors, StayWhenALaterCallSucceeds)
{
    EXPECT_EQ(0, QELOpenFileW(m_h, nullptr));
    EXPECT_EQ(1, QELNewFile(m_h));
    EXPECT_NE(nullptr, QELGetRootElem(m_h));
    EXPECT_EQ(QEL_ERROR_ARGUMENT, CodeOf(m_h));
}

TEST_F(Errors, OfHandlesThatAreNotLiveAreKeptWithTheThread)
{
    const HQELENGINE hDead = CreateQELEngine();
    ASSERT_EQ(1, DestroyQELEngine(hDead));
    EXPECT_EQ(0, QELNewFile(hDead));
    EXPECT_EQ(QEL_ERROR_HANDLE, CodeOf(nullptr));
    EXPECT_EQ(QEL_ERROR_HANDLE, CodeOf(hDead)); // asks the same
    EXPECT_EQ(0, QELOpenFileU(nullptr, nullptr));
    EXPECT_EQ(QEL_ERROR_ARGUMENT, CodeOf(nullptr));
    EXPECT_EQ(0, DestroyQELEngine(nullptr));
    EXPECT_EQ(QEL_ERROR_HANDLE, CodeOf(nullptr));
    EXPECT_EQ(0, QELIsModified(nullptr));
    EXPECT_EQ(0u, CodeOf(m_h));
}

TEST_F(Errors, OfHandlesThatAreNotLiveAreToldByEveryCallOfLiveDrawings)
{
    RECT rc{1, 2, 3, 4};
    double f = 9;
    char szId[8] = "as was";
    const std::function<int()> calls[] = {
        [&] { return QELSetValue(nullptr, "a", 1); },
        [&] { return QELGetValue(nullptr, "a", &f); },
        [&] { return QELAdvance(nullptr, 1); },
        [&] { return QELGetLiveId(nullptr, 0, szId, sizeof szId, nullptr); },
        [&] { return QELGetDirtyRect(nullptr, &rc); },
        [&] { return QELGetDirtyRegion(nullptr, nullptr); },
        [&] { return QELInvalidate(nullptr, &rc); },
        [&] { return QELValidate(nullptr); },
        [&] { return QELUpdate(nullptr, nullptr, nullptr); },
    };
    int n = 0;
    for (const auto& call : calls) {
        SCOPED_TRACE(n++);
        EXPECT_EQ(0, QELOpenFileU(nullptr, nullptr)); // another reason before
        EXPECT_EQ(QEL_ERROR_ARGUMENT, CodeOf(nullptr));
        EXPECT_EQ(0, call());
        EXPECT_EQ(QEL_ERROR_HANDLE, CodeOf(nullptr));
    }
    EXPECT_EQ(1, rc.left);
    EXPECT_EQ(9, f);
    EXPECT_STREQ("as was", szId);
    EXPECT_EQ(0, QELGetDirtyRect(m_h, nullptr));
    EXPECT_EQ(QEL_ERROR_ARGUMENT, CodeOf(m_h));
}

TEST_F(Errors, LeaveTheSystemsOwnLastErrorWhenTheyAreAsked)
{
    ::SetLastError(4711);
    CodeOf(nullptr);
    EXPECT_EQ(4711u, ::GetLastError());
}

TEST_F(Errors, OfFilesThatCannotBeOpened)
{
    EXPECT_EQ(0, QELOpenFile(m_h, m_folder.Path("missing.qel").c_str()));
    EXPECT_EQ(QEL_ERROR_NO_FILE, CodeOf(m_h));
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, ErrorOf(m_h).nSystem);
    EXPECT_EQ(0, QELOpenFileW(m_h, Wide(m_folder.Path("none\\missing.qel")).data()));
    EXPECT_EQ(QEL_ERROR_NO_FILE, CodeOf(m_h));
    EXPECT_EQ(DWORD{ERROR_PATH_NOT_FOUND}, ErrorOf(m_h).nSystem);
    EXPECT_EQ(0, QELOpenFile(m_h, m_folder.Path("").c_str()));
    EXPECT_NE(QEL_ERROR_NONE, CodeOf(m_h));
    EXPECT_NE(0u, ErrorOf(m_h).nSystem);

    const std::string path = m_folder.Path("empty.qel");
    ASSERT_TRUE(WriteBytes(path, ""));
    EXPECT_EQ(0, QELOpenFile(m_h, path.c_str()));
    EXPECT_EQ(QEL_ERROR_XML_EMPTY, CodeOf(m_h));
    EXPECT_EQ(0u, ErrorOf(m_h).nSystem);
    EXPECT_EQ(0, QELOpenFileU(m_h, L"a\xD800.qel"));
    EXPECT_EQ(QEL_ERROR_PATH, CodeOf(m_h));
}

TEST_F(Errors, OfFilesThatOthersHaveOpen)
{
    const std::string path = m_folder.Path("held.qel");
    ASSERT_TRUE(WriteBytes(path, "<qel/>"));
    const HANDLE hReader = ::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, hReader);
    EXPECT_EQ(0, QELOpenFile(m_h, path.c_str())); // it asks for the file alone
    EXPECT_EQ(QEL_ERROR_IN_USE, CodeOf(m_h));
    EXPECT_EQ(DWORD{ERROR_SHARING_VIOLATION}, ErrorOf(m_h).nSystem);
    EXPECT_EQ(1, QELOpenFileW(m_h, Wide(path).data())); // a backup at work
    EXPECT_EQ(0, QELSaveFileW(m_h, Wide(path).data()));
    EXPECT_EQ(QEL_ERROR_REPLACE, CodeOf(m_h));
    EXPECT_EQ(DWORD{ERROR_SHARING_VIOLATION}, ErrorOf(m_h).nSystem);
    ::CloseHandle(hReader);

    const HANDLE hWriter =
        ::CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, hWriter);
    EXPECT_EQ(0, QELOpenFileW(m_h, Wide(path).data())); // it would be read half written
    EXPECT_EQ(QEL_ERROR_IN_USE, CodeOf(m_h));
    ::CloseHandle(hWriter);
}

TEST_F(Errors, OfSavesThatHaveNoPlace)
{
    ASSERT_EQ(1, QELNewFile(m_h));
    EXPECT_EQ(0, QELSaveFile(m_h, m_folder.Path("none\\a.qel").c_str()));
    EXPECT_EQ(QEL_ERROR_WRITE, CodeOf(m_h));
    EXPECT_EQ(DWORD{ERROR_PATH_NOT_FOUND}, ErrorOf(m_h).nSystem);
    const std::string path = m_folder.Path("kept.qel");
    ASSERT_TRUE(WriteBytes(path, "old"));
    ASSERT_TRUE(::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    for (const bool bWide : {false, true}) {
        Clear();
        EXPECT_EQ(0, bWide ? QELSaveFileW(m_h, Wide(path).data()) : QELSaveFile(m_h, path.c_str()));
        EXPECT_EQ(QEL_ERROR_REPLACE, CodeOf(m_h));
        EXPECT_EQ("old", ReadBytes(path));
    }
    ASSERT_TRUE(::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL));
}

// The numbers of the XML library and 100; the mark "^" stands where an author has to look.
TEST_F(Errors, OfTextsHaveTheirLineAndColumnByBytes)
{
    struct Row {
        DWORD nCode;
        const char* pszText;
    };
    const Row rows[] = {{120, "<qel>\n<g>\n  ^</qel>"},
                        {120, "<qel>\r\n\r\n<rect\r\n  crd = '1 2 3 4'>^</rekt></qel>"},
                        {116, "<qel>\n<rect ^=5/></qel>"},
                        {114, "<qel>\n\n  <rect id='a'\n ^crd='1 2 3 4/>\n</qel>\n"},
                        {119, "<qel><rect id='\xD6\xD0\xCE\xC4'\n^/ ></qel>"},
                        {121, "<qel>\n<g>a&amp;b\n&lt;c\n^"},
                        {118, "<qel><rect\nid='x&lt;&gt;\ny'^"},
                        {117, "<qel>\n<rect^"},
                        {105, "^"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszText);
        const Marked marked(row.pszText);
        const QELERROR error = WhyNotOpened(marked.text);
        EXPECT_EQ(row.nCode, error.nCode);
        if (row.nCode == QEL_ERROR_XML_EMPTY) continue; // nowhere
        EXPECT_EQ(marked.nAtLine, error.nLine);
        EXPECT_EQ(marked.nAtColumn, error.nColumn);
    }
}

TEST_F(Errors, OfTextsAreTheSameFromAFile)
{
    const Marked marked("<?xml version='1.0'?>\n<qel>\n<text crd='1 2 3 4'>a\nb ^</textt></qel>");
    const std::string path = m_folder.Path("bad.qel");
    ASSERT_TRUE(WriteBytes(path, marked.text));
    EXPECT_EQ(0, QELOpenFile(m_h, path.c_str()));
    const QELERROR error = ErrorOf(m_h);
    EXPECT_EQ(QEL_ERROR_XML_MISMATCH, error.nCode);
    EXPECT_EQ(marked.nAtLine, error.nLine);
    EXPECT_EQ(marked.nAtColumn, error.nColumn);
}

TEST_F(Errors, OfElementsNestedTooDeepTellWhereTheFirstOneIs)
{
    constexpr int MOST = 512;
    std::string text = "<qel>\n";
    for (int n = 0; n < MOST; ++n) text += "<g>";
    const QELERROR error = WhyNotOpened(text + "\n\n  <\ng/>");
    EXPECT_EQ(QEL_ERROR_XML_DEPTH, error.nCode);
    EXPECT_EQ(4u, error.nLine);
    EXPECT_EQ(3u, error.nColumn);
}

TEST_F(Errors, OfTextsThatAreNoDrawing)
{
    for (const char* pszText : {"<svg/>", "text", "<!-- nothing -->", "<svg><qel/></svg>"}) {
        EXPECT_EQ(QEL_ERROR_NOT_QEL, WhyNotOpened(pszText).nCode) << pszText;
        EXPECT_EQ(0u, ErrorOf(m_h).nLine);
    }
}

TEST_F(Errors, InShowOnlyModeBelongToTheHandle)
{
    const std::string path = m_folder.Path("shared.qel");
    ASSERT_TRUE(WriteBytes(path, "<qel><rect crd='1 2 3 4'/></qel>"));
    QELShowOnly(1);
    const HQELENGINE hA = CreateQELEngine();
    const HQELENGINE hB = CreateQELEngine();
    QELShowOnly(0);
    EXPECT_EQ(0, QELRotate(hA, 90));
    EXPECT_EQ(QEL_ERROR_NO_DRAWING, CodeOf(hA));
    EXPECT_EQ(0, QELOpenFile(hA, m_folder.Path("missing.qel").c_str()));
    EXPECT_EQ(QEL_ERROR_NO_FILE, CodeOf(hA));
    ASSERT_EQ(1, QELOpenFile(hA, path.c_str()));
    ASSERT_EQ(1, QELOpenFile(hB, path.c_str()));
    EXPECT_EQ(0, QELNewFile(hA));
    EXPECT_EQ(QEL_ERROR_SHOW_ONLY, CodeOf(hA));
    EXPECT_EQ(0u, CodeOf(hB)); // the drawing is shared, the reason is not
    EXPECT_EQ(nullptr, QELGetRootElem(hB));
    EXPECT_EQ(QEL_ERROR_SHOW_ONLY, CodeOf(hB));
    EXPECT_EQ(0, QELSetParam(hA, 9, 1));
    EXPECT_EQ(QEL_ERROR_VALUE, CodeOf(hA));
    EXPECT_EQ(QEL_ERROR_SHOW_ONLY, CodeOf(hB));
    EXPECT_EQ(1, DestroyQELEngine(hA));
    EXPECT_EQ(1, DestroyQELEngine(hB));
}
