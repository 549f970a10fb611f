#include "meter/LongBarMeter.h"

#include "base/Rects.h"

#include <algorithm>

CLongBarMeter::CLongBarMeter(HRGN hRegion, const RECT& rcBar) noexcept : CBarMeter(hRegion, rcBar)
{
}

RECT CLongBarMeter::Column() const
{
    return BarRect();
}

RECT CLongBarMeter::ColumnIn(const RECT&) const
{
    return BarRect();
}

RECT CLongBarMeter::Segment(double fFrom, double fTo) const
{
    const RECT rcColumn = Column();
    return {HorizontalPosition(Scale(), std::min(fFrom, fTo)), rcColumn.top,
            HorizontalPosition(Scale(), std::max(fFrom, fTo)), rcColumn.bottom};
}

int32_t CLongBarMeter::ScaleBreadth() const
{
    return HeightOf(BarRect());
}

POINT CLongBarMeter::BesideTick(uint32_t nTick, int32_t nFromSide) const
{
    return {HorizontalTick(BarRect(), nTick, DrawnTicks()), WrapSub(BarRect().bottom, nFromSide)};
}

// Centred on the tick, above the lower side.
POINT CLongBarMeter::LabelPlace(uint32_t nTick, SIZE text, int32_t, int32_t nFromSide) const
{
    const POINT pt = BesideTick(nTick, nFromSide);
    return {WrapSub(pt.x, text.cx / 2), WrapSub(pt.y, text.cy)};
}

CBarMeter::Line CLongBarMeter::LineAlong(int32_t nFromSide) const
{
    const int32_t nY = WrapSub(BarRect().bottom, nFromSide);
    return {{BarRect().left, nY}, {BarRect().right, nY}};
}
