// The exported functions that forward to it are in Exports.cpp.
#include "engine/QELEngine.h"

#include "document/QELDocShape.h"
#include "engine/ElementTypes.h"
#include "render/Mapping.h"
#include "render/QELRotate.h"
#include "render/QELViewShape.h"
#include "render/UnitMap.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr std::size_t NAMED_PATH_SIZE = 256;

static_assert(std::max({sizeof(QELSHAPEATTR), sizeof(QELROOTATTR), sizeof(QELWORDATTR),
                        sizeof(QELSCALEATTR), sizeof(QELDRAWRGNATTR), sizeof(QELMETERATTR)}) <=
                  QEL_MAX_ATTR_SIZE,
              "every record fits");

bool TakesHostValues(const CQELDocElm& elm)
{
    return g_elementTypes.Row(elm.Type())->Is(TRAIT_HOST_VALUES); // it was made by its row
}

// The meter that an element is in; null for none.
const CQELDocElm* MeterAround(const CQELDocElm* pElm)
{
    do pElm = pElm->Parent();
    while (pElm && pElm->Type() != QEL_TYPE_METER);
    return pElm;
}

} // namespace

CQELEngine::CQELEngine(bool bShowOnly) noexcept
    : m_document(g_elementTypes), m_view(g_elementTypes), m_bShowOnly(bShowOnly)
{
}

CQELEngine::~CQELEngine()
{
    Close();
}

int CQELEngine::Open(const char* pszPath)
{
    XmlSource source;
    source.pszPath = pszPath;
    return Open(source);
}

int CQELEngine::Open(const XmlSource& source)
{
    Close();
    CArena spare;
    if (!m_document.Load(source, &spare, m_nTextPage)) return Fail(m_document.LastFailure());
    m_view.SetTextPage(PageInForce());
    m_view.BeginLoad(spare);
    const int nResult = BuildViews() && KeepIdentifiers();
    m_view.EndLoad();
    if (!nResult) {
        Close();
        return Fail({QEL_ERROR_MEMORY});
    }
    m_rcDraw.right = WrapAdd(m_rcDraw.left, m_refSize.cx);
    m_rcDraw.bottom = WrapAdd(m_rcDraw.top, m_refSize.cy);
    m_view.Dirty().SetPlace(PaintRect());
    m_view.SetClock(ClockTimes::Now());
    m_bDrawn = false;
    if (m_bShowOnly) m_document.Close(); // from here on the drawing is only shown
    return 1;
}

int CQELEngine::New(const TextEncoding& encoding)
{
    if (!Open(nullptr)) return 0;
    m_document.SetEncoding(encoding);
    m_view.SetTextPage(PageInForce());
    const SIZE size = m_refSize;
    m_document.GetRoot()->SetRefSize(size);
    return m_view.SetRefSize(size);
}

int CQELEngine::OpenByName(const char* pszName)
{
    char szPath[NAMED_PATH_SIZE];
    const int nLen = std::snprintf(szPath, sizeof szPath, ".\\QEL\\%s.qel", pszName);
    // A length below zero, for what cannot be written, is a large one here.
    if (static_cast<std::size_t>(nLen) >= sizeof szPath) return Fail({QEL_ERROR_PATH});
    return Open(szPath);
}

int CQELEngine::Save(void* pBuffer, uint32_t* pnSize)
{
    const uint64_t nWhole = m_document.Measure();
    if (!nWhole) return Fail(m_document.LastFailure());
    if (nWhole > UINT32_MAX) return Fail({QEL_ERROR_MEMORY});
    const uint32_t nRoom = *pnSize;
    *pnSize = static_cast<uint32_t>(nWhole);
    if (!pBuffer) return 1;
    if (nRoom < nWhole) return Fail({QEL_ERROR_BUFFER});
    return Saved(m_document.Save(static_cast<char*>(pBuffer), *pnSize));
}

int CQELEngine::Fail(const Failure& failure)
{
    m_failure = failure;
    return 0;
}

int CQELEngine::Saved(int nResult)
{
    if (!nResult) return Fail(m_document.LastFailure());
    m_bModified = false;
    return nResult;
}

int CQELEngine::Edited(int nResult)
{
    if (nResult) m_bModified = true;
    return nResult;
}

int CQELEngine::Close()
{
    m_nPerDrawing = 0;
    m_nRotation = 0;
    m_bModified = false;
    m_refSize = {DEFAULT_REF_SIZE, DEFAULT_REF_SIZE};
    m_identifiers.Clear();
    m_places.Forget();
    m_view.Clear();
    return m_document.Close();
}

// Of a document that is dropped.
int CQELEngine::KeepIdentifiers()
{
    return m_bShowOnly ? m_identifiers.Keep(m_document.GetRoot()) : 1;
}

