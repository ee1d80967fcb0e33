#include "commands/FollowCommand.h"

#include "lines/AlarmWatch.h"
#include "print/CommandError.h"
#include "print/Console.h"
#include "print/Duration.h"
#include "print/EndSignals.h"
#include "print/LogBook.h"
#include "print/Table.h"

#include <algorithm>
#include <ctime>
#include <limits>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr std::int64_t LONGEST_TIMEOUT = 24LL * 24 * 3600 * 1000; // milliseconds

std::string timeText(long seconds) {
    const std::time_t time = seconds;
    std::tm local{};
    localtime_r(&time, &local);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    return text;
}

// For poll(): -1 when there is no end.
int millisecondsUntil(std::chrono::steady_clock::time_point end) {
    using namespace std::chrono;
    if (end == steady_clock::time_point::max()) {
        return -1;
    }
    const auto left = ceil<milliseconds>(end - steady_clock::now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, std::numeric_limits<int>::max()));
}

std::string nameOf(const std::string& id, const BoardLines& lines) {
    for (const Line& line : lines.inputs()) {
        if (std::to_string(line.id) == id) {
            return line.name;
        }
    }
    return "";
}

} // namespace

void FollowCommand::setUp(CLI::App& app, Settings& /*settings*/) {
    app.add_option("--count", m_Count, "End after this many messages")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()).description(""))
        ->type_name("N");
    app.add_option("--timeout", m_Timeout, "End after this time: seconds, or such as 500ms, 1m")
        ->check(Duration::between(1, LONGEST_TIMEOUT))
        ->type_name("S");
    app.add_flag("--present", m_WithPresent, "Begin with the present state of every input");
    app.footer(
        "With --json each message is an object on a line of its own, written at once:\n\n"
        "  nvrhw monitor --json | mosquitto_pub -h broker -t recorder/alarms -l\n\n"
        "The command ends with Ctrl-C, and when its reader goes away. With both --count and\n"
        "--timeout, fewer messages than asked for end it with status 1.");
}

int FollowCommand::run(const Settings& settings) {
    const Clock::time_point end =
        m_Timeout.empty() ? Clock::time_point::max()
                          : Clock::now() + std::chrono::milliseconds(Duration::parse(m_Timeout));
    const EndSignals signals;
    AlarmWatch watch(m_WithPresent);
    LogBook::follow();
    if (!settings.json && isatty(STDOUT_FILENO) != 0) {
        Console::complain("following the alarm inputs; Ctrl-C ends it");
    }
    int printed = 0;
    while ((m_Count == 0 || printed < m_Count) && waitForMessage(watch.queue(), signals, end)) {
        print(watch.queue().take(), settings, watch.lines());
        ++printed;
    }
    if (printed < m_Count) {
        throw CommandError("ended after " + std::to_string(printed) + " of " +
                           std::to_string(m_Count) + " messages");
    }
    return 0;
}

// False when it is time to end.
bool FollowCommand::waitForMessage(const AlarmQueue& queue, const EndSignals& signals,
                                   Clock::time_point end) {
    for (;;) {
        // A message is fetched only when it can be written, so that signals are still answered
        // while the reader of the program is stopped.
        const bool isEmpty = queue.isEmpty();
        const short wanted = isEmpty ? 0 : POLLOUT;
        pollfd files[] = {{signals.file(), POLLIN, 0},
                          {STDOUT_FILENO, wanted, 0},
                          {isEmpty ? queue.file() : -1, POLLIN, 0}};
        const int ready = poll(files, std::size(files), millisecondsUntil(end));
        if ((files[1].revents & (POLLERR | POLLHUP | POLLNVAL)) != 0) {
            throw ReaderGone();
        }
        if (ready == 0 || (files[0].revents & POLLIN) != 0) {
            return false;
        }
        if ((files[1].revents & POLLOUT) != 0) {
            return true;
        }
    }
}

void FollowCommand::print(const AlarmInformation& alarm, const Settings& settings,
                          const BoardLines& lines) {
    const std::string& id = alarm.getAlarmSourceId();
    const std::string name = nameOf(id, lines);
    const bool isAlarm = alarm.getAlarmFlag() != 0;
    if (settings.json) {
        Console::printLine({{"time", alarm.getAlarmTime()},
                            {"input", std::atoi(id.c_str())},
                            {"name", name},
                            {"state", isAlarm ? "alarm" : "normal"}});
        return;
    }
    const std::string padding = isAlarm && !name.empty() ? " " : "";
    Table table({{""}, {""}, {""}, {""}});
    table.add({timeText(alarm.getAlarmTime()),
               "input " + id,
               {isAlarm ? "alarm" + padding : "normal", isAlarm ? Table::BAD : Table::GOOD},
               name});
    table.print();
}
