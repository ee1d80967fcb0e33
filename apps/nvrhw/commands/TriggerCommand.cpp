#include "commands/Commands.h"
#include "gpio/GPIOOperateRecord.h"
#include "lines/OutputDrive.h"
#include "print/CommandError.h"
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
    int id = 0;
    std::string mode = "steady";
    bool isInverted = false;
    float frequency = 0.0F;
    std::int64_t timeout = 0; // milliseconds
    bool isVerbose = false;

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

/// What is driven, with its time, printed without holding up whoever drives.
class Trace {
public:
    Trace(const Wish& wish, const Settings& settings)
        : m_Wish(wish), m_IsJson(settings.json), m_Start(GPIOOperateRecord::now()),
          m_Writer(MOST_LINES, &Console::print, [this](int count) {
              return line({"leftOut", "", count}, std::to_string(count) + " changes left out");
          }) {}

    void add(int level) {
        if (m_Wish.isVerbose) {
            m_Writer.post(line({"level", "", level}, "-> " + std::to_string(level)));
        }
    }

    /// Waits until the reader has all of it.
    void finish() { m_Writer.finish(); }

    double seconds() const { return (GPIOOperateRecord::now() - m_Start) / SECOND; }

private:
    std::string line(const Fact& fact, const std::string& words) const {
        if (m_IsJson) {
            const double rounded = std::round(seconds() * 1000) / 1000;
            return jsonText(Record{{"seconds", "", rounded}, {"output", "", m_Wish.id}, fact}, -1);
        }
        char time[32];
        std::snprintf(time, sizeof time, "[%7.3f] output ", seconds());
        return time + std::to_string(m_Wish.id) + " " + words + "\n";
    }

    const Wish& m_Wish;
    const bool m_IsJson;
    const double m_Start;
    LineWriter m_Writer;
};

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

// False when a signal has come before the operation is over.
bool carryOn(OutputDrive& drive, const AlarmOutMode& mode, const Signals& signals) {
    try {
        while (drive.isRunning()) {
            if (signals.waitFor(LOOK_MILLISECONDS) != 0) {
                return false;
            }
        }
    } catch (const CommandError&) {
        drive.tryToCancel(mode); // the next drive may succeed, and it is the last one
        throw;
    }
    return true;
}

// When it returns the line needs nobody any more: whatever waits for a reader then can be ended by
// a signal.
bool drive(const Wish& wish, const AlarmOutMode& mode, Trace& trace, OutputState& state) {
    const Signals signals;
    OutputDrive output(wish.id, [&trace](int level) { trace.add(level); });
    output.trigger(mode);
    const bool isWhole = carryOn(output, mode, signals);
    if (!isWhole) {
        output.cancel(mode);
    }
    state = output.state(mode);
    return isWhole;
}

int runTrigger(const Wish& wish, const Settings& settings) {
    const AlarmOutMode mode = wish.wanted();
    Trace trace(wish, settings);
    OutputState state;
    const bool isWhole = drive(wish, mode, trace, state);
    const auto lasted = static_cast<std::int64_t>(trace.seconds() * 1000);
    trace.finish();
    const bool staysOn = mode.getMode() == AlarmOutMode::Steady && mode.getTimeout() == 0;
    printResult(state, !isWhole ? "cancelled" : staysOn ? "switched on" : "done", settings);
    if (!isWhole && mode.getTimeout() > 0) {
        throw CommandError("cut short after " + Duration::text(lasted) + " of " +
                           Duration::text(mode.getTimeout()));
    }
    return 0;
}

int runCancel(const Wish& wish, const Settings& settings) {
    const AlarmOutMode mode = wish.wanted();
    Trace trace(wish, settings);
    OutputDrive output(wish.id, [&trace](int level) { trace.add(level); });
    output.cancel(mode);
    trace.finish();
    printResult(output.state(mode), "switched off", settings);
    return 0;
}

} // namespace

void addTrigger(Commands& commands) {
    const auto wish = std::make_shared<Wish>();
    CLI::App& app =
        commands.add("trigger", "Switch an alarm output on",
                     [wish](const Settings& settings) { return runTrigger(*wish, settings); });
    app.add_option("OUTPUT", wish->id, "The output's id")->required()->type_name("");
    app.add_option("--mode", wish->mode, "steady (default), flash, or pulse, which lasts 10 ms")
        ->check(CLI::IsMember({"steady", "flash", "pulse"}))
        ->type_name("MODE");
    app.add_flag("--inverted", wish->isInverted, "Active is the other level than the valid level");
    app.add_option("--frequency", wish->frequency,
                   "Level changes per second while flashing, 0.01 to 20 (default 2); a cycle of "
                   "on and off takes two")
        ->check(CLI::Range(OutputState::LOWEST_FREQUENCY, OutputState::HIGHEST_FREQUENCY)
                    .description(""))
        ->type_name("CHANGES");
    Duration::addOption(app, "--timeout", wish->timeout, OutputState::LONGEST_TIMEOUT,
                        "End after this time: 500ms, 2s, 1m (up to 2147483ms; default: no end)");
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
    CLI::App& app =
        commands.add("cancel", "Switch an alarm output off",
                     [wish](const Settings& settings) { return runCancel(*wish, settings); });
    app.add_option("OUTPUT", wish->id, "The output's id")->required()->type_name("");
    app.add_flag("--inverted", wish->isInverted, "It was triggered with --inverted");
    app.add_flag("--verbose", wish->isVerbose, "Print the level change");
    app.footer(
        "An operation that another process carries on, a recorder or a trigger that is still\n"
        "running, drives the line again: end it there.");
}
