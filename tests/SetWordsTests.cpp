// The attributes "set" and "value" of meters and scales: how they are kept in the document, and how
// their words and numbers are read. The code is dynamic/SetTexts.cpp and dynamic/SetWords.cpp; what
// they do in a picture is tested in tests/host/DrawnSettingsTests.cpp.
#include "dynamic/QELDocMeter.h"
#include "dynamic/QELDocScale.h"
#include "dynamic/QELViewMeter.h"
#include "dynamic/Selectors.h"
#include "dynamic/SetWords.h"
#include "render/QELView.h"

#include "tests/support/DocSupport.h"

#include <memory>

using namespace DocSupport;

namespace {

constexpr const char* METER = "<meter mtype=\"vert\" imin=\"1\" imax=\"100\" crd=\"0 0 10 10\"";
constexpr const char* SCALE = "<scale crd=\"0 0 10 10\"";

double Read(const std::string& text)
{
    double f = -777;
    return ReadSetNumber(text, &f) ? f : -999;
}

std::string Long(const char* pszBegin, std::size_t nDigits, char cDigit, char cEnd = 0)
{
    std::string text = pszBegin;
    text.append(nDigits, cDigit);
    if (cEnd) text += cEnd;
    return text;
}

} // namespace

TEST(SetTexts, AreWrittenLastAsTheyWereRead)
{
    for (const std::string begin : {METER, SCALE}) {
        const std::string tag = begin.substr(0, begin.find(' '));
        const std::string rest = begin.substr(tag.size());
        EXPECT_EQ(begin + " set=\" max=7\tfoo  max=08 \" value=\"06.50\"/>\r\n",
                  SavedBody(tag + " value='06.50' set=' max=7\tfoo  max=08 '" + rest + "/>"));
        EXPECT_EQ(begin + " set=\"max=7\"/>\r\n", SavedBody(tag + " set='max=7'" + rest + "/>"));
        EXPECT_EQ(begin + " value=\"x\"/>\r\n", SavedBody(tag + " value='x'" + rest + "/>"));
        EXPECT_EQ(begin + "/>\r\n", SavedBody(begin + " set='' value=''/>"));
    }
    EXPECT_EQ(
        "<meter mtype=\"round\" imin=\"1\" imax=\"100\" crd=\"1 2 3 4 5 6 7\" flag=\"0x8000\" "
        "set=\"a\" value=\"b\"/>\r\n",
        SavedBody("<meter set='a' value='b' flag='0x8000' crd='1 2 3 4 5 6 7' "
                  "mtype='round'/>"));
    const std::string quoted = std::string(SCALE) + " set=\"a&amp;b &lt;c\" value=\"&gt;\"/>\r\n";
    EXPECT_EQ(SavedBody(quoted), SavedBody(SavedBody(quoted)));
}

TEST(SetTexts, AreOfAnyLength)
{
    std::string text;
    for (int n = 0; n < 5000; ++n) text += "max=" + std::to_string(n) + ' ';
    for (const std::string begin : {METER, SCALE}) {
        const std::string line = begin + " set=\"" + text + "\" value=\"" + text + "\"/>\r\n";
        EXPECT_EQ(line, SavedBody(line));
    }
}

TEST(SetTexts, OtherElementsHaveNone)
{
    EXPECT_EQ("<rect crd=\"1 2 3 4\"/>\r\n", SavedBody("<rect crd='1 2 3 4' set='max=7'/>"));
    EXPECT_EQ("<status/>\r\n", SavedBody("<status value='7'/>"));
}

TEST(SetTexts, AreKeptOverTheRecordAndCopied)
{
    for (const std::string begin : {METER, SCALE}) {
        const std::string line = begin + " set=\"max=7\" value=\"6.5\"/>\r\n";
        CTestDocument document(DrawingText(line));
        ASSERT_EQ(1, document.Loaded());
        unsigned char block[QEL_MAX_ATTR_SIZE];
        ASSERT_EQ(1, document.First()->GetAttr(block));
        EXPECT_EQ(1, document.First()->SetAttr(block));
        ASSERT_NE(nullptr, document->CopyElement(document.First()));
        EXPECT_EQ(line + line, document.SavedBody());
    }
}

TEST(SetTexts, RecordsHaveTheSizeThatHostsKnow)
{
    const DocContext context{nullptr, &g_elementTypes};
    int nSize = 0;
    for (const auto& [nType, nExpected] :
         {std::pair{QEL_TYPE_METER, 68}, std::pair{QEL_TYPE_SCALE, 60}}) {
        DocContext own = context;
        const std::unique_ptr<CQELDocElm> elm(g_elementTypes.MakeDoc(nType, &own));
        ASSERT_NE(nullptr, elm);
        EXPECT_EQ(1, elm->GetAttrSize(&nSize));
        EXPECT_EQ(nExpected, nSize);
        EXPECT_EQ(nullptr, elm->Set().pszSet);
        EXPECT_EQ(nullptr, elm->Set().pszValue);
    }
}

