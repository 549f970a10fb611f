#include "meter/ArcMeter.h"

#include "base/Refusals.h"
#include "base/WrapMath.h"
#include "include/QELEngine.h"
#include "meter/DialComponents.h"

namespace {

constexpr int32_t MIN_NEEDLE = 4;
constexpr int32_t NEEDLE_FROM = 5; // the needle begins outside of the centre disc
constexpr int32_t NEEDLE_WIDTH = 3;
constexpr int32_t CENTRE_RADIUS = 3;
constexpr int32_t ALARM_WIDTH = 2;
constexpr int32_t LABEL_CELL = 8;

bool SavesWholeContext()
{
#if defined(_MSC_VER)
#pragma warning(suppress : 4996) // the version that systems have reported since 3.0 is enough here
#endif
    return LOBYTE(LOWORD(::GetVersion())) >= 3;
}

} // namespace

CDialClip::CDialClip(HDC hdc, const RECT& rc, bool bWholeContext) noexcept
    : m_hdc(hdc), m_nSaved(bWholeContext ? ::SaveDC(hdc) : 0)
{
    if (!m_nSaved && !KeepRegion()) return;
    const int nResult = ::IntersectClipRect(hdc, rc.left, rc.top, rc.right, rc.bottom);
    m_bVisible = nResult != ERROR && nResult != NULLREGION;
}

CDialClip::~CDialClip()
{
    if (m_nSaved) ::RestoreDC(m_hdc, m_nSaved);
    if (m_bKept) ::SelectClipRgn(m_hdc, m_bHadClip ? m_hRegion : nullptr);
    if (m_hRegion) ::DeleteObject(m_hRegion);
}

// A clip that cannot be told could not be put back: then it is left alone.
bool CDialClip::KeepRegion()
{
    m_hRegion = Made(::CreateRectRgn(0, 0, 0, 0));
    const int nResult = m_hRegion ? ::GetClipRgn(m_hdc, m_hRegion) : -1;
    m_bHadClip = nResult == 1;
    m_bKept = nResult >= 0;
    if (!m_bKept) NoteRefusal();
    return m_bKept;
}

CArcMeter::CArcMeter(int32_t nRadius, float fStart, float fEnd, double fOffset) noexcept
    : m_nRadius(nRadius), m_fStart(static_cast<float>(fStart + fOffset)),
      m_fEnd(static_cast<float>(fEnd + fOffset)), m_fOffset(fOffset)
{
}

float CArcMeter::AngleOf(double fValue) const
{
    return ValueToAngle(Span(), fValue);
}

float CArcMeter::TickAngle(uint32_t nTick) const
{
    return TickToAngle(Span(), nTick, DrawnTicks());
}

// On a closed circle the last number would stand on the first.
bool CArcMeter::HasLabel(uint32_t nTick) const
{
    if (nTick == 0) return true;
    if (nTick >= DrawnTicks()) return WholeAngle(m_fEnd) != WholeAngle(m_fStart);
    return IsMajor(nTick);
}

CArcMeter::AlarmZones CArcMeter::GetAlarmZones() const
{
    const COLORREF clrAtStart = GetReverse() ? m_clrHigh : m_clrLow;
    const COLORREF clrAtEnd = GetReverse() ? m_clrLow : m_clrHigh;
    if (!HasRange()) return {m_fStart, m_fEnd, clrAtStart, clrAtEnd};
    double fLow = GetLowLimit();
    double fHigh = GetHighLimit();
    if (GetReverse()) {
        const double fSum = static_cast<double>(GetMax()) + GetMin();
        fLow = fSum - GetHighLimit();
        fHigh = fSum - GetLowLimit();
    }
    return {UnclampedAngle(Span(), fLow), UnclampedAngle(Span(), fHigh), clrAtStart, clrAtEnd};
}

int CArcMeter::DrawScale(HDC hdc)
{
    if (!HasScale()) return 0;
    const CScaleLine major(2, m_clrScale, Px());
    const CScaleLine minor(1, m_clrScale, Px());
    for (uint32_t i = 0; i <= DrawnTicks(); ++i) {
        const float fAngle = TickAngle(i);
        const CScaleLine& line = IsMajor(i) ? major : minor;
        line.Draw(hdc, At(AxisRadius(m_nRadius, Px()), fAngle),
                  At(TickOuterRadius(m_nRadius, Px()), fAngle));
    }
    return 1;
}

int CArcMeter::DrawAxis(HDC hdc)
{
    if (!HasSpan()) return 0;
    return CArcAxis(1, m_clrScale, Px())
        .Draw(hdc, AxisRadius(m_nRadius, Px()), m_ptCentre, m_fStart, Sweep());
}

int CArcMeter::DrawLabels(HDC hdc)
{
    return DrawLabelsIn(hdc, ScaledCell({LABEL_CELL, LABEL_CELL, HasWideTexts()}, Px()));
}

