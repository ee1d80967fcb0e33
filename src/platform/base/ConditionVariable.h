#pragma once

#include "platform/base/Mutex.h"

#include <chrono>
#include <condition_variable>

/// A condition to wait for with an XQMutex held. Waits may end without cause: ask in a loop.
class ConditionVariable {
public:
    /// A moment that no jump of the wall clock moves.
    using Deadline = std::chrono::steady_clock::time_point;

    /// Until it is notified; `file` and `line` tell where the lock is taken again.
    void wait(XQMutex& mutex, const char* file, int line) NVRHW_REQUIRES(mutex) {
        Lockable lockable{mutex, file, line};
        m_Condition.wait(lockable);
    }

    /// The same, or until the deadline.
    void waitUntil(XQMutex& mutex, const Deadline& deadline, const char* file, int line)
        NVRHW_REQUIRES(mutex) {
        Lockable lockable{mutex, file, line};
        m_Condition.wait_until(lockable, deadline);
    }

    /// Ends the waits that go on.
    void notifyAll() { m_Condition.notify_all(); }

private:
    // The analysis does not see that the lock is held again when the wait returns.
    struct Lockable {
        XQMutex& mutex;
        const char* file;
        int line;

        void lock() NVRHW_NO_THREAD_SAFETY_ANALYSIS { mutex.Lock(file, line); }
        void unlock() NVRHW_NO_THREAD_SAFETY_ANALYSIS { mutex.Unlock(file, line); }
    };

    std::condition_variable_any m_Condition;
};
