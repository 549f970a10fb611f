// One host with one engine: the operations of a whole life, each of which checks every answer
// against what include/QELEngine.h promises. LifeFuzzer.cpp drives it. Life.cpp keeps the accounts
// of handles and of work and opens and saves, LifeValues.cpp draws and sets values, LifePlaces.cpp
// asks where things are, LifeLive.cpp names elements by identifier and updates, LifeEdits.cpp
// edits, LifeFiles.cpp opens and saves in memory and by wide paths, LifePictures.cpp sets how the
// picture is made and has it made in memory.
#pragma once

#include "fuzz/Host.h"

#include <map>

constexpr char PATH[] = "fuzz-life.qel";
constexpr char SAVED[] = "fuzz-life-saved.qel";

constexpr std::size_t MAX_ELEMENTS = 1000;   // copies double a tree
constexpr std::size_t MAX_READ_WORK = 20000; // elements read in all, for speed
constexpr std::size_t MAX_DRAW_WORK = 20000; // figures drawn in all, likewise
constexpr DWORD MAX_TICKS = 100;             // ten thousand are drawn, and take their time

class CLife {
public:
    explicit CLife(CInput& input)
        : m_input(input), m_bOwnValues(input.Below(2) == 1), m_hEngine(CreateQELEngine())
    {
        FUZZ_CHECK(m_hEngine);
        m_hOther = CreateQELEngine();
        FUZZ_CHECK(QELNewFile(m_hOther));
        m_hForeign = QELGetRootElem(m_hOther);
    }
    ~CLife()
    {
        FUZZ_CHECK(DestroyQELEngine(m_hEngine));
        FUZZ_CHECK(!DestroyQELEngine(m_hEngine));
        FUZZ_CHECK(QELGetRootElem(m_hOther) == m_hForeign); // an engine of its own
        FUZZ_CHECK(DestroyQELEngine(m_hOther));
        for (const auto& [hElem, bLive] : m_known)
            FUZZ_CHECK(QELGetElemType(m_hEngine, hElem) == QEL_TYPE_NONE);
    }
    CLife(const CLife&) = delete;
    CLife& operator=(const CLife&) = delete;

    void Open();
    void DrawAll();
    void PushAll();
    void Run();
    bool SaveAndCompare();
    [[nodiscard]] bool IsCheap() const { return 4 * m_nCost < MAX_DRAW_WORK; }

private:
    void Operate();
    void Create();
    void Move();
    void Copy();
    void Delete();
    void SetId();
    void SetAttr();
    void SetRect();
    void SetRefSize();
    void Draw();
    void Rotate();
    void SetParam();
    void SetStatus();
    void SetOneValue();
    void SetLive();
    void SetLiveValue(const std::string& id);
    void SetLiveSelector(const std::string& id);
    void SetWideTexts(const std::string& id);
    void SetCrispness();
    void RenderPicture();
    void Update();
    std::string SomeId();
    void FindPlaces();
    void FindAt(POINT pt);
    void FindByIdentifier(const std::string& id);
    void MapUnits(HQELELEM hElem, POINT pt);
    [[nodiscard]] bool IsSmall(HQELELEM hElem, POINT pt) const;
    void CallWithoutEngine();
    void DrawShortOfObjects();
    void SaveInTrouble();
    void OpenInMemory(int nResult) const;
    void TakeTextPage(HQELENGINE h) const;
    void CompareWithMemory(const std::string& saved);
    static void CallFilesWithoutEngine(HQELENGINE h);
    void SetValue(DWORD nId, DWORD nSelector, DWORD nValue);
    void SetValuef(DWORD nId, DWORD nSelector, float fValue);
    std::vector<DWORD> Ids();
    void DrawAt(const RECT& rcQel, const RECT& rcUpdate, DWORD nFlags);

    [[nodiscard]] HQELELEM Root() const { return QELGetRootElem(m_hEngine); }
    [[nodiscard]] HQELELEM Parent(HQELELEM h) const { return QELGetParentElem(m_hEngine, h); }
    [[nodiscard]] bool IsLive(HQELELEM hElem) const
    {
        const auto it = m_known.find(hElem);
        return it != m_known.end() && it->second;
    }
    [[nodiscard]] int Depth(HQELELEM hElem) const;
    [[nodiscard]] bool IsInside(HQELELEM hElem, HQELELEM hTop) const;
    HostTree Read(HQELELEM hTop);
    HostTree ReadAll() { return Read(Root()); }
    [[nodiscard]] bool MayRead() const { return m_nRead < MAX_READ_WORK; }
    void Know(HQELELEM hElem);
    void Kill(const HostTree& tree);
    void KillAll();
    HQELELEM AnyElem();

    CInput& m_input;
    bool m_bOwnValues;
    HQELENGINE m_hEngine;
    HQELENGINE m_hOther = nullptr;
    HQELELEM m_hForeign = nullptr;
    std::map<HQELELEM, bool> m_known; // every handle ever given out, and whether it lives
    std::vector<HQELELEM> m_order;    // the same in the order in which they were met
    std::size_t m_nRead = 0;
    std::size_t m_nDrawn = 0;
    std::size_t m_nElements = 0; // about as many as there are
    std::size_t m_nCost = 0;     // about as much as a draw costs
    CHostDc m_dc;
};
