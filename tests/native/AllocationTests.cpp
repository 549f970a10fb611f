// Every allocation of every operation fails in turn. The operation then gives its documented
// failure and the drawing is as before, or it did without and the result is the same as ever;
// nothing leaks, and the same operation succeeds the next time.
#include "tests/native/AllocationFaults.h"
#include "tests/native/GdiDouble.h"
#include "tests/native/KernelDouble.h"
#include "tests/native/Life.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>

namespace {

constexpr int MOST_ALLOCATIONS = 20000; // an operation that needs more does not end

// What an operation leaves after a failure.
enum class After {
    AsBefore,
    NoDrawing, // opening and making a drawing close the one that was open first
};

struct Operation {
    const char* pszName;
    std::function<bool(HQELENGINE)> act; // true: it succeeded
    After nAfterFailure = After::AsBefore;
    int nFewest =
        0; // allocations that it makes at least, so that the test is known to test something
    std::string text = EveryElement(); // the drawing on the disk
    int nCompareEvery = 1;             // all that can be seen is compared at each so many of them
};

void FixTheTime()
{
    const SYSTEMTIME time{2024, 2, 4, 29, 10, 9, 36, 0};
    kernel::SetTime(&time, &time);
}

std::string WithoutDrawing()
{
    CTestEngine engine;
    const RECT rc = DEVICE_RECT;
    QELSetQELRect(engine, &rc);
    return Everything(engine);
}

// What stands in the old drawing's place; the QEL rect, which opening sets, left aside.
void ExpectNoDrawing(HQELENGINE hEngine)
{
    const RECT rc = DEVICE_RECT;
    QELSetQELRect(hEngine, &rc);
    SIZE size{};
    EXPECT_EQ(3, QELGetType(hEngine));
    EXPECT_EQ(nullptr, QELGetRootElem(hEngine));
    EXPECT_EQ(nullptr, QELGetName(hEngine));
    EXPECT_EQ(1, QELGetRefSize(hEngine, &size));
    EXPECT_EQ("", SavedBytes(hEngine));
    EXPECT_TRUE(Painted(hEngine).empty());
}

// Whether the allocation by this number was reached.
bool TryWithout(const Operation& operation, int nNth, const std::string& before,
                const std::string& after)
{
    CTestEngine engine;
    EXPECT_TRUE(engine.Open(operation.text));
    bool bDone = false;
    bool bReached = false;
    {
        const gdi::CLeakCheck leaks;
        alloc::Fail(nNth);
        bDone = operation.act(engine);
        bReached = alloc::Count() >= nNth;
        alloc::Off();
    }
    EXPECT_EQ(0, kernel::OpenHandles());
    if (!bReached) {
        EXPECT_TRUE(bDone);
        return false;
    }
    const bool bCompare = nNth % operation.nCompareEvery == 0;
    if (!bDone) {
        if (operation.nAfterFailure == After::NoDrawing) {
            ExpectNoDrawing(engine);
        } else if (bCompare) {
            EXPECT_EQ(before, Everything(engine)) << "it failed and left something changed";
        }
        EXPECT_TRUE(operation.act(engine)) << "a later try";
    }
    if (bCompare) {
        EXPECT_EQ(after, Everything(engine)) << (bDone ? "it did without" : "after a later try");
    }
    return true;
}

void FailEachAllocation(const Operation& operation)
{
    SCOPED_TRACE(operation.pszName);
    kernel::FormatDisk();
    FixTheTime();
    std::string before;
    std::string after;
    {
        CTestEngine engine;
        ASSERT_TRUE(engine.Open(operation.text));
        before = Everything(engine);
        alloc::Fail(0);
        const bool bDone = operation.act(engine);
        EXPECT_GE(alloc::Count(), operation.nFewest);
        alloc::Off();
        ASSERT_TRUE(bDone);
        after = Everything(engine);
    }
    int n = 1;
    for (; n < MOST_ALLOCATIONS; ++n) {
        SCOPED_TRACE("allocation " + std::to_string(n));
        if (!TryWithout(operation, n, before, after) || testing::Test::HasFailure()) break;
    }
    EXPECT_LT(n, MOST_ALLOCATIONS);
    EXPECT_GT(n, operation.nFewest);
}

HQELELEM Find(HQELENGINE h, const char* pszId)
{
    return ElementById(h, pszId);
}

// The element is looked for before the faults begin: finding it makes handles.
Operation OnElement(const char* pszName, const char* pszId,
                    const std::function<bool(HQELENGINE, HQELELEM)>& act, int nFewest = 0)
{
    const std::string id = pszId;
    return {pszName, [id, act](HQELENGINE h) { return act(h, Find(h, id.c_str())); },
            After::AsBefore, nFewest};
}

} // namespace

