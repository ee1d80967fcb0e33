#include "commands/Commands.h"
#include "panel/PanelBoard.h"
#include "panel/PanelControl.h"
#include "panel/PanelView.h"
#include "platform/Diagnostics.h"
#include "print/Console.h"
#include "print/LogBook.h"
#include "print/Signals.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr int BUSY_MILLISECONDS = 100; // between two looks at outputs that change by themselves
constexpr int IDLE_MILLISECONDS = 250; // for lines that others change, and the clock

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
    const SafePointer<MachineConfigurationDetail>& detail = lines.detail();
    const bool isRead = detail->initMachineInfo() != 0; // if not the library logs why
    const std::string model = isRead ? detail->getMachineInfo().getModel() : "";
    return model.empty() ? GlobalEnv::getInstance()->getRootDirectory() : model;
}

// Waits for keys, signals, what the library tells, and time; false when the terminal has gone.
bool wait(const PanelModel& model, const Signals& signals, const AlarmMailbox& mailbox) {
    pollfd files[] = {
        {STDIN_FILENO, POLLIN, 0}, {signals.file(), POLLIN, 0}, {mailbox.file(), POLLIN, 0}};
    const bool isBusy =
        std::any_of(model.outputs.begin(), model.outputs.end(),
                    [](const OutputState& each) { return each.operation != OutputState::NONE; });
    poll(files, 3, isBusy ? BUSY_MILLISECONDS : IDLE_MILLISECONDS);
    return (files[0].revents & (POLLHUP | POLLERR | POLLNVAL)) == 0;
}

bool takeSignals(const Signals& signals, PanelScreen& screen) {
    while (const int signal = signals.take()) {
        if (signal == SIGWINCH) {
            screen.adoptSize();
        } else if (signal == SIGTSTP) {
            screen.stopProcess();
        } else {
            return false;
        }
    }
    return true;
}

void show(PanelBoard& board, PanelModel& model, AlarmMailbox& mailbox, const Signals& signals) {
    PanelScreen screen;
    PanelFocus focus;
    PanelView view(screen, model, focus);
    PanelControl control(board, model, focus);
    bool goesOn = true;
    while (goesOn) {
        const int count = model.receive(mailbox.take());
        focus.messagesBelow += focus.messagesBelow > 0 ? count : 0; // their reader keeps the rows
        board.refresh(model);
        view.draw();
        goesOn = wait(model, signals, mailbox) && takeSignals(signals, screen);
        for (int key = 0; goesOn && screen.readKey(key);) {
            goesOn = control.press(key, view.isShown());
            board.refresh(model); // the next key may build on what this one did
        }
    }
}

// Until its user or a signal ends it, or the terminal has gone. Then says what was switched off
// with it, and what stays on.
void runPanel(const BoardLines& lines, const Signals& signals) {
    GlobalEnv::getInstance()->setPrintFlag(0); // the terminal is the picture's
    const auto mailbox = std::make_shared<AlarmMailbox>(PanelModel::MOST_MESSAGES);
    const LogToMailbox log(mailbox);
    PanelModel model(lines);
    model.machine = machineName(lines);
    PanelBoard board(lines, *mailbox);
    show(board, model, *mailbox, signals);
    for (const std::string& text : board.letGo()) {
        Console::print("nvrhw: " + text + "\n");
    }
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
