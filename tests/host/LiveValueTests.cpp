// Scales and meters as a host drives them: who takes and who answers a value, what a partial redraw
// paints, and that no value does harm. Status, frame, pattern and draw region are in
// DynamicTests.cpp.
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"
#include "tests/support/Recording.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr const char* g_types[] = {"vert", "vert3d", "horz",         "horz3d",     "round", "Arc",
                                   "pie",  "clock",  "roundUpgrade", "pieUpgrade", "sector"};
constexpr int TYPES = 11;
constexpr int SIDE = 140; // pixels and units of the drawings here
constexpr RECT QEL{0, 0, SIDE, SIDE};
constexpr COLORREF GROUND = 0x203040;
constexpr COLORREF FACE = 0xC0D0E0;

class CHost { // an engine with a drawing opened from a text
public:
    explicit CHost(const std::string& body) : m_hEngine(CreateQELEngine())
    {
        const std::string path = m_folder.Path("in.qel");
        const std::string side = std::to_string(SIDE);
        WriteBytes(path, "<qel width='" + side + "' height='" + side + "'>" + body + "</qel>");
        EXPECT_EQ(1, QELOpenFile(m_hEngine, path.c_str()));
        EXPECT_EQ(1, QELSetQELRect(m_hEngine, &QEL));
    }
    ~CHost() { DestroyQELEngine(m_hEngine); }
    CHost(const CHost&) = delete;
    CHost& operator=(const CHost&) = delete;
    operator HQELENGINE() const { return m_hEngine; }
    const CTestFolder& Folder() const { return m_folder; }

    HQELELEM Child(int nIndex) const // of the root
    {
        HQELELEM h = QELGetFirstChild(m_hEngine, QELGetRootElem(m_hEngine));
        while (nIndex-- > 0) h = QELGetNextElem(m_hEngine, h);
        return h;
    }
    void Draw(const CTestBitmap& bitmap, DWORD nFlags) const
    {
        ASSERT_EQ(1, QELDraw(m_hEngine, bitmap.Dc(), &QEL, nFlags));
    }
    std::vector<std::string> Calls(DWORD nFlags) const
    {
        CRecording recording;
        EXPECT_EQ(1, QELDraw(m_hEngine, recording.Dc(), &QEL, nFlags));
        return recording.Calls();
    }
    int Set(DWORD nId, DWORD nSelector, DWORD nValue) const
    {
        return QELSetScaleParam(m_hEngine, nId, nSelector, nValue);
    }
    // The value; "none" when nobody answers, and the output must be untouched then.
    std::string Get(DWORD nId, DWORD nSelector) const
    {
        DWORD nValue = 0xDEADBEEF;
        if (QELGetScaleParam(m_hEngine, nId, nSelector, &nValue)) return std::to_string(nValue);
        return nValue == 0xDEADBEEF ? "none" : "none, but written";
    }
    std::string Getf(DWORD nId, DWORD nSelector) const
    {
        float fValue = -777;
        if (QELGetScaleParamf(m_hEngine, nId, nSelector, &fValue)) return std::to_string(fValue);
        return fValue == -777 ? "none" : "none, but written";
    }

private:
    CTestFolder m_folder;
    HQELENGINE m_hEngine;
};

std::string Rect(const char* pszCrd, COLORREF clr)
{
    char sz[160];
    std::snprintf(sz, sizeof sz, "<rect style='0x1' lnwid='0' bg='0x%lx' crd='%s'/>", clr, pszCrd);
    return sz;
}

std::string Ground()
{
    return Rect("0 0 140 140", GROUND);
}

// A meter of a type with id 0 in the whole drawing, on a face of one colour.
std::string Meter(int nType, const char* pszMore = "")
{
    const bool bBar = nType < 4;
    const bool bArc = nType == 5 || nType == 6 || nType == 9;
    return std::string("<meter mtype='") + g_types[nType] + "' upin='1' crd='" +
           (bBar   ? nType < 2 ? "20 10 70 130" : "10 20 130 70"
            : bArc ? "70 70 60 5 5 135 135 45 315"
                   : "70 70 60 5 5 135 135") +
           "' " + pszMore + ">" +
           (bBar ? nType < 2 ? Rect("75 10 130 130", FACE) : Rect("10 15 130 40", FACE)
                 : Rect("5 5 135 135", FACE)) +
           "</meter>";
}

// Gives the meter with id 0 settings under which every layer shows something.
void Prepare(const CHost& host, int nType)
{
    const DWORD rows[][2] = {{QEL_SEL_PIN_COLOR, 0x0000FF}, {QEL_SEL_SCALE_COLOR, 0x404040},
                             {QEL_SEL_TICKS, 20},           {QEL_SEL_MAX, 100},
                             {QEL_SEL_FACE_COLOR, FACE},    {QEL_SEL_LABEL_COLOR, 0x800000},
                             {QEL_SEL_SCALE_END, 100},      {QEL_SEL_HIGH_LIMIT, 80},
                             {QEL_SEL_LOW_LIMIT, 20},       {QEL_SEL_SHOW_ALARM, 1},
                             {QEL_SEL_LOW_COLOR, 0x00FFFF}, {QEL_SEL_HIGH_COLOR, 0xFF00FF},
                             {QEL_SEL_SHOW_FRAME, 1},       {QEL_SEL_SECTOR_COUNT, 5}};
    for (const auto& row : rows) EXPECT_EQ(1, host.Set(0, row[0], row[1])) << nType;
    // The erase colour of a pie is its face's.
    QELSetParam(host, QEL_PARAM_DRAFT, 0);
    QELSetParam(host, QEL_PARAM_DRAFT_FORE, 0x00A000);
    QELSetParam(host, QEL_PARAM_DRAFT_BACK, FACE);
}

// The value of the meter; the sectors have shares that follow it.
void SetMeter(const CHost& host, int nType, DWORD nValue)
{
    for (DWORD nPin = 1; nType == 10 && nPin <= 5; ++nPin)
        ASSERT_EQ(1, QELSetScaleStatus(host, nPin, 5 + (nValue * nPin) % 60));
    ASSERT_EQ(1, QELSetScaleStatus(host, 0, nValue));
}

// ---- addressing ----

TEST(LiveValues, AScaleAndAMeterOfOneIdBothTakeASettingAndAnswerByTheirOrder)
{
    // The settings that both know, through each one alone.
    const CHost scale("<scale scid='40'/>");
    const CHost meter("<meter mtid='40'/>");
    const CHost both("<scale scid='40'/><meter mtid='40'/>");
    const struct {
        DWORD nSelector;
        bool bScale, bMeter;
        char answers; // with both
    } rows[] = {{0, true, true, 'm'},  {1, true, true, 'm'}, {2, true, true, 's'},
                {3, true, false, 's'}, {4, true, true, 's'}, {5, true, true, 's'}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.nSelector);
        const DWORD n = row.nSelector;
        EXPECT_EQ(1, scale.Set(40, n, 7));
        EXPECT_EQ(row.bMeter, meter.Set(40, n, 7));
        EXPECT_EQ("7", scale.Get(40, n));
        EXPECT_EQ(row.bMeter ? "7" : "none", meter.Get(40, n));
        EXPECT_EQ(1, both.Set(40, n, 7));
        EXPECT_EQ("7", both.Get(40, n));
    }
    for (DWORD n = 7; n < 34; ++n) { // meters alone
        SCOPED_TRACE(n);
        EXPECT_EQ(0, scale.Set(40, n, 1));
        EXPECT_EQ("none", scale.Get(40, n));
        if (n == QEL_SEL_SHOW_PIN) continue; // refused without a pointer in the record
        EXPECT_EQ(1, meter.Set(40, n, 1));
        EXPECT_EQ("1", meter.Get(40, n));
        EXPECT_EQ(1, both.Set(40, n, 1));
        EXPECT_EQ("1", both.Get(40, n));
    }
    EXPECT_EQ(0, both.Set(40, QEL_SEL_SHOW_PIN, 1));
}

