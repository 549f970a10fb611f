// The base of all meters, seen through a meter whose layers only write down that they were asked
// for: their order and switches, mirroring, the last value, the fields, printed values and the
// sizes of text. The code is meter/Meter.cpp.
#include "meter/Meter.h"

#include "base/Rects.h"
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

constexpr uint32_t FLAGS = 0x10 | QEL_DRAW_FULL; // passed on as they are

class CProbe final : public CMeter {
public:
    explicit CProbe(int nResult = 1) : m_nResult(nResult) {}

    int DrawScale(HDC hdc) override { return Note(hdc, "scale"); }
    int DrawAxis(HDC hdc) override { return Note(hdc, "axis"); }
    int DrawLabels(HDC hdc) override { return Note(hdc, "labels"); }
    int DrawPin(HDC hdc, float f, uint32_t n) override { return Note(hdc, "pin", f, n); }
    int DrawPin(HDC hdc, int32_t i, uint32_t n) override { return Note(hdc, "pin", i, n); }
    int ErasePin(HDC hdc, float f, uint32_t n) override
    {
        m_erasedAt.push_back(GetShownValue());
        return Note(hdc, "erase", f, n);
    }
    int ErasePin(HDC hdc, int32_t i, uint32_t n) override
    {
        m_erasedAt.push_back(GetShownValue());
        return Note(hdc, "erase", i, n);
    }
    int DrawFill(HDC hdc, float f, uint32_t n) override { return Note(hdc, "fill", f, n); }
    int DrawFill(HDC hdc, int32_t i, uint32_t n) override { return Note(hdc, "fill", i, n); }
    int DrawAlarmZones(HDC hdc) override { return Note(hdc, "alarm"); }
    int DrawFrame(HDC hdc) override { return Note(hdc, "frame"); }
    int DrawValueText(HDC hdc, float f) override { return Note(hdc, "value " + Text(f)); }
    int DrawValueText(HDC hdc, int32_t i) override { return Note(hdc, "value " + Text(i)); }

    // What was asked for since the last call of this.
    Lines Taken()
    {
        Lines lines;
        lines.swap(m_lines);
        return lines;
    }
    std::vector<int32_t> m_erasedAt; // the shown value at each erase
    std::vector<HDC> m_contexts;

private:
    static std::string Text(int32_t n) { return "int " + std::to_string(n); }
    static std::string Text(float f)
    {
        char sz[80];
        std::snprintf(sz, sizeof sz, "real %.2f", static_cast<double>(f));
        return sz;
    }
    int Note(HDC hdc, const std::string& line)
    {
        m_contexts.push_back(hdc);
        m_lines.push_back(line);
        return m_nResult;
    }
    template <class Value>
    int Note(HDC hdc, const char* pszLayer, Value value, uint32_t nFlags)
    {
        return Note(hdc, pszLayer + (" " + Text(value)) + " flags " + std::to_string(nFlags));
    }

    int m_nResult;
    Lines m_lines;
};

// A switch and the layers it stands for; V is the value, F the flags.
struct Layer {
    const char* pszName;
    void (CMeter::*pfnShow)(int32_t);
    Lines lines;
};

Lines Filled(Lines lines, const std::string& value, uint32_t nFlags)
{
    for (std::string& line : lines) {
        if (const auto n = line.find('V'); n != std::string::npos) line.replace(n, 1, value);
        if (const auto n = line.find('F'); n != std::string::npos)
            line.replace(n, 1, "flags " + std::to_string(nFlags));
    }
    return lines;
}

const Layer g_layers[] = {
    {"fill", &CMeter::SetShowFill, {"fill V F"}},
    {"pin", &CMeter::SetShowPin, {"erase V F", "pin V F"}},
    {"alarm", &CMeter::SetShowAlarm, {"alarm"}},
    {"axis", &CMeter::SetShowAxis, {"axis"}},
    {"frame", &CMeter::SetShowFrame, {"frame"}},
    {"value", &CMeter::SetShowValue, {"value V"}},
    {"scale", &CMeter::SetShowScale, {"scale"}},
    {"labels", &CMeter::SetShowLabels, {"labels"}},
};

const Lines g_all = {"fill V F", "erase V F", "alarm",  "axis",   "frame",
                     "value V",  "scale",     "labels", "pin V F"};

