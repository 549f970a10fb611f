// The root element of a drawing: its kind, reference size and stored rotation, in the file and in
// the record. The code is document/QELDocQEL.cpp.
#include "document/QELDocQEL.h"
#include "tests/support/DocSupport.h"

#include <cstddef>
#include <memory>

namespace {

std::string RootText(const std::string& attrs)
{
    return FILE_HEAD + std::string("<qel") + attrs + "/>\r\n";
}

// type, width, height and rotation as the record tells them
std::string FieldsOf(const CQELDocElm& root)
{
    QELROOTATTR attr{};
    EXPECT_EQ(1, root.GetAttr(&attr));
    return std::to_string(attr.nType) + " " + std::to_string(attr.nWidth) + " " +
           std::to_string(attr.nHeight) + " " + std::to_string(attr.nRotate);
}

QELROOTATTR Record(LONG nType, LONG nWidth, LONG nHeight, DWORD nRotate)
{
    return {sizeof(QELROOTATTR), 0x10000, nType, nWidth, nHeight, nRotate};
}

// ---- file ----

TEST(RootElement, BeginsAsKindZeroOfFiftyByFiftyAndIsSavedWithoutAttributes)
{
    CTestDocument document("<qel/>");
    ASSERT_EQ(1, document.Loaded());
    EXPECT_EQ("0 50 50 0", FieldsOf(*document.Root()));
    EXPECT_EQ(RootText(""), document.Saved());
}

TEST(RootElement, ReadsItsFieldsAndWritesThoseThatDiffer)
{
    const struct {
        const char* pszAttrs;
        const char* pszFields;
        const char* pszSaved;
    } rows[] = {
        {" type='1'", "1 50 50 0", " type=\"1\""},
        {" type='2'", "2 50 50 0", " type=\"2\""},
        {" type='0'", "0 50 50 0", ""},
        {" type='3'", "0 50 50 0", ""},
        {" type='5'", "0 50 50 0", ""},
        {" type='-1'", "0 50 50 0", ""},
        {" type='x'", "0 50 50 0", ""},
        {" type='4294967297'", "0 50 50 0", ""}, // saturates instead of wrapping to 1
        {" width='320'", "0 320 50 0", " width=\"320\""},
        {" width='50'", "0 50 50 0", ""},
        {" height='240'", "0 50 240 0", " height=\"240\""},
        {" width='0' height='-3'", "0 0 -3 0", " width=\"0\" height=\"-3\""},
        {" width='99999999999'", "0 2147483647 50 0", " width=\"2147483647\""},
        {" lst_rotate='90'", "0 50 50 90", " lst_rotate=\"90\""},
        {" lst_rotate='360'", "0 50 50 360", " lst_rotate=\"360\""},
        // A file's rotation is stored as read: only a record's is divided.
        {" lst_rotate='720'", "0 50 50 720", " lst_rotate=\"720\""},
        {" lst_rotate='-90'", "0 50 50 4294967206", " lst_rotate=\"-90\""},
        {" lst_rotate='0'", "0 50 50 0", ""},
        {" lst_rotate='9' height='8' width='7' type='2' id='d'", "2 7 8 9",
         " id=\"d\" type=\"2\" width=\"7\" height=\"8\" lst_rotate=\"9\""},
        {" style='0x1' clr='0x2' crd='1 2 3 4'", "0 50 50 0", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pszAttrs);
        CTestDocument document(std::string("<qel") + row.pszAttrs + "/>");
        ASSERT_EQ(1, document.Loaded());
        EXPECT_EQ(row.pszFields, FieldsOf(*document.Root()));
        EXPECT_EQ(RootText(row.pszSaved), document.Saved());
    }
}

TEST(RootElement, HoldsNoText)
{
    CTestDocument document("<qel width='9'>words</qel>");
    EXPECT_EQ(RootText(" width=\"9\""), document.Saved());
}

TEST(RootElement, ASavedRootReadsBackAsItWas)
{
    CTestDocument document("<qel id='plant' type='1' width='800' height='600' lst_rotate='400'/>");
    CTestDocument again(document.Saved());
    EXPECT_EQ("1 800 600 400", FieldsOf(*again.Root()));
    EXPECT_STREQ("plant", again.Root()->Id());
}

// ---- record ----

TEST(RootElement, RecordIsSixWordsInOrder)
{
    CTestDocument document("<qel type='2' width='300' height='200' lst_rotate='90'/>");
    int nSize = 0;
    ASSERT_EQ(1, document.Root()->GetAttrSize(&nSize));
    EXPECT_EQ(24, nSize);
    uint32_t words[7];
    std::fill(std::begin(words), std::end(words), 0xCCCCCCCCu);
    ASSERT_EQ(1, document.Root()->GetAttr(words));
    const uint32_t expected[7] = {24, 0x10000, 2, 300, 200, 90, 0xCCCCCCCCu};
    for (int n = 0; n < 7; ++n) EXPECT_EQ(expected[n], words[n]) << "word " << n;
}

TEST(RootElement, TakesARecord)
{
    CTestDocument document("<qel/>");
    QELROOTATTR attr = Record(1, 640, -480, 270);
    attr.nFormat = 7; // only told, never asked for
    ASSERT_EQ(1, document.Root()->SetAttr(&attr));
    EXPECT_EQ("1 640 -480 270", FieldsOf(*document.Root()));
    EXPECT_EQ(640, document.Root()->RefSize().cx);
    EXPECT_EQ(-480, document.Root()->RefSize().cy);
    ASSERT_EQ(1, document.Root()->GetAttr(&attr));
    EXPECT_EQ(0x10000u, attr.nFormat);
    EXPECT_EQ(RootText(" type=\"1\" width=\"640\" height=\"-480\" lst_rotate=\"270\""),
              document.Saved());
}

TEST(RootElement, RefusesARecordOfAnotherSizeOrKind)
{
    CTestDocument document("<qel type='1' width='7' height='8' lst_rotate='9'/>");
    for (const DWORD nSize : {0u, 20u, 23u, 25u, 28u, 424u, 0xFFFFFFFFu}) {
        QELROOTATTR attr = Record(2, 300, 200, 90);
        attr.nSize = nSize;
        EXPECT_EQ(0, document.Root()->SetAttr(&attr)) << nSize;
    }
    for (const LONG nType : {LONG{-1}, LONG{3}, LONG{100}, LONG{0x10000}, LONG_LEAST}) {
        const QELROOTATTR attr = Record(nType, 300, 200, 90);
        EXPECT_EQ(0, document.Root()->SetAttr(&attr)) << nType;
    }
    EXPECT_EQ(0, document.Root()->SetAttr(nullptr));
    EXPECT_EQ("1 7 8 9", FieldsOf(*document.Root()));
}

TEST(RootElement, ARotationAbove360IsReplacedByItsQuotient)
{
    const struct {
        DWORD nSet;
        DWORD nStored;
    } rows[] = {
        {0, 0},
        {90, 90},
        {359, 359},
        {360, 360},
        {361, 1},
        {400, 1},
        {719, 1},
        {720, 2},
        {721, 2},
        {3600, 10},
        {0xFFFFFFFF, 11930464}, // -1 is a large number here: 4294967295 / 360
        {0xFFFFFFA6, 11930464}, // -90: 4294967206 / 360
        {0x80000000, 5965232},  // 2147483648 / 360
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.nSet);
        CTestDocument document("<qel/>");
        const QELROOTATTR attr = Record(0, 50, 50, row.nSet);
        ASSERT_EQ(1, document.Root()->SetAttr(&attr));
        EXPECT_EQ("0 50 50 " + std::to_string(row.nStored), FieldsOf(*document.Root()));
    }
}

