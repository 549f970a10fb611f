// Rectangles as plain numbers, in arithmetic that wraps.
#pragma once

#include "base/WrapMath.h"

#include <windows.h>

// Device coordinates within these bounds can be added up without a care, by the system as well,
// which may do it in real numbers of 24 bits.
constexpr int32_t REACH = 1 << 22;
constexpr RECT ALL_IN_REACH{-REACH, -REACH, REACH, REACH};
constexpr bool IsWithinReach(const RECT& rc)
{
    return rc.left >= -REACH && rc.top >= -REACH && rc.right <= REACH && rc.bottom <= REACH;
}

constexpr int32_t WidthOf(const RECT& rc)
{
    return WrapSub(rc.right, rc.left);
}

constexpr int32_t HeightOf(const RECT& rc)
{
    return WrapSub(rc.bottom, rc.top);
}

// A rectangle within reach with so many pixels more at each side; what goes out of reach is all.
constexpr RECT GrownRect(const RECT& rc, int32_t n)
{
    if (!IsWithinReach(rc) || n < 0 || n > REACH) return ALL_IN_REACH;
    const RECT rcGrown{rc.left - n, rc.top - n, rc.right + n, rc.bottom + n};
    return IsWithinReach(rcGrown) ? rcGrown : ALL_IN_REACH;
}

// The rectangle around rectangles that are added one by one.
class CRectHull {
public:
    constexpr void Add(const RECT& rc)
    {
        if (rc.left >= rc.right || rc.top >= rc.bottom) return;
        if (!m_bAny) m_rc = rc;
        m_bAny = true;
        m_rc = {rc.left < m_rc.left ? rc.left : m_rc.left, rc.top < m_rc.top ? rc.top : m_rc.top,
                rc.right > m_rc.right ? rc.right : m_rc.right,
                rc.bottom > m_rc.bottom ? rc.bottom : m_rc.bottom};
    }
    constexpr void AddPixel(POINT pt) { Add({pt.x, pt.y, WrapAdd(pt.x, 1), WrapAdd(pt.y, 1)}); }
    // False, and nothing is written, when there was none.
    constexpr bool Get(RECT* prcOut) const
    {
        if (m_bAny) *prcOut = m_rc;
        return m_bAny;
    }
    [[nodiscard]] constexpr RECT Rect() const { return m_rc; }

private:
    bool m_bAny = false;
    RECT m_rc{0, 0, 0, 0};
};

constexpr bool IsInCircle(POINT ptCentre, int32_t nRadius, POINT pt)
{
    const double fX = static_cast<double>(pt.x) - ptCentre.x;
    const double fY = static_cast<double>(pt.y) - ptCentre.y;
    return fX * fX + fY * fY <= static_cast<double>(nRadius) * nRadius;
}

// The same rectangle with left <= right and top <= bottom.
constexpr RECT NormalizedRect(const RECT& rc)
{
    return {rc.left < rc.right ? rc.left : rc.right, rc.top < rc.bottom ? rc.top : rc.bottom,
            rc.left < rc.right ? rc.right : rc.left, rc.top < rc.bottom ? rc.bottom : rc.top};
}
