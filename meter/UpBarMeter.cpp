#include "meter/UpBarMeter.h"

#include "base/Rects.h"

#include <algorithm>

namespace {

RECT ColumnOf(HRGN hRegion, const RECT& rcBar)
{
    RECT rc{};
    if (!hRegion || ::GetRgnBox(hRegion, &rc) == ERROR || ::IsRectEmpty(&rc)) return RECT{};
    return {rc.left, rcBar.top, rc.right, rcBar.bottom};
}

} // namespace

CUpBarMeter::CUpBarMeter(HRGN hRegion, const RECT& rcBar) noexcept
    : CBarMeter(hRegion, rcBar), m_rcColumn(ColumnOf(hRegion, rcBar))
{
}

RECT CUpBarMeter::Column() const
{
    return m_rcColumn;
}

RECT CUpBarMeter::ColumnIn(const RECT& rcFace) const
{
    return {rcFace.left, BarRect().top, rcFace.right, BarRect().bottom};
}

RECT CUpBarMeter::Segment(double fFrom, double fTo) const
{
    return {m_rcColumn.left, VerticalPosition(Scale(), std::max(fFrom, fTo)), m_rcColumn.right,
            VerticalPosition(Scale(), std::min(fFrom, fTo))};
}

int32_t CUpBarMeter::ScaleBreadth() const
{
    return WidthOf(BarRect());
}

POINT CUpBarMeter::BesideTick(uint32_t nTick, int32_t nFromSide) const
{
    return {WrapSub(BarRect().right, nFromSide), VerticalTick(BarRect(), nTick, DrawnTicks())};
}

// Right-aligned against the ticks. A font that makes a number wider than its cells does not bring
// it over axis and ticks.
POINT CUpBarMeter::LabelPlace(uint32_t nTick, SIZE text, int32_t nWidth, int32_t nFromSide) const
{
    const POINT pt = BesideTick(nTick, nFromSide);
    return {WrapSub(pt.x, std::max<int32_t>(text.cx, nWidth)), WrapSub(pt.y, text.cy / 2)};
}

CBarMeter::Line CUpBarMeter::LineAlong(int32_t nFromSide) const
{
    const int32_t nX = WrapSub(BarRect().right, nFromSide);
    return {{nX, BarRect().top}, {nX, BarRect().bottom}};
}