void ShowAll(CMeter& meter)
{
    for (const Layer& layer : g_layers) (meter.*layer.pfnShow)(1);
}

std::string Printed(const CMeter& meter, float fValue)
{
    char sz[CMeter::VALUE_TEXT_SIZE];
    std::memset(sz, '#', sizeof sz);
    EXPECT_EQ(1, meter.FormatValue(sz, fValue));
    const void* pEnd = std::memchr(sz, 0, sizeof sz);
    EXPECT_NE(nullptr, pEnd) << "no end of the text";
    return pEnd ? sz : "";
}

// ---- layers ----

TEST(Meter, PaintsItsLayersFromTheFillToThePointer)
{
    const CTestBitmap bitmap(1, 1);
    for (const uint32_t nFlags : {0U, FLAGS, 0xFFFFFFFFU}) {
        CProbe meter;
        ShowAll(meter);
        EXPECT_EQ(1, meter.Draw(bitmap.Dc(), 3, nFlags));
        EXPECT_EQ(Filled(g_all, "int 3", nFlags), meter.Taken());
        EXPECT_EQ(1, meter.Draw(bitmap.Dc(), 3.25F, nFlags));
        EXPECT_EQ(Filled(g_all, "real 3.25", nFlags), meter.Taken());
        EXPECT_EQ(std::vector<HDC>(2 * g_all.size(), bitmap.Dc()), meter.m_contexts);
    }
}

TEST(Meter, EachSwitchBringsItsOwnLayersAlone)
{
    for (const Layer& layer : g_layers)
        for (const int32_t nOn : {1, 2, -1, INT_MIN}) { // anything but 0 is on
            CProbe meter;
            (meter.*layer.pfnShow)(nOn);
            EXPECT_EQ(1, meter.Draw(nullptr, -4, FLAGS));
            EXPECT_EQ(Filled(layer.lines, "int -4", FLAGS), meter.Taken()) << layer.pszName;
            EXPECT_EQ(1, meter.Draw(nullptr, -4.5F, FLAGS));
            EXPECT_EQ(Filled(layer.lines, "real -4.50", FLAGS), meter.Taken()) << layer.pszName;
            (meter.*layer.pfnShow)(0);
            EXPECT_EQ(1, meter.Draw(nullptr, 1, FLAGS));
            EXPECT_EQ(Lines{}, meter.Taken()) << layer.pszName;
        }
}

TEST(Meter, WithAllSwitchesOffPaintsNothingAndKeepsTheValue)
{
    CProbe meter;
    EXPECT_EQ(1, meter.Draw(nullptr, 42, FLAGS));
    EXPECT_EQ(42, meter.GetLastValue());
    EXPECT_EQ(1, meter.Draw(nullptr, 17.5F, 0U));
    EXPECT_EQ(17, meter.GetLastValue());
    EXPECT_EQ(Lines{}, meter.Taken());
}

TEST(Meter, ALayerThatDrawsNothingStopsNoOther)
{
    for (const int nResult : {0, 1, -1}) {
        CProbe meter(nResult);
        ShowAll(meter);
        EXPECT_EQ(1, meter.Draw(nullptr, 9, 0U));
        EXPECT_EQ(Filled(g_all, "int 9", 0), meter.Taken()) << "layers give " << nResult;
    }
}

TEST(Meter, ReversedPaintsTheMirroredValueAndKeepsTheCallersOwn)
{
    CProbe meter;
    ShowAll(meter);
    meter.SetMax(100);
    meter.SetScaleEnd(100);
    meter.SetReverse(1);
    EXPECT_EQ(1, meter.Draw(nullptr, 30, FLAGS));
    EXPECT_EQ(Filled(g_all, "int 70", FLAGS), meter.Taken());
    EXPECT_EQ(30, meter.GetLastValue());
    EXPECT_EQ(70, meter.GetShownValue());
    EXPECT_EQ(1, meter.Draw(nullptr, 12.25F, 0U));
    EXPECT_EQ(Filled(g_all, "real 87.75", 0), meter.Taken());
    EXPECT_EQ(12, meter.GetLastValue());
    EXPECT_EQ(88, meter.GetShownValue());
    // The first erase found nothing drawn yet (0, mirrored), the second the pointer at 70.
    EXPECT_EQ((std::vector<int32_t>{100, 70}), meter.m_erasedAt);
}

