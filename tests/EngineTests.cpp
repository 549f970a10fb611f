// The engine object: opening, creating, sizes, and the document and the view kept in step. The code
// is engine/QELEngine.*.
#include "engine/QELEngine.h"

#include "document/QELDocQEL.h"
#include "engine/Errors.h"
#include "render/QELViewQEL.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>

namespace {

constexpr const char* DRAWING =
    "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n"
    "<qel id=\"pump\" type=\"2\" width=\"100\" height=\"80\">\r\n"
    "<g id=\"group\"><rect id=\"inner\" style=\"0x1\" bg=\"0xff\" lnwid=\"0\" "
    "crd=\"10 20 40 60\"/></g>\r\n"
    "<line id=\"last\" crd=\"1 2 3 4\"/>\r\n"
    "</qel>\r\n";

class EngineObject : public ::testing::Test {
protected:
    std::string File(const char* pszName, const std::string& bytes = DRAWING)
    {
        const std::string path = m_folder.Path(pszName);
        EXPECT_TRUE(WriteBytes(path, bytes));
        return path;
    }

    SIZE RefSize() const
    {
        SIZE size{-1, -1};
        EXPECT_EQ(1, m_engine.GetRefSize(&size));
        return size;
    }

    RECT DrawRect() const
    {
        RECT rc{-1, -1, -1, -1};
        EXPECT_EQ(1, m_engine.GetDrawRect(&rc));
        return rc;
    }

    SIZE ViewSize()
    {
        SIZE size{-1, -1};
        EXPECT_EQ(1, m_engine.View().GetRefSize(&size));
        return size;
    }

    CTestFolder m_folder;
    CQELEngine m_engine{false};
};

void ExpectSize(long nWidth, long nHeight, SIZE size)
{
    EXPECT_EQ(nWidth, size.cx);
    EXPECT_EQ(nHeight, size.cy);
}

void ExpectRect(const RECT& expected, const RECT& rc)
{
    EXPECT_TRUE(::EqualRect(&expected, &rc))
        << rc.left << "," << rc.top << "," << rc.right << "," << rc.bottom;
}

} // namespace

TEST_F(EngineObject, BeginsWithoutADrawingAndWithSizesOfFifty)
{
    EXPECT_EQ(0u, m_engine.RefCount());
    ExpectSize(50, 50, RefSize());
    ExpectRect({0, 0, 50, 50}, DrawRect());
    EXPECT_EQ(nullptr, m_engine.Document().GetRoot());
    EXPECT_EQ(nullptr, m_engine.View().Root());
}

TEST_F(EngineObject, NewMakesAnEmptyDrawingOfFiftyByFifty)
{
    ASSERT_EQ(1, m_engine.New());
    ExpectSize(50, 50, RefSize());
    ExpectSize(50, 50, ViewSize());
    ASSERT_NE(nullptr, m_engine.Document().GetRoot());
    EXPECT_EQ(nullptr, m_engine.Document().GetRoot()->FirstChild());
    ASSERT_NE(nullptr, m_engine.View().Root());
    EXPECT_EQ(m_engine.View().Root(), m_engine.Document().GetRoot()->View());
}

TEST_F(EngineObject, NewAfterALargerDrawingIsFiftyByFiftyAgain)
{
    ASSERT_EQ(1, m_engine.Open(File("a.qel").c_str()));
    ASSERT_EQ(1, m_engine.New());
    ExpectSize(50, 50, RefSize());
    ExpectSize(50, 50, ViewSize());
    QELROOTATTR attr{};
    int nSize = 0;
    ASSERT_EQ(1, CQELEngine::GetElemAttr(m_engine.Document().GetRoot(), &attr, &nSize));
    EXPECT_EQ(50, attr.nWidth);
    EXPECT_EQ(50, attr.nHeight);
}

TEST_F(EngineObject, OpenTakesTheReferenceSizeAndKeepsTheOriginOfTheDrawRect)
{
    ASSERT_EQ(1, m_engine.SetDrawRect({7, -9, 1000, 1000}));
    ASSERT_EQ(1, m_engine.Open(File("a.qel").c_str()));
    ExpectSize(100, 80, RefSize());
    ExpectSize(100, 80, ViewSize());
    ExpectRect({7, -9, 107, 71}, DrawRect());
}

TEST_F(EngineObject, OpenMakesOneLinkedViewElementForEveryDocumentElement)
{
    ASSERT_EQ(1, m_engine.Open(File("a.qel").c_str()));
    CQELDocElm* const pRoot = m_engine.Document().GetRoot();
    const CQELViewElm* pView = m_engine.View().Root();
    int nCount = 0;
    for (CQELDocElm* pElm = pRoot; pElm; pElm = pElm->NextInTree(pRoot)) {
        ASSERT_NE(nullptr, pView);
        EXPECT_EQ(pView, pElm->View());
        EXPECT_EQ(pElm->Type(), pView->Type());
        EXPECT_EQ(100, pView->RefW()); // reached by the reference size, too
        EXPECT_EQ(80, pView->RefH());
        pView = pView->NextInTree(m_engine.View().Root());
        ++nCount;
    }
    EXPECT_EQ(nullptr, pView);
    EXPECT_EQ(4, nCount);
}

