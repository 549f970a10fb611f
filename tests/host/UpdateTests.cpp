// Updates of the picture: after any change QELUpdate makes pixel for pixel what a full draw makes,
// by painting no more than what is dirty, and touches nothing else.
#include "tests/support/ChanceDrawing.h"
#include "tests/support/Host.h"
#include "tests/support/Screen.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int SIDE = 160;
constexpr COLORREF GROUND = SCREEN_GROUND;

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

} // namespace

// ---- what it rests on

TEST(Update, NoMeterScaleOrRegionGoesByTheColorsThatOthersLeave)
{
    std::vector<std::string> bodies;
    for (const char* psz : CHANCE_METERS) {
        if (psz == std::string("clock")) continue; // its hands move from draw to draw
        bodies.push_back(
            std::string("<meter id='a' upin='1' mtype='") + psz + "' crd='" +
            (psz[0] == 'v' || psz[0] == 'h' ? "20 20 90 140" : "80 80 60 0 0 160 160 45 315") +
            "'><rect style='0x1' lnwid='0' crd='10 10 150 150'/></meter>");
    }
    for (const char* psz : CHANCE_SCALES)
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
    explicit CCleanHost(const std::string& body) : host(body, SIDE), screen(host, SIDE)
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
    const CTestBrush ground(GROUND);
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
    CScreen screen(both, SIDE);
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

// ---- what is left alone

TEST(Update, AMarkedGroupIsDirtyWithAllThatItMayPaintWhenOneInItMoves)
{
    const CTextHost host("<g id='g'><text id='t' crd='20 20 40 30'>a</text>"
                         "<rect style='0x1' crd='100 100 120 120'/></g>",
                         SIDE);
    RECT rcGroup{};
    EXPECT_EQ(1, QELGetIdDrawRect(host, "g", &rcGroup));
    EXPECT_EQ(1, QELSetQuality(host, "g", 1));
    EXPECT_EQ(1, QELValidate(host));
    EXPECT_EQ(1, QELSetText(host, "t", "b"));
    const RECT rc = DirtyRect(host);
    EXPECT_LE(rc.left, rcGroup.left);
    EXPECT_LE(rc.top, rcGroup.top);
    EXPECT_GE(rc.right, rcGroup.right);
    EXPECT_GE(rc.bottom, rcGroup.bottom);
}

TEST(Update, WhatLiesBetweenTwoDirtyPlacesIsNotPainted)
{
    // The two lamps are dirty. The box around both holds all, the lamps themselves none of the
    // rest.
    const CTextHost host(Lamp("a", "10 10 30 30") + Lamp("b", "120 120 150 150") +
                             "<ellipse style='0x1' crd='120 10 150 40'/>"
                             "<ellipse style='0x1' crd='10 120 30 150'/>",
                         SIDE);
    const CTestBitmap picture(SIDE, SIDE, GROUND);
    EXPECT_EQ(1, QELUpdate(host, picture.Dc(), nullptr));
    for (const char* pszId : {"a", "b"}) EXPECT_EQ(1, QELSetValue(host, pszId, 1));
    EXPECT_EQ("10,10,150,150", Text(DirtyRect(host)));
    const CTestBrush mark(RGB(1, 2, 3));
    const RECT rcOthers[] = {{125, 15, 145, 35}, {15, 125, 25, 145}};
    for (const RECT& rc : rcOthers) ::FillRect(picture.Dc(), &rc, mark);
    EXPECT_EQ(1, QELUpdate(host, picture.Dc(), nullptr));
    EXPECT_EQ(RGB(1, 2, 3), picture.At(135, 25));
    EXPECT_EQ(RGB(1, 2, 3), picture.At(20, 135));
    EXPECT_NE(SCREEN_GROUND, picture.At(20, 20));
    EXPECT_NE(SCREEN_GROUND, picture.At(135, 135));
}

TEST(Update, AGroupThatComesIntoAColoredOneHasItsColors)
{
    const std::string body = "<g id='red'><rect style='0x1' lnwid='0' crd='0 0 9 9'/></g>"
                             "<g id='b'><rect style='0x1' lnwid='0' crd='50 50 90 90'/></g>";
    const CTextHost host(body, SIDE);
    CScreen screen(host, SIDE);
    screen.Update();
    EXPECT_EQ(1, QELSetColor(host, "red", 2, RGB(255, 0, 0)));
    EXPECT_EQ(1, QELSetColor(host, "red", 1, RGB(255, 0, 0)));
    EXPECT_EQ(1, QELMoveElem(host, QELFindElem(host, "b"), QELFindElem(host, "red"), nullptr));
    EXPECT_EQ("", screen.WrongAfterUpdate());
    EXPECT_EQ(RGB(255, 0, 0), host.Pixel(70, 70));
}

TEST(Update, AMeterOfAnUnknownTypeIsNothingThatIsMissed)
{
    const CTextHost host("<meter id='a' mtype='round' crd='80 80 60 0 0 160 160'/>", SIDE);
    QELMETERATTR attr{};
    EXPECT_EQ(1, QELGetElemAttr(host, host.Child(0), &attr, nullptr));
    attr.nType = 99;
    EXPECT_EQ(1, QELSetElemAttr(host, host.Child(0), &attr, sizeof attr));
    CScreen screen(host, SIDE);
    screen.Update();
    EXPECT_EQ(1, QELSetVisible(host, "a", 0));
    EXPECT_EQ(1, QELSetVisible(host, "a", 1));
    screen.Update();
    RECT rc{};
    EXPECT_EQ(0, QELGetDirtyRect(host, &rc));
    EXPECT_EQ("", screen.Wrong());
}
