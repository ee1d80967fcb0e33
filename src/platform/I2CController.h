#pragma once

#include "platform/Allocation.h"
#include "platform/Export.h"

/// The board's I2C buses.
class NVRHW_API I_I2CController {
public:
    virtual ~I_I2CController() = default;

    /// Non-zero when the controller is ready.
    virtual int init() = 0;
};

/// Holds no resource yet: init() has nothing to prepare, and no bus can be reached through it.
class NVRHW_API I2CController : public I_I2CController {
public:
    NVRHW_TRACKED

    int init() override;
};