TEST(SetWords, StandBetweenBlanks)
{
    const char* pszText = " max=10\t\r\nmin =4 a=b=c =";
    SetWordText word{};
    const struct {
        const char* pszName;
        const char* pszNumber;
        bool bHasNumber;
    } expected[] = {{"max", "10", true},
                    {"min", "", false},
                    {"", "4", true},
                    {"a", "b=c", true},
                    {"", "", true}};
    for (const auto& row : expected) {
        ASSERT_TRUE(NextSetWord(&pszText, &word));
        EXPECT_EQ(row.pszName, word.name);
        EXPECT_EQ(row.pszNumber, word.number);
        EXPECT_EQ(row.bHasNumber, word.bHasNumber);
    }
    EXPECT_FALSE(NextSetWord(&pszText, &word));
    EXPECT_FALSE(NextSetWord(&(pszText = ""), &word));
}

TEST(SetWords, NamesAreThoseOfTheSelectors)
{
    for (int32_t n = 0; n < QEL_SEL_COUNT; ++n)
        EXPECT_EQ(n, SelectorOfName(FindSelector(static_cast<uint32_t>(n))->pszName));
    for (const char* psz : {"", "ma", "maxi", "MAX", "4"}) EXPECT_EQ(-1, SelectorOfName(psz));
}

TEST(SetWords, NumbersAreWholeRealOrHexadecimal)
{
    EXPECT_EQ(0, Read("0"));
    EXPECT_EQ(-42, Read("-42"));
    EXPECT_EQ(42, Read("+42"));
    EXPECT_EQ(4294967296.0, Read("4294967296"));
    EXPECT_EQ(0.1, Read("0.1"));
    EXPECT_EQ(-62.35, Read("-62.35"));
    EXPECT_EQ(0.5, Read(".5"));
    EXPECT_EQ(5, Read("5."));
    EXPECT_EQ(0xAB12Cd, Read("0xAB12Cd"));
    EXPECT_EQ(4294967295.0, Read("0X00ffffffff"));
    EXPECT_EQ(12345678901234.5, Read("12345678901234.5"));
    for (const char* psz : {"", "-", "+", ".", "-.", "0x", "0x100000000", "0x1g", "0x-1", "-0x1",
                            "1e3", "1,5", "1.2.3", "--1", "1 ", " 1", "nan", "inf", "#102030"})
        EXPECT_EQ(-999, Read(psz)) << psz;
}

TEST(SetWords, LongNumbersAreReadToTheirLastDigitThatCounts)
{
    EXPECT_EQ(1e30, Read(Long("1", 30, '0')));
    EXPECT_EQ(0, Read(Long("0.", 5000, '0')));
    EXPECT_EQ(0, Read(Long("0.", 5000, '0', '1')));
    EXPECT_EQ(7, Read(Long("", 5000, '0', '7')));
    EXPECT_DOUBLE_EQ(1.0 / 3, Read(Long("0.", 5000, '3')));
    EXPECT_DOUBLE_EQ(1e300, Read(Long("1", 300, '0')));
    EXPECT_EQ(-999, Read(Long("1", 400, '0'))); // more than a real number holds
}

TEST(SetWords, ACopyOfAViewHasThemWithWhatTheHostHasSet)
{
    CQELView view(g_elementTypes, SIZE{100, 100});
    ASSERT_EQ(1, view.NewTree());
    CQELViewElm* pElm = nullptr;
    ASSERT_EQ(1, view.CreateElement(view.Root(), nullptr, QEL_TYPE_METER, &pElm));
    auto* pMeter = static_cast<CQELViewMeter*>(pElm);
    const SetTexts texts{"max=100 min=5", "62.1"};
    EXPECT_EQ(1, pMeter->TakeSet(texts));
    EXPECT_EQ(1, pMeter->SetProperty(QEL_SEL_MAX, 70));
    CQELViewElm* pCopy = nullptr;
    ASSERT_EQ(1, pMeter->Duplicate(view.Root(), &pCopy));
    auto* pOther = static_cast<CQELViewMeter*>(pCopy);
    uint32_t nMax = 0;
    EXPECT_EQ(1, pOther->TakeSet({}));
    EXPECT_EQ(1, pOther->GetProperty(QEL_SEL_MAX, &nMax));
    EXPECT_EQ(70u, nMax);
    EXPECT_EQ(62.1, pOther->ShownNumber());
    pOther->ResetValues();
    EXPECT_EQ(1, pOther->GetProperty(QEL_SEL_MAX, &nMax));
    EXPECT_EQ(100u, nMax);
    EXPECT_EQ(1, pMeter->GetProperty(QEL_SEL_MAX, &nMax));
    EXPECT_EQ(70u, nMax);
}

TEST(ValueTexts, OfSpacesAloneAreNoNumber)
{
    for (const char* psz : {"", " ", " \t\r\n "}) {
        double f = 7.5;
        EXPECT_FALSE(ReadValueText(psz, &f)) << psz;
        EXPECT_EQ(7.5, f);
    }
    double f = 0;
    EXPECT_TRUE(ReadValueText(" \t2.5\n ", &f));
    EXPECT_EQ(2.5, f);
}
