// Where a drawing stands in its window.
#include "tools/studio/model/Viewport.h"

#include <gtest/gtest.h>

using studio::CViewport;

namespace {

CViewport Made(SIZE client, SIZE drawing, unsigned nDpi = 96)
{
    CViewport view;
    view.SetDpi(nDpi);
    view.SetDrawing(drawing);
    view.SetClient(client);
    return view;
}

void ExpectRect(const RECT& expected, const RECT& rc)
{
    EXPECT_EQ(expected.left, rc.left);
    EXPECT_EQ(expected.top, rc.top);
    EXPECT_EQ(expected.right, rc.right);
    EXPECT_EQ(expected.bottom, rc.bottom);
}

} // namespace

TEST(Viewport, FitsBetweenMarginsInTheMiddleAndKeepsTheProportions)
{
    const CViewport view = Made({216, 116}, {100, 100}); // 8 pixels are left free on each side
    ExpectRect({58, 8, 158, 108}, view.Rect());
    EXPECT_EQ(1, view.Zoom());
    EXPECT_EQ(100U, view.PixelScale());
}

TEST(Viewport, FittedDrawingIsAsLargeOnAMonitorOfTwiceTheResolution)
{
    const CViewport view = Made({432, 232}, {100, 100}, 192);
    ExpectRect({116, 16, 316, 216}, view.Rect());
    EXPECT_EQ(1, view.Zoom());
    EXPECT_EQ(200U, view.PixelScale());
}

TEST(Viewport, FilledWindowStretchesTheDrawingAndKeepsThePixelsOfTheMonitor)
{
    CViewport view = Made({300, 120}, {100, 100}, 144);
    view.Fill();
    ExpectRect({0, 0, 300, 120}, view.Rect());
    EXPECT_EQ(150U, view.PixelScale());
}

TEST(Viewport, ActualSizeIsAUnitAPixelInTheMiddle)
{
    CViewport view = Made({300, 200}, {100, 50});
    view.ShowActual();
    ExpectRect({100, 75, 200, 125}, view.Rect());
    EXPECT_EQ(100U, view.PixelScale());
}

TEST(Viewport, ZoomKeepsWhatIsUnderThePointer)
{
    CViewport view = Made({300, 200}, {100, 50});
    view.ShowActual();
    view.ZoomAt({120, 85}, 2); // the unit 20, 10
    const RECT rc = view.Rect();
    ExpectRect({80, 65, 280, 165}, rc);
    EXPECT_EQ(120, rc.left + 20 * 2);
    EXPECT_EQ(200U, view.PixelScale());
}

TEST(Viewport, ManySmallZoomsEndWhereOneLargeOneDoes)
{
    CViewport once = Made({300, 200}, {100, 50});
    once.ShowActual();
    once.ZoomAt({120, 85}, 2);
    CViewport often = once;
    for (int n = 0; n < 100; ++n) often.ZoomAt({127, 91}, 1.0162493); // to the fifth time as large
    for (int n = 0; n < 100; ++n) often.ZoomAt({127, 91}, 1 / 1.0162493);
    ExpectRect(once.Rect(), often.Rect());
}

TEST(Viewport, ZoomComesToRestAtAHundredPercent)
{
    CViewport view = Made({300, 200}, {100, 50});
    view.ShowActual();
    view.ZoomMiddle(1.25);
    view.ZoomMiddle(1 / 1.23);
    EXPECT_EQ(1, view.Zoom());
}

TEST(Viewport, ZoomStaysWithinWhatTheEngineTakes)
{
    CViewport view = Made({300, 200}, {100, 50}, 192);
    view.ZoomMiddle(1e9);
    EXPECT_EQ(1600U, view.PixelScale());
    EXPECT_EQ(8, view.Zoom());
    view.ZoomMiddle(1e-9);
    EXPECT_EQ(25U, view.PixelScale());
    EXPECT_EQ(0.05, view.Zoom());
}

TEST(Viewport, MovedDrawingStaysInSight)
{
    CViewport view = Made({300, 200}, {400, 400});
    view.ShowActual();
    view.MoveBy(-5000, 5000);
    ExpectRect({48 - 400, 200 - 48, 48, 200 - 48 + 400}, view.Rect());
}

TEST(Viewport, AnotherSizeOfTheWindowKeepsWhatIsInTheMiddle)
{
    CViewport view = Made({300, 200}, {100, 50});
    view.ShowActual();
    view.MoveBy(30, 10);
    view.SetClient({400, 260});
    ExpectRect({180, 115, 280, 165}, view.Rect());
}

TEST(Viewport, DrawingWithoutASizeShowsNothing)
{
    CViewport view = Made({300, 200}, {0, -5});
    EXPECT_TRUE(view.IsEmpty());
    view.ZoomMiddle(2);
    ExpectRect({0, 0, 0, 0}, view.Rect());
}
