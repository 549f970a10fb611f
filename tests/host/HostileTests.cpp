// What no well-meaning host or author would do: handles and pointers that are none, files of any
// shape and size, numbers beyond all sense. Each is refused or borne; nothing crashes.
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"
#include "tests/support/Recording.h"
#include "tests/support/Wide.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr COLORREF RED = RGB(255, 0, 0);

// Every export that takes an engine, with everything else as well given as can be; whether any of
// them answered as for a live engine.
std::string CallAll(HQELENGINE h, HQELELEM hElem, HDC hdc, const std::string& path)
{
    std::string answered;
    const auto refused = [&](const char* pszName, bool bRefused) {
        if (!bRefused) answered += std::string(pszName) + " ";
    };
    QELSHAPEATTR attr{};
    attr.nSize = sizeof attr;
    int nSize = 0;
    RECT rc{0, 0, 10, 10};
    SIZE size{10, 10};
    DWORD nValue = 0;
    float fValue = 0;
    const std::vector<wchar_t> wide = Wide(path);
    refused("QELNewFile", !QELNewFile(h));
    refused("QELOpenFile", !QELOpenFile(h, path.c_str()));
    refused("QELOpenFile(null)", !QELOpenFile(h, nullptr));
    refused("QELOpenFileU", !QELOpenFileU(h, wide.data()));
    refused("QELSaveFile", !QELSaveFile(h, (path + ".saved").c_str()));
    refused("QELGetName", !QELGetName(h));
    refused("QELGetType", QELGetType(h) == -1);
    refused("QELGetRootElem", !QELGetRootElem(h));
    refused("QELCreateElem", !QELCreateElem(h, QEL_TYPE_RECT, nullptr, nullptr));
    refused("QELCreateElem(root)", !QELCreateElem(h, QEL_TYPE_ROOT, nullptr, nullptr));
    refused("QELCreateElem(parent)", !QELCreateElem(h, QEL_TYPE_RECT, hElem, hElem));
    refused("QELDeleteElem", !QELDeleteElem(h, hElem));
    refused("QELMoveElem", !QELMoveElem(h, hElem, nullptr, nullptr));
    refused("QELMoveElem(parent)", !QELMoveElem(h, hElem, hElem, hElem));
    refused("QELCopyElem", !QELCopyElem(h, hElem));
    refused("QELGetParentElem", !QELGetParentElem(h, hElem));
    refused("QELGetFirstChild", !QELGetFirstChild(h, hElem));
    refused("QELGetLastChild", !QELGetLastChild(h, hElem));
    refused("QELGetNextElem", !QELGetNextElem(h, hElem));
    refused("QELGetPrevElem", !QELGetPrevElem(h, hElem));
    refused("QELGetElemType", QELGetElemType(h, hElem) == QEL_TYPE_NONE);
    refused("QELGetElemId", !QELGetElemId(h, hElem));
    refused("QELSetElemId", !QELSetElemId(h, hElem, "id"));
    refused("QELGetElemAttr", !QELGetElemAttr(h, hElem, &attr, &nSize));
    refused("QELSetElemAttr", !QELSetElemAttr(h, hElem, &attr, sizeof attr));
    refused("QELGetElemRect", !QELGetElemRect(h, hElem, &rc));
    refused("QELSetElemRect", !QELSetElemRect(h, hElem, &rc));
    refused("QELGetRefSize", !QELGetRefSize(h, &size));
    refused("QELSetRefSize", !QELSetRefSize(h, &size));
    refused("QELGetQELRect", !QELGetQELRect(h, &rc));
    refused("QELSetQELRect", !QELSetQELRect(h, &rc));
    refused("QELGetDrawGraphRect", !QELGetDrawGraphRect(h, &rc));
    POINT pt{1, 2};
    char szId[8] = {};
    refused("QELGetElemDrawRect", !QELGetElemDrawRect(h, hElem, &rc));
    refused("QELGetIdDrawRect", !QELGetIdDrawRect(h, "id", &rc));
    refused("QELElemFromPoint", !QELElemFromPoint(h, &pt));
    refused("QELIdFromPoint", !QELIdFromPoint(h, &pt, szId, sizeof szId));
    refused("QELFindElem", !QELFindElem(h, "id"));
    refused("QELElemToDevice", !QELElemToDevice(h, hElem, &pt));
    refused("QELDeviceToElem", !QELDeviceToElem(h, hElem, &pt));
    refused("QELDraw", !QELDraw(h, hdc, &rc, QEL_DRAW_FULL));
    refused("QELRotate", !QELRotate(h, 90));
    refused("QELSetBlinkState", !QELSetBlinkState(h, 1));
    refused("QELGetStatus", !QELGetStatus(h, &nValue));
    refused("QELSetStatus", !QELSetStatus(h, 1));
    refused("QELGetParam", !QELGetParam(h, 0, &nValue));
    refused("QELSetParam", !QELSetParam(h, 0, 1));
    refused("QELParamsSupported", !QELParamsSupported(h));
    refused("QELGetScaleParam", !QELGetScaleParam(h, 0, 6, &nValue));
    refused("QELSetScaleParam", !QELSetScaleParam(h, 0, 6, 1));
    refused("QELGetScaleParamf", !QELGetScaleParamf(h, 0, 6, &fValue));
    refused("QELSetScaleParamf", !QELSetScaleParamf(h, 0, 6, 1));
    refused("QELGetScaleStatus", !QELGetScaleStatus(h, 0, &nValue));
    refused("QELSetScaleStatus", !QELSetScaleStatus(h, 0, 1));
    refused("QELGetScaleStatusf", !QELGetScaleStatusf(h, 0, &fValue));
    refused("QELSetScaleStatusf", !QELSetScaleStatusf(h, 0, 1));
    refused("QELCloseFile", !QELCloseFile(h));
    refused("DestroyQELEngine", !DestroyQELEngine(h));
    return answered;
}

