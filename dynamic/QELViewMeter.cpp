#include "dynamic/QELViewMeter.h"

#include "base/GdiScopes.h"
#include "base/Refusals.h"
#include "base/Shown.h"
#include "base/WrapMath.h"
#include "dynamic/MeterRenderer.h"
#include "dynamic/QELDocMeter.h"
#include "meter/SectorMeter.h"
#include "render/LiveLayer.h"
#include "render/QELViewQEL.h"
#include "render/UnitMap.h"

#include <cstring>
#include <utility>

namespace {

// What a meter adds to the mask of supported parameters.
constexpr uint32_t MASK_ALWAYS = 0x2060;
constexpr uint32_t MASK_USES_SCALE = 0x500;
constexpr uint32_t MASK_SHOWS_SCALE = 0x014;
constexpr uint32_t MASK_USES_PIN = 0x200;
constexpr uint32_t MASK_SHOWS_PIN = 0x002;
constexpr uint32_t MASK_LABELS = 0x800;

// A value by number goes before one by identifier that was set earlier.
void NoteNumbered(CQELViewElm* pElm, uint32_t nPin, double fValue)
{
    LiveState* pState = pElm->Live();
    if (!pState) return;
    if (nPin == 0)
        pState->TakeOtherValue();
    else if (pState->pfPins)
        pState->pfPins[nPin - 1] = fValue;
}

} // namespace

CQELViewMeter::CQELViewMeter(int32_t nRefW, int32_t nRefH, CPool* pPool) noexcept
    : CQELViewParam(nRefW, nRefH, QEL_TYPE_METER, pPool)
{
    for (uint32_t n = 0; n < QEL_SEL_COUNT; ++n) m_nProperties[n] = FindSelector(n)->nDefault;
}

int CQELViewMeter::NewInstance(CQELViewElm** ppOut) const
{
    return NewInstanceAs(*this, ppOut);
}

// Pins, renderer and face region are not copied.
int CQELViewMeter::Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut)
{
    if (!CQELViewElm::Duplicate(pTargetParent, ppOut)) return 0;
    auto* pCopy = static_cast<CQELViewMeter*>(*ppOut);
    pCopy->m_attr = m_attr;
    std::memcpy(pCopy->m_nProperties, m_nProperties, sizeof m_nProperties);
    pCopy->m_fBase = m_fBase;
    pCopy->m_nDraft = m_nDraft;
    pCopy->m_clrDraftFore = m_clrDraftFore;
    pCopy->m_clrDraftBack = m_clrDraftBack;
    pCopy->m_nValue = m_nValue;
    pCopy->m_fValue = m_fValue;
    pCopy->m_bFloats = m_bFloats;
    if (pCopy->m_words.TakeCopy(m_words)) return 1;
    delete pCopy;
    *ppOut = nullptr;
    return 0;
}

MeterSettings CQELViewMeter::Settings() const
{
    return {m_attr.nType,      m_attr.bUseScale != 0, m_attr.bUsePin != 0,
            BlinkPhase() != 0, m_nProperties,         m_nDraft,
            m_clrDraftFore,    m_clrDraftBack};
}

bool CQELViewMeter::UsesFaceRegion() const
{
    return MeterTypeOf(m_attr.nType) && MeterTypeOf(m_attr.nType)->UsesFace();
}

MeterPicture* CQELViewMeter::Updated() const
{
    const LiveState* pState = Live();
    auto* pUpdated = pState ? static_cast<UpdatedMeter*>(pState->pPicture) : nullptr;
    return pUpdated ? &pUpdated->picture : nullptr;
}

// Null without memory for the one of an update.
MeterPicture* CQELViewMeter::PictureFor(uint32_t nFlags)
{
    if (!(nFlags & DRAW_UPDATE)) return &m_drawn;
    LiveState* pState = MakeLive();
    if (!pState) return nullptr;
    if (!pState->pPicture) pState->pPicture = new (std::nothrow) UpdatedMeter;
    return Updated();
}

