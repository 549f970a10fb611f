// The classes below the exported interface when an allocation fails: what they are asked for is
// done whole or not at all.
#include "document/QELDocElm.h"
#include "engine/ElementTypes.h"
#include "render/HostDriven.h"
#include "render/QELView.h"
#include "render/QELViewGroup.h"
#include "tests/native/AllocationFaults.h"
#include "xml/XmlTree.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

namespace {

constexpr int MOST_ALLOCATIONS = 100;

// Whether the allocation by this number was asked for while act ran.
template <class Act>
bool RunWithout(int nNth, const Act& act)
{
    alloc::Fail(nNth);
    act();
    const bool bReached = alloc::Count() >= nNth;
    alloc::Off();
    return bReached;
}

// ---- view elements ----

constexpr int g_viewTypes[] = {QEL_TYPE_ROOT,     QEL_TYPE_TEXT,  QEL_TYPE_RECT,
                               QEL_TYPE_POLYLINE, QEL_TYPE_GROUP, QEL_TYPE_STATUS,
                               QEL_TYPE_FRAME,    QEL_TYPE_SCALE, QEL_TYPE_PATTERN,
                               QEL_TYPE_DRAWRGN,  QEL_TYPE_METER};

TEST(ClassAllocation, AViewElementIsCopiedWithItsChildrenOrNotAtAll)
{
    for (const int nType : g_viewTypes) {
        SCOPED_TRACE(nType);
        CQELView view(g_elementTypes, SIZE{100, 90});
        ASSERT_EQ(1, view.NewTree());
        CQELViewElm* pElm = view.Root();
        if (nType != QEL_TYPE_ROOT) {
            ASSERT_EQ(1, view.CreateElement(view.Root(), nullptr, nType, &pElm));
        }
        if (pElm->IsShape()) { // with all that takes memory
            QELSHAPEATTR attr{};
            ASSERT_EQ(1, pElm->GetAttrBlock(&attr));
            std::strcpy(attr.szText, "text");
            attr.nGeometry[0] = QEL_MAX_POINTS;
            attr.nGeometry[2 * QEL_MAX_POINTS] = 7;
            ASSERT_EQ(1, pElm->SetAttrBlock(&attr));
        }
        for (int i = 0; i < 2; ++i) {
            CQELViewElm* pChild = nullptr;
            ASSERT_EQ(1, view.CreateElement(pElm, nullptr, QEL_TYPE_RECT, &pChild));
        }
        CQELViewGroup target(50, 50);
        int n = 1;
        for (; n < MOST_ALLOCATIONS; ++n) {
            CQELViewElm* pCopy = nullptr;
            int nResult = -1;
            const bool bReached =
                RunWithout(n, [&] { nResult = pElm->Duplicate(&target, &pCopy); });
            ASSERT_NE(nullptr, pElm->FirstChild()); // the source stays
            EXPECT_EQ(pElm->LastChild(), pElm->FirstChild()->NextSibling());
            if (!bReached) {
                EXPECT_EQ(1, nResult);
                ASSERT_NE(nullptr, pCopy);
                EXPECT_EQ(pCopy, target.FirstChild());
                ASSERT_NE(nullptr, pCopy->FirstChild());
                EXPECT_EQ(pCopy->LastChild(), pCopy->FirstChild()->NextSibling());
                break;
            }
            EXPECT_EQ(0, nResult);
            EXPECT_EQ(nullptr, pCopy);
            EXPECT_EQ(nullptr, target.FirstChild());
        }
        // The element, what a shape holds of text and points, and its two children.
        EXPECT_EQ(pElm->IsShape() ? 6 : 4, n);
    }
}

// The words that the drawing sets are kept by whom they are for.
TEST(ClassAllocation, AMeterOrScaleIsCopiedWithItsSettingsOrNotAtAll)
{
    for (const int nType : {QEL_TYPE_METER, QEL_TYPE_SCALE}) {
        SCOPED_TRACE(nType);
        CQELView view(g_elementTypes, SIZE{100, 90});
        ASSERT_EQ(1, view.NewTree());
        CQELViewElm* pElm = nullptr;
        ASSERT_EQ(1, view.CreateElement(view.Root(), nullptr, nType, &pElm));
        const SetTexts texts{"max=100 min=5", "62.5"};
        ASSERT_EQ(1, pElm->HostSide()->TakeSet(texts));
        CQELViewGroup target(50, 50);
        int n = 1;
        for (; n < MOST_ALLOCATIONS; ++n) {
            CQELViewElm* pCopy = nullptr;
            int nResult = -1;
            if (!RunWithout(n, [&] { nResult = pElm->Duplicate(&target, &pCopy); })) {
                EXPECT_EQ(1, nResult);
                ASSERT_NE(nullptr, pCopy);
                EXPECT_EQ(62.5, pCopy->HostSide()->ShownNumber());
                break;
            }
            EXPECT_EQ(0, nResult);
            EXPECT_EQ(nullptr, pCopy);
            EXPECT_EQ(nullptr, target.FirstChild());
        }
        EXPECT_LT(2, n); // the element, and its words
    }
}

TEST(ClassAllocation, ANewViewTreeHasARootOrThereIsNone)
{
    CQELView view(g_elementTypes, SIZE{100, 90});
    int nResult = -1;
    EXPECT_TRUE(RunWithout(1, [&] { nResult = view.NewTree(); }));
    EXPECT_EQ(0, nResult);
    EXPECT_EQ(nullptr, view.Root());
    EXPECT_EQ(1, view.NewTree());
    ASSERT_NE(nullptr, view.Root());
    EXPECT_EQ(100, view.Root()->RefW());
}

// ---- document elements ----

TEST(ClassAllocation, AnElementWithoutAClassIsClonedOrNotAtAll)
{
    DocContext context{nullptr, &g_elementTypes};
    const CQELDocElm elm(&context, QEL_TYPE_PATH);
    CQELDocElm* pClone = nullptr;
    int nResult = -1;
    EXPECT_TRUE(RunWithout(1, [&] { nResult = elm.Clone(&pClone); }));
    EXPECT_EQ(0, nResult);
    EXPECT_EQ(nullptr, pClone);
    ASSERT_EQ(1, elm.Clone(&pClone));
    const std::unique_ptr<CQELDocElm> clone(pClone);
    EXPECT_EQ(QEL_TYPE_PATH, clone->Type());
}

// ---- attributes ----

// Without memory for a larger index of its names, or for any, an element still finds them all.
TEST(ClassAllocation, AttributesAreFoundWithoutMemoryForTheirIndex)
{
    constexpr int COUNT = 300;
    bool bReached = true;
    int nFailed = 0; // settings
    int nDidWithout = 0;
    for (int nNth = 1; bReached; ++nNth) {
        bReached = false;
        for (const int nFrom : {0, 50, 100}) { // there is an index at 50, and a larger one at 100
            SCOPED_TRACE(testing::Message() << "allocation " << nNth << " from " << nFrom);
            XmlContext* pXml = XmlCreate();
            ASSERT_NE(nullptr, pXml);
            ASSERT_EQ(0, XmlSetNameZ(pXml, "root"));
            for (int i = 0; i < COUNT; ++i) {
                const std::string name = "n" + std::to_string(i);
                const std::string value = "v" + std::to_string(i);
                int nResult = 0;
                bool bHere = false;
                const auto set = [&] { nResult = XmlSetAttrZ(pXml, name.c_str(), value.c_str()); };
                if (i < nFrom)
                    set();
                else
                    bHere = RunWithout(nNth, set);
                bReached = bReached || bHere;
                nFailed += nResult != 0;
                nDidWithout += bHere && nResult == 0;
                if (nResult) {
                    EXPECT_EQ(nullptr, XmlGetAttr(pXml, name.c_str()));
                    set(); // a later try
                }
                ASSERT_EQ(0, nResult);
            }
            EXPECT_EQ(COUNT, XmlAttrCount(pXml));
            for (int i = 0; i < COUNT; ++i) {
                const std::string name = "n" + std::to_string(i);
                EXPECT_STREQ(name.c_str(), XmlAttrNameAt(pXml, i));
                EXPECT_STREQ(("v" + std::to_string(i)).c_str(), XmlGetAttr(pXml, name.c_str()));
            }
            EXPECT_EQ(0, XmlDestroy(pXml));
        }
    }
    EXPECT_GT(nFailed, COUNT); // the attribute, its name, its value
    EXPECT_GT(nDidWithout, 0); // the index
}

} // namespace
