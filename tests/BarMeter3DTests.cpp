// The 3D bars: body, outline and read-out stay in the column at every value, and the next paint
// takes them away. The code is meter/BarMeter3D.*.
#include "include/QELEngine.h"
#include "meter/BarMeter3D.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Recording.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr COLORREF BACK = 0x00FFFF, BAR = 0x0000CC, EMPTY = 0x554433, SCALE = 0xAA1122;
constexpr COLORREF SCALE2 = 0x33AA66, LABEL = 0x22BB00, NOTHING = RGB(255, 255, 255);
constexpr int BOX = 0, CYLINDER = 1; // the frame option; others are boxes

// A 3D bar with a region of its own, 0 to 10, in the test's colours. The region is as wide across
// as the bar, and longer than it at both ends.
class CBar3D {
public:
    CBar3D(bool bUp, const RECT& rcBar, int nOption)
        : m_hRegion(
              bUp ? ::CreateRectRgn(rcBar.left, rcBar.top - 20, rcBar.right, rcBar.bottom + 20)
                  : ::CreateRectRgn(rcBar.left - 20, rcBar.top, rcBar.right + 20, rcBar.bottom)),
          m_rcColumn(rcBar)
    {
        if (bUp)
            m_p.reset(new CUpBarMeter3D(m_hRegion, rcBar));
        else
            m_p.reset(new CLongBarMeter3D(m_hRegion, rcBar));
        m_p->SetBackColor(BACK);
        m_p->SetBarColor(BAR);
        m_p->SetEmptyColor(EMPTY);
        m_p->SetScaleColor(SCALE);
        m_p->SetSecondScaleColor(SCALE2);
        m_p->SetLabelColor(LABEL);
        m_p->SetFrameOption(nOption);
    }
    ~CBar3D() { ::DeleteObject(m_hRegion); }
    CBar3D(const CBar3D&) = delete;
    CBar3D& operator=(const CBar3D&) = delete;
    CBarMeter* operator->() { return m_p.get(); }

    const RECT& Column() const { return m_rcColumn; }

private:
    HRGN m_hRegion;
    RECT m_rcColumn;
    std::unique_ptr<CBarMeter> m_p;
};

std::string Text(const RECT& rc)
{
    return std::to_string(rc.left) + "," + std::to_string(rc.top) + "," + std::to_string(rc.right) +
           "," + std::to_string(rc.bottom);
}

// A bar's rectangle, so wide across and so long along.
RECT Bar(bool bUp, int nAcross, int nAlong)
{
    return bUp ? RECT{30, 30, 30 + nAcross, 30 + nAlong} : RECT{30, 30, 30 + nAlong, 30 + nAcross};
}

// "" when everything painted lies in the rectangle; else the first pixel that does not.
std::string OutsideOf(const RECT& rc, const CTestBitmap& bitmap)
{
    for (int y = 0; y < bitmap.Height(); ++y)
        for (int x = 0; x < bitmap.Width(); ++x)
            if (!::PtInRect(&rc, {x, y}) && bitmap.At(x, y) != NOTHING)
                return "pixel " + std::to_string(x) + "," + std::to_string(y);
    return "";
}

// A pixel of a column, counted across from the front edge and along from the low end.
COLORREF PixelAt(const CTestBitmap& bitmap, const RECT& rc, bool bUp, int nAcross, int nAlong)
{
    return bUp ? bitmap.At(rc.left + nAcross, rc.bottom - 1 - nAlong)
               : bitmap.At(rc.left + nAlong, rc.bottom - 1 - nAcross);
}

struct Size {
    int nAcross, nAlong;
};
constexpr Size SIZES[] = {{8, 60}, {15, 40}, {31, 151}, {60, 200}, {90, 45}};

// ---- inside the column ----

TEST(Bar3D, ColumnIsThatOfTheFaceAcrossAndOfTheBarAlong)
{
    const HRGN hRegion = ::CreateRectRgn(40, 50, 70, 90);
    const RECT up = CUpBarMeter3D(hRegion, {20, 30, 100, 150}).Column();
    EXPECT_EQ("40,30,70,150", Text(up));
    const RECT wide = CLongBarMeter3D(hRegion, {20, 30, 100, 150}).Column();
    EXPECT_EQ(20, wide.left);
    EXPECT_EQ(50, wide.top);
    EXPECT_EQ(90, wide.bottom);
    ::DeleteObject(hRegion);
}

