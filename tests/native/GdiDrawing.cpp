// The stand-in for GDI: the calls that paint. Each is written down twice: as it was called, for
// recordings, and as what its pixels depend on, for pictures that are compared.
#include "tests/native/GdiTable.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <span>

namespace gdi {
namespace {

bool IsNullPen(const Dc& dc)
{
    return (Peek(dc.state.hPen)->nStyle & PS_STYLE_MASK) == PS_NULL;
}

bool IsNullBrush(const Dc& dc)
{
    return Peek(dc.state.hBrush)->nStyle == BS_NULL;
}

std::string PenText(const Dc& dc)
{
    const Object& pen = *Peek(dc.state.hPen);
    if (IsNullPen(dc)) return "no pen";
    std::string text = Text("pen %u/%u/%06x", pen.nStyle, std::max<DWORD>(pen.nWidth, 1), pen.clr);
    const bool bHasGaps = (pen.nStyle & PS_STYLE_MASK) != PS_SOLID && pen.nWidth <= 1;
    if (bHasGaps && dc.state.nBkMode == OPAQUE) text += Text(" gaps %06x", dc.state.clrBk);
    return dc.state.nRop == R2_COPYPEN ? text : text + Text(" rop %d", dc.state.nRop);
}

// The pixels of a pattern brush, a monochrome one's in the colours of the device context.
std::shared_ptr<const Tile> TileOf(const Dc& dc, const Object& brush)
{
    if (!brush.pTile || !brush.bMonochrome) return brush.pTile;
    auto pTile = std::make_shared<Tile>(*brush.pTile);
    for (COLORREF& pixel : pTile->pixels) pixel = pixel ? dc.state.clrBk : dc.state.clrText;
    return pTile;
}

bool IsOfOneColor(const std::shared_ptr<const Tile>& pTile)
{
    return pTile && std::all_of(pTile->pixels.begin(), pTile->pixels.end(),
                                [&](COLORREF clr) { return clr == pTile->pixels[0]; });
}

std::string BrushText(const Dc& dc, const Object& brush)
{
    if (brush.nStyle == BS_NULL) return "no brush";
    if (brush.nStyle == BS_SOLID) return Text("brush %06x", brush.clr);
    const auto pTile = TileOf(dc, brush);
    if (IsOfOneColor(pTile)) return Text("brush %06x", pTile->pixels[0]);
    std::string text = Text("pattern %zx", brush.nPattern);
    if (brush.bMonochrome) text += Text(" %06x on %06x", dc.state.clrText, dc.state.clrBk);
    return text;
}

std::string BrushText(const Dc& dc)
{
    return BrushText(dc, *Peek(dc.state.hBrush));
}

// A figure reaches no farther than its area; only what the clip and the surface leave of it is
// seen.
void Paint(Dc& dc, const std::string& what, const CArea& area)
{
    if (!dc.bLogging) return;
    const CArea visible = Visible(dc);
    const CArea seen = visible.And(area);
    if (seen.IsEmpty()) return;
    const std::string line = visible == Surface(dc) ? what : what + " in " + visible.Text();
    dc.paintings.push_back(line);
    dc.layers.push_back({line, seen, false, nullptr});
}

CArea Everywhere(const Dc& dc)
{
    return Surface(dc);
}

// Far outside of every surface; a sum of a few of these is still a number.
LONG Near(LONG n)
{
    constexpr LONG FARTHEST = 0x10000000;
    return std::clamp(n, -FARTHEST, FARTHEST);
}

// The box of a figure and of the pen around it.
CArea Reach(const Dc& dc, RECT rc)
{
    const Object& pen = *Peek(dc.state.hPen);
    const auto nPen = static_cast<LONG>(std::min<DWORD>(pen.nWidth, 0x8000)) + 2;
    rc = {Near(rc.left) - nPen, Near(rc.top) - nPen, Near(rc.right) + nPen, Near(rc.bottom) + nPen};
    return CArea::Rect(rc);
}

CArea Reach(const Dc& dc, std::span<const POINT> points)
{
    RECT rc{points[0].x, points[0].y, points[0].x, points[0].y};
    for (const POINT& pt : points)
        rc = {std::min(rc.left, pt.x), std::min(rc.top, pt.y), std::max(rc.right, pt.x),
              std::max(rc.bottom, pt.y)};
    // A sharp corner of a wide pen stands out beyond its point.
    return Peek(dc.state.hPen)->nWidth > 1 ? Everywhere(dc) : Reach(dc, rc);
}

// The pixels of a bitmap whose maker sees them, where a fill covers them. Here places are moved, as
// such a bitmap is one part of a larger picture after the other.
void FillPixels(const Dc& dc, CArea area, COLORREF clr)
{
    const Object& bitmap = *Peek(dc.state.hBitmap);
    if (!bitmap.pPixels) return;
    if (dc.state.clip) area = area.And(*dc.state.clip);
    area.Offset(dc.state.ptViewport.x, dc.state.ptViewport.y);
    const LONG nWidth = bitmap.bitmap.bmWidth;
    const uint32_t nPixel = (clr & 0xFF) << 16 | (clr & 0xFF00) | (clr >> 16 & 0xFF);
    area = area.And(CArea::Rect({0, 0, nWidth, bitmap.bitmap.bmHeight}));
    for (const RECT& rc : area.Rects()) {
        uint32_t* const pFirst = bitmap.pPixels->data() + rc.top * nWidth + rc.left;
        const auto nPixels = static_cast<std::size_t>(rc.right - rc.left);
        std::fill_n(pFirst, nPixels, nPixel);
        for (LONG y = 1; y < rc.bottom - rc.top; ++y)
            std::memcpy(pFirst + y * nWidth, pFirst, nPixels * sizeof *pFirst);
    }
}

// A fill: what is seen of the area, and nothing else, is in this brush from now on.
void Fill(Dc& dc, const CArea& area, const std::string& brush,
          std::shared_ptr<const Tile> pTile = nullptr)
{
    constexpr char SOLID[] = "brush ";
    constexpr std::size_t PREFIX = sizeof SOLID - 1;
    if (!pTile && brush.compare(0, PREFIX, SOLID) == 0)
        FillPixels(dc, area, static_cast<COLORREF>(std::stoul(brush.substr(PREFIX), nullptr, 16)));
    if (!dc.bLogging) return;
    const CArea seen = Visible(dc).And(area);
    if (seen.IsEmpty()) return;
    dc.paintings.push_back("fill " + seen.Text() + " " + brush);
    dc.layers.push_back({brush, seen, true, std::move(pTile)});
}

void Fill(Dc& dc, const CArea& area, const Object& brush)
{
    if (!dc.bLogging && !Peek(dc.state.hBitmap)->pPixels) return;
    auto pTile = TileOf(dc, brush);
    if (IsOfOneColor(pTile)) pTile = nullptr; // the text says it all
    Fill(dc, area, BrushText(dc, brush), std::move(pTile));
}

// A pen whose lines are one pixel wide without gaps, so that straight ones are fills.
bool IsHairline(const Dc& dc)
{
    const Object& pen = *Peek(dc.state.hPen);
    const DWORD nStyle = pen.nStyle & PS_STYLE_MASK;
    return (nStyle == PS_SOLID || nStyle == PS_INSIDEFRAME) && pen.nWidth <= 1 &&
           dc.state.nRop == R2_COPYPEN;
}

std::string HairlineText(const Dc& dc)
{
    return Text("brush %06x", Peek(dc.state.hPen)->clr);
}

// What is painted stands black on a monochrome bitmap.
void Blacken(Dc& dc, const CArea& area)
{
    Object* pBitmap = Peek(dc.state.hBitmap);
    if (pBitmap->bitmap.bmBitsPixel != 1 || pBitmap->nStock != NOT_STOCK) return;
    pBitmap->black = pBitmap->black.Or(dc.state.clip ? area.And(*dc.state.clip) : area);
}

void BlackenFigure(Dc& dc, const CArea& area)
{
    if (!IsNullPen(dc) || !IsNullBrush(dc)) Blacken(dc, area);
}

void Order(INT* pLow, INT* pHigh)
{
    if (*pLow > *pHigh) std::swap(*pLow, *pHigh);
}

std::string BoxText(const char* pszName, INT l, INT t, INT r, INT b)
{
    return Text("%s %d,%d,%d,%d", pszName, l, t, r, b);
}

std::string PointsText(const char* pszName, std::span<const POINT> points)
{
    std::string text = pszName;
    for (const POINT& pt : points) text += Text(" %d,%d", pt.x, pt.y);
    return text;
}

bool FitsShort(std::span<const POINT> points)
{
    return std::all_of(points.begin(), points.end(), [](const POINT& pt) {
        return pt.x >= -0x8000 && pt.x <= 0x7FFF && pt.y >= -0x8000 && pt.y <= 0x7FFF;
    });
}

// A closed figure: nothing of it is painted with neither pen nor brush.
void PaintFigure(Dc& dc, const std::string& what, const CArea& area)
{
    if (IsNullPen(dc) && IsNullBrush(dc)) return;
    std::string text = what + " " + PenText(dc) + " " + BrushText(dc);
    if (IsNullPen(dc) && dc.state.nRop != R2_COPYPEN) text += Text(" rop %d", dc.state.nRop);
    Paint(dc, text, area);
}

void PaintLine(Dc& dc, POINT from, POINT to)
{
    if (IsNullPen(dc) || (from.x == to.x && from.y == to.y)) return;
    if (IsHairline(dc) && (from.x == to.x || from.y == to.y)) { // all of it but its last pixel
        from = {Near(from.x), Near(from.y)};
        to = {Near(to.x), Near(to.y)};
        RECT rc{std::min(from.x, to.x), std::min(from.y, to.y), std::max(from.x, to.x),
                std::max(from.y, to.y)};
        if (from.x == to.x) {
            rc.right = rc.left + 1;
            if (to.y < from.y) rc.top = to.y + 1, rc.bottom = from.y + 1;
        } else {
            rc.bottom = rc.top + 1;
            if (to.x < from.x) rc.left = to.x + 1, rc.right = from.x + 1;
        }
        Fill(dc, CArea::Rect(rc), HairlineText(dc));
        return;
    }
    const POINT ends[] = {from, to};
    Paint(dc, Text("line %d,%d %d,%d ", from.x, from.y, to.x, to.y) + PenText(dc), Reach(dc, ends));
}

// An upright rectangle, whose pixels are known but for wide pens and pens with gaps.
void PaintRectangle(Dc& dc, INT l, INT t, INT r, INT b)
{
    const bool bOutline = !IsNullPen(dc);
    if (dc.state.nRop != R2_COPYPEN || (bOutline && !IsHairline(dc))) {
        PaintFigure(dc, BoxText("Rectangle", l, t, r, b), Reach(dc, RECT{l, t, r, b}));
        return;
    }
    if (!bOutline) {
        if (!IsNullBrush(dc)) Fill(dc, CArea::Rect({l, t, r - 1, b - 1}), *Peek(dc.state.hBrush));
        return;
    }
    const CArea all = CArea::Rect({l, t, r, b});
    const CArea inside = int64_t{r} - l > 2 && int64_t{b} - t > 2
                             ? CArea::Rect({l + 1, t + 1, r - 1, b - 1})
                             : CArea();
    Fill(dc, all.Minus(inside), HairlineText(dc));
    if (!IsNullBrush(dc)) Fill(dc, inside, *Peek(dc.state.hBrush));
}

enum class Box { Rectangle, Ellipse };

BOOL DrawBox(HDC hdc, INT l, INT t, INT r, INT b, Box nBox, const char* pszName)
{
    Dc* pDc = FindDc(hdc, pszName);
    if (!pDc) return FALSE;
    Order(&l, &r);
    Order(&t, &b);
    if (l == r || t == b) return !pDc->bRecording;
    Record(*pDc, BoxText(pszName, l, t, r, b));
    const RECT rc{l, t, r, b};
    BlackenFigure(*pDc, nBox == Box::Rectangle ? CArea::Rect(rc) : CArea::Ellipse(rc));
    if (nBox == Box::Rectangle)
        PaintRectangle(*pDc, l, t, r, b);
    else
        PaintFigure(*pDc, BoxText(pszName, l, t, r, b), Reach(*pDc, rc));
    return TRUE;
}

BOOL DrawRadial(HDC hdc, const char* pszName, INT l, INT t, INT r, INT b, POINT start, POINT end,
                bool bFilled)
{
    Dc* pDc = FindDc(hdc, pszName);
    if (!pDc) return FALSE;
    Order(&l, &r);
    Order(&t, &b);
    if (l == r || t == b) return !pDc->bRecording;
    const std::string line = BoxText(pszName, l, t, r, b) +
                             Text(" start %d,%d end %d,%d", start.x, start.y, end.x, end.y);
    Record(*pDc, line);
    BlackenFigure(*pDc, CArea::Ellipse({l, t, r, b}));
    const std::string turned = line + Text(" turn %d", pDc->state.nArc);
    if (bFilled)
        PaintFigure(*pDc, turned, Reach(*pDc, RECT{l, t, r, b}));
    else if (!IsNullPen(*pDc))
        Paint(*pDc, turned + " " + PenText(*pDc), Reach(*pDc, RECT{l, t, r, b}));
    return TRUE;
}

SIZE CellOf(const Dc& dc)
{
    const LOGFONTA& font = Peek(dc.state.hFont)->font;
    const LONG nHeight = font.lfHeight ? std::abs(font.lfHeight) : 16;
    return {font.lfWidth ? std::abs(font.lfWidth) : std::max<LONG>(nHeight / 2, 1), nHeight};
}

std::string TextState(const Dc& dc)
{
    const LOGFONTA& font = Peek(dc.state.hFont)->font;
    std::string text =
        Text("font %d %d %d %d %s text %06x align %u", font.lfWidth, font.lfHeight, font.lfWeight,
             font.lfCharSet, font.lfFaceName, dc.state.clrText, dc.state.nAlign);
    return dc.state.nBkMode == OPAQUE ? text + Text(" on %06x", dc.state.clrBk) : text;
}

void WriteText(Dc& dc, INT x, INT y, const std::string& bytes, const RECT* prcClip)
{
    const std::string line = Text("Text %d,%d \"%.500s\"", x, y, bytes.c_str());
    Record(dc, line);
    if (bytes.empty() || (prcClip && ::IsRectEmpty(prcClip))) return;
    const CArea box = prcClip ? CArea::Rect(*prcClip).And(Surface(dc)) : Everywhere(dc);
    Paint(dc, line + " " + TextState(dc) + (prcClip ? " within " + box.Text() : ""), box);
}

LONG LengthOf(const char* psz, INT nLength)
{
    return nLength < 0 ? static_cast<LONG>(std::strlen(psz)) : nLength;
}

// Without flags: the text stands at the top left and breaks at line ends; a single "&" is taken
// away.
std::vector<std::string> LinesOf(const char* psz, LONG nLength)
{
    std::vector<std::string> lines(1);
    for (LONG n = 0; n < nLength; ++n) {
        if (psz[n] == '\r' || psz[n] == '\n') {
            if (psz[n] == '\r' && n + 1 < nLength && psz[n + 1] == '\n') ++n;
            lines.emplace_back();
            continue;
        }
        if (psz[n] == '&' && ++n >= nLength) break;
        lines.back() += psz[n];
    }
    return lines;
}

} // namespace
} // namespace gdi

