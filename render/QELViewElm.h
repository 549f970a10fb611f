// The base class of every node of the view tree: the tree links, the type, the element's own copy
// of the reference size and the blink phase, and the operations by which the view draws, turns,
// moves, loads and recolours elements. By default each passes the call on to every child in order.
#pragma once

#include "base/Pool.h"
#include "base/QelRect.h"
#include "base/TreeLinks.h"
#include "document/ShapeForms.h"
#include "include/QELEngine.h"

#include <cstdint>
#include <new>

class CHostDriven;
class CQELViewQEL;
class CLiveLayer;
struct LiveState;
struct UnitMap;
struct ViewListNode;

// Beside the flags that hosts give: a draw that changes nothing of what their draws remember.
constexpr uint32_t DRAW_UPDATE = 0x40000000;
// A draw of a part, after which other parts of the same picture follow.
constexpr uint32_t DRAW_MORE = 0x20000000;
constexpr uint32_t DRAW_INTERNAL = DRAW_UPDATE | DRAW_MORE;

class CQELViewElm : public CTreeLinks<CQELViewElm>, public CPooled<CQELViewElm> {
public:
    CQELViewElm(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept
        : CPooled(pPool), m_nRefW(nRefW), m_nRefH(nRefH)
    {
    }
    virtual ~CQELViewElm();
    // When a constructor throws. Without a size the block stays in the pool until that is cleared.
    static void operator delete(void* p) noexcept { std::free(p); }
    static void operator delete(void* p, CPool* pPool) noexcept
    {
        if (!pPool) std::free(p);
    }
    static void operator delete(CQELViewElm* p, std::destroying_delete_t, std::size_t nSize)
    {
        DeletePooled(p, nSize);
    }
    CQELViewElm(const CQELViewElm&) = delete;
    CQELViewElm& operator=(const CQELViewElm&) = delete;

    virtual int NewInstance(CQELViewElm** ppOut) const = 0;
    virtual int Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut);
    virtual int Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags);
    virtual int Rotate(POINT ptCentre, int32_t nAngle);
    virtual int MoveX(int32_t nDx);
    virtual int MoveY(int32_t nDy);
    virtual int GetAttrBlockSize(int* pnSize) const = 0;
    virtual int GetAttrBlock(void* pBlock) const = 0;
    virtual int SetAttrBlock(const void* pBlock) = 0;
    virtual int SetColorParam(uint32_t nValue);
    virtual int SetDraftParam(uint32_t nValue);
    virtual int SetDraftForeParam(uint32_t nValue);
    virtual int SetDraftBackParam(uint32_t nValue);
    [[nodiscard]] virtual uint32_t GetParamMask() const;
    // Whether it has a colour that blinks.
    [[nodiscard]] virtual bool Blinks() const { return false; }

    // What a full draw of it paints on at most, in device units, pressed or not and whether it is
    // shown now or not; rather too much than too little. False, and nothing is written, for none.
    virtual bool PaintedRect(const QelRect& rcQel, RECT* prcOut) const;
    // Whether a device point is on the element itself, without its children.
    [[nodiscard]] virtual bool IsHit(const QelRect&, POINT) const { return false; }
    // Whether a draw of it draws its children, each by itself.
    [[nodiscard]] virtual bool DrawsChildren() const { return true; }
    // Whether the element lets itself and what is in it be seen now.
    [[nodiscard]] virtual bool IsShown() const { return true; }
    // How its geometry is mapped. False when it cannot be.
    virtual bool MapUnits(const QelRect& rcQel, UnitMap* pOut) const;

    // Whether there was no memory for what an element of its class holds.
    [[nodiscard]] virtual bool LacksMemory() const { return false; }

    // Draws it as the host has it shown by its identifier: not while it is hidden.
    int Show(HDC hdc, const QelRect& rcQel, uint32_t nFlags)
    {
        return m_bLive ? ShowLive(hdc, rcQel, nFlags) : Draw(hdc, rcQel, nFlags);
    }
    [[nodiscard]] bool IsHiddenItself() const { return m_bLive && FindHidden(); }
    // It, or an element that it is in, is hidden; looked for below pTop.
    [[nodiscard]] bool IsHidden(const CQELViewElm* pTop = nullptr) const;
    // It has a mark over it, for a quality that is not good.
    [[nodiscard]] bool IsMarked() const { return m_bLive && FindMark(); }
    // What the host has set by its identifier; null for nothing. It is marked when there may be
    // something, of it or of what it is in.
    [[nodiscard]] LiveState* Live() const { return m_bLive ? FindLive() : nullptr; }
    [[nodiscard]] bool IsLive() const { return m_bLive; }
    void SetLive(bool bLive) { m_bLive = bLive; }
    // The same, made when there is nothing; null without memory, and outside of a drawing.
    [[nodiscard]] LiveState* MakeLive();

    // It paints something else than before, in the place where it is, or, the second, may come to
    // do so in another place. For what is not in a drawing they do nothing.
    void Touch()
    {
        if (!m_bTouched) TouchAnew();
    }
    void TouchPlace() const;
    [[nodiscard]] bool IsTouched() const { return m_bTouched; }
    void SetTouched(bool bTouched) { m_bTouched = bTouched; }

    // What the host drives of it; null for the elements that only draw.
    [[nodiscard]] virtual CHostDriven* HostSide() { return nullptr; }

    // Unlinks this element and links it under pParent: after pAfter, or else as the first child.
    void Move(CQELViewElm* pParent, CQELViewElm* pAfter);
    void Detach(); // destroys all children, then unlinks

    [[nodiscard]] int32_t Type() const { return m_nType; }
    [[nodiscard]] bool IsShape() const { return IsShapeType(m_nType); } // a CQELViewShape

    // Another number after all that may move what elements of the same tree paint or change which
    // colours they leave set: geometry, styles, texts, links, sizes. Not after values, colours and
    // the blink phase. The root counts; what is in no root has no number.
    struct ChangeStamp { // of words, since pools align to no more than pointers
        uint32_t nLow = 0;
        uint32_t nHigh = 0;
        bool operator==(const ChangeStamp&) const = default;
        [[nodiscard]] bool IsNone() const { return (nLow | nHigh) == 0; }
    };
    [[nodiscard]] ChangeStamp Changes() const;
    void LinksChanged() { NoteChange(); }
    // What it paints by host values has changed: in the place where it is, so that only the groups
    // around it look anew, or with its place.
    void PaintChanged() const;
    void PlaceChanged() { NoteChange(); }

    void SetRefSize(int32_t nRefW, int32_t nRefH); // with all descendants
    [[nodiscard]] int32_t RefW() const { return m_nRefW; }
    [[nodiscard]] int32_t RefH() const { return m_nRefH; }
    void SetBlink(int32_t nPhase);                               // with all descendants
    [[nodiscard]] int32_t BlinkPhase() const { return m_bDark; } // 1 for any but 0

    // A colour as it is drawn now: black for a blinking one in the dark phase.
    [[nodiscard]] COLORREF BlinkColor(uint32_t clr) const
    {
        return m_bDark && (clr & QEL_COLOR_BLINK) ? 0 : clr & ~QEL_COLOR_BLINK;
    }