constexpr float VALUES[] = {-3, 0, 0.1F, 1, 5.5F, 9, 9.9F, 12};

// One bar for each value, option, size and direction.
void ForEveryBar(const std::function<void(CBar3D&, float, const std::string&)>& check)
{
    for (const bool bUp : {true, false})
        for (const int nOption : {BOX, CYLINDER, 2})
            for (const Size& size : SIZES)
                for (const float fValue : VALUES) {
                    CBar3D bar(bUp, Bar(bUp, size.nAcross, size.nAlong), nOption);
                    check(bar, fValue,
                          (bUp ? "vertical, option " : "horizontal, option ") +
                              std::to_string(nOption) + ", at " + std::to_string(fValue) +
                              ", column " + Text(bar.Column()));
                }
}

TEST(Bar3D, BodyStaysInTheColumnAtEveryValue)
{
    ForEveryBar([](CBar3D& bar, float fValue, const std::string& what) {
        bar->SetFillOnly(1); // the body alone
        CTestBitmap bitmap(bar.Column().right + 15, bar.Column().bottom + 15);
        EXPECT_EQ(1, bar->DrawFill(bitmap.Dc(), fValue, 0)) << what;
        EXPECT_TRUE(fValue > 0 || IsBlank(bitmap)) << what;
        EXPECT_TRUE(fValue < 1 || !IsBlank(bitmap)) << what;
        EXPECT_EQ("", OutsideOf(bar.Column(), bitmap)) << what;
    });
}

TEST(Bar3D, OutlineStaysInTheColumnAtEveryValue)
{
    ForEveryBar([](CBar3D& bar, float fValue, const std::string& what) {
        CTestBitmap body(9, 9), bitmap(bar.Column().right + 15, bar.Column().bottom + 15);
        EXPECT_EQ(1, bar->DrawFill(body.Dc(), fValue, 0)) << what;
        EXPECT_EQ(1, bar->DrawFrame(bitmap.Dc())) << what;
        EXPECT_FALSE(IsBlank(bitmap)) << what;
        EXPECT_EQ("", OutsideOf(bar.Column(), bitmap)) << what;
    });
}

// What lies beside the column no paint of the column takes away.
TEST(Bar3D, ReadOutStaysInTheColumnAtEveryValue)
{
    ForEveryBar([](CBar3D& bar, float fValue, const std::string& what) {
        CTestBitmap bitmap(bar.Column().right + 15, bar.Column().bottom + 15);
        const int nDrew = bar->DrawValueText(bitmap.Dc(), fValue);
        EXPECT_EQ(nDrew == 0, IsBlank(bitmap)) << what;
        EXPECT_EQ("", OutsideOf(bar.Column(), bitmap)) << what;
    });
}

// The horizontal scale ends one pixel inside of its right edge: the empty part begins and ends
// there too, so that a body beyond would never be painted over.
TEST(Bar3D, HorizontalBodyNeverReachesTheLastColumnOfPixels)
{
    for (const int nOption : {BOX, CYLINDER})
        for (const int nValue : {5, 9, 10, 99}) {
            CBar3D bar(false, Bar(false, 60, 161), nOption); // 30 to 191
            CTestBitmap bitmap(270, 270);
            EXPECT_EQ(1, bar->DrawFill(bitmap.Dc(), nValue, 0));
            EXPECT_FALSE(IsBlank(bitmap));
            int nPainted = 0;
            for (int y = 0; y < 270; ++y) nPainted += bitmap.At(190, y) != NOTHING;
            EXPECT_EQ(0, nPainted) << "option " << nOption << " at " << nValue;
        }
}

TEST(Bar3D, BodyFromABaseStaysInTheColumnToo)
{
    for (const bool bUp : {true, false})
        for (const int nOption : {BOX, CYLINDER})
            for (const bool bReverse : {false, true})
                for (const int nBase : {0, 4, 10})
                    for (int nValue = 0; nValue <= 10; ++nValue) {
                        CBar3D bar(bUp, Bar(bUp, 24, 60), nOption);
                        bar->SetUseBaseValue(1);
                        bar->SetBaseValue(nBase);
                        bar->SetReverse(bReverse);
                        CTestBitmap bitmap(105, 105);
                        EXPECT_EQ(1, bar->DrawFill(bitmap.Dc(), nValue, 0));
                        EXPECT_EQ(1, bar->DrawFrame(bitmap.Dc()));
                        EXPECT_FALSE(IsBlank(bitmap));
                        EXPECT_EQ("", OutsideOf(bar.Column(), bitmap))
                            << nValue << " from " << nBase << " reverse " << bReverse;
                    }
}

