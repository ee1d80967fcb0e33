#pragma once

#include "board/gpio/bank/GPIOFaultBook.h"
#include "platform/base/Export.h"

/// Why lines of the device "/dev/gpiodrv" below the root directory fail at present, for programs
/// that show it. Thread-safe.
class NVRHW_API GPIOFaults {
public:
    /// Of the log's records about lines, which say the same.
    static constexpr const char* SUBJECT = GPIOFaultBook::SUBJECT;

    /// READ, DRIVE and WATCH. A watch belongs to the whole group, whatever the bit; a line that
    /// its bank cannot watch is one that cannot be read, and found there.
    using Operation = GPIOFaultBook::Operation;

    /// The cause of the failure of the last attempt, whichever driver or detector of this process
    /// made it. False, and `cause` untouched, when that succeeded, when there was none, and when
    /// no driver or detector has the device any more.
    static bool find(Operation operation, int group, int bit, Cause& cause);
};
