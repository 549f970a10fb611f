#include "meter/PieUpgradeMeter.h"

#include "meter/ArcFill.h"
#include "meter/DialComponents.h"
#include "meter/PieMeterScale.h"

namespace {

constexpr int32_t FONT_HINT_PARTS = 6; // of the radius
constexpr float CLOSED_SWEEP = 360.0F;

} // namespace

int CPieUpgradeMeter::DrawScale(HDC hdc)
{
    if (!HasScale()) return 0;
    const CPieMeterScale major(CPieMeterScale::Kind::Major, ScaleColor());
    const CPieMeterScale minor(CPieMeterScale::Kind::Minor, ScaleColor());
    for (uint32_t i = 0; i <= DrawnTicks(); ++i)
        (IsMajor(i) ? major : minor).Draw(hdc, Centre(), Radius(), TickAngle(i), AxisStyle());
    return 1;
}

int CPieUpgradeMeter::DrawLabels(HDC hdc)
{
    FontCell cell{};
    GetFontSize(Radius() / FONT_HINT_PARTS, &cell);
    return DrawLabelsIn(hdc, cell);
}

// One pixel, so that the fill stays to be seen. Without a fill the span has the erase colour as its
// ground.
int CPieUpgradeMeter::DrawFrame(HDC hdc)
{
    const int32_t nRadius = PieRadius(Radius());
    if (!HasSpan() || nRadius == 0 || (!GetShowAxis() && !GetShowFill())) return 0;
    if (!GetShowFill())
        CArcFill(DRAFT_SOLID_TEXT, EraseColor(), EraseColor())
            .Draw(hdc, nRadius, Centre(), StartAngle(), Sweep());
    CArcAxis(1, ScaleColor()).Draw(hdc, nRadius, Centre(), StartAngle(), Sweep());
    if (Sweep() >= CLOSED_SWEEP) return 1; // a whole circle has no sides
    const CScaleLine side(1, ScaleColor());
    side.Draw(hdc, Centre(), PolarPoint(Centre(), nRadius, StartAngle()));
    side.Draw(hdc, Centre(), PolarPoint(Centre(), nRadius, EndAngle()));
    return 1;
}
