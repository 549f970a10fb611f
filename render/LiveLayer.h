// What the host sets of single elements while a drawing is shown: values, texts, colours, what is
// hidden and how far a value can be trusted. It lies above what the elements have, ends with the
// drawing, and an element without it costs nothing: its state stands here, found by the element.
#pragma once

#include "base/ClockTimes.h"

#include <cstddef>
#include <cstdint>

class CQELViewElm;

enum LiveColorPlace { LIVE_PEN, LIVE_FORE, LIVE_BACK, LIVE_COLOR_COUNT };
enum LiveQuality : uint8_t { QUALITY_GOOD, QUALITY_STALE, QUALITY_BAD, QUALITY_COUNT };

constexpr int LIVE_PINS = 32;

struct LiveColor {
    COLORREF clr;
    uint32_t nSerial; // the later of two settings wins; 0: there is none
};

// What an element keeps for the updates of its picture.
struct LivePicture {
    LivePicture() = default;
    virtual ~LivePicture() = default;
    LivePicture(const LivePicture&) = delete;
    LivePicture& operator=(const LivePicture&) = delete;
};

// The way that a shown value goes to a new one.
struct LiveMove {
    uint32_t nTime; // of the whole way, in milliseconds
    uint32_t nGone; // of it; all of it: what is shown stands
    double fFrom;
    double fTurn; // what a full circle counts, when the way leads over its end; 0: it does not
    double fLow;  // where the circle begins
};

// What a new value reads and writes stands at the beginning, in one line of the cache.
struct alignas(64) LiveState {
    CQELViewElm* pElm;    // null: it is nobody's
    LiveState* pNext;     // of those that are nobody's, or whose element has not got the value yet
    double* pfPins;       // LIVE_PINS of them, of a share chart; null while none was set
    uint32_t nEaseTime;   // of the ways to come
    LiveQuality nQuality; // as the host has set it
    bool bHasValue : 1;
    bool bIsNumber : 1; // the value is one; else nothing of it is shown
    bool bHidden : 1;
    bool bWaits : 1; // the element has not got the value yet
    double fValue;   // as it was set
    LiveMove move;

    LiveState* pNextInCell;
    char* pszText;         // null: the element's own
    LivePicture* pPicture; // null while there was no update
    LiveColor colors[LIVE_COLOR_COUNT];

    [[nodiscard]] bool IsMoving() const { return move.nGone < move.nTime; }
    // Another number changes nothing but what the element shows, and at once.
    [[nodiscard]] bool MayWait() const
    {
        return bHasValue && bIsNumber && !nEaseTime && !IsMoving();
    }
    [[nodiscard]] double ShownValue() const; // on its way
    [[nodiscard]] LiveQuality ShownQuality() const;
    int Advance(uint32_t nTime); // by that many milliseconds; 1 while it is still on its way
    void TakeOtherValue()        // the element has got one in another way
    {
        bHasValue = false;
        move.nGone = move.nTime;
    }
};
static_assert(sizeof(LiveState) == 128, "two lines of the cache");

class CLiveLayer {
public:
    CLiveLayer() = default;
    ~CLiveLayer() { Clear(); }
    CLiveLayer(const CLiveLayer&) = delete;
    CLiveLayer& operator=(const CLiveLayer&) = delete;

    // A state keeps its place, and the place stays one until Clear: whoever remembers it sees by
    // the element whether it is still the same.
    [[nodiscard]] LiveState* Find(const CQELViewElm* pElm) const;
    // The state of an element, made when there is none; null without memory.
    [[nodiscard]] LiveState* Make(CQELViewElm* pElm);
    void Drop(CQELViewElm* pElm);
    void Clear();
    template <class F>
    void ForEach(F&& f) const // which may drop the one that it is handed
    {
        for (const Places* pPlaces = m_pPlaces; pPlaces; pPlaces = pPlaces->pNext)
            for (LiveState* p = pPlaces->pFirst; p != pPlaces->pEnd; ++p)
                if (p->pElm) f(*p);
    }
    [[nodiscard]] ClockTimes& Clock() { return m_clock; }
    [[nodiscard]] uint32_t NextSerial() { return ++m_nSerial; }
    // Some element is hidden, or has colours for what is in it.
    [[nodiscard]] bool IsUsed() const { return m_nCount != 0; }

    // A number that the element gets with the next HandOver: a host sets thousands of them in a
    // row, and of those that come until somebody asks the last one counts.
    void Await(LiveState* pState, double fValue)
    {
        pState->fValue = fValue;
        if (pState->bWaits) return;
        pState->bWaits = true;
        pState->pNext = m_pWaiting;
        m_pWaiting = pState;
    }
    // Before whatever reads or changes what elements show.
    void HandOver()
    {
        if (m_pWaiting) HandOverAll();
    }

    // How often an element could not be given something for want of memory.
    [[nodiscard]] uint32_t Lacks() const { return m_nLacks; }
    void NoteLack() { ++m_nLacks; }

    // 0 without memory: then the text is as before. Null: the element's own again.
    static int SetText(LiveState* pState, const char* pszText);

private:
    static constexpr uint32_t FIRST_PLACES = 2;

    [[nodiscard]] LiveState** CellOf(const CQELViewElm* pElm) const;
    int Grow();
    void LinkInCell(LiveState* pState) const;
    LiveState* TakePlace();
    void PutFree(LiveState* pState);
    int AddPlaces();
    void HandOverAll();
    struct Places { // a block of them, in whole lines of the cache
        Places* pNext;
        LiveState* pFirst;
        LiveState* pEnd;
    };

    LiveState** m_ppCells = nullptr; // 2 to the power m_nBits of them
    uint32_t m_nBits = 0;
    uint32_t m_nCount = 0;
    uint32_t m_nSerial = 0;
    uint32_t m_nLacks = 0;
    LiveState* m_pWaiting = nullptr;
    LiveState* m_pFree = nullptr; // places that are nobody's
    Places* m_pPlaces = nullptr;
    uint32_t m_nMorePlaces = FIRST_PLACES;
    ClockTimes m_clock{};
};