TEST_F(EngineObject, OpenOfASecondFileClosesTheFirstEvenWhenItFails)
{
    ASSERT_EQ(1, m_engine.Open(File("a.qel").c_str()));
    const uintptr_t nOld = m_engine.Document().GetRoot()->HandleValue();
    ASSERT_NE(nullptr, CQELDocElm::OfHandle(nOld));
    EXPECT_EQ(0, m_engine.Open(m_folder.Path("missing.qel").c_str()));
    EXPECT_EQ(nullptr, m_engine.Document().GetRoot());
    EXPECT_EQ(nullptr, m_engine.View().Root());
    EXPECT_EQ(nullptr, CQELDocElm::OfHandle(nOld));

    ASSERT_EQ(1, m_engine.Open(File("b.qel", "<qel width=\"7\"/>").c_str()));
    ExpectSize(7, 50, RefSize());
    EXPECT_EQ(nullptr, m_engine.Document().GetRoot()->FirstChild());
}

TEST_F(EngineObject, OpenByNameLooksInTheFolderQelBelowTheCurrentOne)
{
    char szBefore[MAX_PATH];
    ::GetCurrentDirectoryA(sizeof szBefore, szBefore);
    const std::string folder = m_folder.Path("QEL");
    ASSERT_TRUE(::CreateDirectoryA(folder.c_str(), nullptr));
    ASSERT_TRUE(WriteBytes(folder + "\\tank.qel", DRAWING));
    ASSERT_TRUE(::SetCurrentDirectoryA(m_folder.Path(".").c_str()));
    EXPECT_EQ(1, m_engine.OpenByName("tank"));
    ExpectSize(100, 80, RefSize());
    EXPECT_EQ(0, m_engine.OpenByName("other"));
    EXPECT_EQ(nullptr, m_engine.Document().GetRoot());
    EXPECT_EQ(0, m_engine.OpenByName(std::string(300, 'x').c_str())); // past the path's buffer
    ::SetCurrentDirectoryA(szBefore);
    ::DeleteFileA((folder + "\\tank.qel").c_str());
    ::RemoveDirectoryA(folder.c_str());
}

TEST_F(EngineObject, CloseEndsDocumentAndViewAndLeavesTheDrawRect)
{
    ASSERT_EQ(1, m_engine.Open(File("a.qel").c_str()));
    ASSERT_EQ(1, m_engine.SetDrawRect({3, 4, 5, 6}));
    EXPECT_EQ(1, m_engine.Close());
    EXPECT_EQ(nullptr, m_engine.Document().GetRoot());
    EXPECT_EQ(nullptr, m_engine.View().Root());
    ExpectRect({3, 4, 5, 6}, DrawRect());
}

TEST_F(EngineObject, SetRefSizeReachesTheRootTheViewAndTheEngine)
{
    ASSERT_EQ(1, m_engine.Open(File("a.qel").c_str()));
    EXPECT_EQ(1, m_engine.SetRefSize({100, 80})); // the current one
    EXPECT_EQ(1, m_engine.SetRefSize({30, 20}));
    ExpectSize(30, 20, RefSize());
    ExpectSize(30, 20, ViewSize());
    QELROOTATTR attr{};
    ASSERT_EQ(1, CQELEngine::GetElemAttr(m_engine.Document().GetRoot(), &attr, nullptr));
    EXPECT_EQ(30, attr.nWidth);
    EXPECT_EQ(20, attr.nHeight);
    EXPECT_EQ(2, attr.nType); // the rest of the record stays
    for (const CQELViewElm* p = m_engine.View().Root(); p;
         p = p->NextInTree(m_engine.View().Root())) {
        EXPECT_EQ(30, p->RefW());
        EXPECT_EQ(20, p->RefH());
    }
    ExpectRect({0, 0, 100, 80}, DrawRect()); // not touched
}

TEST_F(EngineObject, CreateElemWithANullParentAppendsToTheRoot)
{
    ASSERT_EQ(1, m_engine.Open(File("a.qel").c_str()));
    CQELDocElm* const pElm = m_engine.CreateElem(QEL_TYPE_CIRCLE, nullptr, nullptr);
    ASSERT_NE(nullptr, pElm);
    EXPECT_EQ(m_engine.Document().GetRoot(), pElm->Parent());
    EXPECT_EQ(pElm, m_engine.Document().GetRoot()->LastChild());
    ASSERT_NE(nullptr, pElm->View());
    EXPECT_EQ(m_engine.View().Root(), pElm->View()->Parent());
    EXPECT_EQ(QEL_TYPE_CIRCLE, pElm->View()->Type());
}