TEST(Meter, MayPaintAnywhereUnlessItsClassSaysMore)
{
    const CProbe meter;
    for (const RECT& rcFace : {RECT{0, 0, 0, 0}, RECT{10, 20, 30, 40}}) {
        const RECT rc = meter.PaintedRect(rcFace);
        EXPECT_TRUE(::EqualRect(&ALL_IN_REACH, &rc));
    }
}

TEST(Meter, MirrorsAboutTheMiddleOfItsRange)
{
    struct Row {
        int32_t nMin, nMax, nValue, nShown;
    };
    for (const Row& row : {Row{0, 10, 0, 10}, Row{0, 10, 10, 0}, Row{20, 50, 25, 45},
                           Row{-30, 10, 0, -20}, Row{0, 10, 14, -4}, Row{7, 7, 3, 11},
                           Row{INT_MIN, INT_MAX, 5, -6}, Row{INT_MIN, INT_MAX, INT_MAX, INT_MIN}}) {
        CProbe meter;
        meter.SetMin(row.nMin);
        meter.SetMax(row.nMax);
        meter.SetShowFill(1);
        meter.SetReverse(-1);
        meter.Draw(nullptr, row.nValue, 0U);
        EXPECT_EQ((Lines{"fill int " + std::to_string(row.nShown) + " flags 0"}), meter.Taken());
        EXPECT_EQ(row.nShown, meter.GetShownValue());
        EXPECT_EQ(row.nValue, meter.GetLastValue());
    }
}

TEST(Meter, MirrorsRealValuesWithTheirFraction)
{
    CProbe meter;
    meter.SetMin(20);
    meter.SetMax(50);
    meter.SetReverse(1);
    meter.SetShowFill(1);
    meter.Draw(nullptr, 20.25F, 0U);
    EXPECT_EQ((Lines{"fill real 49.75 flags 0"}), meter.Taken());
    meter.Draw(nullptr, 51.5F, 0U); // outside as well: layers clamp, the base does not
    EXPECT_EQ((Lines{"fill real 18.50 flags 0"}), meter.Taken());
    EXPECT_EQ(51, meter.GetLastValue());
    EXPECT_EQ(19, meter.GetShownValue());
}

TEST(Meter, StoresARealValueWithoutItsFraction)
{
    struct Row {
        float fValue;
        int32_t nStored;
    };
    CProbe meter;
    for (const Row& row : {Row{7.9F, 7}, Row{-7.9F, -7}, Row{0.99F, 0}, Row{-0.99F, 0},
                           Row{1e9F, 1000000000}, Row{-8.0F, -8}}) {
        EXPECT_EQ(1, meter.Draw(nullptr, row.fValue, 0U));
        EXPECT_EQ(row.nStored, meter.GetLastValue()) << row.fValue;
    }
}

TEST(Meter, AnErasedPointerIsTheOneOfTheWholeValueDrawnBefore)
{
    CProbe meter;
    meter.SetShowPin(1);
    meter.Draw(nullptr, 7.9F, 0U);
    meter.Draw(nullptr, 2, 0U);
    meter.Draw(nullptr, 5.5F, 0U);
    EXPECT_EQ((std::vector<int32_t>{0, 7, 2}), meter.m_erasedAt);
}

TEST(Meter, DrawsWhateverValueAHostPasses)
{
    constexpr float INF = std::numeric_limits<float>::infinity();
    constexpr float NOTHING = std::numeric_limits<float>::quiet_NaN();
    for (const int32_t nMin : {INT_MIN, -1, 0, INT_MAX})
        for (const int32_t nMax : {INT_MIN, 0, 10, INT_MAX})
            for (const int32_t nReverse : {0, 1}) {
                CProbe meter;
                ShowAll(meter);
                meter.SetMin(nMin);
                meter.SetMax(nMax);
                meter.SetReverse(nReverse);
                for (const int32_t nValue : {INT_MIN, -1, 0, 1, INT_MAX}) {
                    EXPECT_EQ(1, meter.Draw(nullptr, nValue, 0U));
                    EXPECT_EQ(nValue, meter.GetLastValue());
                    EXPECT_EQ(g_all.size(), meter.Taken().size());
                }
                for (const float fValue : {-INF, -FLT_MAX, FLT_MIN, FLT_MAX, INF, NOTHING}) {
                    EXPECT_EQ(1, meter.Draw(nullptr, fValue, 0U));
                    EXPECT_EQ(g_all.size(), meter.Taken().size());
                    // A later erase finds a whole value, mirrored like any other.
                    const int64_t nLast = meter.GetLastValue();
                    EXPECT_EQ(static_cast<int32_t>(nReverse ? nMax - nLast + nMin : nLast),
                              meter.GetShownValue());
                }
            }
}

