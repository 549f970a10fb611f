#include "base/BandStroke.h"

#include "base/GdiScopes.h"
#include "base/Rects.h"
#include "base/Refusals.h"
#include "base/SolidPen.h"

#include <atomic>
#include <cmath>

namespace {

constexpr double TURN = 6.283185307179586;
constexpr int32_t MOST_WIDTH = 10000;
constexpr int32_t LEAST_ROOM = 8; // inside of a band

LONG Nearest(double f)
{
    return static_cast<LONG>(std::floor(f + 0.5));
}

// Where a unit of a figure is one of the surface, each figure paints over what was there, and the
// right and the bottom side of a box lie outside. Records keep the pen instead: who reads them
// wants one ellipse, not two.
bool HasUnits(HDC hdc)
{
    const DWORD nKind = ::GetObjectType(hdc);
    return (nKind == OBJ_DC || nKind == OBJ_MEMDC) &&
           ::GetDeviceCaps(hdc, TECHNOLOGY) != DT_METAFILE && ::GetMapMode(hdc) == MM_TEXT &&
           ::GetGraphicsMode(hdc) == GM_COMPATIBLE && ::GetROP2(hdc) == R2_COPYPEN &&
           ::GetLayout(hdc) == 0;
}

// How many units curves without a pen end before the far sides of their box, which the systems do
// not agree on. Negative: it could not be tried.
int32_t TriedShortness()
{
    constexpr int SIDE = 8;
    constexpr WORD BLACK[SIDE] = {};
    const HDC hdc = ::CreateCompatibleDC(nullptr);
    const HBITMAP hBitmap = ::CreateBitmap(SIDE, SIDE, 1, 1, BLACK);
    int32_t nShort = -1;
    if (hdc && hBitmap) {
        const CSelectScope bitmap(hdc, hBitmap);
        const CSelectScope pen(hdc, ::GetStockObject(NULL_PEN));
        const CSelectScope brush(hdc, ::GetStockObject(WHITE_BRUSH));
        ::Ellipse(hdc, 0, 0, SIDE, SIDE);
        nShort = ::GetPixel(hdc, SIDE - 1, SIDE / 2) == 0 ? 1 : 0;
    }
    if (hBitmap) ::DeleteObject(hBitmap);
    if (hdc) ::DeleteDC(hdc);
    return nShort;
}

std::atomic<int32_t> g_nShort = -1; // whoever comes first finds what all others would

int32_t Shortness()
{
    int32_t nShort = g_nShort.load(std::memory_order_relaxed);
    if (nShort >= 0) return nShort;
    nShort = TriedShortness();
    g_nShort.store(nShort, std::memory_order_relaxed);
    return nShort;
}

// Of narrow ellipses some systems fill more than the inside.
bool IsRoundish(int64_t nWidth, int64_t nHeight)
{
    return 2 * nHeight <= nWidth * nWidth && 2 * nWidth <= nHeight * nHeight;
}

// Of the middle of the outline, in the box of a pen.
class Curve {
public:
    explicit Curve(const RECT& rc)
        : m_fX((rc.left + rc.right - 1.0) / 2), m_fY((rc.top + rc.bottom - 1.0) / 2),
          m_fWide(rc.right - 1.0 - m_fX), m_fHigh(rc.bottom - 1.0 - m_fY)
    {
    }

    [[nodiscard]] POINT Middle() const { return Rounded(0, 0); }
    [[nodiscard]] double AngleTo(POINT pt) const { return std::atan2(pt.y - m_fY, pt.x - m_fX); }
    // Where the ray to a point meets an ellipse that is so much larger all around.
    [[nodiscard]] POINT Towards(POINT pt, double fMore) const
    {
        const double fWide = m_fWide + fMore;
        const double fHigh = m_fHigh + fMore;
        const double fAngle = std::atan2((pt.y - m_fY) * fWide, (pt.x - m_fX) * fHigh);
        return Rounded(fWide * std::cos(fAngle), fHigh * std::sin(fAngle));
    }
    // Beyond the ellipse, so far that lines between a sixth of a turn stay beyond it.
    [[nodiscard]] POINT Far(double fAngle) const
    {
        const double fFar = 4 * (m_fWide + m_fHigh);
        return Rounded(fFar * std::cos(fAngle), fFar * std::sin(fAngle));
    }

private:
    [[nodiscard]] POINT Rounded(double fX, double fY) const
    {
        return {Nearest(m_fX + fX), Nearest(m_fY + fY)};
    }

