// Gradient descriptors: every kind pixel for pixel against formulas written here, the alignment to
// the rectangle, and what is refused. The code is brush/Gradient.*.
#include "brush/Gradient.h"

#include "tests/support/Bitmap.h"
#include "tests/support/Recording.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <set>
#include <string>
#include <utility>

namespace {

// ---- the formulas, per channel ----

struct Axis {
    int nPixel;  // column or row of the bitmap
    int nOrigin; // the rectangle's left or top
    int nLength;
};

int Ramp(const Axis& at, int a, int b)
{
    if (at.nLength < 1 || a == b) return a;
    const long long nFrom = static_cast<long long>(at.nPixel) - at.nOrigin;
    if (nFrom < 0) return static_cast<int>(b - (-nFrom - 1) % at.nLength * (b - a) / at.nLength);
    return static_cast<int>(a + nFrom % at.nLength * (b - a) / at.nLength);
}

int ThereAndBack(const Axis& at, int a, int b)
{
    if (at.nLength < 2 || a == b) return a;
    const int nHalf = at.nLength / 2;
    const long long nFrom = static_cast<long long>(at.nPixel) - at.nOrigin;
    const long long nStep = (nFrom < 0 ? -nFrom - 1 : nFrom) % at.nLength;
    if (nStep >= nHalf) return static_cast<int>(b - (nStep - nHalf) * (b - a) / nHalf);
    return static_cast<int>(a + nStep * (b - a) / nHalf);
}

int Reflected(int nValue, int a, int b)
{
    const bool bPassed = a <= b ? nValue > b : nValue < b;
    return bPassed ? 2 * b - nValue : nValue;
}

int Channel(int nKind, const Axis& x, const Axis& y, int a, int b)
{
    const int h = Ramp(x, a, b);
    const int v = Ramp(y, a, b);
    const int rh = Ramp(x, b, a);
    const int hh = ThereAndBack(x, a, b);
    const int vv = ThereAndBack(y, a, b);
    const int rhh = ThereAndBack(x, b, a);
    const auto sum = [&](int nAcross, int nDown) {
        return Reflected(a + (nAcross - a) + (nDown - a), a, b);
    };
    const auto distance = [&](int n) { return n > a ? n - a : a - n; };
    switch (nKind) {
    case 0:
        return h;
    case 1:
        return v;
    case 2:
        return (v + h) >> 1;
    case 3:
        return (v + rh) >> 1;
    case 4:
        return hh;
    case 5:
        return vv;
    case 6:
        return sum(h, v);
    case 7:
        return sum(rh, v);
    case 8:
        return sum(hh, v);
    case 9:
        return sum(h, vv);
    case 10:
        return sum(hh, vv);
    case 11:
        return sum(rhh, vv);
    case 12:
        return (hh + vv) >> 1;
    default:
        return distance(hh) <= distance(vv) ? hh : vv;
    }
}

// The colour that a device pixel takes when the brush is tiled from the device origin.
COLORREF Expected(int nKind, const RECT& rc, int nX, int nY, COLORREF clr1, COLORREF clr2)
{
    const bool bOneColumn = nKind == 1 || nKind == 5;
    const bool bOneRow = nKind == 0 || nKind == 4;
    const int nWidth = bOneColumn ? 1 : rc.right - rc.left;
    const int nHeight = bOneRow ? 1 : rc.bottom - rc.top;
    const Axis x{nX % nWidth, rc.left, nWidth};
    const Axis y{nY % nHeight, rc.top, nHeight};
    return RGB(Channel(nKind, x, y, GetRValue(clr1), GetRValue(clr2)),
               Channel(nKind, x, y, GetGValue(clr1), GetGValue(clr2)),
               Channel(nKind, x, y, GetBValue(clr1), GetBValue(clr2)));
}

class CDescriptor {
public:
    CDescriptor(const RECT& rc, int nKind, COLORREF clr1, COLORREF clr2)
        : m_hGradient(QELCreateGradientDescriptor(&rc, nKind, clr1, clr2))
    {
    }
    ~CDescriptor() { QELCloseGradientDescriptor(m_hGradient); }
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    HQELGRADIENT Handle() const { return m_hGradient; }
    HBRUSH Brush() const { return QELGetGradientBrush(m_hGradient); }

private:
    HQELGRADIENT m_hGradient;
};

void Paint(const CTestBitmap& bitmap, HBRUSH hBrush)
{
    CTestSelect brush(bitmap.Dc(), hBrush, false);
    ::PatBlt(bitmap.Dc(), 0, 0, bitmap.Width(), bitmap.Height(), PATCOPY);
}

std::string ComparePixels(int nKind, const RECT& rc, COLORREF clr1, COLORREF clr2)
{
    const CDescriptor gradient(rc, nKind, clr1, clr2);
    if (!gradient.Brush()) return "no brush";
    CTestBitmap drawn(61, 47);
    Paint(drawn, gradient.Brush());
    for (int y = 0; y < drawn.Height(); ++y)
        for (int x = 0; x < drawn.Width(); ++x)
            if (drawn.At(x, y) != Expected(nKind, rc, x, y, clr1, clr2)) {
                char sz[100];
                std::snprintf(sz, sizeof sz, "pixel %d,%d: %06lx, expected %06lx", x, y,
                              static_cast<unsigned long>(drawn.At(x, y)),
                              static_cast<unsigned long>(Expected(nKind, rc, x, y, clr1, clr2)));
                return sz;
            }
    return "";
}

std::string Name(const RECT& rc)
{
    return std::to_string(rc.left) + "," + std::to_string(rc.top) + "," + std::to_string(rc.right) +
           "," + std::to_string(rc.bottom);
}

constexpr COLORREF CLR_1 = RGB(250, 10, 0);
constexpr COLORREF CLR_2 = RGB(0, 240, 77); // one channel falls, two rise

class GradientKind : public ::testing::TestWithParam<int> {};

} // namespace

