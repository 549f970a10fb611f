// The stand-in for GDI: regions, and the clip of a device context.
#include "tests/native/GdiTable.h"

#include <cstdint>
#include <cstring>
#include <limits>

namespace gdi {
namespace {

HRGN MakeRegion(CArea area)
{
    if (!TakeCreation()) return nullptr;
    Object region;
    region.nKind = Kind::Region;
    region.area = std::move(area);
    return static_cast<HRGN>(Insert(std::move(region)));
}

INT TypeOf(const CArea& area)
{
    return area.IsEmpty() ? NULLREGION : area.IsRect() ? SIMPLEREGION : COMPLEXREGION;
}

// A rectangle of the units of a device context.
CArea InPixels(const Dc& dc, const RECT& rc)
{
    const int n = dc.nPixelsPerUnit ? dc.nPixelsPerUnit : 1;
    if (n == 1) return CArea::Rect(rc);
    return CArea::Rect({rc.left * n, rc.top * n, rc.right * n, rc.bottom * n});
}

} // namespace

CArea Surface(const Dc& dc)
{
    if (dc.bRecording) {
        constexpr LONG EXTENT = std::numeric_limits<LONG>::max() / 2;
        return CArea::Rect({-EXTENT, -EXTENT, EXTENT, EXTENT});
    }
    const Object* pBitmap = Peek(dc.state.hBitmap);
    return pBitmap ? CArea::Rect({0, 0, pBitmap->bitmap.bmWidth, pBitmap->bitmap.bmHeight})
                   : CArea();
}

CArea Visible(const Dc& dc)
{
    return dc.state.clip ? dc.state.clip->And(Surface(dc)) : Surface(dc);
}

std::string RegionText(HRGN hRegion)
{
    const Object* pRegion = Find(hRegion, Kind::Region, "RegionText");
    return pRegion ? pRegion->area.Text() : "gone";
}

} // namespace gdi

using namespace gdi;

HRGN WINAPI CreateRectRgn(INT l, INT t, INT r, INT b)
{
    return MakeRegion(CArea::Rect({l, t, r, b}));
}

HRGN WINAPI CreateRectRgnIndirect(const RECT* prc)
{
    if (!prc) {
        ReportMisuse("CreateRectRgnIndirect without a rectangle");
        return nullptr;
    }
    return MakeRegion(CArea::Rect(*prc));
}

HRGN WINAPI CreateEllipticRgn(INT l, INT t, INT r, INT b)
{
    return MakeRegion(CArea::Ellipse({l, t, r, b}));
}

HRGN WINAPI CreateRoundRectRgn(INT l, INT t, INT r, INT b, INT nWidth, INT nHeight)
{
    return MakeRegion(CArea::RoundRect({l, t, r, b}, nWidth, nHeight));
}

HRGN WINAPI CreatePolygonRgn(const POINT* pPoints, INT nCount, INT nMode)
{
    if (!pPoints || nCount < 2 || (nMode != ALTERNATE && nMode != WINDING)) {
        ReportMisuse(Text("CreatePolygonRgn of %d points, mode %d", nCount, nMode));
        return nullptr;
    }
    return MakeRegion(
        CArea::Polygon({pPoints, static_cast<std::size_t>(nCount)}, nMode == WINDING));
}

HRGN WINAPI ExtCreateRegion(const XFORM* pTransform, DWORD nBytes, const RGNDATA* pData)
{
    RGNDATAHEADER header{};
    if (pData && nBytes >= sizeof header) std::memcpy(&header, pData, sizeof header);
    const uint64_t nNeeded = sizeof header + static_cast<uint64_t>(header.nCount) * sizeof(RECT);
    if (pTransform || header.dwSize != sizeof header || header.iType != RDH_RECTANGLES ||
        nNeeded > nBytes) {
        ReportMisuse("ExtCreateRegion of something else than rectangles");
        return nullptr;
    }
    std::vector<RECT> rects(header.nCount);
    if (!rects.empty()) std::memcpy(rects.data(), pData->Buffer, header.nCount * sizeof(RECT));
    return MakeRegion(CArea::List(rects));
}

