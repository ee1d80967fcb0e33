#include "platform/Thread.h"

#include "board/runtime/ExceptionText.h"
#include "board/runtime/StopSignal.h"
#include "platform/Diagnostics.h"
#include "platform/base/Mutex.h"

#include <atomic>
#include <exception>
#include <pthread.h>
#include <thread>

// A GThread lives through any number of runs, one after the other. Each run is a record of its own,
// shared by the GThread and the kernel's thread, so that the thread may outlive the GThread that
// is destroyed from inside it:
//
//   alive, not stopped   from start() on; running() says so without a lock
//   stopping             stop() has requested it, from any thread; the pass in progress ends
//   ended                the thread itself has cleared `alive`, after its last callable or because
//                        of an exception; it remains to be joined
//
// Who starts, stops and joins holds the control lock and is never the thread itself, which would
// wait for its own end: from inside, stop() requests and start() answers, without the lock. What
// must never be seen is a pass after a stop() that came from outside has returned, or two threads
// of one GThread at a time: start() joins the old run before it makes a new one.

namespace {

constexpr char SOURCE[] = "GThread";
constexpr std::size_t KERNEL_NAME_LENGTH = 15;

} // namespace

struct GThread::Impl {
    struct Run {
        function<int> body;
        function<int> second;
        function<int> third;
        std::string name;
        StopSignal stop;
        std::atomic<bool> alive{true};
    };

    static void execute(const std::shared_ptr<Run>& run);
    bool isOwnThread() const;
    void join() NVRHW_REQUIRES(control);

    const function<int> body;
    const std::string name;
    const function<int> second;
    const function<int> third;

    XQMutex control{}; // serialises start() and stop()
    std::thread thread NVRHW_GUARDED_BY(control){};
    std::shared_ptr<Run> run{}; // accessed atomically: running() takes no lock
};

void GThread::Impl::execute(const std::shared_ptr<Run>& run) {
    const StopSignal::Scope scope(run->stop);
    const std::string cause = exceptionText([&] {
        run->second();
        while (!run->stop.isRequested()) {
            run->body();
        }
        run->third();
    });
    if (!cause.empty()) {
        const std::string text = "thread " + run->name + " ends by an exception: " + cause;
        Logger::writeLog("ThreadError", text.c_str(), SOURCE, __LINE__);
    }
    run->alive = false;
}

bool GThread::Impl::isOwnThread() const {
    const auto mine = std::atomic_load(&run);
    return mine != nullptr && StopSignal::ofThisThread() == &mine->stop;
}

void GThread::Impl::join() {
    if (thread.joinable()) {
        thread.join();
    }
}

// NOLINTBEGIN(performance-unnecessary-value-param): copies are what the interface promises
GThread::GThread(function<int> body, const std::string& name, function<int> second,
                 function<int> third)
    : m_Impl(new Impl{body, name, second, third}) {}
// NOLINTEND(performance-unnecessary-value-param)

GThread::~GThread() {
    stop();
    const XQMutexManager guard(m_Impl->control, SOURCE, __LINE__); // start() may not yet be over
    if (m_Impl->thread.joinable()) { // destroyed from inside the thread, which ends by itself
        m_Impl->thread.detach();
    }
}

int GThread::start() {
    Impl& mine = *m_Impl;
    if (mine.isOwnThread()) {
        return running();
    }
    const XQMutexManager guard(mine.control, SOURCE, __LINE__);
    if (running() != 0) {
        return 1;
    }
    mine.join();
    const std::shared_ptr<Impl::Run> run(
        new Impl::Run{mine.body, mine.second, mine.third, mine.name, {}, {true}});
    std::atomic_store(&mine.run, run);
    try {
        mine.thread = std::thread(&Impl::execute, run);
        pthread_setname_np(mine.thread.native_handle(),
                           mine.name.substr(0, KERNEL_NAME_LENGTH).c_str());
    } catch (const std::exception& error) {
        const std::string text = "thread " + mine.name + " cannot be started: " + error.what();
        Logger::writeLog("ThreadError", text.c_str(), SOURCE, __LINE__);
        run->alive = false;
        return 0;
    }
    return 1;
}

void GThread::stop() {
    if (m_Impl->isOwnThread()) {
        StopSignal::ofThisThread()->request();
        return;
    }
    const XQMutexManager guard(m_Impl->control, SOURCE, __LINE__);
    if (const auto run = std::atomic_load(&m_Impl->run)) {
        run->stop.request();
    }
    m_Impl->join();
}

int GThread::running() const {
    const auto run = std::atomic_load(&m_Impl->run);
    return run != nullptr && run->alive.load() && !run->stop.isRequested() ? 1 : 0;
}

int GThread::emptyFun() { return 0; }