TEST(LiveValues, WithBothTheMeterAnswersTheColorsAndTheScaleTheRest)
{
    // The scale of id 5 and the meter of id 0, which owns 1 to 32: the meter alone has id 0.
    const CHost host("<scale scid='5' min='3'/><meter mtid='0' usc='1'/>");
    const struct {
        DWORD nSelector;
        bool bMeterAnswers;
    } rows[] = {{0, true}, {1, true}, {2, false}, {4, false}, {5, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.nSelector);
        EXPECT_EQ(1, host.Set(5, row.nSelector, 20)); // both
        EXPECT_EQ("20", host.Get(0, row.nSelector));
        EXPECT_EQ(1, host.Set(0, row.nSelector, 30)); // the meter
        EXPECT_EQ("30", host.Get(0, row.nSelector));
        EXPECT_EQ(row.bMeterAnswers ? "30" : "20", host.Get(5, row.nSelector));
    }
    // A number that both refuse, and one that only the scale holds to its own least.
    EXPECT_EQ(0, host.Set(5, QEL_SEL_TICKS, 0));
    EXPECT_EQ("20", host.Get(5, QEL_SEL_TICKS));
    EXPECT_EQ("30", host.Get(0, QEL_SEL_TICKS));
    EXPECT_EQ(1, host.Set(5, QEL_SEL_TICKS, 1));
    EXPECT_EQ("3", host.Get(5, QEL_SEL_TICKS));
    EXPECT_EQ("1", host.Get(0, QEL_SEL_TICKS));
}

TEST(LiveValues, ValuesAreReadFromTheScaleUnlessAPinHasTheId)
{
    const CHost host("<scale scid='0'/><scale scid='5'/><scale scid='40'/><meter mtid='0'/>"
                     "<meter mtid='40'/>");
    for (const DWORD nId : {0UL, 5UL, 40UL}) EXPECT_EQ(1, QELSetScaleStatus(host, nId, 60 + nId));
    EXPECT_EQ(1, QELSetScaleStatus(host, 6, 66)); // a pin alone
    EXPECT_EQ("60", host.Get(0, 6));
    EXPECT_EQ("65", host.Get(5, 6));
    EXPECT_EQ("66", host.Get(6, 6));
    EXPECT_EQ("100", host.Get(40, 6));
    EXPECT_EQ("0", host.Get(7, 6));
    EXPECT_EQ("none", host.Get(41, 6));
    EXPECT_EQ(0, QELSetScaleStatus(host, 41, 1));

    for (const DWORD nId : {0UL, 5UL, 40UL})
        EXPECT_EQ(1, QELSetScaleStatusf(host, nId, nId + 0.5F));
    EXPECT_EQ("0.500000", host.Getf(0, 6));
    EXPECT_EQ("5.500000", host.Getf(5, 6));
    EXPECT_EQ("40.500000", host.Getf(40, 6));
    EXPECT_EQ("60", host.Get(0, 6)); // the forms stay apart
    EXPECT_EQ("65", host.Get(5, 6));
    // Only the pin is left when the scale of its id goes, and only the scale without the meter.
    ASSERT_EQ(1, QELDeleteElem(host, host.Child(1)));
    EXPECT_EQ("65", host.Get(5, 6));
    ASSERT_EQ(1, QELDeleteElem(host, host.Child(2)));
    EXPECT_EQ("none", host.Get(5, 6));
    EXPECT_EQ("60", host.Get(0, 6));
}

TEST(LiveValues, APinThatWasNeverSetHidesTheScaleOfItsId)
{
    const CHost host("<scale scid='5'/><meter mtid='0'/>");
    EXPECT_EQ(1, QELSetScaleStatus(host, 5, 9)); // both
    ASSERT_EQ(1, QELDeleteElem(host, host.Child(1)));
    EXPECT_EQ("9", host.Get(5, 6));
    HQELELEM hMeter = QELCreateElem(host, QEL_TYPE_METER, nullptr, nullptr);
    ASSERT_NE(nullptr, hMeter);
    EXPECT_EQ("0", host.Get(5, 6)); // the pin is read last, and so it answers
    EXPECT_EQ("0.000000", host.Getf(5, 6));
}

TEST(LiveValues, OneMeterOwnsTheIdsFrom1To32)
{
    const CHost host("<meter mtid='0'/>");
    EXPECT_EQ(1, QELSetScaleStatus(host, 0, 1000));
    for (DWORD nId = 1; nId <= 32; ++nId) EXPECT_EQ(1, QELSetScaleStatus(host, nId, nId * 3));
    for (DWORD nId = 1; nId <= 32; ++nId) {
        EXPECT_EQ(std::to_string(nId * 3), host.Get(nId, 6));
        EXPECT_EQ(1, QELSetScaleStatusf(host, nId, nId / 4.0F));
        EXPECT_EQ(std::to_string(nId / 4.0F), host.Getf(nId, 6));
        EXPECT_EQ(1, host.Set(nId, QEL_SEL_MAX, 500 + nId)); // a setting of the one meter
        EXPECT_EQ(std::to_string(500 + nId), host.Get(0, QEL_SEL_MAX));
        EXPECT_EQ(std::to_string(500 + nId), host.Get(33 - nId, QEL_SEL_MAX));
    }
    EXPECT_EQ("1000", host.Get(0, 6));
    for (const DWORD nId : {33UL, 34UL, 1000UL, 0xFFFFFFFFUL}) {
        EXPECT_EQ(0, QELSetScaleStatus(host, nId, 1)) << nId;
        EXPECT_EQ(0, host.Set(nId, QEL_SEL_MAX, 1)) << nId;
        EXPECT_EQ("none", host.Get(nId, QEL_SEL_MAX)) << nId;
    }
}

TEST(LiveValues, AMeterWithAnIdFrom1To32CannotBeReached)
{
    for (const char* pszId : {"1", "5", "32"}) {
        const CHost host(std::string("<meter mtid='") + pszId + "' upin='1'/>");
        for (DWORD nId = 0; nId <= 33; ++nId)
            for (const DWORD nSelector : {0UL, 2UL, 4UL, 6UL, 9UL, 33UL}) {
                EXPECT_EQ(0, host.Set(nId, nSelector, 1)) << pszId << ": " << nId;
                EXPECT_EQ("none", host.Get(nId, nSelector)) << pszId << ": " << nId;
            }
        EXPECT_EQ(0, QELSetScaleStatusf(host, 5, 1));
        EXPECT_EQ("none", host.Getf(5, 24));
    }
}

TEST(LiveValues, AMeterAbove32TakesEverySettingButTheValue)
{
    for (const DWORD nId : {33UL, 40UL, 0xFFFFFFFFUL}) {
        const CHost host("<meter upin='1' mtid='" + std::to_string(nId) + "'/>");
        EXPECT_EQ(0, host.Set(nId, 6, 5));
        EXPECT_EQ(0, QELSetScaleStatus(host, nId, 5));
        EXPECT_EQ(0, QELSetScaleStatusf(host, nId, 5));
        EXPECT_EQ(0, QELSetScaleParamf(host, nId, 6, 5));
        EXPECT_EQ("none", host.Get(nId, 6));
        EXPECT_EQ("none", host.Getf(nId, 6));
        for (DWORD n = 0; n < 34; ++n) {
            if (n == 3 || n == 6) continue;
            EXPECT_EQ(1, host.Set(nId, n, 1)) << n;
            EXPECT_EQ("1", host.Get(nId, n)) << n;
        }
        EXPECT_EQ(1, QELSetScaleParamf(host, nId, QEL_SEL_BASE_VALUE, 2.5F));
        EXPECT_EQ("2.500000", host.Getf(nId, QEL_SEL_BASE_VALUE));
        EXPECT_EQ("2", host.Get(nId, QEL_SEL_BASE_VALUE));
    }
    // A scale of that id takes the value, and its result stands.
    const CHost both("<meter mtid='40'/><scale scid='40'/>");
    EXPECT_EQ(1, both.Set(40, 6, 5));
    EXPECT_EQ("5", both.Get(40, 6));
    EXPECT_EQ(1, both.Set(40, 3, 5));
    EXPECT_EQ("5", both.Get(40, 3));
    EXPECT_EQ(1, QELSetScaleStatusf(both, 40, 1.5F));
    EXPECT_EQ("1.500000", both.Getf(40, 6));
}

