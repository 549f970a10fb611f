#include "meter/BarGeometry.h"

#include "base/Rects.h"
#include "base/WrapMath.h"

#include <algorithm>

namespace {

constexpr int32_t SLANT_PARTS = 15; // of the bar's length

// The part of a length below a value. Divided last, so that a value that belongs on a whole pixel
// comes out there.
double LengthBelow(const BarScale& scale, double fValue, int32_t nLength)
{
    return (fValue - scale.nMin) * nLength / (static_cast<double>(scale.nMax) - scale.nMin);
}

// (nLength * nTick) / nCount without sign.
int32_t TickOffset(int32_t nLength, uint32_t nTick, uint32_t nCount)
{
    return static_cast<int32_t>(static_cast<uint32_t>(nLength) * nTick / nCount);
}

RECT InPixels(const RECT& rc, CPixelScale px)
{
    return {px.PixelOf(rc.left), px.PixelOf(rc.top), px.PixelOf(rc.right), px.PixelOf(rc.bottom)};
}

BarScale InPixels(const BarScale& scale)
{
    return {scale.nMin, scale.nMax, InPixels(scale.rc, scale.px), scale.px.InPicture()};
}

} // namespace

// What stands upright stands on whole pixels, however many samples they have.
int32_t VerticalPosition(const BarScale& scale, double fValue)
{
    if (scale.px.Samples() > 1) return scale.px.Sampled(VerticalPosition(InPixels(scale), fValue));
    if (fValue <= scale.nMin) return scale.rc.bottom;
    if (!(fValue < scale.nMax)) return scale.rc.top;
    return TruncToInt(scale.rc.bottom - LengthBelow(scale, fValue, HeightOf(scale.rc)));
}

int32_t HorizontalPosition(const BarScale& scale, double fValue)
{
    if (scale.px.Samples() > 1)
        return scale.px.Sampled(HorizontalPosition(InPixels(scale), fValue));
    const int32_t nEnd = WrapSub(scale.rc.right, scale.px(1));
    if (fValue <= scale.nMin) return scale.rc.left;
    if (!(fValue < scale.nMax)) return nEnd;
    return TruncToInt(scale.rc.left + LengthBelow(scale, fValue, WrapSub(nEnd, scale.rc.left)));
}

int32_t VerticalTick(const RECT& rc, uint32_t nTick, uint32_t nCount, CPixelScale px)
{
    if (px.Samples() > 1)
        return px.Sampled(VerticalTick(InPixels(rc, px), nTick, nCount, px.InPicture()));
    if (nTick == 0) return rc.bottom;
    if (nTick >= nCount) return rc.top;
    return WrapSub(rc.bottom, TickOffset(HeightOf(rc), nTick, nCount));
}

int32_t HorizontalTick(const RECT& rc, uint32_t nTick, uint32_t nCount, CPixelScale px)
{
    if (px.Samples() > 1)
        return px.Sampled(HorizontalTick(InPixels(rc, px), nTick, nCount, px.InPicture()));
    const int32_t nEnd = WrapSub(rc.right, px(1));
    if (nTick == 0) return rc.left;
    if (nTick >= nCount) return nEnd;
    return WrapAdd(rc.left, TickOffset(WrapSub(nEnd, rc.left), nTick, nCount));
}

// A value at or below the base moves the base beside it, so that a bar below its base still shows
// one step of length.
BarParts SplitBar(const BarRule& rule, double fValue)
{
    const bool bEmpty = !rule.bFillOnly;
    if (rule.bReverse) {
        double fBase = rule.bUseBase ? rule.fMax - rule.fBase : rule.fMax;
        if (fValue >= fBase) fBase = fValue + 1;
        return {{fBase, rule.fMax, bEmpty},
                {fValue, fBase, fValue < fBase},
                {rule.fMin, fValue, bEmpty && rule.fMin < fValue}};
    }
    double fBase = rule.bUseBase ? rule.fBase : rule.fMin;
    if (fValue <= fBase) fBase = fValue - 1;
    return {{rule.fMin, fBase, bEmpty && fBase > rule.fMin},
            {fBase, fValue, fValue > fBase},
            {fValue, rule.fMax, bEmpty && rule.fMax > fValue}};
}

int32_t CBarColumn::Across() const
{
    return m_bVertical ? WidthOf(m_rc) : HeightOf(m_rc);
}

int32_t CBarColumn::Along() const
{
    return m_bVertical ? HeightOf(m_rc) : WidthOf(m_rc);
}

POINT CBarColumn::At(int32_t nAcross, int32_t nAlong) const
{
    if (m_bVertical) return {WrapAdd(m_rc.left, nAcross), WrapSub(m_rc.bottom, nAlong)};
    return {WrapAdd(m_rc.left, nAlong), WrapSub(m_rc.bottom, nAcross)};
}

// A line at the right or the bottom edge lies on the last pixels before it.
POINT CBarColumn::PixelAt(int32_t nAcross, int32_t nAlong) const
{
    const POINT pt = At(nAcross, nAlong);
    return {std::min<LONG>(pt.x, WrapSub(m_rc.right, m_px(1))),
            std::min<LONG>(pt.y, WrapSub(m_rc.bottom, m_px(1)))};
}

RECT CBarColumn::Box(int32_t nAcross1, int32_t nAlong1, int32_t nAcross2, int32_t nAlong2) const
{
    const POINT pt1 = At(nAcross1, nAlong1);
    const POINT pt2 = At(nAcross2, nAlong2);
    return NormalizedRect({pt1.x, pt1.y, pt2.x, pt2.y});
}

int32_t CBarColumn::AlongFrom(const RECT& rcSegment) const
{
    return m_bVertical ? WrapSub(m_rc.bottom, rcSegment.bottom)
                       : WrapSub(rcSegment.left, m_rc.left);
}

int32_t CBarColumn::AlongTo(const RECT& rcSegment) const
{
    return m_bVertical ? WrapSub(m_rc.bottom, rcSegment.top) : WrapSub(rcSegment.right, m_rc.left);
}

BarBox MakeBarBox(const CBarColumn& column, int32_t nFrom, int32_t nTo)
{
    const int32_t nAcross = column.Across();
    const int32_t nFront = WrapMulDiv(nAcross, 4, 5);
    const int32_t nSlant = column.Along() / SLANT_PARTS;
    return {nFrom,
            nTo,
            nFront,
            std::min(nFront + nFront / 4, nAcross),
            std::min(nSlant, nTo - nFrom),
            std::clamp(column.Along() - nTo, 0, nSlant)};
}

BarCylinder MakeBarCylinder(const CBarColumn& column, int32_t nFrom, int32_t nTo)
{
    const int32_t nCap = std::min(column.Across() / 2, column.Along());
    const int32_t nHighest = column.Along() - nCap;
    return {nCap, std::clamp(nFrom - nCap / 2, 0, nHighest),
            std::clamp(nTo - nCap / 2, 0, nHighest)};
}
