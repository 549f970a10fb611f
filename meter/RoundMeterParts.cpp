#include "meter/RoundMeterParts.h"

#include "base/PixelPen.h"
#include "base/Refusals.h"
#include "base/WrapMath.h"
#include "meter/DialComponents.h"
#include "meter/DialGeometry.h"
#include "meter/DialScopes.h"

#include <cstring>

namespace {

// A tick as data, in thousandths of the radius.
struct TickShape {
    int32_t nOuter;
    int32_t nInner;
    int32_t nWidth; // of a stroke, and half of a wedge's broad end
};

struct TickStyle {
    bool bWedge;
    TickShape major;
    TickShape minor;
};

constexpr TickStyle g_tickStyles[] = {
    {false, {980, 830, 26}, {980, 880, 14}},
    {true, {975, 820, 28}, {975, 885, 16}},
    {false, {990, 810, 26}, {990, 870, 14}},
    {true, {985, 810, 28}, {985, 865, 16}},
};
constexpr int32_t TICK_STYLES = sizeof g_tickStyles / sizeof g_tickStyles[0];

constexpr int32_t Thousandths(int32_t nRadius, int32_t nParts)
{
    return static_cast<int32_t>((static_cast<int64_t>(nRadius) * nParts + 500) / 1000);
}

// The broad end stands on the band, square to the tick's direction; the point looks inwards.
int DrawWedge(HDC hdc, POINT ptCentre, int32_t nRadius, float fAngle, const TickShape& shape,
              COLORREF clr, CPixelScale px)
{
    const CFigureScope figure(hdc, 1, clr, clr, px);
    ptCentre = StrokedPoint(ptCentre, 1, px);
    if (!figure.IsReady()) return 0;
    const POINT ptBase = PolarPoint(ptCentre, Thousandths(nRadius, shape.nOuter), fAngle, px);
    const int32_t nHalf = Thousandths(nRadius, shape.nWidth);
    const POINT wedge[] = {PolarPoint(ptBase, nHalf, fAngle + 90, px),
                           PolarPoint(ptBase, nHalf, fAngle - 90, px),
                           PolarPoint(ptCentre, Thousandths(nRadius, shape.nInner), fAngle, px)};
    DrawStrokedPolygon(hdc, wedge, 3, px);
    return 1;
}

} // namespace

int CRoundMeterScale::Draw(HDC hdc, POINT ptCentre, int32_t nRadius, float fAngle,
                           int32_t nAxisStyle) const
{
    if (!IsDrawableRadius(nRadius, m_px)) return 0;
    if (nAxisStyle < 0 || nAxisStyle >= TICK_STYLES) nAxisStyle = 0;
    const TickStyle& style = g_tickStyles[nAxisStyle];
    const TickShape& shape = m_nKind == MAJOR ? style.major : style.minor;
    if (style.bWedge) return DrawWedge(hdc, ptCentre, nRadius, fAngle, shape, m_clr, m_px);
    const int32_t nWidth = Thousandths(nRadius, shape.nWidth);
    return CScaleLine::OfWidth(nWidth, m_clr, m_px)
        .Draw(hdc, PolarPoint(ptCentre, Thousandths(nRadius, shape.nOuter), fAngle, m_px),
              PolarPoint(ptCentre, Thousandths(nRadius, shape.nInner), fAngle, m_px));
}

namespace {

// A thin band is at least a line.
HPEN MakeBandPen(int32_t nWidth, COLORREF clr, CPixelScale px)
{
    if (nWidth <= px(1)) return Made(::CreatePen(PS_SOLID, px(1), clr));
    const LOGBRUSH brush = {BS_SOLID, clr, 0};
    return Made(::ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_FLAT | PS_JOIN_BEVEL,
                               static_cast<DWORD>(nWidth), &brush, 0, nullptr));
}

} // namespace

CRoundMeterArcAxis::CRoundMeterArcAxis(int32_t nBandWidth, COLORREF clr, CPixelScale px) noexcept
    : m_px(px), m_nPixels(px.Unscaled(nBandWidth) > 1 ? px.Unscaled(nBandWidth) : 1),
      m_hPen(MakeBandPen(nBandWidth, clr, px))
{
}

