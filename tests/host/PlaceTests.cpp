// Where things are, as a host asks: draw rects, what a point is on, identifiers and units, through
// edits, turns and show-only mode. What each class paints at most and where it is hit is held
// against pixels by tests/PaintedRectTests.cpp.
#include "tests/support/Host.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr COLORREF WHITE = RGB(255, 255, 255);

std::string Block(const std::string& attributes, const std::string& crd)
{
    return "<rect style='0x1' lnwid='0' bg='0xff' fg='0xff' " + attributes + " crd='" + crd + "'/>";
}

std::string RectText(const RECT& rc)
{
    return std::to_string(rc.left) + "," + std::to_string(rc.top) + "," + std::to_string(rc.right) +
           "," + std::to_string(rc.bottom);
}

std::string IdAt(HQELENGINE h, LONG nX, LONG nY)
{
    const POINT pt{nX, nY};
    char szId[QEL_TEXT_SIZE] = "none";
    QELIdFromPoint(h, &pt, szId, sizeof szId);
    return szId;
}

HQELELEM ElemAt(HQELENGINE h, LONG nX, LONG nY)
{
    const POINT pt{nX, nY};
    return QELElemFromPoint(h, &pt);
}

std::string DrawRect(HQELENGINE h, const char* pszId)
{
    RECT rc{-1, -1, -1, -1};
    const int nResult = QELGetIdDrawRect(h, pszId, &rc);
    return (nResult ? "" : "0 ") + RectText(rc);
}

// The box of what is not white in a full draw.
RECT PixelsOf(const CTextHost& host, int nSide)
{
    CTestBitmap drawn(nSide, nSide);
    host.Draw(drawn.Dc());
    RECT rc{nSide, nSide, 0, 0};
    for (int y = 0; y < nSide; ++y)
        for (int x = 0; x < nSide; ++x)
            if (drawn.At(x, y) != WHITE)
                rc = {std::min<LONG>(rc.left, x), std::min<LONG>(rc.top, y),
                      std::max<LONG>(rc.right, x + 1), std::max<LONG>(rc.bottom, y + 1)};
    return rc;
}

constexpr const char* PANEL =
    "<rect id='ground' style='0x1' lnwid='0' bg='0xc0c0c0' fg='0xc0c0c0' crd='0 0 100 100'/>"
    "<g id='pump'><circle style='0x1' lnwid='0' bg='0xff' fg='0xff' crd='20 20 10'/>"
    "<g><rect id='lid' style='0x1' lnwid='0' bg='0xff00' fg='0xff00' crd='25 15 35 25'/></g></g>"
    "<status id='lamp' stx='3'><rect id='lit' style='0x1' lnwid='0' bg='0xffff' fg='0xffff' "
    "crd='50 10 60 20'/></status>"
    "<meter id='dial' mtype='round' crd='30 70 20 10 50 50 90'>"
    "<rect id='face' style='0x1' lnwid='0' bg='0xff' fg='0xff' crd='5 45 55 95'/></meter>"
    "<line id='edge' lnwid='1' crd='70 70 90 70'/>";

} // namespace

// ---- draw rects ----

TEST(DrawRects, AreOneRectangleAroundAllThatBearAnIdentifier)
{
    CTextHost host(Block("id='a'", "10 20 30 40") + Block("id='b'", "0 0 5 5") + "<g>" +
                       Block("id='a'", "60 50 70 55") + "</g>",
                   100);
    host.Place({5, 10, 205, 110}); // twice as wide
    EXPECT_EQ("25,30,145,65", DrawRect(host, "a"));
    EXPECT_EQ("5,10,15,15", DrawRect(host, "b"));
    EXPECT_EQ("0 0,0,0,0", DrawRect(host, "A"));
    EXPECT_EQ("0 0,0,0,0", DrawRect(host, ""));
}

TEST(DrawRects, OfAGroupHoldAllThatIsInIt)
{
    const CTextHost host("<g id='g'>" + Block("", "10 20 30 40") + "<g>" + Block("", "50 5 60 30") +
                             "</g></g>",
                         100);
    EXPECT_EQ("10,5,60,40", DrawRect(host, "g"));
    RECT rc{};
    ASSERT_EQ(1, QELGetElemDrawRect(host, host.Child(0), &rc));
    EXPECT_EQ("10,5,60,40", RectText(rc));
    ASSERT_EQ(1, QELGetElemDrawRect(host, QELGetRootElem(host), &rc));
    EXPECT_EQ("10,5,60,40", RectText(rc));
}

TEST(DrawRects, OfWhatIsNotShownNowAreWhereItWouldBe)
{
    const CTextHost host(PANEL, 100);
    EXPECT_EQ("50,10,60,20", DrawRect(host, "lamp"));
    EXPECT_EQ("50,10,60,20", DrawRect(host, "lit"));
}

