// A drawing that is played with: signals set values, blinking goes on, and all of it outlives a
// reading of the file.
#include "tools/studio/model/Play.h"

#include "tests/studio/StudioSupport.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"

using studio::CPlay;
using studio::SignalKind;
using studio::SignalSetting;

namespace {

constexpr char BLINKING[] =
    "<rect style=\"0x1\" dr=\"1\" lnwid=\"0\" fg=\"0xff glt\" crd=\"0 0 100 100\"/>";

COLORREF Middle(const COpenDrawing& drawing)
{
    const RECT rc{0, 0, 20, 20};
    CTestBitmap bitmap(20, 20);
    QELSetQELRect(drawing, &rc);
    QELDraw(drawing, bitmap.Dc(), &rc, QEL_DRAW_FULL);
    return ::GetPixel(bitmap.Dc(), 10, 10);
}

SignalSetting Ramp()
{
    SignalSetting setting;
    setting.kind = SignalKind::Ramp;
    setting.fHigh = 10;
    setting.fPeriod = 4;
    return setting;
}

} // namespace

TEST(Play, SignalsSetValuesWhileTheyPlay)
{
    const COpenDrawing drawing(ScaleText("a"));
    CPlay play;
    play.Signals().Set("a", Ramp());
    EXPECT_EQ(0, play.Tick(drawing, 1000));
    EXPECT_EQ(0, drawing.Value("a"));
    play.Signals().Play(true);
    EXPECT_EQ(1, play.Tick(drawing, 1000));
    EXPECT_EQ(2.5, drawing.Value("a"));
    EXPECT_EQ("2.50", *play.Values().Find("a"));
    EXPECT_EQ("", play.SignalFault());
}

TEST(Play, TellsOfASignalThatTheDrawingRefuses)
{
    const COpenDrawing drawing(ScaleText("a"));
    CPlay play;
    play.Signals().Set("gone", Ramp());
    play.Signals().Play(true);
    EXPECT_EQ(0, play.Tick(drawing, 1000));
    EXPECT_EQ("gone: no element of the drawing has the identifier 'gone'", play.SignalFault());
}

TEST(Play, BlinkingColoursAreDarkEveryOtherHalfSecond)
{
    const COpenDrawing drawing(BLINKING);
    CPlay play;
    play.Opened(drawing);
    EXPECT_EQ(RGB(255, 0, 0), Middle(drawing));
    play.Tick(drawing, 499);
    EXPECT_EQ(RGB(255, 0, 0), Middle(drawing));
    play.Tick(drawing, 1);
    EXPECT_EQ(0U, Middle(drawing));
    play.Tick(drawing, 500);
    EXPECT_EQ(RGB(255, 0, 0), Middle(drawing));
}

TEST(Play, ALongTimeAtOnceIsAsGoodAsManyShortOnes)
{
    const std::string body = ScaleText("a") + BLINKING;
    const COpenDrawing together(body);
    const COpenDrawing apart(body);
    CPlay once;
    CPlay often;
    for (CPlay* pPlay : {&once, &often}) {
        pPlay->Signals().Set("a", Ramp());
        pPlay->Signals().Play(true);
    }
    for (const int nMilliseconds : {3700, 61200, 1000, 400}) {
        once.Tick(together, nMilliseconds);
        for (int n = 0; n < nMilliseconds; n += 100) often.Tick(apart, 100);
        EXPECT_NEAR(apart.Value("a"), together.Value("a"), 0.011) << nMilliseconds;
        EXPECT_EQ(Middle(apart), Middle(together)) << nMilliseconds;
    }
}

TEST(Play, WithoutBlinkingAllIsBright)
{
    const COpenDrawing drawing(BLINKING);
    CPlay play;
    play.Tick(drawing, 500);
    play.SetBlink(drawing, false);
    EXPECT_EQ(RGB(255, 0, 0), Middle(drawing));
    play.Tick(drawing, 500);
    EXPECT_EQ(RGB(255, 0, 0), Middle(drawing));
    EXPECT_FALSE(play.Blinks());
}

TEST(Play, AReadingOfTheFileKeepsValuesTurnAndPhase)
{
    CPlay play;
    std::string why;
    {
        const COpenDrawing before(ScaleText("a") + BLINKING);
        play.Values().Set(before, "a", "7", &why);
        play.Turn(before);
        play.Tick(before, 500);
    }
    const COpenDrawing after(ScaleText("a") + BLINKING);
    play.Opened(after);
    EXPECT_EQ(7, after.Value("a"));
    EXPECT_EQ(90, play.Angle());
    EXPECT_EQ(0U, Middle(after)) << "the dark phase goes on";
    for (int n = 0; n < 3; ++n) play.Turn(after);
    EXPECT_EQ(0, play.Angle());
}

TEST(Play, LoadsTheValuesThatStandBesideTheDrawing)
{
    const CTestFolder folder;
    const std::string path = folder.Path("pump.qel");
    const std::wstring wide(path.begin(), path.end());
    const COpenDrawing drawing(ScaleText("a"));
    CPlay play;
    std::string why;
    EXPECT_EQ(1, play.LoadBeside(wide, &why)) << "there are none";
    WriteBytes(folder.Path("pump.values.json"), "{\"a\": 6}");
    EXPECT_EQ(1, play.LoadBeside(wide, &why)) << why;
    play.Opened(drawing);
    EXPECT_EQ(6, drawing.Value("a"));
    WriteBytes(folder.Path("pump.values.json"), "a = 6");
    EXPECT_EQ(0, play.LoadBeside(wide, &why));
    EXPECT_NE(std::string::npos, why.find("pump.values.json': line 1, column 1"));
}
