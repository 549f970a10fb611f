// Shape views for the tests: made from a record, drawn onto recordings and bitmaps; and what they
// have to do, worked out from the rules without the engine's own mapping or turning: coordinates
// turned, moved and kept inside the drawing, raw GDI drawings in every style, filled figures.
#pragma once

#include "engine/ElementTypes.h"
#include "include/QELEngine.h"
#include "render/QELView.h"
#include "render/QELViewShape.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Recording.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace viewtest {

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
// A whole picture, made element by element.
class CTestPicture {
public:
    explicit CTestPicture(SIZE refSize) : m_view(g_elementTypes, refSize)
    {
        EXPECT_EQ(1, m_view.NewTree());
    }
    CQELView* operator->() { return &m_view; }
    CQELViewElm* Make(int nType,
                      CQELViewElm* pParent = nullptr) // as the last child; null: the root
    {
        CQELViewElm* pElm = nullptr;
        if (!pParent) pParent = m_view.Root();
        EXPECT_EQ(1, m_view.CreateElement(pParent, nullptr, nType, &pElm));
        return pElm;
    }

protected:
    CQELView m_view;
};

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

using Words = std::vector<int>; // the geometry words of a record

// The drawing that most shape tests use: 100 by 100 units at twice the size, away from the origin.
constexpr RECT SHAPE_QEL{10, 20, 210, 220};
constexpr int AtX(int x)
{
    return x * 2 + 10;
}
constexpr int AtY(int y)
{
    return y * 2 + 20;
}

inline std::string WordsText(const Words& words)
{
    std::string text;
    for (const int n : words) text += (text.empty() ? "" : " ") + std::to_string(n);
    return text;
}

inline Words WordsOf(const QELSHAPEATTR& attr, int nWords)
{
    return Words(attr.nGeometry, attr.nGeometry + nWords);
}

inline QELSHAPEATTR PressedAttr(QELSHAPEATTR attr)
{
    attr.nFlags |= QEL_FLAG_PRESS;
    return attr;
}

// ---- turning and moving ----

// One counter-clockwise quarter turn as often as asked.
inline POINT Turned(POINT pt, POINT c, int nQuarters)
{
    for (; nQuarters > 0; --nQuarters) pt = {pt.y + c.y - c.x, c.y - pt.x + c.x};
    return pt;
}

