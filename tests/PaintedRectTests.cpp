// What elements say that they paint at most, and where they are hit, against the pixels that they
// change: random elements of every class in every setting, on a ground that nobody paints. The
// classes answer in render/ and dynamic/, the walk of a picture is engine/Places.*.
#include "dynamic/MeterTypes.h"
#include "dynamic/QELViewMeter.h"
#include "dynamic/QELViewScale.h"
#include "dynamic/QELViewStatus.h"
#include "render/PaintedPlace.h"
#include "tests/support/ShownSupport.h"

#include <cmath>

namespace {

using showntest::CRandom;
using namespace viewtest;

constexpr COLORREF GROUND = 0x123457;
constexpr int SURFACE = 150;
constexpr int UNITS = 70;
constexpr int NARROW = 16;
constexpr int ROUNDS = 100; // of each class

// The box of what is not the ground; false when all of it is.
bool FindPixels(const CTestBitmap& bitmap, RECT* prc)
{
    *prc = {bitmap.Width(), bitmap.Height(), 0, 0};
    for (int y = 0; y < bitmap.Height(); ++y)
        for (int x = 0; x < bitmap.Width(); ++x)
            if (bitmap.At(x, y) != GROUND)
                *prc = {std::min<LONG>(prc->left, x), std::min<LONG>(prc->top, y),
                        std::max<LONG>(prc->right, x + 1), std::max<LONG>(prc->bottom, y + 1)};
    return prc->left < prc->right;
}

bool Holds(const RECT& rcOuter, const RECT& rc)
{
    return rcOuter.left <= rc.left && rcOuter.top <= rc.top && rcOuter.right >= rc.right &&
           rcOuter.bottom >= rc.bottom;
}

class CPicture : public CTestPicture {
public:
    CPicture() : CTestPicture({UNITS, UNITS}) {}
    void Draw(CTestBitmap& bitmap, const QelRect& rcQel, uint32_t nFlags)
    {
        m_view.Draw(nullptr, bitmap.Dc(), rcQel, nFlags);
    }
    CQELViewElm* Root() { return m_view.Root(); }
};

RECT RandomQel(CRandom& random)
{
    const LONG nX = random.Between(5, 40);
    const LONG nY = random.Between(5, 40);
    return {nX, nY, nX + random.Between(30, 105), nY + random.Between(30, 105)};
}

// Any scale, the same for the same rectangle.
QelRect Scaled(const RECT& rc)
{
    return {rc, CPixelScale(static_cast<uint32_t>(25 + (37 * rc.left + 11 * rc.bottom) % 376))};
}

uint32_t RandomKeep(CRandom& random)
{
    constexpr uint32_t anchors[] = {QEL_KEEP_NONE, QEL_KEEP_ALL,   QEL_KEEP_LEFT,
                                    QEL_KEEP_TOP,  QEL_KEEP_RIGHT, QEL_KEEP_BOTTOM};
    constexpr uint32_t alongs[] = {QEL_ALONG_KEEP_BORDERS, QEL_ALONG_KEEP_LENGTH, QEL_ALONG_AS_QEL};
    constexpr uint32_t aways[] = {QEL_AWAY_AS_QEL, QEL_AWAY_AS_GRAPH, QEL_AWAY_KEEP_LENGTH,
                                  QEL_AWAY_KEEP_BORDER};
    return anchors[random.Between(0, 5)] | alongs[random.Between(0, 2)] |
           aways[random.Between(0, 3)];
}

bool IsCurvedType(int nType)
{
    return nType >= QEL_TYPE_CHORD && nType <= QEL_TYPE_CIRCLE;
}

// Curves are wide enough for the system to paint them the same each time.
RECT RandomBox(CRandom& random, int nLeast)
{
    const LONG nX = random.Between(-10, UNITS - 20);
    const LONG nY = random.Between(-10, UNITS - 20);
    return {nX, nY, nX + random.Between(nLeast, 45), nY + random.Between(nLeast, 45)};
}

QELSHAPEATTR RandomShape(CRandom& random, int nType)
{
    const RECT rc = RandomBox(random, IsCurvedType(nType) ? 25 : 1);
    QELSHAPEATTR attr = FilledAttr({rc.left, rc.top, rc.right, rc.bottom});
    LONG* n = attr.nGeometry;
    for (int i = 4; i < 8; ++i) n[i] = random.Between(-10, 80);
    if (nType == QEL_TYPE_CIRCLE) n[2] = random.Between(13, 30);
    if (nType == QEL_TYPE_ROUNDRECT) n[4] = n[5] = random.Between(8, 60);
    if (nType == QEL_TYPE_POLYGON || nType == QEL_TYPE_POLYLINE) {
        n[0] = random.Between(2, QEL_MAX_POINTS);
        for (int i = 1; i <= 2 * n[0]; ++i) n[i] = random.Between(-10, 80);
    }
    constexpr DWORD styles[] = {QEL_STYLE_STROKE, QEL_STYLE_FILL, QEL_STYLE_FILL_3DUP,
                                QEL_STYLE_FILL_3DDOWN, QEL_STYLE_UP_BIT};
    attr.nStyle =
        styles[random.Between(0, 4)] |
        static_cast<DWORD>(random.Between(0, 3) ? random.Between(0, 4) : random.Between(5, 70))
            << 16;
    attr.nDraft = random.Between(0, DRAFT_COUNT - 1);
    attr.clrA = 0x00FF00;
    attr.clrB = 0xFF0000;
    attr.nPenStyle = random.Between(0, 6);
    attr.nPenWidth = random.Between(0, 2) ? random.Between(0, 3) : random.Between(0, 14);
    if (IsCurvedType(nType) && attr.nPenWidth > 3) attr.nPenStyle = PS_SOLID; // the others are slow
    attr.nFlags = (random.Between(0, 1) ? 0 : QEL_FLAG_PRESS) | RandomKeep(random);
    constexpr const char* texts[] = {"W", "Pump 1", "&Open", "a&b\ng&q", "gjpqy\nWWW\nx", ""};
    std::strcpy(attr.szText, texts[random.Between(0, 5)]);
    return attr;
}

std::string TextOf(const QELSHAPEATTR& attr)
{
    std::string text = "style " + std::to_string(attr.nStyle) + " pen " +
                       std::to_string(attr.nPenStyle) + "/" + std::to_string(attr.nPenWidth) +
                       " draft " + std::to_string(attr.nDraft) + " flags " +
                       std::to_string(attr.nFlags) + " crd";
    for (const LONG n : attr.nGeometry) text += " " + std::to_string(n);
    return text;
}

// Narrow curves are painted from chance by some systems.
bool IsChancy(const CQELViewElm& elm, const RECT& rc, CPixelScale px = {})
{
    if (!IsCurvedType(elm.Type())) return false;
    QELSHAPEATTR attr;
    EXPECT_EQ(1, elm.GetAttrBlock(&attr));
    const LONG nLeast = px(NARROW + attr.nPenWidth);
    return rc.right - rc.left < nLeast || rc.bottom - rc.top < nLeast;
}

// What a picture of this one element paints, in every way of drawing, is in what it says.
class PaintedRects : public testing::Test {
protected:
    void Expect(CPicture& picture, const CQELViewElm* pElm, const QelRect& rcQel)
    {
        RECT rcPainted{};
        const bool bPaints = FindPaintedRect(pElm, picture.Root(), rcQel, &rcPainted);
        if (bPaints && IsChancy(*pElm, rcPainted)) return;
        CTestBitmap bitmap(SURFACE, SURFACE, GROUND);
        for (const uint32_t nFlags : {1U, 3U, 0U}) picture.Draw(bitmap, rcQel, nFlags);
        RECT rcPixels{};
        if (!FindPixels(bitmap, &rcPixels)) return;
        ++m_nPainted;
        ASSERT_TRUE(bPaints) << RectText(rcPixels);
        EXPECT_TRUE(Holds(rcPainted, rcPixels))
            << RectText(rcPixels) << " in " << RectText(rcPainted) << " of " << RectText(rcQel)
            << " at " << rcQel.px.Percent();
        switch (m_nPainted % 8) { // large pictures take their time
        case 0:
            ExpectOfSamples(picture, pElm, Scaled(rcQel));
            break;
        case 4:
            ExpectOfSamples(picture, pElm, rcQel);
            break;
        default:
            ExpectAtScale(picture, pElm, Scaled(rcQel));
            break;
        }
        const RECT rcSeen{std::max<LONG>(rcPainted.left, 0), std::max<LONG>(rcPainted.top, 0),
                          std::min<LONG>(rcPainted.right, SURFACE),
                          std::min<LONG>(rcPainted.bottom, SURFACE)};
        m_nSaid += (rcSeen.right - rcSeen.left) * (rcSeen.bottom - rcSeen.top);
        m_nTrue += (rcPixels.right - rcPixels.left) * (rcPixels.bottom - rcPixels.top);
    }