TEST(DrawRects, OfAPressedShapeHoldBothItsPlaces)
{
    const CTextHost host(Block("id='key'", "10 10 30 30"), 100);
    const HQELELEM hElem = host.Child(0);
    QELSHAPEATTR attr{};
    ASSERT_EQ(1, QELGetElemAttr(host, hElem, &attr, nullptr));
    attr.nFlags = QEL_FLAG_PRESS;
    ASSERT_EQ(1, QELSetElemAttr(host, hElem, &attr, sizeof attr));
    EXPECT_EQ("10,10,32,32", DrawRect(host, "key"));
}

TEST(DrawRects, AreEmptyForWhatIsOutOfThePicture)
{
    const CTextHost host("<g id='g'>" + Block("id='a'", "10 20 30 40") + "</g>", 100);
    const HQELELEM hGroup = host.Child(0);
    ASSERT_EQ(1, QELMoveElem(host, hGroup, nullptr, nullptr));
    RECT rc{1, 2, 3, 4};
    EXPECT_EQ(0, QELGetElemDrawRect(host, hGroup, &rc));
    EXPECT_EQ("0,0,0,0", RectText(rc));
    EXPECT_EQ("0 0,0,0,0", DrawRect(host, "a"));
    ASSERT_EQ(1, QELMoveElem(host, hGroup, QELGetRootElem(host), nullptr));
    EXPECT_EQ("10,20,30,40", DrawRect(host, "a"));
}

// A shape draws itself and none of its children.
TEST(DrawRects, AreEmptyForWhatNothingDraws)
{
    const CTextHost host("<rect id='a' style='0x1' lnwid='0' crd='0 0 9 9'>" +
                             Block("id='in'", "10 20 30 40") + "</rect>",
                         100);
    EXPECT_EQ("0 0,0,0,0", DrawRect(host, "in"));
    EXPECT_EQ("0,0,9,9", DrawRect(host, "a"));
    RECT rc{};
    POINT pt{10, 20};
    EXPECT_EQ(0, QELGetElemDrawRect(host, QELGetFirstChild(host, host.Child(0)), &rc));
    EXPECT_EQ(0, QELElemToDevice(host, QELGetFirstChild(host, host.Child(0)), &pt));
    EXPECT_EQ(10, pt.x);
}

TEST(DrawRects, FollowEditsAndTurns)
{
    const CTextHost host(Block("id='a'", "10 20 30 40"), 100);
    EXPECT_EQ("10,20,30,40", DrawRect(host, "a"));
    const RECT rc{50, 60, 70, 80};
    ASSERT_EQ(1, QELSetElemRect(host, host.Child(0), &rc));
    EXPECT_EQ("50,60,70,80", DrawRect(host, "a"));
    ASSERT_EQ(1, QELSetElemId(host, host.Child(0), "b"));
    EXPECT_EQ("0 0,0,0,0", DrawRect(host, "a"));
    ASSERT_EQ(1, QELRotate(host, 90)); // counter-clockwise: y' = 100 - x
    EXPECT_EQ("60,30,80,50", DrawRect(host, "b"));
}

// ---- hits ----

TEST(HitTests, GiveTheTopmostElementAndOfGroupsTheLeaf)
{
    const CTextHost host(PANEL, 100);
    const HQELELEM hPump = host.Child(1);
    EXPECT_EQ(QELGetFirstChild(host, hPump), ElemAt(host, 13, 20));
    EXPECT_EQ(QELFindElem(host, "lid"), ElemAt(host, 26, 20)); // over the circle
    EXPECT_EQ(host.Child(0), ElemAt(host, 11, 12));            // beside the circle
    EXPECT_EQ(host.Child(0), ElemAt(host, 99, 99));
    EXPECT_EQ(nullptr, ElemAt(host, 100, 99));
    EXPECT_EQ(nullptr, ElemAt(host, INT32_MIN, INT32_MAX));
}

TEST(HitTests, ClimbToTheNearestIdentifier)
{
    const CTextHost host(PANEL, 100);
    EXPECT_EQ("pump", IdAt(host, 13, 20));
    EXPECT_EQ("lid", IdAt(host, 26, 20));
    EXPECT_EQ("none", IdAt(host, 200, 20));
    ASSERT_EQ(1, QELSetElemId(host, host.Child(0), ""));
    EXPECT_EQ("none", IdAt(host, 99, 99));
    ASSERT_EQ(1, QELSetElemId(host, QELGetRootElem(host), "plant"));
    EXPECT_EQ("plant", IdAt(host, 99, 99));
}

