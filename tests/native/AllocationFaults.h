// Makes allocations of the engine fail: its malloc, calloc, realloc and new (std::nothrow). They
// are caught at link time (tests/native/CMakeLists.txt), so that the sanitizers see all others and
// these as they are.
#pragma once

namespace alloc {

// Allocations are counted from this call on. The n-th fails, or it and all after it. 0: none.
void Fail(int nNth);
void FailFrom(int nNth);
int Count(); // since the last of these two calls
void Off();  // counts and fails no more

class CFault { // the n-th allocation in its scope fails
public:
    explicit CFault(int nNth) { Fail(nNth); }
    ~CFault() { Off(); }
    CFault(const CFault&) = delete;
    CFault& operator=(const CFault&) = delete;
};

} // namespace alloc