// What is painted of the body lies between the clip and its end. Where the face covers the column
// there is nothing to cut off and no clip.
TEST(Bar3D, BodyAndOutlineAreClippedToTheFaceWhereItDoesNotCoverTheColumn)
{
    const RECT rcBar{30, 30, 80, 180};
    const HRGN faces[] = {::CreateEllipticRgn(30, 30, 80, 180), ::CreateRectRgn(30, 31, 80, 180),
                          ::CreateRectRgn(30, 30, 80, 180)};
    const char* const clips[] = {"Record 75", "Record 30", nullptr}; // a region, a rectangle
    for (int n = 0; n < 3; ++n)
        for (const int nOption : {BOX, CYLINDER}) {
            CUpBarMeter3D bar(faces[n], rcBar);
            bar.SetFrameOption(nOption);
            bar.SetFillOnly(1);
            for (const bool bOutline : {false, true}) {
                SCOPED_TRACE(testing::Message() << n << nOption << bOutline);
                CRecording recording;
                EXPECT_EQ(1, bOutline ? bar.DrawFrame(recording.Dc())
                                      : bar.DrawFill(recording.Dc(), 5, 0));
                const std::vector<std::string> calls = recording.Calls();
                ASSERT_LT(4U, calls.size());
                EXPECT_EQ(clips[n] != nullptr, calls.front() == "Record 33"); // save
                EXPECT_EQ(clips[n] != nullptr, calls.back() == "Record 34");  // restore
                if (clips[n]) {
                    EXPECT_EQ(clips[n], calls[1]);
                }
                for (std::size_t i = 2; i + 1 < calls.size(); ++i)
                    EXPECT_TRUE(calls[i] != "Record 33" && calls[i] != "Record 34" &&
                                calls[i] != "Record 75" && calls[i] != "Record 30")
                        << calls[i];
            }
        }
    for (const HRGN hFace : faces) ::DeleteObject(hFace);
}

// ---- the box ----

TEST(Bar3D, BoxHasAFrontASlantedSideAndATop)
{
    for (const bool bUp : {true, false}) {
        CBar3D bar(bUp, Bar(bUp, 50, 150), BOX);
        CTestBitmap bitmap(230, 230);
        EXPECT_EQ(1, bar->DrawFill(bitmap.Dc(), 4, 0));
        const RECT rc = bar.Column();
        const int nTo = bUp ? 60 : 59; // a horizontal scale ends one pixel early: 149 * 4 / 10
        const auto at = [&](int nAcross, int nAlong) {
            return PixelAt(bitmap, rc, bUp, nAcross, nAlong);
        };
        // The front: 40 of 50, from the low end to the value.
        for (int a = 0; a < 40; ++a)
            for (int n = 0; n < nTo; ++n) ASSERT_EQ(BAR, at(a, n)) << a << "," << n;
        // The side: 10 more, raised by 10 at its far edge.
        for (const int n : {15, 30, 50}) EXPECT_EQ(BAR, at(45, n));
        EXPECT_EQ(BAR, at(48, nTo + 5));
        EXPECT_NE(BAR, at(48, 3)); // below the slanted edge
        // The top: shifted by 10 and as high.
        EXPECT_EQ(BAR, at(20, nTo + 5));
        EXPECT_EQ(BAR, at(44, nTo + 7));
        EXPECT_EQ(EMPTY, at(1, nTo + 7)); // left of the slanted edge
        EXPECT_EQ(EMPTY, at(20, nTo + 13));
        // The rest of the column is empty.
        for (const int a : {0, 20, 49})
            for (const int n : {nTo + 15, 100, 148}) EXPECT_EQ(EMPTY, at(a, n)) << a << "," << n;
    }
}

