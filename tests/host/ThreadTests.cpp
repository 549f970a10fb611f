// Engines of different threads at the same time: each life of a drawing ends as it does alone.
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"
#include "tests/support/Wide.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace {

#ifndef QEL_THREAD_LIVES
#define QEL_THREAD_LIVES 40
#endif

std::atomic<HQELELEM> g_hForeign; // an element of the other thread's drawing, or one that is gone

std::string TextOf(int nLife)
{
    const std::string n = std::to_string(nLife);
    std::string text = "<qel id='d" + n +
                       "' width='100' height='80'>"
                       "<rect style='0x1' dr='14' fg='0xff' bg='0xff00' crd='2 2 40 30'/>"
                       "<g id='g'><rect style='0x1' bg='0xff' lnwid='0' crd='50 5 70 25'/></g>"
                       "<scale scid='41' max='100' crd='5 40 15 75'/>"
                       "<meter mtid='0' mtype='vert' crd='60 40 70 70'>"
                       "<rect style='0x1' crd='72 40 80 70'/></meter>";
    for (int i = 0; i < nLife % 7; ++i)
        text += "<text id='t' crd='1 1 50 20'>a&amp;" + n + "</text>";
    return text + "</qel>";
}

std::string SavedBytes(HQELENGINE h)
{
    DWORD nSize = 0;
    if (!QELSaveMemory(h, nullptr, &nSize)) return "nothing";
    std::string bytes(nSize, 0);
    return QELSaveMemory(h, bytes.data(), &nSize) ? bytes : "failed";
}

bool Open(HQELENGINE h, const CTestFolder& folder, int nLife)
{
    const std::string text = TextOf(nLife);
    if (nLife % 3 == 0) return QELOpenMemory(h, text.data(), static_cast<DWORD>(text.size()));
    const std::string path = folder.Path("drawing.qel");
    if (!WriteBytes(path, text)) return false;
    return nLife % 3 == 1 ? QELOpenFile(h, path.c_str()) : QELOpenFileW(h, Wide(path).data());
}

std::string Edit(HQELENGINE h, int nLife)
{
    const HQELELEM hRoot = QELGetRootElem(h);
    const HQELELEM hGroup = QELGetNextElem(h, QELGetFirstChild(h, hRoot));
    g_hForeign = hGroup;
    for (int n = 0; n < 5; ++n) {
        const HQELELEM hNew = QELCreateElem(h, QEL_TYPE_CIRCLE, n % 2 ? hGroup : nullptr, nullptr);
        if (!hNew || !QELSetElemId(h, hNew, std::to_string(nLife + n).c_str())) return "not made";
    }
    const HQELELEM hCopy = QELCopyElem(h, hGroup);
    if (!hCopy || !QELMoveElem(h, hCopy, hGroup, nullptr)) return "not moved";
    if (!QELDeleteElem(h, QELGetFirstChild(h, hCopy))) return "not deleted";
    return "edited";
}

std::string Draw(HQELENGINE h)
{
    const CTestBitmap drawn(100, 80);
    const RECT rc = drawn.Box();
    QELSetScaleStatus(h, 41, 30);
    QELSetScaleStatus(h, 0, 60);
    if (!QELDraw(h, drawn.Dc(), &rc, QEL_DRAW_FULL)) return "not drawn";
    ::IntersectClipRect(drawn.Dc(), 45, 0, 60, 80);
    QELSetParam(h, QEL_PARAM_COLOR, 0xFF00);
    if (!QELDraw(h, drawn.Dc(), &rc, QEL_DRAW_FULL)) return "not drawn again";
    const std::string colors =
        std::to_string(::GetTextColor(drawn.Dc())) + "/" + std::to_string(::GetBkColor(drawn.Dc()));
#ifdef _WIN32
    return colors + " " + std::to_string(CountPixels(drawn, RGB(255, 0, 0)));
#else
    return colors; // the stand-in knows no pixels of texts
#endif
}

std::string ErrorText(HQELENGINE h)
{
    QELERROR error{};
    error.nSize = sizeof error;
    const int nResult = QELGetError(h, &error);
    return std::to_string(nResult) + " " + std::to_string(error.nCode) + " " +
           std::to_string(error.nLine) + ":" + std::to_string(error.nColumn);
}

