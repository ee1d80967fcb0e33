#include "board/runtime/StopSignal.h"

#include <chrono>
#include <sys/eventfd.h>

namespace {

constexpr char SOURCE[] = "StopSignal";

thread_local StopSignal* currentSignal = nullptr;

} // namespace

void StopSignal::request() {
    {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        m_Requested.store(true, std::memory_order_release);
        if (m_Event >= 0) {
            eventfd_write(m_Event, 1);
        }
    }
    m_Changed.notifyAll();
}

void StopSignal::wait(const TarvikTime& duration) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    if (isRequested()) {
        return;
    }
    const auto length = std::chrono::seconds(duration.getSeconds()) +
                        std::chrono::microseconds(duration.getMicroseconds());
    const auto end = std::chrono::steady_clock::now() + length;
    do {
        m_Changed.waitUntil(m_Mutex, end, SOURCE, __LINE__);
    } while (!isRequested() && std::chrono::steady_clock::now() < end);
}

void StopSignal::setEvent(int event) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_Event = event;
}

StopSignal* StopSignal::ofThisThread() { return currentSignal; }

StopSignal::Scope::Scope(StopSignal& signal) { currentSignal = &signal; }

StopSignal::Scope::~Scope() { currentSignal = nullptr; }
