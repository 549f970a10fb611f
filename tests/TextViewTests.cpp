// The view of the text: one DrawTextA call in a font whose cell follows from the rectangle and the
// number of characters. The code is render/QELViewText.*.
#include "render/QELViewText.h"

#include "tests/support/ViewSupport.h"

#include <cstring>

namespace {

using View = CTestView<CQELViewText>;
constexpr SIZE REF{100, 100};
constexpr RECT QEL{0, 0, 100, 100}; // one pixel a unit

QELSHAPEATTR TextAttr(std::initializer_list<int> geometry, const std::string& text,
                      DWORD nStyle = 0)
{
    QELSHAPEATTR attr = OutlineAttr(geometry);
    attr.nStyle = nStyle;
    attr.clrA = RGB(200, 0, 0);
    attr.clrB = RGB(0, 0, 200);
    std::memcpy(attr.szText, text.data(), std::min<std::size_t>(text.size(), QEL_TEXT_SIZE));
    return attr;
}

// The font that a device context's own font becomes: only width, height and character set change.
HFONT FontLike(HDC hdc, int nWidth, int nHeight)
{
    LOGFONTA font{};
    EXPECT_NE(0, ::GetObjectA(::GetCurrentObject(hdc, OBJ_FONT), sizeof font, &font));
    font.lfWidth = nWidth;
    font.lfHeight = nHeight;
    font.lfCharSet = OEM_CHARSET;
    return ::CreateFontIndirectA(&font);
}

// "12 60": the width and height of the font that a draw makes.
std::string FontMade(View& view, const RECT& rcQel)
{
    const std::string line = view.Call("CreateFont", rcQel);
    int nWidth = -1, nHeight = -1, nCharSet = -1;
    std::sscanf(line.c_str(), "CreateFont width %d height %d charset %d", &nWidth, &nHeight,
                &nCharSet);
    EXPECT_EQ(255, nCharSet);
    return std::to_string(nWidth) + " " + std::to_string(nHeight);
}

void PaintRawText(HDC hdc, const QELSHAPEATTR& attr, RECT rc, int nWidth, int nHeight)
{
    const std::string text = attr.szText;
    ::SetBkMode(hdc, attr.nStyle ? OPAQUE : TRANSPARENT);
    ::SetBkColor(hdc, attr.clrB);
    ::SetTextColor(hdc, attr.clrA);
    CTestSelect font(hdc, FontLike(hdc, nWidth, nHeight), true);
    ::DrawTextA(hdc, text.c_str(), static_cast<int>(text.size()), &rc, 0);
}

TEST(TextShape, CellIsTheRectangleSharedAndSnappedDown)
{
    const struct {
        RECT rc;
        std::size_t nCount;
        int nWidth;
        int nHeight;
    } rows[] = {
        {{0, 0, 60, 24}, 5, 12, 24},      // 12 each
        {{0, 0, 65, 24}, 5, 12, 24},      // 13, snapped to 12
        {{0, 0, 89, 24}, 5, 12, 24},      // 17
        {{0, 0, 90, 24}, 5, 18, 24},      // 18
        {{0, 0, 29, 24}, 5, 6, 24},       // 5, which snaps to 0 and so is 6
        {{0, 0, 2, 24}, 5, 6, 24},        // 0
        {{10, 20, 70, 31}, 5, 12, 12},    // 11 high: still 12
        {{10, 20, 70, 21}, 5, 12, 12},    //
        {{10, 20, 70, 43}, 5, 12, 12},    // 23
        {{10, 20, 70, 56}, 5, 12, 36},    //
        {{10, 20, 70, 56}, 1, 60, 36},    //
        {{10, 20, 70, 56}, 0, 6, 12},     // no text
        {{0, 0, 2560, 240}, 255, 6, 240}, // 10
        {{0, 0, 6120, 240}, 255, 24, 240},  {{0, 0, 6120, 240}, 256, 6, 12}, // too long
        {{0, 0, 6120, 240}, 100000, 6, 12}, {{0, 0, 0, 0}, 3, 6, 12},
    };
    for (const auto& row : rows) {
        const SIZE cell = TextCell(row.rc, row.nCount);
        EXPECT_EQ(row.nWidth, cell.cx) << RectText(row.rc) << " for " << row.nCount;
        EXPECT_EQ(row.nHeight, cell.cy) << RectText(row.rc) << " for " << row.nCount;
    }
}

// The sides of a rectangle are truncated, which takes less than a pixel from what it should have.
TEST(TextShape, ATextThatFillsItsRectangleFillsItAtEveryScaleWithoutReachingOut)
{
    constexpr LONG LEFT = 13;
    for (LONG nPercent = 25; nPercent <= 400; ++nPercent)
        for (const LONG nCount : {1, 2, 5, 23, 60, 255})
            for (const LONG nSteps : {1, 2, 3, 7})
                for (const LONG nSamples : {1, 4}) {
                    const auto place = [&](LONG n) { return n * nPercent / 100 * nSamples; };
                    const RECT rc{place(LEFT), place(LEFT), place(LEFT + 6 * nSteps * nCount),
                                  place(LEFT + 12 * nSteps)};
                    const CPixelScale px(static_cast<uint32_t>(nPercent),
                                         static_cast<uint32_t>(nSamples));
                    const SIZE cell = TextCell(rc, static_cast<std::size_t>(nCount), px);
                    const auto trace = [&] {
                        return testing::Message() << nCount << " cells of " << nSteps
                                                  << " steps at " << nPercent << ", " << nSamples;
                    };
                    // Whole pixels below so many steps: the plain one's, and no fewer.
                    EXPECT_EQ(6 * nSteps * nPercent / 100 * nSamples, cell.cx) << trace();
                    EXPECT_EQ(12 * nSteps * nPercent / 100 * nSamples, cell.cy) << trace();
                    EXPECT_LE(nCount * cell.cx, rc.right - rc.left) << trace();
                    EXPECT_LE(cell.cy, rc.bottom - rc.top) << trace();
                }
}

// Whatever the rectangle: so many more pixels than the text takes, of a distance that is kept.
TEST(TextShape, ATextThatFitsAtThePlainScaleFitsAtEveryScaleWithinAPixel)
{
    for (LONG nPercent = 25; nPercent <= 400; ++nPercent)
        for (const LONG nCount : {1, 5, 23})
            for (LONG nMore = 0; nMore < 6 * nCount; nMore += 2) {
                const CPixelScale px(static_cast<uint32_t>(nPercent));
                const LONG nWidth = 6 * nCount + nMore;
                const RECT rc{px(7), 0, px(7 + 40 + nWidth) - px(40), px(12)};
                const SIZE cell = TextCell(rc, static_cast<std::size_t>(nCount), px);
                EXPECT_LE(nCount * cell.cx, rc.right - rc.left + 1)
                    << nCount << " cells in " << nWidth << " at " << nPercent;
                EXPECT_GE(cell.cx, 6 * nPercent / 100) << nPercent; // a step, whole pixels below
            }
}

// In the face that pictures are made with, letters are as wide as their cells.
TEST(TextShape, TheLastLetterIsInTheRectangleAtEveryScale)
{
    constexpr char TEXT[] = "PUMP P-7  COOLING WATER";
    constexpr LONG COUNT = sizeof TEXT - 1;
    const CTestBitmap bitmap(10, 10);
    const HFONT hFace = ::CreateFontA(12, 6, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, OEM_CHARSET, 0,
                                      0, DEFAULT_QUALITY, FIXED_PITCH, "WenQuanYi Zen Hei Mono");
    const CTestSelect face(bitmap.Dc(), hFace, true);
    for (LONG nPercent = 25; nPercent <= 400; ++nPercent) {
        const RECT rc{14 * nPercent / 100, 10 * nPercent / 100, (14 + 6 * COUNT) * nPercent / 100,
                      22 * nPercent / 100};
        const SIZE cell = TextCell(rc, COUNT, CPixelScale(static_cast<uint32_t>(nPercent)));
        const CTestSelect font(bitmap.Dc(), FontLike(bitmap.Dc(), cell.cx, cell.cy), true);
        SIZE size{};
        ASSERT_TRUE(::GetTextExtentPoint32A(bitmap.Dc(), TEXT, COUNT, &size));
        EXPECT_LE(size.cx, rc.right - rc.left + 1) << nPercent;
        EXPECT_GE(size.cx, COUNT * (6 * nPercent / 100)) << nPercent; // and no smaller than need be
    }
}

TEST(TextShape, DrawMakesAFontOfThatCell)
{
    View five(TextAttr({10, 20, 70, 50}, "hello"));
    EXPECT_EQ("12 24", FontMade(five, QEL));
    EXPECT_EQ("24 60", FontMade(five, {0, 0, 200, 200})); // it grows with the drawing
    EXPECT_EQ("12 24",
              FontMade(five, {0, 0, 115, 115})); // in steps: 11..80 is 13 each, 23..57 is 34 high
    View wider(TextAttr({10, 20, 75, 50}, "hello"));
    EXPECT_EQ("12 24", FontMade(wider, QEL));
    View low(TextAttr({10, 20, 70, 28}, "hello"));
    EXPECT_EQ("12 12", FontMade(low, QEL));
    View empty(TextAttr({10, 20, 70, 50}, ""));
    EXPECT_EQ("6 12", FontMade(empty, QEL));
}

TEST(TextShape, CallsStandInOrderAndEverythingIsPutBack)
{
    View view(TextAttr({10, 20, 70, 50}, "hello"));
    CRecording recording;
    LOGFONTA font{};
    ASSERT_NE(0, ::GetObjectA(::GetCurrentObject(recording.Dc(), OBJ_FONT), sizeof font, &font));
    EXPECT_EQ(1, view->Draw(recording.Dc(), QEL, QEL_DRAW_FULL));
    const Lines calls = recording.Only({"Set", "CreateFont", "Select", "Text", "Delete"});
    ASSERT_EQ(11U, calls.size());
    EXPECT_EQ(
        (Lines{"SetBkMode 1",
               std::string("CreateFont width 12 height 24 charset 255 face ") + font.lfFaceName,
               "SelectFont #1", "SetBkColor c80000", "SetTextColor 0000c8",
               "Text 10,20 \"hello\""}),
        Lines(calls.begin(), calls.begin() + 6));
    EXPECT_EQ(0U, calls[6].rfind("SelectStock ", 0)) << calls[6]; // the font that was there
    EXPECT_EQ("DeleteObject #1", calls[7]);
    Lines restored(calls.begin() + 8, calls.end());
    std::sort(restored.begin(), restored.end());
    EXPECT_EQ((Lines{"SetBkColor ffffff", "SetBkMode 2", "SetTextColor 000000"}), restored);
}

TEST(TextShape, AFillStyleOtherThan0IsOpaque)
{
    for (const DWORD nStyle : {0UL, 1UL, 3UL, 5UL, 0x00070000UL}) {
        View view(TextAttr({10, 20, 70, 50}, "hello", nStyle));
        EXPECT_EQ((nStyle & 0xFFFF) ? "SetBkMode 2" : "SetBkMode 1", view.Call("SetBkMode", QEL));
        for (const std::string& line : view.Calls(QEL)) { // neither pen nor brush nor border
            EXPECT_EQ(std::string::npos, line.find("Pen")) << line;
            EXPECT_EQ(std::string::npos, line.find("Brush")) << line;
            EXPECT_EQ(std::string::npos, line.find("LineTo")) << line;
        }
    }
}

TEST(TextShape, PixelsAreThoseOfTheRawCall)
{
    const struct {
        const char* pszText;
        DWORD nStyle;
    } rows[] = {{"hello", 0}, {"hello", 1}, {"a b c", 3}, {"ab\ncd", 1}, {"x", 0}, {"(W)", 5}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.pszText << " style " << row.nStyle);
        const QELSHAPEATTR attr = TextAttr({5, 10, 95, 60}, row.pszText, row.nStyle);
        View view(attr);
        const int nCell = 180 / static_cast<int>(std::strlen(row.pszText));
        ExpectPixels(view, {0, 0, 200, 200}, [&](HDC hdc) {
            PaintRawText(hdc, attr, {10, 20, 190, 120}, nCell / 6 * 6, 96); // 100 high
        });
    }
}

