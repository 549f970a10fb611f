// The shape base; see the header.
#include "render/QELViewShape.h"

#include "brush/ShownDraft.h"
#include "render/DrawLimits.h"
#include "render/GdiScopes.h"
#include "render/Mapping.h"
#include "render/Shown.h"

#include <cstring>
#include <string_view>

namespace {

constexpr KeywordRow g_fillStyles[] = {{QEL_STYLE_STROKE, "Stoke"},
                                       {QEL_STYLE_FILL, "Fill No3D"},
                                       {QEL_STYLE_FILL_3DUP, "Fill 3DUp"},
                                       {QEL_STYLE_FILL_3DDOWN, "Fill 3DDown"},
                                       {KEYWORD_NONE, nullptr}};
static_assert(IsSoundTable(g_fillStyles),
              "styles and keywords are unique and the end mark is there");

} // namespace

const KeywordRow* const g_fillStyleRows = g_fillStyles;

CQELViewShape::CQELViewShape(int32_t nRefW, int32_t nRefH, int32_t nType) noexcept
    : CQELViewElm(nRefW, nRefH)
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
int CQELViewShape::Draw(HDC hdc, const RECT& rcQel, uint32_t nFlags)
{
    if (!(nFlags & QEL_DRAW_FULL)) return 1;
    DeviceFigure figure{};
    if (!MapFigure(rcQel, nFlags, &figure)) return 0;
    if (IsOutlineOnly())
        DrawOutline(hdc, figure, rcQel);
    else
        DrawFilled(hdc, figure, rcQel);
    return 1;
}

int32_t CQELViewShape::PenWidth() const
{
    return DrawnPenWidth(m_nPenStyle, m_nPenWidth);
}

// A curve that a frame's pen leaves no room ends some systems: they reckon with what is left of it.
// A metafile keeps the width.
int32_t CQELViewShape::PenWidthFor(HDC hdc, const DeviceFigure& figure) const
{
    const int32_t nWidth = PenWidth();
    if (m_nPenStyle != PS_INSIDEFRAME || !IsCurved() || nWidth < 2 || !IsSurface(hdc))
        return nWidth;
    return FramePenWidth(nWidth, NormalizedRect(figure.rcBox));
}

void CQELViewShape::DrawFilled(HDC hdc, const DeviceFigure& figure, const RECT& rcQel) const
{
    CShownDraft draft(m_nDraft); // owns the brush, so it outlives the guards
    CPenScope pen(hdc, m_nPenWidth == 0 || HidesOutline(), m_nPenStyle, PenWidthFor(hdc, figure),
                  BlinkColor(m_clrPen));
    const CBkModeScope mode(hdc, TRANSPARENT);
    HBRUSH hBrush = nullptr;
    if (FillStyle() == QEL_STYLE_STROKE) {
        hBrush = static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH));
    } else {
        // These two stay set: deliberate, the next shape sets its own.
        ::SetBkColor(hdc, BlinkColor(m_clrA));
        ::SetTextColor(hdc, BlinkColor(m_clrB));
        hBrush =
            draft.Brush(hdc, figure.rcBox, Hull(figure), BlinkColor(m_clrB), BlinkColor(m_clrA));
    }
    CSelectScope brush(hdc, hBrush);
    PaintWithin(hdc, figure, hBrush, rcQel);

    // Brush and pen go back before the background mode, the rectangle's pen before its brush: the
    // order in which hosts have always seen these calls.
    if (RestoresPenFirst()) pen.Restore();
    brush.Restore();
    pen.Restore();
}

void CQELViewShape::DrawOutline(HDC hdc, const DeviceFigure& figure, const RECT& rcQel) const
{
    CPenScope pen(hdc, m_nPenWidth == 0, m_nPenStyle, PenWidthFor(hdc, figure),
                  BlinkColor(m_clrPen));
    const bool bPlain = FillStyle() == QEL_STYLE_STROKE;
    const int nPrevMode = ::SetBkMode(hdc, bPlain ? TRANSPARENT : OPAQUE);
    COLORREF clrPrev = 0;
    if (!bPlain) clrPrev = ::SetBkColor(hdc, BlinkColor(m_clrB));
    PaintWithin(hdc, figure, nullptr, rcQel);
    pen.Restore();
    ::SetBkMode(hdc, nPrevMode);
    // With the 3D fill styles the colour stays changed: deliberate.
    if (FillStyle() == QEL_STYLE_FILL) ::SetBkColor(hdc, clrPrev);
}

void CQELViewShape::PaintWithin(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
                                const RECT& rcQel) const
{
    if (!IsCurved() || IsDrawableCurve(figure.rcBox)) Paint(hdc, figure, hBrush, rcQel);
}

int CQELViewShape::MapFigure(const RECT& rcQel, uint32_t nFlags, DeviceFigure* pOut) const
{
    const int32_t* n = Words();
    MapAnchored(rcQel, {n[0], n[1], n[2], n[3]}, nFlags, &pOut->rcBox);
    return 1; // what cannot be mapped is an empty rectangle, which is drawn as nothing
}

int CQELViewShape::MapAnchored(const RECT& rcQel, const RECT& rc, uint32_t nFlags,
                               RECT* prcOut) const
{
    if (!MapRect(rcQel, RefW(), RefH(), rc, prcOut, m_nFlags)) return 0;
    if (IsPressed(nFlags)) ShiftPressed(prcOut, rcQel);
    return 1;
}

void CQELViewShape::Paint(HDC, const DeviceFigure&, HBRUSH, const RECT&) const {}

HRGN CQELViewShape::MakeRegion(const RECT&) const
{
    return nullptr;
}

