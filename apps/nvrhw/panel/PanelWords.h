#pragma once

#include "panel/PanelInput.h"
#include "panel/PanelListView.h"
#include "panel/PanelOutput.h"

#include <string>

/// How the panel says what it knows of a line.
class PanelWords {
public:
    PanelWords() = delete;

    static PanelListView::Cell state(const PanelInput& input);
    static PanelListView::Cell state(const PanelOutput& output);

    /// How long what an output does goes on; empty when it does nothing.
    static std::string remaining(const PanelOutput& output);

    /// "flash 5/s for 10 s, inverted"
    static std::string mode(const AlarmOutMode& mode);

    /// One sentence on the line.
    static std::string detail(const PanelInput& input);
    static std::string detail(const PanelOutput& output);

    /// "0/3": bank and bit.
    static std::string place(const Line& line);

    /// "0", "1", or "-" for what could not be read.
    static std::wstring level(int level);
};
