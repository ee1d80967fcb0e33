#pragma once

#include "board/runtime/FileDescriptor.h"
#include "platform/Time.h"
#include "platform/base/ConditionVariable.h"
#include "platform/base/Mutex.h"

#include <atomic>

/// Tells one thread to end, and wakes it out of a wait.
class StopSignal {
public:
    void request();
    bool isRequested() const { return m_Requested.load(std::memory_order_acquire); }

    /// Blocks for the duration or until the request.
    void wait(const TarvikTime& duration);

    /// A descriptor that becomes readable with the request, for waits that also watch others; -1
    /// when the process has no descriptor left.
    int getDescriptor();

    /// The signal of the calling thread; null in a thread that no GThread runs.
    static StopSignal* ofThisThread();

    /// Makes a signal the calling thread's own for as long as the scope lasts.
    class Scope {
    public:
        explicit Scope(StopSignal& signal);
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
    };

private:
    XQMutex m_Mutex;
    ConditionVariable m_Changed;
    std::atomic<bool> m_Requested{false};             // changed with m_Mutex held
    FileDescriptor m_Event NVRHW_GUARDED_BY(m_Mutex); // made when it is first asked for
};
