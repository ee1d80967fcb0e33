#pragma once

#include "application/dispatch/Subscription.h"
#include "platform/Thread.h"
#include "platform/base/Mutex.h"

#include <functional>
#include <memory>
#include <semaphore.h>
#include <vector>

namespace nvrhw {

/// The thread in which a board's callbacks run, "nvrhwDispatch". Thread-safe.
class Dispatcher {
public:
    Dispatcher();

    /// As stop(); it may be destroyed in its own thread.
    ~Dispatcher();
    Dispatcher(const Dispatcher&) = delete;
    Dispatcher& operator=(const Dispatcher&) = delete;

    /// False, with the cause in the log, when there is no thread to be had.
    bool start();

    /// Has the subscription run soon.
    void wake(const std::shared_ptr<Subscription>& subscription) NVRHW_EXCLUDES(m_Mutex);

    /// Has the thread do this when the present callback has returned, and nothing more.
    void finish(std::function<void()> last) NVRHW_EXCLUDES(m_Mutex);

    /// When it returns no callback runs any more. In its own thread it only ends that.
    void stop() NVRHW_EXCLUDES(m_Mutex);

private:
    using Subscriptions = std::vector<std::shared_ptr<Subscription>>;

    int pass() NVRHW_EXCLUDES(m_Mutex);
    bool waitForWork() NVRHW_EXCLUDES(m_Mutex);
    void beginEnd(std::function<void()> last) NVRHW_EXCLUDES(m_Mutex);

    XQMutex m_Mutex;
    sem_t m_Work{}; // posted for each listing and for the end
    Subscriptions m_Ready NVRHW_GUARDED_BY(m_Mutex);
    std::function<void()> m_Last NVRHW_GUARDED_BY(m_Mutex);
    bool m_IsEnding NVRHW_GUARDED_BY(m_Mutex) = false;
    Subscriptions m_Running; // the thread's own; keeps its memory from pass to pass
    GThread m_Thread;
};

} // namespace nvrhw