TEST(TextShape, KeepsFaceWeightAndSlantOfTheHostsFont)
{
    const QELSHAPEATTR attr = TextAttr({5, 10, 95, 60}, "Host", 1);
    View view(attr);
    LOGFONTA font{};
    font.lfHeight = 50;
    font.lfWeight = FW_BOLD;
    font.lfItalic = TRUE;
    font.lfUnderline = TRUE;
    std::strcpy(font.lfFaceName, "WenQuanYi Zen Hei");
    CTestBitmap expected(200, 200), drawn(200, 200), plain(200, 200);
    for (const CTestBitmap* p : {&expected, &drawn}) {
        CTestSelect host(p->Dc(), ::CreateFontIndirectA(&font), true);
        const std::string before = DcState(p->Dc());
        if (p == &expected) {
            PaintRawText(p->Dc(), attr, {10, 20, 190, 120}, 42, 96); // 180 / 4 = 45
        } else {
            EXPECT_EQ(1, view->Draw(p->Dc(), {0, 0, 200, 200}, QEL_DRAW_FULL));
            EXPECT_EQ(before, DcState(p->Dc()));
        }
    }
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ("", FirstDifference(expected, drawn));
    // The font of the device context does matter.
    EXPECT_EQ(1, view->Draw(plain.Dc(), {0, 0, 200, 200}, QEL_DRAW_FULL));
    EXPECT_NE("", FirstDifference(plain, drawn));
    CRecording recording;
    {
        CTestSelect host(recording.Dc(), ::CreateFontIndirectA(&font), true);
        EXPECT_EQ(1, view->Draw(recording.Dc(), {0, 0, 200, 200}, QEL_DRAW_FULL));
    }
    const Lines made = recording.Only({"CreateFont"});
    EXPECT_EQ("CreateFont width 42 height 96 charset 255 face WenQuanYi Zen Hei", made.back());
}