using namespace gdi;

// ---- boxes ----

BOOL WINAPI Rectangle(HDC hdc, INT l, INT t, INT r, INT b)
{
    return DrawBox(hdc, l, t, r, b, Box::Rectangle, "Rectangle");
}

BOOL WINAPI Ellipse(HDC hdc, INT l, INT t, INT r, INT b)
{
    return DrawBox(hdc, l, t, r, b, Box::Ellipse, "Ellipse");
}

BOOL WINAPI RoundRect(HDC hdc, INT l, INT t, INT r, INT b, INT nWidth, INT nHeight)
{
    Dc* pDc = FindDc(hdc, "RoundRect");
    if (!pDc) return FALSE;
    Order(&l, &r);
    Order(&t, &b);
    if (l == r || t == b) return !pDc->bRecording;
    const std::string line = BoxText("RoundRect", l, t, r, b) + Text(" %d,%d", nWidth, nHeight);
    Record(*pDc, line);
    BlackenFigure(*pDc, CArea::RoundRect({l, t, r, b}, nWidth, nHeight));
    if (!nWidth || !nHeight)
        PaintRectangle(*pDc, l, t, r, b);
    else
        PaintFigure(*pDc, line, Reach(*pDc, RECT{l, t, r, b}));
    return TRUE;
}

