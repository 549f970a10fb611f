#include "fuzz/LargeBlocks.h"
#include "fuzz/Life.h"

#include <cstring>
#include <iterator>
#include <set>

namespace {

constexpr std::size_t MAX_IDS = 6;    // ids whose every selector is set
constexpr DWORD METER_PIN_COUNT = 32; // ids up to this one address the meter with id 0

const RECT g_sizes[] = {{0, 0, 320, 240},          {0, 0, 1, 1},    {0, 0, 0, 0},
                        {-20, 30, 140, 90},        {100, 80, 0, 0}, {0, 0, 37, 2000},
                        {-5000, -5000, 5000, 5000}};
constexpr DWORD g_flags[] = {QEL_DRAW_FULL, 0, QEL_DRAW_FULL | QEL_DRAW_PRESSED, QEL_DRAW_PRESSED};

} // namespace

void CLife::DrawAt(const RECT& rcQel, const RECT& rcUpdate, DWORD nFlags)
{
    if (m_nDrawn + m_nCost > MAX_DRAW_WORK) return;
    m_nDrawn += m_nCost;
    const CLittleMemory little;
    FUZZ_CHECK(QELSetQELRect(m_hEngine, &rcQel));
    RECT rcMeet{};
    const bool bMeets = ::IntersectRect(&rcMeet, &rcUpdate, &rcQel);
    const int nResult = QELDraw(m_hEngine, m_dc.Get(), &rcUpdate, nFlags);
    FUZZ_CHECK(!nResult || bMeets);
    m_dc.CheckState();
    RECT rc{};
    FUZZ_CHECK(QELGetQELRect(m_hEngine, &rc) && ::EqualRect(&rc, &rcQel));
}

void CLife::DrawAll()
{
    int n = 0;
    for (const RECT& rc : g_sizes) {
        DrawAt(rc, rc, g_flags[n++ % 4]);
        DrawAt(rc, rc, 0);
    }
}

// The ids that the drawing's scales and meters have, and some that none has.
std::vector<DWORD> CLife::Ids()
{
    std::set<DWORD> ids;
    for (const HostElem& elem : ReadAll()) {
        if (ids.size() >= MAX_IDS) break;
        if (elem.nType == QEL_TYPE_SCALE) ids.insert(RecordOf<QELSCALEATTR>(elem.attr).nId);
        if (elem.nType == QEL_TYPE_METER) ids.insert(RecordOf<QELMETERATTR>(elem.attr).nId);
    }
    static constexpr DWORD others[] = {0, 1, METER_PIN_COUNT + 1, 0xFFFFFFFF};
    ids.insert(std::begin(others), std::end(others));
    return {ids.begin(), ids.end()};
}

// What is refused changes nothing; what an element takes can be asked for again.
void CLife::SetValue(DWORD nId, DWORD nSelector, DWORD nValue)
{
    DWORD nBefore = 0;
    DWORD nAfter = 0;
    const int nKnown = QELGetScaleParam(m_hEngine, nId, nSelector, &nBefore);
    const int nResult = QELSetScaleParam(m_hEngine, nId, nSelector, nValue);
    FUZZ_CHECK(QELGetScaleParam(m_hEngine, nId, nSelector, &nAfter) == nKnown);
    if (nSelector >= QEL_SEL_COUNT) FUZZ_CHECK(!nResult && !nKnown);
    if (nSelector == QEL_SEL_VALUE && nId > METER_PIN_COUNT) return; // only scales take it
    if (nKnown && nSelector >= QEL_SEL_FACE_COLOR)                   // known to meters only
        FUZZ_CHECK(nAfter == (nResult ? nValue : nBefore));
    if (nSelector == QEL_SEL_FULL_CIRCLE) FUZZ_CHECK(!nResult || nValue <= 1);
    if (nSelector == QEL_SEL_TICKS && !nValue) FUZZ_CHECK(!nResult && nAfter == nBefore);
    if (nSelector == QEL_SEL_TICKS && nValue > MAX_TICKS)
        QELSetScaleParam(m_hEngine, nId, nSelector, MAX_TICKS);
}

void CLife::SetValuef(DWORD nId, DWORD nSelector, float fValue)
{
    float fBefore = 0;
    float fAfter = 0;
    const int nKnown = QELGetScaleParamf(m_hEngine, nId, nSelector, &fBefore);
    const int nResult = QELSetScaleParamf(m_hEngine, nId, nSelector, fValue);
    FUZZ_CHECK(QELGetScaleParamf(m_hEngine, nId, nSelector, &fAfter) == nKnown);
    if (nSelector != QEL_SEL_VALUE && nSelector != QEL_SEL_BASE_VALUE)
        FUZZ_CHECK(!nResult && !nKnown);
    if (nKnown && !nResult) FUZZ_CHECK(std::memcmp(&fBefore, &fAfter, sizeof fAfter) == 0);
    if (nKnown && nResult && nSelector == QEL_SEL_BASE_VALUE)
        FUZZ_CHECK(std::memcmp(&fValue, &fAfter, sizeof fAfter) == 0);
}

