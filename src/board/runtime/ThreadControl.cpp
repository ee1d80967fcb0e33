#include "board/runtime/ThreadControl.h"

#include "board/runtime/ExceptionText.h"
#include "platform/Diagnostics.h"

#include <exception>
#include <pthread.h>

namespace {

constexpr char SOURCE[] = "GThread";
constexpr std::size_t KERNEL_NAME_LENGTH = 15;

} // namespace

thread_local ThreadControl::Run* ThreadControl::s_RunOfThisThread = nullptr;

ThreadControl::ThreadControl(const function<int>& body, const std::string& name,
                             const function<int>& second, const function<int>& third)
    : m_Body(body), m_Name(name), m_Second(second), m_Third(third) {}

ThreadControl::~ThreadControl() {
    stop();
    if (isOwnThread()) { // destroyed from inside the thread, which ends by itself
        const XQMutexManager guard(m_Control, SOURCE,
                                   __LINE__); // start() may not yet have returned
        s_RunOfThisThread->owner = nullptr;
        m_Thread.detach();
    }
}

int ThreadControl::start() {
    if (isOwnThread()) {
        return running();
    }
    const XQMutexManager guard(m_Control, SOURCE, __LINE__);
    if (running() != 0) {
        return 1;
    }
    join();
    auto run = std::shared_ptr<Run>(new Run{{this}, m_Body, m_Second, m_Third, m_Name, {}, {true}});
    std::atomic_store(&m_Run, run);
    try {
        m_Thread = std::thread(&ThreadControl::execute, run);
        pthread_setname_np(m_Thread.native_handle(), m_Name.substr(0, KERNEL_NAME_LENGTH).c_str());
    } catch (const std::exception& error) {
        const std::string text = "thread " + m_Name + " cannot be started: " + error.what();
        Logger::writeLog("ThreadError", text.c_str(), SOURCE, __LINE__);
        run->alive = false;
        return 0;
    }
    return 1;
}

void ThreadControl::stop() {
    if (isOwnThread()) {
        s_RunOfThisThread->stop.request();
        return;
    }
    const XQMutexManager guard(m_Control, SOURCE, __LINE__);
    if (const auto run = std::atomic_load(&m_Run)) {
        run->stop.request();
    }
    join();
}

int ThreadControl::running() const {
    const auto run = std::atomic_load(&m_Run);
    return run != nullptr && run->alive.load() && !run->stop.isRequested() ? 1 : 0;
}

void ThreadControl::execute(const std::shared_ptr<Run>& run) {
    s_RunOfThisThread = run.get();
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

bool ThreadControl::isOwnThread() const {
    return s_RunOfThisThread != nullptr && s_RunOfThisThread->owner == this;
}

void ThreadControl::join() {
    if (m_Thread.joinable()) {
        m_Thread.join();
    }
}
