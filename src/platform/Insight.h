#pragma once

#include "platform/Cause.h"
#include "platform/base/Export.h"

#include <cstdint>
#include <vector>

/// What the framework knows beyond the results of its calls, for whoever explains them to people.
/// Every answer may be "nothing known", and nothing but explanations depends on it. Thread-safe.
class NVRHW_API Insight {
public:
    /// What was attempted at a line.
    enum Operation { READ, DRIVE, WATCH };

    /// Why the last attempt at a line failed, whichever driver or detector of this process made it.
    /// A watch belongs to the whole group, whatever the bit; a line that its bank cannot watch is
    /// one that cannot be read, and found there. False, and `cause` untouched, when the attempt
    /// succeeded, when there was none, and when nothing is known.
    static bool findLineFault(Operation operation, int group, int bit, Cause& cause);

    /// Why this thread's last reading or writing of a document failed. False, and `cause`
    /// untouched, when it did not, and when nothing is known.
    static bool findDocumentFault(Cause& cause);

    /// When the kernel saw the last edge of this line that it has reported: nanoseconds of
    /// CLOCK_MONOTONIC. A level may be read a moment before its edge is known: a time that is not
    /// after the line's last change belongs to that one. False, and `nanoseconds` untouched, when
    /// no edge is known. Does not allocate.
    static bool findLastEdge(int group, int bit, std::int64_t& nanoseconds);

    /// Every error of the board's documents, and a missing GPIO device: what would end or cripple a
    /// start. Each with a file, the line in it where there is one, and a sentence that begins with
    /// its subject; by file and line. Only reads. `linesOnly` leaves it at the hardware
    /// configuration and the device. A line that cannot be had at present is no such error.
    static std::vector<Cause> findDocumentErrors(bool linesOnly);
};
