// Whole drawings through the exported interface, as a host draws them.
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"
#include "tests/support/Recording.h"

#include <gtest/gtest.h>

TEST(Draw, OpensAFileAndPaintsItIntoTheQelRect)
{
    CTestFolder folder;
    const std::string path = folder.Path("one.qel");
    ASSERT_TRUE(WriteBytes(path,
                           "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n<qel>\r\n"
                           "<rect style=\"0x1\" bg=\"0xff\" lnwid=\"0\" crd=\"10 10 40 40\"/>\r\n"
                           "</qel>\r\n"));
    HQELENGINE hEngine = CreateQELEngine();
    ASSERT_EQ(1, QELOpenFile(hEngine, path.c_str()));
    const RECT rcDevice{0, 0, 100, 100};
    ASSERT_EQ(1, QELSetQELRect(hEngine, &rcDevice));

    CTestBitmap drawn(100, 100);
    ASSERT_EQ(1, QELDraw(hEngine, drawn.Dc(), &rcDevice, QEL_DRAW_FULL));
    EXPECT_EQ(1, DestroyQELEngine(hEngine));

    // 50 units on 100 pixels: 10..40 becomes 20..80. Hatch 0 is solid in colour B, here red.
    EXPECT_EQ(60 * 60, CountPixels(drawn, RGB(255, 0, 0)));
    EXPECT_EQ(RGB(255, 0, 0), drawn.At(20, 20));
    EXPECT_EQ(RGB(255, 0, 0), drawn.At(79, 79));
    EXPECT_EQ(RGB(255, 255, 255), drawn.At(19, 20));
    EXPECT_EQ(RGB(255, 255, 255), drawn.At(80, 79));
}
