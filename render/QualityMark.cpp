#include "render/QualityMark.h"

#include "base/GdiScopes.h"
#include "base/Rects.h"
#include "base/Refusals.h"

namespace {

constexpr COLORREF GREY = RGB(160, 160, 160);
constexpr COLORREF RED = RGB(255, 0, 0);
constexpr COLORREF BLACK = RGB(0, 0, 0);
constexpr COLORREF WHITE = RGB(255, 255, 255);
constexpr DWORD ROP_AND_PATTERN = 0x00A000C9;
constexpr DWORD ROP_OR_PATTERN = 0x00FA0089;
constexpr WORD g_chequers[] = {0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA};
constexpr int32_t CROSS_PARTS = 12; // of the shorter side, how wide the cross is drawn

class CChequers { // a brush of every other pixel, where the surface begins whatever the host's does
public:
    explicit CChequers(HDC hdc) noexcept
        : m_hdc(hdc), m_hBitmap(Made(::CreateBitmap(8, 8, 1, 1, g_chequers))),
          m_hBrush(m_hBitmap ? Made(::CreatePatternBrush(m_hBitmap)) : nullptr)
    {
        ::SetBrushOrgEx(hdc, 0, 0, &m_ptOrigin);
    }
    ~CChequers()
    {
        ::SetBrushOrgEx(m_hdc, m_ptOrigin.x, m_ptOrigin.y, nullptr);
        if (m_hBrush) ::DeleteObject(m_hBrush);
        if (m_hBitmap) ::DeleteObject(m_hBitmap);
    }
    CChequers(const CChequers&) = delete;
    CChequers& operator=(const CChequers&) = delete;
    [[nodiscard]] HBRUSH Get() const { return m_hBrush; }

private:
    HDC m_hdc;
    HBITMAP m_hBitmap;
    HBRUSH m_hBrush;
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

void DrawCross(HDC hdc, const RECT& rc)
{
    const int32_t nSide = WidthOf(rc) < HeightOf(rc) ? WidthOf(rc) : HeightOf(rc);
    const int32_t nWidth = nSide / CROSS_PARTS + 1;
    const RECT rcEnds{rc.left + nWidth, rc.top + nWidth, rc.right - nWidth - 1,
                      rc.bottom - nWidth - 1};
    if (rcEnds.left > rcEnds.right || rcEnds.top > rcEnds.bottom) return;
    const CPenScope pen(hdc, false, PS_SOLID, nWidth, RED);
    Line(hdc, {rcEnds.left, rcEnds.top}, {rcEnds.right, rcEnds.bottom});
    Line(hdc, {rcEnds.left, rcEnds.bottom}, {rcEnds.right, rcEnds.top});
}

} // namespace

void DrawQualityMark(HDC hdc, const RECT& rc, LiveQuality nQuality)
{
    if (nQuality == QUALITY_GOOD || ::IsRectEmpty(&rc)) return;
    {
        const CChequers chequers(hdc);
        const CSelectScope brush(hdc, chequers.Get());
        if (chequers.Get()) {
            Blend(hdc, rc, BLACK, WHITE, ROP_AND_PATTERN);
            Blend(hdc, rc, GREY, BLACK, ROP_OR_PATTERN);
        }
    }
    if (nQuality == QUALITY_BAD) DrawCross(hdc, rc);
}
