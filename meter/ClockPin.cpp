#include "meter/ClockPin.h"

#include "base/DegTrig.h"
#include "base/PixelPen.h"
#include "base/WrapMath.h"
#include "meter/DialGeometry.h"
#include "meter/DialScopes.h"

namespace {

constexpr COLORREF BLACK = 0;
constexpr COLORREF WHITE = 0xFFFFFF;
constexpr COLORREF GREEN = 0x00FF00;
constexpr int32_t CENTRE_RADIUS = 5;
constexpr double LEAF_TURN = 0.03;       // of a full turn, to each side of a broad hand
constexpr double SECOND_TURN = 1.0 / 60; // one mark

enum ClockStyle : int32_t { STRIPED = 0, PLAIN = 1, CENTRED = 2, LEAF = 3, BARE = 4 };
constexpr int32_t STYLE_COUNT = 5;

// What the hands are painted in. When they are erased, all of it is the face colour.
struct HandColors {
    COLORREF clrHand;
    COLORREF clrStripe;
    COLORREF clrLeaf;
    COLORREF clrHub;
};

// The hands of one clock around its centre.
class CHands {
public:
    CHands(HDC hdc, POINT ptCentre, int32_t nStyle, const HandColors& colors,
           CPixelScale px) noexcept
        : m_hdc(hdc), m_ptCentre(ptCentre), m_nStyle(nStyle), m_colors(colors), m_px(px)
    {
    }

    // The hour or the minute hand: how far it reaches behind the centre, where its stripe begins
    // and where its tip is, in percent of the radius.
    void DrawBroad(int32_t nRadius, double fTurn, int32_t nBehind, int32_t nStripe,
                   int32_t nTip) const
    {
        const DegVector along = ClockVector({nRadius, nRadius}, fTurn);
        switch (m_nStyle) {
        case STRIPED:
            Line(6, m_colors.clrHand, At(along, -nBehind), At(along, nTip));
            Line(2, m_colors.clrStripe, At(along, nStripe), At(along, nTip));
            break;
        case PLAIN:
            Line(6, m_colors.clrHand, At(along, -nBehind), At(along, nTip));
            break;
        case LEAF: {
            const DegVector later = ClockVector({nRadius, nRadius}, fTurn + LEAF_TURN);
            const DegVector earlier = ClockVector({nRadius, nRadius}, fTurn - LEAF_TURN);
            const POINT leaf[] = {At(along, nTip), At(later, 20), m_ptCentre, At(earlier, 20)};
            const CFigureScope figure(m_hdc, 3, m_colors.clrHand, m_colors.clrLeaf, m_px);
            if (figure.IsReady()) Outlined(leaf, 3);
            break;
        }
        default:
            Line(6, m_colors.clrHand, m_ptCentre, At(along, nTip));
            break;
        }
    }

