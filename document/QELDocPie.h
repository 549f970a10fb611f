// The "pie" element: a sector of an ellipse, counter-clockwise from the start point to the end
// point. Drawn by render/QELViewPie.h.
#pragma once

#include "document/QELDocShape.h"

class CQELDocPie final : public CQELDocShape {
public:
    explicit CQELDocPie(XmlContext** ppXml) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
    [[nodiscard]] const CrdForm& GetCrdForm() const override;
};
