#pragma once

// This room: the board's alarm lines as every command sees them, read, listened to and driven
// through the library. It knows how facts are printed, but not who asks.

#include "alarm/AlarmOutMode.h"
#include "print/Fact.h"

#include <string>

/// An alarm input or output as the hardware configuration has it.
struct Line {
    int id = 0;
    std::string name{}; ///< empty when it has none
    int group = 0;
    int bit = 0;
    int validLevel = 0;
};

/// A line and what was found at it.
struct LineState {
    Line line{};
    int level = -1;      ///< 0 or 1; -1 when it could not be read
    std::string cause{}; ///< why it could not; empty when it could

    bool isReadable() const { return level >= 0; }
};

/// An alarm input.
struct InputState : LineState {
    enum State { ALARM, NORMAL, UNREADABLE, UNKNOWN };

    int userLevel = 0; ///< the user valid level
    State state = UNKNOWN;

    /// The state by the library's rule: in alarm while the line is at the valid level, or, when
    /// the user valid level is 1, while it is not.
    void judge();

    /// The state by the last alarm message's flag; UNKNOWN below 0, before the first one.
    void judgeBy(int flag);
};

/// An alarm output.
struct OutputState : LineState {
    enum Operation { NONE, HELD, FLASHING };

    static constexpr float DEFAULT_FREQUENCY = 2.0F; ///< level changes per second while flashing
    static constexpr double LOWEST_FREQUENCY = 0.01;
    static constexpr double HIGHEST_FREQUENCY = 20.0; ///< the library looks every 50 ms
    static constexpr int LONGEST_TIMEOUT = 2147483;   ///< milliseconds, the library's limit

    /// "0.01 to 20"
    static std::string frequencies();

    AlarmOutMode mode{};
    Operation operation = NONE; ///< what the library is doing with the line over time
    double remaining = 0.0;     ///< seconds until the operation ends; 0 when it has no end

    int activeLevel() const { return line.validLevel ^ mode.getValidSignal(); }
    bool isActive() const { return level == activeLevel(); }

    /// "steady", "flash" or "pulse".
    const char* modeName() const;

    /// "flash 5/s for 10 s, inverted"
    std::string modeText() const;
};

/// What is to be known of each, for tables, JSON and the panel.
Record describe(const InputState& input);
Record describe(const OutputState& output);