TEST(LiveValues, TheFirstOfEqualIdsIsAddressed)
{
    const CHost host("<scale scid='40'/><scale scid='40'/><meter mtid='50'/><meter mtid='50'/>");
    EXPECT_EQ(1, host.Set(40, 4, 7));
    EXPECT_EQ(1, host.Set(50, 4, 8));
    ASSERT_EQ(1, QELDeleteElem(host, host.Child(2)));
    ASSERT_EQ(1, QELDeleteElem(host, host.Child(0)));
    EXPECT_EQ("10", host.Get(40, 4)); // the second one's own
    EXPECT_EQ("10", host.Get(50, 4));
    ASSERT_EQ(1, QELDeleteElem(host, host.Child(1)));
    ASSERT_EQ(1, QELDeleteElem(host, host.Child(0)));
    EXPECT_EQ("none", host.Get(40, 4));
    EXPECT_EQ("none", host.Get(50, 4));
}

TEST(LiveValues, AChangedIdIsAddressedAtOnceAndWhatLeavesThePictureIsNot)
{
    const CHost host("<meter mtid='40'/><scale scid='41'/>");
    QELMETERATTR meter{};
    ASSERT_EQ(1, QELGetElemAttr(host, host.Child(0), &meter, nullptr));
    meter.nId = 50;
    ASSERT_EQ(1, QELSetElemAttr(host, host.Child(0), &meter, sizeof meter));
    QELSCALEATTR scale{};
    ASSERT_EQ(1, QELGetElemAttr(host, host.Child(1), &scale, nullptr));
    scale.nId = 51;
    ASSERT_EQ(1, QELSetElemAttr(host, host.Child(1), &scale, sizeof scale));
    for (const DWORD nId : {40UL, 41UL}) EXPECT_EQ(0, host.Set(nId, 4, 9)) << nId;
    for (const DWORD nId : {50UL, 51UL}) EXPECT_EQ(1, host.Set(nId, 4, 9)) << nId;
    HQELELEM hMeter = host.Child(0);
    ASSERT_EQ(1, QELMoveElem(host, hMeter, nullptr, nullptr));
    EXPECT_EQ(0, host.Set(50, 4, 9));
    ASSERT_EQ(1, QELMoveElem(host, hMeter, QELGetRootElem(host), nullptr));
    EXPECT_EQ(1, host.Set(50, 4, 9));
}

TEST(LiveValues, WhatIsNoSelectorOrNoHandleOrNoPlaceForTheAnswerIsRefused)
{
    const CHost host("<scale scid='0'/><meter mtid='0' upin='1'/>");
    for (const DWORD n : {34UL, 35UL, 100UL, 0x7FFFFFFFUL, 0xFFFFFFFFUL}) {
        EXPECT_EQ(0, host.Set(0, n, 1)) << n;
        EXPECT_EQ("none", host.Get(0, n)) << n;
    }
    for (DWORD n = 0; n < 40; ++n) {
        const bool bFloat = n == 6 || n == 24;
        EXPECT_EQ(bFloat, QELSetScaleParamf(host, 0, n, 1.25F)) << n;
        EXPECT_EQ(bFloat ? "1.250000" : "none", host.Getf(0, n)) << n;
        EXPECT_EQ(0, QELGetScaleParam(host, 0, n, nullptr));
        EXPECT_EQ(0, QELGetScaleParamf(host, 0, n, nullptr));
    }
    EXPECT_EQ(0, QELGetScaleStatus(host, 0, nullptr));
    EXPECT_EQ(0, QELGetScaleStatusf(host, 0, nullptr));
    const HQELENGINE hDead = CreateQELEngine();
    DestroyQELEngine(hDead);
    const HQELENGINE hEmpty = CreateQELEngine();
    for (const HQELENGINE h : {HQELENGINE{nullptr}, hDead, hEmpty}) {
        DWORD nValue = 77;
        float fValue = 77;
        EXPECT_EQ(0, QELSetScaleParam(h, 0, 4, 1));
        EXPECT_EQ(0, QELGetScaleParam(h, 0, 4, &nValue));
        EXPECT_EQ(0, QELSetScaleParamf(h, 0, 6, 1));
        EXPECT_EQ(0, QELGetScaleParamf(h, 0, 6, &fValue));
        EXPECT_EQ(0, QELSetScaleStatus(h, 0, 1));
        EXPECT_EQ(0, QELGetScaleStatus(h, 0, &nValue));
        EXPECT_EQ(0, QELSetScaleStatusf(h, 0, 1));
        EXPECT_EQ(0, QELGetScaleStatusf(h, 0, &fValue));
        EXPECT_EQ(77u, nValue);
        EXPECT_EQ(77.0F, fValue);
    }
    DestroyQELEngine(hEmpty);
}

TEST(LiveValues, TheStatusCallsAreSelector6)
{
    const CHost host("<scale scid='40'/><meter mtid='0'/>");
    for (const DWORD nId : {40UL, 0UL, 9UL}) {
        DWORD nValue = 0;
        float fValue = 0;
        ASSERT_EQ(1, QELSetScaleStatus(host, nId, 17));
        EXPECT_EQ("17", host.Get(nId, 6));
        ASSERT_EQ(1, host.Set(nId, 6, 0xFFFFFFFF));
        ASSERT_EQ(1, QELGetScaleStatus(host, nId, &nValue));
        EXPECT_EQ(0xFFFFFFFFu, nValue);
        ASSERT_EQ(1, QELSetScaleStatusf(host, nId, -2.5F));
        EXPECT_EQ("-2.500000", host.Getf(nId, 6));
        ASSERT_EQ(1, QELSetScaleParamf(host, nId, 6, 9.75F));
        ASSERT_EQ(1, QELGetScaleStatusf(host, nId, &fValue));
        EXPECT_EQ(9.75F, fValue);
    }
}

TEST(LiveValues, AreLostWhenTheElementIsBuiltAnewAndKeptOtherwise)
{
    const CHost host("<meter mtid='40'/><scale scid='41'/>");
    for (const DWORD nId : {40UL, 41UL}) ASSERT_EQ(1, host.Set(nId, 4, 99));
    const std::string path = host.Folder().Path("in.qel");
    ASSERT_EQ(1, QELSaveFile(host, host.Folder().Path("out.qel").c_str()));
    CTestBitmap drawn(SIDE, SIDE);
    host.Draw(drawn, QEL_DRAW_FULL);
    for (const DWORD nId : {40UL, 41UL}) EXPECT_EQ("99", host.Get(nId, 4));
    ASSERT_EQ(1, QELOpenFile(host, path.c_str()));
    for (const DWORD nId : {40UL, 41UL}) EXPECT_EQ("10", host.Get(nId, 4));
}

