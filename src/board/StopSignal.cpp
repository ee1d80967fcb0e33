#include "board/StopSignal.h"

#include <chrono>
#include <sys/eventfd.h>

namespace {

thread_local StopSignal* currentSignal = nullptr;

} // namespace

void StopSignal::request() {
    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_Requested.store(true, std::memory_order_release);
        if (m_Event.isValid()) {
            eventfd_write(m_Event.get(), 1);
        }
    }
    m_Changed.notify_all();
}

void StopSignal::wait(const TarvikTime& duration) {
    const auto length = std::chrono::seconds(duration.getSeconds()) +
                        std::chrono::microseconds(duration.getMicroseconds());
    std::unique_lock<std::mutex> lock(m_Mutex);
    m_Changed.wait_for(lock, length, [this] { return isRequested(); });
}

int StopSignal::getDescriptor() {
    const std::lock_guard<std::mutex> guard(m_Mutex);
    if (!m_Event.isValid()) {
        m_Event = FileDescriptor(eventfd(isRequested() ? 1 : 0, EFD_CLOEXEC | EFD_NONBLOCK));
    }
    return m_Event.get();
}

StopSignal* StopSignal::ofThisThread() { return currentSignal; }

StopSignal::Scope::Scope(StopSignal& signal) { currentSignal = &signal; }

StopSignal::Scope::~Scope() { currentSignal = nullptr; }
