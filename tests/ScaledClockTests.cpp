// The hands and numerals of a clock at another pixel scale against the plain ones enlarged. What
// hosts see of clocks shows the time of the run.
#include "meter/ClockMeter.h"
#include "meter/ClockPin.h"
#include "tests/support/Enlarged.h"

namespace {

constexpr int SIDE = 240;
constexpr int RADIUS = 112;

ClockTimes ApartFromEachOther()
{
    ClockTimes times{};
    times.local.wHour = 9;
    times.local.wMinute = times.universal.wMinute = 10;
    times.universal.wSecond = 30;
    return times;
}

CPixels Hands(int nStyle, int nTimes)
{
    const CTestBitmap picture(SIDE * nTimes, SIDE * nTimes);
    CClockPin(RADIUS * nTimes, 0xFF, 0xC0C0C0, CPixelScale(static_cast<uint32_t>(100 * nTimes)))
        .Draw(picture.Dc(), {SIDE / 2 * nTimes, SIDE / 2 * nTimes}, nStyle, ApartFromEachOther());
    return CPixels(picture);
}

} // namespace

TEST(ScaledClock, HandsAreNearThePlainOnesEnlarged)
{
    for (const int nStyle : {0, 1, 2, 3, 4}) {
        const CPixels plain = Hands(nStyle, 1);
        EXPECT_GT(plain.Counts()[0xFF], 100);
        for (const int nTimes : SCALES) {
            const CPixels large = Hands(nStyle, nTimes);
            // The weight of a second hand ends in twelve degrees: its inside moves ten times as far
            // as its sides, which are half a pixel off.
            const int nReach = nStyle == 0 ? 5 * nTimes + 2 : ReachOf(Near::Pointed, nTimes);
            EXPECT_EQ("", Unlike(plain, large, nReach)) << nStyle;
            EXPECT_EQ("", UnlikeShares(plain, large)) << nStyle;
        }
    }
}
