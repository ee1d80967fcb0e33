#pragma once

#include "commands/Command.h"

/// Switches an alarm output off.
class CancelCommand : public Command {
public:
    CancelCommand() : Command("cancel", "Switch an alarm output off") {}

    int run(const Settings& settings) override;

protected:
    void setUp(CLI::App& app, Settings& settings) override;

private:
    int m_Id = 0;
    bool m_IsInverted = false;
    bool m_IsVerbose = false;
};
