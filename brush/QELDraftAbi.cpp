// The hatch-brush class for hosts of the other compiler family. Its exported names stand in
// cmake/Exports.cmake. Member functions and the layout are the same in both families; what differs
// is here: constructors return the object, the virtual table has one slot, for a destructor that
// also frees, and run-time type information has a form of its own.
#include "include/QELEngine.h"

#include <cstring>
#include <new>

#if defined(__GNUC__) && defined(_WIN32) && (defined(__i386__) || defined(__x86_64__))

#if defined(__i386__)
#define MEMBER_CALL __attribute__((thiscall))
#else
#define MEMBER_CALL
#endif

extern "C" {

extern const void* const QELDraftTable[1]; // below, after its type information

CQELDraft* MEMBER_CALL QELDraftConstruct(CQELDraft* pThis);
CQELDraft* MEMBER_CALL QELDraftConstructStyle(CQELDraft* pThis, tagDRAFTSTYLE nStyle);
CQELDraft* MEMBER_CALL QELDraftConstructCopy(CQELDraft* pThis, const CQELDraft& other);
void* MEMBER_CALL QELDraftDestroy(CQELDraft* pThis, unsigned nFlags);

} // extern "C"

namespace {

constexpr unsigned FREE_MEMORY = 1; // what a delete expression asks of the virtual destructor
constexpr unsigned WHOLE_ARRAY = 2; // with the number of elements before the first one
constexpr DWORD MAX_HEAPS = 256;

CQELDraft* WithTable(CQELDraft* pDraft)
{
    const void* pTable = QELDraftTable;
    std::memcpy(static_cast<void*>(pDraft), &pTable, sizeof pTable);
    return pDraft;
}

// Frees a block of the host's own C runtime, which took it from one of the heaps of the process.
// One that is in none of them is left: a leak is better than a broken heap.
void FreeInItsHeap(void* pBlock)
{
    HANDLE heaps[MAX_HEAPS];
    const DWORD nHeaps = ::GetProcessHeaps(MAX_HEAPS, heaps);
    for (DWORD n = 0; n < nHeaps && n < MAX_HEAPS; ++n)
        if (::HeapValidate(heaps[n], 0, pBlock)) {
            ::HeapFree(heaps[n], 0, pBlock);
            return;
        }
}

} // namespace

CQELDraft* MEMBER_CALL QELDraftConstruct(CQELDraft* pThis)
{
    return WithTable(new (pThis) CQELDraft);
}

CQELDraft* MEMBER_CALL QELDraftConstructStyle(CQELDraft* pThis, tagDRAFTSTYLE nStyle)
{
    return WithTable(new (pThis) CQELDraft(nStyle));
}

CQELDraft* MEMBER_CALL QELDraftConstructCopy(CQELDraft* pThis, const CQELDraft& other)
{
    return WithTable(new (pThis) CQELDraft(other));
}

void* MEMBER_CALL QELDraftDestroy(CQELDraft* pThis, unsigned nFlags)
{
    void* pBlock = pThis;
    std::size_t nCount = 1;
    if (nFlags & WHOLE_ARRAY) {
        auto* pCount = reinterpret_cast<std::size_t*>(pThis) - 1;
        nCount = *pCount;
        pBlock = pCount;
    }
    while (nCount) pThis[--nCount].CQELDraft::~CQELDraft();
    if (nFlags & FREE_MEMORY) FreeInItsHeap(pBlock);
    return pBlock;
}

// The table, with the complete object locator before its first slot. Written in assembler, since
// no C++ object may begin before its own first byte. 32 bits: addresses; 64 bits: offsets in the
// image.
#if defined(__i386__)
#define SYMBOL "_"
#define ADDRESS ".long "
#define REFERENCE ".long "
#define LOCATOR_SIGNATURE "0"
#define LOCATOR_SELF ""
#else
#define SYMBOL ""
#define ADDRESS ".quad "
#define REFERENCE ".rva "
#define LOCATOR_SIGNATURE "1"
#define LOCATOR_SELF REFERENCE "Lqel_locator\n"
#endif

// clang-format off
__asm__(
    ".section .data\n"
    ".p2align 3\n"
    "Lqel_type:\n"                      // type descriptor: written to by hosts' runtimes
    ADDRESS "0\n" ADDRESS "0\n" ".asciz \".?AVCQELDraft@@\"\n"
    ".section .rdata,\"dr\"\n"
    ".p2align 3\n"
    "Lqel_hierarchy:\n"                 // one class, without bases
    ".long 0\n" ".long 0\n" ".long 1\n" REFERENCE "Lqel_bases\n"
    "Lqel_bases:\n"
    REFERENCE "Lqel_base\n" ".long 0\n"
    "Lqel_base:\n"                      // the class as its own base, at offset 0
    REFERENCE "Lqel_type\n" ".long 0\n" ".long 0\n" ".long -1\n" ".long 0\n" ".long 0x40\n"
    REFERENCE "Lqel_hierarchy\n"
    "Lqel_locator:\n"
    ".long " LOCATOR_SIGNATURE "\n" ".long 0\n" ".long 0\n"
    REFERENCE "Lqel_type\n" REFERENCE "Lqel_hierarchy\n" LOCATOR_SELF
    ".p2align 3\n"
    ".globl " SYMBOL "QELDraftTable\n"
    ADDRESS "Lqel_locator\n"
    SYMBOL "QELDraftTable:\n"
    ADDRESS SYMBOL "QELDraftDestroy\n"
    ".text\n");
// clang-format on

#endif
