#include "dynamic/QELViewScale.h"

#include "base/DrawLimits.h"
#include "base/GdiScopes.h"
#include "base/PixelPen.h"
#include "brush/ShownDraft.h"
#include "dynamic/QELDocScale.h"
#include "dynamic/Selectors.h"
#include "meter/DialGeometry.h"
#include "render/LiveLayer.h"
#include "render/Mapping.h"
#include "render/QELRotate.h"
#include "render/UnitMap.h"

#include <cstring>

namespace {

constexpr uint32_t MAJOR_EVERY = 5;

// What a scale adds to the mask of supported parameters.
constexpr uint32_t MASK_ALWAYS = 0x60;
constexpr uint32_t MASK_MARKS = 0x14;
constexpr uint32_t MASK_PIN = 0x2;
constexpr uint32_t MASK_STRAIGHT = 0x80;
constexpr uint32_t MASK_ROUND = 0x22008;
constexpr uint32_t MASK_ROUND_FILL = 0x80;

void Line(HDC hdc, POINT pt1, POINT pt2, CPixelScale px)
{
    const POINT pts[] = {pt1, pt2};
    DrawPixelLines(hdc, pts, 2, 1, px);
}

void UprightLine(HDC hdc, POINT pt1, POINT pt2, CPixelScale px)
{
    Line(hdc, {px.Sampled(pt1.x), px.Sampled(pt1.y)}, {px.Sampled(pt2.x), px.Sampled(pt2.y)}, px);
}

RECT DiscBox(POINT pt, int32_t nRadius, CPixelScale px)
{
    const int32_t nPixel = px(1);
    return {WrapSub(pt.x, nRadius), WrapSub(pt.y, nRadius), WrapAdd(WrapAdd(pt.x, nRadius), nPixel),
            WrapAdd(WrapAdd(pt.y, nRadius), nPixel)};
}

int DirectionOf(bool bClockwise)
{
    return bClockwise ? AD_CLOCKWISE : AD_COUNTERCLOCKWISE;
}

// One point for both ends would come out as a whole circle.
void ArcLine(HDC hdc, const RECT& rc, const RoundScale& round, int32_t nFrom, int32_t nTo,
             CPixelScale px)
{
    const POINT pt1 = ScalePoint(round.ptCentre, round.nCircle, nFrom);
    const POINT pt2 = ScalePoint(round.ptCentre, round.nCircle, nTo);
    const bool bWhole = static_cast<float>(WrapAbs(WrapSub(nTo, nFrom))) >= FULL_SWEEP;
    if (!bWhole && pt1.x == pt2.x && pt1.y == pt2.y) return;
    const CArcDirectionScope direction(hdc, DirectionOf(nTo < nFrom));
    const RECT box = StrokedBox(rc, 1, px);
    const POINT ptFrom = StrokedPoint(pt1, 1, px);
    const POINT ptTo = StrokedPoint(pt2, 1, px);
    DrawPixelArc(hdc, box, ptFrom, ptTo, px);
}

} // namespace

int CQELViewScale::Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut)
{
    if (!CQELViewElm::Duplicate(pTargetParent, ppOut)) return 0;
    auto* pCopy = static_cast<CQELViewScale*>(*ppOut);
    pCopy->m_attr = m_attr;
    pCopy->m_clrPin = m_clrPin;
    pCopy->m_clrMark = m_clrMark;
    pCopy->m_nDivisions = m_nDivisions;
    pCopy->m_nStartCode = m_nStartCode;
    pCopy->m_value = m_value;
    pCopy->m_nDraft = m_nDraft;
    pCopy->m_clrFore = m_clrFore;
    pCopy->m_clrBack = m_clrBack;
    pCopy->m_nOffset = m_nOffset;
    if (pCopy->m_words.TakeCopy(m_words)) return 1;
    delete pCopy;
    *ppOut = nullptr;
    return 0;
}

