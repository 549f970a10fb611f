#include "render/QELViewText.h"

#include "base/Decimal.h"
#include "base/DrawLimits.h"
#include "base/GdiScopes.h"
#include "base/Refusals.h"
#include "base/WideText.h"
#include "render/Mapping.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int32_t STEP_ACROSS = 6;
constexpr int32_t STEP_DOWN = 12;

// A text as its bytes, which the system reads by its own code page.
class CByteLetters {
public:
    using FontRecord = LOGFONTA;

    explicit CByteLetters(const char* pszText) noexcept
        : m_pszText(pszText), m_nLength(std::strlen(pszText))
    {
    }

    [[nodiscard]] std::size_t Cells() const { return m_nLength; }
    [[nodiscard]] static BYTE Charset() { return OEM_CHARSET; }
    static int ReadFont(HGDIOBJ hFont, LOGFONTA* pFont)
    {
        return ::GetObjectA(hFont, sizeof *pFont, pFont);
    }
    static HFONT MakeFont(const LOGFONTA& font) { return ::CreateFontIndirectA(&font); }
    void Paint(HDC hdc, RECT* prc) const
    {
        ::DrawTextA(hdc, m_pszText, static_cast<int>(m_nLength), prc, 0);
    }

private:
    const char* m_pszText;
    std::size_t m_nLength;
};

// The same as Unicode. Names of faces are read as such too: they may be none in the system's page.
class CWideLetters {
public:
    using FontRecord = LOGFONTW;

    CWideLetters(uint32_t nPage, const char* pszText) noexcept : m_text(nPage, pszText) {}

    [[nodiscard]] std::size_t Cells() const { return static_cast<std::size_t>(m_text.Columns()); }
    [[nodiscard]] BYTE Charset() const { return m_text.Charset(); }
    static int ReadFont(HGDIOBJ hFont, LOGFONTW* pFont)
    {
        return ::GetObjectW(hFont, sizeof *pFont, pFont);
    }
    static HFONT MakeFont(const LOGFONTW& font) { return ::CreateFontIndirectW(&font); }
    void Paint(HDC hdc, RECT* prc) const
    {
        ::DrawTextW(hdc, m_text.Text(), m_text.Length(), prc, 0);
    }

private:
    CWideText m_text;
};

