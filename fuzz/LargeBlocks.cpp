// Linked with --wrap=malloc, which leaves the fuzzing library's own memory alone.
#include "fuzz/LargeBlocks.h"

std::size_t g_nLargestBlock = ANY_BLOCK;

extern "C" {

void* __real_malloc(std::size_t nSize);
void* __wrap_malloc(std::size_t nSize);

void* __wrap_malloc(std::size_t nSize)
{
    return nSize <= g_nLargestBlock ? __real_malloc(nSize) : nullptr;
}

} // extern "C"
