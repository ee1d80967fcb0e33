// The thread waits for subscriptions in m_Ready or for the end. A subscription stands there at most
// once; it leaves the list before it runs, so that what is posted meanwhile lists it again. None
// keeps the thread for more than TURN calls while others wait.
//
// The end comes by stop(), from outside, or by finish(), from inside a callback: then the last
// thing the thread does may be to destroy this object, which pass() therefore no longer touches.
#include "application/Dispatcher.h"

#include <utility>

namespace nvrhw {

namespace {

constexpr char SOURCE[] = "Dispatcher";
constexpr std::size_t TURN = 16;

} // namespace

Dispatcher::Dispatcher()
    : m_Thread(function<int>(&Dispatcher::pass, this), "nvrhwDispatch",
               function<int>(GThread::emptyFun), function<int>(GThread::emptyFun)) {}

Dispatcher::~Dispatcher() { stop(); }

bool Dispatcher::start() { return m_Thread.start() != 0; }

void Dispatcher::wake(const std::shared_ptr<Subscription>& subscription) {
    if (subscription->m_IsListed.exchange(true)) {
        return;
    }
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_Ready.push_back(subscription);
    m_Work.notifyAll();
}

void Dispatcher::finish(std::function<void()> last) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_Last = std::move(last);
    m_IsEnding = true;
    m_Work.notifyAll();
}

void Dispatcher::stop() {
    {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        m_IsEnding = true;
        m_Work.notifyAll();
    }
    m_Thread.stop();
}

// False when it is time to end.
bool Dispatcher::waitForWork() {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    while (m_Ready.empty() && !m_IsEnding) {
        m_Work.wait(m_Mutex, SOURCE, __LINE__);
    }
    m_Running.swap(m_Ready);
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