INT WINAPI CombineRgn(HRGN hOut, HRGN hA, HRGN hB, INT nMode)
{
    Object* pOut = Find(hOut, Kind::Region, "CombineRgn");
    const Object* pA = Find(hA, Kind::Region, "CombineRgn");
    const Object* pB = nMode == RGN_COPY ? pA : Find(hB, Kind::Region, "CombineRgn");
    if (!pOut || !pA || !pB || !TakeCall()) return ERROR;
    switch (nMode) {
    case RGN_AND:
        pOut->area = pA->area.And(pB->area);
        break;
    case RGN_OR:
        pOut->area = pA->area.Or(pB->area);
        break;
    case RGN_XOR:
        pOut->area = pA->area.Xor(pB->area);
        break;
    case RGN_DIFF:
        pOut->area = pA->area.Minus(pB->area);
        break;
    case RGN_COPY:
        pOut->area = pA->area;
        break;
    default:
        ReportMisuse(Text("CombineRgn mode %d", nMode));
        return ERROR;
    }
    return TypeOf(pOut->area);
}

BOOL WINAPI SetRectRgn(HRGN hRegion, INT l, INT t, INT r, INT b)
{
    Object* pRegion = Find(hRegion, Kind::Region, "SetRectRgn");
    if (!pRegion || !TakeCall()) return FALSE;
    pRegion->area = CArea::Rect({l, t, r, b});
    return TRUE;
}

INT WINAPI OffsetRgn(HRGN hRegion, INT dx, INT dy)
{
    Object* pRegion = Find(hRegion, Kind::Region, "OffsetRgn");
    if (!pRegion || !TakeCall()) return ERROR;
    pRegion->area.Offset(dx, dy);
    return TypeOf(pRegion->area);
}

INT WINAPI GetRgnBox(HRGN hRegion, RECT* prc)
{
    const Object* pRegion = Find(hRegion, Kind::Region, "GetRgnBox");
    if (!pRegion || !prc || !TakeCall()) return ERROR;
    *prc = pRegion->area.Box();
    return TypeOf(pRegion->area);
}

DWORD WINAPI GetRegionData(HRGN hRegion, DWORD nSize, RGNDATA* pData)
{
    const Object* pRegion = Find(hRegion, Kind::Region, "GetRegionData");
    if (!pRegion || !TakeCall()) return 0;
    const std::vector<RECT>& rects = pRegion->area.Rects();
    const auto nBytes = static_cast<DWORD>(rects.size() * sizeof(RECT));
    const auto nNeeded = static_cast<DWORD>(sizeof(RGNDATAHEADER) + nBytes);
    if (!pData) return nNeeded;
    if (nSize < nNeeded) return 0;
    pData->rdh = {sizeof(RGNDATAHEADER), RDH_RECTANGLES, static_cast<DWORD>(rects.size()), nBytes,
                  pRegion->area.Box()};
    if (nBytes) std::memcpy(pData->Buffer, rects.data(), nBytes);
    return nNeeded;
}

BOOL WINAPI EqualRgn(HRGN hA, HRGN hB)
{
    const Object* pA = Find(hA, Kind::Region, "EqualRgn");
    const Object* pB = Find(hB, Kind::Region, "EqualRgn");
    return pA && pB && pA->area == pB->area;
}

BOOL WINAPI PtInRegion(HRGN hRegion, INT x, INT y)
{
    const Object* pRegion = Find(hRegion, Kind::Region, "PtInRegion");
    return pRegion && pRegion->area.Contains(x, y);
}

BOOL WINAPI RectInRegion(HRGN hRegion, const RECT* prc)
{
    const Object* pRegion = Find(hRegion, Kind::Region, "RectInRegion");
    return pRegion && prc && !pRegion->area.And(CArea::Rect(*prc)).IsEmpty();
}

// ---- the clip ----

