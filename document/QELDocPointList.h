// What polygon and polyline share: 2 to 16 points, kept as the count and then the points.
#pragma once

#include "document/QELDocShape.h"

class CQELDocPointList : public CQELDocShape {
public:
    CQELDocPointList(const DocMaking& making, int32_t nType) noexcept : CQELDocShape(making, nType)
    {
    }

    // All refuse a count outside 2 to 16, which a host's record may hold.
    int GetRect(RECT* prc) const override;
    int MapRect(const RECT& rcOld, const RECT& rcNew) override;
    int ParseCrd(const char* pszText) override;
    [[nodiscard]] std::size_t FormatCrd(char* pszOut) const override;

private:
    [[nodiscard]] bool HasPoints() const;
};
