// Updates of the picture: after any change QELUpdate makes pixel for pixel what a full draw makes,
// by painting no more than what is dirty, and touches nothing else.
#include "tests/support/Host.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>

namespace {

constexpr int SIDE = 160;
constexpr COLORREF GROUND = 0x204060;

class CBrush {
public:
    explicit CBrush(COLORREF clr) : m_hBrush(::CreateSolidBrush(clr)) {}
    ~CBrush() { ::DeleteObject(m_hBrush); }
    CBrush(const CBrush&) = delete;
    CBrush& operator=(const CBrush&) = delete;
    operator HBRUSH() const { return m_hBrush; }

private:
    HBRUSH m_hBrush;
};

// A picture that is kept right by updates.
class CScreen {
public:
    explicit CScreen(HQELENGINE h, int nSide = SIDE)
        : m_h(h), m_screen(nSide, nSide, GROUND), m_full(nSide, nSide, GROUND), m_brush(GROUND)
    {
    }
    HDC Dc() const { return m_screen.Dc(); }
    int Update() const { return QELUpdate(m_h, m_screen.Dc(), m_brush); }
    // "" when the picture is that of a full draw now.
    std::string Wrong()
    {
        RECT rc{};
        EXPECT_EQ(1, QELGetQELRect(m_h, &rc));
        // Twice: the colour of a read-out is that of the value of the draw before.
        for (int n = 0; n < 2; ++n) {
            m_full.Fill(GROUND);
            QELDraw(m_h, m_full.Dc(), &rc, QEL_DRAW_FULL);
        }
        return FirstDifference(m_full, m_screen);
    }
    std::string WrongAfterUpdate()
    {
        Update();
        return Wrong();
    }

private:
    HQELENGINE m_h;
    CTestBitmap m_screen, m_full;
    CBrush m_brush;
};

// ---- drawings by chance

constexpr const char* g_meters[] = {"vert", "vert3d", "horz",         "horz3d",     "round",
                                    "Arc",  "pie",    "roundUpgrade", "pieUpgrade", "sector"};
constexpr const char* g_scales[] = {"vrtleft", "vrtright", "horizup", "horizdn", "round", "Arc"};

class CDrawing {
public:
    explicit CDrawing(unsigned nSeed) : m_random(nSeed) {}

