// Shape views for the tests: made from a record, drawn onto recordings and bitmaps.
#pragma once

#include "include/QELEngine.h"
#include "render/QELViewShape.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Recording.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;

// A record with the given coordinates, an outline of one red pixel and no fill.
inline QELSHAPEATTR OutlineAttr(std::initializer_list<int> geometry)
{
    QELSHAPEATTR attr{};
    attr.nSize = sizeof attr;
    attr.clrA = 0xFFFFFF;
    attr.clrPen = 0x0000FF;
    attr.nPenWidth = 1;
    int n = 0;
    for (const int nValue : geometry) attr.nGeometry[n++] = nValue;
    return attr;
}

// The same filled with hatch 1, all in colour A, which is green; colour B is blue.
inline QELSHAPEATTR FilledAttr(std::initializer_list<int> geometry)
{
    QELSHAPEATTR attr = OutlineAttr(geometry);
    attr.nStyle = QEL_STYLE_FILL;
    attr.nDraft = 1;
    attr.clrA = 0x00FF00;
    attr.clrB = 0xFF0000;
    return attr;
}

inline std::string RectText(const RECT& rc)
{
    return std::to_string(rc.left) + "," + std::to_string(rc.top) + "," + std::to_string(rc.right) +
           "," + std::to_string(rc.bottom);
}

// A view element of class T in a drawing of the given reference size.
template <class T>
class CTestView {
public:
    CTestView(const QELSHAPEATTR& attr, int nRefW = 100, int nRefH = 100) : m_view(nRefW, nRefH)
    {
        EXPECT_EQ(1, m_view.SetAttrBlock(&attr));
    }
    T* operator->() { return &m_view; }
    T& operator*() { return m_view; }

    std::string Geometry(int nWords) const
    {
        QELSHAPEATTR attr{};
        EXPECT_EQ(1, m_view.GetAttrBlock(&attr));
        std::string text;
        for (int n = 0; n < nWords; ++n) text += (n ? " " : "") + std::to_string(attr.nGeometry[n]);
        return text;
    }

    // The recorded calls of one draw.
    Lines Calls(const RECT& rcQel, uint32_t nFlags = QEL_DRAW_FULL)
    {
        CRecording recording;
        m_nResult = m_view.Draw(recording.Dc(), rcQel, nFlags);
        return recording.Calls();
    }
    // The one call that paints: the first line of a recording that begins with that word.
    std::string Call(const char* pszWord, const RECT& rcQel, uint32_t nFlags = QEL_DRAW_FULL)
    {
        for (const std::string& line : Calls(rcQel, nFlags))
            if (line.rfind(pszWord, 0) == 0) return line;
        return "none";
    }
    int Result() const { return m_nResult; }

private:
    T m_view;
    int m_nResult = -1;
};

inline Lines DrawingOrder(const QELSHAPEATTR& attr, const std::string& call, bool bPenFirst)
{
    const bool bFilled = (attr.nStyle & QEL_STYLE_FILL_MASK) != 0;
    Lines lines = {"CreatePen style 0 width 1 color 0000ff", "SelectPen #1", "SetBkMode 1"};
    if (bFilled) {
        lines.insert(lines.end(), {"SetBkColor 00ff00", "SetTextColor ff0000", "CreatePatternBrush",
                                   "SelectBrush #2"});
    } else {
        lines.push_back("SelectStock NULL_BRUSH");
    }
    lines.push_back(call);
    const Lines brush = {"SelectStock WHITE_BRUSH"};
    const Lines pen = {"SelectStock BLACK_PEN", "DeleteObject #1"};
    const Lines& first = bPenFirst ? pen : brush;
    const Lines& second = bPenFirst ? brush : pen;
    lines.insert(lines.end(), first.begin(), first.end());
    lines.insert(lines.end(), second.begin(), second.end());
    lines.push_back("SetBkMode 2");
    if (bFilled)
        lines.push_back("DeleteObject #2"); // the brush goes with its owner, at the very end
    return lines;
}

// What a raw drawing paints against what the view paints, both on the same size of bitmap.
template <class T>
void ExpectPixels(CTestView<T>& view, const RECT& rcQel, const std::function<void(HDC)>& raw,
                  uint32_t nFlags = QEL_DRAW_FULL)
{
    CTestBitmap expected(rcQel.right + 5, rcQel.bottom + 5);
    CTestBitmap drawn(rcQel.right + 5, rcQel.bottom + 5);
    raw(expected.Dc());
    EXPECT_EQ(1, view->Draw(drawn.Dc(), rcQel, nFlags));
    EXPECT_FALSE(IsBlank(drawn)); // two empty pictures would agree
    EXPECT_EQ("", FirstDifference(expected, drawn));
}

// A pen, a brush and the transparent mode for raw drawings.
class CTestTools {
public:
    CTestTools(HDC hdc, HPEN hPen, HBRUSH hBrush)
        : m_hdc(hdc), m_pen(hdc, hPen, true), m_brush(hdc, hBrush, true)
    {
        ::SetBkMode(m_hdc, TRANSPARENT);
    }

private:
    HDC m_hdc;
    CTestSelect m_pen;
    CTestSelect m_brush;
};

// The state of a device context before and after a draw: equal but for what is said to differ.
template <class T>
void ExpectStateKept(CTestView<T>& view, const RECT& rcQel, COLORREF clrBack, COLORREF clrText)
{
    CTestBitmap bitmap(rcQel.right, rcQel.bottom);
    const HDC hdc = bitmap.Dc();
    ::SetBkMode(hdc, OPAQUE);
    ::MoveToEx(hdc, 3, 4, nullptr);
    ::SetArcDirection(hdc, AD_CLOCKWISE);
    ::SetBkColor(hdc, RGB(1, 2, 3));
    ::SetTextColor(hdc, RGB(4, 5, 6));
    const std::string before = DcState(hdc);
    view->Draw(hdc, rcQel, QEL_DRAW_FULL);
    EXPECT_EQ(clrBack, ::GetBkColor(hdc));
    EXPECT_EQ(clrText, ::GetTextColor(hdc));
    ::SetBkColor(hdc, RGB(1, 2, 3));
    ::SetTextColor(hdc, RGB(4, 5, 6));
    EXPECT_EQ(before, DcState(hdc));
}
constexpr COLORREF BACK_BEFORE = RGB(1, 2, 3);
constexpr COLORREF TEXT_BEFORE = RGB(4, 5, 6);

// A region against the figure that GDI fills with a null pen: how many pixels differ that have no
// neighbour (of eight) on the other side, that is, lie farther than one pixel from the outline.
inline int CountFarDifferences(const CTestBitmap& region, const CTestBitmap& filled)
{
    const auto inside = [](const CTestBitmap& bitmap, int x, int y) {
        return x >= 0 && y >= 0 && x < bitmap.Width() && y < bitmap.Height() &&
               bitmap.At(x, y) == 0;
    };
    int nFar = 0;
    for (int y = 0; y < filled.Height(); ++y) {
        for (int x = 0; x < filled.Width(); ++x) {
            const bool bFilled = inside(filled, x, y);
            if (inside(region, x, y) == bFilled) continue;
            bool bNearOutline = false;
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx)
                    bNearOutline = bNearOutline || inside(filled, x + dx, y + dy) != bFilled;
            nFar += !bNearOutline;
        }
    }
    return nFar;
}
