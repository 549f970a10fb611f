// The text element: its rectangle, and the text that it shows. The code is
// document/QELDocShape.cpp; tests/TextViewTests.cpp looks at the drawing.
#include "tests/support/DocSupport.h"

namespace {

TEST(TextElement, ReadsFourNumbersAndRefusesFewer)
{
    ExpectFixedCrd(QEL_TYPE_TEXT, 4);
}

TEST(TextElement, BeginsAsAnEmptyTextInASquareOfTen)
{
    CTestShape text(QEL_TYPE_TEXT);
    EXPECT_EQ("0 0 10 10", GeometryOf(*text, 4));
    EXPECT_STREQ("", ShapeAttr(*text).szText);
    EXPECT_EQ("0 0 10 10", text.Crd());
}

TEST(TextElement, KeepsTheTextOfTheFileByteByByte)
{
    // GB2312 bytes, of which no character set is interpreted.
    const std::string line = "<text crd=\"1 2 30 20\">\xD3\xCD\xB9\xDE 1\xBA\xC5</text>\r\n";
    CTestDocument document(DrawingText(line));
    ASSERT_EQ(1, document.Loaded());
    EXPECT_STREQ("\xD3\xCD\xB9\xDE 1\xBA\xC5", ShapeAttr(*document.First()).szText);
    EXPECT_EQ(line, document.SavedBody());
}

TEST(TextElement, EscapesMarkupInItsTextAndReadsItBack)
{
    CTestDocument document(DrawingText("<text>a &lt; b &amp; \"c\"</text>\r\n"));
    EXPECT_STREQ("a < b & \"c\"", ShapeAttr(*document.First()).szText);
    const std::string saved = document.Saved();
    EXPECT_EQ(DrawingText("<text crd=\"0 0 10 10\">a &lt; b &amp; &quot;c&quot;</text>\r\n"),
              saved);
    CTestDocument again(saved);
    EXPECT_STREQ("a < b & \"c\"", ShapeAttr(*again.First()).szText);
}

TEST(TextElement, CutsATextThatIsLongerThan255Bytes)
{
    for (const int nLength : {254, 255, 256, 300, 5000}) {
        SCOPED_TRACE(nLength);
        std::string text;
        for (int n = 0; n < nLength; ++n) text += static_cast<char>('a' + n % 26);
        const std::string kept = text.substr(0, 255);
        CTestDocument document(DrawingText("<text flag=\"0x7\">" + text + "</text>\r\n"));
        const QELSHAPEATTR attr = ShapeAttr(*document.First());
        EXPECT_EQ(kept, std::string(attr.szText));
        EXPECT_EQ(7u, attr.nFlags); // the word behind the text
        EXPECT_EQ("<text crd=\"0 0 10 10\" flag=\"0x7\">" + kept + "</text>\r\n",
                  document.SavedBody());
    }
}

TEST(TextElement, IsBoundedByItsRectangleNormalised)
{
    CTestShape text(QEL_TYPE_TEXT);
    SetGeometry(text.Get(), {30, 5, 10, 45});
    EXPECT_EQ("10 5 30 45", RectOf(*text));
}

TEST(TextElement, AResizeShiftsItAndAFlatOneMakesItFlat)
{
    ExpectResized(QEL_TYPE_TEXT, "LTRB", {1, 2, 31, 22});
    CTestShape text(QEL_TYPE_TEXT);
    ASSERT_EQ(1, text->SetRect({5, 5, 25, 25})); // from 0 0 10 10: 5 + (20 - 10) * 20 / 10
    EXPECT_EQ("25 25 35 35", GeometryOf(*text, 4));
}

} // namespace
