// The "text" element: a text in its rectangle. Drawn by render/QELViewText.h.
#pragma once

#include "document/QELDocShape.h"

class CQELDocText final : public CQELDocShape {
public:
    explicit CQELDocText(XmlContext** ppXml) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
    [[nodiscard]] const CrdForm& GetCrdForm() const override;
};
