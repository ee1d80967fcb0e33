#pragma once

#include "platform/Cause.h"

#include <vector>

/// Notices changes of lines of one bank, for one detector, which keeps its calls apart.
class GPIOBankWatch {
public:
    /// What drain() found, the weightier the higher.
    enum Finding {
        NOTHING,
        CHANGED, ///< a covered line may have changed
        LOST     ///< changes may have been missed and may be missed from now on: make a new watch
    };

    virtual ~GPIOBankWatch() = default;

    /// Each readable when drain() has something to find there. The same for the life of the watch.
    virtual std::vector<int> getDescriptors() const = 0;

    /// Milliseconds after which drain() is wanted in any case, and whenever something else happens;
    /// negative when it is not.
    virtual int getTimeout() const { return -1; }

    /// Covers one more line: a change after the return is found. A line that cannot be had now is
    /// tried again by drain(). False, and `cause`, when the watch is lost.
    virtual bool add(int bit, Cause& cause) = 0;
    virtual void remove(int bit) = 0;

    /// Takes what is pending at the descriptors that were readable, without blocking: bit n of the
    /// mask stands for the nth. A change that comes after the return makes one readable again.
    virtual Finding drain(unsigned readable) = 0;
};
