#include "platform/Time.h"

#include "board/runtime/StopSignal.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <ctime>

namespace {

constexpr long MICROSECONDS_PER_SECOND = 1000000;
constexpr long NANOSECONDS_PER_MICROSECOND = 1000;

std::atomic<TimeSource*> replacedSource{nullptr};

void sleepFor(const TarvikTime& duration) {
    timespec rest{};
    rest.tv_sec = duration.getSeconds();
    rest.tv_nsec = duration.getMicroseconds() * NANOSECONDS_PER_MICROSECOND;
    while (clock_nanosleep(CLOCK_MONOTONIC, 0, &rest, &rest) == EINTR) {
    }
}

} // namespace

TarvikTime::TarvikTime(long seconds, long microseconds)
    : m_Seconds(static_cast<std::int32_t>(seconds + microseconds / MICROSECONDS_PER_SECOND)),
      m_Microseconds(static_cast<std::int32_t>(microseconds % MICROSECONDS_PER_SECOND)) {
    if (m_Microseconds < 0) {
        m_Microseconds += MICROSECONDS_PER_SECOND;
        --m_Seconds;
    }
}

TarvikTime TarvikTime::currentTime() {
    if (TimeSource* source = replacedSource.load(std::memory_order_acquire)) {
        return source->now();
    }
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    TarvikTime time; // which has nothing to carry over
    time.m_Seconds = static_cast<std::int32_t>(now.tv_sec);
    time.m_Microseconds = static_cast<std::int32_t>(now.tv_nsec / NANOSECONDS_PER_MICROSECOND);
    return time;
}

void TarvikTime::wait(const TarvikTime& duration) {
    TimeSource* source = replacedSource.load(std::memory_order_acquire);
    const TarvikTime real = source != nullptr ? source->elapse(duration) : duration;
    if (real.getSeconds() < 0 || (real.getSeconds() == 0 && real.getMicroseconds() == 0)) {
        return;
    }
    if (StopSignal* stop = StopSignal::ofThisThread()) {
        stop->wait(real);
    } else {
        sleepFor(real);
    }
}

void TarvikTime::setTimeSource(TimeSource* source) {
    replacedSource.store(source, std::memory_order_release);
}

double XQDeviceTime::getSeconds() {
    using Seconds = std::chrono::duration<double>;
    return Seconds(std::chrono::system_clock::now().time_since_epoch()).count();
}
