#include "render/QELViewBox.h"

#include "base/DrawLimits.h"
#include "base/Refusals.h"
#include "render/Border3D.h"
#include "render/Mapping.h"
#include "render/OutlineProbe.h"
#include "render/QELRotate.h"

#include <algorithm>

namespace {

constexpr double PI = 3.14159265358979323846;

} // namespace

RECT CQELViewBox::Box() const
{
    return {Words()[0], Words()[1], Words()[2], Words()[3]};
}

void CQELViewBox::SetBoxInside(const RECT& rc)
{
    RECT rcInside = rc;
    KeepRectInside(&rcInside, RefW(), RefH());
    Words()[0] = rcInside.left;
    Words()[1] = rcInside.top;
    Words()[2] = rcInside.right;
    Words()[3] = rcInside.bottom;
}

int CQELViewBox::Rotate(POINT ptCentre, int32_t nAngle)
{
    const int32_t nTurn = QuarterTurn(nAngle);
    RECT rc = Box();
    CQELRotate(ptCentre, WrapSub(nTurn, Rotation())).RotateRect(&rc);
    SetBoxInside(rc);
    SetRotation(nTurn);
    return 1;
}

int CQELViewBox::MoveX(int32_t nDx)
{
    RECT rc = Box();
    rc.left = WrapAdd(rc.left, nDx);
    rc.right = WrapAdd(rc.right, nDx);
    SetBoxInside(rc);
    return 1;
}

int CQELViewBox::MoveY(int32_t nDy)
{
    RECT rc = Box();
    rc.top = WrapAdd(rc.top, nDy);
    rc.bottom = WrapAdd(rc.bottom, nDy);
    SetBoxInside(rc);
    return 1;
}

bool CQELViewRect::HidesOutline() const
{
    return (Style() & (QEL_STYLE_UP_BIT | QEL_STYLE_DOWN_BIT)) != 0;
}

// The rings of a border that is wider than the rectangle pass each other and come out beyond it.
int CQELViewRect::PaintMargin(CPixelScale px, int32_t* pnOut) const
{
    if (!CQELViewBox::PaintMargin(px, pnOut)) return 0;
    if (HidesOutline()) *pnOut += px(BorderWidthOf(Style()));
    return 1;
}

// Nothing of an upright box is rounded, but the corners of a wide pen. A face whose border is
// hidden while it is hollow has its pen instead.
RECT CQELViewRect::PaintedBox(const DeviceFigure& figure, bool bFace) const
{
    const auto nStyle = static_cast<uint32_t>(m_style.nStyle);
    const bool bBorder = (nStyle & (QEL_STYLE_UP_BIT | QEL_STYLE_DOWN_BIT)) != 0;
    const int32_t nPen = PaintReach(figure, bFace) - figure.px(PAINT_SLACK);
    CRectHull hull;
    hull.Add(GrownRect(Hull(figure), nPen > 0 ? nPen + figure.px(1) : 0));
    if (bBorder) hull.Add(BorderBox(figure.rcBox, figure.px(BorderWidthOf(nStyle))));
    return hull.Rect();
}

// A border may stand out of a rectangle that is narrower than it.
bool CQELViewRect::IsHit(const QelRect& rcQel, POINT pt) const
{
    if (CQELViewBox::IsHit(rcQel, pt)) return true;
    RECT rc{};
    if (!HidesOutline() || !MapAnchored(rcQel, Box(), 0, &rc) || ::IsRectEmpty(&rc)) return false;
    const RECT rcBorder = BorderBox(rc, rcQel.px(BorderWidthOf(Style())));
    return ::PtInRect(&rcBorder, pt);
}

double CQELViewRect::Roughness() const
{
    return m_style.nPenWidth > 1 && !HidesOutline() ? CQELViewBox::Roughness() : 0;
}

// The sides of a region that is narrower than what is taken off pass each other; see MakeRegion.
int32_t CQELViewRect::RegionReach(const DeviceFigure& figure) const
{
    const int64_t nPen = figure.px(WrapAdd(m_style.nPenWidth, 1) / 2);
    const int64_t nBorder = figure.px(BorderWidthOf(static_cast<uint32_t>(m_style.nStyle)));
    const int64_t nSide = std::min(WidthOf(figure.rcBox), HeightOf(figure.rcBox));
    const int64_t nBeyond = std::max({-nPen, std::max(nPen, nBorder) - nSide, int64_t{0}});
    return static_cast<int32_t>(std::min<int64_t>(nBeyond, INT32_MAX));
}

