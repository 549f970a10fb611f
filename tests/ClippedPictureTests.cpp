// A draw under a clip, pixel by pixel and call by call: inside of the clip it is the picture of a
// draw without one, whatever lies at the clip's edges, and of what is outside no call is made. What
// is left out at all, and when not, is held by tests/ClippedDrawTests.cpp.
#include "render/QELView.h"
#include "tests/support/ViewSupport.h"
#include "tools/ImportTable.h"

#include <random>

namespace {

constexpr int SIDE = 110;
constexpr int EDGE = 20; // around the drawing: what is painted outside of it is to be seen
constexpr RECT QEL{EDGE, EDGE, SIDE - EDGE, SIDE - EDGE};
constexpr uint32_t FULL = QEL_DRAW_FULL;

class CDrawing : public CTestPicture {
public:
    CDrawing() : CTestPicture({70, 70}) {}
    void Draw(HDC hdc, uint32_t nFlags = FULL, const RECT& rcQel = QEL)
    {
        EXPECT_EQ(1, m_view.Draw(nullptr, hdc, rcQel, nFlags));
    }
};

void ClipTo(HDC hdc, const RECT& rc)
{
    const HRGN hRegion = ::CreateRectRgnIndirect(&rc);
    ::SelectClipRgn(hdc, hRegion);
    ::DeleteObject(hRegion);
}

// The box of all pixels that are not white; empty when there are none.
RECT PaintedBox(const CTestBitmap& bitmap)
{
    RECT rc{bitmap.Width(), bitmap.Height(), 0, 0};
    for (int y = 0; y < bitmap.Height(); ++y)
        for (int x = 0; x < bitmap.Width(); ++x)
            if (bitmap.At(x, y) != 0xFFFFFF)
                rc = {std::min<LONG>(rc.left, x), std::min<LONG>(rc.top, y),
                      std::max<LONG>(rc.right, x + 1), std::max<LONG>(rc.bottom, y + 1)};
    return rc;
}

std::string DifferenceWithin(const RECT& rc, const CTestBitmap& expected, const CTestBitmap& actual)
{
    for (int y = rc.top; y < rc.bottom; ++y)
        for (int x = rc.left; x < rc.right; ++x)
            if (expected.At(x, y) != actual.At(x, y))
                return "pixel " + std::to_string(x) + "," + std::to_string(y);
    return "";
}

// Slits of one pixel on each edge of what the drawing paints. Whether it paints anything.
bool ExpectEdges(CDrawing& drawing, uint32_t nFlags = FULL)
{
    CTestBitmap whole(SIDE, SIDE);
    drawing.Draw(whole.Dc(), nFlags);
    const RECT box = PaintedBox(whole);
    if (box.left >= box.right) return false;
    CTestBitmap clipped(SIDE, SIDE);
    const auto expectSlit = [&](const RECT& rc) {
        SCOPED_TRACE("clip " + RectText(rc));
        clipped.Fill(0xFFFFFF);
        ClipTo(clipped.Dc(), rc);
        drawing.Draw(clipped.Dc(), nFlags);
        EXPECT_EQ("", DifferenceWithin(rc, whole, clipped));
    };
    for (const LONG n : {box.left, box.right - 1}) expectSlit({n, 0, n + 1, SIDE});
    for (const LONG n : {box.top, box.bottom - 1}) expectSlit({0, n, SIDE, n + 1});
    return true;
}

QELSHAPEATTR Shape(int nType, const RECT& rc)
{
    QELSHAPEATTR attr = FilledAttr({rc.left, rc.top, rc.right, rc.bottom});
    const auto put = [&](std::initializer_list<LONG> words) {
        std::copy(words.begin(), words.end(), attr.nGeometry);
    };
    const LONG nX = (rc.left + rc.right) / 2;
    const LONG nY = (rc.top + rc.bottom) / 2;
    switch (nType) {
    case QEL_TYPE_CIRCLE:
        put({nX, nY, std::min(rc.right - nX, rc.bottom - nY), 0});
        break;
    case QEL_TYPE_ROUNDRECT:
        put({rc.left, rc.top, rc.right, rc.bottom, 8, 6});
        break;
    case QEL_TYPE_ARC:
    case QEL_TYPE_PIE:
    case QEL_TYPE_CHORD:
        put({rc.left, rc.top, rc.right, rc.bottom, rc.right, rc.top, rc.left - 9, nY});
        break;
    case QEL_TYPE_POLYLINE:
    case QEL_TYPE_POLYGON:
        put({4, rc.left, nY, rc.right, rc.top, nX, rc.bottom, rc.right, nY});
        break;
    case QEL_TYPE_TEXT:
        std::strcpy(attr.szText, "Wg\nWj");
        break;
    default:
        break;
    }
    return attr;
}

bool IsCurved(int nType)
{
    return nType >= QEL_TYPE_CHORD && nType <= QEL_TYPE_CIRCLE;
}

class Edges : public testing::TestWithParam<int> {
protected:
    void Expect(const QELSHAPEATTR& attr, uint32_t nFlags = FULL)
    {
        SCOPED_TRACE(testing::Message()
                     << "style " << std::hex << attr.nStyle << std::dec << " pen " << attr.nPenStyle
                     << "/" << attr.nPenWidth << " draft " << attr.nDraft << " flags " << std::hex
                     << attr.nFlags << " draw " << nFlags);
        CDrawing drawing;
        EXPECT_EQ(1, drawing.Make(GetParam())->SetAttrBlock(&attr));
        m_nPainted += ExpectEdges(drawing, nFlags);
    }
    void TearDown() override { EXPECT_LT(0, m_nPainted); }

private:
    int m_nPainted = 0;
};

TEST_P(Edges, OfEveryPenAreInside)
{
    for (const int nWidth : {0, 1, 2, 3, 6, 17})
        for (const int nPen : {PS_SOLID, PS_DASH, PS_DOT, PS_INSIDEFRAME})
            for (const DWORD nStyle :
                 {QEL_STYLE_STROKE, QEL_STYLE_FILL, QEL_STYLE_FILL_3DUP, QEL_STYLE_FILL_3DDOWN}) {
                if (IsCurved(GetParam()) && nWidth > 3 && nPen != PS_SOLID) continue; // slow
                QELSHAPEATTR attr = Shape(GetParam(), {20, 22, 48, 50});
                attr.nPenWidth = nWidth;
                attr.nPenStyle = nPen;
                attr.nStyle = nStyle;
                Expect(attr);
            }
}

TEST_P(Edges, OfEveryHatchAndGradientAreInside)
{
    for (int nDraft = 0; nDraft < DRAFT_COUNT; ++nDraft) {
        QELSHAPEATTR attr = Shape(GetParam(), {20, 22, 48, 50});
        attr.nDraft = nDraft;
        attr.nPenWidth = nDraft % 2;
        Expect(attr);
    }
}

TEST_P(Edges, OfBordersAreInside)
{
    for (const DWORD nWidth : {0U, 1U, 3U, 9U, 30U, 60U}) // also wider than the shape
        for (const DWORD nStyle : {QEL_STYLE_FILL_3DUP, QEL_STYLE_FILL_3DDOWN, QEL_STYLE_UP_BIT}) {
            QELSHAPEATTR attr = Shape(GetParam(), {30, 32, 48, 50});
            attr.nStyle = nStyle | nWidth << 16;
            Expect(attr);
        }
}

TEST_P(Edges, OfPressedShapesAreInside)
{
    for (const RECT& rc : {RECT{20, 22, 48, 50}, RECT{44, 40, 69, 69}, RECT{46, 46, 70, 70}})
        for (const int nWidth : {0, 1, 4})
            for (const DWORD nStyle : {QEL_STYLE_STROKE, QEL_STYLE_FILL, QEL_STYLE_FILL_3DUP}) {
                QELSHAPEATTR attr = Shape(GetParam(), rc);
                attr.nFlags = QEL_FLAG_PRESS;
                attr.nPenWidth = nWidth;
                attr.nStyle = nStyle;
                Expect(attr, FULL | QEL_DRAW_PRESSED);
            }
}

// Also turned over, off the drawing, flat and as wide as one unit.
TEST_P(Edges, OfEveryPlaceAreInside)
{
    const RECT flats[] = {{20, 20, 20, 50}, {20, 20, 50, 20}, {69, 30, 70, 31},
                          {50, 50, 20, 24}, {50, 20, 24, 50}, {0, 0, 1, 70}};
    const RECT wides[] = {{-10, -10, 18, 20}, {55, 50, 85, 80}, {-12, 20, 82, 50}, {0, 0, 70, 70}};
    for (const int nWidth : {0, 1, 5}) {
        for (const RECT& rc : wides) {
            QELSHAPEATTR attr = Shape(GetParam(), rc);
            attr.nPenWidth = nWidth;
            Expect(attr);
        }
        if (IsCurved(GetParam())) continue; // narrow curves differ from run to run
        for (const RECT& rc : flats) {
            QELSHAPEATTR attr = Shape(GetParam(), rc);
            attr.nPenWidth = nWidth;
            Expect(attr);
            attr.nFlags = QEL_FLAG_PRESS;
            Expect(attr, FULL | QEL_DRAW_PRESSED);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, Edges, testing::Range<int>(QEL_TYPE_TEXT, QEL_TYPE_POLYGON + 1));

TEST(ClippedText, LettersAreCutOffAtTheirRectangleWhateverTheyAre)
{
    for (const char* pszText :
         {"W", "WWWWWWWWWWWW", "jgjgQ\nWj\nW\nW", "&Wj", "a&&b", "W&j&W", "", "\n\nWW", "a\tb"}) {
        for (const char* pszFace : {"Arial", "Times New Roman", "Courier New"}) {
            for (const UINT nAlign :
                 {UINT(TA_LEFT), UINT(TA_CENTER), UINT(TA_RIGHT | TA_BOTTOM), UINT(TA_BASELINE)}) {
                SCOPED_TRACE(testing::Message() << pszText << " " << pszFace << " " << nAlign);
                CDrawing drawing;
                QELSHAPEATTR attr = Shape(QEL_TYPE_TEXT, {20, 25, 44, 40});
                std::strcpy(attr.szText, pszText);
                EXPECT_EQ(1, drawing.Make(QEL_TYPE_TEXT)->SetAttrBlock(&attr));
                const HFONT hFont =
                    ::CreateFontA(12, 0, 0, 0, FW_BOLD, TRUE, 0, 0, 0, 0, 0, 0, 0, pszFace);
                CTestBitmap whole(SIDE, SIDE);
                CTestBitmap clipped(SIDE, SIDE);
                for (const CTestBitmap* p : {&whole, &clipped}) {
                    ::SelectObject(p->Dc(), hFont);
                    ::SetTextAlign(p->Dc(), nAlign);
                }
                drawing.Draw(whole.Dc());
                const RECT box = PaintedBox(whole);
                if (box.left < box.right) {
                    for (const LONG n : {box.left, box.right - 1}) {
                        clipped.Fill(0xFFFFFF);
                        const RECT rc{n, 0, n + 1, SIDE};
                        ClipTo(clipped.Dc(), rc);
                        drawing.Draw(clipped.Dc());
                        EXPECT_EQ("", DifferenceWithin(rc, whole, clipped));
                    }
                }
                for (const CTestBitmap* p : {&whole, &clipped})
                    ::SelectObject(p->Dc(), ::GetStockObject(SYSTEM_FONT));
                ::DeleteObject(hFont);
            }
        }
    }
}

// ---- whole drawings

class CRandom {
public:
    explicit CRandom(unsigned nSeed) : m_engine(nSeed) {}
    int Below(int n) { return static_cast<int>(m_engine() % static_cast<unsigned>(n)); }
    int Between(int nLow, int nHigh) { return nLow + Below(nHigh - nLow + 1); }
    template <class T, std::size_t N>
    T OneOf(const T (&values)[N])
    {
        return values[Below(static_cast<int>(N))];
    }

private:
    std::mt19937 m_engine;
};

QELSHAPEATTR RandomShape(CRandom& random, int nType)
{
    const int nWidth = random.Between(14, 30);
    const int nHeight = random.Between(14, 30);
    const int nX = random.Between(0, 70 - nWidth);
    const int nY = random.Between(0, 70 - nHeight);
    QELSHAPEATTR attr = Shape(nType, {nX, nY, nX + nWidth, nY + nHeight});
    static constexpr DWORD styles[] = {0, 1, 1, 3, 5, 2, 4, 0x40003, 0x200005};
    static constexpr int widths[] = {0, 1, 1, 1, 2, 3, 7};
    static constexpr DWORD flags[] = {0, 0, QEL_FLAG_PRESS, QEL_FLAG_COLOR_PARAM};
    static constexpr DWORD keeps[] = {0,
                                      QEL_KEEP_ALL,
                                      QEL_KEEP_LEFT | QEL_AWAY_KEEP_LENGTH,
                                      QEL_KEEP_RIGHT | QEL_ALONG_KEEP_LENGTH,
                                      QEL_KEEP_TOP | QEL_AWAY_AS_GRAPH,
                                      QEL_KEEP_BOTTOM | QEL_ALONG_AS_QEL | QEL_AWAY_KEEP_BORDER};
    attr.nStyle = random.OneOf(styles);
    attr.nDraft = random.Below(DRAFT_COUNT);
    attr.clrA =
        static_cast<DWORD>(random.Below(0x1000000)) | (random.Below(4) ? 0 : QEL_COLOR_BLINK);
    attr.clrB = static_cast<DWORD>(random.Below(0x1000000));
    attr.clrPen = static_cast<DWORD>(random.Below(0x1000000));
    attr.nPenStyle = random.Between(PS_SOLID, PS_INSIDEFRAME);
    attr.nPenWidth = IsCurved(nType) ? random.Below(3) : random.OneOf(widths);
    attr.nFlags = random.OneOf(flags);
    if (!IsCurved(nType)) attr.nFlags |= random.OneOf(keeps); // a keep mode may make it narrow
    if (nType == QEL_TYPE_TEXT) std::strcpy(attr.szText, random.Below(5) ? "Text" : "T&ext");
    return attr;
}

void Populate(CRandom& random, CDrawing& drawing)
{
    static constexpr int others[] = {QEL_TYPE_STATUS,  QEL_TYPE_FRAME, QEL_TYPE_PATTERN,
                                     QEL_TYPE_DRAWRGN, QEL_TYPE_SCALE, QEL_TYPE_METER};
    std::vector<CQELViewElm*> parents{drawing->Root()};
    for (int n = 0; n < 40; ++n) {
        CQELViewElm* pParent =
            parents[static_cast<std::size_t>(random.Below(static_cast<int>(parents.size())))];
        if (random.Below(5) == 0) {
            parents.push_back(drawing.Make(QEL_TYPE_GROUP, pParent));
        } else if (random.Below(12) == 0) {
            CQELViewElm* pElm = drawing.Make(random.OneOf(others), pParent);
            drawing->Register(pElm);
            const QELWORDATTR attr{0};
            if (pElm->Type() == QEL_TYPE_STATUS) pElm->SetAttrBlock(&attr);
            if (pElm->Type() <= QEL_TYPE_FRAME || pElm->Type() == QEL_TYPE_PATTERN)
                parents.push_back(pElm);
        } else {
            const int nType = random.Between(QEL_TYPE_TEXT, QEL_TYPE_POLYGON);
            const QELSHAPEATTR attr = RandomShape(random, nType);
            EXPECT_EQ(1, drawing.Make(nType, pParent)->SetAttrBlock(&attr));
        }
    }
}

std::string StateOf(HDC hdc)
{
    POINT pt{};
    ::GetCurrentPositionEx(hdc, &pt);
    return testing::PrintToString(std::vector<uintptr_t>{
        reinterpret_cast<uintptr_t>(::GetCurrentObject(hdc, OBJ_PEN)),
        reinterpret_cast<uintptr_t>(::GetCurrentObject(hdc, OBJ_BRUSH)),
        reinterpret_cast<uintptr_t>(::GetCurrentObject(hdc, OBJ_FONT)), ::GetBkColor(hdc),
        ::GetTextColor(hdc), static_cast<uintptr_t>(::GetBkMode(hdc)),
        static_cast<uintptr_t>(::GetROP2(hdc)), static_cast<uintptr_t>(::GetPolyFillMode(hdc)),
        static_cast<uintptr_t>(::GetArcDirection(hdc)), ::GetTextAlign(hdc),
        static_cast<uintptr_t>(pt.x), static_cast<uintptr_t>(pt.y)});
}

// The same clip twice, once with a draw that leaves nothing out, since bounds are summed up; and a
// picture without a clip. The drawing goes through changes while its groups keep their bounds.
TEST(ClippedPicture, OfRandomDrawingsIsThatOfAWholeDraw)
{
    for (unsigned nSeed = 1; nSeed <= 60; ++nSeed) {
        CRandom random(nSeed);
        CDrawing drawing;
        Populate(random, drawing);
        RECT rcQel = QEL;
        for (int nDraw = 0; nDraw < 12 && !testing::Test::HasFailure(); ++nDraw) {
            SCOPED_TRACE(testing::Message() << "seed " << nSeed << " draw " << nDraw);
            const int nX = random.Below(SIDE);
            const int nY = random.Below(SIDE);
            const RECT rcClip{nX, nY, nX + random.Between(1, 30), nY + random.Between(1, 30)};
            const uint32_t nFlags = random.Below(3) ? FULL : FULL | QEL_DRAW_PRESSED;
            CTestBitmap whole(SIDE, SIDE);
            CTestBitmap expected(SIDE, SIDE);
            CTestBitmap clipped(SIDE, SIDE);
            ClipTo(expected.Dc(), rcClip);
            ClipTo(clipped.Dc(), rcClip);
            ::SetBoundsRect(expected.Dc(), nullptr, DCB_ENABLE);
            drawing.Draw(whole.Dc(), nFlags, rcQel);
            drawing.Draw(expected.Dc(), nFlags, rcQel);
            drawing.Draw(clipped.Dc(), nFlags, rcQel);
            EXPECT_EQ("", FirstDifference(expected, clipped));
            EXPECT_EQ("",
                      DifferenceWithin({rcClip.left, rcClip.top, std::min<LONG>(rcClip.right, SIDE),
                                        std::min<LONG>(rcClip.bottom, SIDE)},
                                       whole, clipped));
            EXPECT_EQ(StateOf(expected.Dc()), StateOf(clipped.Dc()));
            EXPECT_EQ(StateOf(whole.Dc()), StateOf(clipped.Dc()));
            switch (random.Below(5)) {
            case 0:
                drawing->SetBlink(nullptr, random.Below(2));
                break;
            case 1:
                drawing->SetParam(QEL_PARAM_COLOR, static_cast<uint32_t>(random.Below(0x1000000)));
                break;
            case 2:
                drawing->SetStatus(static_cast<uint32_t>(random.Below(2)));
                break;
            case 3:
                rcQel = {EDGE, EDGE, SIDE - random.Below(EDGE), SIDE - random.Below(EDGE)};
                break;
            default:
                break;
            }
        }
    }
}

HQELELEM AnyElement(CRandom& random, HQELENGINE hEngine)
{
    HQELELEM hElm = QELGetRootElem(hEngine);
    for (;;) {
        HQELELEM hChild = QELGetFirstChild(hEngine, hElm);
        for (int n = random.Below(6); n > 0 && hChild; --n)
            if (HQELELEM hNext = QELGetNextElem(hEngine, hChild)) hChild = hNext;
        if (!hChild) return hElm;
        hElm = hChild;
        if (random.Below(2)) return hElm;
    }
}

HQELELEM AnyParent(CRandom& random, HQELENGINE hEngine)
{
    HQELELEM hElm = AnyElement(random, hEngine);
    while (QELGetElemType(hEngine, hElm) != QEL_TYPE_ROOT &&
           QELGetElemType(hEngine, hElm) != QEL_TYPE_GROUP)
        hElm = QELGetParentElem(hEngine, hElm);
    return hElm;
}

void EditAtRandom(CRandom& random, HQELENGINE hEngine)
{
    HQELELEM hElm = AnyElement(random, hEngine);
    const int nType = QELGetElemType(hEngine, hElm);
    switch (random.Below(12)) {
    case 0:
    case 1:
        QELMoveElem(hEngine, hElm, AnyParent(random, hEngine), nullptr);
        break;
    case 2:
        QELCopyElem(hEngine, hElm);
        break;
    case 3:
        if (nType != QEL_TYPE_ROOT && nType != QEL_TYPE_GROUP) QELDeleteElem(hEngine, hElm);
        break;
    case 4: {
        const RECT rc{random.Below(20), random.Below(20), 50 + random.Below(20), 70};
        QELSetElemRect(hEngine, QELGetFirstChild(hEngine, QELGetRootElem(hEngine)), &rc);
        break;
    }
    case 5:
        QELRotate(hEngine, random.Below(4) * 90);
        break;
    case 6: {
        const SIZE size{70 + random.Below(9), 70 + random.Below(9)};
        QELSetRefSize(hEngine, &size);
        break;
    }
    case 7:
        QELCreateElem(hEngine, QEL_TYPE_GROUP, AnyParent(random, hEngine), nullptr);
        break;
    default: {
        const int nNew = random.Between(QEL_TYPE_TEXT, QEL_TYPE_POLYGON);
        const QELSHAPEATTR attr =
            RandomShape(random, nType >= 1 && nType <= QEL_TYPE_POLYGON ? nType : nNew);
        if (nType < 1 || nType > QEL_TYPE_POLYGON)
            hElm = QELCreateElem(hEngine, nNew, AnyParent(random, hEngine), nullptr);
        QELSetElemAttr(hEngine, hElm, &attr, sizeof attr);
        break;
    }
    }
}

// What groups keep follows whatever a host does.
TEST(ClippedPicture, StaysThatOfAWholeDrawThroughRandomEdits)
{
    CRandom random(4711);
    for (int nDrawing = 0; nDrawing < 12 && !HasFailure(); ++nDrawing) {
        const HQELENGINE hEngine = CreateQELEngine();
        ASSERT_EQ(1, QELNewFile(hEngine));
        const SIZE size{70, 70};
        EXPECT_EQ(1, QELSetRefSize(hEngine, &size));
        EXPECT_EQ(1, QELSetQELRect(hEngine, &QEL));
        for (int n = 0; n < 30; ++n) EditAtRandom(random, hEngine);
        for (int n = 0; n < 60 && !HasFailure(); ++n) {
            SCOPED_TRACE(testing::Message() << "drawing " << nDrawing << " edit " << n);
            CTestBitmap expected(SIDE, SIDE);
            CTestBitmap clipped(SIDE, SIDE);
            const RECT rcClip = nDrawing % 2 ? RECT{0, 0, 45, SIDE} : RECT{60, 60, SIDE, SIDE};
            ClipTo(expected.Dc(), rcClip);
            ClipTo(clipped.Dc(), rcClip);
            ::SetBoundsRect(expected.Dc(), nullptr, DCB_ENABLE);
            EXPECT_EQ(1, QELDraw(hEngine, expected.Dc(), &QEL, FULL));
            EXPECT_EQ(1, QELDraw(hEngine, clipped.Dc(), &QEL, FULL));
            EXPECT_EQ("", FirstDifference(expected, clipped));
            EXPECT_EQ(StateOf(expected.Dc()), StateOf(clipped.Dc()));
            EditAtRandom(random, hEngine);
        }
        EXPECT_EQ(1, DestroyQELEngine(hEngine));
    }
}

TEST(ClippedPicture, FollowsTheOriginOfTheDeviceContext)
{
    CRandom random(77);
    CDrawing drawing;
    Populate(random, drawing);
    for (const POINT& pt : {POINT{30, 0}, POINT{-25, 40}, POINT{REACH, -REACH}, POINT{-90, -90}}) {
        CTestBitmap expected(SIDE, SIDE);
        CTestBitmap clipped(SIDE, SIDE);
        const RECT rcClip{40, 35, 60, 70}; // on the device
        for (const CTestBitmap* p : {&expected, &clipped}) {
            ClipTo(p->Dc(), rcClip);
            ::SetViewportOrgEx(p->Dc(), pt.x, pt.y, nullptr);
        }
        ::SetBoundsRect(expected.Dc(), nullptr, DCB_ENABLE);
        drawing.Draw(expected.Dc());
        drawing.Draw(clipped.Dc());
        EXPECT_EQ("", FirstDifference(expected, clipped)) << pt.x << "," << pt.y;
        EXPECT_EQ(StateOf(expected.Dc()), StateOf(clipped.Dc()));
    }
}

// ---- calls

int g_nCalls = 0;
using SetMode = int(WINAPI*)(HDC, int);
SetMode g_pfnSetBkMode = nullptr;

int WINAPI CountedSetBkMode(HDC hdc, int nMode)
{
    ++g_nCalls;
    return g_pfnSetBkMode(hdc, nMode);
}

// How many shapes a drawing draws: every one sets the background mode and puts it back, whatever
// its class.
int DrawsUnder(const RECT& rcClip, CDrawing& drawing, POINT ptOrigin = {0, 0})
{
    ULONG_PTR* pEntry = FindImport(::GetModuleHandleA(nullptr), "SetBkMode");
    if (!pEntry) return -1;
    const ULONG_PTR nWas = *pEntry;
    g_pfnSetBkMode = reinterpret_cast<SetMode>(nWas);
    CTestBitmap bitmap(SIDE, SIDE);
    ClipTo(bitmap.Dc(), rcClip);
    ::SetViewportOrgEx(bitmap.Dc(), ptOrigin.x, ptOrigin.y, nullptr);
    g_nCalls = 0;
    EXPECT_TRUE(SetImport(pEntry, reinterpret_cast<ULONG_PTR>(&CountedSetBkMode)));
    drawing.Draw(bitmap.Dc());
    EXPECT_TRUE(SetImport(pEntry, nWas));
    EXPECT_EQ(0, g_nCalls % 2);
    return g_nCalls / 2;
}

constexpr RECT ALL{0, 0, SIDE, SIDE};

TEST(ClippedCalls, OfAHundredthAreThoseOfTheShapesInItAlone)
{
    CDrawing drawing;
    int nInside = 0;
    for (int n = 0; n < 1100; ++n) { // each class in each of 10 by 10 places
        const int nType = QEL_TYPE_TEXT + n % 11;
        const int nX = n / 11 % 10 * 7;
        const int nY = n / 110 * 7;
        nInside += nX == 35 && nY == 35;
        const QELSHAPEATTR attr = Shape(nType, {nX, nY, nX + 2, nY + 2});
        EXPECT_EQ(1, drawing.Make(nType)->SetAttrBlock(&attr));
    }
    EXPECT_EQ(11, nInside);
    EXPECT_EQ(1100, DrawsUnder(ALL, drawing));
    EXPECT_EQ(11, DrawsUnder({EDGE + 35, EDGE + 35, EDGE + 37, EDGE + 37}, drawing));
    EXPECT_EQ(0, DrawsUnder({5, 5, 5, 5}, drawing));
}

// A line may leave the drawing. While the clip does not cut that, there are no more questions.
TEST(ClippedCalls, OfADrawingThatIsInTheClipAreAll)
{
    CDrawing drawing;
    const QELSHAPEATTR attr = Shape(QEL_TYPE_LINE, {300, 300, 400, 400});
    EXPECT_EQ(1, drawing.Make(QEL_TYPE_LINE)->SetAttrBlock(&attr));
    EXPECT_EQ(1, DrawsUnder(ALL, drawing));
    EXPECT_EQ(1, DrawsUnder(QEL, drawing));
    EXPECT_EQ(0, DrawsUnder({EDGE, EDGE, SIDE - EDGE, SIDE - EDGE - 1}, drawing));
}

// There the system's own sums may come round.
TEST(ClippedCalls, UnderAClipThatIsVeryFarAwayAreAll)
{
    CDrawing drawing;
    const QELSHAPEATTR attr = Shape(QEL_TYPE_RECT, {10, 10, 20, 20});
    EXPECT_EQ(1, drawing.Make(QEL_TYPE_RECT)->SetAttrBlock(&attr));
    EXPECT_EQ(0, DrawsUnder(ALL, drawing, {-REACH / 2, 0}));
    EXPECT_EQ(1, DrawsUnder(ALL, drawing, {-REACH, 0}));
    EXPECT_EQ(1, DrawsUnder(ALL, drawing, {0, REACH + 1}));
}

} // namespace
