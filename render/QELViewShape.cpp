#include "render/QELViewShape.h"

#include "base/DrawLimits.h"
#include "base/GdiScopes.h"
#include "base/Shown.h"
#include "brush/SampleGradient.h"
#include "brush/ShownDraft.h"
#include "render/Mapping.h"
#include "render/OutlineProbe.h"

#include <cstring>

namespace {

constexpr KeywordRow g_fillStyles[] = {{QEL_STYLE_STROKE, "Stoke"},
                                       {QEL_STYLE_FILL, "Fill No3D"},
                                       {QEL_STYLE_FILL_3DUP, "Fill 3DUp"},
                                       {QEL_STYLE_FILL_3DDOWN, "Fill 3DDown"},
                                       {KEYWORD_NONE, nullptr}};
static_assert(IsSoundTable(g_fillStyles),
              "styles and keywords are unique and the end mark is there");

constexpr int32_t HIT_REACH = 3; // pixels, from the edge of what is stroked
constexpr int32_t POINTED = 11;  // times the width of a pen with pointed corners

// Each step can be undone, so that a change of one word never gets lost.
void AddWord(uint64_t* pnSum, int32_t nWord)
{
    *pnSum = (*pnSum ^ static_cast<uint32_t>(nWord)) * 0x9E3779B97F4A7C15ULL;
    *pnSum ^= *pnSum >> 32;
}

} // namespace

const KeywordRow* const g_fillStyleRows = g_fillStyles;

CQELViewShape::CQELViewShape(int32_t nRefW, int32_t nRefH, int32_t nType, CPool* pPool) noexcept
    : CQELViewElm(nRefW, nRefH, pPool)
{
    SetType(nType);
    const int32_t nNone = 0; // the words are there from the beginning, whatever fails later
    m_geometry.Set(Pool(), &nNone, 1, ShapeWordsOf(nType, 0));
}

bool CQELViewShape::LacksMemory() const
{
    return m_geometry.Count() < ShapeWordsOf(Type(), 0);
}

CQELViewShape::~CQELViewShape()
{
    GivePoolText(Pool(), m_pszText);
    m_geometry.Drop(Pool());
}

int CQELViewShape::Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut)
{
    if (!CQELViewElm::Duplicate(pTargetParent, ppOut)) return 0;
    QELSHAPEATTR block;
    GetAttrBlock(&block);
    if ((*ppOut)->SetAttrBlock(&block))
        return 1; // the rotation is not part of the block, nor of a copy
    delete *ppOut;
    *ppOut = nullptr;
    return 0;
}

// Static shapes take no part in a partial redraw.
int CQELViewShape::Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags)
{
    if (!(nFlags & QEL_DRAW_FULL)) return 1;
    DeviceFigure figure{};
    if (!MakeFigure(rcQel, nFlags, &figure)) return 0;
    if (IsOutlineOnly())
        DrawOutline(hdc, figure, rcQel);
    else
        DrawFilled(hdc, figure, rcQel);
    return 1;
}

int32_t CQELViewShape::PenWidth(CPixelScale px) const
{
    return px(DrawnPenWidth(m_style.nPenStyle, m_style.nPenWidth));
}

// A frame's pen lies within the box by itself. What has no outline is drawn as with the null pen.
int32_t CQELViewShape::StrokedPixels() const
{
    if (HidesOutline() || m_style.nPenStyle == PS_NULL) return 0;
    const int32_t nPixels = DrawnPenWidth(m_style.nPenStyle, m_style.nPenWidth);
    return nPixels > 0 ? nPixels : 0;
}

RECT CQELViewShape::DrawnBox(const DeviceFigure& figure) const
{
    const int32_t nPixels = StrokedPixels();
    if (nPixels > 1 && m_style.nPenStyle == PS_INSIDEFRAME) return figure.rcBox;
    return StrokedBox(figure.rcBox, nPixels, figure.px);
}

// A curve that a frame's pen leaves no room ends some systems: they reckon with what is left of it.
// A metafile keeps the width.
int32_t CQELViewShape::PenWidthFor(HDC hdc, const DeviceFigure& figure) const
{
    const int32_t nOnSurface = PenWidthOn(figure);
    const int32_t nWidth = PenWidth(figure.px);
    return nOnSurface == nWidth || IsSurface(hdc) ? nOnSurface : nWidth;
}

