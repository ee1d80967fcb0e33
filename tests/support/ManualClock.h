#pragma once

#include "platform/Time.h"

#include <cstdint>
#include <mutex>
#include <thread>

/// The time of the test, for as long as the object lives. It stands still until advance() is
/// called or the thread that made the clock waits: that wait takes no real time and moves the
/// clock forward. A wait in any other thread parks it until the thread is stopped, or moves the
/// clock, too.
class ManualClock : public TimeSource {
public:
    enum OtherThreads { PARKED, MOVES_FOR_ALL };

    explicit ManualClock(OtherThreads others = PARKED) : m_Others(others) {
        TarvikTime::setTimeSource(this);
    }
    ~ManualClock() override { TarvikTime::setTimeSource(nullptr); }
    ManualClock(const ManualClock&) = delete;
    ManualClock& operator=(const ManualClock&) = delete;

    TarvikTime now() override {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        return {static_cast<long>(m_Now / SECOND), static_cast<long>(m_Now % SECOND)};
    }

    TarvikTime elapse(const TarvikTime& duration) override {
        if (m_Others == PARKED && std::this_thread::get_id() != m_Maker) {
            return {PARKED_SECONDS, 0};
        }
        advance(duration.getSeconds() * SECOND + duration.getMicroseconds());
        return {};
    }

    void advance(std::int64_t microseconds) {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_Now += microseconds;
    }

private:
    static constexpr std::int64_t SECOND = 1000000;
    static constexpr long PARKED_SECONDS = 3600;

    const OtherThreads m_Others;
    const std::thread::id m_Maker = std::this_thread::get_id();
    std::mutex m_Mutex;
    std::int64_t m_Now = 1000 * SECOND; // guarded by m_Mutex
};