    double m_fX;
    double m_fY;
    double m_fWide;
    double m_fHigh;
};

// What lies between two rays from the middle. Null when it is refused.
HRGN MakeSector(HDC hdc, const Curve& curve, POINT ptStart, POINT ptEnd)
{
    constexpr int STEPS = 6;
    const bool bClockwise = ::GetArcDirection(hdc) == AD_CLOCKWISE;
    const double fFrom = curve.AngleTo(bClockwise ? ptStart : ptEnd);
    const double fTo = curve.AngleTo(bClockwise ? ptEnd : ptStart);
    const double fSpan = fTo > fFrom ? fTo - fFrom : fTo - fFrom + TURN;
    POINT pts[STEPS + 2] = {curve.Middle()};
    for (int n = 0; n <= STEPS; ++n) pts[n + 1] = curve.Far(fFrom + fSpan * n / STEPS);
    return Made(::CreatePolygonRgn(pts, STEPS + 2, WINDING));
}

enum class FillKind { None, Open, Whole };

// Patterns hide what is below them, and the system's own hatches may leave it between their lines.
FillKind FillOf(HDC hdc)
{
    LOGBRUSH brush{};
    HGDIOBJ hBrush = ::GetCurrentObject(hdc, OBJ_BRUSH);
    if (!hBrush || !::GetObjectA(hBrush, sizeof brush, &brush)) return FillKind::Open;
    switch (brush.lbStyle) {
    case BS_NULL:
        return FillKind::None;
    case BS_SOLID:
    case BS_PATTERN:
    case BS_DIBPATTERN:
    case BS_DIBPATTERNPT:
        return FillKind::Whole;
    default:
        return FillKind::Open;
    }
}

// As a system is told that ends so much before the far sides.
RECT Longer(const RECT& rc, int32_t nMore)
{
    return {rc.left, rc.top, rc.right + nMore, rc.bottom + nMore};
}

// A line that goes on so much farther at both ends.
void DrawLonger(HDC hdc, POINT pt1, POINT pt2, double fMore)
{
    const double fX = pt2.x - pt1.x;
    const double fY = pt2.y - pt1.y;
    const double fLength = std::hypot(fX, fY);
    const double fPart = fLength > 0 ? fMore / fLength : 0;
    const LONG nX = Nearest(fX * fPart);
    const LONG nY = Nearest(fY * fPart);
    const POINT pts[] = {{pt1.x - nX, pt1.y - nY}, {pt2.x + nX, pt2.y + nY}};
    ::Polyline(hdc, pts, 2);
}

} // namespace

CBandStroke::CBandStroke(HDC hdc, CPixelScale px) noexcept : m_hdc(hdc)
{
    SolidPen pen{};
    if (px.IsPlain() || px.Samples() > 1 || !FindSolidPen(hdc, &pen)) return;
    if (pen.nWidth < 2 || pen.nWidth > MOST_WIDTH || !HasUnits(hdc)) return;
    m_nShort = Shortness();
    if (m_nShort < 0) return;
    m_hBrush = Made(::CreateSolidBrush(pen.clr));
    if (!m_hBrush) return;
    m_nWidth = pen.nWidth;
    m_bRound = pen.bRound;
}

CBandStroke::~CBandStroke()
{
    if (m_hBrush) ::DeleteObject(m_hBrush);
}

// What the pen covers, and what it leaves inside.
RECT CBandStroke::Outer(const RECT& rc) const
{
    const int32_t nBefore = m_nWidth / 2;
    const int32_t nBehind = m_nWidth - nBefore - 1;
    return {rc.left - nBefore, rc.top - nBefore, rc.right + nBehind, rc.bottom + nBehind};
}

RECT CBandStroke::Inner(const RECT& rc) const
{
    const RECT outer = Outer(rc);
    return {outer.left + m_nWidth, outer.top + m_nWidth, outer.right - m_nWidth,
            outer.bottom - m_nWidth};
}

bool CBandStroke::Takes(const RECT& rc) const
{
    if (!m_nWidth || !IsWithinReach(rc)) return false;
    const RECT inner = Inner(rc);
    return WidthOf(inner) >= LEAST_ROOM && HeightOf(inner) >= LEAST_ROOM &&
           IsRoundish(WidthOf(inner), HeightOf(inner));
}

bool CBandStroke::TakesRoundRect(const RECT& rc, SIZE corner) const
{
    if (!Takes(rc) || corner.cx > WidthOf(rc) || corner.cy > HeightOf(rc)) return false;
    const SIZE inner{corner.cx - m_nWidth, corner.cy - m_nWidth};
    return inner.cx > 1 && inner.cy > 1 && IsRoundish(inner.cx, inner.cy);
}

bool CBandStroke::TakesBox(const RECT& rc) const
{
    return m_nWidth && IsWithinReach(rc) && WidthOf(rc) > m_nWidth && HeightOf(rc) > m_nWidth &&
           FillOf(m_hdc) == FillKind::Whole;
}

// Without a pen. nMore: what the ellipse of the corners is larger by.
void CBandStroke::Fill(const Figure& figure, const RECT& rc, int32_t nMore) const
{
    const auto [nLeft, nTop, nRight, nBottom] =
        Longer(rc, figure.nKind == Kind::Box ? 1 : m_nShort);
    const SIZE corner{figure.corner.cx + nMore, figure.corner.cy + nMore};
    const POINT ptStart = figure.ptStart;
    const POINT ptEnd = figure.ptEnd;
    switch (figure.nKind) {
    case Kind::Box:
        ::Rectangle(m_hdc, nLeft, nTop, nRight, nBottom);
        break;
    case Kind::RoundRect:
        ::RoundRect(m_hdc, nLeft, nTop, nRight, nBottom, corner.cx, corner.cy);
        break;
    case Kind::Ellipse:
        ::Ellipse(m_hdc, nLeft, nTop, nRight, nBottom);
        break;
    case Kind::Chord:
        ::Chord(m_hdc, nLeft, nTop, nRight, nBottom, ptStart.x, ptStart.y, ptEnd.x, ptEnd.y);
        break;
    case Kind::Pie:
        ::Pie(m_hdc, nLeft, nTop, nRight, nBottom, ptStart.x, ptStart.y, ptEnd.x, ptEnd.y);
        break;
    }
}

