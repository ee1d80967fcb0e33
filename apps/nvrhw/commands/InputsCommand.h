#pragma once

#include "commands/Command.h"

/// Lists the alarm inputs with their states.
class InputsCommand : public Command {
public:
    InputsCommand() : Command("inputs", "List the alarm inputs and their states") {}

    int run(const Settings& settings) override;

protected:
    void setUp(CLI::App& app, Settings& settings) override;
};
