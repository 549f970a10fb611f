// What a program needs of a C runtime, for hosts that are built with the Microsoft ABI where its
// runtime is not installed: memory from the process heap, as that runtime takes it, and the start.
// Nothing with other compilers, which bring their own.
#pragma once

#include <windows.h>

#if defined(_MSC_VER)

extern "C" int main();
extern "C" void mainCRTStartup()
{
    ::ExitProcess(static_cast<UINT>(main()));
}
extern "C" int _fltused = 0;

extern "C" void* memset(void* pTarget, int nValue, SIZE_T nCount)
{
    auto* p = static_cast<volatile unsigned char*>(pTarget);
    while (nCount--) *p++ = static_cast<unsigned char>(nValue);
    return pTarget;
}
extern "C" void* memcpy(void* pTarget, const void* pSource, SIZE_T nCount)
{
    auto* p = static_cast<volatile unsigned char*>(pTarget);
    const auto* q = static_cast<const unsigned char*>(pSource);
    while (nCount--) *p++ = *q++;
    return pTarget;
}

void* operator new(SIZE_T nSize)
{
    return ::HeapAlloc(::GetProcessHeap(), 0, nSize);
}
void* operator new[](SIZE_T nSize)
{
    return ::HeapAlloc(::GetProcessHeap(), 0, nSize);
}
void operator delete(void* p) noexcept
{
    ::HeapFree(::GetProcessHeap(), 0, p);
}
void operator delete(void* p, SIZE_T) noexcept
{
    ::HeapFree(::GetProcessHeap(), 0, p);
}
void operator delete[](void* p) noexcept
{
    ::HeapFree(::GetProcessHeap(), 0, p);
}
void operator delete[](void* p, SIZE_T) noexcept
{
    ::HeapFree(::GetProcessHeap(), 0, p);
}

#endif
