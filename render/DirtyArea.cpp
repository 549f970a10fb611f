#include "render/DirtyArea.h"

#include "base/Rects.h"
#include "render/PaintedPlace.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

constexpr uint32_t FIRST_ROOM = 64;
constexpr uint32_t MOST_ROOM = 1 << 28; // its bytes can be counted in both word sizes

RECT HullOf(const RECT& a, const RECT& b)
{
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

double AreaOf(const RECT& rc)
{
    return (static_cast<double>(rc.right) - rc.left) * (static_cast<double>(rc.bottom) - rc.top);
}

bool Holds(const RECT& outer, const RECT& inner)
{
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

} // namespace

CDirtyArea::~CDirtyArea()
{
    std::free(m_ppTouched);
}

// Into a free place, or into the rectangle that grows least by it.
void CDirtyArea::Add(const RECT& rcAdded)
{
    RECT rc{};
    if (!::IntersectRect(&rc, &rcAdded, &ALL_IN_REACH)) return; // nothing paints beyond
    int nNearest = -1;
    double fLeast = 0;
    for (int n = 0; n < m_nCount; ++n) {
        if (Holds(m_rects[n], rc)) return;
        const double fGrowth = AreaOf(HullOf(m_rects[n], rc)) - AreaOf(m_rects[n]);
        if (nNearest >= 0 && fGrowth >= fLeast) continue;
        nNearest = n;
        fLeast = fGrowth;
    }
    if (m_nCount < MOST_RECTS)
        m_rects[m_nCount++] = rc;
    else
        m_rects[nNearest] = HullOf(m_rects[nNearest], rc);
}

// A mark over what holds the element stands over all that is in it.
void CDirtyArea::AddPlaceOf(const CQELViewElm* pElm, const CQELViewElm* pRoot)
{
    if (!pRoot) return;
    for (const CQELViewElm* p = pElm; p; p = p->Parent()) {
        RECT rc{};
        if (p != pElm && !p->IsMarked()) continue;
        if (FindPaintedRect(p, pRoot, m_rcQel, &rc)) Add(rc);
    }
}

void CDirtyArea::AddAll()
{
    ForgetTouched();
    m_bAll = true;
}

void CDirtyArea::AddAllNow(const CQELViewElm* pRoot)
{
    Add(NormalizedRect(m_rcQel));
    if (pRoot) AddPlaceOf(pRoot, pRoot);
}

void CDirtyArea::Clear()
{
    ForgetTouched();
    m_bAll = false;
    m_nCount = 0;
}

void CDirtyArea::ForgetTouched()
{
    for (uint32_t n = 0; n < m_nTouched; ++n) m_ppTouched[n]->SetTouched(false);
    m_nTouched = 0;
}

// One that is not touched yet. Without memory all of the picture is dirty.
void CDirtyArea::Remember(CQELViewElm* pElm)
{
    if (m_nTouched == m_nRoom && !Grow()) {
        AddAll();
        return;
    }
    m_ppTouched[m_nTouched++] = pElm;
    pElm->SetTouched(true);
}

int CDirtyArea::Grow()
{
    const uint32_t nRoom = m_nRoom ? 2 * m_nRoom : FIRST_ROOM;
    if (nRoom > MOST_ROOM) return 0;
    void* pRoom = std::realloc(m_ppTouched, nRoom * sizeof(CQELViewElm*));
    if (!pRoom) return 0;
    m_ppTouched = static_cast<CQELViewElm**>(pRoom);
    m_nRoom = nRoom;
    return 1;
}

void CDirtyArea::Resolve(const CQELViewElm* pRoot)
{
    if (m_bAll) {
        m_bAll = false;
        AddAllNow(pRoot);
        return;
    }
    for (uint32_t n = 0; n < m_nTouched; ++n) {
        m_ppTouched[n]->SetTouched(false);
        AddPlaceOf(m_ppTouched[n], pRoot);
    }
    m_nTouched = 0;
}

bool CDirtyArea::Meets(const RECT& rc) const
{
    return std::any_of(m_rects, m_rects + m_nCount, [&](const RECT& rcDirty) {
        return rc.left < rcDirty.right && rcDirty.left < rc.right && rc.top < rcDirty.bottom &&
               rcDirty.top < rc.bottom;
    });
}
