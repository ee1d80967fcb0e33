#include "panel/PanelLoop.h"

#include <algorithm>
#include <csignal>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr int BUSY_MILLISECONDS = 100; // between two looks at outputs that change by themselves
constexpr int IDLE_MILLISECONDS = 250; // for lines that others change, and the clock

} // namespace

PanelLoop::PanelLoop(PanelBoard& board, PanelModel& model, AlarmMailbox& mailbox,
                     PanelScreen& screen, const Signals& signals)
    : m_Board(board), m_Model(model), m_Mailbox(mailbox), m_Screen(screen), m_Signals(signals),
      m_View(screen, model, m_Focus), m_Control(board, model, m_Focus) {}

void PanelLoop::run() {
    do {
        update();
        m_View.draw();
    } while (wait() && takeSignals() && takeKeys());
}

// False when the terminal has gone.
bool PanelLoop::wait() {
    pollfd files[] = {
        {STDIN_FILENO, POLLIN, 0}, {m_Signals.file(), POLLIN, 0}, {m_Mailbox.file(), POLLIN, 0}};
    const bool isBusy =
        std::any_of(m_Model.outputs.begin(), m_Model.outputs.end(),
                    [](const OutputState& each) { return each.operation != OutputState::NONE; });
    poll(files, 3, isBusy ? BUSY_MILLISECONDS : IDLE_MILLISECONDS);
    return (files[0].revents & (POLLHUP | POLLERR | POLLNVAL)) == 0;
}

bool PanelLoop::takeSignals() {
    while (const int signal = m_Signals.take()) {
        if (signal == SIGWINCH) {
            m_Screen.adoptSize();
        } else if (signal == SIGTSTP) {
            m_Screen.stopProcess();
        } else {
            return false;
        }
    }
    return true;
}

bool PanelLoop::takeKeys() {
    for (int key = 0; m_Screen.readKey(key);) {
        if (!m_Control.press(key, m_View.isShown())) {
            return false;
        }
        m_Board.refresh(m_Model); // the next key may build on what this one did
    }
    return true;
}

void PanelLoop::update() {
    const int count = m_Model.receive(m_Mailbox.take());
    if (m_Focus.messagesBelow > 0) { // the rows stay in place for their reader
        m_Focus.messagesBelow += count;
    }
    m_Board.refresh(m_Model);
}
