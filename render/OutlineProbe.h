// Whether a point lies in a figure or near its outline: the figure is gone along piece by piece,
// and nothing of it is kept. Pixels are points, so that the outline of a box runs through its last
// pixels.
#pragma once

#include <windows.h>

// An ellipse, with the points that it has at the angles of the circle that it is a picture of, in
// radians and counter-clockwise.
struct ProbedEllipse {
    double fX;
    double fY;
    double fRadiusX;
    double fRadiusY;

    struct Point {
        double fX;
        double fY;
    };
    [[nodiscard]] Point At(double fAngle) const;
};

// The ellipse that is drawn in a box.
ProbedEllipse EllipseIn(const RECT& rc);

class COutlineProbe {
public:
    explicit COutlineProbe(POINT pt) noexcept : m_fX(pt.x), m_fY(pt.y) {}

    void Line(double fX1, double fY1, double fX2, double fY2);
    void Line(POINT pt1, POINT pt2);
    // A part of an ellipse, counter-clockwise.
    void Arc(const ProbedEllipse& ellipse, double fFrom, double fTo);

    // Inside of what the pieces enclose, by odd crossings.
    [[nodiscard]] bool IsInside() const { return m_bInside; }
    // Whether a piece is no farther away.
    [[nodiscard]] bool IsWithin(double fDistance) const
    {
        return m_bAny && m_fSquare <= fDistance * fDistance;
    }

private:
    double m_fX;
    double m_fY;
    double m_fSquare = 0; // of the distance from the nearest piece
    bool m_bAny = false;
    bool m_bInside = false;
};
