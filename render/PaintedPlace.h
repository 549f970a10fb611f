// Who paints an element, and where: by itself, or as the face of the meter that it is in.
#pragma once

#include "base/Rects.h"
#include "render/QELViewShape.h"

// Whether a shape is one of those that a meter which it is in draws as its face.
inline bool IsFace(const CQELViewElm& elm)
{
    return elm.IsShape() && !elm.FirstChild();
}

inline const CQELViewShape& AsShape(const CQELViewElm& elm)
{
    return static_cast<const CQELViewShape&>(elm);
}

// What is painted at most, in pixels: what ask tells of a rectangle, with and without its samples.
template <class Ask>
bool AskInPixels(const QelRect& rcQel, RECT* prcOut, const Ask& ask)
{
    if (rcQel.px.Samples() == 1) return ask(rcQel, prcOut);
    CRectHull hull;
    RECT rc{};
    if (ask(rcQel.InPicture(), &rc)) hull.Add(rc);
    if (ask(rcQel, &rc)) hull.Add(PixelsOf(rc, rcQel.px));
    return hull.Get(prcOut);
}

// Whether an element and all that it is in are shown now.
bool IsShownNow(const CQELViewElm* pView);

// What an element paints at most, wherever it stands in the drawing: of a group all that is in it,
// of a meter its face as well; in pixels. False, and nothing is written, for what no full draw
// paints.
bool FindPaintedRect(const CQELViewElm* pView, const CQELViewElm* pRoot, const QelRect& rcQel,
                     RECT* prcOut);
// The same of an element that paints by itself, and of a shape in a meter's face.
bool FindOwnPaintedRect(const CQELViewElm& elm, const QelRect& rcQel, RECT* prcOut);
bool FindPaintedFace(const CQELViewElm& face, const QelRect& rcQel, RECT* prcOut);
// Whether a full draw would come to an element, were all of it shown.
bool IsDrawn(const CQELViewElm* pView, const CQELViewElm* pRoot);