TEST_P(GradientKind, PaintsEveryPixelByItsFormulaWhereverTheRectangleBegins)
{
    const RECT rects[] = {{0, 0, 32, 24},      {37, 5, 68, 28},
                          {13, 17, 30, 40},    {-7, -3, 20, 18},
                          {-100, -90, -60, 0}, {200, 300, 233, 327} /* the bitmap is left of it */,
                          {3, 4, 5, 6},        {5, 6, 6, 7},
                          {10, 2, 11, 30},     {2, 10, 30, 11}};
    for (const RECT& rc : rects) {
        SCOPED_TRACE(Name(rc));
        EXPECT_EQ("", ComparePixels(GetParam(), rc, CLR_1, CLR_2));
        EXPECT_EQ("", ComparePixels(GetParam(), rc, CLR_2, CLR_1));
    }
}

TEST_P(GradientKind, KeepsEveryChannelBetweenThoseOfTheTwoColors)
{
    const RECT rc{11, 7, 44, 30};
    const COLORREF clrLow = RGB(20, 100, 200);
    const COLORREF clrHigh = RGB(30, 90, 203);
    const CDescriptor gradient(rc, GetParam(), clrLow, clrHigh);
    ASSERT_NE(nullptr, gradient.Brush());
    CTestBitmap drawn(66, 46);
    Paint(drawn, gradient.Brush());
    EXPECT_FALSE(IsBlank(drawn));
    for (int y = 0; y < drawn.Height(); ++y)
        for (int x = 0; x < drawn.Width(); ++x) {
            const COLORREF clr = drawn.At(x, y);
            ASSERT_TRUE(GetRValue(clr) >= 20 && GetRValue(clr) <= 30) << x << "," << y;
            ASSERT_TRUE(GetGValue(clr) >= 90 && GetGValue(clr) <= 100) << x << "," << y;
            ASSERT_TRUE(GetBValue(clr) >= 200 && GetBValue(clr) <= 203) << x << "," << y;
        }
}

TEST_P(GradientKind, OfOneColorTwiceIsSolid)
{
    const RECT rc{9, 4, 30, 21};
    const COLORREF clr = RGB(12, 34, 56);
    const CDescriptor gradient(rc, GetParam(), clr, clr);
    CTestBitmap drawn(50, 40);
    Paint(drawn, gradient.Brush());
    EXPECT_EQ(50 * 40, CountPixels(drawn, clr));
}

TEST_P(GradientKind, IgnoresTheHighByteOfTheColors)
{
    const RECT rc{0, 0, 20, 20};
    const CDescriptor plain(rc, GetParam(), CLR_1, CLR_2);
    const CDescriptor marked(rc, GetParam(), CLR_1 | 0x80000000, CLR_2 | 0x7F000000);
    CTestBitmap expected(20, 20), drawn(20, 20);
    Paint(expected, plain.Brush());
    Paint(drawn, marked.Brush());
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ("", FirstDifference(expected, drawn));
}

INSTANTIATE_TEST_SUITE_P(Each, GradientKind, ::testing::Range(0, 14));