void CLife::PushAll()
{
    static constexpr DWORD values[] = {1, 0, 5, 0x80FF8000, 100, 0x7FFFFFFF, 0x80000000, 33};
    int n = 0;
    for (const DWORD nId : Ids()) {
        for (DWORD nSelector = 0; nSelector <= QEL_SEL_COUNT; ++nSelector)
            SetValue(nId, nSelector, m_bOwnValues ? m_input.Word() : values[n++ % 8]);
        const float fValue = m_bOwnValues ? m_input.Real() : 7.5F;
        SetValuef(nId, QEL_SEL_VALUE, fValue);
        SetValuef(nId, QEL_SEL_BASE_VALUE, -fValue);
        SetValuef(nId, QEL_SEL_MAX, fValue);
        DrawAt(g_sizes[0], g_sizes[0], 0);
    }
    DrawAt(g_sizes[0], g_sizes[0], QEL_DRAW_FULL);
}

void CLife::Draw()
{
    const DWORD nFlags = m_input.Below(5) == 4 ? m_input.Word() : g_flags[m_input.Below(4)];
    RECT rcQel = g_sizes[m_input.Below(7)];
    RECT rcUpdate = rcQel;
    if (m_input.Below(3) == 0)
        rcQel = {m_input.Number(), m_input.Number(), m_input.Number(), m_input.Number()};
    if (m_input.Below(3) != 0) rcUpdate = rcQel;
    DrawAt(rcQel, rcUpdate, nFlags);
    RECT rc{};
    QELGetDrawGraphRect(m_hEngine, &rc);
    FUZZ_CHECK(!QELDraw(m_hEngine, m_dc.Get(), nullptr, nFlags));
}

void CLife::Rotate()
{
    const int nAngle =
        m_input.Below(4) ? static_cast<int>(m_input.Below(9)) * 90 - 360 : m_input.Number();
    SIZE before{};
    SIZE after{};
    FUZZ_CHECK(QELGetRefSize(m_hEngine, &before));
    const int nResult = QELRotate(m_hEngine, nAngle);
    FUZZ_CHECK(QELGetRefSize(m_hEngine, &after));
    const bool bSame = after.cx == before.cx && after.cy == before.cy;
    const bool bTurned = after.cx == before.cy && after.cy == before.cx;
    FUZZ_CHECK(nResult ? bSame || bTurned : bSame);
}

void CLife::SetParam()
{
    const int nIndex = m_input.Below(8) ? static_cast<int>(m_input.Below(4)) : m_input.Number();
    const DWORD nValue = m_input.Word();
    DWORD nBefore = 0;
    DWORD nAfter = 0;
    const int nKnown = QELGetParam(m_hEngine, nIndex, &nBefore);
    const int nResult = QELSetParam(m_hEngine, nIndex, nValue);
    FUZZ_CHECK(QELGetParam(m_hEngine, nIndex, &nAfter) == nKnown);
    const bool bIndex = nIndex >= 0 && nIndex < QEL_PARAM_COUNT;
    FUZZ_CHECK(bIndex ? nKnown : !nKnown && !nResult);
    if (!bIndex) return;
    const bool bRefused = nIndex == QEL_PARAM_DRAFT && nValue >= DRAFT_COUNT;
    FUZZ_CHECK(nAfter == (bRefused ? nBefore : nValue));
}

void CLife::SetStatus()
{
    const DWORD nStatus = m_input.Word();
    DWORD nBefore = 0;
    DWORD nAfter = 0;
    const int nHas = QELGetStatus(m_hEngine, &nBefore);
    FUZZ_CHECK(QELSetStatus(m_hEngine, nStatus) == nHas);
    FUZZ_CHECK(QELGetStatus(m_hEngine, &nAfter) == nHas);
    FUZZ_CHECK(!nHas || nAfter == nStatus);
    FUZZ_CHECK(QELSetBlinkState(m_hEngine, static_cast<int>(nStatus)) == (Root() ? 1 : 0));
}

void CLife::SetOneValue()
{
    const uint32_t nWhich = m_input.Below(8);
    const std::vector<DWORD> ids = nWhich && MayRead() ? Ids() : std::vector<DWORD>();
    const DWORD nId = ids.empty() ? m_input.Word() : ids[m_input.Byte() % ids.size()];
    const DWORD nSelector = m_input.Below(36);
    SetValue(nId, nSelector, m_input.Word());
    SetValuef(nId, nSelector, m_input.Real());
}

// The system has no more objects from some point on, or lacks one: the draw goes on without.
void CLife::DrawShortOfObjects()
{
    const int nFirst = 1 + static_cast<int>(m_input.Below(30));
    if (m_input.Below(2))
        gdi::FailCreation(nFirst);
    else
        gdi::FailCreationsFrom(nFirst);
    DrawAt(g_sizes[m_input.Below(5)], g_sizes[0], g_flags[m_input.Below(4)]);
    gdi::FailCreation(0);
    DrawAt(g_sizes[0], g_sizes[0], QEL_DRAW_FULL);
}