INT WINAPI SelectClipRgn(HDC hdc, HRGN hRegion)
{
    Dc* pDc = FindDc(hdc, "SelectClipRgn");
    if (!pDc) return ERROR;
    if (hRegion) {
        const Object* pRegion = Find(hRegion, Kind::Region, "SelectClipRgn");
        if (!pRegion) return ERROR;
        pDc->state.clip = pRegion->area;
    } else {
        pDc->state.clip.reset();
    }
    Record(*pDc, "Record 75");
    return TypeOf(pDc->state.clip ? *pDc->state.clip : Surface(*pDc));
}

INT WINAPI ExtSelectClipRgn(HDC hdc, HRGN hRegion, INT nMode)
{
    Dc* pDc = FindDc(hdc, "ExtSelectClipRgn");
    const Object* pRegion = Find(hRegion, Kind::Region, "ExtSelectClipRgn");
    if (!pDc || !pRegion || !TakeCall()) return ERROR;
    if (nMode != RGN_AND) {
        ReportMisuse(Text("ExtSelectClipRgn mode %d", nMode));
        return ERROR;
    }
    pDc->state.clip = pDc->state.clip ? pDc->state.clip->And(pRegion->area) : pRegion->area;
    Record(*pDc, "Record 75");
    return TypeOf(pDc->state.clip->And(Surface(*pDc)));
}

INT WINAPI GetClipRgn(HDC hdc, HRGN hRegion)
{
    const Dc* pDc = FindDc(hdc, "GetClipRgn");
    Object* pRegion = Find(hRegion, Kind::Region, "GetClipRgn");
    if (!pDc || !pRegion || !TakeCall()) return -1;
    if (!pDc->state.clip) return 0;
    pRegion->area = *pDc->state.clip;
    return 1;
}

// Of a bitmap the system's own clip (4) is all of it, of a window what is not covered, in places of
// the screen; nobody sets a meta region (2).
INT WINAPI GetRandomRgn(HDC hdc, HRGN hRegion, INT nWhich)
{
    const Dc* pDc = FindDc(hdc, "GetRandomRgn");
    Object* pRegion = Find(hRegion, Kind::Region, "GetRandomRgn");
    if (!pDc || !pRegion || pDc->bRecording || !TakeCall()) return -1;
    if (nWhich != 4) return 0;
    pRegion->area = Surface(*pDc);
    if (!pDc->window) return 1;
    pRegion->area = pRegion->area.Minus(CArea::Rect(pDc->window->rcCovered));
    pRegion->area.Offset(pDc->window->ptOrigin.x, pDc->window->ptOrigin.y);
    return 1;
}

INT WINAPI IntersectClipRect(HDC hdc, INT l, INT t, INT r, INT b)
{
    Dc* pDc = FindDc(hdc, "IntersectClipRect");
    if (!pDc || !TakeCall()) return ERROR;
    const CArea rect = InPixels(*pDc, {l, t, r, b});
    pDc->state.clip = pDc->state.clip ? pDc->state.clip->And(rect) : rect;
    Record(*pDc, "Record 30");
    return TypeOf(pDc->state.clip->And(Surface(*pDc)));
}

INT WINAPI ExcludeClipRect(HDC hdc, INT l, INT t, INT r, INT b)
{
    Dc* pDc = FindDc(hdc, "ExcludeClipRect");
    if (!pDc) return ERROR;
    const CArea before = pDc->state.clip ? *pDc->state.clip : Surface(*pDc);
    pDc->state.clip = before.Minus(InPixels(*pDc, {l, t, r, b}));
    Record(*pDc, "Record 29");
    return TypeOf(pDc->state.clip->And(Surface(*pDc)));
}

BOOL WINAPI PtVisible(HDC hdc, INT x, INT y)
{
    const Dc* pDc = FindDc(hdc, "PtVisible");
    if (!pDc) return FALSE;
    return Surface(*pDc).Contains(x, y) && (!pDc->state.clip || pDc->state.clip->Contains(x, y));
}

INT WINAPI GetClipBox(HDC hdc, RECT* prc)
{
    const Dc* pDc = FindDc(hdc, "GetClipBox");
    if (!pDc || !prc || !TakeCall()) return ERROR;
    const CArea area = Visible(*pDc);
    *prc = area.Box();
    return TypeOf(area);
}
