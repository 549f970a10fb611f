#include "tests/native/Life.h"

#include "tests/native/GdiDouble.h"
#include "tests/native/KernelDouble.h"

#include <gtest/gtest.h>

#include <cstdio>

std::string EveryElement()
{
    static const std::string s_text = [] {
        std::string text = "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n"
                           "<qel id=\"all\" width=\"200\" height=\"150\">\r\n";
        // Shapes: outlines, hatches, gradients, borders, styled pens, keep modes, host values.
        text += R"(<rect id="r1" style="0x1" dr="14" fg="0x404448" bg="0xf0f4f8" crd="0 0 200 150"/>
<rect id="r2" style="0x20003" dr="1" fg="0xff" clr="0x80ff" crd="10 10 40 30" flag="0x4081"/>
<rect id="r3" style="0x5" dr="6" fg="0xff00" bg="0xff glt" lnwid="0" crd="45 10 70 30"/>
<text id="t1" fg="0xff0000 glt" crd="10 35 60 47">text &amp; more</text>
<text id="t2" style="0x1" fg="0xff" bg="0xff00" crd="70 35 110 47" flag="0x508000">)"
                "\xD6\xD0\xCE\xC4" // Chinese
                R"(</text>
<chord id="c1" style="0x1" dr="2" crd="75 10 95 30 95 20 85 10"/>
<pie id="p1" style="0x1" dr="20" crd="100 10 120 30 120 20 110 10"/>
<arc id="a1" lnwid="3" clr="0xff" crd="125 10 145 30 145 20 135 10"/>
<rndrect id="rr1" style="0x1" dr="36" crd="150 10 170 30 6 6" flag="0x1000"/>
<ellipse id="e1" style="0x1" dr="9" crd="175 10 195 30" flag="0x440000"/>
<circle id="ci1" style="0x1" dr="22" crd="20 60 9"/>
<line id="l1" lnstyle="2" style="0x1" bg="0xff" crd="30 50 50 70"/>
<polyline id="pl1" lnstyle="1" crd="50 50 60 70 70 50"/>
<polygon id="pg1" style="0x1" dr="13" crd="75 50 95 70 85 75 70 65"/>
<path id="skipped"/>
<g id="g1"><rect id="gr1" style="0x1" crd="100 50 110 60"/><g id="g2"><circle id="gc1" crd="115 55 5"/></g></g>
<status id="s0"><rect id="sr0" style="0x1" dr="11" crd="120 50 130 60"/></status>
<status id="s1" stx="1"><text id="st1" crd="120 50 130 62">one</text></status>
<frame id="f1"><rect id="fr1" crd="135 50 145 60"/></frame>
<pattern id="pa1"><rect id="pr1" style="0x1" crd="150 50 160 60"/></pattern>
<drawrgn id="d1" style="0x30003" crd="165 50 195 75"/>
)";
        static constexpr const char* scales[] = {"vrtleft", "vrtright", "horizup",
                                                 "horizdn", "round",    "Arc"};
        int n = 0;
        for (const char* pszType : scales) {
            const int x = 5 + n * 32;
            char sz[300];
            if (n < 4)
                std::snprintf(sz, sizeof sz,
                              "<scale id=\"sc%d\" scid=\"%d\" sctype=\"%s\" max=\"20\" pin=\"1\" "
                              "crd=\"%d 78 %d 98\"/>\r\n",
                              n, 41 + n, pszType, x, x + 20);
            else
                std::snprintf(sz, sizeof sz,
                              "<scale id=\"sc%d\" scid=\"%d\" sctype=\"%s\" max=\"20\" pin=\"1\" "
                              "crd=\"%d 88 10 8 3 0 120\"/>\r\n",
                              n, 41 + n, pszType, x + 10);
            text += sz;
            ++n;
        }
        static constexpr const char* meters[] = {"vert",         "vert3d",     "horz",  "horz3d",
                                                 "round",        "Arc",        "pie",   "clock",
                                                 "roundUpgrade", "pieUpgrade", "sector"};
        n = 0;
        for (const char* pszType : meters) {
            const int x = 2 + n * 18;
            char sz[500];
            if (n < 4)
                std::snprintf(
                    sz, sizeof sz,
                    "<meter id=\"m%d\" mtid=\"%d\" upin=\"1\" mtype=\"%s\" crd=\"%d 105 %d 140\" "
                    "flag=\"0x200000\"><rect style=\"0x1\" crd=\"%d 105 %d 140\"/></meter>\r\n",
                    n, n == 0 ? 0 : 50 + n, pszType, x, x + 8, x + 8, x + 16);
            else
                std::snprintf(
                    sz, sizeof sz,
                    "<meter id=\"m%d\" mtid=\"%d\" upin=\"1\" mtype=\"%s\" "
                    "crd=\"%d 120 8 %d 110 %d 130%s\" flag=\"0x200000\">"
                    "<circle style=\"0x1\" crd=\"%d 120 8\"/>"
                    "<polygon style=\"0x1\" crd=\"%d 112 %d 128 %d 128\"/>"
                    "<pie style=\"0x1\" crd=\"%d 112 %d 128 %d 120 %d 112\"/></meter>\r\n",
                    n, 50 + n, pszType, x + 8, x, x + 16,
                    n == 5 || n == 6 || n == 9 ? " 45 315" : "", x + 8, x + 8, x, x + 16, x, x + 16,
                    x + 16, x + 8);
            text += sz;
            ++n;
        }
        return text + "</qel>\r\n";
    }();
    return s_text;
}

