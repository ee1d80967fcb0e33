#include "OutputsCommand.h"

#include "Outputs.h"

void OutputsCommand::setUp(CLI::App& app, Settings& /*settings*/) {
    app.footer(
        "VALID is the level that the configuration says is active. MODE is what every process\n"
        "begins with; what a running recorder has set since is known to that recorder alone.");
}

int OutputsCommand::run(const Settings& settings) {
    const Lines lines;
    const auto states = Outputs(lines).read(lines.outputs());
    if (settings.json) {
        Output::printDocument(Outputs::json(states));
    } else {
        Outputs::table(states).print();
    }
    return 0;
}
