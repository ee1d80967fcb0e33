#include "commands/Commands.h"
#include "lines/BoardLines.h"
#include "lines/LineFacts.h"
#include "print/Console.h"
#include "print/Duration.h"
#include "print/LineWriter.h"
#include "print/Signals.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <condition_variable>
#include <cstdio>
#include <functional>
#include <mutex>

namespace {

using Clock = std::chrono::steady_clock;
using nvrhw::Output;
using nvrhw::OutputChange;

constexpr int LOOK_MILLISECONDS = 10;
constexpr std::size_t MOST_LINES = 256; // of the trace, for a reader that is slow

struct Wish {
    std::string which{};
    int id = 0; // once the output is known
    std::string mode = "steady";
    bool isInverted = false;
    double frequency = 0.0;
    std::int64_t timeout = 0; // milliseconds
    bool isVerbose = false;
    bool isCancel = false;
    Clock::time_point start{};

    OutputMode wanted() const {
        OutputMode wanted;
        wanted.kind = mode == "flash"   ? OutputMode::FLASH
                      : mode == "pulse" ? OutputMode::PULSE
                                        : OutputMode::STEADY;
        if (frequency > 0.0 && wanted.kind != OutputMode::FLASH) {
            throw CLI::ValidationError("--frequency", "only a flashing output has a frequency");
        }
        if (timeout > 0 && wanted.kind == OutputMode::PULSE) {
            throw CLI::ValidationError("--timeout", "a pulse always lasts 10 ms");
        }
        wanted.frequency = frequency > 0.0 ? frequency : wanted.frequency;
        wanted.timeout = Output::Time(timeout);
        wanted.isInverted = isInverted;
        return wanted;
    }
};

// A line of the trace, or of the gaps in it.
std::string traceLine(const Wish& wish, const Settings& settings, Clock::time_point time,
                      const Fact& fact, const std::string& words) {
    const double seconds = std::chrono::duration<double>(time - wish.start).count();
    if (settings.json) {
        const double rounded = std::round(seconds * 1000) / 1000;
        return jsonText(Record{{"seconds", "", rounded}, {"output", "", wish.id}, fact}, -1);
    }
    char text[32];
    std::snprintf(text, sizeof text, "[%7.3f] output ", seconds);
    return text + std::to_string(wish.id) + " " + words + "\n";
}

std::string gapLine(const Wish& wish, const Settings& settings, int count) {
    return traceLine(wish, settings, Clock::now(), {"leftOut", "", count},
                     std::to_string(count) + " changes left out");
}

void printResult(const OutputView& view, const std::string& result, const Settings& settings) {
    if (settings.json) {
        Record record = describe(view);
        record.push_back({"result", "", result});
        Console::printLine(record);
        return;
    }
    Console::print("output " + std::to_string(view.output.id) + ": " + result + ", " +
                   (view.isReadable() ? "its level is " + std::to_string(view.state.level)
                                      : "but it is unreadable: " + view.state.cause.text()) +
                   "\n");
}

/// Has every drive put into the trace. The board tells of it in a thread of its own, which never
/// waits here, and somewhat later: wait() is for the rest of it. The mutex guards what was told.
class DriveTrace {
public:
    using Post = std::function<void(const OutputChange& change)>;

    DriveTrace(const nvrhw::Board& board, const Post& post)
        : m_Told(board.onDrive([this, post](const OutputChange& change) {
              post(change);
              note(change);
          })) {}

    /// Until this level has been told, and the end of an operation if there was one: what is told
    /// of an output's drives comes before the end that follows them.
    void wait(int level, bool hasEnd) {
        std::unique_lock<std::mutex> lock(m_Mutex);
        m_Noted.wait(lock, [&] { return m_Level == level && (m_HasEnded || !hasEnd); });
    }

private:
    static constexpr int NO_LEVEL = -1;

