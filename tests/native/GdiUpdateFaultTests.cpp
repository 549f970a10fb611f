// Each GDI object that an update of the picture asks for is refused in turn, and each that the
// calls around updates ask for. Nothing leaks, the device context is as before, and what could not
// be painted stays dirty, so that the next update paints it.
#include "tests/native/GdiDouble.h"
#include "tests/native/KernelDouble.h"
#include "tests/native/Life.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

constexpr int MOST_CREATIONS = 20000;

void FixTheTime()
{
    const SYSTEMTIME time{2024, 2, 4, 29, 10, 9, 36, 0};
    kernel::SetTime(&time, &time);
}

// What has changed on a drawing that was painted before: all meters, a lamp, a mark, a hidden
// group.
void ChangeMuch(HQELENGINE hEngine)
{
    for (int n = 0; n < 11; ++n) QELSetValue(hEngine, ("m" + std::to_string(n)).c_str(), 7);
    for (int n = 0; n < 6; ++n) QELSetValue(hEngine, ("sc" + std::to_string(n)).c_str(), 12);
    QELSetValue(hEngine, "s1", 1);
    QELSetQuality(hEngine, "g1", 2);
    QELSetQuality(hEngine, "t2", 1);
    QELSetColor(hEngine, "pg1", 2, 0x123456);
    QELSetVisible(hEngine, "c1", 0);
    QELSetText(hEngine, "t1", "&less");
    QELSetBlinkState(hEngine, 1);
}

// Each bar goes by a region of three shapes.
std::string BarsWithFaces()
{
    std::string text = "<qel width='200' height='150'>";
    int x = 2;
    for (const char* pszType : {"vert", "vert3d", "horz", "horz3d"}) {
        const std::string left = std::to_string(x + 20), right = std::to_string(x + 44);
        text += "<meter id='m" + std::to_string(x / 50) + "' mtype='" + pszType + "' crd='" +
                std::to_string(x) + " 20 " + std::to_string(x + 18) +
                " 140'><rect style='0x1' crd='" + left + " 20 " + right +
                " 60'/><ellipse style='0x1' crd='" + left + " 50 " + right +
                " 100'/><polygon style='0x1' crd='" + left + " 90 " + right + " 95 " + left +
                " 140'/></meter>";
        x += 50;
    }
    return text + "</qel>";
}

struct UpdateCase {
    const char* pszName;
    std::string (*pfnText)();
    std::function<void(HQELENGINE, HDC)> prepare;
    int nFewest; // objects that the update asks for at least
};

const UpdateCase g_updates[] = {
    {"OfAll", EveryElement, [](HQELENGINE, HDC) {}, 100},
    {"OfWhatHasChangedUnderAClip", EveryElement,
     [](HQELENGINE h, HDC hdc) {
         QELUpdate(h, hdc, nullptr);
         ::IntersectClipRect(hdc, 0, 0, 390, 300);
         ChangeMuch(h);
     },
     60},
    {"OfBarsWithFaces", BarsWithFaces, [](HQELENGINE, HDC) {}, 30},
};

class GdiUpdateFault : public testing::TestWithParam<UpdateCase> {};

std::string Dirty(HQELENGINE hEngine)
{
    RECT rc{};
    QELGetDirtyRect(hEngine, &rc);
    return std::to_string(rc.left) + "," + std::to_string(rc.top) + "," + std::to_string(rc.right) +
           "," + std::to_string(rc.bottom);
}

class CUpdated { // an engine that is ready for the update of a case
public:
    explicit CUpdated(const UpdateCase& c)
    {
        EXPECT_TRUE(m_engine.Open(c.pfnText()));
        const RECT rc = DEVICE_RECT;
        EXPECT_EQ(1, QELSetQELRect(m_engine, &rc));
        c.prepare(m_engine, m_paper);
    }
    HQELENGINE Engine() const { return m_engine; }
    HDC Paper() const { return m_paper; }
    std::vector<std::string> Update(int nExpected)
    {
        gdi::LogPaintings(m_paper);
        EXPECT_EQ(nExpected, QELUpdate(m_engine, m_paper, nullptr));
        return gdi::Paintings(m_paper);
    }

private:
    CTestEngine m_engine;
    CPaper m_paper;
};

} // namespace