HRGN CBandStroke::MakeRegion(const Figure& figure, const RECT& rc, int32_t nMore)
{
    const RECT box = Longer(rc, 1);
    if (figure.nKind != Kind::RoundRect)
        return Made(::CreateEllipticRgn(box.left, box.top, box.right, box.bottom));
    return Made(::CreateRoundRectRgn(box.left, box.top, box.right, box.bottom,
                                     figure.corner.cx + nMore, figure.corner.cy + nMore));
}

// Of a chord or pie the part that is curved.
void CBandStroke::FillBand(const Figure& figure) const
{
    const bool bPart = figure.nKind == Kind::Chord || figure.nKind == Kind::Pie;
    const CRegion outer(MakeRegion(figure, Outer(figure.rc), m_nWidth));
    const CRegion inner(MakeRegion(figure, Inner(figure.rc), -m_nWidth));
    const CRegion part(bPart ? MakeSector(m_hdc, Curve(figure.rc), figure.ptStart, figure.ptEnd)
                             : nullptr);
    if (!outer.Get() || !inner.Get() || (bPart && !part.Get())) return;
    ::CombineRgn(outer.Get(), outer.Get(), inner.Get(), RGN_DIFF);
    if (bPart) ::CombineRgn(outer.Get(), outer.Get(), part.Get(), RGN_AND);
    ::FillRgn(m_hdc, outer.Get(), m_hBrush);
}

// Around a fill that hides what is below the outer figure is painted whole, and the inner one onto
// it: the system makes two figures in less time than it cuts one out of the other.
void CBandStroke::Draw(const Figure& figure) const
{
    const FillKind nFill = FillOf(m_hdc);
    {
        const CSelectScope pen(m_hdc, ::GetStockObject(NULL_PEN));
        if (nFill == FillKind::Whole) {
            CSelectScope brush(m_hdc, m_hBrush);
            Fill(figure, Outer(figure.rc), m_nWidth);
            brush.Restore();
            return Fill(figure, Inner(figure.rc), -m_nWidth);
        }
        if (nFill != FillKind::None) Fill(figure, figure.rc, 0);
    }
    FillBand(figure);
}

void CBandStroke::DrawBox(const RECT& rc) const
{
    Draw({Kind::Box, rc, {}, {}, {}});
}

void CBandStroke::DrawEllipse(const RECT& rc) const
{
    Draw({Kind::Ellipse, rc, {}, {}, {}});
}

void CBandStroke::DrawRoundRect(const RECT& rc, SIZE corner) const
{
    Draw({Kind::RoundRect, rc, corner, {}, {}});
}

void CBandStroke::DrawArc(const RECT& rc, POINT ptStart, POINT ptEnd) const
{
    FillBand({Kind::Pie, rc, {}, ptStart, ptEnd});
    if (!m_bRound) return;
    const CSelectScope pen(m_hdc, ::GetStockObject(NULL_PEN));
    const CSelectScope brush(m_hdc, m_hBrush);
    for (const POINT pt : {ptStart, ptEnd}) {
        const POINT ptCap = Curve(rc).Towards(pt, 0);
        const LONG nLeft = ptCap.x - m_nWidth / 2;
        const LONG nTop = ptCap.y - m_nWidth / 2;
        const LONG nAcross = m_nWidth + m_nShort;
        ::Ellipse(m_hdc, nLeft, nTop, nLeft + nAcross, nTop + nAcross);
    }
}

// Lines that end at their points go on to the outer edge of the curve, whose corner they fill.
void CBandStroke::DrawChord(const RECT& rc, POINT ptStart, POINT ptEnd) const
{
    Draw({Kind::Chord, rc, {}, ptStart, ptEnd});
    const Curve curve(rc);
    DrawLonger(m_hdc, curve.Towards(ptStart, 0), curve.Towards(ptEnd, 0),
               m_bRound ? 0 : m_nWidth / 2.0);
}

void CBandStroke::DrawPie(const RECT& rc, POINT ptStart, POINT ptEnd) const
{
    Draw({Kind::Pie, rc, {}, ptStart, ptEnd});
    const Curve curve(rc);
    const double fMore = m_bRound ? 0 : m_nWidth / 2.0;
    const POINT pts[] = {curve.Towards(ptStart, fMore), curve.Middle(),
                         curve.Towards(ptEnd, fMore)};
    ::Polyline(m_hdc, pts, 3);
}