TEST(TextShape, BackgroundIsTouchedOnlyWithAFillStyle)
{
    for (const DWORD nStyle : {0UL, 1UL}) {
        const QELSHAPEATTR attr = TextAttr({5, 10, 95, 60}, "i.i", nStyle);
        View view(attr);
        CTestBitmap drawn(200, 200, RGB(90, 90, 90));
        EXPECT_EQ(1, view->Draw(drawn.Dc(), {0, 0, 200, 200}, QEL_DRAW_FULL));
        EXPECT_GT(CountPixels(drawn, attr.clrA), 0);
        const int nBack = CountPixels(drawn, attr.clrB);
        EXPECT_EQ(nStyle != 0, nBack > 2000); // the cells
        EXPECT_EQ(nStyle == 0, nBack == 0);
        EXPECT_EQ(RGB(90, 90, 90), drawn.At(5, 15)); // outside of the cells
    }
}

TEST(TextShape, AnEmptyTextShowsNothing)
{
    for (const DWORD nStyle : {0UL, 1UL}) {
        View view(TextAttr({5, 10, 95, 60}, "", nStyle));
        CTestBitmap drawn(200, 200);
        EXPECT_EQ(1, view->Draw(drawn.Dc(), {0, 0, 200, 200}, QEL_DRAW_FULL));
        EXPECT_TRUE(IsBlank(drawn));
        EXPECT_EQ("none", view.Call("Text", QEL));
    }
}

