#include "meter/RoundMeter.h"

#include "base/GdiScopes.h"
#include "base/WrapMath.h"
#include "meter/DialComponents.h"
#include "meter/RoundMeterParts.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr COLORREF BLACK = 0;
constexpr COLORREF RED = 0x0000FF;
constexpr COLORREF GREEN = 0x00FF00;
constexpr int32_t READ_OUT_HINT_PARTS = 6; // of the radius
constexpr int32_t LABEL_PERCENT = 73;
constexpr int32_t LAST_ONE_BAND_STYLE = 1;
constexpr int32_t LAST_TWO_BAND_STYLE = 3;

} // namespace

int CRoundMeter::DrawScale(HDC hdc)
{
    if (!HasScale()) return 0;
    const CRoundMeterScale major(CRoundMeterScale::MAJOR, ScaleColor(), Px());
    const CRoundMeterScale minor(CRoundMeterScale::MINOR, ScaleColor(), Px());
    for (uint32_t i = 0; i <= DrawnTicks(); ++i)
        (IsMajor(i) ? major : minor).Draw(hdc, Centre(), Radius(), TickAngle(i), AxisStyle());
    return 1;
}

int CRoundMeter::DrawAxis(HDC hdc)
{
    if (!HasSpan()) return 0;
    const int32_t r = Radius();
    const CRoundMeterArcAxis broad(r / 20, ScaleColor(), Px());
    const CRoundMeterArcAxis outer(r / 30, ScaleColor(), Px());
    const CRoundMeterArcAxis inner(r / 30, ScaleColor(), Px());
    if (AxisStyle() < 0 || AxisStyle() > LAST_TWO_BAND_STYLE) return 1;
    if (AxisStyle() <= LAST_ONE_BAND_STYLE) {
        broad.Draw(hdc, r, Centre(), StartAngle(), Sweep());
    } else {
        outer.Draw(hdc, r, Centre(), StartAngle(), Sweep());
        inner.Draw(hdc, WrapMulDiv(r, 9, 10), Centre(), StartAngle(), Sweep());
    }
    return 1;
}

int CRoundMeter::DrawLabels(HDC hdc)
{
    if (!HasScale()) return 0;
    const CRoundMeterMark mark(*this, Radius(), LabelColor());
    for (uint32_t i = 0; i <= DrawnTicks(); ++i) {
        if (!HasLabel(i)) continue;
        char szText[VALUE_TEXT_SIZE];
        FormatValue(szText, TickNumber(i));
        const auto fAngle = static_cast<float>(WholeAngle(TickAngle(i)));
        mark.Draw(hdc, At(WrapMulDiv(Radius(), LABEL_PERCENT, 100), fAngle), szText);
    }
    return 1;
}

bool CRoundMeter::HasNeedle() const
{
    return HasScale() && IsDrawableRadius(Radius(), Px());
}

int CRoundMeter::PaintNeedle(HDC hdc, float fAngle, bool bErase) const
{
    return CRoundMeterPin(Radius(), bErase ? FaceColor() : PinColor(), FaceColor(), Px())
        .Draw(hdc, Centre(), fAngle, PinStyle());
}

// Where the corners of a band's edge lie depends on its ends. At another scale some of the green
// one would be seen beside a zone that lies over it.
int CRoundMeter::DrawAlarmZones(HDC hdc)
{
    if (!HasSpan()) return 0;
    const AlarmZones zones = GetAlarmZones();
    const int32_t nRadius = WrapMulDiv(Radius(), 95, 100);
    const int32_t nBand = WrapMulDiv(Radius(), 95, 1000);
    const float fFrom = Px().IsPlain() ? StartAngle() : std::max(StartAngle(), zones.fLow);
    const float fTo = Px().IsPlain() ? EndAngle() : std::min(EndAngle(), zones.fHigh);
    if (fFrom < fTo)
        CRoundMeterArcAxis(nBand, GREEN, Px()).Draw(hdc, nRadius, Centre(), fFrom, fTo - fFrom);
    if (zones.fLow > StartAngle())
        CRoundMeterArcAxis(nBand, zones.clrAtStart, Px())
            .Draw(hdc, nRadius, Centre(), StartAngle(), zones.fLow - StartAngle());
    if (zones.fHigh < EndAngle())
        CRoundMeterArcAxis(nBand, zones.clrAtEnd, Px())
            .Draw(hdc, nRadius, Centre(), zones.fHigh, EndAngle() - zones.fHigh);
    return 1;
}

int CRoundMeter::FormatReadOut(char (&szOut)[VALUE_TEXT_SIZE], double fValue) const
{
    const uint32_t nShift =
        GetDecimalShift() < MAX_DECIMAL_SHIFT ? GetDecimalShift() : MAX_DECIMAL_SHIFT;
    double fShown = GetScaleEndShown() * fValue / GetMax();
    for (uint32_t i = 0; i < nShift; ++i) fShown /= 10;
    std::snprintf(szOut, sizeof szOut, "%.*f", static_cast<int>(nShift) + 1, fShown);
    return 1;
}

// By the zone of the value before: a meter stores the new one when all of its layers are painted.
COLORREF CRoundMeter::ReadOutColor() const
{
    if (!GetShowAlarm()) return BLACK;
    const AlarmZones zones = GetAlarmZones();
    const float fAngle = AngleOf(GetShownReadOut());
    return zones.fLow < fAngle && fAngle < zones.fHigh ? GREEN : RED;
}

int CRoundMeter::DrawReadOut(HDC hdc, double fValue) const
{
    if (!HasTicks() || GetMax() == 0) return 0;
    FontCell cell{};
    GetFontSize(Radius() / READ_OUT_HINT_PARTS, &cell);
    const CFont font(MakeMeterFont(cell, FW_BOLD, Px()));
    char szText[VALUE_TEXT_SIZE];
    FormatReadOut(szText, fValue);
    const auto nLength = static_cast<int32_t>(std::strlen(szText));
    return DrawMeterText(hdc,
                         {WrapSub(Centre().x, nLength * cell.nWidth / 2),
                          WrapAdd(Centre().y, Radius() / 2 - cell.nHeight * 2 / 3)},
                         szText, font.Get(), ReadOutColor(), cell.bWide);
}

int CRoundMeter::DrawValueText(HDC hdc, float fValue)
{
    return DrawReadOut(hdc, fValue);
}

int CRoundMeter::DrawValueText(HDC hdc, int32_t nValue)
{
    return DrawReadOut(hdc, nValue);
}
