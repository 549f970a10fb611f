// Animated pictures as GIF files. Of each frame only the rectangle that changed is stored; the
// colours are exact as long as all frames together have at most 256.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace qel {

class CGifMovie {
public:
    explicit CGifMovie(SIZE size) : m_size(size) {} // each side up to 65535

    // A frame after the others, shown for so many hundredths of a second; one that is equal to the
    // frame before lengthens that one's time. Pixels: 0x00RRGGBB, rows from the top.
    void Add(const uint32_t* pPixels, int nDelay);

    // Writes the file, which repeats for ever. False: it could not be written.
    [[nodiscard]] bool Write(const std::wstring& path) const;

private:
    struct Frame {
        RECT rc;
        std::vector<uint32_t> pixels; // of the rectangle
        int nDelay;
    };

    [[nodiscard]] RECT ChangedRect(const uint32_t* pPixels) const;
    void Store(const uint32_t* pPixels, const RECT& rc, int nDelay);

    SIZE m_size;
    std::vector<uint32_t> m_last; // all of the frame before
    std::vector<Frame> m_frames;
};

} // namespace qel