TEST(Bar3D, FrontHasTheHatchAndTheOtherFacesTheSolidBarColor)
{
    for (const bool bUp : {true, false}) {
        CBar3D bar(bUp, Bar(bUp, 50, 150), BOX);
        bar->SetBarStyle(3); // a checkerboard
        CTestBitmap bitmap(230, 230);
        EXPECT_EQ(1, bar->DrawFill(bitmap.Dc(), 4, 0));
        int nBar = 0, nBack = 0;
        for (int a = 0; a < 40; ++a)
            for (int n = 0; n < 58; ++n) {
                nBar += PixelAt(bitmap, bar.Column(), bUp, a, n) == BAR;
                nBack += PixelAt(bitmap, bar.Column(), bUp, a, n) == BACK;
            }
        EXPECT_EQ(40 * 58 / 2, nBar);
        EXPECT_EQ(40 * 58 / 2, nBack);
        for (int n = 20; n < 55; ++n) EXPECT_EQ(BAR, PixelAt(bitmap, bar.Column(), bUp, 45, n));
    }
}

TEST(Bar3D, BodyGrowsWithTheValueAndLeavesTheRestEmpty)
{
    for (const bool bUp : {true, false})
        for (const int nOption : {BOX, CYLINDER}) {
            int nPrev = -1, nPrevEmpty = INT_MAX;
            for (int nValue = 0; nValue <= 10; ++nValue) {
                CBar3D bar(bUp, Bar(bUp, 40, 160), nOption);
                CTestBitmap bitmap(230, 230);
                EXPECT_EQ(1, bar->DrawFill(bitmap.Dc(), nValue, 0));
                const int nBar = CountPixels(bitmap, BAR);
                EXPECT_TRUE(nValue ? nBar > nPrev : nBar == 0)
                    << nValue << ": " << nBar << " after " << nPrev << " option " << nOption;
                const int nEmpty = CountPixels(bitmap, EMPTY);
                EXPECT_TRUE(nValue == 10 || (nEmpty > 0 && nEmpty < nPrevEmpty))
                    << nValue << ": " << nEmpty << " empty option " << nOption;
                nPrevEmpty = nEmpty;
                nPrev = nBar;
            }
        }
}

// ---- the cylinder ----

TEST(Bar3D, CylinderLargerThanAnyPictureHasNoCurves)
{
    for (const bool bUp : {true, false})
        for (const int nAcross : {131072, 131080}) {
            SCOPED_TRACE(testing::Message() << bUp << ": " << nAcross);
            CBar3D bar(bUp, Bar(bUp, nAcross, 300000), CYLINDER);
            CRecording recording;
            bar->DrawFill(recording.Dc(), 5, QEL_DRAW_FULL);
            bar->DrawFrame(recording.Dc());
            EXPECT_EQ(nAcross == 131072, !recording.Only({"Ellipse", "Arc"}).empty());
        }
}

TEST(Bar3D, CylinderFillsTheColumnAcrossWithRoundEnds)
{
    for (const bool bUp : {true, false}) {
        CBar3D bar(bUp, Bar(bUp, 40, 160), CYLINDER);
        CTestBitmap bitmap(230, 230);
        EXPECT_EQ(1, bar->DrawFill(bitmap.Dc(), 5, 0));
        const auto at = [&](int nAcross, int nAlong) {
            return PixelAt(bitmap, bar.Column(), bUp, nAcross, nAlong);
        };
        for (const int a : {1, 20, 38})
            for (const int n : {25, 40, 55}) EXPECT_EQ(BAR, at(a, n)) << a << "," << n;
        EXPECT_EQ(BAR, at(20, 3)); // the lower cap reaches the column's end in the middle
        EXPECT_NE(BAR, at(0, 0));  // and leaves its corners
        EXPECT_NE(BAR, at(39, 0));
        // The upper end: cap of 20, somewhere about the value, its corners empty.
        EXPECT_EQ(EMPTY, at(0, 102));
        EXPECT_EQ(EMPTY, at(20, 102));
        int nTop = 159;
        while (nTop > 0 && at(20, nTop) != BAR) --nTop;
        EXPECT_GE(nTop, 78);
        EXPECT_LE(nTop, 101);
        EXPECT_EQ(EMPTY, at(0, nTop));
        EXPECT_EQ(EMPTY, at(39, nTop));
    }
}

// ---- the outline ----

