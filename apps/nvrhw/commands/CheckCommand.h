#pragma once

#include "commands/Command.h"

/// Prints every fault of the board's documents and lines.
class CheckCommand : public Command {
public:
    CheckCommand() : Command("check", "Find every fault of the board's documents and lines") {}

    int run(const Settings& settings) override;

protected:
    void setUp(CLI::App& app, Settings& settings) override;

private:
    bool m_IsStrict = false;
};