TEST(LiveValues, ADrawingOfBothIsSavedAndOpenedAsItWas)
{
    std::string body;
    for (int nType = 0; nType < TYPES; ++nType) body += Meter(nType, "mtid='77' flag='0x8000'");
    for (const char* pszType : {"vrtleft", "vrtright", "horizup", "horizdn", "round", "Arc"})
        body += std::string("<scale scid='9' hidesc='1' style='0x0' min='2' max='9' pin='1' "
                            "sctype='") +
                pszType + "' crd='1 2 3 4 5 6 7'/>";
    const CHost host(body);
    const std::string path = host.Folder().Path("out.qel");
    ASSERT_EQ(1, QELSaveFile(host, path.c_str()));
    const HQELENGINE hAgain = CreateQELEngine();
    ASSERT_EQ(1, QELOpenFile(hAgain, path.c_str()));
    HQELELEM h = QELGetFirstChild(hAgain, QELGetRootElem(hAgain));
    for (int n = 0; n < TYPES + 6; ++n, h = QELGetNextElem(hAgain, h)) {
        BYTE before[QEL_MAX_ATTR_SIZE] = {}, after[QEL_MAX_ATTR_SIZE] = {};
        int nSize = 0;
        ASSERT_EQ(1, QELGetElemAttr(host, host.Child(n), before, &nSize));
        EXPECT_EQ(n < TYPES ? 68 : 60, nSize);
        ASSERT_EQ(1, QELGetElemAttr(hAgain, h, after, &nSize));
        EXPECT_EQ(0, std::memcmp(before, after, sizeof before)) << n;
        EXPECT_EQ(n < TYPES, QELGetFirstChild(hAgain, h) != nullptr);
    }
    EXPECT_EQ(nullptr, h);
    const std::string second = host.Folder().Path("second.qel");
    ASSERT_EQ(1, QELSaveFile(hAgain, second.c_str()));
    EXPECT_EQ(ReadBytes(path), ReadBytes(second));
    DestroyQELEngine(hAgain);
}

TEST(LiveValues, HandlesThatShareADrawingShareItsValues)
{
    CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    ASSERT_TRUE(WriteBytes(path, "<qel><meter mtid='0'/><scale scid='40'/></qel>"));
    ASSERT_EQ(1, QELShowOnly(1));
    const HQELENGINE h1 = CreateQELEngine();
    const HQELENGINE h2 = CreateQELEngine();
    ASSERT_EQ(1, QELShowOnly(0));
    ASSERT_EQ(1, QELOpenFile(h1, path.c_str()));
    ASSERT_EQ(1, QELOpenFile(h2, path.c_str()));
    for (const DWORD nId : {0UL, 7UL, 40UL}) {
        DWORD nValue = 0;
        float fValue = 0;
        EXPECT_EQ(1, QELSetScaleStatus(h1, nId, nId + 3));
        EXPECT_EQ(1, QELGetScaleStatus(h2, nId, &nValue));
        EXPECT_EQ(nId + 3, nValue);
        EXPECT_EQ(1, QELSetScaleStatusf(h2, nId, 1.5F));
        EXPECT_EQ(1, QELGetScaleStatusf(h1, nId, &fValue));
        EXPECT_EQ(1.5F, fValue);
    }
    EXPECT_EQ(1, QELSetScaleParam(h2, 0, QEL_SEL_MAX, 250));
    DestroyQELEngine(h2);
    DWORD nValue = 0;
    EXPECT_EQ(1, QELGetScaleParam(h1, 0, QEL_SEL_MAX, &nValue));
    EXPECT_EQ(250u, nValue);
    DestroyQELEngine(h1);
}

// ---- the face ----

// Ways out of a meter, for a shape and the group that it stands in.
struct WayOut {
    const char* pszWhat;
    bool bLeaves;
    void (*go)(const CHost& host, HQELELEM hGroup, HQELELEM hShape);
};
const WayOut g_waysOut[] = {
    {"the shape", true,
     [](const CHost& host, HQELELEM, HQELELEM hShape) {
         EXPECT_EQ(1, QELMoveElem(host, hShape, QELGetRootElem(host), host.Child(1)));
     }},
    {"its group", true,
     [](const CHost& host, HQELELEM hGroup, HQELELEM) {
         EXPECT_EQ(1, QELMoveElem(host, hGroup, QELGetRootElem(host), host.Child(1)));
     }},
    {"out of the picture and back", true,
     [](const CHost& host, HQELELEM, HQELELEM hShape) {
         EXPECT_EQ(1, QELMoveElem(host, hShape, nullptr, nullptr));
         EXPECT_EQ(1, QELMoveElem(host, hShape, QELGetRootElem(host), host.Child(1)));
     }},
    {"to another meter, which fills its face", true,
     [](const CHost& host, HQELELEM, HQELELEM hShape) {
         EXPECT_EQ(1, QELMoveElem(host, hShape, host.Child(2), nullptr));
     }},
    {"within the meter", false,
     [](const CHost& host, HQELELEM, HQELELEM hShape) {
         EXPECT_EQ(1, QELMoveElem(host, hShape, host.Child(1), nullptr));
     }},
    {"with its meter", false,
     [](const CHost& host, HQELELEM, HQELELEM) {
         HQELELEM hGroup = QELCreateElem(host, QEL_TYPE_GROUP, nullptr, nullptr);
         EXPECT_EQ(1, QELMoveElem(host, host.Child(1), hGroup, nullptr));
     }},
};

TEST(MeterFace, WhatLeavesItIsDrawnAsTheFileHasIt)
{
    for (int nType = 0; nType < TYPES; ++nType)
        for (const WayOut& way : g_waysOut) {
            SCOPED_TRACE(testing::Message() << g_types[nType] << ": " << way.pszWhat);
            std::string meter = Meter(nType);
            meter.insert(meter.rfind("</meter>"),
                         "<g><ellipse style='0x1' dr='4' lnwid='1' bg='0x11aa33' fg='0x5566ee' "
                         "crd='1 100 60 139'/></g>");
            const CHost host(Ground() + meter + "<meter mtid='40' crd='0 0 0 0'/>");
            const auto prepare = [nType](const CHost& h) {
                Prepare(h, nType);
                SetMeter(h, nType, 40);
                EXPECT_EQ(1, h.Set(0, QEL_SEL_SHOW_PIN, nType != 7)); // the time moves on
                EXPECT_EQ(1, h.Set(0, QEL_SEL_FILL_ONLY, 1));
            };
            prepare(host);
            CTestBitmap before(SIDE, SIDE), after(SIDE, SIDE), reopened(SIDE, SIDE);
            host.Draw(before, QEL_DRAW_FULL);
            const HQELELEM hGroup = QELGetNextElem(host, QELGetFirstChild(host, host.Child(1)));
            way.go(host, hGroup, QELGetFirstChild(host, hGroup));
            host.Draw(after, QEL_DRAW_FULL);

            const std::string path = host.Folder().Path("out.qel");
            ASSERT_EQ(1, QELSaveFile(host, path.c_str()));
            const CHost again("");
            ASSERT_EQ(1, QELOpenFile(again, path.c_str()));
            ASSERT_EQ(1, QELSetQELRect(again, &QEL));
            prepare(again);
            again.Draw(reopened, QEL_DRAW_FULL);
            EXPECT_EQ("", FirstDifference(reopened, after));
            EXPECT_EQ(way.bLeaves, !FirstDifference(before, after).empty());
        }
}

