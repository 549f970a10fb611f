// The stand-in for kernel32: locks, and what each thread keeps for itself.
#include <windows.h>

#include <pthread.h>
#include <sched.h>

#include <cstdint>

namespace {

// In the lock's one word: how many read, or this for one who is alone.
constexpr uintptr_t ALONE = ~uintptr_t{0};

uintptr_t* WordOf(SRWLOCK* pLock)
{
    return reinterpret_cast<uintptr_t*>(&pLock->Ptr);
}

bool Exchange(uintptr_t* pWord, uintptr_t nFrom, uintptr_t nTo)
{
    return __atomic_compare_exchange_n(pWord, &nFrom, nTo, false, __ATOMIC_ACQUIRE,
                                       __ATOMIC_RELAXED);
}

} // namespace

void WINAPI AcquireSRWLockExclusive(SRWLOCK* pLock)
{
    while (!Exchange(WordOf(pLock), 0, ALONE)) ::sched_yield();
}

void WINAPI ReleaseSRWLockExclusive(SRWLOCK* pLock)
{
    __atomic_store_n(WordOf(pLock), uintptr_t{0}, __ATOMIC_RELEASE);
}

void WINAPI AcquireSRWLockShared(SRWLOCK* pLock)
{
    for (;;) {
        const uintptr_t nReaders = __atomic_load_n(WordOf(pLock), __ATOMIC_RELAXED);
        if (nReaders != ALONE && Exchange(WordOf(pLock), nReaders, nReaders + 1)) return;
        ::sched_yield();
    }
}

void WINAPI ReleaseSRWLockShared(SRWLOCK* pLock)
{
    __atomic_fetch_sub(WordOf(pLock), uintptr_t{1}, __ATOMIC_RELEASE);
}

DWORD WINAPI TlsAlloc()
{
    pthread_key_t nKey = 0;
    return ::pthread_key_create(&nKey, nullptr) == 0 ? nKey : TLS_OUT_OF_INDEXES;
}

BOOL WINAPI TlsFree(DWORD nSlot)
{
    return ::pthread_key_delete(nSlot) == 0;
}

void* WINAPI TlsGetValue(DWORD nSlot)
{
    ::SetLastError(NO_ERROR);
    return ::pthread_getspecific(nSlot);
}

BOOL WINAPI TlsSetValue(DWORD nSlot, void* pValue)
{
    return ::pthread_setspecific(nSlot, pValue) == 0;
}
