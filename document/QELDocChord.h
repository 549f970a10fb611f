// The "chord" element: a segment of an ellipse, counter-clockwise from the start point to the end
// point. Drawn by render/QELViewChord.h.
#pragma once

#include "document/QELDocShape.h"

class CQELDocChord final : public CQELDocShape {
public:
    explicit CQELDocChord(XmlContext** ppXml) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
    [[nodiscard]] const CrdForm& GetCrdForm() const override;
};
