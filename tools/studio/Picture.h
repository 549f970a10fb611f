// A bitmap in memory to draw on: rows from the top, four bytes a pixel.
#pragma once

#include <windows.h>

namespace studio {

class CPicture {
public:
    CPicture() = default;
    ~CPicture();
    CPicture(const CPicture&) = delete;
    CPicture& operator=(const CPicture&) = delete;

    // Makes it as large, and leaves one of that size as it is. 0: without memory there is none.
    int SetSize(SIZE size);

    [[nodiscard]] HDC Dc() const { return m_hdc; } // null: there is none
    [[nodiscard]] SIZE Size() const { return m_size; }
    [[nodiscard]] void* Bits() const { return m_pBits; }
    [[nodiscard]] HBITMAP Bitmap() const { return m_hBitmap; }

private:
    void Drop();

    SIZE m_size{0, 0};
    HDC m_hdc = nullptr;
    HBITMAP m_hBitmap = nullptr;
    HGDIOBJ m_hPrev = nullptr;
    void* m_pBits = nullptr;
};

} // namespace studio
