#pragma once

#include "platform/SystemTime.h"

#include <ctime>
#include <string>

/// Checks and converts moments. What cannot be done throws a std::runtime_error.
class CalendarTime {
public:
    /// "2026-05-06 21:15:24"
    static std::string textOf(const DateTime& moment);

    /// Throws when there is no such moment: "<text>: <the first field that is wrong>".
    static void check(const DateTime& moment);

    /// Seconds since 1970, of a valid moment. Throws when the system's time cannot hold it.
    static std::time_t secondsOf(const DateTime& utc);
    static DateTime fromSeconds(std::time_t seconds);

    /// To and from a record with the fields of std::tm, which the kernel's clocks have too.
    template <typename Record> static Record toRecord(const DateTime& moment) {
        Record record{};
        record.tm_year = moment.year - 1900;
        record.tm_mon = moment.month - 1;
        record.tm_mday = moment.day;
        record.tm_hour = moment.hour;
        record.tm_min = moment.minute;
        record.tm_sec = moment.second;
        return record;
    }
    template <typename Record> static DateTime fromRecord(const Record& record) {
        return {record.tm_year + 1900, record.tm_mon + 1, record.tm_mday,
                record.tm_hour,        record.tm_min,     record.tm_sec};
    }

    /// Between UTC and the local time of the process.
    static DateTime toLocal(const DateTime& utc);
    static DateTime fromLocal(const DateTime& local);
};
