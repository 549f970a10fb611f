#include "fuzz/Life.h"

namespace {

constexpr int MAX_OPERATIONS = 200;

} // namespace

void CLife::Know(HQELELEM hElem)
{
    const auto [it, bNew] = m_known.try_emplace(hElem, true);
    FUZZ_CHECK(it->second); // a number that once was a handle is not given out again
    if (bNew) m_order.push_back(hElem);
}

void CLife::Kill(const HostTree& tree)
{
    for (const HostElem& elem : tree) m_known[elem.hElem] = false;
}

void CLife::KillAll()
{
    for (auto& entry : m_known) entry.second = false;
}

HostTree CLife::Read(HQELELEM hTop)
{
    HostTree tree = ReadHostTree(m_hEngine, hTop);
    m_nRead += tree.size();
    for (const HostElem& elem : tree) Know(elem.hElem);
    return tree;
}

int CLife::Depth(HQELELEM hElem) const
{
    int nDepth = 0;
    while ((hElem = Parent(hElem))) ++nDepth;
    return nDepth;
}

bool CLife::IsInside(HQELELEM hElem, HQELELEM hTop) const
{
    while (hElem && hElem != hTop) hElem = Parent(hElem);
    return hElem != nullptr;
}

// Mostly an element that lives; else one that died, one of another engine, a number that never was
// a handle, or none.
HQELELEM CLife::AnyElem()
{
    const uint8_t n = m_input.Byte();
    switch (n) {
    case 255:
        return nullptr;
    case 254:
        return m_hForeign;
    case 253: {
        const auto hMade = reinterpret_cast<HQELELEM>(static_cast<uintptr_t>(m_input.Word()));
        return m_known.count(hMade) || hMade == m_hForeign ? nullptr : hMade;
    }
    case 252:
        return reinterpret_cast<HQELELEM>(m_hEngine);
    default:
        break;
    }
    if (m_order.empty()) return nullptr;
    if (n >= 240) return m_order[(n - 240U) * 7 % m_order.size()]; // dead or alive
    // From both ends: the latest ones are what the program has just made.
    const std::size_t nCount = m_order.size();
    const bool bFromEnd = n >= 120;
    for (std::size_t nAt = n % 120U % nCount, nLeft = nCount; nLeft; --nLeft, ++nAt) {
        const std::size_t nPlace = nAt % nCount;
        const HQELELEM hElem = m_order[bFromEnd ? nCount - 1 - nPlace : nPlace];
        if (IsLive(hElem)) return hElem;
    }
    return nullptr;
}

void CLife::Open()
{
    KillAll();
    RECT rcBefore{};
    FUZZ_CHECK(QELGetQELRect(m_hEngine, &rcBefore));
    const int nResult = QELOpenFile(m_hEngine, PATH);
    FUZZ_CHECK((QELGetRootElem(m_hEngine) != nullptr) == (nResult == 1));
    FUZZ_CHECK((QELGetName(m_hEngine) != nullptr) == (nResult == 1));
    OpenInMemory(nResult);
    if (!nResult) { // without a drawing
        RECT rc{};
        FUZZ_CHECK(QELGetType(m_hEngine) == 3);
        FUZZ_CHECK(!QELSaveFile(m_hEngine, SAVED) && ReadHostFile(SAVED).empty());
        FUZZ_CHECK(!QELCreateElem(m_hEngine, QEL_TYPE_RECT, nullptr, nullptr));
        FUZZ_CHECK(!QELGetDrawGraphRect(m_hEngine, &rc) && !QELSetBlinkState(m_hEngine, 1));
        FUZZ_CHECK(!QELParamsSupported(m_hEngine) && !QELSetStatus(m_hEngine, 1));
        FUZZ_CHECK(QELGetQELRect(m_hEngine, &rc) && ::EqualRect(&rc, &rcBefore));
        FUZZ_CHECK(QELNewFile(m_hEngine));
    }
    SIZE size{};
    RECT rc{};
    FUZZ_CHECK(QELGetRefSize(m_hEngine, &size) && QELGetQELRect(m_hEngine, &rc));
    FUZZ_CHECK(rc.left == rcBefore.left && rc.top == rcBefore.top);
    FUZZ_CHECK(static_cast<DWORD>(rc.right) ==
               static_cast<DWORD>(rc.left) + static_cast<DWORD>(size.cx));
    FUZZ_CHECK(static_cast<DWORD>(rc.bottom) ==
               static_cast<DWORD>(rc.top) + static_cast<DWORD>(size.cy));
    FUZZ_CHECK(QELGetType(m_hEngine) >= 0 && QELGetType(m_hEngine) <= 2);
    const HostTree tree = ReadAll();
    m_nElements = tree.size();
    for (const HostElem& elem : tree) m_nCost += DrawCost(elem.nType, elem.attr);
}

