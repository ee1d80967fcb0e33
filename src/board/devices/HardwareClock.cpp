#include "board/devices/HardwareClock.h"

#include "board/devices/CalendarTime.h"

#include <cerrno>
#include <fcntl.h>
#include <linux/rtc.h>

HardwareClock::HardwareClock(const std::string& path, bool isUtc)
    : m_Device(path, O_RDONLY, {{EBUSY, "another process has it open"}}), m_IsUtc(isUtc) {}

DateTime HardwareClock::read() const {
    rtc_time time{};
    m_Device.control(RTC_RD_TIME, &time, "reading",
                     {{EINVAL, "it lost its power or was never set"}});
    const DateTime held = CalendarTime::fromRecord(time);
    return m_IsUtc ? held : CalendarTime::fromLocal(held);
}

void HardwareClock::set(const DateTime& utc) const {
    CalendarTime::check(utc);
    const DateTime held = m_IsUtc ? utc : CalendarTime::toLocal(utc);
    auto time = CalendarTime::toRecord<rtc_time>(held);
    m_Device.control(RTC_SET_TIME, &time, "setting it to " + CalendarTime::textOf(held),
                     {{EACCES, "the capability CAP_SYS_TIME is needed"},
                      {ERANGE, "beyond what the clock can hold"}});
}
