#include "fuzz/Life.h"

#include <algorithm>

namespace {

constexpr std::size_t DRAW_COST = 50; // of a new element
constexpr int32_t MAX_LEVELS = 512;

} // namespace

void CLife::Create()
{
    const int nType = static_cast<int>(m_input.Below(24)) - 1;
    const HQELELEM hParent = m_input.Below(4) == 0 ? nullptr : AnyElem();
    const HQELELEM hAfter = m_input.Below(4) != 0 ? nullptr : AnyElem();
    if (m_nElements >= MAX_ELEMENTS) return;
    const bool bHasClass = (nType >= QEL_TYPE_TEXT && nType <= QEL_TYPE_POLYGON) ||
                           (nType >= QEL_TYPE_GROUP && nType <= QEL_TYPE_METER);
    const HQELELEM hRoot = Root();
    const HQELELEM hReal = hParent ? hParent : hRoot;
    const bool bParent = hReal && (!hParent || IsLive(hParent));
    const bool bAfter = !hAfter || (IsLive(hAfter) && bParent && Parent(hAfter) == hReal);
    const bool bGood = nType == QEL_TYPE_ROOT
                           ? !hParent && !hAfter
                           : bHasClass && bParent && bAfter && Depth(hReal) < MAX_LEVELS;
    const HQELELEM hElem = QELCreateElem(m_hEngine, nType, hParent, hAfter);
    FUZZ_CHECK((hElem != nullptr) == bGood);
    if (!bGood) {
        FUZZ_CHECK(Root() == hRoot);
        return;
    }
    if (nType == QEL_TYPE_ROOT) {
        KillAll();
        m_nElements = 0;
        FUZZ_CHECK(Root() == hElem && !QELGetFirstChild(m_hEngine, hElem));
    } else {
        FUZZ_CHECK(Parent(hElem) == hReal);
        FUZZ_CHECK(hAfter ? QELGetPrevElem(m_hEngine, hElem) == hAfter
                          : QELGetLastChild(m_hEngine, hReal) == hElem);
    }
    Know(hElem);
    ++m_nElements;
    m_nCost += DRAW_COST;
    FUZZ_CHECK(QELGetElemType(m_hEngine, hElem) == nType);
    FUZZ_CHECK(!*QELGetElemId(m_hEngine, hElem));
}

void CLife::Move()
{
    const HQELELEM hElem = AnyElem();
    const HQELELEM hParent = m_input.Below(6) == 0 ? nullptr : AnyElem();
    const HQELELEM hAfter = m_input.Below(4) != 0 ? nullptr : AnyElem();
    if (!MayRead()) return;
    const HostTree before = ReadAll();
    const HostTree moved = IsLive(hElem) ? Read(hElem) : HostTree();
    bool bGood = IsLive(hElem) && hElem != Root();
    if (bGood && !hParent) bGood = !hAfter;
    if (bGood && hParent) {
        int nHeight = 0;
        for (const HostElem& elem : moved) nHeight = std::max(nHeight, elem.nDepth);
        bGood = IsLive(hParent) && !IsInside(hParent, hElem) &&
                Depth(hParent) + 1 + nHeight <= MAX_LEVELS &&
                (!hAfter || (IsLive(hAfter) && hAfter != hElem && Parent(hAfter) == hParent));
    }
    FUZZ_CHECK(QELMoveElem(m_hEngine, hElem, hParent, hAfter) == (bGood ? 1 : 0));
    if (!bGood) {
        FUZZ_CHECK(IsSameTree(before, ReadAll()));
        return;
    }
    FUZZ_CHECK(IsSameTree(moved, Read(hElem)));
    FUZZ_CHECK(Parent(hElem) == hParent);
    FUZZ_CHECK(QELGetPrevElem(m_hEngine, hElem) == hAfter);
}

void CLife::Copy()
{
    const HQELELEM hElem = AnyElem();
    if (!MayRead()) return;
    const HostTree source = IsLive(hElem) ? Read(hElem) : HostTree();
    if (m_nElements + source.size() > MAX_ELEMENTS) return;
    const bool bGood = !source.empty() && Parent(hElem);
    const HQELELEM hNext = bGood ? QELGetNextElem(m_hEngine, hElem) : nullptr;
    const HQELELEM hCopy = QELCopyElem(m_hEngine, hElem);
    FUZZ_CHECK((hCopy != nullptr) == bGood);
    if (!bGood) return;
    FUZZ_CHECK(QELGetPrevElem(m_hEngine, hCopy) == hElem);
    FUZZ_CHECK(QELGetNextElem(m_hEngine, hCopy) == hNext);
    HostTree expected = source;
    for (HostElem& elem : expected)
        if (!elem.id.empty()) elem.id = (elem.id + "_1").substr(0, QEL_TEXT_SIZE - 1);
    FUZZ_CHECK(IsSameTree(expected, Read(hCopy)));
    FUZZ_CHECK(IsSameTree(source, Read(hElem)));
    m_nElements += source.size();
    for (const HostElem& elem : source) m_nCost += DrawCost(elem.nType, elem.attr);
}

void CLife::Delete()
{
    const HQELELEM hElem = AnyElem();
    if (!MayRead()) return;
    const bool bLive = IsLive(hElem);
    const bool bRoot = bLive && hElem == Root();
    const HostTree tree = bLive ? Read(hElem) : HostTree();
    FUZZ_CHECK(QELDeleteElem(m_hEngine, hElem) == (bLive ? 1 : 0));
    Kill(tree);
    for (const HostElem& elem : tree)
        FUZZ_CHECK(QELGetElemType(m_hEngine, elem.hElem) == QEL_TYPE_NONE);
    m_nElements -= std::min(m_nElements, tree.size());
    if (!bRoot) return;
    FUZZ_CHECK(!Root() && QELGetType(m_hEngine) == 3 && !QELGetName(m_hEngine));
    FUZZ_CHECK(!QELSaveFile(m_hEngine, SAVED));
}

