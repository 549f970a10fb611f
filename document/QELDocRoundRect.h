// The "rndrect" element: a rectangle with rounded corners. Drawn by render/QELViewRoundRect.h.
#pragma once

#include "document/QELDocShape.h"

class CQELDocRoundRect final : public CQELDocShape {
public:
    explicit CQELDocRoundRect(XmlContext** ppXml) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
    [[nodiscard]] const CrdForm& GetCrdForm() const override;
};
