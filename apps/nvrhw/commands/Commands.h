#pragma once

#include "commands/Command.h"

#include <memory>
#include <vector>

/// All subcommands, in the order in which the help lists them.
class Commands {
public:
    Commands();

    void addTo(CLI::App& program, Settings& settings);

    /// Runs the one that the parsed command line asks for; returns the exit status.
    int run(const Settings& settings);

private:
    std::vector<std::unique_ptr<Command>> m_Commands;
};