    std::string Text()
    {
        std::string text;
        for (int n = Below(6) + 4; n > 0; --n) text += Element(3);
        return text;
    }
    int Below(int n) { return static_cast<int>(m_random() % static_cast<unsigned>(n)); }
    std::string Id() { return "i" + std::to_string(Below(12)); }
    unsigned Color() { return static_cast<unsigned>(m_random()) & 0x80FFFFFFU; }

private:
    std::string Hex(unsigned n)
    {
        char sz[16];
        std::snprintf(sz, sizeof sz, "0x%x", n);
        return sz;
    }
    std::string ColorText(unsigned n)
    {
        return Hex(n & 0xFFFFFF) + (n & QEL_COLOR_BLINK ? " glt" : "");
    }
    std::string Box(int nLeast = 12)
    {
        const int x = Below(SIDE - 40), y = Below(SIDE - 40);
        return std::to_string(x) + " " + std::to_string(y) + " " +
               std::to_string(x + nLeast + Below(60)) + " " +
               std::to_string(y + nLeast + Below(60));
    }
    std::string Style()
    {
        static constexpr const char* styles[] = {"0x0", "0x1", "0x1", "0x3", "0x5"};
        return std::string(" style='") + styles[Below(5)] + "' dr='" + std::to_string(Below(38)) +
               "' fg='" + ColorText(Color()) + "' bg='" + ColorText(Color()) + "' clr='" +
               ColorText(Color()) + "' lnstyle='" + std::to_string(Below(7)) + "' lnwid='" +
               std::to_string(Below(7)) + "' flag='" + Hex(Below(4) ? 0 : 0x1 << Below(9)) + "' ";
    }
    std::string IdText() { return Below(3) ? " id='" + Id() + "' " : " "; }
    std::string Points(int nLeast)
    {
        std::string text;
        for (int n = nLeast + Below(5); n > 0; --n)
            text += std::to_string(Below(SIDE)) + " " + std::to_string(Below(SIDE)) + " ";
        return text;
    }
    std::string Shape()
    {
        const std::string begin = IdText() + Style();
        switch (Below(9)) {
        case 0:
            return "<text" + begin + "crd='" + Box() + "'>" + (Below(4) ? "v=##.#" : "a&b ##") +
                   "</text>";
        case 1:
            return "<line" + begin + "crd='" + Box() + "'/>";
        case 2:
            return "<ellipse" + begin + "crd='" + Box() + "'/>";
        case 3:
            return "<rndrect" + begin + "crd='" + Box() + " 8 8'/>";
        case 4:
            return "<circle" + begin + "crd='" + std::to_string(30 + Below(90)) + " " +
                   std::to_string(30 + Below(90)) + " " + std::to_string(10 + Below(30)) + "'/>";
        case 5:
            return "<polygon" + begin + "crd='" + Points(3) + "'/>";
        case 6:
            return "<polyline" + begin + "crd='" + Points(2) + "'/>";
        default:
            return "<rect" + begin + "crd='" + Box() + "'/>";
        }
    }
    std::string Scale()
    {
        const int nType = Below(6);
        return std::string("<scale") + IdText() + "scid='" + std::to_string(Below(4)) +
               "' sctype='" + g_scales[nType] + "' style='" + Hex(static_cast<unsigned>(Below(2))) +
               "' pin='1' crd='" +
               (nType < 4 ? Box(20) : std::to_string(40 + Below(80)) + " 70 30 24 6 0 270") + "'/>";
    }
    std::string Meter()
    {
        const int nType = Below(10);
        const bool bBar = nType < 4;
        std::string text =
            std::string("<meter") + IdText() + "mtid='" + std::to_string(Below(3) * 40) +
            "' upin='1' mtype='" + g_meters[nType] + "' crd='" +
            (bBar ? Box(40)
                  : std::to_string(50 + Below(60)) + " " + std::to_string(50 + Below(60)) + " " +
                        std::to_string(25 + Below(25)) + " 0 0 " + std::to_string(SIDE) + " " +
                        std::to_string(SIDE) + " 45 315") +
            "'>";
        for (int n = Below(3); n > 0; --n) text += Shape();
        return text + "</meter>";
    }
    std::string Element(int nDeep)
    {
        const int n = Below(12);
        if (n < 2) return Meter();
        if (n == 2) return Scale();
        if (n == 3) return "<drawrgn" + IdText() + "style='0x3' crd='" + Box() + "'/>";
        if (n > 6 || nDeep == 0) return Shape();
        static constexpr const char* holders[] = {"g", "status", "frame", "pattern"};
        const std::string tag = holders[n - 3 > 3 ? 0 : n - 3];
        std::string text = "<" + tag + IdText() +
                           (tag == "status" ? "stx='" + std::to_string(Below(3)) + "'" : "") + ">";
        for (int m = Below(4); m > 0; --m) text += Element(nDeep - 1);
        return text + "</" + tag + ">";
    }

    std::mt19937 m_random;
};

// ---- changes by chance

class CChanges {
public:
    CChanges(HQELENGINE h, CDrawing* pDrawing) : m_h(h), m_drawing(*pDrawing) {}

