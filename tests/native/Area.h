// A set of pixels as a list of rectangles that do not overlap: what the stand-in for GDI keeps as a
// region. Figures are kept in a limited number of bands, and a list that grows too long becomes its
// bounding box, so that no coordinates cost time or memory.
#pragma once

#include <windows.h>

#include <span>
#include <string>
#include <vector>

class CArea {
public:
    static constexpr std::size_t MAX_RECTS = 600;
    static constexpr int MAX_BANDS = 48;

    CArea() = default;
    static CArea Rect(RECT rc); // corners in any order
    static CArea Ellipse(RECT rc);
    static CArea RoundRect(RECT rc, int nWidth, int nHeight);
    static CArea Polygon(std::span<const POINT> points, bool bWinding);
    static CArea List(std::span<const RECT> rects); // of rectangles that do not overlap

    [[nodiscard]] bool IsEmpty() const { return m_rects.empty(); }
    // Whether it never grew too long, and so is no bounding box of what it should be.
    [[nodiscard]] bool IsExact() const { return m_bExact; }
    [[nodiscard]] long long Count() const; // of its pixels
    [[nodiscard]] bool IsRect() const { return m_rects.size() == 1; }
    [[nodiscard]] const std::vector<RECT>& Rects() const { return m_rects; }
    [[nodiscard]] RECT Box() const; // all zeros when empty
    [[nodiscard]] bool Contains(int x, int y) const;
    [[nodiscard]] bool operator==(const CArea& other) const; // the same pixels
    [[nodiscard]] std::string Text() const;

    [[nodiscard]] CArea And(const CArea& other) const;
    [[nodiscard]] CArea Or(const CArea& other) const;
    [[nodiscard]] CArea Minus(const CArea& other) const;
    [[nodiscard]] CArea Xor(const CArea& other) const;
    void Offset(int dx, int dy);

private:
    void Add(long long nLeft, long long nTop, long long nRight, long long nBottom);
    void Limit();

    std::vector<RECT> m_rects;
    bool m_bExact = true;
};
