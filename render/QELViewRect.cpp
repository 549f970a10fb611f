// The rectangle view; see the header.
#include "render/QELViewRect.h"

#include "render/Border3D.h"
#include "render/Mapping.h"

int CQELViewRect::NewInstance(CQELViewElm** ppOut) const
{
    return NewInstanceAs(*this, ppOut);
}

bool CQELViewRect::HidesOutline() const
{
    return (Style() & (QEL_STYLE_UP_BIT | QEL_STYLE_DOWN_BIT)) != 0;
}

// The rings of a border that is wider than the rectangle pass each other and come out beyond it.
int CQELViewRect::PaintMargin(int32_t* pnOut) const
{
    if (!CQELViewBox::PaintMargin(pnOut)) return 0;
    if (HidesOutline()) *pnOut += BorderWidthOf(Style());
    return 1;
}

void CQELViewRect::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
                         const RECT& rcQel) const
{
    const RECT& rc = figure.rcBox;
    if (m_style.nPenWidth == 0 && FillStyle() != QEL_STYLE_STROKE) {
        // FillRect covers the whole rectangle, which Rectangle with a null pen does not.
        if (!hBrush) hBrush = static_cast<HBRUSH>(::GetCurrentObject(hdc, OBJ_BRUSH));
        ::FillRect(hdc, &rc, hBrush);
    } else {
        ::Rectangle(hdc, rc.left, rc.top, rc.right, rc.bottom);
    }
    const int32_t nWidth = BorderWidthOf(Style());
    if (Style() & QEL_STYLE_UP_BIT)
        DrawBorder3D(hdc, rc, BORDER_LIGHT, BORDER_DARK, rcQel, nWidth);
    else if (Style() & QEL_STYLE_DOWN_BIT)
        DrawBorder3D(hdc, rc, BORDER_DARK, BORDER_LIGHT, rcQel, nWidth);
}

HRGN CQELViewRect::MakeRegion(const RECT& rcQel) const
{
    RECT rc{};
    if (!MapAnchored(rcQel, Box(), 0, &rc)) return nullptr;
    const int32_t nShrink =
        HidesOutline() ? BorderWidthOf(Style()) : WrapAdd(m_style.nPenWidth, 1) / 2;
    return ::CreateRectRgn(WrapAdd(rc.left, nShrink), WrapAdd(rc.top, nShrink),
                           WrapSub(rc.right, nShrink), WrapSub(rc.bottom, nShrink));
}
