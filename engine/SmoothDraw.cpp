// How the engine makes smooth pictures, and pictures in the host's memory; the rest of it is in
// engine/QELEngine.cpp.
#include "engine/SmoothDraw.h"

#include "base/GdiScopes.h"
#include "base/Rects.h"
#include "base/Shown.h"
#include "engine/QELEngine.h"

#include <cstring>

namespace {

// All of the drawing, on a tile.
class CViewPainter final : public CTilePainter {
public:
    CViewPainter(CQELView& view, const QelRect& rcQel, uint32_t nFlags) noexcept
        : m_view(view), m_rcQel(rcQel), m_nFlags(nFlags)
    {
    }
    void Paint(HDC hdc, const RECT&, bool bLast) override
    {
        m_view.Draw(nullptr, hdc, m_rcQel, bLast ? m_nFlags : m_nFlags | DRAW_MORE);
    }

private:
    CQELView& m_view;
    QelRect m_rcQel;
    uint32_t m_nFlags;
};

// The face of the system's own texts, or one that the host has named, with grey edges: colours at
// the edges would be those of one ground.
HFONT MakePictureFont(const wchar_t (&szFace)[LF_FACESIZE])
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    LOGFONTW font{};
    if (::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0))
        font = metrics.lfMessageFont;
    if (*szFace) std::memcpy(font.lfFaceName, szFace, sizeof szFace);
    font.lfUnderline = font.lfStrikeOut = FALSE;
    font.lfWeight = FW_NORMAL;
    font.lfQuality = ANTIALIASED_QUALITY;
    return ::CreateFontIndirectW(&font);
}

} // namespace

bool CanBeSmooth(HDC hdc, const RECT& rc, RECT* prcShown)
{
    RECT rcClip{};
    return FindShown(hdc, &rcClip) && ::GetDeviceCaps(hdc, TECHNOLOGY) == DT_RASDISPLAY &&
           IsWithinReach(rc) && ::IntersectRect(prcShown, &rcClip, &rc);
}

QelRect CQELEngine::PaintRect() const
{
    const auto nSamples = static_cast<uint32_t>(m_nSmooth ? m_nSmooth : 1);
    return {m_rcDraw, CPixelScale(PixelScale(), nSamples)};
}

int CQELEngine::SetSmooth(int32_t nSamples)
{
    if (nSamples == 0) m_bands.Drop();
    if (nSamples == m_nSmooth) return 1;
    TouchAll();
    m_nSmooth = nSamples;
    m_view.Dirty().SetPlace(PaintRect());
    return 1;
}

// 0 where it has to be drawn plainly.
int CQELEngine::DrawSmooth(HDC hdc, uint32_t nFlags)
{
    RECT rc{};
    RECT rcShown{};
    CQELViewElm* pRoot = m_view.Root();
    if (!pRoot || !m_places.FindPicture(pRoot, PaintRect(), &rc)) return 0;
    if (!CanBeSmooth(hdc, rc, &rcShown)) return 0;
    CViewPainter painter(m_view, PaintRect(), nFlags);
    return m_bands.Paint(hdc, rcShown, {WidthOf(m_rcDraw), HeightOf(m_rcDraw)}, m_nSmooth,
                         &painter);
}

int CQELEngine::RenderBitmap(void* pBits, SIZE size, int32_t nStride, uint32_t nFlags)
{
    const CFont font(MakePictureFont(m_szFace));
    const int32_t nSamples = m_nSmooth ? m_nSmooth : 1;
    const QelRect rcQel({0, 0, size.cx, size.cy},
                        CPixelScale(PixelScale(), static_cast<uint32_t>(nSamples), true));
    CViewPainter painter(m_view, rcQel, nFlags | QEL_DRAW_FULL | DRAW_UPDATE);
    CSmoothBands bands;
    return (m_nSmooth ? m_bands : bands)
        .Render(pBits, size, nStride, nSamples, font.Get(), &painter);
}

int CQELEngine::SetFontFace(const wchar_t* pszFace)
{
    wchar_t szFace[LF_FACESIZE] = L"";
    for (int n = 0; pszFace && pszFace[n]; ++n) {
        if (n == LF_FACESIZE - 1) return 0;
        szFace[n] = pszFace[n];
    }
    std::memcpy(m_szFace, szFace, sizeof m_szFace);
    return 1;
}
