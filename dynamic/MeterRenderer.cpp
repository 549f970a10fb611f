#include "dynamic/MeterRenderer.h"

#include "dynamic/MeterTypes.h"
#include "meter/DialGeometry.h"
#include "meter/Meter.h"
#include "render/Mapping.h"

namespace {

// How dials keep their shape when their flags do not say, a full circle other than an arc.
constexpr uint32_t CIRCLE_KEEP = QEL_KEEP_ALL;
constexpr uint32_t ARC_KEEP = QEL_KEEP_TOP | QEL_AWAY_AS_GRAPH;

int32_t Middle(int32_t a, int32_t b)
{
    return WrapAdd(a, b) / 2;
}

RECT LayoutOf(const QELMETERATTR& attr)
{
    return {attr.nGeometry[3], attr.nGeometry[4], attr.nGeometry[5], attr.nGeometry[6]};
}

void MapCircle(const QELMETERATTR& attr, const QelRect& rcQel, int32_t nRefW, int32_t nRefH,
               MeterPlace* pPlace)
{
    const uint32_t nKeep = attr.nFlags ? attr.nFlags : CIRCLE_KEEP;
    MapRect(rcQel, nRefW, nRefH, LayoutOf(attr), &pPlace->rc, nKeep);
    RECT rc{};
    const POINT ptCentre{attr.nGeometry[0], attr.nGeometry[1]};
    if (!MapRect(rcQel, nRefW, nRefH, SquareAround(ptCentre, attr.nGeometry[2]), &rc, nKeep))
        return;
    pPlace->ptCentre = {Middle(rc.left, rc.right), Middle(rc.top, rc.bottom)};
    const int32_t nWidth = WidthOf(rc);
    const int32_t nHeight = HeightOf(rc);
    pPlace->nRadius = (nWidth < nHeight ? nWidth : nHeight) >> 1;
}

// The layout rectangle is mapped; the circle then keeps the distances of its two end points from
// the layout's sides.
void MapArc(const QELMETERATTR& attr, const QelRect& rcQel, int32_t nRefW, int32_t nRefH,
            MeterPlace* pPlace)
{
    pPlace->fStart = static_cast<float>(attr.nGeometry[7]);
    pPlace->fEnd = static_cast<float>(attr.nGeometry[8]);
    const RECT rcLayout = LayoutOf(attr);
    const POINT pt{attr.nGeometry[0], attr.nGeometry[1]};
    const int32_t nRadius = attr.nGeometry[2];
    if (nRefW < 1 || nRefH < 1 || nRadius == 0 || ::IsRectEmpty(&rcLayout)) return;
    MapRect(rcQel, nRefW, nRefH, rcLayout, &pPlace->rc, attr.nFlags ? attr.nFlags : ARC_KEEP);

    const POINT pt0 = PolarPoint(pt, nRadius, pPlace->fStart);
    const POINT pt1 = PolarPoint(pt, nRadius, pPlace->fEnd);
    if (pt0.x == pt1.x) return;
    const CPixelScale px = pPlace->px;
    const int32_t nLeft = WrapAdd(px(WrapSub(pt0.x, rcLayout.left)), pPlace->rc.left);
    const int32_t nRight = WrapSub(pPlace->rc.right, px(WrapSub(rcLayout.right, pt1.x)));
    const int32_t nMapped = WrapSub(nRight, nLeft);
    const int32_t nChord = WrapSub(pt1.x, pt0.x);
    pPlace->nRadius = WrapMulDiv(nMapped, nRadius, nChord);
    pPlace->ptCentre.x = WrapAdd(WrapMulDiv(WrapSub(pt.x, pt0.x), nMapped, nChord), nLeft);
    pPlace->ptCentre.y = WrapAdd(WrapAdd(px(WrapSub(pt.y, rcLayout.top)), pPlace->rc.top),
                                 WrapSub(pPlace->nRadius, px(nRadius)));
}

} // namespace

MeterPlace MapMeter(const QELMETERATTR& attr, const QelRect& rcQel, int32_t nRefW, int32_t nRefH)
{
    MeterPlace place{};
    place.px = rcQel.px;
    const MeterTypeRow* pType = MeterTypeOf(attr.nType);
    switch (pType ? pType->form : MeterForm::Rectangle) {
    case MeterForm::Circle:
        MapCircle(attr, rcQel, nRefW, nRefH, &place);
        break;
    case MeterForm::Arc:
        MapArc(attr, rcQel, nRefW, nRefH, &place);
        break;
    default:
        MapRect(rcQel, nRefW, nRefH,
                {attr.nGeometry[0], attr.nGeometry[1], attr.nGeometry[2], attr.nGeometry[3]},
                &place.rc, attr.nFlags);
        break;
    }
    return place;
}

MeterLayout LayoutOfMeter(const QELMETERATTR& attr)
{
    const MeterTypeRow* pType = MeterTypeOf(attr.nType);
    const LONG* n = attr.nGeometry;
    switch (pType ? pType->form : MeterForm::Rectangle) {
    case MeterForm::Circle:
        return {SquareAround({n[0], n[1]}, n[2]), attr.nFlags ? attr.nFlags : CIRCLE_KEEP};
    case MeterForm::Arc:
        return {LayoutOf(attr), attr.nFlags ? attr.nFlags : ARC_KEEP};
    default:
        return {{n[0], n[1], n[2], n[3]}, attr.nFlags};
    }
}

// Of a circle what its layout rectangle cuts off is not there.
bool IsOnMeter(const QELMETERATTR& attr, const MeterPlace& place, POINT pt)
{
    const MeterTypeRow* pType = MeterTypeOf(attr.nType);
    if (!pType || !::PtInRect(&place.rc, pt)) return false;
    return pType->form != MeterForm::Circle || IsInCircle(place.ptCentre, place.nRadius, pt);
}

std::unique_ptr<CMeter> MakeMeterRenderer(const MeterPlace& place, HRGN hFace,
                                          const MeterSettings& settings)
{
    const MeterTypeRow* pType = MeterTypeOf(settings.nType);
    if (!pType) return nullptr;
    std::unique_ptr<CMeter> pMeter = pType->pfnMake(place, hFace, settings);
    if (!pMeter) return nullptr;
    pMeter->SetPixelScale(place.px);
    PassAll(pMeter.get(), settings);
    return pMeter;
}
