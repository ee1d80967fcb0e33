#include "board/HardwareClock.h"

#include "board/CalendarTime.h"

#include <cerrno>
#include <fcntl.h>
#include <linux/rtc.h>

HardwareClock::HardwareClock(const std::string& path, bool isUtc)
    : m_Device(path, O_RDONLY, {{EBUSY, "another process has it open"}}), m_IsUtc(isUtc) {}

DateTime HardwareClock::read() const {
    rtc_time time{};
    m_Device.control(RTC_RD_TIME, &time, "reading",
                     {{EINVAL, "it lost its power or was never set"}});
    const DateTime held{time.tm_year + 1900, time.tm_mon + 1, time.tm_mday,
                        time.tm_hour,        time.tm_min,     time.tm_sec};
    return m_IsUtc ? held : CalendarTime::fromLocal(held);
}

void HardwareClock::set(const DateTime& utc) const {
    CalendarTime::check(utc);
    const DateTime held = m_IsUtc ? utc : CalendarTime::toLocal(utc);
    rtc_time time{};
    time.tm_year = held.year - 1900;
    time.tm_mon = held.month - 1;
    time.tm_mday = held.day;
    time.tm_hour = held.hour;
    time.tm_min = held.minute;
    time.tm_sec = held.second;
    m_Device.control(RTC_SET_TIME, &time, "setting it to " + CalendarTime::textOf(held),
                     {{EACCES, "the capability CAP_SYS_TIME is needed"},
                      {ERANGE, "beyond what the clock can hold"}});
}
