// The picture of a drawing; see the header.
#include "tools/studio/Backing.h"

#include "tools/qel/TextFont.h"

namespace studio {

namespace {

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

void CBacking::SetGround(HBRUSH hGround)
{
    m_hGround = hGround;
    QELInvalidate(m_hEngine, nullptr);
}

void CBacking::SetEngine(HQELENGINE hEngine)
{
    m_hEngine = hEngine;
    m_bPressed = false;
    QELInvalidate(m_hEngine, nullptr);
}

// The engine has the drawing begin at 0,0, as a picture of all of it does: gradients and hatches
// are the same wherever it is moved to. The context moves it.
void CBacking::SetView(const CViewport& view, SIZE client, bool bSmooth)
{
    const RECT rcClient{0, 0, client.cx, client.cy};
    const RECT rcDrawing = view.Rect();
    const RECT rcWas = m_rcShown;
    const POINT ptWas = m_ptOrigin;
    ::IntersectRect(&m_rcShown, &rcDrawing, &rcClient);
    if (::IsRectEmpty(&m_rcShown) || !m_hEngine) return;
    m_ptOrigin = {rcDrawing.left, rcDrawing.top};
    m_picture.SetSize({m_rcShown.right - m_rcShown.left, m_rcShown.bottom - m_rcShown.top});
    if (!::EqualRect(&rcWas, &m_rcShown) || ptWas.x != m_ptOrigin.x || ptWas.y != m_ptOrigin.y)
        QELInvalidate(m_hEngine, nullptr);
    const POINT pt{m_ptOrigin.x - m_rcShown.left, m_ptOrigin.y - m_rcShown.top};
    ::SetViewportOrgEx(m_picture.Dc(), pt.x, pt.y, nullptr);
    ::SetBrushOrgEx(m_picture.Dc(), pt.x, pt.y, nullptr);
    RECT rcDevice = rcDrawing;
    ::OffsetRect(&rcDevice, -m_ptOrigin.x, -m_ptOrigin.y);
    RECT rcQel{};
    if (!QELGetQELRect(m_hEngine, &rcQel) || !::EqualRect(&rcQel, &rcDevice))
        QELSetQELRect(m_hEngine, &rcDevice);
    QELSetPixelScale(m_hEngine, view.PixelScale());
    QELSetSmooth(m_hEngine, bSmooth ? SAMPLES : 0);
}

// What of the drawing shows, in the units of the engine's device.
RECT CBacking::ShownUnits() const
{
    RECT rc = m_rcShown;
    ::OffsetRect(&rc, -m_ptOrigin.x, -m_ptOrigin.y);
    return rc;
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
    const RECT rc = ShownUnits();
    ::FillRect(m_picture.Dc(), &rc, m_hGround);
    return QELDraw(m_hEngine, m_picture.Dc(), &rc, QEL_DRAW_FULL | QEL_DRAW_PRESSED) &&
           QELValidate(m_hEngine);
}

bool CBacking::Update(HRGN hPainted)
{
    if (!m_hEngine || !m_picture.Dc() || ::IsRectEmpty(&m_rcShown)) return false;
    HRGN hDirty = ::CreateRectRgn(0, 0, 0, 0);
    const RECT rcAll = ShownUnits();
    HRGN hAll = ::CreateRectRgnIndirect(&rcAll);
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
             m_rcShown.top - m_ptOrigin.y, SRCCOPY); // in its units
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
