// The "arc" element: a part of an ellipse's outline, counter-clockwise from the start point to the
// end point. Drawn by render/QELViewArc.h.
#pragma once

#include "document/QELDocShape.h"

class CQELDocArc final : public CQELDocShape {
public:
    explicit CQELDocArc(XmlContext** ppXml) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
    [[nodiscard]] const CrdForm& GetCrdForm() const override;
};
