#pragma once

#include "commands/Command.h"

#include <chrono>
#include <string>

class AlarmInformation;
class AlarmQueue;
class EndSignals;
class BoardLines;

/// Follows the alarm messages.
class FollowCommand : public Command {
public:
    FollowCommand() : Command("monitor", "Follow the alarm messages of the inputs") {}

    int run(const Settings& settings) override;

protected:
    void setUp(CLI::App& app, Settings& settings) override;

private:
    using Clock = std::chrono::steady_clock;

    static bool waitForMessage(const AlarmQueue& queue, const EndSignals& signals,
                               Clock::time_point end);
    static void print(const AlarmInformation& alarm, const Settings& settings,
                      const BoardLines& lines);

    int m_Count = 0;
    std::string m_Timeout;
    bool m_WithPresent = false;
};
