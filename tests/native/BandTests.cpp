// Which figures and regions stand for outlines along curves, and what is left when the system
// refuses one. The pixels are in tests/BandStrokeTests.cpp, the code is base/BandStroke.*.
#include "base/PixelPen.h"
#include "base/Refusals.h"
#include "tests/native/GdiDouble.h"
#include "tests/support/Bitmap.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

constexpr CPixelScale TWICE(200);
constexpr RECT BOX{20, 16, 101, 76};
constexpr POINT START{120, 10};
constexpr POINT END{0, 50};

enum class Brush { None, Solid, Hatch };

class CSurface { // with a pen of two units
public:
    explicit CSurface(Brush nBrush, bool bRound = false)
        : m_picture(200, 200), m_pen(m_picture.Dc(), MakePen(bRound), true),
          m_brush(m_picture.Dc(), MakeBrush(nBrush), nBrush != Brush::None)
    {
    }
    std::vector<std::string> Draw(const std::function<void(HDC)>& draw)
    {
        HDC hdc = m_picture.Dc();
        const gdi::CLeakCheck leaks;
        const gdi::CStateCheck state(hdc);
        gdi::LogPaintings(hdc);
        draw(hdc);
        return gdi::Paintings(hdc);
    }

private:
    static HGDIOBJ MakePen(bool bRound)
    {
        const LOGBRUSH color{BS_SOLID, 0xCC6633, 0};
        return bRound ? ::CreatePen(PS_SOLID, 2, 0xCC6633)
                      : ::ExtCreatePen(PS_GEOMETRIC | PS_ENDCAP_FLAT | PS_JOIN_MITER, 2, &color, 0,
                                       nullptr);
    }
    static HGDIOBJ MakeBrush(Brush nBrush)
    {
        if (nBrush == Brush::None) return ::GetStockObject(NULL_BRUSH);
        return nBrush == Brush::Solid ? ::CreateSolidBrush(0x448822)
                                      : ::CreateHatchBrush(HS_CROSS, 0x448822);
    }

    CTestBitmap m_picture;
    CTestSelect m_pen;
    CTestSelect m_brush;
};

std::string KindsOf(const std::vector<std::string>& paintings)
{
    std::string kinds;
    for (const std::string& painting : paintings)
        kinds += (kinds.empty() ? "" : " ") + painting.substr(0, painting.find_first_of(" ("));
    return kinds;
}

void DrawEllipse(HDC hdc)
{
    DrawPixelEllipse(hdc, BOX, TWICE);
}
void DrawArc(HDC hdc)
{
    DrawPixelArc(hdc, BOX, START, END, TWICE);
}
void DrawChord(HDC hdc)
{
    DrawPixelChord(hdc, BOX, START, END, TWICE);
}
void DrawPie(HDC hdc)
{
    DrawPixelPie(hdc, BOX, START, END, TWICE);
}
void DrawRoundRect(HDC hdc)
{
    DrawPixelRoundRect(hdc, BOX, {16, 20}, TWICE);
}
void DrawRectangle(HDC hdc)
{
    DrawPixelRectangle(hdc, BOX, 1, TWICE);
}

} // namespace

TEST(Band, LiesBetweenTwoFiguresAroundAFillThatHidesWhatIsBelow)
{
    EXPECT_EQ("Ellipse Ellipse", KindsOf(CSurface(Brush::Solid).Draw(DrawEllipse)));
    EXPECT_EQ("RoundRect RoundRect", KindsOf(CSurface(Brush::Solid).Draw(DrawRoundRect)));
    EXPECT_EQ("fill fill", KindsOf(CSurface(Brush::Solid).Draw(DrawRectangle)));
    EXPECT_EQ("Chord Chord line", KindsOf(CSurface(Brush::Solid).Draw(DrawChord)));
    EXPECT_EQ("Pie Pie line line", KindsOf(CSurface(Brush::Solid).Draw(DrawPie)));
}

TEST(Band, IsARegionElsewhere)
{
    EXPECT_EQ("fill", KindsOf(CSurface(Brush::None).Draw(DrawEllipse)));
    EXPECT_EQ("Ellipse fill", KindsOf(CSurface(Brush::Hatch).Draw(DrawEllipse)));
    EXPECT_EQ("RoundRect fill", KindsOf(CSurface(Brush::Hatch).Draw(DrawRoundRect)));
    EXPECT_EQ("fill line", KindsOf(CSurface(Brush::None).Draw(DrawChord)));
    EXPECT_EQ("Pie fill line line", KindsOf(CSurface(Brush::Hatch).Draw(DrawPie)));
    EXPECT_EQ("fill", KindsOf(CSurface(Brush::Solid).Draw(DrawArc)));
    EXPECT_EQ("fill Ellipse Ellipse", KindsOf(CSurface(Brush::Solid, true).Draw(DrawArc)));
}

// The first objects are those that are tried once in a process: an ellipse before takes them.
TEST(Band, WithoutItsBrushThereIsTheSystemsPen)
{
    CSurface(Brush::Solid).Draw(DrawEllipse);
    CSurface surface(Brush::Solid);
    gdi::FailCreation(1);
    const auto paintings = surface.Draw(DrawEllipse);
    gdi::FailCreation(0);
    EXPECT_EQ("Ellipse", KindsOf(paintings));
}

TEST(Band, WithoutARegionTheRestIsDrawnAndTheRefusalIsCounted)
{
    CSurface(Brush::None).Draw(DrawEllipse);
    struct Case {
        void (*pfnDraw)(HDC);
        int nRegions;
        const char* pszRest;
    };
    for (const auto& [pfnDraw, nRegions, pszRest] :
         {Case{DrawEllipse, 2, ""}, Case{DrawRoundRect, 2, ""}, Case{DrawArc, 3, ""},
          Case{DrawPie, 3, "line line"}})
        for (int n = 0; n < nRegions; ++n) {
            CSurface surface(Brush::None);
            const uint32_t nBefore = CountRefusals();
            gdi::FailCreation(2 + n); // behind the brush
            const auto paintings = surface.Draw(pfnDraw);
            gdi::FailCreation(0);
            EXPECT_EQ(pszRest, KindsOf(paintings)) << n;
            EXPECT_EQ(nBefore + 1, CountRefusals()) << n;
        }
}