TEST(HitTests, DoNotSeeWhatIsNotShownNow)
{
    const CTextHost host(PANEL, 100);
    EXPECT_EQ("ground", IdAt(host, 55, 15));
    ASSERT_EQ(1, QELSetStatus(host, 3));
    EXPECT_EQ("lit", IdAt(host, 55, 15));
    ASSERT_EQ(1, QELSetVisible(host, "lamp", 0));
    EXPECT_EQ("ground", IdAt(host, 55, 15));
    ASSERT_EQ(1, QELSetVisible(host, "lamp", 1));
    EXPECT_EQ("lit", IdAt(host, 55, 15));
}

TEST(HitTests, FindAMeterAboveItsFace)
{
    const CTextHost host(PANEL, 100);
    EXPECT_EQ("dial", IdAt(host, 30, 70));
    EXPECT_EQ("dial", IdAt(host, 11, 70)); // within the circle
    EXPECT_EQ("face", IdAt(host, 12, 52)); // beside it
    EXPECT_EQ("ground", IdAt(host, 56, 70));
}

TEST(HitTests, ReachOutlinesFromThreePixelsAway)
{
    const CTextHost host("<line id='edge' lnwid='1' crd='20 50 80 50'/>"
                         "<rect id='box' style='0x0' lnwid='1' crd='30 10 60 40'/>",
                         100);
    for (const LONG n : {-3, -2, -1, 0, 1, 2, 3}) EXPECT_EQ("edge", IdAt(host, 50, 50 + n)) << n;
    for (const LONG n : {-4, 4}) EXPECT_EQ("none", IdAt(host, 50, 50 + n)) << n;
    EXPECT_EQ("edge", IdAt(host, 17, 50));
    EXPECT_EQ("none", IdAt(host, 16, 50));
    EXPECT_EQ("box", IdAt(host, 27, 20));
    EXPECT_EQ("box", IdAt(host, 33, 20));
    EXPECT_EQ("none", IdAt(host, 26, 20));
    EXPECT_EQ("none", IdAt(host, 45, 25)); // inside of an outline is nothing
}

// A quarter of a circle about 50,50, from the right to the top.
TEST(HitTests, GoAlongTheSidesOfArcsChordsAndPies)
{
    const auto at = [](const char* pszTag, LONG nX, LONG nY) {
        const CTextHost host(std::string("<") + pszTag +
                                 " id='hit' style='0x0' lnwid='1' crd='10 10 90 90 90 50 50 10'/>",
                             100);
        return IdAt(host, nX, nY) == "hit";
    };
    for (const char* pszTag : {"arc", "chord", "pie"}) {
        EXPECT_TRUE(at(pszTag, 78, 22)) << pszTag;  // 40 * sin 45 degrees away from the middle
        EXPECT_FALSE(at(pszTag, 22, 78)) << pszTag; // on the ellipse that it is of
        EXPECT_EQ(std::string("pie") == pszTag, at(pszTag, 70, 50)) << pszTag;
        EXPECT_EQ(std::string("pie") == pszTag, at(pszTag, 50, 30)) << pszTag;
        EXPECT_EQ(std::string("chord") == pszTag, at(pszTag, 70, 30)) << pszTag;
    }
}

// Two ends at one place are the whole ellipse; an end before the start is reached round the other
// side.
TEST(HitTests, GoAlongAllOfAnArc)
{
    const CTextHost host("<arc id='whole' lnwid='1' crd='10 10 50 50 50 30 50 30'/>"
                         "<arc id='most' lnwid='1' crd='50 50 90 90 70 50 90 70'/>",
                         100);
    for (const POINT pt : {POINT{50, 30}, POINT{30, 10}, POINT{10, 30}, POINT{30, 50}})
        EXPECT_EQ("whole", IdAt(host, pt.x, pt.y)) << pt.x << "," << pt.y;
    EXPECT_EQ("most", IdAt(host, 50, 70));
    EXPECT_EQ("most", IdAt(host, 70, 90));
    EXPECT_EQ("none", IdAt(host, 84, 56));
}

TEST(HitTests, ReachTheBorderThatStandsOutOfANarrowRectangle)
{
    const CTextHost host("<rect id='box' style='0x60003' lnwid='1' crd='50 20 52 80'/>", 100);
    RECT rc{};
    ASSERT_EQ(1, QELGetIdDrawRect(host, "box", &rc));
    ASSERT_LT(rc.left, 50);
    ASSERT_LT(52, rc.right);
    for (const LONG n : {rc.left, LONG{51}, rc.right - 1}) EXPECT_EQ("box", IdAt(host, n, 50)) << n;
    for (const LONG n : {rc.left - 1, rc.right}) EXPECT_EQ("none", IdAt(host, n, 50)) << n;
    const RECT rcNone{50, 20, 50, 80}; // without a width it is not there
    ASSERT_EQ(1, QELSetElemRect(host, host.Child(0), &rcNone));
    EXPECT_EQ("none", IdAt(host, 50, 50));
}

