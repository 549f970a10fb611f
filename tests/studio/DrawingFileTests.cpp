// Open drawings, and what their files say of their elements.
#include "tools/studio/model/DrawingFile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

using namespace studio;

namespace {

const std::wstring PATH = L"studio-drawing-tests.qel";

void Write(const std::string& text)
{
    std::FILE* pFile = _wfopen(PATH.c_str(), L"wb");
    ASSERT_NE(nullptr, pFile);
    std::fwrite(text.data(), 1, text.size(), pFile);
    std::fclose(pFile);
}

class DrawingFile : public testing::Test {
protected:
    ~DrawingFile() override { ::DeleteFileW(PATH.c_str()); }
};

constexpr char DRAWING[] = "<qel width='80' height='60'>\n"
                           "  <defs><rect crd='1 1 2 2'/></defs>\n"
                           "  <nonsense><rect crd='1 1 2 2'/></nonsense>\n"
                           "  <g id='group'>\n"
                           "    <rect id='box'\n"
                           "          crd='10 10 30 20'/>\n"
                           "  </g>\n"
                           "  <text crd='0 0 60 12'>level</text>\n"
                           "</qel>\n";

} // namespace

TEST_F(DrawingFile, EachElementHasItsPlaceInTheFile)
{
    Write(DRAWING);
    CDrawingFile file(PATH);
    ASSERT_EQ(1, file.Load());
    HQELELEM hBox = QELFindElem(file.Engine(), "box");
    ASSERT_NE(nullptr, hBox);
    const SourceElement* pBox = file.SourceOf(hBox);
    ASSERT_NE(nullptr, pBox);
    EXPECT_EQ(QEL_TYPE_RECT, pBox->nType);
    EXPECT_EQ(5U, pBox->nLine);
    ASSERT_EQ(2U, pBox->attrs.size());
    EXPECT_EQ(L"id", pBox->attrs[0].name);
    EXPECT_EQ(L"box", pBox->attrs[0].value);
    EXPECT_EQ(5U, pBox->attrs[0].nLine);
    EXPECT_EQ(L"crd", pBox->attrs[1].name);
    EXPECT_EQ(L"10 10 30 20", pBox->attrs[1].value);
    EXPECT_EQ(6U, pBox->attrs[1].nLine);
}

TEST_F(DrawingFile, WhatTheEngineSkipsHasNoElement)
{
    Write(DRAWING);
    CDrawingFile file(PATH);
    ASSERT_EQ(1, file.Load());
    HQELELEM hText = QELGetLastChild(file.Engine(), QELGetRootElem(file.Engine()));
    const SourceElement* pText = file.SourceOf(hText);
    ASSERT_NE(nullptr, pText);
    EXPECT_EQ(8U, pText->nLine);
    EXPECT_EQ(L"level", pText->text);
    EXPECT_EQ(8U, pText->nTextLine);
    EXPECT_EQ(nullptr, file.SourceOf(nullptr));
}

TEST_F(DrawingFile, FindingLeadsToTheElementThatItIsIn)
{
    Write("<qel width='80' height='60'>\n<g>\n<rect id='box' crd='10 10 30 20'\n nonsense='1'/>\n"
          "</g>\n</qel>");
    CDrawingFile file(PATH);
    ASSERT_EQ(1, file.Load());
    ASSERT_EQ(1U, file.Findings().size());
    const SourceFinding& finding = file.Findings()[0];
    EXPECT_TRUE(finding.bError);
    EXPECT_EQ(4U, finding.nLine);
    EXPECT_EQ(2U, finding.nColumn);
    EXPECT_EQ(QELFindElem(file.Engine(), "box"), file.ElementOf(finding));
    EXPECT_NE(nullptr, file.ElementOf(finding));
}

TEST_F(DrawingFile, TextsAreThoseOfTheEncodingThatTheFileDeclares)
{
    Write("<?xml version='1.0' encoding='utf-8'?><qel width='80' height='60'>"
          "<text id='a' crd='0 0 60 12'>\xE6\xB3\xB5</text></qel>");
    CDrawingFile file(PATH);
    ASSERT_EQ(1, file.Load());
    const SourceElement* pText = file.SourceOf(QELFindElem(file.Engine(), "a"));
    ASSERT_NE(nullptr, pText);
    EXPECT_EQ(L"\x6CF5", pText->text);
}

