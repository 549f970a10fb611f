// The device is as large as the drawing, so coordinates are pixels.
#include "bench/Floor.h"

#include <cstring>

namespace {

void DrawFigure(HDC hdc, const Shape& shape)
{
    const int* n = shape.n;
    switch (shape.nType) {
    case QEL_TYPE_RECT:
        ::Rectangle(hdc, n[0], n[1], n[2], n[3]);
        break;
    case QEL_TYPE_ROUNDRECT:
        ::RoundRect(hdc, n[0], n[1], n[2], n[3], n[4], n[5]);
        break;
    case QEL_TYPE_ELLIPSE:
        ::Ellipse(hdc, n[0], n[1], n[2], n[3]);
        break;
    case QEL_TYPE_CIRCLE:
        ::Ellipse(hdc, n[0] - n[2], n[1] - n[2], n[0] + n[2], n[1] + n[2]);
        break;
    case QEL_TYPE_POLYGON:
        ::Polygon(hdc, reinterpret_cast<const POINT*>(n + 1), n[0]);
        break;
    case QEL_TYPE_ARC:
    case QEL_TYPE_PIE:
    case QEL_TYPE_CHORD: {
        const int nPrev = ::SetArcDirection(hdc, AD_COUNTERCLOCKWISE);
        auto* const pfn = shape.nType == QEL_TYPE_ARC   ? &::Arc
                          : shape.nType == QEL_TYPE_PIE ? &::Pie
                                                        : &::Chord;
        pfn(hdc, n[0], n[1], n[2], n[3], n[4], n[5], n[6], n[7]);
        ::SetArcDirection(hdc, nPrev);
        break;
    }
    default: { // lines
        const bool bList = shape.nType == QEL_TYPE_POLYLINE;
        const auto* ppt = reinterpret_cast<const POINT*>(bList ? n + 1 : n);
        POINT ptPrev{};
        ::MoveToEx(hdc, ppt[0].x, ppt[0].y, &ptPrev);
        for (int i = 1; i < (bList ? n[0] : 2); ++i) ::LineTo(hdc, ppt[i].x, ppt[i].y);
        ::MoveToEx(hdc, ptPrev.x, ptPrev.y, nullptr);
    }
    }
}

void DrawTextShape(HDC hdc, const Shape& shape)
{
    RECT rc{shape.n[0], shape.n[1], shape.n[2], shape.n[3]};
    const auto nCount = static_cast<int>(shape.text.size());
    const int nPrevMode = ::SetBkMode(hdc, TRANSPARENT);
    LOGFONTA font{};
    ::GetObjectA(::GetCurrentObject(hdc, OBJ_FONT), sizeof font, &font);
    const auto step = [](LONG nSize, LONG nStep) {
        return nSize / nStep ? nSize / nStep * nStep : nStep;
    };
    font.lfWidth = step((rc.right - rc.left) / nCount, 6);
    font.lfHeight = step(rc.bottom - rc.top, 12);
    font.lfCharSet = OEM_CHARSET;
    const HFONT hFont = ::CreateFontIndirectA(&font);
    const HGDIOBJ hPrev = ::SelectObject(hdc, hFont);
    const COLORREF clrBack = ::SetBkColor(hdc, shape.clrB);
    const COLORREF clrText = ::SetTextColor(hdc, shape.clrA);
    ::DrawTextA(hdc, shape.text.c_str(), nCount, &rc, 0);
    ::SelectObject(hdc, hPrev);
    ::DeleteObject(hFont);
    ::SetTextColor(hdc, clrText);
    ::SetBkColor(hdc, clrBack);
    ::SetBkMode(hdc, nPrevMode);
}

void DrawFilled(HDC hdc, const Shape& shape)
{
    const HPEN hPen = ::CreatePen(PS_SOLID, shape.nPenWidth, shape.clrPen);
    const HGDIOBJ hPrevPen = ::SelectObject(hdc, hPen);
    const int nPrevMode = ::SetBkMode(hdc, TRANSPARENT);
    ::SetBkColor(hdc, shape.clrA);
    ::SetTextColor(hdc, shape.clrB);
    const HBITMAP hBitmap = ::CreateBitmap(8, 8, 1, 1, CQELDraft::m_byColorsBits[shape.nDraft]);
    const HBRUSH hBrush = ::CreatePatternBrush(hBitmap);
    const HGDIOBJ hPrevBrush = ::SelectObject(hdc, hBrush);
    DrawFigure(hdc, shape);
    if (shape.nType == QEL_TYPE_RECT) {
        ::SelectObject(hdc, hPrevPen);
        ::DeleteObject(hPen);
        ::SelectObject(hdc, hPrevBrush);
    } else {
        ::SelectObject(hdc, hPrevBrush);
        ::SelectObject(hdc, hPrevPen);
        ::DeleteObject(hPen);
    }
    ::SetBkMode(hdc, nPrevMode);
    ::DeleteObject(hBrush);
    ::DeleteObject(hBitmap);
}

void DrawOutline(HDC hdc, const Shape& shape)
{
    const HPEN hPen = ::CreatePen(PS_SOLID, shape.nPenWidth, shape.clrPen);
    const HGDIOBJ hPrev = ::SelectObject(hdc, hPen);
    const int nPrevMode = ::SetBkMode(hdc, TRANSPARENT);
    DrawFigure(hdc, shape);
    ::SelectObject(hdc, hPrev);
    ::DeleteObject(hPen);
    ::SetBkMode(hdc, nPrevMode);
}

} // namespace

void DrawFloor(HDC hdc, const std::vector<Shape>& shapes)
{
    for (const Shape& shape : shapes) {
        if (shape.nType == QEL_TYPE_TEXT)
            DrawTextShape(hdc, shape);
        else if (shape.nStyle & QEL_STYLE_FILL)
            DrawFilled(hdc, shape);
        else
            DrawOutline(hdc, shape);
    }
}
