#include "lines/LineFacts.h"

#include <cstdio>

namespace {

constexpr int STATE_WIDTH = 12;
constexpr int REMAINING_WIDTH = 9;
constexpr char RAISED[] = "\u25CF";
constexpr char AT_REST[] = "\u25CB";
constexpr char DOUBT[] = "?";

Fact stateFact(const char* name, Style style, const char* mark) {
    return Fact{"state", "STATE", name}.says(name, style).where({"state", 0, STATE_WIDTH, mark});
}

Fact stateOf(nvrhw::Input::State state) {
    const char* name = nvrhw::toText(state);
    return state == nvrhw::Input::Alarm    ? stateFact(name, BAD, RAISED)
           : state == nvrhw::Input::Normal ? stateFact(name, GOOD, AT_REST)
                                           : stateFact(name, DOUBTFUL, DOUBT);
}

Fact stateOf(const OutputView& view) {
    const bool isActive = view.state.isActive;
    const char* mark = isActive ? RAISED : AT_REST;
    return !view.isReadable()                             ? stateFact("unreadable", DOUBTFUL, DOUBT)
           : view.state.operation == nvrhw::Output::Flash ? stateFact("flashing", BUSY, mark)
           : isActive                                     ? stateFact("active", BUSY, mark)
                                                          : stateFact("normal", PLAIN, mark);
}

// How long what an output does goes on; empty when it does nothing.
std::string remainingOf(const nvrhw::OutputState& state) {
    if (!state.remaining.has_value()) {
        return state.isActive || state.operation != nvrhw::Output::None ? "no end" : "";
    }
    char text[32];
    const double seconds = std::chrono::duration<double>(*state.remaining).count();
    const int whole = static_cast<int>(seconds);
    if (whole < 60) {
        std::snprintf(text, sizeof text, "%.1f s", seconds);
    } else {
        std::snprintf(text, sizeof text, "%d:%02d min", whole / 60, whole % 60);
    }
    return text;
}

// What every line has: `own` is what only its kind has, and stands among it.
template <typename Each>
Record describeLine(const Each& each, int level, const Cause& cause, const Fact& own,
                    const Fact& judged) {
    const bool isReadable = level >= 0;
    return {Fact{"id", "ID", each.id}.where({"", 0}),
            Fact{"name", "NAME", std::string(each.name)}.where({"", 1}),
            Fact{"bank", "BANK", each.line.bank}.where({"line", 4}),
            Fact{"bit", "BIT", each.line.bit}.where({"/", 4}),
            Fact{"validLevel", "VALID", each.line.validLevel},
            own,
            Fact{"level", "LEVEL", isReadable ? Value(level) : Value()}.where({"lvl", 3}),
            judged,
            Fact{isReadable ? "" : "cause", "CAUSE", isReadable ? "" : cause.text()}};
}

} // namespace

Record describe(const nvrhw::Input& input) {
    const nvrhw::Input::Status now = input.status();
    const Fact userLevel{"userValidLevel", "USER", input.isInverted() ? 1 : 0};
    return describeLine(input, now.level, now.cause, userLevel, stateOf(now.state));
}

Record describe(const OutputView& view) {
    const std::string mode = view.mode.text();
    Record record = describeLine(view.output, view.state.level, view.state.cause,
                                 Fact{"mode", "MODE", view.mode.name()}.says(mode), stateOf(view));
    record.push_back(Fact{"", "", remainingOf(view.state)}.where(
        {"left", 2, REMAINING_WIDTH})); // of the panel alone
    record.push_back(Fact{"", "", mode}.where({"mode", 5}));
    return record;
}
