// The four one-sided anchors are one rule: across the anchored edge and along it, with the axes
// exchanged for top and bottom.
#include "render/Mapping.h"

namespace {

// One axis of the mapping: the element's two ends and the drawing's length in units, the device's
// two ends in pixels.
struct Axis {
    int32_t nLow;
    int32_t nHigh;
    int32_t nRef;
    int32_t nDeviceLow;
    int32_t nDeviceHigh;
    CPixelScale px; // of the distances that are kept

    [[nodiscard]] constexpr int32_t Length() const { return WrapSub(nHigh, nLow); }
    [[nodiscard]] constexpr int32_t Extent() const { return WrapSub(nDeviceHigh, nDeviceLow); }
    [[nodiscard]] constexpr int32_t StretchEnd(int32_t n) const
    {
        return Stretch(n, Extent(), nRef, nDeviceLow);
    }
    [[nodiscard]] constexpr int32_t KeptLength() const { return px(Length()); }
    // An end at its distance in units from the near or the far border, one unit being one pixel.
    [[nodiscard]] constexpr int32_t FromLow() const { return WrapAdd(nDeviceLow, px(nLow)); }
    [[nodiscard]] constexpr int32_t FromHigh() const
    {
        return WrapSub(nDeviceHigh, px(WrapSub(nRef, nHigh)));
    }
};

struct Span {
    int32_t nLow;
    int32_t nHigh;
};

Span StretchBoth(const Axis& axis)
{
    return {axis.StretchEnd(axis.nLow), axis.StretchEnd(axis.nHigh)};
}

Span KeepBoth(const Axis& axis)
{
    return {axis.FromLow(), axis.FromHigh()};
}

// The axis along the anchored edge.
Span PlaceAlong(const Axis& axis, uint32_t nKeep)
{
    switch (nKeep & QEL_ALONG_MASK) {
    case QEL_ALONG_KEEP_LENGTH: {
        const int32_t nLow = axis.StretchEnd(axis.nLow);
        return {nLow, WrapAdd(nLow, axis.KeptLength())};
    }
    case QEL_ALONG_AS_QEL:
        return StretchBoth(axis);
    default:
        return KeepBoth(axis);
    }
}

// The axis across the anchored edge. bFar: the anchored edge is the right or bottom one.
Span PlaceAcross(const Axis& axis, bool bFar, const Axis& alongAxis, const Span& along,
                 uint32_t nKeep)
{
    const Span kept = KeepBoth(axis);
    int32_t nLength = 0;
    switch (nKeep & QEL_AWAY_MASK) {
    case QEL_AWAY_AS_GRAPH:
        nLength = WrapMulDiv(WrapSub(along.nHigh, along.nLow), axis.Length(), alongAxis.Length());
        break;
    case QEL_AWAY_KEEP_LENGTH:
        nLength = axis.KeptLength();
        break;
    case QEL_AWAY_KEEP_BORDER:
        return kept;
    default:
        nLength = WrapMulDiv(axis.Length(), axis.Extent(), axis.nRef);
        break;
    }
    if (bFar) return {WrapSub(kept.nHigh, nLength), kept.nHigh};
    return {kept.nLow, WrapAdd(kept.nLow, nLength)};
}

void ClipTo(RECT* prc, const QelRect& rcQel)
{
    if (prc->left >= prc->right || prc->top >= prc->bottom || prc->left >= rcQel.right ||
        prc->top >= rcQel.bottom || rcQel.left >= prc->right || rcQel.top >= prc->bottom) {
        ::SetRectEmpty(prc);
        return;
    }
    if (prc->left < rcQel.left) prc->left = rcQel.left;
    if (prc->top < rcQel.top) prc->top = rcQel.top;
    if (prc->right > rcQel.right) prc->right = rcQel.right;
    if (prc->bottom > rcQel.bottom) prc->bottom = rcQel.bottom;
}

} // namespace

const KeywordRow g_keepAnchors[] = {
    {QEL_KEEP_NONE, "Not Keep"}, {QEL_KEEP_ALL, "Keep All"},     {QEL_KEEP_LEFT, "Keep left"},
    {QEL_KEEP_TOP, "Keep top"},  {QEL_KEEP_RIGHT, "Keep right"}, {QEL_KEEP_BOTTOM, "Keep bottom"},
    {KEYWORD_NONE, nullptr}};

const KeywordRow g_keepAlong[] = {{QEL_ALONG_KEEP_BORDERS, "Keep borders"},
                                  {QEL_ALONG_KEEP_LENGTH, "Keep length"},
                                  {QEL_ALONG_AS_QEL, "As QEL"},
                                  {KEYWORD_NONE, nullptr}};