TEST(HitTests, FindNothingOfRegionsAndScalesWithoutARoom)
{
    const CTextHost host("<drawrgn id='trend' crd='10 10 10 30'/>"
                         "<scale id='round' sctype='round' crd='60 60 0 0 0'/>"
                         "<text id='name' crd='30 10 30 20'>x</text>",
                         100);
    for (const POINT pt : {POINT{10, 20}, POINT{60, 60}, POINT{30, 15}})
        EXPECT_EQ("none", IdAt(host, pt.x, pt.y)) << pt.x << "," << pt.y;
}

TEST(HitTests, GoByTheLayoutOfTextsRegionsAndScales)
{
    const CTextHost host("<text id='name' crd='10 10 50 20'>x</text>"
                         "<drawrgn id='trend' crd='60 10 90 30'/>"
                         "<scale id='bar' sctype='vrtleft' crd='10 40 20 90'/>"
                         "<scale id='round' sctype='round' crd='60 70 20 15 3'/>",
                         100);
    EXPECT_EQ("name", IdAt(host, 49, 19));
    EXPECT_EQ("none", IdAt(host, 50, 19));
    EXPECT_EQ("trend", IdAt(host, 60, 10));
    EXPECT_EQ("none", IdAt(host, 90, 10));
    EXPECT_EQ("bar", IdAt(host, 10, 89));
    EXPECT_EQ("none", IdAt(host, 10, 90));
    EXPECT_EQ("round", IdAt(host, 80, 70));
    EXPECT_EQ("none", IdAt(host, 75, 85)); // within the square, out of the circle
}

TEST(HitTests, FollowEditsSizesAndTurns)
{
    CTextHost host(Block("id='a'", "10 20 30 40"), 100);
    EXPECT_EQ("a", IdAt(host, 15, 25));
    host.Place({50, 0, 150, 100});
    EXPECT_EQ("none", IdAt(host, 15, 25));
    EXPECT_EQ("a", IdAt(host, 65, 25));
    ASSERT_EQ(1, QELRotate(host, 90));
    EXPECT_EQ("a", IdAt(host, 50 + 25, 85));
    EXPECT_EQ("none", IdAt(host, 65, 25));
    const HQELELEM hCopy = QELCopyElem(host, host.Child(0));
    ASSERT_NE(nullptr, hCopy);
    EXPECT_EQ("a_1", IdAt(host, 65, 25)); // a copy is not turned
    ASSERT_EQ(1, QELDeleteElem(host, hCopy));
    EXPECT_EQ("none", IdAt(host, 65, 25));
}

TEST(HitTests, LeaveABufferThatIsTooSmallAsItWas)
{
    const CTextHost host(PANEL, 100);
    const POINT pt{13, 20};
    char szId[8] = "before";
    for (const int nSize : {INT_MIN, -1, 0, 1, 4}) {
        EXPECT_EQ(0, QELIdFromPoint(host, &pt, szId, nSize));
        EXPECT_STREQ("before", szId);
    }
    EXPECT_EQ(1, QELIdFromPoint(host, &pt, szId, 5));
    EXPECT_STREQ("pump", szId);
}

// The answers of the index are those of a look at each element, among many.
TEST(HitTests, AmongManyFindWhatALookAtEachFinds)
{
    constexpr int SIDE = 400;
    constexpr int COUNT = 700;
    std::mt19937 random(5);
    std::vector<RECT> all;
    std::string body;
    for (int n = 0; n < COUNT; ++n) {
        const auto nX = static_cast<LONG>(random() % 380);
        const auto nY = static_cast<LONG>(random() % 380);
        const auto nLong = static_cast<LONG>(n % 50 ? 1 + random() % 20 : 1 + random() % 200);
        all.push_back({nX, nY, nX + nLong, nY + 1 + static_cast<LONG>(random() % 20)});
        const RECT& rc = all.back();
        body += Block("id='" + std::to_string(n) + "'",
                      std::to_string(rc.left) + " " + std::to_string(rc.top) + " " +
                          std::to_string(rc.right) + " " + std::to_string(rc.bottom));
    }
    const CTextHost host(body, SIDE);
    int nHit = 0;
    for (int n = 0; n < 3000; ++n) {
        const POINT pt{static_cast<LONG>(random() % SIDE), static_cast<LONG>(random() % SIDE)};
        std::string expected = "none";
        for (int i = 0; i < COUNT; ++i) // cut off at the drawing's edge
            if (::PtInRect(&all[static_cast<std::size_t>(i)], pt)) expected = std::to_string(i);
        nHit += expected != "none";
        ASSERT_EQ(expected, IdAt(host, pt.x, pt.y)) << pt.x << "," << pt.y;
    }
    EXPECT_LT(1000, nHit);
}

