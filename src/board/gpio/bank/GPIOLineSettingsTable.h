#pragma once

#include "platform/GPIOLineSettings.h"

/// The settings of the lines of this process, whichever device the banks belong to. A line takes
/// them when it is first read, watched or driven. Thread-safe.
class GPIOLineSettingsTable {
public:
    /// Replaces what was set before.
    static void set(int group, int bit, const GPIOLineSettings& settings);

    /// The defaults for a line that nobody has set.
    static GPIOLineSettings get(int group, int bit);

    /// Of these the time alone, in milliseconds; does not allocate.
    static int debounceOf(int group, int bit);
};