template <class T>
T Handle(uintptr_t n)
{
    return reinterpret_cast<T>(n);
}

class Hostile : public ::testing::Test {
protected:
    Hostile() : m_h(CreateQELEngine()) {}
    ~Hostile() override { EXPECT_EQ(1, DestroyQELEngine(m_h)); }

    int Open(const std::string& text)
    {
        const std::string path = m_folder.Path("a.qel");
        EXPECT_TRUE(WriteBytes(path, text));
        return QELOpenFile(m_h, path.c_str());
    }
    int Draw(HDC hdc, const RECT& rc) const
    {
        EXPECT_EQ(1, QELSetQELRect(m_h, &rc));
        return QELDraw(m_h, hdc, &rc, QEL_DRAW_FULL | QEL_DRAW_PRESSED);
    }

    CTestFolder m_folder;
    HQELENGINE m_h;
};

constexpr const char* g_shapes[] = {"text",    "rect",   "chord", "pie",      "rndrect", "arc",
                                    "ellipse", "circle", "line",  "polyline", "polygon"};

constexpr const char* g_numbers[] = {"2147483647",
                                     "-2147483648",
                                     "4294967295",
                                     "99999999999999999999",
                                     "-99999999999999999999",
                                     "0x7fffffff",
                                     "0xffffffff",
                                     "0xffffffffffffffffffff",
                                     "-1",
                                     "0",
                                     "",
                                     " ",
                                     "1e300",
                                     "nan",
                                     "%s%n%d",
                                     "-"};

} // namespace

TEST_F(Hostile, GarbageHandlesAreRefusedByEveryExport)
{
    ASSERT_EQ(1, Open("<qel><g id=\"a\"><rect/></g></qel>"));
    CTestBitmap drawn(20, 20);
    const std::string path = m_folder.Path("a.qel");
    const HQELELEM hRoot = QELGetRootElem(m_h);
    const HQELELEM hGroup = QELGetFirstChild(m_h, hRoot);
    const HQELENGINE hDestroyed = CreateQELEngine();
    ASSERT_EQ(1, DestroyQELEngine(hDestroyed));
    const RECT rc{0, 0, 3, 3};
    const HQELGRADIENT hGradient = QELCreateGradientDescriptor(&rc, 0, 0, 1);
    const uintptr_t numbers[] = {0,
                                 1,
                                 2,
                                 8,
                                 0x1000,
                                 0xDEADBEEF,
                                 ~uintptr_t{0},
                                 ~uintptr_t{0} / 2,
                                 reinterpret_cast<uintptr_t>(&rc),
                                 reinterpret_cast<uintptr_t>(path.c_str()),
                                 reinterpret_cast<uintptr_t>(drawn.Dc()),
                                 reinterpret_cast<uintptr_t>(hRoot),
                                 reinterpret_cast<uintptr_t>(hGroup),
                                 reinterpret_cast<uintptr_t>(hGradient),
                                 reinterpret_cast<uintptr_t>(hDestroyed),
                                 reinterpret_cast<uintptr_t>(m_h) + 1};
    for (const uintptr_t n : numbers)
        EXPECT_EQ("", CallAll(Handle<HQELENGINE>(n), hGroup, drawn.Dc(), path)) << n;
    EXPECT_FALSE(Exists(path + ".saved"));
    EXPECT_EQ(1, m_folder.CountFiles());
    EXPECT_STREQ("a", QELGetElemId(m_h, hGroup));
    for (const uintptr_t n : numbers) {
        if (n == reinterpret_cast<uintptr_t>(hGradient)) continue;
        EXPECT_EQ(nullptr, QELGetGradientBrush(Handle<HQELGRADIENT>(n))) << n;
        EXPECT_EQ(0, QELCloseGradientDescriptor(Handle<HQELGRADIENT>(n))) << n;
    }
    EXPECT_EQ(0,
              QELCloseGradientDescriptor(Handle<HQELGRADIENT>(reinterpret_cast<uintptr_t>(m_h))));
    EXPECT_EQ(1, QELCloseGradientDescriptor(hGradient));
    EXPECT_EQ(1, QELGetElemRect(m_h, hGroup, std::vector<RECT>(1).data())); // all is as it was
}

