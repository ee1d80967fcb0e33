#pragma once

#include "nvrhw.h"

/// Ways to the lines of the board at the root directory.
class BoardLines {
public:
    BoardLines() = delete;

    /// Opens the board for its lines alone, so that they can be tried before the rest is right.
    /// Raises CommandError.
    static nvrhw::Board watch(unsigned mailbox = nvrhw::BoardOptions().mailbox);

    /// The same for a command that looks or drives and ends: it watches nothing, and shows by
    /// itself why a line cannot be used, so that the log keeps silent about that.
    static nvrhw::Board look();

    /// Gives the line of an input on a simulated bank the other level, as another process would,
    /// and returns that. Raises CommandError when it cannot be done.
    static int flip(const nvrhw::Input& input);
};
