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
    /// What the line is for.
    enum Purpose { AlarmInput, AlarmOutput };

    Purpose purpose = AlarmInput; ///< the section that it stands in
    int id = 0;                   ///< among those of its purpose
    std::string name{};           ///< empty when it has none
    Line line{};                  ///< where it is wired
    GPIOLineSettings settings{};  ///< how it is wired
};

} // namespace nvrhw