// ---- fields ----

struct SignedField {
    const char* pszName;
    void (CMeter::*pfnSet)(int32_t);
    int32_t (CMeter::*pfnGet)() const;
    int32_t nDefault;
};
struct UnsignedField {
    const char* pszName;
    void (CMeter::*pfnSet)(uint32_t);
    uint32_t (CMeter::*pfnGet)() const;
    uint32_t nDefault;
};

const SignedField g_signed[] = {
    {"minimum", &CMeter::SetMin, &CMeter::GetMin, 0},
    {"maximum", &CMeter::SetMax, &CMeter::GetMax, 10},
    {"scale end", &CMeter::SetScaleEnd, &CMeter::GetScaleEnd, 10},
    {"scale start", &CMeter::SetScaleStart, &CMeter::GetScaleStart, 0},
    {"low limit", &CMeter::SetLowLimit, &CMeter::GetLowLimit, 0},
    {"high limit", &CMeter::SetHighLimit, &CMeter::GetHighLimit, 10},
    {"last value", &CMeter::SetLastValue, &CMeter::GetLastValue, 0},
    {"show pin", &CMeter::SetShowPin, &CMeter::GetShowPin, 0},
    {"show scale", &CMeter::SetShowScale, &CMeter::GetShowScale, 0},
    {"show axis", &CMeter::SetShowAxis, &CMeter::GetShowAxis, 0},
    {"show labels", &CMeter::SetShowLabels, &CMeter::GetShowLabels, 0},
    {"show fill", &CMeter::SetShowFill, &CMeter::GetShowFill, 0},
    {"show alarm", &CMeter::SetShowAlarm, &CMeter::GetShowAlarm, 0},
    {"reverse", &CMeter::SetReverse, &CMeter::GetReverse, 0},
    {"base value", &CMeter::SetBaseValue, &CMeter::GetBaseValue, 0},
    {"use base value", &CMeter::SetUseBaseValue, &CMeter::GetUseBaseValue, 0},
    {"fill only", &CMeter::SetFillOnly, &CMeter::GetFillOnly, 0},
    {"show frame", &CMeter::SetShowFrame, &CMeter::GetShowFrame, 0},
    {"frame option", &CMeter::SetFrameOption, &CMeter::GetFrameOption, 0},
    {"show value", &CMeter::SetShowValue, &CMeter::GetShowValue, 0},
};
const UnsignedField g_unsigned[] = {
    {"tick count", &CMeter::SetTickCount, &CMeter::GetTickCount, 10},
    {"major every", &CMeter::SetMajorEvery, &CMeter::GetMajorEvery, 5},
    {"decimal shift", &CMeter::SetDecimalShift, &CMeter::GetDecimalShift, 0},
    {"font size", &CMeter::SetFontSize, &CMeter::GetFontSize, 0},
};

// All fields in a row, to see that one setter writes one of them.
std::vector<long long> Fields(const CMeter& meter)
{
    std::vector<long long> values;
    for (const SignedField& field : g_signed) values.push_back((meter.*field.pfnGet)());
    for (const UnsignedField& field : g_unsigned) values.push_back((meter.*field.pfnGet)());
    return values;
}

TEST(Meter, BeginsWithTenTicksOverZeroToTenAndEverySwitchOff)
{
    const CProbe meter;
    for (const SignedField& field : g_signed)
        EXPECT_EQ(field.nDefault, (meter.*field.pfnGet)()) << field.pszName;
    for (const UnsignedField& field : g_unsigned)
        EXPECT_EQ(field.nDefault, (meter.*field.pfnGet)()) << field.pszName;
    EXPECT_EQ(24U, std::size(g_signed) + std::size(g_unsigned)); // every field there is
}

