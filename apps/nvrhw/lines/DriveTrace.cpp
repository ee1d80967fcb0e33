#include "lines/DriveTrace.h"

DriveTrace::DriveTrace(const SafePointer<IGPIO>& driver, Listener listener)
    : m_Driver(driver), m_Listener(std::move(listener)) {}

int DriveTrace::set(int group, int bit, int level) {
    const int result = m_Driver->set(group, bit, level);
    const std::lock_guard<std::mutex> guard(m_Mutex);
    m_HasFailed = result == 0;
    if (m_HasFailed) {
        return result;
    }
    const auto [entry, isNew] = m_Levels.insert({{group, bit}, level});
    if (isNew || entry->second != level) {
        entry->second = level;
        m_Listener(level);
    }
    return result;
}

bool DriveTrace::hasFailed() const {
    const std::lock_guard<std::mutex> guard(m_Mutex);
    return m_HasFailed;
}