TEST(MeterFace, WhatIsTakenOutOfItIsFilledInItsOwnColorAgain)
{
    const CHost host("<meter upin='1' mtype='round' crd='70 70 50 5 5 135 135'>"
                     "<rect style='0x1' lnwid='0' bg='0x123456' crd='0 0 140 140'/></meter>");
    EXPECT_EQ(1, host.Set(0, QEL_SEL_FACE_COLOR, 0x654321));
    EXPECT_EQ(1, host.Set(0, QEL_SEL_FILL_ONLY, 1));
    CTestBitmap before(SIDE, SIDE), after(SIDE, SIDE);
    host.Draw(before, QEL_DRAW_FULL);
    EXPECT_EQ(RGB(255, 255, 255), before.At(1, 1)); // a face that only fills is hollow
    EXPECT_EQ(1, host.Set(0, QEL_SEL_FILL_ONLY, 0));
    host.Draw(before, QEL_DRAW_FULL);
    EXPECT_EQ(0x654321U, before.At(1, 1));
    const HQELELEM hFace = QELGetFirstChild(host, host.Child(0));
    ASSERT_EQ(1, QELMoveElem(host, hFace, QELGetRootElem(host), nullptr));
    host.Draw(after, QEL_DRAW_FULL);
    EXPECT_EQ(0x123456U, after.At(1, 1));
}

// ---- partial redraw ----

bool HasWord(const std::vector<std::string>& calls, const std::string& word)
{
    for (const std::string& call : calls)
        if (call.starts_with(word)) return true;
    return false;
}

TEST(PartialRedraw, PaintsNoStaticShapeAndNoFace)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        SCOPED_TRACE(g_types[nType]);
        // Round rectangles: no meter draws any.
        const std::string shape = "<rndrect crd='3 3 30 30 4 4'/>";
        std::string meter = Meter(nType);
        meter.insert(meter.rfind("</meter>"), shape);
        const CHost host(shape + "<g>" + shape + "</g>" + meter);
        Prepare(host, nType);
        SetMeter(host, nType, 30);
        int nFull = 0;
        for (const std::string& call : host.Calls(QEL_DRAW_FULL))
            nFull += call.starts_with("RoundRect");
        EXPECT_EQ(3, nFull);
        SetMeter(host, nType, 60);
        const auto calls = host.Calls(0);
        EXPECT_FALSE(HasWord(calls, "RoundRect"));
        EXPECT_LT(5u, calls.size()); // the meter itself
    }
}

TEST(PartialRedraw, AMeterMayAskForTheWholePicture)
{
    const std::string shape = "<rndrect crd='3 3 30 30 4 4'/>";
    for (const bool bAsks : {false, true}) {
        const CHost host(shape + Meter(4) +
                         Meter(5, bAsks ? "mtid='40' flag='0x1000000'" : "mtid='40'"));
        EXPECT_TRUE(HasWord(host.Calls(QEL_DRAW_FULL), "RoundRect"));
        EXPECT_EQ(bAsks, HasWord(host.Calls(0), "RoundRect"));
        CTestBitmap drawn(SIDE, SIDE), full(SIDE, SIDE);
        host.Draw(drawn, 0);
        host.Draw(full, QEL_DRAW_FULL);
        EXPECT_EQ(bAsks, FirstDifference(full, drawn).empty());
    }
}

TEST(PartialRedraw, ADrawingWithAScaleIsAlwaysPaintedWhole)
{
    const CHost host(Ground() + Meter(4) + "<scale scid='40' crd='5 5 20 100'/>");
    Prepare(host, 4);
    CTestBitmap full(SIDE, SIDE), drawn(SIDE, SIDE);
    for (const DWORD nValue : {10UL, 60UL, 30UL}) {
        ASSERT_EQ(1, QELSetScaleStatus(host, 0, nValue));
        ASSERT_EQ(1, QELSetScaleStatus(host, 40, nValue));
        drawn.Fill(0);
        host.Draw(drawn, 0);
        host.Draw(full, QEL_DRAW_FULL);
        EXPECT_EQ("", FirstDifference(full, drawn));
    }
    ASSERT_EQ(1, QELDeleteElem(host, host.Child(2)));
    drawn.Fill(0);
    host.Draw(drawn, 0);
    EXPECT_EQ(0, CountPixels(drawn, GROUND)); // without it, the moving parts alone
}

TEST(PartialRedraw, StatusElementsComeFirstAndThenTheMeters)
{
    const CHost host(Meter(0) + "<status stx='3'><rndrect crd='3 3 30 30 4 4'/></status>");
    Prepare(host, 0);
    ASSERT_EQ(1, QELSetScaleStatus(host, 0, 50));
    ASSERT_EQ(1, QELSetStatus(host, 3));
    const auto calls = host.Calls(0);
    std::size_t nStatus = calls.size(), nMeter = calls.size();
    for (std::size_t n = calls.size(); n-- > 0;) {
        if (calls[n].starts_with("RoundRect")) nStatus = n;
        if (calls[n].starts_with("Text")) nMeter = n;
    }
    EXPECT_LT(nStatus, nMeter);
    EXPECT_LT(nMeter, calls.size());
}

// A picture of 256 colours. Texts are not smoothed in such a one: a smoothed text that is painted
// again over itself grows darker at its edges, and a partial redraw does paint the labels again.
class CPlainBitmap {
public:
    CPlainBitmap() : m_hdc(::CreateCompatibleDC(nullptr))
    {
        struct {
            BITMAPINFOHEADER head;
            RGBQUAD colors[256];
        } info{{sizeof(BITMAPINFOHEADER), SIDE, -SIDE, 1, 8, BI_RGB, 0, 0, 0, 256, 0}, {}};
        for (int n = 0; n < 256; ++n) // three bits of blue, three of green and two of red
            info.colors[n] = {BYTE((n >> 5) * 36), BYTE((n >> 2 & 7) * 36), BYTE((n & 3) * 85), 0};
        void* pBits = nullptr;
        m_hBitmap = ::CreateDIBSection(m_hdc, reinterpret_cast<const BITMAPINFO*>(&info),
                                       DIB_RGB_COLORS, &pBits, nullptr, 0);
        m_pPixels = static_cast<BYTE*>(pBits);
        m_hPrev = ::SelectObject(m_hdc, m_hBitmap);
    }
    ~CPlainBitmap()
    {
        ::SelectObject(m_hdc, m_hPrev);
        ::DeleteObject(m_hBitmap);
        ::DeleteDC(m_hdc);
    }
    CPlainBitmap(const CPlainBitmap&) = delete;
    CPlainBitmap& operator=(const CPlainBitmap&) = delete;

    void Draw(const CHost& host, DWORD nFlags) const
    {
        ASSERT_EQ(1, QELDraw(host, m_hdc, &QEL, nFlags));
        ::GdiFlush();
    }
    int At(int nX, int nY) const { return m_pPixels[nY * SIDE + nX]; }
    int Colors() const
    {
        bool bSeen[256] = {};
        for (int n = 0; n < SIDE * SIDE; ++n) bSeen[m_pPixels[n]] = true;
        return static_cast<int>(std::count(bSeen, bSeen + 256, true));
    }

private:
    HDC m_hdc;
    HBITMAP m_hBitmap;
    HGDIOBJ m_hPrev;
    BYTE* m_pPixels;
};
static_assert(SIDE % 4 == 0); // a line of pixels has no padding

// The pixels that differ: how many, and the first. With bPainted only those count that the expected
// picture has painted over the face.
std::string Difference(const CPlainBitmap& expected, const CPlainBitmap& drawn,
                       bool bPainted = false)
{
    int nCount = 0;
    std::string first;
    for (int y = 0; y < SIDE; ++y) {
        for (int x = 0; x < SIDE; ++x) {
            if (expected.At(x, y) == drawn.At(x, y)) continue;
            if (bPainted && expected.At(x, y) == expected.At(6, 6)) continue; // a corner of it
            if (nCount++ == 0) first = std::to_string(x) + "," + std::to_string(y);
        }
    }
    return nCount ? std::to_string(nCount) + " pixels from " + first : "";
}

