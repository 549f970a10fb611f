#include "meter/ClockMeter.h"

#include "base/GdiScopes.h"
#include "base/PixelPen.h"
#include "include/QELEngine.h"
#include "meter/DialComponents.h"
#include "meter/DialGeometry.h"
#include "meter/DialScopes.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr int32_t MARKS = 60;
constexpr int32_t MARKS_AN_HOUR = 5;
constexpr int32_t MARKS_A_QUARTER = 15;
constexpr float DEGREES_A_MARK = 6.0F;

enum class Shape { Line, Disc, Bar };

// The shape of a mark, and its measures in thousandths of the radius: the middle and the half of
// its length, and the half of its width.
struct Mark {
    Shape shape;
    int32_t nMiddle;
    int32_t nHalfLength;
    int32_t nHalfWidth;
};

struct ClockStyle {
    Mark quarter;
    Mark hour;
    Mark minute;
};

constexpr ClockStyle g_styles[] = {
    {{Shape::Bar, 925, 45, 18}, {Shape::Disc, 945, 22, 22}, {Shape::Line, 950, 18, 0}},
    {{Shape::Line, 920, 50, 14}, {Shape::Line, 925, 45, 9}, {Shape::Line, 950, 20, 0}},
    {{Shape::Disc, 940, 34, 34}, {Shape::Disc, 945, 24, 24}, {Shape::Disc, 950, 8, 8}},
    {{Shape::Bar, 925, 45, 18}, {Shape::Line, 930, 40, 9}, {Shape::Line, 960, 10, 0}},
};
constexpr int32_t STYLE_COUNT = sizeof g_styles / sizeof g_styles[0];

constexpr int32_t Thousandths(int32_t nRadius, int32_t nParts)
{
    return static_cast<int32_t>((static_cast<int64_t>(nRadius) * nParts + 500) / 1000);
}

constexpr const Mark& MarkAt(const ClockStyle& style, int32_t nMark)
{
    if (nMark % MARKS_A_QUARTER == 0) return style.quarter;
    return nMark % MARKS_AN_HOUR == 0 ? style.hour : style.minute;
}

constexpr int32_t AtLeast(int32_t n, int32_t nLeast)
{
    return n < nLeast ? nLeast : n;
}

// The marks of one dial.
class CMarks {
public:
    CMarks(HDC hdc, POINT ptCentre, int32_t nRadius, COLORREF clr, CPixelScale px) noexcept
        : m_hdc(hdc), m_ptCentre(ptCentre), m_nRadius(nRadius), m_clr(clr), m_px(px)
    {
    }

    void Draw(int32_t nMark, const Mark& mark) const
    {
        const float fAngle = static_cast<float>(nMark) * DEGREES_A_MARK;
        if (mark.shape == Shape::Line) DrawLine(mark, fAngle);
        if (mark.shape == Shape::Disc) DrawDisc(mark, fAngle);
        if (mark.shape == Shape::Bar) // only at the quarters, where it stands upright or lies
            DrawBar(mark, nMark % (2 * MARKS_A_QUARTER) == 0, fAngle);
    }

private:
    [[nodiscard]] POINT At(int32_t nParts, float fAngle) const
    {
        return PolarPoint(m_ptCentre, Thousandths(m_nRadius, nParts), fAngle, m_px);
    }

    // As far to each side of a pixel.
    [[nodiscard]] RECT Around(POINT pt, int32_t nX, int32_t nY) const
    {
        return {WrapSub(pt.x, nX), WrapSub(pt.y, nY), WrapAdd(pt.x, nX + m_px(1)),
                WrapAdd(pt.y, nY + m_px(1))};
    }

    void DrawLine(const Mark& mark, float fAngle) const
    {
        CScaleLine::OfWidth(2 * Thousandths(m_nRadius, mark.nHalfWidth), m_clr, m_px)
            .Draw(m_hdc, At(mark.nMiddle + mark.nHalfLength, fAngle),
                  At(mark.nMiddle - mark.nHalfLength, fAngle));
    }

    void DrawDisc(const Mark& mark, float fAngle) const
    {
        const CFigureScope figure(m_hdc, 1, m_clr, m_clr, m_px);
        if (!figure.IsReady()) return;
        const int32_t nHalf = AtLeast(Thousandths(m_nRadius, mark.nHalfWidth), m_px(1));
        const RECT rc = StrokedBox(Around(At(mark.nMiddle, fAngle), nHalf, nHalf), 1, m_px);
        DrawPixelEllipse(m_hdc, rc, m_px);
    }

