#include "commands/InputsCommand.h"

#include "lines/AlarmInputs.h"

void InputsCommand::setUp(CLI::App& app, Settings& /*settings*/) {
    app.footer(
        "VALID is the level at which the configuration says the input is in alarm. USER is the\n"
        "user valid level: 0 keeps that, 1 turns it around. Every recorder begins with 0.");
}

int InputsCommand::run(const Settings& settings) {
    const BoardLines lines;
    const auto states = AlarmInputs(lines).read(lines.inputs());
    if (settings.json) {
        Console::printDocument(AlarmInputs::json(states));
    } else {
        AlarmInputs::table(states).print();
    }
    return 0;
}
