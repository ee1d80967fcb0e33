#pragma once

#include "commands/Command.h"

#include <string>

/// Writes a sample board to start from.
class BoardCommand : public Command {
public:
    BoardCommand() : Command("board", "Write a sample board to start from") {}

    int run(const Settings& settings) override;

protected:
    void setUp(CLI::App& app, Settings& settings) override;

private:
    std::string m_Directory;
};