bool CQELViewScale::IsRound() const
{
    return m_attr.nType >= SCALE_ROUND;
}

bool CQELViewScale::FillsRound() const
{
    return (m_attr.nStyle & QEL_STYLE_FILL_MASK) == 1;
}

int32_t CQELViewScale::Divisions() const
{
    return HeldDivisions(m_nDivisions, m_attr.nMin, m_attr.nMax);
}

ScaleValue CQELViewScale::Value() const
{
    ScaleValue value = m_value;
    if (const LiveState* pState = Live(); pState && pState->IsMoving())
        value.fValue = static_cast<float>(pState->ShownValue());
    return RepairedRange(value, Divisions());
}

int CQELViewScale::Draw(HDC hdc, const QelRect& rcQel, uint32_t)
{
    RECT rc{};
    if (!MapLayout(rcQel, &rc)) return 0;
    if (IsRound())
        DrawRound(hdc, rc, rcQel.px);
    else
        DrawStraight(hdc, rc, rcQel.px);
    return 1;
}

RECT CQELViewScale::Layout() const
{
    const LONG* n = m_attr.nGeometry;
    if (!IsRound()) return {n[0], n[1], n[2], n[3]};
    return {WrapSub(n[0], n[2]), WrapSub(n[1], n[2]), WrapAdd(n[0], n[2]), WrapAdd(n[1], n[2])};
}

bool CQELViewScale::MapLayout(const QelRect& rcQel, RECT* prcOut) const
{
    return MapRect(rcQel, RefW(), RefH(), Layout(), prcOut, QEL_KEEP_NONE) &&
           !::IsRectEmpty(prcOut);
}

// Ticks and pointer end on the pixels behind the rectangle's sides. Of a round scale each of the
// three radii may be the largest.
bool CQELViewScale::PaintedRect(const QelRect& rcQel, RECT* prcOut) const
{
    RECT rc{};
    if (!MapLayout(rcQel, &rc)) return false;
    if (!IsRound()) {
        *prcOut = GrownRect(rc, rcQel.px(1));
        return true;
    }
    const RoundScale round = MakeRoundScale(m_attr.nGeometry, rc);
    if (round.nTick < 1) return false;
    int32_t nRadius = round.nTick;
    for (const int32_t n : {round.nCircle, round.nHub})
        if (n < -nRadius || n > nRadius) nRadius = WrapAbs(n);
    const POINT& pt = round.ptCentre;
    const int32_t nPixel = rcQel.px(1);
    *prcOut = GrownRect({pt.x, pt.y, WrapAdd(pt.x, nPixel), WrapAdd(pt.y, nPixel)},
                        WrapAdd(nRadius, nPixel));
    return true;
}

bool CQELViewScale::IsHit(const QelRect& rcQel, POINT pt) const
{
    RECT rc{};
    if (!MapLayout(rcQel, &rc)) return false;
    if (!IsRound()) return ::PtInRect(&rc, pt);
    const RoundScale round = MakeRoundScale(m_attr.nGeometry, rc);
    return round.nTick >= 1 && IsInCircle(round.ptCentre, round.nTick, pt);
}

bool CQELViewScale::MapUnits(const QelRect& rcQel, UnitMap* pOut) const
{
    const RECT rc = Layout();
    return !::IsRectEmpty(&rc) && MakeUnitMap(rcQel, RefW(), RefH(), rc, QEL_KEEP_NONE, pOut);
}

