// A subscription is idle, busy in one thread, or ended. run() makes it busy, unless it is: then the
// thread that is at it will find what was posted, since it looks once more under the lock before it
// becomes idle. A new one may be claimed, that is, busy from the beginning, so that nobody else
// makes its first calls. end() marks it ended, so that no further call begins, and waits until it
// is idle, unless its own thread is the busy one, which would wait for itself: then that thread
// lets the callback go after the call it is in.
//
// What must never be seen: two calls at a time; a call after end() has returned, or a callback that
// is destroyed while it runs, or with the lock held (what it holds may end this subscription, or
// the whole board); something posted that nobody will tell.
#include "application/dispatch/Subscription.h"

#include "platform/Diagnostics.h"

#include <exception>
#include <limits>
#include <utility>

namespace nvrhw {

namespace {

constexpr char SOURCE[] = "Subscription";

thread_local Subscription* current = nullptr; // of the callbacks this thread is in, the innermost

/// The thread is inside a callback for as long as this lives.
class Inside {
public:
    explicit Inside(Subscription& subscription) : m_Outer(std::exchange(current, &subscription)) {}
    ~Inside() { current = m_Outer; }
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;

private:
    Subscription* const m_Outer;
};

} // namespace

Subscription::Subscription(std::string name, bool isInPlace)
    : m_Name(std::move(name)), m_IsInPlace(isInPlace) {}

Subscription::~Subscription() = default;

bool Subscription::isInside() { return current != nullptr; }

bool Subscription::endCurrent() {
    if (current == nullptr) {
        return false;
    }
    current->end();
    return true;
}

bool Subscription::next() {
    m_HasMail = !m_IsEnded && take();
    return m_HasMail;
}

void Subscription::claim() {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_IsBusy = true;
    m_Runner = std::this_thread::get_id();
}

void Subscription::runClaimed() {
    m_Mutex.Lock(SOURCE, __LINE__);
    carryOn(std::numeric_limits<std::size_t>::max());
}

bool Subscription::run(std::size_t most) {
    m_Mutex.Lock(SOURCE, __LINE__);
    if (m_IsBusy || m_IsEnded) {
        m_Mutex.Unlock(SOURCE, __LINE__);
        return false;
    }
    m_IsBusy = true;
    m_Runner = std::this_thread::get_id();
    return carryOn(most);
}

bool Subscription::carryOn(std::size_t most) NVRHW_NO_THREAD_SAFETY_ANALYSIS {
    std::size_t calls = 0;
    for (bool hasNext = next(); hasNext; hasNext = ++calls < most && next()) {
        m_Mutex.Unlock(SOURCE, __LINE__);
        call();
        m_Mutex.Lock(SOURCE, __LINE__);
    }
    m_IsBusy = false;
    std::shared_ptr<const void> gone;
    if (m_IsEnded) {
        gone = takeCallback();
    }
    m_Idle.notifyAll();
    const bool hasMore = !m_IsEnded && calls == most;
    m_Mutex.Unlock(SOURCE, __LINE__);
    const Inside inside(*this); // a board that goes with it cannot wait for this thread either
    gone.reset();
    return hasMore;
}

void Subscription::call() {
    const Inside inside(*this);
    std::string cause;
    try {
        deliver();
    } catch (const std::exception& error) {
        cause = error.what();
    } catch (...) {
        cause = "no std::exception";
    }
    if (!cause.empty()) {
        const std::string text = m_Name + ": the callback ended by an exception: " + cause;
        Logger::writeLog("CallbackError", text.c_str(), SOURCE, __LINE__);
    }
}

void Subscription::waitUntilIdle() {
    while (m_IsBusy) {
        m_Idle.wait(m_Mutex, SOURCE, __LINE__);
    }
}

void Subscription::finish() {
    if (!isInside()) {
        {
            const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
            m_TakesMail = false;
            waitUntilIdle();
        }
        run(std::numeric_limits<std::size_t>::max());
    }
    end();
}

void Subscription::end() {
    std::shared_ptr<const void> gone; // after the lock
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_IsEnded = true;
    m_TakesMail = false;
    if (m_IsBusy && m_Runner == std::this_thread::get_id()) {
        return; // carryOn() does the rest
    }
    if (m_IsBusy && isInside()) {
        const std::string text = m_Name + ": ended from inside another callback while a call of its"
                                          " own is going on, which is not waited for";
        Logger::writeLog("CallbackError", text.c_str(), SOURCE, __LINE__);
        return;
    }
    waitUntilIdle();
    gone = takeCallback();
}

} // namespace nvrhw