TEST(Allocation, WithoutADrawingNothingIsSeen)
{
    const std::string seen = WithoutDrawing();
    EXPECT_EQ(0U, seen.rfind("type 3 ", 0)) << seen;
    EXPECT_EQ(std::string::npos, seen.find("element")) << seen;
}

TEST(Allocation, MakingAnEngine)
{
    for (const int bShowOnly : {0, 1}) {
        QELShowOnly(bShowOnly);
        int n = 1;
        for (;; ++n) {
            alloc::Fail(n);
            const HQELENGINE h = CreateQELEngine();
            const bool bReached = alloc::Count() >= n;
            alloc::Off();
            if (h) {
                EXPECT_EQ(1, DestroyQELEngine(h));
            }
            if (!bReached) {
                EXPECT_NE(nullptr, h);
                break;
            }
            const HQELENGINE hAgain = CreateQELEngine();
            EXPECT_NE(nullptr, hAgain);
            EXPECT_EQ(1, DestroyQELEngine(hAgain));
        }
        EXPECT_GT(n, 1);
    }
    QELShowOnly(0);
}

TEST(Allocation, Opening)
{
    FailEachAllocation({"open",
                        [](HQELENGINE h) {
                            const RECT rc = DEVICE_RECT;
                            const int nResult = QELOpenFile(h, DRAWING_PATH);
                            QELSetQELRect(h, &rc);
                            return nResult == 1;
                        },
                        After::NoDrawing, 100, EveryElement(), 16});
}

TEST(Allocation, OpeningByAWidePath)
{
    FailEachAllocation({"open wide",
                        [](HQELENGINE h) {
                            const RECT rc = DEVICE_RECT;
                            const int nResult = QELOpenFileU(h, L"C:\\temp\\drawing.qel");
                            QELSetQELRect(h, &rc);
                            return nResult == 1;
                        },
                        After::NoDrawing, 8,
                        "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n"
                        "<qel id=\"all\"><rect id=\"r\" crd=\"1 2 3 4\"/></qel>\r\n"});
}

TEST(Allocation, OpeningAFileOfAWidePathOrMemory)
{
    const std::string text = "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n"
                             "<qel id=\"all\"><rect id=\"r\" crd=\"1 2 3 4\"/></qel>\r\n";
    const auto open = [text](HQELENGINE h, int nWay) {
        if (nWay == 0) return QELOpenFileW(h, L"C:\\temp\\drawing.qel");
        if (nWay == 1) return QELOpenFileW(h, L"\\\\?\\C:\\temp\\drawing.qel");
        return QELOpenMemory(h, text.data(), static_cast<DWORD>(text.size()));
    };
    for (const int nWay : {0, 1, 2})
        FailEachAllocation({"open",
                            [open, nWay](HQELENGINE h) {
                                const RECT rc = DEVICE_RECT;
                                const int nResult = open(h, nWay);
                                QELERROR error{};
                                error.nSize = sizeof error;
                                QELGetError(h, &error);
                                EXPECT_EQ(nResult == 0, error.nCode == QEL_ERROR_MEMORY);
                                QELSetQELRect(h, &rc);
                                return nResult == 1;
                            },
                            After::NoDrawing, 8, text});
}