// The values of the sweep: up, down, across both limits, to the ends and beyond.
constexpr DWORD g_sweep[] = {5, 30, 31, 90, 60, 61, 15, 100, 40, 0, 37, 150, 72};
constexpr DWORD LAST = g_sweep[std::size(g_sweep) - 1];

// A sweep of partial redraws over one full draw, against one full draw at the last value.
std::string SweepDifference(int nType, const std::vector<std::pair<DWORD, DWORD>>& settings = {},
                            bool bFloats = false)
{
    const CHost moving(Ground() + Meter(nType)), still(Ground() + Meter(nType));
    for (const CHost* pHost : {&moving, &still}) {
        Prepare(*pHost, nType);
        for (const auto& [nSelector, nValue] : settings)
            EXPECT_EQ(1, pHost->Set(0, nSelector, nValue)) << nSelector;
    }
    const CPlainBitmap swept, fresh;
    swept.Draw(moving, QEL_DRAW_FULL);
    const auto set = [&](const CHost& host, DWORD nValue) {
        SetMeter(host, nType, nValue);
        if (bFloats) QELSetScaleStatusf(host, 0, static_cast<float>(nValue));
    };
    for (const DWORD nValue : g_sweep) {
        set(moving, nValue);
        swept.Draw(moving, 0);
    }
    set(still, LAST);
    fresh.Draw(still, QEL_DRAW_FULL);
    EXPECT_LE(4, fresh.Colors()); // ground, face, marks, labels and what shows the value
    return Difference(fresh, swept, nType == 10);
}

// Bars paint the whole column again, needles are erased in the colour of the face, pies in an erase
// colour that is the face's here.
TEST(PartialRedraw, ASweepEndsInThePixelsOfOneFullDraw)
{
    for (const int nType : {0, 1, 2, 3, 4, 5, 6, 8, 9}) {
        EXPECT_EQ("", SweepDifference(nType)) << g_types[nType];
    }
}

// The chart paints its whole disc again and erases nothing. Exactly the same it cannot be: GDI's
// pies leave single pixels between two neighbours and, cut in other places, have the rim in other
// pixels, where an older chart shows through. And a needle of the chart would be erased in a face
// colour that no selector gives it, so it is switched off.
TEST(PartialRedraw, ASweepOfTheChartEndsInEveryPixelThatTheLastDrawPaints)
{
    EXPECT_EQ("", SweepDifference(10, {{QEL_SEL_SHOW_PIN, 0}}));
    EXPECT_EQ("", SweepDifference(10, {{QEL_SEL_SHOW_PIN, 0}, {QEL_SEL_SHOW_VALUE, 1}}));
    EXPECT_EQ("", SweepDifference(10, {{QEL_SEL_SHOW_PIN, 0}, {QEL_SEL_FULL_CIRCLE, 1}}));
}

TEST(PartialRedraw, ASweepOfFloatsEndsSoToo)
{
    for (const int nType : {0, 1, 2, 3, 4, 5, 6, 8, 9}) {
        EXPECT_EQ("", SweepDifference(nType, {}, true)) << g_types[nType];
    }
}

TEST(PartialRedraw, ASweepInReverseEndsSoToo)
{
    for (const int nType : {0, 2, 4, 5, 6, 8, 9}) {
        EXPECT_EQ("", SweepDifference(nType, {{QEL_SEL_REVERSE, 1}})) << g_types[nType];
    }
}

TEST(PartialRedraw, ASweepOfAReversedBodyEndsSoToo)
{
    for (const int nType : {1, 3}) {
        EXPECT_EQ("", SweepDifference(nType, {{QEL_SEL_REVERSE, 1}})) << g_types[nType];
    }
}

TEST(PartialRedraw, ASweepOfACylinderEndsSoToo)
{
    for (const int nType : {1, 3}) {
        EXPECT_EQ("", SweepDifference(nType, {{QEL_SEL_FRAME_OPTION, 1}})) << g_types[nType];
    }
}

TEST(PartialRedraw, ASweepEndsSoWithEveryNeedleAxisAndBase)
{
    for (DWORD nStyle = 0; nStyle <= 4; ++nStyle)
        EXPECT_EQ("", SweepDifference(8, {{QEL_SEL_PIN_STYLE, nStyle}})) << nStyle;
    for (DWORD nStyle = 0; nStyle <= 3; ++nStyle)
        EXPECT_EQ("", SweepDifference(8, {{QEL_SEL_AXIS_STYLE, nStyle}})) << nStyle;
    for (const int nType : {0, 1, 2, 3}) {
        EXPECT_EQ("", SweepDifference(nType, {{QEL_SEL_USE_BASE, 1}, {QEL_SEL_BASE_VALUE, 50}}))
            << g_types[nType];
    }
}

// The clock shows the time and not its value, so that a sweep of values ends in one full draw's
// pixels as long as both are drawn in one second; and after the second as well, since it erases the
// hands that it has drawn.
TEST(PartialRedraw, TheClockMovesItsHandsFromSecondToSecond)
{
    bool bCompared = false;
    for (int nTry = 0; nTry < 5 && !bCompared; ++nTry) {
        const CHost moving(Ground() + Meter(7)), still(Ground() + Meter(7));
        Prepare(moving, 7);
        Prepare(still, 7);
        const CPlainBitmap swept, fresh;
        swept.Draw(moving, QEL_DRAW_FULL);
        ::Sleep(1100);
        swept.Draw(moving, 0);
        SYSTEMTIME before{}, after{};
        ::GetSystemTime(&before);
        for (const DWORD nValue : g_sweep) {
            SetMeter(moving, 7, nValue);
            swept.Draw(moving, 0);
        }
        SetMeter(still, 7, LAST);
        fresh.Draw(still, QEL_DRAW_FULL);
        ::GetSystemTime(&after);
        if (before.wSecond != after.wSecond) continue;
        EXPECT_EQ("", Difference(fresh, swept));
        bCompared = true;
    }
    EXPECT_TRUE(bCompared);
}

// Not so: what is written outside of a part that is painted again, and a bar that fills only. The
// old text stays, and so does the old bar; such drawings ask for full redraws.
TEST(PartialRedraw, AReadOutOverItsFaceAndABarThatOnlyFillsLeaveWhatTheyPaintedBefore)
{
    EXPECT_NE("", SweepDifference(8, {{QEL_SEL_SHOW_VALUE, 1}}));
    for (const int nType : {0, 2})
        EXPECT_NE("", SweepDifference(nType, {{QEL_SEL_FILL_ONLY, 1}})) << g_types[nType];
}

TEST(PartialRedraw, LeavesWhatAStatusHidesAndTheOldBlinkPhaseOfStaticShapes)
{
    const std::string status = "<status>" + Rect("0 0 40 40", FACE) + "</status>";
    const CHost host(status + "<rect style='0x1' lnwid='0' bg='0xff glt' crd='60 0 100 40'/>" +
                     Meter(4));
    CTestBitmap full(SIDE, SIDE), drawn(SIDE, SIDE);
    host.Draw(drawn, QEL_DRAW_FULL);
    ASSERT_EQ(1, QELSetStatus(host, 1));
    ASSERT_EQ(1, QELSetBlinkState(host, 1));
    host.Draw(drawn, 0);
    EXPECT_EQ(FACE, drawn.At(2, 2));
    EXPECT_EQ(0x0000FFu, drawn.At(80, 2));
    host.Draw(full, QEL_DRAW_FULL);
    EXPECT_EQ(0xFFFFFFu, full.At(2, 2));
    EXPECT_EQ(0u, full.At(80, 2));
}

