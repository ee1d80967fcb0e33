#pragma once

#include "alarm/AlarmOutMode.h"
#include "commands/Command.h"

#include <string>

class EndSignals;
class OutputDrive;

/// Switches an alarm output on, and stays until a flashing or timed operation is over.
class TriggerCommand : public Command {
public:
    TriggerCommand() : Command("trigger", "Switch an alarm output on") {}

    int run(const Settings& settings) override;

protected:
    void setUp(CLI::App& app, Settings& settings) override;

private:
    AlarmOutMode wantedMode() const;
    bool carryOn(OutputDrive& drive, const EndSignals& signals) const;

    int m_Id = 0;
    std::string m_Mode = "steady";
    bool m_IsInverted = false;
    float m_Frequency = 0.0F;
    std::string m_Timeout;
    bool m_IsVerbose = false;
};
