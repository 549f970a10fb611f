#include "meter/FaceClip.h"

#include "base/Block.h"
#include "base/GdiScopes.h"
#include "base/Refusals.h"
#include "base/Shown.h"

CFaceClip::CFaceClip(HDC hdc, HRGN hFace, const RECT& rcPainted) noexcept : m_hdc(hdc)
{
    RECT rcBox{};
    POINT ptOffset{};
    const int nForm = ::GetRgnBox(hFace, &rcBox);
    m_bMayPaint = nForm == SIMPLEREGION || nForm == COMPLEXREGION;
    if (!m_bMayPaint) return;
    const bool bMoved = IsMovedAlone(hdc, rcBox, &ptOffset);
    // Elsewhere figures have their far edges painted, and pens a width of more pixels.
    const bool bPlain = bMoved && ::GetGraphicsMode(hdc) == GM_COMPATIBLE;
    if (bPlain && nForm == SIMPLEREGION && Covers(rcBox, rcPainted)) return;
    m_nSaved = ::SaveDC(hdc);
    m_bMayPaint = m_nSaved && Narrow(nForm == COMPLEXREGION ? hFace : nullptr, rcBox,
                                     bMoved ? &ptOffset : nullptr);
}

CFaceClip::~CFaceClip()
{
    if (m_nSaved) ::RestoreDC(m_hdc, m_nSaved);
}

// hFace: null for a face that is a rectangle. pptOffset: null when the device context does more
// than moving.
bool CFaceClip::Narrow(HRGN hFace, const RECT& rcBox, const POINT* pptOffset) const
{
    if (!hFace || !pptOffset) {
        if (::IntersectClipRect(m_hdc, rcBox.left, rcBox.top, rcBox.right, rcBox.bottom) == ERROR)
            return false;
        return !hFace || CutOut(hFace, rcBox);
    }
    // Clip regions count device units. The region itself is moved there and back: a copy for each
    // draw would cost more.
    if (::OffsetRgn(hFace, pptOffset->x, pptOffset->y) == ERROR) return false;
    const int nResult = ::ExtSelectClipRgn(m_hdc, hFace, RGN_AND);
    ::OffsetRgn(hFace, -pptOffset->x, -pptOffset->y);
    return nResult != ERROR;
}

// What the box has beyond the face is taken out of the clip piece by piece: slow for a tall face,
// but in the units of the drawing, so that every mapping and every kind of metafile understands it.
bool CFaceClip::CutOut(HRGN hFace, const RECT& rcBox) const
{
    const CRegion rest(Made(::CreateRectRgnIndirect(&rcBox)));
    if (!rest.Get() || ::CombineRgn(rest.Get(), rest.Get(), hFace, RGN_DIFF) == ERROR) return false;
    const DWORD nSize = ::GetRegionData(rest.Get(), 0, nullptr);
    const CBlock block(nSize);
    auto* pData = block.As<RGNDATA>();
    if (!pData || !::GetRegionData(rest.Get(), nSize, pData)) return false;
    const auto* prc = reinterpret_cast<const RECT*>(pData->Buffer);
    for (DWORD n = 0; n < pData->rdh.nCount; ++n)
        ::ExcludeClipRect(m_hdc, prc[n].left, prc[n].top, prc[n].right, prc[n].bottom);
    return true;
}