    static void ExpectAtScale(CPicture& picture, const CQELViewElm* pElm, const QelRect& rcQel)
    {
        CTestBitmap bitmap(SURFACE, SURFACE, GROUND);
        for (const uint32_t nFlags : {1U, 3U}) picture.Draw(bitmap, rcQel, nFlags);
        RECT rcPixels{};
        if (!FindPixels(bitmap, &rcPixels)) return;
        RECT rcPainted{};
        ASSERT_TRUE(FindPaintedRect(pElm, picture.Root(), rcQel, &rcPainted));
        if (IsChancy(*pElm, rcPainted, rcQel.px)) return;
        EXPECT_TRUE(Holds(rcPainted, rcPixels))
            << RectText(rcPixels) << " in " << RectText(rcPainted) << " of " << RectText(rcQel)
            << " at " << rcQel.px.Percent();
    }

    // What is painted in samples is in the pixels that are told.
    static void ExpectOfSamples(CPicture& picture, const CQELViewElm* pElm, const QelRect& rcQel)
    {
        constexpr int SAMPLES = 3;
        CTestBitmap samples(SURFACE * SAMPLES, SURFACE * SAMPLES, GROUND);
        const QelRect rcSamples(rcQel, CPixelScale(rcQel.px.Percent(), SAMPLES));
        picture.Draw(samples, rcSamples, 1);
        RECT rc{};
        if (!FindPixels(samples, &rc)) return;
        RECT rcPainted{};
        ASSERT_TRUE(FindPaintedRect(pElm, picture.Root(), rcSamples, &rcPainted));
        if (IsChancy(*pElm, rcPainted, rcQel.px)) return;
        const RECT rcPixels{rc.left / SAMPLES, rc.top / SAMPLES, (rc.right + SAMPLES - 1) / SAMPLES,
                            (rc.bottom + SAMPLES - 1) / SAMPLES};
        EXPECT_TRUE(Holds(rcPainted, rcPixels))
            << "samples " << RectText(rcPixels) << " in " << RectText(rcPainted) << " of "
            << RectText(rcQel) << " at " << rcQel.px.Percent();
    }

