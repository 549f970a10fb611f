#include "base/Shown.h"

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

bool Covers(const RECT& rcOuter, const RECT& rc)
{
    return rcOuter.left <= rc.left && rcOuter.top <= rc.top && rcOuter.right >= rc.right &&
           rcOuter.bottom >= rc.bottom;
}

bool FindShown(HDC hdc, RECT* prcOut)
{
    return IsSurface(hdc) && HasPlainState(hdc) && ::GetClipBox(hdc, prcOut) != ERROR;
}
