// What the engine answers of where its elements are; the rest of it is in engine/QELEngine.cpp.
#include "base/Rects.h"
#include "document/QELDocShape.h"
#include "engine/QELEngine.h"
#include "render/PaintedPlace.h"
#include "render/QELViewShape.h"
#include "render/UnitMap.h"

namespace {

RECT DrawingRect(SIZE size)
{
    return {0, 0, size.cx, size.cy};
}

} // namespace

CPlaces* CQELEngine::Places()
{
    CQELDocElm* pDocRoot = m_document.GetRoot();
    return m_places.Make(m_view.Root(), pDocRoot, PaintRect()) ? &m_places : nullptr;
}

int CQELEngine::GetElemDrawRect(const CQELDocElm* pElm, RECT* prc) const
{
    ::SetRectEmpty(prc);
    const CQELViewElm* pView = pElm->View();
    return m_view.Root() && FindPaintedRect(pView, m_view.Root(), PaintRect(), prc) ? 1 : 0;
}

int CQELEngine::GetIdDrawRect(const char* pszId, RECT* prc)
{
    ::SetRectEmpty(prc);
    CRectHull hull;
    for (const IdBearer* p = m_identifiers.Find(pszId); p; p = m_identifiers.Next(p)) {
        RECT rc{};
        if (FindPaintedRect(p->pView, m_view.Root(), PaintRect(), &rc)) hull.Add(rc);
    }
    return hull.Get(prc) ? 1 : 0;
}

CQELDocElm* CQELEngine::FindElem(const char* pszId)
{
    const IdBearer* pBearer = m_identifiers.Find(pszId);
    return pBearer ? pBearer->pDoc : nullptr;
}

CQELDocElm* CQELEngine::ElemFromPoint(POINT pt)
{
    const PaintedElm* pElm = m_places.Topmost(pt, m_rcDraw);
    return pElm ? pElm->pDoc : nullptr;
}

const char* CQELEngine::IdFromPoint(POINT pt)
{
    const PaintedElm* pElm = m_places.Topmost(pt, m_rcDraw);
    for (const CQELViewElm* p = pElm ? pElm->pView : nullptr; p; p = p->Parent())
        if (const IdBearer* pBearer = m_identifiers.BearerOf(p)) return pBearer->pszId;
    return nullptr;
}

// How a drawing is turned as a whole: inside of a square, whose middle is a pixel when its side is
// an odd number.
UnitTurn CQELEngine::TurnOfDrawing() const
{
    const int32_t nQuarters = m_nRotation / 90 & 3;
    const bool bLies = nQuarters % 2 != 0;
    const SIZE before = bLies ? SIZE{m_refSize.cy, m_refSize.cx} : m_refSize;
    UnitTurn turn{nQuarters, DrawingRect(before), DrawingRect(m_refSize)};
    const int32_t nOdd = (before.cx > before.cy ? before.cx : before.cy) % 2;
    if (nQuarters == 1 || nQuarters == 2) turn.rcBefore.right -= nOdd;
    if (nQuarters == 2 || nQuarters == 3) turn.rcBefore.bottom -= nOdd;
    return turn;
}

bool CQELEngine::MapElem(const CQELDocElm* pElm, UnitMap* pMap, UnitTurn* pTurn) const
{
    const CQELViewElm* pView = pElm->View();
    if (!m_view.Root() || !IsDrawn(pView, m_view.Root())) return false;
    if (pView->IsShape())
        *pTurn = static_cast<const CQELViewShape*>(pView)->TurnFrom(
            static_cast<const CQELDocShape*>(pElm)->Data().pnWords);
    else if (pView->DrawsChildren())
        *pTurn = TurnOfDrawing();
    return pView->MapUnits(m_rcDraw, pMap);
}

int CQELEngine::ElemToDevice(const CQELDocElm* pElm, POINT* ppt) const
{
    UnitMap map{};
    UnitTurn turn;
    if (!MapElem(pElm, &map, &turn)) return 0;
    *ppt = UnitToDevice(map, turn, *ppt);
    return 1;
}

int CQELEngine::DeviceToElem(const CQELDocElm* pElm, POINT* ppt) const
{
    UnitMap map{};
    UnitTurn turn;
    if (!MapElem(pElm, &map, &turn)) return 0;
    *ppt = DeviceToUnit(map, turn, *ppt);
    return 1;
}