inline RECT TurnedRect(RECT rc, POINT c, int nQuarters)
{
    const POINT a = Turned({rc.left, rc.top}, c, nQuarters);
    const POINT b = Turned({rc.right, rc.bottom}, c, nQuarters);
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

inline void KeepAxisInside(LONG& low, LONG& high, int nRef)
{
    if (low < 0) {
        high -= low;
        low = 0;
    }
    if (high > nRef) {
        low -= high - nRef;
        high = nRef;
        low = std::max<LONG>(low, 0);
    }
}

inline RECT KeptRect(RECT rc, SIZE ref)
{
    KeepAxisInside(rc.left, rc.right, ref.cx);
    KeepAxisInside(rc.top, rc.bottom, ref.cy);
    return rc;
}

// The words from nFirst on are points: all of them slide by one offset per axis.
inline Words KeptPoints(Words words, std::size_t nFirst, SIZE ref)
{
    for (std::size_t axis = 0; axis < 2; ++axis) {
        const int nRef = axis == 0 ? ref.cx : ref.cy;
        LONG low = words[nFirst + axis];
        LONG high = low;
        for (std::size_t n = nFirst + axis; n < words.size(); n += 2) {
            low = std::min<LONG>(low, words[n]);
            high = std::max<LONG>(high, words[n]);
        }
        const LONG was = low;
        KeepAxisInside(low, high, nRef);
        for (std::size_t n = nFirst + axis; n < words.size(); n += 2) words[n] += low - was;
    }
    return words;
}

// From the words before to the words after: turned by so many quarters about a centre.
using TurnRule = std::function<Words(const Words&, POINT, int)>;
// Moved by an x and a y.
using MoveRule = std::function<Words(const Words&, int, int)>;

inline Words BoxWords(const Words& words, const RECT& rc)
{
    Words out = words; // what follows the four words stays: corners do not turn
    out[0] = rc.left;
    out[1] = rc.top;
    out[2] = rc.right;
    out[3] = rc.bottom;
    return out;
}

inline TurnRule BoxTurn(SIZE ref)
{
    return [ref](const Words& w, POINT c, int nQuarters) {
        return BoxWords(w, KeptRect(TurnedRect({w[0], w[1], w[2], w[3]}, c, nQuarters), ref));
    };
}

inline MoveRule BoxMove(SIZE ref)
{
    return [ref](const Words& w, int dx, int dy) {
        return BoxWords(w, KeptRect({w[0] + dx, w[1] + dy, w[2] + dx, w[3] + dy}, ref));
    };
}

inline Words TurnedPoints(Words words, std::size_t nFirst, POINT c, int nQuarters)
{
    for (std::size_t n = nFirst; n + 1 < words.size(); n += 2) {
        const POINT pt = Turned({words[n], words[n + 1]}, c, nQuarters);
        words[n] = pt.x;
        words[n + 1] = pt.y;
    }
    return words;
}

inline Words MovedPoints(Words words, std::size_t nFirst, int dx, int dy)
{
    for (std::size_t n = nFirst; n + 1 < words.size(); n += 2) {
        words[n] += dx;
        words[n + 1] += dy;
    }
    return words;
}

// Walks through angles, from where the shape stands to each in turn; the same angle again turns by
// nothing. The angle counts in whole quarters, truncated toward zero.
template <class T>
void ExpectTurns(const QELSHAPEATTR& attr, int nWords, POINT c, const TurnRule& rule,
                 SIZE ref = {100, 100})
{
    const std::vector<std::vector<int>> walks = {
        {90},           {180},       {270},           {-90},       {90, 90},
        {180, 180},     {270, 270},  {-90, -90},      {450, 90},   {100, -100},
        {90, 180, 270}, {270, -270}, {90, 180, 0, 0}, {89, -89},   {359, -359},
        {-90, 90},      {360, 720},  {-180, 180},     {810, -450}, {0}};
    for (const std::vector<int>& walk : walks) {
        CTestView<T> view(attr, ref.cx, ref.cy);
        Words words = WordsOf(attr, nWords);
        int nRotation = 0;
        for (const int nAngle : walk) {
            SCOPED_TRACE(testing::Message() << "walk " << WordsText(walk) << " at " << nAngle);
            const int nQuarter = nAngle % 360 / 90 * 90;
            words = rule(words, c, ((nQuarter - nRotation) % 360 + 360) % 360 / 90);
            nRotation = nQuarter;
            EXPECT_EQ(1, view->Rotate(c, nAngle));
            EXPECT_EQ(WordsText(words), view.Geometry(nWords));
        }
    }
}

template <class T>
void ExpectMoves(const QELSHAPEATTR& attr, int nWords, const MoveRule& rule, SIZE ref = {100, 100})
{
    for (const int nBy : {0, 1, -1, 7, -9, 25, -30, 500, -700}) {
        SCOPED_TRACE(nBy);
        CTestView<T> across(attr, ref.cx, ref.cy);
        EXPECT_EQ(1, across->MoveX(nBy));
        Words words = rule(WordsOf(attr, nWords), nBy, 0);
        EXPECT_EQ(WordsText(words), across.Geometry(nWords));
        EXPECT_EQ(1, across->MoveY(-nBy)); // and on from there
        EXPECT_EQ(WordsText(rule(words, 0, -nBy)), across.Geometry(nWords));
        CTestView<T> down(attr, ref.cx, ref.cy);
        EXPECT_EQ(1, down->MoveY(nBy));
        EXPECT_EQ(WordsText(rule(WordsOf(attr, nWords), 0, nBy)), down.Geometry(nWords));
    }
}

// ---- arc, pie and chord: a box and two points ----

constexpr int RADIAL_WORDS = 8;

// The recorded call of such a shape in a drawing of that reference size, stretched freely.
inline std::string RadialCall(const char* pszName, const Words& w, const RECT& q, SIZE ref,
                              bool bPressed = false)
{
    const auto x = [&](int n) { return n * (q.right - q.left) / ref.cx + q.left; };
    const auto y = [&](int n) { return n * (q.bottom - q.top) / ref.cy + q.top; };
    RECT rc{x(w[0]), y(w[1]), x(w[2]), y(w[3])};
    const int nShift = bPressed ? 2 : 0; // the points always, the far edges inside the QEL rect
    rc.left += nShift;
    rc.top += nShift;
    if (rc.right + nShift <= q.right) rc.right += nShift;
    if (rc.bottom + nShift <= q.bottom) rc.bottom += nShift;
    const auto point = [&](int n) {
        return std::to_string(x(w[n]) + nShift) + "," + std::to_string(y(w[n + 1]) + nShift);
    };
    return std::string(pszName) + " " + RectText(rc) + " start " + point(4) + " end " + point(6);
}

inline Words RadialTurned(const Words& w, POINT c, int nQuarters)
{
    return BoxWords(TurnedPoints(w, 4, c, nQuarters),
                    TurnedRect({w[0], w[1], w[2], w[3]}, c, nQuarters));
}

// ---- pixels ----

// One raw call in a record's pen, brush and colours.
inline void PaintRaw(HDC hdc, const QELSHAPEATTR& attr, RECT rcBrush,
                     const std::function<void(HDC)>& call)
{
    HBRUSH hBrush = static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH));
    CQELDraft draft(static_cast<tagDRAFTSTYLE>(attr.nDraft)); // brushes have tests of their own
    ::SetBkMode(hdc, TRANSPARENT);
    if (attr.nStyle & QEL_STYLE_FILL_MASK) {
        ::SetBkColor(hdc, attr.clrA);
        ::SetTextColor(hdc, attr.clrB);
        ASSERT_NE(0, draft.GetDraftBrush(hBrush, &rcBrush, attr.clrB, attr.clrA));
    }
    const bool bPen = attr.nPenWidth != 0;
    CTestSelect pen(hdc,
                    bPen ? ::CreatePen(attr.nPenStyle, attr.nPenWidth, attr.clrPen)
                         : ::GetStockObject(NULL_PEN),
                    bPen);
    CTestSelect brush(hdc, hBrush, false);
    call(hdc);
}