TEST(Allocation, OpeningInShowOnlyMode)
{
    ASSERT_TRUE(kernel::PutFile(DRAWING_PATH, "<qel id='shared'><rect crd='1 2 3 4'/></qel>"));
    QELShowOnly(1);
    for (const bool bShared : {false, true})
        for (int n = 1;; ++n) {
            SCOPED_TRACE("allocation " + std::to_string(n));
            const CTestEngine other;
            const CTestEngine engine;
            ASSERT_EQ(bShared, bShared && QELOpenFile(other, DRAWING_PATH));
            alloc::Fail(n);
            const int nResult = QELOpenFileW(engine, L"C:\\temp\\drawing.qel");
            const bool bReached = alloc::Count() >= n;
            alloc::Off();
            EXPECT_EQ(nResult == 1, QELGetName(engine) != nullptr);
            if (!bReached) {
                EXPECT_EQ(1, nResult);
                break;
            }
            EXPECT_EQ(0, kernel::OpenHandles());
            EXPECT_EQ(1, QELOpenFileW(engine, L"C:\\temp\\drawing.qel")) << "a later try";
        }
    QELShowOnly(0);
}

TEST(Allocation, ANewDrawing)
{
    for (const bool bByPath : {false, true})
        FailEachAllocation({"new",
                            [bByPath](HQELENGINE h) {
                                const int nResult =
                                    bByPath ? QELOpenFile(h, nullptr) : QELNewFileEx(h, 65001);
                                const RECT rc = DEVICE_RECT;
                                QELSetQELRect(h, &rc);
                                return nResult == 1;
                            },
                            After::NoDrawing, 2});
}

TEST(Allocation, Saving)
{
    FailEachAllocation({"save", [](HQELENGINE h) { return QELSaveFile(h, OTHER_PATH) == 1; },
                        After::AsBefore, 1, EveryElement(), 16});
}

TEST(Allocation, SavingByAWidePath)
{
    FailEachAllocation({"save",
                        [](HQELENGINE h) { return QELSaveFileW(h, L"C:\\temp\\other.qel") == 1; },
                        After::AsBefore, 1, EveryElement(), 16});
}

TEST(Allocation, SavingIntoMemoryNeedsNone)
{
    CTestEngine engine;
    ASSERT_TRUE(engine.Open());
    const std::string saved = SavedBytes(engine);
    std::string bytes(saved.size(), 0);
    auto nSize = static_cast<DWORD>(bytes.size());
    alloc::FailFrom(1);
    EXPECT_EQ(1, QELSaveMemory(engine, bytes.data(), &nSize));
    EXPECT_EQ(0, alloc::Count());
    alloc::Off();
    EXPECT_TRUE(saved == bytes);
}

TEST(Allocation, SavingOverTheOpenFileKeepsItWhenItFails)
{
    FixTheTime();
    const std::string text = EveryElement();
    for (int n = 1;; ++n) {
        SCOPED_TRACE("allocation " + std::to_string(n));
        CTestEngine engine;
        ASSERT_TRUE(engine.Open(text));
        ASSERT_EQ(1, QELSetElemId(engine, Find(engine, "r1"), "changed"));
        const std::size_t nFiles = kernel::FileNames().size();
        alloc::Fail(n);
        const int nResult = QELSaveFile(engine, DRAWING_PATH);
        const bool bReached = alloc::Count() >= n;
        alloc::Off();
        std::string bytes;
        ASSERT_TRUE(kernel::GetFile(DRAWING_PATH, &bytes));
        EXPECT_EQ(nFiles, kernel::FileNames().size()) << "a file was left beside the target";
        EXPECT_EQ(nResult == 0, bytes == text);
        if (!bReached) {
            EXPECT_EQ(1, nResult);
            break;
        }
    }
}

TEST(Allocation, ClosingAndDestroyingNeedNone)
{
    CTestEngine engine;
    ASSERT_TRUE(engine.Open());
    alloc::FailFrom(1);
    EXPECT_EQ(1, QELCloseFile(engine));
    EXPECT_EQ(0, alloc::Count());
    alloc::Off();
    const HQELENGINE hOther = CreateQELEngine();
    ASSERT_EQ(1, QELOpenFile(hOther, DRAWING_PATH));
    alloc::FailFrom(1);
    EXPECT_EQ(1, DestroyQELEngine(hOther));
    EXPECT_EQ(0, alloc::Count());
    alloc::Off();
}

