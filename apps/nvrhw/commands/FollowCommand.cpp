#include "commands/Commands.h"
#include "lines/AlarmMailbox.h"
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
#include <utility>

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
            Fact{"received", "RECEIVED", received}.says(event.receivedText()),
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

// Waits until there is a message in `mail` that can be written; false when it is time to end.
// Signals are answered even while the reader of the program is stopped, and the mailbox counts what
// has no room meanwhile.
bool waitForMessage(AlarmMailbox& mailbox, AlarmMailbox::Mail& mail, const Signals& signals,
                    Clock::time_point end) {
    for (;;) {
        if (mail.events.empty()) {
            mail = mailbox.take();
        }
        if (const std::size_t lost = std::exchange(mail.lost, 0); lost > 0) {
            Console::complain(std::to_string(lost) +
                              " messages are lost: nobody read them in time");
        }
        const bool isEmpty = mail.events.empty();
        const short wanted = isEmpty ? 0 : POLLOUT;
        pollfd files[] = {{signals.file(), POLLIN, 0},
                          {Console::file(), wanted, 0},
                          {isEmpty ? mailbox.file() : -1, POLLIN, 0}};
        const int ready = poll(files, std::size(files), millisecondsUntil(end));
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
    AlarmMailbox::Mail mail;
    int printed = 0;
    for (; (wish.count == 0 || printed < wish.count) && waitForMessage(mailbox, mail, signals, end);
         ++printed) {
        print(mail.events.front(), lines, settings);
        mail.events.pop_front();
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
