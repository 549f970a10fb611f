#include "tests/native/Area.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>

namespace {

int Clamp(long long n)
{
    return static_cast<int>(std::clamp<long long>(n, INT_MIN, INT_MAX));
}

struct Band {
    long long nTop;
    long long nBottom;
    double fCentre;
};

// Rows, or for tall figures strips of rows.
template <class Visit>
void ForEachBand(int nTop, int nBottom, Visit visit)
{
    const long long nHeight = static_cast<long long>(nBottom) - nTop;
    const long long nBands = std::min<long long>(nHeight, CArea::MAX_BANDS);
    for (long long n = 0; n < nBands; ++n) {
        const long long nFrom = nTop + nHeight * n / nBands;
        const long long nTo = nTop + nHeight * (n + 1) / nBands;
        visit(Band{nFrom, nTo, static_cast<double>(nFrom + nTo) / 2});
    }
}

void Normalize(RECT* prc)
{
    if (prc->left > prc->right) std::swap(prc->left, prc->right);
    if (prc->top > prc->bottom) std::swap(prc->top, prc->bottom);
}

// How far in from the side a rounded edge of the given half axes begins at a distance from its end.
double Inset(double fHalfWidth, double fHalfHeight, double fFromEnd)
{
    if (fFromEnd >= fHalfHeight || fHalfHeight <= 0) return 0;
    const double f = 1 - fFromEnd / fHalfHeight;
    return fHalfWidth * (1 - std::sqrt(std::max(0.0, 1 - f * f)));
}

} // namespace

CArea CArea::Rect(RECT rc)
{
    Normalize(&rc);
    CArea area;
    area.Add(rc.left, rc.top, rc.right, rc.bottom);
    return area;
}

CArea CArea::Ellipse(RECT rc)
{
    Normalize(&rc);
    const double fWidth = static_cast<double>(rc.right) - rc.left;
    const double fHeight = static_cast<double>(rc.bottom) - rc.top;
    return RoundRect(rc, Clamp(static_cast<long long>(fWidth)),
                     Clamp(static_cast<long long>(fHeight)));
}

CArea CArea::RoundRect(RECT rc, int nWidth, int nHeight)
{
    Normalize(&rc);
    const double fWidth = static_cast<double>(rc.right) - rc.left;
    const double fHeight = static_cast<double>(rc.bottom) - rc.top;
    const double fHalfWidth = std::min(std::abs(static_cast<double>(nWidth)), fWidth) / 2;
    const double fHalfHeight = std::min(std::abs(static_cast<double>(nHeight)), fHeight) / 2;
    CArea area;
    ForEachBand(rc.top, rc.bottom, [&](const Band& band) {
        const double fFromEnd = std::min(band.fCentre - rc.top, rc.bottom - band.fCentre);
        const auto nIn =
            static_cast<long long>(std::floor(Inset(fHalfWidth, fHalfHeight, fFromEnd)));
        area.Add(rc.left + nIn, band.nTop, rc.right - nIn, band.nBottom);
    });
    return area;
}

CArea CArea::Polygon(std::span<const POINT> points, bool bWinding)
{
    CArea area;
    if (points.size() < 3) return area;
    const auto byY = [](const POINT& a, const POINT& b) { return a.y < b.y; };
    const int nTop = std::min_element(points.begin(), points.end(), byY)->y;
    const int nBottom = std::max_element(points.begin(), points.end(), byY)->y;
    struct Crossing {
        double fX;
        int nTurn;
    };
    std::vector<Crossing> crossings;
    ForEachBand(nTop, nBottom, [&](const Band& band) {
        crossings.clear();
        for (std::size_t n = 0; n < points.size(); ++n) {
            const POINT& a = points[n];
            const POINT& b = points[(n + 1) % points.size()];
            if ((a.y < band.fCentre) == (b.y < band.fCentre)) continue;
            const double fPart = (band.fCentre - a.y) / (static_cast<double>(b.y) - a.y);
            crossings.push_back(
                {a.x + (static_cast<double>(b.x) - a.x) * fPart, a.y < b.y ? 1 : -1});
        }
        std::sort(crossings.begin(), crossings.end(),
                  [](const Crossing& a, const Crossing& b) { return a.fX < b.fX; });
        int nInside = 0;
        for (std::size_t n = 0; n + 1 < crossings.size(); ++n) {
            nInside = bWinding ? nInside + crossings[n].nTurn : 1 - nInside;
            if (nInside)
                area.Add(static_cast<long long>(std::floor(crossings[n].fX)), band.nTop,
                         static_cast<long long>(std::floor(crossings[n + 1].fX)), band.nBottom);
        }
    });
    area.Limit();
    return area;
}