TEST(TextShape, AnEmptyRectangleShowsNothing)
{
    for (const QELSHAPEATTR& attr :
         {TextAttr({5, 10, 5, 60}, "hello", 1), TextAttr({60, 10, 5, 60}, "hello", 1),
          TextAttr({150, 10, 195, 60}, "hello", 1)}) {
        View view(attr);
        CTestBitmap drawn(200, 200);
        EXPECT_EQ(1, view->Draw(drawn.Dc(), {0, 0, 200, 200}, QEL_DRAW_FULL));
        EXPECT_TRUE(IsBlank(drawn));
    }
}

TEST(TextShape, OfARecordWithoutAZero255BytesAreUsed)
{
    View view(TextAttr({0, 20, 100, 50}, std::string(256, 'A')));
    const RECT rcWide{0, 0, 6120, 100}; // 24 each
    EXPECT_EQ("24 24", FontMade(view, rcWide));
    EXPECT_EQ("Text 0,20 \"" + std::string(255, 'A') + "\"", view.Call("Text", rcWide));
}

TEST(TextShape, LinesBreakOnlyAtLineBreaksAndAreCountedAsCharacters)
{
    View view(TextAttr({10, 20, 70, 50}, "ab cd\nef"));
    EXPECT_EQ("6 24", FontMade(view, QEL)); // 60 / 8
    Lines texts;
    for (const std::string& line : view.Calls(QEL))
        if (line.rfind("Text", 0) == 0) texts.push_back(line.substr(line.find('"')));
    EXPECT_EQ((Lines{"\"ab cd\"", "\"ef\""}), texts);
    View longOne(TextAttr({10, 20, 20, 50}, "no wrapping of words"));
    EXPECT_EQ("Text 10,20 \"no wrapping of words\"", longOne.Call("Text", QEL));
}

