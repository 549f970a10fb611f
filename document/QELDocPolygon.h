// The "polygon" element: a closed figure of 2 to 16 points. Drawn by render/QELViewPolygon.h.
#pragma once

#include "document/QELDocPointList.h"

class CQELDocPolygon final : public CQELDocPointList {
public:
    explicit CQELDocPolygon(XmlContext** ppXml) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
};