BOOL WINAPI Arc(HDC hdc, INT l, INT t, INT r, INT b, INT xs, INT ys, INT xe, INT ye)
{
    return DrawRadial(hdc, "Arc", l, t, r, b, {xs, ys}, {xe, ye}, false);
}

BOOL WINAPI Pie(HDC hdc, INT l, INT t, INT r, INT b, INT xs, INT ys, INT xe, INT ye)
{
    return DrawRadial(hdc, "Pie", l, t, r, b, {xs, ys}, {xe, ye}, true);
}

BOOL WINAPI Chord(HDC hdc, INT l, INT t, INT r, INT b, INT xs, INT ys, INT xe, INT ye)
{
    return DrawRadial(hdc, "Chord", l, t, r, b, {xs, ys}, {xe, ye}, true);
}

// ---- lines and points ----

BOOL WINAPI LineTo(HDC hdc, INT x, INT y)
{
    Dc* pDc = FindDc(hdc, "LineTo");
    if (!pDc) return FALSE;
    Record(*pDc, Text("LineTo %d,%d", x, y));
    PaintLine(*pDc, pDc->state.pt, {x, y});
    pDc->state.pt = {x, y};
    return TRUE;
}

BOOL WINAPI Polyline(HDC hdc, const POINT* pPoints, INT nCount)
{
    Dc* pDc = FindDc(hdc, "Polyline");
    if (!pDc) return FALSE;
    if (!pPoints || nCount < 2) {
        ReportMisuse(Text("Polyline of %d points", nCount));
        return FALSE;
    }
    const std::span<const POINT> points(pPoints, static_cast<std::size_t>(nCount));
    Record(*pDc, FitsShort(points) ? "Record 87" : "Record 4");
    for (std::size_t n = 0; n + 1 < points.size(); ++n) PaintLine(*pDc, points[n], points[n + 1]);
    return TRUE;
}