// What stands upright stands on whole pixels, however many samples they have.
void CQELViewScale::DrawStraight(HDC hdc, const RECT& rcDevice, CPixelScale px) const
{
    const RECT rc{px.PixelOf(rcDevice.left), px.PixelOf(rcDevice.top), px.PixelOf(rcDevice.right),
                  px.PixelOf(rcDevice.bottom)};
    const int32_t nWidth = WidthOf(rc);
    const int32_t nHeight = HeightOf(rc);
    const int32_t nAlong = ValueLength(Value(), IsVertical() ? nHeight : nWidth);
    const int32_t nX = WrapAdd(rc.left, nAlong);
    const int32_t nY = WrapSub(rc.bottom, nAlong);
    if (!m_attr.bHide) DrawStraightMarks(hdc, rc, px);
    {
        CShownDraft draft(m_nDraft, px);
        const CBkColorScope back(hdc, BlinkColor(m_clrBack));
        const CTextColorScope text(hdc, BlinkColor(m_clrFore));
        const QelRect rcPart(IsVertical() ? RECT{rc.left, nY, rc.right, rc.bottom}
                                          : RECT{rc.left, rc.top, nX, rc.bottom},
                             px);
        const RECT rcFill = rcPart.OnDevice();
        const HBRUSH hBrush =
            draft.Brush(hdc, rcDevice, rcFill, BlinkColor(m_clrFore), BlinkColor(m_clrBack));
        if (hBrush && !::IsRectEmpty(&rcFill)) ::FillRect(hdc, &rcFill, hBrush);
    }
    if (!m_attr.bPin) return;
    const CPixelPenScope pen(hdc, 1, BlinkColor(m_clrPin), px);
    switch (m_attr.nType) {
    case 0:
        return UprightLine(hdc, {WrapAdd(rc.left, nWidth / 2), nY}, {rc.right, nY}, px);
    case 1:
        return UprightLine(hdc, {rc.left, nY}, {WrapSub(rc.right, nWidth / 2), nY}, px);
    case 2:
        return UprightLine(hdc, {nX, WrapAdd(rc.top, nHeight / 2)}, {nX, rc.bottom}, px);
    default:
        return UprightLine(hdc, {nX, rc.top}, {nX, WrapSub(rc.bottom, nHeight / 2)}, px);
    }
}

// A base line at a quarter of the extent across, and ticks away from it.
void CQELViewScale::DrawStraightMarks(HDC hdc, const RECT& rc, CPixelScale px) const
{
    const int32_t nAcross = WrapAbs(IsVertical() ? WidthOf(rc) : HeightOf(rc));
    const int32_t nCount = DrawnDivisions(Divisions());
    const CPixelPenScope pen(hdc, 1, BlinkColor(m_clrMark), px);
    const CSelectScope brush(hdc, ::GetStockObject(NULL_BRUSH));
    const bool bBackwards = m_attr.nType == 0 || m_attr.nType == 2; // ticks to the left, or above
    const int32_t nQuarter = nAcross / 4;
    const int32_t nLow = IsVertical() ? rc.left : rc.top;
    const int32_t nHigh = IsVertical() ? rc.right : rc.bottom;
    const int32_t nBase = bBackwards ? WrapSub(nHigh, nQuarter) : WrapAdd(nLow, nQuarter);
    const auto at = [&](int32_t nPlace, int32_t nAlong) {
        return IsVertical() ? POINT{nPlace, WrapSub(rc.bottom, nAlong)}
                            : POINT{WrapAdd(rc.left, nAlong), nPlace};
    };
    const int32_t nLength = IsVertical() ? HeightOf(rc) : WidthOf(rc);
    if (IsVertical())
        UprightLine(hdc, {nBase, rc.top}, {nBase, rc.bottom}, px);
    else
        UprightLine(hdc, {rc.left, nBase}, {rc.right, nBase}, px);
    if (nCount < 1) return;
    for (int32_t i = 0; i <= nCount; ++i) {
        const auto nAlong = static_cast<int32_t>(static_cast<int64_t>(nLength) * i / nCount);
        const bool bMajor = static_cast<uint32_t>(i) % MAJOR_EVERY == 0;
        const int32_t nTick = nAcross / 2 + (bMajor ? nQuarter : 0);
        if (bBackwards)
            UprightLine(hdc, at(WrapSub(nBase, nTick), nAlong), at(nBase, nAlong), px);
        else
            UprightLine(hdc, at(nBase, nAlong), at(WrapAdd(nBase, nTick), nAlong), px);
    }
}

