#include "meter/SectorMeter.h"

#include "base/Refusals.h"
#include "meter/DialComponents.h"
#include "meter/DialScopes.h"

#include <cstring>

namespace {

constexpr COLORREF g_palette[MAX_SECTORS] = {
    0x66FFFF, 0xFF33FF, 0x33CCFF, 0x009900, 0x6633CC, 0x669933, 0x000099, 0x999900,
    0x6600CC, 0xFF0000, 0xCCFFFF, 0x009966, 0xFFFF00, 0x0000FF, 0x339999, 0x6633FF,
    0xFF3333, 0x66CC66, 0x33FF33, 0x663300, 0x3300FF, 0xCCCCFF, 0x9966CC, 0x999999,
    0x6699CC, 0x996633, 0xFFCC00, 0x663399, 0xFF0033, 0xFF00CC, 0x663366, 0x666699};

constexpr double TURN = 360.0;
constexpr double WHOLE_DISC = 0.000001; // what a share may lack to be all of the disc
constexpr int32_t FONT_HINT_PARTS = 6;  // of the radius

} // namespace

int CSectorMeter::DrawScale(HDC)
{
    return 0;
}

int CSectorMeter::DrawAxis(HDC)
{
    return 0;
}

int CSectorMeter::DrawLabels(HDC)
{
    return 0;
}

void CSectorMeter::SetSectorValues(const int32_t (&nValues)[MAX_SECTORS])
{
    std::memcpy(m_nValues, nValues, sizeof m_nValues);
}

void CSectorMeter::SetSectorValues(const float (&fValues)[MAX_SECTORS])
{
    std::memcpy(m_fValues, fValues, sizeof m_fValues);
}

int32_t CSectorMeter::ChartRadius() const
{
    const int32_t nWidth = WrapSub(m_rcSectors.right, m_rcSectors.left);
    const int32_t nHeight = WrapSub(m_rcSectors.bottom, m_rcSectors.top);
    return (nWidth < nHeight ? nWidth : nHeight) / 2;
}

// Result: the sum of the values. Without any, all sectors are alike.
template <class Value>
double CSectorMeter::TakeShares(const Value (&values)[MAX_SECTORS])
{
    double fTotal = 0;
    for (uint32_t i = 0; i < m_nSectors; ++i) fTotal += values[i];
    for (uint32_t i = 0; i < m_nSectors; ++i)
        m_fShares[i] = fTotal == 0 ? 1.0 / m_nSectors : values[i] / fTotal;
    return fTotal;
}

CSectorMeter::Sector CSectorMeter::SectorAt(uint32_t n, double fStart, double fTotal) const
{
    Sector sector{};
    sector.fStart = fStart;
    sector.fShare = m_fShares[n];
    const int32_t nRadius = ChartRadius();
    sector.ptStart = At(nRadius, static_cast<float>(fStart * TURN));
    sector.ptEnd = At(nRadius, static_cast<float>((fStart + sector.fShare) * TURN));
    const bool bOnePoint = sector.ptStart.x == sector.ptEnd.x && sector.ptStart.y == sector.ptEnd.y;
    sector.bVisible = !bOnePoint || fTotal == 0 || 1 - sector.fShare <= WHOLE_DISC;
    return sector;
}

int CSectorMeter::Fill(HDC hdc, double fTotal) const
{
    if (!IsDrawableRadius(ChartRadius(), Px())) return 0;
    // The pen is the one that the context holds, as wide as its pixels are here.
    const CHeldPenScope pen(hdc, Px());
    const RECT rc = StrokedBox(SquareAround(Centre(), ChartRadius()), pen.Pixels(), Px());
    double fStart = 0;
    for (uint32_t i = 0; i < m_nSectors; ++i) {
        const Sector sector = SectorAt(i, fStart, fTotal);
        fStart += sector.fShare;
        if (!sector.bVisible) continue;
        const HBRUSH hBrush = Made(::CreateSolidBrush(g_palette[i]));
        {
            const CSelectScope brush(hdc, hBrush);
            const POINT pt1 = StrokedPoint(sector.ptEnd, pen.Pixels(), Px());
            const POINT pt0 = StrokedPoint(sector.ptStart, pen.Pixels(), Px());
            ::Pie(hdc, rc.left, rc.top, rc.right, rc.bottom, pt1.x, pt1.y, pt0.x, pt0.y);
        }
        if (hBrush) ::DeleteObject(hBrush);
    }
    return m_nSectors ? 1 : 0;
}

int CSectorMeter::DrawFill(HDC hdc, float, uint32_t)
{
    return Fill(hdc, TakeShares(m_fValues));
}

int CSectorMeter::DrawFill(HDC hdc, int32_t, uint32_t)
{
    return Fill(hdc, TakeShares(m_nValues));
}

template <class Value>
int CSectorMeter::PrintValues(HDC hdc, const Value (&values)[MAX_SECTORS])
{
    const double fTotal = TakeShares(values);
    if (!IsDrawableRadius(ChartRadius(), Px()))
        return 0; // no chart, so there is nothing to say of it
    FontCell cell{};
    GetFontSize(ChartRadius() / FONT_HINT_PARTS, &cell);
    const CFont font(MakeMeterFont(cell, FW_BOLD, Px()));
    int nDrew = 0;
    double fStart = 0;
    for (uint32_t i = 0; i < m_nSectors; ++i) {
        const Sector sector = SectorAt(i, fStart, fTotal);
        fStart += sector.fShare;
        if (!sector.bVisible) continue;
        char szText[VALUE_TEXT_SIZE];
        FormatValue(szText, static_cast<float>(values[i]));
        const auto fMiddle = static_cast<float>((sector.fStart + sector.fShare / 2) * TURN);
        const POINT pt = At(WrapMulDiv(ChartRadius(), 2, 3), fMiddle);
        const auto nLength = static_cast<int32_t>(std::strlen(szText));
        nDrew |= DrawMeterText(
            hdc, {WrapSub(pt.x, nLength * cell.nWidth / 2), WrapSub(pt.y, cell.nHeight / 2)},
            szText, font.Get(), LabelColor(), cell.bWide);
    }
    return nDrew;
}

int CSectorMeter::DrawValueText(HDC hdc, float)
{
    return PrintValues(hdc, m_fValues);
}

int CSectorMeter::DrawValueText(HDC hdc, int32_t)
{
    return PrintValues(hdc, m_nValues);
}
