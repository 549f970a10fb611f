#include "meter/ClockMark.h"

#include "base/GdiScopes.h"
#include "meter/DialComponents.h"
#include "meter/DialGeometry.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr int32_t HOURS = 12;
constexpr float DEGREES_AN_HOUR = 30.0F;
constexpr float TOP = 180.0F;
constexpr int32_t PLACE_PERCENT = 76; // of the radius, for the middle of a numeral
constexpr int32_t HEIGHT_PARTS = 5;   // of the radius
constexpr int32_t MIN_HEIGHT = 8;

FontCell CellFor(const CMeter& meter, int32_t nRadius)
{
    FontCell cell{};
    if (meter.GetFontSize()) {
        meter.GetFontSize(0, &cell);
        return cell;
    }
    cell.nHeight = nRadius / HEIGHT_PARTS;
    if (cell.nHeight < MIN_HEIGHT) cell.nHeight = MIN_HEIGHT;
    cell.nWidth = WrapMulDiv(cell.nHeight, 9, 20);
    return cell;
}

} // namespace

CClockMark::CClockMark(const CMeter& meter, int32_t nRadius, COLORREF clr) noexcept
    : m_nRadius(nRadius), m_cell(CellFor(meter, nRadius)), m_hFont(MakeMeterFont(m_cell, FW_BOLD)),
      m_clr(clr)
{
}

CClockMark::~CClockMark()
{
    if (m_hFont) ::DeleteObject(m_hFont);
}

int CClockMark::Draw(HDC hdc, POINT ptCentre) const
{
    if (!m_hFont || !IsDrawableRadius(m_nRadius)) return 0;
    for (int32_t nHour = 1; nHour <= HOURS; ++nHour) DrawNumeral(hdc, ptCentre, nHour);
    return 1;
}

void CClockMark::DrawNumeral(HDC hdc, POINT ptCentre, int32_t nHour) const
{
    char szText[12];
    std::snprintf(szText, sizeof szText, "%d", static_cast<int>(nHour));
    const POINT pt = PolarPoint(ptCentre, WrapMulDiv(m_nRadius, PLACE_PERCENT, 100),
                                TOP + static_cast<float>(nHour) * DEGREES_AN_HOUR);
    SIZE size{static_cast<LONG>(std::strlen(szText)) * m_cell.nWidth, m_cell.nHeight};
    {
        const CSelectScope font(hdc, m_hFont);
        ::GetTextExtentPoint32A(hdc, szText, static_cast<int>(std::strlen(szText)), &size);
    }
    DrawMeterText(hdc, {WrapSub(pt.x, size.cx / 2), WrapSub(pt.y, size.cy / 2)}, szText, m_hFont,
                  m_clr);
}
