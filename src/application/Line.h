#pragma once

#include "platform/GPIOLineSettings.h"

#include <string>

namespace nvrhw {

/// A GPIO line, as the hardware configuration has it.
struct Line {
    int bank = 0;       ///< "/dev/gpiodrv/<bank>"
    int bit = 0;        ///< within the bank
    int validLevel = 0; ///< 0 or 1: in alarm, or active, at this level
};

/// What the hardware configuration says of a line: all of it.
struct LineUse {
    enum Purpose { AlarmInput, AlarmOutput };

    Purpose purpose = AlarmInput;
    int id = 0;
    std::string name{}; ///< empty when it has none
    Line line{};
    GPIOLineSettings settings{};
};

} // namespace nvrhw