ScaleSweep CQELViewScale::SweepOf() const
{
    const LONG* n = m_attr.nGeometry;
    return m_attr.nType == SCALE_ROUND ? RoundSweep(Value(), m_nStartCode, m_nOffset)
                                       : ArcSweep(Value(), m_nStartCode, n[5], n[6]);
}

void CQELViewScale::DrawRound(HDC hdc, const RECT& rc, CPixelScale px) const
{
    const RoundScale round = MakeRoundScale(m_attr.nGeometry, rc);
    if (round.nTick < 1) return;
    const ScaleSweep sweep = SweepOf();
    if (!m_attr.bHide) DrawRoundMarks(hdc, round, px);
    if (FillsRound()) FillSweep(hdc, round, sweep, px);
    if (!m_attr.bPin) return;
    const CPixelPenScope pen(hdc, 1, BlinkColor(m_clrPin), px);
    Line(hdc, ScalePoint(round.ptCentre, round.nHub, sweep.nTo),
         ScalePoint(round.ptCentre, round.nCircle, sweep.nTo), px);
}

// The round type has a circle and one tick less than the arc, whose last tick has a place of its
// own.
void CQELViewScale::DrawRoundMarks(HDC hdc, const RoundScale& round, CPixelScale px) const
{
    const LONG* n = m_attr.nGeometry;
    const bool bArc = m_attr.nType == SCALE_ARC;
    const int32_t nCount = DrawnDivisions(Divisions());
    const CPixelPenScope pen(hdc, 1, BlinkColor(m_clrMark), px);
    const CSelectScope brush(hdc, ::GetStockObject(NULL_BRUSH));
    const POINT pt = round.ptCentre;
    const RECT rc{WrapSub(pt.x, round.nCircle), WrapSub(pt.y, round.nCircle),
                  WrapAdd(pt.x, round.nCircle), WrapAdd(pt.y, round.nCircle)};
    const bool bDrawable = IsDrawableCurve(rc, px); // else there are the ticks alone
    if (bDrawable && !bArc) {
        const RECT box = StrokedBox(rc, 1, px);
        DrawPixelEllipse(hdc, box, px);
    } else if (bDrawable && n[5] != n[6]) {
        ArcLine(hdc, rc, round, n[5], n[6], px);
    }
    if (nCount < 1) return;
    const int32_t nFirst = bArc ? n[5] : StartOf(m_nStartCode).nAngle + m_nOffset;
    const int32_t nSpan = bArc ? WrapSub(n[6], n[5]) : 360;
    for (int32_t i = 0; i < nCount + (bArc ? 1 : 0); ++i) {
        const int32_t nAngle =
            WrapAdd(nFirst, static_cast<int32_t>(static_cast<int64_t>(nSpan) * i / nCount));
        Line(hdc, ScalePoint(pt, round.nCircle, nAngle), ScalePoint(pt, round.nTick, nAngle), px);
    }
}