// ---- identifiers ----

TEST(FindElem, GivesTheFirstInDocumentOrder)
{
    const CTextHost host(Block("id='a'", "0 0 5 5") + "<g id='g'>" + Block("id='b'", "0 0 5 5") +
                             "</g>" + Block("id='b'", "0 0 5 5"),
                         100);
    EXPECT_EQ(QELGetFirstChild(host, host.Child(1)), QELFindElem(host, "b"));
    EXPECT_EQ(host.Child(0), QELFindElem(host, "a"));
    EXPECT_EQ(nullptr, QELFindElem(host, "B"));
    EXPECT_EQ(nullptr, QELFindElem(host, ""));
    ASSERT_EQ(1, QELDeleteElem(host, host.Child(1)));
    EXPECT_EQ(host.Child(1), QELFindElem(host, "b"));
}

// ---- units ----

namespace {

struct Turned {
    int nAngle;
    DWORD nKeep;
};

class Units : public ::testing::TestWithParam<Turned> {
protected:
    // A rectangle, in a drawing that is neither square nor odd, with its keep mode; then turned.
    static HQELELEM Make(CTextHost& host)
    {
        const SIZE size{100, 60};
        EXPECT_EQ(1, QELSetRefSize(host, &size));
        const HQELELEM hElem = host.Child(0);
        QELSHAPEATTR attr{};
        EXPECT_EQ(1, QELGetElemAttr(host, hElem, &attr, nullptr));
        attr.nFlags = GetParam().nKeep;
        EXPECT_EQ(1, QELSetElemAttr(host, hElem, &attr, sizeof attr));
        EXPECT_EQ(1, QELRotate(host, GetParam().nAngle));
        return hElem;
    }
};

} // namespace

TEST_P(Units, OfARectanglesCornersHaveItsPixels)
{
    CTextHost host(Block("id='a'", "20 10 50 40"), 100);
    const HQELELEM hElem = Make(host);
    host.Place({7, 9, 187, 169});
    const RECT rcPixels = PixelsOf(host, 200);
    POINT pt1{20, 10};
    POINT pt2{50, 40};
    ASSERT_EQ(1, QELElemToDevice(host, hElem, &pt1));
    ASSERT_EQ(1, QELElemToDevice(host, hElem, &pt2));
    EXPECT_EQ(RectText(rcPixels), RectText({std::min(pt1.x, pt2.x), std::min(pt1.y, pt2.y),
                                            std::max(pt1.x, pt2.x), std::max(pt1.y, pt2.y)}));
    // The corner that is at the top left before the turn.
    const int nQuarters = ((GetParam().nAngle / 90) % 4 + 4) % 4;
    EXPECT_EQ(nQuarters == 2 || nQuarters == 3 ? rcPixels.right : rcPixels.left, pt1.x);
    EXPECT_EQ(nQuarters == 1 || nQuarters == 2 ? rcPixels.bottom : rcPixels.top, pt1.y);
}