int32_t CQELViewShape::PenWidthOn(const DeviceFigure& figure) const
{
    const int32_t nWidth = PenWidth(figure.px);
    if (m_style.nPenStyle != PS_INSIDEFRAME || !IsCurved() || m_style.nPenWidth < 2) return nWidth;
    return FramePenWidth(nWidth, NormalizedRect(figure.rcBox), figure.px);
}

void CQELViewShape::DrawFilled(HDC hdc, const DeviceFigure& figure, const QelRect& rcQel) const
{
    CShownDraft draft(m_style.nDraft, figure.px); // owns the brush, so it outlives the guards
    CPixelPenScope pen(hdc, m_style.nPenWidth == 0 || HidesOutline(), m_style.nPenStyle,
                       m_style.nPenWidth, PenWidthFor(hdc, figure), BlinkColor(ShownPen()));
    const CBkModeScope mode(hdc, TRANSPARENT);
    CSampleGradient samples;
    HBRUSH hBrush = nullptr;
    if (FillStyle() == QEL_STYLE_STROKE) {
        hBrush = static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH));
    } else {
        // These two stay set: the next shape sets its own.
        ::SetBkColor(hdc, BlinkColor(ShownA()));
        ::SetTextColor(hdc, BlinkColor(ShownB()));
        if (FillStyle() == QEL_STYLE_FILL) // the others have borders of more colours
            hBrush =
                samples.Begin(hdc, m_style.nDraft, figure.px, figure.rcBox, Hull(figure),
                              BlinkColor(ShownB()), BlinkColor(ShownA()), BlinkColor(ShownPen()));
        if (!hBrush)
            hBrush = draft.Brush(hdc, figure.rcBox, Hull(figure), BlinkColor(ShownB()),
                                 BlinkColor(ShownA()));
    }
    CSelectScope brush(hdc, hBrush);
    PaintWithin(hdc, figure, hBrush, rcQel);
    samples.End();

    // Brush and pen go back before the background mode, the rectangle's pen before its brush: the
    // order in which hosts have always seen these calls.
    if (RestoresPenFirst()) pen.Restore();
    brush.Restore();
    pen.Restore();
}

void CQELViewShape::DrawOutline(HDC hdc, const DeviceFigure& figure, const QelRect& rcQel) const
{
    const bool bPlain = FillStyle() == QEL_STYLE_STROKE;
    if (!bPlain) FillGaps(hdc, figure, rcQel);
    CPixelPenScope pen(hdc, m_style.nPenWidth == 0, m_style.nPenStyle, m_style.nPenWidth,
                       PenWidthFor(hdc, figure), BlinkColor(ShownPen()));
    const int nPrevMode = ::SetBkMode(hdc, bPlain ? TRANSPARENT : OPAQUE);
    COLORREF clrPrev = 0;
    if (!bPlain) clrPrev = ::SetBkColor(hdc, BlinkColor(ShownB()));
    PaintWithin(hdc, figure, nullptr, rcQel);
    pen.Restore();
    ::SetBkMode(hdc, nPrevMode);
    // With the 3D fill styles the colour stays changed, which LeaveColors knows.
    if (FillStyle() == QEL_STYLE_FILL) ::SetBkColor(hdc, clrPrev);
}

// The system paints the gaps of a pen of one pixel itself; one that stands for it at another scale
// leaves them.
void CQELViewShape::FillGaps(HDC hdc, const DeviceFigure& figure, const QelRect& rcQel) const
{
    const bool bBroken = m_style.nPenStyle >= PS_DASH && m_style.nPenStyle <= PS_DASHDOTDOT;
    const int32_t nWidth = PenWidthFor(hdc, figure);
    if (!bBroken || m_style.nPenWidth != 1 || nWidth == 1) return;
    const CPixelPenScope pen(hdc, false, PS_SOLID, 1, nWidth, BlinkColor(ShownB()));
    PaintWithin(hdc, figure, nullptr, rcQel);
}

void CQELViewShape::PaintWithin(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
                                const QelRect& rcQel) const
{
    if (!IsCurved() || IsDrawableCurve(figure.rcBox, figure.px)) Paint(hdc, figure, hBrush, rcQel);
}

int CQELViewShape::MapFigure(const QelRect& rcQel, uint32_t nFlags, DeviceFigure* pOut) const
{
    const int32_t* n = Words();
    MapAnchored(rcQel, {n[0], n[1], n[2], n[3]}, nFlags, &pOut->rcBox);
    return 1; // what cannot be mapped is an empty rectangle, which is drawn as nothing
}

