#include "brush/ShownDraft.h"

#include "base/QelRect.h"
#include "base/Shown.h"
#include "brush/Gradient.h"

#include <algorithm>

namespace {

constexpr int64_t SMALL_GRADIENT = 4096; // pixels, made sooner than it is asked what of them shows
constexpr int32_t SLACK = 2;             // pixels beyond a figure's box, for the rounding of curves

// What has to be right of the period of one direction: the device pixels that are filled and show.
// nDevice: where the figures' origin lies on the device.
GradientPart PartOf(LONG nPeriod, LONG nFilledLow, LONG nFilledHigh, LONG nShownLow,
                    LONG nShownHigh, int64_t nDevice)
{
    const int64_t nLow = std::max<int64_t>(int64_t{nFilledLow} - SLACK, nShownLow);
    const int64_t nHigh = std::min<int64_t>(int64_t{nFilledHigh} + SLACK, nShownHigh);
    if (nHigh - nLow >= nPeriod) return {0, nPeriod};
    // One pixel where nothing shows: there is a brush all the same.
    return {nLow + nDevice, static_cast<int32_t>(std::max<int64_t>(nHigh - nLow, 1))};
}

} // namespace

HBRUSH CShownDraft::Brush(HDC hdc, const RECT& rcGradient, const RECT& rcFilled, COLORREF clr1,
                          COLORREF clr2)
{
    if (IsHatch() && m_px(1) > 1) {
        if (!m_hatch) m_hatch.emplace(CQELDraft::m_byColorsBits[m_nStyle], m_px(1));
        return m_hatch->Get();
    }
    if (IsLarge(rcGradient)) {
        if (m_hPart && ::EqualRect(&rcGradient, &m_rcGradient) &&
            ::EqualRect(&rcFilled, &m_rcFilled))
            return m_hPart;
        DropPart();
        m_hPart = MakePart(hdc, rcGradient, rcFilled, clr1, clr2);
        m_rcGradient = rcGradient;
        m_rcFilled = rcFilled;
        return m_hPart;
    }
    RECT rc = rcGradient;
    HBRUSH hBrush = nullptr;
    return m_draft.GetDraftBrush(hBrush, &rc, clr1, clr2) ? hBrush : nullptr;
}

bool CShownDraft::IsLarge(const RECT& rcGradient) const
{
    if (m_nStyle < DRAFT_GRADIENT || m_nStyle >= DRAFT_COUNT || ::IsRectEmpty(&rcGradient))
        return false;
    const SIZE size = GradientSize(rcGradient, (m_nStyle - DRAFT_GRADIENT) / 2);
    if (m_px.Samples() > 1) return true; // its pixels are none of the device
    return size.cx > 0 && size.cy > 0 && int64_t{size.cx} * size.cy > SMALL_GRADIENT;
}

HBRUSH CShownDraft::MakePart(HDC hdc, const RECT& rcGradient, const RECT& rcFilled, COLORREF clr1,
                             COLORREF clr2) const
{
    const int nGradient = m_nStyle - DRAFT_GRADIENT;
    const int32_t nSamples = m_px.Samples();
    const RECT rcWhole = PixelsOf(rcGradient, m_px);
    const SIZE size = GradientSize(rcWhole, nGradient / 2);
    GradientPart across{0, size.cx};
    GradientPart down{0, size.cy};
    RECT rcShown{};
    POINT ptDevice{0, 0};
    POINT ptBrush{0, 0};
    if (FindShown(hdc, &rcShown) && ::LPtoDP(hdc, &ptDevice, 1) && ::GetBrushOrgEx(hdc, &ptBrush)) {
        const RECT rcFill = PixelsOf(rcFilled, m_px);
        rcShown = PixelsOf(rcShown, m_px);
        across = PartOf(size.cx, rcFill.left, rcFill.right, rcShown.left, rcShown.right,
                        (int64_t{ptDevice.x} - ptBrush.x) / nSamples);
        down = PartOf(size.cy, rcFill.top, rcFill.bottom, rcShown.top, rcShown.bottom,
                      (int64_t{ptDevice.y} - ptBrush.y) / nSamples);
    }
    const bool bExchanged = nGradient % 2 != 0;
    return MakeGradientBrush(rcWhole, nGradient / 2, bExchanged ? clr2 : clr1,
                             bExchanged ? clr1 : clr2, across, down, nSamples);
}

void CShownDraft::DropPart()
{
    if (m_hPart) ::DeleteObject(m_hPart);
    m_hPart = nullptr;
}
