// A subscription is idle, busy in one thread, or ended. run() makes it busy, unless it is: then the
// thread that is at it will find what was posted, since it looks once more under the lock before it
// becomes idle. end() marks it ended, so that no further call begins, and waits until it is idle,
// unless its own thread is the busy one, which would wait for itself: then that thread lets the
// callback go after the call it is in.
//
// What must never be seen: two calls at a time; a call after end() has returned, or a callback that
// is destroyed while it runs or after end() has returned; something posted that nobody will tell.
#include "application/Subscription.h"

#include "platform/Diagnostics.h"

#include <exception>
#include <limits>
#include <utility>

namespace nvrhw {

namespace {

constexpr char SOURCE[] = "Subscription";

thread_local int depth = 0; // of callbacks that this thread is in

} // namespace

Subscription::Subscription(std::string name, bool isInPlace)
    : m_Name(std::move(name)), m_IsInPlace(isInPlace) {}

Subscription::~Subscription() = default;

bool Subscription::isInside() { return depth > 0; }

bool Subscription::next() {
    m_HasMail = !m_IsEnded && take();
    return m_HasMail;
}

bool Subscription::run(std::size_t most) NVRHW_NO_THREAD_SAFETY_ANALYSIS {
    m_Mutex.Lock(SOURCE, __LINE__);
    if (m_IsBusy || m_IsEnded) {
        m_Mutex.Unlock(SOURCE, __LINE__);
        return false;
    }
    m_IsBusy = true;
    m_Runner = std::this_thread::get_id();
    std::size_t calls = 0;
    bool hasNext = next();
    for (; hasNext; hasNext = ++calls < most && next()) {
        m_Mutex.Unlock(SOURCE, __LINE__);
        call();
        m_Mutex.Lock(SOURCE, __LINE__);
    }
    m_IsBusy = false;
    if (m_IsEnded) {
        forget();
    }
    m_Idle.notifyAll();
    const bool hasMore = !m_IsEnded && calls == most;
    m_Mutex.Unlock(SOURCE, __LINE__);
    return hasMore;
}

void Subscription::call() {
    ++depth;
    std::string cause;
    try {
        deliver();
    } catch (const std::exception& error) {
        cause = error.what();
    } catch (...) {
        cause = "no std::exception";
    }
    --depth;
    if (!cause.empty()) {
        const std::string text = m_Name + ": the callback ended by an exception: " + cause;
        Logger::writeLog("CallbackError", text.c_str(), SOURCE, __LINE__);
    }
}

void Subscription::finish() {
    for (bool goesOn = !isInside(); goesOn;) {
        {
            const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
            while (m_IsBusy) {
                m_Idle.wait(m_Mutex, SOURCE, __LINE__);
            }
            goesOn = m_HasMail && !m_IsEnded;
        }
        run(std::numeric_limits<std::size_t>::max());
    }
    end();
}

void Subscription::end() {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_IsEnded = true;
    if (m_IsBusy && m_Runner == std::this_thread::get_id()) {
        return; // run() does the rest
    }
    if (m_IsBusy && isInside()) {
        const std::string text = m_Name + ": ended from inside another callback while a call of its"
                                          " own is going on, which is not waited for";
        Logger::writeLog("CallbackError", text.c_str(), SOURCE, __LINE__);
        return;
    }
    while (m_IsBusy) {
        m_Idle.wait(m_Mutex, SOURCE, __LINE__);
    }
    forget();
}

} // namespace nvrhw
