// Orders of calls that are hard on updates, each with a name. After each of them the picture of the
// updates is that of a full draw on a fresh bitmap, and not that of the beginning.
#include "tests/support/Host.h"
#include "tests/support/Screen.h"

#include <cmath>

namespace {

constexpr int SIDE = 160;

// What moves and what does not, over and under each other.
const char* const g_pszPanel =
    "<rect id='ground' style='0x1' dr='14' fg='0x404448' bg='0xf0f4f8' lnwid='0'"
    " crd='0 0 160 160'/>"
    "<status id='lamp' stx='1'><circle style='0x1' bg='0xFF00' crd='20 20 12'/></status>"
    "<status id='lamp' stx='2'><circle style='0x1' bg='0xFF' crd='22 20 15'/></status>"
    "<meter id='dial' mtid='0' upin='1' mtype='roundUpgrade' crd='80 40 34 40 2 120 78'>"
    "<circle id='face' style='0x1' lnwid='0' crd='80 40 38'/></meter>"
    "<meter id='bar' mtid='42' mtype='vert' crd='130 5 142 75'>"
    "<rect style='0x1' lnwid='0' crd='143 5 156 75'/></meter>"
    "<meter id='shares' upin='1' mtype='sector' crd='132 128 22 108 104 156 152'>"
    "<circle style='0x1' lnwid='0' crd='132 128 24'/></meter>"
    "<text id='number' fg='0x800000' crd='2 40 40 54'>##.# V</text>"
    "<g id='group'><rect id='inner' style='0x1' bg='0xFF8000' crd='10 70 34 96'/>"
    "<g id='deep'><ellipse id='innermost' style='0x1' bg='0x80FF' crd='26 80 60 112'/></g></g>"
    "<frame id='frame'><rect id='framed' lnwid='3' flag='0x1' crd='66 86 84 104'/></frame>"
    "<pattern id='pattern'><rect id='patterned' style='0x1' dr='2' flag='0x80'"
    " crd='88 86 104 104'/></pattern>"
    "<rect id='blinking' style='0x1' bg='0xFF00FF glt' lnwid='0' crd='4 120 20 150'/>"
    "<polygon id='star' style='0x1' bg='0xFFFF' lnwid='2' crd='30 120 60 155 24 140 62 130'/>"
    "<line id='line' clr='0x202020' lnwid='2' crd='0 150 160 4'/>";

class CStage { // the host with its picture
public:
    explicit CStage(const char* pszBody) : m_host(pszBody, SIDE), m_screen(m_host, SIDE)
    {
        EXPECT_EQ(1, Update());
        m_first.Fill(SCREEN_GROUND);
        m_host.Draw(m_first.Dc());
    }
    operator HQELENGINE() const { return m_host; }
    HDC Dc() const { return m_screen.Dc(); }
    int Update() const { return m_screen.Update(); }
    std::string Wrong() { return m_screen.Wrong(); }
    // What was there at first, now as then.
    bool IsAsAtFirst()
    {
        CTestBitmap now(SIDE, SIDE, SCREEN_GROUND);
        DrawOn(now.Dc(), QEL_DRAW_FULL);
        return FirstDifference(m_first, now).empty();
    }
    void DrawOn(HDC hdc, DWORD nFlags) const
    {
        RECT rc{};
        EXPECT_EQ(1, QELGetQELRect(m_host, &rc));
        EXPECT_EQ(1, QELDraw(m_host, hdc, &rc, nFlags));
    }
    void Print(DWORD nFlags) const
    {
        const CTestBitmap paper(SIDE, SIDE);
        DrawOn(paper.Dc(), nFlags);
    }
    void Value(const char* pszId, double fValue) const
    {
        EXPECT_LT(0, QELSetValue(m_host, pszId, fValue)) << pszId;
    }
    void Select(const char* pszId, DWORD nSelector, double fValue) const
    {
        EXPECT_LT(0, QELSetSelector(m_host, pszId, nSelector, fValue)) << pszId << nSelector;
    }
    HQELELEM Find(const char* pszId) const
    {
        const HQELELEM hElem = QELFindElem(m_host, pszId);
        EXPECT_NE(nullptr, hElem) << pszId;
        return hElem;
    }
    void Place(const char* pszId, const RECT& rc) const
    {
        EXPECT_EQ(1, QELSetElemRect(m_host, Find(pszId), &rc));
    }
    void Size(const RECT& rc) const { EXPECT_EQ(1, QELSetQELRect(m_host, &rc)); }
    template <class Record, class Change>
    void Edit(const char* pszId, Change change) const
    {
        Record record{};
        int nSize = 0;
        EXPECT_EQ(1, QELGetElemAttr(m_host, Find(pszId), &record, &nSize));
        change(&record);
        EXPECT_EQ(1, QELSetElemAttr(m_host, Find(pszId), &record, nSize));
    }

private:
    CTextHost m_host;
    CScreen m_screen;
    CTestBitmap m_first{SIDE, SIDE};
};

enum class End { Other, AsAtFirst };

struct Order {
    const char* pszName;
    void (*pfnPlay)(CStage&);
    End end = End::Other;
};

void PrintTo(const Order& order, std::ostream* pOut)
{
    *pOut << order.pszName;
}

void ShowReadOut(const CStage& s)
{
    s.Select("dial", QEL_SEL_SHOW_VALUE, 1);
    s.Value("dial", 9.75);
    EXPECT_EQ(1, s.Update());
}

void BeginToMove(const CStage& s)
{
    EXPECT_EQ(1, QELSetEasing(s, "dial", 100));
    s.Value("dial", 8);
    EXPECT_EQ(1, QELAdvance(s, 40));
    EXPECT_EQ(1, s.Update());
}

const Order g_orders[] = {
    // ---- lamps and what is hidden
    {"ALampIsTurnedOff",
     [](CStage& s) {
         s.Value("lamp", 1);
         EXPECT_EQ(1, s.Update());
         s.Value("lamp", 0);
     },
     End::AsAtFirst},
    {"ALampGoesOnAndOffBetweenUpdates",
     [](CStage& s) {
         s.Value("lamp", 2);
         s.Value("lamp", 0);
     },
     End::AsAtFirst},
    {"ALampShowsItsLargerFace",
     [](CStage& s) {
         s.Value("lamp", 2);
         EXPECT_EQ(1, s.Update());
         s.Value("lamp", 1);
     }},
    {"ALampFollowsTheStatusAgain",
     [](CStage& s) {
         s.Value("lamp", 1);
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetStatus(s, 2));
         EXPECT_LT(0, QELResetLive(s, "lamp"));
     }},
    {"TheStatusMovesUnderALamp",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetStatus(s, 2));
         EXPECT_EQ(1, s.Update());
         s.Value("lamp", 0);
         EXPECT_EQ(1, QELSetStatus(s, 1));
     },
     End::AsAtFirst},
    {"ALampChangesWhileItIsHidden",
     [](CStage& s) {
         EXPECT_LT(0, QELSetVisible(s, "lamp", 0));
         s.Value("lamp", 1);
         s.Update();
         EXPECT_LT(0, QELSetVisible(s, "lamp", 1));
     }},
    {"AShapeIsHiddenInAGroupThatIsColored",
     [](CStage& s) {
         EXPECT_LT(0, QELSetColor(s, "group", 2, 0x123456));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetVisible(s, "inner", 0));
     }},
    {"AGroupChangesWhileItIsHidden",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetVisible(s, "group", 0));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetColor(s, "innermost", 2, 0x654321));
         EXPECT_EQ(1, QELSetVisible(s, "group", 1));
     }},
    {"AHiddenFaceHasAMovingNeedle",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetVisible(s, "face", 0));
         EXPECT_EQ(1, s.Update());
         s.Value("dial", 7);
     }},
    {"AMeterIsHiddenAfterItsValue",
     [](CStage& s) {
         s.Value("bar", 7);
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetVisible(s, "bar", 0));
     }},
    // ---- blink
    {"ABlinkThereAndBack",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetBlinkState(s, 1));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetBlinkState(s, 0));
     },
     End::AsAtFirst},
    {"AColorBeginsToBlinkInTheDarkPhase",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetBlinkState(s, 1));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetColor(s, "star", 2, 0xFFFF | QEL_COLOR_BLINK));
     }},
    {"ANeedleBlinks",
     [](CStage& s) {
         s.Select("dial", QEL_SEL_PIN_COLOR, 0xFF0000 | QEL_COLOR_BLINK);
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetBlinkState(s, 1));
     }},
    // ---- read-outs and texts
    {"AReadOutGetsShorter",
     [](CStage& s) {
         ShowReadOut(s);
         s.Value("dial", 1);
     }},
    {"AReadOutGoes",
     [](CStage& s) {
         ShowReadOut(s);
         s.Select("dial", QEL_SEL_SHOW_VALUE, 0);
     }},
    {"AReadOutLeavesItsZone",
     [](CStage& s) {
         s.Select("dial", QEL_SEL_SHOW_ALARM, 1);
         s.Select("dial", QEL_SEL_HIGH_LIMIT, 8);
         s.Select("dial", QEL_SEL_HIGH_COLOR, 0xFF);
         ShowReadOut(s);
         s.Value("dial", 2);
     }},
    {"ANumberGetsShorter",
     [](CStage& s) {
         s.Value("number", -9.5);
         EXPECT_EQ(1, s.Update());
         s.Value("number", 1);
     }},
    {"ANumberDoesNotFit",
     [](CStage& s) {
         s.Value("number", 12);
         EXPECT_EQ(1, s.Update());
         s.Value("number", 123456);
     },
     End::AsAtFirst},
    {"ATextGetsShorterWithANumberInIt",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetText(s, "number", "#####.## kW"));
         s.Value("number", 42);
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetText(s, "number", "#"));
     }},
    {"ATextIsEditedUnderALiveOne",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetText(s, "number", "live"));
         EXPECT_EQ(1, s.Update());
         s.Edit<QELSHAPEATTR>("number", [](QELSHAPEATTR* p) { p->szText[0] = 'Q'; });
         EXPECT_EQ(1, QELResetLive(s, "number"));
     }},
    // ---- meters
    {"ABarThatOnlyFillsShrinks",
     [](CStage& s) {
         s.Select("bar", QEL_SEL_FILL_ONLY, 1);
         s.Value("bar", 9);
         EXPECT_EQ(1, s.Update());
         s.Value("bar", 2);
     }},
    {"ADialThatOnlyFillsMoves",
     [](CStage& s) {
         s.Select("dial", QEL_SEL_FILL_ONLY, 1);
         s.Value("dial", 9);
         EXPECT_EQ(1, s.Update());
         s.Value("dial", 2);
     }},
    {"AFaceGetsAnotherColor",
     [](CStage& s) {
         s.Value("dial", 4);
         EXPECT_EQ(1, s.Update());
         s.Select("dial", QEL_SEL_FACE_COLOR, 0x204080);
     }},
    {"ARangeIsTakenBack",
     [](CStage& s) {
         s.Select("dial", QEL_SEL_MAX, 50);
         s.Value("dial", 30);
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELResetLive(s, "dial"));
     },
     End::AsAtFirst},
    {"ADialBecomesAFullCircle",
     [](CStage& s) {
         s.Value("dial", 4);
         EXPECT_EQ(1, s.Update());
         s.Select("dial", QEL_SEL_FULL_CIRCLE, 1);
         s.Value("dial", 6);
     }},
    {"ABarGrowsFromItsBase",
     [](CStage& s) {
         s.Value("bar", 8);
         EXPECT_EQ(1, s.Update());
         s.Select("bar", QEL_SEL_USE_BASE, 1);
         s.Select("bar", QEL_SEL_BASE_VALUE, 5);
         s.Value("bar", 3);
     }},
    {"TheScaleOfABarRunsTheOtherWay",
     [](CStage& s) {
         s.Value("bar", 8);
         EXPECT_EQ(1, s.Update());
         s.Select("bar", QEL_SEL_REVERSE, 1);
     }},
    {"SharesAreTakenBack",
     [](CStage& s) {
         s.Select("shares", QEL_SEL_SECTOR_COUNT, 3);
         EXPECT_EQ(1, QELSetPin(s, "shares", 2, 5));
         EXPECT_EQ(1, s.Update());
         s.Print(QEL_DRAW_FULL);
         EXPECT_EQ(1, QELResetLive(s, "shares"));
         s.Select("shares", QEL_SEL_SECTOR_COUNT, 3);
         s.Value("shares", 1); // real numbers from here on
     }},
    {"SharesGetMore",
     [](CStage& s) {
         s.Select("shares", QEL_SEL_SECTOR_COUNT, 2);
         EXPECT_EQ(1, QELSetPin(s, "shares", 1, 5));
         EXPECT_EQ(1, s.Update());
         s.Select("shares", QEL_SEL_SECTOR_COUNT, 4);
         EXPECT_EQ(1, QELSetPin(s, "shares", 4, 3));
     }},
    {"AValueByNumberFollowsOneByIdentifier",
     [](CStage& s) {
         s.Value("dial", 8);
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetScaleStatus(s, 0, 3));
     }},
    {"ABarBecomesADial",
     [](CStage& s) {
         s.Value("bar", 8);
         EXPECT_EQ(1, s.Update());
         s.Edit<QELMETERATTR>("bar", [](QELMETERATTR* p) {
             const LONG geometry[9] = {120, 40, 30, 90, 10, 150, 70, 45, 315};
             std::copy_n(geometry, 9, p->nGeometry);
             p->nType = 4; // "round"
         });
     }},
    // ---- easing
    {"ANeedleIsHalfWay", [](CStage& s) { BeginToMove(s); }},
    {"ANeedleTurnsBackHalfWay",
     [](CStage& s) {
         BeginToMove(s);
         s.Value("dial", 1);
         EXPECT_EQ(1, QELAdvance(s, 30));
     }},
    {"ANeedleArrives",
     [](CStage& s) {
         BeginToMove(s);
         EXPECT_EQ(0, QELAdvance(s, 1000));
     }},
    {"ANeedleIsHalfWayWhenItIsTurned",
     [](CStage& s) {
         BeginToMove(s);
         EXPECT_EQ(1, QELRotate(s, 90));
         EXPECT_EQ(1, QELAdvance(s, 20));
     }},
    {"ANeedleJumpsWhenEasingEnds",
     [](CStage& s) {
         BeginToMove(s);
         EXPECT_EQ(1, QELSetEasing(s, "dial", 0));
         s.Value("dial", 5);
     }},
    {"ANeedleIsTakenBackHalfWay",
     [](CStage& s) {
         BeginToMove(s);
         EXPECT_EQ(1, QELResetLive(s, nullptr) > 0 ? 1 : 0);
     },
     End::AsAtFirst},
    // ---- quality
    {"AQualityOverAGroupWithAChangeWithin",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetQuality(s, "group", 1));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetColor(s, "innermost", 2, 0x123456));
     }},
    {"AQualityOverAGroupThatLosesAShape",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetQuality(s, "group", 2));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELDeleteElem(s, s.Find("innermost")));
     }},
    {"AQualityIsTakenBackWithTheValue",
     [](CStage& s) {
         s.Value("dial", 5);
         EXPECT_EQ(1, QELSetQuality(s, "dial", 2));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELResetLive(s, "dial"));
     },
     End::AsAtFirst},
    {"ANumberFollowsNone",
     [](CStage& s) {
         s.Value("bar", std::nan(""));
         EXPECT_EQ(1, s.Update());
         s.Value("bar", 3);
     }},
    {"AQualityIsHiddenWithItsElement",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetQuality(s, "star", 1));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetVisible(s, "star", 0));
     }},
    {"AQualityMovesWithItsElement",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetQuality(s, "inner", 2));
         EXPECT_EQ(1, s.Update());
         s.Place("inner", {60, 110, 90, 150});
     }},
    // ---- parameters and colours
    {"AFrameChangesItsColor",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetParam(s, QEL_PARAM_COLOR, 0xFF));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetParam(s, QEL_PARAM_COLOR, 0xFF00));
     }},
    {"APatternChangesHatchAndColors",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetParam(s, QEL_PARAM_DRAFT, 12));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetParam(s, QEL_PARAM_DRAFT_FORE, 0xFF));
         EXPECT_EQ(1, QELSetParam(s, QEL_PARAM_DRAFT_BACK, 0xFF00));
     }},
    {"ALiveColorGoesAndTheParameterShows",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetColor(s, "framed", 0, 0x4080));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetParam(s, QEL_PARAM_COLOR, 0xFF));
         EXPECT_EQ(1, QELResetLive(s, "framed"));
     }},
    // ---- surfaces
    {"APrintStandsBetween",
     [](CStage& s) {
         s.Value("dial", 5);
         s.Print(QEL_DRAW_FULL);
         s.Value("bar", 5);
     }},
    {"APartialRedrawElsewhereStandsBetween",
     [](CStage& s) {
         s.Value("dial", 5);
         s.Print(0);
         s.Value("dial", 7);
         s.Print(0);
     }},
    {"APressedPrintOfAnotherSizeStandsBetween",
     [](CStage& s) {
         s.Value("dial", 5);
         s.Size({10, 10, 90, 110});
         s.Print(QEL_DRAW_FULL | QEL_DRAW_PRESSED);
         s.Size({0, 0, SIDE, SIDE});
     }},
    {"TheHostRedrawsInPartOnTheScreenItself",
     [](CStage& s) {
         s.Value("dial", 5);
         s.DrawOn(s.Dc(), 0); // all meters, over what lies on them
         for (const char* pszId : {"dial", "bar", "shares"}) {
             RECT rc{};
             EXPECT_EQ(1, QELGetIdDrawRect(s, pszId, &rc));
             EXPECT_EQ(1, QELInvalidate(s, &rc));
         }
     }},
    {"AFullDrawIsDeclaredRight",
     [](CStage& s) {
         s.Value("dial", 5);
         s.DrawOn(s.Dc(), QEL_DRAW_FULL);
         EXPECT_EQ(1, QELValidate(s));
         EXPECT_EQ(0, s.Update());
         s.Value("lamp", 1);
     }},
    {"TwoUpdatesInARow",
     [](CStage& s) {
         s.Value("lamp", 1);
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(0, s.Update());
         s.Value("lamp", 2);
     }},
    {"WhatWasUncoveredIsAdded",
     [](CStage& s) {
         const RECT rc{10, 10, 70, 90};
         ::FillRect(s.Dc(), &rc, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
         EXPECT_EQ(1, QELInvalidate(s, &rc));
     },
     End::AsAtFirst},
    {"AChangeFollowsUnderAClip",
     [](CStage& s) {
         s.Value("dial", 9);
         ::IntersectClipRect(s.Dc(), 70, 0, 90, 60);
         EXPECT_EQ(1, s.Update());
         s.Value("dial", 2);
         EXPECT_EQ(1, s.Update());
         ::SelectClipRgn(s.Dc(), nullptr);
     }},
    // ---- sizes and turns
    {"TheDrawingShrinks",
     [](CStage& s) {
         s.Value("dial", 5);
         s.Size({30, 20, 120, 110});
     }},
    {"TheDrawingMovesAsideAndBack",
     [](CStage& s) {
         s.Size({40, 0, SIDE + 40, SIDE});
         EXPECT_EQ(1, s.Update());
         s.Size({0, 0, SIDE, SIDE});
     },
     End::AsAtFirst},
    {"ATurnStandsBetween",
     [](CStage& s) {
         s.Value("bar", 5);
         EXPECT_EQ(1, QELRotate(s, 90));
         s.Value("bar", 8);
     }},
    {"ATurnThereAndBack",
     [](CStage& s) {
         EXPECT_EQ(1, QELRotate(s, 270));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELRotate(s, 0));
     },
     End::AsAtFirst},
    {"TheReferenceSizeGrows",
     [](CStage& s) {
         s.Value("dial", 5);
         const SIZE size{220, 180};
         EXPECT_EQ(1, QELSetRefSize(s, &size));
     }},
    // ---- edits
    {"AnEditStandsBetween",
     [](CStage& s) {
         s.Value("dial", 5);
         s.Place("dial", {50, 60, 110, 130});
         s.Value("dial", 8);
     }},
    {"AColoredShapeMovesBeforeTheUpdate",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetColor(s, "star", 2, 0xFF));
         s.Place("star", {90, 20, 150, 60});
     }},
    {"APenGetsThinner",
     [](CStage& s) {
         s.Edit<QELSHAPEATTR>("line", [](QELSHAPEATTR* p) { p->nPenWidth = 12; });
         EXPECT_EQ(1, s.Update());
         s.Edit<QELSHAPEATTR>("line", [](QELSHAPEATTR* p) { p->nPenWidth = 1; });
     }},
    {"AnElementWithAValueIsDeleted",
     [](CStage& s) {
         s.Value("dial", 5);
         EXPECT_EQ(1, s.Update());
         s.Value("dial", 8);
         EXPECT_EQ(1, QELDeleteElem(s, s.Find("dial")));
     }},
    {"AnElementLeavesThePictureAndComesBack",
     [](CStage& s) {
         const HQELELEM hElem = s.Find("group");
         EXPECT_EQ(1, QELMoveElem(s, hElem, nullptr, nullptr));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELMoveElem(s, hElem, QELGetRootElem(s), s.Find("line")));
         EXPECT_EQ(1, QELSetColor(s, "inner", 2, 0xFF));
     }},
    {"AnElementComesToTheFront",
     [](CStage& s) {
         EXPECT_EQ(1, QELMoveElem(s, s.Find("inner"), QELGetRootElem(s), s.Find("line")));
         EXPECT_EQ(1, s.Update());
         s.Place("inner", {30, 10, 110, 150});
     }},
    {"ACopyIsMoved",
     [](CStage& s) {
         const HQELELEM hCopy = QELCopyElem(s, s.Find("dial"));
         ASSERT_NE(nullptr, hCopy);
         const RECT rc{10, 80, 80, 150};
         EXPECT_EQ(1, QELSetElemRect(s, hCopy, &rc));
         s.Value("dial", 5);
     }},
    {"AnotherElementGetsTheIdentifier",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetColor(s, "inner", 2, 0xFF));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetElemId(s, s.Find("star"), "inner"));
         EXPECT_EQ(2, QELSetColor(s, "inner", 2, 0xFF00));
     }},
    {"AShapeComesIntoAGroupThatIsColored",
     [](CStage& s) { // and takes the colour at once
         EXPECT_EQ(1, QELSetColor(s, "group", 2, 0x3080C0));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELMoveElem(s, s.Find("star"), s.Find("group"), nullptr));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetQuality(s, "star", 0));
     }},
    {"ACopyIsMadeInAGroupThatIsColored",
     [](CStage& s) {
         EXPECT_EQ(1, QELSetColor(s, "group", 2, 0x3080C0));
         EXPECT_NE(nullptr, QELCopyElem(s, s.Find("inner")));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELSetQuality(s, "inner_1", 0));
     }},
    {"AFaceGetsSomethingInIt",
     [](CStage& s) {                          // it is painted no more
         s.Place("face", {60, 90, 130, 150}); // away from the dial
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELMoveElem(s, s.Find("star"), s.Find("face"), nullptr));
         EXPECT_EQ(1, s.Update());
         s.Value("dial", 5);
     }},
    {"AFaceLosesWhatWasInIt",
     [](CStage& s) {
         s.Place("face", {60, 90, 130, 150});
         EXPECT_NE(nullptr, QELCreateElem(s, QEL_TYPE_RECT, s.Find("face"), nullptr));
         EXPECT_EQ(1, s.Update());
         EXPECT_EQ(1, QELDeleteElem(s, QELGetFirstChild(s, s.Find("face"))));
     }},
    {"AnotherDrawingIsOpened",
     [](CStage& s) {
         s.Value("dial", 5);
         const std::string text = "<qel width='160' height='160'>"
                                  "<rect style='0x1' bg='0xFF' crd='40 40 90 90'/></qel>";
         EXPECT_EQ(1, QELOpenMemory(s, text.data(), static_cast<DWORD>(text.size())));
     }},
};

class UpdateOrder : public testing::TestWithParam<Order> {};

} // namespace

TEST_P(UpdateOrder, EndsInThePictureOfAFullDraw)
{
    CStage stage(g_pszPanel);
    ASSERT_EQ("", stage.Wrong());
    GetParam().pfnPlay(stage);
    stage.Update();
    EXPECT_EQ("", stage.Wrong());
    EXPECT_EQ(GetParam().end == End::AsAtFirst, stage.IsAsAtFirst());
    EXPECT_EQ(0, stage.Update());
}

INSTANTIATE_TEST_SUITE_P(Orders, UpdateOrder, testing::ValuesIn(g_orders),
                         [](const auto& order) { return order.param.pszName; });
