#include "base/Shown.h"

#include "base/WrapMath.h"

#include <cstring>

bool IsSurface(HDC hdc)
{
    const DWORD nType = hdc ? ::GetObjectType(hdc) : 0;
    return nType == OBJ_DC || nType == OBJ_MEMDC;
}

bool HasPlainState(HDC hdc)
{
    if (::GetMapMode(hdc) != MM_TEXT || ::GetGraphicsMode(hdc) != GM_COMPATIBLE) return false;
    if (::GetLayout(hdc)) return false;
    const UINT nBounds = ::SetBoundsRect(hdc, nullptr, 0); // asks alone
    return nBounds && !(nBounds & DCB_ENABLE);
}

bool IsMovedAlone(HDC hdc, const RECT& rc, POINT* pptOffset)
{
    const POINT corners[] = {{rc.left, rc.top}, {rc.right, rc.top}, {rc.left, rc.bottom}};
    POINT pts[] = {corners[0], corners[1], corners[2]};
    if (!::LPtoDP(hdc, pts, 3)) return false;
    *pptOffset = {WrapSub(pts[0].x, rc.left), WrapSub(pts[0].y, rc.top)};
    for (POINT& pt : pts) pt = {WrapSub(pt.x, pptOffset->x), WrapSub(pt.y, pptOffset->y)};
    return std::memcmp(pts, corners, sizeof pts) == 0;
}

bool Covers(const RECT& rcOuter, const RECT& rc)
{
    return rcOuter.left <= rc.left && rcOuter.top <= rc.top && rcOuter.right >= rc.right &&
           rcOuter.bottom >= rc.bottom;
}

bool FindShown(HDC hdc, RECT* prcOut)
{
    return IsSurface(hdc) && HasPlainState(hdc) && ::GetClipBox(hdc, prcOut) != ERROR;
}
