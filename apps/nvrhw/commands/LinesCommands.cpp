#include "commands/Commands.h"
#include "config/ConfigFileNameConst.h"
#include "lines/BoardLines.h"
#include "lines/LineFacts.h"
#include "platform/Diagnostics.h"
#include "print/Console.h"
#include "print/Table.h"
#include "print/Text.h"

#include <CLI/CLI.hpp>

namespace {

constexpr int NO_LEVEL = -1;

struct Trial {
    std::string which{};
    int level = NO_LEVEL;
};

void printOne(const Record& record, const Settings& settings) {
    if (settings.json) {
        Console::printDocument(record);
    } else {
        Table::printList({record}, false);
    }
}

std::vector<OutputView> look(const std::vector<nvrhw::Output>& outputs) {
    std::vector<OutputView> views;
    views.reserve(outputs.size());
    for (const nvrhw::Output& output : outputs) {
        views.push_back({output, {}, output.state()});
    }
    return views;
}

int runInputs(const Settings& settings) {
    Table::printList(describeAll(BoardLines::look().inputs(), describe), settings.json);
    return 0;
}

int runOutputs(const Settings& settings) {
    const nvrhw::Board board = BoardLines::look();
    Table::printList(describeAll(look(board.outputs()), describe), settings.json);
    return 0;
}

int runInput(const std::string& which, const Settings& settings) {
    printOne(describe(BoardLines::look().input(which)), settings);
    return 0;
}

int runOutput(const std::string& which, const Settings& settings) {
    const nvrhw::Board board = BoardLines::look();
    printOne(describe(look({board.output(which)}).front()), settings);
    return 0;
}

// What the flip has made of the input is seen at once by a board that is opened after it.
int runFlip(const std::string& which, const Settings& settings) {
    const nvrhw::Input input = BoardLines::look().input(which);
    const int level = BoardLines::flip(input);
    if (settings.json) {
        return runInput(which, settings);
    }
    Console::print("input " + std::to_string(input.id) + ": flipped, its level is " +
                   std::to_string(level) + "\n");
    return 0;
}

int runValidLevel(const Trial& trial, const Settings& settings) {
    const nvrhw::Board board = BoardLines::look();
    const nvrhw::Input input = board.input(trial.which);
    if (trial.level != NO_LEVEL) {
        input.setInverted(trial.level != 0);
    }
    Record record = describe(input);
    record.push_back({"stored", "", false});
    printOne(record, settings);
    if (trial.level != NO_LEVEL && !settings.json) {
        const std::string file =
            GlobalEnv::getInstance()->resolve(ConfigFileNameConst::getHardwareConfigFileName());
        Console::print("A trial: nothing is stored. For good, change validLevel of item " +
                       std::to_string(input.id) + " in\n" + Text::harmless(file) + ".\n");
    }
    return 0;
}

CLI::App& addOne(Commands& commands, const char* name, const char* description,
                 const std::string& what,
                 int (*run)(const std::string& which, const Settings& settings)) {
    const auto which = std::make_shared<std::string>();
    CLI::App& app = commands.add(name, description, [which, run](const Settings& settings) {
        return run(*which, settings);
    });
    app.add_option(what == "input" ? "INPUT" : "OUTPUT", *which, "The " + what + "'s id or name")
        ->required()
        ->type_name("");
    return app;
}

} // namespace

void addInputs(Commands& commands) {
    commands.add("inputs", "List the alarm inputs and their states", runInputs)
        .footer("VALID is the level at which the configuration says the input is in alarm. USER is "
                "the\nuser valid level: 0 keeps that, 1 turns it around. Every recorder begins "
                "with 0.");
    addOne(commands, "input", "Show one alarm input", "input", runInput);
}

void addOutputs(Commands& commands) {
    commands.add("outputs", "List the alarm outputs and their states", runOutputs)
        .footer("VALID is the level that the configuration says is active. MODE is what every "
                "process\nbegins with; what a running recorder has set since is known to that "
                "recorder alone.");
    addOne(commands, "output", "Show one alarm output", "output", runOutput);
}

void addFlip(Commands& commands) {
    addOne(commands, "flip", "Give the line of a simulated input the other level", "input", runFlip)
        .footer("A line of a real GPIO chip is not flipped: its contact is closed or opened.");
}

void addValidLevel(Commands& commands) {
    const auto trial = std::make_shared<Trial>();
    CLI::App& app =
        commands.add("valid-level", "Show how an input is judged, or would be with a user level",
                     [trial](const Settings& settings) { return runValidLevel(*trial, settings); });
    app.add_option("INPUT", trial->which, "The input's id or name")->required()->type_name("");
    app.add_option("LEVEL", trial->level,
                   "0: in alarm at the configured valid level; 1: at the other level")
        ->check(CLI::IsMember({0, 1}))
        ->type_name("");
    app.footer(
        "A user valid level belongs to one process and ends with it: nothing stores it. LEVEL is\n"
        "therefore a trial. It changes neither the configuration nor a running recorder, which\n"
        "sets its own with Input::setInverted(). For good, change validLevel in the\n"
        "hardware configuration.");
}