TEST_F(Hostile, GarbageHandlesAreRefusedInShowOnlyModeAsWell)
{
    CTestBitmap drawn(20, 20);
    const std::string path = m_folder.Path("a.qel");
    ASSERT_TRUE(WriteBytes(path, "<qel/>"));
    QELShowOnly(1);
    for (const uintptr_t n : {uintptr_t{0}, uintptr_t{1}, uintptr_t{0xDEADBEEF}, ~uintptr_t{0},
                              reinterpret_cast<uintptr_t>(&drawn)})
        EXPECT_EQ("", CallAll(Handle<HQELENGINE>(n), Handle<HQELELEM>(n), drawn.Dc(), path)) << n;
    QELShowOnly(0);
    EXPECT_EQ(1, m_folder.CountFiles());
}

TEST_F(Hostile, NullPointersAreRefusedByEveryExport)
{
    ASSERT_EQ(1, Open("<qel><rect/></qel>"));
    const HQELELEM hElem = QELGetFirstChild(m_h, QELGetRootElem(m_h));
    CTestBitmap drawn(20, 20);
    EXPECT_EQ(0, QELSaveFile(m_h, nullptr));
    EXPECT_EQ(0, QELSetElemId(m_h, hElem, nullptr));
    EXPECT_EQ(0, QELGetElemAttr(m_h, hElem, nullptr, nullptr));
    EXPECT_EQ(0, QELSetElemAttr(m_h, hElem, nullptr, 424));
    EXPECT_EQ(0, QELGetElemRect(m_h, hElem, nullptr));
    EXPECT_EQ(0, QELSetElemRect(m_h, hElem, nullptr));
    EXPECT_EQ(0, QELGetRefSize(m_h, nullptr));
    EXPECT_EQ(0, QELSetRefSize(m_h, nullptr));
    EXPECT_EQ(0, QELGetQELRect(m_h, nullptr));
    EXPECT_EQ(0, QELSetQELRect(m_h, nullptr));
    EXPECT_EQ(0, QELGetDrawGraphRect(m_h, nullptr));
    EXPECT_EQ(0, QELDraw(m_h, drawn.Dc(), nullptr, QEL_DRAW_FULL));
    EXPECT_EQ(0, QELGetStatus(m_h, nullptr));
    EXPECT_EQ(0, QELGetParam(m_h, 0, nullptr));
    EXPECT_EQ(0, QELGetScaleParam(m_h, 0, 6, nullptr));
    EXPECT_EQ(0, QELGetScaleParamf(m_h, 0, 6, nullptr));
    EXPECT_EQ(0, QELGetScaleStatus(m_h, 0, nullptr));
    EXPECT_EQ(0, QELGetScaleStatusf(m_h, 0, nullptr));
    EXPECT_EQ(nullptr, QELCreateGradientDescriptor(nullptr, 0, 0, 0));
    EXPECT_EQ(0, QELDrawCurve(drawn.Dc(), nullptr, 5));
    EXPECT_TRUE(IsBlank(drawn));
    EXPECT_EQ(0, QELOpenFileU(m_h, nullptr));
}

