// The draw region as a document element: its attributes, the form of its coordinates, its record
// and its rectangle. The code is dynamic/QELDocDrawRgn.cpp; the view is tested in
// ParamViewTests.cpp.
#include "dynamic/QELDocDrawRgn.h"

#include "tests/support/DocSupport.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <sstream>

namespace {

QELDRAWRGNATTR Record(const CQELDocElm& elm)
{
    QELDRAWRGNATTR attr{};
    EXPECT_EQ(1, elm.GetAttr(&attr));
    return attr;
}

QELDRAWRGNATTR RecordOf(const std::string& attrs)
{
    CTestDocument document(DrawingText("<drawrgn " + attrs + "/>"));
    EXPECT_EQ(1, document.Loaded());
    return Record(*document.First());
}

bool SameBytes(const QELDRAWRGNATTR& a, const QELDRAWRGNATTR& b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

std::size_t WordCount(const std::string& text)
{
    std::istringstream words(text);
    std::size_t nCount = 0;
    for (std::string word; words >> word;) ++nCount;
    return nCount;
}

TEST(DrawRegionElement, TheFormOfItsCoordinatesTellsNamesAndDefault)
{
    const CrdForm& form = CQELDocDrawRgn::FORM;
    EXPECT_STREQ("xyxy", form.pszLayout); // two corners
    EXPECT_TRUE(form.bBox);
    EXPECT_EQ(4u, WordCount(form.pszMeaning));
    EXPECT_EQ(4u, WordCount(form.pszDefault));
    const std::string crd = std::string(" crd=\"") + form.pszDefault + "\"";
    EXPECT_EQ("<drawrgn" + crd + "/>\r\n", SavedBody("<drawrgn/>"));
    EXPECT_TRUE(SameBytes(RecordOf(""), RecordOf(crd)));
}

TEST(DrawRegionElement, ReadsItsAttributesAndWritesThoseThatDiffer)
{
    const QELDRAWRGNATTR expected{
        sizeof expected, 0x30005, {-1, 2, 30, 40}, QEL_KEEP_LEFT | QEL_KEEP_TOP};
    char szFlag[20];
    std::snprintf(szFlag, sizeof szFlag, "0x%x", static_cast<unsigned>(expected.nFlags));
    const std::string line =
        std::string("<drawrgn style=\"0x30005\" crd=\"-1 2 30 40\" flag=\"") + szFlag + "\"/>\r\n";
    CTestDocument document(DrawingText(line));
    ASSERT_EQ(1, document.Loaded());
    EXPECT_TRUE(SameBytes(expected, Record(*document.First())));
    EXPECT_EQ(line, document.SavedBody());
}

TEST(DrawRegionElement, ANegativeStyleIsIgnored)
{
    EXPECT_EQ(0, RecordOf("style=\"0x80000000\"").nStyle);
    EXPECT_EQ(0, RecordOf("style=\"0xFFFFFFFF\"").nStyle);
    EXPECT_EQ(0x7FFFFFFF, RecordOf("style=\"0x7FFFFFFF\"").nStyle);
}

TEST(DrawRegionElement, ARecordIsTakenOnlyWithItsSizeAndAStyle)
{
    CTestDocument document(DrawingText("<drawrgn crd=\"1 2 3 4\"/>"));
    CQELDocElm* pElm = document.First();
    const QELDRAWRGNATTR before = Record(*pElm);
    for (const DWORD nSize : {DWORD{0}, DWORD{sizeof before} - 1, DWORD{sizeof before} + 1}) {
        const QELDRAWRGNATTR attr{nSize, 1, {5, 6, 7, 8}, 0};
        EXPECT_EQ(0, pElm->SetAttr(&attr)) << nSize;
    }
    QELDRAWRGNATTR attr{sizeof attr, -1, {5, 6, 7, 8}, QEL_KEEP_LEFT};
    EXPECT_EQ(0, pElm->SetAttr(&attr));
    EXPECT_TRUE(SameBytes(before, Record(*pElm)));
    attr.nStyle = 3;
    EXPECT_EQ(1, pElm->SetAttr(&attr));
    EXPECT_TRUE(SameBytes(attr, Record(*pElm)));
    CQELDocElm* pClone = nullptr;
    ASSERT_EQ(1, pElm->Clone(&pClone));
    const std::unique_ptr<CQELDocElm> clone(pClone);
    EXPECT_TRUE(SameBytes(attr, Record(*clone)));
}

TEST(DrawRegionElement, IsPlacedByItsOwnRectangle)
{
    CTestDocument document(DrawingText("<drawrgn crd=\"30 40 10 20\"/>"));
    CQELDocElm* pElm = document.First();
    EXPECT_EQ("10 20 30 40", RectOf(*pElm)); // its corners in order
    EXPECT_EQ(1, pElm->SetRect({15, 26, 35, 46}));
    EXPECT_EQ("15 26 35 46", RectOf(*pElm));
}

TEST(DrawRegionElement, LosesTheSideThatTheResizeDoesNotHave)
{
    CTestDocument document(DrawingText("<drawrgn crd=\"10 20 30 40\"/>"));
    EXPECT_EQ(1, document.First()->MapRect({0, 0, 10, 10}, {5, 7, 15, 7}));
    EXPECT_EQ("15 27 35 27", RectOf(*document.First()));
}

} // namespace
