// What a process holds, and what a module asks of its heap.
#pragma once

#include <windows.h>

#include <cstddef>

// Bytes of all blocks that are in use on the process's heaps.
std::size_t BytesHeld();

// Counts the calls of malloc, calloc and realloc that a module makes while it lives.
class CAllocationCount {
public:
    explicit CAllocationCount(const char* pszModule);
    ~CAllocationCount();
    CAllocationCount(const CAllocationCount&) = delete;
    CAllocationCount& operator=(const CAllocationCount&) = delete;

    [[nodiscard]] long Count() const;
    [[nodiscard]] static bool IsPatched(); // whether all three were found

private:
    HMODULE m_hModule;
};