TEST(Gradient, PaintsTheFirstColorExactlyAtTheRectanglesEdge)
{
    // 40 wide: device column 37 is bitmap column 37, the ramp's first.
    const RECT rc{37, 0, 77, 10};
    const CDescriptor gradient(rc, 0, RGB(200, 0, 0), RGB(0, 0, 200));
    CTestBitmap drawn(90, 1);
    Paint(drawn, gradient.Brush());
    EXPECT_EQ(RGB(200, 0, 0), drawn.At(37, 0));
    EXPECT_EQ(RGB(195, 0, 5), drawn.At(38, 0)); // a fortieth of 200 a column
    EXPECT_EQ(RGB(190, 0, 10), drawn.At(39, 0));
}

TEST(Gradient, HasFourteenKindsThatAreAllDifferent)
{
    const RECT rc{3, 5, 33, 27};
    for (int i = 0; i < 14; ++i)
        for (int j = 0; j < i; ++j) {
            const CDescriptor one(rc, i, CLR_1, CLR_2), other(rc, j, CLR_1, CLR_2);
            CTestBitmap bitmapOne(30, 22), bitmapOther(30, 22);
            Paint(bitmapOne, one.Brush());
            Paint(bitmapOther, other.Brush());
            EXPECT_NE("", FirstDifference(bitmapOne, bitmapOther)) << i << " and " << j;
        }
}

TEST(Gradient, RefusesANullOrEmptyRectangleAndOtherKinds)
{
    const RECT rc{0, 0, 10, 10};
    EXPECT_EQ(nullptr, QELCreateGradientDescriptor(nullptr, 0, CLR_1, CLR_2));
    for (const int nKind : {-1, 14, 15, INT_MIN, INT_MAX})
        EXPECT_EQ(nullptr, QELCreateGradientDescriptor(&rc, nKind, CLR_1, CLR_2)) << nKind;
    for (const RECT& rcEmpty : {RECT{0, 0, 0, 10}, RECT{0, 0, 10, 0}, RECT{10, 0, 0, 10},
                                RECT{0, 10, 10, 0}, RECT{5, 5, 5, 5}})
        for (int nKind = 0; nKind < 14; ++nKind)
            EXPECT_EQ(nullptr, QELCreateGradientDescriptor(&rcEmpty, nKind, CLR_1, CLR_2))
                << Name(rcEmpty) << " kind " << nKind;
}

TEST(Gradient, ClosesOnceAndRefusesTheHandleAfterwards)
{
    const RECT rc{0, 0, 10, 10};
    const HQELGRADIENT hGradient = QELCreateGradientDescriptor(&rc, 2, CLR_1, CLR_2);
    const HBRUSH hBrush = QELGetGradientBrush(hGradient);
    ASSERT_EQ(static_cast<DWORD>(OBJ_BRUSH), ::GetObjectType(hBrush));
    EXPECT_EQ(1, QELCloseGradientDescriptor(hGradient));
    EXPECT_EQ(0u, ::GetObjectType(hBrush)); // the descriptor owned it
    EXPECT_EQ(0, QELCloseGradientDescriptor(hGradient));
    EXPECT_EQ(nullptr, QELGetGradientBrush(hGradient));
    EXPECT_EQ(0, QELCloseGradientDescriptor(nullptr));
    EXPECT_EQ(nullptr, QELGetGradientBrush(nullptr));
}

TEST(Gradient, GivesNoHandleOutASecondTime)
{
    const RECT rc{0, 0, 2, 2};
    std::set<HQELGRADIENT> seen;
    for (int i = 0; i < 2000; ++i) {
        const HQELGRADIENT hGradient = QELCreateGradientDescriptor(&rc, i % 14, CLR_1, CLR_2);
        ASSERT_NE(nullptr, hGradient);
        ASSERT_TRUE(seen.insert(hGradient).second) << i;
        ASSERT_EQ(1, QELCloseGradientDescriptor(hGradient));
    }
}

TEST(Gradient, GivesADescriptorWithoutABrushWhenTheBitmapCannotBe)
{
    // Width 2^32 - 1 wraps to -1; the others have more than 2^26 pixels.
    for (const RECT& rc :
         {RECT{INT_MIN, 0, INT_MAX, 10}, RECT{0, 0, 65536, 65536}, RECT{0, 0, INT_MAX, INT_MAX},
          RECT{-1, -1, INT_MAX, INT_MAX}, RECT{0, 0, 8192, 8193}, RECT{-9000, 0, 0, 9000}}) {
        SCOPED_TRACE(Name(rc));
        const CDescriptor gradient(rc, 6, CLR_1, CLR_2);
        ASSERT_NE(nullptr, gradient.Handle());
        EXPECT_EQ(nullptr, gradient.Brush());
        EXPECT_EQ(1, QELCloseGradientDescriptor(gradient.Handle()));
    }
}

