#include "render/PaintedPlace.h"

#include "base/Rects.h"

namespace {

enum class DrawnAs { Nothing, Itself, Face };

// The element farthest out that does not draw its children one by one decides: a meter draws the
// shapes that are anywhere in it as its face, every other draws itself alone.
DrawnAs HowDrawn(const CQELViewElm* pView, const CQELViewElm* pRoot)
{
    const CQELViewElm* pOutermost = nullptr;
    const CQELViewElm* pTop = pView;
    for (const CQELViewElm* p = pView->Parent(); p; p = p->Parent()) {
        if (!p->DrawsChildren()) pOutermost = p;
        pTop = p;
    }
    if (pTop != pRoot) return DrawnAs::Nothing;
    if (!pOutermost) return DrawnAs::Itself;
    return pOutermost->Type() == QEL_TYPE_METER ? DrawnAs::Face : DrawnAs::Nothing;
}

bool AddFaces(const CQELViewElm* pTop, const QelRect& rcQel, RECT* prcOut)
{
    CRectHull hull;
    for (const CQELViewElm* p = pTop; p; p = p->NextInTree(pTop)) {
        RECT rc{};
        if (IsFace(*p) && FindPaintedFace(*p, rcQel, &rc)) hull.Add(rc);
    }
    return hull.Get(prcOut);
}

} // namespace

bool FindOwnPaintedRect(const CQELViewElm& elm, const QelRect& rcQel, RECT* prcOut)
{
    return AskInPixels(rcQel, prcOut,
                       [&](const QelRect& rc, RECT* prc) { return elm.PaintedRect(rc, prc); });
}

bool FindPaintedFace(const CQELViewElm& face, const QelRect& rcQel, RECT* prcOut)
{
    return AskInPixels(rcQel, prcOut, [&](const QelRect& rc, RECT* prc) {
        return AsShape(face).PaintedFace(rc, prc);
    });
}

// A meter draws its face whatever a status in it says.
bool IsShownNow(const CQELViewElm* pView)
{
    bool bShown = true;
    for (const CQELViewElm* p = pView; p; p = p->Parent()) {
        if (p->IsHiddenItself()) return false;
        bShown = p->Type() == QEL_TYPE_METER || (bShown && p->IsShown());
    }
    return bShown;
}

bool IsDrawn(const CQELViewElm* pView, const CQELViewElm* pRoot)
{
    const DrawnAs nHow = HowDrawn(pView, pRoot);
    if (nHow == DrawnAs::Face) return IsFace(*pView) || !pView->IsShape();
    return nHow == DrawnAs::Itself;
}

bool FindPaintedRect(const CQELViewElm* pView, const CQELViewElm* pRoot, const QelRect& rcQel,
                     RECT* prcOut)
{
    switch (HowDrawn(pView, pRoot)) {
    case DrawnAs::Itself:
        return FindOwnPaintedRect(*pView, rcQel, prcOut);
    case DrawnAs::Face:
        return AddFaces(pView, rcQel, prcOut);
    default:
        return false;
    }
}
