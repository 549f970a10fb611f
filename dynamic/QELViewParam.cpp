#include "dynamic/QELViewParam.h"

#include <cstring>

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

int GetEmptyBlock(void* pBlock)
{
    if (!pBlock) return 0;
    std::memset(pBlock, 0, sizeof(QELWORDATTR));
    return 1;
}

int SetEmptyBlock(const void* pBlock)
{
    return pBlock ? 1 : 0;
}

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