int CQELViewMeter::Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags)
{
    MeterPicture* pPicture = PictureFor(nFlags);
    if (!pPicture) return Miss();
    if (WantsFullRedraw()) nFlags |= QEL_DRAW_FULL;
    if (nFlags & QEL_DRAW_FULL) DrawFace(hdc, rcQel, nFlags);
    PrepareToDraw(hdc, rcQel, pPicture);
    if (CMeter* pRenderer = pPicture->pRenderer.get()) {
        if (pPicture->nPassedBlink != BlinkPhase()) PassColors(pRenderer, Settings());
        pPicture->nPassedBlink = static_cast<int8_t>(BlinkPhase());
        PassPins(pRenderer);
        pRenderer->SetWideTexts(TextPage() != PAGE_ANSI);
        const LiveState* pState = Live();
        if (nFlags & DRAW_UPDATE) PrepareToUpdate(pRenderer, pState);
        const int32_t nLast = pRenderer->GetLastValue();
        const int32_t nLastReadOut = pRenderer->GetLastReadOut();
        DrawValue(hdc, nFlags, pRenderer, pState);
        if (nFlags & DRAW_MORE) { // the other parts are to find what this one found
            pRenderer->SetLastValue(nLast);
            pRenderer->SetLastReadOut(nLastReadOut);
        }
    }
    pPicture->rcLast = rcQel;
    pPicture->pxLast = rcQel.px;
    pPicture->lastRef = {RefW(), RefH()};
    if ((nFlags & DRAW_UPDATE) && !pPicture->pRenderer && MeterTypeOf(m_attr.nType)) return Miss();
    return 1;
}

// Without memory an update leaves its area dirty, so that the next one paints the meter.
int CQELViewMeter::Miss() const
{
    if (const CQELViewQEL* pDrawing = Drawing()) pDrawing->Dirty()->SetMissed(true);
    return 0;
}

// Region and renderer for what is drawn now.
void CQELViewMeter::PrepareToDraw(HDC hdc, const QelRect& rcQel, MeterPicture* pPicture)
{
    m_bDrawn = true;
    const bool bChanged = !pPicture->IsFor(rcQel, {RefW(), RefH()});
    const bool bHadFace = pPicture->hFace != nullptr;
    const bool bOtherFace = UsesFaceRegion() && HasOtherFace(pPicture);
    const bool bNewFace = UsesFaceRegion() && (bChanged || bOtherFace || !pPicture->hFace ||
                                               !pPicture->HasFaceFor(hdc));
    if (bNewFace) MakeFaceRegion(hdc, rcQel, pPicture);
    // The renderer goes by the region that it was made with: as soon as there is another one, or
    // none any more, it is made anew.
    if (bChanged || !pPicture->pRenderer || (bNewFace && (pPicture->hFace || bHadFace)))
        MakeRenderer(rcQel, pPicture);
}

// The zone of the read-out is that of the value that is shown, and clocks show the drawing's time.
void CQELViewMeter::PrepareToUpdate(CMeter* pRenderer, const LiveState* pState) const
{
    pRenderer->SetLastReadOut(m_bFloats ? TruncToInt(m_fValue) : static_cast<int32_t>(m_nValue));
    if (pState) pRenderer->SetClock(&Drawing()->DrawingLayer()->Clock());
}

void CQELViewMeter::DrawValue(HDC hdc, uint32_t nFlags, CMeter* pRenderer,
                              const LiveState* pState) const
{
    if (pState && pState->IsMoving())
        pRenderer->DrawOnWay(hdc, m_fValue, static_cast<float>(pState->ShownValue()), nFlags);
    else if (m_bFloats)
        pRenderer->Draw(hdc, m_fValue, nFlags);
    else
        pRenderer->Draw(hdc, static_cast<int32_t>(m_nValue), nFlags);
}

// The shapes of the face, and what the renderer paints on them.
bool CQELViewMeter::PaintedRect(const QelRect& rcQel, RECT* prcOut) const
{
    CRectHull hull;
    CRectHull face;
    for (const CQELViewShape* p = FirstFaceShape(this); p; p = NextFaceShape(p, this)) {
        RECT rc{};
        if (p->PaintedFace(rcQel, &rc)) hull.Add(rc);
        if (p->FaceHull(rcQel, &rc)) face.Add(rc);
    }
    if (MeterTypeOf(m_attr.nType)) hull.Add(RendererRect(rcQel, face.Rect()));
    return hull.Get(prcOut);
}

