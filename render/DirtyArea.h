// Where the picture of a drawing is not what it was when it was last updated: rectangles, and the
// elements that have changed within their places since, of which the places are looked for when
// they are asked for. Device units.
#pragma once

#include "base/QelRect.h"

#include <windows.h>

#include <cstdint>

class CQELViewElm;

class CDirtyArea {
public:
    static constexpr int MOST_RECTS = 64; // what is more is merged with the nearest

    CDirtyArea() = default;
    ~CDirtyArea();
    CDirtyArea(const CDirtyArea&) = delete;
    CDirtyArea& operator=(const CDirtyArea&) = delete;

    void SetPlace(const QelRect& rcQel) { m_rcQel = rcQel; } // the QEL rect
    [[nodiscard]] const QelRect& Place() const { return m_rcQel; }

    void AddAll(); // the QEL rect, and what the drawing paints beyond, when it is asked for
    void AddAllNow(const CQELViewElm* pRoot); // the same as it is now
    [[nodiscard]] bool IsAll() const { return m_bAll; }
    void Add(const RECT& rc);
    // An element that paints something else, in the place where it is, and was not touched yet.
    void Touch(CQELViewElm* pElm)
    {
        if (!m_bAll) Remember(pElm);
    }
    void AddPlaceOf(const CQELViewElm* pElm, const CQELViewElm* pRoot); // where it is now
    void Clear();
    // A draw of the area that lacked the memory for a part of it.
    void SetMissed(bool bMissed) { m_bMissed = bMissed; }
    [[nodiscard]] bool HasMissed() const { return m_bMissed; }

    // Makes rectangles of all that was touched. pRoot: null for none.
    void Resolve(const CQELViewElm* pRoot);
    [[nodiscard]] int Count() const { return m_nCount; }
    [[nodiscard]] const RECT& At(int n) const { return m_rects[n]; }
    [[nodiscard]] bool Meets(const RECT& rc) const;

private:
    void Remember(CQELViewElm* pElm);
    int Grow();
    void ForgetTouched();

    QelRect m_rcQel;
    bool m_bAll = true;
    bool m_bMissed = false;
    int m_nCount = 0;
    RECT m_rects[MOST_RECTS];
    CQELViewElm** m_ppTouched = nullptr; // each once
    uint32_t m_nTouched = 0;
    uint32_t m_nRoom = 0;
};
