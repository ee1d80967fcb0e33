// nvrhw: what a board has, what its lines do, and why its configuration would fail.

#include "check/Suggestion.h"
#include "commands/Commands.h"
#include "foundation/Version.h"
#include "platform/BoardVersion.h"
#include "print/CommandError.h"
#include "print/Console.h"
#include "print/LogBook.h"

#include <CLI/CLI.hpp>
#include <csignal>
#include <exception>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

enum ExitStatus { DONE = 0, FAILED = 1, WRONG_USAGE = 2 };

std::string versionText() {
    return std::string("nvrhw ") + NVRHW_VERSION + "\nlibrary " + Version::text() +
           "\nboard layer " + BoardVersion::text();
}

/// What was asked for, as far as it was understood.
const CLI::App& chosenOf(const CLI::App& program) {
    const CLI::App* app = &program;
    while (!app->get_subcommands().empty()) {
        app = app->get_subcommands().front();
    }
    return *app;
}

/// The words that name it: "nvrhw monitors set".
std::string nameOf(const CLI::App& app) {
    const CLI::App* parent = app.get_parent();
    return (parent != nullptr ? nameOf(*parent) + " " : "") + app.get_name();
}

std::string mistake(const CLI::App& chosen, const CLI::Error& error) {
    const std::vector<std::string> unknown = chosen.remaining();
    if (chosen.get_require_subcommand_min() == 0 || unknown.empty()) {
        return error.what();
    }
    std::vector<std::string> names; // the parser only says that one of them is missing
    for (const CLI::App* app : chosen.get_subcommands({})) {
        if (!app->get_group().empty()) { // not a hidden one
            names.push_back(app->get_name());
        }
    }
    return "There is no " + nameOf(chosen) + " " + unknown.front() +
           Suggestion::among(names, unknown.front());
}

void setUp(CLI::App& program, Settings& settings) {
    program.require_subcommand(1);
    program.set_version_flag("--version", versionText(), "Print the version and exit");
    settings.addTo(program);
    program.failure_message([](const CLI::App* app, const CLI::Error& error) {
        const CLI::App& chosen = chosenOf(*app);
        return "nvrhw: " + Console::harmless(mistake(chosen, error)) + "; see `" + nameOf(chosen) +
               " --help`\n";
    });
}

int run(int argc, const char* const* argv) {
    Commands commands;
    Settings settings;
    CLI::App program("What a recorder's board has and what its lines do.", "nvrhw");
    setUp(program, settings);
    commands.addTo(program, settings);
    try {
        program.parse(argc, argv);
        settings.apply();
        LogBook::open();
        return commands.run(settings);
    } catch (const CLI::Error& error) {
        std::ostringstream text; // help and version, or what is wrong
        const bool isHelp = program.exit(error, text, std::cerr) == 0;
        Console::print(text.str());
        return isHelp ? DONE : WRONG_USAGE;
    }
}

} // namespace

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN); // writing then fails, which ends the program quietly
    try {
        const int status = run(argc, argv);
        LogBook::close();
        return status;
    } catch (const ReaderGone&) {
        return DONE;
    } catch (const std::exception& error) {
        LogBook::close();
        Console::complain(error.what());
        return FAILED;
    }
}