// By the renderer of the last draw when that was made for the same place, else by one that is made
// for the question. Without memory it is anywhere.
RECT CQELViewMeter::RendererRect(const QelRect& rcQel, const RECT& rcFace) const
{
    for (const MeterPicture* p : {static_cast<const MeterPicture*>(Updated()), &m_drawn})
        if (p && p->pRenderer && p->IsFor(rcQel, {RefW(), RefH()}))
            return p->pRenderer->PaintedRect(rcFace);
    const std::unique_ptr<CMeter> pMeter =
        MakeMeterRenderer(MapMeter(m_attr, rcQel, RefW(), RefH()), nullptr, Settings());
    return pMeter ? pMeter->PaintedRect(rcFace) : ALL_IN_REACH;
}

bool CQELViewMeter::IsHit(const QelRect& rcQel, POINT pt) const
{
    return IsOnMeter(m_attr, MapMeter(m_attr, rcQel, RefW(), RefH()), pt);
}

bool CQELViewMeter::MapUnits(const QelRect& rcQel, UnitMap* pOut) const
{
    const MeterLayout layout = LayoutOfMeter(m_attr);
    return !::IsRectEmpty(&layout.rc) &&
           MakeUnitMap(rcQel, RefW(), RefH(), layout.rc, layout.nKeep, pOut);
}

// The face takes the meter's colour, whatever its shapes have in the file.
void CQELViewMeter::DrawFace(HDC hdc, const QelRect& rcQel, uint32_t nFlags)
{
    for (CQELViewShape* p = FirstShapeBelow(this); p; p = NextShapeBelow(p, this)) {
        if (p->FirstChild()) continue;
        p->DressAsFace(m_nProperties[QEL_SEL_FACE_COLOR], m_nProperties[QEL_SEL_FILL_ONLY] != 0);
        if (!p->IsHidden(this)) p->Show(hdc, rcQel, nFlags);
    }
}

// Whether the shapes make another region than when they were last looked at. Values change none of
// them, so that most draws end with the first question.
bool CQELViewMeter::HasOtherFace(MeterPicture* pPicture)
{
    const ChangeStamp changes = Changes();
    if (!changes.IsNone() && pPicture->faceChanges == changes) return false;
    pPicture->faceChanges = changes;
    uint64_t nSum = 0;
    for (CQELViewShape* p = FirstShapeBelow(this); p; p = NextShapeBelow(p, this))
        if (!p->FirstChild()) p->AddRegionSource(&nSum);
    const auto nLow = static_cast<uint32_t>(nSum);
    const auto nHigh = static_cast<uint32_t>(nSum >> 32);
    const bool bLow = std::exchange(pPicture->nFaceSource[0], nLow) != nLow;
    const bool bHigh = std::exchange(pPicture->nFaceSource[1], nHigh) != nHigh;
    return bLow || bHigh;
}

bool MeterPicture::HasFaceFor(HDC hdc) const
{
    RECT rc{};
    return !bPartOfFace || (FindShown(hdc, &rc) && Covers(rcFaceShown, rc));
}

// One that lacks a shape is made anew by the next draw.
void MeterPicture::DoubtFace()
{
    faceChanges = {};
    nFaceSource[0] = ~nFaceSource[0];
}

void MeterPicture::DropFace()
{
    if (hFace) ::DeleteObject(hFace);
    hFace = nullptr;
}

void CQELViewMeter::MakeFaceRegion(HDC hdc, const QelRect& rcQel, MeterPicture* pPicture)
{
    pPicture->DropFace();
    pPicture->bPartOfFace = false;
    const bool bOnSurface = FindShown(hdc, &pPicture->rcFaceShown);
    const uint32_t nRefused = CountRefusals();
    for (CQELViewShape* p = FirstShapeBelow(this); p; p = NextShapeBelow(p, this)) {
        if (p->FirstChild()) continue;
        CRegion shape(bOnSurface
                          ? p->MakeShownRegion(rcQel, pPicture->rcFaceShown, &pPicture->bPartOfFace)
                          : p->MakeRegion(rcQel));
        if (!shape.Get()) continue;
        if (pPicture->hFace)
            ::CombineRgn(pPicture->hFace, pPicture->hFace, shape.Get(), RGN_OR);
        else
            pPicture->hFace = shape.Take();
    }
    if (CountRefusals() != nRefused) pPicture->DoubtFace();
}

