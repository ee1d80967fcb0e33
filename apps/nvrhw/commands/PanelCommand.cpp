#include "commands/PanelCommand.h"

#include "panel/PanelLoop.h"
#include "platform/Diagnostics.h"
#include "print/CommandError.h"
#include "print/Console.h"
#include "print/LogBook.h"

#include <memory>
#include <unistd.h>

namespace {

/// While it lives the library's log records go to the mailbox, which a late one may keep alive.
class LogToMailbox {
public:
    explicit LogToMailbox(const std::shared_ptr<PanelMailbox>& mailbox) {
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
    const bool isRead = lines.detail()->initMachineInfo() != 0; // if not the library logs why
    const std::string model = isRead ? lines.detail()->getMachineInfo().getModel() : "";
    return model.empty() ? GlobalEnv::getInstance()->getRootDirectory() : model;
}

} // namespace

void PanelCommand::setUp(CLI::App& app, Settings& /*settings*/) {
    app.footer("Shows states, levels, modes and the last messages; ? lists the keys. Outputs are\n"
               "driven, and inputs of a simulated bank flipped, only by keys of yours. One of the\n"
               "two processes loses when a recorder drives the same output.");
}

int PanelCommand::run(const Settings& settings) {
    if (settings.json) {
        throw CLI::ValidationError("--json", "the panel is for people; `nvrhw monitor` has it");
    }
    if (isatty(STDIN_FILENO) == 0 || isatty(STDOUT_FILENO) == 0) {
        throw CommandError("the panel needs a terminal on standard input and output; elsewhere use "
                           "`nvrhw monitor`, `inputs`, `outputs` and `trigger`");
    }
    const Signals signals;
    const BoardLines lines;
    GlobalEnv::getInstance()->setPrintFlag(0); // standard output is the picture's
    const auto mailbox = std::make_shared<PanelMailbox>();
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
