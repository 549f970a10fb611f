// Updates of the picture: after any change QELUpdate makes pixel for pixel what a full draw makes,
// by painting no more than what is dirty, and touches nothing else.
#include "tests/support/Host.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
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

class CTestSelectClip { // a clip for as long as the scope
public:
    CTestSelectClip(HDC hdc, const RECT& rc) : m_hdc(hdc)
    {
        ::IntersectClipRect(hdc, rc.left, rc.top, rc.right, rc.bottom);
    }
    ~CTestSelectClip() { ::SelectClipRgn(m_hdc, nullptr); }
    CTestSelectClip(const CTestSelectClip&) = delete;
    CTestSelectClip& operator=(const CTestSelectClip&) = delete;

private:
    HDC m_hdc;
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
    const char* const pszMore = std::getenv("QEL_UPDATE_SEEDS"); // how many drawings
    const unsigned nLast = pszMore ? static_cast<unsigned>(std::atoi(pszMore)) : 60;
    int nWrong = 0;
    for (unsigned nSeed = 1; nSeed <= nLast && nWrong < 8; ++nSeed) {
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

TEST(Update, PaintsNothingOutsideOfWhatIsDirtyAndLeavesNothingDirty)
{
    for (unsigned nSeed = 1; nSeed <= 20; ++nSeed) {
        CDrawing drawing(nSeed);
        const CTextHost host(drawing.Text(), SIDE);
        const CBrush ground(GROUND), white(RGB(255, 255, 255));
        EXPECT_EQ(1, QELValidate(host));
        CChanges changes(host, &drawing);
        for (int n = 0; n < 20; ++n) {
            SCOPED_TRACE(testing::Message() << "seed " << nSeed << ": " << changes.Make());
            const CTestBitmap bitmap(SIDE, SIDE);
            HRGN hDirty = ::CreateRectRgn(0, 0, 0, 0);
            RECT rcDirty{};
            if (QELGetDirtyRegion(host, hDirty)) {
                EXPECT_EQ(1, QELGetDirtyRect(host, &rcDirty));
                QELUpdate(host, bitmap.Dc(), ground);
            }
            EXPECT_EQ(0, QELGetDirtyRect(host, &rcDirty));
            ::SelectClipRgn(bitmap.Dc(), hDirty);
            const RECT rcAll = bitmap.Box();
            ::FillRect(bitmap.Dc(), &rcAll, white); // over all that was dirty
            ::SelectClipRgn(bitmap.Dc(), nullptr);
            ::DeleteObject(hDirty);
            EXPECT_TRUE(IsBlank(bitmap));
        }
    }
}

// ---- what it rests on

TEST(Update, NoMeterScaleOrRegionGoesByTheColorsThatOthersLeave)
{
    std::vector<std::string> bodies;
    for (const char* psz : g_meters)
        bodies.push_back(
            std::string("<meter id='a' upin='1' mtype='") + psz + "' crd='" +
            (psz[0] == 'v' || psz[0] == 'h' ? "20 20 90 140" : "80 80 60 0 0 160 160 45 315") +
            "'><rect style='0x1' lnwid='0' crd='10 10 150 150'/></meter>");
    for (const char* psz : g_scales)
        bodies.push_back(
            std::string("<scale id='a' pin='1' style='0x1' sctype='") + psz + "' crd='" +
            (*psz == 'r' || *psz == 'A' ? "80 80 60 50 10 0 270" : "20 20 140 140") + "'/>");
    bodies.emplace_back("<drawrgn id='a' style='0x3' crd='20 20 140 140'/>");
    for (const std::string& body : bodies)
        for (int nDraft = 0; nDraft < 38; nDraft += 5) {
            const CTextHost host(body, SIDE);
            for (const DWORD nSelector :
                 {QEL_SEL_SHOW_ALARM, QEL_SEL_SHOW_VALUE, QEL_SEL_SHOW_FRAME})
                QELSetSelector(host, "a", nSelector, 1);
            QELSetSelector(host, "a", QEL_SEL_SECTOR_COUNT, 3);
            for (int nPin = 1; nPin < 4; ++nPin) QELSetPin(host, "a", nPin, nPin);
            QELSetValue(host, "a", 6);
            QELSetParam(host, QEL_PARAM_DRAFT, static_cast<DWORD>(nDraft));
            CTestBitmap plain(SIDE, SIDE), colored(SIDE, SIDE);
            ::SetTextColor(colored.Dc(), 0x123456);
            ::SetBkColor(colored.Dc(), 0x654321);
            // Once before: the colour of a read-out is that of the value of the draw before.
            for (const auto* pBitmap : {&plain, &plain, &colored}) host.Draw(pBitmap->Dc());
            EXPECT_FALSE(IsBlank(plain)) << body;
            EXPECT_EQ("", FirstDifference(plain, colored)) << body << nDraft;
        }
}

// ---- surfaces and clips

namespace {

std::string Lamp(const char* pszId, const char* pszCrd)
{
    return std::string("<status stx='1' id='") + pszId +
           "'><rect style='0x1' lnwid='0' bg='0xFF00' crd='" + pszCrd + "'/></status>";
}

RECT DirtyRect(HQELENGINE h)
{
    RECT rc{-1, -1, -1, -1};
    QELGetDirtyRect(h, &rc);
    return rc;
}

std::string Text(const RECT& rc)
{
    return std::to_string(rc.left) + "," + std::to_string(rc.top) + "," + std::to_string(rc.right) +
           "," + std::to_string(rc.bottom);
}

// Made clean by an update of all.
class CCleanHost {
public:
    explicit CCleanHost(const std::string& body) : host(body, SIDE), screen(host)
    {
        const RECT rc = DirtyRect(host);
        EXPECT_TRUE(rc.left <= 0 && rc.top <= 0 && rc.right >= SIDE && rc.bottom >= SIDE);
        EXPECT_EQ(1, screen.Update());
        EXPECT_EQ(0, screen.Update());
        EXPECT_EQ("0,0,0,0", Text(DirtyRect(host)));
    }
    CTextHost host;
    CScreen screen;
};

} // namespace

TEST(Update, ALampThatIsTurnedOffGoesDark)
{
    CCleanHost clean(Lamp("a", "20 20 60 60"));
    EXPECT_EQ(1, QELSetStatus(clean.host, 1));
    EXPECT_EQ("20,20,60,60", Text(DirtyRect(clean.host)));
    EXPECT_EQ("", clean.screen.WrongAfterUpdate());
    EXPECT_EQ(1, QELSetStatus(clean.host, 2));
    EXPECT_EQ("20,20,60,60", Text(DirtyRect(clean.host)));
    EXPECT_EQ("", clean.screen.WrongAfterUpdate());
    EXPECT_EQ(1, QELSetStatus(clean.host, 3)); // nothing of the picture changes
    EXPECT_EQ("0,0,0,0", Text(DirtyRect(clean.host)));
}

TEST(Update, ADrawElsewhereChangesNothingOfIt)
{
    CCleanHost clean(Lamp("a", "20 20 60 60"));
    EXPECT_EQ(1, QELSetValue(clean.host, "a", 1));
    CTestBitmap print(SIDE, SIDE);
    clean.host.Draw(print.Dc());
    clean.host.Draw(print.Dc(), 0);
    EXPECT_EQ("20,20,60,60", Text(DirtyRect(clean.host)));
    EXPECT_EQ("", clean.screen.WrongAfterUpdate());
}

TEST(Update, OnlyWhatTheClipLetThroughIsClean)
{
    CCleanHost clean(Lamp("a", "20 20 60 60"));
    EXPECT_EQ(1, QELSetValue(clean.host, "a", 1));
    {
        const CTestSelectClip clip(clean.screen.Dc(), {0, 0, 40, 160});
        EXPECT_EQ(1, clean.screen.Update());
        EXPECT_EQ(0, clean.screen.Update()); // the rest is not within the clip
    }
    EXPECT_EQ("40,20,60,60", Text(DirtyRect(clean.host)));
    EXPECT_NE("", clean.screen.Wrong());
    EXPECT_EQ("", clean.screen.WrongAfterUpdate());
    EXPECT_EQ("0,0,0,0", Text(DirtyRect(clean.host)));
}

TEST(Update, WhatIsBeyondTheSurfaceIsNobodysToPaint)
{
    CCleanHost clean(Lamp("a", "20 20 60 60"));
    EXPECT_EQ(1, QELSetValue(clean.host, "a", 1));
    const CTestBitmap small(30, 40, GROUND);
    const CTestSelectClip clip(small.Dc(), {0, 0, 30, 30});
    EXPECT_EQ(1, QELUpdate(clean.host, small.Dc(), nullptr));
    EXPECT_EQ("20,30,30,40", Text(DirtyRect(clean.host)));
}

TEST(Update, TheContextIsAsBefore)
{
    CCleanHost clean("<rect style='0x1' dr='3' lnwid='3' crd='0 0 160 160'/>" +
                     Lamp("a", "20 20 60 60"));
    const HDC hdc = clean.screen.Dc();
    HGDIOBJ hPen = ::GetCurrentObject(hdc, OBJ_PEN), hBrush = ::GetCurrentObject(hdc, OBJ_BRUSH);
    ::SetTextColor(hdc, 0x123456);
    ::SetBkColor(hdc, 0x654321);
    ::MoveToEx(hdc, 7, 8, nullptr);
    EXPECT_EQ(1, QELSetValue(clean.host, "a", 1));
    EXPECT_EQ(1, clean.screen.Update());
    EXPECT_EQ(0x123456U, ::GetTextColor(hdc));
    EXPECT_EQ(0x654321U, ::GetBkColor(hdc));
    EXPECT_EQ(hPen, ::GetCurrentObject(hdc, OBJ_PEN));
    EXPECT_EQ(hBrush, ::GetCurrentObject(hdc, OBJ_BRUSH));
    POINT pt{};
    ::GetCurrentPositionEx(hdc, &pt);
    EXPECT_EQ(7, pt.x);
    EXPECT_EQ(8, pt.y);
    HRGN hClip = ::CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(0, ::GetClipRgn(hdc, hClip));
    ::DeleteObject(hClip);
}

TEST(Update, WithoutABrushTheHostHasPutTheBackgroundThere)
{
    CCleanHost clean(Lamp("a", "20 20 60 60"));
    EXPECT_EQ(1, QELSetValue(clean.host, "a", 1));
    EXPECT_EQ("", clean.screen.WrongAfterUpdate());
    EXPECT_EQ(1, QELSetValue(clean.host, "a", 2));
    EXPECT_EQ(1, QELUpdate(clean.host, clean.screen.Dc(), nullptr));
    EXPECT_NE("", clean.screen.Wrong()); // nobody has taken the lamp away
    EXPECT_EQ(1, QELSetValue(clean.host, "a", 1));
    EXPECT_EQ(1, QELSetValue(clean.host, "a", 2));
    const RECT rc = DirtyRect(clean.host);
    const CBrush ground(GROUND);
    ::FillRect(clean.screen.Dc(), &rc, ground);
    EXPECT_EQ(1, QELUpdate(clean.host, clean.screen.Dc(), nullptr));
    EXPECT_EQ("", clean.screen.Wrong());
}

TEST(Update, ThePartialRedrawsOfTheHostSeeWhatTheyAlwaysSaw)
{
    const std::string meter =
        "<meter id='a' upin='1' mtype='roundUpgrade' crd='80 80 70 0 0 160 160'>"
        "<rect style='0x1' lnwid='0' crd='0 0 160 160'/></meter>";
    const CTextHost alone(meter, SIDE), both(meter, SIDE);
    CScreen screen(both);
    for (const auto* pHost : {&alone, &both}) {
        QELSetSelector(*pHost, "a", QEL_SEL_SHOW_VALUE, 1);
        QELSetSelector(*pHost, "a", QEL_SEL_SHOW_ALARM, 1);
        QELSetSelector(*pHost, "a", QEL_SEL_LOW_LIMIT, 4);
    }
    for (const double fValue : {1.0, 5.0, 2.0, 9.0}) {
        for (const auto* pHost : {&alone, &both}) QELSetValue(*pHost, "a", fValue);
        EXPECT_EQ(1, screen.Update());
        EXPECT_EQ(alone.Calls({}, 0), both.Calls({}, 0)) << fValue;
    }
}

// ---- the area

TEST(Update, AnElementMakesDirtyWhereItWasAndWhereItIs)
{
    CCleanHost clean("<rect style='0x1' lnwid='0' crd='10 10 20 20'/>");
    const RECT rc{100, 100, 110, 110};
    EXPECT_EQ(1, QELSetElemRect(clean.host, clean.host.Child(0), &rc));
    HRGN hExpected = ::CreateRectRgn(10, 10, 20, 20), hPart = ::CreateRectRgn(100, 100, 110, 110);
    ::CombineRgn(hExpected, hExpected, hPart, RGN_OR);
    EXPECT_EQ(1, QELGetDirtyRegion(clean.host, hPart));
    EXPECT_TRUE(::EqualRgn(hExpected, hPart));
    ::DeleteObject(hExpected);
    ::DeleteObject(hPart);
    EXPECT_EQ("10,10,110,110", Text(DirtyRect(clean.host)));
    EXPECT_EQ("", clean.screen.WrongAfterUpdate());
}

TEST(Update, OnlyWhatBlinksIsDirtyAtABlink)
{
    CCleanHost clean("<rect style='0x1' lnwid='0' bg='0xFF glt' crd='10 10 20 20'/>"
                     "<rect style='0x1' lnwid='0' bg='0xFF' crd='100 10 120 20'/>");
    EXPECT_EQ(1, QELSetBlinkState(clean.host, 1));
    EXPECT_EQ("10,10,20,20", Text(DirtyRect(clean.host)));
    EXPECT_EQ("", clean.screen.WrongAfterUpdate());
    EXPECT_EQ(1, QELSetBlinkState(clean.host, 1)); // it is dark already
    EXPECT_EQ("0,0,0,0", Text(DirtyRect(clean.host)));
}

TEST(Update, AnotherQelRectMakesTheOldAndTheNewOneDirty)
{
    CCleanHost clean("<rect style='0x1' lnwid='9' bg='0xFF' crd='0 0 160 160'/>");
    const RECT rcSame{0, 0, 160, 160}, rcNew{40, 40, 200, 200};
    EXPECT_EQ(1, QELSetQELRect(clean.host, &rcSame));
    EXPECT_EQ("0,0,0,0", Text(DirtyRect(clean.host)));
    EXPECT_EQ(1, QELSetQELRect(clean.host, &rcNew));
    const RECT rc = DirtyRect(clean.host);
    EXPECT_TRUE(rc.left <= -4 && rc.top <= -4 && rc.right >= 204 && rc.bottom >= 204)
        << Text(rc); // and half of the outline beyond
    EXPECT_EQ("", clean.screen.WrongAfterUpdate());
}

TEST(Update, TheHostAddsAndTakesBack)
{
    CCleanHost clean(Lamp("a", "20 20 60 60"));
    const RECT rc{5, 6, 7, 8};
    EXPECT_EQ(1, QELInvalidate(clean.host, &rc));
    EXPECT_EQ("5,6,7,8", Text(DirtyRect(clean.host)));
    EXPECT_EQ(1, QELInvalidate(clean.host, nullptr));
    EXPECT_EQ("0,0,160,160", Text(DirtyRect(clean.host)));
    EXPECT_EQ(1, QELValidate(clean.host));
    EXPECT_EQ("0,0,0,0", Text(DirtyRect(clean.host)));
    EXPECT_EQ(1, QELCloseFile(clean.host));
    EXPECT_EQ(0, QELInvalidate(clean.host, nullptr));
    EXPECT_EQ(0, QELValidate(clean.host));
    EXPECT_EQ(0, clean.screen.Update());
    HRGN hRegion = ::CreateRectRgn(0, 0, 9, 9);
    EXPECT_EQ(0, QELGetDirtyRegion(clean.host, hRegion));
    RECT rcBox{1, 1, 2, 2};
    EXPECT_EQ(NULLREGION, ::GetRgnBox(hRegion, &rcBox));
    ::DeleteObject(hRegion);
}

TEST(Update, ManyPlacesAreMergedWithTheNearest)
{
    std::string body;
    for (int n = 0; n < 100; ++n)
        body += Lamp(("l" + std::to_string(n)).c_str(),
                     (std::to_string(n % 10 * 16) + " " + std::to_string(n / 10 * 16) + " " +
                      std::to_string(n % 10 * 16 + 4) + " " + std::to_string(n / 10 * 16 + 4))
                         .c_str());
    CCleanHost clean(body);
    for (int n = 0; n < 100; ++n)
        EXPECT_EQ(1, QELSetValue(clean.host, ("l" + std::to_string(n)).c_str(), 1));
    HRGN hRegion = ::CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(1, QELGetDirtyRegion(clean.host, hRegion));
    for (int n = 0; n < 100; ++n)
        EXPECT_TRUE(::PtInRegion(hRegion, n % 10 * 16 + 1, n / 10 * 16 + 1));
    ::DeleteObject(hRegion);
    EXPECT_EQ("", clean.screen.WrongAfterUpdate());
}

// ---- quality and clocks

TEST(Update, AQualityIsAHalfToneOverAllThatTheElementMayPaint)
{
    const std::string bar = "<meter id='a' mtype='vert' crd='20 10 70 130'>"
                            "<rect style='0x1' lnwid='0' crd='75 10 130 130'/></meter>";
    CCleanHost clean(bar);
    CTestBitmap good(SIDE, SIDE, GROUND), stale(SIDE, SIDE, GROUND), bad(SIDE, SIDE, GROUND);
    clean.host.Draw(good.Dc());
    EXPECT_EQ(1, QELSetQuality(clean.host, "a", 1));
    EXPECT_EQ("", clean.screen.WrongAfterUpdate());
    clean.host.Draw(stale.Dc());
    RECT rc{};
    int nGrey = 0, nOther = 0;
    for (int y = 0; y < SIDE; ++y)
        for (int x = 0; x < SIDE; ++x) {
            if (stale.At(x, y) == good.At(x, y)) continue;
            EXPECT_EQ(0xA0A0A0U, stale.At(x, y));
            rc = nGrey ? RECT{std::min<LONG>(rc.left, x), std::min<LONG>(rc.top, y),
                              std::max<LONG>(rc.right, x + 1), std::max<LONG>(rc.bottom, y + 1)}
                       : RECT{x, y, x + 1, y + 1};
            ++nGrey;
        }
    const int nAll = (rc.right - rc.left) * (rc.bottom - rc.top);
    EXPECT_NEAR(nAll / 2, nGrey, nAll / 20); // every other pixel
    EXPECT_EQ(1, QELSetValue(clean.host, "a", std::nan("")));
    EXPECT_EQ("", clean.screen.WrongAfterUpdate());
    clean.host.Draw(bad.Dc());
    for (int y = 0; y < SIDE; ++y)
        for (int x = 0; x < SIDE; ++x) nOther += bad.At(x, y) == 0x0000FF;
    EXPECT_LT(100, nOther); // the cross
    EXPECT_EQ(1, QELSetValue(clean.host, "a", 0));
    EXPECT_EQ(1, QELSetQuality(clean.host, "a", 0));
    EXPECT_EQ("", clean.screen.WrongAfterUpdate());
    EXPECT_EQ(0, QELSetQuality(clean.host, "a", 3));
    EXPECT_EQ(0, QELSetQuality(clean.host, "a", -1));
}

// The order of places does not tell that the mark comes last.
TEST(Update, AMarkOverAGroupIsPaintedAfterAllThatIsInIt)
{
    CCleanHost clean("<g id='a'><rect style='0x1' lnwid='0' bg='0xFF' crd='10 10 60 60'/>"
                     "<g><rect style='0x1' lnwid='0' bg='0xFF00' crd='50 50 90 90'/></g></g>"
                     "<rect style='0x1' lnwid='0' bg='0xFF0000' crd='80 80 120 120'/>");
    EXPECT_EQ(1, QELSetQuality(clean.host, "a", 1));
    EXPECT_EQ("10,10,90,90", Text(DirtyRect(clean.host)));
    const std::vector<std::string> words = {"Rectangle", "PatBlt"};
    CRecording recording;
    EXPECT_EQ(1, QELUpdate(clean.host, recording.Dc(), nullptr));
    const std::vector<std::string> drawn = clean.host.Calls(words);
    EXPECT_LT(4U, drawn.size()); // three rectangles, two steps of a mark
    EXPECT_EQ(drawn, recording.Only(words));
}

TEST(Update, AClockStandsUntilTheHostLetsTimePass)
{
    CCleanHost clean("<meter id='a' upin='1' mtype='clock' crd='80 80 70 0 0 160 160'>"
                     "<rect style='0x1' lnwid='0' bg='0xFFFFFF' crd='0 0 160 160'/></meter>");
    CTestBitmap before(SIDE, SIDE);
    EXPECT_EQ(1, QELInvalidate(clean.host, nullptr));
    EXPECT_EQ(1, QELUpdate(clean.host, before.Dc(), nullptr));
    ::Sleep(1100);
    CTestBitmap after(SIDE, SIDE);
    EXPECT_EQ(1, QELInvalidate(clean.host, nullptr));
    EXPECT_EQ(1, QELUpdate(clean.host, after.Dc(), nullptr));
    EXPECT_EQ("", FirstDifference(before, after));
    EXPECT_EQ(0, QELAdvance(clean.host, 1100));
    RECT rc{};
    EXPECT_EQ(1, QELGetDirtyRect(clean.host, &rc));
    EXPECT_EQ(1, QELUpdate(clean.host, after.Dc(), nullptr));
    EXPECT_NE("", FirstDifference(before, after));
}