// The pointer's place is carried over, so that a partial redraw finds the old one.
void CQELViewMeter::MakeRenderer(const QelRect& rcQel, MeterPicture* pPicture) const
{
    std::unique_ptr<CMeter>& pRenderer = pPicture->pRenderer;
    const int32_t nLast = pRenderer ? pRenderer->GetLastValue() : 0;
    const int32_t nLastReadOut = pRenderer ? pRenderer->GetLastReadOut() : 0;
    pRenderer =
        MakeMeterRenderer(MapMeter(m_attr, rcQel, RefW(), RefH()), pPicture->hFace, Settings());
    if (pRenderer) pRenderer->SetLastValue(nLast);
    if (pRenderer) pRenderer->SetLastReadOut(nLastReadOut);
    pPicture->nPassedBlink = static_cast<int8_t>(BlinkPhase());
}

void CQELViewMeter::PassPins(CMeter* pRenderer) const
{
    if (m_attr.nType != METER_SECTOR || m_nLastPin == 0) return;
    auto* pSectors = static_cast<CSectorMeter*>(pRenderer);
    if (m_bFloats)
        pSectors->SetSectorValues(m_fPins);
    else
        pSectors->SetSectorValues(m_nPins);
}

// Renderers keep both forms of what they were passed.
void CQELViewMeter::ForgetPins()
{
    std::memset(m_nPins, 0, sizeof m_nPins);
    std::memset(m_fPins, 0, sizeof m_fPins);
    m_nLastPin = 0;
    if (m_attr.nType != METER_SECTOR) return;
    for (MeterPicture* p : {&m_drawn, Updated()}) {
        auto* pSectors = p ? static_cast<CSectorMeter*>(p->pRenderer.get()) : nullptr;
        if (!pSectors) continue;
        pSectors->SetSectorValues(m_nPins);
        pSectors->SetSectorValues(m_fPins);
    }
}

// The face region goes as well: the shapes that it was made of may be others by now.
void CQELViewMeter::DropRenderer()
{
    for (MeterPicture* p : {&m_drawn, Updated()}) {
        if (!p) continue;
        p->pRenderer.reset();
        p->DropFace();
    }
}

void CQELViewMeter::PassToRenderer(const SelectorRow& row)
{
    if (!m_bDrawn || !row.pfnPass || !(row.nMeterTypes & MeterTypeBit(m_attr.nType))) return;
    for (MeterPicture* p : {&m_drawn, Updated()})
        if (p && p->pRenderer) row.pfnPass(p->pRenderer.get(), Settings());
}

void CQELViewMeter::PassDraftToRenderer()
{
    Touch();
    for (MeterPicture* p : {&m_drawn, Updated()})
        if (p && p->pRenderer) PassDraft(p->pRenderer.get(), Settings());
}

// Scale and numbers of a bar may stand out of it; a dial keeps all in its layout.
bool CQELViewMeter::MovesNumbers(const SelectorRow& row) const
{
    const MeterTypeRow* pType = MeterTypeOf(m_attr.nType);
    return pType && pType->family == MeterFamily::Bar && row.form != SelectorForm::Color;
}

int CQELViewMeter::SetProperty(uint32_t nSelector, uint32_t nValue)
{
    const SelectorRow* pRow = FindSelector(nSelector);
    if (!pRow || !pRow->pszMeaning || nSelector == QEL_SEL_VALUE) return 0;
    switch (nSelector) {
    case QEL_SEL_TICKS:
        if (nValue == 0) return 0;
        break;
    case QEL_SEL_SHOW_SCALE:
        if (!m_attr.bUseScale) return 0;
        break;
    case QEL_SEL_SHOW_PIN:
        if (!m_attr.bUsePin) return 0;
        break;
    case QEL_SEL_FULL_CIRCLE:
        if (nValue > 1 || nValue == m_nProperties[nSelector]) return 0;
        DropRenderer();
        break;
    case QEL_SEL_BASE_VALUE:
        m_fBase = static_cast<float>(static_cast<int32_t>(nValue));
        break;
    case QEL_SEL_ANGLE_OFFSET:
        if (pRow->nMeterTypes & MeterTypeBit(m_attr.nType)) DropRenderer();
        break;
    default:
        break;
    }
    if (MovesNumbers(*pRow) && m_nProperties[nSelector] != nValue) {
        TouchPlace();
        NoteChange();
    }
    Touch();
    m_nProperties[nSelector] = nValue;
    PassToRenderer(*pRow);
    m_words.NoteHost(nSelector);
    return 1;
}

