// The horizontal bar; see the header.
#include "meter/LongBarMeter.h"

#include "meter/DialComponents.h"
#include "render/Mapping.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int32_t MIN_AXIS_HEIGHT = 5;
constexpr int32_t MIN_TICK_HEIGHT = 4;
constexpr int32_t AXIS_FROM_BOTTOM = 7;
constexpr int32_t TICKS_FROM_BOTTOM = 6;
constexpr int32_t MAJOR_LENGTH = 6;
constexpr int32_t MINOR_LENGTH = 4;
constexpr int32_t LABELS_FROM_BOTTOM = 8;
constexpr int32_t FONT_HINT_PARTS = 4; // of the height

} // namespace

CLongBarMeter::CLongBarMeter(HRGN hRegion, const RECT& rcBar) noexcept : CBarMeter(hRegion, rcBar)
{
}

RECT CLongBarMeter::Column() const
{
    return BarRect();
}

RECT CLongBarMeter::Segment(double fFrom, double fTo) const
{
    const RECT rcColumn = Column();
    return {HorizontalPosition(Scale(), std::min(fFrom, fTo)), rcColumn.top,
            HorizontalPosition(Scale(), std::max(fFrom, fTo)), rcColumn.bottom};
}

int CLongBarMeter::DrawScale(HDC hdc)
{
    const RECT& rc = BarRect();
    if (!HasBar() || HeightOf(rc) < MIN_TICK_HEIGHT) return 0;
    const CScaleLine line(1, ScaleColor());
    const int32_t nY = WrapSub(rc.bottom, TICKS_FROM_BOTTOM);
    for (uint32_t i = 0; i <= DrawnTicks(); ++i) {
        const int32_t nX = HorizontalTick(rc, i, DrawnTicks());
        line.Draw(hdc, {nX, nY}, {nX, WrapAdd(nY, IsMajor(i) ? MAJOR_LENGTH : MINOR_LENGTH)});
    }
    return 1;
}

int CLongBarMeter::DrawAxis(HDC hdc)
{
    const RECT& rc = BarRect();
    if (!HasBar() || HeightOf(rc) < MIN_AXIS_HEIGHT) return 0;
    const int32_t nY = WrapSub(rc.bottom, AXIS_FROM_BOTTOM);
    return CScaleLine(1, ScaleColor()).Draw(hdc, {rc.left, nY}, {rc.right, nY});
}

// Both ends always have their number, each centred under its tick.
int CLongBarMeter::DrawLabels(HDC hdc)
{
    const RECT& rc = BarRect();
    if (!HasBar()) return 0;
    FontCell cell{};
    GetFontSize(HeightOf(rc) / FONT_HINT_PARTS, &cell);
    const CScaleMark mark(cell.nWidth, cell.nHeight, LabelColor());
    const int32_t nY = WrapSub(rc.bottom, LABELS_FROM_BOTTOM + cell.nHeight);
    for (uint32_t i = 0; i <= DrawnTicks(); ++i) {
        if (i != 0 && i != DrawnTicks() && !IsMajor(i)) continue;
        char szText[VALUE_TEXT_SIZE];
        FormatValue(szText, TickNumber(i));
        const auto nLength = static_cast<int32_t>(std::strlen(szText));
        mark.Draw(hdc, WrapSub(HorizontalTick(rc, i, DrawnTicks()), nLength * cell.nWidth / 2), nY,
                  szText);
    }
    return 1;
}