BOOL WINAPI Polygon(HDC hdc, const POINT* pPoints, INT nCount)
{
    Dc* pDc = FindDc(hdc, "Polygon");
    if (!pDc) return FALSE;
    if (!pPoints || nCount < 2) {
        ReportMisuse(Text("Polygon of %d points", nCount));
        return FALSE;
    }
    const std::span<const POINT> points(pPoints, static_cast<std::size_t>(nCount));
    const std::string line = PointsText("Polygon", points);
    Record(*pDc, line);
    BlackenFigure(*pDc, CArea::Polygon(points, pDc->state.nPolyFill == WINDING));
    PaintFigure(*pDc, line + Text(" mode %d", pDc->state.nPolyFill), Reach(*pDc, points));
    return TRUE;
}

// One after the other: with WINDING, and where they go round the same way, that is the same figure.
BOOL WINAPI PolyPolygon(HDC hdc, const POINT* pPoints, const INT* pnCounts, UINT nPolygons)
{
    const Dc* pDc = FindDc(hdc, "PolyPolygon");
    if (!pDc || !pPoints || !pnCounts || nPolygons == 0) return FALSE;
    if (pDc->state.nPolyFill != WINDING) {
        ReportMisuse("PolyPolygon with holes");
        return FALSE;
    }
    for (UINT n = 0; n < nPolygons; pPoints += pnCounts[n++])
        if (!::Polygon(hdc, pPoints, pnCounts[n])) return FALSE;
    return TRUE;
}