// The whole life of one drawing, and all that came of it.
std::string Live(const CTestFolder& folder, int nLife)
{
    const HQELENGINE h = CreateQELEngine();
    std::string seen = Open(h, folder, nLife) ? "opened " : "not opened ";
    const HQELELEM hForeign = g_hForeign;
    if (QELGetElemType(h, hForeign) != QEL_TYPE_NONE) seen += "another's element ";
    seen += Draw(h) + " " + Edit(h, nLife) + " " + Draw(h) + " ";
    const std::string path = folder.Path("saved.qel");
    seen += QELSaveFile(h, path.c_str()) && ReadBytes(path) == SavedBytes(h) ? "saved " : "lost ";
    seen += SavedBytes(h);
    const std::string broken(static_cast<std::size_t>(nLife % 5), '\n');
    const std::string text = broken + "<qel><g></qel>";
    QELOpenMemory(h, text.data(), static_cast<DWORD>(text.size()));
    seen += ErrorText(h) + " ";
    DestroyQELEngine(h);
    QELNewFile(h); // dead
    return seen + ErrorText(nullptr);
}

// Runs two at the same time, each with folders and files of its own.
void RunBoth(const std::function<void(int nThread)>& run)
{
    std::thread first(run, 0);
    std::thread second(run, 1);
    first.join();
    second.join();
}

} // namespace

TEST(Threads, WithAnEngineEachLiveAsTheyDoAlone)
{
    std::vector<std::string> seen[2];
    RunBoth([&seen](int nThread) {
        const CTestFolder folder;
        for (int n = 0; n < QEL_THREAD_LIVES; ++n)
            seen[nThread].push_back(Live(folder, 2 * n + nThread));
    });
    g_hForeign = nullptr;
    const CTestFolder folder;
    for (int n = 0; n < QEL_THREAD_LIVES; ++n)
        for (const int nThread : {0, 1}) {
            const std::string alone = Live(folder, 2 * n + nThread);
            ASSERT_EQ(0u, alone.rfind("opened ", 0)) << alone;
            ASSERT_NE(std::string::npos, alone.find(" edited ")) << alone;
            ASSERT_NE(std::string::npos, alone.find(" saved ")) << alone;
            ASSERT_EQ(alone, seen[nThread][static_cast<std::size_t>(n)]);
        }
    g_hForeign = nullptr;
}

TEST(Threads, InShowOnlyModeEachWithItsOwnPathsLiveAsTheyDoAlone)
{
    QELShowOnly(1);
    std::atomic<int> nWrong = 0;
    RunBoth([&nWrong](int nThread) {
        const CTestFolder folder;
        const std::string path = folder.Path("drawing.qel");
        for (int n = 0; n < QEL_THREAD_LIVES; ++n) {
            const std::string name = "d" + std::to_string(2 * n + nThread);
            WriteBytes(path, TextOf(2 * n + nThread));
            const HQELENGINE hA = CreateQELEngine();
            const HQELENGINE hB = CreateQELEngine();
            const bool bOpened =
                QELOpenFile(hA, path.c_str()) && QELOpenFileW(hB, Wide(path).data());
            if (!bOpened || QELGetName(hA) != QELGetName(hB) || name != QELGetName(hA)) ++nWrong;
            if (Draw(hA).empty() || QELNewFile(hB) || QELGetRootElem(hA)) ++nWrong;
            if (!DestroyQELEngine(hA) || !DestroyQELEngine(hB)) ++nWrong;
        }
    });
    QELShowOnly(0);
    EXPECT_EQ(0, nWrong);
}

TEST(Threads, KeepTheReasonsOfCallsWithoutAnEngineApart)
{
    EXPECT_EQ(0, QELNewFile(nullptr));
    std::string seen[2];
    RunBoth([&seen](int nThread) {
        seen[nThread] = ErrorText(nullptr) + " then ";
        if (nThread)
            QELOpenFileU(nullptr, nullptr);
        else
            QELNewFile(nullptr);
        seen[nThread] += ErrorText(nullptr);
    });
    EXPECT_EQ("0 0 0:0 then 1 1 0:0", seen[0]);
    EXPECT_EQ("0 0 0:0 then 1 2 0:0", seen[1]);
    EXPECT_EQ("1 1 0:0", ErrorText(nullptr));
}

TEST(Threads, MakeGradientsOfTheirOwn)
{
    std::atomic<int> nWrong = 0;
    RunBoth([&nWrong](int nThread) {
        const RECT rc{0, 0, 8, 8};
        for (int n = 0; n < 10 * QEL_THREAD_LIVES; ++n) {
            const HQELGRADIENT h =
                QELCreateGradientDescriptor(&rc, (n + nThread) % 14, 0, 0xFFFFFF);
            if (!h || !QELGetGradientBrush(h)) ++nWrong;
            if (!QELCloseGradientDescriptor(h) || QELCloseGradientDescriptor(h)) ++nWrong;
        }
    });
    EXPECT_EQ(0, nWrong);
}
