#include "render/QELViewText.h"

#include "base/DrawLimits.h"
#include "base/GdiScopes.h"
#include "render/Mapping.h"

#include <cstring>

namespace {

constexpr int32_t STEP_ACROSS = 6;
constexpr int32_t STEP_DOWN = 12;

// The host's font in another size. It stays without one when the device context has no font to go
// by.
class CSizedFontScope {
public:
    CSizedFontScope(HDC hdc, SIZE size) noexcept : m_hdc(hdc)
    {
        LOGFONTA font{};
        if (!::GetObjectA(::GetCurrentObject(hdc, OBJ_FONT), sizeof font, &font)) return;
        font.lfWidth = size.cx;
        font.lfHeight = size.cy;
        font.lfCharSet = OEM_CHARSET;
        m_hMade = ::CreateFontIndirectA(&font);
        if (m_hMade) m_hPrev = ::SelectObject(hdc, m_hMade);
    }
    ~CSizedFontScope() { Restore(); }
    CSizedFontScope(const CSizedFontScope&) = delete;
    CSizedFontScope& operator=(const CSizedFontScope&) = delete;

    void Restore() noexcept
    {
        if (m_hPrev) ::SelectObject(m_hdc, m_hPrev);
        if (m_hMade) ::DeleteObject(m_hMade);
        m_hPrev = nullptr;
        m_hMade = nullptr;
    }

private:
    HDC m_hdc;
    HGDIOBJ m_hMade = nullptr;
    HGDIOBJ m_hPrev = nullptr;
};

} // namespace

SIZE TextCell(const RECT& rc, std::size_t nCount)
{
    SIZE size{0, 0};
    if (nCount > 0 && nCount < QEL_TEXT_SIZE)
        size = {WidthOf(rc) / static_cast<int32_t>(nCount), HeightOf(rc)};
    size.cx = size.cx / STEP_ACROSS * STEP_ACROSS;
    size.cy = size.cy / STEP_DOWN * STEP_DOWN;
    if (size.cx < 1) size.cx = STEP_ACROSS;
    if (size.cy < 1) size.cy = STEP_DOWN;
    return size;
}

int CQELViewText::Draw(HDC hdc, const RECT& rcQel, uint32_t nFlags)
{
    if (!(nFlags & QEL_DRAW_FULL)) return 1;
    RECT rc{};
    MapAnchored(rcQel, Box(), nFlags, &rc);
    const std::size_t nCount = std::strlen(Text());
    const SIZE cell = TextCell(rc, nCount);
    if (!IsDrawableCell(cell.cx, cell.cy)) return 1;

    const CBkModeScope mode(hdc, FillStyle() == QEL_STYLE_STROKE ? TRANSPARENT : OPAQUE);
    CSizedFontScope font(hdc, cell);
    const CBkColorScope back(hdc, BlinkColor(m_style.clrB));
    const CTextColorScope text(hdc, BlinkColor(m_style.clrA));
    PaintText(hdc, &rc, static_cast<int>(nCount));
    font.Restore(); // before the colours: the order in which hosts have always seen these calls
    return 1;
}

// The system may draw the line under the letter behind an ampersand from the current position.
void CQELViewText::PaintText(HDC hdc, RECT* prc, int nCount) const
{
    const CTextPlaceScope place(hdc);
    const CPositionBackScope position(hdc);
    ::DrawTextA(hdc, Text(), nCount, prc, 0);
}

void CQELViewText::LeaveColors(LeftColors*) const {}

// Letters are cut off at the rectangle. The line that the system draws under the letter behind an
// ampersand may not be: nothing is known of such a text.
int CQELViewText::PaintMargin(int32_t* pnOut) const
{
    *pnOut = PAINT_SLACK;
    return std::strchr(Text(), '&') ? 0 : 1;
}

uint32_t CQELViewText::GetParamMask() const
{
    return CQELViewShape::GetParamMask() | QEL_MASK_TEXT;
}
