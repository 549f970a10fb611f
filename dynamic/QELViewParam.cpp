#include "dynamic/QELViewParam.h"

namespace {

CQELViewShape* ShapeFrom(CQELViewElm* pElm, const CQELViewElm* pTop)
{
    while (pElm && !pElm->IsShape()) pElm = pElm->NextInTree(pTop);
    return static_cast<CQELViewShape*>(pElm);
}

const CQELViewShape* FaceFrom(const CQELViewElm* pElm, const CQELViewElm* pTop)
{
    while (pElm && (!pElm->IsShape() || pElm->FirstChild())) pElm = pElm->NextInTree(pTop);
    return static_cast<const CQELViewShape*>(pElm);
}

} // namespace

CQELViewShape* FirstShapeBelow(CQELViewElm* pTop)
{
    return ShapeFrom(pTop->NextInTree(pTop), pTop);
}

CQELViewShape* NextShapeBelow(CQELViewShape* pShape, const CQELViewElm* pTop)
{
    return ShapeFrom(pShape->NextInTree(pTop), pTop);
}

const CQELViewShape* FirstFaceShape(const CQELViewElm* pTop)
{
    return FaceFrom(pTop->NextInTree(pTop), pTop);
}

const CQELViewShape* NextFaceShape(const CQELViewShape* pShape, const CQELViewElm* pTop)
{
    return FaceFrom(pShape->NextInTree(pTop), pTop);
}