// The calls of a recording that paint, and the colours of the pens that were made.
struct Painting {
    std::vector<std::string> pens, calls;
};

Painting Recorded(const std::function<void(HDC)>& draw)
{
    CRecording recording;
    draw(recording.Dc());
    Painting painting;
    for (const std::string& call : recording.Calls()) {
        if (call.rfind("CreatePen", 0) == 0) painting.pens.push_back(call.substr(call.size() - 6));
        for (const char* pszWord : {"LineTo", "Arc", "Ellipse", "Polygon", "Rectangle", "Record 87",
                                    "Record 4", "Pie", "Chord", "Text", "PatBlt"})
            if (call == pszWord || call.rfind(std::string(pszWord) + " ", 0) == 0)
                painting.calls.push_back(call.substr(0, call.find(' ') + (call[0] == 'R' ? 3 : 0)));
    }
    return painting;
}

TEST(Bar3D, OutlineIsInTheScaleColors)
{
    for (const bool bUp : {true, false})
        for (const int nOption : {BOX, CYLINDER}) {
            CBar3D bar(bUp, Bar(bUp, 40, 160), nOption);
            CTestBitmap bitmap(230, 230);
            EXPECT_EQ(1, bar->DrawFill(bitmap.Dc(), 5, 0));
            const Painting painting = Recorded([&](HDC hdc) { EXPECT_EQ(1, bar->DrawFrame(hdc)); });
            EXPECT_FALSE(painting.calls.empty());
            EXPECT_FALSE(painting.pens.empty());
            for (const std::string& pen : painting.pens)
                EXPECT_TRUE(pen == "aa1122" || pen == "33aa66") << pen;
            for (const std::string& call : painting.calls)
                EXPECT_TRUE(call != "Polygon" && call != "Rectangle" && call != "Pie" &&
                            call != "PatBlt" && call != "Text")
                    << call;
            // On the picture: both colours, and the fill still there under it.
            const int nBar = CountPixels(bitmap, BAR);
            EXPECT_EQ(1, bar->DrawFrame(bitmap.Dc()));
            EXPECT_GT(CountPixels(bitmap, SCALE), 100);
            EXPECT_GT(CountPixels(bitmap, BAR), nBar * 3 / 4);
        }
}

TEST(Bar3D, OutlineFollowsTheBody)
{
    // With the fill painted at another value the outline has an edge elsewhere.
    for (const bool bUp : {true, false})
        for (const int nOption : {BOX, CYLINDER}) {
            CBar3D bar(bUp, Bar(bUp, 40, 160), nOption);
            const auto outline = [&](int nValue) {
                auto p = std::make_unique<CTestBitmap>(230, 230);
                CTestBitmap other(230, 230);
                bar->DrawFill(other.Dc(), nValue, 0);
                EXPECT_EQ(1, bar->DrawFrame(p->Dc()));
                EXPECT_FALSE(IsBlank(*p));
                return p;
            };
            const auto p3 = outline(3), p7 = outline(7), again = outline(3);
            EXPECT_NE("", FirstDifference(*p3, *p7));
            EXPECT_EQ("", FirstDifference(*p3, *again));
        }
}

// ---- the read-out ----

struct ReadOutText {
    std::string text;
    RECT box;
};

// How wide the bold font of that cell makes a text, which need not be as wide as its cells.
LONG TextWidth(HDC hdc, const std::string& text, int nWidth, int nHeight)
{
    CTestSelect font(
        hdc, ::CreateFontA(nHeight, nWidth, 0, 0, FW_BOLD, 0, 0, 0, 255, 0, 0, 0, 0, nullptr),
        true);
    SIZE size{};
    EXPECT_NE(0, ::GetTextExtentPoint32A(hdc, text.c_str(), static_cast<int>(text.size()), &size));
    return size.cx;
}

std::vector<ReadOutText> ReadOut(CBar3D& bar, const std::function<int(HDC)>& draw, int nResult)
{
    CRecording recording;
    EXPECT_EQ(nResult, draw(recording.Dc())) << Text(bar.Column());
    std::vector<ReadOutText> texts;
    int nWidth = 0, nHeight = 0;
    for (const std::string& call : recording.Only({"CreateFont", "Text"})) {
        char szText[64] = {};
        int x = 0, y = 0;
        if (std::sscanf(call.c_str(), "CreateFont width %d height %d", &nWidth, &nHeight) == 2)
            continue;
        if (std::sscanf(call.c_str(), "Text %d,%d \"%60[^\"]\"", &x, &y, szText) != 3) continue;
        const CTestBitmap bitmap(1, 1);
        texts.push_back(
            {szText, {x, y, x + TextWidth(bitmap.Dc(), szText, nWidth, nHeight), y + nHeight}});
    }
    return texts;
}