TEST_F(EngineObject, CreateElemOfATypeWithoutAClassLeavesNothingBehind)
{
    ASSERT_EQ(1, m_engine.New());
    for (const int nType : {12, 13, 14, 22, 23, -1, 1000})
        EXPECT_EQ(nullptr, m_engine.CreateElem(nType, nullptr, nullptr)) << nType;
    EXPECT_EQ(nullptr, m_engine.Document().GetRoot()->FirstChild());
    EXPECT_EQ(nullptr, m_engine.View().Root()->FirstChild());
}

TEST_F(EngineObject, MovesCopiesAndDeletesInDocumentAndViewAlike)
{
    ASSERT_EQ(1, m_engine.Open(File("a.qel").c_str()));
    CQELDocElm* const pRoot = m_engine.Document().GetRoot();
    CQELDocElm* const pGroup = pRoot->FirstChild();
    CQELDocElm* const pLine = pRoot->LastChild();
    CQELDocElm* const pCopy = m_engine.CopyElem(pGroup);
    ASSERT_NE(nullptr, pCopy);
    ASSERT_EQ(1, m_engine.MoveElem(pLine, pCopy, pCopy->FirstChild()));
    ASSERT_EQ(1, m_engine.DeleteElem(pGroup));

    EXPECT_EQ(pCopy, pRoot->FirstChild());
    EXPECT_EQ(pCopy, pRoot->LastChild());
    EXPECT_STREQ("group_1", pCopy->Id());
    EXPECT_STREQ("inner_1", pCopy->FirstChild()->Id());
    EXPECT_EQ(pLine, pCopy->LastChild());
    const CQELViewElm* pView = m_engine.View().Root();
    for (CQELDocElm* pElm = pRoot; pElm; pElm = pElm->NextInTree(pRoot)) {
        EXPECT_EQ(pView, pElm->View());
        ASSERT_NE(nullptr, pView);
        pView = pView->NextInTree(m_engine.View().Root());
    }
    EXPECT_EQ(nullptr, pView);
}

TEST_F(EngineObject, ShowOnlyDropsTheElementsAndStillDraws)
{
    CQELEngine engine(true);
    ASSERT_EQ(1, engine.Open(File("a.qel").c_str()));
    EXPECT_EQ(nullptr, engine.Document().GetRoot());
    ASSERT_NE(nullptr, engine.View().Root());
    CTestBitmap drawn(100, 80);
    EXPECT_EQ(1, engine.Draw(drawn.Dc(), drawn.Box(), QEL_DRAW_FULL));
    EXPECT_EQ(30 * 40, CountPixels(drawn, RGB(255, 0, 0)));
}

TEST_F(EngineObject, CountsSharesDownToNothingAndNoFurther)
{
    m_engine.AddRef();
    m_engine.AddRef();
    EXPECT_EQ(2u, m_engine.RefCount());
    m_engine.DropRef();
    m_engine.DropRef();
    m_engine.DropRef();
    EXPECT_EQ(0u, m_engine.RefCount());
}

// The generated pages are made of these rows; hosts read the sentences.
TEST(ErrorTable, HasASentenceForEachCodeOnce)
{
    std::set<uint32_t> codes;
    std::set<std::string> names;
    for (const ErrorRow& row : ErrorRows()) {
        EXPECT_TRUE(codes.insert(row.nCode).second) << row.nCode;
        EXPECT_TRUE(names.insert(row.pszName).second) << row.pszName;
        EXPECT_EQ(0U, std::string(row.pszName).rfind("QEL_ERROR_", 0)) << row.pszName;
        EXPECT_STREQ(row.pszSentence, ErrorSentence(row.nCode));
    }
    for (uint32_t n = QEL_ERROR_NONE; n <= QEL_ERROR_GDI; ++n) EXPECT_EQ(1U, codes.count(n)) << n;
    for (const uint32_t nUnknown : {QEL_ERROR_GDI + 1U, 0xFFFFFFFFU})
        EXPECT_STREQ("The drawing cannot be read.", ErrorSentence(nUnknown));
}

TEST(EngineObjectAlone, TakesItsHandleAndItsElementsHandlesWithIt)
{
    uintptr_t nEngine = 0, nRoot = 0;
    {
        CQELEngine engine(false);
        ASSERT_EQ(1, engine.New());
        nEngine = engine.Handle().Value();
        nRoot = engine.Document().GetRoot()->HandleValue();
        EXPECT_EQ(&engine, CHandleEntry::Find(HandleKind::Engine, nEngine));
        EXPECT_NE(nullptr, CQELDocElm::OfHandle(nRoot));
    }
    EXPECT_EQ(nullptr, CHandleEntry::Find(HandleKind::Engine, nEngine));
    EXPECT_EQ(nullptr, CQELDocElm::OfHandle(nRoot));
}
