#pragma once

#include "commands/Command.h"

#include <string>

/// Writes what goes with the program; the build and the completion call it, the help does not
/// show it.
class GenerateCommand : public Command {
public:
    GenerateCommand() : Command("generate", "Write the completion, a part of the manual, or ids") {}

    int run(const Settings& settings) override;

protected:
    void setUp(CLI::App& app, Settings& settings) override;

private:
    std::string text() const;

    const CLI::App* m_Program = nullptr;
    std::string m_What;
};