TEST_F(Hostile, ADrawOnNoDeviceContextIsBorne)
{
    ASSERT_EQ(1, Open("<qel><rect/></qel>"));
    const RECT rc{0, 0, 10, 10};
    QELDraw(m_h, nullptr, &rc, QEL_DRAW_FULL); // its result is nobody's business; no crash
    EXPECT_NE(nullptr, QELGetRootElem(m_h));
    CTestBitmap drawn(20, 20);
    EXPECT_EQ(1, QELDraw(m_h, drawn.Dc(), &rc, QEL_DRAW_FULL));
}

TEST_F(Hostile, DeepNestingOfEveryKindIsRefusedWithoutCrash)
{
    const auto repeat = [](const char* psz, int nCount) {
        std::string text;
        for (int i = 0; i < nCount; ++i) text += psz;
        return text;
    };
    EXPECT_EQ(0, Open("<qel>" + repeat("<g>", 513) + repeat("</g>", 513) + "</qel>"));
    EXPECT_EQ(0, Open("<qel>" + repeat("<g>", 200000) + repeat("</g>", 200000) + "</qel>"));
    EXPECT_EQ(0, Open("<qel>" + repeat("<path>", 200000) + repeat("</path>", 200000) + "</qel>"));
    EXPECT_EQ(0, Open("<qel>" + repeat("<g>", 300000)));
    EXPECT_EQ(0, Open(repeat("<qel>", 300000)));
    EXPECT_EQ(0, Open(repeat("<", 300000)));
    EXPECT_EQ(0, Open(repeat("<!", 300000)));
    EXPECT_EQ(0, Open("<qel>" + repeat("<!--", 100000)));
    EXPECT_EQ(0, Open("<qel " + repeat("a=\"", 99999)));
    EXPECT_EQ(nullptr, QELGetRootElem(m_h));
}

TEST_F(Hostile, FilesOfEveryCutOffLengthAreOpenedOrRefused)
{
    const std::string text =
        "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n<!-- c --><qel id='a' width=\"60\">"
        "<text crd=\"1 2 3 4\">x &amp; &#x41;</text><g><polygon crd=\"1 2 3 4 5 6\"/></g></qel>";
    for (std::size_t n = 0; n < text.size(); ++n) {
        EXPECT_EQ(0, Open(text.substr(0, n))) << text.substr(0, n);
        EXPECT_EQ(3, QELGetType(m_h));
    }
    EXPECT_EQ(1, Open(text));
}

TEST_F(Hostile, EveryByteMayBeReplacedByAnyOther)
{
    const std::string text = "<qel width=\"60\"><rect crd=\"1 2 30 40\" fg=\"0xff glt\"/>"
                             "<text crd=\"1 2 3 4\">a&lt;b</text></qel>";
    CTestBitmap drawn(10, 10);
    int nOpened = 0;
    for (std::size_t n = 0; n < text.size(); ++n)
        for (const char cByte : std::string("\0\1<>\"&/!?\x80\xFF", 11)) {
            std::string changed = text;
            changed[n] = cByte;
            if (!Open(changed)) {
                EXPECT_EQ(nullptr, QELGetRootElem(m_h));
                continue;
            }
            ++nOpened;
            EXPECT_EQ(1, Draw(drawn.Dc(), drawn.Box()));
        }
    EXPECT_LT(100, nOpened); // such as bytes of the text
}

TEST_F(Hostile, HugeNumbersInEveryAttributeAreBorne)
{
    const char* const attributes[] = {"style",   "dr",    "fg",     "bg",        "clr",
                                      "lnstyle", "lnwid", "id",     "crd",       "flag",
                                      "type",    "width", "height", "lst_rotate"};
    for (const char* pszAttribute : attributes)
        for (const char* pszNumber : g_numbers) {
            SCOPED_TRACE(std::string(pszAttribute) + "=" + pszNumber);
            std::string value = pszNumber;
            if (!std::strcmp(pszAttribute, "crd"))
                for (int i = 0; i < 3; ++i) value = value + " " + value;
            const std::string attribute = std::string(" ") + pszAttribute + "=\"" + value + "\"";
            std::string text = "<qel" + attribute + ">";
            for (const char* pszShape : g_shapes)
                text += std::string("<") + pszShape + attribute + ">t</" + pszShape + ">";
            ASSERT_EQ(1, Open(text + "</qel>"));
            CRecording recording;
            Draw(recording.Dc(), {0, 0, 20, 20});
            int nElements = 0;
            for (HQELELEM h = QELGetFirstChild(m_h, QELGetRootElem(m_h)); h;
                 h = QELGetNextElem(m_h, h)) {
                RECT rc{};
                QELGetElemRect(m_h, h, &rc);
                ++nElements;
            }
            EXPECT_EQ(11, nElements);
            QELRotate(m_h, 90);
            EXPECT_EQ(1, QELSaveFile(m_h, m_folder.Path("b.qel").c_str()));
            EXPECT_EQ(1, QELOpenFile(m_h, m_folder.Path("b.qel").c_str()));
        }
}