int CQELEngine::BuildViews()
{
    CQELDocQEL* pRoot = m_document.GetRoot();
    m_refSize = pRoot->RefSize();
    m_view.SetRefSize(m_refSize);
    return MakeViews(pRoot, nullptr, nullptr);
}

// The view elements of a document element and of all that is in it, each after its parent's. They
// are registered when all of them are there: a registration can displace another's, which nothing
// could undo.
int CQELEngine::MakeViews(CQELDocElm* pTop, CQELViewElm* pParent, CQELViewElm* pAfter)
{
    if (!MakeView(pTop, pParent, pAfter)) return 0;
    bool bAnyDynamic = TakesHostValues(*pTop);
    for (CQELDocElm* pElm = pTop->NextInTree(pTop); pElm; pElm = pElm->NextInTree(pTop)) {
        if (!MakeView(pElm, pElm->Parent()->View(), nullptr)) return 0;
        bAnyDynamic |= TakesHostValues(*pElm);
    }
    if (!bAnyDynamic || !IsInPicture(pTop)) return 1; // it takes no host values
    if (!m_view.ReservePlaces(pTop->View())) return 0;
    RegisterAll(pTop->View());
    return 1;
}

int CQELEngine::MakeView(CQELDocElm* pElm, CQELViewElm* pParent, CQELViewElm* pAfter)
{
    CQELViewElm* pView = nullptr;
    if (!m_view.CreateElement(pParent, pAfter, pElm->Type(), &pView)) return 0;
    pElm->SetView(pView);
    return LoadView(pElm);
}

// Loads an element's record into its view element. A view that refuses the record keeps what it
// had. 0 without memory.
int CQELEngine::LoadView(CQELDocElm* pElm)
{
    CQELViewElm* pView = pElm->View();
    if (pView->IsShape()) {
        auto* pShape = static_cast<CQELViewShape*>(pView);
        return pShape->TakeData(static_cast<CQELDocShape*>(pElm)->Data());
    }
    alignas(8) unsigned char block[QEL_MAX_ATTR_SIZE];
    pElm->GetAttr(block); // every class that is made has one
    pView->SetAttrBlock(block);
    if (pElm == m_document.GetRoot()) {
        m_view.Root()->SetName(pElm->Id());
        TakeRefSize();
    }
    CHostDriven* pHost = pView->HostSide();
    return pHost ? pHost->TakeSet(pElm->Set()) : 1;
}

// The same for one that was changed. It is registered anew, since its id may be another.
int CQELEngine::ReloadView(CQELDocElm* pElm)
{
    if (!LoadView(pElm)) return 0;
    if (IsInPicture(pElm)) m_view.Register(pElm->View());
    return 1;
}

bool CQELEngine::IsInPicture(const CQELDocElm* pElm) const
{
    return pElm->IsInside(m_document.GetRoot());
}

void CQELEngine::TakeRefSize()
{
    m_refSize = m_document.GetRoot()->RefSize();
    m_view.SetRefSize(m_refSize);
}

CQELDocElm* CQELEngine::CreateElem(int32_t nType, CQELDocElm* pParent, CQELDocElm* pAfter)
{
    ForgetPlaces();
    if (nType == QEL_TYPE_ROOT) return pParent || pAfter ? nullptr : ReplaceRoot();
    if (!pParent) pParent = m_document.GetRoot();
    if (!pParent) return nullptr;
    TouchFace(pParent);
    CQELDocElm* pElm = m_document.CreateElement(pParent, pAfter, nType);
    if (!pElm) return nullptr;
    if (Edited(MakeViews(pElm, pParent->View(), pAfter ? pAfter->View() : nullptr))) {
        TakeColorsAround(pElm->View());
        TouchPlaceOf(pElm);
        return pElm;
    }
    GiveUp(pElm);
    return nullptr;
}

// Deletes an element whose view elements could not be made. They were not registered.
void CQELEngine::GiveUp(CQELDocElm* pElm)
{
    if (CQELViewElm* pView = pElm->View()) m_view.DeleteElement(pView);
    m_document.DeleteElement(pElm);
}

// Both halves of the new root are made before either old one is given up.
CQELDocElm* CQELEngine::ReplaceRoot()
{
    CQELDocQEL* pRoot = m_document.NewRoot();
    if (!pRoot) return nullptr;
    CQELViewElm* pView = nullptr;
    if (!m_view.CreateElement(nullptr, nullptr, QEL_TYPE_ROOT, &pView)) {
        delete pRoot;
        return nullptr;
    }
    m_document.SetRoot(pRoot);
    pRoot->SetView(pView);
    m_nRotation = 0;
    LoadView(pRoot);
    m_bModified = true;
    return pRoot;
}

