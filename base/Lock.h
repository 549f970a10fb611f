// Guards what engines of different threads share. A lock needs no making and no end, and may stand
// in a global that is ready before any constructor runs.
#pragma once

#include <windows.h>

class CLock {
public:
    constexpr CLock() noexcept = default;
    CLock(const CLock&) = delete;
    CLock& operator=(const CLock&) = delete;

private:
    friend class CLockScope;
    friend class CSharedLockScope;
    SRWLOCK m_lock = SRWLOCK_INIT;
};

// Alone, for as long as the scope lasts.
class CLockScope {
public:
    explicit CLockScope(CLock& lock) noexcept : m_lock(lock)
    {
        ::AcquireSRWLockExclusive(&m_lock.m_lock);
    }
    ~CLockScope() { ::ReleaseSRWLockExclusive(&m_lock.m_lock); }
    CLockScope(const CLockScope&) = delete;
    CLockScope& operator=(const CLockScope&) = delete;

private:
    CLock& m_lock;
};

// With others that only read.
class CSharedLockScope {
public:
    explicit CSharedLockScope(CLock& lock) noexcept : m_lock(lock)
    {
        ::AcquireSRWLockShared(&m_lock.m_lock);
    }
    ~CSharedLockScope() { ::ReleaseSRWLockShared(&m_lock.m_lock); }
    CSharedLockScope(const CSharedLockScope&) = delete;
    CSharedLockScope& operator=(const CSharedLockScope&) = delete;

private:
    CLock& m_lock;
};