const KeywordRow g_keepAway[] = {{QEL_AWAY_AS_QEL, "As QEL"},
                                 {QEL_AWAY_AS_GRAPH, "As graph"},
                                 {QEL_AWAY_KEEP_LENGTH, "Keep length"},
                                 {QEL_AWAY_KEEP_BORDER, "Keep border"},
                                 {KEYWORD_NONE, nullptr}};

uint32_t AnchorOf(uint32_t nFlags)
{
    const uint32_t nAnchor = nFlags & QEL_KEEP_ANCHOR_MASK;
    for (const KeywordRow* pRow = g_keepAnchors; pRow->pszName; ++pRow)
        if (nAnchor == static_cast<uint32_t>(pRow->nId)) return nAnchor;
    return QEL_KEEP_NONE;
}

int PlaceRect(const QelRect& rcQel, int32_t nRefW, int32_t nRefH, const RECT& rcElem, RECT* prcOut,
              uint32_t nKeep)
{
    ::SetRectEmpty(prcOut);
    if (::IsRectEmpty(&rcQel) || nRefW < 1 || nRefH < 1 || ::IsRectEmpty(&rcElem)) return 0;

    const CPixelScale px(rcQel.px.Percent());
    const Axis across{rcElem.left, rcElem.right, nRefW, rcQel.left, rcQel.right, px};
    const Axis down{rcElem.top, rcElem.bottom, nRefH, rcQel.top, rcQel.bottom, px};
    const uint32_t nAnchor = AnchorOf(nKeep);
    Span x = StretchBoth(across);
    Span y = StretchBoth(down);
    switch (nAnchor) {
    case QEL_KEEP_ALL:
        x = KeepBoth(across);
        y = KeepBoth(down);
        break;
    case QEL_KEEP_LEFT:
    case QEL_KEEP_RIGHT:
        y = PlaceAlong(down, nKeep);
        x = PlaceAcross(across, nAnchor == QEL_KEEP_RIGHT, down, y, nKeep);
        break;
    case QEL_KEEP_TOP:
    case QEL_KEEP_BOTTOM:
        x = PlaceAlong(across, nKeep);
        y = PlaceAcross(down, nAnchor == QEL_KEEP_BOTTOM, across, x, nKeep);
        break;
    default:
        break;
    }
    *prcOut = {x.nLow, y.nLow, x.nHigh, y.nHigh};
    return 1;
}

int MapRect(const QelRect& rcQel, int32_t nRefW, int32_t nRefH, const RECT& rcElem, RECT* prcOut,
            uint32_t nKeep)
{
    if (!PlaceRect(rcQel, nRefW, nRefH, rcElem, prcOut, nKeep)) return 0;
    ClipTo(prcOut, rcQel);
    *prcOut = QelRect(*prcOut, rcQel.px).OnDevice();
    return 1;
}

void ShiftPressed(RECT* prc, const QelRect& rcQel)
{
    const int32_t nShift = rcQel.px(PRESSED_SHIFT);
    prc->left = WrapAdd(prc->left, nShift);
    prc->top = WrapAdd(prc->top, nShift);
    const int32_t nRight = WrapAdd(prc->right, nShift);
    const int32_t nBottom = WrapAdd(prc->bottom, nShift);
    if (nRight <= rcQel.OnDevice().right) prc->right = nRight;
    if (nBottom <= rcQel.OnDevice().bottom) prc->bottom = nBottom;
}

int32_t SlideInside(int32_t nLow, int32_t nHigh, int32_t nRef)
{
    int32_t nSlide = 0;
    if (nLow < 0) nSlide = WrapSub(0, nLow);
    if (WrapAdd(nHigh, nSlide) > nRef) nSlide = WrapSub(nRef, nHigh);
    if (WrapAdd(nLow, nSlide) < 0) nSlide = WrapSub(0, nLow);
    return nSlide;
}

void KeepRectInside(RECT* prc, int32_t nRefW, int32_t nRefH)
{
    RECT rc = *prc;
    const auto keep = [](LONG* pnLow, LONG* pnHigh, int32_t nRef) {
        if (*pnLow < 0) {
            *pnHigh = WrapSub(*pnHigh, *pnLow);
            *pnLow = 0;
        }
        if (*pnHigh > nRef) {
            *pnLow = WrapSub(*pnLow, WrapSub(*pnHigh, nRef));
            *pnHigh = nRef;
            if (*pnLow < 0) *pnLow = 0; // larger than the drawing: cut at both ends
        }
    };
    keep(&rc.left, &rc.right, nRefW);
    keep(&rc.top, &rc.bottom, nRefH);
    *prc = rc;
}
