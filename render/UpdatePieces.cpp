#include "render/UpdatePieces.h"

#include "base/Rects.h"

namespace {

constexpr double PIECE_COST =
    4096; // pixels that are painted in the time that a piece takes by itself

double AreaOf(const RECT& rc)
{
    return static_cast<double>(WidthOf(rc)) * HeightOf(rc);
}

RECT HullOf(const RECT& a, const RECT& b)
{
    CRectHull hull;
    hull.Add(a);
    hull.Add(b);
    return hull.Rect();
}

bool BelongTogether(const RECT& a, const RECT& b)
{
    RECT rcBoth{};
    return ::IntersectRect(&rcBoth, &a, &b) ||
           AreaOf(HullOf(a, b)) <= AreaOf(a) + AreaOf(b) + PIECE_COST;
}

} // namespace

CUpdatePieces::CUpdatePieces(const CDirtyArea& area, const RECT& rcShown) noexcept
{
    for (int n = 0; n < area.Count(); ++n) {
        RECT rc{};
        if (::IntersectRect(&rc, &area.At(n), &rcShown)) Add(rc);
    }
}

// What has grown may meet others.
void CUpdatePieces::Add(RECT rc)
{
    for (int n = 0; n < m_nCount;) {
        if (!BelongTogether(m_rects[n], rc)) {
            ++n;
            continue;
        }
        rc = HullOf(m_rects[n], rc);
        m_rects[n] = m_rects[--m_nCount];
        n = 0;
    }
    m_rects[m_nCount++] = rc;
}