void CLife::SetId()
{
    const HQELELEM hElem = AnyElem();
    const std::string id = m_input.Text();
    const bool bGood = IsLive(hElem);
    FUZZ_CHECK(QELSetElemId(m_hEngine, hElem, id.c_str()) == (bGood ? 1 : 0));
    FUZZ_CHECK(!QELSetElemId(m_hEngine, hElem, nullptr));
    if (!bGood) {
        FUZZ_CHECK(!QELGetElemId(m_hEngine, hElem));
        return;
    }
    FUZZ_CHECK(id.substr(0, QEL_TEXT_SIZE - 1) == QELGetElemId(m_hEngine, hElem));
    if (hElem == Root()) FUZZ_CHECK(id.substr(0, QEL_TEXT_SIZE - 1) == QELGetName(m_hEngine));
}

void CLife::SetAttr()
{
    const HQELELEM hElem = AnyElem();
    const int nShort = m_input.Below(8) == 0 ? m_input.Byte() : 0;
    int nSize = 0;
    if (!IsLive(hElem)) {
        const std::string any(QEL_MAX_ATTR_SIZE, 'x');
        FUZZ_CHECK(!QELSetElemAttr(m_hEngine, hElem, any.data(), QEL_MAX_ATTR_SIZE));
        FUZZ_CHECK(!QELGetElemAttr(m_hEngine, hElem, nullptr, &nSize));
        return;
    }
    const int nType = QELGetElemType(m_hEngine, hElem);
    FUZZ_CHECK(QELGetElemAttr(m_hEngine, hElem, nullptr, &nSize));
    std::string before(static_cast<std::size_t>(nSize), 0);
    std::string after = before;
    FUZZ_CHECK(QELGetElemAttr(m_hEngine, hElem, before.data(), &nSize));
    std::string attr = before;
    PatchRecord(&attr, m_input);
    KeepCheap(nType, &attr);
    const bool bGood = nShort == 0 && IsGoodRecord(nType, attr);
    FUZZ_CHECK(QELSetElemAttr(m_hEngine, hElem, attr.data(), nSize - nShort) == (bGood ? 1 : 0));
    FUZZ_CHECK(QELGetElemAttr(m_hEngine, hElem, after.data(), &nSize));
    FUZZ_CHECK(after == (bGood ? TakenRecord(nType, attr) : before));
}

void CLife::SetRect()
{
    const HQELELEM hElem = AnyElem();
    const RECT rc{m_input.Number(), m_input.Number(), m_input.Number(), m_input.Number()};
    const bool bLive = IsLive(hElem);
    RECT rcOld{};
    const int nHas = QELGetElemRect(m_hEngine, hElem, &rcOld);
    FUZZ_CHECK(bLive || !nHas);
    FUZZ_CHECK(!nHas || (rcOld.left <= rcOld.right && rcOld.top <= rcOld.bottom));
    const int nResult = QELSetElemRect(m_hEngine, hElem, &rc);
    FUZZ_CHECK(!nResult || (bLive && nHas));
    FUZZ_CHECK(!QELSetElemRect(m_hEngine, hElem, nullptr));
}

void CLife::SetRefSize()
{
    const SIZE size{m_input.Number(), m_input.Number()};
    SIZE before{};
    SIZE after{};
    FUZZ_CHECK(QELGetRefSize(m_hEngine, &before));
    const int nResult = QELSetRefSize(m_hEngine, &size);
    FUZZ_CHECK(QELGetRefSize(m_hEngine, &after));
    const SIZE& expected = nResult ? size : before;
    FUZZ_CHECK(after.cx == expected.cx && after.cy == expected.cy);
    FUZZ_CHECK(nResult || !Root());
    FUZZ_CHECK(!QELSetRefSize(m_hEngine, nullptr));
}

// Handles that are none of a live engine fail every call.
void CLife::CallWithoutEngine()
{
    const HQELELEM hElem = AnyElem();
    HQELENGINE hDead = CreateQELEngine();
    FUZZ_CHECK(hDead && hDead != m_hEngine && DestroyQELEngine(hDead));
    for (const HQELENGINE h :
         {hDead, static_cast<HQELENGINE>(nullptr), reinterpret_cast<HQELENGINE>(hElem), m_hOther}) {
        if (h == m_hEngine) continue; // AnyElem gives that out as an element
        FUZZ_CHECK(!QELDeleteElem(h, h == m_hOther && hElem == m_hForeign ? nullptr : hElem));
        if (hElem || h != m_hOther) FUZZ_CHECK(!QELCreateElem(h, QEL_TYPE_RECT, hElem, hElem));
        FUZZ_CHECK(!QELMoveElem(h, hElem, nullptr, nullptr) && !QELCopyElem(h, hElem));
        if (h == m_hOther) continue;
        RECT rc{0, 0, 9, 9};
        FUZZ_CHECK(!QELDraw(h, m_dc.Get(), &rc, 1) && !QELGetQELRect(h, &rc));
        FUZZ_CHECK(!QELOpenFile(h, PATH) && !QELSaveFile(h, SAVED) && !QELCloseFile(h));
        FUZZ_CHECK(!QELRotate(h, 90) && QELGetType(h) == -1 && !QELGetRootElem(h));
        CallFilesWithoutEngine(h);
    }
}