protected:
    [[nodiscard]] const CQELViewQEL* Drawing() const; // the root of its drawing; null for none
    // The code page of its drawing's texts; PAGE_ANSI for none, and outside of a drawing.
    [[nodiscard]] uint32_t TextPage() const;
    void SetType(int32_t nType) { m_nType = static_cast<int8_t>(nType); }
    void NoteChange();

private:
    void TouchAnew();
    int ShowLive(HDC hdc, const QelRect& rcQel, uint32_t nFlags);
    [[nodiscard]] LiveState* FindLive() const;
    [[nodiscard]] CLiveLayer* LiveLayer() const;
    [[nodiscard]] bool FindHidden() const;
    [[nodiscard]] bool FindMark() const;
    void MarkQuality(HDC hdc, const QelRect& rcQel, const LiveState& state) const;

    friend class CQELView; // keeps the lists of dynamic elements

    int32_t m_nRefW;
    int32_t m_nRefH;
    ViewListNode* m_pListNode = nullptr; // null while the element is in none of the view's lists
    // Last: a derived class's small fields fill what is left of the word.
    int8_t m_nType = QEL_TYPE_NONE;
    bool m_bDark : 1 = false; // the phase in which blinking colours are black
    bool m_bLive : 1 = false;
    bool m_bTouched : 1 = false; // since the last update of the picture
};

// A new element with all that it holds; null without memory.
template <class T>
CQELViewElm* MakeWhole(CPool* pPool, int32_t nRefW, int32_t nRefH)
{
    static_assert(alignof(T) <= alignof(void*), "a pool aligns to no more");
    CQELViewElm* pElm = new (pPool) T(nRefW, nRefH, pPool);
    if (!pElm || !pElm->LacksMemory()) return pElm;
    delete pElm;
    return nullptr;
}

// For the concrete classes: an empty element of class T with the reference size of another one.
template <class T>
int NewInstanceAs(const T& source, CQELViewElm** ppOut)
{
    *ppOut = MakeWhole<T>(nullptr, source.RefW(), source.RefH());
    return *ppOut ? 1 : 0;
}

// What every concrete class is made with and answers alike: class T, of that type, on its base.
template <class T, class Base, int32_t TYPE>
class CQELViewLeaf : public Base {
public:
    CQELViewLeaf(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept
        : Base(nRefW, nRefH, TYPE, pPool)
    {
    }

    int NewInstance(CQELViewElm** ppOut) const override
    {
        return NewInstanceAs(static_cast<const T&>(*this), ppOut);
    }
};
