#include "dynamic/QELViewParam.h"

namespace {

CQELViewShape* ShapeFrom(CQELViewElm* pElm, const CQELViewElm* pTop)
{
    while (pElm && !pElm->IsShape()) pElm = pElm->NextInTree(pTop);
    return static_cast<CQELViewShape*>(pElm);
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
