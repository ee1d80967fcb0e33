#pragma once

#include "lines/AlarmMailbox.h"
#include "panel/PanelBoard.h"
#include "panel/PanelControl.h"
#include "panel/PanelFocus.h"
#include "panel/PanelModel.h"
#include "panel/PanelScreen.h"
#include "panel/PanelView.h"
#include "print/Signals.h"

/// Runs the panel: waits for keys, signals, what the library tells, and time; then brings model
/// and picture up to date.
class PanelLoop {
public:
    /// Keeps what it is given.
    PanelLoop(PanelBoard& board, PanelModel& model, AlarmMailbox& mailbox, PanelScreen& screen,
              const Signals& signals);

    /// Returns when its user or a signal ends it, or the terminal has gone.
    void run();

private:
    bool wait();
    bool takeSignals();
    bool takeKeys();
    void update();

    PanelBoard& m_Board;
    PanelModel& m_Model;
    AlarmMailbox& m_Mailbox;
    PanelScreen& m_Screen;
    const Signals& m_Signals;
    PanelFocus m_Focus;
    PanelView m_View;
    PanelControl m_Control;
};
