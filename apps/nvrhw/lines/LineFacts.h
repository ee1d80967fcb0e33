#pragma once

// This room: the board's alarm lines as every command sees them. It knows how facts are printed,
// but not who asks.

#include "lines/OutputMode.h"
#include "print/Fact.h"

/// An output, how it is or would be switched on, and what was found at it.
struct OutputView {
    nvrhw::Output output;
    OutputMode mode{};
    nvrhw::OutputState state{};

    int activeLevel() const { return output.line.validLevel ^ (mode.isInverted ? 1 : 0); }
    bool isReadable() const { return state.level >= 0; }

    /// Whether it flashes, or ends after a time.
    bool changesByItself() const {
        return state.operation == nvrhw::Output::Flash || state.remaining.has_value();
    }
};

/// What is to be known of each, for tables, JSON and the panel.
Record describe(const nvrhw::Input& input);
Record describe(const OutputView& view);