TEST_F(DrawingFile, BrokenFileKeepsTheLastGoodPictureAndTellsThePlace)
{
    Write(DRAWING);
    CDrawingFile file(PATH);
    ASSERT_EQ(1, file.Load());
    HQELENGINE hEngine = file.Engine();
    HQELELEM hBox = QELFindElem(hEngine, "box");
    Write("<qel width='80'>\n  <rect crd='0 0 1 1'></g>\n</qel>");
    EXPECT_EQ(0, file.Load());
    EXPECT_EQ(hEngine, file.Engine());
    EXPECT_EQ(hBox, QELFindElem(file.Engine(), "box"));
    EXPECT_NE(nullptr, file.SourceOf(hBox));
    EXPECT_EQ(DWORD{QEL_ERROR_XML_MISMATCH}, file.Fault().nCode);
    EXPECT_EQ(2U, file.Fault().nLine);
    EXPECT_FALSE(file.Fault().sentence.empty());
    ASSERT_FALSE(file.Findings().empty());
    EXPECT_EQ(nullptr, file.ElementOf(file.Findings()[0])); // it is not what is shown
    Write(DRAWING);
    EXPECT_EQ(1, file.Load());
    EXPECT_EQ(DWORD{QEL_ERROR_NONE}, file.Fault().nCode);
    EXPECT_NE(hEngine, file.Engine());
}

TEST_F(DrawingFile, MissingFileHasASentenceAndNoPicture)
{
    CDrawingFile file(PATH);
    EXPECT_EQ(0, file.Load());
    EXPECT_EQ(nullptr, file.Engine());
    EXPECT_EQ(DWORD{QEL_ERROR_NO_FILE}, file.Fault().nCode);
    EXPECT_FALSE(file.Fault().sentence.empty());
    EXPECT_EQ(nullptr, file.SourceOf(nullptr));
}

TEST_F(DrawingFile, ChangeIsSeenWhenItHasSettled)
{
    Write(DRAWING);
    CDrawingFile file(PATH);
    ASSERT_EQ(1, file.Load());
    EXPECT_FALSE(file.HasChanged());
    EXPECT_FALSE(file.HasChanged());
    Write(std::string(DRAWING) + "<!-- -->");
    EXPECT_FALSE(file.HasChanged()); // it may be written still
    EXPECT_TRUE(file.HasChanged());
    ASSERT_EQ(1, file.Load());
    EXPECT_FALSE(file.HasChanged());
    ::DeleteFileW(PATH.c_str());
    EXPECT_FALSE(file.HasChanged());
    EXPECT_TRUE(file.HasChanged());
}

TEST_F(DrawingFile, NewEngineGetsItsValuesBeforeItIsShown)
{
    Write(DRAWING);
    CDrawingFile file(PATH);
    HQELENGINE hGiven = nullptr;
    int nCalls = 0;
    file.SetAfterOpen([&](HQELENGINE hEngine) {
        EXPECT_NE(hEngine, file.Engine());
        hGiven = hEngine;
        ++nCalls;
    });
    ASSERT_EQ(1, file.Load());
    EXPECT_EQ(1, nCalls);
    EXPECT_EQ(hGiven, file.Engine());
    Write("<qel");
    EXPECT_EQ(0, file.Load());
    EXPECT_EQ(1, nCalls); // there is nothing to set
}

TEST_F(DrawingFile, PathFromTheRootLeadsBackToTheElement)
{
    Write(DRAWING);
    CDrawingFile file(PATH);
    ASSERT_EQ(1, file.Load());
    HQELELEM hBox = QELFindElem(file.Engine(), "box");
    EXPECT_EQ((std::vector<int>{0, 0, 0}), file.PathOf(hBox));
    EXPECT_EQ(hBox, file.ElementAt({0, 0, 0}));
    EXPECT_EQ(nullptr, file.ElementAt({0, 0, 1}));
    EXPECT_EQ(nullptr, file.ElementAt({0, 7, 0}));
    EXPECT_EQ(nullptr, file.ElementAt({}));
}