int CQELEngine::DeleteElem(CQELDocElm* pElm)
{
    ForgetPlaces();
    const CQELDocElm* pParent = pElm->Parent();
    CQELViewElm* pView = pElm->View();
    TouchPlaceOf(pElm);
    if (IsInPicture(pElm)) UnregisterAll(pView); // else it is not registered, and slots are others'
    m_view.DeleteElement(pView);
    TouchFace(pParent);
    return Edited(m_document.DeleteElement(pElm));
}

int CQELEngine::MoveElem(CQELDocElm* pElm, CQELDocElm* pParent, CQELDocElm* pAfter)
{
    ForgetPlaces();
    const bool bWasInPicture = IsInPicture(pElm);
    const CQELDocElm* pMeter = MeterAround(pElm);
    const CQELDocElm* pOldParent = pElm->Parent();
    CQELViewElm* pView = pElm->View();
    const bool bComesIn = !bWasInPicture && pParent && IsInPicture(pParent);
    if (bComesIn && !m_view.ReservePlaces(pView)) return 0;
    if (!m_document.MoveElement(pElm, pParent, pAfter)) {
        if (bComesIn) m_view.GiveUpPlaces(pView);
        return 0;
    }
    m_bModified = true;
    TouchPlaceOf(pElm); // the view's place is the old one still
    TouchFace(pParent);
    const bool bIsInPicture = IsInPicture(pElm);
    if (bWasInPicture && !bIsInPicture) UnregisterAll(pView);
    m_view.MoveElement(pView, pParent ? pParent->View() : nullptr,
                       pAfter ? pAfter->View() : nullptr);
    if (bIsInPicture && !bWasInPicture) RegisterAll(pView);
    if (pMeter && MeterAround(pElm) != pMeter) GiveFillsBack(pElm);
    TakeColorsAround(pView);
    TouchPlaceOf(pElm);
    TouchFace(pOldParent);
    return 1;
}

// What was the face of a meter, and is in it no more, is drawn as its record says. The geometry
// stays: that of the picture may have been turned.
void CQELEngine::GiveFillsBack(CQELDocElm* pTop)
{
    const CQELDocElm* pMeter = MeterAround(pTop);
    for (CQELDocElm* pElm = pTop; pElm; pElm = pElm->NextInTree(pTop)) {
        if (!pElm->View()->IsShape() || MeterAround(pElm) != pMeter) continue;
        const ShapeStyle& style = *static_cast<const CQELDocShape*>(pElm)->Data().pStyle;
        static_cast<CQELViewShape*>(pElm->View())->GiveFillBack(style.nDraft, style.clrB);
    }
}

CQELDocElm* CQELEngine::CopyElem(CQELDocElm* pElm)
{
    ForgetPlaces();
    CQELDocElm* pCopy = m_document.CopyElement(pElm);
    if (!pCopy) return nullptr;
    if (Edited(MakeViews(pCopy, pElm->Parent()->View(), pElm->View()))) {
        TakeColorsAround(pCopy->View());
        TouchPlaceOf(pCopy);
        return pCopy;
    }
    GiveUp(pCopy);
    return nullptr;
}

int CQELEngine::SetElemId(CQELDocElm* pElm, const char* pszId)
{
    ForgetPlaces();
    if (!CQELDocument::SetElementId(pElm, pszId)) return 0;
    if (pElm == m_document.GetRoot()) m_view.Root()->SetName(pElm->Id());
    return Edited(1);
}

int CQELEngine::GetElemAttr(const CQELDocElm* pElm, void* pBuffer, int* pnSize)
{
    if (!pBuffer && !pnSize) return 0;
    int nSize = 0;
    pElm->GetAttrSize(&nSize);
    if (pBuffer) pElm->GetAttr(pBuffer);
    if (pnSize) *pnSize = nSize;
    return 1;
}

int CQELEngine::SetElemAttr(CQELDocElm* pElm, const void* pBuffer, int nSize)
{
    if (pElm == m_document.GetRoot()) TouchAll();
    TouchPlaceOf(pElm);
    const int nResult = TakeElemAttr(pElm, pBuffer, nSize);
    TouchPlaceOf(pElm);
    return nResult;
}

int CQELEngine::TakeElemAttr(CQELDocElm* pElm, const void* pBuffer, int nSize)
{
    int nOwnSize = 0;
    pElm->GetAttrSize(&nOwnSize);
    if (nSize < nOwnSize) return 0;
    const CQELDocQEL* pRoot = m_document.GetRoot();
    const SIZE before = pRoot ? pRoot->RefSize() : SIZE{};
    const SIZE shown = m_refSize;
    alignas(8) unsigned char old[QEL_MAX_ATTR_SIZE];
    pElm->GetAttr(old);
    if (!pElm->SetAttr(pBuffer)) return 0;
    if (!ReloadView(pElm)) {
        // What the old record takes was just given back, so it needs no memory.
        pElm->SetAttr(old);
        return 0;
    }
    if (pElm == pRoot && before.cx == pRoot->RefSize().cx && before.cy == pRoot->RefSize().cy) {
        m_refSize = shown; // no new size: a turned drawing stays as it is shown
        m_view.SetRefSize(shown);
    }
    return Edited(1);
}