BOOL WINAPI PolyBezier(HDC hdc, const POINT* pPoints, DWORD nCount)
{
    // The host's own device context and points, passed on as they came.
    Dc* pDc = hdc ? FindDc(hdc, "PolyBezier") : nullptr;
    if (!pDc || !pPoints || nCount < 4 || (nCount - 1) % 3) return FALSE;
    const std::string line = PointsText("PolyBezier", {pPoints, nCount});
    Record(*pDc, line);
    if (!IsNullPen(*pDc)) Paint(*pDc, line + " " + PenText(*pDc), Reach(*pDc, {pPoints, nCount}));
    return TRUE;
}

COLORREF WINAPI SetPixel(HDC hdc, INT x, INT y, COLORREF clr)
{
    Dc* pDc = FindDc(hdc, "SetPixel");
    if (!pDc) return CLR_INVALID;
    Record(*pDc, "Record 15");
    Fill(*pDc, CArea::Rect({Near(x), Near(y), Near(x) + 1, Near(y) + 1}), Text("brush %06x", clr));
    return clr;
}

// ---- fills ----

namespace {

void Blit(Dc& dc, INT x, INT y, INT nWidth, INT nHeight, DWORD nRop)
{
    const auto nRight = static_cast<INT>(static_cast<DWORD>(x) + static_cast<DWORD>(nWidth));
    const auto nBottom = static_cast<INT>(static_cast<DWORD>(y) + static_cast<DWORD>(nHeight));
    Record(dc, BoxText("PatBlt", x, y, nRight, nBottom));
    Object* pBitmap = Peek(dc.state.hBitmap);
    if (nRop == WHITENESS)
        pBitmap->black = pBitmap->black.Minus(CArea::Rect({x, y, nRight, nBottom}));
    else
        Blacken(dc, CArea::Rect({x, y, nRight, nBottom}));
    const CArea area = CArea::Rect({x, y, nRight, nBottom});
    const Object& brush = *Peek(dc.state.hBrush);
    if (nRop == WHITENESS || nRop == BLACKNESS)
        Fill(dc, area, nRop == WHITENESS ? "brush ffffff" : "brush 000000");
    else if (nRop != PATCOPY)
        Paint(dc,
              BoxText("PatBlt", x, y, nRight, nBottom) + " " + BrushText(dc, brush) +
                  Text(" rop %06x", nRop),
              area);
    else if (brush.nStyle != BS_NULL)
        Fill(dc, area, brush);
}

} // namespace