TEST_P(Units, OfADevicePointAreTheNearestOfAll)
{
    CTextHost host(Block("id='a'", "20 10 50 40"), 100);
    const HQELELEM hElem = Make(host);
    std::mt19937 random(11);
    for (const RECT& rc : {RECT{7, 9, 187, 169}, RECT{3, 5, 33, 25}, RECT{-50, 0, 950, 777}}) {
        host.Place(rc);
        POINT ptAny{0, 0};
        if (!QELElemToDevice(host, hElem, &ptAny)) { // what it keeps leaves it no room
            EXPECT_EQ(0, QELDeviceToElem(host, hElem, &ptAny));
            EXPECT_GE(0, PixelsOf(host, 60).right);
            continue;
        }
        for (int n = 0; n < 10; ++n) {
            const POINT ptDevice{rc.left + static_cast<LONG>(random() % 60),
                                 rc.top + static_cast<LONG>(random() % 60)};
            POINT ptBest{INT_MAX, INT_MAX};
            LONG nBestX = INT32_MAX;
            LONG nBestY = INT32_MAX;
            const bool bCrossed = GetParam().nAngle % 180 != 0;
            for (LONG nUnit = -2000; nUnit <= 2000; ++nUnit) {
                POINT pt{nUnit, nUnit};
                ASSERT_EQ(1, QELElemToDevice(host, hElem, &pt));
                const LONG nAwayX = std::labs(bCrossed ? pt.y - ptDevice.y : pt.x - ptDevice.x);
                const LONG nAwayY = std::labs(bCrossed ? pt.x - ptDevice.x : pt.y - ptDevice.y);
                if (nAwayX < nBestX) ptBest.x = nUnit;
                if (nAwayY < nBestY) ptBest.y = nUnit;
                nBestX = std::min(nBestX, nAwayX);
                nBestY = std::min(nBestY, nAwayY);
            }
            POINT pt = ptDevice;
            ASSERT_EQ(1, QELDeviceToElem(host, hElem, &pt));
            EXPECT_EQ(ptBest.x, pt.x) << ptDevice.x << "," << ptDevice.y << " " << RectText(rc);
            EXPECT_EQ(ptBest.y, pt.y) << ptDevice.x << "," << ptDevice.y << " " << RectText(rc);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(TurnedAndKept, Units,
                         ::testing::Values(Turned{0, 0}, Turned{90, 0}, Turned{180, 0},
                                           Turned{270, 0}, Turned{-90, 0}, Turned{0, QEL_KEEP_ALL},
                                           Turned{90, QEL_KEEP_ALL},
                                           Turned{0, QEL_KEEP_RIGHT | QEL_AWAY_KEEP_LENGTH},
                                           Turned{180, QEL_KEEP_TOP | QEL_AWAY_AS_GRAPH},
                                           Turned{270, QEL_KEEP_BOTTOM | QEL_ALONG_AS_QEL}));

TEST(UnitsOfShapes, AreThoseOfEveryClassAlsoWhenTurned)
{
    for (const int nAngle : {0, 90, 180, 270}) {
        CTextHost host("<circle style='0x1' lnwid='0' crd='30 40 20'/>"
                       "<polygon style='0x1' lnwid='0' crd='10 5 60 15 40 90'/>"
                       "<line lnwid='1' crd='10 20 70 80'/><g><ellipse crd='10 20 50 80'/></g>",
                       100);
        ASSERT_EQ(1, QELRotate(host, nAngle));
        for (int n = 0; n < 4; ++n) {
            POINT pt{25, 35};
            ASSERT_EQ(1, QELElemToDevice(host, host.Child(n), &pt)) << n;
            const POINT expected[] = {{25, 35}, {35, 75}, {75, 65}, {65, 25}};
            EXPECT_EQ(expected[nAngle / 90].x, pt.x) << n << " at " << nAngle;
            EXPECT_EQ(expected[nAngle / 90].y, pt.y) << n << " at " << nAngle;
        }
    }
}

TEST(UnitsOfMeters, AreNotTurnedSinceMetersAreNot)
{
    CTextHost host("<meter mtype='vert' crd='10 20 30 60'/>", 100);
    ASSERT_EQ(1, QELRotate(host, 90));
    host.Place({0, 0, 200, 200});
    POINT pt{10, 20};
    ASSERT_EQ(1, QELElemToDevice(host, host.Child(0), &pt));
    EXPECT_EQ(20, pt.x);
    EXPECT_EQ(40, pt.y);
}

// Of dials they are those of the layout: the square about a circle, the rectangle of an arc.
TEST(UnitsOfMeters, AreThoseOfTheLayoutWhateverTheType)
{
    CTextHost host("<meter mtype='round' crd='50 50 20 5 0 0 100 100'/>"
                   "<meter mtype='Arc' crd='50 50 20 5 10 90 80 45 315'/>"
                   "<meter mtype='vert' crd='10 10 10 90'/>",
                   100);
    host.Place({7, 9, 107, 109});
    for (int n = 0; n < 2; ++n) {
        POINT pt{50, 50};
        ASSERT_EQ(1, QELElemToDevice(host, host.Child(n), &pt)) << n;
        EXPECT_EQ(57, pt.x) << n;
        EXPECT_EQ(59, pt.y) << n;
        ASSERT_EQ(1, QELDeviceToElem(host, host.Child(n), &pt)) << n;
        EXPECT_EQ(50, pt.x) << n;
    }
    POINT pt{10, 20}; // it has no width, and no place for units
    EXPECT_EQ(0, QELElemToDevice(host, host.Child(2), &pt));
    EXPECT_EQ(10, pt.x);
}

// A record that is set puts the element back as the document has it.
TEST(UnitsOfShapes, AreThoseOfARecordThatWasSetAfterTheTurn)
{
    CTextHost host(Block("id='a'", "20 10 50 40"), 100);
    ASSERT_EQ(1, QELRotate(host, 90));
    QELSHAPEATTR attr{};
    ASSERT_EQ(1, QELGetElemAttr(host, host.Child(0), &attr, nullptr));
    ASSERT_EQ(1, QELSetElemAttr(host, host.Child(0), &attr, sizeof attr));
    const RECT rc = PixelsOf(host, 100);
    POINT pt{20, 10};
    ASSERT_EQ(1, QELElemToDevice(host, host.Child(0), &pt));
    EXPECT_EQ(rc.left, pt.x);
    EXPECT_EQ(rc.top, pt.y);
}

TEST(UnitsOfShapes, AreNoneWhereNothingIsDrawn)
{
    CTextHost host(Block("", "20 10 20 40") + "<drawrgn crd='5 5 5 9'/>", 100);
    for (int n = 0; n < 2; ++n) {
        POINT pt{3, 4};
        EXPECT_EQ(0, QELElemToDevice(host, host.Child(n), &pt)) << n;
        EXPECT_EQ(0, QELDeviceToElem(host, host.Child(n), &pt)) << n;
        EXPECT_EQ(3, pt.x);
        EXPECT_EQ(4, pt.y);
    }
    host.Place({5, 5, 5, 5});
    POINT pt{3, 4};
    EXPECT_EQ(0, QELElemToDevice(host, QELGetRootElem(host), &pt));
}

// ---- show-only mode ----

TEST(PlacesInShowOnlyMode, AreToldByIdentifierAlone)
{
    const CTextHost source(PANEL, 100);
    ASSERT_EQ(1, QELShowOnly(1));
    const HQELENGINE h = CreateQELEngine();
    ASSERT_EQ(1, QELShowOnly(0));
    const POINT pt{13, 20};
    char szId[QEL_TEXT_SIZE];
    EXPECT_EQ(0, QELIdFromPoint(h, &pt, szId, sizeof szId)); // without a drawing
    EXPECT_EQ("0 0,0,0,0", DrawRect(h, "pump"));
    ASSERT_EQ(1, QELOpenFile(h, source.Folder().Path("in.qel").c_str()));
    for (const char* pszId : {"ground", "pump", "lid", "lamp", "lit", "dial", "face", "edge", "x"})
        EXPECT_EQ(DrawRect(source, pszId), DrawRect(h, pszId)) << pszId;
    for (LONG nX = 0; nX < 100; nX += 3)
        for (LONG nY = 0; nY < 100; nY += 3)
            ASSERT_EQ(IdAt(source, nX, nY), IdAt(h, nX, nY)) << nX << "," << nY;
    EXPECT_EQ(nullptr, QELFindElem(h, "pump"));
    EXPECT_EQ(nullptr, QELElemFromPoint(h, &pt));
    EXPECT_EQ(1, DestroyQELEngine(h));
}

// ---- refusals ----

// What is not there is an answer, which leaves the reason of an earlier failure standing.
TEST(Places, OfNothingThereAreNoFailures)
{
    const CTextHost host(PANEL, 100);
    const POINT pt{500, 500};
    char szId[QEL_TEXT_SIZE];
    RECT rc{};
    QELERROR error{};
    error.nSize = sizeof error;
    const auto code = [&] { return QELGetError(host, &error) ? error.nCode : 0; };
    EXPECT_EQ(nullptr, QELElemFromPoint(host, &pt));
    EXPECT_EQ(0, QELIdFromPoint(host, &pt, szId, sizeof szId));
    EXPECT_EQ(nullptr, QELFindElem(host, "nobody"));
    EXPECT_EQ(0, QELGetIdDrawRect(host, "nobody", &rc));
    EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_NONE), code());
    const POINT ptPump{13, 20};
    EXPECT_EQ(0, QELIdFromPoint(host, &ptPump, szId, 2));
    EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_BUFFER), code());
    EXPECT_EQ(0, QELElemToDevice(host, host.Child(0), nullptr));
    EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_ARGUMENT), code());
    POINT ptMapped{1, 2};
    EXPECT_EQ(0, QELElemToDevice(host, nullptr, &ptMapped));
    EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_ELEMENT), code());
    ASSERT_EQ(1, QELCloseFile(host));
    EXPECT_EQ(nullptr, QELElemFromPoint(host, &pt));
    EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_NO_DRAWING), code());
}

