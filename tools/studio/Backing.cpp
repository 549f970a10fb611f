// The picture of a drawing; see the header.
#include "tools/studio/Backing.h"

#include "tools/qel/TextFont.h"

#include <numeric>

namespace studio {

namespace {

constexpr int HATCH_SIDE = 8; // cells of a hatch, each as many pixels as the scale has hundreds
constexpr int SAMPLES = 4;

class CSelected {
public:
    CSelected(HDC hdc, HGDIOBJ hObject) : m_hdc(hdc), m_hPrev(::SelectObject(hdc, hObject)) {}
    ~CSelected() { ::SelectObject(m_hdc, m_hPrev); }
    CSelected(const CSelected&) = delete;
    CSelected& operator=(const CSelected&) = delete;

private:
    HDC m_hdc;
    HGDIOBJ m_hPrev;
};

int Down(int nValue, int nStep)
{
    return nValue - nValue % nStep;
}

} // namespace

CBacking::CBacking()
{
    const LOGFONTW font = qel::TextFont(qel::DefaultTextFace());
    m_hFont = ::CreateFontIndirectW(&font);
}

CBacking::~CBacking()
{
    ::DeleteObject(m_hFont);
}

void CBacking::SetGround(HBRUSH hGround, int nPeriod)
{
    m_hGround = hGround;
    m_nPeriod = nPeriod;
    QELInvalidate(m_hEngine, nullptr);
}

void CBacking::SetEngine(HQELENGINE hEngine)
{
    m_hEngine = hEngine;
    m_bPressed = false;
    QELInvalidate(m_hEngine, nullptr);
}

void CBacking::SetView(const CViewport& view, SIZE client, bool bSmooth)
{
    const RECT rcClient{0, 0, client.cx, client.cy};
    const RECT rcDrawing = view.Rect();
    ::IntersectRect(&m_rcShown, &rcDrawing, &rcClient);
    if (::IsRectEmpty(&m_rcShown) || !m_hEngine) return;
    Align(view);
    const SIZE was = m_picture.Size();
    m_picture.SetSize({m_rcShown.right - m_ptOrigin.x, m_rcShown.bottom - m_ptOrigin.y});
    if (was.cx != m_picture.Size().cx || was.cy != m_picture.Size().cy)
        QELInvalidate(m_hEngine, nullptr);
    RECT rcDevice = rcDrawing;
    ::OffsetRect(&rcDevice, -m_ptOrigin.x, -m_ptOrigin.y);
    RECT rcWas{};
    if (!QELGetQELRect(m_hEngine, &rcWas) || !::EqualRect(&rcWas, &rcDevice))
        QELSetQELRect(m_hEngine, &rcDevice);
    QELSetPixelScale(m_hEngine, view.PixelScale());
    QELSetSmooth(m_hEngine, bSmooth ? SAMPLES : 0);
}

// Hatches go by the corner of the picture. It stands where they repeat, so that a drawing that is
// moved about keeps them in their places.
void CBacking::Align(const CViewport& view)
{
    const RECT rc = view.Rect();
    const int nCell = (static_cast<int>(view.PixelScale()) + 50) / 100;
    const int nStep = std::lcm(HATCH_SIDE * (nCell > 1 ? nCell : 1), m_nPeriod);
    m_ptOrigin = {rc.left + Down(m_rcShown.left - rc.left, nStep),
                  rc.top + Down(m_rcShown.top - rc.top, nStep)};
}

void CBacking::SetPressed(bool bPressed)
{
    if (!(QELParamsSupported(m_hEngine) & QEL_MASK_PRESS)) return;
    m_bPressed = bPressed;
    QELInvalidate(m_hEngine, nullptr);
}

// Updates know nothing of pressed elements: while they are, all is drawn.
bool CBacking::Paint()
{
    if (!m_bPressed) return QELUpdate(m_hEngine, m_picture.Dc(), m_hGround) != 0;
    const SIZE size = m_picture.Size();
    const RECT rc{0, 0, size.cx, size.cy};
    ::FillRect(m_picture.Dc(), &rc, m_hGround);
    return QELDraw(m_hEngine, m_picture.Dc(), &rc, QEL_DRAW_FULL | QEL_DRAW_PRESSED) &&
           QELValidate(m_hEngine);
}

bool CBacking::Update(HRGN hPainted)
{
    if (!m_hEngine || !m_picture.Dc() || ::IsRectEmpty(&m_rcShown)) return false;
    HRGN hDirty = ::CreateRectRgn(0, 0, 0, 0);
    const SIZE size = m_picture.Size();
    HRGN hAll = ::CreateRectRgn(0, 0, size.cx, size.cy);
    const bool bDirty = QELGetDirtyRegion(m_hEngine, hDirty) &&
                        ::CombineRgn(hDirty, hDirty, hAll, RGN_AND) > NULLREGION;
    const CSelected font(m_picture.Dc(), m_hFont);
    const bool bDone = bDirty && Paint();
    ::OffsetRgn(hDirty, m_ptOrigin.x, m_ptOrigin.y);
    if (bDone) ::CombineRgn(hPainted, hPainted, hDirty, RGN_OR);
    ::DeleteObject(hAll);
    ::DeleteObject(hDirty);
    return bDone;
}

void CBacking::Show(HDC hdc) const
{
    if (!m_hEngine || !m_picture.Dc() || ::IsRectEmpty(&m_rcShown)) return;
    ::GdiFlush();
    ::BitBlt(hdc, m_rcShown.left, m_rcShown.top, m_rcShown.right - m_rcShown.left,
             m_rcShown.bottom - m_rcShown.top, m_picture.Dc(), m_rcShown.left - m_ptOrigin.x,
             m_rcShown.top - m_ptOrigin.y, SRCCOPY);
}

POINT CBacking::ToEngine(POINT ptClient) const
{
    return {ptClient.x - m_ptOrigin.x, ptClient.y - m_ptOrigin.y};
}

RECT CBacking::ToWindow(const RECT& rcDevice) const
{
    RECT rc = rcDevice;
    ::OffsetRect(&rc, m_ptOrigin.x, m_ptOrigin.y);
    return rc;
}

} // namespace studio
