#include "commands/Commands.h"
#include "lines/AlarmWatch.h"
#include "print/CommandError.h"
#include "print/Console.h"
#include "print/Duration.h"
#include "print/LogBook.h"
#include "print/Signals.h"
#include "print/Table.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <limits>
#include <poll.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::int64_t LONGEST_TIMEOUT = 24LL * 24 * 3600 * 1000; // milliseconds
constexpr std::size_t MOST_EVENTS = 100000; // kept for a reader that has stopped
constexpr double SECOND = 1000.0;           // milliseconds

struct Wish {
    int count = 0;
    std::int64_t timeout = 0; // milliseconds
    bool withPresent = false;
};

// For poll(): -1 when there is no end.
int millisecondsUntil(Clock::time_point end) {
    using namespace std::chrono;
    if (end == Clock::time_point::max()) {
        return -1;
    }
    const auto left = ceil<milliseconds>(end - Clock::now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, std::numeric_limits<int>::max()));
}

Record describe(const Event& event, const BoardLines& lines) {
    std::string name;
    for (const Line& line : lines.inputs()) {
        name = name.empty() && line.id == event.inputId ? line.name : name;
    }
    const bool isAlarm = event.kind == Event::ALARM;
    const std::string padding = isAlarm && !name.empty() ? " " : "";
    const std::string state = isAlarm ? "alarm" : "normal";
    const double received = static_cast<double>(event.received) / SECOND;
    return {Fact{"time", "TIME", event.time}.says(event.dateText()),
            Fact{"received", "RECEIVED", received}.says(event.receivedText(true)),
            Fact{"input", "INPUT", event.inputId}.says("input " + std::to_string(event.inputId)),
            Fact{"state", "STATE", state}.says(state + padding, isAlarm ? BAD : GOOD),
            {"name", "NAME", name}};
}

void print(const Event& event, const BoardLines& lines, const Settings& settings) {
    const Record record = describe(event, lines);
    if (settings.json) {
        Console::printLine(record);
    } else {
        Table table;
        table.addList({record}, false);
        table.print();
    }
}

/// The messages one by one, each when it can be written: signals are still answered while the
/// reader of the program is stopped, and the mailbox counts what has no room meanwhile.
class Messages {
public:
    Messages(AlarmMailbox& mailbox, Clock::time_point end) : m_Mailbox(mailbox), m_End(end) {}

    /// False when it is time to end.
    bool wait(const Signals& signals) {
        for (;;) {
            receive();
            const bool isEmpty = m_Mail.events.empty();
            const short wanted = isEmpty ? 0 : POLLOUT;
            pollfd files[] = {{signals.file(), POLLIN, 0},
                              {Console::file(), wanted, 0},
                              {isEmpty ? m_Mailbox.file() : -1, POLLIN, 0}};
            const int ready = poll(files, std::size(files), millisecondsUntil(m_End));
            if ((files[1].revents & (POLLERR | POLLHUP | POLLNVAL)) != 0) {
                throw ReaderGone();
            }
            if (ready == 0 || signals.take() != 0) {
                return false;
            }
            if ((files[1].revents & POLLOUT) != 0) {
                return true;
            }
        }
    }

    Event take() {
        Event event = m_Mail.events.front();
        m_Mail.events.pop_front();
        return event;
    }

private:
    void receive() {
        if (m_Mail.events.empty()) {
            m_Mail = m_Mailbox.take();
            if (m_Mail.lost > 0) {
                Console::complain(std::to_string(m_Mail.lost) +
                                  " messages are lost: nobody has read them in time");
            }
        }
    }

    AlarmMailbox& m_Mailbox;
    AlarmMailbox::Mail m_Mail;
    const Clock::time_point m_End;
};

int run(const Wish& wish, const Settings& settings) {
    const Clock::time_point end = wish.timeout == 0
                                      ? Clock::time_point::max()
                                      : Clock::now() + std::chrono::milliseconds(wish.timeout);
    const Signals signals;
    const BoardLines lines;
    AlarmMailbox mailbox(MOST_EVENTS);
    const AlarmWatch watch(lines, mailbox, wish.withPresent);
    if (!watch.isWatching()) {
        throw CommandError("the inputs cannot be watched: " + LogBook::takeCause("no cause given"));
    }
    LogBook::follow();
    if (!settings.json && Console::isTerminal()) {
        Console::complain("following the alarm inputs; Ctrl-C ends it");
    }
    Messages messages(mailbox, end);
    int printed = 0;
    while ((wish.count == 0 || printed < wish.count) && messages.wait(signals)) {
        print(messages.take(), lines, settings);
        ++printed;
    }
    if (printed < wish.count) {
        throw CommandError("ended after " + std::to_string(printed) + " of " +
                           std::to_string(wish.count) + " messages");
    }
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
        "A message has two times: its own, the second in which the library saw the change, and\n"
        "when this program received it, with milliseconds. With --json each message is an object\n"
        "on a line of its own, written at once; \"time\" and \"received\" are seconds since "
        "1970:\n\n"
        "  nvrhw follow --json | mosquitto_pub -h broker -t recorder/alarms -l\n\n"
        "The command ends with Ctrl-C, and when its reader goes away. With both --count and\n"
        "--timeout, fewer messages than asked for end it with status 1.");
}

} // namespace

void addFollow(Commands& commands) {
    addAs(commands, "follow", "Subcommands");
    addAs(commands, "monitor", ""); // its name of old, hidden: `monitors` are something else
}
