// Handles: the opaque numbers by which a host names what the engine made. A number is looked up and
// never followed as a pointer, so a stale or made-up one is refused; it is not given out a second
// time. Lookup costs the same however many handles are live. Any thread may make, find and give up
// handles at any time; an object itself is its holder's, one thread at a time.
#pragma once

#include <cstdint>

enum class HandleKind : uint8_t {
    Engine,  // a CQELEngine
    Record,  // a show-only share of one
    Gradient // a CGradient
};

// A place in a table of handles, in the object itself, so that making a handle needs no memory.
struct HandleLink {
    uintptr_t nNumber = 0;       // 0: the host has none
    HandleLink* pNext = nullptr; // in its bucket
};

// The handle side of an object: a member of what a host may hold. It takes a number only when the
// host is to get one, and gives it up with the object.
class CHandleEntry : private HandleLink {
public:
    CHandleEntry(HandleKind nKind, void* pObject) noexcept : m_nKind(nKind), m_pObject(pObject) {}
    ~CHandleEntry();
    CHandleEntry(const CHandleEntry&) = delete;
    CHandleEntry& operator=(const CHandleEntry&) = delete;

    // The number, 0 when all numbers are used up.
    uintptr_t Value();

    // The number of an object that no host will see, such as the gradient inside of a brush that
    // lives for one draw call: it may be used again for the next of these, so that months of
    // drawing do not use the numbers up. Share() withdraws that before a second holder learns the
    // number.
    uintptr_t PrivateValue();
    void Share() { m_bPrivate = false; }

    // The object of that kind behind a number, or null.
    static void* Find(HandleKind nKind, uintptr_t nValue);

private:
    void Link(uintptr_t nValue);

    HandleKind m_nKind;
    bool m_bPrivate = false;
    void* m_pObject;
};

// The same for a document element, of which there are many: the base class of it, without a record
// of what it is.
class CElementHandle : private HandleLink {
public:
    CElementHandle() = default;
    CElementHandle(const CElementHandle&) = delete;
    CElementHandle& operator=(const CElementHandle&) = delete;

    uintptr_t HandleValue(); // the number, 0 when all numbers are used up

protected:
    ~CElementHandle();
    // Null when none has that number, or the one that has it is not the owner's; without the
    // question it may be anyone's.
    using Owns = bool (*)(const CElementHandle* pHandle, const void* pOwner);
    static CElementHandle* FindHandle(uintptr_t nValue, Owns pfnOwns = nullptr,
                                      const void* pOwner = nullptr);
};

// The host's handle types are pointers to nothing; these cross between them and numbers.
template <class THandle>
uintptr_t ToNumber(THandle hHandle)
{
    return reinterpret_cast<uintptr_t>(hHandle);
}

template <class THandle>
THandle ToHandle(uintptr_t nValue)
{
    return reinterpret_cast<THandle>(nValue); // NOLINT(performance-no-int-to-ptr): never followed
}
