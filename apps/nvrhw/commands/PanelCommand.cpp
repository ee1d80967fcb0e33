#include "commands/Commands.h"
#include "lines/BoardLines.h"
#include "panel/PanelControl.h"
#include "panel/PanelView.h"
#include "platform/Diagnostics.h"
#include "print/Console.h"
#include "print/LogBook.h"
#include "print/Signals.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr int BUSY_MILLISECONDS = 100; // between two looks at outputs that change by themselves
constexpr int IDLE_MILLISECONDS = 250; // for lines that others change, and the clock

/// While it lives the library's log records go to the mail, which a late one may keep alive.
class LogToMail {
public:
    explicit LogToMail(const std::shared_ptr<PanelMail>& mail) {
        for (const std::string& text : LogBook::take()) {
            mail->addLog(text);
        }
        Logger::setSink([mail](const LogRecord& record) { mail->addLog(record.text); });
    }
    ~LogToMail() { LogBook::open(); }
    LogToMail(const LogToMail&) = delete;
    LogToMail& operator=(const LogToMail&) = delete;
};

// Waits for keys, signals, what the library tells, and time; false when the terminal has gone.
bool wait(const PanelModel& model, const Signals& signals, const PanelMail& mail) {
    pollfd files[] = {
        {STDIN_FILENO, POLLIN, 0}, {signals.file(), POLLIN, 0}, {mail.file(), POLLIN, 0}};
    poll(files, std::size(files), model.isBusy() ? BUSY_MILLISECONDS : IDLE_MILLISECONDS);
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

void show(PanelModel& model, PanelMail& mail, const Signals& signals) {
    PanelScreen screen;
    PanelFocus focus;
    PanelView view(screen, model, focus);
    PanelControl control(model, focus);
    bool goesOn = true;
    while (goesOn) {
        const int count = model.receive(mail.take());
        focus.messagesBelow += focus.messagesBelow > 0 ? count : 0; // their reader keeps the rows
        model.refresh();
        view.draw();
        goesOn = wait(model, signals, mail) && takeSignals(signals, screen);
        for (int key = 0; goesOn && screen.readKey(key);) {
            goesOn = control.press(key, view.isShown());
            model.refresh(); // the next key may build on what this one did
        }
    }
}

// Switches off what would not end by itself without this process, and tells of it and of what stays
// on.
void letGo(PanelModel& model) {
    model.refresh();
    for (const OutputView& view : model.outputs) {
        const bool isUnfinished = view.changesByItself();
        const bool staysOn = !isUnfinished && view.state.operation == nvrhw::Output::Hold;
        if (isUnfinished || (staysOn && view.state.isActive)) {
            const bool isDone = staysOn || view.output.rest();
            Console::print("nvrhw: output " + std::to_string(view.output.id) +
                           (staysOn  ? " stays on\n"
                            : isDone ? " was switched off with the panel\n"
                                     : " could not be switched off\n"));
        }
    }
}

// Until its user or a signal ends it, or the terminal has gone.
void runPanel(const Signals& signals) {
    GlobalEnv::getInstance()->setPrintFlag(0); // the terminal is the picture's
    const auto mail = std::make_shared<PanelMail>(PanelModel::MOST_MESSAGES);
    const LogToMail log(mail);
    const nvrhw::Board board = BoardLines::watch();
    PanelModel model(board);
    const nvrhw::Registration watch =
        board.onInput([&](const nvrhw::InputChange& change) { mail->addChange(change); });
    show(model, *mail, signals);
    letGo(model);
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
    runPanel(signals);
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
