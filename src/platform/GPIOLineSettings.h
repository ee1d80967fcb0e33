#pragma once

#include "platform/base/Export.h"

#include <string>

/// How a line is wired, as far as that is known. What is not set is left as the board has it.
/// An input follows `debounce` and `bias`, an output `drive` and `bias`.
struct NVRHW_API GPIOLineSettings {
    /// What holds a line that nobody drives.
    enum Bias { BIAS_UNSET, PULL_UP, PULL_DOWN, BIAS_DISABLED };

    /// Which levels an output drives itself.
    enum Drive { DRIVE_UNSET, PUSH_PULL, OPEN_DRAIN, OPEN_SOURCE };

    std::string name{};        ///< for people and tools; no two lines need to differ
    int debounce = 0;          ///< milliseconds a new level must hold before it counts
    Bias bias = BIAS_UNSET;    ///< for inputs and outputs
    Drive drive = DRIVE_UNSET; ///< for outputs
};
