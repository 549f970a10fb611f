// The common base of the views that host values drive: meter, draw region, scale, pattern and
// frame. It adds no data; what a derived class has to supply stays open here.
#pragma once

#include "render/HostDriven.h"
#include "render/QELViewShape.h"

class CQELViewParam : public CQELViewElm, public CHostDriven {
public:
    CQELViewParam(int32_t nRefW, int32_t nRefH, int32_t nType, CPool* pPool = nullptr) noexcept
        : CQELViewElm(nRefW, nRefH, pPool)
    {
        SetType(nType);
    }

    int NewInstance(CQELViewElm** ppOut) const override = 0;
    int GetAttrBlockSize(int* pnSize) const override = 0;
    int GetAttrBlock(void* pBlock) const override = 0;
    int SetAttrBlock(const void* pBlock) override = 0;
    [[nodiscard]] uint32_t GetParamMask() const override = 0;
    [[nodiscard]] CHostDriven* HostSide() override { return this; }
};

// The shape at or after an element in a walk of pTop's subtree, parents first; null at its end.
// Groups and other dynamic elements are walked through.
CQELViewShape* FirstShapeBelow(CQELViewElm* pTop);
CQELViewShape* NextShapeBelow(CQELViewShape* pShape, const CQELViewElm* pTop);
// The same for those that are a meter's face: what has children is none.
const CQELViewShape* FirstFaceShape(const CQELViewElm* pTop);
const CQELViewShape* NextFaceShape(const CQELViewShape* pShape, const CQELViewElm* pTop);
