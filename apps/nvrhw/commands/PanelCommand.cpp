#include "commands/Commands.h"
#include "panel/Panel.h"
#include "print/CommandError.h"
#include "print/Console.h"

#include <CLI/CLI.hpp>
#include <unistd.h>

namespace {

int run(const Settings& settings) {
    if (settings.json) {
        throw CLI::ValidationError("--json", "the panel is for people; `nvrhw follow` has it");
    }
    if (isatty(STDIN_FILENO) == 0 || !Console::isTerminal()) {
        throw CommandError("the panel needs a terminal on standard input and output; elsewhere use "
                           "`nvrhw follow`, `inputs`, `outputs` and `trigger`");
    }
    const Signals signals{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP, SIGWINCH};
    runPanel(BoardLines(), signals);
    return 0;
}

} // namespace

void addPanel(Commands& commands) {
    commands.add("panel", "Watch and try the lines in the terminal", run)
        .footer(
            "Shows states, levels, modes and the last messages; ? lists the keys. Outputs are\n"
            "driven, and inputs of a simulated bank flipped, only by keys of yours. One of the\n"
            "two processes loses when a recorder drives the same output. A small terminal\n"
            "leaves out columns; 40 by 10 is the smallest.");
}