    // How much larger it is than the box of the pixels, over all of them.
    double Excess() const { return static_cast<double>(m_nSaid) / m_nTrue; }

    int m_nPainted = 0;
    LONG m_nSaid = 0;
    LONG m_nTrue = 0;
};

class PaintedRectsOfShapes : public PaintedRects, public testing::WithParamInterface<int> {};

TEST_P(PaintedRectsOfShapes, HoldAllPixels)
{
    CRandom random(static_cast<unsigned>(100 + GetParam()));
    for (int n = 0; n < ROUNDS && !HasFailure(); ++n) {
        CPicture picture;
        CQELViewElm* pElm = picture.Make(GetParam());
        const QELSHAPEATTR attr = RandomShape(random, GetParam());
        ASSERT_EQ(1, pElm->SetAttrBlock(&attr));
        SCOPED_TRACE(TextOf(attr));
        Expect(picture, pElm, RandomQel(random));
    }
    EXPECT_LT(ROUNDS / 3, m_nPainted);
    EXPECT_GT(GetParam() == QEL_TYPE_TEXT ? 8 : 1.5, Excess()); // letters do not fill their box
}

TEST_P(PaintedRectsOfShapes, HoldThoseOfAMetersFace)
{
    CRandom random(static_cast<unsigned>(200 + GetParam()));
    for (int n = 0; n < ROUNDS / 2 && !HasFailure(); ++n) {
        CPicture picture;
        auto* pMeter = static_cast<CQELViewMeter*>(picture.Make(QEL_TYPE_METER));
        QELMETERATTR meter{};
        meter.nSize = sizeof meter;
        meter.nMin = meter.nMax = 1;
        meter.nType = METER_ROUND; // without a place: the face is painted alone
        ASSERT_EQ(1, pMeter->SetAttrBlock(&meter));
        CQELViewElm* pElm = picture.Make(GetParam(), picture.Make(QEL_TYPE_GROUP, pMeter));
        const QELSHAPEATTR attr = RandomShape(random, GetParam());
        ASSERT_EQ(1, pElm->SetAttrBlock(&attr));
        SCOPED_TRACE(TextOf(attr));
        const RECT rcQel = RandomQel(random);
        Expect(picture, pElm, rcQel);
        ASSERT_EQ(1, pMeter->SetProperty(QEL_SEL_FILL_ONLY, 1));
        Expect(picture, pElm, rcQel);
    }
    EXPECT_LT(ROUNDS / 3, m_nPainted);
}

INSTANTIATE_TEST_SUITE_P(EveryType, PaintedRectsOfShapes,
                         testing::Range<int>(QEL_TYPE_TEXT, QEL_TYPE_POLYGON + 1));

TEST_F(PaintedRects, OfAFilledBoxAreThatBox)
{
    CPicture picture;
    CQELViewElm* pElm = picture.Make(QEL_TYPE_RECT);
    QELSHAPEATTR attr = FilledAttr({7, 14, 35, 42});
    attr.nPenWidth = 0;
    ASSERT_EQ(1, pElm->SetAttrBlock(&attr));
    RECT rc{};
    ASSERT_TRUE(FindPaintedRect(pElm, picture.Root(), {10, 20, 10 + 140, 20 + 70}, &rc));
    EXPECT_EQ("24,34,80,62", RectText(rc));
}

TEST_F(PaintedRects, OfWhatHasNoInkThereAreNone)
{
    CPicture picture;
    CQELViewElm* pElm = picture.Make(QEL_TYPE_ELLIPSE);
    QELSHAPEATTR attr = OutlineAttr({7, 14, 35, 42});
    attr.nPenWidth = 0;
    ASSERT_EQ(1, pElm->SetAttrBlock(&attr));
    RECT rc{1, 2, 3, 4};
    EXPECT_FALSE(FindPaintedRect(pElm, picture.Root(), {0, 0, 70, 70}, &rc));
    EXPECT_EQ("1,2,3,4", RectText(rc));
}

TEST_F(PaintedRects, OfScalesHoldAllPixels)
{
    CRandom random(31);
    for (int n = 0; n < 3 * ROUNDS && !HasFailure(); ++n) {
        CPicture picture;
        auto* pScale = static_cast<CQELViewScale*>(picture.Make(QEL_TYPE_SCALE));
        QELSCALEATTR attr{};
        attr.nSize = sizeof attr;
        attr.nType = random.Between(0, 5);
        attr.bHide = random.Between(0, 3) == 0;
        attr.bPin = random.Between(0, 1);
        attr.nStyle = static_cast<DWORD>(random.Between(0, 1));
        attr.nMin = 1;
        attr.nMax = random.Between(1, 60);
        const RECT rc = RandomBox(random, 10);
        LONG* p = attr.nGeometry;
        p[0] = rc.left, p[1] = rc.top, p[2] = rc.right, p[3] = rc.bottom;
        if (attr.nType >= 4) {
            p[2] = random.Between(10, 35);
            p[3] = random.Between(8, 45); // also beyond the ticks
            p[4] = random.Between(0, 12);
        }
        p[5] = random.Between(0, 360);
        p[6] = random.Between(0, 360);
        ASSERT_EQ(1, pScale->SetAttrBlock(&attr));
        pScale->SetProperty(QEL_SEL_TICKS, static_cast<uint32_t>(random.Between(1, 40)));
        pScale->SetProperty(QEL_SEL_START_CODE, static_cast<uint32_t>(random.Between(0, 7)));
        pScale->SetProperty(QEL_SEL_VALUE, static_cast<uint32_t>(random.Between(0, 12)));
        pScale->SetDraftParam(static_cast<uint32_t>(random.Between(0, DRAFT_COUNT - 1)));
        SCOPED_TRACE("scale " + std::to_string(n) + " type " + std::to_string(attr.nType));
        Expect(picture, pScale, RandomQel(random));
    }
    EXPECT_LT(ROUNDS, m_nPainted);
    EXPECT_GT(1.7, Excess());
}

TEST_F(PaintedRects, OfDrawRegionsHoldAllPixels)
{
    CRandom random(32);
    for (int n = 0; n < ROUNDS && !HasFailure(); ++n) {
        CPicture picture;
        CQELViewElm* pElm = picture.Make(QEL_TYPE_DRAWRGN);
        QELDRAWRGNATTR attr{sizeof attr, random.Between(0, 7) | random.Between(0, 60) << 16,
                            RandomBox(random, 3), RandomKeep(random)};
        ASSERT_EQ(1, pElm->SetAttrBlock(&attr));
        Expect(picture, pElm, RandomQel(random));
    }
    EXPECT_LT(ROUNDS / 3, m_nPainted);
    EXPECT_GT(1.2, Excess());
}

// ---- meters

class PaintedRectsOfMeters : public PaintedRects, public testing::WithParamInterface<int> {
protected:
    static QELMETERATTR RandomMeter(CRandom& random, int nType)
    {
        QELMETERATTR attr{};
        attr.nSize = sizeof attr;
        attr.nType = nType;
        attr.bUseScale = attr.bUsePin = 1;
        attr.nMin = 1;
        attr.nMax = 100;
        attr.nFlags = random.Between(0, 2) ? 0 : RandomKeep(random);
        const RECT rc = RandomBox(random, 12);
        LONG* p = attr.nGeometry;
        if (MeterTypeOf(nType)->form == MeterForm::Rectangle) {
            p[0] = rc.left, p[1] = rc.top, p[2] = rc.right, p[3] = rc.bottom;
            return attr;
        }
        p[2] = random.Between(10, 35);
        p[0] = random.Between(20, 50);
        p[1] = random.Between(20, 50);
        const LONG nBeyond = random.Between(-8, 8);
        p[3] = p[0] - p[2] - nBeyond;
        p[4] = p[1] - p[2] - nBeyond;
        p[5] = p[0] + p[2] + nBeyond;
        p[6] = p[1] + p[2] + nBeyond;
        p[7] = random.Between(0, 170);
        p[8] = random.Between(190, 360);
        return attr;
    }

