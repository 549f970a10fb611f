// The view of a scale: its marks, the part that the value fills and its pointer, for all six types
// against raw GDI calls worked out from the rules; and the values that the host sends. The code is
// dynamic/QELViewScale.cpp and dynamic/ScaleGeometry.cpp.
#include "dynamic/QELViewScale.h"
#include "engine/ElementTypes.h"

#include "render/QELView.h"
#include "tests/support/ViewSupport.h"

#include <cmath>
#include <memory>

namespace {

constexpr RECT QEL{0, 0, 200, 200}; // two pixels a unit of the drawings here
constexpr uint32_t PIN = 0x0000FF;
constexpr uint32_t MARK = 0x00AA00;
constexpr uint32_t FORE = 0xFF0000;
constexpr uint32_t BACK = 0x22CCEE;

QELSCALEATTR Attr(int nType, const std::vector<LONG>& geometry)
{
    QELSCALEATTR attr{sizeof attr, 7, 0, nType, 1, 1, 100, 1, {}};
    std::copy(geometry.begin(), geometry.end(), attr.nGeometry);
    return attr;
}

// On the device: 20,40..81,141 of 200 by 200 for the straight types; the round ones have their
// centre at 100,100 and the radii 80, 60 and 20.
QELSCALEATTR Attr(int nType)
{
    return nType < 4    ? Attr(nType, {10, 20, 41, 71})
           : nType == 4 ? Attr(4, {50, 50, 40, 30, 10})
                        : Attr(5, {50, 50, 40, 30, 10, -30, 210});
}
constexpr RECT BOX{20, 40, 82, 142};
constexpr POINT CENTRE{100, 100};
constexpr int TICK = 80, CIRCLE = 60, HUB = 20;

using Scale = std::unique_ptr<CQELViewScale>;

// A scale in colours of its own, with hatch 7 in the fill.
Scale Make(const QELSCALEATTR& attr, int nRef = 100)
{
    auto scale = std::make_unique<CQELViewScale>(nRef, nRef);
    EXPECT_EQ(1, scale->SetAttrBlock(&attr));
    EXPECT_EQ(1, scale->SetProperty(0, PIN));
    EXPECT_EQ(1, scale->SetProperty(1, MARK));
    EXPECT_EQ(1, scale->SetDraftParam(7));
    EXPECT_EQ(1, scale->SetDraftForeParam(FORE));
    EXPECT_EQ(1, scale->SetDraftBackParam(BACK));
    return scale;
}

// ---- the same by raw calls ----

void Line(HDC hdc, POINT from, POINT to)
{
    ::MoveToEx(hdc, from.x, from.y, nullptr);
    ::LineTo(hdc, to.x, to.y);
}

POINT At(int nRadius, int nAngle)
{
    const double f = nAngle * 3.14159265358979323846 / 180;
    return {CENTRE.x + static_cast<int>(std::cos(f) * nRadius),
            CENTRE.y - static_cast<int>(std::sin(f) * nRadius)};
}

// What is painted without an outline reaches as far as an outline of the radius does.
RECT Disc(int nRadius)
{
    return {CENTRE.x - nRadius, CENTRE.y - nRadius, CENTRE.x + nRadius + 1, CENTRE.y + nRadius + 1};
}

RECT Ring(int nRadius)
{
    return {CENTRE.x - nRadius, CENTRE.y - nRadius, CENTRE.x + nRadius, CENTRE.y + nRadius};
}

void RawStraightMarks(HDC hdc, int nType, int n)
{
    CTestSelect pen(hdc, ::CreatePen(PS_SOLID, 1, MARK), true);
    const RECT& rc = BOX;
    const int w = rc.right - rc.left, h = rc.bottom - rc.top;
    if (nType < 2) {
        const int x = nType == 0 ? rc.right - w / 4 : rc.left + w / 4;
        Line(hdc, {x, rc.top}, {x, rc.bottom});
        for (int i = 0; i <= n; ++i) {
            const int y = rc.bottom - (rc.bottom - rc.top) * i / n;
            const int nLength = i % 5 ? w / 2 : w / 4 + w / 2;
            nType == 0 ? Line(hdc, {x - nLength, y}, {x, y}) : Line(hdc, {x, y}, {x + nLength, y});
        }
        return;
    }
    const int y = nType == 3 ? rc.top + h / 4 : rc.bottom - h / 4;
    Line(hdc, {rc.left, y}, {rc.right, y});
    for (int i = 0; i <= n; ++i) {
        const int x = rc.left + (rc.right - rc.left) * i / n;
        const int nLength = i % 5 ? h / 2 : h / 4 + h / 2;
        nType == 2 ? Line(hdc, {x, y - nLength}, {x, y}) : Line(hdc, {x, y}, {x, y + nLength});
    }
}

// With the value's brush: hatch 7, the foreground where the hatch is clear.
void WithFill(HDC hdc, const std::function<void()>& paint)
{
    CQELDraft draft(DRAFT_DIAGONAL_UP); // brushes have tests of their own
    HBRUSH hBrush = nullptr;
    ASSERT_NE(0, draft.GetDraftBrush(hBrush, nullptr, FORE, BACK));
    CTestSelect brush(hdc, hBrush, false);
    CTestSelect pen(hdc, ::GetStockObject(NULL_PEN), false);
    ::SetTextColor(hdc, FORE);
    ::SetBkColor(hdc, BACK);
    paint();
}

void RawRect(HDC hdc, const RECT& rc)
{
    WithFill(hdc, [&] {
        ::PatBlt(hdc, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top, PATCOPY);
    });
}

void RawSweep(HDC hdc, int nFrom, int nTo, bool bClockwise)
{
    const POINT from = At(CIRCLE, nFrom), to = At(CIRCLE, nTo);
    const bool bMeet = from.x == to.x && from.y == to.y && std::abs(nTo - nFrom) != 360;
    const RECT rc = Disc(CIRCLE), hub = Disc(HUB);
    WithFill(hdc, [&] {
        const int nDirection =
            ::SetArcDirection(hdc, bClockwise ? AD_CLOCKWISE : AD_COUNTERCLOCKWISE);
        if (nFrom != nTo && !bMeet)
            ::Pie(hdc, rc.left, rc.top, rc.right, rc.bottom, from.x, from.y, to.x, to.y);
        ::SetArcDirection(hdc, nDirection);
        CTestSelect white(hdc, ::GetStockObject(WHITE_BRUSH), false);
        ::Ellipse(hdc, hub.left, hub.top, hub.right, hub.bottom);
    });
}

void RawRoundMarks(HDC hdc, int nStart, int n)
{
    CTestSelect pen(hdc, ::CreatePen(PS_SOLID, 1, MARK), true);
    CTestSelect brush(hdc, ::GetStockObject(NULL_BRUSH), false);
    const RECT rc = Ring(CIRCLE);
    ::Ellipse(hdc, rc.left, rc.top, rc.right, rc.bottom);
    for (int i = 0; i < n; ++i)
        Line(hdc, At(CIRCLE, i * 360 / n + nStart), At(TICK, i * 360 / n + nStart));
}

void RawArcMarks(HDC hdc, int nStart, int nEnd, int n)
{
    CTestSelect pen(hdc, ::CreatePen(PS_SOLID, 1, MARK), true);
    const RECT rc = Ring(CIRCLE);
    const POINT from = At(CIRCLE, nStart), to = At(CIRCLE, nEnd);
    ::SetArcDirection(hdc, nEnd < nStart ? AD_CLOCKWISE : AD_COUNTERCLOCKWISE);
    ::Arc(hdc, rc.left, rc.top, rc.right, rc.bottom, from.x, from.y, to.x, to.y);
    for (int i = 0; i <= n; ++i) {
        const int nAngle = nStart + (nEnd - nStart) * i / n;
        Line(hdc, At(CIRCLE, nAngle), At(TICK, nAngle));
    }
}

void RawPin(HDC hdc, POINT from, POINT to)
{
    CTestSelect pen(hdc, ::CreatePen(PS_SOLID, 1, PIN), true);
    Line(hdc, from, to);
}

void ExpectDrawn(CQELViewScale& scale, const std::function<void(HDC)>& raw)
{
    CTestBitmap expected(210, 210), drawn(210, 210);
    raw(expected.Dc());
    EXPECT_EQ(1, scale.Draw(drawn.Dc(), QEL, QEL_DRAW_FULL));
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ("", FirstDifference(expected, drawn));
    CTestBitmap partial(210, 210); // a moving part, in every draw
    EXPECT_EQ(1, scale.Draw(partial.Dc(), QEL, 0));
    EXPECT_EQ("", FirstDifference(expected, partial));
}

// ---- straight types ----

TEST(ScaleView, StraightMarksAreOneMoreThanTheDivisionsWithEveryFifthLonger)
{
    for (int nType = 0; nType < 4; ++nType) {
        for (const int n : {1, 7, 10, 13, 100}) {
            SCOPED_TRACE(testing::Message() << "type " << nType << " divisions " << n);
            QELSCALEATTR attr = Attr(nType);
            attr.bPin = 0;
            const Scale scale = Make(attr);
            ASSERT_EQ(1, scale->SetProperty(2, n));
            // At 0 the fill is empty, and at y = bottom or x = left there is nothing of it.
            ExpectDrawn(*scale, [&](HDC hdc) { RawStraightMarks(hdc, nType, n); });
        }
    }
}

TEST(ScaleView, AVerticalScaleOfTenHasElevenTicks)
{
    // 10 10 50 90: w = 80, the base line at 80 or 40, ticks of 40, of 60 at 0, 5 and 10.
    for (const int nType : {0, 1}) {
        QELSCALEATTR attr = Attr(nType, {10, 10, 50, 90});
        attr.bPin = 0;
        const Scale scale = Make(attr);
        CRecording recording;
        ASSERT_EQ(1, scale->Draw(recording.Dc(), QEL, 0));
        int nShort = 0, nLong = 0;
        const Lines lines = recording.Only({"MoveTo", "LineTo"});
        for (std::size_t n = 1; n < lines.size(); ++n) {
            int x1 = 0, x2 = 0, y1 = 0, y2 = 0;
            if (std::sscanf(lines[n].c_str(), "LineTo %d,%d", &x2, &y2) != 2) continue;
            ASSERT_EQ(2, std::sscanf(lines[n - 1].c_str(), "MoveTo %d,%d", &x1, &y1));
            if (x1 == x2) {
                EXPECT_EQ(nType == 0 ? 80 : 40, x1);
                EXPECT_EQ(20, y1);
                EXPECT_EQ(180, y2);
                continue;
            }
            const bool bLong = y1 == 180 || y1 == 100 || y1 == 20;
            EXPECT_EQ(bLong ? 60 : 40, std::abs(x2 - x1)) << y1;
            ++(bLong ? nLong : nShort);
        }
        EXPECT_EQ(8, nShort);
        EXPECT_EQ(3, nLong);
    }
}

TEST(ScaleView, StraightFillAndPointerStandAtTheValue)
{
    const struct {
        uint32_t nLow, nHigh, nValue;
        int nUp, nAcross; // of a length of 102 and 62
    } rows[] = {
        {0, 10, 0, 0, 0},
        {0, 10, 3, 30, 18},
        {0, 10, 10, 102, 62},
        {0, 10, 11, 102, 62}, // above: all of it
        {5, 10, 4, 0, 0},     // below: nothing
        {5, 10, 6, 20, 12},
        {0, 7, 1, 14, 8},             // cut to whole pixels
        {0, 10, 0xFFFFFFFF, 102, 62}, // no sign
        {0x80000000, 0x80000000 + 4, 0x80000000 + 1, 25, 15},
    };
    for (int nType = 0; nType < 4; ++nType) {
        for (const auto& row : rows) {
            SCOPED_TRACE(testing::Message()
                         << nType << ": " << row.nValue << " of " << row.nLow << ".." << row.nHigh);
            const Scale scale = Make(Attr(nType));
            scale->SetProperty(4, row.nHigh);
            scale->SetProperty(5, row.nLow);
            scale->SetProperty(6, row.nValue);
            const int w = BOX.right - BOX.left, h = BOX.bottom - BOX.top;
            const int x = BOX.left + row.nAcross, y = BOX.bottom - row.nUp;
            ExpectDrawn(*scale, [&](HDC hdc) {
                RawStraightMarks(hdc, nType, 10); // the fill lies over the marks
                RawRect(hdc, nType < 2 ? RECT{BOX.left, y, BOX.right, BOX.bottom}
                                       : RECT{BOX.left, BOX.top, x, BOX.bottom});
                const POINT pins[4][2] = {{{BOX.left + w / 2, y}, {BOX.right, y}},
                                          {{BOX.left, y}, {BOX.right - w / 2, y}},
                                          {{x, BOX.top + h / 2}, {x, BOX.bottom}},
                                          {{x, BOX.top}, {x, BOX.bottom - h / 2}}};
                RawPin(hdc, pins[nType][0], pins[nType][1]);
            });
        }
    }
}

TEST(ScaleView, HiddenMarksLeaveFillAndPointer)
{
    for (int nType = 0; nType < 6; ++nType) {
        QELSCALEATTR attr = Attr(nType);
        attr.bHide = 1;
        const Scale scale = Make(attr);
        scale->SetProperty(6, 5);
        CTestBitmap drawn(210, 210);
        EXPECT_EQ(1, scale->Draw(drawn.Dc(), QEL, 0));
        EXPECT_EQ(0, CountPixels(drawn, MARK)) << nType;
        EXPECT_LT(0, CountPixels(drawn, FORE)) << nType;
        EXPECT_LT(0, CountPixels(drawn, PIN)) << nType;
        attr.bPin = 0;
        attr.nStyle = 0;
        const Scale bare = Make(attr);
        bare->SetProperty(6, 5);
        drawn.Fill(RGB(255, 255, 255));
        EXPECT_EQ(1, bare->Draw(drawn.Dc(), QEL, 0));
        EXPECT_EQ(0, CountPixels(drawn, PIN)) << nType;
        EXPECT_EQ(nType >= 4, IsBlank(drawn)) << nType; // the straight types always fill
    }
}

TEST(ScaleView, HiddenMarksAreNotDrawnAtAll)
{
    for (int nType = 0; nType < 6; ++nType) {
        SCOPED_TRACE(nType);
        const auto calls = [&](LONG bHide) {
            QELSCALEATTR attr = Attr(nType);
            attr.bHide = bHide;
            const Scale scale = Make(attr);
            scale->SetProperty(6, 5);
            CRecording recording;
            EXPECT_EQ(1, scale->Draw(recording.Dc(), QEL, QEL_DRAW_FULL));
            return recording.Only({"CreatePen", "LineTo"});
        };
        const Lines shown = calls(0), hidden = calls(1);
        ASSERT_EQ(2u, hidden.size()); // the pen of the pointer and its line
        ASSERT_LT(2u, shown.size());
        EXPECT_EQ(shown.back(), hidden.back());
        EXPECT_NE(shown.front(), hidden.front()); // the pen of the marks comes first
        EXPECT_EQ(1, std::count(shown.begin(), shown.end(), hidden.front()));
    }
}

// ---- the round type ----

constexpr struct {
    int nAngle;
    bool bClockwise;
} g_starts[] = {{90, true},  {270, true},  {180, true},  {360, true},
                {90, false}, {270, false}, {180, false}, {0, false}};

TEST(ScaleView, RoundScalesCountFromTheirStartInTheirDirection)
{
    for (uint32_t nCode = 0; nCode < 8; ++nCode) {
        for (const uint32_t nValue : {0U, 1U, 2U, 5U, 9U, 10U, 11U}) {
            SCOPED_TRACE(testing::Message() << "code " << nCode << " value " << nValue);
            const Scale scale = Make(Attr(4));
            scale->SetProperty(3, nCode);
            scale->SetProperty(6, nValue);
            const int nSweep = nValue > 10 ? 360 : static_cast<int>(nValue) * 36;
            const int nStart = g_starts[nCode].nAngle;
            const int nTo = g_starts[nCode].bClockwise ? nStart - nSweep : nStart + nSweep;
            ExpectDrawn(*scale, [&](HDC hdc) {
                RawRoundMarks(hdc, nStart, 10);
                RawSweep(hdc, nStart, nTo, g_starts[nCode].bClockwise);
                RawPin(hdc, At(HUB, nTo), At(CIRCLE, nTo));
            });
        }
    }
}

TEST(ScaleView, ARoundScaleOfTenHasTenTicks)
{
    QELSCALEATTR attr = Attr(4);
    attr.bPin = 0;
    attr.nStyle = 2; // no fill: only exactly 1 asks for it
    const Scale scale = Make(attr);
    for (const int n : {1, 4, 7, 10, 100}) {
        scale->SetProperty(2, n);
        CRecording recording;
        ASSERT_EQ(1, scale->Draw(recording.Dc(), QEL, 0));
        const Lines lines = recording.Only({"LineTo"});
        EXPECT_EQ(static_cast<std::size_t>(n), lines.size());
        ExpectDrawn(*scale, [&](HDC hdc) { RawRoundMarks(hdc, 90, n); });
    }
}

TEST(ScaleView, RoundTypesFillOnlyByTheStyle)
{
    for (const int nType : {4, 5}) {
        for (const uint32_t nStyle : {0U, 1U, 2U, 3U, 5U, 0x10000U, 0x50001U, 0x50003U}) {
            QELSCALEATTR attr = Attr(nType);
            attr.nStyle = nStyle;
            const Scale scale = Make(attr);
            scale->SetProperty(6, 5);
            CTestBitmap drawn(210, 210, 0x808080);
            EXPECT_EQ(1, scale->Draw(drawn.Dc(), QEL, 0));
            const bool bFills = (nStyle & 0xFFFF) == 1;
            EXPECT_EQ(bFills, CountPixels(drawn, FORE) > 0) << nType << "/" << nStyle;
            EXPECT_EQ(bFills,
                      drawn.At(CENTRE.x - 8, CENTRE.y + 5) == RGB(255, 255, 255)); // the hub
        }
    }
}

TEST(ScaleView, TurningTheDrawingTurnsTheRoundTypeWhereItStands)
{
    for (const auto& [nAngle, nOffset] : std::vector<std::pair<int, int>>{
             {90, 90}, {180, 180}, {270, 270}, {-90, -90}, {100, 90}, {450, 90}, {-359, -270}}) {
        SCOPED_TRACE(nAngle);
        const Scale scale = Make(Attr(4));
        scale->SetProperty(2, 7);
        scale->SetProperty(6, 4);
        EXPECT_EQ(1, scale->Rotate({50, 50}, nAngle));
        // Clockwise from the top: 4 of 10 are 144 degrees.
        ExpectDrawn(*scale, [&](HDC hdc) {
            RawRoundMarks(hdc, 90 + nOffset, 7);
            RawSweep(hdc, 90 + nOffset, 90 - 144 + nOffset, true);
            RawPin(hdc, At(HUB, 90 - 144 + nOffset), At(CIRCLE, 90 - 144 + nOffset));
        });
    }
    for (const int nType : {0, 1, 2, 3, 5}) { // and no other
        const Scale turned = Make(Attr(nType)), still = Make(Attr(nType));
        turned->SetProperty(6, 4), still->SetProperty(6, 4);
        turned->Rotate({50, 50}, 90);
        CTestBitmap expected(210, 210), drawn(210, 210);
        still->Draw(expected.Dc(), QEL, 0);
        turned->Draw(drawn.Dc(), QEL, 0);
        EXPECT_EQ("", FirstDifference(expected, drawn)) << nType;
    }
}

// ---- the arc type ----

TEST(ScaleView, ArcScalesRunFromEndToEndAndCountBackWithTheFirstFourCodes)
{
    const struct {
        LONG nStart, nEnd;
    } spans[] = {{-30, 210}, {0, 90}, {45, 315}, {210, -30}, {90, 0}};
    for (const auto& span : spans) {
        for (const uint32_t nCode : {0U, 3U, 4U, 7U}) {
            for (const uint32_t nValue : {0U, 3U, 7U, 10U, 12U}) {
                SCOPED_TRACE(testing::Message() << span.nStart << ".." << span.nEnd << " code "
                                                << nCode << " value " << nValue);
                const Scale scale = Make(Attr(5, {50, 50, 40, 30, 10, span.nStart, span.nEnd}));
                scale->SetProperty(3, nCode);
                scale->SetProperty(6, nValue);
                const bool bBack = nCode < 4;
                const int nPart = std::min<int>(nValue, 10) * (span.nEnd - span.nStart) / 10;
                const int nFrom = bBack ? span.nEnd : span.nStart;
                const int nTo = bBack ? span.nEnd - nPart : span.nStart + nPart;
                ExpectDrawn(*scale, [&](HDC hdc) {
                    RawArcMarks(hdc, span.nStart, span.nEnd, 10);
                    RawSweep(hdc, nFrom, nTo, nTo < nFrom);
                    RawPin(hdc, At(HUB, nTo), At(CIRCLE, nTo));
                });
            }
        }
    }
}

// Where both ends of the arc fall on one point, it would come out as a whole circle. From 355
// degrees on it is meant as one.
TEST(ScaleView, AnArcTooShortForTwoEndsIsLeftOutAndItsTicksStay)
{
    int nLeftOut = 0;
    for (const LONG nStart : {40, 0, 130})
        for (const LONG nSweep : {1, 2, 5, 30, 354, 355, 359, 360, -1, -5, -354, -355, -360}) {
            SCOPED_TRACE(testing::Message() << nStart << " over " << nSweep);
            QELSCALEATTR attr = Attr(5, {50, 50, 40, 30, 10, nStart, nStart + nSweep});
            attr.bPin = 0;
            attr.nStyle = 0;
            const Scale scale = Make(attr);
            CRecording recording; // a circle of 6 pixels
            EXPECT_EQ(1, scale->Draw(recording.Dc(), {0, 0, 20, 20}, QEL_DRAW_FULL));
            const POINT from = At(6, nStart), to = At(6, nStart + nSweep);
            const bool bOnePoint = from.x == to.x && from.y == to.y;
            const bool bDrawn = !bOnePoint || std::abs(nSweep) >= 355;
            EXPECT_EQ(bDrawn ? 1U : 0U, recording.Only({"Arc"}).size());
            EXPECT_EQ(11U, recording.Only({"LineTo"}).size());
            nLeftOut += !bDrawn;
        }
    EXPECT_GT(nLeftOut, 5);
}

// Where both ends of the part fall on one point, that would come out as a full disc. A full turn
// does so too, and is one.
TEST(ScaleView, APartWithoutAnExtentIsNotFilled)
{
    const struct {
        LONG nStart, nEnd;
        uint32_t nValue;
        std::size_t nSectors;
    } rows[] = {{40, 400, 0, 0}, {40, 400, 1, 0}, {40, 400, 90, 1}, {40, 400, 360, 1},
                {400, 40, 0, 0}, {400, 40, 1, 0}, {400, 40, 90, 1}, {400, 40, 360, 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.nStart << " to " << row.nEnd << ": " << row.nValue);
        const Scale scale = Make(Attr(5, {50, 50, 40, 30, 10, row.nStart, row.nEnd}));
        ASSERT_EQ(1, scale->SetProperty(3, 4)); // from the start on
        ASSERT_EQ(1, scale->SetProperty(4, 360));
        ASSERT_EQ(1, scale->SetProperty(6, row.nValue));
        CRecording recording; // a circle of 6 pixels, on which a degree is less than one
        EXPECT_EQ(1, scale->Draw(recording.Dc(), {0, 0, 20, 20}, QEL_DRAW_FULL));
        EXPECT_EQ(row.nSectors, recording.Only({"Pie"}).size());
    }
}

TEST(ScaleGeometry, AnEmptyRangeHasNoLength)
{
    for (const bool bFloat : {false, true})
        for (const uint32_t nHigh : {0U, 4U, 5U})
            for (const uint32_t nValue : {0U, 4U, 5U, 6U, 100U})
                EXPECT_EQ(0,
                          ValueLength({5, nHigh, nValue, static_cast<float>(nValue), bFloat}, 80))
                    << nHigh << " " << nValue;
    EXPECT_EQ(80, ValueLength({5, 6, 6, 0, false}, 80));
}

TEST(ScaleView, AnArcOfTenHasElevenTicks)
{
    QELSCALEATTR attr = Attr(5);
    attr.bPin = 0;
    attr.nStyle = 0;
    const Scale scale = Make(attr);
    for (const int n : {1, 8, 10, 100}) {
        scale->SetProperty(2, n);
        CRecording recording;
        ASSERT_EQ(1, scale->Draw(recording.Dc(), QEL, 0));
        EXPECT_EQ(n + 1u, recording.Only({"LineTo"}).size());
        ExpectDrawn(*scale, [&](HDC hdc) { RawArcMarks(hdc, -30, 210, n); });
    }
}

// ---- geometry ----

TEST(ScaleView, RadiiKeepTheirProportionToTheTickRadius)
{
    const struct {
        LONG geometry[5];
        RECT rcMapped;
        const char* pszRound;
    } rows[] = {
        {{50, 50, 40, 30, 10}, {20, 20, 180, 180}, "100,100 80 60 20"},
        {{50, 50, 40, 30, 10}, {20, 20, 181, 191}, "100,105 80 60 20"}, // cut to whole pixels
        {{50, 50, 40, 30, 10}, {0, 0, 300, 100}, "150,50 50 37 12"},    // 30 * 50 / 40
        {{50, 50, 3, 2, 1}, {0, 0, 20, 20}, "10,10 10 6 3"},
        {{50, 50, 40, 50, 0}, {0, 0, 80, 80}, "40,40 40 50 0"}, // beyond the ticks
        {{5, 5, 5, 3, 2}, {0, 0, 50, 50}, "25,25 25 15 10"},
    };
    for (const auto& row : rows) {
        const RoundScale round = MakeRoundScale(row.geometry, row.rcMapped);
        EXPECT_EQ(row.pszRound,
                  std::to_string(round.ptCentre.x) + "," + std::to_string(round.ptCentre.y) + " " +
                      std::to_string(round.nTick) + " " + std::to_string(round.nCircle) + " " +
                      std::to_string(round.nHub));
    }
}

TEST(ScaleView, WithoutGeometryNothingIsDrawn)
{
    const struct {
        int nType;
        std::vector<LONG> geometry;
        int nRef;
        RECT rcQel;
    } rows[] = {
        {0, {10, 10, 10, 50}, 100, QEL},
        {2, {10, 10, 5, 50}, 100, QEL},
        {1, {10, 10, 50, 50}, 0, QEL},
        {3, {10, 10, 50, 50}, 100, {5, 5, 5, 100}},
        {4, {50, 50, 0, 30, 10}, 100, QEL},
        {4, {50, 50, -4, 30, 10}, 100, QEL},
        {5, {50, 50, 40, 30, 10, 0, 90}, 0, QEL},
        {4, {50, 50, 40, 30, 10}, 100, {0, 0, 1, 100}}, // a tick radius of 0
    };
    for (const auto& row : rows) {
        const Scale scale = Make(Attr(row.nType, row.geometry), row.nRef);
        scale->SetProperty(6, 5);
        CTestBitmap drawn(210, 210, 0x808080);
        scale->Draw(drawn.Dc(), row.rcQel, QEL_DRAW_FULL);
        EXPECT_TRUE(IsBlank(drawn)) << row.nType;
    }
}

// ---- values ----

uint32_t Get(const CQELViewScale& scale, uint32_t nSelector)
{
    uint32_t nValue = 0xDEADBEEF;
    EXPECT_EQ(1, scale.GetProperty(nSelector, &nValue)) << nSelector;
    return nValue;
}

TEST(ScaleView, SettingsHaveDefaultsAndAreReadBack)
{
    const uint32_t defaults[] = {0xAAAAAA, 0xAAAAAA, 10, 0, 10, 0, 0};
    CQELViewScale scale(100, 100);
    for (uint32_t n = 0; n < 7; ++n) EXPECT_EQ(defaults[n], Get(scale, n)) << n;
    EXPECT_EQ(0.0F, scale.FloatValue());
    for (uint32_t n = 0; n < 7; ++n) EXPECT_EQ(1, scale.SetProperty(n, 20 + n));
    for (uint32_t n = 0; n < 7; ++n) EXPECT_EQ(20 + n, Get(scale, n));
    for (const uint32_t n : {7U, 8U, 24U, 33U, 34U, 0xFFFFFFFFU}) {
        uint32_t nValue = 77;
        EXPECT_EQ(0, scale.SetProperty(n, 1)) << n;
        EXPECT_EQ(0, scale.GetProperty(n, &nValue)) << n;
        EXPECT_EQ(77u, nValue);
    }
    for (const uint32_t nValue : {0U, 0x80000000U, 0xFFFFFFFFU})
        for (const uint32_t n : {0U, 1U, 3U, 4U, 5U, 6U}) {
            EXPECT_EQ(1, scale.SetProperty(n, nValue)) << n; // only the divisions are held
            EXPECT_EQ(nValue, Get(scale, n)) << n;
        }
}

TEST(ScaleView, DivisionsAreHeldBetweenLeastAndMost)
{
    const struct {
        LONG nMin, nMax;
        uint32_t nSet;
        int nResult;
        uint32_t nKept;
    } rows[] = {{1, 100, 500, 1, 100}, {1, 100, 100, 1, 100}, {1, 100, 1, 1, 1},
                {1, 100, 0, 0, 10},    {5, 20, 3, 1, 5},      {5, 20, 5, 1, 5},
                {5, 20, 21, 1, 20},    {5, 20, 0, 0, 10}};
    for (const auto& row : rows) {
        QELSCALEATTR attr = Attr(1);
        attr.nMin = row.nMin;
        attr.nMax = row.nMax;
        const Scale scale = Make(attr);
        EXPECT_EQ(row.nResult, scale->SetProperty(2, row.nSet));
        EXPECT_EQ(row.nKept, Get(*scale, 2)) << row.nSet;
    }
}

TEST(ScaleView, DivisionsAreHeldAgainWhenTheyAreDrawnTheMostHavingTheLastWord)
{
    const struct {
        int nDivisions, nLeast, nMost, nDrawn;
    } rows[] = {{10, 1, 100, 10}, {10, 20, 100, 20}, {10, 1, 5, 5},
                {10, 20, 5, 5},   {10, 1, 0, 0},     {10, 1, -7, 0},
                {0, 0, 9, 0},     {-4, -9, 9, 0},    {99999, 1, 100000, 10000}};
    for (const auto& row : rows) {
        const int n = DrawnDivisions(HeldDivisions(row.nDivisions, row.nLeast, row.nMost));
        EXPECT_EQ(row.nDrawn, n < 1 ? 0 : n) << row.nDivisions;
    }
    for (int nType = 0; nType < 6; ++nType) { // marks without ticks
        QELSCALEATTR attr = Attr(nType);
        attr.nMax = 0;
        attr.nStyle = 0;
        attr.bPin = 0;
        const Scale scale = Make(attr);
        CRecording recording;
        ASSERT_EQ(1, scale->Draw(recording.Dc(), QEL, 0));
        EXPECT_EQ(nType < 4 ? 1u : 0u, recording.Only({"LineTo"}).size()) << nType; // the base line
        EXPECT_EQ(nType < 4 ? 0u : 1u, recording.Only({"Ellipse", "Arc"}).size()) << nType;
    }
}

TEST(ScaleView, ACircleLargerThanAnyPictureIsLeftOutAndItsTicksStay)
{
    // A tick radius of one unit, two pixels; the circle is so many times as large.
    for (const int nTimes : {32767, 32769}) {
        const std::size_t nCurves = nTimes == 32767 ? 1 : 0; // 131,072 pixels lie between
        for (int nType = 4; nType < 6; ++nType) {
            SCOPED_TRACE(testing::Message() << nType << ": " << nTimes);
            QELSCALEATTR attr = Attr(nType, {50, 50, 1, nTimes, 0, -30, 210});
            attr.nStyle = 0;
            CRecording recording;
            ASSERT_EQ(1, Make(attr)->Draw(recording.Dc(), QEL, 0));
            EXPECT_EQ(nCurves, recording.Only({"Ellipse", "Arc"}).size());
            EXPECT_LE(10u, recording.Only({"LineTo"}).size());
            attr.bHide = 1; // the fill alone, to three tenths
            attr.nStyle = 1;
            const Scale filled = Make(attr);
            filled->SetProperty(6, 3);
            filled->SetDraftParam(1); // no gradient, which would be as large
            CRecording fill;
            ASSERT_EQ(1, filled->Draw(fill.Dc(), QEL, 0));
            EXPECT_EQ(nCurves, fill.Only({"Pie"}).size());
        }
    }
}

TEST(ScaleView, AnEmptyRangeCountsFromZeroToTheDivisionsAndStaysStored)
{
    const struct {
        uint32_t nLow, nHigh;
    } rows[] = {{0, 0}, {10, 10}, {10, 5}, {0xFFFFFFFF, 3}, {0x80000000, 0x7FFFFFFF}};
    // More divisions than are ever drawn count as they are all the same.
    const auto expectSame = [&](int nType, uint32_t nDivisions, uint32_t nValue) {
        for (const auto& row : rows) {
            SCOPED_TRACE(testing::Message()
                         << nType << ": " << row.nLow << ".." << row.nHigh << " in " << nDivisions);
            QELSCALEATTR attr = Attr(nType);
            attr.nMax = 100000;
            const Scale broken = Make(attr), whole = Make(attr);
            for (const Scale* p : {&broken, &whole}) {
                (*p)->SetProperty(2, nDivisions);
                (*p)->SetProperty(6, nValue);
            }
            broken->SetProperty(4, row.nHigh), broken->SetProperty(5, row.nLow);
            whole->SetProperty(4, nDivisions), whole->SetProperty(5, 0);
            CTestBitmap expected(210, 210), drawn(210, 210);
            whole->Draw(expected.Dc(), QEL, 0);
            broken->Draw(drawn.Dc(), QEL, 0);
            EXPECT_EQ("", FirstDifference(expected, drawn));
            EXPECT_EQ(row.nHigh, Get(*broken, 4));
            EXPECT_EQ(row.nLow, Get(*broken, 5));
        }
    };
    for (int nType = 0; nType < 6; ++nType) {
        expectSame(nType, 8, 3);
        expectSame(nType, 50000, 25000);
    }
}

TEST(ScaleView, TheFormThatWasSetLastIsDrawn)
{
    for (int nType = 0; nType < 6; ++nType) {
        SCOPED_TRACE(nType);
        // 2.5 of 10 is 10 of 40.
        const Scale real = Make(Attr(nType)), whole = Make(Attr(nType));
        whole->SetProperty(4, 40);
        whole->SetProperty(6, 10);
        real->SetProperty(6, 9);
        EXPECT_EQ(1, real->SetValue(2.5F));
        CTestBitmap expected(210, 210), drawn(210, 210), again(210, 210);
        whole->Draw(expected.Dc(), QEL, 0);
        real->Draw(drawn.Dc(), QEL, 0);
        EXPECT_EQ("", FirstDifference(expected, drawn));
        EXPECT_EQ(9u, Get(*real, 6)); // each form keeps its own
        EXPECT_EQ(2.5F, real->FloatValue());
        real->SetProperty(4, 10); // no value: the form stays
        real->Draw(again.Dc(), QEL, 0);
        EXPECT_EQ("", FirstDifference(expected, again));
        real->SetProperty(6, 9);
        whole->SetProperty(6, 36);
        expected.Fill(RGB(255, 255, 255)), drawn.Fill(RGB(255, 255, 255));
        whole->Draw(expected.Dc(), QEL, 0);
        real->Draw(drawn.Dc(), QEL, 0);
        EXPECT_EQ("", FirstDifference(expected, drawn));
        for (const auto& [fValue, nValue] :
             std::vector<std::pair<float, uint32_t>>{{-3.5F, 0}, {99.5F, 10}}) {
            real->SetValue(fValue);
            whole->SetProperty(4, 10), whole->SetProperty(6, nValue);
            expected.Fill(RGB(255, 255, 255)), drawn.Fill(RGB(255, 255, 255));
            whole->Draw(expected.Dc(), QEL, 0);
            real->Draw(drawn.Dc(), QEL, 0);
            EXPECT_EQ("", FirstDifference(expected, drawn)) << fValue;
        }
    }
}

TEST(ScaleView, HatchAndItsColorsStayWithTheScaleAndTheColorGoesOn)
{
    CQELView view(g_elementTypes, SIZE{100, 100});
    ASSERT_EQ(1, view.NewTree());
    CQELViewElm *pScale = nullptr, *pShape = nullptr;
    ASSERT_EQ(1, view.CreateElement(view.Root(), nullptr, QEL_TYPE_SCALE, &pScale));
    ASSERT_EQ(1, view.CreateElement(pScale, nullptr, QEL_TYPE_RECT, &pShape));
    QELSHAPEATTR attr = FilledAttr({10, 10, 20, 20});
    attr.nFlags = QEL_FLAG_DRAFT_PARAM | QEL_FLAG_COLOR_PARAM;
    ASSERT_EQ(1, pShape->SetAttrBlock(&attr));
    EXPECT_EQ(1, pScale->SetDraftParam(37));
    EXPECT_EQ(1, pScale->SetDraftForeParam(5));
    EXPECT_EQ(1, pScale->SetDraftBackParam(6));
    QELSHAPEATTR after{};
    ASSERT_EQ(1, pShape->GetAttrBlock(&after));
    EXPECT_EQ(0, std::memcmp(&attr, &after, sizeof after)); // they stay with the scale
    EXPECT_EQ(1, pScale->SetColorParam(0xABCDEF));          // the colour goes on
    ASSERT_EQ(1, pShape->GetAttrBlock(&after));
    EXPECT_EQ(0xABCDEFu, after.clrA);
}

TEST(ScaleView, BlinkingColorsAreBlackInTheDarkPhase)
{
    for (int nType = 0; nType < 6; ++nType) {
        const Scale scale = Make(Attr(nType));
        scale->SetProperty(0, 0x800000FF);
        scale->SetProperty(1, 0x8000FF00);
        scale->SetProperty(6, 4);
        scale->SetDraftForeParam(0x80FF0000);
        scale->SetDraftParam(0);
        for (const int nPhase : {0, 1}) {
            scale->SetBlink(nPhase);
            CTestBitmap drawn(210, 210);
            scale->Draw(drawn.Dc(), QEL, 0);
            for (const COLORREF clr : {0x0000FF, 0x00FF00, 0xFF0000})
                EXPECT_EQ(nPhase == 0, CountPixels(drawn, clr) > 0) << nType << " " << clr;
            EXPECT_EQ(nPhase == 1, CountPixels(drawn, 0) > 0) << nType;
        }
        EXPECT_EQ(0x800000FFu, Get(*scale, 0));
    }
}

// ---- masks, records, copies ----

TEST(ScaleView, MaskTellsWhatTheScaleFollows)
{
    for (int nType = 0; nType < 6; ++nType)
        for (const LONG bHide : {0, 1, -1})
            for (const LONG bPin : {0, 1, 5})
                for (const DWORD nStyle : {0u, 1u, 3u, 0x30001u}) {
                    QELSCALEATTR attr = Attr(nType);
                    attr.bHide = bHide;
                    attr.bPin = bPin;
                    attr.nStyle = nStyle;
                    uint32_t nMask = (bHide ? 0 : 0x14) | (bPin ? 0x2 : 0) | 0x60;
                    nMask |= nType < 4 ? 0x80 : (nStyle & 0xFFFF) == 1 ? 0x22088 : 0x22008;
                    EXPECT_EQ(nMask, Make(attr)->GetParamMask());
                }
}

TEST(ScaleView, RecordRulesAreThoseOfTheDocument)
{
    for (const auto& [nSize, nType, nResult] : std::vector<std::tuple<DWORD, LONG, int>>{
             {60, 0, 1}, {60, 5, 1}, {60, 6, 0}, {60, -1, 0}, {59, 1, 0}, {61, 1, 0}}) {
        const Scale scale = Make(Attr(4));
        int nOwn = 0;
        EXPECT_EQ(1, scale->GetAttrBlockSize(&nOwn));
        EXPECT_EQ(60, nOwn);
        const QELSCALEATTR attr{nSize, 77, 1, nType, 5, 2, 9, 0, {9, 8, 7, 6, 5, 4, 3}};
        EXPECT_EQ(nResult, scale->SetAttrBlock(&attr));
        const QELSCALEATTR expected = nResult ? attr : Attr(4);
        QELSCALEATTR after{};
        EXPECT_EQ(1, scale->GetAttrBlock(&after));
        EXPECT_EQ(0, std::memcmp(&expected, &after, sizeof after)) << nSize << "/" << nType;
    }
}

TEST(ScaleView, ANullRecordAndAHatchThatThereIsNotAreRefused)
{
    const Scale scale = Make(Attr(3));
    scale->SetProperty(6, 5);
    QELSCALEATTR before{}, after{};
    CTestBitmap drawn(210, 210), again(210, 210);
    ASSERT_EQ(1, scale->GetAttrBlock(&before));
    ASSERT_EQ(1, scale->Draw(drawn.Dc(), QEL, 0));
    EXPECT_EQ(0, scale->GetAttrBlock(nullptr));
    EXPECT_EQ(0, scale->SetAttrBlock(nullptr));
    for (const uint32_t nDraft : {38U, 39U, 0x7FFFFFFFU, 0xFFFFFFFFU})
        EXPECT_EQ(0, scale->SetDraftParam(nDraft)) << nDraft;
    ASSERT_EQ(1, scale->GetAttrBlock(&after));
    EXPECT_EQ(0, std::memcmp(&before, &after, sizeof after));
    ASSERT_EQ(1, scale->Draw(again.Dc(), QEL, 0));
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ("", FirstDifference(drawn, again));
    EXPECT_EQ(1, scale->SetDraftParam(37));
}

TEST(ScaleView, ACopyDrawsTheSame)
{
    for (int nType = 0; nType < 6; ++nType) {
        CQELView view(g_elementTypes, SIZE{100, 100});
        ASSERT_EQ(1, view.NewTree());
        CQELViewElm *pElm = nullptr, *pGroup = nullptr, *pCopy = nullptr;
        ASSERT_EQ(1, view.CreateElement(view.Root(), nullptr, QEL_TYPE_SCALE, &pElm));
        ASSERT_EQ(1, view.CreateElement(view.Root(), nullptr, QEL_TYPE_GROUP, &pGroup));
        const QELSCALEATTR attr = Attr(nType);
        ASSERT_EQ(1, pElm->SetAttrBlock(&attr));
        auto* pScale = static_cast<CQELViewScale*>(pElm);
        for (uint32_t n = 0; n < 7; ++n)
            ASSERT_EQ(1, pScale->SetProperty(n, n < 2 ? 0x1000 * n : 11 + n));
        pScale->SetDraftParam(5);
        pScale->SetDraftForeParam(FORE);
        pScale->SetDraftBackParam(BACK);
        pScale->SetProperty(5, 4), pScale->SetProperty(6, 9);
        ASSERT_EQ(1, pScale->Duplicate(pGroup, &pCopy));
        EXPECT_EQ(pGroup, pCopy->Parent());
        EXPECT_EQ(7u, static_cast<CQELViewScale*>(pCopy)->HostId());
        CTestBitmap expected(210, 210), drawn(210, 210);
        pScale->Draw(expected.Dc(), QEL, 0);
        pCopy->Draw(drawn.Dc(), QEL, 0);
        EXPECT_FALSE(IsBlank(drawn));
        EXPECT_EQ("", FirstDifference(expected, drawn)) << nType;
    }
}

TEST(ScaleView, LeavesTheDeviceContextAsItWasAndDeletesWhatItMakes)
{
    for (int nType = 0; nType < 6; ++nType) {
        for (const int nDirection : {AD_CLOCKWISE, AD_COUNTERCLOCKWISE}) {
            const Scale scale = Make(Attr(nType));
            scale->SetProperty(6, 5);
            CTestBitmap drawn(210, 210);
            ::MoveToEx(drawn.Dc(), 3, 4, nullptr);
            ::SetArcDirection(drawn.Dc(), nDirection);
            ::SetBkColor(drawn.Dc(), RGB(1, 2, 3));
            ::SetTextColor(drawn.Dc(), RGB(4, 5, 6));
            const std::string before = DcState(drawn.Dc());
            ASSERT_EQ(1, scale->Draw(drawn.Dc(), QEL, QEL_DRAW_FULL));
            EXPECT_EQ(before, DcState(drawn.Dc())) << nType;
        }
        const Scale scale = Make(Attr(nType));
        scale->SetProperty(6, 5);
        CRecording recording;
        ASSERT_EQ(1, scale->Draw(recording.Dc(), QEL, QEL_DRAW_FULL));
        int nMade = 0, nDeleted = 0;
        for (const std::string& line : recording.Calls()) {
            nMade += line.starts_with("Create");
            nDeleted += line.starts_with("DeleteObject");
        }
        EXPECT_LE(3, nMade) << nType; // two pens and the hatch
        EXPECT_EQ(nMade, nDeleted) << nType;
    }
}

// ---- places and values that it has not ----

TEST(ScaleView, WithoutAnExtentIsNowhere)
{
    UnitMap map{};
    const struct {
        QELSCALEATTR attr;
        RECT rcQel;
    } rows[] = {{Attr(0, {10, 20, 10, 71}), QEL},
                {Attr(4, {50, 50, 0, 30, 10}), QEL},
                {Attr(4, {50, 50, 1, 30, 10}), {0, 0, 60, 60}}}; // 1.2 pixels have no radius
    for (const auto& row : rows) {
        const Scale scale = Make(row.attr);
        for (const LONG n : {0, 10, 20, 30, 50, 100})
            EXPECT_FALSE(scale->IsHit(row.rcQel, {n, n})) << n;
    }
    EXPECT_FALSE(Make(rows[0].attr)->MapUnits(QEL, &map));
    EXPECT_TRUE(Make(Attr(0))->IsHit(QEL, {20, 40}));
    EXPECT_TRUE(Make(Attr(0))->MapUnits(QEL, &map));
    EXPECT_FALSE(Make(Attr(0))->MapUnits({0, 0, 0, 200}, &map));
    EXPECT_TRUE(Make(Attr(4))->IsHit(QEL, CENTRE));
    EXPECT_FALSE(Make(Attr(4))->IsHit(QEL, {CENTRE.x - TICK + 1, CENTRE.y - TICK + 1}));
}

TEST(ScaleView, HasTheOneValueAndNoPins)
{
    const Scale scale = Make(Attr(0));
    CHostDriven* pHost = scale->HostSide();
    EXPECT_EQ(1, pHost->SetValue(0, 4.5F));
    EXPECT_EQ(0, pHost->SetValue(1, 7.5F));
    float fValue = -1;
    EXPECT_EQ(0, pHost->GetValue(1, &fValue));
    EXPECT_EQ(-1, fValue);
    EXPECT_EQ(1, pHost->GetValue(0, &fValue));
    EXPECT_EQ(4.5F, fValue);
}

} // namespace
