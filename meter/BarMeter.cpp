#include "meter/BarMeter.h"

#include "base/Rects.h"
#include "base/Refusals.h"
#include "meter/BarFill.h"
#include "meter/DialComponents.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int32_t MIN_BREADTH_FOR_AXIS = 5;
constexpr int32_t MIN_BREADTH_FOR_TICKS = 4;
constexpr int32_t AXIS_FROM_SIDE = 7;
constexpr int32_t TICKS_FROM_SIDE = 6; // where they begin; they run towards the side
constexpr int32_t MAJOR_LENGTH = 6;
constexpr int32_t MINOR_LENGTH = 4;
constexpr int32_t LABELS_FROM_SIDE = 8;
constexpr int32_t FONT_HINT_PARTS = 4; // of the breadth

} // namespace

int CBarMeter::DrawScale(HDC hdc)
{
    if (!HasBar() || ScaleBreadth() < Px()(MIN_BREADTH_FOR_TICKS)) return 0;
    const CScaleLine line(1, m_clrScale, Px());
    const int32_t nFrom = Px()(TICKS_FROM_SIDE);
    for (uint32_t i = 0; i <= DrawnTicks(); ++i)
        line.Draw(hdc, BesideTick(i, nFrom),
                  BesideTick(i, nFrom - Px()(IsMajor(i) ? MAJOR_LENGTH : MINOR_LENGTH)));
    return 1;
}

int CBarMeter::DrawLabels(HDC hdc)
{
    if (!HasBar()) return 0;
    FontCell cell{};
    GetFontSize(ScaleBreadth() / FONT_HINT_PARTS, &cell);
    const CScaleMark mark(cell, m_clrLabel, Px());
    for (uint32_t i = 0; i <= DrawnTicks(); ++i) {
        if (i != 0 && i != DrawnTicks() && !IsMajor(i)) continue;
        char szText[VALUE_TEXT_SIZE];
        FormatValue(szText, TickNumber(i));
        const SIZE text{static_cast<LONG>(std::strlen(szText)) * cell.nWidth, cell.nHeight};
        const POINT pt = LabelPlace(i, text, mark.WidthOf(hdc, szText), Px()(LABELS_FROM_SIDE));
        mark.Draw(hdc, pt.x, pt.y, szText);
    }
    return 1;
}

// One line along the whole scale, its end left out by GDI.
int CBarMeter::DrawAxis(HDC hdc)
{
    if (!HasBar() || ScaleBreadth() < Px()(MIN_BREADTH_FOR_AXIS)) return 0;
    const auto [pt1, pt2] = LineAlong(Px()(AXIS_FROM_SIDE));
    return CScaleLine(1, m_clrScale, Px()).Draw(hdc, pt1, pt2);
}

// The place of the scale, the column that is filled and written in, and the numbers, which may
// stand out on both sides.
RECT CBarMeter::PaintedRect(const RECT& rcFace) const
{
    CRectHull hull;
    hull.Add(m_rcBar);
    if (!::IsRectEmpty(&rcFace)) hull.Add(ColumnIn(rcFace));
    if (!IsWithinReach(hull.Rect())) return ALL_IN_REACH;
    if (HasBar() && (GetShowScale() || GetShowAxis())) AddScale(&hull);
    if (HasBar() && GetShowLabels()) AddLabels(&hull);
    return hull.Rect();
}

void CBarMeter::AddScale(CRectHull* pHull) const
{
    for (const uint32_t nTick : {uint32_t{0}, DrawnTicks()})
        for (const int32_t nFromSide : {0, AXIS_FROM_SIDE}) {
            const POINT pt = BesideTick(nTick, Px()(nFromSide));
            const int32_t nPixel = Px()(1);
            pHull->Add({pt.x, pt.y, WrapAdd(pt.x, nPixel), WrapAdd(pt.y, nPixel)});
        }
}

// No character is wider than twice its cell, or than it is high; and a little higher than that it
// may be.
void CBarMeter::AddLabels(CRectHull* pHull) const
{
    FontCell cell{};
    GetFontSize(ScaleBreadth() / FONT_HINT_PARTS, &cell);
    const int32_t nWide = std::max(2 * cell.nWidth, cell.nHeight);
    const int32_t nCount = LongestNumber();
    for (const uint32_t nTick : {uint32_t{0}, DrawnTicks()}) {
        const POINT pt = LabelPlace(nTick, {nCount * cell.nWidth, cell.nHeight}, nCount * nWide,
                                    Px()(LABELS_FROM_SIDE));
        pHull->Add({pt.x - cell.nWidth, pt.y - Px()(1), pt.x + nCount * nWide + cell.nWidth,
                    pt.y + cell.nHeight + cell.nHeight / 4 + Px()(1)});
    }
}

bool CBarMeter::HasBar() const
{
    return !::IsRectEmpty(&m_rcBar) && HasRange() && HasTicks();
}

int CBarMeter::FillTo(HDC hdc, double fValue)
{
    const RECT rcColumn = Column();
    if (!m_hRegion || ::IsRectEmpty(&rcColumn) || !HasBar()) return 0;
    const BarRule rule{static_cast<double>(GetMin()),
                       static_cast<double>(GetMax()),
                       static_cast<double>(GetBaseValue()),
                       GetUseBaseValue() != 0,
                       GetReverse() != 0,
                       GetFillOnly() != 0};
    return PaintParts(hdc, SplitBar(rule, fValue));
}

