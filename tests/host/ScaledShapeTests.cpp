// Shapes at another pixel scale against their geometry, worked out here; and each element, style
// and keep mode against the plain picture enlarged.
#include "tests/support/Scaled.h"

#include <cmath>

namespace {

constexpr int SIDE = 60;
constexpr COLORREF WHITE = 0xFFFFFF;
constexpr COLORREF PEN = 0x3366CC;
constexpr COLORREF FILL = 0x228844;
constexpr double TURN = 6.283185307179586;
constexpr double REACH = 2; // pixels of the surface

struct Point {
    double x;
    double y;
};
using Curve = std::vector<Point>; // from point to point

Point OnEllipse(const RECT& rc, double fAngle) // from the right, counter-clockwise
{
    return {(rc.left + rc.right) / 2.0 + (rc.right - rc.left) / 2.0 * std::cos(fAngle),
            (rc.top + rc.bottom) / 2.0 - (rc.bottom - rc.top) / 2.0 * std::sin(fAngle)};
}

double AngleTo(const RECT& rc, POINT pt) // the ellipse seen as a circle
{
    const double x = (pt.x - (rc.left + rc.right) / 2.0) / (rc.right - rc.left);
    const double y = ((rc.top + rc.bottom) / 2.0 - pt.y) / (rc.bottom - rc.top);
    return std::atan2(y, x);
}

void AddArc(Curve* pCurve, const RECT& rc, double fFrom, double fTo)
{
    constexpr int STEPS = 72; // off a circle by a tenth of a pixel
    for (int n = 0; n <= STEPS; ++n)
        pCurve->push_back(OnEllipse(rc, fFrom + (fTo - fFrom) * n / STEPS));
}

Curve Ellipse(const RECT& rc)
{
    Curve curve;
    AddArc(&curve, rc, 0, TURN);
    curve.back() = curve.front();
    return curve;
}

Curve Part(const RECT& rc, POINT ptFrom, POINT ptTo)
{
    const double fFrom = AngleTo(rc, ptFrom);
    double fTo = AngleTo(rc, ptTo);
    if (fTo <= fFrom) fTo += TURN;
    Curve curve;
    AddArc(&curve, rc, fFrom, fTo);
    return curve;
}

Curve Closed(Curve curve)
{
    curve.push_back(curve.front());
    return curve;
}

double DistanceTo(Point p, Point a, Point b)
{
    const double x = b.x - a.x;
    const double y = b.y - a.y;
    const double fLength = x * x + y * y;
    const double f =
        fLength > 0 ? std::clamp(((p.x - a.x) * x + (p.y - a.y) * y) / fLength, 0.0, 1.0) : 0.0;
    return std::hypot(a.x + f * x - p.x, a.y + f * y - p.y);
}

double DistanceTo(const Curve& curve, Point p)
{
    double fLeast = 1e9;
    for (std::size_t n = 1; n < curve.size(); ++n)
        fLeast = std::min(fLeast, DistanceTo(p, curve[n - 1], curve[n]));
    return fLeast;
}

bool IsInside(const Curve& curve, Point p)
{
    bool bInside = false;
    for (std::size_t n = 1; n < curve.size(); ++n) {
        const Point& a = curve[n - 1];
        const Point& b = curve[n];
        if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
            bInside = !bInside;
    }
    return bInside;
}

// A shape as the system draws it: where the middle of its outline runs, in units of the drawing.
struct Shape {
    const char* pszTag;
    Curve (*pfnMake)(LONG nLess); // nLess: how much before the far sides it ends
    bool bBox;                    // its outline runs over the last pixels of a rectangle
    bool bArea;
};

const Shape g_shapes[] = {
    {"<ellipse crd='10 12 50 37'",
     [](LONG n) {
         return Ellipse({10, 12, 50 - n, 37 - n});
     },
     true, true},
    {"<circle crd='30 28 20'",
     [](LONG n) {
         return Ellipse({10, 8, 50 - n, 48 - n});
     },
     true, true},
    {"<arc crd='10 12 50 47 60 10 0 20'",
     [](LONG n) {
         return Part({10, 12, 50 - n, 47 - n}, {60, 10}, {0, 20});
     },
     true, false},
    {"<chord crd='10 12 50 47 60 10 0 40'",
     [](LONG n) {
         return Closed(Part({10, 12, 50 - n, 47 - n}, {60, 10}, {0, 40}));
     },
     true, true},
    {"<chord crd='10 12 50 47 60 10 0 20'",
     [](LONG n) {
         return Closed(Part({10, 12, 50 - n, 47 - n}, {60, 10}, {0, 20}));
     },
     true, true},
    {"<chord crd='10 12 50 47 0 20 60 40'", // more than half of the ellipse
     [](LONG n) {
         return Closed(Part({10, 12, 50 - n, 47 - n}, {0, 20}, {60, 40}));
     },
     true, true},
    {"<pie crd='10 12 50 47 20 60 60 30'",
     [](LONG n) {
         Curve curve = Part({10, 12, 50 - n, 47 - n}, {20, 60}, {60, 30});
         curve.push_back({(60 - n) / 2.0, (59 - n) / 2.0});
         return Closed(curve);
     },
     true, true},
    {"<pie crd='10 12 50 47 60 30 20 60'",
     [](LONG n) {
         Curve curve = Part({10, 12, 50 - n, 47 - n}, {60, 30}, {20, 60});
         curve.push_back({(60 - n) / 2.0, (59 - n) / 2.0});
         return Closed(curve);
     },
     true, true},
    {"<arc crd='10 12 50 47 0 20 60 40'",
     [](LONG n) {
         return Part({10, 12, 50 - n, 47 - n}, {0, 20}, {60, 40});
     },
     true, false},
    {"<pie crd='10 12 50 47 60 10 0 20'",
     [](LONG n) {
         Curve curve = Part({10, 12, 50 - n, 47 - n}, {60, 10}, {0, 20});
         curve.push_back({(60 - n) / 2.0, (59 - n) / 2.0});
         return Closed(curve);
     },
     true, true},
    {"<rndrect crd='10 12 50 47 12 16'",
     [](LONG n) {
         const LONG nRight = 50 - n, nBottom = 47 - n;
         Curve curve;
         AddArc(&curve, {nRight - 12, 12, nRight, 28}, 0, TURN / 4);
         AddArc(&curve, {10, 12, 22, 28}, TURN / 4, TURN / 2);
         AddArc(&curve, {10, nBottom - 16, 22, nBottom}, TURN / 2, TURN * 3 / 4);
         AddArc(&curve, {nRight - 12, nBottom - 16, nRight, nBottom}, TURN * 3 / 4, TURN);
         return Closed(curve);
     },
     true, true},
    {"<polygon crd='5 5 50 20 30 50'",
     [](LONG) {
         return Closed({{5, 5}, {50, 20}, {30, 50}});
     },
     false, true},
    {"<polyline crd='5 5 40 15 30 50'",
     [](LONG) {
         return Curve{{5, 5}, {40, 15}, {30, 50}};
     },
     false, false},
    {"<line crd='5 7 50 33'",
     [](LONG) {
         return Curve{{5, 7}, {50, 33}};
     },
     false, false}};

// A pen covers as many pixels to both sides of its pixel, and of an even width one more before it.
// Without one the fill goes on to the far sides of its box.
Curve Enlarged(const Shape& shape, int nWidth, int nTimes)
{
    Curve curve = shape.pfnMake(shape.bBox && nWidth ? 1 : 0);
    const double fMiddle = nWidth % 2 != 0 ? 0.5 : 0;
    for (Point& p : curve) p = {(p.x + fMiddle) * nTimes, (p.y + fMiddle) * nTimes};
    return curve;
}

std::string Body(const Shape& shape, int nWidth, bool bFill)
{
    return std::string(shape.pszTag) + " clr='0x3366cc' fg='0x99ccee' bg='0x228844' lnwid='" +
           std::to_string(nWidth) + "' style='" + (bFill ? "0x1" : "0x0") + "'/>";
}

// What a picture of a shape has to be, pixel by pixel.
class CRule {
public:
    CRule(const Shape& shape, int nWidth, bool bFill, int nTimes)
        : m_curve(Enlarged(shape, nWidth, nTimes)), m_fHalf(nWidth * nTimes / 2.0),
          m_bFill(bFill && shape.bArea)
    {
    }
    double Away(Point p) const { return DistanceTo(m_curve, p); }
    COLORREF Off(Point p) const { return m_bFill && IsInside(m_curve, p) ? FILL : WHITE; }
    bool IsFarFromPen(double fAway) const { return fAway > m_fHalf + REACH; }
    bool Allows(Point p, COLORREF clr) const
    {
        const double fAway = Away(p);
        if (clr == PEN) return m_fHalf > 0 && !IsFarFromPen(fAway);
        if (fAway < m_fHalf - REACH) return false;
        // Where the whole of the outline may lie to the other side.
        if (fAway < REACH - m_fHalf) return clr == FILL || clr == WHITE;
        return clr == Off(p);
    }

private:
    Curve m_curve;
    double m_fHalf;
    bool m_bFill;
};

constexpr int BLOCK =
    12; // of pixels that one look tells most of; all sizes are whole numbers of it

std::string OffRule(const CPixels& drawn, const CRule& rule, int nLeft, int nTop)
{
    const Point middle{nLeft + BLOCK / 2.0, nTop + BLOCK / 2.0};
    const bool bFar = rule.IsFarFromPen(rule.Away(middle) - BLOCK);
    const COLORREF clrOff = rule.Off(middle);
    for (int y = nTop; y < nTop + BLOCK; ++y)
        for (int x = nLeft; x < nLeft + BLOCK; ++x) {
            const COLORREF clr = drawn.At(x, y);
            const Point p{x + 0.5, y + 0.5};
            if (bFar ? clr == clrOff : rule.Allows(p, clr)) continue;
            return PlaceText(drawn.Width() / SIDE, x, y, clr) + ", " +
                   std::to_string(rule.Away(p)) + " from the middle of the outline: ";
        }
    return "";
}

std::string OffGeometry(const Shape& shape, int nWidth, bool bFill, int nTimes)
{
    const std::string body = Body(shape, nWidth, bFill);
    CScaled scaled(body, SIDE);
    const CPixels drawn = scaled.Draw(nTimes);
    const CRule rule(shape, nWidth, bFill, nTimes);
    for (int y = 0; y < drawn.Height(); y += BLOCK)
        for (int x = 0; x < drawn.Width(); x += BLOCK) {
            const std::string off = OffRule(drawn, rule, x, y);
            if (!off.empty()) return off + body;
        }
    return "";
}

} // namespace

TEST(ScaledShapes, OutlinesAreWithinTwoPixelsOfTheGeometryEnlarged)
{
    for (const Shape& shape : g_shapes)
        for (const int nWidth : {1, 2, 3, 6})
            for (const bool bFill : {false, true})
                for (const int nTimes : SCALES)
                    EXPECT_EQ("", OffGeometry(shape, nWidth, bFill, nTimes));
}

TEST(ScaledShapes, FillsWithoutOutlineAreWithinTwoPixelsOfTheGeometryEnlarged)
{
    for (const Shape& shape : g_shapes) {
        if (!shape.bArea) continue;
        for (const int nTimes : SCALES) EXPECT_EQ("", OffGeometry(shape, 0, true, nTimes));
    }
}
