#pragma once

#include "platform/Gpio.h"
#include "platform/base/Export.h"

#include <vector>

/// Is told what an IOAlarmInManager finds at its lines, in the thread that finds it. It must not
/// raise.
class NVRHW_API IAlarmInHook {
public:
    virtual ~IAlarmInHook() = default;

    /// A batch was read: the inputs whose lines could be read, in the order of the configuration;
    /// one that is missing could not. Called with the manager's lock held, so that batches come in
    /// the order in which they were read: it must neither wait nor call the manager.
    virtual void judged(const std::vector<IOState>& states) = 0;

    /// setValidLevel() was called for an input there is; also with the lock held.
    virtual void validLevelSet(int id, int level) = 0;

    /// Follows each of the two above, without the lock: it may take its time and call anything.
    virtual void released() = 0;
};
