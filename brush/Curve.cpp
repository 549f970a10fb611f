// The exported curves: GDI's Bezier, and a smooth curve through every given point, drawn with the
// pen that the host has selected.
#include "base/GdiScopes.h"
#include "base/WrapMath.h"
#include "include/QELEngine.h"

#include <algorithm>

namespace {

constexpr int STEPS = 10; // straight pieces a segment

struct Basis { // Hermite weights of the two ends and the two tangents
    float fA;
    float fTangentA;
    float fB;
    float fTangentB;
};

Basis BasisAt(float fAt)
{
    const double t = fAt;
    const double t2 = t * t;
    const double t3 = t2 * t;
    return {static_cast<float>(2 * t3 - 3 * t2 + 1), static_cast<float>(t3 - 2 * t2 + t),
            static_cast<float>(-2 * t3 + 3 * t2), static_cast<float>(t3 - t2)};
}

float Tangent(LONG nFrom, LONG nTo, double fTension)
{
    return static_cast<float>((static_cast<double>(nTo) - nFrom) * fTension / 2);
}

// One axis of a segment.
struct AxisCurve {
    LONG nA;
    LONG nB;
    float fTangentA;
    float fTangentB;

    [[nodiscard]] LONG At(const Basis& h) const
    {
        return TruncToInt(
            static_cast<double>(nA) * h.fA + static_cast<double>(fTangentA) * h.fTangentA +
            static_cast<double>(nB) * h.fB + static_cast<double>(fTangentB) * h.fTangentB);
    }
};

void DrawSegment(HDC hdc, const POINT& ptBefore, const POINT& ptA, const POINT& ptB,
                 const POINT& ptAfter, double fTension)
{
    const AxisCurve x{ptA.x, ptB.x, Tangent(ptBefore.x, ptB.x, fTension),
                      Tangent(ptA.x, ptAfter.x, fTension)};
    const AxisCurve y{ptA.y, ptB.y, Tangent(ptBefore.y, ptB.y, fTension),
                      Tangent(ptA.y, ptAfter.y, fTension)};
    for (int k = 1; k < STEPS; ++k) {
        const Basis h = BasisAt(static_cast<float>(k) * (1.0F / STEPS));
        ::LineTo(hdc, x.At(h), y.At(h));
    }
    ::LineTo(hdc, ptB.x, ptB.y);
}

void DrawSpline(HDC hdc, const POINT* pPoints, DWORD nCount, double fTension)
{
    if (!hdc || !pPoints || nCount < 2) return;
    const double fAtMostOne = std::min(fTension, 1.0);
    const CPositionScope position(hdc, pPoints[0]);
    for (DWORD i = 0; i + 1 < nCount; ++i)
        DrawSegment(hdc, pPoints[i ? i - 1 : 0], pPoints[i], pPoints[i + 1],
                    pPoints[i + 2 < nCount ? i + 2 : i + 1], fAtMostOne);
}

} // namespace

BOOL QELAPI QELDrawBezier(HDC hdc, const POINT* pPoints, DWORD nCount)
{
    return pPoints ? ::PolyBezier(hdc, pPoints, nCount) : FALSE;
}

// The result is 0 in every case: hosts have never been told more.
int QELAPI QELDrawCurve(HDC hdc, const POINT* pPoints, DWORD nCount)
{
    DrawSpline(hdc, pPoints, nCount, 1.0);
    return 0;
}