    void DrawBar(const Mark& mark, bool bUpright, float fAngle) const
    {
        const CFigureScope figure(m_hdc, 1, m_clr, m_clr, m_px);
        if (!figure.IsReady()) return;
        const int32_t nLong = AtLeast(Thousandths(m_nRadius, mark.nHalfLength), m_px(1));
        const int32_t nAcross = AtLeast(Thousandths(m_nRadius, mark.nHalfWidth), m_px(1));
        const int32_t nX = bUpright ? nAcross : nLong;
        const int32_t nY = bUpright ? nLong : nAcross;
        DrawPixelRectangle(m_hdc, Around(At(mark.nMiddle, fAngle), nX, nY), 1, m_px);
    }

    HDC m_hdc;
    POINT m_ptCentre;
    int32_t m_nRadius;
    COLORREF m_clr;
    CPixelScale m_px;
};

} // namespace

int CClockScale::Draw(HDC hdc, POINT ptCentre, int32_t nRadius, int32_t nAxisStyle) const
{
    if (!IsDrawableRadius(nRadius, m_px)) return 0;
    if (nAxisStyle < 0 || nAxisStyle >= STYLE_COUNT) nAxisStyle = 0;
    const CMarks marks(hdc, ptCentre, nRadius, m_clr, m_px);
    for (int32_t i = 0; i < MARKS; ++i) marks.Draw(i, MarkAt(g_styles[nAxisStyle], i));
    return 1;
}

namespace {

constexpr int32_t HOURS = 12;
constexpr float DEGREES_AN_HOUR = 30.0F;
constexpr float TOP = 180.0F;
constexpr int32_t PLACE_PERCENT = 76; // of the radius, for the middle of a numeral
constexpr int32_t HEIGHT_PARTS = 5;   // of the radius
constexpr int32_t MIN_HEIGHT = 8;

FontCell CellFor(const CMeter& meter, int32_t nRadius)
{
    FontCell cell{};
    meter.GetFontSize(0, &cell);
    if (meter.GetFontSize()) return cell;
    cell.nHeight = nRadius / HEIGHT_PARTS;
    cell.nHeight = AtLeast(cell.nHeight, meter.Px()(MIN_HEIGHT));
    cell.nWidth = WrapMulDiv(cell.nHeight, 9, 20);
    return cell;
}

} // namespace

CClockMark::CClockMark(const CMeter& meter, int32_t nRadius, COLORREF clr) noexcept
    : m_nRadius(nRadius), m_px(meter.Px()), m_cell(CellFor(meter, nRadius)),
      m_hFont(MakeMeterFont(m_cell, FW_BOLD, m_px)), m_clr(clr)
{
}

CClockMark::~CClockMark()
{
    if (m_hFont) ::DeleteObject(m_hFont);
}

int CClockMark::Draw(HDC hdc, POINT ptCentre) const
{
    if (!m_hFont || !IsDrawableRadius(m_nRadius, m_px)) return 0;
    for (int32_t nHour = 1; nHour <= HOURS; ++nHour) DrawNumeral(hdc, ptCentre, nHour);
    return 1;
}

void CClockMark::DrawNumeral(HDC hdc, POINT ptCentre, int32_t nHour) const
{
    char szText[12];
    std::snprintf(szText, sizeof szText, "%d", static_cast<int>(nHour));
    const POINT pt = PolarPoint(ptCentre, WrapMulDiv(m_nRadius, PLACE_PERCENT, 100),
                                TOP + static_cast<float>(nHour) * DEGREES_AN_HOUR, m_px);
    SIZE size{static_cast<LONG>(std::strlen(szText)) * m_cell.nWidth, m_cell.nHeight};
    MeasureMeterText(hdc, szText, m_hFont, m_cell.bWide, &size);
    DrawMeterText(hdc, {WrapSub(pt.x, size.cx / 2), WrapSub(pt.y, size.cy / 2)}, szText, m_hFont,
                  m_clr, m_cell.bWide);
}

int CClockMeter::DrawScale(HDC hdc)
{
    return CClockScale(ScaleColor(), Px()).Draw(hdc, Centre(), Radius(), AxisStyle());
}

int CClockMeter::DrawAxis(HDC)
{
    return 0;
}

int CClockMeter::DrawLabels(HDC hdc)
{
    return CClockMark(*this, Radius(), LabelColor()).Draw(hdc, Centre());
}

int CClockMeter::DrawPin(HDC hdc, int32_t, uint32_t)
{
    m_drawn = m_pClock ? *m_pClock : ClockTimes::Now();
    m_bDrawn = true;
    return CClockPin(Radius(), PinColor(), FaceColor(), Px())
        .Draw(hdc, Centre(), PinStyle(), m_drawn);
}

int CClockMeter::ErasePin(HDC hdc, int32_t, uint32_t nFlags)
{
    if (nFlags & QEL_DRAW_FULL) return 1;
    if (!m_bDrawn) return 0;
    return CClockPin(Radius(), PinColor(), FaceColor(), Px())
        .Erase(hdc, Centre(), PinStyle(), m_drawn);
}
