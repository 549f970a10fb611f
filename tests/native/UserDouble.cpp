// A stand-in for the functions on rectangles of user32. The results are those of the system for all
// 32-bit numbers: sums wrap.
#include <windows.h>

#include <algorithm>

namespace {

LONG Sum(LONG a, LONG b)
{
    return static_cast<LONG>(static_cast<DWORD>(a) + static_cast<DWORD>(b));
}

} // namespace

BOOL WINAPI SetRectEmpty(RECT* prc)
{
    *prc = {0, 0, 0, 0};
    return TRUE;
}

BOOL WINAPI SetRect(RECT* prc, INT l, INT t, INT r, INT b)
{
    *prc = {l, t, r, b};
    return TRUE;
}

BOOL WINAPI IsRectEmpty(const RECT* prc)
{
    return !prc || prc->left >= prc->right || prc->top >= prc->bottom;
}

BOOL WINAPI EqualRect(const RECT* pA, const RECT* pB)
{
    return pA && pB && pA->left == pB->left && pA->top == pB->top && pA->right == pB->right &&
           pA->bottom == pB->bottom;
}

BOOL WINAPI PtInRect(const RECT* prc, POINT pt)
{
    return prc && pt.x >= prc->left && pt.x < prc->right && pt.y >= prc->top && pt.y < prc->bottom;
}

BOOL WINAPI InflateRect(RECT* prc, INT dx, INT dy)
{
    *prc = {Sum(prc->left, Sum(~dx, 1)), Sum(prc->top, Sum(~dy, 1)), Sum(prc->right, dx),
            Sum(prc->bottom, dy)};
    return TRUE;
}

BOOL WINAPI OffsetRect(RECT* prc, INT dx, INT dy)
{
    *prc = {Sum(prc->left, dx), Sum(prc->top, dy), Sum(prc->right, dx), Sum(prc->bottom, dy)};
    return TRUE;
}

BOOL WINAPI IntersectRect(RECT* pOut, const RECT* pA, const RECT* pB)
{
    if (!pOut || !pA || !pB) return FALSE;
    const RECT rc{std::max(pA->left, pB->left), std::max(pA->top, pB->top),
                  std::min(pA->right, pB->right), std::min(pA->bottom, pB->bottom)};
    const bool bMeet = !IsRectEmpty(pA) && !IsRectEmpty(pB) && !IsRectEmpty(&rc);
    *pOut = bMeet ? rc : RECT{0, 0, 0, 0};
    return bMeet;
}

BOOL WINAPI UnionRect(RECT* pOut, const RECT* pA, const RECT* pB)
{
    if (!pOut) return FALSE;
    if (IsRectEmpty(pA)) {
        *pOut = IsRectEmpty(pB) ? RECT{0, 0, 0, 0} : *pB;
        return !IsRectEmpty(pB);
    }
    if (IsRectEmpty(pB)) {
        *pOut = *pA;
        return TRUE;
    }
    *pOut = {std::min(pA->left, pB->left), std::min(pA->top, pB->top),
             std::max(pA->right, pB->right), std::max(pA->bottom, pB->bottom)};
    return TRUE;
}

// The font of messages is all that is asked for.
BOOL WINAPI SystemParametersInfoW(UINT nAction, UINT nSize, void* pOut, UINT)
{
    if (nAction != SPI_GETNONCLIENTMETRICS || nSize != sizeof(NONCLIENTMETRICSW) || !pOut)
        return FALSE;
    auto* pMetrics = static_cast<NONCLIENTMETRICSW*>(pOut);
    *pMetrics = {};
    pMetrics->cbSize = nSize;
    pMetrics->lfMessageFont.lfHeight = -12;
    pMetrics->lfMessageFont.lfWeight = FW_NORMAL;
    return TRUE;
}