TEST(Allocation, CreatingEveryType)
{
    for (int nType = QEL_TYPE_TEXT; nType < QEL_TYPE_NONE; ++nType) {
        if (nType >= QEL_TYPE_PATH && nType <= QEL_TYPE_USE) continue; // they cannot be made
        for (const char* pszAfter : {"", "ci1"}) {
            SCOPED_TRACE("type " + std::to_string(nType) + " after " + pszAfter);
            FailEachAllocation({"create",
                                [nType, pszAfter](HQELENGINE h) {
                                    const HQELELEM hAfter = *pszAfter ? Find(h, pszAfter) : nullptr;
                                    return QELCreateElem(h, nType, nullptr, hAfter) != nullptr;
                                },
                                After::AsBefore, 2});
        }
    }
}

TEST(Allocation, CreatingARoot)
{
    FailEachAllocation(
        {"root",
         [](HQELENGINE h) { return QELCreateElem(h, QEL_TYPE_ROOT, nullptr, nullptr) != nullptr; },
         After::AsBefore, 2});
}

TEST(Allocation, CreatingInAGroup)
{
    FailEachAllocation(OnElement(
        "create in a group", "g2",
        [](HQELENGINE h, HQELELEM hGroup) {
            return QELCreateElem(h, QEL_TYPE_METER, hGroup, Find(h, "gc1")) != nullptr;
        },
        2));
}

TEST(Allocation, CopyingEveryElement)
{
    std::vector<std::string> ids;
    {
        CTestEngine engine;
        ASSERT_TRUE(engine.Open());
        const HQELELEM hRoot = QELGetRootElem(engine);
        for (HQELELEM h = QELGetFirstChild(engine, hRoot); h; h = QELGetNextElem(engine, h))
            ids.push_back(QELGetElemId(engine, h));
    }
    EXPECT_LT(30U, ids.size());
    for (const std::string& id : ids)
        FailEachAllocation(OnElement(
            id.c_str(), id.c_str(),
            [](HQELENGINE h, HQELELEM hElem) { return QELCopyElem(h, hElem) != nullptr; }, 2));
}

TEST(Allocation, MovingDeletingAndTakingOut)
{
    for (const char* pszId : {"r2", "g1", "s1", "sc2", "m5", "f1", "d1"}) {
        FailEachAllocation(OnElement("move", pszId, [](HQELENGINE h, HQELELEM hElem) {
            return QELMoveElem(h, hElem, QELGetRootElem(h), nullptr) == 1;
        }));
        FailEachAllocation(OnElement("delete", pszId, [](HQELENGINE h, HQELELEM hElem) {
            return QELDeleteElem(h, hElem) == 1;
        }));
        FailEachAllocation(OnElement("take out", pszId, [](HQELENGINE h, HQELELEM hElem) {
            return QELMoveElem(h, hElem, nullptr, nullptr) == 1;
        }));
    }
}

// Coming back into the picture makes places for what the host addresses.
TEST(Allocation, MovingBackIn)
{
    FixTheTime();
    for (const char* pszId : {"g1", "s1", "sc2", "m5"}) {
        SCOPED_TRACE(pszId);
        int nFailures = 0;
        for (int n = 1;; ++n) {
            CTestEngine engine;
            ASSERT_TRUE(engine.Open());
            const HQELELEM hElem = Find(engine, pszId);
            const HQELELEM hRoot = QELGetRootElem(engine);
            ASSERT_EQ(1, QELMoveElem(engine, hElem, nullptr, nullptr));
            const std::string before = Everything(engine);
            alloc::Fail(n);
            const int nResult = QELMoveElem(engine, hElem, hRoot, nullptr);
            const bool bReached = alloc::Count() >= n;
            alloc::Off();
            if (!nResult) {
                ++nFailures;
                EXPECT_EQ(before, Everything(engine));
                EXPECT_EQ(1, QELMoveElem(engine, hElem, hRoot, nullptr));
            }
            EXPECT_EQ(hElem, QELGetFirstChild(engine, hRoot));
            EXPECT_NE(before, Everything(engine));
            if (!bReached) break;
        }
        EXPECT_EQ(*pszId == 'g' ? 0 : 1, nFailures); // a group of shapes has no such place
    }
}