    static void SetRandomly(CRandom& random, CQELViewMeter* pMeter)
    {
        const auto set = [&](int32_t nSelector, LONG nLow, LONG nHigh) {
            pMeter->SetProperty(static_cast<uint32_t>(nSelector),
                                static_cast<uint32_t>(random.Between(nLow, nHigh)));
        };
        for (const int n :
             {QEL_SEL_SHOW_SCALE, QEL_SEL_SHOW_PIN, QEL_SEL_SHOW_LABELS, QEL_SEL_SHOW_ALARM,
              QEL_SEL_REVERSE, QEL_SEL_USE_BASE, QEL_SEL_FILL_ONLY, QEL_SEL_SHOW_FRAME,
              QEL_SEL_SHOW_VALUE, QEL_SEL_FRAME_OPTION, QEL_SEL_FULL_CIRCLE})
            set(n, 0, 1);
        set(QEL_SEL_TICKS, 1, 30);
        set(QEL_SEL_MAX, 1, 200);
        set(QEL_SEL_MIN, -200, 0);
        set(QEL_SEL_MAJOR_EVERY, 0, 6);
        set(QEL_SEL_SCALE_START, -20000, 20000);
        set(QEL_SEL_SCALE_END, -20000, 20000);
        set(QEL_SEL_DECIMAL_SHIFT, 0, 4);
        set(QEL_SEL_LOW_LIMIT, -100, 50);
        set(QEL_SEL_HIGH_LIMIT, 50, 200);
        set(QEL_SEL_BASE_VALUE, -50, 50);
        set(QEL_SEL_ANGLE_OFFSET, 0, 360);
        set(QEL_SEL_PIN_STYLE, 0, 5);
        set(QEL_SEL_AXIS_STYLE, 0, 4);
        set(QEL_SEL_SECTOR_COUNT, 0, 8);
        set(QEL_SEL_FONT_SIZE, 0, 10);
        for (uint32_t nPin = 0; nPin <= 8; ++nPin)
            pMeter->SetValue(nPin, static_cast<uint32_t>(random.Between(-100, 200)));
    }
};

// Asked before the first draw, when there is no renderer, and after several.
TEST_P(PaintedRectsOfMeters, HoldAllPixels)
{
    CRandom random(static_cast<unsigned>(300 + GetParam()));
    for (int n = 0; n < ROUNDS && !HasFailure(); ++n) {
        SCOPED_TRACE("meter " + std::to_string(n));
        CPicture picture;
        auto* pMeter = static_cast<CQELViewMeter*>(picture.Make(QEL_TYPE_METER));
        const QELMETERATTR attr = RandomMeter(random, GetParam());
        ASSERT_EQ(1, pMeter->SetAttrBlock(&attr));
        for (LONG nFaces = random.Between(0, 2); nFaces > 0; --nFaces) {
            constexpr int types[] = {QEL_TYPE_RECT, QEL_TYPE_POLYGON, QEL_TYPE_CIRCLE,
                                     QEL_TYPE_TEXT, QEL_TYPE_PIE};
            const int nType = types[random.Between(0, 4)];
            QELSHAPEATTR face = RandomShape(random, nType);
            face.nFlags = 0;
            ASSERT_EQ(1, picture.Make(nType, pMeter)->SetAttrBlock(&face));
        }
        const RECT rcQel = {20, 20, random.Between(90, 130), random.Between(90, 130)};
        for (int nSettings = 0; nSettings < 3; ++nSettings) {
            SetRandomly(random, pMeter);
            Expect(picture, pMeter, rcQel);
        }
    }
    EXPECT_LT(ROUNDS, m_nPainted);
    EXPECT_GT(2.5, Excess());
}

INSTANTIATE_TEST_SUITE_P(EveryType, PaintedRectsOfMeters, testing::Range<int>(0, METER_TYPE_COUNT));

// ---- hits

// Which pixels an element alone changes, and how far the nearest of them is.
class CMask {
public:
    explicit CMask(const CTestBitmap& bitmap) : m_set(SURFACE * SURFACE)
    {
        for (int y = 0; y < SURFACE; ++y)
            for (int x = 0; x < SURFACE; ++x)
                m_set[static_cast<std::size_t>(y * SURFACE + x)] = bitmap.At(x, y) != GROUND;
    }
    bool Has(int x, int y) const
    {
        return x >= 0 && y >= 0 && x < SURFACE && y < SURFACE &&
               m_set[static_cast<std::size_t>(y * SURFACE + x)];
    }
    bool HasNear(int x, int y, int nFar) const
    {
        for (int dy = -nFar; dy <= nFar; ++dy)
            for (int dx = -nFar; dx <= nFar; ++dx)
                if (dx * dx + dy * dy <= nFar * nFar && Has(x + dx, y + dy)) return true;
        return false;
    }

private:
    std::vector<char> m_set;
};

class HitShapes : public testing::TestWithParam<int> {
protected:
    // A shape in one ink, with a pen that paints all of its outline.
    static QELSHAPEATTR Inked(CRandom& random, int nType)
    {
        QELSHAPEATTR attr = RandomShape(random, nType);
        attr.nDraft = DRAFT_SOLID_TEXT;
        attr.nPenStyle = PS_SOLID;
        attr.nFlags &= ~static_cast<DWORD>(QEL_FLAG_PRESS);
        attr.nStyle &= QEL_STYLE_FILL_MASK;
        if (nType == QEL_TYPE_ARC || nType == QEL_TYPE_CHORD || nType == QEL_TYPE_PIE)
            SetRays(random, attr.nGeometry);
        // Without a pen thin spikes of a figure are not painted.
        attr.nPenWidth = random.Between(1, 5);
        if (attr.nStyle == QEL_STYLE_UP_BIT) attr.nStyle = QEL_STYLE_STROKE;
        return attr;
    }
    // From far away and well apart: where the system lets other rays end is its own affair.
    static void SetRays(CRandom& random, LONG* pnWords)
    {
        const double fStart = static_cast<double>(random.Between(0, 359)) / 180 * 3.14159265;
        const double fEnd =
            fStart + static_cast<double>(random.Between(40, 320)) / 180 * 3.14159265;
        const LONG nX = (pnWords[0] + pnWords[2]) / 2;
        const LONG nY = (pnWords[1] + pnWords[3]) / 2;
        pnWords[4] = nX + std::lround(300 * std::cos(fStart));
        pnWords[5] = nY - std::lround(300 * std::sin(fStart));
        pnWords[6] = nX + std::lround(300 * std::cos(fEnd));
        pnWords[7] = nY - std::lround(300 * std::sin(fEnd));
    }
    static bool IsFilled(int nType, const QELSHAPEATTR& attr)
    {
        return attr.nStyle != QEL_STYLE_STROKE && nType != QEL_TYPE_ARC && nType != QEL_TYPE_LINE &&
               nType != QEL_TYPE_POLYLINE;
    }
};

TEST_P(HitShapes, AreHitWhereTheyPaintAndOutlinesAsNearAsThreePixels)
{
    CRandom random(static_cast<unsigned>(400 + GetParam()));
    int nHits = 0;
    for (int n = 0; n < ROUNDS / 5 && !HasFailure(); ++n) {
        CPicture picture;
        CQELViewElm* pElm = picture.Make(GetParam());
        const QELSHAPEATTR attr = Inked(random, GetParam());
        ASSERT_EQ(1, pElm->SetAttrBlock(&attr));
        SCOPED_TRACE(TextOf(attr));
        const RECT rcQel = RandomQel(random);
        CTestBitmap bitmap(SURFACE, SURFACE, GROUND);
        picture.Draw(bitmap, rcQel, QEL_DRAW_FULL);
        RECT rcPainted{};
        if (pElm->PaintedRect(rcQel, &rcPainted) && IsChancy(*pElm, rcPainted)) continue;
        const CMask mask(bitmap);
        // The rounding of a curve, and the corners of a wide pen, which are no circles.
        // Ends of arcs may be two pixels off, and meet their sides there.
        const int nFar = IsFilled(GetParam(), attr) ? 4 : 7;
        for (int y = 6; y < SURFACE - 6 && !HasFailure(); ++y)
            for (int x = 6; x < SURFACE - 6 && !HasFailure(); ++x) {
                const bool bHit = pElm->IsHit(rcQel, {x, y});
                nHits += bHit;
                const std::string where = std::to_string(x) + "," + std::to_string(y);
                if (mask.Has(x, y)) {
                    EXPECT_TRUE(bHit) << where << " of " << RectText(rcQel);
                } else if (bHit) {
                    EXPECT_TRUE(mask.HasNear(x, y, nFar)) << where << " of " << RectText(rcQel);
                } else if (!IsFilled(GetParam(), attr)) {
                    EXPECT_FALSE(mask.HasNear(x, y, 1)) << where << " of " << RectText(rcQel);
                }
            }
    }
    EXPECT_LT(1000, nHits);
}

INSTANTIATE_TEST_SUITE_P(EveryType, HitShapes,
                         testing::Range<int>(QEL_TYPE_RECT, QEL_TYPE_POLYGON + 1));

} // namespace
