#include "render/UpdateClip.h"

#include "base/Rects.h"
#include "base/Shown.h"

#include <algorithm>

namespace {

constexpr int32_t SPARE = 2; // units, where they are no pixels
constexpr LONG PROBE = 1000; // units, to see whether they are
constexpr int META_CLIP = 2; // what GetRandomRgn gives
constexpr int SYSTEM_CLIP = 4;

bool HasPixelUnits(HDC hdc)
{
    POINT ptOffset{};
    return IsMovedAlone(hdc, {0, 0, PROBE, PROBE}, &ptOffset);
}

RECT BoxOf(const POINT (&pts)[4])
{
    RECT rc{pts[0].x, pts[0].y, pts[0].x, pts[0].y};
    for (const POINT& pt : pts)
        rc = {std::min(rc.left, pt.x), std::min(rc.top, pt.y), std::max(rc.right, pt.x),
              std::max(rc.bottom, pt.y)};
    return rc;
}

// The whole of what a context paints on, however much of it shows: a bitmap, or of a window what
// begins where the context does.
bool FindSurface(HDC hdc, POINT ptOrigin, RECT* prcOut)
{
    BITMAP bitmap{};
    if (::GetObjectType(hdc) == OBJ_MEMDC) {
        HGDIOBJ hBitmap = ::GetCurrentObject(hdc, OBJ_BITMAP);
        if (!hBitmap || !::GetObjectA(hBitmap, sizeof bitmap, &bitmap)) return false;
        *prcOut = {0, 0, bitmap.bmWidth, bitmap.bmHeight < 0 ? -bitmap.bmHeight : bitmap.bmHeight};
        return true;
    }
    const HWND hWnd = ::WindowFromDC(hdc);
    POINT ptClient{0, 0};
    if (!hWnd || !::ClientToScreen(hWnd, &ptClient) || !::GetClientRect(hWnd, prcOut)) return false;
    return ptClient.x == ptOrigin.x && ptClient.y == ptOrigin.y;
}

// The rectangles of a region, as long as they are few.
struct RegionRects {
    RGNDATAHEADER header;
    RECT rects[CDirtyArea::MOST_RECTS];
};

} // namespace

CUpdateClip::CUpdateClip(HDC hdc, const CDirtyArea& dirty) noexcept
    : m_hdc(hdc), m_bPlain(HasPixelUnits(hdc)), m_area(::CreateRectRgn(0, 0, 0, 0)),
      m_closed(::CreateRectRgn(0, 0, 0, 0))
{
    if (!m_area.Get() || !m_closed.Get() || !TakeArea(dirty) || !LeaveWhatIsClipped()) return;
    const CRegion open(::CreateRectRgn(0, 0, 0, 0));
    if (!open.Get()) return;
    const int nOpen = ::CombineRgn(open.Get(), m_area.Get(), m_closed.Get(), RGN_DIFF);
    if (nOpen == ERROR || nOpen == NULLREGION) return;
    m_nSaved = ::SaveDC(hdc);
    m_bOpen = m_nSaved && ::ExtSelectClipRgn(hdc, m_area.Get(), RGN_AND) != ERROR;
}

CUpdateClip::~CUpdateClip()
{
    if (m_nSaved) ::RestoreDC(m_hdc, m_nSaved);
}

RECT CUpdateClip::ToDevice(const RECT& rc) const
{
    POINT pts[] = {
        {rc.left, rc.top}, {rc.right, rc.top}, {rc.left, rc.bottom}, {rc.right, rc.bottom}};
    ::LPtoDP(m_hdc, pts, 4);
    return BoxOf(pts);
}

RECT CUpdateClip::ToUnits(const RECT& rc) const
{
    POINT pts[] = {
        {rc.left, rc.top}, {rc.right, rc.top}, {rc.left, rc.bottom}, {rc.right, rc.bottom}};
    ::DPtoLP(m_hdc, pts, 4);
    return BoxOf(pts);
}

bool CUpdateClip::TakeArea(const CDirtyArea& dirty)
{
    m_painted.Clear();
    for (int n = 0; n < dirty.Count(); ++n) {
        const RECT rc = m_bPlain ? dirty.At(n) : GrownRect(dirty.At(n), SPARE);
        m_painted.Add(rc);
        const RECT rcDevice = ToDevice(rc);
        const CRegion part(::CreateRectRgnIndirect(&rcDevice));
        if (!part.Get() || ::CombineRgn(m_area.Get(), m_area.Get(), part.Get(), RGN_OR) == ERROR)
            return false;
    }
    return true;
}

// Each clip that there is closes what of the area is outside of it: the host's own, its meta
// region, and what the system leaves of a window, which is told in places of the screen. What is
// beyond the surface itself can never be painted there.
bool CUpdateClip::LeaveWhatIsClipped() const
{
    const CRegion clip(::CreateRectRgn(0, 0, 0, 0));
    if (!clip.Get()) return false;
    const int nOwn = ::GetClipRgn(m_hdc, clip.Get());
    if (nOwn < 0 || (nOwn > 0 && !Subtract(clip.Get()))) return false;
    if (::GetRandomRgn(m_hdc, clip.Get(), META_CLIP) == 1 && !Subtract(clip.Get())) return false;
    if (::GetRandomRgn(m_hdc, clip.Get(), SYSTEM_CLIP) != 1) return true;
    POINT ptOrigin{0, 0};
    ::GetDCOrgEx(m_hdc, &ptOrigin);
    ::OffsetRgn(clip.Get(), -ptOrigin.x, -ptOrigin.y);
    RECT rcSurface{};
    return Subtract(clip.Get()) &&
           (!FindSurface(m_hdc, ptOrigin, &rcSurface) || OpenBeyond(rcSurface));
}

bool CUpdateClip::OpenBeyond(const RECT& rcSurface) const
{
    const CRegion surface(::CreateRectRgnIndirect(&rcSurface));
    return surface.Get() &&
           ::CombineRgn(m_closed.Get(), m_closed.Get(), surface.Get(), RGN_AND) != ERROR;
}

bool CUpdateClip::Subtract(HRGN hRegion) const
{
    const CRegion outside(::CreateRectRgn(0, 0, 0, 0));
    return outside.Get() && ::CombineRgn(outside.Get(), m_area.Get(), hRegion, RGN_DIFF) != ERROR &&
           ::CombineRgn(m_closed.Get(), m_closed.Get(), outside.Get(), RGN_OR) != ERROR;
}

int CUpdateClip::TakeBack(CDirtyArea* pDirty) const
{
    pDirty->Clear();
    AddRest(pDirty);
    return 1;
}

// Of a region of too many rectangles its box.
void CUpdateClip::AddRest(CDirtyArea* pDirty) const
{
    RegionRects data{};
    RECT rc{};
    const DWORD nSize = ::GetRegionData(m_closed.Get(), 0, nullptr);
    if (nSize && nSize <= sizeof data &&
        ::GetRegionData(m_closed.Get(), sizeof data, reinterpret_cast<RGNDATA*>(&data))) {
        for (DWORD n = 0; n < data.header.nCount; ++n) pDirty->Add(ToUnits(data.rects[n]));
    } else if (::GetRgnBox(m_closed.Get(), &rc) > NULLREGION) {
        pDirty->Add(ToUnits(rc));
    }
}