CRoundMeterArcAxis::~CRoundMeterArcAxis()
{
    if (m_hPen) ::DeleteObject(m_hPen);
}

int CRoundMeterArcAxis::Draw(HDC hdc, int32_t nRadius, POINT ptCentre, float fStart,
                             float fSweep) const
{
    return DrawDialArc(hdc, m_hPen, nRadius, ptCentre, fStart, fSweep, m_nPixels, m_px);
}

namespace {

constexpr int32_t HINT_PARTS = 7; // of the radius

} // namespace

CRoundMeterMark::CRoundMeterMark(const CMeter& meter, int32_t nRadius, COLORREF clr) noexcept
    : m_clr(clr), m_px(meter.Px())
{
    meter.GetFontSize(nRadius / HINT_PARTS, &m_cell);
}

int CRoundMeterMark::Draw(HDC hdc, POINT ptAnchor, const char* pszText) const
{
    if (!pszText) return 0;
    const auto nLength = static_cast<int32_t>(std::strlen(pszText));
    return CScaleMark(m_cell, m_clr, m_px)
        .Draw(hdc, WrapSub(ptAnchor.x, (nLength * m_cell.nWidth) >> 1),
              WrapSub(ptAnchor.y, m_cell.nHeight >> 1), pszText);
}

namespace {

constexpr COLORREF BLACK = 0;
constexpr int32_t TIP_PERCENT = 92;
constexpr int32_t DART_STYLE = 4; // the only one of four points

// A style as data: the two points beside the tip, and the hub. All lengths are parts of the radius.
struct PinStyle {
    int32_t nPenWidth;
    int32_t nSidePart;
    float fSideTurn1; // degrees from the needle's angle
    float fSideTurn2;
    int32_t nHubPart;
    bool bBlackHub;
};

constexpr PinStyle g_pinStyles[ROUND_PIN_STYLES] = {
    {2, 3, 175, 185, 15, true}, {2, 3, 175, 185, 15, false}, {1, 15, 90, -90, 8, false},
    {1, 15, 90, -90, 8, true},  {1, 3, -10, 10, 10, true},
};

void DrawHub(HDC hdc, POINT ptCentre, int32_t nHub, int32_t nPenWidth, CPixelScale px)
{
    DrawPixelEllipse(hdc, StrokedBox(SquareAround(ptCentre, nHub), nPenWidth, px), px);
}

} // namespace

int CRoundMeterPin::Draw(HDC hdc, POINT ptCentre, float fAngle, int32_t nStyle) const
{
    if (nStyle < 0 || nStyle >= ROUND_PIN_STYLES || !IsDrawableRadius(m_nRadius, m_px)) return 0;
    const PinStyle& style = g_pinStyles[nStyle];
    const int32_t nHub = m_nRadius / style.nHubPart;
    const int32_t nSide = m_nRadius / style.nSidePart;
    const POINT ptMiddle = StrokedPoint(ptCentre, style.nPenWidth, m_px);
    const POINT ptTip = PolarPoint(ptMiddle, WrapMulDiv(m_nRadius, TIP_PERCENT, 100), fAngle, m_px);
    const POINT pt1 = PolarPoint(ptMiddle, nSide, fAngle + style.fSideTurn1, m_px);
    const POINT pt2 = PolarPoint(ptMiddle, nSide, fAngle + style.fSideTurn2, m_px);
    {
        const CFigureScope figure(hdc, style.nPenWidth, m_clrNeedle, m_clrNeedle, m_px);
        if (!figure.IsReady()) return 0;
        if (nStyle == DART_STYLE) {
            const POINT dart[] = {ptTip, pt1, ptMiddle, pt2};
            DrawStrokedPolygon(hdc, dart, 4, m_px);
        } else {
            const POINT blade[] = {pt1, pt2, ptTip};
            DrawStrokedPolygon(hdc, blade, 3, m_px);
        }
        if (!style.bBlackHub) DrawHub(hdc, ptCentre, nHub, style.nPenWidth, m_px);
    }
    if (style.bBlackHub) {
        const CFigureScope hub(hdc, 1, BLACK, BLACK, m_px);
        if (hub.IsReady()) DrawHub(hdc, ptCentre, nHub, 1, m_px);
    }
    return 1;
}
