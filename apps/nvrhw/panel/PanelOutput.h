#pragma once

#include "alarm/AlarmOutMode.h"
#include "lines/BoardLines.h"

/// An alarm output as the panel shows it.
struct PanelOutput {
    enum Operation { NONE, HELD, FLASHING };

    Line line;
    int level = -1; ///< 0 or 1; -1 while it cannot be read
    AlarmOutMode mode{};
    Operation operation = NONE; ///< what the library is doing with the line over time
    double remaining = 0.0;     ///< seconds until the operation ends; 0 when it has no end

    int activeLevel() const { return line.validLevel ^ mode.getValidSignal(); }
    bool isActive() const { return level == activeLevel(); }
};