// Whenever something could not be painted the area stays, and the next update paints all of it.
TEST_P(GdiUpdateFault, AnUpdateWithoutOneObjectIsMadeUpForByTheNext)
{
    FixTheTime();
    CUpdated undisturbed(GetParam());
    const std::vector<std::string> expected = undisturbed.Update(1);
    const std::string rest = Dirty(undisturbed.Engine()); // what a clip has left
    EXPECT_LT(10U, expected.size());
    int n = 1;
    int nFailed = 0;
    for (bool bReached = true; bReached && n < MOST_CREATIONS && !HasFailure(); ++n) {
        SCOPED_TRACE("object " + std::to_string(n));
        const gdi::CLeakCheck leaks;
        CUpdated updated(GetParam());
        const std::string dirty = Dirty(updated.Engine());
        gdi::LogPaintings(updated.Paper());
        const gdi::CStateCheck state(updated.Paper());
        gdi::FailCreation(n);
        const int nResult = QELUpdate(updated.Engine(), updated.Paper(), nullptr);
        bReached = gdi::Creations() >= n;
        gdi::FailCreation(0);
        EXPECT_EQ(nResult ? rest : dirty, Dirty(updated.Engine()));
        if (nResult)
            EXPECT_EQ(expected, gdi::Paintings(updated.Paper()));
        else
            EXPECT_EQ(expected, updated.Update(1));
        nFailed += 1 - nResult;
    }
    EXPECT_LT(GetParam().nFewest, n);
    EXPECT_GT(MOST_CREATIONS, n);
    EXPECT_LT(GetParam().nFewest / 2, nFailed);
}

TEST_P(GdiUpdateFault, AnUpdateWithoutAnyObjectFromOneOnIsMadeUpForByTheNext)
{
    FixTheTime();
    CUpdated undisturbed(GetParam());
    const std::vector<std::string> expected = undisturbed.Update(1);
    int n = 1;
    for (bool bReached = true; bReached && n < 100 && !HasFailure(); n += n < 20 ? 1 : 7) {
        SCOPED_TRACE("from object " + std::to_string(n));
        const gdi::CLeakCheck leaks;
        CUpdated updated(GetParam());
        const std::string dirty = Dirty(updated.Engine());
        const gdi::CStateCheck state(updated.Paper());
        gdi::FailCreationsFrom(n);
        const int nResult = QELUpdate(updated.Engine(), updated.Paper(), nullptr);
        bReached = gdi::Creations() >= n;
        gdi::FailCreation(0);
        EXPECT_EQ(bReached ? 0 : 1, nResult);
        if (!bReached) continue;
        EXPECT_EQ(dirty, Dirty(updated.Engine()));
        EXPECT_EQ(expected, updated.Update(1));
    }
    EXPECT_LT(20, n);
}

INSTANTIATE_TEST_SUITE_P(Updates, GdiUpdateFault, testing::ValuesIn(g_updates),
                         [](const auto& update) { return update.param.pszName; });

// All that asks for places and values makes do without objects, but for the region of the dirty
// area, which gets its box.
TEST(GdiUpdateFaults, PlacesAndValuesDoWithoutObjects)
{
    CTestEngine engine;
    ASSERT_TRUE(engine.Open());
    const HRGN hRegion = ::CreateRectRgn(0, 0, 1, 1);
    gdi::FailCreationsFrom(1);
    ChangeMuch(engine);
    RECT rc{}, rcBox{};
    EXPECT_EQ(1, QELGetDirtyRect(engine, &rc));
    EXPECT_EQ(1, QELGetDirtyRegion(engine, hRegion));
    ::GetRgnBox(hRegion, &rcBox);
    EXPECT_TRUE(::EqualRect(&rc, &rcBox));
    EXPECT_EQ(1, QELGetIdDrawRect(engine, "m4", &rc));
    const POINT pt{100, 100};
    EXPECT_NE(nullptr, QELElemFromPoint(engine, &pt));
    EXPECT_EQ(1, QELSetEasing(engine, "m4", 100));
    EXPECT_EQ(1, QELSetValue(engine, "m4", 2));
    EXPECT_EQ(1, QELAdvance(engine, 50));
    EXPECT_LT(0, QELResetLive(engine, nullptr));
    gdi::FailCreation(0);
    ::DeleteObject(hRegion);
}