    void note(const OutputChange& change) {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_Level = change.kind == OutputChange::Driven ? change.level : m_Level;
        m_HasEnded = m_HasEnded || change.kind == OutputChange::Ended;
        m_Noted.notify_one();
    }

    std::mutex m_Mutex;
    std::condition_variable m_Noted;
    int m_Level = NO_LEVEL;
    bool m_HasEnded = false;
    const nvrhw::Registration m_Told; // it ends before what it uses
};

// False when a signal has come before the operation is over.
bool carryOn(const Output& output, const Signals& signals) {
    for (;;) {
        const nvrhw::OutputState now = output.state();
        if (now.failure.has_value()) {
            OutputMode::fail(output, *now.failure);
        }
        const bool isForGood = now.operation == Output::Hold && !now.remaining.has_value();
        if (now.operation == Output::None || isForGood) {
            return true;
        }
        if (signals.waitFor(LOOK_MILLISECONDS) != 0) {
            return false;
        }
    }
}

// The result in a word. When it returns the line needs nobody any more: whatever waits for a reader
// then can be ended by a signal. What fails in between the board puts to rest as it closes: the
// next drive may succeed, and that is the last one.
std::string carryOut(const Wish& wish, const OutputView& view, DriveTrace& trace,
                     const Signals& signals) {
    const OutputMode& mode = view.mode;
    const bool staysOn = mode.kind == OutputMode::STEADY && mode.timeout.count() == 0;
    mode.cancel(view.output);
    if (wish.isCancel) {
        trace.wait(1 - view.activeLevel(), false);
        return "switched off";
    }
    mode.trigger(view.output);
    const bool isWhole = carryOn(view.output, signals);
    if (!isWhole) {
        mode.cancel(view.output);
    }
    trace.wait(view.activeLevel() ^ (staysOn ? 0 : 1), !staysOn);
    return !isWhole ? "cancelled" : staysOn ? "switched on" : "done";
}

OutputView drive(Wish& wish, const OutputMode& mode, const Settings& settings, LineWriter& trace,
                 std::string& result) {
    const Signals signals;
    const nvrhw::Board board = BoardLines::look();
    OutputView view{board.output(wish.which), mode};
    wish.id = view.output.id;
    DriveTrace drives(board, [&](const OutputChange& change) {
        if (wish.isVerbose && change.leftOut > 0) {
            trace.post(gapLine(wish, settings, static_cast<int>(change.leftOut)));
        }
        if (wish.isVerbose && change.kind == OutputChange::Driven) {
            trace.post(traceLine(wish, settings, change.time.steady, {"level", "", change.level},
                                 "-> " + std::to_string(change.level)));
        }
    });
    result = carryOut(wish, view, drives, signals);
    view.state = view.output.state();
    return view;
}

int run(Wish& wish, const Settings& settings) {
    const OutputMode mode = wish.wanted();
    wish.start = Clock::now();
    LineWriter trace(MOST_LINES, &Console::print,
                     [&](int count) { return gapLine(wish, settings, count); });
    std::string result;
    const OutputView view = drive(wish, mode, settings, trace, result);
    const auto lasted = std::chrono::duration_cast<Output::Time>(Clock::now() - wish.start);
    trace.finish();
    printResult(view, result, settings);
    if (result == "cancelled" && wish.timeout > 0) {
        throw CommandError("cut short after " + Duration::text(lasted.count()) + " of " +
                           Duration::text(wish.timeout));
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
                   "Level changes per second while flashing, " + OutputMode::frequencies() +
                       " (default 2); a cycle of on and off takes two")
        ->check(
            CLI::Range(OutputMode::LOWEST_FREQUENCY, OutputMode::HIGHEST_FREQUENCY).description(""))
        ->type_name("CHANGES");
    Duration::addOption(app, "--timeout", wish->timeout, OutputMode::LONGEST_TIMEOUT.count(),
                        "End after this time: 500ms, 2s, 1m (up to " +
                            std::to_string(OutputMode::LONGEST_TIMEOUT.count()) +
                            "ms; default: no end)");
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