int CArcMeter::DrawLabelsIn(HDC hdc, FontCell cell) const
{
    if (!HasScale()) return 0;
    const CScaleMark mark(cell, m_clrLabel, Px());
    for (uint32_t i = 0; i <= DrawnTicks(); ++i) {
        if (!HasLabel(i)) continue;
        char szText[VALUE_TEXT_SIZE];
        FormatValue(szText, TickNumber(i));
        const int32_t nAngle = WholeAngle(TickAngle(i));
        const POINT ptAnchor = At(LabelRadius(m_nRadius, Px()), static_cast<float>(nAngle));
        const POINT pt =
            PlaceLabel(ptAnchor, nAngle, {mark.WidthOf(hdc, szText), cell.nHeight}, m_rcMeter);
        mark.Draw(hdc, pt.x, pt.y, szText);
    }
    return 1;
}

bool CArcMeter::HasNeedle() const
{
    return HasScale() && NeedleLength(m_nRadius, Px()) >= Px()(MIN_NEEDLE);
}

// The centre disc is not erased: every needle begins at it.
int CArcMeter::PaintNeedle(HDC hdc, float fAngle, bool bErase) const
{
    if (!bErase)
        CScaleCentre(CENTRE_RADIUS, NEEDLE_WIDTH, m_clrPin, m_clrFace, Px()).Draw(hdc, m_ptCentre);
    return CScaleLine(NEEDLE_WIDTH, bErase ? m_clrFace : m_clrPin, Px())
        .Draw(hdc, At(Px()(NEEDLE_FROM), fAngle), At(NeedleLength(m_nRadius, Px()), fAngle));
}

int CArcMeter::DrawNeedle(HDC hdc, double fValue) const
{
    return HasNeedle() ? PaintNeedle(hdc, AngleOf(fValue), false) : 0;
}

int CArcMeter::EraseNeedle(HDC hdc, uint32_t nFlags) const
{
    if (!HasNeedle()) return 0;
    return nFlags & QEL_DRAW_FULL ? 1 : PaintNeedle(hdc, AngleOf(GetShownValue()), true);
}

int CArcMeter::DrawPin(HDC hdc, float fValue, uint32_t)
{
    return DrawNeedle(hdc, fValue);
}

int CArcMeter::DrawPin(HDC hdc, int32_t nValue, uint32_t)
{
    return DrawNeedle(hdc, nValue);
}

int CArcMeter::ErasePin(HDC hdc, float, uint32_t nFlags)
{
    return EraseNeedle(hdc, nFlags);
}

int CArcMeter::ErasePin(HDC hdc, int32_t, uint32_t nFlags)
{
    return EraseNeedle(hdc, nFlags);
}

int CArcMeter::DrawAlarmZones(HDC hdc)
{
    if (!HasSpan()) return 0;
    const AlarmZones zones = GetAlarmZones();
    const int32_t nRadius = AlarmRadius(m_nRadius, Px());
    if (zones.fLow > m_fStart)
        CArcAxis(ALARM_WIDTH, zones.clrAtStart, Px())
            .Draw(hdc, nRadius, m_ptCentre, m_fStart, zones.fLow - m_fStart);
    if (zones.fHigh != zones.fLow)
        CArcAxis(ALARM_WIDTH, m_clrScale, Px())
            .Draw(hdc, nRadius, m_ptCentre, zones.fLow, zones.fHigh - zones.fLow);
    if (zones.fHigh < m_fEnd)
        CArcAxis(ALARM_WIDTH, zones.clrAtEnd, Px())
            .Draw(hdc, nRadius, m_ptCentre, zones.fHigh, m_fEnd - zones.fHigh);
    return 1;
}

int CArcMeter::DrawFill(HDC, float, uint32_t)
{
    return 0;
}

int CArcMeter::DrawFill(HDC, int32_t, uint32_t)
{
    return 0;
}

int CArcMeter::DrawFrame(HDC)
{
    return 0;
}

int CArcMeter::DrawValueText(HDC, float)
{
    return 0;
}

int CArcMeter::DrawValueText(HDC, int32_t)
{
    return 0;
}

RECT CArcMeter::PaintedRect(const RECT&) const
{
    return m_rcMeter;
}

template <class Value>
int CArcMeter::DrawClipped(HDC hdc, Value value, uint32_t nFlags)
{
    if (::IsRectEmpty(&m_rcMeter)) return 0;
    const CDialClip clip(hdc, m_rcMeter, SavesWholeContext());
    if (clip.IsVisible()) CMeter::Draw(hdc, value, nFlags);
    return 1;
}

int CArcMeter::Draw(HDC hdc, float fValue, uint32_t nFlags)
{
    return DrawClipped(hdc, fValue, nFlags);
}

int CArcMeter::Draw(HDC hdc, int32_t nValue, uint32_t nFlags)
{
    return DrawClipped(hdc, nValue, nFlags);
}