// Records that cover the styles: the outline alone in every pen style, no outline, every hatch and
// gradient. A wide pen only once: curves with wide pens are slow.
inline std::vector<QELSHAPEATTR> FilledStyles(const Words& geometry)
{
    QELSHAPEATTR base = FilledAttr({});
    std::copy(geometry.begin(), geometry.end(), base.nGeometry);
    std::vector<QELSHAPEATTR> styles;
    for (int nPenStyle = PS_SOLID; nPenStyle <= PS_INSIDEFRAME; ++nPenStyle) {
        if (nPenStyle == PS_NULL) continue; // an outline that is not there shows nothing
        QELSHAPEATTR attr = base;
        attr.nStyle = QEL_STYLE_STROKE;
        attr.nPenStyle = nPenStyle;
        styles.push_back(attr);
    }
    QELSHAPEATTR wide = base;
    wide.nStyle = QEL_STYLE_STROKE;
    wide.nPenWidth = 3;
    styles.push_back(wide);
    QELSHAPEATTR dashed = base;
    dashed.nPenStyle = PS_DASH; // the fill, and not a colour, shows in the gaps
    styles.push_back(dashed);
    for (int nDraft = 0; nDraft < DRAFT_COUNT; ++nDraft) {
        QELSHAPEATTR attr = base;
        attr.nDraft = nDraft;
        styles.push_back(attr);
    }
    return styles;
}

