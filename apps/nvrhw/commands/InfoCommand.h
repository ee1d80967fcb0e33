#pragma once

#include "commands/Command.h"

/// Prints what the board is and what is installed on it, as far as it can be read.
class InfoCommand : public Command {
public:
    InfoCommand()
        : Command("info", "Show the machine, its software, its GPIO banks and versions") {}

    int run(const Settings& settings) override;
};
