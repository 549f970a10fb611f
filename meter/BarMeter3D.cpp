#include "meter/BarMeter3D.h"

#include "base/DrawLimits.h"
#include "base/PixelPen.h"
#include "base/Rects.h"
#include "base/WrapMath.h"
#include "meter/BarFill.h"
#include "meter/DialComponents.h"
#include "meter/DialScopes.h"
#include "meter/FaceClip.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int32_t FONT_HINT_PARTS = 3; // of the column's extent across
constexpr int32_t READ_OUT_MARGIN = 4;

// The cells that a read-out tries, beginning with the one that was asked for.
constexpr FontCell g_smallerCells[] = {{12, 24}, {8, 16}, {6, 12}};

} // namespace

int CBarBody::Paint(HDC hdc, const RECT& rcSegment) const
{
    if (::IsRectEmpty(&rcSegment)) return 0;
    const CFaceClip clip(hdc, m_meter.Region(), m_meter.Column());
    if (!clip.MayPaint()) return 0;
    const int32_t nFrom = m_column.AlongFrom(rcSegment);
    const int32_t nTo = m_column.AlongTo(rcSegment);
    return m_meter.GetFrameOption() == FRAME_CYLINDER ? PaintCylinder(hdc, nFrom, nTo)
                                                      : PaintBox(hdc, nFrom, nTo);
}

int CBarBody::PaintBox(HDC hdc, int32_t nFrom, int32_t nTo) const
{
    const BarBox box = MakeBarBox(m_column, nFrom, nTo);
    C3DBarFill front(m_column.Box(0, nFrom, box.nFront, nTo), m_meter.BarStyle(),
                     m_meter.BackColor(), m_meter.BarColor(), Px());
    const int nDrew = front.Draw(hdc, m_meter.Region());
    const CFigureScope faces(hdc, 0, 0, m_meter.BarColor(), Px());
    if (!faces.IsReady()) return nDrew;
    const POINT ptCorner = m_column.At(box.nFront, nTo);
    const POINT ptFarCorner = m_column.At(box.nBack, nTo + box.nToSlant);
    const POINT side[] = {ptCorner, ptFarCorner, m_column.At(box.nBack, nFrom + box.nFromSlant),
                          m_column.At(box.nFront, nFrom)};
    const POINT top[] = {m_column.At(0, nTo),
                         m_column.At(box.nBack - box.nFront, nTo + box.nToSlant), ptFarCorner,
                         ptCorner};
    ::Polygon(hdc, side, 4);
    ::Polygon(hdc, top, 4);
    return 1;
}

int CBarBody::PaintCylinder(HDC hdc, int32_t nFrom, int32_t nTo) const
{
    const BarCylinder cylinder = MakeBarCylinder(m_column, nFrom, nTo);
    const int32_t nAcross = m_column.Across();
    const int32_t nHalf = cylinder.nCap / 2;
    C3DBarFill body(m_column.Box(0, cylinder.nLow + nHalf, nAcross, cylinder.nHigh + nHalf),
                    m_meter.BarStyle(), m_meter.BackColor(), m_meter.BarColor(), Px());
    // Caps and body share one brush, so that a gradient runs through.
    C3DBarFill caps(m_column.Box(0, cylinder.nLow, nAcross, cylinder.nHigh + cylinder.nCap),
                    m_meter.BarStyle(), m_meter.BackColor(), m_meter.BarColor(), Px());
    caps.DrawCap(hdc, m_column.Box(0, cylinder.nLow, nAcross, cylinder.nLow + cylinder.nCap));
    body.Draw(hdc, m_meter.Region());
    return caps.DrawCap(hdc,
                        m_column.Box(0, cylinder.nHigh, nAcross, cylinder.nHigh + cylinder.nCap));
}

int CBarBody::Outline(HDC hdc, const RECT& rcSegment) const
{
    const CFaceClip clip(hdc, m_meter.Region(), m_meter.Column());
    if (!clip.MayPaint()) return 0;
    const bool bBody = !::IsRectEmpty(&rcSegment);
    const int32_t nFrom = bBody ? m_column.AlongFrom(rcSegment) : 0;
    const int32_t nTo = bBody ? m_column.AlongTo(rcSegment) : 0;
    if (m_meter.GetFrameOption() == FRAME_CYLINDER)
        OutlineCylinder(hdc, nFrom, nTo, bBody);
    else
        OutlineBox(hdc, nFrom, nTo, bBody);
    return 1;
}

// The far edges have the second scale colour, the near ones the first.
void CBarBody::OutlineBox(HDC hdc, int32_t nFrom, int32_t nTo, bool bBody) const
{
    const int32_t nEnd = m_column.Along();
    const BarBox whole = MakeBarBox(m_column, 0, nEnd);
    {
        const CPixelPenScope pen(hdc, 1, m_meter.SecondScaleColor(), Px());
        const POINT side[] = {m_column.PixelAt(whole.nFront, nEnd),
                              m_column.PixelAt(whole.nBack, nEnd),
                              m_column.PixelAt(whole.nBack, whole.nFromSlant),
                              m_column.PixelAt(whole.nFront, 0), m_column.PixelAt(0, 0)};
        // At another scale the slanted edge goes by what follows it, and the body's own lies over
        // it. What follows here is painted over by the front.
        DrawPixelPolyline(hdc, side, Px().IsPlain() ? 4 : 5, 1, Px());
    }
    const CPixelPenScope pen(hdc, 1, m_meter.ScaleColor(), Px());
    const POINT front[] = {m_column.PixelAt(0, 0), m_column.PixelAt(0, nEnd),
                           m_column.PixelAt(whole.nFront, nEnd), m_column.PixelAt(whole.nFront, 0),
                           m_column.PixelAt(0, 0)};
    DrawPixelPolyline(hdc, front, 5, 1, Px());
    if (!bBody) return;
    const BarBox box = MakeBarBox(m_column, nFrom, nTo);
    const POINT ptCorner = m_column.PixelAt(box.nFront, nTo);
    const POINT ptFarCorner = m_column.PixelAt(box.nBack, nTo + box.nToSlant);
    const POINT top[] = {m_column.PixelAt(0, nTo),
                         m_column.PixelAt(box.nBack - box.nFront, nTo + box.nToSlant), ptFarCorner,
                         ptCorner, m_column.PixelAt(0, nTo)};
    DrawPixelPolyline(hdc, top, 5, 1, Px());
    const POINT side[] = {ptFarCorner, m_column.PixelAt(box.nBack, nFrom + box.nFromSlant),
                          m_column.PixelAt(box.nFront, nFrom), m_column.PixelAt(0, nFrom)};
    DrawPixelPolyline(hdc, side, 4, 1, Px());
}

