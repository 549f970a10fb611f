#include "render/Border3D.h"

#include "base/GdiScopes.h"
#include "base/Rects.h"
#include "base/Refusals.h"
#include "base/Shown.h"
#include "include/QELEngine.h"

#include <algorithm>

namespace {

constexpr int32_t DEFAULT_WIDTH = 2;
constexpr int32_t FEW_RINGS = 8;         // drawn sooner than it is asked which of them show
constexpr int64_t FAR_AWAY = 0x7FF00000; // within it no ring's coordinates wrap around

// The rings of a border that show in a box, by their numbers. Ring n lies n pixels inside of the
// first one; behind the middle the rings have passed each other and grow again.
class CShownRings {
public:
    explicit CShownRings(int32_t nWidth) noexcept : m_nWidth(nWidth) { Add(0, nWidth); } // all
    CShownRings(int32_t nWidth, const RECT& rc, const RECT& rcShown) noexcept;

    // The first one from nRing on, or the width when there is no more.
    [[nodiscard]] int32_t From(int32_t nRing) const;

private:
    struct Range {
        int64_t nFirst;
        int64_t nLast;
    };
    struct Span { // both ends inside
        int64_t nLow;
        int64_t nHigh;
    };
    // The line of each ring that lies across an axis at nPlace in the first one, and goes up by
    // nStep from ring to ring; its ends approach each other by one at each side.
    void AddLine(int64_t nPlace, int nStep, Span ends, Span shownAcross, Span shownAlong);
    void Add(int64_t nFirst, int64_t nLast)
    {
        if (nFirst <= nLast) m_ranges[m_nRanges++] = {nFirst, nLast};
    }

    static constexpr int LINES = 4;
    int32_t m_nWidth;
    int m_nRanges = 0;
    Range m_ranges[2 * LINES]; // of each line before and after its ends have passed each other
};

CShownRings::CShownRings(int32_t nWidth, const RECT& rc, const RECT& rcShown) noexcept
    : m_nWidth(nWidth)
{
    const Span x{rcShown.left, int64_t{rcShown.right} - 1};
    const Span y{rcShown.top, int64_t{rcShown.bottom} - 1};
    const int64_t nLastX = int64_t{rc.right} - 1;
    const int64_t nLastY = int64_t{rc.bottom} - 1;
    AddLine(rc.left, 1, {rc.top, nLastY}, x, y);
    AddLine(rc.top, 1, {rc.left, rc.right}, y, x);
    AddLine(nLastX, -1, {rc.top, nLastY}, x, y);
    AddLine(nLastY, -1, {int64_t{rc.left} - 1, nLastX}, y, x);
}

void CShownRings::AddLine(int64_t nPlace, int nStep, Span ends, Span shownAcross, Span shownAlong)
{
    const int64_t nFirst = nStep > 0 ? shownAcross.nLow - nPlace : nPlace - shownAcross.nHigh;
    const int64_t nLast = nStep > 0 ? shownAcross.nHigh - nPlace : nPlace - shownAcross.nLow;
    // Until here the line, growing shorter, meets what shows; and from there on, growing again.
    const int64_t nUntil = std::min(shownAlong.nHigh - ends.nLow, ends.nHigh - shownAlong.nLow);
    const int64_t nAgain = std::max(ends.nHigh - shownAlong.nHigh, shownAlong.nLow - ends.nLow);
    Add(nFirst, std::min(nLast, nUntil));
    Add(std::max(nFirst, nAgain), nLast);
}

int32_t CShownRings::From(int32_t nRing) const
{
    int64_t nNext = m_nWidth;
    for (int n = 0; n < m_nRanges; ++n)
        if (m_ranges[n].nLast >= nRing)
            nNext = std::min(nNext, std::max<int64_t>(m_ranges[n].nFirst, nRing));
    return static_cast<int32_t>(nNext);
}

bool IsNear(const RECT& rc)
{
    return rc.left > -FAR_AWAY && rc.top > -FAR_AWAY && rc.right < FAR_AWAY && rc.bottom < FAR_AWAY;
}

CShownRings FindRings(HDC hdc, const RECT& rc, int32_t nWidth)
{
    RECT rcShown{};
    if (nWidth <= FEW_RINGS || !IsNear(rc) || !FindShown(hdc, &rcShown)) return CShownRings(nWidth);
    return {nWidth, rc, rcShown};
}

void DrawCorner(HDC hdc, HGDIOBJ hPen, POINT ptFrom, POINT ptCorner, POINT ptTo)
{
    if (hPen) ::SelectObject(hdc, hPen);
    ::MoveToEx(hdc, ptFrom.x, ptFrom.y, nullptr);
    ::LineTo(hdc, ptCorner.x, ptCorner.y);
    ::LineTo(hdc, ptTo.x, ptTo.y);
}

class CPen { // a solid pen that is deleted with its scope
public:
    explicit CPen(COLORREF clr) noexcept : m_hPen(Made(::CreatePen(PS_SOLID, 1, clr))) {}
    ~CPen()
    {
        if (m_hPen) ::DeleteObject(m_hPen);
    }
    CPen(const CPen&) = delete;
    CPen& operator=(const CPen&) = delete;
    [[nodiscard]] HGDIOBJ Get() const { return m_hPen; }

private:
    HPEN m_hPen;
};

// The pixels from one place up to another that is left out, whichever way that is, each nPixel
// units long.
struct Run {
    Run(int32_t nFrom, int32_t nTo, int32_t nPixel)
        : nLow(nFrom <= nTo ? nFrom : WrapAdd(nTo, nPixel)),
          nHigh(nFrom <= nTo ? nTo : WrapAdd(nFrom, nPixel))
    {
    }
    int32_t nLow;
    int32_t nHigh;
};

// One ring whose lines are nPixel units wide: what DrawCorner covers at the plain scale.
void DrawWideRing(HDC hdc, const RECT& r, HBRUSH hLight, HBRUSH hDark, int32_t nPixel)
{
    const LONG nLastX = WrapSub(r.right, nPixel);
    const LONG nLastY = WrapSub(r.bottom, nPixel);
    const auto across = [&](LONG nFrom, LONG nTo, LONG nY, HBRUSH hBrush) {
        const Run run(nFrom, nTo, nPixel);
        const RECT rc{run.nLow, nY, run.nHigh, WrapAdd(nY, nPixel)};
        ::FillRect(hdc, &rc, hBrush);
    };
    const auto down = [&](LONG nX, LONG nFrom, LONG nTo, HBRUSH hBrush) {
        const Run run(nFrom, nTo, nPixel);
        const RECT rc{nX, run.nLow, WrapAdd(nX, nPixel), run.nHigh};
        ::FillRect(hdc, &rc, hBrush);
    };
    down(r.left, nLastY, r.top, hLight);
    across(r.left, r.right, r.top, hLight);
    down(nLastX, r.top, nLastY, hDark);
    across(nLastX, WrapSub(r.left, nPixel), nLastY, hDark);
}

// The rings at another scale. Of one that comes to no unit there is nothing to be seen.
void DrawWideRings(HDC hdc, const RECT& rc, COLORREF clrLight, COLORREF clrDark, int32_t nWidth,
                   CPixelScale px)
{
    const CBrush light(Made(::CreateSolidBrush(clrLight)));
    const CBrush dark(Made(::CreateSolidBrush(clrDark)));
    if (!light.Get() || !dark.Get()) return;
    for (int32_t n = 0; n < nWidth; ++n) {
        const int32_t nIn = n ? px(n) : 0;
        const int32_t nPixel = px(n + 1) - nIn;
        RECT r = rc;
        ::InflateRect(&r, -nIn, -nIn);
        if (nPixel > 0) DrawWideRing(hdc, r, light.Get(), dark.Get(), nPixel);
    }
}

} // namespace