TEST(Allocation, WalkingTheTree)
{
    for (int n = 1;; ++n) {
        CTestEngine engine;
        ASSERT_TRUE(engine.Open());
        alloc::Fail(n);
        const std::size_t nFound = Elements(engine).size();
        const bool bReached = alloc::Count() >= n;
        alloc::Off();
        EXPECT_EQ(Elements(engine).size(),
                  nFound); // only the chains of the handle table are longer
        if (!bReached) break;
    }
}

namespace {

// A record that takes more memory than the old one: a text, and for point lists all their points.
bool SetLongerRecord(HQELENGINE h, HQELELEM hElem)
{
    const int nType = QELGetElemType(h, hElem);
    if (nType < QEL_TYPE_TEXT || nType > QEL_TYPE_POLYGON) return true;
    QELSHAPEATTR attr{};
    int nSize = sizeof attr;
    if (!QELGetElemAttr(h, hElem, &attr, &nSize)) return false;
    std::strcpy(attr.szText, "a text of its own");
    if (nType == QEL_TYPE_POLYLINE || nType == QEL_TYPE_POLYGON) {
        attr.nGeometry[0] = QEL_MAX_POINTS;
        for (int n = 1; n <= 2 * QEL_MAX_POINTS; ++n) attr.nGeometry[n] = 3 * n;
    }
    return QELSetElemAttr(h, hElem, &attr, nSize) == 1;
}

} // namespace

TEST(Allocation, SettingRecordsRectanglesAndIdentifiers)
{
    std::vector<std::string> ids;
    {
        CTestEngine engine;
        ASSERT_TRUE(engine.Open());
        for (const HQELELEM h : Elements(engine))
            if (*QELGetElemId(engine, h)) ids.push_back(QELGetElemId(engine, h));
    }
    for (const std::string& id : ids) {
        SCOPED_TRACE(id);
        FailEachAllocation(OnElement("record", id.c_str(), [](HQELENGINE h, HQELELEM hElem) {
            static char record[QEL_MAX_ATTR_SIZE];
            int nSize = 0;
            if (!QELGetElemAttr(h, hElem, record, &nSize)) return false;
            return QELSetElemAttr(h, hElem, record, nSize) == 1;
        }));
        FailEachAllocation(OnElement("longer record", id.c_str(), SetLongerRecord));
        if (id != "all")
            FailEachAllocation(OnElement("rectangle", id.c_str(), [](HQELENGINE h, HQELELEM hElem) {
                RECT rc{};
                if (!QELGetElemRect(h, hElem, &rc)) return true; // an empty group has none
                rc.left += 3;
                rc.right += 3;
                return QELSetElemRect(h, hElem, &rc) == 1;
            }));
        FailEachAllocation(OnElement("identifier", id.c_str(), [](HQELENGINE h, HQELELEM hElem) {
            return QELSetElemId(h, hElem, "another") == 1;
        }));
    }
}

TEST(Allocation, AnIdentifierWhereThereWasNone)
{
    FixTheTime();
    CTestEngine engine;
    ASSERT_TRUE(engine.Open());
    const HQELELEM hElem = QELCreateElem(engine, QEL_TYPE_RECT, nullptr, nullptr);
    ASSERT_NE(nullptr, hElem);
    const std::string before = Everything(engine);
    alloc::Fail(1);
    EXPECT_EQ(0, QELSetElemId(engine, hElem, "new"));
    EXPECT_EQ(1, alloc::Count());
    alloc::Off();
    EXPECT_EQ(before, Everything(engine));
    EXPECT_EQ(1, QELSetElemId(engine, hElem, "new"));
    EXPECT_STREQ("new", QELGetElemId(engine, hElem));
}

