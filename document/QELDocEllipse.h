// The "ellipse" element: an ellipse in its bounding rectangle. Drawn by render/QELViewEllipse.h.
#pragma once

#include "document/QELDocShape.h"

class CQELDocEllipse final : public CQELDocShape {
public:
    explicit CQELDocEllipse(XmlContext** ppXml) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
    [[nodiscard]] const CrdForm& GetCrdForm() const override;
};
