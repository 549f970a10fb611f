// The "line" element: a straight line. Drawn by render/QELViewLine.h.
#pragma once

#include "document/QELDocShape.h"

class CQELDocLine final : public CQELDocShape {
public:
    explicit CQELDocLine(XmlContext** ppXml) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
    [[nodiscard]] const CrdForm& GetCrdForm() const override;
};
