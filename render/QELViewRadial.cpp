#include "render/QELViewRadial.h"

#include "base/Block.h"
#include "render/Mapping.h"
#include "render/OutlineProbe.h"
#include "render/QELRotate.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int32_t BOX_WORDS = 4;
constexpr int32_t ALL_WORDS = 8;       // the box and the two points, x and y by turns
constexpr LONG MAX_CANVAS = 16384;     // pixels a side: 32 MB in black and white
constexpr LONG CHEAP_CANVAS = 1 << 22; // pixels; up to here the whole is filled whatever shows
constexpr LONG LEAST_SIDE = 16;        // of an ellipse whose parts are told from the whole
constexpr LONG MOST_FLAT = 4;          // times as long as high
constexpr double MAYBE_ONE = 4;        // pixels between ends that may be one to the system
constexpr int32_t FINER = 4;           // pixels, by which rays of another scale meet elsewhere
constexpr LONG STRIP = 16;             // pixels to both sides of where a figure should end

} // namespace

int CQELViewRadial::MapFigure(const QelRect& rcQel, uint32_t nFlags, DeviceFigure* pOut) const
{
    const auto stretch = [&](int32_t nWord) -> LONG {
        const bool bAcross = nWord % 2 == 0;
        const int32_t nRef = bAcross ? RefW() : RefH();
        const int32_t nExtent = bAcross ? WidthOf(rcQel) : HeightOf(rcQel);
        const int32_t nOrigin = bAcross ? rcQel.left : rcQel.top;
        if (nRef < 1 && CollapsesToEdge()) return rcQel.px.Sampled(nOrigin);
        if (nRef < 1 && nWord < BOX_WORDS) return 0;
        return rcQel.px.Sampled(Stretch(Words()[nWord], nExtent, nRef, nOrigin));
    };
    pOut->rcBox = {stretch(0), stretch(1), stretch(2), stretch(3)};
    pOut->pts[0] = {stretch(4), stretch(5)};
    pOut->pts[1] = {stretch(6), stretch(7)};
    pOut->nPoints = 2;
    if (IsPressed(nFlags)) {
        ShiftPressed(&pOut->rcBox, rcQel);
        for (int n = 0; n < 2; ++n) { // the points always move
            pOut->pts[n].x = WrapAdd(pOut->pts[n].x, rcQel.px(PRESSED_SHIFT));
            pOut->pts[n].y = WrapAdd(pOut->pts[n].y, rcQel.px(PRESSED_SHIFT));
        }
    }
    return 1;
}

int CQELViewRadial::Rotate(POINT ptCentre, int32_t nAngle)
{
    const int32_t nTurn = QuarterTurn(nAngle);
    const CQELRotate turn(ptCentre, WrapSub(nTurn, Rotation()));
    int32_t* n = Words();
    RECT rc{n[0], n[1], n[2], n[3]};
    POINT pt1{n[4], n[5]};
    POINT pt2{n[6], n[7]};
    turn.RotateRect(&rc);
    turn.RotateTwo(&pt1, &pt2);
    const LONG turned[ALL_WORDS] = {rc.left, rc.top, rc.right, rc.bottom,
                                    pt1.x,   pt1.y,  pt2.x,    pt2.y};
    for (int32_t i = 0; i < ALL_WORDS; ++i) n[i] = turned[i];
    KeepInside();
    SetRotation(nTurn);
    return 1;
}

int CQELViewRadial::MoveX(int32_t nDx)
{
    Shift(nDx, 0);
    KeepInside();
    return 1;
}

int CQELViewRadial::MoveY(int32_t nDy)
{
    Shift(0, nDy);
    KeepInside();
    return 1;
}

void CQELViewRadial::Shift(int32_t nDx, int32_t nDy)
{
    for (int32_t i = 0; i < ALL_WORDS; ++i)
        Words()[i] = WrapAdd(Words()[i], i % 2 == 0 ? nDx : nDy);
}

// The figure slides as one, by what its box and points together need.
void CQELViewRadial::KeepInside()
{
    if (!StaysInside()) return;
    RECT rc{Words()[0], Words()[1], Words()[0], Words()[1]};
    for (int32_t i = 2; i < ALL_WORDS; i += 2) {
        const int32_t nX = Words()[i];
        const int32_t nY = Words()[i + 1];
        rc = {nX < rc.left ? nX : rc.left, nY < rc.top ? nY : rc.top, nX > rc.right ? nX : rc.right,
              nY > rc.bottom ? nY : rc.bottom};
    }
    Shift(SlideInside(rc.left, rc.right, RefW()), SlideInside(rc.top, rc.bottom, RefH()));
}

