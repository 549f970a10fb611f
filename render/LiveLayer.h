// What the host sets of single elements while a drawing is shown: values, texts, colours, what is
// hidden and how far a value can be trusted. It lies above what the elements have, ends with the
// drawing, and an element without it costs nothing: its state stands here, found by the element.
#pragma once

#include <windows.h>

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

// The way that a shown value goes to a new one.
struct LiveMove {
    double fFrom;
    double fTurn;   // what a full circle counts, when the way leads over its end; 0: it does not
    double fLow;    // where the circle begins
    uint32_t nTime; // of the whole way, in milliseconds
    uint32_t nGone; // of it; all of it: what is shown stands
};

struct LiveState {
    CQELViewElm* pElm;
    LiveState* pNextInCell;
    LiveState* pNext; // in the list of all
    LiveState* pPrev;

    double fValue;  // as it was set
    double* pfPins; // LIVE_PINS of them, of a share chart; null while none was set
    char* pszText;  // null: the element's own
    LiveMove move;
    uint32_t nEaseTime; // of the ways to come
    LiveColor colors[LIVE_COLOR_COUNT];
    LiveQuality nQuality; // as the host has set it
    bool bHasValue;
    bool bIsNumber; // the value is one; else nothing of it is shown
    bool bHidden;

    [[nodiscard]] bool IsMoving() const { return move.nGone < move.nTime; }
    [[nodiscard]] double ShownValue() const; // on its way
    [[nodiscard]] LiveQuality ShownQuality() const;
    int Advance(uint32_t nTime); // by that many milliseconds; 1 while it is still on its way
    void TakeOtherValue()        // the element has got one in another way
    {
        bHasValue = false;
        move.nGone = move.nTime;
    }
};

class CLiveLayer {
public:
    CLiveLayer() = default;
    ~CLiveLayer() { Clear(); }
    CLiveLayer(const CLiveLayer&) = delete;
    CLiveLayer& operator=(const CLiveLayer&) = delete;

    [[nodiscard]] LiveState* Find(const CQELViewElm* pElm) const;
    // The state of an element, made when there is none; null without memory.
    [[nodiscard]] LiveState* Make(CQELViewElm* pElm);
    void Drop(CQELViewElm* pElm);
    void Clear();
    [[nodiscard]] LiveState* First() const { return m_pFirst; }
    [[nodiscard]] uint32_t NextSerial() { return ++m_nSerial; }
    // Some element is hidden, or has colours for what is in it.
    [[nodiscard]] bool IsUsed() const { return m_pFirst != nullptr; }

    // 0 without memory: then the text is as before. Null: the element's own again.
    static int SetText(LiveState* pState, const char* pszText);

private:
    [[nodiscard]] LiveState** CellOf(const CQELViewElm* pElm) const;
    int Grow();

    LiveState** m_ppCells = nullptr; // 2 to the power m_nBits of them
    uint32_t m_nBits = 0;
    uint32_t m_nCount = 0;
    uint32_t m_nSerial = 0;
    LiveState* m_pFirst = nullptr;
};
