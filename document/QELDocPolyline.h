// The "polyline" element: straight lines through 2 to 16 points. Drawn by render/QELViewPolyline.h.
#pragma once

#include "document/QELDocPointList.h"

class CQELDocPolyline final : public CQELDocPointList {
public:
    explicit CQELDocPolyline(XmlContext** ppXml) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
};
