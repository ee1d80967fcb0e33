#pragma once

#include "platform/Allocation.h"
#include "platform/Export.h"

/// The board's network interfaces. Offers no operation yet.
class NVRHW_API INetController {
public:
    virtual ~INetController() = default;
};

class NVRHW_API NetController : public INetController {
public:
    NVRHW_TRACKED
};
