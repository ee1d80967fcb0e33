#pragma once

#include "board/devices/DeviceFile.h"
#include "platform/SystemTime.h"

#include <string>

/// A real-time clock of the kernel, open for as long as the object lives. What cannot be done
/// throws a std::runtime_error.
class HardwareClock {
public:
    /// `isUtc` says whether the clock runs in UTC; else it is in the local time of the process.
    HardwareClock(const std::string& path, bool isUtc);

    DateTime read() const;
    void set(const DateTime& utc) const;

private:
    DeviceFile m_Device;
    bool m_IsUtc;
};