TEST(PartialRedraw, PaintsAMeterUnderAStatusThatHidesIt)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        const CHost host("<status stx='3'>" + Meter(nType) + "</status>");
        Prepare(host, nType);
        EXPECT_EQ(host.Calls(QEL_DRAW_FULL).size(), CHost("").Calls(QEL_DRAW_FULL).size());
        EXPECT_LT(5u, host.Calls(0).size()) << g_types[nType];
    }
}

TEST(PartialRedraw, ADialThatOnlyFillsLeavesTracesOfItsNeedles)
{
    for (const int nType : {4, 5, 8})
        EXPECT_NE("", SweepDifference(nType, {{QEL_SEL_FILL_ONLY, 1}})) << g_types[nType];
}

// One old place an engine: what was drawn elsewhere meanwhile is erased, and the needle stays.
TEST(PartialRedraw, AfterADrawOntoAnotherDeviceContextTheOldNeedleStays)
{
    for (const int nType : {4, 5, 8}) {
        const CHost host(Ground() + Meter(nType));
        Prepare(host, nType);
        host.Set(0, QEL_SEL_SHOW_LABELS, 0);
        const CPlainBitmap screen, print;
        SetMeter(host, nType, 30);
        screen.Draw(host, QEL_DRAW_FULL);
        SetMeter(host, nType, 70);
        print.Draw(host, QEL_DRAW_FULL);
        screen.Draw(host, 0);
        EXPECT_NE("", Difference(print, screen)) << g_types[nType];
        screen.Draw(host, QEL_DRAW_FULL);
        EXPECT_EQ("", Difference(print, screen)) << g_types[nType];
    }
}

// ---- the read-out ----

// The colour in which the read-out of a gauge with the zones 20 and 80 is written.
std::string ReadOutColor(const CHost& host, DWORD nFlags)
{
    std::string color, found;
    for (const std::string& line : host.Calls(nFlags)) {
        if (line.rfind("SetTextColor ", 0) == 0) color = line.substr(13);
        if (line.rfind("Text ", 0) == 0) found = color;
    }
    return found == "0000ff" ? "red" : found == "00ff00" ? "green" : found;
}

TEST(ReadOut, TakesItsColorFromTheValueOfTheDrawBefore)
{
    for (const DWORD nFlags : {DWORD(QEL_DRAW_FULL), DWORD(0)}) {
        const CHost host(Meter(8));
        Prepare(host, 8);
        host.Set(0, QEL_SEL_SHOW_LABELS, 0);
        host.Set(0, QEL_SEL_SHOW_VALUE, 1);
        const auto draw = [&](DWORD nValue) {
            SetMeter(host, 8, nValue);
            return ReadOutColor(host, nFlags);
        };
        EXPECT_EQ("red", draw(50)); // 0, before the first one
        EXPECT_EQ("green", draw(50));
        EXPECT_EQ("green", draw(90));
        EXPECT_EQ("red", draw(50));
        const RECT rc{0, 0, SIDE - 9, SIDE - 9};
        ASSERT_EQ(1, QELSetQELRect(host, &rc)); // a new renderer knows it as well
        EXPECT_EQ("green", draw(10));
        ASSERT_EQ(1, host.Set(0, QEL_SEL_SHOW_ALARM, 0));
        EXPECT_EQ("000000", draw(50));
    }
}

// ---- the host's texts ----

// Whether texts of the host follow the current position and move it is nothing to a drawing's own.
TEST(TextsOfADrawing, StandWhereTheyDoAndLeaveTheCurrentPositionWhateverTheHostsFollow)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        const std::string body = Ground() + Meter(nType) + "<text crd='5 5 60 20'>a&amp;b</text>";
        const CHost plain(body), following(body);
        CTestBitmap expected(SIDE, SIDE), drawn(SIDE, SIDE);
        ::SetTextAlign(drawn.Dc(), TA_UPDATECP);
        ::MoveToEx(drawn.Dc(), 31, 32, nullptr);
        for (const CHost* pHost : {&plain, &following}) {
            Prepare(*pHost, nType);
            pHost->Set(0, QEL_SEL_SHOW_VALUE, 1);
            pHost->Set(0, QEL_SEL_SHOW_PIN, nType != 7); // the time moves on
            SetMeter(*pHost, nType, 40);
            const CTestBitmap& bitmap = pHost == &plain ? expected : drawn;
            for (const DWORD nFlags : {DWORD(QEL_DRAW_FULL), DWORD(0)}) pHost->Draw(bitmap, nFlags);
        }
        POINT pt{};
        ::GetCurrentPositionEx(drawn.Dc(), &pt);
        EXPECT_TRUE(pt.x == 31 && pt.y == 32) << g_types[nType] << " " << pt.x << "," << pt.y;
        EXPECT_EQ(UINT(TA_UPDATECP), ::GetTextAlign(drawn.Dc()));
        EXPECT_FALSE(IsBlank(drawn));
        EXPECT_EQ("", FirstDifference(expected, drawn)) << g_types[nType];
    }
}

// ---- endurance ----

class LiveMeter : public testing::TestWithParam<int> {};

// Every layer is on for a part of the draws: what one of them left behind would be missing.
TEST_P(LiveMeter, TwentyThousandUpdatesAndDrawsLeaveNoObjectBehind)
{
    const int nType = GetParam();
    const CHost host(Meter(nType));
    Prepare(host, nType);
    EXPECT_EQ(1, host.Set(0, QEL_SEL_TICKS, 2));
    const RECT rcs[] = {{0, 0, 110, 110}, {0, 0, 112, 110}};
    CTestBitmap drawn(112, 112);
    const auto run = [&](int nTimes) {
        for (int i = 0; i < nTimes; ++i) {
            const DWORD bRare = i % 200 == 0;
            if (i % 200 < 2) { // wide arcs are slow
                host.Set(0, QEL_SEL_SHOW_ALARM, bRare);
                host.Set(0, QEL_SEL_SHOW_SCALE, bRare);
                host.Set(0, QEL_SEL_SHOW_LABELS, bRare);
                host.Set(0, QEL_SEL_SHOW_VALUE, bRare);
                host.Set(0, QEL_SEL_FRAME_OPTION, i % 400 == 0);
                host.Set(0, QEL_SEL_PIN_STYLE, i / 200 % 5);
                host.Set(0, QEL_SEL_AXIS_STYLE, i / 200 % 4);
                QELSetQELRect(host, &rcs[i / 200 % 2]); // a new renderer
            }
            SetMeter(host, nType, i * 37 % 110);
            if (i % 3 == 0) QELSetScaleStatusf(host, 0, i % 100 + 0.5F);
            ASSERT_EQ(1, QELDraw(host, drawn.Dc(), &rcs[0], bRare)) << i;
        }
    };
    run(801); // what the system keeps, it has now
    const std::size_t nBefore = SpareObjects();
    ASSERT_GT(MORE_OBJECTS_THAN_ALL, nBefore); // there is a limit, so a leak would show
    const HGDIOBJ hPen = ::GetCurrentObject(drawn.Dc(), OBJ_PEN);
    const HGDIOBJ hBrush = ::GetCurrentObject(drawn.Dc(), OBJ_BRUSH);
    const HGDIOBJ hFont = ::GetCurrentObject(drawn.Dc(), OBJ_FONT);
    run(20000);
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ(hPen, ::GetCurrentObject(drawn.Dc(), OBJ_PEN));
    EXPECT_EQ(hBrush, ::GetCurrentObject(drawn.Dc(), OBJ_BRUSH));
    EXPECT_EQ(hFont, ::GetCurrentObject(drawn.Dc(), OBJ_FONT));
    EXPECT_LE(10000U, SpareObjects(10000));
    EXPECT_EQ(nBefore, SpareObjects()); // not one object less
}

