#pragma once

#include "commands/Settings.h"

#include <CLI/CLI.hpp>

/// A subcommand of the program.
class Command {
public:
    Command(const char* name, const char* description) : m_Name(name), m_Description(description) {}
    virtual ~Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    /// Makes the subcommand and its options known. The command must outlive `program`.
    void addTo(CLI::App& program, Settings& settings) {
        m_App = program.add_subcommand(m_Name, m_Description);
        settings.addTo(*m_App);
        setUp(*m_App, settings);
    }

    /// Whether the command line asks for this one.
    bool isChosen() const { return m_App->parsed(); }

    /// Does it and returns the exit status: 0 done, 1 what was asked failed. Raises CommandError
    /// when it cannot, and CLI::ValidationError for options that do not go together.
    virtual int run(const Settings& settings) = 0;

protected:
    /// Adds the command's own options.
    virtual void setUp(CLI::App& /*app*/, Settings& /*settings*/) {}

private:
    const char* m_Name;
    const char* m_Description;
    CLI::App* m_App = nullptr;
};
