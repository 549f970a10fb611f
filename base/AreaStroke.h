// Outlines of solid pens in smooth pictures, as the areas that they cover. The system's own wide
// pens are up to a sample wider than they say and lie up to a sample aside, which samples show; and
// along a curve they take thirty times as long. Without samples, where an edge that is a unit off
// shows, the system's are evener; and broken pens stay the system's.
#pragma once

#include "base/PixelScale.h"

#include <windows.h>

// With the pen that is selected. The points are what the system would be given for that pen.
class CAreaStroke {
public:
    CAreaStroke(HDC hdc, CPixelScale px) noexcept;
    ~CAreaStroke();
    CAreaStroke(const CAreaStroke&) = delete;
    CAreaStroke& operator=(const CAreaStroke&) = delete;

    // Whether lines between such points are drawn here.
    [[nodiscard]] bool Takes(const POINT* pPoints, int nCount) const;
    // Whether the ends of its lines are round; else they end at their points.
    [[nodiscard]] bool IsRound() const { return m_bRound; }
    // Lines that are painted together, at the latest when this is gone.
    void AddLine(POINT ptFrom, POINT ptTo);
    void AddJoint(POINT pt); // the end of two lines
    void AddLines(const POINT* pPoints, int nCount, bool bClosed);
    void Flush();
    // The curve that the system would draw in a box, where it bends no more than that both edges of
    // the pen stay apart.
    [[nodiscard]] bool TakesCurve(const RECT& rc) const;
    void DrawRing(const RECT& rc);
    // From one ray out of the middle to another, the way that the context has arcs go.
    void DrawArc(const RECT& rc, POINT ptStart, POINT ptEnd);
    void DrawChord(const RECT& rc, POINT ptStart, POINT ptEnd);
    void DrawPie(const RECT& rc, POINT ptStart, POINT ptEnd);
    // The ellipse of all four corners has that size.
    [[nodiscard]] bool TakesRoundRect(const RECT& rc, SIZE corner) const;
    void DrawRoundRect(const RECT& rc, SIZE corner);

private:
    static constexpr int MOST_FIGURES = 64;
    static constexpr int MOST_POINTS = 1024;

    struct Spot {
        double fX;
        double fY;
    };
    struct Sweep { // of an ellipse, in angles that grow the way that the axes turn
        double fFrom;
        double fSpan;
    };
    struct Strip;
    class CCurve;

    [[nodiscard]] static Sweep SweepOf(HDC hdc, const RECT& rc, POINT ptStart, POINT ptEnd);
    [[nodiscard]] static Strip BestStrip(Spot from, Spot along, int32_t nWidth);
    [[nodiscard]] static double Fault(const Strip& strip, Spot from, Spot along, int32_t nWidth);
    [[nodiscard]] static Spot RadiusIn(const RECT& rc);
    [[nodiscard]] static POINT CornerOf(Spot spot);
    static POINT* AddCap(POINT* pOut, Spot middle, Spot at, int nSteps);
    void AddSweep(const RECT& rc, const Sweep& sweep);
    void AddStrip(Spot from, Spot to, bool bRound);
    [[nodiscard]] POINT* Room(int nMost); // for the points of one more figure
    void Take(const POINT* pEnd);         // the figure in it
    [[nodiscard]] bool HasRoom(Spot radius) const;
    [[nodiscard]] double Middle(LONG n) const;
    [[nodiscard]] Spot MiddleOf(POINT pt) const { return {Middle(pt.x), Middle(pt.y)}; }
    [[nodiscard]] Spot MiddleIn(const RECT& rc) const;
    [[nodiscard]] Spot At(const RECT& rc, double fAngle) const;

    HDC m_hdc;
    int32_t m_nWidth = 0; // of the pen in samples; 0: none that is drawn as an area
    bool m_bRound = true;
    HBRUSH m_hBrush = nullptr;
    int m_nPoints = 0;
    int m_nFigures = 0;
    int m_nCounts[MOST_FIGURES];
    POINT m_pts[MOST_POINTS];
};
