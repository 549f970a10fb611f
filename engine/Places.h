// What stands where in the picture: what each element paints at most, found by place without a walk
// of what is elsewhere. The index is made at the first call that needs it, and made anew after
// anything has changed that moves what elements paint.
#pragma once

#include "render/QELViewElm.h"

#include <cstddef>
#include <cstdint>

class CQELDocElm;

// An element that paints by itself, with what it paints on, in device units.
struct PaintedElm {
    RECT rc;
    CQELViewElm* pView;
    CQELDocElm* pDoc; // null in show-only mode
};

class CPlaces {
public:
    CPlaces() noexcept = default;
    ~CPlaces() { Forget(); }
    CPlaces(const CPlaces&) = delete;
    CPlaces& operator=(const CPlaces&) = delete;

    void Forget();
    // Makes the index unless it holds still. pDocRoot: null where there is no document. 0 without
    // memory: then nothing is found.
    int Make(CQELViewElm* pRoot, CQELDocElm* pDocRoot, const QelRect& rcQel);
    // What the whole drawing paints on at most, in pixels: asked of all elements and kept, with or
    // without the index. False where nothing is painted.
    bool FindPicture(const CQELViewElm* pRoot, const QelRect& rcQel, RECT* prcOut);

    // The elements by number, in the order in which they are drawn; a meter after its face.
    [[nodiscard]] uint32_t Count() const { return m_nCount; }
    [[nodiscard]] const PaintedElm& At(uint32_t nNumber) const { return m_pElms[nNumber]; }

    // Looks for all elements that paint within a rectangle, and keeps their numbers in that order
    // until the next call. Result: how many there are.
    uint32_t FindIn(const RECT& rc);
    [[nodiscard]] uint32_t Found(uint32_t n) const { return m_pnFound[n]; }

    // The last drawn of the elements near a point that are hit there and shown now; null for none.
    [[nodiscard]] const PaintedElm* Topmost(POINT pt, const QelRect& rcQel) const;

private:
    // What paints in a part of the picture: FAN elements, or FAN nodes of the level below.
    struct Node {
        RECT rc;
        uint32_t nLast; // the highest number in it
    };
    struct Level {
        uint32_t nFirst; // in the nodes
        uint32_t nCount;
    };
    static constexpr uint32_t FAN = 8;
    static constexpr int MOST_LEVELS = 12; // 8 to that power are more than 32 bits count

    void ForgetIndex();
    int TakeBlock(uint32_t nCount);
    bool SortByPlace();
    void MakeNodes();
    [[nodiscard]] Node NodeOver(uint32_t nLevel, uint32_t nNode) const;
    template <class Visit>
    void Walk(const RECT& rc, const Visit& visit) const;
    template <class Visit>
    void WalkNode(const RECT& rc, int nLevel, uint32_t nNode, const Visit& visit) const;

    PaintedElm* m_pElms = nullptr; // one block, which begins with them
    uint32_t* m_pnByPlace = nullptr;
    uint32_t* m_pnFound = nullptr;
    Node* m_pNodes = nullptr;
    uint32_t m_nCount = 0;
    int m_nLevels = 0;
    Level m_levels[MOST_LEVELS] = {};
    QelRect m_rcQel; // what it holds for
    CQELViewElm::ChangeStamp m_changes;
    RECT m_rcPicture{0, 0, 0, 0};
    QelRect m_rcPictureQel;                    // what it holds for
    CQELViewElm::ChangeStamp m_pictureChanges; // none: it is not known
};