int CBarMeter::PaintParts(HDC hdc, const BarParts& parts)
{
    PaintEmpty(hdc, parts.emptyAtBase);
    if (parts.filled.bThere)
        CBarFill(Segment(parts.filled.fFrom, parts.filled.fTo), m_nBarStyle, m_clrBack, m_clrBar,
                 Px())
            .Draw(hdc, m_hRegion);
    PaintEmpty(hdc, parts.emptyAtValue);
    return 1;
}

void CBarMeter::PaintEmpty(HDC hdc, const BarPart& part) const
{
    if (!part.bThere) return;
    CBarFill(Segment(part.fFrom, part.fTo), DRAFT_SOLID_TEXT, m_clrBack, m_clrEmpty, Px())
        .Draw(hdc, m_hRegion);
}

int CBarMeter::DrawFill(HDC hdc, float fValue, uint32_t)
{
    return FillTo(hdc, fValue);
}

int CBarMeter::DrawFill(HDC hdc, int32_t nValue, uint32_t)
{
    return FillTo(hdc, nValue);
}

int CBarMeter::DrawPin(HDC, float, uint32_t)
{
    return 0;
}

int CBarMeter::DrawPin(HDC, int32_t, uint32_t)
{
    return 0;
}

int CBarMeter::ErasePin(HDC, float, uint32_t)
{
    return 0;
}

int CBarMeter::ErasePin(HDC, int32_t, uint32_t)
{
    return 0;
}

int CBarMeter::DrawAlarmZones(HDC)
{
    return 0;
}

int CBarMeter::DrawFrame(HDC)
{
    return 0;
}

int CBarMeter::DrawValueText(HDC, float)
{
    return 0;
}

int CBarMeter::DrawValueText(HDC, int32_t)
{
    return 0;
}

RECT CBarMeter::FaceBox() const
{
    RECT rc{};
    if (!m_hRegion) return rc;
    if (::GetRgnBox(m_hRegion, &rc) != ERROR) return ::IsRectEmpty(&rc) ? RECT{} : rc;
    NoteRefusal();
    return RECT{};
}

CUpBarMeter::CUpBarMeter(HRGN hRegion, const RECT& rcBar) noexcept
    : CBarMeter(hRegion, rcBar), m_rcColumn(ColumnNow())
{
}

RECT CUpBarMeter::ColumnNow() const
{
    const RECT rc = FaceBox();
    return ::IsRectEmpty(&rc) ? RECT{} : RECT{rc.left, BarRect().top, rc.right, BarRect().bottom};
}

// Asked for once more where the system would not tell it when the bar was made.
RECT CUpBarMeter::Column() const
{
    return ::IsRectEmpty(&m_rcColumn) ? ColumnNow() : m_rcColumn;
}

RECT CUpBarMeter::ColumnIn(const RECT& rcFace) const
{
    return {rcFace.left, BarRect().top, rcFace.right, BarRect().bottom};
}

RECT CUpBarMeter::Segment(double fFrom, double fTo) const
{
    const RECT rcColumn = Column();
    return {rcColumn.left, VerticalPosition(Scale(), std::max(fFrom, fTo)), rcColumn.right,
            VerticalPosition(Scale(), std::min(fFrom, fTo))};
}

int32_t CUpBarMeter::ScaleBreadth() const
{
    return WidthOf(BarRect());
}

POINT CUpBarMeter::BesideTick(uint32_t nTick, int32_t nFromSide) const
{
    return {WrapSub(BarRect().right, nFromSide),
            VerticalTick(BarRect(), nTick, DrawnTicks(), Px())};
}

// Right-aligned against the ticks. A font that makes a number wider than its cells does not bring
// it over axis and ticks.
POINT CUpBarMeter::LabelPlace(uint32_t nTick, SIZE text, int32_t nWidth, int32_t nFromSide) const
{
    const POINT pt = BesideTick(nTick, nFromSide);
    return {WrapSub(pt.x, std::max<int32_t>(text.cx, nWidth)), WrapSub(pt.y, text.cy / 2)};
}

CBarMeter::Line CUpBarMeter::LineAlong(int32_t nFromSide) const
{
    const int32_t nX = WrapSub(BarRect().right, nFromSide);
    return {{nX, BarRect().top}, {nX, BarRect().bottom}};
}

CLongBarMeter::CLongBarMeter(HRGN hRegion, const RECT& rcBar) noexcept : CBarMeter(hRegion, rcBar)
{
}

RECT CLongBarMeter::Column() const
{
    return BarRect();
}

RECT CLongBarMeter::ColumnIn(const RECT&) const
{
    return BarRect();
}

RECT CLongBarMeter::Segment(double fFrom, double fTo) const
{
    const RECT rcColumn = Column();
    return {HorizontalPosition(Scale(), std::min(fFrom, fTo)), rcColumn.top,
            HorizontalPosition(Scale(), std::max(fFrom, fTo)), rcColumn.bottom};
}

int32_t CLongBarMeter::ScaleBreadth() const
{
    return HeightOf(BarRect());
}

POINT CLongBarMeter::BesideTick(uint32_t nTick, int32_t nFromSide) const
{
    return {HorizontalTick(BarRect(), nTick, DrawnTicks(), Px()),
            WrapSub(BarRect().bottom, nFromSide)};
}

// Centred on the tick, above the lower side.
POINT CLongBarMeter::LabelPlace(uint32_t nTick, SIZE text, int32_t, int32_t nFromSide) const
{
    const POINT pt = BesideTick(nTick, nFromSide);
    return {WrapSub(pt.x, text.cx / 2), WrapSub(pt.y, text.cy)};
}

CBarMeter::Line CLongBarMeter::LineAlong(int32_t nFromSide) const
{
    const int32_t nY = WrapSub(BarRect().bottom, nFromSide);
    return {{BarRect().left, nY}, {BarRect().right, nY}};
}
