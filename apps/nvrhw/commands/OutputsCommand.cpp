#include "commands/OutputsCommand.h"

#include "lines/AlarmOutputs.h"

void OutputsCommand::setUp(CLI::App& app, Settings& /*settings*/) {
    app.footer(
        "VALID is the level that the configuration says is active. MODE is what every process\n"
        "begins with; what a running recorder has set since is known to that recorder alone.");
}

int OutputsCommand::run(const Settings& settings) {
    const BoardLines lines;
    const auto states = AlarmOutputs(lines).read(lines.outputs());
    if (settings.json) {
        Console::printDocument(AlarmOutputs::json(states));
    } else {
        AlarmOutputs::table(states).print();
    }
    return 0;
}
