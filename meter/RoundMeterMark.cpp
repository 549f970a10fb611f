#include "meter/RoundMeterMark.h"

#include "base/WrapMath.h"
#include "meter/DialComponents.h"

#include <cstring>

namespace {

constexpr int32_t HINT_PARTS = 7; // of the radius

} // namespace

CRoundMeterMark::CRoundMeterMark(const CMeter& meter, int32_t nRadius, COLORREF clr) noexcept
    : m_clr(clr)
{
    meter.GetFontSize(nRadius / HINT_PARTS, &m_cell);
}

int CRoundMeterMark::Draw(HDC hdc, POINT ptAnchor, const char* pszText) const
{
    if (!pszText) return 0;
    const auto nLength = static_cast<int32_t>(std::strlen(pszText));
    return CScaleMark(m_cell.nWidth, m_cell.nHeight, m_clr)
        .Draw(hdc, WrapSub(ptAnchor.x, (nLength * m_cell.nWidth) >> 1),
              WrapSub(ptAnchor.y, m_cell.nHeight >> 1), pszText);
}