CPaper::CPaper()
    : m_hdc(::CreateCompatibleDC(nullptr)),
      m_hBitmap(::CreateBitmap(DEVICE_RECT.right + 9, DEVICE_RECT.bottom + 9, 1, 32, nullptr)),
      m_hPrev(::SelectObject(m_hdc, m_hBitmap))
{
}

CPaper::~CPaper()
{
    ::SelectObject(m_hdc, m_hPrev);
    ::DeleteDC(m_hdc);
    ::DeleteObject(m_hBitmap);
}

CTestEngine::CTestEngine() : m_hEngine(CreateQELEngine()) {}

CTestEngine::~CTestEngine()
{
    DestroyQELEngine(m_hEngine);
}

bool CTestEngine::Open(const std::string& text)
{
    const RECT rc = DEVICE_RECT;
    return kernel::PutFile(DRAWING_PATH, text) && QELOpenFile(m_hEngine, DRAWING_PATH) &&
           QELSetQELRect(m_hEngine, &rc);
}

std::vector<HQELELEM> Elements(HQELENGINE hEngine)
{
    std::vector<HQELELEM> all;
    std::vector<HQELELEM> open;
    if (const HQELELEM hRoot = QELGetRootElem(hEngine)) open.push_back(hRoot);
    while (!open.empty()) {
        const HQELELEM h = open.back();
        open.pop_back();
        all.push_back(h);
        for (HQELELEM hChild = QELGetLastChild(hEngine, h); hChild;
             hChild = QELGetPrevElem(hEngine, hChild))
            open.push_back(hChild);
    }
    return all;
}

HQELELEM ElementById(HQELENGINE hEngine, const std::string& id)
{
    for (const HQELELEM h : Elements(hEngine)) {
        const char* pszId = QELGetElemId(hEngine, h);
        if (pszId && id == pszId) return h;
    }
    return nullptr;
}

std::string SavedBytes(HQELENGINE hEngine)
{
    std::string bytes;
    constexpr const char* PATH = "C:\\temp\\seen.qel";
    if (!QELSaveFile(hEngine, PATH)) return "";
    EXPECT_TRUE(kernel::GetFile(PATH, &bytes));
    ::DeleteFileA(PATH);
    return bytes;
}

std::vector<std::string> Painted(HQELENGINE hEngine, DWORD nFlags)
{
    const RECT rc = DEVICE_RECT;
    const CPaper paper;
    const uint64_t nMark = gdi::Mark();
    gdi::LogPaintings(paper);
    {
        const gdi::CStateCheck state(paper, gdi::MAY_CHANGE_COLORS);
        QELDraw(hEngine, paper, &rc, nFlags);
    }
    std::vector<std::string> lines = gdi::Paintings(paper);
    // A meter keeps the region of its face for the next draw; all else is gone.
    int nFaces = 0;
    for (const HQELELEM h : Elements(hEngine))
        if (QELGetElemType(hEngine, h) == QEL_TYPE_METER) ++nFaces;
    for (const std::string& name : gdi::AliveSince(nMark))
        if (!name.starts_with("region") || --nFaces < 0)
            gdi::ReportMisuse(name + " is still alive after a draw");
    return lines;
}

namespace {

std::string RecordText(HQELENGINE hEngine, HQELELEM hElem)
{
    static char record[QEL_MAX_ATTR_SIZE];
    int nSize = 0;
    if (!QELGetElemAttr(hEngine, hElem, record, &nSize)) return "no record";
    std::string text;
    for (int n = 0; n < nSize; ++n) {
        char sz[3];
        std::snprintf(sz, sizeof sz, "%02x", static_cast<unsigned char>(record[n]));
        text += sz;
    }
    return text;
}

} // namespace

std::string Everything(HQELENGINE hEngine)
{
    SIZE size{};
    RECT rc{};
    QELGetRefSize(hEngine, &size);
    QELGetQELRect(hEngine, &rc);
    char sz[200];
    std::snprintf(sz, sizeof sz, "type %d size %d %d rect %d %d %d %d mask %x\n",
                  QELGetType(hEngine), size.cx, size.cy, rc.left, rc.top, rc.right, rc.bottom,
                  QELParamsSupported(hEngine));
    std::string text = sz;
    for (const HQELELEM h : Elements(hEngine)) {
        const char* pszId = QELGetElemId(hEngine, h);
        RECT box{};
        QELGetElemRect(hEngine, h, &box);
        std::snprintf(sz, sizeof sz, "element %d %d,%d,%d,%d ", QELGetElemType(hEngine, h),
                      box.left, box.top, box.right, box.bottom);
        text += sz + std::string(pszId ? pszId : "none") + " " + RecordText(hEngine, h) + "\n";
    }
    for (DWORD nId : {0, 1, 2, 41, 42, 43, 44, 45, 46, 51, 55, 60})
        for (DWORD nSelector = 0; nSelector < QEL_SEL_COUNT; ++nSelector) {
            DWORD nValue = 0;
            if (QELGetScaleParam(hEngine, nId, nSelector, &nValue))
                text += std::to_string(nId) + ":" + std::to_string(nSelector) + "=" +
                        std::to_string(nValue) + " ";
        }
    for (int n = 0; n < QEL_PARAM_COUNT; ++n) {
        DWORD nValue = 0;
        QELGetParam(hEngine, n, &nValue);
        text += "param " + std::to_string(nValue) + " ";
    }
    text += "\n" + SavedBytes(hEngine) + "\n";
    for (const std::string& line : Painted(hEngine)) text += line + "\n";
    return text;
}
