// The renderer that an engine owns: the tree of view elements that mirrors the document tree, the
// reference size, the registry of the dynamic elements that the host drives, and the four host
// parameters. It draws onto the device context that the host passes and keeps nothing of it.
#pragma once

#include "render/HostDriven.h"
#include "render/QELViewElm.h"
#include "render/QELViewList.h"
#include "render/QELViewQEL.h"

class CElementTypes;

class CQELView {
public:
    explicit CQELView(const CElementTypes& types, SIZE refSize = {50, 50}) noexcept
        : m_types(types), m_refSize(refSize)
    {
    }
    virtual ~CQELView();
    CQELView(const CQELView&) = delete;
    CQELView& operator=(const CQELView&) = delete;

    int SetRefSize(SIZE size); // with every element of the tree; any size is taken
    int GetRefSize(SIZE* pSize) const;
    // The code page of all texts, of drawings to come as well.
    void SetTextPage(uint32_t nPage);
    // Elements that are made between the two lie in the view's pool, beginning with the memory that
    // is spare; all others are on the heap, so that what is deleted is given back at once.
    void BeginLoad(CArena& spare);
    void EndLoad();
    int NewTree(); // clears, then makes a root
    void Clear();

    // A new element as the last child of pParent or, with pAfter, after that sibling. Type 0
    // replaces the root. 0 for a type without a view.
    int CreateElement(CQELViewElm* pParent, CQELViewElm* pAfter, int32_t nType,
                      CQELViewElm** ppOut);
    int DeleteElement(CQELViewElm* pElm);
    // Without pAfter the element becomes the first child; with a null parent it leaves the picture
    // and stays owned by the view. What comes into the picture takes the drawing's blink phase, and
    // what moves inside of it keeps its own.
    int MoveElement(CQELViewElm* pElm, CQELViewElm* pParent, CQELViewElm* pAfter);
    static int DuplicateElement(CQELViewElm* pElm, CQELViewElm** ppOut);

    // Only what the host drives has a place in the registry; the others succeed without effect.
    int Register(CQELViewElm* pElm);
    // Places in the lists for an element and all in it; the slots stay as they are. 0 without
    // memory: then none of them has one.
    int ReservePlaces(CQELViewElm* pTop);
    void GiveUpPlaces(CQELViewElm* pTop);
    int Unregister(CQELViewElm* pElm);

    // The result of a set is that of the frame, pattern or draw region that took the value: 0 when
    // there is none, although the value is kept and reaches the shapes.
    int SetParam(int32_t nIndex, uint32_t nValue);
    int GetParam(int32_t nIndex, uint32_t* pnValue) const;
    int SetStatus(uint32_t nStatus); // 0 without a status element
    int GetStatus(uint32_t* pnStatus) const;

    // Values of scales and meters by their host id. 0: no element of that id knows the selector, or
    // none took the value. The float forms know the value and the base value.
    int SetScaleParam(uint32_t nId, uint32_t nSelector, uint32_t nValue);
    int GetScaleParam(uint32_t nId, uint32_t nSelector, uint32_t* pnValue) const;
    int SetScaleParam(uint32_t nId, uint32_t nSelector, float fValue);
    int GetScaleParam(uint32_t nId, uint32_t nSelector, float* pfValue) const;
    [[nodiscard]] bool HasHostId(uint32_t nId) const; // any scale or meter

    // A null element means the root, in these.
    int Draw(CQELViewElm* pElm, HDC hdc, const QelRect& rcQel, uint32_t nFlags);
    // Whether a draw of the root with these flags paints all of it.
    [[nodiscard]] bool DrawsFully(uint32_t nFlags) const;
    int SetBlink(CQELViewElm* pElm, int32_t nPhase);
    int Rotate(CQELViewElm* pElm, POINT ptCentre, int32_t nAngle);
    int MoveX(CQELViewElm* pElm, int32_t nDx);
    int MoveY(CQELViewElm* pElm, int32_t nDy);

    // Lets the clocks of updates show a time; those whose second is another paint anew.
    void SetClock(const ClockTimes& times);

    int GetDrawGraphRect(const QelRect& rcQel, RECT* prcOut) const; // 0 without a draw region
    [[nodiscard]] CQELViewQEL* Root() const { return m_pRoot; }
    [[nodiscard]] CLiveLayer& Live() { return m_live; }
    [[nodiscard]] CDirtyArea& Dirty() { return m_dirty; }

private:
    void DeleteAll();
    void DropLive(CQELViewElm* pTop);
    [[nodiscard]] CQELViewElm* MakeElement(int32_t nType);
    [[nodiscard]] bool IsInPicture(const CQELViewElm* pElm) const;
    int SetSlot(CQELViewElm* pElm, bool bOn);
    static void SetStatusOf(CQELViewElm* pElm, uint32_t nStatus);
    int SetElementParam(int32_t nIndex, uint32_t nValue);
    CQELViewList* ListOf(int32_t nType);
    [[nodiscard]] CHostDriven* FindScale(uint32_t nId, uint32_t nSelector) const;
    [[nodiscard]] CHostDriven* FindMeter(uint32_t nId, uint32_t nSelector) const;
    [[nodiscard]] bool WantsFullRedraw() const;

    const CElementTypes& m_types;
    CPool m_pool;
    CLiveLayer m_live;
    CDirtyArea m_dirty;
    bool m_bLoads = false; // elements are made in the pool
    CQELViewQEL* m_pRoot = nullptr;
    SIZE m_refSize;
    uint32_t m_nTextPage = PAGE_ANSI;
    CHostDriven* m_pFrame = nullptr; // the registered elements belong to the tree
    CHostDriven* m_pPattern = nullptr;
    CHostDriven* m_pDrawRgn = nullptr;
    CQELViewList m_scales;
    CQELViewList m_statuses;
    CQELViewList m_meters;
    uint32_t m_nParams[QEL_PARAM_COUNT] = {0xFFFFFF, 0, 0xFFFFFF, 0};
    CDetachedList<CQELViewElm> m_detached; // out of the picture
};
