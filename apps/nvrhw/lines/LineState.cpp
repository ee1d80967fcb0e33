#include "lines/LineState.h"

#include "print/Duration.h"

#include <cstdio>

namespace {

constexpr double MINUTE = 60.0;
constexpr int STATE_WIDTH = 12;
constexpr int REMAINING_WIDTH = 9;
constexpr char RAISED[] = "\u25CF";
constexpr char AT_REST[] = "\u25CB";
constexpr char DOUBT[] = "?";

template <typename T> std::string format(const char* pattern, T value) {
    char text[32];
    std::snprintf(text, sizeof text, pattern, value);
    return text;
}

Fact stateFact(const char* name, Style style, const char* mark) {
    return Fact{"state", "STATE", name}.says(name, style).where({"state", 0, STATE_WIDTH, mark});
}

Fact stateOf(const InputState& input) {
    switch (input.state) {
    case InputState::ALARM:
        return stateFact("alarm", BAD, RAISED);
    case InputState::NORMAL:
        return stateFact("normal", GOOD, AT_REST);
    case InputState::UNREADABLE:
        return stateFact("unreadable", DOUBTFUL, DOUBT);
    default:
        return stateFact("unknown", DOUBTFUL, DOUBT);
    }
}

Fact stateOf(const OutputState& output) {
    if (!output.isReadable()) {
        return stateFact("unreadable", DOUBTFUL, DOUBT);
    }
    const char* mark = output.isActive() ? RAISED : AT_REST;
    if (output.operation == OutputState::FLASHING) {
        return stateFact("flashing", BUSY, mark);
    }
    return output.isActive() ? stateFact("active", BUSY, mark) : stateFact("normal", PLAIN, mark);
}

// How long what an output does goes on; empty when it does nothing.
std::string remainingOf(const OutputState& output) {
    if (output.operation == OutputState::NONE) {
        return output.isActive() ? "no end" : "";
    }
    if (output.remaining == 0.0) {
        return output.mode.getTimeout() == 0 ? "no end" : "0.0 s"; // over with the next pass
    }
    if (output.remaining < MINUTE) {
        return format("%.1f s", output.remaining);
    }
    const int seconds = static_cast<int>(output.remaining);
    return std::to_string(seconds / 60) + format(":%02d min", seconds % 60);
}

// What every line has: `own` is what only its kind has, and stands among it.
Record describeLine(const LineState& state, const Fact& own, const Fact& judged) {
    const Line& line = state.line;
    const Value level = state.isReadable() ? Value(state.level) : Value();
    return {Fact{"id", "ID", line.id}.where({"", 0}),
            Fact{"name", "NAME", line.name}.where({"", 1}),
            Fact{"bank", "BANK", line.group}.where({"line", 4}),
            Fact{"bit", "BIT", line.bit}.where({"/", 4}),
            Fact{"validLevel", "VALID", line.validLevel},
            own,
            Fact{"level", "LEVEL", level}.where({"lvl", 3}),
            judged,
            Fact{state.isReadable() ? "" : "cause", "CAUSE", state.cause}};
}

} // namespace

void InputState::judge() { judgeBy((line.validLevel ^ level) == userLevel ? 1 : 0); }

void InputState::judgeBy(int flag) {
    state = !isReadable() ? UNREADABLE : flag < 0 ? UNKNOWN : flag != 0 ? ALARM : NORMAL;
}

std::string OutputState::frequencies() {
    return format("%g to ", LOWEST_FREQUENCY) + format("%g", HIGHEST_FREQUENCY);
}

const char* OutputState::modeName() const {
    return mode.getMode() == AlarmOutMode::Flash   ? "flash"
           : mode.getMode() == AlarmOutMode::Pulse ? "pulse"
                                                   : "steady";
}

std::string OutputState::modeText() const {
    std::string text = modeName();
    if (mode.getMode() == AlarmOutMode::Flash) {
        text += format(" %g/s", static_cast<double>(mode.getFrequency()));
    } else if (mode.getMode() == AlarmOutMode::Pulse) {
        text += " of 10 ms";
    }
    if (mode.getTimeout() > 0 && mode.getMode() != AlarmOutMode::Pulse) {
        text += " for " + Duration::text(mode.getTimeout());
    }
    return text + (mode.getValidSignal() == AlarmOutMode::Inverted ? ", inverted" : "");
}

Record describe(const InputState& input) {
    return describeLine(input, Fact{"userValidLevel", "USER", input.userLevel}, stateOf(input));
}

Record describe(const OutputState& output) {
    const Fact mode{"mode", "MODE", output.modeName()};
    Record record = describeLine(output, mode.says(output.modeText()), stateOf(output));
    record.push_back(Fact{"", "", remainingOf(output)}.where(
        {"left", 2, REMAINING_WIDTH})); // of the panel alone
    record.push_back(Fact{"", "", output.modeText()}.where({"mode", 5}));
    return record;
}
