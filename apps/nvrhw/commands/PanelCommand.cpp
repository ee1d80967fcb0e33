#include "commands/Commands.h"
#include "panel/PanelLoop.h"
#include "platform/Diagnostics.h"
#include "print/CommandError.h"
#include "print/Console.h"
#include "print/LogBook.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <unistd.h>

namespace {

/// While it lives the library's log records go to the mailbox, which a late one may keep alive.
class LogToMailbox {
public:
    explicit LogToMailbox(const std::shared_ptr<AlarmMailbox>& mailbox) {
        for (const std::string& text : LogBook::take()) {
            mailbox->addLog(text);
        }
        Logger::setSink([mailbox](const LogRecord& record) { mailbox->addLog(record.text); });
    }
    ~LogToMailbox() { LogBook::open(); }
    LogToMailbox(const LogToMailbox&) = delete;
    LogToMailbox& operator=(const LogToMailbox&) = delete;
};

// When it is not known: which board it is.
std::string machineName(const BoardLines& lines) {
    SafePointer<MachineConfigurationDetail> detail(lines.detail());
    const bool isRead = detail->initMachineInfo() != 0; // if not the library logs why
    const std::string model = isRead ? detail->getMachineInfo().getModel() : "";
    return model.empty() ? GlobalEnv::getInstance()->getRootDirectory() : model;
}

int run(const Settings& settings) {
    if (settings.json) {
        throw CLI::ValidationError("--json", "the panel is for people; `nvrhw follow` has it");
    }
    if (isatty(STDIN_FILENO) == 0 || !Console::isTerminal()) {
        throw CommandError("the panel needs a terminal on standard input and output; elsewhere use "
                           "`nvrhw follow`, `inputs`, `outputs` and `trigger`");
    }
    const Signals signals{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP, SIGWINCH};
    const BoardLines lines;
    GlobalEnv::getInstance()->setPrintFlag(0); // the terminal is the picture's
    const auto mailbox = std::make_shared<AlarmMailbox>(PanelModel::MOST_MESSAGES);
    const LogToMailbox log(mailbox);
    PanelModel model(lines);
    model.machine = machineName(lines);
    PanelBoard board(lines, *mailbox);
    {
        PanelScreen screen;
        PanelLoop(board, model, *mailbox, screen, signals).run();
    }
    for (const std::string& text : board.letGo()) {
        Console::print("nvrhw: " + text + "\n");
    }
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
