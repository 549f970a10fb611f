// The "rect" element: a rectangle, with 3D borders when its style asks for them. Drawn by
// render/QELViewRect.h.
#pragma once

#include "document/QELDocShape.h"

class CQELDocRect final : public CQELDocShape {
public:
    explicit CQELDocRect(XmlContext** ppXml) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
    [[nodiscard]] const CrdForm& GetCrdForm() const override;
};
