// The thread waits for subscriptions in m_Ready or for the end; a semaphore wakes it, with which a
// change costs one switch to it and no more. A subscription stands there at most once; it leaves
// the list before it runs, so that what is posted meanwhile lists it again. None keeps the thread
// for more than TURN calls while others wait.
//
// The end comes by stop(), from outside, or by finish(), from inside a callback: then the last
// thing the thread does may be to destroy this object, which pass() therefore no longer touches.
#include "application/dispatch/Dispatcher.h"

#include <utility>

namespace nvrhw {

namespace {

constexpr char SOURCE[] = "Dispatcher";
constexpr std::size_t TURN = 16;

} // namespace

Dispatcher::Dispatcher()
    : m_Thread(function<int>(&Dispatcher::pass, this), "nvrhwDispatch",
               function<int>(GThread::emptyFun), function<int>(GThread::emptyFun)) {
    sem_init(&m_Work, 0, 0);
}

Dispatcher::~Dispatcher() {
    stop();
    sem_destroy(&m_Work);
}

bool Dispatcher::start() { return m_Thread.start() != 0; }

void Dispatcher::wake(const std::shared_ptr<Subscription>& subscription) {
    if (subscription->m_IsListed.exchange(true)) {
        return;
    }
    {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        m_Ready.push_back(subscription);
    }
    sem_post(&m_Work); // without the lock, which the thread would only wake up to wait for
}

void Dispatcher::finish(std::function<void()> last) { beginEnd(std::move(last)); }

void Dispatcher::stop() {
    beginEnd(nullptr);
    m_Thread.stop();
}

void Dispatcher::beginEnd(std::function<void()> last) {
    {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        m_IsEnding = true;
        if (last) {
            m_Last = std::move(last);
        }
    }
    sem_post(&m_Work);
}

// False when it is time to end.
bool Dispatcher::waitForWork() {
    while (sem_wait(&m_Work) != 0) { // a signal has come
    }
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_Running.swap(m_Ready);
    if (m_IsEnding) {
        sem_post(&m_Work); // there may be another pass before the thread is stopped
    }
    return !m_IsEnding;
}

int Dispatcher::pass() {
    if (!waitForWork()) {
        std::function<void()> last;
        {
            const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
            last.swap(m_Last);
        }
        if (last) {
            last();
        }
        return 0;
    }
    for (const auto& subscription : m_Running) {
        subscription->m_IsListed = false;
        if (subscription->run(TURN)) {
            wake(subscription);
        }
    }
    m_Running.clear();
    return 0;
}

} // namespace nvrhw
