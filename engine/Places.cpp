// A tree of rectangles over the elements in the order of their middles along a curve that keeps
// neighbours together, so that what is near in the picture is in few of its nodes.
#include "engine/Places.h"

#include "base/Block.h"
#include "base/Rects.h"
#include "document/QELDocElm.h"
#include "render/PaintedPlace.h"
#include "render/QELViewShape.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int32_t HIT_MARGIN = 5; // pixels, more than an outline may be away
constexpr uint32_t CURVE_SIDE = 0xFFFF;

// ---- the picture in the order of drawing

// A walk of the view tree, and beside it of the document where there is one.
struct Step {
    CQELViewElm* pView;
    CQELDocElm* pDoc;
};

Step StepTo(const Step& from, CQELDocElm* pDoc, CQELViewElm* pView)
{
    if (!from.pDoc) return {pView, nullptr};
    return {pDoc ? pDoc->View() : nullptr, pDoc};
}

// The next one in document order, with or without what is in this one.
Step NextStep(Step at, const CQELViewElm* pTop, bool bInto)
{
    if (bInto) {
        const Step child =
            StepTo(at, at.pDoc ? at.pDoc->FirstChild() : nullptr, at.pView->FirstChild());
        if (child.pView) return child;
    }
    while (at.pView != pTop) {
        const Step next =
            StepTo(at, at.pDoc ? at.pDoc->NextSibling() : nullptr, at.pView->NextSibling());
        if (next.pView) return next;
        at = StepTo(at, at.pDoc ? at.pDoc->Parent() : nullptr, at.pView->Parent());
    }
    return {nullptr, nullptr};
}

template <class Visit>
void VisitFaces(const Step& meter, const QelRect& rcQel, const Visit& visit)
{
    for (Step at = NextStep(meter, meter.pView, true); at.pView;
         at = NextStep(at, meter.pView, true)) {
        RECT rc{};
        if (IsFace(*at.pView) && FindPaintedFace(*at.pView, rcQel, &rc))
            visit(PaintedElm{rc, at.pView, at.pDoc});
    }
}

// Every element that paints by itself.
template <class Visit>
void VisitPainted(const Step& root, const QelRect& rcQel, const Visit& visit)
{
    for (Step at = root; at.pView; at = NextStep(at, root.pView, at.pView->DrawsChildren())) {
        if (at.pView->DrawsChildren()) continue;
        if (at.pView->Type() == QEL_TYPE_METER) VisitFaces(at, rcQel, visit);
        RECT rc{};
        if (FindOwnPaintedRect(*at.pView, rcQel, &rc)) visit(PaintedElm{rc, at.pView, at.pDoc});
    }
}

// ---- places along the curve

// The bits of a number with a free place after each.
uint32_t Spread(uint32_t n)
{
    n = (n | n << 8) & 0x00FF00FF;
    n = (n | n << 4) & 0x0F0F0F0F;
    n = (n | n << 2) & 0x33333333;
    return (n | n << 1) & 0x55555555;
}

uint32_t Along(int32_t n, int32_t nFrom, int32_t nTo)
{
    if (n <= nFrom || nTo <= nFrom) return 0;
    if (n >= nTo) return CURVE_SIDE;
    return static_cast<uint32_t>((int64_t{n} - nFrom) * CURVE_SIDE / (int64_t{nTo} - nFrom));
}

struct OnCurve {
    uint32_t nPlace;
    uint32_t nNumber;
    bool operator<(const OnCurve& other) const
    {
        return nPlace != other.nPlace ? nPlace < other.nPlace : nNumber < other.nNumber;
    }
};

bool Meet(const RECT& a, const RECT& b)
{
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

uint32_t GroupsOf(uint32_t nCount, uint32_t nFan)
{
    return nCount / nFan + (nCount % nFan ? 1 : 0);
}

} // namespace

void CPlaces::Forget()
{
    ForgetIndex();
    m_pictureChanges = {};
}

void CPlaces::ForgetIndex()
{
    std::free(m_pElms);
    m_pElms = nullptr;
    m_nCount = 0;
    m_nLevels = 0;
}

int CPlaces::Make(CQELViewElm* pRoot, CQELDocElm* pDocRoot, const QelRect& rcQel)
{
    if (!pRoot) {
        Forget();
        return 0;
    }
    const bool bHolds = m_pElms && m_changes == pRoot->Changes();
    if (bHolds && m_rcQel == rcQel) return 1;
    ForgetIndex();
    m_changes = pRoot->Changes();
    m_rcQel = rcQel;
    uint32_t nCount = 0;
    const Step root{pRoot, pDocRoot};
    VisitPainted(root, rcQel, [&](const PaintedElm&) { ++nCount; });
    if (!TakeBlock(nCount)) return 0;
    // A meter without memory paints anywhere, and may have had some before.
    VisitPainted(root, rcQel, [&](const PaintedElm& elm) {
        if (m_nCount < nCount) m_pElms[m_nCount++] = elm;
    });
    if (!SortByPlace()) {
        ForgetIndex();
        return 0;
    }
    MakeNodes();
    return 1;
}

bool CPlaces::FindPicture(const CQELViewElm* pRoot, const QelRect& rcQel, RECT* prcOut)
{
    const CQELViewElm::ChangeStamp changes = pRoot->Changes();
    if (changes.IsNone() || m_pictureChanges != changes || !(m_rcPictureQel == rcQel)) {
        ::SetRectEmpty(&m_rcPicture);
        FindPaintedRect(pRoot, pRoot, rcQel, &m_rcPicture);
        m_rcPictureQel = rcQel;
        m_pictureChanges = changes;
    }
    *prcOut = m_rcPicture;
    return !::IsRectEmpty(prcOut);
}