namespace {

constexpr double PI = 3.14159265358979323846;

// The middle of an ellipse and half of its extents, and where rays from the middle meet it: as
// angles of the circle that it is a picture of, counter-clockwise.
struct Ellipse {
    explicit Ellipse(const RECT& rc)
        : fX((static_cast<double>(rc.left) + rc.right) / 2),
          fY((static_cast<double>(rc.top) + rc.bottom) / 2),
          fRadiusX((static_cast<double>(rc.right) - rc.left) / 2),
          fRadiusY((static_cast<double>(rc.bottom) - rc.top) / 2)
    {
    }
    [[nodiscard]] double AngleTo(POINT pt) const
    {
        return std::atan2((fY - pt.y) / fRadiusY, (pt.x - fX) / fRadiusX);
    }

    double fX, fY, fRadiusX, fRadiusY;
};

// The box of points with fractions.
struct Extent {
    void Add(double fX, double fY)
    {
        fLeft = std::min(fLeft, fX);
        fTop = std::min(fTop, fY);
        fRight = std::max(fRight, fX);
        fBottom = std::max(fBottom, fY);
    }

    double fLeft = 1e9, fTop = 1e9, fRight = -1e9, fBottom = -1e9;
};

// How far a sector or a segment of an ellipse reaches, by the rule and not to the pixel.
Extent ExtentOf(const RECT& rc, POINT ptStart, POINT ptEnd, bool bWithMiddle)
{
    const Ellipse ellipse(rc);
    Extent extent;
    const auto add = [&](double fAngle) {
        extent.Add(ellipse.fX + ellipse.fRadiusX * std::cos(fAngle),
                   ellipse.fY - ellipse.fRadiusY * std::sin(fAngle));
    };
    const double fStart = ellipse.AngleTo(ptStart);
    double fEnd = ellipse.AngleTo(ptEnd);
    if (fEnd <= fStart) fEnd += 2 * PI; // one ray for both ends is the whole ellipse
    add(fStart);
    add(fEnd);
    for (int n = -2; n <= 8; ++n) // the ends of the axes
        if (n * PI / 2 > fStart && n * PI / 2 < fEnd) add(n * PI / 2);
    if (bWithMiddle) extent.Add(ellipse.fX, ellipse.fY);
    return extent;
}

double AngleTo(const RECT& rc, POINT pt)
{
    return Ellipse(rc).AngleTo(pt);
}

bool AreNear(ProbedEllipse::Point pt1, ProbedEllipse::Point pt2, double fDistance)
{
    return std::hypot(pt1.fX - pt2.fX, pt1.fY - pt2.fY) < fDistance;
}

void Side(COutlineProbe* pProbe, ProbedEllipse::Point pt1, ProbedEllipse::Point pt2)
{
    pProbe->Line(pt1.fX, pt1.fY, pt2.fX, pt2.fY);
}

LONG Whole(double f)
{
    return static_cast<LONG>(std::floor(f));
}

} // namespace

// The part that there is of the ellipse. Where the system lets a ray meet a flat one, or one of few
// pixels, is its own affair.
RECT CQELViewRadial::PaintedBox(const DeviceFigure& figure, bool bFace) const
{
    const RECT rc = NormalizedRect(figure.rcBox);
    const int64_t nWidth = int64_t{rc.right} - rc.left;
    const int64_t nHeight = int64_t{rc.bottom} - rc.top;
    if (std::min(nWidth, nHeight) < LEAST_SIDE || nWidth > MOST_FLAT * nHeight ||
        nHeight > MOST_FLAT * nWidth || !IsWithinReach(rc))
        return CQELViewShape::PaintedBox(figure, bFace);
    const POINT& ptStart = figure.pts[0];
    const POINT& ptEnd = figure.pts[1];
    const ProbedEllipse ellipse = EllipseIn(rc);
    if (AreNear(ellipse.At(AngleTo(rc, ptStart)), ellipse.At(AngleTo(rc, ptEnd)), MAYBE_ONE))
        return CQELViewShape::PaintedBox(figure, bFace);
    const Extent extent = ExtentOf(rc, ptStart, ptEnd, ReachesMiddle());
    return GrownRect({Whole(extent.fLeft), Whole(extent.fTop), Whole(extent.fRight) + 1,
                      Whole(extent.fBottom) + 1},
                     PaintReach(figure, bFace) + (figure.px.IsPlain() ? 0 : figure.px(FINER)));
}