    std::string Make() // what was done
    {
        const int n = m_drawing.Below(30);
        const std::string id = m_drawing.Id();
        const char* psz = id.c_str();
        const int nWhat = Below(14);
        const double fValue = Below(130) / 10.0 - 1;
        const int nDone = n < 18 ? Live(n, psz, nWhat, fValue) : n < 24 ? Older(n) : Edit(n);
        return std::to_string(n) + " " + id + " " + std::to_string(nWhat) + " " +
               std::to_string(fValue) + " = " + std::to_string(nDone);
    }

private:
    int Below(int n) { return m_drawing.Below(n); }
    int Live(int n, const char* psz, int nWhat, double fValue)
    {
        switch (n) {
        case 0:
        case 1:
        case 2:
        case 3:
            return QELSetValue(m_h, psz, fValue);
        case 4:
            return QELSetValue(m_h, psz, std::nan(""));
        case 5:
        case 6:
            return QELSetSelector(m_h, psz, static_cast<DWORD>(Below(QEL_SEL_COUNT)), Below(30));
        case 7:
            return QELSetSelector(m_h, psz, QEL_SEL_FACE_COLOR, m_drawing.Color());
        case 8:
            return QELSetText(m_h, psz, nWhat % 3 ? "#.## kW" : "&x");
        case 9:
        case 10:
            return QELSetVisible(m_h, psz, nWhat % 2);
        case 11:
        case 12:
            return QELSetColor(m_h, psz, nWhat % 3, m_drawing.Color());
        case 13:
            return QELSetQuality(m_h, psz, nWhat % 3);
        case 14:
            return QELSetEasing(m_h, psz, static_cast<DWORD>(nWhat % 2 * 100));
        case 15:
            return QELAdvance(m_h, 30);
        case 16:
            return QELSetPin(m_h, psz, nWhat % 5 + 1, fValue);
        default:
            return QELResetLive(m_h, psz);
        }
    }
    int Older(int n)
    {
        const auto nId = static_cast<DWORD>(Below(2) ? Below(4) : Below(3) * 40);
        switch (n) {
        case 18:
            return QELSetParam(m_h, Below(4), Below(2) ? m_drawing.Color() : Below(38));
        case 19:
            return QELSetStatus(m_h, static_cast<DWORD>(Below(4)));
        case 20:
            return QELSetBlinkState(m_h, Below(2));
        case 21:
            return QELSetScaleStatus(m_h, nId, static_cast<DWORD>(Below(14)));
        case 22:
            return QELSetScaleStatusf(m_h, nId, static_cast<float>(Below(140)) / 10);
        default:
            return QELSetScaleParam(m_h, nId, static_cast<DWORD>(Below(QEL_SEL_COUNT)),
                                    static_cast<DWORD>(Below(20)));
        }
    }
    HQELELEM Any()
    {
        HQELELEM h = QELGetRootElem(m_h);
        for (int n = Below(20); n > 0; --n) {
            HQELELEM hNext = Below(2) ? QELGetFirstChild(m_h, h) : nullptr;
            if (!hNext) hNext = QELGetNextElem(m_h, h);
            if (hNext) h = hNext;
        }
        return h;
    }
    int Edit(int n)
    {
        const HQELELEM h = Any();
        const bool bRoot = h == QELGetRootElem(m_h);
        switch (n) {
        case 24: {
            RECT rc{};
            if (!QELGetElemRect(m_h, h, &rc)) return 0;
            ::OffsetRect(&rc, Below(21) - 10, Below(21) - 10);
            return QELSetElemRect(m_h, h, &rc);
        }
        case 25:
            return !bRoot && Below(3) == 0 ? QELDeleteElem(m_h, h) : 0;
        case 26:
            return !bRoot && Below(3) == 0 && QELCopyElem(m_h, h) ? 1 : 0;
        case 27:
            return bRoot ? 0 : QELMoveElem(m_h, h, QELGetRootElem(m_h), nullptr);
        case 28:
            return Below(4) ? 0 : QELRotate(m_h, Below(4) * 90);
        default: {
            if (Below(4)) return 0;
            const int nBy = Below(30);
            const RECT rc{nBy / 2, nBy / 3, SIDE - nBy, SIDE - nBy / 2};
            return QELSetQELRect(m_h, &rc);
        }
        }
    }

    HQELENGINE m_h;
    CDrawing& m_drawing;
};

} // namespace

TEST(Update, AfterAnyChangeThePictureIsThatOfAFullDraw)
{
    int nWrong = 0;
    for (unsigned nSeed = 1; nSeed <= 60 && nWrong < 8; ++nSeed) {
        CDrawing drawing(nSeed);
        const std::string text = drawing.Text();
        const CTextHost host(text, SIDE);
        CScreen screen(host);
        ASSERT_EQ("", screen.WrongAfterUpdate()) << nSeed << "\n" << text;
        CChanges changes(host, &drawing);
        for (int n = 0; n < 40; ++n) {
            const std::string change = changes.Make();
            const std::string wrong = screen.WrongAfterUpdate();
            if (wrong.empty()) continue;
            ADD_FAILURE() << "seed " << nSeed << ", change " << n << ": " << change << ": " << wrong
                          << "\n"
                          << text;
            ++nWrong;
            break;
        }
    }
}
