// The document elements that differ from their base by their type alone: the eleven shapes, whose
// coordinates go by document/ShapeForms.h, and the elements that only gather children.
#pragma once

#include "document/QELDocPointList.h"
#include "document/QELDocShape.h"
#include "include/QELEngine.h"

// What group, frame and pattern share: a record of one word that is read as 0, and no data of their
// own.
class CQELDocContainer : public CQELDocElm {
public:
    using Record = QELWORDATTR;

    CQELDocContainer(const DocMaking& making, int32_t nType) noexcept : CQELDocElm(making, nType) {}

    int GetAttrSize(int* pnSize) const override;
    int GetAttr(void* pBlock) const override;
    int SetAttr(const void* pBlock) override; // takes any record and changes nothing

    static int TakeFields(const CQELDocContainer&) { return 1; }
};

template <class Base, int32_t TYPE>
class CQELDocLeaf final : public Base {
public:
    explicit CQELDocLeaf(const DocMaking& making) noexcept : Base(making, TYPE) {}

    int Clone(CQELDocElm** ppOut) const override { return CloneAs(*this, ppOut); }
};

using CQELDocText = CQELDocLeaf<CQELDocShape, QEL_TYPE_TEXT>;
using CQELDocRect = CQELDocLeaf<CQELDocShape, QEL_TYPE_RECT>;
using CQELDocChord = CQELDocLeaf<CQELDocShape, QEL_TYPE_CHORD>;
using CQELDocPie = CQELDocLeaf<CQELDocShape, QEL_TYPE_PIE>;
using CQELDocRoundRect = CQELDocLeaf<CQELDocShape, QEL_TYPE_ROUNDRECT>;
using CQELDocArc = CQELDocLeaf<CQELDocShape, QEL_TYPE_ARC>;
using CQELDocEllipse = CQELDocLeaf<CQELDocShape, QEL_TYPE_ELLIPSE>;
using CQELDocCircle = CQELDocLeaf<CQELDocShape, QEL_TYPE_CIRCLE>;
using CQELDocLine = CQELDocLeaf<CQELDocShape, QEL_TYPE_LINE>;
using CQELDocPolyline = CQELDocLeaf<CQELDocPointList, QEL_TYPE_POLYLINE>;
using CQELDocPolygon = CQELDocLeaf<CQELDocPointList, QEL_TYPE_POLYGON>;

using CQELDocGroup = CQELDocLeaf<CQELDocContainer, QEL_TYPE_GROUP>;
using CQELDocFrame = CQELDocLeaf<CQELDocContainer, QEL_TYPE_FRAME>;
using CQELDocPattern = CQELDocLeaf<CQELDocContainer, QEL_TYPE_PATTERN>;
