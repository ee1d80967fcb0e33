#pragma once

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

    /// For waits for descriptors: as long as it lasts, the request writes this eventfd. Not when it
    /// has come before, so ask for that after the beginning. One at a time.
    class Bell {
    public:
        Bell(StopSignal& signal, int event) : m_Signal(signal) { signal.setEvent(event); }
        ~Bell() { m_Signal.setEvent(-1); }
        Bell(const Bell&) = delete;
        Bell& operator=(const Bell&) = delete;

    private:
        StopSignal& m_Signal;
    };

private:
    void setEvent(int event);

    XQMutex m_Mutex;
    ConditionVariable m_Changed;
    std::atomic<bool> m_Requested{false}; // changed with m_Mutex held
    int m_Event NVRHW_GUARDED_BY(m_Mutex) = -1;
};
