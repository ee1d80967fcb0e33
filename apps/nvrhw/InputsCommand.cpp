#include "InputsCommand.h"

#include "Inputs.h"

void InputsCommand::setUp(CLI::App& app, Settings& /*settings*/) {
    app.footer(
        "VALID is the level at which the configuration says the input is in alarm. USER is the\n"
        "user valid level: 0 keeps that, 1 turns it around. Every recorder begins with 0.");
}

int InputsCommand::run(const Settings& settings) {
    const Lines lines;
    const auto states = Inputs(lines).read(lines.inputs());
    if (settings.json) {
        Output::printDocument(Inputs::json(states));
    } else {
        Inputs::table(states).print();
    }
    return 0;
}