constexpr DWORD g_nasty[] = {0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

double SecondsSince(std::chrono::steady_clock::time_point begin)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

// A meter that is given values and then its own ones back: it draws in reasonable time, leaves the
// device context alone, and draws in the end what it drew before.
class CTried {
public:
    explicit CTried(int nType) : m_host(Meter(nType)), m_nType(nType)
    {
        Prepare(m_host, nType);
        m_host.Set(0, QEL_SEL_SHOW_PIN, nType != 7); // the time moves on
        for (DWORD n = 0; n < QEL_SEL_COUNT; ++n) QELGetScaleParam(m_host, 0, n, &m_nOwn[n]);
        Restore();
        m_host.Draw(m_before, QEL_DRAW_FULL);
    }
    const CHost& Host() const { return m_host; }

    void ExpectHarmless()
    {
        const auto begin = std::chrono::steady_clock::now();
        CTestBitmap drawn(SIDE, SIDE);
        m_host.Draw(drawn, QEL_DRAW_FULL);
        const std::string state = DcState(drawn.Dc());
        m_host.Draw(drawn, 0);
        EXPECT_EQ(state, DcState(drawn.Dc()));
        // No promise about speed: a loop over what the value says would take hours.
        EXPECT_GT(60, SecondsSince(begin));
        Restore();
        drawn.Fill(RGB(255, 255, 255));
        m_host.Draw(drawn, QEL_DRAW_FULL);
        EXPECT_EQ("", FirstDifference(m_before, drawn));
    }

private:
    void Restore()
    {
        for (DWORD n = 0; n < QEL_SEL_COUNT; ++n)
            if (n != QEL_SEL_VALUE) m_host.Set(0, n, m_nOwn[n]);
        SetMeter(m_host, m_nType, 40);
    }

    CHost m_host;
    int m_nType;
    DWORD m_nOwn[QEL_SEL_COUNT] = {};
    CTestBitmap m_before{SIDE, SIDE};
};

TEST_P(LiveMeter, NoValueOfASelectorCrashesHangsOrStays)
{
    CTried meter(GetParam());
    for (DWORD n = 0; n < QEL_SEL_COUNT; ++n) {
        for (const DWORD nValue : g_nasty) {
            SCOPED_TRACE(testing::Message() << "selector " << n << " value " << nValue);
            const int nTaken = meter.Host().Set(0, n, nValue);
            if (nTaken && n != QEL_SEL_ANGLE_OFFSET) { // which is kept as a real number
                EXPECT_EQ(std::to_string(nValue), meter.Host().Get(0, n));
            }
            meter.ExpectHarmless();
        }
    }
}

TEST_P(LiveMeter, NoValuesOfAllSelectorsTogetherDoEither)
{
    CTried meter(GetParam());
    for (const DWORD nFirst : g_nasty) {
        for (const DWORD nSecond : g_nasty) {
            SCOPED_TRACE(testing::Message() << "all " << nFirst << "/" << nSecond);
            for (DWORD n = 0; n < QEL_SEL_COUNT; ++n)
                meter.Host().Set(0, n, n % 2 ? nFirst : nSecond);
            for (DWORD nPin = 1; nPin <= 32; ++nPin)
                QELSetScaleStatus(meter.Host(), nPin, nPin % 2 ? nFirst : nSecond);
            meter.ExpectHarmless();
        }
    }
}

TEST_P(LiveMeter, NoFloatDoesEither)
{
    CTried meter(GetParam());
    const float values[] = {0,          -0.0F,         1e-40F,         3.4e38F,
                            -3.4e38F,   2147483648.0F, -2147483904.0F, HUGE_VALF,
                            -HUGE_VALF, std::nanf("")};
    for (const float fValue : values) {
        for (const DWORD nReverse : {DWORD{0}, DWORD{1}}) {
            SCOPED_TRACE(testing::Message() << fValue << " reversed " << nReverse);
            meter.Host().Set(0, QEL_SEL_REVERSE, nReverse);
            meter.Host().Set(0, QEL_SEL_SHOW_VALUE, 1);
            meter.Host().Set(0, QEL_SEL_USE_BASE, 1);
            EXPECT_EQ(1, QELSetScaleParamf(meter.Host(), 0, QEL_SEL_BASE_VALUE, fValue));
            for (DWORD nId = 0; nId < 4; ++nId)
                EXPECT_EQ(1, QELSetScaleStatusf(meter.Host(), nId, fValue));
            meter.ExpectHarmless();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Types, LiveMeter, testing::Range(0, TYPES),
                         [](const auto& row) { return std::string(g_types[row.param]); });

TEST(LiveScale, NoValueOfASelectorCrashesHangsOrStays)
{
    for (const char* pszType : {"vrtleft", "vrtright", "horizup", "horizdn", "round", "Arc"}) {
        SCOPED_TRACE(pszType);
        const bool bStraight = *pszType == 'v' || *pszType == 'h';
        const CHost host(std::string("<scale scid='9' max='2147483647' pin='1' sctype='") +
                         pszType + "' crd='" +
                         (bStraight ? "10 10 130 130" : "70 70 60 50 10 -30 210") + "'/>");
        DWORD nOwn[7] = {};
        for (DWORD n = 0; n < 7; ++n) QELGetScaleParam(host, 9, n, &nOwn[n]);
        CTestBitmap before(SIDE, SIDE), drawn(SIDE, SIDE);
        host.Draw(before, 0);
        EXPECT_FALSE(IsBlank(before));
        for (const DWORD nFirst : g_nasty) {
            for (const DWORD nSecond : g_nasty) {
                SCOPED_TRACE(testing::Message() << nFirst << "/" << nSecond);
                const auto begin = std::chrono::steady_clock::now();
                for (DWORD n = 0; n < 7; ++n) host.Set(9, n, n % 2 ? nFirst : nSecond);
                host.Draw(drawn, 0);
                for (const float fValue : {std::nanf(""), -3.4e38F, HUGE_VALF}) {
                    host.Set(9, QEL_SEL_TICKS, 3); // the ticks have been drawn
                    EXPECT_EQ(1, QELSetScaleStatusf(host, 9, fValue));
                    host.Draw(drawn, 0);
                }
                EXPECT_GT(60, SecondsSince(begin));
                for (DWORD n = 0; n < 7; ++n) host.Set(9, n, nOwn[n]);
                drawn.Fill(RGB(255, 255, 255));
                host.Draw(drawn, 0);
                EXPECT_EQ("", FirstDifference(before, drawn));
            }
        }
    }
}

TEST(LiveScale, TwentyThousandUpdatesAndDrawsLeaveNoObjectBehind)
{
    std::string body;
    int nId = 0;
    for (const char* pszType : {"vrtleft", "vrtright", "horizup", "horizdn"})
        body += "<scale scid='" + std::to_string(nId++) + "' pin='1' sctype='" + pszType +
                "' crd='10 10 130 130'/>";
    for (const char* pszType : {"round", "Arc"})
        body += "<scale scid='" + std::to_string(nId++) + "' pin='1' sctype='" + pszType +
                "' crd='70 70 60 50 10 0 90'/>";
    const CHost host(body);
    const RECT rc{0, 0, 20, 20};
    QELSetQELRect(host, &rc);
    CTestBitmap drawn(20, 20);
    const auto run = [&](int nTimes) {
        for (int i = 0; i < nTimes; ++i) {
            QELSetScaleStatus(host, i % 6, i % 12);
            ASSERT_EQ(1, QELDraw(host, drawn.Dc(), &rc, 0)) << i;
        }
    };
    run(50);
    const std::size_t nBefore = SpareObjects();
    ASSERT_GT(MORE_OBJECTS_THAN_ALL, nBefore);
    run(20000);
    EXPECT_FALSE(IsBlank(drawn));
    EXPECT_EQ(nBefore, SpareObjects());
}

} // namespace