TEST(Meter, EachSetterStoresItsFieldUncheckedAndNoOther)
{
    std::size_t nAt = 0;
    const auto expectOnly = [&](CProbe& meter, const char* pszName, auto pfnSet, auto value) {
        std::vector<long long> expected = Fields(meter);
        expected[nAt] = value;
        (meter.*pfnSet)(value);
        EXPECT_EQ(expected, Fields(meter)) << pszName << " " << value;
    };
    for (const SignedField& field : g_signed) {
        CProbe meter;
        for (const int32_t nValue : {77, -1, INT_MIN, INT_MAX, 0})
            expectOnly(meter, field.pszName, field.pfnSet, nValue);
        ++nAt;
    }
    for (const UnsignedField& field : g_unsigned) {
        CProbe meter;
        for (const uint32_t nValue : {77U, 0xFFFFFFFFU, 0x80000000U, 0U})
            expectOnly(meter, field.pszName, field.pfnSet, nValue);
        ++nAt;
    }
}

TEST(Meter, ReverseExchangesTheNumbersOfTheScalesEnds)
{
    CProbe meter;
    meter.SetScaleStart(-5);
    meter.SetScaleEnd(95);
    EXPECT_EQ(-5, meter.GetScaleStartShown());
    EXPECT_EQ(95, meter.GetScaleEndShown());
    meter.SetReverse(2);
    EXPECT_EQ(95, meter.GetScaleStartShown());
    EXPECT_EQ(-5, meter.GetScaleEndShown());
    EXPECT_EQ(-5, meter.GetScaleStart()); // as stored
    EXPECT_EQ(95, meter.GetScaleEnd());
}

// ---- printed values ----

struct PrintRow {
    uint32_t nShift;
    float fValue;
    const char* pszText;
};

TEST(Meter, PrintsADecimalFromAFractionOfFiveHundredthsOn)
{
    const PrintRow rows[] = {
        {0, 0, "0"},
        {0, 12, "12"},
        {0, 12.04F, "12"},
        {0, 12.5F, "12.5"},
        {0, 2.049F, "2"},
        {0, 2.5F, "2.5"},
        {0, 2.06F, "2.1"},
        {0, 2.94F, "2.9"},
        {0, 2.96F, "3.0"},
        {0, -3, "-3"},
        {0, 99999, "99999"},
        {0, 0.06F, "0.1"},
        {0, 100.25F, "100.2"}, // halfway in binary: the even digit
        {0, 16777216.0F, "16777216"},
        {0, -2000000000.0F, "-2000000000"},
    };
    CProbe meter;
    for (const PrintRow& row : rows) EXPECT_EQ(row.pszText, Printed(meter, row.fValue));
}

TEST(Meter, TakesTheFractionFromTheSinglePrecisionValue)
{
    CProbe meter;
    // As floats 2.05 and 1.05 lie just below, 0.05 and 4.05 just above five hundredths.
    ASSERT_LT(2.05F - 2.0F, 0.05);
    ASSERT_LT(1.05F - 1.0F, 0.05);
    ASSERT_GT(4.05F - 4.0F, 0.05);
    EXPECT_EQ("2", Printed(meter, 2.05F));
    EXPECT_EQ("1", Printed(meter, 1.05F));
    EXPECT_EQ("0.1", Printed(meter, 0.05F));
    EXPECT_EQ("4.1", Printed(meter, 4.05F));
}

TEST(Meter, PrintsNegativeFractionsAsTheNearestWholeNumber)
{
    // The value less its whole part is negative there, and only what is above a limit is printed.
    CProbe meter;
    EXPECT_EQ("-3", Printed(meter, -2.7F));
    EXPECT_EQ("-2", Printed(meter, -2.3F));
    EXPECT_EQ("-0", Printed(meter, -0.3F));
    meter.SetDecimalShift(1);
    EXPECT_EQ("-0.3", Printed(meter, -2.7F));
}

TEST(Meter, ShiftsTheDecimalPointOfPrintedValues)
{
    const PrintRow rows[] = {
        {1, 25, "2.5"},        {2, 1234, "12.34"},        {2, 1200, "12.00"},
        {1, 7.5F, "0.75"},     {2, 1234.04F, "12.34"},    {3, 5, "0.005"},
        {1, -25, "-2.5"},      {4, 12345.5F, "1.23455"},  {1, 0, "0.0"},
        {9, 1, "0.000000001"}, {9, 1.5F, "0.0000000015"}, {9, 2e9F, "2.000000000"},
    };
    for (const PrintRow& row : rows) {
        CProbe meter;
        meter.SetDecimalShift(row.nShift);
        EXPECT_EQ(row.pszText, Printed(meter, row.fValue)) << "shift " << row.nShift;
    }
}

