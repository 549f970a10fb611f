#include "meter/RoundMeterPin.h"

#include "base/WrapMath.h"
#include "meter/DialGeometry.h"
#include "meter/DialScopes.h"

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

constexpr PinStyle g_styles[ROUND_PIN_STYLES] = {
    {2, 3, 175, 185, 15, true}, {2, 3, 175, 185, 15, false}, {1, 15, 90, -90, 8, false},
    {1, 15, 90, -90, 8, true},  {1, 3, -10, 10, 10, true},
};

void DrawHub(HDC hdc, POINT ptCentre, int32_t nHub)
{
    const RECT rc = SquareAround(ptCentre, nHub);
    ::Ellipse(hdc, rc.left, rc.top, rc.right, rc.bottom);
}

} // namespace

int CRoundMeterPin::Draw(HDC hdc, POINT ptCentre, float fAngle, int32_t nStyle) const
{
    if (nStyle < 0 || nStyle >= ROUND_PIN_STYLES || !IsDrawableRadius(m_nRadius)) return 0;
    const PinStyle& style = g_styles[nStyle];
    const int32_t nHub = m_nRadius / style.nHubPart;
    const int32_t nSide = m_nRadius / style.nSidePart;
    const POINT ptTip = PolarPoint(ptCentre, WrapMulDiv(m_nRadius, TIP_PERCENT, 100), fAngle);
    const POINT pt1 = PolarPoint(ptCentre, nSide, fAngle + style.fSideTurn1);
    const POINT pt2 = PolarPoint(ptCentre, nSide, fAngle + style.fSideTurn2);
    {
        const CFigureScope figure(hdc, style.nPenWidth, m_clrNeedle, m_clrNeedle);
        if (!figure.IsReady()) return 0;
        if (nStyle == DART_STYLE) {
            const POINT dart[] = {ptTip, pt1, ptCentre, pt2};
            ::Polygon(hdc, dart, 4);
        } else {
            const POINT blade[] = {pt1, pt2, ptTip};
            ::Polygon(hdc, blade, 3);
        }
        if (!style.bBlackHub) DrawHub(hdc, ptCentre, nHub);
    }
    if (style.bBlackHub) {
        const CFigureScope hub(hdc, 1, BLACK, BLACK);
        if (hub.IsReady()) DrawHub(hdc, ptCentre, nHub);
    }
    return 1;
}
