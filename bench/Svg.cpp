#include "bench/Svg.h"

#include <cmath>
#include <cstdarg>
#include <cstdio>

namespace {

constexpr double TURN = 6.283185307179586;
constexpr double BASELINE = 0.86; // of the height of letters, from the top

std::string Print(const char* pszFormat, ...)
{
    char szText[512];
    va_list arguments;
    va_start(arguments, pszFormat);
    std::vsnprintf(szText, sizeof szText, pszFormat, arguments);
    va_end(arguments);
    return szText;
}

// Colours have red in the lowest byte.
std::string Color(DWORD clr)
{
    return Print("#%02x%02x%02x", static_cast<unsigned>(clr & 0xFF),
                 static_cast<unsigned>(clr >> 8 & 0xFF), static_cast<unsigned>(clr >> 16 & 0xFF));
}

std::string PointsOf(const Shape& shape)
{
    std::string points;
    for (int i = 0; i < shape.n[0]; ++i)
        points += Print("%d,%d ", shape.n[1 + 2 * i], shape.n[2 + 2 * i]);
    return points;
}

// Of the ellipse in a box, whose last pixels are one before its right and bottom side.
class CCurve {
public:
    explicit CCurve(const int* n)
        : m_fX((n[0] + n[2] - 1) / 2.0), m_fY((n[1] + n[3] - 1) / 2.0),
          m_fRx((n[2] - n[0] - 1) / 2.0), m_fRy((n[3] - n[1] - 1) / 2.0),
          m_fFrom(AngleOf(n[4], n[5])), m_fTo(AngleOf(n[6], n[7]))
    {
    }
    // Against the clock from one ray to the other.
    [[nodiscard]] std::string Arc() const
    {
        const double fSweep = std::fmod(m_fFrom - m_fTo + TURN, TURN);
        return "M" + PointAt(m_fFrom) +
               Print("A%.3f %.3f 0 %d 0 ", m_fRx, m_fRy, fSweep > TURN / 2) + PointAt(m_fTo);
    }
    [[nodiscard]] std::string Middle() const { return Print("%.3f %.3f", m_fX, m_fY); }

private:
    [[nodiscard]] double AngleOf(int nX, int nY) const
    {
        return std::atan2((nY - m_fY) / m_fRy, (nX - m_fX) / m_fRx);
    }
    [[nodiscard]] std::string PointAt(double f) const
    {
        return Print("%.3f %.3f ", m_fX + m_fRx * std::cos(f), m_fY + m_fRy * std::sin(f));
    }

    double m_fX, m_fY, m_fRx, m_fRy, m_fFrom, m_fTo;
};

std::string Figure(const Shape& shape)
{
    const int* n = shape.n;
    const auto box = [n](const char* pszMore) {
        return Print("<rect x='%d' y='%d' width='%d' height='%d'%s", n[0], n[1], n[2] - n[0] - 1,
                     n[3] - n[1] - 1, pszMore);
    };
    switch (shape.nType) {
    case QEL_TYPE_RECT:
        return box("");
    case QEL_TYPE_ROUNDRECT:
        return box(" rx='3' ry='3'");
    case QEL_TYPE_ELLIPSE:
        return Print("<ellipse cx='%.1f' cy='%.1f' rx='%.1f' ry='%.1f'", (n[0] + n[2] - 1) / 2.0,
                     (n[1] + n[3] - 1) / 2.0, (n[2] - n[0] - 1) / 2.0, (n[3] - n[1] - 1) / 2.0);
    case QEL_TYPE_CIRCLE:
        return Print("<circle cx='%.1f' cy='%.1f' r='%.1f'", n[0] - 0.5, n[1] - 0.5, n[2] - 0.5);
    case QEL_TYPE_POLYLINE:
        return "<polyline points='" + PointsOf(shape) + "'";
    case QEL_TYPE_POLYGON:
        return "<polygon fill-rule='evenodd' points='" + PointsOf(shape) + "'";
    case QEL_TYPE_ARC:
        return "<path d='" + CCurve(n).Arc() + "'";
    case QEL_TYPE_CHORD:
        return "<path d='" + CCurve(n).Arc() + "Z'";
    case QEL_TYPE_PIE:
        return "<path d='" + CCurve(n).Arc() + "L" + CCurve(n).Middle() + "Z'";
    default:
        return Print("<line x1='%d' y1='%d' x2='%d' y2='%d'", n[0], n[1], n[2], n[3]);
    }
}

// In the height that its rectangle has steps for.
std::string Label(const Shape& shape)
{
    const int nRoom = shape.n[3] - shape.n[1];
    const int nHeight = nRoom < 12 ? 12 : nRoom / 12 * 12;
    return Print("<text x='%d' y='%.1f' font-size='%d' fill='", shape.n[0],
                 shape.n[1] + nHeight * BASELINE, nHeight) +
           Color(shape.clrA) + "'>" + shape.text + "</text>\n";
}

std::string Element(const Shape& shape)
{
    if (shape.nType == QEL_TYPE_TEXT) return Label(shape);
    const bool bFilled = shape.nStyle & QEL_STYLE_FILL;
    return Figure(shape) + " fill='" + (bFilled ? Color(shape.clrB) : "none") + "' stroke='" +
           Color(shape.clrPen) + "'/>\n";
}

} // namespace

std::string SvgText(const std::vector<Shape>& shapes, const char* pszFace)
{
    std::string text =
        Print("<svg xmlns='http://www.w3.org/2000/svg' width='%ld' height='%ld' "
              "viewBox='0 0 %ld %ld'>\n<g transform='translate(0.5 0.5)' font-family='%s'>\n",
              SCENE_SIZE.cx, SCENE_SIZE.cy, SCENE_SIZE.cx, SCENE_SIZE.cy, pszFace);
    for (const Shape& shape : shapes) text += Element(shape);
    return text + "</g>\n</svg>\n";
}
