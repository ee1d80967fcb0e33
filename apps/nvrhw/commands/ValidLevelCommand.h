#pragma once

#include "commands/Command.h"

/// Shows how an alarm input is judged, and how another user valid level would judge it.
class ValidLevelCommand : public Command {
public:
    ValidLevelCommand()
        : Command("valid-level", "Show how an input is judged, or would be with a user level") {}

    int run(const Settings& settings) override;

protected:
    void setUp(CLI::App& app, Settings& settings) override;

private:
    int m_Id = 0;
    int m_Level = -1;
};
