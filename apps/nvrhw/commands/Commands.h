#pragma once

// This room: what the words of the command line mean. Each command has one .cpp with one function
// that adds it to the parser and one that does it; nothing else includes the parser, but for the
// room generate and Duration.

#include <functional>
#include <memory>
#include <string>

namespace CLI {
class App;
} // namespace CLI

/// What may be asked of every command.
struct Settings {
    std::string board{};
    bool json = false;
};

/// The program's commands, in the order in which the help lists them.
class Commands {
public:
    /// Does it and returns the exit status: 0 done, 1 what was asked failed. Raises CommandError
    /// when it cannot, and CLI::ValidationError for options that do not go together.
    using Run = std::function<int(const Settings&)>;

    Commands();
    ~Commands();
    Commands(const Commands&) = delete;
    Commands& operator=(const Commands&) = delete;

    /// Parses the command line and runs what it asks for. Returns the exit status: 2 for a wrong
    /// command line, which is then explained on standard error.
    int run(int argc, const char* const* argv);

    /// The subcommand, to which its own options are to be added; `run` has to own them.
    CLI::App& add(const std::string& name, const std::string& description, Run run);

    /// A subcommand of a subcommand, which knows the common options, too.
    CLI::App& addBelow(CLI::App& parent, const std::string& name, const std::string& description);

    const CLI::App& program() const { return *m_Program; }

private:
    void addSettings(CLI::App& app);

    Settings m_Settings;
    std::unique_ptr<CLI::App> m_Program;
    Run m_Chosen; // the command that the parser has found
};

void addInfo(Commands& commands);
void addCheck(Commands& commands);
void addAbilities(Commands& commands);
void addMonitors(Commands& commands);
void addInputs(Commands& commands);
void addOutputs(Commands& commands);
void addFollow(Commands& commands);
void addTrigger(Commands& commands);
void addCancel(Commands& commands);
void addFlip(Commands& commands);
void addValidLevel(Commands& commands);
void addPanel(Commands& commands);
void addBoard(Commands& commands);
void addGenerate(Commands& commands);