// The arc, and for the filled figures the sides that close it.
void CQELViewRadial::Trace(const DeviceFigure& figure, COutlineProbe* pProbe) const
{
    const RECT rc = NormalizedRect(DrawnBox(figure));
    const ProbedEllipse ellipse = EllipseIn(rc);
    const double fStart = AngleTo(rc, figure.pts[0]);
    double fEnd = AngleTo(rc, figure.pts[1]);
    if (fEnd <= fStart) fEnd += 2 * PI;
    // Two ends on one pixel are the whole ellipse.
    if (AreNear(ellipse.At(fStart), ellipse.At(fEnd), 1)) fEnd = fStart + 2 * PI;
    pProbe->Arc(ellipse, fStart, fEnd);
    if (IsOutlineOnly()) return;
    const ProbedEllipse::Point ptMiddle{ellipse.fX, ellipse.fY};
    if (!ReachesMiddle()) return Side(pProbe, ellipse.At(fStart), ellipse.At(fEnd));
    Side(pProbe, ellipse.At(fStart), ptMiddle);
    Side(pProbe, ptMiddle, ellipse.At(fEnd));
}

HRGN CQELViewRadial::MakeFilledRegion(const QelRect& rcQel) const
{
    DeviceFigure figure{};
    MakeFigure(rcQel, 0, &figure);
    const RECT rc = NormalizedRect(figure.rcBox);
    const LONG nWidth = WidthOf(rc);
    const LONG nHeight = HeightOf(rc);
    if (nWidth < 1 || nHeight < 1 || nWidth > MAX_CANVAS || nHeight > MAX_CANVAS) return nullptr;
    return FillOnCanvas(figure, rc, rcQel);
}

HRGN CQELViewRadial::MakeShownRegion(const QelRect& rcQel, const RECT& rcShown, bool* pbPart) const
{
    DeviceFigure figure{};
    MakeFigure(rcQel, 0, &figure);
    const RECT rc = NormalizedRect(figure.rcBox);
    const LONG nWidth = WidthOf(rc);
    const LONG nHeight = HeightOf(rc);
    RECT rcWhole{};
    if (nWidth < 1 || nHeight < 1 || nWidth > MAX_CANVAS || nHeight > MAX_CANVAS ||
        nWidth * nHeight <= CHEAP_CANVAS || !FindFilledBox(figure, rc, rcQel, &rcWhole))
        return MakeRegion(rcQel);
    *pbPart = true;
    return FillShownOnCanvas(figure, rcWhole, rcShown, rcQel);
}

// Of a large figure only strips are filled, along the sides of the box that it has by the rule.
// False when one of them does not hold the figure's side: then the rule is not the system's.
bool CQELViewRadial::FindFilledBox(const DeviceFigure& figure, const RECT& rc, const QelRect& rcQel,
                                   RECT* prcOut) const
{
    const Extent extent = ExtentOf(rc, figure.pts[0], figure.pts[1], ReachesMiddle());
    const LONG nLeft = std::max(Whole(extent.fLeft) - STRIP, rc.left);
    const LONG nTop = std::max(Whole(extent.fTop) - STRIP, rc.top);
    const LONG nRight = std::min(Whole(extent.fRight) + STRIP, rc.right);
    const LONG nBottom = std::min(Whole(extent.fBottom) + STRIP, rc.bottom);
    RECT left{};
    RECT top{};
    RECT right{};
    RECT bottom{};
    if (!FindOnCanvas(figure, {nLeft, rc.top, nLeft + 2 * STRIP, rc.bottom}, rcQel, &left) ||
        !FindOnCanvas(figure, {rc.left, nTop, rc.right, nTop + 2 * STRIP}, rcQel, &top) ||
        !FindOnCanvas(figure, {nRight - 2 * STRIP, rc.top, nRight, rc.bottom}, rcQel, &right) ||
        !FindOnCanvas(figure, {rc.left, nBottom - 2 * STRIP, rc.right, nBottom}, rcQel, &bottom))
        return false;
    *prcOut = {left.left, top.top, right.right, bottom.bottom};
    return (left.left > nLeft || nLeft == rc.left) && (top.top > nTop || nTop == rc.top) &&
           (right.right < nRight || nRight == rc.right) &&
           (bottom.bottom < nBottom || nBottom == rc.bottom);
}
