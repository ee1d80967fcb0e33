#pragma once

#include "platform/base/Export.h"

/// What GPIOOperator::set() was asked to do with a line over time: its arguments, as they stand
/// there.
struct NVRHW_API GPIOOperation {
    int group;       ///< the bank
    int bit;         ///< the line in it
    int mode;        ///< 1 hold, 2 toggle, 3 pulse; others as set() says
    int level;       ///< while it goes on, or begins
    int stopLevel;   ///< when it is over
    float frequency; ///< level changes a second, of a toggle
    int timeOut;     ///< milliseconds; 0 for no end
};

/// Is told what a GPIOOperator does, in the thread that does it, mostly with the operator's record
/// lock held: it must neither wait, nor raise, nor call the operator. For one line the calls come
/// in the order in which things happen, but that plain drives and pulses, which take no lock, are
/// told beside what the worker does.
class NVRHW_API IGPIOOperatorHook {
public:
    virtual ~IGPIOOperatorHook() = default;

    /// A line was driven, by a caller or the worker; `isDone` says whether the driver could.
    virtual void driven(int group, int bit, int level, bool isDone) = 0;

    /// An operation has begun, in place of the one that ran on the line, if one did; only a pulse
    /// leaves that running. The first drive of its level is told after it.
    virtual void begun(const GPIOOperation& operation) = 0;

    /// The operation that ran on the line, or the pulse (`mode` 3), has come to its end in time.
    virtual void ended(int group, int bit, int mode) = 0;

    /// An operation will not be carried on, because the worker cannot be started.
    virtual void refused(const GPIOOperation& operation) = 0;
};