int CQELViewShape::MapAnchored(const QelRect& rcQel, const RECT& rc, uint32_t nFlags,
                               RECT* prcOut) const
{
    if (!MapRect(rcQel, RefW(), RefH(), rc, prcOut, m_style.nFlags)) return 0;
    if (IsPressed(nFlags)) ShiftPressed(prcOut, rcQel);
    return 1;
}

void CQELViewShape::Paint(HDC, const DeviceFigure&, HBRUSH, const QelRect&) const {}

// By default the box, whose last pixels are the outline's.
void CQELViewShape::Trace(const DeviceFigure& figure, COutlineProbe* pProbe) const
{
    const RECT rc = NormalizedRect(DrawnBox(figure));
    const POINT pts[] = {{rc.left, rc.top},
                         {WrapSub(rc.right, 1), rc.top},
                         {WrapSub(rc.right, 1), WrapSub(rc.bottom, 1)},
                         {rc.left, WrapSub(rc.bottom, 1)}};
    for (int n = 0; n < 4; ++n) pProbe->Line(pts[n], pts[(n + 1) % 4]);
}

RECT CQELViewShape::BoxBounds(const int32_t* pnWords)
{
    return NormalizedRect({pnWords[0], pnWords[1], pnWords[2], pnWords[3]});
}

// A figure that is filled is hit on its paint, an outline from some pixels away as well.
bool CQELViewShape::IsHit(const QelRect& rcQel, POINT pt) const
{
    DeviceFigure figure{};
    if (!MakeFigure(rcQel, 0, &figure)) return false;
    const RECT& rc = figure.rcBox;
    if (IsBoxed() && (rc.left == rc.right || rc.top == rc.bottom)) return false;
    const bool bFilled = IsArea() && FillStyle() != QEL_STYLE_STROKE;
    const bool bStroked = m_style.nPenWidth != 0 && !HidesOutline();
    if (!bFilled && !bStroked) return false;
    COutlineProbe probe(pt);
    Trace(figure, &probe);
    if (bFilled && probe.IsInside()) return true;
    const double fPen = bStroked ? WrapAbs(PenWidthOn(figure)) / 2.0 : 0;
    return probe.IsWithin(fPen + (bFilled ? Roughness() : figure.px(HIT_REACH)));
}

HRGN CQELViewShape::MakeRegion(const QelRect&) const
{
    return nullptr;
}

void CQELViewShape::AddRegionSource(uint64_t* pnSum) const
{
    for (const int32_t n : {Type(), static_cast<int32_t>(Style()), m_style.nPenWidth,
                            m_style.nFlags, RefW(), RefH(), m_geometry.Count()})
        AddWord(pnSum, n);
    for (int32_t n = 0; n < m_geometry.Count(); ++n) AddWord(pnSum, Words()[n]);
}

HRGN CQELViewShape::MakeShownRegion(const QelRect& rcQel, const RECT&, bool*) const
{
    return MakeRegion(rcQel);
}

Reach CQELViewShape::PaintedArea(const QelRect& rcQel, uint32_t nFlags, RECT* prcOut) const
{
    DeviceFigure figure; // filled in as far as the class has it
    if (!MakeFigure(rcQel, nFlags, &figure)) return Reach::Nothing;
    const RECT rc = Hull(figure);
    int32_t n = 0;
    if (!IsWithinReach(rc) || !PaintMargin(figure.px, &n)) return Reach::Unknown;
    *prcOut = {rc.left - n, rc.top - n, rc.right + n, rc.bottom + n};
    return Reach::Known;
}

bool CQELViewShape::PaintedRect(const QelRect& rcQel, RECT* prcOut) const
{
    return PaintedAs(m_bFace, rcQel, prcOut);
}

bool CQELViewShape::PaintedFace(const QelRect& rcQel, RECT* prcOut) const
{
    return PaintedAs(true, rcQel, prcOut);
}

