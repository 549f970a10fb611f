#include "meter/PieMeter.h"

#include "meter/ArcFill.h"

namespace {

constexpr float ERASE_FROM = 0.1F; // degrees that the sector must have shrunk by

} // namespace

// A smaller value takes the old sector away, from the start, before the new one is painted.
int CPieMeter::FillTo(HDC hdc, double fValue, uint32_t nFlags) const
{
    const int32_t nRadius = PieRadius(Radius());
    if (!HasScale() || nRadius == 0) return 0;
    const float fNew = AngleOf(fValue);
    const float fOld = AngleOf(GetShownValue());
    int nDrew = 0;
    if (!(nFlags & QEL_DRAW_FULL) && fOld - fNew >= ERASE_FROM)
        nDrew = CArcFill(DRAFT_SOLID_TEXT, m_clrErase, m_clrErase)
                    .Draw(hdc, nRadius, Centre(), StartAngle(), fOld - StartAngle());
    if (fValue == 0) return nDrew;
    return CArcFill(m_nSectorStyle, m_clrErase, m_clrSector)
        .Draw(hdc, nRadius, Centre(), StartAngle(), fNew - StartAngle());
}

int CPieMeter::DrawFill(HDC hdc, float fValue, uint32_t nFlags)
{
    return FillTo(hdc, fValue, nFlags);
}

int CPieMeter::DrawFill(HDC hdc, int32_t nValue, uint32_t nFlags)
{
    return FillTo(hdc, nValue, nFlags);
}

int CPieMeter::DrawAlarmZones(HDC)
{
    return 0;
}
