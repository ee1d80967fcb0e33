#pragma once

#include "board/runtime/StopSignal.h"
#include "foundation/function.h"
#include "platform/base/Mutex.h"

#include <atomic>
#include <memory>
#include <string>
#include <thread>

/// Starts and ends the thread behind a GThread.
class ThreadControl {
public:
    ThreadControl(const function<int>& body, const std::string& name, const function<int>& second,
                  const function<int>& third);
    ~ThreadControl();

    int start();
    void stop();
    int running() const;

private:
    /// One life of the thread. Shared with the thread itself, so that it stays valid when the
    /// GThread is destroyed from inside.
    struct Run {
        std::atomic<const ThreadControl*> owner;
        function<int> body;
        function<int> second;
        function<int> third;
        std::string name;
        StopSignal stop;
        std::atomic<bool> alive{true};
    };

    static void execute(const std::shared_ptr<Run>& run);
    bool isOwnThread() const;
    void join() NVRHW_REQUIRES(m_Control);

    const function<int> m_Body;
    const std::string m_Name;
    const function<int> m_Second;
    const function<int> m_Third;

    static thread_local Run* s_RunOfThisThread;

    XQMutex m_Control; // serialises start() and stop()
    std::thread m_Thread NVRHW_GUARDED_BY(m_Control);
    std::shared_ptr<Run> m_Run; // accessed atomically: running() takes no lock
};