// A hollow face is filled again as soon as the meter says so.
bool CQELViewShape::PaintedAs(bool bFace, const QelRect& rcQel, RECT* prcOut) const
{
    const bool bFills = (m_style.nStyle & QEL_STYLE_FILL_MASK) != QEL_STYLE_STROKE && IsArea();
    if (!bFills && m_style.nPenWidth == 0 && Type() != QEL_TYPE_TEXT) return false;
    CRectHull hull;
    for (const uint32_t nFlags : {uint32_t{0}, uint32_t{QEL_DRAW_PRESSED}}) {
        DeviceFigure figure{};
        if ((nFlags && !IsPressed(nFlags)) || !MakeFigure(rcQel, nFlags, &figure)) continue;
        const RECT& rc = figure.rcBox;
        if (!IsBoxed() || (rc.left != rc.right && rc.top != rc.bottom))
            hull.Add(PaintedBox(figure, bFace));
    }
    return hull.Get(prcOut);
}

RECT CQELViewShape::PaintedBox(const DeviceFigure& figure, bool bFace) const
{
    return GrownRect(Hull(figure), PaintReach(figure, bFace));
}

// The system's own pen styles have round ends and joins. Of other numbers the corners may be
// pointed, up to ten times as long as they are wide.
int32_t CQELViewShape::PaintReach(const DeviceFigure& figure, bool bFace) const
{
    const int32_t nSlack = figure.px(PAINT_SLACK);
    if (m_style.nPenWidth == 0 || (HidesOutline() && !bFace)) return nSlack;
    const int32_t nWidth = WrapAbs(PenWidth(figure.px));
    const bool bKnown = m_style.nPenStyle >= PS_SOLID && m_style.nPenStyle <= PS_INSIDEFRAME;
    if (!bKnown) return nSlack + WrapMul(POINTED, nWidth);
    // A frame's pen that has no room stands out on all sides.
    const RECT rc = NormalizedRect(figure.rcBox);
    const bool bHasRoom = WidthOf(rc) > nWidth && HeightOf(rc) > nWidth;
    const bool bStandsOut = m_style.nPenStyle == PS_INSIDEFRAME && !bHasRoom;
    return nSlack + (bStandsOut ? nWidth : nWidth / 2);
}

bool CQELViewShape::FaceHull(const QelRect& rcQel, RECT* prcOut) const
{
    DeviceFigure figure{};
    if (!IsArea() || !MakeFigure(rcQel, 0, &figure)) return false;
    const RECT rc = Hull(figure);
    *prcOut = GrownRect(rc, RegionReach(figure));
    return true;
}

UnitTurn CQELViewShape::TurnFrom(const int32_t* pnDocWords) const
{
    return {m_nTurned, GeometryBounds(pnDocWords), GeometryBounds(Words())};
}

bool CQELViewShape::MapUnits(const QelRect& rcQel, UnitMap* pOut) const
{
    DeviceFigure figure{};
    if (!MakeFigure(rcQel, 0, &figure)) return false;
    const RECT rc = GeometryBounds(Words());
    if (IsBoxed() && ::IsRectEmpty(&rc)) return false; // it is not drawn
    return MakeUnitMap(rcQel, RefW(), RefH(), rc, KeepFlags(), pOut);
}

RECT CQELViewShape::Hull(const DeviceFigure& figure) const
{
    return NormalizedRect(figure.rcBox);
}

// Where no pen can be made the context's own serves, which may be wider than is reckoned with here.
// The system's own pen styles have round ends and joins, so that half of the width would do; of
// other numbers nobody knows what the system makes.
int CQELViewShape::PaintMargin(CPixelScale px, int32_t* pnOut) const
{
    *pnOut = px(PAINT_SLACK);
    if (m_style.nPenWidth == 0 || HidesOutline()) return 1;
    if (m_style.nPenStyle < PS_SOLID || m_style.nPenStyle > PS_INSIDEFRAME) return 0;
    if (m_style.nPenWidth < 0) return 0;
    *pnOut += PenWidth(px);
    return 1;
}

// See DrawFilled and DrawOutline.
void CQELViewShape::LeaveColors(LeftColors* pOut) const
{
    if (FillStyle() == QEL_STYLE_STROKE) return;
    if (IsOutlineOnly() && FillStyle() == QEL_STYLE_FILL) return;
    pOut->pBack = this;
    if (!IsOutlineOnly()) pOut->pText = this;
}

COLORREF CQELViewShape::LeftBackColor() const
{
    return BlinkColor(IsOutlineOnly() ? ShownB() : ShownA());
}