TEST(Bar3D, ReadOutIsTheValueAsLabelsPrintItInsideTheColumn)
{
    struct Row {
        float fValue;
        unsigned nShift;
        const char* pszText;
    };
    for (const Row& row : {Row{5, 0, "5"}, Row{2.5F, 0, "2.5"}, Row{-7, 0, "-7"},
                           Row{1234, 2, "12.34"}, Row{25, 1, "2.5"}})
        for (const bool bUp : {true, false})
            for (const int nOption : {BOX, CYLINDER})
                for (const unsigned nCode : {0U, 1U, 2U}) {
                    CBar3D bar(bUp, Bar(bUp, 60, 160), nOption);
                    bar->SetDecimalShift(row.nShift);
                    bar->SetFontSize(nCode);
                    const auto texts = ReadOut(
                        bar, [&](HDC hdc) { return bar->DrawValueText(hdc, row.fValue); }, 1);
                    ASSERT_EQ(1U, texts.size());
                    EXPECT_EQ(row.pszText, texts[0].text);
                    RECT rc{};
                    ::IntersectRect(&rc, &texts[0].box, &bar.Column());
                    EXPECT_EQ(Text(texts[0].box), Text(rc)) << "in " << Text(bar.Column());
                    if (row.fValue != static_cast<int>(row.fValue)) continue;
                    const auto whole = ReadOut(
                        bar,
                        [&](HDC hdc) {
                            return bar->DrawValueText(hdc, static_cast<int32_t>(row.fValue));
                        },
                        1);
                    ASSERT_EQ(1U, whole.size());
                    EXPECT_EQ(row.pszText, whole[0].text);
                }
}

TEST(Bar3D, ReadOutWithoutRoomIsNotDrawn)
{
    for (const bool bUp : {true, false}) {
        // Twelve pixels are the least height of a number, thirty the least width of this one.
        CBar3D bar(bUp, bUp ? RECT{30, 30, 50, 200} : RECT{30, 30, 200, 38}, BOX);
        EXPECT_TRUE(ReadOut(
                        bar, [&](HDC hdc) { return bar->DrawValueText(hdc, 12345); }, 0)
                        .empty());
    }
}

// ---- what is missing ----

TEST(Bar3D, WithoutRangeTicksOrColumnEveryLayerIsEmpty)
{
    const std::vector<std::function<void(CBarMeter&)>> spoilers = {
        [](CBarMeter& m) { m.SetMax(0); }, [](CBarMeter& m) { m.SetMin(11); },
        [](CBarMeter& m) { m.SetTickCount(0); }};
    for (const bool bUp : {true, false})
        for (const int nOption : {BOX, CYLINDER})
            for (std::size_t n = 0; n <= spoilers.size(); ++n) {
                const RECT rcNone{50, 50, 50, 50};
                CBar3D bar(bUp, n < spoilers.size() ? Bar(bUp, 40, 150) : rcNone, nOption);
                if (n < spoilers.size()) spoilers[n](*bar.operator->());
                CTestBitmap bitmap(230, 230);
                const HDC hdc = bitmap.Dc();
                EXPECT_EQ(0, bar->DrawFill(hdc, 5, 0)) << n;
                EXPECT_EQ(0, bar->DrawFrame(hdc)) << n;
                EXPECT_EQ(0, bar->DrawValueText(hdc, 5)) << n;
                EXPECT_EQ(0, bar->DrawValueText(hdc, 5.0F)) << n;
                EXPECT_EQ(0, bar->DrawScale(hdc)) << n;
                EXPECT_EQ(0, bar->DrawAxis(hdc)) << n;
                EXPECT_EQ(0, bar->DrawLabels(hdc)) << n;
                EXPECT_EQ(0, bar->DrawPin(hdc, 5, 0)) << n;
                EXPECT_EQ(0, bar->DrawAlarmZones(hdc)) << n;
                EXPECT_TRUE(IsBlank(bitmap)) << n;
            }
}

