#include "meter/RoundMeterScale.h"

#include "meter/DialComponents.h"
#include "meter/DialGeometry.h"
#include "meter/DialScopes.h"

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

constexpr TickStyle g_styles[] = {
    {false, {980, 830, 26}, {980, 880, 14}},
    {true, {975, 820, 28}, {975, 885, 16}},
    {false, {990, 810, 26}, {990, 870, 14}},
    {true, {985, 810, 28}, {985, 865, 16}},
};
constexpr int32_t STYLE_COUNT = sizeof g_styles / sizeof g_styles[0];

constexpr int32_t Thousandths(int32_t nRadius, int32_t nParts)
{
    return static_cast<int32_t>((static_cast<int64_t>(nRadius) * nParts + 500) / 1000);
}

// The broad end stands on the band, square to the tick's direction; the point looks inwards.
int DrawWedge(HDC hdc, POINT ptCentre, int32_t nRadius, float fAngle, const TickShape& shape,
              COLORREF clr)
{
    const CFigureScope figure(hdc, 1, clr, clr);
    if (!figure.IsReady()) return 0;
    const POINT ptBase = PolarPoint(ptCentre, Thousandths(nRadius, shape.nOuter), fAngle);
    const int32_t nHalf = Thousandths(nRadius, shape.nWidth);
    const POINT wedge[] = {PolarPoint(ptBase, nHalf, fAngle + 90),
                           PolarPoint(ptBase, nHalf, fAngle - 90),
                           PolarPoint(ptCentre, Thousandths(nRadius, shape.nInner), fAngle)};
    ::Polygon(hdc, wedge, 3);
    return 1;
}

} // namespace

int CRoundMeterScale::Draw(HDC hdc, POINT ptCentre, int32_t nRadius, float fAngle,
                           int32_t nAxisStyle) const
{
    if (!IsDrawableRadius(nRadius)) return 0;
    if (nAxisStyle < 0 || nAxisStyle >= STYLE_COUNT) nAxisStyle = 0;
    const TickStyle& style = g_styles[nAxisStyle];
    const TickShape& shape = m_nKind == MAJOR ? style.major : style.minor;
    if (style.bWedge) return DrawWedge(hdc, ptCentre, nRadius, fAngle, shape, m_clr);
    const int32_t nWidth = Thousandths(nRadius, shape.nWidth);
    return CScaleLine(nWidth > 1 ? nWidth : 1, m_clr)
        .Draw(hdc, PolarPoint(ptCentre, Thousandths(nRadius, shape.nOuter), fAngle),
              PolarPoint(ptCentre, Thousandths(nRadius, shape.nInner), fAngle));
}
