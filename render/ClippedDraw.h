// A full draw that leaves out the shapes whose painted area lies wholly outside the clip box of the
// device context. The pixels inside of the clip and the state that is left are those of a whole
// draw: what a shape that was left out would have left set is set in its place.
#pragma once

#include "render/QELViewShape.h"

class CQELViewGroup;

class CClippedDraw {
public:
    CClippedDraw(HDC hdc, const QelRect& rcQel, uint32_t nFlags) noexcept
        : m_hdc(hdc), m_rcQel(rcQel), m_nFlags(nFlags)
    {
    }

    int Draw(CQELViewElm* pTop); // the result of the element's own draw

private:
    [[nodiscard]] bool HidesSomething();
    [[nodiscard]] bool IsHidden(const RECT& rcPainted) const;
    void DrawChildren(const CQELViewElm* pParent);
    void DrawShape(CQELViewShape* pShape);
    void DrawGroup(CQELViewGroup* pGroup);
    void DrawNow(CQELViewElm* pElm);

    HDC m_hdc;
    QelRect m_rcQel;
    uint32_t m_nFlags;
    RECT m_rcClip{0, 0, 0, 0};
    LeftColors m_owed; // of what was left out since the last real draw
};