TEST(Places, OfNothingAreRefused)
{
    const CTextHost host(PANEL, 100);
    const CTextHost other(PANEL, 100);
    const HQELELEM hElem = host.Child(0);
    const POINT pt{13, 20};
    POINT ptMapped{1, 2};
    char szId[QEL_TEXT_SIZE] = "before";
    EXPECT_EQ(0, QELGetElemDrawRect(host, hElem, nullptr));
    EXPECT_EQ(0, QELGetIdDrawRect(host, "pump", nullptr));
    EXPECT_EQ(nullptr, QELElemFromPoint(host, nullptr));
    EXPECT_EQ(0, QELIdFromPoint(host, nullptr, szId, sizeof szId));
    EXPECT_EQ(0, QELIdFromPoint(host, &pt, nullptr, 10));
    EXPECT_EQ(nullptr, QELFindElem(host, nullptr));
    EXPECT_EQ(0, QELElemToDevice(host, hElem, nullptr));
    EXPECT_EQ(0, QELDeviceToElem(host, hElem, nullptr));
    RECT rc{1, 2, 3, 4};
    EXPECT_EQ(0, QELGetIdDrawRect(host, nullptr, &rc));
    EXPECT_EQ("0,0,0,0", RectText(rc));
    for (const HQELENGINE h : {static_cast<HQELENGINE>(nullptr),
                               static_cast<HQELENGINE>(other)}) { // the element is not its own
        rc = {1, 2, 3, 4};
        EXPECT_EQ(0, QELGetElemDrawRect(h, hElem, &rc));
        EXPECT_EQ("0,0,0,0", RectText(rc));
        EXPECT_EQ(0, QELElemToDevice(h, hElem, &ptMapped));
        EXPECT_EQ(0, QELDeviceToElem(h, hElem, &ptMapped));
    }
    EXPECT_EQ(0, QELIdFromPoint(nullptr, &pt, szId, sizeof szId));
    EXPECT_EQ(nullptr, QELElemFromPoint(nullptr, &pt));
    EXPECT_EQ(nullptr, QELFindElem(nullptr, "pump"));
    EXPECT_EQ(1, ptMapped.x);
    EXPECT_STREQ("before", szId);
}