int CPlaces::TakeBlock(uint32_t nCount)
{
    uint64_t nNodes = 0;
    for (uint32_t n = GroupsOf(nCount, FAN);; n = GroupsOf(n, FAN)) {
        nNodes += n;
        if (n <= 1) break;
    }
    const uint64_t nSize =
        nCount * uint64_t{sizeof(PaintedElm) + 2 * sizeof(uint32_t)} + nNodes * sizeof(Node) + 1;
    if (nSize >= SIZE_MAX / 2) return 0;
    m_pElms = static_cast<PaintedElm*>(std::malloc(static_cast<std::size_t>(nSize)));
    if (!m_pElms) return 0;
    m_pNodes = reinterpret_cast<Node*>(m_pElms + nCount);
    m_pnByPlace = reinterpret_cast<uint32_t*>(m_pNodes + nNodes);
    m_pnFound = m_pnByPlace + nCount;
    return 1;
}

bool CPlaces::SortByPlace()
{
    const CBlock block(uint64_t{m_nCount} * sizeof(OnCurve) + 1);
    auto* pPlaces = block.As<OnCurve>();
    if (!pPlaces) return false;
    for (uint32_t n = 0; n < m_nCount; ++n) {
        const RECT& rc = m_pElms[n].rc;
        const auto nX = Along((rc.left + rc.right) / 2, m_rcQel.left, m_rcQel.right);
        const auto nY = Along((rc.top + rc.bottom) / 2, m_rcQel.top, m_rcQel.bottom);
        pPlaces[n] = {Spread(nX) | Spread(nY) << 1, n};
    }
    std::sort(pPlaces, pPlaces + m_nCount);
    for (uint32_t n = 0; n < m_nCount; ++n) m_pnByPlace[n] = pPlaces[n].nNumber;
    return true;
}

void CPlaces::MakeNodes()
{
    uint32_t nFirst = 0;
    uint32_t nBelow = m_nCount;
    while (nBelow > 0) { // there are levels for all that 32 bits count
        const uint32_t nCount = GroupsOf(nBelow, FAN);
        m_levels[m_nLevels] = {nFirst, nCount};
        for (uint32_t n = 0; n < nCount; ++n)
            m_pNodes[nFirst + n] = NodeOver(static_cast<uint32_t>(m_nLevels), n);
        ++m_nLevels;
        nFirst += nCount;
        nBelow = nCount == 1 ? 0 : nCount;
    }
}

CPlaces::Node CPlaces::NodeOver(uint32_t nLevel, uint32_t nNode) const
{
    CRectHull hull;
    uint32_t nLast = 0;
    const uint32_t nBelow = nLevel ? m_levels[nLevel - 1].nCount : m_nCount;
    for (uint32_t n = nNode * FAN; n < nBelow && n < (nNode + 1) * FAN; ++n) {
        const bool bNodes = nLevel > 0;
        const uint32_t nElm = bNodes ? 0 : m_pnByPlace[n];
        const Node* pBelow = bNodes ? &m_pNodes[m_levels[nLevel - 1].nFirst + n] : nullptr;
        hull.Add(pBelow ? pBelow->rc : m_pElms[nElm].rc);
        nLast = std::max(nLast, pBelow ? pBelow->nLast : nElm);
    }
    return {hull.Rect(), nLast};
}

// visit: takes the highest number of a node, or an element's own, and says whether to look further.
template <class Visit>
void CPlaces::WalkNode(const RECT& rc, int nLevel, uint32_t nNode, const Visit& visit) const
{
    const Node& node = m_pNodes[m_levels[nLevel].nFirst + nNode];
    if (!Meet(node.rc, rc) || !visit(node.nLast, false)) return;
    const uint32_t nBelow = nLevel ? m_levels[nLevel - 1].nCount : m_nCount;
    const uint32_t nEnd = std::min(nBelow, (nNode + 1) * FAN);
    for (uint32_t n = nNode * FAN; n < nEnd; ++n)
        if (nLevel)
            WalkNode(rc, nLevel - 1, n, visit);
        else if (Meet(m_pElms[m_pnByPlace[n]].rc, rc))
            visit(m_pnByPlace[n], true);
}

template <class Visit>
void CPlaces::Walk(const RECT& rc, const Visit& visit) const
{
    if (m_nLevels) WalkNode(rc, m_nLevels - 1, 0, visit);
}

uint32_t CPlaces::FindIn(const RECT& rc)
{
    uint32_t nFound = 0;
    Walk(rc, [&](uint32_t nNumber, bool bElement) {
        if (bElement) m_pnFound[nFound++] = nNumber;
        return true;
    });
    std::sort(m_pnFound, m_pnFound + nFound);
    return nFound;
}

const PaintedElm* CPlaces::Topmost(POINT pt, const QelRect& rcQel) const
{
    if (pt.x < -REACH || pt.y < -REACH || pt.x > REACH || pt.y > REACH) return nullptr;
    const PaintedElm* pFound = nullptr;
    const RECT rcNear{pt.x - HIT_MARGIN, pt.y - HIT_MARGIN, pt.x + HIT_MARGIN + 1,
                      pt.y + HIT_MARGIN + 1};
    Walk(rcNear, [&](uint32_t nNumber, bool bElement) {
        const PaintedElm& elm = m_pElms[nNumber];
        if (pFound && &elm <= pFound) return false; // what is there is above it
        if (bElement && elm.pView->IsHit(rcQel, pt) && IsShownNow(elm.pView)) pFound = &elm;
        return true;
    });
    return pFound;
}