TEST(TextShape, BytesOfTheAnsiCodePageCountEach)
{
    // Two Chinese characters in GB2312 are four bytes.
    View view(TextAttr({10, 20, 70, 50}, "\xd6\xd0\xce\xc4"));
    EXPECT_EQ("12 24", FontMade(view, QEL)); // 60 / 4 = 15
}

TEST(TextShape, FollowsKeepModesAndThePressedShift)
{
    QELSHAPEATTR attr = PressedAttr(TextAttr({10, 20, 70, 50}, "hello"));
    const uint32_t nPressed = QEL_DRAW_FULL | QEL_DRAW_PRESSED;
    View pressed(attr);
    EXPECT_EQ("Text 12,22 \"hello\"", pressed.Call("Text", QEL, nPressed));
    EXPECT_EQ("Text 10,20 \"hello\"", pressed.Call("Text", QEL));
    attr.nFlags = QEL_KEEP_RIGHT | QEL_ALONG_KEEP_LENGTH | QEL_AWAY_KEEP_LENGTH;
    View kept(attr); // right edge at 200 - 30, 60 wide, top at 40
    EXPECT_EQ("Text 110,40 \"hello\"", kept.Call("Text", {0, 0, 200, 200}));
    EXPECT_EQ("12 24", FontMade(kept, {0, 0, 200, 200}));
}

TEST(TextShape, ColorsBlink)
{
    QELSHAPEATTR attr = TextAttr({10, 20, 70, 50}, "hello", 1);
    attr.clrA |= QEL_COLOR_BLINK;
    attr.clrB |= QEL_COLOR_BLINK;
    View view(attr);
    EXPECT_EQ("SetTextColor 0000c8", view.Call("SetTextColor", QEL));
    EXPECT_EQ("SetBkColor c80000", view.Call("SetBkColor", QEL));
    view->SetBlink(1);
    EXPECT_EQ("SetTextColor 000000", view.Call("SetTextColor", QEL));
    EXPECT_EQ("SetBkColor 000000", view.Call("SetBkColor", QEL));
}

TEST(TextShape, LeavesTheDeviceContextAsItWas)
{
    for (const char* pszText : {"", "hello", "a\nb", "&", "&a", "a&&b", "a&b", "a&\nb&c&d"}) {
        for (const DWORD nStyle : {0UL, 1UL, 3UL}) {
            SCOPED_TRACE(pszText);
            View view(TextAttr({10, 20, 70, 50}, pszText, nStyle));
            ExpectStateKept(view, QEL, BACK_BEFORE, TEXT_BEFORE);
        }
    }
}

