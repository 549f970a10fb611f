// The vertical bar; see the header.
#include "meter/UpBarMeter.h"

#include "meter/DialComponents.h"
#include "render/Mapping.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int32_t MIN_AXIS_WIDTH = 5;
constexpr int32_t MIN_TICK_WIDTH = 4;
constexpr int32_t AXIS_FROM_RIGHT = 7;
constexpr int32_t TICKS_FROM_RIGHT = 6;
constexpr int32_t MAJOR_LENGTH = 6;
constexpr int32_t MINOR_LENGTH = 4;
constexpr int32_t LABELS_FROM_RIGHT = 8;
constexpr int32_t FONT_HINT_PARTS = 4; // of the width

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

RECT CUpBarMeter::Segment(double fFrom, double fTo) const
{
    return {m_rcColumn.left, VerticalPosition(Scale(), std::max(fFrom, fTo)), m_rcColumn.right,
            VerticalPosition(Scale(), std::min(fFrom, fTo))};
}

int CUpBarMeter::DrawScale(HDC hdc)
{
    const RECT& rc = BarRect();
    if (!HasBar() || WidthOf(rc) < MIN_TICK_WIDTH) return 0;
    const CScaleLine line(1, ScaleColor());
    const int32_t nX = WrapSub(rc.right, TICKS_FROM_RIGHT);
    for (uint32_t i = 0; i <= DrawnTicks(); ++i) {
        const int32_t nY = VerticalTick(rc, i, DrawnTicks());
        line.Draw(hdc, {nX, nY}, {WrapAdd(nX, IsMajor(i) ? MAJOR_LENGTH : MINOR_LENGTH), nY});
    }
    return 1;
}

int CUpBarMeter::DrawAxis(HDC hdc)
{
    const RECT& rc = BarRect();
    if (!HasBar() || WidthOf(rc) < MIN_AXIS_WIDTH) return 0;
    const int32_t nX = WrapSub(rc.right, AXIS_FROM_RIGHT);
    return CScaleLine(1, ScaleColor()).Draw(hdc, {nX, rc.top}, {nX, rc.bottom});
}

// Unlike on dials, both ends always have their number.
int CUpBarMeter::DrawLabels(HDC hdc)
{
    const RECT& rc = BarRect();
    if (!HasBar()) return 0;
    FontCell cell{};
    GetFontSize(WidthOf(rc) / FONT_HINT_PARTS, &cell);
    const CScaleMark mark(cell.nWidth, cell.nHeight, LabelColor());
    for (uint32_t i = 0; i <= DrawnTicks(); ++i) {
        if (i != 0 && i != DrawnTicks() && !IsMajor(i)) continue;
        char szText[VALUE_TEXT_SIZE];
        FormatValue(szText, TickNumber(i));
        const auto nLength = static_cast<int32_t>(std::strlen(szText));
        mark.Draw(hdc, WrapSub(rc.right, LABELS_FROM_RIGHT + nLength * cell.nWidth),
                  WrapSub(VerticalTick(rc, i, DrawnTicks()), cell.nHeight / 2), szText);
    }
    return 1;
}