int32_t BorderWidthOf(uint32_t nStyle)
{
    const auto nWidth = static_cast<int32_t>(nStyle >> 16);
    return nWidth ? nWidth : DEFAULT_WIDTH;
}

RECT BorderBox(const RECT& rc, int32_t nWidth)
{
    if (!IsWithinReach(rc) || nWidth < 0 || nWidth > REACH) return ALL_IN_REACH;
    return {std::min(rc.left, rc.right - nWidth), std::min(rc.top, rc.bottom - nWidth),
            std::max(rc.right, rc.left + nWidth), std::max(rc.bottom, rc.top + nWidth)};
}

int DrawBorder3D(HDC hdc, const RECT& rc, COLORREF clrLight, COLORREF clrDark, const QelRect& rcQel,
                 int32_t nWidth)
{
    RECT rcMeet{};
    const RECT rcWhole = rcQel.OnDevice();
    if (::IsRectEmpty(&rc) || !::IntersectRect(&rcMeet, &rc, &rcWhole)) return 0;
    if (!rcQel.px.IsPlain()) {
        DrawWideRings(hdc, rc, clrLight, clrDark, nWidth, rcQel.px);
        return 1;
    }
    const CPen light(clrLight);
    const CPen dark(clrDark);
    POINT ptBefore{0, 0};
    ::GetCurrentPositionEx(hdc, &ptBefore);
    const HGDIOBJ hPrev = ::GetCurrentObject(hdc, OBJ_PEN);

    // With a pen of the context's own, which may be wide, nobody knows what shows.
    const bool bOwnPens = light.Get() && dark.Get();
    const CShownRings rings = bOwnPens ? FindRings(hdc, rc, nWidth) : CShownRings(nWidth);
    for (int32_t n = rings.From(0); n < nWidth; n = rings.From(n + 1)) {
        RECT r = rc; // rings may pass each other in a small rectangle
        ::InflateRect(&r, -n, -n);
        const LONG nLastX = WrapSub(r.right, 1);
        const LONG nLastY = WrapSub(r.bottom, 1);
        DrawCorner(hdc, light.Get(), {r.left, nLastY}, {r.left, r.top}, {r.right, r.top});
        DrawCorner(hdc, dark.Get(), {nLastX, r.top}, {nLastX, nLastY},
                   {WrapSub(r.left, 1), nLastY});
    }

    ::MoveToEx(hdc, ptBefore.x, ptBefore.y, nullptr);
    if (hPrev) ::SelectObject(hdc, hPrev);
    return 1;
}

void DrawStyledBorder(HDC hdc, const RECT& rc, uint32_t nStyle, const QelRect& rcQel)
{
    const int32_t nWidth = BorderWidthOf(nStyle);
    if (nStyle & QEL_STYLE_UP_BIT)
        DrawBorder3D(hdc, rc, BORDER_LIGHT, BORDER_DARK, rcQel, nWidth);
    else if (nStyle & QEL_STYLE_DOWN_BIT)
        DrawBorder3D(hdc, rc, BORDER_DARK, BORDER_LIGHT, rcQel, nWidth);
}