CArea CArea::List(std::span<const RECT> rects)
{
    CArea area;
    if (rects.size() > MAX_RECTS) {
        RECT box = rects[0];
        for (const RECT& rc : rects)
            box = {std::min(box.left, rc.left), std::min(box.top, rc.top),
                   std::max(box.right, rc.right), std::max(box.bottom, rc.bottom)};
        area = Rect(box);
        area.m_bExact = false;
        return area;
    }
    for (const RECT& rc : rects) area.Add(rc.left, rc.top, rc.right, rc.bottom);
    return area;
}

RECT CArea::Box() const
{
    if (m_rects.empty()) return {0, 0, 0, 0};
    RECT box = m_rects[0];
    for (const RECT& rc : m_rects)
        box = {std::min(box.left, rc.left), std::min(box.top, rc.top),
               std::max(box.right, rc.right), std::max(box.bottom, rc.bottom)};
    return box;
}

long long CArea::Count() const
{
    long long nCount = 0;
    for (const RECT& rc : m_rects)
        nCount += (static_cast<long long>(rc.right) - rc.left) *
                  (static_cast<long long>(rc.bottom) - rc.top);
    return nCount;
}

bool CArea::Contains(int x, int y) const
{
    return std::any_of(m_rects.begin(), m_rects.end(), [&](const RECT& rc) {
        return x >= rc.left && x < rc.right && y >= rc.top && y < rc.bottom;
    });
}

bool CArea::operator==(const CArea& other) const
{
    return Minus(other).IsEmpty() && other.Minus(*this).IsEmpty();
}

std::string CArea::Text() const
{
    std::string text;
    for (const RECT& rc : m_rects)
        text += (text.empty() ? "" : " ") + std::to_string(rc.left) + "," + std::to_string(rc.top) +
                "," + std::to_string(rc.right) + "," + std::to_string(rc.bottom);
    return text;
}

CArea CArea::And(const CArea& other) const
{
    CArea area;
    area.m_bExact = m_bExact && other.m_bExact;
    for (const RECT& a : m_rects)
        for (const RECT& b : other.m_rects)
            area.Add(std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                     std::min(a.bottom, b.bottom));
    area.Limit();
    return area;
}

CArea CArea::Minus(const CArea& other) const
{
    std::vector<RECT> left = m_rects;
    bool bExact = m_bExact && other.m_bExact;
    for (const RECT& cut : other.m_rects) {
        CArea next;
        for (const RECT& rc : left) {
            const RECT in{std::max(rc.left, cut.left), std::max(rc.top, cut.top),
                          std::min(rc.right, cut.right), std::min(rc.bottom, cut.bottom)};
            if (in.left >= in.right || in.top >= in.bottom) {
                next.m_rects.push_back(rc);
                continue;
            }
            next.Add(rc.left, rc.top, rc.right, in.top);
            next.Add(rc.left, in.top, in.left, in.bottom);
            next.Add(in.right, in.top, rc.right, in.bottom);
            next.Add(rc.left, in.bottom, rc.right, rc.bottom);
        }
        left.swap(next.m_rects);
        bExact = bExact && left.size() <= MAX_RECTS * 2;
        if (left.size() > MAX_RECTS * 2) break;
    }
    CArea area;
    area.m_bExact = bExact;
    area.m_rects.swap(left);
    area.Limit();
    return area;
}

CArea CArea::Or(const CArea& other) const
{
    CArea area = *this;
    const CArea more = other.Minus(*this);
    area.m_bExact = more.m_bExact;
    area.m_rects.insert(area.m_rects.end(), more.m_rects.begin(), more.m_rects.end());
    area.Limit();
    return area;
}

CArea CArea::Xor(const CArea& other) const
{
    return Minus(other).Or(other.Minus(*this));
}

void CArea::Offset(int dx, int dy)
{
    CArea moved;
    for (const RECT& rc : m_rects)
        moved.Add(static_cast<long long>(rc.left) + dx, static_cast<long long>(rc.top) + dy,
                  static_cast<long long>(rc.right) + dx, static_cast<long long>(rc.bottom) + dy);
    m_rects.swap(moved.m_rects);
}

void CArea::Add(long long nLeft, long long nTop, long long nRight, long long nBottom)
{
    const RECT rc{Clamp(nLeft), Clamp(nTop), Clamp(nRight), Clamp(nBottom)};
    if (rc.left < rc.right && rc.top < rc.bottom) m_rects.push_back(rc);
}

void CArea::Limit()
{
    if (m_rects.size() <= MAX_RECTS) return;
    m_rects = {Box()};
    m_bExact = false;
}
