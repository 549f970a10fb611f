// The view of a text: one string in its mapped rectangle, in the face of the host's font. The
// character cell follows from the rectangle and the number of characters, so that a text grows with
// the drawing: of bytes, or in a code page that the host has set of columns. The document side is
// document/QELDocShape.h.
#pragma once

#include "render/QELViewBox.h"

class CQELViewText final : public CQELViewLeaf<CQELViewText, CQELViewBox, QEL_TYPE_TEXT> {
public:
    using CQELViewLeaf::CQELViewLeaf;

    int Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags) override;
    [[nodiscard]] uint32_t GetParamMask() const override;
    void LeaveColors(LeftColors* pOut) const override; // none

    [[nodiscard]] bool IsHit(const QelRect& rcQel, POINT pt) const override;

protected:
    [[nodiscard]] RECT PaintedBox(const DeviceFigure& figure, bool bFace) const override;
    int PaintMargin(CPixelScale px, int32_t* pnOut) const override;

private:
    template <class Letters>
    void DrawLetters(HDC hdc, RECT rc, const Letters& letters, CPixelScale px) const;
    [[nodiscard]] std::size_t CellsOf(const char* pszText) const;
    // The text as the host has it shown; szRoom: where one with a number in it is made.
    [[nodiscard]] const char* ShownText(char (&szRoom)[QEL_TEXT_SIZE]) const;
};

// The first run of '#' in a text, which may go on with a point and more of them, is where a number
// stands: right-aligned in the run's width, with as many decimals as there are behind the point.
// What does not fit, and what is no number, leaves the run as it is.
void PutNumber(char* pszText, double fNumber);

// The size of a font for nCount cells in a rectangle: steps of 6 pixels across and 12 down,
// never below one step.
SIZE TextCell(const RECT& rc, std::size_t nCount, CPixelScale px = {});