void CBarBody::Ring(HDC hdc, const BarCylinder& cylinder, int32_t nLow) const
{
    const CSelectScope brush(hdc, ::GetStockObject(NULL_BRUSH));
    const RECT rc = m_column.Box(0, nLow, m_column.Across(), nLow + cylinder.nCap);
    const RECT box = StrokedBox(rc, 1, Px());
    if (IsDrawableCurve(rc, Px())) DrawPixelEllipse(hdc, box, Px());
}

// The half of a cap's rim that faces the lower end: the upper half is behind the body.
void CBarBody::LowerArc(HDC hdc, const BarCylinder& cylinder, int32_t nLow) const
{
    const RECT rc = m_column.Box(0, nLow, m_column.Across(), nLow + cylinder.nCap);
    const POINT pt1 = m_column.At(0, nLow + cylinder.nCap / 2);
    const POINT pt2 = m_column.At(m_column.Across(), nLow + cylinder.nCap / 2);
    // Counter-clockwise: from the left by the bottom in a vertical column, from the top by the left
    // in a horizontal one.
    const bool bVertical = pt1.y == pt2.y;
    const POINT& ptFirst = bVertical ? pt1 : pt2;
    const POINT& ptLast = bVertical ? pt2 : pt1;
    const RECT box = StrokedBox(rc, 1, Px());
    if (IsDrawableCurve(rc, Px())) DrawPixelArc(hdc, box, ptFirst, ptLast, Px());
}

void CBarBody::OutlineCylinder(HDC hdc, int32_t nFrom, int32_t nTo, bool bBody) const
{
    const BarCylinder whole = MakeBarCylinder(m_column, 0, m_column.Along());
    const int32_t nHalf = whole.nCap / 2;
    {
        const CPixelPenScope pen(hdc, 1, m_meter.SecondScaleColor(), Px());
        Ring(hdc, whole, whole.nHigh);
    }
    const CPixelPenScope pen(hdc, 1, m_meter.ScaleColor(), Px());
    for (const int32_t nAcross : {0, m_column.Across()}) {
        const POINT side[] = {m_column.PixelAt(nAcross, whole.nLow + nHalf),
                              m_column.PixelAt(nAcross, whole.nHigh + nHalf)};
        DrawPixelLines(hdc, side, 2, 1, Px());
    }
    LowerArc(hdc, whole, whole.nLow);
    if (!bBody) return;
    const BarCylinder body = MakeBarCylinder(m_column, nFrom, nTo);
    if (body.nLow != whole.nLow) LowerArc(hdc, body, body.nLow);
    Ring(hdc, body, body.nHigh);
}

int CBarBody::ReadOut(HDC hdc, float fValue) const
{
    char szText[CMeter::VALUE_TEXT_SIZE];
    m_meter.FormatValue(szText, fValue);
    const RECT rc = m_meter.Column();
    FontCell cell{};
    m_meter.GetFontSize(m_column.Across() / FONT_HINT_PARTS, &cell);
    if (DrawReadOut(hdc, rc, szText, cell)) return 1;
    for (const FontCell& plain : g_smallerCells) {
        FontCell smaller = ScaledCell(plain, Px());
        smaller.bWide = cell.bWide;
        if (smaller.nHeight < cell.nHeight && DrawReadOut(hdc, rc, szText, smaller)) return 1;
    }
    return 0; // a number with digits cut off would be a wrong one
}

// 0 when the text does not fit into the column in this size. What counts is its width in the font:
// bold characters may be wider than their cell.
int CBarBody::DrawReadOut(HDC hdc, const RECT& rc, const char* pszText, FontCell cell) const
{
    const CFont font(MakeMeterFont(cell, FW_BOLD, Px()));
    SIZE size{};
    if (!MeasureMeterText(hdc, pszText, font.Get(), cell.bWide, &size)) return 0;
    const int32_t nFree = WrapSub(HeightOf(rc), size.cy);
    if (size.cx > WidthOf(rc) || nFree < 0) return 0;
    const int32_t nMargin =
        m_column.IsVertical() ? std::min(Px()(READ_OUT_MARGIN), nFree) : nFree / 2;
    return DrawMeterText(hdc,
                         {rc.left + (WidthOf(rc) - size.cx) / 2, rc.bottom - size.cy - nMargin},
                         pszText, font.Get(), m_meter.LabelColor(), cell.bWide);
}

RECT CLongBarMeter3D::Column() const
{
    const RECT rc = FaceBox();
    if (::IsRectEmpty(&rc)) return rc;
    return {BarRect().left, rc.top, WrapSub(BarRect().right, Px()(1)),
            rc.bottom}; // as the values do
}

RECT CLongBarMeter3D::ColumnIn(const RECT& rcFace) const
{
    return {BarRect().left, rcFace.top, BarRect().right, rcFace.bottom};
}
