#pragma once

#include "commands/Command.h"

/// Shows the board's lines live in the terminal, and lets its user try them.
class PanelCommand : public Command {
public:
    PanelCommand() : Command("panel", "Watch and try the lines in the terminal") {}

    int run(const Settings& settings) override;

protected:
    void setUp(CLI::App& app, Settings& settings) override;
};