// On a surface, where every pixel is worked out. Numbers that are too large for the system at once
// are the smaller danger: it gives up. Those between go on for minutes, or end the host.
TEST_F(Hostile, NumbersOfEverySizeArePaintedAndThePictureGoesOn)
{
    const char* const numbers[] = {"40000", "5000000", "-5000000"};
    const char* const coordinates[] = {"# # # # # # # #", "3 # 1 # # 5 40", "10 10 # # 10 10 40 40",
                                       "25 25 # 25 25 5 #", "-# 10 30 # 1 # # 2"};
    CTestBitmap drawn(50, 50);
    for (const char* pszNumber : numbers)
        for (std::string crd : coordinates) {
            SCOPED_TRACE(crd + ": " + pszNumber);
            for (std::size_t n = 0; (n = crd.find('#')) != std::string::npos;)
                crd.replace(n, 1, pszNumber);
            for (std::size_t n = 0; (n = crd.find("--")) != std::string::npos;) crd.erase(n, 2);
            std::string text = "<qel>";
            for (const char* pszShape : g_shapes)
                for (const char* pszPen : {"4", pszNumber})
                    text += std::string("<") + pszShape + " style=\"0x1\" lnwid=\"" + pszPen +
                            "\" crd=\"" + crd + "\">t</" + pszShape + ">";
            for (const char* pszType : {"horizup", "round", "Arc"})
                text += std::string("<scale style=\"0x1\" sctype=\"") + pszType + "\" crd=\"" +
                        crd + "\"/>";
            // The last one covers what the others painted.
            text += "<rect style=\"0x1\" bg=\"0xff\" lnwid=\"0\" crd=\"0 0 50 50\"/></qel>";
            ASSERT_EQ(1, Open(text));
            ASSERT_EQ(1, Draw(drawn.Dc(), drawn.Box()));
            EXPECT_EQ(50 * 50, CountPixels(drawn, RED));
        }
}

TEST_F(Hostile, NumbersBeyondThirtyTwoBitsSaturate)
{
    ASSERT_EQ(1,
              Open("<qel><rect crd=\"-99999999999 -2147483649 2147483648 99999999999\"/></qel>"));
    RECT rc{};
    ASSERT_EQ(1, QELGetElemRect(m_h, QELGetFirstChild(m_h, QELGetRootElem(m_h)), &rc));
    EXPECT_EQ(INT_MIN, rc.left);
    EXPECT_EQ(INT_MIN, rc.top);
    EXPECT_EQ(INT_MAX, rc.right);
    EXPECT_EQ(INT_MAX, rc.bottom);
}

