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

std::string BrushText(const Dc& dc, const Object& brush)
{
    if (brush.nStyle == BS_NULL) return "no brush";
    if (brush.nStyle == BS_SOLID) return Text("brush %06x", brush.clr);
    std::string text = Text("pattern %zx", brush.nPattern);
    if (brush.bMonochrome) text += Text(" %06x on %06x", dc.state.clrText, dc.state.clrBk);
    return text;
}

std::string BrushText(const Dc& dc)
{
    return BrushText(dc, *Peek(dc.state.hBrush));
}

void Paint(Dc& dc, const std::string& line)
{
    if (!dc.bLogging) return;
    if (dc.state.clip && dc.state.clip->IsEmpty()) return;
    dc.paintings.push_back(dc.state.clip ? line + " in " + dc.state.clip->Text() : line);
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
void PaintFigure(Dc& dc, const std::string& what)
{
    if (IsNullPen(dc) && IsNullBrush(dc)) return;
    Paint(dc, what + " " + PenText(dc) + " " + BrushText(dc));
}

void PaintLine(Dc& dc, const POINT& from, const POINT& to)
{
    if (IsNullPen(dc) || (from.x == to.x && from.y == to.y)) return;
    Paint(dc, Text("line %d,%d %d,%d ", from.x, from.y, to.x, to.y) + PenText(dc));
}

void FillBox(Dc& dc, INT l, INT t, INT r, INT b, const std::string& brush)
{
    Order(&l, &r);
    Order(&t, &b);
    if (l < r && t < b) Paint(dc, BoxText("fill", l, t, r, b) + " " + brush);
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
    if (nBox == Box::Rectangle && IsNullPen(*pDc) && !IsNullBrush(*pDc))
        FillBox(*pDc, l, t, r - 1, b - 1, BrushText(*pDc)); // without an outline it is a fill
    else
        PaintFigure(*pDc, BoxText(pszName, l, t, r, b));
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
        PaintFigure(*pDc, turned);
    else if (!IsNullPen(*pDc))
        Paint(*pDc, turned + " " + PenText(*pDc));
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
    std::string text = Text("font %d %d %d %d %s text %06x align %u", font.lfWidth, font.lfHeight,
                            font.lfWeight, font.lfCharSet, font.lfFaceName, dc.state.clrText,
                            dc.state.nAlign);
    return dc.state.nBkMode == OPAQUE ? text + Text(" on %06x", dc.state.clrBk) : text;
}

void WriteText(Dc& dc, INT x, INT y, const std::string& bytes)
{
    const std::string line = Text("Text %d,%d \"%.500s\"", x, y, bytes.c_str());
    Record(dc, line);
    if (!bytes.empty()) Paint(dc, line + " " + TextState(dc));
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
    PaintFigure(*pDc, line);
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
    PaintFigure(*pDc, line + Text(" mode %d", pDc->state.nPolyFill));
    return TRUE;
}

BOOL WINAPI PolyBezier(HDC hdc, const POINT* pPoints, DWORD nCount)
{
    Dc* pDc = FindDc(hdc, "PolyBezier");
    if (!pDc || !pPoints || nCount < 4 || (nCount - 1) % 3) return FALSE; // the host's own points
    const std::string line = PointsText("PolyBezier", {pPoints, nCount});
    Record(*pDc, line);
    if (!IsNullPen(*pDc)) Paint(*pDc, line + " " + PenText(*pDc));
    return TRUE;
}

COLORREF WINAPI SetPixel(HDC hdc, INT x, INT y, COLORREF clr)
{
    Dc* pDc = FindDc(hdc, "SetPixel");
    if (!pDc) return CLR_INVALID;
    Record(*pDc, "Record 15");
    FillBox(*pDc, x, y, x + 1, y + 1, Text("brush %06x", clr));
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
    const std::string how = nRop == WHITENESS  ? "brush ffffff"
                            : nRop == BLACKNESS ? "brush 000000"
                            : nRop == PATCOPY   ? BrushText(dc)
                                                : BrushText(dc) + Text(" rop %06x", nRop);
    FillBox(dc, x, y, nRight, nBottom, how);
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
    if (!pRegion->area.IsEmpty() && pBrush->nStyle != BS_NULL)
        Paint(*pDc, "region " + pRegion->area.Text() + " " + BrushText(*pDc, *pBrush));
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
    const auto nWidth = static_cast<INT>(static_cast<DWORD>(prc->right) - static_cast<DWORD>(prc->left));
    const auto nHeight = static_cast<INT>(static_cast<DWORD>(prc->bottom) - static_cast<DWORD>(prc->top));
    Blit(*pDc, prc->left, prc->top, nWidth, nHeight, PATCOPY); // the null brush is named here, not left over
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
    WriteText(*pDc, x, y, std::string(psz, static_cast<std::size_t>(LengthOf(psz, nLength))));
    return TRUE;
}

INT WINAPI DrawTextA(HDC hdc, const char* psz, INT nLength, RECT* prc, UINT nFlags)
{
    Dc* pDc = FindDc(hdc, "DrawText");
    if (!pDc) return 0;
    if (!psz || !prc || nFlags) {
        ReportMisuse("DrawText without a text or a rectangle, or with flags that are not known here");
        return 0;
    }
    LONG nY = prc->top;
    const LONG nBytes = LengthOf(psz, nLength);
    if (nBytes)
        for (const std::string& line : LinesOf(psz, nBytes)) {
            WriteText(*pDc, prc->left, nY, line);
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
    const SIZE cell = CellOf(*pDc);
    const long long nWidth = static_cast<long long>(cell.cx) * nLength;
    *pSize = {static_cast<LONG>(std::min(nWidth, 0x7FFFFFFFLL)), cell.cy};
    return TRUE;
}

BOOL WINAPI GdiFlush()
{
    return TRUE;
}
