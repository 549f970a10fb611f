// That small texts and numbers can be read: no two characters look the same in the font that qel
// takes for texts, nor in the one that the system takes for the numbers of scales. The fonts are
// chosen in tools/qel/TextFont.cpp and scripts/setup.sh.
#include "meter/BarMeter.h"
#include "meter/Meter.h"
#include "tools/qel/TextFont.h"

#include "tests/support/Bitmap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr SIZE FRAME{36, 34}; // the largest character, 24 high or wide, and room around it
constexpr POINT ORIGIN{4, 4};

// All margins are in whole pixels: 1 is a pixel that changes from the colour of the paper to that
// of the ink, and two that change by half count the same. What changes only its tint counts by its
// brightness, since that is what carries a shape.
using Glyph = std::vector<float>; // how dark each pixel is, 0 to 1

// Between pairs that misreading makes dangerous two pixels, the least that a stroke of a letter has
// in a cell of 6 x 12; one pixel less is what smoothing adds to the side of any stroke.
constexpr float NAMED_MARGIN = 2;
// Between any other two: the dot by which some Chinese characters differ is not more.
constexpr float MARGIN = 1;

float Darkness(COLORREF clr)
{
    return 1 -
           (0.299F * GetRValue(clr) + 0.587F * GetGValue(clr) + 0.114F * GetBValue(clr)) / 255.0F;
}

Glyph ReadGlyph(const CTestBitmap& bitmap)
{
    Glyph glyph;
    for (int y = 0; y < bitmap.Height(); ++y)
        for (int x = 0; x < bitmap.Width(); ++x) glyph.push_back(Darkness(bitmap.At(x, y)));
    return glyph;
}

// Draws with a font of its own.
class CTextWriter {
public:
    explicit CTextWriter(HFONT hFont)
        : m_bitmap(FRAME.cx, FRAME.cy), m_font(m_bitmap.Dc(), hFont, true)
    {
        ::SetBkMode(m_bitmap.Dc(), TRANSPARENT);
    }
    Glyph Write(const std::string& text)
    {
        m_bitmap.Fill(RGB(255, 255, 255));
        ::TextOutA(m_bitmap.Dc(), ORIGIN.x, ORIGIN.y, text.c_str(), static_cast<int>(text.size()));
        return ReadGlyph(m_bitmap);
    }
    int Width(const std::string& text)
    {
        SIZE size{};
        EXPECT_NE(0, ::GetTextExtentPoint32A(m_bitmap.Dc(), text.c_str(),
                                             static_cast<int>(text.size()), &size));
        return size.cx;
    }

private:
    CTestBitmap m_bitmap;
    CTestSelect m_font;
};

// What the text element makes of the host's font for a cell; TextViewTests hold it to that.
HFONT FontOfTexts(SIZE cell)
{
    LOGFONTW font = qel::TextFont(qel::DefaultTextFace());
    font.lfWidth = cell.cx;
    font.lfHeight = cell.cy;
    font.lfCharSet = OEM_CHARSET;
    return ::CreateFontIndirectW(&font);
}

float Ink(const Glyph& glyph)
{
    float fInk = 0;
    for (const float f : glyph) fInk += f;
    return fInk;
}

float Distance(const Glyph& a, const Glyph& b, int nShiftX = 0, int nShiftY = 0)
{
    float fSum = 0;
    const int nShift = nShiftY * FRAME.cx + nShiftX;
    for (int i = FRAME.cx + 1; i < FRAME.cx * (FRAME.cy - 1) - 1; ++i)
        fSum += std::fabs(a[static_cast<std::size_t>(i)] - b[static_cast<std::size_t>(i + nShift)]);
    return fSum;
}

// The smallest of all places a pixel around: a shape that only stands elsewhere is the same shape.
float ShapeDistance(const Glyph& a, const Glyph& b)
{
    float fLeast = Distance(a, b);
    for (int y = -1; y <= 1; ++y)
        for (int x = -1; x <= 1; ++x) fLeast = std::min(fLeast, Distance(a, b, x, y));
    return fLeast;
}

