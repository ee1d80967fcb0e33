#pragma once

#include "Command.h"

#include <chrono>
#include <string>

class AlarmInformation;
class AlarmQueue;
class EndSignals;
class Lines;

/// Follows the alarm messages.
class MonitorCommand : public Command {
public:
    MonitorCommand() : Command("monitor", "Follow the alarm messages of the inputs") {}

    int run(const Settings& settings) override;

protected:
    void setUp(CLI::App& app, Settings& settings) override;

private:
    using Clock = std::chrono::steady_clock;

    static bool waitForMessage(const AlarmQueue& queue, const EndSignals& signals,
                               Clock::time_point end);
    static void print(const AlarmInformation& alarm, const Settings& settings, const Lines& lines);

    int m_Count = 0;
    std::string m_Timeout;
    bool m_WithPresent = false;
};
