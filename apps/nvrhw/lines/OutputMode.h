#pragma once

#include "nvrhw.h"

#include <string>

/// How an output is switched on, as somebody wants it.
struct OutputMode {
    enum Kind { STEADY, FLASH, PULSE };

    static constexpr double LOWEST_FREQUENCY = 0.01;
    static constexpr double HIGHEST_FREQUENCY =
        2000.0 / static_cast<double>(nvrhw::Output::SHORTEST_PERIOD.count());
    static constexpr auto LONGEST_TIMEOUT = nvrhw::Output::LONGEST_TIME;

    Kind kind = STEADY;
    double frequency = 2.0;         ///< level changes a second while flashing
    nvrhw::Output::Time timeout{0}; ///< 0: no end
    bool isInverted = false;

    /// "0.01 to 20"
    static std::string frequencies();

    /// "steady", "flash" or "pulse".
    const char* name() const;

    /// "flash 5/s for 10 s, inverted"
    std::string text() const;

    /// Switch an output on and off. These raise CommandError when its line cannot be driven.
    void trigger(const nvrhw::Output& output) const;
    void cancel(const nvrhw::Output& output) const;

    /// Raises CommandError for what has become of an output.
    [[noreturn]] static void fail(const nvrhw::Output& output, const nvrhw::Error& error);

private:
    nvrhw::Result start(const nvrhw::Output& output) const;
};
