#pragma once

#include "lines/BoardLines.h"

/// An alarm input as the panel shows it.
struct PanelInput {
    enum State { ALARM, NORMAL, UNREADABLE, UNKNOWN };

    Line line;
    int level = -1; ///< 0 or 1; -1 while it cannot be read
    int flag = -1;  ///< of its last alarm message: 1 alarm, 0 normal; -1 before the first one

    /// What an application knows of the input: the messages say it, not the level.
    State state() const {
        return level < 0 ? UNREADABLE : flag < 0 ? UNKNOWN : flag != 0 ? ALARM : NORMAL;
    }
};
