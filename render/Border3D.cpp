// The 3D border; see the header.
#include "render/Border3D.h"

#include "base/GdiScopes.h"
#include "base/WrapMath.h"

namespace {

constexpr int32_t DEFAULT_WIDTH = 2;

void DrawCorner(HDC hdc, HGDIOBJ hPen, POINT ptFrom, POINT ptCorner, POINT ptTo)
{
    if (hPen) ::SelectObject(hdc, hPen);
    ::MoveToEx(hdc, ptFrom.x, ptFrom.y, nullptr);
    ::LineTo(hdc, ptCorner.x, ptCorner.y);
    ::LineTo(hdc, ptTo.x, ptTo.y);
}

class CPen { // a solid pen that is deleted with its scope
public:
    explicit CPen(COLORREF clr) noexcept : m_hPen(::CreatePen(PS_SOLID, 1, clr)) {}
    ~CPen()
    {
        if (m_hPen) ::DeleteObject(m_hPen);
    }
    CPen(const CPen&) = delete;
    CPen& operator=(const CPen&) = delete;
    [[nodiscard]] HGDIOBJ Get() const { return m_hPen; }

private:
    HPEN m_hPen;
};

} // namespace

int32_t BorderWidthOf(uint32_t nStyle)
{
    const auto nWidth = static_cast<int32_t>(nStyle >> 16);
    return nWidth ? nWidth : DEFAULT_WIDTH;
}

int DrawBorder3D(HDC hdc, const RECT& rc, COLORREF clrLight, COLORREF clrDark, const RECT& rcQel,
                 int32_t nWidth)
{
    RECT rcMeet{};
    if (::IsRectEmpty(&rc) || !::IntersectRect(&rcMeet, &rc, &rcQel)) return 0;
    const CPen light(clrLight);
    const CPen dark(clrDark);
    POINT ptBefore{0, 0};
    ::GetCurrentPositionEx(hdc, &ptBefore);
    const HGDIOBJ hPrev = ::GetCurrentObject(hdc, OBJ_PEN);

    RECT r = rc;
    for (int32_t n = 0; n < nWidth; ++n) { // rings may pass each other in a small rectangle
        const LONG nLastX = WrapSub(r.right, 1);
        const LONG nLastY = WrapSub(r.bottom, 1);
        DrawCorner(hdc, light.Get(), {r.left, nLastY}, {r.left, r.top}, {r.right, r.top});
        DrawCorner(hdc, dark.Get(), {nLastX, r.top}, {nLastX, nLastY},
                   {WrapSub(r.left, 1), nLastY});
        ::InflateRect(&r, -1, -1);
    }

    ::MoveToEx(hdc, ptBefore.x, ptBefore.y, nullptr);
    if (hPrev) ::SelectObject(hdc, hPrev);
    return 1;
}
