// The views of draw region, frame, pattern and status alone: what a copy of one keeps, the records
// that they exchange, and what they refuse. The code is dynamic/QELViewParam.*,
// QELViewDrawRgn.cpp, QELViewContainers.cpp and QELViewStatus.cpp; what is drawn of them is in
// host/DynamicTests.cpp.
#include "dynamic/QELViewContainers.h"
#include "dynamic/QELViewDrawRgn.h"
#include "dynamic/QELViewStatus.h"
#include "render/HostDriven.h"
#include "render/QELViewBox.h"
#include "render/QELViewGroup.h"
#include "tests/support/ViewSupport.h"

#include <cstring>
#include <functional>
#include <memory>

namespace {

using ElmPtr = std::unique_ptr<CQELViewElm>;
constexpr RECT QEL{0, 0, 200, 200}; // two pixels a unit of the drawings here

QELDRAWRGNATTR DrawRgnAttr()
{
    return {sizeof(QELDRAWRGNATTR), 0x30003, {10, 20, 60, 70}, QEL_KEEP_LEFT};
}

CQELViewRect* NewRect()
{
    auto* pRect = new CQELViewRect(100, 100);
    const QELSHAPEATTR attr = FilledAttr({10, 10, 50, 50});
    EXPECT_EQ(1, pRect->SetAttrBlock(&attr));
    return pRect;
}

// A copy under another parent: of the same type and size, its last child, with a copy of the one
// child. What is in it belongs to the parent.
template <class T>
T* CopyOf(T& source, CQELViewElm& parent)
{
    CQELViewElm* pCopy = nullptr;
    EXPECT_EQ(1, source.Duplicate(&parent, &pCopy));
    if (!pCopy) return nullptr;
    EXPECT_EQ(source.Type(), pCopy->Type());
    EXPECT_EQ(source.RefW(), pCopy->RefW());
    EXPECT_EQ(source.RefH(), pCopy->RefH());
    EXPECT_EQ(&parent, pCopy->Parent());
    EXPECT_EQ(pCopy, parent.LastChild());
    EXPECT_EQ(source.FirstChild() == nullptr, pCopy->FirstChild() == nullptr);
    return static_cast<T*>(pCopy);
}

template <class T>
Lines Calls(T& view, uint32_t nFlags = QEL_DRAW_FULL, int nResult = 1)
{
    CRecording recording;
    EXPECT_EQ(nResult, view.Draw(recording.Dc(), QEL, nFlags));
    return recording.Calls();
}

template <class View>
uint32_t HostParam(const View& view, int32_t nIndex)
{
    uint32_t nValue = 0xDEADBEEF;
    EXPECT_EQ(1, view.GetHostParam(nIndex, &nValue));
    return nValue;
}

int SizeOf(const CQELViewElm& view)
{
    int nSize = 0;
    EXPECT_EQ(1, view.GetAttrBlockSize(&nSize));
    return nSize;
}

// ---- what follows nothing ----

class CDeaf final : public CHostDriven {};

template <class T>
T Untouched(T value, const std::function<int(T*)>& get)
{
    const T before = value;
    EXPECT_EQ(0, get(&value));
    EXPECT_EQ(before, value);
    return value;
}

// Each class answers what it has and leaves the rest to this.
TEST(HostDriven, OfAnElementThatFollowsNothingEverySettingIsRefused)
{
    CDeaf deaf;
    CHostDriven& host = deaf;
    for (int32_t n = 0; n < QEL_PARAM_COUNT; ++n) EXPECT_EQ(0, host.SetHostParam(n, 1)) << n;
    for (uint32_t n = 0; n < QEL_SEL_COUNT; ++n) {
        EXPECT_FALSE(host.KnowsSelector(n)) << n;
        EXPECT_FALSE(host.HasSign(n)) << n;
        EXPECT_EQ(0, host.SetProperty(n, 1)) << n;
    }
    for (uint32_t nPin = 0; nPin <= METER_PINS; ++nPin) {
        EXPECT_EQ(0, host.SetValue(nPin, 7U)) << nPin;
        EXPECT_EQ(0, host.SetValue(nPin, 7.5F)) << nPin;
        host.ShowPin(nPin, 7.5);
        EXPECT_EQ(0, host.ShownPin(nPin)) << nPin;
    }
    EXPECT_EQ(0, host.SetBase(7));
    host.SetStatus(7);
    EXPECT_EQ(0U, host.Status());
    host.ShowNumber(7.5);
    EXPECT_EQ(0, host.ShownNumber());
    EXPECT_EQ(0U, host.HostId());
}

TEST(HostDriven, OfAnElementThatFollowsNothingNothingCanBeRead)
{
    const CDeaf deaf;
    const CHostDriven& host = deaf;
    Untouched<uint32_t>(9, [&](uint32_t* p) { return host.GetHostParam(0, p); });
    Untouched<uint32_t>(9, [&](uint32_t* p) { return host.GetProperty(QEL_SEL_MAX, p); });
    Untouched<uint32_t>(9, [&](uint32_t* p) { return host.GetValue(0, p); });
    Untouched<float>(9, [&](float* p) { return host.GetValue(0, p); });
    Untouched<float>(9, [&](float* p) { return host.GetBase(p); });
    RECT rc{1, 2, 3, 4};
    EXPECT_EQ(0, host.GetGraphRect(QEL, &rc));
    EXPECT_EQ("1,2,3,4", RectText(rc));
    double fLow = 9;
    EXPECT_EQ(0, host.FullTurn(&fLow)); // it never comes round
    for (const bool bFollows : {host.WantsFullRedraw(), host.FollowsNumber(), host.KeepsNumber(),
                                host.HasPins(), host.CanMove(), host.ShowsTime()})
        EXPECT_FALSE(bFollows);
}

// ---- draw region ----

void ExpectRecord(const QELDRAWRGNATTR& expected, const CQELViewDrawRgn& view)
{
    QELDRAWRGNATTR read{};
    ASSERT_EQ(1, view.GetAttrBlock(&read));
    EXPECT_EQ(0, std::memcmp(&expected, &read, sizeof read));
}

TEST(DrawRegionView, ACopyHasTheRecordAndTheHostsHatchAndColors)
{
    CQELViewDrawRgn view(100, 90);
    const QELDRAWRGNATTR attr = DrawRgnAttr();
    ASSERT_EQ(1, view.SetAttrBlock(&attr));
    EXPECT_EQ(1, view.SetHostParam(QEL_PARAM_DRAFT, 7));
    EXPECT_EQ(1, view.SetHostParam(QEL_PARAM_DRAFT_FORE, 0x112233));
    EXPECT_EQ(1, view.SetHostParam(QEL_PARAM_DRAFT_BACK, 0x445566));
    CQELViewGroup parent(50, 50);
    const CQELViewDrawRgn* pCopy = CopyOf(view, parent);
    ASSERT_NE(nullptr, pCopy);
    ExpectRecord(attr, *pCopy);
    EXPECT_EQ(7U, HostParam(*pCopy, QEL_PARAM_DRAFT));
    EXPECT_EQ(0x112233U, HostParam(*pCopy, QEL_PARAM_DRAFT_FORE));
    EXPECT_EQ(0x445566U, HostParam(*pCopy, QEL_PARAM_DRAFT_BACK));
}

TEST(DrawRegionView, ExchangesItsRecord)
{
    CQELViewDrawRgn view(100, 100);
    EXPECT_EQ(static_cast<int>(sizeof(QELDRAWRGNATTR)), SizeOf(view));
    const QELDRAWRGNATTR initial{sizeof initial, 0, {0, 0, 10, 10}, 0};
    ExpectRecord(initial, view);
    const QELDRAWRGNATTR attr = DrawRgnAttr();
    ASSERT_EQ(1, view.SetAttrBlock(&attr));
    ExpectRecord(attr, view);
}

TEST(DrawRegionView, RefusesNoRecordAnotherSizeAndANegativeStyle)
{
    CQELViewDrawRgn view(100, 100);
    const QELDRAWRGNATTR before = DrawRgnAttr();
    ASSERT_EQ(1, view.SetAttrBlock(&before));
    EXPECT_EQ(0, view.SetAttrBlock(nullptr));
    EXPECT_EQ(0, view.GetAttrBlock(nullptr));
    for (const DWORD nSize :
         {DWORD{0}, DWORD{sizeof before} - 1, DWORD{sizeof before} + 1, DWORD{0xFFFFFFFF}}) {
        QELDRAWRGNATTR attr{nSize, 1, {1, 2, 3, 4}, 0};
        EXPECT_EQ(0, view.SetAttrBlock(&attr)) << nSize;
    }
    const QELDRAWRGNATTR negative{sizeof negative, -1, {1, 2, 3, 4}, 0};
    EXPECT_EQ(0, view.SetAttrBlock(&negative));
    ExpectRecord(before, view);
}

TEST(DrawRegionView, WithoutAnExtentHasNoPlaceForTheHost)
{
    CQELViewDrawRgn view(100, 100);
    QELDRAWRGNATTR attr = DrawRgnAttr();
    attr.rc = {20, 30, 60, 70};
    ASSERT_EQ(1, view.SetAttrBlock(&attr));
    const CHostDriven& host = view;
    RECT rc{};
    UnitMap map{};
    EXPECT_EQ(1, host.GetGraphRect(QEL, &rc));
    EXPECT_TRUE(view.MapUnits(QEL, &map));
    EXPECT_FALSE(view.MapUnits({0, 0, 0, 200}, &map));
    attr.rc.right = attr.rc.left;
    ASSERT_EQ(1, view.SetAttrBlock(&attr));
    rc = {1, 2, 3, 4};
    EXPECT_EQ(0, host.GetGraphRect(QEL, &rc));
    EXPECT_EQ("1,2,3,4", RectText(rc));
    EXPECT_FALSE(view.MapUnits(QEL, &map));
    EXPECT_FALSE(view.IsHit(QEL, {20, 30}));
    EXPECT_FALSE(view.IsHit(QEL, {0, 0}));
}

TEST(DrawRegionView, LeavesWhatTheHostPaintedInAPartialRedraw)
{
    CQELViewDrawRgn view(100, 100);
    const QELDRAWRGNATTR attr = DrawRgnAttr();
    ASSERT_EQ(1, view.SetAttrBlock(&attr));
    EXPECT_FALSE(Calls(view).empty());
    EXPECT_TRUE(Calls(view, 0).empty());
}

// ---- frame and pattern ----

TEST(FrameView, HasNoSettingButItsColor)
{
    CQELViewFrame view(100, 90);
    ASSERT_EQ(1, view.SetHostParam(QEL_PARAM_COLOR, 0x112233));
    for (int32_t n = -1; n <= QEL_PARAM_COUNT; ++n) {
        if (n == QEL_PARAM_COLOR) continue;
        EXPECT_EQ(0, view.SetHostParam(n, 7)) << n;
        Untouched<uint32_t>(9, [&](uint32_t* p) { return view.GetHostParam(n, p); });
    }
    EXPECT_EQ(0x112233U, view.Color());
}

TEST(FrameView, ACopyHasTheColorThatTheHostSet)
{
    CQELViewFrame view(100, 90);
    view.AppendChild(NewRect());
    ASSERT_EQ(1, view.SetColorParam(0x123456));
    CQELViewGroup parent(50, 50);
    const CQELViewFrame* pCopy = CopyOf(view, parent);
    ASSERT_NE(nullptr, pCopy);
    EXPECT_EQ(0x123456U, pCopy->Color());
    EXPECT_EQ(0U, CQELViewFrame(100, 90).Color()); // which is not what a new one has
}

TEST(PatternView, ACopyHasTheHatchAndTheColorsThatTheHostSet)
{
    CQELViewPattern view(100, 90);
    view.AppendChild(NewRect());
    ASSERT_EQ(1, view.SetHostParam(QEL_PARAM_DRAFT, 7));
    ASSERT_EQ(1, view.SetHostParam(QEL_PARAM_DRAFT_FORE, 0x112233));
    ASSERT_EQ(1, view.SetHostParam(QEL_PARAM_DRAFT_BACK, 0x445566));
    CQELViewGroup parent(50, 50);
    const CQELViewPattern* pCopy = CopyOf(view, parent);
    ASSERT_NE(nullptr, pCopy);
    EXPECT_EQ(7U, HostParam(*pCopy, QEL_PARAM_DRAFT));
    EXPECT_EQ(0x112233U, HostParam(*pCopy, QEL_PARAM_DRAFT_FORE));
    EXPECT_EQ(0x445566U, HostParam(*pCopy, QEL_PARAM_DRAFT_BACK));
}

TEST(FrameAndPatternView, TakeAnyBlockAndReadAsOneZeroWord)
{
    CQELViewFrame frame(50, 50);
    CQELViewPattern pattern(50, 50);
    for (CQELViewElm* p :
         {static_cast<CQELViewElm*>(&frame), static_cast<CQELViewElm*>(&pattern)}) {
        SCOPED_TRACE(p->Type());
        EXPECT_EQ(static_cast<int>(sizeof(QELWORDATTR)), SizeOf(*p));
        const LONG anything[2] = {99, 98};
        EXPECT_EQ(1, p->SetAttrBlock(anything));
        EXPECT_EQ(0, p->SetAttrBlock(nullptr));
        LONG words[2] = {77, 88};
        EXPECT_EQ(1, p->GetAttrBlock(words));
        EXPECT_EQ(0, words[0]);
        EXPECT_EQ(88, words[1]);
        EXPECT_EQ(0, p->GetAttrBlock(nullptr));
    }
}

// ---- status ----

TEST(StatusView, ACopyHasItsNumberAndTheDrawingsStatus)
{
    CQELViewStatus view(100, 90);
    view.AppendChild(NewRect());
    const LONG nOwn = 5;
    ASSERT_EQ(1, view.SetAttrBlock(&nOwn));
    view.SetStatus(5);
    CQELViewGroup parent(50, 50);
    CQELViewStatus* pCopy = CopyOf(view, parent);
    ASSERT_NE(nullptr, pCopy);
    LONG nCopied = 0;
    ASSERT_EQ(1, pCopy->GetAttrBlock(&nCopied));
    EXPECT_EQ(nOwn, nCopied);
    EXPECT_EQ(5U, pCopy->Status());
    EXPECT_EQ(Calls(view), Calls(*pCopy)); // both are shown
    pCopy->SetStatus(6);
    EXPECT_TRUE(Calls(*pCopy, QEL_DRAW_FULL, 0).empty());
    EXPECT_FALSE(Calls(view).empty());
}

TEST(StatusView, ExchangesOneWord)
{
    CQELViewStatus view(100, 100);
    EXPECT_EQ(static_cast<int>(sizeof(QELWORDATTR)), SizeOf(view));
    LONG words[2] = {3, 4};
    ASSERT_EQ(1, view.SetAttrBlock(words));
    words[0] = 0;
    ASSERT_EQ(1, view.GetAttrBlock(words));
    EXPECT_EQ(3, words[0]);
    EXPECT_EQ(4, words[1]);
    EXPECT_EQ(0, view.SetAttrBlock(nullptr));
    EXPECT_EQ(0, view.GetAttrBlock(nullptr));
    ASSERT_EQ(1, view.GetAttrBlock(words));
    EXPECT_EQ(3, words[0]);
}

TEST(StatusView, IsNeverShownWithANegativeNumber)
{
    CQELViewStatus view(100, 100);
    view.AppendChild(NewRect());
    for (const LONG nOwn : {LONG{-1}, LONG{-7}, LONG{-2147483647 - 1}}) {
        SCOPED_TRACE(nOwn);
        ASSERT_EQ(1, view.SetAttrBlock(&nOwn));
        for (const uint32_t nStatus : {0U, static_cast<uint32_t>(nOwn), STATUS_SHOW_ALL}) {
            view.SetStatus(nStatus);
            EXPECT_TRUE(Calls(view, QEL_DRAW_FULL, 0).empty());
        }
    }
    const LONG nOwn = 0; // the same children are seen with any other number
    ASSERT_EQ(1, view.SetAttrBlock(&nOwn));
    view.SetStatus(STATUS_SHOW_ALL);
    EXPECT_FALSE(Calls(view).empty());
}

TEST(StatusView, KindsHaveTheirKeywords)
{
    const char* const names[] = {"switch", "meter", "draw"};
    for (int n = 0; n < 3; ++n) EXPECT_STREQ(names[n], NameOf(g_statusKindRows, n));
    EXPECT_EQ(KEYWORD_NONE, g_statusKindRows[3].nId);
}

TEST(StatusView, IsANewInstanceOfItsSizeWithoutANumber)
{
    CQELViewStatus view(30, 40);
    const LONG nOwn = 5;
    ASSERT_EQ(1, view.SetAttrBlock(&nOwn));
    CQELViewElm* pElm = nullptr;
    ASSERT_EQ(1, view.NewInstance(&pElm));
    const ElmPtr made(pElm);
    EXPECT_EQ(QEL_TYPE_STATUS, made->Type());
    EXPECT_EQ(30, made->RefW());
    EXPECT_EQ(40, made->RefH());
    LONG nNew = 0;
    ASSERT_EQ(1, made->GetAttrBlock(&nNew));
    EXPECT_EQ(-1, nNew);
}

} // namespace