void CQELViewRect::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
                         const QelRect& rcQel) const
{
    const RECT& rc = figure.rcBox;
    if (m_style.nPenWidth == 0 && FillStyle() != QEL_STYLE_STROKE) {
        // FillRect covers the whole rectangle, which Rectangle with a null pen does not.
        if (!hBrush) hBrush = static_cast<HBRUSH>(::GetCurrentObject(hdc, OBJ_BRUSH));
        ::FillRect(hdc, &rc, hBrush);
    } else {
        const bool bInFrame = StrokedPixels() > 1 && m_style.nPenStyle == PS_INSIDEFRAME;
        if (bInFrame)
            ::Rectangle(hdc, rc.left, rc.top, rc.right, rc.bottom);
        else
            DrawPixelRectangle(hdc, rc, StrokedPixels(), figure.px);
    }
    DrawStyledBorder(hdc, rc, Style(), rcQel);
}

HRGN CQELViewRect::MakeRegion(const QelRect& rcQel) const
{
    RECT rc{};
    if (!MapAnchored(rcQel, Box(), 0, &rc)) return nullptr;
    const int32_t nShrink =
        HidesOutline() ? BorderWidthOf(Style()) : WrapAdd(m_style.nPenWidth, 1) / 2;
    const int32_t nTaken = rcQel.px(nShrink);
    return Made(::CreateRectRgn(WrapAdd(rc.left, nTaken), WrapAdd(rc.top, nTaken),
                                WrapSub(rc.right, nTaken), WrapSub(rc.bottom, nTaken)));
}

SIZE CQELViewRoundRect::Corner(CPixelScale px) const
{
    const RECT rc = Box();
    if (::IsRectEmpty(&rc)) return {0, 0};
    return {px(Words()[4]), px(Words()[5])};
}

// No larger than the box: what the system makes of larger ones is its own affair.
SIZE CQELViewRoundRect::CornerIn(const RECT& rc, CPixelScale px) const
{
    const SIZE corner = Corner(px);
    if (px.IsPlain()) return corner;
    return {std::min<LONG>(WrapAbs(corner.cx), WrapAbs(WidthOf(rc))),
            std::min<LONG>(WrapAbs(corner.cy), WrapAbs(HeightOf(rc)))};
}

void CQELViewRoundRect::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH, const QelRect&) const
{
    const RECT rc = DrawnBox(figure);
    const SIZE corner = CornerIn(rc, figure.px);
    ::RoundRect(hdc, rc.left, rc.top, rc.right, rc.bottom, corner.cx, corner.cy);
}

// A corner that is larger than the box is half of it.
void CQELViewRoundRect::Trace(const DeviceFigure& figure, COutlineProbe* pProbe) const
{
    const RECT rc = NormalizedRect(DrawnBox(figure));
    const SIZE corner = Corner(figure.px);
    const double fX = std::min(std::abs(static_cast<double>(corner.cx)), WidthOf(rc) - 1.0) / 2;
    const double fY = std::min(std::abs(static_cast<double>(corner.cy)), HeightOf(rc) - 1.0) / 2;
    const double fLeft = rc.left;
    const double fTop = rc.top;
    const double fRight = rc.right - 1.0;
    const double fBottom = rc.bottom - 1.0;
    pProbe->Line(fLeft + fX, fTop, fRight - fX, fTop);
    pProbe->Line(fLeft + fX, fBottom, fRight - fX, fBottom);
    pProbe->Line(fLeft, fTop + fY, fLeft, fBottom - fY);
    pProbe->Line(fRight, fTop + fY, fRight, fBottom - fY);
    pProbe->Arc({fRight - fX, fTop + fY, fX, fY}, 0, PI / 2);
    pProbe->Arc({fLeft + fX, fTop + fY, fX, fY}, PI / 2, PI);
    pProbe->Arc({fLeft + fX, fBottom - fY, fX, fY}, PI, 3 * PI / 2);
    pProbe->Arc({fRight - fX, fBottom - fY, fX, fY}, 3 * PI / 2, 2 * PI);
}

HRGN CQELViewRoundRect::MakeRegion(const QelRect& rcQel) const
{
    RECT rc{};
    if (!MapAnchored(rcQel, Box(), 0, &rc) || !IsDrawableCurve(rc, rcQel.px)) return nullptr;
    rc = ShortBox(rc, rcQel.px);
    const SIZE corner = CornerIn(rc, rcQel.px);
    return Made(::CreateRoundRectRgn(rc.left, rc.top, rc.right, rc.bottom, corner.cx, corner.cy),
                !::IsRectEmpty(&rc));
}

void CQELViewEllipse::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH, const QelRect&) const
{
    DrawPixelEllipse(hdc, DrawnBox(figure), figure.px);
}

void CQELViewEllipse::Trace(const DeviceFigure& figure, COutlineProbe* pProbe) const
{
    pProbe->Arc(EllipseIn(DrawnBox(figure)), 0, 2 * PI);
}

HRGN CQELViewEllipse::MakeRegion(const QelRect& rcQel) const
{
    RECT rc{};
    if (!MapAnchored(rcQel, Box(), 0, &rc) || !IsDrawableCurve(rc, rcQel.px)) return nullptr;
    rc = ShortBox(rc, rcQel.px);
    return Made(::CreateEllipticRgn(rc.left, rc.top, rc.right, rc.bottom), !::IsRectEmpty(&rc));
}
