#include "meter/Meter.h"

#include "base/DrawLimits.h"
#include "base/PixelPen.h"
#include "base/Rects.h"
#include "base/Refusals.h"
#include "include/QELEngine.h"

#include <cstdio>

namespace {

constexpr DWORD METER_CHARSET = 255;
constexpr double TENTH_FROM = 0.05; // the fraction from which a value prints with a decimal

// The cells by font size code, 2 to 10; every other code has the smallest one.
constexpr FontCell g_cells[] = {{8, 16},  {12, 12}, {16, 16}, {12, 24}, {16, 32},
                                {24, 16}, {24, 24}, {24, 32}, {32, 32}};
constexpr uint32_t FIRST_CELL_CODE = 2;
constexpr FontCell SMALLEST_CELL = {6, 12};

FontCell AutomaticCell(uint32_t nHint)
{
    if (nHint < 8) return SMALLEST_CELL;
    if (nHint < 12) return {8, 16};
    if (nHint < 16) return {12, 24};
    return {16, 32};
}

int32_t PowerOfTen(uint32_t n)
{
    int32_t nPower = 1;
    while (n--) nPower *= 10;
    return nPower;
}

int32_t Mirrored(int32_t nValue, int32_t nMin, int32_t nMax)
{
    return WrapAdd(WrapSub(nMax, nValue), nMin);
}

float Mirrored(float fValue, int32_t nMin, int32_t nMax)
{
    return static_cast<float>(nMax) - fValue + static_cast<float>(nMin);
}

int32_t Whole(int32_t nValue)
{
    return nValue;
}

int32_t Whole(float fValue)
{
    return TruncToInt(fValue);
}

} // namespace

template <class Value>
void CMeter::DrawLayers(HDC hdc, Value value, uint32_t nFlags)
{
    const Value pointer = m_bOnWay ? static_cast<Value>(m_fPointer) : value;
    const Value painted = m_bReverse ? Mirrored(pointer, m_nMin, m_nMax) : pointer;
    if (m_bShowFill) DrawFill(hdc, painted, nFlags);
    if (m_bShowPin) ErasePin(hdc, painted, nFlags);
    if (m_bShowAlarm) DrawAlarmZones(hdc);
    if (m_bShowAxis) DrawAxis(hdc);
    if (m_bShowFrame) DrawFrame(hdc);
    if (m_bShowValue) DrawValueText(hdc, m_bReverse ? Mirrored(value, m_nMin, m_nMax) : value);
    if (m_bShowScale) DrawScale(hdc);
    if (m_bShowLabels) DrawLabels(hdc);
    if (m_bShowPin) DrawPin(hdc, painted, nFlags);
    m_nLastValue = Whole(pointer);
    m_nLastReadOut = Whole(value);
}

int CMeter::Draw(HDC hdc, float fValue, uint32_t nFlags)
{
    DrawLayers(hdc, fValue, nFlags);
    return 1;
}

int CMeter::Draw(HDC hdc, int32_t nValue, uint32_t nFlags)
{
    DrawLayers(hdc, nValue, nFlags);
    return 1;
}

int CMeter::DrawOnWay(HDC hdc, float fValue, float fPointer, uint32_t nFlags)
{
    m_bOnWay = true;
    m_fPointer = fPointer;
    const int nResult = Draw(hdc, fValue, nFlags);
    m_bOnWay = false;
    return nResult;
}

int32_t CMeter::AsPainted(int32_t nValue) const
{
    return m_bReverse ? Mirrored(nValue, m_nMin, m_nMax) : nValue;
}

float CMeter::TickNumber(uint32_t nTick) const
{
    const int32_t nStart = GetScaleStartShown();
    const int32_t nAlong =
        WrapMul(WrapSub(GetScaleEndShown(), nStart), static_cast<int32_t>(nTick));
    return static_cast<float>(nStart + static_cast<double>(nAlong) / DrawnTicks());
}

int CMeter::FormatValue(char (&szOut)[VALUE_TEXT_SIZE], float fValue) const
{
    // A value beyond 32 bits has no whole part to compare with and prints with a decimal.
    const bool bTenths = static_cast<double>(fValue) - TruncToInt(fValue) >= TENTH_FROM;
    const uint32_t nShift =
        m_nDecimalShift < MAX_DECIMAL_SHIFT ? m_nDecimalShift : MAX_DECIMAL_SHIFT;
    const int nDecimals = static_cast<int>(nShift) + (bTenths ? 1 : 0);
    std::snprintf(szOut, sizeof szOut, "%.*f", nDecimals,
                  static_cast<double>(fValue) / PowerOfTen(nShift));
    return 1;
}

// A class that says no more may paint anywhere.
RECT CMeter::PaintedRect(const RECT&) const
{
    return ALL_IN_REACH;
}

// All numbers lie between those at the two ends, unless their steps wrap around.
int32_t CMeter::LongestNumber() const
{
    const int64_t nStart = GetScaleStartShown();
    const int64_t nSpan = GetScaleEndShown() - nStart;
    const int64_t nFarthest = nSpan * DrawnTicks();
    const bool bWraps =
        nSpan != static_cast<int32_t>(nSpan) || nFarthest != static_cast<int32_t>(nFarthest);
    const uint32_t nShift =
        m_nDecimalShift < MAX_DECIMAL_SHIFT ? m_nDecimalShift : MAX_DECIMAL_SHIFT;
    const auto length = [&](double fNumber) {
        return std::snprintf(nullptr, 0, "%.*f", static_cast<int>(nShift) + 1,
                             fNumber / PowerOfTen(nShift));
    };
    if (bWraps) return length(2.0 * INT32_MIN);
    const bool bMinus = nStart < 0 || GetScaleEndShown() < 0;
    const int nFirst = length(static_cast<float>(nStart < 0 ? -nStart : nStart));
    const int64_t nEnd = GetScaleEndShown();
    const int nLast = length(static_cast<float>(nEnd < 0 ? -nEnd : nEnd));
    return (nFirst > nLast ? nFirst : nLast) + (bMinus ? 1 : 0);
}

int CMeter::GetFontSize(int32_t nHint, FontCell* pCell) const
{
    const uint32_t nCell = m_nFontSize - FIRST_CELL_CODE;
    if (m_nFontSize == 0)
        *pCell = AutomaticCell(static_cast<uint32_t>(m_px.Unscaled(nHint)));
    else
        *pCell = nCell < sizeof g_cells / sizeof g_cells[0] ? g_cells[nCell] : SMALLEST_CELL;
    *pCell = ScaledCell(*pCell, m_px);
    pCell->bWide = m_bWideTexts;
    return 1;
}

HFONT MakeMeterFont(FontCell cell, int nWeight, CPixelScale px)
{
    if (!IsDrawableCell(cell.nWidth, cell.nHeight, px)) return nullptr;
    const DWORD nQuality = TextQuality(px, DEFAULT_QUALITY);
    if (cell.bWide)
        return Made(::CreateFontW(cell.nHeight, cell.nWidth, 0, 0, nWeight, FALSE, FALSE, FALSE,
                                  ANSI_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, nQuality,
                                  DEFAULT_PITCH | FF_DONTCARE, nullptr));
    return Made(::CreateFontA(cell.nHeight, cell.nWidth, 0, 0, nWeight, FALSE, FALSE, FALSE,
                              METER_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, nQuality,
                              DEFAULT_PITCH | FF_DONTCARE, nullptr));
}