// The system draws the line under a letter with the current position.
TEST(TextShape, ALineUnderALetterIsFollowedByTheWayBackAndOtherTextsMakeNoSuchCall)
{
    View plain(TextAttr({10, 20, 70, 50}, "a&&b"));
    View underlined(TextAttr({10, 20, 70, 50}, "a&b"));
    for (View* pView : {&plain, &underlined}) {
        CRecording recording;
        ::MoveToEx(recording.Dc(), 3, 4, nullptr);
        EXPECT_EQ(1, (*pView)->Draw(recording.Dc(), QEL, QEL_DRAW_FULL));
        POINT pt{};
        EXPECT_TRUE(::GetCurrentPositionEx(recording.Dc(), &pt));
        EXPECT_EQ("3,4", std::to_string(pt.x) + "," + std::to_string(pt.y));
        const Lines moves = recording.Only({"MoveTo", "LineTo"});
        EXPECT_EQ("MoveTo 3,4", moves.back());
        if (pView == &plain) {
            EXPECT_EQ(1U, moves.size());
        }
        EXPECT_EQ(Lines{}, recording.Only({"Record 22"})); // the alignment
    }
}

TEST(TextShape, StandsInItsRectangleWhateverTheHostsTextsFollow)
{
    for (const char* pszText : {"hello", "a\nb", "a&b"}) {
        for (const UINT nAlign : {UINT(TA_LEFT), UINT(TA_CENTER)}) {
            SCOPED_TRACE(testing::Message() << pszText << " " << nAlign);
            View view(TextAttr({20, 20, 80, 50}, pszText, 1));
            CTestBitmap expected(100, 100), drawn(100, 100);
            ::SetTextAlign(expected.Dc(), nAlign);
            ::SetTextAlign(drawn.Dc(), nAlign | TA_UPDATECP);
            ::MoveToEx(drawn.Dc(), 7, 70, nullptr);
            const std::string before = DcState(drawn.Dc());
            EXPECT_EQ(1, view->Draw(expected.Dc(), QEL, QEL_DRAW_FULL));
            EXPECT_EQ(1, view->Draw(drawn.Dc(), QEL, QEL_DRAW_FULL));
            EXPECT_FALSE(IsBlank(expected));
            EXPECT_EQ("", FirstDifference(expected, drawn));
            EXPECT_EQ(before, DcState(drawn.Dc()));
        }
    }
}

TEST(TextShape, TurnsAndMovesAsARectangle)
{
    const QELSHAPEATTR attr = TextAttr({10, 20, 60, 40}, "hello");
    ExpectTurns<CQELViewText>(attr, 4, {50, 50}, BoxTurn(REF));
    ExpectTurns<CQELViewText>(attr, 4, {15, 15}, BoxTurn(REF));
    ExpectMoves<CQELViewText>(attr, 4, BoxMove(REF));
    ExpectMoves<CQELViewText>(TextAttr({-10, 20, 160, 70}, "wide"), 4, BoxMove(REF));
}

TEST(TextPlace, FarAwayAnAmpersandMakesItNoWider)
{
    constexpr LONG FAR_AWAY = 1 << 23; // beyond what rectangles are summed up in
    RECT rcPlain{}, rcUnderlined{};
    QELSHAPEATTR attr = FilledAttr({10, 20, 60, 40});
    std::strcpy(attr.szText, "ab");
    const QelRect rcFar{FAR_AWAY, 0, FAR_AWAY + 200, 200};
    EXPECT_TRUE(CTestView<CQELViewText>(attr)->PaintedRect(rcFar, &rcPlain));
    std::strcpy(attr.szText, "a&b");
    EXPECT_TRUE(CTestView<CQELViewText>(attr)->PaintedRect(rcFar, &rcUnderlined));
    EXPECT_EQ(RectText(rcPlain), RectText(rcUnderlined));
}

} // namespace
