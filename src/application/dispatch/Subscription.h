#pragma once

#include "application/dispatch/Mailbox.h"
#include "platform/base/ConditionVariable.h"
#include "platform/base/Mutex.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>

namespace nvrhw {

/// A registered callback and what waits for it. Thread-safe: anybody posts, anybody runs; the
/// callback is called by one thread at a time, without any lock.
class Subscription {
public:
    /// `name` is for the log: "an input registration".
    Subscription(std::string name, bool isInPlace);
    virtual ~Subscription();
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;

    /// Whether whoever posts also runs it; else the dispatcher does.
    bool isInPlace() const { return m_IsInPlace; }

    /// Calls the callback with what waits, or leaves that to the thread that is at it. After `most`
    /// calls it stops: true when something is still waiting.
    bool run(std::size_t most) NVRHW_EXCLUDES(m_Mutex);

    /// Makes the calling thread the one that is at it, before anybody else knows the subscription;
    /// runClaimed() then makes the calls.
    void claim() NVRHW_EXCLUDES(m_Mutex);
    void runClaimed() NVRHW_EXCLUDES(m_Mutex);

    /// Whether anything may be waiting.
    bool hasMail() const { return m_HasMail; }

    /// As Registration::end().
    void end() NVRHW_EXCLUDES(m_Mutex);

    /// As Registration::finish().
    void finish() NVRHW_EXCLUDES(m_Mutex);

    /// True in a thread that is inside a callback of any subscription.
    static bool isInside();

    /// As Registration::endCurrent().
    static bool endCurrent();

    /// Set while it stands in the dispatcher's list.
    std::atomic<bool> m_IsListed{false};

protected:
    /// Takes what the next call will tell; false when nothing waits.
    virtual bool take() NVRHW_REQUIRES(m_Mutex) = 0;

    /// Makes the call, by the thread that has taken.
    virtual void deliver() = 0;

    /// Hands the callback over, to be destroyed without the lock: what it holds may do anything
    /// then. It stays with the one who calls this first.
    virtual std::shared_ptr<const void> takeCallback() NVRHW_REQUIRES(m_Mutex) = 0;

    XQMutex m_Mutex;
    std::atomic<bool> m_HasMail{false}; // changed under m_Mutex
    bool m_TakesMail NVRHW_GUARDED_BY(m_Mutex) = true;

private:
    bool next() NVRHW_REQUIRES(m_Mutex);
    bool carryOn(std::size_t most) NVRHW_RELEASE(m_Mutex);
    void waitUntilIdle() NVRHW_REQUIRES(m_Mutex);
    void call();

    const std::string m_Name;
    const bool m_IsInPlace;
    ConditionVariable m_Idle;
    bool m_IsEnded NVRHW_GUARDED_BY(m_Mutex) = false;
    bool m_IsBusy NVRHW_GUARDED_BY(m_Mutex) = false;
    std::thread::id m_Runner NVRHW_GUARDED_BY(m_Mutex){};
};

/// A subscription to records of one kind.
template <typename Record> class RecordSubscription : public Subscription {
public:
    using Callback = std::function<void(const Record&)>;

    RecordSubscription(std::string name, bool isInPlace, Mailbox<Record> mailbox, Callback callback)
        : Subscription(std::move(name), isInPlace), m_Mailbox(std::move(mailbox)),
          m_Callback(std::make_shared<const Callback>(std::move(callback))) {}

    void post(const Record& record) NVRHW_EXCLUDES(m_Mutex) {
        const XQMutexManager guard(m_Mutex, "Subscription", __LINE__);
        if (m_TakesMail) {
            m_Mailbox.post(record);
            m_HasMail = true;
        }
    }

protected:
    bool take() override NVRHW_REQUIRES(m_Mutex) { return m_Mailbox.take(m_Taken); }
    void deliver() override { (*m_Callback)(m_Taken); }
    std::shared_ptr<const void> takeCallback() override NVRHW_REQUIRES(m_Mutex) {
        return std::exchange(m_Callback, nullptr);
    }

private:
    Mailbox<Record> m_Mailbox NVRHW_GUARDED_BY(m_Mutex);
    std::shared_ptr<const Callback> m_Callback; // changed under the lock while nobody is busy
    Record m_Taken{};
};

} // namespace nvrhw
