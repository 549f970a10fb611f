// The tree of a drawing's elements, with their kinds and identifiers.
#pragma once

#include "tools/studio/Window.h"
#include "tools/studio/model/DrawingFile.h"

#include <commctrl.h>

#include <functional>
#include <unordered_map>

namespace studio {

class CElementTree final : public CControl {
public:
    int Create(HWND hParent, UINT nId, std::function<void(HQELELEM)> select);
    void Show(const CDrawingFile* pFile); // null: none; the root is open
    void Select(HQELELEM hElem);          // opens what it is in; null: nothing is selected
    [[nodiscard]] HQELELEM Selected() const;
    void OnNotify(const NMHDR& header);

private:
    void Add(HTREEITEM hParent, HQELELEM hElem);
    void AddChildren(HTREEITEM hItem, HQELELEM hElem);
    HTREEITEM Reach(HQELELEM hElem); // null: it is not of this drawing
    [[nodiscard]] std::wstring Label(HQELELEM hElem) const;
    [[nodiscard]] HQELELEM ElementOf(HTREEITEM hItem) const;

    const CDrawingFile* m_pFile = nullptr;
    std::unordered_map<HQELELEM, HTREEITEM> m_items; // those that were opened so far
    std::function<void(HQELELEM)> m_select;
    bool m_bFilling = false;
};

} // namespace studio
