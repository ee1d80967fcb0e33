#pragma once

#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

#include <memory>
#include <string>

/// A moment in UTC, to the second. A valid one is a day of the Gregorian calendar from 1970 to 9999
/// and a time from 00:00:00 to 23:59:59; a clock may hold less.
struct NVRHW_API DateTime {
    int year = 1970; ///< 1970 to 9999
    int month = 1;   ///< 1 to 12
    int day = 1;     ///< 1 to 31, 30, 29 or 28
    int hour = 0;    ///< 0 to 23
    int minute = 0;  ///< 0 to 59
    int second = 0;  ///< 0 to 59; there is no leap second
};

/// The board's real-time clock, which runs on while the board is without power, and the system
/// clock, which all processes of the board ask for the time. Operations return 1, or 0 with the
/// cause in the log and both clocks as they were. They may be called from several threads at once.
class NVRHW_API ISystemTime {
public:
    virtual ~ISystemTime() = default;

    /// Non-zero when the clock is ready.
    virtual int init() = 0;

    /// Reads the real-time clock; on 0, as when it lost its power, `utc` is as it was.
    virtual int getHardwareTime(DateTime& utc) = 0;

    /// Sets the real-time clock.
    virtual int setHardwareTime(const DateTime& utc) = 0;

    /// Sets the system clock from the real-time clock. It is then up to a second behind it.
    virtual int setSystemFromHardware() = 0;

    /// Sets the real-time clock from the system clock. It is then up to a second behind it.
    virtual int setHardwareFromSystem() = 0;
};

/// The clock that the configuration file names; docs/configuration.md describes the file. The
/// clock's device is a path of the board: a simulated board has none, so that nothing sets the
/// clocks of the machine it is played on.
///
/// A clock may run in local time: the hour that comes twice at the end of summer time is then taken
/// for one of the two, and so may come back shifted by an hour. Setting either clock may need a
/// privilege.
class NVRHW_API SystemTime : public ISystemTime {
public:
    NVRHW_TRACKED

    SystemTime();
    ~SystemTime() override;

    /// Reads the configuration file; where there is none, a log line says what is taken instead. 0
    /// when the file cannot be used: the other operations then fail, as they do before init(). It
    /// does not look whether there is a clock.
    int init() override;
    int getHardwareTime(DateTime& utc) override;
    int setHardwareTime(const DateTime& utc) override;
    int setSystemFromHardware() override;
    int setHardwareFromSystem() override;

    /// The clock's configuration file, a path of the board; to be set before init().
    std::string m_ConfigFileName;

private:
    struct Impl;
    std::unique_ptr<Impl> m_Impl;
};
