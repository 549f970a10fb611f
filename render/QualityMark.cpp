#include "render/QualityMark.h"

#include "base/GdiScopes.h"
#include "base/PixelPen.h"
#include "base/Rects.h"
#include "brush/Hatch.h"

namespace {

constexpr COLORREF GREY = RGB(160, 160, 160);
constexpr COLORREF RED = RGB(255, 0, 0);
constexpr COLORREF BLACK = RGB(0, 0, 0);
constexpr COLORREF WHITE = RGB(255, 255, 255);
constexpr DWORD ROP_AND_PATTERN = 0x00A000C9;
constexpr DWORD ROP_OR_PATTERN = 0x00FA0089;
constexpr unsigned short g_chequers[] = {0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA};
constexpr int32_t CROSS_PARTS = 12; // of the shorter side, how wide the cross is drawn

// A brush of every other pixel, where the surface begins whatever the host's does.
class CChequers {
public:
    CChequers(HDC hdc, CPixelScale px) noexcept : m_hdc(hdc), m_brush(g_chequers, px(1))
    {
        POINT ptSurface{0, 0}; // of a tile, which is a part of it
        if (px.Samples() > 1) ::GetViewportOrgEx(hdc, &ptSurface);
        ::SetBrushOrgEx(hdc, ptSurface.x, ptSurface.y, &m_ptOrigin);
    }
    ~CChequers() { ::SetBrushOrgEx(m_hdc, m_ptOrigin.x, m_ptOrigin.y, nullptr); }
    CChequers(const CChequers&) = delete;
    CChequers& operator=(const CChequers&) = delete;
    [[nodiscard]] HBRUSH Get() const { return m_brush.Get(); }

private:
    HDC m_hdc;
    CHatchBrush m_brush;
    POINT m_ptOrigin{0, 0};
};

void Blend(HDC hdc, const RECT& rc, COLORREF clrOn, COLORREF clrOff, DWORD nOperation)
{
    const CTextColorScope text(hdc, clrOn);
    const CBkColorScope back(hdc, clrOff);
    ::PatBlt(hdc, rc.left, rc.top, WidthOf(rc), HeightOf(rc), nOperation);
}

void Line(HDC hdc, POINT pt1, POINT pt2)
{
    const CPositionScope position(hdc, pt1);
    ::LineTo(hdc, pt2.x, pt2.y);
}

void DrawCross(HDC hdc, const RECT& rc, CPixelScale px)
{
    const int32_t nSide = WidthOf(rc) < HeightOf(rc) ? WidthOf(rc) : HeightOf(rc);
    const int32_t nWidth = nSide / CROSS_PARTS + px(1);
    const RECT rcEnds{rc.left + nWidth, rc.top + nWidth, rc.right - nWidth - px(1),
                      rc.bottom - nWidth - px(1)};
    if (rcEnds.left > rcEnds.right || rcEnds.top > rcEnds.bottom) return;
    const CPixelPenScope pen(hdc, false, PS_SOLID, 0, nWidth, RED);
    Line(hdc, {rcEnds.left, rcEnds.top}, {rcEnds.right, rcEnds.bottom});
    Line(hdc, {rcEnds.left, rcEnds.bottom}, {rcEnds.right, rcEnds.top});
}

} // namespace

void DrawQualityMark(HDC hdc, const RECT& rc, LiveQuality nQuality, CPixelScale px)
{
    {
        const CChequers chequers(hdc, px);
        const CSelectScope brush(hdc, chequers.Get());
        if (chequers.Get()) {
            Blend(hdc, rc, BLACK, WHITE, ROP_AND_PATTERN);
            Blend(hdc, rc, GREY, BLACK, ROP_OR_PATTERN);
        }
    }
    if (nQuality == QUALITY_BAD) DrawCross(hdc, rc, px);
}