TEST(Bar3D, HasTheTicksAxisAndNumbersOfTheFlatBar)
{
    for (const bool bUp : {true, false}) {
        CBar3D bar(bUp, Bar(bUp, 60, 160), BOX);
        const auto count = [&](int (CBarMeter::*layer)(HDC)) {
            return Recorded([&](HDC hdc) { EXPECT_EQ(1, (bar.operator->()->*layer)(hdc)); })
                .calls.size();
        };
        EXPECT_EQ(11U, count(&CBarMeter::DrawScale));
        EXPECT_EQ(1U, count(&CBarMeter::DrawAxis));
        EXPECT_EQ(3U, count(&CBarMeter::DrawLabels));
    }
}

// ---- redraw ----

void ShowAll(CBarMeter& m)
{
    for (const auto set : {&CMeter::SetShowPin, &CMeter::SetShowScale, &CMeter::SetShowAxis,
                           &CMeter::SetShowLabels, &CMeter::SetShowFill, &CMeter::SetShowAlarm,
                           &CMeter::SetShowFrame, &CMeter::SetShowValue})
        (m.*set)(1);
}

// Draws one value after another on one picture and compares with the last one drawn alone.
std::string AfterSweep(bool bUp, int nOption, void (*set)(CBarMeter&),
                       const std::vector<int>& values)
{
    const RECT rcBar = Bar(bUp, 60, 160);
    CBar3D bar(bUp, rcBar, nOption), fresh(bUp, rcBar, nOption);
    set(*bar.operator->());
    set(*fresh.operator->());
    CTestBitmap swept(230, 230), once(230, 230);
    for (std::size_t n = 0; n < values.size(); ++n)
        EXPECT_EQ(1, bar->Draw(swept.Dc(), values[n], n ? 0 : QEL_DRAW_FULL));
    EXPECT_EQ(1, fresh->Draw(once.Dc(), values.back(), QEL_DRAW_FULL));
    EXPECT_FALSE(IsBlank(once));
    // Beside the body's slants and caps neither body nor empty part covers the column: where an
    // empty part was there before, it stays. Anything else has to be gone.
    for (int y = 0; y < 230; ++y)
        for (int x = 0; x < 230; ++x)
            if (swept.At(x, y) == EMPTY && once.At(x, y) == NOTHING)
                ::SetPixel(swept.Dc(), x, y, NOTHING);
    return FirstDifference(once, swept);
}

// Without numbers: they stand beside the column too, where no paint of a bar takes them away.
struct Sweep {
    const char* pszWhat;
    void (*set)(CBarMeter&);
};
constexpr Sweep SWEEPS[] = {
    {"body", [](CBarMeter& m) { m.SetShowFill(1); }},
    {"body and outline", [](CBarMeter& m) { m.SetShowFill(1), m.SetShowFrame(1); }},
    {"body and read-out", [](CBarMeter& m) { m.SetShowFill(1), m.SetShowValue(1); }},
    {"all", [](CBarMeter& m) { ShowAll(m), m.SetShowLabels(0); }},
    {"body from a base",
     [](CBarMeter& m) { m.SetShowFill(1), m.SetUseBaseValue(1), m.SetBaseValue(4); }},
    {"reversed body", [](CBarMeter& m) { m.SetShowFill(1), m.SetReverse(1); }},
};

void ExpectSweeps(int nOption)
{
    for (const bool bUp : {true, false})
        for (const Sweep& sweep : SWEEPS)
            for (const std::vector<int>& values :
                 {std::vector<int>{8, 2}, {2, 8}, {10, 0}, {0, 10}, {5, 4}, {9, 1, 7, 3, 6}})
                EXPECT_EQ("", AfterSweep(bUp, nOption, sweep.set, values))
                    << sweep.pszWhat << (bUp ? ", vertical" : ", horizontal") << ", from "
                    << values[values.size() - 2] << " to " << values.back();
}

TEST(Bar3D, TheNextPaintOfABoxTakesTheOldOneAway)
{
    ExpectSweeps(BOX);
}

TEST(Bar3D, TheNextPaintOfACylinderTakesTheOldOneAway)
{
    ExpectSweeps(CYLINDER);
}

