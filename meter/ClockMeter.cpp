#include "meter/ClockMeter.h"

#include "include/QELEngine.h"
#include "meter/ClockMark.h"
#include "meter/ClockScale.h"

int CClockMeter::DrawScale(HDC hdc)
{
    return CClockScale(ScaleColor()).Draw(hdc, Centre(), Radius(), AxisStyle());
}

int CClockMeter::DrawAxis(HDC)
{
    return 0;
}

int CClockMeter::DrawLabels(HDC hdc)
{
    return CClockMark(*this, Radius(), LabelColor()).Draw(hdc, Centre());
}

int CClockMeter::DrawPin(HDC hdc, int32_t, uint32_t)
{
    m_drawn = CClockPin::Now();
    m_bDrawn = true;
    return CClockPin(Radius(), PinColor(), FaceColor()).Draw(hdc, Centre(), PinStyle(), m_drawn);
}

int CClockMeter::ErasePin(HDC hdc, int32_t, uint32_t nFlags)
{
    if (nFlags & QEL_DRAW_FULL) return 1;
    if (!m_bDrawn) return 0;
    return CClockPin(Radius(), PinColor(), FaceColor()).Erase(hdc, Centre(), PinStyle(), m_drawn);
}
