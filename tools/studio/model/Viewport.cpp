// The place of a drawing in its window; see the header.
#include "tools/studio/model/Viewport.h"

#include <algorithm>
#include <cmath>

namespace studio {

namespace {

constexpr double PLAIN_DPI = 96;
constexpr double MARGIN = 8;    // around a fitted drawing, at 96 dots an inch
constexpr double IN_SIGHT = 48; // so much of a drawing that is moved stays in the window
constexpr double MIN_ZOOM = 0.05;
constexpr double MIN_SCALE = 25; // percent, the engine's limits
constexpr double MAX_SCALE = 1600;
constexpr double SNAP = 0.04; // a zoom that comes so near to 100 % is that

LONG Whole(double f)
{
    return static_cast<LONG>(std::lround(f));
}

// An edge of a drawing that is to stay in sight.
double Kept(double fEdge, double fSize, double fClient, double fSight)
{
    const double fLeast = std::min(fSight, std::min(fSize, fClient));
    return std::clamp(fEdge, fLeast - fSize, std::max(fClient - fLeast, fLeast - fSize));
}

} // namespace

void CViewport::SetClient(SIZE size)
{
    // What stands in the middle stays there.
    m_fX += (size.cx - m_client.cx) / 2.0;
    m_fY += (size.cy - m_client.cy) / 2.0;
    m_client = size;
    KeepInSight();
}

void CViewport::SetDrawing(SIZE size)
{
    m_drawing = {std::max(size.cx, 0L), std::max(size.cy, 0L)};
    KeepInSight();
}

void CViewport::SetDpi(unsigned nDpi)
{
    m_nDpi = nDpi;
}

bool CViewport::IsEmpty() const
{
    return !m_drawing.cx || !m_drawing.cy || m_client.cx <= 0 || m_client.cy <= 0;
}

double CViewport::Dots() const
{
    return m_nDpi / PLAIN_DPI;
}

void CViewport::Fit()
{
    m_mode = Mode::Fit;
}

void CViewport::Fill()
{
    m_mode = Mode::Fill;
}

void CViewport::ShowActual()
{
    const POINT pt = Middle(SizeAt(1));
    SetFree(1, pt.x, pt.y);
}

void CViewport::ZoomAt(POINT ptClient, double fFactor)
{
    if (IsEmpty()) return;
    const RECT rc = Rect();
    const bool bFree = m_mode == Mode::Free; // its edges are between pixels: they are not rounded
    const double fOld = Zoom();
    double fZoom = std::clamp(fOld * fFactor, MIN_ZOOM, MAX_SCALE / 100 / Dots());
    if (std::abs(fZoom - 1) < SNAP && std::abs(fOld - 1) >= SNAP) fZoom = 1;
    // By the sides themselves, which a filled window stretches in another way.
    const double fWide = m_drawing.cx * fZoom * Dots();
    const double fHigh = m_drawing.cy * fZoom * Dots();
    const double fRight = bFree ? fZoom / fOld : fWide / (rc.right - rc.left);
    const double fDown = bFree ? fZoom / fOld : fHigh / (rc.bottom - rc.top);
    SetFree(fZoom, ptClient.x - (ptClient.x - (bFree ? m_fX : rc.left)) * fRight,
            ptClient.y - (ptClient.y - (bFree ? m_fY : rc.top)) * fDown);
}

void CViewport::ZoomMiddle(double fFactor)
{
    ZoomAt({m_client.cx / 2, m_client.cy / 2}, fFactor);
}

void CViewport::MoveBy(int nX, int nY)
{
    const RECT rc = Rect();
    if (m_mode == Mode::Free)
        SetFree(m_fZoom, m_fX + nX, m_fY + nY);
    else if (m_mode == Mode::Fit)
        SetFree(Zoom(), rc.left + nX, rc.top + nY);
}

void CViewport::SetFree(double fZoom, double fX, double fY)
{
    m_mode = Mode::Free;
    m_fZoom = fZoom;
    m_fX = fX;
    m_fY = fY;
    KeepInSight();
}

void CViewport::KeepInSight()
{
    const SIZE size = SizeAt(m_fZoom);
    m_fX = Kept(m_fX, size.cx, m_client.cx, IN_SIGHT * Dots());
    m_fY = Kept(m_fY, size.cy, m_client.cy, IN_SIGHT * Dots());
}

double CViewport::FitZoom() const
{
    const double fMargins = 2 * MARGIN * Dots();
    const double fWide = std::max(m_client.cx - fMargins, 1.0) / (m_drawing.cx * Dots());
    const double fHigh = std::max(m_client.cy - fMargins, 1.0) / (m_drawing.cy * Dots());
    return std::min({fWide, fHigh, MAX_SCALE / 100 / Dots()});
}

double CViewport::Zoom() const
{
    if (m_mode == Mode::Free) return m_fZoom;
    if (IsEmpty()) return 1;
    if (m_mode == Mode::Fit) return FitZoom();
    // Of a filled window: that of the side that is stretched less.
    return std::min(m_client.cx / (m_drawing.cx * Dots()), m_client.cy / (m_drawing.cy * Dots()));
}

SIZE CViewport::SizeAt(double fZoom) const
{
    return {std::max(Whole(m_drawing.cx * fZoom * Dots()), 1L),
            std::max(Whole(m_drawing.cy * fZoom * Dots()), 1L)};
}

POINT CViewport::Middle(SIZE size) const
{
    return {(m_client.cx - size.cx) / 2, (m_client.cy - size.cy) / 2};
}

RECT CViewport::Rect() const
{
    if (IsEmpty()) return {0, 0, 0, 0};
    if (m_mode == Mode::Fill) return {0, 0, m_client.cx, m_client.cy};
    const SIZE size = SizeAt(Zoom());
    POINT pt{Whole(m_fX), Whole(m_fY)};
    if (m_mode == Mode::Fit) pt = Middle(size);
    return {pt.x, pt.y, pt.x + size.cx, pt.y + size.cy};
}

unsigned CViewport::PixelScale() const
{
    const double fZoom = m_mode == Mode::Fill ? 1 : Zoom();
    return static_cast<unsigned>(
        std::lround(std::clamp(fZoom * Dots() * 100, MIN_SCALE, MAX_SCALE)));
}

} // namespace studio