void CLife::Run()
{
    for (int n = 0; n < MAX_OPERATIONS && !m_input.IsAtEnd(); ++n) Operate();
}

void CLife::Operate()
{
    switch (m_input.Below(26)) {
    case 0:
    case 1:
    case 2:
        return Create();
    case 3:
    case 4:
        return Move();
    case 5:
        return Copy();
    case 6:
        return Delete();
    case 7:
        return SetId();
    case 8:
    case 9:
        return SetAttr();
    case 10:
        return SetRect();
    case 11:
        return SetRefSize();
    case 12:
        return Draw();
    case 13:
        return Rotate();
    case 14:
        return SetParam();
    case 15:
        return SetStatus();
    case 16:
    case 17:
        return SetOneValue();
    case 18:
        SaveAndCompare();
        return;
    case 19:
        return DrawShortOfObjects();
    case 20:
        return SaveInTrouble();
    case 21:
        return FindPlaces();
    case 22:
    case 23:
        return SetLive();
    case 24:
        return Update();
    default:
        return CallWithoutEngine();
    }
}

// The disk fills up, or writes and reads give little at a time: the old or the new file is whole.
void CLife::SaveInTrouble()
{
    kernel::Faults faults;
    if (m_input.Below(2)) faults.nSpace = static_cast<int64_t>(m_input.Byte()) * 16;
    faults.nMostWritten = m_input.Below(4) ? 0 : 1 + m_input.Byte();
    faults.nMostRead = m_input.Below(4) ? 0 : 1 + m_input.Byte();
    if (!MayRead()) return;
    const std::string before = ReadHostFile(SAVED);
    const HostTree tree = ReadAll();
    kernel::SetFaults(faults);
    const int nResult = QELSaveFile(m_hEngine, SAVED);
    FUZZ_CHECK(nResult == 0 || !tree.empty());
    if (nResult) { // whole, although it was written and is read in pieces
        const HQELENGINE hAgain = CreateQELEngine();
        FUZZ_CHECK(QELOpenFile(hAgain, SAVED));
        FUZZ_CHECK(IsSameTree(Reopened(tree), ReadHostTree(hAgain, QELGetRootElem(hAgain))));
        FUZZ_CHECK(DestroyQELEngine(hAgain));
    } else {
        FUZZ_CHECK(ReadHostFile(SAVED) == before);
    }
    kernel::SetFaults({});
    FUZZ_CHECK(IsSameTree(tree, ReadAll()));
}

// Saves, opens in a second engine, compares, and saves that. False without a drawing.
bool CLife::SaveAndCompare()
{
    if (!MayRead()) return Root() != nullptr;
    const HostTree tree = ReadAll();
    FUZZ_CHECK(QELSaveFile(m_hEngine, SAVED) == (tree.empty() ? 0 : 1));
    if (tree.empty()) return false;
    const std::string saved = ReadHostFile(SAVED);
    FUZZ_CHECK(!saved.empty() && saved.find('\0') == saved.size() - 1);
    FUZZ_CHECK(IsSameTree(tree, ReadAll())); // saving changes nothing
    CompareWithMemory(saved);
    FUZZ_CHECK(QELSaveFile(m_hEngine, SAVED) && ReadHostFile(SAVED) == saved);

    const HQELENGINE hAgain = CreateQELEngine();
    FUZZ_CHECK(QELOpenFile(hAgain, SAVED)); // a saved drawing opens
    const HostTree again = ReadHostTree(hAgain, QELGetRootElem(hAgain));
    const HostTree expected = Reopened(tree);
    FUZZ_CHECK(IsSameTree(again, expected));
    FUZZ_CHECK(QELSaveFile(hAgain, SAVED));
    if (IsSameTree(again, tree)) FUZZ_CHECK(ReadHostFile(SAVED) == saved);
    const HostTree twice = Reopened(again);
    FUZZ_CHECK(QELOpenFile(hAgain, SAVED));
    FUZZ_CHECK(IsSameTree(twice, ReadHostTree(hAgain, QELGetRootElem(hAgain))));
    FUZZ_CHECK(DestroyQELEngine(hAgain));
    return true;
}
