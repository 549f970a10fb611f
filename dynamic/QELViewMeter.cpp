#include "dynamic/QELViewMeter.h"

#include "base/GdiScopes.h"
#include "base/Shown.h"
#include "base/WrapMath.h"
#include "dynamic/MeterRenderer.h"
#include "dynamic/QELDocMeter.h"
#include "meter/SectorMeter.h"
#include "render/LiveLayer.h"
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

CQELViewMeter::~CQELViewMeter()
{
    DropFace();
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

int CQELViewMeter::Draw(HDC hdc, const RECT& rcQel, uint32_t nFlags)
{
    const bool bChanged =
        !::EqualRect(&rcQel, &m_rcLast) || m_lastRef.cx != RefW() || m_lastRef.cy != RefH();
    if (WantsFullRedraw()) nFlags |= QEL_DRAW_FULL;
    if (nFlags & QEL_DRAW_FULL) DrawFace(hdc, rcQel, nFlags);
    const bool bHadFace = m_hFace != nullptr;
    const bool bOtherFace = UsesFaceRegion() && HasOtherFace();
    const bool bNewFace =
        UsesFaceRegion() && (bChanged || bOtherFace || !m_hFace || !HasFaceFor(hdc));
    if (bNewFace) MakeFaceRegion(hdc, rcQel);
    // The renderer goes by the region that it was made with: as soon as there is another one, or
    // none any more, it is made anew.
    if (bChanged || !m_pRenderer || (bNewFace && (m_hFace || bHadFace))) MakeRenderer(rcQel);
    if (m_pRenderer) {
        if (m_nPassedBlink != BlinkPhase()) PassColors(m_pRenderer.get(), Settings());
        m_nPassedBlink = BlinkPhase();
        PassPins();
        DrawValue(hdc, nFlags);
    }
    m_rcLast = rcQel;
    m_lastRef = {RefW(), RefH()};
    return 1;
}

void CQELViewMeter::DrawValue(HDC hdc, uint32_t nFlags)
{
    const LiveState* pState = Live();
    if (pState && pState->IsMoving())
        m_pRenderer->DrawOnWay(hdc, m_fValue, static_cast<float>(pState->ShownValue()), nFlags);
    else if (m_bFloats)
        m_pRenderer->Draw(hdc, m_fValue, nFlags);
    else
        m_pRenderer->Draw(hdc, static_cast<int32_t>(m_nValue), nFlags);
}

// The shapes of the face, and what the renderer paints on them.
bool CQELViewMeter::PaintedRect(const RECT& rcQel, RECT* prcOut) const
{
    CRectHull hull;
    CRectHull face;
    for (const CQELViewShape* p = FirstFaceShape(this); p; p = NextFaceShape(p, this)) {
        RECT rc{};
        if (p->PaintedFace(rcQel, &rc)) hull.Add(rc);
        if (p->FaceHull(rcQel, &rc)) face.Add(rc);
    }
    if (MeterTypeOf(m_attr.nType)) {
        const std::unique_ptr<CMeter> pMeter =
            MakeMeterRenderer(MapMeter(m_attr, rcQel, RefW(), RefH()), nullptr, Settings());
        hull.Add(pMeter ? pMeter->PaintedRect(face.Rect()) : ALL_IN_REACH);
    }
    return hull.Get(prcOut);
}

bool CQELViewMeter::IsHit(const RECT& rcQel, POINT pt) const
{
    return IsOnMeter(m_attr, MapMeter(m_attr, rcQel, RefW(), RefH()), pt);
}

bool CQELViewMeter::MapUnits(const RECT& rcQel, UnitMap* pOut) const
{
    const MeterLayout layout = LayoutOfMeter(m_attr);
    return !::IsRectEmpty(&layout.rc) &&
           MakeUnitMap(rcQel, RefW(), RefH(), layout.rc, layout.nKeep, pOut);
}

// The face takes the meter's colour, whatever its shapes have in the file.
void CQELViewMeter::DrawFace(HDC hdc, const RECT& rcQel, uint32_t nFlags)
{
    for (CQELViewShape* p = FirstShapeBelow(this); p; p = NextShapeBelow(p, this)) {
        if (p->FirstChild()) continue;
        p->DressAsFace(m_nProperties[QEL_SEL_FACE_COLOR], m_nProperties[QEL_SEL_FILL_ONLY] != 0);
        if (!p->IsHidden(this)) p->Show(hdc, rcQel, nFlags);
    }
}

// Whether the shapes make another region than when they were last looked at. Values change none of
// them, so that most draws end with the first question.
bool CQELViewMeter::HasOtherFace()
{
    const ChangeStamp changes = Changes();
    if (!changes.IsNone() && m_faceChanges == changes) return false;
    m_faceChanges = changes;
    uint64_t nSum = 0;
    for (CQELViewShape* p = FirstShapeBelow(this); p; p = NextShapeBelow(p, this))
        if (!p->FirstChild()) p->AddRegionSource(&nSum);
    const auto nLow = static_cast<uint32_t>(nSum);
    const auto nHigh = static_cast<uint32_t>(nSum >> 32);
    const bool bLow = std::exchange(m_nFaceSource[0], nLow) != nLow;
    const bool bHigh = std::exchange(m_nFaceSource[1], nHigh) != nHigh;
    return bLow || bHigh;
}

// Of a large face the region was made for what showed then.
bool CQELViewMeter::HasFaceFor(HDC hdc) const
{
    RECT rc{};
    return !m_bPartOfFace || (FindShown(hdc, &rc) && Covers(m_rcFaceShown, rc));
}

void CQELViewMeter::MakeFaceRegion(HDC hdc, const RECT& rcQel)
{
    DropFace();
    m_bPartOfFace = false;
    const bool bOnSurface = FindShown(hdc, &m_rcFaceShown);
    for (CQELViewShape* p = FirstShapeBelow(this); p; p = NextShapeBelow(p, this)) {
        if (p->FirstChild()) continue;
        CRegion shape(bOnSurface ? p->MakeShownRegion(rcQel, m_rcFaceShown, &m_bPartOfFace)
                                 : p->MakeRegion(rcQel));
        if (!shape.Get()) continue;
        if (m_hFace)
            ::CombineRgn(m_hFace, m_hFace, shape.Get(), RGN_OR);
        else
            m_hFace = shape.Take();
    }
}

// The pointer's place is carried over, so that a partial redraw finds the old one.
void CQELViewMeter::MakeRenderer(const RECT& rcQel)
{
    const int32_t nLast = m_pRenderer ? m_pRenderer->GetLastValue() : 0;
    const int32_t nLastReadOut = m_pRenderer ? m_pRenderer->GetLastReadOut() : 0;
    m_pRenderer = MakeMeterRenderer(MapMeter(m_attr, rcQel, RefW(), RefH()), m_hFace, Settings());
    if (m_pRenderer) m_pRenderer->SetLastValue(nLast);
    if (m_pRenderer) m_pRenderer->SetLastReadOut(nLastReadOut);
    m_nPassedBlink = BlinkPhase();
}

void CQELViewMeter::PassPins()
{
    if (m_attr.nType != METER_SECTOR || m_nLastPin == 0) return;
    auto* pSectors = static_cast<CSectorMeter*>(m_pRenderer.get());
    if (m_bFloats)
        pSectors->SetSectorValues(m_fPins);
    else
        pSectors->SetSectorValues(m_nPins);
}

void CQELViewMeter::DropFace()
{
    if (m_hFace) ::DeleteObject(m_hFace);
    m_hFace = nullptr;
}

// The face region goes as well: the shapes that it was made of may be others by now.
void CQELViewMeter::DropRenderer()
{
    m_pRenderer.reset();
    DropFace();
}

void CQELViewMeter::PassToRenderer(const SelectorRow& row)
{
    if (m_pRenderer && row.pfnPass && (row.nMeterTypes & MeterTypeBit(m_attr.nType)))
        row.pfnPass(m_pRenderer.get(), Settings());
}

void CQELViewMeter::PassDraftToRenderer()
{
    if (m_pRenderer) PassDraft(m_pRenderer.get(), Settings());
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
    if (MovesNumbers(*pRow) && m_nProperties[nSelector] != nValue) NoteChange();
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
    for (uint32_t n = 0; n < QEL_SEL_COUNT; ++n) {
        const uint32_t nDefault = FindSelector(n)->nDefault;
        if (m_nProperties[n] != nDefault && !SetProperty(n, nDefault)) m_nProperties[n] = nDefault;
    }
    m_fBase = 0;
    m_nValue = 0;
    m_fValue = 0;
    std::memset(m_nPins, 0, sizeof m_nPins);
    std::memset(m_fPins, 0, sizeof m_fPins);
    m_nLastPin = 0;
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