    void DrawSecond(int32_t nRadius, double fTurn) const
    {
        const DegVector along = ClockVector({nRadius, nRadius}, fTurn);
        const DegVector later = ClockVector({nRadius, nRadius}, fTurn + SECOND_TURN);
        const DegVector earlier = ClockVector({nRadius, nRadius}, fTurn - SECOND_TURN);
        switch (m_nStyle) {
        case LEAF: {
            const POINT point[] = {At(along, 70), At(later, 30), At(earlier, 30)};
            {
                const CFigureScope figure(m_hdc, 2, m_colors.clrHand, m_colors.clrHand, m_px);
                if (figure.IsReady()) Outlined(point, 2);
            }
            const CFigureScope hub(m_hdc, 1, m_colors.clrHub, m_colors.clrHub, m_px);
            if (hub.IsReady()) Disc(1);
            break;
        }
        case BARE: {
            const CFigureScope hub(m_hdc, 1, m_colors.clrHand, m_colors.clrHand, m_px);
            if (hub.IsReady()) Disc(1);
            break;
        }
        default: {
            const COLORREF clrFill = m_nStyle == PLAIN ? m_colors.clrHand : m_colors.clrStripe;
            const CFigureScope figure(m_hdc, 3, m_colors.clrHand, clrFill, m_px);
            if (!figure.IsReady()) return;
            if (m_nStyle != CENTRED) {
                const POINT weight[] = {m_ptCentre, At(later, -40), At(along, -40),
                                        At(earlier, -40)};
                const int nPrevMode = ::SetPolyFillMode(m_hdc, ALTERNATE);
                Outlined(weight, 3);
                if (nPrevMode) ::SetPolyFillMode(m_hdc, nPrevMode);
            }
            const POINT hand[] = {m_ptCentre, At(along, 100)};
            DrawPixelLines(m_hdc, hand, 2, 3, m_px);
            Disc(3);
            break;
        }
        }
    }

private:
    // The point at so many percent of a hand; a negative number lies behind the centre.
    [[nodiscard]] POINT At(DegVector hand, int32_t nPercent) const
    {
        return {WrapAdd(m_ptCentre.x, WrapMulDiv(hand.x, nPercent, 100)),
                WrapAdd(m_ptCentre.y, WrapMulDiv(hand.y, nPercent, 100))};
    }

    void Line(int32_t nWidth, COLORREF clr, POINT pt1, POINT pt2) const
    {
        const CPixelPenScope pen(m_hdc, nWidth, clr, m_px);
        const POINT pts[] = {pt1, pt2};
        DrawPixelLines(m_hdc, pts, 2, nWidth, m_px);
    }

    // A polygon that has an outline of so many pixels.
    template <int COUNT>
    void Outlined(const POINT (&points)[COUNT], int32_t nPixels) const
    {
        POINT pts[COUNT];
        for (int n = 0; n < COUNT; ++n) pts[n] = StrokedPoint(points[n], nPixels, m_px);
        DrawStrokedPolygon(m_hdc, pts, COUNT, m_px);
    }

    void Disc(int32_t nPixels) const
    {
        const RECT rc = StrokedBox(SquareAround(m_ptCentre, m_px(CENTRE_RADIUS)), nPixels, m_px);
        DrawPixelEllipse(m_hdc, rc, m_px);
    }

    HDC m_hdc;
    POINT m_ptCentre;
    int32_t m_nStyle;
    HandColors m_colors;
    CPixelScale m_px;
};

void DrawHands(const CHands& hands, int32_t nRadius, const ClockTimes& times)
{
    const double fHour = times.local.wHour / 12.0 + times.local.wMinute / 720.0;
    const double fMinute = times.universal.wMinute / 60.0 + times.universal.wSecond / 3600.0;
    hands.DrawBroad(nRadius, fHour, 18, 30, 60);
    hands.DrawBroad(nRadius, fMinute, 24, 40, 80);
    hands.DrawSecond(WrapMulDiv(nRadius, 9, 10), times.universal.wSecond / 60.0);
}

bool HasHands(int32_t nStyle, int32_t nRadius, CPixelScale px)
{
    return nStyle >= 0 && nStyle < STYLE_COUNT && IsDrawableRadius(nRadius, px);
}

} // namespace

int CClockPin::Draw(HDC hdc, POINT ptCentre, int32_t nStyle, const ClockTimes& times) const
{
    const HandColors colors{m_clrHand, GREEN, WHITE, BLACK};
    if (HasHands(nStyle, m_nRadius, m_px))
        DrawHands({hdc, ptCentre, nStyle, colors, m_px}, m_nRadius, times);
    return 1;
}

int CClockPin::Erase(HDC hdc, POINT ptCentre, int32_t nStyle, const ClockTimes& times) const
{
    const HandColors colors{m_clrFace, m_clrFace, m_clrFace, m_clrFace};
    if (HasHands(nStyle, m_nRadius, m_px))
        DrawHands({hdc, ptCentre, nStyle, colors, m_px}, m_nRadius, times);
    return 1;
}