TEST(RootElement, ItsReferenceSizeIsThatOfTheRecord)
{
    CTestDocument document("<qel width='30' height='20'/>");
    EXPECT_EQ(30, document.Root()->RefSize().cx);
    EXPECT_EQ(20, document.Root()->RefSize().cy);
    document.Root()->SetRefSize({70, 80});
    EXPECT_EQ("0 70 80 0", FieldsOf(*document.Root()));
    EXPECT_EQ(RootText(" width=\"70\" height=\"80\""), document.Saved());
}

// ---- copies ----

TEST(RootElement, CloneTakesItsFieldsAndNotItsChildren)
{
    CTestDocument document("<qel id='a' type='2' width='7' height='8' lst_rotate='9'><g/></qel>");
    CQELDocElm* pClone = nullptr;
    ASSERT_EQ(1, document.Root()->Clone(&pClone));
    const std::unique_ptr<CQELDocElm> clone(pClone);
    ASSERT_NE(nullptr, clone);
    EXPECT_EQ(QEL_TYPE_ROOT, clone->Type());
    EXPECT_EQ("2 7 8 9", FieldsOf(*clone));
    EXPECT_EQ(nullptr, clone->FirstChild());
    EXPECT_STREQ("", clone->Id());
    EXPECT_EQ("15", TreeOf(*document.Root()));
}

} // namespace