// The host's font in another size. It stays without one when the device context has no font to go
// by.
class CSizedFontScope {
public:
    template <class Letters>
    CSizedFontScope(HDC hdc, SIZE size, const Letters& letters, CPixelScale px) noexcept
        : m_hdc(hdc)
    {
        typename Letters::FontRecord font{};
        if (!Letters::ReadFont(::GetCurrentObject(hdc, OBJ_FONT), &font)) return;
        font.lfWidth = size.cx;
        font.lfHeight = size.cy;
        font.lfCharSet = letters.Charset();
        font.lfQuality = TextQuality(px, font.lfQuality);
        m_hMade = Made(Letters::MakeFont(font));
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

namespace {

// The extent of a cell of which so many are to fit: as many steps as do, in whole pixels below. A
// step that is rounded up would cut off the end of a text which fits at the plain scale; and what
// the sides of the rectangle have lost of a pixel would make it smaller by a step.
int32_t SteppedExtent(int32_t nFree, std::size_t nCells, int32_t nStep, CPixelScale px)
{
    const int64_t nStepParts = int64_t{nStep} * px.Percent(); // a hundred of them are a pixel
    const int64_t nAlmostMore = (int64_t{nFree / px.Samples()} + 1) * PLAIN_PERCENT - 1;
    const int64_t nFitting = nAlmostMore / (static_cast<int64_t>(nCells) * nStepParts);
    const int64_t nPixels = std::max<int64_t>(nFitting, 1) * nStepParts / PLAIN_PERCENT;
    return static_cast<int32_t>(std::max<int64_t>(nPixels, 1)) * px.Samples();
}

} // namespace

SIZE TextCell(const RECT& rc, std::size_t nCount, CPixelScale px)
{
    const bool bReckoned = nCount > 0 && nCount < QEL_TEXT_SIZE;
    return {SteppedExtent(bReckoned ? WidthOf(rc) : 0, bReckoned ? nCount : 1, STEP_ACROSS, px),
            SteppedExtent(bReckoned ? HeightOf(rc) : 0, 1, STEP_DOWN, px)};
}

void PutNumber(char* pszText, double fNumber)
{
    char* pchRun = std::strchr(pszText, '#');
    if (!pchRun) return;
    std::size_t nWidth = std::strspn(pchRun, "#");
    std::size_t nDecimals = 0;
    if (pchRun[nWidth] == '.') nDecimals = std::strspn(pchRun + nWidth + 1, "#");
    if (nDecimals) nWidth += nDecimals + 1;
    char szNumber[QEL_TEXT_SIZE];
    const int nLength =
        WriteDecimal(fNumber, static_cast<int>(nDecimals), szNumber, sizeof szNumber);
    const auto nUsed = static_cast<std::size_t>(nLength);
    if (!nLength || nUsed > nWidth) return;
    std::memset(pchRun, ' ', nWidth - nUsed);
    std::memcpy(pchRun + (nWidth - nUsed), szNumber, nUsed);
}

const char* CQELViewText::ShownText(char (&szRoom)[QEL_TEXT_SIZE]) const
{
    const LiveState* pState = Live();
    if (!pState) return Text();
    const char* pszText = pState->pszText ? pState->pszText : Text();
    if (!pState->bHasValue || std::strlen(pszText) >= sizeof szRoom) return pszText;
    std::strcpy(szRoom, pszText);
    PutNumber(szRoom, pState->fValue);
    return szRoom;
}

int CQELViewText::Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags)
{
    if (!(nFlags & QEL_DRAW_FULL)) return 1;
    RECT rc{};
    MapAnchored(rcQel, Box(), nFlags, &rc);
    char szRoom[QEL_TEXT_SIZE];
    const char* const pszText = ShownText(szRoom);
    if (const uint32_t nPage = TextPage())
        DrawLetters(hdc, rc, CWideLetters(nPage, pszText), rcQel.px);
    else
        DrawLetters(hdc, rc, CByteLetters(pszText), rcQel.px);
    return 1;
}

template <class Letters>
void CQELViewText::DrawLetters(HDC hdc, RECT rc, const Letters& letters, CPixelScale px) const
{
    const SIZE cell = TextCell(rc, letters.Cells(), px);
    if (!IsDrawableCell(cell.cx, cell.cy, px)) return;
    const CBkModeScope mode(hdc, FillStyle() == QEL_STYLE_STROKE ? TRANSPARENT : OPAQUE);
    CSizedFontScope font(hdc, cell, letters, px);
    const CBkColorScope back(hdc, BlinkColor(ShownB()));
    const CTextColorScope text(hdc, BlinkColor(ShownA()));
    {
        // The line under the letter behind an ampersand may go from the current position.
        const CTextPlaceScope place(hdc);
        const CPositionBackScope position(hdc);
        letters.Paint(hdc, &rc);
    }
    font.Restore(); // before the colours: the order in which hosts have always seen these calls
}

std::size_t CQELViewText::CellsOf(const char* pszText) const
{
    const uint32_t nPage = TextPage();
    return nPage ? CWideLetters(nPage, pszText).Cells() : std::strlen(pszText);
}

void CQELViewText::LeaveColors(LeftColors*) const {}

// Letters are cut off at the rectangle. The line that the system draws under the letter behind an
// ampersand may not be: nothing is known of such a text.
int CQELViewText::PaintMargin(CPixelScale px, int32_t* pnOut) const
{
    char szRoom[QEL_TEXT_SIZE];
    *pnOut = px(PAINT_SLACK);
    return std::strchr(ShownText(szRoom), '&') ? 0 : 1;
}

// In a font without lines and turn. Under the letter behind an ampersand is a line, which may stand
// as far away as the text would reach: no character is wider than twice its cell, or than high.
RECT CQELViewText::PaintedBox(const DeviceFigure& figure, bool) const
{
    char szRoom[QEL_TEXT_SIZE];
    const char* const pszText = ShownText(szRoom);
    const RECT rc = NormalizedRect(figure.rcBox);
    if (!std::strchr(pszText, '&')) return rc;
    const SIZE cell = TextCell(rc, CellsOf(pszText), figure.px);
    if (!IsDrawableCell(cell.cx, cell.cy, figure.px) || !IsWithinReach(rc)) return rc;
    const int32_t nWide = 2 * cell.cx > cell.cy ? 2 * cell.cx : cell.cy;
    int32_t nLines = 1;
    for (const char* p = pszText; *p; ++p) nLines += *p == '\n' || *p == '\r' ? 1 : 0;
    const auto nLength = static_cast<int32_t>(std::strlen(pszText));
    CRectHull hull;
    hull.Add(rc);
    hull.Add(
        {rc.left - nWide, rc.top, rc.left + nWide * (nLength + 1), rc.top + 2 * cell.cy * nLines});
    return hull.Rect();
}

// On the rectangle that it is laid out in.
bool CQELViewText::IsHit(const QelRect& rcQel, POINT pt) const
{
    RECT rc{};
    MapAnchored(rcQel, Box(), 0, &rc); // what cannot be mapped is empty
    return ::PtInRect(&rc, pt);
}

uint32_t CQELViewText::GetParamMask() const
{
    return CQELViewShape::GetParamMask() | QEL_MASK_TEXT;
}
