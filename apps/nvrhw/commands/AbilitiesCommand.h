#pragma once

#include "commands/Command.h"

/// Prints all that the ability documents say.
class AbilitiesCommand : public Command {
public:
    AbilitiesCommand() : Command("abilities", "Show what the recorder can do, by section") {}

    int run(const Settings& settings) override;
};