BOOL WINAPI PatBlt(HDC hdc, INT x, INT y, INT nWidth, INT nHeight, DWORD nRop)
{
    Dc* pDc = FindDc(hdc, "PatBlt");
    if (!pDc) return FALSE;
    const bool bUsesBrush = nRop != WHITENESS && nRop != BLACKNESS && nRop != DSTINVERT;
    if (bUsesBrush && IsNullBrush(*pDc)) ReportMisuse("PatBlt with the null brush");
    Blit(*pDc, x, y, nWidth, nHeight, nRop);
    return TRUE;
}

BOOL WINAPI FillRgn(HDC hdc, HRGN hRegion, HBRUSH hBrush)
{
    Dc* pDc = FindDc(hdc, "FillRgn");
    const Object* pRegion = Find(hRegion, Kind::Region, "FillRgn");
    const Object* pBrush = Find(hBrush, Kind::Brush, "FillRgn");
    if (!pDc || !pRegion || !pBrush) return FALSE;
    if (pDc->bRecording && pBrush->nStock == NOT_STOCK) NumberInRecording(*pDc, hBrush);
    Record(*pDc, "Record 71");
    Blacken(*pDc, pRegion->area);
    if (!pRegion->area.IsEmpty() && pBrush->nStyle != BS_NULL) Fill(*pDc, pRegion->area, *pBrush);
    return TRUE;
}

INT WINAPI FillRect(HDC hdc, const RECT* prc, HBRUSH hBrush)
{
    if (!prc) {
        ReportMisuse("FillRect without a rectangle");
        return 0;
    }
    if (!Find(hBrush, Kind::Brush, "FillRect")) return 0;
    Dc* pDc = FindDc(hdc, "FillRect");
    if (!pDc) return 0;
    const HGDIOBJ hPrev = ::SelectObject(hdc, hBrush);
    const auto nWidth =
        static_cast<INT>(static_cast<DWORD>(prc->right) - static_cast<DWORD>(prc->left));
    const auto nHeight =
        static_cast<INT>(static_cast<DWORD>(prc->bottom) - static_cast<DWORD>(prc->top));
    Blit(*pDc, prc->left, prc->top, nWidth, nHeight,
         PATCOPY); // the null brush is named here, not left over
    ::SelectObject(hdc, hPrev);
    return 1;
}

// ---- text ----

BOOL WINAPI TextOutA(HDC hdc, INT x, INT y, const char* psz, INT nLength)
{
    Dc* pDc = FindDc(hdc, "TextOut");
    if (!pDc) return FALSE;
    if (!psz) {
        ReportMisuse("TextOut without a text");
        return FALSE;
    }
    WriteText(*pDc, x, y, std::string(psz, static_cast<std::size_t>(LengthOf(psz, nLength))),
              nullptr);
    return TRUE;
}

// Two ampersands are one, and underline nothing.
static bool UnderlinesALetter(const char* psz, LONG nBytes)
{
    for (LONG n = 0; n + 1 < nBytes; ++n)
        if (psz[n] == '&' && psz[++n] != '&') return true;
    return false;
}

