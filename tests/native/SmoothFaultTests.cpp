// Each GDI object that a smooth draw, an update at another pixel scale and a picture in memory ask
// for is refused in turn. Nothing leaks, the device context is as before, and what an update could
// not paint stays dirty.
#include "tests/native/GdiDouble.h"
#include "tests/native/Life.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

constexpr int MOST_CREATIONS = 20000;
constexpr int WIDTH = 120;
constexpr int HEIGHT = 90;

// Calls with an engine, as often as there are objects to refuse, some left out on the way. Result:
// how many there are.
int RefuseEach(const std::function<void(HQELENGINE, HDC, const std::function<void()>&)>& call)
{
    int n = 1;
    for (bool bReached = true; bReached && n < MOST_CREATIONS && !testing::Test::HasFailure();
         n += n < 40 ? 1 : 7) {
        SCOPED_TRACE("object " + std::to_string(n));
        const gdi::CLeakCheck leaks;
        CTestEngine engine;
        EXPECT_TRUE(engine.Open());
        const RECT rc = DEVICE_RECT;
        EXPECT_EQ(1, QELSetQELRect(engine, &rc));
        EXPECT_EQ(1, QELSetPixelScale(engine, 200));
        EXPECT_EQ(1, QELSetSmooth(engine, 2));
        const CPaper paper;
        const gdi::CStateCheck state(paper, gdi::MAY_CHANGE_COLORS);
        gdi::FailCreation(n);
        call(engine, paper, [&] {
            bReached = gdi::Creations() >= n;
            gdi::FailCreation(0);
        });
    }
    return n;
}

} // namespace

TEST(SmoothFaults, ADrawWithoutOneObjectGoesOn)
{
    const int nObjects = RefuseEach([](HQELENGINE h, HDC hdc, const std::function<void()>& end) {
        const RECT rc = DEVICE_RECT;
        EXPECT_EQ(1, QELDraw(h, hdc, &rc, QEL_DRAW_FULL));
        end();
    });
    EXPECT_LT(100, nObjects);
    EXPECT_GT(MOST_CREATIONS, nObjects);
}

TEST(SmoothFaults, AnUpdateWithoutOneObjectIsMadeUpForByTheNext)
{
    const int nObjects = RefuseEach([](HQELENGINE h, HDC hdc, const std::function<void()>& end) {
        const int nResult = QELUpdate(h, hdc, nullptr);
        end();
        RECT rc{};
        EXPECT_EQ(1 - nResult, QELGetDirtyRect(h, &rc));
        if (nResult) return;
        EXPECT_EQ(1, QELUpdate(h, hdc, nullptr));
    });
    EXPECT_LT(100, nObjects);
    EXPECT_GT(MOST_CREATIONS, nObjects);
}

TEST(SmoothFaults, APictureInMemoryWithoutOneObjectLeavesNothing)
{
    std::vector<unsigned char> bits(WIDTH * HEIGHT * 4);
    const int nObjects = RefuseEach([&](HQELENGINE h, HDC, const std::function<void()>& end) {
        const int nResult = QELRenderBitmap(h, bits.data(), WIDTH, HEIGHT, WIDTH * 4, 0);
        QELERROR error{};
        end();
        error.nSize = sizeof error;
        EXPECT_EQ(1 - nResult, QELGetError(h, &error));
    });
    EXPECT_LT(100, nObjects);
    EXPECT_GT(MOST_CREATIONS, nObjects);
}
