// How the engine keeps the picture of its drawing right with little drawing: what is dirty, and the
// update of it; the rest of it is in engine/QELEngine.cpp.
#include "base/Rects.h"
#include "base/Refusals.h"
#include "engine/QELEngine.h"
#include "engine/SmoothDraw.h"
#include "render/PaintedPlace.h"
#include "render/UpdateClip.h"
#include "render/UpdatePieces.h"

namespace {

constexpr uint32_t UPDATE_FLAGS = QEL_DRAW_FULL | DRAW_UPDATE;

// What a draw comes to: the element itself, or the meter that it is the face of.
CQELViewElm* DrawnFor(CQELViewElm* pElm)
{
    CQELViewElm* pDrawn = pElm;
    for (CQELViewElm* p = pElm->Parent(); p; p = p->Parent())
        if (!p->DrawsChildren()) pDrawn = p;
    return pDrawn;
}

// An element that holds others and has a mark over them is painted after the last of these, which
// the order of places does not tell.
bool HasMarkedHolder(CLiveLayer& layer)
{
    bool bAny = false;
    layer.ForEach([&](const LiveState& state) {
        bAny |= state.ShownQuality() != QUALITY_GOOD && state.pElm->FirstChild();
    });
    return bAny;
}

} // namespace

// What is dirty, on a tile.
class CDirtyPainter final : public CTilePainter {
public:
    CDirtyPainter(CQELEngine& engine, const CDirtyArea& painted) noexcept
        : m_engine(engine), m_painted(painted)
    {
    }
    void Paint(HDC hdc, const RECT& rcTile, bool) override
    {
        m_engine.PaintDirty(hdc, m_engine.PaintRect(), m_painted, rcTile);
    }

private:
    CQELEngine& m_engine;
    const CDirtyArea& m_painted;
};

RECT CQELEngine::DirtyBox()
{
    CDirtyArea& dirty = m_view.Dirty();
    dirty.Resolve(m_view.Root());
    CRectHull hull;
    for (int n = 0; n < dirty.Count(); ++n) hull.Add(dirty.At(n));
    return hull.Rect();
}

int CQELEngine::GetDirtyRect(RECT* prc)
{
    *prc = m_view.Root() ? DirtyBox() : RECT{};
    return ::IsRectEmpty(prc) ? 0 : 1;
}

int CQELEngine::GetDirtyRegion(HRGN hRegion)
{
    if (!::SetRectRgn(hRegion, 0, 0, 0, 0)) return 0;
    RECT rc{};
    if (!GetDirtyRect(&rc)) return 0;
    CDirtyArea& dirty = m_view.Dirty();
    for (int n = 0; n < dirty.Count(); ++n) {
        const CRegion part(::CreateRectRgnIndirect(&dirty.At(n)));
        if (part.Get() && ::CombineRgn(hRegion, hRegion, part.Get(), RGN_OR) != ERROR) continue;
        ::SetRectRgn(hRegion, rc.left, rc.top, rc.right, rc.bottom); // rather too much
        break;
    }
    return 1;
}

int CQELEngine::Invalidate(const RECT* prc)
{
    if (!m_view.Root()) return 0;
    if (prc)
        m_view.Dirty().Add(*prc);
    else
        m_view.Dirty().AddAll();
    return 1;
}

int CQELEngine::Validate()
{
    if (!m_view.Root()) return 0;
    m_view.Dirty().Clear();
    return 1;
}

int CQELEngine::Update(HDC hdc, HBRUSH hBackground)
{
    RECT rcBox{};
    if (!GetDirtyRect(&rcBox)) return 0;
    CDirtyArea& dirty = m_view.Dirty();
    dirty.SetMissed(false);
    const CUpdateClip clip(hdc, dirty);
    if (!clip.IsOpen()) return 0;
    const uint32_t nRefused = CountRefusals();
    const RECT rcPainted = GrownRect(rcBox, 2);
    if (hBackground) ::FillRect(hdc, &rcPainted, hBackground);
    if (!UpdateSmooth(hdc, clip.Painted(), rcPainted))
        PaintDirty(hdc, m_rcDraw, clip.Painted(), rcPainted);
    const bool bWhole = !dirty.HasMissed() && CountRefusals() == nRefused;
    return bWhole ? clip.TakeBack(&dirty) : 0;
}

// 0 where it has to be painted plainly; without memory before anything is.
int CQELEngine::UpdateSmooth(HDC hdc, const CDirtyArea& painted, const RECT& rcPainted)
{
    RECT rcShown{};
    if (!m_nSmooth || !CanBeSmooth(hdc, rcPainted, &rcShown)) return 0;
    CDirtyPainter painter(*this, painted);
    const CUpdatePieces pieces(painted, rcShown);
    const SIZE picture{WidthOf(m_rcDraw), HeightOf(m_rcDraw)};
    for (int n = 0; n < pieces.Count(); ++n)
        if (!m_bands.Paint(hdc, pieces.At(n), picture, m_nSmooth, &painter)) return 0;
    return 1;
}

void CQELEngine::PaintDirty(HDC hdc, const QelRect& rcQel, const CDirtyArea& painted,
                            const RECT& rcBox)
{
    if (!UpdateByPlace(hdc, rcQel, painted, rcBox)) m_view.Root()->Show(hdc, rcQel, UPDATE_FLAGS);
}

// 0 when it takes a walk of all that there is.
int CQELEngine::UpdateByPlace(HDC hdc, const QelRect& rcQel, const CDirtyArea& painted,
                              const RECT& rcBox)
{
    CPlaces* pPlaces = HasMarkedHolder(m_view.Live()) ? nullptr : Places();
    if (!pPlaces) return 0;
    const CQELViewElm* pLast = nullptr;
    const uint32_t nFound = pPlaces->FindIn(rcBox);
    for (uint32_t n = 0; n < nFound; ++n) {
        const PaintedElm& elm = pPlaces->At(pPlaces->Found(n));
        CQELViewElm* pDrawn = DrawnFor(elm.pView);
        if (pDrawn == pLast || !painted.Meets(elm.rc) || !IsShownNow(pDrawn)) continue;
        pDrawn->Show(hdc, rcQel, UPDATE_FLAGS);
        pLast = pDrawn;
    }
    return 1;
}

// The place of an element as it is now; of a face that of its meter, whose bar goes by it.
void CQELEngine::TouchPlaceOf(const CQELDocElm* pElm)
{
    m_view.Dirty().AddPlaceOf(DrawnFor(pElm->View()), m_view.Root());
}

// A shape in a meter is painted while nothing is in it.
void CQELEngine::TouchFace(const CQELDocElm* pElm)
{
    if (pElm && pElm->View()->IsShape()) TouchPlaceOf(pElm);
}

// What comes into something that has colours for all shapes in it is to look at that.
void CQELEngine::TakeColorsAround(CQELViewElm* pTop)
{
    const CQELViewElm* pAround = pTop->Parent();
    while (pAround && !pAround->IsLive()) pAround = pAround->Parent();
    if (!pAround) return;
    for (CQELViewElm* p = pTop; p; p = p->NextInTree(pTop))
        if (p->IsShape()) p->SetLive(true);
}

void CQELEngine::TouchAll()
{
    CDirtyArea& dirty = m_view.Dirty();
    if (!dirty.IsAll() || m_bDrawn) dirty.AddAllNow(m_view.Root());
    dirty.AddAll();
    m_bDrawn = false;
}
