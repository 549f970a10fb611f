// The base of the bars; see the header.
#include "meter/BarMeter.h"

#include "meter/BarFill.h"

bool CBarMeter::HasBar() const
{
    return !::IsRectEmpty(&m_rcBar) && HasRange() && HasTicks();
}

int CBarMeter::FillTo(HDC hdc, double fValue)
{
    const RECT rcColumn = Column();
    if (!m_hRegion || ::IsRectEmpty(&rcColumn) || !HasBar()) return 0;
    const BarRule rule{static_cast<double>(GetMin()),
                       static_cast<double>(GetMax()),
                       static_cast<double>(GetBaseValue()),
                       GetUseBaseValue() != 0,
                       GetReverse() != 0,
                       GetFillOnly() != 0};
    return PaintParts(hdc, SplitBar(rule, fValue));
}

int CBarMeter::PaintParts(HDC hdc, const BarParts& parts)
{
    PaintEmpty(hdc, parts.emptyAtBase);
    if (parts.filled.bThere)
        CBarFill(Segment(parts.filled.fFrom, parts.filled.fTo), m_nBarStyle, m_clrBack, m_clrBar)
            .Draw(hdc, m_hRegion);
    PaintEmpty(hdc, parts.emptyAtValue);
    return 1;
}

void CBarMeter::PaintEmpty(HDC hdc, const BarPart& part) const
{
    if (!part.bThere) return;
    CBarFill(Segment(part.fFrom, part.fTo), DRAFT_SOLID_TEXT, m_clrBack, m_clrEmpty)
        .Draw(hdc, m_hRegion);
}

int CBarMeter::DrawFill(HDC hdc, float fValue, uint32_t)
{
    return FillTo(hdc, fValue);
}

int CBarMeter::DrawFill(HDC hdc, int32_t nValue, uint32_t)
{
    return FillTo(hdc, nValue);
}

int CBarMeter::DrawPin(HDC, float, uint32_t)
{
    return 0;
}

int CBarMeter::DrawPin(HDC, int32_t, uint32_t)
{
    return 0;
}

int CBarMeter::ErasePin(HDC, float, uint32_t)
{
    return 0;
}

int CBarMeter::ErasePin(HDC, int32_t, uint32_t)
{
    return 0;
}

int CBarMeter::DrawAlarmZones(HDC)
{
    return 0;
}

int CBarMeter::DrawFrame(HDC)
{
    return 0;
}

int CBarMeter::DrawValueText(HDC, float)
{
    return 0;
}

int CBarMeter::DrawValueText(HDC, int32_t)
{
    return 0;
}