TEST(Places, OfAnElementThatOutlivesItsDrawingAreNone)
{
    CTextHost host(Block("id='a'", "20 10 50 40"), 100);
    const HQELELEM hElem = QELFindElem(host, "a");
    ASSERT_EQ(1, QELMoveElem(host, hElem, nullptr, nullptr));
    ASSERT_EQ(1, QELDeleteElem(host, QELGetRootElem(host)));
    RECT rc{1, 2, 3, 4};
    EXPECT_EQ(0, QELGetElemDrawRect(host, hElem, &rc));
    EXPECT_EQ("0,0,0,0", RectText(rc));
    POINT pt{30, 20};
    EXPECT_EQ(0, QELElemToDevice(host, hElem, &pt));
    EXPECT_EQ(0, QELDeviceToElem(host, hElem, &pt));
    EXPECT_EQ(30, pt.x);
    EXPECT_EQ(20, pt.y);
    // It is an element still, with a record that is given and taken.
    QELSHAPEATTR attr{};
    EXPECT_EQ(1, QELGetElemAttr(host, hElem, &attr, nullptr));
    attr.nGeometry[0] = 25;
    EXPECT_EQ(1, QELSetElemAttr(host, hElem, &attr, sizeof attr));
    ASSERT_EQ(1, QELGetElemRect(host, hElem, &rc));
    EXPECT_EQ("25,10,50,40", RectText(rc));
}

// ---- faces in groups ----

TEST(DrawRects, OfAGroupInAMeterAreThoseOfTheFacesInIt)
{
    const CTextHost host("<meter id='dial' mtype='round' crd='80 15 10 70 5 90 25'><g id='both'>" +
                             Block("id='a'", "10 20 30 40") + Block("id='b'", "60 50 70 90") +
                             "</g>" + Block("id='c'", "80 80 90 90") + "</meter>",
                         100);
    EXPECT_EQ("10,20,30,40", DrawRect(host, "a"));
    EXPECT_EQ("10,20,70,90", DrawRect(host, "both"));
    EXPECT_EQ("a", IdAt(host, 20, 30));
    EXPECT_EQ("b", IdAt(host, 65, 60));
    EXPECT_EQ("c", IdAt(host, 85, 85));
    const HQELELEM hGroup = QELFindElem(host, "both");
    EXPECT_EQ(QELFindElem(host, "a"), ElemAt(host, 20, 30));
    POINT pt{20, 30};
    EXPECT_EQ(1, QELElemToDevice(host, hGroup, &pt));
    EXPECT_EQ(20, pt.x);
    EXPECT_EQ(30, pt.y);
}

TEST(Units, OfAScaleOrADrawRegionWithoutAnExtentThereAreNone)
{
    const CTextHost host("<scale id='row' crd='10 10 60 20'/><scale id='no row' crd='10 10 10 20'/>"
                         "<drawrgn id='screen' crd='10 30 60 90'/>"
                         "<drawrgn id='no screen' crd='10 30 60 30'/>",
                         100);
    for (const char* pszId : {"row", "screen"}) {
        POINT pt{20, 30};
        EXPECT_EQ(1, QELElemToDevice(host, QELFindElem(host, pszId), &pt)) << pszId;
        EXPECT_EQ(20, pt.x);
    }
    for (const char* pszId : {"no row", "no screen"}) {
        POINT pt{20, 30};
        EXPECT_EQ(0, QELElemToDevice(host, QELFindElem(host, pszId), &pt)) << pszId;
        EXPECT_EQ("0 0,0,0,0", DrawRect(host, pszId));
    }
    EXPECT_EQ("row", IdAt(host, 15, 15));
    EXPECT_EQ("screen", IdAt(host, 15, 35));
}
