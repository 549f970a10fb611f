// The view of a text: one string in its mapped rectangle, in the face of the host's font. The
// character cell follows from the rectangle and the number of characters, so that a text grows with
// the drawing. The document side is document/QELDocShape.h.
#pragma once

#include "render/QELViewBox.h"

class CQELViewText final : public CQELViewLeaf<CQELViewText, CQELViewBox, QEL_TYPE_TEXT> {
public:
    using CQELViewLeaf::CQELViewLeaf;

    int Draw(HDC hdc, const RECT& rcQel, uint32_t nFlags) override;
    [[nodiscard]] uint32_t GetParamMask() const override;
    void LeaveColors(LeftColors* pOut) const override; // none

protected:
    int PaintMargin(int32_t* pnOut) const override;

private:
    void PaintText(HDC hdc, RECT* prc, int nCount) const;
};

// The size of a font for nCount characters in a rectangle: steps of 6 pixels across and 12 down,
// never below one step.
SIZE TextCell(const RECT& rc, std::size_t nCount);
