#include "brush/Hatch.h"

#include <cstring>

namespace {

constexpr int32_t MAX_ROW_BYTES = HATCH_SIDE * MAX_HATCH_CELL / 8;

// One row of cells, a bit a unit, from the left.
void FillRow(unsigned char* pOut, unsigned nCells, int32_t nCell)
{
    for (int32_t n = 0; n < HATCH_SIDE * nCell; ++n)
        if (nCells & (0x80U >> (n / nCell)))
            pOut[n / 8] = static_cast<unsigned char>(pOut[n / 8] | 0x80U >> n % 8);
}

} // namespace

HBITMAP MakeHatchBitmap(const unsigned short (&rows)[HATCH_SIDE], int32_t nCell)
{
    if (nCell <= 1) return Made(::CreateBitmap(HATCH_SIDE, HATCH_SIDE, 1, 1, rows));
    if (nCell > MAX_HATCH_CELL) nCell = MAX_HATCH_CELL;
    const int32_t nSide = HATCH_SIDE * nCell;
    const int32_t nStride = (nCell + 1) / 2 * 2; // a row has a byte for each unit of a cell
    alignas(2) unsigned char bits[MAX_ROW_BYTES * HATCH_SIDE * MAX_HATCH_CELL] = {};
    for (int32_t nRow = 0; nRow < HATCH_SIDE; ++nRow) {
        unsigned char* const pFirst = bits + nRow * nCell * nStride;
        FillRow(pFirst, rows[nRow], nCell);
        for (int32_t n = 1; n < nCell; ++n)
            std::memcpy(pFirst + n * nStride, pFirst, static_cast<std::size_t>(nStride));
    }
    return Made(::CreateBitmap(nSide, nSide, 1, 1, bits));
}
