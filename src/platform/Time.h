#pragma once

#include "platform/base/Export.h"

#include <cstdint>

class NVRHW_API TimeSource;

/// A time or a duration: seconds and microseconds. Times count from an arbitrary start and never
/// jump: setting the wall clock neither delays nor hastens an operation.
class NVRHW_API TarvikTime {
public:
    TarvikTime() = default;

    /// Carries the microseconds beyond a second over to the seconds.
    TarvikTime(long seconds, long microseconds);

    /// Whole seconds, and the microseconds (0 to 999999) beyond them.
    std::int32_t getSeconds() const { return m_Seconds; }
    std::int32_t getMicroseconds() const { return m_Microseconds; }

    /// Now.
    static TarvikTime currentTime();

    /// Blocks the calling thread for `duration`. In a thread run by a GThread the wait is cut
    /// short by GThread::stop(), and later waits in that thread return at once.
    static void wait(const TarvikTime& duration);

    /// Replaces the clock behind currentTime() and wait(), for tests; null brings the system's
    /// clock back. Not owned: it must live until it was replaced and every thread that uses it
    /// has left it. Set it while no other thread uses the time.
    static void setTimeSource(TimeSource* source);

private:
    std::int32_t m_Seconds = 0;
    std::int32_t m_Microseconds = 0;
};

/// A clock that tests put in place of the system's.
class NVRHW_API TimeSource {
public:
    virtual ~TimeSource() = default;

    /// What TarvikTime::currentTime() answers. Called from any thread.
    virtual TarvikTime now() = 0;

    /// Called in the thread that waits; returns how long it shall really block. A manual clock
    /// moves its own time forward and returns zero.
    virtual TarvikTime elapse(const TarvikTime& duration) = 0;
};

/// The device's wall clock.
class NVRHW_API XQDeviceTime {
public:
    /// Seconds since 1970-01-01 00:00 UTC.
    static double getSeconds();
};
