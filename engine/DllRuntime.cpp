// What the DLL needs of the language's runtime, in the few lines that it comes to where nothing
// throws: the library's own versions bring exceptions, the unwinder and a printer of type names
// with them. Only in the DLL; a program that has the engine linked in keeps the library's.
#include <cstdlib>
#include <new>

// The forms that throw are not there, since nobody calls them.
// NOLINTBEGIN(cert-dcl54-cpp,misc-new-delete-overloads)
void* operator new(std::size_t nSize, const std::nothrow_t&) noexcept
{
    return std::malloc(nSize ? nSize : 1);
}

void* operator new[](std::size_t nSize, const std::nothrow_t&) noexcept
{
    return std::malloc(nSize ? nSize : 1);
}

void operator delete(void* p) noexcept
{
    std::free(p);
}

void operator delete(void* p, std::size_t) noexcept
{
    std::free(p);
}

void operator delete[](void* p) noexcept
{
    std::free(p);
}

void operator delete[](void* p, std::size_t) noexcept
{
    std::free(p);
}

// NOLINTEND(cert-dcl54-cpp,misc-new-delete-overloads)

// Objects whose base is not whole any more are called by nobody; the compiler asks for it all the
// same.
extern "C" void __cxa_pure_virtual() // NOLINT(bugprone-reserved-identifier): the compiler's name
{
    std::abort();
}