INT WINAPI DrawTextA(HDC hdc, const char* psz, INT nLength, RECT* prc, UINT nFlags)
{
    Dc* pDc = FindDc(hdc, "DrawText");
    if (!pDc) return 0;
    if (!psz || !prc || nFlags) {
        ReportMisuse(
            "DrawText without a text or a rectangle, or with flags that are not known here");
        return 0;
    }
    LONG nY = prc->top;
    const LONG nBytes = LengthOf(psz, nLength);
    // The line under the letter behind an ampersand is drawn from the current position.
    if (UnderlinesALetter(psz, nBytes)) pDc->state.pt = {prc->left, prc->bottom};
    if (nBytes)
        for (const std::string& line : LinesOf(psz, nBytes)) {
            WriteText(*pDc, prc->left, nY, line, prc);
            nY = static_cast<LONG>(static_cast<DWORD>(nY) + static_cast<DWORD>(CellOf(*pDc).cy));
        }
    return static_cast<INT>(static_cast<DWORD>(nY) - static_cast<DWORD>(prc->top));
}

// Every byte has the width of the font's cell.
BOOL WINAPI GetTextExtentPoint32A(HDC hdc, const char* psz, INT nLength, SIZE* pSize)
{
    const Dc* pDc = FindDc(hdc, "GetTextExtentPoint32");
    if (!pDc) return FALSE;
    if (!psz || !pSize || nLength < 0) {
        ReportMisuse("GetTextExtentPoint32 without a text");
        return FALSE;
    }
    if (!CanMeasureTexts()) return FALSE;
    const SIZE cell = CellOf(*pDc);
    const long long nWidth = static_cast<long long>(cell.cx) * nLength;
    *pSize = {static_cast<LONG>(std::min(nWidth, 0x7FFFFFFFLL)), cell.cy};
    return TRUE;
}

// Wide texts are recorded and painted as the bytes of the ANSI code page, as recordings tell them.

namespace {

std::string AnsiOf(const wchar_t* psz, INT nLength)
{
    std::string bytes(static_cast<std::size_t>(nLength > 0 ? nLength : 0) * 4, '\0');
    const INT nBytes =
        bytes.empty() ? 0
                      : ::WideCharToMultiByte(CP_ACP, 0, psz, nLength, bytes.data(),
                                              static_cast<INT>(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(nBytes));
    return bytes;
}

} // namespace

BOOL WINAPI TextOutW(HDC hdc, INT x, INT y, const wchar_t* psz, INT nLength)
{
    const std::string bytes = psz ? AnsiOf(psz, nLength) : "";
    return ::TextOutA(hdc, x, y, psz ? bytes.data() : nullptr, static_cast<INT>(bytes.size()));
}

INT WINAPI DrawTextW(HDC hdc, const wchar_t* psz, INT nLength, RECT* prc, UINT nFlags)
{
    const std::string bytes = psz ? AnsiOf(psz, nLength) : "";
    return ::DrawTextA(hdc, psz ? bytes.data() : nullptr, static_cast<INT>(bytes.size()), prc,
                       nFlags);
}

BOOL WINAPI GetTextExtentPoint32W(HDC hdc, const wchar_t* psz, INT nLength, SIZE* pSize)
{
    return ::GetTextExtentPoint32A(hdc, psz ? "" : nullptr, nLength, pSize); // it measures by count
}

// Known by the two places and the size alone: pixels are nowhere.
BOOL WINAPI BitBlt(HDC hdc, INT x, INT y, INT nWidth, INT nHeight, HDC hdcFrom, INT nX, INT nY,
                   DWORD nRop)
{
    Dc* pDc = FindDc(hdc, "BitBlt");
    if (!pDc || !FindDc(hdcFrom, "BitBlt") || !TakeCall()) return FALSE;
    if (nRop != SRCCOPY) ReportMisuse(Text("BitBlt with %06x", nRop));
    Paint(*pDc, Text("BitBlt %d,%d %dx%d from %d,%d", x, y, nWidth, nHeight, nX, nY),
          CArea::Rect({x, y, x + nWidth, y + nHeight}));
    return TRUE;
}

BOOL WINAPI GdiFlush()
{
    return TRUE;
}
