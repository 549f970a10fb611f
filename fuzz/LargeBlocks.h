// Memory of which there is little: blocks above a limit are not to be had in the scope of a
// CLittleMemory. A drawing may ask for the brush of a gradient over thousands of pixels each way,
// which takes seconds to make and teaches nothing that a small one does not; without memory the
// engine goes on without the brush.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr std::size_t ANY_BLOCK = SIZE_MAX;
constexpr std::size_t SMALL_BLOCK = 100 * 1024; // a gradient of 160 by 160 pixels

extern std::size_t g_nLargestBlock;

class CLittleMemory {
public:
    CLittleMemory() { g_nLargestBlock = SMALL_BLOCK; }
    ~CLittleMemory() { g_nLargestBlock = ANY_BLOCK; }
    CLittleMemory(const CLittleMemory&) = delete;
    CLittleMemory& operator=(const CLittleMemory&) = delete;
};
