// The linker sends the calls here.
#include "tests/native/AllocationFaults.h"

#include <cerrno>
#include <cstddef>
#include <new>

namespace {

thread_local bool g_bOn = false;
thread_local bool g_bAllAfter = false;
thread_local int g_nFailAt = 0;
thread_local int g_nCount = 0;

bool Take()
{
    if (!g_bOn) return true;
    const int n = ++g_nCount;
    const bool bFails = g_nFailAt && (g_bAllAfter ? n >= g_nFailAt : n == g_nFailAt);
    if (bFails) errno = ENOMEM;
    return !bFails;
}

} // namespace

namespace alloc {

void Fail(int nNth)
{
    g_bOn = true;
    g_bAllAfter = false;
    g_nFailAt = nNth;
    g_nCount = 0;
}

void FailFrom(int nNth)
{
    Fail(nNth);
    g_bAllAfter = true;
}

int Count()
{
    return g_nCount;
}

void Off()
{
    g_bOn = false;
}

} // namespace alloc

extern "C" {

void* __real_malloc(std::size_t nSize);
void* __real_calloc(std::size_t nCount, std::size_t nSize);
void* __real_realloc(void* p, std::size_t nSize);
void* __real__ZnwmRKSt9nothrow_t(std::size_t nSize, const std::nothrow_t& nothrow);
void* __real__ZnamRKSt9nothrow_t(std::size_t nSize, const std::nothrow_t& nothrow);

void* __wrap_malloc(std::size_t nSize)
{
    return Take() ? __real_malloc(nSize) : nullptr;
}

void* __wrap_calloc(std::size_t nCount, std::size_t nSize)
{
    return Take() ? __real_calloc(nCount, nSize) : nullptr;
}

void* __wrap_realloc(void* p, std::size_t nSize)
{
    return Take() ? __real_realloc(p, nSize) : nullptr;
}

void* __wrap__ZnwmRKSt9nothrow_t(std::size_t nSize, const std::nothrow_t& nothrow)
{
    return Take() ? __real__ZnwmRKSt9nothrow_t(nSize, nothrow) : nullptr;
}

void* __wrap__ZnamRKSt9nothrow_t(std::size_t nSize, const std::nothrow_t& nothrow)
{
    return Take() ? __real__ZnamRKSt9nothrow_t(nSize, nothrow) : nullptr;
}

} // extern "C"
