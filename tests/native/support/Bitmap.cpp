// Pictures for the tests of the native build: what tests/support/Bitmap.h promises, on the stand-in
// for GDI. A picture is the layers that can be seen. Pixels are known where fills lie on top; a
// test that asks for one of a curve, a slanted line or a text fails, and is left out by
// name (tests/native/LeftOut.cmake).
#include "tests/support/Bitmap.h"

#include "tests/native/GdiDouble.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Picture = std::vector<gdi::Layer>;

// Said once a test: some ask for every pixel of many pictures.
void FailForPixels()
{
    static const testing::TestInfo* s_pLast = nullptr;
    const testing::TestInfo* pTest = testing::UnitTest::GetInstance()->current_test_info();
    if (pTest != s_pLast) ADD_FAILURE() << "these pixels are not known here";
    s_pLast = pTest;
}

// The later fill takes from all layers below what it hides, and joins one of the same brush when
// there are only fills between: they do not overlap, so that their order is of no matter.
void AddFill(Picture* pPicture, gdi::Layer fill)
{
    for (gdi::Layer& layer : *pPicture)
        if (layer.bFill || layer.area.Minus(fill.area).IsEmpty())
            layer.area = layer.area.Minus(fill.area);
    std::erase_if(*pPicture, [](const gdi::Layer& layer) { return layer.area.IsEmpty(); });
    for (auto it = pPicture->rbegin(); it != pPicture->rend() && it->bFill; ++it)
        if (it->what == fill.what) {
            it->area = it->area.Or(fill.area);
            return;
        }
    pPicture->push_back(std::move(fill));
}

// A figure that is painted again hides what it painted before. Not so texts, whose smoothed edges
// darken, and what depends on the pixels below.
void AddFigure(Picture* pPicture, const gdi::Layer& figure)
{
    if (figure.what.rfind("Text", 0) != 0 && figure.what.find(" rop ") == std::string::npos)
        std::erase_if(*pPicture, [&](const gdi::Layer& layer) {
            return !layer.bFill && layer.what == figure.what && layer.area == figure.area;
        });
    pPicture->push_back(figure);
}

// What can be seen of the layers on a bitmap, which is white at first: fills in a row are sorted.
Picture PictureOf(const CTestBitmap& bitmap)
{
    Picture picture{{"brush ffffff", CArea::Rect(bitmap.Box()), true, nullptr}};
    for (const gdi::Layer& layer : gdi::Layers(bitmap.Dc()))
        if (layer.bFill)
            AddFill(&picture, layer);
        else
            AddFigure(&picture, layer);
    for (auto it = picture.begin(); it != picture.end();) {
        if (!it->area.IsExact()) ADD_FAILURE() << "a layer of too many parts: " << it->what;
        const auto end =
            std::find_if(it, picture.end(), [](const auto& layer) { return !layer.bFill; });
        std::sort(it, end, [](const auto& a, const auto& b) { return a.what < b.what; });
        it = end == picture.end() ? end : end + 1;
    }
    return picture;
}

bool IsSolid(const gdi::Layer& layer)
{
    return layer.bFill && layer.what.rfind("brush ", 0) == 0;
}

COLORREF ColorOf(const gdi::Layer& layer)
{
    return static_cast<COLORREF>(std::stoul(layer.what.substr(6), nullptr, 16));
}

long long CountIn(const gdi::Layer& layer, COLORREF clr)
{
    long long nCount = 0;
    for (const RECT& rc : layer.area.Rects())
        for (int y = rc.top; y < rc.bottom; ++y)
            for (int x = rc.left; x < rc.right; ++x) nCount += layer.pTile->At(x, y) == clr;
    return nCount;
}

std::string TextOf(const gdi::Layer& layer)
{
    return layer.bFill ? "fill " + layer.area.Text() + " " + layer.what : layer.what;
}

} // namespace

CTestBitmap::CTestBitmap(int nWidth, int nHeight, COLORREF clrBackground)
    : m_hdc(::CreateCompatibleDC(nullptr)),
      m_hBitmap(::CreateBitmap(nWidth, nHeight, 1, 32, nullptr)),
      m_hPrev(::SelectObject(m_hdc, m_hBitmap)), m_pPixels(nullptr), m_nWidth(nWidth),
      m_nHeight(nHeight)
{
    Fill(clrBackground);
}

CTestBitmap::~CTestBitmap()
{
    ::SelectObject(m_hdc, m_hPrev);
    ::DeleteObject(m_hBitmap);
    ::DeleteDC(m_hdc);
}

COLORREF CTestBitmap::At(int nX, int nY) const
{
    const auto& layers = gdi::Layers(m_hdc);
    for (auto it = layers.rbegin(); it != layers.rend(); ++it) {
        if (!it->area.Contains(nX, nY)) continue;
        if (it->bFill && it->area.IsExact()) {
            if (it->pTile) return it->pTile->At(nX, nY);
            if (IsSolid(*it)) return ColorOf(*it);
        }
        FailForPixels();
        return CLR_INVALID;
    }
    return RGB(255, 255, 255);
}

void CTestBitmap::Fill(COLORREF clr)
{
    gdi::LogPaintings(m_hdc);
    if (clr == RGB(255, 255, 255)) return;
    RECT rc = Box();
    const gdi::CNoFaults noFaults;
    const HBRUSH hBrush = ::CreateSolidBrush(clr);
    ::FillRect(m_hdc, &rc, hBrush);
    ::DeleteObject(hBrush);
}

std::string FirstDifference(const CTestBitmap& expected, const CTestBitmap& actual)
{
    if (expected.Width() != actual.Width() || expected.Height() != actual.Height())
        return "sizes differ";
    const Picture wanted = PictureOf(expected);
    const Picture painted = PictureOf(actual);
    for (std::size_t n = 0; n < std::max(wanted.size(), painted.size()); ++n) {
        const std::string a = n < wanted.size() ? TextOf(wanted[n]) : "nothing";
        const std::string b = n < painted.size() ? TextOf(painted[n]) : "nothing";
        if (a == b) continue;
        const bool bSame = n < wanted.size() && n < painted.size() && wanted[n].bFill &&
                           painted[n].bFill && wanted[n].what == painted[n].what &&
                           wanted[n].area == painted[n].area;
        if (!bSame) return "layer " + std::to_string(n) + ": " + b + ", expected " + a;
    }
    return "";
}

bool IsBlank(const CTestBitmap& bitmap)
{
    const Picture picture = PictureOf(bitmap);
    return picture.size() == 1 && IsSolid(picture[0]);
}

int CountPixels(const CTestBitmap& bitmap, COLORREF clr)
{
    long long nCount = 0;
    for (const gdi::Layer& layer : PictureOf(bitmap)) {
        if (!IsSolid(layer) && !layer.pTile) {
            FailForPixels();
            return -1;
        }
        if (layer.pTile)
            nCount += CountIn(layer, clr);
        else if (ColorOf(layer) == clr)
            nCount += layer.area.Count();
    }
    return static_cast<int>(nCount);
}

std::string DcState(HDC hdc)
{
    return gdi::State(hdc);
}
