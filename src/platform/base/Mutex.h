#pragma once

#include "platform/base/Export.h"
#include "platform/base/ThreadAnnotations.h"

#include <atomic>
#include <mutex>
#include <thread>

/// A lock that remembers where it was taken. Not recursive: a thread that asks again for a lock
/// it holds gets a log line with both places and std::system_error
/// (resource_deadlock_would_occur) instead of a silent dead end.
class NVRHW_API NVRHW_CAPABILITY("mutex") XQMutex {
public:
    XQMutex() = default;
    XQMutex(const XQMutex&) = delete;
    XQMutex& operator=(const XQMutex&) = delete;

    /// Kept for callers that initialise in two steps; a constructed lock is ready for use.
    int Init() { return 1; }

    /// `file` (base name of the caller's source) must outlive the lock being held.
    void Lock(const char* file, int line) NVRHW_ACQUIRE();

    /// By the thread that holds the lock.
    void Unlock(const char* file, int line) NVRHW_RELEASE();

private:
    std::mutex m_Mutex;
    std::atomic<std::thread::id> m_Owner{};
    const char* m_File = ""; // where the owner took it; read by the owner only
    int m_Line = 0;
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
