#pragma once

#include "commands/Command.h"

/// Lists the alarm outputs with their states.
class OutputsCommand : public Command {
public:
    OutputsCommand() : Command("outputs", "List the alarm outputs and their states") {}

    int run(const Settings& settings) override;

protected:
    void setUp(CLI::App& app, Settings& settings) override;
};
