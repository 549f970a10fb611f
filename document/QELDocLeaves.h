// The document elements that differ from their base by their type alone: the eleven shapes, whose
// coordinates go by document/ShapeForms.h, and the elements that only gather children.
#pragma once

#include "document/QELDocContainer.h"
#include "document/QELDocPointList.h"
#include "document/QELDocShape.h"

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
