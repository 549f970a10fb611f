// Outlines of solid pens as the areas that they cover, in pictures that are smooth or of another
// scale. The system's own wide pens are up to a unit wider than they say and lie up to a unit
// aside, which samples show; and where they go along a curve they take a hundred times as long.
// Metafiles and broken pens keep the system's.
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

    // Whether lines from point to point are drawn here. Upright ones are right with every pen, and
    // a pen that is not round makes corners of them that are better the system's.
    [[nodiscard]] bool Takes(const POINT* pPoints, int nCount, bool bClosed) const;
    void DrawLines(const POINT* pPoints, int nCount, bool bClosed) const;
    // The curve that the system would draw in a box, where it bends no more than that both edges of
    // the pen stay apart.
    [[nodiscard]] bool TakesCurve(const RECT& rc) const;
    void DrawRing(const RECT& rc) const;
    // From one ray out of the middle to another, the way that the context has arcs go.
    void DrawArc(const RECT& rc, POINT ptStart, POINT ptEnd) const;
    void DrawChord(const RECT& rc, POINT ptStart, POINT ptEnd) const;
    void DrawPie(const RECT& rc, POINT ptStart, POINT ptEnd) const;
    // The ellipse of all four corners has that size.
    [[nodiscard]] bool TakesRoundRect(const RECT& rc, SIZE corner) const;
    void DrawRoundRect(const RECT& rc, SIZE corner) const;

private:
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
    static POINT* AddCap(POINT* pOut, Spot middle, Spot at);
    void DrawSweep(const RECT& rc, const Sweep& sweep) const;
    void DrawLine(Spot from, Spot to, bool bRound) const;
    void DrawJoint(Spot at) const { DrawLine(at, at, true); }
    void Fill(const POINT* pPoints, int nCount) const;
    [[nodiscard]] bool HasRoom(Spot radius) const;
    [[nodiscard]] double Middle(LONG n) const;
    [[nodiscard]] Spot MiddleOf(POINT pt) const { return {Middle(pt.x), Middle(pt.y)}; }
    [[nodiscard]] Spot MiddleIn(const RECT& rc) const;
    [[nodiscard]] Spot At(const RECT& rc, double fAngle) const;

    HDC m_hdc;
    int32_t m_nWidth = 0; // of the pen in samples; 0: none that is drawn as an area
    bool m_bRound = true;
    HBRUSH m_hBrush = nullptr;
};