// Every style of a filled shape against the same raw call. rcBrush: what a gradient runs over.
template <class T>
void ExpectStyles(const Words& geometry, const RECT& rcQel, SIZE ref, const RECT& rcBrush,
                  const std::function<void(HDC)>& call)
{
    for (const QELSHAPEATTR& attr : FilledStyles(geometry)) {
        SCOPED_TRACE(testing::Message() << "style " << attr.nStyle << " pen " << attr.nPenStyle
                                        << "/" << attr.nPenWidth << " draft " << attr.nDraft);
        CTestView<T> view(attr, ref.cx, ref.cy);
        ExpectPixels(view, rcQel, [&](HDC hdc) { PaintRaw(hdc, attr, rcBrush, call); });
    }
}

// Every style of a line: pens, and what shows in the gaps of a styled pen.
template <class T>
void ExpectLineStyles(const Words& geometry, const RECT& rcQel, SIZE ref,
                      const std::function<void(HDC)>& call)
{
    for (const DWORD nStyle : {QEL_STYLE_STROKE, QEL_STYLE_FILL, QEL_STYLE_FILL_3DUP}) {
        for (const int nPenStyle : {PS_SOLID, PS_DASH, PS_DOT, PS_DASHDOT, PS_DASHDOTDOT}) {
            SCOPED_TRACE(testing::Message() << "style " << nStyle << " pen " << nPenStyle);
            QELSHAPEATTR attr = FilledAttr({});
            std::copy(geometry.begin(), geometry.end(), attr.nGeometry);
            attr.nStyle = nStyle;
            attr.nPenStyle = nPenStyle;
            CTestView<T> view(attr, ref.cx, ref.cy);
            ExpectPixels(view, rcQel, [&](HDC hdc) {
                ::SetBkMode(hdc, nStyle ? OPAQUE : TRANSPARENT);
                ::SetBkColor(hdc, attr.clrB);
                CTestSelect pen(hdc, ::CreatePen(nPenStyle, 1, attr.clrPen), true);
                call(hdc);
            });
        }
    }
}

// ---- regions ----

// Whether a view's region is the expected one, exactly; both are deleted.
inline void ExpectSameRegion(HRGN hExpected, HRGN hRegion)
{
    ASSERT_NE(nullptr, hExpected);
    ASSERT_NE(nullptr, hRegion);
    RECT rc{};
    EXPECT_NE(NULLREGION, ::GetRgnBox(hExpected, &rc)); // two empty regions would agree
    EXPECT_TRUE(::EqualRgn(hExpected, hRegion));
    ::DeleteObject(hExpected);
    ::DeleteObject(hRegion);
}

// A view's region and the figure that one GDI call fills with a null pen: how many pixels differ
// that neither lie on nor touch the outline, the one that the same call draws with a thin pen.
inline int FarFromFilled(HRGN hRegion, const std::function<void(HDC)>& call, int nSize = 250)
{
    CTestBitmap region(nSize, nSize);
    CTestBitmap filled(nSize, nSize);
    CTestBitmap outline(nSize, nSize);
    PaintRegion(region, hRegion);
    ::DeleteObject(hRegion);
    {
        CTestSelect pen(filled.Dc(), ::GetStockObject(NULL_PEN), false);
        CTestSelect brush(filled.Dc(), ::GetStockObject(BLACK_BRUSH), false);
        call(filled.Dc());
    }
    {
        CTestSelect brush(outline.Dc(), ::GetStockObject(NULL_BRUSH), false);
        call(outline.Dc());
    }
    int nFar = 0;
    for (int y = 0; y < nSize; ++y) {
        for (int x = 0; x < nSize; ++x) {
            if (region.At(x, y) == filled.At(x, y)) continue;
            bool bNear = false;
            for (int v = std::max(y - 1, 0); v <= std::min(y + 1, nSize - 1); ++v)
                for (int u = std::max(x - 1, 0); u <= std::min(x + 1, nSize - 1); ++u)
                    bNear = bNear || outline.At(u, v) == 0;
            nFar += !bNear;
        }
    }
    return nFar;
}

} // namespace viewtest

using namespace viewtest;
