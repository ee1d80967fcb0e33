#include "board/devices/CalendarTime.h"

#include <cstdio>
#include <stdexcept>

namespace {

struct Field {
    const char* name;
    int DateTime::*value;
    int lowest;
    int highest;
};

constexpr Field FIELDS[] = {
    {"year", &DateTime::year, 1970, 9999}, {"month", &DateTime::month, 1, 12},
    {"day", &DateTime::day, 1, 31},        {"hour", &DateTime::hour, 0, 23},
    {"minute", &DateTime::minute, 0, 59},  {"second", &DateTime::second, 0, 59},
};

void checkField(const DateTime& moment, const Field& field, int highest) {
    const int value = moment.*field.value;
    if (value < field.lowest || value > highest) {
        throw std::runtime_error(CalendarTime::textOf(moment) + ": the " + field.name +
                                 " must be from " + std::to_string(field.lowest) + " to " +
                                 std::to_string(highest));
    }
}

int daysOf(int year, int month) {
    constexpr int DAYS[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isLeapYear = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return DAYS[month - 1] + (month == 2 && isLeapYear ? 1 : 0);
}

/// timegm and mktime say -1 when a 32-bit system's time ends before.
std::time_t known(std::time_t seconds, const DateTime& moment) {
    if (seconds == -1) {
        throw std::runtime_error(CalendarTime::textOf(moment) +
                                 ": this system's time cannot hold it");
    }
    return seconds;
}

} // namespace

std::string CalendarTime::textOf(const DateTime& moment) {
    char text[80];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", moment.year, moment.month,
                  moment.day, moment.hour, moment.minute, moment.second);
    return text;
}

void CalendarTime::check(const DateTime& moment) {
    for (const Field& field : FIELDS) {
        const bool isDay = field.value == &DateTime::day;
        checkField(moment, field, isDay ? daysOf(moment.year, moment.month) : field.highest);
    }
}

std::time_t CalendarTime::secondsOf(const DateTime& utc) {
    auto record = toRecord<std::tm>(utc);
    return known(timegm(&record), utc);
}

DateTime CalendarTime::fromSeconds(std::time_t seconds) {
    std::tm record{};
    gmtime_r(&seconds, &record);
    return fromRecord(record);
}

DateTime CalendarTime::toLocal(const DateTime& utc) {
    const std::time_t seconds = secondsOf(utc);
    std::tm record{};
    localtime_r(&seconds, &record);
    return fromRecord(record);
}

DateTime CalendarTime::fromLocal(const DateTime& local) {
    auto record = toRecord<std::tm>(local);
    record.tm_isdst = -1;
    return fromSeconds(known(mktime(&record), local));
}