// A group that stops at one child has moved the children before it, so the views are refreshed
// whatever the result.
int CQELEngine::SetElemRect(CQELDocElm* pElm, const RECT& rc)
{
    const int nResult = pElm->SetRect(rc);
    TouchPlaceOf(pElm); // the view's place is the old one still
    for (CQELDocElm* p = pElm; p; p = p->NextInTree(pElm))
        if (p != m_document.GetRoot()) ReloadView(p); // the root has no place of its own
    if (pElm->FirstChild()) m_bModified = true;       // some of them may have moved
    TouchPlaceOf(pElm);
    return Edited(nResult);
}

int CQELEngine::GetRefSize(SIZE* pSize) const
{
    *pSize = m_refSize;
    return 1;
}

int CQELEngine::SetRefSize(SIZE size)
{
    if (size.cx == m_refSize.cx && size.cy == m_refSize.cy) return 1;
    CQELDocQEL* pRoot = m_document.GetRoot();
    if (!pRoot) return 0;
    TouchAll();
    pRoot->SetRefSize(size);
    m_view.SetRefSize(size);
    m_refSize = size;
    return Edited(1);
}

int CQELEngine::GetDrawRect(RECT* prc) const
{
    *prc = m_rcDraw;
    return 1;
}

int CQELEngine::SetDrawRect(const RECT& rc)
{
    if (::EqualRect(&m_rcDraw, &rc)) return 1;
    TouchAll();
    m_rcDraw = {rc, m_rcDraw.px};
    m_view.Dirty().SetPlace(PaintRect());
    return 1;
}

int CQELEngine::SetPixelScale(uint32_t nPercent)
{
    if (nPercent == PixelScale()) return 1;
    TouchAll();
    m_rcDraw.px = CPixelScale(nPercent);
    m_view.Dirty().SetPlace(PaintRect());
    if (CQELViewElm* pRoot = m_view.Root()) pRoot->PlaceChanged();
    return 1;
}

// The update rectangle only gates the call; the host's own clip decides what is touched.
int CQELEngine::Draw(HDC hdc, const RECT& rcUpdate, uint32_t nFlags)
{
    RECT rcMeet{};
    if (!::IntersectRect(&rcMeet, &rcUpdate, &m_rcDraw)) return 0;
    m_bDrawn = true;
    nFlags &= ~DRAW_INTERNAL;
    if (m_nSmooth && m_view.DrawsFully(nFlags) && DrawSmooth(hdc, nFlags)) return 1;
    return m_view.Draw(nullptr, hdc, m_rcDraw, nFlags);
}

// The drawing is turned inside a square of its longer side, then moved so that the turned drawing
// begins at 0,0 again.
int CQELEngine::Rotate(int32_t nAngle)
{
    const int32_t nTurn = QuarterTurn(nAngle);
    const int32_t nBy = nTurn - m_nRotation;
    SIZE size = m_refSize;
    TouchAll();
    if (nBy % 180 != 0) size = {m_refSize.cy, m_refSize.cx};
    const int32_t nSide = size.cx > size.cy ? size.cx : size.cy;
    m_view.SetRefSize({nSide, nSide});
    if (!m_view.Rotate(nullptr, {nSide / 2, nSide / 2}, nTurn)) return 0;
    const bool bHalfTurn = nBy == 180 || nBy == -180;
    if (nBy == 90 || nBy == -270 || bHalfTurn) m_view.MoveY(nullptr, WrapSub(size.cy, nSide));
    if (nBy == -90 || nBy == 270 || bHalfTurn) m_view.MoveX(nullptr, WrapSub(size.cx, nSide));
    m_refSize = size;
    m_view.SetRefSize(size);
    m_nRotation = nTurn;
    return 1;
}

int CQELEngine::SetTextPage(uint32_t nPage)
{
    if (nPage == m_nTextPage) return 1;
    TouchAll();
    m_nTextPage = nPage;
    m_view.SetTextPage(PageInForce());
    return 1;
}

int CQELEngine::SetBlinkState(int32_t nState)
{
    return m_view.Root() ? m_view.SetBlink(nullptr, nState) : 0;
}

void CQELEngine::RegisterAll(CQELViewElm* pTop)
{
    for (CQELViewElm* pElm = pTop; pElm; pElm = pElm->NextInTree(pTop)) m_view.Register(pElm);
}

void CQELEngine::UnregisterAll(CQELViewElm* pTop)
{
    for (CQELViewElm* pElm = pTop; pElm; pElm = pElm->NextInTree(pTop)) m_view.Unregister(pElm);
}
