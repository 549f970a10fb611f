// Drawing leaves no GDI objects behind. The system tells no counts, so a leak shows as a pen that
// can no longer be made: a process may hold about 65,000 objects.
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Every shape outlined, filled and with both 3D styles, and every fill style, in 50 by 50 units.
std::string EveryShapeAndStyle()
{
    const char* const shapes[] = {"text",    "rect",   "chord", "pie",      "rndrect", "arc",
                                  "ellipse", "circle", "line",  "polyline", "polygon"};
    const char* const crds[] = {"0 0 40 24",
                                "2 2 40 40",
                                "2 2 40 40 40 20 20 2",
                                "2 2 40 40 40 20 20 2",
                                "2 2 40 40 8 8",
                                "2 2 40 40 40 20 20 2",
                                "2 2 40 40",
                                "20 20 15",
                                "1 2 40 30",
                                "1 2 20 30 40 5",
                                "1 2 20 30 40 5"};
    const char* const styles[] = {"0x0", "0x1", "0x3", "0x5"};
    std::string text = "<qel>";
    int nFill = 0;
    for (int nShape = 0; nShape < 11; ++nShape)
        for (const char* pszStyle : styles)
            text += std::string("<") + shapes[nShape] + " style=\"" + pszStyle + "\" dr=\"" +
                    std::to_string(nFill++ % 38) + "\" fg=\"0x1020ff\" bg=\"0xf0c010 glt\" crd=\"" +
                    crds[nShape] + "\">ab</" + shapes[nShape] + ">";
    for (nFill = 0; nFill < 38; ++nFill)
        text += "<rect style=\"0x1\" dr=\"" + std::to_string(nFill) + "\" crd=\"4 4 30 30\"/>";
    return text + "</qel>";
}

} // namespace

TEST(Leaks, TwentyThousandDrawsLeaveRoomForTenThousandPens)
{
    CTestFolder folder;
    ASSERT_TRUE(WriteBytes(folder.Path("a.qel"), EveryShapeAndStyle()));
    const HQELENGINE h = CreateQELEngine();
    ASSERT_EQ(1, QELOpenFile(h, folder.Path("a.qel").c_str()));
    CTestBitmap drawn(12, 12);
    const RECT rc = drawn.Box();
    ASSERT_EQ(1, QELSetQELRect(h, &rc));
    ASSERT_EQ(1, QELDraw(h, drawn.Dc(), &rc, QEL_DRAW_FULL)); // what the system keeps, it has now
    const std::size_t nBefore = SpareObjects();
    ASSERT_GT(MORE_OBJECTS_THAN_ALL, nBefore); // there is a limit, so a leak would show
    ASSERT_LE(10000, nBefore);
    const HGDIOBJ hPen = ::GetCurrentObject(drawn.Dc(), OBJ_PEN);
    const HGDIOBJ hBrush = ::GetCurrentObject(drawn.Dc(), OBJ_BRUSH);
    const HGDIOBJ hFont = ::GetCurrentObject(drawn.Dc(), OBJ_FONT);
    for (int i = 0; i < 20000; ++i)
        ASSERT_EQ(1, QELDraw(h, drawn.Dc(), &rc, QEL_DRAW_FULL | (i & 2))) << i;
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ(hPen, ::GetCurrentObject(drawn.Dc(), OBJ_PEN));
    EXPECT_EQ(hBrush, ::GetCurrentObject(drawn.Dc(), OBJ_BRUSH));
    EXPECT_EQ(hFont, ::GetCurrentObject(drawn.Dc(), OBJ_FONT));
    EXPECT_EQ(nBefore, SpareObjects()); // not one object less
    EXPECT_EQ(1, DestroyQELEngine(h));
}

TEST(Leaks, HatchAndGradientObjectsGoWithTheirOwner)
{
    const RECT rc{0, 0, 4, 4};
    const std::size_t nBefore = SpareObjects();
    for (int i = 0; i < 70000; ++i) {
        const HQELGRADIENT hGradient = QELCreateGradientDescriptor(&rc, i % 14, 0, 0xFFFFFF);
        ASSERT_NE(nullptr, QELGetGradientBrush(hGradient)) << i;
        ASSERT_EQ(1, QELCloseGradientDescriptor(hGradient));
    }
    for (int i = 0; i < 70000; ++i) {
        CQELDraft draft(static_cast<tagDRAFTSTYLE>(i % 38));
        RECT rcDraft{0, 0, 3, 3};
        HBRUSH hBrush = nullptr;
        ASSERT_NE(0, draft.GetDraftBrush(hBrush, &rcDraft, 0, 0xFF)) << i;
        rcDraft.right = 5; // a gradient is made a second time
        ASSERT_NE(0, draft.GetDraftBrush(hBrush, &rcDraft, 0, 0xFF)) << i;
    }
    EXPECT_EQ(nBefore, SpareObjects());
}

TEST(Leaks, ShareAndEngineHandlesCanBeMadeWithoutEnd)
{
    // An engine that kept a file open, or an element tree in memory, would be noticed here.
    CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    ASSERT_TRUE(WriteBytes(path, EveryShapeAndStyle()));
    for (const int bShowOnly : {0, 1}) {
        QELShowOnly(bShowOnly);
        for (int i = 0; i < 2000; ++i) {
            const HQELENGINE h = CreateQELEngine();
            ASSERT_EQ(1, QELOpenFile(h, path.c_str())) << i;
            ASSERT_EQ(1, DestroyQELEngine(h));
        }
    }
    QELShowOnly(0);
    EXPECT_TRUE(::DeleteFileA(path.c_str()));
}