void CQELViewScale::FillSweep(HDC hdc, const RoundScale& round, const ScaleSweep& sweep,
                              CPixelScale px) const
{
    CShownDraft draft(m_nDraft, px); // owns the brush, so it stands first
    const CSelectScope pen(hdc, ::GetStockObject(NULL_PEN));
    const CArcDirectionScope direction(hdc, DirectionOf(sweep.bClockwise));
    const CBkColorScope back(hdc, BlinkColor(m_clrBack));
    const CTextColorScope text(hdc, BlinkColor(m_clrFore));
    const RECT rc = DiscBox(round.ptCentre, round.nCircle, px);
    const POINT pt1 = ScalePoint(round.ptCentre, round.nCircle, sweep.nFrom);
    const POINT pt2 = ScalePoint(round.ptCentre, round.nCircle, sweep.nTo);
    // One point for both ends would come out as a full disc.
    const bool bOnePoint = pt1.x == pt2.x && pt1.y == pt2.y;
    if (IsDrawableCurve(rc, px) && sweep.nFrom != sweep.nTo && (!bOnePoint || sweep.IsFullTurn())) {
        const HBRUSH hBrush =
            draft.Brush(hdc, rc, rc, BlinkColor(m_clrFore), BlinkColor(m_clrBack));
        const CSelectScope brush(hdc, hBrush);
        if (hBrush) ::Pie(hdc, rc.left, rc.top, rc.right, rc.bottom, pt1.x, pt1.y, pt2.x, pt2.y);
    }
    if (round.nHub <= 0) return;
    const CSelectScope white(hdc, ::GetStockObject(WHITE_BRUSH));
    const RECT rcHub = DiscBox(round.ptCentre, round.nHub, px);
    if (IsDrawableCurve(rcHub, px))
        ::Ellipse(hdc, rcHub.left, rcHub.top, rcHub.right, rcHub.bottom);
}

int CQELViewScale::Rotate(POINT ptCentre, int32_t nAngle)
{
    m_nOffset = QuarterTurn(nAngle);
    return CQELViewElm::Rotate(ptCentre, nAngle);
}

int CQELViewScale::SetProperty(uint32_t nSelector, uint32_t nValue)
{
    if (!TakeProperty(nSelector, nValue)) return 0;
    m_words.NoteHost(nSelector);
    return 1;
}

int CQELViewScale::TakeProperty(uint32_t nSelector, uint32_t nValue)
{
    Touch();
    switch (nSelector) {
    case QEL_SEL_PIN_COLOR:
        m_clrPin = nValue;
        return 1;
    case QEL_SEL_SCALE_COLOR:
        m_clrMark = nValue;
        return 1;
    case QEL_SEL_TICKS:
        if (static_cast<int32_t>(nValue) < 1) return 0;
        m_nDivisions = HeldDivisions(static_cast<int32_t>(nValue), m_attr.nMin, m_attr.nMax);
        return 1;
    case QEL_SEL_START_CODE:
        m_nStartCode = nValue;
        return 1;
    case QEL_SEL_MAX:
        m_value.nHigh = nValue;
        return 1;
    case QEL_SEL_MIN:
        m_value.nLow = nValue;
        return 1;
    case QEL_SEL_VALUE:
        NoteNumbered();
        m_value.nValue = nValue;
        m_value.bFloat = false;
        return 1;
    default:
        return 0;
    }
}

int CQELViewScale::GetProperty(uint32_t nSelector, uint32_t* pnValue) const
{
    switch (nSelector) {
    case QEL_SEL_PIN_COLOR:
        *pnValue = m_clrPin;
        return 1;
    case QEL_SEL_SCALE_COLOR:
        *pnValue = m_clrMark;
        return 1;
    case QEL_SEL_TICKS:
        *pnValue = static_cast<uint32_t>(m_nDivisions);
        return 1;
    case QEL_SEL_START_CODE:
        *pnValue = m_nStartCode;
        return 1;
    case QEL_SEL_MAX:
        *pnValue = m_value.nHigh;
        return 1;
    case QEL_SEL_MIN:
        *pnValue = m_value.nLow;
        return 1;
    case QEL_SEL_VALUE:
        *pnValue = m_value.nValue;
        return 1;
    default:
        return 0;
    }
}

void CQELViewScale::NoteNumbered() const
{
    if (LiveState* pState = Live()) pState->TakeOtherValue();
}

void CQELViewScale::ShowNumber(double fNumber)
{
    m_value.nValue = static_cast<uint32_t>(TruncToInt(fNumber));
    m_value.fValue = static_cast<float>(fNumber);
    m_value.bFloat = true;
    m_words.NoteHost(QEL_SEL_VALUE);
}