HRGN CQELViewShape::MakeShownRegion(const RECT& rcQel, const RECT&, bool*) const
{
    return MakeRegion(rcQel);
}

Reach CQELViewShape::PaintedArea(const RECT& rcQel, uint32_t nFlags, RECT* prcOut) const
{
    DeviceFigure figure; // filled in as far as the class has it
    if (!MapFigure(rcQel, nFlags, &figure)) return Reach::Nothing;
    const RECT rc = Hull(figure);
    int32_t n = 0;
    if (!IsWithinReach(rc) || !PaintMargin(&n)) return Reach::Unknown;
    *prcOut = {rc.left - n, rc.top - n, rc.right + n, rc.bottom + n};
    return Reach::Known;
}

RECT CQELViewShape::Hull(const DeviceFigure& figure) const
{
    return NormalizedRect(figure.rcBox);
}

// Where no pen can be made the context's own serves, which may be wider than is reckoned with here.
// The system's own pen styles have round ends and joins, so that half of the width would do; of
// other numbers nobody knows what the system makes.
int CQELViewShape::PaintMargin(int32_t* pnOut) const
{
    *pnOut = PAINT_SLACK;
    if (m_nPenWidth == 0 || HidesOutline()) return 1;
    if (m_nPenStyle < PS_SOLID || m_nPenStyle > PS_INSIDEFRAME) return 0;
    if (m_nPenWidth < 0) return 0;
    *pnOut += PenWidth();
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
    return BlinkColor(IsOutlineOnly() ? m_clrB : m_clrA);
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
    if (!pBlock) return 0;
    QELSHAPEATTR block{};
    block.nSize = sizeof block;
    block.nStyle = m_nStyle;
    block.nDraft = m_nDraft;
    block.clrA = m_clrA;
    block.clrB = m_clrB;
    block.clrPen = m_clrPen;
    block.nPenStyle = m_nPenStyle;
    block.nPenWidth = m_nPenWidth;
    m_geometry.CopyTo(block.nGeometry);
    std::memcpy(block.szText, Text(), std::strlen(Text()));
    block.nFlags = m_nFlags;
    std::memcpy(pBlock, &block, sizeof block);
    return 1;
}

int CQELViewShape::SetAttrBlock(const void* pBlock)
{
    if (!pBlock) return 0;
    QELSHAPEATTR block;
    std::memcpy(&block.nSize, pBlock, sizeof block.nSize);
    if (block.nSize != sizeof block) return 0;
    std::memcpy(&block, pBlock, sizeof block);
    block.szText[sizeof block.szText - 1] = 0; // the host may have left the end mark out
    int32_t nWords[QEL_SHAPE_WORDS];
    std::memcpy(nWords, block.nGeometry, sizeof nWords);
    return TakeData({block.nStyle, block.nDraft, block.clrA, block.clrB, block.clrPen,
                     block.nPenStyle, block.nPenWidth, block.nFlags, nWords,
                     UsedWords(nWords, Type()), block.szText, std::strlen(block.szText)});
}

// A text that stays the same and words of the same number need no memory.
int CQELViewShape::TakeData(const ShapeData& data)
{
    const bool bSameText =
        m_pszText ? std::string_view(m_pszText) == std::string_view(data.pText, data.nText)
                  : !data.nText;
    char* pszText = m_pszText;
    if (!bSameText) {
        pszText = TakePoolText(Pool(), data.pText, data.nText);
        if (data.nText && !pszText) return 0;
    }
    if (!m_geometry.Set(Pool(), data.pnWords, data.nWords, ShapeWordsOf(Type(), data.pnWords[0]))) {
        if (!bSameText) GivePoolText(Pool(), pszText);
        return 0;
    }
    if (!bSameText) GivePoolText(Pool(), m_pszText);
    NoteChange();
    m_pszText = pszText;
    m_nStyle = data.nStyle;
    m_nDraft = data.nDraft;
    m_clrA = data.clrA;
    m_clrB = data.clrB;
    m_clrPen = data.clrPen;
    m_nPenStyle = data.nPenStyle;
    m_nPenWidth = data.nPenWidth;
    m_nFlags = data.nFlags;
    return 1;
}

int CQELViewShape::SetColorParam(uint32_t nValue)
{
    if (!(m_nFlags & QEL_FLAG_COLOR_PARAM)) return 0;
    const bool bOutline = FillStyle() == QEL_STYLE_STROKE && Type() != QEL_TYPE_TEXT;
    (bOutline ? m_clrPen : m_clrA) = nValue;
    return 1;
}

int CQELViewShape::SetDraftParam(uint32_t nValue)
{
    if (!TakesDraft()) return 0;
    m_nDraft = static_cast<int32_t>(nValue);
    return 1;
}

int CQELViewShape::SetDraftForeParam(uint32_t nValue)
{
    if (!TakesDraft()) return 0;
    m_clrA = nValue;
    return 1;
}

int CQELViewShape::SetDraftBackParam(uint32_t nValue)
{
    if (!TakesDraft()) return 0;
    m_clrB = nValue;
    return 1;
}

void CQELViewShape::TakeColor(uint32_t clr)
{
    m_clrA = clr;
    if (FillStyle() == QEL_STYLE_STROKE) m_clrPen = clr;
}

uint32_t CQELViewShape::GetParamMask() const
{
    uint32_t nMask = m_nFlags & (QEL_FLAG_COLOR_PARAM | QEL_FLAG_DRAFT_PARAM | QEL_FLAG_PRESS);
    if (m_nFlags & QEL_KEEP_ANCHOR_MASK) nMask |= QEL_MASK_KEEP;
    return nMask;
}