// Of what the host has set of it and of what it is in, the latest.
uint32_t CQELViewShape::LiveColorOr(LiveColorPlace place, uint32_t clrOwn) const
{
    uint32_t nLatest = 0;
    for (const CQELViewElm* pElm = this; pElm; pElm = pElm->Parent()) {
        const LiveState* pState = pElm->Live();
        if (!pState || pState->colors[place].nSerial <= nLatest) continue;
        nLatest = pState->colors[place].nSerial;
        clrOwn = pState->colors[place].clr;
    }
    return clrOwn;
}

void LeftColors::Add(const LeftColors& later)
{
    if (later.pBack) pBack = later.pBack;
    if (later.pText) pText = later.pText;
}

void LeftColors::Settle(HDC hdc)
{
    if (pBack) ::SetBkColor(hdc, pBack->LeftBackColor());
    if (pText) ::SetTextColor(hdc, pText->LeftTextColor());
    *this = {};
}

int CQELViewShape::GetAttrBlockSize(int* pnSize) const
{
    *pnSize = sizeof(QELSHAPEATTR);
    return 1;
}

int CQELViewShape::GetAttrBlock(void* pBlock) const
{
    return WriteShapeRecord(Data(), pBlock);
}

int CQELViewShape::SetAttrBlock(const void* pBlock)
{
    CShapeRecord record;
    return record.Read(pBlock, Type()) && TakeData(record.Data()) ? 1 : 0;
}

ShapeData CQELViewShape::Data() const
{
    return {&m_style, Words(), m_geometry.Count(), Text(), std::strlen(Text())};
}

int CQELViewShape::TakeData(const ShapeData& data)
{
    if (!TakeShapeData(data, {Pool(), Type(), &m_style, &m_geometry, &m_pszText})) return 0;
    NoteChange();
    m_nTurned = 0;
    m_bFace = false;
    m_bHollow = false;
    return 1;
}

int CQELViewShape::SetColorParam(uint32_t nValue)
{
    if (!(m_style.nFlags & QEL_FLAG_COLOR_PARAM)) return 0;
    const bool bOutline = FillStyle() == QEL_STYLE_STROKE && Type() != QEL_TYPE_TEXT;
    (bOutline ? m_style.clrPen : m_style.clrA) = nValue;
    Touch();
    return 1;
}

int CQELViewShape::SetDraftParam(uint32_t nValue)
{
    if (!TakesDraft()) return 0;
    m_style.nDraft = static_cast<int32_t>(nValue);
    Touch();
    return 1;
}

int CQELViewShape::SetDraftForeParam(uint32_t nValue)
{
    if (!TakesDraft()) return 0;
    m_style.clrA = nValue;
    Touch();
    return 1;
}

int CQELViewShape::SetDraftBackParam(uint32_t nValue)
{
    if (!TakesDraft()) return 0;
    m_style.clrB = nValue;
    Touch();
    return 1;
}

void CQELViewShape::DressAsFace(uint32_t clr, bool bHollow)
{
    m_style.clrB = clr;
    m_style.nDraft = DRAFT_SOLID_TEXT;
    SetHollow(bHollow);
    m_bFace = true;
}

void CQELViewShape::GiveFillBack(int32_t nOwnDraft, uint32_t clrOwnB)
{
    if (!m_bFace) return; // it never was drawn as a face
    m_style.clrB = clrOwnB;
    m_style.nDraft = nOwnDraft;
    SetHollow(false);
    m_bFace = false;
}

bool CQELViewShape::Blinks() const
{
    return ((ShownPen() | ShownA() | ShownB()) & QEL_COLOR_BLINK) != 0;
}

void CQELViewShape::TakeDraft(int32_t nDraft)
{
    m_style.nDraft = nDraft;
    Touch();
}

void CQELViewShape::TakeBackColor(uint32_t clr)
{
    m_style.clrB = clr;
    Touch();
}

void CQELViewShape::TakeColor(uint32_t clr)
{
    Touch();
    m_style.clrA = clr;
    if (FillStyle() == QEL_STYLE_STROKE) m_style.clrPen = clr;
}

uint32_t CQELViewShape::GetParamMask() const
{
    uint32_t nMask =
        m_style.nFlags & (QEL_FLAG_COLOR_PARAM | QEL_FLAG_DRAFT_PARAM | QEL_FLAG_PRESS);
    if (m_style.nFlags & QEL_KEEP_ANCHOR_MASK) nMask |= QEL_MASK_KEEP;
    return nMask;
}