using Writer = std::function<Glyph(const std::string&)>;

void ExpectApart(const Writer& write, const std::vector<std::string>& all, float fMargin)
{
    std::vector<Glyph> glyphs;
    for (const std::string& text : all) glyphs.push_back(write(text));
    for (std::size_t i = 0; i < all.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_LE(fMargin, ShapeDistance(glyphs[i], glyphs[j])) << all[j] << " and " << all[i];
}

std::vector<std::string> Each(const std::string& characters)
{
    std::vector<std::string> all;
    for (const char c : characters) all.emplace_back(1, c);
    return all;
}

// A pair's two characters, of one byte or of two.
void ExpectPairsApart(const Writer& write, std::initializer_list<const char*> pairs)
{
    for (const std::string pair : pairs) {
        const std::size_t nHalf = pair.size() / 2;
        ExpectApart(write, {pair.substr(0, nHalf), pair.substr(nHalf)}, NAMED_MARGIN);
    }
}

constexpr SIZE g_cells[] = {{6, 12}, {12, 12}};

TEST(Legible, LettersThatAreMistakenForEachOtherAreToldApartInTexts)
{
    for (const SIZE& cell : g_cells) {
        SCOPED_TRACE(cell.cx);
        CTextWriter writer(FontOfTexts(cell));
        const Writer write = [&writer](const std::string& text) { return writer.Write(text); };
        // The last ones, in GB2312: disaster and fire, earth and up, earth and scholar.
        ExpectPairsApart(write, {"41",
                                 "8S",
                                 "2Z",
                                 "0O",
                                 "5S",
                                 "68",
                                 "38",
                                 "1I",
                                 "1l",
                                 "Il",
                                 "B8",
                                 "- ",
                                 "-.",
                                 "6G",
                                 "08",
                                 "56",
                                 "89",
                                 "69",
                                 "17",
                                 "35",
                                 "\xD4\xD6\xBB\xF0",
                                 "\xC9\xCF\xCD\xC1",
                                 "\xCD\xC1\xCA\xBF"});
    }
}

TEST(Legible, NoTwoDigitsCapitalsOrHyphensAreTheSameInTexts)
{
    for (const SIZE& cell : g_cells) {
        SCOPED_TRACE(cell.cx);
        CTextWriter writer(FontOfTexts(cell));
        ExpectApart([&writer](const std::string& text) { return writer.Write(text); },
                    Each("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. "), MARGIN);
    }
}

struct Character {
    std::string text;
    Glyph glyph;
    float fInk;
};

// Level one of GB2312: 40 rows of 94 characters, the last one of 89.
std::vector<Character> LevelOne(CTextWriter& writer)
{
    std::vector<Character> all;
    for (int nHigh = 0xB0; nHigh <= 0xD7; ++nHigh)
        for (int nLow = 0xA1; nLow <= (nHigh == 0xD7 ? 0xF9 : 0xFE); ++nLow) {
            const std::string text{static_cast<char>(nHigh), static_cast<char>(nLow)};
            const Glyph glyph = writer.Write(text);
            all.push_back({text, glyph, Ink(glyph)});
        }
    return all;
}

// Two characters stand in cells of the same place, so they are not shifted over each other. Less
// ink than the margin between them is what only pairs of nearly the same ink can have.
TEST(Legible, NoTwoChineseCharactersOfLevelOneAreTheSameInTexts)
{
    for (const SIZE& cell : g_cells) {
        SCOPED_TRACE(cell.cx);
        CTextWriter writer(FontOfTexts(cell));
        std::vector<Character> all = LevelOne(writer);
        ASSERT_EQ(3755U, all.size());
        std::sort(all.begin(), all.end(),
                  [](const Character& a, const Character& b) { return a.fInk < b.fInk; });
        EXPECT_LT(0, all.front().fInk);
        for (std::size_t i = 0; i < all.size(); ++i)
            for (std::size_t j = i + 1; j < all.size() && all[j].fInk < all[i].fInk + MARGIN; ++j)
                ASSERT_LE(MARGIN, Distance(all[i].glyph, all[j].glyph))
                    << all[i].text << " and " << all[j].text;
    }
}

// What meters choose, and the wide one of font size code 3.
constexpr FontCell g_numberCells[] = {{6, 12}, {8, 8}, {8, 16}, {12, 12}, {12, 24}};

// They are digits, a point and a sign. A point may be one pixel. In 8 x 8 it is what the sign is a
// row lower, so those two count with their places.
TEST(Legible, NumbersOfScalesAreToldApart)
{
    for (const FontCell& cell : g_numberCells)
        for (const int nWeight : {FW_DONTCARE, FW_BOLD}) {
            if (cell.nHeight < 12 && nWeight == FW_BOLD) continue; // no meter has those
            SCOPED_TRACE(std::to_string(cell.nWidth) + " by " + std::to_string(cell.nHeight) +
                         " weight " + std::to_string(nWeight));
            CTextWriter writer(MakeMeterFont(cell, nWeight));
            const Writer write = [&writer](const std::string& text) { return writer.Write(text); };
            ExpectApart(write, Each("0123456789- "), NAMED_MARGIN);
            ExpectApart(write, Each("0123456789. "), MARGIN);
            EXPECT_LE(NAMED_MARGIN, Distance(write("-"), write(".")));
        }
}

// Else they reach over what stands beside them: their place follows from the cell.
TEST(Legible, NumbersOfScalesKeepToTheirCells)
{
    for (const FontCell& cell : g_numberCells)
        EXPECT_GE(12 * cell.nWidth,
                  CTextWriter(MakeMeterFont(cell, FW_DONTCARE)).Width("0123456789-."));
}

// The rightmost column in which a vertical bar of these sides paints its numbers.
int LastColumnOfNumbers(const RECT& rc, uint32_t nFontCode, int nFirst, int nExtra)
{
    const CTestBitmap bitmap(rc.right + 20, rc.bottom + 40);
    CUpBarMeter bar(nullptr, rc);
    bar.SetFontSize(nFontCode);
    bar.SetScaleStart(nFirst);
    bar.SetScaleEnd(nFirst + 10); // each number ends with the same digit
    bar.SetLabelColor(RGB(0, 0, 0));
    bar.SetTickCount(1);
    ::SetTextCharacterExtra(bitmap.Dc(), nExtra);
    EXPECT_EQ(1, bar.DrawLabels(bitmap.Dc()));
    int nLast = -1;
    for (int y = 0; y < bitmap.Height(); ++y)
        for (int x = 0; x < bitmap.Width(); ++x)
            if (bitmap.At(x, y) != RGB(255, 255, 255)) nLast = std::max(nLast, x);
    return nLast;
}

// The axis stands 7 pixels inside of the right side. Further apart than the font has them, as in
// a font that is wider than its cells, characters begin more to the left.
TEST(Legible, NumbersOfAVerticalBarAreClearOfItsAxisByTwoPixels)
{
    constexpr RECT BAR{20, 40, 220, 120};
    for (const uint32_t nFontCode : {1U, 2U, 3U, 4U, 5U, 6U, 7U, 8U, 9U, 10U})
        for (int nDigit = 0; nDigit < 10; ++nDigit)
            for (const int nExtra : {0, 5}) {
                const int nLast = LastColumnOfNumbers(BAR, nFontCode, 100 + nDigit, nExtra);
                EXPECT_LT(BAR.left, nLast);
                EXPECT_GE(BAR.right - 7 - 3, nLast)
                    << "code " << nFontCode << " digit " << nDigit << " extra " << nExtra;
            }
}

// A number that is painted over itself, as after every new value, is to stay as it was.
TEST(Legible, NumbersOfScalesAreNotSmoothed)
{
    for (const FontCell& cell : g_numberCells)
        for (const float f : CTextWriter(MakeMeterFont(cell, FW_BOLD)).Write("8"))
            EXPECT_NEAR(f > 0.5F ? 1 : 0, f, 1e-5);
}

} // namespace
