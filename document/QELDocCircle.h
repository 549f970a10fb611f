// The "circle" element: a circle, round at every proportion of the drawing. Drawn by
// render/QELViewCircle.h.
#pragma once

#include "document/QELDocShape.h"

class CQELDocCircle final : public CQELDocShape {
public:
    explicit CQELDocCircle(XmlContext** ppXml) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
    [[nodiscard]] const CrdForm& GetCrdForm() const override;
};
