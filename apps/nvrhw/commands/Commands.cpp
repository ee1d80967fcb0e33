#include "commands/Commands.h"

#include "board/check/Suggestion.h"
#include "foundation/Version.h"
#include "platform/BoardVersion.h"
#include "platform/Diagnostics.h"
#include "print/Console.h"
#include "print/LogBook.h"
#include "print/Text.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <sstream>
#include <utility>

namespace {

constexpr int WRONG_USAGE = 2;

constexpr void (*ADDERS[])(Commands&) = {
    addInfo,    addCheck,  addAbilities, addMonitors,   addInputs, addOutputs, addFollow,
    addTrigger, addCancel, addFlip,      addValidLevel, addPanel,  addBoard,   addGenerate};

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
           suggestion(names, unknown.front());
}

} // namespace

Commands::Commands()
    : m_Program(std::make_unique<CLI::App>("What a recorder's board has and what its lines do.",
                                           "nvrhw")) {
    m_Program->require_subcommand(1);
    m_Program->set_version_flag("--version", versionText(), "Print the version and exit");
    m_Program->failure_message([](const CLI::App* app, const CLI::Error& error) {
        const CLI::App& chosen = chosenOf(*app);
        return "nvrhw: " + Text::harmless(mistake(chosen, error)) + "; see `" + nameOf(chosen) +
               " --help`\n";
    });
    addSettings(*m_Program);
    for (const auto add : ADDERS) {
        add(*this);
    }
}

Commands::~Commands() = default;

int Commands::run(int argc, const char* const* argv) {
    try {
        m_Program->parse(argc, argv);
        if (!m_Settings.board.empty()) {
            GlobalEnv::getInstance()->setRootDirectory(m_Settings.board);
        }
        LogBook::open();
        return m_Chosen(m_Settings);
    } catch (const CLI::Error& error) {
        std::ostringstream text; // help and version, or what is wrong
        const bool isHelp = m_Program->exit(error, text, std::cerr) == 0;
        Console::print(text.str());
        return isHelp ? 0 : WRONG_USAGE;
    }
}

CLI::App& Commands::add(const std::string& name, const std::string& description, Run run) {
    CLI::App& app = addBelow(*m_Program, name, description);
    app.callback([this, run = std::move(run)] { m_Chosen = run; });
    return app;
}

CLI::App& Commands::addBelow(CLI::App& parent, const std::string& name,
                             const std::string& description) {
    CLI::App& app = *parent.add_subcommand(name, description);
    addSettings(app);
    return app;
}

// The options stand before or after the name of a command.
void Commands::addSettings(CLI::App& app) {
    app.add_option("--board", m_Settings.board,
                   "The board's root directory (default: $NVRHW_ROOT or /)")
        ->check(CLI::Validator(CLI::ExistingDirectory).description(""))
        ->type_name("DIR");
    app.add_flag("--json", m_Settings.json, "Print JSON for programs");
}