int CQELViewMeter::GetProperty(uint32_t nSelector, uint32_t* pnValue) const
{
    const SelectorRow* pRow = FindSelector(nSelector);
    if (!pRow || !pRow->pszMeaning || nSelector == QEL_SEL_VALUE) return 0;
    *pnValue = m_nProperties[nSelector];
    return 1;
}

int CQELViewMeter::SetBase(float fValue)
{
    Touch();
    m_fBase = fValue;
    m_nProperties[QEL_SEL_BASE_VALUE] = static_cast<uint32_t>(TruncToInt(fValue));
    PassToRenderer(*FindSelector(QEL_SEL_BASE_VALUE));
    m_words.NoteHost(QEL_SEL_BASE_VALUE);
    return 1;
}

int CQELViewMeter::GetBase(float* pfValue) const
{
    *pfValue = m_fBase;
    return 1;
}

bool CQELViewMeter::KnowsSelector(uint32_t nSelector) const
{
    const SelectorRow* pRow = FindSelector(nSelector);
    return pRow && pRow->pszMeaning;
}

bool CQELViewMeter::HasSign(uint32_t nSelector) const
{
    return FindSelector(nSelector)->form == SelectorForm::Number;
}

int CQELViewMeter::SetValue(uint32_t nPin, uint32_t nValue)
{
    if (nPin > METER_PINS) return 0;
    NoteNumbered(this, nPin, static_cast<int32_t>(nValue));
    Touch();
    m_bFloats = false;
    if (nPin == 0) {
        m_nValue = nValue;
        m_words.NoteHost(QEL_SEL_VALUE);
        return 1;
    }
    m_nPins[nPin - 1] = static_cast<int32_t>(nValue);
    m_nLastPin = nPin;
    return 1;
}

int CQELViewMeter::SetValue(uint32_t nPin, float fValue)
{
    if (nPin > METER_PINS) return 0;
    NoteNumbered(this, nPin, static_cast<double>(fValue));
    Touch();
    m_bFloats = true;
    if (nPin == 0) {
        m_fValue = fValue;
        m_words.NoteHost(QEL_SEL_VALUE);
        return 1;
    }
    m_fPins[nPin - 1] = fValue;
    m_nLastPin = nPin;
    return 1;
}

// The pins are drawn in the form of the value.
void CQELViewMeter::TakeForm()
{
    if (m_attr.nType != METER_CLOCK) m_bFloats = true;
}

void CQELViewMeter::ShowNumber(double fNumber)
{
    m_nValue = static_cast<uint32_t>(TruncToInt(fNumber));
    m_fValue = static_cast<float>(fNumber);
    m_words.NoteHost(QEL_SEL_VALUE);
    TakeForm();
}

double CQELViewMeter::ShownNumber() const
{
    if (const double* pfOwn = m_words.Value()) return *pfOwn;
    return m_bFloats ? static_cast<double>(m_fValue) : static_cast<int32_t>(m_nValue);
}

void CQELViewMeter::ShowPin(uint32_t nPin, double fNumber)
{
    m_nPins[nPin - 1] = TruncToInt(fNumber);
    m_fPins[nPin - 1] = static_cast<float>(fNumber);
    m_nLastPin = nPin;
    TakeForm();
}

double CQELViewMeter::ShownPin(uint32_t nPin) const
{
    return m_bFloats ? static_cast<double>(m_fPins[nPin - 1]) : m_nPins[nPin - 1];
}

bool CQELViewMeter::CanMove() const
{
    return m_attr.nType != METER_SECTOR && m_attr.nType != METER_CLOCK;
}

double CQELViewMeter::FullTurn(double* pfLow) const
{
    const bool bTurns = m_attr.nType == METER_ROUND || m_attr.nType == METER_ROUND_UPGRADE;
    if (!bTurns || m_nProperties[QEL_SEL_FULL_CIRCLE] != 1) return 0;
    *pfLow = static_cast<int32_t>(m_nProperties[QEL_SEL_MIN]);
    return static_cast<int32_t>(m_nProperties[QEL_SEL_MAX]) - *pfLow;
}