TEST(Gradient, HasABrushOverTheLargestScreens)
{
    const CDescriptor gradient({0, 0, 7680, 4320}, 6, CLR_1, CLR_2);
    EXPECT_NE(nullptr, gradient.Brush());
}

TEST(Gradient, ForcesOneRowOrColumnBeforeItLooksAtTheSize)
{
    // A width or height that is nothing in 32 bits does no harm where it is set to 1 anyway.
    const RECT rcWide{INT_MIN, 0, INT_MAX, 10};
    const RECT rcHigh{0, INT_MIN, 10, INT_MAX};
    for (const int nKind : {1, 5}) {
        const CDescriptor gradient(rcWide, nKind, CLR_1, CLR_2);
        EXPECT_NE(nullptr, gradient.Brush()) << nKind;
        EXPECT_EQ("", ComparePixels(nKind, {5, 0, 9, 10}, CLR_1, CLR_2));
    }
    for (const int nKind : {0, 4}) {
        const CDescriptor gradient(rcHigh, nKind, CLR_1, CLR_2);
        ASSERT_NE(nullptr, gradient.Brush()) << nKind;
        CTestBitmap drawn(10, 30);
        Paint(drawn, gradient.Brush());
        for (int x = 0; x < 10; ++x)
            for (const int y : {0, 1, 29})
                ASSERT_EQ(Expected(nKind, rcHigh, x, y, CLR_1, CLR_2), drawn.At(x, y));
    }
}

TEST(Gradient, FillsARectangleWithOneCallAndNoOutline)
{
    const RECT rc{4, 3, 24, 18};
    CGradient* const pGradient = CGradient::Create(&rc, 6, CLR_1, CLR_2);
    ASSERT_NE(nullptr, pGradient);
    {
        CRecording recording;
        EXPECT_EQ(1, pGradient->Fill(recording.Dc(), 4, 3, 20, 15));
        EXPECT_EQ((std::vector<std::string>{"Rectangle 4,3,24,18"}),
                  recording.Only({"Rectangle", "PatBlt"}));
        EXPECT_EQ(1u, recording.Only({"SelectStock NULL_PEN"}).size());
    }
    CTestBitmap expected(40, 30), drawn(40, 30);
    {
        CTestSelect brush(expected.Dc(), pGradient->Brush(), false);
        CTestSelect pen(expected.Dc(), ::GetStockObject(NULL_PEN), false);
        ::Rectangle(expected.Dc(), 4, 3, 24, 18);
    }
    const std::string before = DcState(drawn.Dc());
    EXPECT_EQ(1, pGradient->Fill(drawn.Dc(), 4, 3, 20, 15));
    EXPECT_EQ(before, DcState(drawn.Dc()));
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ("", FirstDifference(expected, drawn));
    delete pGradient;
}

TEST(Gradient, FillsNothingWithoutWidthOrHeightAndFailsWithoutABrush)
{
    const RECT rc{0, 0, 20, 20};
    CGradient* const pGradient = CGradient::Create(&rc, 6, CLR_1, CLR_2);
    CTestBitmap drawn(20, 20);
    for (const SIZE& size : {SIZE{0, 5}, SIZE{-3, 5}, SIZE{5, 0}, SIZE{5, -1}})
        pGradient->Fill(drawn.Dc(), 10, 10, size.cx, size.cy);
    EXPECT_EQ(20 * 20, CountPixels(drawn, RGB(255, 255, 255)));
    delete pGradient;

    const RECT rcHuge{0, 0, 65536, 65536};
    CGradient* const pBare = CGradient::Create(&rcHuge, 6, CLR_1, CLR_2);
    ASSERT_NE(nullptr, pBare);
    EXPECT_EQ(0, pBare->Fill(drawn.Dc(), 0, 0, 10, 10));
    EXPECT_EQ(20 * 20, CountPixels(drawn, RGB(255, 255, 255)));
    delete pBare;
}

TEST(Gradient, RampFunctionsAreTheFormulasOfTheTest)
{
    for (const int nOrigin : {-50, -1, 0, 7, 100})
        for (const int nLength : {0, 1, 2, 3, 10, 31})
            for (int p = 0; p < 40; ++p)
                for (const auto& [a, b] : {std::pair{0, 255}, {255, 0}, {17, 17}, {90, 100}}) {
                    const Axis at{p, nOrigin, nLength};
                    ASSERT_EQ(Ramp(at, a, b), GradientRamp(p, nOrigin, nLength, a, b))
                        << p << " " << nOrigin << " " << nLength;
                    ASSERT_EQ(ThereAndBack(at, a, b),
                              GradientThereAndBack(p, nOrigin, nLength, a, b))
                        << p << " " << nOrigin << " " << nLength;
                }
}