double CQELViewScale::ShownNumber() const
{
    if (const double* pfOwn = m_words.Value()) return *pfOwn;
    return m_value.bFloat ? static_cast<double>(m_value.fValue) : m_value.nValue;
}

double CQELViewScale::FullTurn(double* pfLow) const
{
    if (m_attr.nType != SCALE_ROUND) return 0;
    const ScaleValue value = RepairedRange(m_value, Divisions());
    *pfLow = value.nLow;
    return static_cast<double>(value.nHigh) - value.nLow;
}

// Applied as often as the record is set, since what is refused or held goes by that.
int CQELViewScale::TakeSet(const SetTexts& texts)
{
    if (!m_words.Take(texts)) return 0;
    m_words.Apply(*this);
    return 1;
}

void CQELViewScale::ResetValues()
{
    Touch();
    const CQELViewScale fresh(RefW(), RefH());
    m_clrPin = fresh.m_clrPin;
    m_clrMark = fresh.m_clrMark;
    m_nDivisions = fresh.m_nDivisions;
    m_nStartCode = fresh.m_nStartCode;
    m_value = fresh.m_value;
    m_words.ApplyAll(*this);
}

int CQELViewScale::SetValue(float fValue)
{
    NoteNumbered();
    Touch();
    m_value.fValue = fValue;
    m_value.bFloat = true;
    m_words.NoteHost(QEL_SEL_VALUE);
    return 1;
}

int CQELViewScale::SetValue(uint32_t nPin, float fValue)
{
    return nPin == 0 ? SetValue(fValue) : 0;
}

int CQELViewScale::GetValue(uint32_t nPin, float* pfValue) const
{
    if (nPin != 0) return 0;
    *pfValue = m_value.fValue;
    return 1;
}

bool CQELViewScale::KnowsSelector(uint32_t nSelector) const
{
    const SelectorRow* pRow = FindSelector(nSelector);
    return pRow && pRow->pszForScale;
}

int CQELViewScale::GetAttrBlockSize(int* pnSize) const
{
    *pnSize = sizeof m_attr;
    return 1;
}

int CQELViewScale::GetAttrBlock(void* pBlock) const
{
    if (!pBlock) return 0;
    std::memcpy(pBlock, &m_attr, sizeof m_attr);
    return 1;
}

int CQELViewScale::SetAttrBlock(const void* pBlock)
{
    if (!pBlock) return 0;
    QELSCALEATTR attr;
    std::memcpy(&attr.nSize, pBlock, sizeof attr.nSize);
    if (attr.nSize != sizeof attr) return 0;
    std::memcpy(&attr, pBlock, sizeof attr);
    if (attr.nType < 0 || attr.nType > SCALE_ARC) return 0;
    m_attr = attr;
    NoteChange();
    return 1;
}

int CQELViewScale::SetDraftParam(uint32_t nValue)
{
    if (nValue >= DRAFT_COUNT) return 0;
    m_nDraft = static_cast<int32_t>(nValue);
    Touch();
    return 1;
}

int CQELViewScale::SetDraftForeParam(uint32_t nValue)
{
    m_clrFore = nValue;
    Touch();
    return 1;
}

int CQELViewScale::SetDraftBackParam(uint32_t nValue)
{
    m_clrBack = nValue;
    Touch();
    return 1;
}

bool CQELViewScale::Blinks() const
{
    return ((m_clrPin | m_clrMark | m_clrFore | m_clrBack) & QEL_COLOR_BLINK) != 0;
}

uint32_t CQELViewScale::GetParamMask() const
{
    uint32_t nMask = MASK_ALWAYS;
    if (!m_attr.bHide) nMask |= MASK_MARKS;
    if (m_attr.bPin) nMask |= MASK_PIN;
    if (!IsRound()) return nMask | MASK_STRAIGHT;
    nMask |= MASK_ROUND;
    return FillsRound() ? nMask | MASK_ROUND_FILL : nMask;
}
