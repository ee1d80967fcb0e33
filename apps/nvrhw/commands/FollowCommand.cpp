// The board's thread prints each message itself: while the reader of the program is stopped it
// waits for that one, and what comes meanwhile waits in the board's mailbox. The main thread waits
// for whatever ends the program. Either of them opens the end, which both see: never may a message
// that waits for its reader keep the program from ending.

#include "application/Moment.h"
#include "commands/Commands.h"
#include "lines/BoardLines.h"
#include "print/Console.h"
#include "print/Duration.h"
#include "print/LogBook.h"
#include "print/Signals.h"
#include "print/Table.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <ctime>
#include <exception>
#include <limits>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

using nvrhw::Input;
using nvrhw::InputChange;
using nvrhw::WallTime;

constexpr std::int64_t LONGEST_TIMEOUT = 24LL * 24 * 3600 * 1000; // milliseconds, for poll()
constexpr unsigned MOST_CHANGES = 10000; // kept for a reader that has stopped

struct Wish {
    int count = 0;
    std::int64_t timeout = 0; // milliseconds
    bool withPresent = false;
};

// Seconds since 1970, in milliseconds.
double secondsOf(WallTime time) {
    using namespace std::chrono;
    const auto whole = floor<milliseconds>(time.time_since_epoch());
    return static_cast<double>(whole.count()) / 1000.0;
}

std::string dateText(WallTime time) {
    const std::time_t second =
        std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
    std::tm local{};
    localtime_r(&second, &local);
    char text[16];
    std::strftime(text, sizeof text, "%Y-%m-%d ", &local);
    return text + nvrhw::clockText(time);
}

Record describe(const InputChange& change) {
    const std::string state = nvrhw::toText(change.state);
    const std::string padding =
        change.state == Input::Alarm && !change.input.name.empty() ? " " : "";
    const Style style = change.state == Input::Alarm    ? BAD
                        : change.state == Input::Normal ? GOOD
                                                        : DOUBTFUL;
    const int id = change.input.id;
    Record record{
        Fact{"time", "TIME", secondsOf(change.time.wall)}.says(dateText(change.time.wall)),
        {"received", "", secondsOf(nvrhw::Moment::now().wall)},
        Fact{"input", "INPUT", id}.says("input " + std::to_string(id)),
        Fact{"state", "STATE", state}.says(state + padding, style),
        {"name", "NAME", std::string(change.input.name)}};
    if (change.cause) {
        record.push_back({"cause", "CAUSE", change.cause.text()});
    }
    if (change.leftOut > 0) {
        const int count = static_cast<int>(change.leftOut);
        const std::string words = "(" + std::to_string(count) + " changes before it left out)";
        record.push_back(Fact{"leftOut", "LEFT OUT", count}.says(words));
    }
    return record;
}

void print(const InputChange& change, const Settings& settings) {
    const Record record = describe(change);
    if (settings.json) {
        Console::printLine(record);
    } else {
        Table table;
        table.addList({record}, false);
        table.print();
    }
}

class Follower {
public:
    Follower(const Wish& wish, const Settings& settings)
        : m_Wish(wish), m_Settings(settings), m_End(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}
    ~Follower() { close(m_End); }
    Follower(const Follower&) = delete;
    Follower& operator=(const Follower&) = delete;

    /// In the board's thread.
    void tell(const InputChange& change) {
        if (change.isPresent && !m_Wish.withPresent) {
            return;
        }
        pollfd files[] = {{m_End, POLLIN, 0}, {Console::file(), POLLOUT, 0}};
        poll(files, std::size(files), -1);
        if (files[0].revents != 0) {
            return;
        }
        try {
            print(change, m_Settings);
            ++m_Printed;
        } catch (...) {
            m_Failure = std::current_exception();
        }
        if (m_Failure != nullptr || m_Printed == m_Wish.count) {
            openEnd();
        }
    }

    /// In the main thread, until a signal, the last message, a failure, the time, or the end of the
    /// reader.
    void waitForEnd(const Signals& signals) const {
        pollfd files[] = {{signals.file(), POLLIN, 0}, {m_End, POLLIN, 0}, {Console::file(), 0, 0}};
        poll(files, std::size(files), m_Wish.timeout > 0 ? static_cast<int>(m_Wish.timeout) : -1);
        openEnd();
        static_cast<void>(signals.take()); // which has done its work
        if ((files[2].revents & (POLLERR | POLLHUP | POLLNVAL)) != 0) {
            throw ReaderGone();
        }
    }

    /// When nothing is told any more.
    void expectDone() const {
        if (m_Failure != nullptr) {
            std::rethrow_exception(m_Failure);
        }
        if (m_Printed < m_Wish.count) {
            throw CommandError("ended after " + std::to_string(m_Printed) + " of " +
                               std::to_string(m_Wish.count) + " messages");
        }
    }

private:
    void openEnd() const { eventfd_write(m_End, 1); }

    const Wish m_Wish;
    const Settings m_Settings;
    const int m_End; // readable from the end on
    int m_Printed = 0;
    std::exception_ptr m_Failure{};
};

int run(const Wish& wish, const Settings& settings) {
    const Signals signals;
    const nvrhw::Board board = BoardLines::watch(MOST_CHANGES);
    LogBook::follow();
    if (!settings.json && Console::isTerminal()) {
        Console::complain("following the alarm inputs; Ctrl-C ends it");
    }
    Follower follower(wish, settings);
    nvrhw::Registration watch =
        board.onInput([&](const InputChange& change) { follower.tell(change); });
    follower.waitForEnd(signals);
    watch.end();
    follower.expectDone();
    return 0;
}

void addAs(Commands& commands, const std::string& name, const std::string& group) {
    const auto wish = std::make_shared<Wish>();
    CLI::App& app = commands.add(name, "Follow the alarm messages of the inputs",
                                 [wish](const Settings& settings) { return run(*wish, settings); });
    app.group(group);
    app.add_option("--count", wish->count, "End after this many messages")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()).description(""))
        ->type_name("N");
    Duration::addOption(app, "--timeout", wish->timeout, LONGEST_TIMEOUT,
                        "End after this time: seconds, or such as 500ms, 1m");
    app.add_flag("--present", wish->withPresent, "Begin with the present state of every input");
    app.footer(
        "An input that cannot be read is told as unreadable, with the cause, and again when it is\n"
        "back. With --json each message is an object on a line of its own, written at once;\n"
        "\"time\" (of the change) and \"received\" (by this program) are seconds since 1970:\n\n"
        "  nvrhw follow --json | mosquitto_pub -h broker -t recorder/alarms -l\n\n"
        "For a reader that is too slow the changes of an input before its latest one are left "
        "out,\n"
        "and counted in \"leftOut\". It ends with Ctrl-C, and when its reader goes away. With both "
        "--count and\n"
        "--timeout, fewer messages than asked for end it with status 1.");
}

} // namespace

void addFollow(Commands& commands) {
    addAs(commands, "follow", "Subcommands");
    addAs(commands, "monitor", ""); // its name of old, hidden: `monitors` are something else
}
