#pragma once

#include "panel/PanelBoard.h"
#include "panel/PanelFocus.h"
#include "panel/PanelModel.h"

/// What the keys do.
class PanelControl {
public:
    /// Keeps all three.
    PanelControl(PanelBoard& board, PanelModel& model, PanelFocus& focus);

    /// Does what `key` (as curses names it) asks for; false when it is the end. `isShown` is false
    /// while the terminal is too small to show the lines.
    bool press(int key, bool isShown);

private:
    struct Binding;
    static const Binding BINDINGS[];

    void act(int key);
    void readHelp(int key);
    const InputState& input() const;
    OutputState& output() const;

    void switchList();
    void flip();
    void trigger();
    void cancel();
    void changeMode();
    void askFrequency();
    void askTimeout();
    void invert();
    void setMode(const AlarmOutMode& mode);

    PanelBoard& m_Board;
    PanelModel& m_Model;
    PanelFocus& m_Focus;
};