TEST(Bar3D, FillOnlyLeavesTheOldBodyStanding)
{
    CBar3D bar(true, Bar(true, 50, 150), BOX);
    bar->SetFillOnly(1);
    CTestBitmap bitmap(230, 230);
    bar->DrawFill(bitmap.Dc(), 9, 0);
    const int nBar = CountPixels(bitmap, BAR);
    bar->DrawFill(bitmap.Dc(), 2, 0);
    EXPECT_EQ(nBar, CountPixels(bitmap, BAR));
    EXPECT_EQ(0, CountPixels(bitmap, EMPTY));
}

// ---- nothing is left behind, nothing does harm ----

TEST(Bar3D, LeavesTheDeviceContextAsItWasAndNoObjectBehind)
{
    for (const bool bUp : {true, false})
        for (const int nOption : {BOX, CYLINDER})
            for (const int nStyle : {0, 5, 13, 38}) {
                CBar3D bar(bUp, Bar(bUp, 60, 160), nOption);
                ShowAll(*bar.operator->());
                bar->SetBarStyle(nStyle);
                CTestBitmap bitmap(230, 230);
                const HDC hdc = bitmap.Dc();
                MarkState(hdc);
                const std::string before = DcState(hdc);
                const auto draw = [&] {
                    EXPECT_EQ(1, bar->Draw(hdc, 4, QEL_DRAW_FULL));
                    EXPECT_EQ(1, bar->Draw(hdc, 6.5F, 0));
                };
                draw();
                EXPECT_FALSE(IsBlank(bitmap));
                EXPECT_EQ(before, DcState(hdc)) << "style " << nStyle << " option " << nOption;
                const std::size_t nBefore = SpareObjects();
                ASSERT_GT(nBefore, 1000U);
                for (int i = 0; i < 10; ++i) draw();
                EXPECT_EQ(nBefore, SpareObjects()) << "style " << nStyle << " option " << nOption;
            }
}

TEST(Bar3D, NoValueOfAnyFieldCrashesOrHangs)
{
    using Setter = void (*)(CBarMeter&, int);
    constexpr Setter SETTERS[] = {
        [](CBarMeter& m, int n) { m.SetMin(n); },
        [](CBarMeter& m, int n) { m.SetMax(n); },
        [](CBarMeter& m, int n) { m.SetMin(INT_MIN), m.SetMax(n); },
        [](CBarMeter& m, int n) { m.SetTickCount(static_cast<uint32_t>(n)); },
        [](CBarMeter& m, int n) { m.SetDecimalShift(static_cast<uint32_t>(n)); },
        [](CBarMeter& m, int n) { m.SetFontSize(static_cast<uint32_t>(n)); },
        [](CBarMeter& m, int n) { m.SetUseBaseValue(1), m.SetBaseValue(n); },
        [](CBarMeter& m, int n) { m.SetUseBaseValue(1), m.SetBaseValue(n), m.SetReverse(1); },
        [](CBarMeter& m, int n) { m.SetFrameOption(n); },
    };
    constexpr Size ODD_SIZES[] = {{1, 1}, {1, 100}, {100, 1}, {2, 3}, {5, 14}, {60, 160}};
    CTestBitmap bitmap(230, 230);
    const std::string before = DcState(bitmap.Dc());
    for (const bool bUp : {true, false})
        for (const int nOption : {BOX, CYLINDER})
            for (const Size& size : ODD_SIZES)
                for (const Setter set : SETTERS)
                    for (const int n : {INT_MIN, -1, 0, 1, 10, INT_MAX}) {
                        CBar3D bar(bUp, Bar(bUp, size.nAcross, size.nAlong), nOption);
                        ShowAll(*bar.operator->());
                        bar->SetShowScale(size.nAcross < 10); // ten thousand ticks take a while
                        bar->SetShowLabels(0);
                        set(*bar.operator->(), n);
                        for (const int nValue : {INT_MIN, 5, INT_MAX})
                            EXPECT_EQ(1, bar->Draw(bitmap.Dc(), nValue, 0));
                        EXPECT_EQ(
                            1, bar->Draw(bitmap.Dc(), std::numeric_limits<float>::quiet_NaN(), 0));
                        EXPECT_EQ(before, DcState(bitmap.Dc()));
                    }
}

} // namespace