// Applied as often as the record is set, since what is refused goes by that.
int CQELViewMeter::TakeSet(const SetTexts& texts)
{
    if (!m_words.Take(texts)) return 0;
    m_words.Apply(*this);
    return 1;
}

// A setting that is refused as the element is has no effect on it.
void CQELViewMeter::ResetValues()
{
    Touch();
    for (uint32_t n = 0; n < QEL_SEL_COUNT; ++n) {
        const uint32_t nDefault = FindSelector(n)->nDefault;
        if (m_nProperties[n] != nDefault && !SetProperty(n, nDefault)) m_nProperties[n] = nDefault;
    }
    m_fBase = 0;
    m_nValue = 0;
    m_fValue = 0;
    ForgetPins();
    m_bFloats = false;
    m_words.ApplyAll(*this);
}

int CQELViewMeter::GetValue(uint32_t nPin, uint32_t* pnValue) const
{
    if (nPin > METER_PINS) return 0;
    *pnValue = nPin == 0 ? m_nValue : static_cast<uint32_t>(m_nPins[nPin - 1]);
    return 1;
}

int CQELViewMeter::GetValue(uint32_t nPin, float* pfValue) const
{
    if (nPin > METER_PINS) return 0;
    *pfValue = nPin == 0 ? m_fValue : m_fPins[nPin - 1];
    return 1;
}

int CQELViewMeter::GetAttrBlockSize(int* pnSize) const
{
    *pnSize = sizeof m_attr;
    return 1;
}

int CQELViewMeter::GetAttrBlock(void* pBlock) const
{
    if (!pBlock) return 0;
    std::memcpy(pBlock, &m_attr, sizeof m_attr);
    return 1;
}

int CQELViewMeter::SetAttrBlock(const void* pBlock)
{
    QELMETERATTR attr;
    if (!TakeMeterBlock(pBlock, &attr)) return 0;
    m_attr = attr;
    m_attr.nSize = sizeof m_attr;
    DropRenderer();
    NoteChange();
    return 1;
}

int CQELViewMeter::SetDraftParam(uint32_t nValue)
{
    if (nValue >= DRAFT_COUNT) return 0;
    m_nDraft = static_cast<int32_t>(nValue);
    PassDraftToRenderer();
    return 1;
}

int CQELViewMeter::SetDraftForeParam(uint32_t nValue)
{
    m_clrDraftFore = nValue;
    PassDraftToRenderer();
    return 1;
}

int CQELViewMeter::SetDraftBackParam(uint32_t nValue)
{
    m_clrDraftBack = nValue;
    PassDraftToRenderer();
    return 1;
}

bool CQELViewMeter::Blinks() const
{
    for (uint32_t n = 0; n < QEL_SEL_COUNT; ++n)
        if (FindSelector(n)->form == SelectorForm::Color && (m_nProperties[n] & QEL_COLOR_BLINK))
            return true;
    return ((m_clrDraftFore | m_clrDraftBack) & QEL_COLOR_BLINK) != 0;
}

uint32_t CQELViewMeter::GetParamMask() const
{
    uint32_t nMask = MASK_ALWAYS;
    if (m_attr.bUseScale) nMask |= MASK_USES_SCALE;
    if (m_attr.bUseScale && m_nProperties[QEL_SEL_SHOW_SCALE]) nMask |= MASK_SHOWS_SCALE;
    if (m_attr.bUsePin) nMask |= MASK_USES_PIN;
    if (m_attr.bUsePin && m_nProperties[QEL_SEL_SHOW_PIN]) nMask |= MASK_SHOWS_PIN;
    if (m_nProperties[QEL_SEL_SHOW_LABELS]) nMask |= MASK_LABELS;
    const MeterTypeRow* pType = MeterTypeOf(m_attr.nType);
    const bool bHasFace = FirstShapeBelow(const_cast<CQELViewMeter*>(this)) != nullptr;
    if (pType && (bHasFace || pType->family != MeterFamily::Bar)) nMask |= pType->nParamMask;
    if (pType && !pType->UsesFace() && m_attr.nFlags == 0) nMask |= QEL_MASK_KEEP;
    if (m_attr.nFlags & QEL_KEEP_ANCHOR_MASK) nMask |= QEL_MASK_KEEP;
    return nMask;
}