TEST_F(Hostile, GiganticQelRectsAreBorne)
{
    std::string text = "<qel>";
    for (const char* pszShape : g_shapes)
        for (const char* pszFlag : {"0x0", "0x1000", "0x8000", "0x30000", "0x460000", "0x880000"})
            text += std::string("<") + pszShape + " style=\"0x1\" flag=\"" + pszFlag + "\">t</" +
                    pszShape + ">";
    ASSERT_EQ(1, Open(text + "</qel>"));
    for (const RECT& rc :
         {RECT{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, RECT{0, 0, INT_MAX, INT_MAX},
          RECT{INT_MIN, INT_MIN, 0, 0}, RECT{INT_MAX - 1, INT_MAX - 1, INT_MAX, INT_MAX},
          RECT{INT_MIN, INT_MIN, INT_MIN + 1, INT_MIN + 1}, RECT{-1000000000, 0, 1000000000, 5}}) {
        CRecording recording;
        Draw(recording.Dc(), rc);
        RECT rcRead{};
        EXPECT_EQ(1, QELGetQELRect(m_h, &rcRead));
        EXPECT_TRUE(::EqualRect(&rc, &rcRead));
    }
    // And an ordinary one is drawn as ever afterwards.
    CTestBitmap drawn(50, 50);
    EXPECT_EQ(1, Draw(drawn.Dc(), drawn.Box()));
    EXPECT_FALSE(IsBlank(drawn));
}

TEST_F(Hostile, DivisionsThatWouldTrapAreBorne)
{
    // INT_MIN / -1 and / 0: placing by rectangles, and turning and mapping with such sizes.
    ASSERT_EQ(1, QELNewFile(m_h));
    const HQELELEM hElem = QELCreateElem(m_h, QEL_TYPE_RECT, nullptr, nullptr);
    QELSHAPEATTR attr{};
    ASSERT_EQ(1, QELGetElemAttr(m_h, hElem, &attr, nullptr));
    const LONG extremes[] = {INT_MIN, INT_MIN + 1, -1, 0, 1, INT_MAX - 1, INT_MAX};
    CTestBitmap drawn(20, 20);
    for (const LONG nLeft : extremes)
        for (const LONG nRight : extremes) {
            attr.nGeometry[0] = attr.nGeometry[1] = nLeft;
            attr.nGeometry[2] = attr.nGeometry[3] = nRight;
            ASSERT_EQ(1, QELSetElemAttr(m_h, hElem, &attr, sizeof attr));
            const SIZE size{nRight, nLeft};
            EXPECT_EQ(1, QELSetRefSize(m_h, &size));
            Draw(drawn.Dc(), drawn.Box());
            QELRotate(m_h, 90);
            QELRotate(m_h, 0);
            const RECT rc{nRight, nLeft, nLeft, nRight};
            QELSetElemRect(m_h, hElem, &rc);
            SIZE read{};
            EXPECT_EQ(1, QELGetRefSize(m_h, &read));
            EXPECT_EQ(nRight, read.cx);
            EXPECT_EQ(nLeft, read.cy);
        }
}

TEST_F(Hostile, RecordsFullOfNonsenseAreBorne)
{
    ASSERT_EQ(1, QELNewFile(m_h));
    for (int nType = 1; nType <= 11; ++nType) {
        SCOPED_TRACE(nType);
        const HQELELEM hElem = QELCreateElem(m_h, nType, nullptr, nullptr);
        for (const int nByte : {0x00, 0x7F, 0x80, 0xFF}) {
            QELSHAPEATTR attr;
            std::memset(&attr, nByte, sizeof attr); // no zero ends the text
            attr.nSize = sizeof attr;
            attr.nPenWidth = 1;
            ASSERT_EQ(1, QELSetElemAttr(m_h, hElem, &attr, sizeof attr));
            CRecording recording;
            Draw(recording.Dc(), {0, 0, 20, 20});
            QELRotate(m_h, 90);
            QELRotate(m_h, 0);
            EXPECT_EQ(1, QELSaveFile(m_h, m_folder.Path("b.qel").c_str()));
            EXPECT_GT(3000u, ReadBytes(m_folder.Path("b.qel")).size()); // no memory beyond the text
        }
        ASSERT_EQ(1, QELDeleteElem(m_h, hElem));
    }
}

TEST_F(Hostile, AHundredThousandSiblingsAreOpenedWalkedDrawnAndSaved)
{
    constexpr int COUNT = 100000;
    std::string inside;
    for (int i = 0; i < COUNT; ++i) inside += "<rect crd=\"1 2 3 4\"/>\r\n";
    const std::string text =
        "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n<qel>\r\n" + inside + "</qel>\r\n" + '\0';
    ASSERT_EQ(1, Open(text));
    const HQELELEM hRoot = QELGetRootElem(m_h);
    int nCount = 0;
    HQELELEM hLast = nullptr;
    for (HQELELEM h = QELGetFirstChild(m_h, hRoot); h; h = QELGetNextElem(m_h, h)) {
        ++nCount;
        hLast = h;
    }
    EXPECT_EQ(COUNT, nCount);
    EXPECT_EQ(hLast, QELGetLastChild(m_h, hRoot));
    for (HQELELEM h = hLast; h; h = QELGetPrevElem(m_h, h)) --nCount;
    EXPECT_EQ(0, nCount);
    EXPECT_EQ(1, QELSaveFile(m_h, m_folder.Path("b.qel").c_str()));
    EXPECT_TRUE(text == ReadBytes(m_folder.Path("b.qel")));
    CTestBitmap drawn(50, 50, 0); // black: outlines are white
    EXPECT_EQ(1, Draw(drawn.Dc(), drawn.Box()));
    EXPECT_EQ(4, CountPixels(drawn, RGB(255, 255, 255)));
    const HQELELEM hCopy = QELCopyElem(m_h, hLast);
    EXPECT_EQ(hCopy, QELGetLastChild(m_h, hRoot));
    EXPECT_EQ(1, QELMoveElem(m_h, hCopy, hRoot, nullptr));
    EXPECT_EQ(hCopy, QELGetFirstChild(m_h, hRoot));
    EXPECT_EQ(1, QELCloseFile(m_h));
    EXPECT_EQ(QEL_TYPE_NONE, QELGetElemType(m_h, hLast));
}

TEST_F(Hostile, AHundredThousandElementsCanBeMadeByTheHostAndDeletedInAnyOrder)
{
    ASSERT_EQ(1, QELNewFile(m_h));
    std::vector<HQELELEM> elements;
    for (int i = 0; i < 100000; ++i) {
        elements.push_back(QELCreateElem(m_h, QEL_TYPE_LINE, nullptr, nullptr));
        ASSERT_NE(nullptr, elements.back());
    }
    for (std::size_t i = 0; i < elements.size(); i += 2)
        ASSERT_EQ(1, QELDeleteElem(m_h, elements[i]));
    for (std::size_t i = elements.size(); i-- > 2;)
        if (i % 2) {
            ASSERT_EQ(1, QELDeleteElem(m_h, elements[i]));
        }
    EXPECT_EQ(elements[1], QELGetFirstChild(m_h, QELGetRootElem(m_h)));
    EXPECT_EQ(elements[1], QELGetLastChild(m_h, QELGetRootElem(m_h)));
}

TEST_F(Hostile, TextsAndNamesOfAnyLengthAreCut)
{
    const std::string longText(1000000, 'x');
    ASSERT_EQ(1, Open("<qel id=\"" + longText + "\"><text crd=\"" + longText + "\" fg=\"" +
                      longText + "\">" + longText + "</text><" + longText + "/></qel>"));
    EXPECT_EQ(std::string(255, 'x'), QELGetName(m_h));
    QELSHAPEATTR attr{};
    const HQELELEM hText = QELGetFirstChild(m_h, QELGetRootElem(m_h));
    ASSERT_EQ(1, QELGetElemAttr(m_h, hText, &attr, nullptr));
    EXPECT_EQ(std::string(255, 'x'), attr.szText);
    EXPECT_EQ(0xFFFFFFu, attr.clrA);
    EXPECT_EQ(nullptr, QELGetNextElem(m_h, hText)); // the unknown element is skipped
    EXPECT_EQ(0, QELOpenFile(m_h, longText.c_str()));
    ASSERT_EQ(1, QELNewFile(m_h));
    EXPECT_EQ(0, QELSaveFile(m_h, longText.c_str()));
}

TEST_F(Hostile, ValuesOfAnySizeAreBorne)
{
    ASSERT_EQ(1, Open("<qel><rect flag=\"0x81\" style=\"0x1\" crd=\"0 0 50 50\"/></qel>"));
    CTestBitmap drawn(20, 20);
    for (const DWORD n : {0U, 1U, 37U, 38U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        for (int nIndex = 0; nIndex < 4; ++nIndex) QELSetParam(m_h, nIndex, n);
        QELSetStatus(m_h, n);
        QELSetScaleParam(m_h, n, n, n);
        QELSetScaleStatus(m_h, n, n);
        EXPECT_EQ(1, Draw(drawn.Dc(), drawn.Box())) << n;
    }
    for (const float f : {std::numeric_limits<float>::quiet_NaN(),
                          std::numeric_limits<float>::infinity(), -3.4e38F}) {
        EXPECT_EQ(0, QELSetScaleParamf(m_h, 0, 6, f));
        EXPECT_EQ(0, QELSetScaleStatusf(m_h, 1, f));
    }
    QELSetParam(m_h, 1, 0);
    QELSetParam(m_h, 3, RED);
    EXPECT_EQ(1, Draw(drawn.Dc(), drawn.Box()));
    EXPECT_LT(300, CountPixels(drawn, RED)); // still itself: the inside within the outline
}

TEST_F(Hostile, ElementsOutOfThePictureCanBeEditedLikeOthers)
{
    ASSERT_EQ(1, Open("<qel><g id=\"a\"><rect/></g><g id=\"b\"/></qel>"));
    const HQELELEM hGroup = QELGetFirstChild(m_h, QELGetRootElem(m_h));
    const HQELELEM hRect = QELGetFirstChild(m_h, hGroup);
    ASSERT_EQ(1, QELMoveElem(m_h, hGroup, nullptr, nullptr));
    EXPECT_EQ(1, QELSetElemId(m_h, hGroup, "out"));
    EXPECT_STREQ("out", QELGetElemId(m_h, hGroup));
    const HQELELEM hMade = QELCreateElem(m_h, QEL_TYPE_RECT, hGroup, hRect);
    EXPECT_EQ(hMade, QELGetNextElem(m_h, hRect));
    QELSHAPEATTR attr{};
    attr.nSize = sizeof attr;
    attr.nStyle = QEL_STYLE_FILL;
    attr.clrB = RED;
    attr.nGeometry[2] = attr.nGeometry[3] = 10;
    EXPECT_EQ(1, QELSetElemAttr(m_h, hMade, &attr, sizeof attr));
    const RECT rc{5, 5, 15, 15};
    EXPECT_EQ(1, QELSetElemRect(m_h, hMade, &rc));
    EXPECT_NE(nullptr, QELCopyElem(m_h, hMade));
    // A copy of one that has no parent is out of the picture as well, or is not made.
    const HQELELEM hCopy = QELCopyElem(m_h, hGroup);
    EXPECT_EQ(nullptr, QELGetParentElem(m_h, hCopy));
    CTestBitmap drawn(50, 50);
    EXPECT_EQ(1, Draw(drawn.Dc(), drawn.Box()));
    EXPECT_TRUE(IsBlank(drawn));
    EXPECT_EQ(1, QELRotate(m_h, 90));
    EXPECT_EQ(1, QELRotate(m_h, 0));
    EXPECT_EQ(1, QELSetBlinkState(m_h, 0));
    ASSERT_EQ(1, QELDeleteElem(m_h, QELGetNextElem(m_h, hMade)));
    ASSERT_EQ(1, QELMoveElem(m_h, hGroup, QELGetRootElem(m_h), nullptr));
    EXPECT_EQ(1, Draw(drawn.Dc(), drawn.Box()));
    EXPECT_EQ(RED, drawn.At(5, 5));
    EXPECT_EQ(RED, drawn.At(14, 14));
}

TEST_F(Hostile, ElementsOutOfThePictureDieWhenTheRootIsReplaced)
{
    ASSERT_EQ(1, Open("<qel><g><rect/></g></qel>"));
    const HQELELEM hGroup = QELGetFirstChild(m_h, QELGetRootElem(m_h));
    const HQELELEM hRect = QELGetFirstChild(m_h, hGroup);
    ASSERT_EQ(1, QELMoveElem(m_h, hGroup, nullptr, nullptr));
    ASSERT_NE(nullptr, QELCreateElem(m_h, QEL_TYPE_ROOT, nullptr, nullptr));
    for (const HQELELEM h : {hGroup, hRect}) {
        EXPECT_EQ(QEL_TYPE_NONE, QELGetElemType(m_h, h));
        EXPECT_EQ(0, QELMoveElem(m_h, h, QELGetRootElem(m_h), nullptr));
    }
    EXPECT_EQ(nullptr, QELGetFirstChild(m_h, QELGetRootElem(m_h)));
}

TEST_F(Hostile, MovesDoNotNestDeeperThan512LevelsEither)
{
    ASSERT_EQ(1, QELNewFile(m_h));
    const auto chain = [&](HQELELEM hParent, int nLevels) {
        for (int i = 0; i < nLevels; ++i)
            hParent = QELCreateElem(m_h, QEL_TYPE_GROUP, hParent, nullptr);
        return hParent;
    };
    const HQELELEM hRoot = QELGetRootElem(m_h);
    const HQELELEM hDeep = chain(hRoot, 300);
    const HQELELEM hOther = QELCreateElem(m_h, QEL_TYPE_GROUP, hRoot, nullptr);
    const HQELELEM hOtherDeep = chain(hOther, 211); // 212 levels with it: 512 in all
    ASSERT_EQ(1, QELMoveElem(m_h, hOther, hDeep, nullptr));
    EXPECT_EQ(nullptr, QELCreateElem(m_h, QEL_TYPE_RECT, hOtherDeep, nullptr));
    ASSERT_EQ(1, QELMoveElem(m_h, hOther, hRoot, nullptr));
    ASSERT_NE(nullptr, QELCreateElem(m_h, QEL_TYPE_RECT, hOtherDeep, nullptr)); // one more
    EXPECT_EQ(0, QELMoveElem(m_h, hOther, hDeep, nullptr));
    EXPECT_EQ(hRoot, QELGetParentElem(m_h, hOther));
    // Whatever was built can be opened again after a save.
    ASSERT_EQ(1, QELSaveFile(m_h, m_folder.Path("b.qel").c_str()));
    EXPECT_EQ(1, QELOpenFile(m_h, m_folder.Path("b.qel").c_str()));
}