TEST(Meter, ADecimalShiftAboveNineCountsAsNine)
{
    for (const uint32_t nShift : {10U, 11U, 40U, 1000U, 0x80000000U, 0xFFFFFFFFU}) {
        CProbe meter;
        meter.SetDecimalShift(nShift);
        EXPECT_EQ("0.000000001", Printed(meter, 1)) << nShift;
        EXPECT_EQ("0.0000000015", Printed(meter, 1.5F)) << nShift;
        EXPECT_EQ(nShift, meter.GetDecimalShift()); // reads give what was set
    }
}

TEST(Meter, PrintsTheLargestValuesWithinItsBuffer)
{
    for (const uint32_t nShift : {0U, 1U, 9U, 10U, 0xFFFFFFFFU})
        for (const float fValue : {FLT_MAX, -FLT_MAX, 1e20F, -1e20F, 4e9F}) {
            CProbe meter;
            meter.SetDecimalShift(nShift);
            const double fScale = nShift == 0 ? 1 : nShift == 1 ? 10 : 1e9;
            const std::string text = Printed(meter, fValue);
            EXPECT_NEAR(1, std::strtod(text.c_str(), nullptr) / (fValue / fScale), 1e-6) << text;
        }
    CProbe meter;
    for (const float fValue :
         {std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
          std::numeric_limits<float>::quiet_NaN()})
        EXPECT_NE("", Printed(meter, fValue)); // no number: some text, and no crash
}

// ---- text sizes ----

FontCell CellOf(uint32_t nCode, int32_t nHint)
{
    CProbe meter;
    meter.SetFontSize(nCode);
    FontCell cell{-1, -1};
    EXPECT_EQ(1, meter.CMeter::GetFontSize(nHint, &cell));
    return cell;
}

std::string CellText(FontCell cell)
{
    return std::to_string(cell.nWidth) + "x" + std::to_string(cell.nHeight);
}

TEST(Meter, FontSizeCodeSelectsTheCell)
{
    const char* const cells[] = {"6x12",  "8x16",  "12x12", "16x16", "12x24",
                                 "16x32", "24x16", "24x24", "24x32", "32x32"};
    for (const int32_t nHint : {-1, 0, 9, 14, 1000}) { // plays no part
        for (uint32_t nCode = 1; nCode <= 10; ++nCode)
            EXPECT_EQ(cells[nCode - 1], CellText(CellOf(nCode, nHint))) << "code " << nCode;
        for (const uint32_t nCode : {11U, 100U, 0x80000000U, 0xFFFFFFFFU})
            EXPECT_EQ("6x12", CellText(CellOf(nCode, nHint))) << "code " << nCode;
    }
}

TEST(Meter, FontSizeZeroGoesByTheHint)
{
    struct Row {
        int32_t nHint;
        const char* pszCell;
    };
    for (const Row& row :
         {Row{0, "6x12"}, Row{7, "6x12"}, Row{8, "8x16"}, Row{11, "8x16"}, Row{12, "12x24"},
          Row{15, "12x24"}, Row{16, "16x32"}, Row{3000, "16x32"}, Row{INT_MAX, "16x32"},
          Row{-1, "16x32"}, Row{INT_MIN, "16x32"}}) // compared without a sign
        EXPECT_EQ(row.pszCell, CellText(CellOf(0, row.nHint))) << "hint " << row.nHint;
}

TEST(Meter, FontsHaveTheCellTheWeightTheAnyCharsetAndNoFace)
{
    for (const int nWeight : {0, FW_BOLD}) {
        const HFONT hFont = MakeMeterFont({12, 24}, nWeight);
        ASSERT_NE(nullptr, hFont);
        LOGFONTA font{};
        ASSERT_NE(0, ::GetObjectA(hFont, sizeof font, &font));
        EXPECT_EQ(12, font.lfWidth);
        EXPECT_EQ(24, font.lfHeight);
        EXPECT_EQ(nWeight, font.lfWeight);
        EXPECT_EQ(255, font.lfCharSet);
        EXPECT_STREQ("", font.lfFaceName);
        EXPECT_EQ(0, font.lfItalic + font.lfUnderline + font.lfStrikeOut + font.lfEscapement);
        ::DeleteObject(hFont);
    }
}

} // namespace
