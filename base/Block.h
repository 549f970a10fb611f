// A block of memory that is freed with its scope.
#pragma once

#include <cstdint>
#include <cstdlib>

class CBlock {
public:
    // Null when memory fails, or when the size does not fit the address space.
    explicit CBlock(uint64_t nSize) noexcept
        : m_pData(nSize < SIZE_MAX / 2 ? std::malloc(static_cast<std::size_t>(nSize)) : nullptr)
    {
    }
    ~CBlock() { std::free(m_pData); }
    CBlock(const CBlock&) = delete;
    CBlock& operator=(const CBlock&) = delete;

    template <class T>
    [[nodiscard]] T* As() const
    {
        return static_cast<T*>(m_pData);
    }

private:
    void* m_pData;
};