TEST(Allocation, EverySettingOfTheWholeDrawing)
{
    const Operation operations[] = {
        {"reference size",
         [](HQELENGINE h) {
             const SIZE s{300, 200};
             return QELSetRefSize(h, &s) == 1;
         }},
        {"rect",
         [](HQELENGINE h) {
             const RECT rc{0, 0, 90, 90};
             return QELSetQELRect(h, &rc) == 1;
         }},
        {"turn", [](HQELENGINE h) { return QELRotate(h, 90) == 1; }},
        {"half turn", [](HQELENGINE h) { return QELRotate(h, -180) == 1; }},
        {"find by identifier", [](HQELENGINE h) { return QELFindElem(h, "r1") != nullptr; }},
        {"draw rect of an identifier",
         [](HQELENGINE h) {
             RECT rc{};
             return QELGetIdDrawRect(h, "r1", &rc) == 1;
         }},
        {"identifier of a point",
         [](HQELENGINE h) {
             const POINT pt{DEVICE_RECT.left, DEVICE_RECT.top};
             char szId[QEL_TEXT_SIZE];
             QELERROR error{};
             error.nSize = sizeof error;
             if (QELIdFromPoint(h, &pt, szId, sizeof szId)) return true;
             QELGetError(h, &error);
             return error.nCode != QEL_ERROR_MEMORY;
         }},
        {"find by point",
         [](HQELENGINE h) {
             RECT rc{};
             if (!QELGetElemDrawRect(h, QELFindElem(h, "r1"), &rc)) return false;
             const POINT pt{(rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2};
             char szId[QEL_TEXT_SIZE];
             return QELElemFromPoint(h, &pt) && QELIdFromPoint(h, &pt, szId, sizeof szId);
         }},
        {"draw rect of all",
         [](HQELENGINE h) {
             RECT rc{};
             return QELGetElemDrawRect(h, QELGetRootElem(h), &rc) == 1;
         }},
        {"blink", [](HQELENGINE h) { return QELSetBlinkState(h, 1) == 1; }},
        {"status", [](HQELENGINE h) { return QELSetStatus(h, 1) == 1; }},
        {"all statuses", [](HQELENGINE h) { return QELSetStatus(h, 0xFFFFFFFF) == 1; }},
        {"colour", [](HQELENGINE h) { return QELSetParam(h, 0, 0x123456) == 1; }},
        {"hatch", [](HQELENGINE h) { return QELSetParam(h, 1, 21) == 1; }},
        {"first colour", [](HQELENGINE h) { return QELSetParam(h, 2, 0x123456) == 1; }},
        {"second colour", [](HQELENGINE h) { return QELSetParam(h, 3, 0x654321) == 1; }},
        {"base", [](HQELENGINE h) { return QELSetScaleParamf(h, 51, QEL_SEL_BASE_VALUE, 7) == 1; }},
        {"float", [](HQELENGINE h) { return QELSetScaleStatusf(h, 41, 7.5F) == 1; }},
        {"pin", [](HQELENGINE h) { return QELSetScaleStatus(h, 1, 33) == 1; }},
        {"live value", [](HQELENGINE h) { return QELSetValue(h, "m4", 5) == 1; }},
        {"live pin", [](HQELENGINE h) { return QELSetPin(h, "m10", 3, 5) == 1; }},
        {"live selector",
         [](HQELENGINE h) { return QELSetSelector(h, "m4", QEL_SEL_MAX, 50) == 1; }},
        {"live text", [](HQELENGINE h) { return QELSetText(h, "t1", "a ##") == 1; }},
        {"wide live text", [](HQELENGINE h) { return QELSetTextW(h, "t1", L"a ##") == 1; }},
        {"wide text",
         [](HQELENGINE h) {
             return QELSetElemTextW(h, Find(h, "t1"), L"longer than it was") == 1;
         }},
        {"code page of texts", [](HQELENGINE h) { return QELSetTextCodePage(h, 65001) == 1; }},
        {"hidden", [](HQELENGINE h) { return QELSetVisible(h, "g1", 0) == 1; }},
        {"live colour", [](HQELENGINE h) { return QELSetColor(h, "g1", 1, 0xFF) == 1; }},
        {"quality", [](HQELENGINE h) { return QELSetQuality(h, "m0", 2) == 1; }},
        {"easing", [](HQELENGINE h) { return QELSetEasing(h, "m4", 100) == 1; }},
        {"dirty places",
         [](HQELENGINE h) {
             RECT rc{};
             QELValidate(h);
             QELSetBlinkState(h, 1);
             return QELGetDirtyRect(h, &rc) == 1;
         }},
    };
    for (const Operation& operation : operations) FailEachAllocation(operation);
}

// Meters keep the regions of their faces from one update to the next, so that leaks are looked for
// outside of the engine.
TEST(Allocation, AnUpdateThatLacksMemoryLeavesItsAreaDirty)
{
    FixTheTime();
    int n = 1;
    for (bool bReached = true; bReached && n < MOST_ALLOCATIONS && !HasFailure(); ++n) {
        SCOPED_TRACE("allocation " + std::to_string(n));
        const gdi::CLeakCheck leaks;
        CTestEngine engine;
        ASSERT_TRUE(engine.Open());
        const CPaper paper;
        alloc::Fail(n);
        const int nResult = QELUpdate(engine, paper, nullptr);
        bReached = alloc::Count() >= n;
        alloc::Off();
        RECT rc{};
        EXPECT_EQ(nResult ? 0 : 1, QELGetDirtyRect(engine, &rc));
        EXPECT_EQ(nResult ? 0 : 1, QELUpdate(engine, paper, nullptr));
        EXPECT_EQ(0, QELGetDirtyRect(engine, &rc));
    }
    EXPECT_GT(n, 20);
    EXPECT_LT(n, MOST_ALLOCATIONS);
}

TEST(Allocation, EverySelector)
{
    for (const DWORD nId : {0U, 1U, 41U, 45U, 51U, 53U, 55U, 60U})
        for (DWORD nSelector = 0; nSelector < QEL_SEL_COUNT; ++nSelector) {
            SCOPED_TRACE(std::to_string(nId) + ":" + std::to_string(nSelector));
            FailEachAllocation({"selector", [nId, nSelector](HQELENGINE h) {
                                    QELSetScaleParam(h, nId, nSelector, 1);
                                    return true;
                                }});
        }
}

// Without memory a draw leaves a figure out or paints it plainly, and goes on; the next one is
// whole.
TEST(Allocation, Drawing)
{
    FixTheTime();
    for (const DWORD nFlags :
         {DWORD{QEL_DRAW_FULL}, DWORD{0}, DWORD{QEL_DRAW_FULL | QEL_DRAW_PRESSED}}) {
        SCOPED_TRACE("flags " + std::to_string(nFlags));
        int n = 1;
        for (; n < MOST_ALLOCATIONS; ++n) {
            SCOPED_TRACE("allocation " + std::to_string(n));
            CTestEngine engine;
            ASSERT_TRUE(engine.Open());
            const RECT rc = DEVICE_RECT;
            const CPaper paper;
            bool bReached = false;
            {
                const gdi::CStateCheck state(paper, gdi::MAY_CHANGE_COLORS);
                alloc::Fail(n);
                EXPECT_EQ(1, QELDraw(engine, paper, &rc, nFlags));
                bReached = alloc::Count() >= n;
                alloc::Off();
            }
            CTestEngine other;
            ASSERT_TRUE(other.Open());
            Painted(other, nFlags);
            EXPECT_EQ(Everything(other), Everything(engine));
            if (!bReached || HasFailure()) break;
        }
        EXPECT_GT(n, 3);
    }
}

TEST(Allocation, DrawingWithoutAnyMemoryGoesOn)
{
    FixTheTime();
    CTestEngine engine;
    ASSERT_TRUE(engine.Open());
    const std::string before = Everything(engine);
    const RECT rc = DEVICE_RECT;
    const CPaper paper;
    gdi::LogPaintings(paper);
    alloc::FailFrom(1);
    {
        const gdi::CStateCheck state(paper, gdi::MAY_CHANGE_COLORS);
        EXPECT_EQ(1, QELDraw(engine, paper, &rc, QEL_DRAW_FULL));
    }
    alloc::Off();
    EXPECT_LT(10U, gdi::Paintings(paper).size());
    EXPECT_EQ(before, Everything(engine));
}

TEST(Allocation, GradientsBrushesAndCurves)
{
    const RECT rc{0, 0, 20, 10};
    const POINT points[] = {{0, 0}, {5, 9}, {9, 2}, {12, 12}};
    for (int nKind = 0; nKind < 14; ++nKind) {
        SCOPED_TRACE(nKind);
        int n = 1;
        for (;; ++n) {
            const gdi::CLeakCheck leaks;
            alloc::Fail(n);
            const HQELGRADIENT h = QELCreateGradientDescriptor(&rc, nKind, 0xFF, 0xFF00);
            const bool bReached = alloc::Count() >= n;
            alloc::Off();
            // It may come without a brush, as the header says.
            EXPECT_EQ(h ? 1 : 0, QELCloseGradientDescriptor(h));
            if (bReached) continue;
            EXPECT_NE(nullptr, h);
            break;
        }
        EXPECT_GE(n, 4);
    }
    for (int nStyle = 0; nStyle < DRAFT_COUNT; ++nStyle)
        for (int n = 1;; ++n) {
            const gdi::CLeakCheck leaks;
            CQELDraft draft(static_cast<tagDRAFTSTYLE>(nStyle));
            RECT rcBrush = rc;
            HBRUSH hBrush = nullptr;
            alloc::Fail(n);
            const int nResult = draft.GetDraftBrush(hBrush, &rcBrush, 1, 2);
            const bool bReached = alloc::Count() >= n;
            alloc::Off();
            EXPECT_EQ(nResult != 0, hBrush != nullptr);
            if (!bReached) {
                EXPECT_NE(0, nResult);
                break;
            }
            EXPECT_EQ(0, nResult);
        }
    const HDC hdc = ::CreateCompatibleDC(nullptr);
    alloc::FailFrom(1);
    EXPECT_EQ(0, QELDrawCurve(hdc, points, 4));
    EXPECT_TRUE(QELDrawBezier(hdc, points, 4));
    EXPECT_EQ(0, alloc::Count());
    alloc::Off();
    ::DeleteDC(hdc);
}

TEST(Allocation, SharesInShowOnlyMode)
{
    FixTheTime();
    kernel::PutFile(DRAWING_PATH, EveryElement());
    QELShowOnly(1);
    for (const bool bJoins : {false, true}) {
        int n = 1;
        for (;; ++n) {
            SCOPED_TRACE("allocation " + std::to_string(n));
            CTestEngine first;
            CTestEngine second;
            if (bJoins) {
                ASSERT_EQ(1, QELOpenFile(first, "C:\\TEMP\\drawing.qel"));
            }
            alloc::Fail(n);
            const int nResult = QELOpenFile(second, DRAWING_PATH);
            const bool bReached = alloc::Count() >= n;
            alloc::Off();
            if (nResult == 0) {
                EXPECT_EQ(-1, QELGetType(second));
            }
            if (bJoins) {
                EXPECT_EQ(0, QELGetType(first));
            }
            CTestEngine third; // whatever the second one lacks
            EXPECT_EQ(1, QELOpenFile(third, DRAWING_PATH));
            EXPECT_EQ(0, QELGetType(third));
            EXPECT_EQ(1, QELOpenFile(second, DRAWING_PATH)) << "a later try";
            EXPECT_EQ(0, QELGetType(second));
            if (!bReached) {
                EXPECT_EQ(1, nResult);
                break;
            }
        }
        EXPECT_GT(n, bJoins ? 1 : 100);
    }
    QELShowOnly(0);
}
