#pragma once

#include "platform/Allocation.h"
#include "platform/Export.h"

#include <string>

/// The board's real-time clock.
class NVRHW_API ISystemTime {
public:
    virtual ~ISystemTime() = default;

    /// Non-zero when the clock is ready.
    virtual int init() = 0;
};

/// Holds no resource yet: init() has nothing to prepare, and the clock cannot be reached through
/// it.
class NVRHW_API SystemTime : public ISystemTime {
public:
    NVRHW_TRACKED

    int init() override;

    /// The driver's configuration file; to be set before init().
    std::string m_ConfigFileName;
};
