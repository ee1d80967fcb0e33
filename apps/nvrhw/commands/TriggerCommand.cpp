#include "commands/Commands.h"
#include "gpio/GPIOOperateRecord.h"
#include "lines/OutputDrive.h"
#include "print/Console.h"
#include "print/Duration.h"
#include "print/LineWriter.h"
#include "print/Signals.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <cstdio>

namespace {

constexpr int LOOK_MILLISECONDS = 10;
constexpr std::size_t MOST_LINES = 256; // of the trace, for a reader that is slow
constexpr double SECOND = 1e6;          // microseconds

struct Wish {
    std::string which{};
    int id = 0; // once the output is known
    std::string mode = "steady";
    bool isInverted = false;
    float frequency = 0.0F;
    std::int64_t timeout = 0; // milliseconds
    bool isVerbose = false;
    bool isCancel = false;
    double start = 0.0; // microseconds, as GPIOOperateRecord::now()

    AlarmOutMode wanted() const {
        const AlarmOutMode::Mode kind = mode == "flash"   ? AlarmOutMode::Flash
                                        : mode == "pulse" ? AlarmOutMode::Pulse
                                                          : AlarmOutMode::Steady;
        const bool isFlash = kind == AlarmOutMode::Flash;
        if (frequency > 0.0F && !isFlash) {
            throw CLI::ValidationError("--frequency", "only a flashing output has a frequency");
        }
        if (timeout > 0 && kind == AlarmOutMode::Pulse) {
            throw CLI::ValidationError("--timeout", "a pulse always lasts 10 ms");
        }
        return {kind, isInverted ? AlarmOutMode::Inverted : AlarmOutMode::Direct,
                static_cast<int>(timeout),
                isFlash && frequency == 0.0F ? OutputState::DEFAULT_FREQUENCY : frequency};
    }
};

// A line of the trace, or of the gaps in it.
std::string traceLine(const Wish& wish, const Settings& settings, const Fact& fact,
                      const std::string& words) {
    const double seconds = (GPIOOperateRecord::now() - wish.start) / SECOND;
    if (settings.json) {
        const double rounded = std::round(seconds * 1000) / 1000;
        return jsonText(Record{{"seconds", "", rounded}, {"output", "", wish.id}, fact}, -1);
    }
    char time[32];
    std::snprintf(time, sizeof time, "[%7.3f] output ", seconds);
    return time + std::to_string(wish.id) + " " + words + "\n";
}

void printResult(const OutputState& state, const std::string& result, const Settings& settings) {
    if (settings.json) {
        Record record = describe(state);
        record.push_back({"result", "", result});
        Console::printLine(record);
        return;
    }
    Console::print("output " + std::to_string(state.line.id) + ": " + result + ", " +
                   (state.isReadable() ? "its level is " + std::to_string(state.level)
                                       : "but it is unreadable: " + state.cause) +
                   "\n");
}

// False when a signal has come before the operation is over; the output is then off.
bool carryOn(OutputDrive& drive, const AlarmOutMode& mode, const Signals& signals) {
    try {
        while (drive.isRunning()) {
            if (signals.waitFor(LOOK_MILLISECONDS) != 0) {
                drive.cancel(mode);
                return false;
            }
        }
    } catch (const CommandError&) {
        drive.tryToCancel(mode); // the next drive may succeed, and it is the last one
        throw;
    }
    return true;
}

// The result in a word. When it returns the line needs nobody any more: whatever waits for a reader
// then can be ended by a signal.
std::string drive(Wish& wish, const AlarmOutMode& mode, LineWriter& trace, const Settings& settings,
                  OutputState& state) {
    const Signals signals;
    OutputDrive output(wish.which, [&](int level) {
        if (wish.isVerbose) {
            trace.post(
                traceLine(wish, settings, {"level", "", level}, "-> " + std::to_string(level)));
        }
    });
    wish.id = output.id();
    std::string result = "switched off";
    if (wish.isCancel) {
        output.cancel(mode);
    } else {
        output.trigger(mode);
        const bool staysOn = mode.getMode() == AlarmOutMode::Steady && mode.getTimeout() == 0;
        const bool isWhole = carryOn(output, mode, signals);
        result = !isWhole ? "cancelled" : staysOn ? "switched on" : "done";
    }
    state = output.state(mode);
    return result;
}

int run(Wish& wish, const Settings& settings) {
    const AlarmOutMode mode = wish.wanted();
    wish.start = GPIOOperateRecord::now();
    LineWriter trace(MOST_LINES, &Console::print, [&](int count) {
        return traceLine(wish, settings, {"leftOut", "", count},
                         std::to_string(count) + " changes left out");
    });
    OutputState state;
    const std::string result = drive(wish, mode, trace, settings, state);
    const double lasted = (GPIOOperateRecord::now() - wish.start) / 1000;
    trace.finish();
    printResult(state, result, settings);
    if (result == "cancelled" && mode.getTimeout() > 0) {
        throw CommandError("cut short after " + Duration::text(static_cast<std::int64_t>(lasted)) +
                           " of " + Duration::text(mode.getTimeout()));
    }
    return 0;
}

CLI::App& add(Commands& commands, const char* name, const char* description,
              const std::shared_ptr<Wish>& wish) {
    CLI::App& app = commands.add(name, description,
                                 [wish](const Settings& settings) { return run(*wish, settings); });
    app.add_option("OUTPUT", wish->which, "The output's id or name")->required()->type_name("");
    return app;
}

} // namespace

void addTrigger(Commands& commands) {
    const auto wish = std::make_shared<Wish>();
    CLI::App& app = add(commands, "trigger", "Switch an alarm output on", wish);
    app.add_option("--mode", wish->mode, "steady (default), flash, or pulse, which lasts 10 ms")
        ->check(CLI::IsMember({"steady", "flash", "pulse"}))
        ->type_name("MODE");
    app.add_flag("--inverted", wish->isInverted, "Active is the other level than the valid level");
    app.add_option("--frequency", wish->frequency,
                   "Level changes per second while flashing, " + OutputState::frequencies() +
                       " (default 2); a cycle of on and off takes two")
        ->check(CLI::Range(OutputState::LOWEST_FREQUENCY, OutputState::HIGHEST_FREQUENCY)
                    .description(""))
        ->type_name("CHANGES");
    Duration::addOption(app, "--timeout", wish->timeout, OutputState::LONGEST_TIMEOUT,
                        "End after this time: 500ms, 2s, 1m (up to " +
                            std::to_string(OutputState::LONGEST_TIMEOUT) + "ms; default: no end)");
    app.add_flag("--verbose", wish->isVerbose, "Print the level it begins with, and each change");
    app.footer(
        "A steady output without --timeout stays on when the command has ended: cancel\n"
        "switches it off. While a flashing or timed output is on the command stays, and\n"
        "Ctrl-C switches it off. One of the two processes loses when a recorder drives the\n"
        "same line. What --verbose prints never holds up the line: for a reader that is too\n"
        "slow changes are left out, and counted.");
}

void addCancel(Commands& commands) {
    const auto wish = std::make_shared<Wish>();
    wish->isCancel = true;
    CLI::App& app = add(commands, "cancel", "Switch an alarm output off", wish);
    app.add_flag("--inverted", wish->isInverted, "It was triggered with --inverted");
    app.add_flag("--verbose", wish->isVerbose, "Print the level change");
    app.footer(
        "An operation that another process carries on, a recorder or a trigger that is still\n"
        "running, drives the line again: end it there.");
}
