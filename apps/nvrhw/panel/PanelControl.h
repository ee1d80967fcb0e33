#pragma once

#include "panel/PanelFocus.h"
#include "panel/PanelModel.h"

/// What the keys do.
class PanelControl {
public:
    /// Keeps both.
    PanelControl(PanelModel& model, PanelFocus& focus) : m_Model(model), m_Focus(focus) {}

    /// Does what `key` (as curses names it) asks for; false when it is the end. `isShown` is false
    /// while the terminal is too small to show the lines.
    bool press(int key, bool isShown);

private:
    struct Binding;
    static const Binding BINDINGS[];

    void act(int key);
    void readHelp(int key);
    const nvrhw::Input& input() const;
    OutputView& output() const;
    void trigger();
    void askFrequency();
    void askTimeout();

    /// Changes the selected output's mode as `change` does, and switches it off.
    template <typename Change> void changeMode(Change change) {
        OutputMode mode = output().mode;
        change(mode);
        output().mode = mode;
        mode.cancel(output().output);
    }

    PanelModel& m_Model;
    PanelFocus& m_Focus;
};
