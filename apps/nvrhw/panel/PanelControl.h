#pragma once

#include "panel/PanelBoard.h"
#include "panel/PanelFocus.h"
#include "panel/PanelModel.h"

/// What the keys do.
class PanelControl {
public:
    /// Keeps all three.
    PanelControl(PanelBoard& board, PanelModel& model, PanelFocus& focus)
        : m_Board(board), m_Model(model), m_Focus(focus) {}

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
    void trigger();
    void askFrequency();
    void askTimeout();

    /// Changes the selected output's mode as `change` does.
    template <typename Change> void changeMode(Change change) {
        AlarmOutMode mode = output().mode;
        change(mode);
        m_Board.setMode(output(), mode);
    }

    PanelBoard& m_Board;
    PanelModel& m_Model;
    PanelFocus& m_Focus;
};
