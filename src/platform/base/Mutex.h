#pragma once

#include "platform/base/Export.h"
#include "platform/base/ThreadAnnotations.h"

#include <cstddef>

/// A lock that remembers where it was taken. Not recursive: a thread that asks again for a lock
/// it holds gets a log line with both places and std::system_error
/// (resource_deadlock_would_occur) instead of a silent dead end.
///
/// The framework keeps its state inside: STORAGE_SIZE bytes at its disposal, or a pointer there
/// to more. They begin as zeros, with no code to run, so that a static lock may be taken before
/// any constructor has: zeros are a free lock, which the framework makes its own at the first
/// Init() or Lock(), by whichever thread comes first.
class NVRHW_API NVRHW_CAPABILITY("mutex") XQMutex {
public:
    /// Bytes, aligned to eight.
    static constexpr std::size_t STORAGE_SIZE = 64;

    constexpr XQMutex() noexcept : m_Storage() {}

    /// Nobody holds the lock any more.
    ~XQMutex();
    XQMutex(const XQMutex&) = delete;
    XQMutex& operator=(const XQMutex&) = delete;

    /// Kept for callers that initialise in two steps; a constructed lock is ready for use.
    /// Returns 1.
    int Init();

    /// `file` (base name of the caller's source) must outlive the lock being held.
    void Lock(const char* file, int line) NVRHW_ACQUIRE();

    /// By the thread that holds the lock.
    void Unlock(const char* file, int line) NVRHW_RELEASE();

private:
    alignas(8) unsigned char m_Storage[STORAGE_SIZE];
};

/// Holds an XQMutex for the length of a scope.
class NVRHW_API NVRHW_SCOPED_CAPABILITY XQMutexManager {
public:
    /// Takes the lock, as XQMutex::Lock().
    XQMutexManager(XQMutex& mutex, const char* file, int line) NVRHW_ACQUIRE(mutex)
        : m_Mutex(mutex), m_File(file), m_Line(line) {
        m_Mutex.Lock(m_File, m_Line);
    }
    ~XQMutexManager() NVRHW_RELEASE() { m_Mutex.Unlock(m_File, m_Line); }
    XQMutexManager(const XQMutexManager&) = delete;
    XQMutexManager& operator=(const XQMutexManager&) = delete;

private:
    XQMutex& m_Mutex;
    const char* m_File;
    int m_Line;
};
